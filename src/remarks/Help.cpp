// What usually helps where a request was refused.
#include <cmath>

#include "EngineFacts.h"
#include "Judge.h"

namespace frigana::remarks {

namespace {

// Codes T SS C NN of refusals that come from the course of a calculation.
struct Help {
    int code;
    std::string_view text;
};
constexpr std::string_view unusableReference =
    "This fluid cannot have that reference state, whatever the message says of a default. Ask for DEF, that of the "
    "fluid's file.";
constexpr Help helps[] = {
    {201300,
     "The compressor would discharge inside the two-phase region. Either the suction gas has too little superheat "
     "(fluids of large molecules, whose dew line leans over, want 10 K or more), or the evaporating pressure has "
     "fallen "
     "out of the range of the fluid: below its triple point, or because the drops of evaporator and suction line take "
     "more than there is. Give more superheat, less drop, or evaporate warmer."},
    {23, unusableReference},
    {24, unusableReference},
    {25, unusableReference},
    {26, unusableReference},
    {117,
     "There are no parameters of a pair of these components, and no estimate serves with one of them. Mix others, "
     "leave "
     "that component out, or add a record of published parameters to fluids/HMX.BNC."},
    {202239, "The exchanger has a drop on its liquid side but exchanges nothing. Ask for a fall of the liquid."},
    {202240, "The vapor side of the exchanger would get colder: it has a drop but takes up too little heat."},
    {204201, "The lower circuit has no heat left to pass on: its discharge line cools below the condenser's outlet."},
    {204202, "Let the upper circuit evaporate colder than the lower one condenses: the two means must differ."},
    {209234, "One injection cannot hold the discharge temperature: raise the limit, or evaporate warmer."},
    {100123, "The request names two fluids where one is meant."},
};

// Wet compression of any cycle.
constexpr int lowestCycleCode = 200000, ofOneCycle = 1000, wetCompression = 300;
bool isWetCompression(int code) {
    return code > lowestCycleCode && code % ofOneCycle == wetCompression;
}

// A property request whose values lie outside the range of the fluid: T SS C NN with T = 1 and C = 2.
bool isBeyondFluid(int code) {
    constexpr int lowest = 101000, highest = 106999, ofTool = 2;
    return code >= lowest && code <= highest && code / 100 % 10 == ofTool;
}

class Helper {
  public:
    Helper(const RunResult& refused, const Circumstances& circumstances)
        : refused_(refused), circumstances_(circumstances) {}

    std::string text() const {
        const int code = refused_.report.IERR;
        std::string special;
        if (const auto* request = refused_.input.request; request != nullptr) {
            if (isWetCompression(code)) special = wetReason();
            if (isBeyondFluid(code)) special = rangeOfFluid();
            if (request->name == "liquid-injection" && code == 209234) special = injectionReason();
            if (request->name == "booster") special = shareReason();
        }
        if (!special.empty()) return special;
        for (const Help& help : helps)
            if (help.code == code) return std::string(help.text);
        return {};
    }

  private:
    std::string shown(double value, Quantity quantity) const {
        return remarks::shown(value, quantity, circumstances_.units);
    }

    // The setting of a parameter by its place, whose option has one of two keys.
    struct Given {
        const catalogue::Option* option = nullptr;
        double value = 0.0;
    };
    Given given(std::size_t circuit, std::string_view place, std::string_view firstKey,
                std::string_view secondKey) const {
        const auto& input = refused_.input;
        for (const catalogue::Parameter& parameter : input.request->circuits[circuit].parameters) {
            const auto k = static_cast<std::size_t>(parameter.index);
            if (parameter.place != place || k > input.blocks[circuit].settings.size()) continue;
            const catalogue::Setting& setting = input.blocks[circuit].settings[k - 1];
            for (const catalogue::Option& option : parameter.options)
                if (option.number == setting.option && (option.key == firstKey || option.key == secondKey))
                    return {&option, setting.value};
        }
        return {};
    }

