// Named requests and the commands around them, as a user runs them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "Catalogue.h"
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

const std::string chiller =
    "request = \"basic\"\ntitle = \"Small chiller\"\nfluid = \"R134a\"\n\n"
    "[evaporator]\ntemperature = \"-5 °C\"\nsuperheat = \"5 K\"\n\n"
    "[compressor]\nswept_volume = \"0.0028 m3/s\"\nisentropic_efficiency = 0.7\nvolumetric_efficiency = 0.85\n\n"
    "[condenser]\ntemperature = \"40 °C\"\nsubcooling = \"3 K\"\n";

struct Named : testing::Test {
    TemporaryFolder folder;
    std::string request = folder.path("chiller.toml");
    std::string quoted = "'" + request + "'";
    void SetUp() override { writeFile(request, chiller); }

    std::size_t filesBeside() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(folder.path()), std::filesystem::directory_iterator()));
    }
};

TEST_F(Named, ARequestIsAnsweredAndNothingIsLeftBeside) {
    const Outcome outcome = run("run " + quoted);
    EXPECT_EQ(outcome.status, 0) << outcome.said;
    // What an engineer looks for stands before the states, and those before the devices.
    const auto capacity = outcome.said.find("  Evaporator capacity"), points = outcome.said.find("  State point"),
               devices = outcome.said.find("\nEVAPORATOR\n");
    EXPECT_LT(capacity, points);
    EXPECT_LT(points, devices);
    EXPECT_NE(devices, std::string::npos);
    EXPECT_FALSE(contains(outcome.said, "Result file"));
    EXPECT_EQ(filesBeside(), 1u);
}

