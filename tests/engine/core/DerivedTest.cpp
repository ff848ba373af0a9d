// Curvature, heating values, excess properties and activities.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>

#include "CSTAR.h"
#include "DISPATCH.h"
#include "EXCESS.h"
#include "FLSH_SUB.h"
#include "FluidConstants.h"
#include "FluidFiles.h"
#include "Fluids.h"
#include "HEAT.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "RIEM.h"
#include "SAT_SUB.h"
#include "SAT_SUB_DERIVED.h"
#include "SETUP.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana::test {
namespace {

double curvature(double t, double rho) {
    double r = 0.0;
    RIEM(t, rho, pure(), r);
    return r;
}

// The definition by differences: R = (1/sqrt g) (d/dT ((1/sqrt g) dg_rr/dT) + d/drho ((1/sqrt g) dg_TT/drho)), with
// the metric of the properties themselves.
double curvatureByDifferences(double t, double rho) {
    constexpr double avogadro = 6.0221367e23;
    const double R = fluidConstants.R;
    const auto gTT = [&](double T, double d) {
        double cv, cp;
        CVCP(T, d, pure(), cv, cp);
        return d * cv / (R * T * T);
    };
    const auto gDD = [&](double T, double d) {
        double slope;
        DPDD(T, d, pure(), slope);
        return slope / (R * T * d);
    };
    const auto root = [&](double T, double d) { return std::sqrt(gTT(T, d) * gDD(T, d)); };
    const double hT = 2e-3 * t, hD = 2e-3 * rho;
    const auto first = [](auto value, double x, double h) {
        return (8.0 * (value(x + h) - value(x - h)) - (value(x + 2 * h) - value(x - 2 * h))) / (12.0 * h);
    };
    const auto inT = [&](double T) { return first([&](double v) { return gDD(v, rho); }, T, hT) / root(T, rho); };
    const auto inD = [&](double d) { return first([&](double v) { return gTT(t, v); }, d, hD) / root(t, d); };
    return (first(inT, t, hT) + first(inD, rho, hD)) / root(t, rho) * 1e24 / avogadro;
}

TEST(Curvature, AgreesWithItsDefinitionByDifferences) {
    for (const char* fluid : {"PROPANE", "NITROGEN", "R134A"}) {
        ASSERT_TRUE(loadFluid(fluid));
        for (const double tr : {1.05, 1.5}) {
            for (const double dr : {0.1, 1.0, 2.2}) {
                const double t = tr * fluidConstants.TCRIT[1], rho = dr * fluidConstants.DCRIT[1];
                const double expected = curvatureByDifferences(t, rho);
                EXPECT_NEAR(curvature(t, rho), expected, 2e-5 * std::fabs(expected) + 1e-6) << fluid << tr << dr;
            }
        }
    }
}

TEST(Curvature, IsNegativeAndLargeNearTheCriticalPointAndZeroWithoutDensity) {
    ASSERT_TRUE(loadFluid("PROPANE"));
    const double tc = fluidConstants.TCRIT[1], dc = fluidConstants.DCRIT[1];
    const double near = curvature(1.01 * tc, dc), far = curvature(1.5 * tc, dc);
    EXPECT_LT(near, 10.0 * far);
    EXPECT_LT(near, 0.0);
    EXPECT_EQ(curvature(300.0, 9e-9), 0.0);
    EXPECT_EQ(curvature(0.0, 1.0), 0.0);
}

// Heat of combustion of the ideal gas at 298.15 K with liquid water [kJ/mol].
struct HeatingValue {
    const char* formula;
    double combustion;
    double water;  // moles per mole of fuel
};

TEST(HeatingValues, AtTheStandardStateTheyAreTheHeatOfCombustion) {
    // Rossini et al.: propane 2219.17, butane 2877.40 kJ/mol
    constexpr HeatingValue rows[] = {{"CH3CH2CH3 {C3H8}", 2219.17, 4.0}, {"C4H10 !butane", 2877.40, 5.0}};
    ASSERT_TRUE(loadFluid("PROPANE"));
    for (const HeatingValue& row : rows) {
        fluidFiles.HSYN1[1] = row.formula;
        fluidConstants.HCMBST[1] = row.combustion;
        double gross = 0, net = 0;
        int ierr = 0;
        Text255 herr;
        HEAT(298.15, 0.0, pure(), gross, net, ierr, herr);
        ASSERT_EQ(ierr, 0) << herr.trimmed();
        EXPECT_NEAR(gross, row.combustion * 1000.0, 1e-6);
        EXPECT_NEAR(gross - net, row.water * 44004.0, 1e-6);
    }
}

// d(heat)/dT = cp of what is used up less cp of what is formed.
TEST(HeatingValues, FollowTheHeatCapacitiesWithTemperature) {
    ASSERT_TRUE(loadFluid("PROPANE"));
    fluidFiles.HSYN1[1] = "CH3CH2CH3 {C3H8}";
    fluidConstants.HCMBST[1] = 2219.17;
    const auto heat = [](double t, bool wantNet) {
        double gross = 0, net = 0;
        int ierr = 0;
        Text255 herr;
        HEAT(t, 0.0, pure(), gross, net, ierr, herr);
        return wantNet ? net : gross;
    };
    const double t = 330.0;
    // cp at 330 K [J/(mol K)] of the ideal gases, JANAF tables: O2 29.62, CO2 38.67, H2O 33.82; liquid water 75.4
    const double fuel = CP0(t, pure());
    EXPECT_NEAR((heat(t + 1, false) - heat(t - 1, false)) / 2.0, fuel + 5 * 29.62 - 3 * 38.67 - 4 * 75.4, 2.0);
    EXPECT_NEAR((heat(t + 1, true) - heat(t - 1, true)) / 2.0, fuel + 5 * 29.62 - 3 * 38.67 - 4 * 33.82, 1.0);
}

// The same for the elements beside carbon and hydrogen: methanol, ammonia and hydrogen sulfide burn to carbon dioxide,
// nitrogen, sulfur dioxide and water vapor.
TEST(HeatingValues, CountOxygenNitrogenAndSulfur) {
    struct Row {
        const char* formula;
        double oxygen, carbonDioxide, nitrogen, sulfurDioxide, water;  // moles per mole of fuel
    };
    constexpr Row rows[] = {{"CH3OH {CH4O}", 1.5, 1.0, 0.0, 0.0, 2.0},
                            {"NH3", 0.75, 0.0, 0.5, 0.0, 1.5},
                            {"{H2S}", 1.5, 0.0, 0.0, 1.0, 1.0}};
    ASSERT_TRUE(loadFluid("PROPANE"));  // its heat capacity stands for that of the fuel
    fluidConstants.HCMBST[1] = 500.0;
    const double t = 330.0, step = 1.0;
    for (const Row& row : rows) {
        fluidFiles.HSYN1[1] = row.formula;
        double gross = 0.0, above = 0.0, below = 0.0;
        int ierr = 0;
        Text255 herr;
        HEAT(t + step, 0.0, pure(), gross, above, ierr, herr);
        ASSERT_EQ(ierr, 0) << herr.trimmed();
        HEAT(t - step, 0.0, pure(), gross, below, ierr, herr);
        // cp at 330 K as above, and of N2 29.13, SO2 40.8
        const double expected = CP0(t, pure()) + row.oxygen * 29.62 - row.carbonDioxide * 38.67 - row.nitrogen * 29.13 -
                                row.sulfurDioxide * 40.8 - row.water * 33.82;
        EXPECT_NEAR((above - below) / (2.0 * step), expected, 0.5) << row.formula;
    }
}

// Gases almost without density give the mean of their heats; a component that is selected, or alone, gives its own.
TEST(HeatingValues, OfAMixtureAreTheMeanOfItsComponents) {
    ASSERT_LE(setUp({"METHANE", "ETHANE"}), 0);
    fluidFiles.HSYN1[1] = "{CH4}";
    fluidFiles.HSYN1[2] = "{C2H6}";
    // Rossini et al., kJ/mol
    fluidConstants.HCMBST[1] = 890.71;
    fluidConstants.HCMBST[2] = 1560.69;
    const auto gross = [](const Composition& x) {
        double heat = 0.0, net = 0.0;
        int ierr = 0;
        Text255 herr;
        HEAT(298.15, 0.0, x, heat, net, ierr, herr);
        EXPECT_EQ(ierr, 0) << herr.trimmed();
        return heat;
    };
    Composition x{};
    x[1] = 0.25;
    x[2] = 0.75;
    EXPECT_NEAR(gross(x), 0.25 * 890710.0 + 0.75 * 1560690.0, 1e-3);
    EXPECT_NEAR(gross(unitComposition(2)), 1560690.0, 1e-3);
    PUREFLD(1);
    EXPECT_NEAR(gross(x), 890710.0, 1e-3);
    PUREFLD(0);
    fluidConstants.HCMBST[2] = -1.0;
    EXPECT_NEAR(gross(unitComposition(1)), 890710.0, 1e-3) << "what is not in the mixture need not be known";
}

// Enthalpies from 298.15 K [J/mol], with what the handbook fits leave (0.3 per cent, carbon dioxide 0.7); JANAF
// thermochemical tables (Chase, 1998).
TEST(HeatingValues, EnthalpiesOfTheProductsMeetTheTables) {
    struct Row {
        CombustionProduct product;
        double t, enthalpy, tolerance;
    };
    constexpr Row rows[] = {{CombustionProduct::waterVapor, 500.0, 6925.0, 20.0},
                            {CombustionProduct::waterVapor, 1000.0, 26000.0, 60.0},
                            {CombustionProduct::oxygen, 500.0, 6084.0, 20.0},
                            {CombustionProduct::oxygen, 1000.0, 22703.0, 60.0},
                            {CombustionProduct::carbonDioxide, 500.0, 8305.0, 60.0},
                            {CombustionProduct::carbonDioxide, 1000.0, 33397.0, 80.0},
                            {CombustionProduct::nitrogen, 500.0, 5911.0, 20.0},
                            {CombustionProduct::nitrogen, 1000.0, 21463.0, 60.0},
                            {CombustionProduct::sulfurDioxide, 500.0, 8758.0, 40.0}};
    for (const Row& row : rows)
        EXPECT_NEAR(ENTHHC(row.product, row.t), row.enthalpy, row.tolerance) << static_cast<int>(row.product);
    // liquid water from 25 to 100 C: 75.4 J/(mol K) on the mean
    EXPECT_NEAR(ENTHHC(CombustionProduct::liquidWater, 373.15), 5655.0, 25.0);
    EXPECT_EQ(ENTHHC(CombustionProduct::oxygen, 0.0), 0.0);
}

TEST(HeatingValues, OtherElementsAndMissingHeatsAreRefused) {
    ASSERT_TRUE(loadFluid("R134A"));
    double gross = 0, net = 0;
    int ierr = 0;
    Text255 herr;
    fluidConstants.HCMBST[1] = 100.0;
    for (const char* formula :
         {"CF3CH2F {C2H2F4}", "{CCl4}", "{C2h6}", "{}", "", "{2CH4}", "{(CH3)2O}", "{CH4~}", "{CH4:2}", "{[CH4]}"}) {
        fluidFiles.HSYN1[1] = formula;
        HEAT(300.0, 0.0, pure(), gross, net, ierr, herr);
        EXPECT_EQ(ierr, 1) << formula;
        EXPECT_TRUE(herr.startsWith("[HEAT error 1] Error in chemical formula"));
        EXPECT_EQ(gross, 0.0);
    }
    fluidFiles.HSYN1[1] = "{C3H8}";
    fluidConstants.HCMBST[1] = -1.0;
    HEAT(300.0, 0.0, pure(), gross, net, ierr, herr);
    EXPECT_EQ(ierr, 2);
    EXPECT_TRUE(herr.startsWith("[HEAT error 2] Heating values are not available for all species in the mixture"));
    gross = net = 7.0;
    HEAT(0.0, 0.0, pure(), gross, net, ierr, herr);
    EXPECT_TRUE(ierr == 0 && gross == 0.0 && net == 0.0) << "there is no state at 0 K";
}

TEST(ExcessProperties, OfAPureFluidVanish) {
    ASSERT_TRUE(loadFluid("PROPANE"));
    double vE, eE, hE, sE, aE, gE;
    int ierr = 0;
    Text255 herr;
    for (const int kphase : {0, 1, 2}) {
        double rho = kphase == 2 ? -0.08 : 0.0;
        EXCESS(300.0, kphase == 1 ? 2000.0 : 200.0, pure(), kphase, rho, vE, eE, hE, sE, aE, gE, ierr, herr);
        ASSERT_EQ(ierr, 0) << herr.trimmed();
        EXPECT_GT(rho, 0.0);
        EXPECT_NEAR(vE, 0.0, 1e-9 / rho);
        for (const double value : {eE, hE, aE, gE}) EXPECT_NEAR(value, 0.0, 1e-5);
        EXPECT_NEAR(sE, 0.0, 1e-7);
    }
    Composition activity, coefficient;
    double rho = 0.0;
    TPRHO(300.0, 2000.0, pure(), 1, 0, rho, ierr, herr);
    ACTVY(300.0, rho, pure(), activity, coefficient, ierr, herr);
    ASSERT_EQ(ierr, 0) << herr.trimmed();
    EXPECT_NEAR(activity[1], 1.0, 1e-9);
    EXPECT_NEAR(coefficient[1], 1.0, 1e-9);
    EXPECT_EQ(modelTags.IPUREFLD, 0);
}

class ExcessOfBlend : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_LE(setUp({"PROPANE", "BUTANE"}), 0);
        x[1] = x[2] = 0.5;
    }
    // The density of the mixture that EXCESS takes, or its code.
    double excess(double t, double p, int kphase, double rho) {
        EXCESS(t, p, x, kphase, rho, e[0], e[1], e[2], e[3], e[4], e[5], ierr, herr);
        return rho;
    }
    Composition x{};
    double e[6] = {};
    int ierr = 0;
    Text255 herr;
};

