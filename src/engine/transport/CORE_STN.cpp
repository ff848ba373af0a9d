#include "CORE_STN.h"

#include "Message.h"
#include "UTILITY.h"

namespace frigana {

namespace {

void noModel(const char* routine, double& sigma, int& ierr, Text255& herr) {
    sigma = notComputed;
    ierr = 1;
    message(herr, routine, "surface tension model is not available", nullCharacter);
    ERRMSG(ierr, herr);
}

}  // namespace

void SURFT(double, double&, const Composition&, double& sigma, int& ierr, Text255& herr) {
    noModel("[SURFT error] ", sigma, ierr, herr);
}

void SURTEN(double, double&, double&, Composition&, Composition&, double& sigma, int& ierr, Text255& herr) {
    noModel("[SURTEN error] ", sigma, ierr, herr);
}

// Without the model there is nothing to keep: the lines of the section are passed over by the loop that reads the file.
void SETST1(int, int, const Text12&, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
}

}  // namespace frigana
