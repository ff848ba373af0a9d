// Fits the critical lines of the binary pairs, the numbers TC1 and VC1 of the file of mixing parameters, to the
// critical points of the pairs that CRTPNT finds, and writes them as JSON to the standard output:
//
//   fit_critical_lines DATA_FOLDER [--only] [FLUID...] > tools/fluid_tables/critical_lines.json
//   fit_critical_lines DATA_FOLDER --blends > tools/fluid_tables/blend_critical_points.json
//
// The pairs are those that have a record, and those among the named fluids whose parameters the engine estimates;
// with --only, none but those among the named fluids. Every line is fitted to its own points from 5 to 95 %, whatever
// the blends need: the sum over pairs by which CRTHMX combines the lines leaves out what three components do together,
// and where it misses the point of a blend, the set-up takes that of CRTPNT, which for the predefined blends --blends
// writes. The volumes are those at which the line's own temperature gives the critical pressure, as far as they stay
// near the true ones.
//
// A line whose six powers cannot follow the points says by how much it misses them ("beyond"); a pair whose points do
// not run from one component to the other has none. What every line keeps goes to the standard error.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "FluidConstants.h"
#include "FluidFiles.h"
#include "MIX_HMX.h"
#include "OPENFL.h"
#include "PROP_SUB.h"
#include "SAT_SUB_NEWTON.h"
#include "SETUP.h"
#include "SilentMessages.h"
#include "TPRHO.h"

namespace {

using namespace frigana;

struct Point {
    double x = 0.0, T = 0.0, p = 0.0, D = 0.0;  // mole fraction of the first component; K, kPa, mol/L
};

Composition compositionOf(double x) {
    Composition z{};
    z[1] = x;
    z[2] = 1.0 - x;
    return z;
}

// ---- critical points along a line ---------------------------------------------------------------------------------

bool criticalPoint(double x, double Tstart, double pstart, Point& point) {
    int ierr = 0;
    Text255 herr;
    point = {x, Tstart, pstart, 0.0};
    CRTPNT(compositionOf(x), point.T, point.p, point.D, ierr, herr);
    return ierr == 0 && point.T > 0.0 && point.p > 0.0 && point.D > 0.0;
}

// The next point at x behind two known ones; where it is not found or lies far from where they point to, by shorter
// steps.
bool advance(const Point& before, const Point& last, double x, int deepest, Point& next) {
    constexpr double farInT = 0.01, farInD = 0.06;  // relative
    const double ahead = (x - last.x) / (last.x - before.x);
    const double T = last.T + ahead * (last.T - before.T);
    const double p = last.p * std::exp(ahead * std::log(last.p / before.p));
    const double D = last.D * std::exp(ahead * std::log(last.D / before.D));
    const auto near = [&](const Point& point) {
        return std::fabs(point.T / T - 1.0) < farInT + 0.5 * std::fabs(T / last.T - 1.0) &&
               std::fabs(std::log(point.D / D)) < farInD + 0.5 * std::fabs(std::log(D / last.D));
    };
    for (const double warmer : {1.0, 1.002, 0.998, 1.006})  // another point of the equation may lie beside the line
        if (criticalPoint(x, warmer * T, p, next) && near(next)) return true;
    if (deepest == 0) return false;
    Point middle;
    return advance(before, last, 0.5 * (last.x + x), deepest - 1, middle) &&
           advance(last, middle, x, deepest - 1, next);
}

constexpr int points = 40;  // intervals of a line

// The points from one component on, in the order of the walk, as far as they run without a jump.
std::vector<Point> walk(bool fromFirst) {
    constexpr int deepest = 4;
    constexpr double beginning = 1e-4;  // mole fraction beside the component
    const FluidConstants& c = fluidConstants;
    const int from = fromFirst ? 1 : 2;
    const auto along = [&](double distance) { return fromFirst ? 1.0 - distance : distance; };
    Point before{along(0.0), c.TCRIT[from], c.PCRIT[from], c.DCRIT[from]};
    std::vector<Point> line;
    Point last;
    if (!criticalPoint(along(beginning), before.T, before.p, last) || std::fabs(last.T / before.T - 1.0) > 0.01)
        return line;
    for (double distance = 4.0 * beginning; distance < 0.9 / points; distance *= 4.0) {
        Point next;
        if (!advance(before, last, along(distance), deepest, next)) return line;
        before = last;
        last = next;
    }
    for (int k = 1; k < points; ++k) {
        Point next;
        if (!advance(before, last, along(static_cast<double>(k) / points), deepest, next)) return line;
        line.push_back(next);
        before = last;
        last = next;
    }
    return line;
}

// The points of a line; fewer than there are where it does not run from one component to the other. Where the walks
// from both ends meet on two branches, the critical point is the hotter one.
std::vector<Point> criticalLine() {
    const auto complete = [](const std::vector<Point>& line) { return line.size() == points - 1; };
    std::vector<Point> fromSecond = walk(false);
    if (complete(fromSecond)) return fromSecond;
    std::vector<Point> fromFirst = walk(true);
    std::reverse(fromFirst.begin(), fromFirst.end());
    if (complete(fromFirst) || fromFirst.empty()) return fromFirst;
    std::vector<Point> line = fromSecond;
    for (const Point& point : fromFirst) {
        const auto same = std::find_if(line.begin(), line.end(),
                                       [&](const Point& other) { return std::fabs(other.x - point.x) < 1e-9; });
        if (same == line.end())
            line.push_back(point);
        else if (point.T > same->T)
            *same = point;
    }
    const bool meet = complete(line) && fromSecond.size() + fromFirst.size() > points;
    return meet ? line : fromSecond.size() > fromFirst.size() ? fromSecond : fromFirst;
}

// ---- fit ----------------------------------------------------------------------------------------------------------

constexpr std::size_t unknowns = 6;
using Coefficients = std::array<double, unknowns>;

// One condition on the coefficients: row . c = wanted, in units of what may be missed.
struct Condition {
    Coefficients row{};
    double wanted = 0.0, weight = 1.0;
    bool bounded = true;  // its largest miss counts