// A phase that is not there, with a guess or without, is the one that the flash finds.
TEST_F(ExcessOfBlend, APhaseThatIsNotThereIsThatOfTheFlash) {
    const double gas = excess(390.0, 100.0, 0, 0.0);
    ASSERT_EQ(ierr, 0) << herr.trimmed();
    const double enthalpy = e[2];
    for (const double guess : {0.0, -9.0, -1e-3}) {
        EXPECT_NEAR(excess(390.0, 100.0, 1, guess), gas, 1e-9 * gas) << guess;
        ASSERT_EQ(ierr, 0) << herr.trimmed();
        EXPECT_NEAR(e[2], enthalpy, 1e-6) << guess;
    }
}

// Without a state of the mixture, or of one of its fluids, there are no results, and the gas constant is the mixture's.
TEST_F(ExcessOfBlend, AStateThatIsNotThereIsRefused) {
    RMIX(x);
    const double R = fluidConstants.R;
    excess(80.0, 100.0, 0, 0.0);
    EXPECT_GT(ierr, 0) << "below the limits of the mixture";
    fluidConstants.TMEOS[2] = fluidConstants.TTPN[2] = 320.0;  // butane freezes, a blend does so later
    excess(300.0, 5000.0, 1, 0.0);
    EXPECT_GT(ierr, 0);
    EXPECT_EQ(fluidConstants.R, R);
    for (const double value : e) EXPECT_EQ(value, 0.0);
    excess(0.0, 100.0, 1, 0.0);
    EXPECT_EQ(ierr, 0);
    for (const double value : e) EXPECT_EQ(value, 0.0);
    modelTags.LFORCESETUP = true;
}

