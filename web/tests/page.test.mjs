// The page in a real browser, as its reader uses it.
import assert from "node:assert/strict";
import { readFileSync, readdirSync, writeFileSync, mkdirSync } from "node:fs";
import { createRequire } from "node:module";
import { join } from "node:path";
import { after, before, beforeEach, afterEach, describe, test as anyTest } from "node:test";
import puppeteer from "puppeteer-core";
import { examples, folder, Folder, OneFile, requestIn, runByCommand, Served } from "./program.mjs";

// What is tested: the page that the program serves, or the one without a server.
const place = process.env.FRIGANA_PAGE ?? "server";
const Page = { server: Served, folder: Folder, file: OneFile }[place];
const alone = place !== "server";
const onlyWhere = (right) => ({ skip: right ? false : "another page" });

const test = (name, check, settings = {}) => anyTest(name, { timeout: 60_000, ...settings }, check);

// The module calculates with other mathematical functions than the program: this far its figures may be from those of
// the command, and the largest difference is told.
const bound = 1e-8;
let farthest = 0;
function same(shown, told, what) {
  if (!alone || typeof told !== "number") return assert.equal(shown, told, what);
  const difference = Math.abs(shown - told) / Math.max(1, Math.abs(told));
  farthest = Math.max(farthest, difference);
  assert.ok(difference <= bound, `${what}: ${shown} is not ${told}`);
}

const axe = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");
const cycles = ["basic", "heat-exchanger", "combined", "cascade", "rankine", "transcritical", "liquid-injection", "two-stage",
  "multi-stage", "minimal", "pumped-co2", "booster"];
const properties = ["fluid-information", "saturation-table", "isoproperty-table", "state-point", "equilibrium-phases", "saturation-point"];

let served, browser, context, page, faults, foreign, expected;

