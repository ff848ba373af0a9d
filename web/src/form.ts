// The form of a request, made from the catalogue: its fields in the order of the circuit, each with the ways in which
// it can be given, its unit and its limits.
import { kindNamed, type App } from "./app";
import { fluidFields } from "./fluid";
import { choices, make, newId, replace } from "./dom";
import { joined, numberIn, partsOf, shown, shownUnit, withUnit, writtenNumber } from "./numbers";
import { isCycle, optionGiven, parametersOfStage, replaced, type Flat, type Scalar } from "./request";
import type { Option, Parameter, RequestKind, Result } from "./types";
import { withRequest, type Place, type State } from "./state";
import { say } from "./words";

const labelOfPlace = (place: string): string => {
  const text = place.replace(/^stage\d+\.?/, "").replaceAll("_", " ").trim();
  return text === "" ? say("form.general") : text[0]!.toUpperCase() + text.slice(1).replace(/^(m|l)t /i, (w) => w.toUpperCase());
};

// One parameter that is shown, and how it follows the state.
interface Field {
  parameter: Parameter;
  element: HTMLElement;
  show(flat: Flat): string;  // what is wrong with its value by itself; empty where nothing is
  complain(text: string): void;
}

export class Form {
  readonly element: HTMLFormElement;
  private fields: Field[] = [];
  private structure = "";
  private owners = new Map<Parameter, string>();  // the key that each parameter has, where several share their options
  private result: Result | null = null;
  private openGroups = new Map<string, boolean>();

  // `offered` are the requests to choose from.
  constructor(private readonly app: App, private readonly place: Place, private readonly offered: RequestKind[]) {
    this.element = make("form", {
      class: "form", "aria-label": say("form"), submit: (event: Event) => event.preventDefault(),
    });
  }

  // What the fields start from when another way of giving them is chosen.
  follow(result: Result): void { this.result = result; }

  // Tells what is wrong with a field by itself; empty where nothing is.
  show(state: State): string {
    const flat = state.requests[this.place];
    const kind = kindNamed(this.app, String(flat.get("request")));
    const structure = this.structureOf(state, kind, flat);
    if (structure !== this.structure) {
      this.structure = structure;
      this.build(kind, flat);
    }
    const problems = this.fields.map((field) => field.show(flat));
    return problems.find((problem) => problem !== "") ?? "";
  }

  // Puts a complaint beside the fields that it names; tells whether there was one.
  complain(text: string, key: string): boolean {
    let found = false;
    for (const field of this.fields) {
      const mine = text !== "" && field.parameter.options.some((option) =>
        option.key !== "" && (option.key === key || text.startsWith(`${option.key} `) || text.startsWith(`${option.key}:`)));
      field.complain(mine ? text : "");
      found ||= mine;
    }
    return found;
  }

  // ----------------------------------------------------------------------------------------------------- its making

  private structureOf(state: State, kind: RequestKind, flat: Flat): string {
    const given = [...flat.keys()].filter((key) => !key.endsWith("title"));
    return [kind.name, state.units, flat.get("stages"), flat.get("property"), ...given,
      ...[...flat].map(([, value]) => (typeof value === "string" ? partsOf(value).unit.slice(0, 8) : ""))].join();
  }

  private build(kind: RequestKind, flat: Flat): void {
    const old = document.activeElement instanceof HTMLElement && this.element.contains(document.activeElement) ? document.activeElement : null;
    this.fields = [];
    this.owners = ownersOf(kind, flat);
    replace(this.element, this.chooser(kind), ...kind.circuits.map((_, number) => this.circuit(kind, flat, number)));
    if (!old?.dataset.name) return;
    const same = this.element.querySelector<HTMLElement>(`[data-name="${CSS.escape(old.dataset.name)}"]`);
    same?.focus();
    // Who is typing goes on at the same place: R41 is a refrigerant on the way to R410A.
    if (old instanceof HTMLInputElement && old.type === "text" && same instanceof HTMLInputElement && same.type === "text")
      same.setSelectionRange(old.selectionStart, old.selectionEnd);
  }

