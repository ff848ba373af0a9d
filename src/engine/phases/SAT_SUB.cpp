#include "SAT_SUB.h"

#include <cmath>

#include "CORE_PR.h"
#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "PhaseCheck.h"
#include "SAT_SUB_HOTTEST.h"
#include "SAT_SUB_INVERSE.h"
#include "SAT_SUB_INVERSE_LINES.h"
#include "SAT_SUB_METHODS.h"
#include "SAT_SUB_NEWTON.h"
#include "SaturationSpline.h"
#include "TPRHO.h"
#include "UTILITY.h"
#include "UTILITY_NUMERICS.h"

namespace frigana {

SaturationMemo saturationMemo;

void resetSaturationMemo() {
    saturationMemo = {};
    resetSpinodalTables();
    resetSaturationExtrema();
    resetHottestSaturation();
}

void temperatureAboveCritical(std::string_view heading, double T, double Tc, int& ierr, Text255& herr) {
    ierr = 121;
    message(herr, heading, General{12, 5, T}, " K, Tcrit =", General{12, 5, Tc}, " K.", nullCharacter);
    ERRMSG(ierr, herr);
}

namespace {

constexpr int bubblePoint = 1, dewPoint = 2, freezingLine = 3, sublimationLine = 4;  // values of kph

constexpr double hotterThanUsual = 0.9;   // [Tc] Newton's method rarely fails below
constexpr double besideCritical = 0.998;  // [Tc] above it the envelope is walked along, from a start below it
constexpr int aboveCritical = 121, notConverged = 128, notConvergedAtP = 148;  // codes of the substitution

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

// The substitution methods stop where progress has become slow, which need not be at an equilibrium. For models without
// composition derivatives, which they alone serve, their own end stands.
bool isDewOrBubble(double T, double p, double rhol, const Composition& xliq, double rhov, const Composition& xvap,
                   double pc) {
    if (!(modelTags.HEOS == "HMX")) return true;
    // the densities are those before the last step of the composition
    const SilentMessages quiet;
    int code = 0;
    Text255 text;
    TPRHO(T, p, xliq, -liquidPhase, 1, rhol, code, text);
    if (code <= 0) TPRHO(T, p, xvap, -vaporPhase, 1, rhov, code, text);
    // where Newton's method is to follow, or has failed from here, less is asked or more
    const double tolerance = newtonControl.NOSATTP != 0 ? equilibriumOfSubstitution : looseEquilibrium;
    return code <= 0 && phasesInEquilibrium(T, p, rhol, xliq, rhov, xvap, tolerance) &&
           !vaporIsNone(T, p, rhov, xvap, pc) && !nearbyPhasesFallApart(T, rhol, xliq, rhov, xvap);
}

// The point of a line beside the critical point, or beyond it on the side asked for, by a walk along the envelope: for
// dew points from the side of low pressure, for bubble points (and the upper dew points) from that of the liquid.
enum class Walk { found, otherLine, lost };
Walk walkToLine(double T, const Composition& z, int kph, bool fromLiquid, double& p, double& rhol, double& rhov,
                Composition& xliq, Composition& xvap) {
    constexpr double closeTo = 1e-9;  // relative, of temperatures
    int line = 0;
    LineState state;
    const int start = fromLiquid ? liquidLine : vaporLine;
    if (!rootOnEnvelope(LineProperty::temperature, T, start, z, closeTo * T, line, state)) return Walk::lost;
    if (line != kph) return Walk::otherLine;
    // at the temperature itself
    LineState exact = state;
    double D = 0.0, q = 0.0, temperature = T;
    int ierr = 0;
    Text255 herr;
    saturationSpline.INSPLINE = true;
    SATTP(temperature, exact.p, z, kph, 1, D, exact.rhol, exact.rhov, exact.xliq, exact.xvap, q, ierr, herr);
    saturationSpline.INSPLINE = false;
    constexpr double samePlace = 1e-3;  // relative, of densities
    if (ierr != 0 || std::fabs(D / state.rho - 1.0) > samePlace) {
        // next to the critical point the walk itself ends at the temperature to its rounding
        exact = state;
        if (!phasesInEquilibrium(T, exact.p, exact.rhol, exact.xliq, exact.rhov, exact.xvap) ||
            vaporIsNone(T, exact.p, exact.rhov, exact.xvap, exact.p) ||
            nearbyPhasesFallApart(T, exact.rhol, exact.xliq, exact.rhov, exact.xvap))
            return Walk::lost;
    }
    p = exact.p;
    rhol = exact.rhol;
    rhov = exact.rhov;
    xliq = exact.xliq;
    xvap = exact.xvap;
    return Walk::found;
}

// The answer where a mixture is hotter than its two-phase region.
void nothingToFind(double T, const Composition& z, const CriticalPoint& critical, double& p, double& rhol, double& rhov,
                   Composition& xliq, Composition& xvap, int& ierr, Text255& herr) {
    p = critical.p;
    rhol = rhov = critical.D;
    xliq = xvap = z;
    if (T > critical.T) {
        temperatureAboveCritical(
            "[SATT error 121] temperature input to saturation routine is greater than critical temperature; T =", T,
            critical.T, ierr, herr);
    } else {
        ierr = notConverged;
        message(herr, "[SATT error 128] iteration for saturation state did not converge; T =", General{12, 5, T}, " K.",
                nullCharacter);
        ERRMSG(ierr, herr);
    }
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

}  // namespace

void SATT(double T, const Composition& x, int kph, double& p, double& rhol, double& rhov, Composition& xliq,
          Composition& xvap, int& ierr, Text255& herr) {
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

    const auto commonExit = [&] {
        if (ierr != 0) return;
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

    CriticalPoint critical;
    CRITP(z, critical.T, critical.p, critical.D, ierr, herr);
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
    const double omega = acentricFactor(icomp, z);

    if (icomp > 0 && T > critical.T - 1e-8) {
        p = critical.p;
        rhol = rhov = critical.D;
        xliq = xvap = z;
        if (T > critical.T + 1e-8)
            temperatureAboveCritical(
                "[SATT error 121] temperature input to saturation routine is greater than critical temperature; T =", T,
                critical.T, ierr, herr);
        return;
    }

    double liquidEstimate = rhol, vaporEstimate = rhov;
    if (!started) {
        p = critical.p * std::pow(10.0, -2.333333 * (omega + 1.0) * (critical.T / T - 1.0));
        const double u = (omega + 1.5) * CBRTX(std::fabs(1.0 - T / critical.T));
        liquidEstimate = critical.D * (1.0 + 1.113614 * u + 0.0804 * u * u);
        vaporEstimate = critical.D * (1.0 - 1.078683 * u + 0.05014057 * u * u);
        if (vaporEstimate < 0.0) vaporEstimate = 1e-6;
    }

    const bool aga8 = leaveAga8();
    bool solved = false;
    if (icomp > 0) {
        pureAtTemperature(T, z, icomp, kph, critical, liquidEstimate, vaporEstimate, p, rhol, rhov, ierr, herr);
        solved = true;
    } else if (newtonControl.NOSATTP == 0) {
        double temperature = T, D, q;
        bool newton = false, nothing = false;
        const bool walkable = T > besideCritical * critical.T && modelTags.HEOS == "HMX" && !pengRobinsonSelected() &&
                              !saturationSpline.INSPLINE && !saturationSpline.SPLINEREADY;
        if (T > hotterThanUsual * critical.T) {
            // only the searches that follow a failure of Newton's method are long, and where the hot end is known even
            // that method is not asked beyond it
            const bool hotEndKnown = !hotEndUnknown(z);
            nothing = hotEndKnown && beyondSaturation(T, z, critical.T, critical.p);
            if (!nothing && (!hotEndKnown || walkable))
                newton = newtonAlone(temperature, p, z, kph, D, rhol, rhov, xliq, xvap, q, ierr, herr);
            if (nothing || (!newton && !hotEndKnown && beyondSaturation(T, z, critical.T, critical.p))) {
                nothingToFind(T, z, critical, p, rhol, rhov, xliq, xvap, ierr, herr);
                if (aga8) returnToAga8(T, p, xvap, rhov, ierr, herr);
                return;
            }
        }
        Walk walk = Walk::lost;
        if (walkable && (kph == bubblePoint || kph == dewPoint)) {
            const bool onOtherSide =
                newton && kph == dewPoint && T > critical.T && !dewPressureRises(T, rhol, xliq, rhov, xvap);
            if (!newton || onOtherSide) {
                walk = walkToLine(T, z, kph, kph == bubblePoint, p, rhol, rhov, xliq, xvap);
                if (walk == Walk::found) newton = true;
            }
        }
        if (!newton && walk == Walk::otherLine && T > critical.T) {
            nothingToFind(T, z, critical, p, rhol, rhov, xliq, xvap, ierr, herr);
            if (aga8) returnToAga8(T, p, xvap, rhov, ierr, herr);
            return;
        }
        if (newton) {
            ierr = 0;
            herr.clear();
        } else {
            temperature = T;
            SATTP(temperature, p, z, kph, 0, D, rhol, rhov, xliq, xvap, q, ierr, herr);
        }
        if (ierr == 0 && kph == dewPoint && rhol < 0.8 * rhov) {
            // a false root: both phases are vapor
            SATGV(temperature, p, z, 1.0, T, 1, 1, 0, rhol, rhov, xliq, xvap, ierr, herr);
        }
        // SATTP has ended with the substitution, which ends no other way from the same start
        solved = ierr == 0 || (!started && (ierr == notConverged || ierr == aboveCritical));
    }
    if (!solved) {
        mixtureAtTemperature(T, z, kph, critical, started, p, rhol, rhov, xliq, xvap, ierr, herr);
        if (ierr == 0 && !isDewOrBubble(T, p, rhol, xliq, rhov, xvap, critical.p)) {
            ierr = 128;
            message(herr, "[SATT error 128] iteration for saturation state did not converge; T =", General{12, 5, T},
                    " K.", nullCharacter);
            ERRMSG(ierr, herr);
        }
    }
    if (aga8) returnToAga8(T, p, xvap, rhov, ierr, herr);
    commonExit();
}

void SATP(double p, const Composition& x, int kph, double& T, double& rhol, double& rhov, Composition& xliq,
          Composition& xvap, int& ierr, Text255& herr) {
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

    // the argument may be one of the results
    const Composition z = x;
    ierr = 0;
    herr.clear();
    RMIX(z);
    T = 300.0;
    rhol = rhov = 0.0;
    xliq = xvap = icomp > 0 ? unitComposition(icomp) : z;

    const auto commonExit = [&] {
        if (ierr != 0) return;
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

    CriticalPoint critical;
    CRITP(z, critical.T, critical.p, critical.D, ierr, herr);
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
    bool solved = false;
    if (icomp > 0) {
        pureAtPressure(p, z, icomp, kph, critical, acentricFactor(icomp, z), T, rhol, rhov, ierr, herr);
        solved = true;
    } else if (newtonControl.NOSATTP == 0) {
        double pressure = p, D, q;
        SATTP(T, pressure, z, kph + 2, 0, D, rhol, rhov, xliq, xvap, q, ierr, herr);
        solved = ierr == 0 || ierr == notConvergedAtP;  // as in SATT
    }
    if (!solved) {
        mixtureAtPressure(p, z, kph, critical, Dmax, T, rhol, rhov, xliq, xvap, ierr, herr);
        if (ierr == 0 && !(T > 0.7 * tmin && isDewOrBubble(T, p, rhol, xliq, rhov, xvap, critical.p))) {
            ierr = 148;
            message(herr,
                    "[SATP error 148] iteration for saturation state did not converge; P =", General{12, 5, p / 1000.0},
                    " MPa.", nullCharacter);
            ERRMSG(ierr, herr);
        }
    }
    if (aga8) returnToAga8(T, p, xvap, rhov, ierr, herr);
    commonExit();
}

}  // namespace frigana
