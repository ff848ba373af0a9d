// Symbols: aij is tau^i del^j times the derivative of the residual Helmholtz energy of order i in tau and j in del, ii0
// the same of the ideal gas.
#include "PureOnePhase.h"

#include <algorithm>
#include <cmath>

#include "ReducedState.h"

namespace frigana {

CaloricState caloricState(char letter, double T, double D, const Composition& z) {
    const ReducedState state(T, D, z);
    const double R = state.R, RT = state.RT;
    const double a01 = state.residual(0, 1), a02 = state.residual(0, 2);
    const double a10 = state.residual(1, 0), a11 = state.residual(1, 1), a20 = state.residual(2, 0);
    const double i10 = state.ideal(1, T, D), i20 = state.ideal(2, T, D);
    CaloricState at{};
    at.T = T;
    at.D = D;
    at.p = RT * D * (1.0 + a01);
    at.pT = R * D * (1.0 + a01 - a11);
    at.pD = RT * (1.0 + 2.0 * a01 + a02);
    const double cv = -R * (a20 + i20);
    if (letter == 'S') {
        const double a00 = state.residual(0, 0), i00 = state.ideal(0, T, D);
        at.value = R * (i10 + a10 - i00 - a00) - state.entropyOffset();
        at.valueT = cv / T;
        at.valueD = -at.pT / (D * D);
        return at;
    }
    at.value = RT * (i10 + a10) - state.enthalpyOffset();
    at.valueT = cv;
    at.valueD = (at.p - T * at.pT) / (D * D);
    if (letter == 'H') {
        at.value += RT * (1.0 + a01);
        at.valueT += at.pT / D;
        at.valueD = (at.pD - T * at.pT / D) / D;
    }
    return at;
}

bool newtonOnIsobar(char letter, double p, double b, const Composition& z, CaloricState& here) {
    constexpr int mostSteps = 20;
    constexpr double lastStep = 1e-8;       // of T and D: after it the error is of the order of its square
    constexpr double longestT = 0.25;       // [T]
    constexpr double longestDensity = 0.4;  // of the logarithm of density
    for (int step = 1; step <= mostSteps; ++step) {
        const double alongIsobar = here.alongIsobar();
        if (!(here.pD > 0.0 && alongIsobar > 0.0)) return false;
        const double missingP = p - here.p;
        double byT = (b - here.value - here.valueD * missingP / here.pD) / alongIsobar / here.T;
        double byD = (missingP - here.pT * byT * here.T) / (here.pD * here.D);
        if (!std::isfinite(byT) || !std::isfinite(byD)) return false;
        const bool done = std::fabs(byT) < lastStep && std::fabs(byD) < lastStep;
        const double part = 1.0 / std::max({1.0, std::fabs(byT) / longestT, std::fabs(byD) / longestDensity});
        byT *= part;
        byD *= part;
        here.T *= 1.0 + byT;
        here.D *= std::fabs(byD) < 0.1 ? 1.0 + byD : std::exp(byD);
        if (done) return true;
        here = caloricState(letter, here.T, here.D, z);
    }
    return false;
}

bool newtonAtEntropy(char letter, double given, double s, const Composition& z, double& T, double& D) {
    constexpr int mostSteps = 25;
    constexpr double lastStep = 1e-8, longestT = 0.2, longestDensity = 0.4;
    for (int step = 1; step <= mostSteps; ++step) {
        const CaloricState byB = caloricState(letter, T, D, z), byS = caloricState('S', T, D, z);
        const double determinant = byB.valueT * byS.valueD - byB.valueD * byS.valueT;
        if (!(byB.pD > 0.0 && byS.valueT > 0.0) || determinant == 0.0) return false;
        const double missingB = given - byB.value, missingS = s - byS.value;
        double byT = (missingB * byS.valueD - byB.valueD * missingS) / (determinant * T);
        double byD = (byB.valueT * missingS - missingB * byS.valueT) / (determinant * D);
        if (!std::isfinite(byT) || !std::isfinite(byD)) return false;
        const bool done = std::fabs(byT) < lastStep && std::fabs(byD) < lastStep;
        const double part = 1.0 / std::max({1.0, std::fabs(byT) / longestT, std::fabs(byD) / longestDensity});
        T *= 1.0 + part * byT;
        D *= std::fabs(byD) < 0.1 ? 1.0 + part * byD : std::exp(part * byD);
        if (done) return true;
    }
    return false;
}

}  // namespace frigana
