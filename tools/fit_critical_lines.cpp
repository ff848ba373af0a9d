// Fits the critical lines of the binary pairs, the numbers TC1 and VC1 of the file of mixing parameters, to critical
// points that CRTPNT finds, and writes them as JSON to the standard output:
//
//   fit_critical_lines [DATA FOLDER] > tools/fluid_tables/critical_lines.json
//
// The pairs are those that have a record, and those that the predefined blends need. Every line is fitted to its own
// critical points; those of the pairs of blends are moved a little to serve the blends as well, since the sum over
// pairs by which CRTHMX combines the lines leaves out what three components do together. The deviation of every pair,
// and of CRTHMX from CRTPNT for the blends with the parameters that are in the folder now, goes to the standard error.
//
// The lines in tools/fluid_tables/critical_lines.json are those of an earlier fit, of the pairs of blends all together
// by least squares: it keeps every blend within 0.2 K and 0.5 % but lets the lines of its pairs swing by several kelvin
// between the blends. This one follows the pairs, and misses blends by up to 3 K; no set of lines has been found yet
// that keeps both.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "FluidConstants.h"
#include "FluidFiles.h"
#include "MIX_HMX.h"
#include "OPENFL.h"
#include "SAT_SUB_NEWTON.h"
#include "SETUP.h"
#include "TPRHO.h"

namespace {

using namespace frigana;

std::string text(const Text255& field) {
    const std::string_view view = field.view();
    return std::string(trimRight(view.substr(0, view.find('\0'))));
}

struct CriticalPoint {
    double x = 0.0, T = 0.0, p = 0.0, D = 0.0;
};

// Names without extension of the files of a folder with an extension.
std::vector<std::string> filesOf(const std::filesystem::path& folder, const std::string& extension) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == extension) names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

bool setUpPair(const std::string& a, const std::string& b, int& ierr) {
    FileNames files{};
    files[1].assign(a + ".FLD");
    files[2].assign(b + ".FLD");
    Text3 reference("DEF");
    Text255 herr;
    SETUP(2, files, Text255("HMX.BNC"), reference, ierr, herr);
    return ierr <= 0 || ierr == 22 || ierr == 23;  // the reference state does not matter here
}

bool criticalPoint(double x1, double Tstart, double pstart, CriticalPoint& point) {
    Composition x{};
    x[1] = x1;
    x[2] = 1.0 - x1;
    int ierr = 0;
    Text255 herr;
    point = {x1, Tstart, pstart, 0.0};
    CRTPNT(x, point.T, point.p, point.D, ierr, herr);
    return ierr == 0 && point.T > 0.0 && point.p > 0.0;
}

constexpr int points = 40;                        // the ends of the line among them
constexpr double fitFrom = 0.049, fitTo = 0.951;  // mole fractions between which a line has to hold

// The points of a critical line that runs from one component to the other without a jump; fewer where there is none.
std::vector<CriticalPoint> criticalLine() {
    const FluidConstants& c = fluidConstants;
    std::vector<CriticalPoint> line;
    double T = c.TCRIT[2], p = c.PCRIT[2], D = c.DCRIT[2], slope = (c.TCRIT[1] - c.TCRIT[2]) / points;
    for (int k = 1; k < points; ++k) {
        CriticalPoint point;
        if (!criticalPoint(static_cast<double>(k) / points, T + slope, p, point)) break;
        const double jump = 0.02 * T + 2.0 * std::fabs(slope);
        if (std::fabs(point.T - T) > jump || std::fabs(std::log(point.D / D)) > 0.15) break;
        slope = point.T - T;
        T = point.T;
        p = point.p;
        D = point.D;
        line.push_back(point);
    }
    return line;
}

constexpr std::size_t unknowns = 6;
using Coefficients = std::array<double, unknowns>;

double value(const Coefficients& c, double u) {
    double sum = 0.0, power = u * (1.0 - u);
    for (const double coefficient : c) {
        sum += coefficient * power;
        power *= u;
    }
    return sum;
}

