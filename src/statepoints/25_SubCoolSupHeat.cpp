#include "25_SubCoolSupHeat.h"

#include "26_SaturatTempDrop.h"

namespace frigana {

void SUBCOOLDEGREE_TIN(const SUBSTANCE& substance, double P, double T, double& SUB) {
    double bubbleT = 0.0;
    SATTEMP_P(substance, P, bubbleSide, bubbleT);
    SUB = bubbleT - T;
    if (SUB < 0.0) SUB = 0.0;
}

void SUPHEATDEGREE_TIN(const SUBSTANCE& substance, double P, double T, double& SH) {
    double dewT = 0.0;
    SATTEMP_P(substance, P, dewSide, dewT);
    SH = T - dewT;
    if (SH < 0.0) SH = 0.0;
}

void SUBCOOLDEGREE_SUBC(const SUBSTANCE& substance, double P, double SUB, double& T) {
    double bubbleT = 0.0;
    SATTEMP_P(substance, P, bubbleSide, bubbleT);
    T = bubbleT - SUB;
}

void SUPHEATDEGREE_SUPH(const SUBSTANCE& substance, double P, double SH, double& T) {
    double dewT = 0.0;
    SATTEMP_P(substance, P, dewSide, dewT);
    T = dewT + SH;
}

}  // namespace frigana
