// Transport properties by extended corresponding states (tag ECS).
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Reader of a TRN section.
//   Returned  href           name of the reference fluid's file; blank where no parameters were stored
//             heos, hvs, htc tags of its equation of state, viscosity and conductivity
void SETTRN(int nread, int icomp, const Text12& hcas, Text255& href, Text3& heos, Text3& hvs, Text3& htc, int& ierr,
            Text255& herr);

}  // namespace frigana
