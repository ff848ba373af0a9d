// Secant and bracket of the searches for a root, in the saturation and the flash routines.
#pragma once

namespace frigana {

// The zero of the line through two points; their residuals must differ.
inline double secantPoint(double x1, double f1, double x2, double f2) {
    return x2 - f2 * (x2 - x1) / (f2 - f1);
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

}  // namespace frigana
