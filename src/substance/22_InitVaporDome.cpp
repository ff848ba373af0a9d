#include "22_InitVaporDome.h"

#include <algorithm>
#include <iterator>

#include "24_SaturationPoints.h"
#include "SAT_SUB_EXPANSION.h"
#include "UTILITY.h"

namespace frigana {

namespace {

constexpr int top = domeRows, lastSolved = domeRows - 1;

// What a dome prints of a point.
struct DomePoint {
    double T = 0, P = 0, H = 0, S = 0;
    bool operator==(const DomePoint&) const = default;
};
constexpr DomeTable SUBSTANCE::*sides[] = {&SUBSTANCE::PTSPL, &SUBSTANCE::PTSPV, &SUBSTANCE::PTSTL, &SUBSTANCE::PTSTV};
constexpr int sideCount = std::size(sides);

// The last domes: the trial solutions of a search and the requests of a study ask for the same one again and again.
struct KnownDome {
    Composition z{};
    bool expanded = false;       // from the saturation table of a pure fluid
    double first = 0, step = 0;  // of the pressures [kPa]; no step: no dome
    DomePoint points[sideCount][lastSolved];
};
constexpr int keptDomes = 4;
KnownDome known[keptDomes];
int oldest = 0;

DomePoint pointOf(const STATEPT& point) {
    return {point.T, point.P, point.H, point.S};
}

void solveRow(SUBSTANCE& substance, double P, int row) {
    PROPMIXTUREP_BD_DOME(substance, P, substance.PTSPL[row], substance.PTSPV[row]);
    const double meanT = (substance.PTSPL[row].T + substance.PTSPV[row].T) / 2.0;
    PROPMIXTURET_BD_DOME(substance, meanT, substance.PTSTL[row], substance.PTSTV[row]);
}

// True if the row is the one of the dome to the last digit.
bool hasRow(const KnownDome& dome, const SUBSTANCE& substance, int row) {
    for (int side = 0; side < sideCount; ++side)
        if (dome.points[side][row - 1] != pointOf((substance.*sides[side])[row])) return false;
    return true;
}

// Takes the rows below the last solved one from a dome of the same fluid and the same pressures. The last one is solved
// for: where it comes out as it did then, to the last digit, equation and reference state are the same, and so is every
// other row.
bool recall(SUBSTANCE& substance, bool expanded, double first, double step) {
    for (const KnownDome& dome : known) {
        if (dome.step == 0.0 || dome.first != first || dome.step != step || dome.expanded != expanded ||
            !std::equal(dome.z.begin(), dome.z.end(), substance.ZMOL.begin()))
            continue;
        solveRow(substance, first + (lastSolved - 1) * step, lastSolved);
        if (!hasRow(dome, substance, lastSolved)) return false;
        for (int side = 0; side < sideCount; ++side)
            for (int row = 1; row < lastSolved; ++row) {
                STATEPT& point = (substance.*sides[side])[row];
                const DomePoint& same = dome.points[side][row - 1];
                point.T = same.T;
                point.P = same.P;
                point.H = same.H;
                point.S = same.S;
            }
        return true;
    }
    return false;
}

void keep(const SUBSTANCE& substance, bool expanded, double first, double step) {
    KnownDome& dome = known[oldest];
    oldest = (oldest + 1) % keptDomes;
    dome.z = substance.ZMOL;
    dome.expanded = expanded;
    dome.first = first;
    dome.step = step;
    for (int side = 0; side < sideCount; ++side)
        for (int row = 1; row <= lastSolved; ++row) dome.points[side][row - 1] = pointOf((substance.*sides[side])[row]);
}

}  // namespace

void INITDATADOME(SUBSTANCE& substance, double PSTART, bool shown) {
    constexpr double lowest = static_cast<double>(0.7f);
    constexpr double highest = static_cast<double>(0.83f);

    // Below the lowest saturation pressure there is nothing to draw.
    const double P1 = std::max(lowest * PSTART, substance.PMIN);
    const double STEP = (highest * substance.PC - P1) / 11.0;
    int pure = 0;
    ISPURE(substance.ZMOL, pure);
    if (pure == 0 && !shown) {
        for (const auto side : sides) (substance.*side).fill({});
        return;
    }
    // How often a pure fluid was asked for decides what answers: a dome in whose midst that changes is solved for.
    const int missing = pure > 0 ? statesUntilExpansions(pure) : 0;
    const bool expanded = pure > 0 && missing == 0;
    const bool ofOneKind = missing == 0 || missing > sideCount * lastSolved;
    if (ofOneKind && recall(substance, expanded, P1, STEP)) {
        if (pure > 0) countAsAsked(pure, sideCount * (lastSolved - 1));
    } else {
        for (int row = 1; row <= lastSolved; ++row) solveRow(substance, P1 + (row - 1) * STEP, row);
        if (ofOneKind) keep(substance, expanded, P1, STEP);
    }

    STATEPT& critical = substance.PTSPL[top];
    critical.T = substance.TC;
    critical.P = substance.PC;
    critical.H = (substance.PTSPL[lastSolved].H + substance.PTSPV[lastSolved].H) / 2.0;
    critical.S = (substance.PTSTL[lastSolved].S + substance.PTSTV[lastSolved].S) / 2.0;
    substance.PTSPV[top] = substance.PTSTL[top] = substance.PTSTV[top] = critical;
}

}  // namespace frigana
