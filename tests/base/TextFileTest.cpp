// Units, lines and free-form records.
#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <random>

#include "TextFileFixture.h"

namespace frigana {
namespace {

TEST_F(TextFile, NumbersInEveryUsualForm) {
    struct Row {
        const char* text;
        double expected;
    };
    const Row rows[] = {
        {"1", 1.0},         {"-1", -1.0},          {"+1.5", 1.5},
        {".5", 0.5},        {"5.", 5.0},           {"1e3", 1000.0},
        {"1.5D-3", 1.5e-3}, {"1.5d+03", 1500.0},   {"2+2", 200.0},
        {"2.-2", 0.02},     {"-1.25E-01", -0.125}, {"1e-400", 0.0},
        {"0.1", 0.1},       {"1Q2", 100.0},        {"\t 7 ", 7.0},
        {"7,", 7.0},        {"3 ! note", 3.0},     {"-Infinity", -HUGE_VAL},
        {"inf", HUGE_VAL},  {"00012.50", 12.5},    {"4/", 4.0},
    };
    for (const Row& row : rows) {
        ASSERT_TRUE(open(row.text));
        double value = -99.0;
        EXPECT_EQ(readValues(1, value), ReadStatus::ok) << row.text;
        EXPECT_EQ(value, row.expected) << row.text;
    }
    ASSERT_TRUE(open("NaN"));
    double value = 0.0;
    EXPECT_EQ(readValues(1, value), ReadStatus::ok);
    EXPECT_TRUE(std::isnan(value));
}

TEST_F(TextFile, WhatIsNoNumberIsRefused) {
    for (const char* text : {"x", "1x", "1e", "1e+", "--1", "1..2", "+", ".", "-", "1e400", "R134A.FLD", "\"1\"", "0*1",
                             "1e5.0", "1_0", "e5", "99999999999*1", "1e1e1", "\x80"}) {
        ASSERT_TRUE(open(text));
        double value = 7.0;
        EXPECT_EQ(readValues(1, value), ReadStatus::malformed) << text;
        EXPECT_EQ(value, 7.0) << text;
    }
    for (const char* text : {"1.5", "2147483648", "-2147483649", "1e2", "x", "+-1", "1d0", "+"}) {
        ASSERT_TRUE(open(text));
        int value = 7;
        FreeRecord record(1);
        EXPECT_EQ(record.read(value), ReadStatus::malformed) << text;
        EXPECT_EQ(value, 7) << text;
        EXPECT_EQ(record.offendingText(), text);
    }
}

// A number may have more digits than a double; one of more than 500 is none.
TEST_F(TextFile, NumbersOfManyDigits) {
    struct {
        std::string text;
        double expected;
    } const rows[] = {
        {"0." + std::string(400, '0') + "1", 0.0},
        {"-." + std::string(400, '0') + "1", 0.0},
        {"1e-99999999999999999999", 0.0},
        {"0." + std::string(400, '0') + "1e400", 0.1},
        {"1" + std::string(400, '0') + "e-400", 1.0},
        {std::string(400, '0') + "7", 7.0},
        {"0e99999", 0.0},
        {"3." + std::string(400, '3'), 10.0 / 3.0},
    };
    for (const auto& row : rows) {
        ASSERT_TRUE(open(row.text));
        double value = -99.0;
        EXPECT_EQ(readValues(1, value), ReadStatus::ok) << row.text;
        EXPECT_NEAR(value, row.expected, 1e-15 * row.expected) << row.text;
    }
    for (const std::string& text :
         {std::string(400, '9'), '-' + std::string(400, '9') + ".5", std::string("1e99999999999999999999"),
          std::string(600, '1'), "0." + std::string(600, '0')}) {
        ASSERT_TRUE(open(text));
        double value = 7.0;
        EXPECT_EQ(readValues(1, value), ReadStatus::malformed) << text;
        EXPECT_EQ(value, 7.0);
    }
    for (const char* text : {"NAN", "-nan", "INF", "+inf", "iNfInItY"}) {
        ASSERT_TRUE(open(text));
        double value = 7.0;
        EXPECT_EQ(readValues(1, value), ReadStatus::ok) << text;
        EXPECT_FALSE(std::isfinite(value)) << text;
    }
    for (const char* text : {"nano", "na", "infinite", "i", "1+", "1q", "1Q-"}) {
        ASSERT_TRUE(open(text));
        double value = 7.0;
        EXPECT_EQ(readValues(1, value), ReadStatus::malformed) << text;
    }
}

// What a text may be left out by, repeated by, or hold.
TEST_F(TextFile, TextsAreLeftOutAndRepeatedLikeNumbers) {
    ASSERT_TRUE(open(",2*'a b',2*,3*R22, '' 'it''s' \"\" \"a\"\n"));
    Text255 t[10];
    for (Text255& text : t) text = "before";
    FreeRecord record(1);
    EXPECT_EQ(record.rest(), "");
    for (Text255& text : t) EXPECT_EQ(record.read(text), ReadStatus::ok);
    const char* const expected[] = {"before", "a b", "a b", "before", "before", "3*R22", "", "it's", "", "a"};
    for (int i = 0; i < 10; ++i) EXPECT_EQ(t[i], expected[i]) << i;
    EXPECT_EQ(record.rest(), "");
    for (const char* text : {"'", "'open", "\"open'", "0*'a'", "0*,", "99999999999*'a'"}) {
        ASSERT_TRUE(open(text));
        Text255 value;
        EXPECT_EQ(readValues(1, value), ReadStatus::malformed) << text;
    }
    // A slash ends a record of numbers, and texts behind it stay as they were too.
    ASSERT_TRUE(open("1 / 'a'"));
    int first = 0, second = 5;
    Text255 text = "before";
    EXPECT_EQ(readValues(1, first, second, text), ReadStatus::ok);
    EXPECT_EQ(second, 5);
    EXPECT_EQ(text, "before");
}

TEST_F(TextFile, AUnitThatIsNotOpenHasNothing) {
    for (const int unit : {1, 0, -1, 1000}) {
        Text255 text = "before";
        int integer = 3;
        double real = 3.0;
        FileStamp stamp;
        EXPECT_FALSE(unitIsOpen(unit));
        EXPECT_EQ(readText(unit, text), ReadStatus::endOfFile);
        EXPECT_EQ(readValues(unit == 0 ? 1 : unit, text), ReadStatus::endOfFile);
        EXPECT_EQ(readValues(unit == 0 ? 1 : unit, integer), ReadStatus::endOfFile);
        EXPECT_EQ(readValues(unit == 0 ? 1 : unit, real), ReadStatus::endOfFile);
        EXPECT_EQ(text, "before");
        EXPECT_EQ(skipLine(unit), ReadStatus::endOfFile);
        EXPECT_EQ(skipFilledLine(unit), ReadStatus::endOfFile);
        EXPECT_EQ(lineNumber(unit), 0);
        EXPECT_EQ(unitPath(unit), "");
        EXPECT_EQ(currentLine(unit), "");
        EXPECT_EQ(readProblem(unit), "");
        EXPECT_EQ(nextLinePlace(unit).linesBefore, 0);
        EXPECT_FALSE(stampOf(unit, stamp));
        goToLine(unit, {5, 1});
        rewindUnit(unit);
        writeLine(unit, Text255("lost"));
        closeAndDelete(unit);
        EXPECT_TRUE(closeUnit(unit));
    }
    for (const int unit : {0, -1, 1000}) EXPECT_FALSE(openForWriting(unit, path)) << unit;
}

// What is open for the one is not for the other.
TEST_F(TextFile, AUnitReadsOrWrites) {
    ASSERT_TRUE(open("one\ntwo\n"));
    writeLine(1, Text255("lost"));
    writeFree(1, "lost");
    EXPECT_TRUE(closeUnit(1));
    EXPECT_EQ(contents(), "one\ntwo\n");
    ASSERT_TRUE(openForWriting(1, path));
    writeFree(1, "kept");
    goToLine(1, {0, 0});
    writeFree(1, 7);
    EXPECT_EQ(lineNumber(1), 2);
    rewindUnit(1);
    EXPECT_EQ(skipLine(1), ReadStatus::ok);
    EXPECT_EQ(currentLine(1), " kept");
    EXPECT_EQ(skipLine(1), ReadStatus::ok);
    EXPECT_EQ(skipLine(1), ReadStatus::endOfFile);
    EXPECT_EQ(skipLine(1), ReadStatus::endOfFile);
}

// A path beyond what systems take is that of no file, for whatever it is given.
TEST_F(TextFile, APathThatIsTooLongIsNone) {
    const std::string none = temporary.path(std::string(2000, 'a')), null = path + std::string(1, '\0') + "a";
    contents("here");
    for (const std::string& name : {none, null}) {
        char found[3000];
        EXPECT_FALSE(openForReading(1, name));
        for (const Writing how : {Writing::direct, Writing::whole, Writing::fresh})
            EXPECT_FALSE(openForWriting(1, name, how));
        EXPECT_FALSE(fileExists(name));
        EXPECT_FALSE(removeFile(name));
        EXPECT_FALSE(clearFile(name));
        EXPECT_FALSE(findInAnyCase(name, "a", found));
        EXPECT_LT(lockFolder(name), 0);
    }
    // One that has room for itself, but not for the name it has until it is whole: it is written under its own.
#ifdef _WIN32
    constexpr std::size_t longest = 259;  // of the system
#else
    constexpr std::size_t longest = longestPath;
#endif
    std::string deep = temporary.path();
    while (deep.size() + 202 < longest) {
        deep += '/' + std::string(200, 'd');
        fs::create_directory(deep);
    }
    deep += '/' + std::string(longest - deep.size() - 1, 'f');
    ASSERT_EQ(deep.size(), longest);
    EXPECT_TRUE(openForWriting(1, deep, Writing::whole));
    EXPECT_TRUE(closeUnit(1));
    EXPECT_TRUE(fileExists(deep));
    EXPECT_EQ(contents(), "here");
}

TEST_F(TextFile, IntegersReachTheirLimits) {
    ASSERT_TRUE(open("2147483647 -2147483648 +12"));
    int a = 0, b = 0, c = 0;
    EXPECT_EQ(readValues(1, a, b, c), ReadStatus::ok);
    EXPECT_EQ(a, 2147483647);
    EXPECT_EQ(b, -2147483647 - 1);
    EXPECT_EQ(c, 12);
}

TEST_F(TextFile, BlanksCommasAndTabsSeparate) {
    ASSERT_TRUE(open("  1,2.5 ,  'a, b'\tR134A.FLD, 4"));
    int i = 0, last = 0;
    double d = 0.0;
    Text255 quoted, bare;
    EXPECT_EQ(readValues(1, i, d, quoted, bare, last), ReadStatus::ok);
    EXPECT_EQ(i, 1);
    EXPECT_EQ(d, 2.5);
    EXPECT_EQ(quoted, "a, b");
    EXPECT_EQ(bare, "R134A.FLD");
    EXPECT_EQ(last, 4);
}

TEST_F(TextFile, RepeatedSeparatorsAndCountsLeaveOrRepeatValues) {
    ASSERT_TRUE(open("1,,3*4.5,2*,9\n"));
    double v[8] = {-1, -1, -1, -1, -1, -1, -1, -1};
    EXPECT_EQ(readValues(1, v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7]), ReadStatus::ok);
    const double expected[8] = {1, -1, 4.5, 4.5, 4.5, -1, -1, 9};
    for (int i = 0; i < 8; ++i) EXPECT_EQ(v[i], expected[i]) << i;
}

TEST_F(TextFile, ASlashEndsANumericRecordAndBelongsToText) {
    ASSERT_TRUE(open("5 / 7\n/home/plant.fld,R22/R134a\n"));
    int a = 0, b = -3;
    EXPECT_EQ(readValues(1, a, b), ReadStatus::ok);
    EXPECT_EQ(a, 5);
    EXPECT_EQ(b, -3);
    Text255 path255, name;
    EXPECT_EQ(readValues(1, path255, name), ReadStatus::ok);
    EXPECT_EQ(path255, "/home/plant.fld");
    EXPECT_EQ(name, "R22/R134a");
}

TEST_F(TextFile, ARecordGoesOnInTheNextLineAndDropsTheRestOfItsLast) {
    ASSERT_TRUE(open("\n   \n1 2\n\n3 rest is dropped\n4\n"));
    int a = 0, b = 0, c = 0, d = 0;
    EXPECT_EQ(readValues(1, a, b, c), ReadStatus::ok);
    EXPECT_EQ(c, 3);
    EXPECT_EQ(lineNumber(1), 5);
    EXPECT_EQ(readValues(1, d), ReadStatus::ok);
    EXPECT_EQ(d, 4);
    EXPECT_EQ(lineNumber(1), 6);
    EXPECT_EQ(readValues(1, d), ReadStatus::endOfFile);
}

TEST_F(TextFile, EveryLineEndIsAccepted) {
    for (const char* bytes : {"1\n2\n", "1\r\n2\r\n", "1\n2", "1\r\n2"}) {
        ASSERT_TRUE(open(bytes));
        int a = 0, b = 0, c = 0;
        EXPECT_EQ(readValues(1, a), ReadStatus::ok);
        EXPECT_EQ(readValues(1, b), ReadStatus::ok);
        EXPECT_EQ(a, 1);
        EXPECT_EQ(b, 2);
        EXPECT_EQ(readValues(1, c), ReadStatus::endOfFile);
    }
    ASSERT_TRUE(open("title\r\nnext\r\n"));
    FixedText<10> title;
    EXPECT_EQ(readText(1, title), ReadStatus::ok);
    EXPECT_EQ(title.view(), "title     ");
}

TEST_F(TextFile, AFixedTextIsTakenAsItStands) {
    ASSERT_TRUE(open("  K\xfchlung, 'x'  " + std::string(100, 'y') + "\n\nlast"));
    Text255 text;
    EXPECT_EQ(readText(1, text, 80), ReadStatus::ok);
    EXPECT_EQ(text.view().substr(0, 18), "  K\xfchlung, 'x'  yy");
    EXPECT_EQ(text.length(), 80);
    EXPECT_EQ(readText(1, text, 80), ReadStatus::ok);
    EXPECT_TRUE(text.blank());
    EXPECT_EQ(readText(1, text, 80), ReadStatus::ok);
    EXPECT_EQ(text, "last");
    EXPECT_EQ(readText(1, text, 80), ReadStatus::endOfFile);
}

TEST_F(TextFile, QuotesMayBeDoubledAndMustBeClosed) {
    ASSERT_TRUE(open("'it''s' \"a \"\"b\"\"\" ''\n'open\n"));
    Text255 a, b, c{"old"};
    EXPECT_EQ(readValues(1, a, b, c), ReadStatus::ok);
    EXPECT_EQ(a, "it's");
    EXPECT_EQ(b, "a \"b\"");
    EXPECT_TRUE(c.blank());
    EXPECT_EQ(readValues(1, a), ReadStatus::malformed);
}

TEST_F(TextFile, ALongTextIsCutAtItsField) {
    ASSERT_TRUE(open("DEFAULT 3*abc"));
    Text3 code;
    Text12 star;
    EXPECT_EQ(readValues(1, code, star), ReadStatus::ok);
    EXPECT_EQ(code, "DEF");
    EXPECT_EQ(star, "3*abc");
}

TEST_F(TextFile, WhatIsWrittenReadsBackBitForBit) {
    std::mt19937_64 random(20240229);
    std::vector<double> values = {0.0,
                                  -0.0,
                                  1.0,
                                  -777.0,
                                  0.1,
                                  5e-324,
                                  2.2250738585072014e-308,
                                  1.7976931348623157e308,
                                  99999999999999999.0,
                                  0.099999999999999999};
    while (values.size() < 20000) {
        const auto value = std::bit_cast<double>(random());
        if (std::isfinite(value)) values.push_back(value);
    }
    ASSERT_TRUE(openForWriting(2, path));
    for (double value : values) writeFree(2, value);
    EXPECT_EQ(lineNumber(2), 20000);
    EXPECT_TRUE(closeUnit(2));
    ASSERT_TRUE(openForReading(2, path));
    for (double value : values) {
        double back = 1.0;
        ASSERT_EQ(readValues(2, back), ReadStatus::ok);
        ASSERT_EQ(std::bit_cast<std::uint64_t>(back), std::bit_cast<std::uint64_t>(value)) << value;
    }
}

TEST_F(TextFile, LinesOfEveryFormat) {
    ASSERT_TRUE(openForWriting(1, path));
    writeFree(1, 0);
    writeFree(1, std::string_view("CYCLE data for graphic P-h "));
    writeFree(1, 0.25f);
    writeLine(1, Integer{1, 1});
    writeLine(1, FixedPoint{16, 6, 273.15}, Blanks{1}, Character{3, "x"});
    writeFree(1, std::string_view(""));
    EXPECT_TRUE(closeUnit(1));
    EXPECT_EQ(contents(), " 0\n CYCLE data for graphic P-h \n 0.250000000\n1\n      273.150000 x  \n \n");
}

TEST_F(TextFile, StatusUnknownReplacesAndDeleteRemoves) {
    contents("a long old content\n");
    ASSERT_TRUE(openForWriting(1, path));
    writeFree(1, 1);
    rewindUnit(1);
    int value = 0;
    EXPECT_EQ(readValues(1, value), ReadStatus::ok);
    EXPECT_EQ(value, 1);
    EXPECT_TRUE(closeUnit(1));
    EXPECT_EQ(contents(), " 1\n");
    ASSERT_TRUE(openForReading(1, path));
    closeAndDelete(1);
    EXPECT_FALSE(fs::exists(path));
    EXPECT_FALSE(unitIsOpen(1));
    EXPECT_FALSE(openForReading(1, path));
}

TEST_F(TextFile, PathsOfEveryKindAndCaseAreFound) {
    fs::create_directories(folder / "fluids");
    std::ofstream(folder / "fluids" / "HMX.BNC") << "7\n";
    const std::string base = folder.string();
    for (const char* rest : {"\\fluids\\HMX.BNC", "/fluids/HMX.BNC", "\\fluids/hmx.bnc", "/FLUIDS\\HMX.bnc   "}) {
        EXPECT_TRUE(openForReading(12, base + rest)) << rest;
        int value = 0;
        EXPECT_EQ(readValues(12, value), ReadStatus::ok);
        EXPECT_EQ(value, 7);
    }
    EXPECT_FALSE(openForReading(12, base + "\\fluids\\HMX.BN"));
    EXPECT_FALSE(openForReading(12, base + "\\fluids"));
    EXPECT_FALSE(openForReading(12, ""));
    EXPECT_FALSE(openForReading(12, base + "\\" + std::string(2000, 'x')));
    EXPECT_FALSE(openForWriting(12, base + "\\nowhere\\x.txt"));
    EXPECT_EQ(lastSeparator("C:\\work/plant.fi1"), 8);
    EXPECT_EQ(lastSeparator("plant.fi1"), 0);
}

TEST_F(TextFile, UnitsAreIndependentAndBounded) {
    contents("1\n2\n");
    for (int unit = 12; unit < 12 + mostOpenUnits; ++unit) {
        EXPECT_EQ(firstFreeUnit(12), unit);
        EXPECT_TRUE(openForReading(unit, path));
    }
    EXPECT_FALSE(openForReading(1, path));
    int value = 0;
    EXPECT_EQ(readValues(13, value), ReadStatus::ok);
    EXPECT_EQ(readValues(12, value), ReadStatus::ok);
    EXPECT_EQ(value, 1);
    EXPECT_EQ(unitPath(12), path);
    closeAllUnits();
    EXPECT_EQ(firstFreeUnit(1), 1);
    EXPECT_FALSE(openForReading(0, path));
    EXPECT_FALSE(openForReading(100, path));
    EXPECT_EQ(readValues(5, value), ReadStatus::endOfFile);
}

TEST_F(TextFile, ALineMayHave8192ColumnsAndALongerOneIsRefused) {
    // The number ends in the last column: cut there, it would be another number.
    const std::string fits = std::string(longestLine - 2, ' ') + "99";
    ASSERT_TRUE(open(fits + "\n" + fits + "\r\n" + "1" + fits + "\n5\n"));
    int value = -1;
    EXPECT_EQ(readValues(1, value), ReadStatus::ok);
    EXPECT_EQ(value, 99);
    EXPECT_EQ(readProblem(1), "");
    value = -1;
    EXPECT_EQ(skipLine(1), ReadStatus::malformed);  // the carriage return counts
    EXPECT_EQ(readValues(1, value), ReadStatus::malformed);
    EXPECT_EQ(value, -1);
    EXPECT_EQ(lineNumber(1), 3);
    EXPECT_EQ(readProblem(1), "a line of more than 8192 columns");
    EXPECT_EQ(readValues(1, value), ReadStatus::ok);
    EXPECT_EQ(value, 5);

    const std::string longer(40000, ' ');
    FixedText<80> title;
    ASSERT_TRUE(open(longer + "\n" + longer + "\n" + longer + "9"));
    EXPECT_EQ(readText(1, title), ReadStatus::malformed);
    EXPECT_EQ(skipFilledLine(1), ReadStatus::malformed);
    EXPECT_EQ(readValues(1, value), ReadStatus::malformed);
    EXPECT_EQ(readValues(1, value), ReadStatus::endOfFile);
}

TEST_F(TextFile, NumbersBeyondADoubleAreTheSameInEveryLocale) {
    struct Row {
        const char* text;
        double expected;  // not finite: refused
    };
    const Row rows[] = {
        {"1.5e-400", 0.0},
        {"-1.5e-400", -0.0},
        {"1.5e400", HUGE_VAL},
        {"-1e309", HUGE_VAL},
        {"0.000001e-320", 0.0},
        {"1e-99999999999999999999", 0.0},
        {"1e99999999999999999999", HUGE_VAL},
        {"0.0001e400", HUGE_VAL},
        {"1000e-330", 0.0},
    };
    const char* before = std::setlocale(LC_NUMERIC, nullptr);
    const std::string kept = before;
    for (const char* locale : {"C", "de_DE.UTF-8", "fr_FR.UTF-8"}) {
        if (std::setlocale(LC_NUMERIC, locale) == nullptr) continue;
        for (const Row& row : rows) {
            ASSERT_TRUE(open(row.text));
            double value = 7.0;
            const auto status = readValues(1, value);
            EXPECT_EQ(status, std::isfinite(row.expected) ? ReadStatus::ok : ReadStatus::malformed) << row.text;
            EXPECT_EQ(value, std::isfinite(row.expected) ? row.expected : 7.0) << row.text;
            EXPECT_EQ(std::signbit(value), std::isfinite(row.expected) && std::signbit(row.expected)) << row.text;
        }
    }
    std::setlocale(LC_NUMERIC, kept.c_str());
    const std::string zeros(300, '0');
    ASSERT_TRUE(open("0." + zeros + "1e-100 1" + zeros + "e100"));
    double small = 7.0, large = 7.0;
    EXPECT_EQ(readValues(1, small, large), ReadStatus::malformed);
    EXPECT_EQ(small, 0.0);
}

TEST_F(TextFile, AMarkOfTheEncodingIsPassedOver) {
    ASSERT_TRUE(
        open("\xEF\xBB\xBF"
             "12\n\xEF\xBB\xBF"
             "13\n"));
    int value = 0;
    EXPECT_EQ(readValues(1, value), ReadStatus::ok);
    EXPECT_EQ(value, 12);
    EXPECT_EQ(readValues(1, value), ReadStatus::malformed);  // only in front of the first line
}

TEST_F(TextFile, AWholeFileTakesItsNameWhenItIsClosed) {
    contents("old\n");
    ASSERT_TRUE(openForWriting(1, path, Writing::whole));
    writeFree(1, 1);
    EXPECT_EQ(contents(), "old\n");
    EXPECT_TRUE(closeUnit(1));
    EXPECT_EQ(contents(), " 1\n");
    EXPECT_EQ(filesIn(folder), 1);

    // Given up in the midst of it, nothing is left of it.
    for (auto* giveUp : {+[] { closeAndDelete(1); }, +[] { abandonAllUnits(); }}) {
        ASSERT_TRUE(openForWriting(1, path, Writing::whole));
        writeFree(1, 2);
        giveUp();
        EXPECT_EQ(contents(), " 1\n");
        EXPECT_EQ(filesIn(folder), 1);
        EXPECT_FALSE(unitIsOpen(1));
    }
    ASSERT_TRUE(openForWriting(1, path, Writing::whole));
    EXPECT_TRUE(removeHalfFiles(SIGTERM));
#ifndef _WIN32
    EXPECT_EQ(filesIn(folder), 1);  // at once, where the system removes what is open
#endif
    EXPECT_FALSE(closeUnit(1));  // its name is gone
    EXPECT_EQ(filesIn(folder), 1);
    EXPECT_EQ(contents(), " 1\n");
}

TEST_F(TextFile, WhatADeadProcessLeftBesideIsReplacedAndWhatALivingOneWritesIsNot) {
    std::ofstream(path + "~0") << "half";
    ASSERT_TRUE(openForWriting(1, path, Writing::whole));
    ASSERT_TRUE(openForWriting(2, path, Writing::whole));  // a second writer of the same name
    EXPECT_EQ(filesIn(folder), 2);
    writeFree(1, 1);
    writeFree(2, 2);
    EXPECT_TRUE(closeUnit(1));
    EXPECT_EQ(contents(), " 1\n");
    EXPECT_TRUE(closeUnit(2));
    EXPECT_EQ(contents(), " 2\n");
    EXPECT_EQ(filesIn(folder), 1);
}

TEST_F(TextFile, AFreshFileLeavesAnOlderOneAlone) {
    contents("a user's\n");
    EXPECT_FALSE(openForWriting(1, path, Writing::fresh));
    EXPECT_EQ(contents(), "a user's\n");
    fs::remove(path);
    ASSERT_TRUE(openForWriting(1, path, Writing::fresh));
    closeAndDelete(1);
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(TextFile, OldContentIsClearedOrToldNotToBe) {
    EXPECT_TRUE(clearFile(path));
    EXPECT_TRUE(clearFile(path + "/nowhere/x"));
    contents("old\n");
    EXPECT_TRUE(clearFile(path));
    EXPECT_FALSE(fs::exists(path));
    fs::create_directory(path);
    EXPECT_FALSE(clearFile(path));
}

TEST_F(TextFile, AnEntryIsFoundInAnyCase) {
    std::ofstream(folder / "R410A.MIX") << "x";
    char found[9];
    EXPECT_TRUE(findInAnyCase(folder.string() + "/", "r410a.mix", found));
    EXPECT_EQ(std::string_view(found, 9), "R410A.MIX");
    EXPECT_TRUE(findInAnyCase(folder.string() + "\\", "r410b.mix", found));
    EXPECT_EQ(std::string_view(found, 9), "r410b.mix");
    // What cannot be read may hold anything.
    EXPECT_FALSE(findInAnyCase(folder.string() + "/nowhere/", "r410a.mix", found));
    EXPECT_EQ(std::string_view(found, 9), "r410a.mix");
}

TEST(FileNames, AreThoseOfFilesAlone) {
    for (const char* name : {"R134A.FLD", "my blend", "K\xfchl", "..", ""}) EXPECT_TRUE(isPlainFileName(name)) << name;
    for (const char* name : {"a/b", "..\\R134A.FLD", "c:R134A.FLD", "a\tb", "a\nb", "/dev/zero", "\x1b[2J"})
        EXPECT_FALSE(isPlainFileName(name)) << name;
}

TEST_F(TextFile, SkippedLinesMustHoldSomething) {
    ASSERT_TRUE(open("one\n\n  \n'two\nthree 3\n4"));
    EXPECT_EQ(skipFilledLine(1), ReadStatus::ok);
    EXPECT_EQ(skipFilledLine(1), ReadStatus::ok);
    EXPECT_EQ(currentLine(1), "'two");
    EXPECT_EQ(skipLine(1), ReadStatus::ok);
    int value = 0;
    EXPECT_EQ(readValues(1, value), ReadStatus::ok);
    EXPECT_EQ(value, 4);
    EXPECT_EQ(skipFilledLine(1), ReadStatus::endOfFile);
}

TEST(FreeText, ValuesComeOutOfAText) {
    FreeRecord record("  0.5, 1d2 7");
    double a = 0.0, b = 0.0;
    int c = 0;
    EXPECT_EQ(record.read(a), ReadStatus::ok);
    EXPECT_EQ(record.read(b), ReadStatus::ok);
    EXPECT_EQ(record.read(c), ReadStatus::ok);
    EXPECT_EQ(a, 0.5);
    EXPECT_EQ(b, 100.0);
    EXPECT_EQ(c, 7);
    EXPECT_EQ(record.read(c), ReadStatus::endOfFile);
}

}  // namespace
}  // namespace frigana
