// Bubble and dew points of mixtures by substitution, and the estimates that they start from. The Newton solver is kept
// out by the switch that it uses itself.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "Larger.h"
#include "SAT_SUB_NEWTON.h"
#include "SETUP.h"
#include "Saturation.h"
#include "SaturationSpline.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

using namespace test;

// Sets a blend up; the code of SETMIX.
int setUpBlend(const std::string& name, Composition& x) {
    setPath();
    FileNames files{};
    Text3 reference = "DEF";
    int nc, ierr;
    Text255 herr;
    SETMIX(Text255((name + ".MIX").c_str()), "HMX.BNC", reference, nc, files, x, ierr, herr);
    return ierr;
}

// Keeps SATTP out for the length of a test, and the memo empty at its beginning.
class Substitution : public ::testing::Test {
  protected:
    void SetUp() override { RESETA(); }
    Saturated satt(double T, int kph, const Composition& x) const {
        Saturated s;
        s.T = T;
        solveSATT(method_, T, x, kph, s.p, s.rhol, s.rhov, s.xliq, s.xvap, s.ierr, s.herr);
        return s;
    }
    Saturated satp(double p, int kph, const Composition& x) const {
        Saturated s;
        s.p = p;
        solveSATP(method_, p, x, kph, s.T, s.rhol, s.rhov, s.xliq, s.xvap, s.ierr, s.herr);
        return s;
    }

    Method method_ = Method::substitution;

    Composition x_{};
};

// Bubble and dew points of the blends of the reference (tests/reference/README.md): pressure within 1e-5, temperature
// within 1e-3 K, to which the search ends at residuals of 1e-8 and 1e-6.
TEST_F(Substitution, AgreesWithTheReferenceOfBlends) {
    std::ifstream file(std::string(test::testsFolder) + "/reference/blend_saturation.csv");
    std::string line, blend;
    std::getline(file, line);
    int rows = 0;
    Largest p, T;
    while (std::getline(file, line)) {
        std::istringstream fields(line);
        std::vector<std::string> field;
        for (std::string entry; std::getline(fields, entry, ',');) field.push_back(entry);
        if (field[0] != blend) {
            blend = field[0];
            ASSERT_LE(setUpBlend(blend, x_), 0) << blend;
        }
        SCOPED_TRACE(line.substr(0, 60));
        const double bubbleT = std::stod(field[3]), bubbleP = std::stod(field[4]);
        const double dewT = std::stod(field[6]), dewP = std::stod(field[7]);
        const bool atTemperature = field[2] == "T";
        const Saturated b = atTemperature ? satt(bubbleT, bubble, x_) : satp(bubbleP, bubble, x_);
        const Saturated d = atTemperature ? satt(dewT, dew, x_) : satp(dewP, dew, x_);
        ASSERT_EQ(b.ierr, 0) << b.text();
        ASSERT_EQ(d.ierr, 0) << d.text();
        if (atTemperature) {
            EXPECT_NEAR(b.p / bubbleP, 1.0, 1e-5);
            EXPECT_NEAR(d.p / dewP, 1.0, 1e-5);
            p.take(larger(deviation(b.p, bubbleP), deviation(d.p, dewP)), bubbleT);
        } else {
            EXPECT_NEAR(b.T, bubbleT, 1e-3);
            EXPECT_NEAR(d.T, dewT, 1e-3);
            T.take(larger(std::fabs(b.T - bubbleT), std::fabs(d.T - dewT)), bubbleT);
        }
        ++rows;
    }
    EXPECT_GT(rows, 100);
    std::printf("substitution, %d rows of blends: largest deviation p %.1e, T %.1e K\n", rows, p.value, T.value);
}

// Fugacities of every component are equal in both phases, and the phases are at one pressure. The composition of the
// incipient phase takes one more step of up to 1e-8 after its density, which a cold liquid feels in the pressure.
TEST_F(Substitution, PhasesAreInEquilibrium) {
    for (const char* blend : {"R407C", "R410A", "R448A"}) {
        SCOPED_TRACE(blend);
        ASSERT_LE(setUpBlend(blend, x_), 0);
        for (const double T : {220.0, 260.0, 300.0, 330.0}) {
            for (const int kph : {bubble, dew}) {
                SCOPED_TRACE(T);
                const Saturated s = satt(T, kph, x_);
                ASSERT_EQ(s.ierr, 0) << s.text();
                EXPECT_NEAR(pressure(T, s.rhol, s.xliq) / s.p, 1.0, kph == bubble ? 1e-7 : 5e-5);
                EXPECT_NEAR(pressure(T, s.rhov, s.xvap) / s.p, 1.0, 1e-7);
                Composition fl, fv;
                int ierr;
                Text255 herr;
                FGCTY2(T, s.rhol, s.xliq, fl, ierr, herr);
                FGCTY2(T, s.rhov, s.xvap, fv, ierr, herr);
                double liquid = 0.0, vapor = 0.0;
                for (int i = 1; i <= modelTags.NC; ++i) {
                    EXPECT_NEAR(fl[i] / fv[i], 1.0, 1e-6);
                    EXPECT_EQ(kph == bubble ? s.xliq[i] : s.xvap[i], x_[i]);
                    liquid += s.xliq[i];
                    vapor += s.xvap[i];
                }
                EXPECT_NEAR(liquid, 1.0, 1e-12);
                EXPECT_NEAR(vapor, 1.0, 1e-12);
            }
        }
    }
}

