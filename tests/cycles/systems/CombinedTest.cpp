// The combined cycle with mechanical subcooling as a user runs it.
#include "Systems.h"

namespace frigana::test {
namespace {

TEST(CombinedCycleCodes, EveryCheckOfTheLowTemperatureCircuitEndsTheRunWithItsText) {
    System system = combined;
    system.fluids = {"R134A.FLD", "R134A.FLD"};
    const CodeCase rows[] = {
        {203201, "Error: Condenser temperature > critical temperature(374.2100 K)", {{2, 11, {1, 380.0}}}},
        {203202, "Error: Condenser pressure > Critical pressure(4059.2800 kPa)", {{2, 11, {2, 4100.0}}}},
        {203205,
         "Error: Condenser outlet pressure was less than or equal  to zero!",
         {{2, 11, {2, 100.0}}, {2, 13, {1, 200.0}}}},
        {203206, "Error: Condenser - outlet temperature is out of range!", {{2, 11, {1, 280.0}}, {2, 12, {2, 190.0}}}},
        {203207, "Error: Condenser - subcooling is out of range!", {{2, 12, {1, 320.0}}}},
        {203208,
         "Error: Liquid line before subcooler - pressure drop is out of range!",
         {{2, 11, {1, 370.0}}, {2, 15, {2, 60.0}}}},
        {203209,
         "Error: Liquid line before subcooler - drop of saturation temperature is out of range!",
         {{2, 11, {2, 700.0}}, {2, 15, {1, 698.0}}},
         Fluids{"R134A.FLD", "C12.FLD"}},
        {203210,
         "Error: Liquid line before subcooler - outlet pressure was less than or equal to zero!",
         {{2, 11, {1, 250.0}}, {2, 1, {1, 240.0}}, {2, 15, {2, 100.0}}}},
        {203211,
         "Error: Liquid line before subcooler - outlet temperature is out of range!",
         {{2, 12, {2, 100.0}}, {2, 14, {2, 150.0}}}},
        {203212, "Error: Liquid line before subcooler - temperature change is out of range!", {{2, 14, {1, 320.0}}}},
        {203213,
         "Error: Liquid line before subcooler - outlet subcooling is out of range!",
         {{2, 12, {2, 150.0}}, {2, 14, {2, 60.0}}}},
        {203214, "Error: Subcooler - temperature change is out of range!", {{2, 18, {3, 330.0}}}},
        {203215, "Error: Subcooler - outlet temperature is out of range!", {{2, 12, {2, 100.0}}, {2, 18, {2, 150.0}}}},
        {203216, "Error: Subcooler - pressure drop is out of range!", {{2, 11, {1, 370.0}}, {2, 19, {2, 60.0}}}},
        {203217,
         "Error: Subcooler - drop of saturation temperature is out of range!",
         {{2, 11, {2, 700.0}}, {2, 19, {1, 698.0}}},
         Fluids{"R134A.FLD", "C12.FLD"}},
        {203218,
         "Error: Liquid line after subcooler - pressure drop is out of range!",
         {{2, 11, {1, 370.0}}, {2, 17, {2, 60.0}}}},
        {203219,
         "Error: Liquid line after subcooler - drop of saturation temperature is out of range!",
         {{2, 11, {2, 700.0}}, {2, 17, {1, 698.0}}},
         Fluids{"R134A.FLD", "C12.FLD"}},
        {203220,
         "Error: Liquid line after subcooler - pressure drop is out of range!",
         {{2, 12, {2, 60.0}}, {2, 16, {2, 190.0}}}},
        {203221,
         "Error: Liquid line after subcooler - drop of saturation temperature is out of range!",
         {{2, 16, {1, 320.0}}}},
        {203222,
         "Error: Liquid line after subcooler - drop of saturation temperature is out of range!",
         {{2, 12, {2, 150.0}}, {2, 18, {2, 55.0}}}},
        {203223, "Error: Evaporating temperature > critical temperature(374.2100 K)", {{2, 1, {1, 380.0}}}},
        {203224, "Error: Evaporating temperature > condenser temperature!", {{2, 1, {1, 320.0}}}},
        {203225, "Error: Evaporating pressure > critical pressure(4059.2800 kPa)", {{2, 1, {2, 4100.0}}}},
        {203226, "Error: Evaporating pressure > condenser pressure!", {{2, 1, {2, 2000.0}}}},
        {203229, "Error: Evaporator - inlet pressure > condenser pressure!", {{2, 1, {2, 1000.0}}, {2, 3, {1, 100.0}}}},
        {203230,
         "Error: Evaporator - outlet pressure was less than or equal to zero!",
         {{2, 1, {2, 200.0}}, {2, 3, {1, 500.0}}}},
        {203231, "Error: Evaporator - superheat is out of range!", {{2, 2, {1, 220.0}}}},
        {203232,
         "Error: Suction line - pressure drop is out of range!",
         {{2, 1, {1, 350.0}}, {2, 11, {1, 365.0}}, {2, 5, {2, 60.0}}}},
        {203233, "Error: Suction line - drop of saturation temperature is out of range!", {{2, 5, {1, 300.0}}}},
        {203234,
         "Error: Compressor - inlet pressure was less than or equal to zero!",
         {{2, 1, {1, 250.0}}, {2, 5, {2, 100.0}}}},
        {203235, "Error: Suction line - outlet temperature > critical temperature(374.2100 K)", {{2, 4, {1, 380.0}}}},
        {203236, "Error: Suction line - temperature change is out of range!", {{2, 4, {1, 240.0}}}},
        {203237,
         "Error: Suction line drop of saturation temperature is out of range!",
         {{2, 1, {1, 200.0}}, {2, 11, {1, 313.15}}, {2, 2, {2, 150.0}}, {2, 4, {2, 55.0}}},
         Fluids{"R134A.FLD", "R245FA.FLD"}},
        {203238, "Error: Discharge line - pressure drop is out of range!", {{2, 10, {2, 50.0}}}},
        {203239,
         "Error: Discharge line - drop of saturation temperature is out of range!",
         {{2, 11, {1, 370.0}}, {2, 10, {1, 1000.0}}}},
        {203300,
         "Error: wet compression in low temperature cycle, increase the inlet superheat",
         {{2, 2, {2, 0.0}}, {2, 4, {2, 0.0}}, {2, 7, {1, 1.0}}},
         Fluids{"R134A.FLD", "ISOBUTAN.FLD"}},
        {203240, "Error: Discharge line - temperature change is out of range!", {{2, 9, {1, 400.0}}}},
    };
    checkCodes(system, rows, {}, 37);
}

TEST(CombinedCycleCodes, AFailureOfTheMediumTemperatureCircuitHasTheCodeOfTheBasicCycle) {
    EXPECT_EQ(resultText(combined, {{1, 11, {1, 380.0}}}),
              failure(201201, "Error: Condenser temperature > Critical temperature (374.2100 K)"));
    EXPECT_EQ(resultText(combined, {{1, 2, {2, 0.0}}, {1, 4, {2, 0.0}}, {1, 7, {1, 1.0}}},
                         Fluids{"ISOBUTAN.FLD", "R404A.MIX"}),
              failure(201300, "Error: wet compression, increase the inlet superheat"));
}

// ---- lines of the result --------------------------------------------------------------------------------------------

// Of the medium temperature circuit, with the four inserted ones.
constexpr int mediumCapacity = 25, mediumPower = 66, mediumSweptVolume = 156;
constexpr int systemCapacity = 151, systemCOP = 157, systemEER = 158;
constexpr int netVolumetric = 166, net = 167, netCOP = 168, netEER = 169;
// Of the low temperature circuit.
constexpr int low = 289;
constexpr int lowCapacity = low + 191, lowPower = low + 193, lowSubcooler = low + 206;
constexpr int subcoolerInlet = low + 168, subcoolerOutlet = low + 175;

constexpr double EERperCOP = 12000.0 / 3517.0;

// ---- edge cases -----------------------------------------------------------------------------------------------------

TEST(CombinedCycleEdges, MoreHeatThanTheMediumCircuitTakesGivesANegativeNetCapacity) {
    const ResultFile file = solve(combined, {{1, 6, {1, 0.0001}}, {2, 6, {3, 50.0}}, {2, 18, {2, 40.0}}});
    ASSERT_EQ(file.count(), combined.lines);
    EXPECT_LT(file.number(net), -1.0);
    EXPECT_LT(file.number(netCOP), 0.0);
    EXPECT_NEAR(file.number(net), file.number(mediumCapacity) - file.number(lowSubcooler), 1e-12);
}

TEST(CombinedCycleEdges, ASubcoolerWithoutAFallStillHasItsDrop) {
    const ResultFile file = solve(combined, {{2, 18, {2, 0.0}}, {2, 19, {1, 10.0}}});
    ASSERT_EQ(file.count(), combined.lines);
    const StateRow inlet = stateRow(file, subcoolerInlet);
    const StateRow outlet = stateRow(file, subcoolerOutlet);
    EXPECT_EQ(outlet.T, inlet.T);
    EXPECT_NEAR(outlet.P, inlet.P - 10.0, 1e-9);
    // At equal temperature the pressure alone changes the enthalpy of the liquid.
    EXPECT_NEAR(file.number(lowSubcooler), 0.0, 1e-4 * file.number(lowCapacity));
}

TEST(CombinedCycleEdges, ASaturatedLiquidThatNothingChangesStaysLiquid) {
    for (const char* fluid : {"R32.FLD", "CO2.FLD", "R134A.FLD", "R404A.MIX"}) {
        SCOPED_TRACE(fluid);
        const bool carbonDioxide = std::string(fluid) == "CO2.FLD";
        const ResultFile file = solve(
            combined,
            {{2, 11, {1, carbonDioxide ? 293.15 : 313.15}}, {2, 12, {2, 0.0}}, {2, 18, {2, 0.0}}, {2, 19, {1, 0.0}}},
            Fluids{"R134A.FLD", fluid});
        ASSERT_EQ(file.count(), combined.lines) << file.trimmed(3);
        const StateRow outlet = stateRow(file, subcoolerOutlet);
        EXPECT_EQ(outlet.Q, 0.0);
        EXPECT_EQ(outlet.H, stateRow(file, subcoolerInlet).H);
        EXPECT_EQ(stateRow(file, low + 150).H, outlet.H);
    }
}

TEST(CombinedCycleEdges, FourInsertedLinesShiftTheDiagramsOfTheMediumCircuit) {
    const ResultFile file = solve(combined);
    Plant plant;
    plant(cycleRequest(1, combined.first, combined.fluids.first, "First circuit"));
    const ResultFile basic(plant.resultText());
    ASSERT_EQ(file.count(), combined.lines);
    ASSERT_EQ(basic.count(), 283);
    EXPECT_EQ(file.trimmed(172), "INFORMATION FOR GRAPHIC P-h");
    for (int line = 1; line <= basic.count(); ++line) {
        const int copy = line <= 165 ? line : line + 4;
        const bool replaced = line == 2 || (line >= 149 && line <= 151) || line == 157 || line == 158;
        if (!replaced) {
            EXPECT_EQ(file.trimmed(copy), basic.trimmed(line)) << line;
        }
        // A copied line is a text, with a blank before it like any other.
        if (!replaced && !basic.trimmed(line).empty()) {
            EXPECT_EQ(file.raw(copy).substr(0, 2), "  ") << line;
        }
    }
    EXPECT_EQ(file.raw(149), " -777.000000");  // in single precision
    EXPECT_EQ(file.raw(150), file.raw(149));
    EXPECT_EQ(file.raw(288), " ");
    EXPECT_EQ(file.raw(289), " ");
    EXPECT_EQ(file.number(combined.second1), 2.0);
}

TEST(CombinedCycle, FiguresOfTheSystem) {
    const ResultFile file = solve(combined);
    ASSERT_EQ(file.count(), combined.lines);
    const double QN = file.number(mediumCapacity) - file.number(lowSubcooler);
    const double QT = QN + file.number(lowCapacity);
    const double COP = QT / (file.number(mediumPower) + file.number(lowPower));
    EXPECT_NEAR(file.number(net), QN, 1e-12);
    EXPECT_NEAR(file.number(netVolumetric), QN / file.number(mediumSweptVolume), 1e-9);
    EXPECT_NEAR(file.number(netCOP), QN / file.number(mediumPower), 1e-12);
    EXPECT_NEAR(file.number(netEER), QN / file.number(mediumPower) * EERperCOP, 1e-12);
    EXPECT_NEAR(file.number(systemCapacity), QT, 1e-12);
    EXPECT_NEAR(file.number(systemCOP), COP, 1e-12);
    EXPECT_NEAR(file.number(systemEER), COP * EERperCOP, 1e-12);
    EXPECT_GT(QN, 0.0);
}

TEST(CombinedCycle, TheRowOfTheExpansionInletHasNoSaturationTemperature) {
    const ResultFile file = solve(combined);
    const StateRow inlet = stateRow(file, low + 150);
    EXPECT_EQ(inlet.TSAT, 0.0);
    EXPECT_EQ(inlet.Q, 0.0);
    EXPECT_GT(stateRow(file, low + 137).TSAT, 0.0);  // the same state as the outlet of the liquid line
}

// Every way of giving the subcooler leads to the same circuit.
TEST(CombinedCycle, OptionsOfTheSubcoolerAgree) {
    const ResultFile fall = solve(combined, {{2, 18, {2, 12.0}}});
    const ResultFile outlet = solve(combined, {{2, 18, {3, fall.number(subcoolerOutlet + 1)}}});
    const ResultFile heat = solve(combined, {{2, 18, {1, fall.number(lowSubcooler)}}});
    ASSERT_EQ(fall.count(), combined.lines);
    ASSERT_EQ(outlet.count(), combined.lines);
    ASSERT_EQ(heat.count(), combined.lines);
    for (int line : {lowCapacity, lowPower, lowSubcooler, subcoolerOutlet + 1, systemCOP}) {
        EXPECT_NEAR(outlet.number(line), fall.number(line), 1e-9 * fall.number(line)) << line;
        // The search begins at a fall of 1 K and makes three steps.
        EXPECT_NEAR(heat.number(line), fall.number(line), 1e-4 * fall.number(line)) << line;
    }
}

// The search for the fall that gives the subcooler its capacity: three passes from 1 K, each trial a request here.
TEST(CombinedCycle, TheSubcoolersSearchBeginsAtOneKelvin) {
    constexpr double step = static_cast<double>(0.1f), target = 0.9;
    const auto capacity = [](double fall) { return solve(combined, {{2, 18, {2, fall}}}).number(lowSubcooler); };
    const double found = solve(combined, {{2, 18, {1, target}}}).number(lowSubcooler);
    const auto off = [&](double fall, int passes) {
        for (int pass = 1; pass <= passes; ++pass) {
            const double y1 = capacity(fall), y2 = capacity(fall + step);
            const double slope = ((fall + step) - fall) / (y2 - y1);
            fall = slope * target + (fall - slope * y1);
        }
        return std::fabs(capacity(fall) - found) / target;
    };
    const double right = off(1.0, 3), nearest = std::fmin(off(1.01, 3), off(1.0, 4));
    std::printf("%.1e, nearest other search %.1e, two passes %.1e\n", right, nearest, off(1.0, 2));
    EXPECT_LE(right, 5e-13);
    EXPECT_GT(nearest, 4e-12);
    EXPECT_GT(off(1.0, 2), 1e-9);
}

TEST(CombinedCycle, ATitleOfAllItsColumnsLosesTheLastOneInTheCopy) {
    Request request = combined.request();
    const std::string title(80, 't');
    request.lines()[1] = title;
    Plant plant;
    plant(request);
    EXPECT_EQ(ResultFile(plant.resultText()).trimmed(3), title.substr(1));
}

}  // namespace
}  // namespace frigana::test
