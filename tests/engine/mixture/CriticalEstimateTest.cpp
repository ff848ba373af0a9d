// The critical point of CRTHMX by its three ways: pure fluid, traced envelope, critical lines of the pairs.
#include "MixtureSetUp.h"
#include "SaturationSpline.h"
#include "TPRHO.h"

namespace frigana::test {
namespace {

struct Point {
    double T, p, D;
};

class CriticalEstimate : public MixtureSetUp {
  protected:
    void TearDown() override {
        saturationSpline.SPLINEREADY = false;
        MixtureSetUp::TearDown();
    }
    Point estimate(const Composition& x) {
        Point point{};
        CRTHMX(x, point.T, point.p, point.D, ierr, herr);
        return point;
    }
    static double pressure(double T, double D, const Composition& x) {
        double p = 0.0;
        PRESS(T, D, x, p);
        return p;
    }
    void traced(const Composition& x, int code) {
        saturationSpline.SPLINEREADY = true;
        saturationSpline.XSPLN = x;
        saturationSpline.criticalPoint.T = 345.6;
        saturationSpline.criticalPoint.p = 5000.5;
        saturationSpline.criticalPoint.D = 7.25;
        saturationSpline.criticalPoint.ierr = code;
    }
};

// A pair's line written out, power by power.
double line(const double (&c)[11], double u, double w, double first, double second) {
    double value = u * first + w * second + u * w * c[0];
    for (int k = 0; k < 5; ++k) value += u * u * w * c[1 + k] * std::pow(u, k) + u * w * w * c[6 + k] * std::pow(w, k);
    return value;
}

TEST_F(CriticalEstimate, OfAPureFluidIsItsConstants) {
    ASSERT_EQ(setUp({"R32", "R125"}), 0);
    for (const int i : {1, 2}) {
        const Point point = estimate(unitComposition(i));
        EXPECT_EQ(ierr, 0);
        EXPECT_EQ(point.T, fluidConstants.TCRIT[i]);
        EXPECT_EQ(point.p, fluidConstants.PCRIT[i]);
        EXPECT_EQ(point.D, fluidConstants.DCRIT[i]);
    }
}

TEST_F(CriticalEstimate, OfATracedMixtureIsThatOfItsEnvelope) {
    ASSERT_EQ(setUp({"R32", "R125"}), 0);
    const Composition x = fractions({0.4, 0.6});
    const Point formula = estimate(x);
    traced(x, 0);
    for (const double off : {0.0, 0.9e-6, 1.1e-6}) {
        const Point point = estimate(fractions({0.4 + off, 0.6 - off}));
        EXPECT_EQ(ierr, 0);
        if (off > 1e-6) {
            EXPECT_NEAR(point.T, formula.T, 1e-3);
            continue;
        }
        EXPECT_EQ(point.T, 345.6);
        EXPECT_EQ(point.p, 5000.5);
        EXPECT_EQ(point.D, 7.25);
    }
}

TEST_F(CriticalEstimate, OfAnEnvelopeWithoutACriticalPointIsTheFormulaWithAWarning) {
    ASSERT_EQ(setUp({"R32", "R125"}), 0);
    const Composition x = fractions({0.4, 0.6});
    const Point formula = estimate(x);
    ASSERT_EQ(ierr, 0);
    traced(x, 1);
    const Point point = estimate(x);
    EXPECT_EQ(ierr, -132);
    EXPECT_EQ(message(),
              "[CRTHMX error -132] Failed to find critical point from splines, values given here used TC1 and VC1 "
              "coefficients");
    EXPECT_EQ(point.T, formula.T);
    EXPECT_EQ(point.p, formula.p);
    EXPECT_EQ(point.D, formula.D);
}

// Three components whose pairs stand in the file in both orders.
TEST_F(CriticalEstimate, FollowsTheLinesOfAllPairs) {
    const std::string rest = endOfRecord, mixing = "1.0 1.0 1.0 1.0 0.0 0.0";
    const std::string records =
        dataLine("75-10-5/354-33-6", "KW0", mixing) + dataLine("", "TC1", "-7.5 12.0 -30.0 25.0 8.0 -3.0") +
        dataLine("", "VC1", "0.01 -0.02 0.03 -0.015 0.008 0.004") + rest + dataLine("811-97-2/75-10-5", "KW0", mixing) +
        dataLine("", "TC1", "4.5 -6.0 11.0 -2.0 3.0 5.0") +
        dataLine("", "VC1", "-0.006 0.01 0.002 -0.004 0.007 -0.001") + rest +
        dataLine("354-33-6/811-97-2", "KW0", mixing) + dataLine("", "TC1", "2.0 0.0 0.0 0.0 0.0 0.0") +
        dataLine("", "VC1", "0.001 0.0 0.0 0.0 0.0 0.0") + rest;
    ASSERT_EQ(setUp({"R32", "R125", "R134A"}, write("LINES.BNC", mixtureFileText(records))), 0) << message();
    struct Pair {
        int i, j;
        double T[11], V[11];
    };
    // the second record is told from R134a, the second of its pair
    const Pair pairs[] = {
        {1, 2, {-7.5, 12.0, -30.0, 25.0, 8.0, -3.0}, {0.01, -0.02, 0.03, -0.015, 0.008, 0.004}},
        {1,
         3,
         {4.5, 0.0, 0.0, 0.0, 0.0, 0.0, -6.0, 11.0, -2.0, 3.0, 5.0},
         {-0.006, 0.0, 0.0, 0.0, 0.0, 0.0, 0.01, 0.002, -0.004, 0.007, -0.001}},
        {2, 3, {2.0}, {0.001}},
    };
    const FluidConstants& c = fluidConstants;
    for (const Composition& x : {fractions({0.2, 0.3, 0.5}), fractions({0.7, 0.1, 0.2}), fractions({0.4, 0.0, 0.6})}) {
        double A = 0.0, T = 0.0, V = 0.0;
        for (const Pair& pair : pairs) {
            const double xi = x[pair.i], xj = x[pair.j], u = (xi + 1.0 - xj) / 2.0, w = (xj + 1.0 - xi) / 2.0;
            A += xi * xj;
            T += xi * xj * line(pair.T, u, w, c.TCRIT[pair.i], c.TCRIT[pair.j]);
            V += xi * xj * line(pair.V, u, w, 1.0 / c.DCRIT[pair.i], 1.0 / c.DCRIT[pair.j]);
        }
        const Point point = estimate(x);
        EXPECT_EQ(ierr, 0) << message();
        EXPECT_NEAR(point.T, T / A, 1e-12 * point.T);
        EXPECT_NEAR(point.D, A / V, 1e-12 * point.D);
        EXPECT_EQ(point.p, pressure(point.T, point.D, x));
    }
}

TEST_F(CriticalEstimate, ANegativePressureIsThatOfTheFirstComponent) {
    const std::string records = dataLine("75-10-5/354-33-6", "KW0", "1 1 1 1 0 0") +
                                dataLine("", "TC1", "-500.0 0 0 0 0 0") + dataLine("", "VC1", "0.001 0 0 0 0 0") +
                                endOfRecord;
    ASSERT_EQ(setUp({"R32", "R125"}, write("LINES.BNC", mixtureFileText(records))), 0) << message();
    const Composition x = fractions({0.5, 0.5});
    const Point point = estimate(x);
    EXPECT_LT(pressure(point.T, point.D, x), 0.0);
    EXPECT_EQ(point.p, fluidConstants.PCRIT[1]);
}

const std::string noLine =
    "[CRTHMX error -131] coefficients not available for critical line calculation, mixture may not be type 1";

TEST_F(CriticalEstimate, ALineWithoutALinearTermIsTold) {
    for (const std::string linear : {"0.0", "1e-13", "-1e-13"}) {
        const std::string records = dataLine("75-10-5/354-33-6", "KW0", "1 1 1 1 0 0") +
                                    dataLine("", "TC1", linear + " 0 0 0 0 0") +
                                    dataLine("", "VC1", "0.001 0 0 0 0 0") + endOfRecord;
        ASSERT_EQ(setUp({"R32", "R125"}, write("LINES.BNC", mixtureFileText(records))), 0) << message();
        const Point point = estimate(fractions({0.5, 0.5}));
        EXPECT_EQ(ierr, -131);
        EXPECT_EQ(message(), noLine);
        EXPECT_NEAR(point.T, (fluidConstants.TCRIT[1] + fluidConstants.TCRIT[2]) / 2.0, 1e-10) << "and it goes on";
    }
}

TEST_F(CriticalEstimate, APairWithoutALineLeavesTheReducingValues) {
    const std::string mixing = "1.01 0.99 1.0 1.0 0.0 0.0";
    const auto lines = [](const std::string& tag) { return dataLine("", tag, "-5.0 0 0 0 0 0"); };
    const std::string whole = dataLine("", "VC1", "0.001 0 0 0 0 0") + lines("TC1");
    const std::string straight = dataLine("", "VC1", "0 0 0 0 0 0") + dataLine("", "TC1", "0 0 0 0 0 0");
    struct Row {
        const char* what;
        std::string first, second, third;  // lines of the pairs 1-2, 1-3, 2-3
        bool formula;
        int code;
    };
    const Row rows[] = {
        {"all", whole, whole, whole, true, 0},
        {"no temperature of the first", dataLine("", "VC1", "0 0 0 0 0 0"), whole, whole, false, 0},
        {"no volume of the second", whole, lines("TC1"), whole, false, 0},
        {"nothing of the third", whole, whole, "", false, 0},
        {"lines of another form", whole, whole, dataLine("", "VC2", "1 1 1 1 1 1") + lines("TC2"), false, 0},
        {"a straight line before the end of the formula", straight, "", whole, false, -131},
        {"a straight line behind the end of the formula", "", straight, whole, false, 0},
    };
    const Composition x = fractions({0.3, 0.3, 0.4});
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const std::string records = dataLine("75-10-5/354-33-6", "KW0", mixing) + row.first + endOfRecord +
                                    dataLine("75-10-5/811-97-2", "KW0", mixing) + row.second + endOfRecord +
                                    dataLine("354-33-6/811-97-2", "KW0", mixing) + row.third + endOfRecord;
        ASSERT_EQ(setUp({"R32", "R125", "R134A"}, write("LINES.BNC", mixtureFileText(records))), 0) << message();
        double Tr = 0.0, Dr = 0.0;
        REDHMX(x, Tr, Dr);
        const Point point = estimate(x);
        EXPECT_EQ(ierr, row.code) << message();
        EXPECT_EQ(point.T == Tr && point.D == Dr, !row.formula);
        EXPECT_EQ(point.p, pressure(point.T, point.D, x));
        // a component of no fraction asks for no line
        const Point pair = estimate(fractions({0.5, 0.5, 0.0}));
        REDHMX(fractions({0.5, 0.5, 0.0}), Tr, Dr);
        EXPECT_EQ(pair.T == Tr, row.first != whole && row.first != straight);
    }
}

TEST_F(CriticalEstimate, OfNoCompositionIsRefused) {
    ASSERT_EQ(setUp({"R32", "R125"}), 0);
    const Point point = estimate(Composition{});
    EXPECT_EQ(ierr, 1);
    EXPECT_EQ(message(), "[CRTHMX error] sum(x)= 0") << "messages have a blank between = and 0";
    EXPECT_EQ(point.T, 300.0);
    EXPECT_EQ(point.p, 10.0);
    EXPECT_EQ(point.D, 10.0);
}

}  // namespace
}  // namespace frigana::test
