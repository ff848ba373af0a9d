// Pieces that the flash routines share: their results and saturated states as one record each, how a flash begins and
// how it reports, averages of two phases, the property that a letter names, texts of inner messages.
#pragma once

#include <initializer_list>
#include <string_view>

#include "CriticalPoint.h"
#include "EngineLimits.h"
#include "LineProperty.h"
#include "PhasePair.h"
#include "RootBracket.h"
#include "SaturationBricks.h"

namespace frigana {

// Values of q for a state that is not two-phase.
inline constexpr double superheatedVapor = 998;
inline constexpr double subcooledLiquid = -998;
inline constexpr double supercriticalOrNone = 999;  // also: no state because of an error

// The composition itself, or the unit composition of the component that stands alone (icomp > 0).
inline Composition bulkComposition(int icomp, const Composition& z) {
    return icomp > 0 ? unitComposition(icomp) : z;
}

bool isPseudoPure(int icomp);

// Thermodynamic properties of one phase [kPa, J/mol, J/(mol K), m/s].
struct PhaseProperties {
    double p, e, h, s, cv, cp, w;
};
PhaseProperties propertiesOf(double T, double D, const Composition& z);

double chosenProperty(char letter, const PhaseProperties& phase);

// The outputs of a flash, by reference, so that its steps can be routines of their own.
struct FlashResult {
    double &T, &p, &D, &Dl, &Dv;
    Composition &x, &y;
    double &q, &e, &h, &s, &cv, &cp, &w;
    int& ierr;
    Text255& herr;
};

// What rises along an isobar: enthalpy, entropy, energy, or the volume for D.
double rising(char letter, const FlashResult& r);

// No state yet: q undefined, both phases of the bulk composition, everything else zero; T and p stay.
void clear(FlashResult& r, int icomp, const Composition& z);

// Selects the composition and clears the result.
//   Returned  (value) the component that stands alone, 0 for a mixture
int openFlash(const Composition& z, FlashResult& r);

// An input by its letter, with the code of its refusal.
struct GivenInput {
    char letter;
    double value;
    int code;
};

// True after the refusal of an input that is no number a state can have: not finite, a temperature that is not above
// zero, or a density of zero beside something else than the temperature.
bool refuseInputs(std::string_view ab, std::initializer_list<GivenInput> inputs, FlashResult& r);

// The densities and q of a state that was not found.
void noState(FlashResult& r);

// e, h, s, cv, cp, w of a phase.
void fillProperties(const PhaseProperties& phase, FlashResult& r);

// A single phase at (T, D), which is the bulk and both phases. Returned is its pressure.
double fillSinglePhase(double T, double D, const Composition& z, FlashResult& r);

// Molar averages of two phases in equilibrium; r holds Dl, Dv, x, y, q. Returned are the pressures of the phases.
struct PhasePressures {
    double liquid, vapor;
};
PhasePressures fillTwoPhase(double T, FlashResult& r);

// The error "[abFLSH error nnn] what inner" with its code; ab are the letters of the flash.
void reportError(std::string_view ab, int code, std::string_view what, const Text255& inner, int& ierr, Text255& herr);

inline constexpr std::string_view noBubblePoint = "bubble point calculation did not converge:  ";
inline constexpr std::string_view noDewPoint = "dew point calculation did not converge:  ";

// Critical point of a composition.
//   Given     code    of the error
//   Returned  critical
//             (value) false after the error; otherwise r.ierr is 0
bool criticalPoint(std::string_view ab, int code, const Composition& z, CriticalPoint& critical, FlashResult& r);

// Limits of the equation of state, and what LIMITX says of a state: 0, negative close to them, positive outside.
struct EosLimits {
    double tmin = 0, tmax = 0, Dmax = 0, pmax = 0;
    int code = 0;
    Text255 text;
};
EosLimits limitsAt(double T, double D, double p, const Composition& z);

// The warning or error of limits, in a field of as many columns as given; nothing inside of them.
void reportLimits(std::string_view ab, const EosLimits& limits, FlashResult& r, int columns = 3);

// A point of the saturation lines with both phases; ierr and herr as SATT and SATP give them.
struct SaturatedPair : PhasePair {
    int ierr = 0;
    Text255 herr;
};
void saturationAtT(double T, const Composition& z, int kph, SaturatedPair& pair);
void saturationAtP(double p, const Composition& z, int kph, SaturatedPair& pair);
PhasePair pairOf(const SaturatedPair& line, double q);

// Temperature, pressure and both phases of a pair.
void takePair(const PhasePair& pair, FlashResult& r);

// Code of q for a single phase by its place about the critical point.
double regionQuality(double T, double p, double D, const CriticalPoint& critical);

}  // namespace frigana
