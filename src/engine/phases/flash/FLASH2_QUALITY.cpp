// Flash at given temperature or pressure and quality.
#include <cmath>

#include "CriticalPoint.h"
#include "FLASH2.h"
#include "FLSH_SUB.h"
#include "FLSH_SUB_STABILITY.h"
#include "FlashBricks.h"
#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "SAT_SUB_NEWTON.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

namespace {

constexpr double onTheLine = 1e-8;  // a quality, or a mole fraction, within this of 0 or 1 is 0 or 1

// A composition with one fraction of 1 within 1e-8 is that pure component; 0 for a mixture.
int nearlyPureComponent(const Composition& z) {
    int icomp = 0;
    ISPURE(z, icomp);
    if (icomp > 0) return icomp;
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (std::abs(z[i] - 1) < onTheLine) return i;
    }
    return 0;
}

// What is given to a flash at quality: T or p, as the first of its letters says, and q.
struct GivenQuality {
    std::string_view ab;
    double value, q;
    int kq, icomp;
    const Composition& z;

    bool atT() const { return ab[0] == 'T'; }
    bool pseudoPure() const { return isPseudoPure(icomp); }
    // A pure fluid has one line: both phases are found together.
    bool oneLine() const { return icomp > 0 && !pseudoPure(); }
    void saturation(int kph, SaturatedPair& pair) const {
        atT() ? saturationAtT(value, z, kph, pair) : saturationAtP(value, z, kph, pair);
    }
};

// An error of an inner routine, with its code: "[TQFLSH error] (sat liquid):  ..."
void pass(const GivenQuality& given, std::string_view where, int code, const Text255& inner, FlashResult& r) {
    r.ierr = code;
    message(r.herr, "[", given.ab, "FLSH error] (", where, "):  ", innerText(inner), nullCharacter);
    ERRMSG(r.ierr, r.herr);
}

bool found(const GivenQuality& given, std::string_view where, const SaturatedPair& pair, FlashResult& r) {
    if (pair.ierr <= 0) return true;
    pass(given, where, pair.ierr, pair.herr, r);
    return false;
}

// Molar share of the vapor in averages: the quality itself, or that of a mass quality.
double molarShare(double q, int kq, const Composition& x, const Composition& y) {
    return kq == 2 ? molarShare(q, x, y) : q;
}

void fillBetweenLines(double share, FlashResult& r) {
    r.q = share;
    fillTwoPhase(r.T, r);
    r.cv = r.cp = r.w = twoPhaseQualityValue;
}

// The saturated liquid (kph 1) or vapor (2). The other phase of a pseudo-pure fluid at given temperature is that of the
// other line.
void saturatedEnd(const GivenQuality& given, int kph, FlashResult& r) {
    const bool liquid = kph == 1;
    const std::string_view where = liquid ? "sat liquid" : "sat vapor";
    SaturatedPair line;
    given.saturation(kph, line);
    // On the sublimation line there is no liquid.
    if (liquid && !given.atT() && line.ierr <= 0 && line.Dl <= 0) line.ierr = 2;
    if (!found(given, where, line, r)) return;
    if (given.pseudoPure()) {
        SaturatedPair other;
        given.saturation(liquid ? 2 : 1, other);
        if (!found(given, where, other, r)) return;
        (liquid ? line.Dv : line.Dl) = liquid ? other.Dv : other.Dl;
    }
    takePair(line, r);
    r.D = liquid ? r.Dl : r.Dv;
    fillProperties(propertiesOf(r.T, r.D, liquid ? r.x : r.y), r);
}

// A state of a mixture by a walk to the share from the one line that it has there: the dew line (1) above its critical
// temperature, either above its critical pressure.
bool fromOneLine(const GivenQuality& given, const SaturatedPair& line, double shareOfLine, FlashResult& r) {
    constexpr double longest = 0.1, smallestStep = 1e-3;
    constexpr int mostSteps = 60;
    const double step = shareOfLine > given.q ? -longest : longest;
    PhasePair here = pairOf(line, shareOfLine);
    const auto solve = [&](double share, const PhasePair&, PhasePair& pair) {
        pair.q = share;
        return newtonAtConditions({given.atT() ? 'T' : 'P', given.value}, {'Q', share}, given.z, pair);
    };
    const auto seen = [](const PhasePair&, const PhasePair&) { return false; };
    if (walkLine({shareOfLine, given.q, step, smallestStep, mostSteps}, here, solve, seen) != WalkEnd::arrived)
        return false;
    takePair(here, r);
    r.ierr = 0;
    return true;
}

