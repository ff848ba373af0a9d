// Vapor pressure over temperature, for the chart of several fluids in one.
#pragma once

#include <string>

#include "Tracing.h"

namespace frigana::diagrams {

struct VaporPressureCurves {
    Polyline bubble, dew;  // dew is empty for a pure fluid
};

// The lines of the loaded fluid between two temperatures, up to its critical point.
//   Returned  (value)  false with the reason in `why`
bool traceVaporPressure(const ChartFluid& fluid, double from, double to, VaporPressureCurves& curves, std::string& why);

}  // namespace frigana::diagrams
