#include "CORE_DE_DIELEC.h"

#include <cmath>

#include "CORE_DE.h"
#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "UTILITY.h"

namespace frigana {

namespace {

// DE1: sums in temperature, density and pressure; false where the pressure is negative.
bool pressureForm(const DielectricSlot& slot, int icomp, double t, double rho, double& sum) {
    double pressure;
    PRESS(t, rho, unitComposition(icomp), pressure);
    const double p = pressure / 1000.0 / slot.PREDDE;
    if (p < 0.0) return false;
    const double tr = t / slot.TREDDE;
    const double dr = rho / slot.DREDDE;
    sum = 0.0;
    for (int k = 0; k < slot.count[0] + slot.count[1]; ++k) {
        const DielectricTerm& term = slot.term[k];
        const double value =
            term.DECF * std::pow(tr, term.DEEXPT) * std::pow(dr, term.DEEXPD) * std::pow(p, term.DEEXPP);
        sum += k < slot.count[0] ? value : value * std::log(1.0 + 1.0 / tr);
    }
    return true;
}

// DE2: the dipole correlation factor g, from which the constant follows; 0 below a pole.
double dipoleForm(const DielectricSlot& slot, double t, double rho) {
    constexpr double avogadro = 6.0221367e+23, polarizability = 1.636e-40, dipoleMoment = 6.138e-30,
                     vacuumPermittivity = 8.854187817e-12, boltzmann = 1.380658e-23;
    const double dr = rho / slot.DREDDE;
    double g = 1.0;
    int k = 0;
    for (; k < slot.count[0]; ++k) {
        const DielectricTerm& term = slot.term[k];
        g += term.DECF * std::pow(slot.TREDDE / t, term.DEEXPT) * std::pow(dr, term.DEEXPD);
    }
    for (; k < slot.count[0] + slot.count[1]; ++k) {
        const DielectricTerm& term = slot.term[k];
        const double distance = t / term.DEEXPT - 1.0;
        if (distance <= 0.0) return 0.0;
        g += term.DECF * std::pow(dr, term.DEEXPD) / std::pow(distance, term.DEEXPP);
    }
    const double a = 1000.0 * avogadro * rho * g * dipoleMoment * dipoleMoment / (vacuumPermittivity * boltzmann * t);
    const double b = 1000.0 * avogadro * rho * polarizability / (3.0 * vacuumPermittivity);
    return (a + 1.0 + 5.0 * b + std::sqrt(2.0 * a + 9.0 + 18.0 * b + a * a + 10.0 * a * b + 9.0 * b * b)) /
           (4.0 - 4.0 * b);
}

// DE3, DE4: molar polarization times density.
double polarization(const DielectricSlot& slot, double t, double rho) {
    const double tr = t / slot.TREDDE;
    const double dr = rho / slot.DREDDE;
    const auto factor = [](double distance, double exponent) {
        if (exponent == 0.0) return 1.0;
        return exponent == 1.0 ? distance : std::pow(distance, exponent);
    };
    double sum = 0.0;
    int k = 0;
    for (const int end = slot.count[0]; k < end; ++k)
        sum += slot.term[k].DECF * std::pow(tr, slot.term[k].DEEXPT) * std::pow(dr, slot.term[k].DEEXPD);
    for (const int end = k + slot.count[1]; k < end; ++k)
        sum += slot.term[k].DECF * std::pow(dr, slot.term[k].DEEXPD) * factor(tr - 1.0, slot.term[k].DEEXPT);
    for (const int end = k + slot.count[2]; k < end; ++k)
        sum += slot.term[k].DECF * std::pow(dr, slot.term[k].DEEXPD) * factor(1.0 / tr - 1.0, slot.term[k].DEEXPT);
    return sum;
}

// Dielectric constant of a nonpolar fluid (Clausius, Mossotti) and of a polar one (Kirkwood) from the polarization.
double nonpolar(double s) {
    return (1.0 + 2.0 * s) / (1.0 - s);
}
double polar(double s) {
    return 0.25 * (1.0 + 9.0 * s + 3.0 * std::sqrt(9.0 * s * s + 2.0 * s + 1.0));
}

}  // namespace

void DEK(int icomp, double t, double rho, double& de, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    de = 0.0;
    if (rho < 1e-12) {
        de = 1.0;
        return;
    }
    const DielectricSlot& slot = dielectricTerms[icomp];
    const Text3& tag = modelTags.HDIELK[icomp];
    if (tag == "DE1") {
        double sum;
        if (pressureForm(slot, icomp, t, rho, sum)) de = nonpolar(sum);
    } else if (tag == "DE2") {
        de = dipoleForm(slot, t, rho);
    } else if (tag == "DE3") {
        de = nonpolar(polarization(slot, t, rho));
    } else if (tag == "DE4") {
        de = polar(polarization(slot, t, rho));
    } else {
        ierr = 1;
        de = notComputed;
        message(herr, "[DEK error 1] unknown dielectric constant model:  (", tag, ")", nullCharacter);
        ERRMSG(ierr, herr);
    }
}

void DIELEC(double t, double rho, const Composition& x, double& de) {
    int ierr = 0;
    Text255 herr;
    int pure;
    ISPURE(x, pure);
    if (pure > 0) {
        DEK(pure, t, rho, de, ierr, herr);
        return;
    }
    de = 0.0;
    if (modelTags.HDIELTOP != "DEX" && modelTags.HDIELTOP != "DEM") {
        de = -9999000.0;
        message(herr, "[DIELEC error 99] unknown dielectric constant model:  (", modelTags.HDIELTOP, ")",
                nullCharacter);
        ERRMSG(99, herr);
        return;
    }
    double volume = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) volume += x[i] / fluidConstants.RHOZ[i];
    double q = 0.0;
    for (int i = 1; i <= modelTags.NC; ++i) {
        if (x[i] <= 0.0) continue;
        double component;
        DEK(i, t, rho * volume * fluidConstants.RHOZ[i], component, ierr, herr);
        if (ierr != 0) return;
        if (component == 0.0) return;
        q += x[i] / fluidConstants.RHOZ[i] / volume * ((component - 1.0) * (2.0 * component + 1.0) / 9.0 / component);
    }
    de = polar(q);
}

}  // namespace frigana
