// The file of mixing parameters: records of pairs, departure functions, estimates, and every way to refuse them.
#include <chrono>
#include <filesystem>

#include "CORE_PR.h"
#include "MixtureSetUp.h"
#include "ReaderReport.h"
#include "ReducingMemory.h"
#include "TextFile.h"

namespace frigana::test {
namespace {

const std::string pair12 = "75-10-5/354-33-6";  // R32 + R125
const std::string numbersKW = "1.01 0.98 1.02 1.03 0.5 0.0";

class MixingFile : public MixtureSetUp {
  protected:
    const Names names{"R32", "R125"};

    // Once from a file that was written just now, whose lines are searched, and once from the same file as an old one,
    // whose records are found by their places: the answers are the same.
    int useRecords(const std::string& records, const std::string& rules = plainKW0 + plainLJ6) {
        const std::string path = write("TEST.BNC", mixtureFileText(records, rules));
        const int searched = setUp(names, path);
        const std::string said = message();
        makeOld(path);
        EXPECT_EQ(setUp(names, path), searched);
        EXPECT_EQ(message(), said);
        return ierr;
    }
    // Gives the file a time of its own that lies far back.
    static void makeOld(const std::string& path) {
        static int files = 0;
        std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() -
                                                   std::chrono::hours(1000) + std::chrono::seconds(++files));
    }
    // The pair (1, 2) read again from the last file, without what SETHMX makes of it.
    int readPair() {
        int unit = 12, status = 0;
        Text255 name(std::string_view(folder.path("TEST.BNC"))), text;
        OPENFL(unit, name, 1, status, text);
        EXPECT_EQ(status, 0);
        RDBNC(unit, 1, 2, 1, ierr, herr);
        closeUnit(unit);
        return ierr;
    }
    const MixingPair& pair() const { return mixingParameters.pair[1][2]; }
    std::string citation(int k = 1) const { return words(mixingParameters.HBIN[k]); }
    std::string origin(int k = 1) const { return words(mixingParameters.HMFILE[k]); }
};

const std::string recordKW = dataLine(pair12, "KW0", numbersKW) + endOfRecord;
const std::string estimateText =
    "[SETUP warning -117] No mixture data are available for one or more binary pairs in the specified mixture. The "
    "mixing parameters have been estimated.";

// ---- places of the records ----------------------------------------------------------------------------------------

TEST_F(MixingFile, PlacesOfRecordsGiveWhatASearchGives) {
    const Names many{"R32",   "R125",     "R134A",    "R1234YF", "R1234ZE",  "CO2",     "PROPANE",
                     "R152A", "BUTANE",   "ISOBUTAN", "R143A",   "NITROGEN", "ETHANE",  "METHANE",
                     "R22",   "PROPYLEN", "OXYGEN",   "PENTANE", "R227EA",   "ETHYLENE"};
    const std::string path = write("TEST.BNC", readFile(dataFile("HMX.BNC")));
    setUp(many, path);
    const int searched = ierr;
    const auto pairs = mixingParameters.pair;
    const auto citations = mixingParameters.HBIN;
    makeOld(path);
    for (int time = 1; time <= 2; ++time) {
        SCOPED_TRACE(time == 1 ? "places noted" : "places known");
        EXPECT_EQ(setUp(many, path), searched);
        int found = 0;
        for (int i = 1; i <= 20; ++i)
            for (int j = i + 1; j <= 20; ++j) {
                const MixingPair &a = pairs[i][j], &b = mixingParameters.pair[i][j];
                EXPECT_EQ(a.HMODMX, b.HMODMX);
                EXPECT_EQ(a.NAMIX, b.NAMIX);
                EXPECT_EQ(a.NAMIX2, b.NAMIX2);
                for (int k = 1; k <= 6; ++k) {
                    EXPECT_EQ(a.FMIX[k], b.FMIX[k]);
                    EXPECT_EQ(a.FTCIJ[k], b.FTCIJ[k]);
                    EXPECT_EQ(a.FVCIJ[k], b.FVCIJ[k]);
                }
                for (int k = 1; k <= a.NAMIX + a.NAMIX2; ++k)
                    for (int c = 1; c <= 7; ++c) EXPECT_EQ(a.AMIX[k][c], b.AMIX[k][c]);
                if (b.FTCIJ[1] != 0.0) ++found;
                const int number = pairNumber(i, j, 20);
                EXPECT_EQ(citations[number], mixingParameters.HBIN[number]);
            }
        EXPECT_GT(found, 80) << "pairs with a record of their own";
    }
}

TEST_F(MixingFile, PlacesOfRecordsAreThoseOfTheFileAsItIsNow) {
    const auto text = [](const std::string& first) {
        return mixtureFileText(dataLine(pair12, "KW0", first) + endOfRecord, plainKW0 + plainLJ6);
    };
    const std::string path = write("TEST.BNC", text("1.01 0.98 1.02 1.03 0.5 0.0"));
    makeOld(path);
    ASSERT_EQ(setUp(names, path), 0);
    EXPECT_EQ(pair().FMIX[1], 1.01);
    // changed a moment ago, of the same length
    write("TEST.BNC", text("1.07 0.98 1.02 1.03 0.5 0.0"));
    ASSERT_EQ(setUp(names, path), 0);
    EXPECT_EQ(pair().FMIX[1], 1.07);
    // longer, with a record in front
    write("TEST.BNC", mixtureFileText(dataLine("1-1-1/2-2-2", "KW0", numbersKW) + endOfRecord +
                                          dataLine(pair12, "KW0", "1.09 0.98 1.02 1.03 0.5 0.0") + endOfRecord,
                                      plainKW0 + plainLJ6));
    makeOld(path);
    ASSERT_EQ(setUp(names, path), 0);
    EXPECT_EQ(pair().FMIX[1], 1.09);
    // another file of the same length and time
    std::string different = readFile(path);
    different.replace(different.find("1.09"), 4, "1.08");
    const std::string other = write("OTHER.BNC", different);
    std::filesystem::last_write_time(other, std::filesystem::last_write_time(path));
    ASSERT_EQ(setUp(names, other), 0);
    EXPECT_EQ(pair().FMIX[1], 1.08);
    // and lines of messages are those of the file
    write("TEST.BNC", mixtureFileText(dataLine("1-1-1/2-2-2", "KW0", numbersKW) + endOfRecord +
                                          dataLine(pair12, "KW0", "one two") + endOfRecord,
                                      plainKW0 + plainLJ6));
    EXPECT_EQ(setUp(names, path), 118);
    const std::string refusal = words(lastRefusal);
    EXPECT_FALSE(refusal.empty());
    lastRefusal.clear();
    makeOld(path);
    EXPECT_EQ(setUp(names, path), 118);
    EXPECT_EQ(words(lastRefusal), refusal);
}

// ---- records ----------------------------------------------------------------------------------------------------

TEST_F(MixingFile, ARecordIsStoredForBothOrders) {
    ASSERT_EQ(useRecords("?first line\n?second line\n" + dataLine(pair12, "KW0", numbersKW) +
                         dataLine("", "TC1", "1 2 3 4 5 6") + dataLine("", "VC1", "7 8 9 10 11 12") +
                         dataLine("", "PR1", "0.01 0.02 0.03 0.04 0.05 0.06") +
                         dataLine("", "TRN", "1 2 3 4 5 6 7 8 9") + endOfRecord),
              0)
        << message();
    for (const MixingPair* p : {&mixingParameters.pair[1][2], &mixingParameters.pair[2][1]}) {
        EXPECT_EQ(p->HMODMX, "KW0");
        EXPECT_EQ(p->HMODTC, "TC1");
        EXPECT_EQ(p->HMODVC, "VC1");
        EXPECT_EQ(p->HPRKIJ, "PR1");
        constexpr double mixing[] = {1.01, 0.98, 1.02, 1.03, 0.5, 0.0};
        for (int k = 1; k <= 6; ++k) {
            EXPECT_EQ(p->FMIX[k], mixing[k - 1]);
            EXPECT_EQ(p->FMIX2[k], 1.0);
            EXPECT_EQ(p->FTCIJ[k], k);
            EXPECT_EQ(p->FVCIJ[k], k + 6);
        }
        for (int k = 7; k <= 11; ++k) {
            EXPECT_EQ(p->FTCIJ[k], 0.0);
            EXPECT_EQ(p->FVCIJ[k], 0.0);
        }
        EXPECT_EQ(p->XDIJ2, 9.0);
    }
    EXPECT_EQ(FPRKIJ[1][2][6], 0.06);
    EXPECT_EQ(FPRKIJ[2][1][6], 0.06);
    EXPECT_EQ(mixingParameters.pair[1][1].HMODMX, "i=j");
    EXPECT_EQ(mixingParameters.pair[2][2].HMODVC, "i=j");
    EXPECT_EQ(mixingParameters.version, 1);
    EXPECT_EQ(citation(), "first line\\second line");
    EXPECT_EQ(origin(), folder.path("TEST.BNC"));
}

TEST_F(MixingFile, ARecordOfTheOtherOrderIsTurnedRound) {
    ASSERT_EQ(useRecords(dataLine("354-33-6/75-10-5", "KW0", numbersKW) + dataLine("", "TC1", "1 2 3 4 5 6") +
                         dataLine("", "VC1", "7 8 9 10 11 12") + endOfRecord),
              0)
        << message();
    for (const MixingPair* p : {&mixingParameters.pair[1][2], &mixingParameters.pair[2][1]}) {
        EXPECT_EQ(p->FMIX[1], 1.0);
        EXPECT_EQ(p->FMIX2[1], 1.01);
        EXPECT_EQ(p->FMIX[2], 0.98);
        EXPECT_EQ(p->FMIX[3], 1.0);
        EXPECT_EQ(p->FMIX2[3], 1.02);
        EXPECT_EQ(p->FMIX[4], 1.03);
        EXPECT_EQ(p->FTCIJ[1], 1.0);
        EXPECT_EQ(p->FVCIJ[1], 7.0);
        for (int k = 2; k <= 6; ++k) {
            EXPECT_EQ(p->FTCIJ[k], 0.0);
            EXPECT_EQ(p->FTCIJ[k + 5], k);
            EXPECT_EQ(p->FVCIJ[k], 0.0);
            EXPECT_EQ(p->FVCIJ[k + 5], k + 6);
        }
    }
}

TEST_F(MixingFile, SectionsAreFoundByEitherMarkAndInEitherOrder) {
    const std::string text = "HMX\n12\n@BNC\nBNC\n?\n!\n" + recordKW + plainKW0 + "@end\n" + plainLJ6;
    std::string rulesByTheOtherMark = text;
    rulesByTheOtherMark.replace(rulesByTheOtherMark.find("#MXM"), 1, "@");
    ASSERT_EQ(setUp(names, write("TEST.BNC", rulesByTheOtherMark)), 0) << message();
    EXPECT_EQ(mixingParameters.version, 12);
    EXPECT_EQ(mixingParameters.rules, 1) << "nothing is read behind the end of the sections";
    EXPECT_EQ(pair().NAMIX, 2);
}

// A lone mark behind the lines of comment ends them, but need not stand there.
TEST_F(MixingFile, TheMarkBehindTheCommentsMayBeMissing) {
    const auto without = [](std::string text) {
        for (std::size_t at = text.find("\n!\n"); at != std::string::npos && text[text.rfind('\n', at - 1) + 1] == '?';
             at = text.find("\n!\n", at))
            text.erase(at, 2);
        return text;
    };
    const std::string records = dataLine(pair12, "KW0", numbersKW) + dataLine("", "TC1", "1 2 3 4 5 6") +
                                dataLine("", "VC1", "7 8 9 10 11 12") + endOfRecord;
    const std::string marked = mixtureFileText(records);
    const std::string unmarked = without(marked);
    ASSERT_EQ(unmarked.size(), marked.size() - 6) << "three marks";
    for (const std::string& text : {marked, unmarked}) {
        ASSERT_EQ(setUp(names, write("TEST.BNC", text)), 0) << message();
        EXPECT_EQ(pair().FMIX[1], 1.01) << "the first pair of the file";
        EXPECT_EQ(pair().FTCIJ[6], 6.0);
        EXPECT_EQ(pair().NAMIX, 2);
        ASSERT_EQ(mixingParameters.rules, 2);
        EXPECT_EQ(mixingParameters.rule[1].HBPAR[1], "first");
        EXPECT_EQ(mixingParameters.rule[2].BIDEAL[5], 1.0);
    }
}

// Only the mark of the end tells that a pair or a departure function is not in the file: one that was cut short has
// lost its rest, wherever it was cut.
TEST_F(MixingFile, AFileCutShortIsAnError) {
    const std::string text = mixtureFileText(dataLine("1-1-1/2-2-2", "KW0", "3 3 3 3 0 0") + endOfRecord + recordKW);
    ASSERT_EQ(setUp(names, write("TEST.BNC", text)), 0) << message();
    const std::size_t end = text.find("@END");
    int cuts = 0;
    for (std::size_t at = text.find('\n', 7) + 1; at <= end; at = text.find('\n', at) + 1, ++cuts) {
        const int code = setUp(names, write("TEST.BNC", text.substr(0, at)));
        EXPECT_EQ(code, 118) << "cut before: " << text.substr(at, 20) << ": " << message();
    }
    EXPECT_EQ(cuts, 25);
    // the pair that is not there is told as such only up to the mark
    const std::string other = mixtureFileText(dataLine("1-1-1/2-2-2", "KW0", "3 3 3 3 0 0") + endOfRecord);
    EXPECT_EQ(setUp(names, write("TEST.BNC", other)), -117) << message();
    EXPECT_EQ(setUp(names, write("TEST.BNC", other.substr(0, other.find("@END")))), 118);
    EXPECT_EQ(message(), "[RDBNC error 118] Error in reading mixture file in RDBNC");
}

TEST_F(MixingFile, TheShippedFileCutAtAnyRecordIsAnError) {
    const std::string text = readFile(dataFile("HMX.BNC"));
    const std::size_t end = text.find("@END");
    int cuts = 0;
    for (std::size_t at = text.find("\n!\n", 300); at < end; at = text.find("\n!\n", at + 400), ++cuts)
        EXPECT_EQ(setUp(names, write("TEST.BNC", text.substr(0, at + 3))), 118) << at;
    EXPECT_GT(cuts, 50);
}

// A row with a number too few does not take one from the row below.
TEST_F(MixingFile, ARowOfADepartureFunctionEndsWithItsLine) {
    const std::string cut = ruleText("KW0", "  2  3  1  0  0", "  0.5  1.0  1.0\n0.0  -0.2  0.5  2.0  1.0\n");
    EXPECT_EQ(useRecords(recordKW, cut + plainLJ6), 118);
    EXPECT_EQ(message(), "[RDMIX error 118] Error in reading mixture file in RDMIX");
    const std::string counts = ruleText("KW0", "  2  3  1\n  0  0", "  0.5  1.0  1.0  0.0\n -0.2  0.5  2.0  1.0\n");
    EXPECT_EQ(useRecords(recordKW, counts + plainLJ6), 118);
}

TEST_F(MixingFile, ALineWithoutATagEndsItsRecordUnstored) {
    EXPECT_EQ(useRecords(dataLine(pair12, "KW0", "2 2 2 2 0 0") + dataLine("", "   ", "") + endOfRecord + recordKW), 0)
        << message();
    EXPECT_EQ(pair().FMIX[1], 1.01);
}

TEST_F(MixingFile, OfTwoRecordsOfAPairTheFirstIsTaken) {
    EXPECT_EQ(useRecords(dataLine("1-1-1/2-2-2", "KW0", "3 3 3 3 0 0") + endOfRecord + recordKW +
                         dataLine(pair12, "KW0", "2 2 2 2 0 0") + endOfRecord),
              0);
    EXPECT_EQ(pair().FMIX[1], 1.01);
}

TEST_F(MixingFile, AGeRecordIsReplacedByALaterKwRecordOfThePair) {
    const std::string ge = dataLine(pair12, "GE0", "1.1 1.2 1.3 1.4 0.1 0") + endOfRecord;
    ASSERT_EQ(useRecords(ge + recordKW), 0) << message();
    EXPECT_EQ(pair().HMODMX, "KW0");
    EXPECT_EQ(pair().FMIX[1], 1.01);
    EXPECT_EQ(mixingParameters.pair[2][1].FMIX[5], 0.5);

    // alone it serves, under the tag of the KW rule
    ASSERT_EQ(useRecords(ge), 0) << message();
    EXPECT_EQ(pair().HMODMX, "KW0");
    EXPECT_EQ(mixingParameters.pair[2][1].HMODMX, "KW0");
    EXPECT_EQ(pair().FMIX[4], 1.4);
    EXPECT_EQ(pair().NAMIX, 2) << "the departure function is that of the new tag";

    // the published natural-gas model keeps it
    mixingParameters.IGERG = 1;
    ASSERT_EQ(useRecords(ge + recordKW), 0) << message();
    EXPECT_EQ(pair().HMODMX, "KW0");
    EXPECT_EQ(pair().FMIX[4], 1.4);
    mixingParameters.IGERG = 0;
}

TEST_F(MixingFile, AGeRecordLeavesNoCodeToTheRecordThatReplacesIt) {
    const std::string ge = dataLine(pair12, "GE0", "1.1 1.2 1.3 1.4 0.1 0") + dataLine("", "TC1", "EST") + endOfRecord;
    EXPECT_EQ(useRecords(ge + recordKW), 0) << message();
    EXPECT_EQ(pair().FMIX[1], 1.01);
    EXPECT_EQ(pair().HMODTC, "");
}

TEST_F(MixingFile, AGeRecordOfTheOtherOrderIsTurnedRound) {
    ASSERT_EQ(useRecords(dataLine("354-33-6/75-10-5", "GE0", numbersKW) + endOfRecord), 0) << message();
    EXPECT_EQ(pair().HMODMX, "KW0");
    EXPECT_EQ(pair().FMIX[1], 1.0);
    EXPECT_EQ(pair().FMIX2[1], 1.01);
}

TEST_F(MixingFile, EstimatedCriticalLinesAreMarkedAndThePairIsEstimated) {
    struct Row {
        const char *tc, *vc;
        int code;
        const char *tcTag, *vcTag;
    };
    constexpr Row rows[] = {{"EST", "1 2 3 4 5 6", -114, "EST", "VC1"},
                            {"1 2 3 4 5 6", "EST", -115, "TC1", "EST"},
                            {"EST", "EST", -116, "EST", "EST"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.code);
        EXPECT_EQ(useRecords(dataLine(pair12, "KW0", numbersKW) + dataLine("", "TC1", row.tc) +
                             dataLine("", "VC1", row.vc) + endOfRecord),
                  -117)
            << "the estimate follows whatever the code is";
        EXPECT_EQ(pair().HMODTC, "TC1");
        EXPECT_EQ(pair().HMODVC, "VC1");
        EXPECT_EQ(origin(), "estimated by ESTBNC");
        EXPECT_EQ(readPair(), row.code);
        EXPECT_EQ(pair().HMODTC, row.tcTag);
        EXPECT_EQ(pair().HMODVC, row.vcTag);
        EXPECT_EQ(pair().FMIX[1], 1.01);
    }
}

TEST_F(MixingFile, APairWithoutARecordIsToldByItsCasNumbers) {
    useRecords(dataLine("1-1-1/2-2-2", "KW0", numbersKW) + endOfRecord);
    EXPECT_EQ(readPair(), -117);
    EXPECT_EQ(message(), "[RDBNC error] Binary pair not found (end of file):  75-10-5/354-33-6");
}

TEST_F(MixingFile, ARecordWithoutMixingParametersIsToldByItsCasNumbers) {
    EXPECT_EQ(useRecords(dataLine(pair12, "TC1", "1 2 3 4 5 6") + endOfRecord), -117);
    EXPECT_EQ(message(), estimateText);
    EXPECT_EQ(readPair(), -118);
    EXPECT_EQ(message(),
              "[RDBNC error] Binary pair found, but equilibrium interaction parameters are not available:  "
              "75-10-5/354-33-6");
}

TEST_F(MixingFile, LinesThatCannotBeReadAreRefused) {
    struct Row {
        const char* what;
        std::string records;
        int code;
    };
    const std::string good = dataLine(pair12, "KW0", numbersKW);
    const Row rows[] = {
        {"whole", good + endOfRecord, 0},
        {"numbers with commas", dataLine(pair12, "KW0", "1.01,0.98,1.02,1.03,0.5,0.0") + endOfRecord, 0},
        {"more numbers than needed", dataLine(pair12, "LJ6", "1 2 0 1 1 0 9 9") + endOfRecord, -117},
        {"no slash", dataLine("75-10-5 354-33-6", "KW0", numbersKW) + endOfRecord, 118},
        {"no slash in a further line", good + dataLine("75-10-5", "TC1", "1 2 3 4 5 6") + endOfRecord, 118},
        {"unknown tag", dataLine(pair12, "XX1", numbersKW) + endOfRecord, 118},
        {"tag of two letters that needs three", dataLine(pair12, "TR2", numbersKW) + endOfRecord, 118},
        {"unknown tag in a further line", good + dataLine("", "TX1", "1 2 3") + endOfRecord, 118},
        {"five numbers", dataLine(pair12, "KW0", "1.01 0.98 1.02 1.03 0.5") + endOfRecord, 118},
        {"letters for numbers", dataLine(pair12, "KW0", "one two three four five six") + endOfRecord, 118},
        {"short critical line", good + dataLine("", "TC1", "1 2 3 4 5") + endOfRecord, 118},
        {"short critical volume", good + dataLine("", "VC1", "1 2 3 4") + endOfRecord, 118},
        {"short cubic parameters", good + dataLine("", "PR1", "0.1") + endOfRecord, 118},
        {"eight transport parameters", good + dataLine("", "TRN", "1 2 3 4 5 6 7 8") + endOfRecord, 118},
        {"unknown tag in a record before", dataLine("1-1-1/2-2-2", "QQ0", "1") + endOfRecord + good + endOfRecord, 118},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(useRecords(row.records), row.code);
        if (row.code == 118) {
            EXPECT_EQ(message(), "[RDBNC error 118] Error in reading mixture file in RDBNC");
        }
    }
}

TEST_F(MixingFile, APairIsNotReadWithoutAUnit) {
    ASSERT_EQ(useRecords(recordKW), 0);
    for (const int unit : {0, -1}) {
        RDBNC(unit, 1, 2, 1, ierr, herr);
        EXPECT_EQ(ierr, 1);
        EXPECT_EQ(message(), "[RDBNC error] Block data option not available");
    }
}

// ---- departure functions ----------------------------------------------------------------------------------------

TEST_F(MixingFile, ADepartureFunctionIsReadInItsTwoBlocks) {
    const std::string rows = " 0.1 1.0 2.0 3.0\n 0.2 1.5 2.5 0.0\n 0.3 1.0 2.0 0.4 0.5 0.6 0.7\n";
    ASSERT_EQ(useRecords(recordKW, ruleText("KW0", "  2  3  1  1  7", rows)), 0) << message();
    EXPECT_EQ(pair().NAMIX, 2);
    EXPECT_EQ(pair().NAMIX2, 1);
    EXPECT_EQ(pair().AMIX[1][4], 3.0);
    EXPECT_EQ(pair().AMIX[2][2], 1.5);
    EXPECT_EQ(pair().AMIX[3][7], 0.7);
    EXPECT_EQ(mixingParameters.rules, 1);
    EXPECT_EQ(mixingParameters.rule[1].HRULE, "KW0 departure function of a test");
    EXPECT_EQ(mixingParameters.rule[1].HBPAR[1], "first");
    EXPECT_EQ(mixingParameters.rule[1].HBPAR[6], "sixth");
    EXPECT_EQ(mixingParameters.rule[1].BIDEAL[3], 0.0);
    EXPECT_EQ(mixingParameters.rule[1].BIDEAL[4], 1.0);
    // without the mark, the powers of the exponentials do not stand in the file
    ASSERT_EQ(useRecords(recordKW, ruleText("KW0", "  1  3  0  0  0", " 0.1 1.0 2.0\n")), 0) << message();
    EXPECT_EQ(pair().AMIX[1][3], 2.0);
    EXPECT_EQ(pair().AMIX[1][4], 0.0);
}

TEST_F(MixingFile, DepartureFunctionsThatCannotBeReadAreRefused) {
    const std::string head = "#MXM\nKW0 test\n?\n!\n";
    const std::string named = head + "first    second   third    fourth   fifth    sixth   \n";
    const std::string ideal = named + "1 1 0 1 1 0\n";
    std::string furtherRules;
    for (int k = 0; k < largestRules; ++k) {
        std::string rule = plainKW0;
        furtherRules += rule.replace(rule.find("KW0"), 3, "A" + std::to_string(10 + k));
    }
    struct Row {
        const char* what;
        std::string rules;
        int code;
    };
    const Row rows[] = {
        {"whole", plainKW0, 0},
        {"no terms", ideal + " 0 0 0 0 0\n", 0},
        {"five ideal values", named + "1 1 0 1 1\n", 118},
        {"letters for ideal values", named + "a b c d e f\n", 118},
        {"four counts", ideal + " 1 3 1 0\n 0.1 1 1 0\n", 118},
        {"sixteen terms", ideal + " 16 3 1 0 0\n", 118},
        {"sixteen terms of both blocks", ideal + " 8 3 1 8 7\n", 118},
        {"eight columns", ideal + " 1 7 1 0 0\n", 118},
        {"negative counts", ideal + " -1 3 1 0 0\n", 118},
        {"row too short", ideal + " 1 3 1 0 0\n 0.1 1 1\n", 118},
        {"row of letters", ideal + " 1 3 1 0 0\n x y z u\n", 118},
        {"row missing in the second block", ideal + " 1 3 1 1 7\n 0.1 1 1 0\n", 118},
        {"columns below zero", ideal + " 1 -1 1 0 0\n", 118},
        {"nine columns", ideal + " 1 8 0 0 0\n", 118},
        {"columns of the second block below zero", ideal + " 1 3 1 1 -1\n", 118},
        {"eight columns of the second block", ideal + " 1 3 1 1 8\n", 118},
        {"a negative second count", ideal + " 1 3 1 -1 7\n", 118},
        {"a heading without a function", "#MXM\n", 118},
        {"more functions than there is room for", plainKW0 + furtherRules, 118},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(useRecords(recordKW, row.rules), row.code);
        if (row.code == 118) {
            EXPECT_EQ(message(), "[RDMIX error 118] Error in reading mixture file in RDMIX");
        }
    }
}

TEST_F(MixingFile, APairWhoseTagHasNoDepartureFunctionIsToldSo) {
    EXPECT_EQ(useRecords(dataLine(pair12, "KW7", numbersKW) + endOfRecord), -117);
    EXPECT_EQ(message(), "[SETHMX error] Mixing term not found for one or more binary pair(s)");
    EXPECT_EQ(pair().HMODMX, "KW7");
    EXPECT_EQ(pair().NAMIX, 0);
    EXPECT_EQ(PHIMIX(1, 2, 0, 0, 1.2, 0.5, fractions({0.4, 0.6})), 0.0);
}

TEST_F(MixingFile, TheSameTagOnSeveralPairsSharesOneRuleNumber) {
    const Names three{"R32", "R125", "R134A"};
    const std::string records = recordKW + dataLine("75-10-5/811-97-2", "KW0", numbersKW) + endOfRecord +
                                dataLine("354-33-6/811-97-2", "KW0", numbersKW) + endOfRecord;
    const std::string file = write("TEST.BNC", mixtureFileText(records, plainKW0 + plainKW0 + plainLJ6));
    ASSERT_EQ(setUp(three, file), 0) << message();
    EXPECT_EQ(mixingParameters.rules, 2) << "KW0 and LJ6, though one of them stands twice in the file";
    EXPECT_TRUE(mixingParameters.rule[1].HRULE.startsWith("KW0"));
    EXPECT_TRUE(mixingParameters.rule[2].HRULE.startsWith("LJ6"));
    for (int i = 1; i <= 3; ++i)
        for (int j = 1; j <= 3; ++j) EXPECT_EQ(mixingParameters.pair[i][j].NAMIX, i == j ? 0 : 2);
    // read for one pair, the function keeps its number, and a new one continues
    const int unit = 12;
    int status = 0;
    Text255 text;
    PairMarks marks{};
    ASSERT_TRUE(openForReading(unit, file));
    RDMIX(unit, 1, 2, "KW0", marks, status, text);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(mixingParameters.rules, 2);
    EXPECT_TRUE(marks[1][2]);
    EXPECT_FALSE(marks[1][3]);
    closeUnit(unit);
}

TEST_F(MixingFile, AKwPairWithoutStrengthEvaluatesItsTermsAndAddsZero) {
    ASSERT_EQ(useRecords(dataLine(pair12, "KW0", "1.01 0.98 1.02 1.03 0.0 0.0") + endOfRecord), 0) << message();
    const double tau = 1.3, del = 0.6;
    const Composition x = fractions({0.4, 0.6});
    clearDepartureCache();
    const DepartureCache& cache = departureCache[11];
    for (int itau = 0; itau <= 1; ++itau)
        for (int idel = 0; idel <= 1; ++idel) {
            EXPECT_EQ(PHIMIX(1, 2, itau, idel, tau, del, x), 0.0);
            EXPECT_NE(cache.DRVFLH & (1U << (4 * itau + idel + 1)), 0U);
        }
    EXPECT_EQ(cache.TAUSVH, tau);
    EXPECT_EQ(cache.DELSVH, del);
    EXPECT_NEAR(cache.DRVSVH[1], 0.5 * tau * del - 0.2 * std::sqrt(tau) * del * del * std::exp(-del), 1e-16);
}

TEST_F(MixingFile, DepartureFunctionsHaveNumbersByTheirTags) {
    ASSERT_EQ(useRecords(recordKW), 0);
    const Composition x = fractions({0.4, 0.6});
    const double tau = 1.3, del = 0.6;
    const double terms = 0.5 * tau * del - 0.2 * std::sqrt(tau) * del * del * std::exp(-del);
    struct Row {
        const char* tag;
        int number;  // of the saved state; 0 none, -1 out of range
        int strength;
    };
    // letters count as digits by their code
    constexpr Row rows[] = {{"LJ0", 1, 3},  {"LJ6", 7, 3},  {"LJA", 18, 3}, {"KW0", 11, 5}, {"KW9", 20, 5},
                            {"KWA", 28, 5}, {"LM0", 21, 3}, {"LMA", 38, 3}, {"LIN", 0, 0},  {"i=j", 0, 0},
                            {"XYZ", 0, 0},  {"LJ/", 0, 0},  {"LJ ", -1, 0}, {"KWz", -1, 0}, {"LJ~", -1, 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.tag);
        clearDepartureCache();
        MixingPair& p = mixingParameters.pair[1][2];
        p.HMODMX = row.tag;
        p.FMIX = {{0.0, 0.0, 0.3, 0.0, 0.5, 0.0}};
        const double value = PHIMIX(1, 2, 0, 0, tau, del, x);
        if (row.number < 0) {
            EXPECT_EQ(value, 1e20);
        } else if (row.number == 0) {
            EXPECT_EQ(value, 0.0);
        } else {
            EXPECT_NEAR(value, 0.24 * (row.strength == 3 ? 0.3 : 0.5) * terms, 1e-16);
            EXPECT_EQ(departureCache[row.number].TAUSVH, tau);
        }
        EXPECT_EQ(PHIMIX(1, 2, 0, 0, tau, 1e-10, x), 0.0);
        EXPECT_EQ(PHIMIX(1, 2, 0, 0, 0.0, del, x), 0.0);
        EXPECT_EQ(PHIMIX(1, 1, 0, 0, tau, del, x), 0.0);
    }
}

// ---- the whole file ---------------------------------------------------------------------------------------------

TEST_F(MixingFile, BuiltInDataAreRefused) {
    for (const char* name : {"BDATA", "bdata", "BDATA file"}) {
        EXPECT_EQ(setUp(names, name), 1);
        EXPECT_EQ(message(), "[SETHMX error] Block data option not available");
    }
}

TEST_F(MixingFile, AFileThatIsNotThereIsRefused) {
    EXPECT_EQ(setUp(names, folder.path("NOWHERE.BNC")), 111);
    EXPECT_EQ(message(), "[SETHMX error] Error in opening mixture file");
}

TEST_F(MixingFile, AFileOfAnotherModelIsRefused) {
    const std::string other = mixtureFileText(recordKW, plainKW0, "PR ");
    for (const std::string& text : {other, std::string(), std::string("HMX\n"), std::string("HMX\nversion\n")}) {
        EXPECT_EQ(setUp(names, write("TEST.BNC", text)), 1);
        EXPECT_EQ(message(), "[SETHMX error] Mixture file does not match model");
    }
}

TEST_F(MixingFile, TheVersionStandsInTwoColumns) {
    const std::string whole = mixtureFileText(recordKW);
    struct Row {
        const char* line;
        int version;
    };
    constexpr Row rows[] = {{" 7", 7}, {"7", 7}, {"12", 12}, {"12345", 12}, {"10.2 of a year", 10}, {"", 0}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.line);
        std::string text = whole;
        text.replace(4, 2, row.line);
        EXPECT_EQ(setUp(names, write("TEST.BNC", text)), 0) << message();
        EXPECT_EQ(mixingParameters.version, row.version);
    }
}

