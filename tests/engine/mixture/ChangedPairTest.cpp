// Changing the parameters of a pair, reading them back, and mixture files with real fluids.
#include <cstdio>

#include "MixtureSetUp.h"
#include "PREOS.h"
#include "SETKTV.h"
#include "SaturationSpline.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana::test {
namespace {

class ChangedPair : public MixtureSetUp {
  protected:
    int change(int i, int j, const char* tag, const MixNumbers& numbers) {
        Text255 file(std::string_view{parameters});
        SETKTV(i, j, tag, numbers, file, ierr, herr);
        return ierr;
    }
    struct Told {
        Text3 tag;
        MixNumbers numbers;
        Text255 file, citation, rule;
        MixNames names;
    };
    static Told ask(int i, int j) {
        Told told;
        GETKTV(i, j, told.tag, told.numbers, told.file, told.names, told.citation, told.rule);
        return told;
    }
    static double pressure(const Composition& x) {
        double p = 0.0;
        PRESS(300.0, 12.0, x, p);
        return p;
    }
    const std::string parameters = dataFile("HMX.BNC");
    const Composition x = fractions({0.4, 0.6});
};

TEST_F(ChangedPair, ParametersOfTheFileAreReadBack) {
    ASSERT_EQ(setUp({"R125", "R32"}), 0) << message();
    const Told told = ask(1, 2);
    EXPECT_EQ(told.tag, "LJ1");
    EXPECT_EQ(told.numbers[1], 28.95);
    EXPECT_EQ(told.numbers[2], -0.006008);
    EXPECT_EQ(told.names[1], "zeta");
    EXPECT_EQ(told.names[4], "beta");
    EXPECT_EQ(told.file, std::string_view(parameters));
    EXPECT_EQ(trimRight(told.rule.slice(3, 255)), "R32 + R125");
    EXPECT_EQ(words(told.citation), "R32 + R125\\Lemmon and Jacobsen, J. Phys. Chem. Ref. Data 33, 593-620 (2004)");
}

TEST_F(ChangedPair, ParametersOfAReversedPairAreReadBackInTheOrderOfTheFile) {
    for (const Names& names : {Names{"R32", "R1234YF"}, Names{"R1234YF", "R32"}}) {
        ASSERT_EQ(setUp(names), 0) << message();
        constexpr double file[] = {1.011011, 0.966965, 1.007852, 1.037663, 1.0};
        for (const Told& told : {ask(1, 2), ask(2, 1)})
            for (int k = 1; k <= 5; ++k) EXPECT_EQ(told.numbers[k], file[k - 1]) << k;
    }
}

// The changed blend is that of a file which holds the new record.
TEST_F(ChangedPair, AnotherRuleTakesItsTermsFromTheFile) {
    const MixNumbers numbers = {{1.01, 0.98, 1.02, 1.03, 0.5, 0.0}};
    std::string other = readFile(parameters);
    const std::string record = "75-10-5/354-33-6          LJ1  28.95  -0.006008  1.0  1.0  1.0  0.0";
    const std::size_t at = other.find(record);
    ASSERT_NE(at, std::string::npos);
    other.replace(at, record.size(), "75-10-5/354-33-6          KW1  1.01  0.98  1.02  1.03  0.5  0.0");
    ASSERT_EQ(setUp({"R32", "R125"}, write("OTHER.BNC", other)), 0) << message();
    const double expected = pressure(x);

    ASSERT_EQ(setUp({"R32", "R125"}), 0);
    const double original = pressure(x);
    EXPECT_GT(std::fabs(original - expected), 1.0);
    saturationSpline.SPLINEREADY = true;
    EXPECT_EQ(change(1, 2, "KW1", numbers), 0) << message();
    EXPECT_FALSE(saturationSpline.SPLINEREADY) << "an envelope of other parameters";
    EXPECT_EQ(pressure(x), expected);
    const Told told = ask(2, 1);
    EXPECT_EQ(told.tag, "KW1");
    for (int k = 1; k <= 6; ++k) EXPECT_EQ(told.numbers[k], numbers[k]);
    EXPECT_EQ(words(told.citation),
              "The binary parameter(s) for (R32+R125) have been modified from their original values.");
    EXPECT_EQ(told.names[1], "betaT");

    // and those of the file come back
    for (const char* reset : {"RST", "rst"}) {
        Text255 name;
        SETKTV(0, 0, reset, MixNumbers{}, name, ierr, herr);
        EXPECT_EQ(ierr, 0) << message();
        EXPECT_EQ(name, std::string_view(parameters));
        EXPECT_EQ(pressure(x), original);
        EXPECT_EQ(ask(1, 2).tag, "LJ1");
    }
}

TEST_F(ChangedPair, NumbersAloneAreChangedWithoutTheFile) {
    ASSERT_EQ(setUp({"R32", "R125"}), 0);
    const double original = pressure(x);
    MixNumbers numbers = ask(1, 2).numbers;
    numbers[1] += 5.0;
    Text255 nowhere = "NOWHERE.BNC";
    SETKTV(1, 2, "LJ1", numbers, nowhere, ierr, herr);
    EXPECT_EQ(ierr, 0) << message();
    double Tr = 0.0, Dr = 0.0;
    REDHMX(x, Tr, Dr);
    EXPECT_NEAR(Tr, 0.4 * fluidConstants.TZ[1] + 0.6 * fluidConstants.TZ[2] + 33.95 * 0.24, 1e-12);
    EXPECT_NE(pressure(x), original);
    numbers[1] -= 5.0;
    SETKTV(2, 1, "LJ1", numbers, nowhere, ierr, herr);
    EXPECT_EQ(pressure(x), original);
}

// The estimate of the last composition is kept, with the gas constant that every question leaves behind.
TEST_F(ChangedPair, ThePressureAtTheEstimatedCriticalPointFollowsTheParameters) {
    ASSERT_EQ(setUp({"R32", "R125"}), 0);
    const Composition other = fractions({0.7, 0.3});
    const auto expectEstimate = [&](const Composition& z) {
        double T = 0.0, P = 0.0, D = 0.0, p = 0.0, R = 0.0;
        CRITP(z, T, P, D, ierr, herr);
        EXPECT_LE(ierr, 0) << message();
        RMIX2(z, R);
        EXPECT_EQ(fluidConstants.R, R);
        PRESS(1.1 * T, 0.1 * D, other, p);
        PRESS(T, D, z, p);
        EXPECT_NEAR(P, p, 1e-12 * p);
        return P;
    };
    const double original = expectEstimate(x);
    EXPECT_NE(expectEstimate(other), original);
    EXPECT_EQ(expectEstimate(x), original);
    pressure(other);
    EXPECT_EQ(expectEstimate(x), original);

    MixNumbers numbers = ask(1, 2).numbers;
    numbers[1] += 5.0;
    EXPECT_EQ(change(1, 2, "LJ1", numbers), 0) << message();
    EXPECT_GT(std::fabs(expectEstimate(x) - original), 1.0);
    numbers[1] -= 5.0;
    EXPECT_EQ(change(1, 2, "LJ1", numbers), 0) << message();
    EXPECT_EQ(expectEstimate(x), original);

    int choice = 1;
    PREOS(choice);
    expectEstimate(x);
    choice = 0;
    PREOS(choice);
    EXPECT_EQ(expectEstimate(x), original);
}

// A changed pair of a file of the other order keeps that order: the same numbers, the same mixture.
TEST_F(ChangedPair, AReversedPairIsChangedInTheOrderOfTheFile) {
    const MixNumbers numbers = {{1.02, 0.95, 1.01, 1.04, 1.0, 0.0}};
    double found[2] = {};
    for (const bool turned : {false, true}) {
        ASSERT_EQ(setUp(turned ? Names{"R1234YF", "R32"} : Names{"R32", "R1234YF"}), 0);
        EXPECT_EQ(change(1, 2, "KW6", numbers), 0) << message();
        PRESS(300.0, 9.0, turned ? fractions({0.3, 0.7}) : fractions({0.7, 0.3}), found[turned ? 1 : 0]);
    }
    EXPECT_NEAR(found[0], found[1], 1e-12 * std::fabs(found[0]));
}

// A tag of which the file has no terms is refused, and the pair stays as it was.
TEST_F(ChangedPair, ARuleThatTheFileDoesNotHaveIsRefused) {
    ASSERT_EQ(setUp({"R32", "R125"}), 0);
    const Told before = ask(1, 2);
    const double original = pressure(x);
    for (const char* tag : {"LJ5", "KWZ", "LM1", "XYZ", "TR2"}) {
        EXPECT_EQ(change(1, 2, tag, {{1.0, 0.9, 1.1, 1.2, 1.0, 0.5}}), -117) << tag;
        EXPECT_EQ(message(), "[SETKTV warning -117] mixing rule not found") << tag;
        for (const Told& after : {ask(1, 2), ask(2, 1)}) {
            EXPECT_EQ(after.tag, "LJ1");
            EXPECT_EQ(after.citation, before.citation);
            EXPECT_EQ(after.file, before.file);
            for (int k = 1; k <= 6; ++k) EXPECT_EQ(after.numbers[k], before.numbers[k]);
        }
        EXPECT_EQ(mixingParameters.pair[2][1].NAMIX, 8);
        EXPECT_EQ(pressure(x), original);
    }
}

// The linear rule has no departure function to be found.
TEST_F(ChangedPair, TheLinearRuleNeedsNoTerms) {
    ASSERT_EQ(setUp({"R32", "R125"}), 0);
    EXPECT_EQ(change(1, 2, "LIN", {{1.02, 0.99, 0.0, 1.0, 1.0, 0.0}}), 0) << message();
    EXPECT_EQ(ask(1, 2).tag, "LIN");
    double Tr = 0.0, Dr = 0.0;
    REDHMX(x, Tr, Dr);
    const double Ti = fluidConstants.TZ[1], Tj = fluidConstants.TZ[2];
    EXPECT_NEAR(Tr, 0.4 * Ti + 0.6 * Tj + 0.24 * 0.02 * (Ti + Tj), 1e-11);
    EXPECT_EQ(PHIMIX(1, 2, 0, 1, 1.2, 0.8, x), 0.0);
}

// A rule that is not known is told by the trace alone, since these two have no code to give back.
TEST_F(ChangedPair, AnUnknownRuleIsTold) {
    ASSERT_EQ(setUp({"R32", "R125"}), 0);
    mixingParameters.pair[1][2].HMODMX = "QQQ";
    modelTags.IPRINTERR = -1;
    testing::internal::CaptureStdout();
    const Told pairTold = ask(1, 2);
    Told ruleTold;
    GETFIJ("QQQ", ruleTold.numbers, ruleTold.names, ruleTold.rule);
    std::fflush(stdout);
    modelTags.IPRINTERR = 0;
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "[GETKTV error 117] mixing rule not found for components  1 +  2. (ierr=-117)\n"
              "[GETKTV error 117] mixing rule not found (ierr=-117)\n");
    EXPECT_TRUE(pairTold.rule.blank());
    EXPECT_EQ(ruleTold.numbers[1], 0.0);
}

