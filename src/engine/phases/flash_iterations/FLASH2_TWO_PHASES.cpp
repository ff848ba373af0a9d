// Two phases at two given properties: ABFL2, DBFL2.
#include <algorithm>
#include <cmath>

#include "FLASH2_ITERATIONS.h"
#include "FLASH2_SHARE.h"
#include "FlashBricks.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"
#include "SAT_SUB_INVERSE.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

namespace {

// Bubble and dew end of a two-phase range, by reference to the arguments of ABFL2.
struct SaturationEnds {
    double &Tbub, &Tdew, &pbub, &pdew, &Dlbub, &Dvdew;
    Composition &ybub, &xdew;
};

// What ABFL2 looks for, and the scale on which it measures it.
struct TwoPhaseTarget {
    char second;
    double b;
    int kq;
    double delta;  // difference of the property between the ends, at least 1
};

double massQuality(double q, const Composition& x, const Composition& y) {
    double qmass = 0;
    double mliq = 0;
    double mvap = 0;
    Composition xm{};
    Composition ym{};
    int ierr = 0;
    Text255 text;
    QMASS(q, x, y, qmass, xm, ym, mliq, mvap, ierr, text);
    return qmass;
}

double twoPhaseResidual(const TwoPhaseTarget& target, double T, double Dl, double Dv, const Composition& x,
                        const Composition& y, double q) {
    switch (target.second) {
        case 'D':
            return target.b * (1 / target.b - (1 - q) / Dl - q / Dv);
        case 'Q':
            return target.b - (target.kq == 2 ? massQuality(q, x, y) : q);
        default:
            return (target.b - (1 - q) * propertyByLetter(target.second, T, Dl, x) -
                    q * propertyByLetter(target.second, T, Dv, y)) /
                   target.delta;
    }
}

constexpr double longestStep = 0.25;  // of the last value

constexpr double shareTolerance = 1e-10;  // of a residual in units of its change between the lines

constexpr double outsideInPressure = 0.3, outsideInTemperature = 0.05;  // relative, outside the lines

// Density of the incipient phase of a line, 0 if there is none.
double densityOfLine(double T, double p, const Composition& x, int kph) {
    double D = 0;
    int ierr = 0;
    Text255 text;
    TPRHO(T, p, x, kph, 0, D, ierr, text);
    return ierr > 0 ? 0 : D;
}
double vaporDensityOfLine(double T, double p, const Composition& y) {
    return densityOfLine(T, p, y, 2);
}
double liquidDensityOfLine(double T, double p, const Composition& x) {
    return densityOfLine(T, p, x, 1);
}

// Compositions, densities and the unknown at an estimated quality, from the saturation states of both compositions.
//   Codes  223  neither a bubble point of x nor a dew point of y
bool estimateAtQuality(std::string_view ab, double a, const Composition& z, const SaturationEnds& ends, double q,
                       double& X, double& Dl, double& Dv, Composition& x, Composition& y, int& ierr, Text255& herr) {
    const bool givenT = ab[0] == 'T';
    compositionsAtQuality(q, z, ends.xdew, ends.ybub, x, y);
    SaturatedPair bubbleOfX;
    SaturatedPair dewOfY;
    if (givenT) {
        saturationAtT(a, x, 1, bubbleOfX);
    } else {
        saturationAtP(a, x, 1, bubbleOfX);
    }
    if (givenT) {
        saturationAtT(a, y, 2, dewOfY);
    } else {
        saturationAtP(a, y, 2, dewOfY);
    }
    // Close to the lowest temperature one of the compositions may lie outside its own limits: the other serves.
    if (bubbleOfX.ierr > 0 && dewOfY.ierr > 0) {
        reportError(ab, 223, "bubble point calculation did not converge within 2-phase iteration:  ", bubbleOfX.herr,
                    ierr, herr);
        return false;
    }
    if (bubbleOfX.ierr > 0) bubbleOfX = dewOfY;
    if (dewOfY.ierr > 0) dewOfY = bubbleOfX;
    Dl = bulkDensity(q, bubbleOfX.Dl, dewOfY.Dl);
    Dv = bulkDensity(q, bubbleOfX.Dv, dewOfY.Dv);
    X = givenT ? (1 - q) * bubbleOfX.p + q * dewOfY.p : (1 - q) * bubbleOfX.T + q * dewOfY.T;
    return true;
}

}  // namespace

