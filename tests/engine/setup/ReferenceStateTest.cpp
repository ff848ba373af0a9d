#include <cmath>
#include <filesystem>

#include "CORE_CPP.h"
#include "FLSH_SUB.h"
#include "FluidText.h"
#include "LIMITS.h"
#include "MIX_HMX.h"
#include "PROP_SUB.h"
#include "SAT_SUB.h"
#include "SETKTV.h"
#include "TreeFolders.h"
#include "UTILITY.h"

namespace frigana::test {
namespace {

// Enthalpy and entropy are sums of terms that are some hundred times larger than what remains [J/mol, J/(mol K)].
constexpr double enthalpyTolerance = 1e-6, entropyTolerance = 1e-8;

class Reference : public EngineTest {
  protected:
    void SetUp() override {
        EngineTest::SetUp();
        SETPATH(test::dataFolder);
    }
    int reference(const char* tag, int ixmode, const Composition& x, double h0 = 0, double s0 = 0, double t0 = 0,
                  double p0 = 0) {
        hrf = tag;
        SETREF(hrf, ixmode, x, h0, s0, t0, p0, ierr, herr);
        return ierr;
    }
    // Enthalpy and entropy of component i at a state, as a caller sees them.
    void expectAt(int i, double t, double rho, double h, double s, const char* what) {
        double p, e, cv, cp, w, jt, gotH, gotS;
        THERM(t, rho, unitComposition(i), p, e, gotH, gotS, cv, cp, w, jt);
        EXPECT_NEAR(gotH, h, enthalpyTolerance) << what;
        EXPECT_NEAR(gotS, s, entropyTolerance) << what;
    }
    double liquidAt(int i, double t) {
        double p, rhol = 0, rhov;
        Composition xl, xv;
        SATT(t, unitComposition(i), 1, p, rhol, rhov, xl, xv, ierr, herr);
        EXPECT_EQ(ierr, 0) << message();
        return rhol;
    }
    double liquidBoilingAt(int i, double p, double& t) {
        double rhol = 0, rhov;
        Composition xl, xv;
        SATP(p, unitComposition(i), 1, t, rhol, rhov, xl, xv, ierr, herr);
        EXPECT_EQ(ierr, 0) << message();
        return rhol;
    }
    // The file of a fluid with some of its text replaced.
    std::string edited(const std::string& name, const std::string& from, const std::string& to) const {
        std::string text = readFile(std::string(test::dataFolder) + "/fluids/" + name);
        const auto at = text.find(from);
        EXPECT_NE(at, std::string::npos) << name << " holds no " << from;
        if (at != std::string::npos) text.replace(at, from.size(), to);
        return write(name, text);
    }
    // A pair of pure fluids without a mixture model: what concerns the components alone.
    void setUpPair(const char* first, const char* second, const char* tag) {
        setUp({first, second}, tag);
        EXPECT_EQ(modelTags.NC, 2);
        EXPECT_EQ(fluidFiles.HFILE[2], second);
    }
};

TEST_F(Reference, NamedPointsOfAPureFluid) {
    ASSERT_EQ(setUp({"R134A.FLD"}, "IIR"), 0) << message();
    const double M = fluidConstants.WMAS[1];
    expectAt(1, 273.15, liquidAt(1, 273.15), 200.0 * M, M, "IIR");

    ASSERT_EQ(reference("ASH", 1, unitComposition(1)), 0) << message();
    expectAt(1, 233.15, liquidAt(1, 233.15), 0.0, 0.0, "ASH");

    ASSERT_EQ(reference("NBP", 1, unitComposition(1)), 0) << message();
    double t = 0;
    const double rho = liquidBoilingAt(1, 101.325, t);
    expectAt(1, t, rho, 0.0, 0.0, "NBP");
    EXPECT_NEAR(t, fluidConstants.TNBP[1], 0.01);
}

TEST_F(Reference, TheDefaultIsThatOfTheFile) {
    ASSERT_EQ(setUp({"R134A.FLD"}, "DEF"), 0) << message();
    EXPECT_EQ(referenceState.HREFI[1], "IIR");
    const double M = fluidConstants.WMAS[1];
    expectAt(1, 273.15, liquidAt(1, 273.15), 200.0 * M, M, "DEF");
    hrf = "???";
    SETREF(hrf, 1, unitComposition(1), 0, 0, 0, 0, ierr, herr);
    EXPECT_EQ(hrf, "IIR");
    EXPECT_EQ(ierr, 0);
}

TEST_F(Reference, APointGivenByTheCaller) {
    ASSERT_EQ(setUp({"R134A.FLD"}, "DEF"), 0) << message();
    // gas at 300 K and 100 kPa
    ASSERT_EQ(reference("OTH", 1, unitComposition(1), 1000.0, 10.0, 300.0, 100.0), 0) << message();
    expectAt(1, 300.0, referenceState.RHOREF[1], 1000.0, 10.0, "OTH");
    double p = 0;
    PRESS(300.0, referenceState.RHOREF[1], unitComposition(1), p);
    EXPECT_NEAR(p, 100.0, 1e-6);
    // saturated liquid and vapor by the mark of the pressure
    for (const double mark : {-1.0, -2.0}) {
        ASSERT_EQ(reference("OTH", 1, unitComposition(1), 500.0, 5.0, 280.0, mark), 0) << message();
        double psat, rhol, rhov;
        Composition xl, xv;
        SATT(280.0, unitComposition(1), 1, psat, rhol, rhov, xl, xv, ierr, herr);
        expectAt(1, 280.0, mark > -1.99 ? rhol : rhov, 500.0, 5.0, "OTH at saturation");
    }
    // ideal gas
    ASSERT_EQ(reference("OT0", 1, unitComposition(1), 2000.0, 20.0, 310.0, 101.325), 0) << message();
    EXPECT_NEAR(referenceState.RHOREF[1], 101.325 / (fluidConstants.REOS[1] * 310.0), 1e-15);
    double e, h, s, cv, cp, w, A, G;
    THERM0(310.0, referenceState.RHOREF[1], unitComposition(1), p, e, h, s, cv, cp, w, A, G);
    EXPECT_NEAR(h, 2000.0, enthalpyTolerance);
    EXPECT_NEAR(s, 20.0, entropyTolerance);
}

TEST_F(Reference, ADefaultPointGivenInTheFile) {
    const std::string file = edited("R134A.FLD", "IIR  ", "OTH\n300.0 100.0 1000.0 10.0\n!");
    // the line of the tag is followed by that of the point; what was behind the tag must not count as a line
    std::string text = readFile(file);
    text.erase(text.find("\n!") + 1, text.find('\n', text.find("\n!") + 1) - text.find("\n!"));
    writeFile(file, text);
    ASSERT_EQ(setUp({file}, "DEF"), 0) << message();
    EXPECT_EQ(referenceState.HREFI[1], "OTH");
    expectAt(1, 300.0, referenceState.RHOREF[1], 1000.0, 10.0, "default OTH");
}

TEST_F(Reference, NoReferenceStateLeavesTheOffsetsAtZero) {
    ASSERT_EQ(setUp({"R134A.FLD"}, "NA"), 0) << message();
    EXPECT_EQ(referenceState.HREF[1], 0.0);
    EXPECT_EQ(referenceState.SREF[1], 0.0);
    EXPECT_EQ(referenceState.TREF[1], 300.0);
    EXPECT_EQ(referenceState.PREFI[1], 0.000001);
}

TEST_F(Reference, AnUnknownTagTakesTheDefaultWithAWarning) {
    ASSERT_EQ(setUp({"R134A.FLD"}, "XYZ"), -29);
    EXPECT_EQ(message(), "[SETREF warning -29] reference state not found, using default reference state");
    EXPECT_EQ(referenceState.HREFI[1], "IIR");
    const double M = fluidConstants.WMAS[1];
    expectAt(1, 273.15, liquidAt(1, 273.15), 200.0 * M, M, "default of an unknown tag");
}

TEST_F(Reference, AnUnknownDefaultTakesTheBoilingPointWithAWarning) {
    const std::string file = edited("R134A.FLD", "IIR  ", "QQQ  ");
    ASSERT_EQ(setUp({file}, "DEF"), -29);
    EXPECT_EQ(message(),
              "[SETREF warning -29] reference state (QQQ) for component   1 not found; will use NBP reference state. ");
    expectAt(1, fluidConstants.TNBP[1], liquidAt(1, fluidConstants.TNBP[1]), 0.0, 0.0, "unknown default");
}

TEST_F(Reference, AnEqualCallReturnsAtOnce) {
    ASSERT_EQ(setUp({"R134A.FLD"}, "IIR"), 0) << message();
    referenceState.HREF[1] = 12345.0;
    ASSERT_EQ(reference("IIR", 1, unitComposition(1)), 0);
    EXPECT_EQ(referenceState.HREF[1], 12345.0);
    ASSERT_EQ(reference("ASH", 1, unitComposition(1)), 0);
    EXPECT_NE(referenceState.HREF[1], 12345.0);

    ASSERT_EQ(reference("OTH", 1, unitComposition(1), 1000.0, 10.0, 300.0, 100.0), 0);
    referenceState.HREF[1] = 12345.0;
    ASSERT_EQ(reference("OTH", 1, unitComposition(1), 1000.0, 10.0, 300.0, 100.0), 0);
    EXPECT_EQ(referenceState.HREF[1], 12345.0);
    ASSERT_EQ(reference("OTH", 1, unitComposition(1), 1000.0 + 1e-9, 10.0, 300.0, 100.0), 0);
    EXPECT_NE(referenceState.HREF[1], 12345.0);
}

TEST_F(Reference, AFluidThatIsGasAtThePointTakesItsDefault) {
    EXPECT_EQ(setUp({"NITROGEN.FLD"}, "IIR"), 23);
    EXPECT_EQ(message(),
              "[SETUP warning 23] critical temperature for component   1 is less than IIR reference temperature; "
              "Tcrit =   126.19200 K, Tref = 273.15 K; will use default (NBP). ");
    double t = 0;
    const double rho = liquidBoilingAt(1, 101.325, t);
    expectAt(1, t, rho, 0.0, 0.0, "nitrogen");
    EXPECT_EQ(referenceState.HREFI[1], "NBP");

    renew();
    SETPATH(test::dataFolder);
    EXPECT_EQ(setUp({"NITROGEN.FLD"}, "ASH"), 25);
    EXPECT_EQ(message(),
              "[SETUP warning 25] critical temperature for component   1 is less than ASHRAE reference temperature; "
              "Tcrit =   126.19200 K, Tref = 233.15 K; will use default (NBP). ");
}

TEST_F(Reference, OneComponentsTroubleDoesNotStopTheOthers) {
    setUpPair("NITROGEN.FLD", "R134A.FLD", "IIR");
    EXPECT_EQ(ierr, 23) << message();
    EXPECT_EQ(referenceState.HREFI[1], "NBP");
    EXPECT_EQ(referenceState.HREFI[2], "IIR");
    const double M = fluidConstants.WMAS[2];
    expectAt(2, 273.15, liquidAt(2, 273.15), 200.0 * M, M, "the second component");
}

TEST_F(Reference, PointsBelowTheRangeOfTheEquationTakeTheDefault) {
    struct Row {
        const char *limit, *tag;
        int code;
        const char* text;
    };
    const Row rows[] = {
        {"280.00", "IIR", 22,
         "[SETUP warning 22] minimum temperature for component   1 is greater than IIR reference temperature; "
         "Tmin =   280.00000 K, Tref = 273.15 K.; will use default (QQQ). "},
        {"240.00", "ASH", 24,
         "[SETUP warning 24] minimum temperature for component   1 is greater than ASHRAE reference temperature; "
         "Tmin =   240.00000 K, Tref = 233.15 K; will use default (QQQ). "},
        {"250.00", "NBP", 26,
         "[SETUP warning 26] minimum temperature for component   1 is greater than boiling point temperature; "
         "Tmin =   250.00000 K, Tnbp =   247.07620 K; will use default (QQQ). "},
    };
    for (const Row& row : rows) {
        renew();
        std::string text = readFile(std::string(test::dataFolder) + "/fluids/R134A.FLD");
        text.replace(text.find("\nIIR"), 4, "\nQQQ");
        const auto limit = text.find("  169.85", text.find("#EOS"));
        text.replace(limit, 8, std::string("  ") + row.limit);
        EXPECT_EQ(setUp({write("R134A.FLD", text)}, row.tag), row.code);
        EXPECT_EQ(message(), row.text);
        // a default without a name of its own is the boiling line at 0.8 Tc
        EXPECT_DOUBLE_EQ(referenceState.TREF[1], 0.8 * fluidConstants.TCRIT[1]);
        expectAt(1, 0.8 * fluidConstants.TCRIT[1], liquidAt(1, 0.8 * fluidConstants.TCRIT[1]), 0.0, 0.0, row.tag);
    }
}

TEST_F(Reference, NoConvergenceAtThePointIsAnError) {
    renew();
    EXPECT_EQ(setUp({write("ONE.FLD", plainFile())}, "ASH"), 119);
    EXPECT_EQ(message().substr(0, 91),
              "[SETREF error 119] convergence failure in calculating reference state for component #  1:  ");
    EXPECT_EQ(referenceState.RHOREF[1], fluidConstants.DCRIT[1]);
}

// A point that was not found is looked for again, and told again.
TEST_F(Reference, AFailedPointDoesNotCountAsDone) {
    const std::string file = write("ONE.FLD", plainFile());
    ASSERT_EQ(setUp({file}, "NA"), 0) << message();
    EXPECT_EQ(reference("ASH", 1, unitComposition(1)), 119);
    EXPECT_EQ(reference("ASH", 1, unitComposition(1)), 119);
    EXPECT_FALSE(referenceState.LREFDONE);
    EXPECT_EQ(setUp({file}, "ASH"), 119);
}

// What the check of the reference temperature has found is told, also where the point is taken.
TEST_F(Reference, TheCodeOfTheLimitsIsKept) {
    ASSERT_EQ(setUp({"R134A.FLD"}, "NA"), 0) << message();
    EXPECT_EQ(reference("OTH", 1, unitComposition(1), 0.0, 0.0, 460.0, 100.0), -1);  // the equation ends at 455 K
    EXPECT_EQ(trimRight(message()),
              "one or more inputs are out of range:  temperature above upper limit, T =   460.00000 K, "
              "Tmax =   455.00000 K");
    EXPECT_TRUE(referenceState.LREFDONE) << "a warning does not undo the point";
}

// The integrals of the ideal gas start at the reference temperature: those that were computed before do not count.
TEST_F(Reference, TheIdealGasStartsAnewWhereTheReferenceTemperatureMoves) {
    ASSERT_EQ(setUp({"R134A.FLD"}, "IIR"), 0) << message();
    double p, e, h, s, cv, cp, w, jt;
    const Composition x = unitComposition(1);
    THERM(320.0, 0.04, x, p, e, h, s, cv, cp, w, jt);  // leaves the integrals from 273.15 K to 320 K
    ASSERT_EQ(reference("NA", 1, x), 0) << message();
    double hNA, sNA;
    THERM(320.0, 0.04, x, p, e, hNA, sNA, cv, cp, w, jt);
    cppTerms[1].TSVCP0 = 0.0;
    THERM(320.0, 0.04, x, p, e, h, s, cv, cp, w, jt);
    EXPECT_EQ(hNA, h);
    EXPECT_EQ(sNA, s);
}

// The offsets of a mixture belong to its parameters.
TEST_F(Reference, ChangedParametersOfAPairMoveThePointOfTheMixture) {
    setUpPair("R32.FLD", "R125.FLD", "IIR");
    Composition x{};
    x[1] = 0.7;
    x[2] = 0.3;
    ASSERT_EQ(reference("IIR", 2, x), 0) << message();
    const double before = referenceState.HREF[1];
    Text3 tag;
    MixNumbers numbers;
    Text255 file, citation, rule;
    MixNames names;
    GETKTV(1, 2, tag, numbers, file, names, citation, rule);
    numbers[1] += 30.0;
    SETKTV(1, 2, tag, numbers, file, ierr, herr);
    ASSERT_EQ(ierr, 0) << message();
    ASSERT_EQ(reference("IIR", 2, x), 0) << message();
    EXPECT_GT(std::fabs(referenceState.HREF[1] - before), 10.0);
    // the saturated liquid at 273.15 K has the values of the tag
    double psat = 0, rhol = 0, rhov = 0;
    Composition xl, xv;
    SATT(273.15, x, 1, psat, rhol, rhov, xl, xv, ierr, herr);
    ASSERT_EQ(ierr, 0) << message();
    double p, e, h, s, cv, cp, w, jt;
    THERM(273.15, rhol, x, p, e, h, s, cv, cp, w, jt);
    EXPECT_NEAR(h, 200.0 * WMOL(x), 1e-5);
    EXPECT_NEAR(s, WMOL(x), 1e-7);
    // and a set-up with the same arguments goes back to the points of the components
    ASSERT_EQ(setUp({"R32.FLD", "R125.FLD"}, "IIR"), 0) << message();
    expectAt(1, 273.15, liquidAt(1, 273.15), 200.0 * fluidConstants.WMAS[1], fluidConstants.WMAS[1], "component");
}

TEST_F(Reference, DifferentDefaultsCannotServeAMixture) {
    setUpPair("NITROGEN.FLD", "R134A.FLD", "DEF");
    const SlotArray<double> h = referenceState.HREF, s = referenceState.SREF;
    Composition x{};
    x[1] = x[2] = 0.5;
    EXPECT_EQ(reference("DEF", 2, x), -28);
    EXPECT_EQ(message(),
              "[SETREF warning -28] cannot apply reference state (DEF) at a specified mixture composition when "
              "components have different default reference states; will apply defaults to each pure component");
    for (const int i : {1, 2}) {
        EXPECT_EQ(referenceState.HREF[i], h[i]);
        EXPECT_EQ(referenceState.SREF[i], s[i]);
    }
}

TEST_F(Reference, ThePointOfAMixtureShiftsAllComponentsAlike) {
    setUpPair("R32.FLD", "R125.FLD", "IIR");
    const SlotArray<double> h = referenceState.HREF, s = referenceState.SREF;
    // the composition of a single component needs no mixture model
    const Composition x = unitComposition(1);
    ASSERT_EQ(reference("ASH", 2, x), 0) << message();
    expectAt(1, 233.15, liquidAt(1, 233.15), 0.0, 0.0, "ASH of the mixture");
    ASSERT_EQ(reference("IIR", 2, x), 0) << message();
    const double M = fluidConstants.WMAS[1];
    expectAt(1, 273.15, liquidAt(1, 273.15), 200.0 * M, M, "IIR of the mixture");
    ASSERT_EQ(reference("OTH", 2, x, 1000.0, 10.0, 300.0, 100.0), 0) << message();
    expectAt(1, 300.0, referenceState.RHOREF[1], 1000.0, 10.0, "OTH of the mixture");
    ASSERT_EQ(reference("IIR", 1, x), 0) << message();
    for (const int i : {1, 2}) {
        EXPECT_NEAR(referenceState.HREF[i], h[i], enthalpyTolerance);
        EXPECT_NEAR(referenceState.SREF[i], s[i], entropyTolerance);
    }
}

// A mixture and its values at a state; those of the ideal gas where asked for.
struct MixtureValues {
    double h, s;
};
MixtureValues mixtureValues(double t, double rho, const Composition& x, bool idealGas = false) {
    double p, e, cv, cp, w, other, G;
    MixtureValues v{};
    if (idealGas)
        THERM0(t, rho, x, p, e, v.h, v.s, cv, cp, w, other, G);
    else
        THERM(t, rho, x, p, e, v.h, v.s, cv, cp, w, other);
    return v;
}

// Every kind of point gives the mixture, and not its components, the values that are wanted there.
TEST_F(Reference, EveryPointOfAMixtureHasTheValuesAskedFor) {
    setUpPair("R32.FLD", "R125.FLD", "IIR");
    Composition x{};
    x[1] = 0.7;
    x[2] = 0.3;
    const double M = WMOL(x);
    double p = 0.0, rhol = 0.0, rhov = 0.0, t = 0.0;
    Composition xl, xv;
    const auto saturated = [&](double temperature, int kph) {
        SATT(temperature, x, kph, p, rhol, rhov, xl, xv, ierr, herr);
        EXPECT_EQ(ierr, 0) << message();
        return kph == 1 ? rhol : rhov;
    };
    const auto expectValues = [&](const char* what, double temperature, double rho, double h, double s) {
        const MixtureValues v = mixtureValues(temperature, rho, x);
        EXPECT_NEAR(v.h, h, 1e-5) << what;
        EXPECT_NEAR(v.s, s, 1e-7) << what;
    };
    for (const char* tag : {"IIR", "DEF", "def"}) {
        ASSERT_EQ(reference("ASH", 2, x), 0) << message();
        ASSERT_EQ(reference(tag, 2, x), 0) << message();
        expectValues(tag, 273.15, saturated(273.15, 1), 200.0 * M, M);
    }
    ASSERT_EQ(reference("ASH", 2, x), 0) << message();
    expectValues("ASH", 233.15, saturated(233.15, 1), 0.0, 0.0);
    ASSERT_EQ(reference("NBP", 2, x), 0) << message();
    SATP(101.325, x, 1, t, rhol, rhov, xl, xv, ierr, herr);
    expectValues("NBP", t, rhol, 0.0, 0.0);
    ASSERT_EQ(reference("OTH", 2, x, 700.0, 7.0, 260.0, -1.0), 0) << message();
    expectValues("boiling", 260.0, saturated(260.0, 1), 700.0, 7.0);
    ASSERT_EQ(reference("OTH", 2, x, 700.0, 7.0, 260.0, -2.0), 0) << message();
    expectValues("dew", 260.0, saturated(260.0, 2), 700.0, 7.0);
    ASSERT_EQ(reference("OTH", 2, x, 1000.0, 10.0, 300.0, 100.0), 0) << message();
    double e, h, s, cv, cp, w, q, rho = 0.0;
    t = 300.0;
    TPFLSH(t, 100.0, x, rho, rhol, rhov, xl, xv, q, e, h, s, cv, cp, w, ierr, herr);
    expectValues("OTH", 300.0, rho, 1000.0, 10.0);
    // the same point with other values moves the offsets
    ASSERT_EQ(reference("OTH", 2, x, 1500.0, 10.0, 300.0, 100.0), 0) << message();
    expectValues("OTH", 300.0, rho, 1500.0, 10.0);
    // and the same point of another composition moves them again
    x[1] = 0.4;
    x[2] = 0.6;
    ASSERT_EQ(reference("OTH", 2, x, 1500.0, 10.0, 300.0, 100.0), 0) << message();
    TPFLSH(t, 100.0, x, rho, rhol, rhov, xl, xv, q, e, h, s, cv, cp, w, ierr, herr);
    expectValues("OTH of another composition", 300.0, rho, 1500.0, 10.0);
    ASSERT_EQ(reference("OT0", 2, x, 2000.0, 20.0, 310.0, 101.325), 0) << message();
    RMIX(x);
    const MixtureValues ideal = mixtureValues(310.0, 101.325 / (fluidConstants.R * 310.0), x, true);
    EXPECT_NEAR(ideal.h, 2000.0, 1e-5);
    EXPECT_NEAR(ideal.s, 20.0, 1e-7);
}

// The offsets of a point that a mixture does not have are not those of a finished reference state.
TEST_F(Reference, APointThatAMixtureDoesNotHaveIsRefused) {
    setUpPair("R32.FLD", "R125.FLD", "IIR");
    Composition x{};
    x[1] = x[2] = 0.5;
    EXPECT_EQ(reference("OTH", 2, x, 0.0, 0.0, 100.0, 100.0), 27);
    EXPECT_EQ(message().find("[SETREF error 27] specified reference state for mixture is outside equation limits: "),
              0U)
        << message();
    EXPECT_FALSE(referenceState.LREFDONE);
    EXPECT_GT(reference("OTH", 2, x, 0.0, 0.0, 400.0, -1.0), 0) << "no saturation above the critical temperature";
    EXPECT_FALSE(referenceState.LREFDONE);
    EXPECT_EQ(reference("IIR", 2, x), 0) << message();
    EXPECT_TRUE(referenceState.LREFDONE);
}

// Where a mixture boils below the range of its equations, the point is at the mean of those of its components.
TEST_F(Reference, AMixtureThatBoilsBelowItsRangeTakesTheMeanTemperature) {
    setUpPair("ETHYLENE.FLD", "CYCLOHEX.FLD", "NBP");
    Composition x{};
    x[1] = 0.4;
    x[2] = 0.6;
    ASSERT_LE(reference("NBP", 2, x), 0) << message();
    const double t = 0.4 * referenceState.TREF[1] + 0.6 * referenceState.TREF[2];
    double p = 0.0, rhol = 0.0, rhov = 0.0, tmin, tmax, Dmax, pmax;
    Composition xl, xv;
    LIMITS("EOS", x, tmin, tmax, Dmax, pmax);
    SATP(101.325, x, 1, p, rhol, rhov, xl, xv, ierr, herr);
    EXPECT_LT(p, tmin) << "else it had its own point";
    SATT(t, x, 1, p, rhol, rhov, xl, xv, ierr, herr);
    ASSERT_EQ(ierr, 0) << message();
    const MixtureValues v = mixtureValues(t, rhol, x);
    EXPECT_NEAR(v.h, 0.0, 1e-5);
    EXPECT_NEAR(v.s, 0.0, 1e-7);
}

// A file may give a point of its own for a fluid that the named one does not reach.
TEST_F(Reference, AFluidThatDoesNotReachTheNamedPointTakesTheOneOfItsFile) {
    const std::string file = edited("NITROGEN.FLD", "NBP   ", "OTH\n300.0 100.0 1000.0 10.0");
    ASSERT_EQ(setUp({file}, "NA"), 0) << message();
    EXPECT_EQ(reference("IIR", 1, unitComposition(1)), 23);
    EXPECT_EQ(referenceState.HREFI[1], "OTH");
    expectAt(1, 300.0, referenceState.RHOREF[1], 1000.0, 10.0, "the point of the file");
}

TEST_F(Reference, ASelectedComponentDoesNotStandForTheOthers) {
    setUpPair("R32.FLD", "R125.FLD", "IIR");
    const SlotArray<double> h = referenceState.HREF;
    PUREFLD(2);
    reference("ASH", 1, unitComposition(1));
    reference("IIR", 1, unitComposition(1));
    EXPECT_NEAR(referenceState.HREF[1], h[1], enthalpyTolerance);
    EXPECT_NEAR(referenceState.HREF[2], h[2], enthalpyTolerance);
    EXPECT_EQ(modelTags.IPUREFLD, 2);
}

TEST_F(Reference, ASetUpForgetsTheSaturationStatesOfTheLastFluid) {
    ASSERT_EQ(setUp({"R134A.FLD"}, "DEF"), 0) << message();
    const double before = liquidAt(1, 273.15);
    ASSERT_EQ(setUp({"R32.FLD"}, "DEF"), 0) << message();
    const double other = liquidAt(1, 273.15);
    EXPECT_GT(other, 1.2 * before);
    ASSERT_EQ(setUp({"R134A.FLD"}, "DEF"), 0) << message();
    EXPECT_NEAR(liquidAt(1, 273.15), before, 1e-9 * before);
}

TEST_F(Reference, EveryFluidOfTheDataIsReadyAfterItsSetUp) {
    int fluids = 0;
    for (const auto& entry : std::filesystem::directory_iterator(std::string(test::dataFolder) + "/fluids")) {
        if (entry.path().extension() != ".FLD") continue;
        const std::string name = entry.path().filename().string();
        ASSERT_EQ(setUp({name}, "DEF"), 0) << name << ": " << message();
        double p, e, h, s, cv, cp, w, jt;
        const double t = 0.9 * fluidConstants.TCRIT[1];
        THERM(t, liquidAt(1, t), unitComposition(1), p, e, h, s, cv, cp, w, jt);
        for (const double value : {p, e, h, s, cv, cp, w, jt}) EXPECT_TRUE(std::isfinite(value)) << name;
        EXPECT_GT(cv, fluidConstants.R) << name << ": an ideal gas without heat capacity?";
        EXPECT_LT(p, fluidConstants.PCRIT[1]) << name;
        EXPECT_GT(w, 50.0) << name;
        ++fluids;
    }
    EXPECT_GE(fluids, 36);
}

TEST_F(Reference, AFluidOfTheDataIsReadyAfterItsSetUp) {
    ASSERT_EQ(setUp({"R134A.FLD"}, "DEF"), 0) << message();
    double p, e, h, s, cv, cp, w, jt;
    THERM(300.0, 0.04, unitComposition(1), p, e, h, s, cv, cp, w, jt);
    for (const double value : {p, e, h, s, cv, cp, w, jt}) EXPECT_TRUE(std::isfinite(value));
    EXPECT_GT(p, 90.0);
    EXPECT_LT(p, 100.0);
    EXPECT_EQ(fluidFiles.HNAME[1], "R134a");
    EXPECT_EQ(fluidFiles.HCAS[1], "811-97-2");
    EXPECT_EQ(fluidFiles.HIEOS[1].slice(1, 3), "FEQ");
}

}  // namespace
}  // namespace frigana::test
