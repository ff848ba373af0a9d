// Extrema of enthalpy, energy and entropy on the saturation lines.
#include <algorithm>
#include <cmath>

#include "CriticalPoint.h"
#include "FluidConstants.h"
#include "FluidFiles.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "ReferenceState.h"
#include "SAT_SUB.h"
#include "SAT_SUB_INVERSE.h"
#include "SAT_SUB_INVERSE_LINES.h"
#include "SAT_SUB_SPLINE.h"
#include "SaturationSpline.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

InverseControl inverseControl;

void belongTo(const Composition& x, int icomp) {
    SaturationExtrema& known = saturationExtrema;
    double h = 0.0, s = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        h += x[i] * referenceState.HREF[i];
        s += x[i] * referenceState.SREF[i];
    }
    bool same = known.icomp == icomp && known.HREF == h && known.SREF == s;
    if (same && icomp == 0)
        for (int i = 1; i <= modelTags.NC; ++i) same = same && std::fabs(known.x[i] - x[i]) <= 1e-9;
    if (same) return;
    known = {};
    known.icomp = icomp;
    known.x = x;
    known.HREF = h;
    known.SREF = s;
}

bool isWater(int icomp) {
    return icomp > 0 && fluidFiles.HCAS[icomp] == "7732-18-5";
}

double lowestLineTemperature(const Composition& x, int icomp) {
    double tmin, tmax, Dmax, pmax;
    LIMITS("EOS", x, tmin, tmax, Dmax, pmax);
    return isWater(icomp) ? 273.16 : tmin;
}

bool stateOnLine(int line, double T, const Composition& x, LineState& state, int& ierr, Text255& herr) {
    PhasePair& at = state.at;
    at.T = T;
    if (line == retrogradeVaporLine) {
        const CriticalPoint critical = criticalPointOf(x, ierr, herr);
        // through the critical point the line goes on as that of the bubble points
        if (ierr <= 0 && T < critical.T) {
            SATT(T, x, liquidLine, at.p, at.Dl, at.Dv, at.x, at.y, ierr, herr);
            state.rho = at.Dl;
            return ierr <= 0;
        }
        double D, temperature = T;
        SATTP(temperature, at.p, x, retrogradeVaporLine, 0, D, at.Dl, at.Dv, at.x, at.y, at.q, ierr, herr);
    } else {
        SATT(T, x, line, at.p, at.Dl, at.Dv, at.x, at.y, ierr, herr);
        // what is remembered of a temperature beside this one belongs to that: next to the critical point densities
        // tell the two apart
        const SaturationMemo::State& solved = saturationMemo.atT;
        if (ierr == 0 && solved.valid && std::fabs(solved.input - T) < 1e-9) at.T = solved.input;
    }
    state.rho = line == liquidLine || line == meltingLine ? at.Dl : at.Dv;
    return ierr <= 0;
}

void fillColdEnd(const Composition& x, int icomp, double Tmin, double Tc) {
    SaturationExtrema& known = saturationExtrema;
    belongTo(x, icomp);
    if (known.energiesKnown) return;
    int ierr;
    Text255 herr;
    LineState state;
    if (stateOnLine(liquidLine, Tmin, x, state, ierr, herr)) {
        ENTHAL(Tmin, state.rho, x, known.liquidEnthalpy);
        ENERGY(Tmin, state.rho, x, known.liquidEnergy);
        ENTRO(Tmin, state.rho, x, known.liquidEntropy);
    } else {
        // the line has no known end: nothing is below it
        known.liquidEnthalpy = known.liquidEnergy = known.liquidEntropy = -noSuchModel;
    }
    for (double T = Tmin; T < Tc; T += 5.0) {
        // a mixture's cold dew point can end in a false root, with no liquid beside the vapor
        if (!stateOnLine(vaporLine, T, x, state, ierr, herr) || state.at.Dv >= state.at.Dl) continue;
        ENTHAL(T, state.rho, x, known.vaporEnthalpy);
        ENERGY(T, state.rho, x, known.vaporEnergy);
        ENTRO(T, state.rho, x, known.vaporEntropy);
        break;
    }
    known.energiesKnown = true;
}

