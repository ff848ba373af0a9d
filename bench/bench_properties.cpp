// Properties over arrays: what a state costs over the engine's own flash.
#include <benchmark/benchmark.h>

#include <vector>

#include "EngineAccess.h"
#include "FLSH_SUB.h"
#include "Properties.h"
#include "TreeFolders.h"

namespace {

using namespace frigana;

constexpr std::size_t count = 1000;

// Superheated vapor, no two states alike.
struct States {
    std::vector<double> T, p;
    States() {
        for (std::size_t i = 0; i < count; ++i) {
            T.push_back(300.0 + 0.1 * static_cast<double>(i));
            p.push_back(100.0 + 0.05 * static_cast<double>(i));
        }
    }
};

programs::PropertyFluid opened(const char* name) {
    programs::PropertyFluid fluid;
    const programs::EngineAccess engine;
    fluid.open(name, test::dataFolder);
    return fluid;
}

void Engine(benchmark::State& state) {
    opened("R134a");
    const States given;
    const Composition z = unitComposition(1);
    for (auto _ : state)
        for (std::size_t i = 0; i < count; ++i) {
            double T = given.T[i], D, Dl, Dv, q, e, h, s, cv, cp, w;
            Composition x, y;
            int ierr;
            Text255 herr;
            TPFLSH(T, given.p[i], z, D, Dl, Dv, x, y, q, e, h, s, cv, cp, w, ierr, herr);
            benchmark::DoNotOptimize(h);
        }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * count));
}
BENCHMARK(Engine);

// The same states through the interface: the difference is its overhead.
void Array(benchmark::State& state) {
    const programs::PropertyFluid fluid = opened("R134a");
    const States given;
    const int wanted[] = {static_cast<int>(programs::Property::enthalpy)};
    std::vector<double> results(count);
    std::vector<int> codes(count);
    for (auto _ : state) {
        const programs::EngineAccess engine;
        fluid.answer({'T', 'P', given.T.data(), given.p.data(), count, wanted, results.data(), codes.data()});
        benchmark::DoNotOptimize(results.data());
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(state.iterations() * count));
}
BENCHMARK(Array);

// One state a call.
void Single(benchmark::State& state) {
    const programs::PropertyFluid fluid = opened("R134a");
    const States given;
    const int wanted[] = {static_cast<int>(programs::Property::enthalpy)};
    double result = 0.0;
    std::size_t i = 0;
    for (auto _ : state) {
        const programs::EngineAccess engine;
        i = (i + 1) % count;
        fluid.answer({'T', 'P', &given.T[i], &given.p[i], 1, wanted, &result});
        benchmark::DoNotOptimize(result);
    }
}
BENCHMARK(Single);

}  // namespace

BENCHMARK_MAIN();
