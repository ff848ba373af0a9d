// Two-phase states of mixtures at given share of the vapor. The share is the better unknown where the flashes by
// temperature or pressure have no hold: next to an azeotrope, where pressure and temperature hardly change between the
// lines, and where the inner flash does not converge.
// State: none.
#pragma once

#include "PhasePair.h"
#include "RootBracket.h"

namespace frigana {

// The state of a vapor share.
//   Given     givenT  true: state.T is given and state.p wanted; false: the other way round
//             q       molar share of the vapor
//             z       overall mole fractions
//             state   start: T, p, densities, compositions
//   Returned  state
//             (value) false if it was not found; state is then as it was
bool stateAtShare(bool givenT, double q, const Composition& z, PhasePair& state);

// The share at which a property has its value.
//   Given     residual      of a two-phase state, zero where the property has its value
//             atBubble, atDew  residual on the lines, of opposite sign
//             bubble, dew   states on the lines
//             state         start, q with it
//             tolerance     of the residual
//   Returned  state
//             (value) false if it was not found; state is then as it was
//   Notes     False position; where the state of a share is not found it is approached from the last one in smaller
//             steps.
template <class Residual>
bool searchShare(bool givenT, const Composition& z, const Residual& residual, double atBubble, double atDew,
                 const PhasePair& bubble, const PhasePair& dew, double tolerance, PhasePair& state);

// A state of the share q reached from the last one.
bool approachShare(bool givenT, double q, const Composition& z, const PhasePair& bubble, const PhasePair& dew,
                   PhasePair& state);

template <class Residual>
bool searchShare(bool givenT, const Composition& z, const Residual& residual, double atBubble, double atDew,
                 const PhasePair& bubble, const PhasePair& dew, double tolerance, PhasePair& state) {
    if ((atBubble < 0) == (atDew < 0)) return false;
    constexpr int mostSteps = 60;
    FalsePosition ends{0, atBubble, 1, atDew};
    double q = state.q > 0 && state.q < 1 ? state.q : ends.next();
    PhasePair at = state;
    for (int step = 1; step <= mostSteps; ++step) {
        if (!approachShare(givenT, q, z, bubble, dew, at)) return false;
        const double F = residual(at);
        if (F < tolerance && F > -tolerance) {
            state = at;
            return true;
        }
        if (!(ends.width() > 1e-14)) return false;
        ends.take(q, F);
        q = ends.next();
    }
    return false;
}

}  // namespace frigana
