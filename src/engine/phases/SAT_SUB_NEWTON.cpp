#include "SAT_SUB_NEWTON.h"

#include "Message.h"
#include "UTILITY.h"

namespace frigana {

NewtonControl newtonControl;

namespace {

// The composition derivatives that these methods stand on are missing: callers take their substitution methods.
void noDerivatives(std::string_view routine, int& ierr, Text255& herr) {
    ierr = 191;
    message(herr, "[", routine, " error 191] composition derivatives are not available for this mixture model",
            nullCharacter);
    ERRMSG(ierr, herr);
}

}  // namespace

void SATTP(double&, double&, const Composition&, int, int, double&, double&, double&, Composition&, Composition&,
           double&, int& ierr, Text255& herr) {
    noDerivatives("SATTP", ierr, herr);
}

void SATGV(double&, double&, const Composition&, double, double, int, int, int, double&, double&, Composition&,
           Composition&, int& ierr, Text255& herr) {
    noDerivatives("SATGV", ierr, herr);
}

void SATSPLN(const Composition&, int& ierr, Text255& herr) {
    noDerivatives("SATSPLN", ierr, herr);
}

void CRTPNT(const Composition&, double&, double&, double&, int& ierr, Text255& herr) {
    noDerivatives("CRTPNT", ierr, herr);
}

}  // namespace frigana
