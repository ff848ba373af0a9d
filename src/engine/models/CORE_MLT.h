// Melting and sublimation lines of one component (tags MLx, SBx).
// State: the coefficients read from the fluid files, written by SETMLT and SETSBL only.
#pragma once

#include "EngineLimits.h"

namespace frigana {

inline constexpr int mostMeltingTerms = 20;

// One line of the solid boundary: a sum of three families of terms.
struct SolidLineSlot {
    double tmin, tmax;                     // TMINMT, TMAXMT [K]
    double tred, pred;                     // TRDMLT, PRDMLT [K, kPa]
    int count[6];                          // NTRMM1 to NTRMM6: terms of the families; the last three are not used
    double coefficient[mostMeltingTerms];  // PMELTK
    double exponent[mostMeltingTerms];     // PMLTEX
};

extern SlotArray<SolidLineSlot> meltingTerms;
extern SlotArray<SolidLineSlot> sublimationTerms;

// Reads the block of a melting line.
//   Given     iunit   open unit, at the first line of the block
//             icomp   component slot
//   Codes     1       a line could not be read: herr says which
void SETMLT(int iunit, int icomp, int& ierr, Text255& herr);

// Reads the block of a sublimation line; otherwise as SETMLT.
void SETSBL(int iunit, int icomp, int& ierr, Text255& herr);

// Melting pressure of a component.
//   Given     icomp   component slot
//             t       temperature [K]
//   Returned  p       [kPa]; 0 where the fluid has no melting line
//   Codes     1       t below the triple point (water: below 251.165 K): p is 0
//             105     unknown tag
//   Notes     ML1: pred S, ML2: pred exp(S), other ML: S, with S = sum a Tr^e + sum a (Tr - 1)^e + sum a (ln Tr)^e.
//             MLW: water, MLP: para-hydrogen.
void MELTK(int icomp, double t, double& p, int& ierr, Text255& herr);

// Sublimation pressure of a component.
//   Given     icomp   component slot
//             t       temperature [K]
//   Returned  p       [kPa]; 0 where the fluid has no sublimation line
//   Codes     15      t not positive, or above the triple point: p is 0
//             105     unknown tag
//   Notes     SB1: pred S, SB2: pred exp(S), SB3: pred exp(S tred/t), other SB: S, with S as in MELTK, the second
//             family in (1 - Tr).
//             An S of 200 or more gives 0 for SB2 and SB3.
void SUBLK(int icomp, double t, double& p, int& ierr, Text255& herr);

// Melting lines of water.
//   Given     t       temperature [K]
//   Returned  p1      on the line of ice III, V, VI or VII [kPa]; 0 below 251.165 K
//             p2      on the line of ice I [kPa]; 0 outside 251.165 to 273.16 K
//   Source    International Association for the Properties of Water and Steam, Revised Release R14-08(2011), eqs. 1 to
//   5
void MLTH2O(double t, double& p1, double& p2);

// Melting line of para-hydrogen.
//   Given     icomp   component slot whose block holds the four coefficients and two exponents
//             t       temperature [K]
//   Returned  p       [kPa]
void MLTPH2(int icomp, double t, double& p);

}  // namespace frigana
