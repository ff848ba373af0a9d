// Random requests and random states in one process, for as long as is wanted: every answer right in form, every state
// found again from every pair of its properties, memory and descriptors flat. Ends with a summary by cause.
//   soak SECONDS [SEED]                                     half of the time for each
//   soak --states COUNT --requests COUNT [--blends SHARE] [--seed SEED]
//   soak --replay FILE...                                   these requests alone, each judged in the same way
// A share of the states and of the fluids put into requests is of blends, whose states take a hundred times as long as
// those of pure fluids; the examples that requests are made of are drawn so that each takes a like share of the time.
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

constexpr double endless = 1e30;

// What a part of the soak is to do: so many, or so many seconds.
struct Amount {
    double seconds = endless;
    long count = 0;  // 0: as many as there is time for
    bool done(long already, double elapsed) const { return elapsed >= seconds || (count > 0 && already >= count); }
};

double shareOfBlends = 0.05;

const std::string& drawnFluid() {
    static const std::vector<std::string> fluids = namesOf("fluids", ".FLD"), blends = namesOf("mixtures", ".MIX");
    const auto& drawn = uniform(0.0, 1.0) < shareOfBlends ? blends : fluids;
    return drawn[below(drawn.size())];
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
    // Whether little has been added since; the summary itself grows by some pages.
    bool flat() const {
        constexpr long allowedPages = 256;
        const Footprint end = now();
        std::printf("resident memory %ld to %ld pages, descriptors %d to %d\n", pages, end.pages, descriptors,
                    end.descriptors);
        const bool flat = pages == 0 || (end.pages - pages < allowedPages && end.descriptors == descriptors);
        if (!flat) std::printf("WRONG: memory or descriptors grow\n");
        return flat;
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
        std::printf("\n%ld %s in %.0f s, %.0f s of the processor by now\n", count, what, seconds,
                    static_cast<double>(std::clock()) / CLOCKS_PER_SEC);
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

// A request with another fluid, other values, and now and then something that is no request any more.
std::string changed(const std::string& example) {
    std::istringstream stream(example);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    for (std::string& line : lines) {
        const bool fluid = line.ends_with(".FLD") || line.ends_with(".MIX");
        if (fluid && below(2) == 0) line = drawnFluid();
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

// Requests run one after the other in a folder of their own.
class Runner {
  public:
    fuzz::Verdict run(const std::string& request) {
        std::ofstream(folder_.request(), std::ios::binary) << request;
        fuzz::RunOracle oracle;
        return oracle.run(folder_.request(), folder_.installation());
    }

  private:
    fuzz::OwnFolder folder_{test::dataFolder};
};

std::string textOf(const fs::path& file) {
    std::ostringstream all;
    all << std::ifstream(file, std::ios::binary).rdbuf();
    return all.str();
}

std::vector<std::string> examples() {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(test::examplesFolder))
        if (entry.path().extension() == ".fi1") files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    std::vector<std::string> texts;
    for (const fs::path& file : files) texts.push_back(textOf(file));
    return texts;
}

// Draws the examples so that each takes a like share of the time.
std::discrete_distribution<std::size_t> byTime(Runner& runner, const std::vector<std::string>& texts) {
    std::vector<double> rates;
    for (const std::string& text : texts) {
        runner.run(text);
        constexpr int repeats = 3;
        const fuzz::ProcessorTime time;
        for (int i = 0; i < repeats; ++i) runner.run(text);
        constexpr double least = 1e-5;  // [s]
        rates.push_back(1.0 / std::max(least, time.seconds() / repeats));
    }
    return {rates.begin(), rates.end()};
}

bool runRequests(const Amount& amount) {
    Runner runner;
    const std::vector<std::string> texts = examples();
    auto drawn = byTime(runner, texts);
    Summary summary;
    Footprint start;
    const auto begin = Clock::now();
    const auto elapsed = [&] { return std::chrono::duration<double>(Clock::now() - begin).count(); };
    while (!amount.done(summary.count, elapsed())) {
        constexpr long warmUp = 500;
        if (summary.count == warmUp) start = Footprint::now();
        const std::string request = changed(texts[drawn(engine)]);
        const fuzz::Verdict verdict = runner.run(request);
        summary.add(verdict.cause, verdict.wrong, request);
    }
    const bool flat = start.flat();
    summary.print("requests", elapsed());
    return summary.wrong.empty() && flat;
}

bool replay(const std::vector<std::string>& files) {
    std::vector<std::string> requests;  // read first: a runner works in a folder of its own
    for (const std::string& file : files) {
        if (!fs::is_regular_file(file)) {
            std::printf("%s: no such file\n", file.c_str());
            return false;
        }
        requests.push_back(textOf(file));
    }
    Runner runner;
    Summary summary;
    const auto begin = Clock::now();
    for (std::size_t i = 0; i < files.size(); ++i) {
        const fuzz::Verdict verdict = runner.run(requests[i]);
        summary.add(verdict.cause, verdict.wrong, files[i]);
    }
    summary.print("requests", std::chrono::duration<double>(Clock::now() - begin).count());
    return summary.wrong.empty();
}

// ---- states ---------------------------------------------------------------------------------------------------------

constexpr double again = 1e-6;  // relative, of temperature and pressure; of energies beside R T

bool near(double found, double wanted, double scale) {
    return std::fabs(found - wanted) <= again * scale;
}

// Whether a state that was found has the two values that were asked for, by its temperature and density.
bool hasValues(test::FlashState found, test::FlashState wanted, std::string_view letters, const Composition& z) {
    test::FlashState told = test::flash("TD", found.T, found.D, z);
    if (told.ierr > 0) return false;
    constexpr double R = 8.314;  // [J/(mol K)], for a scale
    for (const char letter : letters) {
        const double value = wanted[letter];
        const bool energy = letter == 'H' || letter == 'E', entropy = letter == 'S';
        const double scale = std::fabs(value) + (energy ? R * found.T : entropy ? R : 0.0);
        // A liquid's pressure is the difference of large terms, as its energies tell nothing of it.
        if (!near(told[letter], value, letter == 'P' ? scale + R * found.T * found.D * 1e-3 : scale)) return false;
    }
    return true;
}

// A random state of the fluid that is set up, from temperature and density, found again from a pair of its properties.
void tryState(const SUBSTANCE& fluid, Summary& summary) {
    const double T = uniform(std::max(fluid.TMIN, 0.35 * fluid.TC), std::min(fluid.TMAX, 1.6 * fluid.TC));
    const double D = fluid.DC / fluid.WM * std::pow(10.0, uniform(-3.0, 0.45));
    test::FlashState state = test::flash("TD", T, D, fluid.ZMOL);
    const std::string name(fluid.FLUIDNAME.trimmed());
    char input[200];
    std::snprintf(input, sizeof input, "%s T %.17g K, D %.17g mol/L", name.c_str(), T, D);
    if (state.ierr > 0) return summary.add("TD code " + std::to_string(state.ierr), "", input);
    if (!(state.p > 0 && state.p < fluid.PMAX)) return summary.add("TD outside of the range of pressure", "", input);
    static const std::vector<std::string> ofOnePhase{"TP", "PD", "PH", "PS", "PE", "DH", "DS", "DE", "HS", "ES"},
        ofTwoPhases{"TQ", "PQ", "PD", "PH", "PS", "PE", "DH", "DS", "DE", "HS", "ES", "TH", "TS", "TE"};
    const auto& pairs = state.twoPhase() ? ofTwoPhases : ofOnePhase;
    const std::string& letters = pairs[below(pairs.size())];
    const std::string cause = letters + (state.twoPhase() ? ", two phases" : ", one phase");
    const test::FlashState found = test::flash(letters, state[letters[0]], state[letters[1]], fluid.ZMOL);
    if (found.ierr > 0) return summary.add(cause + " code " + std::to_string(found.ierr), "", input);
    if (!std::isfinite(found.T) || !std::isfinite(found.p) || !std::isfinite(found.D))
        return summary.add(cause + " found", "a state that is not finite", input);
    if (near(found.T, T, T) && near(found.p, state.p, state.p)) return summary.add(cause + " found", "", input);
    // Several states can have the same two values.
    const bool solved = hasValues(found, state, letters, fluid.ZMOL);
    summary.add(cause + " found another state", solved ? "" : "a state without the values asked for", input);
}

bool runStates(const Amount& amount) {
    Summary summary;
    Footprint start;
    const auto begin = Clock::now();
    const auto elapsed = [&] { return std::chrono::duration<double>(Clock::now() - begin).count(); };
    const auto done = [&] { return amount.done(summary.count, elapsed()); };
    while (!done()) {
        constexpr long warmUp = 50000;
        if (start.pages == 0 && summary.count >= warmUp) start = Footprint::now();
        const std::string& name = drawnFluid();
        SUBSTANCE* fluid = nullptr;
        const auto setUp = [&] { fluid = &test::fluid(name.c_str()); };
        const bool ready = runContained([](void* routine) { (*static_cast<decltype(setUp)*>(routine))(); },
                                        const_cast<void*>(static_cast<const void*>(&setUp)));
        if (!ready || fluid == nullptr) {
            summary.add("set-up refused", "", name);
            continue;
        }
        constexpr int statesOfOneSetUp = 200;
        for (int i = 0; i < statesOfOneSetUp && !done(); ++i) tryState(*fluid, summary);
    }
    const bool flat = start.flat();
    summary.print("states", elapsed());
    return summary.wrong.empty() && flat;
}

int usage() {
    std::fprintf(stderr,
                 "usage: soak SECONDS [SEED]\n"
                 "       soak [--states COUNT] [--requests COUNT] [--blends SHARE] [--seed SEED]\n"
                 "       soak --replay FILE...\n");
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> words(argv + 1, argv + argc);
    if (words.empty()) words.emplace_back("60");
    engine.seed(20260101);
    if (words[0] == "--replay") return replay({words.begin() + 1, words.end()}) ? 0 : 1;
    Amount ofRequests, ofStates;
    bool requests = false, states = false;
    if (!words[0].starts_with("--")) {
        ofRequests.seconds = ofStates.seconds = std::atof(words[0].c_str()) / 2.0;
        requests = states = true;
        if (words.size() > 1) engine.seed(std::strtoull(words[1].c_str(), nullptr, 10));
        words.clear();
    }
    for (std::size_t i = 0; i < words.size(); i += 2) {
        if (i + 1 == words.size()) return usage();
        const std::string& option = words[i];
        const double value = std::atof(words[i + 1].c_str());  // 1e7 is a count too
        if (option == "--requests") {
            ofRequests.count = static_cast<long>(value);
            requests = true;
        } else if (option == "--states") {
            ofStates.count = static_cast<long>(value);
            states = true;
        } else if (option == "--blends") {
            shareOfBlends = value;
        } else if (option == "--seed") {
            engine.seed(static_cast<unsigned long>(value));
        } else {
            return usage();
        }
    }
    bool right = !requests || runRequests(ofRequests);
    if (states && !runStates(ofStates)) right = false;
    std::printf("\n%s\n", right ? "no failure" : "FAILURES, see above");
    return right ? 0 : 1;
}
