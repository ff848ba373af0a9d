// The phase envelope in splines: what SATSPLN tabulates lies on the envelope, its characteristic points are what they
// are called, and the solvers that start from it find what they find without.
#include "Equilibrium.h"
#include "LIMITS.h"
#include "SAT_SUB_INVERSE.h"
#include "SAT_SUB_SPLINE.h"

namespace frigana::equilibria {
namespace {

struct Mixture {
    const char* name;  // a blend, or shares of a wide binary
    std::initializer_list<Share> shares;
    bool retrograde;  // the critical point lies clearly below the highest temperature
};
const Mixture mixtures[] = {
    {"R407C", {}, true},
    {"R410A", {}, false},  // nearly an azeotrope
    {"R448A", {}, true},
    {"R23 and R134A", {{"R23", 0.5}, {"R134A", 0.5}}, true},
    {"CO2 and butane", {{"CO2", 0.5}, {"BUTANE", 0.5}}, true},
};

std::ostream& operator<<(std::ostream& out, const Mixture& mixture) {
    return out << mixture.name;
}

class Envelope : public testing::TestWithParam<Mixture> {
  protected:
    void SetUp() override {
        const Mixture& mixture = GetParam();
        if (mixture.shares.size() == 0)
            ASSERT_TRUE(setUpBlend(mixture.name, z));
        else
            ASSERT_TRUE(setUpMixture(mixture.shares, z));
        nc = modelTags.NC;
        CRITP(z, Tc, pc, Dc, ierr, herr);
        ASSERT_EQ(ierr, 0);
        SATSPLN(z, ierr, herr);
        ASSERT_EQ(ierr, 0) << words(herr);
        EXPECT_EQ(words(herr), "");
        ASSERT_TRUE(table.SPLINEREADY);
    }
    void TearDown() override {
        saturationSpline.SPLINEREADY = false;
        RESETA();
    }
    // The state of a row; x is the incipient phase, y the mixture.
    TwoPhases row(int k) const {
        TwoPhases s;
        s.T = std::exp(table.XARR[nc + 1][k]);
        s.p = std::exp(table.XARR[nc + 2][k]);
        s.rhov = std::exp(table.XARR[0][k]);
        s.rhol = std::exp(table.XARR[nc + 3][k]);
        s.y = z;
        for (int i = 1; i <= nc; ++i) s.x[i] = std::exp(table.XARR[i][k]);
        return s;
    }
    // A column of the table by its spline.
    double value(int column, double D) {
        const double v = SPLNVAL(column, 0, D, ierr, herr);
        EXPECT_EQ(ierr, 0);
        return v;
    }
    double slope(int column, double D) {
        const double v = SPLNVAL(column, 1, D, ierr, herr);
        EXPECT_EQ(ierr, 0);
        return v;
    }

