// Requests as records: what a positional text gives, and what is said of one that gives none.
#include "FilledRequest.h"

#include <gtest/gtest.h>

#include "NamedRequest.h"
#include "RunResult.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"

namespace frigana::catalogue {
namespace {

std::string refusal(const std::string& text) {
    FilledRequest filled;
    return readPositionalText(text, filled);
}

std::string settings(int count) {
    std::string lines;
    for (int k = 1; k <= count; ++k) lines += "1 0.5\n";
    return lines;
}

TEST(FilledRequest, WhatIsNoRequestIsTold) {
    EXPECT_EQ(refusal("3\n"), "there is no request of type 3 and sub-type 0");
    EXPECT_EQ(refusal("2\nTitle\nR134A.FLD\n2 DEF\n8\n0\n"), "there is no request of type 2 and sub-type 8");
    EXPECT_EQ(refusal("1\n1\n1\n1\nR134A.FLD\n1\nnone\n2 DEF\n8\n"), "there is no request of type 1 and sub-type 8");
    EXPECT_EQ(refusal("2\nTitle\nR134A.FLD\n2 DEF\n1\n10\n" + settings(10)), "the request has 10 parameters of 15");
    // Three stages have five parameters more than two.
    EXPECT_EQ(refusal("2\nTitle\nR134A.FLD\n2 DEF\n11\n21\n" + settings(15) + "3 0.0\n" + settings(5)),
              "the request has 21 parameters of 26");
    EXPECT_NE(refusal(""), "");
    EXPECT_NE(refusal("2\nTitle\n"), "");
    FilledRequest filled;
    EXPECT_EQ(readPositional(std::string(256, 'a') + ".fi1", filled), "the path is longer than 255 characters");
    EXPECT_NE(readPositional("no such folder/a.fi1", filled), "");
}

TEST(FilledRequest, LinesMayEndAsOnOtherSystems) {
    FilledRequest filled;
    ASSERT_EQ(
        readPositionalText("2\r\nCold store \r\nR134A.FLD\r\n2 IIR\r\n12\r\n7\r\n1 270\r\n2 5\r\n2 0\r\n1 0.01\r\n"
                           "1 0.7\r\n1 310\r\n2 2\r\n",
                           filled),
        "");
    EXPECT_EQ(filled.request->name, "minimal");
    EXPECT_EQ(filled.blocks.front().title, "Cold store");
    EXPECT_EQ(filled.blocks.front().fluid.referenceState, "IIR");
    EXPECT_EQ(filled.blocks.front().settings.size(), 7u);
    EXPECT_EQ(filled.stages(), 0);
    EXPECT_FALSE(filled.isSecondRun());
}

// A name that a bare text cannot hold stands in quotes.
TEST(FilledRequest, NamesOfEveryKindComeBack) {
    for (const char* name : {"mine", "two words", "a,b", "it's", "tab\there", ""}) {
        FilledRequest filled = typicalRequest(*findRequest("store-blend"));
        Fluid& fluid = filled.blocks.front().fluid;
        fluid.blendName = name;
        fluid.byMass = false;
        FilledRequest read;
        ASSERT_EQ(readPositionalText(positionalText(filled), read), "") << name;
        const Fluid& back = read.blocks.front().fluid;
        // Where there is none the place holds a word.
        EXPECT_EQ(back.blendName, *name == '\0' ? "none" : name);
        EXPECT_FALSE(back.byMass);
        ASSERT_EQ(back.components.size(), fluid.components.size());
        for (std::size_t i = 0; i < back.components.size(); ++i) {
            EXPECT_EQ(back.components[i].file, fluid.components[i].file);
            EXPECT_EQ(back.components[i].fraction, fluid.components[i].fraction);
        }
    }
}

TEST(FilledRequest, PicksMakeASecondRunAndTheFirstOneIsThatWithoutThem) {
    FilledRequest filled = typicalRequest(*findRequest("line-sizing"));
    EXPECT_FALSE(filled.isSecondRun());
    EXPECT_EQ(filled.countOf(0), 30);
    auto& given = filled.blocks.front().settings;
    given[29] = {2, 0.0};
    for (const int pipe : {4, 5, 3}) given.push_back({pipe, 0.0});
    EXPECT_TRUE(filled.isSecondRun());
    EXPECT_EQ(filled.countOf(0), 33);
    const FilledRequest first = filled.firstRun();
    EXPECT_FALSE(first.isSecondRun());
    EXPECT_EQ(positionalText(first), positionalText(typicalRequest(*findRequest("line-sizing"))));
    // A request that ends before the run is asked for is a first one.
    given.resize(20);
    EXPECT_FALSE(filled.isSecondRun());
}

TEST(FilledRequest, StagesCountTheirParameters) {
    FilledRequest filled = typicalRequest(*findRequest("multi-stage"));
    ASSERT_EQ(filled.stages(), 3);
    EXPECT_EQ(filled.countOf(0), 16 + 2 * 5);
    filled.blocks.front().settings[15].option = 9;  // more than there is room for
    EXPECT_EQ(filled.countOf(0), 16 + 6 * 5);
    filled.blocks.front().settings[15].option = 1;
    EXPECT_EQ(filled.countOf(0), 16);
    filled.blocks.front().settings.resize(10);
    EXPECT_EQ(filled.stages(), 0);
}

}  // namespace
}  // namespace frigana::catalogue
