// The basic cycle with seven parameters: an ideal circuit without losses in lines and heat exchangers.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Rewrites the seven parameters into those of the basic cycle and solves that.
//   Given     CYCLEIN  1 evaporating temperature [K]; 2 superheat [K]; 3 suction line: 1 outlet temperature [K], 2 rise
//                      [K]; 4 swept volume [m3/s]; 5 isentropic efficiency; 6 condensing temperature [K];
//                      7 subcooling [K]
//   Codes     those of SOLBASICCYCLE
void SOLBASICBASICCYC(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT);

}  // namespace frigana
