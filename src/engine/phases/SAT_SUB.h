// Saturation states at given temperature or pressure: the phase boundary of a pure fluid or of a mixture of fixed
// overall composition. Units: K, kPa, mol/L, mole fractions.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// The last success of SATT and of SATP, which the solvers of cycles ask for again and again. Written by SATT and SATP,
// cleared by resetSaturationMemo.
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

// Raoult's law with estimated vapor pressures, at given temperature.
//   Given     T, x, kph (1, 2) as SATT
//   Returned  p       [kPa]
//             y       composition of the incipient phase
//   Codes     0
void SATTEST(double T, const Composition& x, int kph, double& p, Composition& y, int& ierr, Text255& herr);

// Raoult's law with estimated vapor pressures, at given pressure, by iteration.
//   Given     p, x, kph (1, 2) as SATP
//   Returned  T       [K]
//             y       composition of the incipient phase
//   Codes     -144    not converged; T is the last one, or the mean of the components'
void SATPEST(double p, const Composition& x, int kph, double& T, Composition& y, int& ierr, Text255& herr);

// Density at given temperature and pressure, held between two bounds, by Newton's method.
//   Given     T, p    [K, kPa]
//             rho1, rho2  bounds in any order [mol/L]
//             x       mole fractions
//   Returned  rho     [mol/L]
//   Codes     1       not converged in 24 steps
void TPRHOB(double T, double p, double rho1, double rho2, const Composition& x, double& rho, int& ierr, Text255& herr);

// Two densities with a common pressure for a pair of phases, where the density iterations have failed.
//   Given     T       [K]
//             x1, x2  mole fractions of the liquid and of the vapor
//   Returned  p       common pressure [kPa]
//             rho1, rho2  densities of the liquid and of the vapor [mol/L]
//   Codes     1       the liquid density grew beyond bounds
void DLDV(double T, double& p, double& rho1, double& rho2, const Composition& x1, const Composition& x2, int& ierr,
          Text255& herr);

// Density of the liquid spinodal, where dp/drho is zero.
//   Given     T       [K]
//             x       mole fractions
//             rho     start [mol/L]; not positive: from the table of SETLSPNDL, or the triple point density
//   Returned  rho     [mol/L]
//   Codes     121     above the critical temperature (pure fluid)
//             124     not converged (rho is the critical density)
void LIQSPNDL(double T, const Composition& x, double& rho, int& ierr, Text255& herr);

// Density of the vapor spinodal; as LIQSPNDL, with the table of SETVSPNDL or 0.1 mol/L as start.
void VAPSPNDL(double T, const Composition& x, double& rho, int& ierr, Text255& herr);

// Tabulates the liquid spinodal of a pure fluid from the triple point to the critical point for LIQSPNDL.
//   Given     icomp   component slot
//   Codes     1       the fluid is not pure
//             2       fewer than 5 points converged (no table)
void SETLSPNDL(int icomp, int& ierr, Text255& herr);

// Tabulates the vapor spinodal of a pure fluid from three quarters of the triple point to the critical point for
// VAPSPNDL; arguments and codes as SETLSPNDL.
void SETVSPNDL(int icomp, int& ierr, Text255& herr);

// Forgets the memorised saturation states, the spinodal tables and the extrema of the saturation lines (part of
// RESETA).
void resetSaturationMemo();

}  // namespace frigana
