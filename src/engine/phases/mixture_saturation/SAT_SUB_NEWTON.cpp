#include "SAT_SUB_NEWTON.h"

#include <algorithm>
#include <cmath>

#include "CORE_PR.h"
#include "CriticalPoint.h"
#include "LIMITS.h"
#include "Message.h"
#include "ModelTags.h"
#include "PHIDERV.h"
#include "PhaseCheck.h"
#include "SAT_SUB_SPLINE.h"
#include "SaturationExtrema.h"
#include "SaturationSpline.h"
#include "SilentMessages.h"
#include "TPRHO.h"
#include "UTILITY.h"
#include "UTILITY_NUMERICS.h"

namespace frigana {

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

// One solution: what is given, what is solved for, and the road between.
struct Solution {
    PhasePair& at;
    const Composition& z;
    const int kph;  // 0 to 4, without its sign
    int& ierr;
    Text255& herr;

    bool bubble() const { return kph == 1 || kph == 3; }
    bool givenT() const { return kph == 1 || kph == 2; }
    Composition& incipient() const { return bubble() ? at.y : at.x; }
    bool equalPhases(double Dc) const {
        return std::fabs(at.Dl - at.Dv) < sameDensity && std::fabs(at.Dl - Dc) > sameDensity;
    }
};

// Share of the vapor of a two-phase state.
void leverRule(Solution& s, const OrderList& order) {
    // every component gives the same share; the one whose fractions differ most gives the most digits
    int widest = order.o[1];
    for (int i = 2; i <= order.m; ++i) {
        const int oi = order.o[i];
        if (std::fabs(s.at.y[oi] - s.at.x[oi]) > std::fabs(s.at.y[widest] - s.at.x[widest])) widest = oi;
    }
    s.at.q = (s.z[widest] - s.at.x[widest]) / (s.at.y[widest] - s.at.x[widest]);
    closeBalance(s.z, s.at.q, s.at.x, s.at.y);
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
    const double target = s.givenT() ? s.at.T : s.at.p;
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
    s.at.Dl = s.at.Dv = D;
    (s.bubble() ? s.at.Dv : s.at.Dl) = SPLNVAL(nc + 3, 0, D, code, text);
    s.at.x = s.bubble() ? parent : incipient;
    s.at.y = s.bubble() ? incipient : parent;
    if (s.givenT())
        s.at.p = SPLNVAL(nc + 2, 0, D, code, text);
    else
        s.at.T = SPLNVAL(nc + 1, 0, D, code, text);
    return true;
}

// Density of the liquid; where there is none, the unknown is moved a little to where there may be one.
void liquidDensity(Solution& s, int guess, double& Dl, int& code, Text255& text) {
    TPRHO(s.at.T, s.at.p, s.at.x, liquid, guess, Dl, code, text);
    if (code <= 0) return;
    if (s.kph == 3) {
        for (int attempt = 1; attempt <= 2; ++attempt) {
            s.at.T -= 5.0;
            TPRHO(s.at.T, s.at.p, s.at.x, liquid, 0, Dl, code, text);
            if (code <= 0) return;
        }
        s.at.T += 10.0;
    }
    if (s.kph == 1) {
        const double before = s.at.p;
        for (const double factor : {1.2, 1.5, 1.5}) {
            s.at.p *= factor;
            TPRHO(s.at.T, s.at.p, s.at.x, liquid, 0, Dl, code, text);
            if (code <= 0) return;
        }
        s.at.p = before;
    }
    TPRHO(s.at.T, s.at.p, s.at.x, vapor, 0, Dl, code, text);
}

// Place in the order, not the last, of the component whose fractions differ most between the phases.
int widestComponent(const Solution& s, const OrderList& order) {
    int widest = 1;
    double width = -1.0;
    for (int i = 1; i < order.m; ++i) {
        const double here = std::fabs(s.at.y[order.o[i]] - s.at.x[order.o[i]]);
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
            (s.at.y[oi] - s.z[oi]) / (s.at.y[ok] - s.z[ok]) - (s.at.x[oi] - s.z[oi]) / (s.at.x[ok] - s.z[ok]);
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
    const double vk = s.at.y[ok] - s.z[ok], lk = s.at.x[ok] - s.z[ok];
    for (int i = 1, row = m + 1; i < m; ++i) {
        if (i == k) continue;
        const int oi = order.o[i];
        J[row][i] = 1.0 / vk;
        J[row][k] = -(s.at.y[oi] - s.z[oi]) / (vk * vk);
        J[row][m - 1 + i] = -1.0 / lk;
        J[row][m - 1 + k] = (s.at.x[oi] - s.z[oi]) / (lk * lk);
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
        w.XVAP_NEW = s.at.y;
        w.XLIQ_NEW = s.at.x;
        double Tnew = s.at.T, pnew = s.at.p;
        for (int i = 1; i <= m && !refused; ++i) {
            const int oi = order.o[i];
            if (i < m) {
                if (s.kph == 0 || s.bubble()) w.XVAP_NEW[oi] = s.at.y[oi] + w.DELTA_X[i];
                if (s.kph == 0 || !s.bubble()) w.XLIQ_NEW[oi] = s.at.x[oi] + w.DELTA_X[i + shift];
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
            s.at.T = Tnew;
            s.at.p = pnew;
            s.at.y = w.XVAP_NEW;
            s.at.x = w.XLIQ_NEW;
            return true;
        }
        for (int i = 1; i <= n; ++i) w.DELTA_X[i] *= 0.5;
        if (!(largestOf(w.DELTA_X, n) >= 1e-10) || !std::isfinite(largestOf(w.DELTA_X, n))) return false;
    }
}

enum class Outcome { leave, noDerivatives };
enum class Start { estimate, nearby };

// From a nearby start a phase without a density, two phases that have become one and a long way are the signs of a
// start that was not near enough: the caller has a nearer one, and nothing is tried to get on.
Outcome iterate(Solution& s, const OrderList& order, int kguess, Start start = Start::estimate) {
    const int m = order.m, n = s.kph == 0 ? 2 * (m - 1) : m;
    double toleranceF = 1e-12, toleranceX = 1e-10;
    double Dv = s.at.Dv, Dl = s.at.Dl;
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
        TPRHO(s.at.T, s.at.p, s.at.y, vapor, guess, Dv, code, text);
        if (code > 0 && start != Start::nearby) TPRHO(s.at.T, s.at.p, s.at.y, liquid, 0, Dv, code, text);
        if (code > 0) return failed();
        PHIDERV(2, s.at.T, Dv, s.at.y, dalpha, dnalpha, code, text);
        if (code == 191) return Outcome::noDerivatives;
        if (code > 0) return failed();
        copyDerivatives(order, s.at.y, w.vap);
        if (start == Start::nearby)
            TPRHO(s.at.T, s.at.p, s.at.x, liquid, guess, Dl, code, text);
        else
            liquidDensity(s, guess, Dl, code, text);
        if (code > 0 || (start == Start::nearby && pass > 1 && samePhaseTwice(Dl, s.at.x, Dv, s.at.y))) return failed();
        PHIDERV(2, s.at.T, Dl, s.at.x, dalpha, dnalpha, code, text);
        if (code == 191) return Outcome::noDerivatives;
        if (code > 0) return failed();
        copyDerivatives(order, s.at.x, w.liq);
        guess = 1;

        const int k = widestComponent(s, order);
        residuals(s, order, k);
        if (pass == 8 || pass == 12 || pass == 16 || pass == 20) {
            toleranceF *= 10.0;
            toleranceX *= 10.0;
        }
        s.at.Dl = Dl;
        s.at.Dv = Dv;
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
        if (s.at.p <= 0.0) return Outcome::leave;
    }
    s.ierr = 2;
    message(s.herr, "SATTP:  Maximum number of iterations exceeded");
    return Outcome::leave;
}

// ---- other starts ------------------------------------------------------------------------------------------------

// Limits of what a solution may be.
struct Bounds {
    CriticalPoint critical;
    double coldest = 0;  // [K]
};

Bounds boundsOf(const Solution& s) {
    Bounds bounds{criticalPointOf(s.z), 0};
    // Far below their range the equations have roots that are no states: no temperature found may lie there.
    if (s.kph == 0 || s.givenT()) return bounds;
    double hottest, Dmax, pmax;
    LIMITS("EOS", s.z, bounds.coldest, hottest, Dmax, pmax);
    bounds.coldest *= 0.7;
    return bounds;
}

// Where the trace of a gas in a liquid drowns in its rounding, the equations of both phases may seem to be met by a
// vapor full of the liquid.
bool acceptable(const Solution& s, const Bounds& bounds) {
    const double Pc = bounds.critical.p, Dc = bounds.critical.D;
    const double tolerance = s.kph == 0 ? looseEquilibrium : solvedEquilibrium;
    return s.ierr == 0 && s.at.p <= 10.0 * Pc && !s.equalPhases(Dc) && !(s.kph != 0 && s.at.Dv > densestVapor * Dc) &&
           !(s.at.T < bounds.coldest) && isEquilibrium(s.at, Pc, tolerance);
}

// Close to the critical point the simple start lies too far away, and next to a second liquid it leads to the wrong
// one. There the line is followed from where the start is good enough.
bool walkAlongLine(Solution& s, const OrderList& order, const Bounds& bounds, double smallest) {
    constexpr double share = 0.85;  // of the temperature, where the walk begins
    const CriticalPoint& critical = bounds.critical;
    const bool givenT = s.givenT();
    const double end = givenT ? s.at.T : std::log(s.at.p);
    const double begin =
        givenT ? share * std::min(s.at.T, critical.T) : std::log(std::pow(share, 7) * std::min(s.at.p, critical.p));
    (givenT ? s.at.T : s.at.p) = givenT ? begin : std::exp(begin);
    int code = 0;
    Text255 text;
    SATEST(s.kph, s.at.T, s.at.p, s.z, s.at.x, s.at.y, code, text);
    s.at.Dl = s.at.Dv = critical.D;
    s.ierr = 0;
    if (iterate(s, order, 0) != Outcome::leave || !acceptable(s, bounds)) return false;
    PhasePair here = s.at;
    const auto solve = [&](double given, const PhasePair& last, PhasePair& pair) {
        (givenT ? pair.T : pair.p) = givenT ? given : std::exp(given);
        (s.bubble() ? pair.x : pair.y) = s.z;
        s.at = pair;
        s.ierr = 0;
        s.herr.clear();
        if (iterate(s, order, 1, Start::nearby) != Outcome::leave || !acceptable(s, bounds)) return false;
        pair = s.at;
        // two phases that have come together are no point of the line
        return pair.Dl - pair.Dv > 0.3 * (last.Dl - last.Dv);
    };
    const WalkSteps way{begin, end, (end - begin) / 3.0, givenT ? smallest * end : smallest, 60};
    return walkLine(way, here, solve, [](const PhasePair&, const PhasePair&) { return false; }) == WalkEnd::arrived;
}

// A better start than that of Raoult's law where Newton's method fails from there, as with traces or with components
// that are far from ideal: exchanges of the incipient composition by the fugacities, with the unknown corrected so that
// its sum is one. True if Newton's method then reaches the point.
//   Source  M. L. Michelsen, Fluid Phase Equilib. 23 (1985) 181
bool substituteFirst(Solution& s, const OrderList& order, const Bounds& bounds) {
    constexpr int mostExchanges = 40;
    constexpr double nearEnough = 1e-3, longestInT = 0.03, longestInP = 0.5;
    int code = 0;
    Text255 text;
    SATEST(s.kph, s.at.T, s.at.p, s.z, s.at.x, s.at.y, code, text);
    if (!(s.at.T > 0.0 && s.at.p > 0.0)) return false;
    Composition& incipient = s.incipient();
    double Dl = 0.0, Dv = 0.0;
    Composition dalpha, dnalpha;
    for (int pass = 1; pass <= mostExchanges; ++pass) {
        const int guess = pass == 1 ? 0 : 1;
        liquidDensity(s, guess, Dl, code, text);
        if (code <= 0) TPRHO(s.at.T, s.at.p, s.at.y, vapor, guess, Dv, code, text);
        // one phase that has taken the place of both gives itself back
        if (code > 0 || (pass > 1 && samePhaseTwice(Dl, s.at.x, Dv, s.at.y))) return false;
        PHIDERV(2, s.at.T, Dv, s.at.y, dalpha, dnalpha, code, text);
        if (code > 0) return false;
        copyDerivatives(order, s.at.y, work.vap);
        PHIDERV(2, s.at.T, Dl, s.at.x, dalpha, dnalpha, code, text);
        if (code > 0) return false;
        copyDerivatives(order, s.at.x, work.liq);
        double sum = 0.0, slope = 0.0, change = 0.0;
        Composition next = incipient;
        for (int i = 1; i <= order.m; ++i) {
            const int oi = order.o[i];
            const double sign = s.bubble() ? -1.0 : 1.0;
            next[oi] =
                incipient[oi] * std::exp(std::clamp(sign * (work.vap.XLNFI[i] - work.liq.XLNFI[i]), -20.0, 20.0));
            sum += next[oi];
            slope += sign * next[oi] *
                     (s.givenT() ? s.at.p * (work.vap.DPHIDP[i] - work.liq.DPHIDP[i])
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
            s.at.p *= std::exp(std::clamp(step, -longestInP, longestInP));
        else
            s.at.T += std::clamp(step, -longestInT * s.at.T, longestInT * s.at.T);
        if (change + std::fabs(std::log(sum)) < nearEnough) break;
    }
    s.at.Dl = Dl;
    s.at.Dv = Dv;
    return iterate(s, order, 1) == Outcome::leave && acceptable(s, bounds);
}

// The same equations in the logarithms of the ratios, where the fraction of a trace is no small part of a step.
bool inLogarithms(Solution& s, const Bounds& bounds) {
    constexpr int pressureUnknown = 1;
    int code = 0;
    Text255 text;
    PhasePair pair = s.at;
    pair.Dl = pair.Dv = 0.0;
    SATEST(s.kph, pair.T, pair.p, s.z, pair.x, pair.y, code, text);
    if (!(pair.T > 0.0 && pair.p > 0.0)) return false;
    {
        const SilentMessages quiet;
        TPRHO(pair.T, pair.p, pair.x, liquid, 0, pair.Dl, code, text);
        if (code <= 0) TPRHO(pair.T, pair.p, pair.y, vapor, 0, pair.Dv, code, text);
        if (code <= 0)
            SATGV(pair.T, pair.p, s.z, s.bubble() ? 0.0 : 1.0, s.givenT() ? pair.T : pair.p, pressureUnknown,
                  s.givenT() ? 1 : 0, 0, pair.Dl, pair.Dv, pair.x, pair.y, code, text);
    }
    if (code > 0 || pair.T < bounds.coldest || !isEquilibrium(pair, bounds.critical.p)) return false;
    s.at = pair;
    s.ierr = 0;
    s.herr.clear();
    return true;
}

// The quality that belongs to a bubble or dew point.
void setQuality(Solution& s) {
    if (s.kph != 0) s.at.q = s.bubble() ? 0.0 : 1.0;
}

}  // namespace

NewtonEnd newtonEquilibrium(PhasePair& at, const Composition& z, int kph, int kguess, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    Solution s{at, z, std::abs(kph), ierr, herr};
    const OrderList order(z);
    if (pengRobinsonSelected() || order.m < 2) return NewtonEnd::noDerivatives;
    const Bounds bounds = boundsOf(s);
    if (saturationSpline.SPLINEREADY && kph != 0 && splineStart(s, kph < 0, bounds.critical.D)) kguess = 1;
    if (kguess == 0) {
        int code = 0;
        Text255 text;
        at.Dl = at.Dv = bounds.critical.D;
        if (!s.givenT() && kph != 0) at.T = 300.0;
        if (kph == 0)
            SAT0EST(at.T, at.p, z, at.x, at.y, code, text);
        else
            SATEST(s.kph, at.T, at.p, z, at.x, at.y, code, text);
    }
    const double givenT = at.T, givenP = at.p;
    if (iterate(s, order, kguess) == Outcome::noDerivatives) {
        (s.givenT() ? at.T : at.p) = s.givenT() ? givenT : givenP;
        return NewtonEnd::noDerivatives;
    }
    if (kph == 0) leverRule(s, order);
    setQuality(s);
    if (!acceptable(s, bounds) && ierr == 0) ierr = 1;
    if (ierr != 0 && herr.blank()) message(herr, "SATTP:  Iteration failed");
    return ierr <= 0 ? NewtonEnd::found : NewtonEnd::failed;
}

bool newtonFromOtherStarts(PhasePair& at, const Composition& z, int kph, int& ierr, Text255& herr) {
    Solution s{at, z, std::abs(kph), ierr, herr};
    const OrderList order(z);
    const Bounds bounds = boundsOf(s);
    const double given = s.givenT() ? at.T : at.p;
    const auto solvedBy = [&](auto method) {
        (s.givenT() ? at.T : at.p) = given;
        ierr = 0;
        herr.clear();
        const bool solved = method();
        (s.givenT() ? at.T : at.p) = given;
        ierr = 0;
        herr.clear();
        setQuality(s);
        return solved;
    };
    // above the critical pressure there are few points to find, and many calls that find none
    const bool beyond = !s.givenT() && at.p > bounds.critical.p;
    return (!beyond && solvedBy([&] { return substituteFirst(s, order, bounds); })) ||
           solvedBy([&] { return inLogarithms(s, bounds); }) ||
           solvedBy([&] { return walkAlongLine(s, order, bounds, beyond ? 1e-2 : 1e-4); });
}

}  // namespace frigana
