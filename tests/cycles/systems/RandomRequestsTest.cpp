// Random requests that pass their checks: each ends in a whole result or in a failure file, and the energy balances of
// every result close.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <utility>

#include "Larger.h"
#include "Systems.h"

namespace frigana::test {
namespace {

// A longer run: FRIGANA_RANDOM_REQUESTS=2000.
int requestsPerSystem() {
    const char* given = std::getenv("FRIGANA_RANDOM_REQUESTS");
    return given == nullptr ? 100 : std::atoi(given);
}

// Uniform numbers, the same in every run.
class Random {
  public:
    explicit Random(std::uint64_t seed) : state_(seed) {}
    double between(double low, double high) {
        state_ = state_ * 6364136223846793005ULL + 1442695040888963407ULL;
        return low + (high - low) * static_cast<double>(state_ >> 11U) * 0x1p-53;
    }
    std::size_t below(std::size_t count) { return static_cast<std::size_t>(between(0.0, static_cast<double>(count))); }

  private:
    std::uint64_t state_;
};

struct Range {
    double low, high;
};

// What a parameter may be: its option with what is usual and what the request's check allows.
struct Choice {
    int option;
    Range usual, allowed;
};
using Choices = std::vector<Choice>;

constexpr Range anyTemperature{100.0, 600.0}, anyChange{0.0, 200.0}, anyDrop{0.0, 1000.0}, anyCapacity{0.2, 800000.0};

Choice change(int option, double usual) {
    return {option, {0.0, usual}, anyChange};
}
Choice temperature(double low, double high, int option = 1) {
    return {option, {low, high}, anyTemperature};
}
Choice quality(double low, double high) {
    return {3, {low, high}, {0.0, 1.0}};
}
const Choice drop{1, {0.0, 20.0}, anyDrop};
const Choices someDrop{drop, change(2, 1.5)};
const Choices noneOrChange{change(2, 0.0), change(2, 8.0)};
const Choices efficiency{{1, {0.5, 0.9}, {0.25, 1.0}}};
const Choice sweptVolume{1, {0.001, 0.1}, {0.0001, 800.0}}, evaporatorCapacity{3, {1.0, 100.0}, anyCapacity};
const Choices anyCapacityOption{sweptVolume, {2, {1.0, 100.0}, anyCapacity}, evaporatorCapacity};

Choices level(double low, double high, Range pressure, Range allowed) {
    return {temperature(low, high), {2, pressure, allowed}};
}
constexpr Range evaporatorP{0.1, 8000.0}, condenserP{20.0, 20000.0};

std::vector<Choices> basicCircuit(Choices evaporator, Choices condenser, Choices capacity) {
    return {std::move(evaporator),
            {change(2, 12)},
            someDrop,
            {change(2, 0), change(2, 8)},
            someDrop,
            std::move(capacity),
            efficiency,
            efficiency,
            {change(2, 0), change(2, 10)},
            someDrop,
            std::move(condenser),
            {change(2, 0), change(2, 8)},
            someDrop,
            {change(2, 0), change(2, 4), {3, {9.0, 25.0}, anyChange}},
            someDrop};
}

std::vector<Choices> followedBy(std::vector<Choices> all, std::initializer_list<Choices> more) {
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

// The low circuit with mechanical subcooling has only two options where the basic cycle has three.
std::vector<Choices> subcooledCircuit() {
    auto all = basicCircuit(level(225, 255, {60, 200}, evaporatorP), level(300, 320, {700, 1500}, condenserP),
                            anyCapacityOption);
    all[13] = noneOrChange;
    return followedBy(std::move(all),
                      {{change(2, 0), change(2, 4), {3, {20.0, 40.0}, anyChange}},
                       someDrop,
                       {{1, {0.2, 4.0}, anyCapacity}, change(2, 25), change(2, 25), temperature(275, 300, 3)},
                       someDrop});
}

struct RandomSystem {
    const System* system;
    std::vector<Choices> first, second;
    std::vector<const char*> firstFluids, secondFluids;
};

const Choices unused{{1, {0.0, 0.0}, {0.0, 0.0}}};
const Choices mediumEvaporator = level(255, 275, {120, 300}, evaporatorP);
const Choices warmCondenser = level(300, 325, {700, 1500}, condenserP);

RandomSystem randomSystem(const System& system) {
    const std::vector<const char*> usual{"R134A.FLD",   "PROPANE.FLD", "AMMONIA.FLD", "ISOBUTAN.FLD",
                                         "R1234YF.FLD", "R22.FLD",     "R404A.MIX",   "R407C.MIX"};
    const std::vector<const char*> cold{"CO2.FLD", "CO2.FLD", "ETHYLENE.FLD", "R23.FLD", "R410A.MIX", "R32.FLD"};
    switch (system.sub) {
        case 3:
            return {&system, basicCircuit(mediumEvaporator, warmCondenser, anyCapacityOption), subcooledCircuit(),
                    usual, usual};
        case 4:
            return {
                &system, basicCircuit(unused, warmCondenser, unused),
                followedBy(basicCircuit(level(215, 245, {600, 1200}, evaporatorP),
                                        level(258, 275, {1500, 3000}, condenserP), {sweptVolume, evaporatorCapacity}),
                           {{change(1, 8), temperature(245, 265, 2)}}),
                usual, cold};
        default:
            return {&system,
                    basicCircuit(unused, warmCondenser, unused),
                    {level(230, 275, {900, 3000}, evaporatorP),
                     {quality(0.3, 1.0), quality(0.3, 1.0), change(2, 10), change(2, 0)},
                     {drop, change(2, 1.0)},
                     {quality(0.3, 1.0), quality(0.3, 1.0), change(2, 5), change(2, 0)},
                     {drop, change(2, 1.0)},
                     {{1, {1.0, 200.0}, anyCapacity}},
                     efficiency,
                     {change(2, 0), change(2, 6)},
                     {change(2, 0), change(2, 2)},
                     {{1, {0.0, 100.0}, anyDrop}},
                     {change(1, 8), temperature(230, 265, 2)}},
                    usual,
                    cold};
    }
}

std::vector<Parameter> randomParameters(const std::vector<Choices>& choices, double wild, Random& random) {
    std::vector<Parameter> all;
    for (const Choices& options : choices) {
        const Choice& choice = options[random.below(options.size())];
        const bool anything = random.between(0.0, 1.0) < wild;
        const Range range = anything ? choice.allowed : choice.usual;
        all.push_back({choice.option, random.between(range.low, range.high)});
    }
    return all;
}

// A line of the result with a heat or a power, and its sign in the balance.
struct Flow {
    int line;
    double sign;
};
using Balance = std::vector<Flow>;

const Balance basicBalance{{25, 1}, {45, 1}, {66, 1}, {86, -1}, {108, -1}, {128, -1}, {146, 1}};
const Balance subcooledBalance{{25, 1}, {45, 1}, {66, 1}, {86, -1}, {108, -1}, {128, -1}, {148, -1}, {186, -1}};
const Balance loopBalance{{25, 1}, {45, 1}, {87, 1}, {106, 1}, {67, -1}};

// Part of the largest flow by which the balance of a circuit that begins behind the line start stays open.
double openPart(const ResultFile& file, const Balance& balance, int start) {
    double sum = 0.0, largest = 0.0;
    for (const Flow& flow : balance) {
        const double heat = file.number(start + flow.line);
        sum += flow.sign * heat;
        largest = larger(largest, std::fabs(heat));
    }
    return largest > 0.0 ? std::fabs(sum) / largest : 0.0;
}

void solveMany(const System& system) {
    const RandomSystem all = randomSystem(system);
    Random random(static_cast<std::uint64_t>(system.sub));
    Plant plant;
    std::map<std::string, int> refusals;
    int solved = 0;
    double worst = 0.0;
    const int count = requestsPerSystem();
    for (int i = 0; i < count; ++i) {
        System drawn = system;
        // One request in four takes one or several parameters from all that is allowed.
        const double wild = random.between(0.0, 1.0) < 0.25 ? 0.1 : 0.0;
        drawn.fluids = {all.firstFluids[random.below(all.firstFluids.size())],
                        all.secondFluids[random.below(all.secondFluids.size())]};
        drawn.first = randomParameters(all.first, wild, random);
        drawn.second = randomParameters(all.second, wild, random);
        const Request request = drawn.request();
        std::filesystem::remove(plant.result);
        plant(request);
        ASSERT_TRUE(plant.hasResult()) << request.text();
        const ResultFile file(plant.resultText());
        if (file.refused()) {
            ASSERT_EQ(file.count(), 3) << request.text();
            ASSERT_GT(file.number(2), 0.0) << request.text();
            ASSERT_FALSE(file.trimmed(3).empty()) << request.text();
            ++refusals[file.trimmed(2)];
            continue;
        }
        ASSERT_EQ(file.count(), system.lines) << request.text();
        ++solved;
        EXPECT_TRUE(takesHeatUp(file)) << request.text();
        EXPECT_TRUE(takesHeatUp(file, system.second1 - 1)) << request.text();
        const int low = system.second1 - 1;
        const Balance& lowBalance = system.sub == 3 ? subcooledBalance : system.sub == 4 ? basicBalance : loopBalance;
        const double open = larger(openPart(file, basicBalance, 0), openPart(file, lowBalance, low));
        EXPECT_LE(open, 1e-9) << request.text();
        worst = larger(worst, open);
    }
    std::printf("cycle %d: %d of %d solved, energy balances open by %.1e at most; refused:", system.sub, solved, count,
                worst);
    for (const auto& [code, number] : refusals) std::printf(" %s x%d", code.c_str(), number);
    std::printf("\n");
    EXPECT_GT(solved, count / 4);
}

TEST(RandomSystems, CombinedCyclesEndInAWholeResultOrInAFailureFile) {
    solveMany(combined);
}
TEST(RandomSystems, CascadesEndInAWholeResultOrInAFailureFile) {
    solveMany(cascade);
}
TEST(RandomSystems, PumpedSystemsEndInAWholeResultOrInAFailureFile) {
    solveMany(pumped);
}

}  // namespace
}  // namespace frigana::test
