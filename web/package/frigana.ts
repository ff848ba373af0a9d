// Frigana for programs in JavaScript: named requests, charts, studies, and properties of refrigerants over arrays.
import { Refusal, type ConversionQuestion } from "../src/calculation";
import type { LocalCalculation } from "../src/engine/local";
import type { States } from "../src/engine/messages";
import { Loss } from "../src/engine/pool";
import type {
  Catalogue, Chart, ChartQuestion, Conversion, FluidFacts, FoundState, NamedRequest, Result, StateQuestion, StudyCase,
  StudyQuestion,
} from "../src/types";

export { Refusal };
export type {
  Catalogue, Chart, ChartQuestion, Conversion, ConversionQuestion, FluidFacts, FoundState, NamedRequest, Result, StateQuestion,
  StudyCase, StudyQuestion,
};

export interface Settings {
  /** Workers at most; each has an engine of its own. Without it one for each processor, 8 at most. */
  workers?: number;
  /** Seconds after which a calculation is given up and its worker ended; 30 without it. */
  patience?: number;
}

let settings: Settings = {};
let calculation: LocalCalculation | null = null;
let make: (settings: Settings) => LocalCalculation;

/** @internal */
export function madeBy(maker: (settings: Settings) => LocalCalculation): void { make = maker; }

function current(): LocalCalculation { return calculation ??= make(settings); }

/** Says how what follows is calculated; what is under way is given up. */
export function configure(wanted: Settings): void {
  close();
  settings = wanted;
}

/** Ends all workers. The next call starts them again. */
export function close(): void {
  calculation?.pool.close();
  calculation = null;
}

/** Runs a named request. A refused calculation is a result, too, with its code and message; a request that cannot be
 * read throws a Refusal. */
export function run(request: NamedRequest, signal?: AbortSignal): Promise<Result> { return current().run(request, signal); }

/** The charts of a result, of a fluid, or of vapor pressures. */
export function chart(question: ChartQuestion, signal?: AbortSignal): Promise<Chart[]> { return current().chart(question, signal); }

/** A state from any two of T, P, D, H, S, Q, each a text with its unit. */
export function state(question: StateQuestion, signal?: AbortSignal): Promise<FoundState> { return current().state(question, signal); }

/** A request in all its forms. */
export function convert(question: ConversionQuestion, signal?: AbortSignal): Promise<Conversion> { return current().convert(question, signal); }

/** Calculates the cases of a study on all workers and tells them in their order. */
export function study(question: StudyQuestion, heard: (one: StudyCase, total: number) => void, signal?: AbortSignal): Promise<void> {
  return current().study(question, heard, signal);
}

/** All requests with their parameters, options and limits, and all quantities with their units. */
export function requests(): Promise<Catalogue> { return current().requests(); }

/** All fluids and blends. */
export function fluids(): Promise<FluidFacts[]> { return current().fluids(); }

/** @internal What requests() and fluids() give, made by the module. */
export async function listOf(name: "requests" | "fluids"): Promise<string> {
  const [answer] = (await current().pool.ask({ tasks: [`${name}\n{}`] }) as { texts: string[] }).texts;
  return JSON.stringify(JSON.parse(answer!.slice(answer!.indexOf("\n") + 1)));
}

// Their numbers in the C interface.
const numbers = {
  T: 1, p: 2, d: 3, h: 4, s: 5, q: 6, v: 7, u: 8, cv: 9, cp: 10, w: 11, conductivity: 12, viscosity: 13, prandtl: 14,
  surface_tension: 15, phase: 16, d_liquid: 17, d_vapor: 18,
} as const;

/** K, kPa, kg/m3, kJ/kg, kJ/(kg K), vapor quality by mass, m3/kg, kJ/kg, kJ/(kg K), m/s, W/(m K), uPa s, N/m; the phase is 1
 * liquid, 2 vapor, 3 two phases or saturated, 4 supercritical. */
export type Property = keyof typeof numbers;

export type Numbers = number | readonly number[] | Float64Array;

/** Two of them; a single number stands for all states. */
export type Given = Partial<Record<"T" | "p" | "d" | "h" | "s" | "q", Numbers>>;

/** A column for each property, not a number where a state has none; codes other than 0 are errors, or if negative
 * warnings, and texts say them. */
export type StateTable<P extends Property> = Record<P, Float64Array> & { codes: Int32Array; texts: string[] };

export interface FluidDescription {
  /** A name, or components with their fractions. */
  fluid: string | Record<string, number>;
  fractions?: "mass" | "mole";
  reference_state?: string;
  reference_of?: string;
}

const isNumber = (value: Numbers): value is number => typeof value === "number";

function column(values: Numbers, count: number, name: string): Float64Array {
  if (isNumber(values)) return new Float64Array(count).fill(values);
  if (values.length !== count) throw new RangeError(`${name} has ${values.length} values in place of ${count}`);
  return Float64Array.from(values);
}

/** A refrigerant or a blend, whose properties are asked for over arrays. */
export class Fluid {
  private readonly description: string;

  /** Nothing is read before the first question. */
  constructor(description: string | FluidDescription) {
    this.description = typeof description === "string" ? description : JSON.stringify(description);
  }

  /** Name, components, molar mass, critical point, limits. */
  async facts(): Promise<Record<string, unknown>> {
    const answer = await this.ask({ facts: this.description }) as { facts: string };
    return JSON.parse(answer.facts) as Record<string, unknown>;
  }

  /** The states that have two given properties. */
  async states<P extends Property>(given: Given, wanted: readonly P[]): Promise<StateTable<P>> {
    const entries = Object.entries(given) as [keyof Given, Numbers][];
    if (entries.length !== 2) throw new RangeError("a state has two given properties");
    const [[first, firstValues], [second, secondValues]] = entries as [[string, Numbers], [string, Numbers]];
    const list = [firstValues, secondValues].find((values) => !isNumber(values));
    const count = list === undefined ? 1 : (list as ArrayLike<number>).length;
    for (const name of wanted) if (!(name in numbers)) throw new RangeError(`there is no property ${String(name)}`);
    const answer = await this.ask({
      fluid: this.description, given: [first.toUpperCase(), second.toUpperCase()],
      values: [column(firstValues, count, first), column(secondValues, count, second)],
      properties: Int32Array.from(wanted, (name) => numbers[name]),
    }) as States;
    const columns = wanted.map((name, i) => [name, answer.results.slice(i * count, (i + 1) * count)] as const);
    return { ...Object.fromEntries(columns), codes: answer.codes, texts: answer.texts } as StateTable<P>;
  }

  /** Bubble and dew points at temperatures or pressures. */
  async saturation<P extends Property>(given: { T: Numbers } | { p: Numbers }, wanted: readonly P[]): Promise<{ liquid: StateTable<P>; vapor: StateTable<P> }> {
    const [liquid, vapor] = await Promise.all([0, 1].map((q) => this.states({ ...given, q }, wanted)));
    return { liquid: liquid!, vapor: vapor! };
  }

  private async ask(asked: Parameters<LocalCalculation["pool"]["ask"]>[0]): Promise<unknown> {
    const answer = await current().pool.ask(asked).catch((why: unknown) => {
      throw why instanceof Loss ? new Refusal(why.kind.replace(" ", "_"), why.message) : why;
    });
    if ("refused" in answer) throw new Refusal("refused", answer.refused);
    return answer;
  }
}
