// Extended corresponding states equation of state (tag ECS).
#pragma once

#include "EngineLimits.h"

namespace frigana {

double PHIECS(int icomp, int itau, int idel, double tau, double del);
void CRTECS(int icomp, double& tc, double& pc, double& rhoc);
void SETECS(int iunit, int icomp, const Text12& hcasn, Text255& hreff, Text3& heqn, int& ierr, Text255& herr);

}  // namespace frigana
