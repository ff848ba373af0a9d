// Line sizing: its first run offers pipes for each line, and with one picked for each the second run calculates.
import { kindNamed, type App } from "./app";
import { make, replace } from "./dom";
import { figure, leadingFigures, remarks, scrolled } from "./figures";
import { requestFormats, saveAs } from "./files";
import { shownUnit } from "./numbers";
import { RequestView } from "./requestview";
import { withRequest, type State } from "./state";
import type { NamedRequest, RequestKind, Result, Value } from "./types";
import { say } from "./words";

const lines = ["suction_line", "discharge_line", "liquid_line"] as const;
const pickedKey = (line: string) => `${line}.picked`;

export class LinesView extends RequestView {
  private offers = new Map<string, Value>();

  constructor(app: App) {
    super(app, "lines", [kindNamed(app, "line-sizing")], say("view.lines"));
    this.element.classList.add("lines-view");
  }

  // Picks of some lines only are no second run.
  protected override completed(request: NamedRequest): NamedRequest {
    const all = lines.every((line) => typeof (request[line] as NamedRequest | undefined)?.picked === "number");
    if (all) return request;
    const first = structuredClone(request);
    for (const line of lines) delete (first[line] as NamedRequest | undefined)?.picked;
    return first;
  }

  protected override showFigures(kind: RequestKind, result: Result, state: State): void {
    const offered = result.values.filter((value) => value.key.startsWith("pipes."));
    if (offered.length > 0) this.offers = new Map(offered.map((value) => [value.key, value]));
    const figures = this.element.querySelector(".figures")!;
    replace(figures, make("p", { class: "about" }, say("lines.lead")),
      ...lines.map((line) => this.line(line, state)),
      result.remarks.length > 0 && make("h3", {}, say("result.remarks")), result.remarks.length > 0 && remarks(result),
      make("h3", {}, say("result.figures")), leadingFigures(kind, result),
      make("div", { class: "downloads" }, make("h3", {}, say("download")), make("div", { class: "buttons" },
        ...requestFormats.map((format) => make("button", {
          type: "button", "data-format": format,
          click: () => void saveAs(this.app, "lines", format, this.result).catch((why: Error) => this.app.tell(why.message)),
        }, `.${format}`)))));
  }

  private line(line: (typeof lines)[number], state: State): HTMLElement | null {
    const numbers = [...new Set([...this.offers.keys()].map((key) => new RegExp(`^pipes\\.${line}\\.full_load\\.(\\d+)\\.`).exec(key)?.[1])
      .filter((one): one is string => one !== undefined))];
    if (numbers.length === 0) return null;
    const of = (load: string, number: string, what: string) => this.offers.get(`pipes.${line}.${load}.${number}.${what}`);
    const picked = state.requests.lines.get(pickedKey(line));
    const unit = (what: string) => {
      const symbol = shownUnit(of("full_load", numbers[0]!, what)?.unit);
      return symbol === "" ? null : make("small", {}, symbol);
    };
    const group = `pick-${line}`;
    return make("fieldset", { class: "pipes", "data-line": line }, make("legend", {}, say(`lines.${line}`)),
      scrolled(make("table", {}, make("thead", {}, make("tr", {}, make("td", {}), make("th", { scope: "col" }, say("lines.size")),
        make("th", { scope: "col" }, say("lines.inner"), unit("inner_diameter")), make("th", { scope: "col" }, say("lines.velocity"), unit("velocity")),
        make("th", { scope: "col" }, say("lines.saturation"), unit("saturation_drop")))),
      make("tbody", {}, ...numbers.map((number) => {
        const size = String(of("full_load", number, "size")?.value ?? number);
        const radio = make("input", {
          type: "radio", name: group, value: number, checked: String(picked) === number, "aria-label": say("lines.choose", { number, size }),
          change: () => this.pick(line, Number(number)),
        });
        return make("tr", { class: String(picked) === number ? "picked" : "" }, make("td", {}, radio), make("th", { scope: "row" }, size),
          figure(of("full_load", number, "inner_diameter"), 4), figure(of("full_load", number, "velocity"), 3), figure(of("full_load", number, "saturation_drop"), 3));
      }))), say(`lines.${line}`)),
      picked !== undefined && make("button", { type: "button", class: "quiet", click: () => this.pick(line, null) }, say("lines.again")));
  }

  private pick(line: string, number: number | null): void {
    const { store } = this.app;
    const flat = new Map(store.state.requests.lines);
    if (number === null) flat.delete(pickedKey(line));
    else flat.set(pickedKey(line), number);
    store.change(withRequest(store.state, "lines", flat));
  }
}
