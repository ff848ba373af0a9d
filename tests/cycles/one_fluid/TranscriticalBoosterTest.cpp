// The transcritical booster as a user runs it.
#include "OneFluidCycles.h"

namespace frigana::test {
namespace {

TEST(BoosterLayout, EverySectionStandsOnItsLine) {
    const ResultFile file = solve(booster, {});
    ASSERT_EQ(file.count(), booster.lines);
    EXPECT_EQ(file.trimmed(1), "2");
    EXPECT_EQ(file.trimmed(2), "14");
    EXPECT_EQ(file.trimmed(4), "CO2.FLD 1");
    const struct {
        int line;
        const char* heading;
    } headings[] = {
        {5, "MT EVAPORATOR"},
        {26, "LT EVAPORATOR"},
        {47, "SUCTION LINE - BEFORE HEAT EXCHANGER"},
        {67, "SUCTION LINE - AFTER HEAT EXCHANGER"},
        {87, "HIGH STAGE COMPRESSOR"},
        {106, "LOW STAGE COMPRESSOR"},
        {125, "DISCHARGE LINE"},
        {140, "GAS COOLER"},
        {154, "LIQUID LINE - BEFORE HEAT EXCHANGER"},
        {169, "LIQUID LINE - AFTER HEAT EXCHANGER"},
        {184, "HIGH PRESSURE CONTROL VALVE (EXPANSION DEVICE)"},
        {200, "BYPASS VALVE (EXPANSION DEVICE)"},
        {216, "MT EXPANSION DEVICE"},
        {232, "LT EXPANSION DEVICE"},
        {248, "HEAT EXCHANGER (SUCTION LINE - LIQUID LINE)"},
        {281, "PERFORMANCE PARAMETERS"},
        {316, "INFORMATION FOR GRAPHIC P-h"},
        {317, "CYCLE data for graphic P-h"},
        {362, "PRESSURE & ENTHALPY data for graphic P-h"},
        {395, "INFORMATION FOR GRAPHIC T-s"},
        {396, "CYCLE data for graphic T-s"},
        {441, "Temperature & enthalpy data for graphic T-s"},
    };
    for (const auto& row : headings) EXPECT_EQ(file.trimmed(row.line), row.heading) << row.line;
    for (int line : {360, 361, 393, 394, 439, 440}) EXPECT_EQ(file.raw(line), " ") << line;
    int numbers = 0;
    for (int line = 5; line <= booster.lines; ++line) numbers += std::isfinite(file.number(line)) ? 1 : 0;
    EXPECT_EQ(numbers, booster.lines - 4 - 22 - 6);
}

// ---- codes ----------------------------------------------------------------------------------------------------------

// A request whose suction line lies near the critical point and below its temperature: little vapor of the low stage,
// and flash gas of nearly the suction's pressure.
std::vector<std::pair<int, Parameter>> nearCritical(std::initializer_list<std::pair<int, Parameter>> changes) {
    std::vector<std::pair<int, Parameter>> all{{1, {1, 300.0}}, {2, {2, 1.0}},     {4, {2, 0.0}},
                                               {6, {2, 0.0}},   {23, {1, 6750.0}}, {28, {2, 0.999}}};
    all.insert(all.end(), changes);
    return all;
}

TEST(BoosterCodes, EveryReachableCheckEndsTheRunWithItsText) {
    const CodeCase rows[] = {
        {214202, "Error: Gas cooler pressure is less than or equal to critical pressure!", {{13, {2, 7000.0}}}},
        {214205,
         "Error: Gas cooler - outlet pressure is less than or equal to critical pressure!",
         {{13, {2, 7500.0}}, {15, {1, 1000.0}}}},
        {214210,
         "Error: Liquid line before heat exchanger - outlet temperature is out of range!",
         {{14, {1, 250.0}}, {16, {2, 199.0}}}},
        {214211, "Error: Liquid line before heat exchanger - temperature change is out of range!", {{16, {1, 320.0}}}},
        {214215,
         "Error: Liquid side at heat exchanger - inlet pressure is less than or equal to zero!",
         {{13, {2, 1830.0}}, {17, {1, 1000.0}}, {21, {1, 900.0}}, {14, {1, 500.0}}},
         "C12.FLD"},
        {214216,
         "Error: Liquid side at heat exchanger - inlet temperature was less than or equal to zero!",
         {{14, {1, 250.0}}, {16, {2, 140.0}}, {20, {2, 150.0}}}},
        {214219,
         "Error: Liquid line after heat exchanger - outlet temperature is out of range!",
         {{14, {1, 250.0}}, {18, {2, 199.0}}}},
        {214220, "Error: Liquid line after heat exchanger - temperature change is out of range!", {{18, {1, 320.0}}}},
        {214222, "Error: Receiver pressure >= critical pressure!", {{23, {1, 7400.0}}}},
        {214223, "Error: MT Evaporating temperature > critical temperature (304.1282 K)", {{1, {1, 310.0}}}},
        {214225, "Error: MT Evaporating pressure > critical pressure (7377.3000 kPa)", {{1, {2, 7400.0}}}},
        {214229,
         "Error: MT Evaporator - inlet pressure > gas cooler pressure!",
         {{1, {2, 7300.0}}, {3, {1, 600.0}}, {13, {2, 7400.0}}}},
        {214230,
         "Error: MT Evaporator - outlet pressure was less than or equal to zero!",
         {{1, {2, 400.0}}, {3, {1, 1000.0}}}},
        {214231, "Error: MT Evaporator - superheat is out of range!", {{2, {1, 250.0}}}},
        {214232, "Error: LT Evaporating temperature > critical temperature (304.1282 K)", {{24, {1, 310.0}}}},
        {214234, "Error: LT Evaporating pressure > critical pressure (7377.3000 kPa)", {{24, {2, 7400.0}}}},
        {214238,
         "Error: LT Evaporator - inlet pressure > gas cooler pressure!",
         {{24, {2, 7300.0}}, {26, {1, 600.0}}, {13, {2, 7400.0}}}},
        {214239,
         "Error: LT Evaporator - outlet pressure was less than or equal to zero!",
         {{24, {2, 400.0}}, {26, {1, 1000.0}}}},
        {214240, "Error: LT Evaporator - superheat is out of range!", {{25, {1, 220.0}}}},
        {214244, "Error: Suction line before heat exchanger - pressure drop is out of range!",
         nearCritical({{5, {2, 20.0}}})},
        {214245,
         "Error: Suction line before heat exchanger - drop of saturation temperature is out of range!",
         {{1, {2, 900.0}}, {5, {1, 1000.0}}}},
        {214246,
         "Error: Suction line before heat exchanger - outlet pressure was less than or equal to zero!",
         {{1, {1, 250.0}}, {13, {2, 4500.0}}, {5, {2, 100.0}}},
         "R134A.FLD"},
        {214247,
         "Error: Suction line before heat exchanger - Outlet temperature > critical temperature (304.1282 K)",
         {{4, {1, 310.0}}}},
        {214248, "Error: Suction line before heat exchanger - temperature change is out of range!", {{4, {1, 250.0}}}},
        {214250, "Error: Vapor side at heat exchanger - pressure drop is out of range!",
         nearCritical({{22, {2, 20.0}}})},
        {214251,
         "Error: Vapor side at heat exchanger - drop of saturation temperature is out of range!",
         {{1, {2, 900.0}}, {22, {1, 1000.0}}}},
        {214252, "Error: Heat exchanger - the heat trasfer is negative!", {{20, {3, 330.0}}}},
        {214253,
         "Error: Vapor side at heat exchanger - temperature change is out of range!",
         {{20, {2, 0.01}}, {22, {1, 300.0}}}},
        {214254, "Error: Suction line after heat exchanger - pressure drop is out of range!",
         nearCritical({{7, {2, 20.0}}})},
        {214255,
         "Error: Suction line after heat exchanger - drop of saturation temperature is out of range!",
         {{1, {2, 900.0}}, {7, {1, 1000.0}}}},
        {214256,
         "Error: Suction line after heat exchanger - outlet temperature is out of range!",
         {{1, {1, 350.0}},
          {2, {2, 60.0}},
          {6, {2, 199.0}},
          {13, {2, 4000.0}},
          {14, {1, 400.0}},
          {23, {1, 3500.0}},
          {24, {1, 300.0}},
          {28, {2, 0.99}}},
         "R245FA.FLD"},
        {214257, "Error: Suction line after heat exchanger - temperature change is out of range!", {{6, {1, 200.0}}}},
        {214262, "Error: Discharge line - temperature change is out of range!", {{11, {1, 500.0}}}},
    };
    const UnreachableCode unreachable[] = {
        {214204, "the pressure of the gas cooler lies above the critical one, and its drop is not negative"},
        {214206, "the request is refused for the same limits"},
        {214208, "the request is refused for the same limits"},
        {214209, "the gas cooler's outlet lies above a critical pressure, all of which are above 1000 kPa"},
        {214213, "the request is refused for the same limits"},
        {214217, "the request is refused for the same limits"},
        {214226, "the evaporating pressure is at most the critical one, the gas cooler's above it"},
        {214235, "the evaporating pressure is at most the critical one, the gas cooler's above it"},
        {214242, "the bypass valve leads to the outlet of the MT evaporator, whose pressure has been checked"},
        {214243, "the suction line begins at the outlet of the MT evaporator, whose pressure has been checked"},
        {214259, "the request is refused for the same limits"},
    };
    checkCodes(booster, rows, unreachable, 44);
}

// ---- edge cases -----------------------------------------------------------------------------------------------------

constexpr int mediumFlow = 23, lowFlow = 44, mediumCapacity = 25, lowCapacity = 46, lowStageRatio = 122,
              bypassFlow = 213, totalM = 282, flashM = 283, liquidM = 284, totalCapacity = 289;
constexpr int mixedPair = 350;  // of the P-h diagram: MT vapor and low stage discharge

TEST(BoosterEdges, WithoutMediumCapacityTheMixtureIsAllLowStageVapor) {
    const ResultFile file = solve(booster, {{8, {2, 25.0}}, {28, {1, 25.0}}});
    ASSERT_EQ(file.count(), booster.lines);
    EXPECT_EQ(file.number(mediumCapacity), 0.0);
    EXPECT_EQ(file.number(mediumFlow), 0.0);
    EXPECT_EQ(file.number(liquidM), file.number(lowFlow));
    EXPECT_EQ(file.number(totalCapacity), 25.0);
    EXPECT_NEAR(file.number(mixedPair + 1), file.number(117), 1e-9);  // low stage outlet
}

TEST(BoosterEdges, AReceiverBelowTheMediumPressureIsNotRefused) {
    const ResultFile file = solve(booster, {{23, {1, 2500.0}}});
    ASSERT_EQ(file.count(), booster.lines);
    EXPECT_LT(file.number(190), file.number(6));
}

TEST(BoosterEdges, ASubcooledReceiverInletGivesNoFlashGas) {
    const ResultFile file = solve(booster, {{14, {1, 278.15}}, {20, {2, 0.0}}, {23, {1, 5000.0}}});
    ASSERT_EQ(file.count(), booster.lines);
    EXPECT_EQ(file.number(195), 0.0);               // quality of the receiver's inlet, held within 0 to 1
    EXPECT_LT(file.number(193), file.number(220));  // its enthalpy is below that of the liquid
    EXPECT_EQ(file.number(flashM), 0.0);
    EXPECT_EQ(file.number(bypassFlow), 0.0);
    EXPECT_EQ(file.number(totalM), file.number(liquidM));
}

TEST(BoosterEdges, TheRatioOfTheLowStageReadsOne) {
    for (double evaporating : {225.0, 241.15, 250.0}) {
        const ResultFile file = solve(booster, {{24, {1, evaporating}}});
        ASSERT_EQ(file.count(), booster.lines);
        EXPECT_EQ(file.number(lowStageRatio), 1.0);
        // Its flow line shows the flow of the whole system.
        EXPECT_EQ(file.number(lowStageRatio + 1), file.number(totalM));
        EXPECT_GT(file.number(114) / file.number(107), 1.5);
    }
}

// ---- ways of giving the same ----------------------------------------------------------------------------------------

TEST(Booster, EveryPairOfCapacitiesLeadsToTheSameSystem) {
    const ResultFile given = solve(booster, {});
    ASSERT_EQ(given.count(), booster.lines);
    const double medium = 60.0, low = 25.0, total = 85.0;
    const std::pair<Parameter, Parameter> others[] = {
        {{1, medium}, {2, medium / total}}, {{1, medium}, {3, low / total}}, {{2, total}, {1, low}},
        {{2, total}, {2, medium / total}},  {{2, total}, {3, low / total}},
    };
    for (const auto& [first, second] : others) {
        SCOPED_TRACE(std::to_string(first.option) + " and " + std::to_string(second.option));
        expectSameResult(solve(booster, {{8, first}, {28, second}}), given);
    }
}

TEST(Booster, NoExchangerIsOneSolution) {
    const ResultFile direct = solve(booster, {{20, {2, 0.0}}});
    ASSERT_EQ(direct.count(), booster.lines);
    for (int option : {1, 4}) {
        // A folder stands where a search would write its first scratch file.
        Plant plant;
        std::filesystem::create_directory(plant.folder.path("temporalA.txt"));
        plant(cycleRequest(14, booster.with({{20, {option, 0.0}}}), booster.fluid));
        ASSERT_TRUE(plant.hasResult()) << option;
        SCOPED_TRACE(option);
        expectSameResult(ResultFile(plant.resultText()), direct);
    }
}

TEST(Booster, OptionsOfTheExchangerAgree) {
    const ResultFile given = solve(booster, {{20, {2, 4.0}}});
    ASSERT_EQ(given.count(), booster.lines);
    const struct { int option, line; } options[] = {{1, 312}, {3, 255}, {4, 277}, {5, 269}};
    for (const auto& [option, line] : options) {
        const ResultFile file = solve(booster, {{20, {option, given.number(line)}}});
        ASSERT_EQ(file.count(), booster.lines) << option;
        EXPECT_NEAR(file.number(260), 4.0, 1e-4) << option;
        EXPECT_NEAR(file.number(301), given.number(301), 1e-5) << option;
    }
}

TEST(Booster, MassesOfTheReceiverBalance) {
    const ResultFile file = solve(booster, {{3, {1, 30.0}}, {26, {2, 1.0}}, {5, {1, 10.0}}});
    ASSERT_EQ(file.count(), booster.lines);
    EXPECT_NEAR(file.number(totalM), file.number(flashM) + file.number(liquidM), 1e-12);
    EXPECT_NEAR(file.number(liquidM), file.number(mediumFlow) + file.number(lowFlow), 1e-12);
    EXPECT_EQ(file.number(lowCapacity), 25.0);
    // Enthalpies of the receiver: what comes in leaves as vapor and as liquid.
    const double in = file.number(totalM) * file.number(193);
    EXPECT_NEAR(in, file.number(flashM) * file.number(204) + file.number(liquidM) * file.number(220), 1e-9 * in);
}

}  // namespace
}  // namespace frigana::test
