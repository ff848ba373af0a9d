// The order of two components, in a file of parameters or in a set-up, does not matter.
#include <array>
#include <cstdio>
#include <sstream>

#include "CORE_PR.h"
#include "DISPATCH.h"
#include "MixtureSetUp.h"
#include "PHIDERV.h"
#include "PROP_SUB_FUGACITY.h"
#include "TPRHO.h"

namespace frigana::test {
namespace {

std::string number(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "  %.17g", value);
    return text;
}

// A critical line tells its polynomial in the distance u from one component. From the other component the same line has
// the coefficients of the powers of w = 1 - u.
std::array<double, 6> fromTheOtherEnd(const std::array<double, 6>& c) {
    std::array<double, 6> turned{};
    for (int n = 0; n < 6; ++n) {
        double binomial = 1.0;
        for (int k = 0; k <= n; ++k) {  // c u^n = c sum (n over k) (-w)^k
            turned[static_cast<std::size_t>(k)] +=
                c[static_cast<std::size_t>(n)] * binomial * (k % 2 == 0 ? 1.0 : -1.0);
            binomial *= static_cast<double>(n - k) / (k + 1);
        }
    }
    return turned;
}

// The file of parameters with every pair told from its other component.
std::string reversedFile() {
    std::istringstream lines(readFile(dataFile("HMX.BNC")));
    std::string text, line;
    bool pairs = false;
    while (std::getline(lines, line)) {
        if (line.rfind("#BNC", 0) == 0) pairs = true;
        if (!pairs || line.size() < 30 || line[0] == '?' || line[0] == '!' || line[0] == '#') {
            text += line + "\n";
            continue;
        }
        std::string names = line.substr(0, 26);
        const std::string tag = line.substr(26, 3);
        if (const auto slash = names.find('/'); slash != std::string::npos) {
            names.erase(names.find_last_not_of(' ') + 1);
            names = names.substr(slash + 1) + "/" + names.substr(0, slash);
            names.resize(26, ' ');
        }
        std::istringstream values(line.substr(29));
        std::array<double, 6> v{};
        for (double& value : v) values >> value;
        if (tag.rfind("KW", 0) == 0) {
            v[0] = 1.0 / v[0];
            v[2] = 1.0 / v[2];
        } else if (tag[0] == 'L') {
            std::swap(v[3], v[4]);
        } else {
            v = fromTheOtherEnd(v);
        }
        text += names + tag;
        for (const double value : v) text += number(value);
        text += "\n";
    }
    return text;
}

// What a blend has at a state, component by component in the order of a list of names.
struct Answer {
    double Tr, Dr, p, h, s, cv, cp, w, Tc, Pc, Dc;
    Composition lnf, lnphi;
    CompositionDerivatives c;
};
Answer ask(double t, double rho, const Composition& x) {
    Answer a;
    int ierr = 0;
    Text255 herr;
    double e, jt;
    REDX(x, a.Tr, a.Dr);
    THERM(t, rho, x, a.p, e, a.h, a.s, a.cv, a.cp, a.w, jt);
    Composition f, phi, dalpha, dnalpha;
    FGCTY2(t, rho, x, f, ierr, herr);
    EXPECT_EQ(ierr, 0);
    FUGCOF(t, rho, x, phi, ierr, herr);
    EXPECT_EQ(ierr, 0);
    for (int i = 1; i <= modelTags.NC; ++i) {
        a.lnf[i] = std::log(f[i]);
        a.lnphi[i] = std::log(phi[i]);
    }
    PHIDERV(2, t, rho, x, dalpha, dnalpha, ierr, herr);
    EXPECT_EQ(ierr, 0);
    a.c = compositionDerivatives;
    CRTHMX(x, a.Tc, a.Pc, a.Dc, ierr, herr);
    EXPECT_LE(ierr, 0);
    return a;
}

// Largest deviation between two sets of answers; place tells where component i of the first stands in the second.
struct Deviation {
    double properties = 0.0, derivatives = 0.0, critical = 0.0;
    static void raise(double& worst, double a, double b, double scale) {
        const double deviation = std::fabs(a - b) / std::max(scale, std::fabs(b));
        if (!(deviation <= worst)) worst = deviation;
    }
    void take(const Answer& a, const Answer& b, double t, double rho, const Array1<int, ncmax>& place) {
        const double R = defaultGasConstant, RT = R * t;
        raise(properties, a.Tr, b.Tr, 0.0);
        raise(properties, a.Dr, b.Dr, 0.0);
        // rounding of the reducing density alone moves the pressure by its share of rho dp/drho
        raise(properties, a.p, b.p, rho * std::max(RT, a.c.dPdD));
        raise(properties, a.h, b.h, 10.0 * RT);
        raise(properties, a.s, b.s, 10.0 * R);
        raise(properties, a.cv, b.cv, 0.0);
        raise(properties, a.cp, b.cp, 0.0);
        raise(properties, a.w, b.w, 0.0);
        raise(critical, a.Tc, b.Tc, 0.0);
        raise(critical, a.Dc, b.Dc, 0.0);
        raise(critical, a.Pc, b.Pc, R * a.Tc * a.Dc);
        for (int i = 1; i <= modelTags.NC; ++i) {
            raise(properties, a.lnf[i], b.lnf[place[i]], 10.0);
            raise(properties, a.lnphi[i], b.lnphi[place[i]], 10.0);
            raise(derivatives, a.c.DPHIDT[i], b.c.DPHIDT[place[i]], 10.0 / t);
            raise(derivatives, a.c.DLNFINIDV[i], b.c.DLNFINIDV[place[i]], rho);
            for (int j = 1; j <= modelTags.NC; ++j) {
                raise(derivatives, a.c.DPHIDNJ[j][i], b.c.DPHIDNJ[place[j]][place[i]], 10.0);
                raise(derivatives, a.c.D2ADNN[j][i], b.c.D2ADNN[place[j]][place[i]], 10.0);
            }
        }
    }
};

const std::vector<Names> blends = {
    {"R32", "R125"},
    {"AMMONIA", "PROPANE"},
    {"R134A", "R1234YF"},
    {"NITROGEN", "CO2"},
    {"R134A", "R245FA", "R1234ZE"},
    {"R143A", "R125", "R134A", "R152A"},
    {"R1234ZE", "R1234YF", "R134A", "R125", "R32"},
    {"ISOBUTAN", "R32", "CO2", "R125", "PROPANE"},
};

struct Point {
    double t, rho;  // in units of the reducing values
};
constexpr Point points[] = {{0.8, 0.01}, {1.2, 0.8}, {0.75, 2.65}};

class PairOrder : public MixtureSetUp {
  protected:
    // Unequal fractions in the order of the names.
    static Composition spread(std::size_t nc) {
        Composition x{};
        double sum = 0.0;
        for (std::size_t i = 1; i <= nc; ++i) sum += static_cast<double>(i * i);
        for (std::size_t i = 1; i <= nc; ++i) x[static_cast<int>(i)] = static_cast<double>(i * i) / sum;
        return x;
    }
    std::vector<Answer> answers(const Composition& x, double Tr, double Dr) const {
        std::vector<Answer> all;
        for (const Point& point : points) all.push_back(ask(point.t * Tr, point.rho * Dr, x));
        return all;
    }
    // Deviations between the blend in its order with the file of the data, and the other order or the other file.
    Deviation compare(const Names& names, bool otherOrder, const std::string& otherFile) {
        Deviation deviation;
        const int nc = static_cast<int>(names.size());
        EXPECT_LE(setUp(names), 0) << message();
        const Composition x = spread(names.size());
        double Tr = 0.0, Dr = 0.0;
        REDX(x, Tr, Dr);
        const std::vector<Answer> first = answers(x, Tr, Dr);

        const Names turned(names.rbegin(), names.rend());
        EXPECT_LE(setUp(otherOrder ? turned : names, otherFile), 0) << message();
        Composition y = x;
        Array1<int, ncmax> place{};
        for (int i = 1; i <= nc; ++i) {
            place[i] = otherOrder ? nc + 1 - i : i;
            y[place[i]] = x[i];
        }
        const std::vector<Answer> second = answers(y, Tr, Dr);
        for (std::size_t n = 0; n < first.size(); ++n)
            deviation.take(first[n], second[n], points[n].t * Tr, points[n].rho * Dr, place);
        worst_.raise(worst_.properties, deviation.properties, 0.0, 1.0);
        worst_.raise(worst_.derivatives, deviation.derivatives, 0.0, 1.0);
        worst_.raise(worst_.critical, deviation.critical, 0.0, 1.0);
        return deviation;
    }
    void TearDown() override {
        RecordProperty("properties", number(worst_.properties));
        RecordProperty("derivatives", number(worst_.derivatives));
        RecordProperty("critical", number(worst_.critical));
        MixtureSetUp::TearDown();
    }

