// Critical point of a mixture.
#include <algorithm>
#include <cmath>

#include "CORE_PR.h"
#include "CriticalPoint.h"
#include "FluidFiles.h"
#include "Message.h"
#include "PHIDERV.h"
#include "PROP_SUB.h"
#include "SAT_SUB_NEWTON.h"
#include "SaturationSpline.h"
#include "SilentMessages.h"
#include "TPRHO.h"
#include "UTILITY.h"
#include "UTILITY_NUMERICS.h"

namespace frigana {

namespace {

// ln f/x of the composition z at T and p with its derivatives.
struct FugacityState {
    Composition philn{}, inT{}, inP{};
    double rho = 0.0;

    void at(const Composition& z, double T, double p, int& ierr, Text255& herr) {
        int phase = 1;
        double dpdt, dpdd, dddt, cp;
        LGPHI(2, phase, T, rho, p, z, philn, dpdt, dpdd, dddt, cp, ierr, herr);
        if (ierr > 0) return;
        inT = compositionDerivatives.DPHIDT;
        inP = compositionDerivatives.DPHIDP;
    }
};

// Sums along the eigenvector, of a composition a small step away against that of the feed.
struct DirectionSums {
    double DFDS, DFT2, DFP2;
};
DirectionSums sumsAlong(double signedStep, const Composition& z, const Composition& root, const Composition& e,
                        const FugacityState& feed, double T, double p, int& ierr, Text255& herr) {
    const int nc = modelTags.NC;
    Composition moved{};
    double sum = 0.0;
    for (int i = 1; i <= nc; ++i) {
        moved[i] = std::fabs(z[i] + signedStep * e[i] * root[i]);
        sum += moved[i];
    }
    if (sum > 1e-10)
        for (int i = 1; i <= nc; ++i) moved[i] /= sum;
    FugacityState state;
    state.rho = feed.rho;
    DirectionSums d{};
    state.at(moved, T, p, ierr, herr);
    if (ierr > 0) return d;
    for (int i = 1; i <= nc; ++i) {
        if (z[i] <= 0.0) continue;
        const double weight = root[i] * e[i];
        d.DFDS += weight * (std::log(moved[i] / z[i]) + state.philn[i] - feed.philn[i]);
        d.DFT2 += weight * (state.inT[i] - feed.inT[i]);
        d.DFP2 += weight * (state.inP[i] - feed.inP[i]);
    }
    return d;
}

// The components of the feed, and the roots of their fractions.
struct Feed {
    const Composition& z;
    int active = 0;
    Array1<int, ncmax> member;
    Composition root{};

