#include "Schema.h"

#include <nlohmann/json.hpp>
#include <set>

#include "NamedRequest.h"
#include "Results.h"

namespace frigana::catalogue {

namespace {

using json = nlohmann::ordered_json;

// A value of an option. A number with a unit is a text; a plain one needs units at the top, so that no bound can be
// told for it here: the limits stand in the description, in the inner unit.
json valueSchema(const Request& request, int circuit, bool stage, const Parameter& parameter, const Option& option) {
    const auto limits = limitsOf(request, circuit, stage, parameter, option);
    json schema;
    std::string description(option.label);
    switch (option.form) {
        case Form::yes:
        case Form::no:
            schema["type"] = "boolean";
            if (parameter.options.size() != 2 || parameter.options[0].key != parameter.options[1].key)
                schema["const"] = true;
            break;
        case Form::count:
            schema["type"] = "integer";
            // Those of the options that the checks know.
            schema["minimum"] = limits->lower;
            schema["maximum"] = limits->upper;
            break;
        case Form::word:
            schema["type"] = "string";
            for (const Option& other : parameter.options) schema["enum"].push_back(std::string(other.label));
            description = parameter.label;
            break;
        default: {
            const Unit& inner = unitsOf(option.quantity).front();
            if (option.quantity == Quantity::count) {
                schema["type"] = "integer";
            } else {
                schema["type"] = json::parse(R"(["number", "string"])");
            }
            if (limits) description += "; allowed " + limitsText(*limits, option.quantity, inner);
            break;
        }
    }
    schema["description"] = description;
    return schema;
}

// The schema of the table that a dotted key stands in; inner tables are made where they are missing.
json& tableOf(json& root, const std::string& key, std::string& last) {
    json* at = &root;
    std::size_t begin = 0;
    for (auto dot = key.find('.'); dot != std::string::npos; dot = key.find('.', begin)) {
        json& next = (*at)["properties"][key.substr(begin, dot - begin)];
        if (next.is_null())
            next = json::parse(R"({"type": "object", "additionalProperties": false, "properties": {}})");
        at = &next;
        begin = dot + 1;
    }
    last = key.substr(begin);
    return *at;
}

void put(json& root, const std::string& key, json schema) {
    std::string last;
    json& table = tableOf(root, key, last);
    json& place = table["properties"][last];
    if (place.is_null()) place = std::move(schema);
}

void putParameters(json& root, const Request& request, int circuit, int stage, std::span<const Parameter> parameters) {
    const Circuit& own = request.circuits[static_cast<std::size_t>(circuit)];
    for (const Parameter& parameter : parameters) {
        if (parameter.absent == Absent::unused || parameter.absent == Absent::derived) continue;
        for (const Option& option : parameter.options)
            put(root, keyOf(own, stage, parameter, option),
                valueSchema(request, circuit, stage > 0, parameter, option));
    }
}

json textOf(std::string_view meaning) {
    json schema;
    schema["type"] = "string";
    schema["description"] = meaning;
    return schema;
}

void putGeneral(json& root, const std::string& prefix, bool inCircuit) {
    for (const GeneralKey& key : generalKeys()) {
        const std::string name(key.key);
        if (name == "request" || (inCircuit && name == "units")) continue;
        if (!inCircuit && (name == "fluid" || name == "fractions" || name == "blend_name") && prefix == "-") continue;
        json schema = textOf(key.meaning);
        if (name == "fluid") {
            schema.erase("type");
            schema["anyOf"] = json::parse(
                R"([{"type": "string"}, {"type": "object", "additionalProperties": {"type": ["number", "string"]}}])");
        }
        put(root, (prefix == "-" ? std::string() : prefix) + name, std::move(schema));
    }
}

}  // namespace

std::string schemaOf(const Request& request) {
    json root;
    root["$schema"] = "https://json-schema.org/draft/2020-12/schema";
    root["title"] = request.title;
    root["description"] = request.about;
    root["type"] = "object";
    root["additionalProperties"] = false;
    root["required"].push_back("request");
    root["properties"]["request"]["const"] = request.name;
    const bool two = request.circuits.size() == 2;
    putGeneral(root, two ? "-" : "", false);
    if (two) {
        for (const Circuit& circuit : request.circuits) putGeneral(root, std::string(circuit.key) + '.', true);
    } else {
        root["required"].push_back("fluid");
    }
    json& properties = root["properties"];
    properties["units"] =
        json::parse(R"({"description": "units of plain numbers", "enum": ["SI", "metric", "imperial"]})");
    for (std::size_t i = 0; i < request.circuits.size(); ++i)
        putParameters(root, request, static_cast<int>(i), 0, request.circuits[i].parameters);
    for (int stage = 1; request.stages.countIndex > 0 && stage < request.stages.most; ++stage)
        putParameters(root, request, 0, stage, request.stages.parameters);
    constexpr int propertyType = 1, firstPoint = 4, lastPoint = 6;
    if (request.type == propertyType && request.sub >= firstPoint && request.sub <= lastPoint)
        properties["points"] = json::parse(R"({"description": "several points, each a table of the same keys",
                                               "type": "array", "items": {"type": "object"}})");
    json results = json::array();
    for (const ListedResult& one : resultsOf(request)) {
        json& value = results.emplace_back();
        value["key"] = one.key;
        value["name"] = one.name;
        if (!one.unit.empty()) value["unit"] = one.unit;
        if (one.quantity != Quantity::none) value["quantity"] = std::string(nameOf(one.quantity));
    }
    // For programs: what the result will hold. Validators pass over it.
    root["x-results"] = std::move(results);
    return root.dump(2);
}

}  // namespace frigana::catalogue
