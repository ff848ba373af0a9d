// Two-phase states of mixtures at given share of the vapor. The share is the better unknown where the flashes by
// temperature or pressure have no hold: next to an azeotrope, where pressure and temperature hardly change between the
// lines, and where the inner flash does not converge.
// State: none.
#pragma once

#include "EngineLimits.h"

namespace frigana {

struct TwoPhaseState {
    double T = 0, p = 0, Dl = 0, Dv = 0, q = 0;
    Composition x{}, y{};
};

// The state of a vapor share.
//   Given     givenT  true: state.T is given and state.p wanted; false: the other way round
//             q       molar share of the vapor
//             z       overall mole fractions
//             state   start: T, p, densities, compositions
//   Returned  state
//             (value) false if it was not found; state is then as it was
bool stateAtShare(bool givenT, double q, const Composition& z, TwoPhaseState& state);

// The share at which a property has its value.
//   Given     residual      of a two-phase state, zero where the property has its value
//             atBubble, atDew  residual on the lines, of opposite sign
//             bubble, dew   states on the lines
//             state         start, q with it
//             tolerance     of the residual
//   Returned  state
//             (value) false if it was not found; state is then as it was
//   Notes     False position with the residual of an end halved that stays twice (the Illinois method); where the state
//             of a share is not found it is approached from the last one in smaller steps.
template <class Residual>
bool searchShare(bool givenT, const Composition& z, const Residual& residual, double atBubble, double atDew,
                 const TwoPhaseState& bubble, const TwoPhaseState& dew, double tolerance, TwoPhaseState& state);

// Start between the lines, in proportion to the share; pressure in its logarithm.
TwoPhaseState betweenLines(double q, const Composition& z, const TwoPhaseState& bubble, const TwoPhaseState& dew);

// A state of the share q reached from the last one.
bool approachShare(bool givenT, double q, const Composition& z, const TwoPhaseState& bubble, const TwoPhaseState& dew,
                   TwoPhaseState& state);

template <class Residual>
bool searchShare(bool givenT, const Composition& z, const Residual& residual, double atBubble, double atDew,
                 const TwoPhaseState& bubble, const TwoPhaseState& dew, double tolerance, TwoPhaseState& state) {
    if ((atBubble < 0) == (atDew < 0)) return false;
    constexpr int mostSteps = 60;
    double low = 0, fLow = atBubble, high = 1, fHigh = atDew;
    double q = state.q > 0 && state.q < 1 ? state.q : fLow / (fLow - fHigh);
    TwoPhaseState at = state;
    int side = 0;
    for (int step = 1; step <= mostSteps; ++step) {
        if (!approachShare(givenT, q, z, bubble, dew, at)) return false;
        const double F = residual(at);
        if (F < tolerance && F > -tolerance) {
            state = at;
            return true;
        }
        if (!(high - low > 1e-14)) return false;
        if ((F < 0) == (fLow < 0)) {
            low = q;
            fLow = F;
            if (side == -1) fHigh /= 2;
            side = -1;
        } else {
            high = q;
            fHigh = F;
            if (side == 1) fLow /= 2;
            side = 1;
        }
        q = low + (high - low) * fLow / (fLow - fHigh);
        if (!(q > low && q < high)) q = 0.5 * (low + high);
    }
    return false;
}

}  // namespace frigana
