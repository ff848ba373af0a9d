// Composition derivatives of the Helmholtz energy of a mixture, and of the fugacities that follow from them.
//
// State: compositionDerivatives, written by PHIDERV alone.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Derivatives in the fractions are formal ones, in one fraction with all others kept: sums of them along a change of
// composition that keeps the sum of the fractions are those of the mixture. Components of fraction 0 have zeros.
struct CompositionDerivatives {
    using Matrix = ComponentArray<Composition>;

    // by PHIDERV(1, ...) and PHIDERV(2, ...)
    double p;           // [kPa]
    Composition DADN;   // n d(phi)/dn(i) at constant temperature and volume
    Composition DNADN;  // d(n phi)/dn(i), the logarithm of f(i) / (x(i) rho R T)
    Composition XLNFI;  // ln of the fugacity [kPa]

    // by PHIDERV(2, ...)
    double dPdD, dPdT;      // [kPa L/mol, kPa/K]
    Composition DPHIDT;     // d ln f(i) / dT at constant pressure and composition [1/K]
    Composition DPHIDP;     // d ln f(i) / dp at constant temperature and composition [1/kPa]
    Composition DLNFINIDT;  // d ln(f(i)/n(i)) / dT at constant volume and amounts [1/K]
    Composition DLNFINIDV;  // n d ln(f(i)/n(i)) / dV at constant temperature and amounts [mol/L]
    Composition DPDXI;      // dp / dx(i) at constant temperature and density [kPa]
    Matrix DPHIDXJ;         // [j][i] d ln f(i) / dx(j) at constant temperature and pressure
    Matrix DLNPHIIDXJ;      // [j][i] the same of the fugacity coefficient
    Matrix DPHIDNJ;         // [j][i] n d ln phi(i) / dn(j) at constant temperature and pressure
    Matrix D2ADNN;          // [j][i] n d DNADN(i) / dn(j) at constant temperature and volume
};

extern CompositionDerivatives compositionDerivatives;

// Composition derivatives of the residual Helmholtz energy at constant temperature and volume.
//   Given     iderv    1 first derivatives; 2 the second ones too, with those in temperature, pressure and density
//             t        [K]
//             rho      [mol/L]
//             x        mole fractions
//   Returned  dalpha   n d(phi)/dn(i)
//             dnalpha  d(n phi)/dn(i); for a pure fluid a01 and a00 + a01
//             compositionDerivatives, for a mixture
//   Codes     1        residual pressure not above that of the vacuum (a01 <= -1), or the cubic model gave no
//                      derivatives
//             190, 191 those of RDXHMX: no rule for a pair, no derivative of the reducing functions; 191 also for
//                      the natural gas model, and for second derivatives of the cubic one
//   Notes     The gas constant is that of the composition, and the derivatives hold its change.
//   Source    O. Kunz, R. Klimeck, W. Wagner, M. Jaeschke, GERG Technical Monograph 15 (2007), section 7.4;
//             J. Gernert, A. Jaeger, R. Span, Fluid Phase Equilib. 375 (2014) 209
void PHIDERV(int iderv, double t, double rho, const Composition& x, Composition& dalpha, Composition& dnalpha,
             int& ierr, Text255& herr);

}  // namespace frigana
