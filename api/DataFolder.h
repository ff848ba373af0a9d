// The data folder of a library or module that is loaded by a program.
#pragma once

#include <string>

namespace frigana::programs {

// The folder that was chosen, else that of FRIGANA_DATA, else the one of the tree or installation that the library of
// this code belongs to. Empty where there is none. Thread-safe.
std::string dataFolder();

// Chooses the folder for the whole process.
//   Returned  (value)  what is wrong with it; empty where it was taken
std::string chooseDataFolder(const std::string& folder);

}  // namespace frigana::programs
