#include "Units.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "NumberText.h"
#include "Words.h"

namespace frigana::catalogue {

namespace {

using Q = Quantity;

constexpr double atmosphere = 101.325;            // [kPa], the pressure that gauges start from
constexpr double psi = 6.894757293168361;         // [kPa], 0.45359237 kg x 9.80665 m/s2 / (0.0254 m)2
constexpr double btu = 1.05505585262;             // [kJ], of the International Table
constexpr double pound = 0.45359237;              // [kg]
constexpr double foot = 0.3048;                   // [m]
constexpr double inch = 0.0254;                   // [m]
constexpr double cubicFoot = foot * foot * foot;  // [m3]
constexpr double tonOfRefrigeration = 12000 * btu / 3600;
constexpr double kelvinPerRankine = 5.0 / 9.0;

// clang-format off
// symbol, quantity, factor to the inner unit, shift, further spellings
constexpr Unit none[] = {{"", Q::none, 1}};
constexpr Unit temperature[] = {
    {"K", Q::temperature, 1, 0, "kelvin"},
    {"°C", Q::temperature, 1, 273.15, "c degc ℃ celsius"},
    {"°F", Q::temperature, kelvinPerRankine, 459.67, "f degf ℉ fahrenheit"},
    {"°R", Q::temperature, kelvinPerRankine, 0, "r degr rankine"},
};
constexpr Unit temperatureDifference[] = {
    {"K", Q::temperatureDifference, 1, 0, "°c c degc ℃ delta_k"},
    {"°F", Q::temperatureDifference, kelvinPerRankine, 0, "f degf ℉ °r r degr"},
};
constexpr Unit pressure[] = {
    {"kPa", Q::pressure, 1, 0, "kpa(a) kpaa"},
    {"bar", Q::pressure, 100, 0, "bar(a) bara"},
    {"bar(g)", Q::pressure, 100, atmosphere / 100, "barg"},
    {"kPa(g)", Q::pressure, 1, atmosphere, "kpag"},
    {"MPa", Q::pressure, 1000, 0, "mpa(a)"},
    {"Pa", Q::pressure, 0.001},
    {"mbar", Q::pressure, 0.1, 0, "hpa"},
    {"psi", Q::pressure, psi, 0, "psia psi(a) lb/in2"},
    {"psig", Q::pressure, psi, atmosphere / psi, "psi(g)"},
    {"atm", Q::pressure, atmosphere},
};
constexpr Unit pressureDifference[] = {
    {"kPa", Q::pressureDifference, 1},
    {"bar", Q::pressureDifference, 100},
    {"MPa", Q::pressureDifference, 1000},
    {"Pa", Q::pressureDifference, 0.001},
    {"mbar", Q::pressureDifference, 0.1, 0, "hpa"},
    {"psi", Q::pressureDifference, psi, 0, "psid lb/in2"},
};
constexpr Unit density[] = {
    {"kg/m3", Q::density, 1, 0, "kg/m³ kg/m^3"},
    {"g/cm3", Q::density, 1000, 0, "g/cm³ kg/l"},
    {"lb/ft3", Q::density, pound / cubicFoot, 0, "lb/ft³ lbm/ft3"},
};
constexpr Unit specificVolume[] = {
    {"m3/kg", Q::specificVolume, 1, 0, "m³/kg"},
    {"L/kg", Q::specificVolume, 0.001, 0, "dm3/kg"},
    {"ft3/lb", Q::specificVolume, cubicFoot / pound, 0, "ft³/lb"},
};
constexpr Unit specificEnergy[] = {
    {"kJ/kg", Q::specificEnergy, 1},
    {"J/kg", Q::specificEnergy, 0.001},
    {"Btu/lb", Q::specificEnergy, btu / pound, 0, "btu/lbm"},
    {"kcal/kg", Q::specificEnergy, 4.1868},
};
constexpr Unit specificHeat[] = {
    {"kJ/(kg K)", Q::specificHeat, 1, 0, "kj/kg/k kj/kgk kj/(kgk)"},
    {"J/(kg K)", Q::specificHeat, 0.001, 0, "j/kg/k j/kgk j/(kgk)"},
    {"Btu/(lb °F)", Q::specificHeat, btu / pound / kelvinPerRankine, 0, "btu/(lbf) btu/lb/f btu/(lb°f)"},
};
constexpr Unit volumetricCapacity[] = {
    {"kJ/m3", Q::volumetricCapacity, 1, 0, "kj/m³"},
    {"Btu/ft3", Q::volumetricCapacity, btu / cubicFoot},
};
constexpr Unit volumeFlow[] = {
    {"m3/s", Q::volumeFlow, 1, 0, "m³/s m^3/s"},
    {"m3/h", Q::volumeFlow, 1.0 / 3600, 0, "m³/h m^3/h"},
    {"L/s", Q::volumeFlow, 0.001, 0, "dm3/s dm³/s"},
    {"L/min", Q::volumeFlow, 0.001 / 60},
    {"L/h", Q::volumeFlow, 0.001 / 3600},
    {"cm3/s", Q::volumeFlow, 1e-6, 0, "cm³/s"},
    {"ft3/min", Q::volumeFlow, cubicFoot / 60, 0, "cfm ft³/min"},
    {"ft3/h", Q::volumeFlow, cubicFoot / 3600, 0, "cfh ft³/h"},
};
constexpr Unit massFlow[] = {
    {"kg/s", Q::massFlow, 1},
    {"kg/h", Q::massFlow, 1.0 / 3600},
    {"g/s", Q::massFlow, 0.001},
    {"lb/h", Q::massFlow, pound / 3600},
    {"lb/min", Q::massFlow, pound / 60},
};
constexpr Unit power[] = {
    {"kW", Q::power, 1},
    {"W", Q::power, 0.001},
    {"MW", Q::power, 1000, 0, ""},
    {"Btu/h", Q::power, btu / 3600, 0, "btuh btu/hr"},
    {"tons", Q::power, tonOfRefrigeration, 0, "ton tr rt ton_ref"},
    {"kBtu/h", Q::power, 1000 * btu / 3600, 0, "mbh kbtu/hr"},
    {"hp", Q::power, 0.7456998715822702},
    {"kcal/h", Q::power, 4.1868 / 3600},
};
constexpr Unit fraction[] = {{"", Q::fraction, 1, 0, "-"}, {"%", Q::fraction, 0.01, 0, "percent"}};
constexpr Unit quality[] = {{"", Q::quality, 1, 0, "- kg/kg"}, {"%", Q::quality, 0.01, 0, "percent"}};
constexpr Unit length[] = {
    {"m", Q::length, 1},
    {"cm", Q::length, 0.01},
    {"mm", Q::length, 0.001},
    {"ft", Q::length, foot, 0, "foot feet"},
    {"in", Q::length, inch, 0, "inch inches"},
};
constexpr Unit diameter[] = {
    {"m", Q::diameter, 1},
    {"mm", Q::diameter, 0.001},
    {"cm", Q::diameter, 0.01},
    {"in", Q::diameter, inch, 0, "inch inches"},
};
constexpr Unit velocity[] = {{"m/s", Q::velocity, 1}, {"ft/s", Q::velocity, foot}, {"ft/min", Q::velocity, foot / 60, 0, "fpm"}};
constexpr Unit thermalConductivity[] = {
    {"W/(m K)", Q::thermalConductivity, 1},
    {"mW/(m K)", Q::thermalConductivity, 0.001},
    {"Btu/(h ft °F)", Q::thermalConductivity, btu / 3.6 / foot / kelvinPerRankine},
};
constexpr Unit viscosity[] = {
    {"uPa s", Q::viscosity, 1, 0, "µpa·s µpas upas"},
    {"mPa s", Q::viscosity, 1000, 0, "cp mpas"},
    {"lb/(ft h)", Q::viscosity, pound / foot / 3600 * 1e6},
};
constexpr Unit surfaceTension[] = {
    {"N/m", Q::surfaceTension, 1}, {"mN/m", Q::surfaceTension, 0.001}, {"lbf/ft", Q::surfaceTension, 14.593902937206364}};
constexpr Unit molarMass[] = {{"g/mol", Q::molarMass, 1, 0, "kg/kmol"}, {"lb/lbmol", Q::molarMass, 1}};
constexpr Unit energyRatio[] = {{"Btu/(W h)", Q::energyRatio, 1}};
constexpr Unit ratio[] = {{"", Q::ratio, 1, 0, "-"}};
constexpr Unit countUnits[] = {{"", Q::count, 1}};

struct QuantityRow {
    Q quantity;
    std::string_view name;
    std::span<const Unit> units;
    std::string_view shown[3];  // unit of SI, metric, imperial
    std::string_view sample;    // how it is written, for messages
};
constexpr QuantityRow rows[] = {
    {Q::none, "number", none, {"", "", ""}, "a number"},
    {Q::temperature, "temperature", temperature, {"K", "°C", "°F"}, "\"-5 °C\""},
    {Q::temperatureDifference, "temperature difference", temperatureDifference, {"K", "K", "°F"}, "\"5 K\""},
    {Q::pressure, "pressure", pressure, {"kPa", "bar", "psi"}, "\"2.4 bar\""},
    {Q::pressureDifference, "pressure difference", pressureDifference, {"kPa", "bar", "psi"}, "\"10 kPa\""},
    {Q::density, "density", density, {"kg/m3", "kg/m3", "lb/ft3"}, "\"1200 kg/m3\""},
    {Q::specificVolume, "specific volume", specificVolume, {"m3/kg", "m3/kg", "ft3/lb"}, "\"0.05 m3/kg\""},
    {Q::specificEnergy, "specific energy", specificEnergy, {"kJ/kg", "kJ/kg", "Btu/lb"}, "\"250 kJ/kg\""},
    {Q::specificHeat, "entropy or heat capacity", specificHeat, {"kJ/(kg K)", "kJ/(kg K)", "Btu/(lb °F)"}, "\"1.2 kJ/(kg K)\""},
    {Q::volumetricCapacity, "heat per volume", volumetricCapacity, {"kJ/m3", "kJ/m3", "Btu/ft3"}, "\"2000 kJ/m3\""},
    {Q::volumeFlow, "volume flow", volumeFlow, {"m3/s", "m3/h", "ft3/min"}, "\"10 m3/h\""},
    {Q::massFlow, "mass flow", massFlow, {"kg/s", "kg/h", "lb/h"}, "\"0.05 kg/s\""},
    {Q::power, "power", power, {"kW", "kW", "Btu/h"}, "\"4 kW\""},
    {Q::fraction, "fraction", fraction, {"", "", ""}, "0.7 or \"70 %\""},
    {Q::quality, "quality", quality, {"", "", ""}, "0.6 or \"60 %\""},
    {Q::length, "length", length, {"m", "m", "ft"}, "\"15 m\""},
    {Q::diameter, "diameter", diameter, {"m", "mm", "in"}, "\"16 mm\""},
    {Q::velocity, "velocity", velocity, {"m/s", "m/s", "ft/s"}, "\"8 m/s\""},
    {Q::thermalConductivity, "thermal conductivity", thermalConductivity, {"W/(m K)", "W/(m K)", "Btu/(h ft °F)"}, "\"0.08 W/(m K)\""},
    {Q::viscosity, "viscosity", viscosity, {"uPa s", "uPa s", "lb/(ft h)"}, "\"200 uPa s\""},
    {Q::surfaceTension, "surface tension", surfaceTension, {"N/m", "mN/m", "lbf/ft"}, "\"8 mN/m\""},
    {Q::molarMass, "molar mass", molarMass, {"g/mol", "g/mol", "lb/lbmol"}, "\"102 g/mol\""},
    {Q::energyRatio, "energy efficiency ratio", energyRatio, {"Btu/(W h)", "Btu/(W h)", "Btu/(W h)"}, "\"10 Btu/(W h)\""},
    {Q::ratio, "ratio", ratio, {"", "", ""}, "3.5"},
    {Q::count, "number", countUnits, {"", "", ""}, "a whole number"},
};
// clang-format on
static_assert(std::size(rows) == quantityCount);

// The unit in which a system shows a quantity.
constexpr const Unit* shownUnit(const QuantityRow& row, int system) {
    return std::find_if(row.units.data(), row.units.data() + row.units.size(),
                        [&](const Unit& unit) { return unit.symbol == row.shown[system]; });
}
static_assert(std::all_of(std::begin(rows), std::end(rows), [](const QuantityRow& row) {
    for (int system = 0; system < 3; ++system)
        if (shownUnit(row, system) == row.units.data() + row.units.size()) return false;
    return true;
}));

const QuantityRow& rowOf(Q quantity) {
    return rows[static_cast<int>(quantity)];
}

// Spelling without blanks and in small letters, so that "kJ / (kg K)" and "kJ/(kgK)" are one.
std::string folded(std::string_view text) {
    std::string result;
    for (const char c : text)
        if (c != ' ' && c != '\t') result += smallLetter(c);
    return result;
}

bool isSpelling(const Unit& unit, const std::string& text) {
    if (folded(unit.symbol) == text) return true;
    for (std::string_view rest = unit.aliases; !rest.empty();) {
        const auto end = rest.find(' ');
        if (rest.substr(0, end) == text) return true;
        if (end == std::string_view::npos) break;
        rest.remove_prefix(end + 1);
    }
    return false;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

// Length of the number at the head of a text: sign, digits, points and commas, exponent.
std::size_t numberLength(std::string_view text) {
    std::size_t at = 0;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
    while (at < text.size() && (isDigit(text[at]) || text[at] == '.' || text[at] == ',')) ++at;
    if (at + 1 < text.size() && smallLetter(text[at]) == 'e') {
        std::size_t exponent = at + 1;
        if (text[exponent] == '+' || text[exponent] == '-') ++exponent;
        if (exponent < text.size() && isDigit(text[exponent])) {
            while (exponent < text.size() && isDigit(text[exponent])) ++exponent;
            at = exponent;
        }
    }
    return at;
}

// A decimal comma as a point; empty where it is not certain that it is one.
std::string withPoint(std::string_view number) {
    const auto comma = number.find(',');
    if (comma == std::string_view::npos) return std::string(number);
    if (number.find(',', comma + 1) != std::string_view::npos || number.find('.') != std::string_view::npos) return {};
    std::size_t end = comma + 1;
    while (end < number.size() && isDigit(number[end])) ++end;
    const std::string_view before = number.substr(0, comma);
    const bool zeroBefore = before == "0" || before == "-0" || before == "+0";
    if (end == comma + 1 || (end - comma - 1 == 3 && !zeroBefore)) return {};
    std::string text(number);
    text[comma] = '.';
    return text;
}

std::string allSymbols(Q quantity) {
    std::vector<std::string> symbols;
    for (const Unit& unit : unitsOf(quantity))
        if (!unit.symbol.empty()) symbols.emplace_back(unit.symbol);
    return listed(symbols, ", ");
}

}  // namespace

std::optional<UnitSystem> unitSystemOf(std::string_view name) {
    const std::string text = folded(name);
    if (text == "si") return UnitSystem::SI;
    if (text == "metric") return UnitSystem::metric;
    if (text == "imperial") return UnitSystem::imperial;
    return std::nullopt;
}

std::string_view nameOf(UnitSystem system) {
    constexpr std::string_view names[] = {"SI", "metric", "imperial"};
    return names[static_cast<int>(system)];
}

std::span<const Unit> unitsOf(Quantity quantity) {
    return rowOf(quantity).units;
}

std::string_view nameOf(Quantity quantity) {
    return rowOf(quantity).name;
}

const Unit& unitIn(UnitSystem system, Quantity quantity) {
    const QuantityRow& row = rowOf(quantity);
    return *shownUnit(row, static_cast<int>(system));
}

const Unit* findUnit(Quantity quantity, std::string_view text) {
    const std::string spelling = folded(text);
    // "mW" and "MW" differ in case alone: the symbol as it stands comes first.
    for (const Unit& unit : unitsOf(quantity))
        if (unit.symbol == trimmed(text)) return &unit;
    for (const Unit& unit : unitsOf(quantity))
        if (!unit.symbol.empty() && unit.symbol != "MW" && unit.symbol != "MPa" && isSpelling(unit, spelling))
            return &unit;
    for (const Unit& unit : unitsOf(quantity))
        if (unit.symbol.empty() && isSpelling(unit, spelling)) return &unit;
    return nullptr;
}

namespace {

constexpr int keptDigits = 14;

double roundedToDecimals(double value) {
    if (!std::isfinite(value)) return value;
    char field[40];
    const auto end = toText(field, field + sizeof field, value, std::chars_format::scientific, keptDigits - 1).ptr;
    fromText(field, end, value);
    return value;
}

bool isInner(const Unit& unit) {
    return unit.factor == 1.0 && unit.shift == 0.0;
}

}  // namespace

double toInner(double number, const Unit& unit) {
    return isInner(unit) ? number : roundedToDecimals((number + unit.shift) * unit.factor);
}

double fromInner(double value, const Unit& unit) {
    if (isInner(unit)) return value;
    const double number = value / unit.factor - unit.shift;
    // What a shift leaves of a difference of nearly equal numbers is rounding.
    constexpr double rounding = 1e-13;
    return std::abs(number) < rounding * std::abs(unit.shift) * 10.0 ? 0.0 : roundedToDecimals(number);
}

Parsed parseQuantity(std::string_view text, Quantity quantity, const Unit* plain) {
    Parsed parsed;
    text = trimmed(text);
    const auto fail = [&](const std::string& problem) {
        parsed.problem = problem;
        return parsed;
    };
    // The sign of minus that typesetters use.
    std::string buffer;
    if (text.starts_with("\xE2\x88\x92")) {
        buffer = "-" + std::string(text.substr(3));
        text = buffer;
    }
    const std::size_t end = numberLength(text);
    const std::string_view digits = text.substr(0, end);
    if (digits.find_first_of("0123456789") == std::string_view::npos)
        return fail("is not a number with a unit; write " + std::string(rowOf(quantity).sample));
    const std::string number = withPoint(digits);
    if (number.empty()) return fail("has a comma that may be the decimal one or may not; write a point");
    const char* first = number.data() + (number.front() == '+' ? 1 : 0);
    const char* last = number.data() + number.size();
    const auto [stop, error] = fromText(first, last, parsed.value);
    if (error != std::errc() || stop != last)
        return fail("is not a number with a unit; write " + std::string(rowOf(quantity).sample));

    const std::string_view unitText = trimmed(text.substr(end));
    if (unitText.empty()) {
        parsed.unit = plain;
        if (plain == nullptr && unitsOf(quantity).front().symbol.empty()) parsed.unit = &unitsOf(quantity).front();
        if (parsed.unit == nullptr)
            return fail("has no unit; write " + std::string(rowOf(quantity).sample) + ", or units = \"SI\" at the top");
    } else {
        parsed.unit = findUnit(quantity, unitText);
        if (parsed.unit == nullptr) {
            const std::string known = allSymbols(quantity);
            if (quantity == Q::pressureDifference && findUnit(Q::pressure, unitText) != nullptr)
                return fail("is not a difference of pressures: a difference has no gauge; write " +
                            std::string(rowOf(quantity).sample));
            std::string problem = "has the unit " + std::string(unitText) + ", which is none of a ";
            problem += nameOf(quantity);
            if (!known.empty()) problem += " (" + known + ')';
            return fail(problem);
        }
    }
    parsed.value = toInner(parsed.value, *parsed.unit);
    return parsed;
}

std::string numberText(double number) {
    char field[40];
    return {field, toText(field, field + sizeof field, number).ptr};
}

std::string numberText(double number, int significantDigits) {
    char field[40];
    std::snprintf(field, sizeof field, "%.*g", significantDigits, number);
    return field;
}

std::string quantityText(double value, Quantity, const Unit& unit) {
    double number = fromInner(value, unit);
    // Ten digits hide the rounding of a conversion and of single precision, and keep what an engineer writes.
    constexpr int shownDigits = 10, singleDigits = 7;
    const double single = std::strtod(numberText(number, singleDigits).c_str(), nullptr);
    if (std::abs(number - single) <= 1e-7 * std::abs(number)) number = single;
    if (std::abs(number) < 1e-9) number = 0.0;
    std::string text = numberText(number, shownDigits);
    if (!unit.symbol.empty()) text += ' ' + std::string(unit.symbol);
    return text;
}

Quantity quantityOfResult(std::string_view name, std::string_view unit) {
    const std::string text = inSmallLetters(name);
    const auto holds = [&](std::string_view part) { return text.find(part) != std::string::npos; };
    if (unit == "K") {
        for (const char* part : {"drop", "glide", "superheat", "subcooling", "rise", "fall", "step"})
            if (holds(part)) return Q::temperatureDifference;
        return Q::temperature;
    }
    if (unit == "kPa") return holds("drop") || holds("loss") || holds("step") ? Q::pressureDifference : Q::pressure;
    if (unit == "-") return holds("efficiency") || holds("effectiveness") ? Q::fraction : Q::ratio;
    if (unit == "m") return holds("diameter") ? Q::diameter : Q::length;
    if (unit == "kg/kg") return holds("fraction") || holds("over") ? Q::fraction : Q::quality;
    if (unit == "mol/mol") return Q::fraction;
    if (unit.empty()) return Q::none;
    for (const QuantityRow& row : rows)
        if (row.units.front().symbol == unit) return row.quantity;
    return Q::none;
}

std::size_t characters(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

}  // namespace frigana::catalogue
