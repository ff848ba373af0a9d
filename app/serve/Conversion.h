// One request in all its forms: its name alone, TOML, the positional text or JSON becomes JSON, TOML and the positional
// text, and the result file where that is asked for.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "RequestTree.h"

namespace frigana::serve {

//   Given     body        JSON: one of "template" (the name of a request), "toml", "fi1" (texts) and "request" (a
//                         table); "units" of what is written (metric, if left out); "result", true for the result file
//             dataFolder  the installation
//   Returned  json     "request", "toml", and "fi1" and "fo1" where there are such
//             (value)  what is wrong with the body; empty where nothing is
std::vector<catalogue::Problem> conversionJson(std::string_view body, const std::string& dataFolder, std::string& json);

}  // namespace frigana::serve
