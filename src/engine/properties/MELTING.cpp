#include "MELTING.h"

#include <algorithm>
#include <cmath>

#include "CORE_MLT.h"
#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "UTILITY.h"

namespace frigana {

namespace {

double meanTriplePoint(const Composition& x) {
    double mean = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) mean += x[i] * fluidConstants.TTPN[i];
    return mean;
}

// Exponent of the mean logarithm of the triple point pressures; false where one of them is not known.
bool meanTriplePressure(const Composition& x, double& mean) {
    double sum = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (fluidConstants.PTPN[i] < 1e-15) return false;
        sum += x[i] * std::log(fluidConstants.PTPN[i]);
    }
    mean = std::exp(sum);
    return true;
}

}  // namespace

void MELTT(double t, const Composition& x, double& p, int& ierr, Text255& herr) {
    int pure;
    ISPURE(x, pure);
    if (pure > 0) {
        MELTK(pure, t, p, ierr, herr);
        return;
    }
    ierr = 0;
    herr.clear();
    p = 0.0;
    double reference;
    if (!meanTriplePressure(x, reference)) return;
    const double mean = meanTriplePoint(x);
    double sum = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        const double triplePoint = fluidConstants.TTPN[i];
        double component;
        MELTK(i, std::max(t / mean * triplePoint, triplePoint), component, ierr, herr);
        if (component < 1e-15) return;
        sum += x[i] * std::log(component / fluidConstants.PTPN[i]);
    }
    p = reference * std::exp(sum);
}

void SUBLT(double t, const Composition& x, double& p, int& ierr, Text255& herr) {
    int pure;
    ISPURE(x, pure);
    if (pure > 0) {
        SUBLK(pure, t, p, ierr, herr);
        return;
    }
    ierr = 0;
    herr.clear();
    p = 0.0;
    double reference;
    if (!meanTriplePressure(x, reference)) return;
    const double mean = meanTriplePoint(x);
    double sum = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        double component;
        SUBLK(i, t / mean * fluidConstants.TTPN[i], component, ierr, herr);
        if (component > 0.0) sum += x[i] * std::log(component / fluidConstants.PTPN[i]);
    }
    p = reference * std::exp(sum);
}

void MELTP(double p, const Composition& x, double& t, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    int pure;
    ISPURE(x, pure);
    if (pure > 0) {
        const double triplePressure = fluidConstants.PTPN[pure];
        t = fluidConstants.TTPN[pure];
        if (modelTags.HMELTK[pure] == "NBS") return;
        if (p < triplePressure) {
            ierr = 2;
            message(herr,
                    "[MELTP error 2] pressure less than triple point pressure; P =", FixedPoint{12, 5, p / 1000.0},
                    " MPa, Ptp =", FixedPoint{12, 5, triplePressure / 1000.0}, " MPa.", nullCharacter);
            ERRMSG(ierr, herr);
            return;
        }
    }
    SOLVEM(1, p, x, t, ierr, herr);
}

void SUBLP(double p, const Composition& x, double& t, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    t = 300.0;
    if (p <= 0.0) return;
    int pure;
    ISPURE(x, pure);
    if (pure > 0 && p > fluidConstants.PTPN[pure]) {
        t = fluidConstants.TTPN[pure];
        ierr = 2;
        message(herr, "[MELTP error 2] pressure greater than triple point pressure; P =", FixedPoint{12, 5, p / 1000.0},
                " MPa, Ptp =", FixedPoint{12, 5, fluidConstants.PTPN[pure] / 1000.0}, " MPa.", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    SOLVEM(2, p, x, t, ierr, herr);
}

void SOLVEM(int mode, double p, const Composition& x, double& t, int& ierr, Text255& herr) {
    // [kPa]; relative for the small pressures of sublimation, which an absolute one would not tell apart
    const double tolerance = mode == 2 ? 5e-9 * std::min(p, 1.0) : 5e-9;
    constexpr int mostIterations = 100;
    ierr = 0;
    herr.clear();
    int pure;
    ISPURE(x, pure);
    const bool melting = mode == 1;
    // the line starts at the edge and is followed in one direction
    double edge = pure > 0 ? fluidConstants.TTPN[pure] : meanTriplePoint(x);
    double direction = melting ? 1.0 : -1.0;
    bool iceOne = false;
    if (melting && pure > 0 && modelTags.HMELTK[pure] == "MLW") {
        constexpr double lowestWater = 251.165, triplePointWater = 273.16;
        double densest, lightest;
        MLTH2O(lowestWater, densest, lightest);
        iceOne = p <= densest;
        edge = iceOne ? triplePointWater : lowestWater;
        if (iceOne) direction = -1.0;
    }
    const auto line = [&](double temperature) {
        double value, other;
        if (iceOne) {
            MLTH2O(temperature, other, value);
        } else if (melting) {
            MELTT(temperature, x, value, ierr, herr);
        } else {
            SUBLT(temperature, x, value, ierr, herr);
        }
        return value;
    };

    // a fit meets the pressure of the triple point to its own accuracy: below its first value there is only that point
    if (melting && !iceOne) {
        double triplePressure = pure > 0 ? fluidConstants.PTPN[pure] : 0.0;
        if (pure == 0) meanTriplePressure(x, triplePressure);
        if (p >= triplePressure && p <= line(edge)) {
            t = edge;
            return;
        }
    }

    double slopeStep = 0.001;
    double step = direction;
    t = edge + direction;
    for (int iteration = 1; iteration <= mostIterations; ++iteration) {
        const double last = t;
        // close to the edge the pressure changes by orders of magnitude over the usual step
        const double h = direction * std::min(slopeStep, std::fabs(t - edge));
        const double f1 = line(t);
        const double f2 = line(t + h);
        if (ierr == 0 && std::fabs(p - f1) < tolerance) return;
        if (f1 <= 0.0 || f2 <= 0.0 || f1 == f2) {
            t -= 0.5 * step;
            slopeStep *= 0.5;
        } else {
            step = (std::log(p) - std::log(f1)) / ((std::log(f2) - std::log(f1)) / h);
            t += step;
        }
        if ((t - edge) * direction < 0.0) t = 0.5 * (last + edge);
        if (t <= 0.0) t = 0.5 * last;
        // the nearest temperature that can be told apart: closer pressures do not exist
        if (f1 > 0.0 && t == last && std::fabs(p - f1) < 1e-9 * p) return;
    }
    ierr = 124;
    t = notComputed;
    message(herr, "[SOLVEM error 124] maximum number of iterations exceeded", nullCharacter);
    ERRMSG(ierr, herr);
}

}  // namespace frigana
