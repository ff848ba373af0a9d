// Limits of the equations, reference states and potentials.
#include <algorithm>
#include <array>

#include "Judge.h"

namespace frigana::remarks {

namespace {

constexpr std::array<std::string_view, 6> referenceStates{"DEF", "NBP", "ASH", "IIR", "OTH", "OT0"};
constexpr std::string_view unknownPotential = "-777";

void judgeLimits(Judge& judge) {
    for (const auto& point : judge.result.points) {
        const FluidFacts* facts = judge.circuitOf(point.key).facts;
        if (facts == nullptr || point.temperature <= 0.0) continue;
        std::string seen;
        if (point.temperature > facts->highestTemperature)
            seen = judge.shown(point.temperature, Quantity::temperature) + ", above the " +
                   judge.shown(facts->highestTemperature, Quantity::temperature) + " to which the equation is valid";
        else if (point.temperature < facts->lowestTemperature)
            seen = judge.shown(point.temperature, Quantity::temperature) + ", below the " +
                   judge.shown(facts->lowestTemperature, Quantity::temperature) + " from which the equation is valid";
        else if (point.pressure > facts->highestPressure)
            seen = judge.shown(point.pressure, Quantity::pressure) + ", above the " +
                   judge.shown(facts->highestPressure, Quantity::pressure) + " to which the equation is valid";
        if (!seen.empty())
            judge.say("state_beyond_equation", point.key, "The state " + point.label + " has " + seen + '.',
                      "It is extrapolated. Take the figures as estimates, or choose levels inside the range.");
    }
}

void judgeTriplePoints(Judge& judge) {
    for (const std::string& device : judge.devicesNamed("evaporator")) {
        const FluidFacts* facts = judge.circuitOf(device).facts;
        const double temperature = judge.at(device, "outlet.saturation_temperature");
        if (facts != nullptr && temperature < facts->triplePointTemperature)
            judge.say("below_triple_point", device,
                      "The " + inWords(device) + " evaporates at " + judge.shown(temperature, Quantity::temperature) +
                          ", below the triple point of the fluid (" +
                          judge.shown(facts->triplePointTemperature, Quantity::temperature) + ").",
                      "The fluid is solid there. Evaporate warmer, or take another fluid.");
    }
}

void judgeReferenceStates(Judge& judge) {
    for (std::size_t i = 0; i < judge.result.input.blocks.size(); ++i) {
        const std::string& state = judge.result.input.blocks[i].fluid.referenceState;
        if (std::find(referenceStates.begin(), referenceStates.end(), state) == referenceStates.end())
            judge.say(
                "reference_state_unknown", "fluid",
                "The reference state \"" + state + "\" is not known; the fluid's default is taken.",
                "Known are DEF, NBP, ASH and IIR. Only differences of enthalpy and entropy mean the same in all.");
    }
}

void judgePotentials(Judge& judge) {
    for (const auto& value : judge.result.entries)
        if (lastWord(value.key) == "fluid_and_gwp" && std::string_view(value.text).ends_with(unknownPotential))
            judge.say("potential_unknown", value.key,
                      "The library's table has no global warming potential of " +
                          value.text.substr(0, value.text.find(' ')) + '.',
                      "Write the name as the list of fluids has it, or look the potential up.");
}

}  // namespace

void judgeFluids(Judge& judge) {
    judgeLimits(judge);
    judgeTriplePoints(judge);
    judgeReferenceStates(judge);
    judgePotentials(judge);
}

}  // namespace frigana::remarks
