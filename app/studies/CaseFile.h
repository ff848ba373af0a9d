// Cases of a study from a CSV file: the first line names the columns.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "RequestTree.h"

namespace frigana::studies {

// A column: numbers where all its cells are numbers, else texts.
struct CaseColumn {
    std::string key, unit;  // "ambient" and "°C" of the heading "ambient [°C]"
    std::vector<double> numbers;
    std::vector<catalogue::Node> texts;
};

// Reads a file. Cells may stand in quotes; empty lines count for nothing.
//   Returned  problem  what is wrong with it, from ":LINE: " on; empty where it could be read
std::vector<CaseColumn> readCaseFile(std::string_view text, std::string& problem);

// The cells of one line, without its end.
std::vector<std::string> cellsOf(std::string_view line);

}  // namespace frigana::studies
