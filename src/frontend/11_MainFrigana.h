// The entry: from the two paths of a request to the operation that answers it.
#pragma once

#include <string_view>

namespace frigana {

// Runs one request and comes back, however it ends.
//   Given     FILEIN   full path of the request file, with the extension .fi1; cut at 255 characters
//             ADDRESS  full path of a file in the installation folder, which holds fluids and mixtures
//   Notes     Answers with the result file beside the request (.fo1). runReport says how the run ended. All storage is
//             static and lives from call to call; the routine is not re-entrant.
void runRequest(std::string_view FILEIN, std::string_view ADDRESS);

}  // namespace frigana
