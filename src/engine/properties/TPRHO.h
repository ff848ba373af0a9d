// Density root at given temperature and pressure; critical point. With them come the limits of validity (LIMITS) and
// the solid boundary (MELTING).
#pragma once

#include "EngineLimits.h"
#include "LIMITS.h"
#include "MELTING.h"

namespace frigana {

void TPRHO(double t, double p, const Composition& x, int kph, int kguess, double& rho, int& ierr, Text255& herr);
void CRITP(const Composition& x, double& tcrit, double& pcrit, double& Dcrit, int& ierr, Text255& herr);
void CRTHMX(const Composition& x, double& Tc, double& Pc, double& Dc, int& ierr, Text255& herr);
// Point of highest temperature, and of highest pressure, on the phase envelope.
void MAXT(const Composition& x, double& tm, double& pm, double& Dm, int& ierr, Text255& herr);
void MAXP(const Composition& x, double& tm, double& pm, double& Dm, int& ierr, Text255& herr);

// Inverses of the ancillary equations (Newton with a numerical slope).
void TSATP(double p, const Composition& x, double& t, int& ierr, Text255& herr);
void TSATPL(double p, const Composition& x, double& t, int& ierr, Text255& herr);
void TSATD(double d, const Composition& x, double& t, int& ierr, Text255& herr);

}  // namespace frigana
