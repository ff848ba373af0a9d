// A liquid and a vapor side by side, and the walk along a line of such pairs.
#pragma once

#include <algorithm>
#include <cmath>

#include "EngineLimits.h"

namespace frigana {

struct PhasePair {
    double T = 0, p = 0, Dl = 0, Dv = 0;  // [K, kPa, mol/L]
    double q = 0;                         // molar share of the vapor
    Composition x{}, y{};                 // mole fractions of liquid and vapor
};

void normalize(Composition& x);

// Bulk density [mol/L] of two phases; q is the molar share of the vapor.
double bulkDensity(double q, double Dl, double Dv);
inline double bulkDensity(const PhasePair& s) {
    return bulkDensity(s.q, s.Dl, s.Dv);
}

// Molar share of the vapor of a bulk density between (or, extrapolated, outside) those of two phases.
double volumeQuality(double D, double Dl, double Dv);

// Two-phase compositions between the feed and the incipient phases: x from z at q = 0 to xdew at q = 1, y from ybub to
// z; both with sum 1.
void compositionsAtQuality(double q, const Composition& z, const Composition& xdew, const Composition& ybub,
                           Composition& x, Composition& y);

// Start between the two lines of a composition, in proportion to the share; pressure in its logarithm.
PhasePair betweenLines(double q, const Composition& z, const PhasePair& bubble, const PhasePair& dew);

// The straight continuation of two pairs, in the logarithms of all that is positive; `along` times their distance
// beyond the last one.
PhasePair continued(const PhasePair& last, const PhasePair& before, double along);

// A walk along a line of pairs by steps of one variable, each pair started from the straight continuation of the last
// two; a step that leads nowhere is halved.
//   Given     from, to  the variable where the walk starts and where it ends at the latest
//             step      the longest; its sign leads from the one to the other
//             smallest  step
//             here      the pair to start from
//             solve     (variable, last pair, pair) the pair at a value of the variable, from the start that stands in
//                       it; false if there is none, or none that belongs to this line
//             seen      (last pair, pair) true where the walk may stop
//   Returned  here      the last pair that was found
struct WalkSteps {
    double from, to, step, smallest;
    int most;
};
enum class WalkEnd { arrived, stopped, lost };
template <class Solve, class Seen>
WalkEnd walkLine(const WalkSteps& way, PhasePair& here, const Solve& solve, const Seen& seen) {
    double at = way.from, atBefore = way.from, step = way.step;
    PhasePair before = here;
    for (int count = 1; count <= way.most; ++count) {
        const double next = step > 0 ? std::min(at + step, way.to) : std::max(at + step, way.to);
        PhasePair pair = at == atBefore ? here : continued(here, before, (next - at) / (at - atBefore));
        if (!solve(next, here, pair)) {
            step *= 0.5;
            if (!(std::fabs(step) >= way.smallest)) return WalkEnd::lost;
            continue;
        }
        atBefore = at;
        at = next;
        before = here;
        here = pair;
        if (seen(before, here)) return WalkEnd::stopped;
        if (next == way.to) return WalkEnd::arrived;
    }
    return WalkEnd::lost;
}

}  // namespace frigana