TEST_F(Named, AReadOnlyFolderIsNoObstacle) {
    namespace fs = std::filesystem;
    fs::permissions(folder.path(), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_EQ(run("run " + quoted).status, 0);
    fs::permissions(folder.path(), fs::perms::owner_all);
    EXPECT_EQ(filesBeside(), 1u);
}

TEST_F(Named, UnitsAreThoseThatAreAskedFor) {
    EXPECT_TRUE(contains(run("run " + quoted).said, "268.15 K\n"));
    const std::string metric = run("run " + quoted + " --units metric").said;
    EXPECT_TRUE(contains(metric, "  -5 °C\n")) << metric;
    EXPECT_TRUE(contains(metric, "10.08 m3/h\n")) << metric;
    const std::string imperial = run("run " + quoted + " --units imperial").said;
    EXPECT_TRUE(contains(imperial, "  23 °F\n")) << imperial;
    EXPECT_TRUE(contains(imperial, "superheat 5") || contains(imperial, " 9 °F\n")) << imperial;
    EXPECT_EQ(run("run " + quoted + " --units english").status, 1);
}

TEST_F(Named, JsonCarriesKeysPointsInputAndVersions) {
    const Outcome outcome = run("run " + quoted + " --json -");
    const auto json = nlohmann::json::parse(outcome.said);
    EXPECT_EQ(json["outcome"], "success");
    EXPECT_EQ(json["request"], "basic");
    EXPECT_EQ(json["input"]["evaporator.temperature"], 268.15);
    EXPECT_EQ(json["fluid"]["fluid"]["file"], "R134A.FLD");
    EXPECT_EQ(json["points"].size(), 7u);
    EXPECT_EQ(json["points"][5]["key"], "compressor.outlet");
    EXPECT_EQ(json["diagrams"]["ph.dome"]["pressure"].size(), 10u);
    EXPECT_TRUE(json["remarks"].is_array());
    EXPECT_FALSE(json["versions"]["program"].get<std::string>().empty());
    EXPECT_TRUE(contains(json["versions"]["data"].get<std::string>(), " files, "));
    double cop = 0.0;
    for (const auto& value : json["values"])
        if (value["key"] == "performance.cop_cooling") cop = value["value"].get<double>();
    EXPECT_GT(cop, 3.0);
}

TEST_F(Named, JsonCarriesTheWholeInput) {
    const auto inputOf = [&](const std::string& name) {
        const std::string file = folder.path(name + ".toml");
        EXPECT_EQ(run("new " + name + " --out '" + file + "'").status, 0);
        return nlohmann::json::parse(run("run '" + file + "' --json -").said)["input"];
    };
    const auto stages = inputOf("multi-stage");
    EXPECT_EQ(stages["stages"], 3);
    EXPECT_TRUE(stages.contains("stage1.compressor.isentropic_efficiency")) << stages;
    EXPECT_TRUE(stages.contains("stage2.injection_line.pressure_drop")) << stages;
    EXPECT_FALSE(stages.contains("stage3.compressor.isentropic_efficiency"));
    const auto table = inputOf("saturation-table");
    EXPECT_EQ(table["property"], "temperature");
    EXPECT_EQ(table["from"], 240.0);
    EXPECT_EQ(table["step"], 5.0);
    const auto line = inputOf("isoproperty-table");
    EXPECT_EQ(line["constant.pressure"], 1000.0);
    EXPECT_EQ(line["property"], "temperature");
    const auto point = inputOf("state-point");
    EXPECT_EQ(point["temperature"], 300.0);
    EXPECT_EQ(point["pressure"], 1000.0);
    EXPECT_EQ(inputOf("saturation-point")["bubble.temperature"], 280.0);
}

TEST_F(Named, PotentialsAreThoseOfTheReportAskedFor) {
    // R134a: 1430, 1300 and 1530 in the three reports; the library's own table has 1300.
    EXPECT_TRUE(contains(run("run " + quoted).said, "potential of R134a, AR6: 1530 (in the result file 1300)\n"));
    EXPECT_TRUE(contains(run("run " + quoted + " --gwp AR4").said, "AR4: 1430 (in the result file 1300)\n"));
    EXPECT_TRUE(contains(run("run " + quoted + " --gwp ar5").said, "AR5: 1300\n"));
    EXPECT_EQ(run("run " + quoted + " --gwp AR7").status, 1);
    const auto fluid = nlohmann::json::parse(run("run " + quoted + " --gwp AR4 --json -").said)["fluid"]["fluid"];
    EXPECT_EQ(fluid["gwp100"]["report"], "AR4");
    EXPECT_EQ(fluid["gwp100"]["value"], 1430.0);
    EXPECT_EQ(fluid["gwp_of_result_file"], 1300.0);
    EXPECT_EQ(fluid["safety_class"], "A1");
    // A blend by its components: 0.5 * 771 + 0.5 * 1530 by mass.
    std::string text = chiller;
    text.replace(text.find("\"R134a\""), 7, "{ R32 = 0.5, R134a = 0.5 }\nblend_name = \"Mine\"");
    writeFile(request, text);
    EXPECT_TRUE(contains(run("run " + quoted).said, "potential of Mine, AR6: 1151")) << run("run " + quoted).said;
}

TEST_F(Named, ChartsAreDrawnWhereAsked) {
    const std::string ph = folder.path("ph.svg"), ts = folder.path("ts.svg");
    EXPECT_EQ(
        run("run " + quoted + " --quiet --chart '" + ph + "' --chart '" + ts + "' --chart-kind ph --chart-kind ts")
            .said,
        "");
    EXPECT_TRUE(contains(readFile(ph), "log p-h chart: Small chiller")) << readFile(ph).substr(0, 300);
    EXPECT_TRUE(contains(readFile(ts), "T-s chart: Small chiller"));
    // Degrees, where the request does not say otherwise.
    EXPECT_TRUE(contains(readFile(ts), "°C"));
    EXPECT_EQ(run("run " + quoted + " --quiet --chart '" + folder.path("chart.gif") + "'").status, 1);
    EXPECT_EQ(run("run " + quoted + " --quiet --chart-kind xy --chart '" + ph + "'").status, 1);
    // A study of two plants is drawn by its columns.
    const std::string both = "run " + quoted + ' ' + quoted + " --quiet --chart '" + folder.path("two.svg") + "'";
    EXPECT_EQ(run(both).status, 1);
    const Outcome columns = run(both + " --chart-columns performance.cop_cooling:performance.evaporating_temperature");
    EXPECT_EQ(columns.status, 0) << columns.said;
    // What was refused is not drawn.
    writeFile(request, "request = \"basic\"\n");
    EXPECT_NE(run("run " + quoted + " --chart '" + folder.path("none.svg") + "'").status, 0);
    EXPECT_FALSE(std::filesystem::exists(folder.path("none.svg")));
}

TEST_F(Named, PositionalRequestAndResultAreKeptWhereAsked) {
    const std::string fi1 = folder.path("kept.fi1"), fo1 = folder.path("kept.fo1");
    EXPECT_EQ(run("run " + quoted + " --quiet --fi1 '" + fi1 + "' --fo1 '" + fo1 + "'").said, "");
    const std::string result = readFile(fo1);
    EXPECT_EQ(result.substr(0, 6), " 2\n 1\n");
    std::filesystem::remove(fo1);
    EXPECT_EQ(run("'" + fi1 + "'").status, 0);
    EXPECT_EQ(readFile(fo1), result);
}

TEST_F(Named, StandardInputAndSeveralFilesAreTaken) {
    const Outcome piped = run("run - < " + quoted);
    EXPECT_EQ(piped.status, 0) << piped.said;
    EXPECT_TRUE(contains(piped.said, "Basic cycle: done"));
    writeFile(folder.path("point.json"),
              "{\"request\": \"state-point\", \"fluid\": \"NH3\", \"units\": \"metric\",\n"
              "\"temperature\": 25, \"pressure\": 10}\n");
    const Outcome both = run("run " + quoted + " '" + folder.path("point.json") + "'");
    EXPECT_EQ(both.status, 0) << both.said;
    EXPECT_TRUE(contains(both.said, "chiller.toml\nBasic cycle: done"));
    EXPECT_TRUE(contains(both.said, "point.json\nSpecific state point: done"));
    const auto list =
        nlohmann::json::parse(run("run " + quoted + " '" + folder.path("point.json") + "' --json -").said);
    EXPECT_EQ(list.size(), 2u);
}

TEST_F(Named, AListOfPointsIsATable) {
    writeFile(folder.path("points.toml"),
              "request = \"saturation-point\"\nfluid = \"propane\"\npoints = [\n  { bubble.temperature = \"0 °C\" },\n"
              "  { dew.pressure = \"5 bar\" },\n]\n");
    const Outcome outcome = run("run '" + folder.path("points.toml") + "'");
    EXPECT_EQ(outcome.status, 0) << outcome.said;
    EXPECT_TRUE(contains(outcome.said, ": 2 points\n")) << outcome.said;
    EXPECT_TRUE(contains(outcome.said, "\n  1 ")) << outcome.said;
    EXPECT_TRUE(contains(outcome.said, "\n  2 ")) << outcome.said;
}

TEST_F(Named, FaultsAreToldWithFileLineAndKey) {
    std::string text = chiller;
    text.replace(text.find("-5 °C"), 6, "-200 °C");
    writeFile(request, text);
    const Outcome outcome = run("run " + quoted);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.said, request + ":6: evaporator.temperature = -200 °C: allowed are -173.15 °C to 326.85 °C\n");
    writeFile(request, "request = basic\n");
    EXPECT_EQ(run("run " + quoted).status, 3);
    EXPECT_EQ(run("run '" + folder.path("none.toml") + "'").status, 3);
    EXPECT_EQ(run("run").status, 1);
    // A refusal by the solver.
    text = chiller;
    text.replace(text.find("-5 °C"), 6, "60 °C");
    writeFile(request, text);
    EXPECT_EQ(run("run " + quoted).status, 2);
    EXPECT_TRUE(contains(run(quoted).said, "a named request is run by frigana run"));
}

