// Melting and sublimation lines of one component, and dielectric constant (tags MLx, SBx).
#pragma once

#include "EngineLimits.h"

namespace frigana {

void SETMLT(int iunit, int icomp, int& ierr, Text255& herr);
void SETSBL(int iunit, int icomp, int& ierr, Text255& herr);
void MELTK(int icomp, double t, double& p, int& ierr, Text255& herr);
void SUBLK(int icomp, double t, double& p, int& ierr, Text255& herr);
void MLTH2O(double t, double& p1, double& p2);
void MLTPH2(int icomp, double t, double& p);

}  // namespace frigana
