// Selectors, information and conversions on which the whole engine leans; text of messages.
#pragma once

#include "EngineLimits.h"

namespace frigana {

void ISPURE(const Composition& x, int& icomp);
void RMIX(const Composition& x);
void RMIX2(const Composition& x, double& rgas);
double WMOL(const Composition& x);
void XMASS(const Composition& xmole, Composition& xmass, double& mmix);
void XMOLE(const Composition& xmass, Composition& xmole, double& mmix);
void QMASS(double qmole, const Composition& xl, const Composition& xv, double& qmass, Composition& xliqm,
           Composition& xvapm, double& mliq, double& mvap, int& ierr, Text255& herr);
void QMOLE(double qmass, const Composition& xliqm, const Composition& xvapm, double& qmole, Composition& xl,
           Composition& xv, double& mliq, double& mvap, int& ierr, Text255& herr);
void INFO(int icomp, double& molarmass, double& ttriple, double& tboil, double& tc, double& pc, double& Dc, double& Zc,
          double& acentric, double& dipole_m, double& rgas);
void NAME(int icomp, Text12& hname, FixedText<80>& hnam80, Text12& hcas);
void ERRMSG(int ierr, Text255& herr);
void UCASE(Text255& text, int n);

}  // namespace frigana
