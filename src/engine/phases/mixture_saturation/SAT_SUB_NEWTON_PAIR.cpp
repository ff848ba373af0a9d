// Two phases of a mixture by two conditions.
//   Symbols: K = y/x the ratios, q the share of the vapor, f the fugacities, V and L the phases
#include <algorithm>
#include <cmath>

#include "CORE_PR.h"
#include "CriticalPoint.h"
#include "DISPATCH.h"
#include "FluidConstants.h"
#include "LineProperty.h"
#include "ModelTags.h"
#include "PHIDERV.h"
#include "PROP_SUB.h"
#include "PhaseCheck.h"
#include "ReferenceState.h"
#include "SAT_SUB_NEWTON.h"
#include "SaturationExtrema.h"
#include "SaturationSpline.h"
#include "SilentMessages.h"
#include "TPRHO.h"
#include "UTILITY_NUMERICS.h"

namespace frigana {

namespace {

constexpr int unknownsBesideRatios = 4;  // ln T, ln of both densities, q
constexpr int mostUnknowns = ncmax + unknownsBesideRatios;

// The components of a fraction above 0.
struct Members {
    int count = 0;
    int number[ncmax];

    explicit Members(const Composition& z) {
        for (int i = 1; i <= modelTags.NC; ++i)
            if (z[i] > 0.0) number[count++] = i;
    }
};

// A property of a phase, and what it does with the logarithms of temperature and density, and with the amounts of the
// members at constant temperature and density.
struct PropertySlopes {
    double value, inT, inDensity;
    double inAmounts[ncmax];
};

// One phase: pressure, ln f/x of the members, the properties of both conditions.
struct PhaseSlopes {
    PropertySlopes pressure;
    PropertySlopes lnFugacity[ncmax];
    PropertySlopes bulk[2];
};

// Molar enthalpy and entropy have partial ones at constant pressure,
//   h(j) = h0(j) - R T^2 dln f(j)/dT,  s(j) = s0(j) - R ln f(j) - R T dln f(j)/dT
// and n dm/dn(j) = m(j) - m; at constant density pressure changes too.
void bulkSlopes(char letter, double T, double rho, const Composition& x, const Members& members,
                const PropertySlopes& pressure, double dpdt, double dpdd, PropertySlopes& m) {
    const double R = fluidConstants.R;
    const CompositionDerivatives& c = compositionDerivatives;
    m = {};
    if (letter == 'D') {
        m.value = 1.0 / rho;
        m.inDensity = -1.0 / rho;
        return;
    }
    constexpr double unitDensity = 1.0;
    double cv = 0.0, cp = 0.0;
    CVCP(T, rho, x, cv, cp);
    m.value = propertyByLetter(letter, T, rho, x);
    const bool entropy = letter == 'S';
    const double enthalpy = letter == 'E' ? m.value + pressure.value / rho : m.value;
    const double stretch = dpdt / (dpdd * rho * rho);  // (dv/dT) at constant pressure
    // of enthalpy or entropy with pressure at constant temperature
    const double inPressure = entropy ? -stretch : 1.0 / rho - T * stretch;
    for (int k = 0; k < members.count; ++k) {
        const int j = members.number[k];
        const double ideal = PHI0K(j, 1, 0, T, unitDensity);
        double partial = 0.0;
        if (entropy)
            partial = R * (ideal - PHI0K(j, 0, 0, T, unitDensity)) - referenceState.SREF[j] -
                      R * (c.XLNFI[j] - std::log(unitDensity * R * T)) - R * T * c.DPHIDT[j];
        else
            partial = R * T * (ideal + 1.0) - referenceState.HREF[j] - R * T * T * c.DPHIDT[j];
        m.inAmounts[k] = partial - (entropy ? m.value : enthalpy) + inPressure * pressure.inAmounts[k];
        if (letter == 'E') m.inAmounts[k] -= pressure.inAmounts[k] / rho;
    }
    switch (letter) {
        case 'S':
            m.inT = cv;
            m.inDensity = -dpdt / rho;
            break;
        case 'E':
            m.inT = T * cv;
            m.inDensity = (pressure.value - T * dpdt) / rho;
            break;
        default:
            m.inT = T * (cv + dpdt / rho);
            m.inDensity = dpdd - T * dpdt / rho;
    }
}

// False where the equation has no such phase.
bool evaluate(const Condition (&conditions)[2], double T, double rho, const Composition& x, const Members& members,
              PhaseSlopes& phase) {
    Composition dalpha, dnalpha;
    int ierr = 0;
    Text255 herr;
    PHIDERV(2, T, rho, x, dalpha, dnalpha, ierr, herr);
    if (ierr > 0) return false;
    const CompositionDerivatives& c = compositionDerivatives;
    const double R = fluidConstants.R, dpdt = c.dPdT, dpdd = c.dPdD;
    if (!(dpdd > 0.0)) return false;
    PropertySlopes& p = phase.pressure;
    p.value = c.p;
    p.inT = T * dpdt;
    p.inDensity = rho * dpdd;
    double mean = 0.0;
    for (int k = 0; k < members.count; ++k) mean += x[members.number[k]] * c.DPDXI[members.number[k]];
    for (int k = 0; k < members.count; ++k) p.inAmounts[k] = c.DPDXI[members.number[k]] - mean;
    const double lnUnit = std::log(rho * R * T);
    for (int k = 0; k < members.count; ++k) {
        const int i = members.number[k];
        PropertySlopes& f = phase.lnFugacity[k];
        f.value = lnUnit + dnalpha[i];
        f.inT = T * c.DLNFINIDT[i];
        f.inDensity = -c.DLNFINIDV[i] / rho;
        for (int l = 0; l < members.count; ++l) {
            const int j = members.number[l];
            // at constant density the volume grows with the amount
            f.inAmounts[l] = c.D2ADNN[j][i] + c.DLNFINIDV[i] / rho + fluidConstants.REOS[j] / R;
        }
    }
    for (int k = 0; k < 2; ++k) {
        const char letter = conditions[k].letter;
        if (letter == 'D' || letter == 'H' || letter == 'S' || letter == 'E')
            bulkSlopes(letter, T, rho, x, members, p, dpdt, dpdd, phase.bulk[k]);
    }
    return true;
}

// The system of equations at a state: the unknowns are ln K of the members, ln T, ln of the densities of liquid and
// vapor, q.
class System {
  public:
    System(const Condition& a, const Condition& b, const Composition& z)
        : conditions_{a, b}, z_(z), members_(z), m_(members_.count), T_(m_), L_(m_ + 1), V_(m_ + 2), Q_(m_ + 3) {}

