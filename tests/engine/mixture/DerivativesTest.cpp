// Derivatives of the mixture model against central differences.
#include <array>
#include <functional>

#include "DISPATCH.h"
#include "EngineSetUp.h"
#include "Larger.h"
#include "MixtureSetUp.h"
#include "PHIDERV.h"
#include "PROP_SUB_FUGACITY.h"

namespace frigana::test {
namespace {

// Difference of sixth order: its error is h^6/140 times the seventh derivative.
template <class Function>
double slope(Function value, double at, double h) {
    const auto pair = [&](int k) { return value(at + k * h) - value(at - k * h); };
    return (45.0 * pair(1) - 9.0 * pair(2) + pair(3)) / (60.0 * h);
}
// Of the scale given beside each quantity. The differences themselves are good to some 2e-9.
constexpr double promised = 1e-7;

// The largest deviation of a quantity over all states. The bound is asserted at the end, state by state it is kept.
class Worst {
  public:
    explicit Worst(const char* what) : what_(what) {}
    ~Worst() {
        EXPECT_LE(worst_, promised) << what_ << ": " << where_;
        EXPECT_GT(count_, 0) << what_;
        testing::Test::RecordProperty(what_, std::to_string(worst_ * 1e9) + "e-9");
    }
    Worst(const Worst&) = delete;
    Worst& operator=(const Worst&) = delete;
    void compare(double analytic, double numerical, double scale, const std::string& where) {
        ++count_;
        const double deviation = std::fabs(analytic - numerical) / scale;
        if (deviation <= worst_ || std::isnan(worst_)) return;  // what is not a number is the worst
        worst_ = deviation;
        where_ = where + ": " + std::to_string(analytic) + " and " + std::to_string(numerical);
    }

