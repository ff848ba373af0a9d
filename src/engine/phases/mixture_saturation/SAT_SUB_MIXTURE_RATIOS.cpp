// What stands behind the substitutions of models without composition derivatives. A strongly non-ideal liquid makes
// their steps overshoot: its ratios K fall with the fraction that they raise.
//   Symbols: K = y/x the ratios, q the share of the vapor, f the fugacities
#include "SAT_SUB_MIXTURE_RATIOS.h"

#include <algorithm>
#include <cmath>

#include "ModelTags.h"
#include "PROP_SUB_FUGACITY.h"
#include "PhaseCheck.h"
#include "RootBracket.h"
#include "SAT_SUB_MIXTURE.h"
#include "SaturationBricks.h"
#include "TPRHO.h"

namespace frigana {

namespace {

// The share of the vapor that closes the material balance at given ratios, by Newton's method inside a bracket: the
// sum falls steadily with q. False if only one phase closes it.
//   Source  H. H. Rachford, J. D. Rice, J. Pet. Technol. 4 (1952) 19
bool vaporShare(const Composition& z, const Composition& K, double& q) {
    const auto balance = [&](double at, double& slope) {
        double sum = slope = 0.0;
        for (int i = 1; i <= modelTags.NC; ++i) {
            if (z[i] <= 0.0) continue;
            const double part = (K[i] - 1.0) / (1.0 + at * (K[i] - 1.0));
            sum += z[i] * part;
            slope -= z[i] * part * part;
        }
        return sum;
    };
    double slope = 0.0, lower = 0.0, upper = 1.0;
    if (!(balance(lower, slope) > 0.0) || !(balance(upper, slope) < 0.0)) return false;
    if (!(q > 0.0 && q < 1.0)) q = 0.5;
    for (int step = 1; step <= 100; ++step) {
        const double sum = balance(q, slope);
        (sum > 0.0 ? lower : upper) = q;
        double next = q - sum / slope;
        if (!(next > lower && next < upper)) next = 0.5 * (lower + upper);
        const double change = std::fabs(next - q);
        q = next;
        if (change < 1e-15) break;
    }
    return true;
}

// Both phases of the balance at given ratios; false if it has only one.
bool splitByRatios(const Composition& z, const Composition& K, PhasePair& pair) {
    if (!vaporShare(z, K, pair.q)) return false;
    for (int i = 1; i <= modelTags.NC; ++i) {
        pair.x[i] = z[i] > 0.0 ? z[i] / (1.0 + pair.q * (K[i] - 1.0)) : 0.0;
        pair.y[i] = K[i] * pair.x[i];
    }
    normalize(pair.x);
    normalize(pair.y);
    return true;
}

// The logarithms of the fugacities of the liquid over those of the vapor, and the largest of them; negative if a
// density or a fugacity is none.
double differences(const Composition& z, PhasePair& pair, Composition& lnRatio) {
    int code = 0;
    Text255 text;
    Composition fl, fv;
    TPRHO(pair.T, pair.p, pair.x, liquidPhase, pair.Dl > 0.0 ? 1 : 0, pair.Dl, code, text);
    if (code > 0) return -1.0;
    FGCTY2(pair.T, pair.Dl, pair.x, fl, code, text);
    if (code > 0) return -1.0;
    TPRHO(pair.T, pair.p, pair.y, vaporPhase, pair.Dv > 0.0 ? 1 : 0, pair.Dv, code, text);
    if (code > 0) return -1.0;
    FGCTY2(pair.T, pair.Dv, pair.y, fv, code, text);
    if (code > 0) return -1.0;
    double largest = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        lnRatio[i] = 0.0;
        if (z[i] <= 0.0) continue;
        if (!(fl[i] > 0.0 && fv[i] > 0.0) || fl[i] == fugacityOutOfRange || fv[i] == fugacityOutOfRange) return -1.0;
        lnRatio[i] = std::log(fl[i] / fv[i]);
        largest = std::max(largest, std::fabs(lnRatio[i]));
    }
    return largest;
}

// Fugacities agree to `wanted` as a rule; their differences leave some noise, and with it `enough`.
constexpr double wanted = 1e-11, enough = 1e-8;
constexpr double longestStep = 1.0;  // in the logarithm of a fraction

// The part of the next step that would have ended the last one: less where the residual has turned, more where it lags.
//   Source  B. M. Irons, R. C. Tuck, Int. J. Numer. Meth. Eng. 1 (1969) 275
class StepPart {
  public:
    double next(const Composition& residual, double largest) {
        constexpr double least = 0.05, most = 4.0;
        double along = 0.0, square = 0.0;
        for (int i = 1; i <= modelTags.NC; ++i) {
            const double change = residual[i] - before[i];
            along += before[i] * change;
            square += change * change;
        }
        if (!first && square > 0.0) part = std::clamp(-part * along / square, least, most);
        if (largest > 0.0) part = std::min(part, longestStep / largest);
        first = false;
        before = residual;
        return part;
    }
    void shorten() { part *= 0.5; }