  private chooser(kind: RequestKind): HTMLElement | null {
    if (this.offered.length < 2) return null;
    const id = newId("request");
    const select = choices(this.offered.map((one) => ({ value: one.name, label: one.title })), kind.name,
      { id, "data-name": "request" }, (name) => void this.choose(name));
    return make("div", { class: "chooser" },
      make("label", { for: id }, say(isCycle(kind) ? "form.request" : "form.table")), select,
      make("p", { class: "about" }, `${kind.about[0]!.toUpperCase()}${kind.about.slice(1)}.`));
  }

  private async choose(name: string): Promise<void> {
    const { state } = this.app.store;
    const { request } = await this.app.calculation.convert({ template: name, units: state.units });
    this.app.store.change(withRequest(this.app.store.state, this.place, request));
  }

  private circuit(kind: RequestKind, flat: Flat, number: number): HTMLElement {
    const circuit = kind.circuits[number]!;
    const before = circuit.key === "" ? "" : `${circuit.key}.`;
    const parts: (HTMLElement | null)[] = [fluidFields(this.app, this.place, flat, `${before}fluid`)];
    const parameters = circuit.parameters.filter((one) => one.absent !== "unused" && one.absent !== "derived"
      && one.absent !== "optional" && one.options.some((option) => option.form !== "count"));
    parts.push(...this.groups(parameters.filter((one) => one.absent !== "zero"), flat));
    if (number === 0 && kind.stages) parts.push(...this.stages(kind, flat));
    const losses = parameters.filter((one) => one.absent === "zero");
    if (losses.length > 0) parts.push(this.losses(circuit.key, losses, flat));
    if (circuit.key === "") return make("div", { class: "circuit-form" }, ...parts);
    return make("fieldset", { class: "circuit-form", "data-circuit": number }, make("legend", {}, circuit.label), ...parts);
  }

  private groups(parameters: Parameter[], flat: Flat, level = "h3"): HTMLElement[] {
    const places = new Map<string, Parameter[]>();
    for (const parameter of parameters)
      places.set(parameter.place, [...(places.get(parameter.place) ?? []), parameter]);
    return [...places].map(([place, members]) => {
      const id = newId("group");
      return make("div", { class: "group", role: "group", "aria-labelledby": id },
        make(level as "h3", { id }, labelOfPlace(place)),
        ...members.map((parameter) => this.field(parameter, flat, labelOfPlace(place))));
    });
  }

  private losses(circuit: string, parameters: Parameter[], flat: Flat): HTMLElement {
    const details = make("details", {
      class: "losses", open: this.openGroups.get(circuit) ?? false,
      toggle: () => this.openGroups.set(circuit, details.open),
    }, make("summary", {}, say("form.drops")), ...this.groups(parameters, flat, "h4"));
    return details;
  }

  private stages(kind: RequestKind, flat: Flat): HTMLElement[] {
    const count = Number(flat.get("stages") ?? 2);
    const id = newId("stages");
    const numbers = Array.from({ length: kind.stages!.most - 1 }, (_, i) => String(i + 2));
    const select = choices(numbers.map((value) => ({ value, label: value })), String(count),
      { id, "data-name": "stages" }, (value) => this.setStages(flat, Number(value)));
    const all: HTMLElement[] = [make("div", { class: "field" }, make("label", { for: id }, say("form.stages")), select)];
    for (let stage = 1; stage < count; ++stage) {
      const parameters = parametersOfStage(kind, stage);
      const main = parameters.filter((one) => one.absent !== "zero");
      all.push(make("fieldset", { class: "stage" }, make("legend", {}, say("form.stage", { number: stage })),
        ...main.map((parameter) => this.field(parameter, flat, say("form.stage", { number: stage }))),
        this.losses(`stage${stage}`, parameters.filter((one) => one.absent === "zero"), flat)));
    }
    return all;
  }

