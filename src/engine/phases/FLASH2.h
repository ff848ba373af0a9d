// Further flash routines and the general flash iterations.
#pragma once

#include "EngineLimits.h"

namespace frigana {

void TQFLSH(double T, double q, const Composition& z, int kq, double& p, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& e, double& h, double& s, double& cv, double& cp, double& w,
            int& ierr, Text255& herr);
void PQFLSH(double p, double q, const Composition& z, int kq, double& T, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& e, double& h, double& s, double& cv, double& cp, double& w,
            int& ierr, Text255& herr);
void TBFLSH(double T, double b, const Composition& z, int kr, std::string_view ab, double& p, double& D, double& Dl,
            double& Dv, Composition& x, Composition& y, double& q, double& e, double& h, double& s, double& cv,
            double& cp, double& w, int& ierr, Text255& herr);
void THFLSH(double T, double h, const Composition& z, int kr, double& p, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& q, double& e, double& s, double& cv, double& cp, double& w,
            int& ierr, Text255& herr);
void TSFLSH(double T, double s, const Composition& z, int kr, double& p, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& q, double& e, double& h, double& cv, double& cp, double& w,
            int& ierr, Text255& herr);
void TEFLSH(double T, double e, const Composition& z, int kr, double& p, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& q, double& h, double& s, double& cv, double& cp, double& w,
            int& ierr, Text255& herr);
void HSFLSH(double h, double s, const Composition& z, double& T, double& p, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& q, double& e, double& cv, double& cp, double& w, int& ierr,
            Text255& herr);
void ABFL1(double a, double b, const Composition& z, int kph, std::string_view ab, double Dmin, double Dmax, double& T,
           double& p, double& D, int& ierr, Text255& herr);
void ABFL2(double a, double b, const Composition& z, int kq, int ksat, std::string_view ab, double& Tbub, double& Tdew,
           double& pbub, double& pdew, double& Dlbub, double& Dvdew, Composition& ybub, Composition& xdew, double& T,
           double& p, double& Dl, double& Dv, Composition& x, Composition& y, double& q, int& ierr, Text255& herr);
void PTANC(double& T, double& p, double& q, double b, char letter, double& Dl, double& Dv);

}  // namespace frigana
