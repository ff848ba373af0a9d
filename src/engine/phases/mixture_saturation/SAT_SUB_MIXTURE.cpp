// Bubble and dew points of mixtures by substitution, and the estimates they start from.
#include "SAT_SUB_MIXTURE.h"

#include <algorithm>
#include <cmath>

#include "FluidConstants.h"
#include "MIX_HMX.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "RootBracket.h"
#include "SaturationBricks.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {
namespace {

// Scratch of the substitution, static like all state.
Array1<double, 3> PIT, TIT;    // outer variable of the secant: pressures, temperatures
Array1<double, 2> FPIT, FTIT;  // their residuals
Composition X2ORG, X2NEW;      // incipient composition: first estimate, next
Composition PCOMP;             // vapor pressures of the components in the estimates [kPa]

double distance(const Composition& a, const Composition& b) {
    double sum = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) sum += std::fabs(a[i] - b[i]);
    return sum;
}

void quietDensity(double T, double p, const Composition& x, int kph, int kguess, double& rho, int& ierr,
                  Text255& herr) {
    const SilentMessages quiet;
    TPRHO(T, p, x, kph, kguess, rho, ierr, herr);
}

// Vapor pressures of the components at T; one whose logarithm leaves the range keeps its old value.
void estimateVaporPressures(double T) {
    constexpr double slope = static_cast<double>(2.333333f);
    const FluidConstants& fluid = fluidConstants;
    for (int i = 1; i <= modelTags.NC; ++i) {
        const double exponent = -slope * (fluid.ACCEN[i] + 1.0) * (fluid.TCRIT[i] / T - 1.0);
        if (std::fabs(exponent) < 50.0) PCOMP[i] = fluid.PCRIT[i] * std::pow(10.0, exponent);
    }
}

// Incipient composition by Raoult's law from the vapor pressures of the estimate.
void raoultComposition(const Composition& x, int kph, Composition& y) {
    const int nc = modelTags.NC;
    double sum = 0.0;
    for (int i = 1; i <= nc; ++i) {
        y[i] = kph == 1 ? x[i] * PCOMP[i] : x[i] / PCOMP[i];
        sum += y[i];
    }
    for (int i = 1; i <= nc; ++i) y[i] /= sum;
}

// Sum of the fractions times the vapor pressures [kPa].
double meanVaporPressure(const Composition& x) {
    double sum = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) sum += x[i] * PCOMP[i];
    return sum;
}

// What the two searches share: which phase is the parent (given composition) and which the incipient one.
struct Phases {
    int parent, incipient;                 // phase selectors of TPRHO
    double parentFactor, incipientFactor;  // what the outer variable is multiplied with, and divided by, on a failure
};

// The search for a bubble or dew pressure.
struct PressureSearch {
    double T;
    const Composition& x;
    int kph;
    const CriticalPoint& critical;
    Phases phases;
    Composition x2;
    double p = 0.0, rho1 = 0.0, rho2 = 0.0;
    double blend = 0.0;
    int parentFailures = 0, incipientFailures = 0;
    Composition f1{}, f2{};

    // Densities of both phases at one pressure, in the order of the phases.
    void commonPressure(int& ierr, Text255& herr) {
        if (phases.parent == liquidPhase)
            DLDV(T, p, rho1, rho2, x, x2, ierr, herr);
        else
            DLDV(T, p, rho2, rho1, x2, x, ierr, herr);
    }
    bool phasesEqual() const { return std::fabs(rho1 - rho2) < 0.1; }
};

enum class Inner { converged, exhausted, nextOuterPass, failed };

