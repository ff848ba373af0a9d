// Newton solvers for phase equilibria of mixtures, envelope splines, critical point of a mixture.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Written by SATTP.
struct NewtonControl {
    int NOSATTP = 0;  // not 0 while SATTP itself runs the substitution methods: stops a re-entry
};

extern NewtonControl newtonControl;

void SATTP(double& T, double& p, const Composition& x, int kph, int kguess, double& D, double& rhol, double& rhov,
           Composition& xliq, Composition& xvap, double& q, int& ierr, Text255& herr);
void SATGV(double& T, double& P, const Composition& z, double vf, double b, int ipv, int ityp, int isp, double& rhox,
           double& rhoy, Composition& x, Composition& y, int& ierr, Text255& herr);
void SATSPLN(const Composition& x, int& ierr, Text255& herr);
void CRTPNT(const Composition& z, double& tc, double& pc, double& rhoc, int& ierr, Text255& herr);

}  // namespace frigana
