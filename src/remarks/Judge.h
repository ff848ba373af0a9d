// What the sources of remarks share: the devices of a result by their keys, and the list that they add to.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "FluidFacts.h"
#include "Remarks.h"
#include "Words.h"

namespace frigana::remarks {

using catalogue::listed;
using catalogue::Quantity;

class Judge {
  public:
    Judge(const RunResult& result, const Circumstances& circumstances);

    const RunResult& result;
    const Circumstances& circumstances;
    std::vector<Remark> found;

    // Adds a remark of a name that stands in the table of kinds.
    void say(std::string_view name, std::string_view place, std::string text, std::string advice);

    // The number under a key, not a number where there is none.
    double at(std::string_view place, std::string_view name) const;
    bool has(std::string_view key) const { return result.find(key) != nullptr; }

    // A number with its unit, as the reader of the remarks wants it.
    std::string shown(double value, Quantity quantity) const;

    // Places of the result that have all of a state: "evaporator", "low.liquid_line_after_subcooler",
    // "stage1.compressor".
    const std::vector<std::string>& devices() const { return devices_; }
    // Those whose last word begins or ends with a word: "liquid_line", "compressor".
    std::vector<std::string> devicesNamed(std::string_view word) const;

    // Circuits by key ("" for a single one) with the facts of their fluids, as many as the request has blocks; null
    // facts where they cannot be told.
    struct CircuitFacts {
        std::string key;
        const FluidFacts* facts;
        bool blend;
    };
    const std::vector<CircuitFacts>& circuits() const { return circuits_; }
    // Of the circuit that a place belongs to.
    const CircuitFacts& circuitOf(std::string_view place) const;

  private:
    std::vector<std::string> devices_;
    std::vector<CircuitFacts> circuits_;
};

// A number with its unit in a system.
std::string shown(double value, Quantity quantity, catalogue::UnitSystem units);

// Last word of a key: "compressor" of "stage1.compressor".
std::string_view lastWord(std::string_view key);
// A key as words: "suction line before exchanger of the low circuit".
std::string inWords(std::string_view place);

// One for each topic.
void judgePhases(Judge& judge);      // lines, inlets and outlets in the wrong phase
void judgeEnergies(Judge& judge);    // capacities, balances, ratios
void judgeExchangers(Judge& judge);  // effectiveness, crossing temperatures, receivers
void judgeSettings(Judge& judge);    // settings that mean something else with this fluid
void judgeFluids(Judge& judge);      // limits of the equation, potentials, reference states
void judgeStates(Judge& judge);      // values that are missing, extrapolated or estimated
void judgePipes(Judge& judge);       // tables of line sizing
void judgeLevels(Judge& judge);      // pressures and temperatures out of the ordinary

}  // namespace frigana::remarks
