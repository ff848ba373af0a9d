// Surface tension of pure fluids and mixtures.
#include <cmath>
#include <cstdio>
#include <utility>

#include "CORE_PR.h"
#include "FluidWith.h"
#include "PROP_SUB_FUGACITY.h"
#include "SaturationSpline.h"

namespace frigana::test {
namespace {

struct Tension {
    double sigma = 0.0;
    int ierr = 0;
    std::string message;
};

Tension stn(double T, double Dl, double Dv, const Composition& xl, const Composition& xv) {
    Tension t;
    Text255 herr;
    STN(T, Dl, Dv, xl, xv, t.sigma, t.ierr, herr);
    t.message = words(herr);
    return t;
}
Tension surft(double T, const Composition& x) {
    Tension t;
    Text255 herr;
    double Dl = 0.0;
    SURFT(T, Dl, x, t.sigma, t.ierr, herr);
    t.message = words(herr);
    return t;
}

TEST(SurfaceTension, isZeroAtTheCriticalTemperatureAndHasACodeAboveIt) {
    for (const char* fluid : {"R134A", "CO2", "R32", "PROPANE"}) {
        ASSERT_EQ(setUp(fluid), 0);
        const double tc = fluidConstants.TCRIT[1];
        const Composition x = unitComposition(1);
        Tension t = stn(tc, 5.0, 5.0, x, x);
        EXPECT_EQ(t.sigma, 0.0) << fluid;
        EXPECT_EQ(t.ierr, 0) << fluid;
        t = stn(tc + 0.001, 5.0, 5.0, x, x);
        EXPECT_EQ(t.sigma, 0.0) << fluid;
        EXPECT_EQ(t.ierr, 121) << fluid;
        EXPECT_EQ(
            t.message.substr(0, 99),
            "[STN error 121] temperature input to surface tension routine is greater than critical temperature; ");
        EXPECT_EQ(surft(tc + 0.5, x).sigma, 0.0);
        EXPECT_EQ(surft(tc + 0.5, x).ierr, 121);
    }
    // five digits in twelve columns; of the blanks before a unit one is left
    ASSERT_EQ(setUp("R134A"), 0);
    const Composition x = unitComposition(1);
    EXPECT_EQ(stn(400.0, 5.0, 5.0, x, x).message,
              "[STN error 121] temperature input to surface tension routine is greater than critical temperature; T =  "
              "400.00 K, Tcrit =  374.21 K.");
}

// Up to 0.999 of the critical temperature: the published series of R12 and R227EA pass zero 0.05 K below it.
TEST(SurfaceTension, fallsFromTheTriplePointToTheCriticalPointForEveryFluid) {
    for (const char* fluid : pureFluids) {
        ASSERT_EQ(setUp(fluid), 0);
        const FluidConstants& f = fluidConstants;
        double last = 1.0;
        for (int k = 0; k <= 50; ++k) {
            const double T = f.TMINST[1] + (0.999 * f.TCRIT[1] - f.TMINST[1]) * k / 50.0;
            double sigma = 0.0;
            int ierr = 0;
            Text255 herr;
            STNK(1, 1.0 - T / f.TCRIT[1], sigma, ierr, herr);
            ASSERT_EQ(ierr, 0);
            EXPECT_GT(sigma, 0.0) << fluid << ' ' << T;
            EXPECT_LT(sigma, last) << fluid << ' ' << T;
            last = sigma;
        }
    }
}

TEST(SurfaceTension, findsThePhasesItself) {
    ASSERT_EQ(setUp("R134A"), 0);
    const Composition x = unitComposition(1);
    double p = 0.0, Dl = 0.0, Dv = 0.0;
    ASSERT_TRUE(saturation(300.0, p, Dl, Dv));
    const Tension direct = stn(300.0, Dl, Dv, x, x), found = surft(300.0, x);
    EXPECT_EQ(found.ierr, 0) << found.message;
    EXPECT_NEAR(found.sigma / direct.sigma, 1.0, 1e-12);

    // vapor neither given nor looked at: its limits do not count
    double liquid = 0.0, vapor = 0.0, sigma = 0.0;
    Composition xl = x, xv{};
    xv[1] = -5.0;
    int ierr = 0;
    Text255 herr;
    SURTEN(300.0, liquid, vapor, xl, xv, sigma, ierr, herr);
    EXPECT_EQ(ierr, 0) << words(herr);
    EXPECT_NEAR(sigma / direct.sigma, 1.0, 1e-12);
    EXPECT_NEAR(liquid / Dl, 1.0, 1e-9);
    EXPECT_NEAR(vapor / Dv, 1.0, 1e-9);
    EXPECT_EQ(xv[1], 1.0);

    // one of them not given
    for (const auto& [givenLiquid, givenVapor] : {std::pair{Dl, 0.0}, std::pair{0.0, Dv}}) {
        liquid = givenLiquid;
        vapor = givenVapor;
        SURTEN(300.0, liquid, vapor, xl, xv, sigma, ierr, herr);
        EXPECT_EQ(ierr, 0) << words(herr);
        EXPECT_NEAR(sigma / direct.sigma, 1.0, 1e-12);
        EXPECT_NEAR(liquid / Dl, 1.0, 1e-9);
        EXPECT_NEAR(vapor / Dv, 1.0, 1e-9);
    }
}

TEST(SurfaceTension, tellsTemperaturesOutOfRange) {
    ASSERT_EQ(setUp("CO2"), 0);  // so that the limits come from the file again
    ASSERT_EQ(setUp("R134A"), 0);
    const Composition x = unitComposition(1);
    const double value = surft(240.0, x).sigma;
    fluidConstants.TMINST[1] = 250.0;  // above that of the equation of state
    Tension t = surft(240.0, x);
    EXPECT_EQ(t.sigma, value);
    EXPECT_EQ(t.ierr, 1) << t.message;
    EXPECT_EQ(t.message, "[SURFT error 1] t<tmin");
    EXPECT_GT(t.sigma, 0.01);
    double Dl = 0.0, Dv = 0.0, sigma = 0.0;
    Composition xl = x, xv = x;
    int ierr = 0;
    Text255 herr;
    SURTEN(700.0, Dl, Dv, xl, xv, sigma, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_EQ(sigma, notComputed);
    EXPECT_EQ(words(herr).substr(0, 17), "[SURTEN error  1]");
    EXPECT_EQ(words(herr).substr(17, 52), " one or more inputs are out of range:  temperature >");
    SURTEN(380.0, Dl, Dv, xl, xv, sigma, ierr, herr);
    EXPECT_EQ(ierr, 121);
    EXPECT_EQ(sigma, 0.0);
    EXPECT_EQ(words(herr).substr(0, 33), "[SURTEN error121] [SATT error 121");
    t = surft(380.0, x);
    EXPECT_EQ(t.ierr, 121);
    EXPECT_EQ(t.sigma, 0.0);
    EXPECT_EQ(t.message.substr(0, 32), "[SURFT error121] [SATT error 121");
    t = surft(700.0, x);
    EXPECT_EQ(t.ierr, 1);
    EXPECT_EQ(t.sigma, notComputed);
    EXPECT_EQ(t.message.substr(0, 53), "[SURFT error  1] one or more inputs are out of range:");
    // a little above the range of the fit: a warning with a value
    fluidConstants.TMINST[1] = 169.85;
    fluidConstants.TMAXST[1] = 230.0;
    t = surft(240.0, x);
    EXPECT_EQ(t.sigma, value);
    EXPECT_EQ(t.ierr, -21);
    EXPECT_EQ(t.message.substr(0, 57), "[SURFT warning -21] one or more inputs are out of range: ");
    Dl = Dv = 0.0;
    SURTEN(240.0, Dl, Dv, xl, xv, sigma, ierr, herr);
    EXPECT_EQ(sigma, value);
    EXPECT_EQ(ierr, -21);
    EXPECT_EQ(words(herr).substr(0, 58), "[SURTEN warning -21] one or more inputs are out of range: ");
    modelTags.LFORCESETUP = true;
}

TEST(SurfaceTension, aCriticalPointThatIsNotKnownHasCode160) {
    ASSERT_EQ(setUp({"R32", "R134A"}), 0);
    double sigma = 1.0;
    int ierr = 0;
    Text255 herr;
    STN(300.0, 15.0, 1.0, Composition{}, Composition{}, sigma, ierr, herr);
    EXPECT_EQ(ierr, 160);
    EXPECT_EQ(sigma, 0.0);
    EXPECT_EQ(words(herr), "[STN error 160] [CRTHMX error] sum(x)= 0");
    // shares of the fugacity that no composition has
    Composition zeta{}, x{};
    zeta[1] = 5.0;
    zeta[2] = -4.0;
    x[1] = x[2] = 0.5;
    double tc = 0.0, pc = 0.0, dc = 0.0;
    CRITF(zeta, x, tc, pc, dc, ierr, herr);
    EXPECT_EQ(ierr, 160);
    EXPECT_EQ(words(herr),
              "[SURFT error 160] CRITF (find critical parameters at a specified fugacity fraction) did not converge in "
              "the surface tension calculation");
    modelTags.LFORCESETUP = true;
}

// Terms of opposite sign cross zero below the critical temperature, where there is next to nothing.
TEST(SurfaceTension, isNeverNegative) {
    for (const char* fluid : {"R12", "R227EA", "R134A"}) {
        ASSERT_EQ(setUp(fluid), 0);
        const double tc = fluidConstants.TCRIT[1];
        double last = 1.0;
        for (double below = 2.0; below > 1e-4; below *= 0.8) {
            double sigma = -1.0;
            int ierr = 0;
            Text255 herr;
            STNK(1, below / tc, sigma, ierr, herr);
            EXPECT_EQ(ierr, 0);
            EXPECT_GE(sigma, 0.0) << fluid << ' ' << below;
            EXPECT_LE(sigma, last) << fluid << ' ' << below;
            const bool oneSign = std::string_view(fluid) == "R134A";
            EXPECT_TRUE(oneSign ? sigma > 0.0 : below >= 0.02 || sigma == 0.0) << fluid << ' ' << below;
            last = sigma;
        }
    }
}

TEST(SurfaceTension, anUnknownModelHasCode99) {
    ASSERT_EQ(setUp("R134A"), 0);
    modelTags.HSTENK[1] = "ST9";
    double sigma = 0.0;
    int ierr = 0;
    Text255 herr;
    STNK(1, 0.2, sigma, ierr, herr);
    EXPECT_EQ(sigma, -999.0);
    EXPECT_EQ(ierr, 99);
    EXPECT_EQ(words(herr), "[STN error 99] unknown surface tension model:  (ST9)");
    modelTags.LFORCESETUP = true;
}

class TensionOfMixtures : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(setUp({"R32", "R134A"}), 0); }
    void TearDown() override { modelTags.LFORCESETUP = true; }
    static Composition of(double first) {
        Composition x{};
        x[1] = first;
        x[2] = 1.0 - first;
        return x;
    }
    // Both phases of the bubble point.
    static bool bubblePoint(double T, const Composition& x, double& Dl, double& Dv, Composition& xv) {
        double p = 0.0;
        Composition xl{};
        int ierr = 0;
        Text255 herr;
        SATT(T, x, 1, p, Dl, Dv, xl, xv, ierr, herr);
        return ierr <= 0;
    }
};

TEST_F(TensionOfMixtures, theLimitOfAComponentIsThePureFluid) {
    for (const char* model : {"STH", "STM", "STX"}) {
        modelTags.HSTNTOP = model;
        for (const int i : {1, 2}) {
            const double T = 280.0;
            double Dl = 0.0, Dv = 0.0;
            Composition xv{};
            const Composition x = of(i == 1 ? 1.0 - 1e-7 : 1e-7);
            ASSERT_TRUE(bubblePoint(T, x, Dl, Dv, xv));
            const Tension mixture = stn(T, Dl, Dv, x, xv);
            ASSERT_EQ(mixture.ierr, 0) << model << ' ' << mixture.message;
            const Tension pure = stn(T, Dl, Dv, unitComposition(i), unitComposition(i));
            // STX takes the root of the product of a trace and its solvent
            EXPECT_NEAR(mixture.sigma / pure.sigma, 1.0, std::string_view(model) == "STX" ? 1e-3 : 1e-4) << model << i;
        }
    }
}

TEST_F(TensionOfMixtures, liesBetweenItsComponents) {
    for (const double T : {240.0, 280.0, 320.0}) {
        double Dl = 0.0, Dv = 0.0;
        Composition xv{};
        const Composition x = of(0.5);
        ASSERT_TRUE(bubblePoint(T, x, Dl, Dv, xv));
        const double low = stn(T, Dl, Dv, unitComposition(1), unitComposition(1)).sigma;
        const double high = stn(T, Dl, Dv, unitComposition(2), unitComposition(2)).sigma;
        for (const char* model : {"STH", "STM"}) {
            modelTags.HSTNTOP = model;
            const Tension t = stn(T, Dl, Dv, x, xv);
            EXPECT_EQ(t.ierr, 0) << t.message;
            EXPECT_GT(t.sigma, 0.9 * std::min(low, high)) << model << ' ' << T;
            EXPECT_LT(t.sigma, 1.1 * std::max(low, high)) << model << ' ' << T;
        }
    }
}

// The amplitude of the correlation length cancels: with w = (sigma_i / e)^1.5 / (sqrt(Tc_i) pc_i), e = tau^1.26 and the
// critical point Tc', pc' of the mixture, sigma = (sqrt(Tc') pc' K)^(2/3) e, where K is the mean of w by the fractions
// of mass of both phases (STH) or of fugacity (STM), or a sum over pairs of these (STX).
TEST_F(TensionOfMixtures, followsFromItsComponentsByTheClosedForm) {
    for (const double T : {240.0, 300.0}) {
        double Dl = 0.0, Dv = 0.0, tc = 0.0, pc = 0.0, dc = 0.0;
        Composition xv{}, f{};
        const Composition x = of(0.35);
        ASSERT_TRUE(bubblePoint(T, x, Dl, Dv, xv));
        int ierr = 0;
        Text255 herr;
        CRITP(x, tc, pc, dc, ierr, herr);
        ASSERT_EQ(ierr, 0);
        const FluidConstants& fluid = fluidConstants;
        const double tau = 1.0 - T / tc, e = std::pow(tau, 1.26);
        double w[3] = {};
        for (const int i : {1, 2}) {
            double own = 0.0;
            STNK(i, tau, own, ierr, herr);
            w[i] = std::pow(own / e, 1.5) / (std::sqrt(fluid.TCRIT[i]) * fluid.PCRIT[i]);
        }
        const auto closedForm = [&](double K, double Tc, double Pc) {
            return std::pow(std::sqrt(Tc) * Pc * K, 2.0 / 3.0) * e;
        };

        const Composition z = of((x[1] * Dl + xv[1] * Dv) / (Dl + Dv));
        const double mass = z[1] * fluid.WMAS[1] / (z[1] * fluid.WMAS[1] + z[2] * fluid.WMAS[2]);
        CRITP(z, tc, pc, dc, ierr, herr);
        modelTags.HSTNTOP = "STH";
        EXPECT_NEAR(stn(T, Dl, Dv, x, xv).sigma / closedForm(mass * w[1] + (1.0 - mass) * w[2], tc, pc), 1.0, 1e-12);

        FGCTY2(T, Dl, x, f, ierr, herr);
        ASSERT_EQ(ierr, 0);
        const double share[] = {0.0, f[1] / (f[1] + f[2]), f[2] / (f[1] + f[2])};
        const Composition zeta = of(share[1]);
        Composition start = x;
        CRITF(zeta, start, tc, pc, dc, ierr, herr);
        ASSERT_EQ(ierr, 0) << words(herr);
        modelTags.HSTNTOP = "STM";
        EXPECT_NEAR(stn(T, Dl, Dv, x, xv).sigma / closedForm(share[1] * w[1] + share[2] * w[2], tc, pc), 1.0, 1e-12);
        double K = 0.0, squares = 0.0;
        for (const int i : {1, 2}) {
            K += share[i] * share[i] * w[i];
            squares += share[i] * share[i] * fluid.PCRIT[i];
        }
        K += (pc - squares) * std::sqrt(w[1] * w[2] / (fluid.PCRIT[1] * fluid.PCRIT[2]));
        modelTags.HSTNTOP = "STX";
        EXPECT_NEAR(stn(T, Dl, Dv, x, xv).sigma / closedForm(K, tc, pc), 1.0, 1e-12);
    }
}

// Above the critical temperature of R32 (351.255 K) both components take the distance of the mixture.
TEST_F(TensionOfMixtures, aComponentAboveItsCriticalTemperatureTakesTheDistanceOfTheMixture) {
    const double T = 352.0;
    const Composition x = of(0.2);
    double Dl = 0.0, Dv = 0.0;
    Composition xv{};
    ASSERT_TRUE(bubblePoint(T, x, Dl, Dv, xv));
    const Tension t = stn(T, Dl, Dv, x, xv);
    EXPECT_EQ(t.ierr, 0) << t.message;
    EXPECT_GT(t.sigma, 0.0);
    EXPECT_LT(t.sigma, 0.005);
}

TEST_F(TensionOfMixtures, theEnvelopeIsLeftAsItWas) {
    saturationSpline.SPLINEREADY = true;
    stn(280.0, 10.0, 0.5, of(0.5), of(0.6));
    EXPECT_TRUE(saturationSpline.SPLINEREADY);
    saturationSpline.SPLINEREADY = false;
}

TEST_F(TensionOfMixtures, aComponentWithoutAModelHasCode99) {
    modelTags.HSTENK[2] = "XX1";
    const Tension t = stn(280.0, 10.0, 0.5, of(0.5), of(0.6));
    EXPECT_EQ(t.ierr, 99);
    EXPECT_LT(t.sigma, 0.0) << "no tension of liquid and vapor";
    EXPECT_NE(t.message.find("unknown surface tension model:  (XX1)"), std::string::npos) << t.message;
    modelTags.LFORCESETUP = true;
}

// The model of the whole takes the critical point of both phases together, those of the liquid that of its fugacities.
TEST_F(TensionOfMixtures, withoutItsCriticalPointIsNotComputed) {
    modelTags.HSTNTOP = "STH";
    Tension t = stn(280.0, 0.0, 1.0, of(0.5), Composition{});
    EXPECT_GT(t.ierr, 0);
    EXPECT_EQ(t.sigma, notComputed);
    for (const char* model : {"STX", "STM"}) {
        modelTags.HSTNTOP = model;
        modelTags.HEOS = "PR";
        const double pressure = std::exchange(prTerms[2].PCPR, 0.0);
        t = stn(280.0, 10.0, 0.5, of(0.5), of(0.6));
        EXPECT_GT(t.ierr, 0) << model;
        EXPECT_EQ(t.sigma, notComputed) << model;
        prTerms[2].PCPR = pressure;
        modelTags.HEOS = "HMX";
    }
    modelTags.LFORCESETUP = true;
}

// Each phase has limits of its own.
TEST_F(TensionOfMixtures, aVaporBeyondItsLimitsIsToldWhereTheLiquidIsNot) {
    const int light = fluidConstants.TMAXST[1] < fluidConstants.TMAXST[2] ? 1 : 2;
    const double T = 1.5 * std::sqrt(fluidConstants.TMAXST[1] * fluidConstants.TMAXST[2]);
    double sigma = 7.0, Dl = 10.0, Dv = 1.0;
    int ierr = 0;
    Text255 herr;
    Composition liquid = unitComposition(3 - light), vapor = unitComposition(light);
    SURTEN(T, Dl, Dv, liquid, vapor, sigma, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_EQ(sigma, notComputed);
    EXPECT_EQ(words(herr).find("[SURTEN error  1] "), 0U) << words(herr);
    EXPECT_NE(words(herr).find("temperature > 1.5 x upper limit"), std::string::npos) << words(herr);
}

TEST_F(TensionOfMixtures, anUnknownTopModelHasCode99) {
    modelTags.HSTNTOP = "STQ";
    const Tension t = stn(280.0, 10.0, 0.5, of(0.5), of(0.6));
    EXPECT_EQ(t.ierr, 99);
    EXPECT_EQ(t.sigma, -9999000.0);
    EXPECT_EQ(t.message, "[STN error 99] unknown surface tension model:  (STQ)");
}

TEST_F(TensionOfMixtures, theCompositionOfTheCriticalPointHasTheFugacityFractionsAskedFor) {
    const Composition x = of(0.4);
    double Tc = 0.0, Pc = 0.0, Dc = 0.0;
    int ierr = 0;
    Text255 herr;
    CRITP(x, Tc, Pc, Dc, ierr, herr);
    ASSERT_EQ(ierr, 0);
    Composition f{}, zeta{};
    FGCTY2(Tc, Dc, x, f, ierr, herr);
    for (const int i : {1, 2}) zeta[i] = f[i] / (f[1] + f[2]);
    Composition start = of(0.5);
    CRITF(zeta, start, Tc, Pc, Dc, ierr, herr);
    ASSERT_EQ(ierr, 0) << words(herr);
    EXPECT_NEAR(start[1], 0.4, 1e-3);

    zeta[1] = zeta[2] = 3.0;  // not fractions
    start = of(0.5);
    CRITF(zeta, start, Tc, Pc, Dc, ierr, herr);
    EXPECT_EQ(ierr, 160);
    EXPECT_EQ(words(herr),
              "[SURFT error 160] CRITF (find critical parameters at a specified fugacity fraction) did not converge in "
              "the surface tension calculation");
}

}  // namespace
}  // namespace frigana::test
