// Settings that mean something else than it seems with this fluid, and drops that rise.
#include <algorithm>
#include <cmath>
#include <iterator>

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
    for (std::size_t i = 0; i < input.blocks.size(); ++i) {
        if (!judge.circuits()[i].blend) continue;
        for (const catalogue::Parameter& parameter : input.request->circuits[i].parameters) {
            if (parameter.index > static_cast<int>(input.blocks[i].settings.size())) continue;
            const catalogue::Setting& setting = input.blocks[i].settings[static_cast<std::size_t>(parameter.index) - 1];
            for (const catalogue::Option& option : parameter.options) {
                if (option.number != setting.option || option.key != "saturation_drop") continue;
                const std::string place = prefixOf(input.request->circuits[i]) + std::string(parameter.place);
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

// Lines whose pressures are worked out against the flow, from what their outlet joins.
bool isWorkedBackwards(const catalogue::Request& request, std::string_view place) {
    struct Line {
        std::string_view request, place;
    };
    constexpr Line lines[] = {
        {"rankine", "low_pressure_vapor_line"},
        {"rankine", "liquid_line"},
        {"pumped-co2", "high_pressure_liquid_line"},
    };
    if (place == "discharge_line") return true;
    return std::any_of(std::begin(lines), std::end(lines),
                       [&](const Line& line) { return line.request == request.name && line.place == place; });
}

void judgeOutletDrop(Judge& judge, const catalogue::Parameter& parameter, const catalogue::Setting& setting,
                     const std::string& prefix) {
    for (const catalogue::Option& option : parameter.options) {
        if (option.number != setting.option || option.key != "saturation_drop" || setting.value == 0.0) continue;
        const std::string place = prefix + std::string(parameter.place);
        judge.say("drop_from_outlet", place,
                  "The drop of " + judge.shown(setting.value, Quantity::temperatureDifference) + " of the " +
                      inWords(place) + " counts from the saturation temperature at its outlet (" +
                      judge.shown(judge.at(place, "outlet.pressure"), Quantity::pressure) +
                      "), upward; the pressure drop became " +
                      judge.shown(judge.at(place, "pressure_drop"), Quantity::pressureDifference) + '.',
                  "Counted from the inlet it would be a little less. Give a pressure drop where that matters.");
    }
}

void judgeOutletDrops(Judge& judge) {
    const auto& input = judge.result.input;
    const catalogue::Request& request = *input.request;
    for (std::size_t i = 0; i < input.blocks.size(); ++i) {
        const auto& settings = input.blocks[i].settings;
        const std::string prefix = prefixOf(request.circuits[i]);
        for (const catalogue::Parameter& parameter : request.circuits[i].parameters)
            if (parameter.index <= static_cast<int>(settings.size()) && isWorkedBackwards(request, parameter.place))
                judgeOutletDrop(judge, parameter, settings[static_cast<std::size_t>(parameter.index) - 1], prefix);
    }
}

// The vapor injection lines of a multi-stage cycle take a pressure drop alone; the other one is only reported.
void judgeInjectionDrops(Judge& judge) {
    for (int stage = 1; stage < judge.result.input.stages(); ++stage) {
        const std::string place = "stage" + std::to_string(stage) + ".injection_line";
        const double drop = judge.at(place, "saturation_drop");
        if (!(drop > 0.0) || judge.at(place, "pressure_drop") != 0.0) continue;
        judge.say("drop_without_effect", place,
                  "The drop of " + judge.shown(drop, Quantity::temperatureDifference) + " of the " + inWords(place) +
                      " is reported and has no effect: the pressure is the same at both ends.",
                  "Give a pressure drop instead.");
    }
}

// The injection holds the discharge temperature by steps on the enthalpy that are not asked where they end.
void judgeInjectionLimit(Judge& judge) {
    const auto& input = judge.result.input;
    constexpr std::size_t limitIndex = 16;
    if (input.request->name != "liquid-injection" || input.blocks.front().settings.size() < limitIndex) return;
    if (!(judge.at("performance", "injected_fraction") > 0.0)) return;
    const double limit = input.blocks.front().settings[limitIndex - 1].value;
    const double reached = judge.at("compressor", "outlet.temperature");
    const double quality = judge.at("compressor", "outlet.quality");
    if (!(quality < 1.0)) return;
    judge.say("injection_limit_wet", "compressor",
              "The highest discharge temperature of " + judge.shown(limit, Quantity::temperature) +
                  " lies inside the glide at the discharge pressure: the compressor would discharge a quality of " +
                  catalogue::numberText(quality, 3) + " at " + judge.shown(reached, Quantity::temperature) + '.',
              "Allow a temperature well above the dew point, which is " +
                  judge.shown(judge.at("compressor", "outlet.saturation_temperature"), Quantity::temperature) +
                  " there.");
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
    judgeOutletDrops(judge);
    judgeInjectionDrops(judge);
    judgeInjectionLimit(judge);
}

}  // namespace frigana::remarks
