// Newton solvers for phase equilibria of mixtures, envelope splines, critical point of a mixture.
// State: the working matrices, and in SATGV the phases of the last call.
#pragma once

#include "PhasePair.h"

namespace frigana {

// Phase equilibrium of a mixture by a Newton method on the equality of the fugacities, from one start: the core of
// SATTP, with nothing behind it.
//   Given     z       overall mole fractions; for a bubble point the liquid, for a dew point the vapor
//             kph     0 both phases at T and p; 1 bubble point at T; 2 dew point at T; 3 bubble point at p; 4 dew point
//                     at p; negative: the same, started on the retrograde side of the envelope splines
//             kguess  1: the pair is the start
//   Given or returned  at  what kph tells of T and p, and the rest
//   Returned  (value) noDerivatives: the model has none in the composition (nor has a pure fluid)
//   Codes     0       success
//             1       refused: no equilibrium, two equal densities, or a result out of range; no density
//             2, 3    not converged
//   Notes     Components of fraction 0 have no part in the equations. Until it succeeds the residual norm stands in the
//             place of the largest energy (SaturationExtrema).
//   Source    M. L. Michelsen, J. M. Mollerup, Thermodynamic Models: Fundamentals and Computational Aspects, Tie-Line
//             Publications (2007), ch. 12
enum class NewtonEnd { found, failed, noDerivatives };
NewtonEnd newtonEquilibrium(PhasePair& at, const Composition& z, int kph, int kguess, int& ierr, Text255& herr);

// A bubble or dew point (kph 1 to 4) by newtonAtConditions, from the estimates of SATEST and of both densities; at a
// pressure beside the critical one from a point of the line below it, drawn toward the critical point.
//   Given, returned  as newtonEquilibrium
//   Returned  (value) beyondEnd: the line ends below the pressure, where its phases have become nearly one
//   Notes     Found nearly always below 0.9 Tc or 0.99 pc, in a third of the time of newtonEquilibrium. Unknown far above
//             the critical pressure or temperature, and with the envelope splines, which know better starts. The last step
//             stands in the place of the largest energy, as the residual norm of newtonEquilibrium.
enum class OnLine { found, beyondEnd, unknown };
OnLine newtonOnLine(PhasePair& at, const Composition& z, int kph);

// A bubble or dew point (kph 1 to 4) that was not found from the simple start: from a start by exchanges of the
// incipient composition, in the logarithms of the ratios (SATGV), and by a walk along the line from where the simple
// start is good enough.
//   Given, returned  as newtonEquilibrium; true if it was found
bool newtonFromOtherStarts(PhasePair& at, const Composition& z, int kph, int& ierr, Text255& herr);

// Starting values of SATTP from Raoult's law with estimated vapor pressures.
//   Given     kph     1 to 4 as SATTP
//             T or p  [K, kPa]
//             x       mole fractions of the phase that kph names
//   Returned  p or T, xliq, xvap
//   Codes     1       T = 0 where T is given, p <= 0 where p is given, or not converged
void SATEST(int kph, double& T, double& p, const Composition& x, Composition& xliq, Composition& xvap, int& ierr,
            Text255& herr);

// The same of a two-phase state at T and p.
//   Returned  xliq, xvap  x and x/2 for a state outside the estimated two-phase region
//   Codes     1       not converged
void SAT0EST(double T, double p, const Composition& x, Composition& xliq, Composition& xvap, int& ierr, Text255& herr);

// One evaluation of the estimate, with p(i) = Pc(i) exp(5.373 (omega(i) + 1) (1 - Tc(i)/T)).
//   Given     itype   1 f = sum x p(i); 2 f = 1 / sum x/p(i); 3 f = 1 - p / sum x p(i);
//                     4 f = 1 - sum x / (1 - q + q p(i)/p);
//                     5 xout = x p(i)/p and 6 xout = x / (1 - q + q p(i)/p), both with sum 1
//             Tc, Pc, w  critical temperatures and pressures, acentric factors of the components
//   Returned  f or xout
//   Codes     0       always; nothing is done for T <= 0
void PTEST(int itype, double T, double p, double q, const Composition& x, const Composition& Tc, const Composition& Pc,
           const Composition& w, double& f, Composition& xout, int& ierr, Text255& herr);

// Phase equilibrium of a mixture of given vapor share in logarithmic variables.
//   Given     z       overall mole fractions
//             vf      molar share of the phase y, 0 to 1
//             b       value of the property that ityp names
//             ipv     1 pressure is an unknown and the densities follow; 2 both densities are unknowns
//             ityp    property besides vf: 0 pressure [kPa], 1 temperature [K], 5 entropy [J/(mol K)], 6 density
//                     [mol/L]
//             isp     not 0: start from the envelope splines
//             T, P, rhox, rhoy, x, y  start
//   Returned  T, P, rhox, rhoy, x, y
//   Codes     71 to 77, 80 to 82, 99: see the texts; of an error x and y are those of the call
//   Source    M. L. Michelsen, Fluid Phase Equilib. 4 (1980) 1
void SATGV(double& T, double& P, const Composition& z, double vf, double b, int ipv, int ityp, int isp, double& rhox,
           double& rhoy, Composition& x, Composition& y, int& ierr, Text255& herr);

// A condition on two phases: the value of the property that a letter names; T [K], P [kPa], D bulk density [mol/L], H
// and E [J/mol], S [J/(mol K)], Q molar share of the vapor.
struct Condition {
    char letter;
    double value;
};

// Two phases of a mixture that meet two conditions, from a start near them: Newton's method in the logarithms of the
// ratios, of temperature and of both densities, and in the share of the vapor, all at once.
//   Given     a, b    the conditions
//             z       overall mole fractions
//             state   start
//   Returned  state
//             (value) false if the steps lead nowhere, out of two phases, or to no equilibrium; state is then as it was
//   Notes     Nothing is said where it fails: others answer then. False where the model has no composition derivatives.
//   Source    M. L. Michelsen, J. M. Mollerup, Thermodynamic Models: Fundamentals and Computational Aspects, Tie-Line
//             Publications (2007), ch. 14
bool newtonAtConditions(const Condition& a, const Condition& b, const Composition& z, PhasePair& state);

// Compositions of two phases from the logarithms of the ratios y(i)/x(i).
//   Given     z, vf   overall mole fractions, molar share of y
//             philn   ln K
//   Returned  phi     K
//             x, y    mole fractions, each with sum 1
void GETXY(const Composition& z, double vf, const Composition& philn, Composition& phi, Composition& x, Composition& y);

// Logarithms of the fugacities of a phase, and which phase it is.
//   Given     mode    1 fugacity coefficients at T and p; 2 ln(f/x) at T and p with composition derivatives; 3 the same
//                     at T and rho
//             phase   1 liquid, 2 vapor, 0 the root of the lower Gibbs energy
//             T, rho or p, x
//   Returned  rho or p
//             philn   ln f(i)/x(i), for mode 1 ln phi(i)
//             dpdt, dpdd, dddt, cp  of THERM2
//             phase   1 or 2 by the curvature of the isotherm
//   Codes     those of TPRHO, PHIDERV, CRITP
//   Source    phase test: G. Venkatarathnam, L. R. Oellrich, Fluid Phase Equilib. 301 (2011) 225
void LGPHI(int mode, int& phase, double T, double& rho, double& p, const Composition& x, Composition& philn,
           double& dpdt, double& dpdd, double& dddt, double& cp, int& ierr, Text255& herr);

// Tabulates the phase envelope of a composition into the splines of saturationSpline, from the dew side at low density
// through the critical region down the bubble side.
//   Codes     1       no first point; 2 too few points; 191 no composition derivatives
void SATSPLN(const Composition& x, int& ierr, Text255& herr);

// Critical point of a mixture by the stability of the composition along the eigenvector of the smallest eigenvalue.
//   Given     z       mole fractions
//             tc, pc  start [K, kPa]
//   Returned  tc, pc, rhoc  [K, kPa, mol/L]
//   Codes     1       not converged, or a better start is wanted; those of LGPHI and MINEIGEN
//   Source    M. L. Michelsen, Fluid Phase Equilib. 16 (1984) 57; R. A. Heidemann, A. M. Khalil, AIChE J. 26 (1980) 769
void CRTPNT(const Composition& z, double& tc, double& pc, double& rhoc, int& ierr, Text255& herr);

// Takes the critical point of a mixture that has been set up in place of the sum over the lines of its pairs, where
// that sum misses it by more than 0.3 K or 1 % of the pressure; from here on CRITP of this composition answers it.
//   Given     z       mole fractions
//   Notes     Nothing changes where CRTPNT finds no point within a tenth of the estimate. The last points are kept over
//             set-ups; one that no longer is at the limit of stability is looked for anew.
void adoptCriticalPoint(const Composition& z);

// Remembers what the file of a mixture that has been set up says of its critical point, so that adoptCriticalPoint need
// not search for it; a point that is not at the limit of stability is of no consequence.
//   Given     z        mole fractions
//             T, p, D  [K, kPa, mol/L]
void noteCriticalPoint(const Composition& z, double T, double p, double D);

}  // namespace frigana
