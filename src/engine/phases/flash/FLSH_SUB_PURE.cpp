#include "FLSH_SUB_PURE.h"

#include <algorithm>
#include <cmath>

#include "CORE_ANC.h"
#include "FluidConstants.h"
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
    double T = 0.0, Dl = 0.0, Dv = 0.0;
    if (!temperatureByAncillary(isobar.icomp, isobar.p, T) || !densitiesByAncillaries(isobar.icomp, T, Dl, Dv))
        return false;
    found = caloricState(isobar.letter, T, Dv, isobar.z);
    if (!(isobar.b > found.value && found.pD > 0.0 && found.alongIsobar() > 0.0)) return false;
    found = hotterVapor(isobar, found);
    return newtonOnIsobar(isobar.letter, isobar.p, isobar.b, isobar.z, found) && isobar.inside(found.T);
}

// A state above the critical pressure: from a liquid where the property is below that of the critical point, otherwise
// from the gas on an isotherm somewhat above the critical one. Liquids denser than at the triple point may have less
// entropy or energy than the range of the property allows.
bool aboveCriticalPressure(const Isobar& isobar, CaloricState& found) {
    constexpr double coldStart = 0.85, hotStart = 1.1;  // [Tc]
    const CriticalPoint& critical = isobar.critical;
    double D = 0.0, Dv = 0.0, T = coldStart * critical.T;
    if (isobar.b < isobar.valueAt(critical.T, critical.D)) {
        if (!densitiesByAncillaries(isobar.icomp, T, D, Dv)) return false;
    } else {
        int code = 0;
        Text255 text;
        T = hotStart * critical.T;
        TPRHO(T, isobar.p, isobar.z, 2, 0, D, code, text);
        if (code > 0) return false;
    }
    found = caloricState(isobar.letter, T, D, isobar.z);
    return newtonOnIsobar(isobar.letter, isobar.p, isobar.b, isobar.z, found) && isobar.inside(found.T) &&
           found.D <= fluidConstants.DTPN[isobar.icomp];
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
    if (!(p > fluidConstants.PTPN[icomp])) return false;
    const bool vapor = vaporOnIsobar(isobar, found);
    if (vapor && surelyVapor(isobar, found)) return singlePhase(superheatedVapor);

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

}  // namespace frigana
