// The page: the bar on top, one view below it.
import type { App, ViewPart } from "./app";
import { CompareView } from "./compare";
import { choices, make } from "./dom";
import { open } from "./files";
import { LinesView } from "./lines";
import { Units } from "./numbers";
import { isCycle } from "./request";
import { RequestView } from "./requestview";
import { keepOffline, ownCalculation } from "./engine/browser";
import { ServerCalculation } from "./server";
import { addressOf, stateIn, Store, views, withRequest, type State, type View } from "./state";
import type { UnitSystem } from "./types";
import { VaryView } from "./vary";
import { say } from "./words";

const themes = ["system", "light", "dark"] as const;

function remembered(name: string): string | null {
  try { return localStorage.getItem(`frigana.${name}`); } catch { return null; }
}
function remember(name: string, value: string): void {
  try { localStorage.setItem(`frigana.${name}`, value); } catch { /* then it is asked for again next time */ }
}

function setTheme(theme: string): void {
  if (theme === "system") delete document.documentElement.dataset.theme;
  else document.documentElement.dataset.theme = theme;
  remember("theme", theme);
}

// The cases of an address need not be whole: the rest is as in the template.
async function beginning(app: App): Promise<State> {
  const calculation = app.calculation;
  const templates = await Promise.all(["basic", "state-point", "line-sizing"].map((template) =>
    calculation.convert({ template, units: app.store.state.units })));
  let state = app.store.state;
  state = withRequest(state, "cycle", templates[0]!.request);
  state = withRequest(state, "properties", templates[1]!.request);
  state = withRequest(state, "lines", templates[2]!.request);
  return stateIn(location.hash, state) ?? state;
}

function makeViews(app: App): Record<View, ViewPart> {
  const kinds = app.catalogue.requests;
  return {
    cycle: new RequestView(app, "cycle", kinds.filter((kind) => isCycle(kind) && kind.name !== "line-sizing"), say("view.cycle")),
    compare: new CompareView(app),
    vary: new VaryView(app),
    properties: new RequestView(app, "properties", kinds.filter((kind) => !isCycle(kind) && kind.name !== "store-blend"), say("view.properties")),
    lines: new LinesView(app),
  };
}

function bar(app: App): { element: HTMLElement; show(state: State): void } {
  const { store } = app;
  const tabs = views.map((view) => make("button", {
    type: "button", "data-view": view, click: () => store.set({ ...store.state, view }),
  }, say(`view.${view}`)));
  const units = choices((["metric", "SI", "imperial"] as const).map((value) => ({ value, label: say(`units.${value}`) })),
    store.state.units, { "aria-label": say("units"), "data-name": "units" }, (value) => {
      remember("units", value);
      store.change(inUnits(app, value as UnitSystem));
    });
  const theme = choices(themes.map((value) => ({ value, label: say(`theme.${value}`) })), remembered("theme") ?? "system",
    { "aria-label": say("theme"), "data-name": "theme" }, setTheme);
  const undo = make("button", { type: "button", class: "quiet", "data-act": "undo", click: () => store.undo() }, say("undo"));
  const redo = make("button", { type: "button", class: "quiet", "data-act": "redo", click: () => store.redo() }, say("redo"));
  const file = make("input", {
    type: "file", accept: ".toml,.json,.fi1", hidden: true, "aria-label": say("files.open"),
    change: () => { if (file.files?.[0]) void opened(app, file.files[0]); file.value = ""; },
  });
  const element = make("header", { class: "bar" },
    make("h1", {}, say("page.title")), make("nav", { "aria-label": say("views") }, ...tabs),
    make("div", { class: "tools" }, undo, redo,
      make("button", { type: "button", class: "quiet", "data-act": "open", click: () => file.click() }, say("files.open")), file,
      make("button", { type: "button", class: "quiet", "data-act": "link", click: () => void copyLink(app) }, say("files.link")),
      units, theme));
  return {
    element,
    show(state) {
      for (const tab of tabs) {
        if (tab.dataset.view === state.view) tab.setAttribute("aria-current", "page");
        else tab.removeAttribute("aria-current");
      }
      units.value = state.units;
      undo.disabled = !store.canUndo;
      redo.disabled = !store.canRedo;
    },
  };
}

