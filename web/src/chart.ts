// A chart of curves: drawn from numbers, zoomed, moved, and read with the pointer or the keys.
import { scaleLinear, scaleLog, type ScaleContinuousNumeric } from "d3-scale";
import { select } from "d3-selection";
import { zoom, zoomIdentity, type D3ZoomEvent, type ZoomTransform } from "d3-zoom";
import { draw, make, replace } from "./dom";
import { shown } from "./numbers";
import type { Chart, ChartAxis, ChartLine, ChartPoint } from "./types";
import { say } from "./words";

type Scale = ScaleContinuousNumeric<number, number>;
type Spot = [number, number];

const margin = { left: 62, right: 14, top: 12, bottom: 46 };

function scaleOf(axis: ChartAxis, range: Spot): Scale {
  return (axis.logarithmic ? scaleLog() : scaleLinear()).domain([axis.low, axis.high]).range(range);
}

// Ticks with labels and those without.
function ticksOf(scale: Scale, logarithmic: boolean, room: number): { major: number[]; minor: number[] } {
  const [low, high] = scale.domain() as Spot;
  if (!logarithmic || high / low < 4) return { major: scaleLinear().domain([low, high]).ticks(room), minor: [] };
  const all: { value: number; digit: number }[] = [];
  for (let decade = 10 ** Math.floor(Math.log10(low)); decade <= high; decade *= 10)
    for (let digit = 1; digit < 10; ++digit) {
      const value = Number((decade * digit).toPrecision(3));
      if (value >= low * 0.9999 && value <= high * 1.0001) all.push({ value, digit });
    }
  const digits = [[1], [1, 2, 5], [1, 2, 3, 4, 5, 6, 7, 8, 9]]
    .reverse().find((some) => all.filter((one) => some.includes(one.digit)).length <= room * 1.6) ?? [1];
  return {
    major: all.filter((one) => digits.includes(one.digit)).map((one) => one.value),
    minor: all.filter((one) => !digits.includes(one.digit)).map((one) => one.value),
  };
}

// Dark for little, light for much, in this order in grey, too, and for every kind of sight: the stops of cividis
// (Nunez, Anderton, Renslow, PLoS ONE 13 (2018) e0199239).
const stops = [[0, 34, 78], [53, 69, 108], [102, 105, 112], [148, 142, 119], [200, 184, 102], [254, 232, 56]] as const;
function colourOf(share: number): { fill: string; ink: string } {
  const at = Math.max(0, Math.min(1, share)) * (stops.length - 1);
  const i = Math.min(stops.length - 2, Math.floor(at));
  const mixed = [0, 1, 2].map((k) => Math.round(stops[i]![k]! + (stops[i + 1]![k]! - stops[i]![k]!) * (at - i)));
  return { fill: `rgb(${mixed.join(",")})`, ink: at < 2.1 ? "#ffffff" : "#000000" };
}

// What labels keep away from: small discs.
class Room {
  private discs: [number, number, number][] = [];
  take(x: number, y: number, radius: number): void { this.discs.push([x, y, radius]); }
  isFree(x: number, y: number, radius: number): boolean {
    return this.discs.every(([a, b, r]) => (a - x) ** 2 + (b - y) ** 2 > (r + radius) ** 2);
  }
}

function lengths(spots: Spot[]): number[] {
  const sums = [0];
  for (let i = 1; i < spots.length; ++i)
    sums.push(sums[i - 1]! + Math.hypot(spots[i]![0] - spots[i - 1]![0], spots[i]![1] - spots[i - 1]![1]));
  return sums;
}

function spotAt(spots: Spot[], sums: number[], length: number): Spot {
  let i = 1;
  while (i < sums.length - 1 && sums[i]! < length) ++i;
  const share = (length - sums[i - 1]!) / Math.max(sums[i]! - sums[i - 1]!, 1e-9);
  const [a, b] = [spots[i - 1]!, spots[i]!];
  return [a[0] + (b[0] - a[0]) * share, a[1] + (b[1] - a[1]) * share];
}

