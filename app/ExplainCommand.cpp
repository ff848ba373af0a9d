// frigana explain: the keys of a request as a table, from the catalogue.
#include <iostream>
#include <memory>

#include "Commands.h"
#include "NamedRequest.h"
#include "Remarks.h"
#include "Results.h"
#include "TextTable.h"

namespace frigana::app {

using namespace catalogue;

namespace {

struct Options {
    std::string name, units = "metric";
    bool results = false, markdown = false;
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
            const bool zero = parameter.absent == Absent::zero && &zeroOption(parameter) == &option;
            const std::string left = zero                                                    ? "0"
                                     : parameter.absent == Absent::optional                  ? "none"
                                     : !previous.empty() || parameter.absent == Absent::zero ? "(or this)"
                                                                                             : "required";
            std::string meaning(option.label);
            if (option.form == Form::word) {
                meaning = parameter.label;
                for (const Option& word : parameter.options)
                    allowed += (allowed.empty() ? "" : ", ") + std::string(word.label);
            }
            table.rows.push_back({key, meaning, allowed, left});
            previous = key;
        }
    }
}

Table keysOf(const Request& request, UnitSystem units) {
    Table table{{"Key", "Meaning", "Allowed", "If left out"}, {}};
    for (std::size_t i = 0; i < request.circuits.size(); ++i)
        addRows(table, request, static_cast<int>(i), 0, request.circuits[i].parameters, units);
    if (request.stages.countIndex > 0) addRows(table, request, 0, 1, request.stages.parameters, units);
    return table;
}

Table generalKeyTable() {
    Table general{{"Key", "Meaning", "Allowed"}, {}};
    for (const GeneralKey& key : generalKeys())
        general.rows.push_back({std::string(key.key), std::string(key.meaning), std::string(key.allowed)});
    return general;
}

constexpr const char* ofEveryStage = "Keys of stage1 likewise for stage2 and so on, for every compressor but the last.";

std::string ofEveryCircuit(const Request& request) {
    return "Title, fluid, fractions, blend_name, reference_state and reference_of may stand in each circuit: " +
           std::string(request.circuits[0].key) + ".fluid, " + std::string(request.circuits[1].key) + ".fluid.";
}

void printRequest(const Request& request, UnitSystem units) {
    std::cout << request.name << ": " << request.title << '\n' << "  " << request.about << "\n\n";
    const Table table = keysOf(request, units);
    if (!table.rows.empty()) printLeft(std::cout, table);
    if (request.stages.countIndex > 0) std::cout << "\n  " << ofEveryStage << '\n';
    std::cout << '\n';
    printLeft(std::cout, generalKeyTable());
    if (request.circuits.size() == 2) std::cout << "\n  " << ofEveryCircuit(request) << '\n';
    if (!resultsOf(request).empty())
        std::cout << "\n  frigana explain " << request.name << " --results lists the values of the result.\n";
}

std::string shownUnit(const ListedResult& value, UnitSystem units) {
    if (units == UnitSystem::SI || value.quantity == Quantity::none) return value.unit;
    const std::string symbol(unitIn(units, value.quantity).symbol);
    return symbol.empty() ? value.unit : symbol;
}

void printResults(const Request& request, UnitSystem units) {
    std::cout << request.name << ": " << request.title << ", values of the result\n\n";
    Table table{{"Key", "Value", "Unit"}, {}};
    for (const ListedResult& value : resultsOf(request))
        table.rows.push_back({value.key, value.name, shownUnit(value, units)});
    printLeft(std::cout, table);
}

// ---- the reference as a page of Markdown ----------------------------------------------------------------------------

void printMarkdown(const Table& table, std::size_t codeColumns) {
    const auto line = [](const std::vector<std::string>& cells, std::size_t inCode) {
        std::cout << '|';
        for (std::size_t i = 0; i < cells.size(); ++i)
            std::cout << ' ' << (i < inCode && !cells[i].empty() ? '`' + cells[i] + '`' : cells[i]) << " |";
        std::cout << '\n';
    };
    line(table.headings, 0);
    line(std::vector<std::string>(table.headings.size(), "---"), 0);
    for (const auto& row : table.rows) line(row, codeColumns);
    std::cout << '\n';
}

constexpr std::string_view briefState =
    "`pressure` kPa, `temperature` K, `density` kg/m3, `enthalpy` kJ/kg, `entropy` kJ/(kg K)";
constexpr std::string_view moreOfState = ", `quality` kg/kg, `saturation_temperature` K";

