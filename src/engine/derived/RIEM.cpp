#include "RIEM.h"

#include "DISPATCH.h"
#include "UTILITY.h"

// Symbols: aij is tau^i del^j times the derivative of the residual Helmholtz energy of order i in tau and j in del, ii0
// that of the ideal gas. The metric is diagonal: g = rho c / T^2 in temperature and f = dpd / rho in density, per mole,
// with c = cv/R and dpd = 1 + 2 a01 + a02.

namespace frigana {

void RIEM(double t, double rho, const Composition& x, double& r) {
    constexpr double avogadro = 6.0221367e+23;  // [1/mol]
    constexpr double cubicNanometresPerLitre = 1e24;
    r = 0.0;
    if (t <= 0.0 || rho < 1e-8) return;
    RMIX(x);
    double Tr = 0.0, Dr = 0.0;
    REDX(x, Tr, Dr);
    const double tau = Tr / t, del = rho / Dr;
    const double a01 = PHIX(0, 1, tau, del, x), a02 = PHIX(0, 2, tau, del, x), a03 = PHIX(0, 3, tau, del, x);
    const double a11 = PHIX(1, 1, tau, del, x), a20 = PHIX(2, 0, tau, del, x), a30 = PHIX(3, 0, tau, del, x);
    const double a12 = PHIX(1, 2, tau, del, x), a21 = PHIX(2, 1, tau, del, x);
    const double i20 = PHI0(2, 0, t, rho, x), i30 = PHI0(3, 0, t, rho, x);

    const double c = -(i20 + a20), dpd = 1.0 + 2.0 * a01 + a02;
    const double slopeOfC = 2.0 * (i20 + a20) + i30 + a30;  // T dc/dT
    const double mixed = 2.0 * a11 + a12;

    const double g = rho * c / (t * t), f = dpd / rho;
    const double gT = rho * (slopeOfC - 2.0 * c) / (t * t * t), gD = (c - a21) / (t * t);
    const double fT = -mixed / (rho * t), fD = (2.0 * a01 + 4.0 * a02 + a03 - dpd) / (rho * rho);
    // d2f/dT2 + d2g/drho2: both come from the fourth derivative of the energy, which cancels
    const double second = (-2.0 * (dpd - mixed) + 2.0 * dpd) / (rho * t * t);

    const double product = g * f;
    const double perMole =
        second / product - (fT * (gT * f + g * fT) + gD * (gD * f + g * fD)) / (2.0 * product * product);
    r = perMole * cubicNanometresPerLitre / avogadro;
}

}  // namespace frigana
