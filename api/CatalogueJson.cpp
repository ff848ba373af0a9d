#include "CatalogueJson.h"

#include <nlohmann/json.hpp>

#include "Catalogue.h"
#include "Climate.h"
#include "Listing.h"
#include "NamedRequest.h"
#include "Names.h"
#include "Refrigerants.h"

namespace frigana::programs {

namespace {

using namespace catalogue;
using Json = nlohmann::ordered_json;

std::string_view nameOfForm(Form form) {
    constexpr std::string_view names[] = {"quantity", "yes", "no", "count", "word"};
    return names[static_cast<int>(form)];
}

std::string_view nameOfAbsent(Absent absent) {
    constexpr std::string_view names[] = {"refused", "zero", "unused", "derived", "optional"};
    return names[static_cast<int>(absent)];
}

// In the description of a stage its number stands as {stage}, since the keys of all stages are alike.
constexpr int anyStage = 1;

Json optionJson(const Request& request, int number, bool stage, const Parameter& parameter, const Option& option) {
    const Circuit& circuit = request.circuits[static_cast<std::size_t>(number)];
    Json json = {{"number", option.number},
                 {"key", keyOf(circuit, stage ? anyStage : 0, parameter, option)},
                 {"label", option.label},
                 {"form", nameOfForm(option.form)},
                 {"quantity", nameOf(option.quantity)}};
    if (const auto limits = limitsOf(request, number, stage, parameter, option))
        json["limits"] = {{"lower", limits->lower}, {"upper", limits->upper}, {"open", limits->open}};
    return json;
}

Json parametersJson(const Request& request, int circuit, bool stage, std::span<const Parameter> parameters) {
    Json all = Json::array();
    for (const Parameter& parameter : parameters) {
        Json options = Json::array();
        for (const Option& option : parameter.options)
            options.push_back(optionJson(request, circuit, stage, parameter, option));
        all.push_back({{"index", parameter.index},
                       {"place", parameter.place},
                       {"label", parameter.label},
                       {"absent", nameOfAbsent(parameter.absent)},
                       {"typical", {{"option", parameter.typical.option}, {"value", parameter.typical.value}}},
                       {"options", std::move(options)}});
    }
    return all;
}

Json pointsJson(std::span<const Point> points) {
    Json all = Json::array();
    for (const Point& point : points)
        all.push_back({{"number", point.number}, {"key", point.key}, {"label", point.label}});
    return all;
}

Json requestJson(const Request& request) {
    Json circuits = Json::array();
    for (std::size_t i = 0; i < request.circuits.size(); ++i) {
        const Circuit& circuit = request.circuits[i];
        circuits.push_back({{"key", circuit.key},
                            {"label", circuit.label},
                            {"fluid", circuit.fluid},
                            {"title", circuit.title},
                            {"parameters", parametersJson(request, static_cast<int>(i), false, circuit.parameters)},
                            {"points", pointsJson(circuit.points)}});
    }
    Json json = {{"name", request.name}, {"title", request.title}, {"about", request.about},
                 {"type", request.type}, {"subtype", request.sub}, {"circuits", std::move(circuits)}};
    if (request.stages.most > 0)
        json["stages"] = {{"most", request.stages.most},
                          {"parameters", parametersJson(request, 0, true, request.stages.parameters)},
                          {"points", pointsJson(request.stages.points)}};
    json["leading"] = Json::array();
    for (const std::string_view key : request.leading) json["leading"].push_back(key);
    return json;
}

Json quantitiesJson() {
    Json all = Json::object();
    for (int i = 0; i < quantityCount; ++i) {
        const auto quantity = static_cast<Quantity>(i);
        if (quantity == Quantity::none) continue;
        Json units = Json::array();
        for (const Unit& unit : unitsOf(quantity))
            units.push_back({{"symbol", unit.symbol}, {"factor", unit.factor}, {"shift", unit.shift}});
        Json systems = Json::object();
        for (const UnitSystem system : {UnitSystem::SI, UnitSystem::metric, UnitSystem::imperial})
            systems[std::string(nameOf(system))] = unitIn(system, quantity).symbol;
        all[std::string(nameOf(quantity))] = {{"units", std::move(units)}, {"systems", std::move(systems)}};
    }
    return all;
}

void addParts(const app::ListedFluid& fluid, Json& json) {
    for (const app::ListedFluid::Part& part : fluid.parts)
        json["components"].push_back({{"name", part.component}, {"mass_fraction", part.massFraction}});
    if (!fluid.fault.empty()) json["fault"] = fluid.fault;
}

Json fluidJson(const app::ListedFluid& fluid, bool blend, const FluidNames& names) {
    Json json = {{"file", fluid.file},
                 {"name", names.nameFor(fluid.file)},
                 {"shown", names.shownName(fluid.file)},
                 {"full_name", fluid.name},
                 {"blend", blend},
                 {"own", false},
                 {"potential", fluid.ownPotential},
                 {"safety_class", fluid.ownClass}};
    if (const Refrigerant* known = fluid.known) {
        json["family"] = known->family;
        json["designation"] = known->designation;
        if (!known->safetyClass.empty()) json["safety_class"] = known->safetyClass;
        for (std::size_t report = 0; report < climateReports.size(); ++report)
            if (known->gwp[report]) json["gwp100"][std::string(climateReports[report])] = *known->gwp[report];
    }
    addParts(fluid, json);
    return json;
}

Json ownBlendJson(const app::ListedFluid& blend, const std::string& dataFolder) {
    Json json = {{"file", blend.file},
                 {"name", blend.file},
                 {"shown", blend.file},
                 {"full_name", ""},
                 {"blend", true},
                 {"own", true},
                 {"potential", blend.ownPotential},
                 {"safety_class", ""}};
    addParts(blend, json);
    if (!blend.fault.empty()) return json;
    for (std::size_t report = 0; report < climateReports.size(); ++report)
        if (const auto figure = climateOf(*blend.own, dataFolder, report).gwp)
            json["gwp100"][std::string(climateReports[report])] = *figure;
    return json;
}

std::string written(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

std::string requestsJson() {
    Json all = Json::array(), general = Json::array(), words = Json::array();
    for (const Request& request : requests()) all.push_back(requestJson(request));
    for (const GeneralKey& key : generalKeys())
        general.push_back({{"key", key.key}, {"meaning", key.meaning}, {"allowed", key.allowed}});
    for (const PropertyName& property : propertyNames())
        words.push_back({{"code", property.code}, {"word", property.word}, {"quantity", nameOf(property.quantity)}});
    return written({{"requests", std::move(all)},
                    {"general", std::move(general)},
                    {"property_words", std::move(words)},
                    {"quantities", quantitiesJson()}});
}

std::string fluidsJson(const std::string& dataFolder) {
    const FluidNames& names = FluidNames::of(dataFolder);
    app::Listing listing;
    app::listData(dataFolder, personalFolder(), listing);
    Json all = Json::array();
    for (const app::ListedFluid& fluid : listing.fluids) all.push_back(fluidJson(fluid, false, names));
    for (const app::ListedFluid& blend : listing.blends) all.push_back(fluidJson(blend, true, names));
    for (const app::ListedFluid& blend : listing.ownBlends) all.push_back(ownBlendJson(blend, dataFolder));
    return written({{"fluids", std::move(all)}});
}

}  // namespace frigana::programs
