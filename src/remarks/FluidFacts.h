// Facts of a fluid that remarks compare results with, asked of the library once for each fluid of a process.
#pragma once

#include <string>

#include "EngineFacts.h"

namespace frigana::remarks {

struct FluidFacts {
    // Not a number where unknown.
    double triplePointTemperature, lowestTemperature, highestTemperature, highestPressure;  // K, kPa
    double criticalTemperature, criticalPressure;
    Estimates estimates;
};

// Facts of a fluid as a request names it; null where the library cannot tell them.
const FluidFacts* factsOf(const catalogue::Fluid& fluid, const std::string& dataFolder);

}  // namespace frigana::remarks
