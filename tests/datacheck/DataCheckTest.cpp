// The check of the data: clean on the installation, and blind to none of the faults that are planted here.
#include "DataCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "EngineSetUp.h"
#include "Larger.h"
#include "TemporaryFolder.h"
#include "TextFile.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

namespace fs = std::filesystem;
using test::readFile;
using test::TemporaryFolder;
using test::words;
using test::writeFile;

const std::string data = test::dataFolder;

std::vector<std::string> namesIn(const std::string& folder, const std::string& extension) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == extension) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

// All that a check says, a line each.
std::string said(const FaultList& faults) {
    std::string text;
    for (int k = 1; k <= faults.keptCount(); ++k)
        text += "line " + std::to_string(faults.kept[k].line) + ": " + words(faults.kept[k].text) + '\n';
    return text;
}
std::string said(const FluidReport& report) {
    std::string text = said(report.scan.faults);
    text += "code " + std::to_string(report.ierr) + ": " + words(report.message) + '\n';
    text += words(report.refusal) + '\n';
    for (int i = 0; i < figureCount; ++i) {
        const Figure& figure = report.figures[i];
        if (figure.verdict == Verdict::outOfBound)
            text += "out of bound: " + std::string(figureKinds[i].name) + ' ' + std::to_string(figure.value) + ' ' +
                    words(figure.note) + '\n';
    }
    return text;
}

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// ------------------------------------------------------------------------------------------ the installation

TEST(Installation, EveryFluidIsClean) {
    SETPATH(data);
    const std::vector<std::string> names = namesIn(data + "/fluids", ".FLD");
    EXPECT_EQ(names.size(), 88U);
    double worst[figureCount] = {};
    for (const std::string& name : names) {
        FluidReport report;
        checkFluid(name, report);
        EXPECT_TRUE(report.clean) << name << '\n' << said(report);
        EXPECT_GE(report.scan.sections, 8) << name;
        for (const FigureOf figure :
             {FigureOf::criticalPressure, FigureOf::triplePressure, FigureOf::tripleDensity, FigureOf::boilingPoint,
              FigureOf::vaporPressure, FigureOf::liquidDensity, FigureOf::vaporDensity, FigureOf::heatCapacityLimit,
              FigureOf::viscosity, FigureOf::conductivity, FigureOf::surfaceTension})
            EXPECT_TRUE(report[figure].computed) << name << ' ' << kindOf(figure).name;
        for (int i = 0; i < figureCount; ++i)
            if (report.figures[i].verdict == Verdict::clean)
                worst[i] = test::larger(worst[i], std::fabs(report.figures[i].value));
    }
    for (int i = 0; i < figureCount; ++i)
        std::printf("%-28s %.3g %s\n", std::string(figureKinds[i].name).c_str(), worst[i],
                    std::string(figureKinds[i].unit).c_str());
}

// Equations with a critical point of their own above the published one, which is tabulated; the distances come from an
// independent evaluation of the equations, to the digits of the tabulated critical temperature.
TEST(Installation, OwnCriticalPointIsReported) {
    constexpr struct {
        const char* file;
        double above;  // [K]
    } rows[] = {{"R114.FLD", 1.8},  {"R40.FLD", 2.326},     {"R21.FLD", 1.240},
                {"R13.FLD", 1.170}, {"HEPTANE.FLD", 1.096}, {"CYCLOPRO.FLD", 0.392}};
    SETPATH(data);
    FluidReport report;
    for (const auto& row : rows) {
        checkFluid(row.file, report);
        ASSERT_TRUE(report[FigureOf::criticalTemperature].computed) << row.file;
        EXPECT_NEAR(report[FigureOf::criticalTemperature].value, row.above, 0.05) << row.file;
    }
    checkFluid("R32.FLD", report);
    EXPECT_NEAR(report[FigureOf::criticalTemperature].value, 0.0, 0.01);
}

TEST(Installation, SublimationPointOfCarbonDioxideStandsForTheBoilingPoint) {
    SETPATH(data);
    FluidReport report;
    checkFluid("CO2.FLD", report);
    EXPECT_LE(std::fabs(report[FigureOf::boilingPoint].value), 0.01);
    EXPECT_LE(std::fabs(report[FigureOf::sublimation].value), 0.05);
}

