// Compressors in series with a flash tank between each two of them.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Solves the cycle of N compressors and N - 1 flash tanks and writes the result file. Liquid from the condenser falls
// through a chain of expansion valves and tanks; the vapor of each tank joins the discharge of the compressor of its
// stage, the liquid of the lowest one feeds the evaporator. Stage 1 is the lowest.
//   Given     CYCLEIN  parameters 1 to 16 and five for each of the stages 1 to N - 1:
//                       1 evaporator level                  1 mean temperature [K], 2 mean pressure [kPa]
//                       2 evaporator outlet                 1 temperature [K], 2 superheat [K]
//                       3 evaporator drop                   1 pressure [kPa], 2 saturation temperature [K]
//                       4, 5 suction line: temperature (1 outlet, 2 rise, 3 superheat), drop
//                       6 capacity    1 swept volume of the last compressor [m3/s], 2 condenser, 3 evaporator [kW]
//                       7, 8 isentropic, volumetric efficiency of the last compressor
//                       9, 10 discharge line: temperature (1 outlet, 2 fall), drop
//                      11 condenser level, 12 outlet (1 temperature, 2 subcooling), 13 drop
//                      14, 15 liquid line: temperature (1 outlet, 2 fall, 3 subcooling), drop
//                      16 number of compressors N, its option
//                      17, 18 injection line of stage 1: rise (option 2), drop
//                      19, 20 isentropic, volumetric efficiency of compressor 1
//                      21 intermediate pressures    1 equal pressure ratios, 2 from the mean saturation temperature
//                                                   of each stage [K]
//                      22 to 26 the same for stage 2, and so on; the option of parameter 21 counts for all stages
//   Codes     211201 to 211234, 211300. 211228 stands for the tank's quality and for the liquid line
//   Notes     The evaporator is solved before its inlet is known, from an estimate with a quality of 0.1.
//             A drop of saturation temperature of an injection line is reported and has no effect.
//             With the condenser capacity given and more than two compressors the flows of the tanks above the first
//             are zero, and the flow of the evaporator is what the first tank leaves of the whole flow.
void SOLMULTISTAGEFTK(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT);

}  // namespace frigana
