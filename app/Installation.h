// Where the program finds its data.
#pragma once

#include <filesystem>
#include <string>

namespace frigana::app {

// The data folder that belongs to the running program: that of the tree it was built in, or share/frigana beside bin of
// an installation. Empty if there is none.
std::string defaultInstallation();

// The same for a file of that tree or installation: a library, a module.
std::string installationOf(const std::filesystem::path& file);

}  // namespace frigana::app
