// The property requests as a user runs them, with their fixed formats.
#include <gtest/gtest.h>

#include <filesystem>

#include "Requests.h"
#include "ResultFile.h"

namespace frigana::test {
namespace {

struct Answer {
    Plant plant;
    ResultFile file;
    explicit Answer(const Request& request) : file("") {
        plant(request);
        file = ResultFile(plant.hasResult() ? plant.resultText() : "");
    }
};

std::string refused(int code, const std::string& text) {
    return failure(code, text);
}

// ---- layouts --------------------------------------------------------------------------------------------------------

// A real of 16 columns with 6 decimals and the blank behind it.
void expectRealColumns(const std::string& line, int count) {
    ASSERT_EQ(line.size(), static_cast<std::size_t>(17 * count)) << line;
    for (int i = 0; i < count; ++i) {
        const std::string field = line.substr(static_cast<std::size_t>(17 * i), 17);
        EXPECT_EQ(field[16], ' ') << line;
        EXPECT_EQ(field[9], '.') << line;
    }
}

TEST(FluidInformation, LayoutOfAPureFluid) {
    Answer a(propertyRequest(1, ""));
    ASSERT_EQ(a.file.count(), 13);
    EXPECT_EQ(a.file.raw(1), "1");
    EXPECT_EQ(a.file.raw(2), " 1");
    EXPECT_EQ(a.file.raw(3), "1");
    EXPECT_EQ(a.file.raw(4), "R134A.FLD           ");
    EXPECT_EQ(a.file.raw(5), " 1");
    EXPECT_EQ(a.file.raw(6), "R134A.FLD           ");
    EXPECT_EQ(a.file.raw(7), "        1.000000         1.000000 ");
    // Molar mass, triple point, boiling point, critical point, limits as published for R134a.
    EXPECT_EQ(a.file.raw(8).substr(0, 17), "      102.032000 ");
    EXPECT_EQ(a.file.raw(8).substr(17, 17), "      169.850000 ");
    EXPECT_EQ(a.file.raw(8).substr(17 * 3, 17), "      374.210000 ");
    EXPECT_EQ(a.file.raw(8).substr(17 * 4, 17), "     4059.280000 ");
    EXPECT_EQ(a.file.raw(8).substr(170), "   1300 A1 ");
    for (int line = 9; line <= 13; ++line) EXPECT_EQ(a.file.raw(line), "0");
}

TEST(FluidInformation, AFluidWithoutALibraryRowHasNoPotential) {
    // The lookup takes the case as it stands, the file search does not.
    Answer a(propertyRequest(1, "", "r134a.fld"));
    ASSERT_EQ(a.file.count(), 13);
    EXPECT_EQ(a.file.raw(8).substr(170), "   -777 NA ");
}

// By mass of the components, rounded: 0.6 x 677 + 0.4 x 3170 and 0.23 x 677 + 0.25 x 3170 + 0.52 x 1300.
TEST(FluidInformation, ThePotentialOfABlendIsThatOfItsComponents) {
    const std::string listed = "1\n3\n2\n1\nR32.FLD\n0.6\nR125.FLD\n0.4\nMine\n2 DEF\n1\n";
    Plant plant;
    plant(listed);
    ResultFile file(plant.resultText());
    // Two lines for each component, and those of the other tools behind.
    ASSERT_EQ(file.count(), 15);
    EXPECT_EQ(file.raw(10).substr(170), "   1674 NA ");
    Answer predefined(propertyRequest(1, "", "R407C.MIX", 2));
    ASSERT_EQ(predefined.file.count(), 17);
    EXPECT_EQ(predefined.file.raw(12).substr(170), "   1624 A1 ");
    // A blend that was stored has no row of the library, and no class.
    std::filesystem::create_directories(plant.folder.path("installed/mixtures"));
    share(std::string(dataFolder) + "/fluids", plant.folder.path("installed/fluids"));
    plant.installation = plant.folder.path("installed/frigana");
    plant("1\n3\n2\n1\nR32.FLD\n0.6\nR125.FLD\n0.4\nMine\n2 DEF\n7\n");
    plant(propertyRequest(1, "", "Mine.mix", 2));
    file = ResultFile(plant.resultText());
    ASSERT_EQ(file.count(), 15);
    EXPECT_EQ(file.raw(10).substr(170), "   1674 NA ");
}

TEST(SaturationTable, LayoutAndRows) {
    Answer a(propertyRequest(2, "1 250.0 300.0 10.0"));
    ASSERT_EQ(a.file.count(), 5 + 6 + 4);
    EXPECT_EQ(a.file.raw(1), "1");
    EXPECT_EQ(a.file.raw(2), "0");
    EXPECT_EQ(a.file.raw(3), " 2");
    EXPECT_EQ(a.file.raw(4), "1       250.000000       300.000000        10.000000 ");
    EXPECT_EQ(a.file.raw(5), "6");
    for (int line = 6; line <= 11; ++line) expectRealColumns(a.file.raw(line), 27);
    for (int line = 12; line <= 15; ++line) EXPECT_EQ(a.file.raw(line), "0");
    // R134a at 273.15 K would be the reference state; at 270 K vapor is above liquid in h and s, below in density.
    const auto row = a.file.numbers(8);
    ASSERT_EQ(row.size(), 27u);
    EXPECT_EQ(row[0], 270.0);
    EXPECT_EQ(row[1], 270.0);
    EXPECT_GT(row[4], row[5]);
    EXPECT_LT(row[10], row[11]);
    EXPECT_LT(row[12], row[13]);
}

TEST(SaturationTable, LimitsOfTemperatureAndPressure) {
    Answer t(propertyRequest(2, "1 0 0 0"));
    ASSERT_EQ(t.file.count(), 9);
    // 169.85 K + 10 K and 374.21 K in tens; a ninth of 200 K is 22 K, 20 in tens.
    EXPECT_EQ(t.file.raw(4), "1       170.000000       370.000000        20.000000 ");
    EXPECT_EQ(t.file.raw(5), "0");
    Answer p(propertyRequest(2, "2 0 0 0"));
    // Pressure: at least 100 kPa, to 4059.28 kPa in hundreds; a ninth of 3900 kPa is 433 kPa.
    EXPECT_EQ(p.file.raw(4), "2       100.000000      4000.000000       400.000000 ");
}

TEST(IsopropertyTable, LayoutAndRows) {
    Answer a(propertyRequest(3, "2 1 1000.0 280.0 400.0 20.0"));
    ASSERT_EQ(a.file.count(), 6 + 7 + 3);
    EXPECT_EQ(a.file.raw(1), "1");
    EXPECT_EQ(a.file.raw(2), "0");
    EXPECT_EQ(a.file.raw(3), "0");
    EXPECT_EQ(a.file.raw(4), " 3");
    EXPECT_EQ(a.file.raw(5), "2 1      1000.000000       280.000000       400.000000        20.000000 ");
    EXPECT_EQ(a.file.raw(6), "7");
    for (int line = 7; line <= 13; ++line) {
        expectRealColumns(a.file.raw(line), 14);
        EXPECT_EQ(a.file.numbers(line)[1], 1000.0);
        EXPECT_EQ(a.file.numbers(line)[0], 280.0 + 20.0 * (line - 7));
    }
    for (int line = 14; line <= 16; ++line) EXPECT_EQ(a.file.raw(line), "0");
    EXPECT_GT(a.file.numbers(7)[2], 1000.0);  // liquid at 280 K
    EXPECT_LT(a.file.numbers(13)[2], 50.0);   // vapor at 400 K
}

TEST(IsopropertyTable, EveryPairingGivesTheSameStates) {
    // One state of the vapor from each of the six pairings.
    Answer tp(propertyRequest(3, "1 2 350.0 500.0 900.0 100.0"));
    const double D = tp.file.numbers(7)[2];
    char line[80];
    std::snprintf(line, sizeof line, "1 3 350.0 %.9f %.9f %.9f", D, D + 4.0, 1.0);
    Answer td(propertyRequest(3, line));
    EXPECT_NEAR(td.file.numbers(7)[1], 500.0, 1e-4);
    std::snprintf(line, sizeof line, "2 3 500.0 %.9f %.9f %.9f", D, D + 4.0, 1.0);
    Answer pd(propertyRequest(3, line));
    EXPECT_NEAR(pd.file.numbers(7)[0], 350.0, 1e-4);
    std::snprintf(line, sizeof line, "3 1 %.9f 350.0 390.0 10.0", D);
    Answer dt(propertyRequest(3, line));
    EXPECT_NEAR(dt.file.numbers(7)[1], 500.0, 1e-4);
    std::snprintf(line, sizeof line, "3 2 %.9f 500.0 900.0 100.0", D);
    Answer dp(propertyRequest(3, line));
    EXPECT_NEAR(dp.file.numbers(7)[0], 350.0, 1e-4);
    Answer pt(propertyRequest(3, "2 1 500.0 350.0 390.0 10.0"));
    EXPECT_NEAR(pt.file.numbers(7)[2], D, 1e-5);
}

TEST(IsopropertyTable, LimitsNeedNothingButTheFluid) {
    const char* pairs[] = {"1 2", "2 1", "1 3", "3 1", "2 3", "3 2"};
    for (const char* pair : pairs) {
        SCOPED_TRACE(pair);
        Answer a(propertyRequest(3, std::string(pair) + " 0 0 0 0"));
        ASSERT_EQ(a.file.count(), 9);
        EXPECT_EQ(a.file.raw(6), "0");
        const auto line = a.file.numbers(5);
        ASSERT_EQ(line.size(), 6u);
        EXPECT_GT(line[2], 0.0);
        EXPECT_GE(line[5], 10.0);
        EXPECT_EQ(std::fmod(line[4], 10.0), 0.0);
    }
}

TEST(StatePoint, Layout) {
    Answer a(propertyRequest(4, "1 300.0 2 1000.0"));
    ASSERT_EQ(a.file.count(), 8);
    EXPECT_EQ(a.file.raw(1), "1");
    for (int line : {2, 3, 4, 7, 8}) EXPECT_EQ(a.file.raw(line), "0");
    EXPECT_EQ(a.file.raw(5), " 4");
    expectRealColumns(a.file.raw(6), 15);
    const auto row = a.file.numbers(6);
    EXPECT_EQ(row[0], 300.0);
    EXPECT_EQ(row[1], 1000.0);
    EXPECT_NEAR(row[2] * row[3], 1.0, 1e-2);  // D and V as printed
}

TEST(SaturationPoints, LayoutOfBothOperations) {
    for (int sub : {5, 6}) {
        SCOPED_TRACE(sub);
        Answer a(propertyRequest(sub, "1 280.0"));
        ASSERT_EQ(a.file.count(), 8);
        EXPECT_EQ(a.file.raw(1), "1");
        for (int line : {2, 3, 4, 5, 8}) EXPECT_EQ(a.file.raw(line), "0");
        EXPECT_EQ(a.file.trimmed(6), std::to_string(sub));
        expectRealColumns(a.file.raw(7), 27);
        EXPECT_EQ(a.file.numbers(7)[0], 280.0);
    }
}

// ---- codes ----------------------------------------------------------------------------------------------------------

TEST(PropertyCodes, EveryReachableCheckEndsTheRunWithItsText) {
    // R134a: 169.85 K to 455 K, critical point 374.21 K and 4059.28 kPa.
    const std::string tmin = "(169.8500 K)", tmax = "(455.0000 K)", tc = "(374.2100 K)", pc = "(4059.2800 kPa)";
    const struct {
        int code, sub;
        const char* line;
        std::string text;
    } rows[] = {
        {102201, 2, "1 150 300 10", "Error: Initial temperature < minimum temperature " + tmin},
        {102202, 2, "1 250 380 10", "Error: Final temperature > critical temperature " + tc},
        {102204, 2, "2 100 5000 100", "Error: Final pressure > critical pressure " + pc},
        {102211, 2, "1 300 300 10", "Error: Final value was less or equal  than Initial value!"},
        {102212, 2, "1 250 300 -1", "Error: Increment was less or equal than zero!"},
        {102213, 2, "1 250 300 0.001", "Error: Increase increment size!"},
        {102214, 2, "1 250 300 26", "Error: Reduce increment size!"},
        {103201, 3, "1 2 150 100 500 100", "Error: Constant temperature was less than minimum temperature " + tmin},
        {103202, 3, "1 2 460 100 500 100", "Error: Constant temperature was higher than maximum temperature " + tmax},
        {103205, 3, "3 1 -1 300 400 10", "Error: Constant density was less or equal than zero"},
        {103211, 3, "2 1 500 150 400 10", "Error: Initial temperature < minimum temperature " + tmin},
        {103212, 3, "2 1 500 300 460 10", "Error: Final temperature > maximum temperature " + tmax},
        {103215, 3, "2 3 500 -1 400 10", "Error: Initial density was less or equal than zero kPa)"},
        {103221, 3, "2 1 500 300 300 10", "Error: Final value was less or equal  than Initial value!"},
        {103222, 3, "2 1 500 300 400 -10", "Error: Increment was less or equal than zero!"},
        {103223, 3, "2 1 500 300 400 0.01", "Error: Increase increment size!"},
        {103224, 3, "2 1 500 300 400 60", "Error: Reduce increment size!"},
        {104201, 4, "1 150 2 1000", "Error: Temperature was less than minimum temperature " + tmin},
        {104205, 4, "3 -1 2 1000", "Error: Density was less or equal than zero"},
        {104211, 4, "2 1000 1 150", "Error: Temperature was less than minimum temperature " + tmin},
        {104215, 4, "2 1000 3 -1", "Error: Density was less or equal than zero"},
        {105201, 5, "1 150", "Error: Temperature was less than minimum temperature " + tmin},
        {105202, 5, "2 380", "Error: Temperature was higher than critical temperature " + tc},
        {105212, 5, "3 5000", "Error: Pressure was higher than critical pressure " + pc},
        {105201, 6, "1 150", "Error: Temperature was less than minimum temperature " + tmin},
        {105202, 6, "2 380", "Error: Temperature was higher than critical temperature " + tc},
        {105212, 6, "4 5000", "Error: Pressure was higher than critical pressure " + pc},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.code);
        Answer a(propertyRequest(row.sub, row.line));
        EXPECT_EQ(a.plant.resultText(), refused(row.code, row.text));
    }
}

TEST(PropertyCodes, LimitsThatDependOnTheEngineAreQuoted) {
    // The lowest pressure is the saturation pressure one kelvin above the triple point; the highest density that of the
    // equation. The numbers come out of the engine, so only the words around them are known beforehand.
    const struct {
        int code, sub;
        const char* line;
        const char* before;
        const char* after;
    } rows[] = {
        {102203, 2, "2 0.1 1000 10", "Error: Initial pressure < minimum pressure (", " kPa)"},
        {103203, 3, "2 1 0.1 300 400 10", "Error: Constant pressure was less than minimum pressure (", " kPa)"},
        {103206, 3, "3 1 5000 300 400 10", "Error: Constant density was higher than maximum density (", " kg/m3)"},
        {103213, 3, "1 2 300 0.1 400 10", "Error: Initial pressure < minimum pressure (", " kPa)"},
        {103216, 3, "1 3 300 10 5000 100", "Error: Final density was higher than maximum density (", " kg/m3)"},
        {104203, 4, "2 0.1 1 300", "Error: Pressure was less than minimum pressure (", " kPa)"},
        {104213, 4, "1 300 2 0.1", "Error: Pressure was less than minimum pressure (", " kPa)"},
        {105211, 5, "3 0.1", "Error: Pressure was less than minimum pressure (", " kPa)"},
        {105211, 6, "4 0.1", "Error: Pressure was less than minimum pressure (", " kPa)"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.code);
        Answer a(propertyRequest(row.sub, row.line));
        ASSERT_EQ(a.file.count(), 3);
        EXPECT_EQ(a.file.trimmed(1), "0");
        EXPECT_EQ(a.file.trimmed(2), std::to_string(row.code));
        const std::string text = a.file.trimmed(3);
        EXPECT_EQ(text.substr(0, std::string(row.before).size()), row.before);
        EXPECT_EQ(text.substr(text.size() - std::string(row.after).size()), row.after);
        const double limit = std::stod(text.substr(std::string(row.before).size()));
        EXPECT_GT(limit, 0.1);
    }
}

// ---- edge cases -----------------------------------------------------------------------------------------------------

TEST(SaturationTableEdges, PressureTableStartsAtAnUnroundedLowestPressure) {
    // Ammonia 1 K above its triple point has less than 100 kPa, CO2 has 529 kPa and more.
    Answer a(propertyRequest(2, "2 0 0 0", "CO2.FLD"));
    const double from = a.file.numbers(4)[1];
    EXPECT_GT(from, 500.0);
    EXPECT_NE(std::fmod(from, 1.0), 0.0);
}

TEST(SaturationTableEdges, ATableUpToTheCriticalTemperaturePassesItsChecks) {
    Answer a(propertyRequest(2, "1 354.21 374.21 10"));
    ASSERT_FALSE(a.file.refused());
    ASSERT_EQ(a.file.count(), 5 + 3 + 4);
}

TEST(SaturationTableEdges, TheSmallestStepFillsTheWholeTable) {
    Answer a(propertyRequest(2, "1 250 269.99 0.0100001"));
    ASSERT_FALSE(a.file.refused());
    EXPECT_EQ(a.file.count(), 5 + static_cast<int>(a.file.number(5)) + 4);
    EXPECT_LE(a.file.number(5), 2000.0);
    EXPECT_GE(a.file.number(5), 1999.0);
}

TEST(IsopropertyTableEdges, TheSameCodeTwiceComputesNothing) {
    const Answer last(propertyRequest(3, "2 1 1000 280 400 20"));
    for (const char* twice : {"1 1 300 280 400 20", "2 2 300 280 400 20", "3 3 300 280 400 20", "2 4 300 280 400 20",
                              "0 3 300 280 400 20"}) {
        const Answer a(propertyRequest(3, twice));
        ASSERT_EQ(a.file.count(), 6 + 7 + 3) << twice;
        for (int line = 7; line < 14; ++line) EXPECT_EQ(a.file.raw(line), last.file.raw(line)) << twice;
    }
}

TEST(IsopropertyTableEdges, AFailedRowHoldsWhatWasAskedFor) {
    Answer a(propertyRequest(3, "1 2 300 1000 900000 400000"));
    ASSERT_FALSE(a.file.refused());
    const auto row = a.file.numbers(9);
    EXPECT_EQ(row[0], 300.0);
    EXPECT_EQ(row[1], 801000.0);
    for (std::size_t i = 2; i < row.size(); ++i) EXPECT_EQ(row[i], -777.0);
}

TEST(StatePointEdges, AboveTheHighestTemperatureTheFileHoldsMissingValues) {
    Answer a(propertyRequest(4, "1 900.0 2 1000.0"));
    ASSERT_EQ(a.file.count(), 8);
    const auto row = a.file.numbers(6);
    EXPECT_EQ(row[0], 900.0);
    EXPECT_EQ(row[1], 1000.0);
    for (std::size_t i = 2; i < row.size(); ++i) EXPECT_EQ(row[i], -777.0);
}

TEST(SaturationPointEdges, PureFluidsGiveTheSameNumbersInBothOperations) {
    for (const char* line : {"1 280.0", "2 280.0", "3 500.0", "4 500.0"}) {
        Answer five(propertyRequest(5, line));
        Answer six(propertyRequest(6, line));
        EXPECT_EQ(five.file.raw(7), six.file.raw(7)) << line;
    }
}

TEST(SaturationPointEdges, TheCriticalTemperaturePassesItsCheck) {
    Answer a(propertyRequest(6, "1 374.21"));
    EXPECT_NE(a.file.trimmed(2), "105202");
}

TEST(TableLimitsEdges, AStepOfZeroAsksForLimitsOnly) {
    Answer a(propertyRequest(2, "1 250 300 0.0"));
    EXPECT_EQ(a.file.raw(5), "0");
    EXPECT_EQ(a.file.count(), 9);
}

}  // namespace
}  // namespace frigana::test
