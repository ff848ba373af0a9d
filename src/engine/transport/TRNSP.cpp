#include "TRNSP.h"

#include <cmath>

#include "FluidConstants.h"
#include "LIMITS.h"
#include "MIX_HMX.h"
#include "Message.h"
#include "ModelTags.h"
#include "TRNS_ECS.h"
#include "TRNS_TCX.h"
#include "TRNS_VIS.h"
#include "TransportSection.h"
#include "UTILITY.h"

namespace frigana {

SlotArray<CollisionSlot> collisionTerms;

namespace {

bool correspondingStates(const Text3& tag) {
    return tag.startsWith("EC");
}
bool noModel(const Text3& tag) {
    return tag[1] == ' ' || tag == "NUL";
}
// Number n of a tag of two given letters and a digit; -1 for any other tag.
int modelNumber(const Text3& tag, std::string_view family) {
    return tag.startsWith(family) && tag[3] >= '0' && tag[3] <= '9' ? tag[3] - '0' : -1;
}

void unknownModel(int code, std::string_view text, double& value, int& ierr, Text255& herr) {
    value = notComputed;
    ierr = code;
    message(herr, text, nullCharacter);
    ERRMSG(ierr, herr);
}

}  // namespace

// ----------------------------------------------------------------------------------------------- pure components

void ETAK0(int icomp, double T, double& eta0, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    const Text3& tag = modelTags.HETA[icomp];
    if (correspondingStates(tag)) {
        eta0 = ETA0DG(icomp, T);
        return;
    }
    switch (modelNumber(tag, "VS")) {
        case 0:
            eta0 = ETA0DG(icomp, T);
            break;
        case 1:
            eta0 = ETA1DG(icomp, T);
            break;
        case 2:
            eta0 = ETA2DG(icomp, T);
            break;
        case 3:
            eta0 = ETA3DG(icomp, T);
            break;
        case 4:
            eta0 = ETA4DG(icomp, T);
            break;
        case 5:
            eta0 = ETA5DG(icomp, T);
            break;
        case 6:
            unknownModel(49, "[ETAK0 error 49] call to unimplemented model (VS6)", eta0, ierr, herr);
            break;
        default:
            unknownModel(49, "[ETAK0 error 49] unknown viscosity model specified", eta0, ierr, herr);
    }
}

void ETAK1(int icomp, double T, double& b, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    switch (modelNumber(modelTags.HETA[icomp], "VS")) {
        case 1:
        case 4:
            b = ETA1B2(icomp, T);
            break;
        case 0:
        case 2:
        case 3:
        case 5:
        case 6:
            b = 0.0;
            break;
        default:
            unknownModel(49, "[ETAK1 error 49] unknown viscosity model specified", b, ierr, herr);
    }
}

void ETAKR(int icomp, double T, double D, double& etar, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    switch (modelNumber(modelTags.HETA[icomp], "VS")) {
        case 0:
            etar = ETA0HC(icomp, T, D, ierr, herr);
            if (ierr == 0) etar -= ETA0DG(icomp, T);
            break;
        case 1:
            etar = ETA1RS(icomp, T, D);
            break;
        case 2:
            etar = ETA2RS(icomp, T, D);
            break;
        case 3:
            etar = ETA3RS(icomp, T, D);
            break;
        case 4:
            etar = ETA4RS(icomp, T, D);
            break;
        case 5:
            etar = ETA5RS(icomp, T, D);
            break;
        case 6:
            unknownModel(49, "[ETAKR error 49] call to unimplemented model (VS6)", etar, ierr, herr);
            break;
        default:
            unknownModel(49, "[ETAKR error 49] unknown viscosity model specified", etar, ierr, herr);
    }
}

namespace {

// The three parts of the viscosity; false where one of them has no model.
bool viscosityParts(int icomp, double T, double D, double& eta0, double& b, double& etar, int& ierr, Text255& herr) {
    ETAK0(icomp, T, eta0, ierr, herr);
    if (ierr != 0) return false;
    ETAK1(icomp, T, b, ierr, herr);
    if (ierr != 0) return false;
    ETAKR(icomp, T, D, etar, ierr, herr);
    return ierr == 0;
}

}  // namespace

void ETAK(int icomp, double T, double D, double& eta, int& ierr, Text255& herr) {
    double eta0 = 0.0, b = 0.0, etar = 0.0;
    eta = notComputed;
    if (viscosityParts(icomp, T, D, eta0, b, etar, ierr, herr)) eta = eta0 * (1.0 + b * D) + etar;
}

void ETAKB(int icomp, double T, double D, double& etab, int& ierr, Text255& herr) {
    double eta0 = 0.0, b = 0.0, etar = 0.0;
    etab = notComputed;
    if (viscosityParts(icomp, T, D, eta0, b, etar, ierr, herr)) etab = eta0 * b * D + etar;
}

void TCXK0(int icomp, double T, double& t0, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    switch (modelNumber(modelTags.HTCX[icomp], "TC")) {
        case 0:
            t0 = 0.0;
            break;
        case 1:
            t0 = TCX1DG(icomp, T);
            break;
        case 2:
            t0 = TCX2DG(icomp, T);
            break;
        case 3:
            t0 = TCX3DG(icomp, T);
            break;
        case 5:
            t0 = TCX5DG(icomp, T);
            break;
        case 6:
            unknownModel(39, "[TCXK0 error 39] call to unimplemented model (TC6)", t0, ierr, herr);
            break;
        default:
            unknownModel(39, "[TCXK0 error 39] unknown thermal conductivity model specified", t0, ierr, herr);
    }
}

void TCXKB(int icomp, double T, double D, double& tb, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    switch (modelNumber(modelTags.HTCX[icomp], "TC")) {
        case 0:
            tb = TCX0HC(icomp, T, D, ierr, herr);
            break;
        case 1:
            tb = TCX1BK(icomp, T, D);
            break;
        case 2:
            tb = TCX2BK(icomp, T, D);
            break;
        case 3:
            tb = TCX3BK(icomp, T, D);
            break;
        case 5:
            tb = TCX5BK(icomp, T, D);
            break;
        case 6:
            unknownModel(39, "[TCXKB error 39] call to unimplemented model (TC6)", tb, ierr, herr);
            break;
        default:
            unknownModel(39, "[TCXKB error 39] unknown thermal conductivity model specified", tb, ierr, herr);
    }
}

void TCXKC(int icomp, double T, double D, double& tc, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    const Text3& tag = modelTags.HTCXCR[icomp];
    if (tag == "TK3") {
        tc = TCX3CR(icomp, T, D);
    } else if (tag == "NUL") {
        tc = 0.0;
    } else if (tag == "TK1") {
        tc = TCX1CR(icomp, T, D);
    } else if (tag == "TK2") {
        tc = TCX2CR(icomp, T, D);
    } else if (tag == "TK4") {
        tc = TCX4CR(icomp, T, D);
    } else if (tag == "TK6") {
        TCXM1C(unitComposition(icomp), T, D, tc, ierr, herr);
    } else if (tag == "NH3") {
        tc = TCCNH3(icomp, T, D);
    } else if (tag == "CH4") {
        tc = TCCCH4(icomp, T, D);
    } else {
        tc = notComputed;
        ierr = 39;
        message(herr, "[TCXKC error 39] unknown thermal conductivity critical enhancement model specified: ", tag,
                nullCharacter);
        ERRMSG(ierr, herr);
    }
}

void TCXK(int icomp, double T, double D, double& tcx, int& ierr, Text255& herr) {
    double t0 = 0.0, tb = 0.0, tc = 0.0;
    tcx = notComputed;
    TCXK0(icomp, T, t0, ierr, herr);
    if (ierr > 0) return;
    TCXKB(icomp, T, D, tb, ierr, herr);
    if (ierr > 0) return;
    TCXKC(icomp, T, D, tc, ierr, herr);
    if (ierr > 0) return;
    tcx = t0 + tb + tc;
}

// ------------------------------------------------------------------------------------------------------- TRNPRP

namespace {

// False, with the code set, where a component in use has neither model.
bool modelsAvailable(int pure, const Composition& x, int& ierr, Text255& herr) {
    const auto missing = [](int i) { return noModel(modelTags.HETA[i]) && noModel(modelTags.HTCX[i]); };
    bool available = pure == 0 || !missing(pure);
    if (pure == 0)
        for (int i = 1; i <= modelTags.NC; ++i) available = available && (x[i] <= 0.0 || !missing(i));
    if (available) return true;
    ierr = 40;
    message(herr, "[TRNPRP error", Integer{3, ierr},
            "] transport equations are not available for one or more of the fluids", nullCharacter);
    ERRMSG(ierr, herr);
    return false;
}

// True if every component has pair parameters of transport with a later one.
bool pairParametersGiven(const Composition& x) {
    const int n = modelTags.NC;
    for (int i = 1; i < n; ++i) {
        if (x[i] <= 0.0) continue;
        int partners = 0, parameters = 0;
        for (int j = i + 1; j <= n; ++j) {
            if (x[j] <= 0.0) continue;
            ++partners;
            const MixingPair& pair = mixingParameters.pair[i][j];
            for (const double value : {pair.XLJS, pair.XLJE, pair.XKIJ, pair.XKIJK, pair.XLIJK})
                if (std::fabs(value) > 1e-20) ++parameters;
        }
        // The last component in use has none behind it, and its pairs are those of the others.
        if (partners > 0 && parameters == 0) return false;
    }
    return true;
}

// Mixtures in which molecules associate are refused unless they were fitted.
bool mixtureAllowed(const Composition& x, int& ierr, Text255& herr) {
    if (pairParametersGiven(x)) return true;
    const MixingParameters& mixture = mixingParameters;
    const auto present = [&](int i) { return i > 0 && x[i] > 0.0; };
    const char* text = nullptr;
    // The pair is refused with ammonia first only; with water first it passes, whatever the fractions.
    if (mixture.AMMONIAWATER == 1)
        text = "] transport equations are not available for the ammonia/water mixture";
    else if (mixture.AMMONIAWATER == 2)
        return true;
    else if (present(mixture.IALCOHOLCOMP))
        text = "] transport equations are not available for mixtures with alcohols";
    else if (mixture.IWATERCOMP > 0 && x[mixture.IWATERCOMP] > 0.05)
        text =
            "] transport equations are not available for mixtures with water at molar concentrations greater than 5%";
    if (text == nullptr) return true;
    ierr = 50;
    message(herr, "[TRNPRP error", Integer{3, ierr}, text, nullCharacter);
    ERRMSG(ierr, herr);
    return false;
}

// The words of LIMITX without their common beginning.
std::string_view limitText(const Text255& herr) {
    return herr.slice(39, 168);
}

constexpr std::string_view viscosityRange =
    "] one or more inputs to the viscosity correlation are out of range; results may be in error; ";
constexpr std::string_view conductivityRange =
    "] one or more inputs to the thermal conductivity correlation are out of range; results may be in error; ";
constexpr std::string_view bothRange =
    "] one or more inputs to the thermal conductivity and viscosity correlations are out of range; results may be in "
    "error; ";

void rangeWarning(int code, std::string_view words, const Text255& limit, int& ierr, Text255& herr) {
    ierr = code;
    message(herr, "[TRNPRP warning", Integer{4, ierr}, words, limitText(limit), nullCharacter);
    ERRMSG(ierr, herr);
}

void warning(int code, std::string_view text, int& ierr, Text255& herr) {
    ierr = code;
    message(herr, text, nullCharacter);
    ERRMSG(ierr, herr);
}

void infiniteAtCriticalPoint(int code, int& ierr, Text255& herr) {
    ierr = code;
    message(herr, "[TRNPRP warning ", Integer{3, ierr}, "] pure fluid property is infinite at exactly Tc, rhoc",
            nullCharacter);
    ERRMSG(ierr, herr);
}

struct EcsResult {
    bool done = false;
    double eta = notComputed, tcx = notComputed;
    int ierr = 0;
    Text255 herr{};

