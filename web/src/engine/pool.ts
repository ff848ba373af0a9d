// Calculations in workers of the browser or of node, one engine in each: a worker that takes too long or fails is ended,
// and the next question gets a new one.
import type { Answer, Asked, Question, Said, Start } from "./messages";

// A worker as the pool sees it.
export interface Thread {
  post(message: Start | Question): void;
  end(): void;
  // While it has nothing to do, it keeps no program from its end.
  busy(yes: boolean): void;
}
export type MakeThread = (said: (message: Said) => void, failed: (reason: string) => void) => Thread;

export type LossKind = "unreachable" | "died" | "too slow";
export class Loss extends Error {
  constructor(readonly kind: LossKind, text: string) { super(text); }
}

export type Urgency = "person" | "study";

export interface Settings {
  workers: number;
  patience: number;  // with one question [ms]
}

// Someone waits this long for the workers that there are before another one is started [ms].
const waitForWorkers = 100;

interface Job {
  asked: Asked;
  done(answer: Answer): void;
  failed(why: unknown): void;
}

class Place {
  thread: Thread | null = null;
  ready = false;
  job: Job | null = null;
  timer: ReturnType<typeof setTimeout> | undefined;
}

export class Pool {
  private places: Place[];
  private queues: Record<Urgency, Job[]> = { person: [], study: [] };
  private count = 0;
  private growing: ReturnType<typeof setTimeout> | undefined;

  // `start` is what each worker is given first; it is made once.
  constructor(private makeThread: MakeThread, private start: () => Promise<Start>, private settings: Settings) {
    this.places = Array.from({ length: settings.workers }, () => new Place());
  }

  get size(): number { return this.places.length; }

  // Throws Loss, or the AbortError of the signal. What is in work when it is given up goes on; nobody hears of it.
  ask(asked: Asked, urgency: Urgency = "person", signal?: AbortSignal): Promise<Answer> {
    return new Promise((done, failed) => {
      const job: Job = { asked, done, failed };
      if (signal?.aborted) return failed(signal.reason);
      signal?.addEventListener("abort", () => {
        const queue = this.queues[urgency];
        const at = queue.indexOf(job);
        if (at >= 0) queue.splice(at, 1);
        failed(signal.reason);
      }, { once: true });
      this.queues[urgency].push(job);
      this.go();
    });
  }

  close(): void {
    clearTimeout(this.growing);
    const closed = new Loss("died", "closed");
    for (const queue of Object.values(this.queues)) for (const job of queue.splice(0)) job.failed(closed);
    for (const place of this.places) this.lose(place, closed);
  }

  private go(): void {
    for (;;) {
      const { person, study } = this.queues;
      if (person.length + study.length === 0) return;
      // The first place has been used last as a rule, and holds its fluid.
      const free = this.places.find((place) => place.ready && !place.job);
      if (!free) return this.grow(person.length === 0);
      this.give(free, (person.shift() ?? study.shift())!);
    }
  }

  // One worker is started at a time for people, since most of what they ask is short; all of them for a study.
  private grow(forStudy: boolean): void {
    const empty = this.places.find((place) => !place.thread);
    if (!empty) return;
    const any = this.places.some((place) => place.thread);
    const starting = this.places.some((place) => place.thread && !place.ready);
    if (!any) return this.open(empty);
    if (starting) return;
    if (forStudy) return this.open(empty);
    this.growing ??= setTimeout(() => {
      this.growing = undefined;
      const waiting = this.queues.person.length > 0 && !this.places.some((place) => place.ready && !place.job);
      const still = this.places.find((place) => !place.thread);
      if (waiting && still) this.open(still);
    }, waitForWorkers);
  }

  private open(place: Place): void {
    const thread = this.makeThread((said) => {
      if (place.thread === thread) this.hear(place, said);
    }, (reason) => {
      if (place.thread === thread) this.lose(place, new Loss(place.ready ? "died" : "unreachable", reason));
    });
    place.thread = thread;
    place.ready = false;
    thread.busy(true);
    this.start().then((start) => { if (place.thread === thread) thread.post(start); },
      (why: unknown) => { if (place.thread === thread) this.lose(place, new Loss("unreachable", String(why))); });
  }

  private give(place: Place, job: Job): void {
    place.job = job;
    place.timer = setTimeout(() => this.lose(place, new Loss("too slow", String(this.settings.patience / 1000))), this.settings.patience);
    place.thread!.busy(true);
    place.thread!.post({ ...job.asked, id: ++this.count } as Question);
  }

  private hear(place: Place, said: Said): void {
    if ("failed" in said) return this.lose(place, new Loss(said.unreachable ? "unreachable" : "died", said.failed));
    if ("ready" in said) {
      place.ready = true;
      place.thread!.busy(false);
    } else {
      clearTimeout(place.timer);
      const { job } = place;
      place.job = null;
      place.thread!.busy(false);
      job?.done(said);
    }
    this.go();
  }

  // Ends a worker. Whoever waits for it hears why; where it never came to work, everybody who waits does.
  private lose(place: Place, why: Loss): void {
    const { thread, ready, job } = place;
    if (!thread) return;
    clearTimeout(place.timer);
    place.thread = null;
    place.job = null;
    place.ready = false;
    thread.end();
    job?.failed(why);
    if (!ready && !this.places.some((one) => one.thread))
      for (const queue of Object.values(this.queues)) for (const waiting of queue.splice(0)) waiting.failed(why);
    this.go();
  }
}
