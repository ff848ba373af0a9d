// A result in figures: those that count first, the remarks, the state points, the devices, the tables.
import type { Attention } from "./circuit";
import { make, replace } from "./dom";
import { isMissing, shown, shownUnit, withUnit } from "./numbers";
import type { PointState, RequestKind, Result, Value } from "./types";
import { say } from "./words";

const circuitName = (kind: RequestKind, key: string) =>
  kind.circuits.find((circuit) => circuit.key !== "" && key.startsWith(`${circuit.key}.`))?.label ?? "";

function capital(text: string): string { return text === "" ? text : text[0]!.toUpperCase() + text.slice(1); }

// The number as it is read, the whole value behind it.
export function figure(value: Value | undefined, digits = 5, tag: "dd" | "td" = "td"): HTMLElement {
  const places = value && /^(°C|°F|K)$/.test(value.unit ?? "") ? 4 : 9;
  if (!value) return make(tag, {}, "–");
  if (typeof value.value === "string") return make(tag, { "data-key": value.key }, value.value);
  if (isMissing(value.value)) return make(tag, { "data-key": value.key, title: say("number.missing") }, "–");
  return make(tag, { "data-key": value.key, "data-value": value.value, title: withUnit(String(value.value), value.unit) },
    tag === "dd" ? withUnit(shown(value.value, digits, places), value.unit) : shown(value.value, digits, places));
}

// "Temperature" alone says little: of the compressor, at its outlet.
export function fullName(value: Value): string {
  const place = /(?:^|\.)((?:\w+_)?(?:compressor|turbine|exchanger))\.(outlet|inlet)?/.exec(value.key);
  const own = place && !value.key.includes("performance.")
    ? `${place[1]!.replaceAll("_", " ")} ${place[2] ? `${place[2]} ` : ""}${value.name.toLowerCase()}` : value.name;
  // "Power" of one of two stages.
  const part = /(?:^|\.)performance\.(\w+)\.power$/.exec(value.key)?.[1];
  return capital(part ? `${part.replaceAll("_", " ")} ${value.name.toLowerCase()}` : own);
}

export function leadingFigures(kind: RequestKind, result: Result): HTMLElement {
  const values = new Map(result.values.map((value) => [value.key, value]));
  const list = make("dl", { class: "leading" });
  for (const key of kind.leading) {
    const value = values.get(key);
    if (!value) continue;
    const circuit = circuitName(kind, key);
    list.append(make("div", {}, make("dt", {}, fullName(value), circuit !== "" && make("small", {}, circuit)), figure(value, 5, "dd")));
  }
  return list;
}

export function remarks(result: Result): HTMLElement {
  return make("ul", { class: "remarks" }, ...result.remarks.map((remark) =>
    make("li", { class: remark.weight, "data-remark": remark.name },
      make("p", {}, make("strong", {}, say(`remark.${remark.weight}`)), ` ${remark.text}`), make("p", { class: "advice" }, remark.advice))));
}

const columns: [keyof PointState, string, string][] = [
  ["temperature", say("point.temperature"), "temperature"], ["pressure", say("point.pressure"), "pressure"],
  ["density", say("point.density"), "density"],
  ["enthalpy", say("point.enthalpy"), "enthalpy"], ["entropy", say("point.entropy"), "entropy"],
  ["quality", say("point.quality"), "quality"], ["saturation_temperature", say("point.saturation"), "temperature"],
];

// Units of the points, from the values of the same result.
export function unitsOfPoints(result: Result): Record<string, string> {
  const found: Record<string, string> = {};
  for (const name of ["temperature", "pressure", "density", "enthalpy", "entropy"])
    found[name] = result.values.find((value) => value.key.endsWith(`.outlet.${name}`))?.unit ?? "";
  return found;
}

export function describePoint(state: PointState, units: Record<string, string>): string {
  return [`${state.number} ${state.label}`,
    ...columns.slice(0, 6).filter(([field]) => !isMissing(state[field]))
      .map(([field, name, unit]) => `${name.toLowerCase()} ${withUnit(shown(state[field] as number), units[unit])}`)].join(", ");
}

