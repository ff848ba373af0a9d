// A view of one request: its form, its drawing and charts, its figures. The cycle view, and with other requests
// offered the properties and the lines.
import { kindNamed, type App, type ViewPart } from "./app";
import { Asking } from "./asking";
import type { Refusal } from "./calculation";
import { ChartView, pngBlob, svgText } from "./chart";
import { Attention, CircuitDrawing } from "./circuit";
import { choices, make, newId, replace } from "./dom";
import {
  describePoint, devices, facts, leadingFigures, pointsTable, remarks, rowsTable, Status, unitsOfPoints,
} from "./figures";
import { fileName, requestFormats, save, saveAs } from "./files";
import { Form } from "./form";
import { OtherPair } from "./otherpair";
import { componentsOf, isCycle, nested, type Flat } from "./request";
import type { Place, State } from "./state";
import type { Chart, ChartKind, ChartQuestion, NamedRequest, RequestKind, Result } from "./types";
import { say } from "./words";

const kinds: ChartKind[] = ["ph", "ts", "hs"];

export class RequestView implements ViewPart {
  readonly element: HTMLElement;
  protected result: Result | null = null;
  protected readonly attention = new Attention();
  protected readonly form: Form;
  private readonly otherPair: OtherPair;
  private readonly status = new Status();
  private readonly circuit: CircuitDrawing;
  private readonly chart: ChartView;
  private readonly figures = make("section", { class: "figures", "aria-label": say("result.figures") });
  private readonly tables = make("section", { class: "tables", "aria-label": say("result.values") });
  private readonly middle: HTMLElement;
  private readonly chartPart: HTMLElement;
  private readonly chartNote = make("p", { class: "chart-note" });
  private readonly tabs = make("div", { class: "tabs", role: "group" });
  private readonly runs = new Asking();
  private readonly drawings = new Asking();
  private charts: Chart[] = [];
  private kindOfChart: ChartKind = "ph";
  private circuitOfChart = 0;
  private asked = "";
  private lastStructure = "";

  constructor(protected readonly app: App, protected readonly place: Place, offered: RequestKind[], name: string) {
    this.form = new Form(app, place, offered);
    this.otherPair = new OtherPair(app, place);
    this.circuit = new CircuitDrawing(this.attention, (state) => describePoint(state, this.result ? unitsOfPoints(this.result) : {}));
    this.chart = new ChartView((label) => this.attention.turn(this.keyOf(label)));
    this.attention.listen((key) => this.chart.mark(this.labelOf(key)));
    this.chartPart = make("section", { class: "chart-part", "aria-label": say("chart.ph") },
      make("div", { class: "chart-bar" }, this.tabs, make("div", { class: "buttons" },
        this.button("chart.cycle", () => this.chart.fit()), this.button("chart.whole", () => this.chart.whole()),
        this.button("download.svg", () => save(`${this.fileName()}.svg`, svgText(this.chart.svg), "image/svg+xml")),
        this.button("download.png", async () => save(`${this.fileName()}.png`, await pngBlob(this.chart.svg))))),
      this.chart.element, this.chartNote);
    this.middle = make("div", { class: "middle" }, this.circuit.element, this.chartPart);
    this.element = make("div", { class: "view request-view" }, make("h2", { class: "unseen" }, name),
      make("div", { class: "left" }, this.form.element, this.otherPair.element), this.middle,
      make("div", { class: "right", id: `result-${place}` }, this.status.element, this.figures), this.tables);
  }

  show(state: State): void {
    const question = JSON.stringify([state.units, ...state.requests[this.place]]);
    const changed = question !== this.asked;
    // What was said of the request before does not hold for this one.
    if (changed) this.form.complain("", "");
    const problem = this.form.show(state);
    this.otherPair.show(state);
    if (!changed) return;
    this.asked = question;
    if (problem === "") return this.ask(state);
    this.runs.stop();
    this.refuse(problem, undefined, null);
  }

  private ask(state: State): void {
    const request = { ...nested(state.requests[this.place]), units: state.units };
    this.status.waiting();
    this.runs.soon(async (signal) => {
      const result = await this.app.calculation.run(this.completed(request), signal);
      if (result.outcome !== "success" && result.values.length === 0)
        return this.refuse(result.message ?? result.outcome, result.code, result.refused_key ?? "");
      this.show_(result, state);
      this.askCharts(request, state);
    }, (why: Refusal) => this.refuse(why.message, undefined, ""));
  }

  protected completed(request: NamedRequest): NamedRequest { return request; }

  // `key` is that of a field which the calculation named; null where the field tells by itself.
  private refuse(text: string, code: number | undefined, key: string | null): void {
    this.drawings.stop();
    this.element.classList.add("stale");
    const words = text.replace(/^Error: /, "");
    if (key !== null) this.form.complain(text, key);
    this.status.bad(words, code, this.result !== null);
  }

  private show_(result: Result, state: State): void {
    this.element.classList.remove("stale");
    this.result = result;
    this.form.follow(result);
    this.form.complain("", "");
    this.status.good();
    const flat = state.requests[this.place];
    const kind = kindNamed(this.app, String(flat.get("request")));
    const drawn = this.circuit.show(kind.name, Number(flat.get("stages") ?? 2), result);
    this.middle.classList.toggle("no-circuit", !drawn);
    this.showFigures(kind, result, state);
    this.showTables(kind, result);
  }

  protected showFigures(kind: RequestKind, result: Result, _state: State): void {
    replace(this.figures,
      result.remarks.length > 0 && make("h3", {}, say("result.remarks")), result.remarks.length > 0 && remarks(result),
      make("h3", {}, isCycle(kind) ? say("result.figures") : kind.title),
      isCycle(kind) ? leadingFigures(kind, result) : facts(result), this.downloads());
  }

