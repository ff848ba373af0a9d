// Pressures and temperatures out of the ordinary: possible, but an engineer wants to know.
#include "Judge.h"

namespace frigana::remarks {

namespace {

constexpr double hotDischarge = 393.15;  // K, 120 degrees Celsius: oil and valves suffer above
constexpr double highRatio = 12.0;       // of one stage
constexpr double atmosphere = 101.325;   // kPa

}  // namespace

void judgeLevels(Judge& judge) {
    for (const std::string& device : judge.devicesNamed("compressor")) {
        const double outlet = judge.at(device, "outlet.temperature");
        if (outlet > hotDischarge)
            judge.say("discharge_hot", device,
                      "The " + inWords(device) + " discharges at " + judge.shown(outlet, Quantity::temperature) + '.',
                      "Oil and valves suffer above 120 °C. Two stages, injection of liquid or less superheat help.");
        const double ratio = judge.at(device, "pressure_ratio");
        if (ratio > highRatio)
            judge.say("pressure_ratio_high", device,
                      "The " + inWords(device) + " has a pressure ratio of " + catalogue::numberText(ratio, 3) + '.',
                      "One stage rarely does more than 12 with the efficiencies given. Think of two stages.");
    }
    for (const std::string& device : judge.devicesNamed("evaporator")) {
        const double pressure = judge.at(device, "outlet.pressure");
        if (pressure < atmosphere)
            judge.say("below_atmosphere", device,
                      "The " + inWords(device) + " works at " + judge.shown(pressure, Quantity::pressure) +
                          ", below atmospheric pressure.",
                      "Air and moisture leak in. A fluid with a lower boiling point avoids it.");
    }
}

}  // namespace frigana::remarks
