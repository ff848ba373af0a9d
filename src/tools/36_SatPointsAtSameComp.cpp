#include "36_SatPointsAtSameComp.h"

#include "24_SaturationPoints.h"
#include "SaturationPoint.h"

namespace frigana {

void SATPOINTSATCOMPO(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT) {
    answerSaturationPoint(substance, request, FILEOUT, PROPMIXTURET_BD, PROPMIXTUREP_BD);
}

}  // namespace frigana
