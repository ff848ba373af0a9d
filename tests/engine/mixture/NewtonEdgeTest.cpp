// Edges of the Newton solvers, their messages, and the routines that they start from against evaluations of their own.
#include <array>
#include <set>

#include "Equilibrium.h"
#include "Larger.h"
#include "MIX_HMX.h"
#include "PREOS.h"
#include "SETAGA.h"

namespace frigana::equilibria {
namespace {

constexpr int bothAtTP = 0, bubbleAtT = 1, dewAtT = 2, bubbleAtP = 3, dewAtP = 4;

// The pair of phases of a two-phase state in the middle between bubble and dew pressure.
TwoPhases middle(double T, const Composition& z) {
    const TwoPhases b = newton(bubbleAtT, T, 0.0, z), d = newton(dewAtT, T, 0.0, z);
    EXPECT_EQ(b.ierr, 0);
    EXPECT_EQ(d.ierr, 0);
    return newton(bothAtTP, T, 0.5 * (b.p + d.p), z);
}

// ------------------------------------------------------------------------------------------------------ named edges

TEST(NewtonEdge, ZeroFractionSolvesTheSmallerSystem) {
    Composition binary{}, ternary{};
    std::array<TwoPhases, 5> pair, withZero;
    constexpr double T = 290.0;
    const auto solve = [&](const Composition& z, std::array<TwoPhases, 5>& found) {
        found[bothAtTP] = middle(T, z);
        for (const int kph : {bubbleAtT, dewAtT}) found[static_cast<std::size_t>(kph)] = newton(kph, T, 0.0, z);
        for (const int kph : {bubbleAtP, dewAtP}) found[static_cast<std::size_t>(kph)] = newton(kph, 0.0, 800.0, z);
    };
    ASSERT_TRUE(setUpMixture({{"R32", 0.4}, {"R134A", 0.6}}, binary));
    solve(binary, pair);
    ASSERT_TRUE(setUpMixture({{"R32", 0.4}, {"R125", 0.0}, {"R134A", 0.6}}, ternary));
    saturationCounts.substitutions = 0;
    solve(ternary, withZero);
    EXPECT_EQ(saturationCounts.substitutions, 0);
    for (std::size_t kph = 0; kph < 5; ++kph) {
        SCOPED_TRACE(kph);
        const TwoPhases &a = withZero[kph], &b = pair[kph];
        ASSERT_EQ(a.ierr, 0) << words(a.herr);
        ASSERT_EQ(b.ierr, 0) << words(b.herr);
        EXPECT_EQ(a.x[2], 0.0);
        EXPECT_EQ(a.y[2], 0.0);
        EXPECT_LT(relative(a.T, b.T), 1e-9);
        EXPECT_LT(relative(a.p, b.p), 1e-9);
        EXPECT_LT(relative(a.rhol, b.rhol), 1e-9);
        EXPECT_LT(relative(a.rhov, b.rhov), 1e-9);
        EXPECT_NEAR(a.x[1], b.x[1], 1e-9);
        EXPECT_NEAR(a.y[3], b.y[2], 1e-9);
        EXPECT_NEAR(a.q, b.q, 1e-8);
    }
}

// At T and p the phases of two components are fixed, whatever the feed between them.
TEST(NewtonEdge, TwoComponentsAtTemperatureAndPressureHaveNoMaterialBalanceRow) {
    Composition z{};
    for (const bool padded : {false, true}) {
        if (padded) {
            ASSERT_TRUE(setUpMixture({{"R32", 0.4}, {"R134A", 0.6}, {"PROPANE", 0.0}}, z));
        } else {
            ASSERT_TRUE(setUpMixture({{"R32", 0.4}, {"R134A", 0.6}}, z));
        }
        const TwoPhases s = middle(290.0, z);
        ASSERT_EQ(s.ierr, 0);
        EXPECT_LT(disequilibrium(s), 1e-9);
        for (const double share : {0.02, 0.3, 0.7, 0.98}) {
            SCOPED_TRACE(share);
            Composition feed{};
            for (int i = 1; i <= 2; ++i) feed[i] = (1.0 - share) * s.x[i] + share * s.y[i];
            const TwoPhases other = newton(bothAtTP, 290.0, s.p, feed);
            ASSERT_EQ(other.ierr, 0) << words(other.herr);
            EXPECT_NEAR(other.x[1], s.x[1], 1e-10);
            EXPECT_NEAR(other.y[1], s.y[1], 1e-10);
            EXPECT_NEAR(other.q, share, 1e-9);
            EXPECT_NEAR(other.D, 1.0 / ((1.0 - share) / s.rhol + share / s.rhov), 1e-8);
        }
    }
}

TEST(NewtonEdge, PureFluidGoesStraightToItsSaturation) {
    Composition z{};
    ASSERT_TRUE(setUpMixture({{"R32", 1.0}, {"R134A", 0.0}}, z));
    saturationCounts.calls = saturationCounts.substitutions = 0;
    const TwoPhases bubbles = atTemperature(290.0, bubble, z);
    for (const int kph : {bubbleAtT, dewAtT, bubbleAtP, dewAtP}) {
        SCOPED_TRACE(kph);
        const bool givenT = kph <= dewAtT;
        const TwoPhases s = newton(kph, givenT ? 290.0 : 0.0, givenT ? 0.0 : bubbles.p, z);
        ASSERT_EQ(s.ierr, 0) << words(s.herr);
        EXPECT_EQ(s.q, kph == bubbleAtT || kph == bubbleAtP ? 0.0 : 1.0);
        EXPECT_EQ(s.D, s.q == 0.0 ? s.rhol : s.rhov);
        EXPECT_LT(relative(s.p, bubbles.p), 1e-8);
        EXPECT_LT(relative(s.T, 290.0), 1e-8);
        EXPECT_LT(relative(s.rhol, bubbles.rhol), 1e-7);
    }
    EXPECT_EQ(saturationCounts.calls, 0);
    EXPECT_EQ(saturationCounts.substitutions, 0);
}

// AGA8 has no second derivatives in the composition.
TEST(NewtonEdge, ModelWithoutCompositionDerivativesEndsWithTheClassicalResult) {
    Composition z{};
    ASSERT_TRUE(setUpMixture({{"CO2", 0.4}, {"PROPANE", 0.6}}, z));
    const TwoPhases helmholtz = newton(dewAtT, 260.0, 0.0, z);
    ASSERT_EQ(helmholtz.ierr, 0);
    int ierr = 0;
    Text255 herr;
    SETAGA(ierr, herr);
    ASSERT_EQ(ierr, 0) << words(herr);
    RESETA();
    saturationCounts.substitutions = 0;
    const TwoPhases s = newton(dewAtT, 260.0, 0.0, z);
    EXPECT_EQ(s.ierr, 0) << words(s.herr);
    EXPECT_EQ(words(s.herr), "");
    EXPECT_EQ(saturationCounts.substitutions, 1);
    EXPECT_EQ(modelTags.HEOS, "AGA");
    EXPECT_EQ(s.q, 1.0);
    // AGA8's own gas constant and molar masses stand behind, hence not closer
    EXPECT_NEAR(s.p / helmholtz.p, 1.0, 1e-4);
    EXPECT_NEAR(s.x[1], helmholtz.x[1], 1e-4);
    // the vapor takes its density from AGA8
    double rho = 0.0;
    TPRHO(260.0, s.p, z, 2, 0, rho, ierr, herr);
    EXPECT_NEAR(s.rhov / rho, 1.0, 1e-9);
    UNSETAGA();
    modelTags.LFORCESETUP = true;
}

TEST(NewtonEdge, FeedOfTheLogarithmicSolverMustAddUp) {
    Composition z{};
    ASSERT_TRUE(setUpBlend("R407C", z));
    const TwoPhases d = newton(dewAtT, 280.0, 0.0, z);
    ASSERT_EQ(d.ierr, 0);
    for (const auto& [lack, code] : {std::pair{1e-7, 81}, {1.1e-8, 81}, {-1.1e-8, 81}, {0.9e-8, 0}, {-0.9e-8, 0}}) {
        SCOPED_TRACE(lack);
        TwoPhases s = d;
        Composition feed = z;
        feed[3] -= lack;
        SATGV(s.T, s.p, feed, 1.0, 280.0, 1, 1, 0, s.rhol, s.rhov, s.x, s.y, s.ierr, s.herr);
        EXPECT_EQ(s.ierr, code);
        EXPECT_EQ(words(s.herr), code == 0 ? "" : "[SATGV error 81] Sum of feed composition not equal to 1.0");
        EXPECT_NEAR(s.p / d.p, 1.0, 1e-6);
    }
}

TEST(NewtonEdge, GivenStartIsTaken) {
    Composition z{};
    ASSERT_TRUE(setUpBlend("R407C", z));
    for (int kph = bothAtTP; kph <= dewAtP; ++kph) {
        SCOPED_TRACE(kph);
        const TwoPhases s = kph == bothAtTP ? middle(300.0, z)
                            : kph <= dewAtT ? newton(kph, 300.0, 0.0, z)
                                            : newton(kph, 0.0, 1200.0, z);
        ASSERT_EQ(s.ierr, 0) << words(s.herr);
        const auto from = [&](double T, double p, double rhol, double rhov) {
            TwoPhases r = s;
            r.T = T;
            r.p = p;
            r.rhol = rhol;
            r.rhov = rhov;
            saturationCounts.substitutions = 0;
            SATTP(r.T, r.p, z, kph, 1, r.D, r.rhol, r.rhov, r.x, r.y, r.q, r.ierr, r.herr);
            EXPECT_EQ(r.ierr, 0) << words(r.herr);
            EXPECT_EQ(saturationCounts.substitutions, 0);
            EXPECT_LT(relative(r.T, s.T), 1e-8);
            EXPECT_LT(relative(r.p, s.p), 1e-8);
            EXPECT_LT(relative(r.rhol, s.rhol), 1e-8);
            EXPECT_LT(relative(r.rhov, s.rhov), 1e-8);
        };
        from(s.T, s.p, s.rhol, s.rhov);
        const bool unknownT = kph >= bubbleAtP, unknownP = kph == bubbleAtT || kph == dewAtT;
        from(unknownT ? s.T + 2.0 : s.T, unknownP ? s.p * 1.05 : s.p, 1.01 * s.rhol, 0.96 * s.rhov);
    }
}

TEST(NewtonEdge, ResultsMayShareTheArrayOfTheComposition) {
    Composition z{};
    ASSERT_TRUE(setUpBlend("R407C", z));
    for (const int kph : {bubbleAtT, dewAtT}) {
        const TwoPhases s = newton(kph, 290.0, 0.0, z);
        ASSERT_EQ(s.ierr, 0);
        TwoPhases r;
        r.T = 290.0;
        Composition shared = z;
        Composition& other = kph == bubbleAtT ? r.x : r.y;
        if (kph == bubbleAtT)
            SATTP(r.T, r.p, shared, kph, 0, r.D, r.rhol, r.rhov, other, shared, r.q, r.ierr, r.herr);
        else
            SATTP(r.T, r.p, shared, kph, 0, r.D, r.rhol, r.rhov, shared, other, r.q, r.ierr, r.herr);
        EXPECT_EQ(r.ierr, 0);
        EXPECT_EQ(r.p, s.p);
        for (int i = 1; i <= 3; ++i) {
            EXPECT_EQ(shared[i], kph == bubbleAtT ? s.y[i] : s.x[i]);
            EXPECT_EQ(other[i], z[i]);
        }
    }
}

// ------------------------------------------------------------------------------------------------------ messages

std::string fixed(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%11.4f", value);
    return std::string(text).size() > 11 ? std::string(11, '*') : text;
}

struct LogarithmicCall {
    double vf, b;
    int ipv, ityp;
    TwoPhases start;
};

// Every call leaves the compositions as they were.
void expectRefusal(const LogarithmicCall& call, const Composition& z, int code, const std::string& text) {
    TwoPhases s = call.start;
    SATGV(s.T, s.p, z, call.vf, call.b, call.ipv, call.ityp, 0, s.rhol, s.rhov, s.x, s.y, s.ierr, s.herr);
    EXPECT_EQ(s.ierr, code);
    EXPECT_EQ(words(s.herr), text);
    for (int i = 1; i <= modelTags.NC; ++i) {
        EXPECT_EQ(s.x[i], call.start.x[i]);
        EXPECT_EQ(s.y[i], call.start.y[i]);
    }
}

TEST(NewtonMessage, LogarithmicSolverRefusesItsInput) {
    Composition z{};
    ASSERT_TRUE(setUpBlend("R407C", z));
    TwoPhases d = newton(dewAtT, 280.0, 0.0, z);
    ASSERT_EQ(d.ierr, 0);
    const std::string vf = "[SATGV error 80] vf greater than 1 or less than 0";
    expectRefusal({1.001, 280.0, 1, 1, d}, z, 80, vf);
    expectRefusal({-0.001, 280.0, 2, 1, d}, z, 80, vf);
    TwoPhases changed = d;
    changed.rhol = 0.0;
    const std::string density = "[SATGV error 82] Input density less than or equal to 0.0";
    expectRefusal({1.0, 280.0, 1, 1, changed}, z, 82, density);
    changed = d;
    changed.rhov = -1.0;
    expectRefusal({1.0, 280.0, 2, 1, changed}, z, 82, density);
    expectRefusal({0.5, 1.0, 1, 6, d}, z, 81, "SATGV not set up for vf>0 and vf<1 with ityp=6");

    changed = d;
    changed.x[2] = 1e-60;
    changed.y[2] = 0.25;
    expectRefusal({1.0, 280.0, 1, 1, changed}, z, 72,
                  "[SATGV error 72] ln(2) value too high: " + fixed(std::log(0.25 / 1e-60)));
    const std::string bounds = "[SATGV error 73] Pressure or Temperature outside bounds.  Pressure = ";
    expectRefusal({1.0, 2000.5, 1, 1, d}, z, 73, bounds + fixed(d.p) + " Temperature = " + fixed(2000.5));
    expectRefusal({1.0, 1.5, 1, 1, d}, z, 73, bounds + fixed(d.p) + " Temperature = " + fixed(1.5));
    expectRefusal({1.0, 600000.25, 1, 0, d}, z, 73, bounds + fixed(600000.25) + " Temperature = " + fixed(280.0));
    changed = d;
    changed.rhol = 123.4567;
    expectRefusal(
        {1.0, 280.0, 2, 1, changed}, z, 77,
        "[SATGV error 77] Density outside bounds.  Density = " + fixed(123.4567) + " Temperature = " + fixed(280.0));
    changed = d;
    changed.x = changed.y = z;
    expectRefusal({1.0, 280.0, 1, 1, changed}, z, 74,
                  "[SATGV error 74] Trivial solution.  ln(ki) = " + fixed(0.0) + fixed(0.0) + fixed(0.0));
}

// Codes of a search that ends badly, from many poor starts: each code has its text, and all of them occur.
TEST(NewtonMessage, LogarithmicSolverNamesEveryEnd) {
    std::set<int> seen;
    std::uint64_t state = 7;
    const auto between = [&](double low, double high) {
        state = state * 6364136223846793005ULL + 1442695040888963407ULL;
        return low + (high - low) * static_cast<double>(state >> 11U) * 0x1p-53;
    };
    for (const char* blend : {"R407C", "R410A"}) {
        Composition z{};
        ASSERT_TRUE(setUpBlend(blend, z));
        const int nc = modelTags.NC;
        double Tc, pc, Dc;
        int ierr = 0;
        Text255 herr;
        CRITP(z, Tc, pc, Dc, ierr, herr);
        for (int k = 0; k < 1500; ++k) {
            TwoPhases s;
            s.T = between(150.0, Tc);
            s.p = pc * std::exp(between(-8.0, 0.3));
            s.rhol = std::exp(between(1.0, 3.0));
            s.rhov = std::exp(between(-5.0, 2.0));
            double sumX = 0.0, sumY = 0.0;
            for (int i = 1; i <= nc; ++i) {
                sumX += s.x[i] = z[i] * std::exp(between(-1.0, 1.0));
                sumY += s.y[i] = z[i] * std::exp(between(-1.0, 1.0));
            }
            for (int i = 1; i <= nc; ++i) {
                s.x[i] /= sumX;
                s.y[i] /= sumY;
            }
            const double shares[] = {0.0, 1.0, 0.4};
            const double vf = shares[k % 3];
            const int ityp = k / 3 % 2, ipv = 1 + k / 6 % 2;
            const double b = ityp == 0 ? pc * std::exp(between(-8.0, 0.1)) : between(150.0, Tc + 3.0);
            const Composition x = s.x, y = s.y;
            SATGV(s.T, s.p, z, vf, b, ipv, ityp, 0, s.rhol, s.rhov, s.x, s.y, s.ierr, s.herr);
            if (s.ierr < 71 || s.ierr > 77) continue;
            seen.insert(s.ierr);
            const std::string text = words(s.herr);
            const auto matches = [&](const std::string& heading, std::size_t values) {
                return text.starts_with(heading) && text.size() == heading.size() + 11 * values;
            };
            const auto n = static_cast<std::size_t>(nc);
            if (s.ierr == 71) {
                EXPECT_TRUE(matches("[SATGV error 71] Routine did not converge in 20 iterations.  Sum = ", 1)) << text;
            } else if (s.ierr == 74) {
                EXPECT_TRUE(matches("[SATGV error 74] Trivial solution.  ln(ki) = ", n)) << text;
            } else if (s.ierr == 75) {
                const std::string heading =
                    "[SATGV error 75] Converged in " + text.substr(30, 2) + " iterations.  But F < acceptable. ";
                EXPECT_TRUE(matches(heading, n + 1)) << text;
                EXPECT_LE(std::stoi(text.substr(30, 2)), 20);
                EXPECT_GE(std::stoi(text.substr(30, 2)), 2);
            } else if (s.ierr == 76) {
                EXPECT_EQ(text, "[SATGV error 76] False roots. ixphase=iyphase=2");
            }
            for (int i = 1; i <= nc; ++i) {
                EXPECT_EQ(s.x[i], x[i]);
                EXPECT_EQ(s.y[i], y[i]);
            }
        }
    }
    EXPECT_EQ(seen, (std::set<int>{71, 72, 73, 74, 75, 76, 77}));
}

// Behind the core nothing takes over, and its ends show.
TEST(NewtonMessage, SolverOfTheFugacityEquationsNamesItsEnds) {
    Composition z{};
    ASSERT_TRUE(setUpBlend("R407C", z));
    double Tc, pc, Dc;
    int ierr = 0;
    Text255 herr;
    CRITP(z, Tc, pc, Dc, ierr, herr);
    std::set<int> seen;
    for (int kph = bothAtTP; kph <= dewAtP; ++kph) {
        for (int k = 0; k < 60; ++k) {
            const double T = 100.0 + (Tc - 70.0) * k / 60.0, p = pc * std::exp(-12.0 + 0.205 * k);
            PhasePair pair;
            pair.T = T;
            pair.p = kph == bothAtTP ? pc * std::exp(7.0 * (1.0 - Tc / T)) : p;
            TwoPhases s;
            newtonEquilibrium(pair, z, kph, 0, s.ierr, s.herr);
            const std::string text = words(s.herr);
            if (s.ierr == 0) {
                EXPECT_EQ(text, "");
                continue;
            }
            if (text.starts_with("[TPRHO")) continue;  // no density: its own words stand
            seen.insert(s.ierr);
            EXPECT_EQ(text, s.ierr == 1   ? "SATTP:  Iteration failed"
                            : s.ierr == 2 ? "SATTP:  Maximum number of iterations exceeded"
                                          : "SATTP:  Error in iteration");
        }
    }
    EXPECT_EQ(seen, (std::set<int>{1, 2, 3}));
}

TEST(NewtonMessage, EnvelopeNamesItsFailures) {
    Composition z{};
    int ierr = 0;
    Text255 herr;
    // The cubic equation is let in, but SATGV has no derivatives of it: the trace ends after the points at low density.
    ASSERT_TRUE(setUpMixture({{"R32", 0.5}, {"R134A", 0.5}}, z));
    int cubic = 2;
    PREOS(cubic);
    ASSERT_EQ(modelTags.HEOS, "PR");
    SATSPLN(z, ierr, herr);
    EXPECT_EQ(ierr, 2);
    EXPECT_EQ(words(herr), "[SATSPLN error 2] saturation routine failed");
    EXPECT_FALSE(saturationSpline.SPLINEREADY);
    TwoPhases d = newton(dewAtT, 280.0, 0.0, z);
    EXPECT_EQ(d.ierr, 0) << words(d.herr);
    expectRefusal({1.0, 280.0, 2, 1, d}, z, 99, "Derivatives not yet available for PR");

    cubic = 0;
    PREOS(cubic);

    // equations of state that end at 1 Pa leave no dew point warm enough
    ASSERT_TRUE(setUpMixture({{"R32", 0.5}, {"R134A", 0.5}}, z));
    for (int i = 1; i <= 2; ++i) fluidConstants.PEOS[i] = 0.001;
    SATSPLN(z, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_EQ(words(herr), "[SATSPLN error 1] saturation routine failed in calculating initial state");

    // a mixing rule whose reducing functions have no derivatives
    modelTags.LFORCESETUP = true;
    ASSERT_TRUE(setUpMixture({{"R32", 0.5}, {"R134A", 0.5}}, z));
    mixingParameters.pair[1][2].HMODMX = mixingParameters.pair[2][1].HMODMX = "LIN";
    SATSPLN(z, ierr, herr);
    EXPECT_EQ(ierr, 191);
    EXPECT_EQ(words(herr), "[RDXHMX error 191] Derivative not available");
    EXPECT_FALSE(saturationSpline.SPLINEREADY);
    modelTags.LFORCESETUP = true;
}

TEST(NewtonMessage, CriticalPointAsksForABetterStart) {
    std::set<std::string> seen;
    for (const char* blend : {"R410A", "R507A"}) {
        Composition z{};
        ASSERT_TRUE(setUpBlend(blend, z));
        for (const double T : {100.0, 200.0, 900.0}) {
            for (const double p : {0.01, 5000.0}) {
                double tc = T, pc = p, rhoc = 0.0;
                int ierr = 0;
                Text255 herr;
                CRTPNT(z, tc, pc, rhoc, ierr, herr);
                if (ierr == 0) continue;
                EXPECT_EQ(ierr, 1);
                seen.insert(words(herr));
            }
        }
    }
    EXPECT_EQ(seen, (std::set<std::string>{"No convergence. Provide better p, t guess values",
                                           "dp, dt -> infinity. Provide better p, t guess values"}));
}

TEST(NewtonMessage, CriticalPointOfAPureFluidIsItsOwn) {
    Composition z{};
    ASSERT_TRUE(setUpMixture({{"R32", 0.0}, {"R134A", 1.0}}, z));
    double tc = 1.0, pc = 2.0, rhoc = 3.0;
    int ierr = 7;
    Text255 herr;
    CRTPNT(z, tc, pc, rhoc, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(tc, fluidConstants.TCRIT[2]);
    EXPECT_EQ(pc, fluidConstants.PCRIT[2]);
    EXPECT_EQ(rhoc, fluidConstants.DCRIT[2]);
}

// ---------------------------------------------------------------------------------------- the same state by two roads

struct Several {
    const char* name;
    std::initializer_list<Share> shares;
};
const Several severals[] = {
    {"R32 and R134A", {{"R32", 0.35}, {"R134A", 0.65}}}, {"R407C", {}}, {"R448A", {}},  // five components
};

testing::AssertionResult use(const Several& mixture, Composition& z) {
    return mixture.shares.size() == 0 ? setUpBlend(mixture.name, z) : setUpMixture(mixture.shares, z);
}

TEST(LogarithmicSolver, FindsTheStatesOfTheFugacityEquations) {
    Worst T, p, rho, fraction;
    int states = 0;
    for (const Several& mixture : severals) {
        Composition z{};
        ASSERT_TRUE(use(mixture, z));
        for (const double given : {220.0, 270.0, 320.0}) {
            for (const double vf : {0.0, 1.0, 0.4}) {
                const TwoPhases s = vf == 0.0   ? newton(bubbleAtT, given, 0.0, z)
                                    : vf == 1.0 ? newton(dewAtT, given, 0.0, z)
                                                : middle(given, z);
                ASSERT_EQ(s.ierr, 0) << words(s.herr);
                const double share = s.q;  // vf itself for the two lines
                const double entropies = (1.0 - share) * entropy(s.T, s.rhol, s.x) + share * entropy(s.T, s.rhov, s.y);
                const std::pair<int, double> givens[] = {{0, s.p}, {1, s.T}, {5, entropies}, {6, s.D}};
                for (const auto& [ityp, b] : givens) {
                    if (ityp == 6 && vf == 0.4) continue;
                    for (const int ipv : {1, 2}) {
                        SCOPED_TRACE(testing::Message() << mixture.name << ' ' << given << " K, vf " << share
                                                        << ", ityp " << ityp << ", ipv " << ipv);
                        // a start near by, as a caller has it who walks along a line; a liquid that is thinner would
                        // have no pressure
                        TwoPhases r = s;
                        if (ityp != 1) r.T *= 1.003;
                        if (ityp != 0) r.p *= 1.02;
                        if (ityp != 6 || vf == 1.0) r.rhol *= 1.002;
                        if (ityp != 6 || vf == 0.0) r.rhov *= 1.03;
                        SATGV(r.T, r.p, z, share, b, ipv, ityp, 0, r.rhol, r.rhov, r.x, r.y, r.ierr, r.herr);
                        EXPECT_EQ(r.ierr, 0) << words(r.herr);
                        EXPECT_LT(relative(r.T, s.T), 1e-8);
                        EXPECT_LT(relative(r.p, s.p), 1e-8);
                        EXPECT_LT(relative(r.rhol, s.rhol), 1e-8);
                        EXPECT_LT(relative(r.rhov, s.rhov), 1e-8);
                        T.take(relative(r.T, s.T), mixture.name);
                        p.take(relative(r.p, s.p), mixture.name);
                        rho.take(test::larger(relative(r.rhol, s.rhol), relative(r.rhov, s.rhov)), mixture.name);
                        for (int i = 1; i <= modelTags.NC; ++i) {
                            EXPECT_NEAR(r.x[i], s.x[i], 1e-8);
                            EXPECT_NEAR(r.y[i], s.y[i], 1e-8);
                            fraction.take(test::larger(std::fabs(r.x[i] - s.x[i]), std::fabs(r.y[i] - s.y[i])),
                                          mixture.name);
                        }
                        ++states;
                    }
                }
            }
        }
    }
    EXPECT_EQ(states, 3 * 3 * (8 + 8 + 6));
    std::printf("logarithmic variables, %d states: T %.1e, p %.1e, rho %.1e, fractions %.1e (%s)\n", states, T.value,
                p.value, rho.value, fraction.value, fraction.where.c_str());
}

constexpr double balanceBound = 1e-12;  // of a composition
// without a start, a state next to one of the lines is left to substitution, which ends at this tolerance of the sums
constexpr double substitutionBound = 1e-9;
constexpr double fugacityBound = 1e-8;  // relative: the search ends at steps of 1e-10
TEST(TwoPhaseState, FugacitiesAreEqualAndTheMaterialBalances) {
    Worst unequal, balance, roughBalance;
    for (const Several& mixture : severals) {
        Composition z{};
        ASSERT_TRUE(use(mixture, z));
        for (const double T : {210.0, 250.0, 290.0, 330.0}) {
            const TwoPhases b = newton(bubbleAtT, T, 0.0, z), d = newton(dewAtT, T, 0.0, z);
            for (const double share : {0.05, 0.35, 0.65, 0.95}) {
                SCOPED_TRACE(testing::Message() << mixture.name << ' ' << T << " K, " << share);
                const double p = share * b.p + (1.0 - share) * d.p;
                saturationCounts.substitutions = 0;
                const TwoPhases s = newton(bothAtTP, T, p, z);
                ASSERT_EQ(s.ierr, 0) << words(s.herr);
                const bool substituted = saturationCounts.substitutions > 0;
                EXPECT_FALSE(substituted && share > 0.1 && share < 0.9);
                saturationCounts.substitutions = 0;
                const test::FlashState f = test::flash("TP", T, p, z);
                ASSERT_EQ(f.ierr, 0) << words(f.herr);
                const TwoPhases flashed{f.T, f.p, f.D, f.Dl, f.Dv, f.q, f.x, f.y, 0, {}};
                EXPECT_EQ(saturationCounts.substitutions, 0);
                EXPECT_EQ(f.cv, twoPhaseValue);
                for (const TwoPhases* state : {&s, &flashed}) {
                    EXPECT_GT(state->q, 0.0);
                    EXPECT_LT(state->q, 1.0);
                    EXPECT_LT(disequilibrium(*state), fugacityBound);
                    unequal.take(disequilibrium(*state), mixture.name);
                    EXPECT_LT(relative(1.0 / state->D, (1.0 - state->q) / state->rhol + state->q / state->rhov), 1e-12);
                    EXPECT_LT(relative(pressure(T, state->rhol, state->x), p), 1e-6);
                    EXPECT_LT(relative(pressure(T, state->rhov, state->y), p), 1e-8);
                    for (int i = 1; i <= modelTags.NC; ++i) {
                        const double off = std::fabs((1.0 - state->q) * state->x[i] + state->q * state->y[i] - z[i]);
                        EXPECT_LT(off, state == &s && substituted ? substitutionBound : balanceBound);
                        (state == &s && substituted ? roughBalance : balance).take(off, mixture.name);
                    }
                }
                EXPECT_NEAR(s.q, f.q, 1e-8);  // the balance over the width of the two phases
            }
        }
    }
    std::printf(
        "two-phase states at T and p: fugacities differ by %.1e (%s), balance %.1e (%s), by substitution %.1e (%s)\n",
        unequal.value, unequal.where.c_str(), balance.value, balance.where.c_str(), roughBalance.value,
        roughBalance.where.c_str());
}

// ------------------------------------------------------------------------------------------ starting values and bricks

// The estimate of the vapor pressure of a component, with its constants as INFO gives them.
struct Estimate {
    Composition Tc{}, pc{}, w{};
    Estimate() {
        for (int i = 1; i <= modelTags.NC; ++i) {
            double mass, triple, boiling, Dc, Zc, dipole, gas;
            INFO(i, mass, triple, boiling, Tc[i], pc[i], Dc, Zc, w[i], dipole, gas);
        }
    }
    double vaporPressure(int i, double T) const {
        return pc[i] * std::exp(static_cast<double>(5.373f) * (w[i] + 1.0) * (1.0 - Tc[i] / T));
    }
    double bubblePressure(double T, const Composition& x) const {
        double sum = 0.0;
        for (int i = 1; i <= modelTags.NC; ++i) sum += x[i] * vaporPressure(i, T);
        return sum;
    }
    double dewPressure(double T, const Composition& x) const {
        double sum = 0.0;
        for (int i = 1; i <= modelTags.NC; ++i) sum += x[i] / vaporPressure(i, T);
        return 1.0 / sum;
    }
};

TEST(Estimates, EvaluationsOfTheEstimate) {
    Composition z{};
    ASSERT_TRUE(setUpBlend("R448A", z));
    const Estimate own;
    int ierr = 5;
    Text255 herr;
    const auto evaluate = [&](int itype, double T, double p, double q, const Composition& x, Composition& out) {
        double f = -77.0;
        PTEST(itype, T, p, q, x, own.Tc, own.pc, own.w, f, out, ierr, herr);
        EXPECT_EQ(ierr, 0);
        return f;
    };
    Composition out{};
    for (const double T : {200.0, 290.0, 340.0}) {
        const double p = 0.5 * (own.bubblePressure(T, z) + own.dewPressure(T, z));
        EXPECT_LT(relative(evaluate(1, T, p, 0.3, z, out), own.bubblePressure(T, z)), 1e-13);
        EXPECT_LT(relative(evaluate(2, T, p, 0.3, z, out), own.dewPressure(T, z)), 1e-13);
        EXPECT_NEAR(evaluate(3, T, p, 0.3, z, out), 1.0 - p / own.bubblePressure(T, z), 1e-13);
        double balance = 1.0;
        Composition y{}, x{};
        double sumY = 0.0, sumX = 0.0;
        for (int i = 1; i <= 5; ++i) {
            const double K = own.vaporPressure(i, T) / p;
            balance -= z[i] / (0.7 + 0.3 * K);
            sumY += y[i] = z[i] * K;
            sumX += x[i] = z[i] / (0.7 + 0.3 * K);
        }
        EXPECT_NEAR(evaluate(4, T, p, 0.3, z, out), balance, 1e-13);
        evaluate(5, T, p, 0.3, z, out);
        for (int i = 1; i <= 5; ++i) EXPECT_NEAR(out[i], y[i] / sumY, 1e-13);
        evaluate(6, T, p, 0.3, z, out);
        for (int i = 1; i <= 5; ++i) EXPECT_NEAR(out[i], x[i] / sumX, 1e-13);
    }
    // fractions are held inside 1e-6 and 0.999999, but a missing component stays missing
    Composition few{};
    few[1] = 1e-9;
    few[3] = 1.0 - 1e-9;
    evaluate(5, 290.0, own.vaporPressure(3, 290.0), 0.0, few, out);
    const double low = static_cast<double>(1e-6f), high = static_cast<double>(0.999999f);
    EXPECT_LT(relative(out[1], low / (low + high)), 1e-12);
    EXPECT_LT(relative(out[3], high / (low + high)), 1e-12);
    EXPECT_EQ(out[2], 0.0);
    // nothing is done without a temperature
    out[1] = 42.0;
    EXPECT_EQ(evaluate(1, 0.0, 100.0, 0.0, z, out), -77.0);
    EXPECT_EQ(evaluate(5, -3.0, 100.0, 0.0, z, out), -77.0);
    EXPECT_EQ(out[1], 42.0);
    // terms of the balance without a positive denominator are left out
    Composition far = z;
    double left = 1.0;
    const double p = own.vaporPressure(1, 290.0) * 0.9;
    for (int i = 1; i <= 5; ++i) {
        const double denominator = 1.0 - 1.5 + 1.5 * own.vaporPressure(i, 290.0) / p;
        if (denominator > 0.0) left -= z[i] / denominator;
    }
    EXPECT_NEAR(evaluate(4, 290.0, p, 1.5, far, out), left, 1e-12);
}

TEST(Estimates, StartsOfBubbleAndDewPoints) {
    for (const Several& mixture : severals) {
        Composition z{};
        ASSERT_TRUE(use(mixture, z));
        const int nc = modelTags.NC;
        const Estimate own;
        int ierr = 0;
        Text255 herr;
        for (const double T : {190.0, 250.0, 310.0, 350.0}) {
            SCOPED_TRACE(testing::Message() << mixture.name << ' ' << T);
            for (const bool atBubble : {true, false}) {
                const double expected = atBubble ? own.bubblePressure(T, z) : own.dewPressure(T, z);
                double at = T, p = 0.0;
                Composition x{}, y{};
                SATEST(atBubble ? 1 : 2, at, p, z, x, y, ierr, herr);
                EXPECT_EQ(ierr, 0);
                EXPECT_LT(relative(p, expected), 1e-13);
                const auto expectFractions = [&](double bound) {
                    for (int i = 1; i <= nc; ++i) {
                        EXPECT_EQ(atBubble ? x[i] : y[i], z[i]);
                        const double K = own.vaporPressure(i, T) / expected;
                        EXPECT_NEAR(atBubble ? y[i] : x[i], atBubble ? z[i] * K : z[i] / K, bound);
                    }
                };
                expectFractions(1e-12);
                // and back from the pressure: the residual is held to 1e-8, and ln p rises by 0.02 a kelvin at least
                double found = 0.0, of = expected;
                SATEST(atBubble ? 3 : 4, found, of, z, x, y, ierr, herr);
                EXPECT_EQ(ierr, 0);
                EXPECT_NEAR(found, T, 1e-6);
                expectFractions(1e-7);
            }
        }
        // no temperature, no pressure
        Composition x{}, y{};
        double T = 0.0, p = 100.0;
        for (const int kph : {1, 2}) {
            T = 0.0;
            SATEST(kph, T, p, z, x, y, ierr, herr);
            EXPECT_EQ(ierr, 1);
        }
        for (const int kph : {3, 4}) {
            for (const double none : {0.0, -5.0}) {
                T = 300.0;
                p = none;
                SATEST(kph, T, p, z, x, y, ierr, herr);
                EXPECT_EQ(ierr, 1);
            }
        }
    }
}

TEST(Estimates, StartsOfTwoPhaseStates) {
    for (const Several& mixture : severals) {
        Composition z{};
        ASSERT_TRUE(use(mixture, z));
        const int nc = modelTags.NC;
        const Estimate own;
        int ierr = 0;
        Text255 herr;
        Composition x{}, y{};
        for (const double share : {0.1, 0.5, 0.9}) {
            const double T = 280.0, b = own.bubblePressure(T, z), d = own.dewPressure(T, z);
            const double p = d + share * (b - d);
            SCOPED_TRACE(testing::Message() << mixture.name << ' ' << share);
            SAT0EST(T, p, z, x, y, ierr, herr);
            EXPECT_EQ(ierr, 0);
            // the share of the vapor by bisection
            double low = 0.0, high = 1.0;
            for (int step = 1; step <= 60; ++step) {
                const double q = 0.5 * (low + high);
                double balance = 0.0;
                for (int i = 1; i <= nc; ++i) {
                    const double K = own.vaporPressure(i, T) / p;
                    balance += z[i] * (K - 1.0) / (1.0 + q * (K - 1.0));
                }
                (balance > 0.0 ? low : high) = q;
            }
            for (int i = 1; i <= nc; ++i) {
                // the search ends at a residual of 1e-5
                const double K = own.vaporPressure(i, T) / p, expected = z[i] / (1.0 + low * (K - 1.0));
                EXPECT_NEAR(x[i], expected, 1e-3);
                EXPECT_NEAR(y[i], expected * K, 1e-3);
            }
            // one line of material balance through x, z, y
            const double q = (z[1] - x[1]) / (y[1] - x[1]);
            for (int i = 2; i <= nc; ++i) EXPECT_NEAR(x[i] + q * (y[i] - x[i]), z[i], 1e-12);
            // outside the estimated two phases
            for (const double outside : {0.98 * d, 1.02 * b}) {
                SAT0EST(T, outside, z, x, y, ierr, herr);
                EXPECT_EQ(ierr, 0);
                for (int i = 1; i <= nc; ++i) {
                    EXPECT_EQ(x[i], z[i]);
                    EXPECT_EQ(y[i], z[i] / 2.0);
                }
            }
        }
    }
}

TEST(Bricks, CompositionsFromTheRatios) {
    Composition z{};
    ASSERT_TRUE(setUpBlend("R407C", z));
    Composition ln{}, K{}, x{}, y{};
    ln[1] = 0.7;
    ln[2] = 0.2;
    ln[3] = -0.9;
    for (const double vf : {0.0, 0.35, 1.0}) {
        GETXY(z, vf, ln, K, x, y);
        double sumX = 0.0, sumY = 0.0, plainX[4] = {}, plainY[4] = {};
        for (int i = 1; i <= 3; ++i) {
            EXPECT_EQ(K[i], std::exp(ln[i]));
            sumX += plainX[i] = z[i] / (1.0 + vf * (K[i] - 1.0));
            sumY += plainY[i] = plainX[i] * K[i];
        }
        for (int i = 1; i <= 3; ++i) {
            EXPECT_NEAR(x[i], plainX[i] / sumX, 1e-14);
            EXPECT_NEAR(y[i], plainY[i] / sumY, 1e-14);
        }
    }
    // a denominator that is nothing, or beyond all measure, leaves the fraction of the feed
    ln[1] = -1e3;
    GETXY(z, 1.0, ln, K, x, y);
    double sumX = z[1] + z[2] / K[2] + z[3] / K[3];
    EXPECT_NEAR(x[1], z[1] / sumX, 1e-14);
    EXPECT_EQ(y[1], 0.0);
    ln[1] = 60.0;
    GETXY(z, 1.0, ln, K, x, y);
    sumX = z[1] + z[2] / K[2] + z[3] / K[3];
    EXPECT_NEAR(x[1], z[1] / sumX, 1e-14);
    EXPECT_NEAR(y[1], 1.0, 1e-12);
}

TEST(Bricks, FugacitiesAndPhaseTest) {
    Composition z{};
    ASSERT_TRUE(setUpBlend("R407C", z));
    double Tc, pc, Dc;
    int ierr = 0;
    Text255 herr;
    CRITP(z, Tc, pc, Dc, ierr, herr);
    struct State {
        double T, p;
        int side;
    };
    const State states[] = {
        {260.0, 2000.0, 1}, {300.0, 400.0, 2}, {300.0, 1500.0, 1}, {400.0, 9000.0, 2}, {400.0, 100.0, 2}};
    for (const State& state : states) {
        const double T = state.T, p = state.p;
        const int side = state.side;
        SCOPED_TRACE(testing::Message() << T << " K, " << p << " kPa");
        double rho = 0.0;
        TPRHO(T, p, z, side, 0, rho, ierr, herr);
        ASSERT_LE(ierr, 0);
        Composition f{};
        FGCTY2(T, rho, z, f, ierr, herr);
        ASSERT_EQ(ierr, 0);
        // the curvature of the isotherm by differences
        const double dT = 1e-3 * T, dD = 1e-3 * rho;
        const auto P = [&](double kT, double kD) { return pressure(T + kT * dT, rho + kD * dD, z); };
        const double PT = (P(1, 0) - P(-1, 0)) / (2 * dT), PD = (P(0, 1) - P(0, -1)) / (2 * dD);
        const double PDD = (P(0, 1) - 2 * P(0, 0) + P(0, -1)) / (dD * dD);
        const double PTD = (P(1, 1) - P(1, -1) - P(-1, 1) + P(-1, -1)) / (4 * dT * dD);
        const double curvature = 2.0 - rho * (PTD / PT - PDD / PD);
        const int expectedPhase = curvature > 1.0 || rho > 2.0 * Dc ? 1 : 2;
        for (const int mode : {1, 2, 3}) {
            for (const int asked : {side, 0}) {
                SCOPED_TRACE(testing::Message() << "mode " << mode << ", phase " << asked);
                int phase = asked;
                double D = mode == 3 ? rho : 0.0, at = mode == 3 ? 0.0 : p, dpdt, dpdd, dddt, cp;
                Composition ln{};
                LGPHI(mode, phase, T, D, at, z, ln, dpdt, dpdd, dddt, cp, ierr, herr);
                EXPECT_EQ(ierr, 0) << words(herr);
                EXPECT_LT(relative(D, rho), 1e-8);
                EXPECT_LT(relative(at, p), 1e-7);
                EXPECT_EQ(phase, expectedPhase);
                for (int i = 1; i <= 3; ++i) EXPECT_NEAR(ln[i], std::log(f[i] / z[i] / (mode == 1 ? p : 1000.0)), 1e-7);
                EXPECT_LT(relative(dpdt, PT), 1e-4);
                EXPECT_LT(relative(dpdd, PD), 1e-4);
                EXPECT_LT(relative(dddt, -PT / PD), 1e-4);
                double pAgain, e, h, s, cv, cpAgain, w, jt;
                THERM(T, rho, z, pAgain, e, h, s, cv, cpAgain, w, jt);
                EXPECT_LT(relative(cp, cpAgain), 1e-8);
            }
        }
    }
    // one root alone at this temperature: a side without a density takes the other one
    int phase = 1;
    double D = 0.0, p = 50.0, dpdt, dpdd, dddt, cp;
    Composition ln{};
    LGPHI(2, phase, 330.0, D, p, z, ln, dpdt, dpdd, dddt, cp, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_NEAR(D / (50.0 / (fluidConstants.R * 330.0)), 1.0, 0.05);
    EXPECT_EQ(phase, 2);
    // a negative density counts as the critical one
    D = -1.0;
    LGPHI(3, phase, 400.0, D, p, z, ln, dpdt, dpdd, dddt, cp, ierr, herr);
    EXPECT_NEAR(D, Dc, 1e-12);
}

}  // namespace
}  // namespace frigana::equilibria
