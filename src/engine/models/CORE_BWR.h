// Modified Benedict-Webb-Rubin equation of state (tag BWR): pressure explicit in 32 coefficients.
//
// State: bwrTerms, written by SETBWR only, and static work arrays. There is no cache. Not reentrant.
#pragma once

#include "EngineLimits.h"

namespace frigana {

struct BwrSlot {
    Array1<double, 32> BBWR;     // coefficients, rho in mol/L, pressure in bar
    double GAMMAB;               // density in the exponential [mol/L]
    double RBWR;                 // gas constant [L bar/(mol K)]
    double TCBWR, PCBWR, RHOCB;  // critical point [K, bar, mol/L]
    double TTRB, PTRB, RHOTRB;   // lower temperature limit [K]; triple point [kPa, mol/L]
    double TMAXB, PMAXB;         // upper limits [K, kPa]
};

extern SlotArray<BwrSlot> bwrTerms;

// The functions below share the arguments
//   Given     icomp   component slot
//             t       temperature [K]
//             rho     density [mol/L]
// and are 0 for t <= 0.
//   Source    R. T Jacobsen, R. B. Stewart, J. Phys. Chem. Ref. Data 2 (1973) 757; integrals and derivatives:
//             B. A. Younglove, M. O. McLinden, J. Phys. Chem. Ref. Data 23 (1994) 731

// Pressure [kPa].
double PBWR(int icomp, double t, double rho);
// Helmholtz energy beyond that of the ideal gas at the same temperature and density [J/mol].
double ABWR(int icomp, double t, double rho);
// Its first derivative in temperature [J/(mol K)].
double DABWR(int icomp, double t, double rho);
// Its second derivative in temperature [J/(mol K^2)].
double D2ABWR(int icomp, double t, double rho);
// Derivative of the pressure in density [kPa L/mol].
double DPDBWR(int icomp, double t, double rho);
// Second derivative of the pressure in density [kPa (L/mol)^2].
double D2PBWR(int icomp, double t, double rho);
// Derivative of the pressure in temperature [kPa/K].
double DPTBWR(int icomp, double t, double rho);

// Reduced residual Helmholtz energy and its derivatives.
//   Given     icomp       component slot
//             itau, idel  orders of the derivative, each 0 to 3
//             tau, del    TZ/t and rho/RHOZ of the slot
//   Returned  (value)     tau^itau del^idel times the derivative; 0 for del <= 1e-10 or tau <= 0
double PHIBWR(int icomp, int itau, int idel, double tau, double del);

// Critical point of the equation [K, kPa, mol/L].
void CRTBWR(int icomp, double& tc, double& pc, double& rhoc);

// Reads the block of the equation and makes its constants those of the fluid.
//   Given     iunit   open unit, at the first line of the block
//             icomp   component slot
//             hcasn   CAS number (not used: there are no built-in data)
//   Codes     1       no unit, or a line that cannot be read: herr says which
//             -104    the reducing values of the coefficients are not the critical ones
void SETBWR(int iunit, int icomp, const Text12& hcasn, int& ierr, Text255& herr);

}  // namespace frigana
