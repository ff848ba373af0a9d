// The property routines of a mixture, and the direct road of the BWR model.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "CORE_BWR.h"
#include "CORE_CPP.h"
#include "DISPATCH.h"
#include "EXCESS.h"
#include "FluidConstants.h"
#include "Fluids.h"
#include "MIX_HMX.h"
#include "ModelTags.h"
#include "PHIDERV.h"
#include "PREOS.h"
#include "PROP_SUB.h"
#include "ReferenceState.h"
#include "SETUP.h"
#include "TPRHO.h"
#include "TreeFolders.h"
#include "UTILITY.h"

namespace frigana::test {
namespace {

template <class Function>
double slope(Function value, double x, double h) {
    return (8.0 * (value(x + h) - value(x - h)) - (value(x + 2 * h) - value(x - 2 * h))) / (12.0 * h);
}

Therm2Result therm2(double t, double rho, const Composition& x) {
    Therm2Result r;
    THERM2(t, rho, x, r);
    return r;
}

// R32 with R125, 0.3 to 0.7.
class Mixture : public testing::Test {
  protected:
    void SetUp() override {
        const std::string folder = std::string(test::dataFolder) + "/fluids/";
        FileNames files{};
        files[1] = Text255(folder + "R32.FLD");
        files[2] = Text255(folder + "R125.FLD");
        Text3 reference("DEF");
        SETUP(2, files, Text255(folder + "HMX.BNC"), reference, ierr, herr);
        ASSERT_LE(ierr, 0) << herr.trimmed();
        x[1] = 0.3;
        x[2] = 0.7;
    }
    Composition x{};
    int ierr = 0;
    Text255 herr;
};

TEST_F(Mixture, DerivativesBelongTogether) {
    for (const double t : {250.0, 320.0, 400.0}) {
        for (const double rho : {0.1, 4.0, 12.0}) {
            const Therm2Result r = therm2(t, rho, x);
            const auto along = [&](auto field, bool inT) {
                return inT ? slope([&](double v) { return therm2(v, rho, x).*field; }, t, 2e-4 * t)
                           : slope([&](double v) { return therm2(t, v, x).*field; }, rho, 2e-4 * rho);
            };
            const double RT = fluidConstants.R * t;
            EXPECT_NEAR(r.dPdD, along(&Therm2Result::p, false), 1e-7 * RT);
            EXPECT_NEAR(r.dPdT, along(&Therm2Result::p, true), 1e-7 * r.dPdT);
            EXPECT_NEAR(-r.dPdT / (rho * rho), along(&Therm2Result::s, false), 1e-7 * r.dPdT / (rho * rho));
            EXPECT_NEAR(r.cv, along(&Therm2Result::e, true), 1e-7 * r.cv);
            EXPECT_NEAR(r.d2PdTD, along(&Therm2Result::dPdD, true), 1e-6 * std::fabs(r.d2PdTD) + 1e-6);
            EXPECT_NEAR(r.G, r.h - t * r.s, 1e-9 * std::fabs(r.h));
            EXPECT_NEAR(r.s, -along(&Therm2Result::A, true), 1e-7 * std::fabs(r.s));
        }
    }
}

// The departure of the whole is that of its pairs, warm and cold, thin and far beyond the densities of a liquid, where
// a term is too small for a quotient by it.
TEST_F(Mixture, DeparturesOfThePairsAddUpAndHoldTheirDerivatives) {
    ASSERT_EQ(modelTags.NC, 2);
    for (const double tau : {0.4, 0.99, 1.01, 1.4})
        for (const double del : {1e-6, 0.3, 2.0, 4.0, 8.0}) {
            for (int itau = 0; itau <= 3; ++itau)
                for (int idel = 0; idel <= 3; ++idel)
                    EXPECT_EQ(sumOfDepartures(itau, idel, tau, del, x, 0.0), PHIMIX(1, 2, itau, idel, tau, del, x));
            const auto first = [&](double at) { return PHIMIX(1, 2, 0, 1, at, del, x); };
            const double cross = PHIMIX(1, 2, 1, 1, tau, del, x);
            EXPECT_NEAR(cross, tau * slope(first, tau, 1e-3 * tau), 1e-7 * (std::fabs(cross) + std::fabs(first(tau))));
        }
    for (const auto& [tau, del] : {std::pair{0.0, 1.0}, {-1.0, 1.0}, {1.0, 1e-10}, {1.0, -1.0}}) {
        EXPECT_EQ(sumOfDepartures(0, 0, tau, del, x, 0.0), 0.0) << tau << ' ' << del;
        EXPECT_EQ(PHIMIX(1, 2, 0, 0, tau, del, x), 0.0) << tau << ' ' << del;
    }
    EXPECT_NE(PHIMIX(1, 2, 0, 0, 1.0, 1.001e-10, x), 0.0);
    for (const auto& [itau, idel] : {std::pair{-1, 0}, {0, -1}, {4, 0}, {0, 4}})
        EXPECT_EQ(sumOfDepartures(itau, idel, 1.1, 1.0, x, 0.0), 0.0) << itau << ' ' << idel;
}

TEST_F(Mixture, AMixingFileThatIsNotOpenIsTold) {
    RDBNC(0, 1, 2, 0, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_TRUE(herr.startsWith("[RDBNC error] Block data option not available"));
}

TEST_F(Mixture, ChemicalPotentialsAddUpToTheGibbsEnergy) {
    for (const double rho : {0.2, 13.0}) {
        Composition u;
        CHEMPOT(300.0, rho, x, u, ierr, herr);
        ASSERT_EQ(ierr, 0);
        const double G = therm2(300.0, rho, x).G;
        EXPECT_NEAR(x[1] * u[1] + x[2] * u[2], G, 1e-9 * std::fabs(G));
    }
    // a trace of the other component: the potential of the solvent is that of the pure fluid
    Composition solvent{}, u;
    solvent[1] = 1.0 - 1e-9;
    solvent[2] = 1e-9;
    CHEMPOT(300.0, 19.0, solvent, u, ierr, herr);
    EXPECT_NEAR(u[1], therm2(300.0, 19.0, unitComposition(1)).G, 1e-3);
}

// Under the cubic equation in place of the fluids' own.
TEST_F(Mixture, ChemicalPotentialsAddUpUnderTheCubicEquation) {
    const double own = therm2(300.0, 13.0, x).G;
    int on = 1;
    PREOS(on);
    ASSERT_EQ(modelTags.HEOS, "PR");
    for (const double t : {250.0, 300.0, 400.0})
        for (const double rho : {0.2, 4.0, 13.0}) {
            Composition u;
            CHEMPOT(t, rho, x, u, ierr, herr);
            ASSERT_EQ(ierr, 0) << herr.trimmed();
            const double G = therm2(t, rho, x).G;
            EXPECT_NEAR(x[1] * u[1] + x[2] * u[2], G, 1e-9 * std::fabs(G)) << t << ' ' << rho;
        }
    EXPECT_NE(therm2(300.0, 13.0, x).G, own);
    modelTags.LFORCESETUP = true;
}

// A rule whose derivatives are not known takes differences; the linear rule with numbers of one is also a KW rule.
TEST_F(Mixture, RulesWithoutDerivativesTakeDifferences) {
    const MixingPair kept = mixingParameters.pair[1][2];
    const auto rule = [&](const char* tag, const Array1<double, 6>& numbers) {
        for (MixingPair* pair : {&mixingParameters.pair[1][2], &mixingParameters.pair[2][1]}) {
            pair->HMODMX = tag;
            pair->FMIX = numbers;
        }
        clearDepartureCache();
    };
    const double Ti = fluidConstants.TZ[1], Tj = fluidConstants.TZ[2];
    const double vi = 1.0 / fluidConstants.RHOZ[1], vj = 1.0 / fluidConstants.RHOZ[2];
    const double side = std::cbrt(vi) + std::cbrt(vj), meanV = side * side * side / 8.0;
    for (const double rho : {0.2, 13.0}) {
        rule("KW0", {{1.0, 0.5 * (Ti + Tj) / std::sqrt(Ti * Tj), 1.0, 0.5 * (vi + vj) / meanV, 0.0, 0.0}});
        Composition analytic, potential, u, f;
        FGCTY2(300.0, rho, x, analytic, ierr, herr);
        ASSERT_EQ(ierr, 0);
        CHEMPOT(300.0, rho, x, potential, ierr, herr);
        rule("LIN", {{1.0, 1.0, 0.0, 1.0, 1.0, 0.0}});
        FGCTY2(300.0, rho, x, f, ierr, herr);
        EXPECT_EQ(ierr, 0);
        EXPECT_EQ(herr.length(), 0);
        CHEMPOT(300.0, rho, x, u, ierr, herr);
        EXPECT_EQ(ierr, 0);
        EXPECT_EQ(herr.length(), 0);
        Composition dalpha, dnalpha;
        PHIDERV(1, 300.0, rho, x, dalpha, dnalpha, ierr, herr);
        EXPECT_EQ(ierr, 191);
        for (int i = 1; i <= 2; ++i) {
            EXPECT_NEAR(f[i], analytic[i], 1e-6 * analytic[i]) << i << " " << rho;
            EXPECT_NEAR(u[i], potential[i], 1e-9 * std::fabs(potential[i])) << i << " " << rho;
        }
    }
    mixingParameters.pair[1][2] = mixingParameters.pair[2][1] = kept;
    clearDepartureCache();
}

TEST_F(Mixture, FugacitiesByDifferencesAndByDerivativesAgree) {
    for (const double rho : {0.2, 13.0}) {
        Composition numerical, analytic, coefficient;
        FGCTY(300.0, rho, x, numerical);
        FGCTY2(300.0, rho, x, analytic, ierr, herr);
        ASSERT_EQ(ierr, 0);
        FUGCOF(300.0, rho, x, coefficient, ierr, herr);
        const Therm2Result r = therm2(300.0, rho, x);
        double sum = 0.0;  // sum of x ln(phi) is the residual Gibbs energy at the same temperature and pressure
        for (int i = 1; i <= 2; ++i) {
            EXPECT_NEAR(numerical[i], analytic[i], 1e-6 * analytic[i]) << i << " " << rho;
            EXPECT_DOUBLE_EQ(coefficient[i], analytic[i] / (x[i] * r.p));
            sum += x[i] * std::log(coefficient[i]);
        }
        double pr, er, hr, sr, cvr, cpr, Ar, Gr;
        RESIDUAL(300.0, rho, x, pr, er, hr, sr, cvr, cpr, Ar, Gr);
        EXPECT_NEAR(sum, Gr / (fluidConstants.R * 300.0) - std::log(r.Z), 1e-9);
    }
}

TEST_F(Mixture, ExcessPropertiesBelongTogether) {
    double rho = 0.0, vE, eE, hE, sE, aE, gE;
    const double t = 280.0, p = 3000.0;
    EXCESS(t, p, x, 1, rho, vE, eE, hE, sE, aE, gE, ierr, herr);
    ASSERT_EQ(ierr, 0) << herr.trimmed();
    EXPECT_NEAR(hE, eE + p * vE, 1e-6);
    EXPECT_NEAR(gE, hE - t * sE, 1e-6);
    EXPECT_NEAR(aE, eE - t * sE, 1e-6);
    EXPECT_NE(gE, 0.0);
    RMIX(x);
    EXPECT_NEAR(fluidConstants.R, 0.3 * fluidConstants.REOS[1] + 0.7 * fluidConstants.REOS[2], 1e-15);

    Composition activity, coefficient;
    ACTVY(t, rho, x, activity, coefficient, ierr, herr);
    ASSERT_EQ(ierr, 0) << herr.trimmed();
    EXPECT_EQ(modelTags.IPUREFLD, 0);
    double sum = 0.0;
    for (int i = 1; i <= 2; ++i) {
        EXPECT_DOUBLE_EQ(coefficient[i], activity[i] / x[i]);
        sum += x[i] * std::log(coefficient[i]);
    }
    // the pure components have gas constants of their own: their fugacities differ in the sixth digit from those of R
    EXPECT_NEAR(sum * fluidConstants.R * t, gE, 1e-2);
}

TEST_F(Mixture, SecondVirialCoefficientIsQuadraticInTheFractions) {
    double b = 0, b1 = 0, b2 = 0, cross = 0;
    B12(300.0, x, cross);
    VIRB(300.0, x, b);
    VIRB(300.0, unitComposition(1), b1);
    VIRB(300.0, unitComposition(2), b2);
    EXPECT_NEAR(b, 0.09 * b1 + 0.49 * b2 + 0.42 * cross, 1e-12);
    EXPECT_LT(cross, 0.0);
    double B = 1, C = 1, D = 1;
    VIRBCD(300.0, x, B, C, D);
    EXPECT_EQ(B, 0.0);
    EXPECT_EQ(C, 0.0);
    EXPECT_EQ(D, 0.0);
}

TEST_F(Mixture, DensityRootsOfBothSides) {
    for (const double t : {230.0, 280.0, 320.0, 420.0}) {
        for (const int kph : {1, 2}) {
            for (const double p : {1.0, 100.0, 6000.0, 30000.0}) {
                if (kph == 2 && p > 1000.0 && t < 350.0) continue;
                if (kph == 1 && p < 1000.0 && t > 300.0) continue;
                double rho = 0.0, back = 0.0;
                TPRHO(t, p, x, kph, 0, rho, ierr, herr);
                ASSERT_EQ(ierr, 0) << t << " " << p << " " << herr.trimmed();
                PRESS(t, rho, x, back);
                double dpdd = 0.0;
                DPDD(t, rho, x, dpdd);
                EXPECT_NEAR((back - p) / (rho * dpdd), 0.0, 1e-9) << t << " " << p;
            }
        }
    }
}

TEST_F(Mixture, CriticalPointOfACompositionThatAddsUpToNothing) {
    double t = 0, p = 0, d = 0;
    CRITP(Composition{}, t, p, d, ierr, herr);
    EXPECT_GT(ierr, 0);
    EXPECT_GT(t, 0.0) << "a critical temperature is never zero or less";
    EXPECT_GE(p, 0.0);
}

// Coefficients of no fluid, large enough that every family of them counts.
void useBWR(const char* top) {
    ASSERT_TRUE(loadFluid("R134A"));
    modelTags.HEOS = top;
    modelTags.HMXEOS[1] = "BWR";
    BwrSlot& b = bwrTerms[1] = BwrSlot{};
    FluidConstants& c = fluidConstants;
    b.RBWR = c.REOS[1] / 100.0;
    b.TCBWR = c.TZ[1] = 400.0;
    b.RHOCB = b.GAMMAB = c.RHOZ[1] = 5.0;
    b.PCBWR = 40.0;
    const double unit[32] = {1e-3, 1e-2, -1,    -5e2, -5e4, 1e-4, 1e-2, 10,    1e3,  1e-5, 1e-3,
                             1,    1e-3, -1e-2, -1,   1e-3, 1e-4, 1e-2, -1e-4, 1e2,  -1e4, 1,
                             1e4,  1e-2, 1,     1e-3, 10,   1e-5, 1e-3, 1e-7,  1e-5, 1e-3};
    for (int k = 1; k <= 32; ++k) b.BBWR[k] = 3.0 * unit[k - 1];
}

TEST(DirectBWR, GivesWhatTheReducedEnergyOfTheModelGives) {
    for (const double t : {300.0, 420.0}) {
        for (const double rho : {0.01, 1.0, 6.0}) {
            double p, e, h, s, cv, cp, w, jt, P, E, H, S, CV, CP, W, JT;
            useBWR("BWR");
            THERM(t, rho, pure(), p, e, h, s, cv, cp, w, jt);
            useBWR("FEQ");
            THERM(t, rho, pure(), P, E, H, S, CV, CP, W, JT);
            EXPECT_NEAR(p, P, 1e-10 * std::fabs(P));
            EXPECT_NEAR(e, E, 1e-10 * (std::fabs(E) + 1000.0));
            EXPECT_NEAR(h, H, 1e-10 * (std::fabs(H) + 1000.0));
            EXPECT_NEAR(s, S, 1e-10 * (std::fabs(S) + 10.0));
            EXPECT_NEAR(cv, CV, 1e-10 * std::fabs(CV));
            EXPECT_NEAR(cp, CP, 1e-9 * std::fabs(CP));
            EXPECT_NEAR(w, W, 1e-9 * W);
            EXPECT_NEAR(jt, JT, 1e-8 * std::fabs(JT));
        }
    }
    loadFluid("R134A");
}

// The single routines under the direct functions and under the reduced energy, each value on the scale of its terms.
TEST(DirectBWR, ServesTheSingleRoutines) {
    struct Values {
        double e, s, h, dpdt, drhodt, dpdd, d2pdd2, cv, cp, b, c, A, G, fugacity;
    };
    const auto at = [](const char* top, double t, double rho) {
        useBWR(top);
        Values v{};
        Therm2Result two;
        THERM2(t, rho, pure(), two);
        ENERGY(t, rho, pure(), v.e);
        ENTRO(t, rho, pure(), v.s);
        ENTHAL(t, rho, pure(), v.h);
        DPDT(t, rho, pure(), v.dpdt);
        DDDT(t, rho, pure(), v.drhodt);
        DPDD(t, rho, pure(), v.dpdd);
        CVCP(t, rho, pure(), v.cv, v.cp);
        v.d2pdd2 = two.d2PdD2;
        VIRB(t, pure(), v.b);
        VIRC(t, pure(), v.c);
        v.A = two.A;
        v.G = two.G;
        Composition f;
        FGCTY(t, rho, pure(), f);
        v.fugacity = f[1];
        return v;
    };
    for (const double t : {300.0, 420.0})
        for (const double rho : {0.01, 1.0, 6.0}) {
            const Values direct = at("BWR", t, rho), reduced = at("FEQ", t, rho);
            EXPECT_NEAR(direct.e, reduced.e, 1e-10 * (std::fabs(reduced.e) + 1000.0));
            EXPECT_NEAR(direct.s, reduced.s, 1e-10 * (std::fabs(reduced.s) + 10.0));
            EXPECT_NEAR(direct.h, reduced.h, 1e-10 * (std::fabs(reduced.h) + 1000.0));
            EXPECT_NEAR(direct.dpdt, reduced.dpdt, 1e-10 * std::fabs(reduced.dpdt));
            EXPECT_NEAR(direct.drhodt, reduced.drhodt, 1e-9 * std::fabs(reduced.drhodt));
            EXPECT_NEAR(direct.dpdd, reduced.dpdd, 1e-10 * fluidConstants.R * t);
            EXPECT_NEAR(direct.d2pdd2, reduced.d2pdd2, 1e-9 * fluidConstants.R * t);
            EXPECT_NEAR(direct.cv, reduced.cv, 1e-10 * std::fabs(reduced.cv));
            EXPECT_NEAR(direct.cp, reduced.cp, 1e-9 * std::fabs(reduced.cp));
            EXPECT_NEAR(direct.A, reduced.A, 1e-10 * (std::fabs(reduced.A) + 1000.0));
            EXPECT_NEAR(direct.G, reduced.G, 1e-10 * (std::fabs(reduced.G) + 1000.0));
            EXPECT_NEAR(direct.fugacity, reduced.fugacity, 1e-10 * reduced.fugacity);
            // quotients of differences at the smallest densities, in single digits of theirs
            EXPECT_NEAR(direct.b, reduced.b, 1e-5 * std::fabs(reduced.b) + 1e-8);
            EXPECT_NEAR(direct.c, reduced.c, 1e-2 * std::fabs(reduced.c) + 1e-6);
        }
    double d = 7.0;
    useBWR("BWR");
    VIRD(300.0, pure(), d);
    EXPECT_EQ(d, 0.0) << "the direct functions have no fourth coefficient";
    // the limits at zero density are those of the ideal gas
    double cv, cp, p, e, h, s, w, jt;
    CVCP(300.0, 1e-9, pure(), cv, cp);
    EXPECT_NEAR(cp, CP0(300.0, pure()), 1e-9 * cp);
    THERM(300.0, 1e-9, pure(), p, e, h, s, cv, cp, w, jt);
    EXPECT_NEAR(h - e, fluidConstants.R * 300.0, 1e-9 * fluidConstants.R * 300.0);
    EXPECT_NEAR(cp, CP0(300.0, pure()), 1e-9 * cp);
    double b, dbdt;
    VIRB(300.0, pure(), b);
    DBDT(300.0, pure(), dbdt);
    EXPECT_NEAR(jt, (300.0 * dbdt - b) / cp, 1e-9 * std::fabs(jt));
    loadFluid("R134A");
}

TEST(DirectBWR, AsksTheModelItselfAndNotItsReducedEnergy) {
    useBWR("BWR");
    double p, e, h, s, cv, cp, w, jt;
    modelTags.HMXEOS[1] = "???";  // the routing of the reduced energy has no such model
    THERM(300.0, 1.0, pure(), p, e, h, s, cv, cp, w, jt);
    EXPECT_EQ(p, PBWR(1, 300.0, 1.0));
    EXPECT_TRUE(std::isfinite(e + h + s + cv + cp + w + jt));
    double single = 0.0;
    PRESS(300.0, 1.0, pure(), single);
    EXPECT_EQ(single, p);
    ENTRO(300.0, 1.0, pure(), single);
    EXPECT_EQ(single, s);
    ENTHAL(300.0, 1.0, pure(), single);
    EXPECT_EQ(single, h);
    loadFluid("R134A");
}

}  // namespace
}  // namespace frigana::test
