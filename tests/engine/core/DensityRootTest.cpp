// TPRHO: roots from both sides over all fluids, choice of the side, limits, failures.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

#include "CORE_ANC.h"
#include "CORE_PR.h"
#include "FluidConstants.h"
#include "Fluids.h"
#include "ModelTags.h"
#include "PREOS.h"
#include "PROP_SUB.h"
#include "TPRHO.h"

namespace frigana::test {
namespace {

struct Root {
    double rho = 0.0;
    int ierr = 0;
    Text255 herr;
};
Root root(double t, double p, int kph, double guess = 0.0) {
    Root r;
    r.rho = guess;
    TPRHO(t, p, pure(), kph, guess > 0.0 ? 1 : 0, r.rho, r.ierr, r.herr);
    return r;
}
double pressureAt(double t, double rho) {
    double p = 0.0;
    PRESS(t, rho, pure(), p);
    return p;
}
double slopeAt(double t, double rho) {
    double slope = 0.0;
    DPDD(t, rho, pure(), slope);
    return slope;
}

class DensityRootOfFluid : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(AllFluids, DensityRootOfFluid, testing::ValuesIn(pureFluids), fluidName);

// A grid below and above the saturation line and over the supercritical range. The root is judged by the density error
// that is left: (p(rho) - p) / (rho dp/drho), 1e-9 (1e-7 within three per cent of the critical point, where rounding of
// the pressure moves the density).
TEST_P(DensityRootOfFluid, GridOnBothSidesOfTheSaturationLine) {
    ASSERT_TRUE(loadFluid(GetParam()));
    const FluidConstants& c = fluidConstants;
    const double tc = c.TCRIT[1], pc = c.PCRIT[1], dc = c.DCRIT[1];
    Worst worst, nearCritical;
    int states = 0;
    const auto check = [&](double t, double p, int kph, double guess) {
        const Root r = root(t, p, kph, guess);
        const std::string place = std::to_string(t) + " K " + std::to_string(p) + " kPa side " + std::to_string(kph) +
                                  " guess " + std::to_string(guess);
        ++states;
        EXPECT_EQ(r.ierr, 0) << place << ": " << r.herr.trimmed();
        if (r.ierr != 0) return r.rho;
        const double slope = slopeAt(t, r.rho);
        EXPECT_GT(slope, 0.0) << place;
        const bool close = std::fabs(t / tc - 1.0) < 0.03 && std::fabs(r.rho / dc - 1.0) < 0.5;
        (close ? nearCritical : worst).see(std::fabs((pressureAt(t, r.rho) - p) / (r.rho * slope)), place);
        return r.rho;
    };
    // the equations of R123 and R124 have further roots on the liquid side when cold: a guess must be near its root
    const bool manyRoots = std::string(GetParam()) == "R123" || std::string(GetParam()) == "R124";
    const double tmin = std::max(c.TMEOS[1], ancTerms[1].PSTMIN);
    const double highest = std::string(GetParam()) == "R114" ? 0.95 : 0.99;  // R114 is fitted to 0.98 Tc only
    for (int i = 0; i <= 24; ++i) {
        const double t = tmin + (highest * tc - tmin) * i / 24.0;
        double psat = 0.0;
        int ierr = 0;
        Text255 herr;
        PSATK(1, t, psat, ierr, herr);
        ASSERT_EQ(ierr, 0);
        // the ancillary equations are off by up to 0.2 per cent
        for (const double p : {1.02 * psat, 3.0 * psat, 0.9 * pc, 3.0 * pc, 0.5 * c.PEOS[1], c.PEOS[1]}) {
            if (p < 1.01 * psat) continue;
            const double liquid = check(t, p, 1, 0.0);
            EXPECT_GT(liquid, dc);
            const double spread = p < pc || manyRoots ? 0.02 : 0.2;
            for (const double factor : {1.0 - spread, 1.0 + spread}) {
                const double again = check(t, p, 1, factor * liquid);
                EXPECT_NEAR(again, liquid, 1e-8 * liquid) << t << " " << p;
            }
        }
        for (const double part : {0.98, 0.7, 0.1, 1e-3}) {
            const double p = part * psat;
            if (p < 1e-7) continue;
            const double vapor = check(t, p, 2, 0.0);
            EXPECT_LT(vapor, dc);
            for (const double factor : {0.9, 1.05}) {
                const double again = check(t, p, 2, factor * vapor);
                EXPECT_NEAR(again, vapor, 1e-8 * vapor) << t << " " << p;
            }
        }
    }
    const double tmax = c.TXEOS[1];
    for (int i = 0; i <= 16; ++i) {
        const double t = 1.01 * tc + (tmax - 1.01 * tc) * i / 16.0;
        for (const double pr : {1e-6, 0.01, 0.5, 0.9, 1.0, 1.1, 1.5, 3.0, 8.0}) {
            const double p = pr * pc;
            const double rho = check(t, p, 1, 0.0);
            // above the critical temperature there is one root, whatever side is asked for
            for (const int kph : {2, 1}) EXPECT_NEAR(check(t, p, kph, 0.0), rho, 1e-7 * rho) << t << " " << p;
        }
    }
    EXPECT_LT(worst.deviation, 1e-9) << worst.where;
    EXPECT_LT(nearCritical.deviation, 1e-7) << nearCritical.where;
    std::printf("%-8s %d roots, worst density error %.1e, near critical %.1e\n", GetParam(), states, worst.deviation,
                nearCritical.deviation);
}

TEST(DensityRoot, PressureOfZero) {
    ASSERT_TRUE(loadFluid("R134A"));
    EXPECT_EQ(root(300.0, 0.0, 2).rho, 0.0);
    EXPECT_EQ(root(300.0, 0.0, 1).rho, 0.0);
    EXPECT_EQ(root(300.0, 1e-61, 1).rho, 0.0);
    const Root liquid = root(200.0, 1e-10, 1);
    EXPECT_EQ(liquid.ierr, 0);
    EXPECT_GT(liquid.rho, 14.0) << "a liquid under almost no pressure is a liquid";
    EXPECT_DOUBLE_EQ(root(300.0, 1e-9, 2).rho, 1e-9 / (fluidConstants.R * 300.0)) << "that of the ideal gas";
    EXPECT_EQ(root(0.0, 1e-9, 2).rho, 0.0);
}

TEST(DensityRoot, JustAboveTheCriticalTemperatureALowPressureIsVapor) {
    ASSERT_TRUE(loadFluid("R134A"));
    const double t = 1.0005 * fluidConstants.TCRIT[1], p = 0.6 * fluidConstants.PCRIT[1];
    const Root vapor = root(t, p, 2), asked = root(t, p, 1);
    EXPECT_EQ(asked.ierr, 0);
    EXPECT_EQ(asked.rho, vapor.rho);
    EXPECT_LT(asked.rho, fluidConstants.DCRIT[1]);
}

TEST(DensityRoot, LiquidIterationThatRunsAwayAboveTheCriticalTemperatureTurnsIntoTheVaporOne) {
    ASSERT_TRUE(loadFluid("NITROGEN"));
    const double t = 2.0 * fluidConstants.TCRIT[1], p = 500.0;
    Root r;
    r.rho = 200.0;  // u below -5 from the start
    TPRHO(t, p, pure(), -1, 1, r.rho, r.ierr, r.herr);
    EXPECT_EQ(r.ierr, 0) << r.herr.trimmed();
    EXPECT_NEAR(r.rho, root(t, p, 2).rho, 1e-9 * r.rho);
}

TEST(DensityRoot, ForcedSides) {
    ASSERT_TRUE(loadFluid("R134A"));
    const double t = 300.0;
    // beyond the saturation pressure (703 kPa) the vapor root lives on up to the spinodal
    EXPECT_LT(root(t, 750.0, 2).rho, 1.0);
    EXPECT_LT(root(t, 750.0, -2).rho, 1.0);
    EXPECT_GT(root(t, 600.0, 1).rho, 11.0);
    EXPECT_GT(root(t, 600.0, -1).rho, 11.0);
    // the side of the guess
    EXPECT_GT(root(t, 650.0, 0, 10.0).rho, 11.0);
    EXPECT_LT(root(t, 650.0, 0, 0.2).rho, 1.0);
}

TEST(DensityRoot, WithoutPhaseAndGuessCode201) {
    ASSERT_TRUE(loadFluid("R134A"));
    const Root r = root(300.0, 650.0, 0);
    EXPECT_EQ(r.ierr, 201);
    EXPECT_TRUE(r.herr.startsWith("[TPRHO error 201] illegal input to TPRHO (kph <= 0); use TPFLSH instead"));
    EXPECT_EQ(root(300.0, 5000.0, 0).ierr, 0) << "above the critical pressure there is one side";
}

TEST(DensityRoot, NoLiquidRootGivesCode202) {
    ASSERT_TRUE(loadFluid("R134A"));
    const Root r = root(365.0, 1.0, -1);  // far below the spinodal pressure of the liquid
    EXPECT_EQ(r.ierr, 202);
    EXPECT_TRUE(r.herr.startsWith("[TPRHO error 202] liquid iteration has not converged for T =")) << r.herr.trimmed();
    EXPECT_NE(r.herr.find(" MPa, rho (last guess) = "), 0);
    EXPECT_NE(r.herr.find(" mol/L, compositions = "), 0);
    EXPECT_GT(r.rho, 0.0);
}

TEST(DensityRoot, NoVaporRootGivesCode203) {
    ASSERT_TRUE(loadFluid("R134A"));
    const Root r = root(300.0, 3000.0, -2);  // far above the spinodal pressure of the vapor
    EXPECT_EQ(r.ierr, 203);
    EXPECT_TRUE(r.herr.startsWith("[TPRHO error 203] vapor iteration has not converged for T =")) << r.herr.trimmed();
    EXPECT_NE(r.herr.find(" mol/L, x (mol frac) ="), 0);
    EXPECT_GT(r.rho, 0.0);
    EXPECT_LT(r.rho, fluidConstants.DCRIT[1]);
}

// Under the cubic equation the roots are known in closed form: one on each side, and the nearer one to a guess.
TEST(DensityRoot, OfTheCubicEquation) {
    ASSERT_LE(setUp({"PROPANE"}), 0);
    int cubic = 1, own = 0;
    PREOS(cubic);
    const double t = 300.0, p = 900.0;
    const Root vapor = root(t, p, 2), liquid = root(t, p, 1);
    EXPECT_LT(vapor.rho, 1.0);
    EXPECT_GT(liquid.rho, 9.0);
    for (const Root& r : {vapor, liquid}) {
        EXPECT_EQ(r.ierr, 0);
        EXPECT_NEAR(pressureAt(t, r.rho), p, 1e-7 * p);
    }
    EXPECT_EQ(root(t, p, -2).rho, vapor.rho);
    EXPECT_EQ(root(t, p, -1).rho, liquid.rho);
    EXPECT_EQ(root(t, p, 0, 0.9 * liquid.rho).rho, liquid.rho);
    EXPECT_EQ(root(t, p, 0, 2.0 * vapor.rho).rho, vapor.rho);
    EXPECT_EQ(root(450.0, p, 1).rho, root(450.0, p, 2).rho) << "one root only";
    // next to no pressure: the liquid is found by its own search, from the root of the cubic equation
    const Root stretched = root(t, 0.5, 1);
    EXPECT_NEAR(stretched.rho, liquid.rho, 0.05 * liquid.rho);
    EXPECT_NEAR(pressureAt(t, stretched.rho), 0.5, 1e-3);
    // molecules of next to no size: the root is denser than any fluid
    const double pressure = std::exchange(prTerms[1].PCPR, 1e13);
    prTerms[1].PRCOEF[1] = 0.0;
    const Root dense = root(t, 1e15, 1);
    EXPECT_EQ(dense.ierr, 202);
    EXPECT_TRUE(dense.herr.startsWith("[TPRHO error 202] liquid iteration has not converged for T ="))
        << dense.herr.trimmed();
    prTerms[1].PCPR = pressure;
    PREOS(own);
    modelTags.LFORCESETUP = true;
}

TEST(DensityRoot, ACompositionOfNothingGivesCode200) {
    ASSERT_LE(setUp({"R32", "R125"}), 0);
    double rho = 7.0;
    int ierr = 0;
    Text255 herr;
    TPRHO(300.0, 1000.0, Composition{}, 2, 0, rho, ierr, herr);
    EXPECT_EQ(ierr, 200);
    EXPECT_TRUE(herr.startsWith("[TPRHO error 200] [CRTHMX error] sum(x)= 0")) << herr.trimmed();
}

TEST(DensityRoot, MixtureWithoutACriticalPointGivesCode200) {
    ASSERT_TRUE(loadFluid("R32", "", 1, 2));
    ASSERT_TRUE(loadFluid("R125", "", 2, 2));
    Composition x{};
    x[1] = x[2] = 0.5;
    double t = 0, p = 0, d = 0, rho = 0;
    int ierr = 0;
    Text255 herr;
    CRITP(x, t, p, d, ierr, herr);
    if (ierr > 0) {
        EXPECT_EQ(t, 100.0) << "a temperature that is not known becomes 100 K";
        EXPECT_EQ(p, 0.0);
        EXPECT_EQ(d, 0.0);
        TPRHO(300.0, 1000.0, x, 2, 0, rho, ierr, herr);
        EXPECT_EQ(ierr, 200);
        EXPECT_TRUE(herr.startsWith("[TPRHO error 200] "));
    } else {
        EXPECT_GT(t, 300.0);
    }
}

}  // namespace
}  // namespace frigana::test
