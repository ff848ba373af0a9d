#include "VaporPressure.h"

#include <algorithm>
#include <cmath>

#include "Dome.h"
#include "SAT_SUB.h"
#include "SilentMessages.h"

namespace frigana::diagrams {

namespace {

bool stateOn(const ChartFluid& fluid, int kph, double T, State& state) {
    double p, Dl, Dv;
    Composition x, y;
    int ierr = 0;
    Text255 herr;
    SATT(T, fluid.composition(), kph, p, Dl, Dv, x, y, ierr, herr);
    if (ierr > 0) return false;
    state = fluid.at(T, (kph == 1 ? Dl : Dv) * fluid.molarMass());
    state.p = p;
    state.q = kph == 1 ? 0.0 : 1.0;
    return true;
}

}  // namespace

bool traceVaporPressure(const ChartFluid& fluid, double from, double to, VaporPressureCurves& curves,
                        std::string& why) {
    const SilentMessages silent;
    curves = {};
    const double Tc = fluid.estimatedCritical().T, low = std::max(from, fluid.lowestT() + 0.01);
    const double high = std::min(to, fluid.pure() ? Tc : 0.995 * Tc);
    if (low >= high) {
        why = fluid.name() + " has no vapor pressure between the temperatures asked for";
        return false;
    }
    State coldest, hottest;
    if (!stateOn(fluid, 2, low, coldest) || !stateOn(fluid, 1, high, hottest)) {
        why = "the saturation lines of " + fluid.name() + " were not found";
        return false;
    }
    Plane plane;
    plane.kind = ChartKind::pt;
    plane.x = {Property::temperature, from, to, false};
    plane.y = {Property::pressure, coldest.p, hottest.p, true};
    plane.coldest = low;
    const auto everything = [](const State&) { return 1.0; };
    constexpr int intervals = 12;
    for (const int kph : {1, 2}) {
        if (kph == 2 && fluid.pure()) break;
        std::vector<Polyline> parts;
        traceCurve(
            plane, evenly(low, high, intervals), [&](double T, State& state) { return stateOn(fluid, kph, T, state); },
            everything, parts);
        if (parts.size() != 1) {
            why = "the saturation lines of " + fluid.name() + " were not found";
            return false;
        }
        (kph == 1 ? curves.bubble : curves.dew) = std::move(parts.front());
    }
    // Both lines of a blend end in its critical point, which the boundary as a whole knows.
    Dome dome;
    if (!fluid.pure() && high < to && dome.trace(fluid, std::max(low, 0.9 * Tc), why))
        for (const DomePoint& point : dome.points()) {
            if (point.state.q == 0.0 && point.state.T > curves.bubble.back().T) curves.bubble.push_back(point.state);
        }
    if (!dome.points().empty())
        for (auto point = dome.points().rbegin(); point != dome.points().rend(); ++point)
            if (point->u >= -std::log(dome.critical().D / fluid.molarMass()) &&
                (curves.dew.back().T < point->state.T || point->state.p > curves.dew.back().p))
                curves.dew.push_back(point->state);
    return true;
}

}  // namespace frigana::diagrams
