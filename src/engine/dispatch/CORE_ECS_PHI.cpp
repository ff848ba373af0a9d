#include "CORE_ECS_PHI.h"

#include "CORE_BWR.h"
#include "CORE_ECS.h"
#include "CORE_FEQ.h"
#include "FluidConstants.h"
#include "ModelTags.h"

namespace frigana {

namespace {

// x^i y^j times the derivatives of a function of two variables, for the orders of the chain rule.
struct Scaled {
    double v10, v01, v20, v11, v02;
};

// The operators above for a shape factor, over tau and del: d/dtau at constant del is -(t/tau) d/dt.
Scaled overTauAndDel(const ShapeFactor& s, double t, double rho) {
    return {-t * s.dT, rho * s.dD, t * t * s.dTT + 2.0 * t * s.dT, -t * rho * s.dTD, rho * rho * s.dDD};
}

}  // namespace

double PHIECS(int icomp, int itau, int idel, double tau, double del) {
    if (del <= 1e-10 || tau <= 0.0) return 0.0;
    if (itau < 0 || idel < 0 || itau + idel > 2) return 0.0;
    const int reference = -icomp;
    const Text3& tag = modelTags.HMXEOS[reference];
    const bool benedict = tag == "BWR";
    if (!benedict && !tag.startsWith("FE")) return 0.0;
    const double t0 = fluidConstants.TZ[reference], d0 = fluidConstants.RHOZ[reference];
    if (!(t0 > 0.0) || !(d0 > 0.0) || !(fluidConstants.TCRIT[reference] > 0.0)) return 0.0;

    const double t = fluidConstants.TCRIT[icomp] / tau;
    const double rho = fluidConstants.DCRIT[icomp] * del;
    ShapeFactor f, h;
    FJ(icomp, t, rho, f);
    HJ(icomp, t, rho, h);

    // conformal state of the reference fluid
    const double tau0 = t0 / t * f.value;
    const double del0 = rho * h.value / d0;
    if (!(del0 > 0.0) || !(tau0 > 0.0)) return 0.0;
    const auto phi = [&](int i, int j) {
        return benedict ? PHIBWR(reference, i, j, tau0, del0) : PHIFEQ(reference, i, j, tau0, del0);
    };
    if (itau == 0 && idel == 0) return phi(0, 0);

    // relative derivatives of tau0, which is proportional to tau f, and of del0, proportional to del h
    const Scaled sf = overTauAndDel(f, t, rho);
    const Scaled sh = overTauAndDel(h, t, rho);
    const double a10 = 1.0 + sf.v10 / f.value, a01 = sf.v01 / f.value;
    const double b10 = sh.v10 / h.value, b01 = 1.0 + sh.v01 / h.value;
    if (itau == 1 && idel == 0) return phi(1, 0) * a10 + phi(0, 1) * b10;
    if (itau == 0 && idel == 1) return phi(1, 0) * a01 + phi(0, 1) * b01;

    const double p20 = phi(2, 0), p11 = phi(1, 1), p02 = phi(0, 2), p10 = phi(1, 0), p01 = phi(0, 1);
    if (itau == 2) {
        const double a20 = (2.0 * sf.v10 + sf.v20) / f.value, b20 = sh.v20 / h.value;
        return p20 * a10 * a10 + 2.0 * p11 * a10 * b10 + p02 * b10 * b10 + p10 * a20 + p01 * b20;
    }
    if (idel == 2) {
        const double a02 = sf.v02 / f.value, b02 = (2.0 * sh.v01 + sh.v02) / h.value;
        return p20 * a01 * a01 + 2.0 * p11 * a01 * b01 + p02 * b01 * b01 + p10 * a02 + p01 * b02;
    }
    const double a11 = (sf.v01 + sf.v11) / f.value, b11 = (sh.v10 + sh.v11) / h.value;
    return p20 * a10 * a01 + p11 * (a10 * b01 + a01 * b10) + p02 * b10 * b01 + p10 * a11 + p01 * b11;
}

}  // namespace frigana
