// Random valid requests of the basic cycle over all pure fluids: no crash, no third form of file, and the first law.
#include <gtest/gtest.h>

#include <cstdio>
#include <map>
#include <random>

#include "53_Fluid_Library.h"
#include "Larger.h"
#include "Requests.h"
#include "ResultFile.h"

namespace frigana::test {
namespace {

#ifdef FRIGANA_CHECK_BOUNDS
constexpr int requests = 500;  // the instrumented builds are slow
#else
constexpr int requests = 5000;
#endif

struct Generator {
    std::mt19937 engine{20240229};
    double between(double low, double high) {
        return low + (high - low) * std::uniform_real_distribution<double>(0.0, 1.0)(engine);
    }
    int option(int last) { return std::uniform_int_distribution<int>(1, last)(engine); }
    bool rarely() { return option(30) == 1; }

    // Mostly what an engineer would ask for, now and then anything that the range check lets pass.
    std::vector<Parameter> parameters(double TC) {
        const double evaporating = between(0.55, 0.85) * TC;
        const double condensing = evaporating + between(10.0, 0.97 * TC - evaporating);
        const auto level = [&](double T, double lowP, double highP) -> Parameter {
            if (rarely()) return option(2) == 1 ? Parameter{1, between(100, 600)} : Parameter{2, between(lowP, highP)};
            return {1, std::clamp(T, 100.0, 600.0)};
        };
        const auto drop = [&]() -> Parameter {
            if (rarely()) return option(2) == 1 ? Parameter{1, between(0, 1000)} : Parameter{2, between(0, 200)};
            return option(2) == 1 ? Parameter{1, between(0, 20)} : Parameter{2, between(0, 2)};
        };
        const auto change = [&](int options, double T) -> Parameter {
            if (rarely()) {
                const int chosen = option(options);
                return {chosen, chosen == 1 ? between(100, 600) : between(0, 200)};
            }
            if (option(4) == 1) return {1, std::clamp(T + between(-10, 10), 100.0, 600.0)};
            return {2, option(4) == 1 ? 0.0 : between(0, 15)};
        };
        const int capacity = option(3);
        return {level(evaporating, 0.2, 8000),
                change(2, evaporating + 8),
                drop(),
                change(2, evaporating + 12),
                drop(),
                {capacity, capacity == 1 ? between(0.001, 10.0) : between(1.0, 1000.0)},
                {1, between(0.25, 1.0)},
                {1, between(0.25, 1.0)},
                change(2, condensing + 25),
                drop(),
                level(condensing, 20, 20000),
                change(2, condensing - 5),
                drop(),
                change(3, condensing - 8),
                drop()};
    }
};

TEST(BasicCycleRandom, EveryRequestEndsInOneOfTheTwoForms) {
    static PureFluidTable fluids;
    LOADPUREFLUIDS(fluids);
    const double criticalT[] = {471.1, 385.1, 369.3, 299.3, 487.2, 418.8, 353.1, 293.0, 456.8, 395.4, 339.2, 374.2,
                                477.5, 410.3, 345.9, 386.4, 345.0, 374.9, 398.1, 427.0, 369.9, 425.1, 407.8, 405.4,
                                304.1, 282.4, 367.9, 382.5, 364.2, 351.3, 460.4, 469.7, 439.6, 126.2, 658.1, 396.4};
    Generator random;
    Plant plant;
    std::map<std::string, int> codes;
    int solved = 0;
    double worst = 0.0;
    for (int i = 0; i < requests; ++i) {
        const int row = 1 + i % fluids.count;
        const auto parameters = random.parameters(criticalT[row - 1]);
        const Request request = cycleRequest(1, parameters, std::string(fluids.rows[row].NAME.trimmed()));
        std::error_code ignored;
        std::filesystem::remove(plant.result, ignored);
        plant(request);
        SCOPED_TRACE(request.text());
        ASSERT_TRUE(plant.hasResult());
        const ResultFile file(plant.resultText());
        if (file.refused()) {
            ASSERT_EQ(file.count(), 3);
            ASSERT_GT(file.number(2), 0.0);
            ++codes[file.trimmed(2)];
            continue;
        }
        ++solved;
        EXPECT_TRUE(takesHeatUp(file));
        ASSERT_EQ(file.count(), 283);
        ASSERT_EQ(file.trimmed(1), "2");
        // Evaporator, suction line and compressor take up what discharge line, condenser and liquid line give away.
        const double sum =
            file.number(25) + file.number(45) + file.number(66) - file.number(86) - file.number(108) - file.number(128);
        double scale = 0.0;
        for (int line : {25, 45, 66, 86, 108, 128}) scale = larger(scale, std::fabs(file.number(line)));
        if (!std::isfinite(scale)) continue;  // points that failed leave an infinite mass flow
        const double deviation = std::fabs(sum) / scale;
        worst = larger(worst, deviation);
        ASSERT_LT(deviation, 1e-9);
    }
    std::printf("%d of %d requests solved, first law closed within %.1e; refused by code:", solved, requests, worst);
    for (const auto& [code, count] : codes) std::printf(" %s (%d)", code.c_str(), count);
    std::printf("\n");
    EXPECT_GT(solved, requests / 3);
}

}  // namespace
}  // namespace frigana::test
