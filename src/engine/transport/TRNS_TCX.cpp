#include "TRNS_TCX.h"

namespace frigana {

namespace {

// Without the model there is nothing to keep: the lines of the section are passed over by the loop that reads the file.
void storeNothing(int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
}

}  // namespace

void SETTC0(int, int, const Text12&, int& ierr, Text255& herr) {
    storeNothing(ierr, herr);
}
void SETTC1(int, int, const Text12&, int& ierr, Text255& herr) {
    storeNothing(ierr, herr);
}
void SETTC2(int, int, const Text12&, int& ierr, Text255& herr) {
    storeNothing(ierr, herr);
}
void SETTC3(int, int, const Text12&, int& ierr, Text255& herr) {
    storeNothing(ierr, herr);
}
void SETTC5(int, int, const Text12&, int& ierr, Text255& herr) {
    storeNothing(ierr, herr);
}
void SETTC6(int, int, const Text12&, int& ierr, Text255& herr) {
    storeNothing(ierr, herr);
}
void SETTK1(int, int, const Text12&, int& ierr, Text255& herr) {
    storeNothing(ierr, herr);
}
void SETTK3(int, int, const Text12&, int& ierr, Text255& herr) {
    storeNothing(ierr, herr);
}
void SETTK4(int, int, const Text12&, int& ierr, Text255& herr) {
    storeNothing(ierr, herr);
}
void SETTK6(int, int, const Text12&, int& ierr, Text255& herr) {
    storeNothing(ierr, herr);
}

}  // namespace frigana
