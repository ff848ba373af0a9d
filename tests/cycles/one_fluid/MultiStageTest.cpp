// The multi-stage cycle with flash tanks as a user runs it.
#include <cmath>

#include "14_ErrorControl.h"
#include "OneFluidCycles.h"

namespace frigana::test {
namespace {

// First lines of rows of a stage, 1 the lowest, and single lines.
constexpr int stageLines = 84;
int ofStage(int line, int stage) {
    return line + stageLines * (stage - 1);
}
int valveOutlet(int stage) {
    return ofStage(157, stage);
}
int tankIn(int stage) {
    return ofStage(189, stage);
}
int tankLiquid(int stage) {
    return ofStage(190, stage);
}
int injectionLine(int stage) {
    return ofStage(193, stage);
}
int compressorRows(int stage) {
    return ofStage(213, stage);
}
constexpr int evaporatorFlow = 23, condenserFlow = 106, liquidLine = 110;

// The same with another number of compressors; the tanks are all alike.
std::vector<Parameter> withStages(int compressors) {
    std::vector<Parameter> all = multiStage.parameters;
    all.resize(16);
    all[15] = {compressors, 0.0};
    for (int i = 1; i < compressors; ++i)
        for (const Parameter& p : {Parameter{2, 0.0}, {1, 0.0}, {1, 0.7}, {1, 0.85}, {1, 0.0}}) all.push_back(p);
    return all;
}

ResultFile solveStages(const std::vector<Parameter>& parameters, const char* fluid = "R134A.FLD") {
    Plant plant;
    plant(cycleRequest(11, parameters, fluid));
    return ResultFile(plant.hasResult() ? plant.resultText() : "");
}

int linesOf(int compressors) {
    return 413 + 125 * (compressors - 2);
}

TEST(MultiStageLayout, EverySectionStandsOnItsLine) {
    const ResultFile file = solve(multiStage, {});
    ASSERT_EQ(file.count(), multiStage.lines);
    EXPECT_EQ(file.trimmed(1), "2");
    EXPECT_EQ(file.trimmed(2), "11");
    EXPECT_EQ(file.trimmed(4), "R134A.FLD 1300");
    const struct {
        int line;
        const char* heading;
    } headings[] = {
        {5, " EVAPORATOR"},
        {26, " SUCTION LINE"},
        {46, " LAST STAGE COMPRESSOR"},
        {67, " DISCHARGE LINE"},
        {87, " CONDENSER"},
        {109, " LIQUID LINE"},
        {129, " EXPANSION DEVICE NEAR TO EVAPORATOR"},
        {147, " NUMBER OF STAGES"},
        // In fixed format, without a blank in front.
        {149, "STAGE  1 - EXPANSION VALVE"},
        {167, "STAGE  1 - FLASH TANK"},
        {192, "STAGE  1 - VAPOR INJECTION LINE"},
        {212, "STAGE  1 - COMPRESSOR"},
        {233, "STAGE  2 - EXPANSION VALVE"},
        {251, "STAGE  2 - FLASH TANK"},
        {276, "STAGE  2 - VAPOR INJECTION LINE"},
        {296, "STAGE  2 - COMPRESSOR"},
        {317, " PERFORMANCE PARAMETERS"},
        {359, " INFORMATION FOR GRAPHIC P-h"},
        {360, " CYCLE data for graphic P-h "},
        {417, " PRESSURE & ENTHALPY data for graphic P-h"},
        {450, " INFORMATION FOR GRAPHIC T-s"},
        {451, " CYCLE data for graphic T-s "},
        {508, " Temperature & enthalpy data for graphic T-s"},
    };
    for (const auto& row : headings) EXPECT_EQ(file.raw(row.line), row.heading) << row.line;
    EXPECT_EQ(file.raw(148), " 3");
    for (int line : {415, 416, 448, 449, 506, 507}) EXPECT_EQ(file.raw(line), " ") << line;
    int numbers = 0;
    for (int line = 5; line <= multiStage.lines; ++line) numbers += std::isfinite(file.number(line)) ? 1 : 0;
    EXPECT_EQ(numbers, multiStage.lines - 4 - 23 - 6);
}

// ---- codes ----------------------------------------------------------------------------------------------------------

TEST(MultiStageCodes, EveryReachableCheckEndsTheRunWithItsText) {
    const CodeCase rows[] = {
        {211201, "Error: Condenser temperature > critical temperature (374.2100 K)", {{11, {1, 380.0}}}},
        {211202, "Error: Condenser pressure > critical pressure (4059.2800 kPa)", {{11, {2, 4100.0}}}},
        {211205,
         "Error: Condenser outlet pressure was less than or equal to zero!",
         {{11, {2, 100.0}}, {13, {1, 200.0}}}},
        {211206, "Error: Condenser - outlet temperature is out of range!", {{11, {1, 280.0}}, {12, {2, 190.0}}}},
        {211207, "Error: Condenser - subcooling is out of range!", {{12, {1, 320.0}}}},
        {211208, "Error: Discharge line - pressure drop is out of range!", {{10, {2, 50.0}}}},
        {211209,
         "Error: Discharge line - drop of saturation temperature is out of range!",
         {{11, {1, 370.0}}, {10, {1, 1000.0}}}},
        {211210, "Error: Evaporating temperature > critical temperature (374.2100 K)", {{1, {1, 380.0}}}},
        {211211, "Error: Evaporating temperature > condenser temperature!", {{1, {1, 320.0}}}},
        {211212, "Error: Evaporating pressure > critical pressure (4059.2800 kPa)", {{1, {2, 4100.0}}}},
        {211213, "Error: Evaporating pressure > condenser pressure!", {{1, {2, 2000.0}}}},
        {211216, "Error: Evaporator - inlet pressure > condenser pressure!", {{1, {2, 1000.0}}, {3, {1, 100.0}}}},
        {211217,
         "Error: Evaporator - outlet pressure is less than or equal to zero!",
         {{1, {2, 200.0}}, {3, {1, 500.0}}}},
        {211218, "Error: Evaporator - superheat is out of range!", {{2, {1, 240.0}}}},
        {211219,
         "Error: Suction line - pressure drop is out of range!",
         {{1, {1, 350.0}}, {11, {1, 365.0}}, {5, {2, 60.0}}}},
        {211220, "Error: Suction line - drop of saturation temperature is out of range!", {{5, {1, 300.0}}}},
        {211221,
         "Error: Suction line - outlet pressure is less than or equal to zero!",
         {{1, {1, 250.0}}, {5, {2, 100.0}}}},
        {211222, "Error: Suction line - outlet temperature > critical temperature (374.2100 K)", {{4, {1, 380.0}}}},
        {211223, "Error: Suction line - temperature change is out of range!", {{4, {1, 250.0}}}},
        {211224,
         "Error: Suction line drop of saturation temperature is out of range!",
         {{1, {1, 200.0}}, {2, {2, 150.0}}, {4, {2, 55.0}}},
         "R245FA.FLD"},
        {211234,
         "Out of range: Stage 1 - Average saturation temperature should be between condensing and evaporating "
         "temperature",
         {{21, {2, 330.0}}, {26, {2, 300.0}}}},
        {211225,
         "Error: Vapor injection line - stage 1 - high pressure drop may be a problem for this cycle!",
         {{18, {1, 900.0}}}},
        {211226,
         "Error: Vapor injection line - stage 2 - injection mass flow rate was less than or equal to zero!",
         {{12, {2, 100.0}}}},
        {211227,
         "Error: Vapor injection line - stage 2 - injection mass flow was greater than possible!",
         {{11, {1, 424.0}}, {12, {2, 0.0}}, {1, {1, 300.0}}, {21, {2, 302.0}}, {26, {2, 304.0}}},
         "BUTANE.FLD"},
        {211228,
         "Error: Liquid line - pressure drop is out of range!",
         {{1, {1, 300.0}}, {11, {1, 372.0}}, {21, {2, 350.0}}, {26, {2, 360.0}}, {15, {2, 60.0}}}},
        {211229,
         "Error: Liquid line drop of saturation temperature is out of range!",
         {{11, {1, 290.0}}, {15, {1, 900.0}}}},
        {211230,
         "Error: Liquid line - outlet pressure was less than or equal to zero!",
         {{1, {1, 225.0}}, {11, {1, 250.0}}, {15, {2, 100.0}}}},
        {211231, "Error: Liquid line - change in temperature is out of range!", {{14, {1, 320.0}}}},
        {211300,
         "Error: wet compression in last stage compressor, increase the inlet superheat",
         {{2, {2, 0.0}}, {4, {2, 0.0}}, {7, {1, 1.0}}, {19, {1, 1.0}}, {24, {1, 1.0}}, {17, {2, 0.0}}, {22, {2, 0.0}}},
         "ISOBUTAN.FLD"},
        {211233, "Error: Discharge line - temperature change is out of range!", {{9, {1, 400.0}}}},
    };
    const UnreachableCode unreachable[] = {
        {211228, "of a tank: the quality behind a valve is that of a flash, and -777 where the flash fails"},
        {211232,
         "the liquid leaves its tank saturated, so that it is subcooled by its fall at most, which was checked"},
    };
    checkCodes(multiStage, rows, unreachable, 32);
}

TEST(MultiStageCodes, MessagesOfAStageCarryItsNumber) {
    const CodeCase rows[] = {
        {211234,
         "Out of range: Stage 2 - Average saturation temperature should be between condensing and evaporating "
         "temperature",
         {{21, {2, 270.0}}, {26, {2, 253.15}}}},
        {211225,
         "Error: Vapor injection line - stage 2 - high pressure drop may be a problem for this cycle!",
         {{23, {1, 900.0}}}},
    };
    checkCodes(multiStage, rows, {}, 2);
}

// ---- edge cases -----------------------------------------------------------------------------------------------------

TEST(MultiStageEdges, WithTwoCompressorsTheCapacityMayBeGivenInEveryWay) {
    auto parameters = withStages(2);
    const ResultFile volume = solveStages(parameters);
    ASSERT_EQ(volume.count(), linesOf(2));
    parameters[5] = {2, volume.number(108)};
    expectSameResult(solveStages(parameters), volume);
    parameters[5] = {3, volume.number(25)};
    expectSameResult(solveStages(parameters), volume);
}

TEST(MultiStageEdges, EqualRatiosAreTakenFromTheWholeRatio) {
    const ResultFile file = solve(multiStage, {{10, {1, 100.0}}});
    ASSERT_EQ(file.count(), multiStage.lines);
    const double P4 = file.number(34), P12 = file.number(54);
    const double r = std::cbrt(P12 / P4);
    EXPECT_NEAR(file.number(compressorRows(1) + 7), P4 * r, 1e-9 * P12);
    EXPECT_NEAR(file.number(compressorRows(2) + 7), P4 * r * r, 1e-9 * P12);
}

TEST(MultiStageEdges, TheRoomOfTheHighestInjectionLineEndsAtTheCondenser) {
    // The discharge line takes 800 kPa; the condensing pressure, and not that of the discharge, lies above the tank.
    const ResultFile open = solve(multiStage, {{10, {1, 800.0}}});
    ASSERT_EQ(open.count(), multiStage.lines);
    const double Pc = open.number(88), P12 = open.number(54), stage = open.number(compressorRows(2) + 7);
    EXPECT_GT(P12, Pc + 700.0);
    const double room = Pc - stage;
    EXPECT_EQ(
        resultText(multiStage, {{10, {1, 800.0}}, {23, {1, room + 1.0}}}),
        failure(211225, "Error: Vapor injection line - stage 2 - high pressure drop may be a problem for this cycle!"));
    const ResultFile below = solve(multiStage, {{10, {1, 800.0}}, {12, {2, 0.0}}, {23, {1, room - 20.0}}});
    EXPECT_EQ(below.count(), multiStage.lines) << below.trimmed(3);
}

TEST(MultiStageEdges, ArraysEndWithSevenCompressors) {
    for (int compressors = 2; compressors <= 7; ++compressors) {
        const ResultFile file = solveStages(withStages(compressors));
        ASSERT_EQ(file.count(), linesOf(compressors)) << compressors;
        EXPECT_EQ(file.number(148), compressors);
        EXPECT_EQ(file.number(evaporatorFlow), file.number(tankLiquid(1)));
        EXPECT_EQ(file.number(condenserFlow), file.number(tankIn(compressors - 1)));
    }
    auto eight = withStages(8);
    ASSERT_EQ(eight.size(), 51U);
    eight.pop_back();
    Plant plant;
    testing::internal::CaptureStderr();
    plant(cycleRequest(11, eight));
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(runReport.end, RunEnd::runtimeError);
    EXPECT_FALSE(plant.hasResult());
}

TEST(MultiStageEdges, ATankThatIsFedWithSubcooledLiquidHasNoVapor) {
    EXPECT_EQ(resultText(multiStage, {{12, {2, 60.0}}}),
              failure(211226,
                      "Error: Vapor injection line - stage 2 - injection mass flow rate was less than or equal "
                      "to zero!"));
}

TEST(MultiStageEdges, AGivenCondenserCapacityLeavesTheUpperTanksWithoutFlow) {
    const ResultFile volume = solve(multiStage, {});
    ASSERT_EQ(volume.count(), multiStage.lines);
    const ResultFile file = solve(multiStage, {{6, {2, volume.number(108)}}});
    ASSERT_EQ(file.count(), multiStage.lines);
    EXPECT_NEAR(file.number(condenserFlow), volume.number(condenserFlow), 1e-9);
    for (int k = 0; k < 3; ++k) EXPECT_EQ(file.number(tankIn(2) + k), 0.0) << k;
    EXPECT_EQ(file.raw(tankIn(1)), file.raw(condenserFlow));
    const double q = file.number(valveOutlet(1) + 5);
    EXPECT_NEAR(file.number(evaporatorFlow), file.number(condenserFlow) * (1.0 - q), 1e-12);
    EXPECT_EQ(file.number(ofStage(232, 2)), 0.0);  // power of compressor 2
    EXPECT_GT(file.number(evaporatorFlow), 1.05 * volume.number(evaporatorFlow));
}

TEST(MultiStageEdges, ADropOfSaturationTemperatureOfAnInjectionLineIsOnlyReported) {
    const ResultFile none = solve(multiStage, {});
    const ResultFile file = solve(multiStage, {{18, {2, 3.0}}});
    ASSERT_EQ(file.count(), multiStage.lines);
    EXPECT_EQ(file.number(ofStage(208, 1)), 3.0);
    EXPECT_EQ(file.number(ofStage(207, 1)), 0.0);
    for (int line = 5; line <= 358; ++line) {
        if (line == ofStage(208, 1) || !std::isfinite(none.number(line))) continue;
        EXPECT_NEAR(file.number(line), none.number(line), 1e-9 * std::max(1.0, std::fabs(none.number(line)))) << line;
    }
    // A pressure drop lifts the tank above the pressure of its stage.
    const ResultFile lifted = solve(multiStage, {{18, {1, 8.0}}});
    ASSERT_EQ(lifted.count(), multiStage.lines);
    EXPECT_NEAR(lifted.number(injectionLine(1)), none.number(injectionLine(1)) + 8.0, 1e-9);
    EXPECT_NEAR(lifted.number(injectionLine(1) + 7), none.number(injectionLine(1)), 1e-9);
    EXPECT_GT(lifted.number(ofStage(208, 1)), 0.0);
}

TEST(MultiStageEdges, TheOptionOfTheFirstStageCountsForAll) {
    const ResultFile ratios = solve(multiStage, {{21, {1, 0.0}}, {26, {2, 290.0}}});
    expectSameResult(ratios, solve(multiStage, {}));
    const ResultFile levels = solve(multiStage, {{21, {2, 275.0}}, {26, {1, 295.0}}});
    ASSERT_EQ(levels.count(), multiStage.lines);
    EXPECT_NEAR(levels.number(injectionLine(1) + 6), 275.0, 0.002);
    EXPECT_NEAR(levels.number(injectionLine(2) + 6), 295.0, 0.002);
}

TEST(MultiStageEdges, LinesThatAreNotComputedAreZero) {
    const ResultFile file = solve(multiStage, {{17, {2, 4.0}}, {22, {2, 3.0}}});
    ASSERT_EQ(file.count(), multiStage.lines);
    EXPECT_EQ(file.number(ofStage(209, 1)), 4.0);
    for (int line : {345, 354}) EXPECT_EQ(file.number(line), 0.0) << line;
}

TEST(MultiStageEdges, TheTankKeepsTheBubbleTemperatureAndTheValveItsOwn) {
    const ResultFile file = solve(multiStage, {}, "R407C.MIX");
    ASSERT_EQ(file.count(), multiStage.lines);
    for (int stage : {1, 2}) {
        const StateRow valve = stateRow(file, valveOutlet(stage)), inlet = stateRow(file, ofStage(168, stage)),
                       liquid = stateRow(file, ofStage(175, stage));
        EXPECT_EQ(valve.TSAT, valve.T);
        EXPECT_EQ(inlet.T, valve.T);
        EXPECT_NEAR(inlet.TSAT, liquid.T, 1e-9);
        EXPECT_LT(inlet.TSAT, inlet.T);
    }
}

// ---- the cycle ------------------------------------------------------------------------------------------------------

TEST(MultiStage, VolumeAndEvaporatorCapacityLeadToTheSameCycle) {
    const ResultFile volume = solve(multiStage, {});
    ASSERT_EQ(volume.count(), multiStage.lines);
    expectSameResult(solve(multiStage, {{6, {3, volume.number(25)}}}), volume);
}

TEST(MultiStage, FlowsOfEveryTankAreContinuous) {
    const ResultFile file = solveStages(withStages(5));
    ASSERT_EQ(file.count(), linesOf(5));
    for (int stage = 1; stage <= 4; ++stage) {
        const double in = file.number(tankIn(stage));
        EXPECT_NEAR(in, file.number(tankLiquid(stage)) + file.number(tankLiquid(stage) + 1), 1e-12);
        EXPECT_EQ(in, file.number(stage < 4 ? tankLiquid(stage + 1) : condenserFlow));
        EXPECT_EQ(file.raw(ofStage(231, stage)), file.raw(tankLiquid(stage)));
        EXPECT_EQ(file.raw(ofStage(210, stage)), file.raw(tankLiquid(stage) + 1));
    }
}

TEST(MultiStage, ALiquidLineThatEndsSaturatedHoldsLiquid) {
    for (const char* fluid : {"R134A.FLD", "PROPANE.FLD", "R32.FLD", "AMMONIA.FLD", "R1234YF.FLD", "R407C.MIX"})
        for (double drop : {0.0, 3.0, 7.0, 12.0, 19.0}) {
            const ResultFile file = solve(multiStage, {{14, {3, 0.0}}, {15, {1, drop}}}, fluid);
            ASSERT_EQ(file.count(), multiStage.lines) << fluid << drop;
            const StateRow outlet = stateRow(file, liquidLine + 7);
            EXPECT_EQ(outlet.Q, 0.0) << fluid << drop;
            EXPECT_NEAR(outlet.T, outlet.TSAT, 1e-6) << fluid << drop;
            EXPECT_NEAR(outlet.P, file.number(liquidLine) - drop, 1e-9) << fluid << drop;
        }
}

}  // namespace
}  // namespace frigana::test
