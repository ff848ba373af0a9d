// Blends as a user of the program meets them: listed, stored, used and refused.
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

struct Blends : testing::Test {
    TemporaryFolder folder;
    std::string installation = folder.path("installed");
    std::string request = folder.path("blend.fi1");

    void SetUp() override {
        std::filesystem::create_directories(installation + "/mixtures");
        std::filesystem::create_directory_symlink(std::string(test::dataFolder) + "/fluids", installation + "/fluids");
    }
    Outcome ask(const std::string& lines, const std::string& more = "") {
        writeFile(request, lines);
        return run("'" + request + "' --data '" + installation + "' " + more);
    }
    // The line of a listing that begins with a name; empty if there is none.
    static std::string lineOf(const std::string& text, const std::string& name) {
        const auto at = text.find("  " + name + " ");
        return at == std::string::npos ? "" : text.substr(at, text.find('\n', at) - at);
    }
};

TEST_F(Blends, AllFluidsAndBlendsAreListedWithWhatAUserChoosesBy) {
    const Outcome outcome = run("list");
    EXPECT_EQ(outcome.status, 0);
    // heading, ten families with a heading each, blends with theirs
    EXPECT_EQ(std::count(outcome.said.begin(), outcome.said.end(), '\n'), 3 + 10 * 2 + 88 + 2 + 123);
    EXPECT_EQ(lineOf(outcome.said, "R1234ZE.FLD"),
              "  R1234ZE.FLD   R-1234ze(E)   A2L      1.37       1  trans-1,3,3,3-tetrafluoroprop-1-ene");
    // 0.23 x 677 + 0.25 x 3170 + 0.52 x 1300 = 1624 in results; 0.23 x 771 + 0.25 x 3740 + 0.52 x 1530 = 1908
    EXPECT_EQ(lineOf(outcome.said, "R407C.MIX"),
              "  R407C.MIX     R-407C        A1       1908    1624  R32 23, R125 25, R134A 52");
    EXPECT_EQ(lineOf(outcome.said, "R454C.MIX"),
              "  R454C.MIX     R-454C        A2L     166.2     146  R32 21.5, R1234YF 78.5");
    EXPECT_EQ(lineOf(outcome.said, "TOLUENE.FLD"),
              "  TOLUENE.FLD                 -           -          methylbenzene");
    EXPECT_NE(run("list --gwp AR4").said.find("  R454C.MIX     R-454C        A2L     145.1     146  "),
              std::string::npos);
    // families in their order, fluids by number
    std::size_t at = 0;
    for (const char* part :
         {"\nHFO\n", "\nHFC\n", "  R23.FLD ", "  R125.FLD ", "\nHCFC\n", "\nhydrocarbons\n", "\nnatural\n",
          "  AMMONIA.FLD ", "\nsiloxanes\n", "  MM.FLD ", "\ngases\n", "  R401A.MIX ", "  R516A.MIX "}) {
        const std::size_t next = outcome.said.find(part, at);
        ASSERT_NE(next, std::string::npos) << part;
        at = next;
    }
    EXPECT_EQ(run("list --help").status, 0);
    EXPECT_EQ(run("list one two").status, 1);
    EXPECT_EQ(run("list --gwp AR3").status, 1);
    EXPECT_NE(run("--help").said.find("lists the fluids and blends"), std::string::npos);
}

TEST_F(Blends, OneFluidIsToldByAnyOfItsNames) {
    for (const char* name : {"propane", "R290", "r-290", "PROPANE.FLD"}) {
        const Outcome outcome = run(std::string("list ") + name);
        EXPECT_EQ(outcome.status, 0) << outcome.said;
        for (const char* part :
             {"PROPANE.FLD\n", "  designation           R-290\n", "  safety class          A3\n",
              "  GWP, 100 a, AR5       no figure\n", "  GWP, 100 a, AR6       0.02\n", "  GWP in results        3\n"})
            EXPECT_NE(outcome.said.find(part), std::string::npos) << part << '\n' << outcome.said;
        EXPECT_EQ(outcome.said.find("estimated"), std::string::npos);
    }
    const Outcome blend = run("list R454C");
    for (const char* part : {"  GWP, 100 a, AR4       145.1 (no figure for R1234YF)\n", "  GWP in results        146\n",
                             "  class in results      none\n", "  components, % by mass R32 21.5, R1234YF 78.5\n"})
        EXPECT_NE(blend.said.find(part), std::string::npos) << part << '\n' << blend.said;
    EXPECT_NE(run("list R1224yd").said.find("  estimated             viscosity, conductivity, surface tension\n"),
              std::string::npos);
    const Outcome unknown = run("list R1334a");
    EXPECT_EQ(unknown.status, 3);
    EXPECT_NE(unknown.said.find("R134a"), std::string::npos) << unknown.said;
}

