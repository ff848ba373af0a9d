// Edit formats, column by column.
#include "Message.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "TextFile.h"

namespace frigana {
namespace {

template <class Piece>
std::string edited(const Piece& piece) {
    FixedText<400> field;
    Composer composer(field.data(), field.size);
    composer.add(piece);
    return std::string(field.data(), static_cast<std::size_t>(composer.used()));
}

TEST(Message, FixedPointStandsAtTheRightOfItsField) {
    struct Row {
        FixedPoint piece;
        const char* expected;
    };
    const Row rows[] = {
        {{12, 5, 123.456789}, "   123.45679"},
        {{12, 5, -123.456789}, "  -123.45679"},
        {{12, 5, 0.0}, "     0.00000"},
        {{12, 5, 1.0e7}, "************"},
        {{12, 5, 999999.999994}, "999999.99999"},
        {{12, 5, 999999.999996}, "************"},
        {{16, 6, 273.15}, "      273.150000"},
        {{12, 4, 374.21}, "    374.2100"},
        {{5, 3, 0.5}, "0.500"},
        {{4, 3, 0.5}, ".500"},
        {{5, 3, -0.5}, "-.500"},
        {{4, 3, -0.5}, "****"},
        {{4, 0, 12.0}, " 12."},
        {{0, 2, 12.345}, "12.35"},
        {{0, 2, 12.3449}, "12.34"},
        {{3, 1, 1.0e300}, "***"},
        {{12, 4, -0.00001}, "     -0.0000"},
    };
    for (const Row& row : rows) EXPECT_EQ(edited(row.piece), row.expected) << row.piece.value;
}

TEST(Message, GeneralTakesTheFixedFormBetweenATenthAndTenToTheDigits) {
    struct Row {
        General piece;
        const char* expected;
    };
    const Row rows[] = {
        {{12, 5, 0.1}, " 0.10000    "},       {{12, 5, 1.0}, "  1.0000    "},       {{12, 5, 300.0}, "  300.00    "},
        {{12, 5, 374.2139}, "  374.21    "},  {{12, 5, 99999.0}, "  99999.    "},   {{12, 5, 99999.6}, " 0.10000E+06"},
        {{12, 5, 100000.0}, " 0.10000E+06"},  {{12, 5, 0.0999999}, " 0.10000    "}, {{12, 5, 0.09999}, " 0.99990E-01"},
        {{12, 5, -0.012345}, "-0.12345E-01"}, {{12, 5, 0.0}, "  0.0000    "},       {{12, 5, -300.0}, " -300.00    "},
        {{12, 5, 1.0e123}, " 0.10000+124"},   {{12, 5, 1.0e-123}, " 0.10000-122"},  {{11, 5, -0.012345}, "-.12345E-01"},
        {{10, 5, 1.5e6}, ".15000E+07"},       {{9, 5, 1.5e6}, "*********"},         {{13, 6, 4059.28}, "  4059.28    "},
    };
    for (const Row& row : rows) EXPECT_EQ(edited(row.piece), row.expected) << row.piece.value;
}

TEST(Message, IntegersAndTexts) {
    EXPECT_EQ(edited(Integer{1, 0}), "0");
    EXPECT_EQ(edited(Integer{2, 4}), " 4");
    EXPECT_EQ(edited(Integer{2, 100}), "**");
    EXPECT_EQ(edited(Integer{4, -21}), " -21");
    EXPECT_EQ(edited(Integer{0, -2147483647 - 1}), "-2147483648");
    EXPECT_EQ(edited(Character{5, "R22"}), "R22  ");
    EXPECT_EQ(edited(Character{3, "R134A"}), "R13");
    EXPECT_EQ(edited(Blanks{3}), "   ");
}

TEST(Message, ValuesThatAreNotFiniteHaveNames) {
    EXPECT_EQ(edited(FixedPoint{12, 5, std::nan("")}), "         NaN");
    EXPECT_EQ(edited(General{12, 5, HUGE_VAL}), "    Infinity");
    EXPECT_EQ(edited(General{6, 1, -HUGE_VAL}), "  -Inf");
    EXPECT_EQ(edited(FreeDouble{HUGE_VAL}), " Infinity");
}

TEST(Message, FreeFormShowsSeventeenDigitsBehindABlank) {
    EXPECT_EQ(edited(FreeDouble{300.0}), " 300.00000000000000");
    EXPECT_EQ(edited(FreeDouble{-777.0}), " -777.00000000000000");
    EXPECT_EQ(edited(FreeDouble{0.5}), " 0.50000000000000000");
    EXPECT_EQ(edited(FreeDouble{0.0}), " 0.0000000000000000");
    EXPECT_EQ(edited(FreeDouble{-0.0}), " -0.0000000000000000");
    EXPECT_EQ(edited(FreeDouble{0.05}), " 5.0000000000000003E-02");
    EXPECT_EQ(edited(FreeDouble{1.0e17}), " 1.0000000000000000E+17");
    EXPECT_EQ(edited(FreeDouble{1.0e16}), " 10000000000000000.");
    EXPECT_EQ(edited(FreeDouble{2.5e-300}), " 2.5000000000000000E-300");
    EXPECT_EQ(edited(FreeSingle{0.1f}), " 0.100000001");
    EXPECT_EQ(edited(FreeInteger{0}), " 0");
    EXPECT_EQ(edited(FreeInteger{-15}), " -15");
}

TEST(Message, PiecesFollowOneAnotherAndWhatDoesNotFitIsCut) {
    Text255 herr;
    message(herr, "[SATT error 121] T =", General{12, 5, 400.0}, " K.", nullCharacter);
    EXPECT_EQ(herr.trimmed(), (std::string_view{"[SATT error 121] T =  400.00     K.\0", 36}));
    FixedText<8> narrow;
    message(narrow, "abcdef", Integer{4, 12});
    EXPECT_EQ(narrow.view(), "abcdef  ");
    narrow = "old";
    message(narrow, narrow.trimmed(), "+", narrow.trimmed());
    EXPECT_EQ(narrow, "old+old");
}

TEST(Message, ALimitIsQuotedAtTheLeft) {
    Text255 text;
    message(text, "Error: Condenser temperature > Critical temperature (",
            leftJustified(FixedPoint{12, 4, 374.21}).trimmed(), " K)");
    EXPECT_EQ(text, "Error: Condenser temperature > Critical temperature (374.2100 K)");
    EXPECT_EQ(leftJustified(FixedPoint{12, 4, 1.0e9}), "************");
}

}  // namespace
}  // namespace frigana
