// A single phase at two given properties: ABFL1, ABFL1X, DBFL1.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "FLASH2_ITERATIONS.h"
#include "FlashBricks.h"
#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

namespace {

// ---------------------------------------------------------------------------------------------------------------
// Single phase.

constexpr int mostPasses = 200, usualPasses = 20;
constexpr double longestStep = 0.25;  // of the last value

// What the passes of ABFL1 share.
struct SinglePhaseSearch {
    double a, b;
    const Composition& z;
    int kph;
    char first, second;
    double Dmin, Dmax;
    double Tc, Pc, Dc;
    double sCritical;  // for first letter S
};

// Saturated state of a pressure in place of one without density root.
bool stateOnSaturationLine(double p, const Composition& z, int kph, double& T, double& D) {
    const bool vapor = std::abs(kph) == 2;
    SaturatedPair line;
    {
        const SilentMessages quiet;
        saturationAtP(p, z, vapor ? 2 : 1, line);
    }
    if (line.ierr > 0) return false;
    T = line.T;
    D = vapor ? line.Dv : line.Dl;
    return D > 0;
}

// Density at given pressure and the temperature X, with the rescues of a failed root; X is moved by them.
bool densityAtPressure(const SinglePhaseSearch& search, int pass, double before, double& X, double& T, double& D,
                       Text255& inner) {
    int ierr = 0;
    T = std::max(X, 1e-12);
    TPRHO(T, search.a, search.z, search.kph, 0, D, ierr, inner);
    if (ierr <= 0) return true;

    X = pass == 1 ? 300 : (before + X) / 2;
    T = std::max(X, 1e-12);
    TPRHO(T, search.a, search.z, search.kph, 0, D, ierr, inner);
    for (int attempt = 1; attempt <= 2 && ierr == 203; ++attempt) {
        T *= 1.001;
        TPRHO(T, search.a, search.z, search.kph, 0, D, ierr, inner);
    }
    X = T;
    if (ierr <= 0) return true;
    if (!stateOnSaturationLine(search.a, search.z, search.kph, T, D)) return false;
    X = T;
    return true;
}

// A density that a state of the given entropy at T exceeds: a tenth of that of the ideal gas, or a hundredth of the
// critical one for a dense state. The entropy goes with the logarithm of density, so that a bound far below the root
// would cost the false position dozens of passes.
double lowestDensity(const SinglePhaseSearch& search, double T) {
    constexpr double thin = 1e-10;  // [mol/L]
    const double exponent = (propertyByLetter('S', T, thin, search.z) - search.a) / fluidConstants.R;
    return std::min(0.1 * thin * std::exp(std::clamp(exponent, -60.0, 60.0)), 0.01 * search.Dc);
}

// Density at given entropy and the temperature X, between the limits or the saturation line; X grows until there is
// one.
bool densityAtEntropy(const SinglePhaseSearch& search, double& X, double& T, double& D, Text255& inner) {
    constexpr int mostAttempts = 20;
    for (int attempt = 1; attempt <= mostAttempts; ++attempt) {
        T = X;
        double lower = search.Dmin > 0 ? search.Dmin : lowestDensity(search, T);
        double upper = search.Dmax;
        if (T < search.Tc) {
            const bool liquid = search.a <= search.sCritical;
            SaturatedPair line;
            {
                const SilentMessages quiet;
                saturationAtT(T, search.z, liquid ? 1 : 2, line);
            }
            if (line.ierr <= 0) {
                if (liquid) {
                    lower = std::max(lower, line.Dl);
                } else {
                    upper = std::min(upper, line.Dv);
                }
            }
        }
        // Entropy falls with density, so that its values at the bounds tell whether there is a root. The temperatures
        // on the way may lie above that of the result, where its entropy asks for more density than the limit allows.
        const bool aboveUpper = search.a < propertyByLetter('S', T, upper, search.z);
        if (aboveUpper && upper == search.Dmax) upper *= 1.2;
        const bool inside = search.a <= propertyByLetter('S', T, lower, search.z) &&
                            search.a >= propertyByLetter('S', T, upper, search.z);
        int ierr = 0;
        double p = 0;
        if (inside) {
            ABFL1X(T, search.a, search.z, search.kph, "TS", lower, upper, T, p, D, ierr, inner);
            if (ierr <= 0) return true;
        }
        X *= attempt < 10 ? 1.01 : 1.1;
    }
    return false;
}

// Newton's steps from a density within the tolerance to the rounding of the property, which in a gas hardly changes
// with density; none where they would lead away.
double refinedDensity(char letter, double T, double D, double b, const Composition& z) {
    for (int step = 1; step <= 3; ++step) {
        double p = 0;
        double dpdd = 0;
        double dpdt = 0;
        PRESS(T, D, z, p);
        DPDD(T, D, z, dpdd);
        DPDT(T, D, z, dpdt);
        double slope = 0;  // of the property over density
        if (letter == 'S') slope = -dpdt / (D * D);
        if (letter == 'E') slope = (p - T * dpdt) / (D * D);
        if (letter == 'H') slope = (dpdd - T * dpdt / D) / D;
        if (std::abs(slope) < 1e-300) return D;
        const double change = (b - propertyByLetter(letter, T, D, z)) / slope;
        if (!(std::abs(change) < 0.01 * D)) return D;
        D += change;
        if (std::abs(change) < 1e-11 * D) return D;
    }
    return D;
}

void reportSinglePhase(std::string_view ab, int code, char unknown, double X, double F, const Text255& inner, int& ierr,
                       Text255& herr) {
    ierr = code;
    if (code == 247) {
        message(herr, "[", ab,
                "FLSH error 247] density iteration for single-phase state did not converge:  ", innerText(inner),
                nullCharacter);
    } else if (unknown == 'T') {
        message(herr, "[", ab,
                "FLSH error 248] single-phase iteration did not converge, T, deltaT =", General{12, 5, X},
                General{12, 5, F}, " K.", nullCharacter);
    } else {
        message(herr, "[", ab,
                "FLSH error 248] single-phase iteration did not converge, D, deltaD =", General{12, 5, X},
                General{12, 5, F}, " mol/L.", nullCharacter);
    }
    ERRMSG(ierr, herr);
}

}  // namespace

