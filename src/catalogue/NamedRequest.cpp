#include "NamedRequest.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "EditDistance.h"
#include "StoredBlends.h"
#include "Words.h"

namespace frigana::catalogue {

namespace {

constexpr int propertyType = 1;
constexpr int lineSizing = 5, runIndex = 30;
constexpr int saturationTable = 2, isopropertyTable = 3, storeBlend = 7, fluidInformation = 1;
constexpr int leastRows = 3, mostRows = 2000;  // of a table

// A value of the file under its full key.
struct Leaf {
    std::string key;
    const Node* node;
};

// What a key of this request means.
struct Known {
    int circuit = 0, stage = 0;
    const Parameter* parameter = nullptr;
    const Option* option = nullptr;
};

bool isFluidKey(std::string_view key) {
    return key == "fluid" || key.ends_with(".fluid");
}

// Values under their full keys; a fluid may be a table of components, points are a list of tables.
void flatten(const Node& table, const std::string& prefix, std::vector<Leaf>& leaves) {
    for (const auto& [name, node] : table.members) {
        const std::string key = prefix + name;
        if (node.kind == Node::Kind::table && !isFluidKey(key) && !node.members.empty())
            flatten(node, key + '.', leaves);
        else
            leaves.push_back({key, &node});
    }
}

// How a person writes a reference state, in small letters.
struct ReferenceWord {
    std::string_view word, code;
};
constexpr ReferenceWord referenceWords[] = {
    {"def", "DEF"}, {"default", "DEF"}, {"iir", "IIR"}, {"ash", "ASH"}, {"ashrae", "ASH"}, {"nbp", "NBP"},
};

// The nearest of some words, empty where none is near.
template <class Words>
std::string nearest(std::string_view word, const Words& words) {
    std::string best;
    std::size_t least = std::max<std::size_t>(2, word.size() / 3) + 1;
    for (const auto& candidate : words) {
        const std::size_t far = editDistance(word, candidate, least);
        if (far < least) {
            least = far;
            best = std::string(candidate);
        }
    }
    return best;
}

class Reader {
  public:
    Reader(const Node& tree, const FluidNames& names, const std::string& blends) : names_(names), blends_(blends) {
        flatten(tree, "", leaves_);
    }

    NamedRequest read() {
        if (readRequestName()) {
            readUnits();
            collectKeys();
            refuseUnknownKeys();
            if (result_.request->type == propertyType)
                readPropertyRequest();
            else
                readCycle();
        }
        std::stable_sort(result_.problems.begin(), result_.problems.end(),
                         [](const Problem& a, const Problem& b) { return a.line < b.line; });
        if (!result_.problems.empty()) result_.runs.clear();
        return std::move(result_);
    }

  private:
    // ---- messages ----

    void fail(int line, const std::string& text) {
        Problem& problem = result_.problems.emplace_back();
        problem.line = line;
        problem.text = text;
    }
    void fail(const Leaf& leaf, const std::string& text) {
        fail(leaf.node->line, leaf.key + " = " + leaf.node->shown() + ": " + text);
    }
    void failBeyond(const Leaf& leaf, const std::string& allowed) {
        fail(leaf, "allowed are " + allowed);
        result_.problems.back().key = leaf.key;
        result_.problems.back().allowed = allowed;
    }

    // ---- keys ----

    const Leaf* find(std::string_view key) const {
        for (const Leaf& leaf : leaves_)
            if (leaf.key == key) return &leaf;
        return nullptr;
    }

    bool readRequestName() {
        std::vector<std::string> all;
        for (const Request& request : requests()) all.emplace_back(request.name);
        const Leaf* leaf = find("request");
        if (leaf == nullptr) {
            fail(0, "missing: request; one of " + listed(all, ", "));
            return false;
        }
        if (leaf->node->kind == Node::Kind::text) result_.request = findRequest(leaf->node->text);
        if (result_.request != nullptr) return true;
        const std::string near = nearest(leaf->node->shown(), all);
        if (near.empty())
            fail(*leaf, "there is no such request; allowed are " + listed(all, ", "));
        else
            fail(*leaf, "there is no such request; near is " + near);
        return false;
    }

