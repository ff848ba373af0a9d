// Secant and bracket of the searches for a root, in the saturation and the flash routines.
#pragma once

#include <cmath>

namespace frigana {

// The zero of the line through two points; their residuals must differ.
inline double secantPoint(double x1, double f1, double x2, double f2) {
    return x2 - f2 * (x2 - x1) / (f2 - f1);
}

// The two last points of the secant: the current one is `now`.
struct Secant {
    double before = 0, fBefore = 0, now = 0, fNow = 0;
    double next() const {
        return std::fabs(fNow - fBefore) > 1e-12 ? secantPoint(before, fBefore, now, fNow) : now + 0.5 * (now - before);
    }
};

inline double limitedStep(double from, double to, double share) {
    const double longest = share * std::fabs(from);
    if (std::fabs(to - from) <= longest) return to;
    return to > from ? from + longest : from - longest;
}

// One point on either side of a root.
struct RootBracket {
    double xNegative = 0, fNegative = 0, xPositive = 0, fPositive = 0;
    bool hasNegative = false, hasPositive = false;

    bool closed() const { return hasNegative && hasPositive; }
    double lower() const { return xNegative < xPositive ? xNegative : xPositive; }
    double upper() const { return xNegative < xPositive ? xPositive : xNegative; }
    double width() const { return upper() - lower(); }
    double middle() const { return 0.5 * (xNegative + xPositive); }
    // The two residuals differ in sign, so that their difference is not zero.
    double falsePosition() const { return xNegative - fNegative * (xPositive - xNegative) / (fPositive - fNegative); }

    // Takes a point in place of the last one on its side.
    void takeLast(double x, double f) {
        if (f < 0) {
            xNegative = x;
            fNegative = f;
            hasNegative = true;
        } else {
            xPositive = x;
            fPositive = f;
            hasPositive = true;
        }
    }
    // Takes a point if its residual is the smaller one on its side.
    void takeCloser(double x, double f) {
        if (f < 0 ? !hasNegative || f > fNegative : !hasPositive || f < fPositive) takeLast(x, f);
    }
    void forgetSideOf(double f) { (f < 0 ? hasNegative : hasPositive) = false; }
};

// False position between two ends of opposite sign, in any order; an end that stays twice has its residual halved (the
// Illinois method).
//   Source  M. Dowell, P. Jarratt, BIT 11 (1971) 168
struct FalsePosition {
    double lower, fLower, upper, fUpper;
    int side = 0;

    double width() const { return upper > lower ? upper - lower : lower - upper; }
    double next() const {
        const double at = upper - fUpper * (upper - lower) / (fUpper - fLower);
        return (at - lower) * (at - upper) < 0 ? at : 0.5 * (lower + upper);
    }
    void take(double at, double f) {
        if ((f < 0) == (fLower < 0)) {
            lower = at;
            fLower = f;
            if (side == -1) fUpper *= 0.5;
            side = -1;
        } else {
            upper = at;
            fUpper = f;
            if (side == 1) fLower *= 0.5;
            side = 1;
        }
    }
};

}  // namespace frigana