    // The largest step of Newton's method from s; negative without one. A cold liquid that is a trifle too thin has a
    // pressure below zero, and no fugacities: it is made denser.
    double step(PhasePair& s) {
        constexpr double denser = 1.003;
        constexpr int mostTries = 3;
        int tries = 0;
        while (!evaluate(conditions_, s.T, s.Dl, s.x, members_, liquid_)) {
            if (++tries > mostTries) return -1.0;
            s.Dl *= denser;
        }
        if (!evaluate(conditions_, s.T, s.Dv, s.y, members_, vapor_)) return -1.0;
        fill(s);
        int code = 0;
        Text255 text;
        LUDECOMP(m_ + unknownsBesideRatios, &J_[0][0], mostUnknowns, step_, code, text);
        if (code > 0) return -1.0;
        double largest = 0.0;
        for (int i = 0; i < m_ + unknownsBesideRatios; ++i) {
            if (!std::isfinite(step_[i])) return -1.0;
            largest = std::max(largest, std::fabs(step_[i]));
        }
        return largest;
    }

    // Takes the step, not longer than what a start near the state asks for; false where it leads out of two phases.
    bool take(PhasePair& s) const {
        constexpr double longestInRatio = 1.0, longestInT = 0.05, longestInDensity = 0.4, longestInShare = 0.5;
        constexpr double outside = 0.05;  // of the share
        double share = 1.0;
        const auto limit = [&](double step, double longest) {
            if (std::fabs(step) > longest) share = std::min(share, longest / std::fabs(step));
        };
        for (int k = 0; k < m_; ++k) limit(step_[k], longestInRatio);
        limit(step_[T_], longestInT);
        limit(step_[L_], longestInDensity);
        limit(step_[V_], longestInDensity);
        limit(step_[Q_], longestInShare);
        s.T *= std::exp(share * step_[T_]);
        s.Dl *= std::exp(share * step_[L_]);
        s.Dv *= std::exp(share * step_[V_]);
        s.q += share * step_[Q_];
        if (!(s.q > -outside && s.q < 1.0 + outside)) return false;
        Composition ratio;
        for (int k = 0; k < m_; ++k) {
            const int i = members_.number[k];
            ratio[i] = s.y[i] / s.x[i] * std::exp(share * step_[k]);
        }
        return divide(ratio, s);
    }

