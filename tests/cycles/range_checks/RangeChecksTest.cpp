// The checks themselves: what passes, what is refused first, and the two predicates.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "40_RangeChecks.h"
#include "CycleRequests.h"

namespace {

using frigana::firstRefusal;
using frigana::Refusal;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

Refusal check(const CycleRequest& request) {
    return firstRefusal(request.reqsub, request.first, request.second);
}

Refusal checkWith(int reqsub, std::initializer_list<Change> changes) {
    CycleRequest request = passingRequest(reqsub);
    for (const Change& change : changes) request.set(change);
    return check(request);
}

std::string nameOf(const ParameterCase& row) {
    return "cycle " + std::to_string(row.reqsub) + ", record " + std::to_string(row.record) + ", parameter " +
           std::to_string(row.k);
}

// A value that the chosen option takes.
double goodValue(const ParameterCase& row, int option) {
    for (const LimitCase& limit : row.limits) {
        if (limit.option == option) return limit.lower + 0.5 * (limit.upper - limit.lower);
    }
    return 0;
}

CycleRequest requestFor(const ParameterCase& row, int option, double value) {
    CycleRequest request = passingRequest(row.reqsub);
    for (const Change& change : row.setting) request.set(change);
    request.set({row.record, row.k, option, value});
    return request;
}

// A multi-stage request of 8 or more stages runs into the end of the record once nothing else refuses it.
void expectAccepted(const CycleRequest& request, const std::string& what) {
    const Refusal refusal = check(request);
    if (request.reqsub == 11 && request.first.TDAT[16] >= 8) {
        EXPECT_EQ(refusal.kind, Refusal::beyondRecord) << what;
        EXPECT_EQ(refusal.parameter, 51) << what;
    } else {
        EXPECT_EQ(refusal.kind, Refusal::none) << what << ": " << refusal.text.trimmed();
    }
}

void expectRefused(const CycleRequest& request, const ParameterCase& row, Refusal::Kind kind) {
    const Refusal refusal = check(request);
    EXPECT_EQ(refusal.kind, kind) << nameOf(row);
    EXPECT_EQ(refusal.code, kind == Refusal::option ? row.optionCode : row.valueCode) << nameOf(row);
    EXPECT_EQ(refusal.text.trimmed(), kind == Refusal::option ? row.optionText : row.valueText);
    EXPECT_EQ(refusal.record, row.record) << nameOf(row);
    EXPECT_EQ(refusal.parameter, row.k) << nameOf(row);
    EXPECT_FALSE(refusal.name.empty()) << nameOf(row);
}

}  // namespace

TEST(RangePredicates, BothBoundsOfAnOptionBelongToTheRange) {
    EXPECT_TRUE(frigana::ISOUTI(0, 1, 3));
    EXPECT_FALSE(frigana::ISOUTI(1, 1, 3));
    EXPECT_FALSE(frigana::ISOUTI(3, 1, 3));
    EXPECT_TRUE(frigana::ISOUTI(4, 1, 3));
    EXPECT_TRUE(frigana::ISOUTI(std::numeric_limits<int>::min(), 1, 3));
    EXPECT_TRUE(frigana::ISOUTI(std::numeric_limits<int>::max(), 1, 3));
}

TEST(RangePredicates, BothBoundsOfAValueBelongToTheRange) {
    EXPECT_FALSE(frigana::ISOUTR(0.25, 0.25f, 1));
    EXPECT_FALSE(frigana::ISOUTR(1, 0.25f, 1));
    EXPECT_TRUE(frigana::ISOUTR(std::nextafter(0.25, 0), 0.25f, 1));
    EXPECT_TRUE(frigana::ISOUTR(std::nextafter(1.0, 2), 0.25f, 1));
    EXPECT_TRUE(frigana::ISOUTR(infinity, 0.25f, 1));
    EXPECT_TRUE(frigana::ISOUTR(-infinity, 0.25f, 1));
}

TEST(RangePredicates, LimitsAreSinglePrecisionWidened) {
    EXPECT_FALSE(frigana::ISOUTR(0.10000000149011612, 0.1f, 8000));
    EXPECT_TRUE(frigana::ISOUTR(0.1, 0.1f, 8000));
}

TEST(RangePredicates, AValueThatIsNotANumberIsInside) {
    EXPECT_FALSE(frigana::ISOUTR(notANumber, 100, 600));
}

