// Random requests and random states in one process, for as long as is wanted: every answer right in form, every state
// found again from every pair of its properties, memory and descriptors flat. Ends with a summary by cause.
//   soak SECONDS [SEED]      half of the time for each
#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <random>
#include <vector>

#include "21_InitSubstance.h"
#include "FlashState.h"
#include "RunOracle.h"
#include "Substances.h"
#include "Trap.h"
#include "TreeFolders.h"

namespace {

using namespace frigana;
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

std::mt19937_64 engine;

double uniform(double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(engine);
}
std::size_t below(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(engine);
}

std::vector<std::string> namesOf(const std::string& folder, const std::string& extension) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(std::string(test::dataFolder) + "/" + folder))
        if (entry.path().extension() == extension) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

// ---- what must stay flat --------------------------------------------------------------------------------------------

struct Footprint {
    long pages = 0;
    int descriptors = 0;
    static Footprint now() {
        Footprint f;
        long total = 0;
        if (std::FILE* file = std::fopen("/proc/self/statm", "r"); file != nullptr) {
            if (std::fscanf(file, "%ld %ld", &total, &f.pages) != 2) f.pages = 0;
            std::fclose(file);
        }
        for ([[maybe_unused]] const auto& entry : fs::directory_iterator("/proc/self/fd")) ++f.descriptors;
        return f;
    }
};

struct Summary {
    std::map<std::string, long> causes;
    std::map<std::string, long> wrong;
    std::map<std::string, std::string> firstOfWrong;  // the input
    long count = 0;

    void add(const std::string& cause, const std::string& complaint, const std::string& input) {
        ++count;
        ++causes[cause];
        if (complaint.empty()) return;
        const std::string key = cause + ": " + complaint;
        if (++wrong[key] == 1) firstOfWrong[key] = input;
    }
    void print(const char* what, double seconds) const {
        std::printf("\n%ld %s in %.0f s\n", count, what, seconds);
        std::vector<std::pair<long, std::string>> sorted;
        for (const auto& [cause, number] : causes) sorted.emplace_back(number, cause);
        std::sort(sorted.rbegin(), sorted.rend());
        for (const auto& [number, cause] : sorted) std::printf("  %9ld  %s\n", number, cause.c_str());
        for (const auto& [complaint, number] : wrong)
            std::printf("WRONG %ld times: %s\nfirst input:\n%s\n", number, complaint.c_str(),
                        firstOfWrong.at(complaint).c_str());
    }
};

// ---- requests -------------------------------------------------------------------------------------------------------

std::string strangeNumber() {
    static const char* const strange[] = {"0", "-1", "1e300", "-1e-300", "1e-12", "273,15", "nan", "1000000", "x", ""};
    return strange[below(std::size(strange))];
}

// One of the examples with another fluid, other values, and now and then something that is no request any more.
std::string randomRequest(const std::vector<std::string>& examples, const std::vector<std::string>& fluids) {
    std::istringstream stream(examples[below(examples.size())]);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    for (std::string& line : lines) {
        const bool fluid = line.ends_with(".FLD") || line.ends_with(".MIX");
        if (fluid && below(2) == 0) line = fluids[below(fluids.size())];
        int option = 0;
        double value = 0;
        char rest = 0;
        if (std::sscanf(line.c_str(), "%d %lf %c", &option, &value, &rest) != 2) continue;
        const auto kind = below(200);
        char changed[64];
        if (kind < 40) {
            std::snprintf(changed, sizeof changed, "%d %.6f", option, value * uniform(0.95, 1.05));
        } else if (kind < 42) {
            std::snprintf(changed, sizeof changed, "%d %.6f", static_cast<int>(below(4)) + 1, value + uniform(-20, 20));
        } else if (kind == 42) {
            std::snprintf(changed, sizeof changed, "%d %s", option, strangeNumber().c_str());
        } else {
            continue;
        }
        line = changed;
    }
    std::string request;
    for (const std::string& line : lines) request += line + "\n";
    if (below(200) == 0) request.resize(below(request.size() + 1));
    return request;
}

