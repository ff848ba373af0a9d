// The package for programs in JavaScript, under node: its answers are those of the program.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { cpSync, mkdirSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { dirname, join } from "node:path";
import { after, describe, test } from "node:test";
import { fileURLToPath } from "node:url";
import { data, folder, program, runByCommand } from "./program.mjs";

// Installed as npm would: a folder node_modules beside the program.
const built = join(dirname(fileURLToPath(import.meta.url)), "../../build/web/npm");
const home = join(folder, "program");
mkdirSync(join(home, "node_modules"), { recursive: true });
cpSync(built, join(home, "node_modules/frigana"), { recursive: true });
writeFileSync(join(home, "package.json"), '{ "type": "module" }');
const { Fluid, Refusal, chart, close, configure, convert, fluids, requests, run, state, study } =
  await import(createRequire(join(home, "package.json")).resolve("frigana"));
after(close);

// Mathematical functions differ from those of the program, and iterations that stop at a tolerance amplify their last
// digit.
const bound = 1e-8;
let farthest = 0;
after(() => console.log(`largest difference from the program: ${farthest.toExponential(1)}`));
function near(one, other, what) {
  if (typeof other !== "number") return assert.equal(one, other, what);
  const difference = Math.abs(one - other) / Math.max(1, Math.abs(other));
  farthest = Math.max(farthest, difference);
  assert.ok(difference <= bound, `${what}: ${one} is not ${other}`);
}

const basic = {
  request: "basic", fluid: "R134a", evaporator: { temperature: "-5 °C", superheat: "5 K" }, condenser: { temperature: "40 °C", subcooling: "3 K" },
  compressor: { swept_volume: "10 m3/h", isentropic_efficiency: 0.7, volumetric_efficiency: 0.85 },
};

describe("requests", async () => {
  const { requests: kinds } = await requests();
  for (const { name } of kinds)
    test(`${name} as the program says`, async () => {
      const { request } = await convert({ template: name });
      if (name === "store-blend") return assert.rejects(run(request), (why) => why instanceof Refusal && why.code === "not_here");
      const mine = await run(request), its = runByCommand(request);
      assert.equal(mine.outcome, its.outcome);
      assert.deepEqual(mine.values.map((one) => one.key), its.values.map((one) => one.key));
      mine.values.forEach(({ value, key }, i) => near(value, its.values[i].value, key));
      assert.deepEqual([mine.remarks, mine.versions], [its.remarks, its.versions]);
      assert.deepEqual(mine.points.length, its.points.length);
    });

  test("own blends, and blends of two components with their own file", async () => {
    for (const fluid of [{ R32: 0.689, R1234yf: 0.311 }, "R410A", "R407C"]) {
      const request = { ...basic, fluid, ...(typeof fluid === "string" ? {} : { blend_name: "Mine" }) };
      const mine = await run(request), its = runByCommand(request);
      assert.equal(mine.outcome, its.outcome);
      mine.values.forEach(({ value, key }, i) => near(value, its.values[i].value, key));
    }
  });

  test("a refused calculation is a result, a request that cannot be read is not", async () => {
    const refused = await run({ ...basic, evaporator: { temperature: "50 °C", superheat: "5 K" } });
    assert.equal(refused.code, 201214);
    await assert.rejects(run({ ...basic, fluid: "R999" }), (why) => why instanceof Refusal && why.code === "bad_request" && /R999/.test(why.message));
    // And the next one is answered.
    assert.equal((await run(basic)).outcome, runByCommand(basic).outcome);
  });

  test("fluids, a state, charts", async () => {
    const list = JSON.parse(execFileSync(program, ["list", "--json", "--data", data], { encoding: "utf8", maxBuffer: 1 << 26 }));
    const names = (all) => all.map((one) => one.file).sort();
    // Without the blends of whoever runs the program.
    assert.deepEqual(names(await fluids()), names(list.fluids.filter((one) => !one.own)));
    const found = await state({ fluid: "R134a", H: "300 kJ/kg", P: "10 bar" });
    near(found.pressure, 1000, "pressure");
    assert.ok(found.quality > 0 && found.quality < 1);
    const charts = await chart({ kind: "ph", request: basic });
    assert.ok(charts[0].lines.length > 10 && charts[0].points.length === 5);
  });
});

