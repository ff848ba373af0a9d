// Questions to the engine about a fluid, for what no result file tells: whether its parameters are estimates, how far
// its correlations of transport properties reach, why a value is missing, whether its liquid falls apart.
//
// Each call loads the fluid anew; what runs next sets its own fluid up again.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "FilledRequest.h"

namespace frigana::remarks {

using catalogue::Fluid;

// What of a blend rests on estimates.
struct Estimates {
    std::vector<std::string> pairs;      // with estimated mixing parameters: "R32 + R1234YF"
    bool criticalPoint = false;          // a pair has no critical line of its own
    std::vector<std::string> transport;  // properties marked in the fluid files: "viscosity", "conductivity"
};
Estimates estimatesOf(const Fluid& fluid, const std::string& dataFolder);

// A single phase.
struct Place {
    double T;  // [K]
    double D;  // [kg/m3]
};
struct TransportAnswer {
    bool viscosityBeyond = false;     // computed outside the range of its correlation
    bool conductivityBeyond = false;  // likewise
    std::string why;                  // the engine's code and words; empty where it has none
};
std::vector<TransportAnswer> transportAt(const Fluid& fluid, const std::string& dataFolder,
                                         std::span<const Place> places);

// Why there is no state of two properties by their letters (T, P, D, H, S, Q; K, kPa, kg/m3, kJ/kg); empty where there
// is one.
std::string whyNoState(const Fluid& fluid, const std::string& dataFolder, char first, double a, char second, double b);

// Whether the saturated liquid of a blend at a temperature [K] is two liquids in the model.
//   Source  M. L. Michelsen, Fluid Phase Equilib. 9 (1982) 1 (distance of the tangent plane)
bool liquidFallsApart(const Fluid& fluid, const std::string& dataFolder, double T);

// Pressure of the saturated vapor at a temperature [K]; not a number where there is none.
double dewPressure(const Fluid& fluid, const std::string& dataFolder, double T);

}  // namespace frigana::remarks
