// What the page shows, as one value that the address can hold: a link is a saved case.
import { flattened, type Flat, type Scalar } from "./request";
import type { NamedRequest, UnitSystem } from "./types";

export const views = ["cycle", "compare", "vary", "properties", "lines"] as const;
export type View = (typeof views)[number];

// The requests that the page holds at once; comparing and varying take that of the cycle.
export type Place = "cycle" | "properties" | "lines";
export function placeOf(view: View): Place {
  return view === "properties" || view === "lines" ? view : "cycle";
}

export interface Varied { key: string; from: string; to: string; count: string }

export interface State {
  view: View;
  units: UnitSystem;
  requests: Readonly<Record<Place, Flat>>;
  fluids: readonly string[];  // that are compared
  vary: { first: Varied; second: Varied; results: readonly string[]; map: boolean };
}

export function nameOf(state: State, place: Place): string { return String(state.requests[place].get("request")); }

const beside = { view: "view", units: "page_units", fluids: "compare", first: "vary", second: "vary2", results: "results", map: "map" };

function variedText(one: Varied): string { return [one.key, one.from, one.to, one.count].join("|"); }
function variedIn(text: string | null): Varied | null {
  const parts = text?.split("|");
  return parts?.length === 4 ? { key: parts[0]!, from: parts[1]!, to: parts[2]!, count: parts[3]! } : null;
}

export function addressOf(state: State): string {
  const words = new URLSearchParams();
  words.set(beside.view, state.view);
  words.set(beside.units, state.units);
  if (state.view === "compare") words.set(beside.fluids, state.fluids.join(","));
  if (state.view === "vary") {
    words.set(beside.first, variedText(state.vary.first));
    words.set(beside.second, variedText(state.vary.second));
    words.set(beside.results, state.vary.results.join(","));
    if (state.vary.map) words.set(beside.map, "true");
  }
  for (const [key, value] of state.requests[placeOf(state.view)]) words.set(key, String(value));
  return `#${words.toString().replace(/%2C/g, ",").replace(/%7C/g, "|")}`;
}

function scalarIn(key: string, text: string): Scalar {
  if (text === "true" || text === "false") return text === "true";
  const isText = key === "request" || key.endsWith("title") || key.endsWith("fluid") || key.endsWith("blend_name");
  return !isText && /^-?(\d+\.?\d*|\.\d+)(e[+-]?\d+)?$/i.test(text) ? Number(text) : text;
}

// What an address says in place of a state's own; null where it says nothing.
export function stateIn(address: string, state: State): State | null {
  const words = new URLSearchParams(address.replace(/^#/, ""));
  if (!words.has("request") && !words.has(beside.view)) return null;
  const flat = new Map<string, Scalar>();
  const own = new Set(Object.values(beside));
  for (const [key, text] of words) if (!own.has(key)) flat.set(key, scalarIn(key, text));
  const view = views.find((one) => one === words.get(beside.view)) ?? "cycle";
  const units = (["SI", "metric", "imperial"] as const).find((one) => one === words.get(beside.units)) ?? state.units;
  return {
    ...state,
    view,
    units,
    requests: words.has("request") ? { ...state.requests, [placeOf(view)]: flat } : state.requests,
    fluids: words.get(beside.fluids)?.split(",").filter((name) => name !== "") ?? state.fluids,
    vary: {
      first: variedIn(words.get(beside.first)) ?? state.vary.first,
      second: variedIn(words.get(beside.second)) ?? state.vary.second,
      map: words.get(beside.map) === "true",
      results: words.get(beside.results)?.split(",").filter((key) => key !== "") ?? state.vary.results,
    },
  };
}

export function withRequest(state: State, place: Place, request: NamedRequest | Flat): State {
  const flat = request instanceof Map ? request : flattened(request as NamedRequest);
  const held = new Map(flat);
  held.delete("units");
  return { ...state, requests: { ...state.requests, [place]: held } };
}

// Holds the state, tells who listens, and goes back and forth in time. Changes of one field that follow each other
// are one step back.
export class Store {
  private past: State[] = [];
  private future: State[] = [];
  private listeners: ((state: State) => void)[] = [];
  private lastTouched = "";

  constructor(private now: State) {}

  get state(): State { return this.now; }
  get canUndo(): boolean { return this.past.length > 0; }
  get canRedo(): boolean { return this.future.length > 0; }

  listen(listener: (state: State) => void): void { this.listeners.push(listener); }

  change(next: State, touched = ""): void {
    if (touched === "" || touched !== this.lastTouched) this.past.push(this.now);
    if (this.past.length > 200) this.past.shift();
    this.lastTouched = touched;
    this.future = [];
    this.set(next);
  }

  // Without a step back: for what was not asked for by a person.
  set(next: State): void {
    this.now = next;
    for (const listener of this.listeners) listener(next);
  }

  undo(): void { this.step(this.past, this.future); }
  redo(): void { this.step(this.future, this.past); }

  private step(from: State[], to: State[]): void {
    const next = from.pop();
    if (!next) return;
    to.push(this.now);
    this.lastTouched = "";
    this.set({ ...next, view: this.now.view });
  }
}