TEST(Installation, EveryPairAndEveryMixtureIsClean) {
    SETPATH(data);
    std::vector<InstalledFluid> fluids;
    for (const std::string& name : namesIn(data + "/fluids", ".FLD")) {
        FluidFileScan scan;
        scanFluidFile(name, scan);
        fluids.push_back({Text255(name), scan.cas});
    }
    ParametersReport parameters;
    checkParameters("HMX.BNC", fluids, parameters);
    EXPECT_TRUE(parameters.clean) << said(parameters.faults);
    EXPECT_EQ(parameters.pairs, 954);
    EXPECT_EQ(parameters.tried, parameters.pairs);

    const std::vector<std::string> names = namesIn(data + "/mixtures", ".MIX");
    EXPECT_EQ(names.size(), 123U);
    for (const std::string& name : names) {
        MixtureReport report;
        checkMixture(name, "HMX.BNC", report);
        EXPECT_TRUE(report.clean) << name << '\n' << said(report.faults);
        EXPECT_NEAR(report.sum, 1.0, 1e-7) << name;
    }
}

// ------------------------------------------------------------------------------------------ planted faults

// An installation with the files of the real one, of which a test replaces what it likes.
class Copy : public testing::Test {
  protected:
    void SetUp() override {
        for (const char* each : {"fluids", "mixtures"}) {
            fs::create_directories(folder_.path(each));
            for (const auto& entry : fs::directory_iterator(data + "/" + each))
                test::share(entry.path(), folder_.path(each) + "/" + entry.path().filename().string());
        }
        SETPATH(folder_.path());
    }
    void TearDown() override { SETPATH(data); }

    static std::string original(const std::string& name) { return readFile(data + "/" + name); }
    void put(const std::string& name, const std::string& text) const {
        const std::string path = folder_.path(name);
        fs::remove(path);
        writeFile(path, text);
    }
    // The report on a fluid file with this text.
    FluidReport& check(const std::string& text) {
        put("fluids/BAD.FLD", text);
        checkFluid("BAD.FLD", report_);
        return report_;
    }

    TemporaryFolder folder_;
    FluidReport report_;
};

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    const auto at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at == std::string::npos) return text;
    return text.replace(at, from.size(), to);
}
int lineOf(const std::string& text, const std::string& part) {
    const auto at = text.find(part);
    if (at == std::string::npos) return 0;
    return 1 + static_cast<int>(std::count(text.begin(), text.begin() + static_cast<long>(at), '\n'));
}
// The section that begins with this heading, with the blank line behind it.
std::string sectionOf(const std::string& text, const std::string& heading) {
    const auto first = text.find(heading);
    const auto last = text.find("\n\n", first);
    EXPECT_NE(first, std::string::npos) << heading;
    return text.substr(first, last + 2 - first);
}
std::string without(const std::string& text, const std::string& heading) {
    return replaced(text, sectionOf(text, heading), "");
}

using Damage = std::function<std::string(const std::string&)>;
Damage change(const std::string& from, const std::string& to) {
    return [=](const std::string& text) { return replaced(text, from, to); };
}
// Within the section of a heading only.
Damage changeIn(const std::string& heading, const std::string& from, const std::string& to) {
    return [=](const std::string& text) {
        const std::string section = sectionOf(text, heading);
        return replaced(text, section, replaced(section, from, to));
    };
}

struct Planted {
    const char* name;
    const char* file;
    Damage damage;
    std::vector<std::string> expected;  // what the report says
};