    void readUnits() {
        const Leaf* leaf = find("units");
        if (leaf == nullptr) return;
        const auto units =
            leaf->node->kind == Node::Kind::text ? unitSystemOf(leaf->node->text) : std::optional<UnitSystem>{};
        if (!units) return fail(*leaf, "allowed are SI, metric and imperial");
        result_.units = *units;
        result_.unitsGiven = true;
    }

    void addKeys(std::span<const Parameter> parameters, int circuit, int stage) {
        const Circuit& own = result_.request->circuits[static_cast<std::size_t>(circuit)];
        for (const Parameter& parameter : parameters) {
            if (parameter.absent == Absent::unused || parameter.absent == Absent::derived) continue;
            for (const Option& option : parameter.options)
                known_.emplace(keyOf(own, stage, parameter, option), Known{circuit, stage, &parameter, &option});
        }
    }

    void collectKeys() {
        const Request& request = *result_.request;
        for (const std::string_view key : {"request", "title", "units", "reference_state", "reference_of"})
            general_.emplace(key);
        const bool two = request.circuits.size() == 2;
        for (const Circuit& circuit : request.circuits) {
            const std::string prefix = prefixOf(circuit);
            for (const char* key : {"fluid", "fractions", "blend_name"}) general_.insert(prefix + key);
            if (two)
                for (const char* key : {"title", "reference_state", "reference_of"}) general_.insert(prefix + key);
        }
        if (request.type == propertyType && request.sub >= 4 && request.sub <= 6) general_.emplace("points");
        for (std::size_t i = 0; i < request.circuits.size(); ++i)
            addKeys(request.circuits[i].parameters, static_cast<int>(i), 0);
        if (request.stages.countIndex > 0)
            for (int stage = 1; stage < stageCount(); ++stage) addKeys(request.stages.parameters, 0, stage);
    }

    // As the file says; the most where that cannot be read, so that no key is called unknown for it.
    int stageCount() const {
        const Leaf* leaf = find("stages");
        const int most = result_.request->stages.most;
        if (leaf == nullptr || leaf->node->kind != Node::Kind::number || !leaf->node->whole) return most;
        return leaf->node->number >= 2 && leaf->node->number <= most ? static_cast<int>(leaf->node->number) : most;
    }

    void refuseUnknownKeys() {
        std::vector<std::string> all(general_.begin(), general_.end());
        for (const auto& [key, meaning] : known_) all.push_back(key);
        for (const Leaf& leaf : leaves_) {
            if (general_.contains(leaf.key) || known_.contains(leaf.key)) continue;
            std::vector<std::string> below;
            for (const std::string& key : all)
                if (key.starts_with(leaf.key + '.')) below.push_back(key);
            if (!below.empty()) {
                // A heading whose lines were all taken out asks for nothing.
                if (leaf.node->kind != Node::Kind::table)
                    fail(leaf.node->line, leaf.key + " is a table: " + listed(below, " or "));
                continue;
            }
            std::string text = leaf.key + " is no key of " + std::string(result_.request->name);
            if (const std::string near = nearest(leaf.key, all); !near.empty()) text += "; near is " + near;
            fail(leaf.node->line, text);
        }
    }

    // ---- texts and fluids ----

    std::string readTitle(const std::string& prefix, const std::string& otherwise) {
        const Leaf* leaf = find(prefix + "title");
        if (leaf == nullptr) return otherwise;
        if (leaf->node->kind != Node::Kind::text) {
            fail(*leaf, "a title is a text in quotes");
            return otherwise;
        }
        const std::string& title = leaf->node->text;
        for (const char c : title)
            if (static_cast<unsigned char>(c) < ' ') {
                fail(leaf->node->line, leaf->key + ": a title is one line without tabs");
                return otherwise;
            }
        if (title.size() > titleColumns)
            fail(leaf->node->line,
                 leaf->key + ": a title has at most 80 characters, this one has " + std::to_string(title.size()));
        return title.empty() ? otherwise : title;
    }

