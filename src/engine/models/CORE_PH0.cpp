#include "CORE_PH0.h"

#include <cmath>

#include "FluidConstants.h"
#include "ModelTags.h"
#include "ReaderReport.h"
#include "UTILITY.h"

namespace frigana {

SlotArray<Ph0Slot> ph0Terms{};

namespace {

constexpr double gerg = 1.0000045703443345;  // 8.314510 / 8.314472
constexpr double largestHyperbolic = 700.0, largestSquare = 500.0;

double squared(double value) {
    return value * value;
}

double order0(const Ph0Slot& f, double tau, double del) {
    double sum = std::log(del);
    int k = 0;
    for (int i = 1; i <= f.NLOGP; ++i) {
        ++k;
        sum += f.AIPH[k] * std::log(std::pow(tau, f.TIPH[k]));
    }
    for (int i = 1; i <= f.NTAUP; ++i) {
        ++k;
        sum += f.AIPH[k] * std::pow(tau, f.TIPH[k]);
    }
    for (int i = 1; i <= f.NEXPP; ++i) {
        ++k;
        sum += f.AIPH[k] * std::log(1.0 - std::exp(f.TIPH[k] * tau));
    }
    for (int i = 1; i <= f.NCOSHP; ++i) {
        ++k;
        const double v = f.TIPH[k] * tau;
        sum += f.AIPH[k] * (v < largestHyperbolic ? std::log(std::cosh(v)) : largestHyperbolic);
    }
    for (int i = 1; i <= f.NSINHP; ++i) {
        ++k;
        const double v = f.TIPH[k] * tau;
        sum += f.AIPH[k] * (v < largestHyperbolic ? std::log(std::sinh(v)) : largestHyperbolic);
    }
    return sum;
}

double order1(const Ph0Slot& f, double tau) {
    double sum = 0.0;
    int k = 0;
    for (int i = 1; i <= f.NLOGP; ++i) {
        ++k;
        sum += f.AIPH[k] * f.TIPH[k] / tau;
    }
    for (int i = 1; i <= f.NTAUP; ++i) {
        ++k;
        sum += f.AIPH[k] * f.TIPH[k] * std::pow(tau, f.TIPH[k] - 1.0);
    }
    for (int i = 1; i <= f.NEXPP; ++i) {
        ++k;
        const double e = std::exp(f.TIPH[k] * tau);
        sum -= f.AIPH[k] * f.TIPH[k] * e / (1.0 - e);
    }
    for (int i = 1; i <= f.NCOSHP; ++i) {
        ++k;
        sum += f.AIPH[k] * f.TIPH[k] * std::tanh(f.TIPH[k] * tau);
    }
    for (int i = 1; i <= f.NSINHP; ++i) {
        ++k;
        sum += f.AIPH[k] * f.TIPH[k] / std::tanh(f.TIPH[k] * tau);
    }
    return sum * tau;
}

double order2(const Ph0Slot& f, double tau) {
    double sum = 0.0;
    int k = 0;
    for (int i = 1; i <= f.NLOGP; ++i) {
        ++k;
        sum -= f.AIPH[k] * f.TIPH[k] / squared(tau);
    }
    for (int i = 1; i <= f.NTAUP; ++i) {
        ++k;
        sum += f.AIPH[k] * f.TIPH[k] * (f.TIPH[k] - 1.0) * std::pow(tau, f.TIPH[k] - 2.0);
    }
    for (int i = 1; i <= f.NEXPP; ++i) {
        ++k;
        const double e = std::exp(f.TIPH[k] * tau);
        sum -= f.AIPH[k] * squared(f.TIPH[k]) * e / squared(1.0 - e);
    }
    for (int i = 1; i <= f.NCOSHP; ++i) {
        ++k;
        const double v = f.TIPH[k] * tau;
        if (v < largestSquare) sum += f.AIPH[k] * squared(f.TIPH[k]) / squared(std::cosh(v));
    }
    for (int i = 1; i <= f.NSINHP; ++i) {
        ++k;
        const double v = f.TIPH[k] * tau;
        if (v < largestSquare) sum -= f.AIPH[k] * squared(f.TIPH[k]) / squared(std::sinh(v));
    }
    return sum * squared(tau);
}

double order3(const Ph0Slot& f, double tau) {
    double sum = 0.0;
    int k = 0;
    for (int i = 1; i <= f.NLOGP; ++i) {
        ++k;
        sum += 2.0 * f.AIPH[k] * f.TIPH[k] / (tau * squared(tau));
    }
    for (int i = 1; i <= f.NTAUP; ++i) {
        ++k;
        const double b = f.TIPH[k];
        sum += f.AIPH[k] * b * (b - 1.0) * (b - 2.0) * std::pow(tau, b - 3.0);
    }
    for (int i = 1; i <= f.NEXPP; ++i) {
        ++k;
        const double b = f.TIPH[k], e = std::exp(b * tau), rest = 1.0 - e;
        sum -= f.AIPH[k] * b * squared(b) * (e / squared(rest) + 2.0 * squared(e) / (rest * squared(rest)));
    }
    for (int i = 1; i <= f.NCOSHP; ++i) {
        ++k;
        const double b = f.TIPH[k], v = b * tau;
        if (v < largestSquare) sum -= 2.0 * f.AIPH[k] * b * squared(b) * std::tanh(v) / squared(std::cosh(v));
    }
    for (int i = 1; i <= f.NSINHP; ++i) {
        ++k;
        const double b = f.TIPH[k], v = b * tau;
        if (v < largestSquare) sum += 2.0 * f.AIPH[k] * b * squared(b) / (std::tanh(v) * squared(std::sinh(v)));
    }
    return sum * tau * squared(tau);
}

double saved(Ph0Slot& f, int itau) {
    return itau == 0 ? f.PH0SAV : itau == 1 ? f.PH1SAV : f.PH2SAV;
}

double reducedEnergy(Ph0Slot& f, int icomp, int itau, int idel, double t, double rho) {
    if (itau != 0 && idel != 0) return 0.0;
    const double tau = fluidConstants.TZ[icomp] / t;
    if (idel == 0 && itau >= 0 && itau <= 2) {
        // the derivatives in tau do not depend on density: for them the temperature alone decides
        if (std::fabs(t - f.TSVPH0[itau]) < 1e-8 && (itau > 0 || std::fabs(rho - f.RHOSVP[0]) < 1e-10))
            return saved(f, itau);
        if (itau == 0)
            f.PH0SAV = order0(f, tau, rho / fluidConstants.RHOZ[icomp]);
        else if (itau == 1)
            f.PH1SAV = order1(f, tau);
        else
            f.PH2SAV = order2(f, tau);
        f.TSVPH0[itau] = t;
        f.RHOSVP[itau] = rho;
        return saved(f, itau);
    }
    if (itau == 3) return order3(f, tau);
    if (itau == 0 && idel == 1) return 1.0;
    if (itau == 0 && idel == 2) return -1.0;
    if (itau == 0 && idel == 3) return 2.0;
    Text255 herr;
    message(herr, "[PH0PH0 warning] invalid input; itau =", Integer{4, itau}, "; idel =", Integer{4, idel},
            nullCharacter);
    ERRMSG(99, herr);
    return 0.0;
}
}  // namespace

void clearSavedValues(Ph0Slot& f) {
    f.TSVPH0.fill(0.0);
    f.RHOSVP.fill(0.0);
    f.PH0SAV = f.PH1SAV = f.PH2SAV = 0.0;
}

double PH0PH0(int icomp, int itau, int idel, double t, double rho) {
    if (t <= 0.0) return 0.0;
    const double value = reducedEnergy(ph0Terms[icomp], icomp, itau, idel, t, rho);
    const Text3& tag = modelTags.HMODCP[icomp];
    return tag[3] == 'G' && tag[1] == 'P' && tag[2] == 'H' ? value * gerg : value;
}

void SETPH0(int iunit, int icomp, const Text12&, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    for (Ph0Slot& slot : ph0Terms) clearSavedValues(slot);
    Ph0Slot& f = ph0Terms[icomp];
    f = Ph0Slot{};
    if (iunit <= 0) {
        ierr = 1;
        message(herr, iunit < 0 ? "[SETPH0 error] Block data option not implemented"
                                : "[SETPH0 error] Input fluid (block data) not found");
        return;
    }
    if (!readRecord(iunit, "lower temperature limit", ierr, herr, f.TMINPH)) return;
    if (!readRecord(iunit, "upper temperature limit", ierr, herr, f.TMAXPH)) return;
    if (!readRecord(iunit, "upper pressure limit", ierr, herr, f.PMAXPH)) return;
    if (!readRecord(iunit, "maximum density", ierr, herr, f.DMAXPH)) return;

    Ph0Slot counted{};
    const bool allCounts = fluidConstants.VERFL[icomp] >= 8.0;
    const bool read =
        allCounts ? readRecord(iunit, "eight counts of terms", ierr, herr, counted.NLOGP, counted.NTAUP, counted.NEXPP,
                               counted.NCOSHP, counted.NSINHP, counted.NSP1P, counted.NSP2P, counted.NSP3P)
                  : readRecord(iunit, "counts of terms", ierr, herr, counted.NLOGP, counted.NTAUP, counted.NEXPP);
    if (!read) return;
    int terms = 0;
    for (int count : {counted.NLOGP, counted.NTAUP, counted.NEXPP, counted.NCOSHP, counted.NSINHP, counted.NSP1P,
                      counted.NSP2P, counted.NSP3P}) {
        if (!countFits(iunit, "number of terms", count, largestPh0Terms - terms, ierr, herr)) return;
        terms += count;
    }
    for (int k = 1; k <= terms; ++k)
        if (!readRecord(iunit, "coefficient and exponent", ierr, herr, f.AIPH[k], f.TIPH[k])) return;
    f.NLOGP = counted.NLOGP;
    f.NTAUP = counted.NTAUP;
    f.NEXPP = counted.NEXPP;
    f.NCOSHP = counted.NCOSHP;
    f.NSINHP = counted.NSINHP;
    f.NSP1P = counted.NSP1P;
    f.NSP2P = counted.NSP2P;
    f.NSP3P = counted.NSP3P;
}

}  // namespace frigana
