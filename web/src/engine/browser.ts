// The module in a browser: beside the page, from any web server, or inside of it.
import { LocalCalculation, type Lists } from "./local";
import type { Data, Start } from "./messages";
import { Pool, type MakeThread } from "./pool";

const patience = 30;  // with one question, as that of the server [s]
const mostWorkers = 8;

// What stands beside the page, or in it.
interface Parts {
  worker(): Worker;
  module(): Promise<WebAssembly.Module>;
  data(): Promise<Data>;
  lists: Lists;
}

function makeThread(parts: Parts): MakeThread {
  return (said, failed) => {
    const worker = parts.worker();
    worker.addEventListener("message", (event) => said(event.data));
    worker.addEventListener("error", (event) => {
      event.preventDefault();
      failed(event.message || "worker.js");
    });
    return { post: (message) => worker.postMessage(message), end: () => worker.terminate(), busy: () => {} };
  };
}

// A promise that is made when it is first asked for, and again where it was not kept.
function once<T>(make: () => Promise<T>): () => Promise<T> {
  let made: Promise<T> | null = null;
  return () => made ??= make().catch((why: unknown) => {
    made = null;
    throw why;
  });
}

async function json<T>(address: string): Promise<T> {
  const response = await fetch(address);
  if (!response.ok) throw new Error(`${address}: ${response.status}`);
  return await response.json() as T;
}

// Files beside a page or module: frigana.wasm, files.json, requests.json, fluids.json, worker.js, data/.
export function partsBeside(folder: URL, worker: () => Worker): Parts {
  const at = (name: string) => new URL(name, folder).href;
  return {
    worker,
    async module() {
      const response = fetch(at("frigana.wasm"));
      // A server that does not know the type of the file gives its bytes all the same.
      const known = (await response).headers.get("Content-Type")?.startsWith("application/wasm");
      if (!(await response).ok) throw new Error(`frigana.wasm: ${(await response).status}`);
      return known ? WebAssembly.compileStreaming(response) : WebAssembly.compile(await (await response).arrayBuffer());
    },
    data: async () => ({ files: await json(at("files.json")), folder: at("data/") }),
    lists: { requests: () => json(at("requests.json")), fluids: () => json(at("fluids.json")) },
  };
}

// Everything in the page itself, as elements of texts in base 64; those that end with .gz are compressed.
function partsInside(): Parts {
  const bytes = async (name: string) => {
    const text = document.getElementById(name)!.textContent!;
    const packed = Uint8Array.from(atob(text), (character) => character.charCodeAt(0));
    const unpacked = new Blob([packed]).stream().pipeThrough(new DecompressionStream("gzip"));
    return new Uint8Array(await new Response(unpacked).arrayBuffer());
  };
  const read = async <T>(name: string) => JSON.parse(new TextDecoder().decode(await bytes(name))) as T;
  const script = URL.createObjectURL(new Blob([document.getElementById("worker.js")!.textContent!], { type: "text/javascript" }));
  return {
    worker: () => new Worker(script),
    module: async () => WebAssembly.compile(await bytes("frigana.wasm.gz")),
    data: async () => ({ files: await read("files.json.gz"), archive: await bytes("data.gz") }),
    lists: { requests: () => read("requests.json.gz"), fluids: () => read("fluids.json.gz") },
  };
}

//   workers, patience [s]  where they are given
export function calculationWith(parts: Parts, given: { workers?: number; patience?: number } = {}): LocalCalculation {
  const start = once(async (): Promise<Start> => {
    const [module, data] = await Promise.all([parts.module(), parts.data()]);
    return { start: { module, data } };
  });
  // While the first worker comes.
  start().catch(() => {});
  const settings = {
    workers: given.workers ?? Math.max(1, Math.min(mostWorkers, navigator.hardwareConcurrency || 2)),
    patience: 1000 * (given.patience ?? patience),
  };
  return new LocalCalculation(new Pool(makeThread(parts), start, settings), parts.lists);
}

// The calculation of a page that says where it is: "beside" or "inside" of it.
export function ownCalculation(where: string): LocalCalculation {
  if (where === "inside") return calculationWith(partsInside());
  const folder = new URL(".", document.baseURI);
  return calculationWith(partsBeside(folder, () => new Worker(new URL("worker.js", folder))));
}

// From the first visit on the page needs no network: the files are fetched and kept once it has answered.
export function keepOffline(): void {
  if (!("serviceWorker" in navigator) || !window.isSecureContext) return;
  navigator.serviceWorker.register("service.js").catch(() => { /* then it needs the network */ });
}
