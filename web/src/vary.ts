// The request of the cycle view with one or two parameters over a range, and the optimum of the first.
import { kindNamed, type App, type ViewPart } from "./app";
import { Asking } from "./asking";
import { ChartView, pngBlob, svgText } from "./chart";
import { choices, make, newId, replace, type Choice } from "./dom";
import { fullName, scrolled } from "./figures";
import { csvOf, save } from "./files";
import { isMissing, joined, numberIn, partsOf, shown, shownUnit, withUnit, writtenNumber } from "./numbers";
import { nested, parametersOfStage, type Flat } from "./request";
import type { State, Varied } from "./state";
import type { ChartLine, Json, Option, RequestKind, Result, StudyCase, StudyQuestion } from "./types";
import { say } from "./words";

interface Given { option: Option; label: string; text: string; unit: string }

interface Outcome { inputs: number[]; values: number[] }

function range(one: Varied, unit: string): Json {
  const end = (text: string) => joined(text.trim().replace("\u2212", "-").replace(",", "."), unit);
  const count = Math.max(2, Math.round(numberIn(one.count)));
  return unit === "" ? { from: numberIn(one.from), to: numberIn(one.to), count } : { from: end(one.from), to: end(one.to), count };
}

export class VaryView implements ViewPart {
  readonly element: HTMLElement;
  private readonly form = make("form", { class: "vary-form", submit: (event: Event) => { event.preventDefault(); this.start(); } });
  private readonly progress = make("p", { class: "status", role: "status", "aria-live": "polite" });
  private readonly optimum = make("p", { class: "optimum", role: "status" });
  private readonly charts = [new ChartView(), new ChartView()];
  private readonly table = make("div");
  private readonly asking = new Asking();
  private readonly learning = new Asking();
  private result: Result | null = null;
  private asked = "";
  private way: "maximum" | "minimum" = "maximum";
  private rows: Outcome[] = [];
  private running = false;

  constructor(private readonly app: App) {
    this.element = make("div", { class: "view wide-view" }, make("h2", {}, say("view.vary")), make("p", { class: "about" }, say("vary.lead")),
      this.form, this.progress, this.optimum,
      make("div", { class: "vary-charts" }, ...this.charts.map((chart, i) => make("section", {
        class: "chart-part", "aria-label": say(i === 0 ? "vary.result" : "vary.more"),
      }, chart.element))), this.table);
  }

  show(state: State): void {
    const question = JSON.stringify([state.units, ...state.requests.cycle]);
    if (question !== this.asked) {
      this.asked = question;
      this.asking.stop();
      this.learning.now(async (signal) => {
        this.result = await this.app.calculation.run({ ...nested(state.requests.cycle), units: state.units }, signal);
        this.build(this.app.store.state);
        this.start();
      }, (why) => { this.progress.textContent = why.message; });
      return;
    }
    if (!this.form.contains(document.activeElement)) this.build(state);
  }

  // ------------------------------------------------------------------------------------------------------- the form

  private given(state: State): Given[] {
    const flat = state.requests.cycle;
    const kind = kindNamed(this.app, String(flat.get("request")));
    return this.parameters(kind, flat).flatMap(({ parameter, before }) => parameter.options
      .filter((option) => option.form === "quantity" && flat.has(option.key) && option.key !== "")
      .map((option) => {
        const parts = partsOf(String(flat.get(option.key)));
        const place = parameter.place.replaceAll("_", " ");
        const label = [before, place && !option.label.includes(place) ? place : "", option.label].filter(Boolean).join(", ");
        return { option, label: label[0]!.toUpperCase() + label.slice(1), text: parts.text, unit: parts.unit };
      }));
  }

  private parameters(kind: RequestKind, flat: Flat) {
    const all = kind.circuits.flatMap((circuit) => circuit.parameters.map((parameter) => ({ parameter, before: circuit.label })));
    for (let stage = 1; kind.stages && stage < Number(flat.get("stages") ?? 2); ++stage)
      for (const parameter of parametersOfStage(kind, stage)) all.push({ parameter, before: say("form.stage", { number: stage }) });
    return all;
  }