export function pointsTable(kind: RequestKind, result: Result, attention: Attention): HTMLElement {
  const units = unitsOfPoints(result);
  const rows: HTMLElement[] = [];
  let circuit = "";
  for (const point of result.points) {
    if ((point.circuit ?? "") !== circuit) {
      circuit = point.circuit ?? "";
      rows.push(make("tr", { class: "circuit-row" }, make("th", { colspan: columns.length + 2, scope: "rowgroup" },
        kind.circuits.find((one) => one.key === circuit)?.label ?? circuit)));
    }
    rows.push(make("tr", {
      "data-point": point.key, mouseenter: () => attention.turn(point.key), mouseleave: () => attention.turn(null),
    }, make("td", { class: "number" }, String(point.number)),
    make("th", { scope: "row" }, capital(point.label) + (point.stage ? ` (${say("form.stage", { number: point.stage }).toLowerCase()})` : "")),
    ...columns.map(([field]) => {
      const value = point[field] as number;
      return isMissing(value) ? make("td", {}, "–") : make("td", { title: String(value) }, shown(value, 5, field.includes("temperature") ? 3 : 9));
    })));
  }
  const table = make("table", { class: "points" },
    make("thead", {}, make("tr", {}, make("th", { scope: "col" }, say("point.number")), make("th", { scope: "col" }, say("point.place")),
      ...columns.map(([, name, unit]) => make("th", { scope: "col" }, name, units[unit] ? make("small", {}, shownUnit(units[unit])) : null)))),
    make("tbody", {}, ...rows));
  attention.listen((key) => {
    for (const row of table.querySelectorAll("tr[data-point]")) row.classList.toggle("looked-at", row.getAttribute("data-point") === key);
  });
  return scrolled(table, say("result.points"));
}

// A table that is wider than its place can be moved with the keys, too.
export function scrolled(table: HTMLElement, name: string): HTMLElement {
  return make("div", { class: "scroll", tabindex: 0, role: "region", "aria-label": name }, table);
}

// What belongs to a device: its states side by side, its figures below.
function device(section: string, values: Value[]): HTMLElement {
  const groups = [...new Set(values.filter((one) => one.group).map((one) => one.group!))];
  const names = [...new Set(values.filter((one) => one.group).map((one) => one.name))];
  const rows = names.map((name) => {
    const first = values.find((one) => one.name === name && one.group);
    return make("tr", {}, make("th", { scope: "row" }, capital(name), first?.unit && first.unit !== "-" ? make("small", {}, shownUnit(first.unit)) : null),
      ...groups.map((group) => figure(values.find((one) => one.name === name && one.group === group))));
  });
  const single = values.filter((one) => !one.group).map((one) =>
    make("tr", {}, make("th", { scope: "row" }, capital(one.name), one.unit && one.unit !== "-" ? make("small", {}, shownUnit(one.unit)) : null),
      figure(one)));
  return make("div", { class: "device-table" }, make("h4", {}, section),
    groups.length > 0 && make("table", {}, make("thead", {}, make("tr", {}, make("td", {}), ...groups.map((group) => make("th", { scope: "col" }, group)))),
      make("tbody", {}, ...rows)),
    single.length > 0 && make("table", {}, make("tbody", {}, ...single)));
}

const sentence = (text: string) => capital(text.toLowerCase());

export function devices(kind: RequestKind, result: Result): HTMLElement {
  const sections = new Map<string, Value[]>();
  for (const value of result.values) {
    if (!value.section || value.key.includes("diagram.") || value.row !== undefined) continue;
    const circuit = circuitName(kind, value.key);
    const stage = /(?:^|\.)stage(\d+)\./.exec(value.key)?.[1];
    const name = [circuit, sentence(value.section), stage && !/stage/i.test(value.section) ? say("form.stage", { number: stage }).toLowerCase() : ""]
      .filter(Boolean).join(", ");
    sections.set(name, [...(sections.get(name) ?? []), value]);
  }
  return make("div", { class: "device-tables" }, ...[...sections].map(([name, values]) => device(name, values)));
}

