// Melting and sublimation lines, dielectric constant: published values, inverses, readers.
#include <cmath>

#include "CORE_DE.h"
#include "CORE_DE_DIELEC.h"
#include "CORE_MLT.h"
#include "EngineSetUp.h"
#include "FluidConstants.h"
#include "Larger.h"
#include "MELTING.h"
#include "ModelTags.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"
#include "TemporaryFolder.h"
#include "TextFile.h"

namespace frigana {
namespace {

using test::words;

const Composition x = unitComposition(1);
int ierr;
Text255 herr;

TEST(MeltingLine, WaterAgainstTheReleaseOfItsAuthors) {
    // IAPWS R14-08(2011), section 4: ice I, III, V, VI, VII [K, MPa]
    struct Row {
        double t, p;
        bool iceOne;
    };
    const Row rows[] = {{260.0, 138.268, true},
                        {254.0, 268.685, false},
                        {265.0, 479.640, false},
                        {320.0, 1356.76, false},
                        {550.0, 6308.71, false}};
    for (const Row& row : rows) {
        double p1, p2;
        MLTH2O(row.t, p1, p2);
        EXPECT_NEAR((row.iceOne ? p2 : p1) / 1000.0, row.p, 5e-6 * row.p) << row.t;
    }
    double p1, p2;
    MLTH2O(251.0, p1, p2);
    EXPECT_EQ(p1, 0.0);
    EXPECT_EQ(p2, 0.0);
    MLTH2O(274.0, p1, p2);
    EXPECT_EQ(p2, 0.0);
    MLTH2O(273.16, p1, p2);
    EXPECT_NEAR(p2, 0.611657, 1e-9);
}

TEST(MeltingLine, CarbonDioxideAgainstMeasurements) {
    // P. W. Bridgman, Phys. Rev. 3 (1914) 153: melting temperature at 1000 to 3000 kg/cm2; the agreement of the line of
    // Span and Wagner with them is within 2 %
    ASSERT_TRUE(test::setUp({"CO2"}));
    struct Row {
        double celsius, kilograms;
    };
    for (const Row& row : {Row{-37.3, 1000.0}, Row{-20.5, 2000.0}, Row{-5.5, 3000.0}}) {
        double p;
        MELTT(row.celsius + 273.15, x, p, ierr, herr);
        EXPECT_EQ(ierr, 0);
        EXPECT_NEAR(p / (row.kilograms * 98.0665), 1.0, 0.02);
    }
}

TEST(SublimationLine, CarbonDioxideSublimesAtAtmosphericPressure) {
    // normal sublimation temperature on the International Temperature Scale of 1990: 194.686 K
    ASSERT_TRUE(test::setUp({"CO2"}));
    double t, p;
    SUBLP(101.325, x, t, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_NEAR(t, 194.686, 0.003);
    SUBLT(fluidConstants.TTPN[1], x, p, ierr, herr);
    EXPECT_NEAR(p / 517.95, 1.0, 1e-12) << "it ends at the triple point";
}

TEST(MeltingLine, PropaneAgainstThePublishedEquation) {
    // H. H. Reeves, G. J. Scott, S. E. Babb, J. Chem. Phys. 40 (1964) 3662: (p - p0)/7180 bar = (T/T0)^1.283 - 1
    ASSERT_TRUE(test::setUp({"PROPANE"}));
    for (const double t : {86.0, 100.0, 130.0, 160.0}) {
        double p;
        MELTT(t, x, p, ierr, herr);
        EXPECT_NEAR(p, 718000.0 * (std::pow(t / 85.525, 1.283) - 1.0), 1e-6 * p);
    }
    double p;
    MELTT(85.0, x, p, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_EQ(p, 0.0);
    EXPECT_EQ(
        words(herr),
        "[MELTK error 1] temperature less than lower temperature limit; T =    85.00000 K, Tlow =    85.52500 K.");
}

class EveryMeltingLine : public testing::TestWithParam<const char*> {};

TEST_P(EveryMeltingLine, PressureAndTemperatureAreInverse) {
    ASSERT_TRUE(test::setUp({GetParam()}));
    const double lowest = fluidConstants.TTPN[1];
    double worst = 0.0;
    for (double above = 1e-6; lowest + above < 1.6 * lowest; above *= 1.5) {
        double p, t;
        MELTT(lowest + above, x, p, ierr, herr);
        ASSERT_EQ(ierr, 0);
        if (p < fluidConstants.PTPN[1]) continue;
        MELTP(p, x, t, ierr, herr);
        ASSERT_EQ(ierr, 0) << lowest + above << " K, " << p << " kPa: " << words(herr);
        worst = test::larger(worst, std::fabs(t - lowest - above));
    }
    RecordProperty("worst_kelvin", std::to_string(worst));
    EXPECT_LT(worst, 1e-9);
}

// A fit meets the pressure of the triple point to its own accuracy only.
TEST_P(EveryMeltingLine, TheTriplePointIsAnsweredUpToTheFirstValueOfTheLine) {
    ASSERT_TRUE(test::setUp({GetParam()}));
    const double triple = fluidConstants.PTPN[1], lowest = fluidConstants.TTPN[1];
    double first, t;
    MELTT(lowest, x, first, ierr, herr);
    ASSERT_EQ(ierr, 0);
    EXPECT_LT(std::fabs(first - triple), 1.0) << "the line starts at the triple point";
    MELTP(triple, x, t, ierr, herr);
    EXPECT_EQ(ierr, 0) << words(herr);
    EXPECT_NEAR(t, lowest, 1e-5);
    if (first <= triple) return;
    for (const double part : {0.3, 1.0}) {
        MELTP(triple + part * (first - triple), x, t, ierr, herr);
        EXPECT_EQ(ierr, 0) << words(herr);
        EXPECT_EQ(t, lowest);
    }
}

TEST(MeltingLine, ALineThatStartsAboveTheTriplePoint) {
    // isopentane by the published constants: 1233 kPa at the triple point
    ASSERT_TRUE(test::setUp({"IPENTANE"}));
    const SolidLineSlot kept = meltingTerms[1];
    meltingTerms[1].tred = 112.5;
    meltingTerms[1].coefficient[0] = -591600.0;
    double first, t;
    MELTT(fluidConstants.TTPN[1], x, first, ierr, herr);
    EXPECT_NEAR(first, 1233.0, 1.0);
    for (const double p : {1e-6, 101.325, 1000.0, first}) {
        MELTP(p, x, t, ierr, herr);
        EXPECT_EQ(ierr, 0) << p << ' ' << words(herr);
        EXPECT_EQ(t, fluidConstants.TTPN[1]) << p;
    }
    MELTP(1.001 * first, x, t, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_GT(t, fluidConstants.TTPN[1]);
    meltingTerms[1] = kept;
}

TEST(MeltingLine, SaturationAtTheMeltingLine) {
    ASSERT_TRUE(test::setUp({"IPENTANE"}));
    double t, rhol, rhov;
    Composition xl, xv;
    SATP(101.325, x, 3, t, rhol, rhov, xl, xv, ierr, herr);
    EXPECT_EQ(ierr, 0) << words(herr);
    EXPECT_NEAR(t, fluidConstants.TTPN[1], 0.1);
    double p = 0.0;
    PRESS(t, rhol, x, p);
    EXPECT_NEAR(p, 101.325, 1e-3);
}

INSTANTIATE_TEST_SUITE_P(Fluids, EveryMeltingLine,
                         testing::Values("PROPANE", "BUTANE", "ISOBUTAN", "CO2", "ETHYLENE", "PROPYLEN", "IPENTANE",
                                         "PENTANE", "NITROGEN"),
                         [](const auto& fluid) { return std::string(fluid.param); });

TEST(MeltingLine, PressureBelowTheTriplePoint) {
    ASSERT_TRUE(test::setUp({"CO2"}));
    double t;
    MELTP(500.0, x, t, ierr, herr);
    EXPECT_EQ(ierr, 2);
    EXPECT_EQ(t, fluidConstants.TTPN[1]);
    EXPECT_TRUE(words(herr).starts_with(
        "[MELTP error 2] pressure less than triple point pressure; P =     0.50000 MPa, Ptp =     0.51"));
}

TEST(MeltingLine, FluidWithoutOne) {
    ASSERT_TRUE(test::setUp({"R134A"}));
    double p = 9.0, t = 9.0;
    MELTT(200.0, x, p, ierr, herr);
    EXPECT_EQ(p, 0.0);
    EXPECT_EQ(ierr, 0);
    MELTP(1000.0, x, t, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(t, fluidConstants.TTPN[1]);
}

TEST(MeltingLine, MixtureOfLikeFluids) {
    // A mixture of a fluid with itself melts as the fluid.
    ASSERT_TRUE(test::setUp({"PROPANE"}));
    modelTags.NC = 2;
    modelTags.HMELTK[2] = modelTags.HMELTK[1];
    meltingTerms[2] = meltingTerms[1];
    fluidConstants.TTPN[2] = fluidConstants.TTPN[1];
    fluidConstants.PTPN[2] = fluidConstants.PTPN[1];
    Composition half{};
    half[1] = half[2] = 0.5;
    double p, single, t;
    MELTT(100.0, half, p, ierr, herr);
    MELTK(1, 100.0, single, ierr, herr);
    EXPECT_NEAR(p, single, 1e-9 * single);
    MELTP(p, half, t, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_NEAR(t, 100.0, 1e-9);
    fluidConstants.PTPN[2] = 0.0;
    MELTT(100.0, half, p, ierr, herr);
    EXPECT_EQ(p, 0.0);
}

// Two unlike fluids: every component at its own share of the way from its triple point, the pressures as a geometric
// mean.
class SolidLinesOfMixtures : public testing::Test {
  protected:
    void SetUp() override {
        modelTags = ModelTags();
        modelTags.NC = 2;
        fluidConstants = FluidConstants();
        fluidConstants.TTPN[1] = 200.0;
        fluidConstants.PTPN[1] = 5.0;
        fluidConstants.TTPN[2] = 120.0;
        fluidConstants.PTPN[2] = 0.02;
        for (const int i : {1, 2}) {
            // p = ptr (1 + a ((t/ttr)^2 - 1)) and p = ptr exp(b (1 - t/ttr) ttr/t)
            SolidLineSlot& melting = meltingTerms[i] = {};
            melting.tred = fluidConstants.TTPN[i];
            melting.pred = fluidConstants.PTPN[i];
            melting.count[0] = 2;
            melting.coefficient[0] = 1.0 - a[i - 1];
            melting.coefficient[1] = a[i - 1];
            melting.exponent[1] = 2.0;
            modelTags.HMELTK[i] = "ML1";
            SolidLineSlot& sublimation = sublimationTerms[i] = {};
            sublimation.tred = fluidConstants.TTPN[i];
            sublimation.pred = fluidConstants.PTPN[i];
            sublimation.count[1] = 1;
            sublimation.coefficient[0] = b[i - 1];
            sublimation.exponent[0] = 1.0;
            modelTags.HSUBLK[i] = "SB3";
        }
        half[1] = 0.3;
        half[2] = 0.7;
    }
    void TearDown() override {
        modelTags = ModelTags();
        modelTags.LFORCESETUP = true;
    }
    static constexpr double a[] = {30000.0, 70000.0}, b[] = {-12.0, -15.0};
    const double meanT = 0.3 * 200.0 + 0.7 * 120.0, meanP = std::pow(5.0, 0.3) * std::pow(0.02, 0.7);
    Composition half{};
    double p = 0.0, t = 0.0;
};

TEST_F(SolidLinesOfMixtures, MeltingPressureAndTemperature) {
    for (const double reduced : {1.0001, 1.01, 1.2}) {
        MELTT(reduced * meanT, half, p, ierr, herr);
        EXPECT_EQ(ierr, 0);
        const double square = reduced * reduced - 1.0;
        EXPECT_NEAR(p / (meanP * std::pow(1.0 + a[0] * square, 0.3) * std::pow(1.0 + a[1] * square, 0.7)), 1.0, 1e-11);
        const double wanted = p;
        MELTP(wanted, half, t, ierr, herr);
        EXPECT_EQ(ierr, 0) << words(herr);
        EXPECT_NEAR(t, reduced * meanT, 1e-9);
    }
}

TEST_F(SolidLinesOfMixtures, SublimationPressureAndTemperature) {
    for (const double reduced : {0.999, 0.9, 0.6}) {
        SUBLT(reduced * meanT, half, p, ierr, herr);
        EXPECT_EQ(ierr, 0);
        const double exponent = (0.3 * b[0] + 0.7 * b[1]) * (1.0 - reduced) / reduced;
        EXPECT_NEAR(p / (meanP * std::exp(exponent)), 1.0, 1e-12);
        const double wanted = p;
        SUBLP(wanted, half, t, ierr, herr);
        EXPECT_EQ(ierr, 0) << words(herr);
        EXPECT_NEAR(t, reduced * meanT, 1e-7);
    }
    // a component without a line just drops out
    modelTags.HSUBLK[2] = "NBS";
    SUBLT(0.9 * meanT, half, p, ierr, herr);
    EXPECT_NEAR(p / (meanP * std::exp(0.3 * b[0] * (1.0 - 0.9) / 0.9)), 1.0, 1e-12);
    // without a triple point pressure of every component there is no line
    fluidConstants.PTPN[2] = 0.0;
    for (const auto line : {SUBLT, MELTT}) {
        p = 7.0;
        line(0.9 * meanT, half, p, ierr, herr);
        EXPECT_EQ(p, 0.0);
    }
}

// A line of tag on slot 1 with one term in each family.
void giveLine(SolidLineSlot& line, double a, double b, double c) {
    line = {};
    line.tred = 200.0;
    line.pred = 3.0;
    line.count[0] = line.count[1] = line.count[2] = 1;
    line.coefficient[0] = a;
    line.coefficient[1] = b;
    line.coefficient[2] = c;
    line.exponent[0] = 2.0;
    line.exponent[1] = 1.5;
    line.exponent[2] = 1.0;
}

class SolidLineForms : public testing::Test {
  protected:
    void SetUp() override {
        modelTags = ModelTags();
        modelTags.NC = 1;
        fluidConstants = FluidConstants();
        fluidConstants.TTPN[1] = 200.0;
        fluidConstants.PTPN[1] = 3.0;
    }
    void TearDown() override {
        modelTags = ModelTags();
        fluidConstants = FluidConstants();
    }
    double p = 0;
};

TEST_F(SolidLineForms, MeltingTags) {
    giveLine(meltingTerms[1], 1.0, 2.0, 0.5);
    const double sum = 1.21 + 2.0 * std::pow(0.1, 1.5) + 0.5 * std::log(1.1);
    for (const auto& [tag, expected] : {std::pair{"ML1", 3.0 * sum}, {"ML2", 3.0 * std::exp(sum)}, {"ML9", sum}}) {
        modelTags.HMELTK[1] = tag;
        MELTK(1, 220.0, p, ierr, herr);
        EXPECT_EQ(ierr, 0);
        EXPECT_NEAR(p, expected, 1e-13 * expected) << tag;
    }
    modelTags.HMELTK[1] = "XYZ";
    MELTK(1, 220.0, p, ierr, herr);
    EXPECT_EQ(ierr, 105);
    EXPECT_EQ(words(herr), "[MELTK error 105] unknown melting line model:  (XYZ)");
}

TEST_F(SolidLineForms, ParahydrogenHasTwoBranches) {
    SolidLineSlot& line = meltingTerms[1];
    line = {};
    line.tred = 13.8;
    line.pred = 1.0;
    for (int k = 0; k < 4; ++k) line.coefficient[k] = k + 1.0;
    line.exponent[0] = 1.5;
    line.exponent[2] = 2.0;
    MLTPH2(1, 23.0, p);
    EXPECT_NEAR(p, 1.0 + 2.0 * std::pow(23.0 / 13.8, 1.5), 1e-12);
    MLTPH2(1, 22.0, p);
    EXPECT_NEAR(p, 3.0 + 4.0 * std::pow(22.0 / 13.8, 2.0), 1e-12);
    modelTags.HMELTK[1] = "MLP";
    fluidConstants.TTPN[1] = 13.8;
    double byTag = 0.0;
    MELTK(1, 22.0, byTag, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(byTag, p);
}

TEST_F(SolidLineForms, WaterAt251KelvinHasNoMeltingPressure) {
    modelTags.HMELTK[1] = "MLW";
    MELTK(1, 251.0, p, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_EQ(p, 0.0);
    EXPECT_EQ(
        words(herr),
        "[MELTK error 1] temperature less than lower temperature limit; T =   251.00000 K, Tlow =   251.16500 K.");
    MELTK(1, 251.165, p, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_NEAR(p, 208566.0, 1e-6);
}

TEST_F(SolidLineForms, WaterMeltsOnTheLineThatItsPressureBelongsTo) {
    fluidConstants.TTPN[1] = 273.16;
    fluidConstants.PTPN[1] = 0.611657;
    modelTags.HMELTK[1] = "MLW";
    for (double t = 251.2; t < 273.1; t += 0.7) {
        double p1, p2, back;
        MLTH2O(t, p1, p2);
        MELTP(p2, x, back, ierr, herr);
        ASSERT_EQ(ierr, 0) << t;
        EXPECT_NEAR(back, t, 1e-8);
    }
    for (double t = 251.3; t < 700.0; t += 7.3) {
        double p1, p2, back;
        MLTH2O(t, p1, p2);
        if (p1 < 208566.0) continue;
        MELTP(p1, x, back, ierr, herr);
        ASSERT_EQ(ierr, 0) << t;
        EXPECT_NEAR(back, t, 1e-7) << p1;
    }
}

TEST_F(SolidLineForms, SublimationTags) {
    giveLine(sublimationTerms[1], 1.0, 2.0, 0.5);
    const double sum = 0.81 + 2.0 * std::pow(0.1, 1.5) + 0.5 * std::log(0.9);
    for (const auto& [tag, expected] :
         {std::pair{"SB1", 3.0 * sum}, {"SB2", 3.0 * std::exp(sum)}, {"SB3", 3.0 * std::exp(sum / 0.9)}}) {
        modelTags.HSUBLK[1] = tag;
        SUBLK(1, 180.0, p, ierr, herr);
        EXPECT_EQ(ierr, 0);
        EXPECT_NEAR(p, expected, 1e-13 * expected) << tag;
    }
    for (const char* tag : {"SB0", "SB4", "SBX", "SB "}) {
        modelTags.HSUBLK[1] = tag;
        SUBLK(1, 180.0, p, ierr, herr);
        EXPECT_EQ(ierr, 0) << tag;
        EXPECT_NEAR(p, sum, 1e-13 * sum) << tag;
    }
    modelTags.HSUBLK[1] = "XYZ";
    SUBLK(1, 180.0, p, ierr, herr);
    EXPECT_EQ(ierr, 105);
    EXPECT_EQ(words(herr), "[SUBLK error 105] unknown sublimation line model:  (XYZ)");
    modelTags.HSUBLK[1] = "NBS";
    SUBLK(1, 180.0, p, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(p, 0.0);
    SUBLK(1, 0.0, p, ierr, herr);
    EXPECT_EQ(ierr, 15);
    EXPECT_EQ(words(herr), "[SUBLK error 15] temperature less than zero; T =     0.00000 K");
    SUBLK(1, 201.0, p, ierr, herr);
    EXPECT_EQ(ierr, 15);
    EXPECT_EQ(words(herr),
              "[SUBLK error 15] temperature greater than triple point temperature; T =   201.00000 K, "
              "Ttp =   200.00000 K.");
}

TEST_F(SolidLineForms, LargeExponentOfASublimationLineGivesZero) {
    modelTags.HSUBLK[1] = "SB2";
    SolidLineSlot& line = sublimationTerms[1];
    line = {};
    line.tred = 200.0;
    line.pred = 3.0;
    line.count[0] = 1;
    line.coefficient[0] = 200.0;
    SUBLK(1, 180.0, p, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(p, 0.0);
    line.coefficient[0] = 199.9;
    SUBLK(1, 180.0, p, ierr, herr);
    EXPECT_NEAR(p, 3.0 * std::exp(199.9), 1e-10 * p);
}

TEST_F(SolidLineForms, SublimationPressureAndTemperatureAreInverse) {
    modelTags.HSUBLK[1] = "SB3";
    SolidLineSlot& line = sublimationTerms[1];
    line = {};
    line.tred = 200.0;
    line.pred = 3.0;
    line.count[1] = 2;
    line.coefficient[0] = -14.0;
    line.coefficient[1] = 2.0;
    line.exponent[0] = 1.0;
    line.exponent[1] = 2.7;
    for (double t = 100.0; t < 200.0; t += 1.7) {
        double back;
        SUBLT(t, x, p, ierr, herr);
        SUBLP(p, x, back, ierr, herr);
        ASSERT_EQ(ierr, 0) << t;
        EXPECT_NEAR(back, t, 1e-7);
    }
    double t;
    SUBLP(-1.0, x, t, ierr, herr);
    EXPECT_EQ(t, 300.0);
    EXPECT_EQ(ierr, 0);
    SUBLP(4.0, x, t, ierr, herr);
    EXPECT_EQ(ierr, 2);
    EXPECT_EQ(t, 200.0);
    EXPECT_EQ(
        words(herr),
        "[MELTP error 2] pressure greater than triple point pressure; P =     0.00400 MPa, Ptp =     0.00300 MPa.");
}

TEST_F(SolidLineForms, InverseOfALineThatDoesNotExist) {
    fluidConstants.PTPN[1] = 3.0;
    double t;
    SUBLP(1.0, x, t, ierr, herr);
    EXPECT_EQ(ierr, 124);
    EXPECT_EQ(t, -9999990.0);
    EXPECT_EQ(words(herr), "[SOLVEM error 124] maximum number of iterations exceeded");
}

struct BlockCase {
    const char* name;
    const char* text;
    bool good;
};

constexpr const char* goodMeltingBlock = "100.0\n300.0\n0\n0\n100.0 5.0\n1 1 1 0 0 0\n1 0\n2,1\n3.d0 2\n";

TEST(SolidLineReader, AcceptsAndRefuses) {
    const BlockCase cases[] = {
        {"as written", goodMeltingBlock, true},
        {"commas and blanks", "100, !limit\n300\nx\ny\n100,5\n1,0,0,0,0,0 comment\n1.5e2 , -2\n", true},
        {"no terms", "100\n300\n\n\n100 5\n0 0 0 0 0 0\n", true},
        {"empty", "", false},
        {"text for a number", "abc\n300\n0\n0\n100 5\n1 1 0 0 0 0\n1 0\n2 1\n", false},
        {"ends before the terms", "100\n300\n0\n0\n100 5\n1 1 0 0 0 0\n1 0\n", false},
        {"negative count", "100\n300\n0\n0\n100 5\n-1 1 0 0 0 0\n1 0\n", false},
        {"more terms than the table holds", "100\n300\n0\n0\n100 5\n15 6 0 0 0 0\n1 0\n", false},
        {"real for a count", "100\n300\n0\n0\n100 5\n1.5 0 0 0 0 0\n1 0\n", false},
    };
    const test::TemporaryFolder folder;
    for (const BlockCase& c : cases) {
        test::writeFile(folder.path("block"), c.text);
        for (const bool melting : {true, false}) {
            ASSERT_TRUE(openForReading(12, folder.path("block")));
            melting ? SETMLT(12, 1, ierr, herr) : SETSBL(12, 1, ierr, herr);
            closeUnit(12);
            EXPECT_EQ(ierr, c.good ? 0 : 1) << c.name << ": " << words(herr);
            EXPECT_EQ(words(herr).empty(), c.good) << c.name;
        }
    }
    test::writeFile(folder.path("block"), goodMeltingBlock);
    ASSERT_TRUE(openForReading(12, folder.path("block")));
    SETMLT(12, 3, ierr, herr);
    closeUnit(12);
    EXPECT_EQ(meltingTerms[3].tred, 100.0);
    EXPECT_EQ(meltingTerms[3].pred, 5.0);
    EXPECT_EQ(meltingTerms[3].coefficient[2], 3.0);
    EXPECT_EQ(meltingTerms[3].exponent[2], 2.0);
}

TEST(DielectricReader, AcceptsAndRefuses) {
    const BlockCase cases[] = {
        {"as written", "200\n800\n0\n0\n1.0 2.0 3.0\n1 1 0 0 0 0\n1 2 3 4\n5 6 7 8\n", true},
        {"empty", "", false},
        {"short row", "200\n800\n0\n0\n1.0 2.0 3.0\n1 0 0 0 0 0\n1 2 3\n", false},
        {"negative count", "200\n800\n0\n0\n1.0 2.0 3.0\n1 -1 0 0 0 0\n1 2 3 4\n", false},
        {"too many", "200\n800\n0\n0\n1.0 2.0 3.0\n21 0 0 0 0 0\n1 2 3 4\n", false},
        {"text", "200\n800\n0\n0\n1.0 two 3.0\n1 0 0 0 0 0\n1 2 3 4\n", false},
    };
    const test::TemporaryFolder folder;
    for (const BlockCase& c : cases) {
        test::writeFile(folder.path("block"), c.text);
        ASSERT_TRUE(openForReading(12, folder.path("block")));
        SETDE(12, 2, "", ierr, herr);
        closeUnit(12);
        EXPECT_EQ(ierr, c.good ? 0 : 1) << c.name << ": " << words(herr);
    }
    EXPECT_EQ(dielectricTerms[2].term[1].DECF, 5.0);
    EXPECT_EQ(dielectricTerms[2].term[1].DEEXPP, 8.0);
    EXPECT_EQ(dielectricTerms[2].PREDDE, 3.0);
}

class Dielectric : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(test::setUp({"PROPANE"})); }
    void TearDown() override { ASSERT_TRUE(test::setUp({"R134A"})); }
    static void give(int slot, const char* tag, std::initializer_list<DielectricTerm> first,
                     std::initializer_list<DielectricTerm> second = {},
                     std::initializer_list<DielectricTerm> third = {}) {
        modelTags.HDIELK[slot] = tag;
        DielectricSlot& d = dielectricTerms[slot];
        d = {};
        d.TREDDE = 273.16;
        d.DREDDE = 1.0;
        d.PREDDE = 1.0;
        int k = 0, family = 0;
        for (const auto& list : {first, second, third}) {
            d.count[family++] = static_cast<int>(list.size());
            for (const DielectricTerm& term : list) d.term[k++] = term;
        }
    }
    double de = 0;
};

TEST_F(Dielectric, VacuumIsOne) {
    for (const char* tag : {"DE1", "DE2", "DE3", "DE4", "NBS"}) {
        give(1, tag, {{1.0, 1.0, 1.0, 1.0}});
        DEK(1, 300.0, 0.0, de, ierr, herr);
        EXPECT_EQ(de, 1.0) << tag;
        EXPECT_EQ(ierr, 0);
    }
}

TEST_F(Dielectric, PolarizationForms) {
    // the definitions of the polarization, (e - 1)/(e + 2) and (e - 1)(2 e + 1)/(9 e), give back the sum
    const double t = 320.0, rho = 4.0, tr = t / 273.16;
    const double sum = 0.01 * rho + 0.002 * rho * (tr - 1.0) + 0.001 * rho * rho * std::pow(tr - 1.0, 2.0) +
                       0.0005 * rho + 0.003 * rho * (1.0 / tr - 1.0);
    for (const char* tag : {"DE3", "DE4"}) {
        give(1, tag, {{0.01, 0.0, 1.0, 0.0}}, {{0.002, 1.0, 1.0, 0.0}, {0.001, 2.0, 2.0, 0.0}},
             {{0.0005, 0.0, 1.0, 0.0}, {0.003, 1.0, 1.0, 0.0}});
        DEK(1, t, rho, de, ierr, herr);
        const double back = tag[2] == '3' ? (de - 1.0) / (de + 2.0) : (de - 1.0) * (2.0 * de + 1.0) / (9.0 * de);
        EXPECT_NEAR(back, sum, 1e-14) << tag;
    }
}

TEST_F(Dielectric, PressureForm) {
    const double t = 320.0, rho = 0.4;
    double p;
    PRESS(t, rho, x, p);
    give(1, "DE1", {{0.02, 1.0, 1.0, 1.0}}, {{0.01, 0.0, 1.0, 2.0}});
    DEK(1, t, rho, de, ierr, herr);
    const double tr = t / 273.16, mpa = p / 1000.0;
    const double sum = 0.02 * tr * rho * mpa + 0.01 * rho * mpa * mpa * std::log(1.0 + 1.0 / tr);
    EXPECT_NEAR((de - 1.0) / (de + 2.0), sum, 1e-14);
    // inside the dome the pressure of the equation is negative somewhere
    PRESS(200.0, 10.0, x, p);
    ASSERT_LT(p, 0.0);
    DEK(1, 200.0, 10.0, de, ierr, herr);
    EXPECT_EQ(de, 0.0);
}

TEST_F(Dielectric, WaterAgainstItsPublishedValue) {
    // Coefficients of D. P. Fernandez et al., J. Phys. Chem. Ref. Data 26 (1997) 1125, table 5; static constant of
    // liquid water at 25 C and atmospheric pressure: 78.4 (C. G. Malmberg, A. A. Maryott, J. Res. Natl. Bur. Stand. 56
    // (1956) 1: 78.30; the formulation: 78.41)
    give(1, "DE2",
         {{0.978224486826, 0.25, 1.0, 0.0},
          {-0.957771379375, 1.0, 1.0, 0.0},
          {0.237511794148, 2.5, 1.0, 0.0},
          {0.714692244396, 1.5, 2.0, 0.0},
          {-0.298217036956, 1.5, 3.0, 0.0},
          {-0.108863472196, 2.5, 3.0, 0.0},
          {0.0949327488264, 2.0, 4.0, 0.0},
          {-0.00980469816509, 2.0, 5.0, 0.0},
          {0.0000165167634970, 5.0, 6.0, 0.0},
          {0.0000937359795772, 0.5, 7.0, 0.0},
          {-1.23179218720e-10, 10.0, 10.0, 0.0}},
         {{0.00196096504426, 228.0, 1.0, 1.2}});
    dielectricTerms[1].TREDDE = 647.096;
    dielectricTerms[1].DREDDE = 322.0 / 18.015268;
    DEK(1, 298.15, 997.047 / 18.015268, de, ierr, herr);
    EXPECT_NEAR(de, 78.41, 0.02);
    DEK(1, 228.0, 55.0, de, ierr, herr);
    EXPECT_EQ(de, 0.0) << "at the pole of its last term";
}

TEST_F(Dielectric, FluidWithoutAModel) {
    modelTags.HDIELK[1] = "NBS";
    DEK(1, 300.0, 1.0, de, ierr, herr);
    EXPECT_EQ(ierr, 1);
    EXPECT_EQ(de, -9999990.0);
}

TEST_F(Dielectric, MixtureOfLikeFluids) {
    modelTags.NC = 2;
    for (const int i : {1, 2}) give(i, "DE3", {{0.0157, 0.0, 1.0, 0.0}}, {{0.0001, 1.0, 1.0, 0.0}});
    fluidConstants.RHOZ[2] = fluidConstants.RHOZ[1];
    Composition half{};
    half[1] = half[2] = 0.5;
    double single, mixed;
    DEK(1, 300.0, 8.0, single, ierr, herr);
    for (const char* top : {"DEM", "DEX"}) {
        modelTags.HDIELTOP = top;
        DIELEC(300.0, 8.0, half, mixed);
        EXPECT_NEAR(mixed, single, 1e-12);
    }
    DIELEC(300.0, 8.0, unitComposition(1), mixed);
    EXPECT_EQ(mixed, single);
    modelTags.HDIELTOP = "XYZ";
    DIELEC(300.0, 8.0, half, mixed);
    EXPECT_EQ(mixed, -9999000.0);
    modelTags.HDIELTOP = "DEM";
    modelTags.HDIELK[2] = "NBS";
    DIELEC(300.0, 8.0, half, mixed);
    EXPECT_EQ(mixed, 0.0);
}

}  // namespace
}  // namespace frigana