before(async () => {
  served = await Page.start();
  browser = await puppeteer.launch({ executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium", headless: true, args: ["--no-sandbox"] });
});
after(async () => {
  await browser?.close();
  await served?.stop();
  if (alone) console.log(`largest difference from the command: ${farthest.toExponential(1)}`);
});

beforeEach(async () => {
  // Each test has a browser of its own that remembers nothing.
  context = await browser.createBrowserContext();
  page = await context.newPage();
  await page.setViewport({ width: 1400, height: 900 });
  faults = [];
  foreign = [];
  expected = /^$/;
  page.on("console", (message) => { if (message.type() === "error" || message.type() === "warn") faults.push(message.text()); });
  page.on("pageerror", (failure) => faults.push(failure.message));
  page.on("request", (request) => {
    if (!request.url().startsWith(served.address) && !/^(blob|data):/.test(request.url())) foreign.push(request.url());
  });
});
afterEach(async () => {
  await context.close();
  assert.deepEqual(faults.filter((one) => !expected.test(one)), [], "nothing on the console");
  assert.deepEqual(foreign, [], "no request to another host");
});

async function open(hash = "", view = "") {
  await page.goto(served.address + hash, { waitUntil: "load" });
  if (view) await (await page.waitForSelector(`[data-view=${view}]`)).click();
  await page.waitForSelector(".figures [data-value], [data-row] [data-value], .optimum strong");
}

// Waits until a question of the page gives something else than "".
async function until(what, text, ...args) {
  return (await page.waitForFunction(what, { timeout: 30_000, polling: 30 }, ...args).catch(() => { throw new Error(`in vain: ${text}`); })).jsonValue();
}

// Until every question that is on its way is answered.
const settled = () => until(() => !document.documentElement.hasAttribute("data-busy"), "rest");

const figures = () => page.$$eval(".figures [data-value]", (all) => Object.fromEntries(all.map((one) => [one.dataset.key, Number(one.dataset.value)])));
const solvedOtherThan = (key, value) => until((key, value) => {
  const found = document.querySelector(`.figures [data-key="${key}"]`);
  return found && !document.querySelector(".stale") && Number(found.dataset.value) !== value;
}, `another ${key}`, key, value);

async function setField(name, text) {
  const input = await page.waitForSelector(`[data-name="${name}"]`);
  await input.click({ count: 3 });
  await input.type(text);
}

// The same in one stroke: on a busy machine a number that is typed is asked for before its last digit.
async function setFieldAtOnce(name, text) {
  await page.$eval(`[data-name="${name}"]`, (input, text) => {
    input.value = text;
    input.dispatchEvent(new Event("input", { bubbles: true }));
  }, text);
}

async function choose(name, value) {
  await page.select(`select[data-name="${name}"]`, value);
}

// Every figure of the page is that of the command, to the last digit.
async function asCommand() {
  const shown = await figures();
  const result = runByCommand(requestIn(page.url()));
  const values = new Map(result.values.map((value) => [value.key, value.value]));
  assert.ok(Object.keys(shown).length > 3);
  for (const [key, value] of Object.entries(shown)) same(value, values.get(key), key);
  return shown;
}

async function requestChosen(name) {
  await page.waitForFunction((name) => new URLSearchParams(location.hash.slice(1)).get("request") === name, {}, name);
}

describe("requests", () => {
  for (const name of [...cycles, "line-sizing", ...properties])
    test(`${name}: opened, solved, changed, refused`, async () => {
      const view = name === "line-sizing" ? "lines" : properties.includes(name) ? "properties" : "cycle";
      await open("", view);
      if (view !== "lines") await choose("request", name);
      await requestChosen(name);
      // The figures of the request before are gone when the table or drawing of this one is there.
      await settled();
      const before = await asCommand();
      if (view === "cycle") {
        const numbers = await page.$$eval("svg.circuit [data-point]", (all) => all.map((one) => one.dataset.point));
        const points = await page.$$eval("table.points [data-point]", (all) => all.map((one) => one.dataset.point));
        assert.deepEqual([...numbers].sort(), [...points].sort(), "every state point is in the drawing, once");
      }
      if (name !== "fluid-information") assert.ok(await page.$$eval("svg.chart path.line", (all) => all.length) > 10, "a chart");
      const field = await page.$eval(".field input[type=text]", (one) => one.dataset.name).catch(() => null);
      if (field === null) return;
      await page.focus(`[data-name="${field}"]`);
      await page.keyboard.press("ArrowUp");
      await settled();
      const after = await asCommand();
      assert.notDeepEqual(after, before);
      await setField(field, "-9999");
      await page.waitForSelector(".refused");
      if (!properties.includes(name)) await page.waitForSelector(".field.wrong .complaint:not([hidden])");
      assert.deepEqual(await figures(), after, "the last good figures stay");
      assert.ok(await page.$(".stale"));
      expected = /status of (400|422)/;
    });

  test("units of a field and of the page", async () => {
    await open();
    const before = await figures();
    await choose("evaporator.temperature unit", "°F");
    assert.equal(await page.$eval('[data-name="evaporator.temperature"]', (one) => one.value), "23");
    await settled();
    assert.deepEqual(await figures(), before);
    await choose("units", "imperial");
    await solvedOtherThan("compressor.outlet.temperature", before["compressor.outlet.temperature"]);
    const inFahrenheit = (await asCommand())["compressor.outlet.temperature"];
    assert.ok(Math.abs((inFahrenheit - 32) / 1.8 - before["compressor.outlet.temperature"]) < 1e-6);
  });

  test("another way of giving a parameter keeps the cycle", async () => {
    await open();
    const before = (await figures())["performance.cop_cooling"];
    await page.select('select[data-name="size of the plant how"]', "3");
    await page.waitForSelector('[data-name="compressor.capacity.evaporator"]');
    await settled();
    const after = await asCommand();
    assert.ok(Math.abs(after["performance.cop_cooling"] - before) < 1e-4);
    assert.ok(Math.abs(after["performance.swept_volume"] - 10.08) < 1e-2);
  });

  test("own blend", async () => {
    await open();
    await page.click('[data-name="fluid blend"]');
    await page.waitForSelector('[data-name="fluid fraction 0"]');
    await settled();
    await asCommand();
  });

  test("a state point from enthalpy and pressure", async () => {
    await open("", "properties");
    await choose("request", "state-point");
    await requestChosen("state-point");
    await settled();
    await page.click(".other-pair > summary");
    const give = (i, text) => setField(`other value ${i}`, text);
    await give(0, "10");
    await give(1, "450");
    await page.click('[data-act="state.find"]');
    await page.waitForFunction(() => !location.hash.includes("temperature=26.85"));
    await settled();
    const vapor = await asCommand();
    assert.ok(Math.abs(vapor.enthalpy - 450) < 1e-6 && Math.abs(vapor.pressure - 10) < 1e-9);
    // Between liquid and vapor the density stands for the pressure.
    await give(1, "300");
    await page.click('[data-act="state.find"]');
    await page.waitForFunction(() => location.hash.includes("density="));
    await settled();
    const wet = await asCommand();
    assert.ok(Math.abs(wet.enthalpy - 300) < 1e-5 && Math.abs(wet.pressure - 10) < 1e-5);
    await choose("other property 1", "Q");
    await give(1, "2");
    await page.click('[data-act="state.find"]');
    assert.match(await until(() => document.querySelector(".other-pair .complaint").textContent, "a complaint"), /quality/);
    expected = /status of 400/;
  });

  test("a name that begins with another one is typed to its end", async () => {
    await open();
    const field = await page.waitForSelector('[data-name="fluid"]');
    await field.click({ count: 3 });
    for (const letter of "R410A") {
      await page.keyboard.type(letter);
      await new Promise((done) => setTimeout(done, 150));  // R41 is one, too: its figures come in between
    }
    await settled();
    assert.equal(await page.$eval('[data-name="fluid"]', (one) => one.value), "R410A");
    await asCommand();
  });

  test("a wrong name of a refrigerant is told", async () => {
    await open();
    await setField("fluid", "R999");
    await page.keyboard.press("Tab");
    const text = await until(() => document.querySelector(".refused")?.textContent, "a refusal");
    assert.match(text, /R999/);
    expected = /status of 400/;
  });

  test("a physical impossibility is told with its code", async () => {
    await open();
    await setField("evaporator.temperature", "50");
    assert.match(await until(() => document.querySelector(".refused")?.textContent, "a refusal"), /Evaporator temperature > Condenser temperature.*201214/);
    expected = /status of 422/;
  });
});

describe("drawing and chart", () => {
  test("a point that is looked at is marked in drawing, chart and table", async () => {
    await open();
    await page.waitForSelector(".chart .point.cycle");
    await page.$eval('[data-point="evaporator.inlet"]', (one) => one.focus());
    await until(() => document.querySelector(".chart .point.looked-at")?.dataset.label === "3"
      && document.querySelector("tr.looked-at")?.dataset.point === "evaporator.inlet", "marks");
  });

  test("zoom, fit, whole chart, reading", async () => {
    await open();
    await page.waitForSelector(".chart .point.cycle");
    const titles = () => page.$$eval(".chart .tick-label", (all) => all.map((one) => one.textContent).join());
    const whole = await titles();
    await page.click('[data-act="chart.cycle"]');
    await until((whole) => [...document.querySelectorAll(".chart .tick-label")].map((one) => one.textContent).join() !== whole, "a zoomed chart", whole);
    await page.click('[data-act="chart.whole"]');
    await until((whole) => [...document.querySelectorAll(".chart .tick-label")].map((one) => one.textContent).join() === whole, "the whole chart", whole);
    await page.$eval("svg.chart", (one) => one.focus());
    await page.keyboard.press("+");
    await until((whole) => [...document.querySelectorAll(".chart .tick-label")].map((one) => one.textContent).join() !== whole, "zoom by key", whole);
    await page.keyboard.press("0");
    await until((whole) => [...document.querySelectorAll(".chart .tick-label")].map((one) => one.textContent).join() === whole, "the whole chart", whole);
    const [x, y] = await page.$eval('.chart .point[data-label="3"] circle', (one) => {
      const box = one.getBoundingClientRect();
      return [box.x + box.width / 2, box.y + box.height / 2];
    });
    await page.mouse.move(x, y);
    assert.match(await until(() => document.querySelector(".reading").textContent, "a reading"), /evaporator inlet.*bar/);
    for (const kind of ["ts", "hs", "ph"]) {
      await page.click(`[data-kind=${kind}]`);
      await until((kind) => document.querySelector(`[data-kind=${kind}]`).getAttribute("aria-pressed") === "true", kind, kind);
    }
  });
});

describe("files and links", () => {
  async function downloaded(ending, act) {
    const client = await page.createCDPSession();
    const place = join(folder, `downloads-${ending}-${Date.now()}`);
    mkdirSync(place);
    await client.send("Browser.setDownloadBehavior",
      { behavior: "allow", downloadPath: place, browserContextId: context.id, eventsEnabled: true });
    // The browser makes the file empty before it writes it: it is there when it says so.
    const ended = new Promise((done, fail) => {
      client.on("Browser.downloadProgress", ({ state }) => { if (state !== "inProgress") done(state); });
      setTimeout(() => fail(new Error(`no .${ending} came`)), 20_000).unref();
    });
    await act();
    assert.equal(await ended, "completed");
    const found = readdirSync(place).filter((one) => one.endsWith(`.${ending}`));
    assert.equal(found.length, 1, `one .${ending}`);
    return join(place, found[0]);
  }

  for (const ending of ["toml", "fi1"])
    test(`.${ending} taken along and opened again`, async () => {
      await open();
      await setField("evaporator.temperature", "-12");
      await settled();
      const before = await figures();
      const file = await downloaded(ending, () => page.click(`.figures [data-format=${ending}]`));
      await open("#view=cycle");
      await (await page.$("input[type=file]")).uploadFile(file);
      await until((value) => Number(document.querySelector('[data-key="performance.cop_cooling"]')?.dataset.value) === value, "the same result",
        before["performance.cop_cooling"]);
      assert.deepEqual(await figures(), before);
    });

  test("result as JSON, CSV and by places", async () => {
    await open();
    const json = JSON.parse(readFileSync(await downloaded("json", () => page.click(".figures [data-format=json]")), "utf8"));
    const { values } = runByCommand(requestIn(page.url()));
    assert.deepEqual(json.values.map(({ value, ...rest }) => rest), values.map(({ value, ...rest }) => rest));
    json.values.forEach(({ value, key }, i) => same(value, values[i].value, key));
    const csv = readFileSync(await downloaded("csv", () => page.click(".figures [data-format=csv]")), "utf8");
    assert.match(csv, /performance\.cop_cooling/);
    const places = readFileSync(await downloaded("fo1", () => page.click(".figures [data-format=fo1]")), "utf8");
    assert.match(places, /^ 2\s/);
  });

  test("chart as SVG and PNG", async () => {
    await open();
    await page.waitForSelector(".chart .point.cycle");
    const svg = readFileSync(await downloaded("svg", () => page.click('[data-act="download.svg"]')), "utf8");
    assert.match(svg, /^<svg .*stroke=/s);
    const png = readFileSync(await downloaded("png", () => page.click('[data-act="download.png"]')));
    assert.equal(png.subarray(1, 4).toString(), "PNG");
    assert.ok(png.length > 10_000);
  });

  test("every example by places can be dropped", async () => {
    await open();
    for (const name of readdirSync(examples).filter((one) => one.endsWith(".fi1") && one !== "store_blend.fi1")) {
      const text = readFileSync(join(examples, name), "utf8");
      const address = page.url();
      await page.evaluate((name, text) => {
        const files = new DataTransfer();
        files.items.add(new File([text], name));
        document.dispatchEvent(new DragEvent("drop", { dataTransfer: files, cancelable: true }));
      }, name, text);
      await until((address) => location.href !== address, `${name} opened`, address);
      await settled();
      assert.equal(await page.$(".refused"), null, name);
    }
  });

  test("a link holds the case", async () => {
    await open();
    await setField("condenser.temperature", "47");
    await settled();
    const before = await figures(), link = page.url();
    await page.goto("about:blank");
    await page.goto(link);
    await page.waitForSelector(".figures [data-value]");
    assert.deepEqual(await figures(), before);
    assert.equal(page.url(), link);
  });

  test("undo and redo", async () => {
    await open();
    const before = await figures();
    await setField("condenser.temperature", "47");
    await solvedOtherThan("performance.cop_cooling", before["performance.cop_cooling"]);
    await page.click("[data-act=undo]");
    await until((value) => Number(document.querySelector('[data-key="performance.cop_cooling"]').dataset.value) === value, "the old result", before["performance.cop_cooling"]);
    assert.equal(await page.$eval('[data-name="condenser.temperature"]', (one) => one.value), "40");
    await page.click("[data-act=redo]");
    await solvedOtherThan("performance.cop_cooling", before["performance.cop_cooling"]);
  });

  test("a file that is no request", async () => {
    await open();
    const file = join(folder, "picture.txt");
    writeFileSync(file, "nothing");
    await (await page.$("input[type=file]")).uploadFile(file);
    assert.match(await until(() => document.querySelector(".notice.shown")?.textContent, "a notice"), /picture\.txt/);
  });
});

describe("compare and vary", () => {
  test("refrigerants side by side, as the command says", async () => {
    await open("", "compare");
    const rows = await page.$$eval('[data-row="performance.cop_cooling"] [data-value]', (all) => all.map((one) => Number(one.dataset.value)));
    const request = requestIn(page.url());
    const expectedValues = ["R134a", "R1234yf", "R290"].map((fluid) => runByCommand({ ...request, fluid }).values
      .find((value) => value.key === "performance.cop_cooling").value);
    rows.forEach((value, i) => same(value, expectedValues[i], request.fluid));
    const best = await page.$$eval('[data-row="performance.cop_cooling"] td', (all) => all.findIndex((one) => one.classList.contains("best")));
    assert.equal(best, rows.indexOf(Math.max(...rows)));
    await until(() => document.querySelectorAll(".chart .cycle-of").length === 3, "three cycles");
    await setField("compare add", "R717");
    await page.keyboard.press("Enter");
    await until(() => document.querySelectorAll('[data-row="performance.cop_cooling"] td').length === 4, "a fourth column");
  });

  test("a refrigerant for which the cycle is not possible says so", async () => {
    await open("", "compare");
    await setField("compare add", "Hydrogen");
    await page.keyboard.press("Enter");
    assert.ok((await until(() => document.querySelector(".refusal")?.textContent, "a refusal")).length > 20);
    expected = /status of (400|422)/;
  });

  test("one parameter varied", async () => {
    await open("", "vary");
    await until(() => document.querySelectorAll(".cases tbody tr").length === 21, "21 cases");
    const [at, value] = await page.$$eval(".cases tbody tr:nth-child(4) td", (all) => all.map((one) => Number(one.title)));
    const request = requestIn(page.url());
    request.condenser.temperature = `${at} °C`;
    same(value, runByCommand(request).values.find((one) => one.key === "performance.cop_cooling").value, "cop");
  });

  test("optimum of the high pressure", async () => {
    await open();
    await choose("request", "transcritical");
    await requestChosen("transcritical");
    await settled();
    await page.click("[data-view=vary]");
    const strong = await page.waitForSelector(".optimum strong", { timeout: 30_000 });
    const best = await strong.evaluate((one) => ({ at: Number(one.dataset.at), value: Number(one.dataset.value) }));
    const request = requestIn(page.url());
    const cop = (pressure) => {
      request.gas_cooler.pressure = `${pressure} bar`;
      return runByCommand(request).values.find((one) => one.key === "performance.cop_cooling").value;
    };
    same(best.value, cop(best.at), "optimum");
    for (const aside of [-0.5, 0.5]) assert.ok(cop(best.at + aside) < best.value, `${best.at} is better than ${best.at + aside}`);
  });

  test("two parameters, a cancelled study", async () => {
    await open("", "vary");
    await page.waitForSelector(".optimum strong");
    await choose("Second parameter", "evaporator.temperature");
    await until(() => document.querySelectorAll(".vary-charts svg.chart .line.series").length === 5, "five curves");
    await choose("picture", "map");
    await until(() => document.querySelectorAll(".vary-charts svg.chart .cell").length === 105, "a map of 105 fields");
    await setField("Parameter count", "5000");
    await page.keyboard.press("Tab");
    await until(() => /^\d+ of 25000/.test(document.querySelector("p.status").textContent), "progress");
    await page.click("[data-act=cancel]");
    const text = await until(() => /^Stopped after/.test(document.querySelector("p.status").textContent) && document.querySelector("p.status").textContent, "the end");
    assert.match(text, /of 25000 cases/);
    await new Promise((done) => setTimeout(done, 300));
    assert.equal(await page.$eval("p.status", (one) => one.textContent), text, "nothing comes after it");
  });
});

describe("lines", () => {
  test("pipes are picked, the second run calculates", async () => {
    await open("", "lines");
    await settled();
    const before = await figures();
    for (const [line, number] of [["suction_line", 4], ["discharge_line", 3], ["liquid_line", 3]]) {
      await page.click(`[data-line=${line}] input[value="${number}"]`);
      await settled();
    }
    const after = await figures();
    assert.notEqual(after["performance.cop_cooling"], before["performance.cop_cooling"]);
    const result = runByCommand(requestIn(page.url()));
    same(after["performance.cop_cooling"], result.values.find((one) => one.key === "performance.cop_cooling").value, "cop");
  });
});

describe("what goes wrong with a server", onlyWhere(!alone), () => {
  test("a worker that is killed is an answer, and the next one calculates", async () => {
    await open();
    const before = (await figures())["performance.cop_cooling"];
    for (const worker of served.workers()) process.kill(worker, "SIGSTOP");
    await setField("condenser.temperature", "44");
    await new Promise((done) => setTimeout(done, 700));
    for (const worker of served.workers()) process.kill(worker, "SIGKILL");
    assert.match(await until(() => document.querySelector(".refused")?.textContent, "a refusal"), /signal 9/);
    await setField("condenser.temperature", "45");
    await solvedOtherThan("performance.cop_cooling", before);
    await asCommand();
    expected = /status of 50\d/;
  });

  test("a slow answer does not come after a newer one; waiting is told", async () => {
    await open();
    await page.setRequestInterception(true);
    // All that is asked while 41 is typed: on a busy machine 4 is asked for, too.
    const held = [];
    let holding = true;
    page.on("request", (request) => {
      if (request.url().endsWith("/api/run") && holding) held.push(request);
      else request.continue();
    });
    await setField("condenser.temperature", "41");
    await until(() => document.querySelector(".status .waiting"), "waiting");
    holding = false;
    await setField("condenser.temperature", "50");
    await until(() => document.querySelector('[data-key="performance.condensing_temperature"]')?.dataset.value === "50", "an answer");
    for (const request of held) await request.continue().catch(() => {});
    await new Promise((done) => setTimeout(done, 300));
    const shown = await figures();
    assert.equal(shown["performance.condensing_temperature"], 50);
    assert.equal(await page.$(".waiting"), null);
  });

  test("a stopped server is told, and the page goes on when it is back", async () => {
    const { port } = served;
    await open();
    const before = await figures();
    await served.stop();
    await setField("condenser.temperature", "46");
    assert.match(await until(() => document.querySelector(".refused")?.textContent, "a refusal"), /does not answer/);
    assert.deepEqual(await figures(), before);
    served = await Served.start(port);
    await setField("condenser.temperature", "47");
    await solvedOtherThan("performance.cop_cooling", before["performance.cop_cooling"]);
    await asCommand();
    expected = /ERR_CONNECTION|net::|Failed to load/;
  });
});

describe("what goes wrong without a server", onlyWhere(alone), () => {
  // Keeps a worker from its work, for so many milliseconds or for good; it is in the middle of it when this returns.
  async function occupy(worker, milliseconds) {
    await worker.evaluate((milliseconds) => {
      setTimeout(() => { for (const end = milliseconds && Date.now() + milliseconds; !end || Date.now() < end;); }, 50);
    }, milliseconds);
    await new Promise((done) => setTimeout(done, 150));
  }

  test("a worker that hangs is ended, and the next one calculates", async () => {
    await open();
    await settled();
    const before = await figures();
    await occupy(page.workers()[0], 0);
    await setFieldAtOnce("condenser.temperature", "44");
    await until(() => document.querySelector(".status .waiting"), "waiting");
    const refusal = await page.waitForFunction(() => document.querySelector(".refused")?.textContent, { timeout: 45_000 });
    assert.match(await refusal.jsonValue(), /more than 30 s/);
    assert.deepEqual(await figures(), before);
    await setField("condenser.temperature", "45");
    await solvedOtherThan("performance.cop_cooling", before["performance.cop_cooling"]);
    await asCommand();
  }, { timeout: 120_000 });

  test("a worker that fails is replaced", async () => {
    await open();
    await settled();
    const before = (await figures())["performance.cop_cooling"];
    for (const worker of page.workers()) await worker.evaluate(() => { setTimeout(() => { throw new Error("lost"); }); });
    await new Promise((done) => setTimeout(done, 200));
    await setField("condenser.temperature", "45");
    await solvedOtherThan("performance.cop_cooling", before);
    await asCommand();
    expected = /lost/;
  });

  test("a slow answer does not come after a newer one; waiting is told", async () => {
    await open();
    await settled();
    for (const worker of page.workers()) await occupy(worker, 2_000);
    await setFieldAtOnce("condenser.temperature", "41");
    await until(() => document.querySelector(".status .waiting"), "waiting");
    await setFieldAtOnce("condenser.temperature", "50");
    await solvedOtherThan("performance.cop_cooling", 0);
    await until(() => document.querySelector('[data-key="performance.condensing_temperature"]')?.dataset.value === "50", "an answer");
    await new Promise((done) => setTimeout(done, 2_500));
    assert.equal((await figures())["performance.condensing_temperature"], 50);
  });

  test("a refrigerant whose file does not come is told, and calculated when it is there", async () => {
    const { port } = served;
    // Nothing is kept here.
    await page.evaluateOnNewDocument(() => { delete Navigator.prototype.serviceWorker; });
    await open();
    await settled();
    await served.stop();
    await setField("condenser.temperature", "46");
    await settled();
    await asCommand();
    await setField("fluid", "R32");
    await page.keyboard.press("Tab");
    assert.match(await until(() => document.querySelector(".refused")?.textContent, "a refusal"), /cannot be loaded.*R32\.FLD/);
    served = await Folder.start(port);
    await setField("condenser.temperature", "47");
    await solvedOtherThan("performance.cop_cooling", 0);
    await asCommand();
    expected = /ERR_CONNECTION|net::|Failed to load/;
  }, onlyWhere(place === "folder"));

  test("files are fetched once, and only those that are needed", async () => {
    served.asked.length = 0;
    await page.evaluateOnNewDocument(() => { delete Navigator.prototype.serviceWorker; });
    await open();
    await settled();
    const fluids = served.asked.filter((path) => path.endsWith(".FLD"));
    assert.deepEqual([...new Set(fluids)], ["/data/fluids/R134A.FLD"]);
    assert.equal(served.asked.filter((path) => path.endsWith(".wasm")).length, 1);
  }, onlyWhere(place === "folder"));

  test("the package in a browser", async () => {
    const pack = await Folder.start(0, "npm");
    try {
      await page.goto(`${pack.address}files.json`);
      const request = { request: "basic", units: "metric", fluid: "R290", evaporator: { temperature: -5, superheat: 5 },
        condenser: { temperature: 40, subcooling: 3 },
        compressor: { swept_volume: "10 m3/h", isentropic_efficiency: 0.7, volumetric_efficiency: 0.85 } };
      const [result, h] = await page.evaluate(async (request) => {
        const { run, Fluid } = await import("/browser.js");
        return [await run(request), [...(await new Fluid("R290").states({ T: [280, 300], p: 100 }, ["h"])).h]];
      }, request);
      const its = runByCommand(request);
      result.values.forEach(({ value, key }, i) => same(value, its.values[i].value, key));
      assert.ok(h[1] > h[0]);
      assert.deepEqual(foreign.filter((url) => !url.startsWith(pack.address)), []);
      foreign.length = 0;
      expected = /404/;  // the browser asks for an icon, too
    } finally {
      await pack.stop();
    }
  }, onlyWhere(place === "folder"));

  test("after the first visit no network is needed", async () => {
    const { port } = served;
    await open();
    await until(async () => (await navigator.serviceWorker.ready).active?.state === "activated", "everything kept");
    await served.stop();
    try {
      await page.goto("about:blank");
      await open();
      await asCommand();
      // Files that the first visit did not need.
      for (const fluid of ["R32", "R410A"]) {
        const before = (await figures())["performance.cop_cooling"];
        await setField("fluid", fluid);
        await page.keyboard.press("Tab");
        await solvedOtherThan("performance.cop_cooling", before);
        await asCommand();
      }
    } finally {
      served = await Folder.start(port);
    }
  }, onlyWhere(place === "folder"));
});

describe("for everybody", () => {
  for (const scheme of ["light", "dark"])
    for (const view of ["cycle", "compare", "vary", "properties", "lines"])
      test(`axe finds nothing: ${view}, ${scheme}`, async () => {
        await page.emulateMediaFeatures([{ name: "prefers-color-scheme", value: scheme }]);
        await open("", view);
        await settled();
        await page.$$eval("details", (all) => { for (const one of all) one.open = true; });
        const client = await page.createCDPSession();
        await client.send("Runtime.evaluate", { expression: axe });
        const found = await page.evaluate(() => globalThis.axe.run(document, { resultTypes: ["violations"] }));
        assert.deepEqual(found.violations.map((one) => `${one.id}: ${one.nodes.slice(0, 3).map((node) => node.html).join(" ")}`), []);
      });

  test("nothing is wider than a telephone", async () => {
    await page.setViewport({ width: 390, height: 844 });
    for (const view of ["cycle", "compare", "vary", "properties", "lines"]) {
      await open("", view);
      await settled();
      assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= window.innerWidth), view);
    }
  });

  test("small, and soon there", async () => {
    let bytes = 0;
    page.on("response", async (response) => { bytes += (await response.buffer().catch(() => Buffer.alloc(0))).length; });
    const start = performance.now();
    await open();
    const seconds = (performance.now() - start) / 1000;
    await settled();
    const pageOnly = await page.evaluate(() => performance.getEntriesByType("resource").filter((one) => !one.name.includes("/api/"))
      .reduce((sum, one) => sum + one.encodedBodySize, performance.getEntriesByType("navigation")[0].encodedBodySize));
    console.log(`page ${(pageOnly / 1024).toFixed(0)} KiB, with its first answers ${(bytes / 1024).toFixed(0)} KiB, solved after ${seconds.toFixed(2)} s`);
    if (!alone) assert.ok(pageOnly < 500 * 1024);
  });
});