  // A new stage is as the last one.
  private setStages(flat: Flat, count: number): void {
    const before = Number(flat.get("stages") ?? 2);
    const next = new Map([...flat].filter(([key]) => Number(/^stage(\d+)\./.exec(key)?.[1] ?? 0) < count));
    next.set("stages", count);
    for (let stage = before; stage < count; ++stage)
      for (const [key, value] of flat)
        if (key.startsWith(`stage${before - 1}.`)) next.set(key.replace(/^stage\d+/, `stage${stage}`), value);
    this.change(next, "");
  }

  // -------------------------------------------------------------------------------------------------------- a field

  private field(parameter: Parameter, flat: Flat, place: string): HTMLElement {
    const id = newId("field"), noteId = newId("note");
    const own = this.owners.get(parameter);
    const taken = new Set([...this.owners.values()].filter((key) => key !== own));
    const options = this.distinct(parameter).filter((one) => !taken.has(one.key));
    const given = optionGiven(flat, parameter, taken) ?? parameter.options.find((one) => one.number === parameter.typical.option)
      ?? parameter.options[0]!;
    const label = options.length > 1
      ? choices(options.map((one) => ({ value: String(one.number), label: one.label })), String(given.number), {
        class: "option", "aria-label": say("form.choice", { label: parameter.label }), "data-name": `${parameter.label} how`,
      }, (value) => this.chooseOption(parameter, given, options.find((one) => String(one.number) === value)!))
      : make("label", { for: id }, given.label);
    const note = make("p", { class: "complaint", id: noteId, hidden: true });
    const control = given.form === "word" ? this.word(parameter, flat, id, place)
      : given.form === "quantity" ? this.quantity(given, id, noteId, place) : null;
    const element = make("div", { class: "field", "data-key": given.key }, label, ...(control?.elements ?? []), note);
    const field: Field = {
      parameter,
      element,
      show: (now) => {
        const problem = control?.show(now) ?? "";
        element.classList.toggle("wrong", problem !== "" || note.dataset.told === "yes");
        if (note.dataset.told !== "yes") {
          note.hidden = problem === "";
          note.textContent = problem;
        }
        return problem === "" ? "" : `${place}, ${given.label}: ${problem}`;
      },
      complain: (text) => {
        note.dataset.told = text === "" ? "no" : "yes";
        note.textContent = text.replace(/^[\w.]+ = (?:[^:]*: )?/, (found) => (found.endsWith(": ") ? "" : found));
        note.textContent = note.textContent && note.textContent[0]!.toUpperCase() + note.textContent.slice(1);
        note.hidden = text === "";
        element.classList.toggle("wrong", text !== "");
      },
    };
    this.fields.push(field);
    return element;
  }

  // Options under one key are one field: the words of a property.
  private distinct(parameter: Parameter): Option[] {
    if (parameter.options.every((one) => one.form === "word")) return parameter.options.slice(0, 1);
    return parameter.options;
  }

  // The number without a unit has the quantity of the property that runs through a table.
  private quantityOf(option: Option, flat: Flat): string {
    if (!["from", "to", "step"].includes(option.key)) return option.quantity;
    const word = this.app.catalogue.property_words.find((one) => one.word === flat.get("property"));
    if (!word) return option.quantity;
    return option.key === "step" && word.quantity === "temperature" ? "temperature difference"
      : option.key === "step" && word.quantity === "pressure" ? "pressure difference" : word.quantity;
  }

