// Limits of validity and the checks against them, on a made-up fluid and on real ones.
#include "LIMITS.h"

#include <cmath>

#include "CORE_MLT.h"
#include "EngineSetUp.h"
#include "FluidConstants.h"
#include "FluidFiles.h"
#include "MIX_HMX.h"
#include "ModelTags.h"
#include "PROP_SUB.h"

namespace frigana {
namespace {

using test::words;

// One fluid (and a second one for mixtures) from 150 to 400 K, up to 50 MPa and 20 mol/L, triple point 160 K at 1 kPa.
class Limits : public testing::Test {
  protected:
    void SetUp() override {
        modelTags = ModelTags();
        modelTags.NC = 1;
        modelTags.HEOS = "PR";
        fluidConstants = FluidConstants();
        for (const int i : {1, 2}) fill(i);
    }
    void TearDown() override {
        modelTags = ModelTags();
        fluidConstants = FluidConstants();
        fluidFiles.HCAS[1].clear();
        mixingParameters.AMMONIAWATER = 0;
    }
    static void fill(int i) {
        FluidConstants& f = fluidConstants;
        f.TMEOS[i] = 150.0;
        f.TXEOS[i] = 400.0;
        f.PEOS[i] = 50000.0;
        f.DEOS[i] = 20.0;
        f.TTPN[i] = 150.0;
        f.PTPN[i] = 1.0;
        f.DTPN[i] = 18.0;
        f.TZ[i] = f.TCRIT[i] = 300.0;
        f.RHOZ[i] = f.DCRIT[i] = 5.0;
    }
    // p = 1000 kPa times 1 + 10 (T/150 K - 1)
    static void giveMeltingLine() {
        modelTags.HMELTK[1] = "ML1";
        SolidLineSlot& line = meltingTerms[1];
        line = {};
        line.tred = 150.0;
        line.pred = 1000.0;
        line.count[0] = line.count[1] = 1;
        line.coefficient[0] = 1.0;
        line.coefficient[1] = 10.0;
        line.exponent[1] = 1.0;
    }
    // p = 1 kPa exp(10 (1 - 150 K/T)), by the form in 1 - Tr
    static void giveSublimationLine() {
        modelTags.HSUBLK[1] = "SB3";
        SolidLineSlot& line = sublimationTerms[1];
        line = {};
        line.tred = 150.0;
        line.pred = 1.0;
        line.count[1] = 1;
        line.coefficient[0] = -10.0;
        line.exponent[0] = 1.0;
    }
    int check(double t, double D, double p, const char* kind = "EOS") {
        LIMITX(kind, t, D, p, x, tmin, tmax, dmax, pmax, ierr, herr);
        return ierr;
    }
    int checkSlot(double t, double D, double p, const char* kind = "EOS") {
        LIMITK(kind, 1, t, D, p, tmin, tmax, dmax, pmax, ierr, herr);
        return ierr;
    }
    Composition x = unitComposition(1);
    double tmin = 0, tmax = 0, dmax = 0, pmax = 0;
    int ierr = 0;
    Text255 herr;
};

struct State {
    double t, D, p;
    int code;
    std::string_view text;
};

constexpr std::string_view head = "one or more inputs are out of range: ";

TEST_F(Limits, StatesOfAPureFluid) {
    const State states[] = {
        {300.0, 5.0, 1000.0, 0, ""},
        {150.0, 20.0, 50000.0, 0, ""},
        {400.0, 0.0, 0.0, 0, ""},
        {149.0, 0.0, 0.0, 1, " temperature below lower limit, T =   149.00000 K, Tmin =   150.00000 K"},
        {401.0, 0.0, 0.0, -1, " temperature above upper limit, T =   401.00000 K, Tmax =   400.00000 K"},
        {600.0, 0.0, 0.0, -1, " temperature above upper limit, T =   600.00000 K, Tmax =   400.00000 K"},
        {600.1, 0.0, 0.0, 1, " temperature > 1.5 x upper limit, T =   600.10000 K, Tmax =   400.00000 K"},
        {300.0, -1.0, 0.0, 2, "  density < 0, D =    -1.00000 mol/L"},
        {300.0, 20.1, 0.0, 2, "  density > upper limit, D =    20.10000 mol/L, Dmax =    20.00000 mol/L"},
        {300.0, 0.0, -500.0, 4, "   pressure < 0, P =    -0.50000 MPa"},
        {300.0, 0.0, 60000.0, -4, "   pressure above upper limit, P =    60.00000 MPa, Pmax =    50.00000 MPa"},
        {300.0, 0.0, 100001.0, 4, "   pressure > 2 x upper limit, P =   100.00100 MPa, Pmax =    50.00000 MPa"},
        {149.0, 0.0, 100001.0, 5,
         " temperature below lower limit, T =   149.00000 K, Tmin =   150.00000 K;  pressure > 2 x upper limit, P =   "
         "100.00100 MPa, Pmax =    50.00000 MPa"},
        {401.0, 0.0, 60000.0, -5,
         " temperature above upper limit, T =   401.00000 K, Tmax =   400.00000 K;  pressure above upper limit, P =   "
         " 60.00000 MPa, Pmax =    50.00000 MPa"},
    };
    for (const State& s : states) {
        EXPECT_EQ(check(s.t, s.D, s.p), s.code) << s.t << " " << s.D << " " << s.p;
        EXPECT_EQ(words(herr), s.code == 0 ? "" : std::string(head) + std::string(s.text));
        EXPECT_EQ(checkSlot(s.t, s.D, s.p), s.code) << s.t << " " << s.D << " " << s.p;
    }
    EXPECT_EQ(tmin, 150.0);
    EXPECT_EQ(tmax, 400.0);
    EXPECT_EQ(dmax, 20.0);
    EXPECT_EQ(pmax, 50000.0);
}

TEST_F(Limits, TemperatureOfMinusOneIsNotTested) {
    EXPECT_EQ(check(-1.0, 5.0, 1000.0), 0);
    EXPECT_EQ(check(-1.0, 25.0, 1000.0), 2);
    EXPECT_EQ(check(-1.001, 5.0, 1000.0), 1);
    EXPECT_EQ(checkSlot(-1.0, 5.0, 1000.0), 0);
}

TEST_F(Limits, VaporBelowItsSublimationPressureGivesNoMessage) {
    giveSublimationLine();
    double p;
    SUBLK(1, 140.0, p, ierr, herr);
    ASSERT_NEAR(p, std::exp(10.0 * (1.0 - 150.0 / 140.0)), 1e-12);
    EXPECT_EQ(check(140.0, 0.0, 0.9 * p), 0);
    EXPECT_EQ(words(herr), "");
    EXPECT_EQ(checkSlot(140.0, 0.0, 0.9 * p), 0);
    EXPECT_EQ(check(140.0, 0.0, 1.1 * p), 1);
    EXPECT_EQ(check(140.0, 0.0, 0.0), 1) << "without a pressure there is no such vapor";
}

TEST_F(Limits, PressureMayPassItsLimitByRounding) {
    EXPECT_EQ(check(300.0, 0.0, 50000.0), 0);
    EXPECT_EQ(check(300.0, 0.0, 50000.0 + 0.9e-8), 0);
    EXPECT_EQ(check(300.0, 0.0, 50000.0 + 2e-8), -4);
}

TEST_F(Limits, ErrorsOfTemperatureAndPressureAddUp) {
    EXPECT_EQ(check(100.0, 0.0, 200000.0), 5);
}

TEST_F(Limits, OneErrorMakesEveryBitPositive) {
    EXPECT_EQ(check(401.0, 25.0, 0.0), 3);
    EXPECT_EQ(check(401.0, 25.0, 60000.0), 7);
}

TEST_F(Limits, SurfaceTensionOnlyWarnsOfCold) {
    fluidConstants.TMINST[1] = 200.0;
    fluidConstants.TMAXST[1] = 300.0;
    for (const char* kind : {"STN", "stn"}) {
        EXPECT_EQ(check(190.0, 0.0, 0.0, kind), -1);
        EXPECT_EQ(checkSlot(190.0, 0.0, 0.0, kind), -1);
        EXPECT_EQ(dmax, -9.99e99);
        EXPECT_EQ(check(310.0, 5.0, 1e6, kind), -1);
        EXPECT_EQ(dmax, 9.99e99);
        EXPECT_EQ(pmax, 9.99e99);
        EXPECT_EQ(checkSlot(310.0, 5.0, 1e6, kind), -1);
    }
}

TEST_F(Limits, TransportHasLimitsOfItsOwn) {
    FluidConstants& f = fluidConstants;
    f.TMTCX[1] = 210.0;
    f.TXTCX[1] = 310.0;
    f.PXTCX[1] = 1000.0;
    f.DXTCX[1] = 11.0;
    f.TMETA[1] = 220.0;
    f.TXETA[1] = 320.0;
    f.PXETA[1] = 2000.0;
    f.DXETA[1] = 12.0;
    f.TMECST[1] = 230.0;
    f.TXECST[1] = 330.0;
    f.PXECST[1] = 3000.0;
    f.DXECST[1] = 13.0;
    struct Row {
        const char* kind;
        const char* model;
        double tmin, tmax, dmax, pmax;
    };
    const Row rows[] = {
        {"TCX", "TC1", 210.0, 310.0, 11.0, 1000.0},  {"tcx", "ECS", 230.0, 330.0, 13.0, 3000.0},
        {"ETA", "VS1", 220.0, 320.0, 12.0, 2000.0},  {"eta", "ECS", 230.0, 330.0, 13.0, 3000.0},
        {"TRP", "FEQ", 150.0, 400.0, 18.0, 50000.0}, {"xyz", "FEQ", 150.0, 400.0, 20.0, 50000.0},
    };
    for (const Row& row : rows) {
        modelTags.HTCX[1] = modelTags.HETA[1] = row.model;
        LIMITS(row.kind, x, tmin, tmax, dmax, pmax);
        EXPECT_EQ(tmin, row.tmin) << row.kind;
        EXPECT_EQ(tmax, row.tmax);
        EXPECT_EQ(dmax, row.dmax);
        EXPECT_EQ(pmax, row.pmax);
        EXPECT_EQ(checkSlot(250.0, 0.0, 0.0, row.kind), 0);
        EXPECT_EQ(tmin, row.tmin);
        EXPECT_EQ(pmax, row.pmax);
    }
    fluidConstants.DTPN[1] = 0.05;
    LIMITS("TRP", x, tmin, tmax, dmax, pmax);
    EXPECT_EQ(dmax, 20.0) << "a triple point density that is not known does not count";
}

TEST_F(Limits, PressureAboveTheMeltingLine) {
    giveMeltingLine();
    // at 165 K the fluid freezes at 2000 kPa
    EXPECT_EQ(check(165.0, 0.0, 1990.0), 0);
    EXPECT_EQ(check(165.0, 0.0, 2000.9), 0);
    EXPECT_EQ(check(165.0, 0.0, 2002.0), 16);
    EXPECT_EQ(words(herr),
              std::string(head) + "   pressure > melting pressure, P =     2.00200 MPa, Pmelt =     2.00000 MPa");
    EXPECT_EQ(checkSlot(165.0, 0.0, 2002.0), 16);
    EXPECT_EQ(checkSlot(165.0, 18.5, 2002.0), 16);
    EXPECT_EQ(checkSlot(165.0, 1.0, 2002.0), 0) << "a vapor does not freeze";
    EXPECT_EQ(check(165.0, 0.0, 200000.0), 16) << "the melting pressure takes the place of the limit";
}

TEST_F(Limits, FluidWithoutAMeltingLineIsNotTested) {
    double p = 7.0;
    MELTK(1, 200.0, p, ierr, herr);
    EXPECT_EQ(p, 0.0);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(words(herr), "");
    EXPECT_EQ(check(200.0, 0.0, 49000.0), 0);
}

TEST_F(Limits, BelowTheTriplePointWithinTheLimits) {
    fluidConstants.TTPN[1] = 160.0;
    EXPECT_EQ(check(155.0, 0.0, 0.0), -16);
    EXPECT_EQ(words(herr),
              std::string(head) + " temperature less than triple point, T=   155.00000 K, Ttrp=   160.00000 K");
    EXPECT_EQ(checkSlot(155.0, 0.0, 0.0), -16);
    EXPECT_EQ(check(160.0, 0.0, 0.0), 0);
    EXPECT_EQ(check(149.0, 0.0, 0.0), 1) << "one message of temperature is enough";
}

TEST_F(Limits, SupercooledWater) {
    fluidConstants.TMEOS[1] = fluidConstants.TTPN[1] = 273.16;
    fluidConstants.TXEOS[1] = 1273.0;
    fluidConstants.PEOS[1] = 1e6;
    fluidFiles.HCAS[1] = "7732-18-5";
    modelTags.HMELTK[1] = "MLW";
    LIMITS("EOS", x, tmin, tmax, dmax, pmax);
    EXPECT_EQ(tmin, 251.165) << "the liquid exists under pressure far below the triple point";
    double densest, iceOne;
    MLTH2O(260.0, densest, iceOne);
    ASSERT_GT(densest, iceOne);
    EXPECT_EQ(check(260.0, 0.0, 0.5 * (densest + iceOne)), -16);
    EXPECT_EQ(check(260.0, 0.0, 0.99995 * iceOne), -16) << "on the line";
    EXPECT_EQ(check(260.0, 0.0, 0.99 * iceOne), 16);
    EXPECT_EQ(words(herr), std::string(head) + " inputs are within the solid phase");
    EXPECT_EQ(check(260.0, 0.0, 1.01 * densest), 32) << "solid by both tests";
    fluidConstants.TMEOS[1] = 251.165;
    EXPECT_EQ(checkSlot(260.0, 0.0, 0.99995 * iceOne), 16) << "the slot's own check has no margin";
}

TEST_F(Limits, ParahydrogenRefusesHighPressure) {
    fluidFiles.HCAS[1] = "1333-74-0p";
    EXPECT_EQ(checkSlot(300.0, 0.0, 60000.0), 4);
    EXPECT_EQ(check(300.0, 0.0, 60000.0), -4);
}

TEST_F(Limits, MixtureTakesReducedMeans) {
    modelTags.NC = 2;
    FluidConstants& f = fluidConstants;
    f.TZ[2] = 420.0;
    f.RHOZ[2] = 4.0;
    f.TMEOS[2] = 200.0;
    f.TXEOS[2] = 500.0;
    f.DEOS[2] = 12.0;
    f.PEOS[2] = 30000.0;
    x[1] = 0.25;
    x[2] = 0.75;
    const double tz = 0.25 * 300.0 + 0.75 * 420.0;
    const double dz = 1.0 / (0.25 / 5.0 + 0.75 / 4.0);
    LIMITS("EOS", x, tmin, tmax, dmax, pmax);
    EXPECT_NEAR(tmin, tz / (0.25 * 300.0 / 150.0 + 0.75 * 420.0 / 200.0) - 5.0, 1e-12);
    EXPECT_NEAR(tmax, tz / (0.25 * 300.0 / 400.0 + 0.75 * 420.0 / 500.0), 1e-12);
    EXPECT_NEAR(dmax, dz * (0.25 * 20.0 / 5.0 + 0.75 * 12.0 / 4.0), 1e-12);
    EXPECT_NEAR(pmax, 0.25 * 50000.0 + 0.75 * 30000.0, 1e-9);
    EXPECT_EQ(check(tmin - 1.0, 0.0, 0.0), 1);
    f.TCRIT[2] = f.TCRIT[1] + 51.0;
    EXPECT_EQ(check(tmin - 24.9, 0.0, 0.0), 0) << "wide-boiling mixtures have a margin of 25 K";
    EXPECT_EQ(check(tmin - 25.1, 0.0, 0.0), 1);
    f.TMEOS.fill(0.0);
    f.TXEOS.fill(0.0);
    LIMITS("EOS", x, tmin, tmax, dmax, pmax);
    EXPECT_NEAR(tmax, tz / 300.0, 1e-12) << "limits that are not known are left out";
    EXPECT_NEAR(tmin, tz / 100.0, 1e-12);
}

TEST_F(Limits, CompositionOutOfRange) {
    modelTags.NC = 2;
    x[1] = 0.5;
    x[2] = 0.6;
    EXPECT_EQ(check(300.0, 0.0, 0.0), 8);
    EXPECT_EQ(words(herr), std::string(head) +
                               "    composition(s) out of range, Xsum =  1.10000 mol frac, X(i) =  0.50000  0.60000");
    x[1] = -0.1;
    x[2] = 1.1;
    EXPECT_EQ(check(300.0, 0.0, 0.0), 8);
    x[1] = 0.5;
    x[2] = 0.5000009;
    EXPECT_EQ(check(300.0, 0.0, 0.0), 0);
}

TEST_F(Limits, AmmoniaWithWaterFreezesAtItsOwnLine) {
    // R. Tillner-Roth, D. G. Friend, J. Phys. Chem. Ref. Data 27 (1998) 45: lowest temperature at the eutectic, ends at
    // the triple points of water and ammonia
    modelTags.NC = 2;
    for (const int ammonia : {1, 2}) {
        mixingParameters.AMMONIAWATER = ammonia;
        const auto lowest = [&](double z) {
            x[ammonia] = z;
            x[3 - ammonia] = 1.0 - z;
            LIMITS("EOS", x, tmin, tmax, dmax, pmax);
            return tmin;
        };
        EXPECT_NEAR(lowest(1e-9), 273.16, 1e-5);
        EXPECT_NEAR(lowest(1.0 - 1e-9), 195.495, 1e-5);
        // the four branches meet
        for (const double z : {0.33367, 0.58396, 0.81473}) EXPECT_NEAR(lowest(z - 1e-9), lowest(z + 1e-9), 0.02) << z;
        EXPECT_LT(lowest(0.33367), 175.0);
    }
}

TEST(GoldenSections, ExtremumOfTheEnthalpy) {
    // liquid-like propane at 300 K: the enthalpy has a minimum over density
    ASSERT_TRUE(test::setUp({"PROPANE"}));
    const Composition x = unitComposition(1);
    for (const char letter : {'H', 'E'}) {
        double rho, value, below, above;
        GOLD(8.0, 16.0, 60, true, x, 300.0, letter, rho, value);
        const auto property = [&](double density) {
            double h;
            letter == 'H' ? ENTHAL(300.0, density, x, h) : ENERGY(300.0, density, x, h);
            return h;
        };
        below = property(rho - 0.01);
        above = property(rho + 0.01);
        EXPECT_NEAR(value, property(rho), 1e-6);
        if (letter == 'H') {
            EXPECT_GT(below, value);
            EXPECT_GT(above, value);
        }
    }
    // above the critical temperature entropy only falls with density: a search for its maximum runs to the lower end
    double rho, value, s;
    GOLD(2.0, 12.0, 60, false, x, 450.0, 'S', rho, value);
    EXPECT_NEAR(rho, 2.0, 1e-9);
    ENTRO(450.0, 2.0, x, s);
    EXPECT_NEAR(value, s, 1e-7);
}

}  // namespace
}  // namespace frigana