  private:
    // Compositions of the phases from the ratios and the share.
    bool divide(const Composition& ratio, PhasePair& s) const {
        double sumX = 0.0, sumY = 0.0;
        for (int k = 0; k < m_; ++k) {
            const int i = members_.number[k];
            const double denominator = 1.0 - s.q + s.q * ratio[i];
            if (!(denominator > 0.0)) return false;
            s.x[i] = z_[i] / denominator;
            s.y[i] = s.x[i] * ratio[i];
            sumX += s.x[i];
            sumY += s.y[i];
        }
        for (int k = 0; k < m_; ++k) {
            const int i = members_.number[k];
            s.x[i] /= sumX;
            s.y[i] /= sumY;
        }
        return std::isfinite(sumX) && std::isfinite(sumY);
    }

    // Adds a share of a phase's property to the row of an equation: what it does with the unknowns.
    void addToRow(double* row, const PropertySlopes& property, bool vapor, double share) const {
        const double* change = vapor ? vaporChange_ : liquidChange_;
        const double* inShare = vapor ? vaporInShare_ : liquidInShare_;
        for (int k = 0; k < m_; ++k) {
            row[k] += share * property.inAmounts[k] * change[k];
            row[Q_] += share * property.inAmounts[k] * inShare[k];
        }
        row[T_] += share * property.inT;
        row[vapor ? V_ : L_] += share * property.inDensity;
    }

    void fill(const PhasePair& s) {
        const int n = m_ + unknownsBesideRatios;
        for (int i = 0; i < n; ++i) std::fill(J_[i], J_[i] + n, 0.0);
        double* row = J_[m_];  // material balance
        step_[m_] = 0.0;
        for (int k = 0; k < m_; ++k) {
            const int i = members_.number[k];
            const double x = s.x[i], y = s.y[i], z = z_[i];
            liquidChange_[k] = -s.q * x * y / z;
            vaporChange_[k] = (1.0 - s.q) * x * y / z;
            liquidInShare_[k] = -x * (y - x) / z;
            vaporInShare_[k] = -y * (y - x) / z;
            const double ratio = y / x, denominator = 1.0 - s.q + s.q * ratio;
            step_[m_] -= z * (ratio - 1.0) / denominator;
            row[k] = z * ratio / (denominator * denominator);
            row[Q_] -= z * (ratio - 1.0) * (ratio - 1.0) / (denominator * denominator);
        }
        for (int k = 0; k < m_; ++k) {
            const int i = members_.number[k];
            J_[k][k] = 1.0;
            addToRow(J_[k], vapor_.lnFugacity[k], true, 1.0);
            addToRow(J_[k], liquid_.lnFugacity[k], false, -1.0);
            step_[k] = -(vapor_.lnFugacity[k].value - liquid_.lnFugacity[k].value + std::log(s.y[i] / s.x[i]));
        }
        addToRow(J_[L_], liquid_.pressure, false, 1.0);
        addToRow(J_[L_], vapor_.pressure, true, -1.0);
        step_[L_] = vapor_.pressure.value - liquid_.pressure.value;
        for (int k = 0; k < 2; ++k) condition(k, s, J_[k == 0 ? V_ : Q_], step_[k == 0 ? V_ : Q_]);
    }