TEST_F(MixingFile, WaterAndAlcoholsAreFoundByTheirCasNumbers) {
    ASSERT_EQ(useRecords(recordKW), 0);
    EXPECT_EQ(mixingParameters.IWATERCOMP, 0);
    EXPECT_EQ(mixingParameters.IALCOHOLCOMP, 0);
    const std::string file = folder.path("TEST.BNC");
    for (const char* alcohol :
         {"67-56-1", "64-17-5", "71-23-8", "67-63-0", "71-36-3", "78-83-1", "78-92-2", "107-21-1"}) {
        fluidFiles.HCAS[1] = alcohol;
        fluidFiles.HCAS[2] = "7732-18-5";
        SETHMX(std::string_view(file), ierr, herr);
        EXPECT_EQ(mixingParameters.IALCOHOLCOMP, std::string(alcohol) == "107-21-1" ? 0 : 1) << alcohol;
        EXPECT_EQ(mixingParameters.IWATERCOMP, 2);
    }
}

// ---- reducing functions -----------------------------------------------------------------------------------------

TEST_F(MixingFile, ReducingFunctionsOfAnUnknownRuleAreRefused) {
    ASSERT_EQ(useRecords(recordKW), 0);
    const Composition x = fractions({0.4, 0.6});
    mixingParameters.pair[1][2].HMODMX = "XYZ";
    for (const int ix : {0, -1}) {
        double Tr = 0.0, Dr = 0.0;
        RDXHMX(ix, 0, 0, x, Tr, Dr, ierr, herr);
        EXPECT_EQ(ierr, 190);
        EXPECT_EQ(message(), "[RDXHMX error 190] Mixing rule not found for i,j");
    }
}

