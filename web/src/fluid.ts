// The fields of a refrigerant: one by its name, or an own blend by its components.
import { fluidNamed, type App } from "./app";
import { make, newId } from "./dom";
import { numberIn } from "./numbers";
import { componentsOf, replaced, type Flat, type Scalar } from "./request";
import { withRequest, type Place } from "./state";
import type { FluidFacts } from "./types";
import { say } from "./words";

const shelf = "frigana.blends";

type Blends = Record<string, Record<string, number>>;

export function keptBlends(): Blends {
  try {
    return JSON.parse(localStorage.getItem(shelf) ?? "{}") as Blends;
  } catch {
    return {};
  }
}

function keep(name: string, parts: Map<string, number>): void {
  try {
    localStorage.setItem(shelf, JSON.stringify({ ...keptBlends(), [name]: Object.fromEntries(parts) }));
  } catch {
    // A browser that stores nothing keeps no blends; the address holds them all the same.
  }
}

// The list of all refrigerants, once in the page.
export function fluidList(app: App): string {
  const id = "fluids";
  if (!document.getElementById(id))
    document.body.append(make("datalist", { id },
      ...app.fluids.filter((fluid) => !fluid.fault).map((fluid) =>
        make("option", { value: fluid.shown }, otherNames(fluid)))));
  return id;
}

function otherNames(fluid: FluidFacts): string {
  const names = [fluid.designation?.replace("-", "") ?? "", fluid.full_name];
  return names.filter((name) => name !== "" && name.toLowerCase() !== fluid.shown.toLowerCase()).join(", ");
}

export function fluidFields(app: App, place: Place, flat: Flat, key: string): HTMLElement {
  const { store } = app;
  const now = () => store.state.requests[place];
  const change = (next: Flat, touched: string) => store.change(withRequest(store.state, place, next), touched);
  const parts = componentsOf(flat, key);
  return parts.size > 0 ? blendFields(app, key, parts, now, change) : nameField(app, key, String(flat.get(key) ?? ""), now, change);
}

type Change = (next: Flat, touched: string) => void;

function nameField(app: App, key: string, name: string, now: () => Flat, change: Change): HTMLElement {
  const id = newId("fluid"), noteId = newId("note");
  const facts = make("p", { class: "facts", id: noteId });
  const tell = (text: string) => {
    const fluid = fluidNamed(app, text);
    const gwp = fluid?.gwp100 && Object.values(fluid.gwp100).at(-1);
    facts.textContent = fluid
      ? [otherNames(fluid), fluid.safety_class, gwp === undefined ? "" : `GWP ${gwp}`]
        .filter(Boolean).join(", ")
      : "";
  };
  tell(name);
  const input = make("input", {
    id, type: "text", list: fluidList(app), value: name, autocomplete: "off", spellcheck: "false", "data-name": key,
    "aria-describedby": noteId,
    change: () => change(replaced(now(), key, [[key, input.value.trim()]]), ""),
    input: () => { if (fluidNamed(app, input.value.trim())) change(replaced(now(), key, [[key, input.value.trim()]]), key); tell(input.value); },
    focus: () => input.select(),
  });
  const blends = Object.entries(keptBlends());
  return make("div", { class: "fluid", "data-key": key },
    make("label", { for: id }, say("form.fluid")), input, facts,
    make("div", { class: "buttons" },
      make("button", {
        type: "button", class: "quiet", "data-name": `${key} blend`,
        click: () => change(replaced(now(), key, [[`${key}.R32`, 0.5], [`${key}.R1234yf`, 0.5]]), ""),
      }, say("form.blend.mix")),
      ...blends.map(([title, fractions]) => make("button", {
        type: "button", class: "quiet",
        click: () => change(replaced(now(), key, Object.entries(fractions).map(([one, share]): [string, Scalar] =>
          [`${key}.${one}`, share])), ""),
      }, title))));
}

function blendFields(app: App, key: string, parts: Map<string, number>, now: () => Flat, change: Change): HTMLElement {
  const put = (next: [string, number][], touched = "") =>
    change(replaced(now(), key, next.map(([name, share]): [string, Scalar] => [`${key}.${name}`, share])), touched);
  const list = () => [...componentsOf(now(), key)];
  const rows = [...parts].map(([name, share], i) => {
    const number = i + 1;
    const component = make("input", {
      type: "text", list: fluidList(app), value: name, autocomplete: "off", "data-name": `${key} component ${i}`,
      "aria-label": say("form.blend.component", { number }),
      change: () => put(list().map((one, j) => (j === i ? [component.value.trim(), one[1]] : one))),
    });
    const fraction = make("input", {
      type: "text", inputmode: "decimal", value: String(share), autocomplete: "off", "data-name": `${key} fraction ${i}`,
      "aria-label": say("form.blend.fraction", { number }),
      change: () => {
        const value = numberIn(fraction.value);
        if (!Number.isNaN(value)) put(list().map((one, j) => (j === i ? [one[0], value] : one)));
      },
    });
    const remove = parts.size > 2 && make("button", {
      type: "button", class: "quiet", "aria-label": say("compare.remove", { name }),
      click: () => put(list().filter((_, j) => j !== i)),
    }, "×");
    return make("div", { class: "component" }, component, fraction, remove);
  });
  const title = make("input", {
    type: "text", value: [...parts].map(([name, share]) => `${name} ${share}`).join(" / ").slice(0, 40),
    "aria-label": say("form.blend.name"),
  });
  return make("div", { class: "fluid", role: "group", "aria-label": say("form.blend"), "data-key": key },
    make("span", { class: "label" }, say("form.blend")), ...rows,
    make("div", { class: "buttons" },
      make("button", { type: "button", class: "quiet", click: () => put([...list(), ["R125", 0.1]]) }, say("form.blend.add")),
      make("button", { type: "button", class: "quiet", click: () => change(replaced(now(), key, [[key, list()[0]?.[0] ?? "R134a"]]), "") },
        say("form.blend.one"))),
    make("div", { class: "component" }, title,
      make("button", {
        type: "button", class: "quiet",
        click: () => { keep(title.value.trim(), new Map(list())); app.tell(title.value.trim()); },
      }, say("form.blend.keep"))));
}
