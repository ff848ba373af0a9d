// The entry point: paths, dispatch, and the ways in which a run ends.
#include <gtest/gtest.h>

#include <cmath>
#include <csetjmp>
#include <csignal>
#include <sstream>

#include "11_MainFrigana.h"
#include "14_ErrorControl.h"
#include "Operations.h"
#include "Requests.h"
#include "ResultWriter.h"
#include "TextFile.h"
#include "Trap.h"
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
    share(std::string(test::dataFolder) + "/fluids", run.folder.path("installed/fluids"));
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

TEST(Entry, AnOldResultNeverOutlivesTheStartOfARun) {
    Plant run;
    for (const std::string& bytes : {std::string("nonsense"), std::string("3\n"), cycleRequest(8, {}).text()}) {
        writeFile(run.result, "old");
        testing::internal::CaptureStderr();
        run(bytes);
        testing::internal::GetCapturedStderr();
        EXPECT_FALSE(run.hasResult()) << bytes;
    }
    // A request that is not there deletes nothing.
    std::filesystem::remove(run.request);
    writeFile(run.result, "old");
    testing::internal::CaptureStderr();
    run.call(run.request);
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(run.resultText(), "old");
}

TEST(Entry, AnOldResultThatCannotBeRemovedRefusesTheRun) {
    Plant run;
    std::filesystem::create_directories(run.result + "/in the way");
    testing::internal::CaptureStderr();
    run(cycleRequest(1, basicParameters()));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "frigana: " + run.result + ": the old result cannot be removed\n");
    EXPECT_EQ(runReport.end, RunEnd::runtimeError);
}

TEST(Entry, APathWithANullCharacterIsRefused) {
    Plant run;
    writeFile(run.folder.path("plant.fi1"), cycleRequest(1, basicParameters()).text());
    testing::internal::CaptureStderr();
    run.call(run.folder.path() + std::string("/pl\0ant.fi1", 11));
    EXPECT_NE(testing::internal::GetCapturedStderr().find("pl?ant.fi1: a path holds no null character"),
              std::string::npos);
    run.installation.insert(3, 1, '\0');
    testing::internal::CaptureStderr();
    run.call(run.request);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("a path holds no null character"), std::string::npos);
    EXPECT_FALSE(run.hasResult());
}

TEST(Entry, AScratchPathThatDoesNotFitEndsTheRun) {
    // The base name is short, so that the result fits where the scratch names do not.
    Plant run;
    std::string deep = run.folder.path();
    while (deep.size() < 200) deep += "/" + std::string(20, 'd');
    constexpr std::size_t longest = 248;
    deep += "/" + std::string(longest - deep.size() - 2, 'd');
    ASSERT_EQ(deep.size() + 1, longest);
    std::filesystem::create_directories(deep);
    Request twoCircuits = cycleRequest(4, basicParameters());
    twoCircuits.line("").line("").append(cycleRequest(4, basicParameters())).line("").line("").line("1 5");
    writeFile(deep + "/a.fi1", twoCircuits.text());
    testing::internal::CaptureStderr();
    run.call(deep + "/a.fi1");
    EXPECT_NE(testing::internal::GetCapturedStderr().find("the path of a scratch file has more than 255 characters"),
              std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(deep + "/a.fo1"));
    writeFile(deep + "/b.fi1", cycleRequest(1, basicParameters()).text());
    run.call(deep + "/b.fi1");
    EXPECT_TRUE(std::filesystem::exists(deep + "/b.fo1"));
}

TEST(Entry, NamesWithAFolderAreFilesThatAreNotThere) {
    Plant run;
    for (const char* name : {"fluids/R134A.FLD", "..\\fluids\\R134A.FLD", "c:R134A.FLD", "'R134A\t.FLD'"}) {
        run(cycleRequest(1, basicParameters(), name));
        EXPECT_EQ(runReport.IERR, 101) << name;
        EXPECT_NE(runReport.HERR.find("[SETUP error 101] error in opening file for component #  1"), 0) << name;
    }
    run(cycleRequest(1, basicParameters(), "../mixtures/R410A.MIX"));
    EXPECT_EQ(runReport.IERR, 101);
    EXPECT_NE(runReport.HERR.find("[SETMIX error 101] error in opening mixture file:  ../mixtures/R410A.MIX"), 0);
    Request listed;
    listed.line("1").line("3").line("2").line("1").line("R32.FLD").line("0.5").line("../fluids/R125.FLD").line("0.5");
    listed.line("blend").line("2 DEF").line("4").line("1").line("1 1").line("1 300 2 100");
    run(listed);
    EXPECT_EQ(runReport.IERR, 101);
    EXPECT_NE(runReport.HERR.find("component #  2"), 0);
}

