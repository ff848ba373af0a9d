// Surface tension.
#pragma once

#include "EngineLimits.h"

namespace frigana {

void SURFT(double T, double& Dl, const Composition& x, double& sigma, int& ierr, Text255& herr);
void SURTEN(double T, double& Dl, double& Dv, Composition& xl, Composition& xv, double& sigma, int& ierr,
            Text255& herr);
void SETST1(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);

}  // namespace frigana
