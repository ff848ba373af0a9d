// Named requests from their text to JSON.
#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "NamedRequest.h"

namespace frigana::programs {

struct RunRules {
    std::string dataFolder;                                            // holds the folders fluids and mixtures
    std::size_t mostPoints = std::numeric_limits<std::size_t>::max();  // of one request
    bool mayStore = true;                                              // blends, among those of the person
    catalogue::NamedFormat format = catalogue::NamedFormat::json;
};

struct JsonAnswer {
    int status;  // as of HTTP: 200 done, 422 refused by the calculation, 400 not to be read
    std::string json;
};

// The form of a request by its first character.
catalogue::NamedFormat formatOf(std::string_view body);

// Runs a request and tells all of its result, as `frigana run --json` does; a list where it has several points.
// Not thread-safe.
JsonAnswer runJson(std::string_view body, const RunRules& rules);

// {"error": {"code", "text", "problems": [{"line", "text", "key", "allowed"}]}}: the key and what is allowed stand
// where a value is beyond its limits.
JsonAnswer refusal(std::string_view code, const std::vector<catalogue::Problem>& problems);

}  // namespace frigana::programs
