// Single-stage vapor-compression cycle with its lines, in one pass along the circuit.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Solves the cycle and writes the result file.
//   Given     CYCLEIN  parameters 1 to 15:
//                       1 evaporator level       1 mean temperature [K], 2 mean pressure [kPa]
//                       2 evaporator outlet      1 temperature [K], 2 superheat [K]
//                       3 evaporator drop        1 pressure [kPa], 2 saturation temperature [K]
//                       4 suction line           1 outlet temperature [K], 2 rise [K], 3 superheat at the outlet [K]
//                       5 suction line drop      as 3
//                       6 capacity               1 swept volume [m3/s], 2 condenser [kW], 3 evaporator [kW]
//                       7 isentropic efficiency, 8 volumetric efficiency
//                       9 discharge line         1 outlet temperature [K], 2 fall [K]
//                      10 discharge line drop    as 3
//                      11 condenser level        as 1
//                      12 condenser outlet       1 temperature [K], 2 subcooling [K]
//                      13 condenser drop         as 3
//                      14 liquid line            1 outlet temperature [K], 2 fall [K], 3 subcooling at the outlet [K]
//                      15 liquid line drop       as 3
//             FILEOUT  path of the result file
//   Codes     201201 to 201230, 201300
void SOLBASICCYCLE(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT);

}  // namespace frigana
