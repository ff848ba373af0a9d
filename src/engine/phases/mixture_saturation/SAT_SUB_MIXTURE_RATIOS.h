// What stands behind the substitutions of models without composition derivatives.
#pragma once

#include "CriticalPoint.h"
#include "PhasePair.h"

namespace frigana {

// Two phases at given temperature and pressure by exchange of the ratios y/x, the share from the material balance
// inside its bracket, and the steps shortened where they overshoot and lengthened where they lag. The balance of
// substituteCompositions has a second root at the share 0, where it may stop.
//   Given     pair     T, p and a start of both compositions
//   Returned  pair     the rest
//             (value)  false if there is no equilibrium of fugacities within 1e-8
//   Source    B. M. Irons, R. C. Tuck, Int. J. Numer. Meth. Eng. 1 (1969) 275 (length of the steps)
bool exchangeByRatios(const Composition& z, PhasePair& pair);

// A bubble or dew point at given temperature: the fractions of the incipient phase by steps of such a length, the
// pressure by the sum of its fractions, which changes with it in proportion. For liquids where mixtureAtTemperature
// swings to and fro.
//   Given     pair     T
//             kph      1 bubble, 2 dew point
//   Returned  pair     the rest
//             (value)  false if the fugacities do not agree within 1e-8
bool lineByParts(PhasePair& pair, const Composition& z, int kph);

// A bubble or dew point at given pressure by a secant over the temperatures of the same, where mixtureAtPressure
// has stopped before the fugacities are equal.
//   Given     pair     p, and a start of T
//             kph      1 bubble, 2 dew point
//   Returned  pair     the rest
//             (value)  false if the pressure was not found
bool lineByTemperatures(PhasePair& pair, const Composition& z, int kph, const CriticalPoint& critical);

}  // namespace frigana
