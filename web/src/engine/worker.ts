// The worker of a browser.
import loadModule from "frigana-page.js";
import { Unreachable, type LoadModule } from "./host";
import type { Question, Start } from "./messages";
import { serve } from "./serve";

// The module waits for its files, so they are read while it waits.
function readFile(address: string): Uint8Array {
  const request = new XMLHttpRequest();
  request.open("GET", address, false);
  request.responseType = "arraybuffer";
  try {
    request.send();
  } catch {
    throw new Unreachable(address);
  }
  if (request.status !== 200) throw new Unreachable(`${address}: ${request.status}`);
  return new Uint8Array(request.response as ArrayBuffer);
}

serve(loadModule as LoadModule, readFile,
  (heard) => self.addEventListener("message", (event: MessageEvent<Start | Question>) => heard(event.data)),
  (said) => self.postMessage(said));
