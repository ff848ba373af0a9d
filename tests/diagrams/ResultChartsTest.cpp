// Charts of finished results: every cycle with its points and processes, tables, and what is left out.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <fstream>
#include <string>
#include <vector>

#include "12_MyVariables.h"
#include "Layout.h"
#include "LineChart.h"
#include "NamedRequest.h"
#include "ResultChart.h"
#include "Svg.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

using catalogue::RunResult;
using charts::Look;
using charts::Pixel;
using diagrams::ChartKind;
using diagrams::Place;

// A request of the examples, or one written here, solved in a folder of its own.
RunResult solve(const std::string& text) {
    const test::TemporaryFolder folder;
    const std::string request = folder.path("request.fi1");
    test::writeFile(request, text);
    return catalogue::runPositional(request, {test::dataFolder});
}
RunResult solveExample(const std::string& name) {
    return solve(test::readFile(std::string(test::examplesFolder) + "/" + name + ".fi1"));
}

charts::ResultPlots draw(const RunResult& result, ChartKind kind, double width = 1200.0) {
    charts::ChartStyle style;
    style.width = width;
    charts::ResultPlots plots;
    std::string why;
    EXPECT_TRUE(charts::plotsOfResult(result, kind, style, test::dataFolder, plots, why)) << why;
    return plots;
}

double distanceTo(const charts::PlotLine& line, const Place& place) {
    double least = 1e300;
    for (std::size_t i = 1; i < line.points.size(); ++i) {
        const Place &a = line.points[i - 1], &b = line.points[i];
        const double dx = b.x - a.x, dy = b.y - a.y, square = dx * dx + dy * dy;
        const double along = square > 0.0 ? ((place.x - a.x) * dx + (place.y - a.y) * dy) / square : 0.0;
        const double t = std::clamp(along, 0.0, 1.0);
        least = std::min(least, diagrams::distance(place, {a.x + t * dx, a.y + t * dy}));
    }
    return least;
}

bool ofCycle(Look look) {
    return look == Look::cycle || look == Look::secondCycle;
}

// Every point of the result is a point of the chart, at its place, and a way leads through it.
void expectPoints(const RunResult& result, const charts::ResultPlot& drawn) {
    constexpr double exact = 1e-12, together = 0.006;  // of the window; points so close share a marker
    int count = 0;
    for (const catalogue::PointState& point : result.points) {
        if (point.circuit != drawn.circuit) continue;
        diagrams::State state;
        state.T = point.temperature;
        state.p = point.pressure;
        state.h = point.enthalpy;
        state.s = point.entropy;
        const Place place = drawn.plane(state);
        const std::string label =
            std::to_string(point.number) + (point.stage > 0 ? "(" + std::to_string(point.stage) + ")" : "");
        SCOPED_TRACE(label + " " + point.label);
        bool marked = false;
        for (const charts::PlotPoint& marker : drawn.plot.points) {
            const std::string labels = ", " + marker.label + ",";
            if (labels.find(", " + label + ",") == std::string::npos) continue;
            marked = true;
            const bool shared = marker.label != label;
            EXPECT_LT(diagrams::distance(marker.place, place), shared ? together : exact);
        }
        EXPECT_TRUE(marked);
        double least = 1e300;
        for (const charts::PlotLine& line : drawn.plot.lines)
            if (ofCycle(line.look)) least = std::min(least, distanceTo(line, place));
        EXPECT_LT(least, exact);
        EXPECT_TRUE(place.inside());
        ++count;
    }
    EXPECT_GT(count, 3);
}

