// Saturation of pure fluids against an independent evaluation of the same published equations
// (tests/reference/README.md).
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "FurtherFluids.h"
#include "Saturation.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

using namespace test;

struct Row {
    double T, p, rhol, rhov;  // [K, kPa, kg/m3]
};

void readRows(const char* name, std::map<std::string, std::vector<Row>>& rows) {
    std::ifstream file(std::string(test::testsFolder) + "/reference/" + name);
    std::string line;
    std::getline(file, line);
    while (std::getline(file, line)) {
        std::istringstream fields(line);
        std::string fluid, field;
        std::getline(fields, fluid, ',');
        double v[4];
        for (double& value : v) {
            std::getline(fields, field, ',');
            value = std::stod(field);
        }
        rows[fluid].push_back({v[0], v[1], v[2], v[3]});
    }
}

std::map<std::string, std::vector<Row>> readRows() {
    std::map<std::string, std::vector<Row>> rows;
    readRows("pure_saturation.csv", rows);
    readRows("further_saturation.csv", rows);
    return rows;
}

class PureSaturation : public ::testing::TestWithParam<const char*> {};

// Pressure within 1e-6, densities within 1e-6, and within 1e-4 above 0.995 Tc, where the slope of the isotherm goes to
// zero. Temperature from pressure within 1e-5 K.
TEST_P(PureSaturation, AgreesWithTheReference) {
    static const auto all = readRows();
    const auto found = all.find(GetParam());
    ASSERT_NE(found, all.end());
    ASSERT_GE(found->second.size(), 5U);
    ASSERT_LE(setUp(GetParam()), 0);
    const double M = fluidConstants.WMAS[1];
    Largest p, rhol, rhov, T;
    for (const Row& row : found->second) {
        SCOPED_TRACE(row.T);
        const double densityTolerance = row.T > 0.995 * criticalT() ? 1e-4 : 1e-6;
        for (const int kph : {bubble, dew}) {
            const Saturated s = satt(row.T, kph);
            EXPECT_EQ(s.ierr, 0) << s.text();
            EXPECT_NEAR(s.p / row.p, 1.0, 1e-6);
            EXPECT_NEAR(s.rhol * M / row.rhol, 1.0, densityTolerance);
            EXPECT_NEAR(s.rhov * M / row.rhov, 1.0, densityTolerance);
            p.take(deviation(s.p, row.p), row.T);
            rhol.take(deviation(s.rhol * M, row.rhol), row.T);
            rhov.take(deviation(s.rhov * M, row.rhov), row.T);
        }
        const Saturated back = satp(row.p, dew);
        EXPECT_EQ(back.ierr, 0) << back.text();
        EXPECT_NEAR(back.T, row.T, 1e-5);
        T.take(std::fabs(back.T - row.T), row.T);
    }
    std::printf("%-8s largest deviation: p %.1e at %.2f K, rho_l %.1e at %.2f K, rho_v %.1e at %.2f K, T(p) %.1e K\n",
                GetParam(), p.value, p.where, rhol.value, rhol.where, rhov.value, rhov.where, T.value);
}

INSTANTIATE_TEST_SUITE_P(Fluids, PureSaturation, ::testing::ValuesIn(pureFluids),
                         [](const auto& fluid) { return std::string(fluid.param); });
INSTANTIATE_TEST_SUITE_P(FurtherFluids, PureSaturation, ::testing::ValuesIn(furtherFluids),
                         [](const auto& fluid) { return std::string(fluid.param); });

}  // namespace
}  // namespace frigana
