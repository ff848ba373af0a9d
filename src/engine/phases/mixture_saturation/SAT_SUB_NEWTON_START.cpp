// Starting values of the Newton solvers.
#include <algorithm>
#include <cmath>

#include "FluidConstants.h"
#include "ModelTags.h"
#include "SAT_SUB_NEWTON.h"
#include "UTILITY.h"

namespace frigana {

namespace {

constexpr double slopeOfVaporPressure = static_cast<double>(5.373f);
constexpr double smallestFraction = static_cast<double>(1e-6f);
constexpr double largestFraction = static_cast<double>(0.999999f);
constexpr double solvedResidual = static_cast<double>(1e-8f);
constexpr int mostSteps = 100;

struct Constants {
    Composition Tc{}, Pc{}, w{};
    Constants() {
        for (int i = 1; i <= modelTags.NC; ++i) {
            double mass, ttriple, tboil, Dc, Zc, dipole, gas;
            INFO(i, mass, ttriple, tboil, Tc[i], Pc[i], Dc, Zc, w[i], dipole, gas);
        }
    }
};

// Value and slope in T of the residual of a bubble (kph 3) or dew point (kph 4) at given pressure.
double residualInT(int kph, double T, double p, const Composition& x, const Constants& c, double& slope) {
    constexpr double unit = slopeOfVaporPressure;
    double f = 0.0, S = 0.0;
    Composition none;
    int ierr = 0;
    Text255 herr;
    if (kph == 3) {
        PTEST(3, T, p, 0.0, x, c.Tc, c.Pc, c.w, f, none, ierr, herr);
        for (int i = 1; i <= modelTags.NC; ++i) {
            const double k = unit * c.Tc[i];
            S += x[i] * k * (c.w[i] + 1.0) * c.Pc[i] * std::exp(unit * c.w[i] - k * (c.w[i] + 1.0) / T);
        }
        const double ratio = (f - 1.0) / T;
        slope = 215.5084228515625 * S * ratio * ratio / p;
    } else {
        PTEST(4, T, p, 1.0, x, c.Tc, c.Pc, c.w, f, none, ierr, herr);
        for (int i = 1; i <= modelTags.NC; ++i) {
            const double k = unit * c.Tc[i];
            S -= x[i] * k * (c.w[i] + 1.0) / c.Pc[i] * std::exp(k * (c.w[i] + 1.0) / T - unit * c.w[i]);
        }
        slope = -0.004640189930796623 * p * S / (T * T);
    }
    return f;
}

// Root between two ends of opposite sign: two halvings, then Newton's method held inside. The residual and its slope
// come from one routine; false if it is not found.
template <class Residual>
bool rootInside(double low, double high, double fLow, double& root, double tolerance, const Residual& residual) {
    double slope = 0.0;
    for (int halving = 1; halving <= 2; ++halving) {
        const double middle = 0.5 * (low + high), f = residual(middle, slope);
        if ((f < 0.0) == (fLow < 0.0))
            low = middle;
        else
            high = middle;
    }
    double x = 0.5 * (low + high), before = 0.0, fBefore = 0.0;
    for (int step = 1; step <= mostSteps; ++step) {
        const double f = residual(x, slope);
        if (std::fabs(f) <= tolerance && std::fabs(x - before) <= 0.01 * std::fabs(x) &&
            std::fabs(f - fBefore) <= 0.01) {
            root = x;
            return true;
        }
        ((f < 0.0) == (fLow < 0.0) ? low : high) = x;
        before = x;
        fBefore = f;
        const double next = x - f / slope;
        const bool inside = next > std::min(low, high) && next < std::max(low, high);
        x = inside ? next : 0.5 * (low + high);
    }
    return false;
}

}  // namespace

void PTEST(int itype, double T, double p, double q, const Composition& x, const Composition& Tc, const Composition& Pc,
           const Composition& w, double& f, Composition& xout, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    if (T <= 0.0) return;
    const int nc = modelTags.NC;
    Composition pi;
    for (int i = 1; i <= nc; ++i) pi[i] = Pc[i] * std::exp(slopeOfVaporPressure * (w[i] + 1.0) * (1.0 - Tc[i] / T));
    double sum = 0.0;
    switch (itype) {
        case 1:
        case 3:
            for (int i = 1; i <= nc; ++i) sum += x[i] * pi[i];
            f = itype == 1 ? sum : 1.0 - p / sum;
            return;
        case 2:
            for (int i = 1; i <= nc; ++i) sum += x[i] / pi[i];
            f = 1.0 / sum;
            return;
        case 4:
            for (int i = 1; i <= nc; ++i) {
                const double denominator = 1.0 - q + q * pi[i] / p;
                if (denominator > 0.0) sum += x[i] / denominator;
            }
            f = 1.0 - sum;
            return;
        default:
            break;
    }
    for (int i = 1; i <= nc; ++i) {
        double fraction = itype == 5 ? x[i] * pi[i] / p : x[i] / (1.0 - q + q * pi[i] / p);
        if (fraction > 0.0 && fraction < smallestFraction) fraction = smallestFraction;
        if (fraction > largestFraction) fraction = largestFraction;
        xout[i] = fraction;
        sum += fraction;
    }
    if (!(sum > 0.0)) return;
    for (int i = 1; i <= nc; ++i) xout[i] /= sum;
}

void SATEST(int kph, double& T, double& p, const Composition& x, Composition& xliq, Composition& xvap, int& ierr,
            Text255& herr) {
    ierr = 0;
    herr.clear();
    const bool givenT = kph == 1 || kph == 2, bubble = kph == 1 || kph == 3;
    const Composition z = x;
    const Constants c;
    xliq = xvap = z;
    Composition& incipient = bubble ? xvap : xliq;
    if (givenT ? T == 0.0 : !(p > 0.0)) {
        ierr = 1;
        return;
    }
    double none = 0.0;
    if (givenT) {
        PTEST(bubble ? 1 : 2, T, 0.0, 0.0, z, c.Tc, c.Pc, c.w, p, incipient, ierr, herr);
    } else {
        T = 0.0;
        for (int i = 1; i <= modelTags.NC; ++i)
            if (z[i] > 0.0)
                T += z[i] * c.Tc[i] /
                     (1.0 - static_cast<double>(0.428571f) * (std::log(p / c.Pc[i]) / std::log(10.0)) / (c.w[i] + 1.0));
        // a pressure above that of every component leaves no temperature in the formula
        double highest = 0.0;
        for (int i = 1; i <= modelTags.NC; ++i)
            if (z[i] > 0.0) highest = std::max(highest, c.Tc[i]);
        if (!(T > 0.0) || T > 2.0 * highest) T = highest;
        const auto residual = [&](double at, double& slope) { return residualInT(kph, at, p, z, c, slope); };
        bool found = false;
        double slope = 0.0;
        for (int step = 7; step >= 1 && !found; --step) {
            const double r = step / 10.0, low = T * r, high = T / r;
            const double fLow = residual(low, slope), fHigh = residual(high, slope);
            if ((fLow < 0.0) == (fHigh < 0.0)) continue;
            found = true;
            if (!rootInside(low, high, fLow, T, solvedResidual, residual)) ierr = 1;
        }
        if (!found) ierr = 1;
    }
    int code = 0;
    PTEST(bubble ? 5 : 6, T, p, 1.0, z, c.Tc, c.Pc, c.w, none, incipient, code, herr);
}

void SAT0EST(double T, double p, const Composition& x, Composition& xliq, Composition& xvap, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    const Composition z = x;
    double Tbub = 0.0, Tdew = 0.0, pbub = 0.0, pdew = 0.0, at = T, of = p;
    SATEST(1, at, pbub, z, xliq, xvap, ierr, herr);
    SATEST(2, at, pdew, z, xliq, xvap, ierr, herr);
    SATEST(3, Tbub, of, z, xliq, xvap, ierr, herr);
    SATEST(4, Tdew, of, z, xliq, xvap, ierr, herr);
    ierr = 0;
    const int nc = modelTags.NC;
    const bool outside =
        T < std::min(Tbub, Tdew) || T > std::max(Tbub, Tdew) || p < std::min(pbub, pdew) || p > std::max(pbub, pdew);
    const auto singlePhase = [&]() {
        xliq = z;
        for (int i = 1; i <= nc; ++i) xvap[i] = z[i] / 2.0;
    };
    if (outside) return singlePhase();

    const Constants c;
    Composition none;
    const auto residual = [&](double q, double& slope) {
        double f = 0.0;
        PTEST(4, T, p, q, z, c.Tc, c.Pc, c.w, f, none, ierr, herr);
        slope = 0.0;
        for (int i = 1; i <= nc; ++i) {
            const double K = c.Pc[i] * std::exp(slopeOfVaporPressure * (c.w[i] + 1.0) * (1.0 - c.Tc[i] / T)) / p;
            const double denominator = 1.0 - q + q * K;
            if (denominator > 0.0) slope += z[i] * (K - 1.0) / (denominator * denominator);
        }
        return f;
    };
    constexpr double almostZero = static_cast<double>(1e-9f), astray = static_cast<double>(1e20f);
    double slope = 0.0, q = 0.5;
    const double fLow = residual(almostZero, slope), fMiddle = residual(0.5, slope), fHigh = residual(1.0, slope);
    bool found = false;
    if ((fLow < 0.0) != (fMiddle < 0.0))
        found = rootInside(almostZero, 0.5, fLow, q, 1e-5, residual);
    else if ((fMiddle < 0.0) != (fHigh < 0.0))
        found = rootInside(0.5, 1.0, fMiddle, q, 1e-5, residual);
    if (!found || q > astray) {
        ierr = 1;
        return singlePhase();
    }
    double f = 0.0;
    PTEST(6, T, p, q, z, c.Tc, c.Pc, c.w, f, xliq, ierr, herr);
    for (int i = 1; i <= nc; ++i) xvap[i] = (z[i] - xliq[i] * (1.0 - q)) / q;
}

}  // namespace frigana
