// AGA8 detail characterisation model (tag AGA at the top level).
#pragma once

#include "EngineLimits.h"

namespace frigana {

double PHIAGA(int itau, int idel, double tau, double del, const Composition& x);
void SETAGA(int& ierr, Text255& herr);
void UNSETAGA();

}  // namespace frigana
