// The phase envelope of one mixture as cubic splines over the logarithm of the vapor density.
// Written by SATSPLN and RESETA, and by STN, which hides it for the length of a call; read by SATTP, SATGV, MAXT, MAXP,
// CRTHMX and the extrema of the saturation lines.
#pragma once

#include "EngineLimits.h"

namespace frigana {

inline constexpr int mostEnvelopePoints = 1000;

// A characteristic point of the envelope, with the code of the search for it (0 when it was found).
struct EnvelopePoint {
    double T = 300.0, p = 0.0, D = 0.0;  // [K, kPa, mol/L]
    int ierr = 1;
};

struct SaturationSpline {
    bool SPLINEREADY = false;  // the table holds the envelope of XSPLN
    int NSPLINE = 0;           // points in the table
    Composition XSPLN{};       // composition that was traced

    // Columns: 0 the abscissa ln(vapor density); 1 to nc ln(liquid mole fraction), -500 for a zero fraction;
    // nc + 1 ln T; nc + 2 ln p; nc + 3 ln(liquid density); nc + 4 enthalpy and nc + 5 entropy of the vapor.
    using Column = Array1<double, mostEnvelopePoints>;
    IndexedArray<Column, 0, ncmax + 5> XARR{};
    IndexedArray<Column, 0, ncmax + 5> CARR{};  // second derivatives of the columns from 1 on

    EnvelopePoint highestTemperature, highestPressure, criticalPoint;
};

extern SaturationSpline saturationSpline;

}  // namespace frigana
