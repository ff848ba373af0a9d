#include "SAT_SUB_PURE.h"

#include <algorithm>
#include <cmath>

#include "CORE_ANC.h"
#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "SAT_SUB_PURE_NEWTON.h"
#include "SAT_SUB_SPINODAL.h"
#include "SaturationBricks.h"
#include "TPRHO.h"
#include "UTILITY.h"
#include "UTILITY_NUMERICS.h"

namespace frigana {
namespace {

constexpr double pressureTolerance = 1e-6;     // relative, of SATT
constexpr double temperatureTolerance = 1e-6;  // [K], of SATP

double gibbsEnergy(double T, double rho, const Composition& x) {
    double A, G;
    AG(T, rho, x, A, G);
    return G;
}

// Step to the pressure where both phases have one Gibbs energy: dG/dp is the volume.
double pressureStep(double liquidGibbs, double vaporGibbs, double rhol, double rhov) {
    return (liquidGibbs - vaporGibbs) / (1.0 / rhol - 1.0 / rhov);
}

// A blend treated as one fluid: its bubble and dew lines are the ancillary equations, and only the phase asked for has
// a density there.
bool isPseudoPure(int icomp) {
    return modelTags.IANC[icomp] == 1;
}
void onePhase(double T, double p, const Composition& x, int kph, int kguess, double& rhol, double& rhov, int& ierr,
              Text255& herr) {
    const bool dew = kph == vaporPhase;
    double& rho = dew ? rhov : rhol;
    TPRHO(T, p, x, dew ? vaporPhase : liquidPhase, kguess, rho, ierr, herr);
    rhol = rhov = rho;
}

// Between the spinodals each density has one root: the liquid lies above its spinodal, the vapor below its own.
void betweenSpinodals(double T, const Composition& x, const CriticalPoint& critical, double liquidEstimate,
                      double vaporEstimate, double& p, double& rhol, double& rhov, int& ierr, Text255& herr) {
    if (liquidEstimate <= 0.0 || vaporEstimate <= 0.0) return;
    // Each property is taken right after the search that ended at its density: the equation still holds that state.
    double liquidSpinodal = liquidEstimate, vaporSpinodal = vaporEstimate;
    double pl = 0.0, pv = 0.0;
    LIQSPNDL(T, x, liquidSpinodal, ierr, herr);
    if (ierr <= 0) {
        PRESS(T, liquidSpinodal, x, pl);
        VAPSPNDL(T, x, vaporSpinodal, ierr, herr);
    }
    if (ierr <= 0) {
        PRESS(T, vaporSpinodal, x, pv);
        // densities at the pressure of the other spinodal bound the saturated ones
        double densest, thinnest = 0.0;
        TPRHOB(T, pv, liquidSpinodal, 2.0 * liquidSpinodal, x, densest, ierr, herr);
        if (pl > 0.0) TPRHOB(T, pl, 0.0, vaporSpinodal, x, thinnest, ierr, herr);
        p = 0.5 * (pl + pv);
        if (p < 0.0) p = 0.5 * pv;
        for (int pass = 1; pass <= 20; ++pass) {
            TPRHOB(T, p, vaporSpinodal, thinnest, x, rhov, ierr, herr);
            if (ierr > 0) {
                p *= 1.001;
                continue;
            }
            const double vaporGibbs = gibbsEnergy(T, rhov, x);
            TPRHOB(T, p, liquidSpinodal, densest, x, rhol, ierr, herr);
            if (ierr > 0) {
                p *= 0.999;
                continue;
            }
            const double step = pressureStep(gibbsEnergy(T, rhol, x), vaporGibbs, rhol, rhov);
            p = p - step < 0.0 ? 0.5 * p : p - step;
            if (100.0 * std::fabs(step / p) < pressureTolerance) {
                ierr = 0;
                herr.clear();
                return;
            }
        }
    }
    notConvergedAtTemperature(124, T, ierr, herr);
    p = critical.p;
    rhol = rhov = critical.D;
}

// Secant on the pressure of a temperature, close to the critical point or where the iteration in temperature has
// failed.
void secantOnTemperature(double p, const Composition& x, int icomp, int kph, const CriticalPoint& critical,
                         double acentric, double& T, double& rhol, double& rhov, int& ierr, Text255& herr) {
    const auto pressureAt = [&](double at) {
        if (at > critical.T - 1e-8) {
            rhol = rhov = critical.D;
            ierr = 0;
            herr.clear();
            return critical.p;
        }
        PureEstimates start = estimatesAtTemperature(at, acentric, critical);
        pureAtTemperature(at, x, icomp, kph, critical, start.rhol, start.rhov, start.p, rhol, rhov, ierr, herr);
        return start.p;
    };
    double Ta = 0.999 * critical.T, Tb = 0.9995 * critical.T;
    double pa = pressureAt(Ta);
    for (int pass = 1; pass <= 20; ++pass) {
        const double pb = pressureAt(Tb);
        T = Tb;
        if (std::fabs(pb - p) < 1e-6 && ierr == 0) return;
        if (std::fabs(pb - pa) < 1e-12) break;
        double next = Ta - (pa - p) * (Tb - Ta) / (pb - pa);
        if (next > critical.T) next = 0.5 * (critical.T + (Ta > Tb ? Ta : Tb));
        Ta = Tb;
        pa = pb;
        Tb = next;
    }
    notConvergedAtPressure(144, p, ierr, herr);
    if (p > static_cast<double>(0.9999f) * critical.p) {
        T = critical.T;
        rhol = rhov = critical.D;
    }
}

}  // namespace

PureEstimates estimatesAtTemperature(double T, double acentric, const CriticalPoint& critical) {
    const double u = (acentric + 1.5) * CBRTX(std::fabs(1.0 - T / critical.T));
    const double vapor = critical.D * (1.0 - 1.078683 * u + 0.05014057 * u * u);
    return {critical.p * std::pow(10.0, -2.333333 * (acentric + 1.0) * (critical.T / T - 1.0)),
            critical.D * (1.0 + 1.113614 * u + 0.0804 * u * u), vapor < 0.0 ? 1e-6 : vapor};
}

void pureAtTemperature(double T, const Composition& x, int icomp, int kph, const CriticalPoint& critical,
                       double liquidEstimate, double vaporEstimate, double& p, double& rhol, double& rhov, int& ierr,
                       Text255& herr) {
    ierr = 0;
    if (lastPureAtTemperature(T, icomp, p, rhol, rhov) || newtonPureAtTemperature(T, icomp, critical, p, rhol, rhov)) {
        herr.clear();
        return;
    }
    const auto nearCritical = [&] {
        betweenSpinodals(T, x, critical, liquidEstimate, vaporEstimate, p, rhol, rhov, ierr, herr);
    };
    if (T > 0.99 * critical.T && !isPseudoPure(icomp)) {
        nearCritical();
        return;
    }

    // starting values
    int kguess = 0;
    rhol = liquidEstimate;
    rhov = vaporEstimate;
    if (hasAncillary(modelTags.HPSK[icomp])) PSATK(icomp, T, p, ierr, herr);
    if (hasAncillary(modelTags.HPLK[icomp]) && kph == 1) PLSATK(icomp, T, p, ierr, herr);
    if (hasAncillary(modelTags.HDLK[icomp])) {
        DLSATK(icomp, T, rhol, ierr, herr);
        if (ierr > 0)
            rhol = liquidEstimate;
        else
            kguess = 1;
    }
    if (hasAncillary(modelTags.HDVK[icomp])) {
        DVSATK(icomp, T, rhov, ierr, herr);
        if (ierr > 0)
            rhov = vaporEstimate;
        else
            kguess = 1;
    }
    ierr = 0;
    herr.clear();

    if (isPseudoPure(icomp)) {
        onePhase(T, p, x, kph, kguess, rhol, rhov, ierr, herr);
        return;
    }

    double lastStep = 1e6;
    for (int pass = 1; pass <= 25; ++pass) {
        TPRHO(T, p, x, liquidPhase, kguess, rhol, ierr, herr);
        if (ierr > 0 || rhol <= 0.0) {
            kguess = 0;
            p *= 1.005;
            continue;
        }
        TPRHO(T, p, x, vaporPhase, kguess, rhov, ierr, herr);
        if (ierr > 0 || rhov <= 0.0) {
            p *= 0.95;
            continue;
        }
        kguess = 1;
        if (std::fabs(rhol - rhov) < 1e-8 || (std::fabs(1.0 / rhol - 1.0 / rhov) < 0.1 && T < critical.T - 1.0)) {
            ierr = 124;
            message(herr, "[SATT error 124] density roots equal", nullCharacter);
            ERRMSG(ierr, herr);
            nearCritical();
            return;
        }
        double step = pressureStep(gibbsEnergy(T, rhol, x), gibbsEnergy(T, rhov, x), rhol, rhov);
        if (std::fabs(step / p) < pressureTolerance || std::fabs((step - lastStep) / lastStep) < 1e-11) {
            p -= step;
            TPRHO(T, p, x, vaporPhase, 1, rhov, ierr, herr);
            if (ierr > 0 || p > critical.p || rhov > critical.D) {
                ierr = 123;
                passMessage(herr,
                            "[SATT error 123] vapor density iteration in saturation routine did not converge for "
                            "pressure iteration",
                            pass);
                ERRMSG(ierr, herr);
                nearCritical();
                return;
            }
            TPRHO(T, p, x, liquidPhase, 1, rhol, ierr, herr);
            // the pressure of a liquid at low pressure drowns in the rounding of its density
            PRESS(T, p > 1.0 ? rhol : rhov, x, p);
            if (ierr > 0 || p > critical.p || rhol < critical.D) {
                ierr = 122;
                passMessage(herr,
                            "[SATT error 122] liquid density iteration in saturation routine did not converge for "
                            "pressure iteration",
                            pass);
                nearCritical();
                return;
            }
            ierr = 0;
            herr.clear();
            return;
        }
        lastStep = step;
        for (int halving = 1; halving <= 10 && std::fabs(step) > 0.4 * p; ++halving) step *= 0.5;
        p -= step;
        if (p > 100000.0) break;
    }
    notConvergedAtTemperature(124, T, ierr, herr);
    if (T > static_cast<double>(0.999975f) * critical.T) {
        p = critical.p;
        rhol = rhov = critical.D;
    }
    nearCritical();
}

void pureAtPressure(double p, const Composition& x, int icomp, int kph, const CriticalPoint& critical, double acentric,
                    double& T, double& rhol, double& rhov, int& ierr, Text255& herr) {
    if (lastPureAtPressure(p, icomp, T, rhol, rhov) || newtonPureAtPressure(p, icomp, critical, T, rhol, rhov)) {
        ierr = 0;
        herr.clear();
        return;
    }
    // starting values
    int kguess = 0;
    const double reduced = p / critical.p;
    if (reduced > static_cast<double>(0.98f)) {
        const double u = (1.0 - reduced) * (1.6 - acentric);
        const double v = (acentric + 3.0) * CBRTX(1.0 - reduced);
        T = critical.T * (1.0 - 0.103947 * u - 0.04108265 * u * u);
        rhov = critical.D * (1.0 - 0.290039 * v - 0.007120197 * v * v);
        rhol = critical.D * (1.0 + 0.298544 * v + 0.01870808 * v * v);
        kguess = 1;
    } else {
        T = critical.T / (1.0 - static_cast<double>(0.428571f) * std::log10(reduced) / (acentric + 1.0));
    }
    if (hasAncillary(modelTags.HPSK[icomp])) {
        double estimate;
        TSATP(p, x, estimate, ierr, herr);
        // at low pressure the inversion can step out of the ancillary's range and end there, far from the line
        if (ierr == 0 && estimate > 0.0) T = estimate;
    }
    if (hasAncillary(modelTags.HPLK[icomp]) && kph == 1) {
        double estimate;
        TSATPL(p, x, estimate, ierr, herr);
        if (ierr == 0 && estimate > 0.0) T = estimate;
    }
    // the pressure is not below that of the triple point, so neither is the temperature
    T = std::max(T, fluidConstants.TTPN[icomp]);
    if (hasAncillary(modelTags.HDLK[icomp])) {
        double estimate;
        DLSATK(icomp, T, estimate, ierr, herr);
        if (ierr <= 0) {
            rhol = estimate;
            kguess = 1;
        }
    }
    if (hasAncillary(modelTags.HDVK[icomp])) {
        double estimate;
        DVSATK(icomp, T, estimate, ierr, herr);
        if (ierr <= 0) {
            rhov = estimate;
            kguess = 1;
        }
    }
    ierr = 0;
    herr.clear();

    if (isPseudoPure(icomp)) {
        onePhase(T, p, x, kph, kguess, rhol, rhov, ierr, herr);
        return;
    }

    double factor = 1.0002;
    for (int pass = 1; pass <= 100; ++pass) {
        TPRHO(T, p, x, liquidPhase, kguess, rhol, ierr, herr);
        if (ierr > 0 || rhol < critical.D) {
            T /= factor;
            factor = (factor - 1.0) / 1.2 + 1.0;
            continue;
        }
        TPRHO(T, p, x, vaporPhase, kguess, rhov, ierr, herr);
        if (ierr > 0 || rhov > critical.D) {
            T *= 1.001;
            if (T > critical.T) T = 1.00005 * T / 1.001;
            if (rhov > critical.D) rhov = 0.5 * critical.D;
            continue;
        }
        kguess = 1;
        double liquidEntropy, vaporEntropy;
        ENTRO(T, rhol, x, liquidEntropy);
        const double liquidGibbs = gibbsEnergy(T, rhol, x);
        ENTRO(T, rhov, x, vaporEntropy);
        const double vaporGibbs = gibbsEnergy(T, rhov, x);
        double step = (liquidGibbs - vaporGibbs) / (liquidEntropy - vaporEntropy);
        if (std::fabs(step) < temperatureTolerance) {
            T += step;
            TPRHO(T, p, x, liquidPhase, 1, rhol, ierr, herr);
            const bool liquidFailed = ierr > 0 || T > critical.T || rhol < critical.D;
            if (liquidFailed) {
                ierr = 142;
                passMessage(herr,
                            "[SATP error 142] liquid density iteration in saturation routine did not converge for "
                            "temperature iteration",
                            pass);
            } else {
                TPRHO(T, p, x, vaporPhase, 1, rhov, ierr, herr);
                if (!(ierr > 0 || p > critical.p || rhov > critical.D)) {
                    ierr = 0;
                    herr.clear();
                    return;
                }
                ierr = 143;
                passMessage(herr,
                            "[SATP error 143] vapor density iteration in saturation routine did not converge for "
                            "temperature iteration",
                            pass);
            }
            ERRMSG(ierr, herr);
            if (p > static_cast<double>(0.9999f) * critical.p) {
                T = critical.T;
                rhol = rhov = critical.D;
            }
            break;
        }
        for (int division = 1; division <= 100 && step > 0.5 * T; ++division) step *= 0.25;
        T += step;
    }
    secantOnTemperature(p, x, icomp, kph, critical, acentric, T, rhol, rhov, ierr, herr);
}

}  // namespace frigana