  private quantity(option: Option, id: string, noteId: string, place: string) {
    const { app } = this;
    const { store, units } = app;
    const flatNow = () => store.state.requests[this.place];
    const quantity = this.quantityOf(option, flatNow());
    const all = units.of(quantity).map((unit) => unit.symbol);
    let unit = "";
    const input = make("input", {
      id, type: "text", inputmode: "decimal", autocomplete: "off", spellcheck: "false", "data-name": option.key,
      "aria-label": `${place}: ${option.label}`, "aria-describedby": noteId,
      input: () => this.change(new Map(flatNow()).set(option.key, this.written(input.value, unit)), option.key),
      keydown: (event: KeyboardEvent) => this.step(event, option, quantity, input, unit),
    });
    const select = all.length > 1
      ? choices(all.map((value) => ({ value, label: shownUnit(value) || "1" })), "", {
        class: "unit", "aria-label": say("form.unit", { label: option.label }), "data-name": `${option.key} unit`,
      }, (symbol) => {
        const flat = flatNow();
        const now = this.asText(flat.get(option.key), quantity);
        this.change(new Map(flat).set(option.key, this.scalar(units.converted(now, quantity, symbol))), "");
      })
      : make("span", { class: "unit" }, shownUnit(all[0] ?? ""));
    const show = (flat: Flat): string => {
      const parts = partsOf(this.asText(flat.get(option.key), quantity));
      unit = parts.unit;
      const text = parts.text.replace("-", "\u2212");
      if (document.activeElement !== input || numberIn(input.value) !== numberIn(text)) input.value = text;
      if (select instanceof HTMLSelectElement) select.value = unit;
      const problem = this.problemOf(option, quantity, parts.text, unit);
      input.setAttribute("aria-invalid", String(problem !== ""));
      input.title = this.limitsText(option, quantity, unit);
      return problem;
    };
    return { elements: [input, select], show };
  }

  private word(parameter: Parameter, flat: Flat, id: string, place: string) {
    const key = parameter.options[0]!.key;
    const select = choices(parameter.options.map((one) => ({ value: one.label, label: one.label })), String(flat.get(key)),
      { id, class: "word", "aria-label": `${place}: ${parameter.label}`, "data-name": key },
      (value) => void this.chooseWord(key, value));
    return { elements: [select], show: (now: Flat) => { select.value = String(now.get(key)); return ""; } };
  }

  // The limits of a table belong to its property: other ones are proposed.
  private async chooseWord(key: string, value: string): Promise<void> {
    const proposals: Record<string, [string, string, string]> = {
      temperature: ["0 °C", "40 °C", "5 K"], pressure: ["2 bar", "12 bar", "1 bar"],
      density: ["10 kg/m3", "100 kg/m3", "10 kg/m3"],
    };
    const flat = new Map(this.app.store.state.requests[this.place]);
    flat.set(key, value);
    const [from, to, step] = proposals[value] ?? proposals.temperature!;
    flat.set("from", from).set("to", to);
    flat.delete("count");
    flat.set("step", step);
    this.change(flat, "");
  }

  private written(typed: string, unit: string): Scalar {
    const number = numberIn(typed);
    return this.scalar(joined(Number.isNaN(number) ? typed.trim() : writtenAs(typed), unit));
  }

  private scalar(text: string): Scalar {
    const { text: number, unit } = partsOf(text);
    return unit === "" && !Number.isNaN(numberIn(number)) ? numberIn(number) : text;
  }

  private asText(value: Scalar | undefined, quantity: string): string {
    if (typeof value === "string") {
      const parts = partsOf(value);
      return parts.unit === "" && this.app.units.usual(quantity, this.app.store.state.units) !== ""
        ? joined(parts.text, this.app.units.usual(quantity, this.app.store.state.units)) : value;
    }
    return value === undefined ? "" : joined(String(value), this.app.units.usual(quantity, this.app.store.state.units));
  }

  private problemOf(option: Option, quantity: string, text: string, unit: string): string {
    const value = numberIn(text);
    if (Number.isNaN(value)) return say("form.allowed.none");
    if (!option.limits) return "";
    const inner = this.app.units.toInner(value, quantity, unit);
    const slack = 1e-9 * Math.max(1, Math.abs(inner));
    if (inner >= option.limits.lower - slack && inner <= option.limits.upper + slack) return "";
    return this.limitsText(option, quantity, unit);
  }

