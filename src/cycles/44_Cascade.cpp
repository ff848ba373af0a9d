#include "44_Cascade.h"

#include "41_BasicCycle.h"
#include "CoupledCircuits.h"

namespace frigana {

namespace {

constexpr CoupledSystem cascade{
    .solveLow = SOLBASICCYCLE,
    .lowName = "Low temperature circuit",
    .lines = BasicCycleLines::all,
    .evaporator = BasicCycleLines::evaporator,
    .condenser = BasicCycleLines::condenser,
    .power = BasicCycleLines::power,
    .graphDewT = BasicCycleLines::graphDewT,
    .graphBubbleT = BasicCycleLines::graphBubbleT,
    .evaporatingT = BasicCycleLines::evaporatingT,
    .setting = 16,
};

}  // namespace

void SOLCASCADECYCLE(SUBSTANCE& substance1, CYCLEIN& cycle1, SUBSTANCE& substance2, const CYCLEIN& cycle2,
                     const Text255& FILEOUT) {
    solveCoupled(cascade, substance1, cycle1, substance2, cycle2, FILEOUT);
}

}  // namespace frigana