    explicit Feed(const Composition& fractions) : z(fractions) {
        for (int i = 1; i <= modelTags.NC; ++i) {
            if (z[i] <= 0.0) continue;
            member[++active] = i;
            root[i] = std::sqrt(z[i]);
        }
    }
    // The matrix sqrt(z_i z_j) d(i)/dn(j) + unit matrix.
    void stabilityMatrix(const CompositionDerivatives::Matrix& derivative, SquareMatrix<ncmax>& Q) const {
        for (int i = 1; i <= active; ++i)
            for (int j = 1; j <= active; ++j) {
                const int a = member[i], b = member[j];
                Q[i][j] = root[a] * root[b] * derivative[b][a] + (i == j ? 1.0 : 0.0);
            }
    }
    void byComponents(const Array1<double, ncmax>& vector, Composition& e) const {
        e.fill(0.0);
        for (int i = 1; i <= active; ++i) e[member[i]] = vector[i];
    }
};

// Newton's method in temperature and pressure, with steps s along the eigenvector that grow tenfold where it fails.
bool solveInPressure(const Feed& feed, double& tc, double& pc, double& rhoc, int& ierr, Text255& herr) {
    const Composition& z = feed.z;
    for (double s = 0.0001;; s *= 10.0) {
        double tolerance = 1e-8, lambda = 0.0, C = 0.0;
        FugacityState state;
        bool astray = false;
        for (int pass = 1; !astray; ++pass) {
            state.at(z, tc, pc, ierr, herr);
            if (ierr > 0) break;
            rhoc = state.rho;
            if (pass > 1 && std::fabs(0.5 * lambda) + std::fabs(C) < tolerance) return true;
            Composition e;
            static SquareMatrix<ncmax> Q;
            feed.stabilityMatrix(compositionDerivatives.DPHIDNJ, Q);
            Array1<double, ncmax> vector{};
            int code = 0;
            Text255 text;
            MINEIGEN(feed.active, Q, lambda, vector, code, text);
            feed.byComponents(vector, e);
            if (pass == 10) tolerance *= 100.0;
            const DirectionSums plus = sumsAlong(s, z, feed.root, e, state, tc, pc, ierr, herr);
            if (ierr > 0) break;
            const DirectionSums minus = sumsAlong(-s, z, feed.root, e, state, tc, pc, ierr, herr);
            if (ierr > 0) break;
            const double sixth = 1.0 / (6.0 * s * s), quarter = 1.0 / (4.0 * s);
            C = (plus.DFDS + minus.DFDS) * sixth;
            const double Ap = (plus.DFP2 - minus.DFP2) * quarter, At = (plus.DFT2 - minus.DFT2) * quarter;
            const double Bp = (plus.DFP2 + minus.DFP2) * sixth, Bt = (plus.DFT2 + minus.DFT2) * sixth;
            const double determinant = Ap * Bt - At * Bp;
            if (!(std::fabs(determinant) >= 1e-20)) {
                ierr = 1;
                message(herr, "dp, dt -> infinity. Provide better p, t guess values", nullCharacter);
                return false;
            }
            // A_p dp + A_T dT = -lambda/2, B_p dp + B_T dT = -C
            double dp = (C * At - 0.5 * lambda * Bt) / determinant, dT = (Bp * 0.5 * lambda - C * Ap) / determinant;
            for (int k = 1; k <= 25 && (std::fabs(dT) > 2.0 || std::fabs(dp) > 1000.0); ++k) {
                dT /= 10.0;
                dp /= 2.0;
            }
            tc += dT;
            pc += dp;
            astray = pass >= 20 || !(tc > 0.0) || !(pc > 0.0) || pc > 100000.0 || tc > 1000.0;
        }
        if (!(s < 0.099)) break;
        int code = 0;
        Text255 text;
        double Dc;
        CRITP(z, tc, pc, Dc, code, text);
    }
    ierr = 1;
    message(herr, "No convergence. Provide better p, t guess values", nullCharacter);
    return false;
}

// ---- search in temperature and density ---------------------------------------------------------------------------
// At constant volume the criterion stays smooth where the isotherm is flat, as near an azeotrope.

// ln(f/n) at constant temperature and volume after amounts changed along the eigenvector.
bool fugacitiesAfter(double signedStep, const Feed& feed, const Composition& e, double T, double rho,
                     Composition& lnf) {
    Composition moved{}, dalpha, dnalpha;
    double sum = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        moved[i] = std::fabs(feed.z[i] + signedStep * e[i] * feed.root[i]);
        sum += moved[i];
    }
    Composition fractions{};
    for (int i = 1; i <= modelTags.NC; ++i) fractions[i] = moved[i] / sum;
    int code = 0;
    Text255 text;
    PHIDERV(1, T, rho * sum, fractions, dalpha, dnalpha, code, text);
    if (code > 0) return false;
    for (int k = 1; k <= feed.active; ++k) {
        const int i = feed.member[k];
        lnf[i] = std::log(moved[i] / feed.z[i]) + dnalpha[i];
    }
    return true;
}

// The lowest eigenvalue of a symmetric matrix, by its sign, and the eigenvector, by Jacobi's rotations.
double lowestEigenvalue(int n, SquareMatrix<ncmax>& A, Array1<double, ncmax>& vector) {
    static SquareMatrix<ncmax> V;
    for (int i = 1; i <= n; ++i)
        for (int j = 1; j <= n; ++j) V[i][j] = i == j ? 1.0 : 0.0;
    for (int sweep = 1; sweep <= 50; ++sweep) {
        double off = 0.0, size = 0.0;
        for (int i = 1; i <= n; ++i) {
            size += A[i][i] * A[i][i];
            for (int j = i + 1; j <= n; ++j) off += A[i][j] * A[i][j];
        }
        if (!(off > 1e-30 * size)) break;
        for (int p = 1; p < n; ++p)
            for (int q = p + 1; q <= n; ++q) {
                if (A[p][q] == 0.0) continue;
                const double theta = 0.5 * (A[q][q] - A[p][p]) / A[p][q];
                const double t = (theta < 0.0 ? -1.0 : 1.0) / (std::fabs(theta) + std::sqrt(theta * theta + 1.0));
                const double c = 1.0 / std::sqrt(t * t + 1.0), s = t * c;
                for (int k = 1; k <= n; ++k) {
                    const double kp = A[k][p], kq = A[k][q];
                    A[k][p] = c * kp - s * kq;
                    A[k][q] = s * kp + c * kq;
                }
                for (int k = 1; k <= n; ++k) {
                    const double pk = A[p][k], qk = A[q][k], vp = V[k][p], vq = V[k][q];
                    A[p][k] = c * pk - s * qk;
                    A[q][k] = s * pk + c * qk;
                    V[k][p] = c * vp - s * vq;
                    V[k][q] = s * vp + c * vq;
                }
            }
    }
    int lowest = 1;
    for (int i = 2; i <= n; ++i)
        if (A[i][i] < A[lowest][lowest]) lowest = i;
    for (int i = 1; i <= n; ++i) vector[i] = V[i][lowest];
    return A[lowest][lowest];
}

struct Stability {
    bool known = false;
    double lambda = 0.0;
    Composition e{};
};
Stability stabilityAt(const Feed& feed, double T, double rho) {
    Stability s;
    Composition dalpha, dnalpha;
    int code = 0;
    Text255 text;
    PHIDERV(2, T, rho, feed.z, dalpha, dnalpha, code, text);
    if (code > 0) return s;
    static SquareMatrix<ncmax> Q;
    feed.stabilityMatrix(compositionDerivatives.D2ADNN, Q);
    // symmetric but for the small differences of the components' gas constants
    for (int i = 1; i <= feed.active; ++i)
        for (int j = i + 1; j <= feed.active; ++j) Q[i][j] = Q[j][i] = 0.5 * (Q[i][j] + Q[j][i]);
    Array1<double, ncmax> vector{};
    s.lambda = lowestEigenvalue(feed.active, Q, vector);
    feed.byComponents(vector, s.e);
    s.known = std::isfinite(s.lambda);
    return s;
}

// Highest temperature near a start at which the mixture of a density loses its stability; false if there is none.
bool limitOfStability(const Feed& feed, double rho, double& T, Stability& s) {
    // small steps: with some equations of state the instability is a narrow band
    constexpr double span = 1.003;
    double high = 1.06 * T;
    s = stabilityAt(feed, high, rho);
    for (int k = 1; k <= 30 && s.known && s.lambda < 0.0; ++k) s = stabilityAt(feed, high *= span, rho);
    if (!s.known || s.lambda < 0.0) return false;
    double low = high, fHigh = s.lambda, fLow = s.lambda;
    for (int k = 1; k <= 60 && fLow > 0.0; ++k) {
        high = low;
        fHigh = fLow;
        low /= span;
        s = stabilityAt(feed, low, rho);
        if (!s.known) return false;
        fLow = s.lambda;
    }
    if (fLow > 0.0) return false;
    for (int step = 1; step <= 60; ++step) {
        double middle = low - fLow * (high - low) / (fHigh - fLow);
        if (step % 3 == 0) middle = 0.5 * (low + high);
        s = stabilityAt(feed, middle, rho);
        if (!s.known) return false;
        T = middle;
        if (std::fabs(s.lambda) < 1e-13 || high - low < 1e-11 * high) return true;
        (s.lambda < 0.0 ? low : high) = middle;
        (s.lambda < 0.0 ? fLow : fHigh) = s.lambda;
    }
    return true;
}

// Cubic form along the eigenvector; false where it is not known.
bool cubicForm(const Feed& feed, double T, double rho, const Stability& s, double& C) {
    constexpr double step = 0.001;
    Composition plus{}, minus{}, middle{};
    if (!fugacitiesAfter(step, feed, s.e, T, rho, plus) || !fugacitiesAfter(-step, feed, s.e, T, rho, minus) ||
        !fugacitiesAfter(0.0, feed, s.e, T, rho, middle))
        return false;
    // the sign of an eigenvector is free: the volume must shrink along it
    double direction = 0.0;
    C = 0.0;
    for (int k = 1; k <= feed.active; ++k) {
        const int i = feed.member[k];
        const double weight = feed.root[i] * s.e[i];
        C += weight * (plus[i] + minus[i] - 2.0 * middle[i]) / (step * step);
        direction += weight;
    }
    if (direction < 0.0) C = -C;
    return std::isfinite(C);
}

bool solveInDensity(const Feed& feed, double Tstart, double rhoStart, double& T, double& rho) {
    // From thin to dense the cubic form changes its sign at the critical density. Some equations of state have further
    // changes inside the unstable region: the highest temperature is the critical point.
    constexpr int points = 24;
    double before = 0.0, rhoBefore = 0.0, best = 0.0;
    bool known = false, found = false;
    double low = 0.0, high = 0.0, fLow = 0.0;
    for (int k = 0; k <= points; ++k) {
        const double at = rhoStart * (0.6 + k * 0.9 / points);
        double temperature = Tstart, C = 0.0;
        Stability s;
        const bool here = limitOfStability(feed, at, temperature, s) && cubicForm(feed, temperature, at, s, C);
        if (here && known && (before < 0.0) != (C < 0.0)) {
            if (temperature > best) {
                best = temperature;
                low = rhoBefore;
                high = at;
                fLow = before;
                found = true;
            }
        }
        known = here;
        before = C;
        rhoBefore = at;
    }
    if (!found) return false;
    for (int step = 1; step <= 50; ++step) {
        rho = 0.5 * (low + high);
        T = Tstart;
        double C = 0.0;
        Stability s;
        if (!limitOfStability(feed, rho, T, s) || !cubicForm(feed, T, rho, s, C)) return false;
        ((C < 0.0) == (fLow < 0.0) ? low : high) = rho;
        if (high - low < 1e-10 * rho) break;
    }
    return true;
}

}  // namespace