TEST_F(Named, ACycleTakesABlendByItsComponents) {
    std::string text = chiller;
    text.replace(text.find("\"R134a\""), 7, "{ R1234yf = 0.56, R134a = 0.44 }\nblend_name = \"Mine\"");
    writeFile(request, text);
    const Outcome outcome = run("run " + quoted);
    EXPECT_EQ(outcome.status, 0) << outcome.said;
    EXPECT_TRUE(contains(outcome.said, "Mine.mix")) << outcome.said;
    EXPECT_FALSE(std::filesystem::exists(std::string(test::dataFolder) + "/mixtures/Mine.mix"));
    EXPECT_EQ(run("convert " + quoted).status, 2);
}

// The folder of the person's data is one of the test's own.
struct OwnBlends : Named {
    std::string home = folder.path("home"), blends = home + "/frigana";
    const char* before = std::getenv("XDG_DATA_HOME");
    std::string older = before == nullptr ? "" : before;
    void SetUp() override {
        setenv("XDG_DATA_HOME", home.c_str(), 1);
        writeFile(request,
                  "request = \"store-blend\"\nfluid = { R1234yf = 0.56, R134a = 0.44 }\nblend_name = \"Mine\"\n");
    }
    void TearDown() override {
        if (before == nullptr)
            unsetenv("XDG_DATA_HOME");
        else
            setenv("XDG_DATA_HOME", older.c_str(), 1);
    }
    static std::string withFluid(const std::string& fluid) {
        std::string text = chiller;
        return text.replace(text.find("\"R134a\""), 7, fluid);
    }
};