    void readReference(const std::string& prefix, Fluid& fluid) {
        const Leaf* state = find(prefix + "reference_state");
        if (state == nullptr) state = find("reference_state");
        if (state != nullptr) {
            const std::string text =
                state->node->kind == Node::Kind::text ? inSmallLetters(state->node->text) : std::string();
            const auto word = std::find_if(std::begin(referenceWords), std::end(referenceWords),
                                           [&](const ReferenceWord& one) { return one.word == text; });
            if (word == std::end(referenceWords))
                fail(*state, "allowed are DEF (of the fluid file), IIR, ASHRAE and NBP");
            else
                fluid.referenceState = word->code;
        }
        const Leaf* of = find(prefix + "reference_of");
        if (of == nullptr) of = find("reference_of");
        if (of == nullptr) return;
        if (of->node->kind == Node::Kind::text && of->node->text == "pure fluids")
            fluid.referenceOf = 1;
        else if (of->node->kind == Node::Kind::text && of->node->text == "composition")
            fluid.referenceOf = 2;
        else
            fail(*of, "allowed are composition and pure fluids");
    }

    // A fraction of a component: 0.7 or "70 %".
    bool readFraction(const Leaf& leaf, double& value) {
        const Node& node = *leaf.node;
        std::string problem;
        if (node.kind == Node::Kind::number) {
            value = node.number;
        } else if (node.kind == Node::Kind::text) {
            const Parsed parsed = parseQuantity(node.text, Quantity::fraction, nullptr);
            problem = parsed.problem;
            value = parsed.value;
        } else {
            problem = "is no fraction; write 0.7 or \"70 %\"";
        }
        if (problem.empty() && !std::isfinite(value)) problem = "is not finite";
        if (problem.empty() && value < 0.0) problem = "a fraction is not below 0";
        if (!problem.empty()) fail(leaf, problem);
        return problem.empty();
    }

    void readComponents(const Leaf& leaf, const std::string& prefix, Fluid& fluid) {
        fluid.kind = 3;
        double sum = 0.0;
        bool sound = true;
        std::set<std::string> files;
        for (const auto& [name, node] : leaf.node->members) {
            const std::string key = leaf.key + '.' + name;
            const FoundFluid found = names_.find(name);
            double fraction = 0.0;
            if (!readFraction({key, &node}, fraction)) {
                sound = false;
                continue;
            }
            sum += fraction;
            if (found.file.empty()) {
                fail(node.line, key + ": " + name + ' ' + found.problem);
                sound = false;
            } else if (found.blend) {
                fail(node.line, key + ": a blend is mixed from pure fluids");
                sound = false;
            } else if (!files.insert(found.file).second) {
                fail(node.line, key + ": stands in the blend twice");
                sound = false;
            } else {
                fluid.components.push_back({found.file, fraction});
            }
        }
        constexpr std::size_t mostComponents = 20;
        if (leaf.node->members.size() > mostComponents)
            return fail(leaf.node->line, leaf.key + ": a blend has at most 20 components");
        if (const Leaf* basis = find(prefix + "fractions")) {
            const std::string text = basis->node->kind == Node::Kind::text ? basis->node->text : std::string();
            if (text != "mass" && text != "mole")
                fail(*basis, "allowed are mass and mole");
            else
                fluid.byMass = text == "mass";
        }
        if (!sound) return;
        constexpr double sumTolerance = 1e-6;
        if (sum == 0.0)
            fail(leaf.node->line, leaf.key + ": all fractions are 0");
        else if (!fluid.byMass && std::abs(sum - 1.0) > sumTolerance)
            fail(leaf.node->line, leaf.key + ": the mole fractions add up to " + numberText(sum, 7) + ", not to 1");
    }

    void readBlendName(const std::string& prefix, Fluid& fluid) {
        const Leaf* leaf = find(prefix + "blend_name");
        if (leaf == nullptr) {
            if (fluid.kind == 3 && fluid.blendName.empty()) fluid.blendName = "blend";
            return;
        }
        constexpr std::size_t longest = 60;
        const std::string text = leaf->node->kind == Node::Kind::text ? leaf->node->text : std::string();
        const bool usable =
            !text.empty() && text.size() <= longest && text.find_first_of("\"/\\:*?<>|") == std::string::npos &&
            std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= ' '; });
        if (!usable) return fail(*leaf, "a blend has the name of a file, with at most 60 characters");
        fluid.blendName = text;
    }

