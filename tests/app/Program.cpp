#include "Program.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <cstdlib>

#include "TemporaryFolder.h"

namespace frigana::test {

namespace {

// What these tests store is nobody's, and what somebody has stored is not theirs.
struct NobodysData : testing::Environment {
    TemporaryFolder folder;
    void SetUp() override { setenv("XDG_DATA_HOME", folder.path().c_str(), 1); }
};
[[maybe_unused]] const testing::Environment* const nobody = testing::AddGlobalTestEnvironment(new NobodysData);

}  // namespace

const char* const programPath = FRIGANA_PROGRAM;

Outcome run(const std::string& arguments) {
    return runProgram(programPath, arguments);
}

Outcome runProgram(const std::string& program, const std::string& arguments) {
    std::FILE* pipe = popen(("'" + program + "' " + arguments + " 2>&1").c_str(), "r");
    Outcome outcome{-1, ""};
    std::array<char, 4096> piece;
    std::size_t count;
    while ((count = std::fread(piece.data(), 1, piece.size(), pipe)) > 0) outcome.said.append(piece.data(), count);
    const int status = pclose(pipe);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
    return outcome;
}

}  // namespace frigana::test
