#include "LIMITS.h"

#include <algorithm>
#include <cmath>

#include "CORE_MLT.h"
#include "DISPATCH.h"
#include "FluidConstants.h"
#include "FluidFiles.h"
#include "MELTING.h"
#include "MIX_HMX.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "UTILITY.h"

namespace frigana {

namespace {

constexpr std::string_view waterNumber = "7732-18-5";
constexpr std::string_view parahydrogenNumber = "1333-74-0p";

struct Bounds {
    double tmin, tmax, Dmax, pmax;
};

// Letter by letter: limits are asked for in every saturation.
bool is(const Text3& tag, const char (&letters)[4]) {
    return tag[1] == letters[0] && tag[2] == letters[1] && tag[3] == letters[2];
}
bool isKind(const Text3& htype, const char (&upper)[4], const char (&lower)[4]) {
    return is(htype, upper) || is(htype, lower);
}

bool isSurfaceTension(const Text3& htype) {
    return isKind(htype, "STN", "stn");
}

// Limits of one slot; densityLimit and pressureLimit stand for those that surface tension does not have.
Bounds slotBounds(const Text3& htype, int icomp, double noLimit) {
    const FluidConstants& fluid = fluidConstants;
    const Bounds correspondingStates{fluid.TMECST[icomp], fluid.TXECST[icomp], fluid.DXECST[icomp],
                                     fluid.PXECST[icomp]};
    if (isSurfaceTension(htype)) return {fluid.TMINST[icomp], fluid.TMAXST[icomp], noLimit, noLimit};
    if (isKind(htype, "TCX", "tcx")) {
        if (modelTags.HTCX[icomp] == "ECS") return correspondingStates;
        return {fluid.TMTCX[icomp], fluid.TXTCX[icomp], fluid.DXTCX[icomp], fluid.PXTCX[icomp]};
    }
    if (isKind(htype, "ETA", "eta")) {
        if (modelTags.HETA[icomp] == "ECS") return correspondingStates;
        return {fluid.TMETA[icomp], fluid.TXETA[icomp], fluid.DXETA[icomp], fluid.PXETA[icomp]};
    }
    Bounds bounds{fluid.TMEOS[icomp], fluid.TXEOS[icomp], fluid.DEOS[icomp], fluid.PEOS[icomp]};
    if (isKind(htype, "TRP", "trp") && fluid.DTPN[icomp] > 0.1) bounds.Dmax = fluid.DTPN[icomp];
    return bounds;
}

// Melting temperature of ammonia with water over the mole fraction of ammonia.
double meltingAmmoniaWater(double z) {
    if (z < 0.33367) return 273.16 * (1.0 - 0.3439823 * z - 1.3274271 * z * z - 274.973 * std::pow(z, 7.0));
    if (z < 0.58396) return 193.549 * (1.0 - 4.987368 * (z - 0.5) * (z - 0.5));
    if (z < 0.81473) {
        const double d = z - 2.0 / 3.0;
        return 194.38 * (1.0 - 4.886151 * d * d + 10.37298 * d * d * d);
    }
    const double d = 1.0 - z;
    return 195.495 * (1.0 - 0.323998 * d - 15.8756 * d * d * d * d);
}

// What a check has found so far: a text and a bit per group, and whether an error is among them.
struct Findings {
    FixedText<75> temperature, density, pressure;
    FixedText<140> composition;
    int temperatureBit = 0, densityBit = 0, pressureBit = 0, compositionBit = 0;
    bool error = false;
    bool found = false;