    // A name of the installation, or else of a blend that the person has stored.
    void readFluidName(const Leaf& leaf, Fluid& fluid) {
        const std::string problem = findFluid(leaf.node->text, names_, blends_, fluid);
        if (!problem.empty()) fail(leaf, problem);
    }

    Fluid readFluid(const std::string& prefix) {
        Fluid fluid;
        readReference(prefix, fluid);
        const Leaf* leaf = find(prefix + "fluid");
        if (leaf == nullptr) {
            missing_.push_back(prefix + "fluid");
            return fluid;
        }
        if (leaf->node->kind == Node::Kind::table) {
            readComponents(*leaf, prefix, fluid);
        } else if (leaf->node->kind == Node::Kind::text) {
            readFluidName(*leaf, fluid);
            if (const Leaf* basis = find(prefix + "fractions"))
                fail(*basis, "fractions are those of a blend that is listed by its components");
        } else {
            fail(*leaf, "a fluid is a name, or a table of components and fractions");
        }
        readBlendName(prefix, fluid);
        return fluid;
    }

    // ---- values ----

    void refuseBeyond(const Leaf& leaf, const std::optional<Limits>& limits, double value, Quantity quantity,
                      const Unit& unit) {
        if (!std::isfinite(value)) return fail(leaf, "is not finite");
        if (quantity == Quantity::temperature && !limits && value < 0.0) return fail(leaf, "is below absolute zero");
        if (!limits || limits->holds(value)) return;
        std::string allowed = limitsText(*limits, quantity, unit);
        // The checks keep their limits in single precision, which of 0.2 is a little more.
        if (!limits->open && static_cast<double>(static_cast<float>(value)) == limits->lower)
            allowed += "; the limit is kept in single precision as " + numberText(fromInner(limits->lower, unit), 9) +
                       ", so that a value must be a little above it";
        failBeyond(leaf, allowed);
    }

    double readQuantity(const Leaf& leaf, Quantity quantity, const std::optional<Limits>& limits) {
        const Unit* plain = result_.unitsGiven ? &unitIn(result_.units, quantity) : nullptr;
        const Node& node = *leaf.node;
        if (node.kind == Node::Kind::text) {
            const Parsed parsed = parseQuantity(node.text, quantity, plain);
            if (!parsed.problem.empty()) {
                fail(leaf, parsed.problem);
                return 0.0;
            }
            refuseBeyond(leaf, limits, parsed.value, quantity, *parsed.unit);
            return parsed.value;
        }
        if (node.kind != Node::Kind::number) {
            fail(leaf, parseQuantity("", quantity, plain).problem);
            return 0.0;
        }
        if (plain == nullptr && unitsOf(quantity).front().symbol.empty()) plain = &unitsOf(quantity).front();
        if (plain == nullptr) {
            fail(leaf, parseQuantity(numberText(node.number), quantity, nullptr).problem);
            return 0.0;
        }
        const double value = toInner(node.number, *plain);
        refuseBeyond(leaf, limits, value, quantity, *plain);
        return value;
    }

    int readCount(const Leaf& leaf, const Limits& limits) {
        const Node& node = *leaf.node;
        if (node.kind != Node::Kind::number || !node.whole) {
            fail(leaf, "is no whole number");
            return 0;
        }
        if (!limits.holds(node.number)) {
            failBeyond(leaf, numberText(limits.lower) + " to " + numberText(limits.upper));
            return 0;
        }
        return static_cast<int>(node.number);
    }

