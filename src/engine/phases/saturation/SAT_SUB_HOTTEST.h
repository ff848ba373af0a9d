// The hot end of the two-phase region of a mixture: the temperature above which no saturation state exists. The
// searches of SATT have nothing to find there and take long to see it, while the flashes ask at every state up to 1.5
// Tc.
#pragma once

#include "CriticalPoint.h"
#include "EngineLimits.h"

namespace frigana {

// The hot end of one composition. Written by beyondSaturation, cleared by resetHottestSaturation. The last ones that
// were found are kept over set-ups, each with what its equation gives at a few states.
struct HottestSaturation {
    enum class Known { nothing, unfindable, temperature };
    Known known = Known::nothing;
    Composition x{};
    double T = 0.0;  // [K] from here on there is one phase at any pressure
};

// True if nothing is known of a composition whose hot end can be looked for.
bool hotEndUnknown(const Composition& x);

// True if a temperature is above that of every dew and bubble point of a composition. The first call for a composition
// follows its dew line to the highest temperature; later ones compare.
//   Given     T         [K]
//             x         mole fractions
//             critical  of CRITP: the estimate of the critical point
//   Notes     The answer is false where the line could not be followed, and where the feed is unstable above its end,
//   so
//             that there is more than this line. Between the critical temperature and the highest one SATT finds the
//             lower of the two dew points.
bool beyondSaturation(double T, const Composition& x, const CriticalPoint& critical);

// Forgets the composition.
void resetHottestSaturation();

}  // namespace frigana
