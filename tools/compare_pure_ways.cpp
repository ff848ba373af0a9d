// Compares the short ways of pure fluids (Newton's methods of saturation and of single phases) with the iterations that
// stand behind them, over random states.
//
//   compare_pure_ways [--expansions] [--states n] [--seed n] [--list] [fluid ...]
//
// A saturated state differs where one way answers with another code, or where a temperature, a pressure or a density is
// another one by more than 1e-12 and more than the iterations leave open; unless the short way's is the closer one, by
// its disequilibrium. A state of a flash differs where code, text or phase are others, or temperature by more than
// 1e-8, or where the short way meets its inputs less well than the iterations and than the rounding. Exit status 1 if
// states differ.
//   --expansions  compares the expansions of the saturation with Newton's method instead: densities, and
//             pressure or temperature; a state differs by more than 4e-12
//   --states  random states of every fluid and question (1000)
//   --list    prints the states that differ
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "FlashState.h"
#include "FurtherFluids.h"
#include "LIMITS.h"
#include "PROP_SUB.h"
#include "PureFluid.h"
#include "SAT_SUB.h"
#include "SAT_SUB_EXPANSION.h"
#include "SAT_SUB_PURE_NEWTON.h"

namespace {

using namespace frigana;
using frigana::test::FlashState;

const Composition z = unitComposition(1);

struct Options {
    long states = 1000;
    unsigned seed = 1;
    bool list = false;
    bool expansions = false;
};

struct Line {
    double T = 0, p = 0, Dl = 0, Dv = 0;
    int ierr = 0;
    Text255 herr;
};

Line saturation(bool atTemperature, double given, bool shortWay) {
    Line line;
    Composition x, y;
    pureNewtonControl.enabled = shortWay;
    resetSaturationMemo();
    (atTemperature ? line.T : line.p) = given;
    if (atTemperature)
        SATT(line.T, z, 2, line.p, line.Dl, line.Dv, x, y, line.ierr, line.herr);
    else
        SATP(line.p, z, 2, line.T, line.Dl, line.Dv, x, y, line.ierr, line.herr);
    pureNewtonControl.enabled = true;
    return line;
}

double gibbs(double T, double D) {
    double A = 0, G = 0;
    AG(T, D, z, A, G);
    return G;
}

// How far a pair of phases is from equilibrium at its pressure: in ln p, by the Gibbs energies and the vapor.
double disequilibrium(const Line& line) {
    double pv = 0, pl = 0;
    PRESS(line.T, line.Dv, z, pv);
    PRESS(line.T, line.Dl, z, pl);
    const double RT = fluidConstants.R * line.T;
    // the liquid's Gibbs energy at the pressure itself
    const double liquid = gibbs(line.T, line.Dl) + (line.p - pl) / line.Dl;
    const double vapor = gibbs(line.T, line.Dv) + (line.p - pv) / line.Dv;
    return std::max(std::abs(pv / line.p - 1), std::abs(liquid - vapor) / RT);
}

// Rounding of the pressure at a density [kPa]: what is left of neighbouring densities beside the straight line.
double roundingOfPressure(double T, double D) {
    constexpr int neighbours = 8;
    double slope = 0, middle = 0, largest = 0;
    DPDD(T, D, z, slope);
    PRESS(T, D, z, middle);
    for (int k = -neighbours; k <= neighbours; ++k) {
        double p = 0;
        const double at = D * (1 + k * 4e-16);
        PRESS(T, at, z, p);
        largest = std::max(largest, std::abs(p - middle - slope * (at - D)));
    }
    return largest + 2e-16 * slope * D;
}

// What the iterations leave open, relative, of the density that suffers most: the rounding of the equation, by the
// liquid's pressure and by the vapor's; at a given pressure the equation's memory of the last state, which takes values
// of Tr/T for equal that differ by less than 1e-12, and close to the critical point the secant's last step, 1e-6 kPa;
// at a given temperature close to the critical point the last step between the spinodals, 1e-8 of the pressure.
double leftOpen(const Line& line, bool atTemperature) {
    const double Tc = fluidConstants.TCRIT[1];
    double slope[2] = {0, 0};
    DPDD(line.T, line.Dl, z, slope[0]);
    DPDD(line.T, line.Dv, z, slope[1]);
    constexpr double rounding = 2e-15;
    constexpr double sure = 4;
    double open = sure * roundingOfPressure(line.T, line.Dl) / line.p;
    const double lastPressure = !atTemperature ? rounding : line.T > 0.99 * Tc ? 1e-8 : 1e-12;
    open += lastPressure * line.p / std::max(1e-300, std::min(slope[0] * line.Dl, slope[1] * line.Dv));
    if (atTemperature) return open;
    const double step = 1e-2 * (Tc - line.T);
    const Line above = saturation(true, line.T + step, true), below = saturation(true, line.T - step, true);
    double byT = 1e-12 * line.T * line.T / fluidConstants.TZ[1];
    if (line.T > 0.999 * Tc) byT += 1e-6 * 2 * step / std::abs(above.p - below.p);
    return open + byT / (2 * step) *
                      std::max(std::abs(std::log(above.Dl / below.Dl)), std::abs(std::log(above.Dv / below.Dv)));
}

struct Count {
    long states = 0, differ = 0, open = 0, closer = 0, more = 0;
    double worstOpen = 0, worst = 0, worstAt = 0;
    double seconds[2] = {0, 0};
};

double seconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void compare(const char* fluid, bool atTemperature, double given, const Options& options, Count& count) {
    ++count.states;
    double start = seconds();
    const Line shortWay = saturation(atTemperature, given, true);
    count.seconds[0] += seconds() - start;
    start = seconds();
    const Line told = saturation(atTemperature, given, false);
    count.seconds[1] += seconds() - start;
    const bool sameCode = shortWay.ierr == told.ierr && shortWay.herr.view() == told.herr.view();
    double off = 0;
    if (sameCode && told.ierr <= 0) {
        off = std::max({std::abs(shortWay.T / told.T - 1), std::abs(shortWay.Dl / told.Dl - 1)});
        // the vapor follows the pressure
        off = std::max({off, std::abs(shortWay.Dv / told.Dv - 1), std::abs(shortWay.p / told.p - 1)});
    }
    constexpr double same = 1e-12;
    if (sameCode && off <= same) return;
    // each of the two ways may be as far off
    const double allowed = same + (told.ierr <= 0 && told.Dv > 0 ? 2 * leftOpen(told, atTemperature) : 0);
    if (sameCode && off <= allowed) {
        ++count.open;
        count.worstOpen = std::max(count.worstOpen, off);
        return;
    }
    if (sameCode && disequilibrium(shortWay) <= disequilibrium(told) && off < 1e-3) {
        ++count.closer;
        if (off > count.worst) {
            count.worst = off;
            count.worstAt = given;
        }
        return;
    }
    ++count.differ;
    if (!options.list) return;
    std::printf(
        "  %s at %s %.10g: code %d %d, T %.14g %.14g p %.14g %.14g Dl %.14g %.14g Dv %.14g %.14g; off %.1e, "
        "allowed %.1e; disequilibrium %.1e %.1e\n",
        fluid, atTemperature ? "T" : "p", given, shortWay.ierr, told.ierr, shortWay.T, told.T, shortWay.p, told.p,
        shortWay.Dl, told.Dl, shortWay.Dv, told.Dv, off, allowed, disequilibrium(shortWay), disequilibrium(told));
}

// How well a state meets the inputs of its flash: the properties, in units of the larger of them and 1, and of one
// phase the pressure, by the density that it asks for.
double missed(std::string_view pair, double a, double b, const FlashState& state) {
    const bool two = state.twoPhase();
    const auto at = [&](double D) {
        FlashState one;
        double jouleThomson = 0;
        // another state in between, so that none of the memories of this one answers
        THERM(0.9 * state.T, D, z, one.p, one.e, one.h, one.s, one.cv, one.cp, one.w, jouleThomson);
        THERM(state.T, D, z, one.p, one.e, one.h, one.s, one.cv, one.cp, one.w, jouleThomson);
        return one;
    };
    if (two) {
        FlashState liquid = at(state.Dl), vapor = at(state.Dv);
        const auto off = [&](char letter, double given) {
            const double mean = (1 - state.q) * liquid[letter] + state.q * vapor[letter];
            return std::abs(mean - given) / std::max(1.0, std::abs(given));
        };
        return pair[0] == 'P' ? off(pair[1], b) : std::max(off(pair[0], a), off(pair[1], b));
    }
    FlashState one = at(state.D);
    double slope = 0;
    DPDD(state.T, state.D, z, slope);
    const double offA = pair[0] == 'P' ? std::abs(one.p - a) / (std::abs(slope) * state.D + a)
                                       : std::abs(one[pair[0]] - a) / std::max(1.0, std::abs(a));
    return std::max(offA, std::abs(one[pair[1]] - b) / std::max(1.0, std::abs(b)));
}

void compareFlash(const char* fluid, const std::string& pair, double p, double b, const Options& options,
                  Count& count) {
    ++count.states;
    const auto solve = [&](bool shortWay) {
        pureNewtonControl.enabled = shortWay;
        resetSaturationMemo();
        const double start = seconds();
        FlashState state = frigana::test::flash(pair, p, b, z);
        count.seconds[shortWay ? 0 : 1] += seconds() - start;
        pureNewtonControl.enabled = true;
        return state;
    };
    const FlashState shortWay = solve(true), told = solve(false);
    const auto phaseOf = [](double q) { return q < 0 ? -1 : q <= 1 ? 0 : q > 998.5 ? 2 : 1; };
    const double off = std::abs(shortWay.T / told.T - 1);
    const bool same =
        shortWay.ierr == told.ierr && shortWay.herr.view() == told.herr.view() &&
        (phaseOf(shortWay.q) == phaseOf(told.q) || std::min(std::abs(told.q), std::abs(told.q - 1)) < 1e-8);
    const double mine = missed(pair, p, b, shortWay), theirs = missed(pair, p, b, told);
    if (same && told.ierr > 0) return;
    // the iterations refuse some states close to the critical point, and cold ones of both phases by enthalpy and
    // entropy
    const bool notFound = told.ierr == 247 || told.ierr == 248 || (pair == "HS" && (told.ierr == 200 || theirs > 1e-6));
    if (shortWay.ierr <= 0 && notFound && mine < 1e-9) {
        ++count.more;
        return;
    }
    // the functions of the ideal gas take two temperatures for one that differ by less than 1e-8 K
    double cv = 0, cp = 0;
    CVCP(told.T, told.twoPhase() ? told.Dl : told.D, z, cv, cp);
    const auto unseen = [&](char letter, double given) {
        return letter == 'P' ? 0 : 1e-8 * (letter == 'S' ? cp / told.T : cp) / std::max(1.0, std::abs(given));
    };
    const double rounding = 2e-12 + std::max(unseen(pair[0], p), unseen(pair[1], b));
    count.worstOpen = std::max(count.worstOpen, mine);
    if (same && off < 1e-8 && (mine <= 2 * theirs || mine < rounding)) return;
    if (same && mine <= theirs) {
        ++count.closer;
        if (off > count.worst) {
            count.worst = off;
            count.worstAt = p;
        }
        return;
    }
    ++count.differ;
    if (!options.list) return;
    std::printf("  %s %s %.12g %.12g: code %d %d, T %.14g %.14g D %.14g %.14g q %.8g %.8g missed %.1e %.1e %s | %s\n",
                fluid, pair.c_str(), p, b, shortWay.ierr, told.ierr, shortWay.T, told.T, shortWay.D, told.D, shortWay.q,
                told.q, mine, theirs, std::string(shortWay.herr.trimmed()).c_str(),
                std::string(told.herr.trimmed()).c_str());
}

// Random states of one phase over temperature and the logarithm of pressure, and of two; a third of them close to the
// line.
long compareFlashes(const std::string& name, const std::string& pair, const Options& options) {
    std::mt19937_64 generator(options.seed + 7);
    std::uniform_real_distribution<double> uniform(0, 1);
    double tmin, tmax, Dmax, pmax;
    LIMITS("EOS", z, tmin, tmax, Dmax, pmax);
    const double Tc = fluidConstants.TCRIT[1];
    const double coldest = std::max(tmin, fluidConstants.TTPN[1]) + 0.001, hottest = std::min(tmax, 1.8 * Tc);
    Count count;
    while (count.states < options.states) {
        const double T = coldest + uniform(generator) * (hottest - coldest);
        FlashState state;
        const double kind = uniform(generator);
        const double share = uniform(generator);
        if (kind < 0.3 && T < Tc) {
            state = frigana::test::flash("TQ", T, share, z);
        } else if (kind < 0.6 && T < Tc) {
            const FlashState line = frigana::test::flash("TQ", T, 0.0, z);
            const double away = std::pow(10.0, -8 + 7 * share) * (kind < 0.45 ? 1 : -1);
            state = frigana::test::flash("TP", T, line.p * (1 + away), z);
        } else {
            state = frigana::test::flash("TP", T, 0.01 * std::pow(pmax / 0.01, share), z);
        }
        if (state.ierr != 0) {
            ++count.open;
            if (count.open > 100 * options.states) break;
            continue;
        }
        compareFlash(name.c_str(), pair, state[pair[0]], state[pair[1]], options, count);
    }
    std::printf(
        "%-9s %s: %ld states, %ld differ, inputs met to %.1e, %ld closer (%.1e at %.8g), %ld not found by the "
        "iterations; %.2f us, "
        "%.2f us\n",
        name.c_str(), pair.c_str(), count.states, count.differ, count.worstOpen, count.closer, count.worst,
        count.worstAt, count.more, 1e6 * count.seconds[0] / static_cast<double>(count.states),
        1e6 * count.seconds[1] / static_cast<double>(count.states));
    return count.differ;
}

long compareFluid(const std::string& name, const Options& options) {
    if (frigana::test::setUp(name) > 0) {
        std::printf("%-9s no set-up\n", name.c_str());
        return 1;
    }
    std::mt19937_64 generator(options.seed);
    std::uniform_real_distribution<double> uniform(0, 1);
    const double Tc = fluidConstants.TCRIT[1], pc = fluidConstants.PCRIT[1];
    double tmin, tmax, Dmax, pmax;
    LIMITS("EOS", z, tmin, tmax, Dmax, pmax);
    const double coldest = std::max(tmin, fluidConstants.TTPN[1]);
    long differ = 0;
    for (const bool atTemperature : {true, false}) {
        Count count;
        pureNewtonControl.asked = pureNewtonControl.found = 0;
        const Line bottom = saturation(true, coldest, false);
        const double lowest = std::max(bottom.p, fluidConstants.PTPN[1]);
        pureNewtonControl.asked = pureNewtonControl.found = 0;
        for (long k = 0; k < options.states; ++k) {
            // most over the whole line, one of fifty toward the critical point
            const double share = uniform(generator);
            const double given =
                k % 50 != 0 ? (atTemperature ? coldest + share * (Tc - coldest) : lowest * std::pow(pc / lowest, share))
                            : (atTemperature ? Tc : pc) * (1 - std::pow(10.0, -1 - 6 * share));
            compare(name.c_str(), atTemperature, given, options, count);
        }
        std::printf(
            "%-9s %s: %ld states, short way %.2f %%, %ld differ, %ld left open (%.1e), %ld closer (%.1e at %.8g); %.2f "
            "us, "
            "%.2f us\n",
            name.c_str(), atTemperature ? "SATT" : "SATP", count.states,
            100.0 * static_cast<double>(pureNewtonControl.found) / static_cast<double>(count.states), count.differ,
            count.open, count.worstOpen, count.closer, count.worst, count.worstAt,
            1e6 * count.seconds[0] / static_cast<double>(count.states),
            1e6 * count.seconds[1] / static_cast<double>(count.states));
        differ += count.differ;
    }
    for (const char* pair : {"PH", "PS", "PE", "HS"}) differ += compareFlashes(name, pair, options);
    return differ;
}

// The states that expansions answer.
long compareExpansions(const std::string& name, const Options& options) {
    if (frigana::test::setUp(name) > 0) {
        std::printf("%-9s no set-up\n", name.c_str());
        return 1;
    }
    std::mt19937_64 generator(options.seed);
    std::uniform_real_distribution<double> uniform(0, 1);
    const double Tc = fluidConstants.TCRIT[1], pc = fluidConstants.PCRIT[1];
    double tmin, tmax, Dmax, pmax;
    LIMITS("EOS", z, tmin, tmax, Dmax, pmax);
    const double coldest = std::max(tmin, fluidConstants.TTPN[1]);
    const double lowest = std::max(saturation(true, coldest, true).p, fluidConstants.PTPN[1]);
    for (int k = 0; k < statesBeforeExpansions; ++k) saturation(true, (0.8 + 5e-5 * k) * Tc, true);
    constexpr double same = 1e-12, bound = 4e-12, step = 1e-4;
    long expanded = 0, off = 0, differ = 0;
    double worst = 0;
    for (long k = 0; k < options.states; ++k) {
        const double share = uniform(generator);
        const bool atTemperature = k % 2 == 0;
        const double given = atTemperature ? coldest + share * (Tc - coldest) : lowest * std::pow(pc / lowest, share);
        const long before = expansionControl.answered;
        const Line line = saturation(atTemperature, given, true);
        if (expansionControl.answered == before) continue;
        ++expanded;
        expansionControl.enabled = false;
        // first beside, since the equation would take two temperatures close by for one
        const Line neighbour = saturation(true, line.T * (1 + step), true);
        Line newton = saturation(true, line.T, true);
        expansionControl.enabled = true;
        // the pressure of a cold liquid drowns in the rounding of its density
        PRESS(newton.T, newton.Dv, z, newton.p);
        double ofPressure = std::abs(line.p / newton.p - 1), ofVapor = std::abs(line.Dv / newton.Dv - 1);
        if (!atTemperature) {
            // the pressure was given: what it is off at the temperature is one of that, and the vapor follows it
            ofPressure /= std::abs(std::log(neighbour.p / newton.p)) / step;
            ofVapor = std::abs(line.Dv / newton.Dv * (newton.p / line.p) - 1);
        }
        const double by = std::max({std::abs(line.Dl / newton.Dl - 1), ofVapor, ofPressure});
        worst = std::max(worst, by);
        off += by > same;
        differ += !(by <= bound);
        if (options.list && !(by <= bound))
            std::printf("  %s %s %.14g: %.1e\n", name.c_str(), atTemperature ? "T" : "p", given, by);
    }
    std::printf("%-9s %ld states, %ld by expansions, %.1e at most, %ld by more than 1e-12, %ld differ\n", name.c_str(),
                options.states, expanded, worst, off, differ);
    return differ;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    std::vector<std::string> fluids;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--list") {
            options.list = true;
        } else if (argument == "--expansions") {
            options.expansions = true;
        } else if (argument == "--states" && i + 1 < argc) {
            options.states = std::atol(argv[++i]);
        } else if (argument == "--seed" && i + 1 < argc) {
            options.seed = static_cast<unsigned>(std::atol(argv[++i]));
        } else {
            fluids.emplace_back(argument);
        }
    }
    if (fluids.empty()) {
        for (const char* fluid : frigana::test::pureFluids) fluids.emplace_back(fluid);
        for (const char* fluid : frigana::test::furtherFluids) fluids.emplace_back(fluid);
    }
    long differ = 0;
    expansionControl.enabled = options.expansions;
    for (const std::string& fluid : fluids)
        differ += options.expansions ? compareExpansions(fluid, options) : compareFluid(fluid, options);
    std::printf("%ld states differ\n", differ);
    return differ > 0 ? 1 : 0;
}
