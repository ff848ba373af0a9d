// What the interface for programs answers (docs/server.md), as far as the page reads it.

export interface Limits { lower: number; upper: number; open: boolean }

export interface Option {
  number: number;
  key: string;
  label: string;
  form: "quantity" | "yes" | "no" | "count" | "word";
  quantity: string;
  limits?: Limits;
}

export interface Parameter {
  index: number;
  place: string;
  label: string;
  absent: "refused" | "zero" | "unused" | "derived" | "optional";
  typical: { option: number; value: number };
  options: Option[];
}

export interface PointOfCircuit { number: number; key: string; label: string }

export interface Circuit {
  key: string;
  label: string;
  fluid: string;
  title: string;
  parameters: Parameter[];
  points: PointOfCircuit[];
}

export interface RequestKind {
  name: string;
  title: string;
  about: string;
  type: number;
  subtype: number;
  circuits: Circuit[];
  stages?: { most: number; parameters: Parameter[]; points: PointOfCircuit[] };
  leading: string[];
}

export interface Unit { symbol: string; factor: number; shift: number }
export type UnitSystem = "SI" | "metric" | "imperial";
export interface Quantity { units: Unit[]; systems: Record<UnitSystem, string> }

export interface Catalogue {
  requests: RequestKind[];
  quantities: Record<string, Quantity>;
  property_words: { code: number; word: string; quantity: string }[];
}

export interface FluidFacts {
  file: string;
  name: string;
  shown: string;
  full_name: string;
  blend: boolean;
  safety_class?: string;
  designation?: string;
  family?: string;
  gwp100?: Record<string, number>;
  components?: { name: string; mass_fraction: number }[];
  fault?: string;
}

// Two of T, P, D, H, S, Q, each as a text with its unit.
export type StateQuestion = { fluid: string | Record<string, number> } & Partial<Record<
  "fractions" | "reference_state" | "reference_of" | "T" | "P" | "D" | "H" | "S" | "Q", string>>;

// In K, kPa, kg/m3, kJ/kg, kJ/(kg K).
export interface FoundState {
  temperature: number;
  pressure: number;
  density: number;
  enthalpy: number;
  entropy: number;
  quality: number | null;  // by mass; null in a single phase
}

// A request as JSON: tables of texts, numbers and truths.
export type Json = string | number | boolean | null | Json[] | { [key: string]: Json };
export type NamedRequest = { [key: string]: Json };

export interface Value {
  line: number;
  key: string;
  name: string;
  value: number | string;
  unit?: string;
  circuit?: string;
  section?: string;
  group?: string;
  row?: number;
}

export interface PointState {
  number: number;
  stage?: number;
  circuit?: string;
  key: string;
  label: string;
  pressure: number;
  temperature: number;
  density: number;
  enthalpy: number;
  entropy: number;
  quality: number;
  saturation_temperature: number;
}

export interface Remark {
  name: string;
  weight: "note" | "doubtful" | "wrong";
  place: string;
  text: string;
  advice: string;
}

export interface Result {
  request: string;
  exit_status: number;
  outcome: string;
  code?: number;
  message?: string;
  refused_key?: string;
  units: UnitSystem;
  values: Value[];
  points: PointState[];
  remarks: Remark[];
}

export interface ChartLine { look: string; number: number; label: string; hover: string; points: [number, number][] }
export interface ChartPoint { look: string; label: string; hover: string; place: [number, number] }
export interface ChartAxis { title: string; low: number; high: number; logarithmic: boolean }
export interface Chart {
  circuit: string;
  title: string;
  x: ChartAxis;
  y: ChartAxis;
  lines: ChartLine[];
  points: ChartPoint[];
  // Of a map: where each value holds.
  cells?: { x: [number, number]; y: [number, number]; value: number; hover: string }[];
}
export type ChartKind = "ph" | "ts" | "hs" | "pT";

export interface ChartQuestion {
  kind: ChartKind;
  request?: NamedRequest;
  fluid?: string;
  fluids?: string[];
  units?: UnitSystem;
}

export interface StudyQuestion {
  request: NamedRequest;
  vary?: Record<string, Json>;
  zip?: Record<string, Json>;
  results: { keys: string[] };
}

export interface StudyCase {
  case: number;
  inputs: (string | number)[];
  values?: (number | string | null)[];
  error?: { code: string | number; text: string };
}

export interface Conversion { request: NamedRequest; toml: string; fi1?: string; fo1?: string }
