#include "EXCESS.h"

#include <cmath>

#include "FLSH_SUB.h"
#include "FluidConstants.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

namespace {

double flashDensity(double t, double p, const Composition& x, int& ierr, Text255& herr) {
    double D = 0, Dl = 0, Dv = 0, q = 0, e = 0, h = 0, s = 0, cv = 0, cp = 0, w = 0;
    Composition xl{}, xv{};
    TPFLSH(t, p, x, D, Dl, Dv, xl, xv, q, e, h, s, cv, cp, w, ierr, herr);
    return D;
}

struct Properties {
    double v, e, h, s, a, g;
};
Properties propertiesAt(double t, double rho, const Composition& x) {
    double p = 0, cv = 0, cp = 0, w = 0, jt = 0;
    Properties r{};
    THERM(t, rho, x, p, r.e, r.h, r.s, cv, cp, w, jt);
    AG(t, rho, x, r.a, r.g);
    r.v = rho > 0.0 ? 1.0 / rho : 0.0;
    return r;
}

}  // namespace

void EXCESS(double t, double p, const Composition& x, int kphase, double& rho, double& vE, double& eE, double& hE,
            double& sE, double& aE, double& gE, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    vE = eE = hE = sE = aE = gE = 0.0;
    if (t <= 0.0) return;
    int kguess = 0;
    if (rho < 0.0) {
        rho = -rho;
        kguess = 1;
    }
    if (kphase != 0) {
        const double start = rho;
        TPRHO(t, p, x, kphase, kguess, rho, ierr, herr);
        if (ierr > 0) {
            rho = 2.0 * (kguess == 1 ? start : rho);
            TPRHO(t, p, x, kphase, 1, rho, ierr, herr);
        }
    }
    if (kphase == 0 || ierr > 0) {
        rho = flashDensity(t, p, x, ierr, herr);
        if (ierr > 0) return;
    }
    const Properties mixture = propertiesAt(t, rho, x);
    Properties ideal{};
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (x[i] <= 0.0) continue;
        const Composition pure = unitComposition(i);
        const double pureRho = flashDensity(t, p, pure, ierr, herr);
        if (ierr > 0) {
            RMIX(x);
            return;
        }
        const Properties component = propertiesAt(t, pureRho, pure);
        RMIX(x);
        const double R = fluidConstants.R, logarithm = std::log(x[i]);
        ideal.v += x[i] * component.v;
        ideal.e += x[i] * component.e;
        ideal.h += x[i] * component.h;
        ideal.s += x[i] * (component.s - R * logarithm);
        ideal.a += x[i] * (component.a + R * t * logarithm);
        ideal.g += x[i] * (component.g + R * t * logarithm);
    }
    RMIX(x);
    vE = mixture.v - ideal.v;
    eE = mixture.e - ideal.e;
    hE = mixture.h - ideal.h;
    sE = mixture.s - ideal.s;
    aE = mixture.a - ideal.a;
    gE = mixture.g - ideal.g;
}

void ACTVY(double t, double rho, const Composition& x, Composition& activity, Composition& actcoef, int& ierr,
           Text255& herr) {
    activity.fill(0.0);
    actcoef.fill(0.0);
    Composition f{};
    FGCTY2(t, rho, x, f, ierr, herr);
    if (ierr > 0) return;
    double p = 0.0;
    PRESS(t, rho, x, p);

    const int selected = modelTags.IPUREFLD;
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (x[i] <= 0.0) continue;
        modelTags.IPUREFLD = i;
        RMIX(x);
        Composition pureFugacity{};
        const double pureRho = flashDensity(t, p, x, ierr, herr);
        if (ierr <= 0) FGCTY2(t, pureRho, x, pureFugacity, ierr, herr);
        modelTags.IPUREFLD = selected;
        if (ierr > 0) break;
        if (pureFugacity[i] > 0.0) activity[i] = f[i] / pureFugacity[i];
        actcoef[i] = activity[i] / x[i];
    }
    RMIX(x);
}

}  // namespace frigana
