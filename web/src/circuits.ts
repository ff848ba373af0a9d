// Where devices, pipes and points of each circuit stand in its drawing. The condenser is on top, the flow goes round
// against the clock; lengths in px of a drawing that is scaled as a whole.

export type DeviceKind =
  "exchanger" | "compressor" | "valve" | "turbine" | "pump" | "tank" | "internal exchanger";

export interface Device {
  kind: DeviceKind;
  place: string;             // of its keys, which is its name too
  x: number;
  y: number;
  width?: number;
  turned?: boolean;          // a valve or pump in an upright line
  label?: "above" | "below" | "left" | "right" | "none";
}

export interface Pipe { circuit: 0 | 1; path: [number, number][]; heat?: boolean }

export type Side = "above" | "below" | "left" | "right" | "none";
export interface PlacedPoint { key: string; x: number; y: number; side: Side; circuit: 0 | 1 }

export interface Layout { width: number; height: number; devices: Device[]; pipes: Pipe[]; points: PlacedPoint[] }

interface Part { devices: Device[]; pipes: Pipe[]; points: PlacedPoint[] }

function point(key: string, x: number, y: number, side: Side = "none", circuit: 0 | 1 = 0): PlacedPoint {
  return { key, x, y, side, circuit };
}

const left = 90, right = 470, middle = 280;

// Condenser, valve, evaporator and compressor between two heights.
function simple(before: string, circuit: 0 | 1, top: number, bottom: number,
  labels: { top?: Device["label"]; bottom?: Device["label"] } = {}): Part {
  const half = (top + bottom) / 2;
  const at = (key: string, x: number, y: number, side: Side) => point(before + key, x, y, side, circuit);
  return {
    devices: [
      { kind: "exchanger", place: `${before}condenser`, x: middle, y: top, label: labels.top ?? "above" },
      { kind: "exchanger", place: `${before}evaporator`, x: middle, y: bottom, label: labels.bottom ?? "below" },
      { kind: "compressor", place: `${before}compressor`, x: right, y: half, label: "left" },
      { kind: "valve", place: `${before}expansion_device`, x: left, y: half, turned: true, label: "right" },
    ],
    pipes: [
      { circuit, path: [[middle - 75, top], [left, top], [left, half - 16]] },
      { circuit, path: [[left, half + 16], [left, bottom], [middle - 75, bottom]] },
      { circuit, path: [[middle + 75, bottom], [right, bottom], [right, half + 26]] },
      { circuit, path: [[right, half - 26], [right, top], [middle + 75, top]] },
    ],
    points: [
      at("condenser.outlet", middle - 115, top, "below"), at("expansion_device.inlet", left, half - 40, "left"),
      at("evaporator.inlet", middle - 115, bottom, "above"), at("evaporator.outlet", middle + 115, bottom, "above"),
      at("compressor.inlet", right, half + 48, "right"), at("compressor.outlet", right, half - 48, "right"),
      at("condenser.inlet", middle + 115, top, "below"),
    ],
  };
}

function together(width: number, height: number, ...parts: Part[]): Layout {
  return {
    width, height,
    devices: parts.flatMap((part) => part.devices),
    pipes: parts.flatMap((part) => part.pipes),
    points: parts.flatMap((part) => part.points),
  };
}

// With an exchanger between the liquid (or hot gas) and the suction vapour.
function withExchanger(cooler: string, hotInlet: string, hotOutlet: string): Layout {
  const devices: Device[] = [
    { kind: "exchanger", place: cooler, x: middle, y: 60, label: "above" },
    { kind: "exchanger", place: "evaporator", x: middle, y: 330, label: "below" },
    { kind: "internal exchanger", place: "heat_exchanger", x: middle, y: 190, label: "above" },
    { kind: "valve", place: "expansion_device", x: left, y: 270, turned: true, label: "right" },
    { kind: "compressor", place: "compressor", x: 500, y: 115, label: "right" },
  ];
  const pipes: Pipe[] = [
    { circuit: 0, path: [[205, 60], [left, 60], [left, 173], [215, 173]] },
    { circuit: 0, path: [[215, 207], [left, 207], [left, 254]] },
    { circuit: 0, path: [[left, 286], [left, 330], [205, 330]] },
    { circuit: 0, path: [[355, 330], [430, 330], [430, 207], [345, 207]] },
    { circuit: 0, path: [[345, 173], [500, 173], [500, 141]] },
    { circuit: 0, path: [[500, 89], [500, 60], [355, 60]] },
  ];
  const points = [
    point(`${cooler}.outlet`, 165, 60, "below"), point(`heat_exchanger.${hotInlet}`, 150, 173, "above"),
    point(`heat_exchanger.${hotOutlet}`, 150, 207, "below"), point("expansion_device.inlet", left, 234, "left"),
    point("evaporator.inlet", 165, 330, "above"), point("evaporator.outlet", 395, 330, "below"),
    point("heat_exchanger.vapor_inlet", 388, 207, "below"), point("heat_exchanger.vapor_outlet", 412, 173, "above"),
    point("compressor.inlet", 500, 158, "right"), point("compressor.outlet", 500, 74, "right"),
    point(`${cooler}.inlet`, 395, 60, "below"),
  ];
  return { width: 620, height: 390, devices, pipes, points };
}