TEST(RangeChecks, EveryCycleHasARequestThatPasses) {
    for (const int reqsub : cyclesWithCheck) expectAccepted(passingRequest(reqsub), std::to_string(reqsub));
}

TEST(RangeChecks, OptionsOnBothSidesOfTheirBounds) {
    for (const ParameterCase& row : parameterCases) {
        for (const int option : {row.firstOption - 1, row.lastOption + 1, 0, -1}) {
            expectRefused(requestFor(row, option, goodValue(row, row.firstOption)), row, Refusal::option);
        }
        for (const int option : {row.firstOption, row.lastOption}) {
            expectAccepted(requestFor(row, option, goodValue(row, option)), nameOf(row));
        }
    }
}

TEST(RangeChecks, ValuesOnBothSidesOfTheirLimits) {
    int sides = 0;
    for (const ParameterCase& row : parameterCases) {
        for (const LimitCase& limit : row.limits) {
            if (limit.option == 0) continue;
            const double belowLower = std::nextafter(limit.lower, -infinity);
            const double aboveLower = std::nextafter(limit.lower, infinity);
            const double belowUpper = std::nextafter(limit.upper, -infinity);
            const double aboveUpper = std::nextafter(limit.upper, infinity);
            for (const double value :
                 {limit.strict ? aboveLower : limit.lower, limit.strict ? belowUpper : limit.upper}) {
                expectAccepted(requestFor(row, limit.option, value), nameOf(row));
            }
            for (const double value :
                 {limit.strict ? limit.lower : belowLower, limit.strict ? limit.upper : aboveUpper}) {
                expectRefused(requestFor(row, limit.option, value), row, Refusal::value);
            }
            sides += 2;
        }
    }
    RecordProperty("limits", sides);
    EXPECT_GT(sides, 600);
}

TEST(RangeChecks, AnOptionWithoutLimitsTakesAnyValue) {
    for (const ParameterCase& row : parameterCases) {
        for (int option = row.firstOption; option <= row.lastOption; ++option) {
            bool limited = row.reqsub == 4 && row.record == 2 && row.k == 6;  // its option 2 is refused
            for (const LimitCase& limit : row.limits) limited = limited || limit.option == option;
            if (limited) continue;
            for (const double value : {-1e30, 1e30}) expectAccepted(requestFor(row, option, value), nameOf(row));
        }
    }
}

TEST(RangeChecks, AValueThatIsNotANumberPassesEverywhere) {
    for (const ParameterCase& row : parameterCases) {
        for (const LimitCase& limit : row.limits) {
            if (limit.option > 0) expectAccepted(requestFor(row, limit.option, notANumber), nameOf(row));
        }
    }
}

TEST(RangeChecks, ParametersThatNoRowNamesAreNotLookedAt) {
    for (const int reqsub : cyclesWithCheck) {
        for (int record = 1; record <= (hasTwoFluids(reqsub) ? 2 : 1); ++record) {
            std::set<int> named;
            for (const ParameterCase& row : parameterCases) {
                if (row.reqsub == reqsub && row.record == record) named.insert(row.k);
            }
            for (int k = 1; k <= 50; ++k) {
                if (named.contains(k)) continue;
                CycleRequest request = passingRequest(reqsub);
                request.set({record, k, -777, -1e30});
                expectAccepted(request, std::to_string(reqsub) + ", parameter " + std::to_string(k));
            }
        }
    }
}

TEST(RangeChecks, TheFirstBadParameterInTheOrderOfCheckingIsReported) {
    // With every parameter from a row on spoilt, the row itself is what the user meets.
    const ParameterCase* end = std::end(parameterCases);
    for (const ParameterCase* row = std::begin(parameterCases); row != end; ++row) {
        if (row->reqsub == 11 && row->k > 16) continue;  // the stages are walked in a test of their own
        CycleRequest request = passingRequest(row->reqsub);
        for (const ParameterCase* later = row; later != end && later->reqsub == row->reqsub; ++later) {
            request.set({later->record, later->k, -1, 1e30});
        }
        for (const Change& change : row->setting) request.set(change);
        expectRefused(request, *row, Refusal::option);
    }
}

