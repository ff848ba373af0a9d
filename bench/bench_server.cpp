// The server: what a request costs over its calculation, how many it answers in a second, and how soon it is there.
#include <benchmark/benchmark.h>
#include <signal.h>

#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "Client.h"
#include "NamedRequest.h"
#include "Report.h"
#include "ServedProgram.h"
#include "TreeFolders.h"

namespace {

using namespace frigana;

const std::string basicCycle =
    R"({"request": "basic", "fluid": "R134a", "evaporator": {"temperature": "-5 °C", "superheat": "5 K"},
        "compressor": {"swept_volume": "0.0028 m3/s", "isentropic_efficiency": 0.7, "volumetric_efficiency": 0.85},
        "condenser": {"temperature": "40 °C", "subcooling": "3 K"}})";

// The same words as the server's answer, without the server.
void BasicCycleHere(benchmark::State& state) {
    const catalogue::FluidNames& names = catalogue::FluidNames::of(test::dataFolder);
    for (auto _ : state) {
        const auto named = catalogue::readNamed(basicCycle, catalogue::NamedFormat::json, names);
        std::ostringstream text;
        app::printJson(text, catalogue::runFilled(named.runs.front(), {test::dataFolder, false}), {});
        if (text.str().find("\"success\"") == std::string::npos) state.SkipWithError("not solved");
    }
}
BENCHMARK(BasicCycleHere)->UseRealTime()->Unit(benchmark::kMillisecond);

bool solvedBy(test::Client& client, int port) {
    client.send(test::requestText(port, "POST", "/api/run", basicCycle, "Content-Type: application/json\r\n"));
    return client.receive().status == 200;
}

void BasicCycleByHttp(benchmark::State& state) {
    const test::ServedProgram program({"--jobs", "1"});
    test::Client client(program.port());
    int asked = 0;
    for (auto _ : state) {
        // A connection serves a thousand requests.
        if (++asked % 900 == 0) state.SkipWithError("more requests than a connection serves");
        if (!solvedBy(client, program.port())) state.SkipWithError("not solved");
    }
}
BENCHMARK(BasicCycleByHttp)->UseRealTime()->Iterations(500)->Unit(benchmark::kMillisecond);

// Four clients at once.
void RequestsPerSecond(benchmark::State& state) {
    const test::ServedProgram program({"--jobs", std::to_string(state.range(0))});
    constexpr int clients = 4, each = 200;
    for (auto _ : state) {
        std::vector<std::thread> threads;
        for (int i = 0; i < clients; ++i)
            threads.emplace_back([&] {
                test::Client client(program.port());
                for (int request = 0; request < each; ++request) solvedBy(client, program.port());
            });
        for (std::thread& thread : threads) thread.join();
    }
    state.SetItemsProcessed(state.iterations() * clients * each);
}
BENCHMARK(RequestsPerSecond)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);

// From the command to the first answer.
void Start(benchmark::State& state) {
    for (auto _ : state) {
        test::ServedProgram program({"--jobs", "2"});
        if (test::ask(program.port(), "GET", "/api/health").status != 200) state.SkipWithError("no answer");
        state.PauseTiming();
        double seconds = 0;
        program.stop(SIGTERM, seconds);
        state.ResumeTiming();
    }
}
BENCHMARK(Start)->UseRealTime()->Iterations(20)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
