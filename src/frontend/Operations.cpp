#include "Operations.h"

#include "40_RangeChecks.h"

namespace frigana {

namespace {

constexpr PropertyOperation properties[] = {
    // sub, name, tool, limits
    {1, "Fluid information", nullptr, nullptr},
    {2, "Saturation table", nullptr, nullptr},
    {3, "Isoproperty table", nullptr, nullptr},
    {4, "Specific state point", nullptr, nullptr},
    {5, "Saturation points at equilibrium", nullptr, nullptr},
    {6, "Saturation points at the same composition", nullptr, nullptr},
    {7, "Store a new mixture", nullptr, nullptr},
};

constexpr auto one = CycleReader::oneFluid;
constexpr CycleOperation cycles[] = {
    // sub, name, reader, check, check of two, solver, solver of two
    {1, "Basic cycle", one, RANGECHECKS0201, nullptr, nullptr, nullptr},
    {2, "Cycle with heat exchanger", one, RANGECHECKS0202, nullptr, nullptr, nullptr},
    {3, "Combined cycle", CycleReader::combined, nullptr, RANGECHECKS0203, nullptr, nullptr},
    {4, "Cascade cycle", CycleReader::cascade, nullptr, RANGECHECKS0204, nullptr, nullptr},
    {5, "Line sizing", one, RANGECHECKS0205, nullptr, nullptr, nullptr},
    {6, "Rankine cycle", one, RANGECHECKS0206, nullptr, nullptr, nullptr},
    {7, "Transcritical cycle", one, RANGECHECKS0207, nullptr, nullptr, nullptr},
    {9, "Cycle with liquid injection", one, RANGECHECKS0209, nullptr, nullptr, nullptr},
    {10, "Two-stage cycle with heat exchanger", one, RANGECHECKS0210, nullptr, nullptr, nullptr},
    {11, "Multi-stage cycle with flash tank", one, RANGECHECKS0211, nullptr, nullptr, nullptr},
    {12, "Minimal basic cycle", one, RANGECHECKS0212, nullptr, nullptr, nullptr},
    {13, "Pumped CO2 system", CycleReader::pumped, nullptr, RANGECHECKS0213, nullptr, nullptr},
    {14, "Transcritical booster", one, RANGECHECKS0214, nullptr, nullptr, nullptr},
};

}  // namespace

const std::span<const PropertyOperation> propertyOperations(properties);
const std::span<const CycleOperation> cycleOperations(cycles);
const PropertyPreparation propertyPreparation = {nullptr, nullptr};

std::string_view operationName(int type, int sub) {
    if (type == 1)
        for (const PropertyOperation& operation : properties)
            if (operation.sub == sub) return operation.name;
    if (type == 2)
        for (const CycleOperation& operation : cycles)
            if (operation.sub == sub) return operation.name;
    return {};
}

}  // namespace frigana
