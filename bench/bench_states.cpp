// Time of what was never asked for before: random states of every class, each asked for once; set-ups after another
// fluid, domes and whole requests of the basic cycle, each with other numbers.
//
//   bench_states [--states n] [--seed n] [fluid ...]
//
// A line per fluid and class: fluid, class, how many, median, 99th percentile [us], how many were refused. The clock's
// own time is taken off. There are a tenth as many set-ups, domes and requests. scripts/bench-table runs it for two
// trees.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "22_InitVaporDome.h"
#include "FlashState.h"
#include "LIMITS.h"
#include "PROP_SUB.h"
#include "PureFluid.h"
#include "SAT_SUB.h"
#include "Substances.h"
#include "UTILITY.h"
#include "frigana.h"

namespace {

using namespace frigana;
using frigana::test::flash;
using frigana::test::FlashState;
using Clock = std::chrono::steady_clock;

struct Blend {
    const char* name;
    std::initializer_list<std::string_view> components;
    std::initializer_list<double> massFractions;
};
const Blend blends[] = {
    {"R410A", {"R32", "R125"}, {0.5, 0.5}},
    {"R407C", {"R32", "R125", "R134A"}, {0.23, 0.25, 0.52}},
    {"R404A", {"R125", "R143A", "R134A"}, {0.44, 0.52, 0.04}},
    {"R448A", {"R32", "R125", "R134A", "R1234YF", "R1234ZE"}, {0.26, 0.26, 0.21, 0.20, 0.07}},
};
constexpr const char* usualFluids[] = {"R134A", "CO2", "AMMONIA", "R32", "R1234YF", "PROPANE"};

Composition z;
double Tc = 0, pc = 0, coldest = 0;

bool setUp(const std::string& name) {
    z = unitComposition(1);
    int code = 0;
    const Blend* blend =
        std::find_if(std::begin(blends), std::end(blends), [&](const Blend& b) { return name == b.name; });
    if (blend == std::end(blends)) {
        code = test::setUp(name);
    } else {
        code = test::setUp(blend->components);
        Composition mass{};
        int i = 0;
        for (const double fraction : blend->massFractions) mass[++i] = fraction;
        double molarMass = 0;
        XMOLE(mass, z, molarMass);
    }
    if (code > 0) return false;
    double Dc = 0, tmin = 0, tmax = 0, Dmax = 0, pmax = 0;
    int ierr = 0;
    Text255 herr;
    CRITP(z, Tc, pc, Dc, ierr, herr);
    LIMITS("EOS", z, tmin, tmax, Dmax, pmax);
    coldest = std::max({tmin, 0.55 * Tc, blend == std::end(blends) ? fluidConstants.TTPN[1] : 0.0}) + 0.1;
    return true;
}

enum class Region { liquid, vapor, both, dense };

// A random state; false where there is none.
bool randomState(Region region, std::mt19937_64& generator, FlashState& state) {
    std::uniform_real_distribution<double> uniform(0, 1);
    const double T = coldest + uniform(generator) * (0.97 * Tc - coldest), share = uniform(generator);
    if (region == Region::both) {
        state = flash("TQ", T, 0.02 + 0.96 * share, z);
    } else if (region == Region::dense) {
        state = flash("TP", T + share * 0.5 * Tc, pc * (1.05 + 2 * uniform(generator)), z);
    } else {
        const FlashState line = flash("TQ", T, region == Region::liquid ? 0.0 : 1.0, z);
        if (line.ierr > 0) return false;
        const double away = (0.005 + 0.25 * share) * T;
        state = flash("TP", region == Region::liquid ? std::max(coldest, T - away) : T + away, line.p, z);
    }
    return state.ierr <= 0 && state.D > 0;
}

struct Row {
    const char* name;
    std::string_view letters;  // of the flash; S: saturation at T, at p; *: properties at T and density
    Region region;
};
constexpr Row rows[] = {
    {"THERM", "*T", Region::liquid},     {"SATT", "ST", Region::both},        {"SATP", "SP", Region::both},
    {"PQ", "PQ", Region::both},          {"TP liquid", "TP", Region::liquid}, {"TP vapor", "TP", Region::vapor},
    {"TD liquid", "TD", Region::liquid}, {"TD vapor", "TD", Region::vapor},   {"TD both", "TD", Region::both},
    {"PH liquid", "PH", Region::liquid}, {"PH vapor", "PH", Region::vapor},   {"PH both", "PH", Region::both},
    {"PH dense", "PH", Region::dense},   {"PS liquid", "PS", Region::liquid}, {"PS vapor", "PS", Region::vapor},
    {"PS both", "PS", Region::both},     {"HS liquid", "HS", Region::liquid}, {"HS vapor", "HS", Region::vapor},
    {"HS both", "HS", Region::both},
};

double microseconds(Clock::time_point from, Clock::time_point to) {
    return std::chrono::duration<double, std::micro>(to - from).count();
}

double ask(const Row& row, FlashState& state, bool& refused) {
    if (row.letters[0] == '*') {
        double p = 0, e = 0, h = 0, s = 0, cv = 0, cp = 0, w = 0, throttling = 0;
        const auto start = Clock::now();
        THERM(state.T, state.D, z, p, e, h, s, cv, cp, w, throttling);
        const auto end = Clock::now();
        refused = !(p > 0.0);
        return microseconds(start, end);
    }
    if (row.letters[0] == 'S') {
        Composition x, y;
        double other = 0, Dl = 0, Dv = 0;
        double given = row.letters[1] == 'T' ? state.T : state.p;
        int ierr = 0;
        Text255 herr;
        const auto start = Clock::now();
        if (row.letters[1] == 'T')
            SATT(given, z, 2, other, Dl, Dv, x, y, ierr, herr);
        else
            SATP(given, z, 2, other, Dl, Dv, x, y, ierr, herr);
        const auto end = Clock::now();
        refused = ierr > 0;
        return microseconds(start, end);
    }
    const double a = state[row.letters[0]], b = state[row.letters[1]];
    const auto start = Clock::now();
    const FlashState answer = flash(row.letters, a, b, z);
    const auto end = Clock::now();
    refused = answer.ierr > 0;
    return microseconds(start, end);
}

void print(const std::string& name, const char* what, std::vector<double>& times, long refusals) {
    std::sort(times.begin(), times.end());
    const auto at = [&](double share) {
        return times[static_cast<std::size_t>(share * static_cast<double>(times.size() - 1))];
    };
    std::printf("%-8s %-10s %6zu %10.2f %10.2f %5ld\n", name.c_str(), what, times.size(), at(0.5), at(0.99), refusals);
}

void measure(const std::string& name, const Row& row, long count, unsigned seed, double clock) {
    std::mt19937_64 generator(seed);
    std::vector<FlashState> states;
    for (long tries = 0; static_cast<long>(states.size()) < count && tries < 20 * count; ++tries) {
        FlashState state;
        if (randomState(row.region, generator, state)) states.push_back(state);
    }
    if (states.empty()) return;
    std::vector<double> times;
    long refusals = 0;
    for (FlashState& state : states) {
        bool refused = false;
        times.push_back(ask(row, state, refused) - clock);
        refusals += refused;
    }
    print(name, row.name, times, refusals);
}

// ---- above the states ----------------------------------------------------------------------------------------------

std::string fileOf(const std::string& name) {
    const bool blend =
        std::any_of(std::begin(blends), std::end(blends), [&](const Blend& each) { return name == each.name; });
    return name + (blend ? ".MIX" : ".FLD");
}

// The basic cycle of a fluid, from file to file.
class Plant {
  public:
    explicit Plant(std::string file) : file_(std::move(file)) {
        const std::filesystem::path memory = "/dev/shm";
        folder_ = (std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path()) /
                  "frigana-bench-states";
        std::filesystem::create_directories(folder_);
        request_ = (folder_ / "plant.fi1").string();
    }
    ~Plant() { std::filesystem::remove_all(folder_); }
    Plant(const Plant&) = delete;
    Plant& operator=(const Plant&) = delete;

