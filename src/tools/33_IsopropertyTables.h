// Tables along a line of one constant property, with another running: temperature, pressure and density.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Suggested constant value, limits and step, for a request whose step is 0.
void ISOPTABLELIMITS(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT);

// The table itself; -777 where a point failed.
//   Codes     103201 to 103216 limits of the fluid, 103221 to 103224 from, to and step
//   Notes     A mixture has no upper density (-777), so that every density is refused for it. A request that names one
//             property twice, or one that there is not, is not refused; its rows are what the last table left.
void ISOPTABLECOMPUTE(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT);

}  // namespace frigana
