// Numbers with units, as people write them, and names of fluids.
#include "Units.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <filesystem>

#include "Names.h"
#include "TemporaryFolder.h"
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
    {"1E+2 °C", Quantity::temperature, 373.15},
    {"1000e-1°C", Quantity::temperature, 373.15},
    {" \t 268.15\tK ", Quantity::temperature, 268.15},
    {"+0,125 °C", Quantity::temperature, 273.275},
    {"-0,125 °C", Quantity::temperature, 273.025},
    {"1,25 °C", Quantity::temperature, 274.4},
    {"268.15 Kelvin", Quantity::temperature, 268.15},
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
    {"0.7 -", Quantity::fraction, 0.7},
    {"0.6 kg/kg", Quantity::quality, 0.6},
    {"60 percent", Quantity::quality, 0.6},
    {"3", Quantity::count, 3.0},
    {"1.2 kJ / (kg K)", Quantity::specificHeat, 1.2},
    {"1200 J/kg/K", Quantity::specificHeat, 1.2},
    {"1 kcal/kg", Quantity::specificEnergy, 4.1868},
    {"100 cP", Quantity::viscosity, 1e5},
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

struct Refused {
    const char* text;
    Quantity quantity;
    const char* said;
};

const Refused refused[] = {
    // What stands behind the digits belongs to the number only where it is an exponent.
    {"5e K", Quantity::temperature, "has the unit e K, which is none of a temperature (K, °C, °F, °R)"},
    {"5e+ K", Quantity::temperature, "has the unit e+ K, which is none of a temperature (K, °C, °F, °R)"},
    {"5e", Quantity::temperature, "has the unit e, which is none of a temperature (K, °C, °F, °R)"},
    {"+-5 K", Quantity::temperature, "is not a number with a unit; write \"-5 °C\""},
    {"- 5 K", Quantity::temperature, "is not a number with a unit; write \"-5 °C\""},
    {"5, K", Quantity::temperature, "has a comma that may be the decimal one or may not; write a point"},
    {"12,345 K", Quantity::temperature, "has a comma that may be the decimal one or may not; write a point"},
    {"00,345 K", Quantity::temperature, "has a comma that may be the decimal one or may not; write a point"},
    {"1e999 bar", Quantity::pressure, "is not a number with a unit; write \"2.4 bar\""},
    // Millis and megas differ in their case alone.
    {"5 mW", Quantity::power, "has the unit mW, which is none of a power (kW, W, MW, Btu/h, tons, kBtu/h, hp, kcal/h)"},
    {"5 mPa", Quantity::pressureDifference,
     "has the unit mPa, which is none of a pressure difference (kPa, bar, MPa, Pa, mbar, psi)"},
    {"5 psig", Quantity::pressureDifference,
     "is not a difference of pressures: a difference has no gauge; write \"10 kPa\""},
    {"5 K", Quantity::pressureDifference,
     "has the unit K, which is none of a pressure difference (kPa, bar, MPa, Pa, mbar, psi)"},
    {"3 K", Quantity::ratio, "has the unit K, which is none of a ratio"},
    {"5", Quantity::length, "has no unit; write \"15 m\", or units = \"SI\" at the top"},
};

TEST(Units, WhatIsNoQuantityIsToldInItsWords) {
    for (const Refused& row : refused)
        EXPECT_EQ(parseQuantity(row.text, row.quantity, nullptr).problem, row.said) << row.text;
    EXPECT_EQ(parseQuantity("5", Quantity::length, findUnit(Quantity::length, "cm")).value, 0.05);
}

// What a message tells to write can be read.
TEST(Units, EverySampleIsOneOfItsQuantity) {
    const std::string lead = "is not a number with a unit; write ";
    int read = 0;
    for (int i = 0; i < quantityCount; ++i) {
        const auto quantity = static_cast<Quantity>(i);
        const std::string said = parseQuantity("", quantity, nullptr).problem;
        ASSERT_TRUE(said.starts_with(lead)) << said;
        std::string sample = said.substr(lead.size());
        if (quantity == Quantity::none || quantity == Quantity::count) continue;
        for (bool more = true; more; ++read) {
            const auto other = sample.find(" or ");
            more = other != std::string::npos;
            std::string one = sample.substr(0, other);
            if (one.front() == '"') one = one.substr(1, one.size() - 2);
            const Parsed parsed = parseQuantity(one, quantity, nullptr);
            EXPECT_EQ(parsed.problem, "") << one;
            EXPECT_NE(parsed.value, 0.0) << one;
            if (more) sample.erase(0, other + 4);
        }
    }
    EXPECT_EQ(read, quantityCount - 2 + 2);  // fraction and quality have two each
}

