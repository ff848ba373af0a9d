#include "Refrigerants.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>

namespace frigana::catalogue {

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

std::string inCapitals(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return result;
}

std::string stem(std::string_view file) {
    return std::string(file.substr(0, file.find_last_of('.')));
}

// The member of an object; null where it is not there.
const json& member(const json& object, std::string_view key) {
    static const json nothing;
    const auto found = object.is_object() ? object.find(key) : object.end();
    return found == object.end() ? nothing : *found;
}

std::string textOf(const json& value) {
    return value.is_string() ? value.get<std::string>() : std::string();
}

std::optional<double> numberOf(const json& value) {
    return value.is_number() ? std::optional<double>(value.get<double>()) : std::nullopt;
}

std::vector<std::string> textsOf(const json& value) {
    std::vector<std::string> texts;
    if (value.is_array())
        for (const json& item : value)
            if (item.is_string()) texts.push_back(item.get<std::string>());
    return texts;
}

Refrigerant refrigerantOf(const json& record) {
    Refrigerant r;
    r.name = textOf(member(record, "name"));
    r.blend = textOf(member(record, "kind")) == "blend";
    r.family = textOf(member(record, "family"));
    r.designation = textOf(member(record, "designation"));
    r.cas = textOf(member(record, "cas"));
    r.safetyClass = textOf(member(record, "safety_class"));
    r.note = textOf(member(record, "note"));
    r.aliases = textsOf(member(record, "aliases"));
    r.odp = numberOf(member(record, "odp"));
    for (std::size_t k = 0; k < climateReports.size(); ++k) {
        r.gwp[k] = numberOf(member(member(record, "gwp100"), climateReports[k]));
        r.gwpBelow[k] = numberOf(member(member(record, "gwp100_below"), climateReports[k]));
        r.gwpLeftOut[k] = textsOf(member(member(record, "gwp100_left_out"), climateReports[k]));
    }
    return r;
}

std::string fourDigits(double value) {
    char text[40];
    std::snprintf(text, sizeof text, std::abs(value) >= 1000.0 ? "%.0f" : "%.4g", value);
    return text;
}

}  // namespace

Refrigerants::Refrigerants(const std::string& dataFolder) {
    std::ifstream file(fs::path(dataFolder) / "refrigerants.json");
    const json root = json::parse(file, nullptr, false);
    if (root.is_discarded()) return;
    for (const json& record : member(root, "fluids")) {
        const Refrigerant refrigerant = refrigerantOf(record);
        if (refrigerant.name.empty() || !byName_.emplace(inCapitals(refrigerant.name), all_.size()).second) continue;
        all_.push_back(refrigerant);
    }
}

const Refrigerant* Refrigerants::find(std::string_view file) const {
    const auto found = byName_.find(inCapitals(stem(file)));
    return found == byName_.end() ? nullptr : &all_[found->second];
}

const Refrigerants& Refrigerants::of(const std::string& dataFolder) {
    static std::map<std::string, std::unique_ptr<Refrigerants>> kept;
    std::unique_ptr<Refrigerants>& place = kept[dataFolder];
    if (!place) place = std::make_unique<Refrigerants>(dataFolder);
    return *place;
}

std::string shownPotential(const Refrigerant& refrigerant, std::size_t report) {
    if (refrigerant.gwp[report]) return fourDigits(*refrigerant.gwp[report]);
    if (refrigerant.gwpBelow[report]) return "<" + fourDigits(*refrigerant.gwpBelow[report]);
    return "-";
}

std::vector<std::string> estimatedProperties(const std::string& dataFolder, std::string_view file,
                                             const std::vector<std::string>& components) {
    constexpr std::string_view mark = "?Estimated: ";
    std::vector<std::string> found;
    const auto readFile = [&](const std::string& name) {
        std::ifstream lines(fs::path(dataFolder) / "fluids" / (stem(name) + ".FLD"));
        for (std::string line; std::getline(lines, line);) {
            if (!line.empty() && line.back() == '\r') line.pop_back();
            if (!line.starts_with(mark)) continue;
            const std::string property = line.substr(mark.size());
            if (std::find(found.begin(), found.end(), property) == found.end()) found.push_back(property);
        }
    };
    if (components.empty()) readFile(std::string(file));
    for (const std::string& component : components) readFile(component);
    return found;
}

}  // namespace frigana::catalogue
