// Transcritical booster: two evaporators at two temperatures, fed from a receiver behind a gas cooler. The vapor of the
// low temperature (LT) evaporator is compressed by a low stage compressor to the pressure at the outlet of the medium
// temperature (MT) evaporator, mixes with that one's vapor and with the flash gas of the receiver, and goes through a
// heat exchanger to the high stage compressor.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Solves the system for any way of giving the exchanger and writes the result file.
//   Given     CYCLEIN  parameters 1 to 29:
//                       1 MT evaporator level             1 mean temperature [K], 2 mean pressure [kPa]
//                       2 its outlet                      1 temperature [K], 2 superheat [K]
//                       3 its drop                        1 pressure [kPa], 2 saturation temperature [K]
//                       4, 5 suction line before the exchanger: temperature (1 outlet, 2 rise), drop
//                       6, 7 suction line after the exchanger, likewise
//                       8 capacity                        1 of the MT evaporator, 2 of both [kW]
//                       9 isentropic efficiency, 10 volumetric efficiency of the high stage
//                      11, 12 discharge line: temperature (1 outlet, 2 fall), drop [kPa]
//                      13 mean pressure of the gas cooler [kPa], 14 its outlet temperature [K], 15 its drop [kPa]
//                      16, 17 line before the exchanger: temperature (1 outlet, 2 fall), drop [kPa]
//                      18, 19 line after the exchanger: temperature (1 outlet, 2 fall), drop [kPa]
//                      20 exchanger   1 effectiveness, 2 fall of the hot side [K], 3 outlet temperature of the hot side
//                                     [K], 4 rise of the vapor [K], 5 vapor outlet temperature [K]
//                      21, 22 drop of the hot side [kPa]; of the vapor side, as 5
//                      23 receiver pressure [kPa]
//                      24, 25, 26 LT evaporator, as 1, 2, 3
//                      27 isentropic efficiency, 29 volumetric efficiency of the low stage
//                      28 second capacity                 1 of the LT evaporator [kW], 2 fraction of the MT evaporator,
//                                                         3 fraction of the LT evaporator
//   Codes     214202 to 214262
//   Notes     No exchanger (0 under option 1, 2 or 4 of parameter 20) becomes option 2 in the record, one solution.
//             Other options than 2 are met by three secant steps around whole solutions. Neither the LT level against
//             the MT level nor the receiver's against either is checked.
void SOLTRANSCRIBOOSTER(SUBSTANCE& substance, CYCLEIN& cycle, const Text255& FILEOUT);

// The solution for a given fall of the hot side (option 2 of parameter 20).
void SOLTRANSCRIBOOSTER_MATRIZ(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT);

}  // namespace frigana
