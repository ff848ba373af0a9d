// Single-stage cycle that holds the discharge temperature down: liquid from the condenser is expanded into the suction
// line where the compression would become hotter than allowed.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Solves the cycle and writes the result file.
//   Given     CYCLEIN  parameters 1 to 18:
//                       1 evaporator level                1 mean temperature [K], 2 mean pressure [kPa]
//                       2 evaporator outlet               1 temperature [K], 2 superheat [K]
//                       3 evaporator drop                 1 pressure [kPa], 2 saturation temperature [K]
//                       4, 5 suction line: temperature (1 outlet, 2 rise), drop
//                       6 capacity                        1 swept volume [m3/s], 2 condenser [kW], 3 evaporator [kW]
//                       7 isentropic efficiency, 8 volumetric efficiency
//                       9, 10 discharge line: temperature (1 outlet, 2 fall), drop
//                      11 condenser level, 12 outlet (1 temperature, 2 subcooling), 13 drop
//                      14, 15 liquid line: temperature (1 outlet, 2 fall, 3 subcooling), drop
//                      16 highest temperature at the compressor outlet [K]
//                      17, 18 injection line: temperature (1 outlet, 2 fall, 3 subcooling), drop
//   Codes     209201 to 209235, 209300. 209228 and 209229 stand for the discharge line and for the injection line
//   Notes     The injected fraction comes from five secant steps on the compressor's inlet enthalpy, whether or not
//             they met parameter 16; the result reports the temperature that was reached.
void SOLLIQINJECTION(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT);

}  // namespace frigana
