// Range checks, codes and texts of the transport dispatch, and the collision integrals.
#include <cmath>

#include "FluidWith.h"
#include "MIX_HMX.h"

namespace frigana::test {
namespace {

class Dispatch : public FluidWithSections {};

TEST_F(Dispatch, aViscosityWithoutAConductivityAnswersAlone) {
    ASSERT_EQ(setUpWith("R134A", section("ETA", "VS1") + wideLimits +
                                     "  1 0 0 0 0 0\nNUL\n  0.5\n  300.0\n  1.0 1.0\n  0.2 0.5\n  0 1.0 1.0\n"
                                     "  0 0 0 0 0 0\n  1.0 1.0 1.0\nNUL\n"),
              0)
        << message();
    const TransportPoint point = transport(400.0, 0.1);
    EXPECT_NEAR(point.eta, 0.2 * 20.0 / 0.25, 1e-12);
    EXPECT_EQ(point.tcx, noTransportModel);
    EXPECT_EQ(point.ierr, 0) << point.message;
}

TEST_F(Dispatch, aFluidWithoutModelsHasCode40) {
    ASSERT_EQ(setUpWith("R134A", ""), 0);
    const TransportPoint point = transport(300.0, 0.1);
    EXPECT_EQ(point.ierr, 40);
    EXPECT_EQ(point.message, "[TRNPRP error 40] transport equations are not available for one or more of the fluids");
    EXPECT_EQ(point.eta, notComputed);
    EXPECT_EQ(point.tcx, notComputed);
}

TEST(DispatchCodes, atTheCriticalPointTheViscosityIsFiniteAndTheConductivityIsNot) {
    // two blanks: the number has three columns and the words before it end in one
    for (const char* fluid : {"R134A", "CO2", "R123", "R23"}) {
        ASSERT_EQ(setUp(fluid), 0);
        const TransportPoint point = transport(fluidConstants.TCRIT[1], fluidConstants.DCRIT[1]);
        EXPECT_EQ(point.ierr, 51) << fluid;
        EXPECT_EQ(point.message, "[TRNPRP warning  51] pure fluid property is infinite at exactly Tc, rhoc");
        EXPECT_GT(point.eta, 5.0) << fluid;
        EXPECT_LT(point.eta, 100.0) << fluid;
        EXPECT_EQ(point.tcx, notComputed) << fluid;
    }
}

TEST(DispatchCodes, aConductivityOutOfRangeLeavesTheViscosity) {
    ASSERT_EQ(setUp("NITROGEN"), 0);  // so that the limits come from the file again
    ASSERT_EQ(setUp("R134A"), 0);
    fluidConstants.TXTCX[1] = 200.0;
    TransportPoint point = transport(320.0, 0.1);
    EXPECT_EQ(point.ierr, -31);
    EXPECT_EQ(
        point.message.substr(0, 115),
        "[TRNPRP warning -31] one or more inputs to the thermal conductivity correlation are out of range; results "
        "may be in");
    EXPECT_NE(point.message.find("temperature > 1.5 x upper limit, T =   320.00000 K, Tmax =   200.00000 K"),
              std::string::npos)
        << point.message;
    EXPECT_GT(point.eta, 10.0);
    EXPECT_EQ(point.tcx, notComputed);

    fluidConstants.TXTCX[1] = 455.0;
    fluidConstants.DXTCX[1] = 0.05;
    point = transport(320.0, 0.1);
    EXPECT_EQ(point.ierr, -32);
    EXPECT_EQ(point.tcx, notComputed);
}

TEST(DispatchCodes, bothOutOfRangeJoinTheirWarnings) {
    struct Row {
        bool hotEta, denseEta, hotTcx, denseTcx;
        int code;
    };
    // 1 for the temperature, 2 for the density, 3 for both
    for (const Row& row :
         {Row{true, false, true, false, -51}, Row{true, false, false, true, -52}, Row{true, false, true, true, -53},
          Row{false, true, false, true, -52}, Row{false, true, true, false, -53}, Row{true, true, true, true, -53}}) {
        ASSERT_EQ(setUp("NITROGEN"), 0);
        ASSERT_EQ(setUp("R134A"), 0);
        FluidConstants& f = fluidConstants;
        if (row.hotEta) f.TXETA[1] = 200.0;
        if (row.denseEta) f.DXETA[1] = 0.05;
        if (row.hotTcx) f.TXTCX[1] = 200.0;
        if (row.denseTcx) f.DXTCX[1] = 0.05;
        const TransportPoint point = transport(320.0, 0.1);
        EXPECT_EQ(point.ierr, row.code) << point.message;
        EXPECT_GT(point.eta, 10.0);
        EXPECT_EQ(point.tcx, notComputed);
    }
    EXPECT_EQ(transport(320.0, 0.1).message,
              "[TRNPRP warning -53] temperature and/or density input to the thermal conductivity and/or viscosity "
              "correlations are out of range; will use the ECS model.");
}

// Of the words on the limits those from the 39th to the 168th letter are told.
TEST(DispatchCodes, aLongReasonIsCutAtItsEnd) {
    ASSERT_EQ(setUp("NITROGEN"), 0);  // so that the limits come from the file again
    ASSERT_EQ(setUp("R134A"), 0);
    fluidConstants.TXTCX[1] = 250.0;
    fluidConstants.DXTCX[1] = 0.05;
    double tmin, tmax, Dmax, pmax;
    int code = 0;
    Text255 limit;
    LIMITX("TCX", 320.0, 0.1, 0.0, unitComposition(1), tmin, tmax, Dmax, pmax, code, limit);
    const std::string reason(limit.trimmed());
    ASSERT_GT(reason.size(), 169u) << reason;
    ASSERT_NE(reason[168], ' ') << "the letter behind the last one told";
    EXPECT_EQ(
        transport(320.0, 0.1).message,
        "[TRNPRP warning -33] one or more inputs to the thermal conductivity correlation are out of range; results "
        "may be in error; " +
            reason.substr(38, 130));
}

TEST(DispatchCodes, aViscosityOutOfRangeIsComputedAndItsWarningForgotten) {
    ASSERT_EQ(setUp("NITROGEN"), 0);  // so that the limits come from the file again
    ASSERT_EQ(setUp("R134A"), 0);
    const double good = transport(320.0, 0.1).eta;
    fluidConstants.TXETA[1] = 200.0;
    const TransportPoint point = transport(320.0, 0.1);
    EXPECT_EQ(point.ierr, 0) << point.message;
    EXPECT_EQ(point.eta, good);
    fluidConstants.TXETA[1] = 455.0;
}

// Below the temperatures of its own correlation a liquid has no viscosity: that of R152a has a pole there.
TEST(DispatchCodes, aLiquidBelowTheRangeOfItsCorrelationHasNoViscosity) {
    struct Row {
        const char* fluid;
        double limit;  // [K]
    };
    for (const Row& row : {Row{"R152A", 240.0}, Row{"R1234YF", 220.0}, Row{"ETHYLENE", 110.0}}) {
        SCOPED_TRACE(row.fluid);
        ASSERT_EQ(setUp(row.fluid), 0);
        ASSERT_EQ(fluidConstants.TMETA[1], row.limit);
        double p = 0.0, Dl = 0.0, Dv = 0.0, last = HUGE_VAL;
        for (double T = fluidConstants.TTPN[1] + 1.0; T < row.limit; T += 5.0) {
            ASSERT_TRUE(saturation(T, p, Dl, Dv));
            const TransportPoint liquid = transport(T, Dl), vapor = transport(T, Dv);
            EXPECT_EQ(liquid.eta, notComputed) << T;
            EXPECT_EQ(liquid.ierr, 0) << liquid.message;
            EXPECT_EQ(liquid.message, "");
            EXPECT_GT(liquid.tcx, 0.05) << T;
            EXPECT_LT(liquid.tcx, last) << T;
            last = liquid.tcx;
            EXPECT_GT(vapor.eta, 0.0) << T;
            EXPECT_LT(vapor.eta, 20.0) << T;
        }
        for (const double T : {row.limit, row.limit + 1.0}) {
            ASSERT_TRUE(saturation(T, p, Dl, Dv));
            EXPECT_GT(transport(T, Dl).eta, 100.0) << T;
        }
    }
}

TEST(DispatchCodes, aNegativeValueIsNotHandedOut) {
    ASSERT_EQ(setUp("R1233ZD"), 0);
    EXPECT_LT(TCX1DG(1, 160.0), 0.0);
    // within the range of the measurements, from 204 K, the correlation is positive; below, corresponding states serve
    EXPECT_GT(transport(165.75, 1e-6).tcx, 0.0);
    fluidConstants.TMTCX[1] = 160.0;
    EXPECT_EQ(transport(165.75, 1e-6).tcx, notComputed);
}

TEST(DispatchCodes, unknownModelsHaveCodes49And39) {
    ASSERT_EQ(setUp("R134A"), 0);
    struct Row {
        const char *eta, *tcx, *critical, *text;
        int code;
    };
    const Row rows[] = {
        {"VS6", "TC1", "TK3", "[ETAK0 error 49] call to unimplemented model (VS6)", 49},
        {"VS7", "TC1", "TK3", "[ETAK0 error 49] unknown viscosity model specified", 49},
        {"VS1", "TC6", "TK3", "[TCXK0 error 39] call to unimplemented model (TC6)", 39},
        {"VS1", "TC4", "TK3", "[TCXK0 error 39] unknown thermal conductivity model specified", 39},
        {"VS1", "TC1", "TK5", "[TCXKC error 39] unknown thermal conductivity critical enhancement model specified: TK5",
         39},
    };
    for (const Row& row : rows) {
        modelTags.HETA[1] = row.eta;
        modelTags.HTCX[1] = row.tcx;
        modelTags.HTCXCR[1] = row.critical;
        const TransportPoint point = transport(320.0, 0.1);
        EXPECT_EQ(point.ierr, row.code);
        EXPECT_EQ(point.message, row.text);
        EXPECT_EQ(point.eta == notComputed, row.code == 49);
        EXPECT_EQ(point.tcx == notComputed, row.code == 39);
    }
    modelTags.LFORCESETUP = true;
}

TEST(DispatchCodes, everyPartOfAnUnknownModelSaysWhichItIs) {
    ASSERT_EQ(setUp("R134A"), 0);
    double value = 0.0;
    int ierr = 0;
    Text255 herr;
    modelTags.HETA[1] = "VS6";
    ETAK1(1, 300.0, value, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(value, 0.0);
    ETAKR(1, 300.0, 0.1, value, ierr, herr);
    EXPECT_EQ(words(herr), "[ETAKR error 49] call to unimplemented model (VS6)");
    modelTags.HETA[1] = "ECS";
    ETAK1(1, 300.0, value, ierr, herr);
    EXPECT_EQ(words(herr), "[ETAK1 error 49] unknown viscosity model specified");
    ETAKR(1, 300.0, 0.1, value, ierr, herr);
    EXPECT_EQ(words(herr), "[ETAKR error 49] unknown viscosity model specified");
    ETAK0(1, 300.0, value, ierr, herr);
    EXPECT_EQ(ierr, 0);
    EXPECT_EQ(value, ETA0DG(1, 300.0));
    modelTags.HTCX[1] = "TC6";
    TCXKB(1, 300.0, 0.1, value, ierr, herr);
    EXPECT_EQ(words(herr), "[TCXKB error 39] call to unimplemented model (TC6)");
    modelTags.HTCX[1] = "TC9";
    TCXKB(1, 300.0, 0.1, value, ierr, herr);
    EXPECT_EQ(words(herr), "[TCXKB error 39] unknown thermal conductivity model specified");
    modelTags.LFORCESETUP = true;
}

// The parts of a viscosity are not put together where one of them is missing.
TEST(DispatchCodes, aViscosityWithoutOneOfItsPartsIsNotComputed) {
    ASSERT_EQ(setUp("R134A"), 0);
    for (const char* tag : {"VS6", "VS7", "ECS"}) {
        modelTags.HETA[1] = tag;
        for (const auto viscosity : {ETAK, ETAKB}) {
            double value = 1.0;
            int ierr = 0;
            Text255 herr;
            viscosity(1, 300.0, 10.0, value, ierr, herr);
            EXPECT_EQ(ierr, 49) << tag;
            EXPECT_EQ(value, notComputed) << tag;
        }
    }
    modelTags.LFORCESETUP = true;
}

// Nothing is a value; only what is below it has no meaning.
TEST_F(Dispatch, aCorrelationWithoutTermsGivesZero) {
    ASSERT_EQ(
        setUpWith("R134A", section("ETA", "VS1") + wideLimits +
                               "  0 0 0 0 0 0\nNUL\n  0.5\n  300.0\n  1.0 1.0\n  0 1.0 1.0\n"
                               "  0 0 0 0 0 0\n  1.0 1.0 1.0\nNUL\n" +
                               section("TCX", "TC1") + wideLimits + "  0 0\n  1.0 1.0\n  0 0\n  1.0 1.0 1.0\nNUL\n"),
        0)
        << message();
    const TransportPoint point = transport(400.0, 0.1);
    EXPECT_EQ(point.eta, 0.0);
    EXPECT_EQ(point.tcx, 0.0);
    EXPECT_EQ(point.ierr, 0) << point.message;
}

// A slot whose section could not be read divides by nothing.
TEST(DispatchCodes, aModelWithoutDataGivesZero) {
    ASSERT_EQ(setUp("R134A"), 0);
    const double gas = fluidConstants.R;
    viscosityTerms[1] = {};
    conductivityTerms[1] = {};
    struct Dilute {
        const char* name;
        double (*value)(int, double);
    };
    for (const Dilute& model :
         {Dilute{"ETA1DG", ETA1DG}, Dilute{"ETA1B2", ETA1B2}, Dilute{"ETA2DG", ETA2DG}, Dilute{"ETA3DG", ETA3DG},
          Dilute{"ETA4DG", ETA4DG}, Dilute{"ETA5DG", ETA5DG}, Dilute{"TCX1DG", TCX1DG}, Dilute{"TCX2DG", TCX2DG},
          Dilute{"TCX3DG", TCX3DG}, Dilute{"TCX5DG", TCX5DG}})
        EXPECT_EQ(model.value(1, 300.0), 0.0) << model.name;
    struct Dense {
        const char* name;
        double (*value)(int, double, double);
    };
    for (const Dense& model :
         {Dense{"ETA1RS", ETA1RS}, Dense{"ETA2RS", ETA2RS}, Dense{"ETA3RS", ETA3RS}, Dense{"ETA4RS", ETA4RS},
          Dense{"ETA5RS", ETA5RS}, Dense{"TCX1BK", TCX1BK}, Dense{"TCX2BK", TCX2BK}, Dense{"TCX5BK", TCX5BK},
          Dense{"TCX3CR", TCX3CR}, Dense{"ETAR23", ETAR23}, Dense{"ETAH2O", ETAH2O}})
        for (const double D : {0.0, 5.0}) EXPECT_EQ(model.value(1, 300.0, D), 0.0) << model.name;
    // a molecule needs its size and its energy
    viscosityTerms[1].SIGMAV = 0.5;
    EXPECT_EQ(ETA5DG(1, 300.0), 0.0);
    EXPECT_EQ(ETA5RS(1, 300.0, 5.0), 0.0);
    fluidConstants.R = gas;
    modelTags.LFORCESETUP = true;
}

// A fluid of which one component of a mixture has a model and the other none.
TEST(DispatchCodes, aMixtureNeedsTheModelsOfWhatIsInIt) {
    ASSERT_EQ(setUp({"R32", "R125"}), 0);
    modelTags.HETA[2] = modelTags.HTCX[2] = "NUL";
    Composition x{};
    x[1] = x[2] = 0.5;
    const TransportPoint both = transport(300.0, 0.1, x);
    EXPECT_EQ(both.ierr, 40);
    EXPECT_EQ(both.eta, notComputed);
    EXPECT_EQ(transport(300.0, 0.1, unitComposition(2)).ierr, 40);
    EXPECT_GT(transport(300.0, 0.1, unitComposition(1)).eta, 10.0);
    modelTags.HTCX[2] = "ECS";
    EXPECT_EQ(transport(300.0, 0.1, unitComposition(2)).eta, noTransportModel);
    modelTags.LFORCESETUP = true;
}

class Mixtures : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(setUp({"AMMONIA", "PROPANE"}), 0);
        MixingPair& pair = mixingParameters.pair[1][2];
        pair.XLJS = pair.XLJE = pair.XKIJ = pair.XLIJ = pair.XKIJK = pair.XLIJK = 0.0;
        mixingParameters.pair[2][1] = pair;
    }
    void TearDown() override {
        mixingParameters.AMMONIAWATER = mixingParameters.IWATERCOMP = mixingParameters.IALCOHOLCOMP = 0;
        modelTags.LFORCESETUP = true;
    }
    static TransportPoint at(double first) {
        Composition x{};
        x[1] = first;
        x[2] = 1.0 - first;
        return transport(400.0, 0.1, x);
    }
};

TEST_F(Mixtures, ammoniaBeforeWaterIsRefusedAndWaterBeforeAmmoniaIsNot) {
    mixingParameters.AMMONIAWATER = 1;
    TransportPoint point = at(0.5);
    EXPECT_EQ(point.ierr, 50);
    EXPECT_EQ(point.message, "[TRNPRP error 50] transport equations are not available for the ammonia/water mixture");
    mixingParameters.AMMONIAWATER = 2;
    EXPECT_NE(at(0.5).ierr, 50);
}

TEST_F(Mixtures, waterIsAllowedUpTo5Percent) {
    mixingParameters.IWATERCOMP = 1;
    EXPECT_NE(at(0.04).ierr, 50);
    EXPECT_GT(at(0.04).eta, 0.0);
    EXPECT_NE(at(0.05).ierr, 50);
    EXPECT_EQ(at(0.0502).ierr, 50);
    const TransportPoint point = at(0.06);
    EXPECT_EQ(point.ierr, 50);
    EXPECT_EQ(point.message,
              "[TRNPRP error 50] transport equations are not available for mixtures with water at molar concentrations "
              "greater than 5%");
}

TEST_F(Mixtures, alcoholIsRefused) {
    mixingParameters.IALCOHOLCOMP = 2;
    const TransportPoint point = at(0.5);
    EXPECT_EQ(point.ierr, 50);
    EXPECT_EQ(point.message, "[TRNPRP error 50] transport equations are not available for mixtures with alcohols");
}

TEST_F(Mixtures, pairParametersAllowThemAll) {
    mixingParameters.AMMONIAWATER = 1;
    mixingParameters.IWATERCOMP = 2;
    for (double MixingPair::*parameter :
         {&MixingPair::XLJS, &MixingPair::XLJE, &MixingPair::XKIJ, &MixingPair::XKIJK, &MixingPair::XLIJK}) {
        mixingParameters.pair[1][2].*parameter = 1e-6;
        EXPECT_NE(at(0.5).ierr, 50);
        mixingParameters.pair[1][2].*parameter = 0.0;
        EXPECT_EQ(at(0.5).ierr, 50);
    }
}

// Parameters with an earlier component do not count: the second of three has none with the third.
TEST(MixturesOfThree, everyComponentNeedsPairParametersWithALaterOne) {
    ASSERT_EQ(setUp({"AMMONIA", "PROPANE", "R134A"}), 0);
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 3; ++j) mixingParameters.pair[i][j] = {};
    mixingParameters.pair[1][2].XKIJ = mixingParameters.pair[2][1].XKIJ = 1e-6;
    mixingParameters.AMMONIAWATER = 1;
    const auto code = [](double a, double b, double c) {
        Composition x{};
        x[1] = a;
        x[2] = b;
        x[3] = c;
        return transport(400.0, 0.1, x).ierr;
    };
    EXPECT_EQ(code(0.3, 0.3, 0.4), 50);
    EXPECT_NE(code(0.5, 0.5, 0.0), 50);
    EXPECT_EQ(code(0.5, 0.0, 0.5), 50);
    mixingParameters.pair[2][3].XKIJ = mixingParameters.pair[3][2].XKIJ = 1e-6;
    EXPECT_NE(code(0.3, 0.3, 0.4), 50);
    mixingParameters.AMMONIAWATER = 0;
    modelTags.LFORCESETUP = true;
}