TEST_F(OwnBlends, AreStoredBesideNobodyAndServeByTheirComposition) {
    const Outcome stored = run("run " + quoted);
    ASSERT_EQ(stored.status, 0) << stored.said;
    EXPECT_TRUE(contains(stored.said, "Mixture file: " + blends + "/Mine.toml\n")) << stored.said;
    EXPECT_TRUE(std::filesystem::exists(blends + "/Mine.toml"));
    EXPECT_FALSE(std::filesystem::exists(std::string(test::dataFolder) + "/mixtures/Mine.mix"));
    // By name, whatever its case, the same figures as by components.
    writeFile(request, withFluid("{ R1234yf = 0.56, R134a = 0.44 }\nblend_name = \"Mine\""));
    const Outcome listed = run("run --csv - " + quoted);
    for (const char* name : {"\"Mine\"", "\"mine\"", "\"MI-NE\""}) {
        writeFile(request, withFluid(name));
        const Outcome named = run("run --csv - " + quoted);
        ASSERT_EQ(named.status, 0) << named.said;
        EXPECT_EQ(named.said, listed.said) << name;
    }
    writeFile(request, "request = \"state-point\"\nfluid = \"Mine\"\ntemperature = \"300 K\"\npressure = \"1 bar\"\n");
    EXPECT_EQ(run("run " + quoted).status, 0);
    const Outcome converted = run("convert " + quoted);
    EXPECT_EQ(converted.status, 0);
    EXPECT_TRUE(contains(converted.said, "R1234YF.FLD\n0.56\n")) << converted.said;
}

