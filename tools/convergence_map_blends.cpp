// Walks the two-phase region of the predefined blends, or of mixtures given by their files, through the saturation
// routines and the two-phase flashes, and counts the failures.
//
//   convergence_map_blends [--list] [--points n] [--flash n] [blend ...]
//   convergence_map_blends [--list] --binaries n [fluid/fluid ...]
//
// Bubble and dew points at n temperatures (400 if not told otherwise) from the lower limit to 0.5 K below the critical
// temperature, the same at the pressures found, and flashes at (T, p), (p, h), (p, s), (T, q), (p, q), (h, s) and (e,
// s) between them at every n-th of these temperatures. A state fails where a routine returns an error, or not the state
// that the inputs were made from. Exit status 1 if a state fails up to 0.98 of the critical pressure. States at
// temperatures where the model has two liquids, so that a solution with one liquid is not the stable state, are counted
// apart: those that are another equilibrium (equal fugacities, material balance, inputs met) and those that failed.
//   --list     prints all failing states, one a line; otherwise only those up to 0.98 of the critical pressure
//   --points   number of temperatures
//   --flash    every n-th of them has flashes (10 if not told otherwise)
//   --binaries all pairs of the mixing parameters at fractions of 0.1, 0.5 and 0.9 and n temperatures instead of
//   blends,
//              held against equal fugacities, one pressure, the order of the phases, the tangent plane over all
//              compositions, the way to pressure and back, and the last temperature
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "FLASH2.h"
#include "FLSH_SUB.h"
#include "FluidConstants.h"
#include "LIMITS.h"
#include "OPENFL.h"
#include "PHIDERV.h"
#include "PROP_SUB.h"
#include "PROP_SUB_FUGACITY.h"
#include "SAT_SUB.h"
#include "SAT_SUB_NEWTON.h"
#include "SETUP.h"
#include "TPRHO.h"

namespace {

using namespace frigana;

std::string text(const Text255& field) {
    const std::string_view view = field.view();
    return std::string(trimRight(view.substr(0, view.find('\0'))));
}

struct Options {
    bool list = false;
    int points = 400, flash = 10, binaries = 0;
    std::vector<std::string> blends;
};

struct Blend {
    std::string name;
    int nc = 0;
    Composition z{};
    double Tmin = 0, Tc = 0, pc = 0, Dc = 0;
    mutable double depth = 0;
};

struct State {
    double T = 0, p = 0, rhol = 0, rhov = 0;
    Composition x{}, y{};
    int ierr = 0;
    Text255 herr;
};

struct Count {
    long states = 0, failures = 0, nearCritical = 0, twoLiquids = 0, otherState = 0;
    double slowest = 0.0;  // [s]
    std::string slowestState;
};

State bubbleOrDew(const Blend& blend, double T, int kph) {
    State s;
    s.T = T;
    SATT(T, blend.z, kph, s.p, s.rhol, s.rhov, s.x, s.y, s.ierr, s.herr);
    return s;
}

// True if the liquid of the blend's composition, the first liquid of its vapor, or one between, falls apart into two at
// T: the model has a miscibility gap there, the equations of two phases have several roots, and none of them need be
// the stable one. By the distance of the tangent plane, from trial liquids that are rich in one component.
//   Source  M. L. Michelsen, Fluid Phase Equilib. 9 (1982) 1
bool splits(const Blend& blend, double T);

struct Report {
    const Options& options;
    const Blend& blend;
    Count saturation, flash;
    long byEntropy = 0;             // flashes at (h, s) and (e, s)
    double byEntropySeconds = 0.0;  // in them

