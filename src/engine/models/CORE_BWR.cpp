#include "CORE_BWR.h"

#include <cmath>
#include <cstdint>

#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "ReaderReport.h"
#include "UTILITY.h"

namespace frigana {

SlotArray<BwrSlot> bwrTerms;

namespace {

constexpr double perBar = 100.0;  // kPa, and J of one L bar

// The coefficient functions of density: eight powers, then six powers with the exponential. Power n of rho in the
// pressure; with the exponential n = 2 m + 3.
constexpr int powerCount = 8, groupCount = 14;

// The powers of temperature that occur.
constexpr int exponentCount = 7;
constexpr double exponents[exponentCount] = {1.0, 0.5, 0.0, -1.0, -2.0, -3.0, -4.0};
enum : std::uint8_t { t1, tHalf, t0, tM1, tM2, tM3, tM4 };

// Where each of the 32 coefficients belongs, and its power of temperature.
struct Place {
    std::uint8_t group, power;
};
constexpr Place places[32] = {
    {0, t1},   {0, tHalf}, {0, t0},   {0, tM1},  {0, tM2},              // rho^2
    {1, t1},   {1, t0},    {1, tM1},  {1, tM2},                         // rho^3
    {2, t1},   {2, t0},    {2, tM1},                                    // rho^4
    {3, t0},                                                            // rho^5
    {4, tM1},  {4, tM2},                                                // rho^6
    {5, tM1},                                                           // rho^7
    {6, tM1},  {6, tM2},                                                // rho^8
    {7, tM2},                                                           // rho^9
    {8, tM2},  {8, tM3},   {9, tM2},  {9, tM4},  {10, tM2}, {10, tM3},  // with the exponential, rho^3, 5, 7
    {11, tM2}, {11, tM4},  {12, tM2}, {12, tM3},                        // ... rho^9, 11
    {13, tM2}, {13, tM3},  {13, tM4},                                   // ... rho^13
};

double coefficients[groupCount];
double shapes[groupCount];

// x (x - 1) ... , n factors.
constexpr double falling(double x, int n) {
    double product = 1.0;
    for (int i = 0; i < n; ++i) product *= x - i;
    return product;
}

// The coefficient functions with each power of temperature T^e taken times the factor of its exponent.
template <class Factor>
void sumCoefficients(const BwrSlot& slot, double t, Factor factorOf) {
    const double u = 1.0 / t;
    double powers[exponentCount] = {t, std::sqrt(t), 1.0, u, u * u, u * u * u, u * u * u * u};
    for (int e = 0; e < exponentCount; ++e) powers[e] *= factorOf(exponents[e]);
    for (double& sum : coefficients) sum = 0.0;
    for (int k = 0; k < 32; ++k) coefficients[places[k].group] += slot.BBWR[k + 1] * powers[places[k].power];
}

// The coefficient functions, or their derivatives of the given order in temperature.
void temperatureDerivatives(const BwrSlot& slot, double t, int order) {
    double scale = 1.0;
    for (int i = 0; i < order; ++i) scale /= t;
    sumCoefficients(slot, t, [=](double exponent) { return scale * falling(exponent, order); });
}

// tau^n d^n/dtau^n of the coefficient functions over R T.
void tauDerivatives(const BwrSlot& slot, double t, int order) {
    const double scale = 1.0 / (slot.RBWR * t);
    sumCoefficients(slot, t, [=](double exponent) { return scale * falling(1.0 - exponent, order); });
}

// Integral of y^m exp(-y) from 0 to y, for y = (rho/gamma)^2. The series keeps its digits where the closed form is a
// small difference of large numbers.
double incompleteGamma(int m, double y, double exponential) {
    if (y < 2.0) {
        double term = 1.0 / (m + 1);
        double sum = term;
        for (int k = 1; k < 60; ++k) {
            term *= y / (m + 1 + k);
            sum += term;
            if (term < 1e-17 * sum) break;
        }
        double power = y;
        for (int k = 0; k < m; ++k) power *= y;
        return power * exponential * sum;
    }
    double factorial = 1.0, term = 1.0, sum = 1.0;
    for (int k = 1; k <= m; ++k) {
        factorial *= k;
        term *= y / k;
        sum += term;
    }
    return factorial * (1.0 - exponential * sum);
}

// Density parts of the Helmholtz energy: rho^n d^n/drho^n of the integrals of rho^(power - 2), with the exponential or
// without.
void densityShapes(const BwrSlot& slot, double rho, int order) {
    double power = 1.0;
    for (int g = 0; g < powerCount; ++g) {
        power *= rho;
        const int n = g + 1;  // the integral of rho^(n - 1) is rho^n / n
        shapes[g] = order == 0 ? power / n : power * falling(n - 1, order - 1);
    }
    const double y = (rho / slot.GAMMAB) * (rho / slot.GAMMAB);
    const double exponential = std::exp(-y);
    const double gammaSquared = slot.GAMMAB * slot.GAMMAB;
    double scale = 1.0, argument = exponential;
    for (int m = 0; m < groupCount - powerCount; ++m) {
        scale *= gammaSquared;
        argument *= rho * rho;  // rho times the integrand rho^(2 m + 1) exp(-y)
        const double first = 2 * m + 1 - 2.0 * y;
        double& shape = shapes[powerCount + m];
        switch (order) {
            case 0:
                shape = 0.5 * scale * incompleteGamma(m, y, exponential);
                break;
            case 1:
                shape = argument;
                break;
            case 2:
                shape = argument * first;
                break;
            default:
                shape = argument * (first * (first - 1.0) - 4.0 * y);
                break;
        }
    }
}

double sumOfGroups() {
    double sum = 0.0;
    for (int g = 0; g < groupCount; ++g) sum += coefficients[g] * shapes[g];
    return sum;
}

// Helmholtz energy of the coefficients beyond R T rho [L bar/mol], derived in temperature and (times powers of rho) in
// density.
double energy(const BwrSlot& slot, double t, double rho, int temperatureOrder, int densityOrder) {
    temperatureDerivatives(slot, t, temperatureOrder);
    densityShapes(slot, rho, densityOrder);
    return sumOfGroups();
}

}  // namespace

// P = rho^2 dA/drho for every term but the first.
double PBWR(int icomp, double t, double rho) {
    if (t <= 0.0) return 0.0;
    const BwrSlot& slot = bwrTerms[icomp];
    return perBar * rho * (slot.RBWR * t + energy(slot, t, rho, 0, 1));
}

double ABWR(int icomp, double t, double rho) {
    if (t <= 0.0) return 0.0;
    return perBar * energy(bwrTerms[icomp], t, rho, 0, 0);
}

double DABWR(int icomp, double t, double rho) {
    if (t <= 0.0) return 0.0;
    return perBar * energy(bwrTerms[icomp], t, rho, 1, 0);
}

double D2ABWR(int icomp, double t, double rho) {
    if (t <= 0.0) return 0.0;
    return perBar * energy(bwrTerms[icomp], t, rho, 2, 0);
}

double DPDBWR(int icomp, double t, double rho) {
    if (t <= 0.0) return 0.0;
    const BwrSlot& slot = bwrTerms[icomp];
    const double first = energy(slot, t, rho, 0, 1);
    return perBar * (slot.RBWR * t + 2.0 * first + energy(slot, t, rho, 0, 2));
}

double D2PBWR(int icomp, double t, double rho) {
    if (t <= 0.0) return 0.0;
    const BwrSlot& slot = bwrTerms[icomp];
    if (rho == 0.0) {
        temperatureDerivatives(slot, t, 0);
        return 2.0 * perBar * coefficients[0];
    }
    const double first = energy(slot, t, rho, 0, 1);
    const double second = energy(slot, t, rho, 0, 2);
    return perBar * (2.0 * first + 4.0 * second + energy(slot, t, rho, 0, 3)) / rho;
}

double DPTBWR(int icomp, double t, double rho) {
    if (t <= 0.0) return 0.0;
    const BwrSlot& slot = bwrTerms[icomp];
    return perBar * rho * (slot.RBWR + energy(slot, t, rho, 1, 1));
}

// With R the constant of the equation: phi(0,0) = A/(R T), phi(0,1) = P/(R T rho) - 1, phi(1,0) = (A/T - dA/dT)/R,
// phi(2,0) = T d2A/dT2 / R, phi(1,1) = (P/T - dP/dT)/(R rho), and so on.
double PHIBWR(int icomp, int itau, int idel, double tau, double del) {
    if (del <= 1e-10 || tau <= 0.0) return 0.0;
    if (itau < 0 || idel < 0 || itau > 3 || idel > 3) return 0.0;
    const BwrSlot& slot = bwrTerms[icomp];
    tauDerivatives(slot, fluidConstants.TZ[icomp] / tau, itau);
    densityShapes(slot, fluidConstants.RHOZ[icomp] * del, idel);
    return sumOfGroups();
}

void CRTBWR(int icomp, double& tc, double& pc, double& rhoc) {
    tc = bwrTerms[icomp].TCBWR;
    pc = perBar * bwrTerms[icomp].PCBWR;
    rhoc = bwrTerms[icomp].RHOCB;
}

void SETBWR(int iunit, int icomp, [[maybe_unused]] const Text12& hcasn, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    if (iunit <= 0) {
        ierr = 1;
        message(herr, "[SETBWR error] Fluid input to SETBWR not found", nullCharacter);
        return;
    }
    BwrSlot read{};
    Text3 heatCapacity;
    double dmax, molarMass, triplePoint, boilingPoint, acentric, pc, tred, dred;
    int unused, alsoUnused;
    if (!readRecord(iunit, "lower temperature limit", ierr, herr, read.TTRB)) return;
    if (!readRecord(iunit, "upper temperature limit", ierr, herr, read.TMAXB)) return;
    if (!readRecord(iunit, "upper pressure limit", ierr, herr, read.PMAXB)) return;
    if (!readRecord(iunit, "maximum density", ierr, herr, dmax)) return;
    if (!readTextLine(iunit, "pointer to the ideal-gas block", ierr, herr, heatCapacity)) return;
    if (!readRecord(iunit, "molar mass", ierr, herr, molarMass)) return;
    if (!readRecord(iunit, "triple point temperature", ierr, herr, triplePoint)) return;
    if (!readRecord(iunit, "pressure at the triple point", ierr, herr, read.PTRB)) return;
    if (!readRecord(iunit, "density at the triple point", ierr, herr, read.RHOTRB)) return;
    if (!readRecord(iunit, "normal boiling point", ierr, herr, boilingPoint)) return;
    if (!readRecord(iunit, "acentric factor", ierr, herr, acentric)) return;
    if (!readRecord(iunit, "critical point", ierr, herr, read.TCBWR, pc, read.RHOCB)) return;
    if (!readRecord(iunit, "reducing temperature and density", ierr, herr, tred, dred)) return;
    if (!readPositive(iunit, "positive density of the exponential", ierr, herr, read.GAMMAB)) return;
    if (!readPositive(iunit, "positive gas constant", ierr, herr, read.RBWR)) return;
    if (!readRecord(iunit, "two counts", ierr, herr, unused, alsoUnused)) return;
    auto& b = read.BBWR;
    for (int k = 1; k <= 28; k += 3)
        if (!readRecord(iunit, "three coefficients", ierr, herr, b[k], b[k + 1], b[k + 2])) return;
    if (!readRecord(iunit, "two coefficients", ierr, herr, b[31], b[32])) return;
    read.PCBWR = pc / perBar;
    bwrTerms[icomp] = read;

    FluidConstants& fluid = fluidConstants;
    modelTags.HMODCP[icomp] = heatCapacity;
    fluid.TMEOS[icomp] = read.TTRB;
    fluid.TXEOS[icomp] = read.TMAXB;
    fluid.PEOS[icomp] = read.PMAXB;
    fluid.DEOS[icomp] = dmax;
    fluid.WMAS[icomp] = molarMass;
    fluid.TTPN[icomp] = triplePoint;
    fluid.PTPN[icomp] = read.PTRB;
    fluid.DTPN[icomp] = read.RHOTRB;
    fluid.DTPV[icomp] = fluid.DNBPL[icomp] = fluid.DNBPV[icomp] = 0.0;
    fluid.TNBP[icomp] = boilingPoint;
    fluid.ACCEN[icomp] = acentric;
    fluid.TCRIT[icomp] = read.TCBWR;
    fluid.PCRIT[icomp] = pc;
    fluid.DCRIT[icomp] = read.RHOCB;
    fluid.REOS[icomp] = perBar * read.RBWR;
    const double product = fluid.REOS[icomp] * read.TCBWR * read.RHOCB;
    fluid.ZCRIT[icomp] = product > 0.0 ? pc / product : 0.0;
    fluid.TZ[icomp] = tred;
    fluid.RHOZ[icomp] = dred;
    if (modelTags.NC == 1 && icomp == 1) fluid.R = fluid.REOS[icomp];

    constexpr double sameValue = 0.0001;
    if (std::fabs(tred - read.TCBWR) > sameValue) {
        ierr = -104;
        message(herr,
                "[SETUP warning 104] error in specification of BWR model:  reducing temperature not equal to critical "
                "temperature; T_red = ",
                FixedPoint{12, 5, tred}, " K; T_crit = ", FixedPoint{12, 5, read.TCBWR}, nullCharacter);
        ERRMSG(ierr, herr);
    }
    if (std::fabs(dred - read.RHOCB) > sameValue) {
        ierr = -104;
        message(herr,
                "[SETUP warning 104] error in specification of BWR model:  reducing density not equal to critical "
                "density; rho_red = ",
                FixedPoint{12, 5, dred}, " mol/L; rho_crit = ", FixedPoint{12, 5, read.RHOCB}, nullCharacter);
        ERRMSG(ierr, herr);
    }
}

}  // namespace frigana
