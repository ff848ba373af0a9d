#include "TRNS_TCX.h"

#include <algorithm>
#include <cmath>

#include "DISPATCH.h"
#include "FluidConstants.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "TRNSP.h"
#include "UTILITY.h"

namespace frigana {

constinit SlotArray<ConductivitySlot> conductivityTerms{};

// ------------------------------------------------------------------------------------------------------- readers

namespace {

// General constants of the seven quantities B1 to B7: 1, acentric factor, fourth power of the reduced dipole moment,
// association. Chung et al. (1988), table IV.
constexpr double chungConductivity[7][4] = {
    {2.41657, 0.74824, -0.91858, 121.721},    // 1
    {-0.50924, -1.50936, -49.9912, 69.9834},  // 2
    {6.61069, 5.62073, 64.7599, 27.0389},     // 3
    {14.5425, -8.91387, -5.63794, 74.3435},   // 4
    {0.79274, 0.82019, -0.69369, 6.31734},    // 5
    {-5.8634, 12.8005, 9.58926, -65.5292},    // 6
    {81.171, 114.158, -60.841, 466.775},      // 7
};

bool readLimits(SectionReader& in, int icomp) {
    FluidConstants& fluid = fluidConstants;
    return in.limits(fluid.TMTCX[icomp], fluid.TXTCX[icomp], fluid.PXTCX[icomp], fluid.DXTCX[icomp]);
}

// Terms of a numerator and of a denominator.
bool readCounts(SectionReader& in, std::string_view what, int& numerator, int& denominator) {
    return in.line(what, numerator, denominator) && in.count("number of terms", numerator, largestConductivityTerms) &&
           in.count("number of terms", denominator, largestConductivityTerms - numerator);
}

bool readRows(SectionReader& in, ConductivitySlot& s, int first, int n, int columns, bool integer) {
    return in.count("number of terms", first + n, largestConductivityTerms) &&
           in.terms(s.CTCX + first, n, columns, integer);
}

// Coefficients one after the other, as rows first to last of a list numbered from 1.
bool readCoefficients(SectionReader& in, ConductivitySlot& s, int first, int last) {
    double values[largestConductivityTerms];
    if (!in.numbers("coefficients", values, last - first + 1)) return false;
    for (int k = first; k <= last; ++k) s.CTCX[k - 1].c = values[k - first];
    return true;
}

void clearTerms(int icomp) {
    conductivityTerms[icomp] = {};
    modelTags.HTCXCR[icomp] = "NUL";
}

// The enhancement has a section of its own, which may stand before this one.
void take(int icomp, const ConductivitySlot& read) {
    ConductivitySlot& slot = conductivityTerms[icomp];
    const EnhancementSection enhancement = slot.enhancement, correspondingStates = slot.correspondingStates;
    slot = read;
    slot.enhancement = enhancement;
    slot.correspondingStates = correspondingStates;
}

void finish(SectionReader& in, int icomp, const ConductivitySlot& read) {
    if (in.tag("tag of the critical enhancement", modelTags.HTCXCR[icomp])) take(icomp, read);
}

}  // namespace

void SETTC0(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    SectionReader in("SETTC0", nread, hcas, ierr, herr);
    clearTerms(icomp);
    ConductivitySlot s{};
    if (!readLimits(in, icomp) || !in.tag("sub-tag of the correlation", s.HTCXHC) ||
        !in.line("four numbers of terms", s.NDGNUM, s.NDGDEN, s.NBKNUM, s.NBKDEN))
        return;
    int rows = 0;
    for (const int n : {s.NDGNUM, s.NDGDEN, s.NBKNUM, s.NBKDEN}) {
        if (!in.count("number of terms", n, largestConductivityTerms)) return;
        rows += n;
    }
    if (rows > 0 && (!in.line("reducing values", s.TRDBKT, s.DRDBKT, s.TCXBKT) || !readRows(in, s, 0, rows, 4, true)))
        return;
    finish(in, icomp, s);
}

void SETTC1(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    SectionReader in("SETTC1", nread, hcas, ierr, herr);
    clearTerms(icomp);
    ConductivitySlot s{};
    if (!readLimits(in, icomp) || !readCounts(in, "numbers of terms of the dilute gas", s.NDGNUM, s.NDGDEN) ||
        !in.line("reducing values of the dilute gas", s.TRDDGT, s.TCXDGT) || !readRows(in, s, 0, s.NDGNUM, 2, false) ||
        !readRows(in, s, s.NDGNUM, s.NDGDEN, 2, false) ||
        !readCounts(in, "numbers of terms of the background", s.NBKNUM, s.NBKDEN) ||
        !in.line("reducing values of the background", s.TRDBKT, s.DRDBKT, s.TCXBKT) ||
        !readRows(in, s, s.NDGNUM + s.NDGDEN, s.NBKNUM, 4, false) ||
        !readRows(in, s, s.NDGNUM + s.NDGDEN + s.NBKNUM, s.NBKDEN, 4, false))
        return;
    finish(in, icomp, s);
}

void SETTC2(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    SectionReader in("SETTC2", nread, hcas, ierr, herr);
    clearTerms(icomp);
    ConductivitySlot s{};
    if (!readLimits(in, icomp) || !in.tag("tag of the collision integral", modelTags.HMDTCX[icomp])) return;
    for (int k = 1; k <= 3; ++k)
        if (!readCoefficients(in, s, k, k)) return;
    Text3 enhancement;
    if (!readCoefficients(in, s, 4, 5) || !readCoefficients(in, s, 6, 13) ||
        !in.tag("tag of the critical enhancement", enhancement))
        return;
    struct Rows {
        int first, last;
    };
    if (enhancement == "TK2")
        for (const Rows rows : {Rows{14, 17}, Rows{18, 18}, Rows{19, 19}, Rows{20, 23}, Rows{24, 30}})
            if (!readCoefficients(in, s, rows.first, rows.last)) return;
    modelTags.HTCXCR[icomp] = enhancement;
    take(icomp, s);
}

void SETTC3(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    SectionReader in("SETTC3", nread, hcas, ierr, herr);
    clearTerms(icomp);
    ConductivitySlot s{};
    if (!readLimits(in, icomp) || !readCoefficients(in, s, 1, 1) || !readCoefficients(in, s, 2, 2) ||
        !in.line("coefficient and exponent", s.CTCX[2].c, s.CTCX[2].t) || !readCoefficients(in, s, 4, 12) ||
        !readCoefficients(in, s, 13, 24) || !readCoefficients(in, s, 25, 26))
        return;
    finish(in, icomp, s);
}

void SETTC5(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    SectionReader in("SETTC5", nread, hcas, ierr, herr);
    clearTerms(icomp);
    ConductivitySlot s{};
    if (!readLimits(in, icomp) || !in.line("sigma", s.SIGCHK) || !in.line("epsilon", s.EPSCHK) ||
        !in.line("acentric factor, reduced dipole, association", s.ACCHK, s.DDIPK, s.HBKK))
        return;
    // four rows of the table always stand in the file, those behind them where they differ from the general ones
    constexpr int rows = 7, givenRows = 4;
    double table[rows][4];
    std::copy_n(&chungConductivity[0][0], rows * 4, &table[0][0]);
    for (int k = 0; k < givenRows; ++k)
        if (!in.numbers("row of constants", table[k], 4)) return;
    int NADDK = 0;
    if (!in.line("number of rows", NADDK) || !in.count("number of rows", NADDK, rows - givenRows)) return;
    for (int k = givenRows; k < givenRows + NADDK; ++k)
        if (!in.numbers("row of constants", table[k], 4)) return;
    // the last column is that of association, and counts for fluids that associate
    const double dipole4 = s.DDIPK * s.DDIPK * s.DDIPK * s.DDIPK;
    for (int k = 0; k < rows; ++k)
        s.CCTCX[k] = table[k][0] + table[k][1] * s.ACCHK + table[k][2] * dipole4 + table[k][3] * s.HBKK;
    finish(in, icomp, s);
}

void SETTC6(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    SectionReader in("SETTC6", nread, hcas, ierr, herr);
    clearTerms(icomp);
    if (ierr != 0) return;
    ierr = 39;
    message(herr, "[SETTC6 error 39] thermal conductivity model TC6 is not available", nullCharacter);
}

namespace {

// Enhancement sections have no data built in either; three of the readers say so with a number of their own.
bool withoutUnit(const char* model, int nread, const Text12& hcas, int& ierr, Text255& herr) {
    if (nread > 0) return false;
    ierr = 39;
    message(herr, "[SETUP error 39] block data option for t.c. crit model ", model, " specified for CAS # ", hcas,
            " but not implemented in code.", nullCharacter);
    return true;
}

bool readEnhancementCounts(SectionReader& in, EnhancementSection& s) {
    return in.limits(s.TMTCK, s.TXTCK, s.PXTCK, s.DXTCK) &&
           in.line("four numbers of terms", s.NNUMTCK, s.NDENTCK, s.NEXPTCK, s.NSPAREK) &&
           in.count("number of terms", s.NNUMTCK, largestEnhancementTerms) &&
           in.count("number of terms", s.NDENTCK, largestEnhancementTerms - s.NNUMTCK) &&
           in.count("number of terms", s.NEXPTCK, largestEnhancementTerms - s.NNUMTCK - s.NDENTCK);
}

bool readEnhancementRows(SectionReader& in, EnhancementTerm* rows, int n) {
    for (int k = 0; k < n; ++k) {
        EnhancementTerm& row = rows[k];
        if (!in.line("row of coefficients", row.c, row.a, row.b, row.e, row.f, row.i)) return false;
    }
    return true;
}

bool readCrossover(SectionReader& in, EnhancementSection& s) {
    return readEnhancementCounts(in, s) && in.line("reducing values", s.TRTCK, s.DRTCK, s.TCXRED) &&
           readEnhancementRows(in, s.CTCK, s.NNUMTCK + s.NDENTCK);
}

// The tag of the slot stands in the conductivity section; without rows it would be an enhancement of zeros.
void keep(const SectionReader& in, EnhancementSection& target, const EnhancementSection& read) {
    target = in.good() ? read : EnhancementSection{};
}

}  // namespace

void SETTK1(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    if (withoutUnit("#1", nread, hcas, ierr, herr)) return;
    SectionReader in("SETTK1", nread, hcas, ierr, herr);
    EnhancementSection s{};
    if (readCrossover(in, s) && s.NEXPTCK > 0 && in.line("reducing values of the exponent", s.TREDEX, s.DREDEX))
        readEnhancementRows(in, s.CTCK + s.NNUMTCK + s.NDENTCK, s.NEXPTCK);
    keep(in, conductivityTerms[icomp].enhancement, s);
}

void SETTK3(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    if (withoutUnit("#3", nread, hcas, ierr, herr)) return;
    SectionReader in("SETTK3", nread, hcas, ierr, herr);
    EnhancementSection s{};
    readCrossover(in, s);
    keep(in, conductivityTerms[icomp].enhancement, s);
}

void SETTK4(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    if (nread <= 0) {
        ierr = 101;
        message(herr, "[SETTK4 error 101] illegal file specified for icomp =", Integer{3, icomp},
                "; nread = ", Integer{4, nread}, "; CAS no. = ", hcas, nullCharacter);
        return;
    }
    SectionReader in("SETTK4", nread, hcas, ierr, herr);
    EnhancementSection s{};
    if (readEnhancementCounts(in, s) && in.line("reducing values", s.TRTCK, s.PRTCK, s.DRTCK, s.TCXRED))
        readEnhancementRows(in, s.CTCK, s.NNUMTCK + s.NDENTCK);
    keep(in, conductivityTerms[icomp].enhancement, s);
}

void SETTK6(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    if (withoutUnit("#3", nread, hcas, ierr, herr)) return;
    SectionReader in("SETTK6", nread, hcas, ierr, herr);
    EnhancementSection s{};
    readCrossover(in, s);
    keep(in, conductivityTerms[icomp].correspondingStates, s);
}

// ----------------------------------------------------------------------------------------------------------- TC1

namespace {

bool isCode(double exponent, double code) {
    return std::fabs(exponent - code) < 1e-6;
}

double diluteViscosity(int icomp, double T) {
    double eta0 = 0.0;
    int ierr = 0;
    Text255 herr;
    ETAK0(icomp, T, eta0, ierr, herr);
    return ierr == 0 ? eta0 : 0.0;
}

}  // namespace

double TCX1DG(int icomp, double T) {
    const ConductivitySlot& s = conductivityTerms[icomp];
    if (s.NDGNUM + s.NDGDEN <= 0) return 0.0;
    const double tau = T / s.TRDDGT;
    const double R = fluidConstants.R;
    double S = 0.0;
    for (int k = 0; k < s.NDGNUM; ++k) {
        const double c = s.CTCX[k].c, e = s.CTCX[k].t;
        if (e >= -90.0)
            S += c * power(tau, e);
        else if (isCode(e, -99.0))
            S *= c * (CP0K(icomp, T) - 2.5 * R) + 1.0;
        else if (isCode(e, -98.0))
            S += c * (CP0K(icomp, T) - R) * diluteViscosity(icomp, T);
        else if (isCode(e, -97.0))
            S += c * diluteViscosity(icomp, T);
        else if (isCode(e, -96.0))
            S = (S * (CP0K(icomp, T) / R - 2.5) + 3.75) * R * diluteViscosity(icomp, T) / fluidConstants.WMAS[icomp];
    }
    if (s.NDGDEN > 0) {
        double under = 0.0;
        for (int k = s.NDGNUM; k < s.NDGNUM + s.NDGDEN; ++k) under += s.CTCX[k].c * power(tau, s.CTCX[k].t);
        S /= under;
    }
    return S * s.TCXDGT;
}

double TCX1BK(int icomp, double T, double D) {
    const ConductivitySlot& s = conductivityTerms[icomp];
    if (s.NBKNUM + s.NBKDEN <= 0) return 0.0;
    const double tau = T / s.TRDBKT, del = D / s.DRDBKT;
    const TransportTerm* row = s.CTCX + s.NDGNUM + s.NDGDEN;
    double S = 0.0;
    for (const TransportTerm* end = row + s.NBKNUM; row != end; ++row) {
        if (row->e < -90.0) {
            if (!isCode(row->e, -99.0) || T >= s.TRDBKT || D >= s.DRDBKT) continue;
            const double u = std::cbrt(1.0 - T / s.TRDBKT);
            S /= std::exp(-1.880284 * std::pow(u, 1.062) - 2.8526531 * power(u, 2.5) - 3.000648 * power(u, 4.5) -
                          5.251169 * power(u, 7.5) - 13.191869 * power(u, 12.5) - 37.553961 * power(u, 23.5));
            continue;
        }
        double term = row->c * power(tau, row->t) * power(del, row->d);
        if (std::fabs(row->e) > 1e-20) term *= std::exp(-power(del, row->e));
        S += term;
    }
    if (s.NBKDEN > 0) {
        double under = 0.0;
        if (del > 0.0)
            for (const TransportTerm* end = row + s.NBKDEN; row != end; ++row)
                under += row->c * power(tau, row->t) * power(del, row->d);
        if (std::fabs(under) > 1e-20) S /= under;
    }
    return S * s.TCXBKT;
}

// ------------------------------------------------------------------------------------------------------ TC2, TC3

double TCX2DG(int icomp, double T) {
    const FromOne<TransportTerm> c{conductivityTerms[icomp].CTCX};
    if (c[1].c == 0.0) return 0.0;
    const double eta0 = c[3].c * std::sqrt(T) / (OMEGA(icomp, T, c[2].c, modelTags.HMDTCX[icomp]) * c[1].c * c[1].c);
    const double R = fluidConstants.R;
    return 0.001 * (eta0 / fluidConstants.WMAS[icomp]) *
           (3.75 * R + (CP0K(icomp, T) - 2.5 * R) * (c[4].c + c[5].c * c[2].c / T));
}

double TCX2BK(int icomp, double T, double D) {
    const FromOne<TransportTerm> c{conductivityTerms[icomp].CTCX};
    const double A = c[6].c + c[7].c / T + c[8].c / (T * T);
    const double B = c[9].c + c[10].c / T + c[11].c / (T * T);
    const double C = c[12].c + c[13].c / T;
    return (A + B * D) * D / (C * D + 1.0);
}

double TCX3DG(int icomp, double T) {
    const FromOne<TransportTerm> c{conductivityTerms[icomp].CTCX};
    if (c[1].c == 0.0) return 0.0;
    const double u = std::cbrt(c[2].c / T);
    double inverse = 0.0;
    for (int i = 4; i <= 12; ++i) inverse += c[i].c * power(u, 7 - i);
    return c[3].c * power(T, c[3].t) / (c[1].c * c[1].c) * inverse;
}

double TCX3BK(int icomp, double T, double D) {
    if (D <= 0.0) return 0.0;
    const FromOne<TransportTerm> c{conductivityTerms[icomp].CTCX};
    const double M = fluidConstants.WMAS[icomp];
    const double spread = c[15].c - std::log(T / c[16].c);
    const double L = D * (c[13].c + c[14].c * spread * spread);

    const double a = c[17].c + c[18].c / T;
    const double s = std::sqrt(D) * (D - c[24].c) / c[24].c;
    const double E = std::exp(a + (c[19].c + c[20].c / (T * std::sqrt(T))) * std::pow(D, 0.1) +
                              (c[21].c + c[22].c / T + c[23].c / (T * T)) * s) -
                     std::exp(a);

    // critical enhancement, none without its coefficient; in units of centimetre, gram and second
    constexpr double N = 6.0225e+23, k = 1.38054e-16;
    const double rho = D * M / 1000.0;
    double dpdD = 0.0, dpdT = 0.0, eta = 0.0, C = 0.0;
    DPDDK(icomp, T, D, dpdD);
    DPDTK(icomp, T, D, dpdT);
    dpdD *= 1e7 / M;
    dpdT *= 1e4;
    if (dpdD >= 0.0 && c[25].c != 0.0) {
        int ierr = 0;
        Text255 herr;
        ETAK(icomp, T, D, eta, ierr, herr);
        const double X = c[25].c * std::sqrt(power(c[26].c, 5.0) * rho * N / M * c[2].c / T);
        const double Y = 18.8495562 * eta * 1e-5 * X * std::sqrt(k * T * rho * N / M);
        C = k * (T * dpdT) * (T * dpdT) / std::sqrt(rho * dpdD) / Y;
    }
    const double d = (D - fluidConstants.DCRIT[icomp]) / fluidConstants.DCRIT[icomp];
    const double t = (T - fluidConstants.TCRIT[icomp]) / fluidConstants.TCRIT[icomp];
    return L + E + C * std::exp(-4.25 * d * d * d * d - 18.66 * t * t) / 1e5;
}

// ----------------------------------------------------------------------------------------------------------- TC5

namespace {

double savedChungDilute = 0.0;  // result of the last TCX5DG

double chungPsi(int icomp, const ConductivitySlot& s, double T) {
    const double Tr = T / (1.2593 * s.EPSCHK);
    double cv = 0.0, cp = 0.0;
    CVCPK(icomp, T, 0.0, cv, cp);
    const double alpha = cv / fluidConstants.R - 1.5;
    const double beta = 0.7862 - 0.7109 * s.ACCHK + 1.3168 * s.ACCHK * s.ACCHK;
    const double z = 10.5 * Tr * Tr + 2.0;
    return 1.0 +
           alpha * (0.28288 * alpha + 0.215 - 1.061 * beta + 0.26665 * z) / (beta * z + 0.6366 + 1.061 * alpha * beta);
}

}  // namespace

double TCX5DG(int icomp, double T) {
    // The gas constant of the method is in use from here on, also in later calls of other models.
    fluidConstants.R = defaultGasConstant;
    const ConductivitySlot& s = conductivityTerms[icomp];
    if (s.EPSCHK <= 0.0) return 0.0;
    savedChungDilute = 3.75 * chungPsi(icomp, s, T) * (diluteViscosity(icomp, T) * 1e-6) * fluidConstants.R /
                       (fluidConstants.WMAS[icomp] / 1000.0);
    return savedChungDilute;
}

double TCX5BK(int icomp, double T, double D) {
    fluidConstants.R = defaultGasConstant;
    const ConductivitySlot& s = conductivityTerms[icomp];
    if (D <= 0.0 || s.EPSCHK <= 0.0) return 0.0;
    const FromOne<double> B{s.CCTCX};
    const double root = 10.0 * s.SIGCHK / 0.809, Vc = root * root * root;
    const double y = D * Vc / 6000.0;
    const double G1 = (1.0 - 0.5 * y) / ((1.0 - y) * (1.0 - y) * (1.0 - y));
    const double G2 = (B[1] * (1.0 - std::exp(-B[4] * y)) / y + B[2] * G1 * std::exp(B[5] * y) + B[3] * G1) /
                      (B[1] * B[4] + B[2] + B[3]);
    const double kilogram = fluidConstants.WMAS[icomp] / 1000.0;
    const double Tc = 1.2593 * s.EPSCHK;
    const double q = 0.003586 * std::sqrt(Tc / kilogram) / (root * root);
    const double eta0 = diluteViscosity(icomp, T) * 1e-6;  // [Pa s]
    const double value = 31.2 * eta0 * chungPsi(icomp, s, T) * (1.0 / G2 + B[6] * y) / kilogram +
                         q * B[7] * y * y * G2 * std::sqrt(T / Tc);
    return value - savedChungDilute;
}

}  // namespace frigana
