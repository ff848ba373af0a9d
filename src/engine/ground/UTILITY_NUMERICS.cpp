#include "UTILITY_NUMERICS.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

#include "Message.h"
#include "UTILITY.h"

namespace frigana {

namespace {

constexpr double extremumBound = 100000.0;

// numerator / denominator, and the bound with the sign of the numerator where the denominator vanishes.
double boundedQuotient(double numerator, double denominator) {
    if (denominator == 0.0) return numerator == 0.0 ? 0.0 : std::copysign(2.0 * extremumBound, numerator);
    return numerator / denominator;
}

}  // namespace

double CBRTX(double x) {
    return std::cbrt(x);
}

void MINP(int n, std::span<const double> xi, std::span<const double> yi, double& xext, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    xext = 0.0;
    if (n != 2 && n != 3) {
        ierr = 1;
        message(herr, "[MINP error 1] invalid inputs", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    std::size_t second = 1;
    bool parabola = n == 3;
    if (parabola && (xi[0] == xi[1] || xi[1] == xi[2] || xi[0] == xi[2])) {
        parabola = false;
        if (xi[0] == xi[1]) second = 2;
    }
    if (parabola) {
        // slope at xi[0] and half the curvature, from divided differences
        const double first01 = (yi[1] - yi[0]) / (xi[1] - xi[0]);
        const double first12 = (yi[2] - yi[1]) / (xi[2] - xi[1]);
        const double second012 = (first12 - first01) / (xi[2] - xi[0]);
        xext = 0.5 * (xi[0] + xi[1] - boundedQuotient(first01, second012));
        if (second012 < 0.0) {
            ierr = 2;
            message(herr, "[MINP error 2] curvature of parabola is negative", nullCharacter);
            ERRMSG(ierr, herr);
        }
    } else {
        xext = xi[0] - boundedQuotient(yi[0] * (xi[second] - xi[0]), yi[second] - yi[0]);
    }
    xext = std::clamp(xext, -extremumBound, extremumBound);
}

void POLYN(int n, std::span<const double> xi, std::span<const double> yi, double x, double& y) {
    static Array1<double, mostPolynomialPoints> difference;
    y = 0.0;
    if (n < 2 || n > mostPolynomialPoints) return;
    for (int i = 1; i <= n; ++i) difference[i] = yi[static_cast<std::size_t>(i - 1)];
    for (int order = 1; order < n; ++order) {
        for (int i = n; i > order; --i) {
            const double step = xi[static_cast<std::size_t>(i - 1)] - xi[static_cast<std::size_t>(i - 1 - order)];
            difference[i] = std::fabs(step) < 1e-20 ? 0.0 : (difference[i] - difference[i - 1]) / step;
        }
    }
    y = difference[n];
    for (int i = n - 1; i >= 1; --i) y = y * (x - xi[static_cast<std::size_t>(i - 1)]) + difference[i];
}

void PIVOT(int n, const double* a, int rowLength, int k, const double* scale, int* order) {
    int best = k;
    double largest = std::fabs(a[order[k] * rowLength + k]) * scale[order[k]];
    for (int i = k + 1; i < n; ++i) {
        const double ratio = std::fabs(a[order[i] * rowLength + k]) * scale[order[i]];
        if (ratio > largest) {
            largest = ratio;
            best = i;
        }
    }
    std::swap(order[best], order[k]);
}

void LUDECOMP(int n, double* a, int rowLength, double* c, int& ierr, Text255& herr) {
    static int order[largestSystem];
    static double scale[largestSystem];
    static double solution[largestSystem];
    const int request = ierr;
    ierr = 0;
    herr.clear();
    if (request == resetPivotOrder) {
        for (int i = 0; i < 3; ++i) order[i] = i;
        return;
    }
    const auto fail = [&] {
        ierr = 1;
        message(herr, "[LUdecomp error 1] singular matrix", nullCharacter);
        ERRMSG(ierr, herr);
    };
    if (n < 1 || n > largestSystem) return fail();
    const auto row = [a, rowLength](int i) { return a + std::ptrdiff_t{order[i]} * rowLength; };

    // Crout's factors, row by row in the order of the pivots: L below the diagonal with ones on it, U from it on
    if (request != solveWithStoredFactors) {
        for (int i = 0; i < n; ++i) {
            order[i] = i;
            double largest = 0.0;
            for (int j = 0; j < n; ++j) largest = std::max(largest, std::fabs(a[i * rowLength + j]));
            if (!(largest > 0.0)) return fail();
            scale[i] = 1.0 / largest;
        }
        for (int k = 0; k < n; ++k) {
            PIVOT(n, a, rowLength, k, scale, order);
            const double* pivotRow = row(k);
            if (pivotRow[k] == 0.0) return fail();
            const double inverse = 1.0 / pivotRow[k];
            for (int i = k + 1; i < n; ++i) {
                double* target = row(i);
                const double factor = target[k] * inverse;
                target[k] = factor;
                if (factor == 0.0) continue;
                for (int j = k + 1; j < n; ++j) target[j] -= factor * pivotRow[j];
            }
        }
    }

    // forward, then backward substitution
    for (int i = 0; i < n; ++i) {
        const double* line = row(i);
        double sum = c[order[i]];
        for (int j = 0; j < i; ++j) sum -= line[j] * solution[j];
        solution[i] = sum;
    }
    for (int i = n - 1; i >= 0; --i) {
        const double* line = row(i);
        double sum = solution[i];
        for (int j = i + 1; j < n; ++j) sum -= line[j] * solution[j];
        solution[i] = sum / line[i];
    }
    std::copy_n(solution, n, c);
}

void CUBIC(double a2, double a1, double a0, double& x1, double& x2, double& x3) {
    const double q = a1 / 3.0 - a2 * a2 / 9.0;
    const double r = (a1 * a2 - 3.0 * a0) / 6.0 - a2 * a2 * a2 / 27.0;
    const double discriminant = q * q * q + r * r;
    if (discriminant > 0.0) {
        const double root = std::sqrt(discriminant);
        // of the two cube roots the one without cancellation is taken, which is not 0; their product is -q
        const double s1 = CBRTX(r >= 0.0 ? r + root : r - root);
        x1 = x2 = x3 = s1 - q / s1 - a2 / 3.0;
        return;
    }
    const double amplitude = 2.0 * std::sqrt(std::max(-q, 0.0));
    const double cosine = q < 0.0 ? std::clamp(r / std::sqrt(-q * q * q), -1.0, 1.0) : 1.0;
    const double theta = std::acos(cosine) / 3.0;
    constexpr double third = 2.0 * std::numbers::pi / 3.0;
    const double largest = amplitude * std::cos(theta) - a2 / 3.0;
    const double smallest = amplitude * std::cos(theta + third) - a2 / 3.0;
    // a small root is the difference of the two large terms above: Newton steps give its last digits back
    const auto polished = [&](double root) {
        const auto value = [&](double x) { return ((x + a2) * x + a1) * x + a0; };
        for (int step = 1; step <= 2; ++step) {
            const double slope = (3.0 * root + 2.0 * a2) * root + a1;
            if (slope == 0.0) break;
            const double next = root - value(root) / slope;
            if (!(std::fabs(value(next)) < std::fabs(value(root)))) break;
            root = next;
        }
        return root;
    };
    x3 = polished(amplitude * std::cos(theta + 2.0 * third) - a2 / 3.0);
    x2 = polished(largest);
    x1 = polished(smallest);
    if (x1 < 0.0) x1 = x2;
}

void FITL(int n, std::span<const double> xi, std::span<const double> yi, double x, double& y, int& ierr,
          Text255& herr) {
    ierr = 0;
    herr.clear();
    y = 0.0;
    if (n < 1 || n > mostFitPoints) {
        ierr = 1;
        message(herr, "[FITL error 1] invalid inputs", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    if (n == 1) {
        y = yi[0];
    } else if (n == 2) {
        if (xi[1] == xi[0]) {
            y = yi[0];
        } else {
            y = yi[0] + (yi[1] - yi[0]) * (x - xi[0]) / (xi[1] - xi[0]);
        }
    } else {
        double vandermonde[mostFitPoints * mostFitPoints];
        double coefficient[mostFitPoints];
        for (int i = 0; i < n; ++i) {
            double power = 1.0;
            for (int j = 0; j < n; ++j) {
                vandermonde[i * n + j] = power;
                power *= xi[static_cast<std::size_t>(i)];
            }
            coefficient[i] = yi[static_cast<std::size_t>(i)];
        }
        LUDECOMP(n, vandermonde, n, coefficient, ierr, herr);
        if (ierr != 0) return;
        for (int j = n - 1; j >= 0; --j) y = y * x + coefficient[j];
    }
}

void TRIDIAG(int n, std::span<const double> lower, std::span<const double> diagonal, std::span<const double> upper,
             std::span<const double> right, std::span<double> solution) {
    static double factor[largestSplineCount];
    if (n < 1 || n > largestSplineCount) return;
    const auto quotient = [](double numerator, double denominator) {
        return denominator == 0.0 ? 0.0 : numerator / denominator;
    };
    double pivot = diagonal[0];
    solution[0] = quotient(right[0], pivot);
    for (int k = 1; k < n; ++k) {
        const auto i = static_cast<std::size_t>(k);
        factor[k] = quotient(upper[i - 1], pivot);
        pivot = diagonal[i] - lower[i] * factor[k];
        solution[i] = quotient(right[i] - lower[i] * solution[i - 1], pivot);
    }
    for (int k = n - 2; k >= 0; --k) {
        const auto i = static_cast<std::size_t>(k);
        solution[i] -= factor[k + 1] * solution[i + 1];
    }
}

void CSPLINE(int n, std::span<const double> xi, std::span<const double> yi, std::span<double> y2) {
    static double lower[largestSplineCount], diagonal[largestSplineCount], upper[largestSplineCount],
        right[largestSplineCount];
    if (n < 1 || n >= largestSplineCount) return;
    const auto last = static_cast<std::size_t>(n);
    lower[0] = upper[0] = right[0] = 0.0;
    lower[last] = upper[last] = right[last] = 0.0;
    diagonal[0] = diagonal[last] = 1.0;
    for (std::size_t i = 1; i < last; ++i) {
        const double before = xi[i] - xi[i - 1];
        const double after = xi[i + 1] - xi[i];
        lower[i] = before;
        diagonal[i] = 2.0 * (before + after);
        upper[i] = after;
        right[i] =
            before == 0.0 || after == 0.0 ? 0.0 : 6.0 * ((yi[i + 1] - yi[i]) / after - (yi[i] - yi[i - 1]) / before);
    }
    const std::size_t count = last + 1;
    TRIDIAG(n + 1, {lower, count}, {diagonal, count}, {upper, count}, {right, count}, y2);
}

void CSPLNVAL(int n, std::span<const double> xi, std::span<const double> yi, std::span<const double> y2, double x,
              double& y, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    y = 0.0;
    const auto last = static_cast<std::size_t>(std::max(n, 0));
    const bool ascending = xi[last] >= xi[0];
    const bool inside = ascending ? x >= xi[0] && x <= xi[last] : x <= xi[0] && x >= xi[last];
    if (!inside) {
        ierr = 192;
        message(herr, "[CSPLNVAL error 192] x is out of range! xi(1)=", FixedPoint{12, 5, xi[0]},
                " x=", FixedPoint{12, 5, x}, " xi(n) =", FixedPoint{12, 5, xi[last]}, nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    std::size_t i = 1;
    while (i < last && (ascending ? x > xi[i] : x < xi[i])) ++i;
    const double interval = xi[i] - xi[i - 1];
    if (interval == 0.0) return;
    const double right = (x - xi[i - 1]) / interval;
    const double left = 1.0 - right;
    y = left * yi[i - 1] + right * yi[i] +
        (left * (left * left - 1.0) * y2[i - 1] + right * (right * right - 1.0) * y2[i]) * interval * interval / 6.0;
}

void MINEIGEN(int n, const double* a, int rowLength, double& lambda, double* vector, int& ierr, Text255& herr) {
    static double factors[largestSystem * largestSystem];
    static double next[largestSystem];
    constexpr int mostIterations = 20;
    constexpr double tolerance = 1e-12;
    ierr = 0;
    herr.clear();
    lambda = 0.0;
    const auto fail = [&] {
        ierr = 1;
        message(herr, "[MINEIGEN error 1] routine did not converge", nullCharacter);
        ERRMSG(ierr, herr);
    };
    if (n < 1 || n > largestSystem) return fail();

    double norm = 0.0;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) norm = std::max(norm, std::fabs(a[i * rowLength + j]));
    if (norm == 0.0) {
        std::fill_n(vector, n, 1.0 / std::sqrt(static_cast<double>(n)));
        return;
    }
    const double shift = -1e-8 * norm;
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < n; ++j) factors[i * n + j] = a[i * rowLength + j] - (i == j ? shift : 0.0);

    // a start with components along every axis, none of them equal, so that no eigenvector is orthogonal to it by
    // symmetry
    double length = 0.0;
    for (int i = 0; i < n; ++i) {
        vector[i] = 1.0 + 0.1 * i / n;
        length += vector[i] * vector[i];
    }
    for (int i = 0; i < n; ++i) vector[i] /= std::sqrt(length);

    double previous = 0.0;
    int settled = 0;                      // step at which the eigenvalue did
    constexpr int furtherIterations = 4;  // its vector has half its digits then
    for (int iteration = 1; settled == 0 || iteration <= settled + furtherIterations; ++iteration) {
        if (settled == 0 && iteration > mostIterations) return fail();
        std::copy_n(vector, n, next);
        ierr = iteration == 1 ? 0 : solveWithStoredFactors;
        LUDECOMP(n, factors, n, next, ierr, herr);
        if (ierr != 0) return;
        // growth along the vector: 1 / (lambda - shift)
        double growth = 0.0;
        length = 0.0;
        for (int i = 0; i < n; ++i) {
            growth += vector[i] * next[i];
            length += next[i] * next[i];
        }
        if (growth == 0.0 || !(length > 0.0)) return fail();
        for (int i = 0; i < n; ++i) vector[i] = next[i] / std::sqrt(length);
        const double relative = 1.0 / growth;
        lambda = relative + shift;
        const double change = iteration == 1 ? 1.0 : (relative - previous) / relative;
        if (settled == 0 && change * change < tolerance) settled = iteration;
        previous = relative;
    }
    // a pair of complex eigenvalues can settle on a number that belongs to no vector
    for (int i = 0; i < n; ++i) {
        double residual = -lambda * vector[i];
        for (int j = 0; j < n; ++j) residual += a[i * rowLength + j] * vector[j];
        if (std::fabs(residual) > 1e-3 * norm) return fail();
    }
    herr.clear();
}

}  // namespace frigana
