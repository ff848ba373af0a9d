// Whole cycle requests through the entry point, file to file: one cycle after the other with a pure fluid and, where
// it has one, a blend.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "TreeFolders.h"
#include "frigana.h"

namespace {

// A folder with one request, the one of examples/ with another fluid; every run reads, solves and writes it.
class Plant {
  public:
    Plant(const char* example, const char* fluid, const char* extension) : extension_(extension) {
        std::filesystem::create_directories(folder_);
        std::ifstream source(std::string(frigana::test::dataFolder) + "/../examples/" + example + ".fi1");
        std::ofstream request(request_);
        int number = 0;
        for (std::string line; std::getline(source, line);) request << (++number == 3 ? fluid : line) << '\n';
    }
    ~Plant() { std::filesystem::remove_all(folder_); }
    Plant(const Plant&) = delete;
    Plant& operator=(const Plant&) = delete;
    void time(benchmark::State& state) const {
        for (auto _ : state)
            Frigana(request_.data(), installation_.data(), static_cast<int>(request_.size()),
                    static_cast<int>(installation_.size()));
        state.SetItemsProcessed(state.iterations());
        std::ifstream result(std::filesystem::path(request_).replace_extension(extension_));
        if (std::string first; !(result >> first) || first == "0") state.SkipWithError("the request was refused");
    }

  private:
    std::filesystem::path folder_ = std::filesystem::temp_directory_path() / "frigana-bench-cycles";
    std::string request_ = (folder_ / "plant.fi1").string();
    const char* extension_;
    std::string installation_ = std::string(frigana::test::dataFolder) + "/frigana";
};

void solve(benchmark::State& state, const char* example, const char* fluid, const char* extension = ".fo1") {
    const Plant plant(example, fluid, extension);
    plant.time(state);
}

}  // namespace

// Those with a search are seven solutions.
BENCHMARK_CAPTURE(solve, HeatExchangerR134A, "cycle_with_heat_exchanger", "R134A.FLD")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, HeatExchangerR410A, "cycle_with_heat_exchanger", "R410A.MIX")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, RankineR245FA, "rankine_cycle", "R245FA.FLD")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, TranscriticalCO2, "transcritical_cycle", "CO2.FLD")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, LiquidInjectionR22, "liquid_injection", "R22.FLD")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, LiquidInjectionR134A, "liquid_injection", "R134A.FLD")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, LiquidInjectionR410A, "liquid_injection", "R410A.MIX")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, TwoStageR134A, "two_stage_cycle", "R134A.FLD")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, TwoStageCO2, "two_stage_cycle", "CO2.FLD")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, TwoStageR410A, "two_stage_cycle", "R410A.MIX")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, MultiStageR134A, "multi_stage_cycle", "R134A.FLD")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, MultiStageCO2, "multi_stage_cycle", "CO2.FLD")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, MultiStageR410A, "multi_stage_cycle", "R410A.MIX")->Unit(benchmark::kMillisecond);
// Systems of two circuits, with this fluid in the first one.
BENCHMARK_CAPTURE(solve, CombinedR134A, "combined_cycle", "R134A.FLD")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, CascadeR134A, "cascade_cycle", "R134A.FLD")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, CascadeR410A, "cascade_cycle", "R410A.MIX")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, PumpedAmmonia, "pumped_co2", "AMMONIA.FLD")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, TranscriticalBoosterCO2, "transcritical_booster", "CO2.FLD")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, LineSizingR134A, "line_sizing", "R134A.FLD", ".fo0")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(solve, LineSizingR410A, "line_sizing", "R410A.MIX", ".fo0")->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
