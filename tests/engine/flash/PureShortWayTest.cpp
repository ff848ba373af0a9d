// The short ways of the flashes of pure fluids, beside the general searches that stand behind them.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <utility>

#include "FlashState.h"
#include "LIMITS.h"
#include "Larger.h"
#include "PROP_SUB.h"
#include "PureFluid.h"
#include "SAT_SUB.h"
#include "SAT_SUB_PURE_NEWTON.h"

namespace frigana {
namespace {

using test::flash;
using test::FlashState;
using test::larger;

const Composition z = unitComposition(1);

FlashState byGeneralSearch(const char* pair, double a, double b) {
    pureNewtonControl.enabled = false;
    resetSaturationMemo();
    FlashState state = flash(pair, a, b, z);
    pureNewtonControl.enabled = true;
    resetSaturationMemo();
    return state;
}

// -1 liquid, 0 both phases, 1 vapor, 2 beyond the critical point
int phaseOf(double q) {
    return q < 0 ? -1 : q <= 1 ? 0 : q > 998.5 ? 2 : 1;
}

class ShortWay : public testing::TestWithParam<const char*> {};

// Both ways lead to one temperature, phase and code. The general searches end at 1e-8 of the property; energy and
// enthalpy of a cold liquid change by so little with pressure that density is compared where it matters.
TEST_P(ShortWay, FindsTheStatesOfTheGeneralSearch) {
    ASSERT_LE(test::setUp(GetParam()), 0);
    std::mt19937_64 generator(11);
    std::uniform_real_distribution<double> uniform(0, 1);
    double tmin, tmax, Dmax, pmax;
    LIMITS("EOS", z, tmin, tmax, Dmax, pmax);
    const double Tc = fluidConstants.TCRIT[1];
    const double coldest = std::max(tmin, fluidConstants.TTPN[1]) + 1.0, hottest = std::min(tmax, 1.6 * Tc);
    // below the triple point's pressure the general search answers
    const double lowest = std::max(1.0, 1.01 * fluidConstants.PTPN[1]);
    double worst = 0;
    int states = 0;
    while (states < 40) {
        const double T = coldest + uniform(generator) * (hottest - coldest), share = uniform(generator);
        FlashState state;
        if (states % 3 == 0 && T < 0.99 * Tc) {
            state = flash("TQ", T, 0.02 + 0.96 * share, z);
        } else {
            state = flash("TP", T, lowest * std::pow(0.5 * pmax / lowest, share), z);
        }
        // the saturation pressure of the coldest liquids is that of the ideal gas
        if (state.ierr != 0 || std::abs(T / Tc - 1) < 0.01 || state.p < 1e-5) continue;
        ++states;
        // liquids denser than at the triple point are left to the general search above the critical pressure
        const bool dense = state.p > fluidConstants.PCRIT[1] && state.D > fluidConstants.DTPN[1];
        for (const char* pair : {"PH", "PS", "PE", "HS", "ES"}) {
            // of the liquids of one entropy energy tells none under low pressure
            if (pair[0] == 'E' && phaseOf(state.q) < 0 && state.p < 100.0) continue;
            SCOPED_TRACE(testing::Message() << pair << " of T " << state.T << " p " << state.p << " q " << state.q);
            const double a = state[pair[0]], b = state[pair[1]];
            const FlashState found = flash(pair, a, b, z);
            ASSERT_EQ(found.ierr, 0) << found.herr.trimmed();
            EXPECT_NEAR(found.T / state.T, 1.0, dense ? 1e-7 : 1e-9);
            if (!dense) worst = larger(worst, std::abs(found.T / state.T - 1));
            EXPECT_EQ(phaseOf(found.q), phaseOf(state.q));
            if (state.twoPhase()) {
                EXPECT_NEAR(found.q, state.q, 1e-9);
                EXPECT_EQ(found.cv, twoPhaseValue);
            }
            const FlashState general = byGeneralSearch(pair, a, b);
            if (general.ierr != 0) continue;
            EXPECT_NEAR(found.T / general.T, 1.0, 1e-7);
            EXPECT_EQ(phaseOf(found.q), phaseOf(general.q));
            if (pair[0] == 'P' && found.q > -900 && found.q < 900) {
                EXPECT_NEAR(found.q, general.q, 1e-7 * std::max(1.0, std::abs(general.q)));
            }
        }
    }
    std::printf("%-9s temperatures come back to %.1e\n", GetParam(), worst);
}
INSTANTIATE_TEST_SUITE_P(Fluids, ShortWay, testing::ValuesIn(test::pureFluids),
                         [](const auto& fluid) { return std::string(fluid.param); });

// What the range of the property refuses stays refused, and what is solid.
TEST(ShortWayEdge, RefusalsOfTheRangeStay) {
    ASSERT_EQ(test::setUp("HYDROGEN"), 0);
    EXPECT_EQ(flash("PS", 1069604.60513, -10.7646799303, z).ierr, 249);
    ASSERT_EQ(test::setUp("R134A"), 0);
    for (const char* pair : {"PH", "PS", "PE"}) {
        EXPECT_EQ(flash(pair, 100.0, -1e6, z).ierr, 249) << pair;
        EXPECT_EQ(flash(pair, 100.0, 1e6, z).ierr, 249) << pair;
    }
    ASSERT_EQ(test::setUp("CO2"), 0);
    const FlashState ice = flash("PH", 400.0, 0.0, z);
    EXPECT_EQ(ice.ierr, byGeneralSearch("PH", 400.0, 0.0).ierr);
    EXPECT_NE(ice.ierr, 0);
}

// The equation of hydrogen has a negative heat capacity where the fluid would be solid, and with it a second, cold
// state of every property under high pressure.
TEST(ShortWayEdge, HydrogenUnderHighPressureIsNotAnsweredByItsUnstableState) {
    ASSERT_EQ(test::setUp("HYDROGEN"), 0);
    double worst = 0;
    // [K, kPa] at three quarters of the pressure of freezing and less
    for (const auto& [T, p] : {std::pair{60.0, 2.2e5},
                               {91.5, 4.9e5},
                               {113.7, 6.6e5},
                               {200.0, 1.2e6},
                               {435.0, 1.5e6},
                               {435.0, 2e6},
                               {990.0, 1.4e6},
                               {990.0, 2e6}}) {
        FlashState state = flash("TP", T, p, z);
        ASSERT_EQ(state.ierr, 0);
        for (const char* pair : {"PH", "PS", "PE"}) {
            const FlashState found = flash(pair, p, state[pair[1]], z);
            ASSERT_EQ(found.ierr, 0) << pair << " " << T << " " << found.herr.trimmed();
            EXPECT_NEAR(found.T, T, 1e-9 * T) << pair << " " << p;
            EXPECT_GT(found.cp, 0) << pair << " " << T;
            worst = std::max(worst, std::abs(found.T / T - 1));
        }
    }
    std::printf("temperatures of hydrogen come back to %.1e\n", worst);
}

// The equation of water begins at 251 K, that of ice melting under pressure; its vapor below the triple point's pressure
// has no dew point there.
TEST(ShortWayEdge, ThinWaterVaporIsFound) {
    ASSERT_EQ(test::setUp("WATER"), 0);
    for (const double p : {0.01, 0.3, 0.6}) {
        for (const double T : {280.0, 350.0, 900.0}) {
            FlashState state = flash("TP", T, p, z);
            ASSERT_EQ(state.ierr, 0);
            for (const char* pair : {"PH", "PS", "PE"}) {
                const FlashState found = flash(pair, p, state[pair[1]], z);
                ASSERT_EQ(found.ierr, 0) << pair << " " << p << " " << T << " " << found.herr.trimmed();
                EXPECT_NEAR(found.T, T, 1e-7 * T) << pair << " " << p;
                EXPECT_EQ(found.q, 998.0);
            }
        }
    }
}

// A search by pressure did not find this one.
TEST(ShortWayEdge, AColdStateOfBothPhasesIsFoundByEnergyAndEntropy) {
    ASSERT_EQ(test::setUp("ETHANE"), 0);
    const FlashState state = flash("TQ", 99.5166215, 0.46, z);
    ASSERT_EQ(state.ierr, 0);
    const FlashState found = flash("ES", state.e, state.s, z);
    ASSERT_EQ(found.ierr, 0) << found.herr.trimmed();
    EXPECT_NEAR(found.T, state.T, 1e-8);
    EXPECT_NEAR(found.q, state.q, 1e-9);
}

// States of both phases that a search by pressure does not find, since the liquid below them is colder than the limits.
TEST(ShortWayEdge, ColdStatesOfBothPhasesAreFoundByEnthalpyAndEntropy) {
    struct Row {
        const char* fluid;
        double below;
    };
    double worst = 0;
    for (const Row& row : {Row{"PROPANE", 108.0}, Row{"ISOBUTAN", 124.0}}) {
        ASSERT_EQ(test::setUp(row.fluid), 0);
        const double coldest = fluidConstants.TTPN[1] + 0.01;
        std::mt19937_64 generator(3);
        std::uniform_real_distribution<double> uniform(0, 1);
        for (int k = 0; k < 200; ++k) {
            const double T = coldest + uniform(generator) * (row.below - coldest);
            const FlashState state = flash("TQ", T, 0.01 + 0.98 * uniform(generator), z);
            ASSERT_EQ(state.ierr, 0);
            const FlashState found = flash("HS", state.h, state.s, z);
            ASSERT_EQ(found.ierr, 0) << row.fluid << " " << T << " " << found.herr.trimmed();
            EXPECT_NEAR(found.T, T, 1e-8);
            EXPECT_NEAR(found.q, state.q, 1e-9);
            worst = larger(worst, std::abs(found.T - T));
        }
    }
    std::printf("temperatures of cold states come back to %.1e K\n", worst);
}

}  // namespace
}  // namespace frigana
