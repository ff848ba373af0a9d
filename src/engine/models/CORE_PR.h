// Peng-Robinson equation of state (tag PR): a model of its own, and the source of starting values for the others.
// State: the constants read from the fluid files (written by SETPR, SETPRCO, SETFLD, PASSCMN), the parameters of the
// pairs (written by ESTPR and the reader of the mixing parameters), and the composition derivatives that the special
// call of PHIPRX leaves for PHIDERV.
#pragma once

#include "EngineLimits.h"
#include "ModelTags.h"

namespace frigana {

struct PrSlot {
    double WMFPR;               // molar mass [g/mol]
    double ACNPR;               // acentric factor
    double TCPR, PCPR, RHOCPR;  // critical point [K, kPa, mol/L]
    double RPRQ;                // gas constant [J/(mol K)]
    Array1<double, 20> PRCOEF;  // the first is the volume shift [L/mol]
    int IPRFLAG;                // 1: PRCOEF came from the file
};

extern SlotArray<PrSlot> prTerms;

// Parameters of the pairs, FPRKIJ[i][j]; the first is k_ij.
extern ComponentArray<ComponentArray<Array1<double, 6>>> FPRKIJ;

// d(n phi)/dn(i) at constant temperature and volume, left by PHIPRX with itau = -2.
extern Composition prCompositionDerivatives;
inline constexpr int fillCompositionDerivatives = -2;

// Unit numbers with a meaning of their own in SETPR.
inline constexpr int copyConstants = 999;

// True while all components are on this model.
inline bool pengRobinsonSelected() {
    return modelTags.HEOS[1] == 'P' && modelTags.HEOS[2] == 'R';
}

// Reduced residual Helmholtz energy of a component and its derivatives.
//   Given     icomp       component slot
//             itau, idel  order of the derivative: (0,0) (0,1) (0,2) (0,3) (1,0) (2,0) (3,0) (1,1); the orders (2,1),
//             (1,2)
//                         and (2,2) return 0
//             tau, del    reduced inverse temperature and density, with TZ and RHOZ of the slot
//   Returned  (value)     tau^itau del^idel times the derivative; 0 for del <= 1e-10 or tau <= 0
//   Source    D.-Y. Peng, D. B. Robinson, Ind. Eng. Chem. Fundam. 15 (1976) 59; volume shift: A. Peneloux, E. Rauzy,
//             R. Freze, Fluid Phase Equilib. 8 (1982) 7
double PHIPR(int icomp, int itau, int idel, double tau, double del);

// The same of a composition.
//   Given     itau        -2: fills prCompositionDerivatives and returns -1
//             x           mole fractions
double PHIPRX(int itau, int idel, double tau, double del, const Composition& x);

// Critical point that the model of a component is built on [K, kPa, mol/L].
void CRTPR(int icomp, double& tc, double& pc, double& rhoc);

// Pseudocritical point of a composition: means of the components' critical temperatures, pressures and volumes.
void CRTPRX(const Composition& x, double& tc, double& pc, double& rhoc);

// Reducing values of a composition.
//   Returned  tred, dred  [K, mol/L]; of a pure fluid those with which the property routines form tau and del, of a
//                         mixture the means of these temperatures and of the inverse densities
void REDPR(const Composition& x, double& tred, double& dred);

// Reads the block of the model.
//   Given     iunit   open unit, at the first line of the block: the values become the fluid's constants too;
//                     a negative unit: the block is read only for the data of this model;
//                     999: there is no block, the constants of the fluid are copied
//             icomp   component slot
//             hcasn   CAS number (not used: there are no built-in data)
//   Codes     1       a line could not be read, or no unit was given: herr says which
void SETPR(int iunit, int icomp, const Text12& hcasn, int& ierr, Text255& herr);

// Volume shift of a component whose file gives none, from its acentric factor.
void SETPRCO(int icomp);

// Densities of the cubic equation at given temperature and pressure.
//   Given     t       temperature [K]
//             p       pressure [kPa]
//             x       mole fractions
//   Returned  rho1    of the smallest root [mol/L]: the liquid; that of the vapor where the smallest root is negative
//             rho2    of the largest root: the vapor. Equal where there is one root
void TPRHOPR(double t, double p, const Composition& x, double& rho1, double& rho2);

// Estimates the parameters of a pair, where the file of mixing parameters has none.
//   Given     i, j    components
//   Changed   FPRKIJ  all six are cleared; two hydrocarbons of the alkane families get k_ij of the combining rule,
//   every
//                     other pair 0
//   Source    P. L. Chueh, J. M. Prausnitz, AIChE J. 13 (1967) 1099
void ESTPR(int i, int j);

}  // namespace frigana
