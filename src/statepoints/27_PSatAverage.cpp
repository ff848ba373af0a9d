#include "27_PSatAverage.h"

#include <cmath>

#include "23_SpecificPoints.h"
#include "24_SaturationPoints.h"
#include "26_SaturatTempDrop.h"

namespace frigana {

namespace {

constexpr int rounds = 5;
constexpr double pressureStep = 1.0 / 20.0;                           // kPa
constexpr double temperatureTolerance = static_cast<double>(0.001f);  // K

STATEPT inlet;  // two-phase inlet of an evaporator

double mean(double a, double b) {
    return (a + b) / 2.0;
}

// Mean pressure P for the mean temperature T; meanTemperature(P) also leaves the end states at P.
template <class MeanTemperature>
double pressureOfMeanTemperature(const SUBSTANCE& substance, double T, STATEPT& BUB, STATEPT& DEW,
                                 MeanTemperature meanTemperature) {
    PROPMIXTURET_BD(substance, T, 1, BUB, DEW);
    double P0 = mean(BUB.P, DEW.P);
    double MT0 = meanTemperature(P0);
    for (int round = 1; round <= rounds; ++round) {
        const double P1 = P0 + pressureStep;
        const double MT1 = meanTemperature(P1);
        const double SLOPE = (P1 - P0) / (MT1 - MT0);
        P0 = SLOPE * T + (P0 - SLOPE * MT0);
        MT0 = meanTemperature(P0);
        if (!(std::fabs(T - MT0) > temperatureTolerance)) break;
    }
    return P0;
}

// End states, each leaves its mean temperature.
double condenserEnds(const SUBSTANCE& substance, double P, double DP, STATEPT& BUB, STATEPT& DEW) {
    PROPSIMPLEPQ(substance, P + DP / 2.0, 1.0, DEW);
    PROPSIMPLEPQ(substance, P - DP / 2.0, 0.0, BUB);
    return mean(DEW.T, BUB.T);
}

double evaporatorEnds(const SUBSTANCE& substance, double P, double HIN, double DP, STATEPT& BUB, STATEPT& DEW) {
    PROPSIMPLEPH(substance, P + DP / 2.0, HIN, inlet);
    PROPMIXTUREP_BD(substance, P - DP / 2.0, 1, BUB, DEW);
    return mean(inlet.T, DEW.T);
}

double secondaryEnds(const SUBSTANCE& substance, double P, double DP, STATEPT& BUB, STATEPT& DEW) {
    PROPSIMPLEPQ(substance, P + DP / 2.0, 0.0, BUB);
    PROPSIMPLEPQ(substance, P - DP / 2.0, 1.0, DEW);
    return mean(BUB.T, DEW.T);
}

}  // namespace

void PCOND_TDP(const SUBSTANCE& substance, double T, double DP, double& P, double& DT, double& GLIDE, STATEPT& BUB,
               STATEPT& DEW) {
    P = pressureOfMeanTemperature(substance, T, BUB, DEW,
                                  [&](double p) { return condenserEnds(substance, p, DP, BUB, DEW); });
    SATTEMPDROP_DP(substance, DEW.P, DP, dewSide, DT);
    GLIDE = DEW.T - BUB.T;
}

void PCOND_TDT(const SUBSTANCE& substance, double T, double DT, double& P, double& DP, double& GLIDE, STATEPT& BUB,
               STATEPT& DEW) {
    PROPSIMPLETQ(substance, T - DT / 2.0, 0.0, BUB);
    PROPSIMPLETQ(substance, T + DT / 2.0, 1.0, DEW);
    P = mean(BUB.P, DEW.P);
    DP = DEW.P - BUB.P;
    GLIDE = DEW.T - BUB.T;
}

void TCOND_PDP(const SUBSTANCE& substance, double P, double DP, double& T, double& DT, double& GLIDE, STATEPT& BUB,
               STATEPT& DEW) {
    T = condenserEnds(substance, P, DP, BUB, DEW);
    SATTEMPDROP_DP(substance, DEW.P, DP, dewSide, DT);
    GLIDE = DEW.T - BUB.T;
}

void TCOND_PDT(const SUBSTANCE& substance, double P, double DT, double& T, double& DP, double& GLIDE, STATEPT& BUB,
               STATEPT& DEW) {
    SATTEMPDROP_DTSAT(substance, P, DT, dewSide, DP);
    double recomputedDT = 0.0;  // the given drop stays as given
    TCOND_PDP(substance, P, DP, T, recomputedDT, GLIDE, BUB, DEW);
}

void PEVAP_TDP(const SUBSTANCE& substance, double T, double HIN, double DP, double& P, double& DT, double& GLIDE,
               STATEPT& BUB, STATEPT& DEW) {
    P = pressureOfMeanTemperature(substance, T, BUB, DEW,
                                  [&](double p) { return evaporatorEnds(substance, p, HIN, DP, BUB, DEW); });
    SATTEMPDROP_DP(substance, BUB.P, DP, bubbleSide, DT);
    PROPMIXTUREP_BD(substance, P, 1, BUB, DEW);
    GLIDE = DEW.T - inlet.T;
}

void PEVAP_TDT(const SUBSTANCE& substance, double T, double HIN, double DT, double& P, double& DP, double& GLIDE,
               STATEPT& BUB, STATEPT& DEW) {
    PROPSIMPLETH(substance, T + DT / 2.0, HIN, inlet);
    PROPMIXTURET_BD(substance, T - DT / 2.0, 1, BUB, DEW);
    P = mean(inlet.P, DEW.P);
    DP = inlet.P - DEW.P;
    PROPMIXTUREP_BD(substance, P, 1, BUB, DEW);
    GLIDE = DEW.T - inlet.T;
}

void TEVAP_PDP(const SUBSTANCE& substance, double P, double HIN, double DP, double& T, double& DT, double& GLIDE,
               STATEPT& BUB, STATEPT& DEW) {
    T = evaporatorEnds(substance, P, HIN, DP, BUB, DEW);
    DT = inlet.T - DEW.T;
    PROPMIXTUREP_BD(substance, P, 1, BUB, DEW);
    GLIDE = DEW.T - inlet.T;
}

void TEVAP_PDT(const SUBSTANCE& substance, double P, double HIN, double DT, double& T, double& DP, double& GLIDE,
               STATEPT& BUB, STATEPT& DEW) {
    SATTEMPDROP_DTSAT(substance, P, DT, bubbleSide, DP);
    double recomputedDT = 0.0;
    TEVAP_PDP(substance, P, HIN, DP, T, recomputedDT, GLIDE, BUB, DEW);
}

void PEVAP_TDP_SEC(const SUBSTANCE& substance, double T, double DP, double& P, double& DT, double& GLIDE, STATEPT& BUB,
                   STATEPT& DEW) {
    P = pressureOfMeanTemperature(substance, T, BUB, DEW,
                                  [&](double p) { return secondaryEnds(substance, p, DP, BUB, DEW); });
    SATTEMPDROP_DP(substance, BUB.P, DP, bubbleSide, DT);
    GLIDE = DEW.T - BUB.T;
}

void PEVAP_TDT_SEC(const SUBSTANCE& substance, double T, double DT, double& P, double& DP, double& GLIDE, STATEPT& BUB,
                   STATEPT& DEW) {
    PROPSIMPLETQ(substance, T + DT / 2.0, 0.0, BUB);
    PROPSIMPLETQ(substance, T - DT / 2.0, 1.0, DEW);
    P = mean(BUB.P, DEW.P);
    DP = BUB.P - DEW.P;
    GLIDE = DEW.T - BUB.T;
}

void TEVAP_PDP_SEC(const SUBSTANCE& substance, double P, double DP, double& T, double& DT, double& GLIDE, STATEPT& BUB,
                   STATEPT& DEW) {
    T = secondaryEnds(substance, P, DP, BUB, DEW);
    SATTEMPDROP_DP(substance, BUB.P, DP, bubbleSide, DT);
    GLIDE = DEW.T - BUB.T;
}

void TEVAP_PDT_SEC(const SUBSTANCE& substance, double P, double DT, double& T, double& DP, double& GLIDE, STATEPT& BUB,
                   STATEPT& DEW) {
    SATTEMPDROP_DTSAT(substance, P, DT, bubbleSide, DP);
    double recomputedDT = 0.0;
    TEVAP_PDP_SEC(substance, P, DP, T, recomputedDT, GLIDE, BUB, DEW);
}

}  // namespace frigana
