// Heating values.
// State: none.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Substances on both sides of a complete combustion. Water stands twice: as the liquid and as the ideal gas.
enum class CombustionProduct { liquidWater, waterVapor, oxygen, carbonDioxide, nitrogen, sulfurDioxide };

// Gross and net heating value of a gas mixture that burns completely at its temperature.
//   Given     t       temperature [K]
//             rho     density [mol/L]
//             x       mole fractions
//   Returned  hgross  heat given off when the water leaves as liquid [J/mol]
//             hnet    the same when it leaves as vapor [J/mol]
//   Codes     1       a formula holds other elements than C, H, O, N, S, or cannot be read
//             2       a component has no heat of combustion
//   Notes     The heat of combustion of the fluid file, that of the ideal gas at 298.15 K with liquid water, is carried
//             to t and rho by the enthalpy of the fuel and those of oxygen and the products, taken as ideal gases.
void HEAT(double t, double rho, const Composition& x, double& hgross, double& hnet, int& ierr, Text255& herr);

// Enthalpy of oxygen or a product of combustion [J/mol], from 0 at 298.15 K in its own state: liquid water and water
// vapor differ by the enthalpy of vaporization besides.
//   Given     product
//             t       temperature [K]: 273 to 533 for liquid water, 100 to 1500 for the gases
//   Notes     The fits meet the JANAF tables to 0.3 per cent, carbon dioxide to 0.7
//   (tests/engine/core/DerivedTest.cpp). Source    Gases: Aly, Lee, Fluid Phase Equilib. 6 (1981) 169, with the
//   coefficients of Perry's Chemical Engineers'
//             Handbook, 7th ed., table 2-198; liquid water: table 2-196
double ENTHHC(CombustionProduct product, double t);

}  // namespace frigana
