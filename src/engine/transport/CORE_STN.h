// Surface tension [N/m] of pure fluids and mixtures.
//
// State: surfaceTensionTerms, one record per slot, written by SETST1 (which also writes TMINST and TMAXST); ZETA,
// XCRITF and ZMOLE of the last mixture.
#pragma once

#include "EngineLimits.h"

namespace frigana {

inline constexpr int largestSurfaceTensionTerms = 10;

struct SurfaceTensionSlot {
    int NTERMU;
    double SIGMAK[largestSurfaceTensionTerms], SIGEXP[largestSurfaceTensionTerms];
};

extern SlotArray<SurfaceTensionSlot> surfaceTensionTerms;

// Compositions at which the last mixture was evaluated.
struct SurfaceTensionState {
    Composition ZETA{};    // fugacity fractions; mass fractions of ZMOLE for the model STH
    Composition XCRITF{};  // composition whose critical point has the same fugacity fractions
    Composition ZMOLE{};   // mean composition of the two phases
};

extern SurfaceTensionState surfaceTensionState;

// Surface tension of a liquid with its vapor.
//   Given     T       temperature [K]
//             x       mole fractions of the liquid
//   Returned  Dl      density of the liquid [mol/L]
//             sigma   [N/m]; -9999990 if it could not be computed
//   Codes     1       below the lower limit (the result is extrapolated)
//             less than -20  a warning of LIMITX, less 20
//             those of LIMITX and SATT that are errors, and of STN
void SURFT(double T, double& Dl, const Composition& x, double& sigma, int& ierr, Text255& herr);

// Surface tension between two phases.
//   Given     T       temperature [K]
//             Dl, Dv  densities of the phases [mol/L]; if one is not positive, both are found by SATT
//             xl, xv  mole fractions of the phases; xv is found with the densities
//   Returned  sigma   [N/m]; -9999990 for inputs out of range, 0 if there is no saturation
//   Codes     as SURFT
void SURTEN(double T, double& Dl, double& Dv, Composition& xl, Composition& xv, double& sigma, int& ierr,
            Text255& herr);

// The same without checks.
//   Codes     160     no critical point
//             121     above the critical temperature (sigma is 0)
//             99      unknown model
//   Source    J. Moldover, J. C. Rainwater, J. Chem. Phys. 88 (1988) 7772 (mixtures, from the critical region)
void STN(double T, double Dl, double Dv, const Composition& xl, const Composition& xv, double& sigma, int& ierr,
         Text255& herr);

// One component as a power series.
//   Given     tau     1 - T/Tc
//   Returned  sigma   [N/m]; -999 for a tag of no model
//   Codes     99      unknown model
void STNK(int icomp, double tau, double& sigma, int& ierr, Text255& herr);

// Reader of a surface tension section.
//   Given     nread   open unit, the next line being the first of the section
//             icomp   component slot
//             hcas    CAS number, for the message
//   Codes     101     no unit
//             1       a line that cannot be read; herr says which
void SETST1(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);

// Critical point of the mixture that has given fugacity fractions there.
//   Given     zeta    fugacity fractions
//             x       start
//   Returned  x       composition
//             Tc, Pc, Dc  its critical point [K, kPa, mol/L]
//   Codes     160     not converged
//             those of CRITP and FGCTY2
void CRITF(const Composition& zeta, Composition& x, double& Tc, double& Pc, double& Dc, int& ierr, Text255& herr);

}  // namespace frigana