    void note(bool isError) {
        found = true;
        if (isError) error = true;
    }
};

template <int N>
std::string_view atLeastOneCharacter(const FixedText<N>& text) {
    return text.slice(1, std::max(text.length(), 1));
}

void checkDensity(double D, double Dmax, Findings& findings) {
    if (D < 0.0) {
        findings.densityBit = 2;
        findings.note(true);
        message(findings.density, " density < 0, D =", FixedPoint{12, 5, D}, " mol/L;");
    } else if (D > Dmax) {
        findings.densityBit = 2;
        findings.note(true);
        message(findings.density, " density > upper limit, D =", FixedPoint{12, 5, D},
                " mol/L, Dmax =", FixedPoint{12, 5, Dmax}, " mol/L;");
    }
}

void checkPressure(double p, double pmax, bool strict, Findings& findings) {
    const FixedPoint printed{12, 5, p / 1000.0};
    const FixedPoint printedLimit{12, 5, pmax / 1000.0};
    if (p < 0.0) {
        findings.pressureBit = 4;
        findings.note(true);
        message(findings.pressure, " pressure < 0, P =", printed, " MPa;");
    } else if (p > 2.0 * pmax) {
        findings.pressureBit = 4;
        findings.note(true);
        message(findings.pressure, " pressure > 2 x upper limit, P =", printed, " MPa, Pmax =", printedLimit, " MPa;");
    } else if (p > pmax + 1e-8) {
        findings.pressureBit = 4;
        findings.note(strict);
        message(findings.pressure, " pressure above upper limit, P =", printed, " MPa, Pmax =", printedLimit, " MPa;");
    }
}

void checkMelting(double p, double pmelt, Findings& findings) {
    if (0.9995 * p > pmelt && std::fabs(pmelt) > 1e-20) {
        findings.pressureBit = 16;
        findings.note(true);
        message(findings.pressure, " pressure > melting pressure, P =", FixedPoint{12, 5, p / 1000.0},
                " MPa, Pmelt =", FixedPoint{12, 5, pmelt / 1000.0}, " MPa;");
    }
}

void temperatureBelow(double t, double tmin, bool isError, Findings& findings) {
    findings.temperatureBit = 1;
    findings.note(isError);
    message(findings.temperature, " temperature below lower limit, T =", FixedPoint{12, 5, t},
            " K, Tmin =", FixedPoint{12, 5, tmin}, " K;");
}

void temperatureAbove(double t, double tmax, Findings& findings) {
    findings.temperatureBit = 1;
    const bool far = t > 1.5 * tmax;
    findings.note(far);
    message(findings.temperature,
            far ? " temperature > 1.5 x upper limit, T =" : " temperature above upper limit, T =", FixedPoint{12, 5, t},
            " K, Tmax =", FixedPoint{12, 5, tmax}, " K;");
}

// Below the triple point of a pure fluid, where the temperature is within the limits. The liquid of water exists
// between the melting lines of ice I and of the denser ices; the margin keeps states on a line.
void checkTriplePoint(int icomp, double t, double p, double margin, Findings& findings) {
    const double triplePoint = fluidConstants.TTPN[icomp];
    if (!(t < triplePoint - 1e-10 && t > 0.0)) return;
    findings.temperatureBit = 16;
    findings.note(false);
    message(findings.temperature, " temperature less than triple point, T=", FixedPoint{12, 5, t},
            " K, Ttrp=", FixedPoint{12, 5, triplePoint}, " K;");
    if (fluidFiles.HCAS[icomp] != waterNumber || std::fabs(p) <= 1e-20) return;
    double densest, iceOne;
    MLTH2O(t, densest, iceOne);
    if (p < iceOne * margin || p > densest / margin) {
        findings.note(true);
        message(findings.temperature, " inputs are within the solid phase;");
    }
}

void report(const Findings& findings, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    if (!findings.found) return;
    ierr = findings.temperatureBit + findings.densityBit + findings.pressureBit + findings.compositionBit;
    if (!findings.error) ierr = -ierr;
    message(herr, "one or more inputs are out of range: ", atLeastOneCharacter(findings.temperature),
            atLeastOneCharacter(findings.density), atLeastOneCharacter(findings.pressure),
            atLeastOneCharacter(findings.composition), nullCharacter);
    ERRMSG(ierr, herr);
}

}  // namespace

void LIMITS(const Text3& htype, const Composition& x, double& tmin, double& tmax, double& Dmax, double& pmax) {
    int pure;
    ISPURE(x, pure);
    if (pure > 0) {
        const Bounds bounds = slotBounds(htype, pure, noSuchModel);
        tmin = bounds.tmin;
        tmax = bounds.tmax;
        Dmax = bounds.Dmax;
        pmax = bounds.pmax;
        if (fluidFiles.HCAS[pure] == waterNumber) tmin = std::min(tmin, 251.165);
        return;
    }
    double tz, dz;
    REDX(x, tz, dz);
    // means of the limits relative to the reducing values: a of 1/tmin, b of 1/tmax, c of Dmax
    double a = 0.0, b = 0.0, c = 0.0;
    pmax = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        const Bounds bounds = slotBounds(htype, i, noSuchModel);
        if (bounds.tmin != 0.0) a += x[i] * fluidConstants.TZ[i] / bounds.tmin;
        if (bounds.tmax != 0.0) b += x[i] * fluidConstants.TZ[i] / bounds.tmax;
        if (fluidConstants.RHOZ[i] != 0.0) c += x[i] * bounds.Dmax / fluidConstants.RHOZ[i];
        pmax += x[i] * bounds.pmax;
    }
    Dmax = dz * c;
    if (a <= 0.0) a = 100.0;
    if (b <= 0.0) b = 300.0;
    tmax = tz / b;
    tmin = tz / a;
    if (tmin > 10.0) tmin -= 5.0;
    if (tmin < 0.0) tmin = 100.0;
    if (tmax < 0.0) tmax = 300.0;
    if (const int ammonia = mixingParameters.AMMONIAWATER; ammonia > 0) tmin = meltingAmmoniaWater(x[ammonia]);
}