    double miss(const Coefficients& c) const {
        double sum = -wanted;
        for (std::size_t k = 0; k < unknowns; ++k) sum += row[k] * c[k];
        return std::fabs(sum);
    }
};

// The functions of the fit: u (1 - u) times Chebyshev's polynomials over the line, of which no two look alike.
Coefficients functionsAt(double u) {
    Coefficients f{};
    const double s = 2.0 * u - 1.0;
    f[0] = u * (1.0 - u);
    f[1] = s * f[0];
    for (std::size_t k = 2; k < unknowns; ++k) f[k] = 2.0 * s * f[k - 1] - f[k - 2];
    return f;
}

double valueOf(const Coefficients& c, double u) {
    const Coefficients f = functionsAt(u);
    double sum = 0.0;
    for (std::size_t k = 0; k < unknowns; ++k) sum += c[k] * f[k];
    return sum;
}

// The same line in powers of u behind u (1 - u), as the file has it.
Coefficients powersOf(const Coefficients& c) {
    std::array<Coefficients, unknowns> T{};
    T[0][0] = 1.0;
    T[1] = {-1.0, 2.0};
    for (std::size_t k = 2; k < unknowns; ++k)
        for (std::size_t i = 0; i < unknowns; ++i)
            T[k][i] = -2.0 * T[k - 1][i] - T[k - 2][i] + (i > 0 ? 4.0 * T[k - 1][i - 1] : 0.0);
    Coefficients powers{};
    for (std::size_t k = 0; k < unknowns; ++k)
        for (std::size_t i = 0; i < unknowns; ++i) powers[i] += c[k] * T[k][i];
    return powers;
}

// Least squares by normal equations and elimination; the functions are chosen so that this does no harm.
Coefficients leastSquares(const std::vector<Condition>& conditions) {
    std::array<std::array<double, unknowns + 1>, unknowns> a{};
    for (const Condition& condition : conditions)
        for (std::size_t i = 0; i < unknowns; ++i) {
            for (std::size_t j = 0; j < unknowns; ++j)
                a[i][j] += condition.weight * condition.row[i] * condition.row[j];
            a[i][unknowns] += condition.weight * condition.row[i] * condition.wanted;
        }
    for (std::size_t k = 0; k < unknowns; ++k)
        for (std::size_t r = 0; r < unknowns; ++r) {
            if (r == k) continue;
            const double factor = a[r][k] / a[k][k];
            for (std::size_t c = k; c <= unknowns; ++c) a[r][c] -= factor * a[k][c];
        }
    Coefficients x{};
    for (std::size_t k = 0; k < unknowns; ++k) x[k] = a[k][unknowns] / a[k][k];
    return x;
}

// The best coefficients; where they miss more than allowed, those of the least largest miss, by weights that grow where
// it is large.
//   Source  C. L. Lawson, Contributions to the Theory of Linear Least Maximum Approximation, Los Angeles (1961)
Coefficients fit(std::vector<Condition> conditions) {
    constexpr int mostRounds = 60;
    constexpr double good = 0.7;  // of what may be missed
    Coefficients best{};
    double least = 0.0;
    for (int round = 1; round <= mostRounds; ++round) {
        const Coefficients c = leastSquares(conditions);
        double worst = 0.0, sum = 0.0;
        std::size_t count = 0;
        for (const Condition& condition : conditions)
            if (condition.bounded) worst = std::max(worst, condition.miss(c));
        if (round == 1 || worst < least) {
            least = worst;
            best = c;
        }
        if (least < good) break;
        for (Condition& condition : conditions) {
            if (!condition.bounded) continue;
            condition.weight *= condition.miss(c) / worst + 1e-3;
            sum += condition.weight;
            ++count;
        }
        for (Condition& condition : conditions)
            if (condition.bounded) condition.weight *= static_cast<double>(count) / sum;
    }
    return best;
}

constexpr double boundT = 0.3, boundP = 0.01;     // [K], relative
constexpr double fitFrom = 0.049, fitTo = 0.951;  // mole fractions between which a line has to hold

struct Line {
    Coefficients T{}, V{};  // over the functions of the fit