TEST(Entry, AUsersFileOfTheNameOfTheTraceIsLeftAlone) {
    Plant run;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(run.folder.path());
    writeFile("cycle_1.txt", "a user's");
    run(cycleRequest(1, basicParameters()));
    EXPECT_EQ(runReport.end, RunEnd::returned);
    EXPECT_EQ(readFile("cycle_1.txt"), "a user's");
    std::filesystem::remove("cycle_1.txt");
    run(cycleRequest(1, basicParameters()));
    EXPECT_FALSE(std::filesystem::exists("cycle_1.txt"));
    std::filesystem::current_path(before);
}

TEST(Entry, AFigureThatIsNotFiniteEndsTheRun) {
    Plant run;
    const auto entries = [](void* context, const ResultEntry& entry) {
        auto& count = *static_cast<int*>(context);
        count = entry.kind == ResultEntry::Kind::start ? 0 : count + 1;
    };
    int heard = -1;
    listenToResult(entries, &heard);
    // A whole result with one figure that is not finite, as a solver would write it.
    ERRORFILEOUT = Text255(std::string_view(run.result));
    runReport = {};
    runReport.type = 2;
    runReport.sub = 14;
    const auto write = [](void* value) {
        ResultWriter writer(ERRORFILEOUT);
        writer.integer("Request type", 2);
        writer.value("COP of cooling", "-", *static_cast<double*>(value));
        writer.close();
    };
    for (double value : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
        EXPECT_FALSE(runContained(write, &value));
        EXPECT_EQ(run.resultText(), failure(214299, "Error: the cycle has no solution"));
        EXPECT_EQ(heard, 0);
    }
    double value = missingValue;
    EXPECT_TRUE(runContained(write, &value));
    EXPECT_EQ(heard, 2);
    runReport.type = 1;
    runReport.sub = 4;
    value = HUGE_VAL;
    EXPECT_FALSE(runContained(write, &value));
    EXPECT_EQ(run.resultText(), failure(104299, "Error: the state has no finite properties"));
    listenToResult(nullptr, nullptr);
}

TEST(Entry, TheRecordsCanBeCleared) {
    Plant run;
    run(cycleRequest(1, basicParameters()));
    // Without a clearing the parameters of the request before would be those of one that gives none.
    clearRecords();
    run(cycleRequest(1, {}));
    EXPECT_EQ(run.resultText(), failure(201101, firstText));
}

// The listener jumps out of the run, as a handler of the host might.
std::jmp_buf outside;
void leaveRun(const Plant& run) {
    const auto jump = [](void*, const ResultEntry& entry) {
        if (entry.line == 20) std::longjmp(outside, 1);
    };
    listenToResult(jump, nullptr);
    if (setjmp(outside) == 0) {
        run.call(run.request);
        ADD_FAILURE() << "the run came back";
    }
    listenToResult(nullptr, nullptr);
}

TEST(Entry, ARunThatWasLeftByAJumpIsCleanedAtTheNextCall) {
    Plant run;
    run(cycleRequest(1, basicParameters()));
    const std::string whole = run.resultText();
    const auto own = +[](int) {};
    std::signal(SIGFPE, own);
    for (int i = 0; i < 100; ++i) {
        leaveRun(run);
        EXPECT_FALSE(run.hasResult());
        run.call(run.request);
        ASSERT_EQ(run.resultText(), whole);
        ASSERT_EQ(firstFreeUnit(1), 1);
    }
    EXPECT_EQ(std::signal(SIGFPE, SIG_DFL), own);
    int files = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(run.folder.path())) ++files;
    EXPECT_EQ(files, 2);
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
