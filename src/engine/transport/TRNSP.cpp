#include "TRNSP.h"

#include "Message.h"
#include "UTILITY.h"

namespace frigana {

void TRNPRP(double, double, const Composition&, double& eta, double& tcx, int& ierr, Text255& herr) {
    eta = tcx = noTransportModel;
    ierr = 40;
    message(herr, "[TRNPRP error", Integer{3, ierr},
            "] transport equations are not available for one or more of the fluids", nullCharacter);
    ERRMSG(ierr, herr);
}

// Without a model that uses the collision integral there is nothing to keep: the lines of the section are passed over
// by the loop that reads the file.
void SETCI1(int, int, const Text12&, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
}

void SETCI2(int nread, int icomp, const Text12& hcas, int& ierr, Text255& herr) {
    SETCI1(nread, icomp, hcas, ierr, herr);
}

}  // namespace frigana