  private resultChoices(state: State): Choice[] {
    const kind = kindNamed(this.app, String(state.requests.cycle.get("request")));
    const numbers = (this.result?.values ?? []).filter((value) => typeof value.value === "number" && value.row === undefined
      && value.section && !value.key.includes("diagram."));
    const label = (text: string, unit = "") => text[0]!.toUpperCase() + text.slice(1) + (shownUnit(unit) === "" ? "" : ` / ${shownUnit(unit)}`);
    const leading = kind.leading.map((key) => numbers.find((value) => value.key === key)).filter((value) => value !== undefined);
    return [...leading.map((value) => ({ value: value.key, label: label(fullName(value), value.unit), group: say("result.figures") })),
      ...numbers.filter((value) => !leading.includes(value)).map((value) => ({ value: value.key, label: label(value.key.replaceAll(".", " ").replaceAll("_", " "), value.unit), group: say("result.values") }))];
  }

  private proposal(one: Given, count: string): Varied {
    const value = numberIn(one.text);
    const wide = one.option.quantity === "temperature" ? 10 : Math.abs(value) * 0.2 || 5;
    const limits = one.option.limits;
    const within = (number: number) => {
      const inner = this.app.units.toInner(number, one.option.quantity, one.unit);
      const held = limits ? Math.max(limits.lower, Math.min(limits.upper, inner)) : inner;
      return writtenNumber(Number(this.app.units.fromInner(held, one.option.quantity, one.unit).toPrecision(6)));
    };
    return { key: one.option.key, from: within(value - wide), to: within(value + wide), count };
  }

  // What stands in the state, or what may be asked first where that does not fit the request.
  private question(state: State): { first: Varied; second: Varied; results: string[]; map: boolean } {
    const given = this.given(state);
    const usual = given.find((one) => /(condenser|gas_cooler)\.(temperature|pressure)$/.test(one.option.key)) ?? given[0]!;
    const known = (one: Varied) => given.some((other) => other.option.key === one.key);
    const keys = new Set((this.result?.values ?? []).map((value) => value.key));
    const kind = kindNamed(this.app, String(state.requests.cycle.get("request")));
    const results = state.vary.results.filter((key) => keys.has(key));
    return {
      map: state.vary.map,
      first: known(state.vary.first) ? state.vary.first : this.proposal(usual, "21"),
      second: known(state.vary.second) ? state.vary.second : { key: "", from: "", to: "", count: "" },
      results: results.length > 0 ? results : [kind.leading.find((key) => /cop_cooling|efficiency/.test(key)) ?? kind.leading[0]!],
    };
  }

  private put(change: Partial<State["vary"]>): void {
    const { store } = this.app;
    store.change({ ...store.state, vary: { ...this.question(store.state), ...change } }, `vary ${Object.keys(change).join()}`);
  }