    void evaluate(double T, double D, const Composition& x) {
        if (!done) TRNECS(T, D, x, eta, tcx, ierr, herr);
        done = true;
    }
};

void pureTransport(int pure, double T, double D, const Composition& x, double& eta, double& tcx, int& ierr,
                   Text255& herr) {
    double tmin, tmax, Dmax, pmax;
    const bool atCriticalPoint =
        std::fabs(T - fluidConstants.TCRIT[pure]) < 1e-20 && std::fabs(D - fluidConstants.DCRIT[pure]) < 1e-20;
    EcsResult ecs;
    int viscosityWarning = 0;

    const Text3& viscosityTag = modelTags.HETA[pure];
    if (noModel(viscosityTag)) {
        eta = noTransportModel;
    } else if (correspondingStates(viscosityTag)) {
        ecs.evaluate(T, D, x);
        eta = ecs.eta;
        ierr = ecs.ierr;
        herr = ecs.herr;
    } else {
        int code = 0;
        Text255 limit;
        LIMITX("ETA", T, D, 0.0, x, tmin, tmax, Dmax, pmax, code, limit);
        if (code > 0) {
            viscosityWarning = -code - 40;
            rangeWarning(viscosityWarning, viscosityRange, limit, ierr, herr);
        }
        if (atCriticalPoint) infiniteAtCriticalPoint(-51, ierr, herr);
        // A correlation of dense states may have a pole below the temperatures it was fitted to.
        const bool coldLiquid = T < fluidConstants.TMETA[pure] && D > fluidConstants.DCRIT[pure];
        if (coldLiquid) {
            eta = notComputed;
            ierr = 0;
            herr.clear();
        } else {
            ETAK(pure, T, D, eta, ierr, herr);
        }
    }

    const Text3& conductivityTag = modelTags.HTCX[pure];
    if (noModel(conductivityTag)) {
        tcx = noTransportModel;
    } else if (correspondingStates(conductivityTag)) {
        ecs.evaluate(T, D, x);
        tcx = ecs.tcx;
        if (ecs.ierr != 0) {
            ierr = ecs.ierr;
            message(
                herr, "[TRNPRP warning", Integer{4, ierr},
                "] pure fluid correlation out of range; attempted to use ECS method, it generated error:  ", ecs.herr);
            ERRMSG(ierr, herr);
        }
    } else {
        int code = 0;
        Text255 limit;
        LIMITX("TCX", T, D, 0.0, x, tmin, tmax, Dmax, pmax, code, limit);
        if (code <= 0) {
            int status = 0;
            Text255 text;
            TCXK(pure, T, D, tcx, status, text);
            if (status != 0 || ierr == 0) {
                ierr = status;
                herr = text;
            }
        } else {
            if (ecs.done) tcx = ecs.tcx;
            constexpr std::string_view densityChange =
                "[TRNPRP warning -52] the density input to the thermal conductivity and viscosity correlations are out "
                "of range; will use the ECS model. ";
            constexpr std::string_view anyChange =
                "[TRNPRP warning -53] temperature and/or density input to the thermal conductivity and/or viscosity "
                "correlations are out of range; will use the ECS model.";
            if (viscosityWarning == 0)
                rangeWarning(-code - 30, conductivityRange, limit, ierr, herr);
            else if (viscosityWarning == -41)
                rangeWarning(-code - 50, bothRange, limit, ierr, herr);
            else if (viscosityWarning == -42 && code == 2)
                warning(-52, densityChange, ierr, herr);
            else
                warning(-53, anyChange, ierr, herr);
        }
    }

    if (atCriticalPoint) {
        infiniteAtCriticalPoint(51, ierr, herr);
        tcx = notComputed;
    }
}

void mixtureTransport(double T, double D, const Composition& x, double& eta, double& tcx, int& ierr, Text255& herr) {
    EcsResult ecs;
    const auto outOfRange = [&] {
        ierr = ecs.ierr;
        herr = ecs.herr;
        if (std::abs(ierr) == 1)
            warning(
                -54,
                "[TRNPRP warning -54] temperature and/or density input to the thermal conductivity and/or viscosity "
                "ecs mixture model are out of range; results may be in error.",
                ierr, herr);
    };
    if (correspondingStates(modelTags.HETATOP)) {
        ecs.evaluate(T, D, x);
        eta = ecs.eta;
        outOfRange();
    }
    if (correspondingStates(modelTags.HTCXTOP)) {
        ecs.evaluate(T, D, x);
        tcx = ecs.tcx;
        outOfRange();
    }
}

void markNegative(double& value) {
    if (value < 0.0 && value != noTransportModel) value = notComputed;
}

}  // namespace

void TRNPRP(double T, double D, const Composition& x, double& eta, double& tcx, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    eta = tcx = notComputed;
    int pure = 0;
    ISPURE(x, pure);
    if (!modelsAvailable(pure, x, ierr, herr)) return;
    if (pure == 0 && !mixtureAllowed(x, ierr, herr)) return;
    RMIX(x);
    const EcsMemory memory;  // what one call has computed is not computed again in it
    if (pure > 0)
        pureTransport(pure, T, D, x, eta, tcx, ierr, herr);
    else
        mixtureTransport(T, D, x, eta, tcx, ierr, herr);
    markNegative(eta);
    markNegative(tcx);
}

// ------------------------------------------------------------------------------------------- collision integrals

double OMEGA1(int icomp, double T, double eps) {
    const CollisionSlot& s = collisionTerms[icomp];
    double logarithm = std::fabs(eps) <= 1e-20 ? 1e-20 : std::log(T / eps);
    if (std::fabs(logarithm) < 1e-20) logarithm = 1e-20;
    double sum = 0.0;
    for (int k = 0; k < s.NTOMG; ++k) sum += s.COMG[k] * power(logarithm, s.ICOMG[k]);
    return std::exp(sum);
}

double OMEGA2(int icomp, double T, double eps) {
    const CollisionSlot& s = collisionTerms[icomp];
    const double u = T <= 0.0 ? 1.0 : std::cbrt(eps / T);
    double sum = 0.0;
    for (int k = 1; k <= s.NTOMG2; ++k) sum += s.COMG2[k - 1] * power(u, 4 - k);
    return std::fabs(sum) < 1e-20 ? 1.0 : 1.0 / sum;
}

double OMEGA(int icomp, double T, double eps, const Text3& tag) {
    if (tag.startsWith("CI")) {
        if (tag[3] == '1') return OMEGA1(icomp, T, eps);
        if (tag[3] == '2') return OMEGA2(icomp, T, eps);
        if (tag[3] == '0') return std::fabs(eps) <= 1e-20 ? 1.0 : OMEGAS(2, 2, T / eps);
    }
    return 1.0;
}

void SETCI1(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    SectionReader in("SETCI1", nread, hcas, ierr, herr);
    CollisionSlot& s = collisionTerms[icomp];
    s.NTOMG = 0;
    int n = 0;
    if (!in.skip(4) || !in.line("number of terms", n) || !in.count("number of terms", n, largestCollisionTerms)) return;
    for (int k = 0; k < n; ++k)
        if (!in.line("coefficient and exponent", s.COMG[k], s.ICOMG[k])) return;
    s.NTOMG = n;
}

void SETCI2(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    SectionReader in("SETCI2", nread, hcas, ierr, herr);
    CollisionSlot& s = collisionTerms[icomp];
    s.NTOMG2 = 0;
    int n = 0;
    if (!in.skip(4) || !in.line("number of terms", n) || !in.count("number of terms", n, largestCollisionTerms)) return;
    for (int k = 0; k < n; ++k)
        if (!in.line("coefficient", s.COMG2[k])) return;
    s.NTOMG2 = n;
}

}  // namespace frigana