void CRTPNT(const Composition& z, double& tc, double& pc, double& rhoc, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    int icomp = 0;
    ISPURE(z, icomp);
    if (icomp > 0) {
        CRITP(z, tc, pc, rhoc, ierr, herr);
        return;
    }
    const Feed feed(z);
    const double Tstart = tc;
    bool found = solveInPressure(feed, tc, pc, rhoc, ierr, herr);
    if (!found && ierr != 191) {
        double Tc, Pc, Dc, T, rho;
        int code = 0;
        Text255 text;
        CRITP(z, Tc, Pc, Dc, code, text);
        found = solveInDensity(feed, Tstart, Dc, T, rho);
        if (found) {
            tc = T;
            rhoc = rho;
            PRESS(tc, rhoc, z, pc);
        }
    }
    if (found) {
        ierr = 0;
        herr.clear();
    } else {
        ERRMSG(ierr, herr);
    }
}

namespace {

// A critical point that CRTPNT has found, now or for the file of the mixture, by the components and the composition.
// Written by keep.
struct FoundPoint {
    int count = 0;
    ComponentArray<Text12> cas;
    Composition x{};
    double T = 0.0, p = 0.0, D = 0.0;
};
constexpr int mostFound = 32;
FoundPoint foundPoints[mostFound];
int nextFound = 0;

bool sameMixture(const FoundPoint& point, const Composition& z) {
    if (point.count != modelTags.NC) return false;
    for (int i = 1; i <= modelTags.NC; ++i)
        if (!(point.cas[i] == fluidFiles.HCAS[i]) || std::fabs(point.x[i] - z[i]) > 1e-12) return false;
    return true;
}

// Other files or mixing parameters have moved the limit of stability.
bool stillCritical(const FoundPoint& point, const Composition& z) {
    constexpr double closeTo = 1e-6;
    const Stability s = stabilityAt(Feed(z), point.T, point.D);
    double p = 0.0;
    PRESS(point.T, point.D, z, p);
    return s.known && std::fabs(s.lambda) < closeTo && std::fabs(p / point.p - 1.0) < closeTo;
}

const FoundPoint* foundBefore(const Composition& z) {
    for (const FoundPoint& point : foundPoints)
        if (sameMixture(point, z) && stillCritical(point, z)) return &point;
    return nullptr;
}

const FoundPoint* keep(const Composition& z, double T, double p, double D) {
    FoundPoint& point = foundPoints[nextFound];
    nextFound = (nextFound + 1) % mostFound;
    point.count = modelTags.NC;
    point.x = z;
    for (int i = 1; i <= modelTags.NC; ++i) point.cas[i] = fluidFiles.HCAS[i];
    point.T = T;
    point.p = p;
    point.D = D;
    return &point;
}

const FoundPoint* find(const Composition& z) {
    if (const FoundPoint* known = foundBefore(z)) return known;
    CriticalPoint point;
    int ierr = 0;
    Text255 herr;
    CRITP(z, point.T, point.p, point.D, ierr, herr);
    if (ierr > 0) return nullptr;
    CRTPNT(z, point.T, point.p, point.D, ierr, herr);
    if (ierr != 0 || !(point.T > 0.0 && point.p > 0.0 && point.D > 0.0)) return nullptr;
    return keep(z, point.T, point.p, point.D);
}

// A positive number to so many significant digits.
double rounded(double value, int digits) {
    const double unit = std::pow(10.0, digits - 1 - std::floor(std::log10(value)));
    return std::round(value * unit) / unit;
}

}  // namespace

