// Time of the curves of a log p-h chart, and of the charts of all cycles from their result to the picture.
#include <benchmark/benchmark.h>

#include <string>

#include "FluidChart.h"
#include "Layout.h"
#include "NamedRequest.h"
#include "OPENFL.h"
#include "ResultChart.h"
#include "RunResult.h"
#include "Svg.h"
#include "TreeFolders.h"

namespace {

using namespace frigana;
using namespace frigana::diagrams;

void logPH(benchmark::State& state, const std::string& file, FluidSelection::Kind kind) {
    SETPATH(test::dataFolder);
    FluidSelection selection;
    selection.kind = kind;
    selection.name = file;
    selection.files = {file};
    ChartFluid fluid;
    std::string why;
    if (!fluid.load(selection, why)) state.SkipWithError(why.c_str());
    ChartRequest request;
    request.scales.temperature = {1.0, -273.15};
    request.scales.pressure = {0.01, 0.0};
    for (auto _ : state) {
        Dome dome;
        FluidChart chart;
        if (!makeFluidChart(fluid, request, dome, chart, why)) state.SkipWithError(why.c_str());
        benchmark::DoNotOptimize(chart.curves.size());
    }
}

BENCHMARK_CAPTURE(logPH, R134a, "R134A.FLD", FluidSelection::Kind::pure)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(logPH, CO2, "CO2.FLD", FluidSelection::Kind::pure)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(logPH, R410A, "R410A.MIX", FluidSelection::Kind::mixtureFile)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(logPH, R448A, "R448A.MIX", FluidSelection::Kind::mixtureFile)->Unit(benchmark::kMillisecond);

// The request that `frigana new` writes; of two circuits both pictures.
void cycleChart(benchmark::State& state, const catalogue::Request& request) {
    const catalogue::RunResult result =
        catalogue::runFilled(catalogue::typicalRequest(request), {test::dataFolder, false});
    const charts::ChartStyle style;
    for (auto _ : state) {
        charts::ResultPlots plots;
        std::string why;
        if (!charts::plotsOfResult(result, ChartKind::ph, style, test::dataFolder, plots, why))
            state.SkipWithError(why.c_str());
        for (const charts::ResultPlot& one : plots.plots)
            benchmark::DoNotOptimize(
                charts::svgOf(one.plot, charts::layOut(one.plot, style.width, style.height)).size());
    }
}

}  // namespace

int main(int argc, char** argv) {
    for (const catalogue::Request& request : catalogue::requests())
        if (request.type == 2)
            benchmark::RegisterBenchmark(("cycle/" + std::string(request.name)).c_str(), [&](benchmark::State& state) {
                cycleChart(state, request);
            })->Unit(benchmark::kMillisecond);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
