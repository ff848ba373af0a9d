#include "SAT_SUB.h"

#include <cmath>

#include "CORE_PR.h"
#include "CriticalPoint.h"
#include "FluidConstants.h"
#include "LineProperty.h"
#include "Message.h"
#include "ModelTags.h"
#include "PhaseCheck.h"
#include "SAT_SUB_EXPANSION.h"
#include "SAT_SUB_HOTTEST.h"
#include "SAT_SUB_LINES.h"
#include "SAT_SUB_PURE.h"
#include "SAT_SUB_PURE_NEWTON.h"
#include "SAT_SUB_SPLIT.h"
#include "SaturationBricks.h"
#include "SaturationSpline.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

SaturationMemo saturationMemo;

void resetSaturationMemo() {
    saturationMemo = {};
    forgetPurePairs();
}

namespace {

constexpr int bubblePoint = 1, dewPoint = 2, freezingLine = 3, sublimationLine = 4;  // values of kph

constexpr double hotterThanUsual = 0.9;   // [Tc] Newton's method rarely fails below
constexpr double besideCritical = 0.998;  // [Tc] above it the envelope is walked along, from a start below it

// True if the memo holds the answer to this call.
bool remembers(const SaturationMemo::State& memo, const Composition& savedX, double input, int kph, int icomp,
               const Composition& x) {
    if (!memo.valid || !(std::fabs(input - memo.input) < 1e-9) || kph != memo.kph || icomp != memo.icomp) return false;
    if (icomp == 0) {
        for (int i = 1; i <= modelTags.NC; ++i)
            if (!(std::fabs(x[i] - savedX[i]) <= 1e-9)) return false;
    }
    return true;
}

bool knownToBeMissing(const SaturationMemo::Missing& missing, double T, const Composition& x) {
    if (!missing.valid || missing.T != T) return false;
    for (int i = 1; i <= modelTags.NC; ++i)
        if (missing.x[i] != x[i]) return false;
    return true;
}

// Density of the vapor on the sublimation line at T, p; a success of the density keeps the code of the line.
void sublimationVapor(double T, double p, const Composition& x, double& rhov, int& ierr, Text255& herr) {
    const int lineCode = ierr;
    const Text255 lineText = herr;
    if (T > 0.0) rhov = p / (fluidConstants.R * T);
    if (rhov < 1e10) {
        TPRHO(T, p, x, vaporPhase, 1, rhov, ierr, herr);
        if (ierr == 0) {
            ierr = lineCode;
            herr = lineText;
        }
    }
}

// Density of the liquid on the freezing line at T, p, from the triple point density as the start.
void freezingLiquid(double T, double p, const Composition& x, double& rhol, int& ierr, Text255& herr) {
    const int lineCode = ierr;
    const Text255 lineText = herr;
    rhol = fluidConstants.DTPN[1];
    if (p > 1e-15) {
        TPRHO(T, p, x, liquidPhase, 1, rhol, ierr, herr);
        if (ierr == 0) {
            ierr = lineCode;
            herr = lineText;
        }
    }
}

double acentricFactor(int icomp, const Composition& x) {
    if (icomp > 0) return fluidConstants.ACCEN[icomp];
    double sum = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) sum += x[i] * fluidConstants.ACCEN[i];
    return sum;
}

// The mixture model that stands in for AGA8, which has no liquid, while a saturation is solved.
bool leaveAga8() {
    if (!(modelTags.HEOS == "AGA")) return false;
    modelTags.HEOS = "HMX";
    return true;
}

// Back to AGA8: the vapor takes its density from there.
void returnToAga8(double T, double p, const Composition& xvap, double& rhov, int& ierr, Text255& herr) {
    modelTags.HEOS = "AGA";
    if (ierr == 0) TPRHO(T, p, xvap, vaporPhase, 1, rhov, ierr, herr);
}

