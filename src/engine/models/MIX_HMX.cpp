#include "MIX_HMX.h"

#include "Message.h"
#include "UTILITY.h"

namespace frigana {

MixingParameters mixingParameters;

void SETHMX(const Text255& hfmix, int& ierr, Text255& herr) {
    mixingParameters.HFMIX = hfmix;
    mixingParameters.HMFILE[0] = hfmix;
    ierr = 1;
    message(herr, "[SETHMX error] mixture model HMX is not available", nullCharacter);
    ERRMSG(ierr, herr);
}

void RDMIX(int, int, int, const Text3&, PairMarks&, int& ierr, Text255& herr) {
    ierr = 1;
    message(herr, "[RDMIX error] mixture model HMX is not available", nullCharacter);
    ERRMSG(ierr, herr);
}

double PHIMIX(int, int, int, int, double, double, const Composition&) {
    return noSuchModel;
}

void RDXHMX(int, int, int, const Composition&, double& Tr, double& Dr, int& ierr, Text255& herr) {
    Tr = 100.0;
    Dr = 10.0;
    ierr = 190;
    message(herr, "[RDXHMX error 190] mixture model HMX is not available", nullCharacter);
    ERRMSG(ierr, herr);
}

void REDHMX(const Composition& x, double& Tr, double& Dr) {
    int ierr = 0;
    Text255 herr;
    RDXHMX(0, 0, 0, x, Tr, Dr, ierr, herr);
}

}  // namespace frigana
