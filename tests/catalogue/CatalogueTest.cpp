// The catalogue against the checks of the requests, both ways: no parameter, option or limit is missing, none is more.
#include "Catalogue.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "40_RangeChecks.h"
#include "Operations.h"

namespace frigana::catalogue {
namespace {

using requestchecks::CheckRow;
constexpr int cycleType = 2;

const CheckRow* rowOf(std::span<const CheckRow> rows, int index) {
    for (const CheckRow& row : rows)
        if (row.index == index) return &row;
    return nullptr;
}

// Options that a check lets pass and that no request shall ask for.
bool isHidden(const Request& request, int circuit, int index, int option) {
    // The high pressure liquid line of the pumped loop by its quality: nothing is set by it.
    return request.name == "pumped-co2" && circuit == 1 && index == 9 && option == 3;
}

// Parameters that no check looks at, and what they are.
bool isUnchecked(const Request& request, int circuit, int index) {
    if (request.name == "two-stage") return index == 24 || index == 25;
    if (request.name == "rankine") return index == 8 || index == 12;
    if (request.name == "cascade" || request.name == "pumped-co2")
        return circuit == 0 ? index == 1 || index == 6 : request.name == "pumped-co2" && index == 6;
    return false;
}

void compare(const Request& request, int circuit, bool stage, std::span<const Parameter> parameters,
             std::span<const CheckRow> rows) {
    const Circuit& own = request.circuits[static_cast<std::size_t>(circuit)];
    std::set<int> indices;
    for (const Parameter& parameter : parameters) {
        EXPECT_TRUE(indices.insert(parameter.index).second) << request.name << ' ' << parameter.index;
        const CheckRow* row = rowOf(rows, parameter.index);
        if (row == nullptr) {
            EXPECT_TRUE(!stage && isUnchecked(request, circuit, parameter.index))
                << request.name << ' ' << parameter.index;
            for (const Option& option : parameter.options)
                EXPECT_FALSE(limitsOf(request, circuit, stage, parameter, option))
                    << request.name << ' ' << parameter.index;
            continue;
        }
        std::map<int, const Option*> options;
        for (const Option& option : parameter.options) {
            if (option.form == Form::count) continue;
            EXPECT_TRUE(options.emplace(option.number, &option).second) << request.name << ' ' << parameter.index;
            EXPECT_GE(option.number, row->options.first) << keyOf(own, 0, parameter, option);
            EXPECT_LE(option.number, row->options.last) << keyOf(own, 0, parameter, option);
        }
        for (int number = row->options.first; number <= row->options.last; ++number) {
            const bool refused = number >= row->refused.first && number <= row->refused.last;
            if (parameter.options.size() == 1 && parameter.options.front().form == Form::count) {
                const auto limits = limitsOf(request, circuit, stage, parameter, parameter.options.front());
                ASSERT_TRUE(limits);
                EXPECT_EQ(limits->lower, row->options.first);
                // A record has no room for more than seven compressors, whatever the check says.
                EXPECT_EQ(limits->upper, request.stages.countIndex == parameter.index ? 7 : row->options.last);
                continue;
            }
            EXPECT_EQ(options.contains(number), !refused && !isHidden(request, circuit, parameter.index, number))
                << request.name << ' ' << parameter.index << ' ' << number;
            if (!options.contains(number)) continue;
            const auto limits = limitsOf(request, circuit, stage, parameter, *options[number]);
            const auto& expected =
                number <= requestchecks::mostOptions ? row->limits.byOption[number - 1] : requestchecks::unlimited;
            ASSERT_EQ(limits.has_value(), expected.kind != requestchecks::Limits::none)
                << keyOf(own, 0, parameter, *options[number]);
            if (!limits) continue;
            EXPECT_EQ(limits->lower, static_cast<double>(expected.lower));
            EXPECT_EQ(limits->upper, static_cast<double>(expected.upper));
            EXPECT_EQ(limits->open, expected.kind == requestchecks::Limits::open);
        }
    }
    for (const CheckRow& row : rows)
        EXPECT_TRUE(indices.contains(row.index)) << request.name << " lacks parameter " << row.index;
}

TEST(Catalogue, HoldsTheTwentyRequestsUnderTheirNames) {
    const std::set<std::string_view> expected{"fluid-information",
                                              "saturation-table",
                                              "isoproperty-table",
                                              "state-point",
                                              "equilibrium-phases",
                                              "saturation-point",
                                              "store-blend",
                                              "basic",
                                              "heat-exchanger",
                                              "combined",
                                              "cascade",
                                              "line-sizing",
                                              "rankine",
                                              "transcritical",
                                              "liquid-injection",
                                              "two-stage",
                                              "multi-stage",
                                              "minimal",
                                              "pumped-co2",
                                              "booster"};
    std::set<std::string_view> found;
    for (const Request& request : requests()) {
        found.insert(request.name);
        EXPECT_EQ(findRequest(request.type, request.sub), &request);
        EXPECT_FALSE(operationName(request.type, request.sub).empty()) << request.name;
    }
    EXPECT_EQ(found, expected);
    for (const PropertyOperation& operation : propertyOperations) EXPECT_NE(findRequest(1, operation.sub), nullptr);
    for (const CycleOperation& operation : cycleOperations) EXPECT_NE(findRequest(2, operation.sub), nullptr);
}

TEST(Catalogue, ParametersOptionsAndLimitsAreThoseOfTheChecksBothWays) {
    int compared = 0;
    for (const RequestCheck& check : requestChecks()) {
        const Request* request = findRequest(cycleType, check.reqsub);
        ASSERT_NE(request, nullptr) << check.reqsub;
        compare(*request, 0, false, request->circuits[0].parameters, check.first);
        ASSERT_EQ(request->circuits.size() == 2, !check.second.empty()) << request->name;
        if (!check.second.empty()) compare(*request, 1, false, request->circuits[1].parameters, check.second);
        ASSERT_EQ(request->stages.countIndex > 0, !check.stage.empty()) << request->name;
        if (!check.stage.empty()) compare(*request, 0, true, request->stages.parameters, check.stage);
        ++compared;
    }
    EXPECT_EQ(compared, 13);
}

TEST(Catalogue, KeysAreUniqueAndParametersStandInTheirOrder) {
    for (const Request& request : requests()) {
        std::map<std::string, int> keys;
        for (const Circuit& circuit : request.circuits) {
            int last = 0;
            for (const Parameter& parameter : circuit.parameters) {
                if (request.type == cycleType) {
                    EXPECT_EQ(parameter.index, ++last) << request.name;
                }
                std::set<std::string> own;
                for (const Option& option : parameter.options)
                    if (!option.key.empty()) own.insert(keyOf(circuit, 0, parameter, option));
                if (request.name == "state-point") continue;  // both properties have the same keys
                for (const std::string& key : own) EXPECT_EQ(++keys[key], 1) << request.name << ' ' << key;
            }
            if (request.type == cycleType) {
                EXPECT_LE(circuit.count, last) << request.name;
            }
        }
    }
}

TEST(Catalogue, TypicalValuesLieWithinTheirLimits) {
    for (const Request& request : requests()) {
        if (request.type != cycleType) continue;
        for (std::size_t i = 0; i < request.circuits.size(); ++i)
            for (const Parameter& parameter : request.circuits[i].parameters)
                for (const Option& option : parameter.options) {
                    if (option.form != Form::quantity || option.number != parameter.typical.option) continue;
                    const auto limits = limitsOf(request, static_cast<int>(i), false, parameter, option);
                    EXPECT_TRUE(!limits || limits->holds(parameter.typical.value)) << request.name << ' ' << option.key;
                }
    }
}

}  // namespace
}  // namespace frigana::catalogue
