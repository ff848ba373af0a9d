// The calculation behind a server.
import { Refusal, type Calculation, type ConversionQuestion } from "./calculation";
import type {
  Catalogue, Chart, ChartQuestion, Conversion, FluidFacts, FoundState, NamedRequest, Result, StateQuestion, StudyCase,
  StudyQuestion,
} from "./types";
import { say } from "./words";

async function ask(path: string, body?: unknown, signal?: AbortSignal): Promise<Response> {
  try {
    return body === undefined
      ? await fetch(path, { signal })
      : await fetch(path, {
        method: "POST", body: JSON.stringify(body), headers: { "Content-Type": "application/json" }, signal,
      });
  } catch (failure) {
    if (failure instanceof DOMException && failure.name === "AbortError") throw failure;
    throw new Refusal("unreachable", say("server.unreachable"));
  }
}

interface Complaint { error: { code: string; text: string } }

function refusalOf(answer: Complaint): Refusal {
  return new Refusal(answer.error.code, answer.error.text);
}

async function json<T>(path: string, body?: unknown, signal?: AbortSignal): Promise<T> {
  const response = await ask(path, body, signal);
  const answer = await response.json() as T | Complaint;
  if (typeof answer === "object" && answer !== null && "error" in answer) throw refusalOf(answer);
  return answer as T;
}

// The lines of a text that comes piece by piece.
async function* lines(response: Response): AsyncGenerator<string> {
  const reader = response.body!.pipeThrough(new TextDecoderStream()).getReader();
  let rest = "";
  for (;;) {
    const { done, value } = await reader.read();
    if (done) break;
    const pieces = (rest + value).split("\n");
    rest = pieces.pop()!;
    yield* pieces;
  }
  if (rest !== "") yield rest;
}

export class ServerCalculation implements Calculation {
  requests() { return json<Catalogue>("/api/requests"); }

  async fluids() { return (await json<{ fluids: FluidFacts[] }>("/api/fluids")).fluids; }

  run(request: NamedRequest, signal?: AbortSignal) { return json<Result>("/api/run", request, signal); }

  async chart(question: ChartQuestion, signal?: AbortSignal) {
    return (await json<{ charts: Chart[] }>("/api/chart", question, signal)).charts;
  }

  state(question: StateQuestion, signal?: AbortSignal) { return json<FoundState>("/api/state", question, signal); }

  convert(question: ConversionQuestion, signal?: AbortSignal) {
    return json<Conversion>("/api/convert", question, signal);
  }

  async study(question: StudyQuestion, heard: (one: StudyCase, total: number) => void, signal?: AbortSignal) {
    const response = await ask("/api/study", question, signal);
    if (!response.ok) throw refusalOf(await response.json() as Complaint);
    let total = 0, done = false, reason = say("server.unreachable");
    for await (const line of lines(response)) {
      const one = JSON.parse(line) as Record<string, unknown>;
      if ("case" in one) heard(one as unknown as StudyCase, total);
      else if ("done" in one) {
        done = one.done as boolean;
        reason = (one.reason as string | undefined) ?? reason;
      } else if ("cases" in one) total = one.cases as number;
    }
    if (!done) throw new Refusal("stopped", reason);
  }
}
