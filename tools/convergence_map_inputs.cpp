// Random states of mixtures through the flashes of every pair of inputs, up to the hottest temperature and the highest
// pressure of two phases and beyond: failures and wrong answers by pair, and the slowest state.
//
//   convergence_map_inputs [--list] [--seed n] [--part k/n] [--pairs TP,PH,...] blends n [blend ...]
//   convergence_map_inputs [...] binaries n [from to | fluid/fluid ...]
//   convergence_map_inputs [...] random mixtures n
//
// n states of each of the predefined blends; of each pair of the mixing parameters at 5, 35, 65 and 95 %, all or the
// from-th to the to-th of them; or of as many random blends of two to five ordinary refrigerants. A state is made by
// the flash at temperature and pressure and held against what must be true of it whatever solver found it: one
// pressure, equal fugacities and the material balance of two phases; of one, that no other phase lies below the plane
// that touches its Gibbs energy. The flashes of all other pairs have to lead back to it, or to another state of which
// the same is true and which meets the inputs: the dense one of two on an isotherm, or the second one of a retrograde
// line. Where a liquid falls apart into two, the equations of two phases have several solutions: such states are
// counted apart. Times are those of the processor. A state that fails is printed at once, the table of what has been
// counted so far after every 50 pairs of fluids. Exit status 1 if an answer without an error is wrong.
//   --list   prints all states that fail, one a line; otherwise only the wrong ones
//   --seed   of the random numbers (1); every mixture has a sequence of its own
//   --part   only every n-th mixture from the k-th on
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <limits>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "FlashState.h"
#include "FluidConstants.h"
#include "LIMITS.h"
#include "OPENFL.h"
#include "PROP_SUB.h"
#include "PROP_SUB_FUGACITY.h"
#include "PureFluid.h"
#include "SAT_SUB.h"
#include "SAT_SUB_NEWTON.h"
#include "SETUP.h"
#include "TPRHO.h"

