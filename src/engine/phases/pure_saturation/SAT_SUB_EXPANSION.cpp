#include "SAT_SUB_EXPANSION.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "FluidFilePath.h"
#include "ModelTags.h"
#include "SAT_SUB_PURE_NEWTON.h"
#include "TextFile.h"

namespace frigana {

ExpansionControl expansionControl;

namespace {

// The tables of the fluids that were asked for often, whatever set-up that was in.
constexpr int keptTables = 4;
struct KeptTable {
    bool valid = false;
    FileStamp stamp;
    ExpansionTable table;
};
KeptTable kept[keptTables];
int nextKept = 0;

struct SlotUse {
    int asked = 0;
    const ExpansionTable* table = nullptr;
};
SlotArray<SlotUse> uses;

double thetaOf(const ExpansionTable& table, double T) {
    return std::sqrt(1.0 - T / table.Tr);
}

double phiOf(const ExpansionTable& table, double p) {
    return std::sqrt(std::log(table.pr / p));
}

// The piece that a value lies in, and where: from -1 to 1.
struct Place {
    std::ptrdiff_t piece;
    double x;
};
Place placeOf(const ExpansionPieces& pieces, double variable) {
    const double along = (variable - pieces.first) * pieces.perUnit;
    const int piece = std::clamp(static_cast<int>(along), 0, pieces.count - 1);
    return {piece, 2.0 * (along - piece) - 1.0};
}

// Sums of Chebyshev polynomials with coefficients side by side, from the highest order down (Clenshaw's recurrence).
template <int functions>
void sumSeries(const double* coefficients, int order, double x, double (&sum)[functions]) {
    double last[functions] = {}, beforeLast[functions] = {};
    const double twice = 2.0 * x;
    for (std::ptrdiff_t k = order - 1; k >= 1; --k) {
        const double* const c = coefficients + k * functions;
        for (int f = 0; f < functions; ++f) {
            const double next = (c[f] - beforeLast[f]) + twice * last[f];
            beforeLast[f] = last[f];
            last[f] = next;
        }
    }
    for (int f = 0; f < functions; ++f) sum[f] = (coefficients[f] - beforeLast[f]) + x * last[f];
}

enum LineFunction { logarithmOfPressure, liquidDensity, compressibility };

void atTheta(const ExpansionTable& table, double theta, double (&line)[expandedOverTheta]) {
    const Place place = placeOf(table.overTheta, theta);
    sumSeries(table.line + expandedOverTheta * place.piece * table.overTheta.order, table.overTheta.order, place.x,
              line);
}

double thetaAtPhi(const ExpansionTable& table, double phi) {
    const Place place = placeOf(table.overPhi, phi);
    double theta[1];
    sumSeries(table.thetas + place.piece * table.overPhi.order, table.overPhi.order, place.x, theta);
    return theta[0];
}

// The table of a slot's equation: one that is kept, or that of the file beside the fluid file.
const ExpansionTable* findTable(int icomp) {
    if (!hasPlainHelmholtzEnergy(icomp) || modelTags.HEOS == "AGA") return nullptr;
    int unit = 1;
    FileStamp stamp;
    if (!openBesideFluid(icomp, ".SAT", unit) || !stampOf(unit, stamp)) return nullptr;
    const std::uint64_t fingerprint = equationFingerprint(icomp);
    const KeptTable* found = nullptr;
    for (const KeptTable& one : kept)
        if (one.valid && one.table.fingerprint == fingerprint && stamp.settled && one.stamp.same(stamp)) found = &one;
    if (found == nullptr) {
        KeptTable& room = kept[nextKept];
        for (SlotUse& use : uses)
            if (use.table == &room.table) use.table = nullptr;
        room.valid = readExpansions(unit, room.table) && room.table.fingerprint == fingerprint;
        room.stamp = stamp;
        if (room.valid) {
            found = &room;
            nextKept = (nextKept + 1) % keptTables;
        }
    }
    closeUnit(unit);
    return found != nullptr ? &found->table : nullptr;
}

// The table that a slot is to use now; none before enough states were asked for.
const ExpansionTable* tableOf(int icomp) {
    if (!expansionControl.enabled || !pureNewtonControl.enabled) return nullptr;
    ++expansionControl.asked;
    SlotUse& use = uses[icomp];
    if (use.asked < statesBeforeExpansions && ++use.asked == statesBeforeExpansions) use.table = findTable(icomp);
    return use.table;
}

}  // namespace

bool layPieces(ExpansionTable& table) {
    const bool ranges = 0.0 < table.lowestT && table.lowestT < table.highestT && table.highestT < table.Tr &&
                        0.0 < table.lowestP && table.lowestP < table.highestP && table.highestP < table.pr &&
                        table.R > 0.0;
    if (!ranges) return false;
    const auto lay = [](ExpansionPieces& pieces, double first, double last) {
        if (pieces.count < 2 || pieces.order < 2 || pieces.order > largestOrder ||
            pieces.count > mostCoefficients / pieces.order)
            return false;
        pieces.first = first;
        pieces.perUnit = pieces.count / (last - first);
        return std::isfinite(pieces.perUnit);
    };
    return lay(table.overTheta, thetaOf(table, table.highestT), thetaOf(table, table.lowestT)) &&
           lay(table.overPhi, phiOf(table, table.highestP), phiOf(table, table.lowestP));
}

ExpandedState expandedAtT(const ExpansionTable& table, double T) {
    double line[expandedOverTheta];
    atTheta(table, thetaOf(table, T), line);
    const double p = table.pr * std::exp(line[logarithmOfPressure]);
    return {T, p, line[liquidDensity], p / (table.R * T * line[compressibility])};
}

ExpandedState expandedAtP(const ExpansionTable& table, double p) {
    const double theta = thetaAtPhi(table, phiOf(table, p));
    const double T = table.Tr * (1.0 - theta * theta);
    double line[expandedOverTheta];
    atTheta(table, theta, line);
    return {T, p, line[liquidDensity], p / (table.R * T * line[compressibility])};
}

bool expansionAtTemperature(int icomp, double T, double& p, double& rhol, double& rhov) {
    const ExpansionTable* const table = tableOf(icomp);
    if (table == nullptr || !(T >= table->lowestT && T <= table->highestT)) return false;
    const ExpandedState state = expandedAtT(*table, T);
    ++expansionControl.answered;
    p = state.p;
    rhol = state.rhol;
    rhov = state.rhov;
    return true;
}

bool expansionAtPressure(int icomp, double p, double& T, double& rhol, double& rhov) {
    const ExpansionTable* const table = tableOf(icomp);
    if (table == nullptr || !(p >= table->lowestP && p <= table->highestP)) return false;
    const ExpandedState state = expandedAtP(*table, p);
    ++expansionControl.answered;
    T = state.T;
    rhol = state.rhol;
    rhov = state.rhov;
    return true;
}

int statesUntilExpansions(int icomp) {
    return statesBeforeExpansions - uses[icomp].asked;
}

void countAsAsked(int icomp, int states) {
    if (uses[icomp].asked < statesBeforeExpansions) uses[icomp].asked += states;
}

void forgetExpansions() {
    for (SlotUse& use : uses) use = {};
}

}  // namespace frigana
