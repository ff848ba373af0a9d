// The drawing of a circuit, with its points and the figures of its devices.
import { draw, replace } from "./dom";
import { isMissing, shown, withUnit } from "./numbers";
import { layoutOf, type Device, type Layout, type PlacedPoint } from "./circuits";
import type { PointState, Result } from "./types";
import { say } from "./words";

// Which point is looked at, shared by the circuit, the charts and the tables.
export class Attention {
  private listeners: ((key: string | null) => void)[] = [];
  listen(listener: (key: string | null) => void): void { this.listeners.push(listener); }
  turn(key: string | null): void { for (const listener of this.listeners) listener(key); }
}

const names: Record<string, string> = {
  expansion_device: "expansion valve", receiver: "receiver", heat_exchanger: "heat exchanger",
  mt_expansion_device: "MT valve", lt_expansion_device: "LT valve",
};

export function nameOfPlace(place: string): string {
  const last = place.split(".").at(-1)!;
  const text = (names[last] ?? last).replaceAll("_", " ").replace(/^(mt|lt)\b/, (two) => two.toUpperCase());
  const stage = /stage(\d+)\./.exec(place)?.[1];
  return text[0]!.toUpperCase() + text.slice(1) + (stage ? ` ${stage}` : "");
}

function shapeOf(device: Device): SVGElement[] {
  const { x, y } = device;
  switch (device.kind) {
    case "exchanger": {
      const width = device.width ?? 150, half = width / 2;
      const waves = Math.round((width - 30) / 20);
      const step = (width - 30) / waves;
      let path = `M${x - half} ${y}h15`;
      for (let i = 0; i < waves; ++i) path += `l${step / 4} ${-11}l${step / 2} 22l${step / 4} -11`;
      return [draw("rect", { x: x - half, y: y - 20, width, height: 40, class: "body" }), draw("path", { d: `${path}h15`, class: "coil" })];
    }
    case "internal exchanger":
      return [draw("rect", { x: x - 65, y: y - 30, width: 130, height: 60, class: "body" }),
        draw("path", { d: `M${x - 65} ${y - 17}h50v34h-50M${x + 65} ${y + 17}h-50v-34h50`, class: "coil" })];
    case "compressor":
      return [draw("circle", { cx: x, cy: y, r: 26, class: "body" }),
        draw("path", { d: `M${x - 23} ${y + 11}L${x - 11} ${y - 23.5}M${x + 23} ${y + 11}L${x + 11} ${y - 23.5}`, class: "coil" })];
    case "pump":
      return [draw("circle", { cx: x, cy: y, r: 18, class: "body" }), device.place.startsWith("loop")
        ? draw("path", { d: `M${x - 15.5} ${y - 9}L${x} ${y + 18}L${x + 15.5} ${y - 9}z`, class: "coil" })
        : draw("path", { d: `M${x - 15.5} ${y + 9}L${x} ${y - 18}L${x + 15.5} ${y + 9}z`, class: "coil" })];
    case "turbine":
      return [draw("path", { d: `M${x - 12} ${y - 24}h24l16 48h-56z`, class: "body" })];
    case "valve":
      return [draw("path", {
        d: device.turned ? `M${x - 11} ${y - 16}h22l-22 32h22z` : `M${x - 16} ${y - 11}v22l32 -22v22z`, class: "body",
      })];
    case "tank":
      return [draw("rect", { x: x - 30, y: y - 26, width: 60, height: 52, rx: 14, class: "body" }),
        draw("path", { d: `M${x - 30} ${y + 2}h60`, class: "coil" })];
  }
}

function labelOf(device: Device, figure: string): SVGElement | null {
  if (device.label === "none" || !device.label) return null;
  const { x } = device;
  const tall = device.kind === "internal exchanger" ? 30 : device.kind === "exchanger" ? 20 : device.kind === "tank" ? 26 : 12;
  const wide = device.kind === "compressor" ? 34 : device.kind === "turbine" ? 36 : device.kind === "pump" ? 26 : device.kind === "tank" ? 38
    : device.kind === "exchanger" ? (device.width ?? 150) / 2 + 8 : 20;
  const name = nameOfPlace(device.place);
  switch (device.label) {
    case "above": case "below": {
      const { y } = device;
      return draw("text", { x, y: device.label === "above" ? y - tall - 9 : y + tall + 18, class: "device", "text-anchor": "middle" },
        name, figure !== "" && draw("tspan", { class: "figure" }, `  ${figure}`));
    }
    default: {
      const side = device.label === "left" ? -1 : 1;
      const y = device.kind === "tank" ? device.y + 18 : device.y;
      return draw("text", { x: x + side * wide, y, class: "device", "text-anchor": side < 0 ? "end" : "start" },
        draw("tspan", { x: x + side * wide, dy: figure === "" ? "0.35em" : "-0.25em" }, name),
        figure !== "" && draw("tspan", { class: "figure", x: x + side * wide, dy: "1.3em" }, figure));
    }
  }
}

