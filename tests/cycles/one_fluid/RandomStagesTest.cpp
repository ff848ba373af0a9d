// Random requests of the two-stage and the multi-stage cycle that pass their checks: each ends in a whole result or in
// a failure file, and the energy balance closes where the treatment of tanks and flows lets it close.
#include <cmath>
#include <cstdio>
#include <map>

#include "Larger.h"
#include "OneFluidCycles.h"
#include "RandomParameters.h"

namespace frigana::test {
namespace {

constexpr int requestsPerCycle = 120;

const std::vector<Choices> lowSide{
    pressureOr(235, 275, 60, 350, evaporatorP), {change(2, 12)}, someDrop, {change(2, 0), change(2, 6)}, someDrop,
};
// Discharge line, condenser and liquid line; that has some subcooling before it.
std::vector<Choices> highSide(double subcooling) {
    return {
        {change(2, 0), change(2, 10)},
        someDrop,
        pressureOr(300, 330, 700, 2000, condenserP),
        {change(2, 0), change(2, 8), temperature(290, 300)},
        someDrop,
        {change(2, 0),
         change(2, 5),
         {3, {subcooling, subcooling + 15.0}, anyChange},
         {3, {subcooling, subcooling}, anyChange}},
        someDrop,
    };
}
const Choices flowOfLowCompressor{{1, {0.001, 0.1}, {0.0001, 800.0}},
                                  {2, {0.2, 2.0}, {0.2, 800000.0}},
                                  {3, {1.0, 100.0}, {0.2, 800000.0}},
                                  {4, {1.0, 100.0}, {0.2, 800000.0}}};
const Choices pressureDrop{drop, {1, {0.0, 0.0}, anyDrop}};

std::vector<Choices> twoStageChoices() {
    std::vector<Choices> all = lowSide;
    all.push_back(flowOfLowCompressor);
    all.insert(all.end(), 4, efficiency);
    const std::vector<Choices> high = highSide(40.0);
    all.insert(all.end(), high.begin(), high.end());
    const Choices none{{1, {0.0, 0.0}, {0.0, 0.0}}};
    const std::vector<Choices> exchanger{
        {{1, {0.0, 12.0}, anyChange}, {1, {0.0, 0.0}, anyChange}},
        {{1, {5.0, 30.0}, {1e-6, 199.0}}},
        pressureDrop,
        pressureDrop,
        {{1, {0.0, 6.0}, anyChange}, {1, {0.0, 0.0}, anyChange}},
        pressureDrop,
        none,
        {{2, {0.0, 0.0}, {0.0, 0.0}}, {1, {250.0, 600.0}, {0.1, 2000.0}}},
    };
    all.insert(all.end(), exchanger.begin(), exchanger.end());
    return all;
}

std::vector<Choices> multiStageChoices(int compressors) {
    std::vector<Choices> all = lowSide;
    all.push_back(capacity);
    all.insert(all.end(), 2, efficiency);
    const std::vector<Choices> high = highSide(0.0);
    all.insert(all.end(), high.begin(), high.end());
    all.push_back({{compressors, {0.0, 0.0}, {0.0, 0.0}}});
    for (int i = 1; i < compressors; ++i) {
        const double T = 265.0 + 40.0 * i / compressors;
        all.push_back({change(2, 0), change(2, 5)});
        all.push_back({{1, {0.0, 0.0}, anyDrop}, {1, {0.0, 8.0}, anyDrop}, change(2, 0), change(2, 1.5)});
        all.insert(all.end(), 2, efficiency);
        const Choice equalRatios{1, {180.0, 380.0}, {180.0, 380.0}};
        all.push_back({equalRatios, equalRatios, {2, {T - 1.0, T + 1.0}, {180.0, 380.0}}});
    }
    return all;
}

// What the requests of a cycle came to.
class Outcomes {
  public:
    // A whole result, or an empty one after a refusal.
    ResultFile run(const Request& request, int sub, int lines) {
        Plant plant;
        plant(request);
        const ResultFile file(plant.hasResult() ? plant.resultText() : "");
        if (file.count() == 3 && file.refused()) {
            EXPECT_GT(file.number(2), 0.0) << request.text();
            EXPECT_FALSE(file.trimmed(3).empty()) << request.text();
            ++refusals_[file.trimmed(2)];
            return ResultFile("");
        }
        EXPECT_EQ(file.count(), lines) << request.text();
        EXPECT_EQ(file.trimmed(2), std::to_string(sub)) << request.text();
        ++solved;
        return file;
    }
    void balance(double sum, double largest, const Request& request) {
        if (largest == 0.0) return;
        ++balanced;
        EXPECT_LE(std::fabs(sum), 1e-9 * largest) << request.text();
        worst_ = larger(worst_, std::fabs(sum) / largest);
    }
    void print(const char* name) const {
        std::printf("%s: %d solved, energy balance of %d open by %.1e at most; refused:", name, solved, balanced,
                    worst_);
        for (const auto& [code, count] : refusals_) std::printf(" %s x%d", code.c_str(), count);
        std::printf("\n");
    }
    int solved = 0, balanced = 0;

