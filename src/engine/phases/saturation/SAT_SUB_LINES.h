// The ways to a point of a mixture's saturation lines that stand behind Newton's method. For the sources of this room
// and the inverse of the lines.
#pragma once

#include "CriticalPoint.h"
#include "PhasePair.h"
#include "SAT_SUB.h"

namespace frigana {

// A bubble or dew point by the substitution methods, and with Method::newton on from their end by Newton's, since they
// may stop where progress has become slow, a little before the equilibrium.
//   Given     kph        1 to 4 as SATTP
//             started    the pair is the start (kph 1 and 2)
//             highestDensity  limit of the equation of state [mol/L]
//             coldest    [K] no result lies below
//   Codes     121, 128, 148 of SATT and SATP
void lineBySubstitution(Method method, PhasePair& pair, const Composition& z, int kph, bool started,
                        const CriticalPoint& critical, double highestDensity, double coldest, int& ierr, Text255& herr);

// State of a mixture's envelope next to the critical point with a given property, by the density of the mixture.
//   Given     letter, target  H, S, E, D or T [J/mol, J/(mol K), mol/L, K]
//             line       where the walk toward the critical point starts: 1 bubble, 2 dew points; the other line is
//                        tried after it, as which of them has the root is known from an estimate alone
//             tolerance  of the property, in its unit
//   Returned  foundLine  1 the mixture is the denser phase, 2 the thinner one
//             found      the state
//             (value)    false if none was found
//   Notes     With the envelope splines of the mixture the walk starts at the place that they give. Within 1 or 2 % of
//             the critical density, where the two phases cannot be told apart, the envelope is interpolated between
//             both lines, to about 1e-3 K.
bool rootOnEnvelope(char letter, double target, int line, const Composition& x, double tolerance, int& foundLine,
                    PhasePair& found);

}  // namespace frigana