const units = { SI: ["K", "kPa"], metric: ["°C", "bar"], imperial: ["°F", "psi"] } as const;

// Beside the point: temperature and pressure, two lines.
function statesOf(place: PlacedPoint, state: PointState, system: keyof typeof units): SVGElement | null {
  if (place.side === "none") return null;
  const texts = [
    isMissing(state.temperature) ? "" : withUnit(shown(state.temperature, 4, 1), units[system][0]),
    isMissing(state.pressure) ? "" : withUnit(shown(state.pressure, 4), units[system][1]),
  ];
  const dx = place.side === "left" ? -15 : place.side === "right" ? 15 : 0;
  const dy = place.side === "above" ? -31 : place.side === "below" ? 25 : -2.5;
  const anchor = place.side === "left" ? "end" : place.side === "right" ? "start" : "middle";
  return draw("text", { class: "state", "text-anchor": anchor, y: place.y + dy },
    ...texts.map((text, i) => draw("tspan", { x: place.x + dx, dy: i === 0 ? 0 : 13 }, text)));
}

export class CircuitDrawing {
  readonly element: SVGSVGElement;
  private drawn = "";

  constructor(private readonly attention: Attention, private readonly describe: (state: PointState) => string) {
    this.element = draw("svg", { class: "circuit", role: "group", "aria-label": say("circuit.hint") });
    attention.listen((key) => {
      for (const point of this.element.querySelectorAll("[data-point]"))
        point.classList.toggle("looked-at", point.getAttribute("data-point") === key);
    });
  }

  // Whether the request has a drawing.
  show(request: string, compressors: number, result: Result): boolean {
    const layout = layoutOf(request, compressors);
    this.element.toggleAttribute("hidden", layout === null);
    if (layout) this.draw(layout, result, `${request} ${compressors}`);
    return layout !== null;
  }

  private draw(layout: Layout, result: Result, name: string): void {
    const focused = this.element.contains(document.activeElement) ? document.activeElement!.getAttribute("data-point") : null;
    const values = new Map(result.values.map((value) => [value.key, value]));
    const figureOf = (device: Device) => {
      const value = ["capacity", "power", "heat"].map((what) => values.get(`${device.place}.${what}`)).find(Boolean);
      return typeof value?.value === "number" && !isMissing(value.value) ? withUnit(shown(value.value, 4), value.unit) : "";
    };
    const states = new Map(result.points.map((point) => [point.key, point]));
    this.element.setAttribute("viewBox", `0 0 ${layout.width} ${layout.height}`);
    this.element.dataset.size = layout.height > 420 ? "tall" : "";
    this.drawn = name;
    replace(this.element,
      ...layout.pipes.map((pipe) => draw("path", {
        class: pipe.heat ? "heat" : `pipe circuit${pipe.circuit}`, d: `M${pipe.path.map((one) => one.join(" ")).join("L")}`,
      })),
      ...layout.devices.flatMap((device) => [draw("g", { class: `machine ${device.kind.replace(" ", "-")}` }, ...shapeOf(device)),
        labelOf(device, figureOf(device))]),
      ...layout.points.map((place) => {
        const state = states.get(place.key);
        return state ? this.point(place, state, result) : null;
      }));
    if (focused) this.element.querySelector<SVGElement>(`[data-point="${CSS.escape(focused)}"]`)?.focus();
  }

  private point(place: PlacedPoint, state: PointState, result: Result): SVGElement {
    const look = () => this.attention.turn(place.key);
    const away = () => this.attention.turn(null);
    return draw("g", {
      class: `point circuit${place.circuit}`, "data-point": place.key, tabindex: 0, role: "img",
      "aria-label": this.describe(state), mouseenter: look, mouseleave: away, focus: look, blur: away,
    },
    draw("circle", { cx: place.x, cy: place.y, r: 10 }),
    draw("text", { x: place.x, y: place.y, dy: "0.35em", "text-anchor": "middle", class: "number" }, String(state.number)),
    statesOf(place, state, result.units));
  }

  get name(): string { return this.drawn; }
}
