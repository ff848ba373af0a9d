// The description of the interface for programs, in the form of OpenAPI 3.1, made from the catalogue.
#pragma once

#include <string>

namespace frigana::serve {

std::string openApiJson();

}  // namespace frigana::serve
