// Properties that a saturation line, or a flash, is searched by.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Lines, and selectors of a phase where a routine takes them by number. The retrograde dew line lies between the points
// of highest temperature and critical.
inline constexpr int liquidLine = 1, vaporLine = 2, meltingLine = 3, sublimationBranch = 4;
inline constexpr int retrogradeVaporLine = -2;

// Property of a phase by its letter: H, S, E [J/mol, J/(mol K)], P pressure [kPa], D density [mol/L], T temperature
// [K].
double propertyByLetter(char letter, double T, double D, const Composition& z);

}  // namespace frigana
