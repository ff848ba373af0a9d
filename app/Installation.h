// Where the program finds its data.
#pragma once

#include <string>

namespace frigana::app {

// The data folder that belongs to the running program: that of the tree it was built in, or share/frigana beside bin of
// an installation. Empty if there is none.
std::string defaultInstallation();

}  // namespace frigana::app