// Solves a linear system by elimination with pivoting; the matrix is symmetric and not far from diagonal.
std::vector<double> solve(std::vector<std::vector<double>> a, std::vector<double> x) {
    const std::size_t n = x.size();
    for (std::size_t k = 0; k < n; ++k) {
        std::size_t pivot = k;
        for (std::size_t r = k + 1; r < n; ++r)
            if (std::fabs(a[r][k]) > std::fabs(a[pivot][k])) pivot = r;
        std::swap(a[k], a[pivot]);
        std::swap(x[k], x[pivot]);
        for (std::size_t r = k + 1; r < n; ++r) {
            const double factor = a[r][k] / a[k][k];
            if (factor == 0.0) continue;
            for (std::size_t c = k; c < n; ++c) a[r][c] -= factor * a[k][c];
            x[r] -= factor * x[k];
        }
    }
    for (std::size_t k = n; k-- > 0;) {
        for (std::size_t c = k + 1; c < n; ++c) x[k] -= a[k][c] * x[c];
        x[k] /= a[k][k];
    }
    return x;
}

struct Constants {
    std::string cas;
    double T = 0.0, v = 0.0;  // critical temperature [K], volume [L/mol]
};
std::map<std::string, Constants> constantsOf;

using Names = std::pair<std::string, std::string>;

struct Pair {
    Names names;
    std::vector<CriticalPoint> line;
    bool inBlend = false, isBlend = false;
    Coefficients T{}, V{};
};

struct Blend {
    std::string name;
    std::vector<std::string> fluids;
    std::vector<double> x;
    CriticalPoint point;
};

// How much a point may be missed: as the weights begin, of a pair and of a blend, and at most, above which a weight is
// raised.
struct Tolerances {
    double pair, blend, pairLimit, blendLimit;
};

// Line and constants as temperature [K] or as volume, relative.
struct Temperature {
    static constexpr Tolerances tolerances{0.1, 0.3, 0.27, 0.27};
    static double of(const CriticalPoint& point) { return point.T; }
    static double of(const Constants& constants) { return constants.T; }
    static double scale(const CriticalPoint&) { return 1.0; }
    static Coefficients& coefficients(Pair& pair) { return pair.T; }
};
struct Volume {
    static constexpr Tolerances tolerances{0.005, 0.01, 0.015, 0.015};
    static double of(const CriticalPoint& point) { return 1.0 / point.D; }
    static double of(const Constants& constants) { return constants.v; }
    static double scale(const CriticalPoint& point) { return 1.0 / point.D; }
    static Coefficients& coefficients(Pair& pair) { return pair.V; }
};

// The line of one pair in polynomials that are orthonormal over its own weighted points, so that the powers, which are
// nearly dependent, do no harm: deviations are Q y - t, coefficients c of the powers R c = y.
struct Basis {
    std::vector<std::array<double, unknowns>> Q;
    std::vector<double> share;  // weight of the points
    std::array<std::array<double, unknowns>, unknowns> R{};
    std::vector<double> t;
    std::array<double, unknowns> own{}, y{};  // the pair's own best fit, and the one that serves the blends as well
    double weight = 1.0;
    double limit = 0.0;  // of the deviation; more where the line's own fit is not better

    double worst() const {
        double largest = 0.0;
        for (std::size_t k = 0; k < Q.size(); ++k) {
            double off = -t[k];
            for (std::size_t c = 0; c < unknowns; ++c) off += Q[k][c] * y[c];
            largest = std::max(largest, std::fabs(off));
        }
        return largest;
    }
    Coefficients powers() const {
        Coefficients c{};
        for (std::size_t i = unknowns; i-- > 0;) {
            c[i] = y[i];
            for (std::size_t j = i + 1; j < unknowns; ++j) c[i] -= R[i][j] * c[j];
            c[i] /= R[i][i];
        }
        return c;
    }
};

// Gram and Schmidt's method, twice for the rounding; then the best fit.
void orthonormalize(Basis& basis) {
    basis.R = {};
    const std::size_t n = basis.Q.size();
    for (std::size_t c = 0; c < unknowns; ++c) {
        for (int round = 0; round < 2; ++round)
            for (std::size_t d = 0; d < c; ++d) {
                double dot = 0.0;
                for (std::size_t k = 0; k < n; ++k) dot += basis.share[k] * basis.Q[k][c] * basis.Q[k][d];
                basis.R[d][c] += dot;
                for (auto& row : basis.Q) row[c] -= dot * row[d];
            }
        double norm = 0.0;
        for (std::size_t k = 0; k < n; ++k) norm += basis.share[k] * basis.Q[k][c] * basis.Q[k][c];
        basis.R[c][c] = std::sqrt(norm);
        for (auto& row : basis.Q) row[c] /= basis.R[c][c];
        basis.own[c] = 0.0;
        for (std::size_t k = 0; k < n; ++k) basis.own[c] += basis.share[k] * basis.Q[k][c] * basis.t[k];
    }
    basis.y = basis.own;
}