// Values without sections: facts and single states; those in two phases side by side.
export function facts(result: Result): HTMLElement {
  const plain = result.values.filter((value) => value.row === undefined && !value.section
    && !["request.type", "request.subtype"].includes(value.key));
  const sides = [...new Set(plain.map((value) => /^(liquid|vapor)\./.exec(value.key)?.[1]).filter(Boolean))] as string[];
  const keys = [...new Set(plain.map((value) => value.key.replace(/^(liquid|vapor)\./, "")))];
  const values = new Map(plain.map((value) => [value.key, value]));
  const rows = keys.map((key) => {
    const found = values.get(key) ?? values.get(`liquid.${key}`) ?? values.get(`vapor.${key}`)!;
    const name = found.name.replace(/ of the (liquid|vapor)$/i, "");
    const head = make("th", { scope: "row" }, capital(name), found.unit && found.unit !== "-" ? make("small", {}, shownUnit(found.unit)) : null);
    return values.has(key)
      ? make("tr", {}, head, sides.length > 0 ? withSpan(figure(values.get(key), 6), sides.length) : figure(values.get(key), 6))
      : make("tr", {}, head, ...sides.map((side) => figure(values.get(`${side}.${key}`), 6)));
  });
  return make("table", { class: "facts" },
    sides.length > 0 && make("thead", {}, make("tr", {}, make("td", {}), ...sides.map((side) => make("th", { scope: "col" }, capital(side))))),
    make("tbody", {}, ...rows));
}

function withSpan(cell: HTMLElement, span: number): HTMLElement {
  cell.setAttribute("colspan", String(span));
  return cell;
}

// The rows of a table of states.
export function rowsTable(result: Result): HTMLElement | null {
  const cells = result.values.filter((value) => value.row !== undefined && !value.section);
  if (cells.length === 0) return null;
  const column = (value: Value) => value.key.replace(/^table\.\d+\./, "");
  const heads = new Map<string, Value>();
  for (const value of cells) if (!heads.has(column(value))) heads.set(column(value), value);
  const rows = new Map<number, Map<string, Value>>();
  for (const value of cells) {
    const row = rows.get(value.row!) ?? new Map<string, Value>();
    rows.set(value.row!, row.set(column(value), value));
  }
  const body = make("tbody");
  for (const row of rows.values()) body.append(make("tr", {}, ...[...heads.keys()].map((key) => figure(row.get(key)))));
  return scrolled(make("table", { class: "rows" },
    make("thead", {}, make("tr", {}, ...[...heads].map(([key, value]) => make("th", { scope: "col" },
      columnName(key, value), value.unit && value.unit !== "-" ? make("small", {}, shownUnit(value.unit)) : null)))), body),
  say("result.table"));
}

function columnName(key: string, value: Value): string {
  const side = /^(liquid|vapor)\./.exec(key)?.[1];
  const name = capital(value.name.replace(/ of the (liquid|vapor)$/i, ""));
  return side ? `${name}, ${side}` : name;
}

// The waiting, the refusal, the result.
export class Status {
  readonly element = make("div", { class: "status", role: "status", "aria-live": "polite" });
  private timer = 0;

  waiting(): void {
    window.clearTimeout(this.timer);
    // What comes within a blink is not announced.
    this.timer = window.setTimeout(() => replace(this.element, make("p", { class: "waiting" }, say("result.waiting"))), 350);
  }
  good(): void { this.put(); }
  bad(text: string, code: string | number | undefined, stale: boolean): void {
    this.put(make("div", { class: "refused" }, make("p", {}, make("strong", {}, say("result.refused")), ` ${text}`,
      code !== undefined && make("span", { class: "code" }, ` ${code}`)), stale && make("p", { class: "advice" }, say("result.old"))));
  }
  private put(...children: HTMLElement[]): void {
    window.clearTimeout(this.timer);
    replace(this.element, ...children);
  }
}
