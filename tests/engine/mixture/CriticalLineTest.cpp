// Critical points of the predefined blends: the estimate of CRTHMX from the critical lines of the pairs against the
// point at which the mixture itself becomes critical, found by CRTPNT and proved here.
#include <cstdio>

#include "Equilibrium.h"
#include "PHIDERV.h"

namespace frigana::equilibria {
namespace {

// Bounds of the estimate: what the fit of the critical lines of the pairs to all blends can keep.
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

// The blends to which the lines of their pairs were fitted. Those of the others were fitted to the pairs alone, or to
// these blends, and what three components do together is left out.
constexpr std::string_view fittedBlends =
    "R401A R401B R401C R402A R402B R403A R403B R404A R406A R407A R407B R407C R407D R407E R407F R408A "
    "R409A R409B R410A R412A R414A R416A R417A R420A R421A R421B R422A R422B R422C R422D R424A R426A "
    "R427A R428A R434A R437A R438A R447A R447B R448A R450A R452A R452B R454B R455A R466A R500 R502 R507A "
    "R508A R508B R515A R515B";
constexpr double otherTemperatureBound = 2.0;  // [K]
constexpr double otherPressureBound = 0.04;

bool isFitted(const std::string& blend) {
    for (std::size_t at = fittedBlends.find(blend); at != std::string_view::npos; at = fittedBlends.find(blend, at + 1))
        if (at + blend.size() == fittedBlends.size() || fittedBlends[at + blend.size()] == ' ') return true;
    return false;
}

TEST(CriticalLine, EstimateAgreesWithTheCriticalPointOfEveryBlend) {
    const std::vector<std::string> blends = allBlends();
    ASSERT_EQ(blends.size(), 123u);
    struct Line {
        std::string blend;
        double estimatedT, T, estimatedP, p;
        double offT() const { return std::fabs(estimatedT - T); }
    };
    std::vector<Line> lines;
    Worst T, p, otherT, otherP, lambda, cubic;
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

        const bool fitted = isFitted(blend);
        EXPECT_LE(std::fabs(Tc - tc), fitted ? temperatureBound : otherTemperatureBound) << Tc << " K for " << tc;
        EXPECT_LE(relative(pc, p0), fitted ? pressureBound : otherPressureBound) << pc << " kPa for " << p0;
        (fitted ? T : otherT).take(std::fabs(Tc - tc), blend);
        (fitted ? p : otherP).take(relative(pc, p0), blend);
        lines.push_back({blend, Tc, tc, pc, p0});
    }
    std::sort(lines.begin(), lines.end(), [](const Line& a, const Line& b) { return a.offT() > b.offT(); });
    std::printf(
        "critical points of %zu blends; largest distance of the estimate of those that were fitted %.3f K (%s), %.2f "
        "%% of pc (%s);\n",
        lines.size(), T.value, T.where.c_str(), 100.0 * p.value, p.where.c_str());
    std::printf("of those that were not fitted: %.3f K (%s), %.2f %% of pc (%s)\n", otherT.value, otherT.where.c_str(),
                100.0 * otherP.value, otherP.where.c_str());
    std::printf("criticality: smallest eigenvalue %.1e (%s), its slope %.1e (%s)\n", lambda.value, lambda.where.c_str(),
                cubic.value, cubic.where.c_str());
    for (std::size_t k = 0; k < 5 && k < lines.size(); ++k)
        std::printf("  %-6s Tc %8.3f for %8.3f K, pc %7.1f for %7.1f kPa\n", lines[k].blend.c_str(),
                    lines[k].estimatedT, lines[k].T, lines[k].estimatedP, lines[k].p);
}

}  // namespace
}  // namespace frigana::equilibria