  private:
    const char* what_;
    double worst_ = 0.0;
    std::string where_;
    int count_ = 0;
};

struct Blend {
    const char* name;
    Names fluids;
};
// Every kind of departure function of the file: LJ and KW with terms of powers alone (LJ1, LJ2, LJ6, KW3 to KW9), with
// the exponential block (KW1, KW2), with none (KW0, F = 0); pairs of both orders of the file.
const std::vector<Blend>& blends() {
    static const std::vector<Blend> all = {
        {"R32+R125", {"R32", "R125"}},
        {"R134A+R1234YF", {"R134A", "R1234YF"}},
        {"NITROGEN+CO2", {"NITROGEN", "CO2"}},
        {"AMMONIA+PROPANE", {"AMMONIA", "PROPANE"}},
        {"R134A+R245FA+R1234ZE", {"R134A", "R245FA", "R1234ZE"}},
        {"CO2+R32+R1234YF", {"CO2", "R32", "R1234YF"}},
        {"R143A+R125+R134A+R152A", {"R143A", "R125", "R134A", "R152A"}},
        {"PROPANE+CO2+NITROGEN+BUTANE", {"PROPANE", "CO2", "NITROGEN", "BUTANE"}},
        {"R1234ZE+R1234YF+R134A+R125+R32", {"R1234ZE", "R1234YF", "R134A", "R125", "R32"}},
        {"ISOBUTAN+R32+CO2+R152A+R22", {"ISOBUTAN", "R32", "CO2", "R152A", "R22"}},
    };
    return all;
}

// Fractions of at least 0.05 that add up to one.
Composition randomComposition(int nc, Random& random) {
    Composition x{};
    double sum = 0.0;
    for (int i = 1; i <= nc; ++i) sum += x[i] = random.between(0.1, 1.0);
    for (int i = 1; i <= nc; ++i) x[i] = 0.05 + (1.0 - 0.05 * nc) * x[i] / sum;
    return x;
}

// A state, and what is differentiated at it.
struct State {
    double t, rho;
    Composition x;
    std::string name;
    double p() const { return pressureAt(t, rho, x); }
    static double pressureAt(double t, double rho, const Composition& x) {
        double p = 0.0;
        PRESS(t, rho, x, p);
        return p;
    }
    static double slopeInDensity(double t, double rho, const Composition& x) {
        double dpdrho = 0.0;
        DPDD(t, rho, x, dpdrho);
        return dpdrho;
    }
    // The density at another temperature, pressure or composition nearby, by Newton's method.
    double densityAt(double T, double p, const Composition& y) const {
        double d = rho;
        for (int k = 0; k < 8; ++k) d -= (pressureAt(T, d, y) - p) / slopeInDensity(T, d, y);
        return d;
    }
};

enum Region { vapor, gas, supercritical, dense, liquid, coldLiquid, regions };

// A stable state of a region at random; the liquids are under pressure.
State stateIn(Region region, const Composition& x, const std::string& blend, Random& random) {
    struct Range {
        const char* name;
        double t0, t1, d0, d1;  // in units of the reducing values
    };
    constexpr Range ranges[regions] = {{"vapor", 0.70, 0.95, 1e-3, 0.03},      {"gas", 1.05, 1.4, 0.01, 0.3},
                                       {"supercritical", 1.15, 1.4, 0.5, 1.5}, {"dense", 1.05, 1.3, 1.6, 2.2},
                                       {"liquid", 0.8, 0.92, 2.1, 2.4},        {"cold liquid", 0.65, 0.75, 2.6, 2.7}};
    const Range& range = ranges[region];
    double Tr = 0.0, Dr = 0.0;
    REDHMX(x, Tr, Dr);
    State state{random.between(range.t0, range.t1) * Tr, random.between(range.d0, range.d1) * Dr, x,
                blend + " " + range.name};
    if (region >= dense)
        for (int k = 0; k < 60 && state.p() < 3000.0; ++k) state.rho *= 1.01;
    return state;
}

// Calls check(state) for several compositions and all regions of every blend.
void overStates(const std::function<void(const State&)>& check) {
    Random random;
    for (const Blend& blend : blends()) {
        FileNames files{};
        int nc = 0, ierr = 0;
        for (const std::string& fluid : blend.fluids) files[++nc] = std::string_view(dataFile(fluid + ".FLD"));
        Text3 reference = "NA";
        Text255 herr;
        SETUP(nc, files, std::string_view(dataFile("HMX.BNC")), reference, ierr, herr);
        ASSERT_LE(ierr, 0) << blend.name << herr.trimmed();
        for (int n = 0; n < 3; ++n) {
            const Composition x = randomComposition(nc, random);
            for (int region = 0; region < regions; ++region) {
                const State state = stateIn(static_cast<Region>(region), x, blend.name, random);
                ASSERT_GT(state.p(), 0.0) << state.name;
                ASSERT_GT(State::slopeInDensity(state.t, state.rho, x), 0.0) << state.name;
                check(state);
            }
        }
    }
}

class Derivatives : public MixtureSetUp {};

// ---- the departure functions alone ------------------------------------------------------------------------------

TEST_F(Derivatives, OfTheDepartureFunctionsInBothReducedVariables) {
    Worst inTau("departure in tau"), inDel("departure in del"), thirdInDel("departure, third in del");
    Random random;
    for (const Blend& blend : blends()) {
        ASSERT_LE(setUp(blend.fluids), 0) << message();
        const int nc = modelTags.NC;
        const Composition x = randomComposition(nc, random);
        for (int i = 1; i < nc; ++i)
            for (int j = i + 1; j <= nc; ++j)
                for (const double del0 : {0.05, 0.7, 2.0}) {
                    const double tau = random.between(0.7, 1.5), del = del0 * random.between(0.9, 1.1);
                    const auto phi = [&](int itau, int idel, double a, double b) {
                        return PHIMIX(i, j, itau, idel, a, b, x);
                    };
                    double scale = 1e-9;
                    for (int itau = 0; itau <= 3; ++itau)
                        for (int idel = 0; idel <= 3; ++idel)
                            scale = larger(scale, std::fabs(phi(itau, idel, tau, del)));
                    MixingPair& pair = mixingParameters.pair[i][j];
                    for (int itau = 0; itau <= 3; ++itau)
                        for (int idel = 0; idel <= 3; ++idel) {
                            const std::string where = std::string(blend.name) + " " + std::to_string(10 * i + j) +
                                                      " order " + std::to_string(10 * itau + idel);
                            // tau d/dtau (tau^n D_n) = n tau^n D_n + tau^(n+1) D_(n+1), likewise in del
                            if (itau < 3)
                                inTau.compare(
                                    phi(itau + 1, idel, tau, del) + itau * phi(itau, idel, tau, del),
                                    tau * slope([&](double a) { return phi(itau, idel, a, del); }, tau, 2e-3 * tau),
                                    scale, where);
                            if (idel < 2)
                                inDel.compare(
                                    phi(itau, idel + 1, tau, del) + idel * phi(itau, idel, tau, del),
                                    del * slope([&](double b) { return phi(itau, idel, tau, b); }, del, 2e-3 * del),
                                    scale, where);
                            if (idel != 2) continue;
                            // the exponential block gives no third derivative: the terms of powers alone do
                            const double third = phi(itau, 3, tau, del);
                            const int exponential = pair.NAMIX2;
                            pair.NAMIX2 = 0;
                            clearDepartureCache();
                            thirdInDel.compare(
                                third + 2 * phi(itau, 2, tau, del),
                                del * slope([&](double b) { return phi(itau, 2, tau, b); }, del, 2e-3 * del), scale,
                                where);
                            pair.NAMIX2 = exponential;
                            clearDepartureCache();
                        }
                }
    }
}

// The orders that the property routines ask for. Third derivatives are incomplete where a departure function has an
// exponential block, and where the equation of a component has rows that are not analytic (carbon dioxide).
TEST_F(Derivatives, OfTheEnergyOfTheMixtureInBothReducedVariables) {
    struct Order {
        int itau, idel;
        bool inTau;  // differences of the order below in tau, otherwise in del
    };
    constexpr Order orders[] = {{0, 1, false}, {0, 2, false}, {0, 3, false}, {1, 0, true}, {1, 1, true},
                                {1, 1, false}, {1, 2, false}, {1, 2, true},  {2, 0, true}, {2, 1, true}};
    Worst worst("PHIX in tau and del");
    overStates([&](const State& s) {
        double Tr = 0.0, Dr = 0.0;
        REDX(s.x, Tr, Dr);
        const double tau = Tr / s.t, del = s.rho / Dr;
        bool third = s.name.find("CO2") == std::string::npos;
        for (int i = 1; i < modelTags.NC; ++i)
            for (int j = i + 1; j <= modelTags.NC; ++j) third = third && mixingParameters.pair[i][j].NAMIX2 == 0;
        double scale = 1e-3;
        for (const Order& o : orders) scale = larger(scale, std::fabs(PHIX(o.itau, o.idel, tau, del, s.x)));
        for (const Order& o : orders) {
            if (o.itau + o.idel == 3 && !third) continue;
            const int itau = o.inTau ? o.itau - 1 : o.itau, idel = o.inTau ? o.idel : o.idel - 1;
            const double below = (o.inTau ? itau : idel) * PHIX(itau, idel, tau, del, s.x);
            const double step = 1e-3;
            const double numerical =
                o.inTau ? tau * slope([&](double a) { return PHIX(itau, idel, a, del, s.x); }, tau, step * tau)
                        : del * slope([&](double b) { return PHIX(itau, idel, tau, b, s.x); }, del, step * del);
            worst.compare(PHIX(o.itau, o.idel, tau, del, s.x) + below, numerical, scale,
                          s.name + " order " + std::to_string(10 * o.itau + o.idel));
        }
    });
}

// ---- the reducing functions -------------------------------------------------------------------------------------

// x with fraction j changed by h, and fraction k by -h.
Composition moved(const Composition& x, int j, double h, int k = 0) {
    Composition y = x;
    y[j] += h;
    if (k > 0) y[k] -= h;
    return y;
}
constexpr double fractionStep = 4e-3;  // three of them leave fractions of 0.05 positive

struct Reducing {
    double T, V;
};
Reducing reducing(int ix, int i, int j, const Composition& x) {
    double T = 0.0, D = 0.0;
    int ierr = 0;
    Text255 herr;
    RDXHMX(ix, i, j, x, T, D, ierr, herr);
    EXPECT_EQ(ierr, 0) << herr.trimmed();
    return {T, ix > 0 ? D : 1.0 / D};
}

// The values with one rule for all pairs are the double sum whose partial derivatives the routine gives. The LJ rule
// has the double sum only where it is equal to a KW rule, so KW pairs alone serve here.
TEST_F(Derivatives, OfTheReducingFunctionsOfOneRuleInEachFraction) {
    Worst first("RDXHMX ix 1"), second("RDXHMX ix 2"), mixed("RDXHMX ix 11");
    Random random;
    const std::vector<Names> kw = {{"R134A", "R1234YF"},
                                   {"CO2", "R32", "R1234YF"},
                                   {"PROPANE", "CO2", "NITROGEN", "BUTANE"},
                                   {"R1234ZE", "R1234YF", "R32", "CO2", "PROPANE"}};
    for (const Names& fluids : kw) {
        ASSERT_EQ(setUp(fluids), 0) << message();
        const int nc = modelTags.NC;
        for (int n = 0; n < 3; ++n) {
            const Composition x = randomComposition(nc, random);
            const Reducing at = reducing(-1, 0, 0, x);
            for (int i = 1; i <= nc; ++i) {
                const std::string where = fluids.front() + " " + std::to_string(i);
                const auto along = [&](int ix, int a, int b, int c, double Reducing::*part) {
                    return slope([&](double h) { return reducing(ix, a, b, moved(x, c, h)).*part; }, 0.0, fractionStep);
                };
                const Reducing one = reducing(1, i, 0, x), two = reducing(2, i, 0, x);
                first.compare(one.T, along(-1, 0, 0, i, &Reducing::T), at.T, where);
                first.compare(one.V, along(-1, 0, 0, i, &Reducing::V), at.V, where);
                second.compare(two.T, along(1, i, 0, i, &Reducing::T), at.T, where);
                second.compare(two.V, along(1, i, 0, i, &Reducing::V), at.V, where);
                for (int j = 1; j <= nc; ++j) {
                    if (j == i) continue;
                    const Reducing cross = reducing(11, i, j, x), back = reducing(11, j, i, x);
                    EXPECT_EQ(cross.T, back.T);
                    EXPECT_EQ(cross.V, back.V);
                    mixed.compare(cross.T, along(1, i, 0, j, &Reducing::T), at.T, where);
                    mixed.compare(cross.V, along(1, i, 0, j, &Reducing::V), at.V, where);
                }
            }
        }
    }
}

// Along changes that keep the sum, they are the derivatives of each pair's own rule.
TEST_F(Derivatives, OfTheReducingFunctionsWhereTheFractionsAddUp) {
    Worst first("reducing values, first"), second("reducing values, second");
    overStates([&](const State& state) {
        const int nc = modelTags.NC;
        const Composition& x = state.x;
        const Reducing at = reducing(0, 0, 0, x);
        for (int i = 1; i <= nc; ++i)
            for (int j = i + 1; j <= nc; ++j)
                for (const auto part : {&Reducing::T, &Reducing::V}) {
                    const auto slopeAt = [&](double h) {
                        const Composition y = moved(x, i, h, j);
                        return reducing(1, i, 0, y).*part - reducing(1, j, 0, y).*part;
                    };
                    const auto value = [&](double h) { return reducing(0, 0, 0, moved(x, i, h, j)).*part; };
                    first.compare(slopeAt(0.0), slope(value, 0.0, fractionStep), at.*part, state.name);
                    const double analytic =
                        reducing(2, i, 0, x).*part + reducing(2, j, 0, x).*part - 2.0 * (reducing(11, i, j, x).*part);
                    second.compare(analytic, slope(slopeAt, 0.0, fractionStep), at.*part, state.name);
                }
    });
}

// ---- the Helmholtz energy and the fugacities --------------------------------------------------------------------

CompositionDerivatives derivativesAt(int iderv, double t, double rho, const Composition& x) {
    Composition dalpha, dnalpha;
    int ierr = 0;
    Text255 herr;
    PHIDERV(iderv, t, rho, x, dalpha, dnalpha, ierr, herr);
    EXPECT_EQ(ierr, 0) << herr.trimmed();
    for (int i = 1; i <= modelTags.NC; ++i) {
        EXPECT_EQ(dalpha[i], compositionDerivatives.DADN[i]);
        EXPECT_EQ(dnalpha[i], compositionDerivatives.DNADN[i]);
    }
    return compositionDerivatives;
}

// phi of amounts n in the volume 1/rho.
struct Amounts {
    Composition x;
    double total, rho;
};
Amounts withMore(const State& state, int i, double h) {
    Amounts a{state.x, 1.0 + h, state.rho * (1.0 + h)};
    a.x[i] += h;
    for (int k = 1; k <= modelTags.NC; ++k) a.x[k] /= a.total;
    return a;
}
double energyOf(double t, const Amounts& a) {
    double Tr = 0.0, Dr = 0.0;
    REDX(a.x, Tr, Dr);
    return PHIX(0, 0, Tr / t, a.rho / Dr, a.x);
}

TEST_F(Derivatives, OfTheEnergyInTheAmounts) {
    Worst dadn("DADN"), dnadn("DNADN"), lnf("XLNFI"), fugacity("FGCTY2"), coefficient("FUGCOF"), pressure("p");
    overStates([&](const State& s) {
        const CompositionDerivatives c = derivativesAt(1, s.t, s.rho, s.x), both = derivativesAt(2, s.t, s.rho, s.x);
        EXPECT_EQ(c.p, both.p);
        for (int i = 1; i <= modelTags.NC; ++i) {
            EXPECT_EQ(c.DADN[i], both.DADN[i]);
            EXPECT_EQ(c.DNADN[i], both.DNADN[i]);
            EXPECT_EQ(c.XLNFI[i], both.XLNFI[i]);
        }
        Composition f, phi, byDifferences;
        FGCTY(s.t, s.rho, s.x, byDifferences);
        FGCTY2(s.t, s.rho, s.x, f, ierr, herr);
        ASSERT_EQ(ierr, 0);
        FUGCOF(s.t, s.rho, s.x, phi, ierr, herr);
        ASSERT_EQ(ierr, 0);
        RMIX(s.x);
        const double unit = s.rho * fluidConstants.R * s.t, p = s.p();
        pressure.compare(c.p, p, unit, s.name);
        for (int i = 1; i <= modelTags.NC; ++i) {
            const double A = slope([&](double h) { return energyOf(s.t, withMore(s, i, h)); }, 0.0, fractionStep);
            const double nA = slope(
                [&](double h) {
                    const Amounts a = withMore(s, i, h);
                    return a.total * energyOf(s.t, a);
                },
                0.0, fractionStep);
            const double scale = std::max(1.0, std::fabs(nA));
            // its own steps of 0.0001 leave their square
            EXPECT_NEAR(std::log(byDifferences[i] / f[i]), 0.0, 3e-6) << s.name;
            dadn.compare(c.DADN[i], A, scale, s.name);
            dnadn.compare(c.DNADN[i], nA, scale, s.name);
            lnf.compare(c.XLNFI[i], std::log(s.x[i] * unit) + nA, scale, s.name);
            fugacity.compare(std::log(f[i] / (s.x[i] * unit)), nA, scale, s.name);
            coefficient.compare(std::log(phi[i] * p / unit), nA, scale, s.name);
        }
    });
}

double lnFugacity(int i, double t, double rho, const Composition& x) {
    return derivativesAt(1, t, rho, x).XLNFI[i];
}

TEST_F(Derivatives, OfPressureAndFugacityInTemperatureDensityAndPressure) {
    Worst dpdd("dPdD"), dpdt("dPdT"), inT("DPHIDT"), inP("DPHIDP"), atV("DLNFINIDT"), inV("DLNFINIDV");
    overStates([&](const State& s) {
        const CompositionDerivatives c = derivativesAt(2, s.t, s.rho, s.x);
        RMIX(s.x);
        const double RT = fluidConstants.R * s.t, p = s.p(), stepT = 1.5e-3 * s.t, stepD = 1.5e-3 * s.rho;
        const double stiffness = std::max(1.0, c.dPdD / RT);
        dpdd.compare(c.dPdD, slope([&](double d) { return State::pressureAt(s.t, d, s.x); }, s.rho, stepD),
                     stiffness * RT, s.name);
        dpdt.compare(c.dPdT, slope([&](double T) { return State::pressureAt(T, s.rho, s.x); }, s.t, stepT),
                     std::max(fluidConstants.R * s.rho, c.dPdT), s.name);
        // a pressure step that changes the density as much as stepD does
        const double stepP = c.dPdD * stepD;
        for (int i = 1; i <= modelTags.NC; ++i) {
            const double scaleT = std::max(1.0, std::fabs(c.DPHIDT[i]) * s.t) / s.t;
            const double scaleAtV = std::max(1.0, std::fabs(c.DLNFINIDT[i]) * s.t) / s.t;
            inT.compare(
                c.DPHIDT[i],
                slope([&](double T) { return lnFugacity(i, T, s.densityAt(T, p, s.x), s.x); }, s.t, 0.1 * stepT),
                scaleT, s.name);
            inP.compare(c.DPHIDP[i],
                        slope([&](double P) { return lnFugacity(i, s.t, s.densityAt(s.t, P, s.x), s.x); }, p, stepP),
                        std::max(std::fabs(c.DPHIDP[i]), 1.0 / (RT * s.rho * stiffness)), s.name);
            atV.compare(c.DLNFINIDT[i], slope([&](double T) { return lnFugacity(i, T, s.rho, s.x); }, s.t, stepT),
                        scaleAtV, s.name);
            inV.compare(c.DLNFINIDV[i],
                        -s.rho * s.rho * slope([&](double d) { return lnFugacity(i, s.t, d, s.x); }, s.rho, stepD),
                        std::max(s.rho, std::fabs(c.DLNFINIDV[i])), s.name);
        }
    });
}

TEST_F(Derivatives, OfPressureAndFugacityInTheFractions) {
    Worst dpdx("DPDXI"), dphidx("DPHIDXJ"), dlnphidx("DLNPHIIDXJ");
    overStates([&](const State& s) {
        const int nc = modelTags.NC;
        const CompositionDerivatives c = derivativesAt(2, s.t, s.rho, s.x);
        RMIX(s.x);
        const double unit = fluidConstants.R * s.t * s.rho, p = s.p(), step = 0.25 * fractionStep;
        for (int j = 1; j <= nc; ++j)
            for (int k = j + 1; k <= nc; ++k) {
                const double pressureScale = std::max({unit, std::fabs(c.DPDXI[j]), std::fabs(c.DPDXI[k])});
                dpdx.compare(
                    c.DPDXI[j] - c.DPDXI[k],
                    slope([&](double h) { return State::pressureAt(s.t, s.rho, moved(s.x, j, h, k)); }, 0.0, step),
                    pressureScale, s.name);
                for (int i = 1; i <= nc; ++i) {
                    const auto lnPhi = [&](double h) {
                        const Composition y = moved(s.x, j, h, k);
                        return lnFugacity(i, s.t, s.densityAt(s.t, p, y), y) - std::log(y[i]);
                    };
                    const double numerical = slope(lnPhi, 0.0, step);
                    const double scale = std::max({1.0, std::fabs(c.DLNPHIIDXJ[j][i]), std::fabs(c.DLNPHIIDXJ[k][i])});
                    dlnphidx.compare(c.DLNPHIIDXJ[j][i] - c.DLNPHIIDXJ[k][i], numerical, scale, s.name);
                    const double ideal = i == j ? 1.0 / s.x[i] : i == k ? -1.0 / s.x[i] : 0.0;
                    dphidx.compare(c.DPHIDXJ[j][i] - c.DPHIDXJ[k][i], numerical + ideal, scale, s.name);
                }
            }
    });
}

TEST_F(Derivatives, OfFugacityInTheAmounts) {
    Worst dphidn("DPHIDNJ"), d2adnn("D2ADNN");
    overStates([&](const State& s) {
        const int nc = modelTags.NC;
        const CompositionDerivatives c = derivativesAt(2, s.t, s.rho, s.x);
        const double p = s.p(), step = 0.25 * fractionStep;
        for (int j = 1; j <= nc; ++j)
            for (int i = 1; i <= nc; ++i) {
                d2adnn.compare(c.D2ADNN[j][i],
                               slope(
                                   [&](double h) {
                                       const Amounts a = withMore(s, j, h);
                                       return derivativesAt(1, s.t, a.rho, a.x).DNADN[i];
                                   },
                                   0.0, step),
                               std::max(1.0, std::fabs(c.D2ADNN[j][i])), s.name);
                dphidn.compare(c.DPHIDNJ[j][i],
                               slope(
                                   [&](double h) {
                                       const Composition y = withMore(s, j, h).x;
                                       return lnFugacity(i, s.t, s.densityAt(s.t, p, y), y) - std::log(y[i]);
                                   },
                                   0.0, step),
                               std::max(1.0, std::fabs(c.DPHIDNJ[j][i])), s.name);
            }
    });
}

// What must hold whatever the model: symmetry of the second derivatives, the relation of Gibbs and Duhem, and Euler's.
// They hold for one gas constant; those of the equations of state differ in the sixth digit.
TEST_F(Derivatives, ObeyTheIdentitiesOfHomogeneousFunctions) {
    overStates([&](const State& s) {
        const int nc = modelTags.NC;
        for (int i = 1; i <= nc; ++i) fluidConstants.REOS[i] = defaultGasConstant;
        const CompositionDerivatives c = derivativesAt(2, s.t, s.rho, s.x);
        RMIX(s.x);
        const double p = s.p(), RT = fluidConstants.R * s.t;
        double z = 0.0, volumes = 0.0;
        for (int i = 1; i <= nc; ++i) {
            z += s.x[i] * c.DADN[i];
            volumes += s.x[i] * c.DPHIDP[i];
            double duhem = 0.0, largest = 1.0;
            for (int j = 1; j <= nc; ++j) {
                largest = larger({largest, std::fabs(c.DPHIDNJ[i][j]), std::fabs(c.D2ADNN[i][j])});
                duhem += s.x[j] * c.DPHIDNJ[i][j];
                EXPECT_NEAR(c.D2ADNN[i][j], c.D2ADNN[j][i], 1e-10 * largest) << s.name;
            }
            EXPECT_NEAR(duhem, 0.0, 1e-9 * largest) << s.name;
        }
        // the sum of x n d(phi)/dn is a01, and that of the partial volumes 1/rho
        EXPECT_NEAR(z, p / (RT * s.rho) - 1.0, 1e-11 * std::max(1.0, std::fabs(z))) << s.name;
        EXPECT_NEAR(volumes * RT * s.rho, 1.0, 1e-10) << s.name;
    });
}

}  // namespace
}  // namespace frigana::test
