#include <cmath>

#include "CORE_CPP.h"
#include "CORE_FEQ.h"
#include "FluidConstants.h"
#include "MIX_HMX.h"
#include "ReferenceState.h"
#include "SETUP.h"

namespace frigana {

namespace {

// Default values of enthalpy [J/mol] and entropy [J/(mol K)] at 300 K: as a fluid file has them, and in full.
struct MixturePoint {
    double hRounded, sRounded, h, s;
};
constexpr MixturePoint ammoniaPoint = {45957.0, 164.0, 45957.74401972, 164.007259009};
constexpr MixturePoint waterPoint = {28945.0, 159.0, 28945.5688500127, 159.336684302313};
constexpr double mixtureGasConstant = 8.314471;  // J/(mol K)

bool hasPoint(int i, const MixturePoint& point) {
    const ReferenceState& state = referenceState;
    return std::abs(state.TREF[i] - 300.0) < 0.001 && std::abs(state.HDEF[i] - point.hRounded) < 1.0 &&
           std::abs(state.SDEF[i] - point.sRounded) < 1.0;
}

void takePoint(int i, const MixturePoint& point) {
    referenceState.HDEF[i] = point.h;
    referenceState.SDEF[i] = point.s;
}

}  // namespace

void AMH2OR() {
    const int ammonia = mixingParameters.AMMONIAWATER;
    if (ammonia != 1 && ammonia != 2) return;
    const int water = 3 - ammonia;
    if (!hasPoint(ammonia, ammoniaPoint) || !hasPoint(water, waterPoint)) return;

    fluidConstants.REOS[ammonia] = feqTerms[ammonia].RFEQ = mixtureGasConstant;
    cppTerms[ammonia].CREDCP = mixtureGasConstant;
    takePoint(ammonia, ammoniaPoint);
    takePoint(water, waterPoint);

    referenceState.LREFDONE = false;  // the tag is the same, the point is not
    Text3 hrf("DEF");
    int ierr = 0;
    Text255 herr;
    SETREF(hrf, 1, unitComposition(1), 0.0, 0.0, 0.0, 0.0, ierr, herr);
}

}  // namespace frigana
