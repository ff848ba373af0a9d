// Helmholtz energy of a fluid by extended corresponding states, from the equation of its reference fluid.
// State: none; the caches are those of the reference fluid's equation.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Reduced residual Helmholtz energy and its derivatives.
//   Given     icomp       component slot; slot -icomp holds the reference fluid
//             itau, idel  orders of the derivative: (0,0) (0,1) (0,2) (1,0) (2,0) (1,1); others return 0
//             tau, del    Tc/t and rho/rhoc of the fluid
//   Returned  (value)     tau^itau del^idel times the derivative; 0 for del <= 1e-10, tau <= 0, a conformal state
//   outside
//                         the reference's domain, and a reference of another model than BWR or FEQ
//   Notes     phi(t, rho) = phi0(t/f, rho h), with the shape factors f and h of FJ and HJ.
double PHIECS(int icomp, int itau, int idel, double tau, double del);

}  // namespace frigana
