// Saturation of a pure fluid.
#pragma once

#include "CriticalPoint.h"

namespace frigana {

// Where the searches start: pressure [kPa] and densities [mol/L] by corresponding states.
struct PureEstimates {
    double p, rhol, rhov;
};
PureEstimates estimatesAtTemperature(double T, double acentric, const CriticalPoint& critical);

// Saturation of a pure fluid at given temperature: Newton's method in both densities, and where that does not end,
// successive pressures with the densities of both phases; close to the critical point, or where these fail, densities
// held between the spinodals.
//   Given     T, x, icomp, kph   as SATT; T below the critical temperature
//             critical           critical point
//             liquidEstimate, vaporEstimate  [mol/L]
//             p                  estimate [kPa]
//   Returned  p, rhol, rhov      [kPa, mol/L]
//   Codes     124
void pureAtTemperature(double T, const Composition& x, int icomp, int kph, const CriticalPoint& critical,
                       double liquidEstimate, double vaporEstimate, double& p, double& rhol, double& rhov, int& ierr,
                       Text255& herr);

// Saturation of a pure fluid at given pressure: Newton's method in temperature and both densities, and where that does
// not end, successive temperatures with the densities of both phases; where these fail, a secant on the pressure of a
// temperature.
//   Given     p, x, icomp, kph   as SATP; p below the critical pressure
//             acentric           acentric factor
//   Returned  T, rhol, rhov      [K, mol/L]
//   Codes     144
void pureAtPressure(double p, const Composition& x, int icomp, int kph, const CriticalPoint& critical, double acentric,
                    double& T, double& rhol, double& rhov, int& ierr, Text255& herr);

}  // namespace frigana
