// Where the fluid file of a slot was found, so that what stands beside it is found, too.
// State: the paths. Written by SETFLD.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Remembers the path of the fluid file of a slot.
//   Given     icomp  component slot; only those of the fluids of a set-up are remembered
//             path   as it was opened; empty: there is no file
void noteFluidFile(int icomp, std::string_view path);

// Opens the file that stands beside the fluid file of a slot and bears its name.
//   Given     icomp      component slot
//             extension  in place of .FLD, with its period
//             iunit      first unit number to try
//   Returned  iunit      unit number that was free
//             (value)    false: there is no such file, or no fluid file
bool openBesideFluid(int icomp, std::string_view extension, int& iunit);

}  // namespace frigana
