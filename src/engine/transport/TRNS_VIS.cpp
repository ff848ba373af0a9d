#include "TRNS_VIS.h"

namespace frigana {

namespace {

// Without the model there is nothing to keep: the lines of the section are passed over by the loop that reads the file.
void storeNothing(int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
}

}  // namespace

void SETVS0(int, int, const Text12&, int& ierr, Text255& herr) {
    storeNothing(ierr, herr);
}
void SETVS1(int, int, const Text12&, int& ierr, Text255& herr) {
    storeNothing(ierr, herr);
}
void SETVS2(int, int, const Text12&, int& ierr, Text255& herr) {
    storeNothing(ierr, herr);
}
void SETVS3(int, int, const Text12&, int& ierr, Text255& herr) {
    storeNothing(ierr, herr);
}
void SETVS4(int, int, const Text12&, int& ierr, Text255& herr) {
    storeNothing(ierr, herr);
}
void SETVS5(int, int, const Text12&, int& ierr, Text255& herr) {
    storeNothing(ierr, herr);
}
void SETVS6(int, int, const Text12&, int& ierr, Text255& herr) {
    storeNothing(ierr, herr);
}

}  // namespace frigana