TEST_F(Copy, DamagedFilesAreNamedWithLineAndReason) {
    const std::string r32 = original("fluids/R32.FLD");
    const auto line = [&](const std::string& part) { return "BAD.FLD, line " + std::to_string(lineOf(r32, part)); };
    const std::string eosCounts = "  19  4  0  0  0  0 ";
    const Planted rows[] = {
        {"empty", "R32", [](const std::string&) { return std::string(); }, {"short name, found end of file"}},
        {"not text", "R32", [](const std::string&) { return std::string(5000, '\0'); }, {"found end of file"}},
        {"only blanks", "R32", [](const std::string&) { return std::string(3000, ' '); }, {"found end of file"}},
        {"cut in the header",
         "R32",
         [](const std::string& text) { return text.substr(0, 300); },
         {"code 102", "expected ", "found end of file"}},
        {"cut in the middle",
         "R32",
         [](const std::string& text) { return text.substr(0, text.size() / 2); },
         {"code 102", "found end of file"}},
        {"no END", "R32", change("@END\n!\n!\n", ""), {"code 102", "expected a section or END, found end of file"}},
        {"nothing behind END", "R32", change("@END\n!\n!\n", "@END\n"), {"code 102", "model tag of a section"}},
        {"letters in the header",
         "R32",
         change("  351.255   ", "  three   "),
         {line("  351.255   ") + ": expected critical temperature, found 'three'", "code 102"}},
        {"letters in a limit", "R32", changeIn("#EOS", "  435.0", "  4x5.0"), {"code 104", ": expected", "'4x5.0'"}},
        {"letters for a coefficient",
         "R32",
         change("  0.03520158 ", "  O.03520158 "),
         {"code 104", line("  0.03520158 ") + ":", "'O.03520158'"}},
        {"a count with a fraction",
         "R32",
         change(eosCounts, "  19.5  4  0  0  0  0 "),
         {line(eosCounts), "found '19.5'"}},
        {"too many terms",
         "R32",
         change(eosCounts, "  57  4  0  0  0  0 "),
         {"code 104", line(eosCounts), "from 0 to 56, found 57"}},
        {"terms and rows too many", "R32", change(eosCounts, "  40  4  17 12  0  0 "), {"code 104", line(eosCounts)}},
        {"rows too many", "R32", change(eosCounts, "  19  4  21 12  0  0 "), {"code 104", line(eosCounts)}},
        {"a negative count", "R32", change(eosCounts, "  -1  4  0  0  0  0 "), {"code 104", line(eosCounts)}},
        {"a count beyond all integers",
         "R32",
         change(eosCounts, "  99999999999  4  0  0  0  0 "),
         {"code 104", line(eosCounts)}},
        {"counts that add up beyond an integer",
         "R32",
         changeIn("#AUX  !---ideal-gas heat", "  1  4  0  0  0  0  0", "  1  4  2147483647  2147483647  0  0  0"),
         {"code 104", "found 2147483647"}},
        {"too many terms of the heat capacity",
         "R32",
         changeIn("#AUX  !---ideal-gas heat", "  1  4  0  0  0  0  0", "  1  20  0  0  0  0  0"),
         {"code 104"}},
        {"too many terms of the Helmholtz energy",
         "R32",
         changeIn("#AUX  !---ideal-gas Helmholtz", "  1  2  4  0  0  0  0  0", "  1  2  9  0  0  0  0  0"),
         {"heat capacity forms", "BAD.FLD, line"}},
        {"too many terms of an ancillary",
         "R32",
         changeIn("#PS", "  6  0  0  0  0  0", "  16  0  0  0  0  0"),
         {"code 104", "from 0 to 15, found 16"}},
        {"too many terms of the surface tension",
         "R32",
         changeIn("#STN", "\n  1  ", "\n  900  "),
         {"code 104", "found 900"}},
        {"too many rows of a shape factor", "R32", changeIn("#TRN", "\n  2  0  0  ", "\n  2  500  0  "), {"code 104"}},
        {"too many terms of the viscosity",
         "R134A",
         changeIn("#ETA", "\n  1  0  0  0  0  0", "\n  1000  0  0  0  0  0"),
         {"code 104", "found 1000"}},
        {"too many terms of the conductivity",
         "R134A",
         changeIn("#TCX", "\n  2  0  ", "\n  200  0  "),
         {"code 104", "BAD.FLD, line"}},
        {"an unknown equation",
         "R32",
         change("\nFEQ  Helm", "\nXYZ  Helm"),
         {"code 105", "selected equation of state not found"}},
        {"an unknown viscosity model",
         "R134A",
         change("\nVS1  visc", "\nVS9  visc"),
         {"code -103", "unknown model (VS9)"}},
        {"an unknown section", "R32", change("#STN", "#SNT"), {"unknown section SNT", "there is no section STN"}},
        {"no blank line behind the header",
         "R32",
         [](const std::string& text) {
             std::string changed = text;
             // Every blank line before the first section.
             for (auto at = changed.find("\n\n"); at != std::string::npos && at < changed.find("#EOS");
                  at = changed.find("\n\n"))
                 changed.erase(at, 1);
             return changed;
         },
         {"the blank line behind it is missing"}},
        {"a section that comes twice",
         "R32",
         [](const std::string& text) {
             const std::string section = sectionOf(text, "#STN");
             return replaced(text, section, section + section);
         },
         {"the section STN ST1 comes twice"}},
        {"a line of data like a heading",
         "R32",
         changeIn("#STN", "  0.07147 ", " EOS\n  0.07147 "),
         {"read EOS like a heading"}},
        {"no surface tension",
         "R32",
         [](const std::string& text) { return without(text, "#STN"); },
         {"there is no section STN"}},
        {"no vapor pressure",
         "R32",
         [](const std::string& text) { return without(text, "#PS"); },
         {"there is no section PS"}},
        {"the collision integral before the viscosity",
         "R134A",
         [](const std::string& text) {
             const std::string block = sectionOf(text, "#AUX  !---collision");
             return replaced(without(text, "#AUX  !---collision"), "#EOS", block + "#EOS");
         },
         {"the section ETA names the block CI1, which does not stand behind it"}},
        {"no ideal gas",
         "R143A",
         [](const std::string& text) { return without(text, "#AUX  !---ideal-gas heat"); },
         {"the section EOS names the block CPP", "heat capacity of the ideal gas is not positive"}},
        {"no reference fluid", "R32", change("FEQ PROPANE.FLD", "FEQ NOWHERE.FLD"), {"code 101"}},
        {"a malformed known deviation",
         "R32",
         change("?Known: viscosity up to 12.0:", "?Known: viscosity 12.0:"),
         {"?Known: FIGURE up to BOUND: REASON"}},
        {"a known deviation without its bound",
         "R32",
         change("?Known: viscosity up to 12.0:", "?Known: viscosity up to much:"),
         {"?Known: FIGURE up to BOUND: REASON"}},
        {"a known deviation without its reason",
         "R32",
         [](const std::string& text) {
             const auto at = text.find("?Known: viscosity up to 12.0:");
             return text.substr(0, at) + "?Known: viscosity up to 12.0" + text.substr(text.find('\n', at));
         },
         {"?Known: FIGURE up to BOUND: REASON"}},
        {"a known deviation with its reason in front",
         "R32",
         change("?Known: viscosity up to 12.0:", "?Known: two models: viscosity up to 12.0,"),
         {"?Known: FIGURE up to BOUND: REASON"}},
        {"more known deviations than there is room for",
         "R32",
         [](const std::string& text) {
             std::string more;
             for (int k = 1; k <= 9; ++k) more += "?Known: viscosity up to 12.0: once more\n";
             return replaced(text, "?Known: viscosity up to 12.0:", more + "?Known: viscosity up to 12.0:");
         },
         {"too many known deviations"}},
        {"more sections than there is room for",
         "R32",
         [](const std::string& text) {
             std::string more;
             for (int k = 10; k <= 70; ++k) more += "#AUX  !---unused---\nU" + std::to_string(k) + "\n?\n!\n\n";
             return replaced(text, "@END", more + "@END");
         },
         {"too many sections"}},
        {"a heading in letters of both kinds", "R32", change("#STN", "#Stn"), {"unknown section Stn"}},
        {"small letters that the set-up does not know",
         "R32",
         [](const std::string& text) { return replaced(text, "#AUX  !---ideal-gas Helmholtz", "#aux  !---"); },
         {"unknown section aux"}},
        {"an end in small letters", "R32", change("@END", "@end"), {"found end of file"}},
        {"another critical temperature",
         "R32",
         change("  351.255   ", "  371.255   "),
         {"not within 2 % of that of the header"}},
        {"no state within the limits of the viscosity",
         "R134A",
         changeIn("#ETA", "\n  169.85 ", "\n  2169.85 "),
         {"no state lies within the limits of the models"}},
        {"a surface tension that is passed over", "R32", change("#STN", "@STN"), {"unknown surface tension model"}},
        {"a heat capacity that is not read",
         "R32",
         [](const std::string& text) {
             return changeIn("#AUX  !---ideal-gas heat", "  1  4  0  0  0  0  0",
                             "  1  20  0  0  0  0  0")(changeIn("#EOS", "\nCPP", "\nPH0")(text));
         },
         {"heat capacity forms", "BAD.FLD, line"}},
        {"an ancillary of another form", "R32", changeIn("#PS", "\nPS5", "\nPS9"), {"vapor pressure"}},
        {"a known deviation of nothing",
         "R32",
         change("?Known: viscosity up to", "?Known: viscositi up to"),
         {"names no figure: viscositi", "out of bound: viscosity"}},
    };
    for (const Planted& row : rows) {
        const std::string text = original(std::string("fluids/") + row.file + ".FLD");
        const FluidReport& report = check(row.damage(text));
        EXPECT_FALSE(report.clean) << row.name;
        for (const std::string& part : row.expected)
            EXPECT_TRUE(contains(said(report), part)) << row.name << ": no '" << part << "' in\n" << said(report);
    }
    EXPECT_TRUE(check(r32).clean) << said(report_);
    EXPECT_EQ(firstFreeUnit(12), 12);
}

