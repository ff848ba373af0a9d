#include "CORE_STN.h"

#include <algorithm>
#include <cmath>

#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"
#include "SaturationSpline.h"
#include "TPRHO.h"
#include "TransportSection.h"
#include "UTILITY.h"

namespace frigana {

SlotArray<SurfaceTensionSlot> surfaceTensionTerms;
SurfaceTensionState surfaceTensionState;

void SETST1(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    SectionReader in("SETST1", nread, hcas, ierr, herr);
    SurfaceTensionSlot& slot = surfaceTensionTerms[icomp];
    slot = {};
    SurfaceTensionSlot s{};
    FluidConstants& fluid = fluidConstants;
    double unused = 0.0;
    if (!in.line("lower temperature limit", fluid.TMINST[icomp]) ||
        !in.line("upper temperature limit", fluid.TMAXST[icomp]) || !in.skip(1) || !in.line("unused value", unused) ||
        !in.line("number of terms", s.NTERMU) || !in.count("number of terms", s.NTERMU, largestSurfaceTensionTerms) ||
        !in.skip(1))
        return;
    for (int k = 0; k < s.NTERMU; ++k)
        if (!in.line("coefficient and exponent", s.SIGMAK[k], s.SIGEXP[k])) return;
    slot = s;
}

void STNK(int icomp, double tau, double& sigma, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    if (modelTags.HSTENK[icomp] != "ST1") {
        sigma = -999.0;
        ierr = 99;
        message(herr, "[STN error 99] unknown surface tension model:  (", modelTags.HSTENK[icomp], ")", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    const SurfaceTensionSlot& s = surfaceTensionTerms[icomp];
    sigma = 0.0;
    for (int k = 0; k < s.NTERMU; ++k) sigma += s.SIGMAK[k] * power(tau, s.SIGEXP[k]);
    // a term of the opposite sign may win in the last kelvin, where there is next to nothing
    sigma = std::max(sigma, 0.0);
}

void CRITF(const Composition& zeta, Composition& x, double& Tc, double& Pc, double& Dc, int& ierr, Text255& herr) {
    constexpr int mostPasses = 20;
    constexpr double tolerance = 1e-5;
    const int n = modelTags.NC;
    for (int pass = 1; pass <= mostPasses; ++pass) {
        CRITP(x, Tc, Pc, Dc, ierr, herr);
        if (ierr > 0) return;
        Composition f{};
        FGCTY2(Tc, Dc, x, f, ierr, herr);
        if (ierr > 0) return;
        double total = 0.0;
        for (int i = 1; i <= n; ++i) total += f[i];
        Composition next{};
        double change = 0.0, sum = 0.0;
        for (int i = 1; i <= n; ++i) {
            next[i] = std::max(x[i] - (f[i] / total - zeta[i]), 0.0);
            change += std::fabs(next[i] - x[i]);
            sum += next[i];
        }
        if (change < tolerance) {
            ierr = 0;
            herr.clear();
            return;
        }
        if (!(sum > 0.0)) break;
        for (int i = 1; i <= n; ++i) x[i] = next[i] / sum;
    }
    ierr = 160;
    message(
        herr,
        "[SURFT error 160] CRITF (find critical parameters at a specified fugacity fraction) did not converge in the "
        "surface tension calculation",
        nullCharacter);
    ERRMSG(ierr, herr);
}

namespace {

// The critical line, not the envelope that may have been traced, rules the surface tension: both phases and all
// compositions must lie on one model.
class WithoutEnvelope {
  public:
    WithoutEnvelope() : ready_(saturationSpline.SPLINEREADY) { saturationSpline.SPLINEREADY = false; }
    ~WithoutEnvelope() { saturationSpline.SPLINEREADY = ready_; }
    WithoutEnvelope(const WithoutEnvelope&) = delete;
    WithoutEnvelope& operator=(const WithoutEnvelope&) = delete;

  private:
    bool ready_;
};

// Amplitude of the universal relation between surface tension and correlation length.
double amplitude() {
    return 7.23281577257433 * std::sqrt(fluidConstants.R) * 0.1 * 0.9 * 1.9;
}

constexpr double criticalExponent = 1.26;

void mixtureTension(double T, double Dl, double Dv, const Composition& xl, const Composition& xv, double tau,
                    double& sigma, int& ierr, Text255& herr) {
    const FluidConstants& fluid = fluidConstants;
    const int n = modelTags.NC;
    const Text3& model = modelTags.HSTNTOP;
    Composition& ZETA = surfaceTensionState.ZETA;

    RMIX(xl);
    const double k = amplitude();
    const double e = std::pow(tau, criticalExponent);
    Composition strength{};
    for (int i = 1; i <= n; ++i) {
        double own = 0.0;
        STNK(i, tau, own, ierr, herr);
        if (own < 0.0) {
            sigma = own;
            return;
        }
        const double s = e > 0.0 ? own / e : 0.0;
        strength[i] = s * std::sqrt(s) / (k * std::sqrt(fluid.TCRIT[i]) * fluid.PCRIT[i]);
    }

    double Tc = 0.0, Pc = 0.0, Dc = 0.0;
    int unknown = 0;
    if (model == "STX" || model == "STM") {
        Composition f{};
        FGCTY2(T, Dl, xl, f, ierr, herr);
        double total = 0.0;
        for (int i = 1; i <= n; ++i) total += f[i];
        for (int i = 1; i <= n; ++i) ZETA[i] = f[i] / total;
        surfaceTensionState.XCRITF = xl;
        if (ierr <= 0) CRITF(ZETA, surfaceTensionState.XCRITF, Tc, Pc, Dc, ierr, herr);
        if (ierr > 0) {
            sigma = notComputed;
            return;
        }
    } else if (model == "STH") {
        Composition& z = surfaceTensionState.ZMOLE;
        for (int i = 1; i <= n; ++i) z[i] = (xl[i] * Dl + xv[i] * Dv) / (Dl + Dv);
        double mass = 0.0;
        XMASS(z, ZETA, mass);
        CRITP(z, Tc, Pc, Dc, ierr, herr);
        if (ierr > 0) {
            sigma = notComputed;
            return;
        }
    } else {
        unknown = 99;
    }

    double K = 0.0;
    if (model == "STX") {
        double squares = 0.0;
        for (int i = 1; i <= n; ++i) {
            K += ZETA[i] * ZETA[i] * strength[i];
            squares += ZETA[i] * ZETA[i] * fluid.PCRIT[i];
        }
        for (int i = 1; i < n; ++i)
            for (int j = i + 1; j <= n; ++j)
                K += (Pc - squares) * std::sqrt(strength[i] * strength[j] / (fluid.PCRIT[i] * fluid.PCRIT[j]));
    } else {
        for (int i = 1; i <= n; ++i) K += ZETA[i] * strength[i];
    }
    const double product = k * std::sqrt(Tc) * Pc * K;
    sigma = std::cbrt(product * product) * e;
    ierr = 0;
    herr.clear();
    if (unknown != 0) {
        sigma = -9999000.0;
        ierr = unknown;
        message(herr, "[STN error 99] unknown surface tension model:  (", model, ")", nullCharacter);
        ERRMSG(ierr, herr);
    }
}

}  // namespace

void STN(double T, double Dl, double Dv, const Composition& xl, const Composition& xv, double& sigma, int& ierr,
         Text255& herr) {
    ierr = 0;
    herr.clear();
    sigma = 0.0;
    const WithoutEnvelope criticalLine;
    double tc = 0.0, pc = 0.0, dc = 0.0;
    CRITP(xl, tc, pc, dc, ierr, herr);
    if (ierr > 0) {
        ierr = 160;
        message(herr, "[STN error 160] ", herr);
        ERRMSG(ierr, herr);
        return;
    }
    ierr = 0;
    herr.clear();
    if (T > tc) {
        ierr = 121;
        message(
            herr,
            "[STN error 121] temperature input to surface tension routine is greater than critical temperature; T =",
            General{12, 5, T}, " K, Tcrit =", General{12, 5, tc}, " K.", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    const double tau = 1.0 - T / tc;
    int pure = 0;
    ISPURE(xl, pure);
    if (pure > 0)
        STNK(pure, tau, sigma, ierr, herr);
    else
        mixtureTension(T, Dl, Dv, xl, xv, tau, sigma, ierr, herr);
}

void SURFT(double T, double& Dl, const Composition& x, double& sigma, int& ierr, Text255& herr) {
    double tmin, tmax, Dmax, pmax;
    sigma = notComputed;
    LIMITX("STN", T, 0.0, 0.0, x, tmin, tmax, Dmax, pmax, ierr, herr);
    if (ierr > 0) {
        message(herr, "[SURFT error", Integer{3, ierr}, "] ", herr);
        ERRMSG(ierr, herr);
        return;
    }
    int warning = 0;
    Text255 warningText;
    if (T < tmin) {
        warning = 1;
        message(warningText, "[SURFT error 1] t<tmin", nullCharacter);
        ERRMSG(warning, warningText);
    } else if (ierr < 0) {
        warning = ierr - 20;
        message(warningText, "[SURFT warning", Integer{4, warning}, "] ", herr);
        ERRMSG(warning, warningText);
    }

    double p = 0.0, Dv = 0.0;
    Composition xliq{}, xvap{};
    SATT(T, x, 1, p, Dl, Dv, xliq, xvap, ierr, herr);
    if (ierr != 0) {
        message(herr, "[SURFT error", Integer{3, ierr}, "] ", herr);
        ERRMSG(ierr, herr);
        if (ierr > 0) {
            sigma = 0.0;
            return;
        }
    }
    STN(T, Dl, Dv, x, xvap, sigma, ierr, herr);
    if (ierr == 0 && warning != 0) {
        ierr = warning;
        herr = warningText;
    }
}

void SURTEN(double T, double& Dl, double& Dv, Composition& xl, Composition& xv, double& sigma, int& ierr,
            Text255& herr) {
    double tmin, tmax, Dmax, pmax;
    sigma = notComputed;
    int liquid = 0, vapor = 0;
    Text255 liquidText, vaporText;
    LIMITX("STN", T, 0.0, 0.0, xl, tmin, tmax, Dmax, pmax, liquid, liquidText);
    if (Dv > 0.0) LIMITX("STN", T, 0.0, 0.0, xv, tmin, tmax, Dmax, pmax, vapor, vaporText);
    if (liquid > 0 || vapor > 0) {
        ierr = std::max(liquid, vapor);
        message(herr, "[SURTEN error", Integer{3, ierr}, "] ", liquid >= vapor ? liquidText : vaporText);
        ERRMSG(ierr, herr);
        return;
    }
    int warning = 0;
    Text255 warningText;
    if (liquid < 0) {
        warning = liquid - 20;
        message(warningText, "[SURTEN warning", Integer{4, warning}, "] ", liquidText);
        ERRMSG(warning, warningText);
    }

    if (Dl <= 0.0 || Dv <= 0.0) {
        double p = 0.0;
        Composition xliq{};
        SATT(T, xl, 1, p, Dl, Dv, xliq, xv, ierr, herr);
        if (ierr != 0) {
            message(herr, "[SURTEN error", Integer{3, ierr}, "] ", herr);
            ERRMSG(ierr, herr);
            if (ierr > 0) {
                sigma = 0.0;
                return;
            }
        }
    }
    STN(T, Dl, Dv, xl, xv, sigma, ierr, herr);
    if (ierr == 0 && warning != 0) {
        ierr = warning;
        herr = warningText;
    }
}

}  // namespace frigana
