// Saturation states of blends from density, enthalpy, entropy and energy: what lies on a line is found again, and every
// root is a state of its line.
#include <array>
#include <cstdio>
#include <functional>

#include "Equilibrium.h"
#include "LIMITS.h"
#include "SAT_SUB_INVERSE.h"
#include "SAT_SUB_SPLINE.h"

namespace frigana::equilibria {
namespace {

double energy(double T, double rho, const Composition& x) {
    double e = 0.0;
    ENERGY(T, rho, x, e);
    return e;
}
double density(double, double rho, const Composition&) {
    return rho;
}

struct Roots {
    int count = 0, ierr = 0;
    std::array<int, 3> line{};
    std::array<double, 3> T{}, p{}, rho{};
    Text255 herr;
};

Roots byEnthalpy(double h, const Composition& z, int kph) {
    Roots r;
    SATH(h, z, kph, r.count, r.line[0], r.T[0], r.p[0], r.rho[0], r.line[1], r.T[1], r.p[1], r.rho[1], r.ierr, r.herr);
    return r;
}
Roots byEnergy(double e, const Composition& z, int kph) {
    Roots r;
    SATE(e, z, kph, r.count, r.line[0], r.T[0], r.p[0], r.rho[0], r.line[1], r.T[1], r.p[1], r.rho[1], r.ierr, r.herr);
    return r;
}
Roots byEntropy(double s, const Composition& z, int kph) {
    Roots r;
    SATS(s, z, kph, r.count, r.line[0], r.T[0], r.p[0], r.rho[0], r.line[1], r.T[1], r.p[1], r.rho[1], r.line[2],
         r.T[2], r.p[2], r.rho[2], r.ierr, r.herr);
    return r;
}
Roots byDensity(double rho, const Composition& z, int kph) {
    Roots r;
    TwoPhases s;
    SATD(rho, z, kph, r.line[0], s.T, s.p, s.rhol, s.rhov, s.x, s.y, r.ierr, r.herr);
    if (r.ierr != 0) return r;
    r.count = 1;
    r.T[0] = s.T;
    r.p[0] = s.p;
    r.rho[0] = r.line[0] == bubble ? s.rhol : s.rhov;
    EXPECT_LT(disequilibrium(s), 1e-6);
    EXPECT_LT(relative(pressure(s.T, s.rhol, s.x), s.p), 1e-5);
    EXPECT_LT(relative(pressure(s.T, s.rhov, s.y), s.p), 1e-6);
    return r;
}

struct Inverse {
    const char* name;
    Roots (*solve)(double, const Composition&, int);
    double (*property)(double, double, const Composition&);
};
const Inverse inverses[] = {
    {"SATD", byDensity, density},
    {"SATH", byEnthalpy, enthalpy},
    {"SATS", byEntropy, entropy},
    {"SATE", byEnergy, energy},
};

struct Mixture {
    const char* name;  // a blend, or shares of a wide binary
    std::initializer_list<Share> shares;
};
const Mixture mixtures[] = {
    {"R404A", {}},
    {"R407C", {}},
    {"CO2 and propane", {{"CO2", 0.5}, {"PROPANE", 0.5}}},
    {"R23 and R134A", {{"R23", 0.5}, {"R134A", 0.5}}},
};

std::ostream& operator<<(std::ostream& out, const Mixture& mixture) {
    return out << mixture.name;
}

class InverseOfBlends : public testing::TestWithParam<Mixture> {
  protected:
    void SetUp() override {
        const Mixture& mixture = GetParam();
        if (mixture.shares.size() == 0)
            ASSERT_TRUE(setUpBlend(mixture.name, z));
        else
            ASSERT_TRUE(setUpMixture(mixture.shares, z));
        CRITP(z, Tc, pc, Dc, ierr, herr);
        ASSERT_EQ(ierr, 0);
        double tmax, Dmax, pmax;
        LIMITS("EOS", z, Tmin, tmax, Dmax, pmax);
    }
    void TearDown() override {
        saturationSpline.SPLINEREADY = false;
        RESETA();
    }

