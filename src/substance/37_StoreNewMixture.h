// Storing a new mixture as a file that later requests name.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Writes the mixture file: name, molar mass and critical point, component names, mole fractions.
//   Given     FILEOUT  path of the mixture file; an existing one is overwritten
//   Codes     those of INITSUBSTANCE; 107201 the substance is no mixture; 107202 it has no name; the mixture is not
//             checked against the library
//   Notes     No result file is written. An empty "mixtures\new" in the current folder stays behind where that folder
//             exists.
void STORENEWMIXTURE(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT);

}  // namespace frigana