// A component without a share has no activity; one whose pure state is not there ends the calculation.
TEST_F(ExcessOfBlend, ActivitiesOfWhatIsThere) {
    x[1] = 1.0;
    x[2] = 0.0;
    double rho = 0.0;
    TPRHO(300.0, 5000.0, x, 1, 0, rho, ierr, herr);
    Composition activity, coefficient;
    ACTVY(300.0, rho, x, activity, coefficient, ierr, herr);
    ASSERT_EQ(ierr, 0) << herr.trimmed();
    EXPECT_NEAR(activity[1], 1.0, 1e-9);
    EXPECT_EQ(activity[2], 0.0);
    x[1] = x[2] = 0.5;
    TPRHO(300.0, 5000.0, x, 1, 0, rho, ierr, herr);
    fluidConstants.TMEOS[2] = fluidConstants.TTPN[2] = 320.0;
    ACTVY(300.0, rho, x, activity, coefficient, ierr, herr);
    EXPECT_GT(ierr, 0);
    EXPECT_GT(activity[1], 0.5) << "propane came first";
    EXPECT_EQ(activity[2], 0.0);
    EXPECT_EQ(modelTags.IPUREFLD, 0);
    modelTags.LFORCESETUP = true;
}

// A component of a set-up that is not in the mixture changes nothing of what the others have.
TEST(ThirdComponent, WithoutAShareChangesNothing) {
    struct Values {
        Composition f, byDerivatives, phi, u, activity;
        double hE;
    };
    const auto valuesOf = [](std::initializer_list<std::string_view> fluids) {
        modelTags.LFORCESETUP = true;  // other tests leave other offsets
        EXPECT_LE(setUp(fluids), 0);
        Composition x{}, coefficient;
        x[1] = 0.6;
        x[2] = 0.4;
        Values v{};
        int ierr = 0;
        Text255 herr;
        double rho = 0.0, vE, eE, sE, aE, gE;
        EXCESS(280.0, 3000.0, x, 1, rho, vE, eE, v.hE, sE, aE, gE, ierr, herr);
        EXPECT_EQ(ierr, 0) << herr.trimmed();
        FGCTY(280.0, rho, x, v.f);
        FGCTY2(280.0, rho, x, v.byDerivatives, ierr, herr);
        FUGCOF(280.0, rho, x, v.phi, ierr, herr);
        CHEMPOT(280.0, rho, x, v.u, ierr, herr);
        ACTVY(280.0, rho, x, v.activity, coefficient, ierr, herr);
        EXPECT_EQ(ierr, 0) << herr.trimmed();
        return v;
    };
    const Values two = valuesOf({"R32", "R125"}), three = valuesOf({"R32", "R125", "R134A"});
    for (Composition Values::*quantity :
         {&Values::f, &Values::byDerivatives, &Values::phi, &Values::u, &Values::activity}) {
        for (const int i : {1, 2})
            EXPECT_NEAR((three.*quantity)[i], (two.*quantity)[i], 1e-9 * std::fabs((two.*quantity)[i]));
        EXPECT_EQ((three.*quantity)[3], 0.0);
    }
    EXPECT_NEAR(three.hE, two.hE, 1e-6);
    EXPECT_NE(two.hE, 0.0);
}

