// The options by which a command that runs requests draws their results, and the drawing itself.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "RunResult.h"
#include "Units.h"

namespace frigana::app {

struct ChartOutput {
    std::vector<std::string> pictures;  // one for each kind, the last kind for what is left
    std::vector<std::string> kinds;     // ph, ts, hs
    std::string columns;                // "density:temperature": a plain chart in place of that of the states
    std::string otherUnits;
    double width = 1200.0, height = 800.0;

    bool wanted() const { return !pictures.empty(); }
};

void addChartOptions(CLI::App& line, ChartOutput& output);

// Every file that the charts may be written to, known before a request is read: the pictures, and those of the circuits
// beside each of them.
std::vector<std::string> filesOf(const ChartOutput& output);

// Draws finished results: a single one as the chart of its states, a table or several of one study as columns too. The
// picture of each of two circuits has the circuit's key behind its name: chiller.svg becomes chiller-high.svg.
//   Returned  (value)  0, or the exit status after a complaint
int drawCharts(const ChartOutput& output, const std::vector<const catalogue::RunResult*>& results,
               catalogue::UnitSystem units, const std::string& dataFolder);

}  // namespace frigana::app
