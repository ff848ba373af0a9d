// Drop of saturation temperature that belongs to a drop of pressure, and the reverse.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Side of the saturation line: 0 bubble, any other value dew.
inline constexpr int bubbleSide = 0;
inline constexpr int dewSide = 1;

// Signed: from the lower pressure upward DP and DT are negative.
//   Given     P  [kPa] pressure where the drop begins;  DP [kPa] or DT [K];  SIDE
//   Returned  DT [K] or DP [kPa]; exactly 0 for a drop of exactly 0, without asking the engine
void SATTEMPDROP_DP(const SUBSTANCE& substance, double P, double DP, int SIDE, double& DT);
void SATTEMPDROP_DTSAT(const SUBSTANCE& substance, double P, double DT, int SIDE, double& DP);
// Saturation temperature T [K] at P [kPa].
void SATTEMP_P(const SUBSTANCE& substance, double P, int SIDE, double& T);

}  // namespace frigana
