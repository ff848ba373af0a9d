// Time of a flash of R134a at states that change from call to call, so that no memorised saturation state is hit, and
// at one state again and again, as the solvers of cycles ask for it.
#include <benchmark/benchmark.h>

#include <array>

#include "FlashState.h"
#include "PureFluid.h"

namespace {

using namespace frigana;
using frigana::test::flash;
using frigana::test::FlashState;

constexpr int count = 64;
struct Inputs {
    double T, p, h, s;
};

// States on a grid of pressures; T = Tsat(p) + superheat, or a quality between the lines.
std::array<Inputs, count> statesAtSuperheat(double superheat) {
    std::array<Inputs, count> states{};
    const Composition z = unitComposition(1);
    for (int i = 0; i < count; ++i) {
        const double p = 150.0 + 2500.0 * i / count;
        const double Tsat = flash("PQ", p, superheat < 0 ? 0.0 : 1.0, z).T;
        const FlashState state = flash("TP", Tsat + superheat, p, z);
        states[static_cast<std::size_t>(i)] = {state.T, p, state.h, state.s};
    }
    return states;
}

std::array<Inputs, count> statesAtQuality(double quality) {
    std::array<Inputs, count> states{};
    const Composition z = unitComposition(1);
    for (int i = 0; i < count; ++i) {
        const double p = 150.0 + 2500.0 * i / count;
        const FlashState state = flash("PQ", p, quality, z);
        states[static_cast<std::size_t>(i)] = {state.T, p, state.h, state.s};
    }
    return states;
}

template <class Call>
void run(benchmark::State& state, const std::array<Inputs, count>& inputs, bool repeated, Call call) {
    const Composition z = unitComposition(1);
    std::size_t i = 0;
    for (auto _ : state) {
        if (!repeated) i = (i + 1) % count;
        FlashState result = call(inputs[i], z);
        benchmark::DoNotOptimize(result);
    }
}

FlashState atTP(const Inputs& in, const Composition& z) {
    return flash("TP", in.T, in.p, z);
}
FlashState atPH(const Inputs& in, const Composition& z) {
    return flash("PH", in.p, in.h, z);
}
FlashState atPS(const Inputs& in, const Composition& z) {
    return flash("PS", in.p, in.s, z);
}

#define FLASH_BENCHMARK(name, states, call)                               \
    void name(benchmark::State& state) {                                  \
        frigana::test::setUp("R134A");                                    \
        const std::array<Inputs, count> inputs = states;                  \
        run(state, inputs, state.range(0) == 1, call);                    \
        state.SetLabel(state.range(0) == 1 ? "same state" : "new state"); \
    }                                                                     \
    BENCHMARK(name)->Arg(0)->Arg(1)

FLASH_BENCHMARK(TPFLSH_vapor, statesAtSuperheat(20), atTP);
FLASH_BENCHMARK(TPFLSH_liquid, statesAtSuperheat(-10), atTP);
FLASH_BENCHMARK(PHFLSH_vapor, statesAtSuperheat(20), atPH);
FLASH_BENCHMARK(PHFLSH_liquid, statesAtSuperheat(-10), atPH);
FLASH_BENCHMARK(PHFLSH_twoPhase, statesAtQuality(0.4), atPH);
FLASH_BENCHMARK(PSFLSH_vapor, statesAtSuperheat(20), atPS);
FLASH_BENCHMARK(PSFLSH_twoPhase, statesAtQuality(0.9), atPS);

}  // namespace

BENCHMARK_MAIN();
