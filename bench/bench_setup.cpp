// Time of a set-up: in full, with the fluid file read and the reference state computed, and the short way of a call
// with the arguments of the last one.
#include <benchmark/benchmark.h>

#include "OPENFL.h"
#include "SETUP.h"
#include "TreeFolders.h"

namespace {

using namespace frigana;

struct Fluid {
    FileNames files{};
    Text255 parameters = "HMX.BNC";
    Text3 reference = "DEF";
    int ierr = 0;
    Text255 herr;

    explicit Fluid(const char* name) {
        SETPATH(frigana::test::dataFolder);
        files[1] = name;
    }
    bool setUp() {
        SETUP(1, files, parameters, reference, ierr, herr);
        return ierr == 0;
    }
};

void fullSetup(benchmark::State& state, const char* name) {
    Fluid fluid(name);
    int round = 0;
    for (auto _ : state) {
        // another name of the parameter file, which one fluid does not read, takes the full way
        fluid.parameters = ++round % 2 == 0 ? "HMX.BNC" : "hmx.bnc";
        if (!fluid.setUp()) state.SkipWithError("set-up failed");
    }
}

void shortSetup(benchmark::State& state) {
    Fluid fluid("R134A.FLD");
    if (!fluid.setUp()) state.SkipWithError("set-up failed");
    for (auto _ : state) {
        fluid.setUp();
        benchmark::DoNotOptimize(fluid.ierr);
    }
}

}  // namespace

BENCHMARK_CAPTURE(fullSetup, R134A, "R134A.FLD")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(fullSetup, CO2, "CO2.FLD")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(fullSetup, R11, "R11.FLD")->Unit(benchmark::kMicrosecond);
BENCHMARK(shortSetup)->Unit(benchmark::kNanosecond);
BENCHMARK_MAIN();