void ABFL2(double a, double b, const Composition& z, int kq, int ksat, std::string_view ab, double& Tbub, double& Tdew,
           double& pbub, double& pdew, double& Dlbub, double& Dvdew, Composition& ybub, Composition& xdew, double& T,
           double& p, double& Dl, double& Dv, Composition& x, Composition& y, double& q, int& ierr, Text255& herr) {
    const bool givenT = ab[0] == 'T';
    const char second = ab[1];
    int icomp = 0;
    ISPURE(z, icomp);
    RMIX(z);
    ierr = 0;
    herr.clear();
    x = y = bulkComposition(icomp, z);
    (givenT ? T : p) = a;

    // Ends of the two-phase range at a.
    if (ksat != 1) {
        SaturatedPair bubble;
        SaturatedPair dew;
        if (givenT) {
            saturationAtT(a, z, 1, bubble);
        } else {
            saturationAtP(a, z, 1, bubble);
        }
        if (bubble.ierr > 0) {
            q = supercriticalOrNone;
            reportError(ab, 223, "bubble point calculation did not converge (2-phase initial guess):  ", bubble.herr,
                        ierr, herr);
            return;
        }
        if (givenT) {
            saturationAtT(a, z, 2, dew);
        } else {
            saturationAtP(a, z, 2, dew);
        }
        if (dew.ierr > 0) {
            q = supercriticalOrNone;
            reportError(ab, 224, "dew point calculation did not converge (2-phase initial guess):  ", dew.herr, ierr,
                        herr);
            return;
        }
        Tbub = bubble.T;
        pbub = bubble.p;
        Dlbub = bubble.Dl;
        ybub = bubble.y;
        Tdew = dew.T;
        pdew = dew.p;
        Dvdew = dew.Dv;
        xdew = dew.x;
    } else if (givenT) {
        Tbub = Tdew = a;
    } else {
        pbub = pdew = a;
    }
    const SaturationEnds ends{Tbub, Tdew, pbub, pdew, Dlbub, Dvdew, ybub, xdew};

    // Bounds of the unknown and the tolerance, wider where the range is narrow.
    const double Xb = givenT ? pbub : Tbub;
    const double Xd = givenT ? pdew : Tdew;
    const double width = std::max(1e-8, std::abs(givenT ? pbub / pdew - 1 : Tdew / Tbub - 1));
    double tolerance = 5e-6;
    tolerance = std::max(tolerance / 100, std::min(100 * tolerance, 0.02 * tolerance / width));

    // Residuals at the ends.
    TwoPhaseTarget target{second, b, kq, 1};
    double Fb = 0;
    double Fd = 0;
    if (second == 'D') {
        Fb = b * (1 / b - 1 / Dlbub);
        Fd = b * (1 / b - 1 / Dvdew);
    } else if (second == 'Q') {
        Fb = b - (kq == 2 ? massQuality(0, z, ybub) : 0);
        Fd = b - (kq == 2 ? massQuality(1, xdew, z) : 1);
    } else {
        const double atBubble = propertyByLetter(second, Tbub, Dlbub, z);
        const double atDew = propertyByLetter(second, Tdew, Dvdew, z);
        if (b < atBubble || b > atDew) {
            q = supercriticalOrNone;
            reportError(ab, b < atBubble ? 227 : 228, "input is outside saturation bounds", Text255{}, ierr, herr);
            return;
        }
        target.delta = std::max(std::abs(atBubble - atDew), 1.0);
        Fb = (b - atBubble) / target.delta;
        Fd = (b - atDew) / target.delta;
    }
    if (ksat == 0 && icomp == 0 && (std::abs(Fb) < tolerance || std::abs(Fd) < tolerance)) {
        const bool atBubble = std::abs(Fb) < tolerance;
        q = atBubble ? 0 : 1;
        Dl = atBubble ? Dlbub : liquidDensityOfLine(Tdew, pdew, xdew);
        Dv = atBubble ? vaporDensityOfLine(Tbub, pbub, ybub) : Dvdew;
        compositionsAtQuality(q, z, xdew, ybub, x, y);
        (givenT ? p : T) = atBubble ? Xb : Xd;
        return;
    }

    // Start by the lever rule.
    q = std::abs(Fb - Fd) > 1e-20 ? Fb / (Fb - Fd) : 0.5;
    double X = (1 - q) * Xb + q * Xd;
    X = std::clamp(X, std::min(Xb, Xd), std::max(Xb, Xd));
    Dl = Dlbub;
    Dv = Dvdew;
    if (isPseudoPure(icomp) && !givenT) {
        T = X;
        PTANC(T, p, q, b, second, Dl, Dv);
        return;
    }
    const double Xmin = std::min(Xb, Xd);
    const double Xmax = std::max(Xb, Xd);

    // The state by its share of the vapor, where the secant on temperature or pressure fails, or has ended at a
    // tolerance that had to grow.
    const auto solvedByShare = [&] {
        const PhasePair bubble{Tbub, pbub, Dlbub, vaporDensityOfLine(Tbub, pbub, ybub), 0, z, ybub};
        const PhasePair dew{Tdew, pdew, liquidDensityOfLine(Tdew, pdew, xdew), Dvdew, 1, xdew, z};
        if (!(bubble.Dv > 0 && dew.Dl > 0)) return false;
        PhasePair state{T, p, Dl, Dv, q, x, y};
        if (!(state.T > 0 && state.p > 0)) state = betweenLines(q > 0 && q < 1 ? q : 0.5, z, bubble, dew);
        const auto residual = [&](const PhasePair& s) {
            return twoPhaseResidual(target, s.T, s.Dl, s.Dv, s.x, s.y, s.q);
        };
        if (second == 'Q' && kq != 2) {
            if (!approachShare(givenT, b, z, bubble, dew, state)) return false;
        } else if (!searchShare(givenT, z, residual, Fb, Fd, bubble, dew, shareTolerance, state)) {
            return false;
        }
        // between the lines, where the states of the composition are, or next to them where it has two liquids
        const double at = givenT ? state.p : state.T, margin = givenT ? outsideInPressure : outsideInTemperature;
        if (at < Xmin * (1 - margin) || at > Xmax * (1 + margin)) return false;
        T = state.T;
        p = state.p;
        Dl = state.Dl;
        Dv = state.Dv;
        x = state.x;
        y = state.y;
        q = state.q;
        ierr = 0;
        herr.clear();
        return true;
    };

    if (icomp > 0 || (std::abs(Xb - Xd) < 0.001 && std::abs(Xb - Xd) < 0.001 * std::abs(Xb))) {
        if (icomp == 0) compositionsAtQuality(q, z, xdew, ybub, x, y);
        (givenT ? p : T) = X;
        // next to an azeotrope; the compositions still bend between the lines, and the densities are their own
        if (icomp == 0) solvedByShare();
        return;
    }

    // Estimates from the saturation states of the two compositions, again after every failure of the inner flash.
    constexpr int mostRestarts = 25;
    constexpr int mostSecantPasses = 30;
    constexpr int mostPolishes = 3;
    constexpr double closeResidual = 1e-9;
    int restarts = 0;
    int densityTries = 0;
    int failures = 0;
    bool haveFallback = false;
    Composition xFallback{};
    Composition yFallback{};
    double DlFallback = 0;
    double DvFallback = 0;
    double XFallback = 0;
    double qFallback = 0;
    double F = 0;
    struct Solution {
        Composition x, y;
        double Dl, Dv, q, X, residual;
    };
    Solution good{};
    const auto accept = [&] {
        x = good.x;
        y = good.y;
        Dl = good.Dl;
        Dv = good.Dv;
        q = good.q;
        (givenT ? p : T) = good.X;
        ierr = 0;
        herr.clear();
        if (good.residual > tolerance) solvedByShare();
    };
    for (;;) {
        if (q > 1) q = 0.95;
        if (q < 0) q = 0.05;
        if (!estimateAtQuality(ab, a, z, ends, q, X, Dl, Dv, x, y, ierr, herr)) {
            if (!haveFallback) q = supercriticalOrNone;
            return;
        }
        if (!haveFallback) {
            haveFallback = true;
            xFallback = x;
            yFallback = y;
            DlFallback = Dl;
            DvFallback = Dv;
            XFallback = X;
            qFallback = q;
        }
        if (second == 'D' && densityTries < 5 && b < Dv) {
            ++densityTries;
            q *= 20;
            continue;
        }

        // Secant on the unknown.
        const double qStart = q;
        Secant secant;
        secant.now = X;
        RootBracket bracket;
        bool falsePosition = false;
        bool innerFailed = false;
        double passTolerance = tolerance;
        int polish = 0;
        for (int pass = 1; pass <= mostSecantPasses; ++pass) {
            if (pass == 7 || pass == 10 || pass == 15) passTolerance *= 10;
            (givenT ? p : T) = secant.now;
            TPFL2(T, p, z, Dl, Dv, x, y, q, ierr, herr);
            if (ierr > 0 && polish > 0) {
                accept();
                return;
            }
            if (ierr > 0) {
                innerFailed = true;
                break;
            }
            F = twoPhaseResidual(target, T, Dl, Dv, x, y, q);
            // Where the range is narrow the tolerance is a wide one in quality: a few more steps bring the property
            // itself to the digits that a caller expects to get back.
            if (std::abs(F) < passTolerance) {
                if (polish == 0 || std::abs(F) < good.residual) good = {x, y, Dl, Dv, q, secant.now, std::abs(F)};
                if (std::abs(F) < closeResidual || ++polish > mostPolishes) {
                    accept();
                    return;
                }
            }
            falsePosition ? bracket.takeLast(secant.now, F) : bracket.takeCloser(secant.now, F);
            secant.fNow = F;
            double next = 0;
            if (pass == 1) {
                next = std::abs(Fd - Fb) > 1e-12 ? secant.now - F * (Xd - Xb) / (Fd - Fb) : 0.5 * (Xb + Xd);
            } else {
                next = secant.next();
            }
            if (bracket.closed()) {
                const bool outside = next > 1.2 * bracket.upper() || next < 0.8 * bracket.lower();
                if (falsePosition || (outside && bracket.width() > 0.01)) {
                    next = bracket.falsePosition();
                    falsePosition = true;
                }
            }
            const auto towardBound = [&](double bound) {
                if (!bracket.closed()) return 0.5 * (secant.now + bound);
                if (bracket.width() < static_cast<double>(0.001f)) {
                    return bracket.middle();
                }
                return 0.5 * (secant.now + (bound > secant.now ? bracket.upper() : bracket.lower()));
            };
            if (next > Xmax) {
                next = towardBound(Xmax);
            } else if (next < Xmin) {
                next = towardBound(Xmin);
            }
            next = limitedStep(secant.now, next, longestStep);
            if (!std::isfinite(next)) break;
            secant.before = secant.now;
            secant.fBefore = secant.fNow;
            secant.now = next;
        }
        if (polish > 0) {
            accept();
            return;
        }
        if (solvedByShare()) return;
        if (!innerFailed) {
            ierr = 226;
            message(herr, "[", ab, "FLSH error 226] 2-phase iteration did not converge, X, delta =",
                    General{12, 5, givenT ? secant.now / 1000 : secant.now}, General{12, 5, F}, nullCharacter);
            ERRMSG(ierr, herr);
            return;
        }
        ++failures;
        ++restarts;
        if (failures >= mostRestarts || restarts >= mostRestarts) break;
        q = qStart < 0.5 ? qStart + 0.02 : qStart - 0.02;
    }

    x = xFallback;
    y = yFallback;
    Dl = DlFallback;
    Dv = DvFallback;
    q = qFallback;
    (givenT ? p : T) = XFallback;
    if (q < 0.005 || q > 0.995) {
        ierr = 0;
        herr.clear();
        return;
    }
    reportError(ab, 225,
                "TPFL2 did not converge in two-phase iteration; returning initial guesses based on dew and bubble "
                "points",
                Text255{}, ierr, herr);
}

