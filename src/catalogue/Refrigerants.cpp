#include "Refrigerants.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>

#include "OneRefrigerant.h"
#include "Words.h"

namespace frigana::catalogue {

namespace {

namespace fs = std::filesystem;
using nlohmann::json;

constexpr const char* listOfFluids = "refrigerants.json";

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

// A value of a JSON text as it stands there: parted without looking into what is not asked for.
struct RawJson {
    static constexpr auto none = std::string_view::npos;
    std::string_view text;

    explicit RawJson(std::string_view whole) : text(whole) {}

    json parsed() const { return json::parse(text, nullptr, false); }

    // A text; empty where the value is another one.
    std::string characters() const {
        if (text.size() < 2 || text.front() != '"') return {};
        if (text.find('\\') != none) return textOf(parsed());
        return std::string(text.substr(1, text.size() - 2));
    }

    // The member of an object; an empty text where it is not there, or where the text is no object to its end.
    RawJson member(std::string_view wanted) const {
        std::string_view found;
        const bool whole = eachPart('{', '}', [&](std::string_view key, std::string_view value) {
            if (key.size() == wanted.size() + 2 && key.substr(1, wanted.size()) == wanted) found = value;
        });
        return RawJson(whole ? found : std::string_view{});
    }
    template <class Take>
    void eachItem(const Take& take) const {
        eachPart('[', ']', [&](std::string_view, std::string_view value) { take(RawJson(value)); });
    }

  private:
    std::size_t behindBlanks(std::size_t at) const {
        at = text.find_first_not_of(" \t\r\n", at);
        return at == none ? text.size() : at;
    }
    std::size_t behindString(std::size_t at) const {
        for (++at; (at = text.find('"', at)) != none; ++at) {
            std::size_t slashes = 0;
            while (text[at - 1 - slashes] == '\\') ++slashes;
            if (slashes % 2 == 0) return at + 1;
        }
        return none;
    }
    std::size_t behindValue(std::size_t at) const {
        int depth = 0;
        do {
            if (at >= text.size()) return none;
            const char c = text[at];
            if (c == '"') {
                at = behindString(at);
            } else if (c == '{' || c == '[') {
                ++depth;
                ++at;
            } else if (c == '}' || c == ']') {
                --depth;
                ++at;
            } else if (depth == 0) {
                return std::min(text.find_first_of(",]} \t\r\n", at), text.size());
            } else {
                ++at;
            }
        } while (at != none && depth > 0);
        return at;
    }

    // Calls take(key, value) for the members of an object, take("", value) for the items of an array; true if there was
    // one, whole.
    template <class Take>
    bool eachPart(char open, char close, const Take& take) const {
        std::size_t at = behindBlanks(0);
        if (at == text.size() || text[at] != open) return false;
        at = behindBlanks(at + 1);
        while (at < text.size() && text[at] != close) {
            std::string_view key;
            if (open == '{') {
                const std::size_t end = text[at] == '"' ? behindString(at) : none;
                if (end == none) return false;
                key = text.substr(at, end - at);
                at = behindBlanks(end);
                if (at == text.size() || text[at] != ':') return false;
                at = behindBlanks(at + 1);
            }
            const std::size_t end = behindValue(at);
            if (end == none || end == at) return false;
            take(key, text.substr(at, end - at));
            at = behindBlanks(end);
            if (at < text.size() && text[at] == ',') at = behindBlanks(at + 1);
        }
        return at < text.size();
    }
};

// The records of a file by the names of their files, in capitals. A record is read when it is asked for: most requests
// ask for one of two hundred.
class SingleRecords {
  public:
    explicit SingleRecords(const std::string& dataFolder) {
        std::ifstream file(fs::path(dataFolder) / listOfFluids);
        text_.assign(std::istreambuf_iterator<char>(file), {});
        RawJson(text_).member("fluids").eachItem([&](RawJson record) {
            const std::string name = record.member("name").characters();
            if (!name.empty()) byName_.try_emplace(inCapitals(name), Record{record.text, {}});
        });
    }
    SingleRecords(const SingleRecords&) = delete;
    SingleRecords& operator=(const SingleRecords&) = delete;

    const Refrigerant* find(std::string_view file) {
        const auto found = byName_.find(inCapitals(stem(file)));
        if (found == byName_.end()) return nullptr;
        Record& record = found->second;
        if (!record.read) record.read = refrigerantOf(RawJson(record.text).parsed());
        return record.read->name.empty() ? nullptr : &*record.read;
    }

  private:
    struct Record {
        std::string_view text;  // in text_
        std::optional<Refrigerant> read;
    };
    std::string text_;
    std::unordered_map<std::string, Record> byName_;
};

std::string fourDigits(double value) {
    char text[40];
    std::snprintf(text, sizeof text, std::abs(value) >= 1000.0 ? "%.0f" : "%.4g", value);
    return text;
}

}  // namespace

Refrigerants::Refrigerants(const std::string& dataFolder) {
    std::ifstream file(fs::path(dataFolder) / listOfFluids);
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

const Refrigerant* oneRefrigerant(const std::string& dataFolder, std::string_view file) {
    static std::map<std::string, std::unique_ptr<SingleRecords>> kept;
    std::unique_ptr<SingleRecords>& place = kept[dataFolder];
    if (!place) place = std::make_unique<SingleRecords>(dataFolder);
    return place->find(file);
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
