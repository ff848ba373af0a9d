// Settings that mean something else than it seems with this fluid, and drops that rise.
#include <cmath>

#include "Judge.h"

namespace frigana::remarks {

namespace {

// A glide below this is not worth a remark.
constexpr double smallGlide = 0.3;  // K

// The glide of an exchanger includes what its drop of pressure does to the saturation temperature.
double glideOfBlend(const Judge& judge, const std::string& place) {
    return std::abs(judge.at(place, "glide")) - std::abs(judge.at(place, "saturation_drop"));
}

void judgeSaturationDrops(Judge& judge) {
    const auto& input = judge.result.input;
    for (std::size_t i = 0; i < input.blocks.size() && i < judge.circuits().size(); ++i) {
        const Judge::CircuitFacts& circuit = judge.circuits()[i];
        if (!circuit.blend || i >= input.request->circuits.size()) continue;
        for (const catalogue::Parameter& parameter : input.request->circuits[i].parameters) {
            if (parameter.index > static_cast<int>(input.blocks[i].settings.size())) continue;
            const catalogue::Setting& setting = input.blocks[i].settings[static_cast<std::size_t>(parameter.index) - 1];
            for (const catalogue::Option& option : parameter.options) {
                if (option.number != setting.option || option.key != "saturation_drop") continue;
                std::string place(parameter.place);
                if (!circuit.key.empty()) place = circuit.key + '.' + place;
                if (parameter.place != "evaporator" && parameter.place != "condenser") continue;
                const double drop = judge.at(place, "pressure_drop");
                if (drop < 0.0 || glideOfBlend(judge, place) > smallGlide)
                    judge.say(
                        "glide_in_saturation_drop", place,
                        "The drop of the " + inWords(place) + " is given as " +
                            judge.shown(setting.value, Quantity::temperatureDifference) +
                            " of saturation temperature. With this blend it counts between dew and bubble point, so "
                            "that the glide counts too; the pressure drop became " +
                            judge.shown(drop, Quantity::pressureDifference) + '.',
                        "Give a pressure drop instead.");
            }
        }
    }
}

void judgeRisingPressures(Judge& judge) {
    for (const std::string& device : judge.devices()) {
        const std::string_view word = lastWord(device);
        // The row of a loop's evaporator inlet has the pressure of the saturated liquid, whatever the drop.
        if (word.ends_with("compressor") || word == "pump" || device == "loop.evaporator") continue;
        const double drop = judge.at(device, "pressure_drop");
        if (drop < 0.0)
            judge.say("negative_drop", device,
                      "The pressure rises by " + judge.shown(-drop, Quantity::pressureDifference) + " along the " +
                          inWords(device) + '.',
                      "Give a pressure drop instead of a drop of saturation temperature.");
    }
}

}  // namespace

void judgeSettings(Judge& judge) {
    judgeSaturationDrops(judge);
    judgeRisingPressures(judge);
}

}  // namespace frigana::remarks
