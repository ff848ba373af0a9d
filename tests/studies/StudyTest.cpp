// Descriptions of studies, the search of an optimum, and rows that a file has whole.
#include "Study.h"

#include <gtest/gtest.h>

#include <cmath>

#include "CaseFile.h"
#include "Rows.h"
#include "Search.h"
#include "TemporaryFolder.h"
#include "Tree.h"

namespace frigana::studies {
namespace {

constexpr const char* chiller = R"(
request = "basic"
fluid = "R134a"
evaporator = { temperature = "-5 °C", superheat = "5 K" }
compressor = { swept_volume = "10 m3/h", isentropic_efficiency = 0.7, volumetric_efficiency = 0.85 }
condenser = { temperature = "40 °C", subcooling = "3 K" }
)";
constexpr const char* hours = "hour,condenser.temperature [°C],fluid\n1,30.5,R134a\n2,28,R290\n\n3,-0.25,R134a\n";

Study read(const std::string& text) {
    catalogue::Node tree;
    const auto problems = catalogue::readToml(text, tree);
    if (!problems.empty()) throw Faulty{problems};
    return Study(tree, [](const std::string& name) -> std::string {
        if (name == "chiller.toml") return chiller;
        if (name == "hours.csv") return hours;
        throw Faulty{{{0, name + " cannot be read"}}};
    });
}

std::string shown(const Study& study, std::size_t number) {
    std::string text;
    for (const Setting& setting : study.settings(number)) text += jsonOf(setting.value) + ' ';
    return text;
}

constexpr const char* keys = "[results]\nkeys = [\"performance.cop_cooling\"]\n";

TEST(Study, CountsAGridWithItsFirstKeyAsTheSlowest) {
    const Study study =
        read(std::string("request = \"chiller.toml\"\n[vary]\nfluid = [\"R134a\", \"R290\"]\n"
                         "evaporator.temperature = { from = \"-10 °C\", to = \"0 °C\", step = \"5 K\" }\n") +
             keys);
    ASSERT_EQ(study.cases(), 6u);
    EXPECT_EQ(shown(study, 0), "\"R134a\" \"-10 °C\" ");
    EXPECT_EQ(shown(study, 1), "\"R134a\" \"-5 °C\" ");
    EXPECT_EQ(shown(study, 5), "\"R290\" \"0 °C\" ");
    EXPECT_EQ(study.fastest(), 3u);
    EXPECT_NE(study.caseRequest(5).find("\"fluid\":\"R290\""), std::string::npos);
}

TEST(Study, TakesItsCasesFromAFile) {
    const Study study =
        read(std::string("request = \"chiller.toml\"\n[cases]\nfile = \"hours.csv\"\nlabels = [\"hour\"]\n") +
             "[vary]\nevaporator.temperature = [\"-5 °C\", \"0 °C\"]\n" + keys);
    ASSERT_EQ(study.cases(), 6u);
    EXPECT_EQ(study.variedKeys(),
              (std::vector<std::string>{"evaporator.temperature", "hour", "condenser.temperature", "fluid"}));
    EXPECT_EQ(shown(study, 0), "\"-5 °C\" 1 \"30.5 °C\" \"R134a\" ");
    EXPECT_EQ(shown(study, 5), "\"0 °C\" 3 \"-0.25 °C\" \"R134a\" ");
    // A label is no key of the request.
    EXPECT_EQ(study.caseRequest(0).find("hour"), std::string::npos);
}

struct FaultyRow {
    const char *text, *told;
};
TEST(Study, SaysWhatIsWrongWithIt) {
    const std::string request = "request = \"chiller.toml\"\n";
    const std::string vary = "[vary]\nfluid = [\"R134a\"]\n";
    const std::string best = "[optimum]\nmaximise = \"performance.cop_cooling\"\n";
    const std::pair<std::string, std::string> rows[] = {
        {vary + keys, "request is missing"},
        {"request = \"none.toml\"\n" + vary + keys, "cannot be read"},
        {request + vary, "results.keys is missing"},
        {request + keys, "nothing varies"},
        {request + "cases = \"none.csv\"\n" + keys, "cannot be read"},
        {request + "cases = \"hours.csv\"\n" + keys, "hour: the request basic has no such key"},
        {request + "[cases]\nfile = \"hours.csv\"\nlabels = [\"hour\", \"day\"]\n" + keys, "has no column day"},
        {request + "[vary]\nfluid = \"R134a\"\n" + keys, "allowed is a list of values"},
        {request + "[vary]\nevaporator.tempereture = [1]\n" + keys, "has no such key"},
        {request + "[vary]\nevaporator.temperature = [1]\nevaporator.pressure = [1]\n" + keys, "say the same thing"},
        {request + vary + keys + best +
             "over = \"condenser.temperature\"\nfrom = \"30 °C\"\nto = \"20 °C\"\ntolerance = \"1 K\"\n",
         "from is not below to"},
        {request + vary + keys + best +
             "over = \"condenser.temperature\"\nfrom = \"30 °C\"\nto = \"50 °C\"\ntolerance = 1\n",
         "all a unit or none"},
        {request + vary + keys + best + "over = \"condenser.temperature\"\nfrom = \"30 °C\"\nto = \"50 °C\"\n",
         "tolerance is missing"},
        {request + vary + keys + best + "over = \"fluid\"\nfrom = 1\nto = 2\ntolerance = 0.1\n", "fluid varies twice"},
        {request + vary + keys + "[optimum]\nover = \"condenser.temperature\"\n", "either maximise or minimise"},
        {request + vary + keys + "[opt]\n", "a study has request, vary"},
    };
    for (const auto& [text, told] : rows) {
        std::string all;
        try {
            read(text);
        } catch (const Faulty& faulty) {
            for (const catalogue::Problem& problem : faulty.problems) all += problem.text + '\n';
        }
        EXPECT_NE(all.find(told), std::string::npos) << text << "\ntold: " << all;
    }
}

TEST(CaseFile, SaysWhatIsWrongWithIt) {
    const FaultyRow rows[] = {{"", "no cases"},
                              {"a,b\n", "no cases"},
                              {"a,b\n1\n", ":2: 1 cells below 2 headings"},
                              {"a [K]\n1\nx\n", ":3: x is no number"}};
    for (const FaultyRow& row : rows) {
        std::string problem;
        readCaseFile(row.text, problem);
        EXPECT_NE(problem.find(row.told), std::string::npos) << row.text << problem;
    }
    std::string problem;
    const auto columns = readCaseFile("\xEF\xBB\xBFname,\"x [bar(g)]\"\r\n\"a, \"\"b\"\"\",1e1\r\n7,2\r\n", problem);
    EXPECT_EQ(problem, "");
    ASSERT_EQ(columns.size(), 2u);
    EXPECT_EQ(columns[0].texts[0].text, "a, \"b\"");
    EXPECT_EQ(columns[0].texts[1].text, "7");
    EXPECT_EQ(columns[1].unit, "bar(g)");
    EXPECT_EQ(columns[1].numbers, (std::vector<double>{10.0, 2.0}));
}

// Functions whose least value is known, with ranges where they have none.
TEST(Search, FindsTheLeastValueBesideRefusedTrials) {
    std::vector<double> best;
    const auto parabola = [](const std::vector<double>& at) {
        return at[0] < 3.0 ? refusedTrial : (at[0] - 3.7) * (at[0] - 3.7);
    };
    ASSERT_TRUE(searchLeast({{0.0, 10.0, 1e-4}}, parabola, best));
    EXPECT_NEAR(best[0], 3.7, 1e-4);
    // At the very edge of what is possible, and at a bound.
    const auto edge = [](const std::vector<double>& at) { return at[0] < 2.0 / 3.0 ? refusedTrial : at[0]; };
    ASSERT_TRUE(searchLeast({{0.0, 10.0, 1e-4}}, edge, best));
    EXPECT_NEAR(best[0], 2.0 / 3.0, 1e-4);
    const auto falling = [](const std::vector<double>& at) { return -at[0]; };
    ASSERT_TRUE(searchLeast({{0.0, 10.0, 1e-4}}, falling, best));
    EXPECT_NEAR(best[0], 10.0, 1e-4);
    // Two numbers, a turned valley; a quarter of the plane is refused.
    const auto valley = [](const std::vector<double>& at) {
        const double u = at[0] + at[1] - 3.0, v = at[0] - 2.0 * at[1];
        return at[0] < 1.0 && at[1] > 1.5 ? refusedTrial : 4.0 * u * u + v * v;
    };
    ASSERT_TRUE(searchLeast({{0.0, 4.0, 1e-4}, {0.0, 4.0, 1e-4}}, valley, best));
    EXPECT_NEAR(best[0], 2.0, 3e-4);
    EXPECT_NEAR(best[1], 1.0, 3e-4);
    EXPECT_FALSE(searchLeast(
        {{0.0, 1.0, 1e-3}}, [](const std::vector<double>&) { return refusedTrial; }, best));
}

TEST(Rows, AFileIsGoneOnWithBehindItsLastWholeRow) {
    test::TemporaryFolder folder;
    const Study study =
        read(std::string("request = \"chiller.toml\"\n[vary]\nfluid = [\"R134a\", \"R290\", \"R32\"]\n") + keys);
    const workers::Answer answer{workers::End::done, "{\"values\":[3.5]}", {}};
    const std::string head = csvHead(study) + '\n', first = csvRow(study, 0, answer) + '\n';
    EXPECT_EQ(first, "R134a,3.5,,\n");
    std::size_t rows = 9, size = 9;
    EXPECT_EQ(wholeRows(study, RowForm::csv, folder.path("none.csv"), rows, size), "");
    EXPECT_EQ(rows, 0u);
    test::writeFile(folder.path("a.csv"), head + first + "R290,3.");
    EXPECT_EQ(wholeRows(study, RowForm::csv, folder.path("a.csv"), rows, size), "");
    EXPECT_EQ(rows, 1u);
    EXPECT_EQ(size, head.size() + first.size());
    EXPECT_EQ(sizeOfRows(folder.path("a.csv"), 1), size);
    // Rows of another study.
    test::writeFile(folder.path("b.csv"), head + "R32,1,,\n");
    EXPECT_NE(wholeRows(study, RowForm::csv, folder.path("b.csv"), rows, size), "");
    test::writeFile(folder.path("c.csv"), "fluid,x,code,text\n");
    EXPECT_NE(wholeRows(study, RowForm::csv, folder.path("c.csv"), rows, size), "");
    const workers::Answer refused{workers::End::died, "The calculation \"ended\", badly.", {}};
    EXPECT_EQ(csvRow(study, 1, refused), "R290,,died,\"The calculation \"\"ended\"\", badly.\"");
    EXPECT_EQ(jsonRow(study, 2, answer), "{\"case\":2,\"inputs\":[\"R32\"],\"values\":[3.5]}");
}

}  // namespace
}  // namespace frigana::studies
