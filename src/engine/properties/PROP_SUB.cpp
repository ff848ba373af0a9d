#include "PROP_SUB.h"

#include <cmath>

#include "CORE_BWR.h"
#include "ReducedState.h"

// Symbols: aij is tau^i del^j times the derivative of the residual Helmholtz energy of order i in tau and j in del,
// ii0 the same of the ideal gas; dpd = 1 + 2 a01 + a02, dpt = 1 + a01 - a11.

namespace frigana {

namespace {

constexpr double lowDensity = 1e-8;    // [mol/L] up to it quotients by density are replaced by their limits
constexpr double zeroDensity = 1e-40;  // [mol/L]

double atLeast(double rho, double floor) {
    return rho < floor ? floor : rho;
}

// A density below the floor of logarithms is none: pressure is then 0.
double pressureDensity(double rho) {
    return rho < zeroDensity ? 0.0 : rho;
}

double speedOfSound(double cv, double cp, double slope, double molarMass) {
    if (cv <= 0.0) return 0.0;
    const double v = slope * (cp / cv);
    return v > 0.0 ? std::sqrt(1000.0 * v / molarMass) : 0.0;
}

// (T dB/dT - B) / cp
double virialThrottling(double t, const Composition& x, double cp) {
    double b = 0.0, dbt = 0.0;
    VIRB(t, x, b);
    DBDT(t, x, dbt);
    return (t * dbt - b) / cp;
}

double limitOfSecondSlope(double t, double RT, const Composition& x) {
    double b = 0.0;
    VIRB(t, x, b);
    return 2.0 * b * RT;
}

// Direct functions of the BWR model, slot 1.
namespace bwr {

double energy(double t, double rho, const Composition& x) {
    return ABWR(1, t, rho) - t * DABWR(1, t, rho) + CPI(t, x) - fluidConstants.R * t - referenceState.HREF[1];
}
double entropy(double t, double rho, const Composition& x) {
    const double R = fluidConstants.R;
    return -DABWR(1, t, rho) + R * std::log(referenceState.RHOREF[1] / rho) + CPT(t, x) -
           R * std::log(t / referenceState.TREF[1]) - referenceState.SREF[1];
}
double enthalpy(double t, double rho, const Composition& x) {
    const double e = energy(t, rho, x);
    return rho > lowDensity ? e + PBWR(1, t, rho) / rho : e + fluidConstants.R * t;
}
void heatCapacities(double t, double rho, const Composition& x, double& cv, double& cp) {
    const double ideal = CP0(t, x);
    cv = -t * D2ABWR(1, t, rho) + ideal - fluidConstants.R;
    const double dpdt = DPTBWR(1, t, rho);
    cp = rho > lowDensity ? cv + t / (rho * rho) * dpdt * dpdt / DPDBWR(1, t, rho) : ideal;
}

}  // namespace bwr

void thermBWR(double t, double rho, const Composition& x, double& p, double& e, double& h, double& s, double& cv,
              double& cp, double& w, double& jtcoef) {
    const double logRho = atLeast(rho, zeroDensity);
    p = PBWR(1, t, pressureDensity(rho));
    e = bwr::energy(t, logRho, x);
    h = bwr::enthalpy(t, logRho, x);
    s = bwr::entropy(t, logRho, x);
    bwr::heatCapacities(t, logRho, x, cv, cp);
    const double slope = DPDBWR(1, t, logRho);
    w = speedOfSound(cv, cp, slope, WMOL(x));
    jtcoef = rho > lowDensity ? (t * DPTBWR(1, t, rho) / (rho * slope) - 1.0) / (rho * cp) : virialThrottling(t, x, cp);
}

}  // namespace

void THERM(double t, double rho, const Composition& x, double& p, double& e, double& h, double& s, double& cv,
           double& cp, double& w, double& jtcoef) {
    p = e = h = s = cv = cp = w = jtcoef = 0.0;
    if (t <= 0.0) return;
    const ReducedState state(t, rho, x);
    if (directBWR()) {
        thermBWR(t, rho, x, p, e, h, s, cv, cp, w, jtcoef);
        return;
    }
    const double logRho = atLeast(rho, zeroDensity);
    const double R = state.R, RT = state.RT;

    const double a00 = state.residual(0, 0), a01 = state.residual(0, 1), a02 = state.residual(0, 2);
    const double a10 = state.residual(1, 0), a11 = state.residual(1, 1), a20 = state.residual(2, 0);
    const double i00 = state.ideal(0, t, logRho), i10 = state.ideal(1, t, logRho), i20 = state.ideal(2, t, logRho);
    const double dpd = 1.0 + 2.0 * a01 + a02, dpt = 1.0 + a01 - a11;

    p = RT * pressureDensity(rho) * (1.0 + a01);
    e = RT * (i10 + a10) - state.enthalpyOffset();
    h = e + RT * (1.0 + a01);
    s = R * (i10 + a10 - i00 - a00) - state.entropyOffset();
    cv = -R * (a20 + i20);
    cp = cv + R * dpt * dpt / dpd;
    w = speedOfSound(cv, cp, RT * dpd, WMOL(x));
    jtcoef = rho > lowDensity ? -(1.0 / (cp * rho)) * (a01 + a02 + a11) / dpd : virialThrottling(t, x, cp);
}

void THERM2(double t, double rho, const Composition& x, Therm2Result& r) {
    r = Therm2Result{};
    r.spare3 = r.spare4 = notComputed;
    if (t <= 0.0) return;
    const ReducedState state(t, rho, x);
    const double logRho = atLeast(rho, 1e-20);
    const double R = state.R, RT = state.RT;
    const bool dilute = !(rho > lowDensity);

    // the limits need another density: they are asked for first, and only where they are used
    double b = 0.0, dbt = 0.0;
    if (dilute) {
        VIRB(t, x, b);
        DBDT(t, x, dbt);
    }
    const double a00 = state.residual(0, 0), a01 = state.residual(0, 1), a02 = state.residual(0, 2);
    const double a10 = state.residual(1, 0), a11 = state.residual(1, 1), a20 = state.residual(2, 0);
    const double a12 = state.residual(1, 2), a21 = state.residual(2, 1), a03 = state.residual(0, 3);
    const double i00 = state.ideal(0, t, logRho), i10 = state.ideal(1, t, logRho), i20 = state.ideal(2, t, logRho);
    const double dpd = 1.0 + 2.0 * a01 + a02, dpt = 1.0 + a01 - a11;

    if (directBWR()) {
        thermBWR(t, rho, x, r.p, r.e, r.h, r.s, r.cv, r.cp, r.w, r.jtcoef);
        r.A = r.e - t * r.s;
        r.G = r.h - t * r.s;
        r.dPdD = DPDBWR(1, t, logRho);
        r.dPdT = DPTBWR(1, t, logRho);
        r.d2PdD2 = dilute ? 2.0 * b * RT : D2PBWR(1, t, rho);
        r.dDdT = -r.dPdT / r.dPdD;
        r.dDdP = 1.0 / r.dPdD;
    } else {
        r.p = RT * pressureDensity(rho) * (1.0 + a01);
        r.e = RT * (i10 + a10) - state.enthalpyOffset();
        r.h = r.e + RT * (1.0 + a01);
        r.s = R * (i10 + a10 - i00 - a00) - state.entropyOffset();
        r.cv = -R * (a20 + i20);
        r.cp = r.cv + R * dpt * dpt / dpd;
        r.w = speedOfSound(r.cv, r.cp, RT * dpd, WMOL(x));
        r.jtcoef = dilute ? (t * dbt - b) / r.cp : -(1.0 / (r.cp * rho)) * (a01 + a02 + a11) / dpd;
        r.A = RT * (a00 + i00) - (state.enthalpyOffset() - t * state.entropyOffset());
        r.G = r.A + RT * (1.0 + a01);
        r.dPdD = RT * dpd;
        r.dPdT = R * rho * dpt;
        r.dDdT = -(rho * dpt) / (t * dpd);
        r.dDdP = 1.0 / (RT * dpd);
        r.d2PdD2 = dilute ? 2.0 * b * RT : (RT / rho) * (2.0 * a01 + 4.0 * a02 + a03);
    }
    r.d2PdT2 = R * rho * a21 / t;
    r.d2PdTD = R * (dpd - 2.0 * a11 - a12);
    r.Z = rho < zeroDensity ? 1.0 : r.p / (RT * rho);
    if (dilute) {
        r.kappa_t = r.p > 0.0 ? 1.0 / r.p : notComputed;
        r.volexp = 1.0 / t;
    } else {
        r.kappa_t = r.dDdP / rho;
        r.volexp = -r.dDdT / rho;
    }
}

void THERM0(double t, double rho, const Composition& x, double& p, double& e, double& h, double& s, double& cv,
            double& cp, double& w, double& A, double& G) {
    p = e = h = s = cv = cp = w = A = G = 0.0;
    if (t <= 0.0) return;
    const ReducedState state(t, rho, x);
    const double logRho = atLeast(rho, 1e-20);
    const double R = state.R, RT = state.RT;
    const double i00 = state.ideal(0, t, logRho), i10 = state.ideal(1, t, logRho), i20 = state.ideal(2, t, logRho);

    p = RT * pressureDensity(rho);
    e = RT * i10 - state.enthalpyOffset();
    h = e + RT;
    s = R * (i10 - i00) - state.entropyOffset();
    cv = -R * i20;
    cp = cv + R;
    w = speedOfSound(cv, cp, RT, WMOL(x));
    A = RT * i00 - (state.enthalpyOffset() - t * state.entropyOffset());
    G = A + RT;
}

void RESIDUAL(double t, double rho, const Composition& x, double& pr, double& er, double& hr, double& sr, double& cvr,
              double& cpr, double& Ar, double& Gr) {
    pr = er = hr = sr = cvr = cpr = Ar = Gr = 0.0;
    if (t <= 0.0) return;
    const ReducedState state(t, rho, x);
    const double R = state.R, RT = state.RT;
    const double a00 = state.residual(0, 0), a01 = state.residual(0, 1), a02 = state.residual(0, 2);
    const double a10 = state.residual(1, 0), a11 = state.residual(1, 1), a20 = state.residual(2, 0);
    const double dpd = 1.0 + 2.0 * a01 + a02, dpt = 1.0 + a01 - a11;

    pr = RT * pressureDensity(rho) * a01;
    er = RT * a10;
    hr = er + RT * a01;
    sr = R * (a10 - a00);
    cvr = -R * a20;
    cpr = cvr + R * dpt * dpt / dpd - R;
    Ar = RT * a00;
    Gr = Ar + RT * a01;
}

void ENTRO(double t, double rho, const Composition& x, double& s) {
    s = 0.0;
    if (t <= 0.0) return;
    const ReducedState state(t, rho, x);
    const double logRho = atLeast(rho, zeroDensity);
    if (directBWR()) {
        s = bwr::entropy(t, logRho, x);
        return;
    }
    const double a00 = state.residual(0, 0), a10 = state.residual(1, 0);
    const double i00 = state.ideal(0, t, logRho), i10 = state.ideal(1, t, logRho);
    s = state.R * (i10 + a10 - i00 - a00) - state.entropyOffset();
}

void ENTHAL(double t, double rho, const Composition& x, double& h) {
    h = 0.0;
    if (t <= 0.0) return;
    const ReducedState state(t, rho, x);
    if (directBWR()) {
        h = bwr::enthalpy(t, rho, x);
        return;
    }
    const double a01 = state.residual(0, 1), a10 = state.residual(1, 0), i10 = state.ideal(1, t, rho);
    const double e = state.RT * (i10 + a10) - state.enthalpyOffset();
    h = e + state.RT * (1.0 + a01);
}

void ENERGY(double t, double rho, const Composition& x, double& e) {
    e = 0.0;
    if (t <= 0.0) return;
    const ReducedState state(t, rho, x);
    if (directBWR()) {
        e = bwr::energy(t, rho, x);
        return;
    }
    const double a10 = state.residual(1, 0), i10 = state.ideal(1, t, rho);
    e = state.RT * (i10 + a10) - state.enthalpyOffset();
}

void PRESS(double t, double rho, const Composition& x, double& p) {
    p = 0.0;
    if (t <= 0.0) return;
    const ReducedState state(t, rho, x);
    p = directBWR() ? PBWR(1, t, rho) : state.RT * pressureDensity(rho) * (1.0 + state.residual(0, 1));
}

void DPDD(double t, double rho, const Composition& x, double& dpdrho) {
    dpdrho = 0.0;
    if (t <= 0.0) return;
    const ReducedState state(t, rho, x);
    dpdrho = directBWR() ? DPDBWR(1, t, rho) : state.RT * (1.0 + 2.0 * state.residual(0, 1) + state.residual(0, 2));
}

void DPDD2(double t, double rho, const Composition& x, double& d2pdrho2) {
    d2pdrho2 = 0.0;
    if (t <= 0.0) return;
    const ReducedState state(t, rho, x);
    if (!(rho > lowDensity))
        d2pdrho2 = limitOfSecondSlope(t, state.RT, x);
    else if (directBWR())
        d2pdrho2 = D2PBWR(1, t, rho);
    else
        d2pdrho2 = (state.RT / rho) * (2.0 * state.residual(0, 1) + 4.0 * state.residual(0, 2) + state.residual(0, 3));
}

PressureSlopes pressureSlopes(double t, double rho, const Composition& x) {
    PressureSlopes slopes{};
    if (t <= 0.0) return slopes;
    if (directBWR() || !(rho > lowDensity)) {
        PRESS(t, rho, x, slopes.p);
        DPDD(t, rho, x, slopes.first);
        DPDD2(t, rho, x, slopes.second);
        return slopes;
    }
    const ReducedState state(t, rho, x);
    const double a01 = state.residual(0, 1), a02 = state.residual(0, 2), a03 = state.residual(0, 3);
    slopes.p = state.RT * rho * (1.0 + a01);
    slopes.first = state.RT * (1.0 + 2.0 * a01 + a02);
    slopes.second = (state.RT / rho) * (2.0 * a01 + 4.0 * a02 + a03);
    return slopes;
}

void DPDT(double t, double rho, const Composition& x, double& dpdt) {
    dpdt = 0.0;
    if (t <= 0.0) return;
    const ReducedState state(t, rho, x);
    dpdt = directBWR() ? DPTBWR(1, t, rho) : state.R * rho * (1.0 + state.residual(0, 1) - state.residual(1, 1));
}

void DDDP(double t, double rho, const Composition& x, double& drhodp) {
    drhodp = 0.0;
    if (t <= 0.0) return;
    double slope = 0.0;
    DPDD(t, rho, x, slope);
    drhodp = 1.0 / slope;
}

void DDDT(double t, double rho, const Composition& x, double& drhodt) {
    drhodt = 0.0;
    if (t <= 0.0) return;
    const ReducedState state(t, rho, x);
    if (directBWR()) {
        drhodt = -DPTBWR(1, t, rho) / DPDBWR(1, t, rho);
        return;
    }
    const double a01 = state.residual(0, 1), a11 = state.residual(1, 1), a02 = state.residual(0, 2);
    drhodt = -(rho * (1.0 + a01 - a11)) / (t * (1.0 + 2.0 * a01 + a02));
}

void CVCP(double t, double rho, const Composition& x, double& cv, double& cp) {
    cv = cp = 0.0;
    if (t <= 0.0) return;
    const ReducedState state(t, rho, x);
    if (directBWR()) {
        bwr::heatCapacities(t, rho, x, cv, cp);
        return;
    }
    const double a20 = state.residual(2, 0), i20 = state.ideal(2, t, rho);
    const double a01 = state.residual(0, 1), a11 = state.residual(1, 1), a02 = state.residual(0, 2);
    const double dpd = 1.0 + 2.0 * a01 + a02, dpt = 1.0 + a01 - a11;
    cv = -state.R * (a20 + i20);
    cp = cv + state.R * dpt * dpt / dpd;
}

void CVCPK(int icomp, double t, double rho, double& cv, double& cp) {
    cv = cp = 0.0;
    if (t <= 0.0) return;
    const double R = fluidConstants.R;
    const double tau = fluidConstants.TZ[icomp] / t, del = rho / fluidConstants.RHOZ[icomp];
    const double a20 = PHIK(icomp, 2, 0, tau, del), i20 = PHI0K(icomp, 2, 0, t, rho);
    const double a01 = PHIK(icomp, 0, 1, tau, del), a11 = PHIK(icomp, 1, 1, tau, del);
    const double a02 = PHIK(icomp, 0, 2, tau, del);
    const double dpd = 1.0 + 2.0 * a01 + a02, dpt = 1.0 + a01 - a11;
    cv = -R * (a20 + i20);
    cp = cv + R * dpt * dpt / dpd;
}

void DPDDK(int icomp, double t, double rho, double& dpdrho) {
    dpdrho = 0.0;
    if (t <= 0.0) return;
    const double tau = fluidConstants.TZ[icomp] / t, del = rho / fluidConstants.RHOZ[icomp];
    dpdrho = fluidConstants.R * t * (1.0 + 2.0 * PHIK(icomp, 0, 1, tau, del) + PHIK(icomp, 0, 2, tau, del));
}

void DPDTK(int icomp, double t, double rho, double& dpdt) {
    dpdt = 0.0;
    if (t <= 0.0) return;
    const double tau = fluidConstants.TZ[icomp] / t, del = rho / fluidConstants.RHOZ[icomp];
    dpdt = fluidConstants.R * rho * (1.0 + PHIK(icomp, 0, 1, tau, del) - PHIK(icomp, 1, 1, tau, del));
}

void GIBBS(double t, double rho, const Composition& x, double& Ar, double& Gr) {
    Ar = Gr = 0.0;
    if (t <= 0.0) return;
    const ReducedState state(t, rho, x);
    const double logRho = atLeast(rho, zeroDensity);
    Ar = state.RT * state.residual(0, 0);
    Gr = Ar + state.RT * (1.0 + state.residual(0, 1)) + state.RT * (std::log(logRho) - 1.0);
}

void AG(double t, double rho, const Composition& x, double& A, double& G) {
    A = G = 0.0;
    if (t <= 0.0) return;
    const ReducedState state(t, rho, x);
    const double logRho = atLeast(rho, zeroDensity);
    if (directBWR()) {
        const double s = bwr::entropy(t, logRho, x);
        A = bwr::energy(t, logRho, x) - t * s;
        G = bwr::enthalpy(t, logRho, x) - t * s;
        return;
    }
    const double a00 = state.residual(0, 0), a01 = state.residual(0, 1), i00 = state.ideal(0, t, logRho);
    A = state.RT * (a00 + i00) - (state.enthalpyOffset() - t * state.entropyOffset());
    G = A + state.RT * (1.0 + a01);
}

}  // namespace frigana