// Nothing outside the window, no gap in a way, no label on another one or on a line that none may cross.
void expectTidy(const charts::Plot& plot, double width, double height) {
    constexpr double edge = 1e-6;
    for (const charts::PlotLine& line : plot.lines)
        for (const Place& place : line.points) ASSERT_TRUE(place.inside(edge)) << line.hover;
    const charts::Layout layout = charts::layOut(plot, width, height);
    for (std::size_t i = 0; i < layout.labels.size(); ++i) {
        const charts::PlacedLabel& label = layout.labels[i];
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_FALSE(charts::overlap(label.box, layout.labels[j].box))
                << label.text << " and " << layout.labels[j].text << " at " << width;
        for (const Pixel& corner : label.box.corners()) {
            EXPECT_GT(corner.x, layout.left);
            EXPECT_LT(corner.x, layout.right);
            EXPECT_GT(corner.y, layout.top);
            EXPECT_LT(corner.y, layout.bottom);
        }
        if (label.ofPoint) continue;
        for (const charts::PlacedLine& line : layout.lines) {
            if (line.look != Look::dome && !ofCycle(line.look)) continue;
            for (const auto& piece : line.pieces)
                for (std::size_t k = 1; k < piece.size(); ++k)
                    ASSERT_FALSE(charts::crosses(label.box, piece[k - 1], piece[k])) << label.text << " at " << width;
        }
    }
    for (const auto* rows : {&layout.titleRows, &layout.noteRows})
        for (const std::string& row : *rows)
            EXPECT_LE(charts::textWidth(row, charts::labelSize), layout.right - layout.left) << row;
}

// ---- cycles ---------------------------------------------------------------------------------------------------------

struct CycleExample {
    const char* name;
    std::size_t circuits;
};
class EveryCycle : public testing::TestWithParam<CycleExample> {};

TEST_P(EveryCycle, IsDrawnThroughThePointsOfItsResult) {
    const RunResult result = solveExample(GetParam().name);
    ASSERT_TRUE(result.isDone());
    for (const ChartKind kind : {ChartKind::ph, ChartKind::ts, ChartKind::hs}) {
        SCOPED_TRACE(static_cast<int>(kind));
        const charts::ResultPlots plots = draw(result, kind);
        EXPECT_TRUE(plots.remarks.empty()) << plots.remarks.front();
        std::size_t circuits = 0;
        for (const charts::ResultPlot& one : plots.plots) {
            if (one.circuit.empty() && GetParam().circuits > 1) continue;  // both circuits in one
            ++circuits;
            expectPoints(result, one);
            expectTidy(one.plot, 1200.0, 800.0);
            EXPECT_FALSE(one.plot.notes.empty());
        }
        EXPECT_EQ(circuits, GetParam().circuits);
    }
    for (const charts::ResultPlot& one : draw(result, ChartKind::ph, 560.0).plots) expectTidy(one.plot, 560.0, 400.0);
}

