// Exponentials of many terms in one loop. The equations of state spend most of their time in exp: written out, without
// a call and without a branch, the compiler takes several terms at once.
#pragma once

#include <cstdint>

#include "Bits.h"

namespace frigana {

// exp of every number.
//   Given     exponents  of -700 to 700; beyond them, and for what is no number, the result has no meaning
//             count      numbers
//   Returned  results    relative error below 3e-16
//   Notes     e = k ln 2 + r, exp(e) = 2^k exp(r) with |r| <= ln 2 / 2, where the series up to r^13 / 13! is exact to
//             4e-18. ln 2 is taken in two parts, so that k times the first is exact.
inline void exponentials(const double* exponents, double* results, int count) {
    constexpr double inverseLn2 = 1.4426950408889634;
    constexpr double ln2First = 6.93147180369123816490e-01, ln2Second = 1.90821492927058770002e-10;
    constexpr double wholeNumber = 0x1.8p52;  // added, it leaves the nearest whole number in the last bits
    for (int i = 0; i < count; ++i) {
        // The caller has filled them.
        const double e = exponents[i];  // NOLINT(clang-analyzer-core.uninitialized.Assign)
        const double shifted = e * inverseLn2 + wholeNumber;
        const double k = shifted - wholeNumber;
        const double r = (e - k * ln2First) - k * ln2Second, r2 = r * r;
        const double even =
            1.0 / 2 +
            r2 * (1.0 / 24 + r2 * (1.0 / 720 + r2 * (1.0 / 40320 + r2 * (1.0 / 3628800 + r2 * (1.0 / 479001600)))));
        const double odd =
            1.0 / 6 + r2 * (1.0 / 120 +
                            r2 * (1.0 / 5040 + r2 * (1.0 / 362880 + r2 * (1.0 / 39916800 + r2 * (1.0 / 6227020800)))));
        const double series = 1.0 + (r + r2 * (even + r * odd));
        const double power = bitCast<double>((bitCast<std::uint64_t>(shifted) << 52U) + (std::uint64_t{1023} << 52U));
        results[i] = series * power;
    }
}

}  // namespace frigana
