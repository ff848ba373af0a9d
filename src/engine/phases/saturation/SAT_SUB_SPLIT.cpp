#include "SAT_SUB_SPLIT.h"

#include <algorithm>
#include <cmath>

#include "CORE_PR.h"
#include "KnownEquations.h"
#include "LIMITS.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "PhaseCheck.h"
#include "SAT_SUB_NEWTON.h"
#include "SaturationBricks.h"
#include "SaturationExtrema.h"
#include "TPRHO.h"

namespace frigana {

namespace {

constexpr double warmestSplit = 0.75;  // [Tc] of refrigerants and their like
constexpr int exchanges = 40;          // of the stability test

// The last composition that was looked at. Written by warmestOf, cleared by resetSplitLiquids.
struct SplitLiquids {
    bool known = false;
    Composition x{};
    double T = 0.0;  // [K] above it no liquid of the dew line splits
};
SplitLiquids split;

// The temperatures that were found for the last equations, kept over set-ups.
KnownEquations<double> knownSplits;

// One exchange of the liquid beside the vapor z: its composition by the ratio of the fugacities. Returned is their sum,
// above one where the liquid lies below the plane that touches the Gibbs energy of the vapor; 0 if it was lost.
double exchange(const Composition& z, PhasePair& pair) {
    int ierr = 0;
    Text255 herr;
    TPRHO(pair.T, pair.p, pair.x, liquidPhase, pair.Dl > 0.0 ? 1 : 0, pair.Dl, ierr, herr);
    if (ierr <= 0) TPRHO(pair.T, pair.p, z, vaporPhase, 0, pair.Dv, ierr, herr);
    if (ierr > 0 || samePhaseTwice(pair.Dl, pair.x, pair.Dv, z)) return 0.0;
    Composition fl{}, fv{};
    FGCTY2(pair.T, pair.Dl, pair.x, fl, ierr, herr);
    if (ierr <= 0) FGCTY2(pair.T, pair.Dv, z, fv, ierr, herr);
    if (ierr > 0) return 0.0;
    double sum = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (!(fl[i] > 0.0)) continue;
        pair.x[i] *= fv[i] / fl[i];
        sum += pair.x[i];
    }
    normalize(pair.x);
    return std::isfinite(sum) ? sum : 0.0;
}

// A little below the pressure of a dew point the vapor alone is stable; otherwise the liquid that lies below its plane.
//   Source  M. L. Michelsen, Fluid Phase Equilib. 9 (1982) 1
bool isStable(const Composition& z, const PhasePair& dew, PhasePair& liquid) {
    constexpr double below = 1.0 - 1e-5, certain = 1e-6;
    OtherPhase other[2];
    if (!unstableFeed(dew.T, below * dew.p, z, exchanges, other) || !(other[0].rho > 0.0)) return true;
    liquid = {dew.T, below * dew.p, other[0].rho, dew.Dv, 1.0, other[0].x, z};
    return !(exchange(z, liquid) > 1.0 + certain);
}

// The dew point of a liquid that lies below the plane: pressure falls until the fractions of the liquid add up to one.
bool dewPointOf(const Composition& z, PhasePair liquid, PhasePair& dew) {
    constexpr int mostExchanges = 60;
    constexpr double nearEnough = 1e-4;
    for (int pass = 1; pass <= mostExchanges; ++pass) {
        const Composition before = liquid.x;
        const double sum = exchange(z, liquid);
        if (!(sum > 0.0)) return false;
        liquid.p /= std::clamp(sum, 0.5, 2.0);
        double change = std::fabs(sum - 1.0);
        for (int i = 1; i <= modelTags.NC; ++i) change += std::fabs(liquid.x[i] - before[i]);
        if (change < nearEnough) break;
    }
    int ierr = 0;
    Text255 herr;
    if (newtonEquilibrium(liquid, z, 2, 1, ierr, herr) != NewtonEnd::found) return false;
    if (!(liquid.p < dew.p * (1.0 - 1e-7))) return false;
    dew = liquid;
    return true;
}

// A dew point as SATT finds it first.
bool dewPointAt(double T, const Composition& z, PhasePair& dew) {
    int ierr = 0;
    Text255 herr;
    dew.T = T;
    return newtonOnLine(dew, z, 2) == OnLine::found || newtonEquilibrium(dew, z, 2, 0, ierr, herr) == NewtonEnd::found;
}

// Splits grow toward the cold end, so that a few places tell them.
double searchWarmest(const Composition& z, const CriticalPoint& critical) {
    double tmin, tmax, Dmax, pmax;
    LIMITS("EOS", z, tmin, tmax, Dmax, pmax);
    constexpr int places = 4;
    const double step = (warmestSplit * critical.T - tmin) / places;
    double warmest = 0.0;
    for (int k = 0; k < places && step > 0.0; ++k) {
        PhasePair dew;
        PhasePair liquid;
        if (dewPointAt(tmin + k * step, z, dew) && !isStable(z, dew, liquid)) warmest = tmin + (k + 1) * step;
    }
    return warmest;
}

double warmestOf(const Composition& z, const CriticalPoint& critical) {
    bool same = split.known;
    for (int i = 1; i <= modelTags.NC; ++i) same = same && std::fabs(z[i] - split.x[i]) <= 1e-9;
    if (same) return split.T;
    const EquationValues equation = describeEquation(z, critical);
    if (const double* known = knownSplits.find(equation)) {
        split = {true, z, *known};
    } else {
        split = {true, z, 0.0};  // while it is being searched for
        split.T = searchWarmest(z, critical);
        knownSplits.keep(equation, split.T);
    }
    return split.T;
}

}  // namespace

bool settleDewPoint(const Composition& z, const CriticalPoint& critical, PhasePair& dew) {
    if (dew.T > warmestSplit * critical.T || !(modelTags.HEOS == "HMX") || pengRobinsonSelected()) return true;
    const double energy = saturationExtrema.highestEnergy.value;
    const SilentMessages quiet;
    constexpr int mostRounds = 3;
    bool stable = dew.T >= warmestOf(z, critical);
    PhasePair at = dew;
    for (int round = 1; round <= mostRounds && !stable; ++round) {
        PhasePair liquid;
        stable = isStable(z, at, liquid);
        if (!stable && !dewPointOf(z, liquid, at)) break;
    }
    saturationExtrema.highestEnergy.value = energy;
    if (stable) dew = at;
    return stable;
}

bool settleDewPointAtPressure(const Composition& z, const CriticalPoint& critical, PhasePair& dew) {
    PhasePair stable = dew;
    if (!settleDewPoint(z, critical, stable)) return false;
    if (stable.p == dew.p) return true;
    // The stable one of this temperature has a lower pressure: from it and one beside it along 1/T to the pressure.
    constexpr double beside = 1.005;
    const SilentMessages quiet;
    int ierr = 0;
    Text255 herr;
    PhasePair warmer = stable;
    warmer.T *= beside;
    if (newtonEquilibrium(warmer, z, 2, 1, ierr, herr) != NewtonEnd::found || !(warmer.p > stable.p)) return false;
    const double share = std::log(dew.p / stable.p) / std::log(warmer.p / stable.p);
    PhasePair there = warmer;
    there.T = 1.0 / (1.0 / stable.T + share * (1.0 / warmer.T - 1.0 / stable.T));
    there.p = dew.p;
    PhasePair liquid;
    if (newtonEquilibrium(there, z, 4, 1, ierr, herr) != NewtonEnd::found || !(there.T > dew.T) ||
        !isStable(z, there, liquid))
        return false;
    dew = there;
    return true;
}

void resetSplitLiquids() {
    split = {};
}

}  // namespace frigana
