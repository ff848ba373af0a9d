#include "DOTFILL.h"

#include <algorithm>

#include "FLSH_SUB.h"
#include "FluidConstants.h"
#include "Message.h"
#include "SAT_SUB.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

namespace {

// Pressure and liquid density of saturation. Above the critical temperature the pressure is the critical one, below
// which such a gas would fill no container; the density is then 0.
void saturatedLiquid(double t, const Composition& x, double& p, double& rho) {
    double vapor;
    Composition xliq, xvap;
    int ierr;
    Text255 herr;
    SATT(t, x, 1, p, rho, vapor, xliq, xvap, ierr, herr);
    if (ierr > 0) rho = 0.0;
}

}  // namespace

void DOTFILL(const Composition& x, double& ptest, double& fill, int& ierr, Text255& herr) {
    constexpr double waterDensity = 999.10262;  // at 15 C and 1 atm [g/L]
    constexpr double celsius = 273.15;
    ierr = 0;
    herr.clear();
    fill = 0.0;
    if (fluidConstants.IUNFLG[1] != 1) {
        ptest = 0.0;
        ierr = 1;
        message(herr, "User defined calculations not permitted for this fluid", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    double tc, pc, dc;
    CRITP(x, tc, pc, dc, ierr, herr);
    if (ierr > 0) return;

    double p65, unused;
    saturatedLiquid(338.15, x, p65, unused);
    double density = 0.0;
    if (tc - celsius > 65.0) {
        double at60, at50;
        saturatedLiquid(333.15, x, unused, at60);
        saturatedLiquid(323.15, x, unused, at50);
        density = std::min(at60, 0.95 * at50);
        ptest = p65;
    } else {
        double t = 338.15, dl, dv, q, e, h, s, cv, cp, w;
        Composition xl, xv;
        TPFLSH(t, ptest, x, density, dl, dv, xl, xv, q, e, h, s, cv, cp, w, ierr, herr);
        if (ierr > 0) return;
    }
    fill = density * WMOL(x) / waterDensity;
    int pure;
    ISPURE(x, pure);
    if (pure > 0 && fluidConstants.NTRMUN[1] > 0) fill *= fluidConstants.PRMUN[pure][1];
    if (ptest < p65) {
        ierr = -1;
        message(herr, "Test pressure must exceed saturation pressure at 65 C", nullCharacter);
        ERRMSG(ierr, herr);
        ptest = p65;
        fill = -999.0;
    }
}

}  // namespace frigana
