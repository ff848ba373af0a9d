// The rule of ammonia + water, and the reference state of its published model, with made-up terms of the departure
// function; and the published mixture, as the data folder holds it.
#include "CORE_CPP.h"
#include "CORE_FEQ.h"
#include "DISPATCH.h"
#include "EngineSetUp.h"
#include "FLSH_SUB.h"
#include "Larger.h"
#include "MixtureSetUp.h"
#include "PROP_SUB_FUGACITY.h"
#include "SAT_SUB.h"
#include "TPRHO.h"
#include "Water.h"

namespace frigana::test {
namespace {

constexpr double tcAmmonia = 405.4, rhocAmmonia = 13.2117771543, tcWater = 647.096, rhocWater = 17.8737279956;
constexpr double gasConstant = 8.31451, gasConstantOfWater = 8.314371357587;

std::string replaced(std::string text, const std::string& old, const std::string& by) {
    for (std::size_t at = text.find(old); at != std::string::npos; at = text.find(old, at + by.size()))
        text.replace(at, old.size(), by);
    return text;
}
// Ammonia with a gas constant of its own and a reference state near that of the mixture, and water likewise.
std::string ammoniaText(const std::string& h = "45957.4") {
    const std::string text = replaced(readFile(dataFile("AMMONIA.FLD")), "8.314471", "8.31451");
    return replaced(text, "\nIIR ", "\nOTH\n  300.0  0.01  " + h + "  164.3 ");
}
std::string waterText(const std::string& h = "28945.2") {
    return replaced(waterFile, "300.0  0.01  45000.0  200.0", "300.0  0.01  " + h + "  159.1");
}

// Fourteen terms with every kind of exponent: no exponential, and exponentials of the first and second power.
struct Term {
    double N, t, d, l;
};
constexpr Term terms[14] = {{-0.02, 1.5, 4, 0}, {0.05, 0.5, 5, 1},  {1e-6, 6.5, 12, 1}, {2e-4, 1.75, 8, 1},
                            {-1e-5, 9.0, 6, 1}, {-3e-6, 6.0, 9, 2}, {0.26, -1.0, 4, 1}, {-1e-5, 4.0, 8, 1},
                            {0.012, 3.5, 4, 1}, {-0.07, 0.0, 5, 1}, {0.1, -1.0, 6, 2},  {1e-3, 8.0, 10, 2},
                            {-0.2, 7.5, 6, 2},  {-0.78, 4.0, 2, 2}};
constexpr double kT = 0.965, kV = 1.24, alpha = 1.125, beta = 0.9, gamma = 0.525;

std::string ruleTR1() {
    std::string rows;
    for (const Term& term : terms) {
        char row[100];
        std::snprintf(row, sizeof row, "%.9e %g %g %g\n", term.N, term.t, term.d, term.l);
        rows += row;
    }
    return ruleText("TR1", "  14  3  1  0  0", rows);
}
const std::string recordTR1 = dataLine("7664-41-7/7732-18-5", "TR1", "0.965 1.24 1.125 0.9 0.525 0.0") + endOfRecord;

class AmmoniaWater : public MixtureSetUp {
  protected:
    void SetUp() override {
        MixtureSetUp::SetUp();
        for (const char* name : {"NITROGEN", "PROPANE", "C12", "R134A"})
            write(std::string(name) + ".FLD", readFile(dataFile(std::string(name) + ".FLD")));
        ammoniaPath = write("AMMONIA.FLD", ammoniaText());
        waterPath = write("WATER.FLD", waterText());
        propanePath = folder.path("PROPANE.FLD");
    }
    int setUpInOrder(bool waterFirst, const char* reference = "NA", const std::string& records = recordTR1) {
        return MixtureSetUp::setUp(waterFirst ? Names{waterPath, ammoniaPath} : Names{ammoniaPath, waterPath},
                                   write("TEST.BNC", mixtureFileText(records, ruleTR1() + plainKW0 + plainLJ6)),
                                   reference);
    }
    // The mixture of the data folder.
    int setUpPublished(bool waterFirst) {
        return MixtureSetUp::setUp(waterFirst ? Names{"WATER", "AMMONIA"} : Names{"AMMONIA", "WATER"});
    }
    static Composition ofAmmonia(double xa, bool waterFirst) {
        return waterFirst ? fractions({1.0 - xa, xa}) : fractions({xa, 1.0 - xa});
    }
    std::string ammoniaPath, waterPath, propanePath;
};

// The published form of the reducing functions: x^2 Tc1 + (1 - x)^2 Tc2 + x (1 - x^alpha) kT (Tc1 + Tc2), likewise of
// the volumes.
TEST_F(AmmoniaWater, ReducingFunctionsInBothOrders) {
    for (const bool waterFirst : {false, true}) {
        ASSERT_EQ(setUpInOrder(waterFirst), 0) << message();
        EXPECT_EQ(mixingParameters.AMMONIAWATER, waterFirst ? 2 : 1);
        EXPECT_EQ(mixingParameters.IWATERCOMP, waterFirst ? 1 : 2);
        for (const double xa : {0.1, 0.5, 0.85}) {
            const double xw = 1.0 - xa;
            double Tr = 0.0, Dr = 0.0;
            REDHMX(ofAmmonia(xa, waterFirst), Tr, Dr);
            EXPECT_NEAR(
                Tr,
                xa * xa * tcAmmonia + xw * xw * tcWater + xa * (1.0 - std::pow(xa, alpha)) * kT * (tcAmmonia + tcWater),
                1e-12 * Tr);
            const double va = 1.0 / rhocAmmonia, vw = 1.0 / rhocWater;
            EXPECT_NEAR(1.0 / Dr, xa * xa * va + xw * xw * vw + xa * (1.0 - std::pow(xa, beta)) * kV * (va + vw),
                        1e-14);
        }
    }
}

TEST_F(AmmoniaWater, DepartureFunctionAndItsDerivativesInBothOrders) {
    const auto published = [](double tau, double del, double xa) {
        double sum = 0.0;
        for (int k = 0; k < 14; ++k) {
            const Term& term = terms[k];
            const double weight = k < 6 ? 1.0 : k < 13 ? xa : xa * xa;
            sum += weight * term.N * std::pow(tau, term.t) * std::pow(del, term.d) *
                   (term.l > 0.0 ? std::exp(-std::pow(del, term.l)) : 1.0);
        }
        return xa * (1.0 - std::pow(xa, gamma)) * sum;
    };
    const auto slope = [](auto value, double at, double h) {
        const auto pair = [&](int k) { return value(at + k * h) - value(at - k * h); };
        return (45.0 * pair(1) - 9.0 * pair(2) + pair(3)) / (60.0 * h);
    };
    Random random;
    for (const bool waterFirst : {false, true}) {
        ASSERT_EQ(setUpInOrder(waterFirst), 0) << message();
        for (int n = 0; n < 12; ++n) {
            const double xa = random.between(0.05, 0.95), tau = random.between(0.7, 2.0);
            const double del = random.between(0.05, 2.5);
            const Composition x = ofAmmonia(xa, waterFirst);
            const auto phi = [&](int itau, int idel, double a, double b) { return PHIMIX(1, 2, itau, idel, a, b, x); };
            double scale = 1e-6;
            for (int i = 0; i <= 3; ++i)
                scale = larger({scale, std::fabs(phi(0, i, tau, del)), std::fabs(phi(i, 0, tau, del)),
                                std::fabs(phi(1, 1, tau, del))});
            EXPECT_NEAR(phi(0, 0, tau, del), published(tau, del, xa), 1e-13 * scale);
            EXPECT_EQ(PHIMIX(2, 1, 0, 0, tau, del, x), phi(0, 0, tau, del));
            for (int order = 0; order < 3; ++order) {
                EXPECT_NEAR(phi(0, order + 1, tau, del) + order * phi(0, order, tau, del),
                            del * slope([&](double b) { return phi(0, order, tau, b); }, del, 2e-3 * del),
                            1e-8 * scale);
                EXPECT_NEAR(phi(order + 1, 0, tau, del) + order * phi(order, 0, tau, del),
                            tau * slope([&](double a) { return phi(order, 0, a, del); }, tau, 2e-3 * tau),
                            1e-8 * scale);
            }
            EXPECT_NEAR(phi(1, 1, tau, del), tau * slope([&](double a) { return phi(0, 1, a, del); }, tau, 2e-3 * tau),
                        1e-8 * scale);
        }
        EXPECT_EQ(PHIMIX(1, 2, 0, 1, 1.2, 1e-10, ofAmmonia(0.3, waterFirst)), 0.0);
    }
}

TEST_F(AmmoniaWater, TheOrderOfTheComponentsDoesNotMatter) {
    struct State {
        double p, h, s, cp, w;
    };
    State state[2];
    for (const bool waterFirst : {false, true}) {
        ASSERT_EQ(setUpInOrder(waterFirst, "DEF"), 0) << message();
        double e, cv, jt;
        State& s = state[waterFirst ? 1 : 0];
        THERM(500.0, 3.0, ofAmmonia(0.3, waterFirst), s.p, e, s.h, s.s, cv, s.cp, s.w, jt);
        EXPECT_GT(s.p, 0.0);
    }
    EXPECT_NEAR(state[0].p, state[1].p, 1e-13 * state[0].p);
    EXPECT_NEAR(state[0].h, state[1].h, 1e-13 * std::fabs(state[0].h));
    EXPECT_NEAR(state[0].s, state[1].s, 1e-13 * std::fabs(state[0].s));
    EXPECT_NEAR(state[0].cp, state[1].cp, 1e-13 * state[0].cp);
    EXPECT_NEAR(state[0].w, state[1].w, 1e-13 * state[0].w);
}

TEST_F(AmmoniaWater, OtherComponentsAreRefused) {
    const std::string record = dataLine("7664-41-7/74-98-6", "TR1", "1 1 1 1 1 0") + endOfRecord;
    const std::string file = write("OTHER.BNC", mixtureFileText(record, ruleTR1() + plainLJ6));
    EXPECT_EQ(MixtureSetUp::setUp({ammoniaPath, propanePath}, file), 106);
    EXPECT_EQ(message(), "[SETMHX error 106] Wrong components; model TR1 valid for ammonia + water only");
    EXPECT_EQ(mixingParameters.AMMONIAWATER, 0);
}

TEST_F(AmmoniaWater, AThirdComponentIsRefused) {
    const std::string records = recordTR1 + dataLine("7664-41-7/74-98-6", "KW0", "1 1 1 1 0 0") + endOfRecord +
                                dataLine("7732-18-5/74-98-6", "KW0", "1 1 1 1 0 0") + endOfRecord;
    const std::string file = write("THREE.BNC", mixtureFileText(records, ruleTR1() + plainKW0));
    EXPECT_EQ(MixtureSetUp::setUp({ammoniaPath, waterPath, propanePath}, file), 107);
    EXPECT_EQ(message(), "[SETMHX error 107] Wrong number of components; model TR1 valid for binary mixtures only");
}

// The reference state of the fluid files, 45957 and 164, 28945 and 159 to the unit, is replaced by that of the model.
TEST_F(AmmoniaWater, TheReferenceStateIsThatOfThePublishedModel) {
    for (const bool waterFirst : {false, true}) {
        const int a = waterFirst ? 2 : 1, w = 3 - a;
        const std::string otherRule = dataLine("7664-41-7/7732-18-5", "KW0", "1 1 1 1 0 0") + endOfRecord;
        ASSERT_EQ(setUpInOrder(waterFirst, "DEF", otherRule), 0) << message();
        const double before = CP0(300.0, unitComposition(a));
        ASSERT_EQ(setUpInOrder(waterFirst, "DEF"), 0) << message();
        EXPECT_EQ(fluidConstants.REOS[a], 8.314471);
        EXPECT_EQ(feqTerms[a].RFEQ, 8.314471);
        EXPECT_EQ(cppTerms[a].CREDCP, 8.314471);
        EXPECT_EQ(fluidConstants.REOS[w], gasConstantOfWater);
        EXPECT_EQ(cppTerms[w].CREDCP, gasConstantOfWater);
        struct Row {
            int i;
            double h, s;
        };
        for (const Row& row : {Row{a, 45957.74401972, 164.007259009}, Row{w, 28945.5688500127, 159.336684302313}}) {
            // at 300 K and 0.01 kPa, as good as the ideal gas of the definition
            const Composition x = unitComposition(row.i);
            double rho = 0.0, h = 0.0, s = 0.0;
            TPRHO(300.0, 0.01, x, 2, 0, rho, ierr, herr);
            ASSERT_EQ(ierr, 0) << message();
            ENTHAL(300.0, rho, x, h);
            ENTRO(300.0, rho, x, s);
            EXPECT_NEAR(h, row.h, 1e-6);
            EXPECT_NEAR(s, row.s, 1e-8);
        }
        // and the heat capacity of ammonia's ideal gas goes with its gas constant
        EXPECT_NEAR(CP0(300.0, unitComposition(a)) / before, 8.314471 / gasConstant, 1e-14);
    }
}

TEST_F(AmmoniaWater, AnotherReferenceStateIsLeftAlone) {
    write("WATER.FLD", waterText("28950.0"));
    ASSERT_EQ(setUpInOrder(false, "DEF"), 0) << message();
    EXPECT_EQ(fluidConstants.REOS[1], gasConstant);
    EXPECT_EQ(referenceState.HDEF[1], 45957.4);
    EXPECT_EQ(referenceState.HDEF[2], 28950.0);
    // nor is it touched where the pair has another rule
    write("WATER.FLD", waterText());
    ASSERT_EQ(setUpInOrder(false, "DEF", dataLine("7664-41-7/7732-18-5", "KW0", "1 1 1 1 0 0") + endOfRecord), 0)
        << message();
    EXPECT_EQ(fluidConstants.REOS[1], gasConstant);
    EXPECT_EQ(referenceState.HDEF[1], 45957.4);
}

// Check values of the published mixture, two densities of three compositions and temperatures each. The engine takes
// the gas constants of both components by their fractions, the publication one for the mixture; pressures and Helmholtz
// energies over RT are the same.
// Source: Guideline on the IAPWS Formulation 2001 for the Thermodynamic Properties of Ammonia-Water Mixtures, G4-01
TEST_F(AmmoniaWater, CheckValuesOfThePublishedMixture) {
    struct Row {
        double rho, p, a;  // mol/L, MPa, J/mol
    };
    struct Pair {
        double xa, T;  // mol/mol, K
        Row rows[2];
    };
    constexpr Pair pairs[] = {{0.1, 600.0, {{35.0, 32.1221333, -13734.1763}, {4.0, 12.7721090, -16991.6697}}},
                              {0.5, 500.0, {{32.0, 21.3208159, -12109.5369}, {1.0, 3.6423080, -18281.3020}}},
                              {0.9, 400.0, {{30.0, 22.2830797, -6986.4869}, {0.5, 1.5499708, -13790.6278}}}};
    constexpr double lastDigitOfPressure = 1e-7, lastDigitOfEnergy = 1e-4;
    for (const bool waterFirst : {false, true}) {
        ASSERT_LE(setUpPublished(waterFirst), 0) << message();
        for (const Pair& pair : pairs) {
            const Composition x = ofAmmonia(pair.xa, waterFirst);
            const double ratio = 8.314471 / (pair.xa * 8.314471 + (1.0 - pair.xa) * gasConstantOfWater);
            double a[2];
            for (const int k : {0, 1}) {
                const Row& row = pair.rows[k];
                double p, e, h, s, cv, cp, w, jt;
                THERM(pair.T, row.rho, x, p, e, h, s, cv, cp, w, jt);
                EXPECT_NEAR(ratio * p / 1000.0, row.p, 0.6 * lastDigitOfPressure) << pair.xa << ' ' << row.rho;
                a[k] = e - pair.T * s;
            }
            // the difference, which the zeros of energy and entropy leave alone
            EXPECT_NEAR(ratio * (a[0] - a[1]), pair.rows[0].a - pair.rows[1].a, 1.1 * lastDigitOfEnergy) << pair.xa;
        }
    }
}

struct BubblePoint {
    double T, p, rhol, rhov;
    Composition liquid, vapor;
};

// The published mixture has no derivatives in the fractions, and its phases are found all the same. Bubble point of
// half and half at 320 K: 607 kPa and 99.45 % ammonia in the vapor.
TEST_F(AmmoniaWater, PhaseEquilibriumOfThePublishedMixture) {
    for (const bool waterFirst : {false, true}) {
        ASSERT_LE(setUpPublished(waterFirst), 0) << message();
        const int a = waterFirst ? 2 : 1;
        const Composition z = ofAmmonia(0.5, waterFirst);
        BubblePoint bubble{320.0, 0.0, 0.0, 0.0, {}, {}};
        SATT(320.0, z, 1, bubble.p, bubble.rhol, bubble.rhov, bubble.liquid, bubble.vapor, ierr, herr);
        ASSERT_EQ(ierr, 0) << message();
        std::printf("bubble point at 320 K: %.4f kPa, y = %.6f\n", bubble.p, bubble.vapor[a]);
        EXPECT_NEAR(bubble.p, 607.0, 0.01 * 607.0);
        EXPECT_NEAR(bubble.vapor[a], 0.9945, 2e-4);
        // equal fugacities and pressures
        Composition fl, fv;
        FGCTY2(320.0, bubble.rhol, bubble.liquid, fl, ierr, herr);
        ASSERT_EQ(ierr, 0) << message();
        FGCTY2(320.0, bubble.rhov, bubble.vapor, fv, ierr, herr);
        for (int i = 1; i <= 2; ++i) EXPECT_NEAR(fl[i] / fv[i], 1.0, 1e-6) << i;
        double pl = 0.0, pv = 0.0;
        PRESS(320.0, bubble.rhol, bubble.liquid, pl);
        PRESS(320.0, bubble.rhov, bubble.vapor, pv);
        EXPECT_NEAR(pl, bubble.p, 1e-6 * bubble.p);
        EXPECT_NEAR(pv, bubble.p, 1e-6 * bubble.p);

        // back by the pressure, and the dew point at its temperature
        BubblePoint back{};
        SATP(bubble.p, z, 1, back.T, back.rhol, back.rhov, back.liquid, back.vapor, ierr, herr);
        ASSERT_EQ(ierr, 0) << message();
        EXPECT_NEAR(back.T, 320.0, 1e-5);
        BubblePoint dew{};
        SATT(320.0, z, 2, dew.p, dew.rhol, dew.rhov, dew.liquid, dew.vapor, ierr, herr);
        ASSERT_EQ(ierr, 0) << message();
        EXPECT_LT(dew.p, 0.1 * bubble.p);
        EXPECT_LT(dew.liquid[a], 0.1);

        // a liquid, a vapor and two phases at temperature and pressure
        const auto flash = [&](double p, double& rho, double& q, Composition& x, Composition& y) {
            double T = 320.0, Dl, Dv, e, h, s, cv, cp, w;
            TPFLSH(T, p, z, rho, Dl, Dv, x, y, q, e, h, s, cv, cp, w, ierr, herr);
        };
        double rho = 0.0, q = 0.0;
        Composition x, y;
        flash(2.0 * bubble.p, rho, q, x, y);
        EXPECT_EQ(ierr, 0) << message();
        EXPECT_LT(q, 0.0);
        double p = 0.0;
        PRESS(320.0, rho, z, p);
        EXPECT_NEAR(p, 2.0 * bubble.p, 1e-6 * p);
        EXPECT_GT(rho, bubble.rhol);
        flash(0.9 * dew.p, rho, q, x, y);
        EXPECT_EQ(ierr, 0) << message();
        EXPECT_GT(q, 1.0);
        const double between = 2.0 * dew.p;
        flash(between, rho, q, x, y);
        EXPECT_EQ(ierr, 0) << message();
        ASSERT_GT(q, 0.0);
        ASSERT_LT(q, 1.0);
        EXPECT_NEAR(x[a] + q * (y[a] - x[a]), 0.5, 1e-7);  // where the iteration of the fractions ends
        BubblePoint ofLiquid{};
        SATT(320.0, x, 1, ofLiquid.p, ofLiquid.rhol, ofLiquid.rhov, ofLiquid.liquid, ofLiquid.vapor, ierr, herr);
        ASSERT_EQ(ierr, 0) << message();
        EXPECT_NEAR(ofLiquid.p, between, 1e-6 * between);
        EXPECT_NEAR(ofLiquid.vapor[a], y[a], 1e-6);
    }
}

// The liquid is so far from ideal that plain exchanges of the fractions swing to and fro or stop short of the
// equilibrium; over the whole breadth of the mixture each line is found from temperature and from pressure, and both
// phases between them. What proves a state is the equality of its fugacities, which the differences give to about 1e-8.
class AmmoniaWaterRange : public AmmoniaWater, public testing::WithParamInterface<double> {
  protected:
    // The largest difference of the logarithms of the fugacities, of the vapor's pressure, and of the liquid's density:
    // the pressure of a cold liquid drowns in the rounding of that.
    double disequilibrium(double T, double p, double rhol, const Composition& x, double rhov, const Composition& y) {
        Composition fl, fv;
        double pl = 0.0, slope = 0.0, pv = 0.0;
        FGCTY2(T, rhol, x, fl, ierr, herr);
        FGCTY2(T, rhov, y, fv, ierr, herr);
        PRESS(T, rhol, x, pl);
        DPDD(T, rhol, x, slope);
        PRESS(T, rhov, y, pv);
        return larger({std::fabs(std::log(fl[1] / fv[1])), std::fabs(std::log(fl[2] / fv[2])),
                       std::fabs((pl - p) / (slope * rhol)), std::fabs(std::log(pv / p))});
    }
};

TEST_P(AmmoniaWaterRange, LinesAndBothPhasesAreFound) {
    constexpr double equal = 1e-6;
    ASSERT_LE(setUpPublished(false), 0) << message();
    double worstLine = 0.0, worstBetween = 0.0, worstBack = 0.0;
    const double T = GetParam();
    for (int tenth = 1; tenth <= 9; ++tenth) {
        const Composition z = ofAmmonia(0.1 * tenth, false);
        BubblePoint line[2];
        for (const int kph : {1, 2}) {
            SCOPED_TRACE("kph " + std::to_string(kph) + ", tenths of ammonia " + std::to_string(tenth));
            BubblePoint& at = line[kph - 1];
            SATT(T, z, kph, at.p, at.rhol, at.rhov, at.liquid, at.vapor, ierr, herr);
            ASSERT_EQ(ierr, 0) << message();
            EXPECT_GT(at.vapor[1], at.liquid[1]);
            worstLine = larger({worstLine, disequilibrium(T, at.p, at.rhol, at.liquid, at.rhov, at.vapor)});

            BubblePoint back{};
            SATP(at.p, z, kph, back.T, back.rhol, back.rhov, back.liquid, back.vapor, ierr, herr);
            ASSERT_EQ(ierr, 0) << message();
            worstBack = larger({worstBack, std::fabs(back.T - T)});
        }
        ASSERT_GT(line[0].p, line[1].p);
        for (const double part : {0.03, 0.2, 0.4, 0.6, 0.8, 0.97}) {
            SCOPED_TRACE("between the lines " + std::to_string(part) + ", tenths of ammonia " + std::to_string(tenth));
            const double p = line[1].p * std::pow(line[0].p / line[1].p, part);
            double given = T, D, Dl, Dv, q, e, h, s, cv, cp, w;
            Composition x, y;
            TPFLSH(given, p, z, D, Dl, Dv, x, y, q, e, h, s, cv, cp, w, ierr, herr);
            ASSERT_EQ(ierr, 0) << message();
            EXPECT_GT(q, 0.0);
            EXPECT_LT(q, 1.0);
            EXPECT_NEAR(x[1] + q * (y[1] - x[1]), z[1], 1e-9);
            worstBetween = larger({worstBetween, disequilibrium(T, p, Dl, x, Dv, y)});
        }
    }
    std::printf("%.0f K: lines %.1e, between %.1e, back by pressure %.1e K\n", T, worstLine, worstBetween, worstBack);
    EXPECT_LT(worstLine, equal);
    EXPECT_LT(worstBetween, equal);
    EXPECT_LT(worstBack, 1e-4);
}
INSTANTIATE_TEST_SUITE_P(Temperatures, AmmoniaWaterRange, testing::Values(280.0, 300.0, 320.0, 340.0, 360.0, 400.0));

}  // namespace
}  // namespace frigana::test