// Composition of the incipient phase at fixed pressure. j is the point of the secant in use.
Inner incipientComposition(PressureSearch& s, int j, int& guess2, double tolerance, double& sum, int& ierr,
                           Text255& herr) {
    const int nc = modelTags.NC;
    const double Dc = s.critical.D;
    const double T = s.T;
    double lastChange = 2.0, change = 0.0;
    for (int k = 1; k <= 50; ++k) {
        const Composition kept = s.x2;
        quietDensity(T, s.p, s.x2, -s.phases.incipient, guess2, s.rho2, ierr, herr);
        if (k > 1 && std::fabs(s.rho2 - Dc) < 1.0 && std::fabs(s.rho1 - Dc) > 10.0) {
            // stuck at the critical density: once more from a thinner start
            double other = 0.5 * s.rho2;
            int otherCode;
            Text255 otherText;
            quietDensity(T, s.p, s.x2, -s.phases.incipient, 1, other, otherCode, otherText);
            if (otherCode == 0 && std::fabs(s.rho1 - other) >= 0.1) {
                s.rho2 = other;
                ierr = otherCode;
                herr = otherText;
            }
        }
        for (int entry = 0;; ++entry) {
            if (ierr > 0 || s.phasesEqual()) {
                ++s.incipientFailures;
                if (s.incipientFailures < 15) {
                    const bool wide = std::fabs(fluidConstants.TCRIT[1] - fluidConstants.TCRIT[2]) > 100.0;
                    if (wide && s.phasesEqual()) {
                        for (int i = 1; i <= nc; ++i) s.x2[i] = (s.blend * s.x[i] + X2ORG[i]) / (s.blend + 1.0);
                        s.blend += 0.2;
                    }
                    s.commonPressure(ierr, herr);
                    int fugacityCode;
                    Text255 fugacityText;
                    FGCTY2(T, s.rho1, s.x, s.f1, fugacityCode, fugacityText);
                    PIT[j] = s.p;
                }
            }
            if (std::fabs(s.f1[1]) > 1e10) return Inner::failed;
            if (ierr != 0 || s.phasesEqual()) {
                ierr = -126;
                passMessage(herr,
                            "[SATT advisory -126] density iteration in saturation routine did not converge for "
                            "composition iteration",
                            k);
                s.x2 = X2ORG;
                guess2 = 0;
                PIT[j] /= s.phases.incipientFactor;
                return Inner::nextOuterPass;
            }
            guess2 = 1;
            FGCTY2(T, s.rho2, s.x2, s.f2, ierr, herr);
            ierr = 0;
            bool usable = true;
            for (int i = 1; i <= nc && usable; ++i) {
                if (s.f2[i] > 1e-20 && s.f1[i] > 0.0) {
                    X2NEW[i] = s.x2[i] * s.f1[i] / s.f2[i];
                } else if (s.x[i] > 0.0 && entry < 10) {
                    usable = false;
                } else {
                    X2NEW[i] = 0.0;
                }
            }
            if (usable) break;
            s.rho2 = s.rho1;
        }
        sum = 0.0;
        for (int i = 1; i <= nc; ++i) sum += X2NEW[i];
        if (!(sum > 0.0 && sum <= 1e6)) return Inner::failed;
        for (int i = 1; i <= nc; ++i) X2NEW[i] /= sum;
        change = distance(s.x2, X2NEW);
        for (int i = 1; i <= nc; ++i) s.x2[i] = X2NEW[i];
        if (change < tolerance || std::fabs(change - lastChange) < 100.0 * tolerance) return Inner::converged;
        lastChange = change;
        if (k % 10 == 0)
            for (int i = 1; i <= nc; ++i) s.x2[i] = 0.5 * (s.x2[i] + kept[i]);
    }
    ierr = -127;
    message(herr, "[SATT advisory -127] iteration for composition in saturation routine did not converge; T =",
            General{12, 5, T}, " K; deltaX =", General{12, 5, change}, " mol frac.", nullCharacter);
    ERRMSG(ierr, herr);
    return Inner::exhausted;
}

// The composition is taken for converged when its changes have become equal, which slow iterations above the critical
// temperature reach far from any equilibrium: the fugacities themselves must agree.
bool equalFugacities(const PressureSearch& s) {
    constexpr double agreement = 1e-4;
    int ierr = 0;
    Text255 herr;
    double rho = s.rho2;
    quietDensity(s.T, s.p, s.x2, -s.phases.incipient, 1, rho, ierr, herr);
    if (ierr > 0) return false;
    Composition f{};
    FGCTY2(s.T, rho, s.x2, f, ierr, herr);
    if (ierr > 0) return false;
    for (int i = 1; i <= modelTags.NC; ++i)
        if (s.x[i] > 0.0 && !(std::fabs(f[i] / s.f1[i] - 1.0) < agreement)) return false;
    return true;
}

