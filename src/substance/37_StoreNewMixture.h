// Storing a new mixture as a file that later requests name.
#pragma once

#include "12_MyVariables.h"

namespace frigana {

// Writes the mixture file: name, molar mass and critical point, component names, mole fractions.
//   Given     FILEOUT  path of the mixture file. An existing one is replaced, also where its name differs in case
//   Returned  runReport.resultPath  the path of what was written
//   Codes     those of INITSUBSTANCE; 107201 the substance is no mixture; 107202 it has no name; 107203 its name is
//   that
//             of no file; 107204 its name is that of a mixture of the library; 107205 the file cannot be written. The
//             mixture is not compared with the library
//   Notes     No result file is written. An empty "mixtures\new" in the current folder stays behind where that folder
//             exists; one that is there is left alone.
void STORENEWMIXTURE(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT);

}  // namespace frigana
