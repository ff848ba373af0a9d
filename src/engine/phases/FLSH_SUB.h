// Flash calculations at given pressure or temperature.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// T is changed where a mixture fails just above its critical temperature.
void TPFLSH(double& T, double p, const Composition& z, double& D, double& Dl, double& Dv, Composition& x,
            Composition& y, double& q, double& e, double& h, double& s, double& cv, double& cp, double& w, int& ierr,
            Text255& herr);
void TPFL2(double T, double p, const Composition& z, double& Dl, double& Dv, Composition& x, Composition& y, double& q,
           int& ierr, Text255& herr);
void TDFLSH(double T, double D, const Composition& z, double& p, double& Dl, double& Dv, Composition& x,
            Composition& y, double& q, double& e, double& h, double& s, double& cv, double& cp, double& w, int& ierr,
            Text255& herr);
void PDFLSH(double p, double D, const Composition& z, double& T, double& Dl, double& Dv, Composition& x,
            Composition& y, double& q, double& e, double& h, double& s, double& cv, double& cp, double& w, int& ierr,
            Text255& herr);
void PHFLSH(double p, double h, const Composition& z, double& T, double& D, double& Dl, double& Dv, Composition& x,
            Composition& y, double& q, double& e, double& s, double& cv, double& cp, double& w, int& ierr,
            Text255& herr);
void PSFLSH(double p, double s, const Composition& z, double& T, double& D, double& Dl, double& Dv, Composition& x,
            Composition& y, double& q, double& e, double& h, double& cv, double& cp, double& w, int& ierr,
            Text255& herr);
void PEFLSH(double p, double e, const Composition& z, double& T, double& D, double& Dl, double& Dv, Composition& x,
            Composition& y, double& q, double& h, double& s, double& cv, double& cp, double& w, int& ierr,
            Text255& herr);
void PBFLSH(double p, double b, const Composition& z, std::string_view ab, double& T, double& D, double& Dl,
            double& Dv, Composition& x, Composition& y, double& q, double& e, double& h, double& s, double& cv,
            double& cp, double& w, int& ierr, Text255& herr);

}  // namespace frigana