TEST_F(MixingFile, DerivativesOfTheReducingFunctionsExistForTheKwRuleAlone) {
    ASSERT_EQ(useRecords(recordKW), 0);
    const Composition x = fractions({0.4, 0.6});
    for (const char* tag : {"LIN", "LM1", "TR1", "XYZ", "LJ1"}) {
        MixingPair& p = mixingParameters.pair[1][2];
        p.HMODMX = tag;
        p.FMIX = {{1.0, 1.0, 0.0, 1.5, 1.0, 0.0}};
        for (const int ix : {1, 2, 11}) {
            double Tr = 0.0, Dr = 0.0;
            RDXHMX(ix, 1, 2, x, Tr, Dr, ierr, herr);
            EXPECT_EQ(ierr, 191) << tag;
            EXPECT_EQ(message(), "[RDXHMX error 191] Derivative not available");
        }
    }
    mixingParameters.pair[1][2].HMODMX = "KW0";
    modelTags.HEOS = "PR";
    double Tr = 0.0, Dr = 0.0;
    RDXHMX(1, 1, 0, x, Tr, Dr, ierr, herr);
    EXPECT_EQ(ierr, 191);
}

TEST_F(MixingFile, VanishingReducingValuesBecomeSafeOnes) {
    ASSERT_EQ(useRecords(recordKW), 0);
    double Tr = 0.0, Dr = 0.0;
    REDHMX(Composition{}, Tr, Dr);
    EXPECT_EQ(Tr, 100.0);
    EXPECT_EQ(Dr, 10.0);
}

