// Tracing of the phase envelope into splines.
#include <algorithm>
#include <cmath>

#include "CORE_PR.h"
#include "MIX_HMX.h"
#include "Message.h"
#include "PROP_SUB.h"
#include "SAT_SUB_MIXTURE.h"
#include "SAT_SUB_NEWTON.h"
#include "SAT_SUB_SPLINE.h"
#include "SaturationSpline.h"
#include "TPRHO.h"
#include "UTILITY.h"
#include "UTILITY_NUMERICS.h"

namespace frigana {

namespace {

constexpr double zeroFraction = -500.0;  // in place of the logarithm of 0
constexpr double densityStep = 0.1;      // [mol/L]
constexpr int mostSkipped = 15;

// A point of the envelope: y is the composition that is traced, x the incipient phase.
struct EnvelopeState {
    double T, P, rhox, rhoy;
    Composition x, y;
};

void recordRow(const EnvelopeState& s, double rho, double p) {
    SaturationSpline& table = saturationSpline;
    const int nc = modelTags.NC, row = ++table.NSPLINE;
    table.XARR[0][row] = std::log(rho);
    for (int i = 1; i <= nc; ++i) table.XARR[i][row] = s.x[i] > 0.0 ? std::log(s.x[i]) : zeroFraction;
    table.XARR[nc + 1][row] = std::log(s.T);
    table.XARR[nc + 2][row] = std::log(p);
    table.XARR[nc + 3][row] = std::log(s.rhox);
    double pressure, e, h, entropy, cv, cp, w, jt;
    THERM(s.T, rho, s.y, pressure, e, h, entropy, cv, cp, w, jt);
    table.XARR[nc + 4][row] = h;
    table.XARR[nc + 5][row] = entropy;
}

// The table below the first density, in the ideal gas.
void recordThinGas(const EnvelopeState& s) {
    constexpr int lastThinRow = 4;
    double rho = 1e-10;
    while (rho < s.rhoy && saturationSpline.NSPLINE < lastThinRow) {
        recordRow(s, rho, rho * fluidConstants.R * s.T);
        rho *= 100.0;
    }
}

// Column at a density by the polynomial through three rows, `skipped` rows before the last.
double predicted(int column, double lnRho, int skipped) {
    const SaturationSpline& table = saturationSpline;
    double xi[3], yi[3], value = 0.0;
    for (int k = 0; k < 3; ++k) {
        const int row = std::max(1, table.NSPLINE - skipped - 2) + k;
        xi[k] = table.XARR[0][row];
        yi[k] = table.XARR[column][row];
    }
    POLYN(3, xi, yi, lnRho, value);
    return value;
}

void predict(double rho, int skipped, EnvelopeState& s) {
    const int nc = modelTags.NC;
    const double lnRho = std::log(rho);
    double sum = 0.0;
    for (int i = 1; i <= nc; ++i) {
        if (s.y[i] <= 0.0) continue;
        s.x[i] = std::exp(std::min(predicted(i, lnRho, skipped), 0.0));
        sum += s.x[i];
    }
    for (int i = 1; i <= nc; ++i) s.x[i] /= sum;
    s.T = std::exp(predicted(nc + 1, lnRho, skipped));
    s.P = std::exp(predicted(nc + 2, lnRho, skipped));
    s.rhox = std::exp(predicted(nc + 3, lnRho, skipped));
}

// History of the slopes d(rhox)/d(rhoy), by which a jump to another root is seen.
class SlopeTest {
  public:
    bool jumps(double slope, double rho, double Dc, int row) {
        const bool tested = row > 10 && std::fabs(slope) > 0.1 && rho > 0.7 * Dc && rho < 1.3 * Dc && count_ >= 9;
        bool jump = false;
        if (tested) {
            double mean = 0.0;
            for (int k = 0; k < 9; ++k) mean += history_[k] / 9.0;
            const double last = history_[0];
            const bool differs = (slope < 0.0) != (mean < 0.0) || std::fabs(slope) > std::fabs(mean);
            jump = differs && std::fabs(last) > 0.1 && std::fabs((slope - last) / last) > 5.0;
        }
        if (!jump) {
            for (int k = kept - 1; k > 0; --k) history_[k] = history_[k - 1];
            history_[0] = slope;
            count_ = std::min(count_ + 1, kept);
        }
        return jump;
    }

