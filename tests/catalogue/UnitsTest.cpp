// Numbers with units, as people write them, and names of fluids.
#include "Units.h"

#include <gtest/gtest.h>

#include "Names.h"
#include "TreeFolders.h"

namespace frigana::catalogue {
namespace {

struct Row {
    const char* text;
    Quantity quantity;
    double value;  // in the inner unit
};

// Conversions by definition: inch 0.0254 m, pound 0.45359237 kg, standard gravity 9.80665 m/s2, Btu of the
// International Table 1.05505585262 kJ, ton of refrigeration 12000 Btu/h, atmosphere 101.325 kPa.
const Row rows[] = {
    {"268.15 K", Quantity::temperature, 268.15},
    {"-5 °C", Quantity::temperature, 268.15},
    {"-5°C", Quantity::temperature, 268.15},
    {"-5 C", Quantity::temperature, 268.15},
    {"-5 degC", Quantity::temperature, 268.15},
    {"−5 °C", Quantity::temperature, 268.15},
    {"-5,5 °C", Quantity::temperature, 267.65},
    {"0,125 °C", Quantity::temperature, 273.275},
    {"-40 °C", Quantity::temperature, 233.15},
    {"-40 °F", Quantity::temperature, 233.15},
    {"23F", Quantity::temperature, 268.15},
    {"482.67 °R", Quantity::temperature, 268.15},
    {"+1e2 °C", Quantity::temperature, 373.15},
    {"5 K", Quantity::temperatureDifference, 5.0},
    {"5 °C", Quantity::temperatureDifference, 5.0},
    {"9 °F", Quantity::temperatureDifference, 5.0},
    {"243.34 kPa", Quantity::pressure, 243.34},
    {"2.4334 bar", Quantity::pressure, 243.34},
    {"2.4334 bar(a)", Quantity::pressure, 243.34},
    {"0 bar(g)", Quantity::pressure, 101.325},
    {"1 barg", Quantity::pressure, 201.325},
    {"0 psig", Quantity::pressure, 101.325},
    {"100 psi", Quantity::pressure, 689.4757293168},
    {"100 PSIA", Quantity::pressure, 689.4757293168},
    {"9.5 MPa", Quantity::pressure, 9500.0},
    {"1013.25 mbar", Quantity::pressure, 101.325},
    {"1 atm", Quantity::pressure, 101.325},
    {"0.1 bar", Quantity::pressureDifference, 10.0},
    {"1 psi", Quantity::pressureDifference, 6.894757293168},
    {"10.08 m3/h", Quantity::volumeFlow, 0.0028},
    {"10.08 m³/h", Quantity::volumeFlow, 0.0028},
    {"2.8 L/s", Quantity::volumeFlow, 0.0028},
    {"1 cfm", Quantity::volumeFlow, 0.0004719474432},
    {"1 ft3/min", Quantity::volumeFlow, 0.0004719474432},
    {"4000 W", Quantity::power, 4.0},
    {"1 ton", Quantity::power, 3.516852842067},
    {"12000 Btu/h", Quantity::power, 3.516852842067},
    {"1 MW", Quantity::power, 1000.0},
    {"70 %", Quantity::fraction, 0.7},
    {"0.7", Quantity::fraction, 0.7},
    {"15 m", Quantity::length, 15.0},
    {"10 ft", Quantity::length, 3.048},
    {"7/8 in", Quantity::diameter, -1.0},
    {"0.875 in", Quantity::diameter, 0.022225},
    {"28 mm", Quantity::diameter, 0.028},
};

TEST(Units, TextsAreReadAsTheirQuantity) {
    constexpr double tolerance = 1e-12;  // relative: the rounding of a conversion
    for (const Row& row : rows) {
        const Parsed parsed = parseQuantity(row.text, row.quantity, nullptr);
        if (row.value < 0.0) {
            EXPECT_NE(parsed.problem, "") << row.text;
            continue;
        }
        EXPECT_EQ(parsed.problem, "") << row.text;
        EXPECT_NEAR(parsed.value, row.value, tolerance * row.value) << row.text;
    }
}

TEST(Units, DecimalsStayDecimals) {
    for (int tenths = -2000; tenths <= 3000; ++tenths) {
        const std::string text = std::to_string(tenths / 10.0).substr(0, std::to_string(tenths / 10.0).find('.') + 2);
        const double expected = std::stod(std::to_string((27315 + tenths * 10) / 100) + '.' +
                                          std::to_string(100 + (27315 + tenths * 10) % 100).substr(1));
        EXPECT_EQ(parseQuantity(text + " °C", Quantity::temperature, nullptr).value, expected) << text;
    }
}

TEST(Units, EveryUnitComesBack) {
    constexpr double tolerance = 1e-12;
    for (int i = 0; i < quantityCount; ++i)
        for (const Unit& unit : unitsOf(static_cast<Quantity>(i))) {
            EXPECT_EQ(unit.quantity, static_cast<Quantity>(i)) << unit.symbol;
            EXPECT_NEAR(toInner(fromInner(321.5, unit), unit), 321.5, tolerance * 321.5) << unit.symbol;
            EXPECT_EQ(findUnit(unit.quantity, unit.symbol), &unit) << unit.symbol;
        }
    for (const UnitSystem system : {UnitSystem::SI, UnitSystem::metric, UnitSystem::imperial})
        for (int i = 0; i < quantityCount; ++i)
            EXPECT_EQ(unitIn(system, static_cast<Quantity>(i)).quantity, static_cast<Quantity>(i));
    EXPECT_EQ(unitIn(UnitSystem::metric, Quantity::temperature).symbol, "°C");
    EXPECT_EQ(unitIn(UnitSystem::imperial, Quantity::power).symbol, "Btu/h");
}

TEST(Names, UsualNamesLeadToTheFile) {
    const FluidNames& names = FluidNames::of(test::dataFolder);
    struct {
        const char *name, *file;
    } const rowsOfNames[] = {
        {"R134a", "R134A.FLD"},    {"r-134a", "R134A.FLD"},      {"HFC-134a", "R134A.FLD"}, {"R134A.FLD", "R134A.FLD"},
        {"r134a.fld", "r134a.fld"}, {"propane", "PROPANE.FLD"},  {"R290", "PROPANE.FLD"},   {"R-290", "PROPANE.FLD"},
        {"ammonia", "AMMONIA.FLD"}, {"NH3", "AMMONIA.FLD"},      {"R717", "AMMONIA.FLD"},   {"CO2", "CO2.FLD"},
        {"R744", "CO2.FLD"},        {"carbon dioxide", "CO2.FLD"}, {"R410A", "R410A.MIX"},  {"r 410a", "R410A.MIX"},
        {"R410A.MIX", "R410A.MIX"}, {"HFO-1234yf", "R1234YF.FLD"}, {"HC-290", "PROPANE.FLD"}, {"isobutane", "ISOBUTAN.FLD"},
        {"R600a", "ISOBUTAN.FLD"},
    };
    for (const auto& [name, file] : rowsOfNames) EXPECT_EQ(names.find(name).file, file) << name;
    EXPECT_FALSE(names.find("R134a").blend);
    EXPECT_TRUE(names.find("R410A").blend);
    EXPECT_EQ(names.find("").file, "");
    EXPECT_EQ(names.find("R134z").file, "");
    EXPECT_EQ(foldedName(names.near("R1234zf").front()).substr(0, 5), "R1234");
}

}  // namespace
}  // namespace frigana::catalogue
