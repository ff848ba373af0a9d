// Symbols: del = rho/rho_r, tau = T_r/T; aij is tau^i del^j times the derivative of the residual Helmholtz energy;
// J = del (1 + a01) = p/(rho_r R T), K = a00 + a01 + ln del = G/(R T) but for what both phases have in common,
// S = a10 - a00 - ln del = s/R likewise; Jd = 1 + 2 a01 + a02 = dJ/ddel, and dK/ddel = Jd/del;
// Jt = del (1 + a01 - a11) = (dp/dT)/(rho_r R).
#include "SAT_SUB_PURE_NEWTON.h"

#include <algorithm>
#include <cmath>

#include "CORE_ANC.h"
#include "CORE_FEQ.h"
#include "CORE_PR.h"
#include "DISPATCH.h"
#include "FluidConstants.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "ReducedState.h"
#include "SaturationBricks.h"

namespace frigana {

PureNewtonControl pureNewtonControl;

namespace {

constexpr int mostSteps = 15;
constexpr double lastStep = 2e-8;    // of the densities: after it the error is of the order of its square
constexpr double longestStep = 0.5;  // of the logarithm of a density
constexpr double nearlyAll = 0.99;   // [Tc] up to it the ancillary equations tell liquid from vapor
constexpr double unseenTau = 1e-12;  // change of Tr/T at which an equation still answers with its last state
constexpr double likeTheStart =
    0.3;  // of the logarithm of a density, the furthest that a result may lie from its start

struct Phase {
    double del, J, K, Jd;
};

Phase phaseAt(int icomp, double tau, double del) {
    const double a00 = PHIK(icomp, 0, 0, tau, del), a01 = PHIK(icomp, 0, 1, tau, del),
                 a02 = PHIK(icomp, 0, 2, tau, del);
    return {del, del * (1.0 + a01), a00 + a01 + std::log(del), 1.0 + 2.0 * a01 + a02};
}

// What both ways of stepping share: the densities with the checks of their roots.
struct Pair {
    double liquid, vapor;            // del
    double firstLiquid, firstVapor;  // where they started

    Pair(double Dl, double Dv, double Dr) : liquid(Dl / Dr), vapor(Dv / Dr), firstLiquid(liquid), firstVapor(vapor) {}

    bool plausible() const { return vapor > 1e-40 && liquid > vapor && liquid < 1e3; }

    // Both densities a step further; a long one is taken in the logarithm.
    void move(double byLiquid, double byVapor) {
        const auto moved = [](double del, double by) {
            const double part = by / del;
            return std::fabs(part) < 0.1 ? del + by : del * std::exp(std::clamp(part, -longestStep, longestStep));
        };
        liquid = moved(liquid, byLiquid);
        vapor = moved(vapor, byVapor);
    }

    // Away from each other, out of the spinodals.
    void spread() {
        const double distance = 0.25 * (liquid - vapor);
        liquid += distance;
        vapor = std::max(vapor - distance, 0.5 * vapor);
    }

    // The same pair of phases as at the start, not two that have become one.
    bool likeAtStart() const {
        return std::fabs(std::log(liquid / firstLiquid)) < likeTheStart &&
               std::fabs(std::log(vapor / firstVapor)) < likeTheStart &&
               liquid - vapor > 0.3 * (firstLiquid - firstVapor);
    }

