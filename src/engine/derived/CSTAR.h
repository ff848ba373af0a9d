// Critical flow of a gas through a nozzle.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Critical flow factor of a nozzle: mass flow per throat area, made dimensionless with the stagnation state.
//   Given     T, p    stagnation temperature and pressure [K, kPa]
//             v       velocity ahead of the nozzle [m/s]
//             z       mole fractions
//   Returned  cs      rho w sqrt(R T/M) / p
//             ts, Ds, ps, ws  temperature, density, pressure and speed of sound in the throat [K, mol/L, kPa, m/s]
//   Codes     from TPFLSH
//             200     not converged in 20 passes
//             201     two phases in the throat, or no speed of sound
//   Notes     The throat has the entropy of the stagnation state and flows at the local speed of sound, so that
//             h + w^2/2 there equals the enthalpy plus v^2/2 ahead of the nozzle.
//   Source    R. C. Johnson, J. Basic Eng. 86 (1964) 519; ISO 9300 (critical flow Venturi nozzles)
void CSTAR(double T, double p, double v, const Composition& z, double& cs, double& ts, double& Ds, double& ps,
           double& ws, int& ierr, Text255& herr);

}  // namespace frigana
