// Fluids of charts as they are loaded, their vapor pressures, and the windows that charts are given.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "FluidChart.h"
#include "OPENFL.h"
#include "TreeFolders.h"
#include "VaporPressure.h"

namespace frigana::diagrams {
namespace {

FluidSelection pure(const char* file) {
    FluidSelection selection;
    selection.kind = FluidSelection::Kind::pure;
    selection.name = file;
    selection.files = {file};
    return selection;
}

FluidSelection listed(std::vector<std::string> files, std::vector<double> fractions, bool byMass) {
    FluidSelection selection;
    selection.kind = FluidSelection::Kind::listed;
    selection.name = "mine";
    selection.files = std::move(files);
    selection.fractions = std::move(fractions);
    selection.byMass = byMass;
    return selection;
}

std::string refusal(const FluidSelection& selection) {
    SETPATH(test::dataFolder);
    ChartFluid fluid;
    std::string why;
    EXPECT_FALSE(fluid.load(selection, why));
    return why;
}

void load(const FluidSelection& selection, ChartFluid& fluid) {
    SETPATH(test::dataFolder);
    std::string why;
    ASSERT_TRUE(fluid.load(selection, why)) << why;
}

TEST(ChartFluids, WhatCannotBeLoadedIsTold) {
    EXPECT_TRUE(refusal(pure("NOTHING.FLD")).starts_with("[SETUP error 101]")) << refusal(pure("NOTHING.FLD"));
    FluidSelection blend = pure("NOTHING.MIX");
    blend.kind = FluidSelection::Kind::mixtureFile;
    EXPECT_NE(refusal(blend), "");
    // Its triple point lies above the normal pressure.
    FluidSelection carbonDioxide = pure("CO2.FLD");
    carbonDioxide.reference = "NBP";
    EXPECT_NE(refusal(carbonDioxide).find("boiling point"), std::string::npos);
}

// R32 has 52.024 and R125 120.02 g/mol: equal masses are 69.761 % of R32 by mole.
TEST(ChartFluids, ABlendIsTheSameByMassAndByMole) {
    const double share = 1.0 / 52.024 / (1.0 / 52.024 + 1.0 / 120.02);
    ChartFluid mass, mole;
    load(listed({"R32.FLD", "R125.FLD"}, {0.5, 0.5}, true), mass);
    const double criticalOfMass = mass.estimatedCritical().T;
    load(listed({"R32.FLD", "R125.FLD"}, {share, 1.0 - share}, false), mole);
    EXPECT_NEAR(mass.composition()[1], share, 1e-5);
    EXPECT_NEAR(mass.molarMass(), mole.molarMass(), 1e-3);
    EXPECT_NEAR(criticalOfMass, mole.estimatedCritical().T, 1e-3);
    EXPECT_FALSE(mass.pure());
    EXPECT_EQ(mass.name(), "mine");
}

TEST(FluidCharts, HaveTheLinesThatTheirAxesLeave) {
    EXPECT_TRUE(familiesOf(ChartKind::pt).empty());
    for (const ChartKind kind : {ChartKind::ph, ChartKind::ts, ChartKind::hs}) {
        const auto families = familiesOf(kind);
        EXPECT_GE(families.size(), 3u);
        EXPECT_EQ(families.front(), Property::quality);
    }
}

void makeChart(const ChartFluid& fluid, const ChartRequest& request, FluidChart& chart) {
    Dome dome;
    std::string why;
    ASSERT_TRUE(makeFluidChart(fluid, request, dome, chart, why)) << why;
}

// What a person asks for bounds the window, and a state beyond what it would show widens it.
TEST(FluidCharts, ReachAsFarAsAskedForAndAsTheirStates) {
    ChartFluid fluid;
    load(pure("R134A.FLD"), fluid);
    ChartRequest request;
    request.kind = ChartKind::ts;
    request.scales.temperature = {1.0, -273.15};
    request.from = 250.0;
    request.to = 340.0;
    FluidChart asked, shown, both;
    makeChart(fluid, request, asked);
    EXPECT_NEAR(asked.plane.y.low, 250.0, 10.0);
    EXPECT_NEAR(asked.plane.y.high, 340.0, 10.0);
    const State hot = fluid.at(430.0, 5.0), cold = fluid.at(200.0, 1510.0);
    request.shown = {hot, cold};
    makeChart(fluid, request, both);
    EXPECT_NEAR(both.plane.y.low, asked.plane.y.low, 1e-9);
    EXPECT_NEAR(both.plane.y.high, asked.plane.y.high, 1e-9);
    request.from.reset();
    request.to.reset();
    makeChart(fluid, request, shown);
    EXPECT_LE(shown.plane.y.low, 200.0);
    EXPECT_GE(shown.plane.y.high, 430.0);
    for (const State& state : request.shown) EXPECT_TRUE(shown.plane(state).inside());
}

// Vapor pressures of R134a by Tillner-Roth and Baehr, J. Phys. Chem. Ref. Data 23 (1994) 657: 292.80 kPa at 0 °C,
// 101.325 kPa at 247.076 K.
TEST(VaporPressures, OfAPureFluidRunToItsCriticalPoint) {
    ChartFluid fluid;
    load(pure("R134A.FLD"), fluid);
    VaporPressureCurves curves;
    std::string why;
    ASSERT_TRUE(traceVaporPressure(fluid, 247.076, 273.15, curves, why)) << why;
    EXPECT_TRUE(curves.dew.empty());
    EXPECT_NEAR(curves.bubble.front().p, 101.325, 0.02);
    EXPECT_NEAR(curves.bubble.back().p, 292.80, 0.05);
    ASSERT_TRUE(traceVaporPressure(fluid, 100.0, 500.0, curves, why)) << why;
    EXPECT_NEAR(curves.bubble.front().T, 169.86, 0.02);  // the triple point, 169.85 K
    EXPECT_NEAR(curves.bubble.back().T, 374.21, 0.01);
    EXPECT_TRUE(std::is_sorted(curves.bubble.begin(), curves.bubble.end(),
                               [](const State& a, const State& b) { return a.p < b.p; }));
    for (const auto& [from, to] : {std::pair{400.0, 500.0}, std::pair{50.0, 100.0}, std::pair{300.0, 290.0}}) {
        EXPECT_FALSE(traceVaporPressure(fluid, from, to, curves, why));
        EXPECT_EQ(why, "R134A.FLD has no vapor pressure between the temperatures asked for");
    }
}

TEST(VaporPressures, OfABlendMeetInItsCriticalPoint) {
    ChartFluid fluid;
    load(listed({"R32.FLD", "R134A.FLD"}, {0.5, 0.5}, true), fluid);
    VaporPressureCurves curves;
    std::string why;
    ASSERT_TRUE(traceVaporPressure(fluid, 250.0, 320.0, curves, why)) << why;
    EXPECT_GT(curves.bubble.front().p, curves.dew.front().p);
    EXPECT_EQ(curves.bubble.back().T, 320.0);
    EXPECT_EQ(curves.dew.back().T, 320.0);
    ASSERT_TRUE(traceVaporPressure(fluid, 250.0, 400.0, curves, why)) << why;
    const State &bubble = curves.bubble.back(), &dew = curves.dew.back();
    EXPECT_NEAR(bubble.T, dew.T, 0.5);
    EXPECT_NEAR(bubble.p / dew.p, 1.0, 0.02);
    EXPECT_NEAR(bubble.T, fluid.estimatedCritical().T, 1.5);
}

}  // namespace
}  // namespace frigana::diagrams