function liquidInjection(): Layout {
  return {
    width: 560, height: 390,
    devices: [
      { kind: "exchanger", place: "condenser", x: middle, y: 60, label: "above" },
      { kind: "exchanger", place: "evaporator", x: middle, y: 330, label: "below" },
      { kind: "valve", place: "expansion_device", x: left, y: 265, turned: true, label: "right" },
      { kind: "valve", place: "injection_valve", x: middle, y: 190, label: "above" },
      { kind: "compressor", place: "compressor", x: right, y: 145, label: "left" },
    ],
    pipes: [
      { circuit: 0, path: [[205, 60], [left, 60], [left, 249]] },
      { circuit: 0, path: [[left, 281], [left, 330], [205, 330]] },
      { circuit: 0, path: [[355, 330], [right, 330], [right, 171]] },
      { circuit: 0, path: [[left, 190], [264, 190]] },
      { circuit: 0, path: [[296, 190], [385, 190], [385, 225], [right, 225]] },
      { circuit: 0, path: [[right, 119], [right, 60], [355, 60]] },
    ],
    points: [
      point("condenser.outlet", 165, 60, "below"), point("expansion_device.inlet", left, 230, "left"),
      point("evaporator.inlet", 165, 330, "above"), point("evaporator.outlet", 395, 330, "above"),
      point("suction_line.outlet", right, 255, "right"), point("compressor.inlet", right, 195, "right"),
      point("compressor.outlet", right, 97, "right"), point("condenser.inlet", 395, 60, "below"),
      point("injection_line.outlet", 205, 190, "below"), point("injection_valve.outlet", 340, 190, "below"),
    ],
  };
}

function twoStage(): Layout {
  return {
    width: 650, height: 470,
    devices: [
      { kind: "exchanger", place: "condenser", x: middle, y: 60, label: "above" },
      { kind: "exchanger", place: "evaporator", x: middle, y: 410, label: "below" },
      { kind: "internal exchanger", place: "heat_exchanger", x: middle, y: 230, label: "above" },
      { kind: "valve", place: "injection_valve", x: 235, y: 135, label: "above" },
      { kind: "valve", place: "expansion_device", x: left, y: 345, turned: true, label: "right" },
      { kind: "compressor", place: "high_compressor", x: 500, y: 150, label: "right" },
      { kind: "compressor", place: "low_compressor", x: 500, y: 330, label: "right" },
    ],
    pipes: [
      { circuit: 0, path: [[205, 60], [left, 60], [left, 213], [215, 213]] },
      { circuit: 0, path: [[215, 247], [left, 247], [left, 329]] },
      { circuit: 0, path: [[left, 361], [left, 410], [205, 410]] },
      { circuit: 0, path: [[left, 135], [219, 135]] },
      { circuit: 0, path: [[251, 135], [375, 135], [375, 213], [345, 213]] },
      { circuit: 0, path: [[345, 247], [500, 247]] },
      { circuit: 0, path: [[355, 410], [500, 410], [500, 356]] },
      { circuit: 0, path: [[500, 304], [500, 176]] },
      { circuit: 0, path: [[500, 124], [500, 60], [355, 60]] },
    ],
    points: [
      point("condenser.outlet", 165, 60, "below"), point("heat_exchanger.liquid_outlet", 170, 247, "below"),
      point("expansion_device.inlet", left, 305, "left"), point("evaporator.inlet", 165, 410, "above"),
      point("evaporator.outlet", 395, 410, "above"), point("low_compressor.inlet", 500, 380, "right"),
      point("low_compressor.outlet", 500, 285, "right"), point("injection_valve.outlet", 325, 135, "above"),
      point("heat_exchanger.injection_outlet", 375, 247, "below"), point("injection_line.outlet", 455, 247, "below"),
      point("high_compressor.inlet", 500, 205, "right"), point("high_compressor.outlet", 500, 100, "right"),
      point("condenser.inlet", 395, 60, "below"),
    ],
  };
}