// The same without a line, of components far apart: from two phases at temperature and pressure.
bool fromTwoPhases(const GivenQuality& given, const CriticalPoint& critical, FlashResult& r) {
    constexpr int mostSteps = 40;
    constexpr double highest = 20, lessPressure = 0.6, lessTemperature = 0.95;
    const SilentMessages quiet;
    const bool atT = given.atT();
    double other = atT ? highest * critical.p : aboveTwoPhases(given.z, critical);
    for (int step = 1; step <= mostSteps; ++step, other *= atT ? lessPressure : lessTemperature) {
        r.T = atT ? given.value : other;
        r.p = atT ? other : given.value;
        TPFLSH(r.T, r.p, given.z, r.D, r.Dl, r.Dv, r.x, r.y, r.q, r.e, r.h, r.s, r.cv, r.cp, r.w, r.ierr, r.herr);
        if (r.ierr > 0 || !(r.q > 0 && r.q < 1)) continue;
        if (twoPhasesNear({given.ab[0], given.value}, {'Q', given.q}, given.z, r)) return true;
    }
    return false;
}

void betweenLines(const GivenQuality& given, FlashResult& r) {
    constexpr std::string_view where = "2-phase";
    const double q = given.q;
    SaturatedPair bubble;
    SaturatedPair dew;
    given.saturation(given.oneLine() ? 2 : 1, bubble);
    if (!given.atT() && bubble.ierr <= 0 && bubble.Dl <= 0) {
        // On the sublimation line there is no liquid to average with.
        bubble.ierr = 2;
        bubble.herr.assign("input state is solid or two-phase solid-vapor");
    }
    const bool walkable = given.icomp == 0 && given.kq != 2;
    if (bubble.ierr > 0 && walkable) {
        {
            const SilentMessages quiet;
            given.saturation(2, dew);
        }
        if (dew.ierr <= 0 && fromOneLine(given, dew, 1, r)) {
            fillBetweenLines(q, r);
            return;
        }
    }
    if (!found(given, where, bubble, r)) return;
    if (given.oneLine()) {
        dew = bubble;
    } else {
        given.saturation(2, dew);
    }
    if (dew.ierr > 0 && walkable && fromOneLine(given, bubble, 0, r)) {
        fillBetweenLines(q, r);
        return;
    }
    if (!found(given, where, dew, r)) return;
    r.Dl = bubble.Dl;
    r.Dv = dew.Dv;
    if (given.atT()) {
        r.p = (1 - q) * bubble.p + q * dew.p;
    } else {
        r.T = (1 - q) * bubble.T + q * dew.T;
    }
    if (given.icomp > 0) {
        if (given.pseudoPure() && !given.atT()) {
            double pSolved = r.p;
            double qSolved = q;
            PTANC(r.T, pSolved, qSolved, q, 'Q', r.Dl, r.Dv);
        }
        fillBetweenLines(q, r);
        return;
    }
    Text255 inner;
    compositionsAtQuality(q, given.z, dew.x, bubble.y, r.x, r.y);
    if (given.atT()) {
        TQFL2(r.T, q, given.z, given.kq, 1, bubble.p, dew.p, bubble.Dl, dew.Dv, bubble.y, dew.x, r.p, r.Dl, r.Dv, r.x,
              r.y, r.ierr, inner);
    } else {
        PQFL2(r.p, q, given.z, given.kq, 1, bubble.T, dew.T, bubble.Dl, dew.Dv, bubble.y, dew.x, r.T, r.Dl, r.Dv, r.x,
              r.y, r.ierr, inner);
    }
    if (r.ierr <= 0) TPRHO(r.T, r.p, r.x, 1, 1, r.Dl, r.ierr, inner);
    if (r.ierr <= 0) TPRHO(r.T, r.p, r.y, 2, 1, r.Dv, r.ierr, inner);
    if (r.ierr > 0) {
        pass(given, where, r.ierr, inner, r);
        return;
    }
    r.ierr = 0;
    fillBetweenLines(molarShare(q, given.kq, r.x, r.y), r);
}

// Two phases between the lines, or of components far apart wherever they are.
void twoPhases(const GivenQuality& given, const CriticalPoint& critical, FlashResult& r) {
    betweenLines(given, r);
    if (r.ierr <= 0 || given.icomp > 0 || given.kq == 2 || !farApart(given.z)) return;
    const PhasePair estimate{r.T, r.p, r.Dl, r.Dv, given.q, r.x, r.y};
    const int code = r.ierr;
    const Text255 text = r.herr;
    if (fromTwoPhases(given, critical, r)) {
        r.ierr = 0;
        r.herr.clear();
        fillBetweenLines(given.q, r);
        return;
    }
    clear(r, given.icomp, given.z);
    takePair(estimate, r);
    r.ierr = code;
    r.herr = text;
}