// The point of a line beside the critical point, or beyond it on the side asked for, by a walk along the envelope: for
// dew points from the side of low pressure, for bubble points (and the upper dew points) from that of the liquid.
enum class Walk { found, otherLine, lost };
Walk walkToLine(double T, const Composition& z, int kph, bool fromLiquid, PhasePair& pair) {
    constexpr double closeTo = 1e-9;  // relative, of temperatures
    int line = 0;
    PhasePair state;
    const int start = fromLiquid ? liquidLine : vaporLine;
    if (!rootOnEnvelope('T', T, start, z, closeTo * T, line, state)) return Walk::lost;
    if (line != kph) return Walk::otherLine;
    // at the temperature itself
    PhasePair exact = state;
    exact.T = T;
    int ierr = 0;
    Text255 herr;
    constexpr double samePlace = 1e-3;  // relative, of densities
    const bool bubble = kph == bubblePoint;
    const auto parentDensity = [bubble](const PhasePair& s) { return bubble ? s.Dl : s.Dv; };
    if (newtonEquilibrium(exact, z, kph, 1, ierr, herr) != NewtonEnd::found ||
        std::fabs(parentDensity(exact) / parentDensity(state) - 1.0) > samePlace) {
        // next to the critical point the walk itself ends at the temperature to its rounding
        exact = state;
        if (!isEquilibrium(exact, criticalPointOf(z).p)) return Walk::lost;
    }
    pair = exact;
    return Walk::found;
}

// A bubble or dew point of a mixture at T by all means; false where it is known that there is none, or none by Newton's
// method and the walk along the envelope beside the critical point.
enum class Line { found, none, unknown };
Line newtonAtT(double T, const Composition& z, int kph, const CriticalPoint& critical, bool started, PhasePair& pair,
               int& ierr, Text255& herr) {
    pair.T = T;
    if (started) {
        const PhasePair given = pair;
        if (countedNewton(pair, z, kph, 1, ierr, herr) == NewtonEnd::found) return Line::found;
        pair = given;
    }
    // only the searches that follow a failure of Newton's method are long, and where the hot end is known even that
    // method is not asked beyond it
    const bool hot = T > hotterThanUsual * critical.T;
    if (hot && !hotEndUnknown(z) && beyondSaturation(T, z, critical)) return Line::none;
    if (!started && countedLine(pair, z, kph) == OnLine::found) return Line::found;
    const NewtonEnd end = countedNewton(pair, z, kph, 0, ierr, herr);
    if (end == NewtonEnd::noDerivatives) return Line::unknown;
    bool found = end == NewtonEnd::found;
    if (!found && hot && beyondSaturation(T, z, critical)) return Line::none;

    const bool walkable = T > besideCritical * critical.T && modelTags.HEOS == "HMX" && !pengRobinsonSelected() &&
                          !saturationSpline.SPLINEREADY;
    const auto isUpper = [&](const PhasePair& s) {
        return kph == dewPoint && hot && !isLowerDewPoint(T, s.Dl, s.x, s.Dv, s.y);
    };
    Walk walk = Walk::lost;
    if (walkable && (!found || (T > critical.T && isUpper(pair)))) {
        walk = walkToLine(T, z, kph, kph == bubblePoint, pair);
        found = found || walk == Walk::found;
    } else if (found && isUpper(pair)) {
        // the lower one from a colder place, where there is one alone
        constexpr double colder = 0.97;
        PhasePair lower;
        lower.T = colder * T;
        if (newtonEquilibrium(lower, z, kph, 0, ierr, herr) == NewtonEnd::found &&
            newtonAtConditions({'T', T}, {'Q', 1}, z, lower) && !isUpper(lower))
            pair = lower;
    }
    if (!found && walk == Walk::otherLine && T > critical.T) return Line::none;
    if (!found) found = newtonFromOtherStarts(pair, z, kph, ierr, herr);
    if (!found) return Line::unknown;
    if (kph == dewPoint && pair.Dl < 0.8 * pair.Dv) {
        // a false root: both phases are vapor
        SATGV(pair.T, pair.p, z, 1.0, T, 1, 1, 0, pair.Dl, pair.Dv, pair.x, pair.y, ierr, herr);
        if (ierr != 0) return Line::unknown;
    }
    ierr = 0;
    herr.clear();
    return Line::found;
}

