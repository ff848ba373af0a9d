// The pool of workers: what a request costs over its calculation, and how the throughput grows with the workers.
#include <benchmark/benchmark.h>

#include <fstream>
#include <sstream>
#include <string>

#include "Batch.h"
#include "Pool.h"
#include "TreeFolders.h"
#include "frigana.h"

namespace {

using namespace frigana::workers;

std::string echo(std::string_view request) {
    return std::string(request);
}

// Solves the request and gives its result file, in the current folder.
std::string solve(std::string_view request) {
    const std::string path = "plant.fi1", installation = std::string(frigana::test::dataFolder) + "/frigana";
    std::ofstream(path) << request;
    Frigana(path.data(), installation.data(), static_cast<int>(path.size()), static_cast<int>(installation.size()));
    std::ostringstream result;
    result << std::ifstream("plant.fo1").rdbuf();
    return result.str();
}

// Basic cycles of R134a, no two alike.
std::string basicCycle(std::size_t number) {
    const double evaporating = 250.0 + static_cast<double>(number % 20'000) * 1e-3;
    return "2\nbench\nR134A.FLD\n2 DEF\n1\n15\n1 " + std::to_string(evaporating) +
           "\n2 5.0\n1 0.0\n2 2.0\n1 0.0\n1 0.0028\n1 0.7\n1 0.85\n2 0.0\n1 0.0\n1 313.15\n2 3.0\n1 0.0\n2 0.0\n1 "
           "0.0\n";
}

bool solved(const Answer& answer) {
    return answer.end == End::done && answer.text.starts_with(" 2\n");
}

void Echo(benchmark::State& state) {
    Pool pool(echo, 1);
    const std::string text(static_cast<std::size_t>(state.range(0)), 'x');
    for (auto _ : state) benchmark::DoNotOptimize(pool.run(text));
}
BENCHMARK(Echo)->Arg(100)->Arg(100'000)->UseRealTime()->Unit(benchmark::kMicrosecond);

void BasicCycle(benchmark::State& state) {
    Pool pool(solve, 1);
    std::size_t number = 0;
    for (auto _ : state)
        if (!solved(pool.run(basicCycle(number++)))) state.SkipWithError("not solved");
}
BENCHMARK(BasicCycle)->UseRealTime()->Unit(benchmark::kMillisecond);

// Forking a worker in the place of one that died.
void Replacement(benchmark::State& state) {
    Pool pool([](std::string_view) -> std::string { _exit(1); }, 1);
    for (auto _ : state) benchmark::DoNotOptimize(pool.run(""));
}
BENCHMARK(Replacement)->UseRealTime()->Unit(benchmark::kMillisecond);

void Cases(benchmark::State& state) {
    constexpr std::size_t cases = 4000;
    Pool pool(solve, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        std::size_t number = 0, good = 0;
        runBatch(pool, {[&](std::string& request) {
                            if (number == cases) return false;
                            request = basicCycle(number++);
                            return true;
                        },
                        [&](std::size_t, Answer&& answer) {
                            good += solved(answer);
                            return true;
                        }});
        if (good != cases) state.SkipWithError("not all were solved");
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(cases));
}
BENCHMARK(Cases)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
