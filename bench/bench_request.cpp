// Requests through the entry point: how many are read, checked and refused with their failure file per second, and how
// many are solved.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "TreeFolders.h"
#include "frigana.h"

namespace {

struct Plant {
    std::filesystem::path folder = std::filesystem::temp_directory_path() / "frigana-bench";
    std::string request = (folder / "plant.fi1").string();
    std::string installation = std::string(frigana::test::dataFolder) + "/frigana";

    explicit Plant(const char* firstParameter) {
        std::filesystem::create_directories(folder);
        std::ofstream(request) << "2\nbench\nR134A.FLD\n2 DEF\n1\n15\n"
                               << firstParameter
                               << "\n2 5.0\n1 0.0\n2 2.0\n1 0.0\n1 0.0028\n1 0.7\n1 0.85\n2 0.0\n1 0.0\n1 313.15\n"
                                  "2 3.0\n1 0.0\n2 0.0\n1 0.0\n";
    }
    ~Plant() { std::filesystem::remove_all(folder); }
    void run() const {
        Frigana(request.data(), installation.data(), static_cast<int>(request.size()),
                static_cast<int>(installation.size()));
    }
};

void ReadCheckRefuse(benchmark::State& state) {
    const Plant plant("1 50.0");
    for (auto _ : state) plant.run();
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(ReadCheckRefuse)->UseRealTime();

void SolveBasicCycle(benchmark::State& state) {
    const Plant plant("1 268.15");
    for (auto _ : state) plant.run();
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(SolveBasicCycle)->UseRealTime()->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
