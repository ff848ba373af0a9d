// Viscosity models of pure fluids (tags VS0 to VS6).
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Readers of the viscosity sections.
void SETVS0(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETVS1(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETVS2(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETVS3(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETVS4(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETVS5(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);
void SETVS6(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr);

}  // namespace frigana
