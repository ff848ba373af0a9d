// Every pair of inputs leads back to the state that it was made from: for every fluid, in the liquid, the vapor, above
// the critical point and in two phases.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "FlashState.h"
#include "FurtherFluids.h"
#include "LIMITS.h"
#include "Larger.h"
#include "PROP_SUB.h"
#include "PureFluid.h"

namespace frigana {
namespace {

using test::flash;
using test::FlashState;

constexpr double agreement = 1e-7;

struct Case {
    std::string region;
    FlashState state;
};

// States on a net over the range of the equation; those that are solid or outside the limits are left out.
std::vector<Case> statesOf(const Composition& z) {
    double Tc = 0;
    double pc = 0;
    double Dc = 0;
    int ierr = 0;
    Text255 herr;
    CRITP(z, Tc, pc, Dc, ierr, herr);
    double tmin = 0;
    double tmax = 0;
    double Dmax = 0;
    double pmax = 0;
    LIMITS("EOS", z, tmin, tmax, Dmax, pmax);
    std::vector<Case> cases;
    const auto take = [&](const std::string& region, double T, double p) {
        const FlashState state = flash("TP", T, p, z);
        if (state.ierr == 0 && state.D < Dmax) cases.push_back({region, state});
    };
    for (int i = 0; i < 6; ++i) {
        const double T = tmin + (0.97 * Tc - tmin) * (i + 0.5) / 6;
        const FlashState liquid = flash("TQ", T, 0, z);
        if (liquid.ierr > 0) continue;
        for (const double share : {0.001, 0.1, 0.8}) {
            take("liquid", T, liquid.p + share * (std::min(pmax, 50 * pc) - liquid.p));
        }
        // Flashes of temperature and a caloric property begin at 0.0001 mol/L.
        for (const double share : {0.05, 0.5, 0.9}) {
            if (share * liquid.Dv > 2e-4) take("vapor", T, share * liquid.p);
        }
        // Pressures within 1e-9 kPa of each other are the same to the memorised saturation state: below 0.05 kPa they
        // do not tell temperatures to the agreement asked for.
        if (liquid.p < 0.05) continue;
        for (const double q : {0.02, 0.3, 0.9}) cases.push_back({"two-phase", flash("TQ", T, q, z)});
    }
    for (int i = 0; i < 4; ++i) {
        const double T = 1.04 * Tc + (std::min(tmax, 2 * Tc) - 1.04 * Tc) * i / 4;
        if (T > tmax) break;
        for (const double share : {0.05, 0.7, 1.1, 3.0, 10.0}) {
            if (share * pc < pmax) take("supercritical", T, share * pc);
        }
    }
    return cases;
}

struct Deviations {
    double T = 0, D = 0, p = 0, q = 0;
    double worst() const { return test::larger({T, D, p, q}); }
};

// Temperature; density on the scale on which it follows temperature; pressure on that on which it follows density, as
// a liquid's pressure is 1000 times as sensitive as its density; quality.
Deviations deviationsOf(const FlashState& expected, const FlashState& result, const Composition& z) {
    Deviations d;
    d.T = std::abs(result.T / expected.T - 1);
    if (expected.twoPhase()) {
        d.q = result.twoPhase() ? std::abs(result.q - expected.q) : 1;
        d.p = std::abs(result.p / expected.p - 1);
        return d;
    }
    if (result.twoPhase()) d.q = 1;
    double slope = 0;
    double expansion = 0;
    DPDD(expected.T, expected.D, z, slope);
    DDDT(expected.T, expected.D, z, expansion);
    d.D = std::abs(result.D - expected.D) / (expected.D + expected.T * std::abs(expansion));
    d.p =
        std::abs(result.p - expected.p) / (expected.p + expected.D * slope + expected.T * std::abs(expansion) * slope);
    return d;
}

bool caloricAtT(const std::string& letters) {
    return letters == "TH" || letters == "TS" || letters == "TE";
}

TEST(RoundTrip, EveryPairOfInputsLeadsBackToTheState) {
    struct Pair {
        const char* letters;
        double FlashState::*first;
        double FlashState::*second;
    };
    const Pair pairs[] = {
        {"TP", &FlashState::T, &FlashState::p}, {"TD", &FlashState::T, &FlashState::D},
        {"PD", &FlashState::p, &FlashState::D}, {"PH", &FlashState::p, &FlashState::h},
        {"PS", &FlashState::p, &FlashState::s}, {"PE", &FlashState::p, &FlashState::e},
        {"TH", &FlashState::T, &FlashState::h}, {"TS", &FlashState::T, &FlashState::s},
        {"TE", &FlashState::T, &FlashState::e}, {"DH", &FlashState::D, &FlashState::h},
        {"DS", &FlashState::D, &FlashState::s}, {"DE", &FlashState::D, &FlashState::e},
        {"HS", &FlashState::h, &FlashState::s}, {"ES", &FlashState::e, &FlashState::s},
        {"TQ", &FlashState::T, &FlashState::q}, {"PQ", &FlashState::p, &FlashState::q},
    };
    const Composition z = unitComposition(1);
    std::map<std::string, std::pair<double, std::string>> worst;
    long total = 0;
    std::vector<const char*> fluids(std::begin(test::pureFluids), std::end(test::pureFluids));
    fluids.insert(fluids.end(), std::begin(test::furtherFluids), std::end(test::furtherFluids));
    for (const char* fluid : fluids) {
        ASSERT_LE(test::setUp(fluid), 0) << fluid;
        for (const Case& item : statesOf(z)) {
            const FlashState& state = item.state;
            for (const Pair& pair : pairs) {
                const std::string letters = pair.letters;
                if (state.twoPhase() ? letters == "TP" : letters[1] == 'Q') continue;
                // Energy hardly changes along an isentrope of a liquid: e and s do not tell its state.
                // Flashes of temperature and a caloric property begin at 0.0001 mol/L, also of a saturated vapor.
                if (state.twoPhase() && caloricAtT(letters) && state.Dv < 2e-4) continue;
                if (letters == "ES" && item.region == "liquid") continue;
                const double a = state.*pair.first;
                const double b = state.*pair.second;
                FlashState result = flash(letters, a, b, z);
                Deviations off = deviationsOf(state, result, z);
                // Where an isotherm has the same value twice, the other density is meant.
                if (caloricAtT(letters) && off.worst() > agreement) {
                    const FlashState other = flash(letters, a, b, z, 2);
                    const Deviations offOther = deviationsOf(state, other, z);
                    if (offOther.worst() < off.worst()) {
                        result = other;
                        off = offOther;
                    }
                }
                ++total;
                char where[160];
                std::snprintf(where, sizeof where, "%s %s T=%.8g p=%.8g q=%.3g", fluid, item.region.c_str(), state.T,
                              state.p, state.q);
                EXPECT_LE(result.ierr, 0) << letters << " " << where << " " << result.herr.trimmed();
                if (result.ierr > 0) continue;
                auto& entry = worst[letters + " " + item.region];
                if (off.worst() >= entry.first) entry = {off.worst(), where};
                EXPECT_LE(off.worst(), agreement)
                    << letters << " " << where << " T " << off.T << " D " << off.D << " p " << off.p << " q " << off.q;
            }
        }
    }
    for (const auto& [key, entry] : worst) {
        std::printf("worst deviation of %-16s %.1e  (%s)\n", key.c_str(), entry.first, entry.second.c_str());
    }
    std::printf("%ld round trips\n", total);
    EXPECT_GT(total, 50000);
}

}  // namespace
}  // namespace frigana
