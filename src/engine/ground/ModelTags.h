// Which model serves which property: three-letter tags, at the top and per component slot, and the counters of the
// selection. "NBS" is the default of the fluid file, "NUL" none.
// Written by SETUP, SETMOD, SETFLD and the readers of fluid files, PUREFLD, SETNC; HEOS also by SATT, SATP, SETAGA.
#pragma once

#include "EngineLimits.h"

namespace frigana {

struct ModelTags {
    int NC = 0;                // components now set up
    int IPUREFLD = 0;          // slot that PUREFLD selected, 0 when none
    int NCMOD = 0;             // number of components that SETMOD was told
    bool LMODDEFAULT = true;   // no explicit SETMOD is pending
    bool LFORCESETUP = false;  // the next SETUP must run in full
    bool LFIRSTSETUP = true;
    int IPRINTERR = 0;  // print level of ERRMSG

    // top level
    Text3 HEOS{"NBS"}, HETATOP{"NBS"}, HTCXTOP{"NBS"}, HSTNTOP{"NBS"}, HDIELTOP{"NBS"}, HMELT{"NBS"}, HSUBL{"NBS"},
        HPS{"NBS"}, HPL{"NBS"}, HDL{"NBS"}, HDV{"NBS"}, HPHK{"NBS"};

    // per component slot
    SlotArray<Text3> HMXEOS{}, HMODCP{}, HETA{}, HTCX{}, HSTENK{}, HDIELK{}, HMELTK{}, HSUBLK{}, HPSK{}, HPLK{}, HDLK{},
        HDVK{}, HMDETA{}, HMDTCX{}, HETACR{}, HTCXCR{}, HTCXCRECS{};

    IndexedArray<int, 0, ncmax> IANC{};  // 1: pseudo-pure fluid

    ModelTags();
};

extern ModelTags modelTags;

}  // namespace frigana
