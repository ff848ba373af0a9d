// Properties of mixing: excess properties and activities. They compare a mixture with its pure components at the same
// temperature and pressure, so they stand above the flash routines.
// State: none of its own; ACTVY selects a component for a time (modelTags.IPUREFLD), and both leave the gas constant of
// the mixture in use.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Excess properties.
//   Given     t       temperature [K]
//             p       pressure [kPa]
//             x       mole fractions
//             kphase  1 liquid, 2 vapor, 0 the stable phase
//   Changed   rho     density of the mixture [mol/L]; a negative one on entry is a start of that size
//   Returned  vE      excess volume [L/mol]
//             eE, hE  excess energy, enthalpy [J/mol]
//             sE      excess entropy [J/(mol K)]
//             aE, gE  excess Helmholtz and Gibbs energy [J/mol]
//   Codes     those of TPFLSH
void EXCESS(double t, double p, const Composition& x, int kphase, double& rho, double& vE, double& eE, double& hE,
            double& sE, double& aE, double& gE, int& ierr, Text255& herr);

// Activities and activity coefficients.
//   Given     t         temperature [K]
//             rho       density [mol/L]
//             x         mole fractions
//   Returned  activity  fugacity in the mixture over that of the pure component at the same temperature and pressure
//             actcoef   activity / x; both 0 for components of fraction 0
//   Codes     those of FGCTY2 and TPFLSH
void ACTVY(double t, double rho, const Composition& x, Composition& activity, Composition& actcoef, int& ierr,
           Text255& herr);

}  // namespace frigana