    double temperature(double u) const {
        const FluidConstants& c = fluidConstants;
        return u * c.TCRIT[1] + (1.0 - u) * c.TCRIT[2] + valueOf(T, u);
    }
    double volume(double u) const {
        const FluidConstants& c = fluidConstants;
        return u / c.DCRIT[1] + (1.0 - u) / c.DCRIT[2] + valueOf(V, u);
    }
};

bool counts(const Point& point) {
    return point.x > fitFrom && point.x < fitTo;
}

void fitTemperature(const std::vector<Point>& line, Line& fitted) {
    std::vector<Condition> conditions;
    for (const Point& point : line) {
        if (!counts(point)) continue;
        Condition& condition = conditions.emplace_back();
        condition.row = functionsAt(point.x);
        for (double& f : condition.row) f /= boundT;
        condition.wanted = (point.T - fitted.temperature(point.x)) / boundT;
    }
    fitted.T = fit(conditions);
}

double logPressure(double T, double v, double x) {
    constexpr double lowest = 1e-3;  // [kPa], of an isotherm that has sunk below zero
    double p = 0.0;
    PRESS(T, 1.0 / v, compositionOf(x), p);
    return std::log(std::max(p, lowest));
}

// By pressures at the temperatures of the fitted line, in rounds since they are not linear in the volume.
void fitVolume(const std::vector<Point>& line, Line& fitted) {
    constexpr int rounds = 6;
    constexpr double plausible = 0.03;  // of the volume, which the pressure hardly tells where the isotherm is flat
    for (int round = 1; round <= rounds; ++round) {
        std::vector<Condition> conditions;
        for (const Point& point : line) {
            if (!counts(point)) continue;
            const double x = point.x, T = fitted.temperature(x), trueV = 1.0 / point.D;
            const double linear = fitted.volume(x) - valueOf(fitted.V, x);
            const double v = round == 1 ? trueV : std::clamp(fitted.volume(x), 0.9 * trueV, 1.1 * trueV);
            const double step = 1e-5 * v;
            const double slope = (logPressure(T, v + step, x) - logPressure(T, v - step, x)) / (2.0 * step);
            const Coefficients f = functionsAt(x);
            Condition& pressure = conditions.emplace_back();
            for (std::size_t k = 0; k < unknowns; ++k) pressure.row[k] = slope * f[k] / boundP;
            pressure.wanted = (std::log(point.p) - logPressure(T, v, x) + slope * (v - linear)) / boundP;
            Condition& volume = conditions.emplace_back();
            volume.bounded = false;
            for (std::size_t k = 0; k < unknowns; ++k) volume.row[k] = f[k] / (plausible * trueV);
            volume.wanted = (trueV - linear) / (plausible * trueV);
        }
        fitted.V = fit(conditions);
    }
}

struct Misses {
    double T = 0.0, medianT = 0.0, p = 0.0, v = 0.0;