  private:
    std::map<std::string, int> refusals_;
    double worst_ = 0.0;
};

// Sum of heats and powers with their signs, and the largest of them.
struct Balance {
    double sum = 0.0, largest = 0.0;
    void add(double sign, double heat) {
        sum += sign * heat;
        largest = larger(largest, std::fabs(heat));
    }
};

const char* const fluids[] = {"R134A.FLD",   "PROPANE.FLD", "R32.FLD",   "AMMONIA.FLD", "ISOBUTAN.FLD",
                              "R1234YF.FLD", "R22.FLD",     "R152A.FLD", "R125.FLD",    "R1234ZE.FLD",
                              "R410A.MIX",   "R404A.MIX",   "R407C.MIX"};
constexpr std::size_t pureFluids = 10;

TEST(RandomStages, TwoStageRequestsEndInAWholeResultOrInAFailureFile) {
    const std::vector<Choices> choices = twoStageChoices();
    Random random(10);
    Outcomes outcomes;
    for (int i = 0; i < requestsPerCycle; ++i) {
        const char* fluid = fluids[random.below(std::size(fluids))];
        const Request request = cycleRequest(10, randomParameters(choices, random), fluid);
        const ResultFile file = outcomes.run(request, 10, twoStage.lines);
        if (file.count() == 0) continue;
        Balance balance;
        for (int line : {25, 45, 66, 87}) balance.add(1.0, file.number(line));
        for (int line : {107, 129, 149}) balance.add(-1.0, file.number(line));
        // The injection line has no section of its own; its outlet stands in the diagram.
        balance.add(1.0, file.number(222) * (file.number(294) - file.number(214)));
        outcomes.balance(balance.sum, balance.largest, request);
    }
    outcomes.print("two stages");
    EXPECT_GT(outcomes.balanced, requestsPerCycle / 4);
}

class RandomMultiStage : public testing::TestWithParam<int> {};

TEST_P(RandomMultiStage, RequestsEndInAWholeResultOrInAFailureFile) {
    const int compressors = GetParam();
    const std::vector<Choices> choices = multiStageChoices(compressors);
    Random random(static_cast<std::uint64_t>(110 + compressors));
    Outcomes outcomes;
    for (int i = 0; i < requestsPerCycle / 2; ++i) {
        const std::size_t fluid = random.below(std::size(fluids));
        const std::vector<Parameter> parameters = randomParameters(choices, random);
        const Request request = cycleRequest(11, parameters, fluids[fluid]);
        const ResultFile file = outcomes.run(request, 11, 413 + 125 * (compressors - 2));
        if (file.count() == 0) continue;

        // A blend leaves its tank with the compositions of its phases, which the tanks are not told. With more than
        // one tank the feed of the lower ones is taken at the ratio of the stages, which is not the ratio of the tanks
        // where an injection line has a drop, and a given condenser capacity leaves the upper tanks without flow.
        bool closes = fluid < pureFluids;
        if (compressors > 2) {
            closes = closes && parameters[5].option != 2;
            for (int stage = 1; stage < compressors; ++stage) {
                const Parameter& line = parameters[static_cast<std::size_t>(12 + 5 * stage)];
                closes = closes && (line.option == 2 || line.value == 0.0);
            }
        }
        if (!closes) continue;
        Balance balance;
        for (int line : {25, 45, 66}) balance.add(1.0, file.number(line));
        for (int line : {86, 108, 128}) balance.add(-1.0, file.number(line));
        for (int stage = 1; stage < compressors; ++stage)
            for (int line : {211, 232}) balance.add(1.0, file.number(line + 84 * (stage - 1)));
        outcomes.balance(balance.sum, balance.largest, request);
    }
    outcomes.print((std::to_string(compressors) + " compressors").c_str());
    EXPECT_GT(outcomes.solved, requestsPerCycle / 8);
    EXPECT_GT(outcomes.balanced, 0);
}

INSTANTIATE_TEST_SUITE_P(Compressors, RandomMultiStage, testing::Values(2, 3, 7),
                         [](const auto& row) { return "Of" + std::to_string(row.param); });

}  // namespace
}  // namespace frigana::test