namespace {

// Three points of a curve over temperature, highest temperature first.
struct ThreePoints {
    double T[3], value[3];

    // Divided differences of the parabola through the points.
    double slope() const { return (value[1] - value[0]) / (T[1] - T[0]); }
    double curvature() const {
        const double second = (value[2] - value[1]) / (T[2] - T[1]);
        return (second - slope()) / (T[2] - T[0]);
    }
    double vertex() const {
        const double d = curvature();
        return -(slope() - d * (T[0] + T[1])) / (2.0 * d);
    }

    // Takes a new point in and drops the end that is farther from the extremum; sign 1 for a maximum, -1 for a minimum.
    void take(double newT, double newValue, double sign) {
        double t[4], v[4];
        int count = 0;
        bool placed = false;
        for (int k = 0; k < 3; ++k) {
            if (!placed && newT >= T[k]) {
                t[count] = newT;
                v[count++] = newValue;
                placed = true;
            }
            t[count] = T[k];
            v[count++] = value[k];
        }
        if (!placed) {
            t[count] = newT;
            v[count] = newValue;
        }
        int best = 0;
        for (int k = 1; k < 4; ++k)
            if (sign * v[k] > sign * v[best]) best = k;
        const int first = best <= 1 ? 0 : 1;
        for (int k = 0; k < 3; ++k) {
            T[k] = t[first + k];
            value[k] = v[first + k];
        }
    }
};

// Value on a line at T; false if the saturation failed.
bool lineValue(char letter, int line, double T, const Composition& x, double& value, int& ierr, Text255& herr) {
    LineState state;
    if (!stateOnLine(line, T, x, state, ierr, herr)) return false;
    value = propertyByLetter(letter, T, state.rho, x);
    return true;
}

// Temperature of an extremum of the envelope's column, from the splines.
bool startFromSpline(int column, double& T) {
    if (!saturationSpline.SPLINEREADY) return false;
    double density = saturationSpline.highestTemperature.D;
    int ierr;
    Text255 herr;
    SPLNROOT(column, 1, 0.0, density, ierr, herr);
    if (ierr != 0) return false;
    T = SPLNVAL(modelTags.NC + 1, 0, density, ierr, herr);
    return ierr <= 0;
}

}  // namespace

void EHMAXX(const Composition& x, int flag, double& value, double& T, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    int icomp;
    ISPURE(x, icomp);
    belongTo(x, icomp);
    LineExtremum& known = flag == 1 ? saturationExtrema.highestEnergy : saturationExtrema.highestEnthalpy;
    const char letter = flag == 1 ? 'E' : 'H';
    if (known.value != 0.0 && known.T > 0.0) {
        value = known.value;
        T = known.T;
        return;
    }
    double Tc, pc, Dc;
    CRITP(x, Tc, pc, Dc, ierr, herr);
    if (ierr > 0) return;
    double limit = Tc;
    if (icomp == 0) {
        double tm, pm, Dm;
        MAXT(x, tm, pm, Dm, ierr, herr);
        if (Dm > 0.0) limit = tm;
    }
    ierr = 0;
    herr.clear();
    const double Tmin = lowestLineTemperature(x, icomp);

    ThreePoints points;
    double top = Tc - Tc / 10.0, step = Tc / 10.0;
    bool fromSpline = flag == 0 && icomp == 0 && startFromSpline(modelTags.NC + 4, top);
    if (fromSpline) {
        top += 1.0;
        step = 1.0;
    }
    for (int attempt = 1; attempt <= 2; ++attempt) {
        for (int k = 0; k < 3; ++k) {
            // fluids with a high triple point have less than three steps of the line
            points.T[k] = std::max(top - k * step, k == 2 ? Tmin : Tmin + 1.0);
            if (!lineValue(letter, vaporLine, points.T[k], x, points.value[k], ierr, herr)) return;
        }
        if (points.value[0] <= points.value[1] || fromSpline) break;
        top = 0.99 * Tc;
    }

    value = points.value[0];
    T = points.T[0];
    for (int pass = 1; pass <= 50; ++pass) {
        const double last = value;
        const double d = points.curvature();
        if (!(std::fabs(d) > 1e-20)) break;
        T = points.vertex();
        if (T > limit) T = 0.5 * (limit + points.T[0]);
        if (T < Tmin) T = 0.5 * (Tmin + points.T[0]);
        if (!lineValue(letter, vaporLine, T, x, value, ierr, herr)) return;
        known = {T, value};
        if (std::fabs(value - last) <= 1e-9) break;
        points.take(T, value, 1.0);
    }
}