// ------------------------------------------------------------------------------------------------- saturation lines

class SaturationOfComponent : public testing::Test {
  protected:
    void SetUp() override { ASSERT_LE(setUp({"R134A"}), 0); }
    int ierr = 0;
    Text255 herr;
};

TEST_F(SaturationOfComponent, IsRefusedWhereThereIsNone) {
    double p = 7.0, rho = 7.0, csat = 7.0, dpdt = 7.0, cv2p = 7.0;
    const double Tc = fluidConstants.TCRIT[1], coldest = fluidConstants.TTPN[1];
    DPTSATK(1, Tc + 1.0, 1, p, rho, csat, dpdt, ierr, herr);
    EXPECT_GT(ierr, 0);
    for (const double value : {p, rho, csat, dpdt}) EXPECT_EQ(value, 0.0);
    CSATK(1, Tc + 1.0, 2, p, rho, csat, ierr, herr);
    EXPECT_GT(ierr, 0);
    EXPECT_EQ(csat, 0.0);
    // differences of 0.01 K need neighbours on both sides
    for (const double T : {Tc - 0.005, coldest + 0.005}) {
        cv2p = csat = 7.0;
        CV2PK(1, T, 5.0, cv2p, csat, ierr, herr);
        EXPECT_GT(ierr, 0) << T;
        EXPECT_TRUE(cv2p == 0.0 && csat == 0.0) << T;
    }
    EXPECT_EQ(modelTags.IPUREFLD, 0);
}

