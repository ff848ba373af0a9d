// Items of the engine by name, characteristic curves, filling of containers.
#include <cmath>

#include "CORE_CPP.h"
#include "CORE_FEQ.h"
#include "CORE_PH0.h"
#include "CORE_PR.h"
#include "CURVES.h"
#include "DISPATCH.h"
#include "DOTFILL.h"
#include "EngineSetUp.h"
#include "FluidConstants.h"
#include "ModelTags.h"
#include "PASSCMN.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"
#include "SaturationSpline.h"

namespace frigana {
namespace {

using test::words;

const Composition x = unitComposition(1);
int ierr;
Text255 herr;

class NamedItems : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(test::setUp({"R134A"})); }
    void TearDown() override {
        modelTags.LFORCESETUP = true;
        ASSERT_TRUE(test::setUp({"R134A"}));
    }
    void read(std::string_view name, int i = 1, int j = 0) {
        text = "before";
        count = 77;
        real = 77.0;
        for (double& value : array) value = -1.0;
        PASSCMN(name, 0, i, j, text, count, real, array, ierr, herr);
    }
    void write(std::string_view name, int i = 1, int j = 0) {
        PASSCMN(name, 1, i, j, text, count, real, array, ierr, herr);
    }
    Text255 text;
    int count = 0;
    double real = 0;
    double array[passedArraySize] = {};
};

// What was computed with the old value of an item does not outlive a write of it.
TEST_F(NamedItems, AWriteForgetsIdealGasAndEnvelope) {
    Ph0Slot& ideal = ph0Terms[1] = Ph0Slot{};
    ideal.NLOGP = ideal.NTAUP = 1;
    ideal.AIPH[1] = 3.0;
    ideal.TIPH[1] = ideal.TIPH[2] = 1.0;
    ideal.AIPH[2] = 5.0;
    saturationSpline.SPLINEREADY = true;
    const double t = 320.0, rho = 0.04;
    const double before = PH0PH0(1, 0, 0, t, rho), slope = PH0PH0(1, 1, 0, t, rho);
    read("tz");
    real *= 1.01;
    write("tz");
    EXPECT_EQ(ierr, 0);
    EXPECT_FALSE(saturationSpline.SPLINEREADY);
    const double after = PH0PH0(1, 0, 0, t, rho);
    EXPECT_NE(after, before);
    EXPECT_NE(PH0PH0(1, 1, 0, t, rho), slope);
    // ln del + 3 ln tau + 5 tau
    const double tau = fluidConstants.TZ[1] / t;
    EXPECT_NEAR(after, std::log(rho / fluidConstants.RHOZ[1]) + 3.0 * std::log(tau) + 5.0 * tau, 1e-13);
}

TEST_F(NamedItems, EveryRealOfASlot) {
    const FluidConstants& f = fluidConstants;
    const std::pair<const char*, const double*> items[] = {
        {"accen", &f.ACCEN[1]},
        {"dcrit", &f.DCRIT[1]},
        {"deos", &f.DEOS[1]},
        {"dipole", &f.DIPOLE[1]},
        {"pcfeq", &feqTerms[1].PCFEQ},
        {"pcrit", &f.PCRIT[1]},
        {"peos", &f.PEOS[1]},
        {"rho0feq", &feqTerms[1].RHO0FEQ},
        {"rhocfeq", &feqTerms[1].RHOCFEQ},
        {"rhoz", &f.RHOZ[1]},
        {"t0feq", &feqTerms[1].T0FEQ},
        {"tcfeq", &feqTerms[1].TCFEQ},
        {"tcrit", &f.TCRIT[1]},
        {"tmeos", &f.TMEOS[1]},
        {"tnbp", &f.TNBP[1]},
        {"ttpn", &f.TTPN[1]},
        {"txeos", &f.TXEOS[1]},
        {"tz", &f.TZ[1]},
        {"wmas", &f.WMAS[1]},
        {"zcrit", &f.ZCRIT[1]},
        {"pcpr", &prTerms[1].PCPR},
        {"rhocpr", &prTerms[1].RHOCPR},
        {"tcpr", &prTerms[1].TCPR},
        {"acnpr", &prTerms[1].ACNPR},
        {"r", &f.R},
    };
    for (const auto& [name, place] : items) {
        read(name);
        EXPECT_EQ(ierr, 0) << name;
        EXPECT_NE(real, 0.0) << name;
        EXPECT_EQ(real, *place) << name;
        EXPECT_EQ(count, 0);
        EXPECT_TRUE(text.blank());
        EXPECT_EQ(array[0], -1.0);
        real = *place * 1.25;
        const double changed = real;
        write(name);
        EXPECT_EQ(ierr, 0) << name;
        EXPECT_EQ(*place, changed) << name;
    }
}