TEST(RangeChecks, OfTwoBadParametersTheEarlierInTheOrderOfCheckingIsReported) {
    // A spoilt option and, where there are limits, a spoilt value of either.
    const auto spoilt = [](const ParameterCase& row) {
        std::vector<std::pair<Change, Refusal::Kind>> all{
            {{row.record, row.k, row.lastOption + 1, 0.0}, Refusal::option}};
        for (const LimitCase& limit : row.limits)
            if (limit.option > 0) all.push_back({{row.record, row.k, limit.option, limit.upper + 1.0}, Refusal::value});
        return all;
    };
    int pairs = 0;
    const ParameterCase* end = std::end(parameterCases);
    for (const ParameterCase* row = std::begin(parameterCases); row != end; ++row)
        for (const ParameterCase* later = row + 1; later != end && later->reqsub == row->reqsub; ++later) {
            // Another number of stages or another run would move the earlier check itself.
            const auto sets = [&](int k) { return row->setting[0].k == k || row->setting[1].k == k; };
            if ((row->reqsub == 11 && row->k >= 16) || sets(later->k)) continue;
            for (const auto& [earlier, kind] : spoilt(*row))
                for (const auto& [other, otherKind] : spoilt(*later)) {
                    CycleRequest request = passingRequest(row->reqsub);
                    for (const Change& change : later->setting) request.set(change);
                    for (const Change& change : row->setting) request.set(change);
                    request.set(other);
                    request.set(earlier);
                    expectRefused(request, *row, kind);
                    ++pairs;
                }
        }
    std::printf("%d pairs of checks\n", pairs);
    EXPECT_GT(pairs, 10000);
}

TEST(RangeChecks, ABadOptionIsReportedBeforeItsValueIsLookedAt) {
    EXPECT_EQ(checkWith(1, {{1, 1, 3, 1e9}}).code, 201101);
}

TEST(RangeChecks, TheFirstRecordIsCheckedBeforeTheSecond) {
    EXPECT_EQ(checkWith(3, {{2, 1, 0, 0}, {1, 15, 0, 0}}).code, 203129);
    EXPECT_EQ(checkWith(4, {{2, 1, 0, 0}, {1, 15, 0, 0}}).code, 204129);
    EXPECT_EQ(checkWith(13, {{2, 1, 0, 0}, {1, 15, 0, 0}}).code, 213129);
}

TEST(RangeChecks, AValueExactlyOnALimitPasses) {
    EXPECT_EQ(checkWith(1, {{1, 7, 1, 1}}).kind, Refusal::none);
    EXPECT_EQ(checkWith(1, {{1, 7, 1, 0.25}}).kind, Refusal::none);
}

TEST(RangeChecks, OnlyTheLimitsOfTheChosenOptionMatter) {
    EXPECT_EQ(checkWith(1, {{1, 1, 2, 50}}).kind, Refusal::none);
    EXPECT_EQ(checkWith(1, {{1, 1, 1, 50}}).code, 201102);
}

TEST(RangeChecks, DecimalLimitsAreThoseOfSinglePrecision) {
    // 0.1, 0.2, 0.001 and 0.34 widen to a little more, 0.0001 to a little less.
    EXPECT_EQ(checkWith(1, {{1, 1, 2, 0.1}}).code, 201102);
    EXPECT_EQ(checkWith(1, {{1, 1, 2, 0.10000000149011612}}).kind, Refusal::none);
    EXPECT_EQ(checkWith(1, {{1, 6, 2, 0.2}}).code, 201112);
    EXPECT_EQ(checkWith(1, {{1, 6, 2, 0.20000000298023224}}).kind, Refusal::none);
    EXPECT_EQ(checkWith(1, {{1, 6, 1, 0.0001}}).kind, Refusal::none);
    EXPECT_EQ(checkWith(1, {{1, 6, 1, 9.999999747378752e-5}}).kind, Refusal::none);
    EXPECT_EQ(checkWith(1, {{1, 6, 1, 9.99999974e-5}}).code, 201112);
    EXPECT_EQ(checkWith(5, {{1, 5, 3, 0.001}}).code, 205110);
    EXPECT_EQ(checkWith(5, {{1, 5, 3, 0.0010000000474974513}}).kind, Refusal::none);
    EXPECT_EQ(checkWith(5, {{1, 5, 3, 0.34}}).kind, Refusal::none);
    EXPECT_EQ(checkWith(5, {{1, 5, 3, 0.34000000358}}).code, 205110);
    EXPECT_EQ(checkWith(5, {{1, 29, 1, 0.1}}).code, 205158);
}

