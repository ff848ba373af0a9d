// Fugacities and chemical potentials.
//
// Common to all routines:
//   Given     t       temperature [K]
//             rho     density [mol/L]
//             x       mole fractions
// State: none.
#pragma once

#include "EngineLimits.h"
#include "PHIDERV.h"

namespace frigana {

// Fugacities by numerical differentiation for a mixture, analytic for a pure fluid.
//   Returned  f       fugacity of each component [kPa]; 1e100 for a pure fluid and -9999970 for a component of a
//   mixture
//                     where the exponent is out of range; 0 for t <= 0 and for components of fraction 0
void FGCTY(double t, double rho, const Composition& x, Composition& f);

// Fugacities from the analytic composition derivatives; for a pure fluid, and where these are not known (the natural
// gas model, mixing rules other than KW), those of FGCTY.
//   Returned  f       [kPa]; all 0 for t <= 0 or rho below 1e-40; -9999970 where the exponent is out of range
//   Codes     those of PHIDERV but 191
void FGCTY2(double t, double rho, const Composition& x, Composition& f, int& ierr, Text255& herr);

// Fugacity coefficients.
//   Returned  phi     f / (x p); 0 where p or the fraction is not positive
//   Codes     those of FGCTY2
void FUGCOF(double t, double rho, const Composition& x, Composition& phi, int& ierr, Text255& herr);

// Chemical potentials.
//   Returned  u       [J/mol]; the Gibbs energy for a pure fluid
//   Codes     those of PHIDERV but 191
//   Notes     Without analytic derivatives the residual part comes from differences, as in FGCTY.
void CHEMPOT(double t, double rho, const Composition& x, Composition& u, int& ierr, Text255& herr);

}  // namespace frigana
