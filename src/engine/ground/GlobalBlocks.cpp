#include "FluidConstants.h"
#include "FluidFiles.h"
#include "ModelTags.h"
#include "ReferenceState.h"
#include "SaturationExtrema.h"
#include "SaturationSpline.h"

namespace frigana {

ModelTags modelTags;
FluidConstants fluidConstants;
FluidFiles fluidFiles;
ReferenceState referenceState;
SaturationSpline saturationSpline;
SaturationExtrema saturationExtrema;

void resetSaturationExtrema() {
    saturationExtrema = {};
}

ModelTags::ModelTags() {
    for (SlotArray<Text3>* tags :
         {&HMXEOS, &HMODCP, &HETA, &HTCX, &HSTENK, &HDIELK, &HMELTK, &HSUBLK, &HPSK, &HPLK, &HDLK, &HDVK})
        tags->fill("NBS");
    for (SlotArray<Text3>* tags : {&HMDETA, &HMDTCX, &HETACR, &HTCXCR, &HTCXCRECS}) tags->fill("NUL");
}

}  // namespace frigana
