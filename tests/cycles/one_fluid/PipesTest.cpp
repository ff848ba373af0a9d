// Pipe sizes, velocities and the pressure loss of a pipe.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "45_LineSizing.h"

namespace frigana::test {
namespace {

constexpr double single(float value) {
    return static_cast<double>(value);
}

// ---- sizes ----------------------------------------------------------------------------------------------------------

PIPEOPT neighbors(int material, int wallOption, double D) {
    PIPEOPT record;
    clearPipes(record);
    PIPING_NEIGHBORS(material, wallOption, D, record);
    return record;
}

std::string names(const PIPEOPT& record) {
    std::string all;
    for (int i = 1; i <= pipeOptions; ++i) all += (i > 1 ? ", " : "") + std::string(record.NOMI[i].trimmed());
    return all;
}

TEST(PipeSizes, AroundADiameter) {
    const struct {
        int material, wallOption;
        double D;
        const char* names;
    } rows[] = {
        // between two sizes
        {1, 1, 0.030, "7/8, 1 1/8, Not standard, 1 3/8, 1 5/8, 2 1/8"},
        {1, 3, 0.012, "3/8, 1/2, Not standard, 5/8, 3/4, 7/8"},
        {2, 1, 0.030, "3/4, 1, Not standard, 1 1/4, 1 1/2, 2"},
        {3, 2, 0.100, "3 1/2, 4, Not standard, 5, 6, 8"},
        // a size itself, and a tenth of a millimetre around it
        {1, 1, single(0.0252801f), "3/4, 7/8, 1 1/8, 1 3/8, 1 5/8, 2 1/8"},
        {1, 1, 0.0252801 + 0.00009, "3/4, 7/8, 1 1/8, 1 3/8, 1 5/8, 2 1/8"},
        {1, 1, 0.0252801 - 0.00009, "3/4, 7/8, 1 1/8, 1 3/8, 1 5/8, 2 1/8"},
        {1, 1, 0.0252801 + 0.00011, "7/8, 1 1/8, Not standard, 1 3/8, 1 5/8, 2 1/8"},
        {1, 1, 0.0252801 - 0.00011, "3/4, 7/8, Not standard, 1 1/8, 1 3/8, 1 5/8"},
        {1, 2, 0.0260325, "3/4, 7/8, 1 1/8, 1 3/8, 1 5/8, 2 1/8"},
        {2, 2, 0.032512, "3/4, 1, 1 1/4, 1 1/2, 2, 2 1/2"},
        // the ends of the tables
        {1, 1, 0.001, "1/4, 1/4, Not standard, 3/8, 1/2, 5/8"},
        {1, 1, single(0.00470946f), "1/4, 1/4, 1/4, 3/8, 1/2, 5/8"},
        {1, 1, single(0.00790125f), "1/4, 1/4, 3/8, 1/2, 5/8, 3/4"},
        {2, 1, 0.001, "1/8, 1/8, Not standard, 1/4, 3/8, 1/2"},
        {1, 1, single(0.2848836f), "8 1/8, 10 1/8, 12 1/8, 12 1/8, 12 1/8, 12 1/8"},
        {1, 1, 0.5, "10 1/8, 12 1/8, Not standard, 12 1/8, 12 1/8, 12 1/8"},
        {3, 1, 0.6, "20, 24, Not standard, 24, 24, 24"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(names(neighbors(row.material, row.wallOption, row.D)), row.names)
            << "material " << row.material << ", wall " << row.wallOption << ", D " << row.D;
}

TEST(PipeSizes, AFreeSizeHasTheDiameterAndNoOuterSize) {
    const PIPEOPT record = neighbors(1, 1, 0.030);
    EXPECT_EQ(record.DINT[3], 0.030);
    EXPECT_EQ(record.DEXT[3], missingValue);
    EXPECT_EQ(record.DINT[2], single(0.0252801f));
    EXPECT_EQ(record.DEXT[2], single(0.028575f));
    EXPECT_EQ(record.DINT[4], single(0.03161799f));
}

TEST(PipeSizes, AStandardSizeTakesTheDiameterOfTheTable) {
    const PIPEOPT record = neighbors(1, 1, 0.0252801 + 0.00009);
    EXPECT_EQ(record.DINT[3], single(0.0252801f));
    EXPECT_EQ(record.DEXT[3], single(0.028575f));
}

TEST(PipeSizes, BothOtherMaterialsShareTheirSizesAndDifferInRoughness) {
    for (double D : {0.001, 0.0125, 0.05, 0.3, 0.7})
        for (int wallOption : {1, 2}) {
            const PIPEOPT second = neighbors(2, wallOption, D), third = neighbors(3, wallOption, D);
            EXPECT_EQ(names(second), names(third));
            for (int i = 1; i <= pipeOptions; ++i) EXPECT_EQ(second.DINT[i], third.DINT[i]);
        }
    EXPECT_EQ(pipeRoughness(1), single(1.5e-6f));
    EXPECT_EQ(pipeRoughness(2), single(6.5e-5f));
    EXPECT_EQ(pipeRoughness(3), single(2.5e-6f));
}

// From the largest size downward option 2 of the size found is the next smaller one: every table is walked whole.
TEST(PipeSizes, TablesAscendAndWallsHaveThickness) {
    const struct {
        int material, wallOptions, sizes;
        const char* smallest;
    } tables[] = {{1, 3, 19, "1/4"}, {2, 2, 23, "1/8"}, {3, 2, 23, "1/8"}};
    for (const auto& table : tables)
        for (int wallOption = 1; wallOption <= table.wallOptions; ++wallOption) {
            PIPEOPT record = neighbors(table.material, wallOption, 0.7);
            double inner = record.DINT[2], outer = record.DEXT[2];
            int count = 1;
            for (;; ++count) {
                record = neighbors(table.material, wallOption, inner);
                EXPECT_EQ(record.DINT[3], inner);
                EXPECT_GT(record.DEXT[3], inner);
                if (record.NOMI[2] == record.NOMI[3]) break;
                EXPECT_LT(record.DINT[2], inner);
                EXPECT_LT(record.DEXT[2], outer);
                inner = record.DINT[2];
                outer = record.DEXT[2];
            }
            EXPECT_EQ(count, table.sizes);
            EXPECT_EQ(record.NOMI[3], table.smallest);
        }
}

TEST(PipeSizes, ADiameterThatIsNotANumberIsPassedOn) {
    const PIPEOPT record = neighbors(1, 1, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(names(record), "1/4, 1/4, Not standard, 3/8, 1/2, 5/8");
    EXPECT_TRUE(std::isnan(record.DINT[3]));
}

// Every size by its name, of copper tubes and of steel pipes: outer size and inner diameter
// by wall option [m], in single precision.
struct TableRow {
    const char* name;
    float outer, inner[3];
};
constexpr TableRow copperTubes[] = {
    {"1/4", 0.00635f, {0.00470946f, 0.00504626f, 0.00504626f}},
    {"3/8", 0.009525f, {0.00790125f, 0.00800454f, 0.00825711f}},
    {"1/2", 0.0127f, {0.01021388f, 0.01091372f, 0.01142846f}},
    {"5/8", 0.015875f, {0.01338188f, 0.01383461f, 0.01444461f}},
    {"3/4", 0.01905f, {0.01656388f, 0.01690747f, 0.01752769f}},
    {"7/8", 0.022225f, {0.01892484f, 0.01993938f, 0.0206079f}},
    {"1 1/8", 0.028575f, {0.0252801f, 0.0260325f, 0.02680976f}},
    {"1 3/8", 0.034925f, {0.03161799f, 0.03213339f, 0.03280383f}},
    {"1 5/8", 0.041275f, {0.03636653f, 0.03823833f, 0.03877167f}},
    {"2 1/8", 0.053975f, {0.0497247f, 0.05038116f, 0.05102918f}},
    {"2 5/8", 0.066675f, {0.06180384f, 0.06259623f, 0.06337871f}},
    {"3 1/8", 0.079375f, {0.07385383f, 0.07479327f, 0.07572106f}},
    {"3 5/8", 0.092075f, {0.08598253f, 0.08697987f, 0.08787248f}},
    {"4 1/8", 0.104775f, {0.09803517f, 0.09928407f, 0.100108f}},
    {"5 1/8", 0.130175f, {0.121935f, 0.1239395f, 0.1246005f}},
    {"6 1/8", 0.155575f, {0.1458609f, 0.1483735f, 0.1494767f}},
    {"8 1/8", 0.206375f, {0.1926896f, 0.1962797f, 0.197739f}},
    {"10 1/8", 0.257175f, {0.239965f, 0.2445427f, 0.2465499f}},
    {"12 1/8", 0.307975f, {0.2848836f, 0.2936862f, 0.2950814f}},
};
constexpr TableRow steelPipes[] = {
    {"1/8", 0.010414f, {0.006858f, 0.005588f}},   {"1/4", 0.013716f, {0.009144f, 0.00762f}},
    {"3/8", 0.017272f, {0.012446f, 0.010668f}},   {"1/2", 0.021336f, {0.015748f, 0.01397f}},
    {"3/4", 0.02667f, {0.020828f, 0.018796f}},    {"1", 0.033528f, {0.02667f, 0.024384f}},
    {"1 1/4", 0.042164f, {0.035052f, 0.032512f}}, {"1 1/2", 0.04826f, {0.040894f, 0.0381f}},
    {"2", 0.060452f, {0.052578f, 0.049276f}},     {"2 1/2", 0.073152f, {0.062738f, 0.058928f}},
    {"3", 0.0889f, {0.077978f, 0.07366f}},        {"3 1/2", 0.1016f, {0.09017f, 0.085344f}},
    {"4", 0.1143f, {0.102362f, 0.097282f}},       {"5", 0.141224f, {0.12827f, 0.122174f}},
    {"6", 0.168402f, {0.154178f, 0.146304f}},     {"8", 0.219202f, {0.202692f, 0.193802f}},
    {"10", 0.27305f, {0.254508f, 0.242824f}},     {"12", 0.32385f, {0.303276f, 0.289052f}},
    {"14", 0.3556f, {0.333502f, 0.3175f}},        {"16", 0.4064f, {0.381f, 0.363474f}},
    {"18", 0.4572f, {0.428752f, 0.409702f}},      {"20", 0.508f, {0.477774f, 0.455676f}},
    {"24", 0.6096f, {0.574802f, 0.547624f}},
};

TEST(PipeSizes, EveryRowOfTheTables) {
    const auto look = [](int material, int wallOptions, const auto& rows) {
        for (const TableRow& row : rows)
            for (int wallOption = 1; wallOption <= wallOptions; ++wallOption) {
                const double inner = single(row.inner[wallOption - 1]);
                const PIPEOPT record = neighbors(material, wallOption, inner);
                EXPECT_EQ(record.NOMI[3].trimmed(), row.name) << material << ' ' << wallOption;
                EXPECT_EQ(record.DINT[3], inner) << material << ' ' << row.name;
                EXPECT_EQ(record.DEXT[3], single(row.outer)) << material << ' ' << row.name;
            }
    };
    look(1, 3, copperTubes);
    look(2, 2, steelPipes);
    look(3, 2, steelPipes);
}

// ---- velocities -----------------------------------------------------------------------------------------------------

TEST(PipeVelocities, DependOnTheLine) {
    const struct {
        int line;
        double elevation;
        int receiver;
        float vmin, vmax;
    } rows[] = {
        {1, 2.0, 0, 4.5833f, 20.3333f},  {1, 0.0, 0, 2.54f, 20.3333f},    {1, -1.0, 1, 2.54f, 20.3333f},
        {2, 0.0, 0, 10.1667f, 17.8333f}, {2, 5.0, 1, 10.1667f, 17.8333f}, {3, 0.0, 1, 0.0001f, 0.5077f},
        {3, 0.0, 0, 0.0001f, 1.5233f},
    };
    for (const auto& row : rows) {
        double vmin = 0.0, vmax = 0.0;
        PIPE_VLIMITS(row.line, row.elevation, row.receiver, vmin, vmax);
        EXPECT_EQ(vmin, single(row.vmin)) << row.line;
        EXPECT_EQ(vmax, single(row.vmax)) << row.line;
    }
}

// ---- pressure loss --------------------------------------------------------------------------------------------------

struct Loss {
    double v = 0.0, dp = 0.0;
};
Loss lossOf(const PipeFlow& flow, const PipeRun& run, double D) {
    Loss loss;
    PIPING_MRDM(flow, run, D, loss.v, loss.dp);
    return loss;
}

constexpr double pi = 3.14159265358979;

// Darcy's factor that stands behind a loss [kPa] of friction alone.
double darcyFactor(double dp, double rho, double v, double L, double D) {
    return 1000.0 * dp / (L / D * rho / 2.0 * v * v);
}

TEST(PipeLoss, LaminarFlowFollowsHagenAndPoiseuille) {
    const PipeFlow flow{0.0005, 1000.0, 1000.0};
    const PipeRun run{0.0, 10.0, 0.0, 0, 0.0};
    const double D = 0.02;
    const Loss loss = lossOf(flow, run, D);
    const double v = flow.m / (flow.rho * pi / 4.0 * D * D);
    EXPECT_NEAR(loss.v, v, 1e-5 * v);  // with the quarter of pi in four digits
    const double Re = flow.rho * v * D / (flow.mu * 1e-6);
    ASSERT_LT(Re, 100.0);
    EXPECT_NEAR(darcyFactor(loss.dp, flow.rho, loss.v, run.L, D), 64.0 / Re, 1e-3 * 64.0 / Re);
}

// Churchill's equation stands for Colebrook's within some per cent in turbulent flow.
TEST(PipeLoss, TurbulentFlowFollowsColebrook) {
    for (double m : {0.02, 0.1, 1.0})
        for (double eps : {0.0, 1.5e-6, 6.5e-5}) {
            const PipeFlow flow{m, 20.0, 12.0};
            const PipeRun run{eps, 10.0, 0.0, 0, 0.0};
            const double D = 0.03;
            const Loss loss = lossOf(flow, run, D);
            const double Re = flow.rho * loss.v * D / (flow.mu * 1e-6);
            ASSERT_GT(Re, 4000.0);
            double f = 0.02;
            for (int i = 0; i < 50; ++i) {
                const double root = -2.0 * std::log10(eps / D / 3.7 + 2.51 / (Re * std::sqrt(f)));
                f = 1.0 / (root * root);
            }
            EXPECT_NEAR(darcyFactor(loss.dp, flow.rho, loss.v, run.L, D), f, 0.03 * f) << m << " kg/s, " << eps;
        }
}

TEST(PipeLoss, AFittingCountsTwoVelocityHeadsAndAnElevationItsColumn) {
    const PipeFlow flow{0.1, 25.0, 12.0};
    const double D = 0.03;
    const Loss bare = lossOf(flow, {1.5e-6, 10.0, 0.0, 0, 0.0}, D);
    const Loss fittings = lossOf(flow, {1.5e-6, 10.0, 0.0, 3, 0.0}, D);
    EXPECT_NEAR(fittings.dp - bare.dp, 3.0 * flow.rho * bare.v * bare.v / 1000.0, 1e-12);
    const Loss high = lossOf(flow, {1.5e-6, 10.0, 4.0, 0, 0.0}, D);
    EXPECT_NEAR(high.dp - bare.dp, 25.0 * 9.81 * 4.0 / 1000.0, 1e-6);
    // What is said of the fittings in another way has no effect.
    EXPECT_EQ(lossOf(flow, {1.5e-6, 10.0, 0.0, 0, 7.5}, D).dp, bare.dp);
}

// ---- diameter of a loss ---------------------------------------------------------------------------------------------

struct Found {
    double loss, D = 0.0, v = 0.0;
};
Found diameterOf(const PipeFlow& flow, const PipeRun& run, const VelocityRange& velocity, double t) {
    Found found{t};
    PIPING_MRDP(flow, run, velocity, found.loss, found.D, found.v);
    return found;
}

const PipeFlow suctionGas{0.0665, 11.0, 11.0};
const PipeRun suctionRun{1.5e-6, 15.0, 2.0, 4, 0.0};
const VelocityRange suctionVelocity{4.5833, 20.3333};

TEST(PipeDiameter, MeetsTheLossWithinOneKilopascal) {
    for (double t : {5.0, 9.0, 20.0, 50.0}) {
        const Found found = diameterOf(suctionGas, suctionRun, suctionVelocity, t);
        EXPECT_EQ(found.loss, t);
        EXPECT_NEAR(lossOf(suctionGas, suctionRun, found.D).dp, t, 1.0) << t;
    }
}

// The velocity comes from the last trial: where the probe no longer changes the loss, that is the probe, which is wider
// by 0.01 m halved as often as there were passes.
TEST(PipeDiameter, AnEarlyEndLeavesTheVelocityOfTheProbe) {
    const Found found = diameterOf(suctionGas, suctionRun, suctionVelocity, 9.0);
    const double probe = std::sqrt(suctionGas.m / (suctionGas.rho * single(0.7854f) * found.v));
    const double halvings = std::log2(single(0.01f) / (probe - found.D));
    EXPECT_NEAR(halvings, std::round(halvings), 1e-6);
    EXPECT_GE(halvings, 1.0);
    EXPECT_LE(halvings, 10.0);
}

TEST(PipeDiameter, AFailedSearchTakesTheMeanOfTheVelocities) {
    // The column of the elevation alone is more than the loss that is wanted.
    PipeRun run = suctionRun;
    run.h = 50.0;
    const Found found = diameterOf(suctionGas, run, suctionVelocity, 1.0);
    const double mean = (suctionVelocity.vmin + suctionVelocity.vmax) / 2.0;
    EXPECT_NEAR(found.v, mean, 1e-3 * mean);
    EXPECT_NEAR(found.D, std::sqrt(suctionGas.m / (suctionGas.rho * mean) * 1.2738852500915527), 1e-15);
    EXPECT_EQ(found.loss, lossOf(suctionGas, run, found.D).dp);
    EXPECT_GT(found.loss, 5.0);
}

TEST(PipeDiameter, AFlowThatIsNotANumberEndsTheSearch) {
    PipeFlow flow = suctionGas;
    flow.mu = std::numeric_limits<double>::quiet_NaN();
    const Found found = diameterOf(flow, suctionRun, suctionVelocity, 9.0);
    EXPECT_TRUE(std::isfinite(found.D));
    EXPECT_TRUE(std::isnan(found.loss));
}

}  // namespace
}  // namespace frigana::test