  private build(state: State): void {
    const given = this.given(state);
    if (given.length === 0 || !this.result) return;
    const question = this.question(state);
    const results = this.resultChoices(state);
    const id = newId("result"), second = newId("result"), way = newId("way"), picture = newId("picture");
    replace(this.form,
      this.axis(say("vary.first"), given, question.first, false, (first) => { this.put({ first }); this.rebuild(); }),
      this.axis(say("vary.second"), given, question.second, true, (other) => { this.put({ second: other }); this.rebuild(); }),
      make("fieldset", {}, make("legend", {}, say("vary.results")),
        make("label", { for: id }, say("vary.result")),
        choices(results, question.results[0]!, { id, "data-name": "result" }, (key) => { this.put({ results: [key, ...question.results.slice(1)] }); this.rebuild(); }),
        make("label", { for: second }, say("vary.more")),
        choices([{ value: "", label: say("vary.none") }, ...results], question.results[1] ?? "", { id: second, "data-name": "second result" },
          (key) => { this.put({ results: key === "" ? question.results.slice(0, 1) : [question.results[0]!, key] }); this.rebuild(); }),
        make("label", { for: way }, say("vary.optimum")),
        choices([{ value: "maximum", label: say("vary.maximum") }, { value: "minimum", label: say("vary.minimum") }], this.way, { id: way, "data-name": "optimum" },
          (value) => { this.way = value as "maximum"; this.start(); }),
        question.second.key !== "" && make("label", { for: picture }, say("vary.picture")),
        question.second.key !== "" && choices([{ value: "curves", label: say("vary.curves") }, { value: "map", label: say("vary.map") }],
          question.map ? "map" : "curves", { id: picture, "data-name": "picture" }, (value) => { this.put({ map: value === "map" }); this.start(); })),
      make("div", { class: "buttons" }, make("button", { type: "submit", "data-act": "calculate" }, say("vary.run")),
        make("button", { type: "button", class: "quiet", "data-act": "cancel", click: () => this.cancel() }, say("vary.cancel")),
        make("button", { type: "button", class: "quiet", "data-format": "csv", click: () => this.saveCsv() }, ".csv"),
        make("button", { type: "button", class: "quiet", "data-act": "svg", click: () => save("variation.svg", svgText(this.charts[0]!.svg), "image/svg+xml") }, say("download.svg")),
        make("button", { type: "button", class: "quiet", click: () => void pngBlob(this.charts[0]!.svg).then((blob) => save("variation.png", blob)) }, say("download.png"))));
  }

  private rebuild(): void {
    this.build(this.app.store.state);
    this.start();
  }

  private axis(title: string, given: Given[], varied: Varied, optional: boolean, put: (varied: Varied) => void): HTMLElement {
    const own = given.find((one) => one.option.key === varied.key);
    const number = (label: string, field: "from" | "to" | "count", unit: string) => {
      const id = newId(field);
      const input = make("input", {
        id, type: "text", inputmode: "decimal", autocomplete: "off", value: varied[field].replace("-", "\u2212"), "data-name": `${title} ${field}`,
        change: () => put({ ...varied, [field]: input.value.replace("\u2212", "-") }),
      });
      return make("div", { class: "small-field" }, make("label", { for: id }, label), input, make("span", { class: "unit" }, shownUnit(unit)));
    };
    const key = newId("key");
    return make("fieldset", {}, make("legend", {}, title), make("label", { for: key, class: "unseen" }, title),
      choices([...(optional ? [{ value: "", label: say("vary.none") }] : []), ...given.map((one) => ({ value: one.option.key, label: one.label }))],
        varied.key, { id: key, "data-name": title }, (value) => {
          const chosen = given.find((one) => one.option.key === value);
          put(chosen ? this.proposal(chosen, optional ? "5" : "21") : { key: "", from: "", to: "", count: "" });
        }),
      own && number(say("vary.from"), "from", own.unit), own && number(say("vary.to"), "to", own.unit), own && number(say("vary.count"), "count", ""));
  }

  // ------------------------------------------------------------------------------------------------------ the study

  private start(): void {
    const { state } = this.app.store;
    const given = this.given(state), question = this.question(state);
    const first = given.find((one) => one.option.key === question.first.key);
    if (!first) return;
    const second = given.find((one) => one.option.key === question.second.key);
    const vary: Record<string, Json> = {};
    if (second) vary[second.option.key] = range(question.second, second.unit);
    vary[first.option.key] = range(question.first, first.unit);
    this.rows = [];
    this.running = true;
    this.optimum.textContent = "";
    let refused = 0, whyFirst = "", painted = 0;
    const asked: StudyQuestion = { request: { ...nested(state.requests.cycle), units: state.units }, vary, results: { keys: question.results } };
    this.asking.soon(async (signal) => {
      await this.app.calculation.study(asked, (one, total) => {
        if (one.error && refused++ === 0) whyFirst = one.error.text.replace(/^Error: /, "");
        this.rows.push(this.outcome(one, question.results.length));
        this.progress.textContent = say("vary.progress", { done: this.rows.length, total });
        if (performance.now() - painted > 200) {
          painted = performance.now();
          this.paint(first, second, question.results);
        }
      }, signal);
      this.running = false;
      this.progress.textContent = refused > 0 ? say("vary.refused", { count: refused, text: whyFirst }) : "";
      this.paint(first, second, question.results);
      if (!second) await this.findOptimum(asked, first, question.results[0]!, signal);
    }, (why) => {
      this.running = false;
      this.progress.textContent = why.message;
    });
  }

