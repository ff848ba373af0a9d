// The larger of numbers that all must be numbers. std::max passes over what is not one (std::max(0.0, NaN) is 0), and a
// test that keeps its largest deviation by it passes best where nothing was computed.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <limits>

namespace frigana::test {

// Largest of finite numbers; one that is not finite fails the test and makes the result infinite, which no bound holds.
inline double larger(std::initializer_list<double> numbers) {
    double found = -std::numeric_limits<double>::infinity();
    for (const double number : numbers) {
        if (!std::isfinite(number)) {
            ADD_FAILURE() << number << " among the numbers of which the largest is kept";
            return std::numeric_limits<double>::infinity();
        }
        if (number > found) found = number;
    }
    return found;
}

// The same for a series: what was kept so far, and the next of it. A series that has failed stays silent.
inline double larger(double kept, double next) {
    return kept == std::numeric_limits<double>::infinity() ? kept : larger({kept, next});
}

}  // namespace frigana::test
