// Flash at given temperature or density and a caloric property, at enthalpy and entropy, at energy and entropy.
#include "FLASH2.h"

#include <algorithm>
#include <cmath>

#include "CORE_PR.h"
#include "FLSH_SUB.h"
#include "FLSH_SUB_PURE.h"
#include "FLSH_SUB_STABILITY.h"
#include "FlashBricks.h"
#include "FluidConstants.h"
#include "LIMITS.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"
#include "SAT_SUB_INVERSE.h"
#include "SAT_SUB_NEWTON.h"
#include "SilentMessages.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

// ---------------------------------------------------------------------------------------------------------------
// Given temperature.

void TBFLSH(double T, double b, const Composition& z, int kr, std::string_view ab, double& p, double& D, double& Dl,
            double& Dv, Composition& x, Composition& y, double& q, double& e, double& h, double& s, double& cv,
            double& cp, double& w, int& ierr, Text255& herr) {
    constexpr double thinDensity = 0.0001;  // [mol/L]
    constexpr int goldenSections = 29;
    const char letter = ab[1];
    const std::string_view letterText = ab.substr(1, 1);
    FlashResult r{T, p, D, Dl, Dv, x, y, q, e, h, s, cv, cp, w, ierr, herr};
    const int icomp = openFlash(z, r);
    p = 0;
    q = superheatedVapor;

    if (refuseInputs(ab, {{'T', T, 1}, {letter, b, 239}}, r)) return;
    CriticalPoint critical;
    if (!criticalPoint(ab, 230, z, critical, r)) return;
    const EosLimits limits = limitsAt(T, 0, 0, z);
    Text255 inner;

    const auto value = [&](double density) { return propertyByLetter(letter, T, density, z); };
    const auto outOfRange = [&](std::string_view bound, double limit) {
        ierr = 239;
        message(herr, "[", ab, "FLSH error", Integer{4, ierr}, "] Input value is outside limits; ", letterText, " =",
                General{12, 5, b}, ", ", letterText, bound, General{12, 5, limit}, nullCharacter);
        ERRMSG(ierr, herr);
    };
    const auto noResult = [&] {
        D = Dl = Dv = thinDensity;
        p = D * fluidConstants.R * T;
        q = e = h = s = cv = cp = w = fugacityOutOfRange;
    };
    reportLimits(ab, limits, r, 4);
    if (limits.code > 0) {
        noResult();
        return;
    }
    const double thinValue = value(thinDensity);
    const double highest = std::max(thinValue, value(limits.Dmax));
    if (b > highest) {
        outOfRange("max =", highest);
        noResult();
        return;
    }

    // A second density with the same value exists on the other side of an extremum.
    const auto warnOfTwoRoots = [&] {
        ierr = -238;
        message(herr, "[", ab, "FLSH warning 238] two solutions exist for the input values; the ",
                kr == 2 ? "higher" : "lower", " density root has been calculated", nullCharacter);
        ERRMSG(ierr, herr);
    };
    // Single phase between two densities; the warning that stands is kept.
    const auto singlePhase = [&](double lower, double upper) {
        int code = 0;
        double Tsolved = T;
        ABFL1(T, b, z, 0, ab, lower, upper, Tsolved, p, D, code, inner);
        if (code > 0) {
            ierr = code;
            herr = inner;
            D = Dl = Dv = 0;
            q = supercriticalOrNone;
            return false;
        }
        p = fillSinglePhase(T, D, z, r);
        return true;
    };
    // Density at the highest pressure.
    const auto topDensity = [&](double& top) {
        int code = 0;
        TPRHO(T, limits.pmax, z, 1, 0, top, code, inner);
        if (code > 0 && top > limits.Dmax) top = limits.Dmax;
        return top > 0;
    };

    const auto onIsotherm = [&] {
        return mayBeTwoPhase(T, 0, z, critical) && solveOnIsotherm(T, b, letter, z, 1.5 * critical.p, p, r);
    };

    // Values at the bounds belong to the range.
    const double rounding = 1e-9 * std::max(1.0, std::abs(b));
    double Dtop = 0;
    const auto aboveTheLines = [&] {
        if (!topDensity(Dtop)) Dtop = limits.Dmax;
        const double topValue = value(Dtop);
        double lower = thinDensity;
        double upper = Dtop;
        // The property falls with density at first; where it rises to the highest density there is a minimum between.
        if (b < topValue - rounding || value(0.999 * Dtop) < topValue) {
            double De = 0;
            double leastValue = 0;
            GOLD(thinDensity, Dtop, goldenSections, true, z, T, letter, De, leastValue);
            // two phases may have less than one
            if (b < std::min(leastValue, topValue - rounding)) {
                if (onIsotherm()) return;
                outOfRange("min =", leastValue);
                noResult();
                return;
            }
            // Above the value of the thin gas there is the dense root alone, above that at the top the thin one.
            const bool two = b <= thinValue && b < topValue + rounding;
            if (two) warnOfTwoRoots();
            if (two ? kr == 2 : b > thinValue) {
                lower = De;
            } else {
                upper = De;
            }
        }
        if (!singlePhase(lower, upper)) return;
        q = p > critical.p ? supercriticalOrNone : superheatedVapor;
        // the critical temperature of a mixture is an estimate, and not its hottest one
        const int warning = ierr;
        const Text255 warningText = herr;
        if (isMetastable(T, p, D, z, critical) && !solveOnIsotherm(T, b, letter, z, 1.5 * critical.p, p, r)) {
            noState(r);
            reportError(ab, 224, noDewPoint, Text255{}, ierr, herr);
            return;
        }
        ierr = warning;
        herr = warningText;
    };
    if (T >= critical.T) {
        aboveTheLines();
        return;
    }
    // A single phase on its side of the lines.
    const auto besideTheLines = [&](double lower, double upper, double side) {
        if (!singlePhase(lower, upper)) return;
        q = side;
        if (!isMetastableBesideLines(r, z, critical) || onIsotherm()) return;
        noState(r);
        reportError(ab, 224, noDewPoint, Text255{}, ierr, herr);
    };

    // Vapor.
    const bool plainPure = icomp > 0 && !isPseudoPure(icomp);
    SaturatedPair dew;
    saturationAtT(T, z, 2, dew);
    const auto saturationFailed = [&](const SaturatedPair& pair) {
        reportError(ab, pair.ierr, "", pair.herr, ierr, herr);
        q = supercriticalOrNone;
    };
    if (dew.ierr > 0) {
        // The estimate of a mixture's critical temperature may lie above its hottest one.
        const bool noLines = icomp == 0 && modelTags.HEOS == "HMX" && !mayBeTwoPhase(T, 0, z, critical);
        if (noLines) {
            aboveTheLines();
        } else if (!onIsotherm()) {
            saturationFailed(dew);
        }
        return;
    }
    const double dewValue = value(dew.Dv);
    // Above the value of the thin gas only a liquid under very high pressure is left, which is also the higher root of
    // a vapor's value.
    const bool denseOnly = b > thinValue + rounding;
    if (b >= dewValue && !denseOnly && kr != 2) {
        besideTheLines(thinDensity, dew.Dv, superheatedVapor);
        return;
    }

    // Liquid, or both.
    if (!topDensity(Dtop)) Dtop = limits.Dmax;
    SaturatedPair bubble;
    if (plainPure) {
        bubble = dew;
    } else {
        saturationAtT(T, z, 1, bubble);
        if (bubble.ierr > 0) {
            if (!onIsotherm()) saturationFailed(bubble);
            return;
        }
    }
    const double bubbleValue = value(bubble.Dl);
    double De = bubble.Dl;
    double leastValue = bubbleValue;
    if (value(bubble.Dl + 1e-6) < bubbleValue) {
        GOLD(bubble.Dl, Dtop, goldenSections, true, z, T, letter, De, leastValue);
    }
    const double topValue = value(Dtop);
    if (b >= dewValue && !denseOnly && !(b < topValue + rounding)) {
        besideTheLines(thinDensity, dew.Dv, superheatedVapor);
        return;
    }
    if (b < std::min(leastValue, topValue) - rounding) {
        if (onIsotherm()) return;
        outOfRange("min =", leastValue);
        noResult();
        return;
    }
    const bool extremum = topValue > leastValue + rounding;
    const bool two = extremum && b < topValue + rounding && !denseOnly;
    if (two) warnOfTwoRoots();
    if (b < bubbleValue || denseOnly || (two && kr == 2)) {
        const bool dense = denseOnly || (two && kr == 2);
        besideTheLines(dense ? De : bubble.Dl, dense || !extremum ? Dtop : De, subcooledLiquid);
        return;
    }

    // Two phases.
    Dl = bubble.Dl;
    Dv = dew.Dv;
    p = dew.p;
    if (icomp > 0) {
        q = (b - bubbleValue) / (dewValue - bubbleValue);
        if (!plainPure) p = (1 - q) * bubble.p + q * dew.p;
    } else {
        double Tbub = T;
        double Tdew = T;
        double Tsolved = T;
        int code = 0;
        q = 0.5;
        ABFL2(T, b, z, 1, 1, ab, Tbub, Tdew, bubble.p, dew.p, bubble.Dl, dew.Dv, bubble.y, dew.x, Tsolved, p, Dl, Dv, x,
              y, q, code, inner);
        if (code > 0) {
            if (onIsotherm()) return;
            noState(r);
            ierr = code;
            herr = inner;
            return;
        }
    }
    fillTwoPhase(T, r);
}