// Values of the table in J. O. Hirschfelder, C. F. Curtiss, R. B. Bird, Molecular Theory of Gases and Liquids, Wiley
// 1954, table I-M. The closed form without its oscillating terms follows them within 1.5 %.
TEST(CollisionIntegral, theClosedFormFollowsTheTable) {
    struct Row {
        double t, diffusion, viscosity;
    };
    for (const Row& row : {Row{0.5, 2.066, 2.257}, Row{1.0, 1.439, 1.587}, Row{2.0, 1.075, 1.175},
                           Row{5.0, 0.8422, 0.9269}, Row{10.0, 0.7424, 0.8242}, Row{100.0, 0.5130, 0.5882}}) {
        EXPECT_NEAR(OMEGAS(1, 1, row.t) / row.diffusion, 1.0, 0.015) << row.t;
        EXPECT_NEAR(OMEGAS(2, 2, row.t) / row.viscosity, 1.0, 0.015) << row.t;
    }
}

TEST(CollisionIntegral, theTagSelectsTheForm) {
    CollisionSlot& slot = collisionTerms[5];
    slot = {};
    slot.NTOMG = 2;
    slot.COMG[0] = 0.5;
    slot.ICOMG[0] = 0;
    slot.COMG[1] = -0.25;
    slot.ICOMG[1] = 2;
    slot.NTOMG2 = 3;
    slot.COMG2[0] = 0.25;
    slot.COMG2[1] = 1.5;
    slot.COMG2[2] = -0.5;
    const double l = std::log(2.0), u = std::cbrt(0.5);
    EXPECT_DOUBLE_EQ(OMEGA(5, 600.0, 300.0, "CI1"), std::exp(0.5 - 0.25 * l * l));
    EXPECT_DOUBLE_EQ(OMEGA(5, 600.0, 300.0, "CI2"), 1.0 / (0.25 * u * u * u + 1.5 * u * u - 0.5 * u));
    EXPECT_DOUBLE_EQ(OMEGA(5, 600.0, 300.0, "CI0"), OMEGAS(2, 2, 2.0));
    EXPECT_EQ(OMEGA(5, 600.0, 300.0, "NUL"), 1.0);
    EXPECT_EQ(OMEGA(5, 600.0, 300.0, "CI3"), 1.0);
    EXPECT_EQ(OMEGA(5, 600.0, 300.0, "CX1"), 1.0);
    // no molecule: logarithm and ratio are replaced
    EXPECT_EQ(OMEGA(5, 600.0, 0.0, "CI0"), 1.0);
    EXPECT_EQ(OMEGA(5, 600.0, 1e-20, "CI0"), 1.0);
    EXPECT_LT(OMEGA(5, 600.0, 1.005e-20, "CI0"), 0.1);  // the gas of nearly no attraction
    EXPECT_DOUBLE_EQ(OMEGA(5, 600.0, 0.0, "CI1"), std::exp(0.5));
    EXPECT_DOUBLE_EQ(OMEGA(5, 300.0, 300.0, "CI1"), std::exp(0.5));
    EXPECT_DOUBLE_EQ(OMEGA(5, 0.0, 300.0, "CI2"), 1.0 / (0.25 + 1.5 - 0.5));
    slot.NTOMG2 = 0;
    EXPECT_EQ(OMEGA(5, 300.0, 300.0, "CI2"), 1.0);
}

}  // namespace
}  // namespace frigana::test
