// Names, texts and citations of the fluids per component slot, and the installation folder.
// Written by SETPATH, SETUP, SETFLD and the readers of fluid files.
#pragma once

#include "EngineLimits.h"

namespace frigana {

struct FluidFiles {
    Text255 HPATH{};  // installation folder
    SlotArray<Text255> HFILE{};
    SlotArray<Text12> HCAS{}, HNAME{};
    SlotArray<FixedText<60>> HNAM60{};
    SlotArray<Text255> HNAM80{}, HSYN1{}, HSYN2{};
    SlotArray<Text255> UNNUMB{}, FAMILY{};
    // citations: the tag in characters 1 to 3, then the text
    SlotArray<Text255> HIEOS{}, HICP0{}, HISTN{}, HIDIEL{}, HIMELT{}, HISUBL{}, HIPS{}, HIPL{}, HIDL{}, HIDV{}, HITCX{},
        HIETA{}, HITCXC{}, HIETAC{};
};

extern FluidFiles fluidFiles;

}  // namespace frigana
