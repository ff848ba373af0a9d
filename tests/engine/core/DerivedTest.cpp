// Curvature, heating values, excess properties and activities.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>

#include "DISPATCH.h"
#include "EXCESS.h"
#include "FluidConstants.h"
#include "FluidFiles.h"
#include "Fluids.h"
#include "HEAT.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "RIEM.h"
#include "TPRHO.h"

namespace frigana::test {
namespace {

double curvature(double t, double rho) {
    double r = 0.0;
    RIEM(t, rho, pure(), r);
    return r;
}

// The definition by differences: R = (1/sqrt g) (d/dT ((1/sqrt g) dg_rr/dT) + d/drho ((1/sqrt g) dg_TT/drho)), with
// the metric of the properties themselves.
double curvatureByDifferences(double t, double rho) {
    constexpr double avogadro = 6.0221367e23;
    const double R = fluidConstants.R;
    const auto gTT = [&](double T, double d) {
        double cv, cp;
        CVCP(T, d, pure(), cv, cp);
        return d * cv / (R * T * T);
    };
    const auto gDD = [&](double T, double d) {
        double slope;
        DPDD(T, d, pure(), slope);
        return slope / (R * T * d);
    };
    const auto root = [&](double T, double d) { return std::sqrt(gTT(T, d) * gDD(T, d)); };
    const double hT = 2e-3 * t, hD = 2e-3 * rho;
    const auto first = [](auto value, double x, double h) {
        return (8.0 * (value(x + h) - value(x - h)) - (value(x + 2 * h) - value(x - 2 * h))) / (12.0 * h);
    };
    const auto inT = [&](double T) { return first([&](double v) { return gDD(v, rho); }, T, hT) / root(T, rho); };
    const auto inD = [&](double d) { return first([&](double v) { return gTT(t, v); }, d, hD) / root(t, d); };
    return (first(inT, t, hT) + first(inD, rho, hD)) / root(t, rho) * 1e24 / avogadro;
}

TEST(Curvature, AgreesWithItsDefinitionByDifferences) {
    for (const char* fluid : {"PROPANE", "NITROGEN", "R134A"}) {
        ASSERT_TRUE(loadFluid(fluid));
        for (const double tr : {1.05, 1.5}) {
            for (const double dr : {0.1, 1.0, 2.2}) {
                const double t = tr * fluidConstants.TCRIT[1], rho = dr * fluidConstants.DCRIT[1];
                const double expected = curvatureByDifferences(t, rho);
                EXPECT_NEAR(curvature(t, rho), expected, 2e-5 * std::fabs(expected) + 1e-6) << fluid << tr << dr;
            }
        }
    }
}

TEST(Curvature, IsNegativeAndLargeNearTheCriticalPointAndZeroWithoutDensity) {
    ASSERT_TRUE(loadFluid("PROPANE"));
    const double tc = fluidConstants.TCRIT[1], dc = fluidConstants.DCRIT[1];
    const double near = curvature(1.01 * tc, dc), far = curvature(1.5 * tc, dc);
    EXPECT_LT(near, 10.0 * far);
    EXPECT_LT(near, 0.0);
    EXPECT_EQ(curvature(300.0, 9e-9), 0.0);
    EXPECT_EQ(curvature(0.0, 1.0), 0.0);
}

// Heat of combustion of the ideal gas at 298.15 K with liquid water [kJ/mol].
struct HeatingValue {
    const char* formula;
    double combustion;
    double water;  // moles per mole of fuel
};

TEST(HeatingValues, AtTheStandardStateTheyAreTheHeatOfCombustion) {
    // Rossini et al.: propane 2219.17, butane 2877.40 kJ/mol
    constexpr HeatingValue rows[] = {{"CH3CH2CH3 {C3H8}", 2219.17, 4.0}, {"C4H10 !butane", 2877.40, 5.0}};
    ASSERT_TRUE(loadFluid("PROPANE"));
    for (const HeatingValue& row : rows) {
        fluidFiles.HSYN1[1] = row.formula;
        fluidConstants.HCMBST[1] = row.combustion;
        double gross = 0, net = 0;
        int ierr = 0;
        Text255 herr;
        HEAT(298.15, 0.0, pure(), gross, net, ierr, herr);
        ASSERT_EQ(ierr, 0) << herr.trimmed();
        EXPECT_NEAR(gross, row.combustion * 1000.0, 1e-6);
        EXPECT_NEAR(gross - net, row.water * 44004.0, 1e-6);
    }
}

// d(heat)/dT = cp of what is used up less cp of what is formed.
TEST(HeatingValues, FollowTheHeatCapacitiesWithTemperature) {
    ASSERT_TRUE(loadFluid("PROPANE"));
    fluidFiles.HSYN1[1] = "CH3CH2CH3 {C3H8}";
    fluidConstants.HCMBST[1] = 2219.17;
    const auto heat = [](double t, bool wantNet) {
        double gross = 0, net = 0;
        int ierr = 0;
        Text255 herr;
        HEAT(t, 0.0, pure(), gross, net, ierr, herr);
        return wantNet ? net : gross;
    };
    const double t = 330.0;
    // cp at 330 K [J/(mol K)] of the ideal gases, JANAF tables: O2 29.62, CO2 38.67, H2O 33.82; liquid water 75.4
    const double fuel = CP0(t, pure());
    EXPECT_NEAR((heat(t + 1, false) - heat(t - 1, false)) / 2.0, fuel + 5 * 29.62 - 3 * 38.67 - 4 * 75.4, 2.0);
    EXPECT_NEAR((heat(t + 1, true) - heat(t - 1, true)) / 2.0, fuel + 5 * 29.62 - 3 * 38.67 - 4 * 33.82, 1.0);
}

// Enthalpies from 298.15 K [J/mol], with what the handbook fits leave (0.3 per cent, carbon dioxide 0.7); JANAF
// thermochemical tables (Chase, 1998).
TEST(HeatingValues, EnthalpiesOfTheProductsMeetTheTables) {
    struct Row {
        CombustionProduct product;
        double t, enthalpy, tolerance;
    };
    constexpr Row rows[] = {{CombustionProduct::waterVapor, 500.0, 6925.0, 20.0},
                            {CombustionProduct::waterVapor, 1000.0, 26000.0, 60.0},
                            {CombustionProduct::oxygen, 500.0, 6084.0, 20.0},
                            {CombustionProduct::oxygen, 1000.0, 22703.0, 60.0},
                            {CombustionProduct::carbonDioxide, 500.0, 8305.0, 60.0},
                            {CombustionProduct::carbonDioxide, 1000.0, 33397.0, 80.0},
                            {CombustionProduct::nitrogen, 500.0, 5911.0, 20.0},
                            {CombustionProduct::nitrogen, 1000.0, 21463.0, 60.0},
                            {CombustionProduct::sulfurDioxide, 500.0, 8758.0, 40.0}};
    for (const Row& row : rows)
        EXPECT_NEAR(ENTHHC(row.product, row.t), row.enthalpy, row.tolerance) << static_cast<int>(row.product);
    // liquid water from 25 to 100 C: 75.4 J/(mol K) on the mean
    EXPECT_NEAR(ENTHHC(CombustionProduct::liquidWater, 373.15), 5655.0, 25.0);
}

TEST(HeatingValues, OtherElementsAndMissingHeatsAreRefused) {
    ASSERT_TRUE(loadFluid("R134A"));
    double gross = 0, net = 0;
    int ierr = 0;
    Text255 herr;
    fluidConstants.HCMBST[1] = 100.0;
    for (const char* formula : {"CF3CH2F {C2H2F4}", "{CCl4}", "{C2h6}", "{}", ""}) {
        fluidFiles.HSYN1[1] = formula;
        HEAT(300.0, 0.0, pure(), gross, net, ierr, herr);
        EXPECT_EQ(ierr, 1) << formula;
        EXPECT_TRUE(herr.startsWith("[HEAT error 1] Error in chemical formula"));
        EXPECT_EQ(gross, 0.0);
    }
    fluidFiles.HSYN1[1] = "{C3H8}";
    fluidConstants.HCMBST[1] = -1.0;
    HEAT(300.0, 0.0, pure(), gross, net, ierr, herr);
    EXPECT_EQ(ierr, 2);
    EXPECT_TRUE(herr.startsWith("[HEAT error 2] Heating values are not available for all species in the mixture"));
}

TEST(ExcessProperties, OfAPureFluidVanish) {
    ASSERT_TRUE(loadFluid("PROPANE"));
    double vE, eE, hE, sE, aE, gE;
    int ierr = 0;
    Text255 herr;
    for (const int kphase : {0, 1, 2}) {
        double rho = kphase == 2 ? -0.08 : 0.0;
        EXCESS(300.0, kphase == 1 ? 2000.0 : 200.0, pure(), kphase, rho, vE, eE, hE, sE, aE, gE, ierr, herr);
        ASSERT_EQ(ierr, 0) << herr.trimmed();
        EXPECT_GT(rho, 0.0);
        EXPECT_NEAR(vE, 0.0, 1e-9 / rho);
        for (const double value : {eE, hE, aE, gE}) EXPECT_NEAR(value, 0.0, 1e-5);
        EXPECT_NEAR(sE, 0.0, 1e-7);
    }
    Composition activity, coefficient;
    double rho = 0.0;
    TPRHO(300.0, 2000.0, pure(), 1, 0, rho, ierr, herr);
    ACTVY(300.0, rho, pure(), activity, coefficient, ierr, herr);
    ASSERT_EQ(ierr, 0) << herr.trimmed();
    EXPECT_NEAR(activity[1], 1.0, 1e-9);
    EXPECT_NEAR(coefficient[1], 1.0, 1e-9);
    EXPECT_EQ(modelTags.IPUREFLD, 0);
}

}  // namespace
}  // namespace frigana::test
