// Charts of finished results: cycles with their points and processes, property tables.
#pragma once

#include <string>
#include <vector>

#include "RunResult.h"
#include "StateChart.h"

namespace frigana::charts {

struct ResultPlot {
    std::string circuit;  // key of the circuit; empty where there is only one
    Plot plot;
    diagrams::Plane plane;
};

struct ResultPlots {
    std::vector<ResultPlot> plots;     // one for each circuit
    std::vector<std::string> remarks;  // states that were left out, with the reason
};

// The charts of a cycle or of a saturation or isoproperty table, in the chart of its fluid.
//   Given     dataFolder  holds the folders fluids and mixtures
//   Returned  (value)     false with the reason in `why`: no result, or one without states to draw
//   Notes     The engine holds the fluid of the last chart afterwards.
bool plotsOfResult(const catalogue::RunResult& result, diagrams::ChartKind kind, const ChartStyle& style,
                   const std::string& dataFolder, ResultPlots& plots, std::string& why);

// The plain chart of columns of a table over another one, by the names behind its rows: "density" over "temperature",
// "liquid.density,vapor.density" over "pressure".
bool plotOfTable(const catalogue::RunResult& result, const std::string& columns, const std::string& over,
                 const ChartStyle& style, Plot& plot, std::string& why);

// The plain chart of values over another one, over the results of a study.
bool plotOfStudy(const std::vector<const catalogue::RunResult*>& results, const std::string& keys,
                 const std::string& over, const ChartStyle& style, Plot& plot, std::string& why);

}  // namespace frigana::charts
