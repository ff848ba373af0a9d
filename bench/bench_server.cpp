// The server: what a request costs over its calculation, how many it answers in a second, and how soon it is there.
#include <benchmark/benchmark.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iterator>
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

std::vector<pid_t> childrenOf(pid_t parent) {
    std::vector<pid_t> children;
    const std::string process = std::to_string(parent);
    std::ifstream list("/proc/" + process + "/task/" + process + "/children");
    for (pid_t child = 0; list >> child;) children.push_back(child);
    return children;
}

// Time that a process has spent on a processor [s].
double processorSeconds(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    std::string text(std::istreambuf_iterator<char>(file), {});
    std::istringstream fields(text.substr(std::min(text.size(), text.rfind(')') + 1)));
    std::string skipped;
    for (int field = 3; field < 14; ++field) fields >> skipped;
    double user = 0.0, kernel = 0.0;
    fields >> user >> kernel;
    return (user + kernel) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

// The server, and its workers together: they are children of the keeper, its only child.
struct Spent {
    double server = 0.0, workers = 0.0;
};
Spent spentBy(const test::ServedProgram& program) {
    Spent spent{processorSeconds(program.process()), 0.0};
    for (const pid_t keeper : childrenOf(program.process()))
        for (const pid_t worker : childrenOf(keeper)) spent.workers += processorSeconds(worker);
    return spent;
}

// Four clients at once. On a machine that has other work the processor time of a request tells more than the requests
// of a second: where it is the same for one and two workers, nothing but the processors keeps them from twice as many.
void RequestsPerSecond(benchmark::State& state) {
    const test::ServedProgram program({"--jobs", std::to_string(state.range(0))});
    constexpr int clients = 4, each = 200;
    const Spent before = spentBy(program);
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
    const Spent after = spentBy(program);
    const double requests = static_cast<double>(state.iterations()) * clients * each;
    state.counters["worker_ms"] = 1000.0 * (after.workers - before.workers) / requests;
    state.counters["server_ms"] = 1000.0 * (after.server - before.server) / requests;
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
