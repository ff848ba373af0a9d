// The everyday question: a state of a fluid from any two properties that the engine can flash.
#pragma once

#include <string>
#include <vector>

#include "12_MyVariables.h"
#include "FilledRequest.h"
#include "Names.h"

namespace frigana::catalogue {

// A property by its letter: T, P, D, H, S, Q.
struct StateProperty {
    char letter;
    std::string_view name;
    Quantity quantity;
    double STATEPT::*field;
};
std::span<const StateProperty> stateProperties();
// By letter, in either case; null where there is none.
const StateProperty* findStateProperty(char letter);

struct GivenProperty {
    const StateProperty* property;
    double value;  // in the inner unit
};

struct StateAnswer {
    STATEPT point;
    std::string problem;  // why there is none; empty where there is
};

// A state.
//   Given     fluid          kinds 1 and 2 by their file, 3 by components
//             dataFolder     holds the folders fluids and mixtures
//             first, second  two different properties. Of two states with the same temperature and enthalpy or entropy
//                            the one of lower density is given
StateAnswer stateOf(const Fluid& fluid, const std::string& dataFolder, GivenProperty first, GivenProperty second);

// Loads a fluid into the engine, which then answers for it until the next set-up.
//   Given     fluid      kinds 1 and 2 by their file, 3 by components
//   Returned  substance  ZMOL, WM and PTBAD, what the state points read of a record; NMIX and REFSNAMEMIX
//             (value)    why there is none; empty where there is
std::string loadFluid(const Fluid& fluid, const std::string& dataFolder, SUBSTANCE& substance);

// Reads "T=25C" or "P=10 bar".
//   Given     units  of plain numbers
//   Returned  given  the property; (value) what is wrong, empty where it could be read
std::string readGivenProperty(const std::string& text, UnitSystem units, GivenProperty& given);

}  // namespace frigana::catalogue