// A blend as the shipped R410A, half of R32 and half of R125 by mass, and commands that take a fluid.
TEST_F(OwnBlends, EveryCommandKnowsThem) {
    ASSERT_EQ(run("run " + quoted).status, 0);
    writeFile(request, "request = \"store-blend\"\nfluid = { R32 = 0.5, R125 = 0.5 }\nblend_name = \"Half\"\n");
    ASSERT_EQ(run("run " + quoted).status, 0);

    const Outcome own = run("state half T=25C P=10bar"), shipped = run("state R410A T=25C P=10bar");
    ASSERT_EQ(own.status, 0) << own.said;
    EXPECT_EQ(own.said.substr(own.said.find("  T")), shipped.said.substr(shipped.said.find("  T")));
    EXPECT_TRUE(own.said.starts_with("Half  T")) << own.said;

    const std::string picture = folder.path("half.svg");
    EXPECT_EQ(run("chart ph half --out '" + picture + "'").said, "");
    EXPECT_TRUE(contains(test::readFile(picture), ">Half, log p-h chart<"));
    EXPECT_EQ(run("chart pT half Mine R134a --out '" + picture + "'").said, "");
    EXPECT_TRUE(contains(test::readFile(picture), "Mine"));

    writeFile(request, run("new basic --fluid half").said);
    const Outcome solved = run("run " + quoted);
    EXPECT_EQ(solved.status, 0) << solved.said;
    EXPECT_TRUE(contains(solved.said, "Global warming potential of Half")) << solved.said;

    writeFile(folder.path("study.toml"),
              "request = \"request.toml\"\n[vary]\nfluid = [\"half\", \"R410A\", \"mine\"]\n"
              "[results]\nkeys = [\"performance.cop_cooling\"]\n");
    writeFile(folder.path("request.toml"), withFluid("\"R134a\""));
    const Outcome study = run("study --quiet --csv - '" + folder.path("study.toml") + "'");
    EXPECT_EQ(study.status, 0) << study.said;
    std::istringstream lines(study.said);
    std::string heading, first, second, third;
    std::getline(lines, heading);
    std::getline(lines, first);
    std::getline(lines, second);
    std::getline(lines, third);
    const auto cop = [](const std::string& line) { return std::stod(line.substr(line.find(',') + 1)); };
    // The shipped file rounds its mole fractions.
    EXPECT_NEAR(cop(first), cop(second), 1e-6) << study.said;
    EXPECT_GT(std::abs(cop(third) - cop(second)), 0.01) << study.said;
}

// 0.56 x 0.501 + 0.44 x 1530 = 673.5 (AR6, R1234yf 0.501); 0.44 x 1430 = 629.2 (AR4, which has no R1234yf);
// 0.44 x 1300 = 572 by the table of the results.
TEST_F(OwnBlends, AreListed) {
    EXPECT_FALSE(contains(run("list").said, "Your own blends"));
    ASSERT_EQ(run("run " + quoted).status, 0);
    writeFile(blends + "/Other.toml", "request = \"fluid-information\"\nfluid = \"R134a\"\n");
    const std::string all = run("list").said;
    const std::string ours = all.substr(std::min(all.size(), all.find("\nYour own blends, in " + blends + "\n")));
    EXPECT_TRUE(contains(ours, "\n  Mine ")) << ours;
    EXPECT_TRUE(contains(ours, "  673.5     572  R1234YF 56, R134A 44\n")) << ours;
    EXPECT_TRUE(contains(ours, "cannot be used: is a stored blend that lists no components")) << ours;
    const Outcome one = run("list mine");
    EXPECT_EQ(one.status, 0);
    for (const char* part :
         {"Mine\n", "  kind                  your own blend\n", "  GWP, 100 a, AR6       673.5\n",
          "  GWP, 100 a, AR4       629.2 (no figure for R1234yf)\n", "  components, % by mass R1234YF 56, R134A 44\n"})
        EXPECT_TRUE(contains(one.said, part)) << part << one.said;
    const auto json = nlohmann::json::parse(run("list mine --json").said);
    EXPECT_EQ(json["own"], true);
    EXPECT_NEAR(json["gwp100"]["AR6"].get<double>(), 0.56 * 0.501 + 0.44 * 1530.0, 1e-9);
    EXPECT_EQ(nlohmann::json::parse(run("list --json").said)["fluids"].size(), 88u + 123u + 2u);
    EXPECT_TRUE(contains(run("list R1334a").said, "R1334a is no fluid or blend"));
}

TEST_F(OwnBlends, OneOfTheSameNameInAnyCaseIsReplaced) {
    ASSERT_EQ(run("run " + quoted).status, 0);
    writeFile(request, "request = \"store-blend\"\nfluid = { R32 = 0.5, R125 = 0.5 }\nblend_name = \"MINE\"\n");
    ASSERT_EQ(run("run " + quoted).status, 0);
    EXPECT_FALSE(std::filesystem::exists(blends + "/Mine.toml"));
    writeFile(request, withFluid("\"Mine\""));
    EXPECT_EQ(run("run " + quoted).status, 0);
    writeFile(request, "request = \"fluid-information\"\nfluid = \"Mine\"\n");
    const Outcome facts = run("convert " + quoted);
    EXPECT_TRUE(contains(facts.said, "R32.FLD\n0.5\n")) << facts.said;
}

