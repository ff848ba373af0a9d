// Derivatives of the models against finite differences of the next lower order, over random states, and their values
// against closed forms.
#include <cmath>
#include <cstdio>
#include <tuple>
#include <utility>

#include "CORE_BWR.h"
#include "CORE_ECS.h"
#include "CORE_ECS_PHI.h"
#include "CORE_FEQ.h"
#include "CORE_PR.h"
#include "CORE_QUI.h"
#include "DISPATCH.h"
#include "EngineSetUp.h"
#include "FluidConstants.h"
#include "FluidFiles.h"
#include "Larger.h"
#include "ModelTags.h"
#include "PHIDERV.h"
#include "PROP_SUB.h"
#include "TemporaryFolder.h"
#include "TextFile.h"
#include "TreeFolders.h"
#include "UTILITY.h"

namespace frigana {
namespace {

const std::string testFluids = std::string(test::testsFolder) + "/engine/equations/fluids";

using test::Random;
using test::words;

int ierr;
Text255 herr;

// x dg/dx by central differences of sixth order. The step is small beside the width of the sharpest bells of an
// equation, 0.02 in tau.
template <class Function>
double scaledSlope(Function g, double x) {
    const double h = 5e-4 * x;
    const double d =
        (45.0 * (g(x + h) - g(x - h)) - 9.0 * (g(x + 2.0 * h) - g(x - 2.0 * h)) + (g(x + 3.0 * h) - g(x - 3.0 * h))) /
        (60.0 * h);
    return x * d;
}

struct Order {
    int itau, idel;
};

// Largest deviation of an order from the finite difference of a lower one, relative to the size of the terms. The
// function is called as phi(itau, idel, tau, del) and gives the derivative times the powers of tau and del.
template <class Phi>
double worstDeviation(Phi phi, Order order, double tau, double del) {
    const int i = order.itau, j = order.idel;
    double expected, lower;
    if (j > 0) {
        lower = phi(i, j - 1, tau, del);
        expected = scaledSlope([&](double d) { return phi(i, j - 1, tau, d); }, del) - (j - 1) * lower;
    } else {
        lower = phi(i - 1, j, tau, del);
        expected = scaledSlope([&](double t) { return phi(i - 1, j, t, del); }, tau) - (i - 1) * lower;
    }
    const double value = phi(i, j, tau, del);
    return std::fabs(value - expected) / (std::fabs(value) + std::fabs(lower) + 1e-3);
}

template <class Phi>
void expectDerivatives(const char* model, Phi phi, std::initializer_list<Order> orders, double tauLow, double tauHigh,
                       double delHigh, int states) {
    Random random;
    for (const Order order : orders) {
        double worst = 0.0;
        for (int n = 0; n < states; ++n)
            worst = test::larger(
                worst, worstDeviation(phi, order, random.between(tauLow, tauHigh), random.between(0.01, delHigh)));
        std::printf("%s (%d,%d): %.1e over %d states\n", model, order.itau, order.idel, worst, states);
        EXPECT_LT(worst, 1e-7) << model << " (" << order.itau << "," << order.idel << ")";
    }
}

bool load(const std::string& path, int lines, int icomp, void (*reader)(int, int, const Text12&, int&, Text255&)) {
    if (!openForReading(12, path)) return false;
    for (int i = 0; i < lines; ++i) skipLine(12);
    reader(12, icomp, "", ierr, herr);
    closeUnit(12);
    return ierr == 0;
}

// ---- Peng-Robinson ----

// Two fluids like propane and carbon dioxide, and one like decane.
class PengRobinson : public testing::Test {
  protected:
    void SetUp() override {
        modelTags = ModelTags();
        fluidConstants = FluidConstants();
        modelTags.NC = 3;
        modelTags.HEOS = "PR";
        give(1, 369.8, 4250.0, 5.0, 0.152, 0.001);
        give(2, 304.1, 7377.0, 10.6, 0.225, -0.002);
        give(3, 617.7, 2110.0, 1.6, 0.49, 0.01);
        FPRKIJ[1][2][1] = FPRKIJ[2][1][1] = 0.12;
        FPRKIJ[2][3][1] = FPRKIJ[3][2][1] = -0.05;
    }
    void TearDown() override {
        for (auto& row : FPRKIJ)
            for (auto& pair : row) pair.fill(0.0);
        modelTags = ModelTags();
        fluidConstants = FluidConstants();
    }
    static void give(int i, double tc, double pc, double dc, double omega, double shift) {
        prTerms[i] = {};
        prTerms[i].TCPR = tc;
        prTerms[i].PCPR = pc;
        prTerms[i].RHOCPR = dc;
        prTerms[i].ACNPR = omega;
        prTerms[i].PRCOEF[1] = shift;
        fluidConstants.TZ[i] = 1.01 * tc;  // reducing values of another equation
        fluidConstants.RHOZ[i] = 0.98 * dc;
        fluidConstants.REOS[i] = 8.314472;
        modelTags.HMXEOS[i] = "PR";
    }
    static Composition mixture(double x1, double x2) {
        Composition x{};
        x[1] = x1;
        x[2] = x2;
        x[3] = 1.0 - x1 - x2;
        return x;
    }
    // Pressure in the form of its authors, with the volume shifted.
    static double pressure(double t, double rho, const Composition& x) {
        const double r = fluidConstants.R;
        double a = 0.0, b = 0.0, c = 0.0, root[4];
        for (int i = 1; i <= 3; ++i) {
            const PrSlot& s = prTerms[i];
            const double kappa = 0.37464 + 1.54226 * s.ACNPR - 0.26992 * s.ACNPR * s.ACNPR;
            const double alpha = 1.0 + kappa * (1.0 - std::sqrt(t / s.TCPR));
            root[i] = std::sqrt(0.45724 * r * r * s.TCPR * s.TCPR / s.PCPR * alpha * alpha);
            b += x[i] * 0.0778 * r * s.TCPR / s.PCPR;
            c += x[i] * s.PRCOEF[1];
        }
        for (int i = 1; i <= 3; ++i)
            for (int j = 1; j <= 3; ++j) a += x[i] * x[j] * root[i] * root[j] * (1.0 - FPRKIJ[i][j][1]);
        const double v = 1.0 / rho + c;
        return r * t / (v - b) - a / (v * v + 2.0 * b * v - b * b);
    }
};

TEST_F(PengRobinson, SlotAndUnitCompositionAgree) {
    Random random;
    for (int n = 0; n < 1000; ++n) {
        const double tau = random.between(0.4, 2.0), del = random.between(1e-4, 2.2);
        for (int icomp = 1; icomp <= 3; ++icomp)
            for (const Order o : {Order{0, 0}, {0, 1}, {0, 2}, {0, 3}, {1, 0}, {2, 0}, {3, 0}, {1, 1}, {2, 1}, {1, 2}})
                ASSERT_EQ(PHIPR(icomp, o.itau, o.idel, tau, del),
                          PHIPRX(o.itau, o.idel, tau, del, unitComposition(icomp)));
    }
}

TEST_F(PengRobinson, Derivatives) {
    for (const Composition& x : {unitComposition(1), mixture(0.3, 0.5)})
        expectDerivatives(
            "PR", [&](int i, int j, double tau, double del) { return PHIPRX(i, j, tau, del, x); },
            {{0, 1}, {0, 2}, {0, 3}, {1, 0}, {2, 0}, {3, 0}, {1, 1}}, 0.4, 2.0, 1.8, 4000);
}

TEST_F(PengRobinson, MixedOrdersBeyondTheSecondAreZero) {
    const Composition x = mixture(0.3, 0.5);
    for (const Order o : {Order{2, 1}, {1, 2}, {2, 2}}) EXPECT_EQ(PHIPRX(o.itau, o.idel, 1.1, 0.7, x), 0.0);
    EXPECT_EQ(PHIPRX(0, 0, 1.1, 1e-10, x), 0.0);
    EXPECT_EQ(PHIPRX(0, 0, 0.0, 1.0, x), 0.0);
}

TEST_F(PengRobinson, PressureInTheFormOfItsAuthors) {
    Random random;
    for (int n = 0; n < 2000; ++n) {
        const Composition x = mixture(random.between(0.1, 0.4), random.between(0.1, 0.4));
        double tr, dr;
        REDPR(x, tr, dr);
        const double t = random.between(250.0, 900.0), rho = random.between(1e-3, 1.8) * dr;
        const double z = 1.0 + PHIPRX(0, 1, tr / t, rho / dr, x);
        const double ideal = fluidConstants.R * t * rho;
        ASSERT_NEAR(z * ideal, pressure(t, rho, x), 1e-11 * (ideal + std::fabs(pressure(t, rho, x))));
    }
}

TEST_F(PengRobinson, DensitiesSolveTheEquation) {
    Random random;
    for (int n = 0; n < 2000; ++n) {
        const Composition x = mixture(random.between(0.1, 0.4), random.between(0.1, 0.4));
        const double t = random.between(250.0, 900.0), p = std::exp(random.between(std::log(1.0), std::log(5e4)));
        double rho1, rho2;
        TPRHOPR(t, p, x, rho1, rho2);
        ASSERT_GE(rho1, rho2);
        ASSERT_NEAR(pressure(t, rho2, x), p, 1e-9 * (p + fluidConstants.R * t * rho2));
        ASSERT_NEAR(pressure(t, rho1, x), p, 1e-9 * (p + fluidConstants.R * t * rho1));
    }
}

// Beyond the temperature at which a component's attraction has fallen to zero, its root is that of the square.
TEST_F(PengRobinson, PressureBeyondTheZeroOfTheAttraction) {
    const Composition x = mixture(0.3, 0.3);
    double tr, dr;
    REDPR(x, tr, dr);
    for (const double t : {1500.0, 2300.0, 2500.0, 4000.0})
        for (const double rho : {0.1, 2.0, 6.0}) {
            const double p = fluidConstants.R * t * rho * (1.0 + PHIPRX(0, 1, tr / t, rho / dr, x));
            EXPECT_NEAR(p, pressure(t, rho, x), 1e-10 * p) << t << ' ' << rho;
        }
}

TEST_F(PengRobinson, CriticalPointAndReducingValues) {
    const Composition x = mixture(0.5, 0.3);
    double tc, pc, dc;
    CRTPR(2, tc, pc, dc);
    EXPECT_TRUE(tc == 304.1 && pc == 7377.0 && dc == 10.6);
    CRTPRX(unitComposition(3), tc, pc, dc);
    EXPECT_TRUE(tc == 617.7 && pc == 2110.0 && dc == 1.6);
    CRTPRX(x, tc, pc, dc);
    EXPECT_NEAR(tc, 0.5 * 369.8 + 0.3 * 304.1 + 0.2 * 617.7, 1e-10);
    EXPECT_NEAR(pc, 0.5 * 4250.0 + 0.3 * 7377.0 + 0.2 * 2110.0, 1e-9);
    EXPECT_NEAR(1.0 / dc, 0.5 / 5.0 + 0.3 / 10.6 + 0.2 / 1.6, 1e-13) << "volumes add up";
    double tred, dred;
    REDPR(unitComposition(2), tred, dred);
    EXPECT_TRUE(tred == fluidConstants.TZ[2] && dred == fluidConstants.RHOZ[2]);
    // fluids without a density have no volume to add
    for (int i = 1; i <= 3; ++i) prTerms[i].RHOCPR = fluidConstants.RHOZ[i] = 0.0;
    CRTPRX(x, tc, pc, dc);
    EXPECT_EQ(dc, 0.0);
    REDPR(x, tred, dred);
    EXPECT_EQ(dred, 0.0);
    EXPECT_EQ(PHIPRX(0, 1, 1.0, 0.5, x), 0.0);
}

TEST_F(PengRobinson, NothingIsLeftOfWhatIsNotThere) {
    const Composition x = mixture(0.5, 0.3);
    for (const Order o : {Order{-1, 0}, {0, -1}, {4, 0}, {0, 4}}) {
        EXPECT_EQ(PHIPR(1, o.itau, o.idel, 1.0, 0.5), 0.0);
        EXPECT_EQ(PHIPRX(o.itau, o.idel, 1.0, 0.5, x), 0.0);
    }
    for (const auto& [tau, del] : {std::pair{0.0, 0.5}, std::pair{-1.0, 0.5}, std::pair{1.0, 1e-10}}) {
        EXPECT_EQ(PHIPR(1, 0, 1, tau, del), 0.0);
        EXPECT_EQ(PHIPRX(0, 1, tau, del, x), 0.0);
    }
    double rho1 = 7.0, rho2 = 7.0;
    for (const auto& [t, p] : {std::pair{0.0, 100.0}, std::pair{300.0, 0.0}}) {
        rho1 = rho2 = 7.0;
        TPRHOPR(t, p, x, rho1, rho2);
        EXPECT_TRUE(rho1 == 0.0 && rho2 == 0.0) << t << ' ' << p;
    }
    // a component that is not in the mixture does not count
    const Composition two = mixture(0.4, 0.6);
    double tr, dr;
    REDPR(two, tr, dr);
    const double whole = PHIPRX(0, 1, tr / 300.0, 3.0 / dr, two);
    EXPECT_NEAR(fluidConstants.R * 300.0 * 3.0 * (1.0 + whole), pressure(300.0, 3.0, two), 1e-8);
    // and one that has no constants leaves the mixture without a model, but not the others
    for (double PrSlot::*constant : {&PrSlot::PCPR, &PrSlot::TCPR}) {
        const PrSlot kept = prTerms[3];
        prTerms[3].*constant = 0.0;
        EXPECT_EQ(PHIPRX(0, 1, 1.0, 0.5, x), 0.0);
        EXPECT_EQ(PHIPR(3, 0, 1, 1.0, 0.5), 0.0);
        EXPECT_NE(PHIPR(1, 0, 1, 1.0, 0.5), 0.0);
        TPRHOPR(300.0, 100.0, x, rho1, rho2);
        EXPECT_TRUE(rho1 == 0.0 && rho2 == 0.0);
        TPRHOPR(300.0, 100.0, unitComposition(1), rho1, rho2);
        EXPECT_GT(rho1, rho2);
        Composition dalpha, dnalpha;
        PHIDERV(1, 300.0, 1.0, x, dalpha, dnalpha, ierr, herr);
        EXPECT_EQ(ierr, 1);
        EXPECT_EQ(words(herr),
                  "[PHIDERV error 1] composition derivatives of the Peng-Robinson model are not available");
        Composition f, u;
        FUGCOF(300.0, 1.0, x, f, ierr, herr);
        EXPECT_EQ(ierr, 1);
        EXPECT_EQ(f[1], 0.0);
        CHEMPOT(300.0, 1.0, x, u, ierr, herr);
        EXPECT_EQ(ierr, 1);
        EXPECT_EQ(u[1], 0.0);
        prTerms[3].PRCOEF[1] = 7.0;
        if (constant == &PrSlot::PCPR) {
            SETPRCO(3);
            EXPECT_EQ(prTerms[3].PRCOEF[1], 7.0) << "no shift without a critical pressure";
        }
        prTerms[3] = kept;
    }
}

TEST_F(PengRobinson, CompositionDerivatives) {
    Random random;
    double worst = 0.0;
    for (int n = 0; n < 2000; ++n) {
        const Composition x = mixture(random.between(0.1, 0.4), random.between(0.1, 0.4));
        double tr, dr;
        REDPR(x, tr, dr);
        const double t = random.between(250.0, 900.0), rho = random.between(1e-3, 1.8) * dr;
        ASSERT_EQ(PHIPRX(fillCompositionDerivatives, 0, tr / t, rho / dr, x), -1.0);
        const Composition derivatives = prCompositionDerivatives;
        for (int i = 1; i <= 3; ++i) {
            // n phi over the moles of component i, the volume and the other moles unchanged
            const auto energy = [&](double moles) {
                const double total = 1.0 - x[i] + moles;
                Composition z = x;
                z[i] = moles;
                for (double& fraction : z) fraction /= total;
                double tz, dz;
                REDPR(z, tz, dz);
                return total * PHIPRX(0, 0, tz / t, rho * total / dz, z);
            };
            const double expected = scaledSlope(energy, x[i]) / x[i];
            worst = test::larger(worst, std::fabs(derivatives[i] - expected) / (std::fabs(expected) + 1e-3));
        }
    }
    std::printf("PR composition derivatives: %.1e\n", worst);
    EXPECT_LT(worst, 1e-7);
}

TEST_F(PengRobinson, ConstantsCopiedWithoutABlock) {
    FluidConstants& f = fluidConstants;
    f.WMAS[2] = 44.0;
    f.ACCEN[2] = 0.3;
    f.TCRIT[2] = 310.0;
    f.PCRIT[2] = 7000.0;
    f.DCRIT[2] = 10.0;
    f.REOS[2] = 8.3145;
    prTerms[2].PRCOEF.fill(0.0);
    prTerms[2].IPRFLAG = 0;
    SETPR(999, 2, "", ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(prTerms[2].WMFPR, 44.0);
    EXPECT_EQ(prTerms[2].ACNPR, 0.3);
    EXPECT_EQ(prTerms[2].TCPR, 310.0);
    EXPECT_EQ(prTerms[2].PCPR, 7000.0);
    EXPECT_EQ(prTerms[2].RHOCPR, 10.0);
    EXPECT_EQ(prTerms[2].RPRQ, 8.3145);
    SETPRCO(2);
    const double w = 0.3;
    EXPECT_NEAR(prTerms[2].PRCOEF[1],
                f.R * 310.0 / 7000.0 *
                    (-0.014471 + 0.067498 * w - 0.084852 * w * w + 0.067298 * w * w * w - 0.017366 * w * w * w * w),
                1e-15);
    prTerms[2].IPRFLAG = 1;
    prTerms[2].PRCOEF[1] = 0.5;
    SETPRCO(2);
    EXPECT_EQ(prTerms[2].PRCOEF[1], 0.5) << "a shift of the file stays";
}

TEST_F(PengRobinson, EstimatedParameterOfAPair) {
    fluidFiles.FAMILY[1] = fluidFiles.FAMILY[3] = "n-alkane";
    fluidFiles.FAMILY[2] = "inorganic";
    fluidConstants.DCRIT[1] = 5.0;
    fluidConstants.DCRIT[3] = 1.6;
    FPRKIJ[1][3].fill(0.7);
    ESTPR(1, 3);
    const double ratio = 2.0 * std::pow(5.0 * 1.6, -1.0 / 6.0) / (std::cbrt(1.0 / 5.0) + std::cbrt(1.0 / 1.6));
    EXPECT_NEAR(FPRKIJ[1][3][1], 1.0 - ratio * ratio * ratio, 1e-15);
    EXPECT_EQ(FPRKIJ[3][1][1], FPRKIJ[1][3][1]);
    EXPECT_EQ(FPRKIJ[1][3][2], 0.0);
    ESTPR(1, 2);
    for (const double value : FPRKIJ[1][2]) EXPECT_EQ(value, 0.0);
    for (const auto& [i, j] : {std::pair{2, 1}, std::pair{1, 1}}) {
        FPRKIJ[i][j].fill(0.7);
        ESTPR(i, j);
        for (const double value : FPRKIJ[i][j]) EXPECT_EQ(value, 0.0) << i << ' ' << j;
    }
    for (const int unknown : {1, 3}) {
        const double density = std::exchange(fluidConstants.DCRIT[unknown], 0.0);
        ESTPR(1, 3);
        EXPECT_EQ(FPRKIJ[1][3][1], 0.0) << "no size without a critical density";
        fluidConstants.DCRIT[unknown] = density;
    }
}

struct ReaderCase {
    const char* name;
    const char* text;
    bool good;
};

TEST_F(PengRobinson, ReaderAcceptsAndRefuses) {
    const ReaderCase cases[] = {
        {"with a shift", "100\n500\n60000\n20\nCPP\n44.1\n0.15\n369.8\n4250\n5\n8.314472\n1\n0.002\n", true},
        {"without", "100\n500\n60000\n20\nCPP\n44.1\n0.15\n369.8\n4250\n5\n8.314472\n0\n", true},
        {"cut off", "100\n500\n60000\n20\nCPP\n44.1\n0.15\n369.8\n", false},
        {"text", "100\n500\n60000\n20\nCPP\n44.1\nabc\n369.8\n4250\n5\n8.314472\n0\n", false},
        {"too many coefficients", "100\n500\n60000\n20\nCPP\n44.1\n0.15\n369.8\n4250\n5\n8.314472\n21\n", false},
        {"negative count", "100\n500\n60000\n20\nCPP\n44.1\n0.15\n369.8\n4250\n5\n8.314472\n-1\n", false},
    };
    const test::TemporaryFolder folder;
    for (const ReaderCase& c : cases) {
        test::writeFile(folder.path("block"), c.text);
        EXPECT_EQ(load(folder.path("block"), 0, 1, SETPR), c.good) << c.name << ": " << words(herr);
    }
    // the negative unit reads for this model alone
    test::writeFile(folder.path("block"), cases[0].text);
    fluidConstants.TCRIT[1] = 1.0;
    ASSERT_TRUE(openForReading(12, folder.path("block")));
    SETPR(-12, 1, "", ierr, herr);
    closeUnit(12);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(fluidConstants.TCRIT[1], 1.0);
    EXPECT_EQ(prTerms[1].IPRFLAG, 1);
    EXPECT_EQ(prTerms[1].PRCOEF[1], 0.002);
    ASSERT_TRUE(load(folder.path("block"), 0, 1, SETPR));
    EXPECT_EQ(fluidConstants.TCRIT[1], 369.8);
    EXPECT_EQ(fluidConstants.TZ[1], 369.8);
    EXPECT_EQ(fluidConstants.DEOS[1], 20.0);
    EXPECT_EQ(modelTags.HMODCP[1], "CPP");
    SETPR(0, 1, "", ierr, herr);
    EXPECT_EQ(ierr, 1);
}

// ---- what all have in common ----

// Orders that no model has, and states that are none, give nothing.
TEST(ModelsOfOneFluid, OrdersBeyondTheThirdAndStatesThatAreNoneAreZero) {
    struct Model {
        const char *fluid, *tag;
        double (*phi)(int, int, int, double, double);
    };
    for (const Model& model :
         {Model{"R123", "BWR", PHIBWR}, Model{"QUITEST", "", PHIQUI}, Model{"R134A", "", PHIFEQ}}) {
        ASSERT_TRUE(test::setUp({model.fluid}, model.tag, model.phi == PHIQUI ? testFluids : test::dataFolder));
        EXPECT_NE(model.phi(1, 0, 1, 1.1, 0.5), 0.0) << model.fluid;
        for (const Order o : {Order{-1, 0}, {0, -1}, {4, 0}, {0, 4}, {-1, 4}})
            EXPECT_EQ(model.phi(1, o.itau, o.idel, 1.1, 0.5), 0.0) << model.fluid << ' ' << o.itau << ' ' << o.idel;
        for (const auto& [tau, del] : {std::pair{0.0, 0.5}, std::pair{1.1, 0.0}, std::pair{1.1, 1e-11}})
            EXPECT_EQ(model.phi(1, 0, 1, tau, del), 0.0) << model.fluid << ' ' << tau << ' ' << del;
    }
}

// The reducing values of a component are those of its equation.
TEST(ModelsOfOneFluid, ReducingValuesAreThoseOfTheEquation) {
    double tz = 0.0, rhoz = 0.0, tc = 0.0, pc = 0.0, dc = 0.0;
    ASSERT_TRUE(test::setUp({"QUITEST"}, "", testFluids));
    REDK(1, tz, rhoz);
    EXPECT_TRUE(tz == 350.0 && rhoz == 5.0) << "of its file";
    CRTQUI(1, tc, pc, dc);
    EXPECT_TRUE(tc == 350.0 && pc == 4378.2551318925625 && dc == 5.0);
    ASSERT_TRUE(test::setUp({"R123"}, "BWR"));
    REDK(1, tz, rhoz);
    EXPECT_NEAR(tz, fluidConstants.TCRIT[1], 1e-9);
    EXPECT_NEAR(rhoz, fluidConstants.DCRIT[1], 1e-9);
    modelTags.HMXEOS[1] = "ECS";
    REDK(1, tz, rhoz);
    EXPECT_TRUE(tz == fluidConstants.TCRIT[1] && rhoz == fluidConstants.DCRIT[1]);
    CRTECS(1, tc, pc, dc);
    EXPECT_TRUE(tc == fluidConstants.TCRIT[1] && pc == fluidConstants.PCRIT[1] && dc == fluidConstants.DCRIT[1]);
    modelTags.HMXEOS[1] = "PR";
    fluidConstants.TZ[1] = 400.0;
    fluidConstants.RHOZ[1] = 4.0;
    REDK(1, tz, rhoz);
    EXPECT_TRUE(tz == 400.0 && rhoz == 4.0) << "those of the fluid's own equation stay";
    modelTags.HMXEOS[1] = "XYZ";
    REDK(1, tz, rhoz);
    EXPECT_TRUE(tz == 9.99e99 && rhoz == 9.99e99);
    modelTags.LFORCESETUP = true;
}

// ---- BWR ----

class Benedict : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override { ASSERT_TRUE(test::setUp({GetParam()}, "BWR")); }
};

TEST_P(Benedict, Derivatives) {
    ASSERT_EQ(modelTags.HMXEOS[1], "BWR");
    expectDerivatives(
        GetParam(), [](int i, int j, double tau, double del) { return PHIBWR(1, i, j, tau, del); },
        {{0, 1}, {0, 2}, {0, 3}, {1, 0}, {2, 0}, {3, 0}, {1, 1}, {2, 1}, {1, 2}, {2, 2}}, 0.8, 2.3, 3.0, 2000);
}

TEST_P(Benedict, DirectFunctions) {
    Random random;
    double worst = 0.0;
    const auto see = [&](double value, double expected, double scale) {
        worst = test::larger(worst, std::fabs(value - expected) / (std::fabs(value) + scale));
    };
    for (int n = 0; n < 5000; ++n) {
        const double t = random.between(200.0, 500.0), rho = random.between(0.01, 12.0);
        const double rt = fluidConstants.R * t;
        see(DPDBWR(1, t, rho), scaledSlope([&](double d) { return PBWR(1, t, d); }, rho) / rho, rt);
        see(D2PBWR(1, t, rho), scaledSlope([&](double d) { return DPDBWR(1, t, d); }, rho) / rho, rt / rho);
        see(DPTBWR(1, t, rho), scaledSlope([&](double v) { return PBWR(1, v, rho); }, t) / t, rt * rho / t);
        see(DABWR(1, t, rho), scaledSlope([&](double v) { return ABWR(1, v, rho); }, t) / t, 8.3);
        see(D2ABWR(1, t, rho), scaledSlope([&](double v) { return DABWR(1, v, rho); }, t) / t, 8.3 / t);
        // p = rho R T + rho^2 dA/drho
        see(PBWR(1, t, rho), rho * (rt + scaledSlope([&](double d) { return ABWR(1, t, d); }, rho)), rho * rt);
    }
    std::printf("%s direct functions: %.1e\n", GetParam(), worst);
    EXPECT_LT(worst, 1e-7);
}

TEST_P(Benedict, HelmholtzFromTheDirectFunctions) {
    Random random;
    for (int n = 0; n < 5000; ++n) {
        const double t = random.between(180.0, 500.0), rho = random.between(1e-4, 12.0);
        const double tau = fluidConstants.TZ[1] / t, del = rho / fluidConstants.RHOZ[1], r = fluidConstants.REOS[1];
        const double p = PBWR(1, t, rho), a = ABWR(1, t, rho);
        const double scale = 1e-12 * (1.0 + 50.0 * del);
        ASSERT_NEAR(PHIBWR(1, 0, 0, tau, del), a / (r * t), scale);
        ASSERT_NEAR(PHIBWR(1, 0, 1, tau, del), p / (r * t * rho) - 1.0, 10 * scale);
        ASSERT_NEAR(PHIBWR(1, 1, 1, tau, del), (p / t - DPTBWR(1, t, rho)) / (r * rho), 10 * scale);
        ASSERT_NEAR(PHIBWR(1, 1, 0, tau, del), (a / t - DABWR(1, t, rho)) / r, scale);
        ASSERT_NEAR(PHIBWR(1, 2, 0, tau, del), D2ABWR(1, t, rho) * t / r, scale);
        ASSERT_NEAR(PHIBWR(1, 0, 2, tau, del), DPDBWR(1, t, rho) / (r * t) - 2.0 * p / (r * t * rho) + 1.0, 50 * scale);
    }
}

TEST_P(Benedict, NoTemperatureGivesZero) {
    for (const double t : {0.0, -1.0, -300.0}) {
        for (const auto function : {PBWR, ABWR, DABWR, D2ABWR, DPDBWR, D2PBWR, DPTBWR})
            EXPECT_EQ(function(1, t, 5.0), 0.0);
    }
    EXPECT_EQ(PHIBWR(1, 0, 1, 1.0, 1e-10), 0.0);
    EXPECT_EQ(PHIBWR(1, 0, 1, 0.0, 1.0), 0.0);
    EXPECT_NEAR(D2PBWR(1, 300.0, 0.0), D2PBWR(1, 300.0, 1e-7), 1e-3);
}

TEST_P(Benedict, PropertiesGoToTheDirectFunctions) {
    ASSERT_EQ(modelTags.HEOS, "BWR");
    const Composition x = unitComposition(1);
    modelTags.HMXEOS[1] = "XYZ";  // the routing by component would find no model
    ASSERT_EQ(PHIK(1, 0, 1, 1.0, 1.0), -9.99e99);
    double p, e, h, s, cv, cp, w, jt;
    THERM(330.0, 0.1, x, p, e, h, s, cv, cp, w, jt);
    EXPECT_EQ(p, PBWR(1, 330.0, 0.1));
    EXPECT_GT(w, 100.0);
    modelTags.HMXEOS[1] = "BWR";
}

INSTANTIATE_TEST_SUITE_P(Fluids, Benedict, testing::Values("R123", "R152A"),
                         [](const auto& fluid) { return std::string(fluid.param); });

constexpr const char* benedictHead =
    "166\n600\n76000\n12\nCPP\n152.9\n166\n0.004\n11.6\n301\n0.28\n456.831 3661.8 3.596417\n";
constexpr const char* benedictTail =
    "3.6\n0.0831451\n32 1\n1 2 3\n4 5 6\n7 8 9\n10 11 12\n13 14 15\n16 17 18\n19 20 21\n22 23 24\n25 26 27\n28 29 30\n"
    "31 32\n";

TEST(BenedictReader, AcceptsAndRefuses) {
    const test::TemporaryFolder folder;
    const std::string good = std::string(benedictHead) + "456.831 3.596417\n" + benedictTail;
    test::writeFile(folder.path("block"), good);
    modelTags.NC = 2;
    ASSERT_TRUE(load(folder.path("block"), 0, 2, SETBWR)) << words(herr);
    for (int k = 1; k <= 32; ++k) EXPECT_EQ(bwrTerms[2].BBWR[k], k);
    EXPECT_NEAR(fluidConstants.REOS[2], 8.31451, 1e-12);
    EXPECT_EQ(fluidConstants.PCRIT[2], 3661.8);
    EXPECT_NEAR(bwrTerms[2].PCBWR, 36.618, 1e-12);
    double tc, pc, dc;
    CRTBWR(2, tc, pc, dc);
    EXPECT_EQ(tc, 456.831);
    EXPECT_NEAR(pc, 3661.8, 1e-9);
    EXPECT_EQ(dc, 3.596417);

    for (std::size_t cut = 0; cut < good.size(); cut += 17) {
        test::writeFile(folder.path("block"), good.substr(0, cut));
        EXPECT_FALSE(load(folder.path("block"), 0, 2, SETBWR)) << cut;
        EXPECT_EQ(ierr, 1);
    }
    SETBWR(0, 2, "", ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_EQ(words(herr), "[SETBWR error] Fluid input to SETBWR not found");
}

TEST(BenedictReader, WarnsOfReducingValuesThatAreNotCritical) {
    const test::TemporaryFolder folder;
    const struct {
        const char* reducing;
        const char* text;
    } rows[] = {{"456.83095 3.59648", ""},
                {"456.9 3.596417",
                 "[SETUP warning 104] error in specification of BWR model:  reducing temperature not equal to critical "
                 "temperature; T_red =    456.90000 K; T_crit =    456.83100"},
                {"456.831 3.6",
                 "[SETUP warning 104] error in specification of BWR model:  reducing density not equal to critical "
                 "density; rho_red =      3.60000 mol/L; rho_crit =      3.59642"}};
    for (const auto& row : rows) {
        test::writeFile(folder.path("block"), std::string(benedictHead) + row.reducing + "\n" + benedictTail);
        load(folder.path("block"), 0, 2, SETBWR);
        EXPECT_EQ(ierr, *row.text == '\0' ? 0 : -104) << row.reducing;
        EXPECT_EQ(words(herr), row.text);
    }
}

// ---- QUI ----

class Quintic : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(test::setUp({"QUITEST"}, "", testFluids)); }
};

TEST_F(Quintic, Derivatives) {
    ASSERT_EQ(modelTags.HMXEOS[1], "QUI");
    expectDerivatives(
        "QUI", [](int i, int j, double tau, double del) { return PHIQUI(1, i, j, tau, del); },
        {{0, 1}, {0, 2}, {0, 3}, {1, 0}, {2, 0}, {1, 1}, {2, 1}, {1, 2}, {2, 2}}, 0.5, 2.0, 3.2, 2000);
}

TEST_F(Quintic, ValueInClosedForm) {
    const QuiSlot& q = quiTerms[1];
    Random random;
    for (int n = 0; n < 2000; ++n) {
        const double tau = random.between(0.5, 2.0), del = random.between(1e-3, 3.5);
        double sums[5] = {};
        int k = 1;
        const int counts[] = {q.NETAQ, q.NEPSQ, q.NBBQ, q.NGAMQ, q.NBETQ};
        for (int s = 0; s < 5; ++s)
            for (int j = 0; j < counts[s]; ++j, ++k) sums[s] += q.AQUI[k] * std::pow(tau, q.TIQUI[k]);
        const auto [eta, eps, b, gam, bet] = sums;
        const double expected =
            eta * (del - std::log(1.0 - b * del) / b) - eps * std::log((1.0 + gam * del) / (1.0 - bet * del));
        ASSERT_NEAR(PHIQUI(1, 0, 0, tau, del), expected, 1e-13 * (1.0 + 10.0 * del));
    }
}

// Without a co-volume the repulsion is linear in density; where the argument of a logarithm is not positive there is no
// value.
TEST_F(Quintic, EdgesOfItsForm) {
    QuiSlot& q = quiTerms[1];
    const int eps = q.NETAQ + 1, b = q.NETAQ + q.NEPSQ + 1, gamma = b + q.NBBQ, beta = gamma + q.NGAMQ;
    const QuiSlot kept = q;
    const auto sum = [&](int first, int count, double tau) {
        double total = 0.0;
        for (int k = first; k < first + count; ++k) total += q.AQUI[k] * std::pow(tau, q.TIQUI[k]);
        return total;
    };
    const auto changed = [&](int first, int count, double value) {
        q = kept;
        for (int k = first; k < first + count; ++k) q.AQUI[k] = 0.0;
        q.AQUI[first] = value;
        q.TAUSVQ = q.DELSVQ = 0.0;
        q.HDRVQ = false;
    };
    const double tau = 1.1, del = 0.7;
    changed(b, q.NBBQ, 0.0);
    const double expected =
        2.0 * sum(1, q.NETAQ, tau) * del - sum(eps, q.NEPSQ, tau) * std::log((1.0 + sum(gamma, q.NGAMQ, tau) * del) /
                                                                             (1.0 - sum(beta, q.NBETQ, tau) * del));
    EXPECT_NEAR(PHIQUI(1, 0, 0, tau, del), expected, 1e-13);
    for (const auto& [first, count, value] :
         {std::tuple{b, q.NBBQ, 2.0}, std::tuple{gamma, q.NGAMQ, -2.0}, std::tuple{beta, q.NBETQ, 2.0}}) {
        changed(first, count, value);
        EXPECT_EQ(PHIQUI(1, 0, 0, 1.0, del), 0.0) << first;
        EXPECT_EQ(PHIQUI(1, 0, 1, 1.0, del), 0.0) << first;
    }
    q = kept;
}

// Co-volume and beta of the fluid made for tests are constants; here they change with temperature too.
TEST_F(Quintic, DerivativesWhereEveryPolynomialChangesWithTemperature) {
    QuiSlot& q = quiTerms[1];
    const int covolume = q.NETAQ + q.NEPSQ + 1, beta = covolume + q.NBBQ + q.NGAMQ;
    q.TIQUI[covolume] = 0.3;
    q.TIQUI[beta] = 0.4;
    q.TAUSVQ = 0.0;
    expectDerivatives(
        "QUI, all of temperature", [](int i, int j, double tau, double del) { return PHIQUI(1, i, j, tau, del); },
        {{0, 1}, {0, 2}, {0, 3}, {1, 0}, {2, 0}, {1, 1}, {2, 1}, {1, 2}, {2, 2}, {1, 3}, {2, 3}}, 0.5, 2.0, 3.2, 500);
    q.TAUSVQ = 0.0;
}

TEST_F(Quintic, ThirdDerivativeInTauIsZero) {
    for (int idel = 0; idel <= 2; ++idel) EXPECT_EQ(PHIQUI(1, 3, idel, 1.1, 0.7), 0.0);
}

TEST_F(Quintic, StatesAreKeptAndForgotten) {
    const double first = PHIQUI(1, 0, 1, 1.1, 0.7);
    EXPECT_NE(PHIQUI(1, 0, 1, 1.1, 0.8), first);
    EXPECT_NE(PHIQUI(1, 0, 1, 1.2, 0.7), first);
    EXPECT_EQ(PHIQUI(1, 0, 1, 1.1, 0.7), first);
    EXPECT_EQ(PHIQUI(1, 0, 1, 1.1, 1e-10), 0.0);
    EXPECT_EQ(PHIQUI(1, 0, 1, -1.0, 0.7), 0.0);
    EXPECT_EQ(PHIQUI(1, 0, 0, 1.0, 100.0), 0.0) << "beyond the co-volume";
    SETQUI(0, 1, "", ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_EQ(words(herr), "[SETQUI error] fluid input to SETQUI not found");
    EXPECT_EQ(quiTerms[1].TAUSVQ, 0.0);
}

TEST_F(Quintic, ReaderRefuses) {
    const std::string good =
        "180\n700\n50000\n19\nCPP\n80\n180\n1.5\n19\n238\n0.48\n350 4378 5\n350 5\n8.314472\n"
        "1 1 1 1 1\n0.2 0 0\n2 1 0\n0.2 0 0\n0.5 0 0\n0.1 0 0\n";
    const test::TemporaryFolder folder;
    test::writeFile(folder.path("block"), good);
    EXPECT_TRUE(load(folder.path("block"), 0, 1, SETQUI)) << words(herr);
    for (std::size_t cut = 0; cut + 8 < good.size(); cut += 7) {
        test::writeFile(folder.path("block"), good.substr(0, cut));
        EXPECT_FALSE(load(folder.path("block"), 0, 1, SETQUI)) << cut;
    }
    for (const char* counts : {"-1 1 1 1 1", "61 0 0 0 0", "50 11 0 0 0", "1 1 x 1 1"}) {
        std::string bad = good;
        bad.replace(bad.find("1 1 1 1 1"), 9, counts);
        test::writeFile(folder.path("block"), bad);
        EXPECT_FALSE(load(folder.path("block"), 0, 1, SETQUI)) << counts;
    }
    modelTags.LFORCESETUP = true;
}

// ---- ECS ----

class CorrespondingStates : public testing::Test {
  protected:
    void SetUp() override {
        // the reference fluid is looked for in the folder of the fluid
        test::writeFile(folder_.path("ECSTEST.FLD"), test::readFile(testFluids + "/ECSTEST.FLD"));
        test::writeFile(folder_.path("PROPANE.FLD"),
                        test::readFile(std::string(test::dataFolder) + "/fluids/PROPANE.FLD"));
        modelTags.LFORCESETUP = true;
        ASSERT_TRUE(test::setUp({"ECSTEST"}, "", folder_.path()));
        ASSERT_EQ(modelTags.HMXEOS[1], "ECS");
        ASSERT_EQ(modelTags.HMXEOS[-1], "FEQ");
    }
    void TearDown() override { modelTags.LFORCESETUP = true; }
    // Terms in density, which the file does not have.
    static void giveDensityTerms() {
        ecsTerms[1].FDECS.count = ecsTerms[1].HDECS.count = 2;
        ecsTerms[1].FDECS.coefficient[1] = 0.02;
        ecsTerms[1].FDECS.power[1] = 1.0;
        ecsTerms[1].FDECS.coefficient[2] = -0.004;
        ecsTerms[1].FDECS.power[2] = 2.5;
        ecsTerms[1].HDECS.coefficient[1] = -0.03;
        ecsTerms[1].HDECS.power[1] = 1.0;
        ecsTerms[1].HDECS.coefficient[2] = 0.006;
        ecsTerms[1].HDECS.power[2] = 2.0;
    }
    test::TemporaryFolder folder_;
};

TEST_F(CorrespondingStates, ShapeFactorsAndTheirDerivatives) {
    giveDensityTerms();
    Random random;
    double worst = 0.0;
    const auto see = [&](double value, double expected, double scale) {
        worst = test::larger(worst, std::fabs(value - expected) / scale);
    };
    for (const auto factor : {FJ, HJ}) {
        for (int n = 0; n < 2000; ++n) {
            const double t = random.between(120.0, 900.0), rho = random.between(0.1, 20.0);
            ShapeFactor s;
            factor(1, t, rho, s);
            const auto at = [&](double temperature, double density) {
                ShapeFactor there;
                factor(1, temperature, density, there);
                return there;
            };
            see(t * s.dT, scaledSlope([&](double v) { return at(v, rho).value; }, t), 1.0);
            see(rho * s.dD, scaledSlope([&](double v) { return at(t, v).value; }, rho), 1.0);
            see(t * t * s.dTT, t * scaledSlope([&](double v) { return at(v, rho).dT; }, t), 1.0);
            see(rho * rho * s.dDD, rho * scaledSlope([&](double v) { return at(t, v).dD; }, rho), 1.0);
            see(t * rho * s.dTD, rho * scaledSlope([&](double v) { return at(v, rho).dD; }, t), 1.0);
        }
    }
    std::printf("shape factors: %.1e\n", worst);
    EXPECT_LT(worst, 1e-9);
    ShapeFactor f, h;
    ecsTerms[1].FDECS.count = ecsTerms[1].HDECS.count = 0;
    FJ(1, 420.0, 1.0, f);
    EXPECT_NEAR(f.value, 420.0 / fluidConstants.TCRIT[-1], 1e-14);
    HJ(1, 420.0, 1.0, h);
    EXPECT_NEAR(h.value, fluidConstants.DCRIT[-1] / 6.0 * 0.276468327 / fluidConstants.ZCRIT[1], 1e-14);
    // d (c1 + c2 ln Tr) with d the difference of the acentric factors, then the powers
    FJ(1, 300.0, 1.0, f);
    const double tr = 300.0 / 420.0;
    EXPECT_NEAR(f.value,
                420.0 / fluidConstants.TCRIT[-1] * (1.0 + (0.25 - 0.1521) * -0.31 * std::log(tr) + 0.04 / tr - 0.04),
                1e-14);
}

TEST_F(CorrespondingStates, Derivatives) {
    giveDensityTerms();
    expectDerivatives(
        "ECS", [](int i, int j, double tau, double del) { return PHIECS(1, i, j, tau, del); },
        {{0, 1}, {0, 2}, {1, 0}, {2, 0}, {1, 1}}, 0.6, 2.2, 2.6, 2000);
    EXPECT_EQ(PHIECS(1, 2, 1, 1.1, 0.8), 0.0);
    EXPECT_EQ(PHIECS(1, 0, 3, 1.1, 0.8), 0.0);
    EXPECT_EQ(PHIECS(1, 0, 1, 1.1, 1e-10), 0.0);
}

// Without density the shape factors have the limits of those of little density.
TEST_F(CorrespondingStates, ShapeFactorsWithoutDensity) {
    EcsPolynomial& inDensity = ecsTerms[1].FDECS;
    inDensity.count = 3;
    for (const int k : {1, 2, 3}) {
        inDensity.coefficient[k] = 0.3 * k;
        inDensity.power[k] = k;
    }
    const double t = 450.0, step = 1e-7 * fluidConstants.DCRIT[1];
    ShapeFactor none, little;
    FJ(1, t, 0.0, none);
    FJ(1, t, step, little);
    EXPECT_NEAR(none.value, little.value, 1e-6);
    EXPECT_NEAR(none.dD, little.dD, 1e-5 * std::fabs(little.dD));
    EXPECT_NEAR(none.dDD, little.dDD, 1e-5 * std::fabs(little.dDD));
    EXPECT_NEAR(none.dT, little.dT, 1e-6 * std::fabs(little.dT));
    EXPECT_NE(none.dD, 0.0);
    EXPECT_NE(none.dDD, 0.0);
    modelTags.LFORCESETUP = true;
}

TEST_F(CorrespondingStates, OrdersThatItDoesNotHaveAreZero) {
    for (const Order o : {Order{-1, 0}, {0, -1}, {3, 0}, {2, 1}, {1, 2}})
        EXPECT_EQ(PHIECS(1, o.itau, o.idel, 1.1, 0.5), 0.0) << o.itau << ' ' << o.idel;
    EXPECT_EQ(PHIECS(1, 0, 1, 0.0, 0.5), 0.0);
    EXPECT_EQ(PHIECS(1, 0, 1, 1.1, 1e-10), 0.0);
    EXPECT_NE(PHIECS(1, 0, 1, 1.1, 0.5), 0.0);
    for (SlotArray<double> FluidConstants::*constant :
         {&FluidConstants::TZ, &FluidConstants::RHOZ, &FluidConstants::TCRIT}) {
        const double kept = std::exchange((fluidConstants.*constant)[-1], 0.0);
        EXPECT_EQ(PHIECS(1, 0, 1, 1.1, 0.5), 0.0) << "a reference fluid without constants";
        (fluidConstants.*constant)[-1] = kept;
    }
}

TEST_F(CorrespondingStates, ValueIsThatOfTheReference) {
    const double t = 350.0, rho = 4.0;
    ShapeFactor f, h;
    FJ(1, t, rho, f);
    HJ(1, t, rho, h);
    EXPECT_NEAR(PHIECS(1, 0, 0, 420.0 / t, rho / 6.0),
                PHIFEQ(-1, 0, 0, fluidConstants.TZ[-1] * f.value / t, rho * h.value / fluidConstants.RHOZ[-1]), 1e-13);
}

TEST_F(CorrespondingStates, ReferenceOfAnotherModelGivesZero) {
    EXPECT_NE(PHIECS(1, 0, 1, 1.1, 0.8), 0.0);
    for (const char* tag : {"QUI", "PR", "ECS", "NBS", "NUL", "BWX"}) {
        modelTags.HMXEOS[-1] = tag;
        for (const Order o : {Order{0, 0}, {0, 1}, {1, 0}, {1, 1}}) EXPECT_EQ(PHIECS(1, o.itau, o.idel, 1.1, 0.8), 0.0);
    }
    for (const char* tag : {"FEK", "FEX"}) {
        modelTags.HMXEOS[-1] = tag;
        EXPECT_NE(PHIECS(1, 0, 1, 1.1, 0.8), 0.0);
    }
}

TEST_F(CorrespondingStates, ConformalStateOutsideTheReferenceGivesZero) {
    ecsTerms[1].FECS.count = 3;
    ecsTerms[1].FECS.coefficient[3] = -5.0;
    ecsTerms[1].FECS.power[3] = 0.0;
    EXPECT_EQ(PHIECS(1, 0, 1, 1.1, 0.8), 0.0);
}

TEST_F(CorrespondingStates, CriticalPointIsThatOfTheReference) {
    // the shape factors are 1 there: pressure and both density derivatives follow the reference's
    Therm2Result r;
    THERM2(420.0, 6.0, unitComposition(1), r);
    const double rt = fluidConstants.R * 420.0;
    EXPECT_NEAR(r.p / 5793.3594, 1.0, 1e-3);
    EXPECT_LT(std::fabs(r.dPdD) / rt, 2e-3);
}

TEST_F(CorrespondingStates, NoUnitIsAnError) {
    Text255 reference;
    Text3 tag;
    SETECS(0, 1, "12-34-5", reference, tag, ierr, herr);
    EXPECT_EQ(ierr, 101);
    EXPECT_NE(words(herr).find("12-34-5"), std::string::npos);
    SETECS(-3, 1, "12-34-5", reference, tag, ierr, herr);
    EXPECT_EQ(ierr, 101);
}

TEST_F(CorrespondingStates, ReaderRefuses) {
    const std::string good =
        "100\n600\n1e5\n24\nCPP\nPROPANE.FLD\nFEQ\n0.15\n0.276\n0.25\n420\n5793\n6\n2\n0 0\n0.1 0\n"
        "0\n2\n0 0\n0.1 0\n1\n0.1 1\n";
    Text255 reference;
    Text3 tag;
    const auto read = [&](const std::string& text) {
        test::writeFile(folder_.path("block"), text);
        EXPECT_TRUE(openForReading(12, folder_.path("block")));
        SETECS(12, 2, "", reference, tag, ierr, herr);
        closeUnit(12);
        return ierr;
    };
    EXPECT_EQ(read(good), 0) << words(herr);
    EXPECT_EQ(words(reference), "PROPANE.FLD");
    EXPECT_EQ(tag, "FEQ");
    EXPECT_EQ(ecsTerms[2].HDECS.coefficient[1], 0.1);
    for (std::size_t cut = 0; cut + 4 < good.size(); cut += 5) EXPECT_EQ(read(good.substr(0, cut)), 1) << cut;
    std::string negative = good;
    negative.replace(negative.find("420"), 3, "-42");
    EXPECT_EQ(read(negative), 1);
}

}  // namespace
}  // namespace frigana
