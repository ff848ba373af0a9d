// Thermodynamic properties from temperature, density and composition.
#pragma once

#include "EngineLimits.h"

namespace frigana {

void THERM(double t, double rho, const Composition& x, double& p, double& e, double& h, double& s, double& cv,
           double& cp, double& w, double& jtcoef);
void THERM0(double t, double rho, const Composition& x, double& p, double& e, double& h, double& s, double& cv,
            double& cp, double& w, double& A, double& G);
void RESIDUAL(double t, double rho, const Composition& x, double& pr, double& er, double& hr, double& sr, double& cvr,
              double& cpr, double& Ar, double& Gr);
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
void CVCPK(int icomp, double t, double rho, double& cv, double& cp);
void DPDDK(int icomp, double t, double rho, double& dpdrho);
void DPDTK(int icomp, double t, double rho, double& dpdt);
void GIBBS(double t, double rho, const Composition& x, double& Ar, double& Gr);
void AG(double t, double rho, const Composition& x, double& A, double& G);

// Everything that THERM2 gives.
struct Therm2Result {
    double p, e, h, s, cv, cp, w, Z, jtcoef, A, G, kappa_t, volexp, dPdD, d2PdD2, dPdT, dDdT, dDdP, d2PdT2, d2PdTD,
        spare3, spare4;
};
void THERM2(double t, double rho, const Composition& x, Therm2Result& r);

void VIRB(double t, const Composition& x, double& b);
void DBDT(double t, const Composition& x, double& dbt);
void VIRC(double t, const Composition& x, double& c);
void FGCTY(double t, double rho, const Composition& x, Composition& f);
void FGCTY2(double t, double rho, const Composition& x, Composition& f, int& ierr, Text255& herr);
void PHIDERV(int iderv, double t, double rho, const Composition& x, Composition& dalpha, Composition& dnalpha,
             int& ierr, Text255& herr);

}  // namespace frigana