TEST_F(Substitution, TemperatureAndPressureInvertOneAnother) {
    ASSERT_LE(setUpBlend("R407C", x_), 0);
    for (const double T : {230.0, 270.0, 310.0, 340.0}) {
        for (const int kph : {bubble, dew}) {
            const Saturated s = satt(T, kph, x_);
            ASSERT_EQ(s.ierr, 0) << s.text();
            const Saturated back = satp(s.p, kph, x_);
            ASSERT_EQ(back.ierr, 0) << back.text();
            EXPECT_NEAR(back.T, T, 1e-4);
        }
    }
}

TEST_F(Substitution, NewtonSolverFindsTheSamePoints) {
    ASSERT_LE(setUpBlend("R407C", x_), 0);
    for (const double T : {230.0, 280.0, 330.0}) {
        for (const int kph : {bubble, dew}) {
            SCOPED_TRACE(T);
            method_ = Method::substitution;
            const Saturated substituted = satt(T, kph, x_);
            saturationMemo = {};
            method_ = Method::newton;
            const Saturated newton = satt(T, kph, x_);
            ASSERT_EQ(substituted.ierr, 0);
            ASSERT_EQ(newton.ierr, 0);
            EXPECT_NEAR(newton.p / substituted.p, 1.0, 1e-7);
            EXPECT_NEAR(newton.rhol / substituted.rhol, 1.0, 1e-7);
            EXPECT_NEAR(newton.rhov / substituted.rhov, 1.0, 1e-7);
        }
    }
}

// It iterates, and ends in 128 or, as the trivial solution above the critical temperature, in 121.
TEST_F(Substitution, MixtureAboveItsCriticalTemperatureIsNotRefusedAtOnce) {
    ASSERT_LE(setUpBlend("R407C", x_), 0);
    double Tc, pc, Dc;
    int ierr;
    Text255 herr;
    CRITP(x_, Tc, pc, Dc, ierr, herr);
    ASSERT_LE(ierr, 0);
    for (const Method method : {Method::newton, Method::substitution}) {
        method_ = method;
        for (const double above : {1.0, 20.0}) {
            for (const int kph : {bubble, dew}) {
                SCOPED_TRACE(::testing::Message() << above << " K above, kph " << kph);
                const Saturated s = satt(Tc + above, kph, x_);
                EXPECT_TRUE(s.ierr == 128 || s.ierr == 121) << s.ierr << s.text();
                EXPECT_EQ(s.p, pc);
                EXPECT_EQ(s.rhol, Dc);
                EXPECT_EQ(s.rhov, Dc);
                if (s.ierr == 128) {
                    EXPECT_TRUE(
                        s.text().starts_with("[SATT error 128] iteration for saturation state did not converge; T ="));
                }
            }
        }
    }
}

TEST_F(Substitution, NegativeTemperatureStartsFromTheArguments) {
    ASSERT_LE(setUpBlend("R407C", x_), 0);
    const Saturated reference = satt(300.0, bubble, x_);
    ASSERT_EQ(reference.ierr, 0);
    Saturated s = reference;
    s.p *= 1.01;
    solveSATT(method_, -300.0, x_, bubble, s.p, s.rhol, s.rhov, s.xliq, s.xvap, s.ierr, s.herr);
    EXPECT_EQ(s.ierr, 0) << s.text();
    EXPECT_NEAR(s.p / reference.p, 1.0, 1e-7);
}

TEST_F(Substitution, MemoTellsCompositionsApart) {
    ASSERT_LE(setUpBlend("R407C", x_), 0);
    ASSERT_EQ(satt(300.0, bubble, x_).ierr, 0);
    saturationMemo.atT.result = 123.456;
    EXPECT_EQ(satt(300.0, bubble, x_).p, 123.456);
    Composition other = x_;
    other[1] += 1e-8;
    other[2] -= 1e-8;
    EXPECT_NE(satt(300.0, bubble, other).p, 123.456);
}

