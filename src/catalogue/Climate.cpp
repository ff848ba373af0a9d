#include "Climate.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "Names.h"
#include "OneRefrigerant.h"
#include "StateQuery.h"
#include "UTILITY.h"
#include "Words.h"

namespace frigana::catalogue {

namespace {

// Mass fractions of a blend that is listed by its components; empty where they cannot be told.
std::vector<double> massFractions(const Fluid& fluid, const std::string& dataFolder) {
    std::vector<double> fractions;
    double sum = 0.0;
    for (const Fluid::Component& component : fluid.components) {
        fractions.push_back(component.fraction);
        sum += component.fraction;
    }
    if (fluid.byMass) {
        for (double& fraction : fractions) fraction /= sum;
        return fractions;
    }
    static SUBSTANCE substance;
    if (!loadFluid(fluid, dataFolder, substance).empty()) return {};
    Composition byMass{};
    double molarMass = 0.0;
    XMASS(substance.ZMOL, byMass, molarMass);
    for (std::size_t i = 0; i < fractions.size(); ++i) fractions[i] = byMass[static_cast<int>(i) + 1];
    return fractions;
}

void addComponents(const Fluid& fluid, const std::string& dataFolder, std::size_t report, Climate& climate) {
    const std::vector<double> fractions = massFractions(fluid, dataFolder);
    if (fractions.empty()) return;
    double sum = 0.0;
    for (std::size_t i = 0; i < fractions.size(); ++i) {
        const std::string& file = fluid.components[i].file;
        const Refrigerant* component = oneRefrigerant(dataFolder, file);
        if (component == nullptr || !(component->gwp[report] || component->gwpBelow[report]))
            climate.leftOut.push_back(FluidNames::of(dataFolder).shownName(file));
        else
            sum += fractions[i] * component->gwp[report].value_or(component->gwpBelow[report].value_or(0.0));
    }
    if (climate.leftOut.size() < fractions.size()) climate.gwp = sum;
}

// The figure behind the name of the fluid, in cycles; the value of its own, in facts of a fluid.
std::optional<double> figureOfResult(const RunResult& result, std::size_t circuit) {
    const std::string_view text = result.text(prefixOf(result.input.request->circuits[circuit]) + "fluid_and_gwp");
    double figure = result.number("gwp");
    if (const auto blank = text.find_last_of(' '); blank != std::string_view::npos)
        figure = std::strtod(std::string(text.substr(blank + 1)).c_str(), nullptr);
    return std::isfinite(figure) && figure >= 0.0 ? std::optional<double>(figure) : std::nullopt;
}

}  // namespace

std::optional<std::size_t> climateReportOf(std::string_view name) {
    for (std::size_t k = 0; k < climateReports.size(); ++k)
        if (inCapitals(name) == climateReports[k]) return k;
    return std::nullopt;
}

Climate climateOf(const Fluid& fluid, const std::string& dataFolder, std::size_t report) {
    Climate climate;
    if (fluid.kind == 3) {
        climate.name = fluid.blendName;
        addComponents(fluid, dataFolder, report, climate);
        return climate;
    }
    climate.name = FluidNames::of(dataFolder).shownName(fluid.file);
    if (const Refrigerant* known = oneRefrigerant(dataFolder, fluid.file)) {
        climate.safetyClass = known->safetyClass;
        climate.gwp = known->gwp[report] ? known->gwp[report] : known->gwpBelow[report];
        climate.below = !known->gwp[report] && known->gwpBelow[report];
        climate.leftOut = known->gwpLeftOut[report];
    }
    return climate;
}

Climate climateOf(const RunResult& result, std::size_t circuit, const std::string& dataFolder, std::size_t report) {
    Climate climate = climateOf(result.input.blocks[circuit].fluid, dataFolder, report);
    climate.ofResultFile = figureOfResult(result, circuit);
    return climate;
}

std::string potentialText(const Climate& climate) {
    if (!climate.gwp) return "-";
    const bool large = std::abs(*climate.gwp) >= 1000.0;
    return (climate.below ? "<" : "") + (large ? numberText(std::round(*climate.gwp)) : numberText(*climate.gwp, 4));
}

}  // namespace frigana::catalogue
