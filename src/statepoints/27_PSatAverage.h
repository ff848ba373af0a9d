// Mean saturation level of a heat exchanger: from a mean temperature or a mean pressure and a drop of pressure or of
// saturation temperature to the pressures at both ends.
//
// The drop lies half before and half behind the mean: inlet P + DP/2, outlet P - DP/2. Mean temperature is the mean of
//   condenser             dew temperature at the inlet, bubble temperature at the outlet
//   evaporator            temperature of the two-phase inlet (pressure and enthalpy HIN), dew temperature at the outlet
//   secondary evaporator  bubble temperature at the inlet, dew temperature at the outlet
//
//   Given/Returned  T      [K]    mean temperature
//                   P      [kPa]  mean pressure
//                   DP     [kPa]  drop of pressure
//                   DT     [K]    drop of saturation temperature
//                   HIN    [kJ/kg] enthalpy at the evaporator's inlet
//   Returned        GLIDE  [K]    condenser, secondary: dew minus bubble temperature of these two points;
//                                 evaporator: dew temperature at the mean pressure minus temperature of the inlet
//                   BUB, DEW      condenser, secondary: the points at the two ends; evaporator: at the mean pressure
//   Notes           A mean pressure for a mean temperature is found by at most five straight-line steps; the last one
//                   stands whether or not it met the 0.001 K.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

void PCOND_TDP(const SUBSTANCE& substance, double T, double DP, double& P, double& DT, double& GLIDE, STATEPT& BUB,
               STATEPT& DEW);
void PCOND_TDT(const SUBSTANCE& substance, double T, double DT, double& P, double& DP, double& GLIDE, STATEPT& BUB,
               STATEPT& DEW);
void TCOND_PDP(const SUBSTANCE& substance, double P, double DP, double& T, double& DT, double& GLIDE, STATEPT& BUB,
               STATEPT& DEW);
void TCOND_PDT(const SUBSTANCE& substance, double P, double DT, double& T, double& DP, double& GLIDE, STATEPT& BUB,
               STATEPT& DEW);
void PEVAP_TDP(const SUBSTANCE& substance, double T, double HIN, double DP, double& P, double& DT, double& GLIDE,
               STATEPT& BUB, STATEPT& DEW);
void PEVAP_TDT(const SUBSTANCE& substance, double T, double HIN, double DT, double& P, double& DP, double& GLIDE,
               STATEPT& BUB, STATEPT& DEW);
void TEVAP_PDP(const SUBSTANCE& substance, double P, double HIN, double DP, double& T, double& DT, double& GLIDE,
               STATEPT& BUB, STATEPT& DEW);
void TEVAP_PDT(const SUBSTANCE& substance, double P, double HIN, double DT, double& T, double& DP, double& GLIDE,
               STATEPT& BUB, STATEPT& DEW);
void PEVAP_TDP_SEC(const SUBSTANCE& substance, double T, double DP, double& P, double& DT, double& GLIDE, STATEPT& BUB,
                   STATEPT& DEW);
void PEVAP_TDT_SEC(const SUBSTANCE& substance, double T, double DT, double& P, double& DP, double& GLIDE, STATEPT& BUB,
                   STATEPT& DEW);
void TEVAP_PDP_SEC(const SUBSTANCE& substance, double P, double DP, double& T, double& DT, double& GLIDE, STATEPT& BUB,
                   STATEPT& DEW);
void TEVAP_PDT_SEC(const SUBSTANCE& substance, double P, double DT, double& T, double& DP, double& GLIDE, STATEPT& BUB,
                   STATEPT& DEW);

}  // namespace frigana
