// Ancillary equations of the saturation lines (tags PSn, PLn, DLn, DVn): simple fits whose results start iterations.
//
// With theta = |1 - t/Tr| (its square root for an even n of a pressure, its cube root for an even n of a density) and
// S = sum a theta^e the value is V (1 + S) for n = 1, 2, V exp(S) for n = 3, 4, V exp((Tr/t) S) for n = 5, 6 and V S
// for n = 7, 8, 9.
//
// State: ancTerms, one record per slot. Written by the readers; RESETA clears the lower limits.
//
// Codes common to the routines of one component and to the means over them:
//     1    t below the lower limit; the value is that of the triple point, PTPN or DTPN
//     121  t above TCRIT; the value is PCRIT or DCRIT
//     2    no equation (tag NBS); the value is PCRIT or DCRIT
//     100  unknown tag; the value is 0
// The derivatives are 0 with any of these codes.
#pragma once

#include "EngineLimits.h"

namespace frigana {

inline constexpr int largestAncTerms = 15;

using AncTermArray = Array1<double, largestAncTerms>;

// Per kind: limits of temperature [K], reducing temperature [K] and value [kPa or mol/L], six counts of which the first
// alone is used, coefficients and exponents.
struct AncSlot {
    double PSTMIN, PSTMAX, PSTRD, PSPRD;  // vapor pressure
    Array1<int, 6> NPS;
    AncTermArray PSKA, PSEXP;
    double PLTMIN, PLTMAX, PLTRD, PLPRD;  // liquid pressure, where bubble and dew line differ
    Array1<int, 6> NPL;
    AncTermArray PLKA, PLEXP;
    double DLTMIN, DLTMAX, DLTRD, DLDRD;  // density of the saturated liquid
    Array1<int, 6> NDL;
    AncTermArray DLKA, DLEXP;
    double DVTMIN, DVTMAX, DVTRD, DVDRD;  // density of the saturated vapor
    Array1<int, 6> NDV;
    AncTermArray DVKA, DVEXP;
};

extern SlotArray<AncSlot> ancTerms;

// Read the block of an ancillary equation: vapor pressure, liquid pressure, liquid density, vapor density.
//   Given     iunit   open unit, the next line being the first of the block
//             icomp   component slot
//   Codes     1  no unit, or a line that cannot be read; herr says which
void SETPS(int iunit, int icomp, int& ierr, Text255& herr);
void SETPL(int iunit, int icomp, int& ierr, Text255& herr);
void SETDL(int iunit, int icomp, int& ierr, Text255& herr);
void SETDV(int iunit, int icomp, int& ierr, Text255& herr);

// Vapor pressure and liquid pressure of one component [kPa].
//   Given     icomp   component slot
//             t       temperature [K]
void PSATK(int icomp, double t, double& p, int& ierr, Text255& herr);
void PLSATK(int icomp, double t, double& p, int& ierr, Text255& herr);

// Densities of the saturated liquid and vapor of one component [mol/L].
void DLSATK(int icomp, double t, double& d, int& ierr, Text255& herr);
void DVSATK(int icomp, double t, double& d, int& ierr, Text255& herr);

// First and second derivative of PSATK with temperature [kPa/K, kPa/K^2].
void DPSATK(int icomp, double t, double& dpdt, int& ierr, Text255& herr);
void D2PSTK(int icomp, double t, double& d2pdt2, int& ierr, Text255& herr);

// The same values of a composition: of the component alone if it is pure, otherwise the mole-fraction mean, which is a
// rough first guess of a mixture.
//   Given     t       temperature [K]
//             x       mole fractions
//   Codes     those of the last component
void PSATT(double t, const Composition& x, double& p, int& ierr, Text255& herr);
void PLSATT(double t, const Composition& x, double& p, int& ierr, Text255& herr);
void DLSATT(double t, const Composition& x, double& d, int& ierr, Text255& herr);
void DVSATT(double t, const Composition& x, double& d, int& ierr, Text255& herr);

// Where Newton's methods of pure fluids begin: the same equations without codes and texts, by one logarithm each.
//   Given     icomp   component slot
//             t, p    [K, kPa]
//   Returned  Dl, Dv  densities of DLSATK and DVSATK but for the rounding [mol/L]
//             t       temperature at which PSATK is p, to about 1e-6
//             (value) false where one of the equations is missing, or t lies outside of them
bool densitiesByAncillaries(int icomp, double t, double& Dl, double& Dv);
bool temperatureByAncillary(int icomp, double p, double& t);

}  // namespace frigana
