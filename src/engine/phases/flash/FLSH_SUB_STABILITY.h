// Single phases of mixtures where a flash has chosen them by the critical point, which is an estimate: whether they are
// stable, and the two phases that belong to the inputs where they are not.
// State: none.
#pragma once

#include "FlashBricks.h"
#include "SAT_SUB_NEWTON.h"

namespace frigana {

// True if a mixture may have two phases at a temperature and pressure: below 1.5 times the critical point's, or a gas
// over a liquid, and below the hottest saturation state. False for what has no stability test.
bool mayBeTwoPhase(double T, double p, const Composition& z, const CriticalPoint& critical);

// True if a single phase of density r.D may be one of two, and falls apart.
bool isMetastable(double T, double p, double D, const Composition& z, const CriticalPoint& critical);

// The same of a single phase outside of the lines of a mixture whose components are far apart; of others the lines tell
// all. Where a liquid falls apart into two liquids it stays one: the flashes look for a liquid and a vapor.
bool isMetastableBesideLines(const FlashResult& r, const Composition& z, const CriticalPoint& critical);

// A temperature above that of any two phases [K].
double aboveTwoPhases(const Composition& z, const CriticalPoint& critical);

// From a state of two phases to that of the conditions.
//   Returned  r    with D; false if the state was not found, r is then as it was
bool twoPhasesNear(const Condition& a, const Condition& b, const Composition& z, FlashResult& r);

// The state of a mixture on its isobar, by the flash at temperature and pressure: enthalpy, entropy, energy and volume
// rise with temperature through one phase and two alike. From the first state of two phases Newton's method goes on.
//   Given     letter  H, S, E, or D for the density b
//             hot     temperature above that of the state
//   Returned  T, r    false if the state was not found
bool solveOnIsobar(double p, double b, char letter, const Composition& z, double tmin, double hot, double& T,
                   FlashResult& r);

// The same on its isotherm, downward from a pressure: density rises with pressure, and entropy, enthalpy and energy
// fall up to far beyond the two phases.
//   Given     highest  pressure; for a density or an entropy beyond it the search begins above
//   Returned  p, r    false if the state was not found
bool solveOnIsotherm(double T, double b, char letter, const Composition& z, double highest, double& p, FlashResult& r);

// The same on its isochore, by the flash at temperature and density.
//   Returned  T, p in r, r    false if the state was not found
bool solveOnIsochoreByFlash(double D, double b, char letter, const Composition& z, double tmin, double hot, double& T,
                            FlashResult& r);

}  // namespace frigana
