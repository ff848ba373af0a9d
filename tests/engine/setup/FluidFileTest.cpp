#include "CORE_CPP.h"
#include "CORE_FEQ.h"
#include "DISPATCH.h"
#include "FluidText.h"
#include "TextFile.h"
#include "TreeFolders.h"

namespace frigana::test {
namespace {

class FluidFile : public EngineTest {
  protected:
    // Sets up a file with the given text between header and end.
    int read(const std::string& sections, const Header& header = {}) {
        return setUp({write("ONE.FLD", headerText(header) + "\n" + sections + endOfFile)});
    }
    void TearDown() override {
        EXPECT_FALSE(unitIsOpen(12)) << "a reader left its file open";
        EngineTest::TearDown();
    }
};

const std::string bwrSection =
    "#EOS\nBWR  modified equation of a test fluid\n!\n"
    "  136.34\n  435.0\n  70000.0\n  27.4734\nCPP\n  99.0\n  136.34\n  0.0480\n  27.4734\n  221.5\n  0.2769\n"
    "  351.255  5782.0  8.15\n  351.255  8.15\n  6.0\n  0.08314471\n  32 1\n"
    "  0.1 0.1 0.1\n  0.1 0.1 0.1\n  0.1 0.1 0.1\n  0.1 0.1 0.1\n  0.1 0.1 0.1\n"
    "  0.1 0.1 0.1\n  0.1 0.1 0.1\n  0.1 0.1 0.1\n  0.1 0.1 0.1\n  0.1 0.1 0.1\n  0.1 0.1\n";

TEST_F(FluidFile, HeaderItemsReachTheirPlaces) {
    Header header;
    header.name = "R32           !short name";
    header.cas = "75-10-5         !CAS number";
    header.freeLines =
        "3252          !UN number\nhydrofluorocarbon !family\nskipped line\n-5.5D+02 !heat of combustion\n12 !other\n";
    ASSERT_EQ(read(helmholtzSection("#", "FEQ", "52.024") + plainHeatCapacity, header), 0) << message();
    EXPECT_EQ(fluidFiles.HNAME[1], "R32") << "without the comment";
    EXPECT_EQ(fluidFiles.HNAM60[1], "R32");
    EXPECT_EQ(fluidFiles.HCAS[1], "75-10-5");
    EXPECT_EQ(fluidFiles.HNAM80[1], "full name of a test fluid");
    EXPECT_EQ(fluidFiles.HSYN1[1], "CH2F2");
    EXPECT_EQ(fluidFiles.HSYN2[1], "synonym");
    EXPECT_EQ(fluidConstants.DIPOLE[1], 1.978);
    EXPECT_EQ(fluidConstants.VERFL[1], 10.0);
    EXPECT_EQ(referenceState.HREFDF[1], "NA");
    EXPECT_EQ(fluidFiles.UNNUMB[1], "3252");
    EXPECT_EQ(fluidFiles.FAMILY[1], "hydrofluorocarbon");
    EXPECT_EQ(fluidConstants.HCMBST[1], -550.0);
}

TEST_F(FluidFile, WhatAHeaderDoesNotTellIsUnknown) {
    Header header;
    header.freeLines = "3252 !UN number\nhydrofluorocarbon !family\n-550.0 !heat\n";
    ASSERT_EQ(read(helmholtzSection("#", "FEQ", "52.024") + plainHeatCapacity, header), 0);
    mixtureFile = "OTHER";
    ASSERT_EQ(read(helmholtzSection("#", "FEQ", "52.024") + plainHeatCapacity), 0);
    EXPECT_TRUE(fluidFiles.UNNUMB[1].blank());
    EXPECT_TRUE(fluidFiles.FAMILY[1].blank());
    EXPECT_EQ(fluidConstants.HCMBST[1], -1.0);
}

TEST_F(FluidFile, ADefaultPointStandsBehindItsTag) {
    Header header;
    header.reference = "OTH\n  300.0  1.0  45957.0  164.0";
    ASSERT_EQ(read(helmholtzSection("#", "FEQ", "52.024") + plainHeatCapacity, header), 0) << message();
    EXPECT_EQ(referenceState.TDEF[1], 300.0);
    EXPECT_EQ(referenceState.PDEF[1], 1.0);
    EXPECT_EQ(referenceState.HDEF[1], 45957.0);
    EXPECT_EQ(referenceState.SDEF[1], 164.0);
    EXPECT_EQ(fluidConstants.VERFL[1], 10.0);
}

TEST_F(FluidFile, ADefaultPointThatCannotBeReadIsAnError) {
    const std::string sections = helmholtzSection("#", "FEQ", "52.024") + plainHeatCapacity;
    for (const char* point : {"OTH\n  300.0  1.0  45957.0", "OT0\n  warm  1.0  45957.0  164.0"}) {
        Header header;
        header.reference = point;
        EXPECT_EQ(read(sections, header), 102) << point;
    }
}

// A free line has its mark and two letters of its key within the 255 columns that are read, or none.
TEST_F(FluidFile, AMarkInTheLastColumnsHasNoKey) {
    const std::string sections = helmholtzSection("#", "FEQ", "52.024") + plainHeatCapacity;
    for (const int column : {200, 253, 254, 255}) {
        Header header;
        header.freeLines = "1234" + std::string(static_cast<std::size_t>(column - 5), ' ') + "!UN\n";
        ASSERT_EQ(read(sections, header), 0) << message();
        EXPECT_EQ(fluidFiles.UNNUMB[1], column <= 253 ? "1234" : "") << column;
        modelTags.LFORCESETUP = true;
    }
}

TEST_F(FluidFile, NumbersMayStandInEveryFormOfTheField) {
    std::string text = plainFile();
    const auto put = [&](const std::string& from, const std::string& to) {
        text.replace(text.find(from), from.size(), to);
    };
    put("  136.34     !triple point temperature", " 0.13634D+03,  comment without a mark");
    put("  351.255  5782.0  8.1500846\n", "  3.51255e2 , 5782 ,8.1500846d0\n");
    ASSERT_EQ(setUp({write("ONE.FLD", text)}), 0) << message();
    EXPECT_EQ(fluidConstants.TCRIT[1], 351.255);
    EXPECT_EQ(fluidConstants.PCRIT[1], 5782.0);
    EXPECT_EQ(fluidConstants.DCRIT[1], 8.1500846);
    EXPECT_EQ(fluidConstants.TTPN[1], 136.34);
}

TEST_F(FluidFile, ADefaultSectionWinsOverAnAlternativeThatStandsBeforeIt) {
    const std::string sections = helmholtzSection("@", "FEQ", "52.0") + bwrSection + plainHeatCapacity;
    ASSERT_EQ(read(sections), 0) << message();
    EXPECT_EQ(modelTags.HMXEOS[1], "BWR");
    EXPECT_EQ(modelTags.HEOS, "BWR");
    EXPECT_EQ(fluidConstants.WMAS[1], 99.0);
    EXPECT_EQ(fluidFiles.HIEOS[1].slice(1, 3), "BWR");

    ASSERT_EQ(force("EOS", "HMX", {"FEQ"}), 0);
    ASSERT_EQ(read(sections), 0) << message();
    EXPECT_EQ(modelTags.HMXEOS[1], "FEQ");
    EXPECT_EQ(modelTags.HEOS, "FEQ");
    EXPECT_EQ(fluidConstants.WMAS[1], 52.0);

    // the default comes back with the next set-up
    ASSERT_EQ(read(sections), 0) << message();
    EXPECT_EQ(modelTags.HMXEOS[1], "BWR");
}

TEST_F(FluidFile, TheFirstOfTwoDefaultEquationsIsRead) {
    ASSERT_EQ(read(helmholtzSection("#", "FEQ", "52.0") + helmholtzSection("#", "FEQ", "77.0") + plainHeatCapacity), 0);
    EXPECT_EQ(fluidConstants.WMAS[1], 52.0);
    EXPECT_EQ(feqTerms[1].WMFEQ, 52.0);
}

TEST_F(FluidFile, AnEquationWithoutAnIdealGasReadsWithoutComplaintAndGivesZero) {
    // the functions of a fluid that was set up before do not stay
    ASSERT_EQ(read(helmholtzSection("#", "FEQ", "52.0") + plainHeatCapacity), 0) << message();
    EXPECT_GT(CP0K(1, 300.0), 0.0);
    modelTags.LFORCESETUP = true;
    ASSERT_EQ(read(helmholtzSection("#", "FEQ", "52.0", "CP7")), 0) << message();
    EXPECT_EQ(modelTags.HMODCP[1], "CP7");
    EXPECT_EQ(CP0K(1, 300.0), 0.0);
    modelTags.HMODCP[1] = "XX1";
    const Composition x = unitComposition(1);
    EXPECT_EQ(CP0K(1, 300.0), 0.0);
    EXPECT_EQ(CP0(300.0, x), 0.0);
    EXPECT_EQ(CPI(300.0, x), 0.0);
    EXPECT_EQ(CPT(300.0, x), 0.0);
    EXPECT_EQ(PHI0K(1, 2, 0, 300.0, 1.0), 0.0);
    EXPECT_EQ(PHI0(2, 0, 300.0, 1.0, x), 0.0);
}

TEST_F(FluidFile, TheSelectedHeatCapacityReplacesTheFallBack) {
    const std::string fallBack = plainHeatCapacity,
                      selected = heatCapacitySection("CP2", "  1 0 0 0 0 0 0", "  7.0 0.0\n");
    ASSERT_EQ(read(helmholtzSection("#", "FEQ", "52.0", "CP2") + fallBack), 0);
    EXPECT_NEAR(CP0K(1, 300.0), 4.0 * 8.314471, 1e-12);
    mixtureFile = "OTHER";
    ASSERT_EQ(read(helmholtzSection("#", "FEQ", "52.0", "CP2") + fallBack + selected), 0);
    EXPECT_NEAR(CP0K(1, 300.0), 7.0 * 8.314471, 1e-12);
    EXPECT_EQ(fluidFiles.HICP0[1].slice(1, 3), "CP2");
}

TEST_F(FluidFile, AnOldVersionHasTwoCountsOfHeatCapacityTerms) {
    // the counts that follow on the line belong to newer files
    const std::string section = heatCapacitySection("CPP", "  1 0 1 1 0 0 0", "  4.0  0.0\n");
    Header old;
    old.version = "6.098";
    ASSERT_EQ(read(helmholtzSection("#", "FEQ", "52.0") + section, old), 0) << message();
    EXPECT_EQ(cppTerms[1].NTERMC, 1);
    EXPECT_EQ(cppTerms[1].NCOSHC, 0);
    EXPECT_EQ(cppTerms[1].NSINHC, 0);
    EXPECT_NEAR(CP0K(1, 300.0), 4.0 * 8.314471, 1e-12);

    Header current;
    current.version = "6.099";
    mixtureFile = "OTHER";
    const std::string full =
        heatCapacitySection("CPP", "  1 0 1 1 0 0 0", "  4.0  0.0\n  1 -2 100 -1 -2\n  1 -2 100 -1 -2\n");
    ASSERT_EQ(read(helmholtzSection("#", "FEQ", "52.0") + full, current), 0) << message();
    EXPECT_EQ(cppTerms[1].NCOSHC, 1);
    EXPECT_EQ(cppTerms[1].NSINHC, 1);
}

TEST_F(FluidFile, FreeLinesGoOnUntilABlankLine) {
    // without the blank line the sections are taken for text of the header: there is none left to read
    const std::string text = headerText({}) + helmholtzSection("#", "FEQ", "52.0") + plainHeatCapacity + "@END\n!\n!\n";
    EXPECT_EQ(setUp({write("ONE.FLD", text)}), 102);
    const std::string second =
        headerText({}) + helmholtzSection("#", "FEQ", "52.0") + "\n" + plainHeatCapacity + endOfFile;
    EXPECT_EQ(setUp({write("TWO.FLD", second)}), 105) << "the equation stands before the first blank line";
}

TEST_F(FluidFile, AFileWithoutAnEndIsAnError) {
    const std::string name =
        write("ONE.FLD", headerText({}) + "\n" + helmholtzSection("#", "FEQ", "52.0") + plainHeatCapacity);
    EXPECT_EQ(setUp({name}), 102);
    EXPECT_EQ(message(), "[SETUP error 102] error in file or premature end of file for component #  1.");
}

TEST_F(FluidFile, AFileCutAnywhereBeforeItsEndIsAnError) {
    const std::string whole = plainFile();
    const std::size_t end = whole.find("@END");
    int cuts = 0;
    for (std::size_t at = whole.find('\n'); at < end; at = whole.find('\n', at + 1)) {
        const int code = setUp({write("ONE.FLD", whole.substr(0, at + 1))});
        EXPECT_EQ(code, 102) << "cut behind byte " << at << ": " << message();
        ++cuts;
    }
    EXPECT_GT(cuts, 40);
}

TEST_F(FluidFile, TheEndMayHaveAnyFirstCharacterButTheMarkOfAComment) {
    const std::string body = headerText({}) + "\n" + helmholtzSection("#", "FEQ", "52.0") + plainHeatCapacity;
    EXPECT_EQ(setUp({write("ONE.FLD", body + "xEND\n")}), 0) << message();
    mixtureFile = "OTHER";
    EXPECT_EQ(setUp({write("ONE.FLD", body + "!END\n")}), 102);
    EXPECT_EQ(setUp({write("ONE.FLD", body + "@END\n!\n")}), 102) << "a header wants two lines behind it";
    EXPECT_EQ(setUp({write("ONE.FLD", body + "#END\n!\n!\n")}), 0) << message();
}

TEST_F(FluidFile, AnUnknownModelIsAWarningAndReadingGoesOn) {
    ASSERT_EQ(read("@EOS\nXYZ  unknown\n!\n" + helmholtzSection("#", "FEQ", "52.0") + plainHeatCapacity), -103);
    EXPECT_EQ(message(), "[SETUP warning -103] unknown model (XYZ) encountered in file for component #  1.");
    EXPECT_EQ(modelTags.HMXEOS[1], "FEQ");
    for (const char* key : {"TRN", "ETA", "VIS", "TCX", "STN", "DE "}) {
        mixtureFile = key;
        EXPECT_EQ(read(std::string("@") + key + "\nXYZ  unknown\n!\n" + helmholtzSection("#", "FEQ", "52.0") +
                       plainHeatCapacity),
                  -103)
            << key;
    }
}

TEST_F(FluidFile, SectionsOfUnknownKeysArePassedOver) {
    EXPECT_EQ(read("#ABC\nXYZ  unknown\n!\n 1 2 3\n 4 5 6\n" + helmholtzSection("#", "FEQ", "52.0") + "#XYZ\nFEQ\n!\n" +
                   plainHeatCapacity),
              0)
        << message();
    EXPECT_EQ(fluidConstants.WMAS[1], 52.0);
}

TEST_F(FluidFile, AMissingEquationIsAnErrorWithTheNameOfTheFile) {
    EXPECT_EQ(read(plainHeatCapacity), 105);
    EXPECT_EQ(message(), "[SETUP error 105] selected equation of state not found for component #  1:  " +
                             (folder.path("ONE.FLD") + std::string(100, ' ')).substr(0, 100));
    ASSERT_EQ(force("EOS", "HMX", {"QUI"}), 0);
    EXPECT_EQ(read(helmholtzSection("#", "FEQ", "52.0") + plainHeatCapacity), 105);
}

TEST_F(FluidFile, AFileWithoutTheNaturalGasEquationServesWithItsOwn) {
    ASSERT_EQ(force("EOS", "HMX", {"FEK"}), 0);
    ASSERT_EQ(read(helmholtzSection("#", "FEQ", "52.0") + plainHeatCapacity), 0) << message();
    EXPECT_EQ(modelTags.HMXEOS[1], "FEQ");
    ASSERT_EQ(force("EOS", "HMX", {"FEK"}), 0);
    ASSERT_EQ(read(helmholtzSection("#", "FEQ", "52.0") + helmholtzSection("@", "FEK", "53.0") + plainHeatCapacity), 0);
    EXPECT_EQ(modelTags.HMXEOS[1], "FEK");
    EXPECT_EQ(fluidConstants.WMAS[1], 53.0);
}

TEST_F(FluidFile, AnFexEquationIsNotedWhetherItIsReadOrNot) {
    ASSERT_EQ(read(helmholtzSection("#", "FEQ", "52.0") + helmholtzSection("@", "FEX", "53.0") + plainHeatCapacity), 0);
    EXPECT_EQ(fluidConstants.IGENFL[1], 1);
    EXPECT_EQ(fluidConstants.WMAS[1], 52.0);
    mixtureFile = "OTHER";
    ASSERT_EQ(read(helmholtzSection("#", "FEQ", "52.0") + plainHeatCapacity), 0);
    EXPECT_EQ(fluidConstants.IGENFL[1], 0);
}

TEST_F(FluidFile, MalformedBlocksAreErrorsThatNameFileAndLine) {
    struct Row {
        const char *from, *to;
    };
    constexpr Row rows[] = {
        {"  2 4 0 0 0 0\n", "  57 4 0 0 0 0\n"},     {"  2 4 0 0 0 0\n", "  -1 4 0 0 0 0\n"},
        {"  2 4 0 0 0 0\n", "  2 4 21 12 0 0\n"},    {"  2 4 0 0 0 0\n", "  two 4 0 0 0 0\n"},
        {"  2 4 0 0 0 0\n", "  40 4 20 12 0 0\n"},   {"  8.314471\n", "  gas\n"},
        {"  351.255  8.1500846\n", "  x 8.15\n"},    {"   0.5  0.5  2.0  1.0\n", "   0.5  0.5  2.0  !\n"},
        {"  1 0 0 0 0 0 0\n", "  21 0 0 0 0 0 0\n"}, {"  1 0 0 0 0 0 0\n", "  15 6 0 0 0 0 0\n"},
        {"  1 0 0 0 0 0 0\n", "  -3 0 0 0 0 0 0\n"}, {"  1 0 0 0 0 0 0\n", "  1 0 x\n"},
    };
    for (const Row& row : rows) {
        std::string text = plainFile();
        text.replace(text.find(row.from), std::string_view(row.from).size(), row.to);
        EXPECT_EQ(setUp({write("ONE.FLD", text)}), 104) << row.to;
        EXPECT_EQ(message().substr(0, 41), "[SETUP error 104] Error in setup of (" +
                                               std::string(text.find("CPP  heat") != std::string::npos &&
                                                                   std::string_view(row.from).find("  1 0") == 0
                                                               ? "CPP)"
                                                               : "FEQ)"))
            << message();
        EXPECT_NE(message().find("model for component #  1:  "), std::string::npos) << message();
        EXPECT_NE(message().find("ONE.FLD, line "), std::string::npos) << message();
    }
}

// A row with a number too few does not take one from the row below.
TEST_F(FluidFile, ARecordEndsWithItsLine) {
    struct Row {
        const char *from, *to, *text;
    };
    constexpr Row rows[] = {
        {"  -1.5  1.5  1.0  0.0\n", "  -1.5  1.5  1.0\n", "found the end of the line"},
        {"   0.5  0.5  2.0  1.0\n", "   0.5  0.5  2.0\n1.0\n", "found the end of the line"},
        {"  351.255  5782.0  8.1500846\n", "  351.255  5782.0\n 8.1500846\n",
         "expected critical point, found the end of the line"},
        {"  2 4 0 0 0 0\n", "  2 4 0\n 0 0 0\n", "found the end of the line"},
    };
    for (const Row& row : rows) {
        std::string text = plainFile();
        const auto at = text.find(row.from);
        ASSERT_NE(at, std::string::npos) << row.from;
        text.replace(at, std::string_view(row.from).size(), row.to);
        EXPECT_EQ(setUp({write("ONE.FLD", text)}), 104) << row.to;
        EXPECT_NE(message().find(row.text), std::string::npos) << message();
    }
    // blank lines before a record, and comments behind it, are no part of it
    std::string text = plainFile();
    text.replace(text.find("  2 4 0 0 0 0\n"), 14, "\n   \n  2 4 0 0 0 0 ! counts\n");
    EXPECT_EQ(setUp({write("ONE.FLD", text)}), 0) << message();
}

// What an equation divides by, or takes the logarithm of, is refused on its line.
TEST_F(FluidFile, QuantitiesByWhichAnEquationDividesArePositive) {
    const std::string ecsSection =
        "#EOS\nECS  states of another fluid\n!\n  136.34\n  435.0\n  70000.0\n  27.4734\nCPP\nOTHER.FLD\nFEQ\n"
        "  0.33\n  0.27\n  0.2769\n  351.255\n  5782.0\n  8.15\n";
    struct Row {
        const std::string& section;
        const char *from, *to, *expected;
    };
    const Row rows[] = {
        {bwrSection, "\n  6.0\n", "\n  0.0\n", "expected positive density of the exponential, found '  0.0"},
        {bwrSection, "  0.08314471\n", "  -0.08314471\n", "expected positive gas constant, found '  -0.08314471"},
        {ecsSection, "  351.255\n", "  0\n", "expected positive critical temperature, found '  0"},
        {ecsSection, "  5782.0\n", "  -5782.0\n", "expected positive critical pressure, found '  -5782.0"},
        {ecsSection, "  8.15\n", "  0\n", "expected positive critical density, found '  0"},
    };
    for (const Row& row : rows) {
        std::string section = row.section;
        section.replace(section.find(row.from), std::string_view(row.from).size(), row.to);
        EXPECT_EQ(read(section), 104) << row.expected;
        EXPECT_NE(message().find("ONE.FLD, line "), std::string::npos) << message();
        EXPECT_NE(message().find(row.expected), std::string::npos) << message();
    }
}

TEST_F(FluidFile, AFileThatCannotBeReadIsAnError) {
    constexpr const char* unreadable = "/proc/self/mem";  // opens, but reading it fails
    const std::string file = folder.path("ONE.FLD");
    std::error_code code;
    if (std::filesystem::exists(unreadable)) std::filesystem::create_symlink(unreadable, file, code);
    if (!std::filesystem::is_symlink(file)) GTEST_SKIP() << "no file here that cannot be read";
    EXPECT_EQ(setUp({file}), 102) << message();
}

TEST_F(FluidFile, UserDataAreReadAndOverlongListsRefused) {
    const auto section = [](const std::string& count) {
        return "#AUX\nUND  user data\n!\n  250.0\n  400.0\n  5000.0\n  30.0\n  1\n  " + count + "\n  0.9\n  0.8\n";
    };
    const std::string body = helmholtzSection("#", "FEQ", "52.0") + plainHeatCapacity;
    ASSERT_EQ(read(body + section("2")), 0) << message();
    EXPECT_EQ(fluidConstants.TMINUN[1], 250.0);
    EXPECT_EQ(fluidConstants.TMAXUN[1], 400.0);
    EXPECT_EQ(fluidConstants.PMAXUN[1], 5000.0);
    EXPECT_EQ(fluidConstants.RHOMUN[1], 30.0);
    EXPECT_EQ(fluidConstants.IUNFLG[1], 1);
    EXPECT_EQ(fluidConstants.NTRMUN[1], 2);
    EXPECT_EQ(fluidConstants.PRMUN[1][2], 0.8);
    mixtureFile = "OTHER";
    EXPECT_EQ(read(body + section("21")), 104);
    EXPECT_EQ(fluidConstants.NTRMUN[1], 0);
    EXPECT_EQ(read(body + section("-1")), 104);
    EXPECT_EQ(read(body + section("3")), 102) << "the key of the end is taken for the third";
}

TEST_F(FluidFile, BuiltInDataAreNotAvailable) {
    EXPECT_EQ(setUp({"BDATA 75-10-5"}), 105);
    ASSERT_EQ(force("EOS", "HMX", {"FEQ"}), 0);
    EXPECT_EQ(setUp({"bdata 75-10-5"}), 104);
    // every reader refuses; the words of the last one, that of transport, stand
    EXPECT_NE(message().find("[SETTRN error 101] illegal file specified; nread =    0; CAS no. = 75-10-5"),
              std::string::npos)
        << message();
}

TEST_F(FluidFile, AMissingFileIsToldWithItsName) {
    EXPECT_EQ(setUp({"nowhere"}), 101);
    EXPECT_EQ(message().substr(0, 86),
              "[SETUP error 101] error in opening file for component #  1; filename = (nowhere.fld   ");
}

TEST_F(FluidFile, BytesOfEveryKindAreSurvived) {
    // a deterministic scatter of changed bytes over good files: any code will do, no crash, no open file
    const std::string fluids = std::string(test::dataFolder) + "/fluids/";
    unsigned state = 12345;
    const auto next = [&state] { return state = state * 1664525U + 1013904223U; };
    for (const std::string& whole :
         {plainFile(), readFile(fluids + "R134A.FLD"), readFile(fluids + "CO2.FLD"), readFile(fluids + "R123.FLD")}) {
        ASSERT_FALSE(whole.empty());
        for (int round = 0; round < 300; ++round) {
            std::string text = whole;
            for (int change = 0; change < 8; ++change) {
                // half of them stay printable, so that wrong numbers come up as well as wrong bytes
                const unsigned byte = change % 2 == 0 ? next() >> 24 : '-' + (next() >> 24) % 13U;
                text[(next() >> 8) % text.size()] = static_cast<char>(byte);
            }
            mixtureFile = std::to_string(round);
            setUp({write("ONE.FLD", text)}, "DEF");
            ASSERT_FALSE(unitIsOpen(12)) << round;
        }
    }
}

}  // namespace
}  // namespace frigana::test
