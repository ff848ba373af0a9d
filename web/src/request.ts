// A request as the page holds it: the dotted keys of its JSON with their values, in their order.
import type { Json, NamedRequest, Parameter, RequestKind } from "./types";

export type Scalar = string | number | boolean;
export type Flat = ReadonlyMap<string, Scalar>;

const isTable = (node: Json): node is { [key: string]: Json } =>
  typeof node === "object" && node !== null && !Array.isArray(node);

export function flattened(request: NamedRequest): Map<string, Scalar> {
  const flat = new Map<string, Scalar>();
  const walk = (table: { [key: string]: Json }, before: string) => {
    for (const [key, node] of Object.entries(table)) {
      if (isTable(node)) walk(node, `${before}${key}.`);
      else if (node !== null && !Array.isArray(node)) flat.set(before + key, node);
    }
  };
  walk(request, "");
  return flat;
}

export function nested(flat: Flat): NamedRequest {
  const request: NamedRequest = {};
  for (const [key, value] of flat) {
    const parts = key.split(".");
    let table = request;
    for (const part of parts.slice(0, -1)) {
      if (!isTable(table[part] ?? null)) table[part] = {};
      table = table[part] as { [key: string]: Json };
    }
    table[parts.at(-1)!] = value;
  }
  return request;
}

export function isCycle(kind: RequestKind): boolean { return kind.type === 2; }

// The keys of the fluids: "fluid", or one for each circuit.
export function fluidKeys(kind: RequestKind): string[] {
  return kind.circuits.map((circuit) => (circuit.key === "" ? "fluid" : `${circuit.key}.fluid`));
}

// A blend that is listed by its components stands in keys below that of the fluid.
export function componentsOf(flat: Flat, fluidKey: string): Map<string, number> {
  const found = new Map<string, number>();
  for (const [key, value] of flat)
    if (key.startsWith(`${fluidKey}.`)) found.set(key.slice(fluidKey.length + 1), Number(value));
  return found;
}

// Other values in place of all that stands at or below a key, at the same place of the order.
export function replaced(flat: Flat, key: string, values: Iterable<[string, Scalar]>): Map<string, Scalar> {
  const result = new Map<string, Scalar>();
  let put = false;
  for (const [one, value] of flat) {
    if (one !== key && !one.startsWith(`${key}.`)) {
      result.set(one, value);
      continue;
    }
    if (!put) for (const [other, given] of values) result.set(other, given);
    put = true;
  }
  if (!put) for (const [other, given] of values) result.set(other, given);
  return result;
}

// The parameters of a stage, with its number in their keys.
export function parametersOfStage(kind: RequestKind, stage: number): Parameter[] {
  return (kind.stages?.parameters ?? []).map((parameter) => ({
    ...parameter,
    place: parameter.place.replace(/^stage\d*/, `stage${stage}`),
    options: parameter.options.map((option) => ({ ...option, key: option.key.replace(/^stage\d+/, `stage${stage}`) })),
  }));
}

// The option of a parameter that is given; `taken` are keys that belong to other parameters.
export function optionGiven(flat: Flat, parameter: Parameter, taken: ReadonlySet<string> = new Set()) {
  return parameter.options.find((option) => option.key !== "" && flat.has(option.key) && !taken.has(option.key)
    && (option.form !== "yes" || flat.get(option.key) !== false)
    && (option.form !== "no" || flat.get(option.key) !== true));
}
