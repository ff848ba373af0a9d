// The one door to the calculation. Whoever answers it, a server or the library itself, the page is the same.
import type {
  Catalogue, Chart, ChartQuestion, Conversion, FluidFacts, FoundState, NamedRequest, Result, StateQuestion, StudyCase,
  StudyQuestion, UnitSystem,
} from "./types";

// Why there is no answer, in words for people.
export class Refusal extends Error {
  constructor(readonly code: string, text: string) { super(text); }
}

export type ConversionQuestion =
  ({ template: string } | { toml: string } | { fi1: string } | { request: NamedRequest })
  & { units?: UnitSystem; result?: boolean };

// Everything throws Refusal, or the AbortError of the signal.
export interface Calculation {
  requests(): Promise<Catalogue>;
  fluids(): Promise<FluidFacts[]>;
  // A refused calculation is a result, too, with its code and message.
  run(request: NamedRequest, signal?: AbortSignal): Promise<Result>;
  chart(question: ChartQuestion, signal?: AbortSignal): Promise<Chart[]>;
  state(question: StateQuestion, signal?: AbortSignal): Promise<FoundState>;
  convert(question: ConversionQuestion, signal?: AbortSignal): Promise<Conversion>;
  // Calls `heard` for each case in order; `total` is known from the beginning.
  study(question: StudyQuestion, heard: (one: StudyCase, total: number) => void, signal?: AbortSignal): Promise<void>;
}
