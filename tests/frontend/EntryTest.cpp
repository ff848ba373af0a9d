// The entry point: paths, dispatch, and the ways in which a run ends.
#include <gtest/gtest.h>

#include <csignal>
#include <sstream>

#include "11_MainFrigana.h"
#include "14_ErrorControl.h"
#include "Operations.h"
#include "Requests.h"
#include "TextFile.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

using namespace test;

const char* const firstText = "The parameter 01 (Evaporating Parameter) \twas not defined correctly";

// A request that its check refuses at once.
Request refusedRequest() {
    auto parameters = basicParameters();
    parameters[0].option = 3;
    return cycleRequest(1, parameters);
}

TEST(Entry, ARefusedRequestLeavesTheFailureForm) {
    Plant run;
    run(refusedRequest());
    EXPECT_EQ(run.resultText(), failure(201101, firstText));
    EXPECT_EQ(runReport.end, RunEnd::refused);
}

TEST(Entry, TheResultLiesBesideTheRequestWithTheSameBaseName) {
    Plant run;
    writeFile(run.folder.path("my plant.v2.FI1"), refusedRequest().text());
    run.call(run.folder.path("my plant.v2.FI1"));
    EXPECT_EQ(readFile(run.folder.path("my plant.v2.fo1")), failure(201101, firstText));
}

TEST(Entry, TheExtensionIsRecognisedInAnyCaseAndTextBehindItIsIgnored) {
    for (const char* extension : {".fi1", ".Fi1", ".fI1", ".FI1"}) {
        Plant run;
        writeFile(run.folder.path(std::string("plant") + extension), refusedRequest().text());
        run.call(run.folder.path(std::string("plant") + extension) + "   and some text");
        EXPECT_EQ(run.resultText(), failure(201101, firstText)) << extension;
    }
}

TEST(Entry, PathsWithBackslashesSlashesOrAMixWork) {
    Plant run;
    std::filesystem::create_directory(run.folder.path("a"));
    writeFile(run.folder.path("a/plant.fi1"), refusedRequest().text());
    std::string mixed = run.folder.path() + "\\a/plant.fi1";
    run.call(mixed);
    EXPECT_EQ(readFile(run.folder.path("a/plant.fo1")), failure(201101, firstText));
    std::filesystem::remove(run.folder.path("a/plant.fo1"));
    for (char& character : mixed)
        if (character == '/') character = '\\';
    run.call(mixed);
    EXPECT_EQ(readFile(run.folder.path("a/plant.fo1")), failure(201101, firstText));
    EXPECT_EQ(TEMPORALFILEOUT, mixed.substr(0, mixed.size() - 9));
    EXPECT_EQ(scratchPath("temporalA.txt"), mixed.substr(0, mixed.size() - 9) + "temporalA.txt");
}

TEST(Entry, APathOfAnotherSystemKeepsItsFolderAndBaseName) {
    Plant run;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(run.folder.path());
    std::filesystem::create_directories("C:/plants");
    writeFile("C:/plants/chiller.fi1", refusedRequest().text());
    run.call("C:\\plants\\chiller.fi1");
    EXPECT_EQ(readFile("C:/plants/chiller.fo1"), failure(201101, firstText));
    EXPECT_EQ(runReport.resultPath, "C:\\plants\\chiller.fo1");
    EXPECT_EQ(scratchPath("temporal1.txt"), "C:\\plants\\temporal1.txt");
    std::filesystem::current_path(before);
}

TEST(Entry, ARequestInTheCurrentFolderNeedsNoFolder) {
    Plant run;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(run.folder.path());
    writeFile("plant.fi1", refusedRequest().text());
    run.call("plant.fi1");
    EXPECT_EQ(readFile("plant.fo1"), failure(201101, firstText));
    EXPECT_EQ(temporalLength, 0);
    EXPECT_EQ(scratchPath("temporalA.txt"), "temporalA.txt");
    std::filesystem::current_path(before);
}

TEST(Entry, AnOlderResultIsReplacedWhole) {
    Plant run;
    writeFile(run.result, std::string(5000, 'x'));
    run(refusedRequest());
    EXPECT_EQ(run.resultText(), failure(201101, firstText));
}

