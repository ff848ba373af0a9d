#include <cmath>

#include "CORE_CPP.h"
#include "FLSH_SUB.h"
#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "ReferenceState.h"
#include "SAT_SUB.h"
#include "SETUP.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

namespace {

constexpr double sameValue = 1e-10;
constexpr double saturationPressureMark = -1.0;  // PREFI of a point on the boiling line
constexpr double vaporMark = -1.99;              // PREFI from here down: on the dew line
constexpr double normalPressure = 101.325;       // kPa
constexpr double iirTemperature = 273.15;        // K
constexpr double ashraeTemperature = 233.15;     // K
constexpr double iirEnthalpy = 200.0;            // J/g
constexpr double iirEntropy = 1.0;               // J/(g K)
constexpr double criticalMargin = 1.0;           // a reference point this near to the critical point is refused [K]

bool close(double a, double b) {
    return std::abs(a - b) <= sameValue;
}
bool isDefaultTag(const Text3& tag) {
    return tag == "DEF" || tag == "def";
}
bool isGiven(const Text3& tag) {
    return tag.startsWith("OT");
}

struct Outcome {
    int ierr = 0;
    Text255 herr{};
    // An error is not replaced by a warning.
    void keep(int code, const Text255& text) {
        if (code == 0 || (ierr > 0 && code < 0)) return;
        ierr = code;
        herr = text;
    }
};

// Temperature, pressure mark and the values of enthalpy and entropy to be reached by slot i; false for an unknown tag.
bool namedPoint(const Text3& tag, int i) {
    ReferenceState& state = referenceState;
    const double molarMass = fluidConstants.WMAS[i];
    state.HREF[i] = state.SREF[i] = 0.0;
    state.PREFI[i] = saturationPressureMark;
    if (tag == "IIR") {
        state.TREF[i] = iirTemperature;
        state.HREF[i] = iirEnthalpy * molarMass;
        state.SREF[i] = iirEntropy * molarMass;
    } else if (tag == "ASH") {
        state.TREF[i] = ashraeTemperature;
    } else if (tag == "NBP") {
        state.TREF[i] = fluidConstants.TNBP[i];
    } else if (tag == "NA" || tag == "NUL") {
        state.TREF[i] = 300.0;
        state.PREFI[i] = 0.000001;
    } else {
        return false;
    }
    return true;
}

void givenPoint(int i, double t, double p, double h, double s) {
    ReferenceState& state = referenceState;
    state.TREF[i] = t;
    state.PREFI[i] = p;
    state.HREF[i] = h;
    state.SREF[i] = s;
}

void defaultPoint(int i) {
    const ReferenceState& state = referenceState;
    givenPoint(i, state.TDEF[i], state.PDEF[i], state.HDEF[i], state.SDEF[i]);
}

// Tests a named point against the range of the equation of component i; returns the code, 0 if it is inside.
int outsideRange(const Text3& tag, int i, double tmin, Text255& text) {
    const ReferenceState& state = referenceState;
    const double tc = fluidConstants.TCRIT[i], tnbp = fluidConstants.TNBP[i];
    const Integer component{3, i};
    const Text3& fallback = state.HREFDF[i];
    const FixedPoint minimum{12, 5, tmin}, critical{12, 5, tc}, boiling{12, 5, tnbp};
    int code = 0;
    if (tag == "IIR") {
        if (tmin > iirTemperature) {
            code = 22;
            message(text, "[SETUP warning 22] minimum temperature for component ", component,
                    " is greater than IIR reference temperature; Tmin =", minimum,
                    " K, Tref = 273.15 K.; will use default (", fallback, "). ", nullCharacter);
        }
        if (tc < iirTemperature + criticalMargin) {
            code = 23;
            message(text, "[SETUP warning 23] critical temperature for component ", component,
                    " is less than IIR reference temperature; Tcrit =", critical,
                    " K, Tref = 273.15 K; will use default (", fallback, "). ", nullCharacter);
        }
    } else if (tag == "ASH") {
        if (tmin > ashraeTemperature) {
            code = 24;
            message(text, "[SETUP warning 24] minimum temperature for component ", component,
                    " is greater than ASHRAE reference temperature; Tmin =", minimum,
                    " K, Tref = 233.15 K; will use default (", fallback, "). ", nullCharacter);
        }
        if (tc < ashraeTemperature + criticalMargin) {
            code = 25;
            message(text, "[SETUP warning 25] critical temperature for component ", component,
                    " is less than ASHRAE reference temperature; Tcrit =", critical,
                    " K, Tref = 233.15 K; will use default (", fallback, "). ", nullCharacter);
        }
    } else if (tag == "NBP" && tmin > tnbp) {
        code = 26;
        message(text, "[SETUP warning 26] minimum temperature for component ", component,
                " is greater than boiling point temperature; Tmin =", minimum, " K, Tnbp =", boiling,
                " K; will use default (", fallback, "). ", nullCharacter);
    }
    return code;
}

// Density at a point on the boiling line (mark above -1.99) or on the dew line.
void saturatedDensity(double t, double mark, const Composition& x, double& rho, int& ierr, Text255& herr) {
    double p = 0.0, rhol = 0.0, rhov = 0.0;
    Composition xliq{}, xvap{};
    const int kph = mark >= vaporMark ? 1 : 2;
    SATT(t, x, kph, p, rhol, rhov, xliq, xvap, ierr, herr);
    rho = kph == 1 ? rhol : rhov;
}

void flashDensity(double t, double p, const Composition& x, double& rho, int& ierr, Text255& herr) {
    double Dl = 0.0, Dv = 0.0, q = 0.0, e = 0.0, h = 0.0, s = 0.0, cv = 0.0, cp = 0.0, w = 0.0;
    Composition xl{}, xv{};
    TPFLSH(t, p, x, rho, Dl, Dv, xl, xv, q, e, h, s, cv, cp, w, ierr, herr);
}

// Density of component i at its reference point; a positive ierr if it was not found.
void densityAtPoint(int i, int& ierr, Text255& herr) {
    ReferenceState& state = referenceState;
    const Text3& tag = state.HREFI[i];
    const Composition x = unitComposition(i);
    double rho = 0.0;
    ierr = 0;
    if (tag == "NBP") {
        double rhov = 0.0;
        Composition xliq{}, xvap{};
        SATP(normalPressure, x, 1, state.TREF[i], rho, rhov, xliq, xvap, ierr, herr);
        if (rho > 0.0) state.RHOREF[i] = rho;
    } else if (state.PREFI[i] < 0.0) {
        saturatedDensity(state.TREF[i], state.PREFI[i], x, rho, ierr, herr);
        state.RHOREF[i] = rho;
    } else if (tag == "OT0") {
        RMIX(x);
        state.RHOREF[i] = state.PREFI[i] / (fluidConstants.R * state.TREF[i]);
    } else if (isGiven(tag)) {
        flashDensity(state.TREF[i], state.PREFI[i], x, rho, ierr, herr);
        state.RHOREF[i] = rho;
    }
}

// Enthalpy and entropy at a point, less the present offsets.
void valuesAtPoint(double t, double rho, const Composition& x, bool idealGas, double& h, double& s) {
    double p = 0.0, e = 0.0, cv = 0.0, cp = 0.0, w = 0.0, other = 0.0, G = 0.0;
    if (idealGas)
        THERM0(t, rho, x, p, e, h, s, cv, cp, w, other, G);
    else
        THERM(t, rho, x, p, e, h, s, cv, cp, w, other);
}

// Shifts the offsets of all components so that the mixture x0 has the wanted values at its reference point.
void fixMixturePoint(const Text3& hrf, const Composition& x0, double h0, double s0, double t0, double p0, int& ierr,
                     Text255& herr) {
    ReferenceState& state = referenceState;
    double t = t0, p = p0, h = h0, s = s0, rho = 0.0;
    ierr = 0;
    if (!isGiven(hrf)) {
        const Text3& tag = isDefaultTag(hrf) ? state.HREFDF[1] : hrf;
        h = s = 0.0;
        p = saturationPressureMark;
        if (tag == "IIR") {
            t = iirTemperature;
            s = iirEntropy;
            h = iirEnthalpy;
        } else if (tag == "ASH") {
            t = ashraeTemperature;
        } else {
            double rhov = 0.0;
            Composition xliq{}, xvap{};
            SATP(normalPressure, x0, 1, t, rho, rhov, xliq, xvap, ierr, herr);
            if (ierr > 0) return;
        }
        double tmin = 0.0, tmax = 0.0, Dmax = 0.0, pmax = 0.0;
        LIMITX("EOS", t, 0.0, 0.0, x0, tmin, tmax, Dmax, pmax, ierr, herr);
        if (t < tmin || t > tmax) {
            t = 0.0;
            for (int i = 1; i <= modelTags.NC; ++i) t += x0[i] * state.TREF[i];
        }
        const double molarMass = WMOL(x0);
        h *= molarMass;
        s *= molarMass;
    }

    if (p < 0.0) {
        saturatedDensity(t, p, x0, rho, ierr, herr);
        if (ierr > 0) return;
    } else if (hrf == "OT0") {
        RMIX(x0);
        rho = p / (fluidConstants.R * t);
    } else {
        double tmin = 0.0, tmax = 0.0, Dmax = 0.0, pmax = 0.0;
        LIMITX("EOS", t, 0.0, p, x0, tmin, tmax, Dmax, pmax, ierr, herr);
        if (ierr > 0) {
            ierr = 27;
            message(herr, "[SETREF error 27] specified reference state for mixture is outside equation limits: ",
                    herr.slice(1, 170), nullCharacter);
            ERRMSG(ierr, herr);
            return;
        }
        flashDensity(t, p, x0, rho, ierr, herr);
        if (ierr > 0) return;
    }
    ierr = 0;
    herr.clear();

    double hm = 0.0, sm = 0.0;
    valuesAtPoint(t, rho, x0, hrf == "OT0", hm, sm);
    for (int i = 1; i <= modelTags.NC; ++i) {
        state.SREF[i] += sm - s;
        state.HREF[i] += hm - h;
    }
}

// Chooses the point of every slot in use and the values wanted there (step one of the pure components).
void choosePoints(const Text3& hrf, int& ixl, double h0, double s0, double t0, double p0, Outcome& kept) {
    ReferenceState& state = referenceState;
    const int NC = modelTags.NC;
    for (int i = -nrefmx; i <= NC; ++i) state.RHOREF[i] = 1.0;
    const bool known = hrf == "IIR" || hrf == "ASH" || hrf == "NBP" || hrf == "NA" || isGiven(hrf);
    if (!known && !isDefaultTag(hrf)) {
        ixl = 1;
        Text255 text;
        message(text, "[SETREF warning -29] reference state not found, using default reference state", nullCharacter);
        ERRMSG(-29, text);
        kept.keep(-29, text);
    }
    for (int i = -NC; i <= NC; ++i) {
        if (i < 1 && modelTags.HMXEOS[i] == "NUL") continue;
        const Text3 tag = state.HREFI[i] = known ? hrf : state.HREFDF[i];
        if (isGiven(tag)) {
            if (known)
                givenPoint(i, t0, p0, h0, s0);
            else
                defaultPoint(i);
        } else if (!namedPoint(tag, i)) {
            state.TREF[i] = fluidConstants.TNBP[i];
            Text255 text;
            message(text, "[SETREF warning -29] reference state (", tag, ") for component ", Integer{3, i},
                    " not found; will use NBP reference state. ", nullCharacter);
            ERRMSG(-29, text);
            kept.keep(-29, text);
        }
    }
}

// Puts the default of the file in the place of a point that lies outside a component's range.
void replaceUnreachablePoints(int& ixl, Outcome& kept) {
    ReferenceState& state = referenceState;
    for (int i = 1; i <= modelTags.NC; ++i) {
        double tmin = 0.0, tmax = 0.0, Dmax = 0.0, pmax = 0.0;
        int code = 0;
        Text255 text;
        LIMITK("EOS", i, state.TREF[i], 0.0, 0.0, tmin, tmax, Dmax, pmax, code, text);
        kept.keep(code, text);
        code = outsideRange(state.HREFI[i], i, tmin, text);
        if (code == 0) continue;
        ERRMSG(code, text);
        kept.keep(code, text);
        const Text3& fallback = state.HREFDF[i];
        const bool named = fallback == "IIR" || fallback == "ASH" || fallback == "NBP";
        if (isGiven(fallback))
            defaultPoint(i);
        else if (!named || !namedPoint(fallback, i))
            givenPoint(i, 0.8 * fluidConstants.TCRIT[i], saturationPressureMark, 0.0, 0.0);
        state.HREFI[i] = fallback;
        ixl = 1;
    }
}

// The integrals of the ideal gas start at the reference point, so what is memorised of them is void where it moves.
void forgetIdealGas(int NC) {
    for (int i = -nrefmx; i <= NC; ++i) cppTerms[i].TSVCP0 = 0.0;
}

void fixReferenceState(Text3& hrf, int ixmode, const Composition& x0, double h0, double s0, double t0, double p0,
                       int& ierr, Text255& herr) {
    ReferenceState& state = referenceState;
    const int NC = modelTags.NC;
    ierr = 0;
    herr.clear();
    if (hrf == "???") {
        hrf = state.HREFDF[1];
        return;
    }

    bool same = hrf == state.HSVRF;
    if (same && isGiven(hrf))
        same = close(h0, state.h0) && close(s0, state.s0) && close(t0, state.t0) && close(p0, state.p0);
    if (same && ixmode == state.IXREFSAVE && state.LREFDONE) {
        bool sameMixture = true;
        if (ixmode == 2)
            for (int i = 1; i <= NC; ++i) sameMixture = sameMixture && close(x0[i], state.X0SAV[i]);
        if (sameMixture) return;
    }

    int ixl = ixmode;
    Outcome kept, failure;
    if (isDefaultTag(hrf) && ixl == 2 && NC > 1) {
        bool oneDefault = true;
        for (int i = 1; i <= NC; ++i)
            oneDefault = oneDefault && state.HREFDF[i] == state.HREFDF[1] && !isGiven(state.HREFDF[i]);
        if (!oneDefault) {
            ixl = 1;
            Text255 text;
            message(text,
                    "[SETREF warning -28] cannot apply reference state (DEF) at a specified mixture composition when "
                    "components have different default reference states; will apply defaults to each pure component",
                    nullCharacter);
            ERRMSG(-28, text);
            kept.keep(-28, text);
        }
    }

    const bool pureDone = same && state.LREFDONE && ixl >= state.IXREFSAVE;
    state.LREFDONE = false;  // until every point was found: one that was not is looked for again
    if (!pureDone) {
        choosePoints(hrf, ixl, h0, s0, t0, p0, kept);
        replaceUnreachablePoints(ixl, kept);
        for (int i = 1; i <= NC; ++i) {
            int code = 0;
            Text255 text;
            densityAtPoint(i, code, text);
            if (code <= 0) continue;
            state.RHOREF[i] = fluidConstants.DCRIT[i];
            message(text, "[SETREF error 119] convergence failure in calculating reference state for component #",
                    Integer{3, i}, ":  ", text.slice(1, 162), nullCharacter);
            ERRMSG(119, text);
            failure.keep(119, text);
        }
        forgetIdealGas(NC);
        for (int i = 1; i <= NC; ++i) {
            const Text3& tag = state.HREFI[i];
            if (tag == "NA") continue;
            double h = 0.0, s = 0.0;
            valuesAtPoint(state.TREF[i], state.RHOREF[i], unitComposition(i), tag == "OT0", h, s);
            if (!(ixl == 2 && NC > 1 && isGiven(tag))) {
                state.HREF[i] = h;
                state.SREF[i] = s;
            }
        }
        forgetIdealGas(NC);
    }

    if (ixl == 2 && NC > 1) {
        int code = 0;
        Text255 text;
        fixMixturePoint(hrf, x0, h0, s0, t0, p0, code, text);
        if (code > 0) {
            ierr = code;
            herr = text;
            return;
        }
    }

    state.LREFDONE = failure.ierr == 0;
    state.HSVRF = hrf;
    state.IXREFSAVE = ixl;
    if (isGiven(hrf)) {
        state.h0 = h0;
        state.s0 = s0;
        state.t0 = t0;
        state.p0 = p0;
    }
    if (ixl == 2) state.X0SAV = x0;
    const Outcome& outcome = failure.ierr != 0 ? failure : kept;
    ierr = outcome.ierr;
    herr = outcome.herr;
}

}  // namespace

void SETREF(Text3& hrf, int ixmode, const Composition& x0, double h0, double s0, double t0, double p0, int& ierr,
            Text255& herr) {
    // Each component has its own point, so a component that PUREFLD selected must not stand for all of them here.
    const int selected = modelTags.IPUREFLD;
    modelTags.IPUREFLD = 0;
    fixReferenceState(hrf, ixmode, x0, h0, s0, t0, p0, ierr, herr);
    modelTags.IPUREFLD = selected;
}

}  // namespace frigana
