// The transcritical cycle as a user runs it.
#include "OneFluidCycles.h"

namespace frigana::test {
namespace {

TEST(TranscriticalCodes, EveryReachableCheckEndsTheRunWithItsText) {
    const CodeCase rows[] = {
        {207202, "Error: Gas cooler pressure is less than or equal to critical pressure!", {{13, {2, 7000.0}}}},
        {207205,
         "Error: Gas cooler - outlet pressure is less than or equal to critical pressure!",
         {{13, {2, 7500.0}}, {15, {1, 1000.0}}}},
        {207210,
         "Error: Liquid line before heat exchanger - outlet temperature is out of range!",
         {{14, {1, 250.0}}, {16, {2, 199.0}}}},
        {207211, "Error: Liquid line before heat exchanger - temperature change is out of range!", {{16, {1, 320.0}}}},
        {207215,
         "Error: Liquid side at heat exchanger - inlet pressure is less than or equal to zero!",
         {{13, {2, 1830.0}}, {17, {1, 1000.0}}, {21, {1, 900.0}}, {14, {1, 500.0}}},
         "C12.FLD"},
        {207216,
         "Error: Liquid side at heat exchanger - inlet temperature was less than or equal to zero!",
         {{14, {1, 250.0}}, {16, {2, 140.0}}, {20, {2, 150.0}}}},
        {207219,
         "Error: Liquid line after heat exchanger - outlet temperature is out of range!",
         {{14, {1, 250.0}}, {18, {2, 199.0}}}},
        {207220, "Error: Liquid line after heat exchanger - temperature change is out of range!", {{18, {1, 320.0}}}},
        {207222, "Error: Evaporating temperature > critical temperature (304.1282 K)", {{1, {1, 310.0}}}},
        {207224, "Error: Evaporating pressure > critical pressure (7377.3000 kPa)", {{1, {2, 7400.0}}}},
        {207228,
         "Error: Evaporator - inlet pressure > gas cooler pressure!",
         {{1, {2, 7300.0}}, {3, {1, 600.0}}, {13, {2, 7400.0}}}},
        {207229,
         "Error: Evaporator - outlet pressure was less than or equal to zero!",
         {{1, {2, 400.0}}, {3, {1, 1000.0}}}},
        {207230, "Error: Evaporator - superheat is out of range!", {{2, {1, 250.0}}}},
        {207231,
         "Error: Suction line before heat exchanger - pressure drop is out of range!",
         {{1, {1, 300.0}}, {5, {2, 20.0}}}},
        {207232,
         "Error: Suction line before heat exchanger - drop of saturation temperature is out of range!",
         {{1, {2, 900.0}}, {5, {1, 1000.0}}}},
        {207233,
         "Error: Suction line before heat exchanger - outlet pressure was less than or equal to zero!",
         {{1, {1, 250.0}}, {13, {2, 4500.0}}, {5, {2, 100.0}}},
         "R134A.FLD"},
        {207234,
         "Error: Suction line before heat exchanger - Outlet temperature > critical temperature (304.1282 K)",
         {{4, {1, 310.0}}}},
        {207235, "Error: Suction line before heat exchanger - temperature change is out of range!", {{4, {1, 260.0}}}},
        {207237,
         "Error: Vapor side at heat exchanger - pressure drop is out of range!",
         {{1, {1, 300.0}}, {2, {2, 2.0}}, {4, {2, 0.0}}, {22, {2, 20.0}}}},
        {207238,
         "Error: Vapor side at heat exchanger - drop of saturation temperature is out of range!",
         {{1, {2, 900.0}}, {22, {1, 1000.0}}}},
        {207239, "Error: Heat exchanger - the heat trasfer is negative!", {{20, {3, 330.0}}}},
        {207240,
         "Error: Vapor side at heat exchanger - temperature change is out of range!",
         {{20, {2, 0.01}}, {22, {1, 300.0}}}},
        {207241,
         "Error: Suction line after heat exchanger - pressure drop is out of range!",
         {{1, {1, 300.0}}, {2, {2, 1.0}}, {4, {2, 0.0}}, {7, {2, 20.0}}}},
        {207242,
         "Error: Suction line after heat exchanger - drop of saturation temperature is out of range!",
         {{1, {2, 900.0}}, {7, {1, 1000.0}}}},
        {207243,
         "Error: Suction line after heat exchanger - outlet temperature is out of range!",
         {{1, {1, 350.0}}, {13, {2, 4000.0}}, {14, {1, 420.0}}, {2, {2, 60.0}}, {6, {2, 199.0}}},
         "R245FA.FLD"},
        {207244, "Error: Suction line after heat exchanger - temperature change is out of range!", {{6, {1, 200.0}}}},
        {207248, "Error: Discharge line - temperature change is out of range!", {{11, {1, 500.0}}}},
    };
    const UnreachableCode unreachable[] = {
        {207204, "the pressure of the gas cooler lies above the critical one, and its drop is not negative"},
        {207206, "the request is refused for the same limits"},
        {207208, "the request is refused for the same limits"},
        {207209, "the gas cooler's outlet lies above a critical pressure, all of which are above 1000 kPa"},
        {207213, "the request is refused for the same limits"},
        {207217, "the request is refused for the same limits"},
        {207225, "the evaporating pressure is at most the critical one, the gas cooler's above it"},
        {207246, "the request is refused for the same limits"},
    };
    checkCodes(transcritical, rows, unreachable, 35);
}

// ---- edge cases -----------------------------------------------------------------------------------------------------

TEST(TranscriticalEdges, NoExchangerIsOneSolution) {
    const ResultFile direct = solve(transcritical, {{20, {2, 0.0}}});
    for (int option : {1, 4}) {
        // A folder stands where a search would write its first scratch file.
        Plant plant;
        std::filesystem::create_directory(plant.folder.path("temporalA.txt"));
        plant(cycleRequest(7, transcritical.with({{20, {option, 0.0}}}), transcritical.fluid));
        ASSERT_TRUE(plant.hasResult()) << option;
        SCOPED_TRACE(option);
        expectSameResult(ResultFile(plant.resultText()), direct);
    }
    Plant plant;
    std::filesystem::create_directory(plant.folder.path("temporalA.txt"));
    plant(cycleRequest(7, transcritical.with({{20, {1, 0.3}}}), transcritical.fluid));
    EXPECT_FALSE(plant.hasResult());
}

TEST(TranscriticalEdges, GasCoolerOutletAtTheCriticalPressureIsRefused) {
    EXPECT_EQ(resultText(transcritical, {{13, {2, 7877.3}}, {15, {1, 1000.0}}}),
              failure(207205, "Error: Gas cooler - outlet pressure is less than or equal to critical pressure!"));
    EXPECT_EQ(solve(transcritical, {{13, {2, 7878.0}}, {15, {1, 1000.0}}}).count(), transcritical.lines);
}

TEST(TranscriticalEdges, EvaporatingAboveTheGasCoolerOutletTemperatureIsNotRefused) {
    const ResultFile file = solve(transcritical, {{1, {1, 290.0}}, {14, {1, 288.0}}});
    ASSERT_EQ(file.count(), transcritical.lines);
    EXPECT_EQ(file.number(214), 290.0);
}

TEST(TranscriticalEdges, AnOutletTemperatureOfZeroIsATemperature) {
    for (int option : {3, 5})
        EXPECT_EQ(resultText(transcritical, {{20, {option, 0.0}}}),
                  failure(207140, "Out of range: Heat exchanger efficiency - temperature setting"))
            << option;
}

TEST(Transcritical, OptionsOfTheExchangerAgree) {
    const ResultFile given = solve(transcritical, {{20, {2, 4.0}}});
    ASSERT_EQ(given.count(), transcritical.lines);
    const struct { int option, line; } options[] = {{1, 212}, {3, 167}, {4, 189}, {5, 181}};
    for (const auto& [option, line] : options) {
        const ResultFile file = solve(transcritical, {{20, {option, given.number(line)}}});
        ASSERT_EQ(file.count(), transcritical.lines) << option;
        EXPECT_NEAR(file.number(172), 4.0, 1e-4) << option;
        EXPECT_NEAR(file.number(203), given.number(203), 1e-5) << option;
    }
}

}  // namespace
}  // namespace frigana::test
