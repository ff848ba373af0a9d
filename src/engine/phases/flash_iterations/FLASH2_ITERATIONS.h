// The general flash iterations: ABFL1 solves a single phase for any two known properties, ABFL2 two phases, TPFL2 two
// phases at temperature and pressure. The properties are named by two letters: T temperature, P pressure, D density,
// H enthalpy, S entropy, E energy, Q quality.
// Arguments and marks are those of FLSH_SUB.h.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Single phase at two given properties.
//   Given     a, b    the properties, in the order of the letters
//             z
//             kph     1 liquid, 2 vapor, as TPRHO (first letter P)
//             ab      TH TS TE PH PS PE PD SH SE, or a D with H, S, E, P
//             Dmin, Dmax  limits of density (first letter T and S; for S a Dmin of 0 is found by the routine)
//   Changed   T       start (not positive: the critical temperature; first letters P and S) and result
//   Returned  p, D
//   Codes     203     DBFL1
//             247     no density
//             248     not converged in 200 passes
//   Notes     Secant on density (first letter T) or temperature (P, S) with a relative tolerance of 1e-8, inside a
//             bracket as soon as there is one; once a step has left the bracket, by false position, from pass 20 on by
//             turns with its middle.
void ABFL1(double a, double b, const Composition& z, int kph, std::string_view ab, double Dmin, double Dmax, double& T,
           double& p, double& D, int& ierr, Text255& herr);

// ABFL1 for the inner problem of its own S-first search: first letter T.
void ABFL1X(double a, double b, const Composition& z, int kph, std::string_view ab, double Dmin, double Dmax, double& T,
            double& p, double& D, int& ierr, Text255& herr);

// Two phases at two given properties.
//   Given     a, b    the properties, in the order of the letters
//             z
//             kq      2: b is a mass quality (second letter Q)
//             ksat    1: the bubble and dew values at a are given; 0: the routine finds them
//             ab      first letter T or P, second D, H, S, E or Q
//   Changed   Tbub, Tdew, pbub, pdew, Dlbub, Dvdew, ybub, xdew  the bubble and dew values
//   Returned  T, p, Dl, Dv, x, y
//             q       molar quality
//   Codes     223, 224  no bubble point, no dew point
//             225     the inner flash failed 25 times (an estimate is returned)
//             226     not converged
//             227, 228  b is below its value at the bubble point, above that at the dew point
//   Notes     Residuals are measured in units of the difference of the two end values, at least 1, so that they are
//             close to differences of quality. Mixtures with composition derivatives are solved by Newton's method, from
//             the lever rule or from flashes between the lines; others, and what is left, by a secant around TPFL2.
void ABFL2(double a, double b, const Composition& z, int kq, int ksat, std::string_view ab, double& Tbub, double& Tdew,
           double& pbub, double& pdew, double& Dlbub, double& Dvdew, Composition& ybub, Composition& xdew, double& T,
           double& p, double& Dl, double& Dv, Composition& x, Composition& y, double& q, int& ierr, Text255& herr);

// Molar share of the vapor of a mass quality, with the compositions of both phases.
double molarShare(double qmass, const Composition& x, const Composition& y);

// Single phase at given density and a second property: Newton's method in temperature.
//   Given     D, b, z
//             ab      second letter P, H, E or S
//   Returned  T       0 after an error
//             p
//   Codes     203     not converged in 30 steps
void DBFL1(double D, double b, const Composition& z, std::string_view ab, double& T, double& p, int& ierr,
           Text255& herr);

// Two phases at given density and a second property: secant in temperature around ABFL2.
//   Given     D, b, z
//             kq      as ABFL2
//             ab      second letter H, S, E or Q
//   Returned  T, p, Dl, Dv, x, y, q
//   Codes     those of ABFL2, whose text names D in place of T
//   Notes     A pure fluid is solved along its isochore to 1e-12 of b, also beside a maximum of the saturated vapor's
//             enthalpy, and a mixture by Newton's method; the secant follows where these fail. That of a mixture stops
//             within 1e-8 of D, or at its end within 0.0001 mol/L. A mixture of little vapor may have two temperatures
//             of the same density and share, one of which is returned.
void DBFL2(double D, double b, const Composition& z, int kq, std::string_view ab, double& T, double& p, double& Dl,
           double& Dv, Composition& x, Composition& y, double& q, int& ierr, Text255& herr);

// Two phases of the pseudo-pure fluid now selected, at given pressure: temperature from the bubble and dew lines.
//   Given     p       [kPa]
//             b       property that letter names: D, H, S, E; Q: q is given
//   Changed   T       start and result
//             q       result, except for Q
//   Returned  Dl, Dv
void PTANC(double& T, double& p, double& q, double b, char letter, double& Dl, double& Dv);

// Two-phase state of a mixture at given temperature and pressure.
//   Given     T, p, z
//   Changed   Dl, Dv, x, y, q  start and result
//   Codes     216     no liquid density
//             218     no liquid fraction (-218 in a pass that is followed by others)
//             219     compositions not converged
//   Notes     SATTP first, with the start and without; then successive substitution of the compositions by the ratio
//             of the fugacities around a secant in the liquid fraction.
//   Source    substitution: J. M. Prausnitz et al., Computer Calculations for Multicomponent Vapor-Liquid and
//             Liquid-Liquid Equilibria, Prentice-Hall 1980, ch. 7
void TPFL2(double T, double p, const Composition& z, double& Dl, double& Dv, Composition& x, Composition& y, double& q,
           int& ierr, Text255& herr);

}  // namespace frigana
