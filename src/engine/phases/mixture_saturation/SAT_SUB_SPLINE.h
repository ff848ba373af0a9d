// Values and roots of the phase envelope in its splines (SaturationSpline).
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Value, slope or curvature of a column of the envelope at a vapor density.
//   Given     isp     column: 1 to nc liquid mole fractions, nc + 1 temperature [K], nc + 2 pressure [kPa],
//                     nc + 3 liquid density [mol/L], nc + 4 enthalpy, nc + 5 entropy of the vapor; 0 the vapor
//                     densities of the table
//             iderv   0 value (logarithms undone), 1 slope and 2 curvature of the column over the logarithm of the
//                     density; -1 lowest and -2 highest value of the column in the table
//             a       vapor density [mol/L]; not used for iderv below 0
//   Returned  (value)
//   Codes     192     the density is out of the range of the table (the value is 0)
double SPLNVAL(int isp, int iderv, double a, int& ierr, Text255& herr);

// Vapor density at which a column, or its slope, has a given value.
//   Given     isp     as SPLNVAL
//             iderv   0 the column has the value f, 1 its slope over the logarithm of the density has
//             f       value [unit of the column]
//             a       start [mol/L]
//   Returned  a       vapor density [mol/L]; the start where no root was found
//   Codes     1       no root next to the start
//   Notes     The root is taken that lies nearest to the start, among the intervals of the table.
void SPLNROOT(int isp, int iderv, double f, double& a, int& ierr, Text255& herr);

}  // namespace frigana
