// What a request can ask for: one row per operation, with its reader, its check and the routine that answers it.
#pragma once

#include <span>
#include <string_view>

#include "12_MyVariables.h"

namespace frigana {

struct PropertyOperation {
    int sub;
    std::string_view name;
    void (*tool)(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT);
    void (*limits)(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT);  // where the step is 0; may be null
};

enum class CycleReader { oneFluid, combined, cascade, pumped };

struct CycleOperation {
    int sub;
    std::string_view name;
    CycleReader reader;
    // Those of one fluid, or those of two; the others are null.
    void (*check)(const CYCLEIN& cycle);
    void (*checkTwo)(const CYCLEIN& cycle1, const CYCLEIN& cycle2);
    void (*solve)(SUBSTANCE& substance, CYCLEIN& cycle, const Text255& FILEOUT);
    void (*solveTwo)(SUBSTANCE& substance1, CYCLEIN& cycle1, SUBSTANCE& substance2, CYCLEIN& cycle2,
                     const Text255& FILEOUT);
};

extern const std::span<const PropertyOperation> propertyOperations;
extern const std::span<const CycleOperation> cycleOperations;

// Name of an operation as a person says it; empty if there is none.
std::string_view operationName(int type, int sub);

}  // namespace frigana
