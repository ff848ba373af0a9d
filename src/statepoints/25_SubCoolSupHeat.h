// Subcooling below the bubble temperature and superheat above the dew temperature at a pressure.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Subcooling of a liquid at P [kPa] and T [K]; 0 above the bubble temperature.
void SUBCOOLDEGREE_TIN(const SUBSTANCE& substance, double P, double T, double& SUB);
// Superheat of a vapor at P [kPa] and T [K]; 0 below the dew temperature.
void SUPHEATDEGREE_TIN(const SUBSTANCE& substance, double P, double T, double& SH);
// Temperature SUB [K] below the bubble temperature at P; a negative SUB is not refused.
void SUBCOOLDEGREE_SUBC(const SUBSTANCE& substance, double P, double SUB, double& T);
// Temperature SH [K] above the dew temperature at P.
void SUPHEATDEGREE_SUPH(const SUBSTANCE& substance, double P, double SH, double& T);

}  // namespace frigana
