// Capacities, powers and ratios, and whether they add up.
#include <cmath>
#include <map>

#include "Judge.h"

namespace frigana::remarks {

namespace {

// What of the heat and power of a circuit may stay open before a remark is due.
constexpr double openShare = 1e-3;

// Lines may gain or lose heat; everything else of these has one sign.
bool hasOneSign(const catalogue::Value& value) {
    const std::string_view word = lastWord(value.key);
    // The same figures stand with the devices.
    if (value.key.find("performance.") == std::string::npos && !value.key.starts_with("system.")) return false;
    return word.ends_with("capacity") || word.ends_with("power") || word.find("cop_") != std::string_view::npos;
}

std::string_view placeOf(std::string_view key) {
    const auto dot = key.rfind('.');
    return dot == std::string_view::npos ? key : key.substr(0, dot);
}

void judgeSigns(Judge& judge) {
    for (const auto& value : judge.result.entries)
        if (value.isNumber() && hasOneSign(value) && value.number() < 0.0)
            judge.say("negative_capacity", value.key,
                      value.name + " is " + judge.shown(value.number(), value.quantity) + '.',
                      "The circuit does not do what it is meant for: look at the states before and behind " +
                          inWords(placeOf(value.key)) + ", and at what is taken from its capacity elsewhere.");
}

// 1 for what a circuit takes up, -1 for what it gives away, 0 for anything else.
int signOf(std::string_view device, std::string_view name) {
    if (name == "heat_gain") return 1;
    if (name == "heat_loss") return -1;
    if (name == "power") return device == "turbine" ? -1 : device.ends_with("compressor") || device == "pump" ? 1 : 0;
    if (name == "capacity") {
        if (device.ends_with("evaporator") || device == "boiler") return 1;
        if (device == "condenser" || device == "gas_cooler") return -1;
    }
    if (name == "heat" && device == "subcooler") return -1;
    return 0;
}

// The line behind the injection side of a two-stage exchanger has no section of its own in the result.
double heatOfInjectionLine(const Judge& judge) {
    const catalogue::PointState *before = nullptr, *behind = nullptr;
    for (const auto& point : judge.result.points) {
        if (point.key == "heat_exchanger.injection_outlet") before = &point;
        if (point.key == "injection_line.outlet") behind = &point;
    }
    if (before == nullptr || behind == nullptr || judge.has("injection_line.heat_gain")) return 0.0;
    const double heat = judge.at("performance", "injection_mass_flow") * (behind->enthalpy - before->enthalpy);
    return std::isfinite(heat) ? heat : 0.0;
}

std::string_view causeOfOpenBalance(const Judge& judge) {
    if (judge.result.input.request->name == "multi-stage")
        return "The feed of a lower tank is taken as saturated liquid at the pressure that the ratio of its stage "
               "gives, "
               "not at that of the tank above, and a zeotropic blend as having one composition everywhere.";
    return "With a zeotropic blend the vapor and the liquid of a receiver or flash tank have other compositions than "
           "the "
           "blend; the calculation takes the blend everywhere.";
}

void judgeBalances(Judge& judge) {
    struct Balance {
        double taken = 0.0, given = 0.0;
    };
    std::map<std::string, Balance> balances;
    for (const auto& value : judge.result.entries) {
        if (!value.isNumber()) continue;
        const std::string_view place = placeOf(value.key), device = lastWord(place);
        const int sign = signOf(device, lastWord(value.key));
        if (sign == 0 || place.find("performance") != std::string_view::npos) continue;
        std::string circuit(place.substr(0, place.size() - device.size()));
        if (circuit.starts_with("stage")) circuit.clear();
        (sign > 0 ? balances[circuit].taken : balances[circuit].given) += value.number();
    }
    balances[""].taken += heatOfInjectionLine(judge);
    for (const auto& [circuit, balance] : balances) {
        const double open = balance.taken - balance.given;
        if (!(std::abs(open) > openShare * std::abs(balance.given))) continue;
        judge.say("balance_open", circuit + "performance",
                  "What the circuit takes up and gives away differs by " + judge.shown(open, Quantity::power) + ", " +
                      catalogue::numberText(100.0 * open / balance.given, 2) + " % of what it gives away.",
                  std::string(causeOfOpenBalance(judge)) + " Take the figures as that much uncertain.");
    }
}

void judgeRatios(Judge& judge) {
    for (const std::string& device : judge.devices()) {
        const double ratio = judge.at(device, "pressure_ratio");
        const double before = judge.at(device, "inlet.pressure"), behind = judge.at(device, "outlet.pressure");
        const bool isLoopPump = lastWord(device) == "pump";
        if (isLoopPump ? ratio <= 1.0 : std::abs(ratio * before - behind) > 1e-3 * behind)
            judge.say("meaningless_ratio", device,
                      "The " + inWords(device) + " shows a pressure ratio of " + catalogue::numberText(ratio, 4) +
                          " between " + judge.shown(before, Quantity::pressure) + " and " +
                          judge.shown(behind, Quantity::pressure) + '.',
                      isLoopPump ? "A loop without drops needs no pump: give its lines and its evaporator their drops."
                                 : "Take the ratio of the two pressures instead.");
    }
}

// The states that every cycle has, and the figures that an engineer looks for first.
void judgeMissing(Judge& judge) {
    for (const auto& point : judge.result.points)
        if (point.temperature <= 0.0 || point.pressure <= 0.0 || point.enthalpy == -777.0)
            judge.say(
                "state_missing", point.key,
                "There is no state for " + point.label + ": the equation of the fluid gives none there.",
                "The calculation goes on with -777, so no figure that follows from it means anything. Choose levels "
                "inside the range of the fluid: above its triple point, below its highest temperature and "
                "pressure.");
    for (const auto& value : judge.result.entries) {
        if (!value.isNumber() || !std::isnan(value.number())) continue;
        const std::string_view word = lastWord(value.key);
        const bool main = word.find("cop_") != std::string_view::npos || word.ends_with("_capacity") ||
                          word.ends_with("power") || word == "cycle_efficiency";
        // Of a combined system these stand for the whole elsewhere.
        if (main && word.find("volumetric") == std::string_view::npos &&
            value.key.find("performance") != std::string::npos)
            judge.say("figure_missing", value.key, value.name + " could not be computed.",
                      "A state before it is missing, or it would divide by zero.");
    }
}

}  // namespace

void judgeEnergies(Judge& judge) {
    judgeSigns(judge);
    judgeBalances(judge);
    judgeRatios(judge);
    judgeMissing(judge);
}

}  // namespace frigana::remarks
