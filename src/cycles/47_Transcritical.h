// Single-stage cycle whose high side lies above the critical pressure: a gas cooler in place of the condenser, and a
// heat exchanger between the suction line and the line from the gas cooler.
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
//                       8 capacity                        1 swept volume [m3/s], 2 gas cooler [kW], 3 evaporator [kW]
//                       9 isentropic efficiency, 10 volumetric efficiency
//                      11, 12 discharge line: temperature (1 outlet, 2 fall), drop [kPa]
//                      13 mean pressure of the gas cooler [kPa], 14 its outlet temperature [K], 15 its drop [kPa]
//                      16, 17 line before the exchanger: temperature (1 outlet, 2 fall), drop [kPa]
//                      18, 19 line after the exchanger: temperature (1 outlet, 2 fall), drop [kPa]
//                      20 exchanger   1 effectiveness, 2 fall of the hot side [K], 3 outlet temperature of the hot side
//                                     [K], 4 rise of the vapor [K], 5 vapor outlet temperature [K]
//                      21, 22 drop of the hot side [kPa]; of the vapor side, as 5
//   Codes     207202 to 207248
//   Notes     No exchanger (0 under option 1, 2 or 4 of parameter 20) becomes option 2 in the record, one solution.
//             Other options than 2 are met by three secant steps around whole solutions.
void SOLTRANSCRICYCLE(SUBSTANCE& substance, CYCLEIN& cycle, const Text255& FILEOUT);

// The solution for a given fall of the hot side (option 2 of parameter 20).
void SOLTRANSCRICYCLE_MATRIZ(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT);

}  // namespace frigana
