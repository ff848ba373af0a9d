// Dew points of mixtures whose cold liquid falls apart into two: of the two liquids that may stand beside a vapor one
// belongs to a lower pressure, and the other is no equilibrium of the mixture.
#pragma once

#include "CriticalPoint.h"
#include "PhasePair.h"

namespace frigana {

// Replaces a dew point that is not stable by the stable one.
//   Given     z, critical  the mixture
//   Changed   dew          the point that was found
//   Returned  (value)      false if it is not stable and no stable one was found
//   Notes     The first call for a composition below 0.75 of its critical temperature looks along the dew line how far
//             up the liquid may split; above that nothing is asked.
bool settleDewPoint(const Composition& z, const CriticalPoint& critical, PhasePair& dew);

// The same at the pressure of the point that was found.
bool settleDewPointAtPressure(const Composition& z, const CriticalPoint& critical, PhasePair& dew);

// Forgets the composition.
void resetSplitLiquids();

}  // namespace frigana
