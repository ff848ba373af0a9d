// Saturation states at given density, enthalpy, energy or entropy.
#pragma once

#include "EngineLimits.h"

namespace frigana {

void SATD(double rho, const Composition& x, int kph, int& kr, double& T, double& p, double& rhol, double& rhov,
          Composition& xliq, Composition& xvap, int& ierr, Text255& herr);
void SATH(double h, const Composition& x, int kph, int& nroot, int& k1, double& t1, double& p1, double& d1, int& k2,
          double& t2, double& p2, double& d2, int& ierr, Text255& herr);
void SATE(double e, const Composition& x, int kph, int& nroot, int& k1, double& t1, double& p1, double& d1, int& k2,
          double& t2, double& p2, double& d2, int& ierr, Text255& herr);
void SATS(double s, const Composition& x, int kph, int& nroot, int& k1, double& t1, double& p1, double& d1, int& k2,
          double& t2, double& p2, double& d2, int& k3, double& t3, double& p3, double& d3, int& ierr, Text255& herr);

}  // namespace frigana
