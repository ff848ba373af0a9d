#include "28_IsentropProcess.h"

#include "23_SpecificPoints.h"

namespace frigana {

namespace {

STATEPT ideal;  // outlet of the isentropic step

}  // namespace

void COMPISOENTRO(const SUBSTANCE& substance, double ETA, const STATEPT& PTIN, double POUT, STATEPT& PTOUT) {
    PROPSIMPLEPS(substance, POUT, PTIN.S, ideal);
    const double outletH = PTIN.H + (ideal.H - PTIN.H) / ETA;
    PROPSIMPLEPH(substance, POUT, outletH, PTOUT);
}

void EXPAISOENTRO(const SUBSTANCE& substance, double ETA, const STATEPT& PTIN, double POUT, STATEPT& PTOUT) {
    PROPSIMPLEPS(substance, POUT, PTIN.S, ideal);
    const double outletH = PTIN.H + ETA * (ideal.H - PTIN.H);
    PROPSIMPLEPH(substance, POUT, outletH, PTOUT);
}

}  // namespace frigana
