// States that the papers of equations of state print, tests/reference/further_published_states.csv: each within the
// tolerance that its printed digits allow.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "PROP_SUB.h"
#include "Saturation.h"
#include "TreeFolders.h"

namespace frigana {
namespace {

using namespace test;

std::vector<std::vector<std::string>> printedStates() {
    std::ifstream file(std::string(test::testsFolder) + "/reference/further_published_states.csv");
    std::string line;
    std::getline(file, line);
    std::vector<std::vector<std::string>> rows;
    while (std::getline(file, line)) {
        std::istringstream fields(line);
        std::vector<std::string> row;
        for (std::string field; std::getline(fields, field, ',');) row.push_back(field);
        rows.push_back(row);
    }
    return rows;
}

enum Column { fluid, temperature, density, pressure, cvColumn, cpColumn, sound, psat, rhol, rhov, tolerance, source };

TEST(PublishedStates, AreMet) {
    const auto rows = printedStates();
    ASSERT_EQ(rows.size(), 15U);
    for (const auto& row : rows) {
        ASSERT_EQ(row.size(), source + 1U);
        SCOPED_TRACE(row[fluid] + " at " + row[temperature] + " K, " + row[source]);
        ASSERT_LE(setUp(row[fluid].c_str()), 0);
        const double T = std::stod(row[temperature]), allowed = std::stod(row[tolerance]);
        double worst = 0.0;
        int compared = 0;
        const auto compare = [&](Column column, double value) {
            const double printed = std::stod(row[column]);
            if (std::isnan(printed)) return;
            const double off = std::fabs(value / printed - 1.0);
            EXPECT_LE(off, allowed) << value << " for " << printed;
            if (!(off <= worst)) worst = off;
            ++compared;
        };
        if (row[density] != "nan") {
            double p, e, h, s, cv, cp, w, jt;
            THERM(T, std::stod(row[density]), unitComposition(1), p, e, h, s, cv, cp, w, jt);
            compare(pressure, p);
            compare(cvColumn, cv);
            compare(cpColumn, cp);
            compare(sound, w);
        }
        if (row[psat] != "nan") {
            const Saturated at = satt(T, bubble);
            EXPECT_EQ(at.ierr, 0) << at.text();
            compare(psat, at.p);
            compare(rhol, at.rhol);
            compare(rhov, at.rhov);
        }
        EXPECT_GE(compared, 3);
        std::printf("%-8s %7.2f K: %d values, %.1e of %.1e; %s\n", row[fluid].c_str(), T, compared, worst, allowed,
                    row[source].c_str());
    }
}

}  // namespace
}  // namespace frigana