    // A root has the property, and pressure and density are those of SATT on the line. Above the critical temperature
    // there are two dew points; there it is enough that the density has the pressure.
    void expectRoot(const Inverse& inverse, double value, const Roots& roots, std::size_t k) const {
        const double T = roots.T[k], rho = roots.rho[k];
        EXPECT_LT(relative(inverse.property(T, rho, z), value), 1e-6) << "root " << k;
        EXPECT_LT(relative(pressure(T, rho, z), roots.p[k]), 1e-5) << "root " << k;
        if (T > 0.99 * Tc) return;
        const TwoPhases s = atTemperature(T, roots.line[k], z);
        ASSERT_EQ(s.ierr, 0) << words(s.herr);
        EXPECT_LT(relative(s.p, roots.p[k]), 1e-6);
        EXPECT_LT(relative(roots.line[k] == bubble ? s.rhol : s.rhov, rho), 1e-6);
        EXPECT_LT(disequilibrium(s), 1e-6);
    }

    Composition z{};
    int ierr = 0;
    Text255 herr;
    double Tc = 0.0, pc = 0.0, Dc = 0.0, Tmin = 0.0;
};

TEST_P(InverseOfBlends, EveryStateOfTheLinesIsFoundAgain) {
    struct Given {
        int line;
        TwoPhases s;
        double rho;
    };
    std::vector<Given> given;
    for (const int line : {bubble, dew})
        for (const double share : {0.0, 0.2, 0.4, 0.6, 0.8, 1.0}) {
            const TwoPhases s = atTemperature(Tmin + 0.5 + share * (0.99 * Tc - Tmin - 0.5), line, z);
            ASSERT_EQ(s.ierr, 0) << words(s.herr);
            given.push_back({line, s, line == bubble ? s.rhol : s.rhov});
        }
    for (const Inverse& inverse : inverses) {
        // all searches before the first check: a call of SATT between two of SATE leaves its mark on the maximum
        std::vector<Roots> found;
        for (const Given& g : given) found.push_back(inverse.solve(inverse.property(g.s.T, g.rho, z), z, g.line));
        for (std::size_t i = 0; i < given.size(); ++i) {
            const Given& g = given[i];
            const Roots& roots = found[i];
            SCOPED_TRACE(testing::Message() << inverse.name << " T " << g.s.T << " line " << g.line);
            EXPECT_EQ(roots.ierr, 0) << words(roots.herr);
            double closest = 1e9;
            for (std::size_t k = 0; k < static_cast<std::size_t>(roots.count); ++k) {
                EXPECT_EQ(roots.line[k], g.line);
                expectRoot(inverse, inverse.property(g.s.T, g.rho, z), roots, k);
                closest = std::min(closest, std::fabs(roots.T[k] - g.s.T));
            }
            EXPECT_LT(closest, 1e-3);
        }
    }
}

// The warm root of these lies above the temperature of the estimated critical point, or on the retrograde side.
TEST_P(InverseOfBlends, WarmRootsAboveTheCriticalTemperatureAreFound) {
    const TwoPhases start = atTemperature(0.985 * Tc, dew, z);
    ASSERT_EQ(start.ierr, 0) << words(start.herr);
    // the lowest enthalpy that the dew line surely has is close to that of the critical point
    const double high = enthalpy(start.T, start.rhov, z), low = enthalpy(Tc, Dc, z);
    double lastRho = start.rhov;
    for (const double share : {0.4, 0.8}) {
        const double h = high + share * (low - high);
        const Roots roots = byEnthalpy(h, z, dew);
        SCOPED_TRACE(testing::Message() << "h " << h);
        ASSERT_EQ(roots.ierr, 0) << words(roots.herr);
        ASSERT_EQ(roots.count, 2);
        expectRoot(inverses[1], h, roots, 0);
        expectRoot(inverses[1], h, roots, 1);
        EXPECT_GT(roots.T[0], start.T);
        EXPECT_GT(roots.rho[0], lastRho);
        lastRho = roots.rho[0];
        // by its density the same state, now with its liquid
        const Roots same = byDensity(roots.rho[0], z, dew);
        ASSERT_EQ(same.ierr, 0) << words(same.herr);
        EXPECT_EQ(same.line[0], dew);
        EXPECT_NEAR(same.T[0], roots.T[0], 1e-4);
        // energy and entropy of the state lead to it as well
        for (const Inverse& inverse : inverses) {
            RESETA();
            const Roots other = inverse.solve(inverse.property(same.T[0], same.rho[0], z), z, dew);
            ASSERT_EQ(other.ierr, 0) << inverse.name << ' ' << words(other.herr);
            EXPECT_NEAR(other.T[0], same.T[0], 1e-3) << inverse.name;
            EXPECT_LT(relative(other.rho[0], same.rho[0]), 1e-3) << inverse.name;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Mixtures, InverseOfBlends, testing::ValuesIn(mixtures));

// Dew points between the critical temperature and the highest one, with the envelope in splines: both sides of the
// highest temperature, and next to it.
struct DewPoint {
    const char* name;
    std::initializer_list<Share> shares;
    double rho;  // [mol/L]
};
const DewPoint dewPoints[] = {
    {"CO2 and butane", {{"CO2", 0.5}, {"BUTANE", 0.5}}, 2.6885},
    {"CO2 and butane", {{"CO2", 0.5}, {"BUTANE", 0.5}}, 5.2214},
    {"R407C", {}, 4.975},
    {"R407C", {}, 5.243},
    {"R407C", {}, 5.549},
};

TEST(InverseOfEnvelope, DewPointsOfBothSidesAreFoundByEveryProperty) {
    for (const DewPoint& point : dewPoints) {
        SCOPED_TRACE(testing::Message() << point.name << ' ' << point.rho);
        Composition z{};
        ASSERT_TRUE(point.shares.size() == 0 ? setUpBlend(point.name, z) : setUpMixture(point.shares, z));
        int ierr = 0;
        Text255 herr;
        SATSPLN(z, ierr, herr);
        ASSERT_EQ(ierr, 0);
        const double T = SPLNVAL(modelTags.NC + 1, 0, point.rho, ierr, herr);
        ASSERT_EQ(ierr, 0);
        ASSERT_GT(T, saturationSpline.criticalPoint.T);
        for (const Inverse& inverse : inverses) {
            SCOPED_TRACE(inverse.name);
            const Roots roots = inverse.solve(inverse.property(T, point.rho, z), z, dew);
            EXPECT_EQ(roots.ierr, 0) << words(roots.herr);
            ASSERT_GE(roots.count, 1);
            EXPECT_EQ(roots.line[0], dew);
            // the splines hold the envelope to some 1e-5 between their rows
            EXPECT_NEAR(roots.T[0], T, 2e-3);
            EXPECT_LT(relative(roots.rho[0], point.rho), 1e-3);
            EXPECT_LT(relative(pressure(roots.T[0], roots.rho[0], z), roots.p[0]), 1e-5);
        }
        saturationSpline.SPLINEREADY = false;
        RESETA();
    }
}

// SATE's own calls of the mixture solver leave its maximum as it is; only others between two of SATE replace it.
TEST(InverseOfBlend, EnergyKeepsItsMaximumOverItsOwnSearches) {
    Composition z{};
    ASSERT_TRUE(setUpBlend("R407C", z));
    const TwoPhases warm = atTemperature(340.0, dew, z);
    const double e = energy(warm.T, warm.rhov, z);
    for (int call = 1; call <= 3; ++call) {
        const Roots roots = byEnergy(e, z, dew);
        EXPECT_EQ(roots.ierr, 0) << words(roots.herr);
        ASSERT_EQ(roots.count, 2);
        EXPECT_NEAR(roots.T[0], 340.0, 1e-4);
    }
    atTemperature(300.0, dew, z);
    EXPECT_EQ(byEnergy(e, z, dew).ierr, 4);
    RESETA();
    EXPECT_EQ(byEnergy(e, z, dew).ierr, 0);
}

}  // namespace
}  // namespace frigana::equilibria
