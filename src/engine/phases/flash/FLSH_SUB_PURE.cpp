#include "FLSH_SUB_PURE.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "CORE_ANC.h"
#include "FluidConstants.h"
#include "PROP_SUB.h"
#include "PureOnePhase.h"
#include "SAT_SUB_PURE_NEWTON.h"
#include "TPRHO.h"

namespace frigana {

namespace {

// The isobar of the given property.
struct Isobar {
    char letter;
    double p, b;
    int icomp;
    const Composition& z;
    const CriticalPoint& critical;
    const EosLimits& limits;

    double valueAt(double T, double D) const { return propertyByLetter(letter, T, D, z); }
    bool inside(double T) const { return T >= limits.tmin && T <= limits.tmax; }
};

// From a vapor to a hotter one: the first step follows the heat capacity, and the density the ideal gas, of whose
// volume as much is left as the attraction leaves, which falls about with the third power of temperature.
CaloricState hotterVapor(const Isobar& isobar, const CaloricState& from) {
    constexpr double furthest = 2.0;
    const double rise = (isobar.b - from.value) / from.alongIsobar();
    const double T = std::clamp(isobar.letter == 'S' ? from.T * std::exp(std::min(rise / from.T, 1.0)) : from.T + rise,
                                from.T, std::min(furthest * from.T, isobar.limits.tmax));
    const double RT = fluidConstants.R * T;
    const double Z = from.p / (from.D * fluidConstants.R * from.T), ratio = from.T / T;
    return caloricState(isobar.letter, T, isobar.p / (RT * (1.0 - (1.0 - Z) * ratio * ratio * ratio)), isobar.z);
}

// True if a vapor is one beyond the doubts that ancillary equations leave.
bool surelyVapor(const Isobar& isobar, const CaloricState& found) {
    constexpr double margin = 0.97;  // of the ancillary vapor pressure
    if (found.T >= isobar.critical.T) return true;
    double saturation = 0.0, Dl = 0.0, Dv = 0.0;
    int code = 0;
    Text255 text;
    PSATK(isobar.icomp, found.T, saturation, code, text);
    return code == 0 && isobar.p < margin * saturation && densitiesByAncillaries(isobar.icomp, found.T, Dl, Dv) &&
           found.D < Dv;
}

// A vapor by its isobar alone, stable or not; false where it is none.
bool vaporOnIsobar(const Isobar& isobar, CaloricState& found) {
    double T = fluidConstants.TTPN[isobar.icomp], Dl = 0.0, Dv = isobar.p / (fluidConstants.R * T);
    const bool condenses = isobar.p > fluidConstants.PTPN[isobar.icomp];
    if (condenses &&
        !(temperatureByAncillary(isobar.icomp, isobar.p, T) && densitiesByAncillaries(isobar.icomp, T, Dl, Dv)))
        return false;
    found = caloricState(isobar.letter, T, Dv, isobar.z);
    if (!(isobar.b > found.value && found.pD > 0.0 && found.alongIsobar() > 0.0)) return false;
    found = hotterVapor(isobar, found);
    return newtonOnIsobar(isobar.letter, isobar.p, isobar.b, isobar.z, found) && isobar.inside(found.T);
}

// True for a property that no liquid of the lowest temperature has more of; what is denser than the liquid at the
// triple point may have less entropy or energy than the range of the property allows.
bool isAboveColdLiquid(const Isobar& isobar) {
    constexpr double pLow = 100.0;  // [kPa]
    double D = 0.0;
    int code = 0;
    Text255 text;
    TPRHO(isobar.limits.tmin, pLow, isobar.z, 1, 0, D, code, text);
    return code == 0 && isobar.b >= isobar.valueAt(isobar.limits.tmin, D);
}

// A state above the critical pressure: from a liquid where the property is below that of the critical point, otherwise
// from the gas on an isotherm somewhat above the critical one, and from ever hotter ones where that does not lead to
// it. Equations that reach far beyond the melting line may have a negative heat capacity there, as that of hydrogen
// below 40 K and above 200 MPa: the isobar has a second state with the same property, cold and unstable. From the hot
// side Newton's method comes to the stable one, as the property is convex there.
bool aboveCriticalPressure(const Isobar& isobar, CaloricState& found) {
    constexpr double coldStart = 0.85, hotStart = 1.1, hotter = 1.7;  // [Tc], [T]
    const CriticalPoint& critical = isobar.critical;
    const auto leadsToIt = [&](double T, double D) {
        found = caloricState(isobar.letter, T, D, isobar.z);
        return newtonOnIsobar(isobar.letter, isobar.p, isobar.b, isobar.z, found) && isobar.inside(found.T) &&
               found.D <= isobar.limits.Dmax &&
               (found.D <= fluidConstants.DTPN[isobar.icomp] || isAboveColdLiquid(isobar));
    };
    if (isobar.b < isobar.valueAt(critical.T, critical.D)) {
        double D = 0.0, Dv = 0.0;
        const double T = coldStart * critical.T;
        if (densitiesByAncillaries(isobar.icomp, T, D, Dv) && leadsToIt(T, D)) return true;
    }
    double T = hotStart * critical.T;
    do {
        double D = 0.0;
        int code = 0;
        Text255 text;
        TPRHO(T, isobar.p, isobar.z, 2, 0, D, code, text);
        if (code <= 0 && leadsToIt(T, D)) return true;
        T *= hotter;
    } while (T < isobar.limits.tmax);
    return false;
}

// True if a single phase lies on its side of the line.
bool isBesideLine(const Isobar& isobar, const SaturatedPair& line, bool liquid, const CaloricState& found) {
    constexpr double rounding = 1e-9;
    const bool onItsSide = liquid ? found.T <= line.T * (1 + rounding) && found.D >= line.Dl * (1 - rounding)
                                  : found.T >= line.T * (1 - rounding) && found.D <= line.Dv * (1 + rounding);
    return onItsSide && isobar.inside(found.T);
}

// A single phase from its line.
bool fromLine(const Isobar& isobar, const SaturatedPair& line, bool liquid, CaloricState& found) {
    found = caloricState(isobar.letter, line.T, liquid ? line.Dl : line.Dv, isobar.z);
    if (!liquid && found.pD > 0.0 && found.alongIsobar() > 0.0) found = hotterVapor(isobar, found);
    return newtonOnIsobar(isobar.letter, isobar.p, isobar.b, isobar.z, found) &&
           isBesideLine(isobar, line, liquid, found);
}

}  // namespace

bool flashPureOnIsobar(char letter, double p, double b, int icomp, const Composition& z, const CriticalPoint& critical,
                       const EosLimits& limits, FlashResult& r) {
    if (!pureNewtonControl.enabled || limits.code != 0 || !hasPlainHelmholtzEnergy(icomp)) return false;
    const Isobar isobar{letter, p, b, icomp, z, critical, limits};
    CaloricState found{};
    const auto singlePhase = [&](double q) {
        r.T = found.T;
        fillSinglePhase(found.T, found.D, z, r);
        r.q = q;
        return true;
    };

    if (p >= critical.p) {
        if (!aboveCriticalPressure(isobar, found)) return false;
        return singlePhase(regionQuality(found.T, p, found.D, critical));
    }
    // below the triple point the line is that of the solid
    const bool liquidExists = p > fluidConstants.PTPN[icomp];
    const bool vapor = vaporOnIsobar(isobar, found);
    if (vapor && surelyVapor(isobar, found) && (liquidExists || found.T >= fluidConstants.TTPN[icomp]))
        return singlePhase(superheatedVapor);
    if (!liquidExists) return false;

    SaturatedPair line;
    {
        const SilentMessages quiet;
        saturationAtP(p, z, 2, line);
    }
    if (line.ierr != 0 || !(line.Dl > line.Dv) || line.T < limits.tmin) return false;
    const double atDew = isobar.valueAt(line.T, line.Dv), atBubble = isobar.valueAt(line.T, line.Dl);
    if (!(atDew - atBubble > 1e-20)) return false;
    const double q = (b - atBubble) / (atDew - atBubble);
    if (b >= atDew) {
        const bool known = vapor && isBesideLine(isobar, line, false, found);
        return (known || fromLine(isobar, line, false, found)) && singlePhase(superheatedVapor);
    }
    if (b <= atBubble) return fromLine(isobar, line, true, found) && singlePhase(q);
    r.T = line.T;
    r.Dl = line.Dl;
    r.Dv = line.Dv;
    r.q = q;
    fillTwoPhase(line.T, r);
    return true;
}

namespace {

// Both saturated phases of a temperature, with what an isentrope needs of them.
struct SaturatedState {
    SaturatedPair line;
    double hl = 0, sl = 0, sv = 0;

