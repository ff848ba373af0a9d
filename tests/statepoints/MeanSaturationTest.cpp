// The mean levels of condensers and evaporators against their definitions, written out again with the state points
// alone; and the phases of a blend in equilibrium against the engine's own answer.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "23_SpecificPoints.h"
#include "24_SaturationPoints.h"
#include "27_PSatAverage.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"
#include "Substances.h"
#include "UTILITY.h"

namespace frigana::test {
namespace {

// ---- definitions
// ------------------------------------------------------------------------------------------------------

STATEPT atP(const SUBSTANCE& s, double P, double Q) {
    STATEPT point{};
    PROPSIMPLEPQ(s, P, Q, point);
    return point;
}
STATEPT atT(const SUBSTANCE& s, double T, double Q) {
    STATEPT point{};
    PROPSIMPLETQ(s, T, Q, point);
    return point;
}
STATEPT mixed(const SUBSTANCE& s, double P, double H) {
    STATEPT point{};
    PROPSIMPLEPH(s, P, H, point);
    return point;
}
// Drop of saturation temperature of a drop of pressure, and the other way round.
double dropOf(const SUBSTANCE& s, double P, double DP, double Q) {
    return DP == 0.0 ? 0.0 : atP(s, P, Q).T - atP(s, P - DP, Q).T;
}
double pressureDropOf(const SUBSTANCE& s, double P, double DT, double Q) {
    return DT == 0.0 ? 0.0 : P - atT(s, atP(s, P, Q).T - DT, Q).P;
}

// What a level consists of.
struct Answer {
    double mean = 0, drop = 0, glide = 0;
    STATEPT bubble{}, dew{};
};

// Up to five straight-line steps in pressure with a probe of 0.05 kPa, until the mean temperature is met within 0.001
// K.
template <class MeanT>
double meanPressure(const SUBSTANCE& s, double T, MeanT meanT) {
    double P = (atT(s, T, 0).P + atT(s, T, 1).P) / 2;
    double before = meanT(P);
    for (int round = 1; round <= 5; ++round) {
        const double probe = P + 1.0 / 20;
        const double slope = (probe - P) / (meanT(probe) - before);
        P = slope * T + (P - slope * before);
        before = meanT(P);
        if (std::fabs(T - before) <= 0.0010000000474974513 || std::isnan(before)) break;
    }
    return P;
}

double condenserT(const SUBSTANCE& s, double P, double DP) {
    return (atP(s, P + DP / 2, 1).T + atP(s, P - DP / 2, 0).T) / 2;
}
double evaporatorT(const SUBSTANCE& s, double P, double H, double DP) {
    return (mixed(s, P + DP / 2, H).T + atP(s, P - DP / 2, 1).T) / 2;
}
double secondaryT(const SUBSTANCE& s, double P, double DP) {
    return (atP(s, P + DP / 2, 0).T + atP(s, P - DP / 2, 1).T) / 2;
}

void expectSame(const Answer& found, const Answer& expected) {
    // the memo of the last saturation states moves the last digits
    const auto near = [](double a, double b) { return std::fabs(a - b) <= 1e-9 * std::max(std::fabs(b), 1.0); };
    EXPECT_PRED2(near, found.mean, expected.mean);
    EXPECT_PRED2(near, found.drop, expected.drop);
    EXPECT_PRED2(near, found.glide, expected.glide);
    EXPECT_PRED2(near, found.bubble.P, expected.bubble.P);
    EXPECT_PRED2(near, found.bubble.T, expected.bubble.T);
    EXPECT_PRED2(near, found.dew.P, expected.dew.P);
    EXPECT_PRED2(near, found.dew.T, expected.dew.T);
}

struct MeanLevel : testing::TestWithParam<const char*> {
    SUBSTANCE& s = fluid(GetParam());
    std::mt19937 random{7};
    double between(double low, double high) { return std::uniform_real_distribution(low, high)(random); }
    // A level with drops from none to what changes the temperature by several kelvins.
    double T = 0, P = 0, DP = 0, DT = 0, H = 0;
    void draw(int i) {
        T = between(std::max(0.6 * s.TC, s.TMIN + 10), 0.95 * s.TC);
        P = atT(s, T, 0.5).P;
        DP = i % 4 == 0 ? 0.0 : between(0.0, 0.3) * P;
        DT = i % 4 == 0 ? 0.0 : between(0.0, 8.0);
        H = atT(s, T, between(0.1, 0.5)).H;
    }
};
constexpr int states = 24;

TEST_P(MeanLevel, OfACondenser) {
    for (int i = 0; i < states; ++i) {
        draw(i);
        Answer found, expected;
        PCOND_TDP(s, T, DP, found.mean, found.drop, found.glide, found.bubble, found.dew);
        expected.mean = meanPressure(s, T, [&](double p) { return condenserT(s, p, DP); });
        const auto ends = [&](double mean, double drop) {
            expected.dew = atP(s, mean + drop / 2, 1);
            expected.bubble = atP(s, mean - drop / 2, 0);
            expected.glide = expected.dew.T - expected.bubble.T;
        };
        ends(expected.mean, DP);
        expected.drop = dropOf(s, expected.dew.P, DP, 1);
        expectSame(found, expected);

        TCOND_PDP(s, P, DP, found.mean, found.drop, found.glide, found.bubble, found.dew);
        ends(P, DP);
        expected.mean = condenserT(s, P, DP);
        expected.drop = dropOf(s, P + DP / 2, DP, 1);
        expectSame(found, expected);

        TCOND_PDT(s, P, DT, found.mean, found.drop, found.glide, found.bubble, found.dew);
        expected.drop = pressureDropOf(s, P, DT, 1);
        ends(P, expected.drop);
        expected.mean = condenserT(s, P, expected.drop);
        expectSame(found, expected);

        PCOND_TDT(s, T, DT, found.mean, found.drop, found.glide, found.bubble, found.dew);
        expected.bubble = atT(s, T - DT / 2, 0);
        expected.dew = atT(s, T + DT / 2, 1);
        expected.mean = (expected.bubble.P + expected.dew.P) / 2;
        expected.drop = expected.dew.P - expected.bubble.P;
        expected.glide = expected.dew.T - expected.bubble.T;
        expectSame(found, expected);
    }
}

TEST_P(MeanLevel, OfAnEvaporator) {
    for (int i = 0; i < states; ++i) {
        draw(i);
        Answer found, expected;
        const auto atMean = [&](double mean, double inletT) {
            expected.bubble = atP(s, mean, 0);
            expected.dew = atP(s, mean, 1);
            expected.glide = expected.dew.T - inletT;
        };
        PEVAP_TDP(s, T, H, DP, found.mean, found.drop, found.glide, found.bubble, found.dew);
        expected.mean = meanPressure(s, T, [&](double p) { return evaporatorT(s, p, H, DP); });
        expected.drop = dropOf(s, expected.mean - DP / 2, DP, 0);
        atMean(expected.mean, mixed(s, expected.mean + DP / 2, H).T);
        expectSame(found, expected);

        TEVAP_PDP(s, P, H, DP, found.mean, found.drop, found.glide, found.bubble, found.dew);
        const auto byPressure = [&](double drop) {
            const double inletT = mixed(s, P + drop / 2, H).T;
            expected.mean = evaporatorT(s, P, H, drop);
            expected.drop = inletT - atP(s, P - drop / 2, 1).T;
            atMean(P, inletT);
        };
        byPressure(DP);
        expectSame(found, expected);

        TEVAP_PDT(s, P, H, DT, found.mean, found.drop, found.glide, found.bubble, found.dew);
        const double drop = pressureDropOf(s, P, DT, 0);
        byPressure(drop);
        expected.drop = drop;
        expectSame(found, expected);

        PEVAP_TDT(s, T, H, DT, found.mean, found.drop, found.glide, found.bubble, found.dew);
        STATEPT inlet{};
        PROPSIMPLETH(s, T + DT / 2, H, inlet);
        const STATEPT outlet = atT(s, T - DT / 2, 1);
        expected.mean = (inlet.P + outlet.P) / 2;
        expected.drop = inlet.P - outlet.P;
        atMean(expected.mean, inlet.T);
        expectSame(found, expected);
    }
}

TEST_P(MeanLevel, OfASecondaryEvaporator) {
    for (int i = 0; i < states; ++i) {
        draw(i);
        Answer found, expected;
        const auto ends = [&](double mean, double drop) {
            expected.bubble = atP(s, mean + drop / 2, 0);
            expected.dew = atP(s, mean - drop / 2, 1);
            expected.glide = expected.dew.T - expected.bubble.T;
        };
        PEVAP_TDP_SEC(s, T, DP, found.mean, found.drop, found.glide, found.bubble, found.dew);
        expected.mean = meanPressure(s, T, [&](double p) { return secondaryT(s, p, DP); });
        ends(expected.mean, DP);
        expected.drop = dropOf(s, expected.bubble.P, DP, 0);
        expectSame(found, expected);

        TEVAP_PDP_SEC(s, P, DP, found.mean, found.drop, found.glide, found.bubble, found.dew);
        ends(P, DP);
        expected.mean = secondaryT(s, P, DP);
        expected.drop = dropOf(s, P + DP / 2, DP, 0);
        expectSame(found, expected);

        TEVAP_PDT_SEC(s, P, DT, found.mean, found.drop, found.glide, found.bubble, found.dew);
        expected.drop = pressureDropOf(s, P, DT, 0);
        ends(P, expected.drop);
        expected.mean = secondaryT(s, P, expected.drop);
        expectSame(found, expected);

        PEVAP_TDT_SEC(s, T, DT, found.mean, found.drop, found.glide, found.bubble, found.dew);
        expected.bubble = atT(s, T + DT / 2, 0);
        expected.dew = atT(s, T - DT / 2, 1);
        expected.mean = (expected.bubble.P + expected.dew.P) / 2;
        expected.drop = expected.bubble.P - expected.dew.P;
        expected.glide = expected.dew.T - expected.bubble.T;
        expectSame(found, expected);
    }
}

// What a search of so many rounds at most, until the mean temperature is met so closely, ends at.
double searched(const SUBSTANCE& s, double T, double DP, int rounds, double tolerance) {
    double P = (atT(s, T, 0).P + atT(s, T, 1).P) / 2, before = condenserT(s, P, DP);
    for (int round = 1; round <= rounds; ++round) {
        const double probe = P + 1.0 / 20;
        const double slope = (probe - P) / (condenserT(s, probe, DP) - before);
        P = slope * T + (P - slope * before);
        before = condenserT(s, P, DP);
        if (std::fabs(T - before) <= tolerance) break;
    }
    return P;
}

// Rounds end within 0.001 K: a first round that is left 1.005 times as far off is followed by another one, and one that
// is left 0.995 times as far is the last.
TEST(MeanSaturationSearch, EndsWithinAThousandthOfAKelvin) {
    SUBSTANCE& s = fluid("R407C.MIX");
    const double T = 300.0, tolerance = 0.0010000000474974513;
    const auto leftAfterOne = [&](double DP) {
        return std::fabs(T - condenserT(s, searched(s, T, DP, 1, 0.0), DP)) / tolerance;
    };
    for (const double wanted : {0.995, 1.005}) {
        double low = 1.0, high = 600.0;
        ASSERT_LT(leftAfterOne(low), wanted);
        ASSERT_GT(leftAfterOne(high), wanted);
        for (int i = 0; i < 40; ++i) (leftAfterOne((low + high) / 2) < wanted ? low : high) = (low + high) / 2;
        double P = 0, drop = 0, glide = 0;
        STATEPT bubble{}, dew{};
        PCOND_TDP(s, T, low, P, drop, glide, bubble, dew);
        const double one = searched(s, T, low, 1, 0.0), two = searched(s, T, low, 2, 0.0);
        ASSERT_GT(std::fabs(one - two), 1e-4);
        EXPECT_NEAR(P, wanted < 1.0 ? one : two, 1e-7) << wanted;
    }
}

// At a pressure as low as the probe the straight line misses by far, and five rounds do not get there.
TEST(MeanSaturationSearch, MakesFiveRoundsAtMost) {
    SUBSTANCE& s = fluid("R245FA.FLD");
    const double T = atP(s, 0.03, 0.0).T, DP = 0.015;
    double P = 0, drop = 0, glide = 0;
    STATEPT bubble{}, dew{};
    PCOND_TDP(s, T, DP, P, drop, glide, bubble, dew);
    const auto after = [&](int rounds) { return searched(s, T, DP, rounds, 0.0010000000474974513); };
    ASSERT_GT(std::fabs(after(4) - after(5)), 1e-6);
    ASSERT_GT(std::fabs(after(6) - after(5)), 1e-6);
    EXPECT_NEAR(P, after(5), 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Fluids, MeanLevel, testing::Values("R134A.FLD", "R410A.MIX", "R407C.MIX", "R455A.MIX"),
                         [](const auto& row) { return std::string(row.param).substr(0, 5); });

// ---- phases in equilibrium
// --------------------------------------------------------------------------------------------

// Both phases in the units of the application, each with its own molar mass.
TEST(PhasesInEquilibrium, HaveTheMolarMassOfTheirOwnComposition) {
    SUBSTANCE& s = fluid("R407C.MIX");
    for (const int side : {1, 2}) {
        double p = 0, rhol = 0, rhov = 0, e = 0, hl = 0, hv = 0, sl = 0, sv = 0, cv = 0, cp = 0, w = 0, jt = 0;
        Composition x{}, y{};
        int ierr = 0;
        Text255 herr;
        SATT(280.0, s.ZMOL, side, p, rhol, rhov, x, y, ierr, herr);
        ASSERT_LE(ierr, 0);
        double pressure = 0;
        THERM(280.0, rhol, x, pressure, e, hl, sl, cv, cp, w, jt);
        THERM(280.0, rhov, y, pressure, e, hv, sv, cv, cp, w, jt);
        ASSERT_GT(std::fabs(WMOL(x) / WMOL(y) - 1.0), 0.02);
        STATEPT liquid{}, vapor{};
        const auto expectPhases = [&] {
            EXPECT_NEAR(liquid.D / (rhol * WMOL(x)), 1.0, 1e-6);
            EXPECT_NEAR(vapor.D / (rhov * WMOL(y)), 1.0, 1e-6);
            EXPECT_NEAR(liquid.H, hl / WMOL(x), 1e-3);
            EXPECT_NEAR(vapor.H, hv / WMOL(y), 1e-3);
            EXPECT_NEAR(liquid.S, sl / WMOL(x), 1e-5);
            EXPECT_NEAR(vapor.S, sv / WMOL(y), 1e-5);
            EXPECT_NEAR(liquid.P, p, 1e-6 * p);
            EXPECT_NEAR(vapor.P, p, 1e-6 * p);
            EXPECT_NEAR(liquid.T, 280.0, 1e-6);
            EXPECT_NEAR(vapor.T, 280.0, 1e-6);
        };
        PROPMIXTURET_EQ(s, 280.0, side, liquid, vapor);
        expectPhases();
        PROPMIXTUREP_EQ(s, p, side, liquid, vapor);
        expectPhases();
    }
}

}  // namespace
}  // namespace frigana::test
