// Ideal-gas heat capacity correlations (tags CPx), their integrals and the ideal-gas Helmholtz energy that follows.
//
// Cp0 = CREDCP (powers of T/TREDCP + Planck-Einstein terms + cosh and sinh terms).
//
// State: cppTerms, one record per slot. Written by SETCPP and PH0CPP (the saved values); PASSCMN writes single
// coefficients; SETREF and PASSCMN zero TSVCP0, because the integrals start from TREF. Not reentrant.
#pragma once

#include "EngineLimits.h"

namespace frigana {

inline constexpr int largestCppTerms = 20;

using CppTermArray = Array1<double, largestCppTerms>;

struct CppSlot {
    // values at the last temperature
    double TSVCP0;  // that temperature [K]; 0 where there is none
    double CP0SAV;  // Cp0 [J/(mol K)]
    double CPISAV;  // integral of Cp0 from TREF [J/mol]
    double CPTSAV;  // integral of Cp0/T from TREF [J/(mol K)]

    double TREDCP, CREDCP;                                    // reducing temperature [K], factor to J/(mol K)
    int NTERMC, NTERME, NCOSHC, NSINHC, NSP1C, NSP2C, NSP3C;  // counts; the spare families have no use in a sum
    CppTermArray CPC0, XKC0, CP0H, X0TH, XH00;                // in the order of the counts
    double TMINCP, TMAXCP, PMAXCP, DMAXCP;                    // limits [K, K, kPa, mol/L]

    // what the lower bound of the integrals contributes, for the TREF, TREDCP and XKC0 that it was computed with
    double lowerTREF, lowerTREDCP;
    CppTermArray lowerXKC0;
    CppTermArray lowerPower;    // TREF^k
    CppTermArray reducedPower;  // TREDCP^k
    CppTermArray lowerExp;      // exp(k / TREF)

    // exponential of a Planck-Einstein term and the argument it was taken for: the three sums ask for the same
    CppTermArray planckArgument, planckExp;

    // power t^k of a power term and the temperature it was taken for: (t/TREDCP)^k and t^(k + 1) follow from it
    CppTermArray powerTemperature, power;
};

extern SlotArray<CppSlot> cppTerms;

// Heat capacity of the ideal gas.
//   Given     icomp    component slot
//             t        temperature [K]
//   Returned  (value)  Cp0 [J/(mol K)]; 0 for t <= 0
//   Notes     A cosh or sinh term beyond the range of its function replaces the sum so far by 1000000, and later terms
//             add to that. A Planck-Einstein term with k/t >= 200 vanishes.
//   Source    cosh and sinh terms: Aly, Lee, Fluid Phase Equilib. 6 (1981) 169
double CP0CPP(int icomp, double t);

// Integral of the heat capacity from TREF to t [J/mol]; 0 for t <= 0.
//   Notes     The cosh and sinh terms are those of squared hyperbolic functions, whatever the exponents of the file
//   say.
double CPICPP(int icomp, double t);

// Integral of the heat capacity over temperature from TREF to t [J/(mol K)]; 0 for t <= 0.
//   Notes     As CPICPP. A cosh or sinh term beyond the range of its function replaces the sum so far by 1000000.
double CPTCPP(int icomp, double t);

// Reduced Helmholtz energy of the ideal gas by integration of the heat capacity, or a derivative of it.
//   Given     icomp       component slot
//             itau, idel  orders of the derivative in tau = TZ/t and in del: one of them 0, the other 0 to 3
//             t, rho      temperature [K], density [mol/L]
//   Returned  (value)     tau^itau del^idel times the derivative; 0 for t <= 0, for orders (0,0) at rho <= 0 and for
//   two
//                         orders that are not 0
//   Codes     99 (by ERRMSG only)  other orders; the value is 0
//   Notes     Heat capacity and integrals are kept for a temperature until t moves by 1e-8.
double PH0CPP(int icomp, int itau, int idel, double t, double rho);

// Reads the block of a heat capacity correlation.
//   Given     iunit   open unit, the next line being the first of the block
//             icomp   component slot
//             hcasn   CAS number (of no use for a file)
//   Codes     1  no unit, or a line that cannot be read; herr says which
//   Notes     Files before version 6.099 give the first two counts only. Clears the saved values of all slots.
void SETCPP(int iunit, int icomp, const Text12& hcasn, int& ierr, Text255& herr);

}  // namespace frigana