    bool solve(double T, const Composition& z) {
        const SilentMessages quiet;
        saturationAtT(T, z, 2, line);
        if (line.ierr != 0 || !(line.Dl > line.Dv && line.Dv > 0.0)) return false;
        ENTRO(T, line.Dv, z, sv);
        ENTRO(T, line.Dl, z, sl);
        ENTHAL(T, line.Dl, z, hl);
        return sv > sl;
    }
    double share(double s) const { return (s - sl) / (sv - sl); }
    double volume(double s) const { return 1 / line.Dl + share(s) * (1 / line.Dv - 1 / line.Dl); }
    // enthalpy or energy on the isentrope
    double value(char letter, double s) const {
        const double h = hl + line.T * (s - sl);
        return letter == 'H' ? h : h - line.p * volume(s);
    }
    // dh/dT along the isentrope
    double slope(double s) const { return volume(s) * (sv - sl) / (1 / line.Dv - 1 / line.Dl); }
};

// The slope of the value over temperature on the isentrope within both phases. That of energy, dh/dT over the
// isentropic exponent, which is little above one, is taken from the last two temperatures once they are known.
class IsentropeSlope {
  public:
    explicit IsentropeSlope(char letter) : letter_(letter) {}

    double at(const SaturatedState& state, double s) {
        if (letter_ == 'H') return state.slope(s);
        const double T = state.line.T, value = state.value(letter_, s);
        const double byLast = (value - lastValue_) / (T - lastT_);
        const bool known = lastT_ > 0 && byLast > 0 && std::isfinite(byLast);
        lastT_ = T;
        lastValue_ = value;
        return known ? byLast : state.slope(s) / usualExponent;
    }

