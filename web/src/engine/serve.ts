// The life of a worker: it is given the module and its data, then one question after the other.
import { Engine, Unreachable, type LoadModule } from "./host";
import type { Question, Said, Start } from "./messages";

export function serve(load: LoadModule, readFile: (address: string) => Uint8Array,
  hear: (heard: (message: Start | Question) => void) => void, say: (answer: Said) => void): void {
  let engine: Engine | null = null;
  const failed = (failure: unknown) => say({
    failed: failure instanceof Error ? failure.message : String(failure), unreachable: failure instanceof Unreachable,
  });
  hear((message) => {
    if ("start" in message) {
      Engine.open(load, message.start.module, message.start.data, readFile).then((opened) => {
        engine = opened;
        say({ ready: true });
      }, failed);
      return;
    }
    try {
      say(engine!.answer(message));
    } catch (failure) {
      failed(failure);
    }
  });
}
