// Random requests that pass their checks: each ends in a whole result or in a failure file, and the energy balance of
// every result closes.
#include <cmath>
#include <cstdio>
#include <map>

#include "Larger.h"
#include "OneFluidCycles.h"
#include "RandomParameters.h"

namespace frigana::test {
namespace {

constexpr int requestsPerCycle = 120;

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

const std::vector<Choices> boosterChoices{
    pressureOr(255, 275, 1800, 3200, evaporatorP),
    {change(2, 12)},
    someDrop,
    {change(2, 0), change(2, 6)},
    someDrop,
    noneOrChange,
    someDrop,
    {{1, {1.0, 100.0}, {0.2, 800000.0}}, {2, {1.0, 100.0}, {0.2, 800000.0}}},
    efficiency,
    efficiency,
    {change(2, 0), change(2, 10)},
    {drop},
    {{2, {7800, 13000}, {20, 200000}}},
    {temperature(280, 320)},
    {drop},
    noneOrChange,
    {drop},
    noneOrChange,
    {drop},
    {{1, {0.0, 0.9}, {0.0, 1.0}},
     {1, {0.0, 0.0}, {0.0, 1.0}},
     {2, {0.0, 10.0}, anyChange},
     {2, {0.0, 10.0}, anyChange},
     {3, {290.0, 315.0}, anyTemperature},
     {4, {0.0, 15.0}, anyChange},
     {5, {275.0, 305.0}, anyTemperature}},
    {drop},
    {{1, {0.0, 3.0}, anyDrop}, change(2, 0.3)},
    {{1, {2500, 5000}, {0.1, 200000}}},
    pressureOr(225, 250, 800, 1700, evaporatorP),
    {change(2, 12)},
    someDrop,
    efficiency,
    {{1, {1.0, 50.0}, {0.2, 800000.0}}, {2, {0.3, 1.0}, {0.0, 1.0}}, {3, {0.0, 0.7}, {0.0, 1.0}}},
    efficiency,
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
    int twoPhase = 0;  // line of a quality that must lie within the dome for the balance to close
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
    // A receiver that is fed with subcooled liquid gives it to the evaporators saturated.
    {&booster,
     &boosterChoices,
     {"CO2.FLD", "CO2.FLD", "CO2.FLD", "CO2.FLD", "ETHYLENE.FLD", "R23.FLD", "R116.FLD", "R410A.MIX"},
     {{25, 1}, {46, 1}, {66, 1}, {86, 1}, {105, 1}, {124, 1}, {139, -1}, {153, -1}, {168, -1}, {183, -1}},
     195},
};

class RandomRequests : public testing::TestWithParam<RandomCycle> {};

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
        EXPECT_TRUE(takesHeatUp(file)) << request.text();
        double sum = 0.0;
        double largest = 0.0;
        for (const Flow& flow : cycle.balance) {
            const double heat = file.number(flow.line);
            sum += flow.sign * heat;
            largest = larger(largest, std::fabs(heat));
        }
        if (largest == 0.0) continue;
        if (const double Q = file.number(cycle.twoPhase); cycle.twoPhase > 0 && (Q <= 0.0 || Q >= 1.0)) continue;
        EXPECT_LE(std::fabs(sum), 1e-9 * largest) << request.text();
        worst = larger(worst, std::fabs(sum) / largest);
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
