#include "CURVES.h"

#include <cmath>

#include "DISPATCH.h"
#include "FluidConstants.h"
#include "Message.h"
#include "UTILITY.h"

namespace frigana {

namespace {

// A curve's condition f and T df/dT at the reduced state.
struct Condition {
    double f, slope;
};

// Newton's method in temperature on a condition of (icomp, tau, del).
template <class Function>
void search(double rho, const Composition& x, double startFactor, int mostSteps, const char* refusal, double& t,
            int& ierr, Text255& herr, Function condition) {
    constexpr double tolerance = 1e-8;
    ierr = 0;
    herr.clear();
    int pure;
    ISPURE(x, pure);
    if (pure == 0) {
        t = 0.0;
        ierr = 1;
        message(herr, refusal, nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    const double tz = fluidConstants.TZ[pure];
    const double del = rho / fluidConstants.RHOZ[pure];
    if (!(t > 0.0)) t = startFactor * tz;
    for (int step = 1; step <= mostSteps; ++step) {
        const Condition at = condition(pure, tz / t, del);
        if (std::fabs(at.f) <= tolerance) return;
        if (at.slope == 0.0) break;
        t -= at.f * t / at.slope;
        if (!(t > 0.0)) break;
    }
    t = 0.0;
}

}  // namespace

void IDCRV(double rho, const Composition& x, double& t, int& ierr, Text255& herr) {
    search(rho, x, 1.5, 1000, "IDCRV:  valid only for pure fluids", t, ierr, herr,
           [](int icomp, double tau, double del) {
               return Condition{PHIK(icomp, 0, 1, tau, del), -PHIK(icomp, 1, 1, tau, del)};
           });
}

void BLCRV(double rho, const Composition& x, double& t, int& ierr, Text255& herr) {
    search(rho, x, 1.5, 100, "BL:  not a pure fluid", t, ierr, herr, [](int icomp, double tau, double del) {
        return Condition{PHIK(icomp, 0, 1, tau, del) + PHIK(icomp, 0, 2, tau, del),
                         -(PHIK(icomp, 1, 1, tau, del) + PHIK(icomp, 1, 2, tau, del))};
    });
}

void JTCRV(double rho, const Composition& x, double& t, int& ierr, Text255& herr) {
    search(rho, x, 1.5, 500, "JTCRV:  not a pure fluid", t, ierr, herr, [](int icomp, double tau, double del) {
        const double a11 = PHIK(icomp, 1, 1, tau, del);
        return Condition{PHIK(icomp, 0, 1, tau, del) + PHIK(icomp, 0, 2, tau, del) + a11,
                         -(a11 + PHIK(icomp, 1, 2, tau, del) + a11 + PHIK(icomp, 2, 1, tau, del))};
    });
}

// T df/dT of a11 is -(a11 + a21): on the curve, where a11 vanishes, the slope of the Newton step is the same with a21
// alone, and away from it only the length of the step differs.
void JICRV(double rho, const Composition& x, double& t, int& ierr, Text255& herr) {
    search(rho, x, 10.0, 500, "JICRV:  not a pure fluid", t, ierr, herr, [](int icomp, double tau, double del) {
        return Condition{PHIK(icomp, 1, 1, tau, del), -PHIK(icomp, 2, 1, tau, del)};
    });
}

}  // namespace frigana
