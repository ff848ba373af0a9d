// Spinodals, and densities held on one side of them.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Density at given temperature and pressure, held between two bounds, by Newton's method.
//   Given     T, p    [K, kPa]
//             rho1, rho2  bounds in any order [mol/L]
//             x       mole fractions
//   Returned  rho     [mol/L]
//   Codes     1       not converged in 24 steps
void TPRHOB(double T, double p, double rho1, double rho2, const Composition& x, double& rho, int& ierr, Text255& herr);

// Density of the liquid spinodal, where dp/drho is zero.
//   Given     T       [K]
//             x       mole fractions
//             rho     start [mol/L]; not positive: from the table of SETLSPNDL, or the triple point density
//   Returned  rho     [mol/L]
//   Codes     121     above the critical temperature (pure fluid)
//             124     not converged (rho is the critical density)
void LIQSPNDL(double T, const Composition& x, double& rho, int& ierr, Text255& herr);

// Density of the vapor spinodal; as LIQSPNDL, with the table of SETVSPNDL or 0.1 mol/L as start.
void VAPSPNDL(double T, const Composition& x, double& rho, int& ierr, Text255& herr);

// Tabulates the liquid spinodal of a pure fluid from the triple point to the critical point for LIQSPNDL.
//   Given     icomp   component slot
//   Codes     1       the fluid is not pure
//             2       fewer than 5 points converged (no table)
void SETLSPNDL(int icomp, int& ierr, Text255& herr);

// Tabulates the vapor spinodal of a pure fluid from three quarters of the triple point to the critical point for
// VAPSPNDL; arguments and codes as SETLSPNDL.
void SETVSPNDL(int icomp, int& ierr, Text255& herr);

// Forgets the tables of SETLSPNDL and SETVSPNDL.
void resetSpinodalTables();

}  // namespace frigana
