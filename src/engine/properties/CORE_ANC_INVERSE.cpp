#include "CORE_ANC_INVERSE.h"

#include <algorithm>
#include <cmath>

#include "CORE_ANC.h"
#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

namespace {

void ancillary(int mode, double t, const Composition& x, double& value, int& ierr, Text255& herr) {
    switch (mode) {
        case 0:
            return PSATT(t, x, value, ierr, herr);
        case 1:
            return DLSATT(t, x, value, ierr, herr);
        case 2:
            return DVSATT(t, x, value, ierr, herr);
        default:
            return PLSATT(t, x, value, ierr, herr);
    }
}

// Lowest temperature at which all equations of the components serve.
double lowestTemperature(int mode, const Composition& x) {
    const auto limit = [mode](int i) {
        const AncSlot& s = ancTerms[i];
        return mode == 0 ? s.PSTMIN : mode == 1 ? s.DLTMIN : mode == 2 ? s.DVTMIN : s.PLTMIN;
    };
    int icomp = 0;
    ISPURE(x, icomp);
    if (icomp > 0) return limit(icomp);
    double highest = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) highest = std::max(highest, limit(i));
    return highest;
}

// True where a value belongs to the cold end of an equation of component icomp, t: the triple point, or the lower limit
// of the equation above it. An equation meets the value of the triple point to its own accuracy only, so the root of
// that value may lie a trifle below the end, where there is no equation.
bool atColdEnd(int mode, int icomp, double y, double valueAtTriplePoint, double& t) {
    const Composition x = unitComposition(icomp);
    const double triplePoint = fluidConstants.TTPN[icomp], end = std::max(triplePoint, lowestTemperature(mode, x));
    int ierr = 0;
    Text255 herr;
    double atEnd = 0.0;
    ancillary(mode, end, x, atEnd, ierr, herr);
    const bool beyond = ierr == 0 && (mode == 1 ? y >= atEnd : y <= atEnd);
    if (y == valueAtTriplePoint)
        t = triplePoint;
    else if (beyond)
        t = end;
    return y == valueAtTriplePoint || beyond;
}

void temperatureAtPressure(std::string_view routine, const SlotArray<Text3>& tag, int mode, double p,
                           const Composition& x, double& t, int& ierr, Text255& herr) {
    const FluidConstants& c = fluidConstants;
    ierr = 0;
    herr.clear();
    int icomp = 0;
    ISPURE(x, icomp);
    if (icomp > 0) {
        if (tag[icomp] == "NBS") {
            t = c.TCRIT[icomp];
            ierr = 2;
            message(herr, "[", routine, " error 2] vapor pressure equation not available", nullCharacter);
        } else if (p < c.PTPN[icomp]) {
            t = c.TTPN[icomp];
            ierr = 1;
            message(herr, "[", routine,
                    " error 1] pressure less than triple point pressure; P =", FixedPoint{12, 5, p / 1000.0},
                    " MPa, Ptp =", FixedPoint{12, 5, c.PTPN[icomp] / 1000.0}, " MPa.", nullCharacter);
        } else if (p > c.PCRIT[icomp]) {
            t = c.TCRIT[icomp];
            ierr = 141;
            message(herr, "[", routine,
                    " error 141] pressure greater than critical pressure; P =", FixedPoint{12, 5, p / 1000.0},
                    " MPa, Pc =", FixedPoint{12, 5, c.PCRIT[icomp] / 1000.0}, " MPa.", nullCharacter);
        }
        if (ierr != 0) {
            ERRMSG(ierr, herr);
            return;
        }
        if (atColdEnd(mode, icomp, p, c.PTPN[icomp], t)) return;
    }
    SOLVEA(mode, p, x, t, ierr, herr);
}

}  // namespace

void TSATP(double p, const Composition& x, double& t, int& ierr, Text255& herr) {
    temperatureAtPressure("TSATP", modelTags.HPSK, 0, p, x, t, ierr, herr);
}

void TSATPL(double p, const Composition& x, double& t, int& ierr, Text255& herr) {
    temperatureAtPressure("TSATPL", modelTags.HPLK, 4, p, x, t, ierr, herr);
}

void TSATD(double d, const Composition& x, double& t, int& ierr, Text255& herr) {
    const FluidConstants& c = fluidConstants;
    ierr = 0;
    herr.clear();
    int icomp = 0, mode = 1;
    ISPURE(x, icomp);
    if (icomp > 0) {
        t = c.TTPN[icomp];
        if ((modelTags.HDLK[icomp] == "NBS" && d >= c.DCRIT[icomp]) ||
            (modelTags.HDVK[icomp] == "NBS" && d <= c.DCRIT[icomp])) {
            ierr = 1;
            message(herr, "[TSATD error 1] Ancillary equation not available", nullCharacter);
            ERRMSG(ierr, herr);
            return;
        }
        if (d > c.DTPN[icomp]) {
            ierr = 141;
            message(herr, "[TSATD error 141] density greater than triple point density; d=", FixedPoint{12, 5, d},
                    " mol/L, dtp =", FixedPoint{12, 5, c.DTPN[icomp]}, " mol/L.", nullCharacter);
            ERRMSG(ierr, herr);
        }
        mode = d >= c.DCRIT[icomp] ? 1 : 2;
        if (mode == 1 && d <= c.DTPN[icomp] && atColdEnd(mode, icomp, d, c.DTPN[icomp], t)) return;
    }
    SOLVEA(mode, d, x, t, ierr, herr);
}

void SOLVEA(int mode, double y, const Composition& x, double& t, int& ierr, Text255& herr) {
    constexpr double tolerance = 5e-9, h = 0.001;  // [K]
    constexpr int mostIterations = 50;
    ierr = 0;
    herr.clear();
    double tc = 0.0, pc = 0.0, dc = 0.0;
    CRITP(x, tc, pc, dc, ierr, herr);
    ierr = 0;
    herr.clear();
    t = 0.75 * tc;
    const double tmin = lowestTemperature(mode, x);
    double step = -10.0;
    for (int iteration = 1; iteration <= mostIterations; ++iteration) {
        // both points stay below the critical temperature, where the equations end
        const double shift = t + h >= tc ? h : 0.0;
        double f1 = 0.0, f2 = 0.0;
        ancillary(mode, t - shift, x, f1, ierr, herr);
        if (ierr != 0) return;
        ancillary(mode, t - shift + h, x, f2, ierr, herr);
        if (ierr != 0) return;

        const double tlast = t;
        if (std::fabs(f2) < 1e-15) {
            t -= 0.5 * step;
        } else {
            if (mode == 1)
                step = -(f1 - y) / ((f2 - f1) / h);
            else
                step = -(std::log(f1) - std::log(y)) / (std::fabs(std::log(f2) - std::log(f1)) / h);
            t += step;
        }
        if (std::fabs(step) < tolerance) return;
        if (t >= tc) t = (tlast + tc) / 2.0;
        // far below the start the slope is steeper than here: a step that leaves the equations is halved, not refused
        if (t < tmin && tlast > tmin) t = (tlast + tmin) / 2.0;
    }
    ierr = 124;
    t = notComputed;
    message(herr, "[SOLVEA error 124] maximum number of iterations exceeded", nullCharacter);
    ERRMSG(ierr, herr);
}

}  // namespace frigana
