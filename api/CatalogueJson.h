// The catalogue of requests and the list of fluids as the page and other programs read them.
#pragma once

#include <string>

namespace frigana::programs {

// {"requests": [...], "general": [...], "quantities": {...}, "property_words": [...]}: every request with its circuits,
// parameters, options, limits (in the inner unit of their quantity), typical values and numbered points; every quantity
// with its units: value in the inner unit = (number + shift) * factor.
std::string requestsJson();

// {"fluids": [...]}: what a request may name, with designation, potential, safety class and components, the blends of
// the person who runs the program included ("own"). Reads all fluids: a worker's business.
std::string fluidsJson(const std::string& dataFolder);

}  // namespace frigana::programs
