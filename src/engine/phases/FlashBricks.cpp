#include "FlashBricks.h"

#include <cmath>

#include "FluidConstants.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"

namespace frigana {

std::string_view innerText(const Text255& text) {
    std::string_view inner = text.trimmed();
    while (!inner.empty() && (inner.back() == '\0' || inner.back() == ' ')) inner.remove_suffix(1);
    return inner;
}

bool isPseudoPure(int icomp) {
    return icomp > 0 && modelTags.IANC[icomp] == 1;
}

double propertyByLetter(char letter, double T, double D, const Composition& z) {
    double value = 0;
    switch (letter) {
        case 'H':
            ENTHAL(T, D, z, value);
            break;
        case 'S':
            ENTRO(T, D, z, value);
            break;
        case 'E':
            ENERGY(T, D, z, value);
            break;
        default:
            PRESS(T, D, z, value);
            break;
    }
    return value;
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

void saturationAtT(double T, const Composition& z, int kph, SaturatedPair& pair) {
    pair.T = T;
    SATT(T, z, kph, pair.p, pair.Dl, pair.Dv, pair.x, pair.y, pair.ierr, pair.herr);
}

void saturationAtP(double p, const Composition& z, int kph, SaturatedPair& pair) {
    pair.p = p;
    SATP(p, z, kph, pair.T, pair.Dl, pair.Dv, pair.x, pair.y, pair.ierr, pair.herr);
}

void compositionsAtQuality(double q, const Composition& z, const Composition& xdew, const Composition& ybub,
                           Composition& x, Composition& y) {
    for (int i = 1; i <= modelTags.NC; ++i) {
        x[i] = (1 - q) * z[i] + q * xdew[i];
        y[i] = q * z[i] + (1 - q) * ybub[i];
    }
    normalize(x);
    normalize(y);
}

void normalize(Composition& x) {
    double sum = 0;
    for (int i = 1; i <= modelTags.NC; ++i) sum += x[i];
    if (std::abs(sum) < 1e-20) return;
    for (int i = 1; i <= modelTags.NC; ++i) x[i] /= sum;
}

double bulkDensity(double q, double Dl, double Dv) {
    return 1 / ((1 - q) / Dl + q / Dv);
}

double volumeQuality(double D, double Dl, double Dv) {
    return (1 / D - 1 / Dl) / (1 / Dv - 1 / Dl);
}

double regionQuality(double T, double p, double D, double Tc, double Pc, double Dc) {
    if (p > Pc) return T > Tc ? supercriticalOrNone : subcooledLiquid;
    if (T > Tc) return superheatedVapor;
    return D > Dc ? subcooledLiquid : superheatedVapor;
}

}  // namespace frigana