// Searches the pressure; false if it was not found.
bool searchPressure(PressureSearch& s, bool started, int guess1, int guess2, int& ierr, Text255& herr) {
    const double T = s.T, Dc = s.critical.D;
    double tolerance = 1e-8;
    RootBracket bracket;
    int j = 1;
    PIT[1] = s.p;
    X2ORG = s.x2;
    for (int pass = 1; pass <= 25; ++pass) {
        if (pass == 8 || pass == 12 || pass == 15) tolerance *= 10.0;
        s.p = PIT[j];

        // density of the parent phase
        quietDensity(T, s.p, s.x, -s.phases.parent, guess1, s.rho1, ierr, herr);
        bool failed = ierr > 0;
        if (s.kph == 1 && (s.rho1 < 0.5 * Dc || (pass == 1 && !started && s.rho1 < 1.2 * Dc))) failed = true;
        if (failed) {
            ++s.parentFailures;
            if (s.parentFailures < 6) {
                s.commonPressure(ierr, herr);
                PIT[j] = s.p;
                failed = ierr > 0;
                if (!failed) guess2 = 1;
            }
        }
        if (failed) {
            ierr = -125;
            passMessage(herr,
                        "[SATT advisory -125] density iteration in saturation routine did not converge for pressure "
                        "iteration",
                        pass);
            guess1 = 0;
            PIT[j] *= s.phases.parentFactor;
            continue;
        }
        guess1 = 1;
        FGCTY2(T, s.rho1, s.x, s.f1, ierr, herr);

        double sum = 1.0;
        const Inner inner = incipientComposition(s, j, guess2, tolerance, sum, ierr, herr);
        if (inner == Inner::failed) return false;
        if (inner == Inner::nextOuterPass) continue;

        FPIT[j] = 1.0 - sum;
        double dpdt;
        DPDT(T, s.rho2, s.x2, dpdt);
        if (dpdt <= 0.0) return false;
        if (inner == Inner::converged) {
            if (std::fabs(FPIT[j]) < tolerance && equalFugacities(s)) {
                ierr = 0;
                herr.clear();
                return true;
            }
            bracket.takeLast(PIT[j], FPIT[j]);
        }
        if (j == 1) {
            const double capped = std::min(sum, 5.0);
            j = 2;
            PIT[2] = s.kph == 1 ? PIT[1] * capped : PIT[1] / capped;
            continue;
        }
        PIT[3] = PIT[2];
        if (std::fabs(FPIT[2] - FPIT[1]) > 1e-12) PIT[3] = secantPoint(PIT[1], FPIT[1], PIT[2], FPIT[2]);
        if (bracket.closed() && (PIT[3] > 1.001 * bracket.upper() || PIT[3] < 0.99 * bracket.lower()))
            PIT[3] = bracket.falsePosition();
        PIT[1] = PIT[2];
        PIT[2] = PIT[3];
        FPIT[1] = FPIT[2];
    }
    return false;
}

}  // namespace

