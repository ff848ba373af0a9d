// Extended corresponding states: conformal states, shape factors, dilute mixtures, and what the model refuses.
#include <cmath>
#include <cstdio>
#include <utility>

#include "DISPATCH.h"
#include "FluidWith.h"
#include "Larger.h"
#include "MIX_HMX.h"
#include "TRNS_ECS_STATE.h"
#include "TreeFolders.h"

namespace frigana::test {
namespace {

struct Target {
    double A, Z;
};
Target targetOf(int slot, double T, double D) {
    double tz = 0.0, rhoz = 0.0;
    REDK(slot, tz, rhoz);
    return {PHIK(slot, 0, 0, tz / T, D / rhoz), 1.0 + PHIK(slot, 0, 1, tz / T, D / rhoz)};
}

TEST(ConformalState, hasTheHelmholtzEnergyAndTheCompressibilityAskedFor) {
    int states = 0;
    double worst = 0.0;
    for (const char* fluid : {"R32", "R22", "R11", "R124", "R227EA", "R143A", "CF3I"}) {
        ASSERT_EQ(setUp(fluid), 0);
        const double tc = fluidConstants.TCRIT[1], dc = fluidConstants.DCRIT[1];
        for (const double Tr : {0.55, 0.65, 0.75, 0.85, 0.95}) {
            double p = 0.0, Dl = 0.0, Dv = 0.0;
            ASSERT_TRUE(saturation(Tr * tc, p, Dl, Dv));
            for (const double D : {Dl, 1.05 * Dl}) {
                const Target target = targetOf(1, Tr * tc, D);
                double T0 = Tr * fluidConstants.TCRIT[0], D0 = D * fluidConstants.DCRIT[0] / dc;
                int ierr = 0;
                Text255 herr;
                CONFTD(0, target.A, target.Z, T0, D0, ierr, herr);
                ASSERT_EQ(ierr, 0) << fluid << ' ' << Tr;
                const Target found = targetOf(0, T0, D0);
                worst = larger({worst, std::abs(found.A - target.A), std::abs(found.Z - target.Z)});
                ++states;
            }
        }
    }
    std::printf("%d conformal states, largest residual %.1e\n", states, worst);
    EXPECT_LT(worst, 1e-7);
}

TEST(ConformalState, theSearchOverDensityFindsTheSame) {
    ASSERT_EQ(setUp("R227EA"), 0);
    const double tc = fluidConstants.TCRIT[1], dc = fluidConstants.DCRIT[1];
    for (const double Tr : {0.6, 0.75, 0.9}) {
        double p = 0.0, Dl = 0.0, Dv = 0.0;
        ASSERT_TRUE(saturation(Tr * tc, p, Dl, Dv));
        const Target target = targetOf(1, Tr * tc, Dl);
        double T1 = Tr * fluidConstants.TCRIT[0], D1 = Dl * fluidConstants.DCRIT[0] / dc, T2 = T1, D2 = D1;
        int ierr = 0;
        Text255 herr;
        CONFTD(0, target.A, target.Z, T1, D1, ierr, herr);
        ASSERT_EQ(ierr, 0);
        CONFD(0, target.A, target.Z, T2, D2, ierr, herr);
        ASSERT_EQ(ierr, 0) << words(herr);
        EXPECT_NEAR(T2 / T1, 1.0, 1e-5);
        EXPECT_NEAR(D2 / D1, 1.0, 1e-5);
    }
    // no state within 20 % of the start has this energy
    double T = 300.0, D = 1.0;
    int ierr = 0;
    Text255 herr;
    CONFD(0, -5.0, 0.01, T, D, ierr, herr);
    EXPECT_EQ(ierr, -58);
    EXPECT_EQ(words(herr), "[CONFD error 58] ECS-transport routines did not converge");
}

// The search over temperature alone: it is done where its second point is the state, and ends without one where the
// energy does not change.
TEST(ConformalState, theSearchOverTemperatureEndsAtOnceWhereItCan) {
    ASSERT_EQ(setUp("R227EA"), 0);
    const double T = 300.0, D = 8.0, second = static_cast<double>(1.005f) * T;
    double found = T;
    int ierr = 7;
    Text255 herr;
    CONFT(0, targetOf(0, second, D).A, D, found, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(found, second);
    found = T;
    CONFT(0, -1.0, 0.0, found, ierr, herr);
    EXPECT_EQ(ierr, 1) << "without density there is no energy";
    EXPECT_EQ(found, T);
}

// Only below the start: above it a second state of less density has the same energy and compressibility.
TEST(ConformalState, theSearchOverDensityLooksNoMoreThanAFifthBelowItsStart) {
    ASSERT_EQ(setUp("R227EA"), 0);
    const double T = 0.7 * fluidConstants.TCRIT[0], density = 2.4 * fluidConstants.DCRIT[0];
    const Target target = targetOf(0, T, density);
    for (const double ratio : {0.7, 0.75, 0.82, 0.9, 1.1}) {  // of the density to its start
        double found = T, start = density / ratio;
        int ierr = 0;
        Text255 herr;
        CONFD(0, target.A, target.Z, found, start, ierr, herr);
        if (ratio > 0.8) {
            EXPECT_EQ(ierr, 0) << ratio << ' ' << words(herr);
            EXPECT_NEAR(found / T, 1.0, 1e-5) << ratio;
            EXPECT_NEAR(start / density, 1.0, 1e-5) << ratio;
        } else {
            EXPECT_EQ(ierr, -58) << ratio;
        }
    }
}

TEST(ConformalState, aFluidIsConformalToItself) {
    // R134A with the parameters of corresponding states: its reference fluid is itself, with psi = chi = 1
    ASSERT_TRUE(setUpForced("R134A", "ECS", "ECS"));
    for (const double T : {220.0, 280.0, 340.0}) {
        double p = 0.0, Dl = 0.0, Dv = 0.0;
        ASSERT_TRUE(saturation(T, p, Dl, Dv));
        for (const double D : {Dl, Dv}) {
            const TransportPoint point = transport(T, D);
            double background = 0.0;
            int ierr = 0;
            Text255 herr;
            ETAKB(0, T, D, background, ierr, herr);
            EXPECT_NEAR(point.eta / (ETA0DG(1, T) + background), 1.0, 1e-6) << T;
            TCXKB(0, T, D, background, ierr, herr);
            double eta = 0.0, tcx = 0.0;
            PTRNEC(1, T, D, eta, tcx, ierr, herr, 0);
            const double R = fluidConstants.R, M = fluidConstants.WMAS[1], eta0 = ETA0DG(1, T);
            const double dilute = 0.015 * R * eta0 / (4.0 * M) + 0.00132 * eta0 / M * (CP0K(1, T) - 2.5 * R);
            EXPECT_NEAR(tcx / (dilute + background), 1.0, 1e-6) << T;
        }
    }
}

TEST(CorrespondingStates, outOfBoundsIsAWarning) {
    ASSERT_EQ(setUp("R32"), 0);
    Text255 herr;
    int ierr = 0;
    double eta = 0.0, tcx = 0.0;
    TRNECS(700.0, 0.1, unitComposition(1), eta, tcx, ierr, herr);
    EXPECT_EQ(ierr, -1);
    EXPECT_EQ(words(herr), "[TRNECS error -1] one or more inputs are out of bounds");
    EXPECT_GT(eta, 10.0);
    EXPECT_GT(tcx, 0.01);
    const TransportPoint point = transport(700.0, 0.1);
    EXPECT_EQ(point.ierr, -1);
    EXPECT_EQ(
        point.message,
        "[TRNPRP warning  -1] pure fluid correlation out of range; attempted to use ECS method, it generated error:  "
        "[TRNECS error -1] one or more inputs are out of bounds");
}

TEST(CorrespondingStates, theBoundsThemselvesAreInside) {
    ASSERT_EQ(setUp("R32"), 0);
    const double low = fluidConstants.TMECST[1], high = 1.5 * fluidConstants.TXECST[1],
                 dense = fluidConstants.DXECST[1];
    const auto codeAt = [](double T, double D) {
        Text255 herr;
        int ierr = 0;
        double eta = 0.0, tcx = 0.0;
        TRNECS(T, D, unitComposition(1), eta, tcx, ierr, herr);
        return ierr;
    };
    EXPECT_EQ(codeAt(low, dense), 0);
    EXPECT_EQ(codeAt(high, 0.1), 0);
    EXPECT_EQ(codeAt(std::nextafter(low, 0.0), dense), -1);
    EXPECT_EQ(codeAt(std::nextafter(high, 1e9), 0.1), -1);
    EXPECT_EQ(codeAt(low, std::nextafter(dense, 1e9)), -1);
}

TEST(CorrespondingStates, aViscosityWithoutMeaningIsRefusedAndTheConductivityStays) {
    ASSERT_EQ(setUp("R12"), 0);
    Text255 herr;
    int ierr = 0;
    double eta = 0.0, tcx = 0.0;
    // cold and compressed beyond the range of the reference fluid's correlation
    TRNECS(116.2, 15.17, unitComposition(1), eta, tcx, ierr, herr);
    EXPECT_EQ(ierr, -48);
    EXPECT_EQ(words(herr), "[TRNECS warning -48] invalid region for viscosity of reference fluid 1");
    EXPECT_EQ(eta, notComputed);
    EXPECT_GT(tcx, 0.05);
}

// A reference fluid without a model of one property leaves the other.
TEST(CorrespondingStates, aReferenceWithoutOneModelLeavesTheOther) {
    for (const bool viscosity : {true, false}) {
        ASSERT_EQ(setUp("R12"), 0);
        Text255 herr;
        int ierr = 0;
        double eta = 0.0, tcx = 0.0, eta0 = 0.0, tcx0 = 0.0;
        const double T = 300.0, D = 10.5;
        TRNECS(T, D, unitComposition(1), eta, tcx, ierr, herr);
        ASSERT_EQ(ierr, 0) << words(herr);
        (viscosity ? modelTags.HETA[0] : modelTags.HTCX[0]) = viscosity ? "VS9" : "TC9";
        TRNECS(T, D, unitComposition(1), eta0, tcx0, ierr, herr);
        EXPECT_NE(ierr, 0);
        if (viscosity) {
            EXPECT_EQ(eta0, notComputed);
            EXPECT_NEAR(tcx0, tcx, 0.05 * tcx) << "but for the enhancement, which needs a viscosity";
        } else {
            EXPECT_EQ(eta0, eta);
            EXPECT_EQ(tcx0, notComputed);
            EXPECT_NE(words(herr).find("unknown thermal conductivity model"), std::string::npos) << words(herr);
        }
        modelTags.LFORCESETUP = true;
    }
}

// A reference fluid whose equation ends far below: no state of it corresponds.
TEST(CorrespondingStates, aStateThatCorrespondsToNoneIsTold) {
    ASSERT_EQ(setUp("R134A"), 0);  // so that the limits come from the file again
    ASSERT_EQ(setUp("R32"), 0);
    fluidConstants.TXECST[0] = 10.0;
    fluidConstants.TCRIT[0] *= 1.4;
    double p = 0.0, Dl = 0.0, Dv = 0.0;
    ASSERT_TRUE(saturation(280.0, p, Dl, Dv));
    double eta = 0.0, tcx = 0.0;
    int ierr = 0;
    Text255 herr;
    TRNECS(280.0, Dl, unitComposition(1), eta, tcx, ierr, herr);
    EXPECT_EQ(ierr, -58);
    EXPECT_EQ(words(herr),
              "[TRNECS warning 58] 2-D Newton-Raphson method for conformal temperature and density did not converge "
              "for component  1");
    EXPECT_EQ(eta, notComputed);
    EXPECT_EQ(tcx, notComputed);
    PTRNEC(1, 280.0, Dl, eta, tcx, ierr, herr, 0);
    EXPECT_EQ(ierr, -58);
    EXPECT_EQ(words(herr),
              "[pTRNEC warning 58] 2-D Newton-Raphson method for conformal temperature and density did not converge "
              "for component  1");
    double T0 = 280.0, D0 = 10.0;
    CONFD(0, 50.0, 300.0, T0, D0, ierr, herr);
    EXPECT_EQ(ierr, -58);
    EXPECT_EQ(words(herr), "[CONFD error 58] ECS-transport routines did not converge");
    modelTags.LFORCESETUP = true;
}

TEST(CorrespondingStates, atTheCriticalPointTheConductivityFails) {
    ASSERT_EQ(setUp("R32"), 0);
    const TransportPoint point = transport(fluidConstants.TCRIT[1], fluidConstants.DCRIT[1]);
    EXPECT_EQ(point.ierr, 51);
    EXPECT_GT(point.eta, 10.0);
    EXPECT_EQ(point.tcx, notComputed);
    double value = 0.0;
    int ierr = 0;
    Text255 herr;
    TCXM1C(unitComposition(1), fluidConstants.TCRIT[1], fluidConstants.DCRIT[1], value, ierr, herr);
    EXPECT_EQ(ierr, -60);
    EXPECT_EQ(words(herr),
              "[TCXM1C error-60] pure fluid is exactly at the critical point; thermal conductivity is infinite");
}

TEST(ShapeFactor, aSecondBlockTakesOverBelowItsFirstRow) {
    EcsTransportSlot& s = ecsTransport[6];
    s = {};
    EXPECT_EQ(PSI(6, 0.8, 2.0), 1.0);
    EXPECT_EQ(CHI(6, 0.8, 2.0), 1.0);
    EXPECT_EQ(FINT(6, 300.0), 0.00132);
    s.NPSI1 = 2;
    s.NPSI2 = 2;
    const double rows[4][4] = {{1.1, 0.0, 0.0, 0.0}, {-0.1, 0.5, 1.0, 0.0}, {0.9, 0.0, 0.5, 0.0}, {2.0, 1.0, 2.0, 0.0}};
    for (int k = 0; k < 4; ++k)
        for (int j = 0; j < 4; ++j) s.CPSI[k][j] = rows[k][j];
    const double first = 1.1 - 0.1 * std::sqrt(0.95) * 2.0;
    EXPECT_DOUBLE_EQ(PSI(6, 0.95, 2.0), first);
    EXPECT_DOUBLE_EQ(PSI(6, 0.85, 2.0), 2.0 * 0.85 * 4.0);   // below the temperature of the row
    EXPECT_DOUBLE_EQ(PSI(6, 0.95, 0.4), 2.0 * 0.95 * 0.16);  // below its density
    s.NPSI2 = 1;                                             // one row alone is no block
    EXPECT_DOUBLE_EQ(PSI(6, 0.85, 2.0), 1.1 - 0.1 * std::sqrt(0.85) * 2.0);
    EXPECT_DOUBLE_EQ(PSI(6, 0.95, 0.0), 1.1 - 0.1 * std::sqrt(0.95));  // the density drops out
    s.NEUCK = 2;
    s.CEUCK[0][0] = 0.001;
    s.CEUCK[1][0] = 2e-6;
    s.CEUCK[1][1] = 1.0;
    EXPECT_DOUBLE_EQ(FINT(6, 300.0), 0.0016);
}

// The coefficient of hard spheres, 2/3 pi NA sigma^3 [cm3/mol], times a factor of the reduced temperature, and less
// where the conductivity of the dilute gas is the smaller.
TEST(DiluteGas, theSecondCoefficientOfTheConductivityIsThatOfHardSpheresTimesAFactor) {
    const double sigma = 4.3, epsilon = 250.0;
    const double spheres = 2.0 / 3.0 * std::acos(-1.0) * 0.60221367 * sigma * sigma * sigma;
    for (const double t : {0.5, 1.0, 3.0}) {
        const double alone = TCKVIR(t * epsilon, sigma, epsilon, 1.0);
        EXPECT_NEAR(alone / spheres, (2.9749 + 0.114 * t) / (t - 0.04953), 1e-5 * alone / spheres) << t;
        EXPECT_NEAR(TCKVIR(t * epsilon, sigma, epsilon, 2.0), 0.5 * (alone - 0.625 * spheres), 1e-5 * alone) << t;
    }
    EXPECT_NEAR(TCKVIR(300.0, 2.0 * sigma, epsilon, 1.3), 8.0 * TCKVIR(300.0, sigma, epsilon, 1.3), 1e-9);
}

TEST(DiluteGas, withoutAMoleculeIsZero) {
    EcsTransportSlot& s = ecsTransport[6];
    s = {};
    EXPECT_EQ(ETA0DG(6, 300.0), 0.0);
    s.SIGTRN = 0.4;
    EXPECT_EQ(ETA0DG(6, 300.0), 0.0);
}

class TransportSection : public FluidWithSections {};

TEST_F(TransportSection, namesItsReferenceFluidWithOrWithoutARemark) {
    const std::string head = section("TRN", "ECS") + wideLimits;
    const std::string body =
        "VS1   !model\nTC1\n  1\n  0.5\n  300.0\n  1\n  0.00132 0.0 0.0 0.0\n  1 0 0\n  1.0 0.0 0.0 0.0\n  1 0 0\n"
        "  1.0 0.0 0.0 0.0\nTK6\n";
    writeFile(folder.path("R134A.FLD"), readFile(std::string(test::dataFolder) + "/fluids/R134A.FLD"));
    for (const char* line :
         {"FEQ R134A.FLD\n", "FEQ R134A.FLD            !reference fluid\n", "FEQ     R134A.FLD   \n"}) {
        ASSERT_EQ(setUpWith("R32", head + line + body), 0) << message();
        EXPECT_NEAR(fluidConstants.WMAS[0], 102.032, 1e-9);
        EXPECT_EQ(modelTags.HETA[0].trimmed(), "VS1");
        EXPECT_EQ(modelTags.HETA[1].trimmed(), "ECS");
        EXPECT_GT(transport(300.0, 0.1).eta, 5.0);
    }
}

TEST_F(TransportSection, scalesItsMoleculeByTheReferenceWhereTheFlagSaysSo) {
    writeFile(folder.path("R134A.FLD"), readFile(std::string(test::dataFolder) + "/fluids/R134A.FLD"));
    const auto body = [](const char* flag) {
        return section("TRN", "ECS") + wideLimits + "FEQ R134A.FLD\nVS1\nTC1\n" + flag +
               "\n  9.0\n  9.0\n  1\n  0.00132 0.0 0.0 0.0\n  1 0 0\n  1.0 0.0 0.0 0.0\n  1 0 0\n  1.0 0.0 0.0 "
               "0.0\nTK6\n";
    };
    ASSERT_EQ(setUpWith("R32", body("  0")), 0);
    transport(300.0, 15.0);
    const FluidConstants& f = fluidConstants;
    EXPECT_NEAR(ecsTransport[1].EPSKTR, f.TCRIT[1] / f.TCRIT[0] * ecsTransport[0].EPSKTR, 1e-10);
    EXPECT_NEAR(ecsTransport[1].SIGTRN, ecsTransport[0].SIGTRN * std::cbrt(f.DCRIT[0] / f.DCRIT[1]), 1e-12);

    ASSERT_EQ(setUpWith("R32", body("  2")), 0);
    transport(300.0, 15.0);
    const Target target = targetOf(1, 300.0, 15.0);
    ConformalState state;
    ASSERT_TRUE(conformalState(0, target.A, target.Z, f.TCRIT[1], f.DCRIT[1], 300.0, 15.0, state));
    EXPECT_NEAR(ecsTransport[1].EPSKTR, ecsTransport[0].EPSKTR * 300.0 / state.T, 1e-9);
    EXPECT_NEAR(ecsTransport[1].SIGTRN, ecsTransport[0].SIGTRN * std::cbrt(state.D / 15.0), 1e-12);
}

// The enhancement of a fluid under corresponding states: without a cutoff of its own the universal one of 0.5 nm.
TEST(CrossoverUnderCorrespondingStates, hasAUniversalCutoff) {
    ASSERT_EQ(setUp("R134A"), 0);
    modelTags.HTCXCR[1] = "NUL";
    ASSERT_EQ(modelTags.HTCXCRECS[1], "TK6");
    double& cutoff = conductivityTerms[1].correspondingStates.CTCK[7].c;
    const double given = cutoff;
    const auto enhancement = [&](double of) {
        cutoff = of;
        double tcx = 0.0;
        int ierr = 0;
        Text255 herr;
        TCXM1C(unitComposition(1), 1.02 * fluidConstants.TCRIT[1], fluidConstants.DCRIT[1], tcx, ierr, herr);
        EXPECT_EQ(ierr, 0) << words(herr);
        return tcx;
    };
    const double universal = enhancement(5e-10);
    EXPECT_GT(universal, 1e-3);
    for (const double none : {0.0, -1.0}) EXPECT_NEAR(enhancement(none) / universal, 1.0, 1e-14) << none;
    EXPECT_LT(enhancement(5.05e-10) / universal, 0.9999);
    cutoff = given;
    modelTags.LFORCESETUP = true;
}

// ---------------------------------------------------------------------------------------------------- mixtures

class TransportOfMixtures : public testing::Test {
  protected:
    static void neutralPairs() {
        for (int i = 1; i <= modelTags.NC; ++i) {
            for (int j = 1; j <= modelTags.NC; ++j) {
                MixingPair& pair = mixingParameters.pair[i][j];
                pair.XLJS = pair.XLJE = pair.XKIJ = pair.XLIJ = pair.XAJI = pair.XKIJK = pair.XLIJK = pair.XDIJ =
                    pair.XDIJ2 = 0.0;
            }
        }
    }
    void TearDown() override { modelTags.LFORCESETUP = true; }
    static Composition of(double first, double second = -1.0) {
        Composition x{};
        x[1] = first;
        x[2] = second < 0.0 ? 1.0 - first : second;
        if (second >= 0.0) x[3] = 1.0 - first - second;
        return x;
    }
};

TEST_F(TransportOfMixtures, theDiluteGasReachesItsComponents) {
    ASSERT_EQ(setUp({"R32", "R125", "R134A"}), 0);
    neutralPairs();
    for (const double T : {250.0, 350.0}) {
        for (int i = 1; i <= 3; ++i) {
            double own = 0.0;
            int ierr = 0;
            Text255 herr;
            ETAK0(i, T, own, ierr, herr);
            Composition x = unitComposition(i);
            EXPECT_NEAR(ETAMIX(T, x) / own, 1.0, 1e-12);
            // the other two as traces
            for (int j = 1; j <= 3; ++j) x[j] = j == i ? 1.0 - 2e-9 : 1e-9;
            EXPECT_NEAR(ETAMIX(T, x) / own, 1.0, 1e-8);
        }
    }
}

// The closed solution for two components, J. O. Hirschfelder, C. F. Curtiss, R. B. Bird (1954), eqs. 8.2-22 to 8.2-24.
TEST_F(TransportOfMixtures, twoComponentsObeyTheClosedSolution) {
    ASSERT_EQ(setUp({"NITROGEN", "PROPANE"}), 0);
    neutralPairs();
    const double T = 300.0, x1 = 0.3, x2 = 0.7, M1 = fluidConstants.WMAS[1], M2 = fluidConstants.WMAS[2];
    const auto molecule = [T](double mass, double sigma, double epsilon) {
        return 0.026692 * std::sqrt(mass * T) / (sigma * sigma * OMEGAS(2, 2, T / epsilon));
    };
    const EcsTransportSlot &a = ecsTransport[1], &b = ecsTransport[2];
    const double s12 = 0.5 * (a.SIGTRN + b.SIGTRN), e12 = std::sqrt(a.EPSKTR * b.EPSKTR);
    const double eta1 = molecule(M1, a.SIGTRN, a.EPSKTR), eta2 = molecule(M2, b.SIGTRN, b.EPSKTR);
    const double eta12 = molecule(2.0 * M1 * M2 / (M1 + M2), s12, e12);
    const double A = OMEGAS(2, 2, T / e12) / OMEGAS(1, 1, T / e12);
    const double X = x1 * x1 / eta1 + 2.0 * x1 * x2 / eta12 + x2 * x2 / eta2;
    const double Y = 0.6 * A *
                     (x1 * x1 / eta1 * M1 / M2 +
                      2.0 * x1 * x2 / eta12 * (M1 + M2) * (M1 + M2) / (4.0 * M1 * M2) * eta12 * eta12 / (eta1 * eta2) +
                      x2 * x2 / eta2 * M2 / M1);
    const double Z = 0.6 * A *
                     (x1 * x1 * M1 / M2 +
                      2.0 * x1 * x2 * ((M1 + M2) * (M1 + M2) / (4.0 * M1 * M2) * (eta12 / eta1 + eta12 / eta2) - 1.0) +
                      x2 * x2 * M2 / M1);
    const double closed = (1.0 + Z) / (X + Y);
    // the components' own dilute gas replaced by that of the theory
    modelTags.HETA[1] = modelTags.HETA[2] = "ECS";
    EXPECT_NEAR(ETAMIX(T, of(x1)) / closed, 1.0, 2e-4);  // 0.3203 is rounded
}

// Each side of a pair corrects its own share y of the viscosity, which is their sum, by 1 + w (d1 + w (d2 w - d1 -
// d2)).
TEST_F(TransportOfMixtures, aPairCorrectionEntersAtBothSides) {
    ASSERT_EQ(setUp({"NITROGEN", "PROPANE"}), 0);
    neutralPairs();
    const double plain = ETAMIX(300.0, of(0.4));
    const auto shareOf = [&](int i, int j, double w, double d1, double d2) {
        neutralPairs();
        mixingParameters.pair[i][j].XDIJ = d1;
        mixingParameters.pair[i][j].XDIJ2 = d2;
        return (ETAMIX(300.0, of(0.4)) - plain) / (w * (d1 + w * (d2 * w - d1 - d2)));
    };
    const double first = shareOf(1, 2, 0.4, 0.1, 0.0), second = shareOf(2, 1, 0.6, 0.1, 0.0);
    EXPECT_NEAR(first + second, plain, 1e-12 * plain);
    EXPECT_GT(first, 0.1 * plain);
    EXPECT_GT(second, 0.1 * plain);
    for (const auto& [d1, d2] : {std::pair{0.0, 0.3}, {-0.2, 0.1}, {0.3, 0.3}}) {
        EXPECT_NEAR(shareOf(1, 2, 0.4, d1, d2), first, 1e-12 * plain) << d1 << ' ' << d2;
        EXPECT_NEAR(shareOf(2, 1, 0.6, d1, d2), second, 1e-12 * plain) << d1 << ' ' << d2;
    }
    for (const int i : {1, 2}) mixingParameters.pair[i][3 - i].XDIJ = 0.1;
    EXPECT_NEAR(ETAMIX(300.0, unitComposition(1)) / ETAMIX(300.0, of(1.0)), 1.0, 1e-15);
}

// A fluid mixed with itself is that fluid, but for the estimate of the pair in the equation of state. A correction of
// transport between its halves has a closed form: the share of unlike pairs goes with sqrt(1 - k) (1 - l)^(4/3).
TEST_F(TransportOfMixtures, aCorrectionBetweenTheHalvesOfAFluidHasAClosedForm) {
    ASSERT_EQ(setUp({"R134A", "R134A"}), -117);  // an estimate
    neutralPairs();
    const double T = 300.0, D = 12.0, first = 0.3, unlike = 2.0 * first * (1.0 - first);
    MixingPair& pair = mixingParameters.pair[1][2];
    struct Values {
        double eta = 0.0, tcx = 0.0;
    };
    // One of the two at a time: the enhancement of the conductivity has the viscosity in it.
    const auto corrected = [&](bool viscosity, double k, double l) {
        neutralPairs();
        (viscosity ? pair.XKIJ : pair.XKIJK) = k;
        (viscosity ? pair.XLIJ : pair.XLIJK) = l;
        Values values;
        int ierr = 0;
        Text255 herr;
        TRNECS(T, D, of(first), values.eta, values.tcx, ierr, herr);
        EXPECT_EQ(ierr, 0) << words(herr);
        return values;
    };
    const TransportPoint pure = transport(T, D);
    const Values plain = corrected(true, 0.0, 0.0), likeOnly = corrected(false, 0.0, 1.0);
    EXPECT_NEAR(plain.eta / pure.eta, 1.0, 0.002);
    EXPECT_NEAR(plain.tcx / pure.tcx, 1.0, 0.005);
    const double gas = ETAMIX(T, of(first)), dense = (plain.tcx - likeOnly.tcx) / unlike;
    for (const auto& [k, l] : {std::pair{0.1, 0.0}, {0.0, 0.1}, {-0.2, 0.05}, {0.3, -0.4}}) {
        const double change = unlike * (std::sqrt(1.0 - k) * std::pow(1.0 - l, 4.0 / 3.0) - 1.0);
        EXPECT_NEAR(corrected(true, k, l).eta, plain.eta + (plain.eta - gas) * change, 1e-12 * plain.eta) << k << l;
        EXPECT_NEAR(corrected(false, k, l).tcx, plain.tcx + dense * change, 1e-12 * plain.tcx) << k << ' ' << l;
    }
}

TEST_F(TransportOfMixtures, theLimitOfAComponentIsThePureFluid) {
    ASSERT_EQ(setUp({"R32", "R125", "R134A"}), 0);
    neutralPairs();
    for (int i = 1; i <= 3; ++i) {
        const double tc = fluidConstants.TCRIT[i];
        for (const double Tr : {0.7, 0.85, 1.2}) {
            for (const double Dr : {0.01, 2.8}) {
                if (Tr > 1.0 && Dr > 1.0) continue;
                const double T = Tr * tc, D = Dr * fluidConstants.DCRIT[i];
                const TransportPoint pure = transport(T, D, unitComposition(i));
                Composition x{};
                for (int j = 1; j <= 3; ++j) x[j] = j == i ? 1.0 - 2e-7 : 1e-7;
                const TransportPoint nearly = transport(T, D, x);
                ASSERT_GT(nearly.eta, 0.0) << nearly.message;
                EXPECT_NEAR(nearly.eta / pure.eta, 1.0, 5e-6) << i << ' ' << Tr << ' ' << Dr << ' ' << nearly.message;
                EXPECT_NEAR(nearly.tcx / pure.tcx, 1.0, 5e-6) << i << ' ' << Tr << ' ' << Dr;
            }
        }
    }
}

// The dilute gas of next to one component is that of its molecules by the kinetic theory where a component has no
// correlation of its own, and there is none without molecules.
TEST_F(TransportOfMixtures, theDiluteGasIsThatOfTheTheoryWithoutCorrelations) {
    ASSERT_EQ(setUp({"R32", "R134A"}), 0);
    neutralPairs();
    const double T = 320.0;
    modelTags.HETA[2] = "VS9";
    for (const int i : {1, 2}) {
        const EcsTransportSlot& s = ecsTransport[i];
        const double theory =
            0.026692 * std::sqrt(fluidConstants.WMAS[i] * T) / (s.SIGTRN * s.SIGTRN * OMEGAS(2, 2, T / s.EPSKTR));
        EXPECT_NEAR(ETAMIX(T, of(i == 1 ? 1.0 - 1e-9 : 1e-9)), theory, 1e-7 * theory) << i;
    }
    for (double EcsTransportSlot::*constant : {&EcsTransportSlot::SIGTRN, &EcsTransportSlot::EPSKTR}) {
        const double kept = std::exchange(ecsTransport[2].*constant, 0.0);
        EXPECT_EQ(ETAMIX(T, of(0.5)), 0.0);
        ecsTransport[2].*constant = kept;
    }
}

// Without a viscosity of the reference fluid there is nothing to scale, nor without that of the dilute gas.
TEST_F(TransportOfMixtures, aViscosityOfZeroIsTold) {
    ASSERT_EQ(setUp({"R32", "R134A"}), 0);
    Composition x{};
    x[1] = x[2] = 0.5;
    double eta = 0.0, tcx = 0.0;
    int ierr = 0;
    Text255 herr;
    TRNECS(300.0, 8.0, x, eta, tcx, ierr, herr);
    ASSERT_EQ(ierr, 0) << words(herr);
    const ViscositySlot nitrogen = viscosityTerms[0];
    viscosityTerms[0] = {};
    TRNECS(300.0, 8.0, x, eta, tcx, ierr, herr);
    EXPECT_EQ(ierr, -59);
    EXPECT_EQ(words(herr),
              "[TRNECS warning -59] the viscosity of the reference fluid is zero: it cannot scale that of the mixture");
    EXPECT_EQ(eta, notComputed);
    viscosityTerms[0] = nitrogen;
    modelTags.LFORCESETUP = true;
}

TEST_F(TransportOfMixtures, theOrderOfComponentsDoesNotMatter) {
    const auto value = [](std::initializer_list<std::string_view> fluids, const Composition& x, double T, double D) {
        EXPECT_EQ(setUp(fluids), 0);
        neutralPairs();
        return transport(T, D, x);
    };
    for (const double D : {0.05, 12.0}) {
        const TransportPoint a = value({"R32", "R125", "R134A"}, of(0.3, 0.5), 300.0, D);
        const TransportPoint b = value({"R134A", "R32", "R125"}, of(0.2, 0.3), 300.0, D);
        ASSERT_GT(a.eta, 0.0) << a.message;
        ASSERT_GT(a.tcx, 0.0) << a.message;
        EXPECT_NEAR(a.eta / b.eta, 1.0, 1e-6);
        EXPECT_NEAR(a.tcx / b.tcx, 1.0, 1e-6);
    }
}

TEST_F(TransportOfMixtures, outOfRangeHasCodeMinus54) {
    ASSERT_EQ(setUp({"R32", "R125"}), 0);
    const TransportPoint point = transport(900.0, 0.05, of(0.5));
    EXPECT_EQ(point.ierr, -54);
    EXPECT_EQ(point.message,
              "[TRNPRP warning -54] temperature and/or density input to the thermal conductivity and/or viscosity ecs "
              "mixture model are out of range; results may be in error.");
    EXPECT_GT(point.eta, 0.0);
}

TEST_F(TransportOfMixtures, hardSpheresOfOneKindNeedNoCorrection) {
    ASSERT_EQ(setUp({"R32", "R125"}), 0);
    double delta = 1.0;
    DELHSV(300.0, 10.0, unitComposition(2), delta);
    EXPECT_NEAR(delta, 0.0, 1e-9);
    // equal spheres and masses are one fluid, whatever their fractions
    Composition x = of(0.3), sigma{}, mass{};
    sigma[1] = sigma[2] = 4.0;
    mass[1] = mass[2] = 50.0;
    double two = 0.0, one = 0.0;
    ENSKOG(2, 300.0, 10.0, x, sigma, mass, two);
    ENSKOG(1, 300.0, 10.0, unitComposition(1), sigma, mass, one);
    EXPECT_NEAR(two / one, 1.0, 1e-12);
    // Enskog's first approximation, Chapman and Cowling, Cambridge 1970, ch. 16: 1/g + 0.8 b rho + 0.7712 g (b rho)^2
    // with the contact value g of Carnahan and Starling
    const double b = 2.0 / 3.0 * 3.14159265358979 * 0.0006023 * 10.0 * 64.0;
    const double packing = b / 4.0, g = (1.0 - 0.5 * packing) / ((1.0 - packing) * (1.0 - packing) * (1.0 - packing));
    const double eta0 = 2.6693 * std::sqrt(50.0 * 300.0) / 16.0;
    EXPECT_NEAR(one / (eta0 * (1.0 / g + 0.8 * b + 0.7712 * g * b * b)), 1.0, 1e-4);
}

}  // namespace
}  // namespace frigana::test
