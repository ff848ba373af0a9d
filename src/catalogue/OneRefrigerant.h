// What refrigerants.json says of a single fluid or blend. The list of all of them is Refrigerants; a request asks for
// one, and reading two hundred records for it would take longer than the calculation.
#pragma once

#include "Refrigerants.h"

namespace frigana::catalogue {

// By the name of a file with or without extension, in any case; null where it is not listed, or where the file is
// missing or damaged. The record is kept for the next one who asks.
const Refrigerant* oneRefrigerant(const std::string& dataFolder, std::string_view file);

}  // namespace frigana::catalogue
