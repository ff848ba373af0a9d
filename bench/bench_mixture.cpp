// Time of the calculations of blends of two, three and five components: bubble and dew points, flashes in one phase and
// in two, derivatives in the fractions, all properties at a new state, set-up from a mixture file. Every call has
// another state than the one before, so that no memorised state answers. (Whole cycles of blends: bench_tools.)
#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>

#include "21_InitSubstance.h"
#include "FlashState.h"
#include "FluidConstants.h"
#include "PHIDERV.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"
#include "Substances.h"
#include "TPRHO.h"

namespace {

using namespace frigana;
using frigana::test::flash;
using frigana::test::FlashState;

constexpr int count = 127;  // states of a benchmark, gone through in steps that leave no neighbours side by side
constexpr std::size_t stride = 46;

struct State {
    double T, p, h, rho;
};
using States = std::array<State, count>;

// Loads the blend; the mole fractions.
const Composition& blend(const char* name) {
    return frigana::test::fluid(name).ZMOL;
}

double fractionOfRange(int i, double low, double high) {
    return low + (high - low) * i / count;
}

// States between 0.65 and 0.92 of the critical temperature: at a quality, or beside a line of saturation.
States saturated(const Composition& z, double quality) {
    double Tc, pc, Dc;
    int ierr;
    Text255 herr;
    CRITP(z, Tc, pc, Dc, ierr, herr);
    States states{};
    for (int i = 0; i < count; ++i) {
        const FlashState at = flash("TQ", fractionOfRange(i, 0.65, 0.92) * Tc, quality, z);
        states[static_cast<std::size_t>(i)] = {at.T, at.p, at.h, at.D};
    }
    return states;
}
States vapor(const Composition& z) {
    States states = saturated(z, 1.0);
    for (State& s : states) {
        const FlashState at = flash("TP", s.T + 20.0, s.p, z);
        s = {at.T, at.p, at.h, at.D};
    }
    return states;
}
States liquid(const Composition& z) {
    States states = saturated(z, 0.0);
    for (State& s : states) {
        const FlashState at = flash("TP", s.T - 10.0, s.p, z);
        s = {at.T, at.p, at.h, at.D};
    }
    return states;
}

// Calls the routine, which returns its code, at the next state again and again.
template <class Call>
void run(benchmark::State& state, const States& states, Call call) {
    std::size_t i = 0;
    int failures = 0;
    for (auto _ : state) {
        i = (i + stride) % count;
        failures += call(states[i]) > 0;
    }
    if (failures > 0) state.SkipWithError("a state failed");
}

struct Saturation {
    double T = 0.0, p = 0.0, rhol = 0.0, rhov = 0.0;
    Composition xliq{}, xvap{};
    int ierr = 0;
    Text255 herr;
};

void saturationAtT(benchmark::State& state, const char* name, int kph) {
    const Composition z = blend(name);
    Saturation r;
    run(state, saturated(z, kph == 1 ? 0.0 : 1.0), [&](const State& at) {
        SATT(at.T, z, kph, r.p, r.rhol, r.rhov, r.xliq, r.xvap, r.ierr, r.herr);
        return r.ierr;
    });
}
void saturationAtP(benchmark::State& state, const char* name, int kph) {
    const Composition z = blend(name);
    Saturation r;
    run(state, saturated(z, kph == 1 ? 0.0 : 1.0), [&](const State& at) {
        SATP(at.p, z, kph, r.T, r.rhol, r.rhov, r.xliq, r.xvap, r.ierr, r.herr);
        return r.ierr;
    });
}

void bubbleAtT(benchmark::State& state, const char* name) {
    saturationAtT(state, name, 1);
}
void dewAtT(benchmark::State& state, const char* name) {
    saturationAtT(state, name, 2);
}
void bubbleAtP(benchmark::State& state, const char* name) {
    saturationAtP(state, name, 1);
}
void dewAtP(benchmark::State& state, const char* name) {
    saturationAtP(state, name, 2);
}

void TPFLSH_vapor(benchmark::State& state, const char* name) {
    const Composition z = blend(name);
    run(state, vapor(z), [&](const State& at) { return flash("TP", at.T, at.p, z).ierr; });
}
void TPFLSH_liquid(benchmark::State& state, const char* name) {
    const Composition z = blend(name);
    run(state, liquid(z), [&](const State& at) { return flash("TP", at.T, at.p, z).ierr; });
}
void TPFLSH_twoPhase(benchmark::State& state, const char* name) {
    const Composition z = blend(name);
    run(state, saturated(z, 0.4), [&](const State& at) { return flash("TP", at.T, at.p, z).ierr; });
}
void PHFLSH_twoPhase(benchmark::State& state, const char* name) {
    const Composition z = blend(name);
    run(state, saturated(z, 0.4), [&](const State& at) { return flash("PH", at.p, at.h, z).ierr; });
}

// One phase above the critical temperature, where the flash asks for saturation lines that are not there.
void TPFLSH_above(benchmark::State& state, const char* name) {
    const Composition z = blend(name);
    double Tc, pc, Dc;
    int ierr;
    Text255 herr;
    CRITP(z, Tc, pc, Dc, ierr, herr);
    States states{};
    for (int i = 0; i < count; ++i) {
        State& at = states[static_cast<std::size_t>(i)];
        at.T = 1.1 * Tc;
        at.p = fractionOfRange(i, 0.3, 1.4) * pc;
    }
    run(state, states, [&](const State& at) { return flash("TP", at.T, at.p, z).ierr; });
}

// A table of 2000 rows at the critical pressure, from 1.4 to 0.9 of the critical temperature, with nothing known
// before.
void TPFLSH_isobarOf2000(benchmark::State& state, const char* name) {
    constexpr int rows = 2000;
    const Composition z = blend(name);
    double Tc, pc, Dc;
    int ierr;
    Text255 herr;
    CRITP(z, Tc, pc, Dc, ierr, herr);
    int failures = 0;
    for (auto _ : state) {
        forgetSaturation();
        for (int i = 0; i < rows; ++i) failures += flash("TP", (1.4 - 0.5 * i / rows) * Tc, pc, z).ierr > 0;
    }
    state.counters["row"] =
        benchmark::Counter(rows, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
    state.counters["failures"] = benchmark::Counter(failures, benchmark::Counter::kAvgIterations);
}

void derivativesInFractions(benchmark::State& state, const char* name) {
    const Composition z = blend(name);
    const int order = static_cast<int>(state.range(0));
    Composition dalpha, dnalpha;
    int ierr;
    Text255 herr;
    run(state, liquid(z), [&](const State& at) {
        PHIDERV(order, at.T, at.rho, z, dalpha, dnalpha, ierr, herr);
        benchmark::DoNotOptimize(dnalpha);
        return ierr;
    });
}

void THERM_newState(benchmark::State& state, const char* name) {
    const Composition z = blend(name);
    run(state, liquid(z), [&](const State& at) {
        double p, e, h, s, cv, cp, w, jt;
        THERM(at.T, at.rho, z, p, e, h, s, cv, cp, w, jt);
        benchmark::DoNotOptimize(s);
        return 0;
    });
}

void INITSUBSTANCE_afterAnother(benchmark::State& state, const char* name) {
    for (auto _ : state) {
        state.PauseTiming();
        frigana::test::fluid("R134A.FLD");
        state.ResumeTiming();
        frigana::test::fluid(name);
    }
}
void INITSUBSTANCE_again(benchmark::State& state, const char* name) {
    for (auto _ : state) frigana::test::fluid(name);
}

}  // namespace

#define EVERY_BLEND(name)                                                                    \
    BENCHMARK_CAPTURE(name, R410A 2 components, "R410A.MIX")->Unit(benchmark::kMicrosecond); \
    BENCHMARK_CAPTURE(name, R407C 3 components, "R407C.MIX")->Unit(benchmark::kMicrosecond); \
    BENCHMARK_CAPTURE(name, R448A 5 components, "R448A.MIX")->Unit(benchmark::kMicrosecond)

EVERY_BLEND(bubbleAtT);
EVERY_BLEND(bubbleAtP);
EVERY_BLEND(dewAtT);
EVERY_BLEND(dewAtP);
EVERY_BLEND(TPFLSH_vapor);
EVERY_BLEND(TPFLSH_liquid);
EVERY_BLEND(TPFLSH_twoPhase);
EVERY_BLEND(PHFLSH_twoPhase);
EVERY_BLEND(TPFLSH_above);
#undef EVERY_BLEND
#define EVERY_BLEND(name)                                                                                    \
    BENCHMARK_CAPTURE(name, R410A 2 components, "R410A.MIX")->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond); \
    BENCHMARK_CAPTURE(name, R407C 3 components, "R407C.MIX")->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond); \
    BENCHMARK_CAPTURE(name, R448A 5 components, "R448A.MIX")->Arg(1)->Arg(2)->Unit(benchmark::kMicrosecond)
EVERY_BLEND(derivativesInFractions);
#undef EVERY_BLEND
BENCHMARK_CAPTURE(TPFLSH_above, R428A 4 components, "R428A.MIX")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(TPFLSH_isobarOf2000, R428A 4 components, "R428A.MIX")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(THERM_newState, R410A, "R410A.MIX")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(THERM_newState, R448A, "R448A.MIX")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(INITSUBSTANCE_afterAnother, R410A, "R410A.MIX")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(INITSUBSTANCE_afterAnother, R448A, "R448A.MIX")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(INITSUBSTANCE_again, R410A, "R410A.MIX")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(INITSUBSTANCE_again, R448A, "R448A.MIX")->Unit(benchmark::kMicrosecond);
BENCHMARK_MAIN();
