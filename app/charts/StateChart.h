// Charts of states as plots: the fluid's own, and vapor pressures of several fluids.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "FilledRequest.h"
#include "FluidChart.h"
#include "Names.h"
#include "Plot.h"
#include "Units.h"

namespace frigana::charts {

struct ChartStyle {
    catalogue::UnitSystem units = catalogue::UnitSystem::metric;
    std::optional<catalogue::UnitSystem> otherUnits;  // of a second pair of axes
    double width = 1200.0, height = 800.0;            // of the picture [px]
};

// The fluid of a request as a chart loads it.
diagrams::FluidSelection selectionOf(const catalogue::Fluid& fluid, const catalogue::FluidNames& names);

// Name of a kind of chart as the command line writes it: ph, ts, hs, pT.
std::optional<diagrams::ChartKind> kindOf(const std::string& name);

diagrams::Scales scalesOf(catalogue::UnitSystem units);
catalogue::Quantity quantityOf(diagrams::Property property);

// The symbol of a unit as it is printed: m³/kg, where it is typed m3/kg.
std::string printedSymbol(const catalogue::Unit& unit);

// How many isolines of a family a picture of a width has room for.
int linesFor(double width);

// The curves with axes, labels and legend; points and lines of a cycle are added to it.
Plot plotOf(const diagrams::FluidChart& chart, const std::string& fluid, const ChartStyle& style);

// Axis of a property in a system of units.
PlotAxis axisOf(const diagrams::Axis& axis, catalogue::UnitSystem units);

// Vapor pressures of fluids over temperature, loading one after the other.
//   Given     from, to  temperatures [K]; without them those of the coldest normal boiling point and of the hottest
//                       critical point, roughly
//   Returned  (value)   false with the reason in `why`
bool plotOfVaporPressures(const std::vector<diagrams::FluidSelection>& fluids, std::optional<double> from,
                          std::optional<double> to, const ChartStyle& style, Plot& plot, std::string& why);

}  // namespace frigana::charts
