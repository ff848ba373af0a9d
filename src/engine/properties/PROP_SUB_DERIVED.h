// Further derivatives of the p-rho-T surface and of the enthalpy, virial coefficients, supercompressibility.
//
// Common to all routines:
//   Given     t       temperature [K]
//             rho     density [mol/L]
//             x       mole fractions
//   Notes     All results are 0 for t <= 0 unless a routine says otherwise.
// State: none.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Coefficients that engineers derive from THERM2.
//   Returned  kappa_t    isothermal compressibility [1/kPa]
//             volexp     volume expansivity [1/K]
//             isenexp    isentropic expansion coefficient
//             isotexp    isothermal expansion coefficient
//             kappa_s    adiabatic compressibility [1/kPa]; -9999990 without density or speed of sound
//             bulk_s, bulk_t  adiabatic and isothermal bulk modulus [kPa]
//             throttle   isothermal throttling coefficient [L/mol]
//             intpress   internal pressure [kPa]
//             heatinput  specific heat input [J/mol]
void THERM3(double t, double rho, const Composition& x, double& kappa_t, double& volexp, double& isenexp,
            double& isotexp, double& kappa_s, double& bulk_s, double& bulk_t, double& throttle, double& intpress,
            double& heatinput);

// All first and second derivatives between pressure [kPa], density [mol/L] and temperature [K]; each derivative holds
// the third variable constant.
struct PvtDerivatives {
    double dPdD, dPdT, d2PdD2, d2PdT2, d2PdTD;
    double dDdP, dDdT, d2DdP2, d2DdT2, d2DdPT;
    double dTdP, dTdD, d2TdP2, d2TdD2, d2TdPD;
};
//   Notes     For rho <= 1e-8 the second derivatives in density come from the second virial coefficient, and those of
//             temperature are -9999960.
void DERVPVT(double t, double rho, const Composition& x, PvtDerivatives& r);

// First derivatives of the enthalpy [J/mol] in temperature, density and pressure; the name tells what is held constant.
//   Notes     The density counts as 1e-10 at least. For rho <= 1e-8 dhdrho_T comes from the second virial coefficient,
//             and dhdp_rho and dhdrho_p are -9999960.
void DHD1(double t, double rho, const Composition& x, double& dhdT_rho, double& dhdT_p, double& dhdrho_T,
          double& dhdrho_p, double& dhdp_T, double& dhdp_rho);

// Second virial coefficient [L/mol] and its derivatives in temperature, by evaluation at 1e-8 mol/L.
void VIRB(double t, const Composition& x, double& b);
void DBDT(double t, const Composition& x, double& dbt);
void DBDT2(double t, const Composition& x, double& dbt2);

// Third virial coefficient [(L/mol)^2] and its derivatives in temperature, by evaluation at 1e-6 mol/L.
void VIRC(double t, const Composition& x, double& c);
void DCDT(double t, const Composition& x, double& dct);
void DCDT2(double t, const Composition& x, double& dct2);

// Third derivative of the residual Helmholtz energy in density at zero density [(L/mol)^3], by evaluation at 1e-4
// mol/L.
//   Notes     This is twice the coefficient of rho^3 in p/(rho R T) = 1 + B rho + C rho^2 + D rho^3. With BWR it is 0.
void VIRD(double t, const Composition& x, double& d);

// The same three from the coefficients of a Helmholtz equation, exactly.
//   Returned  B, C, D  as VIRB, VIRC, VIRD; all 0 for a mixture or another model
//   Notes     Non-analytic rows are left out.
void VIRBCD(double t, const Composition& x, double& B, double& C, double& D);

// Second and third acoustic virial coefficient [L/mol, (L/mol)^2]: w^2 = w0^2 (1 + ba rho + ca rho^2).
//   Source    Trusler, Physical Acoustics and Metrology of Fluids, Adam Hilger 1991, chapter 1
void VIRBA(double t, const Composition& x, double& ba);
void VIRCA(double t, const Composition& x, double& ca);

// Cross second virial coefficient of a binary [L/mol]; 0 unless there are two components of positive fraction.
void B12(double t, const Composition& x, double& b);

// Supercompressibility factor: square root of the compressibility factor at 15.56 C (60 F) and 101.55977 kPa over that
// of the state.
//   Given     p       pressure of the state [kPa]
//   Notes     For p <= 0 the state is the ideal gas.
void FPV(double t, double rho, double p, const Composition& x, double& f);

}  // namespace frigana
