// What the two saturation point tools share: their checks, their side flag and their result file.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// A pair of saturated states at a temperature or pressure, of the bubble (1) or dew (2) side.
using SaturationPair = void (*)(const SUBSTANCE& substance, double given, int side, STATEPT& LIQ, STATEPT& VAP);

//   Codes     105201, 105202 temperature outside TMIN to TC; 105211, 105212 pressure outside PMIN to PC
void answerSaturationPoint(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT, SaturationPair atT,
                           SaturationPair atP);

}  // namespace frigana
