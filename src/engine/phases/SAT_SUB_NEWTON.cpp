#include "SAT_SUB_NEWTON.h"

#include <algorithm>
#include <cmath>

#include "CORE_PR.h"
#include "FLSH_SUB.h"
#include "LIMITS.h"
#include "Message.h"
#include "ModelTags.h"
#include "PHIDERV.h"
#include "PhaseCheck.h"
#include "SAT_SUB.h"
#include "SAT_SUB_INVERSE.h"
#include "SAT_SUB_SPLINE.h"
#include "SaturationSpline.h"
#include "TPRHO.h"
#include "UTILITY.h"
#include "UTILITY_NUMERICS.h"

namespace frigana {

NewtonControl newtonControl;

namespace {

constexpr int largestEquations = 50;
constexpr int mostPasses = 30;
constexpr int liquid = 1, vapor = 2;
constexpr double smallResidual = 1e-8;
constexpr double densestVapor = 1.5;  // [critical density] beyond it the two phases are two liquids
constexpr double sameDensity = 0.1;   // [mol/L] two phases closer than this are one, unless near the critical density

// ln f and its derivatives of one phase, for the components in order of their fractions. The first index of a matrix is
// the fraction that changes, the last fraction of the order making up for it.
struct PhaseDerivatives {
    ComponentArray<double> XLNFI, DPHIDT, DPHIDP;
    ComponentArray<Composition> DPHIDXJ;
};

struct Workspace {
    PhaseDerivatives vap, liq;
    Array1<double, largestEquations> GIBBSEQN, DELTA_X;
    SquareMatrix<largestEquations> XJACMATRIX;
    Composition XVAP_NEW, XLIQ_NEW;
};
Workspace work;

// The components of a fraction above 0 in descending order of it; of equal ones the lower number first.
struct OrderList {
    int m = 0;
    Array1<int, ncmax> o;

    explicit OrderList(const Composition& x) {
        for (int i = 1; i <= modelTags.NC; ++i) {
            if (x[i] == 0.0) continue;
            int at = ++m;
            for (; at > 1 && x[o[at - 1]] < x[i]; --at) o[at] = o[at - 1];
            o[at] = i;
        }
    }
};

void copyDerivatives(const OrderList& order, const Composition& x, PhaseDerivatives& d) {
    const CompositionDerivatives& c = compositionDerivatives;
    const int m = order.m, last = order.o[m];
    for (int j = 1; j <= m; ++j) {
        const int oj = order.o[j];
        d.XLNFI[j] = c.XLNFI[oj];
        d.DPHIDT[j] = c.DPHIDT[oj];
        d.DPHIDP[j] = c.DPHIDP[oj];
        for (int i = 1; i <= m; ++i) d.DPHIDXJ[i][j] = c.DPHIDXJ[order.o[i]][oj] - c.DLNPHIIDXJ[last][oj];
    }
    for (int i = 1; i <= m; ++i) d.DPHIDXJ[i][m] -= 1.0 / x[last];
}

double largestOf(const Array1<double, largestEquations>& values, int n) {
    double largest = 0.0;
    for (int i = 1; i <= n; ++i) {
        const double size = std::fabs(values[i]);
        if (!(size <= largest)) largest = size;  // not-a-number counts as large
    }
    return largest;
}

// One call of SATTP: what is given, what is solved for, and the road between.
struct Solution {
    double &T, &p;
    const Composition& z;
    const int kph;  // 0 to 4, without its sign
    double &D, &rhol, &rhov;
    Composition &xliq, &xvap;
    double& q;
    int& ierr;
    Text255& herr;