TEST_F(ChangedPair, DescriptionsOfTheRulesOfTheFile) {
    ASSERT_EQ(setUp({"R32", "R125"}), 0);
    Told told;
    GETFIJ("KW0", told.numbers, told.names, told.rule);
    EXPECT_EQ(told.numbers[1], 1.0);
    EXPECT_EQ(told.numbers[5], 0.0);
    EXPECT_EQ(told.names[2], "gammaT");
    GETFIJ("LJ2", told.numbers, told.names, told.rule);
    EXPECT_EQ(told.numbers[1], 0.0);
    EXPECT_EQ(trimRight(told.rule.slice(3, 255)), "R32 + R134a");
}

// ---- mixture files ----------------------------------------------------------------------------------------------

struct MixtureRow {
    const char* what;
    std::string fractions;
    int flag, code;
    double first;
    const char* text;
};

TEST_F(ChangedPair, MixtureFilesAreNormalizedAndTold) {
    constexpr const char* normalized =
        "[SETMIX error -103] The composition of the mixture does not sum to one. The compositions have been "
        "normalized.";
    constexpr const char* ignored =
        "[SETMIX error -102] The mixture file contains updated binary interaction parameters which have been ignored.";
    const MixtureRow rows[] = {
        {"as it should be", "0.4\n0.6\n", 0, 0, 0.4, ""},
        {"sum below one", "0.2\n0.3\n", 0, -103, 0.4, normalized},
        {"sum above one", "4\n6\n", 0, -103, 0.4, normalized},
        {"just above single precision", "0.40000011\n0.6\n", 0, -103, 0.40000011 / 1.00000011, normalized},
        {"within single precision", "0.40000009\n0.6\n", 0, 0, 0.40000009, ""},
        {"nothing to normalize", "0\n0\n", 0, 0, 0.0, ""},
        {"updated parameters", "0.4\n0.6\n", 1, -102, 0.4, ignored},
        {"both", "0.2\n0.3\n", 2, -102, 0.4, ignored},
    };
    for (const MixtureRow& row : rows) {
        SCOPED_TRACE(row.what);
        renew();
        const std::string file = write("BLEND.MIX", "a blend\n 72.0 345.0 4900.0 6.8\n 2\nR32.FLD\nR125.FLD\n" +
                                                        row.fractions + std::to_string(row.flag) + "\n");
        Text3 reference = "NA";
        FileNames files{};
        Composition z{};
        int nc = 0;
        SETMIX(std::string_view(file), std::string_view(parameters), reference, nc, files, z, ierr, herr);
        EXPECT_EQ(ierr, row.code);
        EXPECT_EQ(message(), row.text);
        EXPECT_EQ(nc, 2);
        EXPECT_EQ(z[1], row.first);
        EXPECT_EQ(files[2], std::string_view(dataFile("R125.FLD")));
    }
}

TEST_F(ChangedPair, TheCodeOfASetUpComesBeforeThatOfTheMixtureFile) {
    const std::string file =
        write("BLEND.MIX", "a blend\n 72.0 345.0 4900.0 6.8\n 2\nR227EA.FLD\nCF3I.FLD\n 0.2\n 0.3\n 1\n");
    Text3 reference = "NA";
    FileNames files{};
    Composition z{};
    int nc = 0;
    SETMIX(std::string_view(file), std::string_view(parameters), reference, nc, files, z, ierr, herr);
    EXPECT_EQ(ierr, -117);
    EXPECT_EQ(z[1], 0.4);
}

}  // namespace
}  // namespace frigana::test
