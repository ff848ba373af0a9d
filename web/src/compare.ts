// The request of the cycle view for several refrigerants side by side.
import { fluidNamed, kindNamed, type App, type ViewPart } from "./app";
import { Asking } from "./asking";
import { ChartView, pngBlob, svgText } from "./chart";
import { choices, make, newId, replace } from "./dom";
import { fullName, scrolled } from "./figures";
import { csvOf, save } from "./files";
import { fluidList } from "./fluid";
import { isMissing, shown, shownUnit, withUnit } from "./numbers";
import { fluidKeys, nested, replaced } from "./request";
import type { State } from "./state";
import type { Chart, Result } from "./types";
import { say } from "./words";

interface Column { fluid: string; result: Result | null; refusal: string }

// Which way is better; nothing is said of the other figures.
function better(key: string): "most" | "least" | null {
  if (/cop_|capacity|cycle_efficiency|turbine_power/.test(key)) return "most";
  if (/pressure_ratio|power|outlet\.temperature|swept_volume/.test(key)) return "least";
  return null;
}

export class CompareView implements ViewPart {
  readonly element: HTMLElement;
  private readonly list = make("div", { class: "chips" });
  private readonly table = make("div", { class: "compare-table" });
  private readonly chart = new ChartView();
  private readonly note = make("p", { class: "status", role: "status" });
  private readonly asking = new Asking();
  private columns: Column[] = [];
  private circuit = 0;
  private asked = "";

  constructor(private readonly app: App) {
    this.element = make("div", { class: "view wide-view" }, make("h2", {}, say("view.compare")),
      make("p", { class: "about" }, say("compare.lead")), this.list, this.note, this.table,
      make("section", { class: "chart-part", "aria-label": say("chart.ph") },
        make("div", { class: "chart-bar" }, make("h3", {}, say("chart.ph")), make("div", { class: "buttons" },
          this.button("chart.cycle", () => this.chart.fit()), this.button("chart.whole", () => this.chart.whole()),
          this.button("download.svg", () => save("comparison.svg", svgText(this.chart.svg), "image/svg+xml")),
          this.button("download.png", async () => save("comparison.png", await pngBlob(this.chart.svg))))),
        this.chart.element));
  }

  show(state: State): void {
    const question = JSON.stringify([state.units, state.fluids, this.circuit, ...state.requests.cycle]);
    if (question === this.asked) return;
    this.asked = question;
    this.showList(state);
    this.note.textContent = say("result.waiting");
    this.asking.soon((signal) => this.ask(state, signal), (why) => { this.note.textContent = why.message; });
  }

  private button(word: Parameters<typeof say>[0], act: () => void | Promise<void>): HTMLElement {
    return make("button", { type: "button", class: "quiet", click: () => void act() }, say(word));
  }

  private showList(state: State): void {
    const { store } = this.app;
    const put = (fluids: readonly string[]) => store.change({ ...store.state, fluids });
    const id = newId("add");
    const input = make("input", {
      id, type: "text", list: fluidList(this.app), autocomplete: "off", "data-name": "compare add",
      keydown: (event: KeyboardEvent) => { if (event.key === "Enter") add(); },
      change: () => add(),
    });
    const add = () => {
      const fluid = fluidNamed(this.app, input.value.trim());
      if (fluid && !state.fluids.includes(fluid.shown)) put([...store.state.fluids, fluid.shown]);
    };
    const kind = kindNamed(this.app, String(state.requests.cycle.get("request")));
    replace(this.list, make("span", { class: "label" }, `${kind.title}, ${say("compare.fluids").toLowerCase()}`),
      kind.circuits.length > 1 && choices(kind.circuits.map((one, i) => ({ value: String(i), label: one.label })), String(this.circuit),
        { "aria-label": say("chart.fluid") }, (value) => { this.circuit = Number(value); this.show(store.state); }),
      ...state.fluids.map((fluid, i) => make("span", { class: `chip s${i % 8}` }, fluid, make("button", {
        type: "button", class: "quiet", "aria-label": say("compare.remove", { name: fluid }),
        click: () => put(store.state.fluids.filter((one) => one !== fluid)),
      }, "×"))),
      make("label", { for: id, class: "unseen" }, say("compare.add")), input,
      make("button", { type: "button", click: add }, say("compare.add")),
      make("button", { type: "button", class: "quiet", "data-format": "csv", click: () => this.saveCsv() }, ".csv"));
  }

