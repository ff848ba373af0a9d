// The program, run in a shell of its own.
#pragma once

#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <string>

namespace frigana::test {

struct Outcome {
    int status;
    std::string said;  // standard output and standard error
};

inline Outcome run(const std::string& arguments) {
    std::FILE* pipe = popen((std::string("'") + FRIGANA_PROGRAM + "' " + arguments + " 2>&1").c_str(), "r");
    Outcome outcome{-1, ""};
    std::array<char, 4096> piece;
    std::size_t count;
    while ((count = std::fread(piece.data(), 1, piece.size(), pipe)) > 0) outcome.said.append(piece.data(), count);
    const int status = pclose(pipe);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
    return outcome;
}

}  // namespace frigana::test