TEST_F(NamedItems, TextAndCounts) {
    read("heos");
    EXPECT_EQ(words(text), "FEQ");
    EXPECT_EQ(count, 0);
    text = "FEK";
    write("heos");
    EXPECT_EQ(modelTags.HEOS, "FEK");
    const std::pair<const char*, const int*> items[] = {
        {"ntermf", &feqTerms[1].NTERMF},
        {"ntermc", &cppTerms[1].NTERMC},
        {"nterme", &cppTerms[1].NTERME},
        {"ncrt", &feqTerms[1].NCRT},
    };
    for (const auto& [name, place] : items) {
        const int before = *place;
        read(name);
        EXPECT_EQ(ierr, 0) << name;
        EXPECT_EQ(count, before) << name;
        count = before > 0 ? before - 1 : 0;
        const int changed = count;
        write(name);
        EXPECT_EQ(ierr, 0);
        EXPECT_EQ(*place, changed) << name;
    }
}

TEST_F(NamedItems, CountsThatTheTablesCannotHoldAreRefused) {
    for (const char* name : {"ntermf", "ncrt", "ntermc", "nterme"}) {
        for (const int wrong : {-1, 57, 1000000}) {
            read(name);
            const int before = count;
            count = wrong;
            write(name);
            EXPECT_EQ(ierr, 2) << name;
            read(name);
            EXPECT_EQ(count, before) << name;
        }
    }
}

TEST_F(NamedItems, EveryArray) {
    const int terms = feqTerms[1].NTERMF + feqTerms[1].NCRT;
    const int powers = cppTerms[1].NTERMC + cppTerms[1].NTERME;
    const struct {
        const char* name;
        double* place;
        int length;
    } items[] = {
        {"afeq", feqTerms[1].AFEQ.items, terms},   {"tifeq", feqTerms[1].TIFEQ.items, terms},
        {"difeq", feqTerms[1].DIFEQ.items, terms}, {"dlif", feqTerms[1].DLIF.items, terms},
        {"cpc0", cppTerms[1].CPC0.items, powers},  {"xkc0", cppTerms[1].XKC0.items, powers},
        {"prcoef", prTerms[1].PRCOEF.items, 20},   {"fprkij", FPRKIJ[1][2].items, 6},
    };
    for (const auto& item : items) {
        read(item.name, 1, 2);
        EXPECT_EQ(ierr, 0) << item.name;
        EXPECT_EQ(real, 0.0);
        for (int k = 0; k < item.length; ++k) EXPECT_EQ(array[k], item.place[k]) << item.name << " " << k;
        EXPECT_EQ(array[item.length], -1.0) << item.name;
        for (double& value : array) value += 0.5;
        write(item.name, 1, 2);
        EXPECT_EQ(ierr, 0);
        for (int k = 0; k < item.length; ++k) EXPECT_EQ(array[k], item.place[k]) << item.name << " " << k;
    }
    FPRKIJ[1][2].fill(0.0);
}

// An array without terms gives nothing.
TEST_F(NamedItems, AnArrayWithoutTermsIsLeftAlone) {
    feqTerms[1].NTERMF = feqTerms[1].NCRT = 0;
    read("afeq");
    EXPECT_EQ(ierr, 0);
    for (const double value : array) EXPECT_EQ(value, -1.0);
}