// Stage 1 is the lowest; between each two compressors stands a tank.
function multiStage(compressors: number): Layout {
  const rise = 105, top = 60;
  const bottom = top + 130 + rise * (compressors - 1) + 45;
  const devices: Device[] = [
    { kind: "exchanger", place: "condenser", x: middle, y: top, label: "above" },
    { kind: "exchanger", place: "evaporator", x: middle, y: bottom, label: "below" },
    { kind: "valve", place: "expansion_device", x: left, y: bottom - 40, turned: true, label: "right" },
  ];
  const pipes: Pipe[] = [];
  const points = [
    point("condenser.outlet", 165, top, "below"), point("evaporator.inlet", 165, bottom, "below"),
    point("evaporator.outlet", 395, bottom, "above"), point("condenser.inlet", 395, top, "below"),
  ];
  const heightOf = (stage: number) => bottom - 80 - rise * (stage - 1);  // of the compressor of a stage
  for (let stage = 1; stage <= compressors; ++stage) {
    const y = heightOf(stage), last = stage === compressors;
    devices.push({
      kind: "compressor", place: last ? "last_compressor" : `stage${stage}.compressor`, x: 500, y, label: "right",
    });
    points.push(point(last ? "last_compressor.outlet" : `stage${stage}.compressor.outlet`, 500, y - 42, "right"));
    const above = last ? top : heightOf(stage + 1);
    pipes.push({ circuit: 0, path: last ? [[500, y - 26], [500, above], [355, above]] : [[500, y - 26], [500, above + 26]] });
  }
  pipes.push({ circuit: 0, path: [[355, bottom], [500, bottom], [500, heightOf(1) + 26]] });
  points.push(point("suction_line.outlet", 500, heightOf(1) + 44, "right"));
  // The liquid from the condenser falls from tank to tank.
  let from: [number, number][] = [[205, top], [left, top]];
  for (let stage = compressors - 1; stage >= 1; --stage) {
    const y = (heightOf(stage) + heightOf(stage + 1)) / 2;
    devices.push({ kind: "valve", place: `stage${stage}.expansion_valve`, x: left, y: y - 30, turned: true, label: "none" },
      { kind: "tank", place: `stage${stage}.flash_tank`, x: 220, y, label: "none" });
    pipes.push({ circuit: 0, path: [...from, [left, y - 46]] },
      { circuit: 0, path: [[left, y - 14], [left, y], [190, y]] },
      { circuit: 0, path: [[250, y - 12], [500, y - 12]] });
    points.push(point(`stage${stage}.expansion_valve.outlet`, 140, y, "above"),
      point(`stage${stage}.flash_tank.vapor`, 285, y - 12, "above"),
      point(`stage${stage}.injection_line.outlet`, 385, y - 12, "above"),
      point(`stage${stage}.flash_tank.liquid`, 220, y + 36, "right"));
    from = [[220, y + 26], [220, y + 36], [left, y + 36]];
  }
  pipes.push({ circuit: 0, path: [...from, [left, bottom - 56]] }, { circuit: 0, path: [[left, bottom - 24], [left, bottom], [205, bottom]] });
  points.push(point("liquid_line.outlet", left, bottom - 77, "left"));
  return { width: 665, height: bottom + 60, devices, pipes, points };
}