void qualityOutOfRange(const GivenQuality& given, int code, FlashResult& r) {
    r.ierr = code;
    message(r.herr, "[", given.ab, "FLSH error ", Integer{3, code},
            "] input quality is out of range; q =", General{12, 5, given.q}, "; quality must be between 0 and 1 ",
            nullCharacter);
    ERRMSG(r.ierr, r.herr);
}

}  // namespace

void TQFLSH(double T, double q, const Composition& z, int kq, double& p, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& e, double& h, double& s, double& cv, double& cp, double& w,
            int& ierr, Text255& herr) {
    double share = q;
    FlashResult r{T, p, D, Dl, Dv, x, y, share, e, h, s, cv, cp, w, ierr, herr};
    const int icomp = nearlyPureComponent(z);
    const Composition bulk = bulkComposition(icomp, z);
    RMIX(bulk);
    clear(r, icomp, z);
    p = 0;
    const GivenQuality given{"TQ", T, q, kq, icomp, bulk};

    if (refuseInputs("TQ", {{'T', T, 1}, {'Q', q, 275}}, r)) return;
    const EosLimits limits = limitsAt(T, 0, 0, bulk);
    if (limits.code > 0) {
        reportLimits("TQ", limits, r);
        return;
    }
    CriticalPoint critical;
    if (!criticalPoint("TQ", 270, bulk, critical, r)) return;
    if (T >= (icomp > 0 ? 1.0 : 1.5) * critical.T && !(icomp == 0 && gasOverLiquid(T, bulk))) {
        ierr = 271;
        message(herr,
                "[TQFLSH error 271] temperature input to temperature-quality flash is greater than critical "
                "temperature; T =",
                General{12, 5, T}, " K, Tcrit =", General{12, 5, critical.T}, " K.", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }

    if (std::abs(q) <= onTheLine) {
        saturatedEnd(given, 1, r);
    } else if (std::abs(1 - q) <= onTheLine) {
        saturatedEnd(given, 2, r);
    } else if (q < 0 || q > 1) {
        qualityOutOfRange(given, 275, r);
    } else {
        twoPhases(given, critical, r);
    }
    if (ierr <= 0) reportLimits("TQ", limits, r);
}

void PQFLSH(double p, double q, const Composition& z, int kq, double& T, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& e, double& h, double& s, double& cv, double& cp, double& w,
            int& ierr, Text255& herr) {
    double share = q;
    FlashResult r{T, p, D, Dl, Dv, x, y, share, e, h, s, cv, cp, w, ierr, herr};
    const int icomp = nearlyPureComponent(z);
    const Composition bulk = bulkComposition(icomp, z);
    RMIX(bulk);
    clear(r, icomp, z);
    T = 0;
    const GivenQuality given{"PQ", p, q, kq, icomp, bulk};

    if (refuseInputs("PQ", {{'P', p, 4}, {'Q', q, 295}}, r)) return;
    CriticalPoint critical;
    if (!criticalPoint("PQ", 290, bulk, critical, r)) return;
    const EosLimits limits = limitsAt(0.8 * critical.T, 0, p, bulk);
    if (limits.code > 0) {
        reportLimits("PQ", limits, r);
        return;
    }
    // where a gas may stand over a liquid at some temperature
    const bool gasDissolves = icomp == 0 && gasOverLiquid(std::nextafter(hottestComponent(bulk), 0.0), bulk);
    if (p >= (icomp > 0 ? 1.0 : 1.5) * critical.p && !gasDissolves) {
        ierr = 291;
        message(herr,
                "[PQFLSH error 291] pressure input to pressure-quality flash is greater than critical pressure; P =",
                General{12, 5, p / 1000}, " MPa, Pcrit =", General{12, 5, critical.p / 1000}, " MPa.", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }

    // A pseudo-pure fluid is solved between its lines at their very ends too.
    if (std::abs(q) <= onTheLine && !given.pseudoPure()) {
        saturatedEnd(given, 1, r);
    } else if (std::abs(1 - q) <= onTheLine && !given.pseudoPure()) {
        saturatedEnd(given, 2, r);
    } else if (q < -onTheLine || q > 1 + onTheLine) {
        qualityOutOfRange(given, 295, r);
    } else {
        twoPhases(given, critical, r);
    }
    if (ierr <= 0) reportLimits("PQ", limits, r);
}

}  // namespace frigana
