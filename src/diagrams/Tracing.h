// Curves of a chart from a routine that gives a state for a parameter: with more points where they bend, and cut at the
// border of the window.
#pragma once

#include <functional>
#include <vector>

#include "Plane.h"

namespace frigana::diagrams {

using Polyline = std::vector<State>;

// A state for a parameter; false where there is none.
using StateOf = std::function<bool(double u, State& state)>;
// How far a state is inside what may be drawn, in shares of the window; negative outside.
using DepthOf = std::function<double(const State& state)>;

// Neighbours on a curve are no further apart than this share of the window, and the curve leaves the line between
// them by no more than that one.
inline constexpr double longestStep = 0.05, flattest = 4e-4;

// The parts of a curve inside the window.
//   Given     places  parameters of the first points, in order; a part that leaves the window and comes back between
//                     two of them is not seen
void traceCurve(const Plane& plane, const std::vector<double>& places, const StateOf& stateOf, const DepthOf& depthOf,
                std::vector<Polyline>& parts);

// n + 1 equal steps between two places.
std::vector<double> evenly(double from, double to, int n);

}  // namespace frigana::diagrams