  private cancel(): void {
    if (!this.running) return;
    this.running = false;
    this.asking.stop();
    const total = /(\d+)\D*$/.exec(this.progress.textContent ?? "")?.[1] ?? "?";
    this.progress.textContent = say("vary.cancelled", { done: this.rows.length, total });
  }

  private outcome(one: StudyCase, count: number): Outcome {
    const inputs = one.inputs.map((value) => (typeof value === "number" ? value : numberIn(partsOf(value).text)));
    const values = Array.from({ length: count }, (_, i) => {
      const value = one.values?.[i];
      return typeof value === "number" && !isMissing(value) ? value : NaN;
    });
    return { inputs, values };
  }

  // Between the neighbours of the best case it is looked for again, finer, three times.
  private async findOptimum(asked: StudyQuestion, first: Given, key: string, signal: AbortSignal): Promise<void> {
    let rows = this.rows.map((row) => ({ at: row.inputs.at(-1)!, value: row.values[0]! }));
    const sign = this.way === "maximum" ? 1 : -1;
    const ends = [rows[0]?.at, rows.at(-1)?.at];
    let best = { at: NaN, value: NaN };
    for (let pass = 0; pass < 4; ++pass) {
      const sound = rows.filter((row) => !Number.isNaN(row.value));
      if (sound.length === 0) return;
      best = sound.reduce((a, b) => (sign * b.value > sign * a.value ? b : a));
      if (pass === 3 || ends.includes(best.at)) break;
      const i = rows.findIndex((row) => row.at === best.at);
      const [from, to] = [rows[Math.max(0, i - 1)]!.at, rows[Math.min(rows.length - 1, i + 1)]!.at];
      const finer: { at: number; value: number }[] = [];
      await this.app.calculation.study({
        ...asked, vary: { [first.option.key]: range({ key: "", from: writtenNumber(from), to: writtenNumber(to), count: "11" }, first.unit) },
        results: { keys: [key] },
      }, (one) => {
        const row = this.outcome(one, 1);
        finer.push({ at: row.inputs[0]!, value: row.values[0]! });
      }, signal);
      rows = finer;
    }
    const value = this.result?.values.find((one) => one.key === key);
    const text = say("vary.at", {
      kind: say(`vary.${this.way}`), result: (value ? fullName(value) : key), value: withUnit(shown(best.value), value?.unit),
      parameter: first.label, at: withUnit(shown(best.at), first.unit),
    });
    replace(this.optimum, make("strong", { "data-at": best.at, "data-value": best.value }, text),
      ends.includes(best.at) && ` ${say("vary.edge")}`);
  }

  // -------------------------------------------------------------------------------------------------------- pictures

  private paint(first: Given, second: Given | undefined, keys: string[]): void {
    this.charts.forEach((chart, i) => {
      const part = chart.element.parentElement!;
      part.hidden = keys[i] === undefined || this.rows.length === 0;
      if (part.hidden) return;
      if (second && this.app.store.state.vary.map) this.paintMap(chart, first, second, keys[i]!, i);
      else this.paintOne(chart, first, second, keys[i]!, i);
    });
    this.showTable(first, second, keys);
  }

