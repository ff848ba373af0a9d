// The documentation against the program: what it shows is what the program says.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "Program.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

using test::readFile;
using test::run;
using test::TemporaryFolder;

std::string treeFile(const std::string& path) {
    return readFile(std::string(test::testsFolder) + "/../" + path);
}

// The blocks of a page between ```kind and ```.
std::vector<std::string> blocksOf(const std::string& page, const std::string& kind) {
    std::vector<std::string> blocks;
    const std::string opening = "\n```" + kind + "\n", closing = "\n```\n";
    for (auto at = page.find(opening); at != std::string::npos; at = page.find(opening, at + 1)) {
        const auto begin = at + opening.size(), end = page.find(closing, begin - 1);
        blocks.push_back(page.substr(begin, end - begin + 1));
    }
    return blocks;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

// Lines of an excerpt that stand in a text in their order; "..." leaves lines out.
testing::AssertionResult isExcerpt(const std::vector<std::string>& excerpt, const std::string& text) {
    const std::vector<std::string> lines = linesOf(text);
    std::size_t at = 0;
    for (const std::string& line : excerpt) {
        if (line == "...") continue;
        while (at < lines.size() && lines[at] != line) ++at;
        if (at++ >= lines.size()) return testing::AssertionFailure() << "not said: " << line << "\nbut\n" << text;
    }
    return testing::AssertionSuccess();
}

TEST(Docs, TheReferenceIsWhatTheCatalogueSays) {
    EXPECT_EQ(treeFile("docs/reference.md"), run("explain --markdown").said)
        << "frigana explain --markdown writes docs/reference.md";
}

TEST(Docs, TheAnswerOfTheReadmeIsTheAnswerOfTheProgram) {
    const std::string readme = treeFile("README.md");
    const TemporaryFolder folder;
    const std::vector<std::string> requests = blocksOf(readme, "toml");
    ASSERT_EQ(requests.size(), 1u);
    test::writeFile(folder.path("request.toml"), requests.front());
    const std::string said = run("run '" + folder.path("request.toml") + "'").said;
    EXPECT_EQ(said, run("run '" + std::string(test::examplesFolder) + "/chiller.toml'").said);
    std::vector<std::string> answer;
    for (const std::string& block : blocksOf(readme, ""))
        if (block.starts_with("$ frigana run")) answer = linesOf(block);
    ASSERT_GT(answer.size(), 10u);
    answer.erase(answer.begin());
    EXPECT_TRUE(isExcerpt(answer, said));
}

TEST(Docs, EveryCommandOfTheFirstTenMinutesWorks) {
    namespace fs = std::filesystem;
    const TemporaryFolder folder;
    fs::create_directory_symlink(fs::absolute(test::examplesFolder), folder.path("examples"));
    std::string script = "set -e\ncd '" + folder.path() + "'\nexport PATH='" +
                         fs::path(test::programPath).parent_path().string() + "':\"$PATH\"\n";
    const std::vector<std::string> blocks = blocksOf(treeFile("docs/getting-started.md"), "console");
    EXPECT_GE(blocks.size(), 8u);
    for (const std::string& block : blocks) script += block;
    test::writeFile(folder.path("all.sh"), script);
    const std::string log = folder.path("log");
    const int status = std::system(("sh '" + folder.path("all.sh") + "' > '" + log + "' 2>&1").c_str());
    ASSERT_EQ(WEXITSTATUS(status), 0) << readFile(log);
    const std::string said = readFile(log);
    EXPECT_NE(said.find("Small chiller"), std::string::npos);
    EXPECT_NE(said.find("allowed are -173.15 °C to 326.85 °C"), std::string::npos) << said;
    EXPECT_NE(said.find("done, but"), std::string::npos);
    for (const char* file : {"chiller.svg", "chiller-ts.svg", "chiller.json", "chiller.csv", "basic.schema.json"})
        EXPECT_TRUE(fs::exists(folder.path(file))) << file;
}

// The words of an option on one line of the man page, the description of a command on another: no line of it may be
// taken for a request to the formatter.
TEST(Docs, TheManPageIsCleanForItsFormatter) {
    if (std::system("command -v groff > /dev/null 2>&1") != 0) GTEST_SKIP() << "no groff";
    const TemporaryFolder folder;
    EXPECT_EQ(run("completion man --out '" + folder.path("frigana.1") + "'").status, 0);
    const std::string errors = folder.path("errors");
    const int status =
        std::system(("groff -man -Tutf8 -ww -z '" + folder.path("frigana.1") + "' 2> '" + errors + "'").c_str());
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(readFile(errors), "");
}

}  // namespace
}  // namespace frigana
