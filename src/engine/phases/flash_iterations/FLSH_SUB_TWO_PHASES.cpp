// Two phases at given temperature and pressure: TPFL2.
#include <cmath>

#include "FLASH2_ITERATIONS.h"
#include "FlashBricks.h"
#include "Message.h"
#include "PhaseCheck.h"
#include "RootBracket.h"
#include "SAT_SUB.h"
#include "SAT_SUB_MIXTURE.h"
#include "SAT_SUB_MIXTURE_RATIOS.h"
#include "SAT_SUB_NEWTON.h"
#include "UTILITY.h"

namespace frigana {

namespace {

// Newton's method from places between the two lines of the temperature.
bool fromBetweenLines(double T, double p, const Composition& z, PhasePair& state) {
    const SilentMessages quiet;
    SaturatedPair bubble;
    SaturatedPair dew;
    saturationAtT(T, z, 1, bubble);
    saturationAtT(T, z, 2, dew);
    if (bubble.ierr > 0 || dew.ierr > 0) return false;
    const PhasePair first = pairOf(bubble, 0), last = pairOf(dew, 1);
    const auto found = [&] { return newtonAtConditions({'T', T}, {'P', p}, z, state) && state.q >= 0 && state.q <= 1; };
    for (const double share : {0.5, 0.1, 0.9, 0.01, 0.99}) {
        state = betweenLines(share, z, first, last);
        if (found()) return true;
    }
    // at shares that close in on the one of the pressure, each approached from the last
    constexpr int mostSteps = 60;
    constexpr double shortestStep = 1e-3;
    FalsePosition ends{0, std::log(bubble.p / p), 1, std::log(dew.p / p)};
    if (!(ends.fLower > 0 && ends.fUpper < 0)) return false;
    PhasePair atShare = first;
    for (int step = 1; step <= mostSteps; ++step) {
        double share = step % 2 == 1 ? 0.5 * (ends.lower + ends.upper) : ends.next();
        state = betweenLines(share, z, first, last);
        while (!newtonAtConditions({'T', T}, {'Q', share}, z, state)) {
            share = 0.5 * (share + atShare.q);
            if (std::abs(share - atShare.q) < shortestStep) return false;
            state = atShare;
        }
        atShare = state;
        if (found()) return true;
        ends.take(share, std::log(atShare.p / p));
    }
    return false;
}

}  // namespace

void TPFL2(double T, double p, const Composition& z, double& Dl, double& Dv, Composition& x, Composition& y, double& q,
           int& ierr, Text255& herr) {
    int icomp = 0;
    ISPURE(z, icomp);
    const PhasePair start{T, p, Dl, Dv, q, x, y};
    const auto take = [&](const PhasePair& pair) {
        Dl = pair.Dl;
        Dv = pair.Dv;
        q = pair.q;
        x = pair.x;
        y = pair.y;
        ierr = 0;
        herr.clear();
    };
    if (icomp == 0) {
        PhasePair atOnce = start;
        if (start.Dl > 0 && start.Dv > 0 && newtonAtConditions({'T', T}, {'P', p}, z, atOnce) && atOnce.q >= 0 &&
            atOnce.q <= 1)
            return take(atOnce);
        for (const int kguess : {1, 0}) {
            PhasePair pair = start;
            const NewtonEnd end = countedNewton(pair, z, 0, kguess, ierr, herr);
            if (end == NewtonEnd::found) return take(pair);
            if (end == NewtonEnd::noDerivatives) {
                pair = start;
                if (exchangeByRatios(z, pair) && isEquilibrium(pair, criticalPointOf(z).p)) return take(pair);
                break;
            }
        }
        ++saturationCounts.substitutions;
    }
    substituteCompositions(T, p, z, Dl, Dv, x, y, q, ierr, herr);
    if (icomp > 0) return;
    // The substitution may end at phases that are none, as it is slow close to a second liquid.
    if (ierr <= 0 && isEquilibrium({T, p, Dl, Dv, q, x, y}, criticalPointOf(z).p)) {
        closeBalance(z, q, x, y);
        return;
    }
    PhasePair state = start;
    if (fromBetweenLines(T, p, z, state)) {
        closeBalance(z, state.q, state.x, state.y);
        take(state);
    } else if (ierr <= 0) {
        ierr = 219;
        message(herr, "[TPFLSH error 219] outer iteration loop for composition in 2-phase state did not converge:  ",
                nullCharacter);
        ERRMSG(ierr, herr);
    }
}

}  // namespace frigana
