// Gases far above their critical temperature over a liquid that dissolves little of them: two phases far beyond the
// critical point that CRITP estimates, where next to all pressures of a temperature belong to one share of the vapor.
// And two places where one of several dew points is the right one.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "CriticalPoint.h"
#include "Equilibrium.h"
#include "FluidConstants.h"
#include "Larger.h"
#include "PhaseCheck.h"
#include "ProcessorTime.h"

namespace frigana::equilibria {
namespace {

using frigana::test::flash;
using frigana::test::FlashState;
using frigana::test::larger;

// Largest relative difference of the fugacities, and of the material balance.
double disequilibrium(const FlashState& s, const Composition& z) {
    TwoPhases pair;
    pair.T = s.T;
    pair.rhol = s.Dl;
    pair.rhov = s.Dv;
    pair.x = s.x;
    pair.y = s.y;
    double worst = disequilibrium(pair);
    for (int i = 1; i <= modelTags.NC; ++i) worst = larger(worst, std::abs((1 - s.q) * s.x[i] + s.q * s.y[i] - z[i]));
    return worst;
}

struct WideState {
    const char *heavy, *light;
    double x1, T, p;  // mole fraction of the first; K, kPa
};
constexpr WideState wideStates[] = {
    {"BUTANE", "CO", 0.35, 259.19065, 2042.4362},       {"BUTANE", "CO", 0.65, 339.16047, 2761.5358},
    {"BUTANE", "CO", 0.95, 233.87754, 883.79335},       {"BUTANE", "CO", 0.05, 243.28785, 1897.1983},
    {"BUTANE", "CO", 0.05, 118.74198, 16.326951},       {"NITROGEN", "R227EA", 0.95, 216.03206, 1201.1723},
    {"C12", "CO", 0.05, 348.44525, 622.83759},          {"C12", "CO", 0.35, 438.31699, 802.44066},
    {"C12", "CO", 0.65, 315.40117, 3700.2184},          {"NITROGEN", "R227EA", 0.95, 199.60283, 2267.1215},
    {"ETHYLENE", "NITROGEN", 0.35, 226.6666, 10023.33}, {"ISOBUTAN", "OXYGEN", 0.05, 198.76566, 4265.211},
    {"HEXANE", "CO", 0.35, 159.62111, 1557.0556},
};

TEST(GasOverLiquid, StatesOfTwoPhasesByEveryPairOfInputs) {
    constexpr double agreement = 1e-6;
    double worst = 0;
    int flashes = 0;
    for (const WideState& state : wideStates) {
        Composition z;
        ASSERT_TRUE(setUpMixture({{state.heavy, state.x1}, {state.light, 1 - state.x1}}, z));
        FlashState wet = flash("TP", state.T, state.p, z);
        SCOPED_TRACE(testing::Message() << state.heavy << '/' << state.light << ' ' << state.x1 << ' ' << state.T);
        ASSERT_LE(wet.ierr, 0) << words(wet.herr);
        ASSERT_TRUE(wet.twoPhase()) << wet.q;
        EXPECT_LT(disequilibrium(wet, z), agreement);
        for (const std::string letters :
             {"TD", "TH", "TS", "TE", "PD", "PH", "PS", "PE", "DH", "DS", "DE", "HS", "ES"}) {
            SCOPED_TRACE(letters);
            const FlashState found = flash(letters, wet[letters[0]], wet[letters[1]], z);
            // on an isotherm a compressed liquid may have the same energy
            if (letters == "TE" && found.ierr <= 0 && !found.twoPhase()) {
                OtherPhase none[2];
                EXPECT_FALSE(unstableState(found.T, found.p, found.D, z, 200, none));
                double e = 0;
                ENERGY(found.T, found.D, z, e);
                EXPECT_NEAR(e, wet.e, 1e-6 * std::abs(wet.e));
                continue;
            }
            ++flashes;
            ASSERT_LE(found.ierr, 0) << words(found.herr);
            ASSERT_TRUE(found.twoPhase()) << found.q;
            EXPECT_LT(disequilibrium(found, z), agreement);
            EXPECT_NEAR(found.T / wet.T, 1, agreement);
            EXPECT_NEAR(found.p / wet.p, 1, agreement);
            EXPECT_NEAR(found.q, wet.q, agreement);
            worst = larger({worst, std::abs(found.T / wet.T - 1), std::abs(found.p / wet.p - 1)});
        }
    }
    std::printf("%d flashes lead back within %.1e\n", flashes, worst);
}

TEST(GasOverLiquid, SharesOfTheVaporFarBeyondTheCriticalPoint) {
    for (const WideState& state : {WideState{"HEXANE", "CO", 0.05, 292.13167, 3204.8677},
                                   WideState{"NITROGEN", "R227EA", 0.95, 216.03206, 1201.1723},
                                   WideState{"HEXANE", "CO", 0.95, 296.9947, 5028.3893},
                                   WideState{"CF3I", "NITROGEN", 0.65, 342.8001, 11323.408}}) {
        Composition z;
        ASSERT_TRUE(setUpMixture({{state.heavy, state.x1}, {state.light, 1 - state.x1}}, z));
        const FlashState wet = flash("TP", state.T, state.p, z);
        ASSERT_TRUE(wet.twoPhase());
        for (const std::string letters : {"TQ", "PQ"}) {
            SCOPED_TRACE(testing::Message()
                         << state.heavy << '/' << state.light << ' ' << state.x1 << ' ' << state.T << ' ' << letters);
            // a share may belong to several temperatures or pressures
            const FlashState found = flash(letters, letters == "TQ" ? state.T : state.p, wet.q, z);
            ASSERT_LE(found.ierr, 0) << words(found.herr);
            EXPECT_LT(disequilibrium(found, z), 1e-6);
            EXPECT_NEAR(found.q, wet.q, 1e-9);
            EXPECT_NEAR(letters == "TQ" ? found.T / state.T : found.p / state.p, 1, 1e-12);
        }
    }
    // a blend of fluids of about the same volatility has none there
    Composition z;
    ASSERT_TRUE(setUpMixture({{"R32", 0.7}, {"R125", 0.3}}, z));
    const double T = 1.6 * criticalPointOf(z).T, p = 1.6 * criticalPointOf(z).p;
    EXPECT_EQ(flash("TQ", T, 0.5, z).ierr, 271);
    EXPECT_EQ(flash("PQ", p, 0.5, z).ierr, 291);
}

// Water under oxygen: at low pressures the isentrope of such a state runs below the temperatures at which the equation
// of water still has a liquid, and every flash there takes long to find nothing. The state itself is found at once.
TEST(GasOverLiquid, EntropyOfAMoistGasLeadsBackWithoutASearchWhereTheLiquidEnds) {
    constexpr double longest = 0.5;  // [s] of the processor, a hundred times what it takes
    for (const auto& [T, p] : {std::pair{245.54181, 7715.7946}, std::pair{260.0, 9000.0}, std::pair{300.0, 3000.0}}) {
        Composition z;
        ASSERT_TRUE(setUpMixture({{"WATER", 0.05}, {"OXYGEN", 0.95}}, z));
        FlashState wet = flash("TP", T, p, z);
        ASSERT_LE(wet.ierr, 0) << words(wet.herr);
        ASSERT_TRUE(wet.twoPhase()) << wet.q;
        EXPECT_LT(disequilibrium(wet, z), 1e-6);
        for (const std::string letters : {"HS", "ES"}) {
            SCOPED_TRACE(testing::Message() << letters << ' ' << T);
            const double start = frigana::test::processorTime();
            const FlashState found = flash(letters, wet[letters[0]], wet.s, z);
            EXPECT_LT(frigana::test::processorTime() - start, longest);
            ASSERT_LE(found.ierr, 0) << words(found.herr);
            EXPECT_NEAR(found.T / T, 1, 1e-6);
            EXPECT_NEAR(found.p / p, 1, 1e-6);
            EXPECT_NEAR(found.q, wet.q, 1e-6);
            EXPECT_LT(disequilibrium(found, z), 1e-6);
        }
    }
}

// Two phases close to the bubble line of a wide pair that no secant between its lines meets: the isobar leads to them.
TEST(GasOverLiquid, DensityBetweenTheLinesOfAWidePairIsFoundOnItsIsobar) {
    Composition z;
    ASSERT_TRUE(setUpMixture({{"C12", 0.95}, {"R12", 0.05}}, z));
    const double T = 629.44188, p = 1958.5903;
    const FlashState wet = flash("TP", T, p, z);
    ASSERT_LE(wet.ierr, 0) << words(wet.herr);
    ASSERT_TRUE(wet.twoPhase()) << wet.q;
    const FlashState found = flash("PD", p, wet.D, z);
    ASSERT_LE(found.ierr, 0) << words(found.herr);
    EXPECT_NEAR(found.T / T, 1, 1e-6);
    EXPECT_NEAR(found.q, wet.q, 1e-6);
    EXPECT_LT(disequilibrium(found, z), 1e-6);
}

// Above its hottest state the gas over a liquid is one phase, at any pressure that the flash at both finds stable.
TEST(GasOverLiquid, OnePhaseStaysOne) {
    for (const WideState& state : wideStates) {
        Composition z;
        ASSERT_TRUE(setUpMixture({{state.heavy, state.x1}, {state.light, 1 - state.x1}}, z));
        SCOPED_TRACE(testing::Message() << state.heavy << '/' << state.light << ' ' << state.x1);
        const double T = 1.4 * criticalPointOf(z).T;
        for (const double p : {1.0, 100.0}) {
            const FlashState one = flash("TP", T, p, z);
            ASSERT_LE(one.ierr, 0) << words(one.herr);
            if (one.twoPhase()) continue;
            OtherPhase none[2];
            EXPECT_FALSE(unstableState(T, p, one.D, z, 200, none)) << p;
            const FlashState back = flash("TD", T, one.D, z);
            ASSERT_LE(back.ierr, 0) << words(back.herr);
            EXPECT_NEAR(back.p / p, 1, 1e-9);
        }
    }
}

// A frozen solvent: carbon monoxide in dodecane at 186 K, whose vapor holds 1e-12 of it. What is not found is said so.
TEST(GasOverLiquid, NoVaporFullOfTheLiquidIsTakenForAnEquilibrium) {
    Composition z;
    ASSERT_TRUE(setUpMixture({{"C12", 0.05}, {"CO", 0.95}}, z));
    const FlashState s = flash("TP", 186.37785, 1440.0337, z);
    if (s.ierr > 0) return;
    ASSERT_TRUE(s.twoPhase());
    EXPECT_LT(s.y[1], 1e-10);
    EXPECT_NEAR(s.x[2], 0.0046, 0.0005);
}

// Two liquids may stand beside a vapor; the dew point of the wrong one has a pressure above that of the bubble point.
TEST(DewPoints, TheStableOneBesideSplitLiquids) {
    Composition z;
    ASSERT_TRUE(setUpMixture({{"R236FA", 0.05}, {"ISOBUTAN", 0.95}}, z));
    for (const double T : {132.0, 136.0, 140.0, 143.73824, 147.0, 150.0}) {
        SCOPED_TRACE(T);
        const TwoPhases first = atTemperature(T, dew, z), other = atTemperature(T, bubble, z);
        ASSERT_EQ(first.ierr, 0) << words(first.herr);
        ASSERT_EQ(other.ierr, 0) << words(other.herr);
        EXPECT_LT(disequilibrium(first), 1e-7);
        EXPECT_LT(first.p, other.p);
        OtherPhase none[2];
        EXPECT_FALSE(unstableFeed(T, first.p * (1 - 1e-6), z, 200, none));
    }
    const FlashState liquid = flash("TP", 143.73824, 0.011064925, z);
    ASSERT_LE(liquid.ierr, 0) << words(liquid.herr);
    EXPECT_FALSE(liquid.twoPhase());
    EXPECT_GT(liquid.D, 10);
}

// Between the critical point and the highest pressure of the dew line pressure rises with temperature, as on its cold
// side; the lower dew point of a temperature is the one that more pressure leads from into two phases.
TEST(DewPoints, TheLowerOneBesideTheCriticalPoint) {
    Composition z;
    ASSERT_TRUE(setUpMixture({{"PROPANE", 0.0453}, {"R23", 0.80804}, {"R236FA", 0.09289}, {"R245FA", 0.05377}}, z));
    for (const double T : {326.4, 326.5479, 326.6, 326.7}) {
        SCOPED_TRACE(T);
        const TwoPhases point = atTemperature(T, dew, z);
        ASSERT_EQ(point.ierr, 0) << words(point.herr);
        EXPECT_LT(disequilibrium(point), 1e-7);
        OtherPhase none[2];
        EXPECT_FALSE(unstableFeed(T, 0.999 * point.p, z, 200, none));
        EXPECT_TRUE(unstableFeed(T, 1.001 * point.p, z, 200, none));
    }
    FlashState wet = flash("TP", 327.82992, 5269.7734, z);
    ASSERT_LE(wet.ierr, 0) << words(wet.herr);
    ASSERT_TRUE(wet.twoPhase());
    for (const std::string letters : {"DH", "DS", "DE"}) {
        const FlashState found = flash(letters, wet.D, wet[letters[1]], z);
        ASSERT_LE(found.ierr, 0) << letters << ' ' << words(found.herr);
        EXPECT_NEAR(found.T / wet.T, 1, 1e-8) << letters;
        EXPECT_NEAR(found.q, wet.q, 1e-6) << letters;
    }
}

// A hot vapor over little liquid of a heavy component: Newton's method from the usual start ends at the upper dew
// point.
TEST(DewPoints, TheLowerOneOfAHotTemperature) {
    Composition z;
    ASSERT_TRUE(setUpMixture({{"C12", 0.65}, {"R1234ZE", 0.35}}, z));
    constexpr double T = 597.38017;
    const TwoPhases point = atTemperature(T, dew, z);
    ASSERT_EQ(point.ierr, 0) << words(point.herr);
    EXPECT_LT(disequilibrium(point), 1e-7);
    OtherPhase none[2];
    EXPECT_FALSE(unstableFeed(T, 0.999 * point.p, z, 200, none));
    EXPECT_TRUE(unstableFeed(T, 1.001 * point.p, z, 200, none));
    FlashState wet = flash("TP", T, 2331.1214, z);
    ASSERT_LE(wet.ierr, 0) << words(wet.herr);
    ASSERT_TRUE(wet.twoPhase());
    for (const std::string letters : {"TD", "TH", "TS", "TE"}) {
        const FlashState found = flash(letters, T, wet[letters[1]], z);
        ASSERT_LE(found.ierr, 0) << letters << ' ' << words(found.herr);
        EXPECT_NEAR(found.p / wet.p, 1, 1e-6) << letters;
    }
}

// A cold liquid that nearly falls apart: Newton's method finds its vapor only from next to the share.
TEST(TwoPhases, AreApproachedByTheirShare) {
    Composition z;
    ASSERT_TRUE(setUpMixture({{"PROPANE", 0.19784}, {"R218", 0.62799}, {"R32", 0.17417}}, z));
    constexpr double T = 108.99536, p = 0.00025430791;
    const FlashState wet = flash("TP", T, p, z);
    ASSERT_LE(wet.ierr, 0) << words(wet.herr);
    ASSERT_TRUE(wet.twoPhase());
    EXPECT_LT(disequilibrium(wet, z), 1e-6);
    OtherPhase none[2];
    EXPECT_FALSE(unstableState(T, p, wet.Dl, wet.x, 200, none));
    EXPECT_FALSE(unstableState(T, p, wet.Dv, wet.y, 200, none));
}

// A vapor over a liquid whose components hardly mix is far from the one that vapor pressures let expect.
TEST(Stability, AsksOfTheGasBesideALiquidThatHardlyMixes) {
    Composition z;
    ASSERT_TRUE(setUpMixture({{"OCTANE", 0.65}, {"WATER", 0.35}}, z));
    constexpr double T = 555.55421, p = 6405.2259;
    FlashState wet = flash("TP", T, p, z);
    ASSERT_LE(wet.ierr, 0) << words(wet.herr);
    ASSERT_TRUE(wet.twoPhase()) << wet.q;
    EXPECT_LT(disequilibrium(wet, z), 1e-6);
    OtherPhase none[2];
    EXPECT_FALSE(unstableState(T, p, wet.Dl, wet.x, 200, none));
    EXPECT_FALSE(unstableState(T, p, wet.Dv, wet.y, 200, none));
    EXPECT_TRUE(unstableFeed(T, p, z, 200, none));
    // beside it there is no bubble point
    for (const std::string letters : {"TD", "TH", "TS", "TE"}) {
        const FlashState found = flash(letters, T, wet[letters[1]], z);
        ASSERT_LE(found.ierr, 0) << letters << ' ' << words(found.herr);
        EXPECT_NEAR(found.p / p, 1, 1e-6) << letters;
    }
}

// Equilibria of dense phases far above the pressure of the vapor pass for bubble points.
TEST(Stability, OnePhaseBelowAFalseBubblePoint) {
    Composition z;
    ASSERT_TRUE(setUpMixture({{"C12", 0.65}, {"ISOBUTAN", 0.35}}, z));
    constexpr double T = 582.23496, p = 34239.157;
    FlashState one = flash("TP", T, p, z);
    ASSERT_LE(one.ierr, 0) << words(one.herr);
    ASSERT_FALSE(one.twoPhase());
    OtherPhase none[2];
    EXPECT_FALSE(unstableState(T, p, one.D, z, 200, none));
    for (const std::string letters : {"TD", "TS"}) {
        const FlashState found = flash(letters, T, one[letters[1]], z);
        ASSERT_LE(found.ierr, 0) << letters << ' ' << words(found.herr);
        EXPECT_FALSE(found.twoPhase());
        EXPECT_NEAR(found.p / p, 1, 1e-6) << letters;
    }
}

// Components whose critical temperatures are far apart: their lines have several branches, or end where two phases go
// on, so that a single phase on its side of a line may be none.
TEST(Stability, OfOnePhaseBesideTheLinesOfComponentsFarApart) {
    struct Case {
        WideState state;
        std::vector<std::string> letters;
    };
    const Case cases[] = {
        {{"C12", "PROPYLEN", 0.95, 445.086, 2104.2554}, {"PD", "PH", "PS", "PE"}},
        {{"PROPANE", "HYDROGEN", 0.65, 137.82951, 772.97176}, {"PH", "PS", "PE"}},
        {{"NITROGEN", "PENTANE", 0.65, 287.32313, 37304.982}, {"PH", "PS", "PE"}},
        {{"NITROGEN", "HEXANE", 0.65, 260.62659, 37605.015}, {"PH", "PS", "PE"}},
        {{"OCTANE", "OXYGEN", 0.95, 578.24827, 3778.7119}, {"TD", "TS", "TE"}},
        {{"AMMONIA", "OCTANE", 0.05, 582.21885, 4138.4178}, {"TD", "TS", "TE", "PD"}},
        {{"METHANE", "SO2", 0.05, 200.74057, 9510.1356}, {"TS"}},
    };
    int flashes = 0;
    for (const auto& [state, pairs] : cases) {
        Composition z;
        ASSERT_TRUE(setUpMixture({{state.heavy, state.x1}, {state.light, 1 - state.x1}}, z));
        SCOPED_TRACE(testing::Message() << state.heavy << '/' << state.light << ' ' << state.x1 << ' ' << state.T);
        FlashState wet = flash("TP", state.T, state.p, z);
        ASSERT_LE(wet.ierr, 0) << words(wet.herr);
        ASSERT_TRUE(wet.twoPhase()) << wet.q;
        EXPECT_LT(disequilibrium(wet, z), 1e-6);
        for (const std::string& letters : pairs) {
            SCOPED_TRACE(letters);
            const FlashState found = flash(letters, wet[letters[0]], wet[letters[1]], z);
            ++flashes;
            ASSERT_LE(found.ierr, 0) << words(found.herr);
            ASSERT_TRUE(found.twoPhase()) << found.q;
            EXPECT_LT(disequilibrium(found, z), 1e-6);
            EXPECT_NEAR(found.T / state.T, 1, 1e-6);
            EXPECT_NEAR(found.p / state.p, 1, 1e-6);
            EXPECT_NEAR(found.q, wet.q, 1e-5);
        }
    }
    EXPECT_EQ(flashes, 21);
    // by temperature and pressure, where no line is looked for
    for (const WideState& state : {WideState{"ETHANOL", "ETHYLENE", 0.05, 316.49399, 7258.5289},
                                   WideState{"BUTANE", "OXYGEN", 0.05, 142.92172, 0.14111145}}) {
        Composition z;
        ASSERT_TRUE(setUpMixture({{state.heavy, state.x1}, {state.light, 1 - state.x1}}, z));
        SCOPED_TRACE(state.heavy);
        const FlashState wet = flash("TP", state.T, state.p, z);
        ASSERT_LE(wet.ierr, 0) << words(wet.herr);
        ASSERT_TRUE(wet.twoPhase()) << wet.q;
        EXPECT_LT(disequilibrium(wet, z), 1e-6);
        OtherPhase none[2];
        EXPECT_FALSE(unstableState(state.T, state.p, wet.Dl, wet.x, 200, none));
        EXPECT_FALSE(unstableState(state.T, state.p, wet.Dv, wet.y, 200, none));
    }
}

// The range of a property in which a state is looked for is that of the gas and of the coldest liquid; a component
// whose heat capacity turns negative far above its limit, or two phases, reach beyond it.
TEST(Stability, EnthalpyAndEnergyBeyondThoseOfTheGasAndTheColdestLiquid) {
    for (const WideState& state : {WideState{"CO2", "R114", 0.95, 246.17038, 1366.55},
                                   WideState{"HYDROGEN", "WATER", 0.35, 290.59428, 36576.697},
                                   WideState{"HYDROGEN", "ARGON", 0.35, 64.911955, 2148.9944}}) {
        Composition z;
        ASSERT_TRUE(setUpMixture({{state.heavy, state.x1}, {state.light, 1 - state.x1}}, z));
        FlashState wet = flash("TP", state.T, state.p, z);
        ASSERT_LE(wet.ierr, 0) << words(wet.herr);
        ASSERT_TRUE(wet.twoPhase()) << wet.q;
        EXPECT_LT(disequilibrium(wet, z), 1e-6);
        for (const std::string letters : {"PH", "PE"}) {
            SCOPED_TRACE(testing::Message() << state.heavy << '/' << state.light << ' ' << letters);
            const FlashState found = flash(letters, state.p, wet[letters[1]], z);
            ASSERT_LE(found.ierr, 0) << words(found.herr);
            EXPECT_LT(disequilibrium(found, z), 1e-6);
            EXPECT_NEAR(found.T / state.T, 1, 1e-6);
            EXPECT_NEAR(found.q, wet.q, 1e-5);
        }
    }
}

// Where neither line of a temperature or pressure is found, or none leads to the share, two phases are found from
// others of that temperature or pressure. A share may belong to several.
TEST(GasOverLiquid, SharesOfTheVaporWithoutALine) {
    struct Case {
        WideState state;
        const char* letters;
    };
    for (const auto& [state, letters] : {Case{{"NITROGEN", "OCTANE", 0.95, 277.02989, 14132.513}, "TQ"},
                                         Case{{"C12", "R1234YF", 0.65, 597.20136, 3094.2245}, "TQ"},
                                         Case{{"HYDROGEN", "WATER", 0.35, 290.59428, 36576.697}, "TQ"},
                                         Case{{"ISOBUTAN", "HYDROGEN", 0.95, 284.55088, 34962.819}, "PQ"},
                                         Case{{"NITROGEN", "PENTANE", 0.65, 287.32313, 37304.982}, "PQ"},
                                         Case{{"BUTANE", "WATER", 0.65, 471.42273, 9366.736}, "PQ"}}) {
        Composition z;
        ASSERT_TRUE(setUpMixture({{state.heavy, state.x1}, {state.light, 1 - state.x1}}, z));
        SCOPED_TRACE(testing::Message() << state.heavy << '/' << state.light << ' ' << letters);
        FlashState wet = flash("TP", state.T, state.p, z);
        ASSERT_LE(wet.ierr, 0) << words(wet.herr);
        ASSERT_TRUE(wet.twoPhase()) << wet.q;
        const FlashState found = flash(letters, wet[letters[0]], wet.q, z);
        ASSERT_LE(found.ierr, 0) << words(found.herr);
        EXPECT_LT(disequilibrium(found, z), 1e-6);
        EXPECT_NEAR(found.q, wet.q, 1e-9);
        EXPECT_NEAR(letters[0] == 'T' ? found.T / state.T : found.p / state.p, 1, 1e-12);
        EXPECT_EQ(flash(letters, wet[letters[0]], 1.5, z).ierr, letters[0] == 'T' ? 275 : 295);
    }
}

// Parameters by which two refrigerants repel each other so much that the two phases end 30 K below the estimated
// critical point: no line is found between, and none is needed.
TEST(Stability, OnePhaseBetweenTheLastTwoPhasesAndTheEstimatedCriticalPoint) {
    Composition z;
    ASSERT_TRUE(setUpMixture({{"N2O", 0.65}, {"R125", 0.35}}, z));
    constexpr double T = 303.07335;
    ASSERT_GT(criticalPointOf(z).T, T + 10);
    double before = 0;
    for (const double p : {3000.0, 4000.0, 5500.0, 6050.0, 9000.0}) {
        SCOPED_TRACE(p);
        FlashState one = flash("TP", T, p, z);
        ASSERT_LE(one.ierr, 0) << words(one.herr);
        ASSERT_FALSE(one.twoPhase());
        OtherPhase none[2];
        EXPECT_FALSE(unstableState(T, p, one.D, z, 200, none));
        double back = 0;
        PRESS(T, one.D, z, back);
        EXPECT_NEAR(back / p, 1, 1e-9);
        EXPECT_GT(one.D, before);
        before = one.D;
        for (const std::string letters : {"TD", "PH", "DS", "HS"}) {
            const FlashState found = flash(letters, one[letters[0]], one[letters[1]], z);
            ASSERT_LE(found.ierr, 0) << letters << ' ' << words(found.herr);
            EXPECT_NEAR(found.T / T, 1, 1e-6) << letters;
        }
    }
}

// A thin gas has less than the density by which the iteration along an isochore judges its end.
TEST(ThinGas, IsFoundByItsOwnDensity) {
    Composition z;
    ASSERT_TRUE(setUpMixture({{"R123", 0.05}, {"R124", 0.95}}, z));
    constexpr double T = 126.30978, p = 3.1734429e-05;
    FlashState wet = flash("TP", T, p, z);
    ASSERT_LE(wet.ierr, 0) << words(wet.herr);
    ASSERT_TRUE(wet.twoPhase());
    for (const std::string letters : {"DH", "DS", "DE"}) {
        const FlashState found = flash(letters, wet.D, wet[letters[1]], z);
        ASSERT_LE(found.ierr, 0) << letters << ' ' << words(found.herr);
        EXPECT_NEAR(found.T / T, 1, 1e-8) << letters;
        EXPECT_NEAR(found.p / p, 1, 1e-6) << letters;
        EXPECT_NEAR(found.q, wet.q, 1e-6) << letters;
    }
}

// Below a millionth of a pascal a vapor still stands over a liquid.
TEST(ThinGas, CondensesAtTheColdEnd) {
    for (const WideState& state : {WideState{"PROPYLEN", "PROPANE", 0.2588761, 81.719042, 4.0679522e-08},
                                   WideState{"ETHANE", "TOLUENE", 0.95, 130.80203, 8.3812717e-08}}) {
        Composition z;
        ASSERT_TRUE(setUpMixture({{state.heavy, state.x1}, {state.light, 1 - state.x1}}, z));
        FlashState wet = flash("TP", state.T, state.p, z);
        ASSERT_LE(wet.ierr, 0) << words(wet.herr);
        ASSERT_TRUE(wet.twoPhase());
        EXPECT_LT(disequilibrium(wet, z), 1e-6);
        ASSERT_LT(wet.D, 1e-10);
        for (const std::string letters : {"TD", "DH", "DS", "DE"}) {
            SCOPED_TRACE(testing::Message() << state.heavy << ' ' << letters);
            const FlashState found = flash(letters, wet[letters[0]], wet[letters[1]], z);
            ASSERT_LE(found.ierr, 0) << words(found.herr);
            ASSERT_TRUE(found.twoPhase());
            EXPECT_LT(disequilibrium(found, z), 1e-6);
            EXPECT_NEAR(found.T / wet.T, 1, 1e-8);
            EXPECT_NEAR(found.q, wet.q, 1e-6);
        }
        const FlashState dry = flash("TD", 200, 5e-11, z);
        ASSERT_LE(dry.ierr, 0) << words(dry.herr);
        EXPECT_FALSE(dry.twoPhase());
        EXPECT_NEAR(dry.p / (fluidConstants.R * 200 * 5e-11), 1, 1e-9);
    }
}

// Where the lines nearly meet, temperature and pressure tell nothing of the share.
TEST(MassQuality, IsMetBesideAzeotropes) {
    struct Case {
        const char *first, *second;
        double x1;
    };
    for (const Case& blend : {Case{"R23", "R116", 0.6268}, {"R125", "R143A", 0.4}, {"R22", "R115", 0.63}}) {
        Composition z;
        ASSERT_TRUE(setUpMixture({{blend.first, blend.x1}, {blend.second, 1 - blend.x1}}, z));
        for (const double reduced : {0.6, 0.8, 0.95})
            for (const double qmass : {0.01, 0.4, 0.97}) {
                SCOPED_TRACE(testing::Message()
                             << blend.first << '/' << blend.second << ' ' << reduced << ' ' << qmass);
                const FlashState s = flash("TQ", reduced * criticalPointOf(z).T, qmass, z, 2);
                ASSERT_LE(s.ierr, 0) << words(s.herr);
                const double liquidMass = WMOL(s.x), vaporMass = WMOL(s.y);
                // the molar share by the balance of the first component, or of the volume at the azeotrope itself
                const double q = (1 / s.D - 1 / s.Dl) / (1 / s.Dv - 1 / s.Dl);
                EXPECT_NEAR(q * vaporMass / (q * vaporMass + (1 - q) * liquidMass), qmass, 1e-9);
                EXPECT_NEAR((1 - q) * s.x[1] + q * s.y[1], z[1], 1e-9);
                const FlashState other = flash("PQ", s.p, qmass, z, 2);
                ASSERT_LE(other.ierr, 0) << words(other.herr);
                EXPECT_NEAR(other.T / s.T, 1, 1e-9);
            }
    }
}

}  // namespace
}  // namespace frigana::equilibria
