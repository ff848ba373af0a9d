// States of property requests and of the lines that are sized: missing values with the engine's own reason, transport
// properties beyond the range of their correlations or from estimates.
#include <algorithm>
#include <array>
#include <cmath>

#include "EngineFacts.h"
#include "Judge.h"
#include "Letters.h"

namespace frigana::remarks {

namespace {

constexpr int propertyType = 1, firstWithStates = 2, lastWithStates = 6;
constexpr int isopropertyTable = 3, statePoint = 4;

// A state of the result by the beginning of its keys: "" of a state point, "table.12.liquid." of a table.
struct State {
    std::string prefix;
    double T, p, D, h, quality;
    bool viscosityMissing, conductivityMissing;

    // Temperature, pressure and density may be what was asked for.
    bool exists() const { return std::isfinite(h); }
    bool hasTwoPhases() const { return quality > 0.0 && quality < 1.0; }
};

std::vector<State> statesOf(const Judge& judge) {
    constexpr std::string_view mark = "density";
    std::vector<State> states;
    for (const auto& entry : judge.result.entries) {
        if (!entry.isNumber() || lastWord(entry.key) != mark) continue;
        const std::string prefix = entry.key.substr(0, entry.key.size() - mark.size());
        const auto of = [&](const char* name) { return judge.at("", prefix + name); };
        states.push_back({prefix, of("temperature"), of("pressure"), of("density"), of("enthalpy"), of("quality"),
                          std::isnan(of("viscosity")), std::isnan(of("thermal_conductivity"))});
    }
    return states;
}

// "the vapor of row 12", "the state".
std::string nameOf(const State& state) {
    std::string words = state.prefix.find("liquid.") != std::string::npos  ? "the liquid"
                        : state.prefix.find("vapor.") != std::string::npos ? "the vapor"
                                                                           : "the state";
    constexpr std::string_view table = "table.";
    if (state.prefix.starts_with(table)) {
        const std::string row = state.prefix.substr(table.size());
        words += " of row " + row.substr(0, row.find('.'));
    }
    return words;
}

std::string placeOf(const State& state) {
    if (state.prefix.empty()) return "state";
    return state.prefix.substr(0, state.prefix.size() - 1);
}

std::string asSentence(std::string text) {
    text.front() = capitalLetter(text.front());
    return text;
}

// ", and 11 more" behind the first of several.
std::string andMore(std::size_t count) {
    if (count < 2) return {};
    return ", and of " + std::to_string(count - 1) + " more";
}

// A reason of the engine as a sentence; where it tells none, another one.
std::string engineSays(const std::string& reason, const char* otherwise) {
    if (reason.empty()) return otherwise;
    return " The engine says: " + reason + '.';
}

char letterOf(int property) {
    constexpr char letters[] = {'T', 'P', 'D'};
    return property >= 1 && property <= 3 ? letters[property - 1] : 'T';
}

// The engine's own code and words for a state that it did not give.
std::string reasonFor(const Judge& judge, const State& state, const Fluid& fluid) {
    const auto& input = judge.result.input;
    const auto& ask = input.question;
    const std::string& folder = judge.circumstances.dataFolder;
    if (input.request->sub == statePoint)
        return whyNoState(fluid, folder, letterOf(ask.first), ask.firstValue, letterOf(ask.second), ask.secondValue);
    if (input.request->sub == isopropertyTable) {
        const double running = ask.running == 1 ? state.T : ask.running == 2 ? state.p : state.D;
        if (std::isfinite(running))
            return whyNoState(fluid, folder, letterOf(ask.constant), ask.constantValue, letterOf(ask.running), running);
    }
    const double quality = state.prefix.find("liquid.") != std::string::npos ? 0.0 : 1.0;
    if (std::isfinite(state.T)) return whyNoState(fluid, folder, 'T', state.T, 'Q', quality);
    if (std::isfinite(state.p)) return whyNoState(fluid, folder, 'P', state.p, 'Q', quality);
    return {};
}

void judgeMissingStates(Judge& judge, const std::vector<State>& states, const Fluid& fluid) {
    const State* first = nullptr;
    std::size_t count = 0;
    for (const State& state : states) {
        if (state.exists()) continue;
        if (first == nullptr) first = &state;
        ++count;
    }
    if (first == nullptr) return;
    const std::string reason = reasonFor(judge, *first, fluid);
    judge.say("state_missing", placeOf(*first),
              "There are no values of " + nameOf(*first) + andMore(count) + '.' + engineSays(reason, ""),
              "Ask for states inside the range of the fluid; frigana list NAME and the request fluid-information tell "
              "it.");
}

// ---- transport ------------------------------------------------------------------------------------------------------

std::string missingWords(const State& state) {
    return state.viscosityMissing && state.conductivityMissing ? "viscosity and conductivity"
           : state.viscosityMissing                            ? "viscosity"
                                                               : "conductivity";
}

void judgeTransport(Judge& judge, const std::vector<State>& states, const Fluid& fluid) {
    std::vector<const State*> single;
    std::vector<Place> places;
    for (const State& state : states)
        if (state.exists() && !state.hasTwoPhases() && std::isfinite(state.T)) {
            single.push_back(&state);
            places.push_back({state.T, state.D});
        }
    const auto answers = transportAt(fluid, judge.circumstances.dataFolder, places);
    if (answers.size() != places.size()) return;
    std::size_t beyond = 0, missing = 0;
    std::size_t firstBeyond = 0, firstMissing = 0;
    const auto viscosityBeyond = [&](std::size_t i) {
        return answers[i].viscosityBeyond && !single[i]->viscosityMissing;
    };
    const auto conductivityBeyond = [&](std::size_t i) {
        return answers[i].conductivityBeyond && !single[i]->conductivityMissing;
    };
    for (std::size_t i = single.size(); i-- > 0;) {
        if (viscosityBeyond(i) || conductivityBeyond(i)) ++beyond, firstBeyond = i;
        if (single[i]->viscosityMissing || single[i]->conductivityMissing) ++missing, firstMissing = i;
    }
    if (beyond > 0) {
        const State& state = *single[firstBeyond];
        const char* which = !conductivityBeyond(firstBeyond) ? "the viscosity"
                            : !viscosityBeyond(firstBeyond)  ? "the conductivity"
                                                             : "viscosity and conductivity";
        judge.say("transport_beyond_range", placeOf(state),
                  "Outside the range of the correlation: " + std::string(which) + " of " + nameOf(state) + " at " +
                      judge.shown(state.T, Quantity::temperature) + andMore(beyond) + '.',
                  "What is extrapolated is an estimate.");
    }
    if (missing > 0) {
        const State& state = *single[firstMissing];
        const std::string& why = answers[firstMissing].why;
        judge.say("transport_missing", placeOf(state),
                  "There is no " + missingWords(state) + " of " + nameOf(state) + " at " +
                      judge.shown(state.T, Quantity::temperature) + andMore(missing) + '.' +
                      engineSays(why, " No correlation of the fluid reaches there."),
                  "The other properties are not touched by it.");
    }
}

void judgeEstimatedTransport(Judge& judge, const std::vector<State>& states, const FluidFacts* facts) {
    if (facts == nullptr || facts->estimates.transport.empty()) return;
    const bool shown = std::any_of(states.begin(), states.end(), [](const State& state) {
        return !state.viscosityMissing || !state.conductivityMissing;
    });
    if (shown)
        judge.say("transport_estimated", "fluid",
                  asSentence(listed(facts->estimates.transport)) +
                      (facts->estimates.transport.size() > 1 ? " of this fluid are estimates"
                                                             : " of this fluid is an estimate") +
                      ", not a correlation of measurements.",
                  "Expect errors of some ten percent.");
}

// ---- line sizing ----------------------------------------------------------------------------------------------------

void judgeSizedLines(Judge& judge, const Fluid& fluid, const FluidFacts* facts) {
    const auto& estimated = facts == nullptr ? std::vector<std::string>{} : facts->estimates.transport;
    if (std::find(estimated.begin(), estimated.end(), "viscosity") != estimated.end())
        judge.say("viscosity_estimated", "pipes",
                  "The viscosity of this fluid is an estimate, and the drops of all pipes rest on it.",
                  "A viscosity that is wrong by 20 % makes the drop of a pipe wrong by some 4 %. Leave a margin.");
    std::vector<Place> places;
    std::vector<std::string> names;
    for (const std::string line : {"suction_line", "discharge_line", "liquid_line"})
        for (const char* end : {".inlet", ".outlet"}) {
            const std::string state = line + end;
            const double T = judge.at(state, "temperature"), D = judge.at(state, "density");
            const double quality = judge.at(state, "quality");
            if (!std::isfinite(T) || !std::isfinite(D) || (quality > 0.0 && quality < 1.0)) continue;
            places.push_back({T, D});
            names.push_back(state);
        }
    const auto answers = transportAt(fluid, judge.circumstances.dataFolder, places);
    for (std::size_t i = 0; i < answers.size(); ++i) {
        if (!answers[i].viscosityBeyond) continue;
        judge.say("transport_beyond_range", names[i],
                  "The viscosity at the " + std::string(lastWord(names[i])) + " of the " +
                      inWords(names[i].substr(0, names[i].find('.'))) + " (" +
                      judge.shown(places[i].T, Quantity::temperature) + ") lies outside the range of its correlation.",
                  "It is extrapolated: leave the pipes a margin.");
        break;
    }
}

}  // namespace

void judgeStates(Judge& judge) {
    const auto& input = judge.result.input;
    const Fluid& fluid = input.blocks.front().fluid;
    const FluidFacts* facts = judge.circuits().front().facts;
    if (input.request->name == "line-sizing") return judgeSizedLines(judge, fluid, facts);
    if (input.request->type != propertyType || input.request->sub < firstWithStates ||
        input.request->sub > lastWithStates)
        return;
    const std::vector<State> states = statesOf(judge);
    judgeMissingStates(judge, states, fluid);
    judgeTransport(judge, states, fluid);
    judgeEstimatedTransport(judge, states, facts);
}

}  // namespace frigana::remarks