  private:
    Deviation worst_;
};

// Rounding of the state alone, where the equations of the components do not cancel large terms: that of R22 turns the
// last digit of tau into 3e-13 of its second derivative.
constexpr double rounding = 1e-14;
// Second derivatives hold differences of terms some hundred times as large.
constexpr double roundingOfDerivatives = 1e-13;
// Re-expanding a critical line of coefficients up to 6000 costs as many digits.
constexpr double roundingOfTurnedLines = 1e-12;

TEST_F(PairOrder, APairHeldInTheReverseOrderYieldsTheSameMixture) {
    for (const Names& names : blends) {
        SCOPED_TRACE(names.front());
        const Deviation d = compare(names, true, dataFile("HMX.BNC"));
        EXPECT_LE(d.properties, rounding);
        EXPECT_LE(d.critical, rounding);
        EXPECT_LE(d.derivatives, roundingOfDerivatives);
    }
}

TEST_F(PairOrder, AFileOfReversedPairsYieldsTheSameMixture) {
    const std::string reversed = write("REVERSED.BNC", reversedFile());
    for (const Names& names : blends)
        for (const bool otherOrder : {false, true}) {
            SCOPED_TRACE(names.front() + (otherOrder ? " turned" : ""));
            const Deviation d = compare(names, otherOrder, reversed);
            EXPECT_LE(d.properties, rounding);
            EXPECT_LE(d.critical, roundingOfTurnedLines);
            EXPECT_LE(d.derivatives, roundingOfDerivatives);
        }
}

// Rules whose powers tell the two components apart, and parameters that do not.
TEST_F(PairOrder, UnequalPowersBelongToTheirComponents) {
    for (const std::string tag : {"LJ6", "LM6"}) {
        SCOPED_TRACE(tag);
        const std::string rule = plainKW0 + ruleText(tag, "  1  3  1  0  0", " -0.01  7.4  1.0  1.0\n");
        const std::string rest = dataLine("", "PR1", "0.013 0.02 0 0 0 0") +
                                 dataLine("", "TRN", "0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9") + endOfRecord;
        const std::string forward =
            write("FORWARD.BNC",
                  mixtureFileText(dataLine("75-10-5/354-33-6", tag, "1.2 1.002 0.5 1.25 2.0 0.0") + rest, rule));
        const std::string backward =
            write("BACKWARD.BNC",
                  mixtureFileText(dataLine("354-33-6/75-10-5", tag, "1.2 1.002 0.5 2.0 1.25 0.0") + rest, rule));
        // R32 has the power 1.25
        const double x32 = 0.3, x125 = 0.7, weight = std::pow(x32, 1.25) * std::pow(x125, 2.0);
        for (const std::string& file : {forward, backward})
            for (const bool turned : {false, true}) {
                SCOPED_TRACE(file + (turned ? " turned" : ""));
                ASSERT_EQ(setUp(turned ? Names{"R125", "R32"} : Names{"R32", "R125"}, file), 0) << message();
                const Composition x = turned ? fractions({x125, x32}) : fractions({x32, x125});
                const double T32 = 351.255, T125 = 339.173, r32 = 8.1500846, r125 = fluidConstants.RHOZ[turned ? 1 : 2];
                ASSERT_EQ(fluidConstants.TZ[turned ? 2 : 1], T32);
                ASSERT_EQ(fluidConstants.TZ[turned ? 1 : 2], T125);
                double Tr = 0.0, Dr = 0.0;
                REDHMX(x, Tr, Dr);
                const bool lj = tag[1] == 'J';
                const double pairT = weight * (lj ? 1.2 : 0.2 * (T32 + T125));
                const double pairV = x32 * x125 * (lj ? 1.002 : 0.002 * (1.0 / r32 + 1.0 / r125));
                EXPECT_NEAR(Tr, x32 * T32 + x125 * T125 + pairT, 1e-12);
                EXPECT_NEAR(1.0 / Dr, x32 / r32 + x125 / r125 + pairV, 1e-15);
                const double tau = 1.3, del = 0.7;
                EXPECT_NEAR(PHIMIX(1, 2, 0, 0, tau, del, x),
                            x32 * x125 * 0.5 * -0.01 * std::pow(tau, 7.4) * del * std::exp(-del), 1e-17);
                for (const MixingPair* pair : {&mixingParameters.pair[1][2], &mixingParameters.pair[2][1]}) {
                    EXPECT_EQ(pair->XLJS, 0.1);
                    EXPECT_EQ(pair->XLJE, 0.2);
                    EXPECT_EQ(pair->XKIJ, 0.3);
                    EXPECT_EQ(pair->XLIJ, 0.4);
                    EXPECT_EQ(pair->XAJI, 0.5);
                    EXPECT_EQ(pair->XKIJK, 0.6);
                    EXPECT_EQ(pair->XLIJK, 0.7);
                    EXPECT_EQ(pair->XDIJ, 0.8);
                    EXPECT_EQ(pair->XDIJ2, 0.9);
                    EXPECT_EQ(pair->HPRKIJ, "PR1");
                }
                EXPECT_EQ(FPRKIJ[1][2][1], 0.013);
                EXPECT_EQ(FPRKIJ[2][1][2], 0.02);
            }
    }
}

}  // namespace
}  // namespace frigana::test
