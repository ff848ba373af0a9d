// The two-stage cycle with heat exchanger as a user runs it.
#include <cmath>

#include "OneFluidCycles.h"

namespace frigana::test {
namespace {

// First lines of rows, and single lines.
constexpr int lowOutlet = 54, highInlet = 68, highOutlet = 75, condenserOutlet = 116, liquidOutlet = 194,
              injectionInlet = 204, injectionOutlet = 211;
constexpr int total = 225, lowStage = 226, fraction = 229;

TEST(TwoStageLayout, EverySectionStandsOnItsLine) {
    const ResultFile file = solve(twoStage, {});
    ASSERT_EQ(file.count(), twoStage.lines);
    EXPECT_EQ(file.trimmed(1), "2");
    EXPECT_EQ(file.trimmed(2), "10");
    EXPECT_EQ(file.trimmed(4), "R134A.FLD 1300");
    const struct {
        int line;
        const char* heading;
    } headings[] = {
        {5, "EVAPORATOR"},
        {26, "SUCTION LINE"},
        {46, "LOW COMPRESSOR"},
        {67, "HIGH COMPRESSOR"},
        {88, "DISCHARGE LINE"},
        {108, "CONDENSER"},
        {130, "LIQUID LINE"},
        {150, "EXPANSION DEVICE"},
        {168, "LIQUID INJECTION EXPANSION VALVE"},
        {186, "HEAT EXCHANGER"},
        {224, "PERFORMANCE PARAMETERS"},
        {257, "INFORMATION FOR GRAPHIC P-h"},
        {258, "CYCLE data for graphic P-h"},
        {301, "PRESSURE & ENTHALPY data for graphic P-h"},
        {334, "INFORMATION FOR GRAPHIC T-s"},
        {335, "CYCLE data for graphic T-s"},
        {378, "Temperature & enthalpy data for graphic T-s"},
    };
    for (const auto& row : headings) EXPECT_EQ(file.trimmed(row.line), row.heading) << row.line;
    for (int line : {299, 300, 332, 333, 376, 377}) EXPECT_EQ(file.raw(line), " ") << line;
    int numbers = 0;
    for (int line = 5; line <= twoStage.lines; ++line) numbers += std::isfinite(file.number(line)) ? 1 : 0;
    EXPECT_EQ(numbers, twoStage.lines - 4 - 17 - 6);
}

// ---- codes ----------------------------------------------------------------------------------------------------------

TEST(TwoStageCodes, EveryCheckEndsTheRunWithItsText) {
    const CodeCase rows[] = {
        {210201, "Error: Condenser temperature > critical temperature (374.2100 K)", {{13, {1, 380.0}}}},
        {210202, "Error: Condenser pressure > critical pressure (4059.2800 kPa)", {{13, {2, 4100.0}}}},
        {210205,
         "Error: Condenser outlet pressure was less than or equal to   zero!",
         {{13, {2, 100.0}}, {15, {1, 200.0}}}},
        {210206, "Error: Condenser - outlet temperature is out of range!", {{13, {1, 280.0}}, {14, {2, 190.0}}}},
        {210207, "Error: Condenser - subcooling is out of range!", {{14, {1, 320.0}}}},
        {210208, "Error: Discharge line - subcooling is out of range!", {{12, {2, 50.0}}}},
        {210209, "Error: Discharge line - subcooling is out of range!", {{13, {1, 370.0}}, {12, {1, 1000.0}}}},
        {210210,
         "Error: Heat exchanger-liquid side outlet pressure  is less than or equal to zero!",
         {{13, {1, 250.0}}, {1, {1, 230.0}}, {20, {1, 150.0}}}},
        {210211,
         "Error: Heat exchanger- liquid side  outlet temperature is less than or equal to zero!",
         {{13, {1, 290.0}}, {14, {2, 100.0}}, {19, {1, 195.0}}}},
        {210212, "Error: Liquid line - pressure drop is out of range!", {{13, {1, 370.0}}, {17, {2, 60.0}}}},
        {210213,
         "Error: Liquid line drop of saturation temperature is out of range!",
         {{13, {2, 700.0}}, {17, {1, 698.0}}},
         "C12.FLD"},
        {210214,
         "Error: Liquid line - outlet pressure is less than or equal to zero!",
         {{13, {1, 250.0}}, {1, {1, 240.0}}, {17, {2, 100.0}}}},
        {210215, "Error: Liquid line - change in temperature is out of range!", {{16, {1, 320.0}}}},
        {210216,
         "Error: Liquid line - outlet subcooling is out of range!",
         {{14, {2, 100.0}}, {19, {1, 50.0}}, {16, {2, 60.0}}}},
        {210217, "Error: Evaporating temperature > critical temperature (374.2100 K)", {{1, {1, 380.0}}}},
        {210218, "Error: Evaporating temperature > condenser temperature!", {{1, {1, 320.0}}}},
        {210219, "Error: Evaporating pressure > critical pressure (4059.2800 kPa)", {{1, {2, 4100.0}}}},
        {210220, "Error: Evaporating pressure > condenser pressure!", {{1, {2, 2000.0}}}},
        {210223, "Error: Evaporator - inlet pressure > condenser pressure!", {{1, {2, 1000.0}}, {3, {1, 100.0}}}},
        {210224,
         "Error: Evaporator - outlet pressure was less than or equal to zero!",
         {{1, {2, 200.0}}, {3, {1, 500.0}}}},
        {210225, "Error: Evaporator - superheat is out of range!", {{2, {1, 240.0}}}},
        {210226,
         "Error: Suction line - pressure drop is out of range!",
         {{1, {1, 350.0}}, {13, {1, 365.0}}, {5, {2, 60.0}}}},
        {210227, "Error: Suction line - drop of saturation temperature is out of range!", {{5, {1, 300.0}}}},
        {210228,
         "Error: Compressor - inlet pressure was less than or equal to zero!",
         {{1, {1, 250.0}}, {5, {2, 100.0}}}},
        {210229, "Error: Suction line - outlet temperature > critical temperature (374.2100 K)", {{4, {1, 380.0}}}},
        {210230, "Error: Suction line - temperature change is out of range!", {{4, {1, 250.0}}}},
        {210231,
         "Error: Suction line drop of saturation temperature is out of range!",
         {{1, {1, 200.0}}, {2, {2, 150.0}}, {4, {2, 55.0}}},
         "R245FA.FLD"},
        {210233,
         "Error: Liquid line injection - inlet pressure was greater than condenser outlet pressure!",
         {{25, {1, 1200.0}}}},
        {210233,
         "Error: Liquid line injection - inlet pressure was greater than condenser outlet pressure!",
         {{23, {1, 900.0}}}},
        {210240,
         "Error: Liquid line injection - inlet pressure was less than evaporator outlet pressure!",
         {{25, {1, 100.0}}}},
        {201205,
         "Error: Injection line pressure drop  - injection line pressure drop was out of range!",
         {{25, {1, 300.0}}, {23, {1, 400.0}}}},
        {210234,
         "Error: Heat Exchanger - inlet pressure was greater than condenser outlet pressure!",
         {{21, {1, 900.0}}}},
        {210236, "Error: Heat Exchanger - Injection Vapor Outlet superheat should be reduced!", {{18, {1, 100.0}}}},
        {210301,
         "Error: wet compression in high stage compressor, increase the inlet superheat",
         {{2, {2, 0.0}}, {4, {2, 0.0}}, {7, {1, 1.0}}, {9, {1, 1.0}}, {18, {1, 0.0}}},
         "ISOBUTAN.FLD"},
        {210235, "Error: Discharge line - temperature change is out of range!", {{11, {1, 400.0}}}},
    };
    checkCodes(twoStage, rows, {}, 34);
}

// ---- edge cases -----------------------------------------------------------------------------------------------------

TEST(TwoStageEdges, NoSuperheatOfTheInjectionIsTheDewPoint) {
    for (const char* fluid : {"R134A.FLD", "PROPANE.FLD", "R32.FLD", "R410A.MIX", "R407C.MIX"}) {
        const ResultFile file = solve(twoStage, {{18, {1, 0.0}}}, fluid);
        ASSERT_EQ(file.count(), twoStage.lines) << fluid;
        const StateRow outlet = stateRow(file, injectionOutlet);
        EXPECT_EQ(outlet.Q, 1.0) << fluid;
        EXPECT_NEAR(outlet.T, outlet.TSAT, 1e-6) << fluid;
    }
}

TEST(TwoStageEdges, TheGeometricMeanLiesBetweenBothPressures) {
    const ResultFile file = solve(twoStage, {{12, {1, 30.0}}, {23, {1, 10.0}}});
    ASSERT_EQ(file.count(), twoStage.lines);
    const double P6 = file.number(47), P12 = file.number(highOutlet);
    EXPECT_NEAR(file.number(highInlet), std::sqrt(P6 * P12), 1e-9 * P12);
    EXPECT_EQ(file.raw(lowOutlet), file.raw(highInlet));
    EXPECT_NEAR(file.number(injectionOutlet), file.number(highInlet) + 10.0, 1e-9);
    // It is compared with the condenser only.
    EXPECT_EQ(
        resultText(twoStage, {{23, {1, 900.0}}}),
        failure(210233, "Error: Liquid line injection - inlet pressure was greater than condenser outlet pressure!"));
}

TEST(TwoStageEdges, AnInjectedFractionNearOneLeavesHardlyAnyVaporForTheEvaporator) {
    // Butane condensed just below its critical point evaporates nearly as a whole when it is expanded.
    const auto nearly = [](double P9) {
        return solve(twoStage,
                     {{1, {1, 285.0}},
                      {2, {2, 60.0}},
                      {6, {4, 10.0}},
                      {13, {1, 424.0}},
                      {14, {2, 0.0}},
                      {18, {1, 0.0}},
                      {19, {1, 60.0}},
                      {25, {1, P9}}},
                     "BUTANE.FLD");
    };
    const ResultFile almost = nearly(580.0);
    ASSERT_EQ(almost.count(), twoStage.lines);
    const double x = almost.number(fraction);
    EXPECT_GT(x, 0.99);
    EXPECT_LT(x, 1.0);
    EXPECT_NEAR(almost.number(lowStage), almost.number(total) * (1.0 - x), 1e-9 * almost.number(total));
    EXPECT_GT(almost.number(total), 100.0 * almost.number(lowStage));
    // Beyond one nothing stops the calculation: the total flow turns negative.
    const ResultFile beyond = nearly(560.0);
    ASSERT_EQ(beyond.count(), twoStage.lines);
    EXPECT_GT(beyond.number(fraction), 1.0);
    EXPECT_LT(beyond.number(total), 0.0);
}

TEST(TwoStageEdges, LinesThatAreNotComputedAreZero) {
    const ResultFile file = solve(twoStage, {{21, {1, 5.0}}, {22, {1, 4.0}}, {23, {1, 2.0}}});
    ASSERT_EQ(file.count(), twoStage.lines);
    EXPECT_NEAR(file.number(218), 5.0, 1e-9);
    for (int line : {219, 220, 250}) EXPECT_EQ(file.raw(line), file.raw(41)) << line;  // no drop in the suction line
    EXPECT_EQ(file.number(219), 0.0);
}

TEST(TwoStageEdges, TheTwoPhaseRowOfTheInjectionTakesItsOwnTemperature) {
    const ResultFile file = solve(twoStage, {}, "R407C.MIX");
    ASSERT_EQ(file.count(), twoStage.lines);
    const StateRow inlet = stateRow(file, injectionInlet);
    EXPECT_GT(inlet.Q, 0.0);
    EXPECT_LT(inlet.Q, 1.0);
    EXPECT_EQ(file.raw(injectionInlet + 6), file.raw(injectionInlet + 1));
}

TEST(TwoStageEdges, WithoutAnIntermediateSettingThereIsNoPressureToInjectAt) {
    const Parameter settings[] = {{0, 300.0}, {3, 300.0}};
    for (const Parameter& setting : settings)
        EXPECT_EQ(resultText(twoStage, {{25, setting}}),
                  failure(210236, "Error: Heat Exchanger - Injection Vapor Outlet superheat should be reduced!"));
}

// ---- the cycle ------------------------------------------------------------------------------------------------------

TEST(TwoStage, TheCapacityMayBeGivenInFourWays) {
    // A plant whose high compressor reaches the 0.2 m3/s that its option asks for.
    const ResultFile given = solve(twoStage, {{6, {1, 1.0}}});
    ASSERT_EQ(given.count(), twoStage.lines);
    const struct { int option, line; } options[] = {{1, 63}, {2, 84}, {3, 129}, {4, 25}};
    for (const auto& [option, line] : options) {
        const ResultFile file = solve(twoStage, {{6, {option, given.number(line)}}});
        expectSameResult(file, given);
    }
}

TEST(TwoStage, AGivenIntermediatePressureIsThatBehindTheExchanger) {
    const ResultFile mean = solve(twoStage, {{23, {1, 10.0}}});
    ASSERT_EQ(mean.count(), twoStage.lines);
    expectSameResult(solve(twoStage, {{23, {1, 10.0}}, {25, {1, mean.number(injectionOutlet)}}}), mean);
}

TEST(TwoStage, TheExchangerSubcoolsTheLiquidByWhatWasAskedFor) {
    const ResultFile file = solve(twoStage, {{20, {1, 12.0}}});
    ASSERT_EQ(file.count(), twoStage.lines);
    EXPECT_NEAR(file.number(condenserOutlet + 1) - file.number(liquidOutlet + 1), 20.0, 1e-9);
    EXPECT_NEAR(file.number(condenserOutlet) - file.number(liquidOutlet), 12.0, 1e-9);
    // What the liquid loses the injection gains.
    const double mi = file.number(222);
    EXPECT_NEAR(mi * (file.number(injectionOutlet + 3) - file.number(injectionInlet + 3)), file.number(223), 1e-9);
    EXPECT_NEAR(mi, file.number(total) * file.number(fraction), 1e-12);
}

}  // namespace
}  // namespace frigana::test
