#include "MIX_HMX.h"

#include <cmath>
#include <utility>

#include "Exponentials.h"
#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "ReducingMemory.h"
#include "SharedLogarithm.h"
#include "UTILITY.h"
#include "WideLoops.h"

namespace frigana {

MixingParameters::MixingParameters() = default;
MixingParameters mixingParameters;
IndexedArray<DepartureCache, 0, largestModelNumber> departureCache{};

void clearDepartureCache() {
    departureCache.fill(DepartureCache{});
}

namespace {

bool begins(const Text3& tag, char first, char second) {
    return tag[1] == first && tag[2] == second;
}
bool isKW(const Text3& tag) {
    return begins(tag, 'K', 'W');
}
bool isLJ(const Text3& tag) {
    return begins(tag, 'L', 'J');
}
bool isLM(const Text3& tag) {
    return begins(tag, 'L', 'M');
}
bool isTR1(const Text3& tag) {
    return begins(tag, 'T', 'R') && tag[3] == '1';
}
bool isLIN(const Text3& tag) {
    return begins(tag, 'L', 'I') && tag[3] == 'N';
}

// ---- reducing functions ----------------------------------------------------------------------------------------

// What a pair needs of its components' reducing values; kept while they stay the same, since it holds roots.
struct PairMeans {
    double Ti = 0, Tj = 0, ri = 0, rj = 0;
    double rootT = 0;  // sqrt(Tz_i Tz_j)
    double meanV = 0;  // ((rhoz_i^(-1/3) + rhoz_j^(-1/3)) / 2)^3
    double sumT = 0, sumV = 0;
};
ComponentArray<ComponentArray<PairMeans>> pairMeans{};

void renew(PairMeans& m, int i, int j) {
    const FluidConstants& c = fluidConstants;
    m.Ti = c.TZ[i];
    m.Tj = c.TZ[j];
    m.ri = c.RHOZ[i];
    m.rj = c.RHOZ[j];
    m.rootT = std::sqrt(m.Ti * m.Tj);
    const double side = std::cbrt(1.0 / m.ri) + std::cbrt(1.0 / m.rj);
    m.meanV = side * side * side / 8.0;
    m.sumT = m.Ti + m.Tj;
    m.sumV = 1.0 / m.ri + 1.0 / m.rj;
}

inline const PairMeans& meansOf(int i, int j) {
    PairMeans& m = pairMeans[i][j];
    const FluidConstants& c = fluidConstants;
    if (m.Ti != c.TZ[i] || m.Tj != c.TZ[j] || m.ri != c.RHOZ[i] || m.rj != c.RHOZ[j]) renew(m, i, j);
    return m;
}

// The function x_i x_j (x_i + x_j) / (b_i x_i + b_j x_j) of the KW rule.
struct KwShape {
    double bi, bj;
    double value(double xi, double xj) const { return xi * xj * (xi + xj) / (bi * xi + bj * xj); }
};
KwShape shapeT(const MixingPair& p) {
    return {p.FMIX[1] * p.FMIX[1], p.FMIX2[1] * p.FMIX2[1]};
}
KwShape shapeV(const MixingPair& p) {
    return {p.FMIX[3] * p.FMIX[3], p.FMIX2[3] * p.FMIX2[3]};
}
double crossT(const MixingPair& p, const PairMeans& m) {
    return 2.0 * p.FMIX[1] * p.FMIX2[1] * p.FMIX[2] * m.rootT;
}
double crossV(const MixingPair& p, const PairMeans& m) {
    return 2.0 * p.FMIX[3] * p.FMIX2[3] * p.FMIX[4] * m.meanV;
}

bool cubicSelected() {
    return begins(modelTags.HEOS, 'P', 'R');
}

// Adds the terms of one pair, i < j; false for a tag of no rule.
bool addPair(const MixingPair& p, int i, int j, bool cubic, const Composition& x, double& T, double& V) {
    const double xi = x[i], xj = x[j], a = xi * xj;
    const PairMeans& m = meansOf(i, j);
    const Text3& tag = p.HMODMX;
    if (isKW(tag) && !cubic) {
        T += crossT(p, m) * shapeT(p).value(xi, xj) - a * m.sumT;
        V += crossV(p, m) * shapeV(p).value(xi, xj) - a * m.sumV;
    } else if (isLJ(tag) && !cubic) {
        const bool plain = p.FMIX[4] == 1.0 && p.FMIX[5] == 1.0;
        T += p.FMIX[1] * (plain ? a : std::pow(xi, p.FMIX[4]) * std::pow(xj, p.FMIX[5]));
        V += p.FMIX[2] * a;
    } else if (isTR1(tag) && !cubic) {
        const double xa = x[mixingParameters.AMMONIAWATER == 2 ? 2 : 1];
        T += xa * (1.0 - std::pow(xa, p.FMIX[3])) * p.FMIX[1] * m.sumT - a * m.sumT;
        V += xa * (1.0 - std::pow(xa, p.FMIX[4])) * p.FMIX[2] * m.sumV - a * m.sumV;
    } else if (isLIN(tag)) {
        T += a * (p.FMIX[1] - 1.0) * m.sumT;
        V += a * (p.FMIX[2] - 1.0) * m.sumV;
    } else if (isLM(tag)) {
        T += std::pow(xi, p.FMIX[4]) * std::pow(xj, p.FMIX[5]) * (p.FMIX[1] - 1.0) * m.sumT;
        V += a * (p.FMIX[2] - 1.0) * m.sumV;
    } else {
        return false;
    }
    return true;
}

void ruleNotFound(int& ierr, Text255& herr) {
    ierr = 190;
    message(herr, "[RDXHMX error 190] Mixing rule not found for i,j", nullCharacter);
    ERRMSG(ierr, herr);
}
void noDerivative(int& ierr, Text255& herr) {
    ierr = 191;
    message(herr, "[RDXHMX error 191] Derivative not available", nullCharacter);
    ERRMSG(ierr, herr);
}

// Values by each pair's own rule.
void reducingValues(const Composition& x, double& T, double& V, int& ierr, Text255& herr) {
    const int nc = modelTags.NC;
    const bool cubic = cubicSelected();
    const FluidConstants& c = fluidConstants;
    T = V = 0.0;
    for (int i = 1; i <= nc; ++i) {
        if (x[i] <= 0.0) continue;
        T += x[i] * c.TZ[i];
        V += x[i] / c.RHOZ[i];
    }
    for (int i = 1; i < nc; ++i) {
        if (x[i] <= 0.0) continue;
        for (int j = i + 1; j <= nc; ++j) {
            if (x[j] <= 0.0) continue;
            if (!addPair(mixingParameters.pair[i][j], i, j, cubic, x, T, V)) return ruleNotFound(ierr, herr);
        }
    }
}

// Values by the rule of the pair (1, 2) for all pairs.
void reducingValuesByOneRule(const Composition& x, double& T, double& V, int& ierr, Text255& herr) {
    const int nc = modelTags.NC;
    const FluidConstants& c = fluidConstants;
    T = V = 0.0;
    const Text3& tag = mixingParameters.pair[1][2].HMODMX;
    if (cubicSelected() || (!isKW(tag) && !isLJ(tag))) return ruleNotFound(ierr, herr);
    const bool kw = isKW(tag);
    for (int i = 1; i <= nc; ++i) {
        if (x[i] <= 0.0) continue;
        const double weight = kw ? x[i] * x[i] : x[i];
        T += weight * c.TZ[i];
        V += weight / c.RHOZ[i];
        for (int j = i + 1; j <= nc; ++j) {
            if (x[j] <= 0.0) continue;
            const MixingPair& p = mixingParameters.pair[i][j];
            const PairMeans& m = meansOf(i, j);
            if (kw) {
                T += crossT(p, m) * shapeT(p).value(x[i], x[j]);
                V += crossV(p, m) * shapeV(p).value(x[i], x[j]);
            } else {
                T += p.FMIX[1] * std::pow(x[i], p.FMIX[4]) * std::pow(x[j], p.FMIX[5]);
                V += p.FMIX[2] * x[i] * x[j];
            }
        }
    }
}

// The cross terms of a pair in the form c x_i x_j (x_i + x_j) / (b_i x_i + b_j x_j), to which its linear terms are not
// added; false for a rule without this form.
struct CrossTerm {
    double c;
    KwShape shape;
};
bool crossTerms(const MixingPair& p, const PairMeans& m, CrossTerm& T, CrossTerm& V) {
    if (isKW(p.HMODMX)) {
        T = {crossT(p, m), shapeT(p)};
        V = {crossV(p, m), shapeV(p)};
        return true;
    }
    // With powers of one the LJ rule is the KW rule with both beta equal to one.
    if (isLJ(p.HMODMX) && p.FMIX[4] == 1.0 && p.FMIX[5] == 1.0) {
        T = {p.FMIX[1] + m.sumT, {1.0, 1.0}};
        V = {p.FMIX[2] + m.sumV, {1.0, 1.0}};
        return true;
    }
    return false;
}

struct ShapeDerivatives {
    double h, hi, hj, hii, hjj, hij;
};
// N = x_i x_j (x_i + x_j), n = b_i x_i + b_j x_j, h = N / n; n is not zero where one of the fractions is not
ShapeDerivatives derivativesOf(const KwShape& s, double xi, double xj) {
    const double n = s.bi * xi + s.bj * xj;
    ShapeDerivatives d;
    d.h = xi * xj * (xi + xj) / n;
    d.hi = (2.0 * xi * xj + xj * xj - d.h * s.bi) / n;
    d.hj = (2.0 * xi * xj + xi * xi - d.h * s.bj) / n;
    d.hii = 2.0 * (xj - d.hi * s.bi) / n;
    d.hjj = 2.0 * (xi - d.hj * s.bj) / n;
    d.hij = (2.0 * (xi + xj) - d.hi * s.bj - d.hj * s.bi) / n;
    return d;
}

}  // namespace

void reducingDerivatives(int order, const Composition& x, ReducingDerivatives& r, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    const int nc = modelTags.NC;
    const FluidConstants& constants = fluidConstants;
    r.Tr = r.vr = 0.0;
    for (int i = 1; i <= nc; ++i) {
        const double Tz = constants.TZ[i], vz = 1.0 / constants.RHOZ[i];
        r.Tr += x[i] * x[i] * Tz;
        r.vr += x[i] * x[i] * vz;
        r.dT[i] = 2.0 * x[i] * Tz;
        r.dV[i] = 2.0 * x[i] * vz;
        if (order < 2) continue;
        for (int j = 1; j <= nc; ++j) r.d2T[i][j] = r.d2V[i][j] = 0.0;
        r.d2T[i][i] = 2.0 * Tz;
        r.d2V[i][i] = 2.0 * vz;
    }
    if (cubicSelected()) return noDerivative(ierr, herr);
    for (int i = 1; i < nc; ++i)
        for (int j = i + 1; j <= nc; ++j) {
            if (x[i] <= 0.0 && x[j] <= 0.0) continue;
            CrossTerm T, V;
            if (!crossTerms(mixingParameters.pair[i][j], meansOf(i, j), T, V)) return noDerivative(ierr, herr);
            const ShapeDerivatives t = derivativesOf(T.shape, x[i], x[j]), v = derivativesOf(V.shape, x[i], x[j]);
            r.Tr += T.c * t.h;
            r.vr += V.c * v.h;
            r.dT[i] += T.c * t.hi;
            r.dT[j] += T.c * t.hj;
            r.dV[i] += V.c * v.hi;
            r.dV[j] += V.c * v.hj;
            if (order < 2) continue;
            r.d2T[i][i] += T.c * t.hii;
            r.d2T[j][j] += T.c * t.hjj;
            r.d2T[i][j] = r.d2T[j][i] = T.c * t.hij;
            r.d2V[i][i] += V.c * v.hii;
            r.d2V[j][j] += V.c * v.hjj;
            r.d2V[i][j] = r.d2V[j][i] = V.c * v.hij;
        }
}

void RDXHMX(int ix, int icmp, int icmp2, const Composition& x, double& Tr, double& Dr, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    if (ix == 0 || ix == -1) {
        double T, V;
        if (ix == 0)
            reducingValues(x, T, V, ierr, herr);
        else
            reducingValuesByOneRule(x, T, V, ierr, herr);
        constexpr double smallest = 5e-13;
        Tr = std::fabs(T) <= smallest ? 100.0 : T;
        Dr = std::fabs(V) <= smallest ? 10.0 : 1.0 / V;
        return;
    }
    Tr = Dr = 0.0;
    const bool known = ix == 1 || ix == 2 || ix == 11;
    const int nc = modelTags.NC;
    const bool inRange = icmp >= 1 && icmp <= nc && (ix != 11 || (icmp2 >= 1 && icmp2 <= nc));
    if (!known || !inRange) return noDerivative(ierr, herr);
    ReducingDerivatives r;
    reducingDerivatives(ix == 1 ? 1 : 2, x, r, ierr, herr);
    if (ierr != 0) return;
    const int second = ix == 11 ? icmp2 : icmp;
    Tr = ix == 1 ? r.dT[icmp] : r.d2T[icmp][second];
    Dr = ix == 1 ? r.dV[icmp] : r.d2V[icmp][second];
}

namespace {

// The values of the last two compositions. The properties of a state are asked for one after the other, and an
// equilibrium goes to and fro between its phases. Written by REDHMX, cleared by forgetReducingValues.
struct KnownReducing {
    int count = 0;  // components; 0 where nothing is known
    bool cubic = false;
    Composition x{};
    double Tr = 0.0, Dr = 0.0;
};
KnownReducing knownReducing[2];
int lastReducing = 0;

bool knows(const KnownReducing& known, bool cubic, const Composition& x) {
    if (known.count != modelTags.NC || known.cubic != cubic) return false;
    for (int i = 1; i <= known.count; ++i)
        if (known.x[i] != x[i]) return false;
    return true;
}

}  // namespace

void forgetReducingValues() {
    for (KnownReducing& known : knownReducing) known.count = 0;
}

void REDHMX(const Composition& x, double& Tr, double& Dr) {
    const bool cubic = cubicSelected();
    if (!knows(knownReducing[lastReducing], cubic, x)) {
        lastReducing = 1 - lastReducing;
        KnownReducing& known = knownReducing[lastReducing];
        if (!knows(known, cubic, x)) {
            int ierr = 0;
            Text255 herr;
            RDXHMX(0, 0, 0, x, known.Tr, known.Dr, ierr, herr);
            known.count = ierr == 0 ? modelTags.NC : 0;
            known.cubic = cubic;
            known.x = x;
        }
    }
    Tr = knownReducing[lastReducing].Tr;
    Dr = knownReducing[lastReducing].Dr;
}

// ---- departure functions ---------------------------------------------------------------------------------------

namespace {

constexpr double smallestDensity = 1e-10;
constexpr double sameState = 1e-12;
constexpr double noModelNumber = 1e20;
constexpr double smallestTerm = 1e-20;  // below it a quotient by the term is not formed

// The departure function of a pair.
struct Departure {
    int number;  // by the code of the tag's third character: LJ0 is 1, KW0 is 11, LM0 is 21; 0 for another rule
    double F;    // its strength

