// What came of a run, for people and for programs: the entries of the result file with their names and units.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "14_ErrorControl.h"
#include "ResultWriter.h"

namespace frigana::app {

// One entry of the result file.
struct Entry {
    ResultEntry::Kind kind;
    int line;
    std::string circuit, section, group;
    int row;
    std::string name, unit;
    double value;
    int integer;
    std::string text;
};

struct RunResult {
    RunReport report;
    bool resultExists = false;
    std::vector<Entry> entries;
};

// Exit status of the program: 0 success, 2 the request was refused, 3 there is no result.
int exitStatus(const RunResult& result);

// Gathers the entries of the run that comes next.
void gatherEntries(std::vector<Entry>& entries);

// Sections with aligned names, values and units; values of several places (inlet, outlet) side by side, repeated ones
// as tables.
void printReport(std::ostream& out, const RunResult& result);
void printJson(std::ostream& out, const RunResult& result);
void printCsv(std::ostream& out, const RunResult& result);

}  // namespace frigana::app
