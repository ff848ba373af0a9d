// Runs of requests: blends that are listed in cycles, texts that are kept, and the key that a refusal came from.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <filesystem>

#include "Larger.h"
#include "NamedRequest.h"
#include "RunResult.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"

namespace frigana::catalogue {
namespace {

const RunOptions options{test::dataFolder};

Fluid listed(std::string name, std::vector<Fluid::Component> components) {
    Fluid fluid;
    fluid.kind = 3;
    fluid.blendName = std::move(name);
    fluid.components = std::move(components);
    return fluid;
}

Fluid predefined(const char* file) {
    Fluid fluid;
    fluid.kind = 2;
    fluid.file = file;
    return fluid;
}

FilledRequest cascade(const Fluid& high, const Fluid& low) {
    FilledRequest filled = typicalRequest(*findRequest("cascade"));
    filled.blocks[0].fluid = high;
    filled.blocks[1].fluid = low;
    return filled;
}

// Every number of the first result stands in the second.
void expectSameNumbers(const RunResult& a, const RunResult& b, double tolerance) {
    ASSERT_TRUE(a.isDone()) << a.report.HERR.trimmed();
    ASSERT_TRUE(b.isDone()) << b.report.HERR.trimmed();
    double worst = 0.0;
    int compared = 0;
    for (const Value& value : a.entries) {
        if (!value.isNumber() || std::isnan(value.number()) || value.key.find("gwp") != std::string::npos) continue;
        const double off = std::fabs(value.number() - b.number(value.key));
        EXPECT_LE(off, tolerance * std::max(1.0, std::fabs(value.number()))) << value.key;
        worst = test::larger(worst, off / std::max(1.0, std::fabs(value.number())));
        ++compared;
    }
    EXPECT_GT(compared, 100);
    std::printf("%d values, largest deviation %.1e\n", compared, worst);
}

// R1234yf with R134a above R32 with R125: the names of the blends do not matter, equal ones neither.
TEST(Run, TwoListedBlendsOfOneNameAreTwo) {
    const std::vector<Fluid::Component> above{{"R1234YF.FLD", 0.56}, {"R134A.FLD", 0.44}},
        below{{"R32.FLD", 0.5}, {"R125.FLD", 0.5}};
    expectSameNumbers(runFilled(cascade(listed("one", above), listed("other", below)), options),
                      runFilled(cascade(listed("blend", above), listed("blend", below)), options), 0.0);
}

// R513A is 56 % R1234yf and 44 % R134a, R410A 50 % R32 and 50 % R125 by mass (ASHRAE 34).
TEST(Run, AListedBlendIsTheOneOfTheFileBesideIt) {
    constexpr double digits = 1e-6;  // of the fractions in the file
    const Fluid mine = listed("mine", {{"R1234YF.FLD", 0.56}, {"R134A.FLD", 0.44}});
    expectSameNumbers(runFilled(cascade(predefined("R513A.MIX"), predefined("R410A.MIX")), options),
                      runFilled(cascade(mine, predefined("R410A.MIX")), options), digits);
}

TEST(Run, ABlendThatCannotBeMadeRefusesItsCycle) {
    FilledRequest filled = typicalRequest(*findRequest("basic"));
    filled.blocks[0].fluid = listed("mine", {{"R32.FLD", -0.5}, {"R125.FLD", 0.5}});
    const RunResult result = runFilled(filled, options);
    EXPECT_FALSE(result.isDone());
    EXPECT_EQ(result.report.IERR, 100125);  // a fraction that is negative or not a number
    EXPECT_EQ(result.report.type, 2);
    EXPECT_EQ(result.report.sub, 1);
    EXPECT_TRUE(result.points.empty());
}

// Lines end as in C, whatever the system writes.
std::string asInC(std::string text) {
    std::erase(text, '\r');
    return text;
}

TEST(Run, TextsAreKeptWhereTheyAreAskedFor) {
    const FilledRequest filled = typicalRequest(*findRequest("basic"));
    const RunResult without = runFilled(filled, options), with = runFilled(filled, {test::dataFolder, true});
    EXPECT_EQ(without.positional + without.resultText, "");
    EXPECT_EQ(with.positional, positionalText(filled));
    EXPECT_TRUE(asInC(with.resultText).starts_with(" 2\n 1\n")) << with.resultText.substr(0, 80);  // a basic cycle

    const test::TemporaryFolder folder;
    test::writeFile(folder.path("request.fi1"), positionalText(filled));
    const RunResult positional = runPositional(folder.path("request.fi1"), {test::dataFolder, true});
    EXPECT_EQ(positional.positional, positionalText(filled));
    EXPECT_EQ(asInC(positional.resultText), test::readFile(folder.path("request.fo1")));
    EXPECT_EQ(positional.resultText, with.resultText);
}

TEST(Run, AMissingOrForeignRequestHasNoInput) {
    const test::TemporaryFolder folder;
    const RunResult missing = runPositional(folder.path("none.fi1"), options);
    EXPECT_FALSE(missing.isDone());
    EXPECT_EQ(missing.input.request, nullptr);
    EXPECT_EQ(refusedKey(missing), "");
    test::writeFile(folder.path("other.fi1"), "hello\n");
    const RunResult foreign = runPositional(folder.path("other.fi1"), options);
    EXPECT_FALSE(foreign.isDone());
    EXPECT_TRUE(foreign.points.empty());
}

// The value of every parameter with limits is put beyond them, one at a time: the refusal leads to its key.
TEST(Run, AParameterBeyondItsLimitsIsToldByItsKey) {
    int asked = 0;
    for (const Request& request : requests()) {
        if (request.type != 2) continue;
        const FilledRequest typical = typicalRequest(request);
        const auto expectRefusal = [&](std::size_t circuit, std::size_t place, const std::string& key, double value) {
            FilledRequest filled = typical;
            filled.blocks[circuit].settings[place].value = value;
            const RunResult result = runFilled(filled, options);
            EXPECT_EQ(result.report.end, RunEnd::refused) << request.name << ' ' << key;
            EXPECT_EQ(refusedKey(result), key) << request.name;
            ++asked;
        };
        const auto beyond = [](const Limits& limits) { return 2.0 * limits.upper + 1.0; };
        for (std::size_t i = 0; i < request.circuits.size(); ++i) {
            const auto parameters = request.circuits[i].parameters;
            for (std::size_t k = 0; k < parameters.size(); ++k)
                for (const Option& option : parameters[k].options) {
                    if (option.form != Form::quantity || k >= typical.blocks[i].settings.size()) continue;
                    if (option.number != typical.blocks[i].settings[k].option) continue;
                    if (const auto limits = limitsOf(request, static_cast<int>(i), false, parameters[k], option))
                        expectRefusal(i, k, keyOf(request.circuits[i], 0, parameters[k], option), beyond(*limits));
                }
        }
        const std::size_t first = request.circuits.front().parameters.size();
        for (std::size_t k = first; request.stages.countIndex > 0 && k < typical.blocks[0].settings.size(); ++k) {
            const std::size_t perStage = request.stages.parameters.size();
            const Parameter& parameter = request.stages.parameters[(k - first) % perStage];
            const int stage = static_cast<int>((k - first) / perStage) + 1;
            for (const Option& option : parameter.options)
                if (option.number == typical.blocks[0].settings[k].option)
                    if (const auto limits = limitsOf(request, 0, true, parameter, option))
                        expectRefusal(0, k, keyOf(request.circuits[0], stage, parameter, option), beyond(*limits));
        }
    }
    EXPECT_GT(asked, 150);
}

TEST(Run, AWrongNumberOfStagesIsToldByItsKey) {
    FilledRequest filled = typicalRequest(*findRequest("multi-stage"));
    filled.blocks[0].settings[15].option = 1;
    EXPECT_EQ(refusedKey(runFilled(filled, options)), "stages");
    // What a calculation refuses has no key.
    FilledRequest wet = typicalRequest(*findRequest("liquid-injection"));
    wet.blocks[0].settings[15].value = 303.15;
    const RunResult refused = runFilled(wet, options);
    EXPECT_EQ(refused.report.end, RunEnd::refused);
    EXPECT_EQ(refusedKey(refused), "");
}

TEST(Run, ValuesAreFoundByTheirKeys) {
    const RunResult result = runFilled(typicalRequest(*findRequest("basic")), options);
    ASSERT_TRUE(result.isDone());
    EXPECT_FALSE(result.text("title").empty());
    EXPECT_TRUE(result.text("performance.cop_cooling").empty());  // a number
    EXPECT_TRUE(result.text("nothing").empty());
    EXPECT_TRUE(std::isnan(result.number("nothing")));
    EXPECT_TRUE(std::isnan(result.number("title")));
    EXPECT_EQ(nameOf(Weight::note), "note");
    Value count{ResultEntry::Kind::integer, 1, "", "", "", 0, "", "", 0.0, 3, ""};
    EXPECT_EQ(count.number(), 3.0);
    count.integer = -777;
    EXPECT_TRUE(std::isnan(count.number()));
}

}  // namespace
}  // namespace frigana::catalogue
