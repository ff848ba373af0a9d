// Inverses of the ancillary equations: temperature at a pressure or density of saturation.
// State: none.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Temperature at a vapor pressure, and at a liquid pressure.
//   Given     p       pressure [kPa]
//             x       mole fractions
//   Returned  t       temperature [K]; TCRIT with codes 2 and 141, TTPN with code 1
//   Codes     1       pressure below that of the triple point
//             2       no equation
//             141     pressure above the critical one
//             other   those of SOLVEA
void TSATP(double p, const Composition& x, double& t, int& ierr, Text255& herr);
void TSATPL(double p, const Composition& x, double& t, int& ierr, Text255& herr);

// Temperature at a density of saturation: of the liquid from the critical density on, of the vapor below.
//   Given     d       density [mol/L]
//   Returned  t       temperature [K]; TTPN with code 1
//   Codes     1       no equation
//             141     density above that of the triple point; the iteration is tried all the same, and its code is the
//                     one that is returned
//             other   those of SOLVEA
//   Notes     For a mixture the density is that of the liquid.
void TSATD(double d, const Composition& x, double& t, int& ierr, Text255& herr);

// Newton iteration of these inverses, with a numerical slope.
//   Given     mode    0 vapor pressure, 1 liquid density, 2 vapor density, 4 liquid pressure
//             y       value wanted
//             x       mole fractions
//   Returned  t       temperature [K]; -9999990 if the iteration does not converge
//   Codes     124     no convergence in 50 iterations
//             other   those of the ancillary equation
//   Notes     The temperature stays between the lower limit of the equations and the critical temperature. Within
//             0.002 K of the latter the iteration need not converge.
void SOLVEA(int mode, double y, const Composition& x, double& t, int& ierr, Text255& herr);

}  // namespace frigana
