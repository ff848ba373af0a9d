// The exponentials of the equations' terms against the library's, and the logarithm that remembers its argument.
#include "Exponentials.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

#include "EngineSetUp.h"
#include "Larger.h"
#include "SharedLogarithm.h"

namespace {

using frigana::exponentials;

TEST(Exponentials, AgreeWithTheLibrary) {
    // one unit in the last place is 2.2e-16; the library itself is right to half of one
    constexpr double tolerance = 3e-16;
    frigana::test::Random random;
    double largest = 0.0;
    for (int round = 0; round < 20000; ++round) {
        std::array<double, 7> e{}, result{};
        const double width = round % 2 == 0 ? 700.0 : 1.0;
        for (double& value : e) value = random.between(-width, width);
        exponentials(e.data(), result.data(), static_cast<int>(e.size()));
        for (std::size_t i = 0; i < e.size(); ++i) {
            const double deviation = std::fabs(result[i] / std::exp(e[i]) - 1.0);
            ASSERT_LT(deviation, tolerance) << e[i];
            largest = frigana::test::larger(largest, deviation);
        }
    }
    std::printf("largest relative deviation %.1e\n", largest);
}

TEST(Exponentials, OfEveryCount) {
    for (int count = 0; count <= 9; ++count) {
        std::array<double, 10> e{}, result{};
        for (std::size_t i = 0; i < e.size(); ++i) e[i] = 0.1 * static_cast<double>(i) - 0.3;
        result.fill(-1.0);
        exponentials(e.data(), result.data(), count);
        for (std::size_t i = 0; i < e.size(); ++i)
            EXPECT_DOUBLE_EQ(result[i], static_cast<int>(i) < count ? std::exp(e[i]) : -1.0) << count << ' ' << i;
    }
}

TEST(Exponentials, AtTheEndsOfTheRange) {
    constexpr std::array<double, 6> e{0.0, -0.0, 700.0, -700.0, 1e-300, 0.34657359027997264};
    std::array<double, 6> result{};
    exponentials(e.data(), result.data(), 6);
    for (std::size_t i = 0; i < e.size(); ++i) EXPECT_DOUBLE_EQ(result[i], std::exp(e[i])) << e[i];
    EXPECT_EQ(result[0], 1.0);
}

TEST(Exponentials, WhatIsNoNumberStaysNone) {
    const double e = std::numeric_limits<double>::quiet_NaN();
    double result = 0.0;
    exponentials(&e, &result, 1);
    EXPECT_TRUE(std::isnan(result));
}

#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__)
// What the functions with wide loops rest on: the wider registers change no bit.
__attribute__((noinline)) void plainOnes(const double* e, double* result, int count) {
    exponentials(e, result, count);
}
__attribute__((noinline, target("avx2"))) void wideOnes(const double* e, double* result, int count) {
    exponentials(e, result, count);
}

TEST(Exponentials, AreTheSameBitsInWiderRegisters) {
    if (!__builtin_cpu_supports("avx2")) GTEST_SKIP() << "this processor has no registers of four numbers";
    frigana::test::Random random;
    for (int round = 0; round < 20000; ++round) {
        std::array<double, 21> e{}, plain{}, wide{};
        const double width = round % 2 == 0 ? 700.0 : 1.0;
        for (double& value : e) value = random.between(-width, width);
        plainOnes(e.data(), plain.data(), static_cast<int>(e.size()));
        wideOnes(e.data(), wide.data(), static_cast<int>(e.size()));
        ASSERT_EQ(std::memcmp(plain.data(), wide.data(), sizeof plain), 0) << round;
    }
}
#endif

TEST(SharedLogarithm, GivesTheLibrarysValueOfEveryArgument) {
    frigana::SharedLogarithm shared;
    for (const double value : {1.0, 2.0, 2.0, 0.5, 1.0, 1e-300, 1e300, 0.0, 3.0})
        EXPECT_EQ(shared.of(value), std::log(value));
    EXPECT_TRUE(std::isnan(shared.of(-1.0)));
    EXPECT_EQ(shared.of(1.0), 0.0);
}

}  // namespace
