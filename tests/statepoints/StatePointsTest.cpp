#include <gtest/gtest.h>
#ifdef __linux__
#include <sys/inotify.h>
#include <unistd.h>
#endif

#include <chrono>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "23_SpecificPoints.h"
#include "24_SaturationPoints.h"
#include "25_SubCoolSupHeat.h"
#include "26_SaturatTempDrop.h"
#include "27_PSatAverage.h"
#include "28_IsentropProcess.h"
#include "FluidConstants.h"
#include "Larger.h"
#include "Substances.h"
#include "TRNSP.h"
#include "TemporaryFolder.h"

namespace frigana::test {
namespace {

constexpr const char* pureFluids[] = {"R134A.FLD", "R32.FLD", "PROPANE.FLD", "AMMONIA.FLD", "R1234YF.FLD", "CO2.FLD"};

// Reduced temperatures of a subcooled liquid, a superheated vapor and a two-phase state.
double at(const SUBSTANCE& substance, double reduced) {
    return reduced * substance.TC;
}

// A liquid below the range of its viscosity has neither viscosity nor Prandtl number; its conductivity stays.
TEST(PropertyPoints, AColdLiquidWithoutAViscosityKeepsItsConductivity) {
    struct Row {
        const char* fluid;
        double cold, warm;  // below and above the limit of the correlation [K]
    };
    for (const Row& row : {Row{"R152A.FLD", 220.0, 245.0}, Row{"R1234YF.FLD", 210.0, 225.0}}) {
        SUBSTANCE& s = fluid(row.fluid);
        STATEPT point{};
        PROPSIMPLEPT(s, 500.0, row.cold, point);
        EXPECT_EQ(point.ETA, missingValue) << row.fluid;
        EXPECT_EQ(point.PR, missingValue) << row.fluid;
        EXPECT_GT(point.TCX, 0.05) << row.fluid;
        EXPECT_GT(point.CP, 1.0) << row.fluid;
        PROPSIMPLEPT(s, 500.0, row.warm, point);
        EXPECT_GT(point.ETA, 100.0) << row.fluid;
        EXPECT_GT(point.PR, 1.0) << row.fluid;
    }
}

// A warning of the transport models comes with values, but a point has none of them.
TEST(PropertyPoints, TransportWithAWarningIsMissing) {
    SUBSTANCE& s = fluid("R32.FLD");
    STATEPT point{};
    PROPSIMPLEPT(s, 1000.0, 320.0, point);
    ASSERT_GT(point.ETA, 0.0);
    const double highest = fluidConstants.TXECST[1];
    fluidConstants.TXECST[1] = 100.0;
    double eta = 0.0, tcx = 0.0;
    int ierr = 0;
    Text255 herr;
    TRNPRP(320.0, point.D / s.WM, s.ZMOL, eta, tcx, ierr, herr);
    EXPECT_LT(ierr, 0);
    EXPECT_GT(eta, 0.0);
    EXPECT_GT(tcx, 0.0);
    PROPSIMPLEPT(s, 1000.0, 320.0, point);
    EXPECT_EQ(point.ETA, missingValue);
    EXPECT_EQ(point.TCX, missingValue);
    EXPECT_EQ(point.PR, missingValue);
    EXPECT_NE(point.H, missingValue);
    fluidConstants.TXECST[1] = highest;
}

TEST(PropertyPoints, EveryPairOfInputsGivesTheSameState) {
    double worst = 0.0;
    for (const char* name : pureFluids) {
        SCOPED_TRACE(name);
        SUBSTANCE& s = fluid(name);
        STATEPT saturated{};
        PROPSIMPLETQ(s, at(s, 0.85), 0.0, saturated);
        for (double T : {at(s, 0.8), at(s, 0.95)}) {
            SCOPED_TRACE(T);
            STATEPT a{}, b{};
            PROPSIMPLEPT(s, saturated.P, T, a);
            ASSERT_NE(a.H, missingValue);
            const auto same = [&](const char* pair) {
                const double deviation = larger({std::fabs(b.T / a.T - 1), std::fabs(b.D / a.D - 1),
                                                 std::fabs(b.H - a.H) / 100, std::fabs(b.S - a.S)});
                worst = larger(worst, deviation);
                EXPECT_LT(deviation, 1e-7) << pair;
            };
            PROPSIMPLEPH(s, a.P, a.H, b), same("PH");
            PROPSIMPLEPS(s, a.P, a.S, b), same("PS");
            PROPSIMPLEPD(s, a.P, a.D, b), same("PD");
            PROPSIMPLETD(s, a.T, a.D, b), same("TD");
            if (T > at(s, 0.9)) PROPSIMPLETH(s, a.T, a.H, b), same("TH");
        }
        // Two-phase: quality by mass.
        STATEPT a{}, b{};
        PROPSIMPLEPQ(s, saturated.P, 0.3, a);
        PROPSIMPLETQ(s, at(s, 0.85), 0.3, b);
        EXPECT_NEAR(a.H, b.H, 1e-5 * std::fabs(a.H));
        PROPSIMPLEPH(s, saturated.P, a.H, b);
        EXPECT_NEAR(b.Q, 0.3, 1e-7);
    }
    std::printf("worst deviation of a state from its pairs of inputs: %.1e\n", worst);
}

TEST(PropertyPoints, PhysicsOfAState) {
    for (const char* name : pureFluids) {
        SCOPED_TRACE(name);
        SUBSTANCE& s = fluid(name);
        STATEPT p{};
        PROPSIMPLEPT(s, 100.0, at(s, 0.95), p);
        EXPECT_NEAR(p.U + p.P * p.V, p.H, 1e-9 * std::fabs(p.H) + 1e-9);
        EXPECT_NEAR(p.V * p.D, 1.0, 1e-14);
        EXPECT_GT(p.CP, p.CV);
        EXPECT_GT(p.W, 100.0);
    }
}

// In the units of the application: the heat capacities are slopes of the enthalpy and of the energy.
TEST(PropertyPoints, HeatCapacitiesAreSlopes) {
    for (const char* name : {"R134A.FLD", "CO2.FLD", "R410A.MIX"}) {
        SCOPED_TRACE(name);
        SUBSTANCE& s = fluid(name);
        const double T = 290.0, step = 0.01;
        for (const double P : {100.0, 9000.0}) {
            STATEPT p{}, warmer{}, colder{};
            PROPSIMPLEPT(s, P, T, p);
            PROPSIMPLEPT(s, P, T + step, warmer);
            PROPSIMPLEPT(s, P, T - step, colder);
            EXPECT_NEAR((warmer.H - colder.H) / (2.0 * step), p.CP, 1e-5 * p.CP);
            PROPSIMPLETD(s, T + step, p.D, warmer);
            PROPSIMPLETD(s, T - step, p.D, colder);
            EXPECT_NEAR((warmer.U - colder.U) / (2.0 * step), p.CV, 1e-5 * p.CV);
        }
    }
}

// ---- edge cases of the property points ------------------------------------------------------------------------------

TEST(PropertyPointEdges, OnePhasePointsOfPressureAndTemperatureHaveQualityZeroOrOne) {
    SUBSTANCE& s = fluid("R134A.FLD");
    STATEPT p{};
    PROPSIMPLEPT(s, 500.0, 350.0, p);
    EXPECT_EQ(p.Q, 1.0);
    PROPSIMPLEPT(s, 1000.0, 280.0, p);
    EXPECT_EQ(p.Q, 0.0);
    PROPSIMPLEPT(s, 6000.0, 400.0, p);
    EXPECT_EQ(p.Q, 1.0);
}

TEST(PropertyPointEdges, AStateWithoutDensityLeavesTheVolumeAlone) {
    SUBSTANCE& s = fluid("R134A.FLD");
    STATEPT p{};
    p.V = 42.0;
    PROPSIMPLEPT(s, 0.0, 300.0, p);
    ASSERT_NE(p.H, missingValue);
    EXPECT_EQ(p.D, 0.0);
    EXPECT_EQ(p.V, 42.0);
}

TEST(PropertyPointEdges, SaturatedPhasesHaveHeatCapacitiesAndATwoPhaseStateHasNot) {
    SUBSTANCE& s = fluid("R134A.FLD");
    STATEPT p{};
    for (double Q : {0.0, 1.0}) {
        PROPSIMPLETQ(s, 300.0, Q, p);
        EXPECT_GT(p.CP, 0.0);
        EXPECT_GT(p.CV, 0.0);
        EXPECT_GT(p.W, 0.0);
        EXPECT_EQ(p.Q, Q);
    }
    PROPSIMPLETQ(s, 300.0, 0.5, p);
    for (double value : {p.CP, p.CV, p.W, p.TCX, p.ETA, p.PR}) EXPECT_EQ(value, missingValue);
    EXPECT_EQ(p.Q, 0.5);
}

TEST(PropertyPointEdges, OnlySaturatedAndTwoPhaseStatesHaveASurfaceTension) {
    SUBSTANCE& s = fluid("R134A.FLD");
    STATEPT liquid{}, vapor{}, half{}, p{};
    PROPSIMPLETQ(s, 300.0, 0.0, liquid);
    PROPSIMPLETQ(s, 300.0, 1.0, vapor);
    PROPSIMPLETQ(s, 300.0, 0.5, half);
    EXPECT_GT(liquid.STN, 0.0);
    EXPECT_EQ(vapor.STN, liquid.STN);
    EXPECT_EQ(half.STN, liquid.STN);
    for (double P : {500.0, 1000.0}) {  // a vapour and a liquid below the critical temperature
        PROPSIMPLEPT(s, P, 300.0, p);
        ASSERT_NE(p.H, missingValue);
        EXPECT_EQ(p.STN, missingValue);
        STATEPT again{};
        PROPSIMPLEPH(s, P, p.H, again);
        EXPECT_EQ(again.STN, missingValue);
        PROPSIMPLETD(s, 300.0, p.D, again);
        EXPECT_EQ(again.STN, missingValue);
    }
}

TEST(PropertyPointEdges, AFailedPointShowsWhatWasAskedFor) {
    SUBSTANCE& s = fluid("R134A.FLD");
    STATEPT p{};
    PROPSIMPLEPT(s, 1000.0, 900.0, p);
    EXPECT_EQ(p.P, 1000.0);
    EXPECT_EQ(p.T, 900.0);
    EXPECT_GT(p.IERR, 0);
    EXPECT_FALSE(p.HERR.blank());
    for (double value : {p.D, p.V, p.U, p.H, p.S, p.CV, p.CP, p.W, p.Q, p.TCX, p.ETA, p.PR, p.STN})
        EXPECT_EQ(value, missingValue);
    PROPSIMPLEPH(s, 1000.0, 1e6, p);
    EXPECT_EQ(p.P, 1000.0);
    EXPECT_EQ(p.H, 1e6);
    EXPECT_EQ(p.T, missingValue);
}

TEST(PropertyPointEdges, AWarningOfTheEngineIsASuccess) {
    SUBSTANCE& s = fluid("R134A.FLD");
    STATEPT p{};
    PROPSIMPLEPT(s, 100.0, 470.0, p);  // above the upper temperature limit of 455 K, below 1.5 times it
    EXPECT_GT(p.H, 0.0);
}

TEST(PropertyPoints, ThePrandtlNumberFollowsFromItsPartsAndIsMissingWithOneOfThem) {
    for (const char* name : pureFluids) {
        SCOPED_TRACE(name);
        SUBSTANCE& s = fluid(name);
        STATEPT p{};
        for (const double T : {at(s, 0.75), at(s, 0.95)}) {
            PROPSIMPLEPT(s, 0.4 * s.PC, T, p);
            ASSERT_GT(p.TCX, 0.0);
            ASSERT_GT(p.ETA, 0.0);
            ASSERT_GT(p.CP, 0.0);
            EXPECT_DOUBLE_EQ(p.PR, p.ETA * p.CP / p.TCX * 0.0010000000474974513);
        }
        PROPSIMPLETQ(s, at(s, 0.8), 0.5, p);
        EXPECT_EQ(p.PR, missingValue);
    }
}

TEST(PropertyPointEdges, TheTraceOfAnIsentropicStepIsGoneAndNeedsNoFolder) {
    SUBSTANCE& s = fluid("R134A.FLD");
    const auto before = std::filesystem::current_path();
    TemporaryFolder folder;
    std::filesystem::current_path(folder.path());
    STATEPT p{};
    PROPSIMPLEPS(s, 1000.0, 1.8, p);
    EXPECT_GT(p.H, 0.0);
    EXPECT_FALSE(std::filesystem::exists("cycle_1.txt"));
#ifndef _WIN32
    // That it was there is seen by the time of the folder, which not every system lets a program set.
    const auto past = std::filesystem::last_write_time(folder.path()) - std::chrono::hours(1);
    std::filesystem::last_write_time(folder.path(), past);
    PROPSIMPLEPS(s, 1000.0, 1.8, p);
    EXPECT_NE(std::filesystem::last_write_time(folder.path()), past);
#endif
    // A file of that name is not ours.
    writeFile("cycle_1.txt", "of the user");
    PROPSIMPLEPS(s, 1000.0, 1.8, p);
    EXPECT_EQ(readFile("cycle_1.txt"), "of the user");
    std::filesystem::remove("cycle_1.txt");
    // A folder of that name is one way in which the file cannot be written, whoever runs the test.
    std::filesystem::create_directory("cycle_1.txt");
    p = {};
    PROPSIMPLEPS(s, 1000.0, 1.8, p);
    EXPECT_GT(p.H, 0.0);
    EXPECT_TRUE(std::filesystem::is_directory("cycle_1.txt"));
    std::filesystem::current_path(before);
}

#ifdef __linux__
// What the system tells of a folder: the names that were made and removed in it since it was asked to watch.
std::vector<std::string> changesOf(int watch) {
    std::vector<std::string> changes;
    alignas(inotify_event) char bytes[4096];
    const long count = read(watch, bytes, sizeof bytes);
    for (long at = 0; at < count;) {
        inotify_event event;
        std::memcpy(&event, bytes + at, sizeof event);
        const char* name = bytes + at + sizeof event;
        changes.push_back((event.mask & IN_CREATE ? "made " : "removed ") + std::string(name));
        at += static_cast<long>(sizeof event + event.len);
    }
    return changes;
}

TEST(PropertyPointEdges, TheTraceOfAnIsentropicStepIsWrittenAndRemoved) {
    SUBSTANCE& s = fluid("R134A.FLD");
    const auto before = std::filesystem::current_path();
    TemporaryFolder folder;
    std::filesystem::current_path(folder.path());
    const int watch = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    ASSERT_GE(inotify_add_watch(watch, folder.path().c_str(), IN_CREATE | IN_DELETE), 0);
    STATEPT p{};
    PROPSIMPLEPS(s, 1000.0, 1.8, p);
    EXPECT_EQ(changesOf(watch), (std::vector<std::string>{"made cycle_1.txt", "removed cycle_1.txt"}));
    PROPSIMPLEPS(s, 1000.0, 1e6, p);  // a point that failed leaves none
    PROPSIMPLEPH(s, 1000.0, 420.0, p);
    EXPECT_TRUE(changesOf(watch).empty());
    close(watch);
    std::filesystem::current_path(before);
}
#endif

// ---- bubble and dew points ------------------------------------------------------------------------------------------

TEST(BubbleAndDewEdges, PureFluidsHaveOnePairWhicheverWayItIsAsked) {
    for (const char* name : pureFluids) {
        SCOPED_TRACE(name);
        SUBSTANCE& s = fluid(name);
        STATEPT l1{}, v1{}, l2{}, v2{};
        PROPMIXTUREP_BD(s, 0.2 * s.PC, 1, l1, v1);
        PROPMIXTUREP_EQ(s, 0.2 * s.PC, 1, l2, v2);
        EXPECT_EQ(l1.H, l2.H);
        EXPECT_EQ(v1.H, v2.H);
        EXPECT_NEAR(l1.T, v1.T, 1e-9);
        PROPMIXTURET_BD(s, 0.8 * s.TC, 1, l1, v1);
        PROPMIXTURET_EQ(s, 0.8 * s.TC, 2, l2, v2);
        EXPECT_EQ(l1.S, l2.S);
        EXPECT_EQ(v1.S, v2.S);
        EXPECT_NEAR(l1.P, v1.P, 1e-9 * l1.P);
    }
}

TEST(BubbleAndDew, DomePointsAreThoseOfTheFullRoutines) {
    for (const char* name : pureFluids) {
        SCOPED_TRACE(name);
        SUBSTANCE& s = fluid(name);
        STATEPT l1{}, v1{}, l2{}, v2{};
        PROPMIXTUREP_BD_DOME(s, 0.3 * s.PC, l1, v1);
        PROPMIXTUREP_BD(s, 0.3 * s.PC, 1, l2, v2);
        EXPECT_NEAR(l1.T, l2.T, 1e-9);
        EXPECT_NEAR(l1.H, l2.H, 1e-8 * std::fabs(l2.H) + 1e-8);
        EXPECT_NEAR(v1.S, v2.S, 1e-8);
        PROPMIXTURET_BD_DOME(s, 0.85 * s.TC, l1, v1);
        PROPMIXTURET_BD(s, 0.85 * s.TC, 1, l2, v2);
        EXPECT_NEAR(l1.P, l2.P, 1e-9 * l2.P);
        EXPECT_NEAR(v1.H, v2.H, 1e-8 * std::fabs(v2.H));
    }
}

// ---- subcooling, superheat, drops -----------------------------------------------------------------------------------

TEST(SubcoolingEdges, AboveTheBubbleTemperatureThereIsNoSubcooling) {
    SUBSTANCE& s = fluid("R134A.FLD");
    double bubble = 0, value = -1;
    SATTEMP_P(s, 1000.0, bubbleSide, bubble);
    SUBCOOLDEGREE_TIN(s, 1000.0, bubble + 5.0, value);
    EXPECT_EQ(value, 0.0);
    SUBCOOLDEGREE_TIN(s, 1000.0, bubble - 5.0, value);
    EXPECT_NEAR(value, 5.0, 1e-9);
    SUPHEATDEGREE_TIN(s, 1000.0, bubble - 5.0, value);
    EXPECT_EQ(value, 0.0);
    SUPHEATDEGREE_TIN(s, 1000.0, bubble + 5.0, value);  // a pure fluid: the dew point is the bubble point
    EXPECT_NEAR(value, 5.0, 1e-9);
}

TEST(SubcoolingEdges, PartsOfAKelvinCount) {
    SUBSTANCE& s = fluid("R134A.FLD");
    double saturated = 0, value = -1;
    SATTEMP_P(s, 1000.0, bubbleSide, saturated);
    for (double part : {0.125, 0.5}) {
        SUBCOOLDEGREE_TIN(s, 1000.0, saturated - part, value);
        EXPECT_NEAR(value, part, 1e-9);
        SUPHEATDEGREE_TIN(s, 1000.0, saturated + part, value);
        EXPECT_NEAR(value, part, 1e-9);
    }
}

TEST(SubcoolingEdges, AGivenSubcoolingIsNotHeldBack) {
    SUBSTANCE& s = fluid("R134A.FLD");
    double bubble = 0, T = 0;
    SATTEMP_P(s, 1000.0, bubbleSide, bubble);
    SUBCOOLDEGREE_SUBC(s, 1000.0, -4.0, T);
    EXPECT_NEAR(T, bubble + 4.0, 1e-9);
    SUPHEATDEGREE_SUPH(s, 1000.0, -4.0, T);
    EXPECT_NEAR(T, bubble - 4.0, 1e-9);
}

TEST(SaturationDrop, PressureAndTemperatureInvertEachOther) {
    for (const char* name : pureFluids) {
        SCOPED_TRACE(name);
        SUBSTANCE& s = fluid(name);
        for (double DP : {10.0, -10.0}) {
            double DT = 0, back = 0;
            SATTEMPDROP_DP(s, 0.3 * s.PC, DP, dewSide, DT);
            EXPECT_GT(DT * DP, 0.0);
            SATTEMPDROP_DTSAT(s, 0.3 * s.PC, DT, dewSide, back);
            EXPECT_NEAR(back, DP, 1e-5);
        }
    }
}

TEST(SaturationDropEdges, AnExactZeroAsksNothingOfTheEngine) {
    SUBSTANCE& s = fluid("R134A.FLD");
    double value = -1;
    SATTEMPDROP_DP(s, 2.0 * s.PC, 0.0, dewSide, value);
    EXPECT_EQ(value, 0.0);
    value = -1;
    SATTEMPDROP_DTSAT(s, 2.0 * s.PC, 0.0, dewSide, value);
    EXPECT_EQ(value, 0.0);
    SATTEMPDROP_DP(s, 2.0 * s.PC, 1.0, dewSide, value);
    EXPECT_EQ(value, 0.0);  // -777 minus -777
}

// ---- mean saturation ------------------------------------------------------------------------------------------------

TEST(MeanSaturation, CondenserMeetsItsMeanTemperature) {
    for (const char* name : pureFluids) {
        SCOPED_TRACE(name);
        SUBSTANCE& s = fluid(name);
        const double T = at(s, 0.85);
        for (double DP : {0.0, 30.0}) {
            double P = 0, DT = 0, glide = 0, T2 = 0, DT2 = 0, glide2 = 0;
            STATEPT bub{}, dew{};
            PCOND_TDP(s, T, DP, P, DT, glide, bub, dew);
            EXPECT_NEAR((bub.T + dew.T) / 2, T, 0.001);
            EXPECT_NEAR(dew.P - bub.P, DP, 1e-9);
            EXPECT_NEAR(glide, dew.T - bub.T, 1e-12);
            TCOND_PDP(s, P, DP, T2, DT2, glide2, bub, dew);
            EXPECT_NEAR(T2, T, 0.001);
            EXPECT_NEAR(DT2, DT, 1e-9);
        }
    }
}

TEST(MeanSaturation, EvaporatorMeetsItsMeanTemperature) {
    for (const char* name : pureFluids) {
        SCOPED_TRACE(name);
        SUBSTANCE& s = fluid(name);
        STATEPT liquid{};
        PROPSIMPLETQ(s, at(s, 0.85), 0.0, liquid);
        const double T = at(s, 0.75);
        for (double DP : {0.0, 5.0}) {
            double P = 0, DT = 0, glide = 0;
            STATEPT bub{}, dew{}, inlet{}, outlet{};
            PEVAP_TDP(s, T, liquid.H, DP, P, DT, glide, bub, dew);
            PROPSIMPLEPH(s, P + DP / 2, liquid.H, inlet);
            PROPSIMPLEPQ(s, P - DP / 2, 1.0, outlet);
            EXPECT_NEAR((inlet.T + outlet.T) / 2, T, 0.001);
            EXPECT_NEAR(dew.P, P, 1e-9);
            EXPECT_NEAR(glide, dew.T - inlet.T, 1e-9);
        }
        double P = 0, DP = 0, glide = 0;
        STATEPT bub{}, dew{};
        PEVAP_TDT(s, T, liquid.H, 2.0, P, DP, glide, bub, dew);
        double DT = 0, T2 = 0;
        TEVAP_PDP(s, P, liquid.H, DP, T2, DT, glide, bub, dew);
        EXPECT_NEAR(DT, 2.0, 1e-5);
        EXPECT_NEAR(T2, T, 1e-5);
    }
}

TEST(MeanSaturation, SecondaryEvaporatorHasItsBubblePointAtTheInlet) {
    SUBSTANCE& s = fluid("CO2.FLD");
    double P = 0, DT = 0, glide = 0, DP = 0, T = 0;
    STATEPT bub{}, dew{};
    PEVAP_TDP_SEC(s, 250.0, 40.0, P, DT, glide, bub, dew);
    EXPECT_NEAR(bub.P, P + 20.0, 1e-9);
    EXPECT_NEAR(dew.P, P - 20.0, 1e-9);
    EXPECT_NEAR((bub.T + dew.T) / 2, 250.0, 0.001);
    EXPECT_NEAR(DT, bub.T - dew.T, 1e-9);
    PEVAP_TDT_SEC(s, 250.0, 1.0, P, DP, glide, bub, dew);
    EXPECT_NEAR(bub.T - dew.T, 1.0, 1e-9);
    TEVAP_PDT_SEC(s, P, 1.0, T, DP, glide, bub, dew);
    EXPECT_NEAR(T, 250.0, 0.01);
    TEVAP_PDP_SEC(s, P, DP, T, DT, glide, bub, dew);
    EXPECT_NEAR(DT, 1.0, 0.05);
}

TEST(MeanSaturationEdges, WithoutADropBubbleAndDewBelongToOnePressure) {
    SUBSTANCE& s = fluid("R134A.FLD");
    double P = 0, DT = -1, glide = -1;
    STATEPT bub{}, dew{};
    PCOND_TDP(s, 313.15, 0.0, P, DT, glide, bub, dew);
    EXPECT_EQ(bub.P, dew.P);
    EXPECT_EQ(DT, 0.0);
    EXPECT_NEAR(glide, 0.0, 1e-9);
    EXPECT_NEAR(bub.T, 313.15, 1e-6);
}

TEST(MeanSaturationEdges, AGivenDropOfSaturationTemperatureStaysAsGiven) {
    SUBSTANCE& s = fluid("R134A.FLD");
    double T = 0, DP = 0, glide = 0;
    const double DT = 1.5;
    STATEPT bub{}, dew{};
    TCOND_PDT(s, 1000.0, DT, T, DP, glide, bub, dew);
    EXPECT_GT(DP, 0.0);
    EXPECT_NEAR(glide, 1.5, 0.05);
}

// ---- isentropic processes -------------------------------------------------------------------------------------------

TEST(IsentropicEdges, AnEfficiencyOfOneKeepsTheEntropy) {
    for (const char* name : pureFluids) {
        SCOPED_TRACE(name);
        SUBSTANCE& s = fluid(name);
        STATEPT in{}, out{};
        PROPSIMPLEPT(s, 0.05 * s.PC, at(s, 0.95), in);
        COMPISOENTRO(s, 1.0, in, 0.2 * s.PC, out);
        // Two flashes, each to 1e-8 of its own input: entropy, then enthalpy.
        const double tolerance = 1e-8 * (std::fabs(in.S) + std::fabs(out.H) / out.T);
        EXPECT_NEAR(out.S, in.S, tolerance);
        EXPECT_GT(out.H, in.H);
        EXPAISOENTRO(s, 1.0, out, in.P, in);
        EXPECT_NEAR(in.S, out.S, tolerance);
    }
}

TEST(IsentropicEdges, HalfTheEfficiencyDoublesTheRiseOfEnthalpy) {
    SUBSTANCE& s = fluid("R134A.FLD");
    STATEPT in{}, ideal{}, out{};
    PROPSIMPLEPT(s, 200.0, 280.0, in);
    COMPISOENTRO(s, 1.0, in, 1000.0, ideal);
    COMPISOENTRO(s, 0.5, in, 1000.0, out);
    EXPECT_NEAR(out.H - in.H, 2.0 * (ideal.H - in.H), 1e-9);
    EXPAISOENTRO(s, 0.5, ideal, 200.0, out);
    EXPECT_NEAR(ideal.H - out.H, 0.5 * (ideal.H - in.H), 1e-7);
}

}  // namespace
}  // namespace frigana::test
