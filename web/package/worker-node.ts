// The worker of node.
import { readFileSync } from "node:fs";
import { parentPort } from "node:worker_threads";
import loadModule from "frigana-page.js";
import { Unreachable, type LoadModule } from "../src/engine/host";
import { serve } from "../src/engine/serve";

function readFile(path: string): Uint8Array {
  try {
    return readFileSync(path);
  } catch (why) {
    throw new Unreachable((why as Error).message);
  }
}

serve(loadModule as LoadModule, readFile, (heard) => parentPort!.on("message", heard), (said) => parentPort!.postMessage(said));
