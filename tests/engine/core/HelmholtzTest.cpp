// The Helmholtz equation: tables, derivatives against finite differences, cache, limits.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>

#include "CORE_FEQ.h"
#include "FluidConstants.h"
#include "Fluids.h"
#include "Larger.h"

namespace frigana::test {
namespace {

struct Order {
    int itau, idel;
};

// Central difference of order 8 of the function value(x) at x with step h.
template <class Function>
double slope(Function value, double x, double h) {
    return (4.0 / 5.0 * (value(x + h) - value(x - h)) - 1.0 / 5.0 * (value(x + 2 * h) - value(x - 2 * h)) +
            4.0 / 105.0 * (value(x + 3 * h) - value(x - 3 * h)) - 1.0 / 280.0 * (value(x + 4 * h) - value(x - 4 * h))) /
           h;
}

// Derivative of order (itau, idel) without the powers of tau and del.
double bare(int itau, int idel, double tau, double del) {
    return PHIFEQ(1, itau, idel, tau, del) / std::pow(tau, itau) / std::pow(del, idel);
}

// Slope of the next lower order, in tau or in del; bare of that order is what PHIFEQ should be.
double bySlope(int itau, int idel, double tau, double del, bool inTau, double h = 2e-4) {
    if (inTau) return slope([&](double x) { return bare(itau - 1, idel, x, del); }, tau, h);
    return slope([&](double x) { return bare(itau, idel - 1, tau, x); }, del, h);
}

bool hasNonAnalyticRows() {
    return !feqTerms[1].LCRTFLG;
}

constexpr Order orders[] = {{0, 1}, {0, 2}, {0, 3}, {1, 0}, {2, 0}, {3, 0}, {1, 1}, {2, 1}, {1, 2}, {2, 2}};

class HelmholtzOfFluid : public testing::TestWithParam<const char*> {
    void SetUp() override { ASSERT_TRUE(loadFluid(GetParam())); }
};
INSTANTIATE_TEST_SUITE_P(AllFluids, HelmholtzOfFluid, testing::ValuesIn(pureFluids), fluidName);

// Every order is the slope of the next lower one. Differences of order 8 with steps of 2e-4 are exact to about 1e-9 of
// the largest term; the scale is that of the terms, not of their sum. Non-analytic rows hold their third and mixed
// second derivatives only as a simplification: for those orders such fluids are passed over.
TEST_P(HelmholtzOfFluid, EveryOrderIsTheSlopeOfTheOneBelow) {
    constexpr double tolerance = 2e-7;
    std::mt19937 random(7);
    std::uniform_real_distribution<double> tauRange(0.6, 1.8), delRange(0.02, 2.6);
    for (const Order& order : orders) {
        if (hasNonAnalyticRows() && (order.itau + order.idel > 2)) continue;
        Worst worst;
        for (int i = 0; i < 300; ++i) {
            const double tau = tauRange(random), del = delRange(random);
            if (hasNonAnalyticRows() && std::fabs(tau - 1.0) < 0.02) continue;  // the steps would cross the edge
            for (const bool inTau : {true, false}) {
                if ((inTau ? order.itau : order.idel) == 0) continue;
                const double expected = bySlope(order.itau, order.idel, tau, del, inTau);
                const double value = bare(order.itau, order.idel, tau, del);
                PHIFEQ(1, order.itau, order.idel, tau, del);
                double scale = std::fabs(expected);
                for (int k = 1; k <= feqTerms[1].NTERMF + feqTerms[1].NCRT; ++k)
                    scale = larger(scale, std::fabs(feqTerms[1].PHISVF[k]));
                worst.see(std::fabs(value - expected) / scale,
                          std::to_string(tau) + " " + std::to_string(del) + (inTau ? " in tau" : " in del"));
            }
        }
        EXPECT_LT(worst.deviation, tolerance) << order.itau << order.idel << " at " << worst.where;
    }
}

// Close to the critical point the non-analytic rows change over the distance from it: the steps follow that distance.
TEST(Helmholtz, NonAnalyticRowsHoldTheirFirstAndSecondDerivatives) {
    constexpr double tolerance = 1e-6;
    ASSERT_TRUE(loadFluid("CO2"));
    ASSERT_TRUE(hasNonAnalyticRows());
    Worst worst;
    for (const double u : {-0.2, -0.05, -0.01, 0.01, 0.03, 0.2}) {
        for (const double v : {-0.05, -0.01, -0.002, 0.002, 0.01, 0.05}) {
            const double tau = 1.0 - v, del = 1.0 + u;
            for (const Order& order : {Order{0, 1}, Order{0, 2}, Order{1, 0}, Order{2, 0}, Order{1, 1}}) {
                for (const bool inTau : {true, false}) {
                    if ((inTau ? order.itau : order.idel) == 0) continue;
                    const double h = (inTau ? std::fabs(v) : std::fabs(u)) / 200.0;
                    const double expected = bySlope(order.itau, order.idel, tau, del, inTau, h);
                    const double value = bare(order.itau, order.idel, tau, del);
                    worst.see(std::fabs(value - expected) / std::max(1.0, std::fabs(expected)),
                              std::to_string(tau) + " " + std::to_string(del) + " " + std::to_string(order.itau) +
                                  std::to_string(order.idel));
                }
            }
        }
    }
    EXPECT_LT(worst.deviation, tolerance) << worst.where;
    std::printf("non-analytic rows: worst %.1e at %s\n", worst.deviation, worst.where.c_str());
}

// A state that a paper prints.
struct Printed {
    const char* fluid;
    double t, density, pressure, tolerance;  // [K, kg/m3, kPa, kPa]
};

TEST(Helmholtz, PressuresOfThePapersAreMet) {
    // tolerance: what half a unit of the last printed digit of density or pressure means for the pressure
    constexpr Printed rows[] = {
        // Span, Wagner, J. Phys. Chem. Ref. Data 25 (1996) 1509: saturated vapor at 250 K; 300 K and 10 MPa
        {"CO2", 250.0, 46.644, 1785.0, 1.0},
        {"CO2", 300.0, 801.62, 10000.0, 3.0},
        // Tillner-Roth, Baehr, J. Phys. Chem. Ref. Data 23 (1994) 657: saturated vapor at 298.15 K
        {"R134A", 298.15, 32.350, 665.38, 0.05},
    };
    for (const Printed& row : rows) {
        ASSERT_TRUE(loadFluid(row.fluid));
        const FeqSlot& f = feqTerms[1];
        const double rho = row.density / f.WMFEQ;
        const double p = rho * f.RFEQ * row.t * (1.0 + PHIFEQ(1, 0, 1, f.T0FEQ / row.t, rho / f.RHO0FEQ));
        EXPECT_NEAR(p, row.pressure, row.tolerance) << row.fluid << " " << row.t << " K";
    }
}

TEST(Helmholtz, DensityOfTheLimitGivesZeroForEveryOrder) {
    ASSERT_TRUE(loadFluid("PROPANE"));
    for (int itau = 0; itau <= 3; ++itau)
        for (int idel = 0; idel <= 3; ++idel) EXPECT_EQ(PHIFEQ(1, itau, idel, 1.1, 1e-10), 0.0) << itau << idel;
    EXPECT_NE(PHIFEQ(1, 0, 0, 1.1, 1.1e-10), 0.0);
    EXPECT_EQ(PHIFEQ(1, 0, 0, 0.0, 1.0), 0.0);
    EXPECT_EQ(PHIFEQ(1, 0, 1, std::nan(""), 1.0), 0.0);
    EXPECT_EQ(PHIFEQ(1, 4, 0, 1.0, 1.0), 0.0);
    EXPECT_EQ(PHIFEQ(1, 0, -1, 1.0, 1.0), 0.0);
}

// Slot 2 with given terms.
void useTerms(std::initializer_list<Array1<double, 5>> terms) {
    FeqSlot& f = feqTerms[2] = FeqSlot{};
    f.LCRTFLG = true;
    for (const Array1<double, 5>& term : terms) {
        const int k = ++f.NTERMF;
        f.AFEQ[k] = term[1];
        f.TIFEQ[k] = term[2];
        f.DIFEQ[k] = term[3];
        f.DLIF[k] = term[4];
        f.GIF1[k] = term[5];
    }
    SETEXP(2);
}

TEST(Helmholtz, TermWithoutLengthHasNoExponentialFactorWhateverItsG) {
    useTerms({{2.0, 1.5, 2.0, 0.0, 7.0}});
    const double tau = 1.3, del = 0.8;
    EXPECT_DOUBLE_EQ(PHIFEQ(2, 0, 0, tau, del), 2.0 * std::pow(tau, 1.5) * del * del);
    EXPECT_DOUBLE_EQ(PHIFEQ(2, 0, 1, tau, del), 2.0 * 2.0 * std::pow(tau, 1.5) * del * del);
}

TEST(Helmholtz, LengthsByProductsAndByThePowerRoutineAgree) {
    for (const double l : {1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 2.5}) {
        useTerms({{-0.7, 0.75, 1.0, l, 1.2}});
        const double tau = 0.9, del = 1.7;
        EXPECT_NEAR(PHIFEQ(2, 0, 0, tau, del), -0.7 * std::pow(tau, 0.75) * del * std::exp(-1.2 * std::pow(del, l)),
                    1e-15)
            << l;
    }
}

TEST(Helmholtz, PowersWithin1e10ShareATableRow) {
    useTerms({{1, 1.0, 1.0, 0.0, 1.0}, {1, 1.0 + 5e-11, 2.0, 1.0, 1.0}, {1, 2.0, 1.0, 1.0, 0.5}});
    const FeqSlot& f = feqTerms[2];
    EXPECT_EQ(f.NTPF, 2);
    EXPECT_EQ(f.NDPF, 2);
    EXPECT_EQ(f.NLPF, 3);  // (0, 1), (1, 1), (1, 0.5): both numbers must agree
    EXPECT_EQ(f.ITPF[1], f.ITPF[2]);
    EXPECT_EQ(f.IDPF[1], f.IDPF[3]);
}

TEST(Helmholtz, CriticalPointItselfIsFinite) {
    ASSERT_TRUE(loadFluid("CO2"));
    for (int itau = 0; itau <= 3; ++itau)
        for (int idel = 0; idel <= 3; ++idel)
            EXPECT_TRUE(std::isfinite(PHIFEQ(1, itau, idel, 1.0, 1.0))) << itau << idel;
}

TEST(Helmholtz, RepeatedCallReturnsTheSavedResultWithoutTouchingAnything) {
    ASSERT_TRUE(loadFluid("R125"));
    const double first = PHIFEQ(1, 1, 1, 1.2, 0.7);
    const FeqSlot before = feqTerms[1];
    EXPECT_EQ(PHIFEQ(1, 1, 1, 1.2, 0.7), first);
    EXPECT_EQ(std::memcmp(&before, &feqTerms[1], sizeof(FeqSlot)), 0);
    // the saved result itself is what is returned
    feqTerms[1].DRVSAV[6] = 12.5;
    EXPECT_EQ(PHIFEQ(1, 1, 1, 1.2, 0.7), 12.5);
    EXPECT_EQ(PHIFEQ(1, 1, 1, 1.2 + 5e-13, 0.7), 12.5) << "the state counts as unchanged";
    EXPECT_NE(PHIFEQ(1, 1, 1, 1.2 + 2e-12, 0.7), 12.5);
}

TEST(Helmholtz, ValuesDoNotDependOnTheOrderOfTheCalls) {
    for (const char* fluid : {"R134A", "PROPANE", "CO2", "R125"}) {
        ASSERT_TRUE(loadFluid(fluid));
        const auto freshly = [](const Order& order, double tau, double del) {
            PHIFEQ(1, 0, 0, 0.5, 0.1);
            return PHIFEQ(1, order.itau, order.idel, tau, del);
        };
        for (const Order& earlier : orders) {
            for (const Order& order : orders) {
                const double expected = freshly(order, 1.05, 1.9);
                PHIFEQ(1, 0, 0, 0.5, 0.1);
                PHIFEQ(1, earlier.itau, earlier.idel, 1.05, 1.9);
                EXPECT_EQ(PHIFEQ(1, order.itau, order.idel, 1.05, 1.9), expected) << fluid;
            }
        }
        // one variable after the other reaches the same state
        const double expected = freshly({0, 2}, 1.05, 1.9);
        PHIFEQ(1, 0, 0, 1.05, 0.1);
        EXPECT_EQ(PHIFEQ(1, 0, 2, 1.05, 1.9), expected);
        PHIFEQ(1, 0, 0, 0.5, 1.9);
        EXPECT_EQ(PHIFEQ(1, 0, 2, 1.05, 1.9), expected);
    }
}

TEST(Helmholtz, ExponentFrom100OnGivesAZeroTermInsteadOfAnOverflow) {
    useTerms({{1.0, 50.0, 1.0, 0.0, 1.0}, {3.0, 0.0, 1.0, 0.0, 1.0}});
    const double tau = std::exp(2.0);  // 50 ln(tau) = 100
    EXPECT_NEAR(PHIFEQ(2, 0, 0, tau * 1.0001, 1.0), 3.0, 1e-15);
    EXPECT_GT(PHIFEQ(2, 0, 0, tau * 0.9999, 1.0), 1e40);
    EXPECT_NEAR(PHIFEQ(2, 0, 0, std::exp(-4.1), 1.0), 3.0, 1e-15) << "and one below -200";
}

TEST(Helmholtz, MixesThatAreNotServedReturnThePureTauSum) {
    ASSERT_TRUE(loadFluid("PROPANE"));
    EXPECT_EQ(PHIFEQ(1, 1, 3, 1.1, 1.2), PHIFEQ(1, 1, 0, 1.1, 1.2));
    EXPECT_EQ(PHIFEQ(1, 2, 3, 1.1, 1.2), PHIFEQ(1, 2, 0, 1.1, 1.2));
    EXPECT_EQ(PHIFEQ(1, 3, 1, 1.1, 1.2), PHIFEQ(1, 3, 0, 1.1, 1.2));
    EXPECT_EQ(PHIFEQ(1, 3, 3, 1.1, 1.2), PHIFEQ(1, 3, 0, 1.1, 1.2));
}

TEST(Helmholtz, NewFluidInvalidatesTheCachesOfAllSlots) {
    ASSERT_TRUE(loadFluid("R134A"));
    const double value = PHIFEQ(1, 0, 1, 1.1, 1.2);
    ASSERT_TRUE(loadFluid("R32", "", 2, 2));
    EXPECT_EQ(feqTerms[1].TAUSVF, 0.0);
    EXPECT_EQ(feqTerms[1].DELSVF, 0.0);
    EXPECT_EQ(PHIFEQ(1, 0, 1, 1.1, 1.2), value);
}

TEST(Helmholtz, ReaderWithoutAUnitReports) {
    int ierr = 0;
    Text255 herr;
    SETFEQ(0, 1, "", ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_TRUE(herr == "[SETFEQ error] fluid input to SETFEQ not found");
}

TEST(Helmholtz, ReaderTakesTheConstants) {
    ASSERT_TRUE(loadFluid("R134A"));
    const FluidConstants& c = fluidConstants;
    EXPECT_EQ(c.TCRIT[1], 374.21);
    EXPECT_EQ(c.PCRIT[1], 4059.28);
    EXPECT_EQ(c.DCRIT[1], 5.017053);
    EXPECT_EQ(c.TZ[1], 374.18);
    EXPECT_EQ(c.RHOZ[1], 4.978830171);
    EXPECT_EQ(c.REOS[1], 8.314471);
    EXPECT_EQ(c.R, 8.314471);
    EXPECT_EQ(c.TMEOS[1], 169.85);
    EXPECT_EQ(c.TXEOS[1], 455.0);
    EXPECT_EQ(c.PEOS[1], 70000.0);
    EXPECT_DOUBLE_EQ(c.ZCRIT[1], 4059.28 / (8.314471 * 374.21 * 5.017053));
    double t = 0, p = 0, d = 0;
    CRTFEQ(1, t, p, d);
    EXPECT_EQ(t, 374.21);
    EXPECT_EQ(p, 4059.28);
    EXPECT_EQ(d, 5.017053);
    REDFEQ(1, t, d);
    EXPECT_EQ(t, 374.18);
    EXPECT_EQ(d, 4.978830171);
    ASSERT_TRUE(loadFluid("R114"));
    EXPECT_NE(feqTerms[1].GIF1[20], 1.0) << "five numbers in a term give g";
}

}  // namespace
}  // namespace frigana::test