// ---------------------------------------------------------------------------------------------------------------
// Given density.

namespace {

// The critical point and the highest density at which helium's saturation line is still followed.
bool denseHelium(double Tc, double D) {
    return Tc > 5 && Tc < 6 && D > 36.5;
}

// Solid-free densities outside those of the vapor-liquid line of a pure fluid hold a single phase.
bool beyondVaporLiquidLine(int icomp, double D) {
    if (icomp == 0) return false;
    const double liquid = fluidConstants.DTPN[icomp];
    return (liquid > 0 && D > liquid) || D < fluidConstants.DTPV[icomp];
}

// No line is looked for of thinner mixtures, as by TDFLSH [mol/L].
constexpr double thinnest = 1e-10;

// A state of a mixture without its saturation lines: one phase by Newton's method in temperature, or, where that one is
// two at its temperature, both by Newton's method from there. The property rises with temperature along an isochore, so
// that there is one such state.
bool solveMixtureAtDensity(double D, double b, std::string_view ab, const Composition& z, const CriticalPoint& critical,
                           double tmin, FlashResult& r) {
    if (!(modelTags.HEOS == "HMX") || pengRobinsonSelected()) return false;
    constexpr double tolerance = 1e-9, usual = 0.8;  // [Tc]
    constexpr double thin = 1e-4;                    // [mol/L] a gas that condenses at the cold end alone
    const int mostSteps = D < thin ? 20 : 6;
    const char letter = ab[1];
    const SilentMessages quiet;
    const auto flashAt = [&](double T) {
        r.T = T;
        TDFLSH(T, D, z, r.p, r.Dl, r.Dv, r.x, r.y, r.q, r.e, r.h, r.s, r.cv, r.cp, r.w, r.ierr, r.herr);
        return r.ierr <= 0 && r.p > 0;
    };
    double T = 0, p = 0;
    DBFL1(D, b, z, ab, T, p, r.ierr, r.herr);
    if (r.ierr > 0 || T < tmin) T = usual * critical.T;
    double lower = tmin, upper = aboveTwoPhases(z, critical);
    for (int step = 1; step <= mostSteps; ++step) {
        if (!flashAt(T)) return false;
        const bool two = r.q > 0 && r.q < 1;
        if (two && twoPhasesNear({'D', D}, {letter, b}, z, r)) return true;
        const double F = rising(letter, r) - b;
        if (!two && std::abs(F) < tolerance * std::max(1.0, std::abs(b))) {
            r.q = regionQuality(T, r.p, D, critical);
            return true;
        }
        (F < 0 ? lower : upper) = T;
        T = 0.5 * (lower + upper);
    }
    return false;
}

}  // namespace

