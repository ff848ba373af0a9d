#include "Study.h"

#include <algorithm>
#include <cmath>

#include "NamedRequest.h"
#include "Tree.h"

namespace frigana::studies {

using catalogue::Node;
using catalogue::Quantity;

namespace {

// What a key of a request stands for, and the other keys that say the same in another way.
struct KeyMeaning {
    Quantity quantity = Quantity::none;
    std::vector<std::string> rivals;
    bool known = false;
};

void lookAmong(const catalogue::Circuit& circuit, int stage, std::span<const catalogue::Parameter> parameters,
               std::string_view key, KeyMeaning& meaning) {
    for (const catalogue::Parameter& parameter : parameters)
        for (const catalogue::Option& option : parameter.options) {
            if (catalogue::keyOf(circuit, stage, parameter, option) != key) continue;
            meaning = {option.quantity, {}, true};
            for (const catalogue::Option& other : parameter.options)
                if (const std::string rival = catalogue::keyOf(circuit, stage, parameter, other); rival != key)
                    meaning.rivals.push_back(rival);
        }
}

KeyMeaning meaningOf(const catalogue::Request* request, std::string_view key) {
    KeyMeaning meaning;
    if (request == nullptr) return meaning;
    for (const catalogue::Circuit& circuit : request->circuits) {
        lookAmong(circuit, 0, circuit.parameters, key, meaning);
        for (int stage = 1; stage < request->stages.most; ++stage)
            lookAmong(circuit, stage, request->stages.parameters, key, meaning);
    }
    return meaning;
}

Quantity differenceOf(Quantity quantity) {
    if (quantity == Quantity::temperature) return Quantity::temperatureDifference;
    if (quantity == Quantity::pressure) return Quantity::pressureDifference;
    return quantity;
}

bool isRange(const Node& node) {
    return node.kind == Node::Kind::table && node.find("from") != nullptr;
}

}  // namespace

Node Values::at(std::size_t number) const {
    if (!list_.empty()) return list_[number];
    // Digits beyond those of a person's steps are the rounding of their sum.
    constexpr int digits = 12;
    const double rounded = std::stod(catalogue::numberText(first_ + static_cast<double>(number) * width_, digits));
    const double value = std::abs(rounded) < 1e-9 * std::abs(width_) ? 0.0 : rounded;
    return unit_ == nullptr ? numberNode(value)
                            : textNode(catalogue::numberText(value) + ' ' + std::string(unit_->symbol));
}

// Reads a description and gathers all that is wrong with it.
class Study::Reader {
  public:
    Reader(Study& study, const ReadFile& readFile) : study_(study), readFile_(readFile) {}
    void read(const Node& description);

  private:
    void problem(const Node& node, const std::string& text) { problems_.push_back({node.line, text}); }
    void readRequest(const Node& description);
    void readResults(const Node& description);
    template <typename Take>
    void readKeys(const Node& table, const std::string& prefix, const Take& take);
    void readGrid(const Node& description);
    void readSideBySide(const Node& description);
    Values readValues(const std::string& key, const Node& node);
    Values readRange(const std::string& key, const Node& range);
    void vary(const std::string& key, const Node& node);
    void count(const Node& description);

