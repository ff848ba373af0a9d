// Characteristic curves of a pure fluid: the temperature at which a state of given density lies on the ideal curve, the
// Boyle curve, the Joule-Thomson inversion curve or the Joule inversion curve.
// State: none.
//
// Common to all routines:
//   Given     rho     density [mol/L]
//             x       mole fractions of a pure fluid
//             t       start of the search [K]; 0: 1.5 times the reducing temperature (Joule inversion: 10 times)
//   Returned  t       temperature on the curve [K]; 0 where the search fails
//   Codes     1       a mixture
//   Notes     Newton steps in temperature down to 1e-8 in the curve's condition.
//   Source    E. H. Brown, Bull. Int. Inst. Refrig., Paris, Annexe 1960-1961, 169; R. Span, W. Wagner, Int. J.
//             Thermophys. 18 (1997) 1415
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Ideal curve: the compressibility factor is 1.
void IDCRV(double rho, const Composition& x, double& t, int& ierr, Text255& herr);

// Boyle curve: the compressibility factor does not change with density at constant temperature. A start that is not
// positive counts as 0.
void BLCRV(double rho, const Composition& x, double& t, int& ierr, Text255& herr);

// Joule-Thomson inversion curve: temperature does not change with pressure at constant enthalpy.
void JTCRV(double rho, const Composition& x, double& t, int& ierr, Text255& herr);

// Joule inversion curve: temperature does not change with density at constant internal energy. A start that is not
// positive counts as 0.
void JICRV(double rho, const Composition& x, double& t, int& ierr, Text255& herr);

}  // namespace frigana