// A line that six powers do not follow within the limit has its largest deviation made as small as they can, by weights
// that grow where the deviation is large.
//   Source  C. L. Lawson, Contributions to the Theory of Linear Least Maximum Approximation, Los Angeles (1961)
template <class Quantity>
Basis basisOf(const Pair& pair) {
    constexpr int mostRounds = 40;
    const Constants &a = constantsOf[pair.names.first], &b = constantsOf[pair.names.second];
    Basis basis;
    std::vector<std::array<double, unknowns>> powers;
    for (const CriticalPoint& point : pair.line) {
        const double u = point.x, scale = Quantity::scale(point);
        if (u < fitFrom || u > fitTo) continue;
        std::array<double, unknowns>& row = powers.emplace_back();
        double power = u * (1.0 - u) / scale;
        for (std::size_t c = 0; c < unknowns; ++c, power *= u) row[c] = power;
        basis.t.push_back((Quantity::of(point) - u * Quantity::of(a) - (1.0 - u) * Quantity::of(b)) / scale);
    }
    basis.share.assign(powers.size(), 1.0);
    Basis best;
    for (int round = 1; round <= mostRounds; ++round) {
        basis.Q = powers;
        orthonormalize(basis);
        if (round == 1 || basis.worst() < best.worst()) best = basis;
        if (best.worst() < 0.8 * Quantity::tolerances.pairLimit) break;
        double sum = 0.0;
        for (std::size_t k = 0; k < powers.size(); ++k) {
            double off = -basis.t[k];
            for (std::size_t c = 0; c < unknowns; ++c) off += basis.Q[k][c] * basis.y[c];
            basis.share[k] *= std::fabs(off) / basis.worst() + 1e-3;
            sum += basis.share[k];
        }
        for (double& share : basis.share) share *= static_cast<double>(powers.size()) / sum;
    }
    best.limit = std::max(Quantity::tolerances.pairLimit, 1.05 * best.worst());
    return best;
}

// The part of a pair in the equation of a blend, over the coefficients y of its line.
struct BlendTerm {
    std::size_t pair;
    std::array<double, unknowns> row{};
};
struct BlendEquation {
    std::vector<BlendTerm> terms;
    double wanted = 0.0, weight = 1.0;
};

// The equation of a blend, in units of its own value, as CRTHMX combines the lines of its pairs.
template <class Quantity>
BlendEquation equationOf(const Blend& blend, const std::vector<Basis>& bases,
                         const std::map<Names, std::size_t>& pairOf) {
    BlendEquation equation;
    double weightOfAll = 0.0, linear = 0.0;
    const std::size_t n = blend.fluids.size();
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = i + 1; j < n; ++j) weightOfAll += blend.x[i] * blend.x[j];
    const double scale = Quantity::scale(blend.point);
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j) {
            const auto found = pairOf.find({blend.fluids[i], blend.fluids[j]});
            if (found == pairOf.end()) continue;
            const double u = (blend.x[i] + 1.0 - blend.x[j]) / 2.0, share = blend.x[i] * blend.x[j] / weightOfAll;
            const auto& R = bases[found->second].R;
            BlendTerm term{found->second, {}};
            double power = share * u * (1.0 - u) / scale;
            for (std::size_t c = 0; c < unknowns; ++c, power *= u) {
                term.row[c] = power;
                for (std::size_t d = 0; d < c; ++d) term.row[c] -= term.row[d] * R[d][c];
                term.row[c] /= R[c][c];
            }
            equation.terms.push_back(term);
            linear += share * (u * Quantity::of(constantsOf[blend.fluids[i]]) +
                               (1.0 - u) * Quantity::of(constantsOf[blend.fluids[j]]));
        }
    equation.wanted = (Quantity::of(blend.point) - linear) / scale;
    return equation;
}

double deviationOf(const BlendEquation& equation, const std::vector<Basis>& bases) {
    double off = -equation.wanted;
    for (const BlendTerm& term : equation.terms)
        for (std::size_t c = 0; c < unknowns; ++c) off += term.row[c] * bases[term.pair].y[c];
    return off;
}

