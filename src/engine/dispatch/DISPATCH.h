// Routes the Helmholtz energy, the reducing values and the ideal-gas functions to the models that the tags name.
//
// A tag is three characters that lie side by side, so that a comparison of its letters costs no more than that of a
// number: the routes read the tags themselves and are right at once when a tag is changed.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Reduced residual Helmholtz energy of one component, or a derivative of it.
//   Given     icomp       component slot
//             itau, idel  orders of the derivative in tau and in del
//             tau, del    reduced inverse temperature and reduced density, by the reducing values of REDK
//   Returned  (value)     tau^itau del^idel times the derivative; 0 for del <= 1e-10; -9.99e99 for a tag of no model
//   Notes     HMXEOS(icomp) selects: FE. PHIFEQ, QUI PHIQUI, BWR PHIBWR, ECS PHIECS, PR. PHIPR.
double PHIK(int icomp, int itau, int idel, double tau, double del);

// The same of a composition; tau and del by the reducing values of REDX.
//   Returned  (value)  of the component alone for a pure composition; for a mixture by HEOS: HMX PHIHMX, AGA PHIAGA,
//                      PR. PHIPRX, any other tag 0; 0 for del <= 1e-10
double PHIX(int itau, int idel, double tau, double del, const Composition& x);

// Reducing temperature [K] and density [mol/L] of one component; both 9.99e99 for a tag of no model.
void REDK(int icomp, double& tz, double& rhoz);

// The same of a composition; both 9.99e99 for a top tag of no mixture model.
void REDX(const Composition& x, double& tz, double& rhoz);

// Heat capacity of the ideal gas [J/(mol K)] of one component at t [K].
//   Notes     HMODCP(icomp) selects: CP. the correlation of the heat capacity, PH. the second derivative of that of the
//             Helmholtz energy; 0 for any other tag, here and in the routines below.
double CP0K(int icomp, double t);
// The same of a composition, the sum of x(i) times each component's value.
double CP0(double t, const Composition& x);

// Integral of the heat capacity of the ideal gas from TREF to t [J/mol] of a composition; PH. correlations give 0.
double CPI(double t, const Composition& x);
// Integral of the heat capacity over temperature from TREF to t [J/(mol K)] of a composition; PH. correlations give 0.
double CPT(double t, const Composition& x);

// Reduced Helmholtz energy of the ideal gas of one component, or a derivative of it.
//   Given     t, rho   temperature [K] and density [mol/L]
//   Returned  (value)  tau^itau del^idel times the derivative
double PHI0K(int icomp, int itau, int idel, double t, double rho);
// The same of a composition. For orders (0, 0) the sum of x(i) ln x(i) of mixing is part of it; components of a
// fraction up to 1e-10 are left out, so that ln 0 is never taken.
double PHI0(int itau, int idel, double t, double rho, const Composition& x);

// Mixture Helmholtz energy: sum of the pure equations at the reduced variables of the mixture, plus the departure
// functions of the pairs. Fractions up to 1e-12 are left out. 0 for del <= 1e-10.
//   Source    Kunz, Klimeck, Wagner, Jaeschke, GERG TM15 (2007), eqs. 5.3 and 5.9
double PHIHMX(int itau, int idel, double tau, double del, const Composition& x);

}  // namespace frigana
