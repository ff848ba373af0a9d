// Time of a saturation state of R134a: at temperature and at pressure, with the memorised state missed and hit.
#include <benchmark/benchmark.h>

#include "FluidConstants.h"
#include "OPENFL.h"
#include "SAT_SUB.h"
#include "SAT_SUB_INVERSE.h"
#include "SETUP.h"
#include "TreeFolders.h"

namespace {

using namespace frigana;

bool setUp() {
    SETPATH(frigana::test::dataFolder);
    FileNames files{};
    files[1] = "R134A.FLD";
    Text3 reference = "DEF";
    int ierr;
    Text255 herr;
    SETUP(1, files, "HMX.BNC", reference, ierr, herr);
    return ierr == 0;
}

struct Results {
    double T = 0.0, p = 0.0, rhol = 0.0, rhov = 0.0;
    Composition xliq{}, xvap{};
    int ierr = 0;
    Text255 herr;
};

// Walks over a range in steps that never come back to the last value.
struct Walk {
    double low, high, value = 0.0;
    double next() {
        value += 0.0137 * (high - low);
        if (value < low || value > high) value = low + 0.31 * (value - high > 0.0 ? value - high : 0.0);
        return value;
    }
};

void temperatureMissed(benchmark::State& state, double low, double high) {
    if (!setUp()) state.SkipWithError("set-up failed");
    const Composition x = unitComposition(1);
    Results r;
    Walk T{low * fluidConstants.TCRIT[1], high * fluidConstants.TCRIT[1]};
    int failures = 0;
    for (auto _ : state) {
        SATT(T.next(), x, 1, r.p, r.rhol, r.rhov, r.xliq, r.xvap, r.ierr, r.herr);
        failures += r.ierr != 0;
        benchmark::DoNotOptimize(r.p);
    }
    if (failures > 0) state.SkipWithError("saturation failed");
}

void temperatureHit(benchmark::State& state) {
    if (!setUp()) state.SkipWithError("set-up failed");
    const Composition x = unitComposition(1);
    Results r;
    for (auto _ : state) {
        SATT(300.0, x, 1, r.p, r.rhol, r.rhov, r.xliq, r.xvap, r.ierr, r.herr);
        benchmark::DoNotOptimize(r.p);
    }
}

void pressureMissed(benchmark::State& state, double low, double high) {
    if (!setUp()) state.SkipWithError("set-up failed");
    const Composition x = unitComposition(1);
    Results r;
    Walk p{low * fluidConstants.PCRIT[1], high * fluidConstants.PCRIT[1]};
    int failures = 0;
    for (auto _ : state) {
        SATP(p.next(), x, 1, r.T, r.rhol, r.rhov, r.xliq, r.xvap, r.ierr, r.herr);
        failures += r.ierr != 0;
        benchmark::DoNotOptimize(r.T);
    }
    if (failures > 0) state.SkipWithError("saturation failed");
}

void pressureHit(benchmark::State& state) {
    if (!setUp()) state.SkipWithError("set-up failed");
    const Composition x = unitComposition(1);
    Results r;
    for (auto _ : state) {
        SATP(700.0, x, 1, r.T, r.rhol, r.rhov, r.xliq, r.xvap, r.ierr, r.herr);
        benchmark::DoNotOptimize(r.T);
    }
}

void densityOfLiquid(benchmark::State& state) {
    if (!setUp()) state.SkipWithError("set-up failed");
    const Composition x = unitComposition(1);
    Results r;
    int line = 0;
    Walk rho{1.5 * fluidConstants.DCRIT[1], 2.8 * fluidConstants.DCRIT[1]};
    for (auto _ : state) {
        SATD(rho.next(), x, 0, line, r.T, r.p, r.rhol, r.rhov, r.xliq, r.xvap, r.ierr, r.herr);
        benchmark::DoNotOptimize(r.T);
    }
}

}  // namespace

BENCHMARK_CAPTURE(temperatureMissed, 0.6 to 0.98 Tc, 0.6, 0.98)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(temperatureMissed, 0.991 to 0.999 Tc, 0.991, 0.999)->Unit(benchmark::kMicrosecond);
BENCHMARK(temperatureHit)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(pressureMissed, 0.02 to 0.9 pc, 0.02, 0.9)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(pressureMissed, 0.95 to 0.999 pc, 0.95, 0.999)->Unit(benchmark::kMicrosecond);
BENCHMARK(pressureHit)->Unit(benchmark::kMicrosecond);
BENCHMARK(densityOfLiquid)->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
