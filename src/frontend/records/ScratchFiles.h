// What a run holds of its folder: the lock that guards the fixed names of scratch files.
#pragma once

namespace frigana {

// Ends the lock of a run; nothing where there is none.
void releaseScratchFolder();

// Removes the scratch files of the run that holds the lock, for a handler of a signal that ends the program.
void removeScratchFiles();

}  // namespace frigana