void mixtureAtTemperature(double T, const Composition& x, int kph, const CriticalPoint& critical, bool started,
                          double& p, double& rhol, double& rhov, Composition& xliq, Composition& xvap, int& ierr,
                          Text255& herr) {
    const bool bubble = kph == 1;
    PressureSearch search{
        .T = T,
        .x = x,
        .kph = kph,
        .critical = critical,
        .phases = bubble ? Phases{liquidPhase, vaporPhase, 1.05, 1.02} : Phases{vaporPhase, liquidPhase, 0.95, 0.98},
        .x2 = {}};
    if (started) {
        search.p = p;
        search.x2 = bubble ? xvap : xliq;
        search.rho1 = bubble ? rhol : rhov;
        search.rho2 = bubble ? rhov : rhol;
    } else {
        SATTEST(T, x, kph, search.p, search.x2, ierr, herr);
        if (search.p > critical.p) search.p = 0.99 * critical.p;
    }
    const int guess = started ? 1 : 0;
    if (!searchPressure(search, started, guess, guess, ierr, herr)) {
        notConvergedAtTemperature(128, T, ierr, herr);
        search.p = critical.p;
        search.rho1 = search.rho2 = critical.D;
    }
    p = search.p;
    rhol = bubble ? search.rho1 : search.rho2;
    rhov = bubble ? search.rho2 : search.rho1;
    xliq = bubble ? x : search.x2;
    xvap = bubble ? search.x2 : x;

    // the trivial solution: both phases are one
    if (rhov > 0.99 * rhol && std::fabs(xliq[1] - xvap[1]) < 0.1) {
        p = critical.p;
        rhol = rhov = critical.D;
        if (T < critical.T)
            notConvergedAtTemperature(128, T, ierr, herr);
        else
            temperatureAboveCritical(T, critical.T, ierr, herr);
    }
}

