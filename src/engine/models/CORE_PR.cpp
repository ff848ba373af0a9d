#include "CORE_PR.h"

#include <algorithm>
#include <cmath>

#include "FluidConstants.h"
#include "FluidFiles.h"
#include "Message.h"
#include "ReaderReport.h"
#include "UTILITY.h"
#include "UTILITY_NUMERICS.h"

namespace frigana {

SlotArray<PrSlot> prTerms;
ComponentArray<ComponentArray<Array1<double, 6>>> FPRKIJ;
Composition prCompositionDerivatives;

namespace {

constexpr double u = 2.0, w = -1.0;  // the two constants that make a cubic equation this one
const double s = std::sqrt(u * u - 4.0 * w);
constexpr double smallestArgument = 1e-9;  // of the logarithms and of a division

// One component: what does not depend on temperature.
struct Component {
    double b;       // co-volume [L/mol]
    double c;       // volume shift [L/mol]
    double rootAc;  // square root of the attraction at the critical point
    double kappa;
    double tc;
};

Component component(int icomp) {
    const PrSlot& slot = prTerms[icomp];
    const double rt = fluidConstants.R * slot.TCPR;
    const double omega = slot.ACNPR;
    return {0.0778 * rt / slot.PCPR, slot.PRCOEF[1], rt * std::sqrt(0.45724 / slot.PCPR),
            0.37464 + 1.54226 * omega - 0.26992 * omega * omega, slot.TCPR};
}

// sqrt(a) of a component over temperature. Beyond the zero of the alpha function, far above the critical temperature,
// the root is its size.
struct RootAttraction {
    double constant, perRootTemperature;  // sqrt(a) = constant - perRootTemperature sqrt(T)
    RootAttraction(const Component& fluid, double t)
        : constant(fluid.rootAc * (1.0 + fluid.kappa)),
          perRootTemperature(fluid.rootAc * fluid.kappa / std::sqrt(fluid.tc)) {
        if (constant - perRootTemperature * std::sqrt(t) < 0.0) {
            constant = -constant;
            perRootTemperature = -perRootTemperature;
        }
    }
    double at(double t) const { return constant - perRootTemperature * std::sqrt(t); }
};

// The mixture as one fluid: a = a0 - a1 sqrt(T) + a2 T.
struct OneFluid {
    double b = 0.0, c = 0.0;
    double a0 = 0.0, a1 = 0.0, a2 = 0.0;

    double attraction(double t) const { return a0 - a1 * std::sqrt(t) + a2 * t; }
};

OneFluid pureFluid(int icomp, double t) {
    const Component fluid = component(icomp);
    const RootAttraction root(fluid, t);
    OneFluid one;
    one.b = fluid.b;
    one.c = fluid.c;
    one.a0 = root.constant * root.constant;
    one.a1 = 2.0 * root.constant * root.perRootTemperature;
    one.a2 = root.perRootTemperature * root.perRootTemperature;
    return one;
}

double interaction(int i, int j) {
    return i == j ? 1.0 : 1.0 - FPRKIJ[i][j][1];
}

OneFluid mixedFluid(const Composition& x, double t) {
    OneFluid one;
    double constant[ncmax + 1], perRootTemperature[ncmax + 1];
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (x[i] == 0.0) continue;
        const Component fluid = component(i);
        const RootAttraction root(fluid, t);
        one.b += x[i] * fluid.b;
        one.c += x[i] * fluid.c;
        constant[i] = root.constant;
        perRootTemperature[i] = root.perRootTemperature;
        for (int j = 1; j <= i; ++j) {
            if (x[j] == 0.0) continue;
            const double weight = (i == j ? 1.0 : 2.0) * x[i] * x[j] * interaction(i, j);
            // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult): filled where x is not 0
            one.a0 += weight * constant[i] * constant[j];
            one.a1 += weight * (constant[i] * perRootTemperature[j] + perRootTemperature[i] * constant[j]);
            one.a2 += weight * perRootTemperature[i] * perRootTemperature[j];
        }
    }
    return one;
}

// The arguments of the closed form at a density.
struct Arguments {
    double free;          // v - b + c
    double logarithm;     // ln q
    double h;             // b s
    double upper, lower;  // rho (K/(1 + rho K)) of numerator and denominator of q

