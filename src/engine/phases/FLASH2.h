// Further flash routines, and the general flash iterations behind all of them: ABFL1 solves a single phase for any two
// known properties, ABFL2 two phases. The properties are named by two letters: T temperature, P pressure, D density,
// H enthalpy, S entropy, E energy, Q quality.
// Arguments and marks are those of FLSH_SUB.h.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// State at given temperature and quality.
//   Given     T, z
//             q       quality; within 1e-8 of 0 or 1 the saturated liquid or vapor
//             kq      1 molar quality, 2 mass quality (of mixtures: for pure fluids they are the same)
//   Returned  p, D, Dl, Dv, x, y, e, h, s, cv, cp, w; cv, cp, w are -9999920 between the lines
//   Codes     from LIMITX
//             270     no critical point
//             271     above the critical temperature (mixtures: 1.5 times)
//             275     quality out of range
//             from SATT, ABFL2, TPRHO: "[TQFLSH error] (...)"
//   Notes     A composition with one fraction of 1 within 1e-8 is that pure component.
void TQFLSH(double T, double q, const Composition& z, int kq, double& p, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& e, double& h, double& s, double& cv, double& cp, double& w,
            int& ierr, Text255& herr);

// State at given pressure and quality; as TQFLSH.
//   Returned  T, D, Dl, Dv, x, y, e, h, s, cv, cp, w
//   Codes     290, 291, 295 in place of 270, 271, 275
void PQFLSH(double p, double q, const Composition& z, int kq, double& T, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& e, double& h, double& s, double& cv, double& cp, double& w,
            int& ierr, Text255& herr);

// State at given temperature and the property that the second letter names.
//   Given     T, z
//             b       enthalpy, entropy or energy [J/mol, J/(mol K)]
//             kr      which of two densities with the same b: 2 the higher, otherwise the lower
//             ab      "TH", "TS" or "TE"
//   Returned  p, D, Dl, Dv, x, y, q, e, h, s, cv, cp, w
//   Codes     -238    two densities exist; that of kr has been calculated
//             from LIMITX, from SATT
//             230     no critical point
//             239     b is above its maximum or below its minimum at T
//             247, 248  ABFL1
//             from ABFL2 (mixtures)
//   Notes     After a limit error or 239: D = Dl = Dv = 0.0001, p of the ideal gas, all others -9999970.
void TBFLSH(double T, double b, const Composition& z, int kr, std::string_view ab, double& p, double& D, double& Dl,
            double& Dv, Composition& x, Composition& y, double& q, double& e, double& h, double& s, double& cv,
            double& cp, double& w, int& ierr, Text255& herr);

// TBFLSH with the letters TH, TS, TE.
void THFLSH(double T, double h, const Composition& z, int kr, double& p, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& q, double& e, double& s, double& cv, double& cp, double& w,
            int& ierr, Text255& herr);
void TSFLSH(double T, double s, const Composition& z, int kr, double& p, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& q, double& e, double& h, double& cv, double& cp, double& w,
            int& ierr, Text255& herr);
void TEFLSH(double T, double e, const Composition& z, int kr, double& p, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& q, double& h, double& s, double& cv, double& cp, double& w,
            int& ierr, Text255& herr);

// ABFL1 with the letters TH, TS, TE: single phase between the densities Dmin and Dmax.
void THFL1(double T, double h, const Composition& z, double Dmin, double Dmax, double& p, double& D, int& ierr,
           Text255& herr);
void TSFL1(double T, double s, const Composition& z, double Dmin, double Dmax, double& p, double& D, int& ierr,
           Text255& herr);
void TEFL1(double T, double e, const Composition& z, double Dmin, double Dmax, double& p, double& D, int& ierr,
           Text255& herr);

// ABFL2 with the letters TH, TS, TE: two phases.
void THFL2(double T, double h, const Composition& z, int ksat, double& pbub, double& pdew, double& Dlbub, double& Dvdew,
           Composition& ybub, Composition& xdew, double& p, double& Dl, double& Dv, Composition& x, Composition& y,
           double& q, int& ierr, Text255& herr);
void TSFL2(double T, double s, const Composition& z, int ksat, double& pbub, double& pdew, double& Dlbub, double& Dvdew,
           Composition& ybub, Composition& xdew, double& p, double& Dl, double& Dv, Composition& x, Composition& y,
           double& q, int& ierr, Text255& herr);
void TEFL2(double T, double e, const Composition& z, int ksat, double& pbub, double& pdew, double& Dlbub, double& Dvdew,
           Composition& ybub, Composition& xdew, double& p, double& Dl, double& Dv, Composition& x, Composition& y,
           double& q, int& ierr, Text255& herr);

// State at given density and the property that the second letter names.
//   Given     D, z
//             b       enthalpy, entropy or energy [J/mol, J/(mol K)]
//             ab      "DH", "DS" or "DE"
//   Returned  T, p, Dl, Dv, x, y, q, e, h, s, cv, cp, w
//   Codes     from LIMITX
//             210     no critical point
//             215     not converged; the text says 248
//   Notes     The state is single-phase where b is at least its value on the saturation line at D.
void DBFLSH(double D, double b, const Composition& z, std::string_view ab, double& T, double& p, double& Dl, double& Dv,
            Composition& x, Composition& y, double& q, double& e, double& h, double& s, double& cv, double& cp,
            double& w, int& ierr, Text255& herr);

