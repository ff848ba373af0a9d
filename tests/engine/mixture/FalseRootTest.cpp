// States at which a solver once returned another root than the one asked for: phases exchanged, two phases where the
// equations have a root between the spinodals, a temperature far below the equations' range, a two-phase state taken
// for one with two liquids. What is right is found here without the solvers: the equilibrium by its conditions, and the
// point on the line by the tangent plane over all compositions and both density roots.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <string_view>
#include <vector>

#include "CriticalPoint.h"
#include "Equilibrium.h"
#include "FLASH2.h"
#include "FlashState.h"
#include "PROP_SUB_FUGACITY.h"
#include "Samples.h"

namespace frigana::equilibria {
namespace {

constexpr double equal = 1e-8;  // relative, of fugacities and pressures

// Closeness of the molecules, by the critical volumes.
double packed(double rho, const Composition& x) {
    double volume = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) volume += x[i] / fluidConstants.DCRIT[i];
    return rho * volume;
}

// Both phases at the pressure and stable in themselves, equal fugacities, the liquid the denser one, two phases.
testing::AssertionResult inEquilibrium(const TwoPhases& s) {
    if (s.ierr != 0) return testing::AssertionFailure() << "code " << s.ierr << ' ' << words(s.herr);
    const double off = disequilibrium(s);
    if (!(off < equal)) return testing::AssertionFailure() << "fugacities differ by " << off;
    for (const bool vapor : {false, true}) {
        const double rho = vapor ? s.rhov : s.rhol;
        double slope = 0.0;
        DPDD(s.T, rho, vapor ? s.y : s.x, slope);
        const double p = pressure(s.T, rho, vapor ? s.y : s.x);
        // the density of a liquid is resolved to its rounding, of which its pressure makes more
        if (!(std::fabs(p - s.p) < equal * std::max(s.p, 1e-2 * rho * slope)))
            return testing::AssertionFailure() << "pressure " << p << " of a phase, not " << s.p;
        if (!(slope > 0.0)) return testing::AssertionFailure() << "a phase inside the spinodals";
    }
    if (!(packed(s.rhol, s.x) > packed(s.rhov, s.y))) return testing::AssertionFailure() << "phases exchanged";
    return testing::AssertionSuccess();
}

// Compositions all over the range of two or three components.
std::vector<Composition> allCompositions() {
    std::vector<Composition> all;
    const int parts = modelTags.NC == 2 ? 60 : 14;
    for (int k = 1; k < parts; ++k) {
        Composition w{};
        w[1] = static_cast<double>(k) / parts;
        w[2] = 1.0 - w[1];
        if (modelTags.NC == 2) all.push_back(w);
        for (int j = 1; modelTags.NC == 3 && j < parts - k; ++j) {
            w[2] = static_cast<double>(j) / parts;
            w[3] = 1.0 - w[1] - w[2];
            all.push_back(w);
        }
    }
    return all;
}

// Depth of the Gibbs energy below the plane that touches it at the phase z of density rho, over the compositions of two
// or three components and the density roots found by walking the isotherm: 0 at a stable phase.
double depthBelowTangent(double T, double p, const Composition& z, double rho) {
    Composition f{};
    int ierr = 0;
    Text255 herr;
    FGCTY2(T, rho, z, f, ierr, herr);
    double deepest = 0.0;
    constexpr int densities = 400;
    for (const Composition& w : allCompositions()) {
        double Tc, pc, Dc;
        CRITP(w, Tc, pc, Dc, ierr, herr);
        double before = 0.0, pBefore = 0.0;
        bool throughSpinodal = false;
        for (int j = 1; j <= densities; ++j) {
            // from the ideal gas, in steps that grow, to the densest liquid
            const double at = 1e-4 * Dc * std::pow(3.6e4, static_cast<double>(j) / densities);
            const double here = pressure(T, at, w);
            if (here < pBefore) throughSpinodal = true;
            const bool gas = !throughSpinodal, liquid = at > 1.5 * Dc;
            if ((pBefore - p) * (here - p) <= 0.0 && here > pBefore && (gas || liquid)) {
                double low = before, high = at;
                for (int halving = 1; halving <= 45; ++halving) {
                    const double middle = 0.5 * (low + high);
                    (pressure(T, middle, w) < p ? low : high) = middle;
                }
                Composition fw{};
                FGCTY2(T, 0.5 * (low + high), w, fw, ierr, herr);
                double distance = 0.0;
                for (int i = 1; i <= modelTags.NC; ++i) distance += w[i] * std::log(fw[i] / f[i]);
                deepest = std::min(deepest, distance);
            }
            before = at;
            pBefore = here;
        }
    }
    return deepest;
}

constexpr double flat = 1e-7;  // what rounding may make of the tangent plane, in units of RT

// Once 79.8 K for the bubble temperature at 7.39 MPa. With these parameters the line of 50 % CO2 ends at 6.9 MPa, that
// of 70 % does not; beyond the end the answer is an error.
TEST(FalseRoot, BubbleTemperatureOfCarbonDioxideAndR134aAtHighPressure) {
    for (const double share : {0.5, 0.7}) {
        Composition z{};
        ASSERT_TRUE(setUpMixture({{"CO2", share}, {"R134A", 1.0 - share}}, z));
        int found = 0;
        for (const double p : {3000.0, 5000.0, 6500.0, 7390.0, 7700.0}) {
            for (const int kph : {bubble, dew}) {
                SCOPED_TRACE(p);
                const TwoPhases s = atPressure(p, kph, z);
                if (s.ierr > 0) continue;
                ++found;
                ASSERT_TRUE(inEquilibrium(s));
                EXPECT_GT(depthBelowTangent(s.T, s.p, z, kph == bubble ? s.rhol : s.rhov), -flat);
                const TwoPhases back = atTemperature(s.T, kph, z);
                if (back.ierr == 0 && kph == bubble) {
                    EXPECT_LT(relative(back.p, s.p), 1e-8);
                }
            }
        }
        EXPECT_GE(found, share < 0.6 ? 6 : 8);
    }
}

TEST(FalseRoot, BubblePointsOfNitrogenInPropaneKeepTheirPhases) {
    Composition z{};
    ASSERT_TRUE(setUpMixture({{"NITROGEN", 0.1}, {"PROPANE", 0.9}}, z));
    int found = 0;
    for (double T = 160.0; T < 350.0; T += 10.0) {
        SCOPED_TRACE(T);
        const TwoPhases s = atTemperature(T, bubble, z);
        if (s.ierr > 0) continue;  // an error is an answer, exchanged phases are none
        ASSERT_TRUE(inEquilibrium(s));
        EXPECT_LT(relative(s.x[1], z[1]), 1e-12);
        EXPECT_GT(s.y[1], z[1]);
        EXPECT_GT(depthBelowTangent(T, s.p, z, s.rhol), -flat);
        ++found;
        // a line with a highest pressure passes every pressure below it twice
        const TwoPhases back = atPressure(s.p, bubble, z);
        if (back.ierr == 0) {
            EXPECT_TRUE(inEquilibrium(back));
        }
    }
    EXPECT_GE(found, 15);
}

TEST(FalseRoot, DewAndBubblePointsOfButaneAndR23NextToTheCriticalPoint) {
    Composition z{};
    ASSERT_TRUE(setUpMixture({{"BUTANE", 0.5}, {"R23", 0.5}}, z));
    int found = 0;
    for (double T = 330.0; T < 380.0; T += 3.0) {
        for (const int kph : {bubble, dew}) {
            SCOPED_TRACE(T);
            const TwoPhases s = atTemperature(T, kph, z);
            if (s.ierr > 0) continue;
            ASSERT_TRUE(inEquilibrium(s));
            EXPECT_GT(depthBelowTangent(T, s.p, z, kph == bubble ? s.rhol : s.rhov), -flat);
            ++found;
        }
    }
    EXPECT_GE(found, 24);
}

TEST(FalseRoot, TemperatureAndPressureOfR32AndPropaneAgree) {
    Composition z{};
    ASSERT_TRUE(setUpMixture({{"R32", 0.4}, {"PROPANE", 0.6}}, z));
    for (const double T : {250.0, 300.0, 330.0, 340.0, 345.0}) {
        for (const int kph : {bubble, dew}) {
            SCOPED_TRACE(T);
            const TwoPhases s = atTemperature(T, kph, z);
            if (s.ierr > 0) continue;
            ASSERT_TRUE(inEquilibrium(s));
            const TwoPhases back = atPressure(s.p, kph, z);
            ASSERT_TRUE(inEquilibrium(back));
            EXPECT_NEAR(back.T, T, 1e-6 * T);
        }
    }
}

TEST(FalseRoot, DewPointsBelowTheSplineTableKeepTheirPhases) {
    Composition z{};
    ASSERT_TRUE(setUpBlend("R407C", z));
    for (const bool splines : {false, true}) {
        if (splines) {
            int ierr = 0;
            Text255 herr;
            SATSPLN(z, ierr, herr);
            ASSERT_EQ(ierr, 0) << words(herr);
            RESETA();
        }
        for (double T = 153.0; T < 178.0; T += 3.0) {
            SCOPED_TRACE(T);
            const TwoPhases s = atTemperature(T, dew, z);
            ASSERT_TRUE(inEquilibrium(s));
            EXPECT_GT(s.rhol, 1000.0 * s.rhov);
        }
    }
    saturationSpline.SPLINEREADY = false;
}

// Between the spinodals the equations have stretches where pressure rises again; a "vapor" there has equal fugacities
// with a cold liquid, 150 K below the bubble temperature.
TEST(FalseRoot, SaturationTemperaturesJustBelowTheCriticalPressure) {
    struct Row {
        std::initializer_list<Share> shares;
        int kph;
        double share;  // of the critical temperature
    };
    const Row rows[] = {
        {{{"PROPANE", 0.5}, {"R152A", 0.5}}, bubble, 0.99}, {{{"PROPANE", 0.9}, {"R227EA", 0.1}}, dew, 0.99},
        {{{"PROPANE", 0.5}, {"R125", 0.5}}, dew, 0.99},     {{{"R125", 0.1}, {"R236FA", 0.9}}, bubble, 0.99},
        {{{"PROPYLEN", 0.9}, {"R125", 0.1}}, bubble, 0.99}, {{{"BUTANE", 0.5}, {"R227EA", 0.5}}, dew, 0.99},
        {{{"ISOBUTAN", 0.5}, {"R227EA", 0.5}}, dew, 0.99},  {{{"R123", 0.5}, {"R32", 0.5}}, dew, 0.99},
        {{{"PROPANE", 0.5}, {"PENTANE", 0.5}}, dew, 0.99}};
    for (const Row& row : rows) {
        Composition z{};
        ASSERT_TRUE(setUpMixture(row.shares, z));
        SCOPED_TRACE(row.shares.begin()->first);
        double Tc, pc, Dc;
        int ierr = 0;
        Text255 herr;
        CRITP(z, Tc, pc, Dc, ierr, herr);
        const TwoPhases s = atTemperature(row.share * Tc, row.kph, z);
        ASSERT_TRUE(inEquilibrium(s));
        EXPECT_GT(depthBelowTangent(s.T, s.p, z, row.kph == bubble ? s.rhol : s.rhov), -flat);
        const TwoPhases back = atPressure(s.p, row.kph, z);
        ASSERT_TRUE(inEquilibrium(back));
        EXPECT_NEAR(back.T, s.T, 1e-6 * s.T);
    }
}

// A dew point next to the critical temperature, where the trivial solution lies close by.
TEST(FalseRoot, DewPointOfCarbonDioxideAndButaneIsTwoPhases) {
    Composition z{};
    ASSERT_TRUE(setUpMixture({{"CO2", 0.5}, {"BUTANE", 0.5}}, z));
    const TwoPhases s = atTemperature(381.903, dew, z);
    if (s.ierr > 0) return;
    ASSERT_TRUE(inEquilibrium(s));
    EXPECT_GT(std::fabs(s.rhol - s.rhov), 0.1);
    EXPECT_GT(depthBelowTangent(s.T, s.p, z, s.rhov), -flat);
}

// Components that are traces in the liquid are found by their logarithms.
TEST(FalseRoot, DewPointsOfButaneWithNitrogenCarryTracesInTheLiquid) {
    Composition z{};
    ASSERT_TRUE(setUpMixture({{"NITROGEN", 0.1}, {"BUTANE", 0.9}}, z));
    for (const double T : {180.0, 200.0, 250.0, 300.0}) {
        SCOPED_TRACE(T);
        const TwoPhases s = atTemperature(T, dew, z);
        ASSERT_TRUE(inEquilibrium(s));
        EXPECT_LT(s.x[1], 0.01);
    }
}

// Azeotropes, where neither temperature nor pressure tells the share of the vapor. Between lines that lie close
// together the flashes end where the share is known to 5e-4, and the balance to that part of the difference of the
// phases.
TEST(FalseRoot, QualityNextToAnAzeotrope) {
    struct Row {
        const char* blend;
        double T;
    };
    for (const Row& row : {Row{"R508A", 175.25892}, Row{"R508A", 175.3}, Row{"R500", 270.0}, Row{"R507A", 250.0}}) {
        Composition z{};
        ASSERT_TRUE(setUpBlend(row.blend, z));
        SCOPED_TRACE(row.blend);
        for (const double q : {0.05, 0.5, 0.95}) {
            TwoPhases s;
            double e, h, entropy, cv, cp, w;
            s.T = row.T;
            TQFLSH(s.T, q, z, 1, s.p, s.D, s.rhol, s.rhov, s.x, s.y, e, h, entropy, cv, cp, w, s.ierr, s.herr);
            ASSERT_EQ(s.ierr, 0) << words(s.herr);
            EXPECT_LT(disequilibrium(s), 1e-7);
            for (int i = 1; i <= modelTags.NC; ++i) EXPECT_NEAR((1.0 - q) * s.x[i] + q * s.y[i], z[i], 1e-5);
            TwoPhases b;
            PHFLSH(s.p, h, z, b.T, b.D, b.rhol, b.rhov, b.x, b.y, b.q, e, entropy, cv, cp, w, b.ierr, b.herr);
            ASSERT_LE(b.ierr, 0) << words(b.herr);
            EXPECT_NEAR(b.q, q, 1e-3);
            EXPECT_NEAR(b.T, row.T, 1e-4);
        }
    }
}

// A two-phase state, found by temperature and pressure, comes back from one of its values and each of some others.
void leadsBackToTwoPhases(char first, std::string_view others, double T, double p, const Composition& z) {
    test::FlashState f = test::flash("TP", T, p, z);
    ASSERT_LE(f.ierr, 0) << words(f.herr);
    ASSERT_TRUE(f.twoPhase());
    TwoPhases phases;
    phases.T = T;
    phases.p = p;
    phases.rhol = f.Dl;
    phases.rhov = f.Dv;
    phases.x = f.x;
    phases.y = f.y;
    EXPECT_LT(disequilibrium(phases), 1e-7);
    for (const char letter : others) {
        SCOPED_TRACE(letter);
        const char letters[] = {first, letter, '\0'};
        const test::FlashState back = test::flash(letters, f[first], f[letter], z);
        ASSERT_LE(back.ierr, 0) << words(back.herr);
        EXPECT_LT(relative(back.T, T), 1e-6);
        EXPECT_LT(relative(back.p, p), 1e-5);
        EXPECT_NEAR(back.q, f.q, 1e-5);
    }
}

// Flashes whose inner steps came upon a second liquid, and gave up.
TEST(FalseRoot, FlashesOfBlendsWithHydrocarbonsCloseToASecondLiquid) {
    struct Row {
        const char* blend;
        double T, p;
    };
    for (const Row& row :
         {Row{"R426A", 169.7873, 0.45136}, Row{"R428A", 173.3847, 3.2427}, Row{"R438A", 174.3389, 2.1339}}) {
        Composition z{};
        ASSERT_TRUE(setUpBlend(row.blend, z));
        SCOPED_TRACE(row.blend);
        leadsBackToTwoPhases('P', "HSQ", row.T, row.p, z);
    }
}

// A gas dissolved in a liquid: the bubble line does not reach the pressure, and the two-phase state was taken for a
// liquid.
TEST(FalseRoot, FlashesOfDissolvedNitrogenAtPressuresWithoutABubblePoint) {
    struct Row {
        std::initializer_list<Share> shares;
        double T, p;
    };
    for (const Row& row : {Row{{{"NITROGEN", 0.5}, {"BUTANE", 0.5}}, 272.9019, 2771.0},
                           Row{{{"NITROGEN", 0.1}, {"ISOBUTAN", 0.9}}, 222.2684, 3290.6},
                           Row{{{"CO2", 0.9}, {"NITROGEN", 0.1}}, 257.1035, 6738.9}}) {
        Composition z{};
        ASSERT_TRUE(setUpMixture(row.shares, z));
        SCOPED_TRACE(row.T);
        leadsBackToTwoPhases('P', "HSE", row.T, row.p, z);
    }
}

// The end of a two-phase range as the answer has the densities of its own line.
TEST(FalseRoot, FlashAtTheBubblePointHasTheVaporOfTheBubblePoint) {
    Composition z{};
    ASSERT_TRUE(setUpBlend("R407C", z));
    const TwoPhases line = atTemperature(280.0, bubble, z);
    ASSERT_TRUE(inEquilibrium(line));
    TwoPhases s;
    double e, entropy, cv, cp, w;
    THFLSH(280.0, enthalpy(280.0, line.rhol, line.x) + 1e-3, z, 1, s.p, s.D, s.rhol, s.rhov, s.x, s.y, s.q, e, entropy,
           cv, cp, w, s.ierr, s.herr);
    ASSERT_LE(s.ierr, 0) << words(s.herr);
    EXPECT_LT(relative(s.rhov, line.rhov), 1e-5);
    EXPECT_LT(relative(s.rhol, line.rhol), 1e-5);
}

// Two-phase states from density and a property, where the search was once caught far below the temperature.
TEST(FalseRoot, DensityAndPropertyFindTheirTwoPhaseState) {
    struct Row {
        std::initializer_list<Share> shares;
        double T, p;
    };
    for (const Row& row : {Row{{{"CO2", 0.5}, {"PROPANE", 0.5}}, 303.546, 3945.96},
                           Row{{{"PROPANE", 0.5}, {"ISOBUTAN", 0.5}}, 342.676, 1730.87}}) {
        Composition z{};
        ASSERT_TRUE(setUpMixture(row.shares, z));
        leadsBackToTwoPhases('D', "HSE", row.T, row.p, z);
    }
}

// The memo answers for its own composition only, also where another differs in digits that hardly change the result.
TEST(FalseRoot, MemoKnowsItsComposition) {
    Composition z{};
    ASSERT_TRUE(setUpBlend("R407C", z));
    const TwoPhases first = atTemperature(300.0, bubble, z);
    const TwoPhases firstAtP = atPressure(1000.0, dew, z);
    for (const double shift : {1e-2, 1e-5, 1e-8}) {
        SCOPED_TRACE(shift);
        Composition other = z;
        other[1] += shift;
        other[2] -= shift;
        const TwoPhases second = atTemperature(300.0, bubble, other);
        const TwoPhases secondAtP = atPressure(1000.0, dew, other);
        ASSERT_EQ(second.ierr, 0);
        ASSERT_EQ(secondAtP.ierr, 0);
        EXPECT_EQ(second.x[1], other[1]);
        EXPECT_EQ(secondAtP.y[1], other[1]);
        EXPECT_NE(second.p, first.p);
        EXPECT_NE(secondAtP.T, firstAtP.T);
        RESETA();
        const TwoPhases fresh = atTemperature(300.0, bubble, other);
        EXPECT_LT(relative(fresh.p, second.p), 1e-12);
        const TwoPhases freshAtP = atPressure(1000.0, dew, other);
        EXPECT_LT(relative(freshAtP.T, secondAtP.T), 1e-12);
    }
}

// ---- beside and above the critical point -----------------------------------------------------------------------

double molarGibbs(double T, double p, double rho, const Composition& x) {
    return enthalpy(T, rho, x) - T * entropy(T, rho, x) + (p - pressure(T, rho, x)) / rho;
}

// What a flash at T and p has found is one stable phase, or two in equilibrium that make up the mixture and have less
// Gibbs energy than the mixture as one phase.
testing::AssertionResult trueState(const test::FlashState& f, double T, double p, const Composition& z) {
    if (f.ierr > 0) return testing::AssertionFailure() << "code " << f.ierr << ' ' << words(f.herr);
    if (!f.twoPhase()) {
        if (!(relative(pressure(T, f.D, z), p) < 1e-8))
            return testing::AssertionFailure() << "pressure " << pressure(T, f.D, z);
        const double depth = depthBelowTangent(T, p, z, f.D);
        if (!(depth > -flat)) return testing::AssertionFailure() << "one phase, unstable by " << depth;
        return testing::AssertionSuccess();
    }
    TwoPhases s;
    s.T = T;
    s.p = p;
    s.rhol = f.Dl;
    s.rhov = f.Dv;
    s.x = f.x;
    s.y = f.y;
    const testing::AssertionResult equilibrium = inEquilibrium(s);
    if (!equilibrium) return equilibrium;
    for (int i = 1; i <= modelTags.NC; ++i)
        if (!(std::fabs((1.0 - f.q) * f.x[i] + f.q * f.y[i] - z[i]) < 1e-10))
            return testing::AssertionFailure() << "balance of component " << i;
    double rho = 0.0;
    int ierr = 0;
    Text255 herr;
    TPRHO(T, p, z, 2, 0, rho, ierr, herr);
    if (ierr > 0) return testing::AssertionSuccess();
    const double two = (1.0 - f.q) * molarGibbs(T, p, f.Dl, f.x) + f.q * molarGibbs(T, p, f.Dv, f.y);
    if (!(two < molarGibbs(T, p, rho, z))) return testing::AssertionFailure() << "one phase has less Gibbs energy";
    return testing::AssertionSuccess();
}

// At pressures from the dew line to beyond the critical one: two phases up to the upper line, one phase above, where
// neither SATT nor the critical pressure tells which.
TEST(FalseRoot, StatesBetweenCriticalAndHighestTemperatureAreOnePhaseOrTwo) {
    struct Row {
        const char *first, *second;  // 50 % each, or a blend
        double T, pc;                // [K], above the critical temperature; [kPa], about the critical pressure
    };
    for (const Row& row : {Row{"R407C", nullptr, 359.317976, 4632.3023}, Row{"CO2", "PROPANE", 337.573021, 6820.9137},
                           Row{"CO2", "PROPANE", 338.273021, 6820.9137}, Row{"R23", "BUTANE", 372.584664, 7281.4264},
                           Row{"R23", "BUTANE", 373.999664, 7281.4264}, Row{"R23", "BUTANE", 375.584664, 7281.4264}}) {
        Composition z{};
        if (row.second == nullptr)
            ASSERT_TRUE(setUpBlend(row.first, z));
        else
            ASSERT_TRUE(setUpMixture({{row.first, 0.5}, {row.second, 0.5}}, z));
        const double T = row.T, pc = row.pc;
        int two = 0, one = 0;
        for (const double share : {0.9, 0.95, 0.98, 0.99, 0.998, 1.0, 1.01}) {
            SCOPED_TRACE(testing::Message() << row.first << ' ' << T << " K, " << share << " pc");
            const test::FlashState f = test::flash("TP", T, share * pc, z);
            EXPECT_TRUE(trueState(f, T, share * pc, z));
            ++(f.twoPhase() ? two : one);
        }
        EXPECT_GE(two, row.second == nullptr ? 1 : 3) << row.first;
        EXPECT_GE(one, 1) << row.first;
    }
}

// Below their upper line these lose a few parts in a million of RT by falling apart, and the exchanges that tell it are
// slow.
TEST(FalseRoot, FeedsThatAreBarelyUnstableAreTwoPhases) {
    Composition z{};
    ASSERT_TRUE(setUpMixture({{"R23", 0.5}, {"BUTANE", 0.5}}, z));
    struct Row {
        double T, p;  // [K, kPa]
    };
    for (const Row& row : {Row{373.9976, 7285.56}, Row{374.8, 7280.0}, Row{375.5826, 7270.99}}) {
        SCOPED_TRACE(row.T);
        const test::FlashState f = test::flash("TP", row.T, row.p, z);
        EXPECT_TRUE(f.twoPhase());
        EXPECT_TRUE(trueState(f, row.T, row.p, z));
    }
}

// At a pressure above the ends of both lines there is one phase at any temperature, and a search that has walked to the
// end says so.
TEST(FalseRoot, NoLineStandsAtAPressureAboveItsEnd) {
    Composition z{};
    ASSERT_TRUE(setUpBlend("R407C", z));
    double Tc, pc, Dc;
    int ierr = 0;
    Text255 herr;
    CRITP(z, Tc, pc, Dc, ierr, herr);
    const double p = 1.006 * pc;
    for (const int kph : {bubble, dew}) {
        PhasePair pair;
        pair.p = p;
        EXPECT_EQ(newtonOnLine(pair, z, kph + 2), OnLine::beyondEnd);
        EXPECT_EQ(atPressure(p, kph, z).ierr, 148);
    }
    for (const double T : {Tc - 4.0, Tc - 1.0, Tc, Tc + 0.2, Tc + 1.0}) {
        SCOPED_TRACE(T);
        const test::FlashState f = test::flash("TP", T, p, z);
        EXPECT_FALSE(f.twoPhase());
        EXPECT_TRUE(trueState(f, T, p, z));
    }
}

// Above the critical temperature a mixture has two dew points. The one that is reached from low pressure is the answer;
// its pressure rises with temperature, and below it the vapor is stable.
TEST(FalseRoot, DewPointAboveTheCriticalTemperatureIsTheLowerOne) {
    Composition z{};
    ASSERT_TRUE(setUpMixture({{"CO2", 0.5}, {"PROPANE", 0.5}}, z));
    double Tc, pc, Dc;
    int ierr = 0;
    Text255 herr;
    CRITP(z, Tc, pc, Dc, ierr, herr);
    double last = 0.0;
    for (const double above : {-0.5, 0.2, 0.5, 1.0, 1.5, 2.0}) {
        SCOPED_TRACE(above);
        const TwoPhases s = atTemperature(Tc + above, dew, z);
        ASSERT_TRUE(inEquilibrium(s));
        EXPECT_GT(s.p, last);
        EXPECT_LT(s.p, 0.95 * pc);
        EXPECT_GT(depthBelowTangent(s.T, s.p, z, s.rhov), -flat);
        const double below = 0.97 * s.p;
        double rho = 0.0;
        TPRHO(s.T, below, z, 2, 0, rho, ierr, herr);
        ASSERT_LE(ierr, 0);
        EXPECT_GT(depthBelowTangent(s.T, below, z, rho), -flat);
        EXPECT_TRUE(trueState(test::flash("TP", s.T, 1.02 * s.p, z), s.T, 1.02 * s.p, z));
        EXPECT_TRUE(test::flash("TP", s.T, 1.02 * s.p, z).twoPhase());
        last = s.p;
    }
}

// The estimate of the critical pressure may lie above the highest pressure of two phases: between the two there are no
// lines, and one phase at any temperature.
TEST(FalseRoot, FlashesBetweenTheTrueAndTheEstimatedCriticalPressure) {
    Composition z{};
    ASSERT_TRUE(setUpMixture({{"R134A", 0.4}, {"R22", 0.2}, {"ISOBUTAN", 0.4}}, z));
    double Tc, pc, Dc;
    int ierr = 0;
    Text255 herr;
    CRITP(z, Tc, pc, Dc, ierr, herr);
    modelTags.IPRINTERR = 0;
    for (const double share : {0.9, 0.93, 0.95, 0.98, 0.995}) {
        if (test::sanitized && (share == 0.93 || share == 0.98)) continue;
        for (const double fromCritical : {-35.0, -15.0, -6.0, -4.5, -3.0, 1.0, 10.0, 25.0}) {
            const double T = Tc + fromCritical, p = share * pc;
            SCOPED_TRACE(testing::Message() << T << " K, " << share << " pc");
            const test::FlashState f = test::flash("TP", T, p, z);
            ASSERT_TRUE(trueState(f, T, p, z));
            for (const char letter : {'H', 'S', 'E'}) {
                SCOPED_TRACE(letter);
                const char letters[] = {'P', letter, '\0'};
                test::FlashState from = f;
                test::FlashState g = test::flash(letters, p, from[letter], z);
                ASSERT_LE(g.ierr, 0) << words(g.herr);
                EXPECT_LT(relative(g.T, T), 1e-6);
                EXPECT_LT(relative(g.D, f.D), 1e-4);
                EXPECT_LT(std::fabs(g[letter] - from[letter]), 1e-6 * std::max(1.0, std::fabs(from[letter])));
            }
        }
    }
}

// At the critical point itself the two phases are one: no exchange of compositions tells them apart.
TEST(FalseRoot, StatesAtTheCriticalPointAreFound) {
    for (const char* blend : {"R415B", "R428A", "R433C", "R439A", "R448A", "R454C", "R469A"}) {
        Composition z{};
        ASSERT_TRUE(setUpBlend(blend, z));
        double Tc, pc, Dc;
        int ierr = 0;
        Text255 herr;
        CRITP(z, Tc, pc, Dc, ierr, herr);
        CRTPNT(z, Tc, pc, Dc, ierr, herr);
        ASSERT_EQ(ierr, 0) << words(herr);
        for (const double share : {1 - 1e-7, 1.0, 1 + 1e-8}) {
            SCOPED_TRACE(testing::Message() << blend << ", " << share << " pc");
            const test::FlashState f = test::flash("TP", Tc, share * pc, z);
            ASSERT_LE(f.ierr, 0) << words(f.herr);
            EXPECT_LT(relative(f.D, Dc), 0.02);
            if (f.twoPhase()) continue;
            double p = 0;
            PRESS(Tc, f.D, z, p);
            EXPECT_LT(relative(p, share * pc), 1e-8);
        }
    }
}

TEST(FalseRoot, EveryBlendHasAStateAtTheCriticalPointThatIsToldOfIt) {
    const std::vector<std::string> blends = allBlends();
    EXPECT_EQ(blends.size(), 123u);
    for (const std::string& blend : blends) {
        Composition z{};
        ASSERT_TRUE(setUpBlend(blend, z));
        const CriticalPoint critical = criticalPointOf(z);
        for (const double besideT : {0.0, 1e-9, -1e-9})
            for (const double besideP : {0.0, 1e-9, -1e-9}) {
                SCOPED_TRACE(testing::Message() << blend << ' ' << besideT << ' ' << besideP);
                const double T = critical.T * (1 + besideT), p = critical.p * (1 + besideP);
                const test::FlashState f = test::flash("TP", T, p, z);
                ASSERT_LE(f.ierr, 0) << words(f.herr);
                EXPECT_GT(f.D, 0);
                if (f.twoPhase()) continue;
                double back = 0;
                PRESS(T, f.D, z, back);
                EXPECT_LT(relative(back, p), 1e-8);
            }
    }
}

// The isochore of a cold liquid passes the pressure again between the spinodals, 48 K below.
TEST(FalseRoot, ALiquidAtPressureAndDensityIsNoneBetweenTheSpinodals) {
    Composition z{};
    ASSERT_TRUE(setUpMixture({{"PROPYLEN", 0.90023}, {"R143A", 0.03319}, {"R23", 0.06658}}, z));
    constexpr double p = 3.473283;
    const TwoPhases line = atPressure(p, bubble, z);
    ASSERT_EQ(line.ierr, 0) << words(line.herr);
    double expands = 0.0, yields = 0.0;
    DPDT(line.T, line.rhol, z, expands);
    DPDD(line.T, line.rhol, z, yields);
    const double expansion = expands / (line.rhol * yields);  // [1/K] of the liquid at the bubble point
    for (const double denser : {1e-12, 1e-6, 1e-3, 2e-2}) {
        const double D = line.rhol * (1.0 + denser);
        const frigana::test::FlashState state = frigana::test::flash("PD", p, D, z);
        ASSERT_EQ(state.ierr, 0) << words(state.herr);
        double slope = 0.0;
        DPDD(state.T, D, z, slope);
        EXPECT_GT(slope, 0.0) << denser;
        EXPECT_LE(state.T, line.T * (1.0 + 1e-9));
        EXPECT_NEAR(state.T, line.T - denser / expansion, 0.05 * denser / expansion + 1e-6) << denser;
        // pressure is resolved to the rounding of density
        EXPECT_NEAR(pressure(state.T, D, z), p, 2e-9 * D * slope) << denser;
    }
}

// Of the two liquids into which these blends fall apart the one of the vapor's own kind has the colder dew point at a
// pressure, and no other phase lies below the stable one.
TEST(FalseRoot, DewPointsAtAPressureStandBesideTheStableLiquid) {
    constexpr struct {
        const char *first, *second;
        double x, T;
    } rows[] = {{"R218", "R22", 0.35, 124.02}, {"BUTANE", "R134A", 0.35, 174.2}, {"ISOBUTAN", "R134A", 0.28, 165.13}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.first);
        Composition z{};
        ASSERT_TRUE(setUpMixture({{row.first, row.x}, {row.second, 1.0 - row.x}}, z));
        const TwoPhases atT = atTemperature(row.T, dew, z);
        ASSERT_TRUE(inEquilibrium(atT));
        const TwoPhases atP = atPressure(atT.p, dew, z);
        ASSERT_TRUE(inEquilibrium(atP));
        EXPECT_NEAR(atP.T, row.T, 1e-7 * row.T);
        EXPECT_NEAR(atP.x[1], atT.x[1], 1e-6);
        // a vapor a little warmer is one phase by every pair, a little colder it is two
        for (const double warmer : {0.05, -0.05}) {
            const frigana::test::FlashState state = frigana::test::flash("TP", row.T + warmer, atT.p, z);
            ASSERT_EQ(state.ierr, 0);
            EXPECT_EQ(state.twoPhase(), warmer < 0.0);
            const frigana::test::FlashState found = frigana::test::flash("PH", atT.p, state.h, z);
            ASSERT_EQ(found.ierr, 0) << words(found.herr);
            EXPECT_EQ(found.twoPhase(), state.twoPhase());
            EXPECT_NEAR(found.T, state.T, 1e-6 * state.T);
        }
    }
}

}  // namespace
}  // namespace frigana::equilibria
