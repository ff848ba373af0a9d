// The diagrams of all cycles with one fluid: where the dome begins and what its rows hold, and the headings by which
// readers find their way.
#include <cmath>

#include "OneFluidCycles.h"

namespace frigana::test {
namespace {

constexpr double domeStart = 0.699999988079071 * 0.949999988079071;  // single-precision numbers both
constexpr double domeEnd = 0.8299999833106995;

// Liquid and vapor of the fluid's own composition at a temperature (1) or a pressure (4).
std::vector<double> saturation(const char* fluid, int code, double value) {
    char line[60];
    std::snprintf(line, sizeof line, "%d %.17g", code, value);
    const bool pure = std::string(fluid).ends_with(".FLD");
    Plant plant;
    plant(propertyRequest(6, line, fluid, pure ? 1 : 2));
    return ResultFile(plant.hasResult() ? plant.resultText() : "").numbers(7);
}

struct Drawn {
    const CycleKind* kind;
    const char* level;  // the section whose mean pressure the dome starts from
    std::vector<std::pair<int, Parameter>> changes;
    const char* fluid;
};
const Drawn drawn[] = {
    {&withExchanger, "EVAPORATOR", {{3, {1, 20.0}}}, "R134A.FLD"},
    {&withExchanger, "EVAPORATOR", {}, "R410A.MIX"},
    {&transcritical, "EVAPORATOR", {{3, {1, 100.0}}}, "CO2.FLD"},
    {&liquidInjection, "EVAPORATOR", {{3, {1, 20.0}}}, "R22.FLD"},
    {&rankine, "CONDENSER", {}, "R245FA.FLD"},
    {&twoStage, "EVAPORATOR", {{3, {1, 20.0}}}, "R134A.FLD"},
    {&multiStage, "EVAPORATOR", {{3, {1, 20.0}}}, "R134A.FLD"},
    {&booster, "LT EVAPORATOR", {}, "CO2.FLD"},
};

TEST(Diagrams, TheDomeStartsBelowTheMeanPressureAndItsRowsAreSaturated) {
    for (const Drawn& row : drawn) {
        SCOPED_TRACE(std::to_string(row.kind->sub) + row.fluid);
        auto parameters = row.kind->parameters;
        for (const auto& [k, given] : row.changes) parameters[static_cast<std::size_t>(k - 1)] = given;
        Plant plant;
        plant(cycleRequest(row.kind->sub, parameters, row.fluid));
        const ResultFile file(plant.resultText());
        ASSERT_EQ(file.count(), row.kind->lines) << file.trimmed(3);
        const int level = file.find(row.level);
        const double mean = (file.number(level + 1) + file.number(level + 8)) / 2;
        const int PH = file.find("PRESSURE & ENTHALPY data for graphic P-h");
        const int TS = file.find("Temperature & enthalpy data for graphic T-s");
        ASSERT_TRUE(level > 0 && PH > 0 && TS > 0);
        const double first = domeStart * mean, PC = file.number(PH + 28);
        const double step = (domeEnd * PC - first) / 11.0;
        for (int i = 0; i < 9; ++i) {
            SCOPED_TRACE(i);
            const double P = file.number(PH + 1 + 3 * i), T = file.number(TS + 1 + 3 * i);
            EXPECT_NEAR(P / (first + i * step), 1.0, 1e-12);
            const auto byP = saturation(row.fluid, 4, P), byT = saturation(row.fluid, 1, T);
            ASSERT_EQ(byP.size(), 27u);
            ASSERT_EQ(byT.size(), 27u);
            EXPECT_NEAR(file.number(PH + 2 + 3 * i), byP[10], 1e-5);  // six decimals
            EXPECT_NEAR(file.number(PH + 3 + 3 * i), byP[11], 1e-5);
            EXPECT_NEAR(T, (byP[0] + byP[1]) / 2, 1e-5);
            EXPECT_NEAR(file.number(TS + 2 + 3 * i), byT[12], 1e-5);
            EXPECT_NEAR(file.number(TS + 3 + 3 * i), byT[13], 1e-5);
        }
        const double H = (file.number(PH + 26) + file.number(PH + 27)) / 2;
        const double S = (file.number(TS + 26) + file.number(TS + 27)) / 2;
        EXPECT_NEAR(file.number(PH + 29), H, 1e-9);
        EXPECT_NEAR(file.number(PH + 30), H, 1e-9);
        EXPECT_NEAR(file.number(TS + 29), S, 1e-9);
        EXPECT_NEAR(file.number(TS + 30), S, 1e-9);
    }
}

// Every line of a result that is no number, behind the four of the head.
std::vector<std::string> wordsOf(const ResultFile& file) {
    std::vector<std::string> words;
    for (int line = 5; line <= file.count(); ++line)
        if (std::isnan(file.number(line)) && !file.trimmed(line).empty()) words.push_back(file.raw(line).substr(1));
    return words;
}
std::vector<std::string> withGraphs(std::vector<std::string> headings, const char* cycleHeading) {
    for (const char* heading :
         {"INFORMATION FOR GRAPHIC P-h", cycleHeading, "PRESSURE & ENTHALPY data for graphic P-h",
          "INFORMATION FOR GRAPHIC T-s", "CYCLE data for graphic T-s ", "Temperature & enthalpy data for graphic T-s"})
        headings.emplace_back(heading);
    return headings;
}
const char* const usual = "CYCLE data for graphic P-h ";

TEST(Headings, OfTheCycleWithHeatExchanger) {
    EXPECT_EQ(wordsOf(solve(withExchanger, {})),
              withGraphs({"EVAPORATOR", "SUCTION LINE - BEFORE HEAT EXCHANGER", "SUCTION LINE - AFTER EXCHANGER",
                          "COMPRESSOR", "DISCHARGE LINE", "CONDENSER", "LIQUID LINE - BEFORE HEAT EXCHANGER",
                          "LIQUID LINE - AFTER HEAT EXCHANGER", "EXPANSION DEVICE",
                          "HEAT EXCHANGER (SUCTION LINE - LIQUID LINE)", "PERFORMANCE PARAMETERS"},
                         usual));
}

TEST(Headings, OfTheRankineCycle) {
    EXPECT_EQ(wordsOf(solve(rankine, {})),
              withGraphs({"BOILER", "HIGH PRESSURE VAPOR LINE", "TURBINE", "LOW PRESSURE VAPOR LINE", "CONDENSER",
                          "PUMP", "LIQUID LINE", "COOLING WATER", "GAS EXHAUSTION", "PERFORMANCE PARAMETERS"},
                         "CYCLE data for graphic P-h"));
}

TEST(Headings, OfTheTranscriticalCycle) {
    EXPECT_EQ(wordsOf(solve(transcritical, {})),
              withGraphs({"EVAPORATOR", "SUCTION LINE - BEFORE HEAT EXCHANGER", "SUCTION LINE - AFTER HEAT EXCHANGER",
                          "COMPRESSOR", "DISCHARGE LINE", "GAS COOLER", "LIQUID LINE - BEFORE HEAT EXCHANGER",
                          "LIQUID LINE - AFTER HEAT EXCHANGER", "EXPANSION DEVICE",
                          "HEAT EXCHANGER (SUCTION LINE - LIQUID LINE)", "PERFORMANCE PARAMETERS"},
                         usual));
}

TEST(Headings, OfTheCycleWithLiquidInjection) {
    EXPECT_EQ(wordsOf(solve(liquidInjection, {})),
              withGraphs({"EVAPORATOR", "SUCTION LINE", "COMPRESSOR", "DISCHARGE LINE", "CONDENSER", "LIQUID LINE",
                          "EXPANSION DEVICE", "LIQUID INJECTION LINE", "LIQUID INJECTION EXPANSION VALVE",
                          "PERFORMANCE PARAMETERS"},
                         usual));
}

// Behind the valve of the injection the mixing runs through the dew point at its own pressure.
TEST(Diagrams, TheInjectionIsDrawnThroughTheDewPointAtItsPressure) {
    const ResultFile file = solve(liquidInjection, {{16, {1, 350.0}}});
    ASSERT_EQ(file.count(), liquidInjection.lines);
    const int PH = file.find("INFORMATION FOR GRAPHIC P-h"), TS = file.find("INFORMATION FOR GRAPHIC T-s");
    const int valve = file.find("LIQUID INJECTION EXPANSION VALVE");
    const double P = file.number(valve + 8);  // at its outlet
    const auto dew = saturation(liquidInjection.fluid, 4, P);
    const auto pair = [&](int graph, int i) { return graph + 2 * i; };
    EXPECT_NEAR(file.number(pair(PH, 16)), P, 1e-6);
    EXPECT_NEAR(file.number(pair(PH, 16) + 1), dew[11], 1e-5);
    EXPECT_NEAR(file.number(pair(TS, 16)), dew[1], 1e-5);
    EXPECT_NEAR(file.number(pair(TS, 16) + 1), dew[13], 1e-5);
    EXPECT_EQ(file.raw(pair(PH, 15) + 1), file.raw(valve + 11));       // the valve's outlet before it
    EXPECT_EQ(file.raw(pair(PH, 17) + 1), file.raw(pair(PH, 1) + 1));  // the compressor's inlet behind it
}

}  // namespace
}  // namespace frigana::test
