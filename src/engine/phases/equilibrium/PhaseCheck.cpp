#include "PhaseCheck.h"

#include <algorithm>
#include <cmath>

#include "FluidConstants.h"
#include "ModelTags.h"
#include "PHIDERV.h"
#include "PROP_SUB.h"
#include "PROP_SUB_FUGACITY.h"
#include "SaturationBricks.h"
#include "TPRHO.h"

namespace frigana {

namespace {

constexpr double trace = 1e-12;     // fraction below which the fugacity is left out of the test
constexpr double samePhase = 1e-4;  // in the fractions, and relative in the densities
constexpr double stiffness = 1e-3;  // share of rho dp/drho that stands for the pressure where a liquid hardly has one

}  // namespace

double packing(double rho, const Composition& x) {
    double volume = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i)
        if (fluidConstants.DCRIT[i] > 0.0) volume += x[i] / fluidConstants.DCRIT[i];
    return rho * volume;
}

bool phasesInOrder(double rhol, const Composition& xliq, double rhov, const Composition& xvap) {
    return packing(rhol, xliq) > packing(rhov, xvap);
}

bool vaporIsNone(double T, double p, double rhov, const Composition& xvap, double pc) {
    constexpr double densestVapor = 1.5, thinVapor = 0.25;
    constexpr int places = 20;
    const double packed = packing(rhov, xvap);
    if (p < pc && packed > densestVapor) return true;
    if (packed < thinVapor) return false;
    for (int k = 1; k < places; ++k) {
        double slope = 0.0;
        DPDD(T, rhov * (thinVapor / packed + (1.0 - thinVapor / packed) * k / places), xvap, slope);
        if (slope < 0.0) return true;
    }
    return false;
}

namespace {

// The least pivot of the matrix of the second derivatives of the Gibbs energy, relative to that of an ideal mixture, or
// the first one that is not positive or no number; 1 where there is none.
double leastPivot(double T, double rho, const Composition& x) {
    Composition dalpha{}, dnalpha{};
    int ierr = 0;
    Text255 herr;
    PHIDERV(2, T, rho, x, dalpha, dnalpha, ierr, herr);
    double least = 1.0;
    if (ierr > 0) return least;
    const CompositionDerivatives& c = compositionDerivatives;
    // the last fraction that is not zero makes up for the others
    int count = 0, present[ncmax];
    for (int i = 1; i <= modelTags.NC; ++i)
        if (x[i] > trace) present[count++] = i;
    if (count < 2) return least;
    const int last = present[--count];
    const auto derivative = [&](int of, int by) {
        // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): c is the record that PHIDERV has filled
        return c.DPHIDXJ[by][of] - c.DLNPHIIDXJ[last][of] - (of == last ? 1.0 / x[last] : 0.0);
    };
    double second[ncmax][ncmax];
    for (int i = 0; i < count; ++i)
        for (int j = 0; j < count; ++j)
            second[i][j] = derivative(present[j], present[i]) - derivative(last, present[i]);
    for (int k = 0; k < count; ++k) {
        const double pivot = second[k][k] / (1.0 / x[present[k]] + 1.0 / x[last]);
        if (!(pivot > 0.0)) return pivot;
        least = std::min(least, pivot);
        for (int i = k + 1; i < count; ++i) {
            const double factor = second[i][k] / second[k][k];
            for (int j = k; j < count; ++j) second[i][j] -= factor * second[k][j];
        }
    }
    return least;
}

}  // namespace

// The pivots of a positive definite matrix are positive.
bool fallsApart(double T, double rho, const Composition& x) {
    return !(leastPivot(T, rho, x) > 0.0);
}

bool hardlyFallsApart(double T, double rho, const Composition& x) {
    constexpr double hardly = 1e-2;
    return std::abs(leastPivot(T, rho, x)) < hardly;
}

bool nearbyPhasesFallApart(double T, double rhol, const Composition& xliq, double rhov, const Composition& xvap) {
    constexpr double nearby = 1.01;  // ratio of the packings
    if (packing(rhol, xliq) > nearby * packing(rhov, xvap)) return false;
    return fallsApart(T, rhol, xliq) || fallsApart(T, rhov, xvap);
}

bool isLowerDewPoint(double T, double rhol, const Composition& xliq, double rhov, const Composition& xvap) {
    Composition dalpha{}, dnalpha{};
    int ierr = 0;
    Text255 herr;
    double byP = 0.0;
    for (const bool vapor : {false, true}) {
        PHIDERV(2, T, vapor ? rhov : rhol, vapor ? xvap : xliq, dalpha, dnalpha, ierr, herr);
        if (ierr > 0) return true;
        for (int i = 1; i <= modelTags.NC; ++i) {
            if (!(xliq[i] > 0.0)) continue;
            byP += (vapor ? xliq[i] : -xliq[i]) * compositionDerivatives.DPHIDP[i];
        }
    }
    return byP > 0.0;
}

