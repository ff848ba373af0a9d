// The saturation dome that every result prints for its diagrams.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Fills the four ten-row tables PTSPL, PTSPV (by pressure) and PTSTL, PTSTV (by temperature).
//   Given     PSTART  [kPa] the lowest row lies at 0.7 of it, or at PMIN where that is higher
//             shown   false: the rows are for nobody to read; those of a blend are left empty
//   Notes     Rows 1 to 9 reach to 0.83 PC in equal steps; the tenth stands for the critical point with estimated
//             enthalpy and entropy. With PSTART above the critical pressure the rows run backwards.
void INITDATADOME(SUBSTANCE& substance, double PSTART, bool shown = true);

}  // namespace frigana
