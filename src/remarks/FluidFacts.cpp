#include "FluidFacts.h"

#include <map>
#include <memory>

#include "Catalogue.h"
#include "RunResult.h"

namespace frigana::remarks {

namespace {

// A fluid by all that its facts depend on.
std::string nameOf(const catalogue::Fluid& fluid, const std::string& dataFolder) {
    std::string name = dataFolder + '\n' + std::to_string(fluid.kind) + '\n' + fluid.file;
    for (const auto& component : fluid.components)
        name += '\n' + component.file + ' ' + std::to_string(component.fraction);
    return name + (fluid.byMass ? " mass" : " mole");
}

std::unique_ptr<FluidFacts> askFor(const catalogue::Fluid& fluid, const std::string& dataFolder) {
    catalogue::FilledRequest request;
    request.request = catalogue::findRequest("fluid-information");
    // Whatever a request takes as reference: what cannot be set up with that one has its limits all the same.
    catalogue::Fluid own = fluid;
    own.referenceState = catalogue::Fluid{}.referenceState;
    own.referenceOf = catalogue::Fluid{}.referenceOf;
    request.blocks.push_back({"", own, {}});
    const catalogue::RunResult result = catalogue::runFilled(request, {dataFolder, false});
    if (!result.isDone()) return nullptr;
    return std::make_unique<FluidFacts>(FluidFacts{
        result.number("triple_point_temperature"), result.number("lowest_temperature"),
        result.number("highest_temperature"), result.number("highest_pressure"), result.number("critical_temperature"),
        result.number("critical_pressure"), estimatesOf(own, dataFolder)});
}

}  // namespace

const FluidFacts* factsOf(const catalogue::Fluid& fluid, const std::string& dataFolder) {
    static std::map<std::string, std::unique_ptr<FluidFacts>> known;
    const auto [place, isNew] = known.try_emplace(nameOf(fluid, dataFolder));
    if (isNew) place->second = askFor(fluid, dataFolder);
    return place->second.get();
}

}  // namespace frigana::remarks
