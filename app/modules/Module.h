// Modules of the program: shared objects beside it that are loaded when they are needed, so that no other command pays
// for their libraries. There are none on Windows.
#pragma once

#include <filesystem>
#include <string>

namespace frigana::modules {

// The file of the running program; empty where the system does not tell.
std::filesystem::path programFile();

// Whether a module is installed: in the folder lib beside that of the program, or in lib/frigana.
//   Given     file  name of the module, as frigana_http.so
bool isInstalled(const std::string& file);

// A function of a module, which stays loaded.
//   Returned  (value)  null with the reason in `complaint`
void* load(const std::string& file, const char* function, std::string& complaint);

}  // namespace frigana::modules