namespace {

using namespace frigana;
using frigana::test::flash;
using frigana::test::FlashState;

constexpr double agreement = 1e-6;

// The flashes of temperature and a caloric property begin at 0.0001 mol/L.
constexpr double thinnest = 1.01e-4;

struct Mixture {
    std::string name;
    int nc = 0;
    Composition z{};
    double Tmin = 0, Tmax = 0, Dmax = 0, pmax = 0, Tc = 0, pc = 0, Thot = 0, phigh = 0;
};

struct Options {
    bool list = false;
    unsigned seed = 1;
    int part = 0, parts = 1;
    std::vector<std::string> pairs{"TP", "TD", "TH", "TS", "TE", "PD", "PH", "PS",
                                   "PE", "DH", "DS", "DE", "HS", "ES", "TQ", "PQ"};
};

struct Count {
    long states = 0, errors = 0, wrong = 0, other = 0, twoLiquids = 0;
    double seconds = 0, slowest = 0;
    std::string slowestState;
    std::map<int, long> codes;
};

std::string text(const Text255& field) {
    const std::string_view view = field.view();
    return std::string(trimRight(view.substr(0, view.find('\0'))));
}

// ---- what must be true of a state -----------------------------------------------------------------------------------

double packing(const Mixture& m, double rho, const Composition& x) {
    double volume = 0;
    for (int i = 1; i <= m.nc; ++i) volume += x[i] / fluidConstants.DCRIT[i];
    return rho * volume;
}

double property(char letter, double T, double rho, const Composition& x) {
    double value = 0;
    (letter == 'H' ? ENTHAL : letter == 'S' ? ENTRO : ENERGY)(T, rho, x, value);
    return value;
}

bool logarithmsOfFugacities(const Mixture& m, double T, double rho, const Composition& x, Composition& lnf) {
    int ierr = 0;
    Text255 herr;
    Composition f{};
    FGCTY2(T, rho, x, f, ierr, herr);
    if (ierr > 0) return false;
    for (int i = 1; i <= m.nc; ++i) {
        if (!(f[i] > 0) && x[i] > 0) return false;
        lnf[i] = std::log(std::max(f[i], 1e-300));
    }
    return true;
}

// True if a density is one of the pressure, or so near to it that the pressure of a liquid drowns in its rounding.
bool atPressure(double T, double p, double rho, const Composition& x) {
    double back = 0, slope = 0;
    PRESS(T, rho, x, back);
    DPDD(T, rho, x, slope);
    return slope > 0 && std::fabs(back - p) < agreement * std::max(p, 0.1 * rho * slope);
}

enum class Found { nothing, vapor, liquid };

// A phase below the plane that touches the Gibbs energy at z, from trial liquids rich in one component and from a trial
// vapor.
//   Source  M. L. Michelsen, Fluid Phase Equilib. 9 (1982) 1
Found phaseBelow(const Mixture& m, double T, double p, double rho, const Composition& z) {
    constexpr int exchanges = 150;
    constexpr double below = 1e-7, another = 1e-3;
    Composition lnf{};
    if (!logarithmsOfFugacities(m, T, rho, z, lnf)) return Found::nothing;
    for (int trial = 0; trial <= m.nc; ++trial) {
        Composition W{}, x{};
        for (int i = 1; i <= m.nc; ++i) W[i] = trial == 0 ? std::exp(lnf[i]) / p : i == trial ? 0.95 : 0.05 * z[i];
        double sum = 0, trialRho = 0;
        bool found = true;
        for (int pass = 1; pass <= exchanges && found; ++pass) {
            sum = 0;
            for (int i = 1; i <= m.nc; ++i) sum += W[i];
            for (int i = 1; i <= m.nc; ++i) x[i] = W[i] / sum;
            int ierr = 0;
            Text255 herr;
            TPRHO(T, p, x, trial == 0 ? 2 : 1, 0, trialRho, ierr, herr);
            Composition of{};
            found = ierr <= 0 && trialRho > 0 && atPressure(T, p, trialRho, x) &&
                    logarithmsOfFugacities(m, T, trialRho, x, of);
            double change = 0;
            for (int i = 1; i <= m.nc && found; ++i) {
                if (!(x[i] > 0)) continue;
                const double next = x[i] * std::exp(lnf[i] - of[i]);
                change += std::fabs(next - W[i]);
                W[i] = next;
            }
            if (change < 1e-10) break;
        }
        if (!found) continue;
        double distance = std::fabs(trialRho / rho - 1);
        sum = 0;
        for (int i = 1; i <= m.nc; ++i) {
            distance += std::fabs(x[i] - z[i]);
            sum += W[i];
        }
        if (distance > another && sum > 1 + below) return packing(m, trialRho, x) > 1.5 ? Found::liquid : Found::vapor;
    }
    return Found::nothing;
}

// True for two phases in equilibrium that make up the whole.
bool isEquilibrium(const Mixture& m, const FlashState& s) {
    constexpr double trace = 1e-12;
    if (!atPressure(s.T, s.p, s.Dl, s.x) || !atPressure(s.T, s.p, s.Dv, s.y)) return false;
    Composition liquid{}, vapor{};
    if (!logarithmsOfFugacities(m, s.T, s.Dl, s.x, liquid) || !logarithmsOfFugacities(m, s.T, s.Dv, s.y, vapor))
        return false;
    double apart = std::fabs(s.Dl / s.Dv - 1);
    for (int i = 1; i <= m.nc; ++i) {
        if (s.x[i] > trace && s.y[i] > trace && !(std::fabs(liquid[i] - vapor[i]) < agreement)) return false;
        if (!(std::fabs((1 - s.q) * s.x[i] + s.q * s.y[i] - m.z[i]) < agreement)) return false;
        apart += std::fabs(s.x[i] - s.y[i]);
    }
    return apart > 1e-6;
}

// Both, or the one phase, of a state.
double whole(const FlashState& s, const Mixture& m, char letter) {
    if (letter == 'D') return s.twoPhase() ? 1 / ((1 - s.q) / s.Dl + s.q / s.Dv) : s.D;
    return s.twoPhase() ? (1 - s.q) * property(letter, s.T, s.Dl, s.x) + s.q * property(letter, s.T, s.Dv, s.y)
                        : property(letter, s.T, s.D, m.z);
}

bool meets(const Mixture& m, const FlashState& s, char letter, double given) {
    if (letter == 'T') return std::fabs(s.T / given - 1) < 1e-9;
    if (letter == 'P') return s.twoPhase() ? std::fabs(s.p / given - 1) < agreement : atPressure(s.T, given, s.D, m.z);
    if (letter == 'Q') return s.twoPhase() && std::fabs(s.q - given) < 1e-4;
    const double value = whole(s, m, letter);
    if (letter == 'D') return std::fabs(value / given - 1) < agreement;
    double scale = letter == 'S' ? fluidConstants.R : fluidConstants.R * s.T;
    if (s.twoPhase())
        scale = std::max(scale, std::fabs(property(letter, s.T, s.Dv, s.y) - property(letter, s.T, s.Dl, s.x)));
    return std::fabs(value - given) < agreement * (scale + std::fabs(given));
}

// True if a liquid of the state falls apart into two, or the whole as a liquid.
bool hasTwoLiquids(const Mixture& m, const FlashState& s) {
    const bool two = s.twoPhase();
    const double rho = two ? s.Dl : s.D;
    const Composition& x = two ? s.x : m.z;
    return packing(m, rho, x) > 1.5 && phaseBelow(m, s.T, s.p, rho, x) == Found::liquid;
}

bool isTrue(const Mixture& m, const FlashState& s) {
    if (s.twoPhase()) return isEquilibrium(m, s);
    return atPressure(s.T, s.p, s.D, m.z) && phaseBelow(m, s.T, s.p, s.D, m.z) == Found::nothing;
}

// ---- the map --------------------------------------------------------------------------------------------------------

class Map {
  public:
    explicit Map(const Options& options) : options_(options) {}

