// The pool of workers and the studies on it, with workers that do as they are told.
import assert from "node:assert/strict";
import { dirname } from "node:path";
import { test } from "node:test";
import { fileURLToPath } from "node:url";
import { build } from "esbuild";

const { outputFiles } = await build({
  stdin: { contents: `export * from "./src/engine/local"; export * from "./src/engine/pool";`, resolveDir: dirname(dirname(fileURLToPath(import.meta.url))) },
  bundle: true, format: "esm", write: false,
});
const { LocalCalculation, Loss, Pool } = await import(`data:text/javascript;base64,${Buffer.from(outputFiles[0].text).toString("base64")}`);

// Workers whose answers `answer` gives: texts, or a word of how they end: "dies", "hangs", "unreachable".
function poolOf(answer, { workers = 2, patience = 1000, start = async () => ({ start: {} }) } = {}) {
  const told = { made: 0, ended: 0, tasks: [] };
  const makeThread = (said, failed) => {
    ++told.made;
    let gone = false;
    const later = (act) => setTimeout(() => { if (!gone) act(); }, 1);
    return {
      post(message) {
        if ("start" in message) return later(() => said({ ready: true }));
        told.tasks.push(...message.tasks);
        const answers = message.tasks.map(answer);
        if (answers.includes("dies")) later(() => failed("out of its wits"));
        else if (answers.includes("unreachable")) later(() => said({ failed: "R32.FLD", unreachable: true }));
        else if (!answers.includes("hangs")) later(() => said({ id: message.id, texts: answers }));
      },
      end() {
        gone = true;
        ++told.ended;
      },
      busy() {},
    };
  };
  const pool = new Pool(makeThread, start, { workers, patience });
  return { pool, told, calculation: new LocalCalculation(pool, {}) };
}

const studyOf = (cases, special) => (task) => {
  const [word, number, end, text] = task.split("\n");
  if (word === "study") return `200\n{"cases":${cases}}`;
  if (word === "lost") return `200\n${JSON.stringify({ case: Number(number), inputs: [], error: { code: end, text } })}`;
  return special(Number(number)) ?? `200\n${JSON.stringify({ case: Number(number), inputs: [], values: [Number(number)] })}`;
};

for (const [end, code, words] of [["dies", "died", /ended unexpectedly: out of its wits/], ["hangs", "too slow", /more than 0.1 s/]])
  test(`a case of a study that ${end} is the only one without values`, async () => {
    const { calculation, told, pool } = poolOf(studyOf(50, (number) => number === 13 ? end : null), { patience: 100 });
    const heard = [];
    await calculation.study({}, (one, total) => heard.push([one, total]));
    assert.deepEqual(heard.map(([one]) => one.case), Array.from({ length: 50 }, (_, i) => i));
    for (const [one, total] of heard) {
      assert.equal(total, 50);
      if (one.case !== 13) assert.deepEqual(one.values, [one.case]);
    }
    assert.equal(heard[13][0].error.code, code);
    assert.match(heard[13][0].error.text, words);
    assert.ok(told.ended === 2, "once with its neighbours, once alone");
    pool.close();
  });

test("a file that does not come ends a study", async () => {
  const { calculation, pool } = poolOf(studyOf(50, (number) => number === 13 ? "unreachable" : null));
  const heard = [];
  await assert.rejects(calculation.study({}, (one) => heard.push(one.case)), { code: "unreachable", message: /R32\.FLD/ });
  assert.deepEqual(heard, Array.from({ length: 8 }, (_, i) => i), "those before it, in order");
  pool.close();
});

test("people come before studies", async () => {
  const { pool, told } = poolOf((task) => `200\n"${task}"`, { workers: 1 });
  const all = [
    ...["a", "b", "c"].map((task) => pool.ask({ tasks: [task] }, "study")), pool.ask({ tasks: ["person"] }),
  ];
  await Promise.all(all);
  assert.deepEqual(told.tasks, ["person", "a", "b", "c"]);
  pool.close();
});

test("a study uses all workers, a person the one that is there", async () => {
  const { pool, told } = poolOf((task) => `200\n"${task}"`, { workers: 4 });
  for (let i = 0; i < 20; ++i) await pool.ask({ tasks: ["one"] });
  assert.equal(told.made, 1);
  await Promise.all(Array.from({ length: 100 }, () => pool.ask({ tasks: ["case"] }, "study")));
  assert.equal(told.made, 4);
  pool.close();
});

test("what is given up is not sent, and nobody hears of what is under way", async () => {
  const { pool, told } = poolOf((task) => task === "slow" ? "hangs" : "200\n1", { workers: 1, patience: 100 });
  const control = new AbortController();
  const slow = pool.ask({ tasks: ["slow"] }, "person", control.signal);
  const waiting = pool.ask({ tasks: ["waiting"] }, "person", control.signal);
  const other = pool.ask({ tasks: ["other"] });
  await new Promise((done) => setTimeout(done, 20));
  control.abort();
  await assert.rejects(slow, { name: "AbortError" });
  await assert.rejects(waiting, { name: "AbortError" });
  assert.deepEqual((await other).texts, ["200\n1"]);
  assert.deepEqual(told.tasks, ["slow", "other"]);
  pool.close();
});

test("a module that does not come is told to all who wait, and asked for again", async () => {
  let there = false;
  const { pool, calculation } = poolOf(() => "200\n{}", { start: async () => { if (!there) throw new Error("404"); return { start: {} }; } });
  const all = await Promise.allSettled([calculation.run({}), calculation.run({})]);
  for (const one of all) assert.equal(one.reason.code, "unreachable");
  there = true;
  assert.deepEqual(await calculation.run({}), {});
  pool.close();
});

test("a pool that is closed ends what waits", async () => {
  const { pool, told } = poolOf(() => "hangs", { workers: 1 });
  const all = [pool.ask({ tasks: ["a"] }), pool.ask({ tasks: ["b"] })];
  await new Promise((done) => setTimeout(done, 20));
  pool.close();
  for (const one of all) await assert.rejects(one, Loss);
  assert.equal(told.ended, told.made);
});