    void condition(int k, const PhasePair& s, double* row, double& right) const {
        const double wanted = conditions_[k].value;
        switch (conditions_[k].letter) {
            case 'T':
                row[T_] = 1.0;
                right = std::log(wanted / s.T);
                return;
            case 'Q':
                row[Q_] = 1.0;
                right = wanted - s.q;
                return;
            case 'P':
                addToRow(row, vapor_.pressure, true, 1.0);
                right = wanted - vapor_.pressure.value;
                return;
            default: {
                const PropertySlopes &liquid = liquid_.bulk[k], &vapor = vapor_.bulk[k];
                addToRow(row, liquid, false, 1.0 - s.q);
                addToRow(row, vapor, true, s.q);
                row[Q_] += vapor.value - liquid.value;
                right = (conditions_[k].letter == 'D' ? 1.0 / wanted : wanted) - (1.0 - s.q) * liquid.value -
                        s.q * vapor.value;
            }
        }
    }

    const Condition conditions_[2];
    const Composition& z_;
    const Members members_;
    const int m_, T_, L_, V_, Q_;
    PhaseSlopes liquid_, vapor_;
    double liquidChange_[ncmax], vaporChange_[ncmax];    // of the fractions with ln K of the same member
    double liquidInShare_[ncmax], vaporInShare_[ncmax];  // with q
    double J_[mostUnknowns][mostUnknowns];
    double step_[mostUnknowns];
};

bool solve(const Condition& a, const Condition& b, const Composition& z, PhasePair& state, double& lastStep) {
    constexpr int mostPasses = 15;
    constexpr double closeEnough = 1e-7;  // the step beyond it is the square of it
    if (!(modelTags.HEOS == "HMX") || pengRobinsonSelected()) return false;
    const SilentMessages quiet;
    System system(a, b, z);
    PhasePair s = state;
    for (int pass = 1;; ++pass) {
        lastStep = system.step(s);
        if (lastStep < 0.0 || !system.take(s) || pass > mostPasses) return false;
        if (lastStep < closeEnough) break;
    }
    PRESS(s.T, s.Dv, s.y, s.p);
    for (const Condition& given : {a, b}) {
        if (given.letter == 'T') s.T = given.value;
        if (given.letter == 'P') s.p = given.value;
        if (given.letter != 'Q') continue;
        s.q = given.value;
        // the phase that is there alone has the composition of the whole
        if (s.q == 0.0) s.x = z;
        if (s.q == 1.0) s.y = z;
    }
    if (!isEquilibrium(s, criticalPointOf(z).p, solvedEquilibrium)) return false;
    state = s;
    return true;
}

// The saturated liquid by Rackett's equation, from the volumes of the components.
//   Source  H. G. Rackett, J. Chem. Eng. Data 15 (1970) 514
double liquidEstimate(double T, const Composition& x, const CriticalPoint& critical) {
    const double Zc = critical.p / (critical.D * fluidConstants.R * critical.T);
    double volume = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) volume += x[i] / fluidConstants.DCRIT[i];
    return 1.0 / (volume * std::pow(Zc, std::pow(1.0 - T / critical.T, 2.0 / 7.0)));
}

// The vapor by its second virial coefficient.
//   Source  H. C. Van Ness, M. M. Abbott, Classical Thermodynamics of Nonelectrolyte Solutions (1982), eq. 4-14
double vaporEstimate(double T, double p, const CriticalPoint& critical) {
    constexpr double least = 0.5;
    const double reduced = T / critical.T;
    const double Z = 1.0 + (0.083 - 0.422 / std::pow(reduced, 1.6)) * p / critical.p / reduced;
    return p / (std::max(Z, least) * fluidConstants.R * T);
}

}  // namespace

bool newtonAtConditions(const Condition& a, const Condition& b, const Composition& z, PhasePair& state) {
    double lastStep = 0.0;
    return solve(a, b, z, state, lastStep);
}

