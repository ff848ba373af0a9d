#include "Study.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "CaseFile.h"
#include "NamedRequest.h"
#include "Tree.h"

namespace frigana::studies {

using catalogue::Node;
using catalogue::Quantity;

namespace {

constexpr std::size_t mostSearched = 2;  // keys of an optimum

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

Node valueWith(double number, const catalogue::Unit* unit) {
    if (unit == nullptr) {
        Node node = numberNode(number);
        constexpr double exact = 1e15;
        node.whole = number == std::floor(number) && std::abs(number) < exact;
        return node;
    }
    return textNode(catalogue::numberText(number) + ' ' + std::string(unit->symbol));
}

bool isRange(const Node& node) {
    return node.kind == Node::Kind::table && node.find("from") != nullptr;
}

}  // namespace

Node Values::at(std::size_t number) const {
    if (!list_.empty()) return list_[number];
    if (!numbers_.empty()) return valueWith(numbers_[number], unit_);
    // Digits beyond those of a person's steps are the rounding of their sum.
    constexpr int digits = 12;
    const double rounded = std::stod(catalogue::numberText(first_ + static_cast<double>(number) * width_, digits));
    const double value = std::abs(rounded) < 1e-9 * std::abs(width_) ? 0.0 : rounded;
    return valueWith(value, unit_);
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
    double readNumber(const std::string& key, const Node& node, Quantity quantity, const catalogue::Unit** unit);
    void vary(const std::string& key, const Node& node);
    void readCases(const Node& description);
    void readColumn(const Node& node, const CaseColumn& column, Axis& axis);
    void readOptimum(const Node& description);
    void readOver(const Node& optimum, const std::string& key, std::size_t place);
    void count(const Node& description);

    Study& study_;
    const ReadFile& readFile_;
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
    study_.catalogued_ =
        name != nullptr && name->kind == Node::Kind::text ? catalogue::findRequest(name->text) : nullptr;
    if (problems_.empty() && study_.catalogued_ == nullptr)
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

// A number in the inner unit, or one without a unit, which stays so: the request says what it is.
double Study::Reader::readNumber(const std::string& key, const Node& node, Quantity quantity,
                                 const catalogue::Unit** unit) {
    if (node.kind == Node::Kind::number) return node.number;
    const catalogue::Parsed parsed = catalogue::parseQuantity(node.text, quantity, nullptr);
    if (node.kind != Node::Kind::text || !parsed.problem.empty() || parsed.unit == nullptr) {
        problem(node, key + " = " + node.shown() + ": " +
                          (parsed.problem.empty() ? "allowed is a number, or one with its unit" : parsed.problem));
        return 0.0;
    }
    *unit = parsed.unit;
    return parsed.value;
}

Values Study::Reader::readRange(const std::string& key, const Node& range) {
    const Quantity quantity = meaningOf(study_.catalogued_, key).quantity;
    const auto number = [&](const char* name, Quantity kind, const catalogue::Unit** unit) {
        return readNumber(key + '.' + name, *range.find(name), kind, unit);
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
    const KeyMeaning meaning = meaningOf(study_.catalogued_, key);
    const std::string last = key.substr(key.rfind('.') + 1);
    const bool general = std::ranges::any_of(catalogue::generalKeys(),
                                             [&](const catalogue::GeneralKey& row) { return row.key == last; });
    if (study_.catalogued_ != nullptr && study_.catalogued_->type == 2 && !meaning.known && !general)
        problem(node, key + ": the request " + std::string(study_.catalogued_->name) + " has no such key");
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

// ---- cases of a file
// --------------------------------------------------------------------------------------------------

void Study::Reader::readColumn(const Node& node, const CaseColumn& column, Axis& axis) {
    const std::string& key = column.key;
    const bool label = std::ranges::find(study_.labels_, key) != study_.labels_.end();
    if (label)
        study_.varied_.push_back(key);
    else
        vary(key, node);
    const Quantity quantity = label ? Quantity::none : meaningOf(study_.catalogued_, key).quantity;
    const catalogue::Unit* unit = column.unit.empty() ? nullptr : catalogue::findUnit(quantity, column.unit);
    if (!column.unit.empty() && unit == nullptr)
        problem(node, key + " [" + column.unit + "]: there is no such unit of this quantity");
    axis.keys.push_back(key);
    axis.values.push_back(column.numbers.empty() ? Values(column.texts) : Values(column.numbers, unit));
}

void Study::Reader::readCases(const Node& description) {
    const Node* cases = description.find("cases");
    if (cases == nullptr) return;
    const bool table = cases->kind == Node::Kind::table;
    const Node* file = table ? cases->find("file") : cases;
    if (file == nullptr || file->kind != Node::Kind::text || readFile_ == nullptr)
        return problem(*cases, "cases: allowed is the name of a CSV file, or a table with file and labels");
    if (const Node* labels = table ? cases->find("labels") : nullptr)
        for (const Node& label : labels->items) study_.labels_.push_back(label.text);
    std::string why;
    const std::vector<CaseColumn> columns = readCaseFile(readFile_(file->text), why);
    if (!why.empty()) return problem(*file, file->text + why);
    Axis axis;
    for (const CaseColumn& column : columns) readColumn(*file, column, axis);
    for (const std::string& label : study_.labels_)
        if (std::ranges::find(axis.keys, label) == axis.keys.end())
            problem(*file, file->text + " has no column " + label);
    study_.axes_.push_back(std::move(axis));
}

// ---- optimum
// ----------------------------------------------------------------------------------------------------------

void Study::Reader::readOver(const Node& optimum, const std::string& key, std::size_t place) {
    Optimum::Over over{key, 0.0, 0.0, 0.0, nullptr};
    const Quantity quantity = meaningOf(study_.catalogued_, key).quantity;
    const catalogue::Unit *endUnit = nullptr, *toleranceUnit = nullptr;
    const auto number = [&](const char* name, Quantity kind, const catalogue::Unit** unit) {
        const Node* node = optimum.find(name);
        if (node != nullptr && node->kind == Node::Kind::list && place < node->items.size()) node = &node->items[place];
        if (node != nullptr) return readNumber(std::string("optimum.") + name, *node, kind, unit);
        problem(optimum, std::string("optimum.") + name + " is missing");
        return 0.0;
    };
    over.from = number("from", quantity, &over.unit);
    over.to = number("to", quantity, &endUnit);
    over.tolerance = number("tolerance", differenceOf(quantity), &toleranceUnit);
    if (!problems_.empty()) return;
    if ((over.unit == nullptr) != (endUnit == nullptr) || (over.unit == nullptr) != (toleranceUnit == nullptr))
        return problem(optimum, "optimum: from, to and tolerance have all a unit or none");
    if (over.unit != nullptr) {
        over.from = catalogue::fromInner(over.from, *over.unit);
        over.to = catalogue::fromInner(over.to, *over.unit);
        over.tolerance /= over.unit->factor;
    }
    if (!(over.from < over.to)) problem(optimum, "optimum: from is not below to");
    if (!(over.tolerance > 0.0)) problem(optimum, "optimum.tolerance is not above 0");
    vary(key, optimum);
    study_.varied_.pop_back();
    study_.optimum_->over.push_back(over);
}

void Study::Reader::readOptimum(const Node& description) {
    const Node* optimum = description.find("optimum");
    if (optimum == nullptr) return;
    const Node *most = optimum->find("maximise"), *least = optimum->find("minimise"), *over = optimum->find("over");
    const Node* objective = most != nullptr ? most : least;
    for (const auto& [key, node] : optimum->members)
        if (constexpr std::string_view known[] = {"maximise", "minimise", "over", "from", "to", "tolerance"};
            std::ranges::find(known, key) == std::end(known))
            problem(node, "optimum." + key + ": an optimum has maximise or minimise, over, from, to and tolerance");
    if ((most == nullptr) == (least == nullptr) || objective->kind != Node::Kind::text)
        problem(*optimum, "an optimum has either maximise or minimise, a key of results");
    if (over == nullptr) problem(*optimum, "optimum.over is missing: a key of the request, or a list of two");
    if (!problems_.empty()) return;
    study_.optimum_ = Optimum{most != nullptr, objective->text, {}};
    const std::vector<Node> keys = over->kind == Node::Kind::list ? over->items : std::vector<Node>{*over};
    if (keys.empty() || keys.size() > mostSearched) problem(*over, "optimum.over has one key or two");
    for (std::size_t i = 0; i < keys.size() && problems_.empty(); ++i) readOver(*optimum, keys[i].text, i);
}

void Study::Reader::count(const Node& description) {
    if (study_.axes_.empty() && !study_.optimum_) problem(description, "nothing varies: vary, zip or cases is missing");
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
        if (constexpr std::string_view known[] = {"request", "vary", "zip", "cases", "results", "optimum"};
            std::ranges::find(known, key) == std::end(known))
            problem(node, key + ": a study has request, vary, zip, cases, results and optimum");
    for (const char* name : {"vary", "zip", "results", "optimum"})
        if (const Node* node = description.find(name); node != nullptr && node->kind != Node::Kind::table)
            problem(*node, std::string(name) + " = " + node->shown() + ": allowed is a table");
    if (problems_.empty()) readRequest(description);
    if (problems_.empty()) {
        readResults(description);
        readGrid(description);
        readSideBySide(description);
        readCases(description);
        readOptimum(description);
        count(description);
    }
    if (!problems_.empty()) throw Faulty{problems_};
}

Study::Study(const Node& description, const ReadFile& readFile) {
    Reader(*this, readFile).read(description);
}

Quantity Study::quantityOf(const std::string& key) const {
    return meaningOf(catalogued_, key).quantity;
}

std::size_t Study::fastest() const {
    return axes_.empty() || axes_.back().keys.size() > 1 ? 1 : axes_.back().length();
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
    for (const Setting& setting : settings(number))
        if (std::ranges::find(labels_, setting.key) == labels_.end()) put(request, setting.key, setting.value);
    return jsonOf(request);
}

bool storesInInstallation(const catalogue::Request& request) {
    return request.name == "store-blend";
}

std::string headOf(const Study& study) {
    nlohmann::ordered_json head = {
        {"cases", study.cases()}, {"inputs", study.variedKeys()}, {"keys", study.resultKeys()}};
    if (study.optimum()) {
        head["optimum"] = nlohmann::ordered_json::array();
        for (const Optimum::Over& over : study.optimum()->over) head["optimum"].push_back(over.key);
    }
    return head.dump();
}

}  // namespace frigana::studies
