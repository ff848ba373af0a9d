// Checks of the data files: every fluid file, the file of mixing parameters and the mixture files are read through the
// engine, and what they give is compared with itself. State: none of its own, but the engine's set-up and its folder.
#pragma once

#include <span>

#include "FluidFileScan.h"

namespace frigana {

// What is measured of a fluid; `figureKinds` names each and states its bound.
enum class FigureOf {
    criticalPressure,
    criticalTemperature,
    triplePressure,
    tripleDensity,
    boilingPoint,
    vaporPressure,
    liquidDensity,
    vaporDensity,
    vaporPressureWhole,
    liquidDensityWhole,
    vaporDensityWhole,
    heatCapacityLimit,
    heatCapacityForms,
    viscosity,
    conductivity,
    surfaceTension,
    header,
    acentricFactor,
    melting,
    sublimation,
    expansions,
    count
};
inline constexpr int figureCount = static_cast<int>(FigureOf::count);

inline constexpr double noBound = -1.0;

struct FigureKind {
    std::string_view name;     // by which a fluid file names a known deviation
    std::string_view heading;  // of a column
    std::string_view unit;
    double bound;  // largest size of a clean value in this unit; noBound: the value is for information
    std::string_view meaning;
};

// In the order of FigureOf.
inline constexpr FigureKind figureKinds[] = {
    {"critical pressure", "pc", "%", 0.3, "pressure of the equation at the critical point of the header, against it"},
    {"critical temperature", "Tc(eq)", "K", noBound, "critical temperature of the equation itself, against the header"},
    {"triple pressure", "ptr", "%", 0.1,
     "saturation pressure at the triple point or lower limit, against the equation's constant"},
    {"triple density", "Dtr", "%", 0.01, "density of the liquid there, against the equation's constant"},
    {"boiling point", "Tb", "K", 0.01, "temperature of saturation (or sublimation) at 101.325 kPa, against the header"},
    {"vapor pressure", "PS", "%", 0.1, "ancillary against the equation from 0.6 to 0.99 Tc"},
    {"liquid density", "DL", "%", 0.3, "ancillary against the equation from 0.6 to 0.99 Tc"},
    {"vapor density", "DV", "%", 1.0, "ancillary against the equation from 0.6 to 0.99 Tc"},
    {"vapor pressure, whole line", "PS all", "%", noBound, "ancillary against the equation along the whole line"},
    {"liquid density, whole line", "DL all", "%", noBound, "ancillary against the equation along the whole line"},
    {"vapor density, whole line", "DV all", "%", noBound, "ancillary against the equation along the whole line"},
    {"heat capacity limit", "cp lim", "%", 0.001, "cp of the equation at 1e-8 mol/L against that of the ideal gas"},
    {"heat capacity forms", "cp0", "%", 0.01, "heat capacity by CPP against that by PH0"},
    {"viscosity", "eta", "%", 1.0, "largest jump over the range of the model"},
    {"conductivity", "lambda", "%", 1.0, "largest jump over the range of the model"},
    {"surface tension", "sigma", "mN/m", 0.0, "largest rise with temperature along the saturation line"},
    {"header", "head", "%", 0.01, "largest difference of the constants of the equation's block from the header"},
    {"acentric factor", "omega", "-", 0.002, "of the header, less -1 - lg(p/pc) of the equation at 0.7 Tc"},
    {"melting", "pmelt", "kPa", 1.0, "melting line at the triple point, less the equation's constant"},
    {"sublimation", "psub", "%", 1.0, "sublimation line at the triple point against the equation's constant"},
    {"expansions", "SAT", "1e-12", 10.0, "pressure and densities of the file of expansions, against the equation"},
};
static_assert(std::size(figureKinds) == figureCount);

constexpr const FigureKind& kindOf(FigureOf figure) {
    return figureKinds[static_cast<int>(figure)];
}

// absent: the fluid has no such thing to compare. known: beyond the bound, for a reason that the file states.
enum class Verdict { absent, clean, known, outOfBound };

struct Figure {
    Verdict verdict = Verdict::absent;
    bool computed = false;  // false with outOfBound: what failed stands in the note
    double value = 0.0;     // largest deviation
    double T = 0.0;         // where [K]; 0 where that says nothing
    double D = 0.0;         // [mol/L]; 0 likewise
    Text255 note{};         // failure of the engine, or the reason of a known deviation
};

// The models that the set-up chose.
struct ModelsChosen {
    Text3 equation, idealGas, viscosity, conductivity, enhancement, surfaceTension;
};

struct FluidReport {
    Text255 file{};
    FluidFileScan scan{};
    int ierr = 0;           // of the set-up
    Text255 message{};      // likewise
    Text255 refusal{};      // file, line and reason, where the set-up refused a record
    bool readable = false;  // the set-up accepted the file, and models and figures are filled
    ModelsChosen models{};
    Figure figures[figureCount];
    bool clean = false;

    const Figure& operator[](FigureOf figure) const { return figures[static_cast<int>(figure)]; }
    Figure& operator[](FigureOf figure) { return figures[static_cast<int>(figure)]; }
};

// Checks one fluid.
//   Given     file    name of a file in the folder of fluids of the installation that SETPATH named
//   Returned  report  clean if the file has no fault, the set-up no code and no figure is out of its bound
//   Notes     The ancillaries are compared at 140 temperatures. Transport is followed along saturation lines,
//             isotherms and isochores within the limits of its models; a difference of neighbours that halving the
//             step twenty times does not bring below 1 % counts as a jump.
void checkFluid(std::string_view file, FluidReport& report);

// A fluid of the installation, by which the pairs of the mixing parameters are known.
struct InstalledFluid {
    Text255 file{};
    Text12 cas{};
};
inline constexpr int mostInstalledFluids = 200;

struct ParametersReport {
    Text255 file{};
    int functions = 0;  // departure functions
    int pairs = 0;      // records of pairs
    int estimated = 0;  // of them, estimates that stand in the file
    int tried = 0;      // pairs with both fluids installed, which were set up
    FaultList faults{};
    bool clean = false;
};

// Checks the file of mixing parameters: that every record can be read, every pair stands there once, and the rule of
// every pair exists; sets every pair up whose fluids are installed.
//   Given     file    name of the file in the folder of fluids
//             fluids  the fluids of the installation, at most mostInstalledFluids
void checkParameters(std::string_view file, std::span<const InstalledFluid> fluids, ParametersReport& report);

struct MixtureReport {
    Text255 file{};
    FixedText<60> name{};
    int components = 0;
    double sum = 0.0;        // of the mole fractions as they stand [-], within 1e-7 of 1
    double molarMass = 0.0;  // of the file less that of the fractions, in % of the latter, within 0.001
    int ierr = 0;            // of the set-up; -117, a pair without published parameters, is no fault
    FaultList faults{};
    bool clean = false;
};

// Checks one mixture file: components and fractions, and the set-up.
//   Given     file        name of a file in the folder of mixtures
//             parameters  name of the file of mixing parameters
void checkMixture(std::string_view file, std::string_view parameters, MixtureReport& report);

}  // namespace frigana