describe("fluids", () => {
  const grid = { T: [250, 300, 350, 400], p: 700 };

  test("states as a state point of the program", async () => {
    for (const fluid of ["R134a", "CO2", "R410A"]) {
      const { d, h, s, codes } = await new Fluid(fluid).states(grid, ["d", "h", "s"]);
      assert.deepEqual([...codes], [0, 0, 0, 0]);
      for (const [i, T] of grid.T.entries()) {
        const its = new Map(runByCommand({ request: "state-point", units: "SI", fluid, temperature: T, pressure: 700 }).values.map((one) => [one.key, one.value]));
        near(d[i], its.get("density"), `${fluid} density at ${T} K`);
        near(h[i], its.get("enthalpy"), `${fluid} enthalpy at ${T} K`);
        near(s[i], its.get("entropy"), `${fluid} entropy at ${T} K`);
      }
    }
  });

  test("there and back by two other properties", async () => {
    const propane = new Fluid("propane");
    const { h, s } = await propane.states(grid, ["h", "s"]);
    const { T, p } = await propane.states({ h, s }, ["T", "p"]);
    T.forEach((value, i) => assert.ok(Math.abs(value - grid.T[i]) < 1e-6, `${value}`));
    p.forEach((value) => assert.ok(Math.abs(value / 700 - 1) < 1e-7, `${value}`));
  });

  test("saturation of a blend has a glide; liquid and vapor have one pressure", async () => {
    const { liquid, vapor } = await new Fluid({ fluid: { R32: 0.5, R134a: 0.5 }, fractions: "mass" }).saturation({ p: [400, 800] }, ["T", "p", "d"]);
    for (const i of [0, 1]) {
      assert.ok(vapor.T[i] - liquid.T[i] > 3 && vapor.T[i] - liquid.T[i] < 12);
      assert.ok(liquid.d[i] > 10 * vapor.d[i]);
    }
  });

  test("a state without an answer is not a number and says why", async () => {
    const { h, codes, texts } = await new Fluid("R134a").states({ T: [300, 9000, NaN], p: 100 }, ["h"]);
    assert.ok(Number.isFinite(h[0]) && Number.isNaN(h[1]) && Number.isNaN(h[2]));
    assert.equal(codes[0], 0);
    assert.ok(codes[1] > 0 && texts[1].length > 10);
    assert.equal(codes[2], 9001);
  });

  test("what cannot be asked", async () => {
    await assert.rejects(new Fluid("R999").facts(), /R999/);
    await assert.rejects(new Fluid("R134a").states({ T: 300 }, ["h"]), RangeError);
    await assert.rejects(new Fluid("R134a").states({ T: [300, 310], p: [1, 2, 3] }, ["h"]), RangeError);
    await assert.rejects(new Fluid("R134a").states({ T: 300, p: 100 }, ["nothing"]), RangeError);
    assert.equal((await new Fluid("R134a").facts()).name, "R134a");
  });

  test("more fluids than an engine keeps open", async () => {
    const names = (await fluids()).filter((one) => !one.blend && !one.fault).map((one) => one.shown);
    assert.ok(names.length > 25);
    for (const name of names) assert.ok((await new Fluid(name).facts()).name, name);
    assert.ok(Number.isFinite((await new Fluid(names[0]).saturation({ p: 100 }, ["T"])).vapor.T[0]));
  });
});

describe("workers", () => {
  test("a study in order, on two workers, as the program's requests one by one", async () => {
    configure({ workers: 2 });
    const rows = [];
    await study({
      request: basic, vary: { "condenser.temperature": { from: "30 °C", to: "60 °C", count: 61 } },
      results: { keys: ["performance.cop_cooling"] },
    }, (one, total) => rows.push([one, total]));
    assert.deepEqual(rows.map(([one]) => one.case), Array.from({ length: 61 }, (_, i) => i));
    assert.ok(rows.every(([, total]) => total === 61));
    for (const i of [0, 30, 60]) {
      const its = runByCommand({ ...basic, condenser: { ...basic.condenser, temperature: `${30 + 0.5 * i} °C` } });
      near(rows[i][0].values[0], its.values.find((one) => one.key === "performance.cop_cooling").value, `case ${i}`);
    }
  });

  test("a study that is refused, too long, or given up", async () => {
    const results = { keys: ["performance.cop_cooling"] };
    const one = { request: basic, results };
    await assert.rejects(study({ ...one, vary: { "no.such": [1] } }, () => {}), Refusal);
    await assert.rejects(study({ ...one, vary: { "condenser.temperature": { from: 300, to: 310, count: 200001 } } }, () => {}), /at most 200000 cases/);
    await assert.rejects(study({ ...one, optimum: { maximise: "performance.cop_cooling", over: "condenser.temperature", from: 300, to: 310, tolerance: 1 } }, () => {}), /optimum/);
    const control = new AbortController();
    let heard = 0;
    await assert.rejects(study({ ...one, vary: { "condenser.temperature": { from: 300, to: 330, count: 5000 } } },
      () => { if (++heard === 20) control.abort(); }, control.signal), { name: "AbortError" });
    assert.equal(heard, 20);
  });

  test("a calculation that takes too long ends its worker alone", async () => {
    configure({ workers: 1, patience: 0.4 });
    // So many states in one question take longer.
    const many = new Float64Array(2_000_000).fill(300);
    await assert.rejects(new Fluid("R410A").states({ T: many, p: 100 }, ["h"]), (why) => why.code === "too_slow");
    configure({ workers: 1 });
    assert.equal((await run(basic)).outcome, runByCommand(basic).outcome);
  });

  test("a program ends by itself", () => {
    writeFileSync(join(home, "one.js"), `import { run } from "frigana";
const result = await run(${JSON.stringify(basic)});
console.log(result.values.find((one) => one.key === "performance.cop_cooling").value);
`);
    const said = execFileSync(process.execPath, [join(home, "one.js")], { encoding: "utf8", timeout: 20_000 });
    near(Number(said), runByCommand(basic).values.find((one) => one.key === "performance.cop_cooling").value, "cop");
  });
});

test("types are those of what is there", () => {
  writeFileSync(join(home, "typed.ts"), `import { Fluid, run, study, type Property, type Result } from "frigana";
const result: Result = await run({ request: "basic" });
const first: number | string = result.values[0]!.value;
const table = await new Fluid({ fluid: { R32: 0.5, R134a: 0.5 } }).states({ T: [1, 2], p: 3 }, ["h", "s"]);
const h: Float64Array = table.h;
const names: Property[] = ["T", "surface_tension"];
await study({ request: {}, results: { keys: [] } }, (one) => { const n: number = one.case; void n; });
// @ts-expect-error  d was not asked for
table.d;
// @ts-expect-error  no such property
await new Fluid("R134a").states({ T: 1, p: 2 }, ["nothing"]);
void [first, h, names];
`);
  const tsc = createRequire(import.meta.url).resolve("typescript/bin/tsc");
  execFileSync(process.execPath, [tsc, "--noEmit", "--strict", "--module", "nodenext", "--target", "es2022", "--lib", "es2022,dom",
    join(home, "typed.ts")], { encoding: "utf8", cwd: home, stdio: ["ignore", "inherit", "inherit"] });
});
