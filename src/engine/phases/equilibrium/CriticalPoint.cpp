#include "CriticalPoint.h"

#include <algorithm>
#include <cmath>

#include "FluidConstants.h"
#include "MIX_HMX.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

CriticalPoint criticalPointOf(const Composition& z, int& ierr, Text255& herr) {
    CriticalPoint point;
    CRITP(z, point.T, point.p, point.D, ierr, herr);
    return point;
}

CriticalPoint criticalPointOf(const Composition& z) {
    int ierr = 0;
    Text255 herr;
    return criticalPointOf(z, ierr, herr);
}

double hottestComponent(const Composition& z) {
    double hottest = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i)
        if (z[i] > 0.0) hottest = std::max(hottest, fluidConstants.TCRIT[i]);
    return hottest;
}

double coldestComponent(const Composition& z) {
    double coldest = hottestComponent(z);
    for (int i = 1; i <= modelTags.NC; ++i)
        if (z[i] > 0.0) coldest = std::min(coldest, fluidConstants.TCRIT[i]);
    return coldest;
}

bool gasOverLiquid(double T, const Composition& z) {
    constexpr double farAbove = 1.2, littleAbove = 1.05;
    return T >= farAbove * coldestComponent(z) && T < littleAbove * hottestComponent(z);
}

bool farApart(const Composition& z) {
    constexpr double far = 1.3, little = 0.01;
    Composition most = z;
    for (int i = 1; i <= modelTags.NC; ++i)
        if (z[i] < little) most[i] = 0.0;
    return mixingParameters.AMMONIAWATER == 0 && hottestComponent(most) > far * coldestComponent(most);
}

void CRTDEN(const Composition& x, double T, double& rho) {
    constexpr double h = 0.0001;  // [mol/L]
    for (int step = 1; step <= 30; ++step) {
        double here, above, below;
        DPDD2(T, rho, x, here);
        if (std::fabs(here) < 1e-12) return;
        DPDD2(T, rho + h, x, above);
        DPDD2(T, rho - h, x, below);
        const double first = (above - below) / (2.0 * h);
        const double second = (above - 2.0 * here + below) / (h * h);
        const double denominator = 2.0 * first * first - here * second;
        if (denominator == 0.0) return;
        rho -= 2.0 * here * first / denominator;
        if (rho <= 0.0) return;
    }
}

void FNCRPT(const Composition& x, double& tc, double& rhoc, double& pc, int& ierr, Text255& herr) {
    double Tc, Dc;
    CRITP(x, Tc, pc, Dc, ierr, herr);
    if (ierr > 0) return;
    ierr = 0;
    herr.clear();
    RMIX(x);
    rhoc = Dc;
    // slope of the isotherm at its inflection
    const auto slope = [&](double T) {
        CRTDEN(x, T, rhoc);
        double dpdrho;
        DPDD(T, rhoc, x, dpdrho);
        return dpdrho / 1000.0;
    };
    double t1 = Tc + 0.1, f1 = slope(t1);
    tc = Tc;
    for (int step = 1; step <= 20; ++step) {
        const double f2 = slope(tc);
        if (std::fabs(f2) < 1e-10) {
            PRESS(tc, rhoc, x, pc);
            return;
        }
        if (f2 == f1) break;
        const double next = tc - f2 * (tc - t1) / (f2 - f1);
        t1 = tc;
        f1 = f2;
        tc = next;
    }
    ierr = 1;
    message(herr, "[FNCRPT error 1] no convergence", nullCharacter);
    ERRMSG(ierr, herr);
}

}  // namespace frigana
