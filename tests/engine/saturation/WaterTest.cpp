// Saturation of water by temperature and by density.
#include <gtest/gtest.h>

#include "Saturation.h"
#include "Water.h"

namespace frigana {
namespace {

using namespace test;

constexpr double molarMass = 18.015268;  // [g/mol]

class Water : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(setUpWater(), 0); }
};

// Verification values for two-phase states of the release IAPWS R6-95: kPa and kg/m3.
TEST_F(Water, SaturationAgreesWithThePublishedCheckValues) {
    struct Row {
        double T, p, rhol, rhov;
    };
    constexpr Row rows[] = {{275.0, 0.698451167, 999.887406, 0.00550664919},
                            {450.0, 932.203564, 890.341250, 4.81200360},
                            {625.0, 16908.2693, 567.090385, 118.290280}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.T);
        const Saturated s = satt(row.T);
        ASSERT_EQ(s.ierr, 0) << s.text();
        EXPECT_NEAR(s.p / row.p, 1.0, 1e-8);
        EXPECT_NEAR(s.rhol * molarMass / row.rhol, 1.0, 1e-8);
        EXPECT_NEAR(s.rhov * molarMass / row.rhov, 1.0, 1e-8);
    }
}

// 999.9 kg/m3 is met below and above the temperature of the largest density, 277.1 K.
TEST_F(Water, DensityWithTwoRootsIsTakenOnTheHighTemperatureSide) {
    const double rho = 999.9 / molarMass;
    const ByDensity s = satd(rho, -1);
    ASSERT_EQ(s.ierr, 0) << s.text();
    EXPECT_EQ(s.line, 1);
    EXPECT_GT(s.T, 277.2);
    EXPECT_NEAR(satt(s.T).rhol / rho, 1.0, 2e-7);
    // the fast way was not taken: it would have left its densities at 0.72 Tc
    EXPECT_EQ(saturationExtrema.rhol72, 0.0);
    const double coldRoot = 275.2;
    EXPECT_GT(satt(coldRoot + 0.2).rhol, rho);
    EXPECT_LT(satt(coldRoot - 0.6).rhol, rho);
}

TEST_F(Water, DensityThatNoLiquidHasFailsAtOnce) {
    const double aboveMaximum = 55.505, belowTriple = 55.4;
    for (const int kph : {-1, 1}) EXPECT_EQ(satd(aboveMaximum, kph).ierr, 161) << kph;
    for (const int kph : {-1, 3}) EXPECT_EQ(satd(belowTriple, kph).ierr, 161) << kph;
    const ByDensity s = satd(aboveMaximum, -1);
    EXPECT_EQ(s.text(),
              "[SATD error 161] iteration for saturation state given density did not converge for D =  55.505 mol/L");
    EXPECT_EQ(s.T, criticalT());
    EXPECT_EQ(s.rhol, criticalD());
}

TEST_F(Water, DensityAboveTheMaximumLiesOnTheMeltingLine) {
    const ByDensity s = satd(62.0);
    ASSERT_EQ(s.ierr, 0) << s.text();
    EXPECT_EQ(s.line, 3);
    EXPECT_NEAR(s.rhol / 62.0, 1.0, 2e-7);
    EXPECT_NEAR(pressure(s.T, s.rhol) / s.p, 1.0, 1e-6);
    EXPECT_GT(s.p, 208566.0 * 0.9);
}

TEST_F(Water, OrdinaryLiquidDensity) {
    const Saturated s = satt(320.0);
    const ByDensity back = satd(s.rhol);
    ASSERT_EQ(back.ierr, 0) << back.text();
    EXPECT_EQ(back.line, 1);
    EXPECT_NEAR(back.T, 320.0, 1e-4);
}

}  // namespace
}  // namespace frigana
