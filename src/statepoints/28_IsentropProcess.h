// Compression and expansion with an isentropic efficiency.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

//   Given     ETA    isentropic efficiency
//             PTIN   inlet state (H, S)
//             POUT   [kPa] outlet pressure
//   Returned  PTOUT  outlet state
//   Notes     The ideal step is not checked: -777 of a failed one goes into the arithmetic.
void COMPISOENTRO(const SUBSTANCE& substance, double ETA, const STATEPT& PTIN, double POUT, STATEPT& PTOUT);
void EXPAISOENTRO(const SUBSTANCE& substance, double ETA, const STATEPT& PTIN, double POUT, STATEPT& PTOUT);

}  // namespace frigana
