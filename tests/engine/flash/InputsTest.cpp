// Inputs that are no numbers a state can have: refused by every flash, with a code and a text, and soon.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <string>
#include <string_view>

#include "FlashState.h"
#include "PROP_SUB.h"
#include "ProcessorTime.h"
#include "PureFluid.h"
#include "SAT_SUB.h"
#include "SAT_SUB_INVERSE.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {
namespace {

using test::flash;
using test::FlashState;

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

// Ordinary values of every letter, of R134a or a blend like it.
double ordinary(char letter) {
    switch (letter) {
        case 'T':
            return 300.0;
        case 'P':
            return 500.0;
        case 'D':
            return 0.5;
        case 'Q':
            return 0.5;
        case 'S':
            return 150.0;
        default:
            return 30000.0;
    }
}

const char* const allPairs[] = {"TP", "TD", "PD", "PH", "PS", "PE", "TH", "TS",
                                "TE", "DH", "DS", "DE", "HS", "ES", "TQ", "PQ"};

// The longest time that any of them may take: the pool of a server waits for nothing longer.
#if defined(__SANITIZE_ADDRESS__)
constexpr double longest = 1.0;  // [s], for code that is ten times slower
#else
constexpr double longest = 0.05;  // [s]
#endif

TEST(FlashInputs, EveryArgumentOfEveryFlashMayBeAnything) {
    const double strange[] = {noNumber, infinite, -infinite, 0.0, -1.0, -300.0, 1e-300, 1e300, -1e300};
    double slowest = 0.0;
    std::string where;
    int calls = 0;
    for (const bool mixture : {false, true}) {
        ASSERT_LE(mixture ? test::setUp({"R32", "R134A"}) : test::setUp("R134A"), 0);
        Composition z{};
        z[1] = mixture ? 0.5 : 1.0;
        z[2] = mixture ? 0.5 : 0.0;
        flash("TP", 300.0, 500.0, z);  // what is found once for a composition
        flash("PH", 500.0, 30000.0, z);
        for (const char* letters : allPairs)
            for (const int which : {0, 1, 2})
                for (const double value : strange) {
                    const double a = which != 1 ? value : ordinary(letters[0]);
                    const double b = which != 0 ? value : ordinary(letters[1]);
                    const double start = test::processorTime();
                    const FlashState state = flash(letters, a, b, z);
                    const double seconds = test::processorTime() - start;
                    ++calls;
                    const std::string words = std::string(letters) + " " + std::to_string(a) + " " + std::to_string(b) +
                                              (mixture ? " mixture" : "");
                    if (seconds > slowest) {
                        slowest = seconds;
                        where = words;
                    }
                    if (std::isfinite(value)) continue;
                    EXPECT_GT(state.ierr, 0) << words;
                    EXPECT_FALSE(state.herr.blank()) << words;
                }
    }
    EXPECT_EQ(calls, 2 * 16 * 3 * 9);
    EXPECT_LT(slowest, longest + test::processorTimeStep) << where;
    std::printf("%d calls, the slowest took %.1f ms: %s\n", calls, 1e3 * slowest, where.c_str());
}

struct Refused {
    const char* letters;
    double a, b;
    int code;
};

TEST(FlashInputs, RefusalsHaveTheCodesOfTheLimits) {
    ASSERT_LE(test::setUp("R134A"), 0);
    const Composition z = unitComposition(1);
    for (const Refused& row :
         {Refused{"TP", 300.0, -5.0, 4}, {"TD", 300.0, -1.0, 2},       {"TP", noNumber, 500.0, 1},
          {"TP", 300.0, noNumber, 4},    {"TD", 300.0, noNumber, 2},   {"TD", 0.0, 1.0, 1},
          {"TP", -1.0, 500.0, 1},        {"TP", 0.0, 0.0, 1},          {"PD", 500.0, 0.0, 2},
          {"PD", 500.0, infinite, 2},    {"PH", noNumber, 3e4, 4},     {"PH", 500.0, noNumber, 249},
          {"TH", 300.0, noNumber, 239},  {"DH", 1.0, noNumber, 215},   {"DS", noNumber, 1.0, 2},
          {"HS", noNumber, 1.0, 200},    {"ES", 1.0, infinite, 200},   {"TQ", infinite, 0.5, 1},
          {"TQ", 300.0, noNumber, 275},  {"PQ", 500.0, noNumber, 295}, {"PQ", -5.0, 0.5, 4}}) {
        SCOPED_TRACE(std::string(row.letters) + " " + std::to_string(row.a) + " " + std::to_string(row.b));
        const FlashState state = flash(row.letters, row.a, row.b, z);
        EXPECT_EQ(state.ierr, row.code) << state.herr.trimmed();
        EXPECT_TRUE(state.herr.trimmed().starts_with("[" + std::string(row.letters) + "FLSH error"));
    }
    // the smallest pressures and densities are those of an ideal gas
    EXPECT_EQ(flash("TP", 300.0, 0.0, z).ierr, 0);
    EXPECT_EQ(flash("TD", 300.0, 0.0, z).ierr, 0);
}

TEST(FlashInputs, SaturationRefusesWhatHasNoLine) {
    ASSERT_LE(test::setUp("R134A"), 0);  // has no sublimation line
    const Composition z = unitComposition(1);
    double T = 0.0, p = 0.0, Dl = 0.0, Dv = 0.0;
    Composition x{}, y{};
    int ierr = 0;
    Text255 herr;
    for (const double pressure : {0.0, noNumber, infinite, -infinite}) {
        SATP(pressure, z, 1, T, Dl, Dv, x, y, ierr, herr);
        EXPECT_EQ(ierr, 4) << pressure;
    }
    for (const double temperature : {noNumber, infinite}) {
        SATT(temperature, z, 1, p, Dl, Dv, x, y, ierr, herr);
        EXPECT_EQ(ierr, 1) << temperature;
    }
    for (const int kph : {0, 5, -1}) {
        SATP(500.0, z, kph, T, Dl, Dv, x, y, ierr, herr);
        EXPECT_EQ(ierr, 1) << kph;
        SATT(300.0, z, kph, p, Dl, Dv, x, y, ierr, herr);
        EXPECT_EQ(ierr, 1) << kph;
    }
    SATT(160.0, z, 4, p, Dl, Dv, x, y, ierr, herr);
    EXPECT_GT(ierr, 0);
    EXPECT_FALSE(herr.blank());
}

TEST(FlashInputs, EnthalpyBelowAndAboveALineIsTold) {
    ASSERT_LE(test::setUp("R134A"), 0);
    const Composition z = unitComposition(1);
    double Tc = 0.0, pc = 0.0, Dc = 0.0, h = 0.0;
    int ierr = 0;
    Text255 herr;
    CRITP(z, Tc, pc, Dc, ierr, herr);
    ENTHAL(Tc, Dc, z, h);
    for (const int kph : {1, 2}) {
        int nroot = 0, k1 = 0, k2 = 0;
        double t1 = 0, p1 = 0, d1 = 0, t2 = 0, p2 = 0, d2 = 0;
        // a cold liquid has no place on the vapor's line, nor a warm vapor on the liquid's
        SATH(kph == 2 ? h - 20000.0 : h + 1000.0, z, kph, nroot, k1, t1, p1, d1, k2, t2, p2, d2, ierr, herr);
        EXPECT_EQ(nroot, 0);
        EXPECT_EQ(ierr, kph == 2 ? 2 : 4) << herr.trimmed();
        EXPECT_TRUE(herr.trimmed().starts_with("[SATH error"));
    }
}

// What a caller has forgotten to fill in has no critical point, which is what most routines ask for first.
TEST(FlashInputs, ACompositionOfNothingIsRefusedWithTheReason) {
    ASSERT_LE(test::setUp({"R32", "R134A"}), 0);
    const Composition nothing{};
    struct Row {
        const char* letters;
        int code;
        const char* text;
    };
    const Row refused[] = {
        {"PH", 240, "[PHFLSH error 240] [CRTHMX error] sum(x)= 0"},
        {"PS", 240, "[PSFLSH error 240] [CRTHMX error] sum(x)= 0"},
        {"PE", 240, "[PEFLSH error 240] [CRTHMX error] sum(x)= 0"},
        {"TH", 230, "[THFLSH error 230] [CRTHMX error] sum(x)= 0"},
        {"TS", 230, "[TSFLSH error 230] [CRTHMX error] sum(x)= 0"},
        {"TE", 230, "[TEFLSH error 230] [CRTHMX error] sum(x)= 0"},
        {"PD", 210, "[PDFLSH error 210] [CRTHMX error] sum(x)= 0"},
        {"DH", 210, "[DHFLSH error 210] [CRTHMX error] sum(x)= 0"},
        {"DS", 210, "[DSFLSH error 210] [CRTHMX error] sum(x)= 0"},
        {"DE", 210, "[DEFLSH error 210] [CRTHMX error] sum(x)= 0"},
        {"PQ", 290, "[PQFLSH error 290] [CRTHMX error] sum(x)= 0"},
    };
    const auto textOf = [](const Text255& herr) {
        const std::string_view view = herr.view();
        return std::string(view.substr(0, view.find('\0')));
    };
    for (const Row& row : refused) {
        SCOPED_TRACE(row.letters);
        const FlashState state = flash(row.letters, ordinary(row.letters[0]), ordinary(row.letters[1]), nothing);
        EXPECT_EQ(state.ierr, row.code);
        EXPECT_TRUE(textOf(state.herr).starts_with(row.text)) << textOf(state.herr);
        EXPECT_TRUE(row.letters[1] == 'Q' || !state.twoPhase());
    }
    for (const char* letters : {"TP", "TD", "TQ", "HS", "ES"}) {
        SCOPED_TRACE(letters);
        const FlashState state = flash(letters, ordinary(letters[0]), ordinary(letters[1]), nothing);
        EXPECT_GT(state.ierr, 0);
        EXPECT_FALSE(textOf(state.herr).empty());
        EXPECT_TRUE(letters[1] == 'Q' || !state.twoPhase());
    }

    int ierr = 0, roots = 0, k1 = 0, k2 = 0, k3 = 0;
    Text255 herr;
    double T = 0, Dl = 0, Dv = 0, t1 = 0, p1 = 0, d1 = 0, t2 = 0, p2 = 0, d2 = 0, t3 = 0, p3 = 0, d3 = 0;
    Composition x{}, y{};
    SATP(500, nothing, 1, T, Dl, Dv, x, y, ierr, herr);
    EXPECT_EQ(ierr, 140);
    EXPECT_TRUE(textOf(herr).starts_with("[SATP error 140] [CRTHMX error] sum(x)= 0")) << textOf(herr);
    SATH(30000, nothing, 0, roots, k1, t1, p1, d1, k2, t2, p2, d2, ierr, herr);
    EXPECT_EQ(ierr, 160);
    EXPECT_EQ(roots, 0);
    EXPECT_TRUE(textOf(herr).starts_with("[SATH error 160] [CRTHMX error] sum(x)= 0")) << textOf(herr);
    SATE(30000, nothing, 0, roots, k1, t1, p1, d1, k2, t2, p2, d2, ierr, herr);
    EXPECT_EQ(ierr, 160);
    EXPECT_TRUE(textOf(herr).starts_with("[SATE error 160] [CRTHMX error] sum(x)= 0")) << textOf(herr);
    SATS(150, nothing, 0, roots, k1, t1, p1, d1, k2, t2, p2, d2, k3, t3, p3, d3, ierr, herr);
    EXPECT_EQ(ierr, 160);
    EXPECT_TRUE(textOf(herr).starts_with("[SATS error 160] [CRTHMX error] sum(x)= 0")) << textOf(herr);
}

}  // namespace
}  // namespace frigana