  private limitsText(option: Option, quantity: string, unit: string): string {
    if (!option.limits) return "";
    const end = (inner: number) => withUnit(shown(this.app.units.fromInner(inner, quantity, unit)), unit);
    return say("form.allowed", { lower: end(option.limits.lower), upper: end(option.limits.upper) });
  }

  // Up and down change the last digit that an engineer would: a kelvin, a tenth, a hundredth of an efficiency.
  private step(event: KeyboardEvent, option: Option, quantity: string, input: HTMLInputElement, unit: string): void {
    if (event.key !== "ArrowUp" && event.key !== "ArrowDown") return;
    const value = numberIn(input.value);
    if (Number.isNaN(value)) return;
    event.preventDefault();
    const size = quantity.startsWith("temperature") ? 1
      : 10 ** Math.floor(Math.log10(Math.max(Math.abs(value), 1e-6)) - (quantity === "fraction" ? 1 : 0.7));
    const next = Number((value + (event.key === "ArrowUp" ? size : -size)).toPrecision(10));
    input.value = writtenNumber(next).replace("-", "\u2212");
    this.change(new Map(this.app.store.state.requests[this.place]).set(option.key, this.written(input.value, unit)), option.key);
  }

  // Another way of giving the same parameter starts from what the last result says of it: the cycle stays.
  private chooseOption(parameter: Parameter, from: Option, to: Option): void {
    const flat = this.app.store.state.requests[this.place];
    const value: Scalar = to.form === "yes" ? true : to.form === "no" ? false : this.startOf(parameter, to);
    this.change(replaced(flat, from.key, [[to.key, value]]), "");
  }

  private startOf(parameter: Parameter, option: Option): Scalar {
    const { units } = this.app;
    const { state } = this.app.store;
    const symbol = units.usual(option.quantity, state.units);
    const text = (number: number) => this.scalar(joined(writtenNumber(Number(number.toPrecision(5))), symbol));
    const last = option.key.split(".").at(-1)!;
    const place = option.key.slice(0, -last.length - 1);
    const candidates = [option.key, `${place}.outlet.${last.replace(/^outlet_/, "")}`, `performance.${last}_capacity`,
      `${place.replace(/\.?compressor\.capacity$/, "")}.performance.${last}_capacity`.replace(/^\./, ""), `performance.${last}`];
    for (const key of candidates) {
      const found = this.result?.values.find((value) => value.key === key);
      if (typeof found?.value === "number" && found.value !== -777) return text(found.value);
    }
    if (option.number === parameter.typical.option) return text(units.fromInner(parameter.typical.value, option.quantity, symbol));
    const lower = option.limits?.lower ?? 0;
    return text(units.fromInner(option.quantity.endsWith("difference") ? 0 : Math.max(lower, 1), option.quantity, symbol));
  }

  private change(flat: Flat, touched: string): void {
    const { store } = this.app;
    store.change(withRequest(store.state, this.place, flat), touched === "" ? "" : `${this.place} ${touched}`);
  }
}

// As it was typed, with the signs that files have.
function writtenAs(typed: string): string {
  return typed.trim().replace("\u2212", "-").replace(",", ".");
}

// First and second property of a state have the same options: what the first has is not the second's.
function ownersOf(kind: RequestKind, flat: Flat): Map<Parameter, string> {
  const owners = new Map<Parameter, string>();
  for (const { parameters } of kind.circuits)
    for (const parameter of parameters) {
      if (parameter.options.some((option) => option.form === "word")) continue;
      const key = optionGiven(flat, parameter, new Set(owners.values()))?.key;
      if (key) owners.set(parameter, key);
    }
  return owners;
}
