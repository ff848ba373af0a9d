#include <cmath>

#include "DISPATCH.h"
#include "FluidText.h"

namespace frigana::test {
namespace {

class ModelChoice : public EngineTest {};

TEST_F(ModelChoice, NumbersOfComponentsOutOfBoundsAreRefused) {
    for (const int nc : {0, 21, -1, 100000}) {
        ComponentArray<Text3> tags{};
        SETMOD(nc, "EOS", "HMX", tags, ierr, herr);
        EXPECT_EQ(ierr, 113) << nc;
        EXPECT_EQ(message(), "[SETUP error 113] number of components out of bounds");
    }
    EXPECT_EQ(modelTags.NCMOD, 0);
}

TEST_F(ModelChoice, TagsOfAnEquationAreNormalisedAtTheTop) {
    struct Row {
        const char *model, *top;
    };
    constexpr Row rows[] = {{"FEQ", "FEQ"}, {"FEK", "FEQ"}, {"FEX", "FEQ"}, {"QU1", "QUI"},
                            {"BWX", "BWR"}, {"EC1", "ECS"}, {"PR", "PR"}};
    for (const Row& row : rows) {
        ASSERT_EQ(force("EOS", "HMX", {row.model}), 0);
        EXPECT_EQ(modelTags.HEOS, row.top);
        EXPECT_EQ(modelTags.HMXEOS[1], row.model);
    }
    ASSERT_EQ(force("eos", "HMX", {"FEQ", "BWR"}), 0);
    EXPECT_EQ(modelTags.HEOS, "HMX");
    EXPECT_EQ(modelTags.HMXEOS[1], "FEQ");
    EXPECT_EQ(modelTags.HMXEOS[2], "BWR");
    EXPECT_EQ(modelTags.HMXEOS[3], "NBS");
}

TEST_F(ModelChoice, EachPropertyHasItsTags) {
    ASSERT_EQ(force("ETA", "ECS", {"VS1"}), 0);
    EXPECT_EQ(modelTags.HETATOP, "VS1");
    EXPECT_EQ(modelTags.HETA[1], "VS1");
    ASSERT_EQ(force("vis", "ECS", {"VS2", "VS3"}), 0);
    EXPECT_EQ(modelTags.HETATOP, "ECS");
    EXPECT_EQ(modelTags.HETA[2], "VS3");
    ASSERT_EQ(force("TCX", "ECS", {"TC1"}), 0);
    EXPECT_EQ(modelTags.HTCXTOP, "TC1");
    EXPECT_EQ(modelTags.HTCX[1], "TC1");
    ASSERT_EQ(force("stn", "STH", {"ST1", "ST1"}), 0);
    EXPECT_EQ(modelTags.HSTNTOP, "STH");
    EXPECT_EQ(modelTags.HSTENK[2], "ST1");
    EXPECT_EQ(modelTags.HEOS, "NBS");
    ASSERT_EQ(force("XXX", "HMX", {"FEQ"}), 0) << "a property without models is no error";
    EXPECT_EQ(modelTags.HMXEOS[1], "NBS");
}

TEST_F(ModelChoice, TheDefaultsComeBack) {
    ASSERT_EQ(force("EOS", "HMX", {"BWR"}), 0);
    ASSERT_EQ(force("TCX", "ECS", {"TC1"}), 0);
    EXPECT_EQ(modelTags.HMXEOS[1], "BWR") << "a second choice keeps the first";
    ComponentArray<Text3> tags;
    tags.fill("BWR");
    SETMOD(1, "NBS", "HMX", tags, ierr, herr);
    EXPECT_EQ(modelTags.HEOS, "NBS");
    EXPECT_EQ(modelTags.HMXEOS[1], "NBS");
    EXPECT_EQ(modelTags.HTCX[1], "NBS");
    EXPECT_EQ(modelTags.HTCXCR[1], "NUL");
    EXPECT_EQ(tags[1], "NBS");
    EXPECT_EQ(tags[20], "NBS");
}

TEST_F(ModelChoice, CitationsAreReadBack) {
    fluidFiles.HIEOS[1] = "FEQequation";
    fluidFiles.HICP0[1] = "CPPheat capacity";
    fluidFiles.HIETA[1] = "VS1viscosity";
    fluidFiles.HIETAC[1] = "CI1collision integral";
    fluidFiles.HITCX[1] = "TC1conductivity";
    fluidFiles.HITCXC[1] = "TK3enhancement";
    fluidFiles.HISTN[1] = "ST1surface tension";
    fluidFiles.HIDIEL[1] = "DE3dielectric constant";
    fluidFiles.HIMELT[1] = "ML1melting line";
    fluidFiles.HISUBL[1] = "SB3sublimation line";
    fluidFiles.HIPS[1] = "PS5vapor pressure";
    fluidFiles.HIDL[1] = "DL1liquid density";
    fluidFiles.HIDV[1] = "DV3vapor density";
    struct Row {
        const char *property, *code, *text;
    };
    constexpr Row rows[] = {
        {"EOS", "FEQ", "FEQequation"},
        {"eos", "FEQ", "FEQequation"},
        {"CP0", "CPP", "CPPheat capacity"},
        {"cp0", "CPP", "CPPheat capacity"},
        {"Cp0", "CPP", "CPPheat capacity"},
        {"cpo", "CPP", "CPPheat capacity"},
        {"ETA", "VS1", "VS1viscosity"},
        {"VIS", "VS1", "VS1viscosity"},
        {"vsk", "CI1", "CI1collision integral"},
        {"TCX", "TC1", "TC1conductivity"},
        {"TKK", "TK3", "TK3enhancement"},
        {"stn", "ST1", "ST1surface tension"},
        {"DE ", "DE3", "DE3dielectric constant"},
        {"MLT", "ML1", "ML1melting line"},
        {"sbl", "SB3", "SB3sublimation line"},
        {"PS ", "PS5", "PS5vapor pressure"},
        {"dl ", "DL1", "DL1liquid density"},
        {"DV ", "DV3", "DV3vapor density"},
        {"dV ", "DV3", "DV3vapor density"},
    };
    for (const Row& row : rows) {
        Text3 code;
        Text255 text;
        GETMOD(1, row.property, code, text);
        EXPECT_EQ(code, row.code) << row.property;
        EXPECT_EQ(text, row.text) << row.property;
    }
}

TEST_F(ModelChoice, ThereIsNoCitationOfTheLiquidPressure) {
    fluidFiles.HIPL[1] = "PL1not told";
    for (const char* property : {"PL ", "pl ", "dv ", "xyz"}) {
        Text3 code;
        Text255 text = "ABCkept";
        GETMOD(1, property, code, text);
        EXPECT_EQ(text, "ABCkept") << property;
        EXPECT_EQ(code, "ABC") << property;
    }
}

TEST_F(ModelChoice, TheNaturalGasModelChoosesItsEquations) {
    GERG04(2, 1, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(modelTags.HEOS, "HMX");
    EXPECT_EQ(modelTags.HMXEOS[2], "FEK");
    GERG04(2, 0, ierr, herr);
    EXPECT_EQ(modelTags.HMXEOS[2], "DEF");
    GERG04(0, 0, ierr, herr);
    EXPECT_EQ(ierr, 113);
}

// ------------------------------------------------------------------------------------------------------ the dispatch

TEST_F(ModelChoice, AtNoDensityEveryDerivativeIsZero) {
    modelTags.NC = 1;
    for (const char* tag : {"FEQ", "BWR", "QUI", "ECS", "PR", "XYZ"}) {
        modelTags.HMXEOS[1] = modelTags.HEOS = tag;
        for (const double del : {1e-10, 0.0, -1.0})
            for (int itau = 0; itau <= 3; ++itau)
                for (int idel = 0; idel <= 3; ++idel) {
                    EXPECT_EQ(PHIK(1, itau, idel, 1.0, del), 0.0);
                    EXPECT_EQ(PHIX(itau, idel, 1.0, del, unitComposition(1)), 0.0);
                }
    }
    modelTags.NC = 2;
    modelTags.HEOS = "HMX";
    Composition x{};
    x[1] = x[2] = 0.5;
    EXPECT_EQ(PHIX(0, 1, 1.0, 1e-10, x), 0.0);
    EXPECT_EQ(PHIHMX(0, 1, 1.0, 1e-10, x), 0.0);
}

TEST_F(ModelChoice, AnUnknownTagHasNoHelmholtzEnergy) {
    modelTags.NC = 1;
    for (const char* tag : {"XYZ", "NBS", "NUL", "QU1", "BW1", "EC1", ""}) {
        modelTags.HMXEOS[1] = tag;
        EXPECT_EQ(PHIK(1, 0, 1, 1.0, 1.0), -9.99e99) << tag;
        EXPECT_EQ(PHIX(0, 1, 1.0, 1.0, unitComposition(1)), -9.99e99) << tag;
        double tz = 0.0, rhoz = 0.0;
        REDK(1, tz, rhoz);
        EXPECT_EQ(tz, 9.99e99) << tag;
        EXPECT_EQ(rhoz, 9.99e99) << tag;
        REDX(unitComposition(1), tz, rhoz);
        EXPECT_EQ(tz, 9.99e99) << tag;
    }
}

TEST_F(ModelChoice, AMixtureOfAnUnknownTopModelHasNone) {
    modelTags.NC = 2;
    Composition x{};
    x[1] = x[2] = 0.5;
    for (const char* tag : {"XYZ", "NBS", "FEQ"}) {
        modelTags.HEOS = tag;
        EXPECT_EQ(PHIX(0, 1, 1.0, 1.0, x), 0.0);
        double tz = 0.0, rhoz = 0.0;
        REDX(x, tz, rhoz);
        EXPECT_EQ(tz, 9.99e99);
        EXPECT_EQ(rhoz, 9.99e99);
    }
}

TEST_F(ModelChoice, ATagThatIsChangedDirectlyCountsAtOnce) {
    ASSERT_EQ(setUp({write("ONE.FLD", plainFile())}), 0) << message();
    const double value = PHIK(1, 0, 1, 1.2, 0.3);
    EXPECT_NE(value, 0.0);
    modelTags.HMXEOS[1] = "XYZ";
    EXPECT_EQ(PHIK(1, 0, 1, 1.2, 0.3), -9.99e99);
    for (const char* tag : {"FEK", "FEX", "FEQ"}) {
        modelTags.HMXEOS[1] = tag;
        EXPECT_EQ(PHIK(1, 0, 1, 1.2, 0.3), value) << tag;
    }
}

TEST_F(ModelChoice, TheTermsOfTheTestFluidAreSummed) {
    ASSERT_EQ(setUp({write("ONE.FLD", plainFile())}), 0) << message();
    const double tau = 1.2, del = 0.3;
    const double attractive = -1.5 * std::pow(tau, 1.5) * del;
    const double repulsive = 0.5 * std::pow(tau, 0.5) * del * del * std::exp(-del);
    EXPECT_NEAR(PHIK(1, 0, 0, tau, del), attractive + repulsive, 1e-15);
    EXPECT_NEAR(PHIK(1, 0, 1, tau, del), attractive + repulsive * (2.0 - del), 1e-15);
    EXPECT_NEAR(PHIK(1, 1, 0, tau, del), 1.5 * attractive + 0.5 * repulsive, 1e-15);
    double tz = 0.0, rhoz = 0.0;
    REDX(unitComposition(1), tz, rhoz);
    EXPECT_EQ(tz, 351.255);
    EXPECT_EQ(rhoz, 8.1500846);
}

TEST_F(ModelChoice, TheIdealGasOfAMixtureSumsItsComponents) {
    ASSERT_EQ(setUp({write("ONE.FLD", plainFile())}), 0) << message();
    // two components of one slot each would need a mixture: the sum over one fluid with a foreign fraction shows it too
    modelTags.NC = 2;
    modelTags.HMODCP[2] = "XX1";
    Composition x{};
    x[1] = 0.25;
    x[2] = 0.75;
    EXPECT_NEAR(CP0(300.0, x), 0.25 * CP0K(1, 300.0), 1e-12);
    const double mixing = 0.25 * std::log(0.25) + 0.75 * std::log(0.75);
    EXPECT_NEAR(PHI0(0, 0, 320.0, 2.0, x), 0.25 * PHI0K(1, 0, 0, 320.0, 2.0) + mixing, 1e-14);
    EXPECT_NEAR(PHI0(1, 0, 320.0, 2.0, x), 0.25 * PHI0K(1, 1, 0, 320.0, 2.0), 1e-14);
    x[1] = 1.0 - 1e-11;
    x[2] = 1e-11;  // a mixture by its fractions, but too little of the second for the sum
    EXPECT_NEAR(PHI0(0, 0, 320.0, 2.0, x), x[1] * PHI0K(1, 0, 0, 320.0, 2.0) + x[1] * std::log(x[1]), 1e-14);
}

TEST_F(ModelChoice, AComponentOfNoFractionIsLeftOutOfTheIdealGas) {
    ASSERT_EQ(setUp({write("ONE.FLD", plainFile())}), 0) << message();
    modelTags.NC = 3;
    Composition x{};
    x[1] = 0.5;
    x[2] = 0.5;
    modelTags.HMODCP[2] = modelTags.HMODCP[3] = "XX1";
    EXPECT_TRUE(std::isfinite(PHI0(0, 0, 320.0, 2.0, x)));
}

}  // namespace
}  // namespace frigana::test
