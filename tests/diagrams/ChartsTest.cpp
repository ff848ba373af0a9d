// Charts of fluids walked point by point, and the picture made of them.
#include <gtest/gtest.h>

#include <string>

#include "ChartWalk.h"
#include "Layout.h"
#include "OPENFL.h"
#include "Picture.h"
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

void make(const Sample& sample, double width, Made& made) {
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
    Dome dome;
    ASSERT_TRUE(makeFluidChart(made.fluid, request, dome, made.chart, why)) << why;
}

// The whole of all fluids is walked by tools/walk_charts.
TEST(FluidCharts, HaveNoGapNoSpikeAndNothingOutside) {
    for (const Sample& sample :
         {Sample{"R134A.FLD", ChartKind::ph}, Sample{"CO2.FLD", ChartKind::ph}, Sample{"C12.FLD", ChartKind::ph},
          Sample{"R410A.MIX", ChartKind::ph}, Sample{"R134A.FLD", ChartKind::ts}, Sample{"R134A.FLD", ChartKind::hs}}) {
        Made made;
        make(sample, 1200.0, made);
        constexpr int blendStride = 16;
        const test::ChartWalk walk = test::walk(made.fluid, made.chart, made.fluid.pure() ? 1 : blendStride);
        RecordProperty("worst", std::to_string(walk.worst));
        EXPECT_GT(walk.curves, 25) << sample.file;
        EXPECT_EQ(walk.faults(), 0) << sample.file << ' ' << static_cast<int>(sample.kind) << ": " << walk.first;
        EXPECT_TRUE(test::domeIsClosed(made.chart)) << sample.file;
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
