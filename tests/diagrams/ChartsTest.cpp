// Charts of fluids walked point by point, and the picture made of them.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <tuple>

#include "ChartWalk.h"
#include "Layout.h"
#include "OPENFL.h"
#include "Picture.h"
#include "SAT_SUB.h"
#include "SAT_SUB_NEWTON.h"
#include "StateChart.h"
#include "Svg.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

using namespace diagrams;

struct Sample {
    const char* file;
    ChartKind kind;
};

struct Made {
    ChartFluid fluid;
    FluidChart chart;
};

void make(const Sample& sample, double width, Made& made, std::optional<double> from = std::nullopt) {
    SETPATH(test::dataFolder);
    FluidSelection selection;
    const std::string file = sample.file;
    selection.kind = file.ends_with(".MIX") ? FluidSelection::Kind::mixtureFile : FluidSelection::Kind::pure;
    selection.name = file;
    selection.files = {file};
    std::string why;
    ASSERT_TRUE(made.fluid.load(selection, why)) << why;
    ChartRequest request;
    request.kind = sample.kind;
    request.scales = charts::scalesOf(catalogue::UnitSystem::metric);
    request.lines = charts::linesFor(width);
    request.from = from;
    Dome dome;
    ASSERT_TRUE(makeFluidChart(made.fluid, request, dome, made.chart, why)) << why;
}

// The lines of the pairs of R403B miss its critical point by 3 K, those of the listed blend by 1.5 K or more: charts
// know the point itself.
TEST(FluidCharts, KnowTheCriticalPointOfABlend) {
    FluidSelection byFile, listed;
    byFile.kind = FluidSelection::Kind::mixtureFile;
    byFile.files = {"R403B.MIX"};
    listed.kind = FluidSelection::Kind::listed;
    listed.files = {"PROPANE.FLD", "R125.FLD", "R245FA.FLD"};
    listed.fractions = {0.5, 0.2, 0.3};
    for (const FluidSelection& selection : {byFile, listed}) {
        SETPATH(test::dataFolder);
        ChartFluid fluid;
        std::string why;
        ASSERT_TRUE(fluid.load(selection, why)) << why;
        const CriticalPoint known = fluid.estimatedCritical();
        CriticalPoint point{known.T + 0.2, known.p, 0};
        int ierr = 0;
        Text255 herr;
        CRTPNT(fluid.composition(), point.T, point.p, point.D, ierr, herr);
        ASSERT_EQ(ierr, 0);
        EXPECT_NEAR(known.T, point.T, 0.3) << selection.files.front();
        EXPECT_NEAR(known.p / point.p, 1, 0.01) << selection.files.front();
    }
}

// The whole of all fluids is walked by tools/walk_charts.
TEST(FluidCharts, HaveNoGapNoSpikeAndNothingOutside) {
    for (const Sample& sample :
         {Sample{"R134A.FLD", ChartKind::ph}, Sample{"CO2.FLD", ChartKind::ph}, Sample{"C12.FLD", ChartKind::ph},
          Sample{"R410A.MIX", ChartKind::ph}, Sample{"R134A.FLD", ChartKind::ts}, Sample{"R134A.FLD", ChartKind::hs},
          // a liquid that freezes in the chart, vapors far thinner than any in use, an equation whose critical point
          // lies elsewhere, a range that ends at the critical pressure, an isentrope of zero, an azeotrope, a cold
          // bubble line
          Sample{"CO2.FLD", ChartKind::ts}, Sample{"MDM.FLD", ChartKind::hs}, Sample{"R21.FLD", ChartKind::ph},
          Sample{"R161.FLD", ChartKind::ts}, Sample{"HYDROGEN.FLD", ChartKind::ph},
          Sample{"HYDROGEN.FLD", ChartKind::ts}, Sample{"R500.MIX", ChartKind::ph},
          Sample{"R450A.MIX", ChartKind::ph}}) {
        Made made;
        make(sample, 1200.0, made);
        constexpr int blendStride = 16;
        const bool straightTop = std::string_view(sample.file) == "R21.FLD";
        const test::ChartWalk walk = test::walk(made.fluid, made.chart, made.fluid.pure() ? 1 : blendStride,
                                                straightTop ? test::longestStraightTop : longestStep);
        RecordProperty("worst", std::to_string(walk.worst));
        EXPECT_GT(walk.curves, 25) << sample.file;
        EXPECT_EQ(walk.faults(), 0) << sample.file << ' ' << static_cast<int>(sample.kind) << ": " << walk.first;
        EXPECT_TRUE(test::domeIsClosed(made.chart)) << sample.file;
    }
}

