// Every kind of section of a fluid file, damaged line by line: whatever is wrong with a line is told with that line,
// and a file that ends within a section is not taken for a whole one.
#include <cctype>
#include <filesystem>
#include <sstream>
#include <utility>
#include <vector>

#include "FluidText.h"
#include "TreeFolders.h"

namespace frigana::test {
namespace {

// A section of a file, and what the file needs beside it.
struct Kind {
    const char* name;
    std::string section;  // from its key on
    std::string others;   // sections in front of it
    std::string version{"10.0"};
    bool ownMessages{false};  // its reader words the failure itself, and the set-up passes that on
};

std::string section(const std::string& key, const std::string& tag, const std::string& body) {
    return "#" + key + "\n" + tag + "  section of a test\n?source\n!\n" + body;
}

const std::string limits = "  100.0\n  1000.0\n  50000.0\n  30.0\n";
const std::string equation = helmholtzSection("#", "FEQ", "52.0") + plainHeatCapacity;
const std::string dilute = "  +1 +1 +0 +0 +0 +0\nNUL\n  0.5\n  300.0\n  1.0 1.0\n  0.2 0.5\n  0.1 0.0\n";
const std::string virial = "  +1 300.0 0.1\n  -19.5 0.0\n";
const std::string chungTail = "  0.3 0.1 0.0 +1\n  6.3 50.4 -51.6 1189.0\nNUL\n";
const std::string coefficients13 = "  0.1\n  0.2\n  0.3\n  0.4 0.5\n  1 2 3 4 5 6 7 8\n";
const std::string crossoverRows = "  300.0 5.0 0.001\n  0.1 0.0 1.0 0.0 0.0 0\n";

// The head of an equation of state up to its gas constant, without it.
const std::string equationHead = limits +
                                 "CPP\n  52.0\n  136.34\n  0.048\n  27.0\n  221.5\n  0.2769\n"
                                 "  351.255  5782.0  8.15\n  351.255  8.15\n";

std::string ancillary(const std::string& key, const std::string& tag, const std::string& counts) {
    return section(key, tag,
                   "  136.0\n  351.255\nupper pressure\nupper density\n  351.255  5782.0\n" + counts +
                       "\n  -7.4 1.0\n  1.5 1.5\n");
}

std::string countedHelmholtz() {
    std::string text = helmholtzSection("#", "FEQ", "52.0");
    constexpr std::string_view counts = "  2 4 0 0 0 0\n";
    return text.replace(text.find(counts), counts.size(), "  +2 4 +0 0 0 0\n");
}

std::vector<Kind> kinds() {
    std::vector<Kind> all = {
        {"FEQ", countedHelmholtz(), plainHeatCapacity},
        {"BWR",
         section("EOS", "BWR",
                 equationHead + "  6.0\n  0.08314471\n  32 1\n" +
                     "  0.1 0.1 0.1\n  0.1 0.1 0.1\n  0.1 0.1 0.1\n"
                     "  0.1 0.1 0.1\n  0.1 0.1 0.1\n  0.1 0.1 0.1\n"
                     "  0.1 0.1 0.1\n  0.1 0.1 0.1\n  0.1 0.1 0.1\n"
                     "  0.1 0.1 0.1\n  0.1 0.1\n"),
         plainHeatCapacity},
        {"QUI",
         section("EOS", "QUI",
                 equationHead + "  8.314472\n  +1 +1 +1 +1 +1\n  0.22 0.0 0.0\n  7.6 0.0 0.0\n  1.3 0.0 0.0\n"
                                "  0.5 0.0 0.0\n  0.1 0.0 0.0\n"),
         plainHeatCapacity},
        {"ECS",
         section("EOS", "ECS",
                 limits + "CPP\nPROPANE.FLD\nFEQ\n  0.1521\n  0.276\n  0.25\n  351.255\n  5782.0\n  8.15\n"
                          "  +1\n  0.1 0.0\n  +1\n  0.1 0.0\n  +1\n  0.1 0.0\n  +0\n"),
         plainHeatCapacity},
        {"PR",
         section("EOS", "PR ",
                 limits + "CPP\n  52.0\n  0.2769\n  351.255\n  5782.0\n  8.15\n  8.314472\n  +2\n  0.5\n  0.1\n"),
         equation},
        {"CPP",
         heatCapacitySection("CPP", "  +1 +1 +1 +0 0 0 0", "  4.0 0.0\n  1.0 500.0\n  1.0 -2.0 500.0 -1.0 -2.0\n"),
         helmholtzSection("#", "FEQ", "52.0")},
        {"CPP of old files", heatCapacitySection("CPP", "  +1 +1", "  4.0 0.0\n  1.0 500.0\n"),
         helmholtzSection("#", "FEQ", "52.0"), "6.0"},
        {"PH0",
         section("AUX", "PH0", limits + "  +1 +2 +1 +0 +0 +0 +0 +0\n  3.0 1.0\n  1.0 0.0\n  1.0 1.0\n  1.0 -2.0\n"),
         helmholtzSection("#", "FEQ", "52.0", "PH0")},
        {"PH0 of old files",
         section("AUX", "PH0", limits + "  +1 +2 +1\n  3.0 1.0\n  1.0 0.0\n  1.0 1.0\n  1.0 -2.0\n"),
         helmholtzSection("#", "FEQ", "52.0", "PH0"), "7.0"},
        {"user data", section("AUX", "UND", limits + "  1\n  +2\n  0.9\n  0.8\n"), equation},
        {"VS0",
         section("ETA", "VS0",
                 limits + "R23\n  +1 0 +1 +0 +0 +0 +0\nNUL\n  0.5\n  300.0\n  1.0 1.0\n  0.2 0.5\n  1.0 1.0 1.0\n"
                          "  0.5 1.0 1.0 0.0 0\nNUL\n"),
         equation},
        {"VS1",
         section("ETA", "VS1",
                 limits + dilute + virial + "  1 +1 +1 +1 +1 +1\n  300.0 5.0 1.0\n" +
                     "  0.5 1.0 1.0 0.0 0\n  0.5 1.0 1.0 0.0 0\n  0.5 1.0 1.0 0.0 0\n"
                     "  0.5 1.0 1.0 0.0 0\n  0.5 1.0 1.0 0.0 0\n  0.5 1.0 1.0 0.0 0\nNUL\n"),
         equation},
        {"VS2",
         section("ETA", "VS2",
                 limits + "NUL\n  0.5\n  300.0\n  0.1 0.5\n  1.0\n  0.5\n  1.2\n  300.0\n  -2.0\n  150.0\n  1.0\n"
                          "  20.0\n  0.3\n  10.0\n  1000.0\n  4.9\nNUL\n"),
         equation},
        {"VS2 of old files",
         section("ETA", "VS2",
                 limits + "NUL\n  0.5\n  300.0\n  0.1 0.5\n  1.0\n  0.5\n  1.2\n  300.0\n  -2.0\n  150.0\n  1.0\n"
                          "  20.0\n  0.3\n  10.0\n  1000.0\nNUL\n"),
         equation, "6.0"},
        {"VS4 of old files",
         section("ETA", "VS4",
                 limits + dilute + virial +
                     "  0 0 0 1\n  1e-5 0 0 1\n  0 0 0 1\n  0 0 0 1\n  0 0 0 1\n  0 0 0 1\n  1e-9 0 0 1\nNUL\n"),
         equation, "6.0"},
        {"TRN of old files",
         section("TRN", "ECS",
                 limits + "FEQ R134A.FLD\nVS1\nTC1\n  1\n  0.4\n  300.0\n  +1 +1 0\n  1.0 0.0 0.0 0.0\n"
                          "  0.1 0.0 1.0 0.0\n  +1 +0 0\n  1.0 0.0 0.0 0.0\nNUL\n"),
         equation, "6.0"},
        {"VS3",
         section("ETA", "VS3",
                 limits + "  +2 +1\n  300.0 10.0\n  1.0 0.0\n  0.5 1.0\n  1.0 0.5\n  +1 +1\n  300.0 5.0 2.0\n"
                          "  3.0 1.0 1.0\n  1.0 0.0 0.0\nNUL\n"),
         equation},
        {"VS4",
         section(
             "ETA", "VS4",
             limits + dilute + virial +
                 "  0 0 0 1\n  1e-5 0 0 1\n  0 0 0 1\n  0 0 0 1\n  0 0 0 1\n  0 0 0 1\n  1e-9 0 0 1\n  0 0 0 1\nNUL\n"),
         equation},
        {"VS5", section("ETA", "VS5", limits + dilute + virial + chungTail), equation},
        {"TC0",
         section("TCX", "TC0",
                 limits + "R23\n  +1 +0 +1 +0\n  300.0 5.0 0.001\n  1.0 0.0 0.0 0.0 0\n  1.0 0.0 1.0 0.0 0\nNUL\n"),
         equation},
        {"TC1",
         section("TCX", "TC1",
                 limits + "  +1 +1\n  300.0 1.0\n  0.01 0.0\n  1.0 0.0\n  +1 +1\n  300.0 5.0 0.001\n  1.0 0.0 1.0 0.0\n"
                          "  1.0 0.0 0.0 0.0\nNUL\n"),
         equation},
        {"TC2",
         section("TCX", "TC2",
                 limits + "NUL\n" + coefficients13 + "TK2\n  1 2 3 4\n  5.0\n  6.0\n  1 2 3 4\n  1 2 3 4 5 6 7\n"),
         equation},
        {"TC3",
         section("TCX", "TC3",
                 limits + "  0.5\n  300.0\n  0.1 0.5\n  1 2 3 4 5 6 7 8 9\n  1 2 3 4 5 6 7 8 9 10 11 12\n  1 2\nNUL\n"),
         equation, "10.0", true},
        {"TC5",
         section("TCX", "TC5",
                 limits + "  0.5\n  300.0\n  0.3 0.1 0.0\n  2.4 0.7 -0.9 121.0\n  -0.5 -1.5 -5.0 70.0\n"
                          "  6.6 5.6 64.8 27.0\n  14.5 -8.9 -5.6 74.3\n  +1\n  0.8 0.6 -0.4 -10.0\nNUL\n"),
         equation, "10.0", true},
        {"ST1",
         section("STN", "ST1",
                 "  100.0\n  351.0\nupper pressure\n  0.0\n  +2\ncritical temperature\n  0.07 1.2\n  0.01 1.5\n"),
         equation},
        {"TRN",
         section("TRN", "ECS",
                 limits + "FEQ R134A.FLD\nVS1\nTC1\n  1\n  0.4\n  300.0\n  +1\n  0.00132 0.0 0.0 0.0\n  +1 +1 0\n"
                          "  1.0 0.0 0.0 0.0\n  0.1 0.0 1.0 0.0\n  +1 +0 0\n  1.0 0.0 0.0 0.0\nNUL\n"),
         equation},
        {"MLT", ancillary("MLT", "ML1", "  +2 +0 +0 0 0 0"), equation},
        {"SBL", ancillary("SBL", "SB1", "  +2 +0 +0 0 0 0"), equation},
        {"PS", ancillary("PS ", "PS5", "  +2 0 0 0 0 0"), equation},
        {"PL", ancillary("PL ", "PL5", "  +2 0 0 0 0 0"), equation},
        {"DL", ancillary("DL ", "DL1", "  +2 0 0 0 0 0"), equation},
        {"DV", ancillary("DV ", "DV3", "  +2 0 0 0 0 0"), equation},
        {"DE",
         section("DE ", "DE3",
                 "  136.0\n  500.0\nupper pressure\nupper density\n  273.16 1.0 1.0\n  +1 +1 +0 0 0 0\n  5.0 0.0 1.0 "
                 "0.0\n  9.0 0.0 1.0 0.0\n"),
         equation},
    };
    for (const char* tag : {"CI1", "CI2"})
        all.push_back({tag,
                       section("AUX", tag,
                               std::string("four\nlimits\npassed\nover\n  +2\n") +
                                   (tag[2] == '1' ? "  0.4 0\n  -0.5 1\n" : "  0.4\n  -0.5\n")),
                       equation + section("ETA", "VS1",
                                          limits + "  0 0 0 0 0 0\n" + tag +
                                              "\n  0.5\n  300.0\n  1.0 1.0\n  0 1.0 1.0\n"
                                              "  0 0 0 0 0 0\n  1.0 1.0 1.0\nNUL\n")});
    const auto enhancement = [&](const char* tag, const std::string& body) {
        all.push_back(
            {tag, section("AUX", tag, limits + body),
             equation + section("TCX", "TC1", limits + "  0 0\n  300.0 1.0\n  0 0\n  300.0 5.0 0.001\n" + tag + "\n")});
    };
    enhancement("TK1", "  +1 +0 +1 0\n" + crossoverRows + "  300.0 5.0\n  0.1 0.0 1.0 0.0 0.0 0\n");
    enhancement("TK3", "  +1 +0 +0 0\n" + crossoverRows);
    enhancement("TK4", "  +1 +1 +0 0\n  300.0 5000.0 5.0 0.001\n  0.1 0.0 1.0 0.0 0.0 0\n  0.1 0.0 1.0 0.0 0.0 0\n");
    return all;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

std::string textOf(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

bool isNumeric(const std::string& line) {
    return !line.empty() && line.find_first_not_of(" +-.0123456789eE") == std::string::npos;
}

class DamagedSection : public EngineTest {
  protected:
    // Reference fluids are looked for beside the file of the fluid.
    void SetUp() override {
        EngineTest::SetUp();
        for (const char* reference : {"PROPANE.FLD", "R134A.FLD"})
            std::filesystem::copy_file(std::filesystem::path(dataFolder) / "fluids" / reference,
                                       folder.path(reference));
    }

    // Sets up a file whose section has the given lines; returned is the code, first is the line on which they begin.
    int read(const Kind& kind, const std::string& section, const std::string& behind) {
        Header header;
        header.version = kind.version;
        const std::string front = headerText(header) + "\n" + kind.others;
        first = static_cast<int>(linesOf(front).size()) + 1;
        renew();
        return setUp({write("ONE.FLD", front + section + behind)});
    }
    std::string line(std::size_t k) const {
        return "ONE.FLD, line " + std::to_string(first + static_cast<int>(k)) + ": ";
    }

    static constexpr std::size_t head = 4;  // key, tag, source and the line behind it
    int first = 0;
};

TEST_F(DamagedSection, IsReadWhereItIsWhole) {
    for (const Kind& kind : kinds())
        EXPECT_LE(read(kind, kind.section, endOfFile), 0) << kind.name << ": " << message();
}

// Keys may stand in lower case, and a viscosity under two names: what is read is the same.
TEST_F(DamagedSection, MayHaveItsKeyInLowerCase) {
    int keys = 0;
    for (const Kind& kind : kinds()) {
        const std::string key = kind.section.substr(1, 3);
        if (key == "AUX") continue;
        ASSERT_LE(read(kind, kind.section, endOfFile), 0) << kind.name;
        const auto tags = [] {
            const ModelTags& m = modelTags;
            std::string all;
            for (const Text3& tag :
                 {m.HMXEOS[1], m.HETA[1], m.HTCX[1], m.HSTENK[1], m.HDIELK[1], m.HMELTK[1], m.HSUBLK[1], m.HPSK[1],
                  m.HPLK[1], m.HDLK[1], m.HDVK[1], m.HETACR[1], m.HTCXCR[1], m.HTCXCRECS[1]})
                all += std::string(tag.view()) + ' ';
            return all;
        };
        const std::string expected = tags();
        std::string lower = key;
        for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        for (const std::string& name :
             key == "ETA" ? std::vector<std::string>{lower, "VIS", "vis"} : std::vector{lower}) {
            std::string section = kind.section;
            ASSERT_LE(read(kind, section.replace(1, 3, name), endOfFile), 0) << kind.name << ": " << message();
            EXPECT_EQ(tags(), expected) << name;
            ++keys;
        }
    }
    EXPECT_GT(keys, 25);
}

// A model that was not asked for, and a fluid without transport, leave their sections unread.
TEST_F(DamagedSection, IsNotReadWhereAnotherModelWasAskedFor) {
    for (const Kind& kind : kinds()) {
        const std::string key = kind.section.substr(1, 3), tag = kind.section.substr(5, 3);
        if (key != "ETA" && key != "TCX") continue;
        renew();
        ASSERT_EQ(force(key.c_str(), "NBS", {"NUL"}), 0);
        const std::string damaged = "#" + key + "\n" + tag + " model\n!\n  word\n";
        const std::string front = headerText({}) + "\n" + kind.others;
        EXPECT_LE(setUp({write("ONE.FLD", front + damaged + endOfFile)}), 0) << kind.name << ": " << message();
        EXPECT_EQ(key == "ETA" ? modelTags.HETA[1] : modelTags.HTCX[1], "NUL") << kind.name;
    }
    renew();
    ASSERT_EQ(force("ETA", "NUL", {"NUL"}), 0);
    modelTags.HTCXTOP = "NUL";
    EXPECT_LE(setUp({write("ONE.FLD", headerText({}) + "\n" + equation + "#TRN\nECS model\n!\n  word\n" + endOfFile)}),
              0)
        << message();
}

TEST_F(DamagedSection, AFileThatEndsWithinItIsRefused) {
    int cuts = 0;
    for (const Kind& kind : kinds()) {
        const std::vector<std::string> lines = linesOf(kind.section);
        for (std::size_t k = 1; k < lines.size(); ++k) {
            EXPECT_EQ(read(kind, textOf({lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(k)}), ""), 102)
                << kind.name << ", cut behind line " << k << ": " << message();
            ++cuts;
        }
    }
    EXPECT_GT(cuts, 400);
}

TEST_F(DamagedSection, AWordInPlaceOfANumberIsToldWithItsLine) {
    int words = 0;
    for (const Kind& kind : kinds()) {
        std::vector<std::string> lines = linesOf(kind.section);
        for (std::size_t k = head; k < lines.size(); ++k) {
            if (!isNumeric(lines[k])) continue;
            const std::string whole = std::exchange(lines[k], "  word");
            EXPECT_GT(read(kind, textOf(lines), endOfFile), 0) << kind.name << ", line " << k << ": " << whole;
            EXPECT_NE(message().find(line(k) + "expected "), std::string::npos) << kind.name << ": " << message();
            EXPECT_NE(message().find("found 'word'"), std::string::npos) << kind.name << ": " << message();
            lines[k] = whole;
            ++words;
        }
    }
    EXPECT_GT(words, 300);
}

// A count that no table can hold is refused on its line; so is a negative one.
TEST_F(DamagedSection, ACountBeyondItsTableIsToldWithItsLine) {
    int counts = 0;
    for (const Kind& kind : kinds()) {
        std::vector<std::string> lines = linesOf(kind.section);
        for (std::size_t k = head; k < lines.size(); ++k) {
            const std::string whole = lines[k];
            for (auto at = whole.find('+'); at != std::string::npos; at = whole.find('+', at + 1))
                for (const char* number : {"999", "-1"}) {
                    lines[k] = whole.substr(0, at) + number + whole.substr(at + 2);
                    EXPECT_GT(read(kind, textOf(lines), endOfFile), 0) << kind.name << ": " << lines[k];
                    EXPECT_NE(message().find(line(k) + "expected number of "), std::string::npos)
                        << kind.name << ": " << lines[k] << ": " << message();
                    EXPECT_NE(message().find(std::string("found ") + number), std::string::npos)
                        << kind.name << ": " << lines[k] << ": " << message();
                    ++counts;
                }
            lines[k] = whole;
        }
    }
    EXPECT_GT(counts, 150);
}

}  // namespace
}  // namespace frigana::test
