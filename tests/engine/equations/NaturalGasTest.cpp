// The AGA8 detail characterisation model against printed values, and its switch.
#include <cmath>
#include <cstdio>

#include "CORE_CPP.h"
#include "EngineSetUp.h"
#include "FluidConstants.h"
#include "Larger.h"
#include "MIX_AGA8.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "ReferenceState.h"
#include "SETAGA.h"

namespace frigana {
namespace {

using test::Random;
using test::words;

int ierr;
Text255 herr;

double compressibility(double t, double rho) {
    return 1.0 + aga8Phi(0, 1, t, rho);
}

// Density at a pressure [kPa] above the critical temperature, by Newton's method from the ideal gas.
double density(double t, double p) {
    const double rt = aga8GasConstant * t;
    double rho = p / rt;
    for (int i = 0; i < 100; ++i) {
        const double slope = rt * (1.0 + 2.0 * aga8Phi(0, 1, t, rho) + aga8Phi(0, 2, t, rho));
        rho -= (rho * rt * compressibility(t, rho) - p) / slope;
    }
    return rho;
}

// A gas that holds every component of the model, in the model's order.
constexpr Aga8Fractions everyComponent{{0.77824, 0.02,    0.06,    0.08,    0.03,    0.0001, 0.0025,
                                        0.004,   0.002,   0.005,   0.0015,  0.003,   0.0005, 0.00165,
                                        0.00215, 0.00088, 0.00024, 0.00015, 0.00009, 0.007,  0.001}};

double idealHeatCapacity(double t) {
    double sum = 0.0;
    for (int i = 1; i <= aga8Components; ++i) {
        const Aga8IdealGas& gas = aga8IdealGas(i);
        double cp = gas.constant;
        for (const auto& term : gas.cosh)
            cp += term.coefficient * std::pow(term.theta / t / std::cosh(term.theta / t), 2);
        for (const auto& term : gas.sinh)
            cp += term.coefficient * std::pow(term.theta / t / std::sinh(term.theta / t), 2);
        sum += everyComponent[i] * cp;
    }
    return sum;
}

TEST(NaturalGas, EveryComponentAgainstPublishedCheckValues) {
    // Check values of the detail equation at 400 K and 50 MPa, with every digit of a double: every parameter of the
    // tables that acts on one of these components or pairs has a part in them.
    constexpr double t = 400.0, molarMass = 20.54333051;
    aga8Sums(everyComponent);
    const double rho = density(t, 50000.0);
    EXPECT_NEAR(rho / 12.80792403648801, 1.0, 5e-15);
    EXPECT_NEAR(compressibility(t, rho) / 1.173801364147326, 1.0, 5e-15);

    double mass = 0.0;
    for (int i = 1; i <= aga8Components; ++i) mass += everyComponent[i] * aga8MolarMass(i);
    EXPECT_NEAR(mass, molarMass, 1e-12);

    const double r = aga8GasConstant;
    const double a01 = aga8Phi(0, 1, t, rho), a02 = aga8Phi(0, 2, t, rho), a03 = aga8Phi(0, 3, t, rho);
    const double a11 = aga8Phi(1, 1, t, rho), a20 = aga8Phi(2, 0, t, rho);
    const double dpdd = r * t * (1.0 + 2.0 * a01 + a02), dpdt = r * rho * (1.0 + a01 - a11);
    const double d2pdd2 = r * t / rho * (2.0 * a01 + 4.0 * a02 + a03);
    const double cv = r * (idealHeatCapacity(t) - 1.0 - a20);
    const double cp = cv + t * (dpdt / rho) * (dpdt / rho) / dpdd;
    EXPECT_NEAR(dpdd / 6971.387690924090, 1.0, 1e-13);
    EXPECT_NEAR(d2pdd2 / 1118.803636639520, 1.0, 1e-13);
    EXPECT_NEAR(dpdt / 235.6641493068212, 1.0, 1e-13);
    EXPECT_NEAR(cv / 39.12076154430332, 1.0, 1e-13);
    EXPECT_NEAR(cp / 58.54617672380667, 1.0, 1e-13);
    EXPECT_NEAR(std::sqrt(1000.0 * cp / cv * dpdd / molarMass) / 712.6393684057903, 1.0, 1e-13);
}

TEST(NaturalGas, PrintedExamplesOfTheStandard) {
    // ISO 12213-2, annex C: compression factor of gas 1 at 60 and 120 bar
    struct Row {
        double celsius, at60, at120;
    };
    const Row rows[] = {{-3.15, 0.84053, 0.72133},
                        {6.85, 0.86199, 0.76025},
                        {16.85, 0.88006, 0.79317},
                        {36.85, 0.90867, 0.84515},
                        {56.85, 0.93011, 0.88383}};
    Aga8Fractions gas{};
    gas[1] = 0.965;
    gas[2] = 0.003;
    gas[3] = 0.006;
    gas[4] = 0.018;
    gas[5] = 0.0045;
    gas[11] = gas[12] = 0.001;
    gas[13] = 0.0005;
    gas[14] = 0.0003;
    gas[15] = 0.0007;
    aga8Sums(gas);
    for (const Row& row : rows) {
        const double t = row.celsius + 273.15;
        EXPECT_NEAR(compressibility(t, density(t, 6000.0)), row.at60, 6e-6);  // half of the last digit printed
        EXPECT_NEAR(compressibility(t, density(t, 12000.0)), row.at120, 6e-6);
    }
}

TEST(NaturalGas, IdealHeatCapacitiesAt25Celsius) {
    // D. R. Stull, E. F. Westrum, G. C. Sinke, The Chemical Thermodynamics of Organic Compounds (1969), in J/(mol K)
    struct Row {
        int index;
        double cp;
    };
    for (const Row& row : {Row{1, 35.7},
                           {2, 29.12},
                           {3, 37.13},
                           {4, 52.6},
                           {5, 73.5},
                           {6, 33.58},
                           {8, 28.84},
                           {9, 29.14},
                           {10, 29.37},
                           {12, 98.6},
                           {14, 120.1},
                           {20, 20.79},
                           {21, 20.79}}) {
        const Aga8IdealGas& gas = aga8IdealGas(row.index);
        double cp = gas.constant;
        for (const auto& term : gas.cosh)
            cp += term.coefficient * std::pow(term.theta / 298.15 / std::cosh(term.theta / 298.15), 2);
        for (const auto& term : gas.sinh)
            cp += term.coefficient * std::pow(term.theta / 298.15 / std::sinh(term.theta / 298.15), 2);
        EXPECT_NEAR(aga8GasConstant * cp / row.cp, 1.0, 0.006) << row.index;
    }
}

TEST(NaturalGas, Derivatives) {
    aga8Sums(everyComponent);
    Random random;
    double worst = 0.0;
    for (int n = 0; n < 800; ++n) {
        const double t = random.between(220.0, 500.0), rho = random.between(0.01, 13.0);
        // central differences of sixth order in inverse temperature and in density
        const auto slope = [](auto g, double at) {
            const double h = 2e-3 * at;
            return at *
                   (45.0 * (g(at + h) - g(at - h)) - 9.0 * (g(at + 2.0 * h) - g(at - 2.0 * h)) +
                    (g(at + 3.0 * h) - g(at - 3.0 * h))) /
                   (60.0 * h);
        };
        const auto see = [&](double value, double expected, double lower) {
            worst = test::larger(worst, std::fabs(value - expected) / (std::fabs(value) + std::fabs(lower) + 1e-3));
        };
        for (int i = 0; i <= 3; ++i) {
            for (int j = 0; j <= 3; ++j) {
                const double here = aga8Phi(i, j, t, rho);
                if (j < 3)
                    see(aga8Phi(i, j + 1, t, rho), slope([&](double d) { return aga8Phi(i, j, t, d); }, rho) - j * here,
                        here);
                if (i < 3)
                    see(aga8Phi(i + 1, j, t, rho),
                        slope([&](double inverse) { return aga8Phi(i, j, 1.0 / inverse, rho); }, 1.0 / t) - i * here,
                        here);
            }
        }
    }
    std::printf("AGA8 derivatives: %.1e\n", worst);
    EXPECT_LT(worst, 1e-7);
}

class NaturalGasSwitched : public testing::Test {
  protected:
    void TearDown() override {
        UNSETAGA();
        modelTags.LFORCESETUP = true;
    }
    Composition x{};
};

TEST_F(NaturalGasSwitched, ForthAndBack) {
    ASSERT_TRUE(test::setUp({"NITROGEN", "CO2", "PROPANE", "ETHYLENE"}));
    x[1] = 0.5;
    x[2] = 0.3;
    x[3] = 0.15;
    x[4] = 0.05;
    struct Values {
        double p, e, h, s, cv, cp, w, jt;
    };
    const auto at = [&](double t, double rho) {
        Values v;
        THERM(t, rho, x, v.p, v.e, v.h, v.s, v.cv, v.cp, v.w, v.jt);
        return v;
    };
    const Values before = at(350.0, 1.0);
    const double massBefore = fluidConstants.WMAS[1], reference = referenceState.HREF[1];
    const CppSlot ideal = cppTerms[2];
    SETAGA(ierr, herr);
    ASSERT_EQ(ierr, 0) << words(herr);
    EXPECT_EQ(modelTags.HEOS, "AGA");
    EXPECT_EQ(aga8.IFPA[1], 2);
    EXPECT_EQ(aga8.IFPA[2], 3);
    EXPECT_EQ(aga8.IFPA[3], 5);
    EXPECT_EQ(aga8.IFPA[4], 4) << "ethylene is taken for ethane";
    EXPECT_EQ(fluidConstants.WMAS[1], 28.0135);
    EXPECT_EQ(referenceState.TREF[1], 298.15);
    EXPECT_EQ(cppTerms[1].TMINCP, 100.0);
    EXPECT_EQ(cppTerms[1].TMAXCP, 1000.0);

    // the properties are those of the model's own sums
    const Values gas = at(350.0, 1.0);
    EXPECT_EQ(fluidConstants.R, aga8GasConstant);
    EXPECT_NEAR(gas.p, aga8GasConstant * 350.0 * compressibility(350.0, 1.0), 1e-9 * gas.p);
    EXPECT_NEAR(gas.p / before.p, 1.0, 0.005) << "two models of one gas";
    EXPECT_NEAR(gas.cp / before.cp, 1.0, 0.02);
    EXPECT_NEAR(gas.w / before.w, 1.0, 0.01);
    // fugacities: the sum of x ln(f/(x p)) is that of the residual Gibbs energy
    Composition f;
    FGCTY2(350.0, 1.0, x, f, ierr, herr);
    EXPECT_EQ(ierr, 0);
    const double z = gas.p / (aga8GasConstant * 350.0);
    double sum = 0.0;
    for (int i = 1; i <= 4; ++i) sum += x[i] * std::log(f[i] / (x[i] * gas.p));
    SETAG(x);
    EXPECT_NEAR(sum, aga8Phi(0, 0, 350.0, 1.0) + z - 1.0 - std::log(z), 1e-7);
    // and the mean of the chemical potentials is the Gibbs energy
    for (const double rho : {0.05, 1.0, 6.0}) {
        Composition u;
        CHEMPOT(350.0, rho, x, u, ierr, herr);
        EXPECT_EQ(ierr, 0);
        double A, G, mean = 0.0;
        AG(350.0, rho, x, A, G);
        for (int i = 1; i <= 4; ++i) mean += x[i] * u[i];
        EXPECT_NEAR(mean, G, 1e-9 * std::fabs(G)) << rho;
        FGCTY2(350.0, rho, x, f, ierr, herr);
        double p, pure, mixed;
        PRESS(350.0, rho, x, p);
        // potentials and fugacities are those of one model: u - RT ln f depends on the component alone
        for (const int i : {1, 3}) {
            mixed = u[i] - aga8GasConstant * 350.0 * std::log(f[i]);
            const Composition alone = unitComposition(i);
            Composition fAlone, uAlone;
            FGCTY2(350.0, 0.7, alone, fAlone, ierr, herr);
            CHEMPOT(350.0, 0.7, alone, uAlone, ierr, herr);
            pure = uAlone[i] - aga8GasConstant * 350.0 * std::log(fAlone[i]);
            EXPECT_NEAR(mixed, pure, 1e-4) << i << " at " << rho;
        }
    }
    // every ideal gas has its zero of enthalpy at 25 C
    double h;
    ENTHAL(298.15, 1e-9, x, h);
    EXPECT_NEAR(h, 0.0, 1e-3);
    SETAGA(ierr, herr);  // a second time changes nothing
    EXPECT_EQ(ierr, 0);

    UNSETAGA();
    EXPECT_EQ(modelTags.HEOS, "HMX");
    EXPECT_EQ(fluidConstants.WMAS[1], massBefore);
    EXPECT_EQ(referenceState.HREF[1], reference);
    EXPECT_EQ(cppTerms[2].NTERMC, ideal.NTERMC);
    EXPECT_EQ(cppTerms[2].CPC0[1], ideal.CPC0[1]);
    const Values after = at(350.0, 1.0);
    EXPECT_EQ(after.p, before.p);
    EXPECT_NEAR(after.h, before.h, 1e-9 * std::fabs(before.h));
    EXPECT_NEAR(after.cp, before.cp, 1e-12 * before.cp);
}

TEST_F(NaturalGasSwitched, AFluidThatTheModelDoesNotKnow) {
    ASSERT_TRUE(test::setUp({"R32", "R134A"}));
    SETAGA(ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_TRUE(words(herr).starts_with("[SETAGA error 1] Not all requested fluids are available in AGA8, "));
    EXPECT_EQ(modelTags.HEOS, "HMX");
}

TEST_F(NaturalGasSwitched, ZeroCompositionLeavesTheBlock) {
    ASSERT_TRUE(test::setUp({"NITROGEN", "CO2"}));
    SETAGA(ierr, herr);
    ASSERT_EQ(ierr, 0);
    x[1] = 0.4;
    x[2] = 0.6;
    SETAG(x);
    const Aga8Block block = aga8;
    SETAG(Composition{});
    EXPECT_EQ(aga8.K3, block.K3);
    EXPECT_EQ(aga8.U, block.U);
    EXPECT_EQ(aga8.XSAV[1], 0.4);
    // a composition counts by its proportions
    Composition doubled{};
    doubled[1] = 0.8;
    doubled[2] = 1.2;
    SETAG(doubled);
    EXPECT_NEAR(aga8.K3, block.K3, 1e-15);
    EXPECT_NEAR(aga8.U, block.U, 1e-12);
    EXPECT_GT(block.K3, 0.0);
}

TEST_F(NaturalGasSwitched, OrdersAndStatesThatAreNoneAreZero) {
    ASSERT_TRUE(test::setUp({"NITROGEN", "CO2"}));
    SETAGA(ierr, herr);
    ASSERT_EQ(ierr, 0);
    x[1] = 0.4;
    x[2] = 0.6;
    EXPECT_NE(PHIAGA(0, 1, 1.1, 0.5, x), 0.0);
    for (const auto& [itau, idel] : {std::pair{-1, 0}, std::pair{0, -1}, std::pair{4, 0}, std::pair{0, 4}})
        EXPECT_EQ(PHIAGA(itau, idel, 1.1, 0.5, x), 0.0) << itau << ' ' << idel;
    for (const auto& [tau, del] : {std::pair{0.0, 0.5}, std::pair{-1.0, 0.5}, std::pair{1.1, 1e-10}})
        EXPECT_EQ(PHIAGA(0, 1, tau, del, x), 0.0) << tau << ' ' << del;
    for (const auto& [t, density] : {std::pair{0.0, 1.0}, std::pair{300.0, 0.0}, std::pair{300.0, -1.0}})
        EXPECT_EQ(aga8Phi(0, 1, t, density), 0.0) << t << ' ' << density;
}

TEST(NaturalGas, NumbersOfTheFluids) {
    EXPECT_EQ(aga8Index("74-82-8"), 1);
    EXPECT_EQ(aga8Index("1333-74-0"), 8);
    EXPECT_EQ(aga8Index("1333-74-0p"), 8);
    EXPECT_EQ(aga8Index("7440-37-1"), 21);
    EXPECT_EQ(aga8Index("463-82-1"), 13);
    EXPECT_EQ(aga8Index("108-88-3"), 16);
    EXPECT_EQ(aga8Index("106-98-9"), 12);
    EXPECT_EQ(aga8Index("811-97-2"), 0);
    EXPECT_EQ(aga8Index(""), 0);
}

}  // namespace
}  // namespace frigana