// Every row of the table of rules, evaluated here from the constants of the two fluids.
TEST_F(MixingFile, ReducingFunctionsOfEveryRule) {
    ASSERT_EQ(useRecords(recordKW), 0);
    const double T1 = fluidConstants.TZ[1], T2 = fluidConstants.TZ[2];
    const double v1 = 1.0 / fluidConstants.RHOZ[1], v2 = 1.0 / fluidConstants.RHOZ[2];
    const double x1 = 0.35, x2 = 0.65, a = x1 * x2, F[] = {1.05, 0.97, 1.02, 1.4, 0.8, 0.0};
    const double v12 = std::pow(std::cbrt(v1) + std::cbrt(v2), 3) / 8.0;
    const double powers = std::pow(x1, F[3]) * std::pow(x2, F[4]);
    struct Row {
        const char* tag;
        double dT, dV;
    };
    const Row rows[] = {
        {"KW0", 2.0 * F[0] * F[1] * std::sqrt(T1 * T2) * a / (F[0] * F[0] * x1 + x2) - a * (T1 + T2),
         2.0 * F[2] * F[3] * v12 * a / (F[2] * F[2] * x1 + x2) - a * (v1 + v2)},
        {"LJ1", F[0] * powers, F[1] * a},
        {"LM1", powers * (F[0] - 1.0) * (T1 + T2), a * (F[1] - 1.0) * (v1 + v2)},
        {"LIN", a * (F[0] - 1.0) * (T1 + T2), a * (F[1] - 1.0) * (v1 + v2)},
        {"TR1", x1 * (1.0 - std::pow(x1, F[2])) * F[0] * (T1 + T2) - a * (T1 + T2),
         x1 * (1.0 - std::pow(x1, F[3])) * F[1] * (v1 + v2) - a * (v1 + v2)},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.tag);
        MixingPair& p = mixingParameters.pair[1][2];
        p.HMODMX = row.tag;
        for (int k = 1; k <= 6; ++k) p.FMIX[k] = F[k - 1];
        mixingParameters.AMMONIAWATER = 1;
        forgetReducingValues();  // as every routine that writes a parameter
        double Tr = 0.0, Dr = 0.0;
        REDHMX(fractions({x1, x2}), Tr, Dr);
        EXPECT_NEAR(Tr, x1 * T1 + x2 * T2 + row.dT, 1e-12 * Tr);
        EXPECT_NEAR(1.0 / Dr, x1 * v1 + x2 * v2 + row.dV, 1e-13 / Dr);
        // by the rule of the first pair for all: the same where it is that of KW or LJ, and there is none for others
        const bool forAll = std::string_view(row.tag) == "KW0" || std::string_view(row.tag) == "LJ1";
        double Tall = 0.0, Dall = 0.0;
        RDXHMX(-1, 0, 0, fractions({x1, x2}), Tall, Dall, ierr, herr);
        EXPECT_EQ(ierr, forAll ? 0 : 190);
        if (!forAll) continue;
        EXPECT_NEAR(Tall, Tr, 1e-12 * Tr);
        EXPECT_NEAR(1.0 / Dall, 1.0 / Dr, 1e-13 / Dr);
        for (const int i : {1, 2}) {
            RDXHMX(-1, 0, 0, unitComposition(i), Tall, Dall, ierr, herr);
            EXPECT_NEAR(Tall, fluidConstants.TZ[i], 1e-12 * Tall) << "one component alone";
            EXPECT_NEAR(Dall, fluidConstants.RHOZ[i], 1e-12 * Dall);
        }
        modelTags.HEOS = "PR";
        RDXHMX(-1, 0, 0, fractions({x1, x2}), Tall, Dall, ierr, herr);
        EXPECT_EQ(ierr, 190) << "under the cubic equation";
        modelTags.HEOS = "HMX";
    }
}