    bool bubble() const { return kph == 1 || kph == 3; }
    bool givenT() const { return kph == 1 || kph == 2; }
    bool equalPhases(double Dc) const {
        return std::fabs(rhol - rhov) < sameDensity && std::fabs(rhol - Dc) > sameDensity;
    }
    bool pure() const {
        int icomp = 0;
        ISPURE(z, icomp);
        return icomp > 0;
    }
    void setQuality() {
        if (kph == 0) return;
        q = bubble() ? 0.0 : 1.0;
        D = bubble() ? rhol : rhov;
    }
};

// Share of the vapor and bulk density of a two-phase state.
void leverRule(Solution& s, const OrderList& order) {
    // every component gives the same share; the one whose fractions differ most gives the most digits
    int widest = order.o[1];
    for (int i = 2; i <= order.m; ++i) {
        const int oi = order.o[i];
        if (std::fabs(s.xvap[oi] - s.xliq[oi]) > std::fabs(s.xvap[widest] - s.xliq[widest])) widest = oi;
    }
    s.q = (s.z[widest] - s.xliq[widest]) / (s.xvap[widest] - s.xliq[widest]);
    s.D = 1.0 / ((1.0 - s.q) / s.rhol + s.q / s.rhov);
    closeBalance(s.z, s.q, s.xliq, s.xvap);
}

bool acceptable(const Solution& s, double Pc, double Dc, double coldest);
enum class Outcome { leave, noDerivatives };
enum class Start { estimate, nearby };
Outcome iterate(Solution& s, const OrderList& order, int kguess, Start start = Start::estimate);

// A state to go back to.
struct LinePlace {
    double T, p, D, rhol, rhov, q;
    Composition xliq, xvap;
    void restore(Solution& s) const {
        s.T = T;
        s.p = p;
        s.D = D;
        s.rhol = rhol;
        s.rhov = rhov;
        s.q = q;
        s.xliq = xliq;
        s.xvap = xvap;
    }
};

// The substitution methods, with a way back into SATTP barred. They may stop where progress has become slow, a little
// before the equilibrium: Newton's method goes the rest.
void classicalPath(Solution& s, const OrderList& order, double Pc, double Dc, double coldest) {
    newtonControl.NOSATTP = 1;
    if (s.kph == 0) {
        double e, h, entropy, cv, cp, w;
        TPFLSH(s.T, s.p, s.z, s.D, s.rhol, s.rhov, s.xliq, s.xvap, s.q, e, h, entropy, cv, cp, w, s.ierr, s.herr);
    } else if (s.givenT()) {
        SATT(s.T, s.z, s.kph, s.p, s.rhol, s.rhov, s.xliq, s.xvap, s.ierr, s.herr);
    } else {
        SATP(s.p, s.z, s.kph - 2, s.T, s.rhol, s.rhov, s.xliq, s.xvap, s.ierr, s.herr);
    }
    s.setQuality();
    newtonControl.NOSATTP = 0;
    if (s.ierr != 0) return;
    // equations without composition derivatives, or with a liquid of another model, have only this method
    const bool checked = !s.pure() && modelTags.HEOS == "HMX";
    bool good = !s.equalPhases(Dc) && s.rhol + s.rhov >= Dc;
    if (good && checked && !phasesInEquilibrium(s.T, s.p, s.rhol, s.xliq, s.rhov, s.xvap, tightEquilibrium)) {
        const LinePlace before{s.T, s.p, s.D, s.rhol, s.rhov, s.q, s.xliq, s.xvap};
        if (iterate(s, order, 1) == Outcome::leave && acceptable(s, Pc, Dc, coldest)) {
            if (s.kph == 0) leverRule(s, order);
            s.setQuality();
        } else {
            before.restore(s);
        }
        good = phasesInEquilibrium(s.T, s.p, s.rhol, s.xliq, s.rhov, s.xvap);
        if (good) {
            s.ierr = 0;
            s.herr.clear();
        }
    }
    if (!good || s.T < coldest ||
        (checked &&
         (vaporIsNone(s.T, s.p, s.rhov, s.xvap, Pc) || nearbyPhasesFallApart(s.T, s.rhol, s.xliq, s.rhov, s.xvap)))) {
        s.ierr = 1;
        message(s.herr, "SATTP:  Iteration failed");
    }
}

// Starts from the envelope splines; false where they cannot help.
bool splineStart(Solution& s, bool retrograde, double Dc) {
    const int nc = modelTags.NC;
    int code = 0;
    Text255 text;
    double tm, pm, Dmt, tp, pp, Dmp;
    MAXT(s.z, tm, pm, Dmt, code, text);
    MAXP(s.z, tp, pp, Dmp, code, text);
    double D = s.bubble() ? 2.0 * Dc : Dc / 10.0;
    if (retrograde && Dmt > 0.0) D = (Dmt + Dc) / 2.0;
    const int column = s.givenT() ? nc + 1 : nc + 2;
    const double target = s.givenT() ? s.T : s.p;
    SPLNROOT(column, 0, target, D, code, text);
    if (code != 0) {
        D = D < 1e-5 ? 0.75 * Dc : 0.75 * D;
        SPLNROOT(column, 0, target, D, code, text);
    }
    if (code != 0) D = 2.0 * Dc;
    // on the bubble line temperature and pressure fall with the density of the phase that is given
    const double slope = SPLNVAL(column, 1, D, code, text);
    if (code != 0 || (s.bubble() && slope > 0.0)) return false;

    Composition incipient{};
    double sum = 0.0;
    for (int i = 1; i <= nc; ++i) {
        incipient[i] = s.z[i] == 0.0 ? 0.0 : std::fabs(SPLNVAL(i, 0, D, code, text));
        sum += incipient[i];
    }
    if (!(sum > 0.0)) return false;
    double sumZ = 0.0;
    for (int i = 1; i <= nc; ++i) sumZ += s.z[i];
    Composition parent = s.z;
    for (int i = 1; i <= nc; ++i) {
        incipient[i] /= sum;
        parent[i] /= sumZ;
    }
    s.rhol = s.rhov = D;
    (s.bubble() ? s.rhov : s.rhol) = SPLNVAL(nc + 3, 0, D, code, text);
    s.xliq = s.bubble() ? parent : incipient;
    s.xvap = s.bubble() ? incipient : parent;
    if (s.givenT())
        s.p = SPLNVAL(nc + 2, 0, D, code, text);
    else
        s.T = SPLNVAL(nc + 1, 0, D, code, text);
    return true;
}

// Density of the liquid; where there is none, the unknown is moved a little to where there may be one.
void liquidDensity(Solution& s, int guess, double& Dl, int& code, Text255& text) {
    TPRHO(s.T, s.p, s.xliq, liquid, guess, Dl, code, text);
    if (code <= 0) return;
    if (s.kph == 3) {
        for (int attempt = 1; attempt <= 2; ++attempt) {
            s.T -= 5.0;
            TPRHO(s.T, s.p, s.xliq, liquid, 0, Dl, code, text);
            if (code <= 0) return;
        }
        s.T += 10.0;
    }
    if (s.kph == 1) {
        const double before = s.p;
        for (const double factor : {1.2, 1.5, 1.5}) {
            s.p *= factor;
            TPRHO(s.T, s.p, s.xliq, liquid, 0, Dl, code, text);
            if (code <= 0) return;
        }
        s.p = before;
    }
    TPRHO(s.T, s.p, s.xliq, vapor, 0, Dl, code, text);
}

// Place in the order, not the last, of the component whose fractions differ most between the phases.
int widestComponent(const Solution& s, const OrderList& order) {
    int widest = 1;
    double width = -1.0;
    for (int i = 1; i < order.m; ++i) {
        const double here = std::fabs(s.xvap[order.o[i]] - s.xliq[order.o[i]]);
        if (here > width) {
            widest = i;
            width = here;
        }
    }
    return widest;
}

// Residuals: equal fugacities, and for a two-phase state the lines of material balance: with v and l the distances of
// vapor and liquid from the feed, v(i)/v(k) = l(i)/l(k). The component k in the denominators is the one whose fractions
// differ most: with the ratios the other way up, or with another component, both sides vanish together where a
// component has the same fraction in both phases, and the equations have solutions that balance nothing.
void residuals(const Solution& s, const OrderList& order, int k) {
    const int m = order.m;
    Workspace& w = work;
    for (int i = 1; i <= m; ++i) w.GIBBSEQN[i] = w.vap.XLNFI[i] - w.liq.XLNFI[i];
    if (s.kph != 0) return;
    const int ok = order.o[k];
    for (int i = 1, row = m + 1; i < m; ++i) {
        if (i == k) continue;
        const int oi = order.o[i];
        w.GIBBSEQN[row++] =
            (s.xvap[oi] - s.z[oi]) / (s.xvap[ok] - s.z[ok]) - (s.xliq[oi] - s.z[oi]) / (s.xliq[ok] - s.z[ok]);
    }
}

void jacobian(const Solution& s, const OrderList& order, int k) {
    const int m = order.m;
    Workspace& w = work;
    auto& J = w.XJACMATRIX;  // row: equation; column: unknown
    const int n = s.kph == 0 ? 2 * (m - 1) : m;
    for (int i = 1; i <= n; ++i)
        for (int j = 1; j <= n; ++j) J[i][j] = 0.0;
    if (s.kph != 0) {
        for (int j = 1; j <= m; ++j) {
            for (int i = 1; i < m; ++i) J[j][i] = s.bubble() ? w.vap.DPHIDXJ[i][j] : -w.liq.DPHIDXJ[i][j];
            J[j][m] = s.givenT() ? w.vap.DPHIDP[j] - w.liq.DPHIDP[j] : w.vap.DPHIDT[j] - w.liq.DPHIDT[j];
        }
        return;
    }
    for (int j = 1; j <= m; ++j)
        for (int i = 1; i < m; ++i) {
            J[j][i] = w.vap.DPHIDXJ[i][j];
            J[j][m - 1 + i] = -w.liq.DPHIDXJ[i][j];
        }
    const int ok = order.o[k];
    const double vk = s.xvap[ok] - s.z[ok], lk = s.xliq[ok] - s.z[ok];
    for (int i = 1, row = m + 1; i < m; ++i) {
        if (i == k) continue;
        const int oi = order.o[i];
        J[row][i] = 1.0 / vk;
        J[row][k] = -(s.xvap[oi] - s.z[oi]) / (vk * vk);
        J[row][m - 1 + i] = -1.0 / lk;
        J[row][m - 1 + k] = (s.xliq[oi] - s.z[oi]) / (lk * lk);
        ++row;
    }
}

// Takes the step, halved until it leads to fractions that can be; false if nothing is left of it.
bool update(Solution& s, const OrderList& order) {
    const int m = order.m, shift = s.kph == 0 ? m - 1 : 0, n = s.kph == 0 ? 2 * (m - 1) : m;
    Workspace& w = work;
    const auto outside = [](double fraction) { return !(fraction > 0.0 && fraction < 1.0); };
    for (;;) {
        bool refused = false;
        double sumV = 0.0, sumL = 0.0, tiny = 0.0;
        w.XVAP_NEW = s.xvap;
        w.XLIQ_NEW = s.xliq;
        double Tnew = s.T, pnew = s.p;
        for (int i = 1; i <= m && !refused; ++i) {
            const int oi = order.o[i];
            if (i < m) {
                if (s.kph == 0 || s.bubble()) w.XVAP_NEW[oi] = s.xvap[oi] + w.DELTA_X[i];
                if (s.kph == 0 || !s.bubble()) w.XLIQ_NEW[oi] = s.xliq[oi] + w.DELTA_X[i + shift];
                sumV += w.XVAP_NEW[oi];
                sumL += w.XLIQ_NEW[oi];
                if (w.XVAP_NEW[oi] < 1e-10) tiny += w.XVAP_NEW[oi];
            } else {
                if (s.kph == 0 || s.bubble()) w.XVAP_NEW[oi] = 1.0 - sumV - tiny;
                if (s.kph == 0 || !s.bubble()) w.XLIQ_NEW[oi] = 1.0 - sumL;
                if (s.kph != 0) (s.givenT() ? pnew : Tnew) += w.DELTA_X[m];
            }
            const double v = w.XVAP_NEW[oi], l = w.XLIQ_NEW[oi], z = s.z[oi];
            if (s.kph == 0)
                refused = (v > z && l > z) || (v < z && l < z) || v * l < 0.0;
            else if (s.bubble())
                refused = outside(v) || pnew < 0.0;
            else
                refused = outside(l);
        }
        if (!(Tnew > 0.0) || !std::isfinite(pnew)) refused = true;
        if (!refused) {
            s.T = Tnew;
            s.p = pnew;
            s.xvap = w.XVAP_NEW;
            s.xliq = w.XLIQ_NEW;
            return true;
        }
        for (int i = 1; i <= n; ++i) w.DELTA_X[i] *= 0.5;
        if (!(largestOf(w.DELTA_X, n) >= 1e-10) || !std::isfinite(largestOf(w.DELTA_X, n))) return false;
    }
}

// From a nearby start a phase without a density, two phases that have become one and a long way are the signs of a
// start that was not near enough: the caller has a nearer one, and nothing is tried to get on.
Outcome iterate(Solution& s, const OrderList& order, int kguess, Start start) {
    const int m = order.m, n = s.kph == 0 ? 2 * (m - 1) : m;
    double toleranceF = 1e-12, toleranceX = 1e-10;
    double Dv = s.rhov, Dl = s.rhol;
    int guess = kguess == 1 ? 1 : 0;
    Composition dalpha, dnalpha;
    Workspace& w = work;
    for (int pass = 1; pass <= mostPasses; ++pass) {
        for (int i = 1; i <= n; ++i) w.GIBBSEQN[i] = 0.0;
        int code = 0;
        Text255 text;
        const auto failed = [&]() {
            s.ierr = 1;
            s.herr = text;
            return Outcome::leave;
        };
        TPRHO(s.T, s.p, s.xvap, vapor, guess, Dv, code, text);
        if (code > 0 && start != Start::nearby) TPRHO(s.T, s.p, s.xvap, liquid, 0, Dv, code, text);
        if (code > 0) return failed();
        PHIDERV(2, s.T, Dv, s.xvap, dalpha, dnalpha, code, text);
        if (code == 191) return Outcome::noDerivatives;
        if (code > 0) return failed();
        copyDerivatives(order, s.xvap, w.vap);
        if (start == Start::nearby)
            TPRHO(s.T, s.p, s.xliq, liquid, guess, Dl, code, text);
        else
            liquidDensity(s, guess, Dl, code, text);
        if (code > 0 || (start == Start::nearby && pass > 1 && samePhaseTwice(Dl, s.xliq, Dv, s.xvap))) return failed();
        PHIDERV(2, s.T, Dl, s.xliq, dalpha, dnalpha, code, text);
        if (code == 191) return Outcome::noDerivatives;
        if (code > 0) return failed();
        copyDerivatives(order, s.xliq, w.liq);
        guess = 1;

        const int k = widestComponent(s, order);
        residuals(s, order, k);
        if (pass == 8 || pass == 12 || pass == 16 || pass == 20) {
            toleranceF *= 10.0;
            toleranceX *= 10.0;
        }
        s.rhol = Dl;
        s.rhov = Dv;
        const double norm = largestOf(w.GIBBSEQN, n);
        saturationExtrema.highestEnergy.value = norm;
        if (norm < toleranceF) return Outcome::leave;
        jacobian(s, order, k);
        for (int i = 1; i <= n; ++i) w.DELTA_X[i] = -w.GIBBSEQN[i];
        LUDECOMP(n, w.XJACMATRIX, w.DELTA_X, code, text);
        if (code > 0) {
            s.ierr = 3;
            message(s.herr, "SATTP:  Error in iteration");
            return Outcome::leave;
        }
        // at low pressures, or for traces, a small step may be a large part of what it changes
        if (largestOf(w.DELTA_X, n) < toleranceX && norm < smallResidual) return Outcome::leave;
        if (!update(s, order)) {
            s.ierr = 3;
            message(s.herr, "SATTP:  Error in iteration");
            return Outcome::leave;
        }
        if (s.p <= 0.0) return Outcome::leave;
    }
    s.ierr = 2;
    message(s.herr, "SATTP:  Maximum number of iterations exceeded");
    return Outcome::leave;
}

// ---- walk along the line ----------------------------------------------------------------------------------------
// Close to the critical point the simple start lies too far away, and next to a second liquid it leads to the wrong
// one. There the line is followed from where the start is good enough, each point started from the two before.

// A point of the line in the variables that run nearly straight: what is given (T, or ln p), and ln p or 1/T, ln of the
// densities and of the ratios of the compositions.
struct LinePoint {
    double given = 0.0, unknown = 0.0, lnLiquid = 0.0, lnVapor = 0.0;
    Composition lnRatio{};
};

LinePoint linePoint(const Solution& s, const OrderList& order) {
    LinePoint point;
    point.given = s.givenT() ? s.T : std::log(s.p);
    point.unknown = s.givenT() ? std::log(s.p) : 1.0 / s.T;
    point.lnLiquid = std::log(s.rhol);
    point.lnVapor = std::log(s.rhov);
    const Composition& incipient = s.bubble() ? s.xvap : s.xliq;
    for (int i = 1; i <= order.m; ++i) point.lnRatio[order.o[i]] = std::log(incipient[order.o[i]] / s.z[order.o[i]]);
    return point;
}

// Start at a place of the line on the straight continuation of two points (or at one).
void startAt(double given, const LinePoint& last, const LinePoint& before, Solution& s, const OrderList& order) {
    const double span = last.given - before.given;
    const double along = span == 0.0 ? 0.0 : (given - last.given) / span;
    const auto extended = [&](double a, double b) { return a + along * (a - b); };
    const double unknown = extended(last.unknown, before.unknown);
    if (s.givenT()) {
        s.T = given;
        s.p = std::exp(unknown);
    } else {
        s.p = std::exp(given);
        s.T = 1.0 / unknown;
    }
    s.rhol = std::exp(extended(last.lnLiquid, before.lnLiquid));
    s.rhov = std::exp(extended(last.lnVapor, before.lnVapor));
    Composition& incipient = s.bubble() ? s.xvap : s.xliq;
    double sum = 0.0;
    for (int i = 1; i <= order.m; ++i) {
        const int oi = order.o[i];
        incipient[oi] = s.z[oi] * std::exp(extended(last.lnRatio[oi], before.lnRatio[oi]));
        sum += incipient[oi];
    }
    for (int i = 1; i <= order.m; ++i) incipient[order.o[i]] /= sum;
}

bool acceptable(const Solution& s, double Pc, double Dc, double coldest) {
    return s.ierr == 0 && s.rhov > 0.0 && s.rhol > 0.0 && s.p > 0.0 && s.p <= 10.0 * Pc && !s.equalPhases(Dc) &&
           std::isfinite(s.T) && std::isfinite(s.p) && !(s.kph != 0 && s.rhov > densestVapor * Dc) &&
           !samePhaseTwice(s.rhol, s.xliq, s.rhov, s.xvap) && phasesInOrder(s.rhol, s.xliq, s.rhov, s.xvap) &&
           !vaporIsNone(s.T, s.p, s.rhov, s.xvap, Pc) && !(s.T < coldest) &&
           !nearbyPhasesFallApart(s.T, s.rhol, s.xliq, s.rhov, s.xvap);
}

bool walkAlongLine(Solution& s, const OrderList& order, double Tc, double Pc, double Dc, double coldest, double share) {
    const double end = s.givenT() ? s.T : std::log(s.p);
    double begin = s.givenT() ? share * std::min(s.T, Tc) : std::log(std::pow(share, 7) * std::min(s.p, Pc));
    if (share > 1.0) {
        // from above, but not from close to the critical point
        const double highest = s.givenT() ? 0.85 * Tc : std::log(0.3 * Pc);
        begin = std::min(begin, highest);
        if (begin <= end) return false;
    }
    const double smallestStep = s.givenT() ? 1e-4 * end : 1e-4;
    const auto solve = [&]() {
        s.ierr = 0;
        s.herr.clear();
        return iterate(s, order, 1, Start::nearby) == Outcome::leave && acceptable(s, Pc, Dc, coldest);
    };
    (s.givenT() ? s.T : s.p) = s.givenT() ? begin : std::exp(begin);
    int code = 0;
    Text255 text;
    SATEST(s.kph, s.T, s.p, s.z, s.xliq, s.xvap, code, text);
    s.rhol = s.rhov = Dc;
    s.ierr = 0;
    if (iterate(s, order, 0) != Outcome::leave || !acceptable(s, Pc, Dc, coldest)) return false;
    LinePoint last = linePoint(s, order), before = last;
    double step = (end - begin) / 3.0;
    for (int count = 1; count <= 60; ++count) {
        const double given = share > 1.0 ? std::max(last.given + step, end) : std::min(last.given + step, end);
        startAt(given, last, before, s, order);
        // two phases that have come together are no point of the line
        const bool good = solve() && s.rhol - s.rhov > 0.3 * (std::exp(last.lnLiquid) - std::exp(last.lnVapor));
        if (good && given == end) return true;
        if (good) {
            before = last;
            last = linePoint(s, order);
        } else {
            step *= 0.5;
            if (std::fabs(step) < smallestStep) return false;
        }
    }
    return false;
}

// A better start than that of Raoult's law where Newton's method fails from there, as with traces or with components
// that are far from ideal: exchanges of the incipient composition by the fugacities, with the unknown corrected so that
// its sum is one. True if Newton's method then reaches the point.
//   Source  M. L. Michelsen, Fluid Phase Equilib. 23 (1985) 181
bool substituteFirst(Solution& s, const OrderList& order, double Pc, double Dc, double coldest) {
    constexpr int mostExchanges = 40;
    constexpr double nearEnough = 1e-3, longestInT = 0.03, longestInP = 0.5;
    int code = 0;
    Text255 text;
    SATEST(s.kph, s.T, s.p, s.z, s.xliq, s.xvap, code, text);
    if (!(s.T > 0.0 && s.p > 0.0)) return false;
    Composition& incipient = s.bubble() ? s.xvap : s.xliq;
    double Dl = 0.0, Dv = 0.0;
    Composition dalpha, dnalpha;
    for (int pass = 1; pass <= mostExchanges; ++pass) {
        const int guess = pass == 1 ? 0 : 1;
        liquidDensity(s, guess, Dl, code, text);
        if (code <= 0) TPRHO(s.T, s.p, s.xvap, vapor, guess, Dv, code, text);
        // one phase that has taken the place of both gives itself back
        if (code > 0 || (pass > 1 && samePhaseTwice(Dl, s.xliq, Dv, s.xvap))) return false;
        PHIDERV(2, s.T, Dv, s.xvap, dalpha, dnalpha, code, text);
        if (code > 0) return false;
        copyDerivatives(order, s.xvap, work.vap);
        PHIDERV(2, s.T, Dl, s.xliq, dalpha, dnalpha, code, text);
        if (code > 0) return false;
        copyDerivatives(order, s.xliq, work.liq);
        double sum = 0.0, slope = 0.0, change = 0.0;
        Composition next = incipient;
        for (int i = 1; i <= order.m; ++i) {
            const int oi = order.o[i];
            const double sign = s.bubble() ? -1.0 : 1.0;
            next[oi] =
                incipient[oi] * std::exp(std::clamp(sign * (work.vap.XLNFI[i] - work.liq.XLNFI[i]), -20.0, 20.0));
            sum += next[oi];
            slope += sign * next[oi] *
                     (s.givenT() ? s.p * (work.vap.DPHIDP[i] - work.liq.DPHIDP[i])
                                 : work.vap.DPHIDT[i] - work.liq.DPHIDT[i]);
        }
        if (!(sum > 0.0) || !std::isfinite(sum) || slope == 0.0) return false;
        for (int i = 1; i <= order.m; ++i) {
            const int oi = order.o[i];
            next[oi] /= sum;
            change += std::fabs(next[oi] - incipient[oi]);
        }
        incipient = next;
        const double step = -std::log(sum) * sum / slope;
        if (s.givenT())
            s.p *= std::exp(std::clamp(step, -longestInP, longestInP));
        else
            s.T += std::clamp(step, -longestInT * s.T, longestInT * s.T);
        if (change + std::fabs(std::log(sum)) < nearEnough) break;
    }
    s.rhol = Dl;
    s.rhov = Dv;
    return iterate(s, order, 1) == Outcome::leave && acceptable(s, Pc, Dc, coldest);
}

// The same equations in the logarithms of the ratios, where the fraction of a trace is no small part of a step.
bool inLogarithms(Solution& s, double Pc, double coldest) {
    constexpr int pressureUnknown = 1;
    int code = 0;
    Text255 text;
    double Dl = 0.0, Dv = 0.0, T = s.T, p = s.p;
    Composition xliq{}, xvap{};
    SATEST(s.kph, T, p, s.z, xliq, xvap, code, text);
    if (!(T > 0.0 && p > 0.0)) return false;
    const int printing = modelTags.IPRINTERR;
    modelTags.IPRINTERR = 0;
    TPRHO(T, p, xliq, liquid, 0, Dl, code, text);
    if (code <= 0) TPRHO(T, p, xvap, vapor, 0, Dv, code, text);
    if (code <= 0)
        SATGV(T, p, s.z, s.bubble() ? 0.0 : 1.0, s.givenT() ? T : p, pressureUnknown, s.givenT() ? 1 : 0, 0, Dl, Dv,
              xliq, xvap, code, text);
    modelTags.IPRINTERR = printing;
    if (code > 0 || T < coldest || vaporIsNone(T, p, Dv, xvap, Pc) || !phasesInEquilibrium(T, p, Dl, xliq, Dv, xvap) ||
        nearbyPhasesFallApart(T, Dl, xliq, Dv, xvap))
        return false;
    s.T = T;
    s.p = p;
    s.rhol = Dl;
    s.rhov = Dv;
    s.xliq = xliq;
    s.xvap = xvap;
    s.ierr = 0;
    s.herr.clear();
    return true;
}

}  // namespace

void SATTP(double& T, double& p, const Composition& x, int kph, int kguess, double& D, double& rhol, double& rhov,
           Composition& xliq, Composition& xvap, double& q, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    const Composition z = x;  // the caller may hand in one of the result arrays
    Solution s{T, p, z, std::abs(kph), D, rhol, rhov, xliq, xvap, q, ierr, herr};
    const OrderList order(z);
    int icomp = 0;
    ISPURE(z, icomp);
    double Tc, Pc, Dc;
    int code = 0;
    Text255 text;
    CRITP(z, Tc, Pc, Dc, code, text);
    newtonControl.NOSATTP = 0;
    if (icomp > 0 || pengRobinsonSelected() || order.m < 2) return classicalPath(s, order, Pc, Dc, 0.0);

    ++newtonControl.mixtureCalls;
    // Far below their range the equations have roots that are no states: no temperature found may lie there.
    double coldest, hottest, Dmax, pmax;
    LIMITS("EOS", z, coldest, hottest, Dmax, pmax);
    coldest *= kph == 0 || s.givenT() ? 0.0 : 0.7;
    if (saturationSpline.SPLINEREADY && kph != 0 && splineStart(s, kph < 0, Dc)) kguess = 1;
    if (kguess == 0) {
        rhol = rhov = Dc;
        if (!s.givenT() && kph != 0) T = 300.0;
        if (kph == 0)
            SAT0EST(T, p, z, xliq, xvap, code, text);
        else
            SATEST(s.kph, T, p, z, xliq, xvap, code, text);
    }
    const double givenT = T, givenP = p;
    if (iterate(s, order, kguess) == Outcome::noDerivatives) {
        ++newtonControl.substitutionCalls;
        (s.givenT() ? T : p) = s.givenT() ? givenT : givenP;
        return classicalPath(s, order, Pc, Dc, coldest);
    }
    if (kph == 0) leverRule(s, order);
    s.setQuality();
    if (!acceptable(s, Pc, Dc, coldest) && ierr == 0) ierr = 1;
    if (ierr != 0 && herr.blank()) message(herr, "SATTP:  Iteration failed");
    if (ierr <= 0 || saturationSpline.INSPLINE) return;

    const auto restoreGiven = [&]() {
        if (kph == 0 || s.givenT()) T = givenT;
        if (kph == 0 || !s.givenT()) p = givenP;
        ierr = 0;
        herr.clear();
    };
    restoreGiven();
    if (kph != 0) {
        if (substituteFirst(s, order, Pc, Dc, coldest)) {
            restoreGiven();
            s.setQuality();
            return;
        }
        restoreGiven();
        if (inLogarithms(s, Pc, coldest)) {
            restoreGiven();
            s.setQuality();
            return;
        }
        // beyond the critical point a line that the first walk has not found is hardly there
        const bool beyond = s.givenT() ? givenT > Tc : givenP > Pc;
        constexpr double fromBelow = 0.85, fromAbove = 1.2, fromFarBelow = 0.6;  // of the temperature
        for (const double share : {fromBelow, fromAbove, fromFarBelow}) {
            if (beyond && share != fromBelow) break;
            restoreGiven();
            if (!walkAlongLine(s, order, Tc, Pc, Dc, coldest, share)) continue;
            restoreGiven();
            s.setQuality();
            return;
        }
        restoreGiven();
    }
    ++newtonControl.substitutionCalls;
    classicalPath(s, order, Pc, Dc, coldest);
}

}  // namespace frigana
