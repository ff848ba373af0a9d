// The pumped CO2 system with its secondary loop as a user runs it.
#include "Systems.h"

namespace frigana::test {
namespace {

TEST(PumpedSystemCodes, EveryCheckOfTheLoopEndsTheRunWithItsText) {
    const CodeCase rows[] = {
        {201213, "Error: Evaporating temperature > Critical temperature (304.1282 K)", {{2, 1, {1, 310.0}}}},
        {201215, "Error: Evaporating pressure > Critical pressure (7377.3000 kPa)", {{2, 1, {2, 7400.0}}}},
        {201220,
         "Error: Evaporator - outlet pressure was less or equal than zero!",
         {{2, 1, {2, 450.0}}, {2, 3, {1, 1000.0}}}},
        {201221, "Error: Evaporator - superheat is out of range!", {{2, 2, {1, 250.0}}}},
        {201222, "Error: Low pressure vapor line - pressure drop is out of range!", {{2, 5, {2, 25.0}}}},
        {201223,
         "Error: Low pressure vapor line - drop of saturation temperature is out of range!",
         {{2, 1, {2, 700.0}}, {2, 3, {1, 0.0}}, {2, 5, {1, 698.0}}},
         Fluids{"R134A.FLD", "C12.FLD"}},
        {201224,
         "Error: Receiver - vapor inlet pressure was less or equal than zero!",
         {{2, 1, {1, 250.0}}, {2, 3, {1, 0.0}}, {2, 5, {2, 100.0}}},
         Fluids{"AMMONIA.FLD", "R134A.FLD"}},
        {201225,
         "Error: Low pressure vapor line - outlet temperature > critical temperature (304.1282 K)",
         {{2, 4, {1, 310.0}}}},
        {201226, "Error: Low pressure vapor line - temperature change is out of range!", {{2, 4, {1, 250.0}}}},
        {201227,
         "Error: Low pressure vapor line drop of saturation temperature is out of range!",
         {{2, 1, {1, 200.0}}, {2, 3, {1, 0.0}}, {2, 5, {1, 0.0}}, {2, 2, {2, 150.0}}, {2, 4, {2, 55.0}}},
         Fluids{"AMMONIA.FLD", "R245FA.FLD"}},
        // The equation of ammonia reaches the published critical pressure a little below the critical temperature.
        {201202,
         "Error: Condenser pressure > Critical pressure (11333.0000 kPa)",
         {{2, 1, {1, 405.385}}, {2, 3, {2, 0.0}}, {2, 5, {1, 0.0}}},
         Fluids{"R134A.FLD", "AMMONIA.FLD"}},
        {201206, "Error: Condenser - outlet temperature is out of range!", {{2, 8, {2, 190.0}}}},
        {201207, "Error: Condenser - subcooling is out of range!", {{2, 8, {1, 280.0}}}},
        {201228, "Error: High pressure liquid line - pressure drop is out of range!", {{2, 10, {2, 15.0}}}},
        {201229,
         "Error: High pressure liquid line - drop of saturation temperature is out of range!",
         {{2, 1, {2, 0.3}}, {2, 3, {1, 0.0}}, {2, 5, {1, 0.0}}, {2, 10, {1, 1000.0}}},
         Fluids{"R134A.FLD", "C12.FLD"}},
        {201230, "Error: High pressure liquid line - temperature change is out of range!", {{2, 9, {1, 250.0}}}},
    };
    const UnreachableCode unreachable[] = {
        {201216, "drops are not negative, so that the receiver's pressure is never above the evaporator's"},
        {201219, "as 201216; the evaporator's inlet lies above its mean pressure"},
        {201214, "the receiver is never at a higher pressure than the evaporator, so its temperature is no higher"},
        {201205, "the same pressure has passed the check of the receiver, 201224"},
    };
    checkCodes(pumped, rows, unreachable, 20);
}

// Those of the system are the cascade's.
TEST(PumpedSystemCodes, WithoutHeatOrWithoutADifferenceTheRunEnds) {
    const CodeCase rows[] = {
        {204201,
         "Error: Heat Transfer in Intermediate Heat Exchanger was less or equal of zero!",
         {{2, 6, {1, -100.0}}}},
        {204202,
         "Error: Condenser temperature  was less than or equal to evaporator temperature!",
         {{2, 11, {1, 0.0}}}},
    };
    checkCodes(pumped, rows, {}, 2);
    EXPECT_EQ(resultText(pumped, {{1, 11, {1, 410.0}}}),
              failure(201201, "Error: Condenser temperature > Critical temperature (405.4000 K)"));
}

// ---- lines of the result, of the loop and of the system -------------------------------------------------------------

constexpr int loop = 285;
constexpr int evaporatorInlet = loop + 6, evaporatorOutlet = loop + 13, lineOutlet = loop + 34, receiver = loop + 47,
              condenserOutlet = loop + 54, liquidLineOutlet = loop + 76, pumpInlet = loop + 89, pumpOutlet = loop + 96;
constexpr int superheat = loop + 22, flow = loop + 23, capacity = loop + 25, inletSuperheat = loop + 63,
              condenserFlow = loop + 65, condenserCapacity = loop + 67, pumpFlow = loop + 105, pumpPower = loop + 106;
constexpr int overall = 527;

void expectSameLines(const ResultFile& file, const ResultFile& expected) {
    ASSERT_EQ(expected.count(), pumped.lines);
    ASSERT_EQ(file.count(), expected.count());
    for (int line = 1; line <= expected.count(); ++line) EXPECT_EQ(file.raw(line), expected.raw(line)) << line;
}

// ---- edge cases -----------------------------------------------------------------------------------------------------

TEST(PumpedSystemEdges, TheOverallBlockBeginsWithBothFluids) {
    const ResultFile file = solve(pumped);
    ASSERT_EQ(file.count(), pumped.lines);
    EXPECT_EQ(file.trimmed(overall), "OVERALL PARAMETERS");
    EXPECT_EQ(file.trimmed(overall + 1), "AMMONIA.FLD 0");
    EXPECT_EQ(file.trimmed(overall + 2), "CO2.FLD 1");
}

TEST(PumpedSystemEdges, TheOverallPowerHoldsThatOfThePump) {
    const ResultFile file = solve(pumped);
    EXPECT_GT(file.number(pumpPower), 0.0);
    EXPECT_NEAR(file.number(overall + 5), file.number(66) + file.number(pumpPower), 1e-12);
    EXPECT_NEAR(file.number(overall + 6), 100.0 / file.number(overall + 5), 1e-12);
}

TEST(SecondaryLoopEdges, AQualityOfOneIsASuperheatOfZero) {
    const Changes saturatedLine{{2, 4, {2, 3.0}}};
    Changes quality = saturatedLine, none = saturatedLine;
    quality.push_back({2, 2, {3, 1.0}});
    none.push_back({2, 2, {2, 0.0}});
    const ResultFile file = solve(pumped, quality);
    expectSameLines(file, solve(pumped, none));
    EXPECT_EQ(file.number(superheat), 0.0);
    EXPECT_NEAR(stateRow(file, evaporatorOutlet).Q, 1.0, 1e-12);
}

TEST(SecondaryLoopEdges, AQualityAtTheEndOfTheVaporLineNeedsADrop) {
    const ResultFile file = solve(pumped, {{2, 4, {3, 0.8}}});
    ASSERT_EQ(file.count(), pumped.lines);
    EXPECT_NEAR(stateRow(file, lineOutlet).Q, 0.8, 1e-12);
    EXPECT_NEAR(stateRow(file, lineOutlet).P, stateRow(file, evaporatorOutlet).P - 20.0, 1e-9);
    // Without a drop the outlet is a copy, and the quality has no effect.
    const ResultFile copy = solve(pumped, {{2, 4, {3, 0.8}}, {2, 5, {1, 0.0}}});
    for (int i = 0; i < 7; ++i) EXPECT_EQ(copy.raw(lineOutlet + i), copy.raw(evaporatorOutlet + i)) << i;
    expectSameLines(solve(pumped, {{2, 4, {3, 0.2}}, {2, 5, {1, 0.0}}}), copy);
}

TEST(SecondaryLoopEdges, WithoutItsCapacityThereIsNoHeat) {
    for (int option : {0, 2, 3})
        EXPECT_EQ(resultText(pumped, {{2, 6, {option, 100.0}}}),
                  failure(204201, "Error: Heat Transfer in Intermediate Heat Exchanger was less or equal of zero!"))
            << option;
}

// ---- the loop -------------------------------------------------------------------------------------------------------

TEST(SecondaryLoop, TheEvaporatorsInletIsSaturatedAtItsTemperature) {
    const ResultFile file = solve(pumped);
    const StateRow inlet = stateRow(file, evaporatorInlet);
    EXPECT_EQ(inlet.Q, 0.0);
    EXPECT_EQ(inlet.TSAT, inlet.T);
    EXPECT_NEAR(inlet.T, stateRow(file, pumpOutlet).T + 0.2, 1e-9);
    // Its row shows the saturation pressure, not that of the evaporator's inlet, and so do the drops on both sides.
    const StateRow end = stateRow(file, liquidLineOutlet);
    EXPECT_EQ(end.P, inlet.P);
    EXPECT_NEAR(file.number(loop + 24), inlet.P - stateRow(file, evaporatorOutlet).P, 1e-9);
    EXPECT_NEAR(file.number(loop + 83), stateRow(file, pumpOutlet).P - inlet.P, 1e-9);
    EXPECT_GT(std::abs(file.number(loop + 24) - 30.0), 1.0);
}

TEST(SecondaryLoop, ThePumpTakesSaturatedLiquidWhateverTheSubcooling) {
    const ResultFile file = solve(pumped, {{2, 8, {2, 5.0}}});
    ASSERT_EQ(file.count(), pumped.lines);
    EXPECT_EQ(stateRow(file, pumpInlet).Q, 0.0);
    EXPECT_NEAR(stateRow(file, pumpInlet).T, stateRow(file, condenserOutlet).T + 5.0, 1e-9);
    EXPECT_EQ(file.number(inletSuperheat), 0.0);
}

TEST(SecondaryLoop, TheReceiversBalanceGivesTheFlowOfTheCondenser) {
    const ResultFile file = solve(pumped, {{2, 8, {2, 5.0}}});
    const double ME = file.number(flow), MC = file.number(condenserFlow);
    EXPECT_NEAR(ME * (stateRow(file, lineOutlet).H - stateRow(file, pumpInlet).H),
                MC * (stateRow(file, receiver).H - stateRow(file, condenserOutlet).H), 1e-9);
    EXPECT_EQ(file.number(pumpFlow), MC);
    EXPECT_NEAR(file.number(pumpPower), ME * (stateRow(file, pumpOutlet).H - stateRow(file, pumpInlet).H), 1e-9);
    EXPECT_NEAR(file.number(capacity), 100.0, 1e-9);
    EXPECT_NEAR(file.number(25), file.number(condenserCapacity), 1e-9);
}

// The request's check lets option 3 of the liquid line pass, for which nothing is set: its outlet has no temperature.
TEST(SecondaryLoop, AnOptionOfTheLiquidLineThatSetsNothingGivesNoState) {
    const ResultFile file = solve(pumped, {{2, 9, {3, 280.0}}});
    ASSERT_EQ(file.count(), pumped.lines);
    EXPECT_EQ(stateRow(file, evaporatorInlet).H, -777.0);
}

TEST(SecondaryLoop, LevelsByPressureAgree) {
    const ResultFile byT = solve(pumped, {{2, 3, {1, 0.0}}});
    const double P = stateRow(byT, evaporatorOutlet).P;
    const ResultFile byP = solve(pumped, {{2, 1, {2, P}}, {2, 3, {1, 0.0}}});
    const ResultFile byDrop = solve(pumped, {{2, 1, {2, P}}, {2, 3, {2, 0.0}}});
    ASSERT_EQ(byT.count(), pumped.lines);
    ASSERT_EQ(byP.count(), pumped.lines);
    ASSERT_EQ(byDrop.count(), pumped.lines);
    for (int line : {evaporatorOutlet + 3, flow, pumpPower, overall + 6}) {
        EXPECT_NEAR(byP.number(line), byT.number(line), 1e-6 * byT.number(line)) << line;
        EXPECT_NEAR(byDrop.number(line), byP.number(line), 1e-9 * byP.number(line)) << line;
    }
}

}  // namespace
}  // namespace frigana::test