TEST_F(MixingFile, DerivativesOfComponentsThatAreNoneAreRefused) {
    ASSERT_EQ(useRecords(recordKW), 0);
    const Composition x = fractions({0.4, 0.6});
    struct Row {
        int ix, first, second, code;
    };
    for (const Row& row :
         {Row{1, 1, 0, 0}, Row{2, 2, 0, 0}, Row{11, 1, 2, 0}, Row{3, 1, 2, 191}, Row{-2, 1, 2, 191}, Row{1, 0, 0, 191},
          Row{1, 3, 0, 191}, Row{2, 3, 0, 191}, Row{11, 1, 0, 191}, Row{11, 1, 3, 191}, Row{11, 3, 1, 191}}) {
        double Tr = 7.0, Dr = 7.0;
        RDXHMX(row.ix, row.first, row.second, x, Tr, Dr, ierr, herr);
        EXPECT_EQ(ierr, row.code) << row.ix << ' ' << row.first << ' ' << row.second;
        if (row.code != 0) {
            EXPECT_TRUE(Tr == 0.0 && Dr == 0.0);
            EXPECT_EQ(message(), "[RDXHMX error 191] Derivative not available");
        }
    }
}

TEST_F(MixingFile, ADepartureOfNothingIsZero) {
    ASSERT_EQ(useRecords(recordKW), 0);
    const Composition x = fractions({0.4, 0.6});
    EXPECT_NE(PHIMIX(1, 2, 0, 1, 1.1, 0.5, x), 0.0);
    EXPECT_EQ(PHIMIX(1, 1, 0, 1, 1.1, 0.5, x), 0.0);
    EXPECT_EQ(PHIMIX(1, 2, 0, 1, 0.0, 0.5, x), 0.0);
    EXPECT_EQ(PHIMIX(1, 2, 0, 1, 1.1, 0.0, x), 0.0);
    for (const auto& [itau, idel] : {std::pair{-1, 0}, std::pair{0, -1}, std::pair{4, 0}, std::pair{0, 4}}) {
        EXPECT_EQ(PHIMIX(1, 2, itau, idel, 1.1, 0.5, x), 0.0);
        EXPECT_EQ(sumOfDepartures(itau, idel, 1.1, 0.5, x, 0.0), 0.0);
    }
    EXPECT_EQ(sumOfDepartures(0, 1, 0.0, 0.5, x, 0.0), 0.0);
    EXPECT_EQ(sumOfDepartures(0, 1, 1.1, 0.0, x, 0.0), 0.0);
    EXPECT_EQ(sumOfDepartures(0, 1, 1.1, 0.5, unitComposition(2), 0.0), 0.0);
    EXPECT_EQ(sumOfDepartures(0, 1, 1.1, 0.5, x, 0.0), PHIMIX(1, 2, 0, 1, 1.1, 0.5, x));
    const DepartureOrder orders[] = {{0, 1}};
    double value = 7.0;
    EXPECT_FALSE(departuresOfPair(1, 1, orders, 1.1, 0.5, &value));
    EXPECT_FALSE(departuresOfPair(1, 2, orders, 0.0, 0.5, &value));
    EXPECT_FALSE(departuresOfPair(1, 2, orders, 1.1, 0.0, &value));
    EXPECT_EQ(value, 7.0);
    EXPECT_TRUE(departuresOfPair(1, 2, orders, 1.1, 0.5, &value));
    EXPECT_NEAR(value * x[1] * x[2], PHIMIX(1, 2, 0, 1, 1.1, 0.5, x), 1e-15);
}