    void add(const Mixture& m, int states) {
        ++mixtures_;
        std::seed_seq sequence(m.name.begin(), m.name.end());
        std::mt19937_64 generator(sequence);
        generator.discard(1000UL * options_.seed);
        for (int k = 0; k < states; ++k) walk(m, generator);
    }

    // Returns the number of wrong answers.
    long print() const {
        const long wrong = table();
        std::fflush(stdout);
        return wrong;
    }

  private:
    const Options& options_;
    std::map<std::string, Count> counts_;
    long mixtures_ = 0, made_ = 0, two_ = 0, above_ = 0;

    long table() const {
        std::printf("%ld mixtures, %ld states: %ld of two phases, %ld hotter or above the pressure of CRITP's point\n",
                    mixtures_, made_, two_, above_);
        std::printf("pair   states  errors   wrong  another  two liquids   ms each  slowest ms  codes\n");
        long wrong = 0, errors = 0, all = 0;
        const Count* slowest = nullptr;
        for (const std::string& pair : options_.pairs) {
            const auto at = counts_.find(pair);
            if (at == counts_.end()) continue;
            const Count& c = at->second;
            std::printf("%-5s %7ld %7ld %7ld %8ld %12ld %9.3f %11.1f ", pair.c_str(), c.states, c.errors, c.wrong,
                        c.other, c.twoLiquids, 1e3 * c.seconds / static_cast<double>(std::max(1L, c.states)),
                        1e3 * c.slowest);
            for (const auto& [code, number] : c.codes) std::printf(" %d x %ld", code, number);
            std::printf("\n");
            wrong += c.wrong;
            errors += c.errors;
            all += c.states;
            if (slowest == nullptr || c.slowest > slowest->slowest) slowest = &c;
        }
        std::printf("%ld flashes, %ld errors, %ld wrong\n", all, errors, wrong);
        if (slowest != nullptr)
            std::printf("slowest %.1f ms: %s\n", 1e3 * slowest->slowest, slowest->slowestState.c_str());
        return wrong;
    }

    static std::string words(const Mixture& m, const char* pair, const FlashState& s) {
        char line[300];
        std::snprintf(line, sizeof line, "%s %s T=%.8g (%.4f Tc) p=%.8g (%.4f pc) q=%.6g", m.name.c_str(), pair, s.T,
                      s.T / m.Tc, s.p, s.p / m.pc, s.q);
        return line;
    }

    FlashState timed(const char* pair, double a, double b, const Mixture& m, const FlashState& state, int kr) {
        Count& count = counts_[pair];
        const std::clock_t start = std::clock();
        FlashState found = flash(pair, a, b, m.z, kr);
        const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
        count.seconds += seconds;
        if (seconds > count.slowest) {
            count.slowest = seconds;
            count.slowestState = words(m, pair, state);
        }
        return found;
    }

    void fails(const char* pair, const Mixture& m, const FlashState& state, const FlashState& found, bool twoLiquids) {
        Count& count = counts_[pair];
        const bool error = found.ierr > 0;
        if (twoLiquids) {
            ++count.twoLiquids;
        } else if (error) {
            ++count.errors;
            ++count.codes[found.ierr];
        } else {
            ++count.wrong;
        }
        if (!options_.list && (error || twoLiquids)) return;
        std::printf("  %s %s: code %d T=%.8g p=%.8g q=%.6g %s\n",
                    twoLiquids ? "two liquids"
                    : error    ? "error"
                               : "WRONG",
                    words(m, pair, state).c_str(), found.ierr, found.T, found.p, found.q,
                    text(found.herr).substr(0, 120).c_str());
        std::fflush(stdout);
    }

