// Bubble and dew points and single-phase states of blends against the reference (tests/reference/README.md), all of the
// saturation by the Newton method.
//
// The ideal gas of a blend is not quite the same on both sides. Pressure, density and so the phase equilibria do not
// know of it, but cp, cv, w and the differences of h and s between two temperatures do:
//  - the reference evaluates the heat capacity of three components inside a blend at T r, with r the ratio of the
//    reducing temperature of the equation of state to a critical temperature: R134A 374.18/374.21, which lowers dh of
//    R407C by 2.5e-5; R1234ZE 382.513/382.52 and ISOBUTAN 407.81/407.817, up to 1e-5 of a blend that is rich in them;
//  - it adds the heat capacities in J/(mol K), where the mixture model adds reduced ones and multiplies the sum by the
//    gas constant of the blend. As the gas constants of the components differ by up to 6e-6, so do the sums.
// Both effects are worked out here from the coefficients in the fluid files and added to what the engine gives. So one
// bound holds for all blends, far below these effects.
#include <cstdio>
#include <fstream>
#include <functional>
#include <map>
#include <sstream>

#include "Equilibrium.h"
#include "TreeFolders.h"

namespace frigana::equilibria {
namespace {

// One tolerance per quantity, all relative. The searches behind both sides end at 1e-10 of T, p and density or below;
// a difference of h or s loses two digits more.
constexpr double pressureBound = 1e-9, temperatureBound = 1e-9, densityBound = 1e-9;
constexpr double differenceBound = 1e-9;  // h, s
constexpr double caloricBound = 1e-9;     // cv, cp, w

std::vector<std::vector<std::string>> rowsOf(const char* name) {
    std::ifstream file(std::string(test::testsFolder) + "/reference/" + name);
    std::vector<std::vector<std::string>> rows;
    std::string line;
    std::getline(file, line);
    while (std::getline(file, line)) {
        std::istringstream fields(line);
        rows.emplace_back();
        for (std::string entry; std::getline(fields, entry, ',');) rows.back().push_back(entry);
    }
    return rows;
}

// Heat capacity of the ideal gas of a fluid by its block CPP, read here from the fluid file.
struct IdealGas {
    double reducing = 0.0, unit = 0.0;  // [K], [J/(mol K)]
    std::vector<std::pair<double, double>> powers, oscillators;

    // terms of other kinds do not occur in the components of the blends
    bool read(const std::string& fileName) {
        *this = {};
        std::ifstream file(std::string(test::dataFolder) + "/fluids/" + fileName);
        std::string line;
        while (std::getline(file, line) && !line.starts_with("CPP  ideal")) {
        }
        while (std::getline(file, line) && line.starts_with("?")) {
        }
        for (int limit = 1; limit <= 4; ++limit) std::getline(file, line);
        std::getline(file, line);
        std::istringstream(line) >> reducing >> unit;
        std::getline(file, line);
        int count = 0, oscillatorCount = 0, cosh = -1, sinh = -1;
        std::istringstream(line) >> count >> oscillatorCount >> cosh >> sinh;
        for (int k = 0; k < count + oscillatorCount && std::getline(file, line); ++k) {
            double factor = 0.0, constant = 0.0;
            std::istringstream(line) >> factor >> constant;
            (k < count ? powers : oscillators).emplace_back(factor, constant);
        }
        return file.good() && unit > 8.0 && cosh == 0 && sinh == 0;
    }
    double cp(double T) const {
        double sum = 0.0;
        for (const auto& [factor, power] : powers) sum += factor * std::pow(T / reducing, power);
        for (const auto& [factor, constant] : oscillators) {
            const double u = constant / T, e = std::exp(-u);
            sum += factor * u * u * e / ((1.0 - e) * (1.0 - e));
        }
        return unit * sum;
    }
};

// What the ideal gas of the reference has more than that of the mixture model, of one blend.
class IdealGasExcess {
  public:
    bool use(const Composition& x) {
        x_ = x;
        R_ = 0.0;
        for (int i = 1; i <= modelTags.NC; ++i) R_ += x[i] * fluidConstants.REOS[i];
        for (int i = 1; i <= modelTags.NC; ++i)
            if (!gas_[i].read(std::string(trimRight(fluidFiles.HFILE[i].view())))) return false;
        return true;
    }
    // [J/(mol K)]
    double heatCapacity(double T) const {
        double sum = 0.0;
        for (int i = 1; i <= modelTags.NC; ++i)
            sum += x_[i] * (gas_[i].cp(T * scale(i)) - gas_[i].cp(T) * R_ / fluidConstants.REOS[i]);
        return sum;
    }
    // From T1 to T2 [J/mol] and [J/(mol K)].
    double enthalpy(double T1, double T2) const {
        return integral(T1, T2, [this](double T) { return heatCapacity(T); });
    }
    double entropy(double T1, double T2) const {
        return integral(T1, T2, [this](double T) { return heatCapacity(T) / T; });
    }

