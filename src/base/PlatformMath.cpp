// Mathematical functions for Windows, in extended precision, rounded once.
//
// The run-time library there multiplies in double precision for a power with a whole exponent and is up to nine units
// in the last place off; iterations that stop at a tolerance make more of that than a last digit. Its arc tangent comes
// from the system. The linker puts these in their place: one power or arc tangent in about a thousand then differs from
// that of Linux, by one unit, as those of exp and log do.
#ifdef _WIN32

#include <cmath>

extern "C" {
double __real_pow(double x, double y);
double __wrap_pow(double x, double y);
double __wrap_atan(double x);
}

namespace {

// The rounding of 64 bits grows with the exponent: to a hundredth of the last of 53 bits for the power of 20, to half
// of it for this one.
constexpr double largestProduct = 1024.0;

long double product(long double base, unsigned exponent) {
    long double result = 1.0L;
    for (; exponent != 0; exponent >>= 1, base *= base)
        if ((exponent & 1) != 0) result *= base;
    return result;
}

}  // namespace

double __wrap_pow(double x, double y) {
    if (!(std::fabs(y) <= largestProduct) || y != std::trunc(y)) return __real_pow(x, y);
    const long double power = product(x, static_cast<unsigned>(std::fabs(y)));
    return static_cast<double>(y < 0.0 ? 1.0L / power : power);
}

double __wrap_atan(double x) {
    return static_cast<double>(std::atan(static_cast<long double>(x)));
}

#endif
