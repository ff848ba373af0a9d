// Critical points: that of a composition as CRITP knows it, as one record, and that of the equation of state itself.
#pragma once

#include "EngineLimits.h"

namespace frigana {

struct CriticalPoint {
    double T = 0, p = 0, D = 0;  // [K, kPa, mol/L]
};

// Of a composition; codes and texts of CRITP, or none where the caller has met them before.
CriticalPoint criticalPointOf(const Composition& z, int& ierr, Text255& herr);
CriticalPoint criticalPointOf(const Composition& z);

// The highest and the lowest critical temperature of the components that are present [K].
double hottestComponent(const Composition& z);
double coldestComponent(const Composition& z);

// True if one component is far above its critical temperature and another one below its own or a little above: a gas
// over a liquid that dissolves little of it. The critical point of such a mixture bounds neither the temperature nor
// the pressure of its two phases, which under high pressures may be hotter than either component's.
bool gasOverLiquid(double T, const Composition& z);

// True if the critical temperatures of the components, but of those below a hundredth of the whole, are so far apart
// that neither the critical point nor the lines of the mixture tell where it has two phases: its critical line may be
// broken, and a line may have other branches. Ammonia and water, which mix in all proportions, are not.
bool farApart(const Composition& z);

// Critical point of the equation of state itself, where dp/drho and d2p/drho2 vanish.
//   Given     x       mole fractions
//   Returned  tc, rhoc, pc  [K, mol/L, kPa]
//   Codes     1       not converged
void FNCRPT(const Composition& x, double& tc, double& rhoc, double& pc, int& ierr, Text255& herr);

// Density at which d2p/drho2 vanishes on an isotherm.
//   Given     x       mole fractions
//             T       [K]
//             rho     start [mol/L]
//   Returned  rho     [mol/L]
void CRTDEN(const Composition& x, double T, double& rho);

}  // namespace frigana
