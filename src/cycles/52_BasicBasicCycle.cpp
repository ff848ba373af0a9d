#include "52_BasicBasicCycle.h"

#include "41_BasicCycle.h"

namespace frigana {

void SOLBASICBASICCYC(SUBSTANCE& substance, const CYCLEIN& cycle, const Text255& FILEOUT) {
    static constinit CYCLEIN full{};
    full = cycle;  // title and sub-type stay
    full.NDAT = 15;
    const auto set = [](int k, int option, double value) {
        full.TDAT[k] = option;
        full.VDAT[k] = value;
    };
    set(1, 1, cycle.VDAT[1]);
    set(2, 2, cycle.VDAT[2]);
    set(3, 1, 0.0);
    set(4, cycle.TDAT[3], cycle.VDAT[3]);
    set(5, 1, 0.0);
    set(6, cycle.TDAT[4], cycle.VDAT[4]);
    set(7, cycle.TDAT[5], cycle.VDAT[5]);
    set(8, 1, 1.0);
    set(9, 2, 0.0);
    set(10, 1, 0.0);
    set(11, 1, cycle.VDAT[6]);
    set(12, 2, cycle.VDAT[7]);
    set(13, 1, 0.0);
    set(14, 2, 0.0);
    set(15, 1, 0.0);
    SOLBASICCYCLE(substance, full, FILEOUT);
}

}  // namespace frigana
