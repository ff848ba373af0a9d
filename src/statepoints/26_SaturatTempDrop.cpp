#include "26_SaturatTempDrop.h"

#include "23_SpecificPoints.h"

namespace frigana {

namespace {

double qualityOf(int side) {
    return side == bubbleSide ? 0.0 : 1.0;
}

}  // namespace

void SATTEMPDROP_DP(const SUBSTANCE& substance, double P, double DP, int SIDE, double& DT) {
    if (DP == 0.0) {
        DT = 0.0;
        return;
    }
    double before = 0.0;
    double after = 0.0;
    SATTEMP_P(substance, P, SIDE, before);
    SATTEMP_P(substance, P - DP, SIDE, after);
    DT = before - after;
}

void SATTEMPDROP_DTSAT(const SUBSTANCE& substance, double P, double DT, int SIDE, double& DP) {
    if (DT == 0.0) {
        DP = 0.0;
        return;
    }
    static constinit STATEPT point{};
    double T1 = 0.0;
    SATTEMP_P(substance, P, SIDE, T1);
    PROPSIMPLETQ(substance, T1 - DT, qualityOf(SIDE), point);
    DP = P - point.P;
}

void SATTEMP_P(const SUBSTANCE& substance, double P, int SIDE, double& T) {
    static constinit STATEPT point{};
    PROPSIMPLEPQ(substance, P, qualityOf(SIDE), point);
    T = point.T;
}

}  // namespace frigana
