// The cycle with liquid injection as a user runs it.
#include "23_SpecificPoints.h"
#include "28_IsentropProcess.h"
#include "OneFluidCycles.h"
#include "Substances.h"

namespace frigana::test {
namespace {

TEST(LiquidInjectionCodes, EveryCheckEndsTheRunWithItsText) {
    const CodeCase rows[] = {
        {209201, "Error: Condenser temperature > critical temperature (369.2950 K)", {{11, {1, 380.0}}}},
        {209202, "Error: Condenser pressure > critical pressure (4990.0000 kPa)", {{11, {2, 5100.0}}}},
        {209205,
         "Error: Condenser outlet pressure was less than or equal to   zero!",
         {{11, {2, 100.0}}, {13, {1, 250.0}}}},
        {209206, "Error: Condenser - outlet temperature is out of range!", {{11, {1, 280.0}}, {12, {2, 190.0}}}},
        {209207, "Error: Condenser - subcooling is out of range!", {{12, {1, 330.0}}}},
        {209228, "Error: Discharge line - pressure drop is out of range!", {{10, {2, 60.0}}}},
        {209229,
         "Error: Discharge line - drop of saturation temperature is out of range!",
         {{11, {1, 368.0}}, {10, {1, 1000.0}}}},
        {209208, "Error: Liquid line - pressure drop is out of range!", {{11, {1, 365.0}}, {15, {2, 60.0}}}},
        {209209,
         "Error: Liquid line drop of saturation temperature is out of range!",
         {{11, {1, 290.0}}, {15, {1, 900.0}}}},
        {209210,
         "Error: Liquid line - outlet pressure was less than or equal to zero!",
         {{11, {1, 240.0}}, {15, {2, 150.0}}}},
        {209211, "Error: Liquid line - temperature change is out of range!", {{14, {1, 330.0}}}},
        {209212, "Error: Liquid line - outlet subcooling is out of range!", {{12, {2, 150.0}}, {14, {2, 60.0}}}},
        {209213, "Error: Evaporating temperature > critical temperature (369.2950 K)", {{1, {1, 380.0}}}},
        {209214, "Error: Evaporating temperature > condenser temperature!", {{1, {1, 320.0}}}},
        {209215, "Error: Evaporating pressure > critical pressure (4990.0000 kPa)", {{1, {2, 5100.0}}}},
        {209216, "Error: Evaporating pressure > condenser pressure!", {{1, {2, 2000.0}}}},
        {209219, "Error: Evaporator - inlet pressure > condenser pressure!", {{1, {2, 1700.0}}, {3, {1, 100.0}}}},
        {209220,
         "Error: Evaporator - outlet pressure was less than or equal to zero!",
         {{1, {2, 200.0}}, {3, {1, 500.0}}}},
        {209221, "Error: Evaporator - superheat is out of range!", {{2, {1, 240.0}}}},
        {209222,
         "Error: Suction line - pressure drop is out of range!",
         {{1, {1, 345.0}}, {11, {1, 360.0}}, {5, {2, 60.0}}}},
        {209223, "Error: Suction line - drop of saturation temperature is out of range!", {{5, {1, 300.0}}}},
        {209224,
         "Error: Suction line - outlet pressure is less than or equal to zero!",
         {{1, {1, 225.0}}, {5, {2, 120.0}}}},
        {209225, "Error: Suction line - outlet temperature > critical temperature (369.2950 K)", {{4, {1, 380.0}}}},
        {209226, "Error: Suction line - temperature change is out of range!", {{4, {1, 255.0}}}},
        {209227,
         "Error: Suction line drop of saturation temperature is out of range!",
         {{1, {1, 200.0}}, {2, {2, 150.0}}, {4, {2, 55.0}}},
         "R245FA.FLD"},
        {209300,
         "Error: wet compression, increase the inlet superheat",
         {{2, {2, 0.0}}, {4, {2, 0.0}}, {7, {1, 1.0}}},
         "ISOBUTAN.FLD"},
        {209228,
         "Error: Liquid injection line - pressure drop is out of range!",
         {{11, {1, 365.0}}, {16, {1, 375.0}}, {18, {2, 60.0}}}},
        {209229,
         "Error: Liquid injection line - drop of saturation temperature is out of range!",
         {{11, {1, 290.0}}, {16, {1, 320.0}}, {18, {1, 900.0}}}},
        {209230,
         "Error: Liquid injection line - outlet pressure was less than or equal to zero!",
         {{11, {1, 240.0}}, {1, {1, 210.0}}, {16, {1, 260.0}}, {18, {2, 150.0}}}},
        {209231,
         "Error: Liquid injection line - outlet temperature is out of range!",
         {{12, {2, 100.0}}, {16, {1, 350.0}}, {1, {1, 205.0}}, {17, {2, 150.0}}}},
        {209232, "Error: Liquid injection line - temperature change is out of range!", {{17, {1, 330.0}}}},
        {209233,
         "Error: Liquid injection line - outlet subcooling is out of range!",
         {{1, {1, 203.0}}, {12, {2, 105.0}}, {16, {1, 350.0}}, {17, {2, 100.0}}}},
        {209234, "Error: Fraction mass flow of liquid injection is out of range!", {{16, {1, 250.0}}}},
        {209235, "Error: Discharge line - temperature change is out of range!", {{9, {1, 400.0}}}},
    };
    checkCodes(liquidInjection, rows, {}, 34);
}

// ---- edge cases -----------------------------------------------------------------------------------------------------

constexpr int fraction = 189, dischargeT = 207;

TEST(LiquidInjectionEdges, TheHighestTemperatureItselfNeedsNoInjection) {
    const ResultFile without = solve(liquidInjection, {{16, {1, 600.0}}});
    ASSERT_EQ(without.count(), liquidInjection.lines);
    EXPECT_EQ(without.number(fraction), 0.0);
    const double T7 = without.number(dischargeT);
    const ResultFile at = solve(liquidInjection, {{16, {1, T7}}});
    EXPECT_EQ(at.number(fraction), 0.0);
    EXPECT_EQ(at.raw(dischargeT), without.raw(dischargeT));
    const ResultFile below = solve(liquidInjection, {{16, {1, T7 - 0.01}}});
    ASSERT_EQ(below.count(), liquidInjection.lines);
    EXPECT_GT(below.number(fraction), 0.0);
    EXPECT_LT(below.number(fraction), 1e-4);
}

TEST(LiquidInjectionEdges, UnusedInjectionLineShowsNoFlow) {
    const ResultFile file = solve(liquidInjection, {{16, {1, 600.0}}, {17, {2, 5.0}}, {18, {1, 20.0}}});
    ASSERT_EQ(file.count(), liquidInjection.lines);
    for (int line = 162; line <= 166; ++line) EXPECT_EQ(file.number(line), 0.0) << line;
    EXPECT_EQ(file.number(182), 0.0);
    EXPECT_EQ(file.number(184), 0.0);
    EXPECT_EQ(file.number(188), 0.0);
}

TEST(LiquidInjectionEdges, ReportsTheTemperatureThatWasReached) {
    const ResultFile file = solve(liquidInjection, {{16, {1, 350.0}}});
    ASSERT_EQ(file.count(), liquidInjection.lines);
    EXPECT_GT(file.number(fraction), 0.0);
    EXPECT_EQ(file.raw(dischargeT), file.raw(55));  // that of the compressor outlet
    EXPECT_NEAR(file.number(dischargeT), 350.0, 1e-6);
    EXPECT_NE(file.number(dischargeT), 350.0);
}

TEST(LiquidInjectionEdges, TooLowATemperatureNeedsMoreThanTheWholeFlow) {
    EXPECT_EQ(resultText(liquidInjection, {{16, {1, 200.0}}}),
              failure(209234, "Error: Fraction mass flow of liquid injection is out of range!"));
}

TEST(LiquidInjectionEdges, ATemperatureInsideTheDomeGivesNoFiniteFraction) {
    // Below 318.15 K the compression ends inside the dome, where the temperature no longer follows the enthalpy.
    for (double highest : {310.0, 315.0})
        EXPECT_EQ(resultText(liquidInjection, {{16, {1, highest}}}),
                  failure(209234, "Error: Fraction mass flow of liquid injection is out of range!"))
            << highest;
}

// The search for the inlet written out again: from the uncooled inlet so many secant steps on its enthalpy, each with a
// probe above it.
double enthalpyFound(const ResultFile& uncooled, double highest, int steps, double probe) {
    const double inletP = uncooled.number(47), outletP = uncooled.number(54), efficiency = 0.7;
    SUBSTANCE& s = fluid("R22.FLD");
    const auto outletT = [&](double H) {
        STATEPT inlet{}, outlet{};
        PROPSIMPLEPH(s, inletP, H, inlet);
        COMPISOENTRO(s, efficiency, inlet, outletP, outlet);
        return outlet.T;
    };
    double H = uncooled.number(50);
    for (int step = 1; step <= steps; ++step) {
        const double T = outletT(H), slope = (H - (H + probe)) / (T - outletT(H + probe));
        H = slope * highest + (H - slope * T);
    }
    return H;
}

// The steps come near the wanted temperature and do not meet it: each search leaves its own error.
TEST(LiquidInjectionEdges, TheSearchMakesFiveStepsWithAProbeOfTwoKilojoules) {
    const ResultFile uncooled = solve(liquidInjection, {{16, {1, 600.0}}});
    ASSERT_EQ(uncooled.number(fraction), 0.0);
    for (const double highest : {318.2, 319.0, 320.0, 325.0, 350.0}) {
        const ResultFile file = solve(liquidInjection, {{16, {1, highest}}});
        ASSERT_EQ(file.count(), liquidInjection.lines) << highest;
        const double H = file.number(50);
        const auto off = [&](int steps, double probe) {
            return std::fabs(enthalpyFound(uncooled, highest, steps, probe) - H);
        };
        EXPECT_LE(off(5, 2.0), 1e-12 * H) << highest;
        // Another search ends elsewhere.
        for (const double other : {off(4, 2.0), off(6, 2.0), off(5, 2.02), off(5, 1.98)})
            EXPECT_GT(other, 1e-10) << highest;
    }
}

TEST(LiquidInjectionEdges, WetCompressionIsLookedForBeforeTheInjectionOnly) {
    // Near the critical point the dew enthalpy falls with pressure: behind a drop of 6 K in the discharge line a
    // vapor of little superheat has less enthalpy than the dew point of the condenser.
    const ResultFile file = solve(liquidInjection, {{11, {1, 358.0}}, {10, {2, 6.0}}, {16, {1, 364.5}}});
    ASSERT_EQ(file.count(), liquidInjection.lines) << file.trimmed(2) << file.trimmed(3);
    EXPECT_GT(file.number(fraction), 0.0);
    const double compressorOutletH = file.number(57);
    const double condenserDewH = solve(liquidInjection, {{11, {1, 358.0}}, {9, {1, 358.2}}}).number(91);
    EXPECT_LT(compressorOutletH, condenserDewH);
}

TEST(LiquidInjectionEdges, ReservedLinesAreMissingValues) {
    const ResultFile file = solve(liquidInjection, {});
    ASSERT_EQ(file.count(), liquidInjection.lines);
    for (int line : {205, 206}) EXPECT_EQ(file.raw(line), " -777.00000000000000") << line;
}

}  // namespace
}  // namespace frigana::test