constexpr int aboveCritical = 121, notConverged = 128;

// The answer where a mixture is hotter than its two-phase region.
void nothingToFind(int code, double T, const Composition& z, const CriticalPoint& critical, PhasePair& pair, int& ierr,
                   Text255& herr) {
    pair = {T, critical.p, critical.D, critical.D, 0, z, z};
    if (code == aboveCritical)
        temperatureAboveCritical(T, critical.T, ierr, herr);
    else
        notConvergedAtTemperature(code, T, ierr, herr);
}

// A code with its text.
template <class... Pieces>
void report(int code, int& ierr, Text255& herr, const Pieces&... pieces) {
    ierr = code;
    message(herr, pieces..., nullCharacter);
    ERRMSG(ierr, herr);
}

bool isLine(int kph) {
    return kph >= bubblePoint && kph <= sublimationLine;
}

// A success without a text, remembered.
void remember(SaturationMemo::State& memo, double input, double result, double rhol, double rhov, int kph, int icomp,
              const Composition& x, const Composition& xliq, const Composition& xvap, Composition& savedX,
              Composition& savedLiquid, Composition& savedVapor, Text255& herr) {
    herr.clear();
    memo = {.valid = true, .kph = kph, .icomp = icomp, .input = input, .result = result, .rhol = rhol, .rhov = rhov};
    savedX = x;
    if (icomp > 0) {
        savedLiquid = unitComposition(icomp);
        savedVapor = unitComposition(icomp);
    } else {
        savedLiquid = xliq;
        savedVapor = xvap;
    }
}

// The end of a call that the expansions of a pure fluid have answered.
void settleExpanded(SaturationMemo::State& memo, double input, double result, double rhol, double rhov, int kph,
                    int icomp, const Composition& x, Composition& xliq, Composition& xvap, Composition& savedX,
                    Composition& savedLiquid, Composition& savedVapor, int& ierr, Text255& herr) {
    RMIX(x);
    ierr = 0;
    remember(memo, input, result, rhol, rhov, kph, icomp, x, xliq, xvap, savedX, savedLiquid, savedVapor, herr);
    xliq = savedLiquid;
    xvap = savedVapor;
}

}  // namespace

void SATT(double T, const Composition& x, int kph, double& p, double& rhol, double& rhov, Composition& xliq,
          Composition& xvap, int& ierr, Text255& herr) {
    solveSATT(Method::newton, T, x, kph, p, rhol, rhov, xliq, xvap, ierr, herr);
}

void SATP(double p, const Composition& x, int kph, double& T, double& rhol, double& rhov, Composition& xliq,
          Composition& xvap, int& ierr, Text255& herr) {
    solveSATP(Method::newton, p, x, kph, T, rhol, rhov, xliq, xvap, ierr, herr);
}