function rankine(): Layout {
  return {
    width: 560, height: 360,
    devices: [
      { kind: "exchanger", place: "boiler", x: middle, y: 60, label: "above" },
      { kind: "exchanger", place: "condenser", x: middle, y: 300, label: "below" },
      { kind: "turbine", place: "turbine", x: right, y: 180, label: "left" },
      { kind: "pump", place: "pump", x: left, y: 180, turned: true, label: "right" },
    ],
    pipes: [
      { circuit: 0, path: [[355, 60], [right, 60], [right, 156]] },
      { circuit: 0, path: [[right, 204], [right, 300], [355, 300]] },
      { circuit: 0, path: [[205, 300], [left, 300], [left, 198]] },
      { circuit: 0, path: [[left, 162], [left, 60], [205, 60]] },
    ],
    points: [
      point("boiler.outlet", 395, 60, "below"), point("turbine.inlet", right, 130, "right"),
      point("turbine.outlet", right, 232, "right"), point("condenser.inlet", 395, 300, "above"),
      point("condenser.outlet", 165, 300, "above"), point("pump.outlet", left, 132, "left"),
      point("boiler.inlet", 165, 60, "below"),
    ],
  };
}

// The evaporator of the upper circuit is the condenser of the lower one.
function cascade(): Layout {
  return together(560, 640,
    simple("high.", 0, 60, 280, { bottom: "none" }),
    simple("low.", 1, 344, 580, { top: "none" }),
    { devices: [], pipes: [{ circuit: 0, heat: true, path: [[middle, 322], [middle, 302]] }], points: [] });
}

function combined(): Layout {
  const low = simple("low.", 1, 380, 620);
  const at = (key: string, x: number, y: number, side: Side) => point(key, x, y, side, 1);
  low.devices.push({ kind: "exchanger", place: "low.subcooler", x: left, y: 440, width: 90, label: "right" });
  low.devices = low.devices.map((device) => (device.place === "low.expansion_device" ? { ...device, y: 555 } : device));
  low.pipes[0] = { circuit: 1, path: [[205, 380], [left, 380], [left, 422]] };
  low.pipes[1] = { circuit: 1, path: [[left, 571], [left, 620], [205, 620]] };
  low.pipes.push({ circuit: 1, path: [[left, 458], [left, 539]] },
    { circuit: 0, heat: true, path: [[45, 440], [24, 440], [24, 330], [213, 330], [213, 303]] });
  low.points = low.points.filter((one) => one.key !== "low.expansion_device.inlet")
    .map((one) => (one.key === "low.condenser.outlet" ? { ...one, side: "above" } : one));
  low.points.push(at("low.subcooler.inlet", left, 402, "right"), at("low.subcooler.outlet", left, 478, "right"),
    at("low.expansion_device.inlet", left, 516, "right"));
  return together(560, 680, simple("medium.", 0, 60, 280), low);
}

function pumped(): Layout {
  const circuit = 1;
  const loop: Part = {
    devices: [
      { kind: "exchanger", place: "loop.condenser", x: middle, y: 344, label: "none" },
      { kind: "tank", place: "loop.receiver", x: middle, y: 440, label: "none" },
      { kind: "exchanger", place: "loop.evaporator", x: middle, y: 570, label: "below" },
      { kind: "pump", place: "loop.pump", x: left, y: 510, turned: true, label: "right" },
    ],
    pipes: [
      { circuit, path: [[310, 428], [400, 428], [400, 344], [355, 344]] },
      { circuit, path: [[205, 344], [160, 344], [160, 428], [250, 428]] },
      { circuit, path: [[250, 452], [left, 452], [left, 492]] },
      { circuit, path: [[left, 528], [left, 570], [205, 570]] },
      { circuit, path: [[355, 570], [right, 570], [right, 452], [310, 452]] },
      { circuit: 0, heat: true, path: [[middle, 322], [middle, 302]] },
    ],
    points: [
      point("loop.evaporator.outlet", 400, 570, "below", 1), point("loop.low_pressure_vapor_line.outlet", 345, 452, "below", 1),
      point("loop.condenser.inlet", 400, 385, "right", 1), point("loop.condenser.outlet", 160, 385, "left", 1),
      point("loop.pump.inlet", 150, 452, "below", 1), point("loop.pump.outlet", left, 549, "left", 1),
      point("loop.evaporator.inlet", 165, 570, "below", 1),
    ],
  };
  return together(560, 630, simple("high.", 0, 60, 280, { bottom: "none" }), loop);
}