void mixtureAtPressure(double p, const Composition& x, int kph, const CriticalPoint& critical, double highestDensity,
                       double& T, double& rhol, double& rhov, Composition& xliq, Composition& xvap, int& ierr,
                       Text255& herr) {
    const int nc = modelTags.NC;
    const bool bubble = kph == 1;
    const double Tc = critical.T, Dc = critical.D;
    Phases phases =
        bubble ? Phases{liquidPhase, vaporPhase, 0.995, 0.998} : Phases{vaporPhase, liquidPhase, 1.005, 1.002};
    constexpr double tolerance = 1e-6;

    double start;
    Composition x2{};
    SATPEST(p, x, kph, start, x2, ierr, herr);
    if (start > 0.998 * Tc || start <= 0.0) start = 0.998 * Tc;
    if (mixingParameters.AMMONIAWATER != 0) start *= 1.05;
    X2ORG = x2;
    double rho1 = 0.0, rho2 = 0.0;

    // a temperature at which both densities exist
    for (int pass = 1; pass <= 100; ++pass) {
        int failedPhase = phases.parent;
        quietDensity(start, p, x, -phases.parent, 0, rho1, ierr, herr);
        if (ierr > 0) {
            ierr = -145;
            wrapMessage(
                "[SATP advisory -145] density iteration in saturation routine did not converge for the parent phase; ",
                herr);
            ERRMSG(ierr, herr);
        } else {
            failedPhase = phases.incipient;
            quietDensity(start, p, x2, -phases.incipient, 0, rho2, ierr, herr);
            if (ierr <= 0) break;
            // the code and the number in the text differ, and both are known to callers
            ierr = -144;
            wrapMessage(
                "[SATP advisory -146] density iteration in saturation routine did not converge for the incipient "
                "phase; ",
                herr);
            ERRMSG(ierr, herr);
        }
        if (start > static_cast<double>(0.8f) * Tc && failedPhase == liquidPhase)
            start *= static_cast<double>(0.995f);
        else
            start *= static_cast<double>(1.005f);
    }

    RootBracket bracket;
    int j = 1;
    int guess1 = 1, guess2 = 1;
    bool found = false;
    Composition f1{}, f2{};
    TIT[1] = start;
    for (int pass = 1; pass <= 100 && !found; ++pass) {
        if (pass > 30 && pass % 10 == 0) {
            phases.parentFactor *= phases.parentFactor;
            phases.incipientFactor *= phases.incipientFactor;
        }
        T = TIT[j];

        // density of the parent phase
        quietDensity(T, p, x, -phases.parent, guess1, rho1, ierr, herr);
        if (pass > 1 && std::fabs(rho1 - Dc) < 1.0 && std::fabs(rho2 - Dc) > 4.0) {
            double other = 1.5 * rho1;
            int otherCode;
            Text255 otherText;
            quietDensity(T, p, x, -phases.parent, 1, other, otherCode, otherText);
            if (otherCode == 0) {
                rho1 = other;
                ierr = 0;
            }
        }
        const bool tooDense = rho1 > 1.1 * highestDensity;
        if (ierr > 0 || tooDense) {
            const bool failed = ierr > 0;
            ierr = -145;
            passMessage(herr,
                        "[SATP advisory -145] density iteration in saturation routine did not converge for temperature "
                        "iteration",
                        pass);
            if (tooDense) rho1 = highestDensity;
            if (failed) {
                guess1 = 0;
                TIT[j] *= phases.parentFactor;
                continue;
            }
        }
        guess1 = 1;
        FGCTY2(T, rho1, x, f1, ierr, herr);

        // composition of the incipient phase
        double sum = 1.0, change = 0.0;
        bool converged = false, leave = false;
        for (int k = 1; k <= 200 && !converged && !leave; ++k) {
            quietDensity(T, p, x2, -phases.incipient, guess2, rho2, ierr, herr);
            if (ierr > 0 || std::fabs(rho1 - rho2) < 0.01 || (rho2 < 0.01 && phases.incipient == liquidPhase)) {
                ierr = -146;
                passMessage(herr,
                            "[SATP advisory -146] density iteration in saturation routine did not converge for "
                            "composition iteration",
                            k);
                x2 = X2ORG;
                guess2 = 0;
                TIT[j] /= phases.incipientFactor;
                leave = true;
                break;
            }
            guess2 = 1;
            bool lastOfThese = false;
            if (rho2 > static_cast<double>(1.2f) * highestDensity) {
                rho2 = highestDensity;
                ierr = -146;
                passMessage(herr,
                            "[SATP advisory -146] density iteration in saturation routine did not converge for "
                            "composition iteration",
                            k);
                lastOfThese = k > 10;
            }
            int fugacityCode;
            Text255 fugacityText;
            FGCTY2(T, rho2, x2, f2, fugacityCode, fugacityText);
            sum = 0.0;
            for (int i = 1; i <= nc; ++i) {
                if (x2[i] <= 0.0) continue;
                X2NEW[i] = f2[i] > 1e-20 && f1[i] > 0.0 ? x2[i] * f1[i] / f2[i] : x2[i] + 0.0001;
                sum += X2NEW[i];
            }
            change = 0.0;
            for (int i = 1; i <= nc; ++i) {
                if (x2[i] <= 0.0) continue;
                X2NEW[i] /= sum;
                change += std::fabs(x2[i] - X2NEW[i]);
                x2[i] = X2NEW[i];
            }
            converged = change < tolerance;
            if (lastOfThese) break;
        }
        if (leave) continue;
        if (!converged) {
            ierr = -147;
            message(herr, "[SATP advisory -147] iteration for composition in saturation routine did not converge; P =",
                    General{12, 5, p / 1000.0}, " MPa; deltaX =", General{12, 5, change}, " mol frac.", nullCharacter);
            ERRMSG(ierr, herr);
        }

        // next temperature
        FTIT[j] = 1.0 - sum;
        if (std::fabs(FTIT[j]) < tolerance && ierr != -147) {
            found = true;
            break;
        }
        if (converged) bracket.takeLast(TIT[j], FTIT[j]);
        if (j == 1) {
            const double c = 0.1 * (sum - 1.0) + 1.0;
            j = 2;
            TIT[2] = bubble ? TIT[1] / c : TIT[1] * c;
            continue;
        }
        TIT[3] = std::fabs(FTIT[2] - FTIT[1]) < 1e-10 ? 0.5 * (TIT[1] + TIT[2])
                                                      : secantPoint(TIT[1], FTIT[1], TIT[2], FTIT[2]);
        if (bracket.closed() && (TIT[3] > bracket.upper() || TIT[3] < bracket.lower()))
            TIT[3] = bracket.falsePosition();
        if (TIT[3] < 0.0) TIT[3] = 0.95 * TIT[2];
        if (TIT[3] > 1.5 * Tc) TIT[3] = 1.05 * TIT[2];
        TIT[1] = TIT[2];
        TIT[2] = TIT[3];
        FTIT[1] = FTIT[2];
    }

    rhol = bubble ? rho1 : rho2;
    rhov = bubble ? rho2 : rho1;
    xliq = bubble ? x : x2;
    xvap = bubble ? x2 : x;
    if (!found) {
        notConvergedAtPressure(148, p, ierr, herr);
        return;
    }
    ierr = 0;
    herr.clear();
    double liquidSlope, vaporSlope;
    DPDD(T, rhol, xliq, liquidSlope);
    DPDD(T, rhov, xvap, vaporSlope);
    const bool oneSide = (rhol > Dc && rhov > Dc) || (rhol < Dc && rhov < Dc);
    if (liquidSlope > 1e6 || vaporSlope > 1e6 || (oneSide && (p < 0.95 * critical.p || kph == 2)))
        notConvergedAtPressure(148, p, ierr, herr);
}