TEST_F(Substitution, ResultsMayShareTheArrayOfTheComposition) {
    ASSERT_LE(setUpBlend("R407C", x_), 0);
    const Saturated apart = satt(290.0, dew, x_);
    saturationMemo = {};
    Composition shared = x_, vapor;
    double p, rhol, rhov;
    int ierr;
    Text255 herr;
    solveSATT(method_, 290.0, shared, dew, p, rhol, rhov, shared, vapor, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(p, apart.p);
    for (int i = 1; i <= modelTags.NC; ++i) EXPECT_EQ(shared[i], apart.xliq[i]);
}

// The inverse routines for a blend, plainly and with the envelope in splines. Energy is left out: the residual of the
// mixture solver stands in the place of its maximum.
TEST_F(Substitution, InverseRoutinesLeadBackToTheStateOfABlend) {
    method_ = Method::newton;
    ASSERT_LE(setUpBlend("R407C", x_), 0);
    for (const bool withSplines : {false, true}) {
        if (withSplines) {
            int ierr;
            Text255 herr;
            SATSPLN(x_, ierr, herr);
            ASSERT_EQ(ierr, 0);
            RESETA();
        }
        for (const double T : {240.0, 280.0, 320.0, 350.0}) {
            for (const int line : {bubble, dew}) {
                SCOPED_TRACE(::testing::Message() << T << " K, line " << line << ", splines " << withSplines);
                const Saturated s = satt(T, line, x_);
                ASSERT_EQ(s.ierr, 0) << s.text();
                const double rho = line == bubble ? s.rhol : s.rhov;
                const ByDensity d = satd(rho, 0, x_);
                EXPECT_EQ(d.ierr, 0) << d.text();
                EXPECT_EQ(d.line, line);
                EXPECT_NEAR(d.T, T, 1e-4);
                const auto closest = [T](const Roots& roots) {
                    double best = 1e9;
                    for (std::size_t r = 0; r < static_cast<std::size_t>(roots.count); ++r)
                        best = std::min(best, std::fabs(roots.T[r] - T));
                    return best;
                };
                EXPECT_LT(closest(sath(enthalpy(T, rho, x_), line, x_)), 1e-4);
                EXPECT_LT(closest(sats(entropy(T, rho, x_), line, x_)), 1e-3);
            }
        }
    }
    saturationSpline.SPLINEREADY = false;
}

// -------------------------------------------------------------------------------------------------- Raoult's law

TEST_F(Substitution, EstimatesAreRaoultsLaw) {
    ASSERT_LE(setUpBlend("R407C", x_), 0);
    int ierr;
    Text255 herr;
    for (const int kph : {bubble, dew}) {
        double p;
        Composition y;
        SATTEST(280.0, x_, kph, p, y, ierr, herr);
        EXPECT_EQ(ierr, 0);
        // p_i from y_i p = x_i p_i (bubble point) and x_i p = y_i p_i (dew point)
        double sum = 0.0;
        for (int i = 1; i <= 3; ++i) {
            const double expected = fluidConstants.PCRIT[i] *
                                    std::pow(10.0, -static_cast<double>(2.333333f) * (fluidConstants.ACCEN[i] + 1.0) *
                                                       (fluidConstants.TCRIT[i] / 280.0 - 1.0));
            const double found = kph == bubble ? y[i] * p / x_[i] : x_[i] * p / y[i];
            EXPECT_NEAR(found / expected, 1.0, 1e-12);
            sum += y[i];
        }
        EXPECT_NEAR(sum, 1.0, 1e-14);
    }
}

TEST_F(Substitution, EstimateAtPressureInvertsTheOneAtTemperature) {
    for (const char* blend : {"R407C", "R410A", "R404A", "R448A"}) {
        SCOPED_TRACE(blend);
        ASSERT_LE(setUpBlend(blend, x_), 0);
        for (const double T : {200.0, 250.0, 300.0, 330.0}) {
            for (const int kph : {bubble, dew}) {
                double p, back;
                Composition y, yBack;
                int ierr;
                Text255 herr;
                SATTEST(T, x_, kph, p, y, ierr, herr);
                SATPEST(p, x_, kph, back, yBack, ierr, herr);
                EXPECT_EQ(ierr, 0);
                // the residual is held to 1e-6 at the bubble and 1e-3 at the dew point; ln p rises by 0.02 to 0.06 per
                // K
                EXPECT_NEAR(back, T, kph == bubble ? 1e-4 : 0.1);
                for (int i = 1; i <= modelTags.NC; ++i) EXPECT_NEAR(yBack[i], y[i], kph == bubble ? 1e-5 : 1e-3);
            }
        }
    }
}

}  // namespace
}  // namespace frigana
