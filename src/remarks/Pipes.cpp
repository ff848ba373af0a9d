// The tables of pipes of line sizing: whether the wanted pipe was found, lies inside the table, and carries the oil.
#include <cmath>

#include "15_PipeDatabase.h"
#include "Judge.h"

namespace frigana::remarks {

namespace {

// A line of the plant with the numbers of its parameters.
struct Line {
    std::string_view key, words;
    int number;           // 1 suction, 2 discharge, 3 liquid
    int drop, elevation;  // k of its drop and of its elevation
};
constexpr Line lines[] = {
    {"suction_line", "suction line", 1, 5, 18},
    {"discharge_line", "discharge line", 2, 10, 22},
    {"liquid_line", "liquid line", 3, 15, 26},
};
constexpr int receiverParameter = 28;
constexpr int sizeForDrop = 4;         // option of the drop
constexpr double sameVelocity = 1e-3;  // of the mean of the limits, relative

struct Velocities {
    double least, most;
};

double valueOf(const catalogue::Block& block, int k, double fallback) {
    return k <= static_cast<int>(block.settings.size()) ? block.settings[static_cast<std::size_t>(k) - 1].value
                                                        : fallback;
}

int optionOf(const catalogue::Block& block, int k) {
    return k <= static_cast<int>(block.settings.size()) ? block.settings[static_cast<std::size_t>(k) - 1].option : 0;
}

Velocities velocitiesOf(const Line& line, const catalogue::Block& block) {
    Velocities velocities{};
    const int receiver = optionOf(block, receiverParameter) == 1 ? 1 : 0;
    PIPE_VLIMITS(line.number, valueOf(block, line.elevation, 0.0), receiver, velocities.least, velocities.most);
    return velocities;
}

std::string pipe(const Line& line, int option) {
    return "pipes." + std::string(line.key) + ".full_load." + std::to_string(option);
}

void judgeWantedPipe(Judge& judge, const Line& line, const catalogue::Block& block, const Velocities& velocities) {
    if (optionOf(block, line.drop) != sizeForDrop) return;
    const double velocity = judge.at(pipe(line, wantedPipe), "velocity");
    const double mean = 0.5 * (velocities.least + velocities.most);
    if (std::abs(velocity - mean) > sameVelocity * mean) return;
    judge.say(
        "diameter_not_found", pipe(line, wantedPipe),
        "No diameter of the " + std::string(line.words) + " was found with a drop of " +
            judge.shown(valueOf(block, line.drop, 0.0), Quantity::temperatureDifference) +
            "; option 3 is the pipe of a velocity of " + judge.shown(velocity, Quantity::velocity) +
            ", and its drop is " +
            judge.shown(judge.at(pipe(line, wantedPipe), "saturation_drop"), Quantity::temperatureDifference) + '.',
        "Pick by the drops in the table. The search takes at most ten steps and rarely ends for wide pipes (above "
        "about 50 mm) and where the elevation alone costs more than the drop.");
}

void judgeTable(Judge& judge, const Line& line) {
    const auto missing = [&](int option) { return std::isnan(judge.at(pipe(line, option), "inner_diameter")); };
    if (missing(wantedPipe)) return;
    if (missing(1) || missing(5))
        judge.say("sizes_do_not_bracket", pipe(line, wantedPipe),
                  "The wanted pipe of the " + std::string(line.words) + " lies at the " +
                      (missing(1) ? "narrow" : "wide") + " end of the table of sizes.",
                  missing(1) ? "Choose a material with smaller sizes, or accept a smaller drop."
                             : "Lay several pipes side by side: ask for one with its part of the flow.");
}

void judgeOil(Judge& judge, const Line& line, const Velocities& velocities) {
    if (line.key == "liquid_line") return;
    const double velocity = judge.at(pipe(line, pipeOptions), "velocity");
    if (velocity < velocities.least * (1.0 - 1e-6))
        judge.say(
            "pipe_too_slow", pipe(line, pipeOptions),
            "Option 6 of the " + std::string(line.words) + " has " + judge.shown(velocity, Quantity::velocity) +
                ", less than the " + judge.shown(velocities.least, Quantity::velocity) + " that carries the oil.",
            "Every size on offer is too wide for this flow: take the narrowest, or plan for the return of the oil.");
}

}  // namespace

void judgePipes(Judge& judge) {
    const auto& input = judge.result.input;
    if (input.request->name != "line-sizing") return;
    for (const Line& line : lines) {
        if (!judge.has(pipe(line, wantedPipe) + ".velocity")) continue;
        const Velocities velocities = velocitiesOf(line, input.blocks.front());
        judgeWantedPipe(judge, line, input.blocks.front(), velocities);
        judgeTable(judge, line);
        judgeOil(judge, line, velocities);
    }
}

}  // namespace frigana::remarks
