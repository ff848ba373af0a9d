// Files that are taken along, and files that are dropped onto the page.
import type { App } from "./app";
import { make } from "./dom";
import { nested, type Flat } from "./request";
import { placeOf, withRequest, type Place } from "./state";
import type { Result } from "./types";
import { say } from "./words";

export function save(name: string, content: string | Blob, type = "text/plain"): void {
  const url = URL.createObjectURL(content instanceof Blob ? content : new Blob([content], { type: `${type};charset=utf-8` }));
  make("a", { href: url, download: name }).click();
  setTimeout(() => URL.revokeObjectURL(url), 10_000);
}

export function fileName(flat: Flat): string {
  return String(flat.get("title") ?? flat.get("request")).toLowerCase().normalize("NFKD")
    .replace(/[^a-z0-9]+/g, "-").replace(/^-|-$/g, "") || "request";
}

export const requestFormats = ["toml", "json", "fi1", "fo1", "csv"] as const;
export type RequestFormat = (typeof requestFormats)[number];

function csvField(value: unknown): string {
  const text = String(value ?? "");
  return /[",\n]/.test(text) ? `"${text.replaceAll('"', '""')}"` : text;
}

export function csvOf(rows: unknown[][]): string {
  return rows.map((row) => `${row.map(csvField).join(",")}\r\n`).join("");
}

function csvOfResult(result: Result): string {
  return csvOf([["line", "key", "circuit", "section", "group", "row", "name", "value", "unit"],
    ...result.values.map((one) => [one.line, one.key, one.circuit, one.section, one.group, one.row, one.name, one.value, one.unit])]);
}

export async function saveAs(app: App, place: Place, format: RequestFormat, result: Result | null): Promise<void> {
  const { state } = app.store;
  const flat = state.requests[place];
  const name = fileName(flat);
  if (format === "csv" || format === "json") {
    if (!result) return app.tell(say("files.none"));
    return format === "csv" ? save(`${name}.csv`, csvOfResult(result), "text/csv")
      : save(`${name}.json`, `${JSON.stringify(result, null, 2)}\n`, "application/json");
  }
  const all = await app.calculation.convert({ request: nested(flat), units: state.units, result: format === "fo1" });
  const text = all[format];
  if (text === undefined) return app.tell(say("files.none"));
  save(`${name}.${format}`, text);
}

// Which requests a view shows.
export function placeOfRequest(app: App, name: string): Place {
  const kind = app.catalogue.requests.find((one) => one.name === name);
  return kind?.name === "line-sizing" ? "lines" : kind?.type === 1 ? "properties" : "cycle";
}

export async function open(app: App, file: File): Promise<void> {
  const text = await file.text();
  const { units } = app.store.state;
  const ending = /\.(\w+)$/.exec(file.name.toLowerCase())?.[1];
  let question;
  if (ending === "toml") question = { toml: text };
  else if (ending === "fi1") question = { fi1: text };
  else if (ending === "json") question = { request: requestIn(text) };
  if (!question || ("request" in question && question.request === null))
    return app.tell(say("files.not", { name: file.name }));
  const { request } = await app.calculation.convert({ ...(question as { toml: string }), units });
  const place = placeOfRequest(app, String(request.request));
  const view = place === placeOf(app.store.state.view) ? app.store.state.view : place;
  app.store.change({ ...withRequest(app.store.state, place, request), view });
}

// A request, or the request inside a saved result.
function requestIn(text: string) {
  try {
    const json = JSON.parse(text) as Record<string, unknown>;
    return (typeof json.asked === "object" ? json.asked : json) as never;
  } catch {
    return null;
  }
}
