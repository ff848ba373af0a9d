#include "DISPATCH.h"

#include <cmath>

#include "CORE_BWR.h"
#include "CORE_CPP.h"
#include "CORE_ECS.h"
#include "CORE_ECS_PHI.h"
#include "CORE_FEQ.h"
#include "CORE_PH0.h"
#include "CORE_PR.h"
#include "CORE_QUI.h"
#include "FluidConstants.h"
#include "MIX_AGA8.h"
#include "MIX_HMX.h"
#include "ModelTags.h"
#include "UTILITY.h"

namespace frigana {

namespace {

constexpr double smallestDensity = 1e-10;  // reduced density below which a fluid is taken for an ideal gas

bool begins(const Text3& tag, char first, char second) {
    return tag[1] == first && tag[2] == second;
}
bool is(const Text3& tag, char first, char second, char third) {
    return begins(tag, first, second) && tag[3] == third;
}

}  // namespace

double PHIK(int icomp, int itau, int idel, double tau, double del) {
    if (del <= smallestDensity) return 0.0;
    const Text3& tag = modelTags.HMXEOS[icomp];
    if (begins(tag, 'F', 'E')) return PHIFEQ(icomp, itau, idel, tau, del);
    if (is(tag, 'Q', 'U', 'I')) return PHIQUI(icomp, itau, idel, tau, del);
    if (is(tag, 'B', 'W', 'R')) return PHIBWR(icomp, itau, idel, tau, del);
    if (is(tag, 'E', 'C', 'S')) return PHIECS(icomp, itau, idel, tau, del);
    if (begins(tag, 'P', 'R')) return PHIPR(icomp, itau, idel, tau, del);
    return -noSuchModel;
}

double PHIX(int itau, int idel, double tau, double del, const Composition& x) {
    if (del <= smallestDensity) return 0.0;
    int icomp = 0;
    ISPURE(x, icomp);
    if (icomp != 0) return PHIK(icomp, itau, idel, tau, del);
    const Text3& tag = modelTags.HEOS;
    if (is(tag, 'H', 'M', 'X')) return PHIHMX(itau, idel, tau, del, x);
    if (is(tag, 'A', 'G', 'A')) return PHIAGA(itau, idel, tau, del, x);
    if (begins(tag, 'P', 'R')) return PHIPRX(itau, idel, tau, del, x);
    return 0.0;
}

void REDK(int icomp, double& tz, double& rhoz) {
    double pc = 0.0;
    const Text3& tag = modelTags.HMXEOS[icomp];
    if (begins(tag, 'F', 'E'))
        REDFEQ(icomp, tz, rhoz);
    else if (is(tag, 'Q', 'U', 'I'))
        REDQUI(icomp, tz, rhoz);
    else if (is(tag, 'B', 'W', 'R'))
        CRTBWR(icomp, tz, pc, rhoz);
    else if (is(tag, 'E', 'C', 'S'))
        CRTECS(icomp, tz, pc, rhoz);
    else if (begins(tag, 'P', 'R')) {
        // The switch to this model leaves the reducing values of the fluid's own equation in place, and these need not
        // be its critical point.
        tz = fluidConstants.TZ[icomp];
        rhoz = fluidConstants.RHOZ[icomp];
    } else
        tz = rhoz = noSuchModel;
}

void REDX(const Composition& x, double& tz, double& rhoz) {
    int icomp = 0;
    ISPURE(x, icomp);
    const Text3& tag = modelTags.HEOS;
    if (icomp != 0)
        REDK(icomp, tz, rhoz);
    else if (is(tag, 'H', 'M', 'X') || is(tag, 'A', 'G', 'A'))
        REDHMX(x, tz, rhoz);
    else if (begins(tag, 'P', 'R'))
        REDPR(x, tz, rhoz);
    else
        tz = rhoz = noSuchModel;
}

double CP0K(int icomp, double t) {
    const Text3& tag = modelTags.HMODCP[icomp];
    if (begins(tag, 'C', 'P')) return CP0CPP(icomp, t);
    // the second derivative in temperature does not depend on density
    if (begins(tag, 'P', 'H')) return fluidConstants.R * (1.0 - PH0PH0(icomp, 2, 0, t, 0.0));
    return 0.0;
}

namespace {

double CPIK(int icomp, double t) {
    return begins(modelTags.HMODCP[icomp], 'C', 'P') ? CPICPP(icomp, t) : 0.0;
}
double CPTK(int icomp, double t) {
    return begins(modelTags.HMODCP[icomp], 'C', 'P') ? CPTCPP(icomp, t) : 0.0;
}

template <double (*property)(int, double)>
double sumOfComponents(double t, const Composition& x) {
    int icomp = 0;
    ISPURE(x, icomp);
    if (icomp != 0) return property(icomp, t);
    double sum = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) sum += x[i] * property(i, t);
    return sum;
}

}  // namespace

double CP0(double t, const Composition& x) {
    return sumOfComponents<CP0K>(t, x);
}
double CPI(double t, const Composition& x) {
    return sumOfComponents<CPIK>(t, x);
}
double CPT(double t, const Composition& x) {
    return sumOfComponents<CPTK>(t, x);
}

double PHI0K(int icomp, int itau, int idel, double t, double rho) {
    const Text3& tag = modelTags.HMODCP[icomp];
    if (begins(tag, 'C', 'P')) return PH0CPP(icomp, itau, idel, t, rho);
    if (begins(tag, 'P', 'H')) return PH0PH0(icomp, itau, idel, t, rho);
    return 0.0;
}

double PHI0(int itau, int idel, double t, double rho, const Composition& x) {
    int icomp = 0;
    ISPURE(x, icomp);
    if (icomp != 0) return PHI0K(icomp, itau, idel, t, rho);
    double sum = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (x[i] <= 1e-10 || x[i] > 1.0000000001) continue;
        sum += x[i] * PHI0K(i, itau, idel, t, rho);
        if (itau == 0 && idel == 0) sum += x[i] * std::log(x[i]);
    }
    return sum;
}

double PHIHMX(int itau, int idel, double tau, double del, const Composition& x) {
    if (del <= smallestDensity) return 0.0;
    constexpr double smallestFraction = 1e-12;
    double sum = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i)
        if (x[i] > smallestFraction) sum += x[i] * PHIK(i, itau, idel, tau, del);
    return sum + sumOfDepartures(itau, idel, tau, del, x, smallestFraction);
}

}  // namespace frigana
