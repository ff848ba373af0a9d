// Saturated liquid and vapor of the same overall composition at a temperature or a pressure.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

//   Codes     105201, 105202, 105211, 105212, the same as of the phases in equilibrium
void SATPOINTSATCOMPO(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT);

}  // namespace frigana
