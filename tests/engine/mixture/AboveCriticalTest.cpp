// Single phases and two phases of blends above their critical temperature: what is known of the hot end of the
// two-phase region, from the calls before, changes no result, and the region is found up to its highest temperature.
#include <gtest/gtest.h>

#include <cmath>

#include "Equilibrium.h"
#include "SETKTV.h"

namespace frigana::equilibria {
namespace {

using frigana::test::flash;
using frigana::test::FlashState;

struct Critical {
    double T = 0.0, p = 0.0, D = 0.0;
};
Critical critical(const Composition& z) {
    Critical c;
    int ierr = 0;
    Text255 herr;
    CRITP(z, c.T, c.p, c.D, ierr, herr);
    return c;
}

testing::AssertionResult same(const FlashState& a, const FlashState& b) {
    if (a.ierr != b.ierr) return testing::AssertionFailure() << "code " << a.ierr << ", not " << b.ierr;
    const auto differ = [](double u, double v) { return u != v && !(std::isnan(u) && std::isnan(v)); };
    for (const char letter : {'T', 'P', 'D', 'Q', 'E', 'H', 'S'}) {
        FlashState left = a, right = b;
        if (differ(left[letter], right[letter]))
            return testing::AssertionFailure() << letter << ' ' << left[letter] << ", not " << right[letter];
    }
    if (differ(a.Dl, b.Dl) || differ(a.Dv, b.Dv) || differ(a.cv, b.cv) || differ(a.cp, b.cp) || differ(a.w, b.w))
        return testing::AssertionFailure() << "a density or a heat capacity";
    for (int i = 1; i <= modelTags.NC; ++i)
        if (differ(a.x[i], b.x[i]) || differ(a.y[i], b.y[i])) return testing::AssertionFailure() << "a fraction";
    return testing::AssertionSuccess();
}

struct Blend {
    const char* name;  // a predefined blend, or the two components
    const char* second;
    double retrograde;  // [K] above CRITP's temperature, and 0 where no two-phase state is asked for there
};
constexpr Blend blends[] = {
    {"R410A", nullptr, 0.0}, {"R407C", nullptr, 0.0}, {"R448A", nullptr, 0.0},
    {"R428A", nullptr, 0.0}, {"R23", "BUTANE", 8.0},  {"CO2", "PROPANE", 0.25},
};

class AboveCritical : public testing::TestWithParam<Blend> {
  protected:
    void SetUp() override {
        const Blend& blend = GetParam();
        if (blend.second == nullptr)
            ASSERT_TRUE(setUpBlend(blend.name, z));
        else
            ASSERT_TRUE(setUpMixture({{blend.name, 0.5}, {blend.second, 0.5}}, z));
        c = critical(z);
        modelTags.IPRINTERR = 0;
    }
    void TearDown() override {
        modelTags.IPRINTERR = 1;
        RESETA();
    }

