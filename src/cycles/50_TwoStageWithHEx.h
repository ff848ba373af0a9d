// Two-stage compression with an intermediate heat exchanger and vapor injection.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Solves the cycle and writes the result file. A part of the condensate is expanded to the intermediate pressure,
// evaporates in the exchanger while it subcools the rest, and joins the discharge of the low compressor.
//   Given     CYCLEIN  parameters 1 to 23 and 25:
//                       1 evaporator level                  1 mean temperature [K], 2 mean pressure [kPa]
//                       2 evaporator outlet                 1 temperature [K], 2 superheat [K]
//                       3 evaporator drop                   1 pressure [kPa], 2 saturation temperature [K]
//                       4, 5 suction line: temperature (1 outlet, 2 rise, 3 superheat), drop
//                       6 capacity    1, 2 swept volume of the low, high compressor [m3/s], 3 condenser,
//                                     4 evaporator [kW]
//                       7, 8 isentropic, volumetric efficiency of the low compressor; 9, 10 of the high compressor
//                      11, 12 discharge line: temperature (1 outlet, 2 fall), drop
//                      13 condenser level, 14 outlet (1 temperature, 2 subcooling), 15 drop
//                      16, 17 liquid line: temperature (1 outlet, 2 fall, 3 subcooling), drop
//                      18 superheat of the injected vapor behind the exchanger [K]
//                      19 fall of the liquid in the exchanger [K]
//                      20, 21 pressure drops of its liquid and injection side [kPa]
//                      22, 23 rise [K] and pressure drop [kPa] of the injection line
//                      25 intermediate pressure    1 given behind the exchanger [kPa], 2 geometric mean
//   Codes     210201 to 210240, 201205, 210301
void SOLTWOSTAGEWTHEX(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT);

// The solution itself: the exchanger is given by the fall of its liquid, so that nothing is searched.
void SOLTWOSTAGEWTHEX_MATRIZ(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT);

}  // namespace frigana
