// Heat exchangers against the second law, and the pressures of a receiver.
#include <array>

#include "Judge.h"

namespace frigana::remarks {

namespace {

// Differences below this are rounding.
constexpr double sameTemperature = 1e-6;
// How far an effectiveness of 1 that was asked for may be missed by the search for it.
constexpr double searched = 1e-4;

void judgeEffectiveness(Judge& judge) {
    for (const auto& value : judge.result.entries)
        if (lastWord(value.key) == "effectiveness" && value.number() > 1.0 + searched)
            judge.say(
                "exchanger_beyond_ideal", value.key,
                "The heat exchanger would need an effectiveness of " + catalogue::numberText(value.number(), 4) + '.',
                "None passes more than an ideal one: ask for a smaller fall of the liquid or rise of the vapor.");
}

struct Side {
    std::string_view inlet, outlet;
};

// In counterflow each end has one temperature of either side; the warm one must be the warmer.
void judgeEnds(Judge& judge, const std::string& place, Side warm, Side cold) {
    const auto temperature = [&](std::string_view point) {
        return judge.at(place, std::string(point) + ".temperature");
    };
    const std::array<std::array<std::string_view, 2>, 2> ends{{{warm.inlet, cold.outlet}, {warm.outlet, cold.inlet}}};
    for (const auto& [ofWarm, ofCold] : ends) {
        const double warmer = temperature(ofWarm), colder = temperature(ofCold);
        if (!(warmer < colder - sameTemperature)) continue;
        judge.say("temperatures_cross", place,
                  "At one end of the " + inWords(place) + " the side that gives heat has " +
                      judge.shown(warmer, Quantity::temperature) + " and the side that takes it " +
                      judge.shown(colder, Quantity::temperature) + '.',
                  "No exchanger does that: ask for a smaller change of temperature, or give the colder side a lower "
                  "pressure.");
    }
}

// Places of exchangers: those with a key "<place>.heat" and two inlets.
void judgeCrossings(Judge& judge) {
    for (const auto& value : judge.result.entries) {
        constexpr std::string_view mark = ".heat";
        if (!value.key.ends_with(mark)) continue;
        const std::string place = value.key.substr(0, value.key.size() - mark.size());
        for (const Side warm : {Side{"liquid_inlet", "liquid_outlet"}, Side{"hot_inlet", "hot_outlet"}})
            for (const Side cold : {Side{"vapor_inlet", "vapor_outlet"}, Side{"injection_inlet", "injection_outlet"}})
                judgeEnds(judge, place, warm, cold);
    }
}

// Between two circuits: the outlets of the warm side against the mean or the ends of the cold side.
void judgeCoupledCircuits(Judge& judge) {
    struct Coupling {
        std::string_view place, warmOutlet, coldTemperature, words;
    };
    constexpr Coupling couplings[] = {
        {"low.subcooler", "low.subcooler.outlet.temperature", "medium.evaporator.inlet.temperature", "subcooler"},
        {"low.condenser", "low.condenser.outlet.temperature", "high.evaporator.inlet.temperature",
         "exchanger between the circuits"},
        {"loop.condenser", "loop.condenser.outlet.temperature", "high.evaporator.inlet.temperature",
         "exchanger between the circuits"},
    };
    for (const Coupling& coupling : couplings) {
        const double warm = judge.result.find(coupling.warmOutlet) ? judge.result.number(coupling.warmOutlet) : 0.0;
        const double cold =
            judge.result.find(coupling.coldTemperature) ? judge.result.number(coupling.coldTemperature) : 0.0;
        if (warm > 0.0 && cold > 0.0 && warm < cold - sameTemperature)
            judge.say("temperatures_cross", coupling.place,
                      "In the " + std::string(coupling.words) + " the circuit that gives heat leaves with " +
                          judge.shown(warm, Quantity::temperature) + ", colder than the other one boils (" +
                          judge.shown(cold, Quantity::temperature) + ").",
                      "Let the upper circuit evaporate colder, or cool the lower one less.");
    }
}

void judgeReceiver(Judge& judge) {
    const double receiver = judge.at("high_pressure_valve", "outlet.pressure");
    const double evaporator = judge.at("mt_evaporator", "inlet.pressure");
    if (receiver < evaporator)
        judge.say("receiver_below_evaporator", "high_pressure_valve",
                  "The receiver has " + judge.shown(receiver, Quantity::pressure) +
                      ", less than the medium temperature evaporator that it feeds (" +
                      judge.shown(evaporator, Quantity::pressure) + ").",
                  "Give the receiver a pressure above the medium temperature level.");
}

}  // namespace

void judgeExchangers(Judge& judge) {
    judgeEffectiveness(judge);
    judgeCrossings(judge);
    judgeCoupledCircuits(judge);
    judgeReceiver(judge);
}

}  // namespace frigana::remarks
