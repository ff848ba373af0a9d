#include "TPRHO.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "CORE_PR.h"
#include "FluidFiles.h"
#include "Message.h"
#include "PROP_SUB.h"
#include "ReducedState.h"
#include "SaturationSpline.h"

namespace frigana {

namespace {

constexpr int mostSteps = 40;
constexpr double largestDensity = 1e8;  // [mol/L] beyond it the liquid iteration has gone astray
constexpr double almostCritical = static_cast<double>(0.99f);

enum class Side { liquid, vapor };

// One search: u = ln v is the unknown.
struct Search {
    double t, p;
    const Composition& x;
    double guess;            // density given by the caller; 0 where there is none
    double tc, knownPc, dc;  // knownPc: not a number until the pressure is asked for
    double vc;               // critical volume, 1 where it is not known
    double rhoU = 0.0;       // highest density that was seen with dp/drho <= 0 (vapor: lowest)
    double rhoS = 0.0;       // nearest density on the stable side of it
    double tolerance = 1e-8;
    double rho = 0.0;

    double pc() {
        if (std::isnan(knownPc)) knownPc = std::max(criticalPressureAt(tc, dc, x), 0.0);
        return knownPc;
    }
};

enum class Outcome { converged, failed, otherSide };

// p, dp/drho, d2p/drho2 and d2p/dTdrho as THERM2 gives them.
struct Stability {
    double dPdD, d2PdD2, d2PdTD;
};
Stability stability(double t, double rho, const Composition& x) {
    Therm2Result r;
    THERM2(t, rho, x, r);
    return {r.dPdD, r.d2PdD2, r.d2PdTD};
}
bool negative(double d2PdTD) {
    return d2PdTD < 0.0 && d2PdTD != notComputed;
}

double startOfLiquid(Search& s) {
    const double RTc = fluidConstants.R * s.tc;
    double v =
        RTc / s.pc() * std::pow(s.vc * s.pc() / RTc, 1.0 + std::pow(std::fabs(1.0 - s.t / s.tc), 0.2857142857142857));
    double tmin = 0.0, tmax = 0.0, Dmax = 0.0, pmax = 0.0;
    LIMITS("EOS", s.x, tmin, tmax, Dmax, pmax);
    const double estimate = std::min(1.0 / v, Dmax);
    const auto unstable = [&s](double density) {
        const Stability at = stability(s.t, density, s.x);
        return at.dPdD < 0.0 || (at.d2PdD2 < 0.0 && s.t < s.tc) || negative(at.d2PdTD);
    };
    double rho = estimate;
    int raised = 0;
    while (raised < 8 && unstable(rho)) {
        rho *= 1.1;
        ++raised;
    }
    // Cold liquids of some equations (R123 and R124 below 0.45 Tc) show such signs although they are stable, and more
    // density leads out of the equation: where raising does not help, the estimate itself is the better start.
    if (raised == 8 && unstable(rho)) rho = estimate;
    return std::min(std::log(1.0 / rho), std::log(s.vc / 2.0));
}

double startOf(Side side, Search& s) {
    if (s.guess > 0.0) return std::log(1.0 / s.guess);
    if (s.t > s.tc && s.p > s.pc()) return std::log(s.vc / 2.0);
    if (side == Side::liquid) return startOfLiquid(s);
    return std::log(fluidConstants.R * s.t / s.p);
}

// Steps in pressure over ln v.
Outcome searchLiquid(Search& s) {
    double u = startOf(Side::liquid, s);
    s.rhoS = 100.0;
    double rhoOld = 0.0;
    for (int step = 1; step <= mostSteps; ++step) {
        if (step == 12 || step == 18) {
            s.rho *= 1.3;
            u = std::log(1.0 / s.rho);
        }
        rhoOld = s.rho;
        s.rho = std::exp(-u);
        if (s.rho > largestDensity) return Outcome::failed;
        const PressureSlopes at = pressureSlopes(s.t, s.rho, s.x);
        if (at.first <= 0.0 && s.rho > s.rhoU) s.rhoU = s.rho;
        if (at.first > 0.0 && s.rho < s.rhoS && s.rho > s.rhoU) s.rhoS = s.rho;
        if (!(at.first > 0.0)) {
            u -= 0.1;
            continue;
        }

        // Halley's step in ln v
        const double miss = s.p - at.p;
        const double curvature = at.second + at.first / s.rho;
        double delta = (miss / (curvature * miss / (2.0 * at.first) + at.first)) / s.rho;
        if (std::fabs(delta) > 100.0) delta = -miss / (-s.rho * at.first);
        if (step == 10 || step == 15) s.tolerance *= 10.0;
        if ((std::fabs(delta / s.p) < 1e-4 * s.tolerance || std::fabs(s.rho - rhoOld) < 1e-11) &&
            std::fabs(miss) < 0.001) {
            s.rho = std::exp(-(u - delta));
            return Outcome::converged;
        }

        double next = u - delta;
        if (std::fabs(next - u) > 0.1 && s.t < 1.5 * s.tc) next = delta > 0.0 ? u - 0.11 : u + 0.11;
        const double criticalU = std::log(s.vc);
        if (next > criticalU && s.t < s.tc) next = (u + criticalU) / 2.0;
        u = next;
        if (u < -5.0 && s.t >= s.tc) return Outcome::otherSide;
    }
    s.rho = std::exp(-u);
    return s.t >= s.tc ? Outcome::otherSide : Outcome::failed;
}

// Steps in ln p over ln v.
Outcome searchVapor(Search& s) {
    double u = startOf(Side::vapor, s);
    for (int step = 1; step <= mostSteps; ++step) {
        s.rho = std::exp(-u);
        const PressureSlopes at = pressureSlopes(s.t, s.rho, s.x);
        if (at.first <= 0.0 && s.rho < s.rhoU) s.rhoU = s.rho;
        if (at.first > 0.0 && s.rho > s.rhoS && s.rho < s.rhoU) s.rhoS = s.rho;
        if (!(at.first > 0.0) || !(at.p > 0.0)) {
            u += 0.1;
            continue;
        }

        const double slope = at.first / at.p;
        const double curvature = at.second / at.p - slope * slope + at.first / (s.rho * at.p);
        const double miss = std::log(s.p) - std::log(at.p);
        double delta = (miss / (at.p * curvature * miss / (2.0 * at.first) + slope)) / s.rho;
        if (std::fabs(delta) > 1.0) delta = -miss * at.p / (-s.rho * at.first);
        if (std::fabs(delta) > 25.0) delta = 1e-6;
        if (step == 10 || step == 15) s.tolerance *= 10.0;
        if (std::fabs(delta) < 1e-4 * s.tolerance) {
            s.rho = std::exp(-(u - delta));
            return Outcome::converged;
        }
        u -= delta;
    }
    return Outcome::failed;
}

// Above the critical temperature of a pure fluid pressure rises with density all along: the only root, by Newton's
// method inside a bracket. For the states about the critical point at which the iterations above swing to and fro. A
// mixture may have spinodals there too; a root between them is refused afterwards as every unstable one.
Outcome searchAboveCritical(Search& s) {
    double lower = 0.0;
    double upper = s.dc;
    while (pressureSlopes(s.t, upper, s.x).p < s.p) {
        lower = upper;
        upper *= 1.5;
        if (upper > 100.0 * s.dc) return Outcome::failed;
    }
    constexpr int mostHalvings = 200;
    double rho = 0.5 * (lower + upper);
    for (int step = 1; step <= mostHalvings; ++step) {
        const PressureSlopes at = pressureSlopes(s.t, rho, s.x);
        (at.p < s.p ? lower : upper) = rho;
        double next = at.first > 0.0 ? rho + (s.p - at.p) / at.first : lower;
        if (!(next > lower && next < upper)) next = 0.5 * (lower + upper);
        const bool done = std::fabs(next - rho) < 1e-13 * rho;
        rho = next;
        if (done) break;
    }
    s.rho = rho;
    return Outcome::converged;
}

// A root between the spinodals, which the iterations can meet close to the critical point.
bool unstableRoot(const Search& s) {
    if (!(s.t < 1.2 * s.tc && s.rho > 0.2 * s.dc && s.rho < 2.0 * s.dc)) return false;
    const Stability at = stability(s.t, s.rho, s.x);
    if (at.dPdD < 0.0) return true;
    if (!negative(at.d2PdTD)) return false;
    // carbon dioxide's equation has such states close to its critical point
    const bool carbonDioxide = modelTags.NC == 1 && fluidFiles.HCAS[1] == "124-38-9";
    return !(carbonDioxide && at.d2PdTD > -23.0);
}

void reportFailure(Side side, const Search& s, int& ierr, Text255& herr) {
    const auto pressure = General{12, 5, s.p / 1000.0};
    if (side == Side::liquid) {
        ierr = 202;
        message(herr, "[TPRHO error 202] liquid iteration has not converged for T =", General{12, 5, s.t},
                " K, P =", pressure, " MPa, rho (last guess) = ", General{12, 5, s.rho}, " mol/L, compositions = ");
    } else {
        ierr = 203;
        message(herr, "[TPRHO error 203] vapor iteration has not converged for T =", General{12, 5, s.t},
                " K, P =", pressure, " MPa, rho (last guess) = ", General{12, 5, s.rho}, " mol/L, x (mol frac) =");
    }
    int length = herr.length() + (side == Side::liquid ? 1 : 0);  // the blank after the last "=" counts
    Text255 fractions;
    for (int i = 1; i <= std::min(modelTags.NC, 5); ++i) {
        message(fractions, fractions.slice(1, 12 * (i - 1)), General{12, 5, s.x[i]});
    }
    message(herr, herr.slice(1, length), fractions.slice(1, 12 * std::min(modelTags.NC, 5)), nullCharacter);
    ERRMSG(ierr, herr);
}

void boundCriticalPoint(double& tc, double& pc, double& dc) {
    if (tc <= 0.0) tc = 100.0;
    if (pc <= 0.0) pc = 0.0;
    if (dc <= 0.0) dc = 0.0;
}

// The critical point as CRITP gives it, but for the pressure of a mixture: most searches from a guess do without it.
void criticalPointForSearch(Search& s, int& ierr, Text255& herr) {
    const bool known = criticalLineOf(s.x, s.tc, s.knownPc, s.dc, ierr, herr);
    if (!known && s.tc > 0.0 && s.dc > 0.0) {
        s.knownPc = std::numeric_limits<double>::quiet_NaN();
        return;
    }
    if (!known) s.knownPc = criticalPressureAt(s.tc, s.dc, s.x);
    boundCriticalPoint(s.tc, s.knownPc, s.dc);
}

// The root of the cubic equation; true if it is the answer.
bool rootOfCubic(double t, double p, const Composition& x, int kph, double& rho, bool& failed) {
    double first = 0.0, second = 0.0;
    TPRHOPR(t, p, x, first, second);
    const double larger = std::max(first, second), smaller = std::min(first, second);
    failed = larger > largestDensity;
    if (failed) return true;
    if (smaller < 1e-12 || std::abs(kph) == 1)
        rho = larger;
    else if (std::abs(kph) == 2)
        rho = smaller;
    else
        rho = std::fabs(larger - rho) < std::fabs(smaller - rho) ? larger : smaller;
    if (p > 1.0 || kph == 2) return true;
    if (kph == 1 && rho < 1e-6) rho = 0.0;
    return false;
}

}  // namespace

void TPRHO(double t, double p, const Composition& x, int kph, int kguess, double& rho, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    RMIX(x);
    if (p < 1e-8 && kph != 1) {
        rho = t > 0.0 ? p / (fluidConstants.R * t) : 0.0;
        return;
    }
    if (kph == 1 && std::fabs(p) < 1e-60) {
        rho = 0.0;
        return;
    }
    Search s{t, p, x, 0.0, 0.0, 0.0, 0.0, 1.0};
    if (pengRobinsonSelected()) {
        bool failed = false;
        if (rootOfCubic(t, p, x, kph, rho, failed)) {
            if (failed) {
                s.rho = rho;
                reportFailure(Side::liquid, s, ierr, herr);
            }
            return;
        }
    }
    criticalPointForSearch(s, ierr, herr);
    if (ierr > 0) {
        message(herr, "[TPRHO error 200] ", herr);
        ierr = 200;
        ERRMSG(ierr, herr);
        return;
    }
    ierr = 0;
    herr.clear();
    if (s.dc > 0.0) s.vc = 1.0 / s.dc;
    s.rhoU = s.dc;

    Side side = Side::vapor;
    if (kph == -1) {
        side = Side::liquid;
    } else if (kph == -2) {
        side = Side::vapor;
    } else if (t > s.tc && p < almostCritical * s.pc() * (7.0 * (t / s.tc - 1.0) + 1.0)) {
        side = Side::vapor;
    } else if (kph == 1 || t >= s.tc || p >= s.pc()) {
        side = Side::liquid;
    } else if (kph <= 0) {
        if (kguess != 1) {
            ierr = 201;
            message(herr, "[TPRHO error 201] illegal input to TPRHO (kph <= 0); use TPFLSH instead", nullCharacter);
            ERRMSG(ierr, herr);
            return;
        }
        side = rho >= s.dc ? Side::liquid : Side::vapor;
    }
    if (kguess == 1 && rho > 0.0) s.guess = rho;

    Outcome outcome = Outcome::otherSide;
    if (side == Side::liquid) {
        outcome = searchLiquid(s);
        if (outcome == Outcome::otherSide) {
            side = Side::vapor;
            s.rhoU = s.dc;
            s.rhoS = 0.0;
            outcome = searchVapor(s);
        }
    } else {
        outcome = searchVapor(s);
    }
    if (outcome == Outcome::failed && t > s.tc && s.dc > 0.0) outcome = searchAboveCritical(s);
    if (outcome == Outcome::failed) {
        reportFailure(side, s, ierr, herr);
        rho = s.rhoS > 0.0 ? s.rhoS : std::isfinite(s.rho) ? s.rho : 0.0;
        return;
    }
    rho = s.rho;
    if (unstableRoot(s)) {
        reportFailure(kph == 1 ? Side::liquid : Side::vapor, s, ierr, herr);
        if (s.rhoS > 0.0) rho = s.rhoS;
    }
}

void CRITP(const Composition& x, double& tcrit, double& pcrit, double& Dcrit, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    int icomp = 0;
    ISPURE(x, icomp);
    if (icomp > 0) {
        tcrit = fluidConstants.TCRIT[icomp];
        pcrit = fluidConstants.PCRIT[icomp];
        Dcrit = fluidConstants.DCRIT[icomp];
    } else {
        CRTHMX(x, tcrit, pcrit, Dcrit, ierr, herr);
    }
    boundCriticalPoint(tcrit, pcrit, Dcrit);
}

namespace {

void extremeOfEnvelope(const EnvelopePoint& point, std::string_view text, const Composition& x, double& tm, double& pm,
                       double& Dm, int& ierr, Text255& herr) {
    tm = 300.0;
    pm = Dm = 0.0;
    int icomp = 0;
    ISPURE(x, icomp);
    if (icomp > 0) {
        CRITP(x, tm, pm, Dm, ierr, herr);
    } else if (saturationSpline.SPLINEREADY) {
        bool same = true;
        for (int i = 1; i <= modelTags.NC; ++i) same = same && std::fabs(x[i] - saturationSpline.XSPLN[i]) <= 1e-6;
        if (same) {
            tm = point.T;
            pm = point.p;
            Dm = point.D;
        }
    }
    if (Dm > 0.01) {
        ierr = 0;
        herr.clear();
        return;
    }
    ierr = 1;
    message(herr, text, nullCharacter);
    ERRMSG(ierr, herr);
}

}  // namespace

void MAXT(const Composition& x, double& tm, double& pm, double& Dm, int& ierr, Text255& herr) {
    extremeOfEnvelope(saturationSpline.highestTemperature, "[MAXT error] Maximum temperature not known", x, tm, pm, Dm,
                      ierr, herr);
}

void MAXP(const Composition& x, double& tm, double& pm, double& Dm, int& ierr, Text255& herr) {
    extremeOfEnvelope(saturationSpline.highestPressure, "[MAXP error] Maximum pressure not known", x, tm, pm, Dm, ierr,
                      herr);
}

}  // namespace frigana