  private async ask(state: State, signal: AbortSignal): Promise<void> {
    const flat = state.requests.cycle;
    const kind = kindNamed(this.app, String(flat.get("request")));
    const key = fluidKeys(kind)[this.circuit] ?? fluidKeys(kind)[0]!;
    const requests = state.fluids.map((fluid) => ({ ...nested(replaced(flat, key, [[key, fluid]])), units: state.units }));
    this.columns = await Promise.all(requests.map(async (request, i): Promise<Column> => {
      const result = await this.app.calculation.run(request, signal).catch((why: Error) => {
        if (why.name === "AbortError") throw why;
        return why;
      });
      if (result instanceof Error) return { fluid: state.fluids[i]!, result: null, refusal: result.message };
      const refused = result.outcome !== "success" && result.values.length === 0;
      return { fluid: state.fluids[i]!, result: refused ? null : result, refusal: refused ? (result.message ?? "").replace(/^Error: /, "") : "" };
    }));
    this.note.textContent = "";
    this.showTable(state);
    const charts = await Promise.all(requests.map((request, i) => this.columns[i]!.result
      ? this.app.calculation.chart({ kind: "ph", request, units: state.units }, signal).catch(() => []) : []));
    this.showChart(charts.map((some) => some[this.circuit] ?? some[0]));
  }

  private rows(state: State) {
    const kind = kindNamed(this.app, String(state.requests.cycle.get("request")));
    return kind.leading.map((key) => {
      const values = this.columns.map((column) => column.result?.values.find((value) => value.key === key));
      const numbers = values.map((value) => (typeof value?.value === "number" && !isMissing(value.value) ? value.value : NaN));
      const sound = numbers.filter((value) => !Number.isNaN(value));
      const way = better(key);
      const best = way === "most" ? Math.max(...sound) : Math.min(...sound);
      const differ = sound.length > 1 && Math.max(...sound) - Math.min(...sound) > 1e-6 * Math.abs(best);
      const found = values.find(Boolean);
      return { key, name: found ? fullName(found) : key, unit: found?.unit, numbers, best: numbers.map((value) => way !== null && differ && value === best) };
    }).filter((row) => row.numbers.some((value) => !Number.isNaN(value)));
  }

  private showTable(state: State): void {
    const facts = this.columns.map((column) => fluidNamed(this.app, column.fluid));
    const rows = this.rows(state);
    const gwp = facts.map((one) => (one?.gwp100 ? Object.values(one.gwp100).at(-1)! : NaN));
    const plain = (name: string, texts: string[]) => make("tr", {}, make("th", { scope: "row" }, name), ...texts.map((text) => make("td", {}, text)));
    replace(this.table, scrolled(make("table", { class: "compare" },
      make("thead", {}, make("tr", {}, make("th", { scope: "col" }, say("compare.figure")), ...this.columns.map((column, i) =>
        make("th", { scope: "col" }, make("span", { class: `swatch s${i % 8}`, "aria-hidden": "true" }), column.fluid,
          column.refusal !== "" && make("small", { class: "refusal" }, `${say("compare.refused")}: ${column.refusal}`))))),
      make("tbody", {}, ...rows.map((row) => make("tr", { "data-row": row.key },
        make("th", { scope: "row" }, row.name, row.unit && row.unit !== "-" ? make("small", {}, shownUnit(row.unit)) : null),
        ...row.numbers.map((value, i) => make("td", {
          class: row.best[i] ? "best" : "", title: Number.isNaN(value) ? say("number.missing") : withUnit(String(value), row.unit),
          "data-value": Number.isNaN(value) ? "" : value,
        }, shown(value), row.best[i] && make("span", { class: "mark" }, ` ${say("compare.best")}`))))),
      plain(say("compare.hotter"), gwp.map((value) => shown(value))),
      plain(say("compare.safety"), facts.map((one) => one?.safety_class ?? "–")))), say("view.compare")));
  }

  // Domes and cycles of all in one chart.
  private showChart(charts: (Chart | undefined)[]): void {
    const there = charts.map((chart, i) => ({ chart, i })).filter((one): one is { chart: Chart; i: number } => Boolean(one.chart));
    const first = there[0]?.chart;
    if (!first) return;
    const lines = there.flatMap(({ chart, i }) => chart.lines.filter((line) => line.look === "dome" || /cycle/.test(line.look))
      .map((line) => ({
        ...line, look: line.look === "dome" ? "series dome-of" : "series cycle-of cycle", number: i % 8, label: line.look === "dome" ? "" : this.columns[i]!.fluid,
        hover: `${this.columns[i]!.fluid}${line.look === "dome" ? `, ${line.hover.toLowerCase()}` : ""}`,
      })));
    const axis = (which: "x" | "y") => ({
      ...first[which], low: Math.min(...there.map(({ chart }) => chart[which].low)), high: Math.max(...there.map(({ chart }) => chart[which].high)),
    });
    this.chart.show({ ...first, title: say("view.compare"), x: axis("x"), y: axis("y"), lines, points: [] });
  }

  private saveCsv(): void {
    save("comparison.csv", csvOf([["key", "name", "unit", ...this.columns.map((column) => column.fluid)],
      ...this.rows(this.app.store.state).map((row) => [row.key, row.name, row.unit, ...row.numbers.map((value) => (Number.isNaN(value) ? "" : value))])]), "text/csv");
  }
}
