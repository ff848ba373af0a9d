// Ideal-gas heat capacity correlations (tags CPx) and their integrals.
#pragma once

#include "EngineLimits.h"

namespace frigana {

double CP0CPP(int icomp, double t);
double CPICPP(int icomp, double t);
double CPTCPP(int icomp, double t);
double PH0CPP(int icomp, int itau, int idel, double t, double rho);
void SETCPP(int iunit, int icomp, const Text12& hcasn, int& ierr, Text255& herr);

}  // namespace frigana