// What a file may hold without being at fault.
TEST_F(Copy, FilesOfOtherFormsAreClean) {
    const std::string r32 = original("fluids/R32.FLD");
    struct {
        const char* name;
        Damage change;
    } const rows[] = {
        {"a name with a comment", change("R32    ", "R32 !of the file")},
        {"a heading in small letters", change("#STN", "#stn")},
        {"a reference state with a line of its own",
         change("IIR                                                !default reference state",
                "OT0                                                !default reference state\n  298.15  1.0  20000.0  "
                "100.0")},
        {"an equation that points to the Helmholtz energy", changeIn("#EOS", "\nCPP", "\nPH0")},
        {"remarks between the sections", change("#STN", "! a remark\n!EOS\n#STN")},
    };
    for (const auto& row : rows) EXPECT_TRUE(check(row.change(r32)).clean) << row.name << '\n' << said(report_);
    check(std::end(rows)[-2].change(r32));
    EXPECT_EQ(report_[FigureOf::heatCapacityForms].verdict, Verdict::clean);
}

TEST_F(Copy, FiguresOutOfBoundAreFound) {
    struct Row {
        FigureOf figure;
        const char* file;
        Damage damage;
    };
    const Row rows[] = {
        {FigureOf::criticalPressure, "R32", change("  5782.0   ", "  5822.0   ")},
        {FigureOf::triplePressure, "R32", changeIn("#EOS", "  0.047999894 ", "  0.0482 ")},
        {FigureOf::tripleDensity, "R32", changeIn("#EOS", "  27.473345 ", "  27.48 ")},
        {FigureOf::boilingPoint, "R32", change("  221.4987 ", "  221.52 ")},
        {FigureOf::header, "R32", change("  52.024  ", "  52.24  ")},
        {FigureOf::header, "R32", change("  136.34   ", "  136.43   ")},
        {FigureOf::acentricFactor, "R32", change("  0.2769  ", "  0.2796  ")},
        {FigureOf::melting, "CO2", changeIn("#MLT", "  1955.539 ", "  nan ")},
        {FigureOf::melting, "IPENTANE", changeIn("#MLT", "  112.65  1.0 ", "  112.5  1.0 ")},
        {FigureOf::sublimation, "CO2", changeIn("#SBL", "  216.592  517.95 ", "  216.592  510.0 ")},
        {FigureOf::boilingPoint, "CO2", change("  194.686 ", "  194.70 ")},
        {FigureOf::vaporPressure, "R32", changeIn("#PS", " -7.770499754 ", " -7.79 ")},
        {FigureOf::liquidDensity, "R32", changeIn("#DL", "  2.286863592 ", "  2.30 ")},
        {FigureOf::vaporDensity, "R32", changeIn("#DV", " -3.711390325 ", " -4.2 ")},
        {FigureOf::heatCapacityForms, "R32", changeIn("#AUX  !---ideal-gas heat", "  4.004486 ", "  4.0055 ")},
        {FigureOf::heatCapacityForms, "R32", changeIn("#AUX  !---ideal-gas Helmholtz", "  3.004486 ", "  3.0055 ")},
        {FigureOf::viscosity, "R32", changeIn("#TRN", "  0.7954 ", "  9.7954 ")},
        {FigureOf::viscosity, "R134A", changeIn("#ETA", "  0.2157279017 ", " -0.2157279017 ")},
        {FigureOf::conductivity, "R134A", changeIn("#TCX", " -0.0105248 ", " -0.1105248 ")},
        {FigureOf::surfaceTension, "R32", changeIn("#STN", "  0.07147 ", " -0.07147 ")},
        {FigureOf::surfaceTension, "R32", changeIn("#STN", "  1.246", " -1.246")},
        {FigureOf::surfaceTension, "R32", changeIn("#STN", "  0.07147 ", "  nan ")},
        {FigureOf::vaporPressure, "R32", changeIn("#PS", " -7.770499754 ", " nan ")},
        {FigureOf::conductivity, "R134A", changeIn("#TCX", " -0.0105248 ", " nan ")},
    };
    for (const Row& row : rows) {
        const FluidReport& report = check(row.damage(original(std::string("fluids/") + row.file + ".FLD")));
        EXPECT_EQ(report[row.figure].verdict, Verdict::outOfBound) << row.file << ' ' << kindOf(row.figure).name << '\n'
                                                                   << said(report);
        EXPECT_FALSE(report.clean);
    }
}