TEST(RangeChecks, SuperheatAtTheEndOfTheSuctionLineIsRefused) {
    // The solver has a branch for option 3 that no request can reach.
    EXPECT_EQ(checkWith(1, {{1, 4, 3, 5}}).code, 201107);
}

TEST(MinimalCycleCheck, ARiseInTheSuctionLineCanOnlyBeZero) {
    EXPECT_EQ(checkWith(12, {{1, 3, 2, 0}}).kind, Refusal::none);
    EXPECT_EQ(checkWith(12, {{1, 3, 2, 1e-300}}).kind, Refusal::none);
    EXPECT_EQ(checkWith(12, {{1, 3, 2, 2.8025969286496341e-43}}).kind, Refusal::none);
    EXPECT_EQ(checkWith(12, {{1, 3, 2, 2.8026e-43}}).code, 212106);
    EXPECT_EQ(checkWith(12, {{1, 3, 2, 1e-6}}).code, 212106);
    EXPECT_EQ(checkWith(12, {{1, 3, 2, 5}}).code, 212106);
    EXPECT_EQ(checkWith(12, {{1, 3, 2, 200}}).code, 212106);
}

TEST(TwoStageCheck, TheFallOfTheExchangerLiesStrictlyInsideItsLimits) {
    EXPECT_EQ(checkWith(10, {{1, 19, 1, 0}}).code, 210138);
    EXPECT_EQ(checkWith(10, {{1, 19, 1, 200}}).code, 210138);
    EXPECT_EQ(checkWith(10, {{1, 19, 1, 5e-324}}).kind, Refusal::none);
    EXPECT_EQ(checkWith(10, {{1, 19, 1, std::nextafter(200.0, 0)}}).kind, Refusal::none);
    // Its neighbours take their limits.
    EXPECT_EQ(checkWith(10, {{1, 18, 1, 0}}).kind, Refusal::none);
    EXPECT_EQ(checkWith(10, {{1, 18, 1, 200}}).kind, Refusal::none);
}

TEST(CascadeCheck, TheCondenserHeatRateOfTheLowCircuitIsRefused) {
    EXPECT_EQ(checkWith(4, {{2, 6, 1, 0.0028}}).kind, Refusal::none);
    EXPECT_EQ(checkWith(4, {{2, 6, 3, 10}}).kind, Refusal::none);
    const Refusal refusal = checkWith(4, {{2, 6, 2, 10}});
    EXPECT_EQ(refusal.code, 204161);
    EXPECT_EQ(refusal.text, "Low Temp./Parameter 06 (Compressor volumetric capacity) was not defined correctly");
    // The high circuit's own parameter 6 is set by the solver, whatever the request says.
    EXPECT_EQ(checkWith(4, {{1, 6, 2, 10}}).kind, Refusal::none);
}

TEST(CascadeCheck, LiquidLineAndIntermediateSettingShareTheirCodes) {
    const Refusal line = checkWith(4, {{2, 15, 3, 0}});
    const Refusal setting = checkWith(4, {{2, 16, 3, 0}});
    EXPECT_EQ(line.code, 204179);
    EXPECT_EQ(setting.code, 204179);
    EXPECT_EQ(line.text, "Low Temp./Parameter 15 (Pressure change in liquid line) was not defined correctly");
    EXPECT_EQ(setting.text, "Low Temp./Parameter 16 (Setting intermediate temperatures) was not defined correctly");
    EXPECT_EQ(checkWith(4, {{2, 15, 1, -1}}).code, 204180);
    EXPECT_EQ(checkWith(4, {{2, 16, 1, -1}}).code, 204180);
}

TEST(BoosterCheck, VolumetricEfficiencyComesBeforeCapacityAndTheReceiverLast) {
    EXPECT_EQ(checkWith(14, {{1, 28, 0, 0}, {1, 29, 0, 0}}).code, 214153);
    EXPECT_EQ(checkWith(14, {{1, 23, 0, 0}, {1, 28, 0, 0}}).code, 214155);
    EXPECT_EQ(checkWith(14, {{1, 23, 0, 0}, {1, 24, 0, 0}}).code, 214145);
}

