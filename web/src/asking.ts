// Questions that follow changes: a short rest before each, and only the answer to the last one counts.
import { Refusal } from "./calculation";

const rest = 60;  // [ms]; typing goes on, the eye does not notice

// How many questions are on their way, which the document tells to styles and helpers.
let open = 0;
function count(change: number): void {
  open += change;
  document.documentElement.toggleAttribute("data-busy", open > 0);
}

export class Asking {
  private timer = 0;
  private control: AbortController | null = null;

  // Asks after a rest. Whatever was asked before is given up.
  soon(ask: (signal: AbortSignal) => Promise<void>, failed: (why: Refusal) => void): void {
    const control = this.begin();
    this.timer = window.setTimeout(() => void this.go(control, ask, failed), rest);
  }

  // Asks at once.
  now(ask: (signal: AbortSignal) => Promise<void>, failed: (why: Refusal) => void): void {
    void this.go(this.begin(), ask, failed);
  }

  stop(): void {
    window.clearTimeout(this.timer);
    if (!this.control) return;
    this.control.abort();
    this.control = null;
    count(-1);
  }

  private begin(): AbortController {
    this.stop();
    count(1);
    return this.control = new AbortController();
  }

  private async go(control: AbortController, ask: (signal: AbortSignal) => Promise<void>, failed: (why: Refusal) => void): Promise<void> {
    try {
      await ask(control.signal);
    } catch (failure) {
      if (!control.signal.aborted) failed(failure instanceof Refusal ? failure : new Refusal("page", String(failure)));
    }
    if (this.control === control) {
      this.control = null;
      count(-1);
    }
  }
}