const shares: Record<string, number[]> = {
  isotherm: [0.25, 0.4, 0.15, 0.6, 0.8], isentrope: [0.75, 0.6, 0.85, 0.4, 0.2], isochore: [0.85, 0.7, 0.93, 0.5, 0.3],
  quality: [0.12, 0.25, 0.4], isobar: [0.9, 0.7, 0.5, 0.3], isenthalp: [0.8, 0.6, 0.4, 0.2],
};

export interface ChartWords { name: string; small?: boolean }

export class ChartView {
  readonly element: HTMLElement;
  readonly svg: SVGSVGElement;
  private readonly reading: HTMLElement;
  private readonly legend: HTMLElement;
  private readonly plot = draw("g", {});
  private readonly behaviour = zoom<SVGSVGElement, unknown>().scaleExtent([1, 200]);
  private chart: Chart | null = null;
  private transform: ZoomTransform = zoomIdentity;
  private width = 640;
  private height = 420;
  private x: Scale = scaleLinear();
  private y: Scale = scaleLinear();
  private frame = 0;
  private marked: string | null = null;
  private clip = `clip-${Math.random().toString(36).slice(2)}`;

  // `look` hears the label of the point under the pointer.
  constructor(private readonly look: (label: string | null) => void = () => {}) {
    this.svg = draw("svg", {
      class: "chart", tabindex: 0, role: "img",
      keydown: (event: KeyboardEvent) => this.key(event),
      pointermove: (event: PointerEvent) => this.read(event), pointerleave: () => this.read(null),
    });
    this.reading = make("p", { class: "reading", "aria-hidden": "true" });
    this.legend = make("ul", { class: "legend" });
    this.element = make("div", { class: "chart-frame" }, this.svg, this.reading, this.legend);
    this.behaviour.on("zoom", (event: D3ZoomEvent<SVGSVGElement, unknown>) => {
      this.transform = event.transform;
      this.soon();
    });
    select(this.svg).call(this.behaviour).on("dblclick.zoom", null).on("dblclick", () => this.whole());
    new ResizeObserver(() => this.resize()).observe(this.element);
  }

  show(chart: Chart): void {
    const before = this.chart;
    this.chart = chart;
    this.svg.setAttribute("aria-label", say("chart.hint", { title: chart.title }));
    const same = before && before.x.low === chart.x.low && before.x.high === chart.x.high
      && before.y.low === chart.y.low && before.y.high === chart.y.high && before.x.title === chart.x.title;
    if (!same && this.transform !== zoomIdentity) this.setTransform(zoomIdentity);
    this.showLegend(chart);
    this.paint();
  }

  whole(): void { this.setTransform(zoomIdentity); }

  // So that the cycle fills the plot.
  fit(): void {
    const spots = this.chart?.lines.filter((line) => line.look.includes("cycle")).flatMap((line) => line.points) ?? [];
    if (!this.chart || spots.length === 0) return;
    const [x, y] = this.scales(zoomIdentity);
    const xs = spots.map((one) => x(one[0])), ys = spots.map((one) => y(one[1]));
    const [left, right, top, bottom] = [Math.min(...xs), Math.max(...xs), Math.min(...ys), Math.max(...ys)];
    const factor = Math.max(1, Math.min(0.72 * this.plotWidth / (right - left), 0.66 * this.plotHeight / (bottom - top), 40));
    this.setTransform(zoomIdentity
      .translate(margin.left + this.plotWidth / 2, margin.top + this.plotHeight / 2).scale(factor)
      .translate(-(left + right) / 2, -(top + bottom) / 2));
  }

  mark(label: string | null): void {
    this.marked = label;
    for (const point of this.plot.querySelectorAll("[data-label]"))
      point.classList.toggle("looked-at", label !== null && point.getAttribute("data-label")!.split(", ").includes(label));
  }

  // ------------------------------------------------------------------------------------------------------- the paint

  private get plotWidth(): number { return this.width - margin.left - margin.right; }
  private get plotHeight(): number { return this.height - margin.top - margin.bottom; }