bool runRequests(double seconds) {
    std::vector<std::string> examples, fluids = namesOf("fluids", ".FLD");
    for (const std::string& blend : namesOf("mixtures", ".MIX")) fluids.push_back(blend);
    for (const auto& entry : fs::directory_iterator(test::examplesFolder)) {
        if (entry.path().extension() != ".fi1") continue;
        std::ostringstream all;
        all << std::ifstream(entry.path()).rdbuf();
        examples.push_back(all.str());
    }
    std::sort(examples.begin(), examples.end());
    const fuzz::OwnFolder folder(test::dataFolder);
    Summary summary;
    Footprint start, end;
    const auto begin = Clock::now();
    const auto elapsed = [&] { return std::chrono::duration<double>(Clock::now() - begin).count(); };
    while (elapsed() < seconds) {
        constexpr long warmUp = 500;
        if (summary.count == warmUp) start = Footprint::now();
        const std::string request = randomRequest(examples, fluids);
        std::ofstream(folder.request(), std::ios::binary) << request;
        fuzz::RunOracle oracle;
        const fuzz::Verdict verdict = oracle.run(folder.request(), folder.installation());
        summary.add(verdict.cause, verdict.wrong, request);
    }
    end = Footprint::now();
    summary.print("requests", elapsed());
    std::printf("resident memory %ld to %ld pages, descriptors %d to %d\n", start.pages, end.pages, start.descriptors,
                end.descriptors);
    // The summary itself grows by some pages.
    constexpr long allowedPages = 256;
    const bool flat =
        start.pages == 0 || (end.pages - start.pages < allowedPages && end.descriptors == start.descriptors);
    if (!flat) std::printf("WRONG: memory or descriptors grow\n");
    return summary.wrong.empty() && flat;
}

// ---- states ---------------------------------------------------------------------------------------------------------

// A random state of the fluid that is set up, from temperature and density, found again from every pair.
void tryState(const SUBSTANCE& fluid, Summary& summary) {
    constexpr double again = 1e-6;  // relative, in temperature and pressure
    const double T = uniform(std::max(fluid.TMIN, 0.35 * fluid.TC), std::min(fluid.TMAX, 1.6 * fluid.TC));
    const double D = fluid.DC / fluid.WM * std::pow(10.0, uniform(-3.0, 0.45));
    const test::FlashState state = test::flash("TD", T, D, fluid.ZMOL);
    const std::string name(fluid.FLUIDNAME.trimmed());
    char input[200];
    std::snprintf(input, sizeof input, "%s T %.17g K, D %.17g mol/L", name.c_str(), T, D);
    if (state.ierr > 0) {
        summary.add("TD code " + std::to_string(state.ierr), "", input);
        return;
    }
    if (!(state.p > 0 && state.p < fluid.PMAX)) return;
    const std::string where = state.twoPhase() ? ", two phases" : "";
    for (const char* pair : {"TP", "PD", "PH", "PS", "PE", "DH", "DS", "DE", "HS", "TQ", "PQ"}) {
        const std::string letters(pair);
        const bool byQuality = letters[1] == 'Q';
        if (byQuality != state.twoPhase() && (byQuality || letters == "TP")) continue;
        test::FlashState given = state;
        const test::FlashState found = test::flash(letters, given[pair[0]], given[pair[1]], fluid.ZMOL);
        std::string complaint;
        if (found.ierr <= 0) {
            const bool same = std::fabs(found.T - T) <= again * T && std::fabs(found.p - state.p) <= again * state.p;
            if (!std::isfinite(found.T) || !std::isfinite(found.p))
                complaint = "a state that is not finite";
            else if (!same)
                summary.add(letters + where + " found another state", "", input);
        }
        const std::string code = found.ierr > 0 ? " code " + std::to_string(found.ierr) : " found";
        summary.add(letters + where + code, complaint, input);
    }
}

bool runStates(double seconds) {
    std::vector<std::string> fluids = namesOf("fluids", ".FLD");
    for (const std::string& blend : namesOf("mixtures", ".MIX")) fluids.push_back(blend);
    Summary summary;
    const auto begin = Clock::now();
    const auto elapsed = [&] { return std::chrono::duration<double>(Clock::now() - begin).count(); };
    while (elapsed() < seconds) {
        const std::string name = fluids[below(fluids.size())];
        SUBSTANCE* fluid = nullptr;
        const auto setUp = [&] { fluid = &test::fluid(name.c_str()); };
        const bool ready = runContained([](void* routine) { (*static_cast<decltype(setUp)*>(routine))(); },
                                        const_cast<void*>(static_cast<const void*>(&setUp)));
        if (!ready || fluid == nullptr) {
            summary.add("set-up refused", "", name);
            continue;
        }
        constexpr int statesOfOneSetUp = 100;
        for (int i = 0; i < statesOfOneSetUp && elapsed() < seconds; ++i) tryState(*fluid, summary);
    }
    summary.print("flashes", elapsed());
    return summary.wrong.empty();
}

}  // namespace

int main(int argc, char** argv) {
    const double seconds = argc > 1 ? std::atof(argv[1]) : 60.0;
    engine.seed(argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 20260101);
    const bool requests = runRequests(seconds / 2.0);
    const bool states = runStates(seconds / 2.0);
    std::printf("\n%s\n", requests && states ? "no failure" : "FAILURES, see above");
    return requests && states ? 0 : 1;
}