TEST_F(Copy, KnownDeviationHoldsUpToItsBound) {
    const std::string r32 = original("fluids/R32.FLD");
    EXPECT_EQ(check(r32)[FigureOf::viscosity].verdict, Verdict::known);
    EXPECT_TRUE(contains(words(report_[FigureOf::viscosity].note), "the two differ there"));
    check(replaced(r32, "viscosity up to 12.0:", "viscosity up to 3.0:"));
    EXPECT_EQ(report_[FigureOf::viscosity].verdict, Verdict::outOfBound);
    EXPECT_FALSE(report_.clean);
}

TEST_F(Copy, ExpansionsAreHeldAgainstTheEquation) {
    const std::string r32 = original("fluids/R32.FLD"), expansions = original("fluids/R32.SAT");
    EXPECT_EQ(check(r32)[FigureOf::expansions].verdict, Verdict::absent);
    EXPECT_TRUE(report_.clean) << said(report_);
    put("fluids/BAD.SAT", expansions);
    EXPECT_EQ(check(r32)[FigureOf::expansions].verdict, Verdict::clean);
    EXPECT_GT(std::fabs(report_[FigureOf::expansions].value), 0.0);

    check(changeIn("#EOS", "  0.047999894 ", "  0.047999895 ")(r32));
    EXPECT_EQ(report_[FigureOf::expansions].verdict, Verdict::outOfBound);
    EXPECT_TRUE(contains(said(report_), "made from another equation")) << said(report_);

    put("fluids/BAD.SAT", expansions.substr(0, expansions.size() / 2));
    EXPECT_TRUE(contains(said(check(r32)), "the file of expansions is damaged")) << said(report_);
    EXPECT_FALSE(report_.clean);

    // the constant of the first piece alone, by which it no longer meets the second, and of all pieces together
    std::vector<std::string> lines;
    std::istringstream all(expansions);
    for (std::string line; std::getline(all, line);) lines.push_back(line);
    int pieces = 0, order = 0;
    std::istringstream(lines[5]) >> pieces >> order;
    const auto raised = [&](int count) {
        std::vector<std::string> changed = lines;
        for (int piece = 0; piece < count; ++piece) {
            std::istringstream numbers(lines[static_cast<std::size_t>(6 + piece * order)]);
            double lnP = 0.0, rhol = 0.0, Z = 0.0;
            numbers >> lnP >> rhol >> Z;
            char text[100];
            std::snprintf(text, sizeof text, "%.17g %.17g %.17g", lnP, rhol + 2e-9, Z);
            changed[static_cast<std::size_t>(6 + piece * order)] = text;
        }
        std::string text;
        for (const std::string& line : changed) text += line + '\n';
        return text;
    };
    put("fluids/BAD.SAT", raised(1));
    EXPECT_TRUE(contains(said(check(r32)), "the file of expansions is damaged")) << said(report_);
    put("fluids/BAD.SAT", raised(pieces));
    EXPECT_EQ(check(r32)[FigureOf::expansions].verdict, Verdict::outOfBound);
    EXPECT_TRUE(report_[FigureOf::expansions].computed);
}

