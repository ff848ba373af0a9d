#include "FLSH_SUB.h"

#include <algorithm>
#include <cmath>

#include "CORE_ANC.h"
#include "CORE_PR.h"
#include "FLASH2.h"
#include "FLSH_SUB_PURE.h"
#include "FLSH_SUB_STABILITY.h"
#include "FlashBricks.h"
#include "FluidConstants.h"
#include "FluidFiles.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "PhaseCheck.h"
#include "SAT_SUB.h"
#include "SAT_SUB_HOTTEST.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

namespace {

constexpr double idealGasPressure = 1e-14;  // [kPa]
constexpr double idealGasDensity = 1e-14;   // [mol/L]

// Enthalpy quality of a superheated vapor at its dew point; inside 0 to 1 (retrograde, or at the very line) the mark
// of the vapor stands.
double enthalpyQuality(double h, double T, const SaturatedPair& dew) {
    double hLiquid = 0;
    double hVapor = 0;
    ENTHAL(T, dew.Dl, dew.x, hLiquid);
    ENTHAL(T, dew.Dv, dew.y, hVapor);
    if (std::abs(hVapor - hLiquid) < 1e-20) return superheatedVapor;
    const double q = (h - hLiquid) / (hVapor - hLiquid);
    return q > 0 && q < 1 ? superheatedVapor : q;
}

// True if the pressure of a density is the one that it was found for. A liquid at low pressure has none to speak of.
bool isAtPressure(double found, double T, double p, double D, const Composition& z) {
    constexpr double closeTo = 1e-6, stiffness = 1e-3;
    if (std::abs(found - p) <= closeTo * p) return true;
    double slope = 0;
    DPDD(T, D, z, slope);
    return std::abs(found - p) <= closeTo * stiffness * D * slope;
}

// A single phase by TPRHO, or the error with its code, text and the text of the density root. Next to the critical
// point the density iteration may fail from a guess, or end beside the pressure: there it has a second try without the
// guess, and one from the other side.
bool singlePhaseAtTP(double T, double p, const Composition& z, int kph, double guess, int code, std::string_view what,
                     FlashResult& r) {
    constexpr double besideCritical = 0.01;  // of the temperature
    Text255 inner;
    struct Try {
        int kph;
        double guess;
    };
    const Try tries[] = {{kph, guess}, {kph, 0}, {3 - kph, 0}, {-kph, 0}, {kph - 3, 0}};
    for (const Try& attempt : tries) {
        if (&attempt == &tries[1] && guess <= 0) continue;
        if (&attempt == &tries[2] && std::abs(T / criticalPointOf(z).T - 1) > besideCritical) break;
        double D = attempt.guess;
        int ierr = 0;
        Text255 text;
        {
            const SilentMessages quiet;
            TPRHO(T, p, z, attempt.kph, attempt.guess > 0 ? 1 : 0, D, ierr, text);
        }
        if (&attempt == &tries[0]) inner = text;
        if (ierr > 0) continue;
        const double found = fillSinglePhase(T, D, z, r);
        if (!isAtPressure(found, T, p, D, z)) continue;
        r.ierr = 0;
        return true;
    }
    noState(r);
    reportError("TP", code, what, inner, r.ierr, r.herr);
    return false;
}

void replaceByCritical(SaturatedPair& pair, const CriticalPoint& critical, const Composition& z) {
    pair.p = critical.p;
    pair.Dl = pair.Dv = critical.D;
    pair.x = pair.y = z;
    pair.ierr = 0;
}

// Lowest pressure at which a saturation state may exist at T, so that a vapor far from it is seen without a
// saturation iteration.
double lowestSaturationPressure(double T, const CriticalPoint& critical, int icomp, const Composition& z) {
    if (T > critical.T) return 0;
    double pb = std::exp(13.85 * T / critical.T - 14.073) * critical.p;
    if (T <= 0.7 * critical.T) pb /= 10;
    if (T <= 0.6 * critical.T) pb /= 100;
    if (T <= 0.5 * critical.T) pb /= 100;
    if (T <= 0.4 * critical.T) pb /= 100;
    if (icomp > 0 && modelTags.HPSK[icomp] != "NBS") {
        double pAncillary = 0;
        int code = 0;
        Text255 text;
        PSATT(T, z, pAncillary, code, text);
        if (code == 0) return 0.95 * pAncillary;
    }
    pb /= 10;
    if (modelTags.NC > 1) pb /= 100;
    return pb;
}

enum class Road { finished, failed };

// Two phases from a start near them, or the error of the iteration.
bool twoPhasesAtTP(double T, double p, const Composition& z, const CriticalPoint& critical, FlashResult& r) {
    TPFL2(T, p, z, r.Dl, r.Dv, r.x, r.y, r.q, r.ierr, r.herr);
    if (r.ierr > 0) {
        r.q = supercriticalOrNone;
        r.D = critical.D;
        return false;
    }
    Text255 inner;
    TPRHO(T, p, r.x, 1, 1, r.Dl, r.ierr, inner);
    if (r.ierr == 0) TPRHO(T, p, r.y, 2, 1, r.Dv, r.ierr, inner);
    if (r.ierr > 0) {
        noState(r);
        message(r.herr, "[TPFLSH error] (mix, 2-phase):  ", innerText(inner), nullCharacter);
        ERRMSG(r.ierr, r.herr);
        return false;
    }
    fillTwoPhase(T, r);
    return true;
}

// Without a line; none is looked for beyond 1.5 times the critical point.
const SaturatedPair noLine{{}, 1, {}};

constexpr int longStabilityTest = 60;      // exchanges
constexpr double besideBubbleLine = 1.01;  // times its pressure
constexpr double sameRoot = 1e-6;          // relative

// Next to the critical temperature of a mixture and above it, where a line may end or be hard to find: one phase or two
// by the stability of the one.
//   Given     bubble, dew  the lines; ierr > 0 of the one, or of both, that was not found
//   Returned  (value) false if the test has not led to a state
bool solveByStability(double T, double p, const Composition& z, const CriticalPoint& critical,
                      const SaturatedPair& bubble, const SaturatedPair& dew, FlashResult& r) {
    const SilentMessages quiet;
    OtherPhase other[2];
    const int side = p >= critical.p ? 1 : 2;
    double root = 0;
    for (const int kph : {side, 3 - side}) {
        double D = 0;
        int code = 0;
        Text255 inner;
        TPRHO(T, p, z, kph, 0, D, code, inner);
        if (code > 0 || std::abs(D - root) < sameRoot * D) continue;
        root = D;
        if (dew.ierr <= 0) other[0] = {false, dew.Dl, dew.x};
        if (bubble.ierr <= 0) other[1] = {true, bubble.Dv, bubble.y};
        if (unstableState(T, p, root, z, longStabilityTest, other)) continue;
        if (!singlePhaseAtTP(T, p, z, kph, 0, 213, "", r)) return false;
        r.q = regionQuality(T, p, r.D, critical);
        return true;
    }
    // a little of the phase that was found, beside what it leaves of the feed; or next to all of it
    const OtherPhase& found = other[0];
    if (!(found.rho > 0 && root > 0)) return false;
    constexpr double nextToAll = 0.999;
    double most = 1;
    for (int i = 1; i <= modelTags.NC; ++i)
        if (found.x[i] > 0) most = std::min(most, z[i] / found.x[i]);
    const bool isVapor = packing(found.rho, found.x) < packing(root, z);
    for (const double share : {0.1, 0.3, 0.03, nextToAll * most}) {
        const bool nextTo = share == nextToAll * most;
        const double least = nextTo ? 1 - nextToAll : 0.1;
        Composition rest = z;
        for (int i = 1; i <= modelTags.NC; ++i)
            rest[i] = std::max((z[i] - share * found.x[i]) / (1 - share), least * z[i]);
        normalize(rest);
        double D = root;
        int code = 0;
        Text255 inner;
        if (nextTo) TPRHO(T, p, rest, isVapor ? 1 : 2, 0, D, code, inner);
        if (code > 0) break;
        r.Dl = isVapor ? D : found.rho;
        r.Dv = isVapor ? found.rho : D;
        r.x = isVapor ? rest : found.x;
        r.y = isVapor ? found.x : rest;
        r.q = isVapor ? share : 1 - share;
        if (twoPhasesAtTP(T, p, z, critical, r) && r.q > 0 && r.q < 1) return true;
    }
    return false;
}

// One phase at the critical point of a mixture, where the two are so much alike that neither of them is found, nor told
// from the feed.
bool onePhaseAtCriticalPoint(double T, double p, const Composition& z, FlashResult& r) {
    constexpr double besideT = 1e-5, besideP = 1e-4;  // relative
    const SilentMessages quiet;
    int code = 0;
    Text255 text;
    const CriticalPoint critical = criticalPointOf(z, code, text);
    if (code > 0 || std::abs(T / critical.T - 1) > besideT || std::abs(p / critical.p - 1) > besideP) return false;
    for (const int kph : {1, 2}) {
        double D = critical.D;
        TPRHO(T, p, z, kph, 1, D, code, text);
        if (code > 0 || !hardlyFallsApart(T, D, z) || !singlePhaseAtTP(T, p, z, kph, D, 213, "", r)) continue;
        r.q = regionQuality(T, p, r.D, critical);
        return true;
    }
    return false;
}

// Whether a single phase is one; else both of which it is made take its place. False after the error.
bool isOnePhaseAtTP(double T, double p, const Composition& z, FlashResult& r) {
    if (r.Dl != r.Dv || !farApart(z)) return true;
    const CriticalPoint critical = criticalPointOf(z);
    if (!isMetastableBesideLines(r, z, critical) || solveByStability(T, p, z, critical, noLine, noLine, r)) return true;
    clear(r, 0, z);
    reportError("TP", 219, "outer iteration loop for composition in 2-phase state did not converge:  ",
                Text255("one phase is not stable"), r.ierr, r.herr);
    return false;
}

// True if a pressure of a pure fluid lies between the end of its equation's saturation line and its critical pressure,
// which is a measured one: there is one phase, as above.
bool aboveEquationsLine(double p, int icomp, const SaturatedPair& line, const CriticalPoint& critical) {
    return icomp > 0 && line.ierr > 0 && p > 0.99 * critical.p;
}

// Steps of TPFLSH after the limits; finished leaves the last checks to it.
Road solveAtTP(double& T, double p, const Composition& z, int icomp, FlashResult& r) {
    CriticalPoint critical;
    if (!criticalPoint("TP", 210, z, critical, r)) return Road::failed;
    const double c = icomp > 0 ? 1.0 : 1.5;
    const bool plainPure = icomp > 0 && !isPseudoPure(icomp);
    const bool ancillaryLines = isPseudoPure(icomp);

    // Below the triple point of a pure fluid there is vapor only.
    if (icomp > 0 && T < fluidConstants.TTPN[icomp]) {
        if (!singlePhaseAtTP(T, p, z, 2, p / (fluidConstants.R * T), 214,
                             "vapor density iteration did not converge:  ", r)) {
            return Road::failed;
        }
        r.q = superheatedVapor;
        return Road::finished;
    }

    const bool gasDissolves = icomp == 0 && gasOverLiquid(T, z) && mayBeTwoPhase(T, p, z, critical);
    const bool beyondLines = T >= c * critical.T || p > c * critical.p;
    if (gasDissolves && beyondLines) {
        if (solveByStability(T, p, z, critical, noLine, noLine, r)) return Road::finished;
        clear(r, icomp, z);
    }

    // Single phase by inspection.
    while (!gasDissolves) {
        const double pb = lowestSaturationPressure(T, critical, icomp, z);
        if (!(beyondLines || p < pb)) break;
        const int kph = T < critical.T && p > critical.p ? 1 : 2;
        if (singlePhaseAtTP(T, p, z, kph, 0, 215, "supercritical or vapor density iteration did not converge:  ", r)) {
            if (p <= critical.p) {
                r.q = superheatedVapor;
            } else {
                r.q = T < critical.T ? subcooledLiquid : supercriticalOrNone;
            }
            return Road::finished;
        }
        if (icomp > 0 || T >= 1.1 * critical.T) return Road::failed;
        T = 1.1 * critical.T;
    }

    // Dew point.
    SaturatedPair dew;
    {
        const SilentMessages quiet;
        saturationAtT(T, z, 2, dew);
    }
    bool dewPointMissing = false;
    // where a mixture has a line, or may have one, that SATT has not found
    const bool tellsStability = icomp == 0 && modelTags.HEOS == "HMX" && !pengRobinsonSelected();
    const bool lineMayHide = tellsStability && T > critical.T - 5;
    SaturatedPair bubble;
    const bool dewFound = dew.ierr <= 0;
    if (dew.ierr > 0) {
        if (lineMayHide && !beyondSaturation(T, z, critical)) {
            {
                const SilentMessages quiet;
                saturationAtT(T, z, 1, bubble);
            }
            if (solveByStability(T, p, z, critical, bubble, dew, r)) return Road::finished;
            clear(r, icomp, z);
        }
        if (T > critical.T - 5) {
            replaceByCritical(dew, critical, r.x);
        } else if (icomp > 0) {
            reportError("TP", 212, noDewPoint, dew.herr, r.ierr, r.herr);
            return Road::failed;
        } else {
            dew.p = 0;
            dewPointMissing = true;
        }
    }
    if (p < dew.p) {
        if (!singlePhaseAtTP(T, p, z, 2, dew.Dv * p / dew.p, 214, "vapor density iteration did not converge:  ", r)) {
            return Road::failed;
        }
        r.q = superheatedVapor;
        if (!ancillaryLines && T < critical.T) r.q = enthalpyQuality(r.h, T, dew);
        return Road::finished;
    }
    if (plainPure) {
        if (!singlePhaseAtTP(T, p, z, 1, dew.Dl, 213, "liquid density iteration did not converge:  ", r)) {
            return Road::failed;
        }
        r.q = std::abs(dew.Dv - dew.Dl) > 1e-12 ? volumeQuality(r.D, dew.Dl, dew.Dv) : subcooledLiquid;
        return Road::finished;
    }

    // Bubble point.
    {
        const SilentMessages quiet;
        saturationAtT(T, z, 1, bubble);
    }
    const bool bubbleFound = bubble.ierr <= 0;
    if (bubble.ierr > 0) {
        const bool beside = T > critical.T - 5;
        if (tellsStability && (dewFound || !beside || farApart(z))) {
            if (solveByStability(T, p, z, critical, bubble, dew, r)) return Road::finished;
            clear(r, icomp, z);
        }
        if (beside && !gasDissolves) {
            replaceByCritical(bubble, critical, r.x);
        } else {
            reportError("TP", 211, noBubblePoint, bubble.herr, r.ierr, r.herr);
            return Road::failed;
        }
    }
    if (p >= bubble.p) {
        constexpr std::string_view what = "liquid density iteration did not converge:  ";
        if (!singlePhaseAtTP(T, p, z, 1, bubble.Dl, 213, what, r)) return Road::failed;
        // The lines may have ended before the last of the two phases.
        if (lineMayHide && dewFound && bubbleFound && p < besideBubbleLine * bubble.p && fallsApart(T, r.D, z)) {
            if (solveByStability(T, p, z, critical, bubble, dew, r)) return Road::finished;
            clear(r, icomp, z);
            if (!singlePhaseAtTP(T, p, z, 1, bubble.Dl, 213, what, r)) return Road::failed;
        }
        // A root between the lines is no liquid; at the very line the root may fall a rounding below. The critical
        // point in the place of a line that was not found tells nothing.
        if (dewFound && bubbleFound && r.D > dew.Dv && r.D < bubble.Dl * (1 - 1e-8)) {
            noState(r);
            reportError("TP", 213, what, Text255{}, r.ierr, r.herr);
            return Road::failed;
        }
        if (std::abs(dew.Dv - bubble.Dl) > 1e-12 && dew.Dv > 0) {
            r.q = volumeQuality(r.D, bubble.Dl, dew.Dv);
        }
        return Road::finished;
    }
    if (dewPointMissing) {
        if (tellsStability && solveByStability(T, p, z, critical, bubble, dew, r)) return Road::finished;
        clear(r, icomp, z);
        reportError("TP", 212, noDewPoint, dew.herr, r.ierr, r.herr);
        return Road::failed;
    }

    // Two phases.
    r.q = 1 - (p - dew.p) / (bubble.p - dew.p);
    if (std::abs(1 - bubble.p / dew.p) < 1e-6 && !ancillaryLines) r.q = 0.5;
    r.Dl = bubble.Dl;
    r.Dv = dew.Dv;
    if (!ancillaryLines) {
        compositionsAtQuality(r.q, z, dew.x, bubble.y, r.x, r.y);
        {
            const SilentMessages quiet;
            if (twoPhasesAtTP(T, p, z, critical, r)) return Road::finished;
        }
        const int code = r.ierr;
        const Text255 text = r.herr;
        if (tellsStability && solveByStability(T, p, z, critical, bubble, dew, r)) return Road::finished;
        r.q = supercriticalOrNone;
        r.D = critical.D;
        r.ierr = code;
        r.herr = text;
        ERRMSG(r.ierr, r.herr);
        return Road::failed;
    }
    fillTwoPhase(T, r);
    return Road::finished;
}

// Refuses a state whose inputs are outside the limits: densities zero, properties of the ideal gas at T.
void refuse(std::string_view ab, double T, const Composition& z, const EosLimits& limits, FlashResult& r) {
    if (T > 0) fillSinglePhase(T, 0, z, r);
    noState(r);
    reportLimits(ab, limits, r);
}

}  // namespace