void ABFL1(double a, double b, const Composition& z, int kph, std::string_view ab, double Dmin, double Dmax, double& T,
           double& p, double& D, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    if (ab[0] == 'D') {
        DBFL1(a, b, z, ab, T, p, ierr, herr);
        D = a;
        return;
    }
    if (ab == "PD") {
        DBFL1(b, a, z, "DP", T, p, ierr, herr);
        D = b;
        return;
    }

    SinglePhaseSearch search{a, b, z, kph, ab[0], ab[1], Dmin, Dmax, 0, 0, 0, 0};
    Text255 inner;
    CRITP(z, search.Tc, search.Pc, search.Dc, ierr, inner);
    ierr = 0;
    const bool givenT = search.first == 'T';
    const char unknown = givenT ? 'D' : 'T';
    if (search.first == 'S') search.sCritical = propertyByLetter('S', search.Tc, search.Dc, z);
    if (givenT) {
        T = a;
    } else if (T <= 0) {
        T = search.Tc;
    }

    double tolerance = 1e-8;
    const double scale = std::max(1.0, std::abs(b));
    Secant secant;
    secant.now = givenT ? Dmin : T;
    RootBracket bracket;
    bool falsePosition = false;
    double F = 0;
    for (int pass = 1; pass <= mostPasses; ++pass) {
        if (pass == 150) tolerance *= 100;
        if (pass == 180) tolerance *= 10;

        // State at the unknown.
        bool found = true;
        if (givenT) {
            D = secant.now;
        } else if (search.first == 'P') {
            found = densityAtPressure(search, pass, secant.before, secant.now, T, D, inner);
        } else {
            found = densityAtEntropy(search, secant.now, T, D, inner);
        }
        bool restart = false;
        if (pass == 80 && search.first == 'P' && a <= search.Pc && stateOnSaturationLine(a, z, kph, T, D)) {
            secant.now = T;
            found = true;
            restart = true;
        }
        if (!found) {
            reportSinglePhase(ab, 247, unknown, secant.now, F, inner, ierr, herr);
            return;
        }

        // Residual of the second property.
        F = b - propertyByLetter(search.second, T, D, z);
        if (std::abs(F) / scale < tolerance) {
            if (givenT) D = refinedDensity(search.second, T, D, b, z);
            PRESS(T, D, z, p);
            return;
        }
        if (restart) bracket.forgetSideOf(F);
        falsePosition ? bracket.takeLast(secant.now, F) : bracket.takeCloser(secant.now, F);
        secant.fNow = F;

        // Next value of the unknown.
        double next = 0;
        if (pass == 1 && givenT) {
            next = Dmax;
        } else if (pass == 1) {
            const PhaseProperties phase = propertiesOf(T, D, z);
            const double heatCapacity = search.second == 'H' ? phase.cp : phase.cv;
            double step = std::abs(heatCapacity) > 1e-20 ? F / heatCapacity : 0;
            const double shortest = 0.0005 * std::abs(secant.now);
            if (std::abs(step) < shortest) step = step < 0 ? -shortest : shortest;
            next = limitedStep(secant.now, secant.now + step, longestStep);
        } else {
            next = secant.next();
            if (bracket.closed()) {
                const double allowance = pass > 100 ? 1.0 : 1.01;
                if (falsePosition || !(next <= bracket.upper() * allowance && next >= bracket.lower() / allowance)) {
                    // where the property bends strongly, false position keeps one end of the bracket for ever
                    const bool slow = pass > usualPasses && pass % 2 == 0;
                    next = slow ? bracket.middle() : bracket.falsePosition();
                    falsePosition = true;
                }
            }
            if (givenT) {
                if (next > 1.02 * Dmax || next < 0.98 * Dmin) {
                    if (next > 100000) break;
                    next = 0.5 * ((next > Dmax ? Dmax : Dmin) + secant.now);
                }
            } else {
                next = limitedStep(secant.now, next, longestStep);
            }
        }
        if (!std::isfinite(next)) break;
        secant.before = secant.now;
        secant.fBefore = secant.fNow;
        secant.now = next;
    }
    reportSinglePhase(ab, 248, unknown, secant.now, F, inner, ierr, herr);
}