  private resize(): void {
    const width = Math.round(this.element.clientWidth);
    if (width < 50 || width === this.width) return;
    this.width = width;
    this.height = Math.round(Math.max(300, Math.min(width * 0.6, 520)));
    this.paint();
  }

  private soon(): void {
    if (this.frame === 0) this.frame = requestAnimationFrame(() => { this.frame = 0; this.paint(); });
  }

  private setTransform(transform: ZoomTransform): void { select(this.svg).call(this.behaviour.transform, transform); }

  private scales(transform: ZoomTransform): [Scale, Scale] {
    const chart = this.chart!;
    const x = scaleOf(chart.x, [margin.left, margin.left + this.plotWidth]);
    const y = scaleOf(chart.y, [margin.top + this.plotHeight, margin.top]);
    return [transform.rescaleX(x as never) as unknown as Scale, transform.rescaleY(y as never) as unknown as Scale];
  }

  private paint(): void {
    if (!this.chart) return;
    const { chart, width, height } = this;
    this.svg.setAttribute("viewBox", `0 0 ${width} ${height}`);
    this.svg.setAttribute("width", String(width));
    this.svg.setAttribute("height", String(height));
    this.behaviour.extent([[margin.left, margin.top], [margin.left + this.plotWidth, margin.top + this.plotHeight]])
      .translateExtent([[margin.left, margin.top], [margin.left + this.plotWidth, margin.top + this.plotHeight]]);
    [this.x, this.y] = this.scales(this.transform);
    const room = new Room();
    const screen = chart.lines.map((line) => ({ line, spots: line.points.map((one): Spot => [this.x(one[0]), this.y(one[1])]) }));
    this.occupy(room, screen);
    replace(this.plot, ...this.cells(), ...screen.map(({ line, spots }) => this.path(line, spots)),
      ...chart.points.map((point) => this.point(point, room)), ...this.labels(room, screen));
    this.plot.setAttribute("clip-path", `url(#${this.clip})`);
    replace(this.svg,
      draw("defs", {}, draw("clipPath", { id: this.clip },
        draw("rect", { x: margin.left, y: margin.top, width: this.plotWidth, height: this.plotHeight }))),
      draw("rect", { class: "ground", width, height }), ...this.axes(), this.plot,
      draw("rect", { class: "border", x: margin.left, y: margin.top, width: this.plotWidth, height: this.plotHeight }));
    this.mark(this.marked);
  }

  // The fields of a map, with their numbers where they are large enough.
  private cells(): SVGElement[] {
    const cells = this.chart!.cells ?? [];
    const values = cells.map((cell) => cell.value).filter((value) => !Number.isNaN(value));
    const [least, most] = [Math.min(...values), Math.max(...values)];
    return cells.filter((cell) => !Number.isNaN(cell.value)).flatMap((cell) => {
      const [left, right] = [this.x(cell.x[0]), this.x(cell.x[1])], [bottom, top] = [this.y(cell.y[0]), this.y(cell.y[1])];
      const { fill, ink } = colourOf((cell.value - least) / (most - least || 1));
      const text = shown(cell.value, 4);
      return [draw("rect", { class: "cell", x: left, y: top, width: right - left + 0.5, height: bottom - top + 0.5, fill }),
        ...(right - left > 7.5 * text.length && bottom - top > 18
          ? [draw("text", { class: "cell-value", x: (left + right) / 2, y: (top + bottom) / 2, dy: "0.35em", "text-anchor": "middle", fill: ink }, text)] : [])];
    });
  }

  private path(line: ChartLine, spots: Spot[]): SVGElement {
    return draw("path", {
      class: `line ${line.look} s${line.number}`,
      d: `M${spots.map(([x, y]) => `${x.toFixed(1)} ${y.toFixed(1)}`).join("L")}`,
    });
  }

  private occupy(room: Room, screen: { line: ChartLine; spots: Spot[] }[]): void {
    for (const { line, spots } of screen) {
      if (!/dome|cycle|ideal/.test(line.look)) continue;
      const sums = lengths(spots);
      for (let at = 0; at < sums.at(-1)!; at += 9) {
        const [x, y] = spotAt(spots, sums, at);
        if (this.inside(x, y, -10)) room.take(x, y, 3);
      }
    }
    for (const point of this.chart!.points) room.take(this.x(point.place[0]), this.y(point.place[1]), 6);
  }