  private:
    bool first = true;
    double part = 1.0;
    Composition before{};
};

// The best pair so far; true when there is nothing to be gained by a further step.
class Closest {
  public:
    bool arrived(const PhasePair& now, double largest) {
        if (largest < best) {
            best = largest;
            pair = now;
            return best < wanted;
        }
        return good();
    }
    bool good() const { return best < enough; }
    PhasePair pair;

  private:
    double best = HUGE_VAL;
};

}  // namespace

bool exchangeByRatios(const Composition& z, PhasePair& pair) {
    const SilentMessages quiet;
    const int nc = modelTags.NC;
    Composition lnK{}, K{};
    for (int i = 1; i <= nc; ++i) {
        if (z[i] <= 0.0) continue;
        if (!(pair.x[i] > 0.0 && pair.y[i] > 0.0)) return false;
        lnK[i] = std::log(pair.y[i] / pair.x[i]);
    }
    StepPart part;
    Closest closest;
    for (int pass = 1; pass <= 200; ++pass) {
        Composition step{};
        const double largest = differences(z, pair, step);
        if (largest < 0.0) return false;
        if (closest.arrived(pair, largest)) break;

        // a step that leaves the two-phase region is halved
        double share = part.next(step, largest);
        bool split = false;
        for (int halving = 0; halving <= 20 && !split; ++halving) {
            for (int i = 1; i <= nc; ++i) K[i] = z[i] > 0.0 ? std::exp(lnK[i] + share * step[i]) : 0.0;
            split = splitByRatios(z, K, pair);
            if (split) break;
            share *= 0.5;
            part.shorten();
        }
        if (!split) return false;
        for (int i = 1; i <= nc; ++i) lnK[i] += share * step[i];
    }
    pair = closest.pair;
    return closest.good();
}

bool lineByParts(PhasePair& pair, const Composition& z, int kph) {
    const SilentMessages quiet;
    const int nc = modelTags.NC;
    const bool bubble = kph == 1;
    int code = 0;
    Text255 text;
    pair.x = pair.y = z;
    pair.Dl = pair.Dv = 0.0;
    Composition& incipient = bubble ? pair.y : pair.x;
    SATTEST(pair.T, z, kph, pair.p, incipient, code, text);
    StepPart part;
    Closest closest;
    for (int pass = 1; pass <= 200; ++pass) {
        Composition lnRatio{};
        const double largest = differences(z, pair, lnRatio);
        if (largest < 0.0) return false;
        if (closest.arrived(pair, largest)) break;

        double sum = 0.0, furthest = 0.0;
        for (int i = 1; i <= nc; ++i)
            if (z[i] > 0.0) sum += incipient[i] * std::exp(bubble ? lnRatio[i] : -lnRatio[i]);
        Composition step{};
        for (int i = 1; i <= nc; ++i) {
            if (z[i] <= 0.0) continue;
            step[i] = (bubble ? lnRatio[i] : -lnRatio[i]) - std::log(sum);
            furthest = std::max(furthest, std::fabs(step[i]));
        }
        const double share = part.next(step, furthest);
        for (int i = 1; i <= nc; ++i) incipient[i] *= std::exp(share * step[i]);
        normalize(incipient);
        const double factor = std::clamp(sum, 0.5, 2.0);
        pair.p = bubble ? pair.p * factor : pair.p / factor;
    }
    pair = closest.pair;
    return closest.good();
}

bool lineByTemperatures(PhasePair& pair, const Composition& z, int kph, const CriticalPoint& critical) {
    constexpr double pressureWanted = 1e-10, pressureEnough = 1e-7;  // of its logarithm
    constexpr double widest = 0.1;                                   // [T] longest step
    const double p = pair.p;
    const SilentMessages quiet;
    int code = 0;
    Text255 text;
    PhasePair at = pair;
    const auto lnRatio = [&](double T) {
        at.T = T;
        if (!lineByParts(at, z, kph)) {
            mixtureAtTemperature(T, z, kph, critical, false, at.p, at.Dl, at.Dv, at.x, at.y, code, text);
            if (code > 0) return static_cast<double>(NAN);
        }
        return std::log(at.p / p);
    };
    double T = pair.T, f = lnRatio(T);
    if (!std::isfinite(f)) return false;
    // the logarithm of the pressure over 1/T is nearly straight; ten times the gas's own slope to start with
    double TBefore = T, fBefore = f;
    T = T / (1.0 + f / 10.0);
    RootBracket bracket;
    bracket.takeLast(TBefore, fBefore);
    for (int pass = 1; pass <= 40; ++pass) {
        T = limitedStep(TBefore, T, widest);
        f = lnRatio(T);
        if (!std::isfinite(f)) return false;
        if (std::fabs(f) < pressureWanted || (std::fabs(f) < pressureEnough && std::fabs(f) >= std::fabs(fBefore))) {
            at.p = p;
            pair = at;
            return true;
        }
        bracket.takeLast(T, f);
        double next = f == fBefore ? T : 1.0 / secantPoint(1.0 / TBefore, fBefore, 1.0 / T, f);
        if (bracket.closed() && !(next > bracket.lower() && next < bracket.upper())) next = bracket.falsePosition();
        TBefore = T;
        fBefore = f;
        T = next;
    }
    return false;
}

}  // namespace frigana
