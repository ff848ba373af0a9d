// Fits the critical lines of the binary pairs, the numbers TC1 and VC1 of the file of mixing parameters, to critical
// points that CRTPNT finds, and writes them as JSON to the standard output:
//
//   fit_critical_lines [DATA FOLDER] > tools/fluid_tables/critical_lines.json
//
// The pairs are those that have a record, and those that the predefined blends need. The lines of the pairs of blends
// are fitted together, to their own critical points and, with more weight, to those of the blends: the sum over pairs
// by which CRTHMX combines the lines leaves out what three components do together, and the lines of the pairs take it
// up. The deviation of every pair, and of CRTHMX from CRTPNT for the blends with the parameters that are in the folder
// now, goes to the standard error.
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

constexpr int points = 30;

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

// Rows of a linear system with the right side behind them, solved by Householder reflections, since the powers of the
// fraction are nearly dependent.
class LeastSquares {
  public:
    explicit LeastSquares(std::size_t columns) : columns_(columns) {}
    // A new row of zeros; its last element is the right side.
    std::vector<double>& addRow() { return rows_.emplace_back(columns_ + 1, 0.0); }
    std::vector<double> solve() {
        const std::size_t m = rows_.size();
        std::vector<double> v(m);
        for (std::size_t k = 0; k < columns_; ++k) {
            double norm = 0.0;
            for (std::size_t r = k; r < m; ++r) norm += rows_[r][k] * rows_[r][k];
            norm = std::sqrt(norm);
            if (norm == 0.0) continue;
            const double alpha = rows_[k][k] > 0.0 ? -norm : norm;
            double vv = 0.0;
            for (std::size_t r = k; r < m; ++r) {
                v[r] = rows_[r][k] - (r == k ? alpha : 0.0);
                vv += v[r] * v[r];
            }
            std::vector<double> dot(columns_ + 1, 0.0);
            for (std::size_t r = k; r < m; ++r)
                if (v[r] != 0.0)
                    for (std::size_t c = k; c <= columns_; ++c) dot[c] += v[r] * rows_[r][c];
            for (std::size_t r = k; r < m; ++r)
                if (v[r] != 0.0)
                    for (std::size_t c = k; c <= columns_; ++c) rows_[r][c] -= 2.0 * dot[c] / vv * v[r];
        }
        std::vector<double> x(columns_, 0.0);
        for (std::size_t k = columns_; k-- > 0;) {
            double sum = rows_[k][columns_];
            for (std::size_t c = k + 1; c < columns_; ++c) sum -= rows_[k][c] * x[c];
            x[k] = rows_[k][k] == 0.0 ? 0.0 : sum / rows_[k][k];
        }
        return x;
    }

  private:
    std::size_t columns_;
    std::vector<std::vector<double>> rows_;
};

