// Filling of a transport container.
// State: none.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Largest mass of a fluid per mass of water that a container takes.
//   Given     x       mole fractions
//             ptest   test pressure of the container, for a fluid whose critical temperature is below 65 C [kPa]
//   Returned  fill    kg per kg of water at 15 C
//             ptest   for other fluids the saturation pressure at 65 C [kPa]
//   Codes     1       the fluid's file does not permit it: fill and ptest are 0
//             -1      ptest is below the saturation pressure at 65 C (the critical one of a fluid that has none there),
//                     which it becomes: fill is -999
//   Notes     Fluids with a critical temperature above 65 C: liquid full at 60 C, and at most 95 % full at 50 C.
void DOTFILL(const Composition& x, double& ptest, double& fill, int& ierr, Text255& herr);

}  // namespace frigana