TEST_F(Blends, TheListIsGivenAsJson) {
    const Outcome outcome = run("list --json");
    ASSERT_EQ(outcome.status, 0);
    const auto root = nlohmann::json::parse(outcome.said);
    ASSERT_EQ(root["fluids"].size(), 88u + 123u);
    int fluids = 0;
    for (const auto& fluid : root["fluids"]) {
        EXPECT_FALSE(fluid.contains("fault")) << fluid["file"];
        EXPECT_FALSE(fluid["family"].is_null()) << fluid["file"];
        if (fluid["file"] == "R32.FLD") {
            EXPECT_EQ(fluid["safety_class"], "A2L");
            EXPECT_EQ(fluid["in_results"]["safety_class"], "A2");
            EXPECT_EQ(fluid["gwp100"]["AR6"], 771);
            EXPECT_EQ(fluid["in_results"]["gwp"], 677);
            EXPECT_EQ(fluid["cas"], "75-10-5");
            ++fluids;
        }
        if (fluid["file"] == "R471A.MIX") {
            EXPECT_TRUE(fluid["in_results"]["gwp"].is_null());
            EXPECT_EQ(fluid["components"].size(), 3u);
            EXPECT_EQ(fluid["estimated"], nlohmann::json({"viscosity", "conductivity", "surface tension"}));
            ++fluids;
        }
    }
    EXPECT_EQ(fluids, 2);
    EXPECT_EQ(nlohmann::json::parse(run("list ammonia --json").said)["designation"], "R-717");
}

TEST_F(Blends, AStoredBlendIsListedAndUsed) {
    EXPECT_NE(run("list '" + installation + "'").said.find("There are no blends."), std::string::npos);
    const Outcome stored = ask("1\n3\n2\n1\nR1234YF.FLD\n0.56\nR134A.FLD\n0.44\nMYBLEND\n2 DEF\n7\n");
    EXPECT_EQ(stored.status, 0) << stored.said;
    // The path as this system writes it.
    EXPECT_NE(stored.said.find("Mixture file: " + installation + "/mixtures/MYBLEND.mix\n"), std::string::npos)
        << stored.said;
    const Outcome listed = run("list '" + installation + "'");
    EXPECT_EQ(run("list --data '" + installation + "'").said, listed.said);
    EXPECT_EQ(run("--data '" + installation + "' list").said, listed.said);
    EXPECT_EQ(lineOf(listed.said, "MYBLEND.mix"),
              "  MYBLEND.mix                -           -     572  R1234YF 56, R134A 44");
    const Outcome facts = ask("1\n2\n1\n1\nMYBLEND.mix\n1\nnone\n2 DEF\n1\n", "--json -");
    ASSERT_EQ(facts.status, 0) << facts.said;
    EXPECT_NE(facts.said.find("\"MYBLEND.mix\""), std::string::npos);
}

TEST_F(Blends, AFileThatCannotBeUsedIsListedWithItsReason) {
    writeFile(installation + "/mixtures/BROKEN.MIX", "Broken\n 70 350\n");
    writeFile(installation + "/mixtures/FOREIGN.MIX",
              "Foreign\n 70 350 5000 6\n 2\nR32.FLD\nHELIUM.FLD\n0.5\n0.5\n 0\n");
    writeFile(installation + "/mixtures/TWICE.MIX", "Twice\n 52.024 350 5000 6\n 2\nR32.FLD\nR32.FLD\n0.5\n0.5\n 0\n");
    writeFile(installation + "/mixtures/LESS.MIX", "Less\n 52 350 5000 6\n 2\nR32.FLD\nR125.FLD\n1.5\n-0.5\n 0\n");
    const Outcome outcome = run("list '" + installation + "'");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(lineOf(outcome.said, "TWICE.MIX"),
              "  TWICE.MIX                  -           -          cannot be used: Error: The mixture holds R32.FLD "
              "twice!");
    EXPECT_NE(lineOf(outcome.said, "LESS.MIX").find("The fraction of R125.FLD is negative"), std::string::npos);
    // The same blends with only the fluids that they hold.
    std::filesystem::create_directories(folder.path("few/fluids"));
    for (const char* name : {"/fluids/R32.FLD", "/fluids/R125.FLD", "/fluids/HMX.BNC"})
        std::filesystem::copy(installation + name, folder.path("few") + name);
    std::filesystem::create_directory_symlink(installation + "/mixtures", folder.path("few/mixtures"));
    const Outcome checked = run("check-data '" + folder.path("few") + "'");
    EXPECT_EQ(checked.status, 4);
    EXPECT_NE(checked.said.find("TWICE.MIX: it holds R32.FLD twice"), std::string::npos) << checked.said;
    for (const char* part :
         {"[SETMIX error 101] error in opening mixture file: BROKEN.MIX", "filename = (HELIUM.FLD )."})
        EXPECT_NE(outcome.said.find(part), std::string::npos) << part << '\n' << outcome.said;
    const Outcome none = run("list '" + installation + "/mixtures'");
    EXPECT_EQ(none.status, 3);
    EXPECT_NE(none.said.find("there is no folder fluids in it"), std::string::npos);
}

