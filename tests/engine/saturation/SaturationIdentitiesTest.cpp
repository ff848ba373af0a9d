// What must hold on the saturation lines of every fluid, whatever its equation.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "SAT_SUB_DERIVED.h"
#include "Saturation.h"

namespace frigana {
namespace {

using namespace test;

class SaturationLine : public ::testing::TestWithParam<const char*> {
  protected:
    void SetUp() override { ASSERT_LE(setUp(GetParam()), 0); }
    Random random_;
};

// At random temperatures up to 0.999 Tc both phases have one pressure, one Gibbs energy and one fugacity, and the
// liquid is the denser one. The pressure of a cold liquid is a difference of numbers ten orders larger (worst in the
// equations of R22, R123 and R152A), which leaves some 1e-7 kPa of it uncertain, and it is the result above 1 kPa.
// Below 1e-5 kPa the result is that of the ideal gas.
TEST_P(SaturationLine, PhasesAreInEquilibrium) {
    const Composition x = unitComposition(1);
    Largest gibbsDifference, fugacityDifference;
    for (int k = 0; k < 400; ++k) {
        const double T = random_.between(lowestT(), 0.999 * criticalT());
        SCOPED_TRACE(T);
        const Saturated s = satt(T, k % 2 == 0 ? bubble : dew);
        ASSERT_EQ(s.ierr, 0) << s.text();
        EXPECT_EQ(s.text(), "");
        ASSERT_GT(s.rhol, s.rhov);
        EXPECT_NEAR(pressure(T, s.rhov), s.p, s.p < 1e-5 ? 1e-7 * s.p : s.p < 1.0 ? 1e-10 * s.p : 1e-8 * s.p + 1e-6);
        EXPECT_NEAR(pressure(T, s.rhol), s.p, 1e-8 * s.p + 1e-5);
        const double RT = fluidConstants.R * T;
        const double g = std::fabs(gibbs(T, s.rhol) - gibbs(T, s.rhov)) / RT;
        EXPECT_LT(g, 1e-7);
        gibbsDifference.take(g, T);
        Composition fl, fv;
        int ierr;
        Text255 herr;
        FGCTY2(T, s.rhol, x, fl, ierr, herr);
        FGCTY2(T, s.rhov, x, fv, ierr, herr);
        EXPECT_NEAR(fl[1] / fv[1], 1.0, 1e-7);
        fugacityDifference.take(deviation(fl[1], fv[1]), T);
    }
    std::printf("%-8s largest difference of the phases: G/RT %.1e at %.2f K, fugacity %.1e at %.2f K\n", GetParam(),
                gibbsDifference.value, gibbsDifference.where, fugacityDifference.value, fugacityDifference.where);
}

// dp/dT by central differences against (h_v - h_l) / (v_v - v_l) / T. Of four points the difference quotient is good to
// the fourth power of the step, which may then be wide enough to leave the last digits of a cold pressure behind.
TEST_P(SaturationLine, SlopeFollowsTheClapeyronEquation) {
    Largest worst;
    for (int k = 0; k < 40; ++k) {
        const double T = random_.between(lowestT() + 0.5, 0.985 * criticalT());
        SCOPED_TRACE(T);
        const double step = 4e-4 * T;
        const double farBelow = satt(T - 2.0 * step).p, below = satt(T - step).p;
        const double above = satt(T + step).p, farAbove = satt(T + 2.0 * step).p;
        const double quotient = (8.0 * (above - below) - (farAbove - farBelow)) / (12.0 * step);
        double p, rho, csat, dpdt;
        int ierr;
        Text255 herr;
        DPTSATK(1, T, bubble, p, rho, csat, dpdt, ierr, herr);
        ASSERT_EQ(ierr, 0);
        EXPECT_NEAR(quotient / dpdt, 1.0, 1e-5);
        worst.take(deviation(quotient, dpdt), T);
    }
    std::printf("%-8s largest deviation of dp/dT from Clapeyron: %.1e at %.2f K\n", GetParam(), worst.value,
                worst.where);
}

// Heat capacity along the lines against T ds/dT by differences.
TEST_P(SaturationLine, SaturationHeatCapacityIsTheSlopeOfEntropy) {
    for (const double reduced : {0.55, 0.7, 0.85, 0.95}) {
        const double T = std::max(reduced * criticalT(), lowestT() + 1.0);
        SCOPED_TRACE(T);
        const double step = 2e-5 * T;
        for (const int line : {bubble, dew}) {
            const Saturated below = satt(T - step), above = satt(T + step);
            const double slope = line == bubble ? entropy(T + step, above.rhol) - entropy(T - step, below.rhol)
                                                : entropy(T + step, above.rhov) - entropy(T - step, below.rhov);
            double p, rho, csat;
            int ierr;
            Text255 herr;
            CSATK(1, T, line, p, rho, csat, ierr, herr);
            ASSERT_EQ(ierr, 0);
            const double expected = T * slope / (2.0 * step);
            EXPECT_NEAR(csat, expected, 1e-4 * std::max(std::fabs(expected), 10.0));
        }
    }
}

// SATP at the pressure of SATT comes back to the temperature, and the other way round. The pressure stays away from the
// critical one of the file, which some equations reach a little below their critical temperature.
TEST_P(SaturationLine, TemperatureAndPressureInvertOneAnother) {
    Largest worst;
    for (int k = 0; k < 300; ++k) {
        const double T = random_.between(lowestT(), 0.9985 * criticalT());
        SCOPED_TRACE(T);
        const Saturated forward = satt(T, dew);
        ASSERT_EQ(forward.ierr, 0) << forward.text();
        if (forward.p < fluidConstants.PTPN[1]) continue;
        const Saturated back = satp(forward.p, dew);
        ASSERT_EQ(back.ierr, 0) << back.text();
        // 1e-6 K is the tolerance of the search in temperature
        EXPECT_NEAR(back.T, T, 2e-6);
        EXPECT_NEAR(back.rhol / forward.rhol, 1.0, 1e-6);
        EXPECT_NEAR(back.rhov / forward.rhov, 1.0, 1e-6);
        worst.take(std::fabs(back.T - T), T);
    }
    std::printf("%-8s SATP after SATT: largest deviation %.1e K at %.2f K\n", GetParam(), worst.value, worst.where);
}

// Two-phase cv against d(e)/dT at constant density by the lever rule. The second difference of the pressure over 0.01 K
// makes 0.1 % of the rounding of a liquid's pressure.
TEST_P(SaturationLine, TwoPhaseHeatCapacityIsTheSlopeOfEnergy) {
    const double T = std::max(0.75 * criticalT(), lowestT() + 1.0);
    const Saturated here = satt(T);
    ASSERT_EQ(here.ierr, 0);
    const double rho = 1.0 / (0.5 / here.rhol + 0.5 / here.rhov);
    const auto energyAt = [rho](double t) {
        const Saturated s = satt(t);
        const double q = (1.0 / rho - 1.0 / s.rhol) / (1.0 / s.rhov - 1.0 / s.rhol);
        return (1.0 - q) * energy(t, s.rhol) + q * energy(t, s.rhov);
    };
    double cv2p, csat;
    int ierr;
    Text255 herr;
    CV2PK(1, T, rho, cv2p, csat, ierr, herr);
    ASSERT_EQ(ierr, 0);
    const double step = 0.01;
    const double expected = (energyAt(T + step) - energyAt(T - step)) / (2.0 * step);
    EXPECT_NEAR(cv2p / expected, 1.0, 1e-3);
}

// Equal areas from rough densities against the equality of the Gibbs energies. The search stops at pressures that agree
// to 1e-4.
TEST_P(SaturationLine, EqualAreasGiveTheSamePressure) {
    for (const double reduced : {0.7, 0.8, 0.9}) {
        const double T = std::max(reduced * criticalT(), lowestT() + 1.0);
        SCOPED_TRACE(T);
        const Saturated s = satt(T);
        ASSERT_EQ(s.ierr, 0);
        double p = 0.0, rhol = 1.01 * s.rhol, rhov = 0.97 * s.rhov;
        int ierr;
        Text255 herr;
        MAXWELL(1, T, p, rhol, rhov, ierr, herr);
        ASSERT_EQ(ierr, 0);
        EXPECT_NEAR(p / s.p, 1.0, 1e-4);
        EXPECT_NEAR(rhol / s.rhol, 1.0, 1e-4);
        EXPECT_NEAR(rhov / s.rhov, 1.0, 2e-4);
    }
}

// On both spinodals dp/drho vanishes, and they lie between the saturated densities. At lower temperatures some
// equations have further loops between the densities.
TEST_P(SaturationLine, SpinodalsLieBetweenTheSaturatedDensities) {
    const Composition x = unitComposition(1);
    for (const double reduced : {0.92, 0.95, 0.98, 0.995, 0.9995}) {
        const double T = reduced * criticalT();
        SCOPED_TRACE(T);
        const Saturated s = satt(T);
        ASSERT_EQ(s.ierr, 0) << s.text();
        double liquid = 0.9 * s.rhol, vapor = 1.1 * s.rhov, slope;
        int ierr;
        Text255 herr;
        LIQSPNDL(T, x, liquid, ierr, herr);
        EXPECT_EQ(ierr, 0);
        EXPECT_GT(liquid, criticalD());
        EXPECT_LT(liquid, s.rhol);
        DPDD(T, liquid, x, slope);
        EXPECT_NEAR(slope, 0.0, 1e-3);
        VAPSPNDL(T, x, vapor, ierr, herr);
        EXPECT_EQ(ierr, 0);
        EXPECT_LT(vapor, criticalD());
        EXPECT_GT(vapor, s.rhov);
        DPDD(T, vapor, x, slope);
        EXPECT_NEAR(slope, 0.0, 1e-3);
    }
}

INSTANTIATE_TEST_SUITE_P(Fluids, SaturationLine, ::testing::ValuesIn(pureFluids),
                         [](const auto& fluid) { return std::string(fluid.param); });

}  // namespace
}  // namespace frigana
