// Density root at given temperature and pressure; critical point; limits of validity; melting and sublimation
// of a composition.
#pragma once

#include "EngineLimits.h"

namespace frigana {

void TPRHO(double t, double p, const Composition& x, int kph, int kguess, double& rho, int& ierr, Text255& herr);
void CRITP(const Composition& x, double& tcrit, double& pcrit, double& Dcrit, int& ierr, Text255& herr);
void CRTHMX(const Composition& x, double& Tc, double& Pc, double& Dc, int& ierr, Text255& herr);

void LIMITS(const Text3& htype, const Composition& x, double& tmin, double& tmax, double& Dmax, double& pmax);
void LIMITX(const Text3& htype, double t, double D, double p, const Composition& x, double& tmin, double& tmax,
            double& Dmax, double& pmax, int& ierr, Text255& herr);
void LIMITK(const Text3& htype, int icomp, double t, double D, double p, double& tmin, double& tmax, double& Dmax,
            double& pmax, int& ierr, Text255& herr);

void MELTT(double t, const Composition& x, double& p, int& ierr, Text255& herr);
void MELTP(double p, const Composition& x, double& t, int& ierr, Text255& herr);
void SUBLT(double t, const Composition& x, double& p, int& ierr, Text255& herr);
void SUBLP(double p, const Composition& x, double& t, int& ierr, Text255& herr);

// Inverses of the ancillary equations (Newton with a numerical slope).
void TSATP(double p, const Composition& x, double& t, int& ierr, Text255& herr);
void TSATPL(double p, const Composition& x, double& t, int& ierr, Text255& herr);
void TSATD(double d, const Composition& x, double& t, int& ierr, Text255& herr);

}  // namespace frigana
