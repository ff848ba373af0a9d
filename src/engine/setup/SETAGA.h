// The switch of the AGA8 detail characterisation model of natural gas.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Puts the mixture on the AGA8 model.
//   Codes     1       a component is not among the 21 of the model (or the nearest six), or the model is not available
void SETAGA(int& ierr, Text255& herr);

// Brings back what SETAGA replaced. Clears the caches in any case.
void UNSETAGA();

}  // namespace frigana
