// Two circuits with mechanical subcooling: a medium temperature circuit, which is a basic cycle, also subcools the
// liquid of a low temperature circuit. Each may have a fluid of its own, and neither's states depend on the other's.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Solves both circuits and writes one result: the medium temperature circuit with the figures of the system in it, then
// the low temperature circuit.
//   Given     CYCLEIN1  medium temperature circuit, parameters of the basic cycle
//             CYCLEIN2  low temperature circuit, parameters 1 to 19:
//                        1 to 13   those of the basic cycle
//                       14, 15     liquid line before the subcooler: temperature (1 outlet, 2 fall), drop
//                       16, 17     liquid line after the subcooler: temperature (1 outlet, 2 fall, 3 subcooling), drop
//                       18         subcooler   1 heat exchanged [kW], 2 fall [K], 3 outlet temperature [K]
//                       19         its drop    1 pressure [kPa], 2 saturation temperature [K]
//   Codes     those of the basic cycle (medium temperature), 203201 to 203240 and 203300 (low temperature)
//   Notes     More heat in the subcooler than the medium temperature evaporator gives is no error: the net capacity is
//             negative then. The scratch files "temporal1.txt" and "temporal2.txt" stay after a failure.
void SOLCOMBINEDCYCLE(SUBSTANCE& substance1, const CYCLEIN& cycle1, SUBSTANCE& substance2, const CYCLEIN& cycle2,
                      const Text255& FILEOUT);

// The low temperature circuit for any way of giving the subcooler; the heat exchanged is met by three secant steps
// around whole solutions.
void SOLBASICCYCLE_CON_MECHCOOLING(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT);

// The low temperature circuit for a given fall or outlet temperature of the subcooler.
void SOLBASICCYCLE_CON_MECHCOOLMATRIZ(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT);

}  // namespace frigana
