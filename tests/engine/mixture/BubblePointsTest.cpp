// Bubble points of the blends 54 to 123 by an independent evaluation of the same equations and parameters,
// tests/reference/blend_bubble_points.csv.
#include <cstdio>
#include <fstream>
#include <sstream>

#include "Equilibrium.h"
#include "TreeFolders.h"

namespace frigana::equilibria {
namespace {

struct BubblePoint {
    std::string blend;
    double T, p, rho;  // [K, kPa, kg/m3]
};

std::vector<BubblePoint> bubblePoints() {
    std::ifstream file(std::string(test::testsFolder) + "/reference/blend_bubble_points.csv");
    std::string line, field[4];
    std::getline(file, line);
    std::vector<BubblePoint> rows;
    while (std::getline(file, line)) {
        std::istringstream fields(line);
        for (std::string& f : field) std::getline(fields, f, ',');
        rows.push_back({field[0], std::stod(field[1]), std::stod(field[2]), std::stod(field[3])});
    }
    return rows;
}

// Pressure and density of both are converged to 1e-9. A pair without published parameters has the record of its
// estimate in the file and six digits of the constants behind it there.
constexpr double samePressure = 1e-6, sameDensity = 1e-6;

TEST(BubblePoints, AgreeWithAnIndependentEvaluation) {
    const auto rows = bubblePoints();
    ASSERT_EQ(rows.size(), 70U);
    Worst p, rho;
    for (const BubblePoint& row : rows) {
        SCOPED_TRACE(row.blend);
        Composition z{};
        ASSERT_TRUE(setUpBlend(row.blend, z));
        const TwoPhases s = atTemperature(row.T, bubble, z);
        EXPECT_EQ(s.ierr, 0) << s.herr.trimmed();
        const double density = s.rhol * WMOL(z);
        EXPECT_LE(relative(s.p, row.p), samePressure) << s.p << " kPa for " << row.p;
        EXPECT_LE(relative(density, row.rho), sameDensity) << density << " kg/m3 for " << row.rho;
        p.take(relative(s.p, row.p), row.blend);
        rho.take(relative(density, row.rho), row.blend);
    }
    std::printf("%zu bubble points: largest deviation of the pressure %.1e (%s), of the density %.1e (%s)\n",
                rows.size(), p.value, p.where.c_str(), rho.value, rho.where.c_str());
}

}  // namespace
}  // namespace frigana::equilibria
