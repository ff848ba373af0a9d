// Numbers and units as an engineer reads and writes them.
import type { Catalogue, Unit, UnitSystem } from "./types";

// Stands in results where there is no value.
const missing = -777;

export const thinSpace = "\u2009";
const minus = "\u2212";

export function isMissing(value: unknown): boolean {
  return typeof value !== "number" || !Number.isFinite(value) || value === missing;
}

// As many digits as are read at a glance; the whole value belongs into a title.
export function shown(value: number, digits = 5, mostPlaces = 9): string {
  if (isMissing(value)) return "–";
  if (mostPlaces >= 9 && value !== 0 && (Math.abs(value) < 1e-4 || Math.abs(value) >= 1e7)) {
    if (Math.abs(value) < 1e-9) return "0";
    const [mantissa, exponent] = value.toExponential(digits - 2).split("e");
    const raised = [...exponent!.replace("+", "")].map((c) => (c === "-" ? "⁻" : "⁰¹²³⁴⁵⁶⁷⁸⁹"[Number(c)])).join("");
    return `${mantissa!.replace(/\.?0+$/, "")} · 10${raised}`.replace("-", minus);
  }
  const places = value === 0 ? 0 : Math.max(0, Math.min(mostPlaces, digits - 1 - Math.floor(Math.log10(Math.abs(value)))));
  const text = value.toFixed(places);
  const short = places > 0 ? text.replace(/\.?0+$/, "") : text;
  return short === "-0" ? "0" : short.replace("-", minus);
}

// Units with the signs of print: m³/h, kJ/(kg·K).
export function shownUnit(symbol: string | undefined): string {
  if (!symbol || symbol === "-") return "";
  return symbol.replace(/([a-z])3\b/g, "$1³").replace(/([a-z])2\b/g, "$1²").replace(/^u(?=Pa)/, "µ")
    .replace(/(?<=[a-zA-Z]) (?=[a-zA-Z°])/g, "·");
}

export function withUnit(text: string, symbol: string | undefined): string {
  const unit = shownUnit(symbol);
  return unit === "" ? text : text + thinSpace + unit;
}

// "-5 °C" in its parts; the text before the unit as it was written.
export interface Quantified { text: string; unit: string }
export function partsOf(written: string): Quantified {
  const found = /^\s*([+\-\u2212]?[\d.,]*(?:[eE][+-]?\d+)?)\s*(.*?)\s*$/.exec(written);
  return found ? { text: found[1]!, unit: found[2]! } : { text: written, unit: "" };
}

// The number that a person wrote; a comma may be its decimal sign.
export function numberIn(text: string): number {
  const plain = text.trim().replace(minus, "-").replace(/^([+-]?\d*),(\d+)$/, "$1.$2");
  return /^[+-]?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?$/.test(plain) ? Number(plain) : NaN;
}

// A number as text with no more digits than conversions leave sound.
export function writtenNumber(value: number): string {
  return String(Number(value.toPrecision(10)));
}

export class Units {
  constructor(private readonly catalogue: Catalogue) {}

  of(quantity: string): Unit[] { return this.catalogue.quantities[quantity]?.units ?? []; }

  named(quantity: string, symbol: string): Unit | undefined {
    return this.of(quantity).find((unit) => unit.symbol === symbol);
  }

  usual(quantity: string, system: UnitSystem): string { return this.catalogue.quantities[quantity]?.systems[system] ?? ""; }

  toInner(value: number, quantity: string, symbol: string): number {
    const unit = this.named(quantity, symbol);
    return unit ? (value + unit.shift) * unit.factor : value;
  }

  fromInner(value: number, quantity: string, symbol: string): number {
    const unit = this.named(quantity, symbol);
    return unit ? value / unit.factor - unit.shift : value;
  }

  // "-5 °C" in another unit: "23 °F".
  converted(written: string, quantity: string, symbol: string): string {
    const { text, unit } = partsOf(written);
    const value = numberIn(text);
    if (Number.isNaN(value) || unit === symbol) return written;
    const inner = this.toInner(value, quantity, unit);
    return joined(writtenNumber(this.fromInner(inner, quantity, symbol)), symbol);
  }
}

export function joined(text: string, unit: string): string {
  return unit === "" ? text : `${text} ${unit}`;
}