TEST_F(NamedItems, NamesMatchExactlyUpToTheirNullCharacter) {
    read(std::string_view("tcrit\0garbage", 13));
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(real, fluidConstants.TCRIT[1]);
    read("tcrit     ");
    EXPECT_EQ(ierr, 0);
    for (const char* name : {"TCRIT", "tcri", "tcrits", "", " tcrit", "x"}) {
        read(name);
        EXPECT_EQ(ierr, 1) << name;
        EXPECT_EQ(words(herr), "[PASSCMN error] variable name not recognized");
        EXPECT_EQ(real, 0.0);
        EXPECT_EQ(count, 0);
    }
}

TEST_F(NamedItems, SlotsOutOfBounds) {
    for (const int slot : {21, -21, -30, 1000, -1000}) {
        read("tcrit", slot);
        EXPECT_EQ(ierr, 2) << slot;
        EXPECT_EQ(words(herr), "[PASSCMN error] inputs out of bounds");
        write("tcrit", slot);
        EXPECT_EQ(ierr, 2) << slot;
    }
    read("fprkij", 1, 21);
    EXPECT_EQ(ierr, 2);
    read("fprkij", 0, 1);
    EXPECT_EQ(ierr, 2);
    read("r", 21);
    EXPECT_EQ(ierr, 2);
    EXPECT_EQ(real, fluidConstants.R) << "the routine goes on where the slot has no part";
}

TEST_F(NamedItems, GasConstantIsReadAndWritten) {
    read("r");
    EXPECT_EQ(real, fluidConstants.R);
    double before, after, rhol, rhov;
    Composition liquid, vapor;
    SATT(300.0, x, 1, before, rhol, rhov, liquid, vapor, ierr, herr);
    ASSERT_EQ(ierr, 0);
    cppTerms[1].TSVCP0 = 300.0;
    feqTerms[1].TAUSVF = 1.0;
    real = 8.0;
    write("r");
    EXPECT_EQ(fluidConstants.R, 8.0);
    EXPECT_EQ(cppTerms[1].TSVCP0, 0.0);
    EXPECT_EQ(feqTerms[1].TAUSVF, 0.0);
    EXPECT_EQ(feqTerms[1].DELSVF, 0.0);
    SATT(300.0, x, 1, after, rhol, rhov, liquid, vapor, ierr, herr);
    EXPECT_EQ(before, after) << "the constant of the equation counts, and is put back by every routine";
}

TEST_F(NamedItems, AWrittenCoefficientChangesTheNextResult) {
    double before, memorised, after, rhol, rhov;
    Composition liquid, vapor;
    SATT(300.0, x, 1, before, rhol, rhov, liquid, vapor, ierr, herr);
    for (const char* name : {"afeq", "tifeq", "difeq"}) {
        read(name);
        array[2] += 1e-3;
        write(name);
        SATT(300.0, x, 1, after, rhol, rhov, liquid, vapor, ierr, herr);
        ASSERT_EQ(ierr, 0) << words(herr);
        EXPECT_GT(std::fabs(after / before - 1.0), 1e-7) << name << ": a memorised state would come back unchanged";
        array[2] -= 1e-3;
        write(name);
        SATT(300.0, x, 1, memorised, rhol, rhov, liquid, vapor, ierr, herr);
        EXPECT_NEAR(memorised, before, 1e-7 * before);
    }
}

TEST_F(NamedItems, AWrittenReferenceDoesNotMoveAndAHeatCapacityDoes) {
    double before, after;
    ENTHAL(320.0, 0.1, x, before);
    read("cpc0");
    array[0] *= 1.01;
    write("cpc0");
    ENTHAL(320.0, 0.1, x, after);
    EXPECT_GT(std::fabs(after - before), 1e-3);
}