    // valid: the state is an equilibrium of the composition that meets the inputs, though not the one looked for
    void add(Count& count, bool good, bool valid, double T, double p, double seconds, const std::string& words) {
        ++count.states;
        if (seconds > count.slowest) {
            count.slowest = seconds;
            count.slowestState = words;
        }
        if (good) return;
        if (splits(blend, T)) {
            ++(valid ? count.otherState : count.twoLiquids);
            if (options.list)
                std::printf("  %-6s %5.3f pc  two liquids, %s  %s\n", blend.name.c_str(), p / blend.pc,
                            valid ? "another equilibrium" : "failed", words.c_str());
            return;
        }
        const bool near = p > 0.98 * blend.pc;
        ++(near ? count.nearCritical : count.failures);
        if (options.list || !near)
            std::printf("  %-6s %5.3f pc  %s\n", blend.name.c_str(), p / blend.pc, words.c_str());
    }
};

bool fugacityCoefficients(double T, double p, const Composition& x, int nc, Composition& lnPhi) {
    double D = 0.0;
    int ierr = 0;
    Text255 herr;
    TPRHO(T, p, x, 1, 0, D, ierr, herr);
    if (ierr > 0) return false;
    Composition dalpha{}, dnalpha{};
    PHIDERV(1, T, D, x, dalpha, dnalpha, ierr, herr);
    if (ierr > 0) return false;
    for (int i = 1; i <= nc; ++i) lnPhi[i] = dnalpha[i] + std::log(D);  // up to what all phases at T and p share
    return true;
}

// Of one liquid at T and p.
bool liquidSplits(const Blend& blend, double T, double p, const Composition& z) {
    Composition lnPhi{};
    if (!fugacityCoefficients(T, p, z, blend.nc, lnPhi)) return false;
    for (int rich = 1; rich <= blend.nc; ++rich) {
        Composition W{}, x{}, lnPhiOfTrial{};
        for (int i = 1; i <= blend.nc; ++i) W[i] = i == rich ? 0.95 : 0.05 * z[i];
        double sum = 0.0;
        for (int pass = 1; pass <= 300; ++pass) {
            sum = 0.0;
            for (int i = 1; i <= blend.nc; ++i) sum += W[i];
            for (int i = 1; i <= blend.nc; ++i) x[i] = W[i] / sum;
            if (!fugacityCoefficients(T, p, x, blend.nc, lnPhiOfTrial)) break;
            double change = 0.0;
            for (int i = 1; i <= blend.nc; ++i) {
                const double next = z[i] * std::exp(lnPhi[i] - lnPhiOfTrial[i]);
                change += std::fabs(next - W[i]);
                W[i] = next;
            }
            if (change < 1e-10) break;
        }
        double distance = 0.0;
        sum = 0.0;
        for (int i = 1; i <= blend.nc; ++i) {
            distance += std::fabs(x[i] - z[i]);
            sum += W[i];
        }
        if (distance > 1e-3 && sum > 1.0 + 1e-7) return true;
    }
    return false;
}

bool splits(const Blend& blend, double T) {
    const State bubble = bubbleOrDew(blend, T, 1), dew = bubbleOrDew(blend, T, 2);
    if (bubble.ierr != 0 || dew.ierr != 0) return false;
    for (const double share : {0.0, 0.25, 0.5, 0.75, 1.0}) {
        Composition x{};
        for (int i = 1; i <= blend.nc; ++i) x[i] = (1.0 - share) * bubble.x[i] + share * dew.x[i];
        if (liquidSplits(blend, T, (1.0 - share) * bubble.p + share * dew.p, x)) return true;
    }
    return false;
}

class Clock {
  public:
    double seconds() const { return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count(); }

