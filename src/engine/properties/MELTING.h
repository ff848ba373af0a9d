// Melting and sublimation lines of a composition and their inverses.
// State: none.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Melting pressure of a composition.
//   Given     t       temperature [K]
//             x       mole fractions
//   Returned  p       [kPa]; 0 where a component has no melting line
//   Codes     those of MELTK
//   Notes     Mixtures: every component at the same temperature relative to its triple point, the logarithms of the
//             pressures relative to the triple point averaged.
void MELTT(double t, const Composition& x, double& p, int& ierr, Text255& herr);

// Melting temperature of a composition.
//   Given     p       pressure [kPa]
//             x       mole fractions
//   Returned  t       [K]; the triple point of a fluid without a melting line
//   Codes     2       pressure below the triple point's: t is the triple point
//             124     not converged: t is -9999990
void MELTP(double p, const Composition& x, double& t, int& ierr, Text255& herr);

// Sublimation pressure of a composition; arguments and mean as MELTT, codes those of SUBLK.
void SUBLT(double t, const Composition& x, double& p, int& ierr, Text255& herr);

// Sublimation temperature of a composition.
//   Given     p       pressure [kPa]
//             x       mole fractions
//   Returned  t       [K]; 300 for a pressure that is not positive
//   Codes     2       pressure above the triple point's: t is the triple point
//             124     not converged: t is -9999990
void SUBLP(double p, const Composition& x, double& t, int& ierr, Text255& herr);

// Temperature at which the melting (mode 1) or sublimation (mode 2) pressure is p, by Newton's method on logarithms
// with a numerical slope.
//   Given     mode    1 melting, 2 sublimation
//             p       pressure [kPa]
//             x       mole fractions
//   Returned  t       [K]
//   Codes     124     not converged: t is -9999990
//   Notes     Water has two lines at one pressure range: up to the highest pressure of ice I the temperature on that
//             line is returned, above it that on the lines of the denser ices. Between the pressure of the triple point
//             and the first value of a melting line the triple point is answered.
void SOLVEM(int mode, double p, const Composition& x, double& t, int& ierr, Text255& herr);

}  // namespace frigana
