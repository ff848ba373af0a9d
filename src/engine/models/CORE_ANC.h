// Ancillary equations of the saturation lines (tags PSn, PLn, DLn, DVn) of one component.
#pragma once

#include "EngineLimits.h"

namespace frigana {

void SETPS(int iunit, int icomp, int& ierr, Text255& herr);
void SETPL(int iunit, int icomp, int& ierr, Text255& herr);
void SETDL(int iunit, int icomp, int& ierr, Text255& herr);
void SETDV(int iunit, int icomp, int& ierr, Text255& herr);
void PSATK(int icomp, double t, double& p, int& ierr, Text255& herr);
void PLSATK(int icomp, double t, double& p, int& ierr, Text255& herr);
void DLSATK(int icomp, double t, double& d, int& ierr, Text255& herr);
void DVSATK(int icomp, double t, double& d, int& ierr, Text255& herr);
void DPSATK(int icomp, double t, double& dpdt, int& ierr, Text255& herr);
void D2PSTK(int icomp, double t, double& d2pdt2, int& ierr, Text255& herr);
void PSATT(double t, const Composition& x, double& p, int& ierr, Text255& herr);
void PLSATT(double t, const Composition& x, double& p, int& ierr, Text255& herr);
void DLSATT(double t, const Composition& x, double& d, int& ierr, Text255& herr);
void DVSATT(double t, const Composition& x, double& d, int& ierr, Text255& herr);

}  // namespace frigana