TEST(Entry, SubTypeEightLeavesNoResultAndRaisesNothing) {
    Plant run;
    testing::internal::CaptureStderr();
    run(cycleRequest(8, basicParameters()));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_FALSE(run.hasResult());
    EXPECT_EQ(runReport.end, RunEnd::returned);
}

TEST(Entry, WhatNoTableNamesFallsThrough) {
    for (const char* bytes : {"3\n", "0\n1\n", "-1\n", "2\nt\nR134A.FLD\n2 DEF\n0\n", "2\nt\nR134A.FLD\n2 DEF\n15\n",
                              "2\nt\nR134A.FLD\n2 DEF\n-3\n"}) {
        Plant run;
        testing::internal::CaptureStderr();
        run(std::string(bytes));
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        EXPECT_FALSE(run.hasResult()) << bytes;
        EXPECT_EQ(runReport.end, RunEnd::returned);
    }
}

TEST(Entry, ACountOfZeroIsRefusedForTheParametersThatAreLeft) {
    Plant run;
    // The options of this request stay behind it: they are all out of range.
    auto parameters = basicParameters();
    for (Parameter& parameter : parameters) parameter.option = 9;
    run(cycleRequest(1, parameters));
    std::filesystem::remove(run.result);
    run(cycleRequest(1, {}));
    EXPECT_EQ(run.resultText(), failure(201101, firstText));
}

TEST(Entry, ARequestThatCannotBeReadLeavesNoResultAndOneLine) {
    struct Row {
        const char *bytes, *expected;
    };
    const Row rows[] = {
        {"", "line 1: expected the request type (an integer), found the end of the file"},
        {"\n\n  \n", "line 4: expected the request type (an integer), found the end of the file"},
        {"hello\n", "line 1: expected the request type (an integer), found \"hello\""},
        {"2\nt\nf\n2 DEF\n", "line 5: expected the sub-type of the cycle (an integer), found the end of the file"},
        {"2\nt\nf\n2 DEF\n1\n51\n", "line 6: expected a number of parameters up to 50, found \"51\""},
        {"1\n1\nx\n", "line 3: expected the number of names (an integer), found \"x\""},
        {"1\n1\n1\n", "line 4: expected the basis of the composition, found the end of the file"},
    };
    for (const Row& row : rows) {
        Plant run;
        testing::internal::CaptureStderr();
        run(std::string(row.bytes));
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(said, "frigana: " + run.request + ", " + row.expected + "\n");
        EXPECT_FALSE(run.hasResult());
        EXPECT_EQ(runReport.end, RunEnd::runtimeError);
        EXPECT_EQ(firstFreeUnit(1), 1);
    }
}

TEST(Entry, AMissingOrUnreadableRequestIsARuntimeError) {
    Plant run;
    testing::internal::CaptureStderr();
    run.call(run.request);
    std::filesystem::create_directory(run.request);
    run.call(run.request);
    run.call(run.folder.path("plant.txt"));
    run.call("");
    Frigana(nullptr, nullptr, 0, 0);
    Frigana(nullptr, nullptr, -5, 70000);
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 6) << said;
    EXPECT_EQ(runReport.end, RunEnd::runtimeError);
    EXPECT_FALSE(run.hasResult());
}

TEST(Entry, APathBeyond255CharactersIsCut) {
    Plant run;
    std::string deep = run.folder.path();
    while (deep.size() < 240) deep += "/" + std::string(30, 'd');
    testing::internal::CaptureStderr();
    run.call(deep + "/a request with a long name.fi1");
    EXPECT_NE(testing::internal::GetCapturedStderr().find("has the extension .fi1"), std::string::npos);
}

TEST(Entry, TheNextCallStartsInTheOrdinaryWay) {
    Plant run;
    testing::internal::CaptureStderr();
    run(std::string("nonsense"));
    testing::internal::GetCapturedStderr();
    EXPECT_FALSE(run.hasResult());
    run(refusedRequest());
    EXPECT_EQ(run.resultText(), failure(201101, firstText));
    EXPECT_EQ(runReport.end, RunEnd::refused);
}

TEST(Entry, TheHostsHandlerOfTheSignalStays) {
    const auto own = +[](int) {};
    std::signal(SIGFPE, own);
    Plant run;
    run(refusedRequest());
    EXPECT_EQ(std::signal(SIGFPE, SIG_DFL), own);
}

