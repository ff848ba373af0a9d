// Thermodynamic properties of a single-phase state from temperature, density and composition.
//
// Common to all routines:
//   Given     t       temperature [K]
//             rho     density [mol/L]
//             x       mole fractions
//   Notes     All results are 0 for t <= 0. The gas constant in use becomes that of x, except in the routines of one
//             slot. Where a logarithm of density arises, a density below 1e-40 (THERM2, THERM0: 1e-20) counts as that.
//             With the top tag BWR the direct functions of that model serve for slot 1.
//   Source    Span, Multiparameter Equations of State, Springer 2000, chapter 3
// State: none of its own.
//
// Virial coefficients and further derivatives stand in PROP_SUB_DERIVED.h, fugacities in PROP_SUB_FUGACITY.h.
#pragma once

#include "EngineLimits.h"
#include "PROP_SUB_DERIVED.h"
#include "PROP_SUB_FUGACITY.h"

namespace frigana {

// The usual properties.
//   Returned  p       pressure [kPa]
//             e, h    internal energy, enthalpy [J/mol]
//             s       entropy [J/(mol K)]
//             cv, cp  heat capacities [J/(mol K)]
//             w       speed of sound [m/s]; 0 where its square is not positive
//             jtcoef  Joule-Thomson coefficient [K/kPa]; by virial coefficients for rho <= 1e-8
void THERM(double t, double rho, const Composition& x, double& p, double& e, double& h, double& s, double& cv,
           double& cp, double& w, double& jtcoef);

// Everything that THERM2 gives.
struct Therm2Result {
    double p;               // pressure [kPa]
    double e, h;            // internal energy, enthalpy [J/mol]
    double s;               // entropy [J/(mol K)]
    double cv, cp;          // heat capacities [J/(mol K)]
    double w;               // speed of sound [m/s]
    double Z;               // compressibility factor; 1 for rho below 1e-40
    double jtcoef;          // Joule-Thomson coefficient [K/kPa]
    double A, G;            // Helmholtz energy, Gibbs energy [J/mol]
    double kappa_t;         // isothermal compressibility [1/kPa]; -9999990 at zero pressure and density
    double volexp;          // volume expansivity [1/K]
    double dPdD;            // [kPa L/mol]
    double d2PdD2;          // [kPa (L/mol)^2]
    double dPdT;            // [kPa/K]
    double dDdT;            // [mol/(L K)]
    double dDdP;            // [mol/(L kPa)]
    double d2PdT2;          // [kPa/K^2]
    double d2PdTD;          // [J/(mol K)]
    double spare3, spare4;  // -9999990
};

// All properties and first and second derivatives.
//   Returned  r       see above; kappa_t, volexp, jtcoef and d2PdD2 by limits for rho <= 1e-8
void THERM2(double t, double rho, const Composition& x, Therm2Result& r);

// The ideal gas at the same temperature and density; arguments as THERM2.
void THERM0(double t, double rho, const Composition& x, double& p, double& e, double& h, double& s, double& cv,
            double& cp, double& w, double& A, double& G);

// Residual part of the properties: the value less that of the ideal gas at the same temperature and density.
void RESIDUAL(double t, double rho, const Composition& x, double& pr, double& er, double& hr, double& sr, double& cvr,
              double& cpr, double& Ar, double& Gr);

// Single properties: the formulas of THERM and THERM2 without the others.
void ENTRO(double t, double rho, const Composition& x, double& s);
void ENTHAL(double t, double rho, const Composition& x, double& h);
void ENERGY(double t, double rho, const Composition& x, double& e);
void PRESS(double t, double rho, const Composition& x, double& p);
void DPDD(double t, double rho, const Composition& x, double& dpdrho);
void DPDD2(double t, double rho, const Composition& x, double& d2pdrho2);
void DPDT(double t, double rho, const Composition& x, double& dpdt);
void DDDP(double t, double rho, const Composition& x, double& drhodp);
void DDDT(double t, double rho, const Composition& x, double& drhodt);
void CVCP(double t, double rho, const Composition& x, double& cv, double& cp);

// The same of one component slot; the gas constant in use stays as it is.
void CVCPK(int icomp, double t, double rho, double& cv, double& cp);
void DPDDK(int icomp, double t, double rho, double& dpdrho);
void DPDTK(int icomp, double t, double rho, double& dpdt);

// Residual Helmholtz and Gibbs energy [J/mol], the latter with RT (1 + a01) + RT (ln rho - 1): what differs between two
// phases of one composition at one temperature.
void GIBBS(double t, double rho, const Composition& x, double& Ar, double& Gr);

// Helmholtz and Gibbs energy [J/mol].
void AG(double t, double rho, const Composition& x, double& A, double& G);

}  // namespace frigana
