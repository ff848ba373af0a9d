// Complete state points from two given properties, in application units: the only bridge between the application and
// the flash routines of the engine.
//
// All eight have one form, PROPSIMPLExy(SUBSTANCE, X, Y, POINT):
//   Given     SUBSTANCE  fluid: WM [g/mol], ZMOL (mole fractions) and PTBAD are read
//             X, Y       the two properties, P [kPa], T [K], H [kJ/kg], S [kJ/(kg K)], D [kg/m3], Q by mass
//   Returned  POINT      the state; TSAT is left alone
//   Notes     A failed flash gives PTBAD with the two given properties; PT, PD and TD also keep the engine's IERR and
//             HERR. Warnings of the engine count as success. CV, CP, W and the transport properties of a two-phase
//             state are -777, as is any transport property or surface tension that the fluid has no model of.
//             Q of a single-phase state is held within 0 to 1 by PT, PD and TD (the solvers test it against 0 and 1),
//             and is the engine's mark (998, -998, 999 or a value outside 0 to 1) from PH, PS and TH.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

void PROPSIMPLEPH(const SUBSTANCE& substance, double P, double H, STATEPT& POINT);
// Also writes and removes "cycle_1.txt" in the current folder, a trace of the isentropic step; a folder that cannot
// be written to does no harm.
void PROPSIMPLEPS(const SUBSTANCE& substance, double P, double S, STATEPT& POINT);
void PROPSIMPLEPT(const SUBSTANCE& substance, double P, double T, STATEPT& POINT);
void PROPSIMPLEPD(const SUBSTANCE& substance, double P, double D, STATEPT& POINT);
void PROPSIMPLETD(const SUBSTANCE& substance, double T, double D, STATEPT& POINT);
void PROPSIMPLETQ(const SUBSTANCE& substance, double T, double Q, STATEPT& POINT);
void PROPSIMPLEPQ(const SUBSTANCE& substance, double P, double Q, STATEPT& POINT);
// Of two densities with the same temperature and enthalpy the lower one: an evaporator's inlet is two-phase.
void PROPSIMPLETH(const SUBSTANCE& substance, double T, double H, STATEPT& POINT);

}  // namespace frigana
