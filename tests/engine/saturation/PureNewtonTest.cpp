// Newton's method in both densities of a pure fluid, beside the iterations that stand behind it.
#include "SAT_SUB_PURE_NEWTON.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

#include "CORE_ANC.h"
#include "FurtherFluids.h"
#include "Larger.h"
#include "PREOS.h"
#include "Saturation.h"
#include "UTILITY.h"

namespace frigana {
namespace {

using namespace test;

// Turns the short ways off for its time.
class WithoutNewton {
  public:
    WithoutNewton() {
        pureNewtonControl.enabled = false;
        resetSaturationMemo();
    }
    ~WithoutNewton() {
        pureNewtonControl.enabled = true;
        resetSaturationMemo();
    }
    WithoutNewton(const WithoutNewton&) = delete;
    WithoutNewton& operator=(const WithoutNewton&) = delete;
};

double slope(double T, double rho) {
    double dpdd = 0.0;
    DPDD(T, rho, unitComposition(1), dpdd);
    return dpdd;
}

// Densities agree to what the iterations leave open, 1e-12 of the pressure, to which densities answer the more the
// closer the critical point is, and to the rounding of the equation. Up to 0.99 Tc pressures are those of the liquid,
// which drown in the rounding of its density: by 3e-7 kPa for water, the worst.
constexpr double densities = 1e-10, besideCritical = 1e-7, pressures = 1e-11, roundingOfPressure = 1e-6;

class PureNewton : public ::testing::TestWithParam<const char*> {
  protected:
    void SetUp() override { ASSERT_LE(setUp(GetParam()), 0); }
    Random random_;
};

TEST_P(PureNewton, FindsTheStatesOfTheIterationsAtTemperature) {
    double worst = 0.0;
    constexpr int states = 40;
    pureNewtonControl.asked = pureNewtonControl.found = 0;
    for (int k = 0; k < states; ++k) {
        const double T = random_.between(lowestT() + 0.01, 0.99 * criticalT());
        SCOPED_TRACE(T);
        const Saturated s = satt(T);
        ASSERT_EQ(s.ierr, 0) << s.text();
        const WithoutNewton without;
        const Saturated told = satt(T);
        ASSERT_EQ(told.ierr, 0) << told.text();
        if (T < 0.9 * criticalT()) {
            EXPECT_NEAR(s.rhol / told.rhol, 1.0, densities);
            EXPECT_NEAR(s.rhov / told.rhov, 1.0, densities);
            EXPECT_NEAR(s.p, told.p, pressures * told.p + roundingOfPressure);
            worst = larger({worst, std::fabs(s.rhol / told.rhol - 1.0), std::fabs(s.rhov / told.rhov - 1.0)});
        } else {
            EXPECT_NEAR(s.rhol / told.rhol, 1.0, besideCritical);
            EXPECT_NEAR(s.rhov / told.rhov, 1.0, besideCritical);
        }
        // an equilibrium between stable phases, whose Gibbs energies are compared at the vapor's pressure
        const double pv = pressure(T, s.rhov), RT = fluidConstants.R * T;
        const double liquid = gibbs(T, s.rhol) + (pv - pressure(T, s.rhol)) / s.rhol;
        EXPECT_NEAR((liquid - gibbs(T, s.rhov)) / RT, 0.0, 1e-10);
        EXPECT_GT(slope(T, s.rhol), 0.0);
        EXPECT_GT(slope(T, s.rhov), 0.0);
    }
    EXPECT_EQ(pureNewtonControl.asked, states);
    EXPECT_EQ(pureNewtonControl.found, states);
    std::printf("%-9s densities differ by %.1e at most\n", GetParam(), worst);
}

TEST_P(PureNewton, FindsTheStatesOfTheIterationsAtPressure) {
    const double lowest = 1.01 * std::max(satt(lowestT() + 0.01).p, fluidConstants.PTPN[1]);
    const double highest = satt(0.99 * criticalT()).p;
    constexpr int states = 40;
    pureNewtonControl.asked = pureNewtonControl.found = 0;
    for (int k = 0; k < states; ++k) {
        const double p = lowest * std::pow(highest / lowest, random_.between(0.0, 1.0));
        SCOPED_TRACE(p);
        const Saturated s = satp(p);
        ASSERT_EQ(s.ierr, 0) << s.text();
        EXPECT_NEAR(pressure(s.T, s.rhov) / p, 1.0, 1e-10);
        const WithoutNewton without;
        const Saturated told = satp(p);
        ASSERT_EQ(told.ierr, 0) << told.text();
        EXPECT_NEAR(s.T / told.T, 1.0, 1e-11);
        const double close = told.T < 0.9 * criticalT() ? densities : besideCritical;
        EXPECT_NEAR(s.rhol / told.rhol, 1.0, close);
        EXPECT_NEAR(s.rhov / told.rhov, 1.0, close);
    }
    EXPECT_EQ(pureNewtonControl.asked, states);
    EXPECT_EQ(pureNewtonControl.found, states);
}

// Close to the critical point its pair is an equilibrium, too, or it leaves the state to the iterations.
TEST_P(PureNewton, AnswersWithAnEquilibriumOrNotAtAllBesideTheCriticalPoint) {
    const CriticalPoint critical{criticalT(), criticalP(), criticalD()};
    for (int k = 0; k < 40; ++k) {
        const double T = criticalT() * (1.0 - std::pow(10.0, random_.between(-8.0, -2.0)));
        double p = -1.0, rhol = -1.0, rhov = -1.0;
        RMIX(unitComposition(1));
        if (!newtonPureAtTemperature(T, 1, critical, p, rhol, rhov)) {
            EXPECT_EQ(p, -1.0);
            EXPECT_EQ(rhol, -1.0);
            EXPECT_EQ(rhov, -1.0);
            continue;
        }
        SCOPED_TRACE(T / criticalT() - 1.0);
        EXPECT_GT(rhol, rhov);
        EXPECT_NEAR(pressure(T, rhol) / p, 1.0, 1e-10);
        EXPECT_NEAR(pressure(T, rhov) / p, 1.0, 1e-10);
        EXPECT_NEAR(gibbs(T, rhol), gibbs(T, rhov), 1e-10 * fluidConstants.R * T);
        EXPECT_GT(slope(T, rhol), 0.0);
        EXPECT_GT(slope(T, rhov), 0.0);
    }
}

INSTANTIATE_TEST_SUITE_P(Fluids, PureNewton, ::testing::ValuesIn(pureFluids),
                         [](const auto& fluid) { return std::string(fluid.param); });
INSTANTIATE_TEST_SUITE_P(FurtherFluids, PureNewton, ::testing::ValuesIn(furtherFluids),
                         [](const auto& fluid) { return std::string(fluid.param); });

bool answers(double T) {
    double p = 0.0, rhol = 0.0, rhov = 0.0;
    return newtonPureAtTemperature(T, 1, {criticalT(), criticalP(), criticalD()}, p, rhol, rhov);
}
bool answersAtPressure(double p) {
    double T = 0.0, rhol = 0.0, rhov = 0.0;
    return newtonPureAtPressure(p, 1, {criticalT(), criticalP(), criticalD()}, T, rhol, rhov);
}

TEST(PureNewtonEdge, WithoutAncillaryEquationsTheIterationsAnswer) {
    ASSERT_EQ(setUp("R134A"), 0);
    ASSERT_TRUE(answers(300.0));
    ASSERT_TRUE(answersAtPressure(700.0));
    const Saturated before = satt(300.0);
    for (Text3* tag : {&modelTags.HDLK[1], &modelTags.HDVK[1], &modelTags.HPSK[1]}) {
        const Text3 kept = *tag;
        tag->assign("NBS");
        EXPECT_EQ(answers(300.0), tag == &modelTags.HPSK[1]);
        EXPECT_FALSE(answersAtPressure(700.0));
        resetSaturationMemo();
        EXPECT_NEAR(satt(300.0).p / before.p, 1.0, 1e-11);
        *tag = kept;
    }
}

// A root far from where the ancillary equations see the line is not taken for the saturated state.
TEST(PureNewtonEdge, FarFromTheAncillaryEquationsTheIterationsAnswer) {
    ASSERT_EQ(setUp("R134A"), 0);
    const Saturated before = satt(300.0);
    AncSlot& slot = ancTerms[1];
    slot.DVDRD *= 1.5;
    EXPECT_FALSE(answers(300.0));
    slot.DVDRD /= 1.5;
    slot.DLDRD *= 1.5;
    EXPECT_FALSE(answers(300.0));
    slot.DLDRD /= 1.5;
    resetSaturationMemo();
    EXPECT_EQ(satt(300.0).p, before.p);
}

// Bubble and dew point of a pure fluid are one pair: the second one asked for is not solved for again, unless the
// equation has left its state.
TEST(PureNewtonEdge, OnePairAnswersForBothLines) {
    ASSERT_EQ(setUp("R134A"), 0);
    resetSaturationMemo();
    const auto recalled = [](const auto& call) {
        const long before = pureNewtonControl.recalled;
        call();
        return pureNewtonControl.recalled - before;
    };
    Saturated b, d;
    EXPECT_EQ(recalled([&] { b = satt(300.0, bubble); }), 0);
    EXPECT_EQ(recalled([&] { d = satt(300.0, dew); }), 1);
    EXPECT_EQ(d.ierr, 0);
    for (const auto value : {&Saturated::p, &Saturated::rhol, &Saturated::rhov}) EXPECT_EQ(d.*value, b.*value);
    EXPECT_EQ(recalled([&] { d = satt(300.0 + 1e-10, bubble); }), 0) << "of this very temperature alone";
    EXPECT_EQ(recalled([&] { b = satp(500.0, bubble); }), 0);
    EXPECT_EQ(recalled([&] { d = satp(500.0, dew); }), 1);
    for (const auto value : {&Saturated::T, &Saturated::rhol, &Saturated::rhov}) EXPECT_EQ(d.*value, b.*value);
    pressure(310.0, 1.0);
    EXPECT_EQ(recalled([&] { d = satp(500.0, bubble); }), 0) << "the equation was asked for another state";
    EXPECT_EQ(d.T, b.T);
    resetSaturationMemo();
    EXPECT_EQ(recalled([&] { d = satp(500.0, dew); }), 0) << "all is forgotten";
}

TEST(PureNewtonEdge, OtherEquationsOfStateAreLeftToTheIterations) {
    ASSERT_EQ(setUp("R134A"), 0);
    EXPECT_TRUE(hasPlainHelmholtzEnergy(1));
    EXPECT_FALSE(hasPlainHelmholtzEnergy(0));
    modelTags.IANC[1] = 1;
    EXPECT_FALSE(hasPlainHelmholtzEnergy(1));
    modelTags.IANC[1] = 0;
    int cubic = 2;
    PREOS(cubic);
    EXPECT_FALSE(hasPlainHelmholtzEnergy(1));
    cubic = 0;
    PREOS(cubic);
    EXPECT_TRUE(hasPlainHelmholtzEnergy(1));
}

// Above the critical pressure of the file the answer keeps its code.
TEST(PureNewtonEdge, CodesAboveTheCriticalPointStay) {
    ASSERT_EQ(setUp("R134A"), 0);
    EXPECT_EQ(satt(criticalT() + 1.0).ierr, 121);
    EXPECT_EQ(satp(1.01 * criticalP()).ierr, 141);
    EXPECT_EQ(satp(0.5 * fluidConstants.PTPN[1]).ierr, 2);
}

}  // namespace
}  // namespace frigana
