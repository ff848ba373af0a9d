// Every model behind the set-up: equivalent forms agree, flashes and saturation work with each, and the default comes
// back.
#include <cmath>
#include <cstdio>
#include <vector>

#include "CORE_ECS.h"
#include "CORE_PR.h"
#include "EngineSetUp.h"
#include "FLASH2.h"
#include "FLSH_SUB.h"
#include "FluidConstants.h"
#include "Larger.h"
#include "MIX_AGA8.h"
#include "ModelTags.h"
#include "PREOS.h"
#include "PROP_SUB.h"
#include "ReferenceState.h"
#include "SAT_SUB.h"
#include "SETAGA.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"
#include "UTILITY.h"

namespace frigana {
namespace {

const std::string testFluids = std::string(test::testsFolder) + "/engine/equations/fluids";

using test::Random;
using test::words;

const Composition x = unitComposition(1);
int ierr;
Text255 herr;

struct Values {
    double p, h, s, cv, cp, w;
};

struct State {
    double t, rho;
    Values values;
};

Values properties(double t, double rho) {
    double e, jt;
    Values v;
    THERM(t, rho, x, v.p, e, v.h, v.s, v.cv, v.cp, v.w, jt);
    return v;
}

// Single-phase states over the whole range of the equation in use.
std::vector<State> statesOfTheEquation(int count) {
    Random random;
    std::vector<State> states;
    while (static_cast<int>(states.size()) < count) {
        const double t = random.between(fluidConstants.TMEOS[1], fluidConstants.TXEOS[1]);
        const double p = std::exp(random.between(std::log(1.0), std::log(fluidConstants.PEOS[1])));
        double temperature = t, rho, dl, dv, q, e, h, s, cv, cp, w;
        Composition liquid, vapor;
        TPFLSH(temperature, p, x, rho, dl, dv, liquid, vapor, q, e, h, s, cv, cp, w, ierr, herr);
        if (ierr == 16) continue;  // frozen
        EXPECT_LE(ierr, 0) << t << " K, " << p << " kPa: " << words(herr);
        if (ierr > 0) break;
        states.push_back({t, rho, properties(t, rho)});
    }
    return states;
}

// Largest deviations from the states: enthalpies relative to R T, entropies to R, and pressures to the larger of p and
// rho R T, for that of a cold liquid is a small difference of terms of that size and beyond.
Values deviations(const std::vector<State>& states) {
    Values worst{};
    const auto see = [](double& slot, double value, double expected, double scale) {
        slot = test::larger(slot, std::fabs(value - expected) / scale);
    };
    for (const State& state : states) {
        const Values now = properties(state.t, state.rho);
        const Values& then = state.values;
        see(worst.p, now.p, then.p, std::max(then.p, state.rho * 8.314 * state.t));
        see(worst.h, now.h, then.h, 8.314 * state.t);
        see(worst.s, now.s, then.s, 8.314);
        see(worst.cv, now.cv, then.cv, then.cv);
        see(worst.cp, now.cp, then.cp, then.cp);
        see(worst.w, now.w, then.w, then.w);
    }
    return worst;
}

void expectAgreement(const char* what, const Values& worst, double tolerance) {
    std::printf("%s: p %.1e  h %.1e  s %.1e  cv %.1e  cp %.1e  w %.1e\n", what, worst.p, worst.h, worst.s, worst.cv,
                worst.cp, worst.w);
    for (const double deviation : {worst.p, worst.h, worst.s, worst.cv, worst.cp, worst.w})
        EXPECT_LT(deviation, tolerance) << what;
}

// Saturation by temperature and by pressure, and the flashes of states in every region, return to where they came from.
void expectFlashes(const char* what) {
    const double tc = fluidConstants.TCRIT[1], pc = fluidConstants.PCRIT[1];
    for (const double reduced : {0.65, 0.75, 0.9, 0.97}) {
        double p, dl, dv, t, dl2, dv2;
        Composition liquid, vapor;
        SATT(reduced * tc, x, 1, p, dl, dv, liquid, vapor, ierr, herr);
        ASSERT_EQ(ierr, 0) << what << " at " << reduced << " Tc: " << words(herr);
        Composition fl, fv;
        FGCTY(reduced * tc, dl, x, fl);
        FGCTY(reduced * tc, dv, x, fv);
        EXPECT_NEAR(fl[1] / fv[1], 1.0, 1e-6) << what;
        double pl, pv;
        PRESS(reduced * tc, dl, x, pl);
        PRESS(reduced * tc, dv, x, pv);
        EXPECT_NEAR(pl / p, 1.0, 1e-6) << what;
        EXPECT_NEAR(pv / p, 1.0, 1e-6) << what;
        SATP(p, x, 1, t, dl2, dv2, liquid, vapor, ierr, herr);
        ASSERT_EQ(ierr, 0) << what << ": " << words(herr);
        EXPECT_NEAR(t / tc, reduced, 1e-7) << what;
    }
    for (const double reducedT : {0.7, 0.95, 1.1, 1.3}) {
        for (const double reducedP : {0.02, 0.5, 2.0}) {
            double t = reducedT * tc;
            const double p = reducedP * pc;
            double rho, dl, dv, q, e, h, s, cv, cp, w, back, rho2, s2, h2;
            Composition liquid, vapor;
            TPFLSH(t, p, x, rho, dl, dv, liquid, vapor, q, e, h, s, cv, cp, w, ierr, herr);
            ASSERT_LE(ierr, 0) << what << ": " << words(herr);
            PHFLSH(p, h, x, back, rho2, dl, dv, liquid, vapor, q, e, s2, cv, cp, w, ierr, herr);
            ASSERT_LE(ierr, 0) << what << " " << t << " K " << p << " kPa: " << words(herr);
            EXPECT_NEAR(back / t, 1.0, 1e-7) << what;
            PSFLSH(p, s, x, back, rho2, dl, dv, liquid, vapor, q, e, h2, cv, cp, w, ierr, herr);
            ASSERT_LE(ierr, 0) << what << " " << t << " K " << p << " kPa: " << words(herr);
            EXPECT_NEAR(back / t, 1.0, 1e-7) << what;
            EXPECT_NEAR(rho2 / rho, 1.0, 1e-6) << what;
        }
    }
    // a two-phase state by its quality
    double p, rho, dl, dv, e, h, s, cv, cp, w, q, t, rho2;
    Composition liquid, vapor;
    TQFLSH(0.8 * tc, 0.4, x, 1, p, rho, dl, dv, liquid, vapor, e, h, s, cv, cp, w, ierr, herr);
    ASSERT_LE(ierr, 0) << what << ": " << words(herr);
    PHFLSH(p, h, x, t, rho2, dl, dv, liquid, vapor, q, e, s, cv, cp, w, ierr, herr);
    ASSERT_LE(ierr, 0) << what << ": " << words(herr);
    EXPECT_NEAR(q, 0.4, 1e-6) << what;
    EXPECT_NEAR(t / tc, 0.8, 1e-7) << what;
}

class EquivalentForms : public testing::TestWithParam<const char*> {};

TEST_P(EquivalentForms, BenedictAgreesWithHelmholtz) {
    modelTags.LFORCESETUP = true;
    ASSERT_TRUE(test::setUp({GetParam()}));
    ASSERT_EQ(modelTags.HEOS, "FEQ");
    const std::vector<State> states = statesOfTheEquation(20000);
    double p, dl, dv, p2, dl2, dv2;
    Composition liquid, vapor;
    SATT(300.0, x, 1, p, dl, dv, liquid, vapor, ierr, herr);
    ASSERT_EQ(ierr, 0);

    ASSERT_TRUE(test::setUp({GetParam()}, "BWR"));
    ASSERT_EQ(modelTags.HEOS, "BWR");
    ASSERT_EQ(modelTags.HMXEOS[1], "BWR");
    expectAgreement(GetParam(), deviations(states), 1e-9);
    SATT(300.0, x, 1, p2, dl2, dv2, liquid, vapor, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_NEAR(p2 / p, 1.0, 1e-8);
    EXPECT_NEAR(dl2 / dl, 1.0, 1e-8);
    EXPECT_NEAR(dv2 / dv, 1.0, 1e-8);
    expectFlashes(GetParam());

    ASSERT_TRUE(test::setUp({GetParam()}));
    EXPECT_EQ(modelTags.HEOS, "FEQ") << "the default comes back";
    expectAgreement("back", deviations(states), 1e-12);
}

INSTANTIATE_TEST_SUITE_P(Fluids, EquivalentForms, testing::Values("R123", "R152A"),
                         [](const auto& fluid) { return std::string(fluid.param); });

TEST(QuinticFluid, SaturationAgainstAnotherProgram) {
    // computed from the closed form by a program of its own (bisection-free Newton iteration on pressure and fugacity,
    // in double precision): T [K], p [kPa], densities of liquid and vapor [mol/L]
    constexpr double rows[][4] = {
        {330.0, 2712.0444736966806, 10.320636056077273, 1.5970595013832156},
        {300.0, 1175.7355909003313, 13.574308184017527, 0.5842912569131083},
        {270.0, 418.9359241392815, 15.658515942408268, 0.2044435034201497},
        {240.0, 111.4583903286695, 17.140758339876566, 0.05764829734511116},
        {210.0, 18.935354707997465, 18.251503934713085, 0.010926355703601742},
        {180.0, 1.5793351803598539, 19.113232643650317, 0.0010562604490850142},
    };
    ASSERT_TRUE(test::setUp({"QUITEST"}, "", testFluids));
    ASSERT_EQ(modelTags.HEOS, "QUI");
    for (const auto& row : rows) {
        double p, dl, dv;
        Composition liquid, vapor;
        SATT(row[0], x, 1, p, dl, dv, liquid, vapor, ierr, herr);
        ASSERT_EQ(ierr, 0) << words(herr);
        EXPECT_NEAR(p / row[1], 1.0, 1e-7);
        EXPECT_NEAR(dl / row[2], 1.0, 1e-7);
        EXPECT_NEAR(dv / row[3], 1.0, 1e-7);
    }
    expectFlashes("QUI");
}

// The fluid file with its equation of state replaced by another section.
std::string withEquation(const std::string& file, const std::string& section) {
    const auto first = file.find("#EOS"), next = file.find("#AUX");
    EXPECT_NE(first, std::string::npos);
    EXPECT_NE(next, std::string::npos);
    return file.substr(0, first) + section + "\n" + file.substr(next);
}

TEST(CorrespondingStatesFluid, AFluidByItselfIsItself) {
    const test::TemporaryFolder folder;
    const std::string propane = test::readFile(std::string(test::dataFolder) + "/fluids/PROPANE.FLD");
    test::writeFile(folder.path("PROPANE.FLD"), propane);
    modelTags.LFORCESETUP = true;
    ASSERT_TRUE(test::setUp({"PROPANE"}));
    const std::vector<State> states = statesOfTheEquation(5000);
    char block[400];
    const double zc = fluidConstants.PCRIT[1] / (8.314472 * fluidConstants.TCRIT[1] * fluidConstants.DCRIT[1]);
    std::snprintf(block, sizeof block,
                  "#EOS\nECS propane by itself\n!\n%.17g\n%.17g\n%.17g\n%.17g\nCPP\nPROPANE.FLD\nFEQ\n0.1521\n%.17g\n"
                  "0.1521\n%.17g\n%.17g\n%.17g\n0\n0\n0\n0\n",
                  fluidConstants.TMEOS[1], fluidConstants.TXEOS[1], fluidConstants.PEOS[1], fluidConstants.DEOS[1], zc,
                  fluidConstants.TCRIT[1], fluidConstants.PCRIT[1], fluidConstants.DCRIT[1]);
    test::writeFile(folder.path("SELF.FLD"), withEquation(propane, block));

    ASSERT_TRUE(test::setUp({"SELF"}, "", folder.path()));
    ASSERT_EQ(modelTags.HEOS, "ECS");
    EXPECT_EQ(modelTags.HMXEOS[-1], "FEQ");
    expectAgreement("ECS of propane by propane", deviations(states), 1e-9);
    expectFlashes("ECS");
    modelTags.LFORCESETUP = true;
}

TEST(CorrespondingStatesFluid, ByTheOtherFormOfItsReference) {
    // the same shape factors on the two forms of one equation
    const test::TemporaryFolder folder;
    std::string file = test::readFile(testFluids + "/ECSTEST.FLD");
    test::writeFile(folder.path("R152A.FLD"), test::readFile(std::string(test::dataFolder) + "/fluids/R152A.FLD"));
    file.replace(file.find("PROPANE.FLD"), 11, "R152A.FLD");
    test::writeFile(folder.path("ECSF.FLD"), file);
    file.replace(file.find("\nFEQ\n"), 5, "\nBWR\n");
    test::writeFile(folder.path("ECSB.FLD"), file);
    modelTags.LFORCESETUP = true;
    ASSERT_TRUE(test::setUp({"ECSF"}, "", folder.path()));
    // the critical density of the other form is rounded to its reducing density
    const double criticalDensity = fluidConstants.DCRIT[-1];
    std::vector<State> states;
    Random random;
    while (states.size() < 2000) {
        const double t = random.between(430.0, 600.0), rho = random.between(0.01, 15.0);
        states.push_back({t, rho, properties(t, rho)});
    }
    modelTags.LFORCESETUP = true;
    ASSERT_TRUE(test::setUp({"ECSB"}, "", folder.path()));
    EXPECT_EQ(modelTags.HMXEOS[-1], "BWR");
    fluidConstants.DCRIT[-1] = criticalDensity;
    Values worst = deviations(states);
    worst.h = worst.s = 0.0;  // the reference point of a fluid without ancillary equations is not what is tested
    expectAgreement("ECS by both forms of R152a", worst, 1e-9);
    modelTags.LFORCESETUP = true;
}

TEST(PengRobinsonFluid, SelectedAsTheEquationOfAFile) {
    const test::TemporaryFolder folder;
    const std::string propane = test::readFile(std::string(test::dataFolder) + "/fluids/PROPANE.FLD");
    test::writeFile(folder.path("PROPANE.FLD"), propane);  // its own transport reference
    const auto next = propane.find("#AUX");
    test::writeFile(folder.path("PRTEST.FLD"),
                    propane.substr(0, next) +
                        "@EOS\nPR  cubic equation\n!\n85.525\n650.0\n100000.0\n18.0\nCPP\n44.09562\n0.1521\n369.89\n"
                        "4251.2\n5.0\n8.314472\n1\n-0.0062\n\n" +
                        propane.substr(next));
    modelTags.LFORCESETUP = true;
    ASSERT_TRUE(test::setUp({"PRTEST"}, "", folder.path()));
    EXPECT_EQ(modelTags.HEOS, "FEQ");
    EXPECT_EQ(prTerms[1].PRCOEF[1], -0.0062) << "the block is read for its data in any case";
    EXPECT_EQ(prTerms[1].IPRFLAG, 1);
    ASSERT_TRUE(test::setUp({"PRTEST"}, "PR", folder.path()));
    EXPECT_EQ(modelTags.HEOS, "PR");
    EXPECT_EQ(modelTags.HMXEOS[1], "PR");
    expectFlashes("PR");
    ASSERT_TRUE(test::setUp({"PRTEST"}, "", folder.path()));
    EXPECT_EQ(modelTags.HEOS, "FEQ");
    modelTags.LFORCESETUP = true;
}

class CubicSwitch : public testing::Test {
  protected:
    void TearDown() override { modelTags.LFORCESETUP = true; }
};

TEST_F(CubicSwitch, OnAndOffRestoresTheTags) {
    ASSERT_TRUE(test::setUp({"R134A"}));
    double p, dl, dv, cubic;
    Composition liquid, vapor;
    SATT(300.0, x, 1, p, dl, dv, liquid, vapor, ierr, herr);
    int i = -1;
    PREOS(i);
    EXPECT_EQ(i, 0);
    i = 1;
    PREOS(i);
    EXPECT_EQ(modelTags.HEOS, "PR");
    for (int k = 1; k <= ncmax; ++k) EXPECT_EQ(modelTags.HMXEOS[k], "PR");
    EXPECT_EQ(preosMemory.HEOSSV, "FEQ");
    i = -1;
    PREOS(i);
    EXPECT_EQ(i, 1);
    SATT(300.0, x, 1, cubic, dl, dv, liquid, vapor, ierr, herr);
    EXPECT_EQ(ierr, 0) << words(herr);
    EXPECT_NE(cubic, p);
    EXPECT_NEAR(cubic / p, 1.0, 0.02);
    i = 2;  // a second time keeps the first tags
    PREOS(i);
    EXPECT_EQ(preosMemory.HEOSSV, "FEQ");
    i = 0;
    PREOS(i);
    EXPECT_EQ(modelTags.HEOS, "FEQ");
    EXPECT_EQ(modelTags.HMXEOS[1], "FEQ");
    EXPECT_TRUE(preosMemory.HEOSSV.blank());
    double again;
    SATT(300.0, x, 1, again, dl, dv, liquid, vapor, ierr, herr);
    EXPECT_NEAR(again / p, 1.0, 1e-12);
    i = 0;  // nothing to bring back
    PREOS(i);
    EXPECT_EQ(modelTags.HEOS, "FEQ");
}

TEST_F(CubicSwitch, VaporPressureByItsAcentricFactor) {
    // The equation was fitted to the vapor pressure at 0.7 Tc that defines the acentric factor.
    for (const char* fluid : {"PROPANE", "R134A", "CO2", "NITROGEN", "R152A"}) {
        ASSERT_TRUE(test::setUp({fluid}));
        int i = 1;
        PREOS(i);
        double p, dl, dv;
        Composition liquid, vapor;
        const double t = 0.8 * prTerms[1].TCPR;
        SATT(t, x, 1, p, dl, dv, liquid, vapor, ierr, herr);
        EXPECT_EQ(ierr, 0) << fluid << ": " << words(herr);
        // between 0.7 Tc and Tc the logarithm is nearly linear in 1/T
        const double expected =
            prTerms[1].PCPR * std::pow(10.0, -(1.0 + prTerms[1].ACNPR) * (1.25 - 1.0) / (1.0 / 0.7 - 1.0));
        EXPECT_NEAR(p / expected, 1.0, 0.03) << fluid;
        i = 0;
        PREOS(i);
    }
}

TEST(NaturalGasSwitch, BackWithoutForthHasNoEffect) {
    ASSERT_TRUE(test::setUp({"NITROGEN"}));
    const Text3 eos = modelTags.HEOS;
    const double r = fluidConstants.R, m = fluidConstants.WMAS[1], t = referenceState.TREF[1];
    UNSETAGA();
    EXPECT_EQ(modelTags.HEOS, eos);
    EXPECT_EQ(fluidConstants.R, r);
    EXPECT_EQ(fluidConstants.WMAS[1], m);
    EXPECT_EQ(referenceState.TREF[1], t);
}

}  // namespace
}  // namespace frigana
