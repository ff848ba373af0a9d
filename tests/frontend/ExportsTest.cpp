// Named items of the engine as a host passes them: fields of its own lengths, the fluid of the last request.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "Requests.h"

namespace frigana::test {
namespace {

using Passed = decltype(&PASSCMN);

// The arguments of one call.
struct Item {
    std::array<char, 300> text{}, words{};
    int integer = 77, code = 77;
    double real = 77.0;
    std::array<double, 100> array{};

    Item() {
        text.fill('#');
        words.fill('#');
        array.fill(-1.0);
    }
    void pass(Passed call, const std::string& name, int write, int slot, int textLength = 255, int wordsLength = 255) {
        const int pair = 0;
        call(name.data(), &write, &slot, &pair, text.data(), &integer, &real, array.data(), &code, words.data(),
             static_cast<int>(name.size()), textLength, wordsLength);
    }
};

std::string fieldOf(const std::array<char, 300>& field, std::size_t length) {
    return {field.data(), length};
}

class ExportedItems : public testing::TestWithParam<Passed> {
  protected:
    void SetUp() override {
        Plant plant;
        plant(cycleRequest(1, basicParameters()));
        ASSERT_TRUE(plant.hasResult());
    }
};
INSTANTIATE_TEST_SUITE_P(BothNames, ExportedItems, testing::Values(&PASSCMN, &passcmn_));

// R. Tillner-Roth, H. D. Baehr, J. Phys. Chem. Ref. Data 23 (1994) 657: 374.18 K and 102.032 g/mol.
TEST_P(ExportedItems, AreThoseOfTheLastRequest) {
    Item critical;
    critical.pass(GetParam(), "tcrit", 0, 1);
    EXPECT_EQ(critical.code, 0);
    EXPECT_NEAR(critical.real, 374.2, 0.1);
    EXPECT_EQ(critical.integer, 0);
    EXPECT_EQ(fieldOf(critical.words, 255), std::string(255, ' '));
    Item mass;
    mass.pass(GetParam(), "wmas", 0, 1);
    EXPECT_NEAR(mass.real, 102.032, 0.001);
}

// A field is filled to its length with blanks, and not a character further.
TEST_P(ExportedItems, FillTheFieldsOfTheHost) {
    for (const int length : {2, 3, 10, 255, 290}) {
        Item item;
        item.pass(GetParam(), "heos", 0, 1, length, length);
        const auto n = static_cast<std::size_t>(length);
        EXPECT_EQ(fieldOf(item.text, n), std::string("FEQ").substr(0, n) + std::string(n > 3 ? n - 3 : 0, ' '));
        EXPECT_EQ(item.text[n], '#') << length;
        EXPECT_EQ(fieldOf(item.words, n), std::string(n, ' '));
        EXPECT_EQ(item.words[n], '#') << length;
    }
    Item without;
    without.pass(GetParam(), "heos", 0, 1, 0, -1);
    EXPECT_EQ(without.code, 0);
    EXPECT_EQ(without.text[0], '#');
    EXPECT_EQ(without.words[0], '#');
}

TEST_P(ExportedItems, AreWrittenAndReadBack) {
    Item before, changed, after;
    before.pass(GetParam(), "acnpr", 0, 1);
    changed.real = before.real + 0.125;
    changed.pass(GetParam(), "acnpr", 1, 1);
    EXPECT_EQ(changed.code, 0);
    after.pass(GetParam(), "acnpr", 0, 1);
    EXPECT_EQ(after.real, before.real + 0.125);
    before.pass(GetParam(), "acnpr", 1, 1);
    Item coefficients;
    coefficients.pass(GetParam(), "afeq", 0, 1);
    EXPECT_EQ(coefficients.code, 0);
    EXPECT_GT(std::count_if(coefficients.array.begin(), coefficients.array.end(), [](double a) { return a != -1.0; }),
              15)
        << "the equation has more than twenty terms";
}

TEST_P(ExportedItems, UnknownOnesAndSlotsOutOfBoundsHaveTheirCodes) {
    Item unknown;
    unknown.pass(GetParam(), "speed", 0, 1);
    EXPECT_EQ(unknown.code, 1);
    EXPECT_NE(fieldOf(unknown.words, 255), std::string(255, ' '));
    Item nameless;
    nameless.pass(GetParam(), "", 0, 1);
    EXPECT_EQ(nameless.code, 1);
    Item outside;
    outside.pass(GetParam(), "tcrit", 0, 99);
    EXPECT_EQ(outside.code, 2);
}

}  // namespace
}  // namespace frigana::test
