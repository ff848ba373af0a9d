// Every number of a transport section stands where its model takes it from, and the limits of the tables are those of
// the rows they hold.
#include <algorithm>
#include <array>

#include "FluidWith.h"

namespace frigana::test {
namespace {

class SectionValues : public FluidWithSections {
  protected:
    // Numbers from `first` on, `columns` in each of `rows` lines.
    static std::string counted(int first, int rows, int columns, const std::string& last = "") {
        std::string text;
        for (int k = 0; k < rows; ++k) {
            for (int j = 0; j < columns; ++j) text += " " + std::to_string(first++) + ".5";
            text += last + "\n";
        }
        return text;
    }
    static const std::string limits, viscosity;
};
const std::string SectionValues::limits = "  51.0\n  2001.0\n  100001.0\n  101.0\n";
const std::string SectionValues::viscosity =
    section("ETA", "VS1") + "  52.0\n  2002.0\n  100002.0\n  102.0\n" +
    "  1 0 0 0 0 0\nNUL\n  0.5\n  300.0\n  1.0 1.0\n  0.2 0.5\n  0 1.0 1.0\n  0 0 0 0 0 0\n  1.0 1.0 1.0\nNUL\n";

TEST_F(SectionValues, theModelOfMethaneHasItsEnhancementBehindIt) {
    const std::string head =
        viscosity + section("TCX", "TC2") + limits + "CI1\n  1.5\n  2.5\n  3.5\n  4.5 5.5\n" + counted(6, 1, 8);
    ASSERT_EQ(setUpWith("R134A", head + "TK2\n  14.5 15.5 16.5 17.5\n  18.5\n  19.5\n  20.5 21.5 22.5 23.5\n" +
                                     counted(24, 1, 7)),
              0)
        << message();
    const auto row = [](int k) { return conductivityTerms[1].CTCX[k - 1].c; };
    for (int k = 1; k <= 30; ++k) EXPECT_EQ(row(k), k + 0.5) << k;
    EXPECT_EQ(modelTags.HMDTCX[1], "CI1");
    EXPECT_EQ(modelTags.HTCXCR[1], "TK2");
    const FluidConstants& c = fluidConstants;
    EXPECT_EQ(c.TMTCX[1], 51.0);
    EXPECT_EQ(c.TXTCX[1], 2001.0);
    EXPECT_EQ(c.PXTCX[1], 100001.0);
    EXPECT_EQ(c.DXTCX[1], 101.0);
    EXPECT_EQ(c.TMETA[1], 52.0);
    EXPECT_EQ(c.TXETA[1], 2002.0);
    EXPECT_EQ(c.PXETA[1], 100002.0);
    EXPECT_EQ(c.DXETA[1], 102.0);

    // the last row is missing, and nothing is kept
    EXPECT_EQ(setUpWith("R134A", head + "TK2\n  14.5 15.5 16.5 17.5\n  18.5\n  19.5\n  20.5 21.5 22.5 23.5\nq\n"), 104);
    EXPECT_NE(message().find("expected coefficients, found 'q'"), std::string::npos) << message();
    EXPECT_EQ(row(1), 0.0);
    EXPECT_EQ(modelTags.HTCXCR[1], "NUL");

    ASSERT_EQ(setUpWith("R134A", head + "NUL\n"), 0) << message();
    for (int k = 1; k <= 13; ++k) EXPECT_EQ(row(k), k + 0.5) << k;
    for (int k = 14; k <= 30; ++k) EXPECT_EQ(row(k), 0.0) << k;
}

TEST_F(SectionValues, theSecondModelOfMethaneTakesAllItsRows) {
    ASSERT_EQ(setUpWith("R134A", viscosity + section("TCX", "TC3") + limits + "  1.5\n  2.5\n  3.5 0.25\n" +
                                     counted(4, 1, 9) + counted(13, 1, 12) + counted(25, 1, 2) + "NUL\n"),
              0)
        << message();
    for (int k = 1; k <= 26; ++k) EXPECT_EQ(conductivityTerms[1].CTCX[k - 1].c, k + 0.5) << k;
    EXPECT_EQ(conductivityTerms[1].CTCX[2].t, 0.25);
    EXPECT_EQ(conductivityTerms[1].CTCX[26].c, 0.0);
}

TEST_F(SectionValues, aGeneralConductivityTakesAllItsRows) {
    ASSERT_EQ(setUpWith("R134A", viscosity + section("TCX", "TC1") + limits + "  2 1\n  11.5 12.5\n" +
                                     counted(20, 3, 2) + "  2 1\n  13.5 14.5 15.5\n" + counted(30, 3, 4) + "NUL\n"),
              0)
        << message();
    const ConductivitySlot& s = conductivityTerms[1];
    EXPECT_EQ(s.NDGNUM, 2);
    EXPECT_EQ(s.NDGDEN, 1);
    EXPECT_EQ(s.NBKNUM, 2);
    EXPECT_EQ(s.NBKDEN, 1);
    EXPECT_EQ(s.TRDDGT, 11.5);
    EXPECT_EQ(s.TCXDGT, 12.5);
    EXPECT_EQ(s.TRDBKT, 13.5);
    EXPECT_EQ(s.DRDBKT, 14.5);
    EXPECT_EQ(s.TCXBKT, 15.5);
    for (int k = 0; k < 3; ++k) {
        EXPECT_EQ(s.CTCX[k].c, 20.5 + 2 * k);
        EXPECT_EQ(s.CTCX[k].t, 21.5 + 2 * k);
        EXPECT_EQ(s.CTCX[3 + k].c, 30.5 + 4 * k);
        EXPECT_EQ(s.CTCX[3 + k].t, 31.5 + 4 * k);
        EXPECT_EQ(s.CTCX[3 + k].d, 32.5 + 4 * k);
        EXPECT_EQ(s.CTCX[3 + k].e, 33.5 + 4 * k);
    }
}

// The rows of the enhancement stand in a section of their own.
TEST_F(SectionValues, theEnhancementsTakeAllTheirRows) {
    const auto conductivity = [&](const char* enhancement) {
        return viscosity + section("TCX", "TC1") + limits + "  0 0\n  1.0 1.0\n  0 0\n  1.0 1.0 1.0\n" + enhancement +
               "\n";
    };
    const std::string own = "  41.0\n  42.0\n  43.0\n  44.0\n";
    struct Row {
        const char* tag;
        std::string body;
        int rows;
    };
    const Row models[] = {
        {"TK1",
         own + "  2 1 2 0\n  11.5 12.5 13.5\n" + counted(20, 3, 5, " 7") + "  14.5 15.5\n" + counted(35, 2, 5, " 8"),
         5},
        {"TK3", own + "  2 1 0 0\n  11.5 12.5 13.5\n" + counted(20, 3, 5, " 7"), 3},
        {"TK4", own + "  2 1 0 0\n  11.5 16.5 12.5 13.5\n" + counted(20, 3, 5, " 7"), 3},
    };
    for (const Row& model : models) {
        ASSERT_EQ(setUpWith("R134A", conductivity(model.tag) + section("AUX", model.tag) + model.body), 0) << message();
        const EnhancementSection& s = conductivityTerms[1].enhancement;
        EXPECT_EQ(s.TMTCK, 41.0) << model.tag;
        EXPECT_EQ(s.TXTCK, 42.0);
        EXPECT_EQ(s.PXTCK, 43.0);
        EXPECT_EQ(s.DXTCK, 44.0);
        EXPECT_EQ(s.NNUMTCK, 2);
        EXPECT_EQ(s.NDENTCK, 1);
        EXPECT_EQ(s.TRTCK, 11.5);
        EXPECT_EQ(s.DRTCK, 12.5);
        EXPECT_EQ(s.TCXRED, 13.5);
        const std::string_view tag = model.tag;
        EXPECT_EQ(s.PRTCK, tag == "TK4" ? 16.5 : 0.0);
        EXPECT_EQ(s.TREDEX, tag == "TK1" ? 14.5 : 0.0);
        EXPECT_EQ(s.DREDEX, tag == "TK1" ? 15.5 : 0.0);
        for (int k = 0; k < 6; ++k) {
            const EnhancementTerm& row = s.CTCK[k];
            const bool read = k < model.rows;
            EXPECT_EQ(row.c, read ? 20.5 + 5 * k : 0.0) << model.tag << k;
            EXPECT_EQ(row.a, read ? 21.5 + 5 * k : 0.0);
            EXPECT_EQ(row.b, read ? 22.5 + 5 * k : 0.0);
            EXPECT_EQ(row.e, read ? 23.5 + 5 * k : 0.0);
            EXPECT_EQ(row.f, read ? 24.5 + 5 * k : 0.0);
            EXPECT_EQ(row.i, read ? k < 3 ? 7 : 8 : 0);
        }
        // a row that cannot be read leaves no enhancement
        const std::string cut = model.body.substr(0, model.body.size() - 4) + "x\n";
        EXPECT_NE(setUpWith("R134A", conductivity(model.tag) + section("AUX", model.tag) + cut), 0) << model.tag;
        EXPECT_NE(message().find("row of coefficients"), std::string::npos) << message();
        EXPECT_EQ(conductivityTerms[1].enhancement.TRTCK, 0.0);
    }
}

// Twenty rows fit into an enhancement, forty into a conductivity, eighty into a viscosity; one more does not.
TEST_F(SectionValues, theTablesHoldWhatTheyPromise) {
    const auto thermal = [](int a, int b, int c, int d) {
        return section("TCX", "TC1") + limits + "  " + std::to_string(a) + " " + std::to_string(b) + "\n  1.0 1.0\n" +
               counted(1, std::max(a, 0) + std::max(b, 0), 2) + "  " + std::to_string(c) + " " + std::to_string(d) +
               "\n  1.0 1.0 1.0\n" + counted(1, std::max(c, 0) + std::max(d, 0), 4) + "NUL\n";
    };
    struct Counts {
        int a, b, c, d;
        bool fit;
    };
    for (const Counts& n : {Counts{10, 10, 10, 10, true},
                            {40, 0, 0, 0, true},
                            {0, 0, 0, 40, true},
                            {41, 0, 0, 0, false},
                            {10, 10, 10, 11, false},
                            {10, 31, 0, 0, false},
                            {10, 10, 21, 0, false},
                            {1, -1, 0, 0, false},
                            {0, 0, -1, 0, false},
                            {0, 0, 1, -1, false}}) {
        const int code = setUpWith("R134A", viscosity + thermal(n.a, n.b, n.c, n.d));
        EXPECT_EQ(code, n.fit ? 0 : 104) << n.a << ' ' << n.b << ' ' << n.c << ' ' << n.d << ' ' << message();
        if (!n.fit) {
            EXPECT_NE(message().find("number of terms"), std::string::npos) << message();
        }
    }

    const auto single = [](const std::string& counts, int rows) {
        return section("TCX", "TC0") + limits + "R23\n" + counts + "\n  1.0 1.0 1.0\n" + counted(1, rows, 4, " 0") +
               "NUL\n";
    };
    EXPECT_EQ(setUpWith("R134A", viscosity + single("  10 10 10 10", 40)), 0) << message();
    EXPECT_EQ(conductivityTerms[1].CTCX[39].c, 157.5);
    EXPECT_EQ(setUpWith("R134A", viscosity + single("  10 10 10 11", 41)), 104);
    EXPECT_NE(message().find("from 0 to 40, found 41"), std::string::npos) << message();
    EXPECT_EQ(setUpWith("R134A", viscosity + single("  10 -1 10 1", 20)), 104);
    EXPECT_NE(message().find("from 0 to 40, found -1"), std::string::npos) << message();

    const auto enhancement = [&](int numerator, int denominator, int exponent) {
        return viscosity + section("TCX", "TC1") + limits + "  0 0\n  1.0 1.0\n  0 0\n  1.0 1.0 1.0\nTK1\n" +
               section("AUX", "TK1") + limits + "  " + std::to_string(numerator) + " " + std::to_string(denominator) +
               " " + std::to_string(exponent) + " 0\n  1.0 1.0 1.0\n" +
               counted(1, std::max(numerator, 0) + std::max(denominator, 0), 5, " 0") +
               (exponent > 0 ? "  1.0 1.0\n" + counted(1, exponent, 5, " 0") : "");
    };
    EXPECT_EQ(setUpWith("R134A", enhancement(20, 0, 0)), 0) << message();
    EXPECT_EQ(setUpWith("R134A", enhancement(5, 7, 8)), 0) << message();
    EXPECT_EQ(conductivityTerms[1].enhancement.NEXPTCK, 8);
    for (const auto& [a, b, c] : {std::array{21, 0, 0}, {5, 16, 0}, {5, 7, 9}, {-1, 0, 0}, {1, -1, 0}, {1, 0, -1}}) {
        EXPECT_NE(setUpWith("R134A", enhancement(a, b, c)), 0) << a << b << c;
        EXPECT_NE(message().find("number of terms"), std::string::npos) << message();
        EXPECT_EQ(conductivityTerms[1].enhancement.NNUMTCK, 0);
    }

    const auto friction = [](const std::string& dilute, int thin, const std::string& virial, int second,
                             const std::string& dense, int rows) {
        return section("ETA", "VS1") + limits + dilute + "\nNUL\n  0.5\n  300.0\n  1.0 1.0\n" + counted(1, thin, 2) +
               virial + " 1.0 1.0\n" + counted(1, second, 2) + dense + "\n  1.0 1.0 1.0\n" + counted(1, rows, 4, " 0") +
               "NUL\n";
    };
    EXPECT_EQ(setUpWith("R134A", friction("  20 1 2 3 4 5", 35, "  15", 15, "  -5 5 5 5 5 5", 30)), 0) << message();
    EXPECT_EQ(viscosityTerms[1].B2FIRST, 35);
    EXPECT_EQ(viscosityTerms[1].RESFIRST, 50);
    EXPECT_EQ(viscosityTerms[1].CETA[79].c, 117.5);
    EXPECT_NE(setUpWith("R134A", friction("  20 1 2 3 4 5", 35, "  15", 15, "  -5 5 5 5 5 6", 31)), 0);
    EXPECT_NE(setUpWith("R134A", friction("  20 1 2 3 4 5", 35, "  46", 46, "  0 0 0 0 0 0", 0)), 0);
    EXPECT_NE(setUpWith("R134A", friction("  20 1 2 3 4 51", 81, "  0", 0, "  0 0 0 0 0 0", 0)), 0);
    for (const char* dense : {"  0 -1 1 0 0 0", "  0 1 -1 0 0 0", "  0 1 0 -1 0 0", "  0 1 0 0 -1 0", "  0 1 0 0 0 -1"})
        EXPECT_NE(setUpWith("R134A", friction("  1 0 0 0 0 0", 1, "  0", 0, dense, 0)), 0) << dense;
}

TEST_F(SectionValues, theCollisionIntegralsTakeAllTheirRows) {
    const auto with = [](const char* tag, const std::string& body) {
        return section("ETA", "VS1") + limits + "  1 0 0 0 0 0\n" + tag +
               "\n  0.5\n  300.0\n  1.0 1.0\n  0.2 0.5\n  0 1.0 1.0\n  0 0 0 0 0 0\n  1.0 1.0 1.0\nNUL\n" +
               section("AUX", tag) + limits + body;
    };
    const CollisionSlot& s = collisionTerms[1];
    ASSERT_EQ(setUpWith("R134A", with("CI1", "  3\n  1.5 0\n  2.5 1\n  3.5 2\n")), 0) << message();
    EXPECT_EQ(s.NTOMG, 3);
    for (int k = 0; k < 3; ++k) {
        EXPECT_EQ(s.COMG[k], k + 1.5);
        EXPECT_EQ(s.ICOMG[k], k);
    }
    ASSERT_EQ(setUpWith("R134A", with("CI2", "  4\n" + counted(5, 4, 1))), 0) << message();
    EXPECT_EQ(s.NTOMG2, 4);
    for (int k = 0; k < 4; ++k) EXPECT_EQ(s.COMG2[k], k + 5.5);
    for (const char* tag : {"CI1", "CI2"}) {
        const std::string_view pair = tag;
        const std::string row = pair == "CI1" ? "  1.5 1\n" : "  1.5\n";
        std::string rows;
        for (int k = 0; k < 20; ++k) rows += row;
        EXPECT_EQ(setUpWith("R134A", with(tag, "  20\n" + rows)), 0) << tag << message();
        EXPECT_EQ(pair == "CI1" ? s.NTOMG : s.NTOMG2, 20);
        for (const std::string& body :
             {"  21\n" + rows + row, std::string("  -1\n"), "  2\n" + row + "  x\n", std::string("  y\n")}) {
            EXPECT_NE(setUpWith("R134A", with(tag, body)), 0) << tag << body;
            EXPECT_EQ(pair == "CI1" ? s.NTOMG : s.NTOMG2, 0) << tag << body;
        }
    }
}

TEST_F(SectionValues, theOlderViscositiesTakeAllTheirRows) {
    ASSERT_EQ(setUpWith("R134A", section("ETA", "VS2") + limits + "CI2\n  0.5\n  300.0\n  0.1 0.6\n" +
                                     counted(1, 11, 1) + "  12.5\nNUL\n"),
              0)
        << message();
    const ViscositySlot& s = viscosityTerms[1];
    EXPECT_EQ(modelTags.HMDETA[1], "CI2");
    EXPECT_EQ(s.CDG2, 0.1);
    EXPECT_EQ(s.EDG2, 0.6);
    for (int k = 0; k < 11; ++k) EXPECT_EQ(s.C2[k], k + 1.5);
    EXPECT_EQ(s.DCR2, 12.5);
    ASSERT_EQ(setUpWith("R134A", section("ETA", "VS4") + limits +
                                     "  1 0 0 0 0 0\nNUL\n  0.5\n  300.0\n  1.0 1.0\n  0.2 0.5\n" + "  0 1.0 1.0\n" +
                                     counted(1, 8, 4) + "NUL\n"),
              0)
        << message();
    for (int k = 0; k < 8; ++k)
        for (int j = 0; j < 4; ++j) EXPECT_EQ(viscosityTerms[1].FTM[k][j], 4 * k + j + 1.5);
}

TEST_F(SectionValues, correspondingStatesTakeAllTheirRows) {
    writeFile(folder.path("R134A.FLD"), readFile(std::string(test::dataFolder) + "/fluids/R134A.FLD"));
    const auto text = [](int factor, int first, int second, int chi) {
        return section("TRN", "ECS") +
               "  61.0\n  2061.0\n  61000.0\n  61.5\nFEQ R134A.FLD\nVS1\nTC1\n  1\n  0.45\n  250.5\n  " +
               std::to_string(factor) + "\n" + counted(1, factor, 4) + "  " + std::to_string(first) + " " +
               std::to_string(second) + " 3\n" + counted(101, first + second, 4) + "  " + std::to_string(chi) +
               " 2 4\n" + counted(201, chi + 2, 4) + "TK6\n";
    };
    ASSERT_EQ(setUpWith("R32", text(2, 3, 2, 1)), 0) << message();
    const EcsTransportSlot& s = ecsTransport[1];
    const FluidConstants& c = fluidConstants;
    EXPECT_EQ(c.TMECST[1], 61.0);
    EXPECT_EQ(c.TXECST[1], 2061.0);
    EXPECT_EQ(c.PXECST[1], 61000.0);
    EXPECT_EQ(c.DXECST[1], 61.5);
    EXPECT_EQ(s.ILJFLAG, 1);
    EXPECT_EQ(s.SIGTRN, 0.45);
    EXPECT_EQ(s.EPSKTR, 250.5);
    EXPECT_EQ(s.NEUCK, 2);
    EXPECT_EQ(s.NPSI1, 3);
    EXPECT_EQ(s.NPSI2, 2);
    EXPECT_EQ(s.NPSI3, 3);
    EXPECT_EQ(s.NCHI1, 1);
    EXPECT_EQ(s.NCHI2, 2);
    EXPECT_EQ(s.NCHI3, 4);
    for (int j = 0; j < 4; ++j) {
        for (int k = 0; k < 2; ++k) EXPECT_EQ(s.CEUCK[k][j], 1.5 + 4 * k + j);
        for (int k = 0; k < 5; ++k) EXPECT_EQ(s.CPSI[k][j], 101.5 + 4 * k + j);
        for (int k = 0; k < 3; ++k) EXPECT_EQ(s.CCHI[k][j], 201.5 + 4 * k + j);
    }
    EXPECT_EQ(modelTags.HTCXCRECS[1], "TK6");
    EXPECT_EQ(setUpWith("R32", text(20, 15, 5, 18)), 0) << message();
    EXPECT_EQ(ecsTransport[1].CPSI[19][3], 180.5);
    EXPECT_EQ(ecsTransport[1].CCHI[19][3], 280.5);
    EXPECT_NE(setUpWith("R32", text(21, 1, 0, 1)), 0);
    EXPECT_NE(setUpWith("R32", text(1, 15, 6, 1)), 0);
    EXPECT_NE(setUpWith("R32", text(1, 21, 0, 1)), 0);
    EXPECT_NE(setUpWith("R32", text(1, 1, 0, 19)), 0);
    EXPECT_EQ(ecsTransport[1].SIGTRN, 0.0);
    modelTags.LFORCESETUP = true;
}

TEST_F(SectionValues, theTensionTakesAllItsRows) {
    ASSERT_EQ(
        setUpWith("R134A", section("STN", "ST1") + "  71.0\n  471.0\n  0\n  0\n  3\n  374.21\n" + counted(1, 3, 2)), 0)
        << message();
    const SurfaceTensionSlot& s = surfaceTensionTerms[1];
    EXPECT_EQ(fluidConstants.TMINST[1], 71.0);
    EXPECT_EQ(fluidConstants.TMAXST[1], 471.0);
    EXPECT_EQ(s.NTERMU, 3);
    for (int k = 0; k < 3; ++k) {
        EXPECT_EQ(s.SIGMAK[k], 1.5 + 2 * k);
        EXPECT_EQ(s.SIGEXP[k], 2.5 + 2 * k);
    }
    const auto rows = [](int n) {
        return section("STN", "ST1") + "  71.0\n  471.0\n  0\n  0\n  " + std::to_string(n) + "\n  374.21\n" +
               counted(1, n, 2);
    };
    EXPECT_EQ(setUpWith("R134A", rows(10)), 0) << message();
    EXPECT_NE(setUpWith("R134A", rows(11)), 0);
    EXPECT_EQ(surfaceTensionTerms[1].NTERMU, 0);
}

}  // namespace
}  // namespace frigana::test
