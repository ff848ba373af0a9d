// Results that rest on the saturation of a pure fluid: heat capacity along the saturation lines, two-phase isochoric
// heat capacity, and coexistence by equal areas.
// State: none; IPUREFLD is set to the component for the length of a call.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Heat capacity along a saturation line.
//   Given     icomp   component slot
//             T       temperature [K]
//             kph     1 liquid line, 2 vapor line
//   Returned  p       saturation pressure [kPa]
//             rho     density of the phase [mol/L]
//             csat    T ds/dT along the line [J/(mol K)]
//   Codes     those of SATT, at least 1: all results are zero
//   Source    J. S. Rowlinson, F. L. Swinton, Liquids and Liquid Mixtures, 3rd ed., Butterworth 1982, ch. 2
void CSATK(int icomp, double T, int kph, double& p, double& rho, double& csat, int& ierr, Text255& herr);

// The same with the slope of the vapor pressure, dpdt [kPa/K], by the Clapeyron equation.
void DPTSATK(int icomp, double T, int kph, double& p, double& rho, double& csat, double& dpdt, int& ierr,
             Text255& herr);

// Isochoric heat capacity of a two-phase state.
//   Given     icomp   component slot
//             T       temperature [K]
//             rho     density [mol/L]; not positive: the saturated liquid's
//   Returned  cv2p    [J/(mol K)]
//             csat    heat capacity along the liquid line [J/(mol K)]
//   Codes     those of SATT, at least 1: both results are zero
//   Notes     Central differences over 0.01 K: T must stay that far below the critical temperature.
//   Source    J. S. Rowlinson, F. L. Swinton, as CSATK
void CV2PK(int icomp, double T, double rho, double& cv2p, double& csat, int& ierr, Text255& herr);

// Coexistence of an equation of state by equal areas in molar volume.
//   Given     icomp       component slot
//             T           temperature [K]
//             rhol, rhov  starting densities [mol/L]
//   Returned  p           [kPa]
//             rhol, rhov  [mol/L]
//   Codes     1           not converged: the three results are -1
//   Notes     The pressures of the phases agree to 1e-4 when the search ends; since each step is of second order, the
//             result is closer than that.
//   Source    Newton's method in two volumes on the conditions of equal pressure and Maxwell's equal areas
void MAXWELL(int icomp, double T, double& p, double& rhol, double& rhov, int& ierr, Text255& herr);

}  // namespace frigana
