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

}  // namespace frigana::test
