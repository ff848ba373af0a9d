// The program as a process that may be struck by a fault or killed.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace frigana::test {

// Starts the program; output goes nowhere.
//   Given     arguments  of the command line
//             fault   kind and number of the call that fails, such as "write:3"; empty for none
//             trace   file that comes into being when it does
pid_t start(const std::vector<std::string>& arguments, const std::string& fault = "", const std::string& trace = "");

// Exit status, or 1000 and the signal.
int finish(pid_t process);

}  // namespace frigana::test
