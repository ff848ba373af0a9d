// Saturation of a pure fluid by Newton's method in both densities at once, and in temperature too where the pressure is
// given: what is tried first. Where it does not converge, or its result does not stand its checks, the iterations of
// SAT_SUB_PURE answer, with their codes and texts.
// State: pureNewtonControl, and the last pairs.
#pragma once

#include "CriticalPoint.h"

namespace frigana {

// Left on but by comparisons of both ways; the counts are for measurements, cleared by whoever measures.
struct PureNewtonControl {
    bool enabled = true;
    long asked = 0, found = 0, recalled = 0;
};
extern PureNewtonControl pureNewtonControl;

// True if the fluid is described by one Helmholtz energy that the methods can work on.
bool hasPlainHelmholtzEnergy(int icomp);

// Both densities and the pressure at a temperature.
//   Given     T         below the critical temperature [K]
//             icomp     component slot
//             critical  critical point
//   Returned  p, rhol, rhov  [kPa, mol/L]
//             (value)   false: not found, nothing is returned
//   Notes     Starts from the ancillary equations; without them, or where the result lies far from them, there is none.
//             The result is an equilibrium (pressures and Gibbs energies agree to the rounding, or the last step would
//             not be as short as it has to be), each density is on its own side of the spinodals, and up to 0.99 Tc the
//             critical point lies between them.
//   Source    R. Akasaka, J. Therm. Sci. Technol. 3 (2008) 442
bool newtonPureAtTemperature(double T, int icomp, const CriticalPoint& critical, double& p, double& rhol, double& rhov);

// Both densities and the temperature at a pressure.
//   Given     p         below the critical pressure [kPa]
//             icomp, critical  as above
//   Returned  T, rhol, rhov  [K, mol/L]
//             (value)   false: not found, nothing is returned
bool newtonPureAtPressure(double p, int icomp, const CriticalPoint& critical, double& T, double& rhol, double& rhov);

// The last pair that one of the two has found, where it was at this very temperature or pressure and the equation still
// holds the state that the search ended at.
//   Returned  as above
//   Notes     Both lines of a fluid are asked for in turn, and both are this pair. An equation answers beside its last
//             state with the values of that one: were it not the same, the last digits of what follows were others.
bool lastPureAtTemperature(double T, int icomp, double& p, double& rhol, double& rhov);
bool lastPureAtPressure(double p, int icomp, double& T, double& rhol, double& rhov);

// Forgets the last pairs: the equation may have become another one (part of resetSaturationMemo).
void forgetPurePairs();

}  // namespace frigana
