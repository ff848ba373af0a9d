// A liquid line whose subcooling is given as 0 ends on the bubble line: at exactly the pressure and the temperature of
// saturation a flash would find vapor as often as liquid.
#include "OneFluidCycles.h"

namespace frigana::test {
namespace {

const CycleKind basic{1, "R134A.FLD", basicParameters(), 283};

struct LiquidLine {
    const CycleKind* kind;
    int temperature, drop;  // parameters
    int condenserOutlet;    // parameter, set to no subcooling
    int outlet;             // first line of the outlet's row
};

TEST(SaturatedLiquid, StandsAtTheEndOfALineWithoutSubcooling) {
    const LiquidLine lines[] = {
        {&basic, 14, 15, 12, 117},
        {&withExchanger, 18, 19, 14, 157},
        {&liquidInjection, 14, 15, 12, 117},
        {&multiStage, 14, 15, 12, 117},
    };
    for (const LiquidLine& line : lines)
        for (const char* fluid : {"R134A.FLD", "PROPANE.FLD", "R32.FLD", "AMMONIA.FLD", "R1234YF.FLD", "R410A.MIX"})
            for (double drop : {0.0, 3.0, 5.5, 8.0, 11.0, 14.5, 18.0}) {
                SCOPED_TRACE(line.kind->sub);
                auto parameters = line.kind->parameters;
                const auto set = [&](int k, Parameter p) { parameters[static_cast<std::size_t>(k - 1)] = p; };
                set(line.condenserOutlet, {2, 0.0});
                set(line.temperature, {3, 0.0});
                set(line.drop, {1, drop});
                if (line.kind == &withExchanger) set(20, {2, 0.0});
                Plant plant;
                plant(cycleRequest(line.kind->sub, parameters, fluid));
                const ResultFile file(plant.resultText());
                ASSERT_EQ(file.count(), line.kind->lines) << fluid << " " << drop << " " << file.trimmed(3);
                const StateRow outlet = stateRow(file, line.outlet);
                EXPECT_EQ(outlet.Q, 0.0) << fluid << " " << drop;
                EXPECT_NEAR(outlet.T, outlet.TSAT, 1e-6) << fluid << " " << drop;
            }
}

// An exchanger without a fall and a line without changes pass the bubble point on as it is.
TEST(SaturatedLiquid, PassesAnExchangerThatExchangesNothing) {
    for (const char* fluid : {"R134A.FLD", "PROPANE.FLD", "R32.FLD", "AMMONIA.FLD", "R1234YF.FLD", "R410A.MIX"})
        for (double T : {303.15, 308.15, 313.15, 318.15}) {
            const ResultFile file =
                solve(withExchanger, {{13, {1, T}}, {14, {2, 0.0}}, {18, {2, 0.0}}, {20, {2, 0.0}}}, fluid);
            ASSERT_EQ(file.count(), withExchanger.lines) << fluid << " " << T << " " << file.trimmed(3);
            for (int row : {130, 137, 150, 157, 170, 188, 195})
                for (int i = 0; i < 7; ++i) EXPECT_EQ(file.raw(row + i), file.raw(115 + i)) << fluid << row + i;
        }
}

}  // namespace
}  // namespace frigana::test
