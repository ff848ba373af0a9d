#include "TRNS_ECS.h"

namespace frigana {

// Without a model of transport by corresponding states there is nothing to keep: the lines of the section are passed
// over by the loop that reads the file.
void SETTRN(int, int, const Text12&, Text255& href, Text3& heos, Text3& hvs, Text3& htc, int& ierr, Text255& herr) {
    href.clear();
    heos = hvs = htc = "NUL";
    ierr = 0;
    herr.clear();
}

}  // namespace frigana
