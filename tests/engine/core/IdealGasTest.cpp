// Ideal-gas functions: the two correlations, their integrals and derivatives, routing and limits.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>

#include "CORE_CPP.h"
#include "CORE_PH0.h"
#include "DISPATCH.h"
#include "FluidConstants.h"
#include "Fluids.h"
#include "ModelTags.h"
#include "ReferenceState.h"

namespace frigana::test {
namespace {

// Central difference of order 6.
template <class Function>
double slope(Function value, double x, double h) {
    return (3.0 / 4.0 * (value(x + h) - value(x - h)) - 3.0 / 20.0 * (value(x + 2 * h) - value(x - 2 * h)) +
            1.0 / 60.0 * (value(x + 3 * h) - value(x - 3 * h))) /
           h;
}

// Slot 1 with an empty correlation; TREF 300 K, RHOREF 1 mol/L, R 8 J/(mol K), TZ 400 K, RHOZ 5 mol/L.
CppSlot& emptyCpp() {
    modelTags.NC = 1;
    modelTags.IPUREFLD = 0;
    modelTags.HMODCP[1] = "CPP";
    referenceState.TREF[1] = 300.0;
    referenceState.RHOREF[1] = 1.0;
    fluidConstants.REOS[1] = fluidConstants.R = 8.0;
    fluidConstants.TZ[1] = 400.0;
    fluidConstants.RHOZ[1] = 5.0;
    cppTerms[1] = CppSlot{};
    cppTerms[1].TREDCP = 2.0;
    cppTerms[1].CREDCP = 8.0;
    return cppTerms[1];
}
Ph0Slot& emptyPh0() {
    emptyCpp();
    modelTags.HMODCP[1] = "PH0";
    ph0Terms[1] = Ph0Slot{};
    return ph0Terms[1];
}

// Every family of the heat capacity correlation, with exponents for which the closed integrals hold.
struct Family {
    const char* name;
    int count[4];  // NTERMC, NTERME, NCOSHC, NSINHC
    double c, k, h, x, y;
};
constexpr Family families[] = {
    {"power 0.3", {1, 0, 0, 0}, 1.3, 0.3, 0, 0, 0},       {"power 0", {1, 0, 0, 0}, 1.3, 0.0, 0, 0, 0},
    {"power -1", {1, 0, 0, 0}, 1.3, -1.0, 0, 0, 0},       {"power -2", {1, 0, 0, 0}, 1.3, -2.0, 0, 0, 0},
    {"Planck-Einstein", {0, 1, 0, 0}, 1.3, 700, 0, 0, 0}, {"cosh", {0, 0, 1, 0}, 9e4, -2.0, 350, -1, -2},
    {"sinh", {0, 0, 0, 1}, 9e4, -2.0, 350, -1, -2}};

void useFamily(const Family& f) {
    CppSlot& c = emptyCpp();
    c.TREDCP = f.count[2] + f.count[3] > 0 ? 1.0 : 2.0;  // the closed forms of cosh and sinh hold for 1 K
    c.NTERMC = f.count[0];
    c.NTERME = f.count[1];
    c.NCOSHC = f.count[2];
    c.NSINHC = f.count[3];
    c.CPC0[1] = f.c;
    c.XKC0[1] = f.k;
    c.CP0H[1] = f.h;
    c.X0TH[1] = f.x;
    c.XH00[1] = f.y;
}

TEST(IdealGas, IntegralsOfEveryFamilyHaveTheHeatCapacityAsSlope) {
    for (const Family& f : families) {
        useFamily(f);
        EXPECT_NEAR(CPICPP(1, 300.0), 0.0, 1e-11) << f.name;
        EXPECT_NEAR(CPTCPP(1, 300.0), 0.0, 1e-13) << f.name;
        for (const double t : {120.0, 250.0, 480.0, 900.0}) {
            const double cp = CP0CPP(1, t);
            EXPECT_NEAR(slope([](double x) { return CPICPP(1, x); }, t, 0.5), cp, 1e-8 * cp) << f.name << t;
            EXPECT_NEAR(slope([](double x) { return CPTCPP(1, x); }, t, 0.5) * t, cp, 1e-8 * cp) << f.name << t;
        }
    }
}

TEST(IdealGas, ThirdDerivativeOfEveryFamilyIsTheSlopeOfTheSecond) {
    for (const Family& f : families) {
        useFamily(f);
        if (f.count[2] + f.count[3] > 0) cppTerms[1].CREDCP = 1.0;  // these terms enter it without a factor
        fluidConstants.REOS[1] = fluidConstants.R = cppTerms[1].CREDCP;
        const auto second = [](double tau) { return PH0CPP(1, 2, 0, 400.0 / tau, 1.0) / (tau * tau); };
        for (const double t : {200.0, 350.0, 700.0}) {
            const double tau = 400.0 / t, expected = tau * tau * tau * slope(second, tau, tau * 1e-3);
            EXPECT_NEAR(PH0CPP(1, 3, 0, t, 1.0), expected, 1e-7 * std::fabs(expected) + 1e-9) << f.name << t;
        }
    }
}

TEST(IdealGas, PowerWithExponentMinusOneUsesTheLogarithmForTheIntegral) {
    useFamily(families[2]);
    EXPECT_DOUBLE_EQ(CPICPP(1, 600.0), 8.0 * 1.3 * 2.0 * std::log(2.0));
}

TEST(IdealGas, PowerWithExponentZeroUsesTheLogarithmForTheIntegralOverTemperature) {
    useFamily(families[1]);
    EXPECT_DOUBLE_EQ(CPTCPP(1, 600.0), 8.0 * 1.3 * std::log(2.0));
}

TEST(IdealGas, PlanckEinsteinTermVanishesAtVeryLowTemperature) {
    useFamily(families[4]);  // k = 700 K
    EXPECT_EQ(CP0CPP(1, 3.5), 0.0);
    EXPECT_EQ(CPICPP(1, 3.5), 0.0);
    EXPECT_EQ(CPTCPP(1, 3.5), 0.0);
    EXPECT_GT(CP0CPP(1, 3.6), 0.0);
    // the third derivative of the energy has nothing of the term either: 2 (cp/R - 1), where cp is 0
    EXPECT_EQ(PHI0K(1, 3, 0, 3.5, 1.0), -2.0);
    EXPECT_NE(PHI0K(1, 3, 0, 30.0, 1.0), -2.0);
}

TEST(IdealGas, HyperbolicTermOutOfRangeReplacesTheSum) {
    CppSlot& c = emptyCpp();
    c.CREDCP = c.TREDCP = 1.0;
    c.NTERMC = c.NCOSHC = 1;
    c.NSINHC = 1;
    c.CPC0[1] = 4.0;
    c.CPC0[2] = 1.0, c.CP0H[2] = 7000.0, c.X0TH[2] = -1.0;  // cosh term: v = 700 at 10 K
    c.CPC0[3] = 5.0, c.CP0H[3] = 10.0, c.X0TH[3] = -1.0;
    EXPECT_EQ(CP0CPP(1, 10.0), 1000000.0 + 5.0) << "a later term adds to the number that replaced the sum";
    EXPECT_LT(CP0CPP(1, 10.1), 1e300);
    EXPECT_NE(CP0CPP(1, 10.1), 1000000.0 + 5.0);
    // so it does in the integral over temperature, for either function
    c.NSINHC = 0;
    EXPECT_EQ(CPTCPP(1, 10.0), 1000000.0);
    c.NCOSHC = 0;
    c.NSINHC = 1;
    c.CP0H[2] = 7000.0;
    cppTerms[1].TSVCP0 = 0.0;
    EXPECT_EQ(CPTCPP(1, 10.0), 1000000.0);
    cppTerms[1].TSVCP0 = 0.0;
    EXPECT_LT(std::fabs(CPTCPP(1, 10.1)), 1e5);
}

TEST(IdealGas, TemperatureOfZeroOrLessGivesZero) {
    useFamily(families[0]);
    for (const double t : {0.0, -5.0}) {
        EXPECT_EQ(CP0CPP(1, t), 0.0);
        EXPECT_EQ(CPICPP(1, t), 0.0);
        EXPECT_EQ(CPTCPP(1, t), 0.0);
        EXPECT_EQ(PH0CPP(1, 0, 0, t, 1.0), 0.0);
        EXPECT_EQ(PH0PH0(1, 0, 0, t, 1.0), 0.0);
    }
}

// Above zero there is no least temperature.
TEST(IdealGas, PartsOfAKelvinHaveTheirClosedForms) {
    useFamily(families[0]);  // 1.3 (t / 2 K)^0.3 times 8, from 300 K
    const double t = 0.5, root = std::pow(t / 2.0, 0.3), from = std::pow(150.0, 0.3);
    EXPECT_NEAR(CP0CPP(1, t), 8.0 * 1.3 * root, 1e-14);
    EXPECT_NEAR(CPICPP(1, t), 8.0 * 1.3 / 1.3 * (t * root - 300.0 * from), 1e-10);
    EXPECT_NEAR(CPTCPP(1, t), 8.0 * 1.3 / 0.3 * (root - from), 1e-12);
    const double integral = CPICPP(1, t) / (8.0 * t);
    EXPECT_NEAR(PH0CPP(1, 0, 0, t, 1.0), integral - CPTCPP(1, t) / 8.0 + std::log(t / 300.0) - 1.0, 1e-10);
    EXPECT_NEAR(PH0CPP(1, 1, 0, t, 1.0), integral - 1.0, 1e-10);
    EXPECT_NEAR(PH0CPP(1, 2, 0, t, 1.0), 1.0 - 1.3 * root, 1e-14);
    Ph0Slot& c = emptyPh0();
    c.NTAUP = 1;
    c.AIPH[1] = 2.0;
    c.TIPH[1] = 1.5;
    const double term = 2.0 * std::pow(800.0, 1.5);  // TZ is 400 K
    EXPECT_NEAR(PH0PH0(1, 1, 0, t, 1.0), 1.5 * term, 1e-13 * term);
    EXPECT_NEAR(PH0PH0(1, 2, 0, t, 1.0), 0.75 * term, 1e-13 * term);
    EXPECT_NEAR(PH0PH0(1, 3, 0, t, 1.0), -0.375 * term, 1e-13 * term);
}

TEST(IdealGas, EnergyWithoutDensityIsZero) {
    useFamily(families[0]);
    EXPECT_EQ(PHI0(0, 0, 320.0, 0.0, pure()), 0.0);
    EXPECT_EQ(PHI0(0, 0, 320.0, -1.0, pure()), 0.0);
    EXPECT_NE(PHI0(0, 0, 320.0, 1e-9, pure()), 0.0);
}

TEST(IdealGas, OtherTagsGiveZeroForAllFunctions) {
    useFamily(families[0]);
    modelTags.HMODCP[1] = "NBS";
    EXPECT_EQ(CP0K(1, 300.0), 0.0);
    EXPECT_EQ(CP0(300.0, pure()), 0.0);
    EXPECT_EQ(CPI(350.0, pure()), 0.0);
    EXPECT_EQ(CPT(350.0, pure()), 0.0);
    EXPECT_EQ(PHI0K(1, 0, 0, 350.0, 1.0), 0.0);
    EXPECT_EQ(PHI0(2, 0, 350.0, 1.0, pure()), 0.0);
}

TEST(IdealGas, ComponentOfFractionZeroIsLeftOut) {
    ASSERT_TRUE(loadFluid("R32", "", 1, 2));
    ASSERT_TRUE(loadFluid("R125", "", 2, 2));
    Composition x{};
    x[1] = 1.0 - 1e-11;  // not pure, and the second one counts as absent
    x[2] = 1e-11;
    const double value = PHI0(0, 0, 300.0, 1.0, x);
    EXPECT_TRUE(std::isfinite(value));
    EXPECT_NEAR(value, PHI0K(1, 0, 0, 300.0, 1.0), 1e-9);
    x[1] = 0.6;
    x[2] = 0.4;
    EXPECT_NEAR(
        PHI0(0, 0, 300.0, 1.0, x),
        0.6 * PHI0K(1, 0, 0, 300.0, 1.0) + 0.4 * PHI0K(2, 0, 0, 300.0, 1.0) + 0.6 * std::log(0.6) + 0.4 * std::log(0.4),
        1e-13);
    EXPECT_NEAR(PHI0(2, 0, 300.0, 1.0, x), 0.6 * PHI0K(1, 2, 0, 300.0, 1.0) + 0.4 * PHI0K(2, 2, 0, 300.0, 1.0), 1e-13);
}

TEST(IdealGas, DensityDerivativesAndMixedOrders) {
    for (const bool energyCorrelation : {false, true}) {
        if (energyCorrelation)
            emptyPh0();
        else
            useFamily(families[0]);
        EXPECT_EQ(PHI0K(1, 0, 1, 300.0, 1.0), 1.0);
        EXPECT_EQ(PHI0K(1, 0, 2, 300.0, 1.0), -1.0);
        EXPECT_EQ(PHI0K(1, 0, 3, 300.0, 1.0), 2.0);
        EXPECT_EQ(PHI0K(1, 1, 1, 300.0, 1.0), 0.0);
        EXPECT_EQ(PHI0K(1, 2, 3, 300.0, 1.0), 0.0);
        EXPECT_EQ(PHI0K(1, 4, 0, 300.0, 1.0), 0.0);
        EXPECT_EQ(PHI0K(1, 0, 4, 300.0, 1.0), 0.0);
    }
}

TEST(IdealGas, EveryFamilyOfTheEnergyCorrelationHoldsItsDerivatives) {
    constexpr double b[] = {0.7, 1.4, -2.0, 0.9, 1.1};
    for (int family = 0; family < 5; ++family) {
        Ph0Slot& f = emptyPh0();
        int* const counts[] = {&f.NLOGP, &f.NTAUP, &f.NEXPP, &f.NCOSHP, &f.NSINHP};
        *counts[family] = 1;
        f.AIPH[1] = 1.7;
        f.TIPH[1] = b[family];
        for (int order = 1; order <= 3; ++order) {
            const auto below = [order](double tau) {
                return PH0PH0(1, order - 1, 0, 400.0 / tau, 1.0) / std::pow(tau, order - 1);
            };
            for (const double tau : {0.6, 1.3, 2.2}) {
                const double expected = std::pow(tau, order) * slope(below, tau, tau * 1e-3);
                EXPECT_NEAR(PH0PH0(1, order, 0, 400.0 / tau, 1.0), expected, 1e-9 + 1e-8 * std::fabs(expected))
                    << "family " << family << " order " << order;
            }
        }
        EXPECT_NEAR(PH0PH0(1, 0, 0, 300.0, 2.0) - PH0PH0(1, 0, 0, 300.0, 1.0), std::log(2.0), 1e-14);
    }
}

TEST(IdealGas, LargeHyperbolicArgumentsStayFinite) {
    Ph0Slot& f = emptyPh0();
    f.NCOSHP = f.NSINHP = 1;
    f.AIPH[1] = f.AIPH[2] = 1.0;
    f.TIPH[1] = f.TIPH[2] = 800.0;
    EXPECT_EQ(PH0PH0(1, 0, 0, 400.0, 5.0), 1400.0);
    EXPECT_EQ(PH0PH0(1, 2, 0, 400.0, 5.0), 0.0);
    EXPECT_EQ(PH0PH0(1, 3, 0, 400.0, 5.0), 0.0);
}

TEST(IdealGas, TagOfTheSecondGasConstantMultipliesEveryOrder) {
    Ph0Slot& f = emptyPh0();
    f.NTAUP = 1;
    f.AIPH[1] = 1.7;
    f.TIPH[1] = 1.4;
    for (const Text3 tag : {Text3("PHG")}) {
        for (int order = 0; order <= 3; ++order) {
            modelTags.HMODCP[1] = "PH0";
            const double plain = PH0PH0(1, order, 0, 310.0, 2.0);
            modelTags.HMODCP[1] = tag;
            EXPECT_DOUBLE_EQ(PH0PH0(1, order, 0, 310.0, 2.0), plain * 1.0000045703443345) << order;
        }
    }
}

TEST(IdealGas, SavedValuesBelongToTheirState) {
    Ph0Slot& f = emptyPh0();
    f.NTAUP = 1;
    f.AIPH[1] = 1.7;
    f.TIPH[1] = 1.4;
    const double value = PH0PH0(1, 0, 0, 310.0, 2.0);
    EXPECT_EQ(PH0PH0(1, 0, 0, 310.0 + 5e-9, 2.0 + 5e-11), value);
    EXPECT_NE(PH0PH0(1, 0, 0, 310.0 + 2e-8, 2.0), value);
    PH0PH0(1, 0, 0, 310.0, 2.0);
    EXPECT_NE(PH0PH0(1, 0, 0, 310.0, 2.0 + 2e-10), value);

    useFamily(families[0]);
    const double energy = PH0CPP(1, 1, 0, 310.0, 2.0);
    cppTerms[1].CPC0[1] = 2.6;
    EXPECT_EQ(PH0CPP(1, 1, 0, 310.0, 2.0), energy) << "the saved integral serves at the same temperature";
    cppTerms[1].TSVCP0 = 0.0;
    EXPECT_NE(PH0CPP(1, 1, 0, 310.0, 2.0), energy);
}

TEST(IdealGas, IntegralsFollowANewReferenceTemperature) {
    useFamily(families[0]);
    const double from300 = CPICPP(1, 500.0);
    referenceState.TREF[1] = 400.0;
    const double from400 = CPICPP(1, 500.0);
    referenceState.TREF[1] = 300.0;
    EXPECT_NEAR(from300 - from400, CPICPP(1, 400.0), 1e-9 * from300);
    EXPECT_EQ(CPICPP(1, 500.0), from300);
}

// Both ideal-gas blocks of a file describe the same gas: heat capacity within 1e-7 from the lower limit up.
class IdealGasOfFluid : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(AllFluids, IdealGasOfFluid, testing::ValuesIn(pureFluids), fluidName);

TEST_P(IdealGasOfFluid, BothCorrelationsGiveOneHeatCapacity) {
    ASSERT_TRUE(loadFluid(GetParam()));
    const double tmin = fluidConstants.TMEOS[1], tmax = fluidConstants.TXEOS[1];
    double first[20];
    for (int i = 0; i < 20; ++i) {
        first[i] = CP0K(1, tmin + (tmax - tmin) * i / 19.0);
        EXPECT_GT(first[i], 2.0 * fluidConstants.R);
    }
    if (!loadFluid(GetParam(), "PH0")) return;  // a single correlation
    Worst worst;
    for (int i = 0; i < 20; ++i) {
        const double t = tmin + (tmax - tmin) * i / 19.0;
        worst.see(relative(CP0K(1, t), first[i]), std::to_string(t));
    }
    EXPECT_LT(worst.deviation, 1e-7) << worst.where;
}

TEST(IdealGas, ReadersWithoutAUnitReport) {
    int ierr = 0;
    Text255 herr;
    SETCPP(0, 1, "", ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_TRUE(herr == "[SETCPP error] Fluid input not found");
    SETPH0(-1, 1, "", ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_TRUE(herr == "[SETPH0 error] Block data option not implemented");
    SETPH0(0, 1, "", ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_TRUE(herr == "[SETPH0 error] Input fluid (block data) not found");
}

// Orders that there are none of are told by the trace alone; two orders at once have no derivative.
TEST(IdealGas, UnknownOrdersOfTheHelmholtzFormAreTold) {
    modelTags.NC = 1;
    ph0Terms[1] = Ph0Slot{};
    fluidConstants.TZ[1] = 300.0;
    fluidConstants.RHOZ[1] = 5.0;
    modelTags.IPRINTERR = 1;
    testing::internal::CaptureStdout();
    EXPECT_EQ(PH0PH0(1, 4, 0, 280.0, 1.0), 0.0);
    EXPECT_EQ(PH0PH0(1, 0, 4, 280.0, 1.0), 0.0);
    EXPECT_EQ(PH0PH0(1, -1, 0, 280.0, 1.0), 0.0);
    EXPECT_EQ(PH0PH0(1, 1, 1, 280.0, 1.0), 0.0);
    EXPECT_EQ(PH0PH0(1, 0, 0, 0.0, 1.0), 0.0);
    std::fflush(stdout);
    modelTags.IPRINTERR = 0;
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "[PH0PH0 warning] invalid input; itau =   4; idel =   0 (ierr=  99)\n"
              "[PH0PH0 warning] invalid input; itau =   0; idel =   4 (ierr=  99)\n"
              "[PH0PH0 warning] invalid input; itau =  -1; idel =   0 (ierr=  99)\n");
}

}  // namespace
}  // namespace frigana::test
