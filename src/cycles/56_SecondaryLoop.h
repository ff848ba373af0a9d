// Pumped two-phase loop: a pump feeds an evaporator, its vapor goes to a receiver and condenses there.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Solves the loop and writes its result; it is part of the pumped CO2 system and no request of its own.
//   Given     CYCLEIN  parameters 1 to 10:
//                       1 evaporator level        1 mean temperature [K], 2 mean pressure [kPa]
//                       2 evaporator outlet       1 temperature [K], 2 superheat [K], 3 quality
//                       3 evaporator drop         1 pressure [kPa], 2 saturation temperature [K]
//                       4 low pressure vapor line 1 outlet temperature [K], 2 rise [K], 3 quality at the outlet
//                       5 its drop                as 3
//                       6 evaporator capacity     1 value [kW]
//                       7 isentropic efficiency of the pump
//                       8 condenser outlet        1 temperature [K], 2 subcooling [K]
//                       9 liquid line of the pump 1 outlet temperature [K], 2 rise [K]
//                      10 its drop                as 3
//   Codes     201202 to 201230; they share the numbers of the basic cycle
//   Notes     The pump takes saturated liquid from the receiver whatever the subcooling. The evaporator's inlet is
//             saturated liquid at its temperature, and its row has the pressure of that point.
void SOLSECONDARYCYCLE(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT);

}  // namespace frigana
