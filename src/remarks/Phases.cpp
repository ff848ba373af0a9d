// Lines, inlets and outlets that are in another phase than their names say.
#include "Judge.h"

namespace frigana::remarks {

namespace {

// In a pumped loop the evaporator and the line behind it carry both phases, as they shall.
bool isLoop(std::string_view place) {
    return place.starts_with("loop.");
}

void judgeLiquidLines(Judge& judge) {
    for (const std::string& line : judge.devices()) {
        const bool injected = lastWord(line) == "injection_line" && judge.at(line, "inlet.quality") <= 0.0;
        if (!injected && lastWord(line).find("liquid_line") == std::string_view::npos) continue;
        const double quality = judge.at(line, "outlet.quality");
        if (!(quality > 0.0)) continue;
        judge.say(
            "liquid_line_left_liquid", line,
            "The " + inWords(line) + " ends with a vapor quality of " + catalogue::numberText(quality, 3) +
                ": at its outlet pressure the saturation temperature is " +
                judge.shown(judge.at(line, "outlet.saturation_temperature"), Quantity::temperature) +
                ", its temperature " + judge.shown(judge.at(line, "outlet.temperature"), Quantity::temperature) + ".",
            "Give the condenser more subcooling than the drop of saturation temperature of the line, let the line "
            "cool, or make its drop smaller. All figures behind it follow from the vapor.");
    }
}

void judgeVaporLines(Judge& judge) {
    for (const std::string& line : judge.devices()) {
        const std::string_view word = lastWord(line);
        const bool vaporLine = word.starts_with("suction_line") || word == "discharge_line" ||
                               word.find("vapor_line") != std::string_view::npos || word == "injection_line";
        if (!vaporLine || isLoop(line)) continue;
        const double before = judge.at(line, "inlet.quality"), behind = judge.at(line, "outlet.quality");
        if (before >= 1.0 && behind < 1.0)
            judge.say("vapor_line_left_vapor", line,
                      "The " + inWords(line) + " begins as vapor and ends with a quality of " +
                          catalogue::numberText(behind, 3) + '.',
                      "Let the line cool less, or give it more superheat at its inlet.");
    }
}

void judgeInlets(Judge& judge) {
    for (const std::string& device : judge.devices()) {
        const std::string_view word = lastWord(device);
        const double quality = judge.at(device, "inlet.quality");
        const std::string seen = catalogue::numberText(quality, 3);
        // Liquid injected into the suction gas evaporates in the compressor: that is what it is for.
        if (word.ends_with("compressor") && quality < 1.0 && judge.result.input.request->name != "liquid-injection")
            judge.say("wet_compressor_inlet", device, "The " + inWords(device) + " takes in a quality of " + seen + '.',
                      "Give the evaporator more superheat; look at what is injected or mixed in before the inlet.");
        if (word == "turbine" && quality < 1.0)
            judge.say("wet_turbine_inlet", device, "The turbine takes in a quality of " + seen + '.',
                      "Give the boiler more superheat than the line behind it loses.");
        if (word == "condenser" && !isLoop(device) && !judge.has("turbine.power") && quality <= 0.0)
            judge.say("liquid_condenser_inlet", device,
                      "What enters the " + inWords(device) + " is liquid already; it has nothing to condense.",
                      "Let the discharge line cool less.");
        if (word.ends_with("expansion_device") && quality > 0.0 && !judge.has("high_pressure_valve.pressure_drop"))
            judge.say("expansion_from_vapor", device,
                      "The " + inWords(device) + " takes in a quality of " + seen + " instead of liquid.",
                      "Look at the liquid line before it: it needs more subcooling than its drop.");
    }
}

void judgeEvaporators(Judge& judge) {
    for (const std::string& device : judge.devicesNamed("evaporator")) {
        const double quality = judge.at(device, "outlet.quality");
        if (!isLoop(device) && quality < 1.0)
            judge.say(
                "evaporator_outlet_wet", device,
                "The " + inWords(device) + " ends with a quality of " + catalogue::numberText(quality, 3) + '.',
                "What enters it may be liquid that is colder than the evaporator: let the liquid before the expansion "
                "device be warmer.");
    }
}

}  // namespace

void judgePhases(Judge& judge) {
    judgeLiquidLines(judge);
    judgeVaporLines(judge);
    judgeInlets(judge);
    judgeEvaporators(judge);
}

}  // namespace frigana::remarks
