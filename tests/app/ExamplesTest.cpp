// Every ready request is answered.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>

#include "Program.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

namespace fs = std::filesystem;

TEST(Examples, EachIsAnswered) {
    test::TemporaryFolder folder;
    // An installation of their own: one of them stores a blend.
    fs::create_directories(folder.path("installed"));
    fs::create_directory_symlink(std::string(test::dataFolder) + "/fluids", folder.path("installed/fluids"));
    fs::copy(std::string(test::dataFolder) + "/mixtures", folder.path("installed/mixtures"));
    int count = 0;
    for (const auto& entry : fs::directory_iterator(test::examplesFolder)) {
        if (entry.path().extension() != ".fi1") continue;
        const std::string request = folder.path(entry.path().filename().string());
        fs::copy_file(entry.path(), request);
        const std::string said = folder.path("said");
        const std::string command = std::string("'") + test::programPath + "' '" + request + "' --data '" +
                                    folder.path("installed") + "' > '" + said + "' 2>&1";
        const int status = std::system(command.c_str());
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << entry.path() << '\n' << test::readFile(said);
        ++count;
    }
    EXPECT_GE(count, 9);
}

}  // namespace
}  // namespace frigana
