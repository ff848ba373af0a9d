// A state from any two properties, for the page and other programs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "RequestTree.h"

namespace frigana::programs {

// Finds the state that a body asks for, a worker's business:
//   {"fluid": "R134a", "H": "300 kJ/kg", "P": "10 bar"}
// with two of T, P, D, H, S, Q, as texts with a unit or as numbers in SI units, and beside the fluid what a request
// says of it: "fractions", "blend_name", "reference_state", "reference_of".
//   Returned  json     {"temperature", "pressure", "density", "enthalpy", "entropy", "quality"} in K, kPa, kg/m3,
//   kJ/kg,
//                      kJ/(kg K) and, by mass, 1; the quality is null in a single phase
//             (value)  what is wrong; empty where there is a state
std::vector<catalogue::Problem> stateJson(std::string_view body, const std::string& dataFolder, std::string& json);

}  // namespace frigana::programs