    // A state by temperature and pressure that is a true one.
    bool make(const Mixture& m, std::mt19937_64& generator, FlashState& state) {
        std::uniform_real_distribution<double> uniform(0, 1);
        // a third of the states about the top of the region
        const bool top = uniform(generator) < 0.33;
        const double hottest = std::min(1.02 * m.Thot, m.Tmax);
        const double low = top ? std::max(m.Tmin, 0.93 * m.Tc) : m.Tmin;
        state = FlashState{};
        const double T = low + uniform(generator) * (hottest - low);
        double lower = 0.3 * m.pc, upper = 1.05 * m.phigh;
        if (!top && T < 0.97 * m.Tc) {
            FlashState bubble, dew;
            SATT(T, m.z, 1, bubble.p, bubble.Dl, bubble.Dv, bubble.x, bubble.y, bubble.ierr, bubble.herr);
            SATT(T, m.z, 2, dew.p, dew.Dl, dew.Dv, dew.x, dew.y, dew.ierr, dew.herr);
            if (bubble.ierr <= 0 && dew.ierr <= 0 && bubble.p > 0 && dew.p > 0) {
                // three of four between the lines
                const bool between = uniform(generator) < 0.75;
                const bool liquid = uniform(generator) < 0.5;
                lower = between || liquid ? dew.p : 0.2 * dew.p;
                upper = between || !liquid ? bubble.p : 2 * bubble.p;
                if (!between) (liquid ? lower : upper) = liquid ? bubble.p : dew.p;
            }
        }
        const double p = lower * std::pow(upper / lower, uniform(generator));
        Count& count = counts_["TP"];
        ++count.states;
        state.T = T;
        state.p = p;
        FlashState found = timed("TP", T, p, m, state, 1);
        if (found.ierr > 0) {
            fails("TP", m, state, found, false);
            return false;
        }
        if (found.T != T) return false;
        state = found;
        if (!isTrue(m, state)) {
            fails("TP", m, state, found, hasTwoLiquids(m, state));
            return false;
        }
        ++made_;
        if (state.twoPhase()) ++two_;
        if (T > m.Tc || p > m.pc) ++above_;
        return true;
    }

    bool same(const FlashState& a, const FlashState& b) const {
        if (!(std::fabs(a.T / b.T - 1) < 1e-5) || a.twoPhase() != b.twoPhase()) return false;
        if (a.twoPhase()) return std::fabs(a.q - b.q) < 2e-4 && std::fabs(a.p / b.p - 1) < 1e-4;
        return std::fabs(a.D / b.D - 1) < 1e-5;
    }

