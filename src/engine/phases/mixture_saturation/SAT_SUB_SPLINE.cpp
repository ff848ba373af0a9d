#include "SAT_SUB_SPLINE.h"

#include <algorithm>
#include <cmath>

#include "Message.h"
#include "ModelTags.h"
#include "SaturationSpline.h"
#include "UTILITY.h"
#include "UTILITY_NUMERICS.h"

namespace frigana {
namespace {

const SaturationSpline& table = saturationSpline;

bool logarithmic(int isp) {
    return isp <= modelTags.NC + 3;
}

// Column and its derivatives over ln(density) inside interval k, which lies between the points k and k + 1.
double splineInside(int isp, int iderv, int k, double lnRho) {
    const auto& xi = table.XARR[0];
    const auto& yi = table.XARR[isp];
    const auto& curvature = table.CARR[isp];
    const double h = xi[k + 1] - xi[k];
    if (h == 0.0) return 0.0;
    const double a = (xi[k + 1] - lnRho) / h, b = (lnRho - xi[k]) / h;
    switch (iderv) {
        case 1:
            return (yi[k + 1] - yi[k]) / h - (3.0 * a * a - 1.0) / 6.0 * h * curvature[k] +
                   (3.0 * b * b - 1.0) / 6.0 * h * curvature[k + 1];
        case 2:
            return a * curvature[k] + b * curvature[k + 1];
        default:
            return a * yi[k] + b * yi[k + 1] +
                   ((a * a * a - a) * curvature[k] + (b * b * b - b) * curvature[k + 1]) * h * h / 6.0;
    }
}

// Interval of a logarithm of the density; 0 if it lies outside the table.
int intervalOf(double lnRho) {
    const auto& xi = table.XARR[0];
    const int n = table.NSPLINE;
    if (n < 2 || !(lnRho >= xi[1] && lnRho <= xi[n])) return 0;
    const double* after = std::upper_bound(xi.items, xi.items + n, lnRho);
    return std::clamp(static_cast<int>(after - xi.items), 1, n - 1);
}

}  // namespace

double SPLNVAL(int isp, int iderv, double a, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    const int n = table.NSPLINE;
    if (iderv < 0 && n > 0) {
        const auto& column = table.XARR[isp];
        const double* extreme = iderv == -1 ? std::min_element(column.items, column.items + n)
                                            : std::max_element(column.items, column.items + n);
        return logarithmic(isp) ? std::exp(*extreme) : *extreme;
    }
    const double lnRho = a > 0.0 ? std::log(a) : -1e30;
    const int k = intervalOf(lnRho);
    if (k == 0) {
        ierr = 192;
        message(herr,
                "[SPLNVAL error 192] density is out of the range of the saturation splines; D =", General{12, 5, a},
                " mol/L", nullCharacter);
        ERRMSG(ierr, herr);
        return 0.0;
    }
    if (isp == 0) return iderv == 0 ? a : iderv == 1 ? 1.0 : 0.0;
    const double value = splineInside(isp, iderv, k, lnRho);
    return iderv == 0 && logarithmic(isp) ? std::exp(value) : value;
}

void SPLNROOT(int isp, int iderv, double f, double& a, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    const int n = table.NSPLINE;
    const auto& xi = table.XARR[0];
    const double target = iderv == 0 && logarithmic(isp) ? std::log(f) : f;
    const double start = a > 0.0 ? std::log(a) : -1e30;
    const auto residual = [&](int k, double lnRho) { return splineInside(isp, iderv, k, lnRho) - target; };

    // the interval with a change of sign that is nearest to the start
    int nearest = 0;
    double distance = 1e300;
    for (int k = 1; k < n; ++k) {
        const double low = residual(k, xi[k]), high = residual(k, xi[k + 1]);
        if (!(low * high <= 0.0)) continue;
        const double away = std::max({0.0, xi[k] - start, start - xi[k + 1]});
        if (away < distance) {
            distance = away;
            nearest = k;
        }
    }
    if (nearest == 0) {
        ierr = 1;
        message(herr, "[SPLNROOT error 1] no root on the saturation splines", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    double low = xi[nearest], high = xi[nearest + 1];
    const bool rising = residual(nearest, high) >= residual(nearest, low);
    for (int step = 1; step <= 60; ++step) {
        const double middle = 0.5 * (low + high);
        const bool above = (residual(nearest, middle) > 0.0) == rising;
        (above ? high : low) = middle;
    }
    a = std::exp(0.5 * (low + high));
}

}  // namespace frigana