  private inside(x: number, y: number, inset: number): boolean {
    return x > margin.left + inset && x < margin.left + this.plotWidth - inset
      && y > margin.top + inset && y < margin.top + this.plotHeight - inset;
  }

  // Labels on their lines, turned with them, where there is room.
  private labels(room: Room, screen: { line: ChartLine; spots: Spot[] }[]): SVGElement[] {
    const labels: SVGElement[] = [];
    for (const { line, spots } of screen) {
      if (line.label === "" || !(line.look in shares)) continue;
      const long = 6.2 * line.label.length + 6;
      const visible = spots.filter(([x, y]) => this.inside(x, y, -40));
      if (visible.length < 2) continue;
      const sums = lengths(visible);
      const total = sums.at(-1)!;
      if (total < 2.2 * long) continue;
      for (const share of shares[line.look]!) {
        const at = Math.max(long, Math.min(total - long, share * total));
        const [a, b, middle] = [at - long / 2, at + long / 2, at].map((one) => spotAt(visible, sums, one)) as [Spot, Spot, Spot];
        if (Math.hypot(b[0] - a[0], b[1] - a[1]) < 0.97 * long) continue;
        const discs = [a, middle, b];
        if (!discs.every(([x, y]) => this.inside(x, y, 8) && room.isFree(x, y, 6))) continue;
        for (const [x, y] of discs) room.take(x, y, 9);
        let angle = Math.atan2(b[1] - a[1], b[0] - a[0]) * 180 / Math.PI;
        // Upright lines are read from below.
        if (angle > 80) angle -= 180;
        if (angle < -100) angle += 180;
        labels.push(draw("text", {
          class: `on-line ${line.look}`, "text-anchor": "middle", dy: "0.35em",
          transform: `translate(${middle[0].toFixed(1)} ${middle[1].toFixed(1)}) rotate(${angle.toFixed(1)})`,
        }, line.label));
        break;
      }
    }
    return labels;
  }

  private point(point: ChartPoint, room: Room): SVGElement {
    const [x, y] = [this.x(point.place[0]), this.y(point.place[1])];
    const group = draw("g", { class: `point ${point.look}`, "data-label": point.label }, draw("circle", { cx: x, cy: y, r: 3.5 }));
    if (point.label !== "") {
      const long = 7.7 * point.label.length;
      const tries: [number, number, string][] = [[10, -9, "start"], [-10, -9, "end"], [10, 17, "start"], [-10, 17, "end"],
        [16, 4, "start"], [-16, 4, "end"], [0, -16, "middle"], [0, 24, "middle"], [14, -22, "start"], [-14, -22, "end"], [14, 30, "start"], [-14, 30, "end"]];
      const middleOf = ([dx, dy, anchor]: (typeof tries)[number]): Spot =>
        [x + dx + (anchor === "start" ? long / 2 : anchor === "end" ? -long / 2 : 0), y + dy - 4];
      const place = tries.find((one) => {
        const [cx, cy] = middleOf(one);
        return [-long / 2, 0, long / 2].every((shift) => this.inside(cx + shift, cy, 4) && room.isFree(cx + shift, cy, 5));
      });
      // Where there is no room the number is told by the pointer alone.
      if (place) {
        const [cx, cy] = middleOf(place);
        for (const shift of [-long / 2, 0, long / 2]) room.take(cx + shift, cy, 7);
        group.append(draw("text", { x: x + place[0], y: y + place[1], "text-anchor": place[2] }, point.label));
      }
    }
    return group;
  }

