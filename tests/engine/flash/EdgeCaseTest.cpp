// Cases at the edges of the flash routines: marks and sentinels, refused inputs with their texts, two roots, mass
// quality, failing iterations.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "CSTAR.h"
#include "FlashState.h"
#include "LIMITS.h"
#include "PROP_SUB.h"
#include "PureFluid.h"
#include "UTILITY.h"

namespace frigana {
namespace {

using test::flash;
using test::FlashState;

Composition equimolar() {
    Composition z{};
    z[1] = z[2] = 0.5;
    return z;
}

Composition binary(double first) {
    Composition z{};
    z[1] = first;
    z[2] = 1 - first;
    return z;
}

// A message without the null character at its end.
std::string textOf(const Text255& herr) {
    std::string text(herr.trimmed());
    while (!text.empty() && (text.back() == '\0' || text.back() == ' ')) text.pop_back();
    return text;
}

struct Critical {
    double T, p, D;
};
Critical criticalPoint(const Composition& z) {
    Critical c{};
    int ierr = 0;
    Text255 herr;
    CRITP(z, c.T, c.p, c.D, ierr, herr);
    return c;
}

// -- given pressure or temperature ------------------------------------------------------------------------------

// No mixture of the library lacks a density root closely above its critical temperature. A pressure far beyond any
// range, for which the limit is lifted, has none there below it, and takes the same way.
TEST(EdgeCase, MixtureWithoutDensityRootComesBackAtOnePointOneOfItsCriticalTemperature) {
    ASSERT_LE(test::setUp({"R32", "R134A"}), 0);
    const Composition z = equimolar();
    const Critical c = criticalPoint(z);
    const SlotArray<double> limits = fluidConstants.PEOS;
    fluidConstants.PEOS.fill(1e15);
    const FlashState moved = flash("TP", 0.95 * c.T, 1e12, z);
    const FlashState kept = flash("TP", 0.95 * c.T, 1e4, z);
    fluidConstants.PEOS = limits;
    EXPECT_DOUBLE_EQ(moved.T, 1.1 * c.T);
    EXPECT_DOUBLE_EQ(kept.T, 0.95 * c.T);
    EXPECT_EQ(kept.ierr, 0);
}

TEST(EdgeCase, CarbonDioxideToleratesSlightlyNegativeMixedDerivative) {
    ASSERT_LE(test::setUp("CO2"), 0);
    const Composition z = unitComposition(1);
    const Critical c = criticalPoint(z);
    int states = 0;
    double lowest = 0;
    for (double t = 1.0; t < 1.02; t += 0.0005) {
        for (double d = 0.9; d < 1.1; d += 0.005) {
            Therm2Result r;
            THERM2(t * c.T, d * c.D, z, r);
            if (!(r.dPdD > 0 && r.d2PdTD < 0 && r.d2PdTD > -23)) continue;
            const FlashState state = flash("TP", t * c.T, r.p, z);
            EXPECT_EQ(state.ierr, 0) << "T/Tc=" << t << " D/Dc=" << d << " " << textOf(state.herr);
            EXPECT_NEAR(state.D / (d * c.D), 1, 1e-6) << "T/Tc=" << t << " D/Dc=" << d;
            ++states;
            lowest = std::min(lowest, r.d2PdTD);
        }
    }
    EXPECT_GT(states, 5);
    EXPECT_LT(lowest, -5);
}

TEST(EdgeCase, TwoPhaseStatesCarryTheSentinelsOfTheirRoutine) {
    ASSERT_LE(test::setUp({"R32", "R134A"}), 0);
    const Composition z = binary(0.3);
    const FlashState wet = flash("TQ", 280, 0.5, z);
    ASSERT_EQ(wet.ierr, 0) << textOf(wet.herr);
    EXPECT_EQ(wet.cv, -9999920);
    EXPECT_EQ(wet.cp, -9999920);
    EXPECT_EQ(wet.w, -9999920);
    const FlashState wetAtP = flash("PQ", wet.p, 0.5, z);
    EXPECT_EQ(wetAtP.cv, -9999920);
    EXPECT_EQ(wetAtP.w, -9999920);
    const FlashState states[] = {flash("TP", wet.T, wet.p, z), flash("TD", wet.T, wet.D, z),
                                 flash("PD", wet.p, wet.D, z), flash("PH", wet.p, wet.h, z),
                                 flash("PS", wet.p, wet.s, z), flash("PE", wet.p, wet.e, z),
                                 flash("TH", wet.T, wet.h, z)};
    for (const FlashState& state : states) {
        EXPECT_EQ(state.ierr, 0) << textOf(state.herr);
        EXPECT_EQ(state.cv, -9999980);
        EXPECT_EQ(state.cp, -9999980);
        EXPECT_EQ(state.w, -9999980);
        EXPECT_NEAR(state.q, 0.5, 5e-6);
    }
}

TEST(EdgeCase, SinglePhasesCarryTheMarksOfTheirRegion) {
    ASSERT_LE(test::setUp("R134A"), 0);
    const Composition z = unitComposition(1);
    const Critical c = criticalPoint(z);
    // far below any saturation pressure; above the critical temperature; above the critical pressure; above both
    EXPECT_EQ(flash("TP", 300, 1, z).q, 998);
    EXPECT_EQ(flash("TP", 1.1 * c.T, 0.5 * c.p, z).q, 998);
    EXPECT_EQ(flash("TP", 300, 1.1 * c.p, z).q, -998);
    EXPECT_EQ(flash("TP", 1.1 * c.T, 1.1 * c.p, z).q, 999);
    // close to saturation the quality is that of the formula
    const FlashState saturated = flash("TQ", 300, 0, z);
    EXPECT_LT(flash("TP", 300, saturated.p + 100, z).q, 0);
    EXPECT_GT(flash("TP", 300, saturated.p - 10, z).q, 1);
    // from pressure and enthalpy
    const FlashState vapor = flash("TP", 320, 500, z);
    EXPECT_EQ(flash("PH", 500, vapor.h, z).q, 998);
    const FlashState liquid = flash("TP", 280, 500, z);
    EXPECT_LT(flash("PH", 500, liquid.h, z).q, 0);
    EXPECT_EQ(flash("PH", 2 * c.p, liquid.h, z).q, -998);
}

TEST(EdgeCase, NoPressureIsAnIdealGas) {
    ASSERT_LE(test::setUp("R134A"), 0);
    const Composition z = unitComposition(1);
    const FlashState none = flash("TP", 300, 0, z);
    EXPECT_EQ(none.ierr, 0);
    EXPECT_EQ(none.D, 0);
    EXPECT_GT(none.cp, 0);
    EXPECT_EQ(flash("TD", 300, 0, z).p, 0);
    EXPECT_EQ(flash("PD", 0, 0, z).T, 0);
}

TEST(EdgeCase, RefusedFlashesReturnTheStateThatTheirTextPromises) {
    ASSERT_LE(test::setUp("R134A"), 0);
    const Composition z = unitComposition(1);
    const Critical c = criticalPoint(z);
    // limits at T and p: densities zero, properties of the ideal gas
    const FlashState cold = flash("TP", 100, 500, z);
    EXPECT_EQ(cold.D, 0);
    EXPECT_EQ(cold.q, 999);
    EXPECT_GT(cold.h, 0);
    // range of a property at p: the critical state
    const FlashState low = flash("PH", 500, -1e6, z);
    EXPECT_EQ(low.T, c.T);
    EXPECT_EQ(low.D, c.D);
    EXPECT_EQ(low.q, 999);
    // range of a property at T: a thin gas and marks
    const FlashState high = flash("TH", 300, 1e7, z);
    EXPECT_EQ(high.D, 0.0001);
    EXPECT_NEAR(high.p, 0.0001 * fluidConstants.R * 300, 1e-12);
    EXPECT_EQ(high.s, -9999970);
    EXPECT_EQ(high.q, -9999970);
}

TEST(EdgeCase, SolidStatesAreNamed) {
    ASSERT_LE(test::setUp("CO2"), 0);
    const Composition z = unitComposition(1);
    // 300 kPa is below the triple point of carbon dioxide: a vapor has a state, vapor with solid has none
    EXPECT_EQ(flash("PH", 300, flash("TP", 260, 300, z).h, z).ierr, 0);
    EXPECT_EQ(flash("PH", 300, 5000, z).ierr, 250);
    EXPECT_EQ(flash("PS", 300, 30, z).ierr, 250);
}

// -- messages ---------------------------------------------------------------------------------------------------

TEST(FlashMessage, EveryRefusalHasItsCodeAndText) {
    ASSERT_LE(test::setUp("R134A"), 0);
    const Composition z = unitComposition(1);
    struct Row {
        const char* letters;
        double a, b;
        int code;
        const char* text;
    };
    const Row rows[] = {
        {"TP", 100, 500, 1,
         "[TPFLSH error  1] one or more inputs are out of range:  temperature below lower limit, T =   100.00000 K, "
         "Tmin =   169.85000 K"},
        {"TP", 700, 500, 1,
         "[TPFLSH error  1] one or more inputs are out of range:  temperature > 1.5 x upper limit, T =   700.00000 K, "
         "Tmax =   455.00000 K"},
        {"TP", 460, 500, -1,
         "[TPFLSH warning -1] one or more inputs are out of range:  temperature above upper limit, T =   460.00000 K, "
         "Tmax =   455.00000 K"},
        {"TQ", 380, 0.5, 271,
         "[TQFLSH error 271] temperature input to temperature-quality flash is greater than critical temperature; "
         "T =  380.00 K, Tcrit =  374.21 K."},
        {"TQ", 300, 1.5, 275,
         "[TQFLSH error 275] input quality is out of range; q =  1.5000    ; quality must be between 0 and 1"},
        {"PQ", 5000, 0.5, 291,
         "[PQFLSH error 291] pressure input to pressure-quality flash is greater than critical pressure; P =  5.0000 "
         "MPa, Pcrit =  4.0593 MPa."},
        {"PQ", 500, -0.5, 295,
         "[PQFLSH error 295] input quality is out of range; q =-0.50000    ; quality must be between 0 and 1"},
    };
    for (const Row& row : rows) {
        const FlashState state = flash(row.letters, row.a, row.b, z);
        EXPECT_EQ(state.ierr, row.code) << row.text;
        EXPECT_EQ(textOf(state.herr), row.text);
    }
    struct Start {
        const char* letters;
        double a, b;
        int code;
        const char* text;
    };
    const Start starts[] = {
        {"PH", 500, -1e6, 249, "[PHFLSH error 249] Input value is outside limits; H =-0.10000E+07, min,max ="},
        {"PS", 500, 1e4, 249, "[PSFLSH error 249] Input value is outside limits; S =  10000.    , min,max ="},
        {"PE", 500, 1e7, 249, "[PEFLSH error 249] Input value is outside limits; E = 0.10000E+08, min,max ="},
        {"PH", -5, 20000, 4, "[PHFLSH error   4] one or more inputs are out of range:"},
        {"TH", 300, 1e7, 239, "[THFLSH error 239] Input value is outside limits; H = 0.10000E+08, Hmax ="},
        {"TS", 300, -100, 239, "[TSFLSH error 239] Input value is outside limits; S = -100.00    , Smin ="},
        {"TD", 300, 30, 2, "[TDFLSH error  2] one or more inputs are out of range:   density > upper limit"},
        {"DH", 5, -1e6, 215, "[DHFLSH error 248] iteration did not converge:  [DHFLSH error 227] input is outside"},
        {"HS", 20000, 1000, 200, "[HSFLSH error 200] h-s inputs are two-phase or out of bounds, iterative routine is"},
    };
    for (const Start& row : starts) {
        const FlashState state = flash(row.letters, row.a, row.b, z);
        EXPECT_EQ(state.ierr, row.code) << row.text;
        EXPECT_EQ(textOf(state.herr).rfind(row.text, 0), 0U) << textOf(state.herr);
    }
    ASSERT_LE(test::setUp("CO2"), 0);
    EXPECT_EQ(textOf(flash("PH", 300, 5000, z).herr),
              "[PHFLSH error 250]; input state is solid or two-phase solid-vapor");
}

// -- further pairs ----------------------------------------------------------------------------------------------

TEST(EdgeCase, MixtureWithOneFractionOfOneFollowsThePurePath) {
    ASSERT_LE(test::setUp({"R32", "R134A"}), 0);
    const Composition z = binary(1 - 5e-9);
    const FlashState liquid = flash("TQ", 280, 0, z);
    const FlashState vapor = flash("TQ", 280, 1, z);
    const FlashState wet = flash("TQ", 280, 0.5, z);
    ASSERT_EQ(liquid.ierr, 0);
    EXPECT_EQ(liquid.p, vapor.p);
    EXPECT_EQ(wet.p, vapor.p);
    ASSERT_LE(test::setUp("R32"), 0);
    EXPECT_NEAR(flash("TQ", 280, 0, unitComposition(1)).p / liquid.p, 1, 1e-12);
}

TEST(EdgeCase, MassQualityConcernsMixturesAlone) {
    ASSERT_LE(test::setUp("R134A"), 0);
    const FlashState molar = flash("TQ", 280, 0.5, unitComposition(1), 1);
    const FlashState mass = flash("TQ", 280, 0.5, unitComposition(1), 2);
    EXPECT_EQ(molar.h, mass.h);
    EXPECT_EQ(molar.D, mass.D);

    ASSERT_LE(test::setUp({"R32", "R134A"}), 0);
    const Composition z = binary(0.3);
    for (const char* letters : {"TQ", "PQ"}) {
        const FlashState state = flash(letters, letters[0] == 'T' ? 280 : 600, 0.5, z, 2);
        ASSERT_EQ(state.ierr, 0) << textOf(state.herr);
        // half of the mass is vapor, and the phases make up the feed
        const double vapor = 0.5 / WMOL(state.y);
        const double q = vapor / (vapor + 0.5 / WMOL(state.x));
        EXPECT_NEAR((1 - q) * state.x[1] + q * state.y[1], z[1], 1e-6);
        EXPECT_LT(q, 1);
        EXPECT_GT(std::abs(q - 0.5), 0.01);
    }
}

TEST(EdgeCase, EnthalpyWithAMinimumAlongTheIsothermHasTwoRoots) {
    ASSERT_LE(test::setUp("R134A"), 0);
    const Composition z = unitComposition(1);
    const Critical c = criticalPoint(z);
    const double T = 1.07 * c.T;
    const FlashState state = flash("TP", T, 20000, z);
    const FlashState lower = flash("TH", T, state.h, z, 1);
    const FlashState higher = flash("TH", T, state.h, z, 2);
    EXPECT_EQ(lower.ierr, -238);
    EXPECT_EQ(higher.ierr, -238);
    EXPECT_EQ(textOf(lower.herr),
              "[THFLSH warning 238] two solutions exist for the input values; the lower density root has been "
              "calculated");
    EXPECT_EQ(textOf(higher.herr),
              "[THFLSH warning 238] two solutions exist for the input values; the higher density root has been "
              "calculated");
    EXPECT_LT(lower.D, 0.95 * higher.D);
    EXPECT_NEAR(lower.h / state.h, 1, 1e-8);
    EXPECT_NEAR(higher.h / state.h, 1, 1e-8);
}

TEST(EdgeCase, EnthalpyBelowEveryValueAlongAnIsobarExhaustsThePasses) {
    ASSERT_LE(test::setUp("R134A"), 0);
    const Composition z = unitComposition(1);
    double T = 0;
    double p = 0;
    double D = 0;
    int ierr = 0;
    Text255 herr;
    ABFL1(1000, -1e6, z, 2, "PH", 0, 0, T, p, D, ierr, herr);
    EXPECT_EQ(ierr, 248);
    EXPECT_EQ(textOf(herr).rfind("[PHFLSH error 248] single-phase iteration did not converge, T, deltaT =", 0), 0U)
        << textOf(herr);
    EXPECT_EQ(textOf(herr).substr(textOf(herr).size() - 3), " K.");
}

TEST(EdgeCase, DensityIterationNamesTheDensity) {
    ASSERT_LE(test::setUp("R134A"), 0);
    const Composition z = unitComposition(1);
    double p = 0;
    double D = 0;
    int ierr = 0;
    Text255 herr;
    TSFL1(400, 1000, z, 0.1, 10, p, D, ierr, herr);
    EXPECT_EQ(ierr, 248);
    EXPECT_EQ(textOf(herr).rfind("[TSFLSH error 248] single-phase iteration did not converge, D, deltaD =", 0), 0U)
        << textOf(herr);
    EXPECT_NE(textOf(herr).find(" mol/L."), std::string::npos);
}

TEST(EdgeCase, ValuesOutsideTheTwoPhaseRangeAreNamed) {
    ASSERT_LE(test::setUp("R134A"), 0);
    const Composition z = unitComposition(1);
    const FlashState liquid = flash("TQ", 280, 0, z);
    const FlashState vapor = flash("TQ", 280, 1, z);
    double pbub = 0, pdew = 0, Dl0 = 0, Dv0 = 0, p = 0, Dl = 0, Dv = 0, q = 0;
    Composition ybub{}, xdew{}, x{}, y{};
    int ierr = 0;
    Text255 herr;
    THFL2(280, liquid.h - 1, z, 0, pbub, pdew, Dl0, Dv0, ybub, xdew, p, Dl, Dv, x, y, q, ierr, herr);
    EXPECT_EQ(ierr, 227);
    EXPECT_EQ(q, 999);
    EXPECT_EQ(textOf(herr), "[THFLSH error 227] input is outside saturation bounds");
    THFL2(280, vapor.h + 1, z, 0, pbub, pdew, Dl0, Dv0, ybub, xdew, p, Dl, Dv, x, y, q, ierr, herr);
    EXPECT_EQ(ierr, 228);
    THFL2(280, 0.25 * liquid.h + 0.75 * vapor.h, z, 0, pbub, pdew, Dl0, Dv0, ybub, xdew, p, Dl, Dv, x, y, q, ierr,
          herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_NEAR(q, 0.75, 1e-9);
    EXPECT_NEAR(p / liquid.p, 1, 1e-9);
}

TEST(EdgeCase, EveryPairOfAMixtureLeadsBackToItsTwoPhaseState) {
    ASSERT_LE(test::setUp({"R32", "R134A"}), 0);
    const Composition z = binary(0.3);
    const FlashState wet = flash("TQ", 280, 0.5, z);
    const auto value = [&](char letter) {
        switch (letter) {
            case 'T':
                return wet.T;
            case 'P':
                return wet.p;
            case 'D':
                return wet.D;
            case 'H':
                return wet.h;
            case 'S':
                return wet.s;
            default:
                return wet.e;
        }
    };
    for (const char* letters : {"TD", "PD", "PH", "PS", "PE", "TH", "TS", "TE", "DH", "DS", "DE", "HS", "ES"}) {
        const FlashState state = flash(letters, value(letters[0]), value(letters[1]), z);
        EXPECT_EQ(state.ierr, 0) << letters << " " << textOf(state.herr);
        // Given density, the temperature is sought to 0.0001 mol/L only.
        EXPECT_NEAR(state.T, 280, letters[0] == 'D' ? 5e-3 : 1e-4) << letters;
        EXPECT_NEAR(state.q, 0.5, letters[0] == 'D' ? 5e-5 : 2e-6) << letters;
    }
}

// -- critical flow ----------------------------------------------------------------------------------------------

// A gas almost without pressure flows with the factor of the ideal gas, sqrt(g) (2/(g+1))^((g+1)/(2(g-1))), which for
// nitrogen grows with pressure.
TEST(CriticalFlow, FactorOfNitrogen) {
    ASSERT_LE(test::setUp("NITROGEN"), 0);
    const Composition z = unitComposition(1);
    double cs = 0, ts = 0, Ds = 0, ps = 0, ws = 0;
    int ierr = 0;
    Text255 herr;
    CSTAR(300, 1, 0, z, cs, ts, Ds, ps, ws, ierr, herr);
    ASSERT_EQ(ierr, 0) << textOf(herr);
    const double g = 1.4;
    EXPECT_NEAR(cs, std::sqrt(g) * std::pow(2 / (g + 1), (g + 1) / (2 * (g - 1))), 2e-4);
    EXPECT_NEAR(ts, 300 * 2 / (g + 1), 0.1);
    EXPECT_NEAR(ps, std::pow(2 / (g + 1), g / (g - 1)), 1e-3);

    // The throat has the entropy of the stagnation state and the energy of the flow.
    CSTAR(300, 10000, 0, z, cs, ts, Ds, ps, ws, ierr, herr);
    ASSERT_EQ(ierr, 0) << textOf(herr);
    const FlashState before = flash("TP", 300, 10000, z);
    const FlashState throat = flash("TD", ts, Ds, z);
    EXPECT_NEAR(throat.s / before.s, 1, 1e-7);
    EXPECT_NEAR(throat.w / ws, 1, 1e-9);
    EXPECT_NEAR(throat.h + 0.5 * ws * ws * WMOL(z) / 1000, before.h, 1e-4);
    EXPECT_GT(cs, 0.69);
}

TEST(CriticalFlow, ATwoPhaseThroatIsRefused) {
    ASSERT_LE(test::setUp("R134A"), 0);
    const Composition z = unitComposition(1);
    double cs = 0, ts = 0, Ds = 0, ps = 0, ws = 0;
    int ierr = 0;
    Text255 herr;
    // An expansion from the dew line of R134a at 300 K enters the two-phase region.
    const FlashState saturated = flash("TQ", 300, 1, z);
    CSTAR(300.5, 0.999 * saturated.p, 0, z, cs, ts, Ds, ps, ws, ierr, herr);
    EXPECT_EQ(ierr, 201) << textOf(herr);
    EXPECT_EQ(cs, 0);
    CSTAR(360, 0.999 * saturated.p, 0, z, cs, ts, Ds, ps, ws, ierr, herr);
    EXPECT_EQ(ierr, 0) << textOf(herr);
    CSTAR(100, 100, 0, z, cs, ts, Ds, ps, ws, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_EQ(cs, 0);
}

}  // namespace
}  // namespace frigana