TEST(Units, SystemsHaveNamesInAnyCase) {
    EXPECT_EQ(unitSystemOf("si"), UnitSystem::SI);
    EXPECT_EQ(unitSystemOf("Metric"), UnitSystem::metric);
    EXPECT_EQ(unitSystemOf("IMPERIAL"), UnitSystem::imperial);
    EXPECT_EQ(unitSystemOf("english"), std::nullopt);
    for (const UnitSystem system : {UnitSystem::SI, UnitSystem::metric, UnitSystem::imperial})
        EXPECT_EQ(unitSystemOf(nameOf(system)), system);
}

// The quantity decides whether a unit is shifted: a difference never is.
TEST(Units, ResultsHaveTheQuantityOfTheirNameAndUnit) {
    struct {
        const char *name, *unit;
        Quantity quantity;
    } const rowsOfResults[] = {
        {"Temperature", "K", Quantity::temperature},
        {"Saturation temperature drop", "K", Quantity::temperatureDifference},
        {"Glide", "K", Quantity::temperatureDifference},
        {"Superheat", "K", Quantity::temperatureDifference},
        {"Subcooling", "K", Quantity::temperatureDifference},
        {"Temperature rise", "K", Quantity::temperatureDifference},
        {"Temperature fall", "K", Quantity::temperatureDifference},
        {"Step", "K", Quantity::temperatureDifference},
        {"Pressure", "kPa", Quantity::pressure},
        {"Pressure drop", "kPa", Quantity::pressureDifference},
        {"Pressure loss", "kPa", Quantity::pressureDifference},
        {"Step", "kPa", Quantity::pressureDifference},
        {"Isentropic efficiency", "-", Quantity::fraction},
        {"Effectiveness", "-", Quantity::fraction},
        {"COP of cooling", "-", Quantity::ratio},
        {"Inner diameter", "m", Quantity::diameter},
        {"Equivalent length", "m", Quantity::length},
        {"Quality", "kg/kg", Quantity::quality},
        {"Injected fraction", "kg/kg", Quantity::fraction},
        {"Vapor over liquid", "kg/kg", Quantity::fraction},
        {"Composition of the liquid", "mol/mol", Quantity::fraction},
        {"Density", "kg/m3", Quantity::density},
        {"Title", "", Quantity::none},
        {"Price", "EUR", Quantity::none},
    };
    for (const auto& row : rowsOfResults) EXPECT_EQ(quantityOfResult(row.name, row.unit), row.quantity) << row.name;
}

TEST(Units, ValuesThatAreNotFinitePassThrough) {
    const Unit& celsius = *findUnit(Quantity::temperature, "C");
    EXPECT_TRUE(std::isnan(toInner(std::nan(""), celsius)));
    EXPECT_EQ(fromInner(HUGE_VAL, celsius), HUGE_VAL);
    EXPECT_EQ(numberText(0.1), "0.1");
    EXPECT_EQ(numberText(1.0 / 3.0, 3), "0.333");
    EXPECT_EQ(characters("-5 °C"), 5u);
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
        {"R134a", "R134A.FLD"},     {"r-134a", "R134A.FLD"},       {"HFC-134a", "R134A.FLD"},
        {"R134A.FLD", "R134A.FLD"}, {"r134a.fld", "r134a.fld"},    {"propane", "PROPANE.FLD"},
        {"R290", "PROPANE.FLD"},    {"R-290", "PROPANE.FLD"},      {"ammonia", "AMMONIA.FLD"},
        {"NH3", "AMMONIA.FLD"},     {"R717", "AMMONIA.FLD"},       {"CO2", "CO2.FLD"},
        {"R744", "CO2.FLD"},        {"carbon dioxide", "CO2.FLD"}, {"R410A", "R410A.MIX"},
        {"r 410a", "R410A.MIX"},    {"R410A.MIX", "R410A.MIX"},    {"HFO-1234yf", "R1234YF.FLD"},
        {"HC-290", "PROPANE.FLD"},  {"isobutane", "ISOBUTAN.FLD"}, {"R600a", "ISOBUTAN.FLD"},
    };
    for (const auto& [name, file] : rowsOfNames) EXPECT_EQ(names.find(name).file, file) << name;
    EXPECT_FALSE(names.find("R134a").blend);
    EXPECT_TRUE(names.find("R410A").blend);
    EXPECT_EQ(names.find("").file, "");
    EXPECT_EQ(names.find("R134z").file, "");
    EXPECT_EQ(foldedName(names.near("R1234zf").front()).substr(0, 5), "R1234");
}

