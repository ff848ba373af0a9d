// Flashes of mixtures above the temperature and the pressure that CRITP gives, which are an estimate and not the limits
// of the two-phase region; of pure fluids between the end of their equation's saturation line and their critical
// pressure; at the critical point itself. The flash at temperature and pressure, which asks for stability, is the
// judge.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "FlashState.h"
#include "Larger.h"
#include "PROP_SUB.h"
#include "PROP_SUB_FUGACITY.h"
#include "PureFluid.h"
#include "SAT_SUB.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {
namespace {

using test::flash;
using test::FlashState;
using test::larger;

struct Critical {
    double T = 0, p = 0, D = 0;
};
Critical criticalPoint(const Composition& z) {
    Critical c;
    int ierr = 0;
    Text255 herr;
    CRITP(z, c.T, c.p, c.D, ierr, herr);
    return c;
}

Composition binary(double first) {
    Composition z{};
    z[1] = first;
    z[2] = 1 - first;
    return z;
}

// Largest relative difference of the fugacities of two phases.
double disequilibrium(const FlashState& s) {
    Composition fl{}, fv{};
    int ierr = 0;
    Text255 herr;
    FGCTY2(s.T, s.Dl, s.x, fl, ierr, herr);
    FGCTY2(s.T, s.Dv, s.y, fv, ierr, herr);
    double worst = 0;
    for (int i = 1; i <= modelTags.NC; ++i) worst = larger(worst, std::abs(fl[i] / fv[i] - 1));
    return worst;
}

struct WideBlend {
    const char *first, *second;
    double x1;
    Critical estimate;  // in the place of CRITP's own: that of R32/BUTANE is 4.5 K and 430 kPa too low
};

// Two-phase states above the critical temperature or pressure of the estimate, by every pair of inputs.
TEST(BeyondEstimate, RetrogradeStatesByEveryPairAgreeWithTemperatureAndPressure) {
    constexpr double agreement = 1e-6;
    const WideBlend blends[] = {{"CO2", "BUTANE", 0.7, {351.250568, 8253.499, 7.05721}},
                                {"R32", "BUTANE", 0.5, {374.202683, 5315.3002, 5.75368}}};
    int states = 0, flashes = 0;
    double worst = 0;
    for (const WideBlend& blend : blends) {
        ASSERT_LE(test::setUp({blend.first, blend.second}), 0);
        const Composition z = binary(blend.x1);
        const Critical& c = blend.estimate;
        adoptedCriticalPoint = {true, z, c.T, c.p, c.D};
        int here = 0;
        for (const double reducedT : {0.96, 1.003, 1.02})
            for (const double reducedP : {0.75, 0.9, 1.005, 1.1}) {
                if (reducedT < 1 && reducedP < 1) continue;
                const FlashState wet = flash("TP", reducedT * c.T, reducedP * c.p, z);
                if (wet.ierr > 0 || !wet.twoPhase() || wet.q < 0.02 || wet.q > 0.98) continue;
                ++states;
                ++here;
                EXPECT_LT(disequilibrium(wet), agreement);
                for (const char* letters : {"PH", "PS", "PE", "PD", "TD", "TH", "TS", "TE", "HS", "ES", "DH", "DS"}) {
                    SCOPED_TRACE(std::string(letters) + " " + blend.first + "/" + blend.second + " " +
                                 std::to_string(reducedT) + " Tc " + std::to_string(reducedP) + " pc");
                    FlashState from = wet;
                    const FlashState state = flash(letters, from[letters[0]], from[letters[1]], z);
                    ++flashes;
                    ASSERT_LE(state.ierr, 0) << state.herr.trimmed();
                    ASSERT_TRUE(state.twoPhase()) << state.q << " for " << wet.q;
                    EXPECT_NEAR(state.T / wet.T, 1, agreement);
                    EXPECT_NEAR(state.p / wet.p, 1, 10 * agreement);
                    EXPECT_NEAR(state.q, wet.q, 1e-4);
                    worst = larger(worst, std::abs(state.T / wet.T - 1));
                }
            }
        EXPECT_GT(here, 1) << blend.first;
    }
    std::printf("%d states, %d flashes: T within %.1e\n", states, flashes, worst);
}

// Beside the line's own shares: one phase of the feed is stable there, and stays one.
TEST(BeyondEstimate, StableStatesStayOnePhase) {
    ASSERT_LE(test::setUp({"CO2", "BUTANE"}), 0);
    const Composition z = binary(0.7);
    const Critical c = criticalPoint(z);
    for (const double reducedT : {0.7, 1.2, 1.6})
        for (const double reducedP : {1.4, 1.7, 3.0}) {
            const FlashState one = flash("TP", reducedT * c.T, reducedP * c.p, z);
            if (one.ierr > 0 || one.twoPhase()) continue;
            for (const char* letters : {"PH", "PS", "PD", "TD"}) {
                FlashState from = one;
                const FlashState state = flash(letters, from[letters[0]], from[letters[1]], z);
                EXPECT_LE(state.ierr, 0) << state.herr.trimmed();
                EXPECT_FALSE(state.twoPhase())
                    << letters << " " << reducedT << " " << reducedP << " q " << state.q << " " << one.q;
                EXPECT_NEAR(state.T / one.T, 1, 1e-6) << letters;
            }
        }
}

TEST(BeyondEstimate, DensityFlashesOfNearlyAzeotropicBlendsFindTheirStates) {
    // R508A and R508B
    ASSERT_LE(test::setUp({"R23", "R116"}), 0);
    for (const double x1 : {0.5754, 0.6268}) {
        const Composition z = binary(x1);
        for (const double T : {160.0, 240.0, 280.0})
            for (const double q : {0.001, 0.3, 0.98}) {
                FlashState wet = flash("TQ", T, q, z);
                ASSERT_LE(wet.ierr, 0) << wet.herr.trimmed();
                for (const char* letters : {"DH", "DS", "DE"}) {
                    const FlashState state = flash(letters, wet.D, wet[letters[1]], z);
                    ASSERT_LE(state.ierr, 0) << letters << " " << T << " " << q << " " << state.herr.trimmed();
                    EXPECT_NEAR(state.T / T, 1, 1e-6) << letters << " " << T << " " << q;
                    EXPECT_NEAR(state.q, q, 1e-5) << letters << " " << T;
                }
            }
    }
}

// Little vapor has the same density at two temperatures; the other states have one.
TEST(BeyondEstimate, DensityAndQualityOfBlendsAreMetClosely) {
    for (const auto& [first, second] : {std::pair{"R32", "R125"}, {"R32", "R1234YF"}, {"PROPANE", "ISOBUTAN"}}) {
        ASSERT_LE(test::setUp({first, second}), 0);
        const Composition z = binary(0.7);
        for (const double reduced : {0.6, 0.7, 0.8, 0.9, 0.96})
            for (const double q : {0.01, 0.05, 0.4, 0.9}) {
                SCOPED_TRACE(testing::Message() << first << ' ' << second << ' ' << reduced << ' ' << q);
                const FlashState wet = flash("TQ", reduced * criticalPoint(z).T, q, z);
                ASSERT_LE(wet.ierr, 0);
                double t = 0, p = 0, Dl = 0, Dv = 0;
                Composition x{}, y{};
                int ierr = 0;
                Text255 herr;
                DQFL2(wet.D, q, z, 1, t, p, Dl, Dv, x, y, ierr, herr);
                ASSERT_LE(ierr, 0) << herr.trimmed();
                EXPECT_NEAR(((1 - q) / Dl + q / Dv) * wet.D, 1, 1e-9);
                const FlashState there = flash("TQ", t, q, z);
                EXPECT_NEAR(there.p / p, 1, 1e-8);
                EXPECT_NEAR(there.Dv / Dv, 1, 1e-8);
                if (q > 0.1) {
                    EXPECT_NEAR(t / wet.T, 1, 1e-9);
                }
            }
    }
}

// The equations of these end their saturation line 1 to 9 kPa below the critical pressure of the fluid.
TEST(BeyondEstimate, PureFluidsBetweenTheEndOfTheLineAndTheCriticalPressure) {
    int states = 0;
    for (const char* fluid : {"R236FA", "R152A", "R114", "R134A"}) {
        ASSERT_LE(test::setUp(fluid), 0);
        const Composition z = unitComposition(1);
        const Critical c = criticalPoint(z);
        for (const double below : {0.1, 0.5, 1.0, 3.0, 8.0}) {
            const double p = c.p - below;
            for (const double reducedT : {0.7, 0.9, 0.99, 1.01, 1.2}) {
                SCOPED_TRACE(std::string(fluid) + " " + std::to_string(below) + " kPa " + std::to_string(reducedT));
                FlashState given = flash("TP", reducedT * c.T, p, z);
                ASSERT_LE(given.ierr, 0) << given.herr.trimmed();
                for (const char* letters : {"PH", "PS", "PE", "PD"}) {
                    const FlashState state = flash(letters, p, given[letters[1]], z);
                    EXPECT_LE(state.ierr, 0) << letters << " " << state.herr.trimmed();
                    EXPECT_NEAR(state.T / given.T, 1, 1e-6) << letters;
                    ++states;
                }
            }
        }
    }
    EXPECT_EQ(states, 4 * 5 * 5 * 4);
}

TEST(BeyondEstimate, StatesAtTheCriticalTemperatureItselfAreFound) {
    struct Row {
        std::vector<std::string_view> fluids;
        double x1, reducedT, reducedP;
    };
    const Row rows[] = {{{"R32", "R125"}, 0.697614699375863, 1.0, 1.2},
                        {{"R32", "R125"}, 0.697614699375863, 1.0 + 1e-8, 1.0},
                        {{"R32", "R125"}, 0.697614699375863, 1.0 - 1e-8, 1.0 + 1e-8},
                        {{"R32", "R1234YF"}, 0.8, 1.0, 1.3},
                        {{"R11"}, 1.0, 1.0 - 1e-12, 1.0},
                        {{"R11"}, 1.0, 1.0, 1.0 + 1e-10}};
    for (const Row& row : rows) {
        if (row.fluids.size() == 1) {
            ASSERT_LE(test::setUp({row.fluids[0]}), 0);
        } else {
            ASSERT_LE(test::setUp({row.fluids[0], row.fluids[1]}), 0);
        }
        const Composition z = binary(row.x1);
        const Critical c = criticalPoint(z);
        SCOPED_TRACE(std::string(row.fluids[0]) + " " + std::to_string(row.reducedT) + " " +
                     std::to_string(row.reducedP));
        const FlashState state = flash("TP", row.reducedT * c.T, row.reducedP * c.p, z);
        ASSERT_LE(state.ierr, 0) << state.herr.trimmed();
        double back = 0;
        PRESS(state.T, state.D, z, back);
        if (!state.twoPhase()) {
            EXPECT_NEAR(back / (row.reducedP * c.p), 1, 1e-6);
        }
    }
}

TEST(BeyondEstimate, AChangedTemperatureIsTold) {
    ASSERT_LE(test::setUp({"R32", "R134A"}), 0);
    const Composition z = binary(0.5);
    const Critical c = criticalPoint(z);
    const SlotArray<double> limits = fluidConstants.PEOS;
    const SlotArray<double> densities = fluidConstants.DEOS;
    fluidConstants.PEOS.fill(1e15);
    fluidConstants.DEOS.fill(1e15);
    const FlashState moved = flash("TP", 0.95 * c.T, 1e12, z);
    const FlashState kept = flash("TP", 0.95 * c.T, 1e4, z);
    fluidConstants.PEOS = limits;
    fluidConstants.DEOS = densities;
    EXPECT_EQ(moved.T, 1.1 * c.T);
    EXPECT_EQ(moved.ierr, -215);
    EXPECT_TRUE(moved.herr.trimmed().starts_with("[TPFLSH warning 215] ")) << moved.herr.trimmed();
    EXPECT_EQ(kept.ierr, 0);
}

// Below 200.1 K the model has two liquids, of which the one that corresponding states lead to stands 26 % too high.
TEST(BeyondEstimate, ColdDewPointBesideASecondLiquidIsTheStableOne) {
    ASSERT_LE(test::setUp({"R1234YF", "R236FA", "ISOBUTAN"}), 0);
    Composition z{};
    z[1] = 0.031;
    z[2] = 0.2;
    z[3] = 0.769;
    double before = 0;
    for (const double T : {190.0, 195.0, 199.0, 201.0, 205.0, 215.0}) {
        double p = 0, Dl = 0, Dv = 0;
        Composition x{}, y{};
        int ierr = 0;
        Text255 herr;
        SATT(T, z, 2, p, Dl, Dv, x, y, ierr, herr);
        ASSERT_LE(ierr, 0) << T << " " << herr.trimmed();
        if (ierr < 0) {
            EXPECT_NE(herr.trimmed().find("not stable"), std::string_view::npos);
            continue;
        }
        // a little below its dew point the vapor alone is stable, and the flash finds one phase
        const FlashState thin = flash("TP", T, 0.98 * p, z);
        EXPECT_LE(thin.ierr, 0);
        EXPECT_FALSE(thin.twoPhase()) << T;
        // no jump along the line: the logarithm of the pressure rises by 4 to 7 % per degree
        if (before > 0) {
            EXPECT_LT(std::log(p / before) / 10, 0.1);
        }
        before = p;
    }
}

}  // namespace
}  // namespace frigana
