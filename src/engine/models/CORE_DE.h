// Dielectric constant (tags DEx).
#pragma once

#include "EngineLimits.h"

namespace frigana {

void SETDE(int iunit, int icomp, const Text12& hcasn, int& ierr, Text255& herr);
void DEK(int icomp, double t, double rho, double& de, int& ierr, Text255& herr);
void DIELEC(double t, double rho, const Composition& x, double& de);

}  // namespace frigana
