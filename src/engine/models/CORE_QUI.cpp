#include "CORE_QUI.h"

#include <cmath>

#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "ReaderReport.h"

namespace frigana {

SlotArray<QuiSlot> quiTerms;

namespace {

constexpr int tauOrders = 2, delOrders = 3;

// A function of tau and del as its Taylor polynomial about the state, of second order in tau and third in del. Sums and
// products of such polynomials carry all mixed derivatives through the closed form exactly.
struct Taylor {
    double c[tauOrders + 1][delOrders + 1] = {};
};

Taylor operator*(const Taylor& a, const Taylor& b) {
    Taylor product;
    for (int i = 0; i <= tauOrders; ++i)
        for (int j = 0; j <= delOrders; ++j)
            for (int k = 0; k <= i; ++k)
                for (int l = 0; l <= j; ++l) product.c[i][j] += a.c[k][l] * b.c[i - k][j - l];
    return product;
}

Taylor operator+(const Taylor& a, const Taylor& b) {
    Taylor sum;
    for (int i = 0; i <= tauOrders; ++i)
        for (int j = 0; j <= delOrders; ++j) sum.c[i][j] = a.c[i][j] + b.c[i][j];
    return sum;
}

Taylor operator*(double factor, const Taylor& a) {
    Taylor scaled;
    for (int i = 0; i <= tauOrders; ++i)
        for (int j = 0; j <= delOrders; ++j) scaled.c[i][j] = factor * a.c[i][j];
    return scaled;
}

Taylor constant(double value) {
    Taylor result;
    result.c[0][0] = value;
    return result;
}

// The part beyond the constant, over the constant; its powers beyond the fifth vanish.
Taylor relative(const Taylor& a) {
    Taylor u = (1.0 / a.c[0][0]) * a;
    u.c[0][0] = 0.0;
    return u;
}
constexpr int vanishingPower = tauOrders + delOrders + 1;

Taylor logarithm(const Taylor& a) {
    const Taylor u = relative(a);
    Taylor sum = constant(std::log(a.c[0][0]));
    Taylor power = u;
    for (int n = 1; n < vanishingPower; ++n) {
        sum = sum + ((n % 2 == 1 ? 1.0 : -1.0) / n) * power;
        power = power * u;
    }
    return sum;
}

Taylor reciprocal(const Taylor& a) {
    const Taylor u = relative(a);
    Taylor sum = constant(1.0);
    Taylor power = u;
    for (int n = 1; n < vanishingPower; ++n) {
        sum = sum + (n % 2 == 1 ? -1.0 : 1.0) * power;
        power = power * u;
    }
    return (1.0 / a.c[0][0]) * sum;
}

// One of the five polynomials, from a term of the list on.
Taylor polynomial(const QuiSlot& slot, int first, int count, double logTau, double tau) {
    Taylor sum;
    for (int k = first; k < first + count; ++k) {
        const double t = slot.TIQUI[k];
        const double value = slot.AQUI[k] * std::exp(t * logTau);
        sum.c[0][0] += value;
        sum.c[1][0] += value * t / tau;
        sum.c[2][0] += value * t * (t - 1.0) / (2.0 * tau * tau);
    }
    return sum;
}

// All results of a state; they stay 0 outside the domain of the logarithms.
void evaluate(QuiSlot& slot) {
    const double tau = slot.TAUSVQ, del = slot.DELSVQ;
    int first = 1;
    const auto next = [&](int count) {
        const Taylor sum = polynomial(slot, first, count, slot.TAUPQ, tau);
        first += count;
        return sum;
    };
    const Taylor eta = next(slot.NETAQ);
    const Taylor eps = next(slot.NEPSQ);
    const Taylor b = next(slot.NBBQ);
    const Taylor gam = next(slot.NGAMQ);
    const Taylor bet = next(slot.NBETQ);

    Taylor density = constant(del);
    density.c[0][1] = 1.0;
    const Taylor one = constant(1.0);
    const Taylor repulsive = one + (-1.0) * (b * density);
    const Taylor numerator = one + gam * density;
    const Taylor denominator = one + (-1.0) * (bet * density);
    if (!(repulsive.c[0][0] > 0.0) || !(numerator.c[0][0] > 0.0) || !(denominator.c[0][0] > 0.0)) return;

    // -ln(1 - b del)/b, which is del for b = 0
    const Taylor covolume = b.c[0][0] == 0.0 ? density : (-1.0) * (logarithm(repulsive) * reciprocal(b));
    const Taylor phi =
        eta * (density + covolume) + (-1.0) * (eps * (logarithm(numerator) + (-1.0) * logarithm(denominator)));

    double tauFactor = 1.0;
    for (int itau = 0; itau <= tauOrders; ++itau) {
        if (itau > 0) tauFactor *= itau * tau;
        double delFactor = 1.0;
        for (int idel = 0; idel <= delOrders; ++idel) {
            if (idel > 0) delFactor *= idel * del;
            slot.DRVSVQ[4 * idel + itau + 1] = phi.c[itau][idel] * tauFactor * delFactor;
        }
    }
}

}  // namespace

double PHIQUI(int icomp, int itau, int idel, double tau, double del) {
    if (del <= 1e-10 || tau <= 0.0) return 0.0;
    if (itau < 0 || idel < 0 || itau > 3 || idel > 3) return 0.0;
    QuiSlot& slot = quiTerms[icomp];
    const int n = 4 * idel + itau + 1;
    const bool sameTau = std::fabs(tau - slot.TAUSVQ) < 1e-12;
    const bool sameDel = std::fabs(del - slot.DELSVQ) < 1e-16;
    if (!sameTau || !sameDel || !slot.HDRVQ) {
        if (!sameTau) {
            slot.TAUSVQ = tau;
            slot.TAUPQ = std::log(tau);
        }
        if (!sameDel) {
            slot.DELSVQ = del;
            slot.DELPQ = std::log(del);
        }
        slot.DRVSVQ.fill(0.0);
        evaluate(slot);
        slot.HDRVQ = true;
    }
    if (itau == 3) {
        double sum = 0.0;
        const int terms = slot.NETAQ + slot.NEPSQ + slot.NBBQ + slot.NGAMQ + slot.NBETQ;
        for (int k = 1; k <= terms; ++k) {
            const double t = slot.TIQUI[k];
            sum += slot.PHISVQ[k] * t * (t - 1.0) * (t - 2.0);
        }
        return sum;
    }
    return slot.DRVSVQ[n];
}

void CRTQUI(int icomp, double& tc, double& pc, double& rhoc) {
    tc = quiTerms[icomp].TCQUI;
    pc = quiTerms[icomp].PCQUI;
    rhoc = quiTerms[icomp].RHOCQ;
}

void REDQUI(int icomp, double& tred, double& dred) {
    tred = quiTerms[icomp].T0QUI;
    dred = quiTerms[icomp].RHO0Q;
}

void SETQUI(int iunit, int icomp, [[maybe_unused]] const Text12& hcasn, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    for (QuiSlot& slot : quiTerms) {
        slot.TAUSVQ = slot.DELSVQ = 0.0;
        slot.HDRVQ = false;
    }
    if (iunit <= 0) {
        ierr = 1;
        message(herr, "[SETQUI error] fluid input to SETQUI not found", nullCharacter);
        return;
    }
    QuiSlot read{};
    Text3 heatCapacity;
    double dmax, triplePoint, boilingPoint, acentric;
    if (!readRecord(iunit, "lower temperature limit", ierr, herr, read.TMINQ)) return;
    if (!readRecord(iunit, "upper temperature limit", ierr, herr, read.TMAXQ)) return;
    if (!readRecord(iunit, "upper pressure limit", ierr, herr, read.PMAXQ)) return;
    if (!readRecord(iunit, "maximum density", ierr, herr, dmax)) return;
    if (!readTextLine(iunit, "pointer to the ideal-gas block", ierr, herr, heatCapacity)) return;
    if (!readRecord(iunit, "molar mass", ierr, herr, read.WMFQ)) return;
    if (!readRecord(iunit, "triple point temperature", ierr, herr, triplePoint)) return;
    if (!readRecord(iunit, "pressure at the triple point", ierr, herr, read.PMINQ)) return;
    if (!readRecord(iunit, "density at the triple point", ierr, herr, read.RHOTPQ)) return;
    if (!readRecord(iunit, "normal boiling point", ierr, herr, boilingPoint)) return;
    if (!readRecord(iunit, "acentric factor", ierr, herr, acentric)) return;
    if (!readRecord(iunit, "critical point", ierr, herr, read.TCQUI, read.PCQUI, read.RHOCQ)) return;
    if (!readRecord(iunit, "reducing temperature and density", ierr, herr, read.T0QUI, read.RHO0Q)) return;
    if (!readRecord(iunit, "gas constant", ierr, herr, read.RQUI)) return;
    if (!readRecord(iunit, "five numbers of terms", ierr, herr, read.NETAQ, read.NEPSQ, read.NBBQ, read.NGAMQ,
                    read.NBETQ))
        return;
    int total = 0;
    for (const int count : {read.NETAQ, read.NEPSQ, read.NBBQ, read.NGAMQ, read.NBETQ}) {
        if (!countFits(iunit, "number of terms", count, mostQuiTerms - total, ierr, herr)) return;
        total += count;
    }
    for (int k = 1; k <= total; ++k)
        if (!readRecord(iunit, "coefficient and two exponents", ierr, herr, read.AQUI[k], read.TIQUI[k], read.DIQUI[k]))
            return;
    quiTerms[icomp] = read;

    FluidConstants& fluid = fluidConstants;
    modelTags.HMODCP[icomp] = heatCapacity;
    fluid.TMEOS[icomp] = read.TMINQ;
    fluid.TXEOS[icomp] = read.TMAXQ;
    fluid.PEOS[icomp] = read.PMAXQ;
    fluid.DEOS[icomp] = dmax;
    fluid.WMAS[icomp] = read.WMFQ;
    fluid.TTPN[icomp] = triplePoint;
    fluid.PTPN[icomp] = read.PMINQ;
    fluid.DTPN[icomp] = read.RHOTPQ;
    fluid.DTPV[icomp] = fluid.DNBPL[icomp] = fluid.DNBPV[icomp] = 0.0;
    fluid.TNBP[icomp] = boilingPoint;
    fluid.ACCEN[icomp] = acentric;
    fluid.TCRIT[icomp] = read.TCQUI;
    fluid.PCRIT[icomp] = read.PCQUI;
    fluid.DCRIT[icomp] = read.RHOCQ;
    fluid.TZ[icomp] = read.T0QUI;
    fluid.RHOZ[icomp] = read.RHO0Q;
    fluid.REOS[icomp] = read.RQUI;
    const double product = read.RQUI * read.TCQUI * read.RHOCQ;
    fluid.ZCRIT[icomp] = product > 0.0 ? read.PCQUI / product : 0.0;
    if (modelTags.NC == 1 && icomp == 1) fluid.R = read.RQUI;
}

}  // namespace frigana
