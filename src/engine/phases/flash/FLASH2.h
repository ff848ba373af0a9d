// Further flash routines, and the general flash iterations behind all of them: ABFL1 solves a single phase for any two
// known properties, ABFL2 two phases. The properties are named by two letters: T temperature, P pressure, D density,
// H enthalpy, S entropy, E energy, Q quality.
// Arguments and marks are those of FLSH_SUB.h.
#pragma once

#include "EngineLimits.h"
#include "FlashLetters.h"

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

}  // namespace frigana
