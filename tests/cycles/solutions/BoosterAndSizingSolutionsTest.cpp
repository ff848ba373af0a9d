// Whole solutions of the transcritical booster and both runs of line sizing against independent ones, through the
// entry: every number and pipe name before the diagrams and behind them, and the booster's diagrams against its own
// states.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <vector>

#include "Requests.h"
#include "ResultFile.h"
#include "TreeFolders.h"

namespace frigana::test {
namespace {

using nlohmann::json;

constexpr int booster = 14, lineSizing = 5;

std::vector<json> casesOf(int sub) {
    static const json all =
        json::parse(std::ifstream(std::string(test::testsFolder) + "/reference/cycles_system.json")).at("cases");
    std::vector<json> found;
    for (const json& one : all)
        if (one.at("sub_type").get<int>() == sub) found.push_back(one);
    return found;
}

Request requestOf(const json& run) {
    Request request;
    for (const json& line : run.at("request")) request.line(line.get<std::string>());
    return request;
}

struct Worst {
    double share = 0.0;  // of the tolerance
    std::string what;
};

// Relative deviations of 2e-6, or what the reference allows for the line. What is the small difference of two numbers
// near 300 K or 1000 kPa has besides it the last digits of those.
void compare(const json& run, const ResultFile& file, Worst& worst) {
    constexpr double usual = 2e-6;
    constexpr double lastDigits = 1e-11;
    std::map<int, double> loose;
    for (const json& row : run.at("loose")) loose[row[0].get<int>()] = row[1].get<double>();
    for (const json& row : run.at("expected")) {
        const int line = row[0].get<int>();
        const auto name = row[1].get<std::string>();
        if (row[2].is_string()) {
            EXPECT_EQ(file.trimmed(line), row[2].get<std::string>()) << "line " << line << ", " << name;
            continue;
        }
        const double expected = row[2].get<double>();
        const double tolerance = loose.contains(line) ? loose[line] : usual;
        const double deviation = std::fabs(file.number(line) - expected);
        const double share = deviation / (tolerance * std::fabs(expected) + lastDigits);
        EXPECT_TRUE(share <= 1.0) << "line " << line << ", " << name << ": " << file.trimmed(line) << " instead of "
                                  << expected;
        if (share >= worst.share) {
            char what[200];
            std::snprintf(what, sizeof what, "line %d, %s: %.10g, deviation %.1e, of the tolerance %.2g", line,
                          name.c_str(), expected, deviation, share);
            worst = {share, what};
        }
    }
}

// The pairs of both diagrams repeat the rows of the devices; only the vapors of both evaporators, mixed, have no row.
void compareBoosterPairs(const ResultFile& file) {
    constexpr int mixed = 0;
    constexpr int rows[] = {88,  95, 141, 146, 160, 170,   175, 190, 201, 206, 217,
                            222, 13, 27,  34,  114, mixed, 48,  55,  68,  88};
    constexpr int count = 21, pressurePairs = 318, temperaturePairs = 397;
    EXPECT_EQ(file.trimmed(316), "INFORMATION FOR GRAPHIC P-h");
    EXPECT_EQ(file.raw(317), " CYCLE data for graphic P-h ");
    EXPECT_EQ(file.trimmed(362), "PRESSURE & ENTHALPY data for graphic P-h");
    EXPECT_EQ(file.trimmed(395), "INFORMATION FOR GRAPHIC T-s");
    EXPECT_EQ(file.raw(396), " CYCLE data for graphic T-s ");
    EXPECT_EQ(file.trimmed(441), "Temperature & enthalpy data for graphic T-s");
    for (int i = 0; i < count; ++i) {
        SCOPED_TRACE("pair " + std::to_string(i + 1));
        const int p = pressurePairs + 2 * i, t = temperaturePairs + 2 * i;
        const int row = rows[i];
        if (row == mixed) {
            const double M = file.number(24 - 1), lowM = file.number(45 - 1);
            const double H = (M * file.number(13 + 3) + lowM * file.number(114 + 3)) / (M + lowM);
            EXPECT_EQ(file.raw(p), file.raw(13));
            EXPECT_NEAR(file.number(p + 1), H, 1e-9 * std::fabs(H));
            // Mixing makes entropy.
            const double S = (M * file.number(13 + 4) + lowM * file.number(114 + 4)) / (M + lowM);
            EXPECT_GE(file.number(t + 1), S);
            continue;
        }
        EXPECT_EQ(file.raw(p), file.raw(row));
        EXPECT_EQ(file.raw(p + 1), file.raw(row + 3));
        EXPECT_EQ(file.raw(t), file.raw(row + 1));
        EXPECT_EQ(file.raw(t + 1), file.raw(row + 4));
    }
    // The dome begins at 0.7 of 0.95 of the low evaporating pressure.
    EXPECT_NEAR(file.number(363), 0.7 * 0.95 * (file.number(27) + file.number(34)) / 2.0, 1e-3);
}

TEST(BoosterSolutions, AgreeWithIndependentOnes) {
    int solved = 0;
    for (const json& one : casesOf(booster)) {
        SCOPED_TRACE(one.at("title").get<std::string>());
        Plant plant;
        plant(requestOf(one));
        ASSERT_TRUE(plant.hasResult());
        const ResultFile file(plant.resultText());
        ASSERT_EQ(file.count(), one.at("total_lines").get<int>()) << file.trimmed(3);
        Worst worst;
        compare(one, file, worst);
        compareBoosterPairs(file);
        std::printf("booster, case %d, worst %s\n", one.at("id").get<int>(), worst.what.c_str());
        ++solved;
    }
    EXPECT_EQ(solved, 4);
}

TEST(LineSizingSolutions, OfBothRunsAgreeWithIndependentOnes) {
    int solved = 0;
    for (const json& one : casesOf(lineSizing)) {
        SCOPED_TRACE(one.at("title").get<std::string>());
        Plant plant;
        const std::string firstResult = plant.folder.path("plant.fo0");
        plant(requestOf(one));
        ASSERT_FALSE(plant.hasResult()) << plant.resultText();
        const ResultFile first(readFile(firstResult));
        ASSERT_EQ(first.count(), one.at("total_lines").get<int>());
        Worst worst;
        compare(one, first, worst);
        std::printf("line sizing, case %d, first run, worst %s\n", one.at("id").get<int>(), worst.what.c_str());

        const json& secondRun = one.at("second_run");
        plant(requestOf(secondRun));
        ASSERT_TRUE(plant.hasResult());
        const ResultFile second(plant.resultText());
        ASSERT_EQ(second.count(), 507);
        worst = {};
        compare(secondRun, second, worst);
        std::printf("line sizing, case %d, second run, worst %s\n", one.at("id").get<int>(), worst.what.c_str());
        ++solved;
    }
    EXPECT_EQ(solved, 4);
}

}  // namespace
}  // namespace frigana::test