namespace {

// One extremum of the saturated entropy, from three points; false if it does not exist.
bool entropyExtremum(const Composition& x, int line, double sign, double first, double step, double Tmin, double Tc,
                     LineExtremum& found, int& ierr, Text255& herr) {
    found = {-1.0, -1.0};
    ThreePoints points;
    for (int k = 0; k < 3; ++k) {
        points.T[k] = step > 0.0 ? first + (2 - k) * step : first + k * step;
        if (points.T[k] < Tmin || points.T[k] >= Tc) return false;
        if (!lineValue('S', line, points.T[k], x, points.value[k], ierr, herr)) return false;
    }
    double value = points.value[0];
    for (int pass = 1; pass <= 100; ++pass) {
        const double last = value;
        const double d = points.curvature();
        // the parabola must open away from the extremum
        if (!(sign * d < 0.0)) return false;
        double T = points.vertex();
        if (T < Tmin) return false;
        if (T >= Tc) T = 0.5 * (Tc + points.T[0]);
        if (!lineValue('S', line, T, x, value, ierr, herr)) return false;
        if (std::fabs(value - last) <= 1e-9) {
            found = {T, value};
            return true;
        }
        points.take(T, value, sign);
    }
    return false;
}

}  // namespace

void SMAXX(const Composition& x, LineExtremum& highestVapor, LineExtremum& lowestVapor, LineExtremum& lowestLiquid,
           int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    int icomp;
    ISPURE(x, icomp);
    belongTo(x, icomp);
    SaturationExtrema& known = saturationExtrema;
    if (!known.entropyExtremaKnown) {
        double Tc, pc, Dc;
        CRITP(x, Tc, pc, Dc, ierr, herr);
        if (ierr > 0) return;
        ierr = 0;
        const double Tmin = lowestLineTemperature(x, icomp);
        LineExtremum none{-1.0, -1.0};
        known.highestVaporEntropy = known.lowestVaporEntropy = known.lowestLiquidEntropy = none;
        int failure;
        Text255 text;
        if (entropyExtremum(x, vaporLine, 1.0, Tc - Tc / 20.0, -Tc / 20.0, Tmin, Tc, known.highestVaporEntropy, failure,
                            text))
            entropyExtremum(x, vaporLine, -1.0, Tmin, Tmin / 20.0, Tmin, known.highestVaporEntropy.T,
                            known.lowestVaporEntropy, failure, text);
        double cold, warmer;
        if (lineValue('S', liquidLine, Tmin, x, cold, failure, text) &&
            lineValue('S', liquidLine, Tmin + 1.0, x, warmer, failure, text) && warmer < cold)
            entropyExtremum(x, liquidLine, -1.0, Tmin, Tmin / 20.0, Tmin, Tc, known.lowestLiquidEntropy, failure, text);
        known.entropyExtremaKnown = true;
    }
    highestVapor = known.highestVaporEntropy;
    lowestVapor = known.lowestVaporEntropy;
    lowestLiquid = known.lowestLiquidEntropy;
}

}  // namespace frigana