namespace {

// The share of the vapor on a line.
double shareOf(int kph) {
    return kph == 1 || kph == 3 ? 0.0 : 1.0;
}

// From the estimates of SATEST and of both densities; false above the temperature up to which they are good enough.
bool fromEstimates(PhasePair& at, const Composition& z, int kph, const CriticalPoint& critical, double& lastStep) {
    constexpr double plain = 0.99;  // [Tc] nearer to the critical point the estimates are poor
    const bool givenT = kph <= 2;
    if (givenT ? at.T > plain * critical.T : at.p > critical.p) return false;
    PhasePair s = at;
    int code = 0;
    Text255 text;
    SATEST(kph, s.T, s.p, z, s.x, s.y, code, text);
    if (code > 0 || !(s.p > 0.0) || !(s.T > 0.0 && s.T < plain * critical.T)) return false;
    s.q = shareOf(kph);
    // a liquid a little too thin has no pressure at all, which leaves no fugacities to start from
    constexpr int liquidSide = -1, fromGuess = 1;
    s.Dl = liquidEstimate(s.T, s.x, critical);
    TPRHO(s.T, s.p, s.x, liquidSide, fromGuess, s.Dl, code, text);
    if (code > 0) return false;
    s.Dv = vaporEstimate(s.T, s.p, critical);
    if (!solve({givenT ? 'T' : 'P', givenT ? at.T : at.p}, {'Q', s.q}, z, s, lastStep)) return false;
    at = s;
    return true;
}

// A line at a pressure beside the critical one: from a point of it at a lower pressure, drawn toward the critical
// point. Temperature goes with the pressure, the densities and the logarithms of the ratios close with the exponent of
// coexistence. Where the critical point of the estimate is too far from the end of the line, a walk along it.
OnLine fromBelowCritical(PhasePair& at, const Composition& z, int kph, const CriticalPoint& critical,
                         double& lastStep) {
    constexpr double below = 0.7, sure = 0.9, highest = 1.1;  // pressures in those of the critical point
    constexpr double exponent = 0.4;
    constexpr double sameLine = 0.01;                          // of the temperature
    constexpr double longestStep = 0.05, smallestStep = 5e-4;  // of the walk, in ln p
    constexpr double nearlyOne = 1.25;                         // ratio of the densities where a line ends
    constexpr int mostSteps = 25;
    if (kph <= 2 || !(at.p > below * critical.p && at.p < highest * critical.p)) return OnLine::unknown;
    PhasePair start;
    start.p = below * critical.p;
    if (!fromEstimates(start, z, kph, critical, lastStep)) return OnLine::unknown;
    const auto drawnTo = [&](double p, PhasePair& s) {
        const double left = (critical.p - p) / (critical.p - start.p), gap = std::pow(left, exponent);
        s = start;
        s.T = critical.T + left * (start.T - critical.T);
        s.Dl = critical.D + gap * (start.Dl - critical.D);
        s.Dv = critical.D + gap * (start.Dv - critical.D);
        Composition& other = kph == 3 ? s.y : s.x;
        for (int i = 1; i <= modelTags.NC; ++i)
            if (z[i] > 0.0) other[i] = z[i] * std::pow(other[i] / z[i], gap);
        normalize(other);
        const double expected = s.T;
        return solve({'P', p}, {'Q', s.q}, z, s, lastStep) && std::fabs(s.T - expected) < sameLine * expected;
    };
    PhasePair here;
    if (at.p < critical.p && drawnTo(at.p, here)) {
        at = here;
        return OnLine::found;
    }
    if (at.p < sure * critical.p || !drawnTo(sure * critical.p, here)) return OnLine::unknown;
    const auto onward = [&](double lnp, const PhasePair&, PhasePair& pair) {
        const double expected = pair.T;
        return solve({'P', std::exp(lnp)}, {'Q', pair.q}, z, pair, lastStep) &&
               std::fabs(pair.T - expected) < sameLine * expected;
    };
    const auto seen = [](const PhasePair&, const PhasePair&) { return false; };
    const WalkEnd end =
        walkLine({std::log(here.p), std::log(at.p), longestStep, smallestStep, mostSteps}, here, onward, seen);
    if (end != WalkEnd::arrived) return here.Dl < nearlyOne * here.Dv ? OnLine::beyondEnd : OnLine::unknown;
    const double p = at.p;
    at = here;
    at.p = p;
    return OnLine::found;
}

}  // namespace

OnLine newtonOnLine(PhasePair& at, const Composition& z, int kph) {
    if (saturationSpline.SPLINEREADY) return OnLine::unknown;
    const CriticalPoint critical = criticalPointOf(z);
    double lastStep = 0.0;
    const OnLine end = fromEstimates(at, z, kph, critical, lastStep)
                           ? OnLine::found
                           : fromBelowCritical(at, z, kph, critical, lastStep);
    if (end == OnLine::found) saturationExtrema.highestEnergy.value = lastStep;
    return end;
}

}  // namespace frigana
