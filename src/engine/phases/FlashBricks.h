// Pieces that the flash routines share: saturated states as one record, averages of two phases, the property that a
// letter names, texts of inner messages.
#pragma once

#include <string_view>

#include "EngineLimits.h"
#include "RootBracket.h"
#include "SilentMessages.h"

namespace frigana {

// Values of q for a state that is not two-phase.
inline constexpr double superheatedVapor = 998;
inline constexpr double subcooledLiquid = -998;
inline constexpr double supercriticalOrNone = 999;  // also: no state because of an error

// What an inner message says, without the blanks and the null character at its end, to be set into an outer one.
std::string_view innerText(const Text255& text);

// The composition itself, or the unit composition of the component that stands alone (icomp > 0).
inline Composition bulkComposition(int icomp, const Composition& z) {
    return icomp > 0 ? unitComposition(icomp) : z;
}

bool isPseudoPure(int icomp);

// Enthalpy, entropy [J/mol, J/(mol K)], energy or pressure [kPa] at a temperature and density, by its letter H, S, E,
// P.
double propertyByLetter(char letter, double T, double D, const Composition& z);

// Thermodynamic properties of one phase [kPa, J/mol, J/(mol K), m/s].
struct PhaseProperties {
    double p, e, h, s, cv, cp, w;
};
PhaseProperties propertiesOf(double T, double D, const Composition& z);

double chosenProperty(char letter, const PhaseProperties& phase);

// A point of the saturation lines with both phases; ierr and herr as SATT and SATP give them.
struct SaturatedPair {
    double T = 0, p = 0, Dl = 0, Dv = 0;
    Composition x{}, y{};
    int ierr = 0;
    Text255 herr;
};
void saturationAtT(double T, const Composition& z, int kph, SaturatedPair& pair);
void saturationAtP(double p, const Composition& z, int kph, SaturatedPair& pair);

// Two-phase compositions between the feed and the incipient phases: x from z at q = 0 to xdew at q = 1, y from ybub to
// z; both with sum 1.
void compositionsAtQuality(double q, const Composition& z, const Composition& xdew, const Composition& ybub,
                           Composition& x, Composition& y);

void normalize(Composition& x);

// Bulk density [mol/L] of two phases; q is the molar share of the vapor.
double bulkDensity(double q, double Dl, double Dv);

// Molar share of the vapor of a bulk density between (or, extrapolated, outside) those of two phases.
double volumeQuality(double D, double Dl, double Dv);

// Code of q for a single phase by its place about the critical point.
double regionQuality(double T, double p, double D, double Tc, double Pc, double Dc);

}  // namespace frigana