// Without a density the two phases are all liquid.
TEST_F(SaturationOfComponent, WithoutADensityItIsThatOfTheLiquid) {
    double p, rho, csat, cv2p, csat0, cv0;
    CSATK(1, 300.0, 1, p, rho, csat, ierr, herr);
    ASSERT_EQ(ierr, 0);
    CV2PK(1, 300.0, rho, cv2p, csat, ierr, herr);
    ASSERT_EQ(ierr, 0);
    CV2PK(1, 300.0, 0.0, cv0, csat0, ierr, herr);
    ASSERT_EQ(ierr, 0);
    EXPECT_NEAR(cv0, cv2p, 1e-6 * cv2p);
    EXPECT_EQ(csat0, csat);
}

// From densities anywhere on their sides of the critical one, the equal areas are found or refused.
TEST_F(SaturationOfComponent, EqualAreasFromRoughDensitiesAreThoseOfTheFlashOrRefused) {
    const Composition x = unitComposition(1);
    const double Dc = fluidConstants.DCRIT[1];
    int found = 0, refused = 0;
    for (const double reduced : {0.5, 0.6, 0.7, 0.8, 0.9, 0.97, 0.995}) {
        const double T = reduced * fluidConstants.TCRIT[1];
        double p, Dl, Dv;
        Composition liquid, vapor;
        SATT(T, x, 1, p, Dl, Dv, liquid, vapor, ierr, herr);
        ASSERT_EQ(ierr, 0);
        for (const double denser : {1.3, 1.05, 0.98, 0.9, 0.8, 0.7})
            for (const double thinner : {0.3, 0.9, 1.1, 2.0, 5.0, 30.0}) {
                double pressure = 7.0, rhol = std::max(denser * Dl, 1.01 * Dc),
                       rhov = std::min(thinner * Dv, 0.99 * Dc);
                MAXWELL(1, T, pressure, rhol, rhov, ierr, herr);
                if (ierr == 0) {
                    ++found;
                    EXPECT_NEAR(pressure / p, 1.0, 2e-4) << T << ' ' << denser << ' ' << thinner;
                    EXPECT_NEAR(rhol / Dl, 1.0, 2e-3) << T << ' ' << denser << ' ' << thinner;
                    EXPECT_NEAR(rhov / Dv, 1.0, 2e-3) << T << ' ' << denser << ' ' << thinner;
                } else {
                    ++refused;
                    EXPECT_FALSE(std::fabs(denser - 1.0) < 0.06 && std::fabs(thinner - 1.0) < 0.2)
                        << "near starts are found: " << T << ' ' << denser << ' ' << thinner;
                    EXPECT_EQ(ierr, 1);
                    EXPECT_TRUE(pressure == -1.0 && rhol == -1.0 && rhov == -1.0);
                    EXPECT_TRUE(herr.startsWith("[MAXWELL error] no convergence"));
                }
            }
    }
    std::printf("equal areas: %d found, %d refused\n", found, refused);
    EXPECT_GT(found, 100);
    EXPECT_GT(refused, 0);
    double pressure = 7.0, rhol = 0.0, rhov = 0.1;
    MAXWELL(1, 300.0, pressure, rhol, rhov, ierr, herr);
    EXPECT_EQ(ierr, 1) << "without a start";
    EXPECT_EQ(pressure, -1.0);
}

