// Helmholtz energy equations of state (tags FEQ, FEK, FEX).
//
// The reduced residual Helmholtz energy phi(tau, del) of one fluid, with tau = T0FEQ/T and del = rho/RHO0FEQ, is a sum
// of regular terms a tau^t del^d exp(-g del^l) and of critical-region rows, which are Gaussian bells
// a tau^t del^d exp(alpha (del - delta)^l + beta (tau - gamma)^m) or non-analytic rows
// a tau^t del^d Delta^b exp(-delta (del - 1)^l - eta (1 - tau)^l).
//
// State: feqTerms, one record per slot with coefficients, exponent tables and the last state. A state is kept until
// tau moves by more than 1e-12 or del by more than 1e-16. Written by SETFEQ, SETEXP and PHIFEQ; PASSCMN writes single
// coefficients, RESETA clears TAUSVF and DELSVF. Not reentrant.
#pragma once

#include <cstdint>

#include "EngineLimits.h"

namespace frigana {

inline constexpr int largestFeqTerms = 56;  // regular terms and critical-region rows of one fluid
inline constexpr int largestFeqRows = 20;   // critical-region rows of one fluid

using FeqTermArray = Array1<double, largestFeqTerms>;
using FeqRowArray = Array1<double, largestFeqRows>;

// What a critical-region row is; settled once, when the tables are built.
enum class FeqRow { squareBell, bell, nonAnalytic };

// Everything PHIFEQ touches for one fluid, side by side.
struct FeqSlot {
    // last state
    double TAUSVF, DELSVF;      // tau and del; 0 where there is none
    std::uint32_t HDRVFLG;      // bit n: DRVSAV(n) is valid
    Array1<double, 16> DRVSAV;  // results, position 4 idel + itau + 1

    int NTERMF, NCRT;      // number of regular terms and of critical-region rows
    int NTPF, NDPF, NLPF;  // number of distinct powers of tau, of del, and of pairs (l, g)
    bool LCRTFLG;          // false if some row is non-analytic

    // term k
    Array1<int, largestFeqTerms> ITPF, IDPF, ILPF;  // rows of the tables
    FeqTermArray AFEQ, TIFEQ, DIFEQ, DLIF, GIF1;    // a, t, d, l, g
    FeqTermArray PHISVF;                            // value at the last state
    FeqTermArray tauPower, delPower;                // t and d as the tables have them
    FeqTermArray TAUP, DELP, DELLI;                 // t ln(tau), d ln(del), g del^l at the last state
    FeqTermArray lengthTerm;                        // l g del^l there

    // table row
    FeqTermArray TPOWER, DPOWER, DLPOWR, GIF2;         // distinct t, d, l, g
    Array1<std::int8_t, largestFeqTerms> lengthPower;  // l = 0 to 4: by products; 5: by the power routine

    // critical-region row j, term NTERMF + j
    Array1<FeqRow, largestFeqRows> kind;
    FeqRowArray TLIF, ALPHAF, BETAF, GAMMAF, DELTAF, ETAF, EIDF, EITF;  // m, alpha, beta, gamma, delta, eta, eid, eit
    FeqRowArray DELB, TAUA, DXPF, AXPF, HXPF, TXPF;                     // bells at the last state
    FeqRowArray EXTF, EXTD, EXTD2, EXTDT, EXTT, EXTT2;                  // Delta^b and its derivatives there

    // constants of the model
    double T0FEQ, RHO0FEQ;              // reducing values [K, mol/L]
    double TCFEQ, PCFEQ, RHOCFEQ;       // critical point [K, kPa, mol/L]
    double TMINFEQ, TMAXFEQ, PMAXFEQ;   // limits [K, K, kPa]
    double PMINFEQ, RHOTPFEQ;           // triple point [kPa, mol/L]
    double RFEQ, WMFEQ;                 // gas constant [J/(mol K)], molar mass [g/mol]
    int NCOEFF, NCFCRT, NSPARF, NCFSP;  // further counts of the file; NCOEFF is the numbers in a term
};

extern SlotArray<FeqSlot> feqTerms;

// Reduced residual Helmholtz energy or a derivative of it.
//   Given     icomp       component slot
//             itau, idel  orders of the derivative in tau and in del: (0,0), (0,1), (0,2), (0,3), (1,0), (2,0), (3,0),
//                         (1,1), (2,1), (1,2), (2,2)
//             tau         T0FEQ / T
//             del         rho / RHO0FEQ
//   Returned  (value)     tau^itau del^idel times the derivative; 0 for del <= 1e-10, tau <= 0 or an order outside 0 to
//   3 Notes     Any other mix of orders returns the sum of its pure tau part. The orders (2,1), (1,2), (2,2) of a
//             non-analytic row are products of its pure parts, a simplification that stays, and its third derivatives
//             are left out. A term whose exponent is not between -200 and 100 is 0.
//             At an unchanged state no exponential is taken; the first and second derivatives in one direction come
//             from one pass.
//   Source    Span, Multiparameter Equations of State, Springer 2000, chapter 3; non-analytic rows: Span, Wagner,
//             J. Phys. Chem. Ref. Data 25 (1996) 1509, eqs. 6.1 and table 32
double PHIFEQ(int icomp, int itau, int idel, double tau, double del);

// Critical point of the equation.
//   Given     icomp          component slot
//   Returned  tc, pc, rhoc   [K, kPa, mol/L]
void CRTFEQ(int icomp, double& tc, double& pc, double& rhoc);

// Reducing values of the equation.
//   Given     icomp        component slot
//   Returned  tred, dred   [K, mol/L]
void REDFEQ(int icomp, double& tred, double& dred);

// Reads the block of an equation of state and makes its constants those of the fluid.
//   Given     iunit   open unit, the next line being the first of the block
//             icomp   component slot
//             hcasn   CAS number (of no use for a file)
//   Codes     1  no unit, or a line that cannot be read; herr says which
//   Notes     The saved states of all slots are cleared, so that a new fluid invalidates every cache.
void SETFEQ(int iunit, int icomp, const Text12& hcasn, int& ierr, Text255& herr);

// Builds the tables of the distinct powers out of the coefficients of a slot.
void SETEXP(int icomp);

}  // namespace frigana
