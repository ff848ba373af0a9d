// Reading and writing chosen items of the engine's blocks by name.
// State: none of its own; writes the blocks of which it is told.
#pragma once

#include <string_view>

#include "EngineLimits.h"

namespace frigana {

inline constexpr int passedArraySize = 100;

// Reads or writes an item.
//   Given     hvr     name of the item, up to its first null character
//                     text             heos
//                     integer per slot ntermf ncrt ntermc nterme
//                     real per slot    accen dcrit deos dipole pcfeq pcrit peos rho0feq rhocfeq rhoz t0feq tcfeq tcrit
//                                      tmeos tnbp ttpn txeos tz wmas zcrit pcpr rhocpr tcpr acnpr
//                     real             r
//                     arrays per slot  afeq tifeq difeq dlif (NTERMF + NCRT long), cpc0 xkc0 (NTERMC + NTERME),
//                                      prcoef (20)
//                     array per pair   fprkij (6)
//             iwrite  1 writes, anything else reads
//             icomp   component slot
//             jcomp   second component of a pair
//   Changed   hstr, ival, rval, arr   the argument that fits the item is written from, or returned; in a read the
//                     other scalars are cleared, and a value of 0 leaves the cleared argument
//   Codes     1       name not known
//             2       slot or count out of bounds: a slot that does not exist is neither read nor written
//   Notes     A write clears the caches (RESETA) and makes the model's tables anew. What is written of a pure fluid stays
//             until another one is set up, what is written of a mixture until the next set-up.
void PASSCMN(std::string_view hvr, int iwrite, int icomp, int jcomp, Text255& hstr, int& ival, double& rval,
             double (&arr)[passedArraySize], int& ierr, Text255& herr);

}  // namespace frigana
