#include "35_SatPointsAtEquilibr.h"

#include "24_SaturationPoints.h"
#include "SaturationPoint.h"

namespace frigana {

void SATPOINTSATEQUIL(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT) {
    answerSaturationPoint(substance, request, FILEOUT, PROPMIXTURET_EQ, PROPMIXTUREP_EQ);
}

}  // namespace frigana