namespace {

constexpr int enoughExchanges = 50;

// Exchanges that come close to their end by steps in one direction, each the same part of the last: the rest of the way
// at once.
//   Source  C. M. Crowe, M. Nishio, AIChE J. 21 (1975) 528
class Extrapolation {
  public:
    // After an exchange that has led from one composition to another.
    void apply(const Composition& before, Composition& w) {
        constexpr int everyOf = 4;
        constexpr double slowest = 0.998, farthest = 0.5;  // ratio of the steps; in the logarithm of a fraction
        double product = 0.0, square = 0.0, longest = 0.0;
        for (int i = 1; i <= modelTags.NC; ++i) {
            if (!(before[i] > 0.0 && w[i] > 0.0)) continue;
            const double step = std::log(w[i] / before[i]);
            product += step * step_[i];
            square += step_[i] * step_[i];
            longest = std::max(longest, std::fabs(step));
            step_[i] = step;
        }
        if (++count_ % everyOf != 0 || !(product > 0.0 && longest > 0.0)) return;
        const double ratio = std::min(product / square, slowest);
        const double rest = std::min(ratio / (1.0 - ratio), farthest / longest);
        for (int i = 1; i <= modelTags.NC; ++i) w[i] *= std::exp(rest * step_[i]);
    }

  private:
    int count_ = 0;
    Composition step_{};
};

// The exchanges of one trial phase; true if it lies below the plane, or is lost.
bool belowTangent(double T, double p, const Composition& z, const Composition& feed, bool vapor, Composition w,
                  int mostExchanges, OtherPhase& found) {
    constexpr double sameComposition = 1e-3;
    // more than the rounding, and more still where only some of the exchanges are made
    const bool thorough = mostExchanges >= enoughExchanges;
    const double certain = thorough ? 1e-10 : 1e-7;
    Extrapolation extrapolation;
    int ierr = 0;
    Text255 herr;
    double trial = 0.0;
    for (int pass = 1; pass <= mostExchanges; ++pass) {
        normalize(w);
        TPRHO(T, p, w, vapor ? vaporPhase : liquidPhase, pass == 1 ? 0 : 1, trial, ierr, herr);
        if (ierr > 0) TPRHO(T, p, w, vapor ? liquidPhase : vaporPhase, 0, trial, ierr, herr);
        if (ierr > 0) return true;
        Composition f{};
        FGCTY2(T, trial, w, f, ierr, herr);
        if (ierr > 0) return true;
        found = {vapor, trial, w};
        // tangent plane distance over RT of the present composition, and the next one
        double plane = 0.0, distance = 0.0, sum = 0.0;
        for (int i = 1; i <= modelTags.NC; ++i) {
            if (!(z[i] > 0.0 && w[i] > 0.0 && f[i] > 0.0 && feed[i] > 0.0)) continue;
            plane += w[i] * std::log(f[i] / feed[i]);
            distance = std::max(distance, std::fabs(std::log(w[i] / z[i])));
            w[i] *= feed[i] / f[i];
            sum += w[i];
        }
        if (plane < -certain) return true;
        if (!(sum > 0.0) || !std::isfinite(sum)) return true;
        if (distance < sameComposition) break;
        if (thorough) extrapolation.apply(found.x, w);
    }
    found.rho = 0.0;
    return false;
}

// Ratio of a component's fractions in vapor and liquid.
double estimatedRatio(int i, double T, double p) {
    return fluidConstants.PCRIT[i] / p *
           std::exp(5.373 * (fluidConstants.ACCEN[i] + 1.0) * (1.0 - fluidConstants.TCRIT[i] / T));
}

// The vapor beside a liquid, were it an ideal gas of the liquid's fugacities; true if it is far from the estimated one,
// as beside liquids whose components hardly mix.
bool farFromEstimate(double T, double p, const Composition& z, const Composition& fugacities, Composition& gas) {
    constexpr double far = 3.0;
    double least = 0.0, largest = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (!(z[i] > 0.0)) continue;
        gas[i] = fugacities[i] / p;
        const double ratio = gas[i] / (z[i] * estimatedRatio(i, T, p));
        largest = std::max(largest, ratio);
        least = least > 0.0 ? std::min(least, ratio) : ratio;
    }
    return largest > far * least;
}

}  // namespace

bool unstableFeed(double T, double p, const Composition& z, int mostExchanges, OtherPhase (&other)[2]) {
    int ierr = 0;
    Text255 herr;
    double rho = 0.0;
    TPRHO(T, p, z, vaporPhase, 0, rho, ierr, herr);
    if (ierr > 0) TPRHO(T, p, z, liquidPhase, 0, rho, ierr, herr);
    if (ierr > 0) {
        other[0].rho = 0.0;
        return true;
    }
    return unstableState(T, p, rho, z, mostExchanges, other);
}

