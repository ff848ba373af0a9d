#include "Operations.h"

#include "31_FluidInformation.h"
#include "32_SaturationTables.h"
#include "33_IsopropertyTables.h"
#include "34_SpecificStatePoints.h"
#include "35_SatPointsAtEquilibr.h"
#include "36_SatPointsAtSameComp.h"
#include "37_StoreNewMixture.h"
#include "40_RangeChecks.h"
#include "41_BasicCycle.h"
#include "42_CycleWithHEx.h"
#include "43_Combined.h"
#include "44_Cascade.h"
#include "45_LineSizing.h"
#include "46_Rankine.h"
#include "47_Transcritical.h"
#include "49_WithLiquidInjection.h"
#include "50_TwoStageWithHEx.h"
#include "51_MStageWithFlashTank.h"
#include "52_BasicBasicCycle.h"
#include "55_PumpedCO2.h"
#include "57_TranscriticalBooster.h"

namespace frigana {

namespace {

// Solvers take their requests as constants or not; the table has one form for all.
template <auto solver>
void solve(SUBSTANCE& substance, CYCLEIN& cycle, const Text255& FILEOUT) {
    solver(substance, cycle, FILEOUT);
}

template <auto solver>
void solveTwo(SUBSTANCE& substance1, CYCLEIN& cycle1, SUBSTANCE& substance2, CYCLEIN& cycle2, const Text255& FILEOUT) {
    solver(substance1, cycle1, substance2, cycle2, FILEOUT);
}

constexpr PropertyOperation properties[] = {
    // sub, name, tool, limits
    {1, "Fluid information", FLUIDINFORMATION, nullptr},
    {2, "Saturation table", SATPTABLECOMPUTE, SATPTABLELIMITS},
    {3, "Isoproperty table", ISOPTABLECOMPUTE, ISOPTABLELIMITS},
    {4, "Specific state point", SPECIFSTATEPOINT, nullptr},
    {5, "Saturation points at equilibrium", SATPOINTSATEQUIL, nullptr},
    {6, "Saturation points at the same composition", SATPOINTSATCOMPO, nullptr},
    {7, "Store a new mixture", STORENEWMIXTURE, nullptr},
};

constexpr auto one = CycleReader::oneFluid;
constexpr CycleOperation cycles[] = {
    // sub, name, reader, check, check of two, solver, solver of two
    {1, "Basic cycle", one, RANGECHECKS0201, nullptr, solve<SOLBASICCYCLE>, nullptr},
    {2, "Cycle with heat exchanger", one, RANGECHECKS0202, nullptr, solve<SOLCYCLEWTHEX>, nullptr},
    {3, "Combined cycle", CycleReader::combined, nullptr, RANGECHECKS0203, nullptr, solveTwo<SOLCOMBINEDCYCLE>},
    {4, "Cascade cycle", CycleReader::cascade, nullptr, RANGECHECKS0204, nullptr, solveTwo<SOLCASCADECYCLE>},
    {5, "Line sizing", one, RANGECHECKS0205, nullptr, solve<SOLLINESIZING>, nullptr},
    {6, "Rankine cycle", one, RANGECHECKS0206, nullptr, solve<SOLRANKCYCLE>, nullptr},
    {7, "Transcritical cycle", one, RANGECHECKS0207, nullptr, solve<SOLTRANSCRICYCLE>, nullptr},
    {9, "Cycle with liquid injection", one, RANGECHECKS0209, nullptr, solve<SOLLIQINJECTION>, nullptr},
    {10, "Two-stage cycle with heat exchanger", one, RANGECHECKS0210, nullptr, solve<SOLTWOSTAGEWTHEX>, nullptr},
    {11, "Multi-stage cycle with flash tank", one, RANGECHECKS0211, nullptr, solve<SOLMULTISTAGEFTK>, nullptr},
    {12, "Minimal basic cycle", one, RANGECHECKS0212, nullptr, solve<SOLBASICBASICCYC>, nullptr},
    {13, "Pumped CO2 system", CycleReader::pumped, nullptr, RANGECHECKS0213, nullptr, solveTwo<SOLPUMPEDCO2SYSTEM>},
    {14, "Transcritical booster", one, RANGECHECKS0214, nullptr, solve<SOLTRANSCRIBOOSTER>, nullptr},
};

}  // namespace

const std::span<const PropertyOperation> propertyOperations(properties);
const std::span<const CycleOperation> cycleOperations(cycles);

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
