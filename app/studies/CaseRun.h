// One case of a study, from the study to a worker and back.
#pragma once

#include <string>
#include <string_view>

#include "Study.h"

namespace frigana::studies {

// What is sent to a worker: the keys of the results, what is searched, and the request.
std::string caseTask(const Study& study, std::size_t number);

// Runs it, in the worker.
//   Given     task        by caseTask()
//             dataFolder  holds the folders fluids and mixtures
//   Returned  (value)     JSON in one line: {"values": [...]} in the order of the keys, null where the result has none,
//   with
//                         {"optimum": [...], "values": [...]} at the optimum where one is searched; or
//                         {"error": {"code": ..., "text": ...}} where the request, or every trial, was refused
std::string runCase(std::string_view task, const std::string& dataFolder);

}  // namespace frigana::studies
