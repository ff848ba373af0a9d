#include "CyclePath.h"

#include <cmath>

#include "SilentMessages.h"

namespace frigana::diagrams {

bool tracePath(const ChartFluid& fluid, const Plane& plane, const State& from, const State& to, Process process,
               Polyline& line) {
    const SilentMessages silent;
    line.clear();
    const Property property = process == Process::machine ? Property::entropy : Property::enthalpy;
    const double start = valueOf(from, property), end = valueOf(to, property);
    bool complete = true;
    const auto stateOf = [&](double u, State& state) {
        if (u == 0.0 || u == 1.0) {
            state = u == 0.0 ? from : to;
            return true;
        }
        const double p = from.p == to.p ? from.p : from.p * std::pow(to.p / from.p, u);
        const bool found = fluid.fromPressure(p, property, start + u * (end - start), state);
        complete = complete && found;
        return found;
    };
    const auto everything = [](const State&) { return 1.0; };
    constexpr int intervals = 4;
    std::vector<Polyline> parts;
    if (distance(plane(from), plane(to)) > 1e-6)
        traceCurve(plane, evenly(0.0, 1.0, intervals), stateOf, everything, parts);
    if (complete && parts.size() == 1) {
        line = std::move(parts.front());
        return true;
    }
    line = {from, to};
    return complete;
}

}  // namespace frigana::diagrams
