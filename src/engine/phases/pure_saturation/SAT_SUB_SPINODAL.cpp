#include "SAT_SUB_SPINODAL.h"

#include <algorithm>
#include <cmath>

#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "RootBracket.h"
#include "SaturationBricks.h"
#include "TPRHO.h"
#include "UTILITY.h"
#include "UTILITY_NUMERICS.h"

namespace frigana {
namespace {

constexpr int mostTablePoints = 1000;

// Density of one spinodal over temperature, for the fluid in one component slot.
struct SpinodalTable {
    int icomp = 0;
    int points = 0;
    Array1<double, mostTablePoints> T{}, rho{}, curvature{};

    void add(double temperature, double density) {
        ++points;
        T[points] = temperature;
        rho[points] = density;
    }
};

SpinodalTable liquidTable, vaporTable;

// One side of the spinodal: what differs between liquid and vapor.
struct Side {
    std::string_view aboveCritical, notConverged;
    double outward;  // factor that leads from the critical density into the side
    SpinodalTable& table;
    bool (*inside)(double rho, double Dc);
};

const Side liquidSide{
    "[LIQSPNDL error 121] temperature input to spinodal routine is greater than critical temperature; T =",
    "[LIQSPNDL error 124] iteration for spinodals did not converge; T =", 1.02, liquidTable,
    [](double rho, double Dc) { return rho >= Dc; }};
const Side vaporSide{
    "[VAPSPNDL error 121] temperature input to spinodal routine is greater than critical temperature; T =",
    "[VAPSPNDL error 124] iteration for spinodals did not converge; T =", 1.0 / 1.02, vaporTable,
    [](double rho, double Dc) { return rho <= Dc; }};

double slope(double T, double rho, const Composition& x) {
    double dpdrho;
    DPDD(T, rho, x, dpdrho);
    return dpdrho;
}

// Start from the table; false if it does not hold this fluid or temperature.
bool startFromTable(const SpinodalTable& table, int icomp, double T, double& rho) {
    if (table.points < 2 || table.icomp != icomp) return false;
    int ierr;
    Text255 herr;
    CSPLNVAL(table.points - 1, table.T.items, table.rho.items, table.curvature.items, T, rho, ierr, herr);
    return ierr == 0;
}

void spinodal(const Side& side, double start, double T, const Composition& x, int icomp, double& rho, int& ierr,
              Text255& herr) {
    ierr = 0;
    herr.clear();
    double Tc, pc, Dc;
    CRITP(x, Tc, pc, Dc, ierr, herr);
    ierr = 0;
    herr.clear();
    if (icomp > 0 && T > Tc + 1e-8) {
        temperatureAboveCritical(side.aboveCritical, T, Tc, ierr, herr);
        return;
    }
    if (rho <= 0.0 && !startFromTable(side.table, icomp, T, rho)) rho = start;

    // Newton's method on dp/drho, as long as it stays on its side of the critical density
    constexpr double finest = 1e-8;  // [kPa L/mol]
    double tolerance = finest;
    double last = rho, dpdrho = 0.0;
    for (int step = 1; step <= 30 && side.inside(rho, Dc); ++step) {
        if (step == 10 || step == 15) tolerance *= 100.0;
        dpdrho = slope(T, rho, x);
        if (std::fabs(dpdrho) < tolerance) return;
        double d2pdrho2;
        DPDD2(T, rho, x, d2pdrho2);
        last = rho;
        if (std::fabs(d2pdrho2) > 1e-20) rho -= dpdrho / d2pdrho2;
    }

    // a bracket: the last two points, or the first change of sign on the way out from the critical density
    double inner = last, outer = rho;
    double innerSlope = dpdrho, outerSlope = slope(T, rho, x);
    bool bracketed = side.inside(inner, Dc) && side.inside(outer, Dc) && innerSlope * outerSlope < 0.0;
    if (!bracketed) {
        inner = Dc;
        innerSlope = slope(T, inner, x);
        for (int move = 1; move <= 100 && !bracketed; ++move) {
            outer = inner * side.outward;
            outerSlope = slope(T, outer, x);
            bracketed = innerSlope * outerSlope <= 0.0;
            if (!bracketed) {
                inner = outer;
                innerSlope = outerSlope;
            }
        }
    }
    if (bracketed) {
        for (int step = 1; step <= 100; ++step) {
            if (outerSlope == innerSlope) break;
            rho = inner - innerSlope * (outer - inner) / (outerSlope - innerSlope);
            dpdrho = slope(T, rho, x);
            if (std::fabs(dpdrho) < finest) return;
            if (dpdrho * innerSlope > 0.0) {
                inner = rho;
                innerSlope = dpdrho;
            } else {
                outer = rho;
                outerSlope = dpdrho;
            }
        }
    }
    ierr = 124;
    rho = Dc;
    message(herr, side.notConverged, General{12, 5, T}, " K.", nullCharacter);
    ERRMSG(ierr, herr);
}

// Ends the table of a spinodal with its spline.
void finishTable(SpinodalTable& table, int icomp, std::string_view tooFew, int& ierr, Text255& herr) {
    if (table.points < 5) {
        table.points = 0;
        ierr = 2;
        message(herr, tooFew, nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    table.icomp = icomp;
    CSPLINE(table.points - 1, table.T.items, table.rho.items, table.curvature.items);
    ierr = 0;
    herr.clear();
}

// True if a table can be made for the slot: the fluid of the set-up is pure, or one component was selected.
bool pureSlot(int icomp, std::string_view refusal, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    if (icomp >= 1 && icomp <= modelTags.NC) return true;
    ierr = 1;
    message(herr, refusal, nullCharacter);
    ERRMSG(ierr, herr);
    return false;
}

using Spinodal = void (*)(double, const Composition&, double&, int&, Text255&);

// Steps from T, count points with the given step; each starts from the density of the last, failed points are left out.
void tabulate(SpinodalTable& table, Spinodal locate, const Composition& x, int count, double step, double& T,
              double& rho) {
    for (int k = 1; k <= count; ++k) {
        int ierr;
        Text255 herr;
        double density = rho;
        locate(T, x, density, ierr, herr);
        if (ierr == 0) {
            rho = density;
            table.add(T, rho);
        }
        if (k < count) T += step;
    }
}

}  // namespace

void resetSpinodalTables() {
    liquidTable.points = 0;
    vaporTable.points = 0;
}

void TPRHOB(double T, double p, double rho1, double rho2, const Composition& x, double& rho, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    const double lower = std::min(rho1, rho2), upper = std::max(rho1, rho2);
    rho = 0.5 * (lower + upper);
    double tolerance = 1e-9;  // [kPa]
    for (int step = 1; step <= 24; ++step) {
        if (step == 10 || step == 15) tolerance *= 100.0;
        double pressure, dpdrho;
        PRESS(T, rho, x, pressure);
        if (std::fabs(pressure - p) < tolerance) return;
        DPDD(T, rho, x, dpdrho);
        if (std::fabs(dpdrho) > 1e-20) {
            const double next = rho + (p - pressure) / dpdrho;
            rho = next < lower ? 0.5 * (rho + lower) : next > upper ? 0.5 * (rho + upper) : next;
        }
    }
    ierr = 1;
}

void LIQSPNDL(double T, const Composition& x, double& rho, int& ierr, Text255& herr) {
    int icomp;
    ISPURE(x, icomp);
    spinodal(liquidSide, fluidConstants.DTPN[icomp], T, x, icomp, rho, ierr, herr);
}

void VAPSPNDL(double T, const Composition& x, double& rho, int& ierr, Text255& herr) {
    int icomp;
    ISPURE(x, icomp);
    spinodal(vaporSide, 0.1, T, x, icomp, rho, ierr, herr);
}

void SETLSPNDL(int icomp, int& ierr, Text255& herr) {
    if (!pureSlot(icomp, "[SETLSPNDL error 1] SETLSPNDL can handle pure fluids only", ierr, herr)) return;
    const Composition x = unitComposition(icomp);
    const double Tc = fluidConstants.TCRIT[icomp], Ttp = fluidConstants.TTPN[icomp];
    SpinodalTable& table = liquidTable;
    table.points = 0;
    double T = Ttp, rho = fluidConstants.DTPN[icomp];
    // 990 and 10 points, which share one
    double step = 0.85 * (Tc - Ttp) / 989.0;
    tabulate(table, LIQSPNDL, x, 990, step, T, rho);
    step = (Tc - T) / 9.0;
    T += step;
    tabulate(table, LIQSPNDL, x, 9, step, T, rho);
    finishTable(table, icomp, "[SETLSPNDL error 2] Less then 5 points converged in LIQSPNDL", ierr, herr);
}

void SETVSPNDL(int icomp, int& ierr, Text255& herr) {
    if (!pureSlot(icomp, "[SETVSPNDL error 1] SETVSPNDL can handle pure fluids only", ierr, herr)) return;
    const Composition x = unitComposition(icomp);
    RMIX(x);
    const double Tc = fluidConstants.TCRIT[icomp], Ttp = fluidConstants.TTPN[icomp];
    double start = fluidConstants.PTPN[icomp] / (fluidConstants.R * Ttp);
    if (start > 200.0) start = 1e-10;
    SpinodalTable& table = vaporTable;
    table.points = 0;

    // 10 points downward from the triple point, then turned round; 980 and 10 points upward, which share their ends
    double T = Ttp, rho = start;
    tabulate(table, VAPSPNDL, x, 10, -0.25 * Ttp / 9.0, T, rho);
    std::reverse(table.T.items, table.T.items + table.points);
    std::reverse(table.rho.items, table.rho.items + table.points);

    const bool tripleKnown = table.points > 0;
    T = tripleKnown ? table.T[table.points] : Ttp;
    rho = tripleKnown ? table.rho[table.points] : start;
    double step = 0.85 * (Tc - T) / 979.0;
    T += step;
    tabulate(table, VAPSPNDL, x, 979, step, T, rho);
    step = (Tc - T) / 9.0;
    T += step;
    tabulate(table, VAPSPNDL, x, 9, step, T, rho);
    finishTable(table, icomp, "[SETVSPNDL error 2] Less then 5 points converged in VAPSPNDL", ierr, herr);
}

}  // namespace frigana