// A file may end anywhere, and its lines may come in any order.
TEST_F(Copy, TruncatedAndShuffledFilesAreFaulty) {
    std::vector<std::string> lines;
    {
        const std::string text = original("fluids/R134A.FLD");
        for (std::size_t at = 0, end; (end = text.find('\n', at)) != std::string::npos; at = end + 1)
            lines.push_back(text.substr(at, end + 1 - at));
    }
    const std::size_t last =
        static_cast<std::size_t>(std::find(lines.begin(), lines.end(), "@END\n") - lines.begin()) + 2;
    ASSERT_LT(last, lines.size());
    std::string text;
    for (std::size_t n = 0; n < last; ++n) {
        if (n % 5 == 0 || n + 5 > last) {
            const FluidReport& report = check(text);
            EXPECT_FALSE(report.clean) << n << " lines";
            EXPECT_TRUE(contains(said(report), "found end of file")) << n << " lines\n" << said(report);
        }
        text += lines[n];
    }
    test::Random random;
    for (int turn = 0; turn < 40; ++turn) {
        std::vector<std::string> shuffled = lines;
        // A few pairs of lines change places, or all lines are mixed.
        const std::size_t exchanges = turn % 2 == 0 ? 6 : shuffled.size();
        for (std::size_t k = 0; k < exchanges; ++k) {
            const auto any = [&] {
                return static_cast<std::size_t>(random.between(0.0, static_cast<double>(lines.size()) - 0.001));
            };
            std::swap(shuffled[any()], shuffled[any()]);
        }
        std::string mixed;
        for (const std::string& each : shuffled) mixed += each;
        check(mixed);
        if (turn % 2 == 1) {
            EXPECT_FALSE(report_.clean) << turn;
        }
    }
    EXPECT_EQ(firstFreeUnit(12), 12);
}

TEST_F(Copy, AMissingFileIsNamed) {
    checkFluid("NOWHERE.FLD", report_);
    EXPECT_EQ(report_.ierr, 101);
    EXPECT_TRUE(contains(said(report_), "cannot be opened"));
    EXPECT_FALSE(report_.clean);
}