// Adds share u w (F1 + u (c2 + c3 u + ... + c6 u^4)) to a row, from a column on.
void addTerms(std::vector<double>& row, std::size_t column, double u, double share) {
    double power = share * u * (1.0 - u);
    for (std::size_t c = 0; c < unknowns; ++c, power *= u) row[column + c] += power;
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

// How much a point may be missed, which gives the weights: of a pair that is a blend itself, of another pair, of a
// blend at first; and the deviation of a blend above which its weight is raised.
struct Tolerances {
    double blendPair, otherPair, blend, limit;
};
constexpr Tolerances temperature{0.1, 1.0, 0.3, 0.2};  // [K]
constexpr Tolerances volume{0.005, 0.02, 0.02, 0.01};  // [-]

// Line and constants as temperature or as volume.
struct Temperature {
    static constexpr Tolerances tolerances = temperature;
    static double of(const CriticalPoint& point) { return point.T; }
    static double of(const Constants& constants) { return constants.T; }
    static double scale(const CriticalPoint&) { return 1.0; }
    static Coefficients& coefficients(Pair& pair) { return pair.T; }
};
struct Volume {
    static constexpr Tolerances tolerances = volume;
    static double of(const CriticalPoint& point) { return 1.0 / point.D; }
    static double of(const Constants& constants) { return constants.v; }
    static double scale(const CriticalPoint& point) { return 1.0 / point.D; }
    static Coefficients& coefficients(Pair& pair) { return pair.V; }
};

template <class Quantity>
void addLine(LeastSquares& system, std::size_t column, const Pair& pair, double tolerance) {
    const Constants &a = constantsOf[pair.names.first], &b = constantsOf[pair.names.second];
    for (const CriticalPoint& point : pair.line) {
        std::vector<double>& row = system.addRow();
        const double weight = 1.0 / (tolerance * Quantity::scale(point)), u = point.x;
        addTerms(row, column, u, weight);
        row.back() = weight * (Quantity::of(point) - u * Quantity::of(a) - (1.0 - u) * Quantity::of(b));
    }
}

// The equation of a blend, in units of its own value, as CRTHMX combines the lines of its pairs.
template <class Quantity>
std::vector<double> blendRow(const Blend& blend, const std::map<Names, std::size_t>& columnOf) {
    std::vector<double> row(unknowns * columnOf.size() + 1, 0.0);
    double weightOfAll = 0.0, linear = 0.0;
    const std::size_t n = blend.fluids.size();
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = i + 1; j < n; ++j) weightOfAll += blend.x[i] * blend.x[j];
    const double scale = Quantity::scale(blend.point);
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j < n; ++j) {
            const auto column = columnOf.find({blend.fluids[i], blend.fluids[j]});
            if (column == columnOf.end()) continue;
            const double u = (blend.x[i] + 1.0 - blend.x[j]) / 2.0, share = blend.x[i] * blend.x[j] / weightOfAll;
            addTerms(row, column->second, u, share / scale);
            linear += share * (u * Quantity::of(constantsOf[blend.fluids[i]]) +
                               (1.0 - u) * Quantity::of(constantsOf[blend.fluids[j]]));
        }
    row.back() = (Quantity::of(blend.point) - linear) / scale;
    return row;
}

template <class Quantity>
void fit(std::vector<Pair>& pairs, const std::vector<Blend>& blends) {
    std::map<Names, std::size_t> columnOf;
    for (Pair& pair : pairs) {
        if (pair.line.empty()) continue;
        if (pair.inBlend) {
            columnOf.emplace(pair.names, unknowns * columnOf.size());
            continue;
        }
        LeastSquares alone(unknowns);
        addLine<Quantity>(alone, 0, pair, 1.0);
        const std::vector<double> x = alone.solve();
        std::copy(x.begin(), x.end(), Quantity::coefficients(pair).begin());
    }
    std::vector<double> blendTolerance(blends.size(), Quantity::tolerances.blend);
    std::vector<double> x;
    constexpr int mostRounds = 40;
    for (int round = 1; round <= mostRounds; ++round) {
        LeastSquares together(unknowns * columnOf.size());
        for (const Pair& pair : pairs) {
            const auto column = columnOf.find(pair.names);
            if (column == columnOf.end()) continue;
            addLine<Quantity>(together, column->second, pair,
                              pair.isBlend ? Quantity::tolerances.blendPair : Quantity::tolerances.otherPair);
        }
        std::vector<std::vector<double>> blendRows;
        for (std::size_t k = 0; k < blends.size(); ++k) {
            blendRows.push_back(blendRow<Quantity>(blends[k], columnOf));
            std::vector<double>& row = together.addRow();
            row = blendRows.back();
            for (double& element : row) element /= blendTolerance[k];
        }
        x = together.solve();
        bool raised = false;
        for (std::size_t k = 0; k < blends.size(); ++k) {
            double deviation = -blendRows[k].back();
            for (std::size_t c = 0; c < x.size(); ++c) deviation += blendRows[k][c] * x[c];
            if (std::fabs(deviation) <= Quantity::tolerances.limit) continue;
            blendTolerance[k] /= 1.5;
            raised = true;
        }
        if (!raised) break;
    }
    for (Pair& pair : pairs) {
        const auto column = columnOf.find(pair.names);
        if (column == columnOf.end()) continue;
        const auto first = x.begin() + static_cast<std::ptrdiff_t>(column->second);
        std::copy(first, first + unknowns, Quantity::coefficients(pair).begin());
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