    const SaturationSpline& table = saturationSpline;
    Composition z{};
    int nc = 0, ierr = 0;
    Text255 herr;
    double Tc = 0.0, pc = 0.0, Dc = 0.0;  // by the critical lines
};

TEST_P(Envelope, RowsAreInEquilibrium) {
    ASSERT_GT(table.NSPLINE, 100);
    for (int i = 1; i <= nc; ++i) EXPECT_EQ(table.XSPLN[i], z[i]);
    // the first rows continue the table into the ideal gas
    int thin = 0;
    while (std::fabs(table.XARR[0][thin + 1] - std::log(1e-10) - thin * std::log(100.0)) < 1e-9) ++thin;
    EXPECT_GE(thin, 3);
    for (int k = 1; k <= thin; ++k) {
        const TwoPhases s = row(k);
        // the gas constants of the components, one of which may be meant, differ by up to 5e-6
        EXPECT_NEAR(s.p / (s.rhov * fluidConstants.R * s.T), 1.0, 1e-5);
        EXPECT_EQ(table.XARR[nc + 1][k], table.XARR[nc + 1][thin + 1]);
    }
    double lastT = row(table.NSPLINE).T;
    for (int k = thin + 1; k <= table.NSPLINE; ++k) {
        SCOPED_TRACE(testing::Message() << "row " << k);
        const TwoPhases s = row(k);
        EXPECT_GT(table.XARR[0][k], table.XARR[0][k - 1]);
        EXPECT_LT(disequilibrium(s), 1e-6);
        EXPECT_NEAR(pressure(s.T, s.rhov, z) / s.p, 1.0, 1e-6);
        double sum = 0.0;
        for (int i = 1; i <= nc; ++i) sum += s.x[i];
        EXPECT_NEAR(sum, 1.0, 1e-12);
        EXPECT_NEAR(table.XARR[nc + 4][k], enthalpy(s.T, s.rhov, z), 1e-5);
        EXPECT_NEAR(table.XARR[nc + 5][k], entropy(s.T, s.rhov, z), 1e-7);
    }
    // from the dew side through the critical region down the bubble side
    EXPECT_GT(row(table.NSPLINE).rhov, 2.5 * Dc);
    EXPECT_LT(row(table.NSPLINE).rhol, 0.1);
    EXPECT_LT(lastT, 0.7 * Tc);
}

TEST_P(Envelope, CharacteristicPointsAreWhatTheyAreCalled) {
    const EnvelopePoint &maxT = table.highestTemperature, &maxP = table.highestPressure, &crit = table.criticalPoint;
    ASSERT_EQ(maxT.ierr, 0);
    ASSERT_EQ(maxP.ierr, 0);
    ASSERT_EQ(crit.ierr, 0);
    // ln T and ln p over ln rho
    EXPECT_LT(std::fabs(slope(nc + 1, maxT.D)), 1e-9);
    EXPECT_LT(std::fabs(slope(nc + 2, maxP.D)), 1e-9);
    EXPECT_EQ(value(nc + 1, maxT.D), maxT.T);
    EXPECT_EQ(value(nc + 2, maxT.D), maxT.p);
    EXPECT_EQ(value(nc + 1, maxP.D), maxP.T);
    EXPECT_EQ(value(nc + 2, maxP.D), maxP.p);
    for (int k = 1; k <= table.NSPLINE; ++k) {
        EXPECT_LT(row(k).T, maxT.T * (1.0 + 1e-6));
        EXPECT_LT(row(k).p, maxP.p * (1.0 + 1e-6));
    }
    // The envelope is highest there also by the equations: parabolas through the point and two solutions beside it have
    // their vertex in it. Next to the critical point the phases fall together, so a little farther away for R410A.
    const double beside = GetParam().retrograde ? 0.01 : 0.05;
    for (const auto& [point, isT] : {std::pair{maxT, true}, {maxP, false}}) {
        TwoPhases s[2];
        for (int side = 0; side < 2; ++side) {
            TwoPhases& a = s[side];
            const double D = point.D * (side == 0 ? 1.0 - beside : 1.0 + beside);
            a.T = value(nc + 1, D);
            a.p = value(nc + 2, D);
            a.rhov = D;
            a.rhol = value(nc + 3, D);
            a.y = z;
            for (int i = 1; i <= nc; ++i) a.x[i] = value(i, D);
            SATGV(a.T, a.p, z, 1.0, D, 2, 6, 0, a.rhol, a.rhov, a.x, a.y, a.ierr, a.herr);
            ASSERT_EQ(a.ierr, 0) << words(a.herr);
        }
        const double low = isT ? s[0].T : s[0].p, high = isT ? s[1].T : s[1].p, top = isT ? point.T : point.p;
        EXPECT_LT(low, top);
        EXPECT_LT(high, top);
        const double vertex = 0.5 * beside * (high - low) / (2.0 * top - high - low);
        EXPECT_LT(std::fabs(vertex), 0.5 * beside);
    }
    // the mixture and its incipient phase are one
    int largest = 1;
    for (int i = 2; i <= nc; ++i)
        if (z[i] > z[largest]) largest = i;
    EXPECT_NEAR(value(largest, crit.D), z[largest], 1e-9);
    for (int i = 1; i <= nc; ++i) EXPECT_NEAR(value(i, crit.D), z[i], 5e-4);
    EXPECT_NEAR(value(nc + 3, crit.D) / crit.D, 1.0, 0.02);

    double tc = Tc, p = pc, rho = Dc;
    saturationSpline.SPLINEREADY = false;
    CRTPNT(z, tc, p, rho, ierr, herr);
    ASSERT_EQ(ierr, 0) << words(herr);
    // the splines bridge the points next to the critical one, 0.1 mol/L apart or more, where the phases fall together
    EXPECT_NEAR(crit.T / tc, 1.0, 1e-3);
    EXPECT_NEAR(crit.p / p, 1.0, 3e-3);
    EXPECT_NEAR(crit.D / rho, 1.0, 0.02);
}

TEST_P(Envelope, CriticalPointIsThatOfTheSplinesForTheirCompositionOnly) {
    double T, p, D;
    CRTHMX(z, T, p, D, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(T, table.criticalPoint.T);
    EXPECT_EQ(p, table.criticalPoint.p);
    EXPECT_EQ(D, table.criticalPoint.D);
    Composition other = z;
    other[1] += 1e-7;
    other[2] -= 1e-7;
    CRTHMX(other, T, p, D, ierr, herr);
    EXPECT_EQ(T, table.criticalPoint.T);
    // by the lines of the pairs, which may miss the point that the set-up has taken
    double lineT, lineP, lineD;
    adoptedCriticalPoint.known = saturationSpline.SPLINEREADY = false;
    CRTHMX(z, lineT, lineP, lineD, ierr, herr);
    saturationSpline.SPLINEREADY = true;
    other[1] += 1e-5;
    other[2] -= 1e-5;
    CRTHMX(other, T, p, D, ierr, herr);
    EXPECT_NEAR(T, lineT, 0.01);
    EXPECT_NEAR(p / lineP, 1.0, 1e-3);
    // an envelope without a critical point
    saturationSpline.criticalPoint.ierr = 1;
    CRTHMX(z, T, p, D, ierr, herr);
    EXPECT_EQ(ierr, -132);
    EXPECT_EQ(words(herr),
              "[CRTHMX error -132] Failed to find critical point from splines, values given here used TC1 and VC1 "
              "coefficients");
    EXPECT_EQ(T, lineT);
    saturationSpline.SPLINEREADY = false;
    CRTHMX(z, T, p, D, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(T, lineT);
}

TEST_P(Envelope, SaturationIsTheSameWithAndWithoutSplines) {
    double Tmin, Tmax, Dmax, pmax;
    LIMITS("EOS", z, Tmin, Tmax, Dmax, pmax);
    // above the critical pressure a bubble point has two temperatures
    const auto oneTemperature = [&](double p) { return p < table.criticalPoint.p; };
    constexpr int points = 25;
    for (int k = 0; k <= points; ++k) {
        const double T = Tmin + (0.995 * Tc - Tmin) * k / points;
        for (const int kph : {bubble, dew}) {
            SCOPED_TRACE(testing::Message() << T << " K, kph " << kph);
            TwoPhases s[2], r[2];
            for (const bool splines : {false, true}) {
                saturationSpline.SPLINEREADY = splines;
                saturationMemo = {};
                s[splines] = atTemperature(T, kph, z);
                ASSERT_EQ(s[splines].ierr, 0) << words(s[splines].herr);
                if (!oneTemperature(s[splines].p)) continue;
                r[splines] = atPressure(s[splines].p, kph, z);
                ASSERT_EQ(r[splines].ierr, 0) << words(r[splines].herr);
            }
            EXPECT_GT(s[1].rhol, s[1].rhov);
            EXPECT_LT(relative(s[1].p, s[0].p), 1e-8);
            EXPECT_LT(relative(s[1].rhol, s[0].rhol), 1e-8);
            EXPECT_LT(relative(s[1].rhov, s[0].rhov), 1e-8);
            if (!oneTemperature(s[1].p)) continue;
            EXPECT_LT(relative(r[1].T, T), 1e-8);
            EXPECT_LT(relative(r[1].rhov, r[0].rhov), 1e-8);
        }
    }
}

// Above the critical temperature and up to the highest one a dew point has two pressures.
TEST_P(Envelope, NegativeSelectorTakesTheRetrogradeSide) {
    if (!GetParam().retrograde) {
        EXPECT_LT(table.highestTemperature.T - table.criticalPoint.T, 0.001);
        return;
    }
    for (const double share : {0.5, 0.75}) {
        const double T = table.criticalPoint.T + share * (table.highestTemperature.T - table.criticalPoint.T);
        const TwoPhases lower = newton(dew, T, 0.0, z), upper = newton(-2, T, 0.0, z);
        ASSERT_EQ(lower.ierr, 0) << words(lower.herr);
        ASSERT_EQ(upper.ierr, 0) << words(upper.herr);
        EXPECT_EQ(upper.T, T);
        EXPECT_EQ(upper.q, 1.0);
        EXPECT_EQ(upper.D, upper.rhov);
        for (const TwoPhases* s : {&lower, &upper}) {
            EXPECT_LT(disequilibrium(*s), 1e-9);
            EXPECT_GT(s->rhol, s->rhov);
            EXPECT_NEAR(value(nc + 1, s->rhov) / T, 1.0, 1e-6);
            EXPECT_NEAR(value(nc + 2, s->rhov) / s->p, 1.0, 1e-5);
        }
        EXPECT_LT(lower.rhov, table.highestTemperature.D);
        EXPECT_GT(upper.rhov, table.highestTemperature.D);
        EXPECT_LT(upper.rhov, table.criticalPoint.D);
        EXPECT_GT(upper.p, lower.p);
        // the pressure leads back to T on the same side
        const TwoPhases back = newton(-4, 0.0, upper.p, z);
        ASSERT_EQ(back.ierr, 0) << words(back.herr);
        EXPECT_NEAR(back.T, T, 1e-6);
    }
}

// A bubble point has no other side: there the sign changes nothing.
TEST_P(Envelope, NegativeSelectorOfABubblePointIsThePositiveOne) {
    const std::pair<int, int> selectors[] = {{1, -1}, {3, -3}};
    for (const auto& [plain, negative] : selectors) {
        for (const double share : {0.8, 0.9}) {
            const TwoPhases a = newton(plain, share * Tc, 0.5 * share * pc, z);
            const TwoPhases b = newton(negative, share * Tc, 0.5 * share * pc, z);
            ASSERT_EQ(a.ierr, 0) << words(a.herr);
            ASSERT_EQ(b.ierr, 0) << words(b.herr);
            EXPECT_LT(relative(b.T, a.T), 1e-9);
            EXPECT_LT(relative(b.p, a.p), 1e-9);
            EXPECT_LT(relative(b.rhov, a.rhov), 1e-8);
            EXPECT_EQ(b.q, 0.0);
        }
    }
}

TEST_P(Envelope, EnthalpyFindsTheDewPointsOfBothSides) {
    if (!GetParam().retrograde) {
        EXPECT_LT(table.highestTemperature.T - table.criticalPoint.T, 0.001);
        return;
    }
    for (const double share : {0.5, 0.75}) {
        const double T = table.criticalPoint.T + share * (table.highestTemperature.T - table.criticalPoint.T);
        for (const int kph : {2, -2}) {
            const TwoPhases s = newton(kph, T, 0.0, z);
            ASSERT_EQ(s.ierr, 0) << words(s.herr);
            RESETA();
            int roots = 0, line[2];
            double t[2], p[2], rho[2];
            SATH(enthalpy(T, s.rhov, z), z, 2, roots, line[0], t[0], p[0], rho[0], line[1], t[1], p[1], rho[1], ierr,
                 herr);
            EXPECT_EQ(ierr, 0) << words(herr);
            ASSERT_EQ(roots, 2);
            EXPECT_EQ(line[0], 2);
            // the search ends at 1e-6 J/mol, at a few J/(mol K)
            EXPECT_NEAR(t[0], T, 1e-4);
            EXPECT_LT(relative(p[0], s.p), 1e-4);
            EXPECT_LT(relative(rho[0], s.rhov), 1e-4);
            EXPECT_LT(t[1], t[0]);
            EXPECT_NEAR(enthalpy(t[1], rho[1], z), enthalpy(T, s.rhov, z), 1e-3);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Mixtures, Envelope, testing::ValuesIn(mixtures));

// Below the table's lowest temperature the simple start has to serve, and the phases must not change places.
TEST(EnvelopeEdge, DewPointsBelowTheTableAreDewPoints) {
    Composition z{};
    ASSERT_TRUE(setUpBlend("R407C", z));
    int ierr = 0;
    Text255 herr;
    SATSPLN(z, ierr, herr);
    ASSERT_EQ(ierr, 0);
    for (double T = 152.5; T < 177.5; T += 0.5) {
        saturationMemo = {};
        const TwoPhases s = atTemperature(T, dew, z);
        ASSERT_EQ(s.ierr, 0) << words(s.herr);
        EXPECT_GT(s.rhol, 10.0);
        EXPECT_LT(s.rhov, 0.01);
        EXPECT_LT(disequilibrium(s), 1e-6);
        for (int i = 1; i <= 3; ++i) EXPECT_EQ(s.y[i], z[i]);
    }
    saturationSpline.SPLINEREADY = false;
}

// Just below the critical temperature of a wide binary the simple start leads to two phases that are one. The dew point
// is the one that the table has.
TEST(EnvelopeEdge, DewPointNextToTheCriticalPointHasTwoPhases) {
    Composition z{};
    ASSERT_TRUE(setUpMixture({{"CO2", 0.5}, {"BUTANE", 0.5}}, z));
    constexpr double T = 381.903;
    const TwoPhases plain = atTemperature(T, dew, z);
    ASSERT_EQ(plain.ierr, 0) << words(plain.herr);
    EXPECT_GT(plain.rhol, 1.5 * plain.rhov);
    EXPECT_LT(disequilibrium(plain), 1e-8);
    int ierr = 0;
    Text255 herr;
    SATSPLN(z, ierr, herr);
    ASSERT_EQ(ierr, 0);
    EXPECT_NEAR(SPLNVAL(3, 0, plain.rhov, ierr, herr), T, 0.01);
    saturationMemo = {};
    const TwoPhases started = atTemperature(T, dew, z);
    ASSERT_EQ(started.ierr, 0) << words(started.herr);
    EXPECT_LT(relative(started.p, plain.p), 1e-8);
    EXPECT_LT(relative(started.rhov, plain.rhov), 1e-8);
    saturationSpline.SPLINEREADY = false;
}

TEST(EnvelopeEdge, PureFluidReturnsAtOnceAndLeavesTheTable) {
    Composition z{};
    ASSERT_TRUE(setUpBlend("R410A", z));
    int ierr = 0;
    Text255 herr;
    SATSPLN(z, ierr, herr);
    ASSERT_TRUE(saturationSpline.SPLINEREADY);
    const int rows = saturationSpline.NSPLINE;
    SATSPLN(unitComposition(1), ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(saturationSpline.NSPLINE, rows);
    EXPECT_TRUE(saturationSpline.SPLINEREADY);
    saturationSpline.SPLINEREADY = false;
}

// A start from the splines inside SATGV.
TEST(EnvelopeEdge, LogarithmicSolverStartsFromTheSplines) {
    Composition z{};
    ASSERT_TRUE(setUpBlend("R407C", z));
    int ierr = 0;
    Text255 herr;
    const TwoPhases d = atTemperature(300.0, dew, z);
    ASSERT_EQ(d.ierr, 0);
    SATSPLN(z, ierr, herr);
    ASSERT_EQ(ierr, 0);
    struct Given {
        int ityp;
        double b;
    };
    for (const auto& [ityp, b] : {Given{0, d.p}, Given{1, d.T}, Given{5, entropy(d.T, d.rhov, z)}, Given{6, d.rhov}}) {
        for (const int ipv : {1, 2}) {
            SCOPED_TRACE(testing::Message() << "ityp " << ityp << ", ipv " << ipv);
            TwoPhases s;  // no start in the arguments
            s.T = 300.0;
            s.p = 1.0;
            s.rhol = s.rhov = 1.0;
            SATGV(s.T, s.p, z, 1.0, b, ipv, ityp, 1, s.rhol, s.rhov, s.x, s.y, s.ierr, s.herr);
            EXPECT_EQ(s.ierr, 0) << words(s.herr);
            EXPECT_LT(relative(s.T, d.T), 1e-8);
            EXPECT_LT(relative(s.p, d.p), 1e-8);
            EXPECT_LT(relative(s.rhov, d.rhov), 1e-8);
        }
    }
    saturationSpline.SPLINEREADY = false;
}

}  // namespace
}  // namespace frigana::equilibria