  private:
    static double scale(int i) {
        const std::string_view cas = fluidFiles.HCAS[i].trimmed();
        if (cas == "811-97-2") return 374.18 / 374.21;     // R134A
        if (cas == "29118-24-9") return 382.513 / 382.52;  // R1234ZE
        if (cas == "75-28-5") return 407.81 / 407.817;     // ISOBUTAN
        return 1.0;
    }
    // Simpson's rule; the integrand is smooth, and of 1e-5 of what it adds to
    template <class Integrand>
    static double integral(double T1, double T2, const Integrand& f) {
        constexpr int panels = 20;
        const double h = (T2 - T1) / (2 * panels);
        double sum = f(T1) + f(T2);
        for (int k = 1; k < 2 * panels; ++k) sum += (k % 2 == 1 ? 4.0 : 2.0) * f(T1 + k * h);
        return sum * h / 3.0;
    }

    Composition x_{};
    double R_ = 0.0;
    ComponentArray<IdealGas> gas_{};
};

// A blend of the reference, with the unit of its rows.
struct Reference {
    std::string name;
    Composition x{};
    double M = 0.0;  // [g/mol]
    IdealGasExcess excess;

    testing::AssertionResult use(const std::string& blend) {
        if (blend == name) return testing::AssertionSuccess();
        name = blend;
        const auto result = setUpBlend(blend, x);
        if (!result) return result;
        M = WMOL(x);
        if (!excess.use(x)) return testing::AssertionFailure() << "heat capacity of a component of " << blend;
        return testing::AssertionSuccess();
    }
};

// Largest deviations per blend, printed one line a blend.
class Table {
  public:
    explicit Table(std::vector<std::string> quantities) : quantities_(std::move(quantities)) {}
    void take(const std::string& blend, std::size_t quantity, double deviation) {
        auto& line = lines_[blend];
        line.resize(quantities_.size(), 0.0);
        if (!(deviation <= line[quantity])) line[quantity] = deviation;
    }
    void print(const char* title) const {
        std::printf("%s, largest relative deviations:\n%-7s", title, "");
        for (const auto& quantity : quantities_) std::printf(" %8s", quantity.c_str());
        std::printf("\n");
        for (const auto& [blend, line] : lines_) {
            std::printf("%-7s", blend.c_str());
            for (const double value : line) std::printf(" %8.1e", value);
            std::printf("\n");
        }
    }
    std::size_t blends() const { return lines_.size(); }