// The lines of a file, for results in fixed format.
std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream all(text);
    for (std::string line; std::getline(all, line);) lines.push_back(line);
    return lines;
}

TEST(Entry, AStepOfExactlyZeroAsksOnlyForTheLimitsOfATable) {
    Plant run;
    run(propertyRequest(2, "1 250 300 0"));
    auto lines = linesOf(run.resultText());
    ASSERT_EQ(lines.size(), 9u) << run.resultText();
    EXPECT_EQ(lines[2], " 2");
    EXPECT_EQ(lines[4], "0");
    // R134a: from 10 K above the lowest temperature, 169.85 K, to the critical one, in whole tens.
    EXPECT_EQ(lines[3], "1       170.000000       370.000000        20.000000 ");

    run(propertyRequest(2, "1 250 300 10"));
    lines = linesOf(run.resultText());
    ASSERT_EQ(lines.size(), 15u) << run.resultText();
    EXPECT_EQ(lines[4], "6");
    EXPECT_EQ(lines[3], "1       250.000000       300.000000        10.000000 ");

    run(propertyRequest(3, "2 1 500 250 350 0"));
    lines = linesOf(run.resultText());
    ASSERT_GE(lines.size(), 6u);
    EXPECT_EQ(lines[3], " 3");
    EXPECT_EQ(lines[5], "0");
}

TEST(Entry, ANewMixtureGoesToTheInstallationAndLeavesNoResult) {
    Plant run;
    std::filesystem::create_directories(run.folder.path("installed/mixtures"));
    std::filesystem::create_directory_symlink(std::string(test::dataFolder) + "/fluids",
                                              run.folder.path("installed/fluids"));
    run.installation = run.folder.path("installed") + "\\frigana.exe";
    Request request;
    request.line("1").line("3").line("2").line("1").line("R32.FLD").line("0.5").line("R125.FLD").line("0.5");
    request.line("'my blend'").line("2 DEF").line("7");
    run(request);
    EXPECT_EQ(runReport.end, RunEnd::returned) << runReport.HERR.trimmed();
    EXPECT_FALSE(run.hasResult());
    EXPECT_FALSE(readFile(run.folder.path("installed/mixtures/my blend.mix")).empty());

    // The next request finds it.
    run(propertyRequest(1, "", "'my blend.mix'", 2));
    EXPECT_EQ(run.resultText().substr(0, 2), "1\n") << run.resultText();
}

TEST(Entry, AFluidWithoutAFileIsRefusedWithTheTextOfTheEngine) {
    Plant run;
    run(cycleRequest(1, basicParameters(), "NOTHING.FLD"));
    EXPECT_EQ(runReport.end, RunEnd::refused);
    EXPECT_GT(runReport.IERR, 0);
    EXPECT_LT(runReport.IERR, 100000);
    EXPECT_EQ(run.resultText().substr(0, 3), " 0\n");
    EXPECT_NE(run.resultText().find("[SETUP"), std::string::npos) << run.resultText();
}

TEST(Entry, TheSameRequestGivesTheSameBytesWhateverRanBefore) {
    Plant run;
    run(cycleRequest(1, basicParameters()));
    const std::string first = run.resultText();
    EXPECT_EQ(first.substr(0, 6), " 2\n 1\n");
    run(cycleRequest(1, basicParameters(), "R32.FLD"));
    EXPECT_NE(run.resultText(), first);
    run(propertyRequest(4, "1 300 2 101.325", "R22.FLD"));
    run(refusedRequest());
    run(cycleRequest(1, basicParameters()));
    EXPECT_EQ(run.resultText(), first);
}

TEST(Entry, EveryOperationHasANameAndACheck) {
    for (const CycleOperation& operation : cycleOperations) {
        EXPECT_FALSE(operationName(2, operation.sub).empty());
        const bool two = operation.reader != CycleReader::oneFluid;
        EXPECT_EQ(operation.check == nullptr, two) << operation.name;
        EXPECT_EQ(operation.checkTwo != nullptr, two) << operation.name;
    }
    EXPECT_EQ(cycleOperations.size(), 13u);
    EXPECT_EQ(propertyOperations.size(), 7u);
    EXPECT_EQ(operationName(2, 8), "");
    EXPECT_EQ(operationName(3, 1), "");
}

}  // namespace
}  // namespace frigana