void TPFLSH(double& T, double p, const Composition& z, double& D, double& Dl, double& Dv, Composition& x,
            Composition& y, double& q, double& e, double& h, double& s, double& cv, double& cp, double& w, int& ierr,
            Text255& herr) {
    FlashResult r{T, p, D, Dl, Dv, x, y, q, e, h, s, cv, cp, w, ierr, herr};
    const int icomp = openFlash(z, r);

    if (refuseInputs("TP", {{'T', T, 1}, {'P', p, 4}}, r)) return;
    if (p >= 0 && p < idealGasPressure) {
        fillSinglePhase(T, p / (fluidConstants.R * T), z, r);
        return;
    }

    const EosLimits limits = limitsAt(T, 0, p, z);
    if (limits.code > 0) {
        refuse("TP", T, z, limits, r);
        return;
    }

    const double given = T;
    if (solveAtTP(T, p, z, icomp, r) == Road::failed) {
        const int code = r.ierr;
        const Text255 text = r.herr;
        if (icomp > 0 || !onePhaseAtCriticalPoint(T, p, z, r)) {
            r.ierr = code;
            r.herr = text;
            return;
        }
    } else if (icomp == 0 && !isOnePhaseAtTP(T, p, z, r)) {
        return;
    }

    r.ierr = 0;
    r.herr.clear();
    reportLimits("TP", limits, r);
    const bool tooDense = D > limits.Dmax;
    if (T != given && !tooDense) {
        ierr = -215;
        message(herr,
                "[TPFLSH warning 215] supercritical density iteration did not converge; the temperature has been "
                "changed from",
                General{12, 5, given}, " K to 1.1 Tcrit =", General{12, 5, T}, " K.", nullCharacter);
        ERRMSG(ierr, herr);
    }
    if (tooDense) {
        ierr = 2;
        message(herr, "[TPFLSH error", Integer{3, ierr},
                "]; input T,p correspond to a density above the limit of the EOS; T =", General{12, 5, T},
                " K, p =", General{12, 5, p / 1000}, " MPa.", nullCharacter);
        ERRMSG(ierr, herr);
    }
}

