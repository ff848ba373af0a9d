#include "FLSH_SUB_STABILITY.h"

#include <algorithm>
#include <cmath>

#include "CORE_PR.h"
#include "FLSH_SUB.h"
#include "FluidConstants.h"
#include "ModelTags.h"
#include "PhaseCheck.h"
#include "SAT_SUB_HOTTEST.h"
#include "UTILITY.h"

namespace frigana {

namespace {

constexpr int exchanges = 60;  // of the stability test

bool flashAt(double T, double p, const Composition& z, FlashResult& r) {
    double at = T;
    TPFLSH(at, p, z, r.D, r.Dl, r.Dv, r.x, r.y, r.q, r.e, r.h, r.s, r.cv, r.cp, r.w, r.ierr, r.herr);
    return r.ierr <= 0 && at == T && r.D > 0;
}

// True if the state was one of two phases, from which that of the conditions has been found.
bool nearTwoPhases(const Condition& a, const Condition& b, const Composition& z, FlashResult& r) {
    return r.q > 0 && r.q < 1 && twoPhasesNear(a, b, z, r);
}

// The root of a residual that rises with the variable, downward from where it is positive by steps, then by false
// position.
//   Given  mostUnknown  places without a state that are passed by
template <class Residual>
bool searchDownward(double from, double lowest, double tolerance, int mostUnknown, const Residual& residual) {
    constexpr int mostSteps = 40, mostStepsDown = 100;
    constexpr double stepDown = 0.97;
    FalsePosition ends{from, 0, from, 0};
    if (!residual(from, ends.fUpper) || ends.fUpper < 0) return false;
    if (ends.fUpper == 0) return true;
    ends.lower = ends.upper;
    int unknown = 0;
    for (int step = 1;; ++step) {
        ends.lower *= stepDown;
        if (step > mostStepsDown || ends.lower < lowest) return false;
        if (!residual(ends.lower, ends.fLower)) {
            if (++unknown > mostUnknown) return false;
            continue;
        }
        if (ends.fLower == 0) return true;
        if (ends.fLower < 0) break;
        ends.upper = ends.lower;
        ends.fUpper = ends.fLower;
    }
    for (int step = 1; step <= mostSteps; ++step) {
        const double at = ends.next();
        double F = 0;
        if (!residual(at, F)) return false;
        if (std::abs(F) < tolerance) return true;
        if (ends.width() < 1e-13 * at) return false;
        ends.take(at, F);
    }
    return false;
}

}  // namespace

bool mayBeTwoPhase(double T, double p, const Composition& z, const CriticalPoint& critical) {
    int icomp = 0;
    ISPURE(z, icomp);
    if (icomp > 0 || !(modelTags.HEOS == "HMX") || pengRobinsonSelected()) return false;
    const bool beside = p < 1.5 * critical.p && T < 1.5 * critical.T;
    const bool broken = farApart(z) && T < aboveTwoPhases(z, critical);
    return (beside || broken || gasOverLiquid(T, z)) && !beyondSaturation(T, z, critical);
}

bool isMetastable(double T, double p, double D, const Composition& z, const CriticalPoint& critical) {
    if (!mayBeTwoPhase(T, p, z, critical)) return false;
    const SilentMessages quiet;
    OtherPhase other[2];
    return unstableState(T, p, D, z, exchanges, other);
}

bool isMetastableBesideLines(const FlashResult& r, const Composition& z, const CriticalPoint& critical) {
    if (!farApart(z) || !mayBeTwoPhase(r.T, r.p, z, critical)) return false;
    const SilentMessages quiet;
    OtherPhase other[2];
    if (!unstableState(r.T, r.p, r.D, z, exchanges, other)) return false;
    constexpr double closest = 1.5;  // of vapors
    const OtherPhase& found = other[0];
    const bool liquids = r.T < coldestComponent(z) && packing(r.D, z) > closest &&
                         !(found.rho > 0 && packing(found.rho, found.x) <= closest);
    return !liquids;
}

double aboveTwoPhases(const Composition& z, const CriticalPoint& critical) {
    return std::max(1.5 * critical.T, hottestComponent(z));
}

bool twoPhasesNear(const Condition& a, const Condition& b, const Composition& z, FlashResult& r) {
    PhasePair both{r.T, r.p, r.Dl, r.Dv, r.q, r.x, r.y};
    if (!newtonAtConditions(a, b, z, both) || !(both.q > 0 && both.q < 1)) return false;
    takePair(both, r);
    r.q = both.q;
    fillTwoPhase(r.T, r);
    return true;
}

bool solveOnIsobar(double p, double b, char letter, const Composition& z, double tmin, double hot, double& T,
                   FlashResult& r) {
    const double wanted = letter == 'D' ? 1 / b : b;
    const SilentMessages quiet;
    bool metTwo = false;
    const auto value = [&](double at, double& F) {
        T = at;
        // a vapor colder than two phases is one whose liquid was not found
        if (!flashAt(T, p, z, r) || (metTwo && r.q == superheatedVapor)) return false;
        metTwo = metTwo || (r.q > 0 && r.q < 1);
        F = nearTwoPhases({'P', p}, {letter, b}, z, r) ? 0 : rising(letter, r) - wanted;
        return true;
    };
    const double scale = letter == 'D' ? wanted : std::max(1.0, std::abs(wanted));
    return searchDownward(hot, tmin, 1e-9 * scale, farApart(z) ? 2 : 0, value);
}

bool solveOnIsotherm(double T, double b, char letter, const Composition& z, double highest, double& p, FlashResult& r) {
    constexpr int mostSteps = 80, mostStepsDown = 60, mostStepsUp = 12, mostUnknown = 10;
    constexpr double stepDown = 0.8, stepUp = 1.5;
    const double wanted = letter == 'D' ? 1 / b : b;
    const double tolerance = 1e-9 * (letter == 'D' ? wanted : std::max(1.0, std::abs(wanted)));
    const SilentMessages quiet;
    const auto residual = [&](double lnp, double& F) {
        p = std::exp(lnp);
        if (!flashAt(T, p, z, r)) return false;
        F = nearTwoPhases({'T', T}, {letter, b}, z, r) ? 0 : rising(letter, r) - wanted;
        return true;
    };
    // downward past pressures at which the flash finds no state, as beside the lines of some mixtures
    int unknown = 0;
    const auto downward = [&](double& lnp, double& F) {
        while (!residual(lnp, F)) {
            if (++unknown > mostUnknown) return false;
            lnp += std::log(stepDown);
        }
        return true;
    };
    FalsePosition ends{std::log(highest), 0, std::log(highest), 0};
    if (!downward(ends.upper, ends.fUpper)) return false;
    for (int step = 1; (letter == 'D' || letter == 'S') && ends.fUpper > 0; ++step) {
        ends.upper += std::log(stepUp);
        if (step > mostStepsUp || !residual(ends.upper, ends.fUpper)) return false;
    }
    for (int step = 1;; ++step) {
        if (ends.fUpper == 0) return true;
        ends.lower = ends.upper + std::log(stepDown);
        if (step > mostStepsDown || !downward(ends.lower, ends.fLower)) return false;
        if (ends.fLower == 0) return true;
        // enthalpy and energy of a liquid rise again
        if (ends.fLower > 0 && ends.fUpper < 0) break;
        ends.upper = ends.lower;
        ends.fUpper = ends.fLower;
    }
    for (int step = 1; step <= mostSteps; ++step) {
        const double at = ends.next();
        double F = 0;
        if (!residual(at, F)) return false;
        if (std::abs(F) < tolerance) return true;
        if (ends.width() < 1e-14 * std::abs(at) + 1e-15) return false;
        ends.take(at, F);
    }
    return false;
}

bool solveOnIsochoreByFlash(double D, double b, char letter, const Composition& z, double tmin, double hot, double& T,
                            FlashResult& r) {
    const SilentMessages quiet;
    const auto value = [&](double at, double& F) {
        T = at;
        TDFLSH(T, D, z, r.p, r.Dl, r.Dv, r.x, r.y, r.q, r.e, r.h, r.s, r.cv, r.cp, r.w, r.ierr, r.herr);
        if (r.ierr > 0) return false;
        F = nearTwoPhases({'D', D}, {letter, b}, z, r) ? 0 : rising(letter, r) - b;
        return true;
    };
    return searchDownward(hot, tmin, 1e-9 * std::max(1.0, std::abs(b)), 0, value);
}

}  // namespace frigana
