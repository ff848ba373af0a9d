#include "CSTAR.h"

#include <algorithm>
#include <cmath>

#include "FLASH2.h"
#include "FLSH_SUB.h"
#include "FluidConstants.h"
#include "LIMITS.h"
#include "Message.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

namespace {

// State in the throat at T and the entropy s; false where it is two-phase or has no speed of sound.
bool throatState(double T, double s, const Composition& z, double stagnationDensity, double Tc, double Dc, double Dmax,
                 double& p, double& D, double& h, double& w) {
    const double lower = 0.001 * stagnationDensity;
    const double upper = T < Tc && stagnationDensity < Dc ? Dc : Dmax;
    int code = 0;
    Text255 text;
    TSFL1(T, s, z, lower, upper, p, D, code, text);
    if (code > 0) {
        double Dl = 0;
        double Dv = 0;
        double q = 0;
        double e = 0;
        double cv = 0;
        double cp = 0;
        Composition x{};
        Composition y{};
        TSFLSH(T, s, z, 1, p, D, Dl, Dv, x, y, q, e, h, cv, cp, w, code, text);
        if (code > 0 || (q > 0 && q < 1)) return false;
    }
    if (T < Tc) {
        double pSaturation = 0;
        double Dl = 0;
        double Dv = 0;
        Composition x{};
        Composition y{};
        const int kph = D > Dc ? 1 : 2;
        SATT(T, z, kph, pSaturation, Dl, Dv, x, y, code, text);
        if (code <= 0 && D > Dv * (1 + 1e-9) && D < Dl * (1 - 1e-9)) return false;
    }
    double e = 0;
    double sThroat = 0;
    double cv = 0;
    double cp = 0;
    double jouleThomson = 0;
    THERM(T, D, z, p, e, h, sThroat, cv, cp, w, jouleThomson);
    return w > 0;
}

}  // namespace

void CSTAR(double T, double p, double v, const Composition& z, double& cs, double& ts, double& Ds, double& ps,
           double& ws, int& ierr, Text255& herr) {
    constexpr int mostPasses = 20;
    constexpr double tolerance = 1e-8;
    cs = ts = Ds = ps = ws = 0;

    // Stagnation state.
    double T0 = T;
    double D0 = 0;
    double Dl = 0;
    double Dv = 0;
    double q = 0;
    double e0 = 0;
    double h0 = 0;
    double s0 = 0;
    double cv = 0;
    double cp = 0;
    double w0 = 0;
    Composition x{};
    Composition y{};
    TPFLSH(T0, p, z, D0, Dl, Dv, x, y, q, e0, h0, s0, cv, cp, w0, ierr, herr);
    if (ierr > 0) return;
    ierr = 0;
    herr.clear();

    double Tc = 0;
    double Pc = 0;
    double Dc = 0;
    Text255 text;
    CRITP(z, Tc, Pc, Dc, ierr, text);
    double tmin = 0;
    double tmax = 0;
    double Dmax = 0;
    double pmax = 0;
    LIMITS("EOS", z, tmin, tmax, Dmax, pmax);
    ierr = 0;
    const double massFactor = WMOL(z) / 1000;  // [kg/mol]
    const double scale = std::abs(h0) > 1 ? h0 : 1;

    // Temperature of the throat: secant on the balance of energy.
    double before = 0;
    double Fbefore = 0;
    double now = T0;
    for (int pass = 1; pass <= mostPasses; ++pass) {
        double h = 0;
        if (!throatState(now, s0, z, D0, Tc, Dc, Dmax, ps, Ds, h, ws)) {
            ierr = 201;
            message(herr, "[CSTAR error 201] two phases or no speed of sound in the throat", nullCharacter);
            ERRMSG(ierr, herr);
            cs = ts = Ds = ps = ws = 0;
            return;
        }
        const double F = (h + 0.5 * (ws * ws - v * v) * massFactor - h0) / scale;
        if (std::abs(F) < tolerance) {
            ts = now;
            cs = Ds * ws * std::sqrt(fluidConstants.R * T0 * massFactor) / p;
            return;
        }
        double next = now - 1;
        if (pass > 1) {
            if (std::abs(F - Fbefore) < 1e-14) break;
            next = now - F * (now - before) / (F - Fbefore);
        }
        before = now;
        Fbefore = F;
        now = std::max(next, 0.2 * now);
    }
    ierr = 200;
    message(herr, "[CSTAR error 200] iteration failed to converge", nullCharacter);
    ERRMSG(ierr, herr);
    cs = ts = Ds = ps = ws = 0;
}

}  // namespace frigana
