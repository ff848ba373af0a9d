// Selectors, conversions, information and the clean-up of messages, on two made-up fluids.
#include "UTILITY.h"

#include <gtest/gtest.h>

#include "EngineSetUp.h"
#include "FluidFiles.h"
#include "Message.h"

namespace frigana {
namespace {

using test::words;

class Utility : public testing::Test {
  protected:
    void SetUp() override {
        modelTags = ModelTags();
        modelTags.NC = 2;
        fluidConstants = FluidConstants();
        fluidConstants.WMAS[1] = 40.0;
        fluidConstants.WMAS[2] = 100.0;
        fluidConstants.REOS[1] = 8.31;
        fluidConstants.REOS[2] = 8.35;
        x[1] = 0.25;
        x[2] = 0.75;
    }
    void TearDown() override {
        modelTags = ModelTags();
        fluidConstants = FluidConstants();
    }
    Composition x{};
    int ierr = 0, icomp = -1;
    Text255 herr;
};

TEST_F(Utility, PureFluidAmongComponents) {
    ISPURE(x, icomp);
    EXPECT_EQ(icomp, 0);
    ISPURE(unitComposition(2), icomp);
    EXPECT_EQ(icomp, 2);
    Composition nearly = unitComposition(1);
    nearly[1] = 1.0 - 0.9e-12;
    ISPURE(nearly, icomp);
    EXPECT_EQ(icomp, 1);
    nearly[1] = 1.0 - 1.1e-12;
    ISPURE(nearly, icomp);
    EXPECT_EQ(icomp, 0);
    modelTags.IPUREFLD = 2;
    ISPURE(unitComposition(1), icomp);
    EXPECT_EQ(icomp, 2) << "a selected component counts whatever x is";
    modelTags.NC = 1;
    ISPURE(x, icomp);
    EXPECT_EQ(icomp, 1) << "a single component counts first";
}

TEST_F(Utility, GasConstantOfAMixture) {
    RMIX(x);
    EXPECT_DOUBLE_EQ(fluidConstants.R, 0.25 * 8.31 + 0.75 * 8.35);
    RMIX(unitComposition(2));
    EXPECT_EQ(fluidConstants.R, 8.35);
    fluidConstants.REOS.fill(0.0);
    double rgas;
    RMIX2(x, rgas);
    EXPECT_EQ(rgas, 8.314472);
    EXPECT_EQ(fluidConstants.R, 8.35) << "RMIX2 leaves the constant in use";
}

TEST_F(Utility, MassFractions) {
    Composition mass, back;
    double molarMass;
    XMASS(x, mass, molarMass);
    EXPECT_DOUBLE_EQ(molarMass, 85.0);
    EXPECT_DOUBLE_EQ(mass[1], 10.0 / 85.0);
    EXPECT_DOUBLE_EQ(mass[2], 75.0 / 85.0);
    XMOLE(mass, back, molarMass);
    EXPECT_DOUBLE_EQ(molarMass, 85.0);
    EXPECT_DOUBLE_EQ(back[1], 0.25);
    EXPECT_DOUBLE_EQ(back[2], 0.75);
    EXPECT_DOUBLE_EQ(WMOL(x), 85.0);

    Composition nearlyPure{};
    nearlyPure[1] = 1e-13;
    nearlyPure[2] = 1.0;
    XMASS(nearlyPure, mass, molarMass);
    EXPECT_EQ(mass[1], 0.0);
    EXPECT_EQ(mass[2], 1.0);
    EXPECT_EQ(molarMass, 100.0);
}

TEST_F(Utility, FractionsOfFluidsWithoutMass) {
    fluidConstants.WMAS.fill(0.0);
    Composition converted;
    double molarMass;
    XMASS(x, converted, molarMass);
    EXPECT_EQ(converted[1], 0.0);
    XMOLE(x, converted, molarMass);
    EXPECT_EQ(converted[1], 0.0);
    EXPECT_EQ(molarMass, 0.0);
}

TEST_F(Utility, MolarAndMassQualityAreInverse) {
    Composition liquid{}, vapor{}, massLiquid, massVapor, moleLiquid, moleVapor;
    liquid[1] = 0.1;
    liquid[2] = 0.9;
    vapor[1] = 0.8;
    vapor[2] = 0.2;
    for (const double q : {0.0, 0.3, 0.77, 1.0}) {
        double qmass, qmole, ml, mv;
        QMASS(q, liquid, vapor, qmass, massLiquid, massVapor, ml, mv, ierr, herr);
        EXPECT_EQ(ierr, 0);
        EXPECT_DOUBLE_EQ(ml, 94.0);
        EXPECT_DOUBLE_EQ(mv, 52.0);
        EXPECT_DOUBLE_EQ(qmass, q * 52.0 / (q * 52.0 + (1.0 - q) * 94.0));
        QMOLE(qmass, massLiquid, massVapor, qmole, moleLiquid, moleVapor, ml, mv, ierr, herr);
        EXPECT_EQ(ierr, 0);
        EXPECT_NEAR(qmole, q, 1e-15);
        EXPECT_NEAR(moleVapor[1], 0.8, 1e-15);
    }
}

TEST_F(Utility, QualityOfFluidsWithoutMassIsTakenAsItIs) {
    fluidConstants.WMAS.fill(0.0);
    Composition a, b;
    double q = 7.0, ml, mv;
    QMASS(0.3, x, x, q, a, b, ml, mv, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(q, 0.3);
    q = 7.0;
    QMOLE(0.4, x, x, q, a, b, ml, mv, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(q, 0.4);
}

TEST_F(Utility, QualityOutOfRange) {
    Composition a, b;
    double q, ml, mv;
    for (const double outside : {-2e-8, 1.00000002, 998.0, -998.0}) {
        QMASS(outside, x, x, q, a, b, ml, mv, ierr, herr);
        EXPECT_EQ(ierr, -19);
        EXPECT_EQ(q, outside);
        EXPECT_EQ(words(herr), "[QMASS warning 19] input quality out of range");
        QMOLE(outside, x, x, q, a, b, ml, mv, ierr, herr);
        EXPECT_EQ(ierr, -19);
        EXPECT_EQ(q, outside);
        EXPECT_EQ(words(herr), "[QMOLE warning 19] input quality out of range");
    }
    QMASS(-0.9e-8, x, x, q, a, b, ml, mv, ierr, herr);
    EXPECT_EQ(ierr, 0);
    QMASS(1.000000009, x, x, q, a, b, ml, mv, ierr, herr);
    EXPECT_EQ(ierr, 0);
}

TEST_F(Utility, ConstantsOfAComponent) {
    FluidConstants& f = fluidConstants;
    f.TTPN[2] = 100.0;
    f.TNBP[2] = 200.0;
    f.TCRIT[2] = 300.0;
    f.PCRIT[2] = 4000.0;
    f.DCRIT[2] = 5.0;
    f.ZCRIT[2] = 0.3;
    f.ACCEN[2] = 0.2;
    f.DIPOLE[2] = 1.5;
    double m, tt, tb, tc, pc, dc, zc, acentric, dipole, r;
    INFO(2, m, tt, tb, tc, pc, dc, zc, acentric, dipole, r);
    EXPECT_EQ(m, 100.0);
    EXPECT_EQ(tt, 100.0);
    EXPECT_EQ(tb, 200.0);
    EXPECT_EQ(tc, 300.0);
    EXPECT_EQ(pc, 4000.0);
    EXPECT_EQ(dc, 5.0);
    EXPECT_EQ(zc, 0.3);
    EXPECT_EQ(acentric, 0.2);
    EXPECT_EQ(dipole, 1.5);
    EXPECT_EQ(r, 8.35);
    f.WMAS[-2] = 17.0;
    INFO(-2, m, tt, tb, tc, pc, dc, zc, acentric, dipole, r);
    EXPECT_EQ(m, 17.0);
}

TEST_F(Utility, ConstantsBeyondTheComponentsAreZeroAndTheGasConstant) {
    fluidConstants.R = 8.3;
    fluidConstants.WMAS[3] = 55.0;
    for (const int slot : {3, -3, 20}) {
        double m, tt, tb, tc, pc, dc, zc, acentric, dipole, r;
        INFO(slot, m, tt, tb, tc, pc, dc, zc, acentric, dipole, r);
        for (const double value : {m, tt, tb, tc, pc, dc, zc, acentric, dipole}) EXPECT_EQ(value, 0.0);
        EXPECT_EQ(r, 8.3);
    }
}

TEST_F(Utility, NamesOfAComponent) {
    fluidFiles.HNAME[1] = "shortname";
    fluidFiles.HNAM80[1].assign(std::string(80, 'n') + "beyond");
    fluidFiles.HCAS[1] = "1-2-3";
    Text12 name, cas;
    FixedText<80> full;
    NAME(1, name, full, cas);
    EXPECT_EQ(name, "shortname");
    EXPECT_EQ(full, std::string(80, 'n'));
    EXPECT_EQ(cas, "1-2-3");
    NAME(3, name, full, cas);
    EXPECT_EQ(name, "not defined");
    EXPECT_EQ(full, "not defined");
    EXPECT_EQ(cas, "not defined");
}

struct MessageCase {
    std::string_view raw, tidy;
};

TEST_F(Utility, MessagesAreTidied) {
    using namespace std::string_view_literals;
    const MessageCase cases[] = {
        {"T =   300.0   K, P =   1.0   MPa", "T =   300.0 K, P =   1.0 MPa"},
        {"h =   1.0   J/mol", "h =   1.0 J/mol"},
        {"D =   1.0   mol/L; next", "D =   1.0 mol/L; next"},
        {"x =0.5", "x = 0.5"},
        {"only;   ", "only"},
        {"end; \0", "end \0"sv},
        {"plain", "plain"},
    };
    for (const MessageCase& c : cases) {
        herr = c.raw;
        ERRMSG(1, herr);
        EXPECT_EQ(words(herr), words(Text255(c.tidy))) << c.raw;
    }
    message(herr, "a;", " ", nullCharacter);
    ERRMSG(1, herr);
    EXPECT_EQ(words(herr), "a");
    message(herr, "a;", "  ", nullCharacter);
    ERRMSG(1, herr);
    EXPECT_EQ(words(herr), "a");
}

TEST_F(Utility, AtMostTenChangesOfAMessage) {
    std::string raw, tidy;
    for (int i = 0; i < 12; ++i) {
        raw += "1   K,";
        tidy += i < 10 ? "1 K," : "1   K,";
    }
    herr.assign(raw);
    ERRMSG(1, herr);
    EXPECT_EQ(words(herr), tidy);
}

TEST_F(Utility, MessagesArePrintedByLevel) {
    struct Row {
        int level, code;
        const char* printed;
    };
    const Row rows[] = {
        {0, 5, ""},
        {1, 5, "text (ierr=   5)\n"},
        {1, -5, ""},
        {-1, -5, "text (ierr=  -5)\n"},
        {-1, 5, "text (ierr=   5)\n"},
        {1, 0, ""},
    };
    for (const Row& row : rows) {
        modelTags.IPRINTERR = row.level;
        message(herr, "text", nullCharacter);
        testing::internal::CaptureStdout();
        ERRMSG(row.code, herr);
        std::fflush(stdout);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), row.printed) << row.level << " " << row.code;
    }
    modelTags.IPRINTERR = 0;
}

TEST_F(Utility, UpperCase) {
    Text255 text = "abcXYZ-z1 {|}~`@[";
    UCASE(text, 7);
    EXPECT_EQ(words(text), "ABCXYZ-z1 {|}~`@[");
    UCASE(text, 1000);
    EXPECT_EQ(words(text), "ABCXYZ-Z1 {|}~`@[");
}

}  // namespace
}  // namespace frigana