    Setting readOption(const Leaf& leaf, const Known& known) {
        const Option& option = *known.option;
        const auto limits = limitsOf(*result_.request, known.circuit, known.stage > 0, *known.parameter, option);
        switch (option.form) {
            case Form::count:
                return {readCount(leaf, limits.value_or(Limits{1, 1e6})), 0.0};
            case Form::yes:
            case Form::no: {
                const bool both = known.parameter->options.size() == 2 &&
                                  known.parameter->options[0].key == known.parameter->options[1].key;
                if (leaf.node->kind != Node::Kind::boolean || (!leaf.node->boolean && !both)) {
                    fail(leaf, both ? "allowed are true and false" : "allowed is true; leave it out otherwise");
                    return {};
                }
                if (!both) return {option.number, 0.0};
                const Option& chosen = known.parameter->options[leaf.node->boolean ? 0 : 1];
                return {chosen.number, 0.0};
            }
            default:
                break;
        }
        // A wall is a whole number.
        if (option.quantity == Quantity::count && leaf.node->kind == Node::Kind::number && !leaf.node->whole &&
            leaf.node->number != std::floor(leaf.node->number)) {
            fail(leaf, "is no whole number");
            return {option.number, 0.0};
        }
        return {option.number, readQuantity(leaf, option.quantity, limits)};
    }

    // The leaf of a parameter; two of them contradict each other.
    struct Chosen {
        const Leaf* leaf = nullptr;
        Known known;
    };
    Chosen choose(const Parameter& parameter, int circuit, int stage) {
        const Circuit& own = result_.request->circuits[static_cast<std::size_t>(circuit)];
        Chosen chosen;
        for (const Option& option : parameter.options) {
            const std::string key = keyOf(own, stage, parameter, option);
            const Leaf* leaf = find(key);
            if (leaf == nullptr || leaf == chosen.leaf) continue;
            if (chosen.leaf != nullptr) {
                const bool later = leaf->node->line >= chosen.leaf->node->line;
                const Leaf* first = later ? chosen.leaf : leaf;
                const Leaf* second = later ? leaf : chosen.leaf;
                fail(second->node->line, second->key + " and " + first->key + " (line " +
                                             std::to_string(first->node->line) +
                                             ") exclude each other; give one of them");
                return chosen;
            }
            chosen = {leaf, {circuit, stage, &parameter, &option}};
        }
        return chosen;
    }

    std::string alternatives(const Parameter& parameter, int circuit, int stage) const {
        const Circuit& own = result_.request->circuits[static_cast<std::size_t>(circuit)];
        std::vector<std::string> keys;
        for (const Option& option : parameter.options) {
            const std::string key = keyOf(own, stage, parameter, option);
            if (keys.empty() || keys.back() != key) keys.push_back(key);
        }
        return listed(keys, " or ");
    }

    Setting readParameter(const Parameter& parameter, int circuit, int stage) {
        if (parameter.absent == Absent::unused || parameter.absent == Absent::derived) return {1, 0.0};
        const Chosen chosen = choose(parameter, circuit, stage);
        if (chosen.leaf != nullptr) return readOption(*chosen.leaf, chosen.known);
        if (parameter.absent == Absent::zero) return {zeroOption(parameter).number, 0.0};
        if (parameter.absent == Absent::refused) missing_.push_back(alternatives(parameter, circuit, stage));
        return {1, 0.0};
    }

    // ---- cycles ----

    void readCycle() {
        const Request& request = *result_.request;
        FilledRequest filled;
        filled.request = &request;
        const bool two = request.circuits.size() == 2;
        std::string title = readTitle("", std::string(request.title));
        for (std::size_t i = 0; i < request.circuits.size(); ++i) {
            const Circuit& circuit = request.circuits[i];
            const std::string prefix = prefixOf(circuit);
            Block block;
            // That of the first circuit is the second one's too, where it has none.
            if (two) title = readTitle(prefix, title);
            block.title = title;
            block.fluid = readFluid(prefix);
            for (const Parameter& parameter : circuit.parameters)
                block.settings.push_back(readParameter(parameter, static_cast<int>(i), 0));
            filled.blocks.push_back(std::move(block));
        }
        readStages(filled);
        readPickedPipes(filled);
        finish();
        result_.runs.push_back(std::move(filled));
    }

    void readStages(FilledRequest& filled) {
        const Stages& stages = result_.request->stages;
        if (stages.countIndex == 0) return;
        auto& settings = filled.blocks.front().settings;
        const int count = settings[static_cast<std::size_t>(stages.countIndex - 1)].option;
        for (int stage = 1; stage < count; ++stage)
            for (const Parameter& parameter : stages.parameters) settings.push_back(readParameter(parameter, 0, stage));
    }

