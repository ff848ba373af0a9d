// Static dielectric constant from temperature and density.
// State: none.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Dielectric constant of a component.
//   Given     icomp   component slot
//             t       temperature [K]
//             rho     density [mol/L]
//   Returned  de      1 below 1e-12 mol/L; 0 where a form is not defined (negative pressure in DE1, t below a pole in
//   DE2) Codes     1       no dielectric model: de is -9999990 Source    DE2: D. P. Fernandez et al., J. Phys. Chem.
//   Ref. Data 26 (1997) 1125 (the form for water);
//             DE3, DE4: A. H. Harvey, E. W. Lemmon, Int. J. Thermophys. 26 (2005) 31
void DEK(int icomp, double t, double rho, double& de, int& ierr, Text255& herr);

// Dielectric constant of a composition.
//   Given     t       temperature [K]
//             rho     density [mol/L]
//             x       mole fractions
//   Returned  de      0 where a component has none; -9999000 where the mixture model is unknown
//   Notes     Mixtures: the polarizations of the components, each at the same reduced density, weighted by volume.
//   Source    A. H. Harvey, J. M. Prausnitz, J. Solution Chem. 16 (1987) 857
void DIELEC(double t, double rho, const Composition& x, double& de);

}  // namespace frigana
