// What a named request costs beside its positional twin: the same cycle through the entry, once from a positional file
// with its result beside it, once from TOML with names and units, run in a private folder. A named request may cost
// at most 0.2 ms more. Both in a folder in memory, as far as the system has one, and both with the values by key.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

#include "NamedRequest.h"
#include "RunResult.h"
#include "TreeFolders.h"

namespace {

using namespace frigana::catalogue;

constexpr const char* chiller =
    "request = \"basic\"\ntitle = \"bench\"\nfluid = \"R134a\"\n"
    "[evaporator]\ntemperature = \"-5 °C\"\nsuperheat = \"5 K\"\n"
    "[suction_line]\ntemperature_rise = \"2 K\"\n"
    "[compressor]\nswept_volume = \"0.0028 m3/s\"\nisentropic_efficiency = 0.7\nvolumetric_efficiency = 0.85\n"
    "[condenser]\ntemperature = \"40 °C\"\nsubcooling = \"3 K\"\n";

const FluidNames& names() {
    return FluidNames::of(frigana::test::dataFolder);
}

FilledRequest filled() {
    const NamedRequest named = readNamed(chiller, NamedFormat::toml, names());
    if (!named.problems.empty()) throw std::runtime_error(named.problems.front().text);
    return named.runs.front();
}

void PositionalRequest(benchmark::State& state) {
    namespace fs = std::filesystem;
    const fs::path memory = "/dev/shm";
    const fs::path folder = (fs::is_directory(memory) ? memory : fs::temp_directory_path()) / "frigana-bench-named";
    fs::create_directories(folder);
    const std::string path = (folder / "plant.fi1").string();
    std::ofstream(path) << positionalText(filled());
    for (auto _ : state) benchmark::DoNotOptimize(runPositional(path, {frigana::test::dataFolder, false}));
    fs::remove_all(folder);
}
BENCHMARK(PositionalRequest)->Unit(benchmark::kMicrosecond);

void NamedToml(benchmark::State& state) {
    for (auto _ : state) {
        const NamedRequest named = readNamed(chiller, NamedFormat::toml, names());
        benchmark::DoNotOptimize(runFilled(named.runs.front(), {frigana::test::dataFolder, false}));
    }
}
BENCHMARK(NamedToml)->Unit(benchmark::kMicrosecond);

void ReadTomlAlone(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(readNamed(chiller, NamedFormat::toml, names()));
}
BENCHMARK(ReadTomlAlone)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
