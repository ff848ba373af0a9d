// Finding the fluid of a request in the library, so that global warming potential and safety class can be attached.
#pragma once

#include "53_Fluid_Library.h"

namespace frigana {

// What the last lookup found.
struct LibraryLookup {
    int mixtureRow = 0;               // row of the predefined mixture, 0 if none
    Array1<int, 20> POSPUREREFEXT{};  // rows of the components; a pure fluid's row is the first
};

extern LibraryLookup libraryLookup;

// Compares names without their extensions, case included.
//   Given     NCOMP  1: FLUIDNAME is looked for; above 1: every REFSNAMEMIX(j), j = 1 to NCOMP
//   Returned  POS    row(s) of the table
//             flag   'Y' when all were found, otherwise left as it was
void FINDPUREFLUID(const SUBSTANCE& substance, const PureFluidTable& table, int NCOMP, Array1<int, 20>& POS,
                   char& flag);

// A mixture counts as the predefined one of its name if it has the same components, each mass fraction within 2
// percent.
//   Returned  POS    row of the table
//             flag   'Y' when found, otherwise left as it was
void FINDPREDEFINEDMIXTURE(const SUBSTANCE& substance, const MixtureTable& table, int& POS, char& flag);

// Sets FNDFLDFLAG and libraryLookup for the fluid of a property request or of a circuit.
void CHECKREF_PROPERTIES(const SUBSTANCE& substance);

// Ends the run unless both fluids are known.
//   Codes     100123, 100124
void CHECKREF_CYCLES(const SUBSTANCE& first, const SUBSTANCE& second);

}  // namespace frigana
