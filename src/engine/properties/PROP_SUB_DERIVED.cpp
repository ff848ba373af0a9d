#include "PROP_SUB_DERIVED.h"

#include <cmath>

#include "CORE_BWR.h"
#include "CORE_FEQ.h"
#include "PROP_SUB.h"
#include "ReducedState.h"
#include "TPRHO.h"

namespace frigana {

namespace {

constexpr double lowDensity = 1e-8;  // [mol/L] up to it quotients by density are replaced by their limits

// Densities at which the residual Helmholtz energy is taken for its first, second and third power of density [mol/L].
constexpr double virialDensityB = 1e-8, virialDensityC = 1e-6, virialDensityD = 1e-4, virialDensityCofBWR = 1e-4;

}  // namespace

void THERM3(double t, double rho, const Composition& x, double& kappa_t, double& volexp, double& isenexp,
            double& isotexp, double& kappa_s, double& bulk_s, double& bulk_t, double& throttle, double& intpress,
            double& heatinput) {
    kappa_t = volexp = isenexp = isotexp = kappa_s = bulk_s = bulk_t = throttle = intpress = heatinput = 0.0;
    if (t <= 0.0) return;
    Therm2Result r;
    THERM2(t, rho, x, r);
    const double molarMass = WMOL(x);
    kappa_t = r.kappa_t;
    volexp = r.volexp;
    if (r.p > 0.0)
        isenexp = r.w * r.w * rho / r.p * molarMass * 0.001;
    else
        isenexp = r.w * r.w / (fluidConstants.R * t) * molarMass * 0.001;
    isotexp = r.p > 0.0 ? (rho / r.p) * r.dPdD : 1.0;
    kappa_s = rho > 0.0 && r.w > 0.0 ? 1000.0 / (rho * r.w * r.w * molarMass) : notComputed;
    bulk_s = isenexp * r.p;
    bulk_t = isotexp * r.p;
    throttle = -r.jtcoef * r.cp;
    intpress = t * r.dPdT - r.p;
    heatinput = std::fabs(r.dPdT) > 1e-20 ? rho * r.cp * r.dPdD / r.dPdT : r.cp * t;
}

void DERVPVT(double t, double rho, const Composition& x, PvtDerivatives& r) {
    r = PvtDerivatives{};
    if (t <= 0.0) return;
    const ReducedState state(t, rho, x);
    const double R = state.R, RT = state.RT;
    const auto a = [&](int itau, int idel) { return PHIX(itau, idel, state.tau, state.del, x); };
    const double a01 = a(0, 1), a11 = a(1, 1), a12 = a(1, 2), a21 = a(2, 1), a02 = a(0, 2), a03 = a(0, 3);
    const double dpd = 1.0 + 2.0 * a01 + a02, dpt = 1.0 + a01 - a11;

    r.dPdD = RT * dpd;
    r.dPdT = R * rho * dpt;
    r.d2PdT2 = R * rho * a21 / t;
    r.d2PdTD = R * (dpd - 2.0 * a11 - a12);
    r.dDdP = 1.0 / r.dPdD;
    r.dDdT = -(rho * dpt) / (t * dpd);
    if (rho > lowDensity) {
        r.d2PdD2 = (RT / rho) * (2.0 * a01 + 4.0 * a02 + a03);
        r.d2DdP2 = -r.d2PdD2 / (r.dPdD * r.dPdD * r.dPdD);
    } else {
        double b = 0.0;
        VIRB(t, x, b);
        r.d2PdD2 = 2.0 * b * RT;
        r.d2DdP2 = -2.0 * b / (RT * RT);
    }
    r.d2DdT2 = -(r.d2PdT2 + 2.0 * r.d2PdTD * r.dDdT + r.d2PdD2 * r.dDdT * r.dDdT) / r.dPdD;
    r.d2DdPT = -(r.d2PdTD + r.d2PdD2 * r.dDdT) / (r.dPdD * r.dPdD);
    if (rho > lowDensity) {
        r.dTdP = 1.0 / r.dPdT;
        r.dTdD = 1.0 / r.dDdT;
        r.d2TdP2 = -r.d2PdT2 / (r.dPdT * r.dPdT * r.dPdT);
        r.d2TdD2 = -(r.d2PdD2 + 2.0 * r.d2PdTD * r.dTdD + r.d2PdT2 * r.dTdD * r.dTdD) / r.dPdT;
        r.d2TdPD = -(r.d2PdTD + r.d2PdT2 * r.dTdD) / (r.dPdT * r.dPdT);
    } else {
        r.dTdP = r.dTdD = r.d2TdP2 = r.d2TdD2 = r.d2TdPD = undefinedAtZeroDensity;
    }
}

void DHD1(double t, double rho, const Composition& x, double& dhdT_rho, double& dhdT_p, double& dhdrho_T,
          double& dhdrho_p, double& dhdp_T, double& dhdp_rho) {
    dhdT_rho = dhdT_p = dhdrho_T = dhdrho_p = dhdp_T = dhdp_rho = 0.0;
    if (t <= 0.0) return;
    const bool dilute = !(rho > lowDensity);
    const double d = rho < 1e-10 ? 1e-10 : rho;
    Therm2Result r;
    THERM2(t, d, x, r);
    const ReducedState state(t, d, x);
    const double R = state.R, RT = state.RT;
    const double a01 = state.residual(0, 1), a11 = state.residual(1, 1), a20 = state.residual(2, 0);
    const double a02 = state.residual(0, 2), i20 = state.ideal(2, t, d);

    dhdT_rho = R * (-i20 - a20 + a01 - a11 + 1.0);
    dhdT_p = r.cp;
    dhdp_T = 1.0 / d + t * r.dDdT / (d * d);
    if (dilute) {
        double b = 0.0, dbt = 0.0;
        VIRB(t, x, b);
        DBDT(t, x, dbt);
        dhdrho_T = -R * t * t * dbt + RT * b;
        dhdp_rho = dhdrho_p = undefinedAtZeroDensity;
    } else {
        dhdrho_T = (RT / d) * (a11 + a01 + a02);  // the mixed derivative of the ideal gas is 0
        dhdp_rho = dhdp_T + r.cp / r.dPdT;
        dhdrho_p = dhdrho_T + dhdT_rho / r.dDdT;
    }
}

void VIRB(double t, const Composition& x, double& b) {
    b = 0.0;
    if (t <= 0.0) return;
    constexpr double d = virialDensityB;
    const ReducedState state(t, d, x);
    if (directBWR())
        b = (PBWR(1, t, d) / d / state.R / t - 1.0) / d;
    else
        b = state.residual(0, 1) / d;
}

void DBDT(double t, const Composition& x, double& dbt) {
    dbt = 0.0;
    if (t <= 0.0) return;
    constexpr double d = virialDensityB;
    dbt = -ReducedState(t, d, x).residual(1, 1) / d / t;
}

void DBDT2(double t, const Composition& x, double& dbt2) {
    dbt2 = 0.0;
    if (t <= 0.0) return;
    constexpr double d = virialDensityB;
    const ReducedState state(t, d, x);
    dbt2 = (2.0 * state.residual(1, 1) + state.residual(2, 1)) / d / t / t;
}

void VIRC(double t, const Composition& x, double& c) {
    c = 0.0;
    if (t <= 0.0) return;
    if (directBWR()) {
        constexpr double d = virialDensityCofBWR;
        RMIX(x);
        c = ((DPDBWR(1, t, d) - 2.0 * PBWR(1, t, d) / d) / fluidConstants.R / t + 1.0) / (d * d);
        return;
    }
    constexpr double d = virialDensityC;
    c = ReducedState(t, d, x).residual(0, 2) / (d * d);
}

void DCDT(double t, const Composition& x, double& dct) {
    dct = 0.0;
    if (t <= 0.0) return;
    constexpr double d = virialDensityC;
    dct = -ReducedState(t, d, x).residual(1, 2) / (d * d) / t;
}

void DCDT2(double t, const Composition& x, double& dct2) {
    dct2 = 0.0;
    if (t <= 0.0) return;
    constexpr double d = virialDensityC;
    const ReducedState state(t, d, x);
    dct2 = (2.0 * state.residual(1, 2) + state.residual(2, 2)) / (d * d) / t / t;
}

void VIRD(double t, const Composition& x, double& d) {
    d = 0.0;
    if (t <= 0.0 || directBWR()) return;
    constexpr double rho = virialDensityD;
    d = ReducedState(t, rho, x).residual(0, 3) / (rho * rho * rho);
}

void VIRBCD(double t, const Composition& x, double& B, double& C, double& D) {
    B = C = D = 0.0;
    if (t <= 0.0) return;
    int icomp = 0;
    ISPURE(x, icomp);
    if (icomp == 0) return;
    const Text3& tag = modelTags.HMXEOS[icomp];
    if (tag[1] != 'F' || tag[2] != 'E') return;

    const FeqSlot& f = feqTerms[icomp];
    const double tau = fluidConstants.TZ[icomp] / t;
    const auto is = [](double value, double wanted) { return std::fabs(value - wanted) < 1e-10; };
    // a regular term is a tau^t (del^d - g del^(d + l) + g^2/2 del^(d + 2l) - ...)
    for (int k = 1; k <= f.NTERMF; ++k) {
        double term = f.AFEQ[k] * std::pow(tau, f.TIFEQ[k]);
        double power = f.DIFEQ[k];
        for (int order = 1; order <= 4 && power < 3.5; ++order) {
            if (is(power, 1.0)) B += term;
            if (is(power, 2.0)) C += 2.0 * term;
            if (is(power, 3.0)) D += 6.0 * term;
            if (f.DLIF[k] == 0.0) break;
            power += f.DLIF[k];
            term *= -f.GIF1[k] / order;
        }
    }
    for (int j = 1; j <= f.NCRT; ++j) {
        if (f.EITF[j] != 0.0) continue;
        const int k = f.NTERMF + j;
        const double term = f.AFEQ[k] * std::pow(tau, f.TIFEQ[k]) *
                            std::exp(f.ALPHAF[j] * std::pow(-f.DELTAF[j], f.DLIF[k]) +
                                     f.BETAF[j] * std::pow(tau - f.GAMMAF[j], f.TLIF[j]));
        const double d = f.DIFEQ[k], slope = f.ALPHAF[j] * f.DELTAF[j];
        if (is(d, 1.0)) {
            B += term;
            C -= 4.0 * slope * term;
            D += (6.0 * f.ALPHAF[j] + 12.0 * slope * slope) * term;
        } else if (is(d, 2.0)) {
            C += 2.0 * term;
            D -= 12.0 * slope * term;
        } else if (is(d, 3.0)) {
            D += 6.0 * term;
        }
    }
    const double rhoz = fluidConstants.RHOZ[icomp];
    B /= rhoz;
    C /= rhoz * rhoz;
    D /= rhoz * rhoz * rhoz;
}

namespace {

// Second virial coefficient, its derivatives times powers of T, and the heat capacity ratio of the ideal gas.
struct SecondVirial {
    double b, b1, b2, gamma;
};
SecondVirial secondVirial(double t, const Composition& x) {
    SecondVirial v{};
    VIRB(t, x, v.b);
    DBDT(t, x, v.b1);
    DBDT2(t, x, v.b2);
    v.b1 *= t;
    v.b2 *= t * t;
    const double cp0 = CP0(t, x);
    v.gamma = cp0 / (cp0 - fluidConstants.R);
    return v;
}

}  // namespace

void VIRBA(double t, const Composition& x, double& ba) {
    ba = 0.0;
    if (t <= 0.0) return;
    const SecondVirial v = secondVirial(t, x);
    const double g1 = v.gamma - 1.0;
    ba = 2.0 * v.b + 2.0 * g1 * v.b1 + g1 * g1 / v.gamma * v.b2;
}

void VIRCA(double t, const Composition& x, double& ca) {
    ca = 0.0;
    if (t <= 0.0) return;
    const SecondVirial v = secondVirial(t, x);
    double c = 0.0, c1 = 0.0, c2 = 0.0;
    VIRC(t, x, c);
    DCDT(t, x, c1);
    DCDT2(t, x, c2);
    c1 *= t;
    c2 *= t * t;
    const double gamma = v.gamma, g1 = gamma - 1.0;
    const double q = v.b + (2.0 * gamma - 1.0) * v.b1 + g1 * v.b2;
    ca = (g1 * q * q + (2.0 * gamma + 1.0) * c + (gamma * gamma - 1.0) * c1 + 0.5 * g1 * g1 * c2) / gamma;
}

void B12(double t, const Composition& x, double& b) {
    b = 0.0;
    if (t <= 0.0 || modelTags.NC != 2 || x[1] <= 0.0 || x[2] <= 0.0) return;
    double mixture = 0.0, first = 0.0, second = 0.0;
    VIRB(t, unitComposition(1), first);
    VIRB(t, unitComposition(2), second);
    VIRB(t, x, mixture);
    b = (mixture - x[1] * x[1] * first - x[2] * x[2] * second) / (2.0 * x[1] * x[2]);
}

void FPV(double t, double rho, double p, const Composition& x, double& f) {
    constexpr double baseT = 288.705555555556, baseP = 101.55977492837;  // [K, kPa]
    f = 0.0;
    if (t <= 0.0) return;
    double baseRho = 0.0;
    int ierr = 0;
    Text255 herr;
    TPRHO(baseT, baseP, x, 2, 0, baseRho, ierr, herr);
    const double base = baseP / (baseT * baseRho);
    f = p > 0.0 ? std::sqrt(base * rho * t / p) : std::sqrt(base / fluidConstants.R);
}

}  // namespace frigana
