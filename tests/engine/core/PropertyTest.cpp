// Properties from temperature and density: identities at random states, limits, single routines, virial coefficients.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <utility>
#include <vector>

#include "CORE_BWR.h"
#include "CORE_FEQ.h"
#include "DISPATCH.h"
#include "FluidConstants.h"
#include "Fluids.h"
#include "Larger.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "RIEM.h"
#include "ReferenceState.h"
#include "SaturationSpline.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana::test {
namespace {

// What THERM gives.
struct Properties {
    double p, e, h, s, cv, cp, w, jt;
};
Properties therm(double t, double rho, const Composition& x = pure()) {
    Properties r{};
    THERM(t, rho, x, r.p, r.e, r.h, r.s, r.cv, r.cp, r.w, r.jt);
    return r;
}
Therm2Result therm2(double t, double rho, const Composition& x = pure()) {
    Therm2Result r;
    THERM2(t, rho, x, r);
    return r;
}

template <class Function>
double slope(Function value, double x, double h) {
    return (8.0 * (value(x + h) - value(x - h)) - (value(x + 2 * h) - value(x - 2 * h))) / (12.0 * h);
}

// The identities of one state and the slopes of its neighbours.
struct Identities {
    Worst exact, slopes;
};

void exactIdentities(double t, double rho, const Therm2Result& r, Worst& worst) {
    const std::string place = std::to_string(t) + " K " + std::to_string(rho) + " mol/L";
    const double RT = fluidConstants.R * t, R = fluidConstants.R;
    // each compares two ways to one value on the scale of its terms
    const auto see = [&](double a, double b, double scale) { worst.see(std::fabs(a - b) / scale, place); };
    see(r.h, r.e + r.p / rho, std::fabs(r.e) + RT + std::fabs(r.p / rho));
    see(r.A, r.e - t * r.s, std::fabs(r.e) + t * std::fabs(r.s) + RT);
    see(r.G, r.h - t * r.s, std::fabs(r.h) + t * std::fabs(r.s) + RT);
    see(r.cp - r.cv, t / (rho * rho) * r.dPdT * r.dPdT / r.dPdD, std::fabs(r.cp) + std::fabs(r.cv));
    see(r.dDdT * r.dPdD, -r.dPdT, std::fabs(r.dPdT) + R * rho);
    see(r.dDdP * r.dPdD, 1.0, 1.0);
    see(r.kappa_t * rho, r.dDdP, std::fabs(r.dDdP));
    see(r.volexp * rho, -r.dDdT, std::fabs(r.dDdT) + rho / t);
    see(r.Z * RT * rho, r.p, std::fabs(r.p) + RT * rho);
    if (r.cv > 0.0 && r.cp / r.cv * r.dPdD > 0.0)
        see(r.w * r.w * WMOL(pure()) / 1000.0, r.cp / r.cv * r.dPdD, std::fabs(r.cp / r.cv * r.dPdD));
    // the Joule-Thomson coefficient vanishes where its two terms cancel
    see(r.jtcoef * rho * rho * r.cp, t * r.dPdT / r.dPdD - rho, std::fabs(t * r.dPdT / r.dPdD) + rho);
}

void slopesOfNeighbours(double t, double rho, const Therm2Result& r, bool third, Worst& worst) {
    const double RT = fluidConstants.R * t, R = fluidConstants.R;
    const double hT = 2e-4 * t, hD = 2e-4 * rho;
    // sizes of the terms that cancel in the residual part, in first and second derivatives
    double scale = 1.0, scaleOfSecond = 1.0;
    const FeqSlot& f = feqTerms[1];
    for (int k = 1; k <= f.NTERMF + f.NCRT; ++k) {
        const double slopeFactor = 1.0 + std::fabs(f.DIFEQ[k] - f.lengthTerm[k]) + std::fabs(f.TIFEQ[k]);
        scale = larger(scale, std::fabs(f.PHISVF[k]) * slopeFactor);
        scaleOfSecond = larger(scaleOfSecond, std::fabs(f.PHISVF[k]) * slopeFactor * slopeFactor);
    }
    Therm2Result atT[4], atD[4];
    constexpr int steps[4] = {-2, -1, 1, 2};
    for (int i = 0; i < 4; ++i) {
        atT[i] = therm2(t + steps[i] * hT, rho);
        atD[i] = therm2(t, rho + steps[i] * hD);
    }
    const auto slopeOf = [](const Therm2Result(&at)[4], double h, double Therm2Result::*field) {
        return (8.0 * (at[2].*field - at[1].*field) - (at[3].*field - at[0].*field)) / (12.0 * h);
    };
    const auto see = [&](const char* name, double value, double expected, double unit) {
        const double size = std::max(std::fabs(value), std::fabs(expected));
        worst.see(std::fabs(value - expected) / std::max(size, unit),
                  std::string(name) + " " + std::to_string(t) + " K " + std::to_string(rho) + " mol/L");
    };
    see("dp/drho", r.dPdD, slopeOf(atD, hD, &Therm2Result::p), RT * scale);
    see("dp/dT", r.dPdT, slopeOf(atT, hT, &Therm2Result::p), R * rho * scale);
    see("Maxwell ds/drho", -r.dPdT / (rho * rho), slopeOf(atD, hD, &Therm2Result::s), R / rho * scale);
    see("de/drho", (r.p - t * r.dPdT) / (rho * rho), slopeOf(atD, hD, &Therm2Result::e), RT / rho * scale);
    see("cv", r.cv, slopeOf(atT, hT, &Therm2Result::e), R * scale);
    see("ds/dT", r.cv / t, slopeOf(atT, hT, &Therm2Result::s), R / t * scale);
    see("dA/drho", r.p / (rho * rho), slopeOf(atD, hD, &Therm2Result::A), RT / rho * scale);
    see("dA/dT", -r.s, slopeOf(atT, hT, &Therm2Result::A), R * scale);
    if (!third) return;
    see("d2p/drho2", r.d2PdD2, slopeOf(atD, hD, &Therm2Result::dPdD), RT / rho * scaleOfSecond);
    see("d2p/dTdrho", r.d2PdTD, slopeOf(atT, hT, &Therm2Result::dPdD), R * scaleOfSecond);
    see("d2p/dT2", r.d2PdT2, slopeOf(atT, hT, &Therm2Result::dPdT), R * rho / t * scaleOfSecond);
    see("Maxwell dcv/drho", -t * r.d2PdT2 / (rho * rho), slopeOf(atD, hD, &Therm2Result::cv), R / rho * scaleOfSecond);
}

class PropertiesOfFluid : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(AllFluids, PropertiesOfFluid, testing::ValuesIn(pureFluids), fluidName);

// 20,000 states over the whole range of temperature and density, stable or not: the identities hold on any smooth
// surface. Exact ones to the rounding of their terms; differences of order 4 with steps of 2e-4 to 3e-6, what steep
// Gaussian rows leave of them. Fluids with non-analytic rows: not in the last three per cent around the critical
// temperature, where the rows change within the steps, and without the third derivatives, which they simplify.
TEST_P(PropertiesOfFluid, IdentitiesHoldAt20000RandomStates) {
    ASSERT_TRUE(loadFluid(GetParam()));
    const FluidConstants& c = fluidConstants;
    const bool smooth = feqTerms[1].LCRTFLG;
    std::mt19937 random(20);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    Identities worst;
    for (int i = 0; i < 20000; ++i) {
        const double t = c.TMEOS[1] + (c.TXEOS[1] - c.TMEOS[1]) * unit(random);
        const double u = unit(random);
        const double rho = (i % 4 == 0 ? std::pow(10.0, -6.0 * u) : u) * c.DEOS[1];
        if (!smooth && std::fabs(t / c.TCRIT[1] - 1.0) < 0.03) continue;
        const Therm2Result r = therm2(t, rho);
        exactIdentities(t, rho, r, worst.exact);
        slopesOfNeighbours(t, rho, r, smooth, worst.slopes);
    }
    EXPECT_LT(worst.exact.deviation, 1e-11) << worst.exact.where;
    EXPECT_LT(worst.slopes.deviation, 3e-6) << worst.slopes.where;
    std::printf("%-8s exact %.1e, slopes %.1e (%s)\n", GetParam(), worst.exact.deviation, worst.slopes.deviation,
                worst.slopes.where.c_str());
}

// Every single routine gives what THERM and THERM2 give.
TEST_P(PropertiesOfFluid, SingleRoutinesAgreeWithTheFullOnes) {
    ASSERT_TRUE(loadFluid(GetParam()));
    const FluidConstants& c = fluidConstants;
    for (const double tr : {0.7, 1.2}) {
        for (const double dr : {0.05, 2.3}) {
            const double t = tr * c.TCRIT[1], rho = dr * c.DCRIT[1];
            const Composition x = pure();
            const Therm2Result r = therm2(t, rho);
            const Properties full = therm(t, rho);
            EXPECT_EQ(full.p, r.p);
            EXPECT_EQ(full.e, r.e);
            EXPECT_EQ(full.h, r.h);
            EXPECT_EQ(full.s, r.s);
            EXPECT_EQ(full.cv, r.cv);
            EXPECT_EQ(full.cp, r.cp);
            EXPECT_EQ(full.w, r.w);
            EXPECT_EQ(full.jt, r.jtcoef);
            EXPECT_EQ(r.spare3, -9999990.0);
            EXPECT_EQ(r.spare4, -9999990.0);
            double a = 0, b = 0;
            const auto same = [&](auto routine, double expected) {
                routine(t, rho, x, a);
                EXPECT_DOUBLE_EQ(a, expected);
            };
            same(PRESS, r.p), same(ENERGY, r.e), same(ENTHAL, r.h), same(ENTRO, r.s), same(DPDD, r.dPdD);
            same(DPDD2, r.d2PdD2), same(DPDT, r.dPdT), same(DDDP, r.dDdP), same(DDDT, r.dDdT);
            CVCP(t, rho, x, a, b);
            EXPECT_DOUBLE_EQ(a, r.cv);
            EXPECT_DOUBLE_EQ(b, r.cp);
            CVCPK(1, t, rho, a, b);
            EXPECT_DOUBLE_EQ(a, r.cv);
            EXPECT_DOUBLE_EQ(b, r.cp);
            AG(t, rho, x, a, b);
            EXPECT_DOUBLE_EQ(a, r.A);
            EXPECT_DOUBLE_EQ(b, r.G);
            DPDDK(1, t, rho, a);
            EXPECT_DOUBLE_EQ(a, r.dPdD);
            DPDTK(1, t, rho, a);
            EXPECT_DOUBLE_EQ(a, r.dPdT);

            // ideal gas and residual part add up
            double p0, e0, h0, s0, cv0, cp0, w0, A0, G0, pr, er, hr, sr, cvr, cpr, Ar, Gr;
            THERM0(t, rho, x, p0, e0, h0, s0, cv0, cp0, w0, A0, G0);
            RESIDUAL(t, rho, x, pr, er, hr, sr, cvr, cpr, Ar, Gr);
            const double RT = c.R * t;
            EXPECT_NEAR(p0 + pr, r.p, 1e-12 * (std::fabs(r.p) + RT * rho));
            EXPECT_NEAR(e0 + er, r.e, 1e-12 * (std::fabs(r.e) + RT));
            EXPECT_NEAR(h0 + hr, r.h, 1e-12 * (std::fabs(r.h) + RT));
            EXPECT_NEAR(s0 + sr, r.s, 1e-12 * (std::fabs(r.s) + c.R));
            EXPECT_NEAR(cv0 + cvr, r.cv, 1e-12 * r.cv);
            EXPECT_NEAR(cp0 + cpr, r.cp, 1e-11 * std::fabs(r.cp));
            EXPECT_NEAR(A0 + Ar, r.A, 1e-12 * (std::fabs(r.A) + std::fabs(Ar) + RT));
            EXPECT_NEAR(G0 + Gr, r.G, 1e-12 * (std::fabs(r.G) + std::fabs(Gr) + RT));
            EXPECT_NEAR(w0, std::sqrt(1000.0 * RT * cp0 / cv0 / c.WMAS[1]), 1e-9);
        }
    }
}

// Difference of the residual Gibbs energies with the logarithm of density is that of the whole ones.
TEST_P(PropertiesOfFluid, ResidualGibbsEnergyDiffersBetweenPhasesAsTheWholeOne) {
    ASSERT_TRUE(loadFluid(GetParam()));
    const double t = 0.8 * fluidConstants.TCRIT[1], liquid = 2.2 * fluidConstants.DCRIT[1], vapor = liquid / 50.0;
    double a = 0, g1 = 0, g2 = 0;
    GIBBS(t, liquid, pure(), a, g1);
    GIBBS(t, vapor, pure(), a, g2);
    EXPECT_NEAR(g1 - g2, therm2(t, liquid).G - therm2(t, vapor).G, 1e-10 * std::fabs(g1));
}

TEST_P(PropertiesOfFluid, VirialCoefficientsAreTheLimitsOfThePressure) {
    ASSERT_TRUE(loadFluid(GetParam()));
    const FluidConstants& c = fluidConstants;
    const Composition x = pure();
    for (const double tr : {0.8, 1.1, 1.3}) {
        const double t = tr * c.TCRIT[1];
        double B, C, D, b, cc, d, b1, b2, c1, c2;
        VIRBCD(t, x, B, C, D);
        VIRB(t, x, b), VIRC(t, x, cc), VIRD(t, x, d);
        DBDT(t, x, b1), DBDT2(t, x, b2), DCDT(t, x, c1), DCDT2(t, x, c2);
        const double unit = 1.0 / c.DCRIT[1];
        // non-analytic rows, which the exact coefficients leave out, contribute 1e-4 of B
        const double tolerance = feqTerms[1].LCRTFLG ? 1.0 : 1e4;
        EXPECT_NEAR(B, b, tolerance * 1e-6 * unit);
        EXPECT_NEAR(C, cc, tolerance * 1e-5 * unit * unit);
        EXPECT_NEAR(D, d, tolerance * 1e-3 * (std::fabs(D) + unit * unit * unit));
        const auto of = [&](auto routine) {
            return [&x, routine](double temperature) {
                double value = 0.0;
                routine(temperature, x, value);
                return value;
            };
        };
        const double h = t * 1e-3;
        EXPECT_NEAR(b1, slope(of(VIRB), t, h), 1e-6 * unit / t);
        EXPECT_NEAR(b2, slope(of(DBDT), t, h), 1e-5 * (std::fabs(b2) + unit / t / t));
        // terms below 1e-20 are left out of mixed derivatives: up to t^2 1e-6 of the coefficients at this density
        EXPECT_NEAR(c1, slope(of(VIRC), t, h), tolerance * 3e-4 * (std::fabs(c1) + unit * unit / t));
        EXPECT_NEAR(c2, slope(of(DCDT), t, h), tolerance * 5e-3 * (std::fabs(c2) + unit * unit / t / t));

        // p/(rho R T) = 1 + B rho + C rho^2 + (D/2) rho^3, at a density where the next power is small
        const double rho = 1e-3 * c.DCRIT[1];
        double p = 0.0;
        PRESS(t, rho, x, p);
        EXPECT_NEAR(p / (rho * c.R * t), 1.0 + b * rho + cc * rho * rho + 0.5 * d * rho * rho * rho, 1e-10);

        // speed of sound of the dilute gas: w^2 = w0^2 (1 + ba rho + ca rho^2)
        double ba = 0.0, ca = 0.0;
        VIRBA(t, x, ba), VIRCA(t, x, ca);
        const double w0 = therm(t, 0.0).w;
        const auto excess = [&](double density) {
            const double w = therm(t, density).w / w0;
            return (w * w - 1.0) / density;
        };
        const double first = excess(rho), second = excess(2.0 * rho);
        EXPECT_NEAR(2.0 * first - second, ba, 3e-4 * std::fabs(ba) + 1e-5 * unit);
        if (feqTerms[1].LCRTFLG) {
            EXPECT_NEAR((second - first) / rho, ca, 0.05 * std::fabs(ca) + 0.1 * unit * unit) << tr;
        }
    }
}

TEST_P(PropertiesOfFluid, DerivativesBetweenPressureDensityAndTemperature) {
    ASSERT_TRUE(loadFluid(GetParam()));
    const FluidConstants& c = fluidConstants;
    const Composition x = pure();
    for (const double dr : {0.3, 2.4}) {
        const double t = 1.15 * c.TCRIT[1], rho = dr * c.DCRIT[1];
        PvtDerivatives r;
        DERVPVT(t, rho, x, r);
        const Therm2Result two = therm2(t, rho);
        EXPECT_DOUBLE_EQ(r.dPdD, two.dPdD);
        EXPECT_DOUBLE_EQ(r.dPdT, two.dPdT);
        EXPECT_DOUBLE_EQ(r.d2PdD2, two.d2PdD2);
        EXPECT_DOUBLE_EQ(r.d2PdT2, two.d2PdT2);
        EXPECT_DOUBLE_EQ(r.d2PdTD, two.d2PdTD);

        // the surface walked along an isobar, an isotherm, an isochore
        const auto densityAt = [&](double temperature, double pressure) {
            double d = rho;
            for (int i = 0; i < 20; ++i) {
                double p = 0, dp = 0;
                PRESS(temperature, d, x, p);
                DPDD(temperature, d, x, dp);
                d += (pressure - p) / dp;
            }
            return d;
        };
        const auto derivatives = [&](double temperature, double density) {
            PvtDerivatives at;
            DERVPVT(temperature, density, x, at);
            return at;
        };
        const double hT = 1e-3 * t, hD = 1e-3 * rho, hP = hD * r.dPdD;
        // non-analytic rows simplify the third derivatives of the Helmholtz energy, 2e-4 of the results here
        const double tolerance = feqTerms[1].LCRTFLG ? 2e-6 : 5e-4;
        const auto close = [tolerance](double value, double expected) {
            EXPECT_NEAR(value, expected, tolerance * std::fabs(expected));
        };
        close(r.dDdT, slope([&](double v) { return densityAt(v, two.p); }, t, hT));
        close(r.d2DdT2, slope([&](double v) { return derivatives(v, densityAt(v, two.p)).dDdT; }, t, hT));
        close(r.d2DdP2, slope([&](double v) { return derivatives(t, densityAt(t, v)).dDdP; }, two.p, hP));
        close(r.d2DdPT, slope([&](double v) { return derivatives(v, densityAt(v, two.p)).dDdP; }, t, hT));
        close(r.dTdP, 1.0 / r.dPdT);
        close(r.dTdD, 1.0 / r.dDdT);
        // in density at constant pressure: the temperature follows the isobar
        const auto alongIsobar = [&](auto field) {
            return slope([&](double v) { return derivatives(v, densityAt(v, two.p)).*field; }, t, hT) / r.dDdT;
        };
        close(r.d2TdD2, alongIsobar(&PvtDerivatives::dTdD));
        close(r.d2TdPD, alongIsobar(&PvtDerivatives::dTdP));
        // in pressure at constant density
        close(r.d2TdP2, slope([&](double v) { return derivatives(v, rho).dTdP; }, t, hT) / r.dPdT);

        double hTd, hTp, hDt, hDp, hPt, hPd;
        DHD1(t, rho, x, hTd, hTp, hDt, hDp, hPt, hPd);
        const auto enthalpy = [&](double temperature, double density) { return therm(temperature, density).h; };
        close(hTd, slope([&](double v) { return enthalpy(v, rho); }, t, hT));
        close(hTp, slope([&](double v) { return enthalpy(v, densityAt(v, two.p)); }, t, hT));
        close(hDt, slope([&](double v) { return enthalpy(t, v); }, rho, hD));
        close(hPt, slope([&](double v) { return enthalpy(t, densityAt(t, v)); }, two.p, hP));
        close(hDp, hTp / r.dDdT);
        close(hPd, hTd / r.dPdT);
    }
}

TEST(Properties, AtZeroDensity) {
    ASSERT_TRUE(loadFluid("R134A"));
    const double t = 300.0;
    const Properties r = therm(t, 0.0);
    EXPECT_EQ(r.p, 0.0);
    EXPECT_TRUE(std::isfinite(r.s));
    EXPECT_GT(r.s, 100.0) << "entropy at the smallest density that logarithms see";
    EXPECT_DOUBLE_EQ(r.cp, CP0(t, pure()));
    double b = 0, dbt = 0;
    VIRB(t, pure(), b);
    DBDT(t, pure(), dbt);
    EXPECT_DOUBLE_EQ(r.jt, (t * dbt - b) / r.cp);
    EXPECT_NEAR(r.jt, therm(t, 1e-4).jt, 1e-4 * r.jt) << "and the real gas tends to it";

    const Therm2Result two = therm2(t, 0.0);
    EXPECT_EQ(two.Z, 1.0);
    EXPECT_EQ(two.p, 0.0);
    EXPECT_EQ(two.kappa_t, -9999990.0);
    EXPECT_DOUBLE_EQ(two.volexp, 1.0 / t);
    EXPECT_DOUBLE_EQ(two.d2PdD2, 2.0 * b * fluidConstants.R * t);
    const Therm2Result dilute = therm2(t, 1e-9);
    EXPECT_DOUBLE_EQ(dilute.kappa_t, 1.0 / dilute.p);

    double A = 0, G = 0, s = 0;
    AG(t, 0.0, pure(), A, G);
    ENTRO(t, 0.0, pure(), s);
    EXPECT_TRUE(std::isfinite(A) && std::isfinite(G) && std::isfinite(s));
    EXPECT_EQ(s, r.s);
}

// What a routine gives for R134A at 0.05 mol/L, as one list.
struct Routine {
    const char* name;
    std::vector<double> (*results)(double t);
};

template <auto routine, std::size_t... k>
std::vector<double> filledBy(std::index_sequence<k...>, double t) {
    std::vector<double> r(sizeof...(k), 7.0);
    routine(t, 0.05, pure(), r[k]...);
    return r;
}

// The results of a routine of temperature, density and composition.
template <auto routine, std::size_t count>
std::vector<double> stateResults(double t) {
    return filledBy<routine>(std::make_index_sequence<count>{}, t);
}

// The result of a routine of temperature and composition.
template <auto routine>
std::vector<double> virialResult(double t) {
    std::vector<double> r(1, 7.0);
    routine(t, pure(), r[0]);
    return r;
}

// The quantities of the first component.
template <auto routine>
std::vector<double> componentResult(double t) {
    Composition f{};
    f.fill(7.0);
    int ierr = 7;
    Text255 herr;
    routine(t, 0.05, pure(), f, ierr, herr);
    EXPECT_EQ(ierr, 0);
    return {f[1]};
}

std::vector<double> therm2Results(double t) {
    const Therm2Result r = therm2(t, 0.05);
    return {r.p, r.e,       r.h,      r.s,    r.cv,     r.cp,   r.w,    r.Z,    r.jtcoef, r.A,
            r.G, r.kappa_t, r.volexp, r.dPdD, r.d2PdD2, r.dPdT, r.dDdT, r.dDdP, r.d2PdT2, r.d2PdTD};
}

std::vector<double> derivativesOfPvt(double t) {
    PvtDerivatives r;
    DERVPVT(t, 0.05, pure(), r);
    return {r.dPdD,   r.dPdT,   r.d2PdD2, r.d2PdT2, r.d2PdTD, r.dDdP,   r.dDdT,  r.d2DdP2,
            r.d2DdT2, r.d2DdPT, r.dTdP,   r.dTdD,   r.d2TdP2, r.d2TdD2, r.d2TdPD};
}

std::vector<double> fugacity(double t) {
    Composition f{};
    f.fill(7.0);
    FGCTY(t, 0.05, pure(), f);
    return {f[1]};
}

std::vector<double> virialCoefficients(double t) {
    std::vector<double> r(3, 7.0);
    VIRBCD(t, pure(), r[0], r[1], r[2]);
    return r;
}

std::vector<double> supercompressibility(double t) {
    std::vector<double> r(1, 7.0);
    FPV(t, 0.05, 1000.0, pure(), r[0]);
    return r;
}

std::vector<double> curvature(double t) {
    std::vector<double> r(1, 7.0);
    RIEM(t, 0.05, pure(), r[0]);
    return r;
}

TEST(Properties, TemperatureOfZeroOrLessGivesZeros) {
    ASSERT_TRUE(loadFluid("R134A"));
    const Routine routines[] = {
        {"THERM", stateResults<THERM, 8>},
        {"THERM2", therm2Results},
        {"THERM3", stateResults<THERM3, 10>},
        {"THERM0", stateResults<THERM0, 9>},
        {"RESIDUAL", stateResults<RESIDUAL, 8>},
        {"ENTRO", stateResults<ENTRO, 1>},
        {"ENTHAL", stateResults<ENTHAL, 1>},
        {"ENERGY", stateResults<ENERGY, 1>},
        {"PRESS", stateResults<PRESS, 1>},
        {"DPDD", stateResults<DPDD, 1>},
        {"DPDD2", stateResults<DPDD2, 1>},
        {"DPDT", stateResults<DPDT, 1>},
        {"DDDP", stateResults<DDDP, 1>},
        {"DDDT", stateResults<DDDT, 1>},
        {"CVCP", stateResults<CVCP, 2>},
        {"GIBBS", stateResults<GIBBS, 2>},
        {"AG", stateResults<AG, 2>},
        {"DERVPVT", derivativesOfPvt},
        {"DHD1", stateResults<DHD1, 6>},
        {"VIRB", virialResult<VIRB>},
        {"DBDT", virialResult<DBDT>},
        {"DBDT2", virialResult<DBDT2>},
        {"VIRC", virialResult<VIRC>},
        {"DCDT", virialResult<DCDT>},
        {"DCDT2", virialResult<DCDT2>},
        {"VIRD", virialResult<VIRD>},
        {"VIRBA", virialResult<VIRBA>},
        {"VIRCA", virialResult<VIRCA>},
        {"VIRBCD", virialCoefficients},
        {"FGCTY", fugacity},
        {"FGCTY2", componentResult<FGCTY2>},
        {"FUGCOF", componentResult<FUGCOF>},
        {"CHEMPOT", componentResult<CHEMPOT>},
        {"FPV", supercompressibility},
        {"RIEM", curvature},
    };
    constexpr auto isZero = [](double value) { return value == 0.0; };
    for (const Routine& routine : routines) {
        for (const double t : {0.0, -1.0})
            for (const double value : routine.results(t)) EXPECT_EQ(value, 0.0) << routine.name << " at " << t << " K";
        const std::vector<double> results = routine.results(300.0);
        EXPECT_TRUE(std::none_of(results.begin(), results.end(), isZero)) << routine.name;
    }
    double cv = 7.0, cp = 7.0, slope = 7.0;
    CVCPK(1, 0.0, 0.05, cv, cp);
    DPDDK(1, 0.0, 0.05, slope);
    EXPECT_TRUE(cv == 0.0 && cp == 0.0 && slope == 0.0);
    slope = 7.0;
    DPDTK(1, -1.0, 0.05, slope);
    EXPECT_EQ(slope, 0.0);
}

TEST(Properties, SpeedOfSoundOfANegativeArgumentIsZero) {
    ASSERT_TRUE(loadFluid("R134A"));
    const double t = 300.0, rho = fluidConstants.DCRIT[1];  // between the spinodals
    EXPECT_LT(therm2(t, rho).dPdD, 0.0);
    const Therm2Result r = therm2(t, rho);
    EXPECT_LT(r.dPdD * r.cp / r.cv * (r.cp < 0 ? -1 : 1), 0.0);
    double v = 0.0;
    for (double d = 1.5; d < 12.0; d += 0.05) {
        const Therm2Result at = therm2(t, d);
        v = at.cp / at.cv * at.dPdD;
        EXPECT_TRUE(v > 0.0 ? at.w > 0.0 : at.w == 0.0) << d;
        EXPECT_EQ(therm(t, d).w, at.w);
    }
}

TEST(Properties, OffsetsShiftEnergyAndEntropy) {
    ASSERT_TRUE(loadFluid("R134A"));
    const Properties before = therm(300.0, 1.0);
    const Therm2Result two = therm2(300.0, 1.0);
    referenceState.HREF[1] = 100.0;
    referenceState.SREF[1] = 2.0;
    const Properties after = therm(300.0, 1.0);
    EXPECT_NEAR(after.e, before.e - 100.0, 1e-9);
    EXPECT_NEAR(after.h, before.h - 100.0, 1e-9);
    EXPECT_NEAR(after.s, before.s - 2.0, 1e-11);
    EXPECT_NEAR(therm2(300.0, 1.0).G, two.G - 100.0 + 600.0, 1e-9);
    EXPECT_NEAR(therm2(300.0, 1.0).A, two.A - 100.0 + 600.0, 1e-9);
}

TEST(Properties, CoefficientsOfTHERM3) {
    ASSERT_TRUE(loadFluid("PROPANE"));
    const double t = 320.0, M = fluidConstants.WMAS[1];
    for (const double rho : {1e-4, 0.2, 10.5}) {
        double kt, ve, ise, iso, ks, bs, bt, th, ip, hi;
        THERM3(t, rho, pure(), kt, ve, ise, iso, ks, bs, bt, th, ip, hi);
        const Therm2Result r = therm2(t, rho);
        EXPECT_EQ(kt, r.kappa_t);
        EXPECT_EQ(ve, r.volexp);
        EXPECT_NEAR(bs, r.w * r.w * rho * M / 1000.0, 1e-9 * bs);
        EXPECT_NEAR(bt, rho * r.dPdD, 1e-9 * bt);
        EXPECT_NEAR(ks * bs, 1.0, 1e-12);
        EXPECT_NEAR(kt * bt, 1.0, 1e-12);
        EXPECT_NEAR(ise / iso, r.cp / r.cv, 1e-9) << "the ratio of the two exponents is that of the heat capacities";
        EXPECT_DOUBLE_EQ(th, -r.jtcoef * r.cp);
        // internal pressure: (de/dv) at constant temperature
        EXPECT_NEAR(ip, -rho * rho * slope([&](double d) { return therm(t, d).e; }, rho, rho * 1e-4),
                    1e-6 * std::fabs(ip) + 1e-6);
        // specific heat input: rho (dh/drho) at constant pressure, without its sign
        EXPECT_NEAR(hi, rho * r.cp / -r.dDdT, 1e-9 * hi);
    }
    double kt, ve, ise, iso, ks, bs, bt, th, ip, hi;
    THERM3(t, 0.0, pure(), kt, ve, ise, iso, ks, bs, bt, th, ip, hi);
    EXPECT_EQ(iso, 1.0);
    EXPECT_EQ(ks, -9999990.0);
    EXPECT_NEAR(ise, therm2(t, 0.0).cp / therm2(t, 0.0).cv, 1e-9);
    EXPECT_DOUBLE_EQ(hi, therm2(t, 0.0).cp * t);
}

TEST(Properties, DerivativesAtLowDensity) {
    ASSERT_TRUE(loadFluid("PROPANE"));
    const double t = 300.0, RT = fluidConstants.R * t;
    double b = 0, dbt = 0;
    VIRB(t, pure(), b);
    DBDT(t, pure(), dbt);
    PvtDerivatives r;
    DERVPVT(t, 1e-9, pure(), r);
    EXPECT_DOUBLE_EQ(r.d2PdD2, 2.0 * b * RT);
    EXPECT_DOUBLE_EQ(r.d2DdP2, -2.0 * b / (RT * RT));
    for (const double value : {r.dTdP, r.dTdD, r.d2TdP2, r.d2TdD2, r.d2TdPD}) EXPECT_EQ(value, -9999960.0);
    double hTd, hTp, hDt, hDp, hPt, hPd;
    DHD1(t, 1e-9, pure(), hTd, hTp, hDt, hDp, hPt, hPd);
    EXPECT_EQ(hDp, -9999960.0);
    EXPECT_EQ(hPd, -9999960.0);
    EXPECT_DOUBLE_EQ(hDt, -fluidConstants.R * t * t * dbt + RT * b);
    EXPECT_NEAR(hTp, CP0(t, pure()), 1e-6);
}

TEST(Properties, PureFugacityFollowsTheGibbsEnergy) {
    ASSERT_TRUE(loadFluid("R32"));
    const double t = 320.0;
    const auto fugacity = [&](double rho) {
        Composition f{};
        int ierr = 0;
        Text255 herr;
        FGCTY2(t, rho, pure(), f, ierr, herr);
        EXPECT_EQ(ierr, 0);
        return f[1];
    };
    // ln(f2/f1) = (G2 - G1)/(R T), and f/p tends to 1
    const double G1 = therm2(t, 1e-3).G, G2 = therm2(t, 18.0).G;
    EXPECT_NEAR(std::log(fugacity(18.0) / fugacity(1e-3)), (G2 - G1) / (fluidConstants.R * t), 1e-11);
    EXPECT_NEAR(fugacity(1e-6) / therm(t, 1e-6).p, 1.0, 1e-6);
    Composition phi{}, u{};
    int ierr = 0;
    Text255 herr;
    FUGCOF(t, 18.0, pure(), phi, ierr, herr);
    EXPECT_DOUBLE_EQ(phi[1], fugacity(18.0) / therm(t, 18.0).p);
    CHEMPOT(t, 18.0, pure(), u, ierr, herr);
    EXPECT_EQ(u[1], therm2(t, 18.0).G);
    EXPECT_EQ(fugacity(0.0), 0.0);
    Composition dalpha{}, dnalpha{};
    PHIDERV(1, t, 18.0, pure(), dalpha, dnalpha, ierr, herr);
    const double tau = fluidConstants.TZ[1] / t, del = 18.0 / fluidConstants.RHOZ[1];
    EXPECT_EQ(dalpha[1], PHIK(1, 0, 1, tau, del));
    EXPECT_EQ(dnalpha[1], PHIK(1, 0, 0, tau, del) + PHIK(1, 0, 1, tau, del));
}

TEST(Properties, SelectorsOfPureFluids) {
    ASSERT_TRUE(loadFluid("R32", "", 1, 2));
    ASSERT_TRUE(loadFluid("R125", "", 2, 2));
    int icomp = -1;
    ISPURE(unitComposition(2), icomp);
    EXPECT_EQ(icomp, 2);
    Composition x{};
    x[1] = x[2] = 0.5;
    ISPURE(x, icomp);
    EXPECT_EQ(icomp, 0);
    modelTags.IPUREFLD = 2;
    ISPURE(unitComposition(1), icomp);
    EXPECT_EQ(icomp, 2) << "a selected component makes the composition of no account";
    const double p = therm(300.0, 1.0, unitComposition(1)).p;
    modelTags.IPUREFLD = 0;
    EXPECT_EQ(therm(300.0, 1.0, unitComposition(2)).p, p);
    EXPECT_NE(therm(300.0, 1.0, unitComposition(1)).p, p);
    EXPECT_EQ(fluidConstants.R, fluidConstants.REOS[1]);
    double b = 1.0;
    B12(300.0, unitComposition(1), b);
    EXPECT_EQ(b, 0.0) << "a cross coefficient needs both components";
    b = 1.0;
    B12(300.0, unitComposition(2), b);
    EXPECT_EQ(b, 0.0);
    b = 1.0;
    B12(0.0, x, b);
    EXPECT_EQ(b, 0.0);
    modelTags.NC = 1;
    b = 1.0;
    B12(300.0, x, b);
    EXPECT_EQ(b, 0.0) << "of one fluid there is none";
    // the exact coefficients are those of the Helmholtz form alone
    double B = 1.0, C = 1.0, D = 1.0;
    for (const char* tag : {"BWR", "FXX"}) {
        modelTags.HMXEOS[1] = tag;
        VIRBCD(300.0, unitComposition(1), B, C, D);
        EXPECT_TRUE(B == 0.0 && C == 0.0 && D == 0.0) << tag;
    }
    modelTags.HMXEOS[1] = "FEQ";
}

TEST(Properties, CriticalPointAndExtremesOfAPureFluid) {
    ASSERT_TRUE(loadFluid("R32"));
    double t = 0, p = 0, d = 0;
    int ierr = 7;
    Text255 herr;
    CRITP(pure(), t, p, d, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(t, fluidConstants.TCRIT[1]);
    EXPECT_EQ(p, fluidConstants.PCRIT[1]);
    EXPECT_EQ(d, fluidConstants.DCRIT[1]);
    for (const auto routine : {MAXT, MAXP}) {
        ierr = 7;
        routine(pure(), t, p, d, ierr, herr);
        EXPECT_EQ(ierr, 0);
        EXPECT_EQ(t, fluidConstants.TCRIT[1]);
    }
}

TEST(Properties, ExtremesOfAMixtureWithoutAnEnvelope) {
    ASSERT_TRUE(loadFluid("R32", "", 1, 2));
    ASSERT_TRUE(loadFluid("R125", "", 2, 2));
    Composition x{};
    x[1] = x[2] = 0.5;
    double t = 0, p = 0, d = 0;
    int ierr = 0;
    Text255 herr;
    MAXT(x, t, p, d, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_EQ(t, 300.0);
    EXPECT_EQ(p, 0.0);
    EXPECT_EQ(d, 0.0);
    EXPECT_TRUE(herr.startsWith("[MAXT error] Maximum temperature not known"));
    MAXP(x, t, p, d, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_TRUE(herr.startsWith("[MAXP error] Maximum pressure not known"));
}

// An envelope that was traced tells the extremes of its composition, and of no other.
TEST(Properties, ExtremesOfAMixtureAreThoseOfItsEnvelope) {
    ASSERT_TRUE(loadFluid("R32", "", 1, 2));
    ASSERT_TRUE(loadFluid("R125", "", 2, 2));
    Composition x{};
    x[1] = x[2] = 0.5;
    saturationSpline.SPLINEREADY = true;
    saturationSpline.XSPLN = x;
    saturationSpline.highestTemperature = {345.0, 4300.0, 6.0, 0};
    double t = 0, p = 0, d = 0;
    int ierr = 7;
    Text255 herr;
    MAXT(x, t, p, d, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_TRUE(t == 345.0 && p == 4300.0 && d == 6.0);
    for (const int i : {1, 2}) {
        x[i] = 0.51;
        MAXT(x, t, p, d, ierr, herr);
        EXPECT_EQ(ierr, 1);
        EXPECT_EQ(d, 0.0);
        x[i] = 0.5;
    }
    saturationSpline = SaturationSpline{};
}

TEST(Properties, SupercompressibilityOfTheBaseStateIsOne) {
    ASSERT_TRUE(loadFluid("NITROGEN"));
    const double t = 288.705555555556, p = 101.55977492837;
    double rho = 0.0, f = 0.0;
    int ierr = 0;
    Text255 herr;
    TPRHO(t, p, pure(), 2, 0, rho, ierr, herr);
    FPV(t, rho, p, pure(), f);
    EXPECT_DOUBLE_EQ(f, 1.0);
    const double Z0 = p / (rho * fluidConstants.R * t);
    FPV(400.0, 5.0, therm(400.0, 5.0).p, pure(), f);
    EXPECT_NEAR(f, std::sqrt(Z0 / therm2(400.0, 5.0).Z), 1e-12);
    FPV(400.0, 0.0, 0.0, pure(), f);
    EXPECT_NEAR(f, std::sqrt(Z0), 1e-12);
}

}  // namespace
}  // namespace frigana::test
