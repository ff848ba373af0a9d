#include "Message.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

void CRTHMX(const Composition& x, double& Tc, double& Pc, double& Dc, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    int icomp = 0;
    ISPURE(x, icomp);
    if (icomp > 0) {
        Tc = fluidConstants.TCRIT[icomp];
        Pc = fluidConstants.PCRIT[icomp];
        Dc = fluidConstants.DCRIT[icomp];
        return;
    }
    Tc = Pc = Dc = 0.0;
    ierr = 1;
    message(herr, "[CRTHMX error] critical lines of mixtures are not available", nullCharacter);
    ERRMSG(ierr, herr);
}

}  // namespace frigana