  private axes(): SVGElement[] {
    const { chart } = this;
    const bottom = margin.top + this.plotHeight, right = margin.left + this.plotWidth;
    const xs = ticksOf(this.x, chart!.x.logarithmic, Math.max(3, this.plotWidth / 80));
    const ys = ticksOf(this.y, chart!.y.logarithmic, Math.max(3, this.plotHeight / 48));
    const text = (value: number) => shown(value, 6);
    return [
      ...xs.major.map((value) => draw("path", { class: "grid", d: `M${this.x(value)} ${margin.top}V${bottom}` })),
      ...ys.major.map((value) => draw("path", { class: "grid", d: `M${margin.left} ${this.y(value)}H${right}` })),
      ...xs.major.map((value) => draw("path", { class: "tick", d: `M${this.x(value)} ${bottom}v6` })),
      ...xs.minor.map((value) => draw("path", { class: "tick", d: `M${this.x(value)} ${bottom}v3` })),
      ...ys.major.map((value) => draw("path", { class: "tick", d: `M${margin.left} ${this.y(value)}h-6` })),
      ...ys.minor.map((value) => draw("path", { class: "tick", d: `M${margin.left} ${this.y(value)}h-3` })),
      ...xs.major.map((value) => draw("text", { class: "tick-label", x: this.x(value), y: bottom + 20, "text-anchor": "middle" }, text(value))),
      ...ys.major.map((value) => draw("text", { class: "tick-label", x: margin.left - 10, y: this.y(value), dy: "0.35em", "text-anchor": "end" }, text(value))),
      draw("text", { class: "axis-title", x: margin.left + this.plotWidth / 2, y: this.height - 6, "text-anchor": "middle" }, chart!.x.title),
      draw("text", {
        class: "axis-title", transform: `translate(13 ${margin.top + this.plotHeight / 2}) rotate(-90)`, "text-anchor": "middle",
      }, chart!.y.title),
    ];
  }

  // Families of lines with their units: "Temperature 20 °C" is one of "Temperature / °C".
  private showLegend(chart: Chart): void {
    const families = new Map<string, string>();
    for (const line of chart.lines) {
      const found = /^(.*?) [−\d.]+(?:\u2009(.*))?$/.exec(line.hover);
      if (line.look in shares && found && !families.has(line.look))
        families.set(line.look, found[2] ? `${found[1]} / ${found[2]}` : found[1]!);
      if (line.look.startsWith("series") && line.label !== "") families.set(`series s${line.number}`, line.label);
    }
    replace(this.legend, ...[...families].map(([look, text]) => make("li", {},
      draw("svg", { viewBox: "0 0 26 8", width: 26, height: 8, "aria-hidden": "true" }, draw("path", { class: `line ${look}`, d: "M1 4H25" })), text)));
  }

  // ---------------------------------------------------------------------------------------------------- its reading

  private key(event: KeyboardEvent): void {
    const moves: Record<string, Spot> = { ArrowLeft: [40, 0], ArrowRight: [-40, 0], ArrowUp: [0, 40], ArrowDown: [0, -40] };
    const svg = select(this.svg);
    if (event.ctrlKey || event.metaKey || event.altKey) return;
    const move = moves[event.key];
    if (move) this.behaviour.translateBy(svg, move[0] / this.transform.k, move[1] / this.transform.k);
    else if (event.key === "+" || event.key === "=") this.behaviour.scaleBy(svg, 1.4);
    else if (event.key === "-") this.behaviour.scaleBy(svg, 1 / 1.4);
    else if (event.key === "0") this.whole();
    else return;
    event.preventDefault();
  }

  private read(event: PointerEvent | null): void {
    const chart = this.chart;
    this.reading.textContent = "";
    if (!chart || !event) return this.look(null);
    const box = this.svg.getBoundingClientRect();
    const scale = this.width / box.width;
    const [px, py] = [(event.clientX - box.left) * scale, (event.clientY - box.top) * scale];
    if (!this.inside(px, py, 0)) return this.look(null);
    const near = this.nearestPoint(px, py);
    this.look(near && near.label !== "" ? near.label.split(", ")[0]! : null);
    const [x, y] = [this.x.invert(px), this.y.invert(py)];
    const cell = chart.cells?.find((one) => x >= one.x[0] && x < one.x[1] && y >= one.y[0] && y < one.y[1]);
    if (cell) return void (this.reading.textContent = cell.hover);
    const place = `${this.coordinate(chart.x, this.x.invert(px))}, ${this.coordinate(chart.y, this.y.invert(py))}`;
    this.reading.textContent = near ? near.hover : [this.nearestLine(px, py)?.hover, place].filter(Boolean).join("; ");
  }