  private:
    std::vector<std::string> quantities_;
    std::map<std::string, std::vector<double>> lines_;
};

TEST(ReferenceBlend, SaturationByTheNewtonMethod) {
    enum { P, T, RhoBubble, RhoDew, H, S };
    Table table({"p", "T", "rho bub", "rho dew", "dh", "ds"});
    Reference blend;
    saturationCounts.substitutions = saturationCounts.calls = 0;
    int rows = 0;
    for (const auto& row : rowsOf("blend_saturation.csv")) {
        ASSERT_TRUE(blend.use(row[0]));
        const Composition& x = blend.x;
        const bool givenT = row[2] == "T";
        const double bubbleT = std::stod(row[3]), bubbleP = std::stod(row[4]), bubbleRho = std::stod(row[5]);
        const double dewT = std::stod(row[6]), dewP = std::stod(row[7]), dewRho = std::stod(row[8]);
        const double dh = std::stod(row[9]), ds = std::stod(row[10]);
        SCOPED_TRACE(row[0] + " given " + row[2] + ' ' + (givenT ? row[3] : row[4]));
        EXPECT_LT(relative(blend.M, std::stod(row[1])), 1e-12);
        const TwoPhases b = givenT ? atTemperature(bubbleT, bubble, x) : atPressure(bubbleP, bubble, x);
        const TwoPhases d = givenT ? atTemperature(dewT, dew, x) : atPressure(dewP, dew, x);
        ASSERT_EQ(b.ierr, 0) << words(b.herr);
        ASSERT_EQ(d.ierr, 0) << words(d.herr);
        const auto hold = [&](std::size_t quantity, const char* label, double value, double expected, double bound) {
            const double off = relative(value, expected);
            EXPECT_LE(off, bound) << label << ' ' << value << " for " << expected;
            table.take(row[0], quantity, off);
        };
        if (givenT) {
            hold(P, "bubble p", b.p, bubbleP, pressureBound);
            hold(P, "dew p", d.p, dewP, pressureBound);
        } else {
            hold(T, "bubble T", b.T, bubbleT, temperatureBound);
            hold(T, "dew T", d.T, dewT, temperatureBound);
        }
        hold(RhoBubble, "bubble rho", b.rhol * blend.M, bubbleRho, densityBound);
        hold(RhoDew, "dew rho", d.rhov * blend.M, dewRho, densityBound);
        // both phases have the composition of the blend
        double p, e, h1, h2, s1, s2, cv, cp, w, jt;
        THERM(b.T, b.rhol, x, p, e, h1, s1, cv, cp, w, jt);
        EXPECT_LT(relative(p, b.p), 1e-6);
        THERM(d.T, d.rhov, x, p, e, h2, s2, cv, cp, w, jt);
        EXPECT_LT(relative(p, d.p), 1e-8);
        hold(H, "dh", (h2 - h1 + blend.excess.enthalpy(b.T, d.T)) / blend.M, dh, differenceBound);
        hold(S, "ds", (s2 - s1 + blend.excess.entropy(b.T, d.T)) / blend.M, ds, differenceBound);
        ++rows;
    }
    EXPECT_EQ(rows, 210);
    EXPECT_EQ(table.blends(), 35u);
    EXPECT_EQ(saturationCounts.calls, 2 * rows);
    EXPECT_EQ(saturationCounts.substitutions, 0);
    table.print("saturation of blends");
}

TEST(ReferenceBlend, SinglePhaseStates) {
    enum { Rho, Cv, Cp, W, H, S };
    Table table({"rho", "cv", "cp", "w", "dh", "ds"});
    Reference blend;
    int rows = 0, swings = 0;
    for (const auto& row : rowsOf("blend_points.csv")) {
        ASSERT_TRUE(blend.use(row[0]));
        const Composition& x = blend.x;
        SCOPED_TRACE(row[0] + ' ' + row[1] + ' ' + row[2] + " K " + row[3] + " kPa");
        const auto hold = [&](std::size_t quantity, const char* label, double value, double expected, double bound) {
            const double off = relative(value, expected);
            EXPECT_LE(off, bound) << label << ' ' << value << " for " << expected;
            table.take(row[0], quantity, off);
        };
        // The density at T and p. Between the saturated densities of a temperature the isotherm of a mixture swings up
        // and down as those of its components' equations do, and the reference took a root of these swings in a few
        // rows, where the state is a liquid: there the isotherm must run through the stated point, with the properties
        // stated, and TPRHO must have found the liquid.
        double Tc, pc, Dc;
        int ierr = 0;
        Text255 herr;
        CRITP(x, Tc, pc, Dc, ierr, herr);
        const auto density = [&](double T, double p, double stated) {
            const TwoPhases line = T < Tc ? atTemperature(T, bubble, x) : TwoPhases{};
            const bool liquid = T < Tc ? p > line.p : stated > Dc;
            double rho = 0.0, slope = 0.0;
            TPRHO(T, p, x, liquid ? 1 : 2, 0, rho, ierr, herr);
            EXPECT_LE(ierr, 0) << words(herr);
            if (relative(rho, stated) < 0.01) {
                hold(Rho, "rho", rho, stated, densityBound);
                return rho;
            }
            if (row[1] == "density") ++swings;
            DPDD(T, stated, x, slope);
            EXPECT_LE(std::fabs((pressure(T, stated, x) - p) / slope / stated), densityBound);
            EXPECT_TRUE(liquid);
            EXPECT_GT(rho, line.rhol);
            EXPECT_LT(stated, line.rhol);
            EXPECT_GT(stated, atTemperature(T, dew, x).rhov);
            return stated;
        };
        const double T1 = std::stod(row[2]), p1 = std::stod(row[3]);
        const double rho1 = density(T1, p1, std::stod(row[4]) / blend.M);
        double p, e, h1, s1, cv, cp, w, jt;
        THERM(T1, rho1, x, p, e, h1, s1, cv, cp, w, jt);
        if (row[1] == "density") {
            const double more = blend.excess.heatCapacity(T1);
            // w^2 is proportional to cp/cv, whose other parts do not know of the ideal gas
            const double sound = w * std::sqrt((cp + more) / cp / ((cv + more) / cv));
            hold(Cv, "cv", (cv + more) / blend.M, std::stod(row[5]), caloricBound);
            hold(Cp, "cp", (cp + more) / blend.M, std::stod(row[6]), caloricBound);
            hold(W, "w", sound, std::stod(row[7]), caloricBound);
        } else {
            const double T2 = std::stod(row[8]), p2 = std::stod(row[9]);
            const double rho2 = density(T2, p2, std::stod(row[10]) / blend.M);
            double h2, s2;
            THERM(T2, rho2, x, p, e, h2, s2, cv, cp, w, jt);
            hold(H, "dh", (h2 - h1 + blend.excess.enthalpy(T1, T2)) / blend.M, std::stod(row[11]), differenceBound);
            hold(S, "ds", (s2 - s1 + blend.excess.entropy(T1, T2)) / blend.M, std::stod(row[12]), differenceBound);
        }
        ++rows;
    }
    EXPECT_EQ(rows, 228);
    EXPECT_EQ(swings, 4);  // R404A, R407B, R466A, R515B
    EXPECT_EQ(table.blends(), 35u);
    table.print("single-phase states of blends");
}

}  // namespace
}  // namespace frigana::equilibria
