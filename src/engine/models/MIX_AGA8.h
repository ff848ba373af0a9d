// AGA8 detail characterisation model of natural gas (tag AGA at the top level). Its switch stands in SETAGA.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// True where the tables of the model are in the program.
inline constexpr bool aga8Available = false;

// Reduced residual Helmholtz energy of a composition and its derivatives; 0 where the model is not available.
double PHIAGA(int itau, int idel, double tau, double del, const Composition& x);

}  // namespace frigana
