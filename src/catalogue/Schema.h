// The shape of a named request as a JSON schema (draft 2020-12), from the catalogue.
#pragma once

#include <string>

#include "Catalogue.h"

namespace frigana::catalogue {

std::string schemaOf(const Request& request);

}  // namespace frigana::catalogue
