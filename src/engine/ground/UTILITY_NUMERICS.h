// Interpolation, linear algebra, splines.
// State: the scratch arrays, and the pivot order of LUDECOMP, which a second solution with the same factors needs.
// Lists are taken from their first element on; points are numbered from 1 in the texts and from 0 in the spans.
#pragma once

#include <span>

#include "EngineLimits.h"

namespace frigana {

inline constexpr int largestSystem = 64;         // equations in LUDECOMP and MINEIGEN
inline constexpr int largestSplineCount = 1100;  // points in CSPLINE
inline constexpr int mostPolynomialPoints = 20;  // points in POLYN
inline constexpr int mostFitPoints = 50;         // points in FITL

// Matrix of the equation solvers, indices from 1.
template <int N>
using SquareMatrix = Array1<Array1<double, N>, N>;

// Requests to LUDECOMP, given in its status argument.
inline constexpr int resetPivotOrder = -190;
inline constexpr int solveWithStoredFactors = -191;

// Real cube root, with the sign of x.
double CBRTX(double x);

// Minimum of the parabola through three points, or root of the line through two.
//   Given     n       3 for the parabola, 2 for the line
//             xi, yi  points
//   Returned  xext    abscissa, held to -100000 to 100000
//   Codes     1       n is neither 2 nor 3 (xext is 0)
//             2       the parabola opens downward: xext is its maximum
//   Notes     Where two of three points have the same abscissa, the line through the two distinct ones serves.
void MINP(int n, std::span<const double> xi, std::span<const double> yi, double& xext, int& ierr, Text255& herr);

// Value of the polynomial through n points, by Newton's divided differences.
//   Given     n       number of points, 2 to 20
//             xi, yi  points
//             x       where
//   Returned  y       value; 0 for another n
//   Notes     A difference of abscissas below 1e-20 leaves its divided difference 0.
void POLYN(int n, std::span<const double> xi, std::span<const double> yi, double x, double& y);

// Solves a system of linear equations by LU decomposition with scaled partial pivoting.
//   Given     n          number of equations
//             a          matrix, row by row, rows `rowLength` apart
//             c          right side
//             ierr       solveWithStoredFactors: a holds the factors of an earlier call;
//                        resetPivotOrder: sets the pivot order 1, 2, 3 and does nothing else; anything else: the full
//                        way
//   Returned  a          factors L and U, rows in their original places
//             c          solution
//   Codes     1          singular matrix
//   Source    W. H. Press et al., Numerical Recipes, ch. 2.3 (Crout's method)
void LUDECOMP(int n, double* a, int rowLength, double* c, int& ierr, Text255& herr);

template <int N>
void LUDECOMP(int n, SquareMatrix<N>& a, Array1<double, N>& c, int& ierr, Text255& herr) {
    LUDECOMP(n, a.items[0].items, N, c.items, ierr, herr);
}

// Puts the row with the largest ratio of its element in column k to the row's scale at place k of the order.
//   Given     n, a, rowLength  as LUDECOMP
//             k                column, from 0
//             scale            1 / largest element of each row
//   Changed   order            rows in the order of elimination
void PIVOT(int n, const double* a, int rowLength, int k, const double* scale, int* order);

// Real roots of x^3 + a2 x^2 + a1 x + a0.
//   Returned  x1, x2, x3  one real root: all three hold it. Three: x2 the largest; x1 the smallest, or the largest if
//   the
//                         smallest is negative; x3 the one between
//   Source    trigonometric and Cardano's solutions, M. Abramowitz, I. A. Stegun, Handbook of Mathematical
//   Functions, 3.8.2
void CUBIC(double a2, double a1, double a0, double& x1, double& x2, double& x3);

// Value of the polynomial of degree n - 1 through n points, by its coefficients.
//   Given     n       number of points, 1 to 50
//             xi, yi  points
//             x       where
//   Returned  y       value
//   Codes     1       n out of range, or LUDECOMP's for coinciding points
void FITL(int n, std::span<const double> xi, std::span<const double> yi, double x, double& y, int& ierr, Text255& herr);

// Natural cubic spline through n + 1 points.
//   Given     n       number of intervals
//             xi, yi  the n + 1 points
//   Returned  y2      second derivatives at the points, 0 at the ends
//   Notes     An interval of length zero leaves the right side of its row 0.
void CSPLINE(int n, std::span<const double> xi, std::span<const double> yi, std::span<double> y2);

// Solves a tridiagonal system by the Thomas algorithm.
//   Given     n           number of equations
//             lower, diagonal, upper  coefficients; lower[0] and upper[n-1] are not used
//             right       right side
//   Returned  solution
//   Notes     A zero pivot gives the factor 0 instead of a division.
void TRIDIAG(int n, std::span<const double> lower, std::span<const double> diagonal, std::span<const double> upper,
             std::span<const double> right, std::span<double> solution);

// Value of a cubic spline of CSPLINE.
//   Given     n           number of intervals
//             xi, yi, y2  points and second derivatives
//             x           where
//   Returned  y           value; 0 for an interval of length zero
//   Codes     192         x is out of range (y is 0)
void CSPLNVAL(int n, std::span<const double> xi, std::span<const double> yi, std::span<const double> y2, double x,
              double& y, int& ierr, Text255& herr);

// Eigenvalue of smallest size of a matrix and its eigenvector, by inverse iteration.
//   Given     n         order
//             a         matrix, row by row, rows `rowLength` apart
//   Returned  lambda    eigenvalue
//             vector    eigenvector of length 1
//   Codes     1         not converged in 20 iterations
//   Notes     A small shift keeps the factors of a matrix whose eigenvalue is zero.
void MINEIGEN(int n, const double* a, int rowLength, double& lambda, double* vector, int& ierr, Text255& herr);

template <int N>
void MINEIGEN(int n, const SquareMatrix<N>& a, double& lambda, Array1<double, N>& vector, int& ierr, Text255& herr) {
    MINEIGEN(n, a.items[0].items, N, lambda, vector.items, ierr, herr);
}

}  // namespace frigana