// The cubic equation leaves only the linear rules.
TEST_F(MixingFile, TheCubicEquationHasOnlyTheLinearRules) {
    ASSERT_EQ(useRecords(recordKW), 0);
    modelTags.HEOS = "PR";
    for (const char* tag : {"KW0", "LJ1", "TR1", "LIN", "LM1"}) {
        mixingParameters.pair[1][2].HMODMX = tag;
        double Tr = 0.0, Dr = 0.0;
        RDXHMX(0, 0, 0, fractions({0.4, 0.6}), Tr, Dr, ierr, herr);
        EXPECT_EQ(ierr, tag[0] == 'L' && tag[1] != 'J' ? 0 : 190) << tag;
    }
}

// ---- estimates --------------------------------------------------------------------------------------------------

TEST_F(MixingFile, APairWithoutARecordRunsWithItsEstimate) {
    ASSERT_EQ(setUp({"R227EA", "R236EA"}), -117);
    EXPECT_EQ(message(), estimateText);
    EXPECT_EQ(origin(), "estimated by ESTBNC");
    EXPECT_EQ(citation(),
              "No mixture data are available for this binary pair. The mixing parameters have been estimated.");
    EXPECT_EQ(pair().HMODTC, "TC1");
    EXPECT_EQ(pair().HMODVC, "VC1");
    EXPECT_EQ(pair().FTCIJ[1], 0.0);
    EXPECT_EQ(pair().HMODMX, "KW0");
    double p = 0.0;
    PRESS(300.0, 0.1, fractions({0.5, 0.5}), p);
    EXPECT_GT(p, 200.0);
    EXPECT_LT(p, 250.0);
}