// All numbers of all requests in another system of units.
function inUnits(app: App, system: UnitSystem): State {
  const { state } = app.store;
  const quantities = new Map<string, string>();
  for (const kind of app.catalogue.requests)
    for (const parameters of [...kind.circuits.map((circuit) => circuit.parameters), kind.stages?.parameters ?? []])
      for (const parameter of parameters) for (const option of parameter.options) quantities.set(option.key, option.quantity);
  const convert = (flat: ReadonlyMap<string, string | number | boolean>) => new Map([...flat].map(([key, value]) => {
    let quantity = quantities.get(key.replace(/^stage\d+/, "stage1")) ?? "";
    if (["from", "to", "step"].includes(key)) {
      const running = String(flat.get("property"));
      quantity = key === "step" && running !== "density" ? `${running} difference` : running;
    }
    return [key, typeof value === "string" && quantity !== "" && quantity !== "number"
      ? app.units.converted(value, quantity, app.units.usual(quantity, system)) : value];
  }));
  const { requests } = state;
  return {
    ...state, units: system,
    requests: { cycle: convert(requests.cycle), properties: convert(requests.properties), lines: convert(requests.lines) },
  };
}

async function opened(app: App, file: File): Promise<void> {
  await open(app, file).catch((why: Error) => app.tell(why.message));
}

async function copyLink(app: App): Promise<void> {
  await navigator.clipboard?.writeText(location.href).catch(() => {});
  app.tell(say("files.copied"));
}

function hearKeys(app: App): void {
  document.addEventListener("keydown", (event) => {
    if (!(event.ctrlKey || event.metaKey)) return;
    const key = event.key.toLowerCase();
    if (key === "z") { event.shiftKey ? app.store.redo() : app.store.undo(); event.preventDefault(); }
    if (key === "y") { app.store.redo(); event.preventDefault(); }
    if (key === "o") { document.querySelector<HTMLElement>("[data-act=open]")?.click(); event.preventDefault(); }
  });
}

function hearDrops(app: App): void {
  document.addEventListener("dragover", (event) => event.preventDefault());
  document.addEventListener("drop", (event) => {
    event.preventDefault();
    const file = event.dataTransfer?.files[0];
    if (file) void opened(app, file);
  });
}

async function start(): Promise<void> {
  setTheme(remembered("theme") ?? "system");
  // Where the calculation is, the document says: behind a server, beside the page, or inside of it.
  const where = document.documentElement.dataset.calculation;
  const calculation = where ? ownCalculation(where) : new ServerCalculation();
  const notice = make("div", { class: "notice", role: "status", "aria-live": "polite" });
  const varied = { key: "", from: "", to: "", count: "" };
  const units = (["SI", "metric", "imperial"] as const).find((one) => one === remembered("units")) ?? "metric";
  const empty = new Map<string, string>();
  const store = new Store({
    view: "cycle", units, requests: { cycle: empty, properties: empty, lines: empty },
    fluids: ["R134a", "R1234yf", "R290"], vary: { first: varied, second: varied, results: [], map: false },
  });
  let timer = 0;
  const app: App = {
    calculation, catalogue: { requests: [], quantities: {}, property_words: [] }, fluids: [], units: null as never, store,
    tell(text) {
      notice.textContent = text;
      notice.classList.add("shown");
      window.clearTimeout(timer);
      timer = window.setTimeout(() => notice.classList.remove("shown"), 4000);
    },
  };
  const main = make("main", { id: "main" });
  document.body.append(make("a", { class: "skip", href: "#main", click: (event: Event) => { event.preventDefault(); main.querySelector<HTMLElement>(".right, .figures")?.focus(); } }, say("page.skip")));
  try {
    const [catalogue, fluids, first] = await Promise.all([calculation.requests(), calculation.fluids(), beginning(app)]);
    app.catalogue = catalogue;
    app.fluids = fluids;
    app.units = new Units(catalogue);
    store.set(first);
  } catch (failure) {
    document.body.append(main);
    main.append(make("p", { class: "failure", role: "alert" }, (failure as Error).message));
    return;
  }
  const parts = makeViews(app);
  const top = bar(app);
  document.body.append(top.element, main, notice);
  const show = (state: State) => {
    top.show(state);
    const part = parts[state.view];
    if (main.firstElementChild !== part.element) main.replaceChildren(part.element);
    part.show(state);
    document.title = `${say(`view.${state.view}`)} – ${say("page.title")}`;
    const address = addressOf(state);
    if (location.hash !== address) history.replaceState(null, "", address);
  };
  store.listen(show);
  window.addEventListener("hashchange", () => {
    const next = stateIn(location.hash, store.state);
    if (next && addressOf(next) !== addressOf(store.state)) store.change(next);
  });
  hearKeys(app);
  hearDrops(app);
  show(store.state);
  if (where === "beside") keepOffline();
}

void start();
