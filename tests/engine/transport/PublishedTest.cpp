// Values that the papers of the correlations print, tests/reference/published_values.json and
// further_published_values.json: each within the tolerance
// that its printed digits and the state given allow.
#include <cstdio>

#include "Larger.h"
#include "Transport.h"

namespace frigana::test {
namespace {

class PublishedTransport : public testing::TestWithParam<const char*> {};

TEST_P(PublishedTransport, everyPrintedValueIsMet) {
    const auto values = publishedValues(GetParam());
    ASSERT_GT(values.size(), 100u);
    std::string current;
    double worst = 0.0;
    for (const PublishedValue& v : values) {
        if (v.fluid != current) {
            ASSERT_EQ(setUp(v.fluid), 0) << v.fluid;
        }
        current = v.fluid;
        const double D = v.perMass ? v.rho / fluidConstants.WMAS[1] : v.rho;
        const TransportPoint point = transport(v.T, D);
        const double value = v.property == "viscosity" ? point.eta : point.tcx;
        const double off = value / v.value - 1.0;
        worst = larger(worst, std::abs(off) / v.tolerance);
        std::printf("%-9s %-12s T %8.3f K  D %10.6f mol/L  printed %12.7g  here %12.7g  %9.1e of %7.1e  %s\n",
                    v.fluid.c_str(), v.property.c_str(), v.T, D, v.value, value, off, v.tolerance, v.source.c_str());
        EXPECT_LE(std::abs(off), v.tolerance) << v.fluid << ' ' << v.property << " at " << v.T << " K, " << D
                                              << " mol/L: " << v.source << ' ' << point.message;
    }
    std::printf("largest share of a tolerance: %.3f\n", worst);
}

INSTANTIATE_TEST_SUITE_P(Papers, PublishedTransport,
                         testing::Values("published_values.json", "further_published_values.json"),
                         [](const auto& file) { return std::string(file.index == 0 ? "first" : "further"); });

}  // namespace
}  // namespace frigana::test