// ---------------------------------------------------------------------------------------------------------------
// Given temperature and density.

void TDFLSH(double T, double D, const Composition& z, double& p, double& Dl, double& Dv, Composition& x, Composition& y,
            double& q, double& e, double& h, double& s, double& cv, double& cp, double& w, int& ierr, Text255& herr) {
    double bulk = D;
    FlashResult r{T, p, bulk, Dl, Dv, x, y, q, e, h, s, cv, cp, w, ierr, herr};
    const int icomp = openFlash(z, r);
    p = 0;

    if (refuseInputs("TD", {{'T', T, 1}, {'D', D, 2}}, r)) return;
    if (D >= 0 && D < idealGasDensity) {
        p = D * fluidConstants.R * T;
        fillSinglePhase(T, D, z, r);
        return;
    }

    const EosLimits limits = limitsAt(T, D, 0, z);
    if (limits.code > 0) {
        refuse("TD", T, z, limits, r);
        return;
    }
    CriticalPoint critical;
    if (!criticalPoint("TD", 220, z, critical, r)) return;

    const bool plainPure = icomp > 0 && !isPseudoPure(icomp);
    constexpr double thinGas = 1e-10;  // [mol/L], without lines
    if ((icomp > 0 && T < fluidConstants.TTPN[icomp]) || T >= critical.T || D < thinGas) {
        p = fillSinglePhase(T, D, z, r);
        q = p <= critical.p ? superheatedVapor : supercriticalOrNone;
        // a thin gas has more pressure than what is left where a part of it condenses
        const double highest = D < thinGas ? p : 1.5 * critical.p;
        if (isMetastable(T, p, D, z, critical) && !solveOnIsotherm(T, D, 'D', z, highest, p, r)) {
            noState(r);
            reportError("TD", 222, noDewPoint, Text255{}, ierr, herr);
            return;
        }
    } else {
        SaturatedPair dew;
        saturationAtT(T, z, 2, dew);
        if (dew.ierr > 0) {
            if (icomp == 0 && solveOnIsotherm(T, D, 'D', z, 1.5 * critical.p, p, r)) return;
            reportError("TD", 222, noDewPoint, dew.herr, ierr, herr);
            return;
        }
        SaturatedPair bubble;
        if (plainPure) {
            bubble = dew;
        } else {
            saturationAtT(T, z, 1, bubble);
            if (bubble.ierr > 0 && icomp == 0 && solveOnIsotherm(T, D, 'D', z, 1.5 * critical.p, p, r)) return;
            if (bubble.ierr > 0) {
                // The text names the flash at temperature and pressure, as those who look for it expect.
                reportError("TP", 221, noBubblePoint, bubble.herr, ierr, herr);
                return;
            }
        }

        if (D <= dew.Dv || D >= bubble.Dl) {
            p = fillSinglePhase(T, D, z, r);
            q = std::abs(bubble.Dl - dew.Dv) > 1e-12 ? volumeQuality(D, bubble.Dl, dew.Dv)
                                                     : (D >= bubble.Dl ? subcooledLiquid : superheatedVapor);
            if (isMetastableBesideLines(r, z, critical) && !solveOnIsotherm(T, D, 'D', z, 1.5 * critical.p, p, r)) {
                noState(r);
                reportError("TD", 222, noDewPoint, Text255{}, ierr, herr);
                return;
            }
        } else {
            if (icomp > 0) {
                q = volumeQuality(D, bubble.Dl, dew.Dv);
                p = q * dew.p + (1 - q) * bubble.p;
                Dl = bubble.Dl;
                Dv = dew.Dv;
            } else {
                double Tbub = T;
                double Tdew = T;
                TDFL2(T, D, z, 1, Tbub, Tdew, bubble.p, dew.p, bubble.Dl, dew.Dv, bubble.y, dew.x, p, Dl, Dv, x, y, q,
                      ierr, herr);
                if (ierr > 0) {
                    const int code = ierr;
                    const Text255 text = herr;
                    if (solveOnIsotherm(T, D, 'D', z, 1.5 * critical.p, p, r)) return;
                    noState(r);
                    ierr = code;
                    herr = text;
                    return;
                }
            }
            const PhasePressures pressures = fillTwoPhase(T, r);
            if (modelTags.NC >= 2) p = pressures.vapor;
        }
    }

    // The given limits once more, now with the pressure; a mixture's warning of its iteration gives way to them only
    // where there is one.
    reportLimits("TD", limitsAt(T, D, p, z), r);
}