void DBFLSH(double D, double b, const Composition& z, std::string_view ab, double& T, double& p, double& Dl, double& Dv,
            Composition& x, Composition& y, double& q, double& e, double& h, double& s, double& cv, double& cp,
            double& w, int& ierr, Text255& herr) {
    const char letter = ab[1];
    double bulk = D;
    FlashResult r{T, p, bulk, Dl, Dv, x, y, q, e, h, s, cv, cp, w, ierr, herr};
    const int icomp = openFlash(z, r);
    T = p = 0;

    if (refuseInputs(ab, {{'D', D, 2}, {letter, b, 215}}, r)) return;
    CriticalPoint critical;
    if (!criticalPoint(ab, 210, z, critical, r)) return;
    const EosLimits limits = limitsAt(-1, D, 0, z);
    if (limits.code > 0) {
        reportLimits(ab, limits, r, 4);
        return;
    }
    Text255 inner;
    const bool mayBeTwo = icomp > 0 || D >= thinnest;

    if (icomp == 0 && solveMixtureAtDensity(D, b, ab, z, critical, limits.tmin, r)) {
        ierr = 0;
        herr.clear();
        reportLimits(ab, limitsAt(T, D, p, z), r);
        return;
    }
    clear(r, icomp, z);
    T = p = 0;

    // Value of the property on the saturation line at D.
    double saturatedValue = b - 1e-6;
    if (mayBeTwo && !denseHelium(critical.T, D)) {
        SaturatedPair line;
        int kr = 0;
        {
            const SilentMessages quiet;
            SATD(D, z, 0, kr, line.T, line.p, line.Dl, line.Dv, line.x, line.y, line.ierr, line.herr);
        }
        if (line.ierr > 0 && beyondVaporLiquidLine(icomp, D)) {
            saturatedValue = b - 1e-6;
        } else {
            // a mixture's dew points lie above its critical temperature, too
            const bool known = line.ierr <= 0 && (line.T <= critical.T || icomp == 0);
            saturatedValue = propertyByLetter(letter, known ? line.T : critical.T, D, z);
        }
    }

    const auto failed = [&] {
        q = supercriticalOrNone;
        Dl = Dv = 0;
        ierr = 215;
        message(herr, "[", ab, "FLSH error 248] iteration did not converge:  ", innerText(inner), nullCharacter);
        ERRMSG(ierr, herr);
    };
    if (b >= saturatedValue) {
        double Dsolved = D;
        ABFL1(D, b, z, 0, ab, 0, limits.Dmax, T, p, Dsolved, ierr, inner);
        if (ierr > 0) {
            failed();
            return;
        }
        p = fillSinglePhase(T, D, z, r);
        q = regionQuality(T, p, D, critical);
    }
    if (mayBeTwo && (b < saturatedValue || isMetastable(T, p, D, z, critical))) {
        DBFL2(D, b, z, 1, ab, T, p, Dl, Dv, x, y, q, ierr, inner);
        // a mixture's lines may end before its two phases do, and the end of that iteration is none of a thin gas
        constexpr double sameDensity = 1e-6, thin = 0.01;  // relative; [mol/L]
        const bool found = ierr <= 0 && (icomp > 0 || std::abs(bulkDensity(q, Dl, Dv) / D - 1) < sameDensity);
        if (icomp == 0 && (ierr > 0 || (!found && D < thin)) &&
            solveOnIsochoreByFlash(D, b, letter, z, limits.tmin, aboveTwoPhases(z, critical), T, r)) {
            p = r.p;
            ierr = 0;
            herr.clear();
            reportLimits(ab, limitsAt(T, D, p, z), r);
            return;
        }
        // at the lines themselves the share is that of one phase
        if (ierr <= 0 && !(found && q >= 0 && q <= 1)) {
            ierr = 248;
            inner.clear();
        }
        if (ierr > 0) {
            failed();
            return;
        }
        fillTwoPhase(T, r);
    }
    ierr = 0;
    reportLimits(ab, limitsAt(T, D, p, z), r);
}

