// Facts of one fluid: composition, constants, limits, global warming potential and safety class.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Writes the result file of a fluid information request.
void FLUIDINFORMATION(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT);

// Fills GWP for the heading of a cycle's result, and SAFETYCLASS of a predefined mixture; -777 for an unknown fluid.
void FLUIDGWP(SUBSTANCE& substance);

}  // namespace frigana
