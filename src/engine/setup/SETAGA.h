// The switch of the AGA8 detail characterisation model of natural gas.
// State: what it replaced.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Puts the mixture that is set up on the AGA8 model: its equation, gas constant, molar masses and ideal gases, and a
// reference state of zero for every ideal gas at 298.15 K and 101.325 kPa. Call it after SETUP, which goes back to the
// Helmholtz model.
//   Codes     1       a component is neither among the 21 of the model nor among the six that are mapped on the
//   nearest;
//                     nothing is changed
//   Notes     A pure fluid keeps its own equation.
void SETAGA(int& ierr, Text255& herr);

// Brings back what SETAGA replaced. Clears the caches in any case.
void UNSETAGA();

}  // namespace frigana
