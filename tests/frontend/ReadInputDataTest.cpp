// The readers, place by place.
#include "13_ReadInputData.h"

#include <gtest/gtest.h>

#include <cctype>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "14_ErrorControl.h"
#include "Requests.h"
#include "TextFile.h"
#include "Trap.h"

namespace frigana {
namespace {

using namespace test;

struct Readers : testing::Test {
    TemporaryFolder folder;
    Text255 path{std::string_view(folder.path("plant.fi1"))};
    SUBSTANCE substance{}, second{};
    CYCLEIN cycle{}, secondCycle{};
    PROPREQ request{};

    void contents(const std::string& bytes) { writeFile(std::string(path.trimmed()), bytes); }
    void contents(const Request& lines) { contents(lines.text()); }

    // What is said on standard error when a reader ends the run; empty if it comes back.
    template <class Routine>
    std::string complaint(Routine routine) {
        testing::internal::CaptureStderr();
        const bool back = runContained([](void* context) { (*static_cast<Routine*>(context))(); }, &routine);
        abandonAllUnits();
        const std::string said = testing::internal::GetCapturedStderr();
        return back ? "" : said;
    }
    std::string cycleComplaint() {
        return complaint([&] { READINPUTCYCLE(path, substance, cycle); });
    }
};

TEST_F(Readers, TheTypeAndSubTypeOfACycleRequest) {
    contents(cycleRequest(12, {}));
    int type = 0, sub = 0;
    READINPUTTYPE(path, type, sub);
    EXPECT_EQ(type, 2);
    EXPECT_EQ(sub, 12);
}

TEST_F(Readers, TheTypeAndSubTypeOfAPropertyRequestLieBehindItsNames) {
    Request lines;
    lines.line("1").line("3").line("3").line("2");
    for (const char* name : {"R32.FLD", "R125.FLD", "R134A.FLD"}) lines.line(name).line("0.3");
    lines.line("my mixture").line("1 DEF").line("4").line("0").line("0").line("1 300 2 100");
    contents(lines);
    int type = 0, sub = 0;
    READINPUTTYPE(path, type, sub);
    EXPECT_EQ(type, 1);
    EXPECT_EQ(sub, 4);
}

TEST_F(Readers, AnyOtherTypeLeavesTheSubTypeAsItWas) {
    contents("3\n");
    int type = 0, sub = -5;
    READINPUTTYPE(path, type, sub);
    EXPECT_EQ(type, 3);
    EXPECT_EQ(sub, -5);
}

TEST_F(Readers, SkippedLinesMayHoldAnythingButNothing) {
    contents("2\n'an open quote\n, , /\n\n\n***\n9\n");
    int type = 0, sub = 0;
    READINPUTTYPE(path, type, sub);
    EXPECT_EQ(sub, 9);
}

TEST_F(Readers, EveryFieldOfACycleRequest) {
    contents(cycleRequest(1, {{1, 268.15}, {2, 5.0}}, "R134A.FLD", "  A title, with \"signs\" "));
    READINPUTCYCLE(path, substance, cycle);
    EXPECT_EQ(cycle.REQTYPE, 2);
    EXPECT_EQ(cycle.TITLE, "  A title, with \"signs\" ");
    EXPECT_EQ(substance.REFSNAME[1], "R134A.FLD");
    EXPECT_EQ(substance.MIXNAME, "R134A.FLD");
    EXPECT_EQ(substance.IXREF, 2);
    EXPECT_EQ(substance.HRF, "DEF");
    EXPECT_EQ(cycle.REQSUB, 1);
    EXPECT_EQ(cycle.NDAT, 2);
    EXPECT_EQ(cycle.TDAT[1], 1);
    EXPECT_EQ(cycle.VDAT[1], 268.15);
    EXPECT_EQ(cycle.TDAT[2], 2);
    EXPECT_EQ(cycle.VDAT[2], 5.0);
    EXPECT_EQ(substance.FLUIDKIND, 1);
    EXPECT_EQ(substance.NREFS, 1);
    EXPECT_EQ(substance.ZTYPE, 1);
    EXPECT_EQ(substance.ZCOMP[1], 1.0);
}

TEST_F(Readers, TheKindOfAFluidFollowsFromItsName) {
    struct Row {
        const char* name;
        int kind;
    };
    const Row rows[] = {{"r134a.fld", 1}, {"R134A.FLD", 1}, {"R134A.fLD", 1}, {"R410A.MIX", 2}, {"r410a.mix", 2},
                        {"R2", 2},        {"x", 2},         {"fld", 1},       {"FL", 2},        {"nofile", 2}};
    for (const Row& row : rows) {
        contents(cycleRequest(1, {}, row.name));
        READINPUTCYCLE(path, substance, cycle);
        EXPECT_EQ(substance.FLUIDKIND, row.kind) << row.name;
    }
}

TEST_F(Readers, AParameterBeyondTheCountKeepsItsValue) {
    contents(cycleRequest(1, {{1, 1.0}, {2, 2.0}, {3, 3.0}}));
    READINPUTCYCLE(path, substance, cycle);
    contents(cycleRequest(1, {{9, 9.0}}));
    READINPUTCYCLE(path, substance, cycle);
    EXPECT_EQ(cycle.NDAT, 1);
    EXPECT_EQ(cycle.TDAT[1], 9);
    EXPECT_EQ(cycle.TDAT[3], 3);
    EXPECT_EQ(cycle.VDAT[3], 3.0);
}

TEST_F(Readers, ACountOfZeroReadsNoParameter) {
    contents(cycleRequest(1, {}));
    cycle.TDAT[1] = 77;
    READINPUTCYCLE(path, substance, cycle);
    EXPECT_EQ(cycle.NDAT, 0);
    EXPECT_EQ(cycle.TDAT[1], 77);
}

TEST_F(Readers, EveryLineEndAndEveryByteOfATitleIsAccepted) {
    const auto parameters = basicParameters();
    for (const std::string end : {"\n", "\r\n"}) {
        std::string bytes = cycleRequest(1, parameters, "R134A.FLD", "K\xfchlraum \xc3\xa4 \xff").text(end);
        for (bool lastEnd : {true, false}) {
            if (!lastEnd) bytes.resize(bytes.size() - end.size());
            contents(bytes);
            READINPUTCYCLE(path, substance, cycle);
            EXPECT_EQ(cycle.TITLE, "K\xfchlraum \xc3\xa4 \xff");
            EXPECT_EQ(substance.REFSNAME[1], "R134A.FLD");
            EXPECT_EQ(substance.HRF, "DEF");
            EXPECT_EQ(cycle.VDAT[15], 0.0);
            EXPECT_EQ(cycle.TDAT[12], 2);
        }
    }
}

TEST_F(Readers, ATitleIsCutAtEightyColumns) {
    contents(cycleRequest(1, {}, "R134A.FLD", std::string(79, 'a') + "bc"));
    READINPUTCYCLE(path, substance, cycle);
    EXPECT_EQ(cycle.TITLE, std::string(79, 'a') + "b");
}

TEST_F(Readers, ARecordGoesOnInTheNextLineAndNotesBehindItAreDropped) {
    contents("2 cycle request\ntitle\n'R 134.FLD', the fluid\n\n2,\nDEF\n1\n2 parameters\n1,2.5D2\n2\n\n5.0 K\n");
    READINPUTCYCLE(path, substance, cycle);
    EXPECT_EQ(substance.REFSNAME[1], "R 134.FLD");
    EXPECT_EQ(substance.HRF, "DEF");
    EXPECT_EQ(cycle.VDAT[1], 250.0);
    EXPECT_EQ(cycle.VDAT[2], 5.0);
}

TEST_F(Readers, TwoFluidsStandOneBehindTheOther) {
    Request lines = cycleRequest(3, {{1, 1.5}}, "R134A.FLD", "high");
    lines.line("").line("any text");
    lines.append(cycleRequest(3, {{2, 2.5}, {3, 3.5}}, "R410A.MIX", "low"));
    contents(lines);
    READINPUTCOMBINED(path, substance, cycle, second, secondCycle);
    EXPECT_EQ(cycle.TITLE, "high");
    EXPECT_EQ(substance.FLUIDKIND, 1);
    EXPECT_EQ(cycle.NDAT, 1);
    EXPECT_EQ(secondCycle.TITLE, "low");
    EXPECT_EQ(second.FLUIDKIND, 2);
    EXPECT_EQ(second.REFSNAME[1], "R410A.MIX");
    EXPECT_EQ(secondCycle.NDAT, 2);
    EXPECT_EQ(secondCycle.VDAT[2], 3.5);
}

TEST_F(Readers, TheIntermediateSettingStandsLastWhateverTheCount) {
    for (int k : {16, 11}) {
        Request lines = cycleRequest(4, {{1, 1.5}});
        lines.line("").line("");
        const std::vector<Parameter> many(20, Parameter{7, 7.0});
        lines.append(cycleRequest(4, k == 16 ? many : std::vector<Parameter>{}));
        lines.line("header").line("").line("2 265.15");
        contents(lines);
        if (k == 16)
            READINPUTCASCADE(path, substance, cycle, second, secondCycle);
        else
            READINPUTPUMPED(path, substance, cycle, second, secondCycle);
        EXPECT_EQ(secondCycle.TDAT[k], 2);
        EXPECT_EQ(secondCycle.VDAT[k], 265.15);
        EXPECT_EQ(secondCycle.NDAT, k == 16 ? 20 : 0);
    }
}

TEST_F(Readers, EveryToolSkipsTheLinesOfThoseBefore) {
    int flag = -1;
    contents(propertyRequest(2, "1, 250 300 5.0"));
    READINPUTPROPS(path, substance, request, flag);
    EXPECT_EQ(request.REQTYPE, 1);
    EXPECT_EQ(request.REQSUB, 2);
    EXPECT_EQ(request.SATVAR, 1);
    EXPECT_EQ(request.TABFROM, 250.0);
    EXPECT_EQ(request.TABTO, 300.0);
    EXPECT_EQ(request.TABSTEP, 5.0);
    EXPECT_EQ(flag, 1);
    EXPECT_EQ(substance.FLUIDKIND, 1);
    EXPECT_EQ(substance.ZCOMP[1], 1.0);
    EXPECT_EQ(substance.MIXNAME, "none");
    EXPECT_EQ(substance.IXREF, 2);

    contents(propertyRequest(3, "2 1 500 250 350 10"));
    READINPUTPROPS(path, substance, request, flag);
    EXPECT_EQ(request.ISOVAR, 2);
    EXPECT_EQ(request.ISOSWEEP, 1);
    EXPECT_EQ(request.ISOVALUE, 500.0);
    EXPECT_EQ(request.TABSTEP, 10.0);
    EXPECT_EQ(flag, 1);

    contents(propertyRequest(4, "1 300 2 101.325"));
    READINPUTPROPS(path, substance, request, flag);
    EXPECT_EQ(request.PT1VAR, 1);
    EXPECT_EQ(request.PT1VALUE, 300.0);
    EXPECT_EQ(request.PT2VAR, 2);
    EXPECT_EQ(request.PT2VALUE, 101.325);
    EXPECT_EQ(request.TABSTEP, 0.0);
    EXPECT_EQ(flag, 0);

    for (int sub : {5, 6}) {
        contents(propertyRequest(sub, std::to_string(sub - 2) + " 300.5"));
        READINPUTPROPS(path, substance, request, flag);
        EXPECT_EQ(request.SATPTVAR, sub - 2);
        EXPECT_EQ(request.SATPTVALUE, 300.5);
    }
    for (int sub : {1, 7}) {
        contents(propertyRequest(sub, ""));
        READINPUTPROPS(path, substance, request, flag);
        EXPECT_EQ(request.REQSUB, sub);
        EXPECT_EQ(flag, 0);
    }
}

TEST_F(Readers, AStepOfZeroIsARequestForLimits) {
    for (const char* step : {"0", "0.0", "-0.0", "0d0"}) {
        int flag = -1;
        contents(propertyRequest(2, std::string("1 250 300 ") + step));
        READINPUTPROPS(path, substance, request, flag);
        EXPECT_EQ(flag, 0) << step;
    }
    int flag = -1;
    contents(propertyRequest(2, "1 250 300 1e-300"));
    READINPUTPROPS(path, substance, request, flag);
    EXPECT_EQ(flag, 1);
}

TEST_F(Readers, AirAsAPredefinedMixtureTakesItsReferenceStateByForce) {
    struct Row {
        const char* name;
        int kind, expected;
    };
    const Row rows[] = {
        {"AIR.MIX", 2, 1}, {"air.mix", 2, 1}, {"Air.mix", 2, 2}, {"AIR.FLD", 1, 2}, {"R410A.MIX", 2, 2}};
    for (const Row& row : rows) {
        int flag = 0;
        contents(propertyRequest(1, "", row.name, row.kind));
        READINPUTPROPS(path, substance, request, flag);
        EXPECT_EQ(substance.IXREF, row.expected) << row.name;
    }
}

TEST_F(Readers, TwentyNamesAreReadAndOneMoreEndsTheRun) {
    for (int names : {20, 21}) {
        Request lines;
        lines.line("1").line("3").line(std::to_string(names)).line("1");
        for (int i = 1; i <= names; ++i) lines.line("F" + std::to_string(i) + ".FLD").line("0.05");
        lines.line("mix").line("1 DEF").line("1");
        contents(lines);
        int flag = 0;
        const auto said = complaint([&] { READINPUTPROPS(path, substance, request, flag); });
        if (names == 20) {
            EXPECT_EQ(said, "");
            EXPECT_EQ(substance.REFSNAME[20], "F20.FLD");
            EXPECT_EQ(substance.ZCOMP[20], 0.05);
        } else {
            EXPECT_NE(said.find("line 3: expected a number of names up to 20, found \"21\""), std::string::npos)
                << said;
        }
    }
}

TEST_F(Readers, FiftyParametersAreReadAndOneMoreEndsTheRun) {
    contents(cycleRequest(1, std::vector<Parameter>(50, {1, 50.0})));
    EXPECT_EQ(cycleComplaint(), "");
    EXPECT_EQ(cycle.VDAT[50], 50.0);
    contents(cycleRequest(1, std::vector<Parameter>(51, {1, 50.0})));
    const std::string said = cycleComplaint();
    EXPECT_NE(said.find("plant.fi1, line 6: expected a number of parameters up to 50, found \"51\""), std::string::npos)
        << said;
}

TEST_F(Readers, EachMalformedLineIsNamedWithWhatWasExpectedAndFound) {
    struct Row {
        std::size_t line;
        const char *text, *expected;
    };
    const Row rows[] = {
        {1, "two", "line 1: expected the request type (an integer), found \"two\""},
        {1, "2.0", "line 1: expected the request type (an integer), found \"2.0\""},
        {3, "'R134A", "line 3: expected the name of the fluid, found \"'R134A\""},
        {4, "DEF 2", "line 4: expected the reference state (an integer and a code), found \"DEF\""},
        {5, "1x", "line 5: expected the sub-type of the cycle (an integer), found \"1x\""},
        {6, "many", "line 6: expected the number of parameters (an integer), found \"many\""},
        {6, "99999999999", "line 6: expected the number of parameters (an integer), found \"99999999999\""},
        {7, "1.5 268", "line 7: expected a parameter (its option, an integer, and its value), found \"1.5\""},
        {9, "1 2,5x", "line 9: "},
        {9, "1 abc", "line 9: expected a parameter (its option, an integer, and its value), found \"abc\""},
        {21, "1 1e999", "line 21: expected a parameter (its option, an integer, and its value), found \"1e999\""},
        {8, "1 \x01\x02", "found \"??\""},
        {8, "1 aaaaaaaaaabbbbbbbbbbccccccccccddddddddddeeeeeeeeeeffffffffffgggg", "eeeeeeeeeeffffffffff...\""},
    };
    for (const Row& row : rows) {
        Request lines = cycleRequest(1, basicParameters());
        lines.lines().at(row.line - 1) = row.text;
        contents(lines);
        const std::string said = cycleComplaint();
        if (std::string(row.text) == "1 2,5x") {
            // A comma separates: 2 is the value and the rest is dropped.
            EXPECT_EQ(said, "");
            EXPECT_EQ(cycle.VDAT[3], 2.0);
            continue;
        }
        EXPECT_NE(said.find(row.expected), std::string::npos) << said;
        EXPECT_EQ(said.find("frigana: "), 0u);
        EXPECT_EQ(said.find('\n'), said.size() - 1) << said;
    }
}

// A word in place of any number of a property request is named with its line, and so is the line that a request without
// its end lacks.
TEST_F(Readers, APropertyRequestIsToldByItsLineWhateverIsWrong) {
    const char* const tools[] = {"", "1 250 300 5", "1 2 300 100 500 50", "1 300 2 101", "1 300", "2 500"};
    int flag = 0, type = 0, sub = 0, words = 0;
    const auto read = [&] { READINPUTPROPS(path, substance, request, flag); };
    const auto readType = [&] { READINPUTTYPE(path, type, sub); };
    for (int tool = 1; tool <= 6; ++tool) {
        const Request whole = propertyRequest(tool, tools[tool - 1]);
        contents(whole);
        ASSERT_EQ(complaint(read), "");
        const std::vector<std::string> lines = Request(whole).lines();
        for (std::size_t k = 0; k < lines.size(); ++k) {
            const std::string place = "line " + std::to_string(k + 1) + ": expected ";
            Request cut;
            for (std::size_t j = 0; j < k; ++j) cut.line(lines[j]);
            contents(cut);
            const std::string missing = complaint(read);
            EXPECT_NE(missing.find(place), std::string::npos) << tool << ": " << missing;
            EXPECT_NE(missing.find("found the end of the file"), std::string::npos) << missing;
            if (k < 9) {
                EXPECT_NE(complaint(readType).find(place), std::string::npos) << k;
            }

            std::istringstream line(lines[k]);
            const std::vector<std::string> tokens{std::istream_iterator<std::string>(line), {}};
            for (std::size_t t = 0; t < tokens.size(); ++t) {
                const bool ofOtherTool = k > 8 && k + 1 < lines.size();
                if (std::isdigit(static_cast<unsigned char>(tokens[t][0])) == 0 || (ofOtherTool && t > 0)) continue;
                std::string changed;
                for (std::size_t j = 0; j < tokens.size(); ++j) changed += (j == t ? "word" : tokens[j]) + " ";
                Request damaged = whole;
                damaged.lines()[k] = changed;
                contents(damaged);
                const std::string said = complaint(read);
                EXPECT_NE(said.find(place), std::string::npos) << tool << ": " << changed << ": " << said;
                EXPECT_NE(said.find("found \"word\""), std::string::npos) << said;
                ++words;
            }
        }
    }
    EXPECT_GT(words, 60);
}

// The two blocks of a cycle with two circuits, and the intermediate setting behind them.
TEST_F(Readers, ARequestOfTwoCircuitsIsToldByItsLineWhateverIsWrong) {
    Request whole = cycleRequest(10, {{1, 268.15}, {2, 5.0}});
    whole.line("header").line("header").append(cycleRequest(10, {{1, 308.15}}));
    whole.line("header").line("header").line("1 1500.0");
    const auto read = [&] { READINPUTCASCADE(path, substance, cycle, second, secondCycle); };
    const auto readPumped = [&] { READINPUTPUMPED(path, substance, cycle, second, secondCycle); };
    contents(whole);
    ASSERT_EQ(complaint(read), "");
    EXPECT_EQ(secondCycle.VDAT[16], 1500.0);
    ASSERT_EQ(complaint(readPumped), "");
    EXPECT_EQ(secondCycle.VDAT[11], 1500.0);
    const std::vector<std::string> lines = whole.lines();
    for (std::size_t k = 0; k < lines.size(); ++k) {
        const std::string place = "line " + std::to_string(k + 1) + ": expected ";
        Request cut;
        for (std::size_t j = 0; j < k; ++j) cut.line(lines[j]);
        contents(cut);
        const std::string missing = complaint(read);
        EXPECT_NE(missing.find(place), std::string::npos) << missing;
        EXPECT_NE(missing.find("found the end of the file"), std::string::npos) << missing;
        EXPECT_EQ(complaint(readPumped), missing);
    }
    for (const std::size_t last : {lines.size() - 1, lines.size() - 4})
        for (const char* text : {"word 1.0", "1 word", "1 nan"}) {
            Request damaged = whole;
            damaged.lines()[last] = text;
            contents(damaged);
            EXPECT_NE(complaint(read).find("line " + std::to_string(last + 1) + ": expected "), std::string::npos)
                << text;
        }
}

TEST_F(Readers, OnlyFiniteNumbersAreTaken) {
    for (const char* number : {"nan", "NaN", "inf", "-Infinity"}) {
        Request lines = cycleRequest(1, basicParameters());
        lines.lines()[8] = std::string("1 ") + number;
        contents(lines);
        const std::string said = cycleComplaint();
        EXPECT_NE(
            said.find(std::string("line 9: expected a parameter (its option, an integer, and its value), found \"") +
                      number + "\""),
            std::string::npos)
            << said;
        // So do fractions and the lines of tools.
        int flag = 0;
        Request tool = propertyRequest(4, std::string("1 300 2 ") + number);
        contents(tool);
        const auto read = [&] { READINPUTPROPS(path, substance, request, flag); };
        EXPECT_NE(complaint(read).find("line 12: expected the state point"), std::string::npos);
        tool = propertyRequest(4, "1 300 2 101");
        tool.lines()[5] = number;
        contents(tool);
        EXPECT_NE(complaint(read).find("line 6: expected the fraction of a fluid (a number), found"),
                  std::string::npos);
    }
}

TEST_F(Readers, ADecimalCommaIsRefused) {
    struct Row {
        const char* line;
        bool refused;
        double value;
    };
    const Row rows[] = {
        {"1 268,15", true, 0},
        {"1 268,15 ", true, 0},
        {"1 268,15\r", true, 0},
        {"1,268,15", true, 0},
        {"1 -5,0", true, 0},
        {"1,268.15", false, 268.15},
        {"1 268.15,", false, 268.15},
        {"1 268 , 15", false, 268},
        {"1 268,15 K", false, 268},
        {"1 268, 15", false, 268},
        {"1 268.15 ,x", false, 268.15},
    };
    for (const Row& row : rows) {
        Request lines = cycleRequest(1, basicParameters());
        lines.lines()[6] = row.line;
        contents(lines);
        const std::string said = cycleComplaint();
        if (row.refused) {
            EXPECT_NE(said.find("plant.fi1, line 7: decimal point expected, found \""), std::string::npos) << row.line;
        } else {
            EXPECT_EQ(said, "") << row.line;
            EXPECT_EQ(cycle.VDAT[1], row.value) << row.line;
        }
    }
    int flag = 0;
    const auto read = [&] { READINPUTPROPS(path, substance, request, flag); };
    Request fraction = propertyRequest(4, "1 300 2 101");
    fraction.lines()[5] = "0,5";
    contents(fraction);
    EXPECT_NE(complaint(read).find("line 6: decimal point expected, found \"0,5\""), std::string::npos);
    contents(propertyRequest(4, "1,300,2,101"));  // commas that separate
    EXPECT_EQ(complaint(read), "");
    EXPECT_EQ(request.PT2VALUE, 101.0);
    contents(propertyRequest(4, "1 300 2 101,3"));
    EXPECT_NE(complaint(read).find("decimal point expected"), std::string::npos);
    Request before = propertyRequest(6, "1 300");
    before.lines()[12] = "1,250";  // the line of another tool
    contents(before);
    EXPECT_EQ(complaint(read), "");
}

TEST_F(Readers, ALineBeyondTheColumnsThatAreReadIsRefused) {
    Request lines = cycleRequest(1, basicParameters());
    lines.lines()[8] = "1 0.0" + std::string(8190, ' ') + "1";
    contents(lines);
    EXPECT_NE(
        cycleComplaint().find("line 9: expected a parameter (its option, an integer, and its value), found a line of "
                              "more than 8192 columns"),
        std::string::npos);
    lines = cycleRequest(1, basicParameters());
    lines.lines()[1] = std::string(9000, 't');
    contents(lines);
    EXPECT_NE(cycleComplaint().find("line 2: expected the title of the study, found a line of more than 8192 columns"),
              std::string::npos);
}

TEST_F(Readers, TheTitleIsOneLineForBothReaders) {
    Request lines = cycleRequest(12, basicParameters(), "R134A.FLD", "");
    contents(lines);
    int type = 0, sub = 0;
    READINPUTTYPE(path, type, sub);
    EXPECT_EQ(sub, 12);
    READINPUTCYCLE(path, substance, cycle);
    EXPECT_TRUE(cycle.TITLE.blank());
    EXPECT_EQ(cycle.REQSUB, 12);
    EXPECT_EQ(substance.REFSNAME[1], "R134A.FLD");
}

TEST_F(Readers, TextsOfAnotherKindAreNamedAsSuch) {
    int type = 0, sub = 0;
    const auto read = [&] { READINPUTTYPE(path, type, sub); };
    const std::string plain = cycleRequest(1, basicParameters()).text();
    std::string little = "\xFF\xFE", big = "\xFE\xFF", unmarked, returns = plain;
    for (const char c : plain) {
        little += {c, '\0'};
        big += {'\0', c};
        unmarked += {c, '\0'};
    }
    for (char& c : returns)
        if (c == '\n') c = '\r';
    for (const std::string& bytes : {little, big, unmarked}) {
        contents(bytes);
        EXPECT_NE(complaint(read).find("plant.fi1: the request is UTF-16"), std::string::npos);
    }
    contents(returns);
    EXPECT_NE(complaint(read).find("end with a carriage return alone"), std::string::npos);
    contents("\xEF\xBB\xBF" + plain);
    EXPECT_EQ(complaint(read), "");
    EXPECT_EQ(type, 2);
    EXPECT_EQ(cycleComplaint(), "");
    EXPECT_EQ(cycle.REQTYPE, 2);
}

TEST_F(Readers, EveryShortRequestEndsTheRunAtItsEnd) {
    const Request whole = cycleRequest(1, basicParameters());
    for (std::size_t lines = 0; lines < 21; ++lines) {
        Request part = whole;
        part.lines().resize(lines);
        contents(part);
        const std::string said = cycleComplaint();
        EXPECT_NE(said.find("line " + std::to_string(lines + 1) + ": expected"), std::string::npos) << said;
        EXPECT_NE(said.find("found the end of the file"), std::string::npos) << said;
    }
}

TEST_F(Readers, AMissingRequestEndsTheRun) {
    const std::string said = cycleComplaint();
    EXPECT_EQ(said, "frigana: " + std::string(path.trimmed()) + ": the request cannot be read\n");
}

}  // namespace
}  // namespace frigana
