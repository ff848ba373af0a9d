// Pairs of saturated states that belong to one temperature or one pressure.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Bubble and dew state of the fluid, both at its own overall composition.
//   Given     T [K] or P [kPa]; the side flag of the interface has no effect
//   Returned  LIQ, VAP   the bubble and the dew point; -777 where a point failed
void PROPMIXTURET_BD(const SUBSTANCE& substance, double T, int side, STATEPT& LIQ, STATEPT& VAP);
void PROPMIXTUREP_BD(const SUBSTANCE& substance, double P, int side, STATEPT& LIQ, STATEPT& VAP);

// The two phases in equilibrium with each other, each at its own composition.
//   Given     KPH   1: the fluid's composition is the liquid (bubble point), 2: it is the vapor (dew point)
//   Codes     an error of SATT or SATP ends the run
void PROPMIXTURET_EQ(const SUBSTANCE& substance, double T, int KPH, STATEPT& LIQ, STATEPT& VAP);
void PROPMIXTUREP_EQ(const SUBSTANCE& substance, double P, int KPH, STATEPT& LIQ, STATEPT& VAP);

// Points of the saturation dome for diagrams: only T, P, H and S are filled, and failures are passed over.
void PROPMIXTURET_BD_DOME(const SUBSTANCE& substance, double T, STATEPT& LIQ, STATEPT& VAP);
void PROPMIXTUREP_BD_DOME(const SUBSTANCE& substance, double P, STATEPT& LIQ, STATEPT& VAP);

}  // namespace frigana