void noteCriticalPoint(const Composition& z, double T, double p, double D) {
    if (!(T > 0.0 && p > 0.0 && D > 0.0)) return;
    for (const FoundPoint& point : foundPoints)
        if (point.T == T && sameMixture(point, z)) return;
    keep(z, T, p, D);
}

void adoptCriticalPoint(const Composition& z) {
    constexpr double closeInT = 0.3, closeInP = 0.01;  // [K], relative
    constexpr double plausible = 0.1;                  // of the temperature
    adoptedCriticalPoint.known = false;
    int icomp = 0;
    ISPURE(z, icomp);
    if (icomp > 0 || !(modelTags.HEOS == "HMX") || pengRobinsonSelected() || saturationSpline.SPLINEREADY) return;
    const SilentMessages quiet;
    double Tc = 0.0, Pc = 0.0, Dc = 0.0;
    int ierr = 0;
    Text255 herr;
    CRITP(z, Tc, Pc, Dc, ierr, herr);
    const FoundPoint* point = ierr > 0 ? nullptr : find(z);
    if (point == nullptr || std::fabs(point->T / Tc - 1.0) > plausible) return;
    if (std::fabs(point->T - Tc) < closeInT && std::fabs(point->p / Pc - 1.0) < closeInP) return;
    // the digits that the search supports, so that the order of the components and its start tell nothing
    constexpr int ofT = 9, ofP = 8, ofD = 7;
    adoptedCriticalPoint = {true, z, rounded(point->T, ofT), rounded(point->p, ofP), rounded(point->D, ofD)};
}

}  // namespace frigana
