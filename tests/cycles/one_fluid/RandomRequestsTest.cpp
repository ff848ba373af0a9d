// Random requests that pass their checks: each ends in a whole result or in a failure file, and the energy balance of
// every result closes.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <map>

#include "OneFluidCycles.h"

namespace frigana::test {
namespace {

constexpr int requestsPerCycle = 120;

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

constexpr Range anyTemperature{100.0, 600.0}, anyChange{0.0, 200.0}, anyDrop{0.0, 1000.0};

Choice change(int option, double usual) {
    return {option, {0.0, usual}, anyChange};
}
Choice temperature(double low, double high) {
    return {1, {low, high}, anyTemperature};
}
const Choice drop{1, {0.0, 20.0}, anyDrop};
const Choices someDrop{drop, change(2, 1.5)};
const Choices noneOrChange{change(2, 0.0), change(2, 8.0)};
const Choices capacity{
    {1, {0.001, 0.1}, {0.0001, 800.0}}, {2, {1.0, 100.0}, {0.2, 800000.0}}, {3, {1.0, 100.0}, {0.2, 800000.0}}};
const Choices efficiency{{1, {0.5, 0.9}, {0.25, 1.0}}};

Choices pressureOr(double low, double high, double lowP, double highP, Range allowedP) {
    return {temperature(low, high), {2, {lowP, highP}, allowedP}};
}
constexpr Range evaporatorP{0.1, 8000.0}, condenserP{20.0, 20000.0};

// Temperatures are usual for refrigerants of air conditioning; of the others many requests fail, as they should.
const std::vector<Choices> withExchangerChoices{
    pressureOr(240, 285, 80, 500, evaporatorP),
    {change(2, 12)},
    someDrop,
    {change(2, 0), change(2, 6), temperature(270, 300)},
    someDrop,
    noneOrChange,
    someDrop,
    capacity,
    efficiency,
    efficiency,
    {change(2, 0), change(2, 10)},
    someDrop,
    pressureOr(300, 335, 600, 2000, condenserP),
    {change(2, 0), change(2, 8), temperature(290, 310)},
    someDrop,
    noneOrChange,
    someDrop,
    {change(2, 0), change(2, 5), {3, {15.0, 35.0}, anyChange}},
    someDrop,
    {{1, {0.2, 0.9}, {0.2, 1.0}},
     {2, {0.0, 15.0}, anyChange},
     {2, {0.0, 15.0}, anyChange},
     {3, {280.0, 305.0}, anyTemperature},
     {4, {0.0, 25.0}, anyChange},
     {5, {265.0, 300.0}, anyTemperature}},
    someDrop,
    {{1, {0.0, 3.0}, anyDrop}, change(2, 0.3)},
};
const std::vector<Choices> transcriticalChoices{
    pressureOr(240, 285, 1500, 4500, evaporatorP),
    {change(2, 12)},
    someDrop,
    {change(2, 0), change(2, 6)},
    someDrop,
    noneOrChange,
    someDrop,
    capacity,
    efficiency,
    efficiency,
    {change(2, 0), change(2, 10)},
    {drop},
    {{2, {7800, 13000}, {20, 200000}}},
    {temperature(295, 325)},
    {drop},
    noneOrChange,
    {drop},
    noneOrChange,
    {drop},
    {{1, {0.0, 0.9}, {0.0, 1.0}},
     {1, {0.0, 0.0}, {0.0, 1.0}},
     {2, {0.0, 10.0}, anyChange},
     {2, {0.0, 10.0}, anyChange},
     {3, {290.0, 320.0}, anyTemperature},
     {4, {0.0, 15.0}, anyChange},
     {5, {265.0, 300.0}, anyTemperature}},
    {drop},
    {{1, {0.0, 3.0}, anyDrop}, change(2, 0.3)},
};
const std::vector<Choices> liquidInjectionChoices{
    pressureOr(230, 275, 60, 400, evaporatorP),
    {change(2, 12)},
    someDrop,
    {change(2, 0), change(2, 6)},
    someDrop,
    capacity,
    efficiency,
    efficiency,
    {change(2, 0), change(2, 10)},
    someDrop,
    pressureOr(300, 335, 600, 2000, condenserP),
    {change(2, 0), change(2, 8), temperature(290, 310)},
    someDrop,
    {change(2, 0), change(2, 5), change(3, 15)},
    someDrop,
    {temperature(330, 400)},
    {change(2, 0), change(2, 5), change(3, 15)},
    someDrop,
};
const std::vector<Choices> rankineChoices{
    {temperature(340, 400), {2, {500, 2500}, {0.1, 20000}}},
    {change(2, 0), change(2, 20)},
    someDrop,
    noneOrChange,
    someDrop,
    {{1, {1, 1000}, {0, 800000}}, {2, {1, 100}, {0, 800000}}},
    efficiency,
    {drop},
    noneOrChange,
    someDrop,
    {temperature(290, 320), {2, {100, 300}, evaporatorP}},
    {drop},
    someDrop,
    efficiency,
    {change(2, 0), change(2, 3)},
    someDrop,
    {temperature(400, 500)},
    {temperature(350, 400)},
    {temperature(280, 300)},
    {temperature(285, 310)},
};

// A line of the result with a heat or a power, and its sign in the balance of the whole circuit.
struct Flow {
    int line;
    double sign;
};

struct RandomCycle {
    const CycleKind* kind;
    const std::vector<Choices>* choices;
    std::vector<const char*> fluids;
    std::vector<Flow> balance;
};
void PrintTo(const RandomCycle& cycle, std::ostream* out) {
    *out << "cycle " << cycle.kind->sub;
}

const RandomCycle cycles[] = {
    {&withExchanger,
     &withExchangerChoices,
     {"R134A.FLD", "PROPANE.FLD", "R32.FLD", "AMMONIA.FLD", "ISOBUTAN.FLD", "R1234YF.FLD", "R22.FLD", "R152A.FLD",
      "R410A.MIX", "R407C.MIX"},
     {{25, 1}, {45, 1}, {65, 1}, {86, 1}, {106, -1}, {128, -1}, {148, -1}, {168, -1}}},
    {&transcritical,
     &transcriticalChoices,
     {"CO2.FLD", "CO2.FLD", "CO2.FLD", "CO2.FLD", "ETHYLENE.FLD", "R23.FLD", "R116.FLD", "R32.FLD", "R410A.MIX"},
     {{25, 1}, {45, 1}, {65, 1}, {84, 1}, {99, -1}, {113, -1}, {128, -1}, {143, -1}}},
    {&liquidInjection,
     &liquidInjectionChoices,
     {"R22.FLD", "R134A.FLD", "PROPANE.FLD", "R32.FLD", "AMMONIA.FLD", "R143A.FLD", "R1234ZE.FLD", "R125.FLD",
      "R404A.MIX", "R407C.MIX"},
     {{25, 1}, {45, 1}, {66, 1}, {86, -1}, {108, -1}, {128, -1}, {166, -1}}},
    {&rankine,
     &rankineChoices,
     {"R245FA.FLD", "R134A.FLD", "AMMONIA.FLD", "PENTANE.FLD", "BUTANE.FLD", "R123.FLD", "R1233ZD.FLD", "ISOBUTAN.FLD",
      "R407C.MIX"},
     {{25, 1}, {45, -1}, {65, -1}, {85, -1}, {106, -1}, {125, 1}, {145, -1}}},
};

class RandomRequests : public testing::TestWithParam<RandomCycle> {};

std::vector<Parameter> randomParameters(const std::vector<Choices>& choices, Random& random) {
    // One request in four takes one or several parameters from all that is allowed.
    const double wild = random.between(0.0, 1.0) < 0.25 ? 0.2 : 0.0;
    std::vector<Parameter> all;
    for (const Choices& options : choices) {
        const Choice& choice = options[random.below(options.size())];
        const bool anything = random.between(0.0, 1.0) < wild;
        const Range range = anything ? choice.allowed : choice.usual;
        all.push_back({choice.option, random.between(range.low, range.high)});
    }
    return all;
}

TEST_P(RandomRequests, EndInAWholeResultOrInAFailureFile) {
    const RandomCycle& cycle = GetParam();
    const CycleKind& kind = *cycle.kind;
    Random random(static_cast<std::uint64_t>(kind.sub));
    Plant plant;
    std::map<std::string, int> refusals;
    int solved = 0;
    double worst = 0.0;
    for (int i = 0; i < requestsPerCycle; ++i) {
        const char* fluid = cycle.fluids[random.below(cycle.fluids.size())];
        const Request request = cycleRequest(kind.sub, randomParameters(*cycle.choices, random), fluid);
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
        ASSERT_EQ(file.count(), kind.lines) << request.text();
        ++solved;
        double sum = 0.0;
        double largest = 0.0;
        for (const Flow& flow : cycle.balance) {
            const double heat = file.number(flow.line);
            sum += flow.sign * heat;
            largest = std::max(largest, std::fabs(heat));
        }
        if (largest == 0.0) continue;
        EXPECT_LE(std::fabs(sum), 1e-9 * largest) << request.text();
        worst = std::max(worst, std::fabs(sum) / largest);
    }
    std::printf("cycle %d: %d solved, energy balance open by %.1e at most; refused:", kind.sub, solved, worst);
    for (const auto& [code, count] : refusals) std::printf(" %s x%d", code.c_str(), count);
    std::printf("\n");
    EXPECT_GT(solved, requestsPerCycle / 4);
}

INSTANTIATE_TEST_SUITE_P(Cycles, RandomRequests, testing::ValuesIn(cycles),
                         [](const auto& row) { return "Sub" + std::to_string(row.param.kind->sub); });

}  // namespace
}  // namespace frigana::test