// ---------------------------------------------------------------------------------------------------- critical flow

// The throat has the entropy of the stagnation state and the energy of the flow that approaches it, or it is refused
// and there are no results.
void expectThroat(double T, double p, double v, int& ierr) {
    const Composition z = unitComposition(1);
    double cs = 7.0, ts = 7.0, Ds = 7.0, ps = 7.0, ws = 7.0;
    Text255 herr;
    CSTAR(T, p, v, z, cs, ts, Ds, ps, ws, ierr, herr);
    SCOPED_TRACE(testing::Message() << T << " K, " << p << " kPa, " << v << " m/s: " << herr.trimmed());
    if (ierr != 0) {
        for (const double value : {cs, ts, Ds, ps, ws}) EXPECT_EQ(value, 0.0);
        return;
    }
    double t = T, D, Dl, Dv, q, e, h0, s0, cv, cp, w, pThroat, h, s, jt;
    Composition liquid, vapor;
    Text255 text;
    int code;
    TPFLSH(t, p, z, D, Dl, Dv, liquid, vapor, q, e, h0, s0, cv, cp, w, code, text);
    THERM(ts, Ds, z, pThroat, e, h, s, cv, cp, w, jt);
    const double R = fluidConstants.R, mass = WMOL(z) / 1000.0;
    EXPECT_NEAR(s, s0, 1e-6 * R);
    EXPECT_NEAR(h + 0.5 * ws * ws * mass, h0 + 0.5 * v * v * mass, 1e-7 * std::fabs(h0) + 1e-6 * R * T);
    EXPECT_NEAR(w, ws, 1e-9 * w);
    EXPECT_NEAR(pThroat, ps, 1e-6 * p + 1e-6 * ps);
    EXPECT_NEAR(cs, Ds * ws * std::sqrt(R * T * mass) / p, 1e-9 * cs);
}