TEST_F(MixingFile, OnePairWithoutARecordIsEnoughForTheWarning) {
    ASSERT_EQ(setUp({"R32", "R227EA", "R236EA"}), -117);
    EXPECT_EQ(message(), estimateText);
    EXPECT_EQ(origin(1), dataFile("HMX.BNC"));
    EXPECT_EQ(origin(2), dataFile("HMX.BNC"));
    EXPECT_EQ(origin(3), "estimated by ESTBNC");
}

// The arithmetic of the estimate from the constants of the fluid files.
TEST_F(MixingFile, EstimatesFollowFromTheCriticalConstants) {
    struct Fluid {
        const char* name;
        double Tc, pc, acentric, rhoc;
    };
    struct Row {
        Fluid first, second;  // first the one of the larger dipole moment
        bool turned;          // the set-up names it second
    };
    // dipole moments: R123 1.356, R11 0.45; R227ea 1.456, CF3I 0.92
    const Row rows[] = {
        {{"R123", 456.831, 3661.8, 0.281922, 3.596417}, {"R11", 471.11, 4407.638, 0.188751, 4.032962}, false},
        {{"R123", 456.831, 3661.8, 0.281922, 3.596417}, {"R11", 471.11, 4407.638, 0.188751, 4.032962}, true},
        {{"R227EA", 374.9, 2925.0, 0.357641, 3.495}, {"CF3I", 396.44, 3953.0, 0.176181, 4.4306}, false},
        {{"R227EA", 374.9, 2925.0, 0.357641, 3.495}, {"CF3I", 396.44, 3953.0, 0.176181, 4.4306}, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.first.name);
        const Fluid &a = row.first, &b = row.second;
        ASSERT_EQ(setUp(row.turned ? Names{b.name, a.name} : Names{a.name, b.name}), -117);
        const double rT = b.Tc / a.Tc, rp = b.pc / a.pc, rw = b.acentric / a.acentric;
        const double F1 = (40.4 - 25.03 * std::pow(2.0, rT / rp / rw)) / rT;
        const double gammaT = (F1 + a.Tc + b.Tc) / (2.0 * std::sqrt(a.Tc * b.Tc));
        const double va = 1.0 / a.rhoc, vb = 1.0 / b.rhoc;
        const double gammaV = (va + vb) / (2.0 * std::pow(std::cbrt(va) + std::cbrt(vb), 3) / 8.0);
        for (const MixingPair* p : {&mixingParameters.pair[1][2], &mixingParameters.pair[2][1]}) {
            EXPECT_EQ(p->HMODMX, "KW0");
            EXPECT_EQ(p->FMIX[1], 1.0);
            EXPECT_NEAR(p->FMIX[2], gammaT, 1e-14);
            EXPECT_EQ(p->FMIX[3], 1.0);
            EXPECT_NEAR(p->FMIX[4], gammaV, 1e-14);
            EXPECT_EQ(p->FMIX[5], 0.0);
            for (int k = 1; k <= 4; ++k) EXPECT_EQ(p->FMIX2[k], 1.0);
        }
        // as it was before it became a pair of the KW rule
        ESTBNC(1, 2, 1, ierr, herr);
        EXPECT_EQ(ierr, -117);
        for (const MixingPair* p : {&mixingParameters.pair[1][2], &mixingParameters.pair[2][1]}) {
            EXPECT_EQ(p->HMODMX, "LJ6");
            EXPECT_NEAR(p->FMIX[1], F1, 1e-12);
            EXPECT_EQ(p->FMIX[2], 0.0);
            EXPECT_EQ(p->FMIX[3], 0.0);
            EXPECT_EQ(p->FMIX[4], 1.0);
            EXPECT_EQ(p->FMIX[5], 1.0);
            EXPECT_EQ(p->FMIX[6], 0.0);
        }
    }
}