TEST_F(Blends, WhatIsNoBlendIsToldInOneMessage) {
    const struct {
        const char *lines, *said;
        int status;
    } rows[] = {
        {"1\n3\n2\n2\nR32.FLD\n50\nR125.FLD\n50\nB\n2 DEF\n1\n",
         "message  Error: The mole fractions of the mixture add up to 100.000000, not to one!", 2},
        {"1\n3\n2\n1\nR32.FLD\n0.5\nR32.FLD\n0.5\nB\n2 DEF\n1\n", "message  Error: The mixture holds R32.FLD twice!",
         2},
        {"1\n3\n2\n1\nR32.FLD\n0.5\nR125.FLD\n-0.1\nB\n2 DEF\n1\n",
         "message  Error: The fraction of R125.FLD is negative or not a number!", 2},
        {"1\n3\n2\n1\nR32.FLD\n0.5\nR125.FLD\nnan\nB\n2 DEF\n1\n", "line 8: expected the fraction of a fluid", 3},
        {"1\n2\n1\n1\nNOTHING.MIX\n1\nnone\n2 DEF\n1\n",
         "message  [SETMIX error 101] error in opening mixture file:", 2},
        {"1\n3\n2\n1\nR32.FLD\n0.5\nR125.FLD\nhalf\nB\n2 DEF\n1\n", "line 8: expected the fraction of a fluid", 3},
    };
    for (const auto& row : rows) {
        const Outcome outcome = ask(row.lines);
        EXPECT_EQ(outcome.status, row.status);
        EXPECT_NE(outcome.said.find(row.said), std::string::npos) << outcome.said;
    }
}

// Every value of a blend's results has the unit of its request's results.
TEST_F(Blends, ValuesOfBlendsHaveTheirUnits) {
    const Outcome outcome =
        ask("1\n3\n2\n1\nR32.FLD\n0.5\nR125.FLD\n0.5\nB\n2 DEF\n6\n0\n0\n0\n0\n1 280\n", "--json -");
    ASSERT_EQ(outcome.status, 0) << outcome.said;
    const auto values = nlohmann::json::parse(outcome.said)["values"];
    const struct {
        const char *name, *unit;
        double low, high;  // R410A at 280 K: pressure near 990 kPa (Lemmon 2003), liquid near 1142 kg/m3
    } rows[] = {{"Pressure, liquid", "kPa", 985, 996},    {"Pressure, vapor", "kPa", 983, 993},
                {"Density, liquid", "kg/m3", 1130, 1150}, {"Isobaric heat capacity, liquid", "kJ/(kg K)", 1.5, 1.6},
                {"Viscosity, liquid", "uPa s", 130, 165}, {"Thermal conductivity, liquid", "W/(m K)", 0.09, 0.12},
                {"Surface tension", "N/m", 0.006, 0.010}};
    for (const auto& row : rows) {
        bool found = false;
        for (const auto& value : values) {
            if (value.value("name", "") != row.name) continue;
            found = true;
            EXPECT_EQ(value["unit"], row.unit) << row.name;
            EXPECT_GT(value["value"].get<double>(), row.low) << row.name;
            EXPECT_LT(value["value"].get<double>(), row.high) << row.name;
        }
        EXPECT_TRUE(found) << row.name;
    }
}

}  // namespace
}  // namespace frigana