function booster(): Layout {
  return {
    width: 840, height: 590,
    devices: [
      { kind: "exchanger", place: "gas_cooler", x: 310, y: 60, label: "above" },
      { kind: "internal exchanger", place: "heat_exchanger", x: 310, y: 180, label: "above" },
      { kind: "valve", place: "high_pressure_valve", x: 80, y: 262, turned: true, label: "right" },
      { kind: "tank", place: "receiver", x: 190, y: 300, label: "right" },
      { kind: "valve", place: "bypass_valve", x: 340, y: 288, label: "above" },
      { kind: "valve", place: "mt_expansion_device", x: 230, y: 415, label: "above" },
      { kind: "exchanger", place: "mt_evaporator", x: 370, y: 415, width: 120, label: "above" },
      { kind: "valve", place: "lt_expansion_device", x: 230, y: 530, label: "above" },
      { kind: "exchanger", place: "lt_evaporator", x: 370, y: 530, width: 120, label: "above" },
      { kind: "compressor", place: "low_stage_compressor", x: 590, y: 465, label: "right" },
      { kind: "compressor", place: "high_stage_compressor", x: 590, y: 115, label: "right" },
    ],
    pipes: [
      { circuit: 0, path: [[235, 60], [80, 60], [80, 163], [245, 163]] },
      { circuit: 0, path: [[245, 197], [80, 197], [80, 246]] },
      { circuit: 0, path: [[80, 278], [80, 300], [160, 300]] },
      { circuit: 0, path: [[220, 288], [324, 288]] },
      { circuit: 0, path: [[356, 288], [500, 288]] },
      { circuit: 0, path: [[190, 326], [190, 350], [130, 350], [130, 415], [214, 415]] },
      { circuit: 0, path: [[246, 415], [310, 415]] },
      { circuit: 0, path: [[430, 415], [500, 415], [500, 197], [375, 197]] },
      { circuit: 0, path: [[130, 415], [130, 530], [214, 530]] },
      { circuit: 0, path: [[246, 530], [310, 530]] },
      { circuit: 0, path: [[430, 530], [590, 530], [590, 491]] },
      { circuit: 0, path: [[590, 439], [590, 360], [500, 360]] },
      { circuit: 0, path: [[375, 163], [590, 163], [590, 141]] },
      { circuit: 0, path: [[590, 89], [590, 60], [385, 60]] },
    ],
    points: [
      point("gas_cooler.outlet", 180, 60, "below"), point("heat_exchanger.hot_inlet", 150, 163, "above"),
      point("heat_exchanger.hot_outlet", 215, 197, "below"), point("high_pressure_valve.inlet", 130, 197, "below"),
      point("high_pressure_valve.outlet", 115, 300, "below"), point("bypass_valve.inlet", 265, 288, "above"),
      point("mt_expansion_device.inlet", 165, 415, "below"), point("mt_evaporator.inlet", 280, 415, "below"),
      point("mt_evaporator.outlet", 460, 415, "below"), point("lt_evaporator.inlet", 280, 530, "below"),
      point("lt_evaporator.outlet", 480, 530, "below"), point("low_stage_compressor.outlet", 590, 400, "right"),
      point("mixed_vapors", 500, 325, "right"), point("bypass_valve.outlet", 425, 288, "below"),
      point("suction_line_before_exchanger.inlet", 500, 248, "right"), point("heat_exchanger.vapor_inlet", 425, 197, "below"),
      point("heat_exchanger.vapor_outlet", 445, 163, "above"), point("high_stage_compressor.inlet", 550, 163, "below"),
      point("high_stage_compressor.outlet", 590, 74, "right"), point("gas_cooler.inlet", 430, 60, "below"),
    ],
  };
}

// The drawing of a request; null where it has no circuit.
export function layoutOf(request: string, compressors: number): Layout | null {
  switch (request) {
    case "basic": case "minimal": case "line-sizing": return together(560, 360, simple("", 0, 60, 300));
    case "heat-exchanger": return withExchanger("condenser", "liquid_inlet", "liquid_outlet");
    case "transcritical": return withExchanger("gas_cooler", "hot_inlet", "hot_outlet");
    case "liquid-injection": return liquidInjection();
    case "two-stage": return twoStage();
    case "multi-stage": return multiStage(compressors);
    case "rankine": return rankine();
    case "cascade": return cascade();
    case "combined": return combined();
    case "pumped-co2": return pumped();
    case "booster": return booster();
    default: return null;
  }
}
