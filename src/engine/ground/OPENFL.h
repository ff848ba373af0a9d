// Finding and opening the data files of the engine.
#pragma once

#include "EngineLimits.h"

namespace frigana {

void SETPATH(std::string_view hpath);
void OPENFL(int& iunit, Text255& hfl, int i, int& ierr, Text255& herr);
void RFFILE(const Text255& hfilei, Text255& hfilej);

}  // namespace frigana
