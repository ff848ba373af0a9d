// The curves of the chart of a fluid as plain numbers: log p-h, T-s, h-s.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "Isolines.h"

namespace frigana::diagrams {

// How a property is shown: shown = value in the unit of State x factor + offset. Steps are round in what is shown.
struct Scale {
    double factor = 1.0, offset = 0.0;
    double shown(double value) const { return value * factor + offset; }
    double value(double shownValue) const { return (shownValue - offset) / factor; }
};

struct Scales {
    Scale temperature, pressure, enthalpy, entropy, volume, quality;  // volume from m3/kg
    const Scale& of(Property property) const;
};

struct ChartRequest {
    ChartKind kind = ChartKind::ph;
    Scales scales;
    std::optional<double> from, to;  // temperatures that the window reaches from and to [K]
    int lines = 13;                  // isolines of a family, roughly
    std::vector<State> shown;        // states that the window has to hold: of a cycle, of a table
};

struct FluidChart {
    Plane plane;
    std::vector<Curve> curves;  // boundary first
    State critical;
    bool criticalShown = false;
};

// The kinds of chart, the properties of their axes, and the isolines they have.
std::span<const Property> familiesOf(ChartKind kind);

// The dome with everything around it; the fluid stays loaded, so that a caller can ask for more of its states.
//   Returned  (value)  false with the reason in `why`
bool makeFluidChart(const ChartFluid& fluid, const ChartRequest& request, Dome& dome, FluidChart& chart,
                    std::string& why);

// A step of 1, 2 or 5 times a power of ten that divides a range into about so many parts.
double roundStep(double range, int parts);

// The next number of the row 1, 2, 5, 10 below or above a value.
double roundOnDecade(double value, bool up);

}  // namespace frigana::diagrams
