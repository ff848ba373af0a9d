// Flash at given temperature or pressure and quality; two-phase states of pseudo-pure fluids.
#include <cmath>

#include "FLASH2.h"
#include "FlashBricks.h"
#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"
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

struct QualityResult {
    double &D, &Dl, &Dv;
    Composition &x, &y;
    double &e, &h, &s, &cv, &cp, &w;
    int& ierr;
    Text255& herr;
};

void clear(QualityResult& r, const Composition& z) {
    r.D = r.Dl = r.Dv = 0;
    r.x = r.y = z;
    r.e = r.h = r.s = r.cv = r.cp = r.w = 0;
    r.ierr = 0;
    r.herr.clear();
}

void fillPhase(double T, double D, const Composition& z, QualityResult& r) {
    r.D = D;
    const PhaseProperties phase = propertiesOf(T, D, z);
    r.e = phase.e;
    r.h = phase.h;
    r.s = phase.s;
    r.cv = phase.cv;
    r.cp = phase.cp;
    r.w = phase.w;
}

void fillPhases(double T, double q, QualityResult& r) {
    const PhaseProperties liquid = propertiesOf(T, r.Dl, r.x);
    const PhaseProperties vapor = propertiesOf(T, r.Dv, r.y);
    r.D = bulkDensity(q, r.Dl, r.Dv);
    r.e = (1 - q) * liquid.e + q * vapor.e;
    r.h = (1 - q) * liquid.h + q * vapor.h;
    r.s = (1 - q) * liquid.s + q * vapor.s;
    r.cv = r.cp = r.w = twoPhaseQualityValue;
}

// An error of an inner routine, with its code: "[TQFLSH error] (sat liquid):  ..."
void pass(std::string_view routine, std::string_view where, int code, const Text255& inner, QualityResult& r) {
    r.ierr = code;
    message(r.herr, "[", routine, " error] (", where, "):  ", innerText(inner), nullCharacter);
    ERRMSG(r.ierr, r.herr);
}

// Molar share of the vapor in averages: the quality itself, or that of a mass quality.
double molarShare(double q, int kq, const Composition& x, const Composition& y) {
    if (kq != 2) return q;
    const double vapor = q / WMOL(y);
    return vapor / (vapor + (1 - q) / WMOL(x));
}

void warnOfLimits(std::string_view routine, int limitCode, const Text255& limitText, QualityResult& r) {
    if (limitCode >= 0 || r.ierr != 0) return;
    r.ierr = limitCode;
    message(r.herr, "[", routine, " warning", Integer{3, limitCode}, "] ", innerText(limitText), nullCharacter);
    ERRMSG(r.ierr, r.herr);
}

}  // namespace

