// Properties of one fluid over arrays: any two of temperature, pressure, density, enthalpy, entropy and quality in, any
// properties out. Units are those of the tables: K, kPa, kg/m3, kJ/kg, kJ/(kg K), m/s, W/(m K), uPa s, N/m.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "EngineLimits.h"
#include "FilledRequest.h"

namespace frigana::programs {

// Numbers of the properties, those of frigana_api.h.
enum class Property : int {
    temperature = 1,
    pressure,
    density,
    enthalpy,
    entropy,
    quality,  // by mass; not a number in a single phase
    specificVolume,
    internalEnergy,
    isochoricHeat,
    isobaricHeat,
    speedOfSound,
    conductivity,
    viscosity,
    prandtl,
    surfaceTension,
    phase,  // 1 liquid, 2 vapor, 3 two phases or saturated, 4 supercritical
    liquidDensity,
    vaporDensity,
    liquidFraction = 100,  // by mass of component i in the liquid of two phases: 100 + i, i from 1
    vaporFraction = 200,
};

struct PropertyRow {
    Property property;
    std::string_view name;   // "h": what programs call it
    std::string_view label;  // "specific enthalpy"
    catalogue::Quantity quantity;
};
// All but the fractions of components.
std::span<const PropertyRow> propertyRows();
// By name; null where there is none.
const PropertyRow* findProperty(std::string_view name);

// Codes of states that never reached the engine; its own are below 1000.
inline constexpr int notFinite = 9001, noSuchState = 9002, qualityOutOfRange = 9003;

// A fluid, with what the engine said of it when it was opened.
class PropertyFluid {
  public:
    // Opens a fluid. The engine is held by the caller (EngineAccess).
    //   Given     description  a name, R134a; or JSON: a table of what a named request says of its fluid: fluid (a
    //   name,
    //                          or a table of components and fractions), fractions, blend_name, reference_state,
    //                          reference_of
    //   Returned  (value)      what is wrong; empty where the fluid is open
    std::string open(std::string_view description, const std::string& dataFolder);

    // JSON of the facts: name, components with their fractions, molar mass, critical point, limits.
    const std::string& facts() const { return facts_; }
    const std::string& name() const { return name_; }
    int components() const { return components_; }

    // Where a state has no answer.
    using Failed = void (*)(void* context, std::size_t index, int code, std::string_view text);

    struct Question {
        char first = 'T', second = 'P';  // T, P, D, H, S, Q
        const double* firstValues = nullptr;
        const double* secondValues = nullptr;
        std::size_t count = 0;
        std::span<const int> wanted;  // numbers of properties
        double* results = nullptr;    // wanted.size() columns of count values
        int* codes = nullptr;         // of each state: 0, a warning (negative) or an error; null where not wanted
        Failed failed = nullptr;      // of errors and warnings
        void* context = nullptr;
    };
    // The states of a question, with not a number where there is none. The engine is held by the caller.
    //   Returned  (value)  what is wrong with the question as a whole; empty where it was answered
    //   Notes     Of several states with the same two properties: of temperature and enthalpy or entropy the one of
    //   lower
    //             density, of quality and density, enthalpy or entropy the one of the lowest temperature.
    std::string answer(const Question& question) const;

  private:
    bool load(std::string& problem) const;
    void gatherFacts();

    catalogue::Fluid fluid_;
    std::string dataFolder_, name_, facts_;
    long number_ = 0;  // of this fluid in the engine
    int components_ = 0;
    Composition z_{};
    double molarMass_ = 0.0, criticalTemperature_ = 0.0, criticalPressure_ = 0.0, lowestTemperature_ = 0.0;
};

}  // namespace frigana::programs
