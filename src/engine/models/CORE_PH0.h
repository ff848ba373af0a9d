// Ideal-gas Helmholtz energy correlations (tags PHx).
//
// State: ph0Terms, one record per slot, with the values of the last state per order. Written by SETPH0 and PH0PH0;
// PASSCMN clears the values. Not reentrant.
#pragma once

#include "EngineLimits.h"

namespace frigana {

inline constexpr int largestPh0Terms = 10;

struct Ph0Slot {
    // last state and value per order 0, 1, 2 in tau
    IndexedArray<double, 0, 2> TSVPH0, RHOSVP;
    double PH0SAV, PH1SAV, PH2SAV;

    int NLOGP, NTAUP, NEXPP, NCOSHP, NSINHP, NSP1P, NSP2P, NSP3P;  // counts; the spare families have no use in a sum
    Array1<double, largestPh0Terms> AIPH, TIPH;                    // in the order of the counts
    double TMINPH, TMAXPH, PMAXPH, DMAXPH;                         // limits [K, K, kPa, mol/L]
};

extern SlotArray<Ph0Slot> ph0Terms;

// Reduced Helmholtz energy of the ideal gas or a derivative of it.
//   Given     icomp       component slot
//             itau, idel  orders of the derivative in tau = TZ/t and in del = rho/RHOZ: one of them 0, the other 0 to 3
//             t, rho      temperature [K], density [mol/L]
//   Returned  (value)     tau^itau del^idel times the derivative; 0 for t <= 0 and for two orders that are not 0
//   Codes     99 (by ERRMSG only)  other orders; the value is 0
//   Notes     Orders 0 to 2 in tau are kept until t moves by 1e-8 or rho by 1e-10. Tag PHG multiplies the result by the
//             ratio of two gas constants, 8.314510 / 8.314472.
//   Source    Span, Multiparameter Equations of State, Springer 2000, chapter 2; cosh and sinh terms: Jaeschke,
//             Schley, Int. J. Thermophys. 16 (1995) 1381
double PH0PH0(int icomp, int itau, int idel, double t, double rho);

// Forgets the values of the last state.
void clearSavedValues(Ph0Slot& slot);

// Reads the block of a Helmholtz energy correlation.
//   Given     iunit   open unit, the next line being the first of the block
//             icomp   component slot
//             hcasn   CAS number (of no use for a file)
//   Codes     1  no unit, or a line that cannot be read; herr says which
//   Notes     Files before version 8.0 give the first three counts only.
void SETPH0(int iunit, int icomp, const Text12& hcasn, int& ierr, Text255& herr);

}  // namespace frigana
