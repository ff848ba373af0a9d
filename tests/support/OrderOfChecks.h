// Which of two checks of a solver ends the run where a request offends both.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <span>
#include <string>

namespace frigana::test {

// Runs the changes of every two rows together: the earlier row's check ends the run, or one before it that both
// offend together.
//   Given     rows         checks in the order in which they are made, each with the changes that offend it
//             joined(a, b) whether b can be added to a: another parameter, and none that moves every state
//             run(a, b)    the result of the request with the changes of both
//             form(a)      the failure form of a row
//             excused(a, b)  whether b takes away what a complains of
//   Returned  (value)      pairs that were run
template <class Row, class Joined, class Run, class Form, class Excused>
int expectEarlierCheckWins(std::span<const Row> rows, Joined joined, Run run, Form form, Excused excused) {
    int pairs = 0;
    for (std::size_t i = 0; i < rows.size(); ++i)
        for (std::size_t j = i + 1; j < rows.size(); ++j) {
            if (!joined(rows[i], rows[j]) || excused(rows[i], rows[j])) continue;
            ++pairs;
            const std::string text = run(rows[i], rows[j]);
            const bool reported = std::any_of(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                                              [&](const Row& row) { return text == form(row); });
            EXPECT_TRUE(reported) << rows[i].code << " with " << rows[j].code << ":\n" << text;
        }
    return pairs;
}

}  // namespace frigana::test