    // A step so short that the squares of its parts vanish. Next to the critical point what counts is the distance d of
    // the phases, to which densities answer with 1/d^2 of a pressure.
    bool settled(double byLiquid, double byVapor, double byT) const {
        const double distance = 1.0 - vapor / liquid, bound = lastStep * distance;
        return std::fabs(byLiquid) < bound * liquid && std::fabs(byVapor) < bound * vapor &&
               std::fabs(byT) < bound * distance;
    }
};

bool acrossCritical(double Dl, double Dv, const CriticalPoint& critical) {
    return Dl >= critical.D && Dv <= critical.D;
}

// The pressure of a liquid, which drowns in the rounding of a cold one's density: among the numbers next to that the
// one is taken whose pressure comes close to the vapor's, or closest.
double pressureOfLiquid(double T, double ofVapor, int icomp, double& Dl) {
    constexpr double closeEnough = 1e-8, neighbour = 2.3e-16;  // relative
    const Composition x = unitComposition(icomp);
    const double given = Dl;
    double best = 0.0;
    for (const int away : {0, 1, -1, 2, -2, 3, -3, 4, -4}) {
        const double D = given * (1.0 + away * neighbour);
        double p = 0.0;
        PRESS(T, D, x, p);
        if (away == 0 || std::fabs(p - ofVapor) < std::fabs(best - ofVapor)) {
            best = p;
            Dl = D;
        }
        if (std::fabs(best - ofVapor) < closeEnough * ofVapor) break;
    }
    return best;
}

// The last pair that was found at a temperature, and at a pressure: both lines of a fluid are asked for in turn. An
// equation answers beside its last state with the values of that one; only while it holds the state that the search
// ended at, every digit of what follows is as if the pair had been found again.
struct LastPair {
    int icomp = 0;  // 0: none
    double given = 0.0, other = 0.0, Dl = 0.0, Dv = 0.0;
    double heldTau = 0.0, heldDel = 0.0;