    bool beyond() const { return T > boundT || p > boundP; }
};

Misses missesOf(const std::vector<Point>& line, const Line& fitted) {
    Misses misses;
    std::vector<double> ofT;
    for (const Point& point : line) {
        if (!counts(point)) continue;
        const double T = fitted.temperature(point.x), v = fitted.volume(point.x);
        ofT.push_back(std::fabs(T - point.T));
        misses.T = std::max(misses.T, ofT.back());
        misses.p = std::max(misses.p, std::fabs(std::exp(logPressure(T, v, point.x)) / point.p - 1.0));
        misses.v = std::max(misses.v, std::fabs(v * point.D - 1.0));
    }
    std::nth_element(ofT.begin(), ofT.begin() + static_cast<std::ptrdiff_t>(ofT.size() / 2), ofT.end());
    misses.medianT = ofT[ofT.size() / 2];
    return misses;
}

// ---- pairs --------------------------------------------------------------------------------------------------------

// Names without extension of the files of a folder.
std::vector<std::string> namesOf(const std::filesystem::path& folder, const char* extension) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == extension) names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

struct Pair {
    std::string first, second;
    bool record = false, estimated = false;

    bool setUp() {
        FileNames files{};
        files[1].assign(first + ".FLD");
        files[2].assign(second + ".FLD");
        Text3 reference("DEF");
        int ierr = 0;
        Text255 herr;
        SETUP(2, files, Text255("HMX.BNC"), reference, ierr, herr);
        if (ierr > 0 && ierr != 22 && ierr != 23) return false;  // the reference state does not matter here
        record = !mixingParameters.HMFILE[1].startsWith("estimated");
        estimated = mixingParameters.HBIN[1].view().find("have been estimated") != std::string_view::npos;
        return true;
    }
    // The numbers belong to the order of the record, whose citation begins with both names.
    bool inOrderOfRecord() const { return !mixingParameters.HBIN[1].startsWith(second + " + "); }
};

// Eight significant digits; the fit is not better.
void printNumbers(const char* tag, const Coefficients& c) {
    std::printf("\"%s\": [", tag);
    for (std::size_t k = 0; k < c.size(); ++k) std::printf("%s%.8g", k > 0 ? ", " : "", c[k]);
    std::printf("]");
}

