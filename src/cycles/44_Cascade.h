// Cascade of two basic cycles: the condenser of the low temperature circuit is the evaporator of the high one.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Solves the low circuit, then the high one, and writes one result: the high circuit, the low circuit, the system.
//   Given     CYCLEIN1  high temperature circuit, parameters of the basic cycle; 1 and 6 of the request have no
//                       effect and are written here
//             CYCLEIN2  low temperature circuit, parameters of the basic cycle, and
//                       16 intermediate temperatures   1 mean condensing temperature of the low circuit less the mean
//                                                      evaporating temperature of the high one [K], 2 the latter [K]
//   Codes     204201, 204202; those of the basic cycle, which do not tell their circuit
//   Notes     The scratch files "temporal1.txt" (high) and "temporal2.txt" (low) stay after a failure.
void SOLCASCADECYCLE(SUBSTANCE& substance1, CYCLEIN& cycle1, SUBSTANCE& substance2, const CYCLEIN& cycle2,
                     const Text255& FILEOUT);

}  // namespace frigana
