#include "SAT_SUB_HOTTEST.h"

#include <algorithm>
#include <cmath>

#include "CORE_PR.h"
#include "FluidConstants.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "PhaseCheck.h"
#include "SAT_SUB_INVERSE.h"
#include "SAT_SUB_METHODS.h"
#include "SAT_SUB_NEWTON.h"
#include "SaturationSpline.h"
#include "TPRHO.h"

namespace frigana {

namespace {

HottestSaturation hottest;

// What SATTP leaves for others is as before when the line has been followed; nothing but Newton's method is tried.
class NewtonAlone {
  public:
    NewtonAlone()
        : inSpline_(saturationSpline.INSPLINE),
          energy_(saturationExtrema.highestEnergy.value),
          control_(newtonControl) {
        saturationSpline.INSPLINE = true;
    }
    ~NewtonAlone() {
        saturationSpline.INSPLINE = inSpline_;
        saturationExtrema.highestEnergy.value = energy_;
        newtonControl = control_;
    }
    NewtonAlone(const NewtonAlone&) = delete;
    NewtonAlone& operator=(const NewtonAlone&) = delete;

  private:
    bool inSpline_;
    double energy_;
    NewtonControl control_;
    SilentMessages quiet_;
};

// ---- the dew line -----------------------------------------------------------------------------------------------
// At given pressure the line has one temperature on its hot side, so that the highest of them is no turning point of
// the unknowns.

struct DewPoint {
    double lnp = 0.0, T = 0.0, rhol = 0.0, rhov = 0.0;
    Composition xliq{};
};

bool dewPointAt(double lnp, const Composition& z, int kguess, DewPoint& point) {
    double p = std::exp(lnp), D = 0.0, q = 0.0;
    Composition xvap = z;
    int ierr = 0;
    Text255 herr;
    SATTP(point.T, p, z, 4, kguess, D, point.rhol, point.rhov, point.xliq, xvap, q, ierr, herr);
    point.lnp = lnp;
    return ierr == 0;
}

double square(double x) {
    return x * x;
}

// The straight continuation of two points.
DewPoint continued(const DewPoint& last, const DewPoint& before, double lnp) {
    DewPoint next = last;
    const double span = last.lnp - before.lnp;
    const double along = span == 0.0 ? 0.0 : (lnp - last.lnp) / span;
    const auto extended = [along](double a, double b) { return a > 0.0 && b > 0.0 ? a * std::pow(a / b, along) : a; };
    next.lnp = lnp;
    next.T = extended(last.T, before.T);
    next.rhol = extended(last.rhol, before.rhol);
    next.rhov = extended(last.rhov, before.rhov);
    double sum = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        next.xliq[i] = extended(last.xliq[i], before.xliq[i]);
        sum += next.xliq[i];
    }
    for (int i = 1; i <= modelTags.NC; ++i) next.xliq[i] /= sum;
    return next;
}

struct DewLine {
    DewPoint highest;
    double rest = 0.0;  // rise of the temperature that may be left where the line ended before it turned [K]
};

bool followDewLine(const Composition& z, double pc, DewLine& line) {
    constexpr double firstStep = 0.12, smallestStep = 0.002;  // in ln p
    constexpr double leastOfGap = 0.3;                        // two phases that come together faster have become one
    constexpr int mostPoints = 40;
    DewPoint last;
    bool started = false;
    for (const double share : {0.5, 0.3, 0.15}) {
        started = dewPointAt(std::log(share * pc), z, 0, last);
        if (started) break;
    }
    if (!started) return false;
    DewPoint before = last;
    line.highest = last;
    double step = firstStep;
    for (int count = 1; count <= mostPoints; ++count) {
        DewPoint next = continued(last, before, last.lnp + step);
        const double expected = next.T;
        const bool good = dewPointAt(next.lnp, z, 1, next) && std::fabs(next.T - expected) < 0.02 * expected &&
                          std::fabs(next.rhol - next.rhov) > leastOfGap * std::fabs(last.rhol - last.rhov);
        if (!good) {
            step *= 0.5;
            if (step < smallestStep) break;
            continue;
        }
        if (next.T > line.highest.T) line.highest = next;
        if (next.T < last.T) {
            // the top of the parabola through three points, or the middle point where it has no other beside it
            double top = last.lnp;
            if (before.lnp < last.lnp) {
                const double a = (last.T - before.T) / (last.lnp - before.lnp);
                const double b = (next.T - last.T) / (next.lnp - last.lnp);
                const double curve = (b - a) / (next.lnp - before.lnp);
                if (curve < 0.0) top = 0.5 * (before.lnp + last.lnp) - 0.5 * a / curve;
            }
            DewPoint peak = last;
            if (dewPointAt(top, z, 1, peak) && peak.T > line.highest.T) line.highest = peak;
            line.rest = 0.0;
            return true;
        }
        // Toward the critical point the square of the gap between the densities vanishes in proportion, or faster.
        const double gap = square(next.rhol - next.rhov), gapBefore = square(last.rhol - last.rhov);
        line.rest = gap < gapBefore ? (next.T - last.T) * gap / (gapBefore - gap) : 0.1 * next.T;
        before = last;
        last = next;
    }
    return true;
}

void findHottest(const Composition& z, double Tc, double pc) {
    hottest.known = HottestSaturation::Known::unfindable;
    hottest.x = z;
    const NewtonAlone alone;
    DewLine line;
    if (!followDewLine(z, pc, line)) return;
    constexpr double margin = 3e-4;
    const double end = line.highest.T * (1.0 + margin) + line.rest;
    if (end < 0.9 * Tc || end > 1.5 * Tc) return;
    const double top = std::exp(line.highest.lnp);
    constexpr int mostExchanges = 15;
    for (const double share : {1.0, 0.8, 1.2, 0.5, 1.6}) {
        OtherPhase none[2];
        if (unstableFeed(end, share * top, z, mostExchanges, none)) return;
    }
    hottest.known = HottestSaturation::Known::temperature;
    hottest.T = end;
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
    return components > 1 && modelTags.HEOS == "HMX" && !pengRobinsonSelected() && newtonControl.NOSATTP == 0 &&
           !saturationSpline.INSPLINE;
}

}  // namespace

bool hotEndUnknown(const Composition& x) {
    return fits(x) && (hottest.known == HottestSaturation::Known::nothing || !sameComposition(x));
}

bool newtonAlone(double& T, double& p, const Composition& x, int kph, double& D, double& rhol, double& rhov,
                 Composition& xliq, Composition& xvap, double& q, int& ierr, Text255& herr) {
    const long calls = newtonControl.mixtureCalls;
    saturationSpline.INSPLINE = true;
    SATTP(T, p, x, kph, 0, D, rhol, rhov, xliq, xvap, q, ierr, herr);
    saturationSpline.INSPLINE = false;
    if (ierr != 0) newtonControl.mixtureCalls = calls;
    return ierr == 0;
}

bool beyondSaturation(double T, const Composition& x, double Tc, double pc) {
    if (!fits(x)) return false;
    if (hotEndUnknown(x)) findHottest(x, Tc, pc);
    return hottest.known == HottestSaturation::Known::temperature && T >= hottest.T;
}

void resetHottestSaturation() {
    hottest = {};
}

}  // namespace frigana