// Every line is moved from its own fit in the direction that the blends ask for, as far as the weights say.
void serveBlends(std::vector<Basis>& bases, const std::vector<BlendEquation>& blends) {
    const std::size_t n = blends.size();
    std::vector<std::vector<double>> a(n, std::vector<double>(n));
    std::vector<double> right(n);
    for (Basis& basis : bases) basis.y = basis.own;
    for (std::size_t i = 0; i < n; ++i) {
        right[i] = -deviationOf(blends[i], bases);
        a[i][i] = 1.0 / blends[i].weight;
        for (std::size_t j = 0; j < n; ++j)
            for (const BlendTerm& s : blends[i].terms)
                for (const BlendTerm& t : blends[j].terms) {
                    if (s.pair != t.pair) continue;
                    double dot = 0.0;
                    for (std::size_t c = 0; c < unknowns; ++c) dot += s.row[c] * t.row[c];
                    a[i][j] += dot / bases[s.pair].weight;
                }
    }
    const std::vector<double> pull = solve(a, right);
    for (std::size_t i = 0; i < n; ++i)
        for (const BlendTerm& term : blends[i].terms)
            for (std::size_t c = 0; c < unknowns; ++c)
                bases[term.pair].y[c] += pull[i] * term.row[c] / bases[term.pair].weight;
}

template <class Quantity>
void fit(std::vector<Pair>& pairs, const std::vector<Blend>& blends) {
    constexpr Tolerances tolerances = Quantity::tolerances;
    constexpr int mostRounds = 80;
    constexpr double raise = 1.4;
    // where both cannot be had, a blend comes before the lines of its pairs
    constexpr double heaviestPair = 1e5, heaviestBlend = 1e12;
    std::map<Names, std::size_t> pairOf;
    std::vector<Basis> bases;
    for (Pair& pair : pairs) {
        pairOf.emplace(pair.names, bases.size());
        bases.push_back(basisOf<Quantity>(pair));
        bases.back().weight = 1.0 / (tolerances.pair * tolerances.pair);
    }
    std::vector<BlendEquation> equations;
    for (const Blend& blend : blends) {
        equations.push_back(equationOf<Quantity>(blend, bases, pairOf));
        equations.back().weight = 1.0 / (tolerances.blend * tolerances.blend);
    }
    for (int round = 1; round <= mostRounds; ++round) {
        serveBlends(bases, equations);
        bool raised = false;
        for (Basis& basis : bases) {
            if (basis.worst() <= basis.limit || basis.weight > heaviestPair) continue;
            basis.weight *= raise;
            raised = true;
        }
        for (BlendEquation& equation : equations) {
            if (std::fabs(deviationOf(equation, bases)) <= tolerances.blendLimit || equation.weight > heaviestBlend)
                continue;
            equation.weight *= raise;
            raised = true;
        }
        if (!raised) break;
    }
    for (std::size_t k = 0; k < pairs.size(); ++k) Quantity::coefficients(pairs[k]) = bases[k].powers();
    for (std::size_t k = 0; k < blends.size(); ++k) {
        const double off = deviationOf(equations[k], bases);
        if (std::fabs(off) > tolerances.blendLimit)
            std::fprintf(stderr, "%-6s is missed by %.4f with the new lines\n", blends[k].name.c_str(), off);
    }
}

// Eight significant digits; the fit is not better.
void printNumbers(const char* tag, const Coefficients& c) {
    std::printf("\"%s\": [", tag);
    for (std::size_t k = 0; k < c.size(); ++k) std::printf("%s%.8g", k > 0 ? ", " : "", c[k]);
    std::printf("]");
}

void printPair(const Pair& pair, bool first) {
    const Constants &a = constantsOf[pair.names.first], &b = constantsOf[pair.names.second];
    double worstT = 0.0, worstV = 0.0;
    for (const CriticalPoint& point : pair.line) {
        const double u = point.x, w = 1.0 - u;
        if (u < fitFrom || u > fitTo) continue;
        worstT = std::max(worstT, std::fabs(u * a.T + w * b.T + value(pair.T, u) - point.T));
        worstV = std::max(worstV, std::fabs(u * a.v + w * b.v + value(pair.V, u) - 1.0 / point.D) * point.D);
    }
    std::fprintf(stderr, "%-8s + %-8s largest deviation %.4f K, %.3f %% of volume%s\n", pair.names.first.c_str(),
                 pair.names.second.c_str(), worstT, 100.0 * worstV,
                 pair.isBlend   ? " (a blend)"
                 : pair.inBlend ? " (in blends)"
                                : "");
    std::printf("%s\n \"%s/%s\": {", first ? "" : ",", a.cas.c_str(), b.cas.c_str());
    printNumbers("TC1", pair.T);
    std::printf(", ");
    printNumbers("VC1", pair.V);
    std::printf("}");
}

