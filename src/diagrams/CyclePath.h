// The path of a cycle between its points, as its processes run.
#pragma once

#include "Tracing.h"

namespace frigana::diagrams {

// What a process does between two states of a result.
enum class Process {
    exchange,  // enthalpy and logarithm of pressure change together: heat exchangers and lines with their losses,
               // mixing; of the same pressure an isobar, of the same enthalpy a throttle
    machine,   // entropy and logarithm of pressure change together: compressors, turbines, pumps
};

// States on the way from one to the other, both of them included as they are.
//   Returned  (value)  false where a state between was not found: the line is straight then
bool tracePath(const ChartFluid& fluid, const Plane& plane, const State& from, const State& to, Process process,
               Polyline& line);

}  // namespace frigana::diagrams