void fitPair(const Pair& pair, int& fitted) {
    const std::vector<Point> found = criticalLine();
    if (found.size() + 1 < points) {
        std::fprintf(stderr, "%-8s + %-8s no line: %zu of %d points%s\n", pair.first.c_str(), pair.second.c_str(),
                     found.size(), points - 1, pair.estimated ? " (estimated)" : "");
        return;
    }
    Line line;
    fitTemperature(found, line);
    fitVolume(found, line);
    const Misses misses = missesOf(found, line);
    constexpr double mostT = 10.0, mostV = 0.2;  // [K], relative; beyond them the points were not those of one line
    if (misses.T > mostT || misses.v > mostV) {
        std::fprintf(stderr, "%-8s + %-8s no line: misses its points by %.1f K, %.1f %% of volume\n",
                     pair.first.c_str(), pair.second.c_str(), misses.T, 100.0 * misses.v);
        return;
    }
    std::fprintf(stderr, "%-8s + %-8s %8.4f K (median %.4f K), %7.3f %% of pressure, %7.3f %% of volume%s%s\n",
                 pair.first.c_str(), pair.second.c_str(), misses.T, misses.medianT, 100.0 * misses.p, 100.0 * misses.v,
                 misses.beyond() ? " BEYOND" : "", pair.estimated ? " (estimated)" : "");
    std::printf("%s\n \"%s/%s\": {", fitted++ == 0 ? "" : ",", std::string(fluidFiles.HCAS[1].trimmed()).c_str(),
                std::string(fluidFiles.HCAS[2].trimmed()).c_str());
    printNumbers("TC1", powersOf(line.T));
    std::printf(", ");
    printNumbers("VC1", powersOf(line.V));
    if (misses.beyond()) std::printf(", \"beyond\": {\"K\": %.2f, \"percent\": %.1f}", misses.T, 100.0 * misses.p);
    std::printf("}");
}

void printBlends(const std::filesystem::path& folder) {
    int printed = 0;
    std::printf("{");
    for (const std::string& name : namesOf(folder / "mixtures", ".MIX")) {
        int count = 0, ierr = 0;
        FileNames files{};
        Composition z{};
        Text3 reference("DEF");
        Text255 herr;
        SETMIX(Text255(name + ".MIX"), Text255("HMX.BNC"), reference, count, files, z, ierr, herr);
        Point line, point;
        CRITP(z, line.T, line.p, line.D, ierr, herr);
        point = line;
        CRTPNT(z, point.T, point.p, point.D, ierr, herr);
        std::fprintf(stderr, "%-6s %9.4f K %9.3f kPa; by the lines %+8.4f K %+7.3f %%%s\n", name.c_str(), point.T,
                     point.p, line.T - point.T, 100.0 * (line.p / point.p - 1.0), ierr == 0 ? "" : " NOT FOUND");
        if (ierr == 0)
            std::printf("%s\n \"%s\": [%.12f, %.12f, %.12f]", printed++ == 0 ? "" : ",", name.c_str(), point.T, point.p,
                        point.D);
    }
    std::printf("\n}\n");
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const bool only = arguments.size() > 1 && arguments[1] == "--only";
    const std::vector<std::string> named(arguments.begin() + std::min<std::ptrdiff_t>(argc - 1, only ? 2 : 1),
                                         arguments.end());
    const std::filesystem::path folder = arguments.empty() ? FRIGANA_DATA : arguments[0];
    SETPATH(folder.string());
    const SilentMessages quiet;
    if (arguments.size() == 2 && arguments[1] == "--blends") {
        printBlends(folder);
        return 0;
    }
    const auto isNamed = [&](const std::string& fluid) {
        return std::find(named.begin(), named.end(), fluid) != named.end();
    };
    const std::vector<std::string> fluids = only ? named : namesOf(folder / "fluids", ".FLD");
    int fitted = 0;
    std::printf("{");
    for (std::size_t i = 0; i < fluids.size(); ++i)
        for (std::size_t j = i + 1; j < fluids.size(); ++j) {
            Pair pair{fluids[i], fluids[j]};
            if (!pair.setUp() || !(pair.record || (isNamed(pair.first) && isNamed(pair.second)))) continue;
            if (!pair.inOrderOfRecord()) {
                std::swap(pair.first, pair.second);
                if (!pair.setUp()) continue;
            }
            fitPair(pair, fitted);
        }
    std::printf("\n}\n");
    std::fprintf(stderr, "%d lines\n", fitted);
}