    Study& study_;
    const ReadFile& readFile_;
    const catalogue::Request* catalogued_ = nullptr;
    std::vector<catalogue::Problem> problems_;
};

void Study::Reader::readRequest(const Node& description) {
    const Node* request = description.find("request");
    if (request == nullptr) {
        problem(description, "request is missing: the file of a named request, or its table");
        return;
    }
    if (request->kind == Node::Kind::table) {
        study_.request_ = *request;
    } else if (request->kind == Node::Kind::text && readFile_ != nullptr) {
        const bool json = request->text.ends_with(".json");
        const std::string text = readFile_(request->text);
        for (const catalogue::Problem& found :
             json ? catalogue::readJson(text, study_.request_) : catalogue::readToml(text, study_.request_))
            problem(*request, request->text + ':' + std::to_string(found.line) + ": " + found.text);
    } else {
        problem(*request, "request = " + request->shown() + ": allowed is the table of a named request");
    }
    const Node* name = study_.request_.find("request");
    catalogued_ = name != nullptr && name->kind == Node::Kind::text ? catalogue::findRequest(name->text) : nullptr;
    if (problems_.empty() && catalogued_ == nullptr)
        problem(*request, "request: there is no request of the name " + (name == nullptr ? "\"\"" : name->shown()));
}

void Study::Reader::readResults(const Node& description) {
    const Node* results = description.find("results");
    const Node* keys = results != nullptr ? results->find("keys") : nullptr;
    if (keys == nullptr || keys->kind != Node::Kind::list || keys->items.empty()) {
        problem(keys != nullptr ? *keys : description,
                "results.keys is missing: a list of keys of results, such as [\"performance.cop_cooling\"]");
        return;
    }
    for (const Node& key : keys->items) {
        if (key.kind != Node::Kind::text || key.text.empty())
            problem(key, "results.keys = " + key.shown() + ": allowed are keys of results");
        else
            study_.results_.push_back(key.text);
    }
}

// Calls take(key, values) for every key of a table, however its parts are nested.
template <typename Take>
void Study::Reader::readKeys(const Node& table, const std::string& prefix, const Take& take) {
    for (const auto& [part, node] : table.members) {
        const std::string key = prefix.empty() ? part : prefix + '.' + part;
        if (node.kind == Node::Kind::table && !isRange(node))
            readKeys(node, key, take);
        else
            take(key, node);
    }
}

Values Study::Reader::readRange(const std::string& key, const Node& range) {
    const Quantity quantity = meaningOf(catalogued_, key).quantity;
    // Numbers without a unit stay so: the request says what they are.
    const auto number = [&](const char* name, Quantity kind, const catalogue::Unit** unit) {
        const Node* node = range.find(name);
        if (node->kind == Node::Kind::number) return node->number;
        const catalogue::Parsed parsed = catalogue::parseQuantity(node->text, kind, nullptr);
        if (node->kind != Node::Kind::text || !parsed.problem.empty() || parsed.unit == nullptr) {
            problem(*node, key + '.' + name + " = " + node->shown() + ": " +
                               (parsed.problem.empty() ? "allowed is a number, or one with its unit" : parsed.problem));
            return 0.0;
        }
        *unit = parsed.unit;
        return parsed.value;
    };
    const Node *to = range.find("to"), *step = range.find("step"), *count = range.find("count");
    if (to == nullptr || (step == nullptr) == (count == nullptr) || range.members.size() != 3) {
        problem(range, key + ": a range has from, to, and either step or count");
        return {};
    }
    const catalogue::Unit *unit = nullptr, *endUnit = nullptr, *stepUnit = nullptr;
    double first = number("from", quantity, &unit), last = number("to", quantity, &endUnit);
    double width = step != nullptr ? number("step", differenceOf(quantity), &stepUnit) : 0.0;
    if (!problems_.empty()) return {};
    if ((unit == nullptr) != (endUnit == nullptr) || (step != nullptr && (unit == nullptr) != (stepUnit == nullptr))) {
        problem(range, key + ": from, to and step have all a unit or none");
        return {};
    }
    if (unit != nullptr) {
        first = catalogue::fromInner(first, *unit);
        last = catalogue::fromInner(last, *unit);
        width /= unit->factor;
    }
    double intervals = 0.0;
    if (step != nullptr) {
        // A last step that ends beside the bound only by the rounding of numbers ends there.
        intervals = std::floor((last - first) / width * (1 + 1e-12) + 1e-9);
        if (!(width != 0.0) || !(intervals >= 0.0))
            problem(*step, key + ".step does not lead from the one bound to the other");
    } else {
        intervals = count->number - 1;
        if (!count->whole || intervals < 0)
            problem(*count, key + ".count = " + count->shown() + ": allowed is a whole number from 1");
        width = intervals > 0 ? (last - first) / intervals : 0.0;
    }
    if (intervals >= static_cast<double>(mostCases))
        problem(range, key + ": the range has more than " + std::to_string(mostCases) + " values");
    if (!problems_.empty()) return {};

    return {first, width, static_cast<std::size_t>(intervals) + 1, unit};
}

Values Study::Reader::readValues(const std::string& key, const Node& node) {
    if (isRange(node)) return readRange(key, node);
    if (node.kind == Node::Kind::list && !node.items.empty()) return Values(node.items);
    problem(node,
            key + " = " + node.shown() + ": allowed is a list of values, or a range with from, to and step or count");
    return {};
}

// Takes a key out of the request, with those that say the same in another way.
void Study::Reader::vary(const std::string& key, const Node& node) {
    const std::vector<std::string>& varied = study_.varied_;
    if (std::ranges::find(varied, key) != varied.end()) problem(node, key + " varies twice");
    const KeyMeaning meaning = meaningOf(catalogued_, key);
    const std::string last = key.substr(key.rfind('.') + 1);
    const bool general = std::ranges::any_of(catalogue::generalKeys(),
                                             [&](const catalogue::GeneralKey& row) { return row.key == last; });
    if (catalogued_ != nullptr && catalogued_->type == 2 && !meaning.known && !general)
        problem(node, key + ": the request " + std::string(catalogued_->name) + " has no such key");
    for (const std::string& rival : meaning.rivals) {
        if (std::ranges::find(varied, rival) != varied.end())
            problem(node, key + " and " + rival + " say the same thing");
        take(study_.request_, rival);
    }
    take(study_.request_, key);
    study_.varied_.push_back(key);
}

void Study::Reader::readGrid(const Node& description) {
    const Node* table = description.find("vary");
    if (table == nullptr) return;
    readKeys(*table, "", [&](const std::string& key, const Node& node) {
        vary(key, node);
        study_.axes_.push_back({{key}, {readValues(key, node)}});
    });
}

void Study::Reader::readSideBySide(const Node& description) {
    const Node* table = description.find("zip");
    if (table == nullptr) return;
    Axis axis;
    readKeys(*table, "", [&](const std::string& key, const Node& node) {
        vary(key, node);
        axis.keys.push_back(key);
        axis.values.push_back(readValues(key, node));
        if (problems_.empty() && axis.values.back().size() != axis.length())
            problem(node, key + " has " + std::to_string(axis.values.back().size()) + " values, " + axis.keys.front() +
                              " has " + std::to_string(axis.length()) + ": lists side by side are equally long");
    });
    if (!axis.keys.empty()) study_.axes_.push_back(std::move(axis));
}

void Study::Reader::count(const Node& description) {
    if (study_.axes_.empty()) problem(description, "nothing varies: vary or zip is missing");
    study_.cases_ = 1;
    for (const Axis& axis : study_.axes_) {
        if (problems_.empty() && axis.length() > mostCases / study_.cases_)
            problem(description, "there are more than " + std::to_string(mostCases) + " cases");
        if (!problems_.empty()) return;
        study_.cases_ *= axis.length();
    }
}

void Study::Reader::read(const Node& description) {
    for (const auto& [key, node] : description.members)
        if (key != "request" && key != "vary" && key != "zip" && key != "results")
            problem(node, key + ": a study has request, vary, zip and results");
    for (const char* name : {"vary", "zip", "results"})
        if (const Node* node = description.find(name); node != nullptr && node->kind != Node::Kind::table)
            problem(*node, std::string(name) + " = " + node->shown() + ": allowed is a table");
    if (problems_.empty()) readRequest(description);
    if (problems_.empty()) {
        readResults(description);
        readGrid(description);
        readSideBySide(description);
        count(description);
    }
    if (!problems_.empty()) throw Faulty{problems_};
}

Study::Study(const Node& description, const ReadFile& readFile) {
    Reader(*this, readFile).read(description);
}

std::vector<Setting> Study::settings(std::size_t number) const {
    std::vector<Setting> all(varied_.size());
    std::size_t end = varied_.size();
    for (auto axis = axes_.rbegin(); axis != axes_.rend(); ++axis) {
        const std::size_t row = number % axis->length();
        number /= axis->length();
        end -= axis->keys.size();
        for (std::size_t i = 0; i < axis->keys.size(); ++i) all[end + i] = {axis->keys[i], axis->values[i].at(row)};
    }
    return all;
}

std::string Study::caseRequest(std::size_t number) const {
    Node request = request_;
    for (const Setting& setting : settings(number)) put(request, setting.key, setting.value);
    return jsonOf(request);
}

}  // namespace frigana::studies