TEST(Names, FoldWhatPeopleWriteDifferently) {
    struct {
        const char *name, *folded;
    } const rowsOfNames[] = {
        {"HFC-134a", "R134A"},  {"r 134_A", "R134A"}, {"HCFC22", "R22"}, {"HCFO-1233zd", "R1233ZD"},
        {"CFC-12", "R12"},      {"PFC-14", "R14"},    {"FC-14", "R14"},  {"HC-290", "R290"},
        {"HC", "HC"},           {"HCl", "HCL"},       {"hfo", "HFO"},    {"1~2", "1~2"},
        {"méthane", "MéTHANE"},
    };
    for (const auto& [name, folded] : rowsOfNames) EXPECT_EQ(foldedName(name), folded) << name;
}

// A name leads to the file only where the installation has it.
TEST(Names, AreThoseOfTheInstallation) {
    const test::TemporaryFolder folder;
    std::filesystem::create_directory(folder.path("fluids"));
    std::filesystem::create_directory(folder.path("mixtures"));
    for (const char* file : {"fluids/R134A.FLD", "fluids/WATER.FLD", "fluids/notes.txt", "mixtures/MINE.MIX"})
        test::writeFile(folder.path(file), "");
    const bool oneInAnyCase = std::filesystem::exists(folder.path("fluids/r134a.fld"));
    test::writeFile(folder.path("fluids/r134a.fld"), "");
    test::writeFile(folder.path("refrigerants.json"),
                    R"({"fluids": [{"name": "R134A", "designation": "R-134a", "aliases": ["tetrafluoroethane"]},
                                   {"name": "CO2", "designation": "R-744", "aliases": ["carbon dioxide"]}]})");
    const FluidNames names(folder.path());
    EXPECT_EQ(names.find("tetrafluoroethane").file, "R134A.FLD");
    EXPECT_EQ(names.find("R-744").file, "");
    EXPECT_EQ(names.find("R-744").problem, "is CO2, of which the installation has no file");
    EXPECT_TRUE(names.find("mine").blend);
    EXPECT_EQ(names.find("notes").problem, "is no fluid or blend of the installation");
    // The tables tell of fluids that this installation lacks: they are near to nothing.
    EXPECT_EQ(names.near("carbon dioxid"), std::vector<std::string>{});
    EXPECT_EQ(names.find("watr").problem, "is no fluid or blend of the installation; near is WATER");
    EXPECT_EQ(names.fileAs("water.FLD"), "WATER.FLD");
    EXPECT_EQ(names.fileAs("r134a.fld"), oneInAnyCase ? "R134A.FLD" : "r134a.fld");
    EXPECT_EQ(names.fileAs("R134a.Fld"), "R134A.FLD");
    EXPECT_EQ(names.fileAs("R22.FLD"), "");
    EXPECT_EQ(names.nameFor("r134a.fld"), "r134a.fld");
    EXPECT_EQ(names.nameFor("R134A.FLD"), "R134a");
    EXPECT_EQ(names.nameFor("MINE.MIX"), "MINE");
    // A file that comes later is found as well.
    EXPECT_EQ(names.find("CO2").file, "");
    test::writeFile(folder.path("fluids/CO2.FLD"), "");
    EXPECT_EQ(names.find("R-744").file, "CO2.FLD");
}

TEST(Names, WhatIsNearIsTold) {
    const FluidNames& names = FluidNames::of(test::dataFolder);
    for (const char* name : {"R134b", "amonia", "propan", "R1234", "R4010A"}) {
        const std::string problem = names.find(name).problem;
        const auto near = names.near(name);
        ASSERT_FALSE(near.empty()) << name;
        ASSERT_LE(near.size(), 3u) << name;
        for (const std::string& one : near) {
            EXPECT_NE(names.find(one).file, "") << one;
            EXPECT_NE(problem.find(one), std::string::npos) << problem;
        }
        EXPECT_NE(problem.find(near.size() == 1 ? "; near is " : "; near are "), std::string::npos) << problem;
    }
    EXPECT_EQ(names.find("nothing of the kind").problem, "is no fluid or blend of the installation");
}

}  // namespace
}  // namespace frigana::catalogue