    bool recall(int asked, double at, double& found, double& rhol, double& rhov) const {
        if (!pureNewtonControl.enabled || icomp != asked || given != at || heldTau != feqTerms[asked].TAUSVF ||
            heldDel != feqTerms[asked].DELSVF)
            return false;
        ++pureNewtonControl.recalled;
        found = other;
        rhol = Dl;
        rhov = Dv;
        return true;
    }
};
LastPair lastAtTemperature, lastAtPressure;

bool answer(LastPair& last, int icomp, double given, double found, double Dl, double Dv, double& other, double& rhol,
            double& rhov) {
    ++pureNewtonControl.found;
    other = found;
    rhol = Dl;
    rhov = Dv;
    last = {icomp, given, found, Dl, Dv, feqTerms[icomp].TAUSVF, feqTerms[icomp].DELSVF};
    return true;
}

}  // namespace

bool lastPureAtTemperature(double T, int icomp, double& p, double& rhol, double& rhov) {
    return lastAtTemperature.recall(icomp, T, p, rhol, rhov);
}

bool lastPureAtPressure(double p, int icomp, double& T, double& rhol, double& rhov) {
    return lastAtPressure.recall(icomp, p, T, rhol, rhov);
}

void forgetPurePairs() {
    lastAtTemperature = lastAtPressure = {};
}

bool hasPlainHelmholtzEnergy(int icomp) {
    if (icomp <= 0 || directBWR() || pengRobinsonSelected() || modelTags.IANC[icomp] == 1) return false;
    const Text3& tag = modelTags.HMXEOS[icomp];
    return tag[1] == 'F' && tag[2] == 'E';
}

bool newtonPureAtTemperature(double T, int icomp, const CriticalPoint& critical, double& p, double& rhol,
                             double& rhov) {
    if (!pureNewtonControl.enabled || !hasPlainHelmholtzEnergy(icomp)) return false;
    ++pureNewtonControl.asked;
    double Dl = 0.0, Dv = 0.0;
    if (!densitiesByAncillaries(icomp, T, Dl, Dv)) return false;
    const double Dr = fluidConstants.RHOZ[icomp], tau = fluidConstants.TZ[icomp] / T;
    Pair pair(Dl, Dv, Dr);
    for (int step = 1; step <= mostSteps; ++step) {
        if (!pair.plausible()) return false;
        const Phase l = phaseAt(icomp, tau, pair.liquid), v = phaseAt(icomp, tau, pair.vapor);
        if (!(l.Jd > 0.0 && v.Jd > 0.0)) {
            pair.spread();
            continue;
        }
        // J + Jd ddel and K + Jd ddel/del of both phases are equal
        const double dJ = v.J - l.J, dK = v.K - l.K;
        const double rise = (dK - dJ / v.del) / (1.0 / l.del - 1.0 / v.del);  // of the liquid's J
        const double byLiquid = rise / l.Jd, byVapor = (rise - dJ) / v.Jd;
        const bool done = pair.settled(byLiquid, byVapor, 0.0);
        pair.move(byLiquid, byVapor);
        if (!done) continue;
        Dl = pair.liquid * Dr;
        Dv = pair.vapor * Dr;
        const double reducedPressure = v.J + (rise - dJ);
        const bool nearCritical = T > nearlyAll * critical.T;
        // up to there the pressure is that of one of the densities
        double found = reducedPressure * Dr * fluidConstants.R * T;
        if (!nearCritical && found > 1.0)
            found = pressureOfLiquid(T, found, icomp, Dl);
        else if (!nearCritical)
            PRESS(T, Dv, unitComposition(icomp), found);
        if (!(found > 0.0) || !pair.likeAtStart()) return false;
        if (!nearCritical && !(found <= critical.p && acrossCritical(Dl, Dv, critical))) return false;
        return answer(lastAtTemperature, icomp, T, found, Dl, Dv, p, rhol, rhov);
    }
    return false;
}

bool newtonPureAtPressure(double p, int icomp, const CriticalPoint& critical, double& T, double& rhol, double& rhov) {
    if (!pureNewtonControl.enabled || !hasPlainHelmholtzEnergy(icomp)) return false;
    ++pureNewtonControl.asked;
    double start = 0.0, Dl = 0.0, Dv = 0.0;
    if (!temperatureByAncillary(icomp, p, start) || !densitiesByAncillaries(icomp, start, Dl, Dv)) return false;
    const double Dr = fluidConstants.RHOZ[icomp], Tr = fluidConstants.TZ[icomp], R = fluidConstants.R;
    const double hottest = critical.T;
    double at = start;
    Pair pair(Dl, Dv, Dr);
    for (int step = 1; step <= mostSteps; ++step) {
        if (!pair.plausible()) return false;
        const double tau = Tr / at, J = p / (Dr * R * at);
        struct Thermal {
            double S, Jt;
        };
        const auto thermalOf = [&](const Phase& phase) {
            const double a00 = PHIK(icomp, 0, 0, tau, phase.del), a01 = PHIK(icomp, 0, 1, tau, phase.del);
            const double a10 = PHIK(icomp, 1, 0, tau, phase.del), a11 = PHIK(icomp, 1, 1, tau, phase.del);
            return Thermal{a10 - a00 - std::log(phase.del), phase.del * (1.0 + a01 - a11)};
        };
        const Phase l = phaseAt(icomp, tau, pair.liquid);
        const Thermal lt = thermalOf(l);
        const Phase v = phaseAt(icomp, tau, pair.vapor);
        const Thermal vt = thermalOf(v);
        if (!(l.Jd > 0.0 && v.Jd > 0.0)) {
            pair.spread();
            continue;
        }
        // at the pressure the Gibbs energies differ by dK, and by the entropies over temperature
        const double dK = (l.K + (J - l.J) / l.del) - (v.K + (J - v.J) / v.del);
        double byT = dK / (lt.S - vt.S);  // of the temperature itself
        if (!std::isfinite(byT)) return false;
        byT = std::clamp(byT, -0.1, 0.1);
        if (at * (1.0 + byT) >= hottest) byT = 0.5 * (hottest / at - 1.0);
        // a step that the equation does not see, since it takes two temperatures so close for one, is not taken
        if (std::fabs(byT) * tau < unseenTau) byT = 0.0;
        // p(T, del) = p, J being p over T
        const double byLiquid = (J - l.J - lt.Jt * byT) / l.Jd, byVapor = (J - v.J - vt.Jt * byT) / v.Jd;
        const bool done = pair.settled(byLiquid, byVapor, byT);
        pair.move(byLiquid, byVapor);
        at *= 1.0 + byT;
        if (!done) continue;
        Dl = pair.liquid * Dr;
        Dv = pair.vapor * Dr;
        if (!pair.likeAtStart() || !(at <= critical.T) || !acrossCritical(Dl, Dv, critical)) return false;
        return answer(lastAtPressure, icomp, p, at, Dl, Dv, T, rhol, rhov);
    }
    return false;
}

}  // namespace frigana
