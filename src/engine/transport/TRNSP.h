// Viscosity and thermal conductivity: dispatch to the models of the tags.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Viscosity [uPa s] and thermal conductivity [W/(m K)] of one phase at T [K], D [mol/L] and composition x.
//   Returned  eta, tcx  -9999910 where there is no model
//   Codes     40  no transport equations for a fluid
void TRNPRP(double T, double D, const Composition& x, double& eta, double& tcx, int& ierr, Text255& herr);

// Readers of the collision integral sections.
void SETCI1(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETCI2(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);

}  // namespace frigana