namespace {

// Two-phase state on its isochore: between the lowest temperature and the saturation temperature of D the property
// rises steadily with T, since the heat capacity at constant volume is positive.
bool solveOnIsochore(double D, double b, char letter, const Composition& z, int icomp, double tmin, double Ttop,
                     double& T, double& p, double& Dl, double& Dv, Composition& x, Composition& y, double& q) {
    constexpr int mostSteps = 100;
    double lower = tmin;
    double upper = Ttop;
    double fLower = 0;
    double fUpper = 0;
    SaturatedPair line;
    const auto residual = [&](double at, double& F) {
        const SilentMessages quiet;
        if (icomp > 0) {
            saturationAtT(at, z, 2, line);
            if (line.ierr > 0 || !(line.Dl > line.Dv)) return false;
            q = volumeQuality(D, line.Dl, line.Dv);
        } else {
            double Tbub = at, Tdew = at, pbub = 0, pdew = 0, Dlbub = 0, Dvdew = 0, pressure = 0, temperature = at;
            Composition ybub{}, xdew{};
            ABFL2(at, D, z, 1, 0, "TD", Tbub, Tdew, pbub, pdew, Dlbub, Dvdew, ybub, xdew, temperature, pressure,
                  line.Dl, line.Dv, line.x, line.y, q, line.ierr, line.herr);
            if (line.ierr > 0) return false;
            line.p = pressure;
        }
        F = (letter == 'Q' ? q
                           : (1 - q) * propertyByLetter(letter, at, line.Dl, line.x) +
                                 q * propertyByLetter(letter, at, line.Dv, line.y)) -
            b;
        T = at;
        p = line.p;
        Dl = line.Dl;
        Dv = line.Dv;
        x = line.x;
        y = line.y;
        return true;
    };
    if (!residual(lower, fLower)) return false;
    if (fLower == 0) return true;
    if (!residual(upper, fUpper)) {
        upper = 0.9999 * Ttop;
        if (!residual(upper, fUpper)) return false;
    }
    if (fUpper == 0) return true;
    if ((fLower < 0) == (fUpper < 0)) return false;
    // False position with the residual of an end halved that stays twice (the Illinois method).
    int side = 0;
    for (int step = 1; step <= mostSteps; ++step) {
        double at = upper - fUpper * (upper - lower) / (fUpper - fLower);
        if (!(at > lower && at < upper)) at = 0.5 * (lower + upper);
        double F = 0;
        if (!residual(at, F)) return false;
        if (std::abs(F) <= 1e-12 * std::max(1.0, std::abs(b)) || upper - lower < 1e-11 * upper) return true;
        if ((F < 0) == (fLower < 0)) {
            lower = at;
            fLower = F;
            if (side == -1) fUpper /= 2;
            side = -1;
        } else {
            upper = at;
            fUpper = F;
            if (side == 1) fLower /= 2;
            side = 1;
        }
    }
    return true;
}

}  // namespace

