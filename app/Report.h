// What came of a run, for people and for programs: the values with their names, units and keys.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "Remarks.h"
#include "RunResult.h"

namespace frigana::app {

using Entry = catalogue::Value;
using RunResult = catalogue::RunResult;

struct ReportStyle {
    catalogue::UnitSystem units = catalogue::UnitSystem::SI;
    bool resultFile = true;   // the result was left in a file, whose path is told
    std::string source = {};  // file that the request came from
    std::string dataFolder = {};
    std::size_t climateReport = catalogue::newestReport;  // whose global warming potentials are shown
};

// Name of what was asked for.
std::string requestedName(const RunReport& report);

// What the remarks on a result of a style are made with.
remarks::Circumstances circumstancesOf(const ReportStyle& style);

// Adds what an engineer should know of a finished result, in the units of its report.
void addRemarks(RunResult& result, const ReportStyle& style);

// Exit status of the program: 0 success, 2 the request was refused, 3 there is no result.
int exitStatus(const RunResult& result);

// One of several results.
struct Reported {
    RunResult result;
    ReportStyle style;
};

// First what an engineer looks for, then the table of state points, then the devices: sections with aligned names,
// values and units; values of several places (inlet, outlet) side by side, repeated ones as tables.
void printReport(std::ostream& out, const RunResult& result, const ReportStyle& style = {});
// Several points of one request as a table, in the units of the first.
void printPoints(std::ostream& out, const std::vector<Reported>& results);
void printJson(std::ostream& out, const RunResult& result, const ReportStyle& style = {});
void printCsv(std::ostream& out, const RunResult& result, const ReportStyle& style = {});
// A list of results; the CSV has a column with the number of each.
void printJson(std::ostream& out, const std::vector<Reported>& results);
void printCsv(std::ostream& out, const std::vector<Reported>& results);

}  // namespace frigana::app
