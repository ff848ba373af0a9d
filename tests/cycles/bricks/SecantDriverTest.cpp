// The search for a parameter by whole trial solutions, with solutions whose answer is a known function of it.
#include "SecantDriver.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <vector>

#include "TemporaryFolder.h"
#include "TextFile.h"

namespace frigana::test {
namespace {

constexpr double tenth = 0.10000000149011612;  // the step, a single-precision number

struct Trial {
    double x;
    std::string path;
};

// Writes f(x) to line 3 of the trial's file, with all its digits, and remembers what was asked for.
template <class Function>
struct Recorder {
    Function f;
    std::vector<Trial> trials{};
    void operator()(double x, const Text255& path) {
        trials.push_back({x, std::string(path.trimmed())});
        ASSERT_TRUE(openForWriting(1, path.trimmed()));
        writeFree(1, 1.0);
        writeFree(1, 2.0);
        writeFree(1, f(x));
        writeFree(1, 4.0);
        closeUnit(1);
    }
};

TEST(SecantDriver, TakesThreePassesOfTwoTrialsFromTheFirstValue) {
    const auto f = [](double x) { return x * x * x; };
    Recorder<decltype(f)> solve{f};
    TemporaryFolder folder;
    const Text255 a(folder.path("a.txt")), b(folder.path("b.txt"));
    const double found = secantUnknown({20.0, 3, 2.0}, a, b, [&](double x, const Text255& path) { solve(x, path); });

    ASSERT_EQ(solve.trials.size(), 6u);
    double x = 2.0;
    for (std::size_t pass = 0; pass < 3; ++pass) {
        EXPECT_DOUBLE_EQ(solve.trials[2 * pass].x, x);
        EXPECT_DOUBLE_EQ(solve.trials[2 * pass + 1].x, x + tenth);
        EXPECT_EQ(solve.trials[2 * pass].path, a.trimmed());
        EXPECT_EQ(solve.trials[2 * pass + 1].path, b.trimmed());
        const double slope = tenth / (f(x + tenth) - f(x));
        x += slope * (20.0 - f(x));
    }
    EXPECT_NEAR(found, x, 1e-12);
    EXPECT_GT(std::fabs(found - std::cbrt(20.0)), 1e-9) << "three steps do not end at the root";
}

TEST(SecantDriver, TheSeventhSolutionIsTheResultAndTheScratchFilesGo) {
    const auto f = [](double x) { return 3.0 * x - 1.0; };
    Recorder<decltype(f)> solve{f};
    TemporaryFolder folder;
    TEMPORALFILEOUT = Text255(folder.path(""));
    const Text255 result(folder.path("result.fo1"));
    secantDriver({5.0, 3, 1.0}, result, [&](double x, const Text255& path) { solve(x, path); });
    ASSERT_EQ(solve.trials.size(), 7u);
    EXPECT_NEAR(solve.trials[6].x, 2.0, 1e-12);
    EXPECT_EQ(solve.trials[6].path, result.trimmed());
    EXPECT_FALSE(std::filesystem::exists(solve.trials[0].path));
    EXPECT_FALSE(std::filesystem::exists(solve.trials[1].path));
    EXPECT_NE(solve.trials[0].path, solve.trials[1].path);
}

// A solver that writes the square of its fall to line 4 and a sum to line 2.
std::vector<double> falls;
void squareSolver(SUBSTANCE&, const CYCLEIN& cycle, const Text255& path) {
    EXPECT_EQ(cycle.TDAT[20], 2);
    EXPECT_EQ(cycle.VDAT[21], 7.0);
    const double fall = cycle.VDAT[20];
    falls.push_back(fall);
    ASSERT_TRUE(openForWriting(1, path.trimmed()));
    writeFree(1, 0.0);
    writeFree(1, 10.0 + fall);
    writeFree(1, 0.0);
    writeFree(1, fall * fall);
    closeUnit(1);
}

TEST(SecantDriver, AnExchangerIsLookedForOnTheLineOfItsOption) {
    TemporaryFolder folder;
    TEMPORALFILEOUT = Text255(folder.path(""));
    const Text255 result(folder.path("result.fo1"));
    static SUBSTANCE substance;
    CYCLEIN cycle{};
    cycle.VDAT[21] = 7.0;
    constexpr int lines[6] = {0, 4, 0, 2, 2, 4};
    const struct {
        int option;
        double value, fall, tolerance;
        std::size_t solutions;
    } rows[] = {{1, 9.0, 3.0, 0.01, 7}, {2, 5.5, 5.5, 0.0, 1}, {3, 14.0, 4.0, 1e-9, 7}, {5, 16.0, 4.0, 0.01, 7}};
    for (const auto& row : rows) {
        falls.clear();
        cycle.TDAT[20] = row.option;
        cycle.VDAT[20] = row.value;
        solveExchanger(substance, cycle, lines, 2.5, result, squareSolver);
        ASSERT_EQ(falls.size(), row.solutions);
        if (row.option != 2) {
            EXPECT_EQ(falls[0], 2.5);
        }
        EXPECT_NEAR(falls.back(), row.fall, row.tolerance);
        EXPECT_EQ(cycle.TDAT[20], row.option) << "the request is not changed";
        EXPECT_EQ(cycle.VDAT[20], row.value);
    }
}

}  // namespace
}  // namespace frigana::test
