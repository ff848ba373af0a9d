// What the workers of the server calculate, and how it is asked for: a task is one word, a line end and what it is
// about; its answer a status of HTTP, a line end and JSON. A case of a study has an answer of its own form (CaseRun.h).
#pragma once

#include <string>
#include <string_view>

#include "WorkerProcess.h"

namespace frigana::serve {

// The calculation of the workers, on the data of an installation. Called before the workers are forked.
workers::Calculation calculationWith(const std::string& installation);

inline constexpr workers::Limits workerLimits = {.time = std::chrono::seconds(30),
                                                 .memory = std::size_t{1} << 30,
                                                 .file = std::size_t{64} << 20,
                                                 .request = std::size_t{2} << 20,
                                                 .answer = std::size_t{64} << 20};

// Words of the tasks.
inline constexpr std::string_view runTask = "run";
inline constexpr std::string_view chartTask = "chart";
inline constexpr std::string_view stateTask = "state";
inline constexpr std::string_view convertTask = "convert";
inline constexpr std::string_view caseTask = "case";
inline constexpr std::string_view fluidsTask = "fluids";

// The most points of one request.
inline constexpr std::size_t mostPoints = 1000;

}  // namespace frigana::serve