TEST_F(Copy, DamagedParametersAreFound) {
    const std::string hmx = original("fluids/HMX.BNC");
    const std::string pair = "75-10-5/354-33-6          LJ1  28.95  -0.006008  1.0  1.0  1.0  0.0";
    const std::string counts = "  8  3  1  0  0 ";
    const auto line = [&](const std::string& part) { return "line " + std::to_string(lineOf(hmx, part)); };
    const auto changed = [&](const std::string& from, const std::string& to) { return replaced(hmx, from, to); };
    struct Row {
        const char* name;
        std::string text;
        std::vector<std::string> expected;
    };
    const Row rows[] = {
        {"empty", "", {"the first line is not HMX"}},
        {"another model", "XYZ" + hmx.substr(3), {"the first line is not HMX"}},
        {"no END", hmx.substr(0, hmx.find("@END")), {"expected @END, found end of file"}},
        {"a rule without a function",
         changed("#MXM  !---departure function---\nLJ1 ", "#MXM  !---departure function---\nLJ9 "),
         {line(pair) + ": the pair's rule LJ1 has no departure function"}},
        {"a function that comes twice",
         changed("\nLJ2  R32 + R134a", "\nLJ1  R32 + R134a"),
         {"the departure function LJ1 comes twice"}},
        {"letters for a number",
         changed(pair, replaced(pair, "28.95", "2B.95")),
         {line(pair), "found '2B.95' as number 1"}},
        {"too few numbers", changed(pair, replaced(pair, "  1.0  1.0  1.0  0.0", "")), {line(pair), "as number 3"}},
        {"an unknown tag", changed(pair, replaced(pair, "LJ1", "QQ1")), {line(pair), "unknown tag QQ1"}},
        {"one CAS number", changed(pair, replaced(pair, "/354-33-6", "         ")), {line(pair), "expected two CAS"}},
        {"no rule",
         changed("75-10-5/354-33-6          LJ1  28.95  -0.006008  1.0  1.0  1.0  0.0\n"
                 "                          TC1",
                 "75-10-5/354-33-6          TC1"),
         {"the pair has no mixing rule"}},
        {"a pair that comes twice", changed("@END", pair + "\n!\n@END"), {"comes twice"}},
        {"too many terms", changed(counts, "  16  3  1  0  0 "), {"set-up 118", "HMX.BNC, line"}},
        {"a negative count", changed(counts, "  -8  3  1  0  0 "), {"set-up 118", "HMX.BNC, line"}},
        {"letters in a function",
         changed(" -0.0072955 ", " -O.0072955 "),
         {"set-up 118", "row of a departure function"}},
        {"an unknown section", changed("#BNC ", "#BMC "), {"unknown section BMC", "there is no pair"}},
        {"pairs without their tag",
         changed("---binary pairs---\nBNC\n", "---binary pairs---\n"),
         {"the section lacks its tag"}},
        {"an end behind a heading", hmx.substr(0, hmx.find("#MXM") + 30), {"expected @END, found end of file"}},
        {"an end behind the heading of the pairs",
         hmx.substr(0, hmx.find('\n', hmx.find("#BNC")) + 1),
         {"the section lacks its tag", "expected @END, found end of file", "there is no pair"}},
        {"an end within the source of the pairs",
         hmx.substr(0, hmx.find("?Akasaka")) + "?Akasaka\n",
         {"expected @END, found end of file", "there is no pair"}},
        {"an end in small letters in the wrong place", changed("#BNC ", "#end\n#BNC "), {"there is no pair"}},
        {"a rule of the form that the set-up takes for another",
         changed(pair, replaced(pair, "LJ1", "GEX")),
         {line(pair) + ": the pair's rule KWX has no departure function"}},
        {"a number that is not finite",
         changed(pair, replaced(pair, "28.95", "nan")),
         {line(pair), "found 'nan' as number 1"}},
        {"a rule that reduces to nothing",
         changed(pair, replaced(pair, "28.95", "-2895.0")),
         {line(pair) + ": R32.FLD + R125.FLD: the reducing temperature or density is not positive"}},
        {"too few transport numbers",
         changed("VC1  0.12106679", "TRN  0.12106679"),
         {"expected 9 numbers", "as number 7"}},
        {"more functions than there is room for",
         [&] {
             std::string functions;
             const std::string one = sectionOf(hmx, "#MXM  !---departure function---\nLJ2");
             for (int k = 10; k < 72; ++k) functions += replaced(one, "LJ2", "X" + std::to_string(k));
             return replaced(hmx, "#BNC ", functions + "#BNC ");
         }(),
         {"too many departure functions"}},
    };
    const InstalledFluid fluids[] = {{"R32.FLD", "75-10-5"}, {"R125.FLD", "354-33-6"}, {"R134A.FLD", "811-97-2"}};
    ParametersReport report;
    for (const Row& row : rows) {
        put("fluids/HMX.BNC", row.text);
        checkParameters("HMX.BNC", fluids, report);
        EXPECT_FALSE(report.clean) << row.name;
        for (const std::string& part : row.expected)
            EXPECT_TRUE(contains(said(report.faults), part)) << row.name << ": no '" << part << "' in\n"
                                                             << said(report.faults);
    }
    put("fluids/HMX.BNC", hmx);
    checkParameters("HMX.BNC", fluids, report);
    EXPECT_TRUE(report.clean) << said(report.faults);
    EXPECT_EQ(report.tried, 3);
    checkParameters("NOWHERE.BNC", fluids, report);
    EXPECT_FALSE(report.clean);
    EXPECT_TRUE(contains(said(report.faults), "cannot be opened")) << said(report.faults);
    EXPECT_EQ(firstFreeUnit(12), 12);
}

