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

// The state of a pure fluid at enthalpy or energy, and entropy.
//   Given     letter    H or E
//             given, s  [J/mol, J/(mol K)]
//             icomp, critical  component, critical point
//             tmin, tmax  limits of the equation's temperatures [K]
//   Returned  r         one phase: T and D; both phases: T, p, Dl, Dv, q and the means of both
//             (value)   none: the general search has to find it, or to refuse it; r holds no state
//   Notes     Along an isentrope through both phases h = h' + T (s - s'), dh/dT = v dp/dT and de = -p dv, so that
//             enthalpy and energy rise with temperature, and there is one state of both at most. One phase is looked
//             for where the isentrope leaves the phases, and is stable if its density is outside of the saturated
//             ones.
enum class PureState { none, onePhase, bothPhases };
PureState flashPureAtEntropy(char letter, double given, double s, int icomp, const Composition& z,
                             const CriticalPoint& critical, double tmin, double tmax, FlashResult& r);

}  // namespace frigana
