#include "CORE_CPP.h"

#include <cmath>
#include <cstdlib>

#include "FluidConstants.h"
#include "ModelTags.h"
#include "ReaderReport.h"
#include "ReferenceState.h"
#include "UTILITY.h"

namespace frigana {

SlotArray<CppSlot> cppTerms{};

namespace {

constexpr double largestPlanck = 200.0;      // k/T from which a Planck-Einstein term vanishes
constexpr double largestHyperbolic = 700.0;  // argument from which cosh and sinh leave the range of a double
constexpr double outOfRange = 1000000.0;

// The gas constant that INFO gives for the slot.
double gasConstant(int icomp) {
    return std::abs(icomp) <= modelTags.NC ? fluidConstants.REOS[icomp] : fluidConstants.R;
}

// The powers at the lower bound of the integrals change with TREF alone, not with the state.
void refreshLowerBound(CppSlot& c, double tref) {
    bool valid = c.lowerTREF == tref && c.lowerTREDCP == c.TREDCP;
    const int terms = c.NTERMC + c.NTERME;
    for (int k = 1; k <= terms && valid; ++k) valid = c.lowerXKC0[k] == c.XKC0[k];
    if (valid) return;
    c.lowerTREF = tref;
    c.lowerTREDCP = c.TREDCP;
    for (int k = 1; k <= terms; ++k) {
        c.lowerXKC0[k] = c.XKC0[k];
        c.lowerPower[k] = std::pow(tref, c.XKC0[k]);
        c.reducedPower[k] = std::pow(c.TREDCP, c.XKC0[k]);
        c.lowerExp[k] = std::exp(c.XKC0[k] / tref);
    }
    c.powerTemperature.fill(0.0);
}

// t^k of a power term: most equations begin with a constant, which needs none.
double powerOfTemperature(CppSlot& c, int k, double t) {
    if (c.XKC0[k] == 0.0) return 1.0;
    if (c.powerTemperature[k] != t) {
        c.powerTemperature[k] = t;
        c.power[k] = std::pow(t, c.XKC0[k]);
    }
    return c.power[k];
}

double planckExponential(CppSlot& c, int k, double u) {
    if (c.planckArgument[k] != u) {
        c.planckArgument[k] = u;
        c.planckExp[k] = std::exp(u);
    }
    return c.planckExp[k];
}

// Third derivative of the ideal-gas Helmholtz energy times tau^3.
double thirdInTau(const CppSlot& c, int icomp, double t, double rg) {
    const double tz = fluidConstants.TZ[icomp], tau = tz / t;
    double sum = 2.0 * (c.CP0SAV / rg - 1.0);
    int k = 0;
    for (int i = 1; i <= c.NTERMC; ++i) {
        ++k;
        if (std::fabs(c.XKC0[k]) > 1e-10)
            sum += c.CPC0[k] * c.XKC0[k] * std::pow(tz / c.TREDCP, c.XKC0[k]) * std::pow(tau, -c.XKC0[k]) * c.CREDCP /
                   fluidConstants.R;
    }
    for (int i = 1; i <= c.NTERME; ++i) {
        ++k;
        const double u = c.XKC0[k] / t;
        if (u >= largestPlanck) continue;
        const double e = std::exp(u);
        sum -= tau * c.CPC0[k] * c.XKC0[k] * e / (tz * (1.0 - e) * (1.0 - e)) *
               (2.0 * u + u * u * (2.0 * e / (1.0 - e) + 1.0));
    }
    double hyperbolic = 0.0;
    const double s = t / c.TREDCP;
    for (int i = 1; i <= c.NCOSHC; ++i) {
        ++k;
        const double v = c.CP0H[k] * std::pow(s, c.X0TH[k]);
        hyperbolic += c.CPC0[k] * std::pow(s, c.XKC0[k]) * std::pow(std::cosh(v), c.XH00[k]) *
                      (c.XKC0[k] + c.XH00[k] * c.X0TH[k] * v * std::tanh(v));
    }
    for (int i = 1; i <= c.NSINHC; ++i) {
        ++k;
        const double v = c.CP0H[k] * std::pow(s, c.X0TH[k]);
        hyperbolic += c.CPC0[k] * std::pow(s, c.XKC0[k]) * std::pow(std::sinh(v), c.XH00[k]) *
                      (c.XKC0[k] + c.XH00[k] * c.X0TH[k] * v / std::tanh(v));
    }
    return sum + hyperbolic;
}

// The three sums, with the lower bound refreshed.
double heatCapacity(CppSlot& c, double t) {
    const double reduced = t / c.TREDCP;
    double sum = 0.0;
    int k = 0;
    for (int i = 1; i <= c.NTERMC; ++i) {
        ++k;
        sum += c.CPC0[k] * (powerOfTemperature(c, k, t) / c.reducedPower[k]);
    }
    for (int i = 1; i <= c.NTERME; ++i) {
        ++k;
        const double u = c.XKC0[k] / t;
        if (u >= largestPlanck) continue;
        const double e = planckExponential(c, k, u);
        sum += c.CPC0[k] * u * u * e / ((1.0 - e) * (1.0 - e));
    }
    for (int i = 1; i <= c.NCOSHC + c.NSINHC; ++i) {
        ++k;
        const double v = c.CP0H[k] * std::pow(reduced, c.X0TH[k]);
        if (v < largestHyperbolic)
            sum += c.CPC0[k] * std::pow(reduced, c.XKC0[k]) *
                   std::pow(i <= c.NCOSHC ? std::cosh(v) : std::sinh(v), c.XH00[k]);
        else
            sum = outOfRange;
    }
    return sum * c.CREDCP;
}

double integral(CppSlot& c, double t) {
    const double tref = c.lowerTREF;
    double sum = 0.0;
    int k = 0;
    for (int i = 1; i <= c.NTERMC; ++i) {
        ++k;
        const double e = c.XKC0[k] + 1.0;
        if (std::fabs(e) < 1e-6)
            sum += c.CPC0[k] * c.TREDCP * std::log(t / tref);
        else
            sum += c.CPC0[k] * (t * powerOfTemperature(c, k, t) - tref * c.lowerPower[k]) / (e * c.reducedPower[k]);
    }
    for (int i = 1; i <= c.NTERME; ++i) {
        ++k;
        if (c.XKC0[k] / t >= largestPlanck) continue;
        const double upper = planckExponential(c, k, c.XKC0[k] / t), lower = c.lowerExp[k];
        sum += c.CPC0[k] * (-c.XKC0[k] / 2.0) * ((upper + 1.0) / (1.0 - upper) - (lower + 1.0) / (1.0 - lower));
    }
    for (int i = 1; i <= c.NCOSHC; ++i) {
        ++k;
        const double h = c.CP0H[k], factor = c.CPC0[k] / h;
        sum += -factor * std::tanh(h / t) + factor * std::tanh(h / tref);
    }
    for (int i = 1; i <= c.NSINHC; ++i) {
        ++k;
        const double h = c.CP0H[k], factor = c.CPC0[k] / h;
        sum += factor / std::tanh(h / t) - factor / std::tanh(h / tref);
    }
    return sum * c.CREDCP;
}

double integralOverTemperature(CppSlot& c, double t) {
    const double tref = c.lowerTREF;
    double sum = 0.0;
    int k = 0;
    for (int i = 1; i <= c.NTERMC; ++i) {
        ++k;
        if (std::fabs(c.XKC0[k]) < 1e-6)
            sum += c.CPC0[k] * std::log(t / tref);
        else
            sum += c.CPC0[k] * (powerOfTemperature(c, k, t) - c.lowerPower[k]) / (c.XKC0[k] * c.reducedPower[k]);
    }
    for (int i = 1; i <= c.NTERME; ++i) {
        ++k;
        const double u = c.XKC0[k] / t, w = c.XKC0[k] / tref;
        if (u >= largestPlanck) continue;
        const double upper = planckExponential(c, k, u), lower = c.lowerExp[k];
        sum += c.CPC0[k] *
               (std::log((1.0 - lower) / (1.0 - upper)) + u * upper / (upper - 1.0) - w * lower / (lower - 1.0));
    }
    for (int i = 1; i <= c.NCOSHC; ++i) {
        ++k;
        const double h = c.CP0H[k], v = h / t, w = h / tref, factor = c.CPC0[k] / h;
        if (v < largestHyperbolic)
            sum += -factor / t * std::tanh(v) + factor / tref * std::tanh(w) + factor / h * std::log(std::cosh(v)) -
                   factor / h * std::log(std::cosh(w));
        else
            sum = outOfRange;
    }
    for (int i = 1; i <= c.NSINHC; ++i) {
        ++k;
        const double h = c.CP0H[k], v = h / t, w = h / tref, factor = c.CPC0[k] / h;
        if (v < largestHyperbolic)
            sum += factor / t / std::tanh(v) - factor / tref / std::tanh(w) - factor / h * std::log(std::sinh(v)) +
                   factor / h * std::log(std::sinh(w));
        else
            sum = outOfRange;
    }
    return sum * c.CREDCP;
}

template <double (*sum)(CppSlot&, double)>
double sumOf(int icomp, double t) {
    if (t <= 0.0) return 0.0;
    refreshLowerBound(cppTerms[icomp], referenceState.TREF[icomp]);
    return sum(cppTerms[icomp], t);
}

// Apart from what is asked at every state: the text takes room.
[[gnu::noinline]] void warnOfOrders(int itau, int idel) {
    Text255 herr;
    message(herr, "[PH0CPP warning] invalid input; itau =", Integer{4, itau}, "; idel =", Integer{4, idel},
            nullCharacter);
    ERRMSG(99, herr);
}

}  // namespace

double CP0CPP(int icomp, double t) {
    return sumOf<heatCapacity>(icomp, t);
}
double CPICPP(int icomp, double t) {
    return sumOf<integral>(icomp, t);
}
double CPTCPP(int icomp, double t) {
    return sumOf<integralOverTemperature>(icomp, t);
}

double PH0CPP(int icomp, int itau, int idel, double t, double rho) {
    if (t <= 0.0) return 0.0;
    CppSlot& c = cppTerms[icomp];
    if (!(std::fabs(t - c.TSVCP0) < 1e-8)) {
        refreshLowerBound(c, referenceState.TREF[icomp]);
        c.CP0SAV = heatCapacity(c, t);
        c.CPISAV = integral(c, t);
        c.CPTSAV = integralOverTemperature(c, t);
        c.TSVCP0 = t;
    }
    if (itau != 0 && idel != 0) return 0.0;

    const double rg = gasConstant(icomp), RT = rg * t;
    if (itau == 0 && idel == 0) {
        if (rho <= 0.0) return 0.0;
        return c.CPISAV / RT - c.CPTSAV / rg +
               std::log(t * rho / (referenceState.TREF[icomp] * referenceState.RHOREF[icomp])) - 1.0;
    }
    if (itau == 1) return c.CPISAV / RT - 1.0;
    if (itau == 2) return 1.0 - c.CP0SAV / rg;
    if (itau == 3) return thirdInTau(c, icomp, t, rg);
    if (idel == 1) return 1.0;
    if (idel == 2) return -1.0;
    if (idel == 3) return 2.0;
    warnOfOrders(itau, idel);
    return 0.0;
}

void SETCPP(int iunit, int icomp, const Text12&, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    for (CppSlot& slot : cppTerms) slot.CP0SAV = slot.CPISAV = slot.CPTSAV = slot.TSVCP0 = 0.0;
    CppSlot& c = cppTerms[icomp];
    c = CppSlot{};
    if (iunit <= 0) {
        ierr = 1;
        message(herr, "[SETCPP error] Fluid input not found");
        return;
    }
    if (!readRecord(iunit, "lower temperature limit", ierr, herr, c.TMINCP)) return;
    if (!readRecord(iunit, "upper temperature limit", ierr, herr, c.TMAXCP)) return;
    if (!readRecord(iunit, "upper pressure limit", ierr, herr, c.PMAXCP)) return;
    if (!readRecord(iunit, "maximum density", ierr, herr, c.DMAXCP)) return;
    if (!readRecord(iunit, "reducing temperature and heat capacity", ierr, herr, c.TREDCP, c.CREDCP)) return;

    CppSlot counted{};
    const bool allCounts = fluidConstants.VERFL[icomp] >= 6.099;
    const bool read = allCounts
                          ? readRecord(iunit, "seven counts of terms", ierr, herr, counted.NTERMC, counted.NTERME,
                                       counted.NCOSHC, counted.NSINHC, counted.NSP1C, counted.NSP2C, counted.NSP3C)
                          : readRecord(iunit, "counts of terms", ierr, herr, counted.NTERMC, counted.NTERME);
    if (!read) return;
    int left = largestCppTerms;
    for (int count : {counted.NTERMC, counted.NTERME, counted.NCOSHC, counted.NSINHC}) {
        if (!countFits(iunit, "number of terms", count, left, ierr, herr)) return;
        left -= count;
    }
    const int simple = counted.NTERMC + counted.NTERME;
    for (int k = 1; k <= simple; ++k)
        if (!readRecord(iunit, "coefficient and exponent", ierr, herr, c.CPC0[k], c.XKC0[k])) return;
    for (int k = simple + 1; k <= simple + counted.NCOSHC + counted.NSINHC; ++k)
        if (!readRecord(iunit, "five numbers of a cosh or sinh term", ierr, herr, c.CPC0[k], c.XKC0[k], c.CP0H[k],
                        c.X0TH[k], c.XH00[k]))
            return;
    c.NTERMC = counted.NTERMC;
    c.NTERME = counted.NTERME;
    c.NCOSHC = counted.NCOSHC;
    c.NSINHC = counted.NSINHC;
    c.NSP1C = counted.NSP1C;
    c.NSP2C = counted.NSP2C;
    c.NSP3C = counted.NSP3C;
}

}  // namespace frigana
