// The program as a user runs it.
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>

#include "Program.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

using test::Outcome;
using test::readFile;
using test::run;
using test::TemporaryFolder;
using test::writeFile;

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

std::string example() {
    return readFile(std::string(test::examplesFolder) + "/small_chiller.fi1");
}

struct Program : testing::Test {
    TemporaryFolder folder;
    std::string request = folder.path("plant.fi1");
    std::string result = folder.path("plant.fo1");
    std::string quoted = "'" + request + "'";
};

TEST_F(Program, HelpAndVersion) {
    const Outcome help = run("--help");
    EXPECT_EQ(help.status, 0);
    for (const char* part : {"REQUEST", "--data", "--json", "--csv", "--version", "check-data"})
        EXPECT_TRUE(contains(help.said, part));
    const Outcome version = run("--version");
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.said.substr(0, 8), "frigana ");
}

TEST_F(Program, AWrongCommandLineIsToldSo) {
    EXPECT_EQ(run("").status, 1);
    EXPECT_EQ(run("--nonsense x.fi1").status, 1);
    EXPECT_EQ(run("'" + folder.path("plant.txt") + "'").status, 1);
    EXPECT_EQ(run("'/" + std::string(260, 'd') + ".fi1'").status, 1);
}

TEST_F(Program, AnExampleIsSolvedAndShownWithNamesAndUnits) {
    writeFile(request, example());
    const Outcome outcome = run(quoted);
    EXPECT_EQ(outcome.status, 0) << outcome.said;
    for (const char* part : {"Basic cycle: done", "EVAPORATOR", "Inlet", "pressure [kPa]", "COP of cooling",
                             "PERFORMANCE PARAMETERS", "Result file: "})
        EXPECT_TRUE(contains(outcome.said, part)) << part << '\n' << outcome.said;
    EXPECT_EQ(readFile(result).substr(0, 6), " 2\n 1\n");
}

TEST_F(Program, ARefusalShowsCodeAndMessageAndExitsWithTwo) {
    std::string text = example();
    text.replace(text.find("1 268.15"), 8, "1 -77.00");
    writeFile(request, text);
    writeFile(result, "an older result\n");
    const Outcome outcome = run(quoted);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(contains(outcome.said, "201102"));
    EXPECT_TRUE(contains(outcome.said, "Out of range: Evaporating parameter"));
    EXPECT_EQ(readFile(result).substr(0, 10), " 0\n 201102");
}

TEST_F(Program, ARequestThatCannotBeReadExitsWithThreeAndLeavesNoOldResult) {
    writeFile(request, "2\ntitle\nR134A.FLD\n2 DEF\nx\n");
    writeFile(result, "an older result\n");
    const Outcome outcome = run(quoted);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_TRUE(contains(outcome.said, "line 5: expected the sub-type of the cycle (an integer), found \"x\""));
    EXPECT_FALSE(std::filesystem::exists(result));
    EXPECT_EQ(run("'" + folder.path("none.fi1") + "'").status, 3);
}

TEST_F(Program, WhatNoTableNamesExitsWithThree) {
    writeFile(request, "3\n");
    writeFile(result, "an older result\n");
    const Outcome outcome = run(quoted);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_TRUE(contains(outcome.said, "there is no operation for request type 3"));
    EXPECT_FALSE(std::filesystem::exists(result));
}

TEST_F(Program, ValuesGoToJsonWithNamesUnitsAndLines) {
    writeFile(request, example());
    const Outcome outcome = run(quoted + " --json '" + folder.path("plant.json") + "'");
    EXPECT_EQ(outcome.status, 0) << outcome.said;
    const auto json = nlohmann::json::parse(readFile(folder.path("plant.json")));
    EXPECT_EQ(json["outcome"], "success");
    EXPECT_EQ(json["operation"]["name"], "Basic cycle");
    // Every line of the file that holds a value is there once, under its number.
    std::vector<std::string> lines;
    std::istringstream file(readFile(result));
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    int reals = 0;
    for (const auto& value : json["values"]) {
        if (!value["value"].is_number_float()) continue;
        ++reals;
        EXPECT_FALSE(value["name"].get<std::string>().empty());
        EXPECT_TRUE(value.contains("unit"));
        EXPECT_EQ(std::stod(lines.at(value["line"].get<std::size_t>() - 1)), value["value"].get<double>());
    }
    EXPECT_GT(reals, 200);
}