TEST_F(OwnBlends, WhatCannotBeStoredIsRefusedAndNothingIsLeft) {
    writeFile(request, "request = \"store-blend\"\nfluid = { R32 = 0.5, R125 = 0.5 }\nblend_name = \"R410a\"\n");
    const Outcome shipped = run("run " + quoted);
    EXPECT_EQ(shipped.status, 2);
    EXPECT_TRUE(contains(shipped.said, "107204")) << shipped.said;
    EXPECT_FALSE(std::filesystem::exists(blends));
    // The folder is a file.
    writeFile(home, "");
    writeFile(request, "request = \"store-blend\"\nfluid = { R32 = 0.5, R125 = 0.5 }\nblend_name = \"Mine\"\n");
    const Outcome nowhere = run("run " + quoted);
    EXPECT_EQ(nowhere.status, 3);
    EXPECT_TRUE(contains(nowhere.said, blends + "/Mine.toml cannot be written")) << nowhere.said;
}

TEST_F(OwnBlends, AFileThatIsNoBlendIsTold) {
    std::filesystem::create_directories(blends);
    writeFile(blends + "/Mine.toml", "request = \"store-blend\"\nfluid = { R1334a = 1 }\nblend_name = \"Mine\"\n");
    writeFile(request, withFluid("\"Mine\""));
    Outcome outcome = run("run " + quoted);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(contains(outcome.said, "is a stored blend that cannot be read: " + blends + "/Mine.toml:2:"))
        << outcome.said;
    writeFile(blends + "/Mine.toml", "request = \"fluid-information\"\nfluid = \"R134a\"\n");
    outcome = run("run " + quoted);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(contains(outcome.said, "lists no components")) << outcome.said;
}

TEST_F(Named, NoOutputIsWrittenOverARequestOrAnotherOne) {
    const std::string other = folder.path("x.json"), positional = folder.path("plant.fi1");
    writeFile(positional, readFile(std::string(test::examplesFolder) + "/small_chiller.fi1"));
    const std::string kept = readFile(positional);
    for (const std::string& arguments :
         {"run " + quoted + " --json " + quoted, "run " + quoted + " --csv " + quoted,
          "run " + quoted + " --fi1 " + quoted, "run " + quoted + " --fo1 " + quoted,
          "run " + quoted + " --json '" + other + "' --csv '" + other + "'",
          "run " + quoted + " --json '" + other + "' --fo1 '" + folder.path("./x.json") + "'",
          "run " + quoted + " --json - --csv -", "run '" + positional + "' --json '" + folder.path("plant.fo1") + "'",
          "run '" + positional + "' " + quoted + " --csv '" + positional + "'",
          "run " + quoted + " --chart '" + folder.path("a.svg") + "' --chart '" + folder.path("./a.svg") + "'",
          "run " + quoted + " --chart '" + folder.path("a.svg") + "' --csv '" + folder.path("a.svg") + "'",
          "run " + quoted + " --chart '" + folder.path("a.svg") + "' --json '" + folder.path("a-high.svg") + "'",
          "run " + quoted + " --csv '" + folder.path("a-loop.svg") + "' --chart '" + folder.path("a.svg") + "'",
          "run " + quoted + " --chart '" + folder.path("a.svg") + "' --chart '" + folder.path("a-low.svg") + "'",
          "run " + quoted + " --quiet --fo1 '" + folder.path("b-medium.png") + "' --chart '" + folder.path("b.png") +
              "'",
          "'" + positional + "' --chart '" + folder.path("a.svg") + "' --csv '" + folder.path("./a-low.svg") + "'",
          "convert " + quoted + " --out " + quoted,
          "chart ph R134a --out '" + folder.path("a.svg") + "' --out '" + folder.path("./a.svg") + "'",
          "'" + positional + "' --chart '" + folder.path("a.svg") + "' --chart '" + folder.path("a.svg") + "'"}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 1) << arguments;
        EXPECT_TRUE(contains(outcome.said, "would be written over")) << arguments << '\n' << outcome.said;
        EXPECT_EQ(readFile(request), chiller) << arguments;
        EXPECT_EQ(readFile(positional), kept) << arguments;
        EXPECT_EQ(filesBeside(), 2u) << arguments;
    }
}

