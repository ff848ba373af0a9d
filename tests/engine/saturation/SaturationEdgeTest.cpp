// The corners of SATT and SATP: limits, memo, change of method, messages.
#include <gtest/gtest.h>

#include <string>

#include "SETUP.h"
#include "Saturation.h"

namespace frigana {
namespace {

using namespace test;

TEST(SaturationEdge, PureFluidAtTheCriticalTemperatureIsTheCriticalPoint) {
    for (const char* fluid : pureFluids) {
        SCOPED_TRACE(fluid);
        ASSERT_LE(setUp(fluid), 0);
        saturationMemo = {};
        const Saturated s = satt(criticalT());
        EXPECT_EQ(s.ierr, 0);
        EXPECT_EQ(s.text(), "");
        EXPECT_EQ(s.p, criticalP());
        EXPECT_EQ(s.rhol, criticalD());
        EXPECT_EQ(s.rhov, criticalD());
        EXPECT_FALSE(saturationMemo.atT.valid);
    }
}

TEST(SaturationEdge, PureFluidJustAboveTheCriticalTemperatureIsRefusedWith121) {
    ASSERT_EQ(setUp("R134A"), 0);
    const Saturated s = satt(criticalT() + 2e-8);
    EXPECT_EQ(s.ierr, 121);
    EXPECT_EQ(s.text(),
              "[SATT error 121] temperature input to saturation routine is greater than critical temperature; T = "
              " 374.21 K, Tcrit =  374.21 K.");
    EXPECT_EQ(s.p, criticalP());
    EXPECT_EQ(s.rhol, criticalD());
    EXPECT_EQ(s.rhov, criticalD());
}

TEST(SaturationEdge, PureFluidAboveTheCriticalPressureIsRefusedWith141) {
    ASSERT_EQ(setUp("R134A"), 0);
    EXPECT_EQ(satp(criticalP()).ierr, 0);
    EXPECT_EQ(satp(criticalP()).T, criticalT());
    EXPECT_EQ(satp(1.0000005 * criticalP()).ierr, 0);
    const Saturated s = satp(1.001 * criticalP());
    EXPECT_EQ(s.ierr, 141);
    EXPECT_TRUE(
        s.text().starts_with("[SATP error 141] pressure input to saturation routine is greater than critical "
                             "pressure; P ="));
    EXPECT_EQ(s.T, criticalT());
    EXPECT_EQ(s.rhol, criticalD());
    EXPECT_EQ(s.rhov, criticalD());
}

// Carbon dioxide has a sublimation equation: 100 kPa is the dry ice of daily life at 194.5 K (R. Span, W. Wagner, J.
// Phys. Chem. Ref. Data 25 (1996) 1509: 194.69 K at 101.325 kPa).
TEST(SaturationEdge, PressureBelowTheTriplePointGivesTheSublimationLine) {
    ASSERT_EQ(setUp("CO2"), 0);
    const Saturated s = satp(101.325);
    EXPECT_EQ(s.ierr, 0) << s.text();
    EXPECT_NEAR(s.T, 194.69, 0.05);
    EXPECT_NEAR(pressure(s.T, s.rhov) / 101.325, 1.0, 1e-9);
    // and SATT finds the way back, by its own way below the lowest temperature and by the line's selector
    for (const int kph : {dew, sublimation}) {
        const Saturated back = satt(s.T, kph);
        EXPECT_EQ(back.ierr, 0) << back.text();
        EXPECT_NEAR(back.p, 101.325, 1e-6);
        EXPECT_NEAR(back.rhov / s.rhov, 1.0, 1e-9);
    }
}

TEST(SaturationEdge, PressureBelowTheTriplePointWithoutSublimationLineGives2AndTheTriplePoint) {
    ASSERT_EQ(setUp("R134A"), 0);
    const Saturated s = satp(0.1);
    EXPECT_EQ(s.ierr, 2);
    EXPECT_EQ(s.T, fluidConstants.TTPN[1]);
    EXPECT_EQ(s.text(),
              "[SATP error 2] pressure less than triple point pressure; P = 0.10000E-03 MPa, Ptp = 0.38956E-03 MPa.");
}

TEST(SaturationEdge, TemperatureBelowTheRangeWithoutSublimationLineIsRefused) {
    ASSERT_EQ(setUp("R134A"), 0);
    const Saturated s = satt(150.0);
    EXPECT_EQ(s.ierr, 1);
    EXPECT_TRUE(s.text().starts_with("[SATT error  1] one or more inputs are out of range: ")) << s.text();
    EXPECT_EQ(s.rhol, 0.0);
    EXPECT_EQ(s.rhov, 0.0);
}

TEST(SaturationEdge, NegativePressureIsRefusedWithTheLimits) {
    ASSERT_EQ(setUp("R134A"), 0);
    const Saturated s = satp(-1.0);
    EXPECT_EQ(s.ierr, 4);
    EXPECT_TRUE(s.text().starts_with("[SATP error  4] ")) << s.text();
    EXPECT_EQ(s.T, 0.8 * criticalT());
}

// A remembered state is told from a computed one by a mark put into the memo.
constexpr double mark = 123.456;

TEST(SaturationEdge, SecondIdenticalCallReturnsThroughTheMemo) {
    ASSERT_EQ(setUp("R134A"), 0);
    // 300 K by the iteration, 0.995 Tc by the way between the spinodals
    for (const double T : {300.0, 0.995 * criticalT()}) {
        SCOPED_TRACE(T);
        const Saturated first = satt(T, dew);
        ASSERT_EQ(first.ierr, 0);
        const Saturated second = satt(T, dew);
        EXPECT_EQ(second.ierr, 0);
        EXPECT_EQ(second.text(), "");
        EXPECT_EQ(second.p, first.p);
        EXPECT_EQ(second.rhol, first.rhol);
        EXPECT_EQ(second.rhov, first.rhov);
        EXPECT_EQ(second.xliq[1], 1.0);
        EXPECT_EQ(second.xvap[1], 1.0);
        saturationMemo.atT.result = mark;
        EXPECT_EQ(satt(T + 0.9e-9, dew).p, mark);
        EXPECT_NE(satt(T + 1e-8, dew).p, mark);
        // the other phase selector is another call
        ASSERT_EQ(satt(T, dew).ierr, 0);
        saturationMemo.atT.result = mark;
        EXPECT_NE(satt(T, bubble).p, mark);
    }
    const Saturated first = satp(600.0);
    ASSERT_EQ(first.ierr, 0);
    saturationMemo.atP.result = mark;
    const Saturated second = satp(600.0);
    EXPECT_EQ(second.ierr, 0);
    EXPECT_EQ(second.text(), "");
    EXPECT_EQ(second.T, mark);
}

TEST(SaturationEdge, FailureLeavesTheMemoOfTheLastSuccess) {
    ASSERT_EQ(setUp("R134A"), 0);
    ASSERT_EQ(satt(300.0).ierr, 0);
    ASSERT_EQ(satt(400.0).ierr, 121);
    saturationMemo.atT.result = mark;
    EXPECT_EQ(satt(300.0).p, mark);
}

TEST(SaturationEdge, ResetForgetsTheMemo) {
    ASSERT_EQ(setUp("R134A"), 0);
    ASSERT_EQ(satt(300.0).ierr, 0);
    ASSERT_EQ(satp(600.0).ierr, 0);
    RESETA();
    EXPECT_FALSE(saturationMemo.atT.valid);
    EXPECT_FALSE(saturationMemo.atP.valid);
}

TEST(SaturationEdge, PressureUpTo1e7NeverUsesTheMemo) {
    // isopentane's triple point lies at 9e-8 kPa
    ASSERT_LE(setUp("IPENTANE"), 0);
    const auto plant = [](double p) {
        saturationMemo.atP = {.valid = true, .kph = bubble, .icomp = 1, .input = p, .result = mark};
    };
    plant(0.95e-7);
    EXPECT_NE(satp(0.95e-7).T, mark);
    plant(2e-7);
    EXPECT_EQ(satp(2e-7).T, mark);
}

TEST(SaturationEdge, MethodsJoinAt99PercentOfTheCriticalTemperature) {
    for (const char* fluid : pureFluids) {
        SCOPED_TRACE(fluid);
        ASSERT_LE(setUp(fluid), 0);
        const double T = 0.99 * criticalT();
        const double step = 1e-9 * T;
        const Saturated below = satt(T - step), above = satt(T + step);
        ASSERT_EQ(below.ierr, 0);
        ASSERT_EQ(above.ierr, 0);
        // over the step itself the pressure changes by some 1e-8
        EXPECT_NEAR(above.p / below.p, 1.0, 5e-8);
        EXPECT_NEAR(above.rhol / below.rhol, 1.0, 1e-6);
        EXPECT_NEAR(above.rhov / below.rhov, 1.0, 1e-6);
    }
}

TEST(SaturationEdge, PressureComesFromTheLiquidAboveOneKilopascalAndFromTheVaporBelow) {
    for (const char* fluid : {"R134A", "PROPANE", "C12", "AMMONIA"}) {
        SCOPED_TRACE(fluid);
        ASSERT_LE(setUp(fluid), 0);
        const Saturated thin = satt(lowestT() + 1.0);
        ASSERT_EQ(thin.ierr, 0);
        if (thin.p < 1.0 && thin.p > 1e-5) {
            EXPECT_EQ(thin.p, pressure(thin.T, thin.rhov));
        }
        const Saturated dense = satt(0.8 * criticalT());
        ASSERT_EQ(dense.ierr, 0);
        EXPECT_EQ(dense.p, pressure(dense.T, dense.rhol));
    }
}

TEST(SaturationEdge, PressureBelow1e5IsThatOfTheIdealGas) {
    ASSERT_EQ(setUp("PROPANE"), 0);
    const Saturated s = satt(lowestT() + 0.5);
    ASSERT_EQ(s.ierr, 0);
    ASSERT_LT(s.p, 1e-5);
    EXPECT_EQ(s.p, s.rhov * fluidConstants.R * s.T);
}

TEST(SaturationEdge, NegativeTemperatureStartsFromTheArguments) {
    ASSERT_EQ(setUp("R134A"), 0);
    const Saturated reference = satt(310.0);
    Saturated s = reference;
    s.p *= 1.02;
    s.rhol *= 1.01;
    s.rhov *= 1.05;
    const Composition x = unitComposition(1);
    SATT(-310.0, x, bubble, s.p, s.rhol, s.rhov, s.xliq, s.xvap, s.ierr, s.herr);
    EXPECT_EQ(s.ierr, 0) << s.text();
    EXPECT_NEAR(s.p / reference.p, 1.0, 1e-9);
    EXPECT_NEAR(s.rhol / reference.rhol, 1.0, 1e-9);
    EXPECT_NEAR(s.rhov / reference.rhov, 1.0, 1e-9);
}

TEST(SaturationEdge, FreezingLineJoinsMeltingPressureAndLiquid) {
    ASSERT_EQ(setUp("CO2"), 0);
    const Saturated s = satt(230.0, freezing);
    EXPECT_EQ(s.ierr, 0) << s.text();
    double p;
    int ierr;
    Text255 herr;
    MELTT(230.0, unitComposition(1), p, ierr, herr);
    EXPECT_EQ(s.p, p);
    EXPECT_NEAR(pressure(230.0, s.rhol) / p, 1.0, 1e-9);
    const Saturated back = satp(p, freezing);
    EXPECT_EQ(back.ierr, 0) << back.text();
    EXPECT_NEAR(back.T, 230.0, 1e-6);
    EXPECT_NEAR(back.rhol / s.rhol, 1.0, 1e-8);
}

TEST(SaturationEdge, ResultsMayShareTheArrayOfTheComposition) {
    ASSERT_EQ(setUp("R134A"), 0);
    Composition x = unitComposition(1), other;
    double p, rhol, rhov;
    int ierr;
    Text255 herr;
    SATT(300.0, x, bubble, p, rhol, rhov, x, other, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(x[1], 1.0);
}

TEST(SaturationEdge, AnotherFluidDoesNotGetTheRememberedState) {
    ASSERT_EQ(setUp("R134A"), 0);
    const double first = satt(300.0).p;
    ASSERT_EQ(setUp("R22"), 0);
    EXPECT_GT(satt(300.0).p, 1.3 * first);
}

// ---------------------------------------------------------------------------------------- bounded density, spinodals

TEST(BoundedDensity, StaysBetweenItsBoundsInAnyOrder) {
    ASSERT_EQ(setUp("R134A"), 0);
    const Composition x = unitComposition(1);
    const Saturated s = satt(0.99 * criticalT());
    for (const bool swapped : {false, true}) {
        double low = criticalD() * 1.2, high = 2.0 * s.rhol, rho;
        if (swapped) std::swap(low, high);
        int ierr;
        Text255 herr;
        TPRHOB(s.T, s.p, low, high, x, rho, ierr, herr);
        EXPECT_EQ(ierr, 0);
        EXPECT_NEAR(rho / s.rhol, 1.0, 1e-7);
    }
}

TEST(BoundedDensity, NoRootBetweenTheBoundsGives1) {
    ASSERT_EQ(setUp("R134A"), 0);
    double rho;
    int ierr;
    Text255 herr;
    TPRHOB(300.0, 702.0, 11.0, 11.5, unitComposition(1), rho, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_GE(rho, 11.0);
    EXPECT_LE(rho, 11.5);
}

TEST(CommonPressure, IsReachedByBothDensities) {
    ASSERT_EQ(setUp("R134A"), 0);
    const Composition x = unitComposition(1);
    double p, liquid, vapor;
    int ierr;
    Text255 herr;
    DLDV(340.0, p, liquid, vapor, x, x, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_GT(liquid, criticalD());
    EXPECT_LT(vapor, criticalD());
    EXPECT_NEAR(pressure(340.0, liquid), pressure(340.0, vapor), 1e-5);
    EXPECT_NEAR(p, pressure(340.0, vapor), 1e-5);
}

TEST(Spinodal, AboveTheCriticalTemperatureGives121) {
    ASSERT_EQ(setUp("R134A"), 0);
    for (const bool liquid : {true, false}) {
        double rho = criticalD();
        int ierr;
        Text255 herr;
        (liquid ? LIQSPNDL : VAPSPNDL)(380.0, unitComposition(1), rho, ierr, herr);
        EXPECT_EQ(ierr, 121);
        EXPECT_TRUE(herr.startsWith(liquid
                                        ? "[LIQSPNDL error 121] temperature input to spinodal routine is greater than "
                                          "critical temperature; T ="
                                        : "[VAPSPNDL error 121] temperature input to spinodal routine is greater "
                                          "than critical temperature; T ="));
    }
}

TEST(Spinodal, WithoutATableTheSearchStartsFromTheTriplePoint) {
    ASSERT_EQ(setUp("R134A"), 0);
    const Composition x = unitComposition(1);
    double given = 10.0, unknown = 0.0, slope;
    int ierr;
    Text255 herr;
    LIQSPNDL(330.0, x, given, ierr, herr);
    ASSERT_EQ(ierr, 0);
    LIQSPNDL(330.0, x, unknown, ierr, herr);
    ASSERT_EQ(ierr, 0);
    EXPECT_NEAR(unknown / given, 1.0, 1e-8);
    unknown = 0.0;
    VAPSPNDL(330.0, x, unknown, ierr, herr);
    ASSERT_EQ(ierr, 0);
    DPDD(330.0, unknown, x, slope);
    EXPECT_NEAR(slope, 0.0, 1e-4);
    EXPECT_LT(unknown, criticalD());
}

TEST(Spinodal, TablesGiveTheSameDensities) {
    ASSERT_EQ(setUp("R134A"), 0);
    const Composition x = unitComposition(1);
    int ierr;
    Text255 herr;
    const double temperatures[] = {250.0, 300.0, 350.0, 370.0, 374.0};
    double liquid[5], vapor[5];
    for (int k = 0; k < 5; ++k) {
        liquid[k] = vapor[k] = 0.0;
        LIQSPNDL(temperatures[k], x, liquid[k], ierr, herr);
        VAPSPNDL(temperatures[k], x, vapor[k], ierr, herr);
    }
    SETLSPNDL(1, ierr, herr);
    EXPECT_EQ(ierr, 0) << std::string(herr.trimmed());
    SETVSPNDL(1, ierr, herr);
    EXPECT_EQ(ierr, 0) << std::string(herr.trimmed());
    for (int k = 0; k < 5; ++k) {
        double fromTable = 0.0;
        LIQSPNDL(temperatures[k], x, fromTable, ierr, herr);
        EXPECT_EQ(ierr, 0);
        EXPECT_NEAR(fromTable / liquid[k], 1.0, 1e-7) << temperatures[k];
        fromTable = 0.0;
        VAPSPNDL(temperatures[k], x, fromTable, ierr, herr);
        EXPECT_EQ(ierr, 0);
        EXPECT_NEAR(fromTable / vapor[k], 1.0, 1e-7) << temperatures[k];
    }
}

TEST(Spinodal, TablesAreForPureFluidsOnly) {
    ASSERT_EQ(setUp("R134A"), 0);
    int ierr;
    Text255 herr;
    SETLSPNDL(0, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_TRUE(herr.startsWith("[SETLSPNDL error 1] SETLSPNDL can handle pure fluids only"));
    SETVSPNDL(0, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_TRUE(herr.startsWith("[SETVSPNDL error 1] SETVSPNDL can handle pure fluids only"));
}

}  // namespace
}  // namespace frigana
