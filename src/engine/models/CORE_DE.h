// Static dielectric constant (tags DEx): coefficients and their reader. The functions stand in CORE_DE_DIELEC, on the
// floor where the pressure is known that one of the forms needs.
// State: the coefficients read from the fluid files, written by SETDE only.
#pragma once

#include "EngineLimits.h"

namespace frigana {

inline constexpr int mostDielectricTerms = 20;

struct DielectricTerm {
    double DECF;    // coefficient
    double DEEXPT;  // exponent of temperature
    double DEEXPD;  // ... of density
    double DEEXPP;  // ... of pressure
};

struct DielectricSlot {
    double TMINDE, TMAXDE;          // limits [K]
    double TREDDE, DREDDE, PREDDE;  // reducing values [K, mol/L, MPa]
    int count[6];                   // NTRMD1 to NTRMD6: terms of the families; the last three are not used
    DielectricTerm term[mostDielectricTerms];
};

extern SlotArray<DielectricSlot> dielectricTerms;

// Reads the block of a dielectric constant.
//   Given     iunit   open unit, at the first line of the block
//             icomp   component slot
//             hcasn   CAS number (not used: there are no built-in data)
//   Codes     1       a line could not be read: herr says which
void SETDE(int iunit, int icomp, const Text12& hcasn, int& ierr, Text255& herr);

}  // namespace frigana
