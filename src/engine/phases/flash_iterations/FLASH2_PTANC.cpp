// Two phases of a pseudo-pure fluid from its ancillary lines: PTANC.
#include <cmath>

#include "FLASH2_ITERATIONS.h"
#include "FlashBricks.h"
#include "ModelTags.h"

namespace frigana {

void PTANC(double& T, double& p, double& q, double b, char letter, double& Dl, double& Dv) {
    constexpr int mostPasses = 20;
    constexpr double tolerance = 1e-5;
    const Composition z = unitComposition(modelTags.IPUREFLD > 0 ? modelTags.IPUREFLD : 1);
    SaturatedPair bubble;
    SaturatedPair dew;
    double Tbefore = 0;
    double pBefore = 0;
    for (int pass = 1; pass <= mostPasses; ++pass) {
        const SilentMessages quiet;
        saturationAtT(T, z, 1, bubble);
        saturationAtT(T, z, 2, dew);
        if (bubble.ierr > 0 || dew.ierr > 0) return;
        Dl = bubble.Dl;
        Dv = dew.Dv;
        if (letter == 'D') {
            q = volumeQuality(b, Dl, Dv);
        } else if (letter != 'Q') {
            const double liquid = propertyByLetter(letter, T, Dl, z);
            const double vapor = propertyByLetter(letter, T, Dv, z);
            if (std::abs(vapor - liquid) > 1e-20) q = (b - liquid) / (vapor - liquid);
        }
        const double pNow = (1 - q) * bubble.p + q * dew.p;
        // The first step is a hundredth of a degree toward the pressure; from then on the secant.
        double step = p > pNow ? 0.01 : -0.01;
        if (pass > 1) {
            if (std::abs(pNow - pBefore) < 1e-14) return;
            step = (T - Tbefore) / (pNow - pBefore) * (p - pNow);
        }
        if (std::abs(p - pNow) <= tolerance * 1e-3 || std::abs(step) <= tolerance) return;
        Tbefore = T;
        pBefore = pNow;
        T += step;
    }
}

}  // namespace frigana