const Curve& lineOf(const FluidChart& chart, Curve::Role role) {
    return *std::ranges::find_if(chart.curves, [&](const Curve& curve) { return curve.role == role; });
}

// From 350 K to 600 K the dew line of dodecane leans to the right: what expands without losses from it becomes drier.
TEST(FluidCharts, TheDewLineOfDodecaneIsRetrograde) {
    Made made;
    make({"C12.FLD", ChartKind::ts}, 1200.0, made);
    const Polyline& dew = lineOf(made.chart, Curve::Role::dew).points;  // from the critical point down
    int steps = 0;
    for (std::size_t i = 1; i < dew.size(); ++i) {
        if (dew[i - 1].T > 600.0) continue;
        EXPECT_LT(dew[i].s, dew[i - 1].s) << dew[i].T;
        ++steps;
    }
    EXPECT_GT(steps, 10);
    EXPECT_LT(made.chart.critical.s, dew[dew.size() / 4].s);
}

// On an isobar of a zeotropic blend the temperature rises from the bubble to the dew point, between those of the
// saturation routine; in a chart of an azeotrope or a pure fluid it stays.
TEST(FluidCharts, IsobarsOfZeotropicBlendsGlide) {
    for (const auto& [file, least, most] : {std::tuple("R407C.MIX", 3.0, 8.0),
                                            {"R455A.MIX", 6.0, 16.0},
                                            {"R507A.MIX", 0.0, 0.1},
                                            {"R134A.FLD", 0.0, 0.0}}) {
        SCOPED_TRACE(file);
        Made made;
        make({file, ChartKind::ts}, 1200.0, made);
        int isobars = 0;
        for (const Curve& curve : made.chart.curves) {
            if (curve.role != Curve::Role::isoline || curve.constant != Property::pressure) continue;
            if (curve.value > 0.6 * made.chart.critical.p) continue;
            // The ends of what lies inside are points of the boundary, the neighbours of the states of two phases.
            const auto inside = [](const State& state) { return state.q > 0.0 && state.q < 1.0; };
            const auto first = std::ranges::find_if(curve.points, inside);
            const auto last = std::find_if_not(first, curve.points.end(), inside);
            if (first == curve.points.begin() || last == curve.points.end()) continue;  // cut by the window
            std::vector<State> across(first - 1, last + 1);
            if (across.front().D < across.back().D) std::ranges::reverse(across);
            const double glide = across.back().T - across.front().T;
            EXPECT_GE(glide, least) << curve.value;
            EXPECT_LE(glide, most) << curve.value;
            for (std::size_t i = 1; i < across.size() && least > 0.0; ++i) EXPECT_GT(across[i].T, across[i - 1].T);
            double p = 0.0, bubble = 0.0, dew = 0.0, Dl = 0.0, Dv = 0.0;
            Composition x, y;
            int ierr = 0;
            Text255 herr;
            p = curve.value;
            SATP(p, made.fluid.composition(), 1, bubble, Dl, Dv, x, y, ierr, herr);
            EXPECT_NEAR(across.front().T, bubble, 1e-6 * bubble);
            SATP(p, made.fluid.composition(), 2, dew, Dl, Dv, x, y, ierr, herr);
            EXPECT_NEAR(across.back().T, dew, 1e-6 * dew);
            ++isobars;
        }
        EXPECT_GE(isobars, 3);
    }
}

