// Named requests that can be run: what is read from what people write, and what is written for them.
#include <gtest/gtest.h>

#include <cmath>

#include "NamedRequest.h"
#include "ResultKeys.h"
#include "RunResult.h"
#include "TreeFolders.h"

namespace frigana::catalogue {
namespace {

const FluidNames& names() {
    return FluidNames::of(test::dataFolder);
}

NamedRequest read(const std::string& text, NamedFormat format = NamedFormat::toml) {
    NamedRequest named = readNamed(text, format, names());
    for (const Problem& problem : named.problems) ADD_FAILURE() << message("a.toml", problem) << '\n' << text;
    if (named.runs.empty()) named.runs.resize(1, typicalRequest(requests().front()));
    return named;
}

Fluid fluidOf(const std::string& lines) {
    return read("request = \"fluid-information\"\n" + lines).runs.front().blocks.front().fluid;
}

TEST(Reading, ReferenceStatesHaveTheirUsualNames) {
    struct {
        const char *text, *code;
    } const rows[] = {
        {"DEF", "DEF"},    {"default", "DEF"}, {"IIR", "IIR"}, {"iir", "IIR"},
        {"ASHRAE", "ASH"}, {"Ash", "ASH"},     {"nbp", "NBP"},
    };
    for (const auto& [text, code] : rows)
        EXPECT_EQ(fluidOf("fluid = \"R134a\"\nreference_state = \"" + std::string(text) + "\"").referenceState, code);
    EXPECT_EQ(fluidOf("fluid = \"R134a\"").referenceState, "DEF");
    EXPECT_EQ(fluidOf("fluid = \"R134a\"").referenceOf, 2);
    EXPECT_EQ(fluidOf("fluid = \"R410A\"\nreference_of = \"composition\"").referenceOf, 2);
    EXPECT_EQ(fluidOf("fluid = \"R410A\"\nreference_of = \"pure fluids\"").referenceOf, 1);
}

TEST(Reading, FractionsAreNumbersOrPercent) {
    const Fluid percent = fluidOf("fluid = { R32 = \"70 %\", \"R1234ze(E)\" = 0.3 }");
    ASSERT_EQ(percent.components.size(), 2u);
    EXPECT_EQ(percent.kind, 3);
    EXPECT_TRUE(percent.byMass);
    EXPECT_EQ(percent.blendName, "blend");
    EXPECT_EQ(percent.components[0].file, "R32.FLD");
    EXPECT_NEAR(percent.components[0].fraction, 0.7, 1e-15);
    EXPECT_EQ(percent.components[1].file, "R1234ZE.FLD");
    const Fluid mole = fluidOf("fluid = { R32 = 0.25, R125 = 0.75 }\nfractions = \"mole\"\nblend_name = \"My blend\"");
    EXPECT_FALSE(mole.byMass);
    EXPECT_EQ(mole.blendName, "My blend");
}

// What stands for both circuits at the top may stand differently in one of them.
TEST(Reading, EachOfTwoCircuitsHasItsOwnOrThatOfBoth) {
    const std::string cascade = namedText(typicalRequest(*findRequest("cascade")), names(), {});
    const auto with = [&](const std::string& top, const std::string& high, const std::string& low) {
        std::string text = cascade;
        for (const char* line : {"title = ", "reference_state = "})
            for (auto at = text.find(line); at != std::string::npos; at = text.find(line))
                text.erase(at, text.find('\n', at) + 1 - at);
        const auto put = [&](const std::string& head, const std::string& lines) {
            const auto at = text.find(head);
            EXPECT_NE(at, std::string::npos) << text;
            text.insert(text.find('\n', at) + 1, lines);
        };
        put("[high]", high);
        put("[low]", low);
        put("request", top);
        return read(text).runs.front().blocks;
    };
    auto blocks = with("", "", "");
    EXPECT_EQ(blocks[0].title, findRequest("cascade")->title);
    EXPECT_EQ(blocks[1].title, findRequest("cascade")->title);
    blocks =
        with("title = \"Store\"\nreference_state = \"IIR\"\n", "", "title = \"Below\"\nreference_state = \"NBP\"\n");
    EXPECT_EQ(blocks[0].title, "Store");
    EXPECT_EQ(blocks[1].title, "Below");
    EXPECT_EQ(blocks[0].fluid.referenceState, "IIR");
    EXPECT_EQ(blocks[1].fluid.referenceState, "NBP");
    blocks = with("", "title = \"Above\"\n", "title = \"\"\n");
    EXPECT_EQ(blocks[0].title, "Above");
    EXPECT_EQ(blocks[1].title, "Above");
}

const std::string table = "request = \"saturation-table\"\nfluid = \"R134a\"\nproperty = \"temperature\"\n";

// A count makes the rows that it says, the ends among them.
TEST(Reading, ATableHasItsRows) {
    for (const int count : {3, 7, 50, 333, 2000}) {
        const NamedRequest named =
            read(table + "from = \"-20 °C\"\nto = \"40 °C\"\ncount = " + std::to_string(count) + "\n");
        const PropertyQuestion& ask = named.runs.front().question;
        EXPECT_NEAR(ask.step * (count - 1), 60.0, 1e-9);
        if (count == 333) continue;
        const RunResult result = runFilled(named.runs.front(), {test::dataFolder});
        ASSERT_TRUE(result.isDone()) << result.report.HERR.trimmed();
        const std::string last = "table." + std::to_string(count) + ".liquid.temperature";
        EXPECT_NEAR(result.number(last), 313.15, 1e-6) << count;
        EXPECT_EQ(result.find("table." + std::to_string(count + 1) + ".liquid.temperature"), nullptr);
    }
    EXPECT_EQ(read(table + "suggested_limits = true\n").runs.front().question.step, 0.0);
    EXPECT_EQ(read(table + "from = 0\nto = 10\nstep = 2\nunits = \"metric\"\n").runs.front().question.step, 2.0);
    EXPECT_EQ(read("units = \"imperial\"\n" + table + "from = 32\nto = 50\nstep = 1.8\n").runs.front().question.step,
              1.0);
}

TEST(Reading, SeveralPointsAreSeveralRuns) {
    const NamedRequest states = read(
        "request = \"state-point\"\nfluid = \"R134a\"\npoints = [\n{ temperature = \"25 °C\", pressure = \"2 bar\" },\n"
        "{ density = \"5 kg/m3\", temperature = \"300 K\" } ]\n");
    ASSERT_EQ(states.runs.size(), 2u);
    EXPECT_EQ(states.runs[0].question.first, 1);
    EXPECT_EQ(states.runs[0].question.second, 2);
    EXPECT_EQ(states.runs[0].question.secondValue, 200.0);
    // In the order of the file.
    EXPECT_EQ(states.runs[1].question.first, 3);
    EXPECT_EQ(states.runs[1].question.firstValue, 5.0);
    const NamedRequest phases = read(
        "request = \"equilibrium-phases\"\nfluid = \"R407C\"\npoints = [ { bubble.temperature = \"5 °C\" }, "
        "{ dew = { pressure = \"5 bar\" } } ]\n");
    ASSERT_EQ(phases.runs.size(), 2u);
    EXPECT_EQ(phases.runs[0].question.side, 1);
    EXPECT_EQ(phases.runs[1].question.side, 4);
    EXPECT_EQ(phases.runs[1].question.sideValue, 500.0);

    std::string many = "request = \"state-point\"\nfluid = \"R134a\"\npoints = [";
    for (int i = 0; i < 2001; ++i) many += "\n{ temperature = \"25 °C\", pressure = \"2 bar\" },";
    const NamedRequest refused = readNamed(many + "]\n", NamedFormat::toml, names());
    ASSERT_EQ(refused.problems.size(), 1u);
    EXPECT_EQ(message("a.toml", refused.problems.front()), "a.toml:3: points has more than 2000 points");
    EXPECT_TRUE(refused.runs.empty());
}

TEST(Reading, WallsAreWholeNumbersHoweverTheyAreWritten) {
    const std::string lines = namedText(typicalRequest(*findRequest("line-sizing")), names(), {});
    const auto at = lines.find("pipe = { copper");
    const auto pipe = at != std::string::npos ? at : lines.find("pipe.");
    ASSERT_NE(pipe, std::string::npos) << lines;
    for (const char* wall : {"2", "2.0"}) {
        std::string text = lines;
        const auto value = text.find("= ", text.find("copper", pipe)) + 2;
        text.replace(value, text.find_first_of(" \n}", value) - value, wall);
        bool found = false;
        const FilledRequest filled = read(text).runs.front();
        for (const Setting& setting : filled.blocks.front().settings) found |= setting.value == 2.0;
        EXPECT_TRUE(found) << text;
    }
}

TEST(Reading, ThePipesOfEverySizedLineArePicked) {
    const std::string lines = namedText(typicalRequest(*findRequest("line-sizing")), names(), {});
    const auto picked = [&](const char* heading) {
        std::string text = lines;
        text.insert(text.find('\n', text.find(heading)) + 1, "picked = 4\n");
        return readNamed(text, NamedFormat::toml, names());
    };
    const NamedRequest one = picked("[liquid_line]");
    ASSERT_EQ(one.problems.size(), 1u);
    EXPECT_EQ(one.problems.front().text, "missing: suction_line.picked; discharge_line.picked");
}

TEST(Reading, AMarkOfTheEncodingIsPassedOver) {
    const std::string mark = "\xEF\xBB\xBF";
    EXPECT_EQ(read(mark + "request = \"fluid-information\"\nfluid = \"R134a\"\n").request->name, "fluid-information");
    EXPECT_EQ(read(mark + R"({"request": "fluid-information", "fluid": "R134a"})", NamedFormat::json).request->name,
              "fluid-information");
}

// Texts of several lines, quotes in quotes and signs in comments are no signs between values.
TEST(Reading, SignsMayStandInEveryText) {
    for (const char* line : {
             "title = '''5 °C''' # at 5 °C",
             "title = \"\"\"5 °C\"\"\"",
             "title = \"\"\"\"5 °C\"\"\"\"\"",
             "title = '5 °C \"'",
             "title = \"5 °C \\\" ° \\\\\"",
         })
        EXPECT_NE(read(std::string(line) + "\nrequest = \"minimal\"\nfluid = \"R134a\"\n"
                                           "evaporator.temperature = \"0 °C\"\nevaporator.superheat = \"5 K\"\n"
                                           "compressor.swept_volume = \"0.01 m3/s\"\n"
                                           "compressor.isentropic_efficiency = 0.7\n"
                                           "condenser.temperature = \"40 °C\"\ncondenser.subcooling = \"2 K\"\n")
                      .runs.front()
                      .blocks.front()
                      .title.find("°"),
                  std::string::npos)
            << line;
    const auto problem = [](const std::string& text) {
        const NamedRequest named = readNamed(text, NamedFormat::toml, names());
        return named.problems.empty() ? std::string() : message("a.toml", named.problems.front());
    };
    const std::string sign = ": this is no TOML: a value with a sign such as ° stands in quotes, as in \"-5 °C\"";
    EXPECT_EQ(problem("a = '''\n\n''' °"), "a.toml:3" + sign);
    EXPECT_EQ(problem("a = \"\\\"\" °"), "a.toml:1" + sign);
    EXPECT_EQ(problem("a = 'open\n °"), "a.toml:2" + sign);
    EXPECT_EQ(problem("# °\n\n°"), "a.toml:3" + sign);
    std::string deep = "a = ";
    for (int i = 0; i < 20; ++i) deep += '[';
    for (int i = 0; i < 20; ++i) deep += ']';
    EXPECT_EQ(problem(deep), "a.toml: tables and lists stand in each other more than 16 deep");
    std::string tables = "a";
    for (int i = 0; i < 20; ++i) tables += ".a";
    EXPECT_EQ(problem(tables + " = 1"), "a.toml: tables and lists stand in each other more than 16 deep");
    // What ends inside a text is no request, whatever it ends with.
    for (const char* open : {"a = \"", "a = \"\\", "a = '''", "a = \"\"\"\\", "a = \"\"\"b\"", "#"})
        EXPECT_NE(problem(open), "") << open;
}

// ---- written ----

// A title of another code page becomes UTF-8; what is UTF-8 stays what it is, of every length and script.
TEST(Writing, TitlesAreUtf8) {
    struct {
        const char *given, *written;
    } const rows[] = {
        {"K\xFChlhaus", "Kühlhaus"},
        {"Kühlhaus", "Kühlhaus"},
        {"℃ 冷蔵 ไทย हिन्दी 한국어", "℃ 冷蔵 ไทย हिन्दी 한국어"},
        {"\xF0\x9F\x98\x80 \xF3\xA0\x80\x81", "\xF0\x9F\x98\x80 \xF3\xA0\x80\x81"},
        {"\xEF\xBC\xA1", "\xEF\xBC\xA1"},
        {"\xE2\x84", "â\xC2\x84"},                                 // the beginning of a sign
        {"\xC0\x80 \xE0\x80\x80", "À\xC2\x80 à\xC2\x80\xC2\x80"},  // longer than they need be
        {"\xED\xA0\x80", "í\xC2\xA0\xC2\x80"},                     // half of a pair
        {"\xF4\x90\x80\x80", "ô\xC2\x90\xC2\x80\xC2\x80"},         // beyond the last character
        {"\xF5\xFF", "õÿ"},
        {"\xE2\x82 \xA9", "â\xC2\x82 ©"},
        {"say \"5 \\ 7\"", "say \"5 \\ 7\""},
        {"end\x7F", "end\x7F"},
    };
    for (const auto& [given, written] : rows) {
        FilledRequest filled = typicalRequest(*findRequest("minimal"));
        filled.blocks.front().title = given;
        EXPECT_EQ(read(namedText(filled, names(), {})).runs.front().blocks.front().title, written);
    }
    // Other control characters are escaped: the file can be read, and the title is refused as one of several lines.
    FilledRequest filled = typicalRequest(*findRequest("minimal"));
    filled.blocks.front().title = "a\x01";
    const std::string text = namedText(filled, names(), {});
    EXPECT_NE(text.find("\"a\\u0001\""), std::string::npos) << text;
    const NamedRequest refused = readNamed(text, NamedFormat::toml, names());
    ASSERT_EQ(refused.problems.size(), 1u);
    EXPECT_EQ(refused.problems.front().text, "title: a title is one line without tabs");
}

TEST(Writing, FluidsComeBackWithTheirReference) {
    struct {
        const char *state, *line;
    } const rows[] = {
        {"ASH", "reference_state = \"ASHRAE\""}, {"IIR", "reference_state = \"IIR\""}, {"NBP", "\"NBP\""}};
    for (const auto& [state, line] : rows)
        for (const int of : {1, 2})
            for (const bool byMass : {true, false}) {
                Fluid fluid;
                fluid.kind = 3;
                fluid.blendName = "mine";
                fluid.components = {{"R32.FLD", 0.4}, {"R1234ZE.FLD", 0.6}};
                fluid.byMass = byMass;
                fluid.referenceState = state;
                fluid.referenceOf = of;
                const FilledRequest filled = typicalRequest(*findRequest("store-blend"), fluid);
                const std::string text = namedText(filled, names(), {});
                EXPECT_NE(text.find(line), std::string::npos) << text;
                EXPECT_EQ(positionalText(read(text).runs.front()), positionalText(filled));
            }
}

TEST(Writing, ATableOfSuggestedLimitsComesBack) {
    for (const char* request : {"saturation-table", "isoproperty-table"}) {
        FilledRequest filled = typicalRequest(*findRequest(request));
        filled.question.step = 0.0;
        const std::string text = namedText(filled, names(), {UnitSystem::metric, true, true});
        EXPECT_NE(text.find("\nsuggested_limits = true\n"), std::string::npos) << text;
        const PropertyQuestion ask = read(text).runs.front().question;
        EXPECT_EQ(ask.step, 0.0);
        EXPECT_EQ(ask.running, filled.question.running);
        EXPECT_EQ(ask.constant, filled.question.constant);
    }
}

// A component that has no bare key stands in quotes.
TEST(Writing, NamesOfComponentsAreKeys) {
    FilledRequest filled = typicalRequest(*findRequest("store-blend"));
    filled.blocks.front().fluid.components = {{"my fluid.FLD", 0.5}, {"a+b.FLD", 0.25}, {"", 0.25}};
    const std::string text = namedText(filled, names(), {});
    EXPECT_NE(text.find("fluid = { \"my fluid.FLD\" = 0.5, \"a+b.FLD\" = 0.25, \"\" = 0.25 }"), std::string::npos)
        << text;
}

// ---- keys of results ----

TEST(ResultKeys, WhatStandsInNoTableIsSpelled) {
    const auto keyOf = [](ResultPlace place) {
        const KeyOfResult key = resultKey(place);
        EXPECT_FALSE(key.known);
        return key.key;
    };
    EXPECT_EQ(keyOf({"", "EVAPORATOR", "", 0, "Fouling (2nd side), m2 K/W ", ""}),
              "evaporator.fouling_2nd_side_m2_k_w");
    EXPECT_EQ(keyOf({"", "Other - DEVICE", "", 3, "__Temperature", "K"}), "other_device.3.temperature");
    EXPECT_EQ(keyOf({"", "STAGE 2", "", 0, "Nonsense", ""}), "stage_2.nonsense");
    EXPECT_EQ(keyOf({"", "STAGE 12 - Tank of ice", "", 0, "!", ""}), "stage12.tank_of_ice");
    EXPECT_TRUE(resultKey({"", "EVAPORATOR", "", 0, "", ""}).known);
}

}  // namespace
}  // namespace frigana::catalogue
