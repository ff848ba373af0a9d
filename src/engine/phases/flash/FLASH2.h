// Further flash routines, and the general flash iterations behind all of them: ABFL1 solves a single phase for any two
// known properties, ABFL2 two phases. The properties are named by two letters: T temperature, P pressure, D density,
// H enthalpy, S entropy, E energy, Q quality.
// Arguments and marks are those of FLSH_SUB.h.
#pragma once

#include "EngineLimits.h"
#include "FLASH2_ITERATIONS.h"

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

}  // namespace frigana
