// Critical points of the pairs and of the predefined blends: those of CRITP against the point at which the mixture
// itself becomes critical, found by CRTPNT and proved here for the blends.
#include <cstdio>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "Equilibrium.h"
#include "PHIDERV.h"

namespace frigana::equilibria {
namespace {

// Bounds of CRITP: what the critical lines keep where their six powers can, and beyond which a blend takes the point of
// CRTPNT.
constexpr double temperatureBound = 0.3;  // [K]
constexpr double pressureBound = 0.01;    // relative

using Square = std::vector<std::vector<double>>;

// Smallest eigenvalue of a symmetric matrix with its eigenvector, by inverse iteration with a shift below the spectrum.
double smallestEigenvalue(const Square& A, std::vector<double>& e) {
    const std::size_t n = A.size();
    const auto product = [&](const std::vector<double>& v, std::size_t i) {
        double sum = 0.0;
        for (std::size_t j = 0; j < n; ++j) sum += A[i][j] * v[j];
        return sum;
    };
    double shift = 1e300;
    for (std::size_t i = 0; i < n; ++i) {  // Gershgorin's bound
        double radius = 0.0;
        for (std::size_t j = 0; j < n; ++j)
            if (j != i) radius += std::fabs(A[i][j]);
        shift = std::min(shift, A[i][i] - radius - 1.0);
    }
    e.assign(n, 1.0);
    for (std::size_t i = 0; i < n; ++i) e[i] += 0.1 * static_cast<double>(i);  // no symmetry to an eigenvector
    double lambda = 0.0;
    for (int pass = 1; pass <= 400; ++pass) {
        // (A - shift) v = e by elimination; the matrix is positive definite
        Square B = A;
        std::vector<double> v = e;
        for (std::size_t i = 0; i < n; ++i) B[i][i] -= shift;
        for (std::size_t i = 0; i < n; ++i)
            for (std::size_t k = i + 1; k < n; ++k) {
                const double factor = B[k][i] / B[i][i];
                for (std::size_t j = i; j < n; ++j) B[k][j] -= factor * B[i][j];
                v[k] -= factor * v[i];
            }
        for (std::size_t i = n; i-- > 0;) {
            for (std::size_t j = i + 1; j < n; ++j) v[i] -= B[i][j] * v[j];
            v[i] /= B[i][i];
        }
        double length = 0.0;
        for (const double c : v) length += c * c;
        length = std::sqrt(length);
        for (double& c : v) c /= length;
        double quotient = 0.0;
        for (std::size_t i = 0; i < n; ++i) quotient += v[i] * product(v, i);
        e = v;
        if (pass > 3 && std::fabs(quotient - lambda) < 1e-15) break;
        lambda = quotient;
    }
    return lambda;
}

// Stability at constant temperature and volume of amounts that need not add up to 1, scaled by the fractions of the
// blend: root(z_i z_j) d ln f(i) / dn(j). The blend is critical where the smallest eigenvalue is 0 and does not change,
// to first order, along its eigenvector.
//   Source  R. A. Heidemann, A. M. Khalil, AIChE J. 26 (1980) 769
double stability(const Composition& z, const Composition& amounts, double T, double rho, std::vector<double>& e) {
    double total = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) total += amounts[i];
    Composition x{}, dalpha{}, dnalpha{};
    for (int i = 1; i <= modelTags.NC; ++i) x[i] = amounts[i] / total;
    int ierr = 0;
    Text255 herr;
    PHIDERV(2, T, rho * total, x, dalpha, dnalpha, ierr, herr);
    EXPECT_LE(ierr, 0) << words(herr);
    const auto n = static_cast<std::size_t>(modelTags.NC);
    Square B(n, std::vector<double>(n));
    const auto entry = [&](int i, int j) {
        return std::sqrt(z[i] * z[j]) * (i == j ? 1.0 / amounts[i] : 0.0) +
               std::sqrt(z[i] * z[j]) * compositionDerivatives.D2ADNN[j][i] / total;
    };
    for (int i = 1; i <= modelTags.NC; ++i)
        for (int j = 1; j <= modelTags.NC; ++j)
            B[static_cast<std::size_t>(i - 1)][static_cast<std::size_t>(j - 1)] = 0.5 * (entry(i, j) + entry(j, i));
    return smallestEigenvalue(B, e);
}

struct Criticality {
    double lambda, slope;  // smallest eigenvalue, and how it changes along its eigenvector
};
Criticality criticality(const Composition& z, double T, double rho) {
    constexpr double step = 1e-4;
    std::vector<double> e, none;
    const double lambda = stability(z, z, T, rho, e);
    double along[2];
    for (int side = 0; side < 2; ++side) {
        Composition moved = z;
        for (int i = 1; i <= modelTags.NC; ++i)
            moved[i] += (side == 0 ? step : -step) * std::sqrt(z[i]) * e[static_cast<std::size_t>(i - 1)];
        along[side] = stability(z, moved, T, rho, none);
    }
    return {lambda, (along[0] - along[1]) / (2.0 * step)};
}

TEST(CriticalLine, IsThatOfEveryBlend) {
    const std::vector<std::string> blends = allBlends();
    ASSERT_EQ(blends.size(), 123u);
    struct Line {
        std::string blend;
        double estimatedT, T, estimatedP, p;
        double offT() const { return std::fabs(estimatedT - T); }
    };
    std::vector<Line> lines;
    Worst T, p, lambda, cubic;
    int adopted = 0;
    for (const std::string& blend : blends) {
        SCOPED_TRACE(blend);
        Composition z{};
        ASSERT_TRUE(setUpBlend(blend, z));
        double Tc, pc, Dc;
        int ierr = 0;
        Text255 herr;
        CRTHMX(z, Tc, pc, Dc, ierr, herr);
        EXPECT_EQ(ierr, 0) << words(herr);
        double tc = Tc, p0 = pc, rhoc = Dc;
        CRTPNT(z, tc, p0, rhoc, ierr, herr);
        ASSERT_EQ(ierr, 0) << words(herr);
        EXPECT_LT(relative(pressure(tc, rhoc, z), p0), 1e-6);

        // The point is critical, which one a little denser or hotter is not, and lies on top of the unstable states.
        const Criticality here = criticality(z, tc, rhoc);
        EXPECT_LT(std::fabs(here.lambda), 1e-6);
        EXPECT_LT(std::fabs(here.slope), 1e-3);
        lambda.take(std::fabs(here.lambda), blend);
        cubic.take(std::fabs(here.slope), blend);
        EXPECT_GT(std::fabs(criticality(z, tc, 1.01 * rhoc).slope), 1e-3);
        EXPECT_GT(criticality(z, 1.001 * tc, rhoc).lambda, 1e-6);
        std::vector<double> none;
        for (const double denser : {0.8, 0.9, 1.0, 1.1, 1.2})
            EXPECT_GT(stability(z, z, 1.005 * tc, denser * rhoc, none), 0.0) << denser;

        adopted += adoptedCriticalPoint.known;
        EXPECT_LE(std::fabs(Tc - tc), temperatureBound) << Tc << " K for " << tc;
        EXPECT_LE(relative(pc, p0), pressureBound) << pc << " kPa for " << p0;
        T.take(std::fabs(Tc - tc), blend);
        p.take(relative(pc, p0), blend);
        // alone, the lines of two components are as good; those of more leave out what three do together
        double lineT, lineP, lineD;
        adoptedCriticalPoint.known = false;
        CRTHMX(z, lineT, lineP, lineD, ierr, herr);
        if (modelTags.NC == 2) {
            EXPECT_LE(std::fabs(lineT - tc), temperatureBound);
            EXPECT_LE(relative(lineP, p0), pressureBound);
        }
        Tc = lineT;
        pc = lineP;
        lines.push_back({blend, Tc, tc, pc, p0});
    }
    std::sort(lines.begin(), lines.end(), [](const Line& a, const Line& b) { return a.offT() > b.offT(); });
    std::printf(
        "critical points of %zu blends, %d not by lines; largest distance %.3f K (%s), %.2f %% of pc (%s); lines "
        "alone:\n",
        lines.size(), adopted, T.value, T.where.c_str(), 100.0 * p.value, p.where.c_str());
    std::printf("criticality: smallest eigenvalue %.1e (%s), its slope %.1e (%s)\n", lambda.value, lambda.where.c_str(),
                cubic.value, cubic.where.c_str());
    for (std::size_t k = 0; k < 5 && k < lines.size(); ++k)
        std::printf("  %-6s Tc %8.3f for %8.3f K, pc %7.1f for %7.1f kPa\n", lines[k].blend.c_str(),
                    lines[k].estimatedT, lines[k].T, lines[k].estimatedP, lines[k].p);
}

// ---- pairs --------------------------------------------------------------------------------------------------------

struct Misses {
    double T, p;  // [K], relative
};
using Names = std::set<std::string>;

// The pairs of the file of mixing parameters, and what it says of the lines that miss their points by more.
struct MixingFile {
    std::vector<std::pair<std::string, std::string>> pairs;  // by the names of the fluid files
    std::map<Names, Misses> beyond;
};

std::map<std::string, std::string> fluidsByCas() {
    std::map<std::string, std::string> fluids;
    for (const auto& entry : std::filesystem::directory_iterator(std::string(test::dataFolder) + "/fluids")) {
        if (entry.path().extension() != ".FLD") continue;
        std::ifstream file(entry.path());
        std::string line, cas;
        std::getline(file, line);
        std::getline(file, line);
        std::istringstream(line) >> cas;
        fluids[cas] = entry.path().stem().string();
    }
    return fluids;
}

// "A + B 1.2 K 3 %, C + D ...", whose figures are rounded to the last digit.
void readBeyond(std::string text, MixingFile& file) {
    for (char& character : text)
        if (character == ',' || character == '.') {
            const std::size_t at = static_cast<std::size_t>(&character - text.data());
            const bool decimal = character == '.' && at + 1 < text.size() && text[at + 1] >= '0' && text[at + 1] <= '9';
            if (!decimal) character = ' ';
        }
    std::istringstream words(text);
    std::string first, plus, second, kelvin, percent;
    double T = 0.0, p = 0.0;
    while (words >> first >> plus >> second >> T >> kelvin >> p >> percent) {
        EXPECT_TRUE(plus == "+" && kelvin == "K" && percent == "%") << first << ' ' << plus << ' ' << second;
        file.beyond[{first, second}] = {T + 0.05, std::max(pressureBound, 0.01 * (p + 0.5))};
    }
}

MixingFile readMixingFile() {
    MixingFile result;
    const std::map<std::string, std::string> fluids = fluidsByCas();
    std::ifstream file(std::string(test::dataFolder) + "/fluids/HMX.BNC");
    const std::string begins = "but for ";
    std::string line, beyond;
    bool inStatement = false;
    while (std::getline(file, line)) {
        if (line.starts_with("?TC1, VC1: fitted")) inStatement = true;
        if (inStatement && line.starts_with('?')) beyond += line.substr(1) + ' ';
        if (line.starts_with('!')) inStatement = false;
        const std::size_t slash = line.find('/');
        if (slash == std::string::npos || line.starts_with('?') || line.find(' ') < slash) continue;
        const auto first = fluids.find(line.substr(0, slash));
        const auto second = fluids.find(line.substr(slash + 1, line.find(' ') - slash - 1));
        if (first == fluids.end() || second == fluids.end()) continue;
        result.pairs.emplace_back(first->second, second->second);
    }
    readBeyond(beyond.substr(std::min(beyond.size(), beyond.find(begins) + begins.size())), result);
    return result;
}

// The hottest of the critical points about an estimate.
void takeHotterPoint(const Composition& z, double Tc, double pc, double& trueT, double& trueP) {
    for (const double warmer : {1.002, 0.998, 1.006}) {
        double T = warmer * Tc, p = pc, D = 0.0;
        int ierr = 0;
        Text255 herr;
        CRTPNT(z, T, p, D, ierr, herr);
        if (ierr != 0 || T < trueT || T > 1.02 * Tc) continue;
        trueT = T;
        trueP = p;
    }
}

TEST(CriticalLine, IsThatOfEveryPairWithALine) {
#if defined(__SANITIZE_ADDRESS__)
    constexpr int everyPair = 12;
#else
    constexpr int everyPair = 1;
#endif
    constexpr double medianBound = 0.1;  // [K]
    constexpr double from = 0.05, to = 0.95;
    constexpr int steps = 9;
    const MixingFile file = readMixingFile();
    ASSERT_EQ(file.pairs.size(), 954u);
    EXPECT_EQ(file.beyond.size(), 51u);
    modelTags.IPRINTERR = 0;
    int lines = 0, without = 0, points = 0;
    Worst T, p, beyondT, beyondP;
    std::vector<double> all;
    for (std::size_t k = 0; k < file.pairs.size(); k += everyPair) {
        const auto& [first, second] = file.pairs[k];
        SCOPED_TRACE(first + " + " + second);
        Composition z{};
        ASSERT_TRUE(setUpMixture({{first, 0.5}, {second, 0.5}}, z));
        const auto stated = file.beyond.find({first, second});
        const bool within = stated == file.beyond.end();
        const Misses bound = within ? Misses{temperatureBound, pressureBound} : stated->second;
        double Tc, pc, Dc;
        int ierr = 0;
        Text255 herr;
        CRITP(z, Tc, pc, Dc, ierr, herr);
        if (ierr == -131) {  // the critical points do not run from one component to the other
            ++without;
            continue;
        }
        ++lines;
        for (int step = 0; step <= steps; ++step) {
            z[1] = from + (to - from) * step / steps;
            z[2] = 1.0 - z[1];
            CRITP(z, Tc, pc, Dc, ierr, herr);
            EXPECT_EQ(ierr, 0);
            double trueT = Tc, trueP = pc, trueD = Dc;
            CRTPNT(z, trueT, trueP, trueD, ierr, herr);
            EXPECT_EQ(ierr, 0) << z[1] << ' ' << words(herr);
            if (ierr != 0) continue;
            // some equations have a second, cooler point, to which this start leads
            if (std::fabs(Tc - trueT) > bound.T) takeHotterPoint(z, Tc, pc, trueT, trueP);
            ++points;
            EXPECT_LE(std::fabs(Tc - trueT), bound.T) << z[1] << ": " << Tc << " K for " << trueT;
            EXPECT_LE(relative(pc, trueP), bound.p) << z[1] << ": " << pc << " kPa for " << trueP;
            (within ? T : beyondT).take(std::fabs(Tc - trueT), first + " + " + second);
            (within ? p : beyondP).take(relative(pc, trueP), first + " + " + second);
            all.push_back(std::fabs(Tc - trueT));
        }
    }
    std::sort(all.begin(), all.end());
    ASSERT_FALSE(all.empty());
    EXPECT_LT(all[all.size() / 2], medianBound);
    std::printf(
        "%d lines, %d pairs without one, %d points: %.3f K (%s), %.2f %% of pc (%s), median %.4f K; of the lines that "
        "say so, %.2f K (%s), %.1f %% (%s)\n",
        lines, without, points, T.value, T.where.c_str(), 100.0 * p.value, p.where.c_str(), all[all.size() / 2],
        beyondT.value, beyondT.where.c_str(), 100.0 * beyondP.value, beyondP.where.c_str());
}

// A file may state any point as the critical one: it is taken only where the mixture is at the limit of stability.
TEST(CriticalLine, AWrongStatementOfAFileIsOfNoConsequence) {
    Composition z{};
    ASSERT_TRUE(setUpBlend("R403B", z));  // the lines miss this one by 3 K
    double right, pc, Dc;
    int ierr = 0;
    Text255 herr;
    CRITP(z, right, pc, Dc, ierr, herr);
    ASSERT_TRUE(setUpMixture({{"PROPANE", z[1]}, {"R22", z[2]}, {"R218", z[3]}}, z));
    for (const double off : {1.004, 0.9, 1.0}) {
        noteCriticalPoint(z, right * off, pc, off == 1.0 ? 1.01 * Dc : Dc);
        adoptCriticalPoint(z);
        double T, p, D;
        CRITP(z, T, p, D, ierr, herr);
        EXPECT_NEAR(T, right, 1e-6) << off;
        EXPECT_LT(relative(p, pc), 1e-7) << off;
    }
}

}  // namespace
}  // namespace frigana::equilibria
