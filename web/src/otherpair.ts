// A state point from properties that its request does not take: enthalpy, entropy, quality. The calculation finds the
// state, and the request gets its temperature and pressure, or density where there are two phases.
import type { App } from "./app";
import { Asking } from "./asking";
import { choices, make, newId, replace } from "./dom";
import { joined, numberIn, writtenNumber } from "./numbers";
import { componentsOf, type Scalar } from "./request";
import { withRequest, type Place, type State } from "./state";
import type { StateQuestion } from "./types";
import { say } from "./words";

const quantities = {
  T: "temperature", P: "pressure", D: "density", H: "specific energy", S: "entropy or heat capacity", Q: "quality",
} as const;
type Letter = keyof typeof quantities;
const letters = Object.keys(quantities) as Letter[];
const ofRequest = ["temperature", "pressure", "density"] as const;

export class OtherPair {
  readonly element = make("details", { class: "other-pair" });
  private readonly fields = make("div", {});
  private readonly note = make("p", { class: "complaint", role: "status" });
  private readonly asking = new Asking();
  private readonly given: { letter: Letter; text: string; unit: string }[] = [
    { letter: "P", text: "", unit: "" }, { letter: "H", text: "", unit: "" }];

  constructor(private readonly app: App, private readonly place: Place) {
    this.element.append(make("summary", {}, say("state.other")), this.fields,
      make("div", { class: "buttons" },
        make("button", { type: "button", "data-act": "state.find", click: () => this.find() }, say("state.find"))),
      this.note);
  }

  show(state: State): void {
    this.element.hidden = state.requests[this.place].get("request") !== "state-point";
    if (this.element.hidden) return replace(this.fields);
    for (const one of this.given)
      if (one.text === "") one.unit = this.app.units.usual(quantities[one.letter], state.units);
    this.fill(state);
  }

  private fill(state: State): void {
    replace(this.fields, ...this.given.map((one, i) => {
      const label = newId("property");
      const value = make("input", {
        type: "text", inputmode: "decimal", value: one.text, autocomplete: "off", "data-name": `other value ${i}`,
        "aria-labelledby": label, input: () => { one.text = value.value; },
        keydown: (event: KeyboardEvent) => { if (event.key === "Enter") this.find(); },
      });
      const property = choices(
        letters.filter((letter) => letter !== this.given[1 - i]!.letter).map((letter) => ({ value: letter, label: say(`state.${letter}`) })),
        one.letter, { id: label, class: "option", "data-name": `other property ${i}`, "aria-label": say("state.property", { number: i + 1 }) },
        (chosen) => {
          one.letter = chosen as Letter;
          one.unit = this.app.units.usual(quantities[one.letter], state.units);
          this.fill(state);
        });
      const units = this.app.units.of(quantities[one.letter]);
      const unit = units.length > 1 && choices(units.map(({ symbol }) => ({ value: symbol, label: symbol || "1" })), one.unit,
        { class: "unit", "data-name": `other unit ${i}`, "aria-label": say("form.unit", { label: say(`state.${one.letter}`) }) },
        (chosen) => { one.unit = chosen; });
      return make("div", { class: "field" }, property, value, unit);
    }));
  }

  private find(): void {
    const { state } = this.app.store;
    const flat = state.requests[this.place];
    const parts = componentsOf(flat, "fluid");
    const question: StateQuestion = { fluid: parts.size > 0 ? Object.fromEntries(parts) : String(flat.get("fluid") ?? "") };
    for (const key of ["reference_state", "reference_of", "fractions"] as const)
      if (flat.has(key)) question[key] = String(flat.get(key));
    for (const one of this.given) {
      const value = numberIn(one.text);
      if (Number.isNaN(value)) return this.tell(say("form.allowed.none"));
      question[one.letter] = joined(String(value), one.unit);
    }
    this.asking.now(async (signal) => {
      const found = await this.app.calculation.state(question, signal);
      const second = found.quality === null ? "pressure" : "density";
      const values: [string, Scalar][] = [this.written("temperature", found.temperature, state), this.written(second, found[second], state)];
      const kept = [...flat].filter(([key]) => !(ofRequest as readonly string[]).includes(key));
      this.tell("");
      this.app.store.change(withRequest(this.app.store.state, this.place, new Map([...kept, ...values])), "");
    }, (why) => this.tell(why.message));
  }

  private written(key: "temperature" | "pressure" | "density", value: number, state: State): [string, string] {
    const unit = this.app.units.usual(key, state.units);
    return [key, joined(writtenNumber(this.app.units.fromInner(value, key, unit)), unit)];
  }

  private tell(text: string): void { this.note.textContent = text; }
}
