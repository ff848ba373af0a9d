// Short ways of the flashes for plain states of pure fluids.
#pragma once

#include "FlashBricks.h"

namespace frigana {

// The state of a pure fluid at pressure and enthalpy, entropy or energy: the steps of PBFLSH by Newton's methods.
//   Given     letter    H, S or E
//             p, b      pressure [kPa], value of the property
//             icomp, critical, limits  as PBFLSH has found them
//   Returned  r         the state, without code and text
//             (value)   false: PBFLSH has to find it, or to refuse it; r holds no state
//   Notes     A vapor is told by a margin on the ancillary vapor pressure, so that its saturated state is not looked
//             for; all others by the saturated state, as there. Inside the temperatures of the equation the property is
//             inside of its range, since it rises along an isobar.
bool flashPureOnIsobar(char letter, double p, double b, int icomp, const Composition& z, const CriticalPoint& critical,
                       const EosLimits& limits, FlashResult& r);

}  // namespace frigana