TEST_F(Named, OutputThatCannotBeWrittenExitsWithThree) {
    for (const std::string& arguments :
         {"run " + quoted, "run --json - " + quoted, "run --csv - " + quoted, "run --quiet --fi1 - " + quoted,
          "convert " + quoted, std::string("new basic"), std::string("explain basic"), std::string("schema basic"),
          std::string("state R134a T=300K q=1"), std::string("completion bash"), std::string("chart ph R134a --out -")})
        for (const char* nowhere : {" >/dev/full 2>/dev/null #", " >&- 2>/dev/null #"}) {
            if (!std::filesystem::exists("/dev/full")) continue;
            EXPECT_EQ(run(arguments + nowhere).status, 3) << arguments << nowhere;
        }
    for (const char* option : {"--json", "--csv", "--fi1", "--fo1"}) {
        for (const std::string& nowhere : {std::string("/dev/full"), folder.path("none/x")}) {
            const Outcome outcome = run("run " + quoted + " " + option + " '" + nowhere + "'");
            EXPECT_EQ(outcome.status, 3) << option << ' ' << nowhere;
            EXPECT_TRUE(contains(outcome.said, nowhere + ": cannot be written")) << outcome.said;
        }
    }
    for (const std::string& arguments :
         {"convert " + quoted + " --out ", std::string("new basic --out "), std::string("chart ph R134a --out ")})
        EXPECT_EQ(run(arguments + "'" + folder.path("none/x.svg") + "'").status, 3) << arguments;
}

TEST_F(Named, TemplatesOfEveryRequestAreReadyToRun) {
    namespace fs = std::filesystem;
    fs::create_directories(folder.path("installed"));
    fs::create_directory_symlink(std::string(test::dataFolder) + "/fluids", folder.path("installed/fluids"));
    fs::copy(std::string(test::dataFolder) + "/mixtures", folder.path("installed/mixtures"));
    const std::string data = " --data '" + folder.path("installed") + "'";
    std::string files;
    for (const catalogue::Request& one : catalogue::requests()) {
        const std::string file = folder.path(std::string(one.name) + ".toml");
        const std::string units = one.sub % 2 == 0 ? " --units imperial" : "";
        EXPECT_EQ(run("new " + std::string(one.name) + units + data + " --out '" + file + "'").status, 0) << one.name;
        files += " '" + file + "'";
    }
    const Outcome outcome = run("run --quiet" + files + data);
    EXPECT_EQ(outcome.status, 0) << outcome.said;
    EXPECT_TRUE(contains(run("new basic --fluid propane").said, "fluid = \"PROPANE\"") ||
                contains(run("new basic --fluid propane").said, "fluid = \"R290\""));
    EXPECT_EQ(run("new nothing").status, 1);
    EXPECT_EQ(run("new basic --fluid nothing").status, 1);
}

TEST_F(Named, ConvertLeadsThereAndBack) {
    for (const auto& entry : std::filesystem::directory_iterator(test::examplesFolder)) {
        if (entry.path().extension() != ".fi1") continue;
        const std::string toml = folder.path("there.toml"), fi1 = folder.path("back.fi1"),
                          again = folder.path("again.toml");
        ASSERT_EQ(run("convert '" + entry.path().string() + "' --out '" + toml + "'").status, 0) << entry.path();
        ASSERT_EQ(run("convert '" + toml + "' --out '" + fi1 + "'").status, 0) << entry.path();
        ASSERT_EQ(run("convert '" + fi1 + "' --out '" + again + "'").status, 0) << entry.path();
        EXPECT_EQ(readFile(again), readFile(toml)) << entry.path();
    }
}

