// No calculation takes memory from the heap: every request of operator new and malloc between the end of SETUP and the
// end of a flash or a transport property is counted.
#include <gtest/gtest.h>

#include "CORE_STN.h"
#include "CountedAllocations.h"
#include "FlashState.h"
#include "PureFluid.h"
#include "SAT_SUB.h"
#include "SAT_SUB_EXPANSION.h"
#include "TRNSP.h"

namespace frigana {
namespace {

using test::allocations;
using test::counting;
using test::flash;
using test::FlashState;

TEST(Allocation, TheCounterCounts) {
    counting = true;
    allocations = 0;
    int* volatile one = new int(1);
    void* volatile two = std::malloc(16);
    counting = false;
    delete one;
    std::free(two);
    EXPECT_GE(allocations.load(), 2);
}

TEST(Allocation, NoFlashOfAPureFluidTakesMemory) {
    ASSERT_LE(test::setUp("R134A"), 0);
    const Composition z = unitComposition(1);
    // A subcooled liquid, a superheated vapor, a supercritical state, and two phases: by T and p, and T and q.
    const double points[][2] = {{280, 2000}, {300, 200}, {400, 6000}};

    counting = true;
    allocations = 0;
    long flashes = 0;
    long failures = 0;
    const auto run = [&](const char* letters, double a, double b) {
        failures += flash(letters, a, b, z).ierr > 0;
        ++flashes;
    };
    const auto every = [&](const FlashState& state) {
        run("TD", state.T, state.D);
        run("PD", state.p, state.D);
        run("PH", state.p, state.h);
        run("PS", state.p, state.s);
        run("PE", state.p, state.e);
        run("TH", state.T, state.h);
        run("TS", state.T, state.s);
        run("TE", state.T, state.e);
        run("DH", state.D, state.h);
        run("DS", state.D, state.s);
        run("DE", state.D, state.e);
        run("HS", state.h, state.s);
        run("ES", state.e, state.s);
    };
    for (const auto& point : points) {
        const FlashState state = flash("TP", point[0], point[1], z);
        failures += state.ierr > 0;
        every(state);
    }
    const FlashState wet = flash("TQ", 290, 0.3, z);
    failures += wet.ierr > 0;
    every(wet);
    run("PQ", 500, 0.7);
    // Refused inputs compose a message.
    flash("TP", 5000, 100, z);
    flash("PH", 500, 1e9, z);
    counting = false;

    EXPECT_EQ(flashes, 53);
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(allocations.load(), 0);
}

// The file of expansions is read in the midst of a calculation.
TEST(Allocation, NoExpansionTakesMemory) {
    ASSERT_LE(test::setUp("R134A"), 0);
    const Composition z = unitComposition(1);
    Composition x, y;
    double p = 0, Dl = 0, Dv = 0;
    int ierr = 0, failures = 0;
    Text255 herr;
    expansionControl.answered = 0;

    counting = true;
    allocations = 0;
    for (int k = 0; k < statesBeforeExpansions + 10; ++k) {
        SATT(200.0 + 0.5 * k, z, 1, p, Dl, Dv, x, y, ierr, herr);
        failures += ierr > 0;
    }
    counting = false;

    EXPECT_EQ(failures, 0);
    EXPECT_GE(expansionControl.answered, 10);
    EXPECT_EQ(allocations.load(), 0);
}

TEST(Allocation, NoTransportPropertyTakesMemory) {
    struct Set {
        std::initializer_list<std::string_view> fluids;
        double liquid;  // [mol/L]
    };
    // own correlations, corresponding states, both, and mixtures of two and three
    const Set sets[] = {{{"R134A"}, 12.0}, {{"R32"}, 19.0},         {{"R143A"}, 12.0},
                        {{"R23"}, 14.0},   {{"R32", "R125"}, 15.0}, {{"R32", "R125", "R134A"}, 13.0}};
    for (const Set& set : sets) {
        ASSERT_LE(test::setUp(set.fluids), 0);
        Composition x{};
        const auto n = static_cast<double>(set.fluids.size());
        for (int i = 1; i <= static_cast<int>(set.fluids.size()); ++i) x[i] = 1.0 / n;
        double eta = 0.0, tcx = 0.0, sigma = 0.0;
        int ierr = 0, values = 0;
        Text255 herr;

        counting = true;
        allocations = 0;
        for (const double D : {set.liquid, 0.05}) {
            TRNPRP(280.0, D, x, eta, tcx, ierr, herr);
            values += (eta > 0.0) + (tcx > 0.0);
        }
        TRNPRP(5000.0, 0.05, x, eta, tcx, ierr, herr);  // composes a message
        STN(280.0, set.liquid, 0.05, x, x, sigma, ierr, herr);
        counting = false;

        EXPECT_EQ(values, 4);
        EXPECT_GT(sigma, 0.0);
        EXPECT_EQ(allocations.load(), 0);
    }
}

}  // namespace
}  // namespace frigana
