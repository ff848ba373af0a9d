// Refused requests as a user meets them: a request file in, the failure form of the result file out.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <limits>
#include <string>

#include "CycleRequests.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"
#include "frigana.h"

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

class RefusedRequests : public testing::Test {
  protected:
    // Every byte of the result file, which holds an earlier result before; "no result file" if there is none.
    std::string resultOf(const CycleRequest& request, const std::string& earlier = {}) const {
        using namespace frigana::test;
        const std::string requestPath = folder_.path("request.fi1");
        const std::string resultPath = folder_.path("request.fo1");
        const std::string address = std::string(frigana::test::dataFolder) + "/frigana";
        std::filesystem::remove(resultPath);
        if (!earlier.empty()) writeFile(resultPath, earlier);
        writeFile(requestPath, requestText(request));
        Frigana(requestPath.data(), address.data(), static_cast<int>(requestPath.size()),
                static_cast<int>(address.size()));
        return std::filesystem::exists(resultPath) ? readFile(resultPath) : "no result file";
    }

    std::string resultWith(int reqsub, std::initializer_list<Change> changes) const {
        CycleRequest request = passingRequest(reqsub);
        for (const Change& change : changes) request.set(change);
        return resultOf(request);
    }

  private:
    frigana::test::TemporaryFolder folder_;
};

// The failure form: 0, the code, and the message in a field of 255 characters, each behind one blank.
std::string failureForm(int code, std::string message) {
    message.resize(255, ' ');
    return " 0\n " + std::to_string(code) + "\n " + message + "\n";
}

CycleRequest requestFor(const ParameterCase& row, int option, double value) {
    CycleRequest request = passingRequest(row.reqsub);
    for (const Change& change : row.setting) request.set(change);
    request.set({row.record, row.k, option, value});
    return request;
}

}  // namespace

TEST_F(RefusedRequests, OptionsJustOutsideTheAllowedOnes) {
    for (const ParameterCase& row : parameterCases) {
        const std::string expected = failureForm(row.optionCode, row.optionText);
        EXPECT_EQ(resultOf(requestFor(row, row.firstOption - 1, 1)), expected);
        EXPECT_EQ(resultOf(requestFor(row, row.lastOption + 1, 1)), expected);
    }
}

TEST_F(RefusedRequests, ValuesJustOutsideTheLimitsOfEveryOption) {
    for (const ParameterCase& row : parameterCases) {
        const std::string expected = failureForm(row.valueCode, row.valueText);
        for (const LimitCase& limit : row.limits) {
            if (limit.option == 0) continue;
            const double tooLow = limit.strict ? limit.lower : std::nextafter(limit.lower, -infinity);
            const double tooHigh = limit.strict ? limit.upper : std::nextafter(limit.upper, infinity);
            EXPECT_EQ(resultOf(requestFor(row, limit.option, tooLow)), expected);
            EXPECT_EQ(resultOf(requestFor(row, limit.option, tooHigh)), expected);
        }
    }
}

TEST_F(RefusedRequests, AValueOfAnotherOptionsUnitIsRefused) {
    EXPECT_EQ(resultWith(1, {{1, 1, 1, 50}}), failureForm(201102, "Out of range: Evaporating parameter"));
}

TEST_F(RefusedRequests, TheFirstTextOfTheBasicCycleKeepsItsTab) {
    EXPECT_EQ(resultWith(1, {{1, 1, 3, 268.15}}),
              failureForm(201101, "The parameter 01 (Evaporating Parameter) \twas not defined correctly"));
}

TEST_F(RefusedRequests, TheFirstBadParameterEndsTheRun) {
    EXPECT_EQ(resultWith(1, {{1, 15, 0, 0}, {1, 7, 1, 2}}),
              failureForm(201114, "Out of range: Compressor isentropic efficiency"));
}

TEST_F(RefusedRequests, TheIntermediateSettingStandsOnTheLastLineOfARequest) {
    EXPECT_EQ(resultWith(4, {{2, 16, 2, 5}}), failureForm(204180, "Out of range: Setting intermediate temperatures"));
    EXPECT_EQ(resultWith(13, {{2, 11, 2, 5}}), failureForm(213158, "Out of range: Setting intermediate temperatures"));
}

TEST_F(RefusedRequests, TheLowCircuitOfACascadeCannotBeGivenByItsCondenser) {
    EXPECT_EQ(resultWith(4, {{2, 6, 2, 10}}),
              failureForm(204161, "Low Temp./Parameter 06 (Compressor volumetric capacity) was not defined correctly"));
}

TEST_F(RefusedRequests, EightStagesEndAtTheBoundOfTheRecord) {
    for (const int stages : {8, 18}) {
        testing::internal::CaptureStderr();
        EXPECT_EQ(resultWith(11, {{1, 16, stages, 0}}), "no result file");
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "frigana: cycle request: the stages ask for parameter 51, a record holds 50\n");
    }
    EXPECT_EQ(resultWith(11, {{1, 16, 19, 0}}),
              failureForm(211131, "The parameter 16 (Number of stages) was not defined correctly"));
}

TEST_F(RefusedRequests, ARefusalReplacesAnEarlierResult) {
    CycleRequest spoilt = passingRequest(12);
    spoilt.set({1, 3, 2, 5});
    const std::string earlier(100000, '7');
    EXPECT_EQ(resultOf(spoilt, earlier), failureForm(212106, "Temperature Setting in suction line is out range"));
}
