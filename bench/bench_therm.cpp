// Speed of the property routines of one fluid: THERM at a new state and at the same one, THERM2, density roots.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "FluidConstants.h"
#include "PROP_SUB.h"
#include "SETUP.h"
#include "TPRHO.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

void setUp(const char* fluid) {
    FileNames files{};
    files[1] = Text255(std::string(frigana::test::dataFolder) + "/fluids/" + fluid + ".FLD");
    Text3 reference("DEF");
    int ierr = 0;
    Text255 herr;
    SETUP(1, files, "HMX.BNC", reference, ierr, herr);
    if (ierr > 0) {
        std::fprintf(stderr, "%.*s\n", static_cast<int>(herr.length()), herr.data());
        std::exit(1);
    }
}

constexpr const char* fluids[] = {"R134A", "PROPANE", "CO2", "AMMONIA", "R22", "R123"};

// A walk over 64 states around 0.9 Tc and twice the critical density; each step changes temperature and density.
void therm(benchmark::State& state) {
    setUp(fluids[state.range(0)]);
    state.SetLabel(fluids[state.range(0)]);
    const Composition x = unitComposition(1);
    const double t0 = 0.9 * fluidConstants.TCRIT[1], d0 = 2.0 * fluidConstants.DCRIT[1];
    int i = 0;
    for (auto _ : state) {
        i = (i + 1) & 63;
        double p, e, h, s, cv, cp, w, jt;
        THERM(t0 + 0.1 * i, d0 + 0.003 * i, x, p, e, h, s, cv, cp, w, jt);
        benchmark::DoNotOptimize(p);
        benchmark::DoNotOptimize(w);
    }
}
BENCHMARK(therm)->Name("THERM/new state")->DenseRange(0, 5);

void thermAtNewDensity(benchmark::State& state) {
    setUp("R134A");
    const Composition x = unitComposition(1);
    const double t = 0.9 * fluidConstants.TCRIT[1], d0 = 2.0 * fluidConstants.DCRIT[1];
    int i = 0;
    for (auto _ : state) {
        i = (i + 1) & 63;
        double p, e, h, s, cv, cp, w, jt;
        THERM(t, d0 + 0.003 * i, x, p, e, h, s, cv, cp, w, jt);
        benchmark::DoNotOptimize(p);
    }
}
BENCHMARK(thermAtNewDensity)->Name("THERM/new density/R134A");

void thermAtSameState(benchmark::State& state) {
    setUp("R134A");
    const Composition x = unitComposition(1);
    const double t = 0.9 * fluidConstants.TCRIT[1], d = 2.0 * fluidConstants.DCRIT[1];
    for (auto _ : state) {
        double p, e, h, s, cv, cp, w, jt;
        THERM(t, d, x, p, e, h, s, cv, cp, w, jt);
        benchmark::DoNotOptimize(p);
    }
}
BENCHMARK(thermAtSameState)->Name("THERM/same state/R134A");

void therm2(benchmark::State& state) {
    setUp("R134A");
    const Composition x = unitComposition(1);
    const double t0 = 0.9 * fluidConstants.TCRIT[1], d0 = 2.0 * fluidConstants.DCRIT[1];
    int i = 0;
    for (auto _ : state) {
        i = (i + 1) & 63;
        Therm2Result r;
        THERM2(t0 + 0.1 * i, d0 + 0.003 * i, x, r);
        benchmark::DoNotOptimize(r);
    }
}
BENCHMARK(therm2)->Name("THERM2/new state/R134A");

void pressure(benchmark::State& state) {
    setUp("R134A");
    const Composition x = unitComposition(1);
    const double t = 0.9 * fluidConstants.TCRIT[1], d0 = 2.0 * fluidConstants.DCRIT[1];
    int i = 0;
    for (auto _ : state) {
        i = (i + 1) & 63;
        double p;
        PRESS(t, d0 + 0.003 * i, x, p);
        benchmark::DoNotOptimize(p);
    }
}
BENCHMARK(pressure)->Name("PRESS/new density/R134A");

// Side 1 liquid at 3000 kPa, side 2 vapor at 300 kPa, around 300 K.
void densityRoot(benchmark::State& state) {
    setUp("R134A");
    const Composition x = unitComposition(1);
    const int side = static_cast<int>(state.range(0));
    state.SetLabel(side == 1 ? "liquid" : "vapor");
    int i = 0;
    for (auto _ : state) {
        i = (i + 1) & 63;
        double rho = 0.0;
        int ierr = 0;
        Text255 herr;
        TPRHO(295.0 + 0.1 * i, side == 1 ? 3000.0 : 300.0, x, side, 0, rho, ierr, herr);
        benchmark::DoNotOptimize(rho);
    }
}
BENCHMARK(densityRoot)->Name("TPRHO/R134A")->Arg(1)->Arg(2);

}  // namespace
}  // namespace frigana

BENCHMARK_MAIN();