void LIMITX(const Text3& htype, double t, double D, double p, const Composition& x, double& tmin, double& tmax,
            double& Dmax, double& pmax, int& ierr, Text255& herr) {
    Findings findings;
    int pure;
    ISPURE(x, pure);
    const bool coldIsError = !isSurfaceTension(htype);

    LIMITS(htype, x, tmin, tmax, Dmax, pmax);
    double pmelt = 1e15;
    if (std::fabs(p) > 1e-10 && t > 0.0) MELTT(t, x, pmelt, ierr, herr);

    double total = 0.0;
    if (pure == 0) {
        bool fractionsFit = true;
        for (int i = 1; i <= modelTags.NC; ++i) {
            if (x[i] < -1e-10 || x[i] > 1.0000000001) fractionsFit = false;
            total += x[i];
        }
        if (!fractionsFit || total < 0.999999 || total > 1.000001) {
            findings.compositionBit = 8;
            findings.note(true);
        }
    }

    bool sublimated = false;
    if (t < tmin - 1e-10 && std::fabs(t + 1.0) > 1e-15) {
        double psub = 0.0;
        double margin = 0.0;
        int sublimationStatus = 0;
        if (pure > 0) {
            if (t < fluidConstants.TTPN[pure]) SUBLT(t, x, psub, sublimationStatus, herr);
        } else {
            double tz, dz;
            REDX(x, tz, dz);
            double coldest = fluidConstants.TCRIT[1], hottest = coldest;
            for (int i = 2; i <= modelTags.NC; ++i) {
                coldest = std::min(coldest, fluidConstants.TCRIT[i]);
                hottest = std::max(hottest, fluidConstants.TCRIT[i]);
            }
            if (hottest - coldest > 50.0) margin = 25.0;
            if (tz < 200.0) margin = 5.0;
        }
        const bool outside = sublimationStatus != 0 || p > psub + 1e-10 || p < 1e-20;
        if (outside && !(pure == 0 && t >= tmin - margin)) temperatureBelow(t, tmin, coldIsError, findings);
        sublimated = !outside;
    } else if (t > tmax) {
        temperatureAbove(t, tmax, findings);
    }

    checkDensity(D, Dmax, findings);
    checkPressure(p, pmax, false, findings);
    checkMelting(p, pmelt, findings);

    if (findings.compositionBit != 0) {
        FixedText<140>& text = findings.composition;
        message(text, " composition(s) out of range, Xsum =", FixedPoint{9, 5, total}, " mol frac, X(i) =");
        for (int i = 1; i <= std::min(modelTags.NC, 5); ++i) message(text, text.trimmed(), FixedPoint{9, 5, x[i]});
    }
    // a vapor below its sublimation pressure is a stable state, however cold
    if (pure > 0 && findings.temperatureBit == 0 && !sublimated) checkTriplePoint(pure, t, p, 0.9999, findings);

    report(findings, ierr, herr);
}

