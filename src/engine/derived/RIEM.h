// Geometry of the thermodynamic state space.
// State: none.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Riemannian curvature scalar of the metric of fluctuations in temperature and density.
//   Given     t       temperature [K]
//             rho     density [mol/L]
//             x       mole fractions
//   Returned  r       curvature [nm^3 per molecule], negative where attraction prevails; 0 for rho below 1e-8 or t <= 0
//   Source    Ruppeiner, Rev. Mod. Phys. 67 (1995) 605; sign as in Ruppeiner, Phys. Rev. E 86 (2012) 021130
void RIEM(double t, double rho, const Composition& x, double& r);

}  // namespace frigana