  private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

// Equality of the fugacities, the proof of an equilibrium.
double disequilibrium(const Blend& blend, const State& s) {
    Composition fl{}, fv{};
    int ierr = 0;
    Text255 herr;
    FGCTY2(s.T, s.rhol, s.x, fl, ierr, herr);
    FGCTY2(s.T, s.rhov, s.y, fv, ierr, herr);
    // below that the fugacities of a component say nothing of the state
    constexpr double trace = 1e-12;
    double worst = 0.0;
    for (int i = 1; i <= blend.nc; ++i)
        if (s.x[i] > trace && s.y[i] > trace) worst = std::max(worst, std::fabs(fl[i] / fv[i] - 1.0));
    return worst;
}

std::string words(const char* what, double T, double p, const State& s, double deviation) {
    char line[400];
    std::snprintf(line, sizeof line, "%s T %.4f p %.5g: code %d, T %.5f p %.6g rhol %.5g rhov %.5g, off by %.2e %s",
                  what, T, p, s.ierr, s.T, s.p, s.rhol, s.rhov, deviation, text(s.herr).substr(0, 160).c_str());
    return line;
}

constexpr double agreement = 1e-6;

State saturationAtPressure(const Blend& blend, double p, int kph) {
    State s;
    s.p = p;
    SATP(p, blend.z, kph, s.T, s.rhol, s.rhov, s.x, s.y, s.ierr, s.herr);
    return s;
}

void saturation(const Blend& blend, Report& report, std::vector<State>& bubble, std::vector<State>& dew) {
    const int n = report.options.points;
    for (int k = 0; k < n; ++k) {
        const double T = blend.Tmin + (blend.Tc - 0.5 - blend.Tmin) * k / (n - 1);
        for (const int kph : {1, 2}) {
            const Clock clock;
            State s = bubbleOrDew(blend, T, kph);
            const double seconds = clock.seconds();
            double deviation = s.ierr > 0 ? 1.0 : disequilibrium(blend, s);
            const bool valid = s.ierr == 0 && deviation < agreement;
            const double p = s.ierr > 0 ? blend.pc * std::exp(6.5 * (1.0 - blend.Tc / T)) : s.p;
            // the dew point lies below the bubble point of its temperature, and both rise with it
            std::vector<State>& line = kph == 1 ? bubble : dew;
            bool good = s.ierr == 0 && deviation < agreement && s.rhol > s.rhov;
            if (good && kph == 2 && bubble.back().ierr == 0 && s.p > bubble.back().p * (1.0 + 1e-9)) {
                good = false;
                deviation = s.p / bubble.back().p - 1.0;
            }
            if (good && k > 0 && line.back().ierr == 0 && s.p <= line.back().p) good = false;
            report.add(report.saturation, good, valid, T, p, seconds,
                       words(kph == 1 ? "SATT bubble" : "SATT dew", T, p, s, deviation));
            if (!good) s.ierr = 999;
            line.push_back(s);
            if (!good) continue;
            const Clock again;
            const State back = saturationAtPressure(blend, s.p, kph);
            const double off = std::fabs(back.T / T - 1.0);
            report.add(report.saturation, back.ierr == 0 && off < agreement,
                       back.ierr == 0 && disequilibrium(blend, back) < agreement, T, s.p, again.seconds(),
                       words(kph == 1 ? "SATP bubble" : "SATP dew", T, s.p, back, off));
        }
    }
}

// True if two phases are in equilibrium and make up the composition.
bool equilibrium(const Blend& blend, const State& s, double q) {
    if (!(q >= 0.0 && q <= 1.0) || !(disequilibrium(blend, s) < agreement)) return false;
    for (int i = 1; i <= blend.nc; ++i)
        if (!(std::fabs((1.0 - q) * s.x[i] + q * s.y[i] - blend.z[i]) < agreement)) return false;
    return true;
}

struct FlashResult {
    double D = 0, e = 0, h = 0, s = 0, cv = 0, cp = 0, w = 0, q = 0;
};

void flashes(const Blend& blend, Report& report, const std::vector<State>& bubble, const std::vector<State>& dew) {
    const auto stride = static_cast<std::size_t>(report.options.flash);
    for (std::size_t k = stride / 2; k < bubble.size(); k += stride) {
        if (bubble[k].ierr != 0 || dew[k].ierr != 0) continue;
        for (const double q : {0.05, 0.25, 0.5, 0.75, 0.95}) {
            const double T = bubble[k].T;
            State s;
            FlashResult r;
            {
                const Clock clock;
                TQFLSH(T, q, blend.z, 1, s.p, r.D, s.rhol, s.rhov, s.x, s.y, r.e, r.h, r.s, r.cv, r.cp, r.w, s.ierr,
                       s.herr);
                s.T = T;
                const double seconds = clock.seconds();
                const double deviation = s.ierr > 0 ? 1.0 : disequilibrium(blend, s);
                const double p = s.ierr > 0 ? bubble[k].p : s.p;
                const bool good = s.ierr <= 0 && deviation < agreement && s.p <= bubble[k].p * (1.0 + 1e-9) &&
                                  s.p >= dew[k].p * (1.0 - 1e-9);
                report.add(report.flash, good, s.ierr <= 0 && equilibrium(blend, s, q), T, p, seconds,
                           words("TQ", T, p, s, deviation));
                if (!good) continue;
            }
            const double p = s.p;
            // The flashes end where the vapor share is known to this part, which depends on the relative width of the
            // two-phase region in what they search, or to a hundred times that after slow progress.
            const auto shareTolerance = [](double width) {
                constexpr double base = 5e-6;
                const double w = std::max(std::fabs(width), 1e-8);
                return std::max(1e-4, 100.0 * std::max(base / 100.0, std::min(100.0 * base, 0.02 * base / w)));
            };
            const double width = bubble[k].p / dew[k].p - 1.0;
            const double qAgreementT = shareTolerance(width);
            // next to an azeotrope the pressure hardly changes between the lines, and tells as little of the share
            const double qAgreementTP = std::max(qAgreementT, 2e-6 / std::max(width, 2e-6));
            State bubbleAtP = saturationAtPressure(blend, p, 1), dewAtP = saturationAtPressure(blend, p, 2);
            const double qAgreementP = std::max(qAgreementT, shareTolerance(dewAtP.T / bubbleAtP.T - 1.0));
            // an input of a flash by its letter, in what it found
            const auto meets = [&](char letter, const State& b, double qb) {
                double liquid = 0.0, vapor = 0.0;
                if (letter != 'H' && letter != 'S' && letter != 'E') return true;
                const auto property = letter == 'H' ? ENTHAL : letter == 'S' ? ENTRO : ENERGY;
                property(b.T, b.rhol, b.x, liquid);
                property(b.T, b.rhov, b.y, vapor);
                const double wanted = letter == 'H' ? r.h : letter == 'S' ? r.s : r.e;
                return std::fabs((1.0 - qb) * liquid + qb * vapor - wanted) < agreement * std::fabs(vapor - liquid);
            };
            const auto check = [&](const char* what, const State& b, double qb, double seconds) {
                const double qAgreement = what[0] == 'P' ? qAgreementP : qAgreementTP;
                const double off = std::max({std::fabs(b.T / T - 1.0), std::fabs(b.p / p - 1.0)});
                const double offQ = std::fabs(qb - q);
                const bool good = b.ierr <= 0 && off < 10.0 * agreement && offQ < qAgreement;
                char quality[60];
                std::snprintf(quality, sizeof quality, " q %.6f of %.2f", qb, q);
                // a flash at a pressure goes by both lines of it
                const bool twoLiquids =
                    !good && what[0] == 'P' && (splits(blend, bubbleAtP.T) || splits(blend, dewAtP.T));
                const bool valid =
                    b.ierr <= 0 && equilibrium(blend, b, qb) && meets(what[0], b, qb) && meets(what[1], b, qb);
                report.add(report.flash, good, valid,
                           twoLiquids ? (splits(blend, bubbleAtP.T) ? bubbleAtP.T : dewAtP.T) : T, p, seconds,
                           words(what, T, p, b, off) + quality);
            };
            FlashResult o;
            {
                State b;
                const Clock clock;
                double t = T;
                TPFLSH(t, p, blend.z, o.D, b.rhol, b.rhov, b.x, b.y, o.q, o.e, o.h, o.s, o.cv, o.cp, o.w, b.ierr,
                       b.herr);
                b.T = t;
                b.p = p;
                check("TP", b, o.q, clock.seconds());
            }
            {
                State b;
                const Clock clock;
                PHFLSH(p, r.h, blend.z, b.T, o.D, b.rhol, b.rhov, b.x, b.y, o.q, o.e, o.s, o.cv, o.cp, o.w, b.ierr,
                       b.herr);
                b.p = p;
                check("PH", b, o.q, clock.seconds());
            }
            {
                State b;
                const Clock clock;
                PSFLSH(p, r.s, blend.z, b.T, o.D, b.rhol, b.rhov, b.x, b.y, o.q, o.e, o.h, o.cv, o.cp, o.w, b.ierr,
                       b.herr);
                b.p = p;
                check("PS", b, o.q, clock.seconds());
            }
            {
                State b;
                const Clock clock;
                PQFLSH(p, q, blend.z, 1, b.T, o.D, b.rhol, b.rhov, b.x, b.y, o.e, o.h, o.s, o.cv, o.cp, o.w, b.ierr,
                       b.herr);
                b.p = p;
                check("PQ", b, q, clock.seconds());
            }
            for (const bool energy : {false, true}) {
                State b;
                const Clock clock;
                if (energy) {
                    ESFLSH(r.e, r.s, blend.z, b.T, b.p, o.D, b.rhol, b.rhov, b.x, b.y, o.q, o.h, o.cv, o.cp, o.w,
                           b.ierr, b.herr);
                } else {
                    HSFLSH(r.h, r.s, blend.z, b.T, b.p, o.D, b.rhol, b.rhov, b.x, b.y, o.q, o.e, o.cv, o.cp, o.w,
                           b.ierr, b.herr);
                }
                const double seconds = clock.seconds();
                report.byEntropySeconds += seconds;
                ++report.byEntropy;
                check(energy ? "ES" : "HS", b, o.q, seconds);
            }
        }
    }
}

bool setUp(const std::string& name, Blend& blend) {
    blend.name = name;
    int ierr = 0;
    FileNames files{};
    Text3 reference("DEF");
    Text255 herr;
    SETMIX(Text255(name + ".MIX"), Text255("HMX.BNC"), reference, blend.nc, files, blend.z, ierr, herr);
    if (ierr > 0) {
        std::printf("%s: %s\n", name.c_str(), text(herr).c_str());
        return false;
    }
    CRITP(blend.z, blend.Tc, blend.pc, blend.Dc, ierr, herr);
    CRTPNT(blend.z, blend.Tc, blend.pc, blend.Dc, ierr, herr);
    double Tmax, Dmax, pmax;
    LIMITS("EOS", blend.z, blend.Tmin, Tmax, Dmax, pmax);
    return true;
}

std::vector<std::string> allBlends() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(std::string(FRIGANA_DATA) + "/mixtures"))
        if (entry.path().extension() == ".MIX") names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

// ---- random binaries ------------------------------------------------------------------------------------------------
// Saturation states of all pairs of the mixing parameters, held against what must be true of them whatever solver found
// them.

struct BinaryCount {
    long states = 0, errors = 0, nearCritical = 0, notEqual = 0, exchanged = 0, vaporInstead = 0, twoLiquids = 0,
         roundTrip = 0, otherRoot = 0, jumps = 0, flashes = 0, flashErrors = 0, flashWrong = 0;
    double slowest = 0.0;
    std::string slowestState;