  private showTables(kind: RequestKind, result: Result): void {
    const open = new Set([...this.tables.querySelectorAll("details[open]")].map((one) => one.getAttribute("data-part")));
    const part = (name: string, title: string, content: HTMLElement, usually: boolean) =>
      make("details", { "data-part": name, open: this.lastStructure === "" ? usually : open.has(name) || (usually && !this.wasShown(name)) },
        make("summary", {}, title), content);
    const rows = rowsTable(result);
    const parts = [
      result.points.length > 0 && part("points", say("result.points"), pointsTable(kind, result, this.attention), true),
      rows && part("rows", say("result.table"), rows, true),
      isCycle(kind) && part("devices", say("result.devices"), devices(kind, result), false),
    ];
    this.lastStructure = parts.map(Boolean).join();
    replace(this.tables, ...parts);
  }

  private wasShown(name: string): boolean { return this.tables.querySelector(`[data-part="${name}"]`) !== null; }

  private downloads(): HTMLElement {
    return make("div", { class: "downloads" }, make("h3", {}, say("download")),
      make("div", { class: "buttons" }, ...requestFormats.map((format) => make("button", {
        type: "button", "data-format": format,
        click: () => void saveAs(this.app, this.place, format, this.result).catch((why: Error) => this.app.tell(why.message)),
      }, `.${format}`))));
  }

  private button(word: Parameters<typeof say>[0], act: () => void | Promise<void>): HTMLElement {
    return make("button", { type: "button", class: "quiet", "data-act": word, click: () => void act() }, say(word));
  }

  private fileName(): string { return `${fileName(this.app.store.state.requests[this.place])}-${this.kindOfChart}`; }

  // --------------------------------------------------------------------------------------------------------- charts

  private askCharts(request: NamedRequest, state: State): void {
    const question = this.chartQuestion(request, state);
    this.chartPart.hidden = question === null;
    if (!question) return;
    this.drawings.now(async (signal) => {
      this.charts = await this.app.calculation.chart(question, signal);
      this.showChart();
    }, (why) => { this.chartNote.textContent = why.message; });
  }

  private chartQuestion(request: NamedRequest, state: State): ChartQuestion | null {
    const flat: Flat = state.requests[this.place];
    const kind = kindNamed(this.app, String(flat.get("request")));
    const { units } = state;
    if (isCycle(kind)) return { kind: this.kindOfChart, request: this.completed(request), units };
    // A property has the chart of its fluid, where that is one of the installation.
    if (componentsOf(flat, "fluid").size > 0) return null;
    return { kind: this.kindOfChart, fluid: String(flat.get("fluid")), units };
  }

  private showChart(): void {
    const chart = this.charts[this.circuitOfChart] ?? this.charts[0];
    this.chartNote.textContent = "";
    this.showTabs();
    if (!chart) return;
    this.chartPart.setAttribute("aria-label", chart.title);
    this.chart.show(this.withStates(chart));
  }

  // States of a table or a point stand in the chart of their fluid.
  private withStates(chart: Chart): Chart {
    const result = this.result;
    if (!result || result.points.length > 0) return chart;
    const [x, y] = { ph: ["enthalpy", "pressure"], ts: ["entropy", "temperature"], hs: ["entropy", "enthalpy"], pT: ["", ""] }[this.kindOfChart] as [string, string];
    const values = new Map(result.values.map((value) => [value.key, value]));
    const added: [number, number][] = [];
    for (const [key, value] of values) {
      if (!key.endsWith(x) || x === "") continue;
      const other = values.get(key.slice(0, -x.length) + y);
      if (typeof value.value === "number" && typeof other?.value === "number" && value.value !== -777) added.push([value.value, other.value]);
    }
    return { ...chart, points: [...chart.points, ...added.map((place) => ({ look: "cycle", label: "", hover: "", place }))] };
  }

  private showTabs(): void {
    const name = newId("charts");
    replace(this.tabs, ...kinds.map((kind) => make("button", {
      type: "button", "data-kind": kind, "aria-pressed": String(kind === this.kindOfChart),
      click: () => {
        this.kindOfChart = kind;
        const { state } = this.app.store;
        this.askCharts({ ...nested(state.requests[this.place]), units: state.units }, state);
      },
    }, say(`chart.${kind}`))), this.charts.length > 1 && choices(
      this.charts.map((chart, i) => ({ value: String(i), label: this.labelOfCircuit(chart.circuit) })),
      String(Math.min(this.circuitOfChart, this.charts.length - 1)), { id: name, "aria-label": say("chart.fluid") },
      (value) => { this.circuitOfChart = Number(value); this.showChart(); }));
  }

  private labelOfCircuit(key: string): string {
    const kind = kindNamed(this.app, String(this.app.store.state.requests[this.place].get("request")));
    return kind.circuits.find((circuit) => circuit.key === key)?.label ?? key;
  }

  // Points of the chart bear the numbers of the drawing.
  private keyOf(label: string | null): string | null {
    if (label === null) return null;
    const circuit = this.charts[this.circuitOfChart]?.circuit ?? "";
    return this.result?.points.find((point) => (point.circuit ?? "") === circuit && labelOfPoint(point) === label)?.key ?? null;
  }

  private labelOf(key: string | null): string | null {
    const point = this.result?.points.find((one) => one.key === key);
    const circuit = this.charts[this.circuitOfChart]?.circuit ?? "";
    return point && (point.circuit ?? "") === circuit ? labelOfPoint(point) : null;
  }
}

function labelOfPoint(point: { number: number; stage?: number }): string {
  return point.stage ? `${point.number}(${point.stage})` : String(point.number);
}
