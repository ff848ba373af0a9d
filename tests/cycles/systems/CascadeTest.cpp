// The cascade as a user runs it.
#include "Systems.h"

namespace frigana::test {
namespace {

constexpr const char* noHeat = "Error: Heat Transfer in Intermediate Heat Exchanger was less or equal of zero!";
constexpr const char* noDifference = "Error: Condenser temperature  was less than or equal to evaporator temperature!";

// Lines of the result.
constexpr int low = 285;
constexpr int highEvaporatingT = 167, lowCondensingT = low + 166;
constexpr int overall = 571;

TEST(CascadeCodes, EveryCheckEndsTheRunWithItsText) {
    const CodeCase rows[] = {
        // A discharge line that lets the low circuit's refrigerant condense and cool below the condenser's outlet.
        {204201, noHeat, {{2, 9, {1, 240.0}}}},
        {204202, noDifference, {{2, 16, {1, 0.0}}}},
    };
    checkCodes(cascade, rows, {}, 2);
}

TEST(CascadeCodes, AFailureOfEitherCircuitHasTheCodeOfTheBasicCycle) {
    EXPECT_EQ(resultText(cascade, {{2, 11, {1, 310.0}}}),
              failure(201201, "Error: Condenser temperature > Critical temperature (304.1282 K)"));
    EXPECT_EQ(resultText(cascade, {{1, 11, {1, 380.0}}}),
              failure(201201, "Error: Condenser temperature > Critical temperature (374.2100 K)"));
    EXPECT_EQ(resultText(cascade, {{1, 11, {1, 260.0}}}),
              failure(201214, "Error: Evaporator temperature > Condenser temperature!"));
}

TEST(CascadeEdges, WithoutAnApproachTheRunEnds) {
    EXPECT_EQ(resultText(cascade, {{2, 16, {1, 0.0}}}), failure(204202, noDifference));
    EXPECT_EQ(solve(cascade, {{2, 16, {1, 0.01}}}).count(), cascade.lines);
}

TEST(CascadeEdges, AGivenEvaporatingTemperatureMustLieBelowTheCondensingOne) {
    EXPECT_EQ(resultText(cascade, {{2, 16, {2, 268.16}}}), failure(204202, noDifference));
    EXPECT_EQ(resultText(cascade, {{2, 16, {2, 300.0}}}), failure(204202, noDifference));
    const ResultFile file = solve(cascade, {{2, 16, {2, 261.0}}});
    ASSERT_EQ(file.count(), cascade.lines);
    EXPECT_EQ(file.number(highEvaporatingT), 261.0);
}

TEST(CascadeEdges, EachCircuitTellsItsFluid) {
    const ResultFile file = solve(cascade);
    ASSERT_EQ(file.count(), cascade.lines);
    EXPECT_EQ(file.trimmed(4), "R134A.FLD 1300");
    EXPECT_EQ(file.trimmed(low + 4), "CO2.FLD 1");
    EXPECT_EQ(file.trimmed(overall), "OVERALL PARAMETERS");
    EXPECT_EQ(file.trimmed(overall + 1), file.trimmed(4));
    EXPECT_EQ(file.trimmed(overall + 2), file.trimmed(low + 4));
}

TEST(Cascade, TheApproachSetsTheHighCircuit) {
    const ResultFile file = solve(cascade, {{2, 16, {1, 6.5}}});
    ASSERT_EQ(file.count(), cascade.lines);
    EXPECT_NEAR(file.number(highEvaporatingT), file.number(lowCondensingT) - 6.5, 1e-6);
}

TEST(Cascade, TheHighCircuitTakesWhatTheLowOneRejects) {
    const ResultFile file = solve(cascade);
    ASSERT_EQ(file.count(), cascade.lines);
    EXPECT_NEAR(file.number(25), file.number(low + 108), 1e-9);  // capacities of evaporator and condenser
    const double QE = file.number(low + 25), QC = file.number(108), W = file.number(66) + file.number(low + 66);
    EXPECT_NEAR(file.number(overall + 3), QE, 1e-12);
    EXPECT_NEAR(file.number(overall + 4), QC, 1e-12);
    EXPECT_NEAR(file.number(overall + 5), W, 1e-12);
    EXPECT_NEAR(file.number(overall + 6), QE / W, 1e-12);
    EXPECT_NEAR(file.number(overall + 7), QE / W * 12000.0 / 3517.0, 1e-12);
    EXPECT_NEAR(file.number(overall + 8), QC / W, 1e-12);
    EXPECT_EQ(file.number(overall + 9), 233.15);
    EXPECT_EQ(file.number(overall + 10), 313.15);
    for (int line : {284, 285, 569, 570}) EXPECT_EQ(file.raw(line), " ") << line;
}

// The low circuit alone is the same basic cycle.
TEST(Cascade, TheLowCircuitIsCopiedAsItIs) {
    const ResultFile file = solve(cascade);
    auto parameters = cascade.second;
    parameters.pop_back();
    Plant plant;
    plant(cycleRequest(1, parameters, cascade.fluids.second, "Second circuit"));
    const ResultFile basic(plant.resultText());
    ASSERT_EQ(basic.count(), 283);
    for (int line = 3; line <= basic.count(); ++line) EXPECT_EQ(file.trimmed(low + line), basic.trimmed(line)) << line;
}

TEST(Cascade, LevelAndCapacityOfTheHighCircuitAreNotThoseOfTheRequest) {
    EXPECT_EQ(resultText(cascade, {{1, 1, {7, -5.0}}, {1, 6, {-9, 1e9}}}), resultText(cascade));
}

// The diagram of such a circuit holds the condenser's inlet twice, and its temperature stands for the dew point's.
TEST(Cascade, AnInletInsideTheDomeStandsForTheDewPoint) {
    const ResultFile file = solve(cascade, {{2, 9, {1, 268.0}}, {2, 12, {2, 10.0}}});
    ASSERT_EQ(file.count(), cascade.lines);
    const double inlet = file.number(low + 89), bubble = file.number(low + 237);
    EXPECT_EQ(inlet, 268.0);
    EXPECT_NEAR(file.number(highEvaporatingT), (inlet + bubble) / 2.0 - 5.0, 1e-9);
}

}  // namespace
}  // namespace frigana::test
