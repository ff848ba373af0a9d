// Tables of saturated states along temperature or pressure.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Suggested limits and step, for a request whose step is 0.
void SATPTABLELIMITS(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT);

// The table itself: one row per step, liquid and vapor at the fluid's own composition; -777 where a point failed.
//   Codes     102201 to 102204 limits of the fluid, 102211 to 102214 from, to and step
void SATPTABLECOMPUTE(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT);

}  // namespace frigana
