// Finding and opening the data files of the engine: the one door through which every fluid, mixture and parameter file
// is opened.
#pragma once

#include "EngineLimits.h"

namespace frigana {

// Remembers the installation folder.
//   Given     hpath  folder, with or without a separator at its end; everything from a null character on is dropped
void SETPATH(std::string_view hpath);

// Finds a data file and opens it for reading. Data files may lie in several layouts of folders and in either letter
// case, so that an installation copied between systems keeps working.
//   Given     iunit  first unit number to try
//             hfl    name of the file; one carriage return in it, left by a line of another system, is cut out
//             i      2 for a mixture file, anything else for a fluid file
//   Returned  iunit  unit number that was free; open if ierr is 0
//             ierr   0, or 101 if the file was found nowhere
//             herr   blank: the caller words the message
//   Notes     Order of the search: the installation folder, its fluids or mixtures folder, then six folders, each with
//             the name in five letter cases, first with backslashes, then with slashes, alone and behind the
//             installation folder. The first file that can be opened wins.
void OPENFL(int& iunit, Text255& hfl, int i, int& ierr, Text255& herr);

// The data files opened since forgetOpenedFiles, each as it was then. Written by OPENFL.
//   Returned  (value)  true where one of them is no longer the same: replaced, changed, or gone
void forgetOpenedFiles();
bool openedFilesChanged();

// Gives hfilej the folder of hfilei.
//   Given     hfilei  name of a file; nothing is done if it begins with BDATA or bdata, or has no folder
//   Returned  hfilej  the folder of hfilei with its separator, followed by what hfilej held
void RFFILE(const Text255& hfilei, Text255& hfilej);

}  // namespace frigana
