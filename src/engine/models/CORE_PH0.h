// Ideal-gas Helmholtz energy correlations (tags PHx).
#pragma once

#include "EngineLimits.h"

namespace frigana {

double PH0PH0(int icomp, int itau, int idel, double t, double rho);
void SETPH0(int iunit, int icomp, const Text12& hcasn, int& ierr, Text255& herr);

}  // namespace frigana
