// A person's own blends: small named requests in the folder of that person's data, one a blend. An installation that
// nobody may write to serves them too, since a request takes them by their composition.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "FilledRequest.h"
#include "Names.h"

namespace frigana::catalogue {

// The folder of a person's own data; empty where the system names none.
//   Notes     $XDG_DATA_HOME/frigana or ~/.local/share/frigana, on Windows %APPDATA%\frigana. A variable that holds a
//             relative path counts as one that is not set.
std::string personalFolder();

// The blend that was stored under a name.
//   Given     name     as people write it: in any case, with or without hyphens and blanks
//             folder   of the person's data
//             names    fluids of the installation, from which the blend is mixed
//   Returned  (value)  components and fractions, with the name it was stored under; nothing where there is none
//             problem  what is wrong with a file of that name, which then is no blend
std::optional<Fluid> storedBlend(std::string_view name, const std::string& folder, const FluidNames& names,
                                 std::string& problem);

// Stores a blend in place of an earlier one of that name in any case.
//   Returned  path     of the file
//             (value)  why it could not be stored; empty where it was
std::string storeOwnBlend(const FilledRequest& request, const std::string& folder, const FluidNames& names,
                          std::string& path);

}  // namespace frigana::catalogue