std::string stem(const Text255& file) {
    return std::filesystem::path(text(file)).stem().string();
}

std::vector<Blend> readBlends(const std::filesystem::path& folder) {
    std::vector<Blend> blends;
    double worstT = 0.0, worstP = 0.0;
    for (const std::string& name : filesOf(folder / "mixtures", ".MIX")) {
        int nc = 0, ierr = 0;
        FileNames files{};
        Composition x{};
        Text3 reference("DEF");
        Text255 herr;
        SETMIX(Text255(name + ".MIX"), Text255("HMX.BNC"), reference, nc, files, x, ierr, herr);
        Blend blend{name, {}, {}, {}};
        for (int i = 1; i <= nc; ++i) {
            blend.fluids.push_back(stem(files[i]));
            blend.x.push_back(x[i]);
        }
        double Tc, Pc, Dc;
        CRTHMX(x, Tc, Pc, Dc, ierr, herr);
        double T = Tc, p = Pc, D = Dc;
        CRTPNT(x, T, p, D, ierr, herr);
        blend.point = {0.0, T, p, D};
        std::fprintf(stderr, "%-6s CRTPNT %9.4f K %9.3f kPa %8.5f mol/L; CRTHMX now %+8.4f K %+7.3f %% %+7.3f %%%s\n",
                     name.c_str(), T, p, D, Tc - T, 100.0 * (Pc / p - 1.0), 100.0 * (Dc / D - 1.0),
                     ierr == 0 ? "" : text(herr).c_str());
        if (ierr == 0) blends.push_back(blend);
        worstT = std::max(worstT, std::fabs(Tc - T));
        worstP = std::max(worstP, std::fabs(Pc / p - 1.0));
    }
    std::fprintf(stderr, "largest deviation of a blend now: %.4f K, %.3f %% of pressure\n", worstT, 100.0 * worstP);
    return blends;
}

}  // namespace

int main(int argc, char** argv) {
    const std::filesystem::path folder = argc > 1 ? argv[1] : FRIGANA_DATA;
    SETPATH(folder.string());
    const std::vector<std::string> fluids = filesOf(folder / "fluids", ".FLD");
    const std::vector<Blend> blends = readBlends(folder);

    std::set<Names> needed, binary;
    for (const Blend& blend : blends)
        for (const std::string& a : blend.fluids)
            for (const std::string& b : blend.fluids) {
                needed.emplace(a, b);
                if (blend.fluids.size() == 2) binary.emplace(a, b);
            }

    std::vector<Pair> pairs;
    for (std::size_t i = 0; i < fluids.size(); ++i)
        for (std::size_t j = i + 1; j < fluids.size(); ++j) {
            int ierr = 0;
            Names names{fluids[i], fluids[j]};
            if (!setUpPair(names.first, names.second, ierr)) continue;
            const bool record = !mixingParameters.HMFILE[1].startsWith("estimated");
            if (!record && needed.count(names) == 0) continue;
            // the numbers belong to the order of the record, whose citation begins with both names
            if (mixingParameters.HBIN[1].startsWith(names.second + " + ")) {
                std::swap(names.first, names.second);
                if (!setUpPair(names.first, names.second, ierr)) continue;
            }
            for (int k = 1; k <= 2; ++k)
                constantsOf[k == 1 ? names.first : names.second] = {
                    std::string(fluidFiles.HCAS[k].trimmed()), fluidConstants.TCRIT[k], 1.0 / fluidConstants.DCRIT[k]};
            Pair pair{names, criticalLine(), needed.count(names) > 0, binary.count(names) > 0, {}, {}};
            if (pair.line.size() + 1 < points) {
                std::fprintf(stderr, "%-8s + %-8s no line: %zu of %d points\n", names.first.c_str(),
                             names.second.c_str(), pair.line.size(), points - 1);
                continue;
            }
            pairs.push_back(pair);
        }
    fit<Temperature>(pairs, blends);
    fit<Volume>(pairs, blends);
    std::printf("{");
    for (std::size_t k = 0; k < pairs.size(); ++k) printPair(pairs[k], k == 0);
    std::printf("\n}\n");
    std::fprintf(stderr, "%zu pairs fitted\n", pairs.size());
}
