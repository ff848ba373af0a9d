// One state from two of temperature, pressure and density.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

//   Codes     104201 to 104215
//   Notes     A state that cannot be computed is no error: the file holds what was asked for and -777. One
//             property twice, or one that there is not, is no state: all values are -777.
void SPECIFSTATEPOINT(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT);

}  // namespace frigana
