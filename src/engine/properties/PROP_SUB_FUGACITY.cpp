#include "PROP_SUB_FUGACITY.h"

#include <cmath>

#include "CORE_BWR.h"
#include "PHIDERV.h"
#include "PROP_SUB.h"
#include "ReducedState.h"

namespace frigana {

namespace {

constexpr double smallestFugacityDensity = 1e-40;
constexpr double largestExponent = 100.0;  // of a fugacity coefficient in a mixture

double fugacityOfPure(const ReducedState& state, double t, double rho) {
    const double idealPressure = state.RT * rho;
    if (directBWR())
        return idealPressure * std::exp(ABWR(1, t, rho) / state.RT + PBWR(1, t, rho) / idealPressure - 1.0);
    const double exponent = state.residual(0, 0) + state.residual(0, 1);
    return std::fabs(exponent) < 500.0 ? idealPressure * std::exp(exponent) : 1e100;
}

double fugacityInMixture(double x, double idealPressure, double exponent) {
    return std::fabs(exponent) < largestExponent ? x * idealPressure * std::exp(exponent) : fugacityOutOfRange;
}

// Amount of substance times residual Helmholtz energy after the amount of component i changed by d, at the same
// temperature and volume.
double energyAfterStep(double t, double rho, const Composition& x, int i, double d) {
    Composition changed = x;
    changed[i] += d;
    for (int k = 1; k <= modelTags.NC; ++k) changed[k] /= 1.0 + d;
    double tz = 0.0, rhoz = 0.0;
    REDX(changed, tz, rhoz);
    return (1.0 + d) * PHIX(0, 0, tz / t, rho * (1.0 + d) / rhoz, changed);
}

// Derivative of that energy in the amount of component i by differences.
double energySlope(double t, double rho, const Composition& x, int i, double part) {
    double d = 0.0001;
    if (x[i] < 0.0001) d = x[i] / 2.0;
    if (x[i] > 1.0 - 0.0001) d = (1.0 - x[i]) / 2.0;
    d *= part;
    return (energyAfterStep(t, rho, x, i, d) - energyAfterStep(t, rho, x, i, -d)) / (2.0 * d);
}

// A model or mixing rule whose derivatives in the fractions are not known.
constexpr int noDerivatives = 191;

}  // namespace

void FGCTY(double t, double rho, const Composition& x, Composition& f) {
    f.fill(0.0);
    if (t <= 0.0 || rho < smallestFugacityDensity) return;
    const ReducedState state(t, rho, x);
    if (state.pure > 0) {
        f[state.pure] = fugacityOfPure(state, t, rho);
        return;
    }
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (x[i] <= 0.0) continue;
        f[i] = fugacityInMixture(x[i], state.RT * rho, energySlope(t, rho, x, i, 1.0));
    }
}

void FGCTY2(double t, double rho, const Composition& x, Composition& f, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    f.fill(0.0);
    if (t <= 0.0 || rho < smallestFugacityDensity) return;
    int icomp = 0;
    ISPURE(x, icomp);
    if (icomp > 0) return FGCTY(t, rho, x, f);
    Composition dalpha, dnalpha;
    PHIDERV(1, t, rho, x, dalpha, dnalpha, ierr, herr);
    if (ierr == noDerivatives) {
        ierr = 0;
        herr.clear();
        return FGCTY(t, rho, x, f);
    }
    if (ierr > 0) return;
    for (int i = 1; i <= modelTags.NC; ++i)
        if (x[i] > 0.0) f[i] = fugacityInMixture(x[i], fluidConstants.R * t * rho, dnalpha[i]);
}

void FUGCOF(double t, double rho, const Composition& x, Composition& phi, int& ierr, Text255& herr) {
    phi.fill(0.0);
    Composition f;
    FGCTY2(t, rho, x, f, ierr, herr);
    if (ierr > 0) return;
    double p = 0.0;
    PRESS(t, rho, x, p);
    if (p <= 0.0) return;
    int icomp = 0;
    ISPURE(x, icomp);
    if (icomp > 0) {
        phi[icomp] = f[icomp] / p;
        return;
    }
    for (int i = 1; i <= modelTags.NC; ++i)
        if (x[i] > 0.0) phi[i] = f[i] / (x[i] * p);
}

void CHEMPOT(double t, double rho, const Composition& x, Composition& u, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    u.fill(0.0);
    if (t <= 0.0) return;
    int icomp = 0;
    ISPURE(x, icomp);
    if (icomp > 0) {
        double A = 0.0;
        AG(t, rho, x, A, u[icomp]);
        return;
    }
    Composition dalpha, dnalpha;
    PHIDERV(1, t, rho, x, dalpha, dnalpha, ierr, herr);
    if (ierr == noDerivatives) {
        ierr = 0;
        herr.clear();
        // two steps, whose leading errors cancel: the mean of the potentials is the Gibbs energy to ten digits
        for (int i = 1; i <= modelTags.NC; ++i)
            if (x[i] > 0.0) dnalpha[i] = (4.0 * energySlope(t, rho, x, i, 1.0) - energySlope(t, rho, x, i, 2.0)) / 3.0;
    }
    if (ierr > 0) return;
    const double R = fluidConstants.R, RT = R * t;
    // the derivative of n phi, not of phi alone, makes the mole-fraction mean of the potentials the Gibbs energy
    for (int i = 1; i <= modelTags.NC; ++i)
        if (x[i] > 0.0)
            u[i] = RT * (dnalpha[i] + PHI0K(i, 0, 0, t, rho) - referenceState.HREF[i] / RT +
                         referenceState.SREF[i] / R + 1.0 + std::log(x[i]));
}

}  // namespace frigana
