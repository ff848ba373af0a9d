// The entry: from the two paths of a request to the operation that answers it.
#pragma once

#include <string_view>

namespace frigana {

// Runs one request and comes back, however it ends.
//   Given     FILEIN   full path of the request file, with the extension .fi1; cut at 255 characters
//             ADDRESS  full path of a file in the installation folder, which holds fluids and mixtures
//             folder   where result and scratch files go instead of beside the request; empty for there
//   Notes     Answers with the result file beside the request (.fo1). runReport says how the run ended. All storage is
//             static and lives from call to call. Callers of several threads queue; runReport is that of the last run,
//             so who reads it keeps its threads apart. A run that its host left by a jump is cleaned at the next call.
void runRequest(std::string_view FILEIN, std::string_view ADDRESS, std::string_view folder = {});

// Forgets what earlier requests left in the records, so that nothing of them reaches the answer of another caller.
//   Notes     For programs that answer several callers in one process. Without it a field that a request does not give
//             keeps the value of the request before.
void clearRecords();

}  // namespace frigana