INSTANTIATE_TEST_SUITE_P(Examples, EveryCycle,
                         testing::Values(CycleExample{"small_chiller", 1}, CycleExample{"cycle_with_heat_exchanger", 1},
                                         CycleExample{"combined_cycle", 2}, CycleExample{"cascade_cycle", 2},
                                         CycleExample{"line_sizing", 1}, CycleExample{"rankine_cycle", 1},
                                         CycleExample{"transcritical_cycle", 1}, CycleExample{"liquid_injection", 1},
                                         CycleExample{"two_stage_cycle", 1}, CycleExample{"multi_stage_cycle", 1},
                                         CycleExample{"minimal_cycle", 1}, CycleExample{"pumped_co2", 2},
                                         CycleExample{"transcritical_booster", 1}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(CycleCharts, TranscriticalCarbonDioxideRejectsHeatAboveTheDome) {
    const RunResult result = solveExample("transcritical_cycle");
    const charts::ResultPlots plots = draw(result, ChartKind::ph);
    ASSERT_EQ(plots.plots.size(), 1U);
    double top = 0.0, highest = 0.0;
    for (const charts::PlotLine& line : plots.plots.front().plot.lines)
        for (const Place& place : line.points) {
            if (line.look == Look::dome) top = std::max(top, place.y);
            if (line.look == Look::cycle) highest = std::max(highest, place.y);
        }
    EXPECT_GT(highest, top);
    EXPECT_LT(highest, 1.0);
}

// A machine's way rises in entropy, a throttle keeps its enthalpy: by the places of what is drawn.
TEST(CycleCharts, ProcessesRunAsTheyDo) {
    const RunResult result = solveExample("small_chiller");
    const charts::ResultPlots ts = draw(result, ChartKind::ts), ph = draw(result, ChartKind::ph);
    const diagrams::Plane &planeTs = ts.plots.front().plane, &planePh = ph.plots.front().plane;
    const auto placeOf = [&](const diagrams::Plane& plane, int number) {
        for (const catalogue::PointState& point : result.points)
            if (point.number == number) {
                diagrams::State state;
                state.T = point.temperature;
                state.p = point.pressure;
                state.h = point.enthalpy;
                state.s = point.entropy;
                return plane(state);
            }
        return Place{};
    };
    // 2 to 3 throttled, 5 to 6 compressed, 7 to 1 condensed at one pressure
    constexpr double exact = 1e-9;
    EXPECT_NEAR(placeOf(planePh, 2).x, placeOf(planePh, 3).x, exact);
    EXPECT_GT(placeOf(planeTs, 6).x, placeOf(planeTs, 5).x);
    EXPECT_NEAR(placeOf(planePh, 7).y, placeOf(planePh, 1).y, exact);
    // in the T-s chart the condensing temperature of a pure fluid is one line, above all others of the cycle but the
    // gas
    const double condensing = planeTs.y.share(result.number("condenser.saturation.temperature"));
    bool level = !std::isfinite(condensing);
    for (const charts::PlotLine& line : ts.plots.front().plot.lines)
        if (line.look == Look::cycle)
            for (std::size_t i = 1; i < line.points.size(); ++i)
                level = level || (std::fabs(line.points[i].y - condensing) < 1e-6 &&
                                  std::fabs(line.points[i - 1].y - condensing) < 1e-6);
    EXPECT_TRUE(level);
}

TEST(CycleCharts, StatesThatTheResultDoesNotHaveAreLeftOutAndToldOf) {
    RunResult result = solveExample("small_chiller");
    ASSERT_TRUE(result.isDone());
    const std::size_t before = draw(result, ChartKind::ph).plots.front().plot.points.size();
    ASSERT_EQ(result.points[2].number, 3);
    result.points[2].enthalpy = missingValue;
    const charts::ResultPlots plots = draw(result, ChartKind::ph);
    ASSERT_EQ(plots.remarks.size(), 1U);
    EXPECT_NE(plots.remarks.front().find("point 3"), std::string::npos) << plots.remarks.front();
    EXPECT_NE(plots.remarks.front().find("left out"), std::string::npos) << plots.remarks.front();
    const charts::Plot& plot = plots.plots.front().plot;
    EXPECT_EQ(plot.points.size(), before - 1);
    for (const charts::PlotPoint& point : plot.points) EXPECT_NE(point.label, "3");
    for (catalogue::PointState& point : result.points) point.pressure = missingValue;
    charts::ResultPlots none;
    std::string why;
    EXPECT_FALSE(charts::plotsOfResult(result, ChartKind::ph, {}, test::dataFolder, none, why));
    EXPECT_FALSE(why.empty());
}

TEST(CycleCharts, AreRefusedWithoutAResult) {
    charts::ResultPlots plots;
    std::string why;
    EXPECT_FALSE(charts::plotsOfResult({}, ChartKind::ph, {}, test::dataFolder, plots, why));
    EXPECT_EQ(why, "there is no result to draw");
    const RunResult point = solveExample("state_point");
    ASSERT_TRUE(point.isDone());
    EXPECT_FALSE(charts::plotsOfResult(point, ChartKind::ph, {}, test::dataFolder, plots, why));
    EXPECT_EQ(why, "a result of this kind has no chart");
    EXPECT_FALSE(charts::plotsOfResult(solveExample("small_chiller"), ChartKind::pt, {}, test::dataFolder, plots, why));
}

// ---- fluids and blends beyond the table of the program
// ----------------------------------------------------------------

RunResult solveNamed(const std::string& toml) {
    const catalogue::NamedRequest named =
        catalogue::readNamed(toml, catalogue::NamedFormat::toml, catalogue::FluidNames::of(test::dataFolder));
    for (const catalogue::Problem& problem : named.problems) ADD_FAILURE() << catalogue::message("request", problem);
    return named.runs.empty() ? RunResult{} : catalogue::runFilled(named.runs.front(), {test::dataFolder});
}

void expectDrawn(const RunResult& result, ChartKind kind) {
    ASSERT_TRUE(result.isDone());
    const charts::ResultPlots plots = draw(result, kind);
    EXPECT_TRUE(plots.remarks.empty()) << plots.remarks.front();
    for (const charts::ResultPlot& one : plots.plots) {
        expectPoints(result, one);
        expectTidy(one.plot, 1200.0, 800.0);
    }
}

TEST(FurtherCharts, RankineCyclesOfWorkingFluids) {
    constexpr struct {
        const char* fluid;
        int boiler, condenser;  // [degC]
    } rows[] = {{"TOLUENE", 250, 100}, {"MM", 200, 60},     {"MDM", 240, 100},    {"CYCLOPEN", 180, 50},
                {"PENTANE", 150, 35},  {"R245FA", 110, 35}, {"R1233ZD", 120, 35}, {"R1336MZZ", 140, 40},
                {"WATER", 300, 45},    {"ETHANOL", 200, 60}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.fluid);
        const std::string toml = std::string("request = 'rankine'\nfluid = '") + row.fluid +
                                 "'\n[boiler]\ntemperature = '" + std::to_string(row.boiler) +
                                 " degC'\nsuperheat = '5 K'\nheat = '100 kW'\n[turbine]\nisentropic_efficiency = 0.8\n"
                                 "[condenser]\ntemperature = '" +
                                 std::to_string(row.condenser) +
                                 " degC'\n[pump]\nisentropic_efficiency = 0.7\n"
                                 "[heat_source]\ninlet_temperature = '320 degC'\noutlet_temperature = '300 degC'\n"
                                 "[cooling_water]\ninlet_temperature = '20 degC'\noutlet_temperature = '27 degC'\n";
        expectDrawn(solveNamed(toml), ChartKind::ts);
    }
}

std::string basicToml(const std::string& fluid, double evaporation, double condensation) {
    return "request = 'basic'\nfluid = '" + fluid + "'\n[evaporator]\ntemperature = '" + std::to_string(evaporation) +
           " K'\nsuperheat = '20 K'\n[compressor]\nswept_volume = '0.0028 m3/s'\nisentropic_efficiency = 0.7\n"
           "volumetric_efficiency = 0.85\n[condenser]\ntemperature = '" +
           std::to_string(condensation) + " K'\nsubcooling = '3 K'\n";
}

// Heat at 150 degC from 60 degC; the dew line of the upper fluid leans over.
TEST(FurtherCharts, ACascadeThatGivesHeatAt150Degrees) {
    const std::string efficiencies = "isentropic_efficiency = 0.72\nvolumetric_efficiency = 0.86\n";
    const RunResult result = solveNamed(
        "request = 'cascade'\n[high]\nfluid = 'R1336mzz(Z)'\n[high.evaporator]\nsuperheat = '25 "
        "K'\n[high.compressor]\n" +
        efficiencies +
        "[high.condenser]\ntemperature = '150 degC'\nsubcooling = '3 K'\n[low]\nfluid = 'R1234ze(E)'\n"
        "[low.evaporator]\ntemperature = '60 degC'\nsuperheat = '8 K'\n[low.compressor]\n"
        "capacity.evaporator = '100 kW'\n" +
        efficiencies +
        "[low.condenser]\ntemperature = '95 degC'\nsubcooling = '1 K'\n"
        "[intermediate]\ntemperature_difference = '5 K'\n");
    for (const ChartKind kind : {ChartKind::ph, ChartKind::ts, ChartKind::hs}) {
        SCOPED_TRACE(static_cast<int>(kind));
        expectDrawn(result, kind);
    }
}

// Every seventh blend that the program's own table does not have; tools/walk_charts draws all of them.
TEST(FurtherCharts, BasicCyclesOfBlends) {
    for (const char* blend :
         {"R419B", "R427A", "R434A", "R442A", "R449C", "R455A", "R460B", "R469A", "R472A", "R513A", "R514A", "R516A"}) {
        SCOPED_TRACE(blend);
        std::ifstream file(std::string(test::dataFolder) + "/mixtures/" + blend + ".MIX");
        std::string title;
        double molarMass = 0.0, Tc = 0.0;
        std::getline(file, title);
        file >> molarMass >> Tc;
        ASSERT_GT(Tc, 100.0);
        expectDrawn(solveNamed(basicToml(blend, 0.75 * Tc, 0.9 * Tc)), ChartKind::ph);
    }
}

// ---- tables ---------------------------------------------------------------------------------------------------------

std::string isobar(const std::string& file, double p, double from, double to, double step) {
    return "1\n1\n1\n1\n" + file + "\n1.0\nnone\n2 DEF\n3\n0\n2 1 " + std::to_string(p) + " " + std::to_string(from) +
           " " + std::to_string(to) + " " + std::to_string(step) + "\n";
}

TEST(TableCharts, ASaturationTableIsTheDome) {
    const RunResult result = solveExample("saturation_table");
    const charts::ResultPlots plots = draw(result, ChartKind::ph);
    const charts::Plot& plot = plots.plots.front().plot;
    int onDome = 0;
    for (const charts::PlotPoint& point : plot.points) {
        if (point.look != Look::cycle) continue;
        double least = 1e300;
        for (const charts::PlotLine& line : plot.lines)
            if (line.look == Look::dome) least = std::min(least, distanceTo(line, point.place));
        EXPECT_LT(least, diagrams::flattest);
        ++onDome;
    }
    EXPECT_EQ(onDome, 2 * 17);
    expectTidy(plot, 1200.0, 800.0);
}

TEST(TableCharts, ASinglePhaseTableLiesOutsideTheDome) {
    const RunResult result = solve(isobar("PROPANE.FLD", 1000.0, 310.0, 400.0, 10.0));
    const charts::ResultPlots plots = draw(result, ChartKind::ph);
    const charts::Plot& plot = plots.plots.front().plot;
    double dew = 0.0;  // the easternmost place of the dome at the height of the isobar
    double y = 0.0;
    int rows = 0;
    for (const charts::PlotPoint& point : plot.points)
        if (point.look == Look::cycle) {
            y = point.place.y;
            ++rows;
        }
    EXPECT_EQ(rows, 10);
    for (const charts::PlotLine& line : plot.lines)
        if (line.look == Look::dome)
            for (const Place& place : line.points)
                if (std::fabs(place.y - y) < 0.05) dew = std::max(dew, place.x);
    for (const charts::PlotPoint& point : plot.points) {
        if (point.look != Look::cycle) continue;
        EXPECT_GT(point.place.x, dew - 0.02);
    }
    expectTidy(plot, 1200.0, 800.0);
}

TEST(TableCharts, TwoThousandRowsAreOneLineWithoutMarkers) {
    const RunResult result = solve(isobar("R134A.FLD", 1000.0, 200.0, 399.9, 0.1));
    ASSERT_TRUE(result.isDone());
    ASSERT_EQ(result.number("row_count"), 2000.0);
    const auto start = std::chrono::steady_clock::now();
    const charts::ResultPlots plots = draw(result, ChartKind::ts);
    const charts::Plot& plot = plots.plots.front().plot;
    const charts::Layout layout = charts::layOut(plot, 1200.0, 800.0);
    const std::string svg = charts::svgOf(plot, layout);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("2000 rows: %zu bytes of SVG in %.2f s\n", svg.size(), seconds);
    std::size_t rows = 0, markers = 0;
    for (const charts::PlotLine& line : plot.lines)
        if (line.look == Look::cycle) rows += line.points.size();
    for (const charts::PlotPoint& point : plot.points) markers += point.look == Look::cycle ? 1U : 0U;
    EXPECT_EQ(rows, 2000U);
    EXPECT_EQ(markers, 0U);
    EXPECT_LT(svg.size(), 200'000U);
    charts::Plot columns;
    std::string why;
    ASSERT_TRUE(charts::plotOfTable(result, "density", "temperature", {}, columns, why)) << why;
    EXPECT_EQ(columns.lines.front().points.size(), 2000U);
    expectTidy(columns, 1200.0, 800.0);
}

TEST(TableCharts, ColumnsShareAnAxisOrAreRefused) {
    const RunResult result = solveExample("saturation_table");
    charts::Plot plot;
    std::string why;
    ASSERT_TRUE(charts::plotOfTable(result, "liquid.density,vapor.density", "liquid.temperature", {}, plot, why))
        << why;
    EXPECT_EQ(plot.lines.size(), 2U);
    EXPECT_EQ(plot.legend.size(), 2U);
    expectTidy(plot, 1200.0, 800.0);
    expectTidy(plot, 560.0, 400.0);
    for (const auto& [columns, over] : {std::pair("liquid.density,liquid.enthalpy", "liquid.temperature"),
                                        {"nothing", "liquid.temperature"},
                                        {"liquid.density", "nothing"},
                                        {"", "liquid.temperature"},
                                        {",", "liquid.temperature"}}) {
        why.clear();
        EXPECT_FALSE(charts::plotOfTable(result, columns, over, {}, plot, why)) << columns;
        EXPECT_FALSE(why.empty()) << columns;
    }
}

}  // namespace
}  // namespace frigana