TEST_F(Program, JsonTellsARefusal) {
    std::string text = example();
    text.replace(text.find("1 268.15"), 8, "1 -77.00");
    writeFile(request, text);
    const Outcome outcome = run(quoted + " --json -");
    EXPECT_EQ(outcome.status, 2);
    const auto json = nlohmann::json::parse(outcome.said);
    EXPECT_EQ(json["outcome"], "refused");
    EXPECT_EQ(json["code"], 201102);
    EXPECT_EQ(json["parameter"]["number"], 1);
    EXPECT_EQ(json["parameter"]["name"], "Evaporating parameter");
    EXPECT_EQ(json["exit_status"], 2);
}

TEST_F(Program, ARefusalNamesTheParameterItCameFrom) {
    std::string text = example();
    text.replace(text.find("1 313.15"), 8, "1 -77.00");
    writeFile(request, text);
    const Outcome outcome = run(quoted);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(contains(outcome.said, "  from     parameter 11: Condensing parameter\n")) << outcome.said;
    // A check of the solver says in its text what it is about.
    text = example();
    text.replace(text.find("1 268.15"), 8, "1 320.00");
    writeFile(request, text);
    EXPECT_FALSE(contains(run(quoted).said, "  from  "));
}

TEST_F(Program, ValuesGoToCsv) {
    writeFile(request, example());
    EXPECT_EQ(run(quoted + " --csv '" + folder.path("plant.csv") + "'").status, 0);
    std::istringstream csv(readFile(folder.path("plant.csv")));
    std::string line;
    std::getline(csv, line);
    EXPECT_EQ(line, "line,circuit,section,group,row,name,unit,value,key");
    int rows = 0;
    while (std::getline(csv, line)) {
        ++rows;
        EXPECT_GE(std::count(line.begin(), line.end(), ','), 7) << line;
    }
    EXPECT_GT(rows, 200);
}

TEST_F(Program, AReportThatCannotBeWrittenIsToldSo) {
    writeFile(request, example());
    EXPECT_EQ(run(quoted + " --json /nowhere/at/all.json").status, 3);
}

TEST_F(Program, OutputThatCannotBeWrittenExitsWithThree) {
    writeFile(request, example());
    std::filesystem::create_directories(folder.path("one/fluids"));
    std::filesystem::copy(std::string(test::dataFolder) + "/fluids/R32.FLD", folder.path("one/fluids/R32.FLD"));
    for (const std::string& arguments :
         {quoted, quoted + " --json -", quoted + " --csv -", std::string("list"),
          "check-data '" + folder.path("one") + "'", "--data '" + folder.path("none") + "' list"}) {
        for (const char* nowhere : {" >/dev/full 2>/dev/null #", " >&- 2>/dev/null #"}) {
            if (!std::filesystem::exists("/dev/full")) continue;
            EXPECT_EQ(run(arguments + nowhere).status, 3) << arguments << nowhere;
        }
    }
    // What is written to a closed standard output goes into no other file.
    EXPECT_EQ(readFile(result).substr(0, 6), " 2\n 1\n");
    EXPECT_FALSE(contains(readFile(result), "Basic cycle"));
}

TEST_F(Program, ErrorsStandOnceOnStandardError) {
    writeFile(request, "2\ntitle\nR134A.FLD\n2 DEF\nx\n");
    EXPECT_EQ(run(quoted + " 2>/dev/null #").said, "");
    const std::string said = run(quoted).said;
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << said;
    std::string text = example();
    text.replace(text.find("1 268.15"), 8, "1 -77.00");
    writeFile(request, text);
    EXPECT_EQ(run(quoted + " 2>/dev/null #").said, "");
    EXPECT_TRUE(contains(run(quoted).said, "201102"));
}

TEST_F(Program, OnlyAPathThatEndsWithTheExtensionIsARequest) {
    writeFile(request, example());
    writeFile(folder.path("plant.fi1.v2"), example());
    writeFile(result, "an older result\n");
    EXPECT_EQ(run("'" + folder.path("plant.fi1.v2") + "'").status, 1);
    EXPECT_EQ(readFile(result), "an older result\n");
    // Nor does a request that is not there delete anything.
    std::filesystem::remove(request);
    EXPECT_EQ(run(quoted).status, 3);
    EXPECT_EQ(readFile(result), "an older result\n");
}

TEST_F(Program, NoOutputIsWrittenOverTheRequestOrAnotherOne) {
    writeFile(request, example());
    const std::string other = folder.path("x.json");
    std::filesystem::create_symlink(request, folder.path("link"));
    for (const std::string& arguments :
         {" --json '" + request + "'", " --csv '" + request + "'", " --json '" + folder.path("./plant.fi1") + "'",
          " --json '" + folder.path("link") + "'", " --json '" + result + "'",
          " --csv '" + folder.path("plant.fo0") + "'", " --json '" + other + "' --csv '" + other + "'",
          std::string(" --json - --csv -")}) {
        const Outcome outcome = run(quoted + arguments);
        EXPECT_EQ(outcome.status, 1) << arguments;
        EXPECT_TRUE(contains(outcome.said, "would be written over")) << outcome.said;
        EXPECT_EQ(readFile(request), example());
        EXPECT_FALSE(std::filesystem::exists(result));
    }
}

