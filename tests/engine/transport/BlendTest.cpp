// Transport properties and surface tension of the predefined blends along their bubble and dew lines and above their
// critical temperature.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>

#include "LIMITS.h"
#include "Transport.h"
#include "TreeFolders.h"

namespace frigana::test {
namespace {

std::vector<std::string> blends() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(std::string(test::dataFolder) + "/mixtures"))
        if (entry.path().extension() == ".MIX") names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(Blends, haveTransportPropertiesInBothPhasesAndAboveTheCriticalPoint) {
    const auto names = blends();
    EXPECT_EQ(names.size(), 123u);
    int states = 0;
    for (const std::string& name : names) {
        setPath();
        FileNames files{};
        Composition x{};
        int nc = 0, ierr = 0;
        Text255 herr;
        Text3 reference = "DEF";
        SETMIX(Text255(std::string_view(name)), "HMX.BNC", reference, nc, files, x, ierr, herr);
        ASSERT_LE(ierr, 0) << name << ' ' << words(herr);
        double tc = 0.0, pc = 0.0, dc = 0.0;
        CRITP(x, tc, pc, dc, ierr, herr);
        double last = HUGE_VAL, tmin = 0.0, tmax = 0.0, dmax = 0.0, pmax = 0.0;
        LIMITS("EOS", x, tmin, tmax, dmax, pmax);
        const double coldest = std::max(0.55 * tc, tmin + 1e-6);
        for (int k = 0; k <= 12; ++k) {
            const double T = coldest + (0.98 * tc - coldest) * k / 12.0;
            for (const int kph : {1, 2}) {
                double p = 0.0, Dl = 0.0, Dv = 0.0, sigma = 0.0;
                Composition xl{}, xv{};
                SATT(T, x, kph, p, Dl, Dv, xl, xv, ierr, herr);
                ASSERT_LE(ierr, 0) << name << ' ' << T << ' ' << words(herr);
                const TransportPoint point = transport(T, kph == 1 ? Dl : Dv, x);
                EXPECT_GT(point.eta, 0.0) << name << ' ' << T << ' ' << point.message;
                EXPECT_GT(point.tcx, 0.0) << name << ' ' << T << ' ' << point.message;
                if (kph == 1) {
                    EXPECT_LT(point.eta, last) << name << ' ' << T;
                    last = point.eta;
                }
                STN(T, Dl, Dv, xl, xv, sigma, ierr, herr);
                EXPECT_EQ(ierr, 0) << words(herr);
                EXPECT_GT(sigma, 0.0) << name << ' ' << T;
                EXPECT_LT(sigma, 0.05) << name << ' ' << T;
                ++states;
            }
            const TransportPoint point = transport(1.1 * tc, (0.05 + 0.15 * k) * dc, x);
            EXPECT_GT(point.eta, 0.0) << name << ' ' << k << ' ' << point.message;
            EXPECT_GT(point.tcx, 0.0) << name << ' ' << k << ' ' << point.message;
        }
    }
    std::printf("%d saturated states of %zu blends\n", states, names.size());
}

}  // namespace
}  // namespace frigana::test
