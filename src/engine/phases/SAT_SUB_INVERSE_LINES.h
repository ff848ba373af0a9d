// What the inverse routines share: the remembered extrema, and properties along a saturation line. For the sources of
// that name alone.
#pragma once

#include "SAT_SUB_INVERSE.h"

namespace frigana {

inline constexpr int liquidLine = 1, vaporLine = 2, meltingLine = 3, sublimationBranch = 4;
inline constexpr int retrogradeVaporLine = -2;  // dew line between the points of highest temperature and critical

enum class LineProperty { enthalpy, energy, entropy, density, temperature };

// Clears what is remembered if it belongs to another fluid.
void belongTo(const Composition& x, int icomp);

// Lowest temperature of the saturation lines [K]: the limit of the equation of state, for water the triple point.
double lowestLineTemperature(const Composition& x, int icomp);

bool isWater(int icomp);

double propertyAt(LineProperty property, double T, double rho, const Composition& x);

// State on a line at T: pressure, densities, and the density of the line's phase.
struct LineState {
    double T = 0.0, p = 0.0, rho = 0.0, rhol = 0.0, rhov = 0.0;
    Composition xliq{}, xvap{};
};
bool stateOnLine(int line, double T, const Composition& x, LineState& state, int& ierr, Text255& herr);

// State of a mixture's envelope next to the critical point with a given property, by the density of the mixture.
//   Given     property, target  [J/mol, J/(mol K) or mol/L]
//             line       where the walk toward the critical point starts: 1 bubble, 2 dew points; the other line is
//                        tried after it, as which of them has the root is known from an estimate alone
//             tolerance  of the property, in its unit
//   Returned  foundLine  1 the mixture is the denser phase, 2 the thinner one
//             found      the state
//             (value)    false if none was found
//   Notes     With the envelope splines of the mixture the walk starts at the place that they give. Within 1 or 2 % of
//             the critical density, where the two phases cannot be told apart, the envelope is interpolated between
//             both lines, to about 1e-3 K.
bool rootOnEnvelope(LineProperty property, double target, int line, const Composition& x, double tolerance,
                    int& foundLine, LineState& found);

// Fills the values of enthalpy, energy and entropy at the cold end of the lines.
void fillColdEnd(const Composition& x, int icomp, double Tmin, double Tc);

}  // namespace frigana