    void choose(double evaporating, double condensing) const {
        std::ofstream(request_) << "2\nbench\n"
                                << file_ << "\n2 DEF\n1\n15\n1 " << evaporating
                                << "\n2 5.0\n1 0.0\n2 2.0\n1 0.0\n1 0.0028\n1 0.7\n1 0.85\n2 0.0\n1 0.0\n1 "
                                << condensing << "\n2 3.0\n1 0.0\n2 0.0\n1 0.0\n";
    }
    void run() const {
        Frigana(request_.data(), installation_.data(), static_cast<int>(request_.size()),
                static_cast<int>(installation_.size()));
    }
    bool refused() const {
        std::ifstream result(std::filesystem::path(request_).replace_extension(".fo1"));
        std::string first;
        return !(result >> first) || first == "0";
    }

  private:
    std::string file_, request_;
    std::filesystem::path folder_;
    std::string installation_ = std::string(test::dataFolder) + "/frigana";
};

void measureSteps(const std::string& name, long count, unsigned seed, double clock) {
    const std::string file = fileOf(name);
    std::mt19937_64 generator(seed);
    std::uniform_real_distribution<double> uniform(0, 1);
    const auto timed = [&](const char* step, const std::function<void()>& prepare, const std::function<void()>& act,
                           const std::function<bool()>& refused) {
        std::vector<double> times;
        long refusals = 0;
        for (long k = 0; k < count; ++k) {
            prepare();
            const auto start = Clock::now();
            act();
            times.push_back(microseconds(start, Clock::now()) - clock);
            refusals += refused();
        }
        print(name, step, times, refusals);
    };
    const auto never = [] { return false; };

    const std::string other = file == "PROPANE.FLD" ? "R134A.FLD" : "PROPANE.FLD";
    timed(
        "set-up", [&] { test::fluid(other.c_str()); }, [&] { test::fluid(file.c_str()); }, never);

    SUBSTANCE& substance = test::fluid(file.c_str());
    double first = 0;
    timed(
        "dome", [&] { first = substance.PC * (0.05 + 0.25 * uniform(generator)); },
        [&] { INITDATADOME(substance, first); }, never);

    const Plant plant(file);
    const double Tcrit = substance.TC;
    timed(
        "request",
        [&] { plant.choose(Tcrit * (0.68 + 0.08 * uniform(generator)), Tcrit * (0.82 + 0.08 * uniform(generator))); },
        [&] { plant.run(); }, [&] { return plant.refused(); });
}

// Least time between two looks at the clock.
double timeOfClock() {
    double least = 1e9;
    for (int k = 0; k < 10000; ++k) {
        const auto start = Clock::now();
        least = std::min(least, microseconds(start, Clock::now()));
    }
    return least;
}

}  // namespace

int main(int argc, char** argv) {
    long count = 2000;
    unsigned seed = 1;
    std::vector<std::string> names;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--states" && i + 1 < argc)
            count = std::atol(argv[++i]);
        else if (argument == "--seed" && i + 1 < argc)
            seed = static_cast<unsigned>(std::atol(argv[++i]));
        else
            names.emplace_back(argument);
    }
    if (names.empty()) {
        for (const char* fluid : usualFluids) names.emplace_back(fluid);
        for (const Blend& blend : blends) names.emplace_back(blend.name);
    }
    const double clock = timeOfClock();
    std::printf("fluid    class      states     median    99th   refused   [us]\n");
    for (const std::string& name : names) {
        if (!setUp(name)) {
            std::printf("%-8s no set-up\n", name.c_str());
            return 1;
        }
        for (const Row& row : rows) measure(name, row, count, seed, clock);
        measureSteps(name, std::max(count / 10, 10L), seed, clock);
    }
    return 0;
}