// ---------------------------------------------------------------------------------------------------------------
// Given enthalpy (or energy) and entropy.

namespace {

// A state at given pressure from the tolerance of the inner flash to the rounding of the entropy, by the temperature of
// one phase or the share of the vapor in two: next to the bubble line enthalpy and energy hardly change with pressure
// along an isentrope, and what entropy is off shows as pressure many times as large.
void closeEntropy(double s, const Composition& z, FlashResult& r) {
    constexpr double longestStep = 1e-5;
    if (!(r.q > 0 && r.q < 1)) {
        const PhaseProperties phase = propertiesOf(r.T, r.D, z);
        const double heat = r.T * (s - phase.s);
        const double stepT = heat / phase.cp;
        if (!(std::abs(stepT) < longestStep * r.T)) return;
        double dDdT = 0;
        DDDT(r.T, r.D, z, dDdT);
        r.e = phase.e + heat + phase.p * dDdT * stepT / (r.D * r.D);
        r.h = phase.h + heat;
        r.T += stepT;
        r.D += dDdT * stepT;
        return;
    }
    const PhaseProperties liquid = propertiesOf(r.T, r.Dl, r.x);
    const PhaseProperties vapor = propertiesOf(r.T, r.Dv, r.y);
    const double q = (s - liquid.s) / (vapor.s - liquid.s);
    if (!(q > 0 && q < 1 && std::abs(q - r.q) < longestStep)) return;
    r.q = q;
    r.D = bulkDensity(q, r.Dl, r.Dv);
    r.e = (1 - q) * liquid.e + q * vapor.e;
    r.h = (1 - q) * liquid.h + q * vapor.h;
}

// The two-phase state of an entropy at a pressure, by the flash at these. Codes from 200 on are of flashes that failed.
bool stateOnIsentrope(double p, double s, const Composition& z, FlashResult& r, int& code) {
    Text255 text;
    const SilentMessages quiet;
    PSFLSH(p, s, z, r.T, r.D, r.Dl, r.Dv, r.x, r.y, r.q, r.e, r.h, r.cv, r.cp, r.w, code, text);
    const bool found = r.D > 0 && code < 200;
    if (found) closeEntropy(s, z, r);
    r.s = s;
    r.p = p;
    return found;
}

bool stateOnIsentrope(double p, double s, const Composition& z, FlashResult& r) {
    int code = 0;
    return stateOnIsentrope(p, s, z, r, code);
}

// Two phases: pressure at which the entropy goes with the given enthalpy, dh/dp = 1/rho along an isentrope. In energy
// mode the same steps serve, their length being nearly right.
bool twoPhaseByPressure(double given, double s, const Composition& z, double pStart, bool energy, FlashResult& r) {
    constexpr int mostSteps = 25;
    constexpr double tolerance = 1e-5;
    constexpr double closestStep = 1e-12;  // of pressure: below it the next state is the same one
    double p = pStart;
    double fBefore = 0;
    for (int step = 1; step <= mostSteps; ++step) {
        if (!stateOnIsentrope(p, s, z, r)) return false;
        const double F = (energy ? r.e : r.h) - given;
        const double next = p - F * r.D;
        // beside the bubble line enthalpy hardly changes with pressure: the steps go on for as long as they help
        if (std::abs(F) < tolerance &&
            (std::abs(next - p) < closestStep * p || (step > 1 && std::abs(F) >= 0.5 * std::abs(fBefore))))
            return true;
        fBefore = F;
        p = std::max(0.2 * (p + 0.001), next);
    }
    return false;
}

// From a single-phase state near the one looked for to the rounding of both properties; the best state met is kept.
//   Along an isentrope dh = dp/rho and de = p dp/(rho a)^2, with the slope of pressure a^2 = (dp/drho)_s, so that
//   energy runs with the square of pressure and has a minimum at zero. Steps in that square lead from a pressure much
//   too high, or from the negative pressure with the same energy, to the right one, where Newton's steps take long or
//   stay.
void refineState(char letter, double given, double s, const Composition& z, double& T, double& D) {
    constexpr int mostSteps = 30;
    const bool energy = letter == 'E';
    double Tbest = T;
    double Dbest = D;
    double offBest = 0;
    int idle = 0;
    for (int step = 1; step <= mostSteps; ++step) {
        const PhaseProperties phase = propertiesOf(T, D, z);
        double dpdd = 0;
        double dpdt = 0;
        DPDD(T, D, z, dpdd);
        DPDT(T, D, z, dpdt);
        const double slope = dpdd + T * dpdt * dpdt / (phase.cv * D * D);
        if (!(phase.cv > 0 && slope > 0)) break;
        const double sOff = s - phase.s;
        const double valueOff = given - chosenProperty(letter, phase);
        const double off = std::abs(valueOff) + T * std::abs(sOff);
        if (step == 1 || off < offBest) {
            if (step > 1 && off > 0.5 * offBest) ++idle;
            Tbest = T;
            Dbest = D;
            offBest = off;
        } else {
            ++idle;
        }
        if (idle >= 6 || off == 0) break;

        // At the density: the temperature that entropy asks for, and what it does to pressure and property.
        const double stepT = T * sOff / phase.cv;
        const double pHere = phase.p + dpdt * stepT;
        double pressureStep = 0;
        if (energy) {
            const double square = pHere * pHere + 2 * (valueOff - T * sOff) * D * D * slope;
            pressureStep = std::sqrt(std::max(0.0, square)) - pHere;
        } else {
            pressureStep = (valueOff - T * sOff - dpdt * stepT / D) * D;
        }
        const double stepD = pressureStep / slope;
        if (!(std::abs(stepT) < 0.1 * T && std::abs(stepD) < 0.1 * D)) break;
        T += stepT + T * dpdt / (phase.cv * D * D) * stepD;
        D += stepD;
    }
    T = Tbest;
    D = Dbest;
}

// Any state: along an isentrope enthalpy and energy rise with pressure, dh = v dp and de = -p dv, through one phase and
// two alike, so that the pressure is found between bounds.
//   A flash of a mixture that fails between the limits of the property takes a hundred times as long as one that is
//   solved. It does so over a whole range of pressures where the model has two liquids, and bisection toward the border
//   of that range leads to no state: a search with more than two of them is given up.
bool solveOnIsentrope(double given, double s, const Composition& z, double pmax, bool energy, FlashResult& r) {
    constexpr int mostSteps = 100, mostFailures = 2, outsideLimits = 249;
    constexpr double lowestPressure = 1e-10;               // [kPa]
    constexpr double closeToEnd = 1e-4, farFromRoot = 10;  // in ln p; [J/mol]
    // The steps go on to the rounding of the value; what the inner flash can keep is enough where they end before.
    const double scale = std::max(1.0, std::abs(given));
    const double tolerance = 1e-13 * scale, closeEnough = 1e-8 * scale;
    int icomp = 0;
    ISPURE(z, icomp);
    int failures = 0;
    double F = 0;
    // A pressure without a state of this entropy is one below its lowest temperature.
    const auto residual = [&](double p) {
        int code = 0;
        const bool found = stateOnIsentrope(p, s, z, r, code);
        if (!found && icomp == 0 && code > 200 && code < outsideLimits) ++failures;
        F = (energy ? r.e : r.h) - given;
        return found;
    };
    double lower = std::log(lowestPressure);
    double upper = std::log(1.01 * pmax);
    if (!residual(std::exp(upper)) || F < 0) return false;
    // h is close to linear in p for liquids: false position in p itself, between halvings of its logarithm
    FalsePosition ends{std::exp(lower), 0, std::exp(upper), F};
    bool haveLower = false, haveUpper = true;
    // A pressure without a state between two good ones lies in the gap of an equation whose saturation lines end apart
    // from each other: the side of the lower pressures is searched first, then that of the higher ones.
    FalsePosition beyondGap = ends;
    bool haveGap = false;
    for (int step = 1; step <= mostSteps; ++step) {
        double at = 0.5 * (lower + upper);
        if (haveLower && haveUpper && step % 4 != 0) at = std::log(ends.next());
        const double p = std::exp(at);
        const bool found = residual(p);
        if (found && std::abs(F) < tolerance) return true;
        if (failures > mostFailures) return false;
        if (upper - lower < 1e-14 * std::abs(upper) + 1e-15) {
            if (haveUpper || !haveGap) return found && std::abs(F) < closeEnough;
            lower = upper;
            upper = std::log(beyondGap.upper);
            ends.upper = beyondGap.upper;
            ends.fUpper = beyondGap.fUpper;
            haveLower = haveGap = false;
            haveUpper = true;
        } else if (!found && haveLower) {
            if (!haveGap) beyondGap = ends;
            haveGap = true;
            upper = at;
            haveUpper = false;
        } else if (!found) {
            lower = at;
            // between here and the last pressure with a state the value does not fall so far
            if (!haveGap && upper - lower < closeToEnd && ends.fUpper > farFromRoot) return false;
        } else if (haveLower && haveUpper) {
            ends.take(p, F);
            lower = std::log(ends.lower);
            upper = std::log(ends.upper);
        } else {
            ends.side = 0;
            (F < 0 ? ends.lower : ends.upper) = p;
            (F < 0 ? ends.fLower : ends.fUpper) = F;
            (F < 0 ? lower : upper) = at;
            (F < 0 ? haveLower : haveUpper) = true;
        }
    }
    return std::abs(F) < closeEnough;
}

// Whether a single-phase result is the state asked for: inside the limits, with the given values, and neither a
// superheated liquid nor a supercooled vapor.
//   The energy of a cold liquid between its bubble line and zero pressure differs by less than its rounding, and a
//   state found to that rounding may lie below the line: then the one on the line is taken, if it has the given values.
bool isStable(double given, double s, const Composition& z, double tmin, double tmax, double pmax, bool energy,
              FlashResult& r) {
    if (!(r.D > 0) || r.T < tmin - 1e-6 || r.T > 1.5 * tmax) return false;
    const PhaseProperties phase = propertiesOf(r.T, r.D, z);
    const auto meets = [&](const PhaseProperties& at, double tolerance) {
        return std::abs((energy ? at.e : at.h) - given) <= tolerance * std::max(1.0, std::abs(given)) &&
               std::abs(at.s - s) <= tolerance * std::max(1.0, std::abs(s));
    };
    if (phase.p > 2 * pmax || !meets(phase, 1e-8)) return false;
    double Tc = 0;
    double Pc = 0;
    double Dc = 0;
    int code = 0;
    Text255 text;
    CRITP(z, Tc, Pc, Dc, code, text);
    if (r.T >= Tc) return phase.p >= 0;
    const SilentMessages quiet;
    SaturatedPair line;
    const bool liquid = r.D > Dc;
    saturationAtT(r.T, z, liquid ? 1 : 2, line);
    if (line.ierr > 0) return phase.p >= 0;
    if (liquid ? r.D >= line.Dl : r.D <= line.Dv) return true;

    double dpdt = 0;
    DPDT(r.T, r.D, z, dpdt);
    const double Dline = liquid ? line.Dl : line.Dv;
    const double Tline = r.T * (1 + dpdt / (phase.cv * r.D * r.D) * (Dline - r.D));
    if (meets(propertiesOf(Tline, Dline, z), 1e-9)) {
        r.T = Tline;
        r.D = Dline;
        return true;
    }
    return phase.p >= 0 && (liquid ? r.D >= line.Dl * (1 - 1e-8) : r.D <= line.Dv * (1 + 1e-8));
}

// A state of a mixture by few pressures of its isentrope: two phases by Newton's method from a state with two, one by
// its own steps. Enthalpy rises with pressure along the isentrope, so that there is one such state; false where it was
// not met on the way.
bool solveMixtureByEntropy(double given, double s, const Composition& z, const CriticalPoint& critical,
                           const EosLimits& limits, bool energy, FlashResult& r) {
    if (!(modelTags.HEOS == "HMX") || pengRobinsonSelected()) return false;
    constexpr int mostSteps = 8;
    constexpr double start = 0.25, startOfGas = 1;         // of the critical pressure
    constexpr double longestStep = 2.5, sameState = 1e-9;  // in ln p
    constexpr double cold = 0.9;                           // [Tc]
    const char letter = energy ? 'E' : 'H';
    const double scale = std::max(1.0, std::abs(given));
    const SilentMessages quiet;
    double lower = 0, upper = 1e300;  // pressures on either side
    // the entropy of a gas over a liquid may belong to no state of a low pressure
    const bool gas = gasOverLiquid(std::nextafter(hottestComponent(z), 0.0), z) &&
                     stateOnIsentrope(startOfGas * critical.p, s, z, r);
    double p = (gas ? startOfGas : start) * critical.p;
    for (int step = 1; step <= mostSteps; ++step) {
        if (!stateOnIsentrope(p, s, z, r)) return false;
        const bool two = r.q > 0 && r.q < 1;
        if (two && twoPhasesNear({letter, given}, {'S', s}, z, r)) return true;
        const double F = (energy ? r.e : r.h) - given;
        if (!two && std::abs(F) < sameState * scale) return true;
        (F < 0 ? lower : upper) = p;
        double next = p * std::exp(std::clamp(-F * r.D / p, -longestStep, longestStep));
        if (!two) {
            refineState(letter, given, s, z, r.T, r.D);
            // the energy of a cold liquid tells next to nothing of its pressure: the line decides
            if (r.D > critical.D && r.T < cold * critical.T &&
                isStable(given, s, z, limits.tmin, limits.tmax, limits.pmax, energy, r))
                return true;
            const PhaseProperties alone = propertiesOf(r.T, r.D, z);
            const bool met = std::abs(chosenProperty(letter, alone) - given) < 1e-6 * scale;
            if (met && alone.p > lower && alone.p < upper) next = alone.p;
        }
        if (!(next > lower && next < upper)) next = std::sqrt(std::max(lower, 1e-3 * upper) * upper);
        p = next;
    }
    return false;
}

void solveByEntropy(double given, double s, const Composition& z, bool energy, FlashResult& r) {
    const std::string_view ab = energy ? "ES" : "HS";
    const int icomp = openFlash(z, r);
    r.T = r.p = r.D = 0;
    if (refuseInputs(ab, {{energy ? 'E' : 'H', given, 200}, {'S', s, 200}}, r)) return;

    Text255 inner;
    EosLimits limits;
    double &tmin = limits.tmin, &tmax = limits.tmax, &Dmax = limits.Dmax, &pmax = limits.pmax;
    LIMITS("EOS", z, tmin, tmax, Dmax, pmax);
    double Tc = 0;
    double Pc = 0;
    double Dc = 0;
    CRITP(z, Tc, Pc, Dc, r.ierr, inner);
    if (r.ierr > 0) {
        message(r.herr, "[", ab, "FLSH error", Integer{4, r.ierr}, "] ", innerText(inner), nullCharacter);
        ERRMSG(r.ierr, r.herr);
        return;
    }

    const auto refine = [&] { refineState(energy ? 'E' : 'H', given, s, z, r.T, r.D); };
    const auto accepted = [&] {
        if (r.ierr > 0) return false;
        refine();
        return isStable(given, s, z, tmin, tmax, pmax, energy, r);
    };
    // One phase that the flash at pressure has found is stable, unless the last digits lead it over the line.
    const auto settleSinglePhase = [&] {
        const double T = r.T;
        const double D = r.D;
        if (accepted()) return;
        r.T = T;
        r.D = D;
    };

    // The saturated states of the given enthalpy decide on the phase of a pure fluid. Those of a mixture are long to
    // find, and next to its critical point not found at all: it is solved on its isentrope at once.
    bool solved = false;
    bool byPressure = false;
    if (icomp > 0) {
        const PureState state = flashPureAtEntropy(energy ? 'E' : 'H', given, s, icomp, z, {Tc, Pc, Dc}, tmin, tmax, r);
        solved = state == PureState::bothPhases || (state == PureState::onePhase && accepted());
        byPressure = state == PureState::bothPhases;
    }
    if (icomp > 0 && !solved) {
        int nroot = 0, k1 = 0, k2 = 0, code = 0;
        double t1 = 0, p1 = 0, d1 = 0, t2 = 0, p2 = 0, d2 = 0, s1 = 0, s2 = 0;
        {
            const SilentMessages quiet;
            SATH(given, z, 0, nroot, k1, t1, p1, d1, k2, t2, p2, d2, code, inner);
        }
        if (nroot >= 1) ENTRO(t1, d1, z, s1);
        if (nroot >= 2) ENTRO(t2, d2, z, s2);
        const auto singlePhase = [&](double Tstart, double Dstart, double Dmin) {
            r.T = Tstart;
            r.D = Dstart;
            HSFL1(given, s, z, Dmin, Dmax, r.T, r.D, r.ierr, r.herr);
            return r.ierr <= 0;
        };
        if (nroot == 0) {
            singlePhase(1.1 * Tc, Dc, 0);
            solved = accepted();
        } else if (s < s1) {
            if (!singlePhase(1.01 * t1, 1.01 * d1, d1)) singlePhase(t1, d1, d1);
            solved = accepted();
        } else if (nroot >= 2 && s > s2) {
            singlePhase(t2, d2 / 1.1, 0);
            solved = accepted();
        } else {
            solved = byPressure = twoPhaseByPressure(given, s, z, p1, energy, r);
        }
    }
    // A trace of the other phase is what the rounding leaves of a cold liquid on its line.
    constexpr double trace = 1e-6;
    if (icomp > 0 && solved && byPressure && std::min(r.q, 1 - r.q) < trace) {
        const double T = r.T, D = r.D;
        r.D = r.q < 0.5 ? r.Dl : r.Dv;
        byPressure = !accepted();
        if (byPressure) {
            r.T = T;
            r.D = D;
        }
    }
    if (icomp == 0 && solveMixtureByEntropy(given, s, z, {Tc, Pc, Dc}, limits, energy, r)) {
        solved = byPressure = true;
        r.ierr = 0;
    }
    if (!solved && solveOnIsentrope(given, s, z, pmax, energy, r)) {
        solved = byPressure = true;
        r.ierr = 0;
    }
    const bool twoPhase = solved && byPressure && r.q > 0 && r.q < 1;
    if (solved && byPressure && !twoPhase) settleSinglePhase();
    if (!solved) {
        if (r.ierr <= 0) {
            r.ierr = 200;
            message(r.herr,
                    "[HSFLSH error 200] h-s inputs are two-phase or out of bounds, iterative routine is not available "
                    "to find a solution.",
                    nullCharacter);
            ERRMSG(r.ierr, r.herr);
        }
        r.q = supercriticalOrNone;
        r.D = r.Dl = r.Dv = 0;
        return;
    }
    if (!twoPhase) {
        r.p = fillSinglePhase(r.T, r.D, z, r);
        r.q = regionQuality(r.T, r.p, r.D, {Tc, Pc, Dc});
    }
    r.ierr = 0;
    r.herr.clear();
    reportLimits(ab, limitsAt(r.T, r.D, r.p, z), r);
}

}  // namespace

