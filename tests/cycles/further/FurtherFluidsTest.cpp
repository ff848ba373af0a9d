// Fluids and blends beyond the table of the program through the cycles they are made for, as a user runs them: solved,
// and the first law.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "53_Fluid_Library.h"
#include "FurtherFluids.h"
#include "Larger.h"
#include "Requests.h"
#include "ResultFile.h"

namespace frigana::test {
namespace {

constexpr double firstLaw = 1e-9;  // of the largest heat or power

// A line of the result with a heat or a power, and its sign in the balance of the whole circuit.
struct Flow {
    int line;
    double sign;
};
constexpr Flow basicBalance[] = {{25, 1}, {45, 1}, {66, 1}, {86, -1}, {108, -1}, {128, -1}};
constexpr Flow rankineBalance[] = {{25, 1}, {45, -1}, {65, -1}, {85, -1}, {106, -1}, {125, 1}, {145, -1}};

// How far the balance of a circuit is open, its lines counted from `first`.
template <std::size_t count>
double imbalance(const ResultFile& file, const Flow (&flows)[count], int first = 0) {
    double sum = 0.0, largest = 0.0;
    for (const Flow& flow : flows) {
        const double heat = file.number(first + flow.line);
        sum += flow.sign * heat;
        largest = larger(largest, std::fabs(heat));
    }
    return std::fabs(sum) / largest;
}

ResultFile run(const Request& request) {
    Plant plant;
    plant(request);
    return ResultFile(plant.hasResult() ? plant.resultText() : std::string());
}

// ---- power from heat ------------------------------------------------------------------------------------------------

TEST(FurtherFluids, DriveARankineCycle) {
    constexpr struct {
        const char* fluid;
        double boiler, condenser;  // [K]
    } rows[] = {{"TOLUENE", 523.15, 373.15},  {"MM", 473.15, 333.15},       {"MDM", 513.15, 373.15},
                {"CYCLOPEN", 453.15, 323.15}, {"PENTANE", 423.15, 308.15},  {"R245FA", 383.15, 308.15},
                {"R1233ZD", 393.15, 308.15},  {"R1336MZZ", 413.15, 313.15}, {"WATER", 573.15, 318.15},
                {"ETHANOL", 473.15, 333.15}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.fluid);
        const ResultFile file = run(cycleRequest(
            6, {{1, row.boiler}, {2, 5.0}, {1, 5.0},   {2, 1.0},           {1, 5.0},   {1, 100.0}, {1, 0.8},
                {1, 0.0},        {2, 1.0}, {1, 1.0},   {1, row.condenser}, {1, 0.0},   {1, 0.0},   {1, 0.7},
                {2, 0.0},        {1, 5.0}, {1, 430.0}, {1, 390.0},         {1, 293.0}, {1, 300.0}},
            std::string(row.fluid) + ".FLD"));
        ASSERT_EQ(file.count(), 296) << (file.count() > 2 ? file.trimmed(3) : "");
        EXPECT_LE(imbalance(file, rankineBalance), firstLaw);
        const double efficiency = (file.number(65) - file.number(145)) / file.number(25);
        const double carnot = 1.0 - row.condenser / row.boiler;
        EXPECT_GT(efficiency, 0.3 * carnot);
        EXPECT_LT(efficiency, carnot);
        std::printf("%-9s %6.1f to %6.1f K: efficiency %.4f, Carnot %.4f, first law %.1e\n", row.fluid, row.boiler,
                    row.condenser, efficiency, carnot, imbalance(file, rankineBalance));
    }
}

// ---- hot heat pumps -------------------------------------------------------------------------------------------------

TEST(FurtherFluids, GiveHeatAt150DegreesByACascade) {
    std::vector<Parameter> high = basicParameters(), low = basicParameters();
    high[1] = {2, 25.0};
    high[10] = {1, 423.15};
    low[0] = {1, 333.15};
    low[1] = {2, 10.0};
    low[10] = {1, 363.15};
    Request request = cycleRequest(4, high, "R1336MZZ.FLD", "Hot circuit");
    request.line("SECOND CIRCUIT").line("header").append(cycleRequest(4, low, "R1234ZE.FLD", "Warm circuit"));
    request.line("INTERMEDIATE TEMPERATURES").line("header").line("1 5.0");
    const ResultFile file = run(request);
    constexpr int lines = 581, lowCircuit = 285, overall = 571;
    ASSERT_EQ(file.count(), lines) << (file.count() > 2 ? file.trimmed(3) : "");
    EXPECT_LE(imbalance(file, basicBalance), firstLaw);
    EXPECT_LE(imbalance(file, basicBalance, lowCircuit), firstLaw);
    EXPECT_EQ(file.trimmed(4), "R1336MZZ.FLD -777");
    EXPECT_EQ(file.trimmed(lowCircuit + 4), "R1234ZE.FLD 1");
    EXPECT_NEAR(file.number(25), file.number(lowCircuit + 108), 1e-9 * file.number(25));
    const double heating = file.number(overall + 8), carnot = 423.15 / (423.15 - 333.15);
    EXPECT_GT(heating, 0.3 * carnot);
    EXPECT_LT(heating, carnot);
    std::printf("heat at 150 C from 60 C: COP of heating %.3f, Carnot %.3f\n", heating, carnot);
}

// ---- every fluid and blend in a basic cycle -------------------------------------------------------------------------

// Evaporation and condensation at shares of the critical temperature, superheated so far that siloxanes stay dry.
Request basicCycle(const std::string& file, double Tc) {
    std::vector<Parameter> parameters = basicParameters();
    parameters[0] = {1, 0.75 * Tc};
    parameters[1] = {2, 0.14 * Tc};
    parameters[10] = {1, 0.9 * Tc};
    parameters[11] = {2, 5.0};
    return cycleRequest(1, parameters, file);
}

// The potential of a fluid is -777 where the table of the program has not all of its components.
void expectBasicCycle(const std::string& name, double Tc, bool listed, double& worst) {
    SCOPED_TRACE(name);
    const ResultFile file = run(basicCycle(name, Tc));
    ASSERT_EQ(file.count(), 283) << (file.count() > 2 ? file.trimmed(3) : "");
    const double open = imbalance(file, basicBalance);
    EXPECT_LE(open, firstLaw);
    worst = larger(worst, open);
    EXPECT_EQ(file.trimmed(4) == name + " -777", !listed) << file.trimmed(4);
    const double COP = file.number(25) / file.number(66), carnot = 0.75 / (0.9 - 0.75);
    EXPECT_GT(COP, 0.2 * carnot);
    EXPECT_LT(COP, carnot);
}

TEST(FurtherBlends, EachCoolsByABasicCycle) {
    static MixtureTable table;
    LOADMIXTURES(table);
    std::set<std::string> known;
    for (int row = 1; row <= table.count; ++row) known.insert(std::string(table.rows[row].NAME.trimmed()));
    int blends = 0;
    double worst = 0.0;
    for (const auto& entry : std::filesystem::directory_iterator(std::string(dataFolder) + "/mixtures")) {
        const std::string name = entry.path().filename().string();
        if (known.count(name) > 0) continue;
        std::ifstream file(entry.path());
        std::string title;
        double molarMass = 0.0, Tc = 0.0;
        std::string point;
        std::getline(file, title);
        file >> molarMass >> Tc;
        std::getline(file, point);
        int components = 0;
        file >> components;
        bool listed = true;
        for (int k = 0; k < components; ++k) {
            std::string component;
            file >> component;
            listed = listed && std::find(std::begin(furtherFluids), std::end(furtherFluids),
                                         component.substr(0, component.find('.'))) == std::end(furtherFluids);
        }
        expectBasicCycle(name, Tc, listed, worst);
        ++blends;
    }
    EXPECT_EQ(blends, 70);
    std::printf("%d blends, first law within %.1e\n", blends, worst);
}

TEST(FurtherFluids, EachCoolsByABasicCycle) {
    // Cycles begin at 100 K.
    const std::set<std::string> tooCold = {"HYDROGEN", "CO"};
    int fluids = 0;
    double worst = 0.0;
    for (const std::string name : furtherFluids) {
        if (tooCold.count(name) > 0) continue;
        std::ifstream file(std::string(dataFolder) + "/fluids/" + name + ".FLD");
        std::string line;
        for (int k = 1; k <= 9; ++k) std::getline(file, line);  // the ninth line is the critical temperature
        expectBasicCycle(name + ".FLD", std::stod(line), false, worst);
        ++fluids;
    }
    EXPECT_EQ(fluids, 50);
    std::printf("%d fluids, first law within %.1e\n", fluids, worst);
}

}  // namespace
}  // namespace frigana::test
