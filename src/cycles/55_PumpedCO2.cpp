#include "55_PumpedCO2.h"

#include "56_SecondaryLoop.h"
#include "CoupledCircuits.h"

namespace frigana {

namespace {

// Lines of the loop's result.
constexpr CoupledSystem pumped{
    .solveLow = SOLSECONDARYCYCLE,
    .lowName = "Pumped loop",
    .lines = 239,
    .evaporator = 111,
    .condenser = 112,
    .power = 113,
    .graphDewT = 199,
    .graphBubbleT = 201,
    .evaporatingT = 123,
    .setting = 11,
};

}  // namespace

void SOLPUMPEDCO2SYSTEM(SUBSTANCE& substance1, CYCLEIN& cycle1, SUBSTANCE& substance2, const CYCLEIN& cycle2,
                        const Text255& FILEOUT) {
    solveCoupled(pumped, substance1, cycle1, substance2, cycle2, FILEOUT);
}

}  // namespace frigana