class Curves : public testing::Test {
  protected:
    static double condition(int curve, double t, double rho) {
        const double tau = fluidConstants.TZ[1] / t, del = rho / fluidConstants.RHOZ[1];
        const double a01 = PHIK(1, 0, 1, tau, del), a02 = PHIK(1, 0, 2, tau, del), a11 = PHIK(1, 1, 1, tau, del);
        switch (curve) {
            case 0:
                return a01;
            case 1:
                return a01 + a02;
            case 2:
                return a01 + a02 + a11;
            default:
                return a11;
        }
    }
    static void run(int curve, double rho, const Composition& z, double& t) {
        switch (curve) {
            case 0:
                IDCRV(rho, z, t, ierr, herr);
                break;
            case 1:
                BLCRV(rho, z, t, ierr, herr);
                break;
            case 2:
                JTCRV(rho, z, t, ierr, herr);
                break;
            default:
                JICRV(rho, z, t, ierr, herr);
                break;
        }
    }
};

TEST_F(Curves, ConditionsHoldOnEveryCurve) {
    for (const char* fluid : {"NITROGEN", "CO2", "PROPANE"}) {
        ASSERT_TRUE(test::setUp({fluid}));
        for (int curve = 0; curve < 3; ++curve) {
            for (double share = 0.05; share < 1.3; share += 0.15) {
                const double rho = share * fluidConstants.RHOZ[1];
                double t = 0.0;
                run(curve, rho, x, t);
                EXPECT_EQ(ierr, 0);
                ASSERT_GT(t, 0.0) << fluid << " curve " << curve << " at " << share;
                EXPECT_LE(std::fabs(condition(curve, t, rho)), 1e-8);
            }
        }
    }
}

// Beyond the highest density of a curve there is no temperature on it.
TEST_F(Curves, EndWhereThereIsNoTemperature) {
    int ends = 0;
    for (const char* fluid : {"NITROGEN", "CO2", "PROPANE"}) {
        ASSERT_TRUE(test::setUp({fluid}));
        for (int curve = 0; curve < 4; ++curve)
            for (double share = 1.5; share < 4.5; share += 0.25) {
                const double rho = share * fluidConstants.RHOZ[1];
                double t = 0.0;
                run(curve, rho, x, t);
                EXPECT_EQ(ierr, 0);
                if (t == 0.0)
                    ++ends;
                else
                    EXPECT_LE(std::fabs(condition(curve, t, rho)), 1e-8) << fluid << ' ' << curve << ' ' << share;
            }
    }
    EXPECT_GT(ends, 5);
}

TEST_F(Curves, NitrogenAgainstItsPublishedTemperatures) {
    // Boyle temperature 327 K (second virial coefficient zero) and highest inversion temperature 621 K: J. H. Dymond et
    // al., The Virial Coefficients of Pure Gases and Mixtures (2002); Zemansky, Heat and Thermodynamics
    ASSERT_TRUE(test::setUp({"NITROGEN"}));
    const double rho = 0.02;  // close to zero pressure; f = 1e-8 is 1e-3 K there
    double boyle = 0.0, boyleByIdeal = 0.0, inversion = 0.0;
    run(1, rho, x, boyle);
    run(0, rho, x, boyleByIdeal);
    run(2, rho, x, inversion);
    EXPECT_NEAR(boyle, 327.0, 2.0);
    EXPECT_NEAR(boyleByIdeal, boyle, 1.0) << "the ideal and the Boyle curve meet at zero density";
    EXPECT_NEAR(inversion, 615.0, 15.0);
}

TEST_F(Curves, JouleInversionLiesFarAbove) {
    ASSERT_TRUE(test::setUp({"NITROGEN"}));
    double t = 0.0;
    run(3, 2.0, x, t);
    EXPECT_EQ(ierr, 0);
    if (t > 0.0) {
        EXPECT_LE(std::fabs(condition(3, t, 2.0)), 1e-8);
        EXPECT_GT(t, 621.0);
    }
}

TEST_F(Curves, StartOfTheSearch) {
    ASSERT_TRUE(test::setUp({"CO2"}));
    double fromDefault = 0.0, fromGuess = 700.0, fromNegative = -5.0;
    run(1, 5.0, x, fromDefault);
    run(1, 5.0, x, fromGuess);
    run(1, 5.0, x, fromNegative);
    EXPECT_NEAR(fromGuess, fromDefault, 1e-4);
    EXPECT_EQ(fromNegative, fromDefault);
}

