// Number of rows of tables, their suggested limits, and property codes that make no sense.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "14_ErrorControl.h"
#include "FixedRows.h"
#include "Requests.h"
#include "ResultFile.h"
#include "Substances.h"
#include "Trap.h"

namespace frigana::test {
namespace {

ResultFile answer(const Request& request) {
    Plant plant;
    plant(request);
    return ResultFile(plant.hasResult() ? plant.resultText() : "");
}

std::string number(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    return text;
}

// ---- rows
// -------------------------------------------------------------------------------------------------------------

constexpr StepCodes codes{11, 12, 13, 14};

// Code of a refusal, 0 where the steps are accepted.
int refusalOf(double from, double to, double step, Steps& steps) {
    struct Context {
        double from, to, step;
        Steps& steps;
    } context{from, to, step, steps};
    static const TemporaryFolder folder;
    ERRORFILEOUT = Text255(folder.path("refused.fo1"));
    runReport.IERR = 0;
    const bool returned = runContained(
        [](void* given) {
            auto& c = *static_cast<Context*>(given);
            c.steps = checkedSteps(c.from, c.to, c.step, codes);
        },
        &context);
    return returned ? 0 : runReport.IERR;
}

TEST(TableRows, RoundRangesInCelsiusReachTheirEnd) {
    int ranges = 0;
    for (int start = -50; start <= 20; start += 5)
        for (int end = start + 5; end <= 80; end += 5)
            for (const int step : {1, 2, 5, 10}) {
                if ((end - start) % step != 0 || 2 * step > end - start) continue;
                ++ranges;
                Steps steps;
                ASSERT_EQ(refusalOf(start + 273.15, end + 273.15, step, steps), 0);
                ASSERT_EQ(steps.count, (end - start) / step + 1) << start << ' ' << end << ' ' << step;
                ASSERT_NEAR(steps[steps.count], end + 273.15, 1e-9);
            }
    std::printf("%d ranges\n", ranges);
    EXPECT_GT(ranges, 800);
}

TEST(TableRows, AStepThatDoesNotDivideTheRangeEndsBelowItsEnd) {
    Steps steps;
    ASSERT_EQ(refusalOf(250.0, 299.9999, 10.0, steps), 0);
    EXPECT_EQ(steps.count, 5);
    ASSERT_EQ(refusalOf(250.0, 300.0 - 1e-7, 10.0, steps), 0);  // less by 1e-8 of a step
    EXPECT_EQ(steps.count, 5);
    ASSERT_EQ(refusalOf(250.0, 300.0 - 5e-9, 10.0, steps), 0);  // less by 5e-10 of a step
    EXPECT_EQ(steps.count, 6);
}

TEST(TableRows, TheWholeTableOfACelsiusRangeIsWritten) {
    const ResultFile file = answer(propertyRequest(2, "1 223.15 263.15 10"));
    ASSERT_EQ(file.count(), 5 + 5 + 4);
    EXPECT_EQ(file.raw(5), "5");
    EXPECT_EQ(file.numbers(10)[0], 263.15);
    const ResultFile other = answer(propertyRequest(3, "2 1 100 253.15 263.15 2"));
    EXPECT_EQ(other.raw(6), "6");
    EXPECT_EQ(other.numbers(12)[0], 263.15);
}

TEST(TableRows, BoundsOfTheStepBelongToTheRange) {
    Steps steps;
    EXPECT_EQ(refusalOf(0.0, 1999.0, 1.0, steps), 0);
    EXPECT_EQ(steps.count, 2000);
    EXPECT_EQ(refusalOf(0.0, 1999.0, 0.9999, steps), 13);
    EXPECT_EQ(refusalOf(0.0, 100.0, 50.0, steps), 0);
    EXPECT_EQ(steps.count, 3);
    EXPECT_EQ(refusalOf(0.0, 100.0, 50.0001, steps), 14);
    EXPECT_EQ(refusalOf(10.0, 10.0, 1.0, steps), 11);
    EXPECT_EQ(refusalOf(0.0, 100.0, 0.0, steps), 12);
}

// The largest table keeps the step that it was asked for.
TEST(TableRows, AStepThatFillsTheWholeTableStaysAsGiven) {
    Steps steps;
    ASSERT_EQ(refusalOf(250.0, 250.0 + (mostRows - 1) * 0.125, 0.125, steps), 0);
    EXPECT_EQ(steps.count, mostRows);
    EXPECT_EQ(steps.step, 0.125);
    for (const auto& [value, digits] : {std::pair{9, 1}, {10, 2}, {99, 2}, {100, 3}, {109, 3}, {1000, 4}, {2000, 4}})
        EXPECT_EQ(digitsOf(value), digits) << value;
}

TEST(TableRows, WhatIsNoNumberIsRefused) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    Steps steps;
    EXPECT_EQ(refusalOf(nan, 300.0, 10.0, steps), 11);
    EXPECT_EQ(refusalOf(250.0, nan, 10.0, steps), 11);
    EXPECT_EQ(refusalOf(250.0, 300.0, nan, steps), 12);
    EXPECT_EQ(refusalOf(250.0, std::numeric_limits<double>::infinity(), 10.0, steps), 13);
}

TEST(TableRows, AnEarlierCheckSpeaksFirst) {
    Steps steps;
    EXPECT_EQ(refusalOf(300.0, 250.0, -1.0, steps), 11);
    EXPECT_EQ(refusalOf(250.0, 300.0, -1.0, steps), 12);
    // limits of the fluid before the order of the range, that of the start before that of the end
    EXPECT_EQ(answer(propertyRequest(2, "1 150 140 10")).trimmed(2), "102201");
    EXPECT_EQ(answer(propertyRequest(2, "1 150 400 10")).trimmed(2), "102201");
    EXPECT_EQ(answer(propertyRequest(2, "2 0.1 9000 10")).trimmed(2), "102203");
    EXPECT_EQ(answer(propertyRequest(3, "1 2 150 0.1 400 10")).trimmed(2), "103201");
    EXPECT_EQ(answer(propertyRequest(3, "2 1 0.1 150 400 10")).trimmed(2), "103203");
    EXPECT_EQ(answer(propertyRequest(3, "3 1 -1 150 400 10")).trimmed(2), "103205");
    EXPECT_EQ(answer(propertyRequest(3, "2 1 1000 150 500 10")).trimmed(2), "103211");
    EXPECT_EQ(answer(propertyRequest(3, "1 3 300 -1 5000 10")).trimmed(2), "103215");
    EXPECT_EQ(answer(propertyRequest(4, "1 150 2 0.1")).trimmed(2), "104201");
    EXPECT_EQ(answer(propertyRequest(4, "2 0.1 3 -1")).trimmed(2), "104203");
}

// ---- suggested limits
// -------------------------------------------------------------------------------------------------

double cut(double value, double multiple) {
    return std::trunc(std::floor(value) / multiple) * multiple;
}

// From the formulas of the limits, with the states of single requests. The factors of the lowest and highest
// temperature are single-precision numbers.
TEST(IsopropertyLimits, FollowTheirFormulas) {
    for (const char* fluid : {"R134A.FLD", "PROPANE.FLD", "CO2.FLD", "R245FA.FLD", "AMMONIA.FLD", "NITROGEN.FLD",
                              "MD2M.FLD", "R1234ZE.FLD"}) {
        SCOPED_TRACE(fluid);
        const auto facts = answer(propertyRequest(1, "", fluid)).numbers(8);
        const double TMIN = facts[6], TMAX = facts[7], PC = facts[4];
        const double PMIN = answer(propertyRequest(5, "1 " + number(TMIN + 1.0), fluid)).numbers(7)[2];
        const double TMID = (TMIN + TMAX) / 2, PMID = (PC + 100) / 2,
                     PLOW = std::max(PMIN, 100.0) + 1e-6;  // printed with six decimals
        const double TLOW = 1.100000023841858 * TMIN, THIGH = 0.8999999761581421 * TMAX;
        const auto state = [&](int a, double x, int b, double y, std::size_t column) {
            return answer(
                       propertyRequest(
                           4, std::to_string(a) + " " + number(x) + " " + std::to_string(b) + " " + number(y), fluid))
                .numbers(6)
                .at(column);
        };
        const auto D = [&](double P, double T) { return state(2, P, 1, T, 2); };
        struct Row {
            const char* codes;
            double value, from, to, least;
        };
        const double T1 = cut(TMID, 10), P1 = cut(PMID, 100), D1 = cut(std::max(D(PMID, TMID), 10.0), 10);
        const Row rows[] = {
            {"1 2", T1, PLOW, cut(PC, 100), 100},
            {"2 1", P1, cut(std::max(TLOW + 10, 10.0), 10), cut(THIGH, 10), 10},
            {"1 3", T1, cut(std::max(D(PLOW, T1) + 10, 10.0), 10), cut(D(PC, T1), 10), 10},
            {"3 1", D1, cut(std::max(state(2, PLOW, 3, D1, 0) + 10, 10.0), 10), cut(state(2, PC, 3, D1, 0), 10), 10},
            {"2 3", P1, cut(std::max(D(P1, THIGH) + 10, 10.0), 10), cut(D(P1, TLOW), 10), 10},
            {"3 2", D1, cut(std::max(state(1, TLOW, 3, D1, 1) + 100, 100.0), 100), cut(state(1, THIGH, 3, D1, 1), 100),
             100},
        };
        for (const Row& row : rows) {
            const auto line = answer(propertyRequest(3, std::string(row.codes) + " 0 0 0 0", fluid)).numbers(5);
            ASSERT_EQ(line.size(), 6u) << row.codes;
            EXPECT_NEAR(line[2], row.value, 1e-5) << row.codes;
            EXPECT_NEAR(line[3], row.from, 1e-5) << row.codes;
            EXPECT_NEAR(line[4], row.to, 1e-5) << row.codes;
            const double step = std::max(cut((row.to - row.from) / 9, row.least), row.least);
            EXPECT_NEAR(line[5], step, 1e-5) << row.codes;
        }
    }
}

// From ten kelvin above the lowest temperature, or from the lowest pressure, to the critical point, in nine steps.
TEST(SaturationTableLimits, FollowTheirFormulas) {
    for (const char* fluid :
         {"R134A.FLD", "PROPANE.FLD", "CO2.FLD", "R245FA.FLD", "AMMONIA.FLD", "NITROGEN.FLD", "MD2M.FLD"}) {
        SCOPED_TRACE(fluid);
        const auto facts = answer(propertyRequest(1, "", fluid)).numbers(8);
        const double TC = facts[3], PC = facts[4], TMIN = facts[6];
        const double PMIN = answer(propertyRequest(5, "1 " + number(TMIN + 1.0), fluid)).numbers(7).at(2);
        const struct {
            const char* property;
            double from, to, multiple;
        } rows[] = {{"1", cut(TMIN + 10, 10), cut(TC, 10), 10}, {"2", std::max(PMIN, 100.0), cut(PC, 100), 100}};
        for (const auto& row : rows) {
            const auto line = answer(propertyRequest(2, std::string(row.property) + " 0 0 0", fluid)).numbers(4);
            ASSERT_EQ(line.size(), 4u);
            EXPECT_NEAR(line[1], row.from, 1e-5) << row.property;
            EXPECT_NEAR(line[2], row.to, 1e-5) << row.property;
            const double step = std::max(cut((row.to - row.from) / 9, row.multiple), row.multiple);
            EXPECT_NEAR(line[3], step, 1e-5) << row.property;
        }
    }
}

// ---- codes of properties
// ----------------------------------------------------------------------------------------------

void expectAllMissing(const std::vector<double>& row, std::size_t count) {
    ASSERT_EQ(row.size(), count);
    for (const double value : row) EXPECT_EQ(value, -777.0);
}

TEST(PropertyCodes, OnePropertyTwiceOrAnUnknownOneIsAFailedPoint) {
    for (const char* line : {"2 1000 2 300", "1 300 1 300", "3 10 3 20", "1 300 5 1000", "0 300 2 1000", "7 1 -1 2",
                             "4 5 1 300", "0 1 3 300"}) {
        SCOPED_TRACE(line);
        const ResultFile file = answer(propertyRequest(4, line));
        ASSERT_EQ(file.count(), 8);
        expectAllMissing(file.numbers(6), 15);
    }
}

TEST(PropertyCodes, AnUnknownSaturationPointIsAFailedOne) {
    for (const int sub : {5, 6})
        for (const char* line : {"0 300", "5 300", "-1 300"}) {
            SCOPED_TRACE(line);
            const ResultFile file = answer(propertyRequest(sub, line));
            ASSERT_EQ(file.count(), 8);
            expectAllMissing(file.numbers(7), 27);
        }
}

TEST(PropertyCodes, ASaturationTableOverAnUnknownPropertyHoldsFailedPoints) {
    answer(propertyRequest(2, "1 250 300 10"));  // leaves its rows behind
    const ResultFile file = answer(propertyRequest(2, "3 250 300 10"));
    ASSERT_EQ(file.count(), 5 + 6 + 4);
    for (int line = 6; line <= 11; ++line) expectAllMissing(file.numbers(line), 27);
}

// Phases in equilibrium of a blend: the side that is given has the composition of the blend, the other its own.
TEST(SaturationPoints, TheSideOfABlendIsThatOfItsCode) {
    const char* blend = "R407C.MIX";
    const auto at = [&](int sub, const std::string& line) {
        return answer(propertyRequest(sub, line, blend, 2)).numbers(7);
    };
    const auto bubbleT = at(5, "1 280"), dewT = at(5, "2 280"), both = at(6, "1 280");
    EXPECT_NEAR(bubbleT[2], both[2], 1e-5);  // pressure of the liquid
    EXPECT_NEAR(dewT[3], both[3], 1e-5);     // of the vapor
    EXPECT_GT(bubbleT[2] - dewT[2], 50.0);
    const auto bubbleP = at(5, "3 700"), dewP = at(5, "4 700"), bothP = at(6, "4 700");
    EXPECT_NEAR(bubbleP[0], bothP[0], 1e-5);
    EXPECT_NEAR(dewP[1], bothP[1], 1e-5);
    EXPECT_GT(dewP[0] - bubbleP[0], 4.0);
}

TEST(SaturationPoints, LimitsBelongToTheRangeAndToTheirOwnProperty) {
    // 4100 K would be above the critical temperature, 4000 kPa is below the critical pressure
    EXPECT_FALSE(answer(propertyRequest(6, "3 4000")).refused());
    EXPECT_FALSE(answer(propertyRequest(6, "4 150")).refused());
    EXPECT_FALSE(answer(propertyRequest(6, "1 169.85")).refused());
    EXPECT_FALSE(answer(propertyRequest(4, "1 169.85 2 1000")).refused());
    EXPECT_FALSE(answer(propertyRequest(4, "3 0 1 300")).refused());
    EXPECT_FALSE(answer(propertyRequest(2, "1 169.85 374.21 20")).refused());
    EXPECT_FALSE(answer(propertyRequest(2, "2 100 4059.28 100")).refused());
    EXPECT_FALSE(answer(propertyRequest(3, "1 2 169.85 100 400 100")).refused());
    EXPECT_FALSE(answer(propertyRequest(3, "1 2 455 100 400 100")).refused());
    EXPECT_FALSE(answer(propertyRequest(3, "2 1 500 169.85 455 20")).refused());
    EXPECT_FALSE(answer(propertyRequest(3, "3 1 0 300 400 20")).refused());
    EXPECT_FALSE(answer(propertyRequest(3, "1 3 300 0 100 20")).refused());
    // to the last digit
    const SUBSTANCE& s = fluid("R134A.FLD");
    const std::string PMIN = number(s.PMIN), PC = number(s.PC), DMAX = number(s.DMAX), TC = number(s.TC);
    EXPECT_NE(answer(propertyRequest(2, "2 " + PMIN + " 1000 100")).trimmed(2), "102203");
    EXPECT_NE(answer(propertyRequest(3, "2 1 " + PMIN + " 300 400 20")).trimmed(2), "103203");
    EXPECT_NE(answer(propertyRequest(3, "1 2 300 " + PMIN + " 400 20")).trimmed(2), "103213");
    EXPECT_NE(answer(propertyRequest(3, "3 1 " + DMAX + " 300 400 20")).trimmed(2), "103206");
    EXPECT_NE(answer(propertyRequest(3, "1 3 300 100 " + DMAX + " 100")).trimmed(2), "103216");
    EXPECT_NE(answer(propertyRequest(4, "2 " + PMIN + " 1 300")).trimmed(2), "104203");
    EXPECT_NE(answer(propertyRequest(4, "1 300 2 " + PMIN)).trimmed(2), "104213");
    EXPECT_NE(answer(propertyRequest(4, "1 300 3 0")).trimmed(2), "104215");
    EXPECT_NE(answer(propertyRequest(4, "2 300 1 169.85")).trimmed(2), "104211");
    EXPECT_NE(answer(propertyRequest(5, "3 " + PMIN)).trimmed(2), "105211");
    EXPECT_NE(answer(propertyRequest(5, "4 " + PC)).trimmed(2), "105212");
    EXPECT_NE(answer(propertyRequest(6, "2 " + TC)).trimmed(2), "105202");
}

}  // namespace
}  // namespace frigana::test
