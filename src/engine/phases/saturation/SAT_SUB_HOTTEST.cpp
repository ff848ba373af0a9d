#include "SAT_SUB_HOTTEST.h"

#include <algorithm>
#include <cmath>

#include "CORE_PR.h"
#include "KnownEquations.h"
#include "ModelTags.h"
#include "PhaseCheck.h"
#include "SAT_SUB_NEWTON.h"
#include "SaturationExtrema.h"
#include "SilentMessages.h"

namespace frigana {

namespace {

HottestSaturation hottest;

// The ends that were found for the last equations, kept over set-ups.
KnownEquations<HottestSaturation> knownEnds;

// What Newton's method leaves for others is as before when the line has been followed.
class Unseen {
  public:
    Unseen() : energy_(saturationExtrema.highestEnergy.value) {}
    ~Unseen() { saturationExtrema.highestEnergy.value = energy_; }
    Unseen(const Unseen&) = delete;
    Unseen& operator=(const Unseen&) = delete;

  private:
    double energy_;
    SilentMessages quiet_;
};

double square(double x) {
    return x * x;
}

// ---- the dew line -----------------------------------------------------------------------------------------------
// At given pressure the line has one temperature on its hot side, so that the highest of them is no turning point of
// the unknowns.

bool dewPointAt(double lnp, const Composition& z, int kguess, PhasePair& point) {
    int ierr = 0;
    Text255 herr;
    point.p = std::exp(lnp);
    point.y = z;
    return newtonEquilibrium(point, z, 4, kguess, ierr, herr) == NewtonEnd::found;
}

struct DewLine {
    PhasePair highest;
    double rest = 0.0;  // rise of the temperature that may be left where the line ended before it turned [K]
};

// The top of the parabola through three points, or the middle point where it has no other beside it.
double topOf(const PhasePair& first, const PhasePair& middle, const PhasePair& last) {
    const double x0 = std::log(first.p), x1 = std::log(middle.p), x2 = std::log(last.p);
    if (!(x0 < x1)) return x1;
    const double a = (middle.T - first.T) / (x1 - x0), b = (last.T - middle.T) / (x2 - x1);
    const double curve = (b - a) / (x2 - x0);
    return curve < 0.0 ? 0.5 * (x0 + x1) - 0.5 * a / curve : x1;
}

bool followDewLine(const Composition& z, double pc, DewLine& line) {
    constexpr double step = 0.12, smallestStep = 0.002, farthest = 5.0;  // in ln p
    constexpr double leastOfGap = 0.3;  // two phases that come together faster have become one
    constexpr int mostPoints = 40;
    PhasePair here;
    double start = 0.0;
    bool started = false;
    for (const double share : {0.5, 0.3, 0.15}) {
        start = std::log(share * pc);
        started = dewPointAt(start, z, 0, here);
        if (started) break;
    }
    if (!started) return false;
    line.highest = here;
    PhasePair first = here;  // the point before the last two
    const auto solve = [&](double lnp, const PhasePair& last, PhasePair& pair) {
        const double expected = pair.T;
        return dewPointAt(lnp, z, 1, pair) && std::fabs(pair.T - expected) < 0.02 * expected &&
               std::fabs(pair.Dl - pair.Dv) > leastOfGap * std::fabs(last.Dl - last.Dv);
    };
    const auto turned = [&](const PhasePair& last, const PhasePair& pair) {
        if (pair.T > line.highest.T) line.highest = pair;
        if (pair.T < last.T) {
            PhasePair peak = last;
            if (dewPointAt(topOf(first, last, pair), z, 1, peak) && peak.T > line.highest.T) line.highest = peak;
            line.rest = 0.0;
            return true;
        }
        // Toward the critical point the square of the gap between the densities vanishes in proportion, or faster.
        const double gap = square(pair.Dl - pair.Dv), gapBefore = square(last.Dl - last.Dv);
        line.rest = gap < gapBefore ? (pair.T - last.T) * gap / (gapBefore - gap) : 0.1 * pair.T;
        first = last;
        return false;
    };
    walkLine({start, start + farthest, step, smallestStep, mostPoints}, here, solve, turned);
    return true;
}

void followToHottest(const Composition& z, const CriticalPoint& critical) {
    hottest.known = HottestSaturation::Known::unfindable;
    hottest.x = z;
    const Unseen unseen;
    DewLine line;
    if (!followDewLine(z, critical.p, line)) return;
    constexpr double margin = 3e-4;
    const double end = line.highest.T * (1.0 + margin) + line.rest;
    if (end < 0.9 * critical.T || end > std::max(1.5 * critical.T, hottestComponent(z))) return;
    constexpr int mostExchanges = 15;
    for (const double share : {1.0, 0.8, 1.2, 0.5, 1.6}) {
        OtherPhase none[2];
        if (unstableFeed(end, share * line.highest.p, z, mostExchanges, none)) return;
    }
    hottest.known = HottestSaturation::Known::temperature;
    hottest.T = end;
}

void findHottest(const Composition& z, const CriticalPoint& critical) {
    const EquationValues equation = describeEquation(z, critical);
    if (const HottestSaturation* known = knownEnds.find(equation)) {
        hottest = *known;
        return;
    }
    followToHottest(z, critical);
    knownEnds.keep(equation, hottest);
}

bool sameComposition(const Composition& x) {
    constexpr double nearEnough = 1e-9;
    for (int i = 1; i <= modelTags.NC; ++i)
        if (!(std::fabs(x[i] - hottest.x[i]) <= nearEnough)) return false;
    return true;
}

// The equations whose line can be followed.
bool fits(const Composition& x) {
    int components = 0;
    for (int i = 1; i <= modelTags.NC; ++i) components += x[i] > 0.0;
    return components > 1 && modelTags.HEOS == "HMX" && !pengRobinsonSelected();
}

}  // namespace

bool hotEndUnknown(const Composition& x) {
    return fits(x) && (hottest.known == HottestSaturation::Known::nothing || !sameComposition(x));
}

bool beyondSaturation(double T, const Composition& x, const CriticalPoint& critical) {
    if (!fits(x)) return false;
    if (hotEndUnknown(x)) findHottest(x, critical);
    return hottest.known == HottestSaturation::Known::temperature && T >= hottest.T;
}

void resetHottestSaturation() {
    hottest = {};
}

}  // namespace frigana