    Arguments(const OneFluid& one, double rho) {
        const double v = 1.0 / rho;
        h = std::max(one.b * s, smallestArgument);
        free = std::max(v - one.b + one.c, smallestArgument);
        const double numerator = 2.0 * v + u * one.b - h + 2.0 * one.c;
        const double denominator = 2.0 * v + u * one.b + h + 2.0 * one.c;
        logarithm = std::log(std::max(numerator / denominator, smallestArgument));
        upper = (u * one.b - h + 2.0 * one.c) / numerator;
        lower = (u * one.b + h + 2.0 * one.c) / denominator;
    }
};

double factorial(int n) {
    return n <= 1 ? 1.0 : n * factorial(n - 1);
}

double integerPower(double base, int exponent) {
    double power = 1.0;
    for (int i = 0; i < exponent; ++i) power *= base;
    return power;
}

// phi and derivatives of the one fluid. With A = a/(R T) the attractive part is A(tau) ln q / h.
double helmholtz(const OneFluid& one, int itau, int idel, double t, double rho) {
    if (itau < 0 || idel < 0 || itau > 3 || idel > 3) return 0.0;
    if (itau > 0 && idel > 0 && itau + idel > 2) return 0.0;
    const Arguments at(one, rho);

    // tau^n d^n A / dtau^n: a0 / T, a1 / sqrt(T), a2 behave as tau, sqrt(tau), 1
    const double rt = fluidConstants.R * t;
    const double rootT = std::sqrt(t);
    double attraction = 0.0;
    switch (itau) {
        case 0:
            attraction = one.attraction(t) / rt;
            break;
        case 1:
            attraction = (one.a0 - 0.5 * one.a1 * rootT) / rt;
            break;
        case 2:
            attraction = 0.25 * one.a1 * rootT / rt;
            break;
        default:
            attraction = -0.375 * one.a1 * rootT / rt;
            break;
    }

    // del^n d^n / ddel^n of ln q / h and of ln v - ln(v - b + c)
    double shape, repulsion = 0.0;
    if (idel == 0) {
        shape = at.logarithm / at.h;
        if (itau == 0) repulsion = -std::log(rho) - std::log(at.free);
    } else {
        const double sign = idel % 2 == 0 ? -1.0 : 1.0;
        const double factor = factorial(idel - 1);
        shape = sign * factor * (integerPower(at.upper, idel) - integerPower(at.lower, idel)) / at.h;
        if (itau == 0) repulsion = factor * integerPower((one.b - one.c) / at.free, idel);
    }
    return repulsion + attraction * shape;
}

void fillDerivatives(const OneFluid& one, double t, double rho, const Composition& x) {
    const Arguments at(one, rho);
    const double rt = fluidConstants.R * t;
    const double a = one.attraction(t) / rt;
    const double phi = helmholtz(one, 0, 0, t, rho) + helmholtz(one, 0, 1, t, rho);
    // 1 / (v + K) of numerator and denominator of q, with K = (u b -+ h)/2 + c
    const double overUpper = 1.0 / (1.0 / rho + 0.5 * (u * one.b - at.h) + one.c);
    const double overLower = 1.0 / (1.0 / rho + 0.5 * (u * one.b + at.h) + one.c);
    const double byB = 1.0 / at.free + a * (-at.logarithm / (one.b * at.h) +
                                            (0.5 * (u - s) * overUpper - 0.5 * (u + s) * overLower) / at.h);
    const double byC = -1.0 / at.free + a * (overUpper - overLower) / at.h;
    prCompositionDerivatives.fill(0.0);
    for (int i = 1; i <= modelTags.NC; ++i) {
        const Component fluid = component(i);
        const RootAttraction rootI(fluid, t);
        double sum = 0.0;
        for (int j = 1; j <= modelTags.NC; ++j)
            if (x[j] != 0.0) sum += x[j] * interaction(i, j) * RootAttraction(component(j), t).at(t);
        const double attractionSlope = 2.0 * (sum * rootI.at(t) / rt - a);
        prCompositionDerivatives[i] =
            phi + attractionSlope * at.logarithm / at.h + (fluid.b - one.b) * byB + (fluid.c - one.c) * byC;
    }
}

bool hasConstants(int icomp) {
    return prTerms[icomp].PCPR > 0.0 && prTerms[icomp].TCPR > 0.0;
}

}  // namespace

