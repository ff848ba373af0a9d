#include "22_InitVaporDome.h"

#include <algorithm>

#include "24_SaturationPoints.h"

namespace frigana {

void INITDATADOME(SUBSTANCE& substance, double PSTART) {
    constexpr double lowest = static_cast<double>(0.7f);
    constexpr double highest = static_cast<double>(0.83f);
    constexpr int last = 10;

    // Below the lowest saturation pressure there is nothing to draw.
    const double P1 = std::max(lowest * PSTART, substance.PMIN);
    const double STEP = (highest * substance.PC - P1) / 11.0;
    for (int i = 1; i < last; ++i) {
        const double P = P1 + (i - 1) * STEP;
        PROPMIXTUREP_BD_DOME(substance, P, substance.PTSPL[i], substance.PTSPV[i]);
        const double meanT = (substance.PTSPL[i].T + substance.PTSPV[i].T) / 2.0;
        PROPMIXTURET_BD_DOME(substance, meanT, substance.PTSTL[i], substance.PTSTV[i]);
    }

    STATEPT& top = substance.PTSPL[last];
    top.T = substance.TC;
    top.P = substance.PC;
    top.H = (substance.PTSPL[last - 1].H + substance.PTSPV[last - 1].H) / 2.0;
    top.S = (substance.PTSTL[last - 1].S + substance.PTSTV[last - 1].S) / 2.0;
    substance.PTSPV[last] = substance.PTSTL[last] = substance.PTSTV[last] = top;
}

}  // namespace frigana
