// The fluid of a chart: loaded into the engine, with its states in the units of charts. The engine holds one fluid, so
// that only the ChartFluid loaded last can be asked.
#pragma once

#include <string>
#include <vector>

#include "CriticalPoint.h"
#include "EngineLimits.h"

namespace frigana::diagrams {

// What a state is drawn by, and what stays constant along a curve.
enum class Property { temperature, pressure, density, enthalpy, entropy, quality };

inline constexpr double singlePhase = -1.0;  // quality of a state of one phase

struct State {
    double T = 0.0;          // temperature [K]
    double p = 0.0;          // pressure [kPa]
    double D = 0.0;          // density [kg/m3]
    double h = 0.0;          // enthalpy [kJ/kg]
    double s = 0.0;          // entropy [kJ/(kg K)]
    double q = singlePhase;  // vapor by mass; singlePhase where there is one phase only
};
double valueOf(const State& state, Property property);

// A fluid by its files, as requests name them.
struct FluidSelection {
    enum class Kind { pure, mixtureFile, listed };
    Kind kind = Kind::pure;
    std::string name;                // how the chart calls it
    std::vector<std::string> files;  // of the fluid, of the mixture, or of the listed components
    std::vector<double> fractions;   // of listed components
    bool byMass = false;             // they are mass fractions
    std::string reference = "DEF";   // zero of enthalpy and entropy, as SETREF takes it
    int referenceMode = 2;
};

// Liquid and vapor in equilibrium.
struct PhasePair {
    double T = 0.0, p = 0.0;    // [K, kPa]
    double Dl = 0.0, Dv = 0.0;  // [mol/L]
    Composition x{}, y{};       // mole fractions of liquid and vapor
};

class ChartFluid {
  public:
    // Loads the fluid; SETPATH has told the engine where the data are.
    //   Returned  (value)  false with the reason in `why`
    bool load(const FluidSelection& selection, std::string& why);

    const std::string& name() const { return name_; }
    bool pure() const { return pure_; }
    const Composition& composition() const { return z_; }
    double molarMass() const { return molarMass_; }
    // Critical point [K, kPa, mol/L]: of a pure fluid that of its file, of a blend an estimate.
    const CriticalPoint& estimatedCritical() const { return critical_; }
    // Range of the equation of state [K, kPa, kg/m3]; of a pure fluid not below its triple point.
    double lowestT() const { return lowestT_; }
    double highestT() const { return highestT_; }
    double highestP() const { return highestP_; }
    double highestD() const { return highestD_; }

    // A state of one phase.
    State at(double T, double D) const;
    // A state of one phase whose density [mol/L] is nearly known, brought to the pressure.
    State settled(double T, double p, double rho) const;
    // A state of one phase at a pressure, on the side kph (1 liquid, 2 vapor); false where there is no such density.
    bool atPressure(double T, double p, int kph, State& state) const;
    // Temperature at which a state of one phase with the density D has the value of a property, by Newton's method
    // within a bracket: pressure, enthalpy and entropy rise with temperature at constant density.
    //   Given     coldest [K] below it no answer is looked for: inside the dome pressure need not rise
    //             guess   [K]
    //   Returned  (value) false where there is none up to twice the highest temperature of the fluid
    bool temperatureAt(double D, Property property, double value, double coldest, double guess, double& T) const;

    // The state at a pressure with a given enthalpy or entropy, in one phase or in two; false where there is none.
    bool fromPressure(double p, Property property, double value, State& state) const;

    // A state of two phases with the molar share q of vapor.
    State between(const PhasePair& pair, double q) const;

    // The melting pressure at a temperature [kPa]; a number beyond all states where the fluid has no melting line.
    double meltingPressure(double T) const;

  private:
    std::string name_;
    bool pure_ = true;
    Composition z_{};
    double molarMass_ = 1.0;
    CriticalPoint critical_;
    double lowestT_ = 0.0, highestT_ = 0.0, highestP_ = 0.0, highestD_ = 0.0;
};

}  // namespace frigana::diagrams
