#include "PhaseCheck.h"

#include <algorithm>
#include <cmath>

#include "FluidConstants.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "PROP_SUB_FUGACITY.h"

namespace frigana {

namespace {

constexpr double trace = 1e-12;     // fraction below which the fugacity is left out of the test
constexpr double samePhase = 1e-4;  // in the fractions, and relative in the densities
constexpr double stiffness = 1e-3;  // share of rho dp/drho that stands for the pressure where a liquid hardly has one

}  // namespace

double packing(double rho, const Composition& x) {
    double volume = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i)
        if (fluidConstants.DCRIT[i] > 0.0) volume += x[i] / fluidConstants.DCRIT[i];
    return rho * volume;
}

bool phasesInOrder(double rhol, const Composition& xliq, double rhov, const Composition& xvap) {
    return packing(rhol, xliq) > packing(rhov, xvap);
}

bool vaporIsNone(double T, double p, double rhov, const Composition& xvap, double pc) {
    constexpr double densestVapor = 1.5, thinVapor = 0.25;
    constexpr int places = 20;
    const double packed = packing(rhov, xvap);
    if (p < pc && packed > densestVapor) return true;
    if (packed < thinVapor) return false;
    for (int k = 1; k < places; ++k) {
        double slope = 0.0;
        DPDD(T, rhov * (thinVapor / packed + (1.0 - thinVapor / packed) * k / places), xvap, slope);
        if (slope < 0.0) return true;
    }
    return false;
}

bool samePhaseTwice(double rhol, const Composition& xliq, double rhov, const Composition& xvap) {
    double farthest = std::fabs(rhol - rhov) / rhol;
    for (int i = 1; i <= modelTags.NC; ++i) farthest = std::max(farthest, std::fabs(xliq[i] - xvap[i]));
    return farthest < samePhase;
}

void closeBalance(const Composition& z, double q, Composition& xliq, Composition& xvap) {
    constexpr double smallestChange = 1e-6;  // relative; more is no rounding
    if (!(q > 0.0 && q < 1.0)) return;
    const bool inVapor = q >= 0.5;
    for (int i = 1; i <= modelTags.NC; ++i) {
        double& fraction = inVapor ? xvap[i] : xliq[i];
        const double closed = inVapor ? (z[i] - (1.0 - q) * xliq[i]) / q : (z[i] - q * xvap[i]) / (1.0 - q);
        if (std::fabs(closed - fraction) < smallestChange * fraction) fraction = closed;
    }
}

bool phasesInEquilibrium(double T, double p, double rhol, const Composition& xliq, double rhov, const Composition& xvap,
                         double tolerance) {
    if (!(rhol > 0.0 && rhov > 0.0 && p > 0.0 && T > 0.0) || !std::isfinite(rhol + rhov + p + T)) return false;
    if (!phasesInOrder(rhol, xliq, rhov, xvap)) return false;
    if (samePhaseTwice(rhol, xliq, rhov, xvap)) return false;

    for (const bool vapor : {false, true}) {
        const double rho = vapor ? rhov : rhol;
        const Composition& x = vapor ? xvap : xliq;
        double at = 0.0, slope = 0.0;
        PRESS(T, rho, x, at);
        DPDD(T, rho, x, slope);
        if (slope < 0.0 || !(std::fabs(at - p) < 10.0 * tolerance * std::max(p, stiffness * rho * slope))) return false;
    }
    Composition fl{}, fv{};
    int ierr = 0;
    Text255 herr;
    FGCTY2(T, rhol, xliq, fl, ierr, herr);
    if (ierr > 0) return false;
    FGCTY2(T, rhov, xvap, fv, ierr, herr);
    if (ierr > 0) return false;
    for (int i = 1; i <= modelTags.NC; ++i)
        if (xliq[i] > trace && xvap[i] > trace && !(std::fabs(fl[i] / fv[i] - 1.0) < tolerance)) return false;
    return true;
}

}  // namespace frigana
