// Charts as a user of the program asks for them.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "Program.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

namespace fs = std::filesystem;
using test::Outcome;
using test::readFile;
using test::run;
using test::TemporaryFolder;

struct Charts : testing::Test {
    TemporaryFolder folder;
    std::string out(const std::string& name) const { return "'" + folder.path(name) + "'"; }
    std::string example(const std::string& name) const {
        const std::string copy = folder.path(name + ".fi1");
        fs::copy_file(std::string(test::examplesFolder) + "/" + name + ".fi1", copy,
                      fs::copy_options::overwrite_existing);
        return "'" + copy + "'";
    }
    bool isThere(const std::string& name) const { return fs::exists(folder.path(name)); }
};

TEST_F(Charts, AFluidIsDrawnByAnyOfItsNames) {
    for (const char* arguments : {"ph R134a", "ts r-744", "hs propane", "ph R407C --units imperial --other-units SI",
                                  "ts ammonia --from -60C --to 120C --reference IIR", "PT R134a R1234yf R290"}) {
        const Outcome outcome = run(std::string("chart ") + arguments + " --out " + out("a.svg"));
        EXPECT_EQ(outcome.status, 0) << arguments << outcome.said;
        EXPECT_EQ(outcome.said, "") << arguments;
        const std::string svg = readFile(folder.path("a.svg"));
        EXPECT_TRUE(svg.starts_with("<svg ")) << arguments;
        EXPECT_TRUE(svg.ends_with("</svg>\n")) << arguments;
    }
    const Outcome here = run("chart ph R134a --width 560 --height 400 --out -");
    EXPECT_TRUE(here.said.starts_with("<svg ")) << here.said.substr(0, 80);
    EXPECT_NE(here.said.find("width=\"560\" height=\"400\""), std::string::npos);
}

TEST_F(Charts, WhatCannotBeDrawnIsRefusedWithItsReason) {
    constexpr struct {
        const char* arguments;
        int status;
        const char* said;
    } rows[] = {
        {"chart", 1, "KIND"},
        {"chart ph", 1, "FLUID"},
        {"chart ph R134a", 1, "--out"},
        {"chart xy R134a --out a.svg", 1, "a chart is ph, ts, hs or pT"},
        {"chart ph R134a --out a.gif", 1, ".svg, .png or .pdf"},
        {"chart ph R134a --out a", 1, ".svg, .png or .pdf"},
        {"chart ph nothing --out a.svg", 1, "nothing"},
        {"chart ph R134a R22 --out a.svg", 1, "one fluid"},
        {"chart ph R134a --from 20C --to 10C --out a.svg", 1, "--from"},
        {"chart ph R134a --from warm --out a.svg", 1, "warm"},
        {"chart ph R134a --units feet --out a.svg", 1, "imperial"},
        {"chart ph R134a --other-units feet --out a.svg", 1, "imperial"},
        {"chart ph R134a --width 10 --out a.svg", 1, "--width"},
        {"chart ph R134a --reference ABC --out a.svg", 1, "--reference"},
        {"chart ph R134a --out /nowhere/a.svg", 3, "cannot be written"},
    };
    for (const auto& row : rows) {
        const Outcome outcome = run(row.arguments);
        EXPECT_EQ(outcome.status, row.status) << row.arguments << ": " << outcome.said;
        EXPECT_NE(outcome.said.find(row.said), std::string::npos) << row.arguments << ": " << outcome.said;
    }
}

TEST_F(Charts, AResultIsDrawnBesideItsReport) {
    const Outcome outcome = run(example("small_chiller") + " --chart " + out("a.svg") + " --chart " + out("b.svg") +
                                " --chart-kind ph --chart-kind ts --chart-width 560 --chart-height 400");
    EXPECT_EQ(outcome.status, 0) << outcome.said;
    EXPECT_NE(readFile(folder.path("a.svg")).find("log p-h chart: Test of a small chiller"), std::string::npos);
    EXPECT_NE(readFile(folder.path("b.svg")).find("T-s chart"), std::string::npos);
    EXPECT_NE(readFile(folder.path("a.svg")).find("COP of cooling 3.356"), std::string::npos);
}

TEST_F(Charts, EachOfTwoCircuitsHasItsPicture) {
    const Outcome outcome = run(example("cascade_cycle") + " --chart " + out("c.svg"));
    EXPECT_EQ(outcome.status, 0) << outcome.said;
    EXPECT_TRUE(isThere("c-high.svg") && isThere("c-low.svg"));
    EXPECT_FALSE(isThere("c.svg"));
}

TEST_F(Charts, TablesAreDrawnInTheChartOfTheirFluidOrByColumns) {
    const std::string table = example("isoproperty_table");
    EXPECT_EQ(run(table + " --chart " + out("t.svg")).status, 0);
    EXPECT_NE(readFile(folder.path("t.svg")).find("Isoproperty table"), std::string::npos);
    EXPECT_EQ(run(table + " --chart " + out("u.svg") + " --chart-columns density:temperature").status, 0);
    EXPECT_NE(readFile(folder.path("u.svg")).find("kg/m\u00b3"), std::string::npos);
    const Outcome wrong = run(table + " --chart " + out("v.svg") + " --chart-columns density");
    EXPECT_EQ(wrong.status, 1);
    EXPECT_NE(wrong.said.find("density:temperature"), std::string::npos);
    const Outcome none = run(example("state_point") + " --chart " + out("w.svg"));
    EXPECT_NE(none.status, 0);
    EXPECT_NE(none.said.find("no chart"), std::string::npos) << none.said;
}

// PNG and PDF come from a module beside the program. A program without it says so, and draws SVG.
TEST_F(Charts, PngAndPdfNeedTheModule) {
    const fs::path program = test::programPath;
    const fs::path module = program.parent_path().parent_path() / "lib" / "frigana_rsvg.so";
    if (fs::exists(module)) {
        EXPECT_EQ(run("chart ph R134a --out " + out("a.png") + " --out " + out("a.pdf")).status, 0);
        EXPECT_EQ(readFile(folder.path("a.png")).substr(1, 3), "PNG");
        EXPECT_EQ(readFile(folder.path("a.pdf")).substr(0, 4), "%PDF");
    }
    fs::create_directories(folder.path("alone/bin"));
    const std::string alone = folder.path("alone/bin/frigana"),
                      data = " --data '" + std::string(test::dataFolder) + "'";
    fs::copy_file(program, alone);
    for (const char* picture : {"b.png", "b.pdf"}) {
        const Outcome outcome = test::runProgram(alone, "chart ph R134a --out " + out(picture) + data);
        EXPECT_EQ(outcome.status, 3) << outcome.said;
        EXPECT_NE(outcome.said.find("without librsvg"), std::string::npos) << outcome.said;
        EXPECT_FALSE(isThere(picture));
    }
    EXPECT_EQ(test::runProgram(alone, "chart ph R134a --out " + out("b.svg") + data).status, 0);
}

}  // namespace
}  // namespace frigana
