// A person's own blends: small named requests in the folder of that person's data, one a blend. An installation that
// nobody may write to serves them too, since a request takes them by their composition.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

// The fluid that a person means by a name: of the installation, or else a blend that the person has stored.
//   Returned  fluid    kind with file, or with components and the name that the blend was stored under
//             (value)  what is wrong with the name; empty where it is known
std::string findFluid(std::string_view name, const FluidNames& names, const std::string& folder, Fluid& fluid);

// A file of the folder that holds a blend, or should.
struct StoredBlend {
    std::string name;     // as a request may say it
    Fluid fluid;          // where there is no problem
    std::string problem;  // as of storedBlend()
};

// All blends of a folder, by name.
std::vector<StoredBlend> storedBlends(const std::string& folder, const FluidNames& names);

// How people call a fluid: R134a, or the name of a blend that is listed by its components.
std::string shownName(const Fluid& fluid, const FluidNames& names);

// Stores a blend in place of an earlier one of that name in any case.
//   Returned  path     of the file
//             (value)  why it could not be stored; empty where it was
std::string storeOwnBlend(const FilledRequest& request, const std::string& folder, const FluidNames& names,
                          std::string& path);

}  // namespace frigana::catalogue