    explicit Departure(const MixingPair& p) : number(0), F(p.FMIX[3]) {
        const Text3& tag = p.HMODMX;
        const int digit = static_cast<unsigned char>(tag[3]);
        if (isKW(tag)) {
            number = digit - 37;
            F = p.FMIX[5];
        } else if (isLJ(tag)) {
            number = digit - 47;
        } else if (isLM(tag)) {
            number = digit - 27;
        }
    }
    bool known() const { return number >= 0 && number <= largestModelNumber; }
};

// del^l, by products for the small whole numbers that the published functions have.
double lengthPower(double del, double l) {
    if (l == 1.0) return del;
    if (l == 2.0) return del * del;
    if (l == 3.0) return del * del * del;
    return std::fabs(l) > 1e-20 ? std::pow(del, l) : 0.0;
}

constexpr int place(int itau, int idel) {
    return 4 * itau + idel + 1;
}
constexpr std::uint32_t flag(int itau, int idel) {
    return std::uint32_t{1} << place(itau, idel);
}

// Terms at a new state; their sum is order (0, 0).
FRIGANA_WIDE_LOOPS void evaluateTerms(const MixingPair& p, double tau, double del, DepartureCache& c) {
    c.TAUSVH = tau;
    c.DELSVH = del;
    const double lnTau = sharedLogTau.of(tau), lnDel = sharedLogDel.of(del);
    double exponent[largestMixTerms], exponential[largestMixTerms];
    const auto bounded = [](double e) {
        constexpr double limit = 700.0;
        return e > limit ? limit : e < -limit ? -limit : e;
    };
    for (int k = 1; k <= p.NAMIX; ++k) {
        const Array1<double, 7>& A = p.AMIX[k];
        c.DELLIH[k] = lengthPower(del, A[4]);
        exponent[k - 1] = bounded(A[2] * lnTau + A[3] * lnDel - c.DELLIH[k]);
    }
    for (int k = p.NAMIX + 1; k <= p.NAMIX + p.NAMIX2; ++k) {
        const Array1<double, 7>& A = p.AMIX[k];
        const double distance = del - A[5];
        const double e = A[4] * distance * distance, g = A[6] * (del - A[7]);
        exponent[k - 1] = bounded(A[2] * lnTau + A[3] * lnDel - e - g);
    }
    exponentials(exponent, exponential, p.NAMIX + p.NAMIX2);
    double sum = 0.0;
    for (int k = 1; k <= p.NAMIX + p.NAMIX2; ++k) {
        c.PHISVH[k] = p.AMIX[k][1] * exponential[k - 1];
        sum += c.PHISVH[k];
    }
    c.DRVSVH[place(0, 0)] = sum;
    c.DRVFLH = flag(0, 0);
}

// A polynomial-block term's derivative in del: P with d and D = l del^l.
double polynomialInDel(int idel, double P, double d, double l, double D) {
    switch (idel) {
        case 0:
            return P;
        case 1:
            return P * (d - D);
        case 2:
            return P * (d * d - d - D * (2.0 * d + l - 1.0 - D));
        default:
            return P * (2.0 * d - 3.0 * d * d + d * d * d +
                        D * (3.0 * l - 2.0 - l * l + 6.0 * d - 3.0 * d * l - 3.0 * d * d +
                             D * (3.0 * l - 3.0 + 3.0 * d - D)));
    }
}

// The same of a term of the exponential block; its third derivative is left out.
double exponentialInDel(int idel, double P, double del, const Array1<double, 7>& A) {
    const double d = A[3], eta = A[4], distance = del - A[5], beta = A[6];
    switch (idel) {
        case 0:
            return P;
        case 1:
            return P * (d - 2.0 * del * eta * distance - del * beta);
        case 2: {
            const double u = d / del - 2.0 * eta * distance - beta;
            return P * (del * del * u * u - d - 2.0 * eta * del * del);
        }
        default:
            return 0.0;
    }
}

double inTau(int itau, double t) {
    switch (itau) {
        case 0:
            return 1.0;
        case 1:
            return t;
        case 2:
            return t * (t - 1.0);
        default:
            return t * (t - 1.0) * (t - 2.0);
    }
}

// Sums of the terms' derivatives of several orders in one pass.
template <int... itau, int... idel>
void sumOrders(const MixingPair& p, double del, DepartureCache& c, std::integer_sequence<int, itau...>,
               std::integer_sequence<int, idel...>) {
    constexpr int count = sizeof...(itau);
    double sum[count] = {};
    const auto add = [&](double P, double t, const auto& derivative) {
        const auto counts = [P](int tauOrder, int delOrder) {
            return tauOrder != 1 || delOrder != 1 || std::fabs(P) > smallestTerm;
        };
        int n = 0;
        ((sum[n++] += counts(itau, idel) ? inTau(itau, t) * derivative(idel) : 0.0), ...);
    };
    for (int k = 1; k <= p.NAMIX; ++k) {
        const Array1<double, 7>& A = p.AMIX[k];
        const double P = c.PHISVH[k], D = A[4] * c.DELLIH[k];
        add(P, A[2], [&](int order) { return polynomialInDel(order, P, A[3], A[4], D); });
    }
    for (int k = p.NAMIX + 1; k <= p.NAMIX + p.NAMIX2; ++k) {
        const Array1<double, 7>& A = p.AMIX[k];
        const double P = c.PHISVH[k];
        add(P, A[2], [&](int order) { return exponentialInDel(order, P, del, A); });
    }
    int n = 0;
    ((c.DRVSVH[place(itau, idel)] = sum[n++]), ...);
    c.DRVFLH |= (flag(itau, idel) | ...);
}
template <int... orders>
using Orders = std::integer_sequence<int, orders...>;

// Brings the derivative of the wanted orders up to date, and with it those that are asked for at the same states.
void derive(const MixingPair& p, int itau, int idel, double del, DepartureCache& c) {
    if (itau == 0)
        sumOrders(p, del, c, Orders<0, 0, 0>{}, Orders<1, 2, 3>{});
    else if (itau + idel <= 2)
        sumOrders(p, del, c, Orders<1, 2, 1>{}, Orders<0, 0, 1>{});
    else if (itau <= 2 && idel <= 2)
        sumOrders(p, del, c, Orders<1, 2, 2>{}, Orders<2, 1, 2>{});
    else
        sumOrders(p, del, c, Orders<1, 2, 3, 3, 3, 3>{}, Orders<3, 3, 0, 1, 2, 3>{});
}

// The cache of model number n, at this state.
inline DepartureCache& cacheAt(const MixingPair& p, int n, double tau, double del) {
    DepartureCache& c = departureCache[n];
    if (std::fabs(tau - c.TAUSVH) >= sameState || std::fabs(del - c.DELSVH) >= sameState) evaluateTerms(p, tau, del, c);
    return c;
}
inline double derivativeOf(const MixingPair& p, int itau, int idel, double del, DepartureCache& c) {
    if ((c.DRVFLH & flag(itau, idel)) == 0) derive(p, itau, idel, del, c);
    return c.DRVSVH[place(itau, idel)];
}

// Ammonia-water: terms 1 to 6 of weight one, 7 to 13 of weight x_a, 14 of weight x_a^2.
double departureTR1(const MixingPair& p, int itau, int idel, double tau, double del, const Composition& x) {
    const double xa = x[mixingParameters.AMMONIAWATER == 2 ? 2 : 1];
    const double lnTau = std::log(tau), lnDel = std::log(del);
    double sum = 0.0;
    for (int k = 1; k <= 14; ++k) {
        const Array1<double, 7>& A = p.AMIX[k];
        const int l = static_cast<int>(A[4]);
        const double power = l > 0 ? std::pow(del, l) : 0.0;
        const double weight = k < 7 ? 1.0 : k < 14 ? xa : xa * xa;
        const double P = weight * A[1] * std::exp(A[2] * lnTau + A[3] * lnDel - power);
        sum += inTau(itau, A[2]) * polynomialInDel(idel, P, A[3], l, l * power);
    }
    return xa * (1.0 - std::pow(xa, p.FMIX[5])) * sum;
}

bool orderInRange(int itau, int idel) {
    return itau >= 0 && itau <= 3 && idel >= 0 && idel <= 3;
}

}  // namespace

bool departuresOfPair(int i, int j, std::span<const DepartureOrder> orders, double tau, double del, double* values) {
    const MixingPair& p = mixingParameters.pair[i][j];
    const Departure d(p);
    if (del <= smallestDensity || tau <= 0.0 || i == j || d.number == 0) return false;
    if (!d.known()) {
        for (std::size_t o = 0; o < orders.size(); ++o) values[o] = noModelNumber;
        return true;
    }
    DepartureCache& c = cacheAt(p, d.number, tau, del);
    for (std::size_t o = 0; o < orders.size(); ++o)
        values[o] = d.F * derivativeOf(p, orders[o].itau, orders[o].idel, del, c);
    return true;
}

namespace {

// PHIMIX of a state and orders that have been looked at.
inline double departureTerm(int i, int j, int itau, int idel, double tau, double del, const Composition& x) {
    const MixingPair& p = mixingParameters.pair[i][j];
    const Departure d(p);
    if (d.number == 0) return isTR1(p.HMODMX) ? departureTR1(p, itau, idel, tau, del, x) : 0.0;
    if (!d.known()) return noModelNumber;
    return x[i] * x[j] * d.F * derivativeOf(p, itau, idel, del, cacheAt(p, d.number, tau, del));
}

}  // namespace

double PHIMIX(int i, int j, int itau, int idel, double tau, double del, const Composition& x) {
    if (del <= smallestDensity || tau <= 0.0 || i == j || !orderInRange(itau, idel)) return 0.0;
    return departureTerm(i, j, itau, idel, tau, del, x);
}

double sumOfDepartures(int itau, int idel, double tau, double del, const Composition& x, double smallestFraction) {
    if (del <= smallestDensity || tau <= 0.0 || !orderInRange(itau, idel)) return 0.0;
    double sum = 0.0;
    for (int i = 1; i < modelTags.NC; ++i) {
        if (!(x[i] > smallestFraction)) continue;
        for (int j = i + 1; j <= modelTags.NC; ++j)
            if (x[j] > smallestFraction) sum += departureTerm(i, j, itau, idel, tau, del, x);
    }
    return sum;
}

}  // namespace frigana
