#include "CORE_FEQ.h"

#include <cmath>

#include "Exponentials.h"
#include "FluidConstants.h"
#include "ModelTags.h"
#include "ReaderReport.h"
#include "SharedLogarithm.h"
#include "WideLoops.h"

namespace frigana {

SlotArray<FeqSlot> feqTerms{};

namespace {

constexpr double smallestDel = 1e-10;
constexpr double sameTau = 1e-12;  // the asymmetry of the two is intended: density roots are iterated to the last digit
constexpr double sameDel = 1e-16;
constexpr double largestExponent = 100.0, smallestExponent = -200.0;
constexpr double smallestTerm = 1e-20;  // below it a quotient of derivatives by the term is not formed
constexpr double analyticEta = 1e-12;   // rows with a smaller eta are Gaussian bells
constexpr double nextToCritical = 1e-10;

constexpr std::uint32_t bit(int n) {
    return std::uint32_t{1} << n;
}
constexpr int position(int itau, int idel) {
    return 4 * idel + itau + 1;
}

// Terms are taken by fours, the last block filled up with terms of coefficient 0, or with rows whose values follow.
constexpr int termsOfBlock = 4;
constexpr int wholeBlocks(int terms) {
    return (terms + termsOfBlock - 1) & -termsOfBlock;
}
static_assert(wholeBlocks(largestFeqTerms) == largestFeqTerms);

// Derivatives of the single terms, shared by all slots.
FeqTermArray PHIR01, PHIR02, PHIR03, PHIR10, PHIR20, PHIR30;

// Slot and del that PHIR01 and PHIR02 belong to; nullptr once the terms have changed.
const FeqSlot* derivedSlot = nullptr;
double derivedDel = 0.0;

// A distance from the critical point that never vanishes; 0 counts as above it.
double keptAway(double distance) {
    if (std::fabs(distance) >= nextToCritical) return distance;
    return distance < 0.0 ? -nextToCritical : nextToCritical;
}

double integerPower(double base, int exponent) {
    double power = 1.0;
    for (int i = 0; i < std::abs(exponent); ++i) power *= base;
    return exponent < 0 ? 1.0 / power : power;
}

// Powers of distances: those of most bells are small whole numbers.
double powerOfDistance(double distance, double exponent) {
    constexpr int largestProduct = 8;
    const int whole = static_cast<int>(exponent);
    return whole >= 0 && whole <= largestProduct && static_cast<double>(whole) == exponent
               ? integerPower(distance, whole)
               : std::pow(distance, exponent);
}

// Rows of one fluid mostly share their exponents: a power is taken again only for another exponent.
struct SharedPower {
    double exponent = 0.0, power = 1.0;
    double of(double base, double wanted) {
        if (wanted != exponent) {
            exponent = wanted;
            power = std::pow(base, wanted);
        }
        return power;
    }
};

// Distance function Delta of a non-analytic row, its power b and the derivatives of that.
//   u = del - 1, v = 1 - tau, s = sign of u, D = Delta
void distanceFunction(FeqSlot& f, int j, double tau, double del, SharedPower& ofSize, SharedPower& ofSquare) {
    const double u = keptAway(del - 1.0), v = keptAway(1.0 - tau);
    const double s = u >= 0.0 ? 1.0 : -1.0, size = std::fabs(u);
    const double B = f.BETAF[j], A = f.GAMMAF[j], C = f.EIDF[j], E = f.EITF[j], b = f.ALPHAF[j];

    const double p0 = ofSize.of(size, 1.0 / B), p1 = p0 / size, p2 = p1 / size;  // |u|^(1/B), one less, two less
    const double q0 = ofSquare.of(u * u, E), q1 = q0 / size, q2 = q1 / size;     // |u|^(2E), one less, two less

    const double theta = v + A * p0;
    const double D = theta * theta + C * q0;
    const double Dd = 2.0 * theta * (A / B) * p1 * s + 2.0 * C * E * q1 * s;
    const double Ddd = 2.0 * theta * (A / B) * (1.0 / B - 1.0) * p2 + 2.0 * (A / B) * p1 * ((A / B) * p1) +
                       2.0 * C * E * (2.0 * E - 1.0) * q2;
    const double Dt = -2.0 * theta, Dtt = 2.0;
    const double Ddt = -(2.0 * A / B) * p1 * s;

    const double Db = std::pow(D, b), Db1 = Db / D, Db2 = Db1 / D;  // D is positive: u is kept away from 0
    f.EXTF[j] = Db;
    f.EXTD[j] = b * Db1 * Dd;
    f.EXTT[j] = b * Db1 * Dt;
    f.EXTD2[j] = b * ((b - 1.0) * Db2 * Dd * Dd + Db1 * Ddd);
    f.EXTT2[j] = b * ((b - 1.0) * Db2 * Dt * Dt + Db1 * Dtt);
    f.EXTDT[j] = b * ((b - 1.0) * Db2 * Dt * Dd + Db1 * Ddt);

    // l is the exponent of both factors here; m has its part in the derivatives alone
    const int l = static_cast<int>(f.DLIF[f.NTERMF + j]);
    f.DELB[j] = u;
    f.TAUA[j] = -v;
    f.HXPF[j] = -f.DELTAF[j] * integerPower(u, l);
    f.TXPF[j] = -f.ETAF[j] * integerPower(v, l);
}

void evaluateRows(FeqSlot& f, double tau, double del) {
    SharedPower ofSize, ofSquare;
    for (int j = 1; j <= f.NCRT; ++j) {
        if (f.kind[j] == FeqRow::nonAnalytic) {
            distanceFunction(f, j, tau, del, ofSize, ofSquare);
            continue;
        }
        f.EXTF[j] = 1.0;
        f.EXTD[j] = f.EXTD2[j] = f.EXTDT[j] = f.EXTT[j] = f.EXTT2[j] = 0.0;
        const double delb = del - f.DELTAF[j], taua = tau - f.GAMMAF[j];
        f.DELB[j] = delb;
        f.TAUA[j] = taua;
        if (f.kind[j] == FeqRow::squareBell) {
            f.DXPF[j] = f.ALPHAF[j] * delb;
            f.AXPF[j] = f.BETAF[j] * taua;
        } else {
            f.DXPF[j] = f.ALPHAF[j] * powerOfDistance(delb, f.DLIF[f.NTERMF + j] - 1.0);
            f.AXPF[j] = f.BETAF[j] * powerOfDistance(taua, f.TLIF[j] - 1.0);
        }
        f.HXPF[j] = f.DXPF[j] * delb;
        f.TXPF[j] = f.AXPF[j] * taua;
    }
}

// Values of all terms at a new state; their sum is order (0, 0).
FRIGANA_WIDE_LOOPS void evaluateTerms(FeqSlot& f, double tau, double del) {
    f.HDRVFLG = 0;
    if (derivedSlot == &f) derivedSlot = nullptr;
    const int terms = f.NTERMF + f.NCRT, filled = wholeBlocks(terms);
    if (std::fabs(tau - f.TAUSVF) > sameTau) {
        f.TAUSVF = tau;
        const double lnTau = sharedLogTau.of(tau);
        for (int k = 1; k <= filled; ++k) f.TAUP[k] = f.tauPower[k] * lnTau;
    }
    if (std::fabs(del - f.DELSVF) > sameDel) {
        f.DELSVF = del;
        const double lnDel = sharedLogDel.of(del);
        for (int k = 1; k <= filled; ++k) f.DELP[k] = f.delPower[k] * lnDel;
        const double del2 = del * del;
        const double byProducts[5] = {0.0, del, del2, del2 * del, del2 * del2};
        double length[largestFeqTerms + 1];
        for (int r = 1; r <= f.NLPF; ++r) {
            const int power = f.lengthPower[r];  // NOLINT(bugprone-signed-char-misuse,cert-str34-c): no letter
            length[r] = f.GIF2[r] * (power <= 4 ? byProducts[power] : std::pow(del, f.DLPOWR[r]));
        }
        for (int k = 1; k <= filled; k += termsOfBlock)
            // The row of every term is one of those above.
            for (int i = k; i < k + termsOfBlock; ++i) f.DELLI[i] = length[f.ILPF[i]];  // cppcheck-suppress uninitvar
        for (int k = 1; k <= filled; ++k) f.lengthTerm[k] = f.DLIF[k] * f.DELLI[k];
    }
    evaluateRows(f, tau, del);

    double exponent[largestFeqTerms], exponential[largestFeqTerms];
    for (int k = 1; k <= filled; ++k) exponent[k - 1] = f.TAUP[k] + f.DELP[k] - f.DELLI[k];
    for (int j = 1; j <= f.NCRT; ++j) {
        const int k = f.NTERMF + j;
        double e = exponent[k - 1] + f.HXPF[j] + f.TXPF[j];                            // g of a row is 0
        if (!f.LCRTFLG && f.kind[j] == FeqRow::nonAnalytic) e += std::log(f.EXTF[j]);  // ln 1 of a bell adds nothing
        exponent[k - 1] = e;
    }
    exponentials(exponent, exponential, filled);
    for (int k = 1; k <= filled; ++k) {
        const double e = exponent[k - 1];  // NOLINT(clang-analyzer-core.uninitialized.Assign): filled above
        const double value = f.AFEQ[k] * exponential[k - 1];
        const bool within = (e < largestExponent) & (e > smallestExponent);
        f.PHISVF[k] = within ? value : 0.0;
    }
    double sum = 0.0;
    for (int k = 1; k <= filled; ++k) sum += f.PHISVF[k];
    f.DRVSAV[position(0, 0)] = sum;
    f.HDRVFLG = bit(position(0, 0));
}

// One direction of a critical-region row: del with d, l, alpha or tau with t, m, beta.
struct RowSide {
    double x;                // del or tau
    double d, l;             // exponents of x and of the bell
    double width;            // alpha or beta
    double distance;         // DELB or TAUA
    double slope;            // DXPF or AXPF
    double bell;             // HXPF or TXPF
    double ext, ext1, ext2;  // Delta^b and its derivatives in x
};

RowSide inDel(const FeqSlot& f, int j, double del) {
    const int k = f.NTERMF + j;
    return {del, f.DIFEQ[k], f.DLIF[k], f.ALPHAF[j], f.DELB[j], f.DXPF[j], f.HXPF[j], f.EXTF[j], f.EXTD[j], f.EXTD2[j]};
}
RowSide inTau(const FeqSlot& f, int j, double tau) {
    const int k = f.NTERMF + j;
    return {tau, f.TIFEQ[k], f.TLIF[j], f.BETAF[j], f.TAUA[j], f.AXPF[j], f.TXPF[j], f.EXTF[j], f.EXTT[j], f.EXTT2[j]};
}

// distance^(l - 2), 1 for l = 2 exactly
double powerLessTwo(const RowSide& r) {
    return r.l == 2.0 ? 1.0 : powerOfDistance(r.distance, r.l - 2.0);
}

double bellFirst(double value, const RowSide& r) {
    return value * (r.d + r.l * r.x * r.slope);
}
double bellSecond(double value, const RowSide& r) {
    const double w = r.d + r.l * r.x * r.slope;
    return value * (w * w - r.d - (r.l - r.l * r.l) * r.x * r.x * r.width * powerLessTwo(r));
}
double bellThird(double value, const RowSide& r) {
    const double w = r.d + r.l * r.x * r.slope;
    const double q = r.x * r.x * r.width * powerLessTwo(r);
    const double l2 = r.l * r.l, l3 = l2 * r.l;
    const double last = r.l == 2.0 ? 0.0
                                   : -(r.x * r.x * r.width) * r.x * (3.0 * l2 - l3 - 2.0 * r.l) *
                                         powerOfDistance(r.distance, r.l - 3.0);
    return value * (w * w * w - 3.0 * r.d * r.d + 2.0 * r.d + last - 3.0 * (r.l - l2) * r.d * q -
                    3.0 * r.x * r.slope * (r.d * r.l - (l3 - l2) * q));
}
// g is the logarithmic derivative of the exponential factor
double distanceSecond(double value, const RowSide& r) {
    const double g = r.l * r.bell / r.distance;
    const double sum = r.d / r.x + g;
    return (value / r.ext) *
           (r.x * r.x * (r.ext2 + r.ext1 * sum + r.ext * (-r.d / (r.x * r.x) + g * (r.l - 1.0) / r.distance)) +
            (r.ext1 + r.ext * sum) * (r.d * r.x + r.x * r.x * g));
}

// First and second derivative in del of every term into PHIR01 and PHIR02.
inline void deriveInDel(const FeqSlot& f, double del) {
    if (derivedSlot == &f && derivedDel == del) return;
    derivedSlot = &f;
    derivedDel = del;
    for (int k = 1; k <= wholeBlocks(f.NTERMF); ++k) {
        const double value = f.PHISVF[k], d = f.DIFEQ[k], l = f.DLIF[k], c = f.lengthTerm[k];
        PHIR01[k] = value * (d - c);
        PHIR02[k] = value * ((d - c) * (d - 1.0 - c) - l * c);
    }
    for (int j = 1; j <= f.NCRT; ++j) {
        const int k = f.NTERMF + j;
        const double value = f.PHISVF[k];
        const RowSide r = inDel(f, j, del);
        if (f.kind[j] != FeqRow::nonAnalytic) {
            PHIR01[k] = bellFirst(value, r);
            PHIR02[k] = bellSecond(value, r);
        } else {
            PHIR01[k] = (value / r.ext) * (r.ext * (r.d + r.l * del * r.bell / r.distance) + del * r.ext1);
            PHIR02[k] = distanceSecond(value, r);
        }
    }
}

// First and second derivative in tau of every term into PHIR10 and PHIR20.
inline void deriveInTau(const FeqSlot& f, double tau) {
    for (int k = 1; k <= wholeBlocks(f.NTERMF); ++k) {
        const double value = f.PHISVF[k], t = f.TIFEQ[k];
        PHIR10[k] = value * t;
        PHIR20[k] = value * t * (t - 1.0);
    }
    for (int j = 1; j <= f.NCRT; ++j) {
        const int k = f.NTERMF + j;
        const double value = f.PHISVF[k];
        const RowSide r = inTau(f, j, tau);
        if (f.kind[j] != FeqRow::nonAnalytic) {
            PHIR10[k] = bellFirst(value, r);
            PHIR20[k] = bellSecond(value, r);
        } else {
            PHIR10[k] = value * (r.d + tau * r.l * r.bell / r.distance + tau * r.ext1 / r.ext);
            PHIR20[k] = distanceSecond(value, r);
        }
    }
}

void keep(FeqSlot& f, int itau, int idel, double value) {
    f.DRVSAV[position(itau, idel)] = value;
    f.HDRVFLG |= bit(position(itau, idel));
}

// Orders (0,1) and (0,2).
void sumInDel(FeqSlot& f, double del) {
    deriveInDel(f, del);
    double sum01 = 0.0, sum02 = 0.0;
    for (int k = 1; k <= f.NTERMF + f.NCRT; ++k) {
        sum01 += PHIR01[k];
        sum02 += PHIR02[k];
    }
    keep(f, 0, 1, sum01);
    keep(f, 0, 2, sum02);
}

// Orders (1,0), (2,0) and (1,1).
FRIGANA_WIDE_LOOPS void sumInTau(FeqSlot& f, double tau, double del) {
    deriveInDel(f, del);
    deriveInTau(f, tau);
    FeqTermArray PHIR11;
    for (int k = 1; k <= wholeBlocks(f.NTERMF + f.NCRT); ++k) {
        const double value = f.PHISVF[k];
        const bool counts = std::fabs(value) > smallestTerm;
        const double quotient = PHIR10[k] * PHIR01[k] / (counts ? value : 1.0);
        PHIR11[k] = counts ? quotient : 0.0;
    }
    for (int j = 1; j <= f.NCRT; ++j) {
        if (f.kind[j] != FeqRow::nonAnalytic) continue;
        const int k = f.NTERMF + j;
        PHIR11[k] =
            (f.TIFEQ[k] + tau * f.TLIF[j] * f.TXPF[j] / f.TAUA[j]) * PHIR01[k] +
            (f.PHISVF[k] / f.EXTF[j]) *
                (del * tau * f.EXTDT[j] + tau * f.EXTT[j] * (f.DIFEQ[k] + del * f.DLIF[k] * f.HXPF[j] / f.DELB[j]));
    }
    double sum10 = 0.0, sum20 = 0.0, sum11 = 0.0;
    for (int k = 1; k <= f.NTERMF + f.NCRT; ++k) {
        sum10 += PHIR10[k];
        sum20 += PHIR20[k];
        sum11 += PHIR11[k];
    }
    keep(f, 1, 0, sum10);
    keep(f, 2, 0, sum20);
    keep(f, 1, 1, sum11);
}

// Orders (2,1), (1,2) and (2,2): products over the term, non-analytic rows included.
void sumMixed(FeqSlot& f, double tau, double del) {
    deriveInDel(f, del);
    deriveInTau(f, tau);
    double sum21 = 0.0, sum12 = 0.0, sum22 = 0.0;
    for (int k = 1; k <= f.NTERMF + f.NCRT; ++k) {
        const double value = f.PHISVF[k];
        if (std::fabs(value) <= smallestTerm) continue;
        sum21 += PHIR20[k] * PHIR01[k] / value;
        sum12 += PHIR10[k] * PHIR02[k] / value;
        sum22 += PHIR20[k] * PHIR02[k] / value;
    }
    keep(f, 2, 1, sum21);
    keep(f, 1, 2, sum12);
    keep(f, 2, 2, sum22);
}

inline double sumThirdInDel(const FeqSlot& f, double del) {
    for (int k = 1; k <= wholeBlocks(f.NTERMF); ++k) {
        const double d = f.DIFEQ[k], l = f.DLIF[k], c = f.lengthTerm[k];
        PHIR03[k] = f.PHISVF[k] * (d * (2.0 - 3.0 * d + d * d) + c * (6.0 * d - 2.0 - 3.0 * d * d - 3.0 * d * l +
                                                                      3.0 * l - l * l + c * (3.0 * (l + d - 1.0) - c)));
    }
    for (int j = 1; j <= f.NCRT; ++j) {
        const int k = f.NTERMF + j;
        PHIR03[k] = f.kind[j] == FeqRow::nonAnalytic ? 0.0 : bellThird(f.PHISVF[k], inDel(f, j, del));
    }
    double sum = 0.0;
    for (int k = 1; k <= f.NTERMF + f.NCRT; ++k) sum += PHIR03[k];
    return sum;
}

inline double sumThirdInTau(const FeqSlot& f, double tau) {
    for (int k = 1; k <= wholeBlocks(f.NTERMF); ++k) {
        const double t = f.TIFEQ[k];
        PHIR30[k] = f.PHISVF[k] * t * (t - 1.0) * (t - 2.0);
    }
    for (int j = 1; j <= f.NCRT; ++j) {
        const int k = f.NTERMF + j;
        PHIR30[k] = f.kind[j] == FeqRow::nonAnalytic ? 0.0 : bellThird(f.PHISVF[k], inTau(f, j, tau));
    }
    double sum = 0.0;
    for (int k = 1; k <= f.NTERMF + f.NCRT; ++k) sum += PHIR30[k];
    return sum;
}

// Brings position n of the saved results up to date at the saved state.
FRIGANA_WIDE_LOOPS void derive(FeqSlot& f, int itau, int idel, double tau, double del) {
    if (itau == 0) {
        if (idel <= 2)
            sumInDel(f, del);
        else
            keep(f, 0, 3, sumThirdInDel(f, del));
        return;
    }
    if (itau <= 2 && idel >= 1 && idel <= 2) {
        if (itau == 1 && idel == 1)
            sumInTau(f, tau, del);
        else
            sumMixed(f, tau, del);
        return;
    }
    // pure tau part, also for the mixes that are not served
    if (itau == 3) {
        keep(f, itau, idel, sumThirdInTau(f, tau));
        return;
    }
    if (!(f.HDRVFLG & bit(position(itau, 0)))) sumInTau(f, tau, del);
    keep(f, itau, idel, f.DRVSAV[position(itau, 0)]);
}

// A result that is not saved; apart from what is asked at every call.
FRIGANA_WIDE_LOOPS double evaluate(FeqSlot& f, bool sameState, int itau, int idel, double tau, double del) {
    if (!sameState) evaluateTerms(f, tau, del);
    const int n = position(itau, idel);
    if (!(f.HDRVFLG & bit(n))) derive(f, itau, idel, tau, del);
    return f.DRVSAV[n];
}

bool readTerms(int iunit, FeqSlot& f, int& ierr, Text255& herr) {
    for (int k = 1; k <= f.NTERMF; ++k) {
        f.GIF1[k] = 1.0;
        const bool read = f.NCOEFF == 5 ? readRecord(iunit, "term a, t, d, l, g", ierr, herr, f.AFEQ[k], f.TIFEQ[k],
                                                     f.DIFEQ[k], f.DLIF[k], f.GIF1[k])
                                        : readRecord(iunit, "term a, t, d, l", ierr, herr, f.AFEQ[k], f.TIFEQ[k],
                                                     f.DIFEQ[k], f.DLIF[k]);
        if (!read) return false;
    }
    for (int j = 1; j <= f.NCRT; ++j) {
        const int k = f.NTERMF + j;
        f.GIF1[k] = 0.0;
        if (!readRecord(iunit, "critical-region row of 12 numbers", ierr, herr, f.AFEQ[k], f.TIFEQ[k], f.DIFEQ[k],
                        f.DLIF[k], f.TLIF[j], f.ALPHAF[j], f.BETAF[j], f.GAMMAF[j], f.DELTAF[j], f.ETAF[j], f.EIDF[j],
                        f.EITF[j]))
            return false;
        if (std::fabs(f.ETAF[j]) > smallestTerm && std::fabs(f.EIDF[j]) > smallestTerm &&
            std::fabs(f.EITF[j]) > smallestTerm)
            f.LCRTFLG = false;
    }
    return true;
}

// Row of a table that holds a value; a new row where none does.
int tableRow(FeqTermArray& table, int& rows, double value) {
    for (int r = 1; r <= rows; ++r)
        if (std::fabs(table[r] - value) < 1e-10) return r;
    table[++rows] = value;
    return rows;
}

}  // namespace

double PHIFEQ(int icomp, int itau, int idel, double tau, double del) {
    if (!(del > smallestDel) || !(tau > 0.0)) return 0.0;
    if (itau < 0 || itau > 3 || idel < 0 || idel > 3) return 0.0;
    FeqSlot& f = feqTerms[icomp];
    const int n = position(itau, idel);
    const bool same = std::fabs(tau - f.TAUSVF) < sameTau && std::fabs(del - f.DELSVF) < sameDel;
    return same && (f.HDRVFLG & bit(n)) ? f.DRVSAV[n] : evaluate(f, same, itau, idel, tau, del);
}

void CRTFEQ(int icomp, double& tc, double& pc, double& rhoc) {
    const FeqSlot& f = feqTerms[icomp];
    tc = f.TCFEQ;
    pc = f.PCFEQ;
    rhoc = f.RHOCFEQ;
}

void REDFEQ(int icomp, double& tred, double& dred) {
    const FeqSlot& f = feqTerms[icomp];
    tred = f.T0FEQ;
    dred = f.RHO0FEQ;
}

void SETFEQ(int iunit, int icomp, const Text12&, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    for (FeqSlot& slot : feqTerms) {
        slot.TAUSVF = slot.DELSVF = 0.0;
        slot.HDRVFLG = 0;
        slot.PHISVF.fill(0.0);
        slot.TAUP.fill(0.0);
        slot.DELP.fill(0.0);
        slot.DELLI.fill(0.0);
        slot.lengthTerm.fill(0.0);
    }
    FeqSlot& f = feqTerms[icomp];
    f.LCRTFLG = true;
    if (iunit <= 0) {
        ierr = 1;
        message(herr, "[SETFEQ error] fluid input to SETFEQ not found");
        return;
    }
    f.NTERMF = f.NCRT = 0;  // a block that cannot be read leaves no half an equation

    FluidConstants& c = fluidConstants;
    int terms = 0, rows = 0;
    if (!readRecord(iunit, "lower temperature limit", ierr, herr, f.TMINFEQ)) return;
    if (!readRecord(iunit, "upper temperature limit", ierr, herr, f.TMAXFEQ)) return;
    if (!readRecord(iunit, "upper pressure limit", ierr, herr, f.PMAXFEQ)) return;
    if (!readRecord(iunit, "maximum density", ierr, herr, c.DEOS[icomp])) return;
    if (!readTextLine(iunit, "pointer to the ideal-gas block", ierr, herr, modelTags.HMODCP[icomp])) return;
    if (!readRecord(iunit, "molar mass", ierr, herr, f.WMFEQ)) return;
    if (!readRecord(iunit, "triple point temperature", ierr, herr, c.TTPN[icomp])) return;
    if (!readRecord(iunit, "pressure at the triple point", ierr, herr, f.PMINFEQ)) return;
    if (!readRecord(iunit, "density at the triple point", ierr, herr, f.RHOTPFEQ)) return;
    if (!readRecord(iunit, "normal boiling point", ierr, herr, c.TNBP[icomp])) return;
    if (!readRecord(iunit, "acentric factor", ierr, herr, c.ACCEN[icomp])) return;
    if (!readRecord(iunit, "critical point", ierr, herr, f.TCFEQ, f.PCFEQ, f.RHOCFEQ)) return;
    if (!readRecord(iunit, "reducing temperature and density", ierr, herr, f.T0FEQ, f.RHO0FEQ)) return;
    if (!readRecord(iunit, "gas constant", ierr, herr, f.RFEQ)) return;

    c.WMAS[icomp] = f.WMFEQ;
    c.PTPN[icomp] = f.PMINFEQ;
    c.DTPN[icomp] = f.RHOTPFEQ;
    c.DTPV[icomp] = c.DNBPL[icomp] = c.DNBPV[icomp] = 0.0;
    c.TCRIT[icomp] = f.TCFEQ;
    c.PCRIT[icomp] = f.PCFEQ;
    c.DCRIT[icomp] = f.RHOCFEQ;
    const double product = f.RFEQ * f.TCFEQ * f.RHOCFEQ;
    c.ZCRIT[icomp] = product != 0.0 ? f.PCFEQ / product : 0.0;
    c.TZ[icomp] = f.T0FEQ;
    c.RHOZ[icomp] = f.RHO0FEQ;
    c.REOS[icomp] = f.RFEQ;
    if (modelTags.NC == 1 && icomp == 1) c.R = f.RFEQ;

    if (!readRecord(iunit, "counts of terms and columns", ierr, herr, terms, f.NCOEFF, rows, f.NCFCRT, f.NSPARF,
                    f.NCFSP))
        return;
    if (!countFits(iunit, "number of critical-region rows", rows, largestFeqRows, ierr, herr)) return;
    if (!countFits(iunit, "number of terms", terms, largestFeqTerms - rows, ierr, herr)) return;
    f.NTERMF = terms;
    f.NCRT = rows;
    if (!readTerms(iunit, f, ierr, herr)) {
        f.NTERMF = f.NCRT = 0;
        return;
    }
    SETEXP(icomp);
    c.TMEOS[icomp] = f.TMINFEQ;
    c.TXEOS[icomp] = f.TMAXFEQ;
    c.PEOS[icomp] = f.PMAXFEQ;
}

void SETEXP(int icomp) {
    FeqSlot& f = feqTerms[icomp];
    f.TAUSVF = f.DELSVF = 0.0;
    f.NTPF = f.NDPF = f.NLPF = 0;
    for (int k = 1; k <= f.NTERMF + f.NCRT; ++k) {
        f.ITPF[k] = tableRow(f.TPOWER, f.NTPF, f.TIFEQ[k]);
        f.IDPF[k] = tableRow(f.DPOWER, f.NDPF, f.DIFEQ[k]);
        int row = 1;
        while (row <= f.NLPF &&
               !(std::fabs(f.DLPOWR[row] - f.DLIF[k]) < 1e-10 && std::fabs(f.GIF2[row] - f.GIF1[k]) < 1e-10))
            ++row;
        if (row > f.NLPF) {
            f.NLPF = row;
            f.DLPOWR[row] = f.DLIF[k];
            f.GIF2[row] = f.GIF1[k];
        }
        f.ILPF[k] = row;
        f.tauPower[k] = f.TPOWER[f.ITPF[k]];
        f.delPower[k] = f.DPOWER[f.IDPF[k]];
    }
    for (int k = f.NTERMF + f.NCRT + 1; k <= wholeBlocks(f.NTERMF + f.NCRT); ++k) {
        f.ILPF[k] = 1;
        for (FeqTermArray* numbers : {&f.AFEQ, &f.TIFEQ, &f.DIFEQ, &f.DLIF, &f.tauPower, &f.delPower})
            (*numbers)[k] = 0.0;
    }
    // l within 1e-20 of 0 to 4 goes by products; rows of critical terms have g = 0 and need no power at all
    for (int r = 1; r <= f.NLPF; ++r) {
        f.lengthPower[r] = f.GIF2[r] == 0.0 ? std::int8_t{0} : std::int8_t{5};
        for (int l = 0; l <= 4; ++l)
            if (std::fabs(f.DLPOWR[r] - l) < 1e-20) f.lengthPower[r] = static_cast<std::int8_t>(l);
    }
    for (int j = 1; j <= f.NCRT; ++j) {
        if (std::fabs(f.ETAF[j]) >= analyticEta)
            f.kind[j] = FeqRow::nonAnalytic;
        else
            f.kind[j] = f.DLIF[f.NTERMF + j] == 2.0 && f.TLIF[j] == 2.0 ? FeqRow::squareBell : FeqRow::bell;
    }
}

}  // namespace frigana