TEST_F(Named, EveryRequestIsExplainedAndHasASchema) {
    const std::string all = run("explain").said;
    for (const catalogue::Request& one : catalogue::requests()) {
        const std::string name(one.name);
        EXPECT_TRUE(contains(all, "  " + name + ' ')) << name;
        const std::string explained = run("explain " + name).said;
        const auto schema = nlohmann::json::parse(run("schema " + name).said);
        EXPECT_EQ(schema["properties"]["request"]["const"], name);
        for (const catalogue::Circuit& circuit : one.circuits)
            for (const catalogue::Parameter& parameter : circuit.parameters)
                for (const catalogue::Option& option : parameter.options) {
                    if (option.key.empty()) continue;
                    std::string key = keyOf(circuit, 0, parameter, option);
                    EXPECT_TRUE(contains(explained, "  " + key + ' ')) << name << ' ' << key;
                    std::string pointer = "/properties/" + key;
                    for (auto dot = pointer.find('.'); dot != std::string::npos; dot = pointer.find('.'))
                        pointer.replace(dot, 1, "/properties/");
                    EXPECT_TRUE(schema.contains(nlohmann::json::json_pointer(pointer))) << name << ' ' << key;
                }
    }
    EXPECT_EQ(run("explain nothing").status, 1);
    EXPECT_EQ(run("schema nothing").status, 1);
}

TEST_F(Named, AStateIsOneLine) {
    // Saturation of R134a at -26.0743 °C is one atmosphere: its normal boiling point.
    const Outcome boiling = run("state R134a P=1atm Q=0");
    EXPECT_EQ(boiling.status, 0);
    EXPECT_TRUE(contains(boiling.said, "R134a  T = -26.07")) << boiling.said;
    EXPECT_EQ(std::count(boiling.said.begin(), boiling.said.end(), '\n'), 1);
    // Every pair leads back to the same state.
    for (const char* pair :
         {"T=25C P=10bar", "P=10bar H=234.557", "P=10bar S=1.11903", "T=25C D=1208.73", "D=1208.73 H=234.557",
          "D=1208.73 S=1.11903", "H=234.557 S=1.11903", "P=10bar D=1208.73"}) {
        const Outcome outcome = run("state R134a " + std::string(pair));
        EXPECT_EQ(outcome.status, 0) << pair << outcome.said;
        EXPECT_TRUE(contains(outcome.said, "  H = 234.5")) << pair << outcome.said;
        EXPECT_TRUE(contains(outcome.said, "  S = 1.119")) << pair << outcome.said;
    }
    EXPECT_EQ(run("state R134a D=5 Q=0.5").status, 2);
    EXPECT_EQ(run("state R134a T=25C").status, 1);
    EXPECT_EQ(run("state R134a T=25C T=26C").status, 1);
    EXPECT_EQ(run("state R134a T=25C X=26C").status, 1);
    EXPECT_EQ(run("state R134b T=25C Q=0").status, 1);
}

TEST_F(Named, CompletionAndManPageComeFromTheCommands) {
    const std::string bash = run("completion bash").said;
    EXPECT_TRUE(contains(bash, "complete -o filenames -F _frigana frigana"));
    const std::string man = run("completion man").said;
    EXPECT_TRUE(contains(man, ".TH FRIGANA 1"));
    for (const char* command : {"run", "new", "explain", "convert", "state", "list", "schema", "check-data"}) {
        EXPECT_TRUE(contains(bash, std::string(command) + ' ')) << command;
        EXPECT_TRUE(contains(man, ".SS frigana ")) << command;
    }
    writeFile(folder.path("completion"), bash);
    EXPECT_EQ(std::system(("bash -n '" + folder.path("completion") + "'").c_str()), 0);
    EXPECT_EQ(run("completion fish").status, 1);
}

}  // namespace
}  // namespace frigana
