#include "CORE_ANC.h"

#include <algorithm>
#include <cmath>

#include "Exponentials.h"
#include "FluidConstants.h"
#include "ModelTags.h"
#include "ReaderReport.h"
#include "UTILITY.h"

namespace frigana {

SlotArray<AncSlot> ancTerms{};

namespace {

// One of the four equations of a slot with what its messages say.
struct Line {
    char first, second;  // letters of the tag
    const Text3& tag;
    double tmin, reducingT, reducingValue;
    int count;
    const AncTermArray &a, &e;
    bool pressure;
    std::string_view unavailable;  // routine and text of code 2
    std::string_view what;         // what code 100 does not know
};

Line vaporPressure(int i) {
    const AncSlot& s = ancTerms[i];
    return {'P',
            'S',
            modelTags.HPSK[i],
            s.PSTMIN,
            s.PSTRD,
            s.PSPRD,
            s.NPS[1],
            s.PSKA,
            s.PSEXP,
            true,
            "[PSATK error 2] vapor pressure equation not available",
            "unknown vapor pressure equation:  ("};
}
Line liquidPressure(int i) {
    const AncSlot& s = ancTerms[i];
    return {'P',
            'L',
            modelTags.HPLK[i],
            s.PLTMIN,
            s.PLTRD,
            s.PLPRD,
            s.NPL[1],
            s.PLKA,
            s.PLEXP,
            true,
            "[PLSATK error 2] vapor pressure equation not available",
            "unknown liquid pressure equation:  ("};
}
Line liquidDensity(int i) {
    const AncSlot& s = ancTerms[i];
    return {'D',
            'L',
            modelTags.HDLK[i],
            s.DLTMIN,
            s.DLTRD,
            s.DLDRD,
            s.NDL[1],
            s.DLKA,
            s.DLEXP,
            false,
            "[DLSATK error 2] liquid density equation not available",
            "unknown saturated liquid density equation:  ("};
}
Line vaporDensity(int i) {
    const AncSlot& s = ancTerms[i];
    // the text of code 2 is that of the liquid, word for word
    return {'D',
            'V',
            modelTags.HDVK[i],
            s.DVTMIN,
            s.DVTRD,
            s.DVDRD,
            s.NDV[1],
            s.DVKA,
            s.DVEXP,
            false,
            "[DLSATK error 2] liquid density equation not available",
            "unknown saturated vapor density equation:  ("};
}

// Type of the equation; 0 for a tag of another kind.
int equationType(const Line& line) {
    if (line.tag[1] != line.first || line.tag[2] != line.second) return 0;
    const int n = line.tag[3] - '0';
    return n >= 0 && n <= 9 ? n : 0;
}

// True where the equation serves; otherwise the value to answer with, the code and the text.
bool serves(const Line& line, std::string_view routine, int icomp, double t, double& value, int& ierr, Text255& herr) {
    const FluidConstants& c = fluidConstants;
    ierr = 0;
    herr.clear();
    if (t < line.tmin) {
        value = line.pressure ? c.PTPN[icomp] : c.DTPN[icomp];
        ierr = 1;
        message(herr, "[", routine,
                " error 1] temperature less than triple point temperature; T =", FixedPoint{12, 5, t},
                " K, Ttp =", FixedPoint{12, 5, c.TTPN[icomp]}, " K.", nullCharacter);
    } else if (t > c.TCRIT[icomp]) {
        value = line.pressure ? c.PCRIT[icomp] : c.DCRIT[icomp];
        ierr = 121;
        message(herr, "[", routine,
                " error 121] temperature greater than critical temperature; T =", FixedPoint{12, 5, t},
                " K, Tc =", FixedPoint{12, 5, c.TCRIT[icomp]}, " K.", nullCharacter);
    } else if (line.tag == "NBS") {
        value = line.pressure ? c.PCRIT[icomp] : c.DCRIT[icomp];
        ierr = 2;
        message(herr, line.unavailable, nullCharacter);
    } else if (equationType(line) == 0) {
        value = 0.0;
        ierr = 100;
        message(herr, "[", routine, " error 100] ", line.what, line.tag, ")", nullCharacter);
    } else {
        return true;
    }
    ERRMSG(ierr, herr);
    return false;
}

double evaluate(const Line& line, double t) {
    const int n = equationType(line);
    double theta = std::fabs(1.0 - t / line.reducingT);
    if (n % 2 == 0) theta = line.pressure ? std::sqrt(theta) : std::cbrt(theta);
    double sum = 0.0;
    for (int k = 1; k <= line.count; ++k) sum += line.a[k] * std::pow(theta, line.e[k]);
    if (n <= 2)
        sum += 1.0;
    else if (n <= 4)
        sum = std::exp(sum);
    else if (n <= 6)
        sum = std::exp(line.reducingT / t * sum);
    return line.reducingValue * sum;
}

// The sum S of a pressure equation and its derivatives in temperature.
struct Sum {
    double value, first, second;
};
Sum differentiate(const Line& line, double t) {
    const bool root = equationType(line) % 2 == 0;
    const double tr = line.reducingT;
    const double x = std::fabs(1.0 - t / tr);
    Sum s{};
    for (int k = 1; k <= line.count; ++k) {
        const double a = line.a[k], e = root ? line.e[k] / 2.0 : line.e[k];  // theta^e is x^(e/2) for a root
        s.value += a * std::pow(x, e);
        // a vanishing factor is left out: its power is infinite at the critical point
        if (e != 0.0) s.first -= e * a * std::pow(x, e - 1.0) / tr;
        if (e != 0.0 && e != 1.0) s.second += e * (e - 1.0) * a * std::pow(x, e - 2.0) / (tr * tr);
    }
    return s;
}

void valueOfComponent(const Line& line, std::string_view routine, int icomp, double t, double& value, int& ierr,
                      Text255& herr) {
    if (serves(line, routine, icomp, t, value, ierr, herr)) value = evaluate(line, t);
}

// The sum S and its derivative in ln x, x = 1 - t/Tr, all powers by one logarithm.
struct PlainSum {
    double value, slope;
};
PlainSum plainSum(const Line& line, double x) {
    constexpr double smallestExponent = -600.0;
    const double root = equationType(line) % 2 != 0 ? 1.0 : line.pressure ? 0.5 : 1.0 / 3.0;
    const double lnTheta = root * std::log(x);
    double exponents[largestAncTerms], powers[largestAncTerms];
    for (int k = 1; k <= line.count; ++k) exponents[k - 1] = std::max(line.e[k] * lnTheta, smallestExponent);
    exponentials(exponents, powers, line.count);
    PlainSum s{0.0, 0.0};
    for (int k = 1; k <= line.count; ++k) {
        const double term = line.a[k] * powers[k - 1];
        s.value += term;
        s.slope += root * line.e[k] * term;
    }
    return s;
}

// True where an equation can be used without codes: inside its range and not at the very end of it.
bool servesPlainly(const Line& line, double t) {
    constexpr double leastDistance = 1e-9;  // [Tr] from the critical point
    return t >= line.tmin && t < line.reducingT * (1.0 - leastDistance) && equationType(line) != 0 && line.count > 0;
}

double plainDensity(const Line& line, double t) {
    const double S = plainSum(line, 1.0 - t / line.reducingT).value;
    const int n = equationType(line);
    if (n <= 2) return line.reducingValue * (1.0 + S);
    if (n <= 4) return line.reducingValue * std::exp(S);
    if (n <= 6) return line.reducingValue * std::exp(line.reducingT / t * S);
    return line.reducingValue * S;
}

template <void (*component)(int, double, double&, int&, Text255&)>
void mean(double t, const Composition& x, double& value, int& ierr, Text255& herr) {
    int pure = 0;
    ISPURE(x, pure);
    if (pure != 0) {
        component(pure, t, value, ierr, herr);
        return;
    }
    value = 0.0;
    ierr = 0;
    herr.clear();
    for (int i = 1; i <= modelTags.NC; ++i) {
        double part = 0.0;
        component(i, t, part, ierr, herr);
        value += x[i] * part;
    }
}

struct Target {
    double &tmin, &tmax, &reducingT, &reducingValue;
    Array1<int, 6>& counts;
    AncTermArray &a, &e;
};

void readLine(int iunit, const Target& line, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    line.counts.fill(0);  // a block that cannot be read leaves no half an equation
    if (iunit <= 0) {
        ierr = 1;
        message(herr, "fluid input not found");
        return;
    }
    Array1<int, 6> n{};
    if (!readRecord(iunit, "lower temperature limit", ierr, herr, line.tmin)) return;
    if (!readRecord(iunit, "upper temperature limit", ierr, herr, line.tmax)) return;
    if (!skipLines(iunit, 2, ierr, herr)) return;
    if (!readRecord(iunit, "reducing temperature and value", ierr, herr, line.reducingT, line.reducingValue)) return;
    if (!readRecord(iunit, "six counts", ierr, herr, n[1], n[2], n[3], n[4], n[5], n[6])) return;
    if (!countFits(iunit, "number of terms", n[1], largestAncTerms, ierr, herr)) return;
    for (int k = 1; k <= n[1]; ++k)
        if (!readRecord(iunit, "coefficient and exponent", ierr, herr, line.a[k], line.e[k])) return;
    line.counts = n;
}

}  // namespace

void SETPS(int iunit, int icomp, int& ierr, Text255& herr) {
    AncSlot& s = ancTerms[icomp];
    readLine(iunit, {s.PSTMIN, s.PSTMAX, s.PSTRD, s.PSPRD, s.NPS, s.PSKA, s.PSEXP}, ierr, herr);
}
void SETPL(int iunit, int icomp, int& ierr, Text255& herr) {
    AncSlot& s = ancTerms[icomp];
    readLine(iunit, {s.PLTMIN, s.PLTMAX, s.PLTRD, s.PLPRD, s.NPL, s.PLKA, s.PLEXP}, ierr, herr);
}
void SETDL(int iunit, int icomp, int& ierr, Text255& herr) {
    AncSlot& s = ancTerms[icomp];
    readLine(iunit, {s.DLTMIN, s.DLTMAX, s.DLTRD, s.DLDRD, s.NDL, s.DLKA, s.DLEXP}, ierr, herr);
}
void SETDV(int iunit, int icomp, int& ierr, Text255& herr) {
    AncSlot& s = ancTerms[icomp];
    readLine(iunit, {s.DVTMIN, s.DVTMAX, s.DVTRD, s.DVDRD, s.NDV, s.DVKA, s.DVEXP}, ierr, herr);
}

void PSATK(int icomp, double t, double& p, int& ierr, Text255& herr) {
    valueOfComponent(vaporPressure(icomp), "PSATK", icomp, t, p, ierr, herr);
}
void PLSATK(int icomp, double t, double& p, int& ierr, Text255& herr) {
    valueOfComponent(liquidPressure(icomp), "PLSATK", icomp, t, p, ierr, herr);
}
void DLSATK(int icomp, double t, double& d, int& ierr, Text255& herr) {
    valueOfComponent(liquidDensity(icomp), "DLSATK", icomp, t, d, ierr, herr);
}
void DVSATK(int icomp, double t, double& d, int& ierr, Text255& herr) {
    valueOfComponent(vaporDensity(icomp), "DVSATK", icomp, t, d, ierr, herr);
}

void DPSATK(int icomp, double t, double& dpdt, int& ierr, Text255& herr) {
    const Line line = vaporPressure(icomp);
    double unused = 0.0;
    dpdt = 0.0;
    if (!serves(line, "DPSATK", icomp, t, unused, ierr, herr)) return;
    const int n = equationType(line);
    const Sum s = differentiate(line, t);
    const double v = line.reducingValue, e = line.reducingT / t;
    if (n == 3 || n == 4)
        dpdt = v * std::exp(s.value) * s.first;
    else if (n == 5 || n == 6)
        dpdt = v * std::exp(e * s.value) * e * (s.first - s.value / t);
    else
        dpdt = v * s.first;
}

void D2PSTK(int icomp, double t, double& d2pdt2, int& ierr, Text255& herr) {
    Line line = vaporPressure(icomp);
    line.unavailable = "[D2PSTK error 2] vapor pressure equation not available";
    double unused = 0.0;
    d2pdt2 = 0.0;
    if (!serves(line, "D2PSTK", icomp, t, unused, ierr, herr)) return;
    const int n = equationType(line);
    const Sum s = differentiate(line, t);
    const double v = line.reducingValue, e = line.reducingT / t;
    if (n == 3 || n == 4) {
        d2pdt2 = v * std::exp(s.value) * (s.second + s.first * s.first);
    } else if (n == 5 || n == 6) {
        // derivatives of ln(p/V) = (Tr/t) S
        const double first = e * (s.first - s.value / t);
        const double second = e * (s.second - 2.0 * s.first / t + 2.0 * s.value / (t * t));
        d2pdt2 = v * std::exp(e * s.value) * (second + first * first);
    } else {
        d2pdt2 = v * s.second;
    }
}

void PSATT(double t, const Composition& x, double& p, int& ierr, Text255& herr) {
    mean<PSATK>(t, x, p, ierr, herr);
}
void PLSATT(double t, const Composition& x, double& p, int& ierr, Text255& herr) {
    mean<PLSATK>(t, x, p, ierr, herr);
}
void DLSATT(double t, const Composition& x, double& d, int& ierr, Text255& herr) {
    mean<DLSATK>(t, x, d, ierr, herr);
}
void DVSATT(double t, const Composition& x, double& d, int& ierr, Text255& herr) {
    mean<DVSATK>(t, x, d, ierr, herr);
}

bool densitiesByAncillaries(int icomp, double t, double& Dl, double& Dv) {
    const Line liquid = liquidDensity(icomp), vapor = vaporDensity(icomp);
    if (!servesPlainly(liquid, t) || !servesPlainly(vapor, t)) return false;
    Dl = plainDensity(liquid, t);
    Dv = plainDensity(vapor, t);
    return true;
}

bool temperatureByAncillary(int icomp, double p, double& t) {
    // Newton's method in Tr/t, over which the logarithm of the pressure is nearly straight
    constexpr int mostSteps = 12;
    constexpr double closeEnough = 1e-4;  // last step of Tr/t; the error after it is of the order of its square
    constexpr double longest = 0.5;       // of the way of Tr/t - 1 that is left
    const Line line = vaporPressure(icomp);
    const int n = equationType(line);
    const double tr = line.reducingT, lnP = std::log(p / line.reducingValue);
    if (n < 3 || n > 6 || !(lnP < 0.0)) return false;  // pressures are given by their logarithm as a rule
    // two thirds of the usual slope of ln p over Tr/t: the start is too cold rather than beyond the critical point
    double tau = 1.0 - lnP / 7.0;
    for (int step = 1; step <= mostSteps; ++step) {
        const double x = 1.0 - 1.0 / tau;
        const PlainSum s = plainSum(line, x);
        const double factor = n <= 4 ? 1.0 : tau;
        // ln x derived in tau is 1/(tau^2 x)
        const double slope = (n <= 4 ? 0.0 : s.value) + factor * s.slope / (tau * tau * x);
        double change = (lnP - factor * s.value) / slope;
        if (!std::isfinite(change)) return false;
        change = std::max(change, -longest * (tau - 1.0));
        tau += change;
        if (std::fabs(change) > closeEnough * (tau - 1.0)) continue;
        t = tr / tau;
        return servesPlainly(line, t);
    }
    return false;
}

}  // namespace frigana
