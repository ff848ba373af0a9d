#include "FluidText.h"
#include "MIX_HMX.h"
#include "SETKTV.h"

namespace frigana::test {
namespace {

// A set of pairs put into the block by hand: what is tested is how the numbers are changed and told.
class BinaryParameters : public EngineTest {
  protected:
    void SetUp() override {
        EngineTest::SetUp();
        mixingParameters = MixingParameters();
        modelTags.NC = 3;
        fluidFiles.HNAME[1] = "R32";
        fluidFiles.HNAME[2] = "R125";
        fluidFiles.HNAME[3] = "R134a";
        for (int i = 1; i <= 3; ++i)
            for (int j = 1; j <= 3; ++j) {
                mixingParameters.pair[i][j].HMODMX = "KW0";
                mixingParameters.pair[i][j].FMIX.fill(1.0);
                mixingParameters.pair[i][j].FMIX2.fill(1.0);
            }
        mixingParameters.rules = 1;
        mixingParameters.rule[1].HRULE = "KW0 no departure function";
        mixingParameters.rule[1].HBPAR[1] = "betaT";
        mixingParameters.rule[1].BIDEAL.fill(1.0);
        mixingParameters.HMFILE[0] = "HMX.BNC";
        for (int k = 1; k <= 3; ++k) mixingParameters.HMFILE[k] = "HMX.BNC";
    }
    void TearDown() override {
        mixingParameters = MixingParameters();
        EngineTest::TearDown();
    }
    int change(int i, int j, const char* ruleTag, const MixNumbers& values) {
        Text255 name = "HMX.BNC";
        SETKTV(i, j, ruleTag, values, name, ierr, herr);
        return ierr;
    }
    MixNumbers ask(int i, int j) {
        MixNumbers told;
        GETKTV(i, j, tag, told, file, names, citation, rule);
        return told;
    }
    static constexpr MixNumbers numbers = {{1.01, 0.98, 1.02, 1.03, 0.5, 0.0}};
    Text3 tag;
    Text255 file, citation, rule;
    MixNames names;
};

TEST_F(BinaryParameters, PairsAreNumberedRowByRow) {
    int expected = 0;
    for (int a = 1; a < 20; ++a)
        for (int b = a + 1; b <= 20; ++b) {
            EXPECT_EQ(pairNumber(a, b, 20), ++expected);
            EXPECT_EQ(pairNumber(b, a, 20), expected);
        }
    EXPECT_EQ(expected, 190);
    EXPECT_EQ(pairNumber(2, 3, 3), 3);
    EXPECT_EQ(pairNumber(2, 2, 3), 0);
}

TEST_F(BinaryParameters, ASymmetricPairIsChangedWithAWarning) {
    referenceState.IXREFSAVE = 1;
    EXPECT_EQ(change(1, 3, "KW0", numbers), -114);
    EXPECT_EQ(message(),
              "[SETKTV warning -114] there is a possibility that the mixture parameters are set incorrectly if the "
              "fluid order is different from that in the HMX.BNC file.");
    EXPECT_EQ(referenceState.IXREFSAVE, 0);
    for (int k = 1; k <= 6; ++k) {
        EXPECT_EQ(mixingParameters.pair[1][3].FMIX[k], numbers[k]);
        EXPECT_EQ(mixingParameters.pair[3][1].FMIX[k], numbers[k]);
        EXPECT_EQ(ask(1, 3)[k], numbers[k]);
        EXPECT_EQ(ask(3, 1)[k], numbers[k]);
        EXPECT_EQ(ask(1, 2)[k], 1.0);
    }
    ask(1, 3);
    EXPECT_EQ(tag, "KW0");
    EXPECT_EQ(citation, "The binary parameter(s) for (R32+R134a) have been modified from their original values.");
    EXPECT_EQ(file, "HMX.BNC");
    EXPECT_EQ(names[1], "betaT");
    EXPECT_EQ(trimRight(rule.slice(2, 255)), "no departure function");
}

TEST_F(BinaryParameters, APairInTheOrderOfTheFileIsChangedWithoutAWord) {
    for (MixingPair* pair : {&mixingParameters.pair[1][2], &mixingParameters.pair[2][1]}) pair->FMIX[1] = 1.005;
    EXPECT_EQ(change(1, 2, "KW0", numbers), 0) << message();
    EXPECT_EQ(mixingParameters.pair[1][2].FMIX[1], 1.01);
    EXPECT_EQ(mixingParameters.pair[1][2].FMIX2[1], 1.0);
}

TEST_F(BinaryParameters, APairThatTheFileHoldsReversedKeepsItsOrder) {
    for (MixingPair* pair : {&mixingParameters.pair[1][2], &mixingParameters.pair[2][1]}) pair->FMIX2[3] = 1.005;
    EXPECT_EQ(change(1, 2, "KW0", numbers), 0) << message();
    for (const MixingPair* pair : {&mixingParameters.pair[1][2], &mixingParameters.pair[2][1]}) {
        EXPECT_EQ(pair->FMIX[1], 1.0);
        EXPECT_EQ(pair->FMIX[2], 0.98);
        EXPECT_EQ(pair->FMIX[3], 1.0);
        EXPECT_EQ(pair->FMIX[4], 1.03);
        EXPECT_EQ(pair->FMIX2[1], 1.01);
        EXPECT_EQ(pair->FMIX2[3], 1.02);
    }
    for (int k = 1; k <= 6; ++k) EXPECT_EQ(ask(1, 2)[k], numbers[k]) << k;
}

TEST_F(BinaryParameters, PairsThatAreNoneAreRefused) {
    for (const auto& [i, j] : {std::pair{1, 4}, std::pair{4, 1}, std::pair{0, 1}, std::pair{21, 22}}) {
        EXPECT_EQ(change(i, j, "KW0", numbers), -113);
        EXPECT_EQ(message(), "[SETKTV warning -113] i > nc and/or j > nc");
    }
    EXPECT_EQ(change(2, 2, "KW0", numbers), -113);
    EXPECT_EQ(message(), "[SETKTV warning -113] binary parameters for i = j cannot be changed.");
    modelTags.NC = 1;
    EXPECT_EQ(change(1, 1, "KW0", numbers), -113);
    EXPECT_EQ(message(), "[SETKTV warning -113] binary parameters for i = j cannot be changed.");
    EXPECT_EQ(mixingParameters.pair[2][2].FMIX[1], 1.0);
}

TEST_F(BinaryParameters, ANewRuleIsSoughtInTheFile) {
    Text255 missing = "nowhere.bnc";
    SETKTV(1, 2, "LJ1", numbers, missing, ierr, herr);
    EXPECT_EQ(ierr, 111);
    EXPECT_EQ(message(), "[SETKTV error 111] error in opening mixture file; filename = (nowhere.bnc" +
                             std::string(69, ' ') + ").");
    EXPECT_EQ(mixingParameters.pair[1][2].HMODMX, "LJ1");
    EXPECT_EQ(mixingParameters.pair[2][1].HMODMX, "LJ1");
}

TEST_F(BinaryParameters, OneComponentWithItselfIsTrivial) {
    ask(2, 2);
    EXPECT_EQ(citation, "trivial case--identical components");
    modelTags.NC = 1;
    ask(1, 1);
    EXPECT_EQ(citation, "trivial case--identical components");
}

TEST_F(BinaryParameters, PairsThatAreNoneHaveNoParameters) {
    for (const auto& [i, j] : {std::pair{0, 1}, std::pair{1, 0}, std::pair{4, 1}, std::pair{1, 4}, std::pair{-1, 2}}) {
        const MixNumbers none = ask(i, j);
        for (const double value : none) EXPECT_EQ(value, 0.0) << i << ' ' << j;
        EXPECT_EQ(citation, "") << i << ' ' << j;
        EXPECT_TRUE(rule.blank()) << i << ' ' << j;
    }
}

// A pair whose rule the file does not describe still tells its numbers.
TEST_F(BinaryParameters, ARuleWithoutADescriptionIsToldByItsNumbers) {
    for (MixingPair* pair : {&mixingParameters.pair[1][2], &mixingParameters.pair[2][1]}) {
        pair->HMODMX = "XYZ";
        pair->FMIX[3] = 0.25;
    }
    EXPECT_EQ(ask(1, 2)[3], 0.25);
    EXPECT_TRUE(rule.blank());
}

TEST_F(BinaryParameters, RulesAreDescribedByTheirTag) {
    MixNumbers ideal;
    GETFIJ("KW0", ideal, names, rule);
    EXPECT_EQ(ideal[1], 1.0);
    EXPECT_EQ(names[1], "betaT");
    GETFIJ("XYZ", ideal, names, rule);
    EXPECT_EQ(ideal[1], 0.0);
    EXPECT_TRUE(rule.blank());
}

}  // namespace
}  // namespace frigana::test