  private:
    static constexpr double usualExponent = 1.1;
    char letter_;
    double lastT_ = 0, lastValue_ = 0;
};

// The isentrope of the given enthalpy or energy.
struct Isentrope {
    char letter;
    double given, s;
    const Composition& z;
    const CriticalPoint& critical;
    double tmin, tmax;

    // As de = -p dv, the energy of a liquid under low pressure hardly tells it from others of its entropy.
    bool hardlyTold(double p) const { return letter == 'E' && p < 100; }
    double pressure(double T, double D) const {
        double p = 0;
        PRESS(T, D, z, p);
        return p;
    }

    // A stable single phase, from a state on its side.
    bool onePhase(double T, double D, FlashResult& r) const {
        if (!newtonAtEntropy(letter, given, s, z, T, D) || !(T >= tmin && T <= tmax)) return false;
        if (D > critical.D && hardlyTold(pressure(T, D))) return false;
        if (T < critical.T) {
            SaturatedPair line;
            const SilentMessages quiet;
            saturationAtT(T, z, 2, line);
            if (line.ierr != 0 || (D < line.Dl && D > line.Dv)) return false;
        }
        r.T = T;
        r.D = D;
        return true;
    }
};

}  // namespace

PureState flashPureAtEntropy(char letter, double given, double s, int icomp, const Composition& z,
                             const CriticalPoint& critical, double tmin, double tmax, FlashResult& r) {
    if (!pureNewtonControl.enabled || !hasPlainHelmholtzEnergy(icomp)) return PureState::none;
    constexpr int mostSteps = 25;
    constexpr double start = 0.8, besideCritical = 0.985, beyondCritical = 1.05;  // [Tc]
    // [T] after it the error is of the order of its square, or by the slope between two temperatures of its product
    // with the step before
    const double lastStep = letter == 'H' ? 1e-7 : 1e-9;
    constexpr double insideLine = 0.97;  // [T] a little colder than where the isentrope leaves the bubble line
    const Isentrope isentrope{letter, given, s, z, critical, tmin, tmax};
    IsentropeSlope slope(letter);
    double lower = std::max(tmin, fluidConstants.TTPN[icomp]), upper = critical.T;
    double T = start * critical.T;
    if (!(T > lower)) T = 0.5 * (lower + upper);
    bool liquidTried = false, vaporTried = false, denseTried = false, last = false;
    SaturatedState at;
    for (int step = 1; step <= mostSteps && upper - lower > 1e-12 * upper; ++step) {
        if (!at.solve(T, z)) return PureState::none;
        const double q = at.share(s);
        double next = 0.5 * (lower + T);
        if (q < 0) {
            upper = std::min(upper, T);
            if (!std::exchange(liquidTried, true) && isentrope.onePhase(T, at.line.Dl, r)) return PureState::onePhase;
            double cv = 0, cp = 0;
            CVCP(T, at.line.Dl, z, cv, cp);
            next = insideLine * T * std::exp((s - at.sl) / cp);
        } else if (q > 1) {
            upper = std::min(upper, T);
            if (!std::exchange(vaporTried, true) && isentrope.onePhase(T, at.line.Dv, r)) return PureState::onePhase;
        } else {
            if (last) {
                constexpr double trace = 1e-6;  // of vapor
                if (q < trace && isentrope.hardlyTold(at.line.p)) return PureState::none;
                r.T = T;
                r.p = at.line.p;
                r.Dl = at.line.Dl;
                r.Dv = at.line.Dv;
                r.q = q;
                fillTwoPhase(T, r);
                return PureState::bothPhases;
            }
            const double missing = given - at.value(letter, s), byT = missing / slope.at(at, s);
            (missing > 0 ? lower : upper) = T;
            next = T + byT;
            last = std::fabs(byT) < lastStep * T;
            if (next > besideCritical * critical.T && !last) {
                if (!std::exchange(denseTried, true) && isentrope.onePhase(beyondCritical * critical.T, critical.D, r))
                    return PureState::onePhase;
            }
            if (last) {
                T = next;
                continue;
            }
        }
        last = false;
        if (!(next > lower && next < upper)) next = 0.5 * (lower + upper);
        T = next;
    }
    return PureState::none;
}

}  // namespace frigana
