// Limits of the equations, reference states and potentials.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "Climate.h"
#include "Judge.h"
#include "Names.h"

namespace frigana::remarks {

namespace {

constexpr std::array<std::string_view, 6> referenceStates{"DEF", "NBP", "ASH", "IIR", "OTH", "OT0"};

constexpr int cycleType = 2;

std::string placeOfFluid(const Judge& judge, std::size_t circuit) {
    return prefixOf(judge.result.input.request->circuits[circuit]) + "fluid";
}

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

// Whether the figure of the report chosen or that of the result file is known, and the class.
void judgePotentials(Judge& judge) {
    const auto& input = judge.result.input;
    const bool shown = input.request->type == cycleType || input.request->name == "fluid-information";
    if (!shown) return;
    const std::string report(catalogue::climateReports[judge.circumstances.climateReport]);
    for (std::size_t i = 0; i < input.blocks.size(); ++i) {
        const catalogue::Climate climate =
            catalogue::climateOf(judge.result, i, judge.circumstances.dataFolder, judge.circumstances.climateReport);
        const std::string place = placeOfFluid(judge, i);
        if (!climate.gwp && !climate.ofResultFile)
            judge.say("potential_unknown", place,
                      "No global warming potential of " + climate.name + " is known, neither in " + report +
                          " nor in the library's table.",
                      "Look it up before you rely on the fluid.");
        else if (climate.gwp && !climate.leftOut.empty())
            judge.say("potential_unknown", place,
                      "The global warming potential of " + climate.name + " leaves out " + listed(climate.leftOut) +
                          ", for which " + report + " has no figure.",
                      "It is a lower bound.");
        if (climate.safetyClass.empty())
            judge.say("class_unknown", place, "The safety class of " + climate.name + " is not known.",
                      "Take it from the safety data of your supplier; it decides on charge and room.");
    }
}

// The name of a file in letters that are not quite its own: it is found all the same, its row in the library's tables
// is not.
void judgeNames(Judge& judge) {
    const auto& input = judge.result.input;
    for (std::size_t i = 0; i < input.blocks.size(); ++i) {
        const catalogue::Fluid& fluid = input.blocks[i].fluid;
        std::vector<std::string> names;
        if (fluid.kind != 3) names.push_back(fluid.file);
        for (const auto& component : fluid.components) names.push_back(component.file);
        for (const std::string& name : names) {
            const std::string file = catalogue::FluidNames::of(judge.circumstances.dataFolder).fileAs(name);
            if (file.empty() || file == name) continue;
            judge.say("name_in_other_case", placeOfFluid(judge, i),
                      "The request says " + name + "; the file is " + file + '.',
                      "It was found. The library's tables compare letter by letter, so that the result may lack "
                      "potential and class: write the name as frigana list has it.");
        }
    }
}

// ---- blends ---------------------------------------------------------------------------------------------------------

void judgeEstimates(Judge& judge) {
    for (std::size_t i = 0; i < judge.circuits().size(); ++i) {
        const FluidFacts* facts = judge.circuits()[i].facts;
        if (facts == nullptr) continue;
        if (!facts->estimates.pairs.empty())
            judge.say("mixing_parameters_estimated", placeOfFluid(judge, i),
                      "The mixing parameters of " + listed(facts->estimates.pairs) +
                          " are estimates: nothing measured stands behind them.",
                      "Bubble and dew points may be wrong by some percent. Compare with data of the blend where you "
                      "have any.");
        if (facts->estimates.criticalPoint)
            judge.say("critical_point_estimated", placeOfFluid(judge, i),
                      "The critical point of this blend is an estimate: one of its pairs has no critical line.",
                      "States within some ten kelvins of it deserve a second look.");
    }
}

// The coldest temperature among the states of a circuit, or of a property request.
double coldestOf(const Judge& judge, std::size_t circuit) {
    double coldest = std::numeric_limits<double>::infinity();
    for (const auto& point : judge.result.points)
        if (point.circuit == judge.circuits()[circuit].key && point.temperature > 0.0)
            coldest = std::min(coldest, point.temperature);
    if (judge.result.input.request->type != cycleType)
        for (const auto& entry : judge.result.entries)
            if (entry.isNumber() && lastWord(entry.key) == "temperature" && entry.number() > 0.0)
                coldest = std::min(coldest, entry.number());
    return coldest;
}

void judgeLiquids(Judge& judge) {
    const auto& input = judge.result.input;
    for (std::size_t i = 0; i < input.blocks.size(); ++i) {
        if (!judge.circuits()[i].blend) continue;
        const double coldest = coldestOf(judge, i);
        if (!std::isfinite(coldest) ||
            !liquidFallsApart(input.blocks[i].fluid, judge.circumstances.dataFolder, coldest))
            continue;
        judge.say("two_liquids", placeOfFluid(judge, i),
                  "At " + judge.shown(coldest, Quantity::temperature) +
                      " the liquid of this blend falls apart into two liquids in the model; the calculation takes one.",
                  "Pressures and compositions there are not those of an equilibrium. Stay warmer.");
    }
}

}  // namespace

void judgeFluids(Judge& judge) {
    judgeLimits(judge);
    judgeTriplePoints(judge);
    judgeReferenceStates(judge);
    judgePotentials(judge);
    judgeNames(judge);
    judgeEstimates(judge);
    judgeLiquids(judge);
}

}  // namespace frigana::remarks
