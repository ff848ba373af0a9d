// The road of a failure and the helpers of every operation.
#include <gtest/gtest.h>

#include <cmath>

#include "ErrorControlFixture.h"

namespace frigana {
namespace {

using test::readFile;
using test::writeFile;

TEST_F(ErrorControl, APositiveCodeWritesTheFailureFormAndEndsTheRun) {
    writeFile(result, "an older and longer result\n1\n2\n3\n4\n5\n");
    bool reached = false;
    EXPECT_FALSE(comesBack([&] {
        ERRORCONTROL(201300, "Error: wet compression, increase the inlet superheat");
        reached = true;
    }));
    EXPECT_FALSE(reached);
    const std::string text = "Error: wet compression, increase the inlet superheat";
    EXPECT_EQ(readFile(result), " 0\n 201300\n " + text + std::string(255 - text.size(), ' ') + "\n");
    EXPECT_EQ(runReport.end, RunEnd::refused);
    EXPECT_EQ(runReport.IERR, 201300);
}

TEST_F(ErrorControl, ZeroAndNegativeCodesDoNothingAndTheRunGoesOn) {
    for (int code : {0, -1, -117, -2147483647}) {
        bool reached = false;
        EXPECT_TRUE(comesBack([&] {
            ERRORCONTROL(code, "a warning");
            reached = true;
        }));
        EXPECT_TRUE(reached);
    }
    EXPECT_EQ(readFile(result), "");
}

TEST_F(ErrorControl, AScratchFileStaysBehindAnError) {
    const std::string scratch = folder.path("temporalA.txt");
    EXPECT_FALSE(comesBack([&] {
        openForWriting(1, scratch);
        writeFree(1, 2);
        closeUnit(1);
        ERRORCONTROL(202201, "text");
    }));
    EXPECT_EQ(readFile(scratch), " 2\n");
}

TEST_F(ErrorControl, AnIncompleteResultOfARuntimeErrorIsRemoved) {
    testing::internal::CaptureStderr();
    EXPECT_FALSE(comesBack([&] {
        openForWriting(3, result);
        writeFree(3, 2);
        double value = 0.0;
        DATARECOVERY("no such file", 1, value);
    }));
    testing::internal::GetCapturedStderr();
    EXPECT_FALSE(fileExists(result));
}

TEST_F(ErrorControl, CodeAndTextArriveEvenWhereTheFormCannotBeWritten) {
    ERRORFILEOUT = Text255(std::string_view(folder.path("missing/plant.fo1")));
    testing::internal::CaptureStderr();
    EXPECT_FALSE(comesBack([] { ERRORCONTROL(201114, "Out of range"); }));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "frigana: " + folder.path("missing/plant.fo1") +
                  ": cannot be written; the request is refused: 201114 Out of range\n");
    EXPECT_EQ(runReport.end, RunEnd::refused);
    EXPECT_EQ(runReport.IERR, 201114);
    EXPECT_EQ(runReport.HERR, "Out of range");
    EXPECT_FALSE(runReport.formWritten);
}

TEST_F(ErrorControl, LinesOfAResultAreFoundByNumber) {
    writeFile(result, " 2\n 1\n a title, with a comma\n R134A.FLD 1430\n EVAPORATOR\n   243.5  rest\n");
    double value = 0.0;
    Text255 text;
    EXPECT_TRUE(comesBack([&] {
        DATARECOVERY(Text255(std::string_view(result)), 6, value);
        DATARECOVERS(Text255(std::string_view(result)), 4, text);
    }));
    EXPECT_EQ(value, 243.5);
    EXPECT_EQ(text, " R134A.FLD 1430");
}

TEST_F(ErrorControl, ALineBeyondTheEndOfAScratchFileEndsTheRun) {
    writeFile(result, " 2\n 1\n");
    for (int line : {3, 4, 100}) {
        double value = 0.0;
        testing::internal::CaptureStderr();
        EXPECT_FALSE(comesBack([&] { DATARECOVERY(Text255(std::string_view(result)), line, value); }));
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_NE(said.find("plant.fo1, line 3: expected"), std::string::npos) << said;
        EXPECT_NE(said.find("found the end of the file"), std::string::npos) << said;
    }
    Text255 text;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(comesBack([&] { DATARECOVERS(Text255(std::string_view(result)), 3, text); }));
    EXPECT_FALSE(comesBack([&] { DATARECOVERS("no such file", 1, text); }));
    testing::internal::GetCapturedStderr();
}

TEST_F(ErrorControl, TextInTheLineOfANumberEndsTheRun) {
    writeFile(result, " 2\n EVAPORATOR\n");
    double value = 0.0;
    testing::internal::CaptureStderr();
    EXPECT_FALSE(comesBack([&] { DATARECOVERY(Text255(std::string_view(result)), 2, value); }));
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_NE(said.find("line 2: expected a number, found \"EVAPORATOR\""), std::string::npos) << said;
    EXPECT_FALSE(unitIsOpen(1));
}

TEST(MyNRound, CutsTowardsZeroBehindTheFloor) {
    struct Row {
        double X;
        int N;
        double expected;
    };
    const Row rows[] = {{273.9, 1, 270.0},
                        {273.9, 2, 200.0},
                        {9.99, 1, 0.0},
                        {-15.5, 1, -10.0},
                        {-5.0, 1, 0.0},
                        {100.0, 2, 100.0},
                        {99.999, 2, 0.0},
                        {4059.28, 2, 4000.0},
                        {0.0, 1, 0.0},
                        {273.9, 0, 273.0},
                        {-0.5, 0, -1.0},
                        // what no integer of 32 bits holds becomes the least one, as the processor converts it
                        {3e9, 2, -2147483600.0},
                        {-3e9, 2, -2147483600.0},
                        {std::nan(""), 1, -2147483640.0}};
    for (const Row& row : rows) {
        double R = row.X;
        MYNROUND(R, row.N, R);
        EXPECT_EQ(R, row.expected) << row.X << " " << row.N;
    }
}

TEST(MyFindFi1, TheFirstHitFromTheLeftInAnyCase) {
    struct Row {
        const char* path;
        int expected;
    };
    const Row rows[] = {{"C:\\plants\\r1.fi1", 16}, {"plant.Fi1", 9}, {"plant.fI1 and text", 9},
                        {"plant.FI1", 9},           {"a.fi1.fi1", 5}, {"plant.fi2", -5},
                        {"plant.f1", -5},           {"", -5},         {".fi1", 4}};
    for (const Row& row : rows) {
        int POS = -5;
        MYFINDFI1(row.path, POS);
        EXPECT_EQ(POS, row.expected) << row.path;
    }
    for (int start : {251, 252}) {
        Text255 path;
        path.assign(start, 255, ".fi1");
        int POS = -5;
        MYFINDFI1(path, POS);
        EXPECT_EQ(POS, start + 3);
    }
}

TEST(Trap, CallsMayBeNestedAndTheInnermostContains) {
    bool innerBack = true, afterInner = false;
    EXPECT_FALSE(comesBack([&] {
        innerBack = comesBack([] { divideByZero(); });
        afterInner = true;
        divideByZero();
    }));
    EXPECT_FALSE(innerBack);
    EXPECT_TRUE(afterInner);
}

}  // namespace
}  // namespace frigana
