// Single-stage vapor-compression cycle with a heat exchanger between suction line and liquid line.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Solves the cycle for any way of giving the exchanger and writes the result file.
//   Given     CYCLEIN  parameters 1 to 22:
//                       1 evaporator level                1 mean temperature [K], 2 mean pressure [kPa]
//                       2 evaporator outlet               1 temperature [K], 2 superheat [K]
//                       3 evaporator drop                 1 pressure [kPa], 2 saturation temperature [K]
//                       4, 5 suction line before the exchanger: temperature (1 outlet, 2 rise), drop
//                       6, 7 suction line after the exchanger, likewise
//                       8 capacity                        1 swept volume [m3/s], 2 condenser [kW], 3 evaporator [kW]
//                       9 isentropic efficiency, 10 volumetric efficiency
//                      11, 12 discharge line: temperature (1 outlet, 2 fall), drop
//                      13 condenser level, 14 outlet (1 temperature, 2 subcooling), 15 drop
//                      16, 17 liquid line before the exchanger: temperature (1 outlet, 2 fall), drop
//                      18, 19 liquid line after the exchanger: temperature (1 outlet, 2 fall, 3 subcooling), drop
//                      20 exchanger   1 effectiveness, 2 fall of the liquid [K], 3 liquid outlet temperature [K],
//                                     4 rise of the vapor [K], 5 vapor outlet temperature [K]
//                      21, 22 drops of the liquid and of the vapor side
//   Codes     202201 to 202248, 202300
//   Notes     Options other than 2 of parameter 20 are met by three secant steps around whole solutions.
void SOLCYCLEWTHEX(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT);

// The solution for a given fall of the liquid (option 2 of parameter 20).
void SOLCYCLEWTHEX_MATRIZ(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT);

}  // namespace frigana
