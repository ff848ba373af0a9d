// An exchanger that exchanges nothing, vapor that leaves an evaporator saturated, and values that there are not.
#include <cmath>

#include "45_LineSizing.h"
#include "Larger.h"
#include "OneFluidCycles.h"
#include "Substances.h"

namespace frigana::test {
namespace {

// ---- no exchange
// ------------------------------------------------------------------------------------------------------

// First lines of the exchanger's rows: the liquid side may have short rows of five lines.
struct Exchanger {
    const CycleKind* kind;
    int liquidIn, liquidOut, fall, vaporIn, vaporOut, rise, heat;
    double drop;  // kPa
};
const Exchanger exchangers[] = {
    {&withExchanger, 188, 195, 204, 205, 212, 221, 224, 20.0},
    {&transcritical, 161, 166, 172, 173, 180, 189, 192, 200.0},
    {&booster, 249, 254, 260, 261, 268, 277, 280, 200.0},
};

void expectIdle(const Exchanger& x, const ResultFile& file, double liquidDrop, double vaporDrop) {
    ASSERT_EQ(file.count(), x.kind->lines) << file.trimmed(2) << file.trimmed(3);
    const auto at = [&](int row, int line) { return file.number(row + line); };  // P, T, D, H, S
    EXPECT_NEAR(at(x.liquidIn, 0) - at(x.liquidOut, 0), liquidDrop, 1e-9);
    EXPECT_NEAR(at(x.vaporIn, 0) - at(x.vaporOut, 0), vaporDrop, 1e-9);
    EXPECT_NEAR(at(x.liquidOut, 3), at(x.liquidIn, 3), 1e-10);
    EXPECT_NEAR(at(x.vaporOut, 3), at(x.vaporIn, 3), 1e-10);
    EXPECT_EQ(file.number(x.heat), 0.0);
    // what is printed is what the rows show
    EXPECT_NEAR(file.number(x.fall), at(x.liquidIn, 1) - at(x.liquidOut, 1), 1e-9);
    EXPECT_NEAR(file.number(x.rise), at(x.vaporOut, 1) - at(x.vaporIn, 1), 1e-9);
    if (vaporDrop > 0) {
        EXPECT_LT(file.number(x.rise), 0.0);  // throttled vapor cools
    }
}

TEST(IdleExchanger, ADropOnASideIsThrottlingAndNoFailure) {
    for (const Exchanger& x : exchangers) {
        SCOPED_TRACE(x.kind->sub);
        expectIdle(x, solve(*x.kind, {{20, {2, 0.0}}, {21, {1, x.drop}}}), x.drop, 0.0);
        expectIdle(x, solve(*x.kind, {{20, {2, 0.0}}, {22, {1, x.drop}}}), 0.0, x.drop);
        expectIdle(x, solve(*x.kind, {{20, {2, 0.0}}, {21, {1, x.drop}}, {22, {1, x.drop}}}), x.drop, x.drop);
        expectIdle(x, solve(*x.kind, {{20, {2, 0.0}}}), 0.0, 0.0);
    }
}

TEST(IdleExchanger, SaturatedLiquidFlashes) {
    const ResultFile file = solve(withExchanger, {{14, {2, 0.0}}, {20, {2, 0.0}}, {21, {1, 50.0}}});
    ASSERT_EQ(file.count(), withExchanger.lines) << file.trimmed(3);
    EXPECT_GT(file.number(200), 0.0);  // quality behind the exchanger
    EXPECT_LT(file.number(200), 0.1);
    EXPECT_GT(file.number(204), 0.5);  // fall of its temperature
}

TEST(IdleExchanger, AFallWithADropStillMustGiveHeatAway) {
    EXPECT_EQ(solve(withExchanger, {{20, {2, 1e-3}}, {22, {1, 20.0}}}).trimmed(2), "202240");
    EXPECT_EQ(solve(transcritical, {{20, {2, 1e-3}}, {22, {1, 200.0}}}).trimmed(2), "207240");
    EXPECT_EQ(solve(booster, {{20, {2, 1e-3}}, {22, {1, 200.0}}}).trimmed(2), "214253");
}

// ---- no superheat
// -----------------------------------------------------------------------------------------------------

// The vapor leaves at the dew point of the outlet's pressure, and every later temperature counts from there.
TEST(SaturatedVapor, BehindAnEvaporatorWithADropTemperaturesCountFromTheOutlet) {
    const struct {
        const CycleKind* kind;
        int rise;  // line of the rise of the suction line
        double drop;
    } rows[] = {
        {&withExchanger, 43, 30.0}, {&transcritical, 43, 300.0}, {&liquidInjection, 43, 30.0}, {&twoStage, 43, 20.0}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.kind->sub);
        for (const double rise : {0.0, 2.0}) {
            const ResultFile file = solve(*row.kind, {{2, {2, 0.0}}, {3, {1, row.drop}}, {4, {2, rise}}});
            ASSERT_EQ(file.count(), row.kind->lines) << file.trimmed(2) << file.trimmed(3);
            EXPECT_EQ(file.number(18), 1.0);                      // saturated at the outlet
            EXPECT_NEAR(file.number(14), file.number(19), 1e-9);  // at its own saturation temperature
            EXPECT_EQ(file.number(22), 0.0);                      // superheat
            EXPECT_GT(file.number(7) - file.number(14), 1.0);     // colder than the inlet
            EXPECT_NEAR(file.number(row.rise), rise, 1e-9);
            EXPECT_NEAR(file.number(35) - file.number(28), rise, 1e-9);
        }
    }
}

TEST(SaturatedVapor, AnIdleExchangerBehindItIsSolved) {
    for (const CycleKind* kind : {&withExchanger, &transcritical}) {
        const ResultFile file = solve(*kind, {{2, {2, 0.0}}, {3, {1, 20.0}}, {4, {2, 0.0}}, {20, {2, 0.0}}});
        EXPECT_EQ(file.count(), kind->lines) << file.trimmed(2) << file.trimmed(3);
    }
}

// ---- what could not be computed
// ---------------------------------------------------------------------------------------

TEST(FailedPoints, ACompressionThatCouldNotBeComputedIsNotCoolEnough) {
    // An efficiency so low that the outlet lies far beyond the equation of the fluid.
    EXPECT_EQ(
        resultText(
            liquidInjection,
            {{1, {1, 225.0}}, {2, {2, 100.0}}, {4, {1, 360.0}}, {11, {1, 360.0}}, {7, {1, 0.25}}, {16, {1, 600.0}}},
            "R1234YF.FLD"),
        failure(209234, "Error: Fraction mass flow of liquid injection is out of range!"));
}

TEST(FailedPoints, APlantOfCapacityZeroHasNoEfficiency) {
    for (const int option : {1, 2}) {
        const ResultFile file = solve(rankine, {{6, {option, 0.0}}});
        ASSERT_EQ(file.count(), rankine.lines);
        EXPECT_EQ(file.number(163), -777.0);
        EXPECT_EQ(file.number(155), 0.0);
        for (int line = 5; line <= file.count(); ++line) EXPECT_NE(file.trimmed(line), "NaN") << line;
    }
}

constexpr PipeRun run{1.5e-6, 20.0, 1.0, 3, 0.0};
constexpr VelocityRange range{4.0, 20.0};

TEST(FailedPoints, WithoutAViscosityAPipeHasAVelocityAndNoLoss) {
    const PipeFlow flow{0.02, 12.0, -777.0};
    double v = 0, dp = 0;
    PIPING_MRDM(flow, run, 0.02, v, dp);
    EXPECT_NEAR(v, 0.02 / (12.0 * 0.7854 * 0.0004), 1e-6);
    EXPECT_EQ(dp, -777.0);
    double t = 5.0, D = 0;
    PIPING_MRDP(flow, run, range, t, D, v);
    EXPECT_EQ(t, -777.0);
    EXPECT_NEAR(v, 12.0, 0.01);  // that of the mean velocity

    const SUBSTANCE& s = fluid("R134A.FLD");
    for (const int option : {3, 4}) {
        PIPEOPT pipes;
        clearPipes(pipes);
        SOLTUBES(option, flow, run, option == 3 ? 0.03 : 1.0, s, 250.0, 1, 1, 1, range, pipes);
        for (int i = 1; i <= pipeOptions; ++i) {
            EXPECT_EQ(pipes.DP[i], -777.0) << i;
            EXPECT_EQ(pipes.DTSAT[i], -777.0) << i;
            EXPECT_TRUE(pipes.VEL[i] > 0.0 || pipes.DEXT[i] == -777.0) << i;
        }
    }
}

// A discharge line so hot that its states lie beyond the equation of the fluid.
TEST(FailedPoints, ALineThatCouldNotBeComputedHasATableWithoutValues) {
    Plant plant;
    plant(cycleRequest(
        5, {{1, 250}, {2, 60}, {1, 0}, {1, 355}, {4, 1},   {3, 10}, {1, 0.25}, {1, 0.85}, {2, 4},   {4, 0.5},
            {1, 340}, {2, 4},  {1, 0}, {2, 1},   {4, 0.4}, {1, 1},  {1, 15},   {1, 2},    {1, 4},   {1, 1},
            {1, 12},  {1, 0},  {1, 3}, {1, 1},   {1, 14},  {1, 0},  {1, 4},    {2, 1},    {1, 0.5}, {1, 0}},
        "R1234ZE.FLD"));
    const std::string path = plant.folder.path("plant.fo0");
    ASSERT_TRUE(std::filesystem::exists(path));
    const ResultFile file(readFile(path));
    ASSERT_EQ(file.count(), 507);
    for (int line = 286; line <= file.count(); ++line) EXPECT_NE(file.trimmed(line), "NaN") << line;
    for (const int first : {361, 398})  // of the discharge line, both loads
        for (int option = 0; option < 6; ++option)
            for (int i = 0; i < 5; ++i)
                EXPECT_EQ(file.number(first + 6 * option + i), -777.0) << first << ' ' << option;
    for (const int first : {287, 435}) EXPECT_GT(file.number(first + 15), 0.0) << first;  // the others are sized
}

}  // namespace
}  // namespace frigana::test
