// frigana state: one state of a fluid in one line.
#include <cmath>
#include <iostream>
#include <memory>

#include "Commands.h"
#include "NamedRequest.h"
#include "StateQuery.h"
#include "StoredBlends.h"

namespace frigana::app {

using namespace catalogue;

namespace {

struct Options {
    std::string fluid, units = "metric", data;
    std::vector<std::string> given;
};

std::string shown(double value, Quantity quantity, UnitSystem units) {
    constexpr int digits = 6;
    if (value == missingValue || !std::isfinite(value)) return "n/a";
    const Unit& unit = unitIn(units, quantity);
    const std::string number = numberText(fromInner(value, unit), digits);
    return unit.symbol.empty() ? number : number + ' ' + std::string(unit.symbol);
}

int run(const Options& options) {
    const FluidNames& names = FluidNames::of(options.data);
    Fluid fluid;
    const std::string unknown = findFluid(options.fluid, names, personalFolder(), fluid);
    if (!unknown.empty()) return complain(usageError, options.fluid + ' ' + unknown);
    const UnitSystem units = *unitSystemOf(options.units);
    GivenProperty given[2]{};
    for (int i = 0; i < 2; ++i) {
        const std::string problem = readGivenProperty(options.given[static_cast<std::size_t>(i)], units, given[i]);
        if (!problem.empty()) return complain(usageError, problem);
    }
    if (given[0].property == given[1].property) return complain(usageError, "a state needs two different properties");
    const StateAnswer answer = stateOf(fluid, options.data, given[0], given[1]);
    if (!answer.problem.empty()) return complain(refused, answer.problem);
    const STATEPT& point = answer.point;
    std::string line = shownName(fluid, names);
    for (const StateProperty& property : stateProperties()) {
        const double value = point.*property.field;
        // Outside the dome a quality has no meaning, whatever the mark of the engine.
        if (property.letter == 'Q') {
            const bool isGiven = given[0].property->letter == 'Q' || given[1].property->letter == 'Q';
            const bool wet = isGiven || (value >= 0.0 && value <= 1.0 && point.CP == missingValue);
            line += "  Q = " + (wet ? shown(value, property.quantity, units) : std::string("single phase"));
        } else {
            line += "  " + std::string(1, property.letter) + " = " + shown(value, property.quantity, units);
        }
    }
    line += "  cp = " + shown(point.CP, Quantity::specificHeat, units);
    line += "  w = " + shown(point.W, Quantity::velocity, units);
    std::cout << line << '\n';
    return 0;
}

}  // namespace

Command addState(CLI::App& program) {
    CLI::App* line = program.add_subcommand(
        "state", "a state of a fluid in one line, as in frigana state R134a T=25C P=10bar, or saturation with Q=0");
    const auto options = std::make_shared<Options>();
    line->add_option("FLUID", options->fluid, "name of a fluid or blend")->required();
    line->add_option("PROPERTY", options->given, "two of T, P, D, H, S, Q with their values")->required()->expected(2);
    line->add_option("--units", options->units, "SI, metric (if left out) or imperial")
        ->check([](const std::string& name) {
            return unitSystemOf(name) ? std::string() : "allowed are SI, metric and imperial";
        });
    line->add_option("--data", options->data, dataFolderHelp);
    return {line, [&program, options] {
                if (const int status = findDataFolder(program, options->data, " with --data")) return status;
                return run(*options);
            }};
}

}  // namespace frigana::app
