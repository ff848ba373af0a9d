// Routes the Helmholtz energy, the reducing values and the ideal-gas functions to the models that the tags name.
#pragma once

#include "EngineLimits.h"

namespace frigana {

double PHIK(int icomp, int itau, int idel, double tau, double del);
double PHIX(int itau, int idel, double tau, double del, const Composition& x);
void REDK(int icomp, double& tz, double& rhoz);
void REDX(const Composition& x, double& tz, double& rhoz);
double CP0K(int icomp, double t);
double CP0(double t, const Composition& x);
double CPI(double t, const Composition& x);
double CPT(double t, const Composition& x);
double PHI0K(int icomp, int itau, int idel, double t, double rho);
double PHI0(int itau, int idel, double t, double rho, const Composition& x);
// Mixture Helmholtz energy: ideal solution of the pure equations plus departure.
double PHIHMX(int itau, int idel, double tau, double del, const Composition& x);

}  // namespace frigana