    // Pipes that are picked ask for the second run, and one is needed for every line that was sized.
    void readPickedPipes(FilledRequest& filled) {
        if (result_.request->sub != lineSizing) return;
        auto& settings = filled.blocks.front().settings;
        const auto places = {"suction_line", "discharge_line", "liquid_line"};
        const bool picked = std::any_of(places.begin(), places.end(),
                                        [&](const char* place) { return find(std::string(place) + ".picked"); });
        settings[runIndex - 1] = {picked ? 2 : 1, 0.0};
        if (!picked) {
            settings.resize(runIndex);
            return;
        }
        constexpr int lineParameters[] = {5, 10, 15};
        constexpr int firstSizedOption = 3;
        int line = 0;
        for (const char* place : places) {
            const std::string key = std::string(place) + ".picked";
            const bool sized =
                settings[static_cast<std::size_t>(lineParameters[line++] - 1)].option >= firstSizedOption;
            if (sized && find(key) == nullptr) missing_.push_back(key);
        }
    }

    // ---- property requests ----

    int readWord(const Parameter& parameter) {
        const Leaf* leaf = find(keyOf(parameter, parameter.options.front()));
        if (leaf == nullptr) {
            missing_.push_back(keyOf(parameter, parameter.options.front()));
            return 0;
        }
        std::vector<std::string> words;
        for (const Option& option : parameter.options) {
            words.emplace_back(option.label);
            if (leaf->node->kind == Node::Kind::text && leaf->node->text == option.label) return option.number;
        }
        fail(*leaf, "allowed are " + listed(words));
        return 0;
    }

    // Of a request that has it.
    const Parameter& parameterOf(int index) const {
        const auto parameters = result_.request->circuits.front().parameters;
        return *std::find_if(parameters.begin(), parameters.end(),
                             [&](const Parameter& parameter) { return parameter.index == index; });
    }

    void readTable(PropertyQuestion& ask) {
        if (result_.request->sub == isopropertyTable) {
            const Parameter& constant = parameterOf(constantProperty);
            const Chosen chosen = choose(constant, 0, 0);
            if (chosen.leaf == nullptr) {
                missing_.push_back(alternatives(constant, 0, 0));
            } else {
                const Setting setting = readOption(*chosen.leaf, chosen.known);
                ask.constant = setting.option;
                ask.constantValue = setting.value;
            }
        }
        ask.running = readWord(parameterOf(runningProperty));
        if (ask.running != 0 && ask.running == ask.constant)
            fail(*find("property"), "the property that runs is the one that is constant");
        const Parameter& step = parameterOf(tableStep);
        const Chosen chosen = choose(step, 0, 0);
        if (chosen.leaf != nullptr && chosen.known.option->form == Form::yes) {
            readOption(*chosen.leaf, chosen.known);
            for (const char* key : {"from", "to"})
                if (const Leaf* leaf = find(key)) fail(*leaf, "suggested_limits asks for no table");
            return;
        }
        const PropertyName& property = propertyName(ask.running);
        bool ends = true;
        const auto readEnd = [&](const char* key, double& value) {
            if (const Leaf* leaf = find(key)) {
                value = readQuantity(*leaf, property.quantity, std::nullopt);
            } else {
                missing_.push_back(key);
                ends = false;
            }
        };
        readEnd("from", ask.from);
        readEnd("to", ask.to);
        if (chosen.leaf == nullptr) return missing_.push_back(alternatives(step, 0, 0));
        if (chosen.known.option->key == "count") {
            const int count = readCount(*chosen.leaf, Limits{leastRows, mostRows});
            if (count > 0) ask.step = (ask.to - ask.from) / (count - 1);
        } else {
            ask.step = readQuantity(*chosen.leaf, property.difference, std::nullopt);
            if (ask.step == 0.0 && result_.problems.empty())
                fail(*chosen.leaf,
                     "a table needs a step; suggested_limits = true asks for the limits that suit the fluid");
        }
        if (ends && result_.problems.empty() && (ask.to - ask.from) * ask.step < 0.0)
            fail(*chosen.leaf, "the step leads away from the end of the table");
    }

