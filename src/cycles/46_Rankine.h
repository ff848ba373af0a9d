// Organic Rankine cycle: boiler, turbine, condenser and pump.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Solves the cycle and writes the result file.
//   Given     CYCLEIN  parameters (8 and 12 do not exist):
//                       1 boiler level                    1 mean temperature [K], 2 mean pressure [kPa]
//                       2 boiler outlet                   1 temperature [K], 2 superheat [K]
//                       3 boiler drop                     1 pressure [kPa], 2 saturation temperature [K]
//                       4, 5 high pressure vapor line: temperature (1 outlet, 2 fall), drop
//                       6 size                            1 boiler heat [kW], 2 turbine power [kW]
//                       7 isentropic efficiency of the turbine
//                       9, 10 low pressure vapor line: temperature (1 outlet, 2 fall), drop
//                      11 condenser level, 13 drop; its outlet is saturated liquid
//                      14 isentropic efficiency of the pump
//                      15, 16 liquid line: temperature (1 outlet, 2 fall), drop
//                      17 to 20 temperatures of the heat source and of the cooling water: checked, not used
//   Codes     206201 to 206229; 201206 and 201207 at the boiler's outlet
//   Notes     The drop of boiler and condenser is handed to the mean-saturation service with its sign reversed. So the
//             saturation points of the condenser lie at the other ends: the bubble point, which is the pump's inlet, at
//             mean pressure plus half the drop. The reported glide depends on it.
void SOLRANKCYCLE(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT);

}  // namespace frigana
