// Saturation by density, enthalpy, energy and entropy.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "SETUP.h"
#include "Saturation.h"

namespace frigana {
namespace {

using namespace test;

class InverseLine : public ::testing::TestWithParam<const char*> {
  protected:
    void SetUp() override { ASSERT_LE(setUp(GetParam()), 0); }
    Random random_;
};

// The state that a density was taken from comes back. The liquid's search by SATT stops at a relative 1e-7 of the
// density, which a cold liquid gains over some 1e-4 K.
TEST_P(InverseLine, DensityLeadsBackToItsState) {
    Largest liquid, vapor;
    for (int k = 0; k < 150; ++k) {
        const double T = random_.between(lowestT() + 0.1, 0.999 * criticalT());
        SCOPED_TRACE(T);
        const Saturated s = satt(T);
        ASSERT_EQ(s.ierr, 0) << s.text();
        const ByDensity l = satd(s.rhol), v = satd(s.rhov);
        ASSERT_EQ(l.ierr, 0) << l.text();
        ASSERT_EQ(v.ierr, 0) << v.text();
        EXPECT_EQ(l.line, 1);
        EXPECT_EQ(v.line, 2);
        EXPECT_NEAR(l.T, T, 2e-4);
        EXPECT_NEAR(v.T, T, 1e-5);
        EXPECT_NEAR(satt(l.T).rhol / s.rhol, 1.0, 2e-7);
        EXPECT_NEAR(satt(v.T).rhov / s.rhov, 1.0, 1e-6);
        EXPECT_NEAR(v.p / s.p, 1.0, 1e-5);
        liquid.take(std::fabs(l.T - T), T);
        vapor.take(std::fabs(v.T - T), T);
    }
    std::printf("%-8s SATD: largest deviation liquid %.1e K at %.2f K, vapor %.1e K at %.2f K\n", GetParam(),
                liquid.value, liquid.where, vapor.value, vapor.where);
}

using Solver = Roots (*)(double, int, const Composition&);
using Property = double (*)(double, double, const Composition&);

// Every root lies on its line and has the property, and the state that it was taken from is among the roots. Where the
// property is flat along the line the temperature is as uncertain as its tolerance over the slope.
void rootsLieOnTheLine(Solver solver, Property property, double tolerance, Random& random) {
    for (int k = 0; k < 100; ++k) {
        const double T = random.between(lowestT() + 1.0, 0.998 * criticalT());
        const int line = k % 2 == 0 ? 1 : 2;
        SCOPED_TRACE(::testing::Message() << "T " << T << " line " << line);
        const Composition x = unitComposition(1);
        const Saturated s = satt(T);
        ASSERT_EQ(s.ierr, 0) << s.text();
        const double value = property(T, line == 1 ? s.rhol : s.rhov, x);
        const Roots roots = solver(value, 0, x);
        // a second root on the vapor line may lie closer to the critical point than the lines can be told apart
        if (roots.ierr != 0) {
            EXPECT_EQ(roots.ierr, 161) << roots.text();
        }
        ASSERT_GE(roots.count, 1) << roots.text();
        double closest = 1e9;
        for (int r = 0; r < roots.count; ++r) {
            const auto i = static_cast<std::size_t>(r);
            EXPECT_NEAR(property(roots.T[i], roots.rho[i], x), value, tolerance);
            const Saturated at = satt(roots.T[i]);
            EXPECT_NEAR((roots.line[i] == 1 ? at.rhol : at.rhov) / roots.rho[i], 1.0, 1e-8);
            EXPECT_NEAR(at.p / roots.p[i], 1.0, 1e-8);
            if (roots.line[i] == line) closest = std::min(closest, std::fabs(roots.T[i] - T));
        }
        EXPECT_LT(closest, 0.05);
        const Roots one = solver(value, line, x);
        ASSERT_GE(one.count, 1);
        for (int r = 0; r < one.count; ++r) EXPECT_EQ(one.line[static_cast<std::size_t>(r)], line);
    }
}

// The tolerance of the searches is 1e-6 and grows tenfold at passes 10, 15 and 18.
TEST_P(InverseLine, EnthalpyRootsLieOnTheLine) {
    rootsLieOnTheLine(sath, enthalpy, 1.1e-3, random_);
}
TEST_P(InverseLine, EnergyRootsLieOnTheLine) {
    rootsLieOnTheLine(sate, energy, 1.1e-3, random_);
}
TEST_P(InverseLine, EntropyRootsLieOnTheLine) {
    rootsLieOnTheLine(sats, entropy, 1.1e-5, random_);
}

TEST_P(InverseLine, MaximumOfTheVaporIsFlat) {
    for (const int flag : {0, 1}) {
        double value, T;
        int ierr;
        Text255 herr;
        EHMAXX(unitComposition(1), flag, value, T, ierr, herr);
        ASSERT_EQ(ierr, 0);
        const Property property = flag == 0 ? enthalpy : energy;
        const auto at = [&](double t) { return property(t, satt(t).rhov, unitComposition(1)); };
        EXPECT_NEAR(at(T), value, 1e-6 * std::fabs(value));
        const double step = 0.2 * std::min(1.0, criticalT() - T);
        EXPECT_LT(at(T + step), value);
        EXPECT_LT(at(T - step), value);
    }
}

TEST_P(InverseLine, ExtremaOfTheEntropyAreFlat) {
    LineExtremum high, low, liquidLow;
    int ierr;
    Text255 herr;
    SMAXX(unitComposition(1), high, low, liquidLow, ierr, herr);
    ASSERT_EQ(ierr, 0);
    const auto at = [](double t) { return entropy(t, satt(t).rhov); };
    if (high.T > 0.0) {
        const double step = 0.2 * std::min(1.0, criticalT() - high.T);
        EXPECT_LT(at(high.T + step), high.value);
        EXPECT_LT(at(high.T - step), high.value);
    }
    if (low.T > 0.0) {
        EXPECT_LT(low.T, high.T);
        EXPECT_GT(at(low.T + 0.5), low.value);
        EXPECT_GT(at(low.T - 0.5), low.value);
    }
    if (high.T < 0.0) {
        // a wet vapor: entropy falls all the way to the critical point
        double last = at(lowestT() + 0.1);
        for (int k = 1; k <= 40; ++k) {
            const double T = lowestT() + 0.1 + (0.999 * criticalT() - lowestT() - 0.1) * k / 40.0;
            EXPECT_LT(at(T), last) << T;
            last = at(T);
        }
    }
}

TEST_P(InverseLine, CriticalPointOfTheEquationLiesAtTheStatedOne) {
    double T, rho, p;
    int ierr;
    Text255 herr;
    FNCRPT(unitComposition(1), T, rho, p, ierr, herr);
    ASSERT_EQ(ierr, 0);
    EXPECT_NEAR(T / criticalT(), 1.0, 0.01);
    EXPECT_NEAR(rho / criticalD(), 1.0, 0.25);
    double slope, curvature;
    DPDD(T, rho, unitComposition(1), slope);
    DPDD2(T, rho, unitComposition(1), curvature);
    EXPECT_NEAR(slope, 0.0, 1e-6);
    EXPECT_NEAR(curvature, 0.0, 1e-3);
}

INSTANTIATE_TEST_SUITE_P(Fluids, InverseLine, ::testing::ValuesIn(pureFluids),
                         [](const auto& fluid) { return std::string(fluid.param); });

// -------------------------------------------------------------------------------------------------------- corners

TEST(InverseEdge, DensityNextToTheCriticalOneIsTheCriticalPointAtOnce) {
    for (const char* fluid : pureFluids) {
        SCOPED_TRACE(fluid);
        ASSERT_LE(setUp(fluid), 0);
        for (const double offset : {-0.0005, 0.0005}) {
            const ByDensity s = satd(criticalD() + offset);
            EXPECT_EQ(s.ierr, 0);
            EXPECT_EQ(s.line, 1);
            EXPECT_EQ(s.T, criticalT());
            EXPECT_EQ(s.p, criticalP());
            EXPECT_EQ(s.rhol, criticalD());
            EXPECT_EQ(s.rhov, criticalD());
        }
    }
}

TEST(InverseEdge, DensityOutOfTheLimitsIsRefused) {
    ASSERT_EQ(setUp("R134A"), 0);
    const ByDensity dense = satd(100.0);
    EXPECT_EQ(dense.ierr, 2);
    EXPECT_TRUE(dense.text().starts_with("[SATD error  2] one or more inputs are out of range: ")) << dense.text();
    EXPECT_GT(satd(0.0).ierr, 0);
    EXPECT_GT(satd(-1.0).ierr, 0);
}

TEST(InverseEdge, DensityBeyondTheTriplePointWithoutSolidLinesGives2) {
    ASSERT_EQ(setUp("R134A"), 0);
    const ByDensity dense = satd(15.8);
    EXPECT_EQ(dense.ierr, 2);
    EXPECT_EQ(dense.line, 3);
    EXPECT_EQ(dense.text(),
              "[SATD error  2] density above triple-point density; D =  15.800 mol/L; Dtp =  15.594 mol/L");
    const ByDensity thin = satd(1e-5);
    EXPECT_EQ(thin.ierr, 2);
    EXPECT_EQ(thin.line, 4);
    EXPECT_TRUE(
        thin.text().starts_with("[SATD error  2] density below triple-point density; D = 0.10000E-04 mol/L; "
                                "Dtp ="))
        << thin.text();
}

TEST(InverseEdge, DensitiesBeyondTheTriplePointLieOnTheSolidLines) {
    ASSERT_EQ(setUp("CO2"), 0);
    const Saturated melting = satt(222.0, freezing);
    ASSERT_EQ(melting.ierr, 0);
    ASSERT_GT(melting.rhol, fluidConstants.DTPN[1]);
    const ByDensity solid = satd(melting.rhol);
    EXPECT_EQ(solid.ierr, 0) << solid.text();
    EXPECT_EQ(solid.line, 3);
    EXPECT_NEAR(solid.T, 222.0, 1e-3);
    EXPECT_NEAR(solid.p / melting.p, 1.0, 1e-4);
    const Saturated snow = satt(200.0, sublimation);
    ASSERT_EQ(snow.ierr, 0);
    const ByDensity thin = satd(snow.rhov);
    EXPECT_EQ(thin.ierr, 0) << thin.text();
    EXPECT_EQ(thin.line, 4);
    EXPECT_NEAR(thin.T, 200.0, 1e-4);
}

TEST(InverseEdge, SlowWayAgreesWithTheFastOne) {
    ASSERT_EQ(setUp("R134A"), 0);
    for (const double T : {200.0, 280.0, 350.0, 373.0}) {
        const Saturated s = satt(T);
        for (const double rho : {s.rhol, s.rhov}) {
            const ByDensity fast = satd(rho, 0), slow = satd(rho, -1);
            ASSERT_EQ(fast.ierr, 0) << T;
            ASSERT_EQ(slow.ierr, 0) << T << slow.text();
            EXPECT_EQ(slow.line, fast.line);
            EXPECT_NEAR(slow.T, fast.T, 1e-4);
        }
    }
}

TEST(InverseEdge, EnthalpyAboveTheMaximumGives4AndNoRoot) {
    ASSERT_EQ(setUp("R134A"), 0);
    double maximum, T;
    int ierr;
    Text255 herr;
    EHMAXX(unitComposition(1), 0, maximum, T, ierr, herr);
    const Roots roots = sath(maximum + 1.0);
    EXPECT_EQ(roots.ierr, 4);
    EXPECT_EQ(roots.count, 0);
    EXPECT_TRUE(
        roots.text().starts_with("[SATH error  4] enthalpy greater than maximum value; h =  43777. J/mol, max = "
                                 " 43776. J/mol"))
        << roots.text();
    EXPECT_GE(sath(maximum - 1.0).count, 1);
}

TEST(InverseEdge, EnthalpyBelowTheLiquidAtTheTriplePointGives2) {
    ASSERT_EQ(setUp("R134A"), 0);
    const Roots roots = sath(-1e5);
    EXPECT_EQ(roots.ierr, 2);
    EXPECT_EQ(roots.count, 0);
    EXPECT_TRUE(
        roots.text().starts_with("[SATH error  2] enthalpy below triple-point value; h =-0.10000E+06 J/mol, "
                                 "min ="))
        << roots.text();
}

TEST(InverseEdge, EnthalpyAboveTheVaporAtTheTriplePointIsNotOnTheSublimationLine) {
    ASSERT_EQ(setUp("CO2"), 0);
    const Saturated triple = satt(fluidConstants.TMEOS[1]);
    const double h = enthalpy(triple.T, triple.rhov);
    const Roots above = sath(h + 100.0, sublimation);
    EXPECT_EQ(above.ierr, 8);
    EXPECT_TRUE(above.text().starts_with("[SATH error  8] enthalpy greater than triple point value; h ="))
        << above.text();
    const Roots below = sath(h - 200.0, sublimation);
    ASSERT_EQ(below.ierr, 0) << below.text();
    ASSERT_EQ(below.count, 1);
    EXPECT_EQ(below.line[0], 4);
    EXPECT_NEAR(enthalpy(below.T[0], below.rho[0]), h - 200.0, 1e-3);
}

TEST(InverseEdge, EnthalpyOnTheMeltingLine) {
    ASSERT_EQ(setUp("CO2"), 0);
    const Saturated s = satt(230.0, freezing);
    const double h = enthalpy(s.T, s.rhol);
    const Roots roots = sath(h, freezing);
    ASSERT_EQ(roots.ierr, 0) << roots.text();
    ASSERT_EQ(roots.count, 1);
    EXPECT_EQ(roots.line[0], 3);
    EXPECT_NEAR(roots.T[0], 230.0, 1e-5);
    const double entropyThere = entropy(s.T, s.rhol);
    const Roots second = sats(entropyThere, freezing);
    ASSERT_EQ(second.count, 1) << second.text();
    EXPECT_EQ(second.line[0], 3);
    EXPECT_NEAR(second.T[0], 230.0, 1e-5);
}

TEST(InverseEdge, EnergyMessagesShowTheirOwnNames) {
    ASSERT_EQ(setUp("R134A"), 0);
    const Roots above = sate(1e5);
    EXPECT_EQ(above.ierr, 4);
    EXPECT_TRUE(
        above.text().starts_with("[SATE error  4] energy greater than maximum value; e = 0.10000E+06 J/mol, max ="))
        << above.text();
    const Roots below = sate(-1e5);
    EXPECT_EQ(below.ierr, 2);
    EXPECT_TRUE(
        below.text().starts_with("[SATE error  2] energy below triple-point value; e =-0.10000E+06 J/mol, min ="))
        << below.text();
    EXPECT_EQ(inverseControl.ENERGYMODE, 0);
}

TEST(InverseEdge, EnergyMaximumSharesItsPlaceWithTheResidualOfTheMixtureSolver) {
    ASSERT_EQ(setUp("R134A"), 0);
    const Saturated warm = satt(360.0);
    const double onTheVaporLine = energy(360.0, warm.rhov);
    ASSERT_GT(onTheVaporLine, energy(criticalT(), criticalD()));
    ASSERT_EQ(sate(onTheVaporLine).ierr, 0);
    // what a mixture solution in between leaves behind is taken for the maximum
    saturationExtrema.highestEnergy.value = 1e-11;
    const Roots roots = sate(onTheVaporLine);
    EXPECT_EQ(roots.ierr, 4);
    EXPECT_TRUE(roots.text().ends_with("max = 0.10000E-10 J/mol")) << roots.text();
    RESETA();
    EXPECT_EQ(sate(onTheVaporLine).ierr, 0);
}

TEST(InverseEdge, EntropyWithoutARootOnTheLineGives1) {
    ASSERT_EQ(setUp("R32"), 0);
    const Saturated s = satt(300.0);
    const Roots roots = sats(entropy(s.T, s.rhov), 1);
    EXPECT_EQ(roots.ierr, 1);
    EXPECT_EQ(roots.count, 0);
    EXPECT_TRUE(roots.text().starts_with("[SATS error  1] no roots found for specified phase; s =")) << roots.text();
}

TEST(InverseEdge, EntropyOutOfTheRangeOfTheLines) {
    ASSERT_EQ(setUp("R134A"), 0);
    const Roots below = sats(-50.0);
    EXPECT_EQ(below.ierr, 2);
    EXPECT_TRUE(below.text().starts_with("[SATS error  2] entropy below minimum entropy; s = -50.000 J/mol-K, smin ="))
        << below.text();
    const Roots above = sats(1000.0);
    EXPECT_EQ(above.ierr, 4);
    EXPECT_TRUE(
        above.text().starts_with("[SATS error  4] entropy greater than maximum entropy; s =  1000.0 J/mol-K, smax ="))
        << above.text();
    EXPECT_EQ(above.count, 0);
}

// Isobutane's vapor line falls, rises and falls again.
TEST(InverseEdge, EntropyOfADryVaporHasThreeRootsFromWarmToCold) {
    ASSERT_EQ(setUp("ISOBUTAN"), 0);
    const Saturated s = satt(0.75 * criticalT());
    const Roots roots = sats(entropy(s.T, s.rhov));
    ASSERT_EQ(roots.ierr, 0) << roots.text();
    ASSERT_EQ(roots.count, 3);
    EXPECT_GT(roots.T[0], roots.T[1]);
    EXPECT_GT(roots.T[1], roots.T[2]);
    EXPECT_NEAR(roots.T[1], s.T, 1e-3);
}

TEST(InverseEdge, AnotherReferenceStateIsNotAnsweredFromOldValues) {
    ASSERT_EQ(setUp("R134A", "IIR"), 0);
    const Saturated s = satt(300.0);
    const double first = enthalpy(300.0, s.rhol);
    ASSERT_NEAR(sath(first).T[0], 300.0, 1e-6);
    Text3 reference = "ASH";
    int ierr;
    Text255 herr;
    SETREF(reference, 1, unitComposition(1), 0.0, 0.0, 0.0, 0.0, ierr, herr);
    ASSERT_EQ(ierr, 0);
    const double second = enthalpy(300.0, s.rhol);
    ASSERT_GT(std::fabs(second - first), 1000.0);
    const Roots roots = sath(second);
    EXPECT_EQ(roots.ierr, 0) << roots.text();
    EXPECT_NEAR(roots.T[0], 300.0, 1e-6);
}

}  // namespace
}  // namespace frigana
