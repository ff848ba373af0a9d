// Mixing rules and departure functions of the Helmholtz mixture model (tag HMX): parameters, readers, reducing
// functions. (The sums over components that need the pure equations stand in the dispatch.)
#pragma once

#include "EngineLimits.h"

namespace frigana {

void SETHMX(const Text255& hfmix, int& ierr, Text255& herr);
double PHIMIX(int i, int j, int itau, int idel, double tau, double del, const Composition& x);
void RDXHMX(int ix, int icmp, int icmp2, const Composition& x, double& Tr, double& Dr, int& ierr, Text255& herr);
void REDHMX(const Composition& x, double& Tr, double& Dr);

}  // namespace frigana