    void readState(PropertyQuestion& ask, const std::string& where, int line) {
        struct Given {
            int code;
            double value;
        };
        std::vector<Given> given;
        // In the order of the file, which is that of the request.
        for (const Leaf& leaf : leaves_) {
            const auto known = known_.find(leaf.key);
            if (known == known_.end()) continue;
            given.push_back(
                {known->second.option->number, readQuantity(leaf, known->second.option->quantity, std::nullopt)});
        }
        if (given.size() != 2) {
            return fail(line, where + "a state point has two of temperature, pressure and density, here are " +
                                  std::to_string(given.size()));
        }
        ask.first = given[0].code;
        ask.firstValue = given[0].value;
        ask.second = given[1].code;
        ask.secondValue = given[1].value;
    }

    void readSide(PropertyQuestion& ask, const std::string& where, int line) {
        const Parameter& side = parameterOf(saturationSide);
        const Chosen chosen = choose(side, 0, 0);
        if (chosen.leaf == nullptr) {
            return fail(line, where + "missing: " + alternatives(side, 0, 0));
        }
        const Setting setting = readOption(*chosen.leaf, chosen.known);
        ask.side = setting.option;
        ask.sideValue = setting.value;
    }

    void readOnePoint(PropertyQuestion& ask, const std::string& where, int line) {
        if (result_.request->sub == 4)
            readState(ask, where, line);
        else
            readSide(ask, where, line);
    }

    void readPoints(const FilledRequest& head) {
        const Leaf* points = find("points");
        if (points == nullptr) {
            FilledRequest filled = head;
            readOnePoint(filled.question, "", 0);
            result_.runs.push_back(std::move(filled));
            return;
        }
        for (const auto& [key, meaning] : known_)
            if (const Leaf* leaf = find(key)) fail(leaf->node->line, key + " belongs into points");
        if (points->node->kind != Node::Kind::list || points->node->items.empty())
            return fail(points->node->line, "points is a list of tables, one for each point");
        constexpr std::size_t mostPoints = 2000;
        if (points->node->items.size() > mostPoints)
            return fail(points->node->line, "points has more than 2000 points");
        const std::vector<Leaf> all = std::move(leaves_);
        const Node* list = points->node;
        int number = 0;
        for (const Node& item : list->items) {
            const std::string where = "points, point " + std::to_string(++number) + ": ";
            leaves_.clear();
            if (item.kind == Node::Kind::table) flatten(item, "", leaves_);
            for (const Leaf& leaf : leaves_)
                if (!known_.contains(leaf.key)) fail(leaf.node->line, where + leaf.key + " is no key of a point");
            FilledRequest filled = head;
            readOnePoint(filled.question, where, item.line);
            result_.runs.push_back(std::move(filled));
        }
        leaves_ = all;
    }

    void readPropertyRequest() {
        FilledRequest head;
        head.request = result_.request;
        Block block;
        block.fluid = readFluid("");
        if (result_.request->sub == storeBlend) {
            if (block.fluid.kind != 3 && missing_.empty())
                fail(find("fluid")->node->line,
                     "fluid: a blend that is stored is listed by its components, as in { R32 = 0.5, R125 = 0.5 }");
            if (find("blend_name") == nullptr) missing_.push_back("blend_name");
        }
        head.blocks.push_back(std::move(block));
        if (result_.request->sub == saturationTable || result_.request->sub == isopropertyTable) {
            readTable(head.question);
            finish();
            result_.runs.push_back(std::move(head));
        } else if (result_.request->sub == fluidInformation || result_.request->sub == storeBlend) {
            finish();
            result_.runs.push_back(std::move(head));
        } else {
            finish();
            readPoints(head);
        }
    }

    void finish() {
        if (!missing_.empty()) fail(0, "missing: " + listed(missing_, "; ", "; "));
    }

    const FluidNames& names_;
    const std::string& blends_;
    std::vector<Leaf> leaves_;
    std::set<std::string, std::less<>> general_;
    std::map<std::string, Known, std::less<>> known_;
    std::vector<std::string> missing_;
    NamedRequest result_;
};