    void time(double seconds, const std::string& state) {
        if (seconds <= slowest) return;
        slowest = seconds;
        slowestState = state;
    }
};

double packing(const Blend& blend, double rho, const Composition& x) {
    double volume = 0.0;
    for (int i = 1; i <= blend.nc; ++i) volume += x[i] / fluidConstants.DCRIT[i];
    return rho * volume;
}

// Pressures of both phases, and that neither is inside the spinodal of its composition.
bool mechanical(const State& s) {
    for (const bool vapor : {false, true}) {
        const double rho = vapor ? s.rhov : s.rhol;
        const Composition& x = vapor ? s.y : s.x;
        double p = 0.0, slope = 0.0;
        PRESS(s.T, rho, x, p);
        DPDD(s.T, rho, x, slope);
        if (!(std::fabs(p - s.p) < 1e-6 * std::max(s.p, 1e-3 * rho * slope)) || slope <= 0.0) return false;
    }
    return true;
}

// The deepest place of the plane that touches the Gibbs energy at the phase z of density D, over all compositions and
// both density roots; dense says whether a liquid lies there. Not negative at a stable state.
double deepest(const Blend& blend, double T, double p, const Composition& z, double D, bool& dense) {
    Composition f{};
    int ierr = 0;
    Text255 herr;
    FGCTY2(T, D, z, f, ierr, herr);
    double lowest = 0.0;
    dense = false;
    for (int k = 0; k <= 50; ++k) {
        const double w1 = k < 10   ? 1e-6 * std::pow(10.0, 0.4 * k)
                          : k > 40 ? 1.0 - 1e-6 * std::pow(10.0, 0.4 * (50 - k))
                                   : 0.01 + 0.98 * (k - 9) / 32.0;
        Composition w{};
        w[1] = w1;
        w[2] = 1.0 - w1;
        for (const int kph : {1, 2}) {
            double rho = 0.0;
            TPRHO(T, p, w, kph, 0, rho, ierr, herr);
            double slope = 0.0, back = 0.0;
            DPDD(T, rho, w, slope);
            PRESS(T, rho, w, back);
            if (ierr > 0 || slope <= 0.0 || std::fabs(back / p - 1.0) > 1e-3) continue;
            Composition fw{};
            FGCTY2(T, rho, w, fw, ierr, herr);
            if (ierr > 0) continue;
            // between the spinodals the equations have further roots, with fugacities far from those of any gas
            const bool gas = packing(blend, rho, w) < 1.5;
            if (gas && (fw[1] > 1e3 * w[1] * p || fw[2] > 1e3 * w[2] * p || fw[1] < 1e-3 * w[1] * p ||
                        fw[2] < 1e-3 * w[2] * p))
                continue;
            double distance = 0.0;
            for (int i = 1; i <= 2; ++i) distance += w[i] * std::log(fw[i] / f[i]);
            if (distance < lowest) {
                lowest = distance;
                dense = packing(blend, rho, w) > 1.5;
            }
        }
    }
    return lowest;
}

// A saturation state held against the conditions of equilibrium; the words of its mistake, or nothing.
const char* mistakeOf(const Blend& blend, const State& s, int kph, BinaryCount& count) {
    const Composition& parent = kph == 1 ? s.x : s.y;
    double off = disequilibrium(blend, s);
    for (int i = 1; i <= blend.nc; ++i) off = std::max(off, std::fabs(parent[i] - blend.z[i]));
    if (!(off < agreement) || !mechanical(s)) {
        ++count.notEqual;
        return "no equilibrium";
    }
    if (packing(blend, s.rhol, s.x) <= packing(blend, s.rhov, s.y)) {
        ++count.exchanged;
        return "phases exchanged";
    }
    bool dense = false;
    blend.depth = deepest(blend, s.T, s.p, parent, kph == 1 ? s.rhol : s.rhov, dense);
    if (blend.depth < -1e-6) {
        ++(dense ? count.twoLiquids : count.vaporInstead);
        return dense ? "another liquid is stable" : "a vapor is stable instead";
    }
    return nullptr;
}

void binaryFlashes(const Blend& blend, const State& bubble, const State& dew, BinaryCount& count, bool list) {
    const double T = bubble.T;
    if (bubble.p < dew.p * 1.0001) return;
    for (const double share : {0.1, 0.5, 0.9}) {
        State s;
        FlashResult r;
        double t = T;
        s.p = std::exp(share * std::log(bubble.p) + (1.0 - share) * std::log(dew.p));
        // a flash at a pressure takes states above the critical one for a single phase
        if (s.p > 0.98 * blend.pc) continue;
        const auto balanced = [&](const State& a, double q) {
            double off = disequilibrium(blend, a);
            for (int i = 1; i <= blend.nc; ++i)
                off = std::max(off, std::fabs((1.0 - q) * a.x[i] + q * a.y[i] - blend.z[i]));
            return off;
        };
        const auto report = [&](const char* what, const State& a, double q, double off) {
            ++count.flashes;
            const bool wrong = a.ierr <= 0;
            ++(wrong ? count.flashWrong : count.flashErrors);
            if (list || wrong)
                std::printf("  %-16s %5.3f pc  %s%s q %.6f\n", blend.name.c_str(), s.p / blend.pc,
                            wrong ? "WRONG " : "", words(what, T, s.p, a, off).c_str(), q);
        };
        {
            const Clock clock;
            TPFLSH(t, s.p, blend.z, r.D, s.rhol, s.rhov, s.x, s.y, r.q, r.e, r.h, r.s, r.cv, r.cp, r.w, s.ierr, s.herr);
            s.T = t;
            count.time(clock.seconds(), words("TP", T, s.p, s, 0.0));
            const double off = s.ierr > 0 ? 1.0 : r.q > 0.0 && r.q < 1.0 ? balanced(s, r.q) : 2.0;
            if (off > agreement) {
                report("TP", s, r.q, off);
                continue;
            }
            ++count.flashes;
        }
        for (const char letter : {'H', 'S', 'Q'}) {
            State b;
            FlashResult o;
            b.p = s.p;
            const Clock clock;
            if (letter == 'H')
                PHFLSH(s.p, r.h, blend.z, b.T, o.D, b.rhol, b.rhov, b.x, b.y, o.q, o.e, o.s, o.cv, o.cp, o.w, b.ierr,
                       b.herr);
            if (letter == 'S')
                PSFLSH(s.p, r.s, blend.z, b.T, o.D, b.rhol, b.rhov, b.x, b.y, o.q, o.e, o.h, o.cv, o.cp, o.w, b.ierr,
                       b.herr);
            if (letter == 'Q') {
                o.q = r.q;
                PQFLSH(s.p, r.q, blend.z, 1, b.T, o.D, b.rhol, b.rhov, b.x, b.y, o.e, o.h, o.s, o.cv, o.cp, o.w, b.ierr,
                       b.herr);
            }
            const char name[] = {'P', letter, 0};
            count.time(clock.seconds(), words(name, T, s.p, b, 0.0));
            const double off =
                b.ierr > 0 ? 1.0
                           : std::max(std::fabs(b.T / T - 1.0), o.q > 0.0 && o.q < 1.0 ? 0.1 * balanced(b, o.q) : 2.0);
            if (off > 1e-5)
                report(name, b, o.q, off);
            else
                ++count.flashes;
        }
        {
            State b;
            FlashResult o;
            const Clock clock;
            TQFLSH(T, r.q, blend.z, 1, b.p, o.D, b.rhol, b.rhov, b.x, b.y, o.e, o.h, o.s, o.cv, o.cp, o.w, b.ierr,
                   b.herr);
            b.T = T;
            count.time(clock.seconds(), words("TQ", T, s.p, b, 0.0));
            const double off = b.ierr > 0 ? 1.0 : std::fabs(b.p / s.p - 1.0);
            if (off > 1e-4)
                report("TQ", b, r.q, off);
            else
                ++count.flashes;
        }
    }
}

void binary(Blend& blend, int n, BinaryCount& count, bool list) {
    State before[3];
    for (int k = 0; k < n; ++k) {
        const double T = 1.001 * blend.Tmin + (0.99 * blend.Tc - 1.001 * blend.Tmin) * k / (n - 1);
        State found[3];
        for (const int kph : {1, 2}) {
            const char* what = kph == 1 ? "SATT bubble" : "SATT dew";
            const Clock clock;
            State s = bubbleOrDew(blend, T, kph);
            ++count.states;
            count.time(clock.seconds(), words(what, T, s.p, s, 0.0));
            const auto tell = [&](const char* mistake, const State& of, double deviation) {
                if (list || std::strcmp(mistake, "another liquid is stable") != 0)
                    std::printf("  %-16s %5.3f Tc %7.3f pc  %s %.1e: %s\n", blend.name.c_str(), T / blend.Tc,
                                of.p / blend.pc, mistake, blend.depth, words(what, T, s.p, of, deviation).c_str());
            };
            if (s.ierr > 0) {
                ++count.errors;
                tell("error", s, 1.0);
                continue;
            }
            if (const char* mistake = mistakeOf(blend, s, kph, count)) {
                tell(mistake, s, disequilibrium(blend, s));
                if (std::strcmp(mistake, "another liquid is stable") != 0) continue;
            } else {
                found[kph] = s;
                found[0].ierr += kph;
            }
            // the logarithm of pressure runs nearly straight over 1/T
            if (before[kph].T > 0.0 && before[kph].T > 0.9 * T &&
                std::fabs(std::log(s.p / before[kph].p)) > 40.0 * (1.0 - before[kph].T / T)) {
                ++count.jumps;
                tell("jump", s, s.p / before[kph].p - 1.0);
            }
            before[kph] = s;
            what = kph == 1 ? "SATP bubble" : "SATP dew";
            const Clock again;
            State back = saturationAtPressure(blend, s.p, kph);
            back.p = s.p;
            ++count.states;
            count.time(again.seconds(), words(what, T, s.p, back, 0.0));
            if (back.ierr > 0) {
                ++count.errors;
                tell("error", back, 1.0);
            } else if (std::fabs(back.T / T - 1.0) > agreement) {
                // a line with a highest pressure passes every pressure twice
                const char* mistake = mistakeOf(blend, back, kph, count);
                if (mistake == nullptr) ++count.otherRoot;
                if (mistake != nullptr) ++count.roundTrip;
                tell(mistake == nullptr ? "other root" : mistake, back, back.T / T - 1.0);
            }
        }
        if (found[0].ierr == 3) binaryFlashes(blend, found[1], found[2], count, list);
    }
}

// Fluids by the CAS numbers of the pairs in the file of mixing parameters.
std::vector<std::pair<std::string, std::string>> allPairs() {
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
    std::string line;
    while (std::getline(file, line)) {
        const std::size_t slash = line.find('/'), blank = line.find(' ');
        if (slash >= blank) continue;
        const auto first = fluids.find(line.substr(0, slash));
        const auto second = fluids.find(line.substr(slash + 1, blank - slash - 1));
        if (first != fluids.end() && second != fluids.end()) pairs.emplace_back(first->second, second->second);
    }
    return pairs;
}

int binaries(const Options& options) {
    BinaryCount total;
    int pairs = 0;
    for (const auto& [first, second] : allPairs()) {
        if (!options.blends.empty() &&
            std::find(options.blends.begin(), options.blends.end(), first + "/" + second) == options.blends.end())
            continue;
        FileNames files{};
        files[1].assign(first + ".FLD");
        files[2].assign(second + ".FLD");
        int ierr = 0;
        Text255 herr;
        Text3 reference("DEF");
        SETUP(2, files, "HMX.BNC", reference, ierr, herr);
        if (ierr > 0) continue;  // no parameters for the pair
        ++pairs;
        for (const double x1 : {0.1, 0.5, 0.9}) {
            Blend blend;
            blend.name = first + "/" + second + " " + std::to_string(x1).substr(0, 3);
            blend.nc = 2;
            blend.z[1] = x1;
            blend.z[2] = 1.0 - x1;
            CRITP(blend.z, blend.Tc, blend.pc, blend.Dc, ierr, herr);
            double Tmax, Dmax, pmax;
            LIMITS("EOS", blend.z, blend.Tmin, Tmax, Dmax, pmax);
            binary(blend, options.binaries, total, options.list);
            std::fflush(stdout);
        }
    }
    std::printf(
        "%d pairs: %ld saturation states: %ld errors, %ld no equilibrium, %ld phases exchanged, %ld where a vapor is "
        "stable instead, %ld wrong after the way to p and back, %ld other roots, %ld jumps, %ld where another liquid "
        "is stable\n",
        pairs, total.states, total.errors, total.notEqual, total.exchanged, total.vaporInstead, total.roundTrip,
        total.otherRoot, total.jumps, total.twoLiquids);
    std::printf("%ld flashes between stable lines: %ld errors, %ld wrong\n", total.flashes, total.flashErrors,
                total.flashWrong);
    std::printf("slowest %.1f ms: %s\n", 1e3 * total.slowest, total.slowestState.c_str());
    return total.notEqual + total.exchanged + total.vaporInstead + total.flashWrong > 0 ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--list") == 0)
            options.list = true;
        else if (std::strcmp(argv[i], "--points") == 0 && i + 1 < argc)
            options.points = std::max(2, std::atoi(argv[++i]));
        else if (std::strcmp(argv[i], "--flash") == 0 && i + 1 < argc)
            options.flash = std::max(1, std::atoi(argv[++i]));
        else if (std::strcmp(argv[i], "--binaries") == 0 && i + 1 < argc)
            options.binaries = std::max(2, std::atoi(argv[++i]));
        else
            options.blends.emplace_back(argv[i]);
    }
    SETPATH(FRIGANA_DATA);
    if (options.binaries > 0) return binaries(options);
    if (options.blends.empty()) options.blends = allBlends();
    std::printf(
        "blend   Tmin K  Tc K    saturation states, failures (near pc)   flashes, failures (near pc)   slowest ms  "
        "Newton calls, by substitution   ms of a flash by entropy\n");
    Count saturationTotal, flashTotal;
    long calls = 0, substituted = 0;
    for (const std::string& name : options.blends) {
        Blend blend;
        if (!setUp(name, blend)) return 1;
        Report report{options, blend, {}, {}};
        saturationCounts.calls = saturationCounts.substitutions = 0;
        std::vector<State> bubble, dew;
        saturation(blend, report, bubble, dew);
        flashes(blend, report, bubble, dew);
        std::printf("%-6s %7.2f %7.2f %9ld %6ld (%ld) %18ld %6ld (%ld) %16.2f %12ld %8ld %8.2f\n", name.c_str(),
                    blend.Tmin, blend.Tc, report.saturation.states, report.saturation.failures,
                    report.saturation.nearCritical, report.flash.states, report.flash.failures,
                    report.flash.nearCritical, 1e3 * std::max(report.saturation.slowest, report.flash.slowest),
                    saturationCounts.calls, saturationCounts.substitutions,
                    1e3 * report.byEntropySeconds / static_cast<double>(std::max(1L, report.byEntropy)));
        std::fflush(stdout);
        for (const auto& [total, part] :
             {std::pair{&saturationTotal, &report.saturation}, {&flashTotal, &report.flash}}) {
            total->states += part->states;
            total->failures += part->failures;
            total->nearCritical += part->nearCritical;
            total->twoLiquids += part->twoLiquids;
            total->otherState += part->otherState;
            if (part->slowest > total->slowest) {
                total->slowest = part->slowest;
                total->slowestState = name + " " + part->slowestState;
            }
        }
        calls += saturationCounts.calls;
        substituted += saturationCounts.substitutions;
    }
    for (const auto& [what, total] : {std::pair{"saturation", saturationTotal}, {"flashes", flashTotal}})
        std::printf(
            "%-10s %ld states, %ld failures, %ld more above 0.98 pc; where the model has two liquids %ld of another "
            "equilibrium, %ld failures\n           slowest %.1f ms: %s\n",
            what, total.states, total.failures, total.nearCritical, total.otherState, total.twoLiquids,
            1e3 * total.slowest, total.slowestState.substr(0, 120).c_str());
    std::printf("Newton method: %ld calls, %ld of them (%.3f %%) went on by substitution\n", calls, substituted,
                calls > 0 ? 100.0 * static_cast<double>(substituted) / static_cast<double>(calls) : 0.0);
    return saturationTotal.failures + flashTotal.failures > 0 ? 1 : 0;
}
