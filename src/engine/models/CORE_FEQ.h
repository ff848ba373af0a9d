// Helmholtz energy equations of state (tags FEQ, FEK, FEX).
#pragma once

#include "EngineLimits.h"

namespace frigana {

double PHIFEQ(int icomp, int itau, int idel, double tau, double del);
void CRTFEQ(int icomp, double& tc, double& pc, double& rhoc);
void REDFEQ(int icomp, double& tred, double& dred);
void SETFEQ(int iunit, int icomp, const Text12& hcasn, int& ierr, Text255& herr);
void SETEXP(int icomp);

}  // namespace frigana