TEST(CriticalFlow, KeepsEntropyAndEnergy) {
    for (const char* fluid : {"R134A", "METHANE", "PROPANE"}) {
        ASSERT_LE(setUp({fluid}), 0);
        std::mt19937 random(11);
        std::uniform_real_distribution<double> unit(0.0, 1.0);
        int found = 0;
        for (int k = 0; k < 300; ++k) {
            const double T = fluidConstants.TTPN[1] + (fluidConstants.TXEOS[1] - fluidConstants.TTPN[1]) * unit(random);
            const double p = std::exp(10.0 * unit(random)), v = k % 3 == 0 ? std::exp(9.0 * unit(random)) : 0.0;
            int ierr = 0;
            expectThroat(T, p, v, ierr);
            found += ierr == 0;
        }
        EXPECT_GT(found, 100) << fluid;
    }
}

// A flow of more than twice its speed of sound has no throat ahead: the search for one ends.
TEST(CriticalFlow, OfAFasterFlowEndsWithoutAThroat) {
    int ierr = 0;
    ASSERT_LE(setUp({"PROPANE"}), 0);
    expectThroat(319.05, 1317.43, 696.205, ierr);
    EXPECT_EQ(ierr, 200);
    ASSERT_LE(setUp({"METHANE"}), 0);
    expectThroat(107.597, 7206.46, 1719.82, ierr);
    EXPECT_EQ(ierr, 200);
}

}  // namespace
}  // namespace frigana::test