double PHIPR(int icomp, int itau, int idel, double tau, double del) {
    if (del <= 1e-10 || tau <= 0.0 || !hasConstants(icomp)) return 0.0;
    const double t = fluidConstants.TZ[icomp] / tau;
    return helmholtz(pureFluid(icomp, t), itau, idel, t, fluidConstants.RHOZ[icomp] * del);
}

double PHIPRX(int itau, int idel, double tau, double del, const Composition& x) {
    if (del <= 1e-10 || tau <= 0.0) return 0.0;
    int pure;
    ISPURE(x, pure);
    if (pure > 0 && itau != fillCompositionDerivatives) return PHIPR(pure, itau, idel, tau, del);
    double tr, dr;
    REDPR(x, tr, dr);
    const double t = tr / tau;
    const double rho = dr * del;
    if (!(t > 0.0) || !(rho > 0.0)) return 0.0;
    for (int i = 1; i <= modelTags.NC; ++i)
        if (!hasConstants(i)) return 0.0;
    const OneFluid one = pure > 0 ? pureFluid(pure, t) : mixedFluid(x, t);
    if (itau == fillCompositionDerivatives) {
        fillDerivatives(one, t, rho, x);
        return -1.0;
    }
    return helmholtz(one, itau, idel, t, rho);
}

void CRTPR(int icomp, double& tc, double& pc, double& rhoc) {
    tc = prTerms[icomp].TCPR;
    pc = prTerms[icomp].PCPR;
    rhoc = prTerms[icomp].RHOCPR;
}

void CRTPRX(const Composition& x, double& tc, double& pc, double& rhoc) {
    int pure;
    ISPURE(x, pure);
    if (pure > 0) {
        CRTPR(pure, tc, pc, rhoc);
        return;
    }
    tc = pc = 0.0;
    double volume = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        tc += x[i] * prTerms[i].TCPR;
        pc += x[i] * prTerms[i].PCPR;
        if (prTerms[i].RHOCPR > 0.0) volume += x[i] / prTerms[i].RHOCPR;
    }
    rhoc = volume > 0.0 ? 1.0 / volume : 0.0;
}

void REDPR(const Composition& x, double& tred, double& dred) {
    int pure;
    ISPURE(x, pure);
    if (pure > 0) {
        tred = fluidConstants.TZ[pure];
        dred = fluidConstants.RHOZ[pure];
        return;
    }
    tred = 0.0;
    double volume = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        tred += x[i] * fluidConstants.TZ[i];
        if (fluidConstants.RHOZ[i] > 0.0) volume += x[i] / fluidConstants.RHOZ[i];
    }
    dred = volume > 0.0 ? 1.0 / volume : 0.0;
}

