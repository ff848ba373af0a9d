// Pumped CO2 system: a basic cycle whose evaporator is the condenser of a pumped secondary loop.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Solves the loop, then the high circuit, and writes one result: the high circuit, the loop, the system.
//   Given     CYCLEIN1  high temperature circuit, parameters of the basic cycle; 1 and 6 of the request have no
//                       effect and are written here
//             CYCLEIN2  the loop, parameters 1 to 10 of SOLSECONDARYCYCLE, and
//                       11 intermediate temperatures   1 condensing temperature of the loop less the mean evaporating
//                                                      temperature of the high circuit [K], 2 the latter [K]
//   Codes     204201, 204202, which are those of the cascade; those of the basic cycle and of the loop, which do not
//             tell their circuit
//   Notes     The scratch files "temporal1.txt" (high) and "temporal2.txt" (loop) stay after a failure.
void SOLPUMPEDCO2SYSTEM(SUBSTANCE& substance1, CYCLEIN& cycle1, SUBSTANCE& substance2, const CYCLEIN& cycle2,
                        const Text255& FILEOUT);

}  // namespace frigana
