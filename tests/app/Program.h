// The program, run in a shell of its own.
#pragma once

#include <string>

namespace frigana::test {

extern const char* const programPath;

struct Outcome {
    int status;
    std::string said;  // standard output and standard error
};

Outcome run(const std::string& arguments);
// The same of another program than the one that was built.
Outcome runProgram(const std::string& program, const std::string& arguments);

}  // namespace frigana::test