    // Where evaporating lies below the triple point, or the drops leave no pressure above it.
    std::string wetReason() const {
        const auto& input = refused_.input;
        for (std::size_t i = 0; i < input.blocks.size(); ++i) {
            const FluidFacts* facts = factsOf(input.blocks[i].fluid, circumstances_.dataFolder);
            const Given level = given(i, "evaporator", "temperature", "pressure");
            if (facts == nullptr || level.option == nullptr || !std::isfinite(facts->triplePointTemperature)) continue;
            const double triple = facts->triplePointTemperature;
            const bool byTemperature = level.option->quantity == Quantity::temperature;
            if (byTemperature && level.value < triple)
                return "Evaporating at " + shown(level.value, Quantity::temperature) +
                       " lies below the triple point of the fluid (" + shown(triple, Quantity::temperature) +
                       "), where it is solid. Evaporate warmer, or take another fluid.";
            if (std::string excess = excessiveDrop(i, level.value, byTemperature); !excess.empty()) return excess;
        }
        return {};
    }

    // A drop that leaves little of the pressure in the evaporator, or spans most of what a cycle has.
    std::string excessiveDrop(std::size_t circuit, double level, bool byTemperature) const {
        constexpr double muchPressure = 0.3, muchTemperature = 20.0;  // part of the pressure; K
        double drops = 0.0, warmth = 0.0;
        for (const std::string_view place : {"evaporator", "suction_line"}) {
            const Given drop = given(circuit, place, "pressure_drop", "saturation_drop");
            if (drop.option == nullptr) continue;
            (drop.option->key == "pressure_drop" ? drops : warmth) += drop.value;
        }
        const double pressure =
            byTemperature ? dewPressure(refused_.input.blocks[circuit].fluid, circumstances_.dataFolder, level) : level;
        if (drops > muchPressure * pressure)
            return "The drops of evaporator and suction line take " + shown(drops, Quantity::pressureDifference) +
                   " of the " + shown(pressure, Quantity::pressure) +
                   " in the evaporator; what is left lies outside the range of the fluid. Give less drop.";
        if (warmth > muchTemperature)
            return "The drops of evaporator and suction line take " + shown(warmth, Quantity::temperatureDifference) +
                   " of saturation temperature, which leads out of the range of the fluid; one or two kelvins are "
                   "usual. Give less drop.";
        return {};
    }

    std::string rangeOfFluid() const {
        const FluidFacts* facts = factsOf(refused_.input.blocks.front().fluid, circumstances_.dataFolder);
        if (facts == nullptr || !std::isfinite(facts->lowestTemperature)) return {};
        return "The equation of this fluid reaches from " + shown(facts->lowestTemperature, Quantity::temperature) +
               " to " + shown(facts->highestTemperature, Quantity::temperature) + " and up to " +
               shown(facts->highestPressure, Quantity::pressure) + "; its critical point is " +
               shown(facts->criticalTemperature, Quantity::temperature) + ", " +
               shown(facts->criticalPressure, Quantity::pressure) + '.';
    }

    std::string injectionReason() const {
        const Given limit = given(0, "compressor", "highest_outlet_temperature", "highest_outlet_temperature");
        const Given level = given(0, "condenser", "temperature", "temperature");
        if (limit.option == nullptr || level.option == nullptr || limit.value > level.value) return {};
        return "The highest discharge temperature of " + shown(limit.value, Quantity::temperature) +
               " lies below the condensing temperature of " + shown(level.value, Quantity::temperature) +
               ": only liquid could be that cold. Raise the limit.";
    }

    // A share that leaves nothing for the evaporator whose capacity is given: all flows become infinite.
    std::string shareReason() const {
        const Given whole = given(0, "capacity", "mt_evaporator", "mt_evaporator");
        const Given ofLow = given(0, "capacity", "lt_fraction", "lt_fraction");
        const Given ofMedium = given(0, "capacity", "mt_fraction", "mt_fraction");
        const bool nothingLeft =
            (ofLow.option != nullptr && ofLow.value >= 1.0) || (ofMedium.option != nullptr && ofMedium.value <= 0.0);
        if (whole.option == nullptr || !nothingLeft) return {};
        return "The capacity of the MT evaporator is given as " + shown(whole.value, Quantity::power) +
               ", and its part in the capacity of both as nothing: no flow does both, and the states behind are "
               "missing. Give another part, or the capacity of both evaporators.";
    }

    const RunResult& refused_;
    const Circumstances& circumstances_;
};

}  // namespace

std::string helpFor(const RunResult& refused, const Circumstances& circumstances) {
    if (refused.report.end != RunEnd::refused) return {};
    return Helper(refused, circumstances).text();
}

}  // namespace frigana::remarks
