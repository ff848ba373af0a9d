// Every request described once, as data: its name, its parameters with their keys, options, quantities and limits, its
// circuits and numbered points. Reading, checking, templates, help, schemas and documentation are made from it.
//
// A cycle request is one or two records of pairs TDAT(k), VDAT(k); a parameter here is one k, an option one value of
// TDAT(k) with a key of its own. Limits are those of the rows of the range checks (40_RangeChecks_Tables.h): no number
// stands twice. Property requests are described by the same words; their parameters fill the fields of PROPREQ.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "Units.h"

namespace frigana::catalogue {

// How the value of an option is written.
enum class Form {
    quantity,  // a number with a unit, or a plain one
    yes,       // true: the option has no value
    no,        // false, under the key of its opposite
    count,     // a whole number that is the option itself (number of stages, number of a pipe)
    word,      // one of the names of properties; of property requests
};

struct Option {
    int number;              // TDAT(k)
    std::string_view key;    // behind the place of the parameter: "pressure_drop", "capacity.condenser"
    std::string_view label;  // "pressure drop"
    Quantity quantity = Quantity::none;
    Form form = Form::quantity;
};

// What stands where a parameter is left out.
enum class Absent {
    refused,   // must be given
    zero,      // has a natural zero: its first option that is a difference, with the value 0
    unused,    // has no effect: 1 and 0 are written, and there is no key
    derived,   // follows from the others: the run of line sizing, by whether pipes were picked
    optional,  // may be left out, as told by its label
};

struct Typical {
    int option;
    double value;  // in the inner unit
};

struct Parameter {
    int index;               // k of TDAT(k) and VDAT(k); in the parameters of a stage it counts from the stage's base
    std::string_view place;  // table of its keys: "evaporator", "" for the top
    std::string_view label;  // "evaporating level"
    std::span<const Option> options;
    Typical typical;  // what a template shows
    Absent absent = Absent::refused;
};

// A place of the circuit where the result has a whole state, by its number in the drawing.
struct Point {
    int number;
    std::string_view key;    // "evaporator.outlet", in front of which the circuit's key stands
    std::string_view label;  // "evaporator outlet"
    int diagramRow = 0;      // row of the cycle's diagrams, where no section of the result holds the state
};

// One record of a request.
struct Circuit {
    std::string_view key;    // "high", "low", ...; empty where there is only one
    std::string_view label;  // "High temperature circuit", as the result names it; empty where there is only one
    std::string_view fluid;  // file name of a template's fluid
    std::string_view title;
    std::span<const Parameter> parameters;
    int count;  // NDAT: parameters in the block
    std::span<const Point> points;
};

// Parameters that repeat for every stage but the last, behind the others.
struct Stages {
    int countIndex = 0;  // k of the number of stages; stage 1 begins behind it
    int most = 0;        // stages that the records have room for
    std::span<const Parameter> parameters = {};
    std::span<const Point> points = {};  // of each stage; their keys stand behind that of the stage
};

struct Request {
    std::string_view name;   // "heat-exchanger"
    std::string_view title;  // "Cycle with heat exchanger"
    std::string_view about;  // one sentence
    int type, sub;
    std::span<const Circuit> circuits;
    Stages stages = {};
    // Keys in the order in which a report leads with them.
    std::span<const std::string_view> leading = {};
};

// All requests, in the order of their help.
std::span<const Request> requests();
const Request* findRequest(std::string_view name);
const Request* findRequest(int type, int sub);

// What stands in front of the keys of a circuit: "low."; empty where there is only one.
std::string prefixOf(const Circuit& circuit);
// Full key of an option, without the key of the circuit: "evaporator.temperature".
std::string keyOf(const Parameter& parameter, const Option& option);
// The same with circuit and stage in front: "low.evaporator.temperature", "stage2.compressor.isentropic_efficiency".
std::string keyOf(const Circuit& circuit, int stage, const Parameter& parameter, const Option& option);

// The option that stands, with 0, where a parameter with a natural zero is left out: its first one that is a
// difference.
const Option& zeroOption(const Parameter& parameter);

// Limits of a value, from the rows of the range checks.
struct Limits {
    double lower, upper;
    bool open = false;  // the bounds do not belong to it
    bool holds(double value) const { return open ? value > lower && value < upper : value >= lower && value <= upper; }
};
// Limits of an option of a request.
//   Given     circuit  0 or 1
//             stage    true for the parameters of a stage
//   Returned  (value) nothing where no row limits the option
std::optional<Limits> limitsOf(const Request& request, int circuit, bool stage, const Parameter& parameter,
                               const Option& option);

// ---- property requests ----------------------------------------------------------------------------------------------

// Indices of the parameters of property requests, in place of k.
enum PropertyParameter {
    runningProperty = 1,  // of a table
    constantProperty,
    tableFrom,
    tableTo,
    tableStep,
    tableCount,
    suggestedLimits,
    firstProperty,
    secondProperty,
    saturationSide,
};

// Codes of the properties in property requests: 1 temperature, 2 pressure, 3 density.
struct PropertyName {
    int code;
    std::string_view word;
    Quantity quantity, difference;
};
std::span<const PropertyName> propertyNames();
// By its code; temperature where a request has none.
const PropertyName& propertyName(int code);

}  // namespace frigana::catalogue
