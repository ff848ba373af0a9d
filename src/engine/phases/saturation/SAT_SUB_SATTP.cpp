// Newton's method with what follows where it fails: SATTP.
#include <cmath>

#include "CORE_PR.h"
#include "LIMITS.h"
#include "Message.h"
#include "ModelTags.h"
#include "PHIDERV.h"
#include "PhaseCheck.h"
#include "SAT_SUB.h"
#include "SAT_SUB_LINES.h"
#include "SAT_SUB_MIXTURE_RATIOS.h"
#include "SaturationBricks.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

SaturationCounts saturationCounts;

OnLine countedLine(PhasePair& at, const Composition& z, int kph) {
    const OnLine end = newtonOnLine(at, z, kph);
    if (end == OnLine::found) ++saturationCounts.calls;
    return end;
}

NewtonEnd countedNewton(PhasePair& at, const Composition& z, int kph, int kguess, int& ierr, Text255& herr) {
    ++saturationCounts.calls;
    return newtonEquilibrium(at, z, kph, kguess, ierr, herr);
}

namespace {

// Equations without composition derivatives, or with a liquid of another model, have only the substitution, and its own
// end stands.
bool checked() {
    return modelTags.HEOS == "HMX" && !pengRobinsonSelected();
}

bool withoutCompositionDerivatives(const Composition& z, const CriticalPoint& critical) {
    const SilentMessages quiet;
    Composition dalpha, dnalpha;
    int code = 0;
    Text255 text;
    PHIDERV(1, critical.T, critical.D, z, dalpha, dnalpha, code, text);
    return code == 191;
}

void refuse(int& ierr, Text255& herr) {
    ierr = 1;
    message(herr, "SATTP:  Iteration failed");
}

// From the end of the substitution to the equilibrium itself; false where it leads to none.
bool goOnByNewton(PhasePair& pair, const Composition& z, int kph, double pc) {
    if (isEquilibrium(pair, pc, tightEquilibrium)) return true;
    PhasePair closer = pair;
    int ierr = 0;
    Text255 herr;
    if (newtonEquilibrium(closer, z, kph, 1, ierr, herr) == NewtonEnd::found) pair = closer;
    return isEquilibrium(pair, pc);
}

// The densities at the end of the substitution are those before the last step of the composition.
bool isEndOfSubstitution(PhasePair& pair, double pc) {
    const SilentMessages quiet;
    PhasePair at = pair;
    int code = 0;
    Text255 text;
    TPRHO(at.T, at.p, at.x, -liquidPhase, 1, at.Dl, code, text);
    if (code <= 0) TPRHO(at.T, at.p, at.y, -vaporPhase, 1, at.Dv, code, text);
    return code <= 0 && isEquilibrium(at, pc, equilibriumOfSubstitution);
}

// A two-phase state that Newton's method has not found: from between the lines of its temperature, then by
// substitution.
void bothPhases(PhasePair& pair, const Composition& z, int& ierr, Text255& herr) {
    PhasePair bubble{pair}, dew{pair}, start = pair;
    const CriticalPoint critical = criticalPointOf(z);
    int bubbleCode = 0, dewCode = 0;
    {
        const SilentMessages quiet;
        SATT(pair.T, z, 1, bubble.p, bubble.Dl, bubble.Dv, bubble.x, bubble.y, bubbleCode, herr);
        SATT(pair.T, z, 2, dew.p, dew.Dl, dew.Dv, dew.x, dew.y, dewCode, herr);
    }
    if (bubbleCode <= 0 && dewCode <= 0 && bubble.p > dew.p) {
        const double q = (bubble.p - pair.p) / (bubble.p - dew.p);
        if (q > 0.0 && q < 1.0) {
            start = betweenLines(q, z, bubble, dew);
            start.p = pair.p;
            if (checked() && newtonEquilibrium(start, z, 0, 1, ierr, herr) == NewtonEnd::found) {
                pair = start;
                return;
            }
            start = betweenLines(q, z, bubble, dew);
        }
    }
    pair = {pair.T, pair.p, start.Dl, start.Dv, start.q, start.x, start.y};
    substituteCompositions(pair.T, pair.p, z, pair.Dl, pair.Dv, pair.x, pair.y, pair.q, ierr, herr);
    if (ierr > 0) return;
    if (checked() && !goOnByNewton(pair, z, 0, critical.p)) refuse(ierr, herr);
}

// A pure fluid, or whatever else is solved without derivatives in the composition.
void withoutDerivatives(PhasePair& pair, const Composition& z, int kph, int icomp, double& D, int& ierr,
                        Text255& herr) {
    if (kph == 1 || kph == 2) {
        solveSATT(Method::substitution, pair.T, z, kph, pair.p, pair.Dl, pair.Dv, pair.x, pair.y, ierr, herr);
    } else if (kph == 3 || kph == 4) {
        solveSATP(Method::substitution, pair.p, z, kph - 2, pair.T, pair.Dl, pair.Dv, pair.x, pair.y, ierr, herr);
    } else if (icomp == 0) {
        bothPhases(pair, z, ierr, herr);
    } else {
        // one phase, on its side of the saturation pressure
        double saturation = 0.0;
        SATT(pair.T, z, vaporPhase, saturation, pair.Dl, pair.Dv, pair.x, pair.y, ierr, herr);
        if (ierr > 0) return;
        pair.q = pair.p < saturation ? 1.0 : 0.0;
        D = pair.q > 0.0 ? pair.Dv : pair.Dl;
        TPRHO(pair.T, pair.p, z, pair.q > 0.0 ? vaporPhase : liquidPhase, 1, D, ierr, herr);
    }
}

}  // namespace