void HSFLSH(double h, double s, const Composition& z, double& T, double& p, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& q, double& e, double& cv, double& cp, double& w, int& ierr,
            Text255& herr) {
    double hSolved = 0;
    double sSolved = 0;
    FlashResult r{T, p, D, Dl, Dv, x, y, q, e, hSolved, sSolved, cv, cp, w, ierr, herr};
    solveByEntropy(h, s, z, inverseControl.ENERGYMODE != 0, r);
    // In energy mode the given value is the energy and the free place holds the enthalpy.
    if (inverseControl.ENERGYMODE != 0) e = hSolved;
}

void ESFLSH(double e, double s, const Composition& z, double& T, double& p, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& q, double& h, double& cv, double& cp, double& w, int& ierr,
            Text255& herr) {
    inverseControl.ENERGYMODE = 1;
    HSFLSH(e, s, z, T, p, D, Dl, Dv, x, y, q, h, cv, cp, w, ierr, herr);
    inverseControl.ENERGYMODE = 0;
}

void HSFL1(double h, double s, const Composition& z, double Dmin, double Dmax, double& T, double& D, int& ierr,
           Text255& herr) {
    double p = 0;
    ABFL1(s, h, z, 0, inverseControl.ENERGYMODE != 0 ? "SE" : "SH", Dmin, Dmax, T, p, D, ierr, herr);
}

}  // namespace frigana
