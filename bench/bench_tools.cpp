// Whole requests through the entry point, file to file: the basic cycle per fluid and the property tables.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "TreeFolders.h"
#include "frigana.h"

namespace {

// A folder with one request; every run reads, solves and writes it.
class Plant {
  public:
    explicit Plant(const std::string& lines) {
        std::filesystem::create_directories(folder_);
        std::ofstream(request_) << lines;
    }
    ~Plant() { std::filesystem::remove_all(folder_); }
    Plant(const Plant&) = delete;
    Plant& operator=(const Plant&) = delete;
    void time(benchmark::State& state) const {
        for (auto _ : state)
            Frigana(request_.data(), installation_.data(), static_cast<int>(request_.size()),
                    static_cast<int>(installation_.size()));
        state.SetItemsProcessed(state.iterations());
        std::ifstream result(std::filesystem::path(request_).replace_extension(".fo1"));
        if (std::string first; !(result >> first) || first == "0") state.SkipWithError("the request was refused");
    }

  private:
    std::filesystem::path folder_ = std::filesystem::temp_directory_path() / "frigana-bench-tools";
    std::string request_ = (folder_ / "plant.fi1").string();
    std::string installation_ = std::string(frigana::test::dataFolder) + "/frigana";
};

void BasicCycle(benchmark::State& state, const char* fluid, const char* evaporating, const char* condensing) {
    const Plant plant(std::string("2\nbench\n") + fluid + "\n2 DEF\n1\n15\n1 " + evaporating +
                      "\n2 5.0\n1 0.0\n2 2.0\n1 0.0\n1 0.0028\n1 0.7\n1 0.85\n2 0.0\n1 0.0\n1 " + condensing +
                      "\n2 3.0\n1 0.0\n2 0.0\n1 0.0\n");
    plant.time(state);
}
BENCHMARK_CAPTURE(BasicCycle, R134A, "R134A.FLD", "268.15", "313.15")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BasicCycle, R32, "R32.FLD", "268.15", "313.15")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BasicCycle, PROPANE, "PROPANE.FLD", "268.15", "313.15")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BasicCycle, AMMONIA, "AMMONIA.FLD", "268.15", "313.15")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BasicCycle, R1234YF, "R1234YF.FLD", "268.15", "313.15")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BasicCycle, CO2, "CO2.FLD", "243.15", "268.15")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BasicCycle, R22, "R22.FLD", "268.15", "313.15")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BasicCycle, R410A, "R410A.MIX", "268.15", "313.15")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BasicCycle, R407C, "R407C.MIX", "268.15", "313.15")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BasicCycle, R448A, "R448A.MIX", "268.15", "313.15")->Unit(benchmark::kMillisecond);

void SaturationTable200Rows(benchmark::State& state, const char* fluid) {
    const Plant plant(std::string("1\n1\n1\n1\n") + fluid + "\n1.0\nnone\n2 DEF\n2\n1 250.0 349.5 0.5\n");
    plant.time(state);
}
BENCHMARK_CAPTURE(SaturationTable200Rows, R134A, "R134A.FLD")->Unit(benchmark::kMillisecond);

void IsopropertyTable2000Rows(benchmark::State& state, const char* fluid) {
    const Plant plant(std::string("1\n1\n1\n1\n") + fluid +
                      "\n1.0\nnone\n2 DEF\n3\n0\n2 1 1000.0 250.0 449.9 0.1001\n");
    plant.time(state);
}
BENCHMARK_CAPTURE(IsopropertyTable2000Rows, R134A, "R134A.FLD")->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
