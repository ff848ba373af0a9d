// Speed of the models beside the Helmholtz equation: THERM at a new state by each of them, and saturation.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <string>

#include "FluidConstants.h"
#include "LIMITS.h"
#include "OPENFL.h"
#include "PREOS.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"
#include "SETAGA.h"
#include "SETUP.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

void check(int ierr, const Text255& herr) {
    if (ierr <= 0) return;
    std::fprintf(stderr, "%.*s\n", static_cast<int>(herr.length()), herr.data());
    std::exit(1);
}

void setUp(std::initializer_list<const char*> fluids, const char* eos = "",
           const char* folder = frigana::test::dataFolder) {
    int ierr = 0;
    Text255 herr;
    SETPATH(folder);
    FileNames files{};
    int count = 0;
    for (const char* fluid : fluids) files[++count].assign(std::string(fluid) + ".FLD");
    if (*eos != '\0') {
        ComponentArray<Text3> tags{};
        tags.fill(eos);
        SETMOD(count, "EOS", eos, tags, ierr, herr);
    }
    Text3 reference("DEF");
    SETUP(count, files, "HMX.BNC", reference, ierr, herr);
    check(ierr, herr);
}

// A walk over 64 states; each step changes temperature and density.
void walk(benchmark::State& state, const Composition& x, double t0, double d0) {
    int i = 0;
    for (auto _ : state) {
        i = (i + 1) & 63;
        double p, e, h, s, cv, cp, w, jt;
        THERM(t0 + 0.1 * i, d0 * (1.0 + 0.001 * i), x, p, e, h, s, cv, cp, w, jt);
        benchmark::DoNotOptimize(p);
        benchmark::DoNotOptimize(w);
    }
}

void walkOfFluid(benchmark::State& state) {
    walk(state, unitComposition(1), 0.9 * fluidConstants.TCRIT[1], 2.0 * fluidConstants.DCRIT[1]);
}

void bwr(benchmark::State& state) {
    setUp({"R123"}, "BWR");
    walkOfFluid(state);
}
BENCHMARK(bwr)->Name("THERM/new state/BWR R123");

void qui(benchmark::State& state) {
    setUp({"QUITEST"}, "", FRIGANA_TEST_FLUIDS);
    walkOfFluid(state);
}
BENCHMARK(qui)->Name("THERM/new state/QUI");

void cubic(benchmark::State& state) {
    setUp({"R134A"});
    int i = 1;
    PREOS(i);
    walkOfFluid(state);
    i = 0;
    PREOS(i);
}
BENCHMARK(cubic)->Name("THERM/new state/PR R134A");

Composition gas() {
    Composition x{};
    x[1] = 0.7;
    x[2] = 0.1;
    x[3] = 0.1;
    x[4] = x[5] = 0.05;
    return x;
}

void helmholtzGas(benchmark::State& state) {
    setUp({"NITROGEN", "CO2", "PROPANE", "BUTANE", "PENTANE"});
    walk(state, gas(), 350.0, 2.0);
}
BENCHMARK(helmholtzGas)->Name("THERM/new state/HMX gas of five");

void naturalGas(benchmark::State& state) {
    setUp({"NITROGEN", "CO2", "PROPANE", "BUTANE", "PENTANE"});
    int ierr;
    Text255 herr;
    SETAGA(ierr, herr);
    check(ierr, herr);
    walk(state, gas(), 350.0, 2.0);
    UNSETAGA();
}
BENCHMARK(naturalGas)->Name("THERM/new state/AGA8 gas of five");

void cubicGas(benchmark::State& state) {
    setUp({"NITROGEN", "CO2", "PROPANE", "BUTANE", "PENTANE"});
    int i = 1;
    PREOS(i);
    walk(state, gas(), 350.0, 2.0);
    i = 0;
    PREOS(i);
}
BENCHMARK(cubicGas)->Name("THERM/new state/PR gas of five");

void saturation(benchmark::State& state) {
    setUp({"R123"}, "BWR");
    const Composition x = unitComposition(1);
    int i = 0, ierr;
    Text255 herr;
    for (auto _ : state) {
        i = (i + 1) & 63;
        double p, dl, dv;
        Composition xl, xv;
        SATT(290.0 + 0.5 * i, x, 1, p, dl, dv, xl, xv, ierr, herr);
        benchmark::DoNotOptimize(p);
    }
}
BENCHMARK(saturation)->Name("SATT/BWR R123");

void limits(benchmark::State& state) {
    setUp({"R134A"});
    const Composition x = unitComposition(1);
    int ierr;
    Text255 herr;
    for (auto _ : state) {
        double tmin, tmax, dmax, pmax;
        LIMITX("EOS", 300.0, 5.0, 1000.0, x, tmin, tmax, dmax, pmax, ierr, herr);
        benchmark::DoNotOptimize(ierr);
    }
}
BENCHMARK(limits)->Name("LIMITX/R134A");

}  // namespace
}  // namespace frigana

BENCHMARK_MAIN();