    Composition z{};
    Critical c;
};

// The failing searches of a hotter state leave nothing behind that a colder one could see.
TEST_P(AboveCritical, StatesAreTheSameFreshAndAfterFailingCalls) {
    for (const double above : {-3.0, 0.05, 1.0, 4.0, 30.0}) {
        for (const double share : {0.6, 0.95, 1.3}) {
            SCOPED_TRACE(testing::Message() << c.T + above << " K, " << share << " pc");
            RESETA();
            const FlashState fresh = flash("TP", c.T + above, share * c.p, z);
            RESETA();
            for (const double hotter : {1.4, 1.2, 1.05}) flash("TP", hotter * c.T, share * c.p, z);
            EXPECT_TRUE(same(flash("TP", c.T + above, share * c.p, z), fresh));
            EXPECT_TRUE(same(flash("TP", c.T + above, share * c.p, z), fresh));
        }
    }
}

// Hotter than the two-phase region there is one density, and neither line; the code is that of such a temperature.
TEST_P(AboveCritical, OnePhaseAndNoLine) {
    for (const double hotter : {1.3, 1.1, 1.05}) {
        const double T = hotter * c.T;
        for (const int kph : {bubble, dew, bubble}) {
            const TwoPhases line = atTemperature(T, kph, z);
            EXPECT_TRUE(line.ierr == 121 || line.ierr == 128) << line.ierr;
            EXPECT_EQ(line.p, c.p);
            EXPECT_EQ(line.rhol, c.D);
            EXPECT_EQ(line.rhov, c.D);
        }
        for (const double share : {0.5, 1.0, 1.4}) {
            const FlashState state = flash("TP", T, share * c.p, z);
            EXPECT_LE(state.ierr, 0);  // -1: above the range of the equations
            EXPECT_FALSE(state.twoPhase());
            EXPECT_LT(relative(pressure(T, state.D, z), share * c.p), 1e-9);
        }
    }
}

// The dew line up to its highest temperature, above the critical one, is found as ever when hotter calls have failed.
TEST_P(AboveCritical, RetrogradeStatesAreFoundAfterFailingCalls) {
    if (GetParam().retrograde == 0.0) return;
    const double T = c.T + GetParam().retrograde;
    for (const double hotter : {1.4, 1.2, 1.1, 1.05})
        for (const int kph : {bubble, dew}) EXPECT_NE(atTemperature(hotter * T, kph, z).ierr, 0);

    const TwoPhases line = atTemperature(T, dew, z);
    ASSERT_EQ(line.ierr, 0) << words(line.herr);
    EXPECT_LT(disequilibrium(line), 1e-8);
    EXPECT_GT(line.rhol, line.rhov);
    const FlashState state = flash("TP", T, 1.02 * line.p, z);
    ASSERT_EQ(state.ierr, 0) << words(state.herr);
    EXPECT_TRUE(state.twoPhase()) << state.q;
    TwoPhases phases;
    phases.T = T;
    phases.p = state.p;
    phases.rhol = state.Dl;
    phases.rhov = state.Dv;
    phases.x = state.x;
    phases.y = state.y;
    EXPECT_LT(disequilibrium(phases), 1e-7);
}

// From either side of the highest temperature of the dew line, found here by its pressures: below it there are two
// phases, whatever was asked before.
TEST_P(AboveCritical, DewLineIsFoundUpToItsHighestTemperature) {
    if (GetParam().retrograde == 0.0) return;
    double hottest = 0.0;
    for (int k = 0; k <= 40; ++k) {
        const TwoPhases line = atPressure((0.5 + 0.5 * k / 40) * c.p, dew, z);
        if (line.ierr == 0 && line.rhol - line.rhov > 0.5) hottest = std::max(hottest, line.T);
    }
    ASSERT_GT(hottest, c.T);
    EXPECT_NE(atTemperature(hottest + 1.0, dew, z).ierr, 0);
    const TwoPhases line = atTemperature(hottest - 0.05, dew, z);
    ASSERT_EQ(line.ierr, 0) << words(line.herr);
    EXPECT_LT(disequilibrium(line), 1e-8);
}

// What is known belongs to a composition: another one of the same components has its own end.
TEST(AboveCriticalChange, AnotherCompositionHasItsOwnHotEnd) {
    Composition z{};
    ASSERT_TRUE(setUpMixture({{"CO2", 0.9}, {"PROPANE", 0.1}}, z));
    modelTags.IPRINTERR = 0;
    const Critical c = critical(z);
    EXPECT_NE(atTemperature(1.2 * c.T, dew, z).ierr, 0);
    Composition heavier = z;
    heavier[1] = 0.1;
    heavier[2] = 0.9;
    const double T = 1.1 * c.T;  // two phases of the heavier one
    ASSERT_LT(T, 0.97 * critical(heavier).T);
    EXPECT_NE(atTemperature(T, dew, z).ierr, 0);
    const TwoPhases line = atTemperature(T, dew, heavier);
    ASSERT_EQ(line.ierr, 0) << words(line.herr);
    EXPECT_LT(disequilibrium(line), 1e-8);
    modelTags.IPRINTERR = 1;
}

// ... and to the mixing parameters: with the critical temperatures of the pairs raised the region reaches higher.
TEST(AboveCriticalChange, ChangedPairHasItsOwnHotEnd) {
    Composition z{};
    ASSERT_TRUE(setUpMixture({{"CO2", 0.5}, {"PROPANE", 0.5}}, z));
    modelTags.IPRINTERR = 0;
    const Critical c = critical(z);
    const double T = c.T + 5.0;
    EXPECT_NE(atTemperature(T, dew, z).ierr, 0);
    Text3 tag;
    MixNumbers numbers{};
    MixNames names{};
    Text255 file, citation, rule, text;
    int ierr = 0;
    GETKTV(1, 2, tag, numbers, file, names, citation, rule);
    numbers[2] *= 1.1;  // of the reducing temperature
    SETKTV(1, 2, tag, numbers, file, ierr, text);
    ASSERT_LE(ierr, 0) << words(text);
    const TwoPhases line = atTemperature(T, dew, z);
    ASSERT_EQ(line.ierr, 0) << words(line.herr);
    EXPECT_LT(disequilibrium(line), 1e-8);
    modelTags.IPRINTERR = 1;
}

std::string nameOf(const testing::TestParamInfo<Blend>& info) {
    return std::string(info.param.name) + (info.param.second == nullptr ? "" : info.param.second);
}
INSTANTIATE_TEST_SUITE_P(Blends, AboveCritical, testing::ValuesIn(blends), nameOf);

// Where the hottest state of both phases is colder than the estimate of the critical temperature there are no lines,
// and every isotherm holds one phase.
TEST(BelowTheEstimate, OnePhaseIsFoundAtATemperatureWithoutLines) {
    constexpr struct {
        const char* blend;
        double T;
    } rows[] = {{"R422A", 343.78763}, {"R417B", 347.71221}, {"R422E", 355.1178}};
    for (const auto& row : rows) {
        // by the critical lines of the pairs, without the point that the file states
        Composition z{};
        FileNames files{};
        Text3 reference{"DEF"};
        int nc = 0, ierr = 0;
        Text255 herr;
        SETPATH(frigana::test::dataFolder);
        SETMIX(Text255(std::string(row.blend) + ".MIX"), Text255("HMX.BNC"), reference, nc, files, z, ierr, herr);
        ASSERT_LE(ierr, 0);
        const Critical c = critical(z);
        ASSERT_LT(row.T, c.T);
        ASSERT_EQ(atTemperature(row.T, dew, z).ierr, 128);
        for (const double share : {0.01, 0.43, 0.96, 1.2}) {
            FlashState state = flash("TP", row.T, share * c.p, z);
            ASSERT_EQ(state.ierr, 0);
            for (const char* pair : {"TH", "TS", "TE"}) {
                SCOPED_TRACE(testing::Message() << row.blend << ' ' << pair << ' ' << share);
                const FlashState found = flash(pair, row.T, state[pair[1]], z);
                ASSERT_EQ(found.ierr, 0) << words(found.herr);
                EXPECT_NEAR(found.D / state.D, 1.0, 1e-6);
                EXPECT_EQ(found.q, state.q);
            }
        }
    }
}

}  // namespace
}  // namespace frigana::equilibria