void solveSATT(Method method, double T, const Composition& x, int kph, double& p, double& rhol, double& rhov,
               Composition& xliq, Composition& xvap, int& ierr, Text255& herr) {
    int icomp;
    ISPURE(x, icomp);
    auto& memo = saturationMemo;
    if (remembers(memo.atT, memo.XSAVT, T, kph, icomp, x)) {
        p = memo.atT.result;
        rhol = memo.atT.rhol;
        rhov = memo.atT.rhov;
        xliq = memo.XLSAVT;
        xvap = memo.XVSAVT;
        ierr = 0;
        herr.clear();
        return;
    }

    if (icomp > 0 && (kph == bubblePoint || kph == dewPoint) && expansionAtTemperature(icomp, T, p, rhol, rhov)) {
        settleExpanded(memo.atT, T, p, rhol, rhov, kph, icomp, x, xliq, xvap, memo.XSAVT, memo.XLSAVT, memo.XVSAVT,
                       ierr, herr);
        return;
    }

    // the argument may be one of the results
    const Composition z = x;
    const double input = T;
    const bool started = T < 0.0;
    T = std::fabs(T);
    ierr = 0;
    herr.clear();
    RMIX(z);
    if (!started) {
        p = rhol = rhov = 0.0;
        xliq = xvap = icomp > 0 ? unitComposition(icomp) : z;
    }

    if (!std::isfinite(T)) {
        p = rhol = rhov = 0.0;
        return report(1, ierr, herr, "[SATT error  1] temperature input is not a finite number; T =", General{12, 5, T},
                      " K.");
    }
    if (!isLine(kph))
        return report(1, ierr, herr,
                      "[SATT error  1] there is no saturation line of this number; kph =", Integer{5, kph});

    const auto commonExit = [&] {
        // a start may lead to one of several points, and another start to another
        if (ierr != 0 || started) return;
        if (icomp > 0 && p < 1e-5) p = rhov * fluidConstants.R * T;
        remember(memo.atT, input, p, rhol, rhov, kph, icomp, z, xliq, xvap, memo.XSAVT, memo.XLSAVT, memo.XVSAVT, herr);
    };

    if (kph == freezingLine) {
        MELTT(T, z, p, ierr, herr);
        freezingLiquid(T, p, z, rhol, ierr, herr);
        commonExit();
        return;
    }
    if (kph == sublimationLine) {
        SUBLT(T, z, p, ierr, herr);
        if (ierr <= 0 && !(p > 0.0))
            return report(1, ierr, herr, "[SATT error  1] no sublimation pressure at T =", General{12, 5, T}, " K.");
        sublimationVapor(T, p, z, rhov, ierr, herr);
        commonExit();
        return;
    }

    double tmin, tmax, Dmax, pmax;
    LIMITX("EOS", T, 0.0, 0.0, z, tmin, tmax, Dmax, pmax, ierr, herr);
    if (ierr > 0 || ierr == -16) {
        if (ierr == 1 && T < tmin && icomp > 0) {
            const Text255 limitText = herr;
            SUBLT(T, z, p, ierr, herr);
            if (T > 0.0 && p > 0.0) {
                sublimationVapor(T, p, z, rhov, ierr, herr);
                commonExit();
                return;
            }
            p = 0.0;
            ierr = 1;
            herr = limitText;
        }
        ierr = std::abs(ierr);
        message(herr, "[SATT error", Integer{3, ierr}, "] ", Character{238, herr.view()}, nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }

    const CriticalPoint critical = criticalPointOf(z, ierr, herr);
    if (ierr > 0) {
        ierr = 120;
        wrapMessage("[SATT error 120] ", herr);
        ERRMSG(ierr, herr);
        p = rhol = rhov = 0.0;
        xliq = xvap = z;
        return;
    }
    ierr = 0;
    herr.clear();

    if (icomp > 0 && T > critical.T - 1e-8) {
        p = critical.p;
        rhol = rhov = critical.D;
        xliq = xvap = z;
        if (T > critical.T + 1e-8) temperatureAboveCritical(T, critical.T, ierr, herr);
        return;
    }

    const bool aga8 = leaveAga8();
    if (icomp > 0) {
        PureEstimates start{p, rhol, rhov};
        if (!started) start = estimatesAtTemperature(T, acentricFactor(icomp, z), critical);
        p = start.p;
        pureAtTemperature(T, z, icomp, kph, critical, start.rhol, start.rhov, p, rhol, rhov, ierr, herr);
    } else {
        PhasePair pair{T, p, rhol, rhov, 0.0, xliq, xvap};
        const PhasePair given = pair;
        Line line = Line::unknown;
        int none = T > critical.T ? aboveCritical : notConverged;
        const bool byAllMeans = method == Method::newton && !started;
        SaturationMemo::Missing& missing = memo.missing[kph - bubblePoint];
        if (byAllMeans && knownToBeMissing(missing, T, z)) {
            line = Line::none;
            none = missing.code;
        } else if (method == Method::newton) {
            line = newtonAtT(T, z, kph, critical, started, pair, ierr, herr);
        }
        if (line == Line::none) nothingToFind(none, T, z, critical, pair, ierr, herr);
        if (line == Line::unknown) {
            if (started) pair = given;
            lineBySubstitution(method, pair, z, kph, started, critical, Dmax, 0.0, ierr, herr);
            if (byAllMeans && (ierr == aboveCritical || ierr == notConverged)) missing = {true, T, z, ierr};
        }
        const bool stable = ierr != 0 || kph != dewPoint || settleDewPoint(z, critical, pair);
        p = pair.p;
        rhol = pair.Dl;
        rhov = pair.Dv;
        xliq = pair.x;
        xvap = pair.y;
        if (!stable)
            report(-129, ierr, herr,
                   "[SATT advisory -129] the dew point is not stable, another liquid is; T =", General{12, 5, T},
                   " K.");
    }
    if (aga8) returnToAga8(T, p, xvap, rhov, ierr, herr);
    commonExit();
}

void solveSATP(Method method, double p, const Composition& x, int kph, double& T, double& rhol, double& rhov,
               Composition& xliq, Composition& xvap, int& ierr, Text255& herr) {
    int icomp;
    ISPURE(x, icomp);
    auto& memo = saturationMemo;
    if (p > 1e-7 && remembers(memo.atP, memo.XSAVP, p, kph, icomp, x)) {
        T = memo.atP.result;
        rhol = memo.atP.rhol;
        rhov = memo.atP.rhov;
        xliq = memo.XLSAVP;
        xvap = memo.XVSAVP;
        ierr = 0;
        herr.clear();
        return;
    }

    if (icomp > 0 && (kph == bubblePoint || kph == dewPoint) && expansionAtPressure(icomp, p, T, rhol, rhov)) {
        settleExpanded(memo.atP, p, T, rhol, rhov, kph, icomp, x, xliq, xvap, memo.XSAVP, memo.XLSAVP, memo.XVSAVP,
                       ierr, herr);
        return;
    }

    // the argument may be one of the results
    const Composition z = x;
    ierr = 0;
    herr.clear();
    RMIX(z);
    T = 300.0;
    rhol = rhov = 0.0;
    xliq = xvap = icomp > 0 ? unitComposition(icomp) : z;
    if (!std::isfinite(p) || p == 0.0)
        return report(4, ierr, herr, "[SATP error  4] pressure input is not a finite number above zero; P =",
                      General{12, 5, p / 1000.0}, " MPa.");
    if (!isLine(kph))
        return report(1, ierr, herr,
                      "[SATP error  1] there is no saturation line of this number; kph =", Integer{5, kph});

    const auto commonExit = [&] {
        if (ierr != 0) return;
        // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): memo is the record of this floor
        remember(memo.atP, p, T, rhol, rhov, kph, icomp, z, xliq, xvap, memo.XSAVP, memo.XLSAVP, memo.XVSAVP, herr);
    };

    if (kph == freezingLine) {
        MELTP(p, z, T, ierr, herr);
        freezingLiquid(T, p, z, rhol, ierr, herr);
        commonExit();
        return;
    }
    if (kph == sublimationLine) {
        SUBLP(p, z, T, ierr, herr);
        sublimationVapor(T, p, z, rhov, ierr, herr);
        commonExit();
        return;
    }

    const CriticalPoint critical = criticalPointOf(z, ierr, herr);
    if (ierr > 0) {
        ierr = 140;
        wrapMessage("[SATP error 140] ", herr);
        ERRMSG(ierr, herr);
        xliq = xvap = z;
        return;
    }
    double tmin, tmax, Dmax, pmax;
    LIMITX("EOS", 0.8 * critical.T, 0.0, p, z, tmin, tmax, Dmax, pmax, ierr, herr);
    if (ierr > 1) {
        T = 0.8 * critical.T;
        message(herr, "[SATP error", Integer{3, ierr}, "] ", Character{238, herr.view()}, nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    ierr = 0;
    herr.clear();

    if (icomp > 0 && p < fluidConstants.PTPN[icomp]) {
        SUBLP(p, z, T, ierr, herr);
        if (T > 0.0) {
            sublimationVapor(T, p, z, rhov, ierr, herr);
            commonExit();
            return;
        }
        ierr = 2;
        T = fluidConstants.TTPN[icomp];
        message(herr, "[SATP error 2] pressure less than triple point pressure; P =", General{12, 5, p / 1000.0},
                " MPa, Ptp =", General{12, 5, fluidConstants.PTPN[icomp] / 1000.0}, " MPa.", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    if (icomp > 0 && p / critical.p >= 0.99999999) {
        T = critical.T;
        rhol = rhov = critical.D;
        xliq = xvap = z;
        if (p / critical.p > 1.000001) {
            ierr = 141;
            message(herr,
                    "[SATP error 141] pressure input to saturation routine is greater than critical pressure; P =",
                    General{12, 5, p / 1000.0}, " MPa, Pcrit =", General{12, 5, critical.p / 1000.0}, " MPa.",
                    nullCharacter);
            ERRMSG(ierr, herr);
        }
        return;
    }

    const bool aga8 = leaveAga8();
    if (icomp > 0) {
        pureAtPressure(p, z, icomp, kph, critical, acentricFactor(icomp, z), T, rhol, rhov, ierr, herr);
    } else {
        PhasePair pair;
        pair.p = p;
        NewtonEnd end = NewtonEnd::noDerivatives;
        OnLine line = OnLine::unknown;
        if (method == Method::newton) line = countedLine(pair, z, kph + 2);
        if (line == OnLine::found)
            end = NewtonEnd::found;
        else if (line == OnLine::beyondEnd)
            end = NewtonEnd::failed;
        else if (method == Method::newton)
            end = countedNewton(pair, z, kph + 2, 0, ierr, herr);
        if (end == NewtonEnd::failed && line == OnLine::unknown && newtonFromOtherStarts(pair, z, kph + 2, ierr, herr))
            end = NewtonEnd::found;
        // Above the critical pressure Newton's methods find the line as far as there is one; to be sure that there is
        // none substitution takes a hundred times as long.
        constexpr double surelyBeyond = 1.01;
        if (line == OnLine::beyondEnd) pair = {critical.T, p, critical.D, critical.D, 0, z, z};
        if (end == NewtonEnd::failed && (line == OnLine::beyondEnd || p > surelyBeyond * critical.p))
            notConvergedAtPressure(148, p, ierr, herr);
        else if (end != NewtonEnd::found)
            lineBySubstitution(method, pair, z, kph + 2, false, critical, Dmax, 0.7 * tmin, ierr, herr);
        const bool stable = ierr != 0 || kph != dewPoint || settleDewPointAtPressure(z, critical, pair);
        T = pair.T;
        rhol = pair.Dl;
        rhov = pair.Dv;
        xliq = pair.x;
        xvap = pair.y;
        if (!stable)
            report(-149, ierr, herr, "[SATP advisory -149] the dew point is not stable, another liquid is; P =",
                   General{12, 5, p / 1000.0}, " MPa.");
    }
    if (aga8) returnToAga8(T, p, xvap, rhov, ierr, herr);
    commonExit();
}

}  // namespace frigana
