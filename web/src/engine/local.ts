// The calculation without a server: the module in workers of this browser, or of node.
import { Refusal, type Calculation, type ConversionQuestion } from "../calculation";
import type {
  Catalogue, Chart, ChartQuestion, Conversion, FluidFacts, FoundState, NamedRequest, Result, StateQuestion, StudyCase,
  StudyQuestion,
} from "../types";
import { say } from "../words";
import { Loss, Pool, type Urgency } from "./pool";

// Cases that go to a worker together, so that it need not wait between them.
const casesTogether = 8;

function told(why: unknown): unknown {
  if (!(why instanceof Loss)) return why;
  if (why.kind === "unreachable") return new Refusal("unreachable", say("module.unreachable", { text: why.message }));
  if (why.kind === "too slow") return new Refusal("too_slow", say("module.slow", { seconds: why.message }));
  return new Refusal("died", say("module.died", { text: why.message }));
}

export interface Lists {
  requests(): Promise<Catalogue>;
  fluids(): Promise<{ fluids: FluidFacts[] }>;
}

function unreachable(why: unknown): never { throw told(new Loss("unreachable", String(why))); }

interface Complaint { error: { code: string; text: string } }

// Behind the status and its line end.
const bodyOf = (answer: string) => answer.slice(answer.indexOf("\n") + 1);

export class LocalCalculation implements Calculation {
  // The lists are made beforehand: for that of the fluids all files would have to be read.
  constructor(readonly pool: Pool, private lists: Lists) {}

  requests() { return this.lists.requests().catch(unreachable); }

  async fluids() { return (await this.lists.fluids().catch(unreachable)).fluids; }

  run(request: NamedRequest, signal?: AbortSignal) { return this.task<Result>("run", request, signal); }

  async chart(question: ChartQuestion, signal?: AbortSignal) {
    return (await this.task<{ charts: Chart[] }>("chart", question, signal)).charts;
  }

  state(question: StateQuestion, signal?: AbortSignal) { return this.task<FoundState>("state", question, signal); }

  convert(question: ConversionQuestion, signal?: AbortSignal) { return this.task<Conversion>("convert", question, signal); }

  async study(question: StudyQuestion, heard: (one: StudyCase, total: number) => void, signal?: AbortSignal) {
    const description = JSON.stringify(question);
    const { cases } = await this.task<{ cases: number }>("study", question, signal);
    // As many are under way as keep the workers busy; they are heard in order.
    const under: Promise<StudyCase[]>[] = [];
    const most = 2 * this.pool.size + 1;
    let next = 0;
    const send = () => {
      const numbers: number[] = [];
      while (numbers.length < casesTogether && next < cases) numbers.push(next++);
      const rows = this.rows(numbers, description, signal);
      rows.catch(() => {});  // heard when its turn comes
      under.push(rows);
    };
    while (next < cases || under.length > 0) {
      while (under.length < most && next < cases) send();
      for (const row of await under.shift()!) {
        signal?.throwIfAborted();
        heard(row, cases);
      }
    }
  }

  // A case that ends its worker is the only one without values: those that went with it are calculated one by one.
  private async rows(numbers: number[], description: string, signal?: AbortSignal): Promise<StudyCase[]> {
    try {
      const texts = await this.ask(numbers.map((number) => `row\n${number}\n${description}`), "study", signal);
      return texts.map((text) => JSON.parse(bodyOf(text)) as StudyCase);
    } catch (why) {
      if (!(why instanceof Loss) || why.kind === "unreachable") throw told(why);
      if (numbers.length > 1)
        return (await Promise.all(numbers.map((number) => this.rows([number], description, signal)))).flat();
      const reason = (told(why) as Refusal).message.replaceAll("\n", " ");
      const [text] = await this.ask([`lost\n${numbers[0]}\n${why.kind}\n${reason}\n${description}`], "study", signal)
        .catch((again: unknown) => { throw told(again); });
      return [JSON.parse(bodyOf(text!)) as StudyCase];
    }
  }

  private async ask(tasks: string[], urgency: Urgency, signal?: AbortSignal): Promise<string[]> {
    return (await this.pool.ask({ tasks }, urgency, signal) as { texts: string[] }).texts;
  }

  private async task<T>(word: string, about: unknown = {}, signal?: AbortSignal): Promise<T> {
    const [text] = await this.ask([`${word}\n${JSON.stringify(about)}`], "person", signal)
      .catch((why: unknown) => { throw told(why); });
    const answer = JSON.parse(bodyOf(text!)) as T | Complaint;
    if (typeof answer === "object" && answer !== null && "error" in answer)
      throw new Refusal(answer.error.code, answer.error.text);
    return answer as T;
  }
}