void LIMITK(const Text3& htype, int icomp, double t, double D, double p, double& tmin, double& tmax, double& Dmax,
            double& pmax, int& ierr, Text255& herr) {
    Findings findings;
    const bool coldIsError = !isSurfaceTension(htype);
    const Bounds bounds = slotBounds(htype, icomp, -noSuchModel);
    tmin = bounds.tmin;
    tmax = bounds.tmax;
    Dmax = bounds.Dmax;
    pmax = bounds.pmax;

    double pmelt = 1e15;
    const bool liquid = D > fluidConstants.DTPN[icomp] || std::fabs(D) < 1e-10;
    if (liquid && t > fluidConstants.TMEOS[icomp] && std::fabs(p) > 1e-10) MELTK(icomp, t, pmelt, ierr, herr);

    bool sublimated = false;
    if (t < tmin - 1e-10 && std::fabs(t + 1.0) > 1e-15) {
        double psub = 0.0;
        int sublimationStatus = 0;
        if (t < fluidConstants.TTPN[icomp]) SUBLK(icomp, t, psub, sublimationStatus, herr);
        const bool outside = sublimationStatus != 0 || p > psub + 1e-10 || p < 1e-20;
        if (outside) temperatureBelow(t, tmin, coldIsError, findings);
        sublimated = !outside;
    } else if (t > tmax) {
        temperatureAbove(t, tmax, findings);
    }

    // a negative limit is the mark of a property without one
    if (Dmax >= 0.0 || D < 0.0) checkDensity(D, Dmax, findings);
    if (pmax >= 0.0 || p < 0.0) checkPressure(p, pmax, fluidFiles.HCAS[icomp] == parahydrogenNumber, findings);
    checkMelting(p, pmelt, findings);
    if (findings.temperatureBit == 0 && !sublimated) checkTriplePoint(icomp, t, p, 1.0, findings);

    report(findings, ierr, herr);
}

void GOLD(double a, double b, int n, bool lmin, const Composition& x, double t, char letter, double& rho,
          double& value) {
    constexpr double golden = 0.61803398875, complement = 0.38196601124999996;
    const double sign = lmin ? 1.0 : -1.0;
    const auto property = [&](double density) {
        double result = 0.0;
        if (letter == 'H')
            ENTHAL(t, density, x, result);
        else if (letter == 'E')
            ENERGY(t, density, x, result);
        else if (letter == 'S')
            ENTRO(t, density, x, result);
        return sign * result;
    };
    double low = a, high = b;
    double lower = low + complement * (high - low);
    double upper = low + golden * (high - low);
    double atLower = property(lower), atUpper = property(upper);
    for (int i = 1; i <= n; ++i) {
        if (atLower < atUpper) {
            high = upper;
            upper = lower;
            atUpper = atLower;
            lower = low + complement * (high - low);
            atLower = property(lower);
        } else {
            low = lower;
            lower = upper;
            atLower = atUpper;
            upper = low + golden * (high - low);
            atUpper = property(upper);
        }
    }
    rho = 0.5 * (low + high);
    value = sign * std::max(atLower, atUpper);
}

}  // namespace frigana