// ---------------------------------------------------------------------------------------------------------------
// Given pressure and density.

namespace {

// On the isochore of a cold liquid the pressure has a second root, colder, where it falls with density.
bool insideSpinodal(double T, double D, const Composition& z) {
    double slope = 0;
    DPDD(T, D, z, slope);
    return !(slope > 0);
}

}  // namespace

void PDFLSH(double p, double D, const Composition& z, double& T, double& Dl, double& Dv, Composition& x, Composition& y,
            double& q, double& e, double& h, double& s, double& cv, double& cp, double& w, int& ierr, Text255& herr) {
    double bulk = D;
    FlashResult r{T, p, bulk, Dl, Dv, x, y, q, e, h, s, cv, cp, w, ierr, herr};
    const int icomp = openFlash(z, r);
    T = 0;

    if (refuseInputs("PD", {{'P', p, 4}, {'D', D, 2}}, r)) return;
    if (p >= 0 && p < idealGasPressure && D < idealGasDensity) {
        T = p / (fluidConstants.R * D);
        if (refuseInputs("PD", {{'T', T, 1}}, r)) return;
        fillSinglePhase(T, D, z, r);
        return;
    }

    CriticalPoint critical;
    if (!criticalPoint("PD", 210, z, critical, r)) return;
    const EosLimits limits = limitsAt(-1, D, p, z);
    if (limits.code > 0) {
        refuse("PD", 0, z, limits, r);
        return;
    }

    // Temperature of a single phase, or the error with its code and text.
    const auto singlePhase = [&](int code, std::string_view what) {
        Text255 inner;
        PDFL1(p, D, z, T, ierr, inner);
        if (ierr <= 0) {
            fillSinglePhase(T, D, z, r);
            ierr = 0;
            return true;
        }
        noState(r);
        T = 0;
        reportError("PD", code, what, inner, ierr, herr);
        return false;
    };

    // The state where the lines do not tell its phases: one, or on the isobar two.
    const auto withoutLines = [&] {
        if (!singlePhase(215, "supercritical density iteration did not converge:  ")) return false;
        q = T <= critical.T ? subcooledLiquid : supercriticalOrNone;
        if (!isMetastable(T, p, D, z, critical)) return true;
        return solveOnIsobar(p, D, 'D', z, limits.tmin, aboveTwoPhases(z, critical), T, r);
    };

    // Whether a single phase outside of the lines is one; else the state of the isobar takes its place, from a
    // temperature downward. False after the error.
    const auto isOnePhase = [&](double hot) {
        if (icomp > 0 || !(insideSpinodal(T, D, z) || isMetastableBesideLines(r, z, critical))) return true;
        if (solveOnIsobar(p, D, 'D', z, limits.tmin, hot, T, r)) return true;
        noState(r);
        T = 0;
        reportError("PD", 213, "liquid density iteration did not converge:  ", Text255{}, ierr, herr);
        return false;
    };

    const bool plainPure = icomp > 0 && !isPseudoPure(icomp);
    SaturatedPair dew;
    const bool noLiquid = plainPure && p <= fluidConstants.PTPN[icomp];
    if (p < critical.p && !noLiquid) {
        const SilentMessages quiet;
        saturationAtP(p, z, 2, dew);
    }
    if (p >= critical.p || aboveEquationsLine(p, icomp, dew, critical)) {
        if (!withoutLines()) {
            if (ierr <= 0) reportError("PD", 212, noDewPoint, Text255{}, ierr, herr);
            noState(r);
            return;
        }
    } else {
        if (dew.ierr > 0 && icomp == 0 && withoutLines()) {
            reportLimits("PD", limitsAt(T, D, p, z), r);
            return;
        }
        if (dew.ierr > 0) {
            reportError("PD", 212, noDewPoint, dew.herr, ierr, herr);
            return;
        }
        if (noLiquid || D <= dew.Dv + 1e-12) {
            if (!singlePhase(214, "vapor density iteration did not converge:  ")) return;
            q = superheatedVapor;
            if (!isPseudoPure(icomp) && dew.T > 0) q = enthalpyQuality(h, dew.T, dew);
            if (!isOnePhase(aboveTwoPhases(z, critical))) return;
        } else {
            SaturatedPair bubble;
            if (plainPure) {
                bubble = dew;
            } else {
                saturationAtP(p, z, 1, bubble);
            }
            if (bubble.ierr > 0) {
                if (icomp == 0 && solveOnIsobar(p, D, 'D', z, limits.tmin, aboveTwoPhases(z, critical), T, r)) return;
                reportError("PD", 211, noBubblePoint, bubble.herr, ierr, herr);
                return;
            }
            if (D > bubble.Dl) {
                if (!singlePhase(213, "liquid density iteration did not converge:  ")) return;
                q = volumeQuality(D, bubble.Dl, dew.Dv);
                const bool onLine = insideSpinodal(T, D, z);
                if (!isOnePhase(onLine ? bubble.T * (1 + 1e-9) : aboveTwoPhases(z, critical))) return;
            } else {
                double pSolved = p;
                if (icomp > 0) {
                    q = volumeQuality(D, bubble.Dl, dew.Dv);
                    T = (1 - q) * bubble.T + q * dew.T;
                    Dl = bubble.Dl;
                    Dv = dew.Dv;
                    if (!plainPure) PTANC(T, pSolved, q, D, 'D', Dl, Dv);
                } else {
                    double pbub = p;
                    double pdew = p;
                    PDFL2(p, D, z, 1, bubble.T, dew.T, pbub, pdew, bubble.Dl, dew.Dv, bubble.y, dew.x, T, Dl, Dv, x, y,
                          q, ierr, herr);
                    if (ierr > 0) {
                        const int code = ierr;
                        const Text255 text = herr;
                        if (solveOnIsobar(p, D, 'D', z, limits.tmin, dew.T * (1 + 1e-9), T, r)) return;
                        noState(r);
                        ierr = code;
                        herr = text;
                        return;
                    }
                }
                fillTwoPhase(T, r);
            }
        }
    }

    reportLimits("PD", limitsAt(T, D, p, z), r);
}

