// Viscosity and thermal conductivity: dispatch to the models of the tags.
#pragma once

#include "EngineLimits.h"

namespace frigana {

void TRNPRP(double T, double D, const Composition& x, double& eta, double& tcx, int& ierr, Text255& herr);

}  // namespace frigana
