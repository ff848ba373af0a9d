#include "MIX_AGA8.h"

namespace frigana {

double PHIAGA(int, int, double, double, const Composition&) {
    return 0.0;
}

}  // namespace frigana