  private paintOne(chart: ChartView, first: Given, second: Given | undefined, key: string, number: number): void {
    const value = this.result?.values.find((one) => one.key === key);
    const name = value ? fullName(value) : key;
    const families = new Map<number, [number, number][]>();
    for (const row of this.rows) {
      const family = second ? row.inputs[0]! : 0;
      const at = row.inputs.at(-1)!, y = row.values[number]!;
      if (!Number.isNaN(y)) families.set(family, [...(families.get(family) ?? []), [at, y]]);
    }
    const lines: ChartLine[] = [...families].map(([family, points], i) => ({
      look: "series", number: i % 8, label: second ? `${second.label} ${withUnit(shown(family), second.unit)}` : "",
      hover: second ? withUnit(shown(family), second.unit) : name, points,
    }));
    const all = lines.flatMap((line) => line.points);
    if (all.length === 0) return;
    const ends = (numbers: number[]) => [Math.min(...numbers), Math.max(...numbers)] as const;
    const [left, right] = ends(all.map((one) => one[0]));
    const [low, high] = ends(all.map((one) => one[1]));
    const air = (high - low) * 0.08 || Math.abs(high) * 0.05 || 1;
    const title = (text: string, unit?: string) => (shownUnit(unit) === "" ? text : `${text} / ${shownUnit(unit)}`);
    chart.show({
      circuit: "", title: `${name}, ${first.label}`,
      x: { title: title(first.label, first.unit), low: left, high: right > left ? right : left + 1, logarithmic: false },
      y: { title: title(name, value?.unit), low: low - air, high: high + air, logarithmic: false },
      lines, points: all.length <= 60 ? all.map((place) => ({ look: "case", label: "", hover: `${withUnit(shown(place[0]), first.unit)}, ${withUnit(shown(place[1]), value?.unit)}`, place })) : [],
    });
  }

  // Each case is the middle of its field.
  private paintMap(chart: ChartView, first: Given, second: Given, key: string, number: number): void {
    const value = this.result?.values.find((one) => one.key === key);
    const name = value ? fullName(value) : key;
    const places = (at: (row: Outcome) => number) => [...new Set(this.rows.map(at))].sort((a, b) => a - b);
    const [xs, ys] = [places((row) => row.inputs.at(-1)!), places((row) => row.inputs[0]!)];
    const half = (all: number[]) => (all.length > 1 ? (all.at(-1)! - all[0]!) / (all.length - 1) / 2 : 0.5);
    const [dx, dy] = [half(xs), half(ys)];
    const axis = (one: Given, all: number[], d: number) => ({
      title: shownUnit(one.unit) === "" ? one.label : `${one.label} / ${shownUnit(one.unit)}`, low: all[0]! - d, high: all.at(-1)! + d, logarithmic: false,
    });
    chart.show({
      circuit: "", title: `${name}: ${first.label}, ${second.label}`, x: axis(first, xs, dx), y: axis(second, ys, dy), lines: [], points: [],
      cells: this.rows.map((row) => {
        const [x, y, result] = [row.inputs.at(-1)!, row.inputs[0]!, row.values[number]!];
        return {
          x: [x - dx, x + dx], y: [y - dy, y + dy], value: result,
          hover: `${name} ${withUnit(shown(result), value?.unit)}; ${first.label} ${withUnit(shown(x), first.unit)}; ${second.label} ${withUnit(shown(y), second.unit)}`,
        };
      }),
    });
  }

  private showTable(first: Given, second: Given | undefined, keys: string[]): void {
    const heads = [...(second ? [second] : []), first].map((one) => ({ name: one.label, unit: one.unit as string | undefined }))
      .concat(keys.map((key) => {
        const value = this.result?.values.find((one) => one.key === key);
        return { name: value ? fullName(value) : key, unit: value?.unit };
      }));
    replace(this.table, make("details", { class: "cases" }, make("summary", {}, say("vary.table")), scrolled(make("table", { class: "rows" },
      make("thead", {}, make("tr", {}, ...heads.map((head) => make("th", { scope: "col" }, head.name, shownUnit(head.unit) !== "" && make("small", {}, shownUnit(head.unit)))))),
      make("tbody", {}, ...this.rows.map((row) => make("tr", {}, ...[...row.inputs, ...row.values].map((value) => make("td", { title: String(value) }, shown(value))))))),
    say("vary.table"))));
  }

  private saveCsv(): void {
    const question = this.question(this.app.store.state);
    const inputs = [...(question.second.key === "" ? [] : [question.second.key]), question.first.key];
    save("variation.csv", csvOf([[...inputs, ...question.results], ...this.rows.map((row) => [...row.inputs, ...row.values.map((value) => (Number.isNaN(value) ? "" : value))])]), "text/csv");
  }
}
