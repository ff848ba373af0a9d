// One case of a study, from the study to a worker and back.
#pragma once

#include <string>
#include <string_view>

#include "Study.h"

namespace frigana::studies {

// What is sent to a worker: the keys of the results and the request.
std::string caseTask(const Study& study, std::size_t number);

// Runs it, in the worker.
//   Given     task        by caseTask()
//             dataFolder  holds the folders fluids and mixtures
//   Returned  (value)     JSON in one line: {"values": [...]} in the order of the keys, null where the result has none;
//   or
//                         {"error": {"code": ..., "text": ...}} where the request was refused
std::string runCase(std::string_view task, const std::string& dataFolder);

// Whether a request leaves something in the installation: such a one is run on the command line alone.
bool storesInInstallation(const catalogue::Request& request);

}  // namespace frigana::studies
