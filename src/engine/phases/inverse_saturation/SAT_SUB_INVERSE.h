// Saturation states at given density, enthalpy, energy or entropy: the inverse of the saturation lines. Enthalpy and
// entropy are not monotonic along a line, so there can be several roots.
// Branch codes of the results (kr, k1, k2, k3): 1 liquid line, 2 vapor line, 3 melting line, 4 sublimation line.
#pragma once

#include "EngineLimits.h"
#include "SaturationExtrema.h"

namespace frigana {

// 1 while SATE or ESFLSH runs and the property of SATH is the internal energy, 0 otherwise. Written by SATE, ESFLSH.
struct InverseControl {
    int ENERGYMODE = 0;
};

extern InverseControl inverseControl;

// Saturated state of a given density.
//   Given     rho     [mol/L]
//             x       mole fractions
//             kph     0 whichever line fits; -1 liquid or vapor, without the fast way (water on its high-temperature
//                     side); 1 liquid, 2 vapor, 3 melting line
//   Returned  kr      line that was used
//             T, p    [K, kPa]
//             rhol, rhov  densities of the phases [mol/L]; on the melting line of the liquid, on the sublimation line
//                     of the vapor
//             xliq, xvap  mole fractions of the phases
//   Codes     from LIMITX  density out of range
//             160     no critical point
//             2       beyond the triple point density of a fluid without a melting or sublimation line
//             161     not converged, or no such state of water (the results are the critical point)
//   Notes     The line follows from the density: below the critical density the vapor's, above it the liquid's. For a
//             mixture dew points above the critical temperature are found on both sides of the highest one; kr tells
//             which line it was.
void SATD(double rho, const Composition& x, int kph, int& kr, double& T, double& p, double& rhol, double& rhov,
          Composition& xliq, Composition& xvap, int& ierr, Text255& herr);

// Saturated states of a given enthalpy.
//   Given     h       [J/mol]
//             x       mole fractions
//             kph     0 all lines, 1 to 4 one line
//   Returned  nroot   number of states found, 0 to 2
//             k1, t1, p1, d1  first state: line, temperature [K], pressure [kPa], density [mol/L]
//             k2, t2, p2, d2  second state, at a lower temperature on the vapor line
//   Codes     160     no critical point
//             8       above the vapor's value at the lowest temperature (sublimation line)
//             2       below the liquid's value at the lowest temperature
//             4       above the maximum on the vapor line
//             161     one root was not found; 162 two were not
//   Notes     The warm root on the vapor line of a mixture may lie above the critical temperature, also on the
//             retrograde side of the highest one, where SATT gives the other of two dew points.
void SATH(double h, const Composition& x, int kph, int& nroot, int& k1, double& t1, double& p1, double& d1, int& k2,
          double& t2, double& p2, double& d2, int& ierr, Text255& herr);

// Saturated states of a given internal energy e [J/mol]; as SATH, with "SATE", "e =" and "energy" in the messages.
void SATE(double e, const Composition& x, int kph, int& nroot, int& k1, double& t1, double& p1, double& d1, int& k2,
          double& t2, double& p2, double& d2, int& ierr, Text255& herr);

// Saturated states of a given entropy s [J/(mol K)]; as SATH, with up to three states: liquid or high side of the vapor
// line first, then downward in temperature.
//   Codes     160     no critical point
//             8       below the vapor's value at the lowest temperature (sublimation line)
//             2       below the minimum of the liquid line
//             4       above the maximum of the vapor line
//             161, 162, 163  one, two, three roots were not found
//             1       no root on the line asked for
void SATS(double s, const Composition& x, int kph, int& nroot, int& k1, double& t1, double& p1, double& d1, int& k2,
          double& t2, double& p2, double& d2, int& k3, double& t3, double& p3, double& d3, int& ierr, Text255& herr);

// Maximum of the enthalpy or energy of the saturated vapor.
//   Given     x       mole fractions
//             flag    0 enthalpy, 1 internal energy
//   Returned  value   [J/mol]
//             T       [K]
//   Codes     those of SATT, if it fails on the way
void EHMAXX(const Composition& x, int flag, double& value, double& T, int& ierr, Text255& herr);

// Extrema of the saturated entropy.
//   Given     x       mole fractions
//   Returned  highestVapor, lowestVapor  maximum near the critical point and minimum below it on the vapor line
//             lowestLiquid  minimum of the liquid line near its cold end
//   Codes     those of SATT, if it fails on the way
//   Notes     An extremum that does not exist has -1 for temperature and value.
void SMAXX(const Composition& x, LineExtremum& highestVapor, LineExtremum& lowestVapor, LineExtremum& lowestLiquid,
           int& ierr, Text255& herr);

}  // namespace frigana