TEST(LineSizingCheck, DiametersAreLookedAtOnTheSecondRunOnly) {
    struct Line {
        int pressureParameter, diameterParameter, code;
    };
    for (const Line& line : {Line{5, 31, 205161}, Line{10, 32, 205163}, Line{15, 33, 205165}}) {
        for (int run = 1; run <= 2; ++run) {
            for (int option = 1; option <= 4; ++option) {
                const bool lookedAt = run == 2 && option >= 3;
                const Change pressure{1, line.pressureParameter, option, 0.1};
                for (const int diameter : {0, 7}) {
                    const Refusal refusal =
                        checkWith(5, {{1, 30, run, 0}, pressure, {1, line.diameterParameter, diameter, 0}});
                    EXPECT_EQ(refusal.code, lookedAt ? line.code : 0) << run << ' ' << option;
                }
                for (const int diameter : {1, 6}) {
                    EXPECT_EQ(checkWith(5, {{1, 30, run, 0}, pressure, {1, line.diameterParameter, diameter, 0}}).kind,
                              Refusal::none);
                }
            }
        }
    }
}

TEST(MultiStageCheck, OnlyTheStagesBelowTheLastAreLookedAt) {
    for (int stages = 2; stages <= 7; ++stages) {
        const int lastParameter = 16 + 5 * (stages - 1);
        EXPECT_EQ(checkWith(11, {{1, 16, stages, 0}, {1, lastParameter, 3, 0}}).parameter, lastParameter);
        EXPECT_EQ(checkWith(11, {{1, 16, stages, 0}, {1, lastParameter + 1, 0, 0}}).kind, Refusal::none);
    }
}

TEST(MultiStageCheck, EarlierStagesAreReportedFirst) {
    EXPECT_EQ(checkWith(11, {{1, 16, 3, 0}, {1, 22, 0, 0}, {1, 21, 0, 0}}).code, 211141);
    EXPECT_EQ(checkWith(11, {{1, 16, 3, 0}, {1, 22, 0, 0}}).code, 211143);
}

TEST(MultiStageCheck, AStageNumberOfOneDigitKeepsABlankInFrontOfIt) {
    EXPECT_EQ(checkWith(11, {{1, 17, 2, -1}}).text,
              "Out of range: Stage  1 - temperature setting in vapor injection line");
    EXPECT_EQ(checkWith(11, {{1, 17, 1, 0}}).text,
              "The parameter 17 (temperature setting in vapor injection line) was not defined correctly");
}

TEST(MultiStageCheck, SevenStagesAreTheCeiling) {
    EXPECT_EQ(checkWith(11, {{1, 16, 7, 0}}).kind, Refusal::none);
    for (int stages = 8; stages <= 18; ++stages) {
        const Refusal refusal = checkWith(11, {{1, 16, stages, 0}});
        EXPECT_EQ(refusal.kind, Refusal::beyondRecord) << stages;
        EXPECT_EQ(refusal.code, 0);
        EXPECT_EQ(refusal.parameter, 51);
    }
    EXPECT_EQ(checkWith(11, {{1, 16, 19, 0}}).code, 211131);
    EXPECT_EQ(checkWith(11, {{1, 16, 1, 0}}).code, 211131);
}

TEST(MultiStageCheck, AnEarlierRefusalComesBeforeTheEndOfTheRecord) {
    EXPECT_EQ(checkWith(11, {{1, 16, 18, 0}, {1, 46, 2, 179}}).code, 211192);
    EXPECT_EQ(checkWith(11, {{1, 16, 18, 0}, {1, 50, 1, 2}}).code, 211200);
}

TEST(RangeChecks, ACycleWithoutACheckPasses) {
    CycleRequest request = passingRequest(1);
    for (int k = 1; k <= 50; ++k) request.set({1, k, -1, -1});
    for (const int reqsub : {0, 8, 15, -1}) {
        request.reqsub = reqsub;
        EXPECT_EQ(check(request).kind, Refusal::none);
    }
}

TEST(RangeChecks, CodesCarryTheirCycleAndTellOptionFromValue) {
    for (const ParameterCase& row : parameterCases) {
        EXPECT_EQ(row.optionCode / 1000, 200 + row.reqsub);
        EXPECT_EQ(row.optionCode % 2, 1);
        EXPECT_TRUE(row.valueCode == 0 || row.valueCode == row.optionCode + 1) << row.optionCode;
    }
}
