// Modified Benedict-Webb-Rubin equation of state (tag BWR).
#pragma once

#include "EngineLimits.h"

namespace frigana {

double PBWR(int icomp, double t, double rho);
double ABWR(int icomp, double t, double rho);
double DABWR(int icomp, double t, double rho);
double D2ABWR(int icomp, double t, double rho);
double DPDBWR(int icomp, double t, double rho);
double D2PBWR(int icomp, double t, double rho);
double DPTBWR(int icomp, double t, double rho);
double PHIBWR(int icomp, int itau, int idel, double tau, double del);
void CRTBWR(int icomp, double& tc, double& pc, double& rhoc);
void SETBWR(int iunit, int icomp, const Text12& hcasn, int& ierr, Text255& herr);

}  // namespace frigana
