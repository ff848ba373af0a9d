// Peng-Robinson equation of state (tag PR).
#pragma once

#include "EngineLimits.h"

namespace frigana {

double PHIPR(int icomp, int itau, int idel, double tau, double del);
double PHIPRX(int itau, int idel, double tau, double del, const Composition& x);
void CRTPR(int icomp, double& tc, double& pc, double& rhoc);
void CRTPRX(const Composition& x, double& tc, double& pc, double& rhoc);
void REDPR(const Composition& x, double& tred, double& dred);
void SETPR(int iunit, int icomp, const Text12& hcasn, int& ierr, Text255& herr);
void SETPRCO(int icomp);
void TPRHOPR(double t, double p, const Composition& x, double& rho1, double& rho2);

}  // namespace frigana
