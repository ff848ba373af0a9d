// Numerics against closed forms.
#include "UTILITY_NUMERICS.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "EngineSetUp.h"
#include "Larger.h"

namespace frigana {
namespace {

using test::Random;
using test::words;

int ierr;
Text255 herr;

TEST(Numerics, CubeRootKeepsTheSign) {
    for (const double x : {0.0, 1.0, 8.0, 27.0, 1e-9, 2.0, 1e15}) {
        EXPECT_NEAR(CBRTX(x * x * x), x, 1e-15 * x);
        EXPECT_EQ(CBRTX(-x), -CBRTX(x));
    }
}

TEST(Numerics, MinimumOfAParabola) {
    // y = 3 (x - 1.25)^2 - 4
    const double x[] = {0.0, 2.0, 5.0};
    double y[3], xext;
    for (int i = 0; i < 3; ++i) y[i] = 3.0 * (x[i] - 1.25) * (x[i] - 1.25) - 4.0;
    MINP(3, x, y, xext, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_NEAR(xext, 1.25, 1e-14);
    for (double& value : y) value = -value;
    MINP(3, x, y, xext, ierr, herr);
    EXPECT_EQ(ierr, 2);
    EXPECT_EQ(words(herr), "[MINP error 2] curvature of parabola is negative");
    EXPECT_NEAR(xext, 1.25, 1e-14);
}

TEST(Numerics, RootOfALine) {
    const double x[] = {1.0, 3.0, 3.0};
    const double y[] = {2.0, -6.0, -6.0};
    double xext;
    MINP(2, x, y, xext, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_DOUBLE_EQ(xext, 1.5);
    MINP(3, x, y, xext, ierr, herr);  // the last two points coincide
    EXPECT_EQ(ierr, 0);
    EXPECT_DOUBLE_EQ(xext, 1.5);
    const double first[] = {1.0, 1.0, 3.0};
    const double values[] = {2.0, 2.0, -6.0};
    MINP(3, first, values, xext, ierr, herr);  // the first two
    EXPECT_DOUBLE_EQ(xext, 1.5);
    const double outer[] = {1.0, 3.0, 1.0};
    const double ofOuter[] = {2.0, -6.0, 2.0};
    MINP(3, outer, ofOuter, xext, ierr, herr);  // the first and the last
    EXPECT_DOUBLE_EQ(xext, 1.5);
    const double zeros[] = {0.0, 0.0};
    MINP(2, x, zeros, xext, ierr, herr);
    EXPECT_EQ(xext, 1.0) << "the first point is a root already";
}

TEST(Numerics, ExtremumIsHeldToItsBounds) {
    const double x[] = {0.0, 1.0};
    const double flat[] = {1.0, 1.0 + 1e-9};
    double xext;
    MINP(2, x, flat, xext, ierr, herr);
    EXPECT_EQ(xext, -100000.0);
    const double level[] = {-1.0, -1.0};
    MINP(2, x, level, xext, ierr, herr);
    EXPECT_EQ(std::fabs(xext), 100000.0);
    MINP(4, x, flat, xext, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_EQ(words(herr), "[MINP error 1] invalid inputs");
}

TEST(Numerics, PolynomialThroughItsPoints) {
    std::vector<double> x(20), y(20);
    for (int n = 2; n <= 20; ++n) {
        // degree n - 1: product of (x - roots), taken between its points
        const auto polynomial = [n](double at) {
            double product = 1.0;
            for (int i = 1; i < n; ++i) product *= at - 0.9 + 1.7 * i / n;
            return product;
        };
        for (int i = 0; i < n; ++i) {
            x[static_cast<std::size_t>(i)] = std::cos(std::numbers::pi * (i + 0.5) / n);
            y[static_cast<std::size_t>(i)] = polynomial(x[static_cast<std::size_t>(i)]);
        }
        double value;
        POLYN(n, x, y, 0.123, value);
        EXPECT_NEAR(value, polynomial(0.123), 1e-12) << n << " points";
    }
}

TEST(Numerics, PolynomialRefusesOtherCounts) {
    const std::vector<double> x(30, 1.0);
    double value = 7.0;
    POLYN(1, x, x, 0.5, value);
    EXPECT_EQ(value, 0.0);
    value = 7.0;
    POLYN(21, x, x, 0.5, value);
    EXPECT_EQ(value, 0.0);
    // points that coincide leave their difference 0
    POLYN(2, x, x, 0.5, value);
    EXPECT_EQ(value, 1.0);
}

TEST(Numerics, LinearEquations) {
    Random random;
    for (int n = 1; n <= 24; ++n) {
        SquareMatrix<24> matrix{}, factors;
        Array1<double, 24> solution{}, right{};
        for (int i = 1; i <= n; ++i) {
            solution[i] = random.between(-2.0, 2.0);
            // rows of very different size: the pivots are chosen by their share of the row
            const double size = std::pow(10.0, random.between(-8.0, 8.0));
            for (int j = 1; j <= n; ++j) matrix[i][j] = size * random.between(-1.0, 1.0);
        }
        for (int i = 1; i <= n; ++i)
            for (int j = 1; j <= n; ++j) right[i] += matrix[i][j] * solution[j];
        factors = matrix;
        Array1<double, 24> result = right;
        ierr = 0;
        LUDECOMP(n, factors, result, ierr, herr);
        ASSERT_EQ(ierr, 0);
        for (int i = 1; i <= n; ++i) EXPECT_NEAR(result[i], solution[i], 1e-9) << n << " equations";

        // another right side with the same factors
        Array1<double, 24> second{};
        for (int i = 1; i <= n; ++i)
            for (int j = 1; j <= n; ++j) second[i] += matrix[i][j] * (3.0 - solution[j]);
        ierr = solveWithStoredFactors;
        LUDECOMP(n, factors, second, ierr, herr);
        ASSERT_EQ(ierr, 0);
        for (int i = 1; i <= n; ++i) EXPECT_NEAR(second[i], 3.0 - solution[i], 1e-9);
    }
}

TEST(Numerics, PivotOrderCanBeReset) {
    // after a solution that exchanged its rows, factors in the natural order are solved in it
    SquareMatrix<3> exchanged{};
    exchanged[1][3] = exchanged[2][1] = exchanged[3][2] = 1.0;
    Array1<double, 3> right{};
    ierr = 0;
    LUDECOMP(3, exchanged, right, ierr, herr);
    ierr = resetPivotOrder;
    LUDECOMP(3, exchanged, right, ierr, herr);
    EXPECT_EQ(ierr, 0);
    SquareMatrix<3> factors{};
    factors[1][1] = 2.0;
    factors[2][2] = 4.0;
    factors[3][3] = 5.0;
    right[1] = 2.0;
    right[2] = 8.0;
    right[3] = 15.0;
    ierr = solveWithStoredFactors;
    LUDECOMP(3, factors, right, ierr, herr);
    EXPECT_EQ(right[1], 1.0);
    EXPECT_EQ(right[2], 2.0);
    EXPECT_EQ(right[3], 3.0);
}

TEST(Numerics, SingularMatrix) {
    SquareMatrix<3> zeroRow{}, dependent{};
    zeroRow[1][1] = zeroRow[2][2] = 1.0;
    Array1<double, 3> right{};
    ierr = 0;
    LUDECOMP(3, zeroRow, right, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_EQ(words(herr), "[LUdecomp error 1] singular matrix");
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 3; ++j) dependent[i][j] = 1.0;
    ierr = 0;
    LUDECOMP(3, dependent, right, ierr, herr);
    EXPECT_EQ(ierr, 1);
}

TEST(Numerics, CubicWithThreeRoots) {
    Random random;
    for (int n = 0; n < 20000; ++n) {
        const double a = random.between(-1.0, 1.0), b = a + random.between(0.05, 1.0),
                     c = b + random.between(0.05, 1.0);
        double x1, x2, x3;
        CUBIC(-(a + b + c), a * b + b * c + a * c, -a * b * c, x1, x2, x3);
        ASSERT_NEAR(x2, c, 1e-12);
        ASSERT_NEAR(x3, b, 1e-12);
        ASSERT_NEAR(x1, a < 0.0 ? c : a, 1e-12);
    }
}

TEST(Numerics, CubicWithOneRoot) {
    Random random;
    for (int n = 0; n < 20000; ++n) {
        // (x - root) ((x - center)^2 + width^2)
        const double root = random.between(-3.0, 3.0), center = random.between(-3.0, 3.0),
                     width = random.between(0.1, 3.0);
        const double square = center * center + width * width;
        double x1, x2, x3;
        CUBIC(-root - 2.0 * center, 2.0 * root * center + square, -root * square, x1, x2, x3);
        ASSERT_NEAR(x1, root, 1e-11);
        ASSERT_EQ(x1, x2);
        ASSERT_EQ(x1, x3);
    }
}

TEST(Numerics, CubicWithATripleRoot) {
    double x1, x2, x3;
    CUBIC(-3.0, 3.0, -1.0, x1, x2, x3);
    EXPECT_NEAR(x1, 1.0, 1e-5);
    EXPECT_NEAR(x2, 1.0, 1e-5);
    EXPECT_NEAR(x3, 1.0, 1e-5);
}

TEST(Numerics, FitThroughPoints) {
    const std::vector<double> x{0.5, 1.0, 2.0, 3.0, 4.5}, constant(5, 4.0);
    std::vector<double> y(5);
    double value;
    FITL(1, x, constant, 99.0, value, ierr, herr);
    EXPECT_EQ(value, 4.0);
    for (int n = 2; n <= 5; ++n) {
        for (std::size_t i = 0; i < 5; ++i) y[i] = 1.0 - 2.0 * std::pow(x[i], n - 1);
        FITL(n, x, y, 2.5, value, ierr, herr);
        EXPECT_EQ(ierr, 0);
        EXPECT_NEAR(value, 1.0 - 2.0 * std::pow(2.5, n - 1), 1e-11);
    }
    for (const int n : {0, -1, 51}) {
        FITL(n, x, y, 2.5, value, ierr, herr);
        EXPECT_EQ(ierr, 1);
        EXPECT_EQ(words(herr), "[FITL error 1] invalid inputs");
    }
}

TEST(Numerics, FitThroughPointsThatCoincide) {
    const std::vector<double> x{2.0, 2.0, 2.0}, y{3.0, 3.0, 3.0};
    double value = 7.0;
    FITL(2, x, y, 2.5, value, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(value, 3.0);
    FITL(3, x, y, 2.5, value, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_EQ(words(herr), "[LUdecomp error 1] singular matrix");
    EXPECT_EQ(value, 0.0);
}

TEST(Numerics, SystemsThatTheTablesCannotHoldAreRefused) {
    std::vector<double> a(1, 1.0), c(1, 7.0);
    for (const int n : {0, -1, largestSystem + 1}) {
        ierr = 0;
        LUDECOMP(n, a.data(), 1, c.data(), ierr, herr);
        EXPECT_EQ(ierr, 1) << n;
        EXPECT_EQ(words(herr), "[LUdecomp error 1] singular matrix");
        double lambda = 7.0;
        MINEIGEN(n, a.data(), 1, lambda, c.data(), ierr, herr);
        EXPECT_EQ(ierr, 1) << n;
        EXPECT_EQ(words(herr), "[MINEIGEN error 1] routine did not converge");
    }
    for (const int n : {0, -1, largestSplineCount + 1}) {
        TRIDIAG(n, a, a, a, a, c);
        CSPLINE(n, a, a, c);
    }
    EXPECT_EQ(c[0], 7.0) << "nothing is written";
}

TEST(Numerics, NaturalSplineOfThreePoints) {
    const std::vector<double> x{0.0, 1.0, 2.0}, y{0.0, 1.0, 0.0};
    std::vector<double> y2(3);
    CSPLINE(2, x, y, y2);
    EXPECT_EQ(y2[0], 0.0);
    EXPECT_NEAR(y2[1], -3.0, 1e-15);
    EXPECT_EQ(y2[2], 0.0);
    double value;
    CSPLNVAL(2, x, y, y2, 0.5, value, ierr, herr);
    EXPECT_NEAR(value, 0.6875, 1e-15);
    CSPLNVAL(2, x, y, y2, 1.5, value, ierr, herr);
    EXPECT_NEAR(value, 0.6875, 1e-15);
}

TEST(Numerics, NaturalSplineOfASine) {
    // The second derivative of a sine vanishes at the ends, so the error falls with the fourth power of the interval.
    double error[2];
    for (int k = 0; k < 2; ++k) {
        const int n = k == 0 ? 20 : 40;
        std::vector<double> x, y, y2(static_cast<std::size_t>(n + 1));
        for (int i = 0; i <= n; ++i) {
            x.push_back(std::numbers::pi * i / n);
            y.push_back(std::sin(x.back()));
        }
        CSPLINE(n, x, y, y2);
        error[k] = 0.0;
        for (double at = 0.001; at < 3.14; at += 0.01) {
            double value;
            CSPLNVAL(n, x, y, y2, at, value, ierr, herr);
            ASSERT_EQ(ierr, 0);
            error[k] = test::larger(error[k], std::fabs(value - std::sin(at)));
        }
    }
    EXPECT_LT(error[0], 2e-6);
    EXPECT_NEAR(error[0] / error[1], 16.0, 2.0);
}

TEST(Numerics, SplineOutsideItsRange) {
    const std::vector<double> x{1.0, 2.0, 4.0}, y{1.0, 2.0, 4.0}, y2{0.0, 0.0, 0.0};
    double value = 7.0;
    CSPLNVAL(2, x, y, y2, 4.5, value, ierr, herr);
    EXPECT_EQ(ierr, 192);
    EXPECT_EQ(value, 0.0);
    EXPECT_EQ(words(herr),
              "[CSPLNVAL error 192] x is out of range! xi(1)=     1.00000 x=     4.50000 xi(n) =     4.00000");
    CSPLNVAL(2, x, y, y2, 0.5, value, ierr, herr);
    EXPECT_EQ(ierr, 192);
    for (const double end : {1.0, 4.0}) {
        CSPLNVAL(2, x, y, y2, end, value, ierr, herr);
        EXPECT_EQ(ierr, 0);
        EXPECT_EQ(value, end);
    }
}

// The same points from the right to the left are the same curve.
TEST(Numerics, SplineOfFallingArguments) {
    const std::vector<double> x{0.0, 0.7, 1.5, 2.0}, y{1.0, 0.2, -0.3, 0.4};
    const std::vector<double> xFalling(x.rbegin(), x.rend()), yFalling(y.rbegin(), y.rend());
    std::vector<double> y2(4), y2Falling(4);
    CSPLINE(3, x, y, y2);
    CSPLINE(3, xFalling, yFalling, y2Falling);
    for (const double at : {0.0, 0.3, 0.7, 1.1, 1.9, 2.0}) {
        double rising = 7.0, falling = 8.0;
        CSPLNVAL(3, x, y, y2, at, rising, ierr, herr);
        CSPLNVAL(3, xFalling, yFalling, y2Falling, at, falling, ierr, herr);
        EXPECT_EQ(ierr, 0);
        EXPECT_NEAR(rising, falling, 1e-14) << at;
    }
    for (const double at : {-0.1, 2.1, std::nan("")}) {
        double value = 7.0;
        CSPLNVAL(3, xFalling, yFalling, y2Falling, at, value, ierr, herr);
        EXPECT_EQ(ierr, 192) << at;
        EXPECT_EQ(value, 0.0);
    }
}

TEST(Numerics, SplineWithAnIntervalOfLengthZero) {
    const std::vector<double> x{1.0, 1.0, 2.0}, y{3.0, 3.0, 4.0};
    std::vector<double> y2(3, 9.0);
    CSPLINE(2, x, y, y2);
    for (const double second : y2) EXPECT_EQ(second, 0.0);
    const std::vector<double> atTheEnd{0.0, 1.0, 1.0};
    std::fill(y2.begin(), y2.end(), 9.0);
    CSPLINE(2, atTheEnd, y, y2);
    for (const double second : y2) EXPECT_EQ(second, 0.0);
    double value = 7.0;
    CSPLNVAL(2, x, y, y2, 1.0, value, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(value, 0.0);
}

TEST(Numerics, TridiagonalSystem) {
    Random random;
    const int n = 30;
    std::vector<double> lower(n), diagonal(n), upper(n), right(n), solution(n), expected(n);
    for (std::size_t i = 0; i < n; ++i) {
        lower[i] = random.between(-1.0, 1.0);
        upper[i] = random.between(-1.0, 1.0);
        diagonal[i] = random.between(2.5, 3.0);
        expected[i] = random.between(-5.0, 5.0);
    }
    for (std::size_t i = 0; i < n; ++i) {
        right[i] = diagonal[i] * expected[i];
        if (i > 0) right[i] += lower[i] * expected[i - 1];
        if (i + 1 < n) right[i] += upper[i] * expected[i + 1];
    }
    TRIDIAG(n, lower, diagonal, upper, right, solution);
    for (std::size_t i = 0; i < n; ++i) EXPECT_NEAR(solution[i], expected[i], 1e-13);
}

TEST(Numerics, TridiagonalSystemWithAZeroPivot) {
    const std::vector<double> zero(3, 0.0), right{1.0, 2.0, 3.0}, diagonal{2.0, 0.0, 3.0};
    std::vector<double> solution(3, 9.0);
    TRIDIAG(3, zero, diagonal, zero, right, solution);
    EXPECT_EQ(solution[0], 0.5);
    EXPECT_EQ(solution[1], 0.0);
    EXPECT_EQ(solution[2], 1.0);
}

TEST(Numerics, SmallestEigenvalueOfASecondDifference) {
    for (int n = 2; n <= 12; ++n) {
        SquareMatrix<12> matrix{};
        for (int i = 1; i <= n; ++i) {
            matrix[i][i] = 2.0;
            if (i > 1) matrix[i][i - 1] = matrix[i - 1][i] = -1.0;
        }
        double lambda;
        Array1<double, 12> vector{};
        MINEIGEN(n, matrix, lambda, vector, ierr, herr);
        ASSERT_EQ(ierr, 0) << n;
        const double step = std::numbers::pi / (n + 1);
        EXPECT_NEAR(lambda, 2.0 - 2.0 * std::cos(step), 1e-9);
        const double scale = vector[1] / std::sin(step);
        for (int i = 1; i <= n; ++i)
            EXPECT_NEAR(vector[i], scale * std::sin(i * step), 1e-5);  // the iteration stops by the eigenvalue
    }
}

TEST(Numerics, SmallestEigenvalueOfASingularMatrix) {
    SquareMatrix<2> matrix{};
    matrix[1][1] = matrix[2][2] = 1.0;
    matrix[1][2] = matrix[2][1] = -1.0;
    double lambda;
    Array1<double, 2> vector{};
    MINEIGEN(2, matrix, lambda, vector, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_NEAR(lambda, 0.0, 1e-12);
    EXPECT_NEAR(vector[1], vector[2], 1e-7);
}

TEST(Numerics, SmallestEigenvalueOfNothing) {
    SquareMatrix<3> zeros{};
    double lambda = 7.0;
    Array1<double, 3> vector{};
    MINEIGEN(3, zeros, lambda, vector, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(lambda, 0.0);
    for (int i = 1; i <= 3; ++i) EXPECT_NEAR(vector[i] * vector[i], 1.0 / 3.0, 1e-15);
}

// What the search is shifted by, to keep a singular matrix regular, may be an eigenvalue itself.
TEST(Numerics, EigenvaluesThatCannotBeFoundAreRefused) {
    SquareMatrix<2> matrix{};
    matrix[1][1] = -1e-8;
    matrix[2][2] = 1.0;
    double lambda;
    Array1<double, 2> vector{};
    MINEIGEN(2, matrix, lambda, vector, ierr, herr);
    EXPECT_EQ(ierr, 1);
    matrix[1][1] = std::nan("");
    MINEIGEN(2, matrix, lambda, vector, ierr, herr);
    EXPECT_EQ(ierr, 1);
}

TEST(Numerics, EigenvalueOfARotationDoesNotConverge) {
    SquareMatrix<2> rotation{};
    rotation[1][2] = 1.0;
    rotation[2][1] = -1.0;
    double lambda;
    Array1<double, 2> vector{};
    MINEIGEN(2, rotation, lambda, vector, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_EQ(words(herr), "[MINEIGEN error 1] routine did not converge");
}

}  // namespace
}  // namespace frigana
