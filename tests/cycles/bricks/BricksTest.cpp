// The pieces of the solvers one by one: bounds, options and what they leave.
#include "CycleBricks.h"

#include <gtest/gtest.h>

#include <cmath>

#include "23_SpecificPoints.h"
#include "Refusal.h"
#include "Substances.h"
#include "TranscriticalBricks.h"

namespace frigana::test {
namespace {

STATEPT at(const SUBSTANCE& s, double P, double T) {
    STATEPT point{};
    PROPSIMPLEPT(s, P, T, point);
    return point;
}
STATEPT saturated(const SUBSTANCE& s, double P, double Q) {
    STATEPT point{};
    PROPSIMPLEPQ(s, P, Q, point);
    return point;
}

// ---- checks ---------------------------------------------------------------------------------------------------------

TEST(Checks, BoundsBelongToTheRange) {
    constexpr Check check{4711, "text"};
    for (const auto& range : {std::tuple{temperatureLimits, 100.0, 600.0}, std::tuple{changeLimits, 0.0, 200.0},
                              std::tuple{pressureDropLimits, 0.0, 1000.0}, std::tuple{fractionLimits, 0.0, 1.0}}) {
        const auto& limits = std::get<0>(range);
        const double low = std::get<1>(range), high = std::get<2>(range);
        EXPECT_EQ(refusalOf([&] { refuseOutside(low, limits, check); }), 0);
        EXPECT_EQ(refusalOf([&] { refuseOutside(high, limits, check); }), 0);
        EXPECT_EQ(refusalOf([&] { refuseOutside(std::nextafter(low, -1e9), limits, check); }), 4711);
        EXPECT_EQ(refusalOf([&] { refuseOutside(std::nextafter(high, 1e9), limits, check); }), 4711);
    }
    EXPECT_EQ(refusalOf([&] { refuseAbove(300.0, 300.0, check); }), 0);
    EXPECT_EQ(refusalOf([&] { refuseAbove(std::nextafter(300.0, 400.0), 300.0, check); }), 4711);
    EXPECT_EQ(refusalOf([&] { refuseIf(true, check); }), 4711);
    EXPECT_EQ(refusalOf([&] { refuseIf(false, check); }), 0);
    // the code 0 is a check that is not made
    EXPECT_EQ(refusalOf([&] { refuseIf(true, Check{}); }), 0);
    EXPECT_EQ(refusalOf([&] { refuseAbove(2.0, 1.0, Check{}); }), 0);
}

TEST(Checks, AnOutletExactlyOnTheDewPointIsNotWet) {
    const SUBSTANCE& s = fluid("R134A.FLD");
    const STATEPT inlet = at(s, 200.0, 270.0);
    constexpr Check wet{4711, "wet"};
    STATEPT outlet{};
    // The memo of states lets the last digits settle first.
    for (int i = 0; i < 3; ++i) compress(s, 0.7, inlet, 800.0, 0.0, wet, outlet);
    const double H = outlet.H;
    EXPECT_EQ(refusalOf([&] { compress(s, 0.7, inlet, 800.0, H, wet, outlet); }), 0);
    ASSERT_EQ(outlet.H, H);
    EXPECT_EQ(refusalOf([&] { compress(s, 0.7, inlet, 800.0, std::nextafter(H, 1e9), wet, outlet); }), 4711);
}

TEST(Checks, LevelsHoldAtTheirBounds) {
    const SUBSTANCE& s = fluid("R134A.FLD");
    constexpr CondensingChecks condensing{{1, "T", ""}, {2, "P", ""}, {3, "outlet", ""}};
    constexpr EvaporatingChecks evaporating{{11, "T", ""}, {12, "T", ""}, {13, "P", ""},
                                            {14, "P", ""}, {15, "P", ""}, {16, "P", ""}};
    Level level;
    const auto condenser = [&](Parameter mean, Parameter drop) {
        return refusalOf([&] { condensingLevel(s, mean, drop, condensing, level); });
    };
    EXPECT_EQ(condenser({1, s.TC + 1e-9}, {1, 0.0}), 1);
    EXPECT_NE(condenser({1, s.TC}, {1, 0.0}), 1);
    EXPECT_EQ(condenser({2, s.PC + 1e-9}, {1, 0.0}), 2);
    EXPECT_NE(condenser({2, s.PC}, {1, 0.0}), 2);
    EXPECT_EQ(condenser({2, 100.0}, {1, 200.0}), 3);  // outlet pressure exactly 0
    const auto evaporator = [&](Parameter mean, Parameter drop, double highT, double highP) {
        return refusalOf([&] { evaporatingLevel(s, mean, drop, 250.0, highT, highP, evaporating, level); });
    };
    EXPECT_EQ(evaporator({1, 270.0}, {1, 0.0}, 270.0, 900.0), 12);
    EXPECT_EQ(evaporator({1, std::nextafter(270.0, 0.0)}, {1, 0.0}, 270.0, 900.0), 0);
    EXPECT_EQ(evaporator({2, 300.0}, {1, 0.0}, 310.0, 300.0), 14);
    EXPECT_EQ(evaporator({2, std::nextafter(300.0, 0.0)}, {1, 0.0}, 310.0, 300.0), 0);
    EXPECT_EQ(evaporator({2, 200.0}, {1, 200.0}, 310.0, 300.0), 0);  // inlet pressure that of the condenser
    EXPECT_EQ(evaporator({2, 200.0}, {1, 200.001}, 310.0, 300.0), 15);
    EXPECT_EQ(evaporator({2, 100.0}, {1, 200.0}, 310.0, 900.0), 16);
    // of two that fire, the first in this order
    EXPECT_EQ(evaporator({1, 380.0}, {1, 0.0}, 310.0, 900.0), 11);
    EXPECT_EQ(evaporator({2, 5000.0}, {1, 0.0}, 310.0, 900.0), 13);
    EXPECT_EQ(evaporator({2, 200.0}, {1, 600.0}, 310.0, 300.0), 15);
}

// ---- settings
// ---------------------------------------------------------------------------------------------------------

TEST(Settings, FallsAndRisesAreCountedFromTheInlet) {
    const TemperatureChange fallTo = temperatureFall({1, 290.0}, 300.0), fallBy = temperatureFall({2, 4.0}, 300.0);
    EXPECT_EQ(fallTo.T, 290.0);
    EXPECT_EQ(fallTo.change, 10.0);
    EXPECT_EQ(fallBy.T, 296.0);
    EXPECT_EQ(fallBy.change, 4.0);
    const TemperatureChange riseTo = temperatureRise({1, 310.0}, 300.0), riseBy = temperatureRise({2, 4.0}, 300.0);
    EXPECT_EQ(riseTo.change, 10.0);
    EXPECT_EQ(riseBy.T, 304.0);
    EXPECT_EQ(riseBy.change, 4.0);
}

TEST(Settings, SuperheatAndSubcoolingAreCountedFromTheirOwnSide) {
    const SUBSTANCE& s = fluid("R407C.MIX");
    const double bubbleT = saturated(s, 800.0, 0).T, dewT = saturated(s, 800.0, 1).T;
    ASSERT_GT(dewT - bubbleT, 4.0);
    EXPECT_NEAR(fallWithSubcooling(s, {3, 5.0}, 300.0, 800.0).T, bubbleT - 5.0, 1e-9);
    EXPECT_NEAR(fallWithSubcooling(s, {3, 5.0}, 300.0, 800.0).change, 300.0 - (bubbleT - 5.0), 1e-9);
    EXPECT_NEAR(fallWithSubcooling(s, {1, 270.0}, 300.0, 800.0).degree, bubbleT - 270.0, 1e-9);
    EXPECT_EQ(fallWithSubcooling(s, {1, 299.0}, 300.0, 800.0).degree, 0.0);
    EXPECT_NEAR(riseWithSuperheat(s, {3, 5.0}, 280.0, 800.0).T, dewT + 5.0, 1e-9);
    EXPECT_NEAR(riseWithSuperheat(s, {3, 5.0}, 280.0, 800.0).change, dewT + 5.0 - 280.0, 1e-9);
    EXPECT_NEAR(riseWithSuperheat(s, {2, 40.0}, 280.0, 800.0).degree, 320.0 - dewT, 1e-9);
    EXPECT_NEAR(fallWithSuperheat(s, {3, 5.0}, 320.0, 800.0).change, 320.0 - (dewT + 5.0), 1e-9);
    EXPECT_NEAR(fallWithSuperheat(s, {2, 10.0}, 320.0, 800.0).degree, 310.0 - dewT, 1e-9);
}

TEST(Settings, NoSuperheatIsTheDewPointAtThePressureOfTheOutlet) {
    for (const char* name : {"R134A.FLD", "R407C.MIX"}) {
        const SUBSTANCE& s = fluid(name);
        const double meanDewT = saturated(s, 300.0, 1).T;  // at the mean pressure
        const STATEPT dew = saturated(s, 260.0, 1);        // at the outlet
        ASSERT_GT(meanDewT - dew.T, 3.0);
        STATEPT outlet{};
        const OutletSetting none = superheatedOutlet(s, {2, 0.0}, 260.0, meanDewT, Check{}, outlet);
        EXPECT_NEAR(none.T, dew.T, 1e-9);
        EXPECT_EQ(none.T, outlet.T);
        EXPECT_EQ(none.degree, 0.0);
        EXPECT_NEAR(outlet.H, dew.H, 1e-6);
        const OutletSetting same = superheatedOutlet(s, {1, meanDewT}, 260.0, meanDewT, Check{}, outlet);
        EXPECT_NEAR(same.T, dew.T, 1e-9);
        const OutletSetting some = superheatedOutlet(s, {2, 5.0}, 260.0, meanDewT, Check{}, outlet);
        EXPECT_EQ(some.T, meanDewT + 5.0);
        EXPECT_NEAR(outlet.T, meanDewT + 5.0, 1e-9);
    }
}

// ---- lines and exchangers
// ---------------------------------------------------------------------------------------------

TEST(Lines, DropsAreCountedFromTheInletAndBackwardsFromTheOutlet) {
    const SUBSTANCE& s = fluid("R134A.FLD");
    const auto satT = [&](double P) { return saturated(s, P, 1).T; };
    const PressureChange byP = pressureChange(s, {1, 20.0}, 300.0, dewSide, {});
    EXPECT_EQ(byP.DP, 20.0);
    EXPECT_NEAR(byP.DT, satT(300.0) - satT(280.0), 1e-9);
    const PressureChange byT = pressureChange(s, {2, byP.DT}, 300.0, dewSide, {});
    EXPECT_NEAR(byT.DP, 20.0, 1e-6);
    const PressureChange backP = pressureChangeBackwards(s, {1, 20.0}, 280.0, {});
    EXPECT_EQ(backP.DP, 20.0);
    EXPECT_NEAR(backP.DT, satT(300.0) - satT(280.0), 1e-9);
    const PressureChange backT = pressureChangeBackwards(s, {2, backP.DT}, 280.0, {});
    EXPECT_NEAR(backT.DP, 20.0, 1e-6);
    const PressureChange none = pressureChangeBackwards(s, {2, 0.0}, 280.0, {});
    EXPECT_FALSE(std::signbit(none.DP) || std::signbit(none.DT));
}

TEST(Exchanger, WithoutAFallTheLiquidKeepsItsEnthalpyAtTheLowerPressure) {
    const SUBSTANCE& s = fluid("R134A.FLD");
    const STATEPT inlet = at(s, 1000.0, 305.0);
    STATEPT outlet{};
    double fall = 0.0;
    const double T = exchangerLiquid(s, inlet, 305.0, 100.0, 900.0, fall, outlet);
    EXPECT_EQ(outlet.H, inlet.H);
    EXPECT_NEAR(outlet.P, 900.0, 1e-9);
    EXPECT_EQ(T, outlet.T);
    EXPECT_EQ(fall, 305.0 - outlet.T);
    EXPECT_NE(fall, 0.0);
    // without a drop it is its inlet, and with a fall it has its temperature
    fall = 0.0;
    EXPECT_EQ(exchangerLiquid(s, inlet, 305.0, 0.0, 1000.0, fall, outlet), 305.0);
    EXPECT_EQ(outlet.S, inlet.S);
    fall = 4.0;
    EXPECT_EQ(exchangerLiquid(s, inlet, 305.0, 100.0, 900.0, fall, outlet), 301.0);
    EXPECT_NEAR(outlet.T, 301.0, 1e-9);
    EXPECT_EQ(fall, 4.0);
}

TEST(Exchanger, NoneIsAFallOfZeroExceptAsATemperature) {
    for (const int option : {1, 2, 3, 4, 5}) {
        CYCLEIN cycle{};
        cycle.TDAT[20] = option;
        cycle.VDAT[20] = 0.0;
        normaliseExchanger(cycle);
        EXPECT_EQ(cycle.TDAT[20], option == 3 || option == 5 ? option : 2);
        cycle.TDAT[20] = option;
        cycle.VDAT[20] = 0.3;
        normaliseExchanger(cycle);
        EXPECT_EQ(cycle.TDAT[20], option);
        EXPECT_EQ(cycle.VDAT[20], 0.3);
    }
}

TEST(Exchanger, EffectivenessIsOfTheSmallerHeatCapacity) {
    const SUBSTANCE& s = fluid("R134A.FLD");
    const STATEPT liquidIn = at(s, 1000.0, 310.0), liquidOut = at(s, 960.0, 302.0);
    const STATEPT vaporIn = at(s, 300.0, 276.0), vaporOut = at(s, 280.0, 288.0);
    const double meanT = 293.0;
    const double cl = at(s, 980.0, meanT).CP, cv = at(s, 290.0, meanT).CP;
    ASSERT_LT(cv, cl);
    EXPECT_NEAR(exchangerEffectiveness(s, 3.0, liquidIn, liquidOut, vaporIn, vaporOut),
                (liquidIn.H - liquidOut.H) / (cv * 34.0), 1e-9);
}

// ---- flows
// ------------------------------------------------------------------------------------------------------------

TEST(Flows, EveryWayOfGivingTheCapacityIsTheSameCircuit) {
    const Flow byVolume = massFlow({1, 0.01}, 20.0, 0.8, 200.0, 150.0);
    EXPECT_DOUBLE_EQ(byVolume.M, 0.16);
    EXPECT_DOUBLE_EQ(byVolume.condenser, 32.0);
    EXPECT_DOUBLE_EQ(byVolume.evaporator, 24.0);
    for (const Parameter given : {Parameter{2, 32.0}, Parameter{3, 24.0}}) {
        const Flow flow = massFlow(given, 20.0, 0.8, 200.0, 150.0);
        EXPECT_DOUBLE_EQ(flow.M, 0.16);
        EXPECT_DOUBLE_EQ(flow.V, 0.01);
        EXPECT_DOUBLE_EQ(flow.condenser, 32.0);
        EXPECT_DOUBLE_EQ(flow.evaporator, 24.0);
    }
    const Performance performance = performanceOf(24.0, 32.0, 8.0);
    EXPECT_DOUBLE_EQ(performance.coolingCOP, 3.0);
    EXPECT_DOUBLE_EQ(performance.heatingCOP, 4.0);
    EXPECT_DOUBLE_EQ(performance.coolingEER, 3.0 * 12000 / 3517);
    EXPECT_DOUBLE_EQ(performance.heatingEER, 4.0 * 12000 / 3517);
}

TEST(Rows, TheQualityIsHeldWithinItsRangeAndTheSaturationIsOfTheirSide) {
    const SUBSTANCE& s = fluid("R407C.MIX");
    STATEPT row = at(s, 500.0, 300.0);
    for (const auto& [given, held] : {std::pair{-998.0, 0.0}, std::pair{998.0, 1.0}, std::pair{0.3, 0.3}}) {
        row.Q = given;
        finishRow(s, dewSide, row);
        EXPECT_EQ(row.Q, held);
        EXPECT_NEAR(row.TSAT, saturated(s, 500.0, 1).T, 1e-9);
        finishRow(s, bubbleSide, row);
        EXPECT_NEAR(row.TSAT, saturated(s, 500.0, 0).T, 1e-9);
        finishTwoPhaseRow(row);
        EXPECT_EQ(row.TSAT, row.T);
    }
}

TEST(Rows, ADeviceHasItsHeatInItsOwnDirection) {
    Device device;
    device.inlet.P = 500.0, device.outlet.P = 480.0;
    device.inlet.H = 250.0, device.outlet.H = 400.0;
    finishDevice(device, 2.0, Heat::gained);
    EXPECT_EQ(device.heat, 300.0);
    EXPECT_EQ(device.DP, 20.0);
    EXPECT_EQ(device.M, 2.0);
    finishDevice(device, 2.0, Heat::lost);
    EXPECT_EQ(device.heat, -300.0);
}

TEST(Graphs, ADewPointIsDrawnOnlyInFrontOfWhatIsSuperheated) {
    STATEPT inlet{}, dew{};
    dew.H = 420.0;
    for (const auto& [H, isDew] : {std::pair{420.1, true}, std::pair{420.0, false}, std::pair{419.0, false}}) {
        inlet.H = H;
        EXPECT_EQ(&dewPointOfGraph(inlet, dew), isDew ? &dew : &inlet);
    }
}

}  // namespace
}  // namespace frigana::test