void DBFL2(double D, double b, const Composition& z, int kq, std::string_view ab, double& T, double& p, double& Dl,
           double& Dv, Composition& x, Composition& y, double& q, int& ierr, Text255& herr) {
    constexpr double tolerance = 0.0001;   // [mol/L]
    constexpr double closeDensity = 1e-8;  // relative
    int icomp = 0;
    ISPURE(z, icomp);
    const int mostIterations = icomp > 0 ? 50 : 20;
    const char letter = ab[1];
    const char lettersAtT[2] = {'T', letter};
    const std::string_view tb(lettersAtT, 2);
    ierr = 0;
    herr.clear();

    double Tc = 0;
    double Pc = 0;
    double Dc = 0;
    Text255 inner;
    CRITP(z, Tc, Pc, Dc, ierr, inner);
    double tmin = 0;
    double tmax = 0;
    double Dmax = 0;
    double pmax = 0;
    LIMITX("EOS", -1, D, 0, z, tmin, tmax, Dmax, pmax, ierr, inner);
    double Ttop = Tc;
    SaturatedPair line;
    int kr = 0;
    SATD(D, z, 0, kr, line.T, line.p, line.Dl, line.Dv, line.x, line.y, line.ierr, line.herr);
    if (line.ierr <= 0 && line.T > tmin && line.T < Tc) Ttop = line.T;

    SaturatedPair bubble;
    SaturatedPair dew;
    const auto solveAt = [&](double at) {
        double TbubEnd = at;
        double TdewEnd = at;
        T = at;
        ABFL2(at, b, z, kq, 0, tb, TbubEnd, TdewEnd, bubble.p, dew.p, bubble.Dl, dew.Dv, bubble.y, dew.x, T, p, Dl, Dv,
              x, y, q, ierr, herr);
    };

    // Secant on T; a temperature at which b is outside the two-phase range narrows the search instead.
    double T2 = tmin + 2 * (Ttop - tmin) / 3;
    double coldest = tmin;
    double warmest = Ttop;
    Secant secant;
    RootBracket bracket;
    secant.now = tmin + (Ttop - tmin) / 3;
    int points = 0;
    double F = 0;
    for (int pass = 1; pass <= mostIterations; ++pass) {
        solveAt(secant.now);
        if (ierr == 227) {
            warmest = secant.now;
            secant.now = 0.5 * (secant.now + coldest);
            continue;
        }
        if (ierr == 228) {
            coldest = secant.now;
            secant.now = 0.5 * (secant.now + warmest);
            if (points == 0) T2 = 0.5 * (T2 + warmest);
            continue;
        }
        if (ierr > 0) break;
        F = D - bulkDensity(q, Dl, Dv);
        if (std::abs(F) < tolerance) break;
        // at given enthalpy, entropy or energy the density of two phases rises with temperature
        if (letter != 'Q') (F > 0 ? coldest : warmest) = secant.now;
        bracket.takeCloser(secant.now, F);
        secant.fNow = F;
        ++points;
        double next = points == 1 ? T2 : secant.next();
        if (points == 1 && next <= secant.now) next = 0.5 * (secant.now + warmest);
        if (points > 1 && bracket.closed()) {
            if (pass > 7 && pass % 2 == 0) {
                next = bracket.middle();
            } else if (next > bracket.upper() || next < bracket.lower()) {
                next = bracket.falsePosition();
            }
        }
        secant.before = secant.now;
        secant.fBefore = secant.fNow;
        secant.now = std::clamp(next, coldest, warmest);
    }

    // A pure fluid goes on from the tolerance to the rounding of the property, and where the secant has failed, as
    // beside a maximum of the saturated vapor's enthalpy, is solved anew.
    // A mixture goes on where the tolerance was not reached, or is a large part of the density of a thin vapor.
    const bool plainPure = icomp > 0 && !isPseudoPure(icomp);
    const bool goOn = icomp == 0 && letter != 'Q' && (ierr > 0 || std::abs(F) > closeDensity * D);
    if ((plainPure || goOn) && solveOnIsochore(D, b, letter, z, icomp, tmin, Ttop, T, p, Dl, Dv, x, y, q)) {
        ierr = 0;
        herr.clear();
    } else if (ierr <= 0 && icomp == 0 && std::abs(F) > tolerance) {
        reportError(ab, 226, "2-phase iteration did not converge, X, delta =", Text255{}, ierr, herr);
    }
    // The text of the inner iteration names a temperature where a density was given.
    if (ierr > 0) herr.assign(2, 2, "D");
}

}  // namespace frigana
