// Critical point of a mixture from the critical lines of its binary pairs.
#include <cmath>

#include "CORE_FEQ.h"
#include "CORE_PR.h"
#include "CriticalMemory.h"
#include "DISPATCH.h"
#include "MIX_HMX.h"
#include "Message.h"
#include "PROP_SUB.h"
#include "SaturationSpline.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

namespace {

// Value of a pair's critical line between its components' values a and b. With u and w the distances of the mixture
// from the two components, u + w = 1.
double lineValue(const Array1<double, 11>& c, double u, double w, double a, double b) {
    double first = 0.0, second = 0.0;
    for (int k = 6; k >= 2; --k) {
        first = first * u + c[k];
        second = second * w + c[k + 5];
    }
    return u * a + w * b + u * w * (c[1] + u * first + w * second);
}

bool sameComposition(const Composition& x, const Composition& known) {
    for (int i = 1; i <= modelTags.NC; ++i)
        if (std::fabs(x[i] - known[i]) > 1e-6) return false;
    return true;
}

// "TC1" or "VC1", the tags of a critical line in temperature and in volume.
bool isOne(const Text3& tag, char first) {
    return tag[1] == first && tag[2] == 'C' && tag[3] == '1';
}

bool envelopeKnown(const Composition& x) {
    return saturationSpline.SPLINEREADY && sameComposition(x, saturationSpline.XSPLN);
}

bool pointAdopted(const Composition& x) {
    return adoptedCriticalPoint.known && modelTags.HEOS == "HMX" && !pengRobinsonSelected() &&
           sameComposition(x, adoptedCriticalPoint.x);
}

}  // namespace

AdoptedCriticalPoint adoptedCriticalPoint;

bool criticalLineOf(const Composition& x, double& Tc, double& Pc, double& Dc, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    const FluidConstants& constants = fluidConstants;
    int icomp = 0;
    ISPURE(x, icomp);
    if (icomp > 0) {
        Tc = constants.TCRIT[icomp];
        Pc = constants.PCRIT[icomp];
        Dc = constants.DCRIT[icomp];
        return true;
    }
    if (envelopeKnown(x)) {
        const EnvelopePoint& point = saturationSpline.criticalPoint;
        if (point.ierr == 0) {
            Tc = point.T;
            Pc = point.p;
            Dc = point.D;
            return true;
        }
        ierr = -132;
        message(herr,
                "[CRTHMX error -132] Failed to find critical point from splines, values given here used TC1 and VC1 "
                "coefficients",
                nullCharacter);
        ERRMSG(ierr, herr);
    }

    if (pointAdopted(x)) {
        Tc = adoptedCriticalPoint.T;
        Pc = adoptedCriticalPoint.p;
        Dc = adoptedCriticalPoint.D;
        return true;
    }

    const int nc = modelTags.NC;
    double weight = 0.0, sumT = 0.0, sumV = 0.0;
    bool lines = true;
    for (int i = 1; i < nc && lines; ++i) {
        if (x[i] <= 0.0) continue;
        for (int j = i + 1; j <= nc; ++j) {
            if (x[j] <= 0.0) continue;
            const MixingPair& p = mixingParameters.pair[i][j];
            if (!isOne(p.HMODTC, 'T') || !isOne(p.HMODVC, 'V')) {
                lines = false;
                break;
            }
            if (std::fabs(p.FTCIJ[1]) < 1e-12) {
                ierr = -131;
                message(herr,
                        "[CRTHMX error -131] coefficients not available for critical line calculation, mixture may not "
                        "be type 1",
                        nullCharacter);
            }
            const double u = (x[i] + 1.0 - x[j]) / 2.0, w = (x[j] + 1.0 - x[i]) / 2.0, a = x[i] * x[j];
            weight += a;
            sumT += a * lineValue(p.FTCIJ, u, w, constants.TCRIT[i], constants.TCRIT[j]);
            sumV += a * lineValue(p.FVCIJ, u, w, 1.0 / constants.DCRIT[i], 1.0 / constants.DCRIT[j]);
        }
    }
    if (!lines) {
        REDHMX(x, Tc, Dc);
    } else if (weight <= 0.0) {
        Tc = 300.0;
        Pc = Dc = 10.0;
        ierr = 1;
        message(herr, "[CRTHMX error] sum(x)=0", nullCharacter);
        ERRMSG(ierr, herr);
        return true;
    } else {
        Tc = sumT / weight;
        Dc = weight / sumV;
    }
    if (ierr == -131) ERRMSG(ierr, herr);
    return false;
}

namespace {

// Of Helmholtz equations alone: other models take their turns with them without a set-up, or keep states of their own.
bool canBeKept() {
    bool helmholtz = modelTags.HEOS == "HMX";
    for (int i = 1; i <= modelTags.NC; ++i) helmholtz = helmholtz && modelTags.HMXEOS[i].startsWith("FE");
    return helmholtz;
}

// The last estimate: all questions about one composition begin with its critical point. Written by criticalPressureAt,
// cleared by forgetCriticalPressure.
struct EstimatedPressure {
    int count = 0;  // components; 0 where nothing is known
    Composition x{};
    double T = 0.0, D = 0.0, p = 0.0;

    bool isOf(double Tc, double Dc, const Composition& z) const {
        if (count != modelTags.NC || T != Tc || D != Dc || !(modelTags.HEOS == "HMX")) return false;
        for (int i = 1; i <= count; ++i)
            if (x[i] != z[i]) return false;
        return true;
    }
};
EstimatedPressure lastEstimate;

// The models take two states for one when they differ in the last digits only. What follows the critical point is
// evaluated afresh, so that no result depends on whether the point was kept.
void leaveState() {
    for (int i = 1; i <= modelTags.NC; ++i) feqTerms[i].TAUSVF = feqTerms[i].DELSVF = 0.0;
    for (DepartureCache& cache : departureCache) cache.TAUSVH = cache.DELSVH = 0.0;
}

}  // namespace

void forgetCriticalPressure() {
    lastEstimate.count = 0;
}

double criticalPressureAt(double Tc, double Dc, const Composition& x) {
    if (lastEstimate.isOf(Tc, Dc, x)) {
        RMIX(x);  // as every routine that asks for a property
        leaveState();
        return lastEstimate.p;
    }
    double Pc;
    PRESS(Tc, Dc, x, Pc);
    if (Pc < 0.0) Pc = fluidConstants.PCRIT[1];
    lastEstimate = {canBeKept() ? modelTags.NC : 0, x, Tc, Dc, Pc};
    return Pc;
}

void CRTHMX(const Composition& x, double& Tc, double& Pc, double& Dc, int& ierr, Text255& herr) {
    if (!criticalLineOf(x, Tc, Pc, Dc, ierr, herr)) Pc = criticalPressureAt(Tc, Dc, x);
}

}  // namespace frigana
