// Questions that follow changes: a short rest before each, and only the answer to the last one counts.
import { Refusal } from "./calculation";

const rest = 60;  // [ms]; typing goes on, the eye does not notice

export class Asking {
  private timer = 0;
  private running: AbortController | null = null;

  // Asks after a rest. Whatever was asked before is given up.
  soon(ask: (signal: AbortSignal) => Promise<void>, failed: (why: Refusal) => void): void {
    this.stop();
    this.timer = window.setTimeout(() => void this.now(ask, failed), rest);
  }

  async now(ask: (signal: AbortSignal) => Promise<void>, failed: (why: Refusal) => void): Promise<void> {
    this.stop();
    const control = new AbortController();
    this.running = control;
    try {
      await ask(control.signal);
    } catch (failure) {
      if (control.signal.aborted) return;
      failed(failure instanceof Refusal ? failure : new Refusal("page", String(failure)));
    } finally {
      if (this.running === control) this.running = null;
    }
  }

  stop(): void {
    window.clearTimeout(this.timer);
    this.running?.abort();
    this.running = null;
  }
}
