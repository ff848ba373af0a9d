// Time of the curves of a log p-h chart.
#include <benchmark/benchmark.h>

#include <string>

#include "FluidChart.h"
#include "OPENFL.h"
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

}  // namespace

BENCHMARK_MAIN();