// The same mixture before and after an estimate becomes a pair of the KW rule.
TEST_F(MixingFile, AnEstimateTurnedIntoTheKwRuleIsTheSameMixture) {
    ASSERT_EQ(setUp({"R123", "R11"}), -117);
    const Composition x = fractions({0.3, 0.7});
    double Tk = 0.0, Dk = 0.0, Tl = 0.0, Dl = 0.0;
    REDHMX(x, Tk, Dk);
    ESTBNC(1, 2, 1, ierr, herr);
    REDHMX(x, Tl, Dl);
    EXPECT_NEAR(Tk, Tl, 1e-12 * Tl);
    EXPECT_NEAR(Dk, Dl, 1e-14 * Dl);
}

TEST_F(MixingFile, EstimatesOfMadeUpConstants) {
    ASSERT_EQ(setUp({"R123", "R11"}), -117);
    struct Row {
        const char* what;
        double dipole1, dipole2;
        double rT, rp, rw;  // of the second component over the first
        double F1;
        int code;
    };
    const auto formula = [](double rT, double rp, double rw) {
        return (40.4 - 25.03 * std::pow(2.0, rT / rp / rw)) / rT;
    };
    const Row rows[] = {
        {"by dipole moments", 1.0, 0.5, 1.1, 0.9, 1.2, formula(1.1, 0.9, 1.2), -117},
        {"by dipole moments, the second larger", 0.5, 1.0, 1.1, 0.9, 1.2, formula(1 / 1.1, 1 / 0.9, 1 / 1.2), -117},
        {"dipole moments that just differ", 0.5, 0.50001, 1.1, 0.9, 1.2, formula(1 / 1.1, 1 / 0.9, 1 / 1.2), -117},
        // Tc / (pc omega) of the second is 1.1 / (0.9 * 1.2) of the first, so the second is taken first
        {"dipole moments that are equal", 0.5, 0.500001, 1.1, 0.9, 1.2, formula(1 / 1.1, 1 / 0.9, 1 / 1.2), -117},
        {"equal moments, the first larger", 0.5, 0.5, 1.1, 1.3, 1.2, formula(1.1, 1.3, 1.2), -117},
        {"inverted", 1.0, 0.0, 1.1, 2.0, 0.05, formula(1 / 1.1, 0.5, 20.0), -117},
        {"not inverted: acentric factors too near", 1.0, 0.0, 1.1, 1.0, 0.15, -500.0, 117},
        {"not inverted: temperatures too far", 1.0, 0.0, 1.3, 6.0, 0.04, -500.0, 117},
        {"limited below", 1.0, 0.0, 1.0, 1.0, 0.2, -500.0, 117},
        {"outside the range", 1.0, 0.0, 1.0, 1.0, 0.3, formula(1.0, 1.0, 0.3), 117},
        {"limited above", 1.0, 0.0, 0.02, 1.0, 1.0, 500.0, 117},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        FluidConstants& c = fluidConstants;
        c.TCRIT[1] = 400.0;
        c.PCRIT[1] = 4000.0;
        c.ACCEN[1] = 0.3;
        c.TCRIT[2] = 400.0 * row.rT;
        c.PCRIT[2] = 4000.0 * row.rp;
        c.ACCEN[2] = 0.3 * row.rw;
        c.DIPOLE[1] = row.dipole1;
        c.DIPOLE[2] = row.dipole2;
        ESTBNC(1, 2, 1, ierr, herr);
        EXPECT_EQ(ierr, row.code);
        EXPECT_NEAR(pair().FMIX[1], row.F1, 1e-10);
        EXPECT_EQ(mixingParameters.pair[2][1].FMIX[1], pair().FMIX[1]);
        EXPECT_EQ(message(), row.code == -117
                                 ? estimateText
                                 : "[SETUP error 117] No mixture data are available for one or more binary pairs in "
                                   "the specified mixture. The mixture is outside the range of the model and "
                                   "calculations will not be made.");
    }
}

TEST_F(MixingFile, FluidsOutsideTheEstimateAreRefused) {
    const std::string text =
        "[SETUP error 117] Estimation of mixing parameters is not possible for most mixtures containing water, heavy "
        "water, helium, hydrogen, parahydrogen, deuterium, neon, ammonia, fluorine, methanol, or ethanol.";
    EXPECT_EQ(setUp({"AMMONIA", "R218"}), 117);
    EXPECT_EQ(message(), text);
    EXPECT_EQ(pair().HMODMX, "LJ6");
    EXPECT_EQ(citation(), "Estimation of mixing parameters is not possible for this mixture.");
    EXPECT_EQ(origin(), "estimated by ESTBNC");

    ASSERT_EQ(setUp({"R123", "R11"}), -117);
    const Text12 known = fluidFiles.HCAS[2];
    for (const char* cas : {"7732-18-5", "7789-20-0", "7664-41-7", "7440-59-7", "1333-74-0", "1333-74-0p", "7440-01-9",
                            "7782-41-4", "7782-39-0", "67-56-1", "64-17-5", "7783-54-2"})
        for (const int i : {1, 2}) {
            fluidFiles.HCAS[1] = fluidFiles.HCAS[2] = known;
            fluidFiles.HCAS[i] = cas;
            ESTBNC(1, 2, 1, ierr, herr);
            EXPECT_EQ(ierr, 117) << cas;
            EXPECT_EQ(message(), text);
        }
    fluidFiles.HCAS[1] = fluidFiles.HCAS[2] = "71-23-8";  // other alcohols are estimated
    ESTBNC(1, 2, 1, ierr, herr);
    EXPECT_EQ(ierr, -117);
}

TEST_F(MixingFile, AnErrorOutlivesTheWarningsOfOtherPairs) {
    // 1-2 without a record, 1-3 outside the estimate, 2-3 likewise
    EXPECT_EQ(setUp({"R218", "R123", "AMMONIA"}), 117);
    EXPECT_EQ(setUp({"AMMONIA", "R218", "R123"}), 117);
}

TEST_F(MixingFile, EstimatedCriticalLinesAreStraight) {
    ASSERT_EQ(useRecords(dataLine(pair12, "KW0", numbersKW) + dataLine("", "TC1", "1 2 3 4 5 6") +
                         dataLine("", "VC1", "1 2 3 4 5 6") + dataLine("", "PR1", "1 2 3 4 5 6") + endOfRecord),
              0);
    EXPECT_EQ(pair().HPRKIJ, "PR1");
    ESTTC(1, 2, ierr, herr);
    EXPECT_EQ(ierr, 0);
    ESTVC(2, 1, ierr, herr);
    EXPECT_EQ(ierr, 0);
    for (const MixingPair* p : {&mixingParameters.pair[1][2], &mixingParameters.pair[2][1]}) {
        EXPECT_EQ(p->HMODTC, "TC1");
        EXPECT_EQ(p->HMODVC, "VC1");
        EXPECT_TRUE(p->HPRKIJ.blank());
        for (int k = 1; k <= 11; ++k) {
            EXPECT_EQ(p->FTCIJ[k], 0.0);
            EXPECT_EQ(p->FVCIJ[k], 0.0);
        }
    }
}

}  // namespace
}  // namespace frigana::test
