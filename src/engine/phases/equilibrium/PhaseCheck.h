// What must be true of two phases, whatever method found them. A method that ends at a root of its own equations may
// have found one of another kind: both phases the same, liquid and vapor exchanged, or a place where slow progress
// looked like the end.
#pragma once

#include "PhasePair.h"

namespace frigana {

// How closely the molecules are packed: density over that of the critical points of the components, by their volumes.
// The liquid is the phase of the larger value. The molar density itself does not tell: beside a heavy component the
// vapor of a light one has the larger one at high pressures.
//   Given     rho  density [mol/L]
//             x    mole fractions
double packing(double rho, const Composition& x);

// True if the liquid is packed more closely than the vapor.
bool phasesInOrder(double rhol, const Composition& xliq, double rhov, const Composition& xvap);

// True if the vapor of an equilibrium is none: packed like a liquid below the critical pressure, so that the
// equilibrium is that of two liquids, or beyond a spinodal of its isotherm. Between the spinodals the equations have
// further stretches where pressure rises with density, and states there may satisfy all conditions of equilibrium.
bool vaporIsNone(double T, double p, double rhov, const Composition& xvap, double pc);

// True if a phase falls apart by small changes of its composition at T and p: the matrix of the second derivatives of
// its Gibbs energy is not positive definite. Beside the critical point solutions of the equations for two phases exist,
// of which one is such a phase. False where the model has no composition derivatives.
bool fallsApart(double T, double rho, const Composition& x);

// True if that matrix is singular but for a hundredth of an ideal mixture's, as it is at a critical point and on the
// spinodals that meet there.
bool hardlyFallsApart(double T, double rho, const Composition& x);

// The same of one of two phases that are nearly one; of others it is not asked: where the critical region of the
// equations has further folds, a line runs a little beyond its spinodal, and ends there.
bool nearbyPhasesFallApart(double T, double rhol, const Composition& xliq, double rhov, const Composition& xvap);

// True if more pressure leads from a dew point into two phases, and false at the upper one of a temperature, between
// the highest temperature and the critical point.
//   Source  differential of equal fugacities, the composition of the liquid removed by the Gibbs-Duhem equation
bool isLowerDewPoint(double T, double rhol, const Composition& xliq, double rhov, const Composition& xvap);

// A phase that lies below the plane that touches the Gibbs energy of another.
struct OtherPhase {
    bool vapor = false;
    double rho = 0.0;  // [mol/L]
    Composition x{};
};

// True if a mixture is not stable as one phase at T and p: its matrix of second derivatives tells it, or some other
// phase, reached by exchanges of its composition by the fugacities, has a lower Gibbs energy in the plane that touches
// that of the mixture; or neither could be computed.
//   Given     mostExchanges  of the composition of each trial phase
//             other          phases of rho > 0: trials besides those from estimated vapor pressures
//   Returned  other          the first one: the phase found, rho = 0 if there is none
//   Source    M. L. Michelsen, Fluid Phase Equilib. 9 (1982) 1
bool unstableFeed(double T, double p, const Composition& z, int mostExchanges, OtherPhase (&other)[2]);

// The same of a given density, whose pressure p is; of several at one pressure it may be the wrong one.
bool unstableState(double T, double p, double rho, const Composition& z, int mostExchanges, OtherPhase (&other)[2]);

// True if the two are one phase, the solution that every phase has with itself.
bool samePhaseTwice(double rhol, const Composition& xliq, double rhov, const Composition& xvap);

// Closes the material balance of a two-phase state in the phase of the larger share: what a method stops short of is
// then left in the fugacities alone. Traces, of which the balance tells nothing, stay.
void closeBalance(const Composition& z, double q, Composition& xliq, Composition& xvap);

// True if two phases are in equilibrium and are two: equal fugacities of all components but traces, both densities at
// the pressure, liquid packed more closely than vapor, and not the same phase twice.
//   Given     T, p        [K, kPa]
//             rhol, rhov  [mol/L]
//             tolerance   of the fugacities and pressures, relative
inline constexpr double equilibriumOfSubstitution = 1e-4, looseEquilibrium = 1e-6, tightEquilibrium = 1e-9;
bool phasesInEquilibrium(double T, double p, double rhol, const Composition& xliq, double rhov, const Composition& xvap,
                         double tolerance = looseEquilibrium);

// The one question that every method asks of its end: is this an equilibrium of a liquid and a vapor? In equilibrium
// (see above), the vapor is one, and two phases that are nearly one do not fall apart.
//   Given     pc         critical pressure of the whole
//             tolerance  of the fugacities and pressures; solvedEquilibrium where they have been solved for
inline constexpr double solvedEquilibrium = 0;
bool isEquilibrium(const PhasePair& s, double pc, double tolerance = looseEquilibrium);

}  // namespace frigana
