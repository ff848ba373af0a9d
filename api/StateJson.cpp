#include "StateJson.h"

#include <array>
#include <cmath>
#include <nlohmann/json.hpp>

#include "Properties.h"
#include "StateQuery.h"

namespace frigana::programs {

namespace {

using Json = nlohmann::ordered_json;
using catalogue::Problem;

constexpr Property asked[] = {Property::temperature, Property::pressure, Property::density,
                              Property::enthalpy,    Property::entropy,  Property::quality};

struct Given {
    char letter;
    double value;
};

// Takes the two properties out of a body; what is left tells of the fluid.
std::vector<Given> takeGiven(Json& body, std::vector<Problem>& problems) {
    std::vector<Given> given;
    for (const catalogue::StateProperty& property : catalogue::stateProperties()) {
        const std::string key(1, property.letter);
        const auto found = body.find(key);
        if (found == body.end()) continue;
        const catalogue::Unit* plain = &catalogue::unitIn(catalogue::UnitSystem::SI, property.quantity);
        catalogue::Parsed parsed;
        if (found->is_number())
            parsed.value = found->get<double>();
        else
            parsed =
                catalogue::parseQuantity(found->is_string() ? found->get<std::string>() : "", property.quantity, plain);
        if (!parsed.problem.empty()) problems.push_back({0, key + " = " + found->dump() + ": " + parsed.problem});
        given.push_back({property.letter, parsed.value});
        body.erase(key);
    }
    if (given.size() != 2) problems.push_back({0, "a state needs two of T, P, D, H, S, Q"});
    return given;
}

}  // namespace

std::vector<Problem> stateJson(std::string_view body, const std::string& dataFolder, std::string& json) {
    Json question = Json::parse(body, nullptr, false);
    if (!question.is_object()) return {{0, "a state is asked for by a fluid and two of T, P, D, H, S, Q"}};
    std::vector<Problem> problems;
    const std::vector<Given> given = takeGiven(question, problems);
    if (!problems.empty()) return problems;
    PropertyFluid fluid;
    const std::string unknown = fluid.open(question.dump(-1, ' ', false, Json::error_handler_t::replace), dataFolder);
    if (!unknown.empty()) return {{0, unknown}};

    std::array<int, std::size(asked)> wanted{};
    std::array<double, std::size(asked)> results{};
    for (std::size_t i = 0; i < wanted.size(); ++i) wanted[i] = static_cast<int>(asked[i]);
    int code = 0;
    std::string reason;
    PropertyFluid::Question state{
        given[0].letter, given[1].letter, &given[0].value, &given[1].value, 1, wanted, results.data(), &code};
    state.failed = [](void* context, std::size_t, int, std::string_view text) {
        *static_cast<std::string*>(context) = text;
    };
    state.context = &reason;
    const std::string impossible = fluid.answer(state);
    if (!impossible.empty()) return {{0, impossible}};
    if (code > 0 || !std::isfinite(results[0]) || !std::isfinite(results[1]))
        return {{0, reason.empty() ? "there is no such state" : reason}};
    Json found = Json::object();
    for (std::size_t i = 0; i < results.size(); ++i)
        found[std::string(catalogue::stateProperties()[i].name)] =
            std::isfinite(results[i]) ? Json(results[i]) : Json();
    json = found.dump() + "\n";
    return {};
}

}  // namespace frigana::programs