void TQFLSH(double T, double q, const Composition& z, int kq, double& p, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& e, double& h, double& s, double& cv, double& cp, double& w,
            int& ierr, Text255& herr) {
    constexpr std::string_view routine = "TQFLSH";
    QualityResult r{D, Dl, Dv, x, y, e, h, s, cv, cp, w, ierr, herr};
    const int icomp = nearlyPureComponent(z);
    const Composition bulk = bulkComposition(icomp, z);
    RMIX(bulk);
    clear(r, bulk);
    p = 0;

    double tmin = 0;
    double tmax = 0;
    double Dmax = 0;
    double pmax = 0;
    int limitCode = 0;
    Text255 limitText;
    LIMITX("EOS", T, 0, 0, bulk, tmin, tmax, Dmax, pmax, limitCode, limitText);
    if (limitCode > 0) {
        ierr = limitCode;
        message(herr, "[TQFLSH error", Integer{3, ierr}, "] ", innerText(limitText), nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    double Tc = 0;
    double Pc = 0;
    double Dc = 0;
    Text255 inner;
    CRITP(bulk, Tc, Pc, Dc, ierr, inner);
    if (ierr > 0) {
        ierr = 270;
        message(herr, "[TQFLSH error 270] ", innerText(inner), nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    ierr = 0;
    if (T >= (icomp > 0 ? 1.0 : 1.5) * Tc) {
        ierr = 271;
        message(herr,
                "[TQFLSH error 271] temperature input to temperature-quality flash is greater than critical "
                "temperature; T =",
                General{12, 5, T}, " K, Tcrit =", General{12, 5, Tc}, " K.", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }

    const bool pseudoPure = isPseudoPure(icomp);
    SaturatedPair bubble;
    SaturatedPair dew;
    if (std::abs(q) <= onTheLine) {
        saturationAtT(T, bulk, 1, bubble);
        if (bubble.ierr > 0) {
            pass(routine, "sat liquid", bubble.ierr, bubble.herr, r);
            return;
        }
        if (pseudoPure) {
            saturationAtT(T, bulk, 2, dew);
            if (dew.ierr > 0) {
                pass(routine, "sat liquid", dew.ierr, dew.herr, r);
                return;
            }
            bubble.Dv = dew.Dv;
        }
        p = bubble.p;
        Dl = bubble.Dl;
        Dv = bubble.Dv;
        x = bubble.x;
        y = bubble.y;
        fillPhase(T, Dl, x, r);
    } else if (std::abs(1 - q) <= onTheLine) {
        saturationAtT(T, bulk, 2, dew);
        if (dew.ierr > 0) {
            pass(routine, "sat vapor", dew.ierr, dew.herr, r);
            return;
        }
        if (pseudoPure) {
            saturationAtT(T, bulk, 1, bubble);
            if (bubble.ierr > 0) {
                pass(routine, "sat vapor", bubble.ierr, bubble.herr, r);
                return;
            }
            dew.Dl = bubble.Dl;
        }
        p = dew.p;
        Dl = dew.Dl;
        Dv = dew.Dv;
        x = dew.x;
        y = dew.y;
        fillPhase(T, Dv, y, r);
    } else if (q < 0 || q > 1) {
        ierr = 275;
        message(herr, "[TQFLSH error 275] input quality is out of range; q =", General{12, 5, q},
                "; quality must be between 0 and 1 ", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    } else {
        saturationAtT(T, bulk, icomp > 0 && !pseudoPure ? 2 : 1, bubble);
        if (bubble.ierr > 0) {
            pass(routine, "2-phase", bubble.ierr, bubble.herr, r);
            return;
        }
        if (icomp > 0 && !pseudoPure) {
            dew = bubble;
        } else {
            saturationAtT(T, bulk, 2, dew);
        }
        if (dew.ierr > 0) {
            pass(routine, "2-phase", dew.ierr, dew.herr, r);
            return;
        }
        Dl = bubble.Dl;
        Dv = dew.Dv;
        if (icomp > 0) {
            p = (1 - q) * bubble.p + q * dew.p;
            fillPhases(T, q, r);
        } else {
            compositionsAtQuality(q, bulk, dew.x, bubble.y, x, y);
            p = (1 - q) * bubble.p + q * dew.p;
            TQFL2(T, q, bulk, kq, 1, bubble.p, dew.p, bubble.Dl, dew.Dv, bubble.y, dew.x, p, Dl, Dv, x, y, ierr, inner);
            if (ierr <= 0) TPRHO(T, p, x, 1, 1, Dl, ierr, inner);
            if (ierr <= 0) TPRHO(T, p, y, 2, 1, Dv, ierr, inner);
            if (ierr > 0) {
                pass(routine, "2-phase", ierr, inner, r);
                return;
            }
            ierr = 0;
            fillPhases(T, molarShare(q, kq, x, y), r);
        }
    }
    warnOfLimits(routine, limitCode, limitText, r);
}

void PQFLSH(double p, double q, const Composition& z, int kq, double& T, double& D, double& Dl, double& Dv,
            Composition& x, Composition& y, double& e, double& h, double& s, double& cv, double& cp, double& w,
            int& ierr, Text255& herr) {
    constexpr std::string_view routine = "PQFLSH";
    QualityResult r{D, Dl, Dv, x, y, e, h, s, cv, cp, w, ierr, herr};
    const int icomp = nearlyPureComponent(z);
    const Composition bulk = bulkComposition(icomp, z);
    RMIX(bulk);
    clear(r, bulk);
    T = 0;

    double Tc = 0;
    double Pc = 0;
    double Dc = 0;
    Text255 inner;
    CRITP(bulk, Tc, Pc, Dc, ierr, inner);
    if (ierr > 0) {
        ierr = 290;
        message(herr, "[PQFLSH error 290] ", innerText(inner), nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    double tmin = 0;
    double tmax = 0;
    double Dmax = 0;
    double pmax = 0;
    int limitCode = 0;
    Text255 limitText;
    LIMITX("EOS", 0.8 * Tc, 0, p, bulk, tmin, tmax, Dmax, pmax, limitCode, limitText);
    if (limitCode > 0) {
        ierr = limitCode;
        message(herr, "[PQFLSH error", Integer{3, ierr}, "] ", innerText(limitText), nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    ierr = 0;
    if (p >= (icomp > 0 ? 1.0 : 1.5) * Pc) {
        ierr = 291;
        message(herr,
                "[PQFLSH error 291] pressure input to pressure-quality flash is greater than critical pressure; P =",
                General{12, 5, p / 1000}, " MPa, Pcrit =", General{12, 5, Pc / 1000}, " MPa.", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }

    const bool pseudoPure = isPseudoPure(icomp);
    SaturatedPair bubble;
    SaturatedPair dew;
    if (std::abs(q) <= onTheLine && !pseudoPure) {
        saturationAtP(p, bulk, 1, bubble);
        if (bubble.ierr > 0 || bubble.Dl <= 0) {
            pass(routine, "sat liquid", bubble.ierr > 0 ? bubble.ierr : 2, bubble.herr, r);
            return;
        }
        T = bubble.T;
        Dl = bubble.Dl;
        Dv = bubble.Dv;
        x = bubble.x;
        y = bubble.y;
        fillPhase(T, Dl, x, r);
    } else if (std::abs(1 - q) <= onTheLine && !pseudoPure) {
        saturationAtP(p, bulk, 2, dew);
        if (dew.ierr > 0) {
            pass(routine, "sat vapor", dew.ierr, dew.herr, r);
            return;
        }
        T = dew.T;
        Dl = dew.Dl;
        Dv = dew.Dv;
        x = dew.x;
        y = dew.y;
        fillPhase(T, Dv, y, r);
    } else if (q < -onTheLine || q > 1 + onTheLine) {
        ierr = 295;
        message(herr, "[PQFLSH error 295] input quality is out of range; q =", General{12, 5, q},
                "; quality must be between 0 and 1 ", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    } else {
        saturationAtP(p, bulk, icomp > 0 && !pseudoPure ? 2 : 1, bubble);
        if (bubble.ierr <= 0 && bubble.Dl <= 0) {
            // On the sublimation line there is no liquid to average with.
            bubble.ierr = 2;
            bubble.herr.assign("input state is solid or two-phase solid-vapor");
        }
        if (bubble.ierr > 0) {
            pass(routine, "2-phase", bubble.ierr, bubble.herr, r);
            return;
        }
        if (icomp > 0 && !pseudoPure) {
            dew = bubble;
        } else {
            saturationAtP(p, bulk, 2, dew);
        }
        if (dew.ierr > 0) {
            pass(routine, "2-phase", dew.ierr, dew.herr, r);
            return;
        }
        Dl = bubble.Dl;
        Dv = dew.Dv;
        T = (1 - q) * bubble.T + q * dew.T;
        if (pseudoPure) {
            double pSolved = p;
            double qSolved = q;
            PTANC(T, pSolved, qSolved, q, 'Q', Dl, Dv);
            fillPhases(T, q, r);
        } else if (icomp > 0) {
            fillPhases(T, q, r);
        } else {
            compositionsAtQuality(q, bulk, dew.x, bubble.y, x, y);
            PQFL2(p, q, bulk, kq, 1, bubble.T, dew.T, bubble.Dl, dew.Dv, bubble.y, dew.x, T, Dl, Dv, x, y, ierr, inner);
            if (ierr <= 0) TPRHO(T, p, x, 1, 1, Dl, ierr, inner);
            if (ierr <= 0) TPRHO(T, p, y, 2, 1, Dv, ierr, inner);
            if (ierr > 0) {
                pass(routine, "2-phase", ierr, inner, r);
                return;
            }
            ierr = 0;
            fillPhases(T, molarShare(q, kq, x, y), r);
        }
    }
    warnOfLimits(routine, limitCode, limitText, r);
}

void TQFL2(double T, double q, const Composition& z, int kq, int ksat, double& pbub, double& pdew, double& Dlbub,
           double& Dvdew, Composition& ybub, Composition& xdew, double& p, double& Dl, double& Dv, Composition& x,
           Composition& y, int& ierr, Text255& herr) {
    double Tbub = T;
    double Tdew = T;
    double Tsolved = T;
    double qSolved = q;
    ABFL2(T, q, z, kq, ksat, "TQ", Tbub, Tdew, pbub, pdew, Dlbub, Dvdew, ybub, xdew, Tsolved, p, Dl, Dv, x, y, qSolved,
          ierr, herr);
}

void PQFL2(double p, double q, const Composition& z, int kq, int ksat, double& Tbub, double& Tdew, double& Dlbub,
           double& Dvdew, Composition& ybub, Composition& xdew, double& T, double& Dl, double& Dv, Composition& x,
           Composition& y, int& ierr, Text255& herr) {
    double pbub = p;
    double pdew = p;
    double pSolved = p;
    double qSolved = q;
    ABFL2(p, q, z, kq, ksat, "PQ", Tbub, Tdew, pbub, pdew, Dlbub, Dvdew, ybub, xdew, T, pSolved, Dl, Dv, x, y, qSolved,
          ierr, herr);
}

void DQFL2(double D, double q, const Composition& z, int kq, double& T, double& p, double& Dl, double& Dv,
           Composition& x, Composition& y, int& ierr, Text255& herr) {
    double qSolved = q;
    DBFL2(D, q, z, kq, "DQ", T, p, Dl, Dv, x, y, qSolved, ierr, herr);
}

void PTANC(double& T, double& p, double& q, double b, char letter, double& Dl, double& Dv) {
    constexpr int mostPasses = 20;
    constexpr double tolerance = 1e-5;
    const Composition z = unitComposition(modelTags.IPUREFLD > 0 ? modelTags.IPUREFLD : 1);
    SaturatedPair bubble;
    SaturatedPair dew;
    double Tbefore = 0;
    double pBefore = 0;
    for (int pass = 1; pass <= mostPasses; ++pass) {
        const SilentMessages quiet;
        saturationAtT(T, z, 1, bubble);
        saturationAtT(T, z, 2, dew);
        if (bubble.ierr > 0 || dew.ierr > 0) return;
        Dl = bubble.Dl;
        Dv = dew.Dv;
        if (letter == 'D') {
            q = volumeQuality(b, Dl, Dv);
        } else if (letter != 'Q') {
            const double liquid = propertyByLetter(letter, T, Dl, z);
            const double vapor = propertyByLetter(letter, T, Dv, z);
            if (std::abs(vapor - liquid) > 1e-20) q = (b - liquid) / (vapor - liquid);
        }
        const double pNow = (1 - q) * bubble.p + q * dew.p;
        // The first step is a hundredth of a degree toward the pressure; from then on the secant.
        double step = p > pNow ? 0.01 : -0.01;
        if (pass > 1) {
            if (std::abs(pNow - pBefore) < 1e-14) return;
            step = (T - Tbefore) / (pNow - pBefore) * (p - pNow);
        }
        if (std::abs(p - pNow) <= tolerance * 1e-3 || std::abs(step) <= tolerance) return;
        Tbefore = T;
        pBefore = pNow;
        T += step;
    }
}

}  // namespace frigana
