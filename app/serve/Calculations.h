// What the workers of the server calculate.
#pragma once

#include <string>

#include "WorkerProcess.h"

namespace frigana::serve {

// The calculation of the workers, on the data of an installation. Called before the workers are forked.
workers::Calculation calculationWith(const std::string& installation);

inline constexpr workers::Limits workerLimits = {.time = std::chrono::seconds(30),
                                                 .memory = std::size_t{1} << 30,
                                                 .file = std::size_t{64} << 20,
                                                 .request = std::size_t{2} << 20,
                                                 .answer = std::size_t{64} << 20};

}  // namespace frigana::serve
