// Time of one call of TRNPRP, both properties of one phase, for each model, in a liquid and in a gas.
#include <benchmark/benchmark.h>

#include <cmath>

#include "PureFluid.h"
#include "SAT_SUB.h"
#include "TRNSP.h"

namespace {

using namespace frigana;

// Saturated liquid and vapor at 0.8 of the critical temperature, and what answers for the two properties.
void pureTransport(benchmark::State& state, const char* fluid, bool liquid) {
    if (test::setUp(fluid) != 0) state.SkipWithError("set-up failed");
    const Composition x = unitComposition(1);
    const double T = 0.8 * fluidConstants.TCRIT[1];
    double p = 0.0, Dl = 0.0, Dv = 0.0, eta = 0.0, tcx = 0.0;
    Composition xl{}, xv{};
    int ierr = 0;
    Text255 herr;
    SATT(T, x, 1, p, Dl, Dv, xl, xv, ierr, herr);
    // two states in turn, so that nothing is remembered from the last call
    const double D = liquid ? Dl : Dv;
    int turn = 0;
    for (auto _ : state) {
        TRNPRP(T + 0.01 * (++turn % 2), D, x, eta, tcx, ierr, herr);
        benchmark::DoNotOptimize(eta);
        benchmark::DoNotOptimize(tcx);
    }
    if (!(eta > 0.0 && tcx > 0.0)) state.SkipWithError("no value");
}

void mixtureTransport(benchmark::State& state, std::initializer_list<std::string_view> fluids, bool liquid) {
    if (test::setUp(fluids) != 0) state.SkipWithError("set-up failed");
    Composition x{};
    for (int i = 1; i <= static_cast<int>(fluids.size()); ++i) x[i] = 1.0 / static_cast<double>(fluids.size());
    double p = 0.0, Dl = 0.0, Dv = 0.0, eta = 0.0, tcx = 0.0;
    Composition xl{}, xv{};
    int ierr = 0;
    Text255 herr;
    const double T = 280.0;
    SATT(T, x, liquid ? 1 : 2, p, Dl, Dv, xl, xv, ierr, herr);
    const double D = liquid ? Dl : Dv;
    int turn = 0;
    for (auto _ : state) {
        TRNPRP(T + 0.01 * (++turn % 2), D, x, eta, tcx, ierr, herr);
        benchmark::DoNotOptimize(eta);
        benchmark::DoNotOptimize(tcx);
    }
    if (!(eta > 0.0 && tcx > 0.0)) state.SkipWithError("no value");
}

}  // namespace

// VS1 with TC1 and TK3: the reference correlations
BENCHMARK_CAPTURE(pureTransport, R134A_VS1_TC1_liquid, "R134A", true);
BENCHMARK_CAPTURE(pureTransport, R134A_VS1_TC1_vapor, "R134A", false);
BENCHMARK_CAPTURE(pureTransport, PROPANE_VS1_TC1_liquid, "PROPANE", true);
BENCHMARK_CAPTURE(pureTransport, CO2_VS1_TC1_liquid, "CO2", true);
BENCHMARK_CAPTURE(pureTransport, AMMONIA_VS1_TC1_liquid, "AMMONIA", true);
// TK1
BENCHMARK_CAPTURE(pureTransport, R123_VS1_TC1_TK1_liquid, "R123", true);
// VS0, TC0
BENCHMARK_CAPTURE(pureTransport, R23_VS0_TC0_liquid, "R23", true);
BENCHMARK_CAPTURE(pureTransport, ETHYLENE_VS0_TC1_liquid, "ETHYLENE", true);
// corresponding states, alone and with an own conductivity
BENCHMARK_CAPTURE(pureTransport, R32_ECS_liquid, "R32", true);
BENCHMARK_CAPTURE(pureTransport, R32_ECS_vapor, "R32", false);
BENCHMARK_CAPTURE(pureTransport, R22_ECS_liquid, "R22", true);
BENCHMARK_CAPTURE(pureTransport, R143A_ECS_TC1_liquid, "R143A", true);
// mixtures
BENCHMARK_CAPTURE(mixtureTransport, R410A_like_liquid, {"R32", "R125"}, true);
BENCHMARK_CAPTURE(mixtureTransport, R410A_like_vapor, {"R32", "R125"}, false);
BENCHMARK_CAPTURE(mixtureTransport, R407C_like_liquid, {"R32", "R125", "R134A"}, true);
BENCHMARK_CAPTURE(mixtureTransport, five_components_liquid, {"R32", "R125", "R134A", "R1234YF", "R1234ZE"}, true);

BENCHMARK_MAIN();
