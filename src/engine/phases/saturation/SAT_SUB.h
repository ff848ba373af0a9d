// Saturation states at given temperature or pressure: the phase boundary of a pure fluid or of a mixture of fixed
// overall composition, and both phases of a mixture at temperature and pressure. Units: K, kPa, mol/L, mole fractions.
// State: saturationMemo, saturationCounts.
#pragma once

#include "EngineLimits.h"
#include "SAT_SUB_MIXTURE.h"
#include "SAT_SUB_NEWTON.h"
#include "SAT_SUB_SPINODAL.h"

namespace frigana {

// The last success of SATT and of SATP, and the last failures of SATT for a mixture, which the solvers of cycles ask
// for again and again. Written by SATT and SATP, cleared by resetSaturationMemo.
struct SaturationMemo {
    struct State {
        bool valid = false;
        int kph = 0, icomp = 0;
        double input = 0.0;   // temperature of SATT [K], pressure of SATP [kPa]
        double result = 0.0;  // pressure of SATT [kPa], temperature of SATP [K]
        double rhol = 0.0, rhov = 0.0;
    };
    State atT, atP;
    Composition XSAVT{}, XLSAVT{}, XVSAVT{};  // composition of the call and those of the two phases, SATT
    Composition XSAVP{}, XLSAVP{}, XVSAVP{};  // ... SATP

    // Where a mixture has no line that could be found: next to the hot end every method is tried, and a flash asks
    // again at each of its steps.
    struct Missing {
        bool valid = false;
        double T = 0.0;  // [K]
        Composition x{};
        int code = 0;
    };
    Missing missing[2];  // bubble, dew point

    // Where the walk along the envelope of a mixture starts, which is the same for every root; written by
    // rootOnEnvelope.
    struct EnvelopeStart {
        bool known = false, found = false;
        Composition x{};
        PhasePair at;
        double residual = 0.0;  // that Newton's method has left in the place of the largest energy
    };
    EnvelopeStart envelopeStart[2];  // bubble, dew line
};

extern SaturationMemo saturationMemo;

// Saturation at given temperature.
//   Given     T       temperature [K]; negative: |T|, and p, rhol, rhov and the composition of the incipient phase in
//                     the arguments are the start
//             x       mole fractions of the phase that kph names
//             kph     1 bubble point (x is the liquid), 2 dew point (x is the vapor), 3 freezing line, 4 sublimation
//                     line
//   Returned  p       [kPa]
//             rhol, rhov  densities of liquid and vapor [mol/L]
//             xliq, xvap  mole fractions of liquid and vapor
//   Codes     0       success, also of the critical point itself
//             from LIMITX  temperature or composition out of range
//             120     no critical point
//             121     above the critical temperature (the results are the critical point)
//             124     not converged (pure fluid; the results are the critical point)
//             128     not converged (mixture; the results are the critical point)
//   Notes     Pure fluids: pressure from the equality of the Gibbs energies, corrected by Newton's method with both
//             densities as dependent variables, up to 0.99 Tc; above that between the spinodals, where each density
//             has one root only. Mixtures: SATTP first, then substitution.
void SATT(double T, const Composition& x, int kph, double& p, double& rhol, double& rhov, Composition& xliq,
          Composition& xvap, int& ierr, Text255& herr);

// Saturation at given pressure.
//   Given     p       pressure [kPa]
//             x, kph  as SATT
//   Returned  T       [K]
//             rhol, rhov, xliq, xvap  as SATT
//   Codes     0       success, also of the critical point itself
//             from LIMITX  pressure or composition out of range
//             2       below the triple point pressure of a fluid without a sublimation line (T is the triple point)
//             140     no critical point
//             141     above the critical pressure (the results are the critical point)
//             144     not converged (pure fluid)
//             148     not converged (mixture)
void SATP(double p, const Composition& x, int kph, double& T, double& rhol, double& rhov, Composition& xliq,
          Composition& xvap, int& ierr, Text255& herr);

// Phase equilibrium of a mixture by a Newton method on the equality of the fugacities.
//   Given     x       overall mole fractions; for a bubble point the liquid, for a dew point the vapor
//             kph     0 both phases at T and p; 1 bubble point at T; 2 dew point at T; 3 bubble point at p; 4 dew point
//                     at p; negative: the same, started on the retrograde side of the envelope splines
//             kguess  1: T, p, densities and compositions in the arguments are the start
//   Given or returned  T, p  [K, kPa]
//   Returned  D       bulk density [mol/L]
//             rhol, rhov  densities of the phases [mol/L]
//             xliq, xvap  their mole fractions
//             q       molar share of the vapor; 0 and 1 for bubble and dew points
//   Codes     0       success
//             1       refused: two equal densities, or a result out of range
//             others  of SATT, SATP and of the substitution of TPFL2, which take over when the iteration fails
//   Notes     Newton's method from the simple start (newtonEquilibrium); where it fails a bubble or dew point is looked
//             for from other starts (newtonFromOtherStarts), then by the substitution methods, whose end Newton's
//             method goes on from. No result is taken that is no equilibrium: equal fugacities, the liquid packed more
//             closely than the vapor, the vapor no liquid (denser than 1.5 times the critical density) and on the near
//             side of its spinodal, temperatures not below 0.7 of the lower limit. Of a mixture with two liquids the
//             result is one of several equilibria, not always the stable one. Components of fraction 0 have no part in
//             the equations. A pure fluid, the cubic equation and a mixture without composition derivatives go to SATT,
//             SATP or the substitution at once.
//   Source    M. L. Michelsen, J. M. Mollerup, Thermodynamic Models: Fundamentals and Computational Aspects, Tie-Line
//             Publications (2007), ch. 12
void SATTP(double& T, double& p, const Composition& x, int kph, int kguess, double& D, double& rhol, double& rhov,
           Composition& xliq, Composition& xvap, double& q, int& ierr, Text255& herr);

// What SATT and SATP may use of a mixture: everything, or the substitution methods alone.
enum class Method { newton, substitution };
void solveSATT(Method method, double T, const Composition& x, int kph, double& p, double& rhol, double& rhov,
               Composition& xliq, Composition& xvap, int& ierr, Text255& herr);
void solveSATP(Method method, double p, const Composition& x, int kph, double& T, double& rhol, double& rhov,
               Composition& xliq, Composition& xvap, int& ierr, Text255& herr);

// How often a state of a mixture was asked of the Newton method, and how often that failed and the substitution methods
// had to help; for measurements of convergence, cleared by whoever measures.
struct SaturationCounts {
    long calls = 0, substitutions = 0;
};
extern SaturationCounts saturationCounts;

// newtonOnLine and newtonEquilibrium, counted; the one that fails is followed by the other.
OnLine countedLine(PhasePair& at, const Composition& z, int kph);
NewtonEnd countedNewton(PhasePair& at, const Composition& z, int kph, int kguess, int& ierr, Text255& herr);

// Forgets the memorised saturation states (part of RESETA).
void resetSaturationMemo();

}  // namespace frigana