void ABFL1X(double a, double b, const Composition& z, int kph, std::string_view ab, double Dmin, double Dmax, double& T,
            double& p, double& D, int& ierr, Text255& herr) {
    ABFL1(a, b, z, kph, ab, Dmin, Dmax, T, p, D, ierr, herr);
}

void DBFL1(double D, double b, const Composition& z, std::string_view ab, double& T, double& p, int& ierr,
           Text255& herr) {
    constexpr int mostSteps = 30;
    constexpr double tolerance = 1e-6;
    const char letter = ab[1];
    ierr = 0;
    herr.clear();
    double Tc = 0;
    double Pc = 0;
    double Dc = 0;
    Text255 inner;
    CRITP(z, Tc, Pc, Dc, ierr, inner);
    ierr = 0;
    if (letter == 'P' && D < 1e-14) {
        RMIX(z);
        T = D > 0 ? b / (fluidConstants.R * D) : 0;
        p = b;
        return;
    }

    double tmin = 0;
    double tmax = 0;
    double Dmax = 0;
    double pmax = 0;
    LIMITS("EOS", z, tmin, tmax, Dmax, pmax);
    const double start = letter == 'P' && b > 100 * Pc ? 2 * Tc : Tc;
    const double scale = std::max(1.0, std::abs(b));

    // Newton's method from the start; the second time no step leaves the temperatures at which the equation holds, as
    // a cold liquid may have another root, without a meaning, below them.
    for (const bool bounded : {false, true}) {
        double lower = bounded ? tmin : 0;
        double upper = 3 * tmax;
        T = start;
        for (int step = 1; step <= mostSteps; ++step) {
            const double F = propertyByLetter(letter, T, D, z) - b;
            double slope = 0;
            if (letter == 'P') {
                DPDT(T, D, z, slope);
            } else {
                double cv = 0;
                double cp = 0;
                CVCP(T, D, z, cv, cp);
                slope = cv;
                if (letter == 'S') slope = cv / T;
                if (letter == 'H') {
                    double dpdt = 0;
                    DPDT(T, D, z, dpdt);
                    slope = cv + dpdt / D;
                }
            }
            (F < 0 ? lower : upper) = T;
            double next = std::abs(slope) > 1e-300 ? T - F / slope : -1;
            if (bounded && !(next > lower - 1e-9 * lower && next < upper)) next = 0.5 * (lower + upper);
            // The last step is taken too: it brings the root from the tolerance to the rounding of the property.
            const bool converged = std::abs(F) / scale < tolerance && next > 0;
            T = next > 0 ? next : Tc / 2;
            if (!converged) continue;
            if (!bounded && T < tmin * (1 - 1e-6)) break;
            PRESS(T, D, z, p);
            return;
        }
    }
    ierr = 203;
    message(herr, "[", ab, "FL1 error 203] iteration has not converged for rho =", General{12, 5, D},
            " mol/L, T (last guess) = ", General{12, 5, T}, " K, x (mol frac) =");
    Text255 text = herr;
    int length = text.length();
    for (int i = 1; i <= std::min(modelTags.NC, 5); ++i) {
        message(herr, text.slice(1, length), General{12, 5, z[i]});
        text = herr;
        length += 12;
    }
    message(herr, text.slice(1, length), nullCharacter);
    ERRMSG(ierr, herr);
    T = 0;
}

}  // namespace frigana
