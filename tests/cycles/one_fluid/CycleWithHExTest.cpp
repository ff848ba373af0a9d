// The cycle with heat exchanger as a user runs it.
#include "OneFluidCycles.h"

namespace frigana::test {
namespace {

TEST(CycleWithHExCodes, EveryCheckEndsTheRunWithItsText) {
    const CodeCase rows[] = {
        {202201, "Error: Condenser temperature > critical temperature(374.2100 K)", {{13, {1, 380.0}}}},
        {202202, "Error: Condenser pressure > Critical pressure(4059.2800 kPa)", {{13, {2, 4100.0}}}},
        {202205,
         "Error: Condenser - outlet pressure was less than or equal to zero!",
         {{13, {2, 100.0}}, {15, {1, 200.0}}}},
        {202206, "Error: Condenser - outlet temperature is out of range!", {{13, {1, 280.0}}, {14, {2, 190.0}}}},
        {202207, "Error: Condenser - subcooling is out of range!", {{14, {1, 320.0}}}},
        {202208,
         "Error: Liquid line before heat exchanger - pressure drop is out of range!",
         {{13, {1, 370.0}}, {17, {2, 60.0}}}},
        {202209,
         "Error: Liquid line before heat exchanger - drop of saturation temperature is out of range!",
         {{13, {2, 700.0}}, {17, {1, 698.0}}},
         "C12.FLD"},
        {202210,
         "Error: Liquid line before heat exchanger - pressure drop is out of range!",
         {{14, {2, 100.0}}, {16, {2, 150.0}}}},
        {202211, "Error: Liquid line before heat exchanger - temperature change is out of range!", {{16, {1, 320.0}}}},
        {202213,
         "Error: Liquid side at heat exchanger - pressure drop is out of range!",
         {{13, {1, 370.0}}, {21, {2, 60.0}}}},
        {202214,
         "Error: Liquid side at heat exchanger - drop of saturation temperature is out of range!",
         {{13, {2, 700.0}}, {21, {1, 698.0}}},
         "C12.FLD"},
        {202215,
         "Error: Liquid side at heat exchanger - inlet pressure was less than or equal to zero!",
         {{13, {1, 250.0}}, {1, {1, 240.0}}, {17, {2, 100.0}}}},
        {202216,
         "Error: Liquid side at heat exchanger - inlet temperature was less than or equal to zero!",
         {{14, {2, 100.0}}, {20, {2, 199.0}}, {16, {2, 110.0}}}},
        {202217,
         "Error: Liquid line after heat exchanger - pressure drop is out of range!",
         {{13, {1, 370.0}}, {19, {2, 60.0}}}},
        {202218,
         "Error: Liquid line after heat exchanger - drop of saturation temperature is out of range!",
         {{13, {2, 700.0}}, {19, {1, 698.0}}},
         "C12.FLD"},
        {202219,
         "Error: Liquid line after heat exchanger - outlet temperature is out of range!",
         {{14, {2, 60.0}}, {18, {2, 190.0}}}},
        {202220, "Error: Liquid line after heat exchanger - temperature change is out of range!", {{18, {1, 320.0}}}},
        {202221,
         "Error: Liquid line after heat exchanger - outlet subcooling is out of range!",
         {{14, {2, 150.0}}, {16, {2, 60.0}}, {20, {2, 0.0}}}},
        {202222, "Error: Evaporating temperature > critical temperature (374.2100 K)", {{1, {1, 380.0}}}},
        {202223, "Error: Evaporating temperature > condenser temperature!", {{1, {1, 320.0}}}},
        {202224, "Error: Evaporating pressure > critical pressure(4059.2800 kPa)", {{1, {2, 4100.0}}}},
        {202225, "Error: Evaporating pressure > condenser pressure!", {{1, {2, 2000.0}}}},
        {202228, "Error: Evaporator - inlet pressure > condenser pressure!", {{1, {2, 1000.0}}, {3, {1, 100.0}}}},
        {202229,
         "Error: Evaporator - outlet pressure was less than or equal to zero!",
         {{1, {2, 200.0}}, {3, {1, 500.0}}}},
        {202230, "Error: Evaporator - superheat is out of range!", {{2, {1, 250.0}}}},
        {202231,
         "Error: Suction line before heat exchanger - pressure drop is out of range!",
         {{1, {1, 350.0}}, {13, {1, 365.0}}, {5, {2, 60.0}}}},
        {202232,
         "Error: Suction line before heat exchanger - drop of saturation temperature is out of range!",
         {{5, {1, 300.0}}}},
        {202233,
         "Error: Suction line before heat exchanger - outlet pressure was less than or equal to zero!",
         {{1, {1, 250.0}}, {5, {2, 100.0}}}},
        {202234,
         "Error: Suction line before heat exchanger - Outlet temperature > critical temperature (374.2100 K)",
         {{4, {1, 380.0}}}},
        {202235, "Error: Suction line before heat exchanger - temperature change is out of range!", {{4, {1, 270.0}}}},
        {202236,
         "Error: Suction line before heat exchanger - drop of saturation temperature is out of range!",
         {{1, {1, 200.0}}, {13, {1, 313.15}}, {2, {2, 150.0}}, {4, {2, 55.0}}},
         "R245FA.FLD"},
        {202237,
         "Error: Vapor side at heat exchanger - pressure drop is out of range!",
         {{1, {1, 350.0}}, {13, {1, 365.0}}, {22, {2, 60.0}}}},
        {202238,
         "Error: Vapor side at heat exchanger - drop of saturation temperature is out of range!",
         {{22, {1, 300.0}}}},
        {202239, "Error: Heat exchanger - the heat trasfer was negative!", {{20, {3, 330.0}}}},
        {202240,
         "Error: Vapor side at heat exchanger - temperature change is out of range!",
         {{20, {2, 0.01}}, {22, {1, 50.0}}}},
        {202241,
         "Error: Suction line after heat exchanger - pressure drop is out of range!",
         {{1, {1, 350.0}}, {13, {1, 365.0}}, {7, {2, 60.0}}}},
        {202242,
         "Error: Suction line after heat exchanger - drop of saturation temperature is out of range!",
         {{7, {1, 300.0}}}},
        {202243,
         "Error: Suction line after heat exchanger - outlet temperature is out of range!",
         {{1, {1, 350.0}}, {13, {1, 400.0}}, {2, {2, 60.0}}, {6, {2, 199.0}}},
         "R245FA.FLD"},
        {202244, "Error: Suction line after heat exchanger - temperature change is out of range!", {{6, {1, 200.0}}}},
        {202245, "Error: Suction line after heat exchanger - outlet superheat is out of range!", {{6, {2, 199.0}}}},
        {202246, "Error: Discharge line - pressure drop is out of range!", {{12, {2, 50.0}}}},
        {202247,
         "Error: Discharge line - drop of saturation temperature is out of range!",
         {{13, {1, 370.0}}, {12, {1, 1000.0}}}},
        {202300,
         "Error: wet compression, increase the inlet superheat",
         {{2, {2, 0.0}}, {4, {2, 0.0}}, {9, {1, 1.0}}, {20, {2, 0.0}}},
         "ISOBUTAN.FLD"},
        {202248, "Error: Discharge line - temperature change is out of range!", {{11, {1, 400.0}}}},
    };
    checkCodes(withExchanger, rows, {}, 44);
}

// ---- edge cases -----------------------------------------------------------------------------------------------------

constexpr int liquidSide = 188, vaporSide = 205;  // first lines of the exchanger's rows

TEST(CycleWithHExEdges, NoFallOfTheLiquidExchangesNothing) {
    const ResultFile file = solve(withExchanger, {{20, {2, 0.0}}});
    ASSERT_EQ(file.count(), withExchanger.lines);
    EXPECT_EQ(file.raw(liquidSide + 8), file.raw(liquidSide + 1));  // temperature
    for (int i = 0; i < 7; ++i) EXPECT_EQ(file.raw(vaporSide + 7 + i), file.raw(vaporSide + i)) << i;
    EXPECT_EQ(file.number(224), 0.0);
    EXPECT_EQ(file.number(245), 0.0);
}

TEST(CycleWithHExEdges, NoRiseOfTheVaporStillGoesThroughTheSearch) {
    // A folder stands where the search writes its first scratch file.
    Plant plant;
    std::filesystem::create_directory(plant.folder.path("temporalA.txt"));
    plant(cycleRequest(2, withExchanger.with({{20, {4, 0.0}}}), withExchanger.fluid));
    EXPECT_FALSE(plant.hasResult());
}

TEST(CycleWithHExEdges, AnEffectivenessOfZeroIsRefusedBeforeTheSearch) {
    EXPECT_EQ(resultText(withExchanger, {{20, {1, 0.0}}}),
              failure(202140, "Out of range: Heat exchanger efficiency - temperature setting"));
}

TEST(CycleWithHExEdges, ALiquidThatWouldHaveToWarmUpFails) {
    // The liquid enters at 310.15 K; the search follows its target to a negative fall.
    EXPECT_EQ(resultText(withExchanger, {{20, {3, 312.0}}}),
              failure(202239, "Error: Heat exchanger - the heat trasfer was negative!"));
}

TEST(CycleWithHExEdges, NoSubcoolingIsTheBubblePoint) {
    const ResultFile file = solve(withExchanger, {{14, {2, 0.0}}});
    ASSERT_EQ(file.count(), withExchanger.lines);
    const StateRow outlet = stateRow(file, 115);
    EXPECT_EQ(outlet.Q, 0.0);
    EXPECT_NEAR(outlet.T, outlet.TSAT, 1e-9);
}

TEST(CycleWithHExEdges, ACondenserInletInsideTheDomeIsDrawnTwice) {
    const ResultFile file = solve(withExchanger, {{11, {1, 312.0}}});  // below the dew temperature of 313.15 K
    ASSERT_EQ(file.count(), withExchanger.lines);
    for (int pair : {3, 4}) {
        EXPECT_EQ(file.raw(248 + 2 * pair), file.raw(108)) << pair;  // pressure
        EXPECT_EQ(file.raw(249 + 2 * pair), file.raw(111)) << pair;  // enthalpy
    }
    EXPECT_EQ(file.trimmed(248), "INFORMATION FOR GRAPHIC P-h");
}

// Every way of giving the exchanger leads to the same cycle.
TEST(CycleWithHEx, OptionsOfTheExchangerAgree) {
    const ResultFile given = solve(withExchanger, {{20, {2, 6.0}}});
    ASSERT_EQ(given.count(), withExchanger.lines);
    const struct { int option, line; } options[] = {{1, 245}, {3, 196}, {4, 221}, {5, 213}};
    for (const auto& [option, line] : options) {
        const ResultFile file = solve(withExchanger, {{20, {option, given.number(line)}}});
        ASSERT_EQ(file.count(), withExchanger.lines) << option;
        EXPECT_NEAR(file.number(204), 6.0, 1e-5) << option;
        EXPECT_NEAR(file.number(235), given.number(235), 1e-6) << option;
    }
}

}  // namespace
}  // namespace frigana::test
