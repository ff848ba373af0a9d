// What all views stand on.
import type { Calculation } from "./calculation";
import type { Units } from "./numbers";
import type { State, Store } from "./state";
import type { Catalogue, FluidFacts, RequestKind } from "./types";

export interface App {
  calculation: Calculation;
  catalogue: Catalogue;
  fluids: FluidFacts[];
  units: Units;
  store: Store;
  // Says something in passing, to eyes and ears.
  tell(text: string): void;
}

// A part of the page below the bar. `show` is called at every change while it is the one that is seen.
export interface ViewPart {
  element: HTMLElement;
  show(state: State): void;
}

export function kindNamed(app: App, name: string): RequestKind {
  return app.catalogue.requests.find((kind) => kind.name === name) ?? app.catalogue.requests[0]!;
}

export function fluidNamed(app: App, name: string): FluidFacts | undefined {
  // R-290 and R290, in any case.
  const plain = (text: string) => text.toLowerCase().replace(/[\s-]/g, "");
  const wanted = plain(name);
  return app.fluids.find((fluid) =>
    [fluid.name, fluid.shown, fluid.designation ?? "", fluid.file, fluid.file.replace(/\.\w+$/, ""), fluid.full_name]
      .some((one) => one !== "" && plain(one) === wanted));
}