  private coordinate(axis: ChartAxis, value: number): string {
    const unit = axis.title.split(" / ")[1] ?? "";
    return unit === "" ? `${axis.title} ${shown(value, 4)}` : `${shown(value, 4)}\u2009${unit}`;
  }

  private nearestPoint(px: number, py: number): ChartPoint | null {
    const distance = (point: ChartPoint) => Math.hypot(this.x(point.place[0]) - px, this.y(point.place[1]) - py);
    const near = this.chart!.points.filter((point) => distance(point) < 14).sort((a, b) => distance(a) - distance(b));
    return near[0] ?? null;
  }

  private nearestLine(px: number, py: number): ChartLine | null {
    let best: ChartLine | null = null, least = 7;
    for (const line of this.chart!.lines) {
      if (line.hover === "") continue;
      for (let i = 1; i < line.points.length; ++i) {
        const [a, b] = [line.points[i - 1]!, line.points[i]!];
        const [ax, ay, bx, by] = [this.x(a[0]), this.y(a[1]), this.x(b[0]), this.y(b[1])];
        const share = Math.max(0, Math.min(1, ((px - ax) * (bx - ax) + (py - ay) * (by - ay)) / ((bx - ax) ** 2 + (by - ay) ** 2 || 1)));
        const distance = Math.hypot(px - ax - share * (bx - ax), py - ay - share * (by - ay));
        if (distance < least) [best, least] = [line, distance];
      }
    }
    return best;
  }
}

// --------------------------------------------------------------------------------------------------------- as a file

const inlined = ["fill", "stroke", "stroke-width", "stroke-dasharray", "stroke-linejoin", "stroke-linecap", "paint-order",
  "font-family", "font-size", "font-weight", "font-variant-numeric", "text-anchor", "opacity"];

// The drawing with its looks in itself.
export function svgText(svg: SVGSVGElement): string {
  const copy = svg.cloneNode(true) as SVGSVGElement;
  const originals = [svg, ...svg.querySelectorAll("*")], copies = [copy, ...copy.querySelectorAll("*")];
  originals.forEach((original, i) => {
    const style = getComputedStyle(original), element = copies[i]!;
    for (const name of ["class", "tabindex", "data-point", "data-label", "role", "aria-label"]) element.removeAttribute(name);
    for (const name of inlined) {
      const value = style.getPropertyValue(name);
      if (value !== "" && value !== "none" || name === "fill" || name === "stroke") element.setAttribute(name, value);
    }
  });
  const [, , width, height] = (svg.getAttribute("viewBox") ?? "0 0 640 420").split(" ");
  copy.setAttribute("width", width!);
  copy.setAttribute("height", height!);
  copy.setAttribute("xmlns", "http://www.w3.org/2000/svg");
  return new XMLSerializer().serializeToString(copy);
}

export async function pngBlob(svg: SVGSVGElement, finer = 2): Promise<Blob> {
  const url = URL.createObjectURL(new Blob([svgText(svg)], { type: "image/svg+xml" }));
  try {
    const image = new Image();
    image.src = url;
    await image.decode();
    const [, , width, height] = svg.getAttribute("viewBox")!.split(" ").map(Number);
    const canvas = make("canvas", { width: width! * finer, height: height! * finer });
    const context = canvas.getContext("2d")!;
    context.fillStyle = getComputedStyle(document.body).backgroundColor;
    context.fillRect(0, 0, canvas.width, canvas.height);
    context.drawImage(image, 0, 0, canvas.width, canvas.height);
    return await new Promise((done, failed) =>
      canvas.toBlob((blob) => (blob ? done(blob) : failed(new Error("no picture"))), "image/png"));
  } finally {
    URL.revokeObjectURL(url);
  }
}
