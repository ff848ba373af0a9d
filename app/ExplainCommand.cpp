// frigana explain: the keys of a request as a table, from the catalogue.
#include <iostream>
#include <memory>

#include "Commands.h"
#include "NamedRequest.h"
#include "TextTable.h"

namespace frigana::app {

using namespace catalogue;

namespace {

struct Options {
    std::string name, units = "metric";
};

void addRows(Table& table, const Request& request, int circuit, int stage, std::span<const Parameter> parameters,
             UnitSystem units) {
    const Circuit& own = request.circuits[static_cast<std::size_t>(circuit)];
    for (const Parameter& parameter : parameters) {
        if (parameter.absent == Absent::unused || parameter.absent == Absent::derived) continue;
        std::string previous;
        for (const Option& option : parameter.options) {
            const std::string key = keyOf(own, stage, parameter, option);
            if (key == previous) continue;
            const auto limits = limitsOf(request, circuit, stage > 0, parameter, option);
            std::string allowed;
            if (option.form == Form::yes)
                allowed = parameter.options.size() == 2 && parameter.options[0].key == parameter.options[1].key
                              ? "true, false"
                              : "true";
            else if (limits)
                allowed = limitsText(*limits, option.quantity, unitIn(units, option.quantity));
            const bool zero = parameter.absent == Absent::zero && zeroOption(parameter) == &option;
            const std::string left = zero                                   ? "0"
                                     : parameter.absent == Absent::optional ? "none"
                                     : !previous.empty() || parameter.absent == Absent::zero ? "(or this)"
                                                                                             : "required";
            table.rows.push_back({key, std::string(option.label), allowed, left});
            previous = key;
        }
    }
}

void printRequest(const Request& request, UnitSystem units) {
    std::cout << request.name << ": " << request.title << '\n' << "  " << request.about << "\n\n";
    Table table{{"Key", "Meaning", "Allowed", "If left out"}, {}};
    for (std::size_t i = 0; i < request.circuits.size(); ++i)
        addRows(table, request, static_cast<int>(i), 0, request.circuits[i].parameters, units);
    if (request.stages.countIndex > 0) addRows(table, request, 0, 1, request.stages.parameters, units);
    if (!table.rows.empty()) printLeft(std::cout, table);
    if (request.stages.countIndex > 0)
        std::cout << "\n  Keys of stage1 likewise for stage2 and so on, for every compressor but the last.\n";
    std::cout << '\n';
    Table general{{"Key", "Meaning", "Allowed"}, {}};
    for (const GeneralKey& key : generalKeys())
        general.rows.push_back({std::string(key.key), std::string(key.meaning), std::string(key.allowed)});
    printLeft(std::cout, general);
    if (request.circuits.size() == 2)
        std::cout
            << "\n  Title, fluid, fractions, blend_name, reference_state and reference_of may stand in each circuit: "
            << request.circuits[0].key << ".fluid, " << request.circuits[1].key << ".fluid.\n";
}

}  // namespace

Command addExplain(CLI::App& program) {
    CLI::App* line = program.add_subcommand("explain", "shows the keys of a request; without a name, all requests");
    const auto options = std::make_shared<Options>();
    line->add_option("NAME", options->name, "name of a request");
    line->add_option("--units", options->units, "units of the limits: SI, metric (if left out) or imperial")
        ->check([](const std::string& name) {
            return unitSystemOf(name) ? std::string() : "allowed are SI, metric and imperial";
        });
    return {line, [options] {
                if (options->name.empty()) {
                    Table table{{"Request", "What it answers"}, {}};
                    for (const Request& request : requests())
                        table.rows.push_back({std::string(request.name), std::string(request.about)});
                    printLeft(std::cout, table);
                    return 0;
                }
                const Request* request = findRequest(options->name);
                if (request == nullptr)
                    return complain(usageError,
                                    options->name + ": there is no such request; frigana explain lists them");
                printRequest(*request, *unitSystemOf(options->units));
                return 0;
            }};
}

}  // namespace frigana::app
