// Walks a grid of states over the whole range of a fluid's equation through every flash, and counts the failures by
// code and place. Times are those of the processor.
//
//   convergence_map [--critical] [--list] [--pairs TP,PH,...] [--density n] [fluid ...]
//
// A state fails where a flash returns an error, or a state that does not reproduce the one that the inputs were made
// from. Exit status 1 if a state fails whose temperature is more than 0.001 Tc away from the critical one.
//   --critical  prints the failing states within 0.001 Tc, one a line
//   --list      prints all other failing states, one a line
//   --pairs     only these pairs of inputs
//   --density   grid points in units of the usual number along every axis (a factor; default 1)
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "FlashState.h"
#include "LIMITS.h"
#include "MELTING.h"
#include "PROP_SUB.h"
#include "PureFluid.h"
#include "SAT_SUB.h"

namespace {

using namespace frigana;
using frigana::test::flash;
using frigana::test::FlashState;

struct Fluid {
    std::string name;
    Composition z = unitComposition(1);
    double Tc = 0, pc = 0, Dc = 0, Ttp = 0, tmin = 0, tmax = 0, Dmax = 0, pmax = 0;
};

// A state of the grid. q between 0 and 1: two phases.
struct GridState {
    double T = 0, p = 0, D = 0, q = 0, e = 0, h = 0, s = 0;
    bool twoPhase = false;
};

struct Failure {
    std::string pair;
    int code = 0;
    GridState state;
    std::string text;
};

struct Count {
    long states = 0, failures = 0;
    double seconds = 0, slowest = 0;
};

double density(double T, double p, int kph, const Composition& z) {
    double D = 0;
    int ierr = 0;
    Text255 herr;
    TPRHO(T, p, z, kph, 0, D, ierr, herr);
    return ierr > 0 ? -1 : D;
}

void complete(GridState& state, const Composition& z) {
    double p = 0;
    double cv = 0;
    double cp = 0;
    double w = 0;
    double jouleThomson = 0;
    THERM(state.T, state.D, z, p, state.e, state.h, state.s, cv, cp, w, jouleThomson);
}

// The flashes of temperature and a caloric property begin at 0.0001 mol/L; that of temperature and density takes
// whatever is thinner than 1e-10 mol/L for a gas, both phases of the coldest liquids too.
constexpr double thinnest = 1.01e-4, thinnestByDensity = 1e-10;

// States that the grid had to leave out, as there was no density root to make them from.
long missing = 0;

// Pressure at which hydrogen freezes, of which its file tells nothing though its equation reaches far beyond.
//   Given     T        temperature [K]
//   Returned  (value)  [kPa]
//   Source    V. Diatschenko, C. W. Chu, D. H. Liebenberg, D. A. Young, M. Ross, R. L. Mills, Phys. Rev. B 32 (1985)
//   381
double hydrogenFreezes(double T) {
    return 1000 * (-51.49 + 0.1702 * std::pow(T + 9.689, 1.8077));
}

// True for a state beyond a melting line that the limits do not know.
bool isFrozen(const Fluid& fluid, double T, double p) {
    return fluid.name == "HYDROGEN" && p > hydrogenFreezes(T);
}

// Single phase at T and p; false where it is solid, outside the limits or without a density root.
bool singlePhase(const Fluid& fluid, double T, double p, double Tsat, GridState& state) {
    double tmin = 0;
    double tmax = 0;
    double Dmax = 0;
    double pmax = 0;
    int limit = 0;
    Text255 text;
    LIMITX("EOS", T, 0, p, fluid.z, tmin, tmax, Dmax, pmax, limit, text);
    if (limit != 0 || isFrozen(fluid, T, p)) return false;
    const bool liquid = p >= fluid.pc ? T < fluid.Tc : T < Tsat;
    state = GridState{};
    state.T = T;
    state.p = p;
    state.D = density(T, p, liquid ? 1 : 2, fluid.z);
    if (state.D > Dmax) return false;
    if (state.D <= 0) {
        ++missing;
        return false;
    }
    complete(state, fluid.z);
    return true;
}

bool twoPhase(const Fluid& fluid, double T, double q, GridState& state) {
    double Dl = 0;
    double Dv = 0;
    Composition x{};
    Composition y{};
    int ierr = 0;
    Text255 herr;
    SATT(T, fluid.z, 2, state.p, Dl, Dv, x, y, ierr, herr);
    if (ierr > 0 || Dl <= Dv) return false;
    GridState liquid;
    liquid.T = T;
    liquid.D = Dl;
    complete(liquid, fluid.z);
    GridState vapor = liquid;
    vapor.D = Dv;
    complete(vapor, fluid.z);
    state.T = T;
    state.q = q;
    state.D = 1 / ((1 - q) / Dl + q / Dv);
    state.e = (1 - q) * liquid.e + q * vapor.e;
    state.h = (1 - q) * liquid.h + q * vapor.h;
    state.s = (1 - q) * liquid.s + q * vapor.s;
    state.twoPhase = true;
    return true;
}

double saturationTemperature(const Fluid& fluid, double p) {
    if (p >= fluid.pc) return fluid.Tc;
    double T = 0;
    double Dl = 0;
    double Dv = 0;
    Composition x{};
    Composition y{};
    int ierr = 0;
    Text255 herr;
    SATP(p, fluid.z, 2, T, Dl, Dv, x, y, ierr, herr);
    return ierr > 0 || Dl <= 0 ? 0 : T;
}

double between(double low, double high, int i, int n) {
    return low + (high - low) * i / (n - 1);
}
double betweenLogarithms(double low, double high, int i, int n) {
    return std::exp(between(std::log(low), std::log(high), i, n));
}

// States on isobars: single phases from the lowest to the highest temperature, thick about saturation, and two phases.
std::vector<GridState> onIsobars(const Fluid& fluid, int isobars, int singles, int qualities) {
    std::vector<GridState> states;
    for (int i = 0; i < isobars; ++i) {
        const double p = betweenLogarithms(0.01, fluid.pmax, i, isobars);
        const double Tsat = saturationTemperature(fluid, p);
        GridState state;
        for (int k = 0; k < singles; ++k) {
            if (singlePhase(fluid, between(fluid.tmin, fluid.tmax, k, singles), p, Tsat, state))
                states.push_back(state);
        }
        for (const double away : {1e-7, 1e-5, 1e-3, 1e-2}) {
            const double T = Tsat > 0 ? Tsat : fluid.Ttp;
            if (singlePhase(fluid, T * (1 - away), p, Tsat, state)) states.push_back(state);
            if (singlePhase(fluid, T * (1 + away), p, Tsat, state)) states.push_back(state);
        }
        if (Tsat <= 0 || p >= fluid.pc) continue;
        for (int k = 0; k < qualities; ++k) {
            GridState wet;
            if (twoPhase(fluid, Tsat, (k + 0.5) / qualities, wet)) {
                wet.p = p;
                states.push_back(wet);
            }
        }
    }
    // A closer net about the critical point.
    const int close = singles / 2;
    for (int i = 0; i < close; ++i) {
        const double p = fluid.pc * between(0.9, 1.3, i, close);
        const double Tsat = saturationTemperature(fluid, p);
        GridState state;
        for (int k = 0; k < close; ++k) {
            if (singlePhase(fluid, fluid.Tc * between(0.97, 1.05, k, close), p, Tsat, state)) states.push_back(state);
        }
    }
    return states;
}

// States on isotherms: over density from a thin gas to the highest pressure, two phases among them.
std::vector<GridState> onIsotherms(const Fluid& fluid, int isotherms, int densities) {
    std::vector<GridState> states;
    for (int i = 0; i < isotherms; ++i) {
        const double T = between(fluid.tmin, fluid.tmax, i, isotherms);
        double pTop = fluid.pmax;
        double pMelt = 0;
        int ierr = 0;
        Text255 herr;
        MELTT(T, fluid.z, pMelt, ierr, herr);
        if (ierr == 0 && pMelt > 0) pTop = std::min(pTop, 0.999 * pMelt);
        if (isFrozen(fluid, T, pTop)) pTop = hydrogenFreezes(T);
        const double top = std::min(density(T, pTop, 1, fluid.z), 0.999999 * fluid.Dmax);
        if (top <= 0) continue;
        double p = 0;
        double Dl = 0;
        double Dv = 0;
        if (T < fluid.Tc) {
            Composition x{};
            Composition y{};
            SATT(T, fluid.z, 2, p, Dl, Dv, x, y, ierr, herr);
            if (ierr > 0) continue;
        }
        for (int k = 0; k < densities; ++k) {
            // Half of the densities in equal steps, half in equal ratios.
            const double D = k % 2 == 0
                                 ? between(0.001 * top, top, k, densities)
                                 : betweenLogarithms(std::min(1e-6, 1e-3 * std::max(Dv, 1e-8)), top, k, densities);
            GridState state;
            if (D > Dv && D < Dl) {
                if (!twoPhase(fluid, T, (1 / D - 1 / Dl) / (1 / Dv - 1 / Dl), state)) continue;
                state.D = D;
            } else {
                state.T = T;
                state.D = D;
                complete(state, fluid.z);
                PRESS(T, D, fluid.z, state.p);
            }
            states.push_back(state);
        }
    }
    return states;
}

std::vector<GridState> onSaturation(const Fluid& fluid, int temperatures, int qualities) {
    std::vector<GridState> states;
    const double low = std::max(fluid.tmin, fluid.Ttp);
    for (int i = 0; i < temperatures; ++i) {
        // Toward the critical point the steps become ever smaller.
        const double T = fluid.Tc - (fluid.Tc - low) * std::pow(1.0 - static_cast<double>(i) / temperatures, 2);
        for (int k = 0; k < qualities; ++k) {
            GridState state;
            if (twoPhase(fluid, T, between(0, 1, k, qualities), state)) states.push_back(state);
        }
    }
    return states;
}

double input(char letter, const GridState& state) {
    switch (letter) {
        case 'T':
            return state.T;
        case 'P':
            return state.p;
        case 'D':
            return state.D;
        case 'H':
            return state.h;
        case 'S':
            return state.s;
        case 'E':
            return state.e;
        default:
            return state.q;
    }
}

// The property of a letter at the result's own temperature, densities and quality.
double evaluated(char letter, const FlashState& result, const Composition& z) {
    const auto at = [&](double D) {
        GridState state;
        state.T = result.T;
        state.D = D;
        complete(state, z);
        return input(letter, state);
    };
    return result.q > 0 && result.q < 1 ? (1 - result.q) * at(result.Dl) + result.q * at(result.Dv) : at(result.D);
}

// Neither a superheated liquid nor a supercooled vapor.
bool stable(const FlashState& result, const Composition& z) {
    if (result.q > 0 && result.q < 1) return true;
    double p = 0;
    double Dl = 0;
    double Dv = 0;
    Composition x{};
    Composition y{};
    int ierr = 0;
    Text255 herr;
    SATT(result.T, z, 2, p, Dl, Dv, x, y, ierr, herr);
    return ierr > 0 || result.D >= Dl * (1 - 1e-8) || result.D <= Dv * (1 + 1e-8);
}

// What is wrong with a result; 0 if nothing.
//   -1 temperature, -2 density or pressure, -3 phase
int wrong(const std::string& pair, const GridState& state, const FlashState& result) {
    // Inputs that hardly tell the state (enthalpy and temperature of a thin gas) are measured by themselves.
    // So are energy and entropy of a liquid, as energy hardly changes along an isentrope at low pressure.
    // And the pressure of a liquid at its bubble line, where enthalpy hardly changes with it.
    if (pair == "TH" || pair == "TE" || pair == "TS" || pair == "ES" || pair == "HS") {
        const Composition z = unitComposition(1);
        const auto reproduced = [&](char letter) {
            const double given = input(letter, state);
            const double tolerance = pair[0] == 'T' ? 2e-8 : 1e-9;
            return std::abs(evaluated(letter, result, z) - given) < tolerance * std::max(1.0, std::abs(given));
        };
        const bool same = reproduced(pair[1]) && (pair[0] == 'T' || reproduced(pair[0]));
        const bool wet = result.q > 0 && result.q < 1;
        const bool onTheLine = std::min(std::abs(result.q), std::abs(result.q - 1)) < 1e-5;
        if (same && (wet == state.twoPhase || onTheLine) && (pair[0] == 'T' || stable(result, z))) return 0;
    }
    if (!(std::abs(result.T / state.T - 1) < 1e-6)) return -1;
    // A liquid or vapor within 1e-5 of its line may come back with a trace of the other phase, which at low pressure is
    // much in density.
    if (!state.twoPhase && result.q > 0 && result.q < 1) return std::min(result.q, 1 - result.q) < 1e-5 ? 0 : -3;
    // A density is compared on the scale on which the temperature is: liquids and states about the critical point
    // follow small differences of their inputs with large ones of density or pressure.
    double dpdd = 0;
    const Composition z = unitComposition(1);
    if (state.twoPhase && state.q > 0 && state.q < 1) {
        if (!(result.q >= -1e-6 && result.q <= 1 + 1e-6)) {
            return std::min(state.q, 1 - state.q) < 1e-5 ? 0 : -3;
        }
        return std::abs(result.q - state.q) < 1e-5 ? 0 : -2;
    }
    if (state.twoPhase) return std::abs(result.p / state.p - 1) < 1e-6 ? 0 : -2;
    double dddt = 0;
    DPDD(state.T, state.D, z, dpdd);
    DDDT(state.T, state.D, z, dddt);
    const double off = std::abs(result.D - state.D);
    const bool sameDensity = off < 1e-6 * (state.D + state.T * std::abs(dddt));
    const bool samePressure = off * dpdd < 1e-6 * std::max(1.0, state.p);
    return sameDensity || samePressure ? 0 : -2;
}

struct Options {
    bool listCritical = false, listOther = false;
    double density = 1;
    std::vector<std::string> pairs{"TP", "PH", "PS", "TD", "TQ", "PQ", "HS", "ES"};
};

void walk(const Fluid& fluid, const std::string& pair, const std::vector<GridState>& states, Count& count,
          std::vector<Failure>& failures) {
    for (const GridState& state : states) {
        const std::clock_t start = std::clock();
        FlashState result = flash(pair, input(pair[0], state), input(pair[1], state), fluid.z);
        int fault = result.ierr > 0 ? result.ierr : wrong(pair, state, result);
        // Where an isotherm has the same value at two densities, the other one is asked for.
        if (fault != 0 && pair[0] == 'T' && (pair[1] == 'H' || pair[1] == 'S' || pair[1] == 'E')) {
            result = flash(pair, input(pair[0], state), input(pair[1], state), fluid.z, 2);
            fault = result.ierr > 0 ? result.ierr : wrong(pair, state, result);
        }
        const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        ++count.states;
        count.seconds += seconds;
        count.slowest = std::max(count.slowest, seconds);
        if (fault == 0) continue;
        ++count.failures;
        failures.push_back({pair, fault, state, std::string(result.herr.trimmed())});
    }
}

bool nearCritical(const Fluid& fluid, const GridState& state) {
    return std::abs(state.T / fluid.Tc - 1) <= 0.001;
}

const char* place(const Fluid& fluid, const GridState& state) {
    if (nearCritical(fluid, state)) return "critical";
    if (state.twoPhase) return "two-phase";
    if (state.T > fluid.Tc) return state.p > fluid.pc ? "supercritical" : "gas";
    return state.D > fluid.Dc ? "liquid" : "vapor";
}

// Returns the number of failures away from the critical point.
long mapFluid(const std::string& name, const Options& options) {
    Fluid fluid;
    fluid.name = name;
    if (frigana::test::setUp(name) > 0) {
        std::printf("%-9s no set-up\n", name.c_str());
        return 1;
    }
    int ierr = 0;
    Text255 herr;
    CRITP(fluid.z, fluid.Tc, fluid.pc, fluid.Dc, ierr, herr);
    LIMITS("EOS", fluid.z, fluid.tmin, fluid.tmax, fluid.Dmax, fluid.pmax);
    // Inside the limits by more than the last digits of the triple point in the file.
    fluid.tmin += 0.001;
    fluid.tmax -= 0.001;
    fluid.Ttp = fluidConstants.TTPN[1];

    const auto points = [&](int n) { return std::max(4, static_cast<int>(n * options.density)); };
    const std::vector<GridState> isobars = onIsobars(fluid, points(150), points(90), points(25));
    const std::vector<GridState> isotherms = onIsotherms(fluid, points(150), points(120));
    const std::vector<GridState> saturation = onSaturation(fluid, points(300), points(41));

    std::map<std::string, Count> counts;
    std::vector<Failure> failures;
    for (const std::string& pair : options.pairs) {
        Count& count = counts[pair];
        if (pair[1] == 'Q') {
            walk(fluid, pair, saturation, count, failures);
        } else if (pair == "TD" || pair == "TH" || pair == "TS" || pair == "TE" || pair[0] == 'D') {
            std::vector<GridState> dense;
            std::copy_if(isotherms.begin(), isotherms.end(), std::back_inserter(dense), [&](const GridState& state) {
                return state.D > (pair == "TD" ? thinnestByDensity : thinnest);
            });
            walk(fluid, pair, dense, count, failures);
        } else if (pair == "TP") {
            std::vector<GridState> singles;
            std::copy_if(isobars.begin(), isobars.end(), std::back_inserter(singles),
                         [](const GridState& state) { return !state.twoPhase; });
            walk(fluid, pair, singles, count, failures);
        } else {
            walk(fluid, pair, isobars, count, failures);
        }
    }

    long all = 0;
    long away = 0;
    double seconds = 0;
    double slowest = 0;
    std::string slowestPair;
    for (const auto& [pair, count] : counts) {
        all += count.states;
        seconds += count.seconds;
        if (count.slowest > slowest) {
            slowest = count.slowest;
            slowestPair = pair;
        }
    }
    std::map<std::string, long> byPlace;
    for (const Failure& failure : failures) {
        const bool critical = nearCritical(fluid, failure.state);
        if (!critical) ++away;
        char key[64];
        std::snprintf(key, sizeof key, "%s %d %s", failure.pair.c_str(), failure.code, place(fluid, failure.state));
        ++byPlace[key];
        if (critical ? options.listCritical : options.listOther) {
            std::printf("  %s %s %d %s T=%.10g p=%.10g D=%.10g q=%.6g h=%.10g s=%.10g T/Tc-1=%.2e %s\n", name.c_str(),
                        failure.pair.c_str(), failure.code, place(fluid, failure.state), failure.state.T,
                        failure.state.p, failure.state.D, failure.state.q, failure.state.h, failure.state.s,
                        failure.state.T / fluid.Tc - 1, failure.text.c_str());
        }
    }
    std::printf(
        "%-9s %7ld states, %4ld failures, %4ld of them near the critical point, %5.1f us each, slowest %.0f us (%s)\n",
        name.c_str(), all, static_cast<long>(failures.size()), static_cast<long>(failures.size()) - away,
        1e6 * seconds / static_cast<double>(std::max(1L, all)), 1e6 * slowest, slowestPair.c_str());
    for (const auto& [key, number] : byPlace) std::printf("          %6ld  %s\n", number, key.c_str());
    std::fflush(stdout);
    return away;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    std::vector<std::string> fluids;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--critical") {
            options.listCritical = true;
        } else if (argument == "--list") {
            options.listOther = true;
        } else if (argument == "--density" && i + 1 < argc) {
            options.density = std::atof(argv[++i]);
        } else if (argument == "--pairs" && i + 1 < argc) {
            options.pairs.clear();
            for (char* pair = std::strtok(argv[++i], ","); pair; pair = std::strtok(nullptr, ",")) {
                options.pairs.emplace_back(pair);
            }
        } else {
            fluids.emplace_back(argument);
        }
    }
    if (fluids.empty()) fluids.assign(std::begin(frigana::test::pureFluids), std::end(frigana::test::pureFluids));

    long away = 0;
    for (const std::string& fluid : fluids) away += mapFluid(fluid, options);
    std::printf("%ld states without density root\n", missing);
    std::printf("%ld failures away from the critical points\n", away);
    return away == 0 ? 0 : 1;
}