    void walk(const Mixture& m, std::mt19937_64& generator) {
        FlashState state;
        if (!make(m, generator, state)) return;
        const bool nearLine = state.twoPhase() && std::min(state.q, 1 - state.q) < 1e-4;
        if (nearLine) return;
        for (const char letter : {'D', 'H', 'S', 'E'}) state[letter] = whole(state, m, letter);
        int twoLiquids = -1;  // not asked yet
        for (const std::string& pair : options_.pairs) {
            if (pair == "TP" || (pair[1] == 'Q' && !state.twoPhase())) continue;
            const bool onIsotherm = pair == "TH" || pair == "TS" || pair == "TE";
            if (onIsotherm && state.D < thinnest) continue;
            Count& count = counts_[pair];
            ++count.states;
            const double a = state[pair[0]], b = state[pair[1]];
            FlashState found;
            bool good = false, another = false;
            // on an isotherm the other density is asked for
            for (int kr = 1; kr <= (onIsotherm ? 2 : 1) && !good; ++kr) {
                found = timed(pair.c_str(), a, b, m, state, kr);
                if (found.ierr > 0) continue;
                if (pair[0] == 'D') found.D = a;
                good = same(found, state) && meets(m, found, pair[0], a) && meets(m, found, pair[1], b);
            }
            if (!good && found.ierr <= 0) {
                another = good = meets(m, found, pair[0], a) && meets(m, found, pair[1], b) && isTrue(m, found);
                // close to the line the two are one
                if (another && std::fabs(found.T / state.T - 1) < 1e-4) another = false;
            }
            if (another) ++count.other;
            if (good) continue;
            if (twoLiquids < 0) twoLiquids = hasTwoLiquids(m, state);
            fails(pair.c_str(), m, state, found, twoLiquids == 1);
        }
    }
};

// Limits and critical point; the hottest temperature and the highest pressure of both phases, by their lines.
bool complete(Mixture& m) {
    int ierr = 0;
    Text255 herr;
    double Dc = 0;
    CRITP(m.z, m.Tc, m.pc, Dc, ierr, herr);
    if (ierr > 0) return false;
    LIMITS("EOS", m.z, m.Tmin, m.Tmax, m.Dmax, m.pmax);
    m.Tmin *= 1.001;
    m.Thot = m.Tc;
    m.phigh = m.pc;
    double T = m.Tc, p = m.pc;
    CRTPNT(m.z, T, p, Dc, ierr, herr);
    if (ierr <= 0) {
        m.Thot = std::max(m.Thot, T);
        m.phigh = std::max(m.phigh, p);
    }
    for (int k = 1; k <= 40; ++k) {
        const double share = 0.4 + 0.9 * k / 40;
        for (const int kph : {1, 2}) {
            FlashState s;
            SATP(share * m.pc, m.z, kph, s.T, s.Dl, s.Dv, s.x, s.y, s.ierr, s.herr);
            if (s.ierr <= 0 && s.Dl > 1.001 * s.Dv) {
                m.Thot = std::max(m.Thot, s.T);
                m.phigh = std::max(m.phigh, share * m.pc);
            }
            FlashState t;
            SATT((0.8 + 0.25 * k / 40) * m.Tc, m.z, kph, t.p, t.Dl, t.Dv, t.x, t.y, t.ierr, t.herr);
            if (t.ierr <= 0 && t.Dl > 1.001 * t.Dv) m.phigh = std::max(m.phigh, t.p);
        }
    }
    return m.Thot > m.Tmin && m.phigh > 0;
}

bool setUp(const std::vector<std::string>& fluids) {
    FileNames files{};
    for (std::size_t i = 0; i < fluids.size(); ++i) files[static_cast<int>(i) + 1].assign(fluids[i] + ".FLD");
    Text3 reference("DEF");
    int ierr = 0;
    Text255 herr;
    SETUP(static_cast<int>(fluids.size()), files, Text255("HMX.BNC"), reference, ierr, herr);
    return ierr <= 0;
}

void mapBlends(const Options& options, int states, std::vector<std::string> names, Map& map) {
    if (names.empty()) {
        for (const auto& entry : std::filesystem::directory_iterator(std::string(FRIGANA_DATA) + "/mixtures"))
            if (entry.path().extension() == ".MIX") names.push_back(entry.path().stem().string());
        std::sort(names.begin(), names.end());
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (static_cast<int>(i) % options.parts != options.part) continue;
        Mixture m;
        m.name = names[i];
        FileNames files{};
        Text3 reference("DEF");
        int ierr = 0;
        Text255 herr;
        SETMIX(Text255(m.name + ".MIX"), Text255("HMX.BNC"), reference, m.nc, files, m.z, ierr, herr);
        if (ierr <= 0 && complete(m)) map.add(m, states);
    }
}

// Fluids by the CAS numbers of the pairs in the file of mixing parameters.
std::vector<std::pair<std::string, std::string>> recordedPairs() {
    std::map<std::string, std::string> fluids;
    for (const auto& entry : std::filesystem::directory_iterator(std::string(FRIGANA_DATA) + "/fluids")) {
        if (entry.path().extension() != ".FLD") continue;
        std::ifstream file(entry.path());
        std::string line, cas;
        std::getline(file, line);
        file >> cas;
        fluids[cas] = entry.path().stem().string();
    }
    std::vector<std::pair<std::string, std::string>> pairs;
    std::ifstream file(std::string(FRIGANA_DATA) + "/fluids/HMX.BNC");
    for (std::string line; std::getline(file, line);) {
        const std::size_t slash = line.find('/'), blank = line.find(' ');
        if (slash >= blank) continue;
        const auto first = fluids.find(line.substr(0, slash));
        const auto second = fluids.find(line.substr(slash + 1, blank - slash - 1));
        if (first != fluids.end() && second != fluids.end()) pairs.emplace_back(first->second, second->second);
    }
    return pairs;
}

bool isNumber(const std::string& word) {
    return !word.empty() && std::all_of(word.begin(), word.end(), [](unsigned char c) { return std::isdigit(c); });
}

void mapBinaries(const Options& options, int states, std::vector<std::string> names, Map& map) {
    constexpr long pairsOfATable = 50;
    long from = 1, to = std::numeric_limits<long>::max();
    if (names.size() == 2 && isNumber(names[0]) && isNumber(names[1])) {
        from = std::atol(names[0].c_str());
        to = std::atol(names[1].c_str());
        names.clear();
    }
    long place = 0, walked = 0, without = 0;
    for (const auto& [first, second] : recordedPairs()) {
        const std::string name = first + "/" + second;
        if (!names.empty() && std::find(names.begin(), names.end(), name) == names.end()) continue;
        if (++place < from || place > to || (place - from) % options.parts != options.part) continue;
        if (walked++ % pairsOfATable == 0 && walked > 1) {
            std::printf("before pair %ld, %s:\n", place, name.c_str());
            map.print();
        }
        if (!setUp({first, second})) continue;
        for (const int percent : {5, 35, 65, 95}) {
            Mixture m;
            m.name = name + " " + std::to_string(percent);
            m.nc = 2;
            m.z[1] = 0.01 * percent;
            m.z[2] = 1 - m.z[1];
            if (complete(m))
                map.add(m, states);
            else
                ++without;
        }
    }
    std::printf("%ld compositions without a critical point\n", without);
}

void mapRandom(const Options& options, int mixtures, int states, Map& map) {
    const std::vector<std::string> ordinary = {"R32",    "R125",    "R134A",  "R143A",    "R152A",   "R22",
                                               "R23",    "R124",    "R142B",  "R218",     "R227EA",  "R236FA",
                                               "R245FA", "R115",    "R116",   "R12",      "R1234YF", "R1234ZE",
                                               "CO2",    "PROPANE", "BUTANE", "ISOBUTAN", "PROPYLEN"};
    std::mt19937_64 generator(options.seed);
    std::uniform_real_distribution<double> uniform(0, 1);
    for (int k = 0; k < mixtures; ++k) {
        const int nc = 2 + static_cast<int>(4 * uniform(generator));
        std::set<std::string> chosen;
        while (static_cast<int>(chosen.size()) < nc)
            chosen.insert(
                ordinary[static_cast<std::size_t>(uniform(generator) * static_cast<double>(ordinary.size()))]);
        Mixture m;
        m.nc = nc;
        double sum = 0;
        for (int i = 1; i <= nc; ++i) sum += m.z[i] = -std::log(1 - uniform(generator)) + 0.02;
        int i = 0;
        for (const std::string& fluid : chosen) {
            m.z[++i] /= sum;
            char part[40];
            std::snprintf(part, sizeof part, "%s%s %.5f", i > 1 ? " " : "", fluid.c_str(), m.z[i]);
            m.name += part;
        }
        if (k % options.parts != options.part) continue;
        if (setUp({chosen.begin(), chosen.end()}) && complete(m)) map.add(m, states);
    }
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    std::vector<std::string> words;
    for (int i = 1; i < argc; ++i) {
        const bool more = i + 1 < argc;
        if (std::strcmp(argv[i], "--list") == 0)
            options.list = true;
        else if (std::strcmp(argv[i], "--seed") == 0 && more)
            options.seed = static_cast<unsigned>(std::atoi(argv[++i]));
        else if (std::strcmp(argv[i], "--part") == 0 && more)
            std::sscanf(argv[++i], "%d/%d", &options.part, &options.parts);
        else if (std::strcmp(argv[i], "--pairs") == 0 && more) {
            options.pairs.clear();
            for (char* pair = std::strtok(argv[++i], ","); pair; pair = std::strtok(nullptr, ","))
                options.pairs.emplace_back(pair);
        } else
            words.emplace_back(argv[i]);
    }
    SETPATH(FRIGANA_DATA);
    Map map(options);
    const int number = words.size() > 1 ? std::atoi(words[1].c_str()) : 0;
    const std::vector<std::string> names(words.begin() + std::min<std::ptrdiff_t>(2, std::ssize(words)), words.end());
    if (number > 0 && words[0] == "blends") {
        mapBlends(options, number, names, map);
    } else if (number > 0 && words[0] == "binaries") {
        mapBinaries(options, number, names, map);
    } else if (number > 0 && words[0] == "random" && !names.empty()) {
        mapRandom(options, number, std::atoi(names[0].c_str()), map);
    } else {
        std::fprintf(stderr, "convergence_map_inputs [--list] blends n | binaries n [from to] | random mixtures n\n");
        return 2;
    }
    return map.print() == 0 ? 0 : 1;
}
