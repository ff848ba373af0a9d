// Saturation states at given temperature or pressure.
#pragma once

#include "EngineLimits.h"

namespace frigana {

void SATT(double T, const Composition& x, int kph, double& p, double& rhol, double& rhov, Composition& xliq,
          Composition& xvap, int& ierr, Text255& herr);
void SATP(double p, const Composition& x, int kph, double& T, double& rhol, double& rhov, Composition& xliq,
          Composition& xvap, int& ierr, Text255& herr);
void SATTEST(double T, const Composition& x, int kph, double& p, Composition& y, int& ierr, Text255& herr);
void SATPEST(double p, const Composition& x, int kph, double& T, Composition& y, int& ierr, Text255& herr);
void TPRHOB(double T, double p, double rho1, double rho2, const Composition& x, double& rho, int& ierr, Text255& herr);
void DLDV(double T, double& p, double& rho1, double& rho2, const Composition& x1, const Composition& x2, int& ierr,
          Text255& herr);
void LIQSPNDL(double T, const Composition& x, double& rho, int& ierr, Text255& herr);
void VAPSPNDL(double T, const Composition& x, double& rho, int& ierr, Text255& herr);
void SETLSPNDL(int icomp, int& ierr, Text255& herr);
void SETVSPNDL(int icomp, int& ierr, Text255& herr);
// Forgets the memorised saturation states (part of RESETA).
void resetSaturationMemo();

}  // namespace frigana