  private:
    static constexpr int kept = 20;
    double history_[kept] = {};
    int count_ = 0;
};

// A dew point at the pressure of s by Newton's method alone.
NewtonEnd dewPoint(const Composition& z, EnvelopeState& s, int& ierr, Text255& herr) {
    PhasePair pair{s.T, s.P, s.rhox, s.rhoy, 1.0, s.x, s.y};
    const NewtonEnd end = newtonEquilibrium(pair, z, 4, 0, ierr, herr);
    s = {pair.T, pair.p, pair.Dl, pair.Dv, pair.x, pair.y};
    return end;
}

// First point of the dew line, at the lowest pressure that gives one.
bool firstPoint(const Composition& x, double Tmin, double pmax, double Dmax, EnvelopeState& s, int& ierr,
                Text255& herr) {
    s.T = 300.0;
    for (s.P = 0.001; s.P < pmax; s.P *= 10.0) {
        const NewtonEnd end = dewPoint(x, s, ierr, herr);
        if (end == NewtonEnd::noDerivatives)
            mixtureAtPressure(s.P, x, 2, criticalPointOf(x), Dmax, s.T, s.rhox, s.rhoy, s.x, s.y, ierr, herr);
        if (ierr <= 0 && s.T >= 0.95 * Tmin && std::isfinite(s.T)) return true;
    }
    return false;
}

// Next point of the envelope at a density; false if there is none.
bool nextPoint(double rho, EnvelopeState& s, int& ierr, Text255& herr) {
    const EnvelopeState start = s;
    for (const int ipv : {1, 2}) {
        s = start;
        s.rhoy = rho;
        SATGV(s.T, s.P, start.y, 1.0, rho, ipv, 6, 0, s.rhox, s.rhoy, s.x, s.y, ierr, herr);
        if (ierr == 0) return true;
    }
    if (rho < 1.0) {
        s = start;
        s.P *= 10.0;
        return dewPoint(start.y, s, ierr, herr) == NewtonEnd::found;
    }
    return false;
}

void buildSplines() {
    SaturationSpline& table = saturationSpline;
    const auto rows = static_cast<std::size_t>(table.NSPLINE);
    for (int column = 1; column <= modelTags.NC + 5; ++column)
        CSPLINE(table.NSPLINE - 1, std::span(table.XARR[0].items, rows), std::span(table.XARR[column].items, rows),
                std::span(table.CARR[column].items, rows));
}

// Zero of the slope of a column, or a value of it, from the first start that leads to one.
void characteristicPoint(int column, int iderv, double value, std::initializer_list<double> starts,
                         EnvelopePoint& point) {
    const int nc = modelTags.NC;
    int code = 1;
    Text255 text;
    double D = 0.0;
    for (const double start : starts) {
        D = start;
        SPLNROOT(column, iderv, value, D, code, text);
        if (code == 0) break;
    }
    point = EnvelopePoint{};
    if (code != 0) return;
    point.D = D;
    point.T = SPLNVAL(nc + 1, 0, D, code, text);
    point.p = SPLNVAL(nc + 2, 0, D, code, text);
    point.ierr = 0;
}

}  // namespace

void SATSPLN(const Composition& x, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    int icomp = 0;
    ISPURE(x, icomp);
    if (icomp > 0) return;
    SaturationSpline& table = saturationSpline;
    table.SPLINEREADY = false;
    table.NSPLINE = 0;
    const int nc = modelTags.NC;
    double Tc, Pc, Dc, Tmin, Tmax, Dmax, pmax, slopeT, slopeV;
    int code = 0;
    Text255 text;
    CRITP(x, Tc, Pc, Dc, code, text);
    LIMITS("EOS", x, Tmin, Tmax, Dmax, pmax);
    RDXHMX(1, 1, 0, x, slopeT, slopeV, ierr, herr);
    if (ierr > 0 && !pengRobinsonSelected()) return;
    ierr = 0;
    herr.clear();

    EnvelopeState s{};
    if (!firstPoint(x, Tmin, pmax, Dmax, s, ierr, herr)) {
        ierr = 1;
        message(herr, "[SATSPLN error 1] saturation routine failed in calculating initial state", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    ierr = 0;
    Tmin = std::min(Tmin, s.T);
    s.y = x;

    SlopeTest slopes;
    int skipped = 0, trivialPoints = 0;
    recordThinGas(s);
    recordRow(s, s.rhoy, s.P);
    double rho = s.rhoy;
    EnvelopeState last = s;
    while (table.NSPLINE < mostEnvelopePoints && last.T > 0.999 * Tmin) {
        rho = rho < 0.01 ? rho * 10.0 : rho + densityStep;
        if (rho > 4.0 * Dc && skipped > 0) break;
        s = last;
        if (table.NSPLINE >= 4) predict(rho, skipped, s);
        bool good = nextPoint(rho, s, ierr, herr);
        if (good) {
            const double slope = (s.rhox - last.rhox) / (s.rhoy - last.rhoy);
            good = !slopes.jumps(slope, s.rhoy, Dc, table.NSPLINE);
        }
        if (good) {
            trivialPoints = std::fabs(s.rhox - s.rhoy) / s.rhox < 0.01 ? trivialPoints + 1 : 0;
            if (trivialPoints >= 4) good = false;
        }
        if (good) {
            skipped = 0;
            rho = s.rhoy;
            recordRow(s, rho, s.P);
            last = s;
        } else {
            if (table.NSPLINE > 20) skipped = std::min(skipped + 1, mostSkipped);
            if (rho > 4.0 * Dc) break;
        }
    }
    if (table.NSPLINE < 20) {
        ierr = 2;
        message(herr, "[SATSPLN error 2] saturation routine failed", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    buildSplines();
    table.XSPLN = x;
    table.SPLINEREADY = true;

    int largest = 1;
    for (int i = 2; i <= nc; ++i)
        if (x[i] > x[largest]) largest = i;
    characteristicPoint(nc + 1, 1, 0.0, {Dc / 4.0}, table.highestTemperature);
    characteristicPoint(nc + 2, 1, 0.0, {Dc, Dc / 2.0}, table.highestPressure);
    characteristicPoint(largest, 0, x[largest], {Dc, Dc / 2.0}, table.criticalPoint);
    if (table.criticalPoint.ierr != 0 || table.criticalPoint.p > 50000.0) {
        table.criticalPoint.T = Tc;
        table.criticalPoint.p = Pc;
        table.criticalPoint.D = Dc;
        table.criticalPoint.ierr = 1;
    }
    ierr = 0;
    herr.clear();
}

}  // namespace frigana
