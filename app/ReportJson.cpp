// Results for programs: JSON and CSV.
#include <cctype>
#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <ostream>

#include "Folders.h"
#include "NamedRequest.h"
#include "Report.h"
#include "Versions.h"

namespace frigana::app {

namespace {

using namespace catalogue;
// Keys stay in the order in which they are put.
using json = nlohmann::ordered_json;
using Kind = ResultEntry::Kind;

double inSystem(double value, Quantity quantity, UnitSystem system) {
    if (system == UnitSystem::SI || quantity == Quantity::none || value == missingValue) return value;
    return fromInner(value, unitIn(system, quantity));
}

std::string unitOf(const Entry& entry, UnitSystem system) {
    if (system == UnitSystem::SI || entry.quantity == Quantity::none) return entry.unit;
    const std::string symbol(unitIn(system, entry.quantity).symbol);
    return symbol.empty() ? entry.unit : symbol;
}

json valueJson(const Entry& entry, UnitSystem system) {
    json item = {{"line", entry.line}, {"key", entry.key}, {"name", entry.name}};
    if (!entry.circuit.empty()) item["circuit"] = entry.circuit;
    if (!entry.section.empty()) item["section"] = entry.section;
    if (!entry.group.empty()) item["group"] = entry.group;
    if (entry.row > 0) item["row"] = entry.row;
    const std::string unit = unitOf(entry, system);
    if (!unit.empty()) item["unit"] = unit;
    if (entry.kind == Kind::value)
        item["value"] = inSystem(entry.value, entry.quantity, system);
    else if (entry.kind == Kind::integer)
        item["value"] = entry.integer;
    else
        item["value"] = entry.text;
    return item;
}

json pointJson(const PointState& point, UnitSystem system) {
    json item = {{"number", point.number}, {"key", point.key}, {"label", point.label}};
    if (!point.circuit.empty()) item["circuit"] = point.circuit;
    if (point.stage > 0) item["stage"] = point.stage;
    const auto put = [&](const char* name, double value, Quantity quantity) {
        item[name] = value == missingValue || !std::isfinite(value) ? json() : json(inSystem(value, quantity, system));
    };
    put("pressure", point.pressure, Quantity::pressure);
    put("temperature", point.temperature, Quantity::temperature);
    put("density", point.density, Quantity::density);
    put("enthalpy", point.enthalpy, Quantity::specificEnergy);
    put("entropy", point.entropy, Quantity::specificHeat);
    put("quality", point.quality, Quantity::quality);
    put("saturation_temperature", point.saturationTemperature, Quantity::temperature);
    return item;
}

// Columns of numbers: diagram, curve and column of a key such as "low.diagram.ph.dome.3.liquid.enthalpy".
json diagramsJson(const RunResult& result, UnitSystem system) {
    json diagrams = json::object();
    for (const Entry& entry : result.entries) {
        constexpr std::string_view word = "diagram.";
        const auto at = entry.key.find(word);
        if (!entry.isNumber() || at == std::string::npos || entry.row == 0) continue;
        const std::string row = '.' + std::to_string(entry.row) + '.';
        const std::string rest = entry.key.substr(at + word.size());
        const auto middle = rest.find(row);
        if (middle == std::string::npos) continue;
        const std::string curve = entry.key.substr(0, at) + rest.substr(0, middle);
        json& column = diagrams[curve][rest.substr(middle + row.size())];
        column.push_back(inSystem(entry.value, entry.quantity, system));
    }
    return diagrams;
}

json fluidJson(const RunResult& result, std::size_t circuit, const ReportStyle& style) {
    const Fluid& fluid = result.input.blocks[circuit].fluid;
    json item = json::object();
    if (fluid.kind == 3) {
        item["name"] = fluid.blendName;
        item["fractions"] = fluid.byMass ? "mass" : "mole";
        for (const Fluid::Component& component : fluid.components)
            item["components"].push_back({{"file", component.file}, {"fraction", component.fraction}});
    } else {
        item["file"] = fluid.file;
    }
    item["reference_state"] = fluid.referenceState;
    const Climate climate = climateOf(result, circuit, style.dataFolder, style.climateReport);
    const auto orNull = [](const std::optional<double>& value) { return value ? json(*value) : json(); };
    item["designation"] = climate.name;
    item["safety_class"] = climate.safetyClass.empty() ? json() : json(climate.safetyClass);
    item["gwp100"] = {{"report", std::string(climateReports[style.climateReport])}, {"value", orNull(climate.gwp)}};
    if (climate.below) item["gwp100"]["below"] = true;
    if (!climate.leftOut.empty()) item["gwp100"]["left_out"] = climate.leftOut;
    item["gwp_of_result_file"] = orNull(climate.ofResultFile);
    return item;
}

// What was chosen of a parameter under its own key, in the inner unit.
void putSetting(json& item, const Circuit& circuit, int stage, const Parameter& parameter, const Setting& setting) {
    for (const Option& option : parameter.options) {
        if (option.key.empty() || (option.form != Form::count && option.number != setting.option)) continue;
        const std::string key = keyOf(circuit, stage, parameter, option);
        if (option.form == Form::count)
            item[key] = setting.option;
        else if (option.form == Form::quantity)
            item[key] = setting.value;
        else
            item[key] = option.form == Form::yes;
    }
}

void putStages(json& item, const FilledRequest& input) {
    const Stages& stages = input.request->stages;
    for (int stage = 1; stage < input.stages(); ++stage)
        for (const Parameter& parameter : stages.parameters) {
            const int k =
                stages.countIndex + (stage - 1) * static_cast<int>(stages.parameters.size()) + parameter.index;
            const auto& settings = input.blocks.front().settings;
            if (k <= static_cast<int>(settings.size()))
                putSetting(item, input.request->circuits.front(), stage, parameter,
                           settings[static_cast<std::size_t>(k) - 1]);
        }
}

std::string wordOf(int property) {
    return std::string(propertyName(property).word);
}

void putTable(json& item, const PropertyQuestion& ask) {
    item["property"] = wordOf(ask.running);
    if (ask.step == 0.0) {
        item["suggested_limits"] = true;
        return;
    }
    item["from"] = ask.from;
    item["to"] = ask.to;
    item["step"] = ask.step;
}

void putQuestion(json& item, const FilledRequest& input) {
    const PropertyQuestion& ask = input.question;
    switch (input.request->sub) {
        case 2:
            putTable(item, ask);
            break;
        case 3:
            item["constant." + wordOf(ask.constant)] = ask.constantValue;
            putTable(item, ask);
            break;
        case 4:
            item[wordOf(ask.first)] = ask.firstValue;
            item[wordOf(ask.second)] = ask.secondValue;
            break;
        case 5:
        case 6:
            for (const Option& option : input.request->circuits.front().parameters.front().options)
                if (option.number == ask.side) item[std::string(option.key)] = ask.sideValue;
            break;
        default:
            break;
    }
}

void putInput(json& root, const RunResult& result, const ReportStyle& style) {
    const FilledRequest& input = result.input;
    if (input.request == nullptr) return;
    json item = {{"request", std::string(input.request->name)}};
    json fluids = json::object();
    for (std::size_t i = 0; i < input.blocks.size(); ++i) {
        const Circuit& circuit = input.request->circuits[i];
        const Block& block = input.blocks[i];
        const std::string own = catalogue::prefixOf(circuit);
        if (!block.title.empty()) item[own + "title"] = block.title;
        fluids[circuit.key.empty() ? "fluid" : std::string(circuit.key)] = fluidJson(result, i, style);
        for (std::size_t k = 0; k < block.settings.size() && k < circuit.parameters.size(); ++k)
            putSetting(item, circuit, 0, circuit.parameters[k], block.settings[k]);
    }
    putStages(item, input);
    constexpr int propertyType = 1;
    if (input.request->type == propertyType) putQuestion(item, input);
    root["input"] = std::move(item);
    root["fluid"] = std::move(fluids);
}

json resultJson(const RunResult& result, const ReportStyle& style) {
    const RunReport& report = result.report;
    json root;
    root["operation"] = {{"type", report.type}, {"subtype", report.sub}, {"name", requestedName(report)}};
    if (result.input.request != nullptr) root["request"] = std::string(result.input.request->name);
    if (!style.source.empty()) root["source"] = style.source;
    root["exit_status"] = exitStatus(result);
    if (style.resultFile) root["result_file"] = shownPath(report.resultPath.view());
    switch (report.end) {
        case RunEnd::refused:
            root["outcome"] = "refused";
            root["code"] = report.IERR;
            root["message"] = plainText(report.HERR.view());
            if (const std::string help = remarks::helpFor(result, circumstancesOf(style)); !help.empty())
                root["help"] = help;
            if (report.parameter > 0)
                root["parameter"] = {{"circuit", report.record},
                                     {"number", report.parameter},
                                     {"name", std::string(report.parameterName)},
                                     {"key", refusedKey(result)}};
            break;
        case RunEnd::runtimeError:
            root["outcome"] = "runtime error";
            root["message"] = plainText(report.HERR.view());
            break;
        case RunEnd::returned:
            root["outcome"] = result.resultExists ? "success" : "no such operation";
            break;
    }
    root["units"] = std::string(nameOf(style.units));
    putInput(root, result, style);
    json values = json::array(), points = json::array(), remarks = json::array();
    if (report.end == RunEnd::returned) {
        for (const Entry& entry : result.entries)
            if (entry.isData()) values.push_back(valueJson(entry, style.units));
        for (const PointState& point : result.points) points.push_back(pointJson(point, style.units));
    }
    for (const Remark& remark : result.remarks)
        remarks.push_back({{"name", remark.name},
                           {"weight", std::string(nameOf(remark.weight))},
                           {"place", remark.place},
                           {"text", remark.text},
                           {"advice", remark.advice}});
    root["values"] = std::move(values);
    root["points"] = std::move(points);
    root["diagrams"] = report.end == RunEnd::returned ? diagramsJson(result, style.units) : json::object();
    root["remarks"] = std::move(remarks);
    root["versions"] = {{"program", programVersion()}, {"data", dataVersion(style.dataFolder)}};
    return root;
}

void print(std::ostream& out, const json& root) {
    // Titles may hold bytes that are no UTF-8.
    out << root.dump(2, ' ', false, json::error_handler_t::replace) << '\n';
}

// What a spreadsheet would calculate instead of showing it; an apostrophe in front makes it a text.
bool isFormula(const std::string& text) {
    if (text.empty()) return false;
    const bool letter = text.size() > 1 && std::isalpha(static_cast<unsigned char>(text[1])) != 0;
    return text[0] == '=' || text[0] == '@' || ((text[0] == '+' || text[0] == '-') && letter);
}

std::string csvField(std::string text) {
    if (isFormula(text)) text.insert(0, 1, '\'');
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char character : text) quoted += character == '"' ? std::string("\"\"") : std::string(1, character);
    return quoted + "\"";
}

constexpr const char* csvHeading = "line,circuit,section,group,row,name,unit,value,key\n";

void printCsvRows(std::ostream& out, const RunResult& result, const ReportStyle& style, const std::string& first) {
    if (result.report.end != RunEnd::returned) return;
    for (const Entry& entry : result.entries) {
        if (!entry.isData()) continue;
        out << first << entry.line << ',' << csvField(entry.circuit) << ',' << csvField(entry.section) << ','
            << csvField(entry.group) << ',';
        if (entry.row > 0) out << entry.row;
        out << ',' << csvField(entry.name) << ',' << csvField(unitOf(entry, style.units)) << ',';
        if (entry.kind == Kind::value) {
            char number[40];
            std::snprintf(number, sizeof number, "%.17g", inSystem(entry.value, entry.quantity, style.units));
            out << number;
        } else if (entry.kind == Kind::integer) {
            out << entry.integer;
        } else {
            out << csvField(entry.text);
        }
        out << ',' << entry.key << '\n';
    }
}

}  // namespace

void printJson(std::ostream& out, const RunResult& result, const ReportStyle& style) {
    print(out, resultJson(result, style));
}

void printJson(std::ostream& out, const std::vector<Reported>& results) {
    json list = json::array();
    for (const auto& [result, style] : results) list.push_back(resultJson(result, style));
    print(out, list);
}

void printCsv(std::ostream& out, const RunResult& result, const ReportStyle& style) {
    out << csvHeading;
    printCsvRows(out, result, style, "");
}

void printCsv(std::ostream& out, const std::vector<Reported>& results) {
    out << "result," << csvHeading;
    for (std::size_t i = 0; i < results.size(); ++i)
        printCsvRows(out, results[i].result, results[i].style, std::to_string(i + 1) + ',');
}

}  // namespace frigana::app
