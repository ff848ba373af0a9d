// A single phase of a pure fluid at pressure and a caloric property, by Newton's method in temperature and density at
// once. Where it does not converge, ABFL1 answers.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// What is known of a phase, from one evaluation of the equation of state.
struct CaloricState {
    double T, D;      // [K, mol/L]
    double p, value;  // pressure [kPa]; the property [J/mol or J/(mol K)]
    double pT, pD;    // slopes of pressure over temperature and density
    double valueT;    // slope of the property over temperature at constant density
    double valueD;    // ... over density at constant temperature
    // slope of the property over temperature at constant pressure
    double alongIsobar() const { return valueT - valueD * pT / pD; }
};

// A state by temperature and density; letter is H, S or E.
CaloricState caloricState(char letter, double T, double D, const Composition& z);

// From a state near or far to the one at a pressure with a value of the property.
//   Given     letter  H, S or E
//             p, b    pressure [kPa], value
//             z       composition of a pure fluid with a plain Helmholtz energy
//             here    the state to start from, on the same side of the two-phase region
//   Returned  here    its T and D are those of the state, to the rounding of both inputs
//             (value) false: not found; here has no meaning
//   Notes     The steps are limited; a state that is not stable against small changes ends the search.
bool newtonOnIsobar(char letter, double p, double b, const Composition& z, CaloricState& here);

// A single phase of a pure fluid at enthalpy or energy, and entropy.
//   Given     letter  H or E
//             given, s  [J/mol, J/(mol K)]
//             z       as above
//             T, D    the state to start from [K, mol/L]
//   Returned  T, D    the state, to the rounding of both inputs
//             (value) false: not found; T and D have no meaning
//   Notes     The steps are limited; a state that is not stable against small changes ends the search.
bool newtonAtEntropy(char letter, double given, double s, const Composition& z, double& T, double& D);

}  // namespace frigana
