#include "CORE_MLT.h"

#include <cmath>

#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "ReaderReport.h"
#include "UTILITY.h"

namespace frigana {

SlotArray<SolidLineSlot> meltingTerms;
SlotArray<SolidLineSlot> sublimationTerms;

namespace {

constexpr double lowestMeltingWater = 251.165;  // triple point of liquid, ice I and ice III [K]

void readLine(int unit, SolidLineSlot& line, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    SolidLineSlot read{};
    if (!readRecord(unit, "lower temperature limit", ierr, herr, read.tmin)) return;
    if (!readRecord(unit, "upper temperature limit", ierr, herr, read.tmax)) return;
    if (!skipLines(unit, 2, ierr, herr)) return;
    if (!readRecord(unit, "reducing temperature and pressure", ierr, herr, read.tred, read.pred)) return;
    if (!readRecord(unit, "six numbers of terms", ierr, herr, read.count[0], read.count[1], read.count[2],
                    read.count[3], read.count[4], read.count[5]))
        return;
    int total = 0;
    for (int family = 0; family < 3; ++family) {
        if (!countFits(unit, "number of terms", read.count[family], mostMeltingTerms - total, ierr, herr)) return;
        total += read.count[family];
    }
    for (int k = 0; k < total; ++k)
        if (!readRecord(unit, "coefficient and exponent", ierr, herr, read.coefficient[k], read.exponent[k])) return;
    line = read;
}

// A fractional power is not defined below its origin, where the line ends: such a term drops out there.
double power(double base, double exponent) {
    if (base < 0.0 && exponent != std::floor(exponent)) return 0.0;
    return std::pow(base, exponent);
}

// Sum of the three families in Tr, `distance` (Tr - 1 or 1 - Tr) and ln Tr.
double lineSum(const SolidLineSlot& line, double reducedTemperature, double distance) {
    double sum = 0.0;
    int k = 0;
    for (const int end = line.count[0]; k < end; ++k)
        sum += line.coefficient[k] * power(reducedTemperature, line.exponent[k]);
    for (const int end = k + line.count[1]; k < end; ++k)
        sum += line.coefficient[k] * power(distance, line.exponent[k]);
    const double logarithm = line.count[2] > 0 ? std::log(reducedTemperature) : 0.0;
    for (const int end = k + line.count[2]; k < end; ++k)
        sum += line.coefficient[k] * power(logarithm, line.exponent[k]);
    return sum;
}

}  // namespace

void SETMLT(int iunit, int icomp, int& ierr, Text255& herr) {
    readLine(iunit, meltingTerms[icomp], ierr, herr);
}

void SETSBL(int iunit, int icomp, int& ierr, Text255& herr) {
    readLine(iunit, sublimationTerms[icomp], ierr, herr);
}

void MELTK(int icomp, double t, double& p, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    p = 0.0;
    const Text3& tag = modelTags.HMELTK[icomp];
    const double lowest = tag == "MLW" ? lowestMeltingWater : fluidConstants.TTPN[icomp];
    if (t < lowest) {
        ierr = 1;
        message(herr, "[MELTK error 1] temperature less than lower temperature limit; T =", FixedPoint{12, 5, t},
                " K, Tlow =", FixedPoint{12, 5, lowest}, " K.", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    if (tag == "MLW") {
        double iceOne;
        MLTH2O(t, p, iceOne);
    } else if (tag == "MLP") {
        MLTPH2(icomp, t, p);
    } else if (tag.startsWith("ML")) {
        const SolidLineSlot& line = meltingTerms[icomp];
        const double reducedTemperature = t / line.tred;
        const double sum = lineSum(line, reducedTemperature, reducedTemperature - 1.0);
        if (tag == "ML1")
            p = line.pred * sum;
        else if (tag == "ML2")
            p = line.pred * std::exp(sum);
        else
            p = sum;
    } else if (tag != "NBS") {
        ierr = 105;
        message(herr, "[MELTK error 105] unknown melting line model:  (", tag, ")", nullCharacter);
        ERRMSG(ierr, herr);
    }
}

void SUBLK(int icomp, double t, double& p, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    p = 0.0;
    const Text3& tag = modelTags.HSUBLK[icomp];
    const double triplePoint = fluidConstants.TTPN[icomp];
    if (t <= 0.0) {
        ierr = 15;
        message(herr, "[SUBLK error 15] temperature less than zero; T =", FixedPoint{12, 5, t}, " K", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    if (t > triplePoint) {
        ierr = 15;
        message(herr, "[SUBLK error 15] temperature greater than triple point temperature; T =", FixedPoint{12, 5, t},
                " K, Ttp =", FixedPoint{12, 5, triplePoint}, " K.", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    if (tag == "NBS") return;
    const SolidLineSlot& line = sublimationTerms[icomp];
    constexpr double largestExponent = 200.0;
    if (tag.startsWith("SB")) {
        const double reducedTemperature = t / line.tred;
        const double sum = lineSum(line, reducedTemperature, 1.0 - reducedTemperature);
        if (tag == "SB1")
            p = line.pred * sum;
        else if (tag != "SB2" && tag != "SB3")
            p = sum;
        else if (sum < largestExponent)
            p = line.pred * std::exp(tag == "SB2" ? sum : sum * line.tred / t);
    } else {
        ierr = 105;
        message(herr, "[SUBLK error 105] unknown sublimation line model:  (", tag, ")", nullCharacter);
        ERRMSG(ierr, herr);
    }
}

void MLTH2O(double t, double& p1, double& p2) {
    constexpr double endIceThree = 256.164, endIceFive = 273.31, endIceSix = 355.0, endIceSeven = 637.8;
    p1 = 0.0;
    p2 = 0.0;
    if (t < lowestMeltingWater) return;
    if (t <= 273.1600000001) {
        const double theta = t / 273.16;
        p2 = 0.611657 * (1.0 + 1195393.37 * (1.0 - std::pow(theta, 3.0)) + 80818.3159 * (1.0 - std::pow(theta, 25.75)) +
                         3338.2686 * (1.0 - std::pow(theta, 103.75)));
    }
    if (t < endIceThree) {
        p1 = 208566.0 * (1.0 - 0.299948 * (1.0 - std::pow(t / lowestMeltingWater, 60.0)));
    } else if (t < endIceFive) {
        p1 = 350100.0 * (1.0 - 1.18721 * (1.0 - std::pow(t / endIceThree, 8.0)));
    } else if (t < endIceSix) {
        p1 = 632400.0 * (1.0 - 1.07476 * (1.0 - std::pow(t / endIceFive, 4.6)));
    } else if (t < endIceSeven) {
        const double theta = t / endIceSix;
        p1 = 2216000.0 * std::exp(1.73683 * (1.0 - 1.0 / theta) - 0.0544606 * (1.0 - std::pow(theta, 5.0)) +
                                  8.06106e-08 * (1.0 - std::pow(theta, 22.0)));
    } else {
        p1 = 1000.0 * std::exp(0.00805246 * t + 4.27074);
    }
}

void MLTPH2(int icomp, double t, double& p) {
    const SolidLineSlot& line = meltingTerms[icomp];
    const int first = t > 22.0 ? 0 : 2;
    p = line.pred *
        (line.coefficient[first] + line.coefficient[first + 1] * std::pow(t / line.tred, line.exponent[first]));
}

}  // namespace frigana
