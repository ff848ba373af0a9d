// Substitution: the methods for mixtures without composition derivatives, and the last resort of the others. Estimates
// that they start from.
#pragma once

#include "CriticalPoint.h"

namespace frigana {

// Bubble or dew point of a mixture at given temperature by substitution: the composition of the incipient phase from
// the ratio of the fugacities, inside a secant in pressure.
//   Given     T, x, kph          as SATT
//             started            true: p, rhol, rhov and the incipient composition in the arguments are the start
//   Returned  p, rhol, rhov, xliq, xvap
//   Codes     121, 128
void mixtureAtTemperature(double T, const Composition& x, int kph, const CriticalPoint& critical, bool started,
                          double& p, double& rhol, double& rhov, Composition& xliq, Composition& xvap, int& ierr,
                          Text255& herr);

// Bubble or dew point of a mixture at given pressure, the same with temperature as the outer variable.
//   Given     highestDensity     limit of the equation of state [mol/L]
//   Returned  T, rhol, rhov, xliq, xvap
//   Codes     148
void mixtureAtPressure(double p, const Composition& x, int kph, const CriticalPoint& critical, double highestDensity,
                       double& T, double& rhol, double& rhov, Composition& xliq, Composition& xvap, int& ierr,
                       Text255& herr);

// Raoult's law with estimated vapor pressures, at given temperature.
//   Given     T, x, kph (1, 2) as SATT
//   Returned  p       [kPa]
//             y       composition of the incipient phase
//   Codes     0
void SATTEST(double T, const Composition& x, int kph, double& p, Composition& y, int& ierr, Text255& herr);

// Raoult's law with estimated vapor pressures, at given pressure, by iteration.
//   Given     p, x, kph (1, 2) as SATP
//   Returned  T       [K]
//             y       composition of the incipient phase
//   Codes     -144    not converged; T is the last one, or the mean of the components'
void SATPEST(double p, const Composition& x, int kph, double& T, Composition& y, int& ierr, Text255& herr);

// Two densities with a common pressure for a pair of phases, where the density iterations have failed.
//   Given     T       [K]
//             x1, x2  mole fractions of the liquid and of the vapor
//   Returned  p       common pressure [kPa]
//             rho1, rho2  densities of the liquid and of the vapor [mol/L]
//   Codes     1       the liquid density grew beyond bounds
void DLDV(double T, double& p, double& rho1, double& rho2, const Composition& x1, const Composition& x2, int& ierr,
          Text255& herr);

// Two phases at given temperature and pressure by substitution of the compositions by the ratio of the fugacities,
// around a secant in the liquid fraction: the substitution of TPFL2, for models without composition derivatives.
//   Given     T, p, z  as TPFL2
//   Changed   Dl, Dv, x, y, q  start and result
//   Codes     216, 218, 219  of TPFL2
//   Source    J. M. Prausnitz et al., Computer Calculations for Multicomponent Vapor-Liquid and Liquid-Liquid
//             Equilibria, Prentice-Hall 1980, ch. 7
void substituteCompositions(double T, double p, const Composition& z, double& Dl, double& Dv, Composition& x,
                            Composition& y, double& q, int& ierr, Text255& herr);

}  // namespace frigana
