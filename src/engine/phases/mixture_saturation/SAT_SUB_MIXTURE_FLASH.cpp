// Two phases at temperature and pressure by substitution.
#include <cmath>

#include "LIMITS.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "PhasePair.h"
#include "SAT_SUB_MIXTURE.h"
#include "SAT_SUB_NEWTON.h"
#include "SaturationBricks.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {
namespace {

// One step of the search for the liquid fraction alpha at given K: liquid composition of the material balance, and how
// far its sum is from one.
double balanceOfLiquid(double alpha, const Composition& z, const Composition& K, Composition& x) {
    double sum = 0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        const double denominator = alpha + K[i] * (1 - alpha);
        x[i] = z[i] > 0 && std::abs(denominator) > 1e-300 ? z[i] / denominator : 0;
        sum += x[i];
    }
    if (std::abs(sum) > 1e-300) {
        for (int i = 1; i <= modelTags.NC; ++i) x[i] /= sum;
    }
    return 1 - sum;
}

// Liquid fraction alpha for given K; false if 80 steps were not enough.
bool solveLiquidFraction(const Composition& z, const Composition& K, double t, double& alpha, Composition& x) {
    double alpha1 = alpha;
    double F1 = balanceOfLiquid(alpha1, z, K, x);
    alpha = alpha1;
    if (std::abs(F1) < 0.01 * t) return true;
    double alpha2 = alpha1 <= 0.5 ? alpha1 + 0.05 : alpha1 - 0.05;
    for (int step = 2; step <= 80; ++step) {
        const double F2 = balanceOfLiquid(alpha2, z, K, x);
        alpha = alpha2;
        if (std::abs(F2) < 0.01 * t) return true;
        double alpha3 = std::abs(F2 - F1) > 0.01 * t ? alpha2 - F2 * (alpha2 - alpha1) / (F2 - F1)
                                                     : (alpha1 <= 0.5 ? alpha1 + t : alpha1 - t);
        if (alpha3 < -100 * t || alpha3 > 1 + 100 * t) alpha3 = alpha2 / 2;
        alpha1 = alpha2;
        F1 = F2;
        alpha2 = alpha3;
    }
    return false;
}

// The saturated liquid of a composition, where its density at a state is none.
void saturatedLiquid(double p, const Composition& x, double& Dl) {
    PhasePair pair;
    pair.p = p;
    int ierr = 0;
    Text255 herr;
    const SilentMessages quiet;
    if (newtonEquilibrium(pair, x, 3, 0, ierr, herr) != NewtonEnd::found) {
        double tmin, tmax, Dmax, pmax;
        LIMITS("EOS", x, tmin, tmax, Dmax, pmax);
        mixtureAtPressure(p, x, 1, criticalPointOf(x), Dmax, pair.T, pair.Dl, pair.Dv, pair.x, pair.y, ierr, herr);
    }
    if (ierr <= 0) Dl = pair.Dl;
}

}  // namespace

void substituteCompositions(double T, double p, const Composition& z, double& Dl, double& Dv, Composition& x,
                            Composition& y, double& q, int& ierr, Text255& herr) {
    const int nc = modelTags.NC;
    double alpha = 1 - q;
    double t = 1e-9;
    double perturbation = 0.01;
    double sign = 1;
    bool innerExhausted = false;
    Text255 inner;
    ierr = 0;
    herr.clear();

    Composition yOld = y;
    for (int pass = 1; pass <= 80; ++pass) {
        if (pass == 12 || pass == 24 || pass == 50) t *= 100;
        const Composition xStart = x;
        const Composition yStart = y;

        // Density of the liquid; where there is none the composition is moved to and fro, ever farther.
        for (;;) {
            TPRHO(T, p, x, 1, Dl > 0 ? 1 : 0, Dl, ierr, inner);
            if (ierr <= 0) break;
            x[1] += sign * perturbation;
            for (int i = 2; i <= nc; ++i) x[i] -= sign * perturbation / (nc - 1);
            perturbation += 0.01;
            sign = -sign;
            if (x[1] <= 0 || x[1] >= 1) {
                ierr = 216;
                message(herr, "[TPFLSH error 216] liquid density iteration for 2-phase state did not converge:  ",
                        innerText(inner), nullCharacter);
                ERRMSG(ierr, herr);
                q = 1 - alpha;
                return;
            }
        }
        double slope = 0;
        DPDD(T, Dl, x, slope);
        if (std::abs(slope) > 1e7) saturatedLiquid(p, x, Dl);

        // Density of the vapor.
        TPRHO(T, p, y, 2, Dv > 0 ? 1 : 0, Dv, ierr, inner);
        if (ierr > 0) {
            for (int i = 1; i <= nc; ++i) y[i] = 0.8 * y[i] + 0.2 * yOld[i];
            continue;
        }

        // Distribution of the components between the phases.
        Composition fl{};
        Composition fv{};
        FGCTY2(T, Dl, x, fl, ierr, inner);
        FGCTY2(T, Dv, y, fv, ierr, inner);
        bool fugacityFailed = false;
        Composition K{};
        for (int i = 1; i <= nc; ++i) {
            if (z[i] <= 0) continue;
            if (fl[i] == fugacityOutOfRange || fv[i] == fugacityOutOfRange) fugacityFailed = true;
            K[i] = x[i] > 0 && fv[i] != 0 ? fl[i] * y[i] / (x[i] * fv[i]) : 0;
        }
        if (fugacityFailed) break;

        innerExhausted = !solveLiquidFraction(z, K, t, alpha, x);
        if (innerExhausted) {
            ierr = -218;
            message(herr,
                    "[TPFLSH warning 218] inner iteration loop for liquid fraction in 2-phase state did not "
                    "converge:  ",
                    nullCharacter);
            ERRMSG(ierr, herr);
        }

        yOld = yStart;
        double sum = 0;
        for (int i = 1; i <= nc; ++i) {
            y[i] = fv[i] != 0 ? y[i] * fl[i] / fv[i] : 0;
            sum += y[i];
        }
        normalize(y);
        if (std::abs(1 - sum) < t) {
            if (innerExhausted) {
                ierr = 218;
                message(herr,
                        "[TPFLSH error 218] inner iteration loop for liquid fraction in 2-phase state did not "
                        "converge:  ",
                        nullCharacter);
                ERRMSG(ierr, herr);
            } else {
                ierr = 0;
                herr.clear();
            }
            if (pass > 1) {
                q = 1 - alpha;
                return;
            }
        }
        if (pass % 10 == 0) {
            for (int i = 1; i <= nc; ++i) {
                x[i] = 0.5 * (x[i] + xStart[i]);
                y[i] = 0.5 * (y[i] + yStart[i]);
            }
        }
    }
    ierr = 219;
    message(herr, "[TPFLSH error 219] outer iteration loop for composition in 2-phase state did not converge:  ",
            nullCharacter);
    ERRMSG(ierr, herr);
    q = 1 - alpha;
}

}  // namespace frigana
