#include "FlashBricks.h"

#include <cmath>

#include "FluidConstants.h"
#include "LIMITS.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

bool isPseudoPure(int icomp) {
    return icomp > 0 && modelTags.IANC[icomp] == 1;
}

PhaseProperties propertiesOf(double T, double D, const Composition& z) {
    PhaseProperties phase{};
    double jouleThomson = 0;
    THERM(T, D, z, phase.p, phase.e, phase.h, phase.s, phase.cv, phase.cp, phase.w, jouleThomson);
    return phase;
}

double chosenProperty(char letter, const PhaseProperties& phase) {
    switch (letter) {
        case 'H':
            return phase.h;
        case 'S':
            return phase.s;
        case 'E':
            return phase.e;
        default:
            return phase.p;
    }
}

double rising(char letter, const FlashResult& r) {
    switch (letter) {
        case 'H':
            return r.h;
        case 'S':
            return r.s;
        case 'E':
            return r.e;
        default:
            return 1 / r.D;
    }
}

void clear(FlashResult& r, int icomp, const Composition& z) {
    r.D = r.Dl = r.Dv = 0;
    r.q = supercriticalOrNone;
    r.e = r.h = r.s = r.cv = r.cp = r.w = 0;
    r.x = bulkComposition(icomp, z);
    r.y = r.x;
    r.ierr = 0;
    r.herr.clear();
}

int openFlash(const Composition& z, FlashResult& r) {
    int icomp = 0;
    ISPURE(z, icomp);
    RMIX(z);
    clear(r, icomp, z);
    return icomp;
}

bool refuseInputs(std::string_view ab, std::initializer_list<GivenInput> inputs, FlashResult& r) {
    for (const GivenInput& input : inputs) {
        const bool aboveZero = input.letter == 'T' || (input.letter == 'D' && ab != "TD");
        if (std::isfinite(input.value) && (!aboveZero || input.value > 0)) continue;
        noState(r);
        r.ierr = input.code;
        message(r.herr, "[", ab, "FLSH error", Integer{4, input.code}, "] input is not a finite number",
                aboveZero ? " above zero" : "", "; ", std::string_view(&input.letter, 1), " =",
                General{12, 5, input.value}, nullCharacter);
        ERRMSG(r.ierr, r.herr);
        return true;
    }
    return false;
}

void noState(FlashResult& r) {
    r.D = r.Dl = r.Dv = 0;
    r.q = supercriticalOrNone;
}

void fillProperties(const PhaseProperties& phase, FlashResult& r) {
    r.e = phase.e;
    r.h = phase.h;
    r.s = phase.s;
    r.cv = phase.cv;
    r.cp = phase.cp;
    r.w = phase.w;
}

double fillSinglePhase(double T, double D, const Composition& z, FlashResult& r) {
    r.D = r.Dl = r.Dv = D;
    const PhaseProperties phase = propertiesOf(T, D, z);
    fillProperties(phase, r);
    return phase.p;
}

PhasePressures fillTwoPhase(double T, FlashResult& r) {
    const PhaseProperties liquid = propertiesOf(T, r.Dl, r.x);
    const PhaseProperties vapor = propertiesOf(T, r.Dv, r.y);
    r.D = bulkDensity(r.q, r.Dl, r.Dv);
    r.e = (1 - r.q) * liquid.e + r.q * vapor.e;
    r.h = (1 - r.q) * liquid.h + r.q * vapor.h;
    r.s = (1 - r.q) * liquid.s + r.q * vapor.s;
    r.cv = r.cp = r.w = twoPhaseValue;
    return {liquid.p, vapor.p};
}

void reportError(std::string_view ab, int code, std::string_view what, const Text255& inner, int& ierr, Text255& herr) {
    ierr = code;
    message(herr, "[", ab, "FLSH error ", Integer{3, code}, "] ", what, innerText(inner), nullCharacter);
    ERRMSG(ierr, herr);
}

bool criticalPoint(std::string_view ab, int code, const Composition& z, CriticalPoint& critical, FlashResult& r) {
    Text255 inner;
    critical = criticalPointOf(z, r.ierr, inner);
    if (r.ierr > 0) {
        reportError(ab, code, "", inner, r.ierr, r.herr);
        return false;
    }
    r.ierr = 0;
    return true;
}

EosLimits limitsAt(double T, double D, double p, const Composition& z) {
    EosLimits limits;
    LIMITX("EOS", T, D, p, z, limits.tmin, limits.tmax, limits.Dmax, limits.pmax, limits.code, limits.text);
    return limits;
}

void reportLimits(std::string_view ab, const EosLimits& limits, FlashResult& r, int columns) {
    if (limits.code == 0) return;
    r.ierr = limits.code;
    message(r.herr, "[", ab, limits.code < 0 ? "FLSH warning" : "FLSH error", Integer{columns, limits.code}, "] ",
            innerText(limits.text), nullCharacter);
    ERRMSG(r.ierr, r.herr);
}

void saturationAtT(double T, const Composition& z, int kph, SaturatedPair& pair) {
    pair.T = T;
    SATT(T, z, kph, pair.p, pair.Dl, pair.Dv, pair.x, pair.y, pair.ierr, pair.herr);
}

void saturationAtP(double p, const Composition& z, int kph, SaturatedPair& pair) {
    pair.p = p;
    SATP(p, z, kph, pair.T, pair.Dl, pair.Dv, pair.x, pair.y, pair.ierr, pair.herr);
}

double regionQuality(double T, double p, double D, const CriticalPoint& critical) {
    if (p > critical.p) return T > critical.T ? supercriticalOrNone : subcooledLiquid;
    if (T > critical.T) return superheatedVapor;
    return D > critical.D ? subcooledLiquid : superheatedVapor;
}

PhasePair pairOf(const SaturatedPair& line, double q) {
    PhasePair pair = line;
    pair.q = q;
    return pair;
}

void takePair(const PhasePair& pair, FlashResult& r) {
    r.T = pair.T;
    r.p = pair.p;
    r.Dl = pair.Dl;
    r.Dv = pair.Dv;
    r.x = pair.x;
    r.y = pair.y;
}

}  // namespace frigana