void SATTEST(double T, const Composition& x, int kph, double& p, Composition& y, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    estimateVaporPressures(T);
    p = meanVaporPressure(x);
    raoultComposition(x, kph, y);
    if (kph == 2) p = meanVaporPressure(y);
}

void SATPEST(double p, const Composition& x, int kph, double& T, Composition& y, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    const FluidConstants& fluid = fluidConstants;
    constexpr double slope = static_cast<double>(0.428571f);
    constexpr int mostPasses = 100;
    double omega = 0.0, fallback = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        omega += x[i] * fluid.ACCEN[i];
        fallback += x[i] * fluid.TCRIT[i] / (1.0 - slope * std::log10(p / fluid.PCRIT[i]) / (fluid.ACCEN[i] + 1.0));
    }
    const bool bubble = kph == 1;
    const double tolerance = bubble ? 1e-6 : 1e-3;
    RootBracket bracket;
    Array1<double, 4> t{};
    Array1<double, 3> f{};
    t[1] = fallback;
    int j = 1;
    double lastStep = 0.0;
    bool converged = false;
    for (int pass = 1; pass <= mostPasses; ++pass) {
        T = t[j];
        estimateVaporPressures(T);
        double ratio;  // pressure of the estimate over the given one
        if (bubble) {
            ratio = meanVaporPressure(x) / p;
            f[j] = 1.0 - 1.0 / ratio;
        } else {
            double sum = 0.0;
            for (int i = 1; i <= modelTags.NC; ++i) sum += x[i] * p / PCOMP[i];
            ratio = sum;
            f[j] = 1.0 - sum;
        }
        if (std::fabs(f[j]) < tolerance) {
            converged = true;
            break;
        }
        bracket.takeLast(t[j], f[j]);
        const auto inside = [&](double candidate) {
            return !bracket.closed() || (candidate >= bracket.lower() && candidate <= bracket.upper());
        };
        if (j == 1) {
            t[2] = bubble ? t[1] * (1.0 - 0.42857 * std::log10(ratio) / (omega + 1.0))
                          : t[1] / (1.0 - static_cast<double>(0.42857f) * std::log10(ratio) / (omega + 1.0));
            lastStep = t[2] - t[1];
            j = 2;
            continue;
        }
        const bool bisect = pass > mostPasses / 3 && bracket.closed();
        if (bubble || j == 2) {
            double next;
            if (bisect) {
                next = bracket.middle();
            } else {
                next = std::fabs(f[2] - f[1]) <= 1e-10 ? 0.5 * (t[1] + t[2]) : secantPoint(t[1], f[1], t[2], f[2]);
                if (!inside(next)) next = bracket.falsePosition();
            }
            lastStep = next - t[2];
            if (bubble) {
                t[1] = t[2];
                f[1] = f[2];
                t[2] = next;
            } else {
                t[3] = next;
                j = 3;
            }
            continue;
        }
        if (bisect) {
            t[4] = bracket.middle();
        } else {
            // inverse quadratic interpolation through the last three points
            const double a = f[3] / f[2], b = f[3] / f[1], c = f[1] / f[2];
            const double d = (c - 1.0) * (a - 1.0) * (b - 1.0);
            t[4] =
                std::fabs(d) <= 1e-20 ? -1.0 : t[3] + b * (c * (a - c) * (t[2] - t[3]) - (1.0 - a) * (t[3] - t[1])) / d;
            if (!inside(t[4])) t[4] = bracket.falsePosition();
        }
        lastStep = t[4] - t[3];
        t[1] = t[2];
        t[2] = t[3];
        t[3] = t[4];
        f[1] = f[2];
        f[2] = f[3];
    }
    if (!converged) {
        ierr = -144;
        message(herr,
                "[SATP advisory -144] Raoult's law iteration (to generate mixture initial guess) has not converged.",
                nullCharacter);
        ERRMSG(ierr, herr);
        if (!(std::fabs(f[j]) < 0.01 || std::fabs(lastStep) < 1.0)) {
            T = fallback;
            estimateVaporPressures(T);
        }
    }
    raoultComposition(x, kph, y);
}

