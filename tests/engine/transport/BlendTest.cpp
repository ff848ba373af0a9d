// Transport properties and surface tension of the predefined blends along their bubble and dew lines and above their
// critical temperature.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>

#include "LIMITS.h"
#include "Larger.h"
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

std::vector<std::string> fluids() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(std::string(test::dataFolder) + "/fluids"))
        if (entry.path().extension() == ".FLD") names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

int setUpFluids(const std::vector<std::string>& names) {
    setPath();
    FileNames files{};
    int nc = 0, ierr = 0;
    for (const std::string& name : names) files[++nc].assign(name + ".FLD");
    Text255 herr;
    Text3 reference = "DEF";
    SETUP(nc, files, "HMX.BNC", reference, ierr, herr);
    return ierr;
}

// A blend that is almost a pure fluid has the properties of the fluid, background and enhancement of the conductivity
// included, along the whole line of saturation.
TEST(Blends, tendToTheirComponents) {
    const auto names = fluids();
    EXPECT_GE(names.size(), 36u);
    int states = 0;
    double worstViscosity = 0.0, worstConductivity = 0.0;
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        struct State {
            double T, D;
            TransportPoint pure;
        };
        std::vector<State> line;
        ASSERT_LE(setUpFluids({name}), 0);
        const FluidConstants& c = fluidConstants;
        double lowest = c.TMEOS[1];
        if (modelTags.HETA[1] != "ECS") lowest = std::max(lowest, c.TMETA[1]);
        if (modelTags.HTCX[1] != "ECS") lowest = std::max(lowest, c.TMTCX[1]);
        lowest += 1.0;
        for (int k = 0; k <= 12; ++k) {
            const double T = lowest + (0.98 * c.TCRIT[1] - lowest) * k / 12.0;
            double p = 0.0, Dl = 0.0, Dv = 0.0;
            ASSERT_TRUE(saturation(T, p, Dl, Dv)) << T;
            for (const double D : {Dl, Dv}) line.push_back({T, D, transport(T, D)});
        }
        // the first partner of which anything is known
        int code = 1;
        for (const char* partner : {"R134A", "CO2", "NITROGEN", "METHANE"})
            if (code > 0 && name != partner) code = setUpFluids({name, partner});
        ASSERT_LE(code, 0);
        Composition x{};
        x[2] = 1e-10;
        x[1] = 1.0 - x[2];
        for (const State& state : line) {
            // corresponding states hold the components of a blend, not a pure fluid, within their limits
            double tmin = 0.0, dmax = HUGE_VAL;
            if (modelTags.HETA[1] == "ECS" || modelTags.HTCX[1] == "ECS") ECSLIM(1, -1, tmin, dmax);
            if (state.T < tmin || state.D > dmax) continue;
            const TransportPoint mixed = transport(state.T, state.D, x);
            if (mixed.ierr == 50) continue;  // blends of water and alcohols are refused
            EXPECT_NEAR(mixed.eta / state.pure.eta, 1.0, 1e-6) << state.T << ' ' << state.D << ' ' << mixed.message;
            EXPECT_NEAR(mixed.tcx / state.pure.tcx, 1.0, 1e-6) << state.T << ' ' << state.D << ' ' << mixed.message;
            worstViscosity = larger(worstViscosity, std::fabs(mixed.eta / state.pure.eta - 1.0));
            worstConductivity = larger(worstConductivity, std::fabs(mixed.tcx / state.pure.tcx - 1.0));
            ++states;
        }
    }
    std::printf("%d states of %zu fluids: viscosity within %.1e, conductivity within %.1e\n", states, names.size(),
                worstViscosity, worstConductivity);
}

// A trace of carbon dioxide leaves the vapor of R143a, whose background is negative, where it is.
TEST(Blends, aTraceDoesNotMoveTheConductivityOfAVapor) {
    ASSERT_LE(setUpFluids({"R143A"}), 0);
    const double pure = transport(250.0, 0.1).tcx;
    ASSERT_LE(setUpFluids({"R143A", "CO2"}), 0);
    double last = pure;
    for (const double trace : {1e-8, 1e-6, 1e-4, 1e-3}) {
        Composition x{};
        x[2] = trace;
        x[1] = 1.0 - trace;
        const double mixed = transport(250.0, 0.1, x).tcx;
        EXPECT_NEAR(mixed / last, 1.0, 2.0 * trace + 1e-9) << trace;
        last = mixed;
    }
}

// Vapors of blends with R143a: no conductivity above or below those of all components at the same temperature and
// density. Nearer to the critical temperature of 344 K each component has an enhancement about a density of its own.
TEST(Blends, aVaporLiesBetweenItsComponents) {
    for (const char* name : {"R507A.MIX", "R404A.MIX"}) {
        setPath();
        FileNames files{};
        Composition x{};
        int nc = 0, ierr = 0;
        Text255 herr;
        Text3 reference = "DEF";
        SETMIX(Text255(std::string_view(name)), "HMX.BNC", reference, nc, files, x, ierr, herr);
        ASSERT_LE(ierr, 0) << name << ' ' << words(herr);
        for (double T = 220.0; T <= 330.0; T += 10.0) {
            double p = 0.0, Dl = 0.0, Dv = 0.0;
            Composition xl{}, xv{};
            SATT(T, x, 2, p, Dl, Dv, xl, xv, ierr, herr);
            ASSERT_LE(ierr, 0) << words(herr);
            for (const double part : {0.1, 0.5, 1.0}) {
                const double D = part * Dv, mixed = transport(T, D, x).tcx;
                double least = HUGE_VAL, most = 0.0;
                for (int i = 1; i <= nc; ++i) {
                    const double own = transport(T, D, unitComposition(i)).tcx;
                    least = std::min(least, own);
                    most = larger(most, own);
                }
                EXPECT_GT(mixed, least) << name << ' ' << T << ' ' << D;
                EXPECT_LT(mixed, most) << name << ' ' << T << ' ' << D;
            }
        }
    }
}

}  // namespace
}  // namespace frigana::test