// ---------------------------------------------------------------------------------------------------------------
// Given pressure and enthalpy, entropy or energy.

namespace {

// Fluids whose melting line turns so far from the triple temperature that liquid under pressure has less entropy than
// at their lowest temperature, with a temperature [K] near the lowest entropy of that line.
struct LowEntropyOnMeltingLine {
    std::string_view cas;
    double T;
};
constexpr LowEntropyOnMeltingLine lowEntropyFluids[] = {
    {"7732-18-5", 251.18},  // water
    {"124-38-9", 244.8},    // carbon dioxide
    {"7664-41-7", 200.2},   // ammonia
    {"7440-59-7", 2.178},   // helium
};

// Value of the property at T in the liquid at pressure p; false where there is no density root.
bool liquidValue(char letter, double T, double p, const Composition& z, double& value) {
    double D = 0;
    int code = 0;
    Text255 text;
    TPRHO(T, p, z, 1, 0, D, code, text);
    if (code > 0) return false;
    value = propertyByLetter(letter, T, D, z);
    return true;
}

// Least value of the property for which a state can be sought at pressure p.
double lowestValue(char letter, double b, double p, int icomp, const Composition& z, double tmin, double tmax,
                   double highest) {
    constexpr double pLow = 100;  // [kPa]
    double T = tmin;
    double lowest = 0;
    while (!liquidValue(letter, T, pLow, z, lowest) && T < tmax) T += 5;
    if (letter == 'S' && icomp > 0) {
        for (const LowEntropyOnMeltingLine& fluid : lowEntropyFluids) {
            if (!(fluidFiles.HCAS[icomp] == fluid.cas)) continue;
            double pMelt = 0;
            double sMelt = 0;
            int code = 0;
            Text255 text;
            MELTT(fluid.T, z, pMelt, code, text);
            if (code == 0 && liquidValue(letter, fluid.T, pMelt, z, sMelt)) lowest = std::min(lowest, sMelt);
        }
    }
    if (lowest > highest) {
        T = tmin + 20;
        liquidValue(letter, T, pLow, z, lowest);
    }
    if (b >= lowest) return lowest;

    // The property may fall at first on the way up from the lowest temperature.
    const double start = T;
    double change = 0;
    double next = 0;
    while (T < tmax && liquidValue(letter, T + 1, pLow, z, next) && next < lowest) {
        change = lowest - next;
        lowest = next;
        T += 1;
    }
    if (T - start > 1.1) lowest -= 2 * change;
    if (b >= lowest) return lowest;

    // At the given pressure the liquid may have less: less entropy and energy under more pressure, less enthalpy under
    // less.
    double there = 0;
    if (liquidValue(letter, tmin, p, z, there)) lowest = std::min(lowest, there);
    return lowest;
}

// The critical state, which a refused flash returns.
void returnCritical(const CriticalPoint& critical, const Composition& z, FlashResult& r) {
    r.T = critical.T;
    fillSinglePhase(critical.T, critical.D, z, r);
    r.q = supercriticalOrNone;
}

}  // namespace

