// The two phases in equilibrium with each other at a temperature or a pressure.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

//   Codes     105201, 105202, 105211, 105212
void SATPOINTSATEQUIL(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT);

}  // namespace frigana
