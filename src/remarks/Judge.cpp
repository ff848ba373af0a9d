#include "Judge.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace frigana::remarks {

namespace {

constexpr std::string_view inletMark = ".inlet.pressure";

bool isBlend(const catalogue::Fluid& fluid) {
    return fluid.kind != 1;
}

const Kind* findKind(std::string_view name) {
    for (const Kind& kind : kinds())
        if (kind.name == name) return &kind;
    return nullptr;
}

}  // namespace

Judge::Judge(const RunResult& judged, const Circumstances& given) : result(judged), circumstances(given) {
    for (const auto& entry : result.entries)
        if (entry.key.ends_with(inletMark))
            devices_.push_back(entry.key.substr(0, entry.key.size() - inletMark.size()));
    const auto* request = result.input.request;
    for (std::size_t i = 0; i < result.input.blocks.size(); ++i) {
        const catalogue::Fluid& fluid = result.input.blocks[i].fluid;
        circuits_.push_back(
            {std::string(request->circuits[i].key), factsOf(fluid, circumstances.dataFolder), isBlend(fluid)});
    }
}

void Judge::say(std::string_view name, std::string_view place, std::string text, std::string advice) {
    const Kind* kind = findKind(name);
    found.push_back({std::string(name), kind != nullptr ? kind->weight : Weight::doubtful, std::string(place),
                     std::move(text), std::move(advice)});
}

double Judge::at(std::string_view place, std::string_view name) const {
    std::string key(place);
    if (!key.empty()) key += '.';
    key += name;
    return result.find(key) != nullptr ? result.number(key) : std::numeric_limits<double>::quiet_NaN();
}

std::string Judge::shown(double value, Quantity quantity) const {
    return remarks::shown(value, quantity, circumstances.units);
}

std::vector<std::string> Judge::devicesNamed(std::string_view word) const {
    std::vector<std::string> named;
    for (const std::string& device : devices_) {
        const std::string_view last = lastWord(device);
        if (last.starts_with(word) || last.ends_with(word)) named.push_back(device);
    }
    return named;
}

const Judge::CircuitFacts& Judge::circuitOf(std::string_view place) const {
    for (const CircuitFacts& circuit : circuits_)
        if (!circuit.key.empty() && place.starts_with(circuit.key) && place.substr(circuit.key.size()).starts_with('.'))
            return circuit;
    return circuits_.front();
}

std::string shown(double value, Quantity quantity, catalogue::UnitSystem units) {
    constexpr int digits = 4, whole = 15;
    constexpr double large = 1e4;  // from here on whole numbers, for nobody reads an exponent
    const catalogue::Unit& unit = catalogue::unitIn(units, quantity);
    const double number = catalogue::fromInner(value, unit);
    std::string text = std::abs(number) < large ? catalogue::numberText(number, digits)
                                                : catalogue::numberText(std::round(number), whole);
    if (!unit.symbol.empty()) text += ' ' + std::string(unit.symbol);
    return text;
}

std::string_view lastWord(std::string_view key) {
    const auto dot = key.rfind('.');
    return dot == std::string_view::npos ? key : key.substr(dot + 1);
}

std::string inWords(std::string_view place) {
    std::string words(lastWord(place));
    std::replace(words.begin(), words.end(), '_', ' ');
    const std::string_view front = place.substr(0, place.size() - std::min(place.size(), words.size() + 1));
    if (front.empty()) return words;
    if (front.starts_with("stage")) return words + " of stage " + std::string(front.substr(5));
    return words + " of the " + std::string(front) + " circuit";
}

}  // namespace frigana::remarks
