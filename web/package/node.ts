// Under node: workers are its threads, files those of the package.
import { readFile } from "node:fs/promises";
import { availableParallelism } from "node:os";
import { fileURLToPath } from "node:url";
import { Worker } from "node:worker_threads";
import { LocalCalculation } from "../src/engine/local";
import type { Data, Said } from "../src/engine/messages";
import { Pool, type MakeThread } from "../src/engine/pool";
import { madeBy, type Settings } from "./frigana";

export * from "./frigana";

const beside = (name: string) => new URL(name, import.meta.url);
const json = async <T>(name: string) => JSON.parse(await readFile(beside(name), "utf8")) as T;

const makeThread: MakeThread = (said, failed) => {
  const worker = new Worker(beside("worker-node.js"));
  worker.unref();
  worker.on("message", (message: Said) => said(message));
  worker.on("error", (why) => failed(why.message));
  worker.on("exit", (code) => failed(`exit ${code}`));
  return {
    post: (message) => worker.postMessage(message),
    end: () => void worker.terminate(),
    busy: (yes) => yes ? worker.ref() : worker.unref(),
  };
};

async function start() {
  const [module, files] = await Promise.all([
    readFile(beside("frigana.wasm")).then((bytes) => WebAssembly.compile(new Uint8Array(bytes))), json<Data["files"]>("files.json"),
  ]);
  return { start: { module, data: { files, folder: fileURLToPath(beside("data/")) } } };
}

madeBy(({ workers, patience }: Settings) => {
  let started: ReturnType<typeof start> | null = null;
  const pool = new Pool(makeThread, () => started ??= start(), {
    workers: workers ?? Math.min(8, availableParallelism()), patience: 1000 * (patience ?? 30),
  });
  return new LocalCalculation(pool, { requests: () => json("requests.json"), fluids: () => json("fluids.json") });
});
