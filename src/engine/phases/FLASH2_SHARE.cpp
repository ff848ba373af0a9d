#include "FLASH2_SHARE.h"

#include <cmath>

#include "FlashBricks.h"
#include "PhaseCheck.h"
#include "SAT_SUB_NEWTON.h"
#include "TPRHO.h"

namespace frigana {

bool stateAtShare(bool givenT, double q, const Composition& z, TwoPhaseState& state) {
    constexpr int givenPressure = 0, givenTemperature = 1, pressureUnknown = 1;
    TwoPhaseState s = state;
    int ierr = 0;
    Text255 herr;
    {
        const SilentMessages quiet;
        SATGV(s.T, s.p, z, q, givenT ? s.T : s.p, pressureUnknown, givenT ? givenTemperature : givenPressure, 0, s.Dl,
              s.Dv, s.x, s.y, ierr, herr);
    }
    if (ierr > 0) return false;
    double Tc = 0, pc = 0, Dc = 0;
    CRITP(z, Tc, pc, Dc, ierr, herr);
    if (vaporIsNone(s.T, s.p, s.Dv, s.y, pc) || !phasesInEquilibrium(s.T, s.p, s.Dl, s.x, s.Dv, s.y)) return false;
    s.q = q;
    state = s;
    return true;
}

TwoPhaseState betweenLines(double q, const Composition& z, const TwoPhaseState& bubble, const TwoPhaseState& dew) {
    TwoPhaseState s;
    s.T = (1 - q) * bubble.T + q * dew.T;
    s.p = std::exp((1 - q) * std::log(bubble.p) + q * std::log(dew.p));
    s.Dl = bulkDensity(q, bubble.Dl, dew.Dl);
    s.Dv = bulkDensity(q, bubble.Dv, dew.Dv);
    compositionsAtQuality(q, z, dew.x, bubble.y, s.x, s.y);
    s.q = q;
    return s;
}

bool approachShare(bool givenT, double q, const Composition& z, const TwoPhaseState& bubble, const TwoPhaseState& dew,
                   TwoPhaseState& state) {
    constexpr int mostSteps = 60;
    constexpr double smallestStep = 1e-4;
    const double given = givenT ? bubble.T : bubble.p;
    TwoPhaseState s = state;
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