// A chart from below the triple point begins at it, and is whole.
TEST(FluidCharts, BeginAtTheTriplePoint) {
    for (const auto& [file, triple] :
         {std::pair("CO2.FLD", 216.592), {"WATER.FLD", 273.16}, {"AMMONIA.FLD", 195.495}, {"ARGON.FLD", 83.8058}})
        for (const ChartKind kind : {ChartKind::ph, ChartKind::ts}) {
            SCOPED_TRACE(file);
            Made made;
            make({file, kind}, 1200.0, made, 60.0);
            const double lowest = made.fluid.lowestT();
            EXPECT_NEAR(lowest, triple, 0.02);
            EXPECT_NEAR(lineOf(made.chart, Curve::Role::bubble).points.front().T, lowest, 0.02);
            EXPECT_NEAR(lineOf(made.chart, Curve::Role::dew).points.back().T, lowest, 0.02);
            for (const Curve& curve : made.chart.curves)
                for (const State& state : curve.points) EXPECT_GE(state.T, lowest);
            // The vapor pressure of water beside its triple point comes out to 1e-7, which its dew states show.
            const test::ChartWalk walk = test::walk(made.fluid, made.chart);
            EXPECT_EQ(walk.faults() - walk.different, 0) << static_cast<int>(kind) << ": " << walk.first;
            EXPECT_LT(walk.worst, 1e-7) << static_cast<int>(kind) << ": " << walk.first;
        }
}

// Every tag that is opened is closed, in order.
bool wellFormed(const std::string& xml) {
    std::vector<std::string> open;
    for (std::size_t at = xml.find('<'); at != std::string::npos; at = xml.find('<', at + 1)) {
        const std::size_t end = xml.find('>', at);
        if (end == std::string::npos) return false;
        const std::string tag = xml.substr(at + 1, end - at - 1);
        if (tag.starts_with("/")) {
            if (open.empty() || open.back() != tag.substr(1)) return false;
            open.pop_back();
        } else if (!tag.ends_with("/")) {
            open.push_back(tag.substr(0, tag.find(' ')));
        }
    }
    return open.empty();
}

TEST(Pictures, KeepLabelsApartFromEachOtherAndFromTheDome) {
    for (const double width : {1200.0, 560.0})
        for (const Sample& sample : {Sample{"R134A.FLD", ChartKind::ph}, Sample{"CO2.FLD", ChartKind::ts}}) {
            Made made;
            make(sample, width, made);
            charts::ChartStyle style;
            style.width = width;
            const charts::Plot plot = charts::plotOf(made.chart, "A & B <C>", style);
            const charts::Layout layout = charts::layOut(plot, width, width / 1.5);
            EXPECT_GT(layout.labels.size(), 12U);
            for (std::size_t i = 0; i < layout.labels.size(); ++i) {
                for (std::size_t j = 0; j < i; ++j)
                    EXPECT_FALSE(charts::overlap(layout.labels[i].box, layout.labels[j].box))
                        << layout.labels[i].text << " and " << layout.labels[j].text << " at " << width;
                for (const charts::PlacedLine& line : layout.lines) {
                    if (line.look != charts::Look::dome) continue;
                    for (const auto& piece : line.pieces)
                        for (std::size_t k = 1; k < piece.size(); ++k)
                            EXPECT_FALSE(charts::crosses(layout.labels[i].box, piece[k - 1], piece[k]))
                                << layout.labels[i].text;
                }
            }
            const std::string svg = charts::svgOf(plot, layout);
            EXPECT_TRUE(wellFormed(svg));
            EXPECT_NE(svg.find("A &amp; B &lt;C&gt;"), std::string::npos);
            if (!charts::canWrite(charts::Format::png)) continue;
            std::string bytes, why;
            EXPECT_TRUE(charts::rasterize(svg, charts::Format::png, 1.0, bytes, why)) << why;
            EXPECT_EQ(bytes.substr(1, 3), "PNG");
            EXPECT_TRUE(charts::rasterize(svg, charts::Format::pdf, 1.0, bytes, why)) << why;
            EXPECT_EQ(bytes.substr(0, 4), "%PDF");
        }
}

TEST(Pictures, AreRefusedForOtherExtensions) {
    std::string why;
    EXPECT_FALSE(charts::writePicture({}, 600, 400, "chart.gif", why));
    EXPECT_NE(why.find(".svg"), std::string::npos);
}

}  // namespace
}  // namespace frigana
