#include "FLASH2_SHARE.h"

#include <cmath>

#include "CriticalPoint.h"
#include "FlashBricks.h"
#include "PhaseCheck.h"
#include "SAT_SUB_NEWTON.h"
#include "TPRHO.h"

namespace frigana {

bool stateAtShare(bool givenT, double q, const Composition& z, PhasePair& state) {
    constexpr int givenPressure = 0, givenTemperature = 1, pressureUnknown = 1;
    PhasePair s = state;
    int ierr = 0;
    Text255 herr;
    {
        const SilentMessages quiet;
        SATGV(s.T, s.p, z, q, givenT ? s.T : s.p, pressureUnknown, givenT ? givenTemperature : givenPressure, 0, s.Dl,
              s.Dv, s.x, s.y, ierr, herr);
    }
    if (ierr > 0) return false;
    if (!isEquilibrium(s, criticalPointOf(z).p)) return false;
    s.q = q;
    state = s;
    return true;
}

bool approachShare(bool givenT, double q, const Composition& z, const PhasePair& bubble, const PhasePair& dew,
                   PhasePair& state) {
    constexpr int mostSteps = 60;
    constexpr double smallestStep = 1e-4;
    const double given = givenT ? bubble.T : bubble.p;
    PhasePair s = state;
    (givenT ? s.T : s.p) = given;
    if (s.Dl > 0 && s.Dv > 0 && stateAtShare(givenT, q, z, s)) {
        state = s;
        return true;
    }
    s = betweenLines(q, z, bubble, dew);
    if (stateAtShare(givenT, q, z, s)) {
        state = s;
        return true;
    }
    // from the line that lies nearer, each state from the last
    const bool fromDew = q > 0.5;
    s = fromDew ? dew : bubble;
    double reached = fromDew ? 1 : 0, length = 0.25 * (q - reached);
    for (int step = 1; step <= mostSteps; ++step) {
        const bool last = std::fabs(q - reached) <= std::fabs(length);
        const double next = last ? q : reached + length;
        if (stateAtShare(givenT, next, z, s)) {
            reached = next;
            if (!last) continue;
            state = s;
            return true;
        }
        length *= 0.5;
        if (std::fabs(length) < smallestStep) return false;
    }
    return false;
}

}  // namespace frigana