TEST_F(Program, AResultMayGoToAnotherFolderOrToStandardOutput) {
    writeFile(request, example());
    ASSERT_EQ(run(quoted).status, 0);
    const std::string expected = readFile(result);
    std::filesystem::remove(result);
    const std::string other = folder.path("other");
    std::filesystem::create_directory(other);
    // The folder of the request takes no files.
    std::filesystem::permissions(folder.path(),
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    EXPECT_EQ(run(quoted + " --output '" + other + "'").status, 0);
    EXPECT_EQ(run(quoted + " --output - 2>/dev/null #").said, expected);
    std::filesystem::permissions(folder.path(), std::filesystem::perms::owner_all);
    EXPECT_EQ(readFile(other + "/plant.fo1"), expected);
    EXPECT_FALSE(std::filesystem::exists(result));
    EXPECT_EQ(run(quoted + " --output '" + folder.path("none") + "'").status, 3);
    EXPECT_EQ(run(quoted + " --output - --json -").status, 1);
    // A cascade has its scratch files there too, and a refusal its form.
    writeFile(request, readFile(std::string(test::examplesFolder) + "/cascade_cycle.fi1"));
    EXPECT_EQ(run(quoted + " --output '" + other + "/'").status, 0);
    std::string text = example();
    text.replace(text.find("1 268.15"), 8, "1 -77.00");
    writeFile(request, text);
    EXPECT_EQ(run(quoted + " --output '" + other + "'").status, 2);
    EXPECT_EQ(readFile(other + "/plant.fo1").substr(0, 10), " 0\n 201102");
    EXPECT_FALSE(std::filesystem::exists(result));
    int files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(other)) ++files;
    EXPECT_EQ(files, 1);
}

// Pressures and temperatures of a booster with carbon dioxide, of which these fluids make no cycle.
TEST_F(Program, ACycleWhoseFiguresAreNotFiniteIsRefused) {
    const std::string booster = readFile(std::string(test::examplesFolder) + "/transcritical_booster.fi1");
    for (const char* fluid : {"R124.FLD", "R515A.MIX", "R515B.MIX"}) {
        std::string text = booster;
        text.replace(text.find("CO2.FLD"), 7, fluid);
        writeFile(request, text);
        const Outcome outcome = run(quoted);
        EXPECT_EQ(outcome.status, 2) << fluid;
        EXPECT_TRUE(contains(outcome.said, "214299")) << outcome.said;
        EXPECT_TRUE(contains(outcome.said, "Error: the cycle has no solution")) << outcome.said;
        EXPECT_EQ(readFile(result).substr(0, 10), " 0\n 214299") << fluid;
    }
}

// Values within their limits of which no cycle can be made: a gas cooler that cools below the triple point of carbon
// dioxide, and a superheat that vanishes in the rounding of a temperature.
TEST_F(Program, AnExtremeValueThatLeavesNoCycleIsRefused) {
    struct Row {
        const char *example, *line, *changed, *code;
    };
    for (const Row& row : {Row{"transcritical_cycle", "\n1 308.15\n", "\n1 215.0\n", "207299"},
                           Row{"line_sizing", "\n2 5.0\n", "\n2 1e-12\n", "205299"}}) {
        std::string text = readFile(std::string(test::examplesFolder) + "/" + row.example + ".fi1");
        text.replace(text.find(row.line), std::string(row.line).size(), row.changed);
        writeFile(request, text);
        const Outcome outcome = run(quoted);
        EXPECT_EQ(outcome.status, 2) << row.example;
        EXPECT_TRUE(contains(outcome.said, row.code)) << outcome.said;
        EXPECT_TRUE(contains(outcome.said, "Error: the cycle has no solution")) << outcome.said;
    }
}

TEST_F(Program, ARefusalIsShownEvenWhereItsFormCannotBeWritten) {
    std::string text = example();
    text.replace(text.find("1 268.15"), 8, "1 -77.00");
    writeFile(request, text);
    const Outcome outcome = run(quoted + " --output '" + folder.path("none") + "'");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_TRUE(
        contains(outcome.said, "none/plant.fo1: cannot be written; the request is refused: 201102 Out of range"))
        << outcome.said;
}