void lineBySubstitution(Method method, PhasePair& pair, const Composition& z, int kph, bool started,
                        const CriticalPoint& critical, double highestDensity, double coldest, int& ierr,
                        Text255& herr) {
    const bool givenT = kph <= 2;
    if (method == Method::newton) ++saturationCounts.substitutions;
    const double given = givenT ? pair.T : pair.p;
    if (givenT)
        mixtureAtTemperature(pair.T, z, kph, critical, started, pair.p, pair.Dl, pair.Dv, pair.x, pair.y, ierr, herr);
    else
        mixtureAtPressure(pair.p, z, kph - 2, critical, highestDensity, pair.T, pair.Dl, pair.Dv, pair.x, pair.y, ierr,
                          herr);
    if (!checked()) return;
    const bool byParts = withoutCompositionDerivatives(z, critical);
    if (ierr != 0 && !byParts) return;
    bool good = ierr == 0 && !(pair.T < coldest) && isEndOfSubstitution(pair, critical.p);
    if (good && method == Method::newton) good = goOnByNewton(pair, z, kph, critical.p);
    if (byParts && !(good && isEquilibrium(pair, critical.p))) {
        PhasePair closer = pair;
        const bool found = givenT ? lineByParts(closer, z, kph) : lineByTemperatures(closer, z, kph - 2, critical);
        if (found && !(closer.T < coldest) && isEquilibrium(closer, critical.p)) {
            pair = closer;
            good = true;
            ierr = 0;
            herr.clear();
        }
    }
    if (good) return;
    if (givenT)
        notConvergedAtTemperature(128, given, ierr, herr);
    else
        notConvergedAtPressure(148, given, ierr, herr);
}

void SATTP(double& T, double& p, const Composition& x, int kph, int kguess, double& D, double& rhol, double& rhov,
           Composition& xliq, Composition& xvap, double& q, int& ierr, Text255& herr) {
    const Composition z = x;  // the caller may hand in one of the result arrays
    const int line = std::abs(kph);
    const bool bubble = line == 1 || line == 3;
    int icomp = 0;
    ISPURE(z, icomp);
    PhasePair pair{T, p, rhol, rhov, q, xliq, xvap};
    NewtonEnd end = NewtonEnd::noDerivatives;
    ierr = 0;
    herr.clear();
    if (icomp == 0) end = countedNewton(pair, z, kph, kguess, ierr, herr);
    if (end == NewtonEnd::failed && line != 0 && newtonFromOtherStarts(pair, z, kph, ierr, herr))
        end = NewtonEnd::found;
    if (end != NewtonEnd::found) {
        if (icomp == 0) ++saturationCounts.substitutions;
        pair = {T, p, pair.Dl, pair.Dv, pair.q, pair.x, pair.y};
        withoutDerivatives(pair, z, line, icomp, D, ierr, herr);
        if (ierr == 0 && line != 0 && icomp == 0) {
            const CriticalPoint critical = criticalPointOf(z);
            double tmin, tmax, Dmax, pmax;
            LIMITS("EOS", z, tmin, tmax, Dmax, pmax);
            const bool equal = std::fabs(pair.Dl - pair.Dv) < 0.1 && std::fabs(pair.Dl - critical.D) > 0.1;
            if (equal || pair.Dl + pair.Dv < critical.D || (line > 2 && pair.T < 0.7 * tmin) ||
                (checked() && !goOnByNewton(pair, z, line, critical.p)))
                refuse(ierr, herr);
        }
    }
    if (line == 1 || line == 2)
        p = pair.p;
    else if (line != 0)
        T = pair.T;
    rhol = pair.Dl;
    rhov = pair.Dv;
    xliq = pair.x;
    xvap = pair.y;
    if (line != 0) pair.q = bubble ? 0.0 : 1.0;
    q = pair.q;
    if (icomp == 0 || line != 0) D = line == 0 ? bulkDensity(pair) : bubble ? rhol : rhov;
}

}  // namespace frigana
