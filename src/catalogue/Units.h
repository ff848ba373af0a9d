// Quantities and the units that a refrigeration engineer writes them in.
//
// Inside, every quantity has one unit (K, kPa, kg/m3, kJ/kg, kJ/(kg K), m3/s, kW, ...), that of the results; everything
// else is converted on the way in and out. A difference of temperatures is a quantity of its own and is never shifted.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace frigana::catalogue {

enum class Quantity {
    none,  // a plain number, a text or nothing
    temperature,
    temperatureDifference,
    pressure,
    pressureDifference,
    density,
    specificVolume,
    specificEnergy,      // enthalpy, internal energy, specific capacities
    specificHeat,        // entropy, heat capacities
    volumetricCapacity,  // heat per swept volume
    volumeFlow,
    massFlow,
    power,     // capacities, heats, powers
    fraction,  // efficiencies, effectiveness, parts of a whole
    quality,   // vapor over all, by mass
    length,
    diameter,
    velocity,
    thermalConductivity,
    viscosity,
    surfaceTension,
    molarMass,
    energyRatio,  // EER
    ratio,        // COP, pressure ratios, Prandtl number
    count,
};
inline constexpr int quantityCount = static_cast<int>(Quantity::count) + 1;

enum class UnitSystem { SI, metric, imperial };

// Name of a system as files and the command line write it ("SI", "metric", "imperial", in any case).
std::optional<UnitSystem> unitSystemOf(std::string_view name);
std::string_view nameOf(UnitSystem system);

// value in the inner unit = (number + shift) * factor
struct Unit {
    std::string_view symbol;  // as written, with the typographic signs
    Quantity quantity;
    double factor;
    double shift = 0.0;
    std::string_view aliases = {};  // further spellings, separated by blanks; compared without regard to case
};

// All units of a quantity, the one of results first.
std::span<const Unit> unitsOf(Quantity quantity);
// The unit in which a system shows a quantity and reads plain numbers of it.
const Unit& unitIn(UnitSystem system, Quantity quantity);
// The unit of a quantity by its symbol or one of its spellings; null where there is none.
const Unit* findUnit(Quantity quantity, std::string_view text);
std::string_view nameOf(Quantity quantity);

// A converted number is rounded to fourteen digits, so that -40 °C is 233.15 K and not 233.14999999999998 K: what a
// person writes in decimals stays a decimal. A number in the inner unit is taken as it is.
double toInner(double number, const Unit& unit);
double fromInner(double value, const Unit& unit);

// A number with its unit as a person writes it: "-5 °C", "2.4 bar", "70 %", "-5,5 °C".
struct Parsed {
    double value = 0.0;          // in the inner unit, where problem is empty
    const Unit* unit = nullptr;  // as written; null where the number stands alone
    std::string problem;         // why it cannot be read, in the words of a message behind "= "
};

// Reads a text as a quantity.
//   Given     text      number and unit, with or without a blank between
//             quantity  what it shall be
//             plain     unit of a number without one; null where that is not allowed
//   Notes     A comma counts as the decimal one only where it cannot be anything else: alone, and with other than three
//             digits behind it or a zero before it.
Parsed parseQuantity(std::string_view text, Quantity quantity, const Unit* plain);

// The shortest text that gives the number again, or with a number of significant digits.
std::string numberText(double number);
std::string numberText(double number, int significantDigits);

// Number and unit in a system: "-5 °C". Without digits the number is exact; a limit of single precision shows as the
// number that was meant.
std::string quantityText(double value, Quantity quantity, const Unit& unit);

// The quantity of a result by its name and its inner unit, as the writer tells them.
Quantity quantityOfResult(std::string_view name, std::string_view unit);

// Characters of a text as a person counts them (UTF-8).
std::size_t characters(std::string_view text);

}  // namespace frigana::catalogue
