#include "TRNS_VIS.h"

#include <algorithm>
#include <cmath>

#include "DISPATCH.h"
#include "FluidConstants.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "TRNSP.h"
#include "TRNS_ECS.h"
#include "UTILITY.h"

namespace frigana {

constinit SlotArray<ViscositySlot> viscosityTerms{};

// ------------------------------------------------------------------------------------------------------- readers

namespace {

// General constants of the ten quantities A1 to A10: 1, acentric factor, fourth power of the reduced dipole moment,
// association. Chung et al. (1988), table II.
constexpr double chungViscosity[10][4] = {
    {6.32402, 50.4119, -51.6801, 1189.02},          //  1
    {0.0012102, -0.0011536, -0.0062571, 0.037283},  //  2
    {5.28346, 254.209, -168.481, 3898.27},          //  3
    {6.62263, 38.0957, -8.46414, 31.4178},          //  4
    {19.7454, 7.63034, -14.3544, 31.5267},          //  5
    {-1.89992, -12.5367, 4.98529, -18.1507},        //  6
    {24.2745, 3.44945, -11.2913, 69.3466},          //  7
    {0.79716, 1.11764, 0.012348, -4.11661},         //  8
    {-0.23816, 0.067695, -0.8163, 4.02528},         //  9
    {0.068629, 0.34793, 0.59256, -0.72663},         // 10
};

bool readLimits(SectionReader& in, int icomp) {
    FluidConstants& fluid = fluidConstants;
    return in.limits(fluid.TMETA[icomp], fluid.TXETA[icomp], fluid.PXETA[icomp], fluid.DXETA[icomp]);
}

bool readMolecule(SectionReader& in, int icomp, ViscositySlot& s) {
    return in.tag("tag of the collision integral", modelTags.HMDETA[icomp]) && in.line("sigma", s.SIGMAV) &&
           in.line("epsilon", s.EPSKV);
}

// Reads n rows behind the `first` ones; false where the table could not hold them.
bool readRows(SectionReader& in, ViscositySlot& s, int first, int n, int columns, bool integer) {
    return in.count("number of terms", first + n, largestViscosityTerms) &&
           in.terms(s.CETA + first, n, columns, integer);
}

// The six counts of the dilute part, the molecule, the reducing values and the rows.
bool readDilute(SectionReader& in, int icomp, ViscositySlot& s) {
    if (!in.line("six numbers of terms of the dilute gas", s.NDGETA, s.NDG2, s.NDG3, s.NDG4, s.NDG5, s.NDG6))
        return false;
    for (const int n : {s.NDGETA, s.NDG2, s.NDG3, s.NDG4, s.NDG5, s.NDG6})
        if (!in.count("number of terms of the dilute gas", n, largestViscosityTerms)) return false;
    s.B2FIRST = s.NDGETA + s.NDG2 + s.NDG3 + s.NDG4 + s.NDG5 + s.NDG6;
    return readMolecule(in, icomp, s) && in.line("reducing values of the dilute gas", s.TRDDGE, s.ETADGE) &&
           readRows(in, s, 0, s.B2FIRST, 2, false);
}

bool readSecondVirial(SectionReader& in, ViscositySlot& s) {
    if (!in.line("number of terms and reducing values of the second virial coefficient", s.NB2ETA, s.TREDB2, s.ETARB2))
        return false;
    s.RESFIRST = s.B2FIRST + s.NB2ETA;
    return in.count("number of terms of the second virial coefficient", s.NB2ETA, largestViscosityTerms) &&
           readRows(in, s, s.B2FIRST, s.NB2ETA, 2, false);
}

// Checks the counts of the residual part; returned is their sum, -1 after a failure.
int residualRows(SectionReader& in, const ViscositySlot& s) {
    int total = std::abs(s.NDEL0);
    for (const int n : {s.NPOLY, s.NNUMETA, s.NDENETA, s.NEXPN, s.NEXPD}) {
        if (!in.count("number of terms of the residual part", n, largestViscosityTerms)) return -1;
        total += n;
    }
    return in.count("number of terms of the residual part", total, largestViscosityTerms) ? total : -1;
}

bool readResidual(SectionReader& in, ViscositySlot& s, int rows) {
    return in.line("reducing values of the residual part", s.TREDETA, s.DREDETA, s.ETARED) &&
           readRows(in, s, s.RESFIRST, rows, 4, true);
}

// The tag that ends every section; only then the slot takes what was read.
void finish(SectionReader& in, int icomp, const ViscositySlot& read) {
    if (in.tag("tag of the critical enhancement", modelTags.HETACR[icomp])) viscosityTerms[icomp] = read;
}

}  // namespace

void SETVS0(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    SectionReader in("SETVS0", nread, hcas, ierr, herr);
    viscosityTerms[icomp] = {};
    ViscositySlot s{};
    if (!readLimits(in, icomp) || !in.tag("sub-tag of the correlation", s.HETAHC) ||
        !in.line("seven numbers of terms", s.NDGETA, s.NDEL0, s.NPOLY, s.NNUMETA, s.NDENETA, s.NEXPN, s.NEXPD) ||
        !in.count("number of terms of the dilute gas", s.NDGETA, largestViscosityTerms))
        return;
    const int rows = residualRows(in, s);
    if (rows < 0) return;
    s.B2FIRST = s.RESFIRST = s.NDGETA;
    if (s.NDGETA > 0 &&
        (!readMolecule(in, icomp, s) || !in.line("reducing values of the dilute gas", s.TRDDGE, s.ETADGE) ||
         !readRows(in, s, 0, s.NDGETA, 2, false)))
        return;
    if (rows > 0 && !readResidual(in, s, rows)) return;
    finish(in, icomp, s);
}

void SETVS1(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    SectionReader in("SETVS1", nread, hcas, ierr, herr);
    viscosityTerms[icomp] = {};
    ViscositySlot s{};
    if (!readLimits(in, icomp) || !readDilute(in, icomp, s) || !readSecondVirial(in, s) ||
        !in.line("six numbers of terms of the residual part", s.NDEL0, s.NPOLY, s.NNUMETA, s.NDENETA, s.NEXPN, s.NEXPD))
        return;
    const int rows = residualRows(in, s);
    if (rows < 0 || !readResidual(in, s, rows)) return;
    finish(in, icomp, s);
}

void SETVS2(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    SectionReader in("SETVS2", nread, hcas, ierr, herr);
    viscosityTerms[icomp] = {};
    ViscositySlot s{};
    if (!readLimits(in, icomp) || !readMolecule(in, icomp, s) ||
        !in.line("coefficient and exponent of the dilute gas", s.CDG2, s.EDG2))
        return;
    for (double& c : s.C2)
        if (!in.line("coefficient", c)) return;
    // files before this version leave the density of the critical point to the header
    constexpr double versionWithDensity = 6.0009;
    s.DCR2 = fluidConstants.DCRIT[icomp];
    if (fluidConstants.VERFL[icomp] >= versionWithDensity && !in.line("critical density", s.DCR2)) return;
    finish(in, icomp, s);
}

void SETVS3(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    SectionReader in("SETVS3", nread, hcas, ierr, herr);
    viscosityTerms[icomp] = {};
    ViscositySlot s{};
    if (!readLimits(in, icomp) || !in.line("numbers of terms of the dilute gas", s.NDGETA, s.NDG3) ||
        !in.count("number of terms of the dilute gas", s.NDGETA, largestViscosityTerms) ||
        !in.count("number of terms of the dilute gas", s.NDG3, largestViscosityTerms) ||
        !in.line("reducing values of the dilute gas", s.TRDDGE, s.ETADGE))
        return;
    s.B2FIRST = s.RESFIRST = s.NDGETA + s.NDG3;
    if (!readRows(in, s, 0, s.RESFIRST, 2, false) ||
        !in.line("numbers of terms of the background", s.NNUMETA, s.NDENETA))
        return;
    const int rows = residualRows(in, s);
    if (rows < 0 || !in.line("reducing values of the background", s.TREDETA, s.DREDETA, s.ETARED) ||
        !readRows(in, s, s.RESFIRST, rows, 3, false))
        return;
    finish(in, icomp, s);
}

void SETVS4(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    SectionReader in("SETVS4", nread, hcas, ierr, herr);
    viscosityTerms[icomp] = {};
    ViscositySlot s{};
    if (!readLimits(in, icomp) || !readDilute(in, icomp, s) || !readSecondVirial(in, s)) return;
    // files before this version end with D, the third power of the repulsive pressure
    constexpr double versionWithE = 6.0009;
    const int rows = fluidConstants.VERFL[icomp] >= versionWithE ? 8 : 7;
    for (int k = 0; k < rows; ++k)
        if (!in.numbers("row of the friction theory", s.FTM[k], 4)) return;
    finish(in, icomp, s);
}

void SETVS5(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    SectionReader in("SETVS5", nread, hcas, ierr, herr);
    viscosityTerms[icomp] = {};
    ViscositySlot s{};
    int NADDV = 0;
    if (!readLimits(in, icomp) || !readDilute(in, icomp, s) || !readSecondVirial(in, s) ||
        !in.line("acentric factor, reduced dipole, association, number of rows", s.ACCHV, s.DDIPV, s.HBVK, NADDV) ||
        !in.count("number of rows", NADDV, 10))
        return;
    const double dipole4 = s.DDIPV * s.DDIPV * s.DDIPV * s.DDIPV;
    for (int k = 0; k < 10; ++k) {
        double row[4] = {chungViscosity[k][0], chungViscosity[k][1], chungViscosity[k][2], chungViscosity[k][3]};
        if (k < NADDV && !in.numbers("row of constants", row, 4)) return;
        s.CCETA[k] = row[0] + row[1] * s.ACCHV + row[2] * dipole4 + row[3] * s.HBVK;
    }
    finish(in, icomp, s);
}

void SETVS6(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    SectionReader in("SETVS6", nread, hcas, ierr, herr);
    viscosityTerms[icomp] = {};
    readLimits(in, icomp);
}

// ------------------------------------------------------------------------------------------- VS1: the general form

namespace {

double temperatureSum(const TransportTerm* rows, int n, double reducedTemperature) {
    double sum = 0.0;
    for (int k = 0; k < n; ++k) sum += rows[k].c * power(reducedTemperature, rows[k].t);
    return sum;
}

// Row over the collision integral, and further powers.
double kineticSum(int icomp, const ViscositySlot& s, double T) {
    if (s.NDGETA <= 0) return 0.0;
    const double reduced = T / s.TRDDGE;
    double sum = 0.0;
    if (s.CETA[0].c != 0.0)
        sum = s.CETA[0].c * std::sqrt(reduced) /
              (s.SIGMAV * s.SIGMAV * OMEGA(icomp, T, s.EPSKV, modelTags.HMDETA[icomp]));
    return sum + temperatureSum(s.CETA + 1, s.NDGETA - 1, reduced);
}

constexpr double hottestDiluteGas = 1e8;  // [K]

}  // namespace

double ETA1DG(int icomp, double T) {
    if (T >= hottestDiluteGas) return 0.0;
    const ViscositySlot& s = viscosityTerms[icomp];
    return kineticSum(icomp, s, T) * s.ETADGE;
}

double ETA1B2(int icomp, double T) {
    const ViscositySlot& s = viscosityTerms[icomp];
    return s.NB2ETA > 0 ? temperatureSum(s.CETA + s.B2FIRST, s.NB2ETA, T / s.TREDB2) * s.ETARB2 : 0.0;
}

namespace {

struct ReducedPoint {
    double tau, del;  // T and D over the reducing values
    double delta0;    // reduced close-packed density
    double inner;     // density inside the exponentials
};

double blockSum(const TransportTerm*& row, int n, const ReducedPoint& at) {
    double sum = 0.0;
    for (const TransportTerm* end = row + n; row != end; ++row) {
        double term = row->c * power(at.tau, row->t) * power(at.del, row->d);
        if (row->e != 0.0) term *= power(at.delta0, row->e);
        if (row->i > 0) term *= std::exp(-power(at.inner, row->i));
        sum += term;
    }
    return sum;
}

double blockQuotient(const TransportTerm*& row, int numerator, int denominator, const ReducedPoint& at) {
    if (numerator <= 0 && denominator <= 0) return 0.0;
    const double over = blockSum(row, numerator, at);
    const double under = denominator > 0 ? blockSum(row, denominator, at) : 1.0;
    return over / under;
}

}  // namespace

double ETA1RS(int icomp, double T, double D) {
    if (D < 1e-10) return 0.0;
    const ViscositySlot& s = viscosityTerms[icomp];
    if (s.DREDETA == 0.0) return 0.0;  // the slot has no terms
    ReducedPoint at{T / s.TREDETA, D / s.DREDETA, 1.0, 0.0};
    // A correlation in mol/L still reduces the density of its exponentials.
    at.inner = std::fabs(s.DREDETA - 1.0) < 0.001 ? D / fluidConstants.DCRIT[icomp] : at.del;

    const TransportTerm* row = s.CETA + s.RESFIRST;
    if (s.NDEL0 > 0)
        at.delta0 = temperatureSum(row, s.NDEL0, at.tau);
    else if (s.NDEL0 < 0)
        at.delta0 = row[0].c / (1.0 + temperatureSum(row + 1, -s.NDEL0 - 1, at.tau));
    row += std::abs(s.NDEL0);

    double sum = blockSum(row, s.NPOLY, at);
    sum += blockQuotient(row, s.NNUMETA, s.NDENETA, at);
    sum += blockQuotient(row, s.NEXPN, s.NEXPD, at);
    return sum * s.ETARED;
}

// ------------------------------------------------------------------------------------------------- VS2, VS3, VS4

double ETA2DG(int icomp, double T) {
    const ViscositySlot& s = viscosityTerms[icomp];
    if (s.SIGMAV == 0.0) return 0.0;
    return s.CDG2 * power(T, s.EDG2) / (s.SIGMAV * s.SIGMAV * OMEGA(icomp, T, s.EPSKV, modelTags.HMDETA[icomp]));
}

double ETA2RS(int icomp, double T, double D) {
    const ViscositySlot& s = viscosityTerms[icomp];
    if (D <= 0.0 || s.DCR2 == 0.0) return 0.0;
    const FromOne<double> c{s.C2};
    const double spread = c[3] - std::log(T / c[4]);
    const double initial = D * (c[1] + c[2] * spread * spread);
    const double theta = c[5] + c[6] / T;
    const double exponent = theta + (c[7] + c[8] / (T * std::sqrt(T))) * std::pow(D, 0.1) +
                            (c[9] + c[10] / T + c[11] / (T * T)) * std::sqrt(D) * (D - s.DCR2) / s.DCR2;
    return std::exp(exponent) - std::exp(theta) + initial;
}

double ETA3DG(int icomp, double T) {
    const ViscositySlot& s = viscosityTerms[icomp];
    if (s.NDGETA + s.NDG3 <= 0) return 0.0;
    const double reduced = T / s.TRDDGE;
    double value = temperatureSum(s.CETA, s.NDGETA, reduced);
    if (s.NDG3 > 0) value /= temperatureSum(s.CETA + s.NDGETA, s.NDG3, reduced);
    return value * s.ETADGE;
}

double ETA3RS(int icomp, double T, double D) {
    const ViscositySlot& s = viscosityTerms[icomp];
    if (s.NNUMETA + s.NDENETA <= 0) return 0.0;
    const ReducedPoint at{T / s.TREDETA, D / s.DREDETA, 1.0, 0.0};
    const TransportTerm* row = s.CETA + s.RESFIRST;
    double value = blockSum(row, s.NNUMETA, at);
    if (D > 0.0 && s.NDENETA > 0)
        if (const double under = blockSum(row, s.NDENETA, at); std::fabs(under) > 1e-20) value /= under;
    return value * s.ETARED;
}

double ETA4DG(int icomp, double T) {
    const ViscositySlot& s = viscosityTerms[icomp];
    if (T >= hottestDiluteGas || s.NDGETA <= 0) return 0.0;
    const double reduced = T / s.TRDDGE;
    double value = kineticSum(icomp, s, T);
    if (s.NDG2 > 0) value *= temperatureSum(s.CETA + s.NDGETA, s.NDG2, reduced);
    if (s.NDG3 > 0) value /= temperatureSum(s.CETA + s.NDGETA + s.NDG2, s.NDG3, reduced);
    return value * s.ETADGE;
}

double ETA4RS(int icomp, double T, double D) {
    const ViscositySlot& s = viscosityTerms[icomp];
    if (D < 1e-10 || s.TRDDGE == 0.0) return 0.0;

    // Pressures [bar]: of the ideal gas, repulsive T (dp/dT), attractive.
    double tz = 0.0, rhoz = 0.0;
    REDK(icomp, tz, rhoz);
    const double tau = tz / T, del = D / rhoz;
    constexpr double kPaInBar = 100.0;
    const double ideal = D * fluidConstants.REOS[icomp] * T / kPaInBar;
    const double a01 = PHIK(icomp, 0, 1, tau, del), a11 = PHIK(icomp, 1, 1, tau, del);
    const double repulsive = ideal * (1.0 + a01 - a11);
    const double attractive = ideal * (1.0 + a01) - repulsive;
    const double excess = repulsive - ideal;

    const double G = s.TRDDGE / T;
    const double psi1 = std::exp(G) - 1.0, psi2 = std::exp(G * G) - 1.0;
    const auto friction = [&](int k) {
        const double* x = s.FTM[k];
        return (x[0] + x[1] * psi1 + x[2] * psi2) * power(G, x[3]);
    };
    const double sum = friction(0) * attractive + friction(1) * excess + friction(2) * ideal +
                       friction(3) * attractive * attractive + friction(4) * excess * excess +
                       friction(5) * ideal * ideal + friction(6) * repulsive * repulsive * repulsive +
                       friction(7) * attractive * attractive * attractive;
    return 1000.0 * sum;  // mPa s to uPa s
}

// ----------------------------------------------------------------------------------------------------- VS5: Chung

namespace {

// Molar volume of the critical point that sigma stands for [cm3/mol].
double chungVolume(const ViscositySlot& s) {
    const double root = 10.0 * s.SIGMAV / 0.809;
    return root * root * root;
}

// 1e5 times smaller than in uPa s, as the residual part needs it.
double chungDilute(int icomp, const ViscositySlot& s, double T) {
    const double dipole2 = s.DDIPV * s.DDIPV;
    const double shape = 1.0 - 0.2756 * s.ACCHV + 0.059035 * dipole2 * dipole2 + s.HBVK;
    const double reduced = T / s.EPSKV;
    const double radius = s.SIGMAV / 8.09;
    const double theory =
        0.00040785 * std::sqrt(T * fluidConstants.WMAS[icomp]) / (radius * radius * OMEGAS(2, 2, reduced)) * shape;
    return (theory + temperatureSum(s.CETA, s.NDGETA, reduced)) * s.ETADGE;
}

constexpr double chungUnit = 100000.0;

}  // namespace

double ETA5DG(int icomp, double T) {
    const ViscositySlot& s = viscosityTerms[icomp];
    return s.SIGMAV > 0.0 && s.EPSKV > 0.0 ? chungDilute(icomp, s, T) : 0.0;
}

double ETA5RS(int icomp, double T, double D) {
    const ViscositySlot& s = viscosityTerms[icomp];
    if (D <= 0.0 || s.SIGMAV <= 0.0 || s.EPSKV <= 0.0) return 0.0;
    const double V = chungVolume(s);
    const double reduced = T / s.EPSKV;
    const double eta0 = chungDilute(icomp, s, T) / chungUnit;
    const FromOne<double> A{s.CCETA};

    const double y = D * V / 6000.0;
    const double G1 = (1.0 - 0.5 * y) / ((1.0 - y) * (1.0 - y) * (1.0 - y));
    const double G = (A[1] * (1.0 - std::exp(-A[4] * y)) / y + A[2] * G1 * std::exp(A[5] * y) + A[3] * G1) /
                     (A[1] * A[4] + A[2] + A[3]);
    const double dense = 3.6344e-5 * std::sqrt(1.2593 * fluidConstants.WMAS[icomp] * s.EPSKV) / std::cbrt(V * V) *
                         A[7] * y * y * G * std::exp(A[8] + A[9] / reduced + A[10] / (reduced * reduced));
    return chungUnit * (eta0 * (1.0 / G + A[6] * y) + dense - eta0);
}

// ------------------------------------------------------------------------------------- VS0: correlations of one fluid

double ETAETY(int icomp, double T, double D) {
    constexpr double G[9] = {-3509822.5018, 2500840.6184, -583655.40744, 4554.9146583, 22881.683403,
                             -4731.8682077, 450.22249258, -21.490688088, 0.41649263233};
    constexpr double L[7] = {-4.8544486732, 13.033585236,  27808.928908, -1824.1971308,
                             1.5913024509,  -205.13573927, -39478.454708};
    const double root = std::cbrt(T);
    double dilute = 0.0;
    for (int i = 8; i >= 0; --i) dilute = dilute * root + G[i];
    dilute /= T;  // the first power is -1

    double excess = 0.0;
    if (D > 0.0) {
        constexpr double criticalDensity = 0.221;  // [g/cm3], of the correlation
        const double r = D * fluidConstants.WMAS[icomp] / 1000.0;
        const double d = (r - criticalDensity) / criticalDensity;
        excess = std::exp(L[0] + L[3] / T) * (std::exp(std::pow(r, 0.1) * (L[1] + L[2] / (T * std::sqrt(T))) +
                                                       d * std::sqrt(r) * (L[4] + L[5] / T + L[6] / (T * T))) -
                                              1.0);
    }
    return (dilute + excess) / 10.0;  // published in 0.1 uPa s
}

double ETAR23(int icomp, double T, double D) {
    const ViscositySlot& s = viscosityTerms[icomp];
    const TransportTerm* row = s.CETA + s.RESFIRST;
    const double liquidDensity = row[0].c, C1 = row[1].c, C2 = row[2].c, activation = row[3].c, largest = row[4].c;
    constexpr double gasConstant = 8.31451;  // of the correlation
    const double gap = liquidDensity - D;
    if (s.NPOLY < 5 || gap <= 0.0) return 0.0;  // the form ends at the density of the hypothetical liquid

    const double gas = ETA1DG(icomp, T);
    const double liquid =
        C2 * liquidDensity * liquidDensity / gap * std::sqrt(T) * std::exp(D / gap * activation / (gasConstant * T));
    const double critical = largest / (std::cosh(D - s.DREDETA) * std::cosh(std::clamp(T - s.TREDETA, -500.0, 500.0)));
    return (std::pow(gap / liquidDensity, C1) * gas + std::pow(D / liquidDensity, C1) * liquid + critical) * s.ETARED;
}

void viscosityFactorsWater(int icomp, double T, double D, double& eta0, double& eta1) {
    const ViscositySlot& s = viscosityTerms[icomp];
    eta0 = eta1 = 0.0;
    if (s.TREDETA == 0.0) return;
    const double tau = T / s.TREDETA, del = D / s.DREDETA;
    const TransportTerm* row = s.CETA + s.RESFIRST;
    double sum = 0.0;
    for (int k = 0; k < s.NDEL0; ++k, ++row) sum += row->c / power(tau, row->t);
    eta0 = std::sqrt(tau) / sum;
    const double a = 1.0 / tau - 1.0, b = del - 1.0;
    sum = 0.0;
    for (int k = 0; k < s.NPOLY; ++k, ++row) sum += row->c * power(a, row->t) * power(b, row->d);
    eta1 = std::exp(del * sum);
}

double ETAH2O(int icomp, double T, double D) {
    double eta0 = 0.0, eta1 = 0.0;
    viscosityFactorsWater(icomp, T, D, eta0, eta1);
    double enhancement = 1.0;
    if (fluidConstants.VERFL[icomp] > 8.0) {
        const double xi = 1e9 * XI_FUN(icomp, T, D);  // [nm]
        constexpr double cutoffC = 1.0 / 1.9, cutoffD = 1.0 / 1.1, exponent = 0.068, smallLength = 0.3817016416;
        double Y = 0.0;
        const double qc = cutoffC * xi, qd = cutoffD * xi;
        if (xi > 0.0 && xi <= smallLength) {
            Y = 0.2 * qc * std::pow(qd, 5.0) * (1.0 - qc + qc * qc - 765.0 / 504.0 * qd * qd);
        } else if (xi > 0.0) {
            const double psi = std::acos(1.0 / std::sqrt(1.0 + qd * qd));
            const double root = std::sqrt(std::fabs(qc * qc - 1.0));
            const double w = std::sqrt(std::fabs((qc - 1.0) / (qc + 1.0))) * std::tan(0.5 * psi);
            const double Lw = qc > 1.0 ? std::log((1.0 + w) / (1.0 - w)) : 2.0 * std::atan(std::fabs(w));
            Y = std::sin(3.0 * psi) / 12.0 - std::sin(2.0 * psi) / (4.0 * qc) +
                (1.0 - 1.25 * qc * qc) * std::sin(psi) / (qc * qc) -
                ((1.0 - 1.5 * qc * qc) * psi - root * root * root * Lw) / (qc * qc * qc);
        }
        enhancement = std::exp(exponent * Y);
    }
    return eta0 * eta1 * enhancement * viscosityTerms[icomp].ETARED;
}

double XI_FUN(int icomp, double T, double D) {
    constexpr double Tc = 647.096, pc = 22064.0, rhoc = 322.0, molarMass = 18.015268;  // [K, kPa, kg/m3, g/mol]
    constexpr double amplitude = 0.13e-9, Gamma = 0.06, nu = 0.63, gamma = 1.239, reference = 1.5;
    if (D <= 0.0) return 0.0;
    const auto compressibility = [&](double t) {
        double slope = 0.0;
        DPDDK(icomp, t, D, slope);
        return slope > 0.0 ? pc / rhoc * molarMass / slope : 1e20;
    };
    const double difference =
        D * molarMass / rhoc * (compressibility(T) - compressibility(reference * Tc) * reference * Tc / T);
    return difference > 0.0 ? amplitude * std::pow(difference / Gamma, nu / gamma) : 0.0;
}

double ETA0HC(int icomp, double T, double D, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    const Text3& tag = viscosityTerms[icomp].HETAHC;
    if (tag == "ETY") return ETAETY(icomp, T, D);
    if (tag == "R23") return ETAR23(icomp, T, D);
    if (tag == "H2O") return ETAH2O(icomp, T, D);
    ierr = 49;
    message(herr, "[ETA0HC error 49] unknown viscosity model specified", nullCharacter);
    ERRMSG(ierr, herr);
    return notComputed;
}

}  // namespace frigana
