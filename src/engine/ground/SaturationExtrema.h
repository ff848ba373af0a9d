// What is remembered of the saturation lines of one fluid: ends and extrema of enthalpy, energy and entropy.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Extremum of a property on a saturation line.
struct LineExtremum {
    double T = 0.0;      // [K]
    double value = 0.0;  // [J/mol or J/(mol K)]
};

// Written by SATD, SATH, SATS, EHMAXX, SMAXX and, in one place, SATTP; cleared by resetSaturationExtrema and where
// another composition or reference state is met.
struct SaturationExtrema {
    int icomp = 0;                      // fluid they belong to: slot of a pure fluid ...
    Composition x{};                    // ... or composition of a mixture
    double HREF = 0.0, SREF = 0.0;      // reference state of the values [J/mol, J/(mol K)]
    double rhol72 = 0.0, rhov72 = 0.0;  // densities at 0.72 Tc [mol/L]
    bool energiesKnown = false, entropyExtremaKnown = false;
    double liquidEnthalpy = 0.0, vaporEnthalpy = 0.0;  // at the lowest temperature [J/mol]
    double liquidEnergy = 0.0, vaporEnergy = 0.0;
    double liquidEntropy = 0.0, vaporEntropy = 0.0;  // [J/(mol K)]
    LineExtremum highestEnthalpy;                    // saturated vapor
    // Saturated vapor. Its value is also the place where SATTP keeps its residual norm while it iterates, so that a
    // SATTP between two calls of SATE leaves a number that SATE takes for the maximum. Callers rely on the shared
    // place; it must stay shared. SATE's own calls of SATTP do not count: it leaves its maximum there at its end.
    // Until EHMAXX has found a maximum T is 0, and the value means nothing.
    LineExtremum highestEnergy;
    LineExtremum highestVaporEntropy, lowestVaporEntropy, lowestLiquidEntropy;  // -1 where there is none
};

extern SaturationExtrema saturationExtrema;

void resetSaturationExtrema();

}  // namespace frigana
