// What a result was made with.
#pragma once

#include <string>

namespace frigana::app {

std::string programVersion();

// A fingerprint of the files of a data folder: names and sizes. Empty for an empty name.
std::string dataVersion(const std::string& dataFolder);

}  // namespace frigana::app