bool unstableState(double T, double p, double rho, const Composition& z, int mostExchanges, OtherPhase (&other)[2]) {
    const OtherPhase given[2] = {other[0], other[1]};
    OtherPhase& found = other[0];
    found.rho = 0.0;
    int ierr = 0;
    Text255 herr;
    double slope = 0.0;
    DPDD(T, rho, z, slope);
    if (!(p > 0.0 && slope > 0.0)) return true;
    Composition feed{};
    FGCTY2(T, rho, z, feed, ierr, herr);
    if (ierr > 0) return true;
    for (const OtherPhase& trial : given)
        if (trial.rho > 0.0 && belowTangent(T, p, z, feed, trial.vapor, trial.x, mostExchanges, found)) return true;
    for (const bool vapor : {false, true}) {
        Composition w{};
        for (int i = 1; i <= modelTags.NC; ++i) {
            const double K = estimatedRatio(i, T, p);
            w[i] = vapor ? z[i] * K : z[i] / K;
        }
        if (belowTangent(T, p, z, feed, vapor, w, mostExchanges, found)) return true;
    }
    Composition gas{};
    if (packing(rho, z) > 1.0 && farFromEstimate(T, p, z, feed, gas) &&
        belowTangent(T, p, z, feed, true, gas, mostExchanges, found))
        return true;
    found.rho = 0.0;
    return fallsApart(T, rho, z);
}

bool samePhaseTwice(double rhol, const Composition& xliq, double rhov, const Composition& xvap) {
    double farthest = std::fabs(rhol - rhov) / rhol;
    for (int i = 1; i <= modelTags.NC; ++i) farthest = std::max(farthest, std::fabs(xliq[i] - xvap[i]));
    return farthest < samePhase;
}

void closeBalance(const Composition& z, double q, Composition& xliq, Composition& xvap) {
    constexpr double smallestChange = 1e-6;  // relative; more is no rounding
    if (!(q > 0.0 && q < 1.0)) return;
    const bool inVapor = q >= 0.5;
    for (int i = 1; i <= modelTags.NC; ++i) {
        double& fraction = inVapor ? xvap[i] : xliq[i];
        const double closed = inVapor ? (z[i] - (1.0 - q) * xliq[i]) / q : (z[i] - q * xvap[i]) / (1.0 - q);
        if (std::fabs(closed - fraction) < smallestChange * fraction) fraction = closed;
    }
}

namespace {

// Fugacities of a phase; those of traces in proportion from a fraction that is seen.
bool fugacitiesOf(double T, double rho, const Composition& x, Composition& f) {
    constexpr double seen = 10.0 * trace;
    Composition seenX = x;
    for (int i = 1; i <= modelTags.NC; ++i)
        if (x[i] > 0.0) seenX[i] = std::max(x[i], seen);
    int ierr = 0;
    Text255 herr;
    FGCTY2(T, rho, seenX, f, ierr, herr);
    for (int i = 1; i <= modelTags.NC; ++i)
        if (x[i] > 0.0) f[i] *= x[i] / seenX[i];
    return ierr <= 0;
}

}  // namespace

bool phasesInEquilibrium(double T, double p, double rhol, const Composition& xliq, double rhov, const Composition& xvap,
                         double tolerance) {
    if (!(rhol > 0.0 && rhov > 0.0 && p > 0.0 && T > 0.0) || !std::isfinite(rhol + rhov + p + T)) return false;
    if (!phasesInOrder(rhol, xliq, rhov, xvap)) return false;
    if (samePhaseTwice(rhol, xliq, rhov, xvap)) return false;

    for (const bool vapor : {false, true}) {
        const double rho = vapor ? rhov : rhol;
        const Composition& x = vapor ? xvap : xliq;
        double at = 0.0, slope = 0.0;
        PRESS(T, rho, x, at);
        DPDD(T, rho, x, slope);
        if (slope < 0.0 || !(std::fabs(at - p) < 10.0 * tolerance * std::max(p, stiffness * rho * slope))) return false;
    }
    // what is a trace in one phase and none in the other is seen where it is far off
    constexpr double farOff = 10.0;
    Composition fl{}, fv{};
    if (!fugacitiesOf(T, rhol, xliq, fl) || !fugacitiesOf(T, rhov, xvap, fv)) return false;
    for (int i = 1; i <= modelTags.NC; ++i) {
        const bool inBoth = xliq[i] > trace && xvap[i] > trace, inOne = xliq[i] > trace || xvap[i] > trace;
        if (inBoth && !(std::fabs(fl[i] / fv[i] - 1.0) < tolerance)) return false;
        if (inOne && xliq[i] > 0.0 && xvap[i] > 0.0 && !(fl[i] < farOff * fv[i] && fv[i] < farOff * fl[i]))
            return false;
    }
    return true;
}

bool isEquilibrium(const PhasePair& s, double pc, double tolerance) {
    if (tolerance == solvedEquilibrium) {
        if (!(s.Dl > 0.0 && s.Dv > 0.0 && s.p > 0.0) || !std::isfinite(s.T) || !std::isfinite(s.p) ||
            samePhaseTwice(s.Dl, s.x, s.Dv, s.y) || !phasesInOrder(s.Dl, s.x, s.Dv, s.y))
            return false;
    } else if (!phasesInEquilibrium(s.T, s.p, s.Dl, s.x, s.Dv, s.y, tolerance)) {
        return false;
    }
    return !vaporIsNone(s.T, s.p, s.Dv, s.y, pc) && !nearbyPhasesFallApart(s.T, s.Dl, s.x, s.Dv, s.y);
}

}  // namespace frigana
