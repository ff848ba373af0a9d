// Charts for the page and other programs: a picture as SVG, and the same curves as plain numbers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "RequestTree.h"

namespace frigana::programs {

// Draws the chart that a body asks for, a worker's business:
//   {"kind": "ph" | "ts" | "hs", "fluid": "R134a"}                       of a fluid
//   {"kind": "pT", "fluids": ["R134a", "R290"]}                           vapor pressures
//   {"kind": "ph" | "ts" | "hs", "request": {a named request}}            of a result, one chart for each circuit
// and with each of them, where wanted, "units", "width", "height" and "reference" (of a fluid).
//   Returned  json      {"charts": [{"circuit", "title", "svg", "x", "y", "lines", "points"}], "remarks": [...]}: axes
//   with
//                       title, low, high and logarithmic; places as [x, y] in the units of the axes
//             (value)  what is wrong; empty where there is a chart
std::vector<catalogue::Problem> chartJson(std::string_view body, const std::string& dataFolder, std::string& json);

}  // namespace frigana::programs
