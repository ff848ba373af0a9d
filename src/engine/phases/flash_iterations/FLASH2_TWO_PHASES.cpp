// Two phases at two given properties: ABFL2, DBFL2.
#include <algorithm>
#include <cmath>

#include "CORE_PR.h"
#include "CriticalPoint.h"
#include "FLASH2_ITERATIONS.h"
#include "FlashBricks.h"
#include "FluidConstants.h"
#include "LIMITS.h"
#include "Message.h"
#include "ModelTags.h"
#include "SAT_SUB_INVERSE.h"
#include "SAT_SUB_NEWTON.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

double molarShare(double qmass, const Composition& x, const Composition& y) {
    const double vapor = qmass / WMOL(y);
    return vapor / (vapor + (1 - qmass) / WMOL(x));
}

namespace {

constexpr double longestStep = 0.25;       // of the last value
constexpr double shareTolerance = 1e-10;   // of a residual in units of its change between the lines
constexpr double outsideInPressure = 0.3;  // relative, outside the lines
constexpr double outsideInTemperature = 0.05;

// What ABFL2 looks for, the bubble and dew end of its range, and the scale on which it measures.
struct TwoPhaseProblem {
    const std::string_view ab;
    const double a, b;
    const Composition& z;
    const int kq;
    double &Tbub, &Tdew, &pbub, &pdew, &Dlbub, &Dvdew;
    Composition &ybub, &xdew;
    double delta = 1;       // difference of the property between the ends, at least 1
    double Fb = 0, Fd = 0;  // residuals at the ends