// DBFLSH with the letters DH, DS, DE.
void DHFLSH(double D, double h, const Composition& z, double& T, double& p, double& Dl, double& Dv, Composition& x,
            Composition& y, double& q, double& e, double& s, double& cv, double& cp, double& w, int& ierr,
            Text255& herr);
void DSFLSH(double D, double s, const Composition& z, double& T, double& p, double& Dl, double& Dv, Composition& x,
            Composition& y, double& q, double& e, double& h, double& cv, double& cp, double& w, int& ierr,
            Text255& herr);
void DEFLSH(double D, double e, const Composition& z, double& T, double& p, double& Dl, double& Dv, Composition& x,
            Composition& y, double& q, double& h, double& s, double& cv, double& cp, double& w, int& ierr,
            Text255& herr);

// ABFL1 with the letters DH, DS, DE: single phase.
void DHFL1(double D, double h, const Composition& z, double& T, int& ierr, Text255& herr);
void DSFL1(double D, double s, const Composition& z, double& T, int& ierr, Text255& herr);
void DEFL1(double D, double e, const Composition& z, double& T, int& ierr, Text255& herr);

// DBFL2 with the letters DH, DS, DE: two phases.
void DHFL2(double D, double h, const Composition& z, double& T, double& p, double& Dl, double& Dv, Composition& x,
           Composition& y, double& q, int& ierr, Text255& herr);
void DSFL2(double D, double s, const Composition& z, double& T, double& p, double& Dl, double& Dv, Composition& x,
           Composition& y, double& q, int& ierr, Text255& herr);
void DEFL2(double D, double e, const Composition& z, double& T, double& p, double& Dl, double& Dv, Composition& x,
           Composition& y, double& q, int& ierr, Text255& herr);

// State at given enthalpy and entropy.
//   Given     h, s    [J/mol, J/(mol K)]; in energy mode h is the energy and e returns the enthalpy
//             z
//   Returned  T, p, D, Dl, Dv, x, y, q, e, cv, cp, w
//   Codes     200     two-phase, or out of bounds, and no solution
//             247, 248  ABFL1
//             from CRITP, from LIMITX at the end (the result is kept)
//   Notes     The saturated states of h decide on the phase: s below that of the first root is a liquid (or a dense
//             gas), above that of the second a vapor, in between there are two phases.
void HSFLSH(double h, double s, const Composition& z, double& T, double& p, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& q, double& e, double& cv, double& cp, double& w, int& ierr,
            Text255& herr);

// State at given energy and entropy: HSFLSH in energy mode.
void ESFLSH(double e, double s, const Composition& z, double& T, double& p, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& q, double& h, double& cv, double& cp, double& w, int& ierr,
            Text255& herr);

// ABFL1 with the letters SH, in energy mode SE: single phase, T is the start and the result. Dmin of 0 leaves the lower
// bound of the density to the iteration.
void HSFL1(double h, double s, const Composition& z, double Dmin, double Dmax, double& T, double& D, int& ierr,
           Text255& herr);

// ABFL2 or DBFL2 with the letters TQ, PQ, DQ: two phases at given quality.
void TQFL2(double T, double q, const Composition& z, int kq, int ksat, double& pbub, double& pdew, double& Dlbub,
           double& Dvdew, Composition& ybub, Composition& xdew, double& p, double& Dl, double& Dv, Composition& x,
           Composition& y, int& ierr, Text255& herr);
void PQFL2(double p, double q, const Composition& z, int kq, int ksat, double& Tbub, double& Tdew, double& Dlbub,
           double& Dvdew, Composition& ybub, Composition& xdew, double& T, double& Dl, double& Dv, Composition& x,
           Composition& y, int& ierr, Text255& herr);
void DQFL2(double D, double q, const Composition& z, int kq, double& T, double& p, double& Dl, double& Dv,
           Composition& x, Composition& y, int& ierr, Text255& herr);

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
//             bracket as soon as there is one; once a step has left the bracket, by false position.
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
//             close to differences of quality. Up to three passes past the tolerance bring them below 1e-9. Where the
//             secant fails, has needed a wider tolerance, or the lines nearly meet, the state is solved by its share of
//             the vapor (FLASH2_SHARE).
void ABFL2(double a, double b, const Composition& z, int kq, int ksat, std::string_view ab, double& Tbub, double& Tdew,
           double& pbub, double& pdew, double& Dlbub, double& Dvdew, Composition& ybub, Composition& xdew, double& T,
           double& p, double& Dl, double& Dv, Composition& x, Composition& y, double& q, int& ierr, Text255& herr);

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
//   Notes     The secant of a mixture stops within 0.0001 mol/L of D. A pure fluid, and a mixture further from D than
//             1e-8 of it, is then solved along its isochore to 1e-12 of b, also where the secant fails, as beside a
//             maximum of the saturated vapor's enthalpy.
void DBFL2(double D, double b, const Composition& z, int kq, std::string_view ab, double& T, double& p, double& Dl,
           double& Dv, Composition& x, Composition& y, double& q, int& ierr, Text255& herr);

// Two phases of the pseudo-pure fluid now selected, at given pressure: temperature from the bubble and dew lines.
//   Given     p       [kPa]
//             b       property that letter names: D, H, S, E; Q: q is given
//   Changed   T       start and result
//             q       result, except for Q
//   Returned  Dl, Dv
void PTANC(double& T, double& p, double& q, double b, char letter, double& Dl, double& Dv);

}  // namespace frigana
