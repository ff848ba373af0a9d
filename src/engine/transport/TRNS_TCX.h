// Thermal conductivity models of pure fluids (tags TC0 to TC6) and of the critical enhancement (TK1 to TK6).
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Readers of the conductivity sections.
void SETTC0(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETTC1(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETTC2(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETTC3(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETTC5(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETTC6(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
// Readers of the enhancement sections.
void SETTK1(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETTK3(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETTK4(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETTK6(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);

}  // namespace frigana
