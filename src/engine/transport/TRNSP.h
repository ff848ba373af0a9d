// Viscosity and thermal conductivity: range checks, dispatch to the models of the tags, collision integrals.
//
// Common to the routines of one component:
//   Given     icomp     component slot
//             T         temperature [K]
//             D         density [mol/L]
//   Units     viscosity [uPa s], conductivity [W/(m K)]
//   Codes     49, 39    the tag names no model of this property; the value is -9999990
// State: collisionTerms, one record per slot, written by SETCI1 and SETCI2.
#pragma once

#include "EngineLimits.h"

namespace frigana {

inline constexpr int largestCollisionTerms = 20;

struct CollisionSlot {
    int NTOMG, NTOMG2;
    double COMG[largestCollisionTerms];   // CI1: coefficients of powers of ln(T/epsilon)
    int ICOMG[largestCollisionTerms];     // ... and the powers
    double COMG2[largestCollisionTerms];  // CI2: coefficients of powers of (epsilon/T)^(1/3), from the third downward
};

extern SlotArray<CollisionSlot> collisionTerms;

// Viscosity and thermal conductivity of one phase.
//   Given     T, D    temperature [K], density [mol/L]
//             x       mole fractions
//   Returned  eta     viscosity [uPa s]; -9999910 where there is no model, -9999990 where it failed
//             tcx     thermal conductivity [W/(m K)]; likewise
//   Codes     40      no transport equations for a fluid
//             50      none for a mixture with ammonia and water, with alcohols or with water
//             49, 39  unknown model
//             51      pure fluid at its critical point, where the conductivity is infinite (eta is good)
//             -31 ... -37  conductivity out of range, less 30 of the code of LIMITX
//             -51 ... -53  both out of range
//             -54     mixture out of the range of corresponding states
//             those of TRNECS
//   Notes     A viscosity out of range is computed and its warning forgotten, a conductivity out of range is not
//             computed; the warning of the first words that of the second.
void TRNPRP(double T, double D, const Composition& x, double& eta, double& tcx, int& ierr, Text255& herr);

// Viscosity: eta0 (1 + B D) + the residual part.
void ETAK(int icomp, double T, double D, double& eta, int& ierr, Text255& herr);
// Viscosity of the dilute gas.
void ETAK0(int icomp, double T, double& eta0, int& ierr, Text255& herr);
// Second viscosity virial coefficient [L/mol]. A fluid of corresponding states has none: code 49.
void ETAK1(int icomp, double T, double& b, int& ierr, Text255& herr);
// Residual part. A fluid of corresponding states has none: code 49.
void ETAKR(int icomp, double T, double D, double& etar, int& ierr, Text255& herr);
// All that depends on density: eta0 B D + the residual part.
void ETAKB(int icomp, double T, double D, double& etab, int& ierr, Text255& herr);

// Conductivity: dilute gas + background + critical enhancement.
void TCXK(int icomp, double T, double D, double& tcx, int& ierr, Text255& herr);
void TCXK0(int icomp, double T, double& t0, int& ierr, Text255& herr);
void TCXKB(int icomp, double T, double D, double& tb, int& ierr, Text255& herr);
void TCXKC(int icomp, double T, double D, double& tc, int& ierr, Text255& herr);

// Collision integral.
//   Given     eps      epsilon/k [K]
//             tag      CI0 closed form, CI1, CI2 the terms of the slot; any other 1
//   Source    CI0: P. D. Neufeld, A. R. Janzen, R. A. Aziz, J. Chem. Phys. 57 (1972) 1100
double OMEGA(int icomp, double T, double eps, const Text3& tag);
// exp(sum c ln(T/eps)^n); a logarithm that is nearly zero counts as 1e-20.
double OMEGA1(int icomp, double T, double eps);
// 1 / sum c(k) (eps/T)^((4-k)/3); 1 where the sum is nearly zero.
double OMEGA2(int icomp, double T, double eps);

// Readers of the collision integral sections.
//   Given     nread   open unit, the next line being the first of the section
//             icomp   component slot
//             hcas    CAS number, for the message
//   Codes     101     no unit
//             1       a line that cannot be read; herr says which
void SETCI1(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETCI2(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);

}  // namespace frigana
