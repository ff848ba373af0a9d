#include "RunResult.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "ResultKeys.h"

namespace frigana::catalogue {

namespace {

using Kind = ResultEntry::Kind;
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

double orMissing(double value) {
    return std::isnan(value) ? missingValue : value;
}

void addPoints(RunResult& result, const Circuit& circuit, std::span<const Point> points, int stage) {
    const std::string own = prefixOf(circuit);
    std::string prefix = own;
    if (stage > 0) prefix += "stage" + std::to_string(stage) + '.';
    for (const Point& point : points) {
        PointState& state = result.points.emplace_back();
        state.number = point.number;
        state.stage = stage;
        state.circuit = circuit.key;
        state.key = prefix + std::string(point.key);
        state.label = point.label;
        const auto read = [&](const char* name) { return orMissing(result.number(state.key + '.' + name)); };
        if (point.diagramRow > 0) {
            const std::string row = std::to_string(point.diagramRow);
            state.pressure = orMissing(result.number(own + "diagram.ph.cycle." + row + ".pressure"));
            state.enthalpy = orMissing(result.number(own + "diagram.ph.cycle." + row + ".enthalpy"));
            state.temperature = orMissing(result.number(own + "diagram.ts.cycle." + row + ".temperature"));
            state.entropy = orMissing(result.number(own + "diagram.ts.cycle." + row + ".entropy"));
        } else {
            state.pressure = read("pressure");
            state.temperature = read("temperature");
            state.density = read("density");
            state.enthalpy = read("enthalpy");
            state.entropy = read("entropy");
            state.quality = read("quality");
            state.saturationTemperature = read("saturation_temperature");
        }
    }
}

}  // namespace

double Value::number() const {
    if (kind == Kind::integer) return integer == static_cast<int>(missingValue) ? notANumber : integer;
    if (kind != Kind::value || value == missingValue) return notANumber;
    return value;
}

std::string_view nameOf(Weight weight) {
    constexpr std::string_view names[] = {"note", "doubtful", "wrong"};
    return names[static_cast<int>(weight)];
}

void RunResult::indexKeys() {
    byKey_.resize(entries.size());
    std::iota(byKey_.begin(), byKey_.end(), 0u);
    std::stable_sort(byKey_.begin(), byKey_.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return entries[a].key < entries[b].key; });
    points.clear();
    if (input.request == nullptr || !isDone()) return;
    for (const Circuit& circuit : input.request->circuits) addPoints(*this, circuit, circuit.points, 0);
    for (int stage = 1; stage < input.stages(); ++stage)
        addPoints(*this, input.request->circuits.front(), input.request->stages.points, stage);
}

const Value* RunResult::find(std::string_view key) const {
    const auto at = std::lower_bound(byKey_.begin(), byKey_.end(), key,
                                     [&](std::uint32_t i, std::string_view k) { return entries[i].key < k; });
    return at == byKey_.end() || entries[*at].key != key ? nullptr : &entries[*at];
}

double RunResult::number(std::string_view key) const {
    const Value* value = find(key);
    return value == nullptr ? notANumber : value->number();
}

std::string_view RunResult::text(std::string_view key) const {
    const Value* value = find(key);
    return value == nullptr || value->kind != Kind::text ? std::string_view{} : std::string_view(value->text);
}

void gatherEntries(std::vector<Value>& entries) {
    listenToResult(
        [](void* context, const ResultEntry& e) {
            auto& gathered = *static_cast<std::vector<Value>*>(context);
            if (e.kind == Kind::start) return gathered.clear();
            Value& value = gathered.emplace_back();
            value.kind = e.kind;
            value.line = e.line;
            value.circuit = e.circuit;
            value.section = e.section;
            value.group = e.group;
            value.row = e.row;
            value.name = e.name;
            value.unit = e.unit;
            value.value = e.value;
            value.integer = e.integer;
            value.text = e.text;
        },
        &entries);
}

void stopGathering(std::vector<Value>& entries) {
    listenToResult(nullptr, nullptr);
    for (Value& entry : entries) {
        if (!entry.isData()) continue;
        entry.key = resultKey({entry.circuit, entry.section, entry.group, entry.row, entry.name, entry.unit}).key;
        if (entry.isNumber()) entry.quantity = quantityOfResult(entry.name, entry.unit);
    }
}

std::string refusedKey(const RunResult& result) {
    const RunReport& report = result.report;
    const Request* request = result.input.request;
    if (report.end != RunEnd::refused || report.parameter == 0 || request == nullptr) return {};
    const Circuit& circuit = request->circuits[static_cast<std::size_t>(report.record - 1)];
    int index = report.parameter, stage = 0;
    std::span<const Parameter> parameters = circuit.parameters;
    if (request->stages.countIndex > 0 && index > request->stages.countIndex) {
        parameters = request->stages.parameters;
        const int beyond = index - request->stages.countIndex - 1, perStage = static_cast<int>(parameters.size());
        stage = beyond / perStage + 1;
        index = beyond % perStage + 1;
    }
    const auto& settings = result.input.blocks[static_cast<std::size_t>(report.record - 1)].settings;
    const auto at = static_cast<std::size_t>(report.parameter - 1);
    const int chosen = at < settings.size() ? settings[at].option : 0;
    for (const Parameter& parameter : parameters) {
        if (parameter.index != index) continue;
        for (const Option& option : parameter.options)
            if (option.number == chosen || option.form == Form::count) return keyOf(circuit, stage, parameter, option);
    }
    return {};
}

}  // namespace frigana::catalogue