void SETPR(int iunit, int icomp, [[maybe_unused]] const Text12& hcasn, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    FluidConstants& fluid = fluidConstants;
    PrSlot& slot = prTerms[icomp];
    if (iunit == copyConstants) {
        slot.WMFPR = fluid.WMAS[icomp];
        slot.ACNPR = fluid.ACCEN[icomp];
        slot.TCPR = fluid.TCRIT[icomp];
        slot.PCPR = fluid.PCRIT[icomp];
        slot.RHOCPR = fluid.DCRIT[icomp];
        slot.RPRQ = fluid.REOS[icomp];
        return;
    }
    if (iunit == 0) {
        ierr = 1;
        message(herr, "[SETPR error] fluid input to SETPR not found", nullCharacter);
        return;
    }
    const int unit = std::abs(iunit);
    double tmin, tmax, pmax, dmax;
    Text3 heatCapacity;
    PrSlot read = slot;
    if (!readRecord(unit, "lower temperature limit", ierr, herr, tmin)) return;
    if (!readRecord(unit, "upper temperature limit", ierr, herr, tmax)) return;
    if (!readRecord(unit, "upper pressure limit", ierr, herr, pmax)) return;
    if (!readRecord(unit, "maximum density", ierr, herr, dmax)) return;
    if (!readTextLine(unit, "pointer to the ideal-gas block", ierr, herr, heatCapacity)) return;
    if (!readRecord(unit, "molar mass", ierr, herr, read.WMFPR)) return;
    if (!readRecord(unit, "acentric factor", ierr, herr, read.ACNPR)) return;
    if (!readRecord(unit, "critical temperature", ierr, herr, read.TCPR)) return;
    if (!readRecord(unit, "critical pressure", ierr, herr, read.PCPR)) return;
    if (!readRecord(unit, "critical density", ierr, herr, read.RHOCPR)) return;
    if (!readRecord(unit, "gas constant", ierr, herr, read.RPRQ)) return;
    int count;
    if (!readCount(unit, "number of coefficients", Array1<double, 20>::count, count, ierr, herr)) return;
    for (int k = 1; k <= count; ++k)
        if (!readRecord(unit, "coefficient", ierr, herr, read.PRCOEF[k])) return;
    if (count > 0) read.IPRFLAG = 1;
    slot = read;
    if (iunit < 0) return;

    fluid.TMEOS[icomp] = tmin;
    fluid.TXEOS[icomp] = tmax;
    fluid.PEOS[icomp] = pmax;
    fluid.DEOS[icomp] = dmax;
    modelTags.HMODCP[icomp] = heatCapacity;
    fluid.WMAS[icomp] = slot.WMFPR;
    fluid.ACCEN[icomp] = slot.ACNPR;
    fluid.TCRIT[icomp] = slot.TCPR;
    fluid.PCRIT[icomp] = slot.PCPR;
    fluid.DCRIT[icomp] = slot.RHOCPR;
    fluid.TZ[icomp] = slot.TCPR;
    fluid.RHOZ[icomp] = slot.RHOCPR;
    fluid.ZCRIT[icomp] = slot.PCPR / (slot.RPRQ * slot.TCPR * slot.RHOCPR);
    fluid.REOS[icomp] = slot.RPRQ;
    if (modelTags.NC == 1 && icomp == 1) fluid.R = slot.RPRQ;
    // the block says nothing of the triple point's pressure and densities
    fluid.PTPN[icomp] = 0.0;
    fluid.DTPN[icomp] = dmax;
    fluid.DTPV[icomp] = fluid.DNBPL[icomp] = fluid.DNBPV[icomp] = 0.0;
}

void SETPRCO(int icomp) {
    PrSlot& slot = prTerms[icomp];
    if (slot.IPRFLAG != 0 || !(slot.PCPR > 0.0)) return;
    const double omega = slot.ACNPR;
    slot.PRCOEF[1] = fluidConstants.R * slot.TCPR / slot.PCPR *
                     (-0.014471 + omega * (0.067498 + omega * (-0.084852 + omega * (0.067298 - omega * 0.017366))));
}

void TPRHOPR(double t, double p, const Composition& x, double& rho1, double& rho2) {
    rho1 = rho2 = 0.0;
    if (!(t > 0.0)) return;
    int pure;
    ISPURE(x, pure);
    for (int i = 1; i <= modelTags.NC; ++i)
        if ((pure == 0 || pure == i) && !hasConstants(i)) return;
    const OneFluid one = pure > 0 ? pureFluid(pure, t) : mixedFluid(x, t);
    const double rt = fluidConstants.R * t;
    const double a = one.attraction(t) * p / (rt * rt);
    const double b = one.b * p / rt;
    double z1, z2, z3;
    CUBIC(b - 1.0, a - b * (3.0 * b + 2.0), -a * b + b * b + b * b * b, z1, z2, z3);
    const auto shifted = [&](double z) {
        if (!(z > 0.0) || !(p > 0.0)) return 0.0;
        return 1.0 / (z * rt / p - one.c);
    };
    rho1 = shifted(z1);
    rho2 = shifted(z2);
}

void ESTPR(int i, int j) {
    FPRKIJ[i][j].fill(0.0);
    FPRKIJ[j][i].fill(0.0);
    const auto isAlkane = [](int icomp) { return fluidFiles.FAMILY[icomp].find("alkane") > 0; };
    if (i == j || !isAlkane(i) || !isAlkane(j)) return;
    const double di = fluidConstants.DCRIT[i], dj = fluidConstants.DCRIT[j];
    if (!(di > 0.0) || !(dj > 0.0)) return;
    // geometric over arithmetic mean of the molecular diameters, cubed
    const double vi = CBRTX(1.0 / di), vj = CBRTX(1.0 / dj);
    const double ratio = 2.0 * std::sqrt(vi * vj) / (vi + vj);
    FPRKIJ[i][j][1] = FPRKIJ[j][i][1] = 1.0 - ratio * ratio * ratio;
}

}  // namespace frigana