TEST_F(Curves, MixturesAreRefused) {
    ASSERT_TRUE(test::setUp({"CO2"}));
    modelTags.NC = 2;
    Composition half{};
    half[1] = half[2] = 0.5;
    const char* texts[] = {"IDCRV:  valid only for pure fluids", "BL:  not a pure fluid", "JTCRV:  not a pure fluid",
                           "JICRV:  not a pure fluid"};
    for (int curve = 0; curve < 4; ++curve) {
        double t = 300.0;
        run(curve, 5.0, half, t);
        EXPECT_EQ(ierr, 1);
        EXPECT_EQ(words(herr), texts[curve]);
        EXPECT_EQ(t, 0.0);
        // exactly one of the two components
        t = 0.0;
        run(curve, 5.0, unitComposition(1), t);
        EXPECT_EQ(ierr, 0);
    }
    modelTags.NC = 1;
}

class Filling : public testing::Test {
  protected:
    void TearDown() override { fluidConstants.IUNFLG[1] = 0; }
};

TEST_F(Filling, AgainstTheTransportRegulations) {
    // European agreement on the carriage of dangerous goods by road, packing instruction P200: test pressure [bar,
    // above the atmosphere] and filling ratio [kg/L]
    struct Row {
        const char* fluid;
        double pressure, ratio, tolerance;
    };
    const Row rows[] = {{"R134A", 18.0, 1.05, 0.01}, {"PROPANE", 23.0, 0.43, 0.01}, {"CO2", 190.0, 0.68, 0.03}};
    for (const Row& row : rows) {
        ASSERT_TRUE(test::setUp({row.fluid}));
        fluidConstants.IUNFLG[1] = 1;
        const bool gas = fluidConstants.TCRIT[1] < 338.15;
        double ptest = gas ? row.pressure * 100.0 : 0.0, fill;
        DOTFILL(x, ptest, fill, ierr, herr);
        EXPECT_EQ(ierr, 0) << row.fluid << ": " << words(herr);
        EXPECT_NEAR(fill / row.ratio, 1.0, row.tolerance) << row.fluid;
        if (!gas) {
            EXPECT_NEAR(ptest, row.pressure * 100.0 + 100.0, 150.0) << row.fluid;
        }
    }
}

TEST_F(Filling, TestPressureOfAGasReachesItsCriticalPressure) {
    ASSERT_TRUE(test::setUp({"CO2"}));
    fluidConstants.IUNFLG[1] = 1;
    const double pc = fluidConstants.PCRIT[1];
    double ptest = 0.99 * pc, fill;
    DOTFILL(x, ptest, fill, ierr, herr);
    EXPECT_EQ(ierr, -1);
    EXPECT_EQ(words(herr), "Test pressure must exceed saturation pressure at 65 C");
    EXPECT_EQ(ptest, pc);
    EXPECT_EQ(fill, -999.0);
    ptest = 1.01 * pc;
    DOTFILL(x, ptest, fill, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(ptest, 1.01 * pc);
    EXPECT_GT(fill, 0.0);
}

TEST_F(Filling, NeedsThePermissionOfTheFile) {
    ASSERT_TRUE(test::setUp({"R134A"}));
    double ptest = 5.0, fill = 5.0;
    DOTFILL(x, ptest, fill, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_EQ(fill, 0.0);
    EXPECT_EQ(ptest, 0.0);
    EXPECT_EQ(words(herr), "User defined calculations not permitted for this fluid");
}

TEST_F(Filling, FactorOfTheFile) {
    ASSERT_TRUE(test::setUp({"R134A"}));
    fluidConstants.IUNFLG[1] = 1;
    double ptest = 0.0, fill, scaled;
    DOTFILL(x, ptest, fill, ierr, herr);
    fluidConstants.NTRMUN[1] = 1;
    fluidConstants.PRMUN[1][1] = 0.5;
    DOTFILL(x, ptest, scaled, ierr, herr);
    EXPECT_DOUBLE_EQ(scaled, 0.5 * fill);
    fluidConstants.NTRMUN[1] = 0;
}

}  // namespace
}  // namespace frigana