void PBFLSH(double p, double b, const Composition& z, std::string_view ab, double& T, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& q, double& e, double& h, double& s, double& cv, double& cp,
            double& w, int& ierr, Text255& herr) {
    FlashResult r{T, p, D, Dl, Dv, x, y, q, e, h, s, cv, cp, w, ierr, herr};
    const char letter = ab[1];
    const int icomp = openFlash(z, r);

    CriticalPoint critical;
    const bool hasCritical = criticalPoint(ab, 240, z, critical, r);
    T = critical.T;
    if (!hasCritical) return;
    if (refuseInputs(ab, {{'P', p, 4}, {letter, b, 249}}, r)) {
        returnCritical(critical, z, r);
        return;
    }
    const EosLimits limits = limitsAt(-1, 0, p, z);
    const auto checkLimits = [&] {
        const EosLimits found = limitsAt(T, D, p, z);
        ierr = 0;
        herr.clear();
        if (found.code == 0) return;
        ierr = found.code;
        message(herr, "[", ab, "FLSH error", Integer{3, found.code}, "]; ", innerText(found.text), nullCharacter);
        ERRMSG(ierr, herr);
    };
    if (icomp > 0 && flashPureOnIsobar(letter, p, b, icomp, z, critical, limits, r)) {
        checkLimits();
        return;
    }

    // Range of the given property.
    double highest = propertyByLetter(letter, 1.5 * limits.tmax, 1e-6, z);
    if (b > highest && p > 0) {
        // Under very high pressures a dense gas has more than the thin one.
        double Ddense = 0;
        int code = 0;
        Text255 text;
        TPRHO(1.5 * limits.tmax, p, z, 2, 0, Ddense, code, text);
        if (code <= 0) highest = std::max(highest, propertyByLetter(letter, 1.5 * limits.tmax, Ddense, z));
    }
    if (b > highest && icomp == 0) {
        // The heat capacity of a component far above its own limit may be negative, and cooler gases have more.
        for (const double share : {1.0, 0.7, 0.5})
            highest = std::max(highest, propertyByLetter(letter, share * limits.tmax, 1e-6, z));
    }
    const auto onIsobar = [&](double hot) { return solveOnIsobar(p, b, letter, z, limits.tmin, hot, T, r); };
    const double lowest = lowestValue(letter, b, p, icomp, z, limits.tmin, limits.tmax, highest);
    if (std::abs(limits.code) > 1) reportLimits(ab, limits, r, 4);
    if (limits.code > 1) {
        returnCritical(critical, z, r);
        return;
    }
    // two phases may have less than the coldest liquid
    if (b < lowest && icomp == 0 && farApart(z) && onIsobar(aboveTwoPhases(z, critical))) {
        checkLimits();
        return;
    }
    if (!(b >= lowest && b <= highest)) {
        ierr = 249;
        message(herr, "[", ab, "FLSH error", Integer{4, ierr}, "] Input value is outside limits; ", ab.substr(1, 1),
                " =", General{12, 5, b}, ", min,max =", General{12, 5, lowest}, General{12, 5, highest}, nullCharacter);
        ERRMSG(ierr, herr);
        returnCritical(critical, z, r);
        return;
    }

    const auto solidState = [&] {
        ierr = 250;
        message(herr, "[", ab, "FLSH error", Integer{4, ierr}, "]; input state is solid or two-phase solid-vapor",
                nullCharacter);
        ERRMSG(ierr, herr);
        noState(r);
    };
    const auto singlePhase = [&](int kph, double startT, double startD) {
        double pSolved = p;
        T = startT;
        D = startD;
        ABFL1(p, b, z, kph, ab, 0, limits.Dmax, T, pSolved, D, ierr, herr);
        if (ierr > 0) {
            noState(r);
            return false;
        }
        fillSinglePhase(T, D, z, r);
        return true;
    };

    // Supercritical, or a vapor beyond any doubt.
    bool aboveDome = p >= critical.p || p < 1e-12;
    if (!aboveDome && letter == 'H') aboveDome = b > propertyByLetter('H', critical.T, 0, z);
    if (!aboveDome && letter == 'S') {
        double Dvapor = 0;
        int code = 0;
        Text255 text;
        // At the critical temperature itself only a forced side is the vapor's.
        TPRHO(critical.T, p, z, -2, 0, Dvapor, code, text);
        if (code <= 0) aboveDome = b > propertyByLetter('S', critical.T, Dvapor, z);
    }
    const auto byInspection = [&] {
        const double atCritical = propertyByLetter(letter, critical.T, critical.D, z);
        const double startD = p >= critical.p ? 2 * critical.D : 0;
        // below the critical pressure the side of the density is not chosen by the state
        if (p < critical.p && b < atCritical && icomp > 0) return singlePhase(1, 0.8 * critical.T, 0);
        const double startT = b < atCritical / 2 ? 0.8 * critical.T : critical.T + 10;
        return singlePhase(2, startT, startD) || singlePhase(2, 1.2 * critical.T, startD) ||
               singlePhase(2, critical.T, startD);
    };
    const auto hotterThanAny = [&] { return std::max({1.3 * critical.T, 1.05 * T, hottestComponent(z)}); };
    // One phase by inspection; two of a mixture where that one falls apart.
    const auto withoutLines = [&] {
        const bool one = byInspection();
        if (one && !isMetastable(T, p, D, z, critical)) {
            q = regionQuality(T, p, D, critical);
        } else if (!(icomp == 0 && onIsobar(hotterThanAny()))) {
            if (one) reportError(ab, 242, noDewPoint, Text255{}, ierr, herr);
            return false;
        }
        checkLimits();
        return true;
    };
    if (aboveDome) {
        if (!withoutLines() && ierr <= 0) noState(r);
        return;
    }

    // Dew point.
    const bool plainPure = icomp > 0 && !isPseudoPure(icomp);
    SaturatedPair dew;
    SaturatedPair bubble;
    bool belowTriplePressure = false;
    {
        const SilentMessages quiet;
        saturationAtP(p, z, 2, dew);
        if (dew.ierr == 2) {
            belowTriplePressure = true;
            // The equation of water reaches below its triple point, where ice melts under pressure.
            saturationAtT(std::max(limits.tmin, icomp > 0 ? fluidConstants.TTPN[icomp] : 0.0), z, 2, dew);
        }
    }
    // A single phase on its side of the lines.
    const auto besideTheLines = [&](int kph, const SaturatedPair& line, double side) {
        if (!singlePhase(kph, line.T, kph == 1 ? line.Dl : line.Dv)) return false;
        q = side;
        if (isMetastableBesideLines(r, z, critical) && !onIsobar(hotterThanAny())) {
            noState(r);
            reportError(ab, 242, noDewPoint, Text255{}, ierr, herr);
            return false;
        }
        return true;
    };
    if (dew.ierr > 0) {
        {
            const SilentMessages quiet;
            saturationAtP(p, z, 1, bubble);
        }
        if (bubble.ierr <= 0 && b < propertyByLetter(letter, bubble.T, bubble.Dl, z)) {
            besideTheLines(1, bubble, subcooledLiquid);
            return;
        }
        // Of a mixture the critical pressure is an estimate: above the true one there are no lines. The equation of a
        // pure fluid may end its line below the critical pressure of the fluid.
        if (aboveEquationsLine(p, icomp, dew, critical) || (icomp == 0 && bubble.ierr > 0 && modelTags.HEOS == "HMX")) {
            bool solved = false;
            {
                const SilentMessages quiet;
                solved = withoutLines();
            }
            if (solved) return;
        }
        reportError(ab, 242, noDewPoint, dew.herr, ierr, herr);
        returnCritical(critical, z, r);
        return;
    }
    const double valueAtDew = propertyByLetter(letter, dew.T, dew.Dv, z);

    if (b >= valueAtDew) {
        if (besideTheLines(2, dew, superheatedVapor)) checkLimits();
        return;
    }

    // Below the triple point the vapor stands beside a solid: a saturated state without liquid density, or with the
    // lowest temperature in place of its own.
    if (dew.Dl <= 0 || belowTriplePressure) {
        solidState();
        return;
    }

    // Bubble point.
    if (plainPure) {
        bubble = dew;
    } else {
        {
            const SilentMessages quiet;
            saturationAtP(p, z, 1, bubble);
        }
        if (bubble.ierr > 0) {
            if (icomp == 0 && onIsobar(dew.T * (1 + 1e-9))) {
                checkLimits();
                return;
            }
            if (p <= 0.9 * critical.p) {
                reportError(ab, 241, noBubblePoint, bubble.herr, ierr, herr);
                returnCritical(critical, z, r);
                return;
            }
            replaceByCritical(bubble, critical, r.x);
            bubble.T = critical.T;
        }
    }
    const double valueAtBubble = propertyByLetter(letter, bubble.T, bubble.Dl, z);
    q = valueAtDew - valueAtBubble > 1e-20 ? (b - valueAtBubble) / (valueAtDew - valueAtBubble) : superheatedVapor;

    if (b <= valueAtBubble) {
        if (besideTheLines(1, bubble, q)) checkLimits();
        return;
    }

    // Two phases.
    if (icomp > 0) {
        T = (1 - q) * bubble.T + q * dew.T;
        if (T < limits.tmin) {
            solidState();
            return;
        }
        Dl = bubble.Dl;
        Dv = dew.Dv;
        if (!plainPure) {
            double pSolved = p;
            PTANC(T, pSolved, q, b, letter, Dl, Dv);
        }
    } else {
        double pbub = p;
        double pdew = p;
        double pSolved = p;
        ABFL2(p, b, z, 1, 1, ab, bubble.T, dew.T, pbub, pdew, bubble.Dl, dew.Dv, bubble.y, dew.x, T, pSolved, Dl, Dv, x,
              y, q, ierr, herr);
        if (ierr > 0) {
            const int code = ierr;
            const Text255 text = herr;
            if (onIsobar(dew.T * (1 + 1e-9))) {
                checkLimits();
                return;
            }
            noState(r);
            ierr = code;
            herr = text;
            return;
        }
    }
    fillTwoPhase(T, r);
    checkLimits();
}

}  // namespace frigana