TEST_F(Copy, DamagedMixturesAreFound) {
    const std::string mixture = original("mixtures/R410A.MIX");
    const auto changed = [&](const std::string& from, const std::string& to) { return replaced(mixture, from, to); };
    struct Row {
        const char* name;
        std::string text;
        std::vector<std::string> expected;
    };
    const Row rows[] = {
        {"empty", "", {"found end of file"}},
        {"cut", mixture.substr(0, mixture.size() / 2), {"found end of file"}},
        {"no component", changed("\n 2\n", "\n 0\n"), {"line 3: there is no component"}},
        {"too many components", changed("\n 2\n", "\n 21\n"), {"line 3", "from 0 to 20, found 21"}},
        {"a count in letters", changed("\n 2\n", "\n two\n"), {"line 3", "number of components", "'two'"}},
        {"an unknown fluid", changed("R125.FLD", "R125X.FLD"), {"there is no fluid file R125X.FLD"}},
        {"fractions that do not add up", changed("0.6976", "0.6977"), {"the mole fractions add up to"}},
        {"a negative fraction",
         changed("   0.3023853006241376", "  -0.3023853006241376"),
         {"line 7: the mole fraction is not from 0 to 1"}},
        {"letters for a fraction", changed("0.3023853006241376", "O.3023853006241376"), {"line 7", "mole fraction"}},
        {"another molar mass", changed("72.58", "72.68"), {"line 2: the molar mass is not that of the fractions"}},
        {"updated parameters", mixture.substr(0, mixture.rfind(" 0")) + " 1\n", {"set-up -102"}},
        {"no flag", mixture.substr(0, mixture.rfind(" 0")), {"flag of updated parameters, found end of file"}},
        {"a name behind the end", mixture.substr(0, mixture.find("R125.FLD")), {"found end of file"}},
        {"a fraction behind the end",
         mixture.substr(0, mixture.find("R125.FLD") + 9),
         {"mole fraction, found end of file"}},
        {"a component twice", changed("R125.FLD", "R32.FLD"), {"it holds R32.FLD twice"}},
        {"a fraction above 1",
         changed("0.3023853006241376", "1.3023853006241376"),
         {"line 7: the mole fraction is not from 0 to 1"}},
        {"a fraction that is no number",
         changed("0.3023853006241376", "nan"),
         {"line 7: the mole fraction is not from 0 to 1", "add up to"}},
    };
    MixtureReport report;
    for (const Row& row : rows) {
        put("mixtures/BAD.MIX", row.text);
        checkMixture("BAD.MIX", "HMX.BNC", report);
        EXPECT_FALSE(report.clean) << row.name;
        for (const std::string& part : row.expected)
            EXPECT_TRUE(contains(said(report.faults), part)) << row.name << ": no '" << part << "' in\n"
                                                             << said(report.faults);
    }
    put("mixtures/BAD.MIX", mixture);
    checkMixture("BAD.MIX", "HMX.BNC", report);
    EXPECT_TRUE(report.clean) << said(report.faults);
    checkMixture("NOWHERE.MIX", "HMX.BNC", report);
    EXPECT_TRUE(contains(said(report.faults), "cannot be opened")) << said(report.faults);
    // The mixture is sound, the parameters of its pair are not.
    const std::string hmx = original("fluids/HMX.BNC");
    put("fluids/HMX.BNC", replaced(hmx, "LJ1  28.95  -0.006008", "LJ1  -2895.0  -0.006008"));
    checkMixture("BAD.MIX", "HMX.BNC", report);
    EXPECT_TRUE(contains(said(report.faults), "the reducing temperature or density is not positive"))
        << said(report.faults);
    EXPECT_EQ(firstFreeUnit(12), 12);
}

}  // namespace
}  // namespace frigana