constexpr GeneralKey general[] = {
    {"request", "name of the request", "as listed by `frigana explain`"},
    {"title", "title of the result", "at most 80 characters"},
    {"units", "units of plain numbers", "SI, metric, imperial; none: every number carries its unit"},
    {"fluid", "name of a fluid or blend, or a table of components and fractions", "as listed by `frigana list`"},
    {"fractions", "what the fractions of a listed blend are", "mass (if left out), mole"},
    {"blend_name", "name of a listed blend", "that of a file"},
    {"reference_state", "reference state of enthalpy and entropy",
     "DEF (of the fluid file, if left out), IIR, ASHRAE, NBP"},
    {"reference_of", "what the reference state is of", "composition (if left out), pure fluids"},
};

}  // namespace

NamedRequest readNamed(std::string_view text, NamedFormat format, const FluidNames& names, const std::string& blends) {
    NamedRequest failed;
    // The mark that some editors put in front of UTF-8.
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    Node tree;
    failed.problems = format == NamedFormat::toml ? readToml(text, tree) : readJson(text, tree);
    if (!failed.problems.empty()) return failed;
    return Reader(tree, names, blends).read();
}

std::string message(const std::string& file, const Problem& problem) {
    std::string text = file;
    if (problem.line > 0) text += ':' + std::to_string(problem.line);
    return text + ": " + problem.text;
}

std::span<const GeneralKey> generalKeys() {
    return general;
}

std::string limitsText(const Limits& limits, Quantity quantity, const Unit& unit) {
    std::string lower = quantityText(limits.lower, quantity, unit);
    const std::string upper = quantityText(limits.upper, quantity, unit);
    if (limits.open) return "above " + lower + " and below " + upper;
    if (lower == upper) return lower;
    return lower + " to " + upper;
}

FilledRequest typicalRequest(const Request& request, const std::optional<Fluid>& fluid) {
    FilledRequest filled;
    filled.request = &request;
    for (const Circuit& circuit : request.circuits) {
        Block block;
        block.title = circuit.title;
        block.fluid.file = circuit.fluid;
        block.fluid.kind = circuit.fluid.ends_with(".MIX") ? 2 : 1;
        if (fluid) block.fluid = *fluid;
        if (request.type == 2)
            for (const Parameter& parameter : circuit.parameters)
                block.settings.push_back({parameter.typical.option, parameter.typical.value});
        filled.blocks.push_back(std::move(block));
    }
    auto& settings = filled.blocks.front().settings;
    if (request.type == 2 && request.sub == lineSizing) settings.resize(runIndex);
    const int stages = filled.stages();
    for (int stage = 1; stage < stages; ++stage)
        for (const Parameter& parameter : request.stages.parameters)
            settings.push_back({parameter.typical.option, parameter.typical.value});
    if (request.type == 2) return filled;

    PropertyQuestion& ask = filled.question;
    for (const Parameter& parameter : request.circuits.front().parameters) {
        const Typical& typical = parameter.typical;
        switch (parameter.index) {
            case runningProperty:
                ask.running = typical.option;
                break;
            case constantProperty:
                ask.constant = typical.option;
                ask.constantValue = typical.value;
                break;
            case tableFrom:
                ask.from = typical.value;
                break;
            case tableTo:
                ask.to = typical.value;
                break;
            case tableStep:
                ask.step = typical.value;
                break;
            case firstProperty:
                ask.first = typical.option;
                ask.firstValue = typical.value;
                break;
            case secondProperty:
                ask.second = typical.option;
                ask.secondValue = typical.value;
                break;
            default:
                ask.side = typical.option;
                ask.sideValue = typical.value;
                break;
        }
    }
    if (Fluid& own = filled.blocks.front().fluid; request.sub == storeBlend && own.kind != 3) {
        own.kind = 3;
        own.components = {{"R32.FLD", 0.689}, {"R1234YF.FLD", 0.311}};
        own.blendName = "MyBlend";
    }
    return filled;
}

}  // namespace frigana::catalogue
