// Density root at given temperature and pressure; critical point. With them come the limits of validity (LIMITS), the
// solid boundary (MELTING) and the inverses of the ancillary equations (CORE_ANC_INVERSE).
// State: adoptedCriticalPoint.
#pragma once

#include "CORE_ANC_INVERSE.h"
#include "EngineLimits.h"
#include "LIMITS.h"
#include "MELTING.h"

namespace frigana {

// Density at given temperature and pressure.
//   Given     t       temperature [K]
//             p       pressure [kPa]
//             x       mole fractions
//             kph     1 liquid, 2 vapor; -1, -2 the same side without the test whether the state can have it; 0 or
//             below
//                     with a guess: the side of the guess
//             kguess  1: rho is a guess on entry
//   Returned  rho     density [mol/L]; after a failure the best bound that was met, or the last guess
//   Codes     200     critical point not known
//             201     no phase and no guess was given
//             202     liquid iteration not converged, or its root is unstable
//             203     the same of the vapor
//   Notes     Above the critical temperature, or above the critical pressure, the side is chosen by the state, whatever
//             kph says. A pressure below 1e-8 is that of an ideal gas, except for kph = 1.
//   Source    Lemmon, McLinden, Wagner, J. Chem. Eng. Data 54 (2009) 3141 (iteration in ln v, Halley's step); start of
//             the liquid: Rackett, J. Chem. Eng. Data 15 (1970) 514
void TPRHO(double t, double p, const Composition& x, int kph, int kguess, double& rho, int& ierr, Text255& herr);

// Critical point of a composition.
//   Returned  tcrit, pcrit, Dcrit  [K, kPa, mol/L]; of a mixture that could not be computed 100, 0, 0
//   Codes     those of CRTHMX
void CRITP(const Composition& x, double& tcrit, double& pcrit, double& Dcrit, int& ierr, Text255& herr);

// Critical point of a mixture from the critical lines of its pairs.
//   Codes     1       no such model in use
void CRTHMX(const Composition& x, double& Tc, double& Pc, double& Dc, int& ierr, Text255& herr);

// The critical point of one composition, which stands in place of the lines of its pairs: their sum leaves out what
// three components do together. Written by adoptCriticalPoint, cleared by SETUP and SETKTV, read by criticalLineOf.
struct AdoptedCriticalPoint {
    bool known = false;
    Composition x{};
    double T = 0.0, p = 0.0, D = 0.0;  // [K, kPa, mol/L]
};
extern AdoptedCriticalPoint adoptedCriticalPoint;

// The two halves of CRTHMX, for a caller that can often do without the pressure, which takes the equation of state of
// every component. The first returns true if the pressure is known with the rest; otherwise the second gives it.
bool criticalLineOf(const Composition& x, double& Tc, double& Pc, double& Dc, int& ierr, Text255& herr);
double criticalPressureAt(double Tc, double Dc, const Composition& x);

// Point of highest temperature, and of highest pressure, on the phase envelope: the critical point of a pure fluid; of
// a mixture what the stored envelope of the same composition has found.
//   Returned  tm, pm, Dm  [K, kPa, mol/L]; 300, 0, 0 where the point is not known
//   Codes     1       point not known
void MAXT(const Composition& x, double& tm, double& pm, double& Dm, int& ierr, Text255& herr);
void MAXP(const Composition& x, double& tm, double& pm, double& Dm, int& ierr, Text255& herr);

}  // namespace frigana
