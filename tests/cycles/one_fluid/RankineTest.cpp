// The Rankine cycle as a user runs it.
#include "OneFluidCycles.h"

namespace frigana::test {
namespace {

TEST(RankineCodes, EveryCheckEndsTheRunWithItsText) {
    const CodeCase rows[] = {
        {206201, "Error: Boiler temperature > critical temperature (427.0100 K)", {{1, {1, 430.0}}}},
        {206202, "Error: Boiler pressure > critical pressure(3651.0000 kPa)", {{1, {2, 4000.0}}}},
        {206205, "Error: Boiler outlet pressure was less than or equal to   zero!", {{1, {2, 100.0}}, {3, {1, 300.0}}}},
        {201206, "Error: Boiler - outlet temperature is out of range!", {{1, {1, 550.0}}, {2, {2, 100.0}}}, "C12.FLD"},
        {201207, "Error: Boiler - superheat is out of range!", {{2, {1, 350.0}}}},
        {206208, "Error: Liquid line - pressure drop is out of range!", {{16, {2, 50.0}}}},
        {206209,
         "Error: Liquid line - drop of saturation temperature is out of range!",
         {{1, {1, 415.0}}, {16, {1, 1000.0}}}},
        {206211, "Error: High pressure vapor line - pressure drop is out of range!", {{1, {1, 395.0}}, {5, {2, 60.0}}}},
        {206212,
         "Error: High pressure vapor line - drop saturation of temperature is out of range!",
         {{1, {1, 340.0}}, {5, {1, 1000.0}}}},
        {206213,
         "Error: High pressure vapor line - outlet pressure is less than or equal to zero!",
         {{1, {1, 300.0}}, {5, {2, 199.0}}}},
        {206214,
         "Error: High pressure vapor line - outlet temperature is out of range!",
         {{1, {1, 280.0}}, {4, {2, 190.0}}}},
        {206215, "Error: High pressure vapor line - temperature change is out of range!", {{4, {1, 450.0}}}},
        {206216, "Error: Condenser temperature > critical temperature (427.0100 K)", {{11, {1, 430.0}}}},
        {206217, "Error: Condenser temperature > boiler temperature!", {{11, {1, 390.0}}}},
        {206218, "Error: Condenser pressure > critical pressure!", {{11, {2, 4000.0}}}},
        {206219, "Error: Condenser pressure > boiler pressure!", {{11, {2, 2000.0}}}},
        {206222, "Error: Condenser - inlet pressure > boiler pressure!", {{11, {2, 1500.0}}, {13, {1, 500.0}}}},
        {206223,
         "Error: Condenser - outlet pressure was less than or equal to zero!",
         {{11, {2, 50.0}}, {13, {1, 200.0}}}},
        {206224, "Error: Low pressure vapor line - pressure drop is out of range!", {{10, {2, 150.0}}}},
        {206225,
         "Error: Low pressure vapor line - drop of saturation temperature is out of range!",
         {{1, {1, 420.0}}, {11, {1, 410.0}}, {10, {1, 1000.0}}}},
        {206227, "Error: Low pressure vapor line - outlet temperature is out of range!", {{9, {1, 50.0}}}},
        {206228, "Error: Low pressure vapor line - temperature change is out of range!", {{9, {1, 500.0}}}},
        {206229, "Error: Liquid line - temperature change is out of range!", {{15, {1, 340.0}}}},
    };
    checkCodes(rankine, rows, {}, 23);
}

// ---- edge cases -----------------------------------------------------------------------------------------------------

TEST(RankineEdges, AWetTurbineOutletHasNoSuperheatAndIsDrawnTwice) {
    const ResultFile file = solve(rankine, {}, "AMMONIA.FLD");
    ASSERT_EQ(file.count(), rankine.lines);
    EXPECT_EQ(file.number(61), -777.0);
    EXPECT_EQ(file.number(166), -777.0);
    const StateRow outlet = stateRow(file, 54);
    EXPECT_GT(outlet.Q, 0.5);
    EXPECT_LT(outlet.Q, 1.0);
    EXPECT_EQ(outlet.TSAT, outlet.T);
    for (int pair : {3, 4}) {
        EXPECT_EQ(file.raw(177 + 2 * pair), file.raw(87)) << pair;
        EXPECT_EQ(file.raw(178 + 2 * pair), file.raw(90)) << pair;
    }
}

TEST(RankineEdges, NoSuperheatIsSaturatedVapor) {
    const ResultFile file = solve(rankine, {{2, {2, 0.0}}});
    ASSERT_EQ(file.count(), rankine.lines);
    EXPECT_EQ(file.number(18), 1.0);
    EXPECT_NEAR(file.number(14), file.number(19), 1e-9);
    for (int i = 0; i < 7; ++i) EXPECT_EQ(file.raw(34 + i), file.raw(27 + i)) << "line without losses, row " << i;
}

TEST(RankineEdges, ALiquidLineThatWarmsUpIsRefused) {
    EXPECT_EQ(resultText(rankine, {{15, {1, 310.0}}}),
              failure(206229, "Error: Liquid line - temperature change is out of range!"));
}

TEST(RankineEdges, TemperaturesOfSourceAndSinkDoNotMatter) {
    expectSameResult(solve(rankine, {}),
                     solve(rankine, {{17, {1, 500.0}}, {18, {1, 300.0}}, {19, {1, 101.0}}, {20, {1, 599.0}}}));
}

TEST(RankineEdges, ReservedLinesHoldTheirPlaceInSinglePrecision) {
    const ResultFile file = solve(rankine, {});
    ASSERT_EQ(file.count(), rankine.lines);
    for (int line : {147, 148, 149, 151, 152, 153, 162, 167, 168, 169, 170, 171, 172, 173, 174})
        EXPECT_EQ(file.raw(line), " -777.000000") << line;
    EXPECT_EQ(file.number(103), 0.0) << "the line that nothing fills";
    EXPECT_EQ(file.raw(178), " CYCLE data for graphic P-h");
    EXPECT_EQ(file.raw(239), " CYCLE data for graphic T-s ");
}

// The drop is counted from the bubble end: the pump draws liquid from above the mean pressure.
TEST(RankineEdges, TheDropOfTheCondenserIsReversed) {
    const ResultFile file = solve(rankine, {{13, {1, 20.0}}});
    ASSERT_EQ(file.count(), rankine.lines);
    const StateRow inlet = stateRow(file, 87), outlet = stateRow(file, 94);
    EXPECT_NEAR(outlet.P, inlet.P, 1e-9 * inlet.P);
    EXPECT_NEAR(file.number(105), 0.0, 1e-9 * inlet.P);
    EXPECT_LT(file.number(101), -1.0) << "glide of a pure fluid: the drop of saturation temperature with its sign";
    EXPECT_GT(file.number(102), 1.0);
}

}  // namespace
}  // namespace frigana::test
