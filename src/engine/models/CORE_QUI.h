// Quintic-type equation of state (tag QUI): a Helmholtz energy in closed form over five polynomials in tau.
//
//   phi = eta (del - ln(1 - b del)/b) - eps ln((1 + gam del)/(1 - bet del))
//
// State: quiTerms, one record per slot with coefficients and the last state, kept until tau moves by more than 1e-12 or
// del by more than 1e-16. Written by SETQUI and PHIQUI; RESETA clears TAUSVQ and DELSVQ. Not reentrant.
#pragma once

#include "EngineLimits.h"

namespace frigana {

inline constexpr int mostQuiTerms = 60;

struct QuiSlot {
    // last state
    double TAUSVQ, DELSVQ;      // 0 where there is none
    double TAUPQ, DELPQ;        // their logarithms
    bool HDRVQ;                 // DRVSVQ is that of the state: one evaluation gives all results
    Array1<double, 16> DRVSVQ;  // results, position 4 idel + itau + 1

    int NETAQ, NEPSQ, NBBQ, NGAMQ, NBETQ;             // terms of the five polynomials
    Array1<double, mostQuiTerms> AQUI, TIQUI, DIQUI;  // coefficient, power of tau, and a third number without use
    Array1<double, mostQuiTerms> PHISVQ;              // terms at the last state: never filled, see PHIQUI

    double TCQUI, PCQUI, RHOCQ;                 // critical point [K, kPa, mol/L]
    double T0QUI, RHO0Q;                        // reducing values [K, mol/L]
    double RQUI, WMFQ;                          // gas constant [J/(mol K)], molar mass [g/mol]
    double TMINQ, TMAXQ, PMAXQ, PMINQ, RHOTPQ;  // limits [K, K, kPa]; triple point [kPa, mol/L]
};

extern SlotArray<QuiSlot> quiTerms;

// Reduced residual Helmholtz energy or a derivative of it.
//   Given     icomp       component slot
//             itau, idel  orders of the derivative: those of PHIFEQ
//             tau, del    T0QUI/T and rho/RHO0Q
//   Returned  (value)     tau^itau del^idel times the derivative; 0 for del <= 1e-10, tau <= 0, and outside the domain
//   of
//                         the logarithms
//   Notes     The third derivative in tau is 0: it is formed from a list of terms that this model does not have. This
//             must stay.
double PHIQUI(int icomp, int itau, int idel, double tau, double del);

// Critical point of the equation [K, kPa, mol/L].
void CRTQUI(int icomp, double& tc, double& pc, double& rhoc);

// Reducing values of the equation [K, mol/L].
void REDQUI(int icomp, double& tred, double& dred);

// Reads the block of the equation and makes its constants those of the fluid.
//   Given     iunit   open unit, at the first line of the block
//             icomp   component slot
//             hcasn   CAS number (not used: there are no built-in data)
//   Codes     1       no unit, or a line that cannot be read: herr says which
//   Notes     The saved states of all slots are cleared.
void SETQUI(int iunit, int icomp, const Text12& hcasn, int& ierr, Text255& herr);

}  // namespace frigana