void DLDV(double T, double& p, double& rho1, double& rho2, const Composition& x1, const Composition& x2, int& ierr,
          Text255& herr) {
    double Tc, pc, Dc;
    CRITP(x1, Tc, pc, Dc, ierr, herr);
    ierr = 0;
    herr.clear();
    rho1 = 1.1 * Dc;
    rho2 = Dc;
    double step1 = 0.0, step2 = 0.0;
    for (int pass = 1; pass <= 50; ++pass) {
        double p1 = 0.0, slope1 = 0.0, curve1 = 0.0;
        for (int move = 1; move <= 100; ++move) {
            if (std::fabs(rho1) > 1e6) {
                ierr = 1;
                return;
            }
            PRESS(T, rho1, x1, p1);
            DPDD(T, rho1, x1, slope1);
            DPDD2(T, rho1, x1, curve1);
            if (curve1 < 0.0 || slope1 < 0.0 || p1 < 0.0)
                rho1 *= 1.05;
            else if (slope1 > 10000.0 && std::fabs(p1) > 1.5 * pc && rho1 - Dc < 5.0)
                rho1 *= 1.5;
            else
                break;
        }
        double p2 = 0.0, slope2 = 0.0, curve2 = 0.0;
        for (int move = 1; move <= 100; ++move) {
            PRESS(T, rho2, x2, p2);
            DPDD(T, rho2, x2, slope2);
            DPDD2(T, rho2, x2, curve2);
            if (std::fabs(slope2) > 100000.0 && std::fabs(p2) > 1.5 * pc)
                rho2 *= 0.5;
            else if (curve2 > 0.0 || slope2 < 0.0)
                rho2 *= 0.95;
            else
                break;
        }
        if (pass == 1) {
            rho2 *= 0.95;
            PRESS(T, rho2, x2, p2);
            DPDD(T, rho2, x2, slope2);
            DPDD2(T, rho2, x2, curve2);
        }
        p = 0.5 * (p1 + p2);
        if (std::fabs(p1 - p2) <= 1e-6) return;

        // Halley's method toward the mean pressure on both sides
        const auto halley = [&p](double pi, double slope, double curve, double last) {
            if (std::fabs(pi - p) <= 1e-10 || std::fabs(slope) <= 1e-10) return 0.5 * last;
            return 1.0 / (-slope / (pi - p) + curve / (2.0 * slope));
        };
        step1 = halley(p1, slope1, curve1, step1);
        step2 = halley(p2, slope2, curve2, step2);
        // bounded counts, since a step beyond all bounds cannot be brought down
        for (int k = 1; k <= 100 && std::fabs(step1 / rho1) > 1.0; ++k) step1 *= 0.1;
        for (int k = 1; k <= 100 && std::fabs(step2 / rho2) > 0.5; ++k) step2 *= 0.1;
        rho1 += step1;
        rho2 += step2;
    }
}

}  // namespace frigana
