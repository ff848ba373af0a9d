#include "FluidConstants.h"
#include "FluidFiles.h"
#include "MIX_HMX.h"
#include "Message.h"
#include "ModelTags.h"
#include "PREOS.h"
#include "SETUP.h"
#include "UTILITY.h"

namespace frigana {

namespace {

bool isOneOf(const Text3& tag, std::string_view first, std::string_view second) {
    return tag == first || tag == second;
}

void resetAllTags() {
    for (Text3* tag : {&modelTags.HEOS, &modelTags.HETATOP, &modelTags.HTCXTOP, &modelTags.HSTNTOP, &modelTags.HDIELTOP,
                       &modelTags.HMELT, &modelTags.HSUBL, &modelTags.HPS, &modelTags.HPL, &modelTags.HDL,
                       &modelTags.HDV, &modelTags.HPHK})
        *tag = "NBS";
    for (SlotArray<Text3>* tags : {&modelTags.HMXEOS, &modelTags.HMODCP, &modelTags.HSTENK, &modelTags.HDIELK,
                                   &modelTags.HMELTK, &modelTags.HSUBLK, &modelTags.HPSK, &modelTags.HPLK,
                                   &modelTags.HDLK, &modelTags.HDVK, &modelTags.HETA, &modelTags.HTCX})
        tags->fill("NBS");
    for (SlotArray<Text3>* tags : {&modelTags.HETACR, &modelTags.HTCXCR, &modelTags.HMDETA, &modelTags.HMDTCX})
        tags->fill("NUL");
}

// The top tag takes the model of the mixture, or that of the one component; the components take theirs.
void force(int nc, Text3& top, SlotArray<Text3>& perSlot, const Text3& hmix, const ComponentArray<Text3>& hcomp) {
    top = nc == 1 ? hcomp[1] : hmix;
    for (int i = 1; i <= nc; ++i) perSlot[i] = hcomp[i];
}

}  // namespace

void SETMOD(int nc, const Text3& htype, const Text3& hmix, ComponentArray<Text3>& hcomp, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    for (int i = 0; i <= nc && i <= ncmax; ++i) {
        fluidConstants.NTRMUN[i] = 0;
        fluidConstants.IUNFLG[i] = 0;
    }
    preosMemory = PreosMemory();
    forgetSaturation();
    if (nc < 1 || nc > ncmax) {
        ierr = 113;
        message(herr, "[SETUP error 113] number of components out of bounds", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    modelTags.NCMOD = nc;

    const bool allDefaults = isOneOf(htype, "NBS", "nbs");
    if (allDefaults || modelTags.LMODDEFAULT) {
        resetAllTags();
        if (allDefaults) hcomp.fill("NBS");
        modelTags.LMODDEFAULT = false;
    }

    if (isOneOf(htype, "EOS", "eos")) {
        Text3& heos = modelTags.HEOS;
        force(nc, heos, modelTags.HMXEOS, hmix, hcomp);
        if (heos.startsWith("FE")) heos = "FEQ";
        if (heos.startsWith("QU")) heos = "QUI";
        if (heos.startsWith("BW")) heos = "BWR";
        if (heos.startsWith("EC")) heos = "ECS";
    } else if (isOneOf(htype, "ETA", "eta") || isOneOf(htype, "VIS", "vis")) {
        force(nc, modelTags.HETATOP, modelTags.HETA, hmix, hcomp);
    } else if (isOneOf(htype, "TCX", "tcx")) {
        force(nc, modelTags.HTCXTOP, modelTags.HTCX, hmix, hcomp);
    } else if (isOneOf(htype, "STN", "stn")) {
        force(nc, modelTags.HSTNTOP, modelTags.HSTENK, hmix, hcomp);
    }
}

void GETMOD(int icomp, const Text3& htype, Text3& hcode, Text255& hcite) {
    struct Row {
        std::string_view tags[4];
        SlotArray<Text255> FluidFiles::*citations;
    };
    static constexpr Row rows[] = {
        {{"EOS", "eos", "", ""}, &FluidFiles::HIEOS},       {{"CP0", "cp0", "Cp0", "cpo"}, &FluidFiles::HICP0},
        {{"ETA", "eta", "VIS", "vis"}, &FluidFiles::HIETA}, {{"VSK", "vsk", "", ""}, &FluidFiles::HIETAC},
        {{"TCX", "tcx", "", ""}, &FluidFiles::HITCX},       {{"TKK", "tkk", "", ""}, &FluidFiles::HITCXC},
        {{"STN", "stn", "", ""}, &FluidFiles::HISTN},       {{"DE ", "de ", "", ""}, &FluidFiles::HIDIEL},
        {{"MLT", "mlt", "", ""}, &FluidFiles::HIMELT},      {{"SBL", "sbl", "", ""}, &FluidFiles::HISUBL},
        {{"PS ", "ps ", "", ""}, &FluidFiles::HIPS},        {{"DL ", "dl ", "", ""}, &FluidFiles::HIDL},
        {{"DV ", "dV ", "", ""}, &FluidFiles::HIDV},
    };
    for (const Row& row : rows)
        for (const std::string_view tag : row.tags)
            if (!tag.empty() && htype == tag) hcite = (fluidFiles.*row.citations)[icomp];
    hcode.assign(hcite.slice(1, 3));
}

void GERG04(int nc, int iflag, int& ierr, Text255& herr) {
    ComponentArray<Text3> hcomp;
    hcomp.fill(iflag == 1 ? "FEK" : "DEF");
    SETMOD(nc, "EOS", "HMX", hcomp, ierr, herr);
    mixingParameters.IGERG = iflag;
}

}  // namespace frigana
