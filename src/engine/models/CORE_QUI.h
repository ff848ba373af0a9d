// Quintic-type equation of state (tag QUI).
#pragma once

#include "EngineLimits.h"

namespace frigana {

double PHIQUI(int icomp, int itau, int idel, double tau, double del);
void CRTQUI(int icomp, double& tc, double& pc, double& rhoc);
void REDQUI(int icomp, double& tred, double& dred);
void SETQUI(int iunit, int icomp, const Text12& hcasn, int& ierr, Text255& herr);

}  // namespace frigana