// Places with the seven values of a state, or with five of them, in one line each; most of a cycle's values are such.
Table withStatesTogether(const Table& places) {
    Table table{places.headings, {}};
    std::string states, brief;
    const auto add = [](std::string& list, const std::string& place) {
        list += (list.empty() ? "`" : ", `") + place + '`';
    };
    for (const auto& row : places.rows) {
        if (row[1] == std::string(briefState) + std::string(moreOfState))
            add(states, row[0]);
        else if (row[1] == briefState)
            add(brief, row[0]);
        else
            table.rows.push_back({row[0].empty() ? "" : '`' + row[0] + '`', row[1]});
    }
    if (!states.empty()) table.rows.push_back({"a state each", states});
    if (!brief.empty()) table.rows.push_back({"a state of five values each", brief});
    return table;
}

// The values of a result by their places: a line for each, with the last words of the keys and their units.
Table placesOf(const Request& request) {
    Table table{{"Place", "Values"}, {}};
    for (const ListedResult& value : resultsOf(request)) {
        if (value.key.find("diagram.") != std::string::npos || value.key.starts_with("request.")) continue;
        const auto dot = value.key.rfind('.');
        const std::string place = dot == std::string::npos ? std::string() : value.key.substr(0, dot);
        const std::string word = dot == std::string::npos ? value.key : value.key.substr(dot + 1);
        const bool hasUnit = !value.unit.empty() && value.unit != "-";
        const std::string text = '`' + word + '`' + (hasUnit ? " " + value.unit : "");
        if (table.rows.empty() || table.rows.back()[0] != place)
            table.rows.push_back({place, text});
        else
            table.rows.back()[1] += ", " + text;
    }
    return withStatesTogether(table);
}

void printRequestPage(const Request& request) {
    std::cout << "## " << request.name << "\n\n"
              << request.title << ": " << request.about << ". Positional: type " << request.type << ", sub-type "
              << request.sub << ".\n\n";
    const Table keys = keysOf(request, UnitSystem::metric);
    if (!keys.rows.empty()) printMarkdown(keys, 1);
    if (request.stages.countIndex > 0) std::cout << ofEveryStage << "\n\n";
    if (request.circuits.size() == 2) std::cout << ofEveryCircuit(request) << "\n\n";
    const Table places = placesOf(request);
    if (places.rows.empty()) return;
    std::cout << "Values of the result, in the units of the library:\n\n";
    printMarkdown(places, 0);
}

void printReference() {
    std::cout
        << "# Reference of the requests\n\n"
           "Written by `frigana explain --markdown` from the tables that requests are read with; limits are those "
           "of the checks, in\nmetric units. `frigana new NAME` writes a request with all of its keys. In the "
           "keys of results N stands for the number of a\nrow or stage; the columns of the diagrams are left "
           "out.\n\nA state is "
        << briefState << moreOfState << "; one of five values ends with the entropy.\n\n";
    Table list{{"Request", "What it answers"}, {}};
    for (const Request& request : requests())
        list.rows.push_back(
            {"[" + std::string(request.name) + "](#" + std::string(request.name) + ")", std::string(request.about)});
    printMarkdown(list, 0);
    std::cout << "## Keys of every request\n\n";
    printMarkdown(generalKeyTable(), 1);
    for (const Request& request : requests()) printRequestPage(request);
    std::cout << "## Remarks\n\nWhat reports, JSON and page say of a finished result, by its name:\n\n";
    Table kinds{{"Remark", "Weight", "Said where"}, {}};
    for (const remarks::Kind& kind : remarks::kinds())
        kinds.rows.push_back({std::string(kind.name), std::string(nameOf(kind.weight)), std::string(kind.about)});
    printMarkdown(kinds, 1);
}

}  // namespace

Command addExplain(CLI::App& program) {
    CLI::App* line = program.add_subcommand("explain", "shows the keys of a request; without a name, all requests");
    const auto options = std::make_shared<Options>();
    line->add_option("NAME", options->name, "name of a request");
    line->add_flag("--results", options->results, "shows the values of its result in place of its keys");
    line->add_flag("--markdown", options->markdown, "writes the reference of all requests as a page of Markdown");
    line->add_option("--units", options->units, "units of limits and results: SI, metric (if left out) or imperial")
        ->check([](const std::string& name) {
            return unitSystemOf(name) ? std::string() : "allowed are SI, metric and imperial";
        });
    return {line, [options] {
                if (options->markdown) {
                    printReference();
                    return 0;
                }
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
                const UnitSystem units = *unitSystemOf(options->units);
                if (options->results)
                    printResults(*request, units);
                else
                    printRequest(*request, units);
                return 0;
            }};
}

}  // namespace frigana::app
