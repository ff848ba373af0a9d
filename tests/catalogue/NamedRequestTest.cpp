// Named requests against their positional twins: the same values, and back again.
#include "NamedRequest.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <map>
#include <set>

#include "RequestFiles.h"
#include "ResultKeys.h"
#include "Results.h"
#include "RunResult.h"
#include "TemporaryFolder.h"
#include "TreeFolders.h"

namespace frigana::catalogue {
namespace {

using test::exampleRequests;
using test::referenceRequests;
using test::RequestText;
using test::TemporaryFolder;
using test::writeFile;

const FluidNames& names() {
    return FluidNames::of(test::dataFolder);
}

std::string allProblems(const NamedRequest& named) {
    std::string text;
    for (const Problem& problem : named.problems) text += message("file", problem) + '\n';
    return text;
}

// The mixture file of a stored blend goes into an installation of the test.
struct Installation {
    TemporaryFolder folder;
    Installation() {
        namespace fs = std::filesystem;
        test::share(std::string(test::dataFolder) + "/fluids", folder.path("fluids"));
        fs::create_directory(folder.path("mixtures"));
        for (const auto& entry : fs::directory_iterator(std::string(test::dataFolder) + "/mixtures"))
            test::share(entry.path(), folder.path("mixtures") + '/' + entry.path().filename().string());
    }
};

void expectSameEntries(const RunResult& a, const RunResult& b, const std::string& where) {
    ASSERT_EQ(a.report.end, b.report.end) << where << a.report.HERR.trimmed() << b.report.HERR.trimmed();
    EXPECT_EQ(a.report.IERR, b.report.IERR) << where;
    ASSERT_EQ(a.entries.size(), b.entries.size()) << where;
    for (std::size_t i = 0; i < a.entries.size(); ++i) {
        const Value &x = a.entries[i], &y = b.entries[i];
        EXPECT_EQ(x.kind, y.kind) << where << ' ' << x.line;
        EXPECT_EQ(x.line, y.line) << where;
        EXPECT_EQ(x.key, y.key) << where;
        EXPECT_EQ(x.value, y.value) << where << ' ' << x.key;
        EXPECT_EQ(x.integer, y.integer) << where << ' ' << x.key;
        EXPECT_EQ(x.text, y.text) << where << ' ' << x.key;
    }
}

FilledRequest positional(const TemporaryFolder& folder, const RequestText& request) {
    const std::string path = folder.path("request.fi1");
    writeFile(path, request.text);
    FilledRequest filled;
    EXPECT_EQ(readPositional(path, filled), "") << request.name;
    return filled;
}

class EveryUnitSystem : public testing::TestWithParam<UnitSystem> {};

// What the parameters without effect hold is not kept; everything else comes back number for number.
TEST_P(EveryUnitSystem, AConvertedRequestIsTheSameRequest) {
    const TemporaryFolder folder;
    std::vector<RequestText> all = exampleRequests();
    for (RequestText& reference : referenceRequests()) all.push_back(std::move(reference));
    ASSERT_GT(all.size(), 20u + 10u);
    for (const RequestText& request : all) {
        FilledRequest filled = positional(folder, request);
        ASSERT_NE(filled.request, nullptr);
        for (const bool explained : {false, true}) {
            const std::string text = namedText(filled, names(), {GetParam(), explained, true});
            const NamedRequest named = readNamed(text, NamedFormat::toml, names());
            ASSERT_EQ(allProblems(named), "") << request.name << '\n' << text;
            ASSERT_EQ(named.runs.size(), 1u);
            for (std::size_t i = 0; i < filled.blocks.size(); ++i)
                for (const Parameter& parameter : filled.request->circuits[i].parameters)
                    if (parameter.absent == Absent::unused &&
                        filled.blocks[i].settings.size() >= static_cast<std::size_t>(parameter.index))
                        filled.blocks[i].settings[static_cast<std::size_t>(parameter.index - 1)] = {1, 0.0};
            // The value behind an option that needs none has no meaning.
            const auto normalised = [&](FilledRequest one) {
                for (std::size_t i = 0; i < one.blocks.size(); ++i) {
                    const auto& parameters = one.request->circuits[i].parameters;
                    for (std::size_t k = 0; k < one.blocks[i].settings.size() && k < parameters.size(); ++k)
                        for (const Option& option : parameters[k].options)
                            if (option.form != Form::quantity &&
                                (option.form == Form::count || option.number == one.blocks[i].settings[k].option))
                                one.blocks[i].settings[k].value = 0.0;
                }
                return positionalText(one);
            };
            EXPECT_EQ(normalised(named.runs.front()), normalised(filled)) << request.name << '\n' << text;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Units, EveryUnitSystem,
                         testing::Values(UnitSystem::SI, UnitSystem::metric, UnitSystem::imperial),
                         [](const auto& system) { return std::string(nameOf(system.param)); });

TEST(NamedRequest, EveryExampleGivesTheValuesOfItsPositionalTwin) {
    const Installation installation;
    const RunOptions options{installation.folder.path(), false};
    const TemporaryFolder folder;
    std::set<std::string> seen;
    for (const RequestText& request : exampleRequests()) {
        const FilledRequest filled = positional(folder, request);
        seen.insert(std::string(filled.request->name));
        const RunResult twin = runPositional(folder.path("request.fi1"), options);
        ASSERT_TRUE(twin.isDone()) << request.name << twin.report.HERR.trimmed();
        const NamedRequest named =
            readNamed(namedText(filled, names(), {UnitSystem::metric, false, false}), NamedFormat::toml, names());
        ASSERT_EQ(allProblems(named), "") << request.name;
        expectSameEntries(runFilled(named.runs.front(), options), twin, request.name);
        if (filled.request->name == "line-sizing") {
            // The second run, which a positional request makes from the first one's file.
            FilledRequest second = filled;
            auto& settings = second.blocks.front().settings;
            settings[29] = {2, 0.0};
            for (const int pipe : {4, 5, 3}) settings.push_back({pipe, 0.0});
            writeFile(folder.path("request.fi1"), positionalText(second));
            const RunResult positionalSecond = runPositional(folder.path("request.fi1"), options);
            ASSERT_TRUE(positionalSecond.isDone());
            const NamedRequest again =
                readNamed(namedText(second, names(), {UnitSystem::SI, false, true}), NamedFormat::toml, names());
            ASSERT_EQ(allProblems(again), "");
            expectSameEntries(runFilled(again.runs.front(), options), positionalSecond, "second run");
        }
    }
    EXPECT_EQ(seen.size(), requests().size());
}

TEST(NamedRequest, EveryReferenceCaseGivesTheValuesOfItsPositionalTwin) {
    const RunOptions options{test::dataFolder, false};
    const TemporaryFolder folder;
    for (const RequestText& request : referenceRequests()) {
        const FilledRequest filled = positional(folder, request);
        const NamedRequest named =
            readNamed(namedText(filled, names(), {UnitSystem::SI, false, false}), NamedFormat::toml, names());
        ASSERT_EQ(allProblems(named), "") << request.name;
        const RunResult result = runFilled(named.runs.front(), options);
        if (filled.isSecondRun()) continue;  // its twin needs the first run under its own name
        expectSameEntries(result, runPositional(folder.path("request.fi1"), options), request.name);
    }
}

TEST(NamedRequest, ATypicalRequestOfEveryKindIsSolved) {
    const Installation installation;
    const RunOptions options{installation.folder.path(), false};
    for (const Request& request : requests()) {
        const std::string text = namedText(typicalRequest(request), names(), {UnitSystem::metric, true, true});
        const NamedRequest named = readNamed(text, NamedFormat::toml, names());
        ASSERT_EQ(allProblems(named), "") << request.name << '\n' << text;
        const RunResult result = runFilled(named.runs.front(), options);
        EXPECT_TRUE(result.isDone()) << request.name << ' ' << result.report.IERR << ' '
                                     << result.report.HERR.trimmed();
        for (const std::string_view key : request.leading) {
            ASSERT_NE(result.find(key), nullptr) << request.name << ' ' << key;
            EXPECT_TRUE(std::isfinite(result.number(key))) << request.name << ' ' << key;
        }
        if (request.type == 2) {
            EXPECT_GE(result.points.size(), 7u) << request.name;
        }
        for (const PointState& point : result.points)
            for (const double value : {point.pressure, point.temperature, point.enthalpy, point.entropy})
                EXPECT_NE(value, missingValue) << request.name << ' ' << point.key;
    }
}

// Every value of every example has a key of the tables, and no two the same.
TEST(ResultKeys, AreKnownAndUnique) {
    const Installation installation;
    const RunOptions options{installation.folder.path(), false};
    const TemporaryFolder folder;
    int count = 0;
    for (const RequestText& request : exampleRequests()) {
        positional(folder, request);
        const RunResult result = runPositional(folder.path("request.fi1"), options);
        std::set<std::string> keys;
        for (const Value& value : result.entries) {
            if (!value.isData()) continue;
            ++count;
            EXPECT_TRUE(resultKey({value.circuit, value.section, value.group, value.row, value.name, value.unit}).known)
                << request.name << ": " << value.key << " of " << value.name;
            if (value.name != "Reserved" && value.name != "Unused") {
                EXPECT_TRUE(keys.insert(value.key).second) << request.name << ": " << value.key;
            }
        }
    }
    EXPECT_GT(count, 5000);
}

// Without running anything the catalogue knows every value of every result, with its name and unit.
TEST(Results, AreListedWithTheirNamesAndUnits) {
    const Installation installation;
    const RunOptions options{installation.folder.path(), false};
    const TemporaryFolder folder;
    std::vector<RequestText> all = exampleRequests();
    for (RequestText& reference : referenceRequests()) all.push_back(std::move(reference));
    std::map<const Request*, std::set<std::string>> seen;
    for (const RequestText& text : all) {
        const FilledRequest filled = positional(folder, text);
        if (filled.isSecondRun()) continue;
        const RunResult result = runFilled(filled, options);
        std::map<std::string, ListedResult> listed;
        for (const ListedResult& one : resultsOf(*filled.request)) listed.emplace(one.key, one);
        for (const Value& value : result.entries) {
            if (!value.isData() || !result.isDone()) continue;
            const auto found = listed.find(listedKey(value.key));
            ASSERT_NE(found, listed.end()) << text.name << ": " << value.key << " of " << value.name;
            seen[filled.request].insert(found->first);
            if (value.unit != found->second.unit) {
                EXPECT_EQ(found->second.unit, "") << text.name << ": " << value.key;
            }
            EXPECT_EQ(listed.count(found->first), 1u);
        }
    }
    for (const Request& request : requests()) {
        std::set<std::string> keys;
        for (const ListedResult& one : resultsOf(request)) {
            EXPECT_TRUE(keys.insert(one.key).second) << request.name << ' ' << one.key;
            EXPECT_FALSE(one.name.empty());
        }
        EXPECT_EQ(seen[&request], keys) << request.name;
    }
}

}  // namespace
}  // namespace frigana::catalogue
