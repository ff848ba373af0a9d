// Correlations of the conductivity of a single fluid (tag TC0). Rows are those of the conductivity section, numbered
// from 1.
#include <algorithm>
#include <cmath>

#include "DISPATCH.h"
#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "TPRHO.h"
#include "TRNSP.h"
#include "TRNS_TCX.h"
#include "TRNS_VIS.h"
#include "UTILITY.h"

namespace frigana {

// Ethylene.
//   Source    P. M. Holland, B. E. Eaton, H. J. M. Hanley, J. Phys. Chem. Ref. Data 12 (1983) 917
double TCXETY(int icomp, double T, double D) {
    constexpr double G[9] = {-290342.3528,  468062.4952,  -189547.83215, -4826.2235392, 22434.09372,
                             -6620.6354818, 899.37717078, -60.559143718, 1.6370306422};
    const double root = std::cbrt(T);
    double dilute = 0.0;
    for (int i = 8; i >= 0; --i) dilute = dilute * root + G[i];
    dilute /= T;  // the first power is -1

    double excess = 0.0;
    if (D > 0.0) {
        const double rho = D * fluidConstants.WMAS[icomp] / 1000.0;
        const double d = (rho - 0.221) / 0.221;
        excess = std::exp(-13.04503323 + 742.0521631 / T) *
                 (std::exp(std::pow(rho, 0.1) * (18.214616599 - 9903.022496 / (T * std::sqrt(T))) +
                           d * std::sqrt(rho) * (-0.30083271933 + 96.456068829 / T + 13502.56962 / (T * T))) -
                  1.0);
    }
    return (dilute + excess) / 1000.0;
}

// Trifluoromethane: rows of the background are the density of the hypothetical liquid, two of the dilute gas, two of
// the liquid, the activation energy and the largest enhancement.
//   Source    Z. Shan, S. G. Penoncello, R. T. Jacobsen, ASHRAE Trans. 106 (2000) 757
double TCXR23(int icomp, double T, double D) {
    const ConductivitySlot& s = conductivityTerms[icomp];
    const FromOne<TransportTerm> c{s.CTCX + s.NDGNUM + s.NDGDEN};
    if (s.NBKNUM < 7) return 0.0;
    constexpr double gasConstant = 8.31451;  // of the correlation
    const double gap = c[1].c - D;
    if (gap <= 0.0) return 0.0;  // the form ends at the density of the hypothetical liquid
    const double gas = c[2].c + c[3].c * T;
    const double liquid =
        c[5].c * c[1].c * c[1].c / gap * std::sqrt(T) * std::exp(D / gap * c[6].c / (gasConstant * T));
    // 4 / ((e^u + e^-u)(e^v + e^-v))
    const double critical = c[7].c / (std::cosh(D - s.DRDBKT) * std::cosh(std::clamp(T - s.TRDBKT, -500.0, 500.0)));
    return (std::pow(gap / c[1].c, c[4].c) * gas + std::pow(D / c[1].c, c[4].c) * liquid + critical) / 1000.0 *
           s.TCXBKT;
}

// Heavy water. Behind the NDGNUM rows of the dilute gas and the NBKNUM rows of the density polynomial stand, in the
// coefficients of ten rows: B0 (with its exponent Be in the second column), C1, C2, CT1, CT2, CR1, CR2, CR3, the
// density of the second peak, D1.
//   Source    N. Matsunaga, A. Nagashima, J. Phys. Chem. Ref. Data 12 (1983) 933; IAPWS R4-84(2007)
double TCXD2O(int icomp, double T, double D) {
    const ConductivitySlot& s = conductivityTerms[icomp];
    const int polynomial = s.NDGNUM + s.NDGDEN;
    if (polynomial + s.NBKNUM + 10 > largestConductivityTerms || s.TRDBKT == 0.0) return 0.0;
    const double tau = T / s.TRDBKT, del = D / s.DRDBKT;
    double value = 0.0;
    for (int k = 0; k < s.NDGNUM; ++k) value += s.CTCX[k].c * power(tau, s.CTCX[k].t);
    for (int k = polynomial; k < polynomial + s.NBKNUM; ++k) value += s.CTCX[k].c * power(del, s.CTCX[k].t);

    const FromOne<TransportTerm> e{s.CTCX + polynomial + s.NBKNUM};
    value += e[1].c * (1.0 - std::exp(e[1].t * del));
    const double t = tau / (std::fabs(tau - 1.1) + 1.1);
    const double f1 = std::exp(e[4].c * tau + e[5].c * tau * tau);
    const double f2 =
        std::exp(e[6].c * (del - 1.0) * (del - 1.0)) + e[7].c * std::exp(e[8].c * (del - e[9].c) * (del - e[9].c));
    const double f3 = 1.0 + std::exp(60.0 * (t - 1.0) + 20.0);
    const double f4 = 1.0 + std::exp(100.0 * (t - 1.0) + 15.0);
    value += e[2].c * f1 * f2 * (1.0 + f2 * f2 * (e[3].c * f1 * f1 * f1 * f1 / f3 + 3.5 * f2 / f4));
    value += e[10].c * std::pow(f1, 1.2) * (1.0 - std::exp(-std::pow(del / 2.5, 10.0)));
    return value * s.TCXBKT;
}

// Water: the factors of dilute gas and finite density, and in files up to version 8.1 the enhancement of the older
// formulation, whose slope and compressibility are those of reduced pressure, temperature and density. Newer files name
// TK3, which is TCCR_2010.
//   Source    IAPWS R15-11; for older files the IAPS release of 1985, J. Kestin et al., J. Phys. Chem. Ref. Data 13
//             (1984) 175
double TCXH2O(int icomp, double T, double D) {
    const ConductivitySlot& s = conductivityTerms[icomp];
    if (s.TRDBKT == 0.0) return 0.0;
    const auto notZero = [](double v) { return std::fabs(v) < 1e-12 ? 1e-12 : v; };
    const double tau = T / s.TRDBKT, del = D / s.DRDBKT;
    const double a = notZero(1.0 / tau - 1.0), b = notZero(del - 1.0);

    double sum = 0.0;
    for (int k = 0; k < s.NDGNUM; ++k) sum += s.CTCX[k].c / power(tau, s.CTCX[k].t);
    const double lambda0 = std::sqrt(tau) / sum;
    sum = 0.0;
    const int first = s.NDGNUM + s.NDGDEN;
    for (int k = first; k < first + s.NBKNUM; ++k) sum += s.CTCX[k].c * power(a, s.CTCX[k].t) * power(b, s.CTCX[k].d);
    const double lambda1 = del * sum >= 100.0 ? 1e10 : std::exp(del * sum);

    double lambda2 = 0.0;
    const double version = fluidConstants.VERFL[icomp];
    if (version <= static_cast<double>(8.1f) && del > 0.0) {
        double dpdD = 0.0, dpdT = 0.0, eta0 = 0.0, eta1 = 0.0;
        DPDDK(icomp, T, D, dpdD);
        DPDTK(icomp, T, D, dpdT);
        if (dpdD > 0.0) {
            viscosityFactorsWater(icomp, T, D, eta0, eta1);
            if (version > 8.0) eta0 /= 0.55071;           // files above it give the viscosity in another unit
            constexpr double reducingPressure = 22115.0;  // [kPa]
            const double slope = dpdT * s.TRDBKT / reducingPressure;
            const double chi = del / dpdD / s.DRDBKT * reducingPressure;
            lambda2 = 0.0013848 * (tau / del) * (tau / del) / eta0 / eta1 * slope * slope * std::pow(chi, 0.4678) *
                      std::sqrt(del) * std::exp(-18.66 * (tau - 1.0) * (tau - 1.0) - b * b * b * b);
        }
    }
    return (lambda0 * lambda1 + lambda2) * s.TCXBKT;
}

namespace {

// Isothermal compressibility [1/Pa] of helium by its scaled equation near the critical point.
//   Source    B. A. Hands, V. D. Arp, Cryogenics 21 (1981) 697
double scaledCompressibilityHelium(double dT, double dRho, double rho) {
    constexpr double x0 = 0.392, E1 = 2.8461, E2 = 0.27156, beta = 0.3554, gamma = 1.1743, delta = 4.304;
    constexpr double rhoc = 69.158, pc = 227460.0;  // [kg/m3, Pa]
    const double distance = std::max(dRho, 1e-10);
    const double x = dT / std::pow(distance, 1.0 / beta);
    const double w = 1.0 + x / x0, bracket = 1.0 + E2 * std::pow(w, 2.0 / beta);
    const double exponent = (gamma - 1.0) / (2.0 * beta);
    const double h = E1 * w * std::pow(bracket, exponent);
    const double slope = E1 / x0 * std::pow(bracket, exponent) + E1 / x0 * exponent * (2.0 / beta) * E2 *
                                                                     std::pow(w, 2.0 / beta) *
                                                                     std::pow(bracket, exponent - 1.0);
    const double stiffness = std::pow(distance, delta - 1.0) * (delta * h - x / beta * slope);
    const double ratio = rhoc / rho;
    return ratio * ratio / (pc * stiffness);
}

}  // namespace

// Helium.
//   Source    B. A. Hands, V. D. Arp, Cryogenics 21 (1981) 697
double TCXHE(int icomp, double T, double D) {
    const ConductivitySlot& s = conductivityTerms[icomp];
    if (s.TRDBKT == 0.0) return 0.0;
    const double tau = T / s.TRDBKT, del = D / s.DRDBKT;
    double exponent = 0.0;
    for (int k = 1; k < s.NDGNUM; ++k) exponent += s.CTCX[k].c * power(tau, s.CTCX[k].t);
    double value = s.NDGNUM > 0 ? s.CTCX[0].c * power(tau, s.CTCX[0].t) * std::exp(exponent) : 0.0;

    const double u = std::cbrt(tau);
    const int first = s.NDGNUM + s.NDGDEN;
    for (int k = first; k < first + s.NBKNUM; ++k) {
        const TransportTerm& row = s.CTCX[k];
        double term = row.c * power(u, row.t) * power(del, row.d);
        if (std::fabs(row.e) >= 1e-12 && std::fabs(del) >= 1e-12) term *= std::log(power(del, row.e));
        value += term;
    }

    if (T >= 3.5 && T <= 12.0) {
        const double rho = D * fluidConstants.WMAS[icomp];
        double dpdD = 0.0, dpdT = 0.0;
        DPDDK(icomp, T, D, dpdD);
        DPDTK(icomp, T, D, dpdT);
        double compressibility = D > 0.0 ? 1.0 / dpdD / D / 1000.0 : 0.0;
        const double dT = std::fabs(T - 5.18992) / 5.18992, dRho = std::fabs(rho - 69.158) / 69.158;
        const double r2 = (dT / 0.2) * (dT / 0.2) + (4.0 * dRho) * (4.0 * dRho);
        if (r2 < 1.0 && D > 0.0)
            compressibility = r2 * compressibility + (1.0 - r2) * scaledCompressibilityHelium(dT, dRho, rho);
        double eta = 0.0;
        int ierr = 0;
        Text255 herr;
        ETAK(icomp, T, D, eta, ierr, herr);
        eta /= 1e6;
        dpdT *= 1000.0;
        if (compressibility >= 0.0 && rho > 0.0 && ierr == 0)
            value += 3.726229668 * 3.4685233e-17 * T * T * std::sqrt(compressibility) / rho / eta * dpdT * dpdT *
                     std::exp(-18.66 * dT * dT - 4.25 * dRho * dRho * dRho * dRho);
    }
    return value * s.TCXBKT;
}

// ------------------------------------------------------------------------------------------------------- hydrogen

namespace {

// c(i) of the section, numbered from 1.
double coefficient(const ConductivitySlot& s, int i) {
    return s.CTCX[i - 1].c;
}

double pressureK(int icomp, double T, double D) {
    double tz = 0.0, rhoz = 0.0;
    REDK(icomp, tz, rhoz);
    return fluidConstants.REOS[icomp] * T * D * (1.0 + PHIK(icomp, 0, 1, tz / T, D / rhoz));
}

// D, or the density at the pressure at which the correlation ends.
double densityUpTo(int icomp, double T, double D, double p) {
    if (D <= 0.0 || pressureK(icomp, T, D) < p) return D;
    double rho = D;
    int ierr = 0;
    Text255 herr;
    TPRHO(T, p, unitComposition(icomp), T < fluidConstants.TCRIT[icomp] ? 1 : 2, 0, rho, ierr, herr);
    return ierr > 0 ? D : rho;
}

// Extrapolation beyond that density.
double THERMX(double D, double limited, double value) {
    return std::exp(std::log(value) + (D - limited) * 0.041758537);
}

double DILT(const ConductivitySlot& s, double T) {
    double sum = 0.0;
    const double root = std::cbrt(T);
    for (int i = 1; i <= 9; ++i) sum += coefficient(s, i) * power(root, i - 4);
    return sum;
}

double REXCES(double D, double T) {
    return 0.0015843 * D + (1.0664e-8 * T + 3.8611e-5) * (std::exp(2.1 * std::pow(D, 0.36)) - 1.0);
}

double EXCSH2(const ConductivitySlot& s, double D, double T) {
    if (D <= 0.0) return 0.0;
    if (T > 80.0 || D < 0.001) return REXCES(D, T);
    const auto g = [&s](int i) { return coefficient(s, 10 + i); };
    const double b = std::pow(D, 0.1), exponent = (D - g(8)) / g(8);
    const double x = exponent >= 1000.0 ? 0.0 : std::pow(D, exponent);
    const double E =
        g(1) + g(2) * x + g(3) * b + g(4) * x / (T * T) + g(5) * b / (T * std::sqrt(T)) + g(6) / T + g(7) * x / T;
    const double E0 = g(1) + g(6) / T;
    return E >= 3000.0 ? 0.0 : (std::exp(E) - std::exp(E0)) / 10.0;
}

double RCRIT(double D, double T) {
    constexpr double widening = static_cast<double>(0.008229f);
    const double line = D - 15.556 - widening * std::pow(std::fabs(T - 32.938), 1.5);
    const double value = 1000.0 * (0.00635363 - 5.863e-05 * T) * std::exp(-(0.138 * line) * (0.138 * line));
    return std::max(value, 0.0);
}

// Between its temperatures only; the line lies on the other side of that of RCRIT.
double CRITH2(double D, double T) {
    constexpr double from = 77.0, to = 108.35658264160156;
    if (T <= from || T >= to) return 0.0;
    const double line = D - (15.556 - 0.008229 * std::pow(T - 32.938, 1.5));
    return (0.00635363 - 5.863e-05 * T) * std::exp(-(0.138 * line) * (0.138 * line));
}

// Conductivity of the gas at zero density [W/(m K)]: normal hydrogen and parahydrogen. The temperatures are those at
// which the two are known to the program; between them both are linear.
struct GasRow {
    double T, TNZ, TPZ;
};
constexpr GasRow gasRows[] = {
    {70.0, 0.0505, 0.0529},  {100.0, 0.0695, 0.0816}, {150.0, 0.1026, 0.1294},
    {200.0, 0.1342, 0.1574}, {250.0, 0.1622, 0.1758}, {300.0, 0.187, 0.1935},
    {350.0, 0.211, 0.2129},  {400.0, 0.234, 0.233},   {410.0, 0.238, 0.237},
};

double RTHERM(const ConductivitySlot& s, double D, double T) {
    double n = 0.0, p = 0.0;
    if (T >= 410.0) {
        n = 0.238 + 0.0045 * (T - 410.0) / 10.0;
        p = 0.237 + 0.004 * (T - 410.0) / 10.0;
    } else {
        const GasRow* row = gasRows;
        while (row[1].T <= T) ++row;
        const double w = (T - row[0].T) / (row[1].T - row[0].T);
        n = row[0].TNZ + w * (row[1].TNZ - row[0].TNZ);
        p = row[0].TPZ + w * (row[1].TPZ - row[0].TPZ);
    }
    const double para = (p - n) / 0.75 * (coefficient(s, 10) - 0.25);
    constexpr double first = 2.0999999046325684, second = 0.36000001430511475;
    const double dense = D > 0.0 ? std::exp(first * std::pow(D, second)) - 1.0 : 0.0;
    return n * (0.9715160001069307 + 7.058800110826269e-5 * T) + para + CRITH2(D, T) + 0.001584312604 * D +
           (1.066433014e-7 * T + 3.861103193e-5) * dense;
}

}  // namespace

// Hydrogen: two ranges, blended from 70 to 90 K.
//   Notes     Rows: c1 to c9 of the dilute gas, c10 the fraction of parahydrogen, c11 to c18 of the excess.
//   Source    R. D. McCarty, L. A. Weber, Natl. Bur. Stand. (U.S.) Tech. Note 617 (1972); H. M. Roder, R. D. McCarty,
//             V. J. Johnson, NBS Special Publ. 419 (1975)
double TCXH2(int icomp, double T, double D) {
    const ConductivitySlot& s = conductivityTerms[icomp];
    double low = 0.0;
    if (T <= 90.0) {
        const double limited = densityUpTo(icomp, T, D, 12000.0);
        low = DILT(s, T) + 1000.0 * EXCSH2(s, limited, T) + RCRIT(limited, T);
        if (D > 0.0) low = THERMX(D, limited, low);
        low /= 1000.0;
        if (T < 70.0) return low;
    }
    const double limited = densityUpTo(icomp, T, D, 60000.0);
    double high = RTHERM(s, limited, T);
    if (D > 0.0) high = THERMX(D, limited, high);
    if (T > 90.0) return high;
    const double w = (T - 70.0) / 20.0;
    return low * (1.0 - w) + high * w;
}

double deuteriumFactor(int icomp, double T, double D) {
    constexpr double slope = static_cast<double>(0.031f), largest = static_cast<double>(0.92f);
    const double Tc = fluidConstants.TCRIT[icomp];
    double f = slope * D;
    if (T >= Tc) f *= power(Tc / T, 5.0);
    return std::min(f + 0.7071067811865475, largest);
}

double TCX0HC(int icomp, double T, double D, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    const Text3& tag = conductivityTerms[icomp].HTCXHC;
    if (tag == "ETY") return TCXETY(icomp, T, D);
    if (tag == "R23") return TCXR23(icomp, T, D);
    if (tag == "D2O") return TCXD2O(icomp, T, D);
    if (tag == "H2O") return TCXH2O(icomp, T, D);
    if (tag == "HE") return TCXHE(icomp, T, D);
    if (tag == "H2") return TCXH2(icomp, T, D);
    if (tag == "D2") return TCXH2(icomp, T, D) * deuteriumFactor(icomp, T, D);
    if (tag == "T2") return TCXH2(icomp, T, D) / 1.7320508075688772;
    if (tag == "HE3") return TCXHE(icomp, T, D) / 0.8660254037844386;
    ierr = 39;
    message(herr, "[TCX0HC error 39] unknown thermal conductivity model specified", nullCharacter);
    ERRMSG(ierr, herr);
    return notComputed;
}

}  // namespace frigana
