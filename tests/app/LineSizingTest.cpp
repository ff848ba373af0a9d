// Both runs of line sizing through the program: the table to choose from, and a first result that is missing or
// damaged.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "Program.h"
#include "ResultFile.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

using test::readFile;
using test::ResultFile;
using test::writeFile;

struct LineSizingProgram : testing::Test {
    test::TemporaryFolder folder;
    std::string request = folder.path("chiller.fi1");
    std::string firstResult = folder.path("chiller.fo0");
    std::string result = folder.path("chiller.fo1");
    std::string json = folder.path("chiller.json");
    std::string said;

    int run() {
        const std::string command =
            std::string("'") + test::programPath + "' '" + request + "' --json '" + json + "' 2>&1";
        std::FILE* pipe = popen(command.c_str(), "r");
        said.clear();
        std::array<char, 4096> piece;
        for (std::size_t count; (count = std::fread(piece.data(), 1, piece.size(), pipe)) > 0;)
            said.append(piece.data(), count);
        const int status = pclose(pipe);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    bool says(const std::string& part) const { return said.find(part) != std::string::npos; }

    // The ready request of the first run.
    static std::vector<std::string> example() {
        std::istringstream text(readFile(std::string(test::examplesFolder) + "/line_sizing.fi1"));
        std::vector<std::string> lines;
        for (std::string line; std::getline(text, line);) lines.push_back(line);
        return lines;
    }
    // The same with the pipes that were picked, as a user edits it.
    static std::vector<std::string> withPicked(int suction, int discharge, int liquid) {
        auto lines = example();
        lines.at(5) = "33";
        lines.at(35) = "2 0";
        for (int option : {suction, discharge, liquid}) lines.push_back(std::to_string(option) + " 0");
        return lines;
    }
    void write(const std::vector<std::string>& lines) const {
        std::string text;
        for (const auto& line : lines) text += line + '\n';
        writeFile(request, text);
    }
};

TEST_F(LineSizingProgram, FirstRunShowsTheOptionsAndTheSecondTakesTheOnesPicked) {
    write(example());
    ASSERT_EQ(run(), 0) << said;
    EXPECT_FALSE(std::filesystem::exists(result));
    const ResultFile first(readFile(firstResult));
    ASSERT_EQ(first.count(), 507);
    for (const char* part : {"Line sizing: done", "OPTIONS FOR SUCTION LINE (Condition:Full Load)",
                             "OPTIONS FOR LIQUID LINE (Condition:Partial Load)", "Option", "diameter", "Velocity",
                             "Not standard", "chiller.fo0"})
        EXPECT_TRUE(says(part)) << part << '\n' << said;
    // One row per option, with its number, its sizes and its name.
    EXPECT_TRUE(says("\n  4        0.031618  0.034925 ")) << said;
    EXPECT_TRUE(says("1 3/8\n")) << said;

    // In JSON the row is the option to be picked.
    const auto values = nlohmann::json::parse(readFile(json));
    EXPECT_EQ(values["outcome"], "success");
    EXPECT_EQ(values["result_file"], firstResult);
    int sizes = 0;
    for (const auto& value : values["values"]) {
        if (value.value("group", "") != "Option") continue;
        const int option = value["row"].get<int>();
        const int line = value["line"].get<int>();
        EXPECT_EQ(option, 1 + (line - 287) % 37 / 6) << line;
        sizes += value["name"] == "Size" ? 1 : 0;
    }
    EXPECT_EQ(sizes, 36);

    write(withPicked(4, 5, 3));
    ASSERT_EQ(run(), 0) << said;
    const ResultFile second(readFile(result));
    ASSERT_EQ(second.count(), 507);
    EXPECT_TRUE(says("Line sizing: done"));
    EXPECT_TRUE(says("chiller.fo1"));
    EXPECT_NEAR(second.number(41), first.number(290 + 6 * 3), 1e-9);
    EXPECT_NEAR(second.number(82), first.number(364 + 6 * 4), 1e-9);
    EXPECT_NEAR(second.number(124), first.number(438 + 6 * 2), 1e-9);
    EXPECT_EQ(second.number(156), first.number(156));
    EXPECT_EQ(second.trimmed(287 + 6 * 2 + 5), "1 3/8");
}

TEST_F(LineSizingProgram, ALineThatIsNotSizedShowsNoTable) {
    auto lines = example();
    lines.at(15) = "1 20.0";  // discharge line
    write(lines);
    ASSERT_EQ(run(), 0) << said;
    EXPECT_TRUE(says("OPTIONS FOR DISCHARGE LINE (Condition:Full Load)\n  none\n")) << said;
}

TEST_F(LineSizingProgram, ASecondRunWithoutAFirstIsToldSo) {
    write(withPicked(4, 5, 3));
    EXPECT_EQ(run(), 3);
    EXPECT_TRUE(says("chiller.fo0: is missing; the first run (option 1 of parameter 30) writes it")) << said;
    EXPECT_FALSE(std::filesystem::exists(result));
}

// The first result is the plant's own by its title and its fluid.
TEST_F(LineSizingProgram, TheFirstResultOfAnotherPlantIsRefused) {
    const auto secondRun = withPicked(4, 4, 4);
    for (const std::size_t line : {std::size_t{1}, std::size_t{2}}) {
        write(example());
        ASSERT_EQ(run(), 0) << said;
        const std::string offers = readFile(firstResult);
        auto other = secondRun;
        other.at(line) = line == 1 ? "Another plant" : "R600A.FLD";
        write(other);
        EXPECT_EQ(run(), 2) << said;
        EXPECT_TRUE(says("205201")) << said;
        EXPECT_TRUE(says("Error: The first run was that of another plant: its title or fluid is another one!")) << said;
        EXPECT_EQ(readFile(result).substr(0, 10), " 0\n 205201");
        EXPECT_EQ(readFile(firstResult), offers);
    }
    write(secondRun);
    EXPECT_EQ(run(), 0) << said;
}

TEST_F(LineSizingProgram, ADamagedFirstResultIsToldWithItsLine) {
    write(example());
    ASSERT_EQ(run(), 0);
    const std::string whole = readFile(firstResult);
    std::size_t end = 0;
    for (int line = 1; line <= 200; ++line) end = whole.find('\n', end) + 1;
    writeFile(firstResult, whole.substr(0, end));
    write(withPicked(4, 5, 3));
    EXPECT_EQ(run(), 3);
    EXPECT_TRUE(says("chiller.fo0, line 201: expected a line of a result, found the end of the file")) << said;
    EXPECT_FALSE(std::filesystem::exists(result));

    std::string spoiled = whole;
    std::size_t at = 0;
    for (int line = 1; line < 308; ++line) at = spoiled.find('\n', at) + 1;
    spoiled.replace(at, spoiled.find('\n', at) - at, " ?");
    writeFile(firstResult, spoiled);
    EXPECT_EQ(run(), 3);
    EXPECT_TRUE(says("chiller.fo0, line 308: expected a number, found \"?\"")) << said;
}

TEST_F(LineSizingProgram, AnOptionWithoutAPipeIsRefused) {
    auto lines = example();
    lines.at(20) = "3 0.002";  // liquid line, narrower than every size: its first option is cleared
    write(lines);
    ASSERT_EQ(run(), 0) << said;
    auto picked = withPicked(4, 5, 1);
    picked.at(20) = "3 0.002";
    write(picked);
    EXPECT_EQ(run(), 2);
    EXPECT_TRUE(says("201208")) << said;
}

}  // namespace
}  // namespace frigana
