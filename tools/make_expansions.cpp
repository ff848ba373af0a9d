// Makes the files of expansions that stand beside the fluid files: saturation of every pure fluid with a Helmholtz
// equation, in pieces of Chebyshev series fitted to the states that Newton's method finds.
//
//   make_expansions [--data folder] [fluid ...]
//
// Of all numbers of pieces and coefficients those are taken that need the least room and meet `closeEnough` at states
// that were not fitted; the hottest temperature is the highest of a list at which some do. A line per fluid: range,
// pieces and coefficients, largest deviations. A fluid for which none do gets no file, and an older one is removed.
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <initializer_list>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "FluidConstants.h"
#include "LIMITS.h"
#include "PROP_SUB.h"
#include "PureFluid.h"
#include "SAT_SUB_EXPANSION.h"
#include "SAT_SUB_PURE_NEWTON.h"
#include "UTILITY.h"

namespace {

namespace fs = std::filesystem;
using namespace frigana;

// Relative, of pressure and densities: the next one where no pieces meet the one before, since an equation of large
// terms that nearly cancel rounds its own states no better.
constexpr double closeEnough[] = {4e-13, 8e-13, 2e-12};
constexpr double hottest[] = {0.998, 0.995, 0.99, 0.98, 0.95, 0.9};
constexpr int fewestPieces = 3, smallestOrder = 8, longestSeries = 20, mostPieces = mostCoefficients / longestSeries;
constexpr double thinnest = 1.01e-10;  // [rho_r] the equation takes a vapor for an ideal gas below, at a jump
constexpr int nodes = 48;              // of a piece, at which it is fitted by least squares
constexpr int testStates = 600;        // not fitted

CriticalPoint critical;
Composition z;

bool stateAt(double T, ExpandedState& state) {
    state.T = T;
    if (!newtonPureAtTemperature(T, 1, critical, state.p, state.rhol, state.rhov)) return false;
    // the pressure of a cold liquid drowns in the rounding of its density, the vapor's does not
    PRESS(T, state.rhov, z, state.p);
    return true;
}

// Coefficients of a function that is given at the nodes of a piece.
std::vector<double> series(const std::vector<double>& values) {
    std::vector<double> coefficients(largestOrder);
    for (int k = 0; k < largestOrder; ++k) {
        double sum = 0.0;
        for (int j = 0; j < nodes; ++j)
            sum += values[static_cast<std::size_t>(j)] * std::cos(std::numbers::pi * k * (j + 0.5) / nodes);
        coefficients[static_cast<std::size_t>(k)] = (k == 0 ? 1.0 : 2.0) / nodes * sum;
    }
    return coefficients;
}

double nodeBetween(int j, double first, double last) {
    return 0.5 * (first + last) + 0.5 * (last - first) * std::cos(std::numbers::pi * (j + 0.5) / nodes);
}

using Fit = std::vector<std::vector<std::vector<double>>>;  // by piece, by function

// The functions over theta in so many pieces; empty where a state is not found.
Fit fitOverTheta(const ExpansionTable& table, int count) {
    const double first = std::sqrt(1.0 - table.highestT / table.Tr), last = std::sqrt(1.0 - table.lowestT / table.Tr);
    Fit fit;
    for (int piece = 0; piece < count; ++piece) {
        std::vector<std::vector<double>> values(expandedOverTheta);
        for (int j = 0; j < nodes; ++j) {
            const double theta =
                nodeBetween(j, first + (last - first) * piece / count, first + (last - first) * (piece + 1) / count);
            const double T = table.Tr * (1.0 - theta * theta);
            ExpandedState state;
            if (!stateAt(T, state)) {
                std::printf("   no state at %.12g K\n", T);
                return {};
            }
            values[0].push_back(std::log(state.p / table.pr));
            values[1].push_back(state.rhol);
            values[2].push_back(state.p / (table.R * T * state.rhov));
        }
        fit.emplace_back();
        for (const auto& one : values) fit.back().push_back(series(one));
    }
    return fit;
}

// theta over phi, of the line over theta that is given.
Fit fitOverPhi(const ExpansionTable& table, int count) {
    const double first = std::sqrt(std::log(table.pr / table.highestP)),
                 last = std::sqrt(std::log(table.pr / table.lowestP));
    Fit fit;
    for (int piece = 0; piece < count; ++piece) {
        std::vector<double> values;
        for (int j = 0; j < nodes; ++j) {
            const double phi =
                nodeBetween(j, first + (last - first) * piece / count, first + (last - first) * (piece + 1) / count);
            // by halving, then by secants that the rounding ends
            const double p = table.pr * std::exp(-phi * phi);
            double low = table.lowestT, high = table.highestT;
            for (int k = 0; k < 100 && low < high; ++k) {
                const double middle = 0.5 * (low + high);
                if (!(low < middle && middle < high)) break;
                (expandedAtT(table, middle).p < p ? low : high) = middle;
            }
            values.push_back(std::sqrt(1.0 - 0.5 * (low + high) / table.Tr));
        }
        fit.push_back({series(values)});
    }
    return fit;
}

// Rounds a coefficient to what its function's largest one leaves of it.
double rounded(double coefficient, double largest) {
    const int decimals = 16 - static_cast<int>(std::floor(std::log10(largest)));
    char text[60];
    std::snprintf(text, sizeof text, "%.*f", std::max(decimals, 0), coefficient);
    return std::strtod(text, nullptr);
}

void lay(const Fit& fit, int order, double* to) {
    for (const auto& piece : fit)
        for (int k = 0; k < order; ++k)
            for (const auto& function : piece)
                *to++ = rounded(function[static_cast<std::size_t>(k)], std::fabs(function[0]));
}

struct Deviations {
    double p = 0.0, rhol = 0.0, rhov = 0.0, T = 0.0;
    double largest() const { return std::max({p, rhol, rhov, T}); }
};
Deviations deviations(const ExpansionTable& table, const std::vector<ExpandedState>& states, bool overPhi) {
    Deviations d;
    for (const ExpandedState& state : states) {
        if (overPhi) {
            if (state.p < table.lowestP || state.p > table.highestP) continue;
            const ExpandedState found = expandedAtP(table, state.p);
            d.rhol = std::max(d.rhol, std::fabs(found.rhol / state.rhol - 1.0));
            d.rhov = std::max(d.rhov, std::fabs(found.rhov / state.rhov - 1.0));
            d.T = std::max(d.T, std::fabs(found.T / state.T - 1.0));
        } else {
            const ExpandedState found = expandedAtT(table, state.T);
            d.rhol = std::max(d.rhol, std::fabs(found.rhol / state.rhol - 1.0));
            d.rhov = std::max(d.rhov, std::fabs(found.rhov / state.rhov - 1.0));
            d.p = std::max(d.p, std::fabs(found.p / state.p - 1.0));
        }
    }
    return d;
}

// The smallest pieces of the one kind that are close enough, laid into the table.
bool choosePieces(ExpansionTable& table, const std::vector<ExpandedState>& states, double bound, bool overPhi,
                  Deviations& reached) {
    ExpansionTable best;
    int room = mostCoefficients + 1;
    double closest = 1e300;
    ExpansionPieces& pieces = overPhi ? table.overPhi : table.overTheta;
    ExpansionPieces& other = overPhi ? table.overTheta : table.overPhi;
    if (other.count == 0) other = {.count = 2, .order = 2};
    // True where so many pieces and coefficients are close enough.
    const auto tried = [&](const Fit& fit, int count, int order) {
        pieces = {.count = count, .order = order};
        if (!layPieces(table)) return false;
        lay(fit, order, overPhi ? table.thetas : table.line);
        const Deviations d = deviations(table, states, overPhi);
        closest = std::min(closest, d.largest());
        if (!(d.largest() <= bound)) return false;
        room = count * order;
        best = table;
        reached = d;
        return true;
    };
    const auto fitted = [&](int count) { return overPhi ? fitOverPhi(table, count) : fitOverTheta(table, count); };
    // where the most do not come close enough, none does
    bool possible = tried(fitted(mostPieces), mostPieces, longestSeries);
    for (int count = fewestPieces; possible && count * smallestOrder < room; ++count) {
        const Fit fit = fitted(count);
        for (int order = smallestOrder; order <= longestSeries && count * order < room; ++order)
            if (tried(fit, count, order)) break;
    }
    if (room > mostCoefficients) {
        std::printf("   not closer than %.1e %s up to %.2f K\n", closest, overPhi ? "over phi" : "over theta",
                    table.highestT);
        return false;
    }
    table = best;
    return true;
}

bool makeTable(ExpansionTable& table, double share, double bound, Deviations& atT, Deviations& atP) {
    table = {};
    table.fingerprint = equationFingerprint(1);
    table.Tr = critical.T;
    table.pr = critical.p;
    table.R = fluidConstants.R;
    double tmin, tmax, Dmax, pmax;
    LIMITS("EOS", z, tmin, tmax, Dmax, pmax);
    table.lowestT = std::max(tmin, fluidConstants.TTPN[1]);
    table.highestT = share * critical.T;
    ExpandedState low, high;
    const auto tooCold = [&] { return !stateAt(table.lowestT, low) || low.rhov < thinnest * fluidConstants.RHOZ[1]; };
    for (int k = 0; k < 200 && tooCold(); ++k) table.lowestT += 1e-3 * critical.T;
    if (low.p == 0.0 || !stateAt(table.highestT, high)) return false;
    table.lowestP = std::max(low.p, fluidConstants.PTPN[1]);
    table.highestP = high.p;
    std::mt19937_64 generator(20);
    std::uniform_real_distribution<double> uniform(0.0, 1.0);
    std::vector<ExpandedState> states;
    for (int k = 0; k < testStates; ++k) {
        ExpandedState state;
        const double T = table.lowestT + uniform(generator) * (table.highestT - table.lowestT);
        if (!stateAt(T, state)) {
            std::printf("   no state at %.12g K\n", T);
            return false;
        }
        states.push_back(state);
    }
    return choosePieces(table, states, bound, false, atT) && choosePieces(table, states, bound, true, atP);
}

// A line of numbers, each with as many digits as it takes to read the same number.
void writeNumbers(std::FILE* file, std::initializer_list<double> numbers) {
    const char* between = "";
    for (const double number : numbers) {
        char text[40];
        *std::to_chars(text, text + sizeof text - 1, number).ptr = '\0';
        std::fprintf(file, "%s%s", between, text);
        between = " ";
    }
    std::fprintf(file, "\n");
}

bool write(const ExpansionTable& table, const std::string& name, const fs::path& path) {
    std::FILE* file = std::fopen(path.string().c_str(), "w");
    if (file == nullptr) return false;
    std::fprintf(file, "Saturation of %s in Chebyshev series, made from its equation of state by make_expansions\n",
                 name.c_str());
    std::fprintf(file, "1\n%016llx\n", static_cast<unsigned long long>(table.fingerprint));
    writeNumbers(file, {table.Tr, table.pr, table.R});
    writeNumbers(file, {table.lowestT, table.highestT, table.lowestP, table.highestP});
    std::fprintf(file, "%d %d %d %d\n", table.overTheta.count, table.overTheta.order, table.overPhi.count,
                 table.overPhi.order);
    const double* c = table.line;
    for (int k = 0; k < table.overTheta.count * table.overTheta.order; ++k, c += expandedOverTheta)
        writeNumbers(file, {c[0], c[1], c[2]});
    c = table.thetas;
    for (int k = 0; k < table.overPhi.count * table.overPhi.order; ++k, ++c) writeNumbers(file, {*c});
    return std::fclose(file) == 0;
}

bool makeFile(const std::string& data, const std::string& name) {
    const fs::path path = fs::path(data) / "fluids" / (name + ".SAT");
    fs::remove(path);
    if (test::setUp(name) > 0) {
        std::printf("%-9s no set-up\n", name.c_str());
        return false;
    }
    if (!hasPlainHelmholtzEnergy(1)) {
        std::printf("%-9s no Helmholtz equation\n", name.c_str());
        return true;
    }
    z = unitComposition(1);
    RMIX(z);
    critical = criticalPointOf(z);
    static ExpansionTable table;
    for (const double bound : closeEnough) {
        for (const double share : hottest) {
            Deviations atT, atP;
            if (!makeTable(table, share, bound, atT, atP)) continue;
            std::printf(
                "%-9s %7.2f to %7.2f K (%.3f Tc), %2d x %2d and %2d x %2d; p %.1e rhol %.1e rhov %.1e; at p "
                "T %.1e rhol %.1e rhov %.1e\n",
                name.c_str(), table.lowestT, table.highestT, share, table.overTheta.count, table.overTheta.order,
                table.overPhi.count, table.overPhi.order, atT.p, atT.rhol, atT.rhov, atP.T, atP.rhol, atP.rhov);
            return write(table, name, path);
        }
    }
    std::printf("%-9s no expansions are close enough\n", name.c_str());
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    std::string data = test::dataFolder;
    std::vector<std::string> names;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == "--data" && i + 1 < argc)
            data = argv[++i];
        else
            names.push_back(argument);
    }
    if (names.empty())
        for (const auto& entry : fs::directory_iterator(fs::path(data) / "fluids"))
            if (entry.path().extension() == ".FLD") names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    bool whole = true;
    for (const std::string& name : names) whole = makeFile(data, name) && whole;
    return whole ? 0 : 1;
}