TEST_F(Program, TextsOfAnotherKindAreNamed) {
    writeFile(request, "\xEF\xBB\xBF" + example());
    EXPECT_EQ(run(quoted).status, 0);
    std::string wide, returns = example();
    for (const char c : example()) wide += {c, '\0'};
    for (char& c : returns)
        if (c == '\n') c = '\r';
    writeFile(request, wide);
    EXPECT_TRUE(contains(run(quoted).said, "UTF-16"));
    writeFile(request, returns);
    EXPECT_TRUE(contains(run(quoted).said, "carriage return"));
}

TEST_F(Program, ControlCharactersAreShownNotSent) {
    std::string text = example();
    text.replace(text.find("Test of"), 7,
                 "\x1b[2J\x7f\xc2\x9b"
                 "K\xc3\xbchl");
    writeFile(request, text);
    const std::string said = run(quoted).said;
    EXPECT_TRUE(contains(said, "\\x1B[2J\\x7F\\x9BK\xc3\xbchl")) << said;
    EXPECT_FALSE(contains(said, "\x1b"));
    text.replace(text.find("R134A.FLD"), 9, "\x1b]0;x\x07.FLD");
    writeFile(request, text);
    EXPECT_FALSE(contains(run(quoted).said, "\x1b"));
    EXPECT_FALSE(contains(run("$'/no\\x1b[2J.fi1'").said, "\x1b"));
}

TEST_F(Program, CellsThatASpreadsheetWouldCalculateAreTexts) {
    for (const auto& [title, cell] : {std::pair("=1+1", "'=1+1"),
                                      {"@x", "'@x"},
                                      {"-cmd", "'-cmd"},
                                      {"+x", "'+x"},
                                      {"-5 C store", "-5 C store"},
                                      {"- a -", "- a -"},
                                      {"=a,b", "\"'=a,b\""}}) {
        std::string text = example();
        text.replace(text.find("Test of a small chiller"), 23, title);
        writeFile(request, text);
        const std::string csv = run(quoted + " --csv -").said;
        EXPECT_TRUE(contains(csv, std::string("Title,,") + cell + ",")) << csv.substr(0, 300);
    }
}

TEST_F(Program, AnInstallationMayBeNamedAndAnEmptyOneIsNotPretended) {
    writeFile(request, example());
    EXPECT_EQ(run(quoted + " --data '" + test::dataFolder + "'").status, 0);
    std::filesystem::create_directories(folder.path("empty/fluids"));
    const Outcome outcome = run(quoted + " --data '" + folder.path("empty") + "'");
    EXPECT_EQ(outcome.status, 2) << outcome.said;
    EXPECT_TRUE(contains(outcome.said, "[SETUP")) << outcome.said;
}

TEST_F(Program, TheDataAreCheckedAndShownAsATable) {
    const Outcome clean = run("check-data");
    EXPECT_EQ(clean.status, 0) << clean.said;
    for (const char* part : {"R134A.FLD", "bound", "Models chosen", "Sections found", "HMX.BNC, 24 departure functions",
                             "Clean: 88 fluids, 123 mixtures"})
        EXPECT_TRUE(contains(clean.said, part)) << part << '\n' << clean.said;
    EXPECT_EQ(run("check-data --help").status, 0);
    EXPECT_EQ(run("check-data one two").status, 1);
}

TEST_F(Program, FaultyDataAreNamedWithFileLineAndReasonAndExitWithFour) {
    namespace fs = std::filesystem;
    for (const char* each : {"fluids", "mixtures"}) fs::create_directories(folder.path(each));
    for (const char* name : {"fluids/R32.FLD", "fluids/PROPANE.FLD", "fluids/HMX.BNC"})
        fs::copy(std::string(test::dataFolder) + "/" + name, folder.path(name));
    std::string text = readFile(folder.path("fluids/R32.FLD"));
    text.replace(text.find("0.03520158"), 10, "0,O3520158");
    writeFile(folder.path("fluids/R32.FLD"), text);
    writeFile(folder.path("fluids/EMPTY.FLD"), "");
    const Outcome outcome = run("check-data '" + folder.path() + "'");
    EXPECT_EQ(outcome.status, 4) << outcome.said;
    for (const char* part : {"cannot be set up", "Faults", "R32.FLD, line ", "found 'O3520158'",
                             "EMPTY.FLD, line 0: expected", "2 of 4 files have faults"})
        EXPECT_TRUE(contains(outcome.said, part)) << part << '\n' << outcome.said;

    const Outcome none = run("check-data '" + folder.path("mixtures") + "'");
    EXPECT_EQ(none.status, 3) << none.said;
    EXPECT_TRUE(contains(none.said, "there is no folder fluids in it"));
}

}  // namespace
}  // namespace frigana
