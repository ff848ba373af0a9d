// The values that the result of each request holds, as data: keys, names and units, without running anything. Help,
// schemas and documentation are made from it; results themselves get their keys from the words of the writer
// (ResultKeys), and a test holds both against each other.
#pragma once

#include <string>
#include <vector>

#include "Catalogue.h"

namespace frigana::catalogue {

struct ListedResult {
    std::string key;   // with N in place of the number of a row, and stageN in place of one of several stages
    std::string name;  // in the words of the writer
    std::string unit;  // the inner one; empty for texts and where it depends on the request
    Quantity quantity;
};

// All values of a request, in the order of its result. What depends on the request's options is there with each of
// them.
std::vector<ListedResult> resultsOf(const Request& request);

// The key of a value as it stands in this list: "table.12.density" is "table.N.density".
std::string listedKey(std::string_view key);

}  // namespace frigana::catalogue
