// A state from any two properties: the same one whichever are given, and what is said where there is none.
#include "StateQuery.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>

#include "Larger.h"
#include "TreeFolders.h"

namespace frigana::catalogue {
namespace {

Fluid pure(const char* file) {
    Fluid fluid;
    fluid.file = file;
    return fluid;
}

Fluid listed(std::vector<Fluid::Component> components, bool byMass) {
    Fluid fluid;
    fluid.kind = 3;
    fluid.blendName = "mine";
    fluid.byMass = byMass;
    fluid.components = std::move(components);
    return fluid;
}

StateAnswer stateFrom(const Fluid& fluid, char first, double a, char second, double b) {
    return stateOf(fluid, test::dataFolder, {findStateProperty(first), a}, {findStateProperty(second), b});
}

TEST(StateQuery, EveryPairInEitherOrderIsTheSameState) {
    constexpr double tolerance = 1e-8;  // relative, of the flashes
    double worst = 0.0;
    for (const char* file : {"R134A.FLD", "PROPANE.FLD"}) {
        const StateAnswer given = stateFrom(pure(file), 'T', 340.0, 'P', 800.0);
        ASSERT_EQ(given.problem, "");
        for (const char* pair : {"TP", "TD", "TH", "TS", "PD", "PH", "PS", "DH", "DS", "HS"})
            for (const bool turned : {false, true}) {
                const StateProperty *first = findStateProperty(pair[turned]),
                                    *second = findStateProperty(pair[!turned]);
                const StateAnswer found = stateOf(pure(file), test::dataFolder, {first, given.point.*first->field},
                                                  {second, given.point.*second->field});
                ASSERT_EQ(found.problem, "") << pair;
                for (const StateProperty& property : stateProperties())
                    if (property.letter != 'Q') {
                        const double off = std::fabs(found.point.*property.field / (given.point.*property.field) - 1.0);
                        EXPECT_LE(off, tolerance) << file << ' ' << pair << ' ' << property.name;
                        worst = test::larger(worst, off);
                    }
            }
    }
    std::printf("largest deviation %.1e\n", worst);
}

// R134a boils at -26.07 °C under 101.325 kPa (Tillner-Roth and Baehr, J. Phys. Chem. Ref. Data 23 (1994) 657).
TEST(StateQuery, QualityLeadsToTheSaturationLine) {
    for (const double quality : {0.0, 0.5, 1.0}) {
        const StateAnswer boiling = stateFrom(pure("R134A.FLD"), 'Q', quality, 'P', 101.325);
        ASSERT_EQ(boiling.problem, "");
        EXPECT_NEAR(boiling.point.T, 247.08, 0.01);
        const StateAnswer back = stateFrom(pure("R134A.FLD"), 'T', boiling.point.T, 'Q', quality);
        EXPECT_NEAR(back.point.P, 101.325, 1e-5);
    }
}

// 50 % by mass of R32 (52.024 g/mol) and R125 (120.02 g/mol) are 69.761 % of R32 by mole.
TEST(StateQuery, ABlendIsTheSameByMassByMoleAndByItsFile) {
    Fluid file;
    file.kind = 2;
    file.file = "R410A.MIX";
    const double byMole = 1.0 / 52.024 / (1.0 / 52.024 + 1.0 / 120.02);
    const StateAnswer mass = stateFrom(listed({{"R32.FLD", 1.0}, {"R125.FLD", 1.0}}, true), 'T', 300.0, 'P', 1000.0),
                      mole = stateFrom(listed({{"R32.FLD", byMole}, {"R125.FLD", 1.0 - byMole}}, false), 'T', 300.0,
                                       'P', 1000.0),
                      blend = stateFrom(file, 'T', 300.0, 'P', 1000.0);
    for (const StateAnswer* one : {&mass, &mole, &blend}) ASSERT_EQ(one->problem, "");
    // To the digits of the molar masses.
    EXPECT_NEAR(mole.point.D, mass.point.D, 1e-5 * mass.point.D);
    EXPECT_NEAR(blend.point.D, mass.point.D, 1e-5 * mass.point.D);
}

TEST(StateQuery, WhereThereIsNoStateTheReasonIsTold) {
    struct {
        const char* file;
        char first;
        double a;
        char second;
        double b;
        const char* said;
    } const rows[] = {
        {"R134A.FLD", 'D', 5.0, 'Q', 0.5, "no state can be found from density and quality"},
        {"R134A.FLD", 'H', 250.0, 'Q', 0.5, "no state can be found from enthalpy and quality"},
        {"R134A.FLD", 'T', 300.0, 'T', 300.0, "no state can be found from temperature and temperature"},
        {"R134A.FLD", 'T', 900.0, 'P', 100.0, "[TPFLSH error"},
        {"R134A.FLD", 'T', 400.0, 'Q', 1.0, "[TQFLSH error"},   // above the critical temperature, 374.21 K
        {"R134A.FLD", 'P', 5000.0, 'Q', 0.0, "[PQFLSH error"},  // above the critical pressure, 4059.28 kPa
        {"R134A.FLD", 'D', 3000.0, 'H', 250.0, "[D"},
        {"R134A.FLD", 'D', 3000.0, 'S', 1.0, "[D"},
        {"R134A.FLD", 'H', 9000.0, 'S', 9.0, "[H"},
        {"R134A.FLD", 'T', 300.0, 'S', 90.0, "[T"},
        {"R134A.FLD", 'P', 100.0, 'H', 90000.0, "[P"},
        {"NOTHING.FLD", 'T', 300.0, 'P', 100.0, "[SETUP error"},
    };
    for (const auto& row : rows) {
        const StateAnswer answer = stateFrom(pure(row.file), row.first, row.a, row.second, row.b);
        EXPECT_TRUE(answer.problem.starts_with(row.said))
            << row.first << row.second << ": " << answer.problem << ", wanted " << row.said;
        EXPECT_EQ(answer.problem.find("  "), std::string::npos) << answer.problem;
    }
}

TEST(StateQuery, AReferenceThatTheFluidCannotHaveIsTold) {
    Fluid carbonDioxide = pure("CO2.FLD");  // its triple point lies above the normal pressure
    carbonDioxide.referenceState = "NBP";
    const std::string problem = stateFrom(carbonDioxide, 'T', 300.0, 'P', 100.0).problem;
    EXPECT_NE(problem.find("boiling point"), std::string::npos) << problem;
}

TEST(StateQuery, APropertyIsReadWithItsUnit) {
    struct {
        const char* text;
        char letter;
        double value;
    } const rows[] = {
        {"T=25C", 'T', 298.15}, {"t=25 °C", 'T', 298.15}, {"P=10bar", 'P', 1000.0},  {"Q=0", 'Q', 0.0},
        {"q=1", 'Q', 1.0},      {"Q=50 %", 'Q', 0.5},     {"T=25", 'T', 298.15},     {"P=2", 'P', 200.0},
        {"D=5 kg/m3", 'D', 5},  {"H=250", 'H', 250.0},    {"S=1 kJ/(kg K)", 'S', 1},
    };
    for (const auto& row : rows) {
        GivenProperty given{};
        EXPECT_EQ(readGivenProperty(row.text, UnitSystem::metric, given), "") << row.text;
        EXPECT_EQ(given.property->letter, row.letter) << row.text;
        EXPECT_NEAR(given.value, row.value, 1e-12 * row.value) << row.text;
    }
}

TEST(StateQuery, WhatIsNoPropertyIsTold) {
    struct {
        const char *text, *said;
    } const rows[] = {
        {"", ": write a property as in T=25C, P=10bar or Q=0"},
        {"T25", "T25: write a property as in T=25C, P=10bar or Q=0"},
        {"=25", "=25: write a property as in T=25C, P=10bar or Q=0"},
        {"TD=25", "TD=25: write a property as in T=25C, P=10bar or Q=0"},
        {"X=5", "X=5: properties are T, P, D, H, S and Q"},
        {"{=5", "{=5: properties are T, P, D, H, S and Q"},
        {"T=", "T=:  is not a number with a unit; write \"-5 °C\""},
        {"T=cold", "T=cold: cold is not a number with a unit; write \"-5 °C\""},
        {"H=much", "H=much: much is not a number with a unit; write \"250 kJ/kg\""},
        {"T=5 bar", "T=5 bar: 5 bar has the unit bar, which is none of a temperature (K, °C, °F, °R)"},
        {"P=1e308 MPa", "P=1e308 MPa: is not finite"},
        {"Q=1.5", "Q=1.5: a quality lies between 0 and 1"},
        {"Q=-1 %", "Q=-1 %: a quality lies between 0 and 1"},
    };
    for (const auto& row : rows) {
        GivenProperty given{};
        EXPECT_EQ(readGivenProperty(row.text, UnitSystem::metric, given), row.said);
    }
}

}  // namespace
}  // namespace frigana::catalogue
