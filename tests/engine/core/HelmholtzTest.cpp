// The Helmholtz equation: tables, derivatives against finite differences, cache, limits.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "CORE_FEQ.h"
#include "FluidConstants.h"
#include "Fluids.h"

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
double bySlope(int itau, int idel, double tau, double del, bool inTau) {
    if (inTau)
        return slope([&](double x) { return bare(itau - 1, idel, x, del); }, tau, 2e-4);
    return slope([&](double x) { return bare(itau, idel - 1, tau, x); }, del, 2e-4);
}

bool hasNonAnalyticRows() {
    return !feqTerms[1].LCRTFLG;
}

constexpr Order orders[] = {{0, 1}, {0, 2}, {0, 3}, {1, 0}, {2, 0}, {3, 0}, {1, 1}, {2, 1}, {1, 2}, {2, 2}};

class HelmholtzOfFluid : public testing::TestWithParam<const char*> {
    void SetUp() override { ASSERT_TRUE(loadFluid(GetParam())); }
};
INSTANTIATE_TEST_SUITE_P(AllFluids, HelmholtzOfFluid, testing::ValuesIn(allFluids()), fluidName);

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
            for (const bool inTau : {true, false}) {
                if ((inTau ? order.itau : order.idel) == 0) continue;
                const double expected = bySlope(order.itau, order.idel, tau, del, inTau);
                const double value = bare(order.itau, order.idel, tau, del);
                PHIFEQ(1, order.itau, order.idel, tau, del);
                double scale = std::fabs(expected);
                for (int k = 1; k <= feqTerms[1].NTERMF + feqTerms[1].NCRT; ++k)
                    scale = std::max(scale, std::fabs(feqTerms[1].PHISVF[k]));
                worst.see(std::fabs(value - expected) / scale,
                          std::to_string(tau) + " " + std::to_string(del) + (inTau ? " in tau" : " in del"));
            }
        }
        EXPECT_LT(worst.deviation, tolerance) << order.itau << order.idel << " at " << worst.where;
    }
}

}  // namespace
}  // namespace frigana::test
