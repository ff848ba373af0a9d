// Readers of the transport sections: what they refuse, and what a section that cannot be read leaves.
#include "FluidWith.h"

namespace frigana::test {
namespace {

using Reader = void (*)(int, int, const Text12&, int&, Text255&);

TEST(TransportReader, withoutAUnitEachSaysSo) {
    struct Row {
        Reader reader;
        const char* name;
    };
    const Row rows[] = {{SETCI1, "SETCI1"}, {SETCI2, "SETCI2"}, {SETVS0, "SETVS0"}, {SETVS1, "SETVS1"},
                        {SETVS2, "SETVS2"}, {SETVS3, "SETVS3"}, {SETVS4, "SETVS4"}, {SETVS5, "SETVS5"},
                        {SETVS6, "SETVS6"}, {SETTC1, "SETTC1"}, {SETTC2, "SETTC2"}, {SETTC3, "SETTC3"},
                        {SETTC5, "SETTC5"}, {SETTC6, "SETTC6"}, {SETST1, "SETST1"}};
    for (const Row& row : rows) {
        int ierr = 0;
        Text255 herr;
        row.reader(0, 7, "75-10-5", ierr, herr);
        EXPECT_EQ(ierr, 101);
        EXPECT_EQ(words(herr),
                  std::string("[") + row.name + " error 101] illegal file specified; nread =    0; CAS no. = 75-10-5");
    }
    int ierr = 0;
    Text255 herr, href;
    Text3 heos, hvs, htc;
    SETTRN(-3, 7, "75-10-5", href, heos, hvs, htc, ierr, herr);
    EXPECT_EQ(ierr, 101);
    EXPECT_EQ(words(herr), "[SETTRN error 101] illegal file specified; nread =   -3; CAS no. = 75-10-5");
    SETTK4(0, 7, "75-10-5", ierr, herr);
    EXPECT_EQ(ierr, 101);
    EXPECT_EQ(words(herr), "[SETTK4 error 101] illegal file specified for icomp =  7; nread =    0; CAS no. = 75-10-5");
    for (const auto& [reader, number] :
         {std::pair<Reader, const char*>{SETTK1, "#1"}, {SETTK3, "#3"}, {SETTK6, "#3"}}) {
        reader(0, 7, "75-10-5", ierr, herr);
        EXPECT_EQ(ierr, 39);
        EXPECT_EQ(words(herr), std::string("[SETUP error 39] block data option for t.c. crit model ") + number +
                                   " specified for CAS # 75-10-5      but not implemented in code.");
    }
}

class MalformedSection : public FluidWithSections {};

TEST_F(MalformedSection, isToldWithItsLine) {
    struct Row {
        const char *key, *tag;
        std::string body;
        const char* text;
    };
    const std::string dilute = "  1 0 0 0 0 0\nNUL\n  0.5\n  300.0\n  1.0 1.0\n  0.2 0.5\n";
    const Row rows[] = {
        {"ETA", "VS1", "  50.0\n  hot\n", "expected upper temperature limit, found 'hot'"},
        {"ETA", "VS1", wideLimits + "  1 0 0 0 0 0\nNUL\n  wide\n", "expected sigma, found 'wide'"},
        {"ETA", "VS1", wideLimits + "  500 0 0 0 0 0\n",
         "expected number of terms of the dilute gas from 0 to 80, found 500"},
        {"ETA", "VS1", wideLimits + "  -1 0 0 0 0 0\n", "found -1"},
        {"ETA", "VS1", wideLimits + dilute + "  2 1.0 1.0\n  1.0 0.0\n  1.0 x\n",
         "expected row of coefficients, found 'x'"},
        {"ETA", "VS1", wideLimits + dilute + "  0 1.0 1.0\n  0 70 9 9 0 0\n", "from 0 to 80, found 88"},
        {"ETA", "VS0", wideLimits + "XYZ\n  0 0 5 0 0 0\nNUL\n", "seven numbers of terms"},
        {"ETA", "VS4", wideLimits + dilute + "  0 1.0 1.0\n  1 2 3 4\n  1 2 3 !\n", "row of the friction theory"},
        {"ETA", "VS5", wideLimits + dilute + "  0 1.0 1.0\n  0.2 0.0 0.0 11\n",
         "expected number of rows from 0 to 10, found 11"},
        {"TCX", "TC1", wideLimits + "  1 0\n  300.0 1.0\n  1.0\nend\n", "row of coefficients"},
        {"TCX", "TC0", wideLimits + "R23\n  0 0 50 0\n", "from 0 to 40, found 50"},
        {"TCX", "TC5", wideLimits + "  0.5\n  300.0\n  0.1 0.2 q\n", "found 'q'"},
        {"STN", "ST1", "  100.0\n  400.0\n  0\n  0\n  99\n", "expected number of terms from 0 to 10, found 99"},
    };
    for (const Row& row : rows) {
        // this reader's status stands as it is, those of the others become the code of a section
        const int code = std::string_view(row.tag) == "TC5" ? 1 : 104;
        EXPECT_EQ(setUpWith("R134A", section(row.key, row.tag) + row.body), code) << row.body;
        EXPECT_NE(message().find(row.text), std::string::npos) << row.tag << ": " << message();
        EXPECT_NE(message().find("FLUID.FLD, line "), std::string::npos) << message();
    }
}

TEST_F(MalformedSection, theUnimplementedConductivityIsAnError) {
    EXPECT_EQ(setUpWith("R134A", section("TCX", "TC6") + wideLimits), 104);
    EXPECT_NE(message().find("TC6"), std::string::npos) << message();
}

TEST(TransportReader, allFluidFilesNameTheirModels) {
    for (const char* fluid : pureFluids) {
        ASSERT_EQ(setUp(fluid), 0) << fluid;
        EXPECT_FALSE(modelTags.HETA[1] == "NUL") << fluid;
        EXPECT_FALSE(modelTags.HTCX[1] == "NUL") << fluid;
        EXPECT_TRUE(modelTags.HSTENK[1] == "ST1") << fluid;
        EXPECT_GT(ecsTransport[1].SIGTRN, 0.2) << fluid;
        EXPECT_TRUE(modelTags.HTCXCRECS[1] == "TK6") << fluid;
        // the reference fluid of the file stands in slot 0
        EXPECT_GT(fluidConstants.WMAS[0], 20.0) << fluid;
    }
}

}  // namespace
}  // namespace frigana::test