    bool givenT() const { return ab[0] == 'T'; }
    char second() const { return ab[1]; }
    double atBubble() const { return givenT() ? pbub : Tbub; }
    double atDew() const { return givenT() ? pdew : Tdew; }
    double lowest() const { return std::min(atBubble(), atDew()); }
    double highest() const { return std::max(atBubble(), atDew()); }
    double& unknownOf(PhasePair& s) const { return givenT() ? s.p : s.T; }
    void saturation(const Composition& x, int kph, SaturatedPair& pair) const {
        givenT() ? saturationAtT(a, x, kph, pair) : saturationAtP(a, x, kph, pair);
    }
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

double residualOf(const TwoPhaseProblem& problem, const PhasePair& s) {
    const double b = problem.b;
    switch (problem.second()) {
        case 'D':
            return b * (1 / b - (1 - s.q) / s.Dl - s.q / s.Dv);
        case 'Q':
            return b - (problem.kq == 2 ? massQuality(s.q, s.x, s.y) : s.q);
        default:
            return (b - (1 - s.q) * propertyByLetter(problem.second(), s.T, s.Dl, s.x) -
                    s.q * propertyByLetter(problem.second(), s.T, s.Dv, s.y)) /
                   problem.delta;
    }
}

// Density of the incipient phase of a line, 0 if there is none.
double densityOfLine(double T, double p, const Composition& x, int kph) {
    double D = 0;
    int ierr = 0;
    Text255 text;
    TPRHO(T, p, x, kph, 0, D, ierr, text);
    return ierr > 0 ? 0 : D;
}

PhasePair bubbleOf(const TwoPhaseProblem& e) {
    return {e.Tbub, e.pbub, e.Dlbub, densityOfLine(e.Tbub, e.pbub, e.ybub, 2), 0, e.z, e.ybub};
}
PhasePair dewOf(const TwoPhaseProblem& e) {
    return {e.Tdew, e.pdew, densityOfLine(e.Tdew, e.pdew, e.xdew, 1), e.Dvdew, 1, e.xdew, e.z};
}

// Ends of the two-phase range at a.
//   Codes     223, 224
bool findEnds(TwoPhaseProblem& problem, int& ierr, Text255& herr) {
    SaturatedPair bubble;
    SaturatedPair dew;
    problem.saturation(problem.z, 1, bubble);
    if (bubble.ierr > 0) {
        reportError(problem.ab, 223,
                    "bubble point calculation did not converge (2-phase initial guess):  ", bubble.herr, ierr, herr);
        return false;
    }
    problem.saturation(problem.z, 2, dew);
    if (dew.ierr > 0) {
        reportError(problem.ab, 224, "dew point calculation did not converge (2-phase initial guess):  ", dew.herr,
                    ierr, herr);
        return false;
    }
    problem.Tbub = bubble.T;
    problem.pbub = bubble.p;
    problem.Dlbub = bubble.Dl;
    problem.ybub = bubble.y;
    problem.Tdew = dew.T;
    problem.pdew = dew.p;
    problem.Dvdew = dew.Dv;
    problem.xdew = dew.x;
    return true;
}

void outsideEnds(const TwoPhaseProblem& problem, int code, int& ierr, Text255& herr) {
    reportError(problem.ab, code, "input is outside saturation bounds", Text255{}, ierr, herr);
}

// Residuals at the ends, and the scale.
//   Codes     227, 228
bool measureEnds(TwoPhaseProblem& problem, int& ierr, Text255& herr) {
    const double b = problem.b;
    const char second = problem.second();
    if (second == 'D') {
        problem.Fb = b * (1 / b - 1 / problem.Dlbub);
        problem.Fd = b * (1 / b - 1 / problem.Dvdew);
    } else if (second == 'Q') {
        problem.Fb = b - (problem.kq == 2 ? massQuality(0, problem.z, problem.ybub) : 0);
        problem.Fd = b - (problem.kq == 2 ? massQuality(1, problem.xdew, problem.z) : 1);
    } else {
        const double atBubble = propertyByLetter(second, problem.Tbub, problem.Dlbub, problem.z);
        const double atDew = propertyByLetter(second, problem.Tdew, problem.Dvdew, problem.z);
        if (b < atBubble || b > atDew) {
            outsideEnds(problem, b < atBubble ? 227 : 228, ierr, herr);
            return false;
        }
        problem.delta = std::max(std::abs(atBubble - atDew), 1.0);
        problem.Fb = (b - atBubble) / problem.delta;
        problem.Fd = (b - atDew) / problem.delta;
    }
    return true;
}

// True if a state lies between the lines, where those of the composition are, or next to them where it has two liquids.
bool besideLines(const TwoPhaseProblem& problem, PhasePair& s) {
    const double at = problem.unknownOf(s), margin = problem.givenT() ? outsideInPressure : outsideInTemperature;
    return at > problem.lowest() * (1 - margin) && at < problem.highest() * (1 + margin);
}

// Newton's method in all unknowns, from two phases near the state. A share of the mass is that of the moles which goes
// with it by the molar masses of the phases.
bool goOnByNewton(const TwoPhaseProblem& problem, PhasePair& s) {
    constexpr int mostPasses = 30;
    const bool ofMass = problem.second() == 'Q' && problem.kq == 2;
    PhasePair at = s;
    for (int pass = 1; pass <= mostPasses; ++pass) {
        const double b = ofMass ? molarShare(problem.b, at.x, at.y) : problem.b;
        if (!newtonAtConditions({problem.ab[0], problem.a}, {problem.second(), b}, problem.z, at)) return false;
        if (ofMass && std::abs(residualOf(problem, at)) > shareTolerance) continue;
        if (!(at.q >= 0 && at.q <= 1) || !besideLines(problem, at)) return false;
        s = at;
        return true;
    }
    return false;
}

// The same from a share at which the state may lie.
bool solveAtOnce(const TwoPhaseProblem& problem, double qStart, PhasePair& found) {
    PhasePair s;
    s.q = std::clamp(qStart, 0.0, 1.0);
    s.T = (1 - s.q) * problem.Tbub + s.q * problem.Tdew;
    s.p = (1 - s.q) * problem.pbub + s.q * problem.pdew;
    s.Dl = problem.Dlbub;
    s.Dv = problem.Dvdew * (s.p / problem.pdew) * (problem.Tdew / s.T);
    compositionsAtQuality(s.q, problem.z, problem.xdew, problem.ybub, s.x, s.y);
    if (!goOnByNewton(problem, s)) return false;
    found = s;
    return true;
}

// The state by flashes at temperatures or pressures between the lines. Newton's method goes on from the first of them
// that lies near enough: next to an azeotrope temperature and pressure hardly change, and over a liquid that dissolves
// little gas all pressures belong to nearly one share.
bool solveBetweenLines(const TwoPhaseProblem& problem, PhasePair& found) {
    constexpr int mostSteps = 60;
    constexpr double narrowest = 1e-14;  // relative
    if ((problem.Fb < 0) == (problem.Fd < 0)) return false;
    const bool givenT = problem.givenT();
    const auto scaled = [&](double at) { return givenT ? std::log(at) : at; };
    const PhasePair bubble = bubbleOf(problem), dew = dewOf(problem);
    const double from = scaled(problem.atBubble()), way = scaled(problem.atDew()) - from;
    if (!(bubble.Dv > 0 && dew.Dl > 0) || way == 0) return false;
    FalsePosition ends{from, problem.Fb, from + way, problem.Fd};
    const SilentMessages quiet;
    for (int step = 1; step <= mostSteps && ends.width() > narrowest * std::abs(from); ++step) {
        const double at = step % 2 == 1 ? 0.5 * (ends.lower + ends.upper) : ends.next();
        PhasePair s = betweenLines((at - from) / way, problem.z, bubble, dew);
        (givenT ? s.T : s.p) = problem.a;
        (givenT ? s.p : s.T) = givenT ? std::exp(at) : at;
        int ierr = 0;
        Text255 herr;
        TPFL2(s.T, s.p, problem.z, s.Dl, s.Dv, s.x, s.y, s.q, ierr, herr);
        if (ierr > 0) return false;
        const double F = residualOf(problem, s);
        if (std::abs(F) < shareTolerance || goOnByNewton(problem, s)) {
            found = s;
            return true;
        }
        ends.take(at, F);
    }
    return false;
}

// Compositions, densities and the unknown at an estimated quality, from the saturation states of both compositions.
//   Codes  223  neither a bubble point of x nor a dew point of y
bool estimateAtQuality(const TwoPhaseProblem& problem, PhasePair& s, int& ierr, Text255& herr) {
    compositionsAtQuality(s.q, problem.z, problem.xdew, problem.ybub, s.x, s.y);
    SaturatedPair bubbleOfX;
    SaturatedPair dewOfY;
    problem.saturation(s.x, 1, bubbleOfX);
    problem.saturation(s.y, 2, dewOfY);
    // Close to the lowest temperature one of the compositions may lie outside its own limits: the other serves.
    if (bubbleOfX.ierr > 0 && dewOfY.ierr > 0) {
        reportError(problem.ab, 223,
                    "bubble point calculation did not converge within 2-phase iteration:  ", bubbleOfX.herr, ierr,
                    herr);
        return false;
    }
    if (bubbleOfX.ierr > 0) bubbleOfX = dewOfY;
    if (dewOfY.ierr > 0) dewOfY = bubbleOfX;
    s.Dl = bulkDensity(s.q, bubbleOfX.Dl, dewOfY.Dl);
    s.Dv = bulkDensity(s.q, bubbleOfX.Dv, dewOfY.Dv);
    s.T = (1 - s.q) * bubbleOfX.T + s.q * dewOfY.T;
    s.p = (1 - s.q) * bubbleOfX.p + s.q * dewOfY.p;
    (problem.givenT() ? s.T : s.p) = problem.a;
    return true;
}

// The secant on temperature or pressure around TPFL2, from an estimate.
enum class SecantEnd { found, innerFailed, exhausted };
SecantEnd secantAroundFlash(const TwoPhaseProblem& problem, double tolerance, PhasePair& s, double& F, int& ierr,
                            Text255& herr) {
    constexpr int mostPasses = 30;
    const double Xb = problem.atBubble(), Xd = problem.atDew();
    double& X = problem.unknownOf(s);
    Secant secant;
    secant.now = X;
    RootBracket bracket;
    bool falsePosition = false;
    for (int pass = 1; pass <= mostPasses; ++pass) {
        if (pass == 7 || pass == 10 || pass == 15) tolerance *= 10;
        X = secant.now;
        TPFL2(s.T, s.p, problem.z, s.Dl, s.Dv, s.x, s.y, s.q, ierr, herr);
        if (ierr > 0) return SecantEnd::innerFailed;
        F = residualOf(problem, s);
        if (std::abs(F) < tolerance) return SecantEnd::found;
        falsePosition ? bracket.takeLast(X, F) : bracket.takeCloser(X, F);
        secant.fNow = F;
        double next = 0;
        if (pass == 1) {
            next = std::abs(problem.Fd - problem.Fb) > 1e-12 ? X - F * (Xd - Xb) / (problem.Fd - problem.Fb)
                                                             : 0.5 * (Xb + Xd);
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
            if (!bracket.closed()) return 0.5 * (X + bound);
            if (bracket.width() < static_cast<double>(0.001f)) return bracket.middle();
            return 0.5 * (X + (bound > X ? bracket.upper() : bracket.lower()));
        };
        if (next > problem.highest()) {
            next = towardBound(problem.highest());
        } else if (next < problem.lowest()) {
            next = towardBound(problem.lowest());
        }
        next = limitedStep(X, next, longestStep);
        if (!std::isfinite(next)) break;
        secant.before = secant.now;
        secant.fBefore = secant.fNow;
        secant.now = next;
    }
    X = secant.now;
    return SecantEnd::exhausted;
}

// Estimates from the saturation states of the two compositions and the secant from there, again after every failure of
// the inner flash: the way of a model without composition derivatives. With them Newton's method has been all around
// the state before: a second estimate has never led to one, and takes a fifth of a second where a line is missing.
//   Codes     223, 225, 226
void solveByFlashes(const TwoPhaseProblem& problem, double tolerance, bool derivatives, PhasePair& s, int& ierr,
                    Text255& herr) {
    constexpr int mostDensityTries = 5;
    const int mostRestarts = derivatives ? 1 : 25;
    int densityTries = 0;
    bool haveFallback = false;
    PhasePair fallback;
    double F = 0;
    for (int restart = 0; restart < mostRestarts; ++restart) {
        if (s.q > 1) s.q = 0.95;
        if (s.q < 0) s.q = 0.05;
        if (!estimateAtQuality(problem, s, ierr, herr)) {
            if (!haveFallback) s.q = supercriticalOrNone;
            return;
        }
        if (!haveFallback) fallback = s;
        haveFallback = true;
        if (problem.second() == 'D' && densityTries < mostDensityTries && problem.b < s.Dv) {
            ++densityTries;
            --restart;
            s.q *= 20;
            continue;
        }
        const double qStart = s.q;
        const SecantEnd end = secantAroundFlash(problem, tolerance, s, F, ierr, herr);
        if (end == SecantEnd::found) {
            ierr = 0;
            herr.clear();
            return;
        }
        if (end == SecantEnd::exhausted) {
            const double X = problem.unknownOf(s);
            ierr = 226;
            message(herr, "[", problem.ab, "FLSH error 226] 2-phase iteration did not converge, X, delta =",
                    General{12, 5, problem.givenT() ? X / 1000 : X}, General{12, 5, F}, nullCharacter);
            ERRMSG(ierr, herr);
            return;
        }
        s.q = qStart < 0.5 ? qStart + 0.02 : qStart - 0.02;
    }
    s = fallback;
    if (!derivatives && (s.q < 0.005 || s.q > 0.995)) {
        ierr = 0;
        herr.clear();
        return;
    }
    reportError(problem.ab, 225,
                "TPFL2 did not converge in two-phase iteration; returning initial guesses based on dew and bubble "
                "points",
                Text255{}, ierr, herr);
}

}  // namespace

void ABFL2(double a, double b, const Composition& z, int kq, int ksat, std::string_view ab, double& Tbub, double& Tdew,
           double& pbub, double& pdew, double& Dlbub, double& Dvdew, Composition& ybub, Composition& xdew, double& T,
           double& p, double& Dl, double& Dv, Composition& x, Composition& y, double& q, int& ierr, Text255& herr) {
    const bool givenT = ab[0] == 'T';
    int icomp = 0;
    ISPURE(z, icomp);
    RMIX(z);
    ierr = 0;
    herr.clear();
    x = y = bulkComposition(icomp, z);
    (givenT ? T : p) = a;
    TwoPhaseProblem problem{ab, a, b, z, kq, Tbub, Tdew, pbub, pdew, Dlbub, Dvdew, ybub, xdew};
    if (ksat == 1 && givenT) {
        Tbub = Tdew = a;
    } else if (ksat == 1) {
        pbub = pdew = a;
    } else if (!findEnds(problem, ierr, herr)) {
        q = supercriticalOrNone;
        return;
    }
    if (!measureEnds(problem, ierr, herr)) {
        q = supercriticalOrNone;
        return;
    }
    const auto take = [&](const PhasePair& s) {
        T = s.T;
        p = s.p;
        Dl = s.Dl;
        Dv = s.Dv;
        x = s.x;
        y = s.y;
        q = s.q;
    };

    // The tolerance is wider where the range is narrow. A share is found more closely than by flashes.
    const double Xb = problem.atBubble(), Xd = problem.atDew(), Fb = problem.Fb, Fd = problem.Fd;
    const double width = std::max(1e-8, std::abs(givenT ? pbub / pdew - 1 : Tdew / Tbub - 1));
    constexpr double base = 5e-6;
    const double tolerance = std::max(base / 100, std::min(100 * base, 0.02 * base / width));
    const bool byShare = icomp == 0 && modelTags.HEOS == "HMX" && !pengRobinsonSelected();
    const double endTolerance = byShare ? shareTolerance : tolerance;
    if (ksat == 0 && icomp == 0 && std::min(std::abs(Fb), std::abs(Fd)) < endTolerance) {
        take(std::abs(Fb) < endTolerance ? bubbleOf(problem) : dewOf(problem));
        return;
    }
    if (byShare && ab[1] == 'D' && Fb * Fd > 0) {
        q = supercriticalOrNone;
        outsideEnds(problem, Fb < 0 ? 228 : 227, ierr, herr);
        return;
    }

    // Start by the lever rule.
    q = std::abs(Fb - Fd) > 1e-20 ? Fb / (Fb - Fd) : 0.5;
    const double X = std::clamp((1 - q) * Xb + q * Xd, problem.lowest(), problem.highest());
    Dl = Dlbub;
    Dv = Dvdew;
    if (isPseudoPure(icomp) && !givenT) {
        T = X;
        PTANC(T, p, q, b, ab[1], Dl, Dv);
        return;
    }
    PhasePair found;
    if (byShare && (solveAtOnce(problem, q, found) || solveBetweenLines(problem, found))) {
        take(found);
        return;
    }
    if (icomp > 0 || (std::abs(Xb - Xd) < 0.001 && std::abs(Xb - Xd) < 0.001 * std::abs(Xb))) {
        if (icomp == 0) compositionsAtQuality(q, z, xdew, ybub, x, y);
        (givenT ? p : T) = X;
        return;
    }
    found = {T, p, Dl, Dv, q, x, y};
    problem.unknownOf(found) = X;
    solveByFlashes(problem, tolerance, byShare, found, ierr, herr);
    take(found);
}

// ---------------------------------------------------------------------------------------------------------------
// Given density.

namespace {

// Two-phase state of a pure fluid on its isochore: between the lowest temperature and the saturation temperature of D
// the property rises steadily with T, since the heat capacity at constant volume is positive. The share of the vapor
// does so too where D is a vapor's at saturation.
//   Given     top  the saturated state of D, or the critical temperature alone
bool solveOnIsochore(double D, double b, char letter, const Composition& z, double tmin, const PhasePair& top,
                     PhasePair& s) {
    constexpr int mostSteps = 100;
    const double closest = 1e-12 * std::max(1.0, std::abs(b));
    const auto residual = [&](double T, double& F) {
        const SilentMessages quiet;
        SaturatedPair line;
        saturationAtT(T, z, 2, line);
        if (line.ierr > 0 || !(line.Dl > line.Dv)) return false;
        s = pairOf(line, volumeQuality(D, line.Dl, line.Dv));
        F = (letter == 'Q'
                 ? s.q
                 : (1 - s.q) * propertyByLetter(letter, T, s.Dl, s.x) + s.q * propertyByLetter(letter, T, s.Dv, s.y)) -
            b;
        return true;
    };
    FalsePosition ends{tmin, 0, top.T, (letter == 'Q' ? top.q : propertyByLetter(letter, top.T, D, z)) - b};
    if (std::abs(ends.fUpper) <= closest) {
        s = top;
        return s.p > 0;
    }
    if (!residual(ends.lower, ends.fLower)) return false;
    if (ends.fLower == 0) return true;
    if ((ends.fLower < 0) == (ends.fUpper < 0)) return false;
    for (int step = 1; step <= mostSteps; ++step) {
        const double at = ends.next();
        double F = 0;
        if (!residual(at, F)) return false;
        if (std::abs(F) <= closest || ends.width() < 1e-11 * at) return true;
        ends.take(at, F);
    }
    return true;
}

// Two-phase state of a mixture at a density, by Newton's method from a state of this density or share of the vapor at
// another temperature.
bool solveMixtureAtDensity(double D, double b, char letter, const Composition& z, double tmin, double Tc,
                           PhasePair& s) {
    const bool byShare = letter == 'Q';
    if (!(modelTags.HEOS == "HMX") || pengRobinsonSelected() || (byShare && !(b >= 0 && b <= 1))) return false;
    const SilentMessages quiet;
    for (const double part : {1.0 / 3, 2.0 / 3, 0.9, 0.2, 0.1}) {
        const double T = tmin + part * (Tc - tmin);
        double Tbub = T, Tdew = T, pbub = 0, pdew = 0, Dlbub = 0, Dvdew = 0;
        Composition ybub{}, xdew{};
        int ierr = 0;
        Text255 herr;
        ABFL2(T, byShare ? b : D, z, 1, 0, byShare ? "TQ" : "TD", Tbub, Tdew, pbub, pdew, Dlbub, Dvdew, ybub, xdew, s.T,
              s.p, s.Dl, s.Dv, s.x, s.y, s.q, ierr, herr);
        if (ierr <= 0 && newtonAtConditions({'D', D}, {letter, b}, z, s) && s.T > tmin && s.q >= 0 && s.q <= 1)
            return true;
    }
    return false;
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

    // Water's equation holds below the temperature at which its vapor condenses no more.
    const double coldestVapor = icomp > 0 ? fluidConstants.TTPN[icomp] : 0.0;
    const double tmin = std::max(limitsAt(-1, D, 0, z).tmin, coldestVapor), Tc = criticalPointOf(z).T;
    PhasePair found;
    const auto take = [&] {
        T = found.T;
        p = found.p;
        Dl = found.Dl;
        Dv = found.Dv;
        x = found.x;
        y = found.y;
        q = found.q;
    };
    const bool massShare = letter == 'Q' && kq == 2;
    if (icomp == 0 && !massShare && solveMixtureAtDensity(D, b, letter, z, tmin, Tc, found)) return take();

    PhasePair top;
    top.T = Tc;
    SaturatedPair line;
    int kr = 0;
    SATD(D, z, 0, kr, line.T, line.p, line.Dl, line.Dv, line.x, line.y, line.ierr, line.herr);
    if (line.ierr <= 0 && line.T > tmin) top = pairOf(line, kr == liquidLine ? 0 : 1);
    const double Ttop = top.T;
    if (icomp > 0 && !isPseudoPure(icomp) && !massShare && solveOnIsochore(D, b, letter, z, tmin, top, found))
        return take();

    // Secant on T; a temperature at which b is outside the two-phase range narrows the search instead.
    SaturatedPair bubble;
    SaturatedPair dew;
    double T2 = tmin + 2 * (Ttop - tmin) / 3;
    double coldest = tmin;
    double warmest = Ttop;
    Secant secant;
    RootBracket bracket;
    secant.now = tmin + (Ttop - tmin) / 3;
    int points = 0;
    double F = 0;
    for (int pass = 1; pass <= mostIterations; ++pass) {
        double TbubEnd = secant.now;
        double TdewEnd = secant.now;
        T = secant.now;
        ABFL2(T, b, z, kq, 0, tb, TbubEnd, TdewEnd, bubble.p, dew.p, bubble.Dl, dew.Dv, bubble.y, dew.x, T, p, Dl, Dv,
              x, y, q, ierr, herr);
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
        if (std::abs(F) < std::min(tolerance, closeDensity * D)) break;
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
    if (ierr <= 0 && std::abs(F) > tolerance)
        reportError(ab, 226, "2-phase iteration did not converge, X, delta =", Text255{}, ierr, herr);
    // The text of the inner iteration names a temperature where a density was given.
    if (ierr > 0) herr.assign(2, 2, "D");
}

}  // namespace frigana
