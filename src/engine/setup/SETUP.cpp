#include "SETUP.h"

#include <cmath>

#include "CORE_ANC.h"
#include "CORE_FEQ.h"
#include "CORE_PR.h"
#include "CriticalMemory.h"
#include "CriticalPoint.h"
#include "FluidConstants.h"
#include "FluidFiles.h"
#include "MIX_HMX.h"
#include "Message.h"
#include "ModelTags.h"
#include "OPENFL.h"
#include "ReaderReport.h"
#include "ReducingMemory.h"
#include "ReferenceState.h"
#include "SAT_SUB.h"
#include "SAT_SUB_EXPANSION.h"
#include "SAT_SUB_HOTTEST.h"
#include "SAT_SUB_NEWTON.h"
#include "SAT_SUB_SPLIT.h"
#include "SaturationExtrema.h"
#include "SaturationSpline.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

SetupMemory setupMemory;

SetupMemory::SetupMemory() {
    for (ComponentArray<Text3>* tags : {&HSVEQK, &HSVVIK, &HSVCNK, &HSVSRK, &HSVDIK}) tags->fill("NUL");
    HSVFLD.fill("NUL");
}

namespace {

bool isDefault(const Text3& tag) {
    return tag == "NBS" || tag == "nbs";
}
bool sameOrDefault(const Text3& saved, const Text3& present) {
    return saved == "NBS" || saved == present;
}
// Names of full length are compared as they stand: both are padded with blanks.
bool sameName(const Text255& a, const Text255& b) {
    return a.view() == b.view();
}

// A message kept aside until the end, so that a warning does not stop the set-up.
struct KeptMessage {
    int ierr = 0;
    Text255 herr{};
    void keepFirst(int code, const Text255& text) {
        if (ierr != 0 || code == 0) return;
        ierr = code;
        herr = text;
    }
};

bool nothingChanged(int nc, const FileNames& hfiles, const Text255& hfmix, const Text3& hrf) {
    const SetupMemory& saved = setupMemory;
    const ModelTags& present = modelTags;
    if (nc != present.NC || hrf != referenceState.HSVRF || present.LFORCESETUP) return false;
    if (!sameOrDefault(saved.HSVEOS, present.HEOS) || !sameOrDefault(saved.HSVVIS, present.HETATOP) ||
        !sameOrDefault(saved.HSVCND, present.HTCXTOP) || !sameOrDefault(saved.HSVSRF, present.HSTNTOP) ||
        saved.HSVPHK != present.HPHK)
        return false;
    for (int i = 1; i <= nc; ++i)
        if (!sameName(hfiles[i], saved.HSVFLD[i]) || !sameOrDefault(saved.HSVEQK[i], present.HMXEOS[i]) ||
            !sameOrDefault(saved.HSVSRK[i], present.HSTENK[i]) || !sameOrDefault(saved.HSVVIK[i], present.HETA[i]) ||
            !sameOrDefault(saved.HSVCNK[i], present.HTCX[i]))
            return false;
    if (referenceState.IXREFSAVE == 2 && hrf != "DEF") return false;
    return sameName(saved.HSVMIX, hfmix) && sameName(saved.HSVPATH, fluidFiles.HPATH) && !openedFilesChanged();
}

void forgetEverything() {
    referenceState.HSVRF = "NUL";
    referenceState.HREFDF.fill("NUL");
    setupMemory = SetupMemory();
}

void rememberSetup(int nc) {
    SetupMemory& saved = setupMemory;
    saved.HSVEOS = modelTags.HEOS;
    saved.HSVVIS = modelTags.HETATOP;
    saved.HSVCND = modelTags.HTCXTOP;
    saved.HSVSRF = modelTags.HSTNTOP;
    saved.HSVDIE = modelTags.HDIELTOP;
    for (int i = 1; i <= nc; ++i) {
        saved.HSVEQK[i] = modelTags.HMXEOS[i];
        saved.HSVVIK[i] = modelTags.HETA[i];
        saved.HSVCNK[i] = modelTags.HTCX[i];
        saved.HSVSRK[i] = modelTags.HSTENK[i];
        saved.HSVDIK[i] = modelTags.HDIELK[i];
    }
}

// The top tag of transport: corresponding states unless one component brings its own model.
void resolveTransportTop(int nc, Text3& top, SlotArray<Text3>& perSlot) {
    if (isDefault(top)) {
        top = "ECS";
        if (nc == 1) top = perSlot[1];
    } else if (top != "ECS" && nc > 1) {
        top = "ECS";
        for (int i = 1; i <= nc; ++i) perSlot[i] = "NBS";
    }
}

void resolveTop(int nc, Text3& top, const char* mixtureModel, const Text3& firstComponent) {
    if (!isDefault(top)) return;
    top = mixtureModel;
    if (nc == 1) top = firstComponent;
}

void resolveTopTags(int nc, KeptMessage& kept) {
    if (!isDefault(modelTags.HEOS) && modelTags.HEOS != "HMX" && nc > 1) {
        Text255 herr;
        message(herr, "[SETUP warning -105] unknown mixture model specified, the HMX model will be used.",
                nullCharacter);
        ERRMSG(-105, herr);
        kept.keepFirst(-105, herr);
        modelTags.HEOS = "HMX";
        for (int i = 1; i <= nc; ++i) modelTags.HMXEOS[i] = "NBS";
    }
    resolveTop(nc, modelTags.HEOS, "HMX", modelTags.HMXEOS[1]);
    resolveTransportTop(nc, modelTags.HETATOP, modelTags.HETA);
    resolveTransportTop(nc, modelTags.HTCXTOP, modelTags.HTCX);
    resolveTop(nc, modelTags.HSTNTOP, "STH", modelTags.HSTENK[1]);
    resolveTop(nc, modelTags.HDIELTOP, "DEM", modelTags.HDIELK[1]);
}

void clearSlots(int nc) {
    Text255 noCitation;
    message(noCitation, "NUL", nullCharacter);
    FluidFiles& files = fluidFiles;
    FluidConstants& constants = fluidConstants;
    for (int i = -nrefmx; i <= nc; ++i) {
        files.HFILE[i] = "NUL";
        files.HCAS[i] = files.HNAME[i] = "not_defined";
        for (SlotArray<Text255>* citations :
             {&files.HIEOS, &files.HICP0, &files.HISTN, &files.HIDIEL, &files.HIMELT, &files.HISUBL, &files.HIPS,
              &files.HIPL, &files.HIDL, &files.HIDV, &files.HITCX, &files.HIETA, &files.HITCXC, &files.HIETAC})
            (*citations)[i] = noCitation;
        for (SlotArray<double>* limit : {&constants.TMINST, &constants.TMAXST, &constants.TMTCX, &constants.TXTCX,
                                         &constants.TMETA, &constants.TXETA, &constants.TMECST, &constants.TXECST})
            (*limit)[i] = 300.0;
        for (SlotArray<double>* limit : {&constants.PXTCX, &constants.DXTCX, &constants.PXETA, &constants.DXETA,
                                         &constants.PXECST, &constants.DXECST})
            (*limit)[i] = 0.0;
    }
}

// Reads the files of all slots in use; stops at the first error.
void readFluidFiles(int nc, KeptMessage& kept, int& ierr, Text255& herr) {
    SlotArray<Text255>& hfile = fluidFiles.HFILE;
    const auto failed = [&](int slot) {
        SETFLD(slot, hfile, ierr, herr);
        if (ierr < 0) kept.keepFirst(ierr, herr);
        return ierr > 0;
    };

    for (int i = 1; i <= nc; ++i) {
        Text255 name = hfile[i];
        UCASE(name, Text255::size);
        if (name.find("PPF") > 0) modelTags.IANC[i] = 1;
        if (failed(i)) return;
    }

    // reference fluids that the files of the components named
    for (int slot = -ncmax; slot <= 0; ++slot) {
        if (hfile[slot] == "NUL" || (slot == 0 && nc > 1)) continue;
        if (failed(slot)) return;
    }

    // fixed reference fluids of a mixture, from the folder of its first component
    if (nc > 1) {
        struct Row {
            int slot;
            std::string_view name;
        };
        static constexpr Row rows[] = {{0, "nitrogen.fld"}, {-21, "propane.fld"}, {-22, "c12.fld"}, {-23, "r134a.fld"}};
        const std::string_view first = hfile[1].trimmed();
        const auto separator = first.find_last_of(":/\\");
        const FixedText<255> folder(separator == std::string_view::npos ? std::string_view{}
                                                                        : first.substr(0, separator + 1));
        for (const Row& row : rows) {
            message(hfile[row.slot], folder.trimmed(), row.name);
            if (failed(row.slot)) return;
        }
    }
    ierr = 0;
    herr.clear();
}

}  // namespace

void SETUP(int nc, const FileNames& hfiles, const Text255& hfmix, Text3& hrf, int& ierr, Text255& herr) {
    if (nc == -1) {
        ierr = engineVersion;
        return;
    }
    if (modelTags.LFIRSTSETUP) {
        forgetEverything();
        modelTags.LFIRSTSETUP = false;
    }
    ierr = 0;
    herr.clear();
    KeptMessage kept;
    const Text255 mixtureFile = hfmix;
    const Composition firstAlone = unitComposition(1);

    // the short way
    if (nothingChanged(nc, hfiles, mixtureFile, hrf)) {
        if (referenceState.IXREFSAVE == 2 || !referenceState.LREFDONE) {
            SETREF(hrf, 1, firstAlone, 0.0, 0.0, 0.0, 0.0, ierr, herr);
            AMH2OR();
            if (ierr <= 0) {
                ierr = 0;
                herr.clear();
            }
        }
        forgetExpansions();
        return;
    }

    // The full way. A set-up of forced models may not be taken for one of the defaults, and a failed one for a good
    // one.
    modelTags.LFORCESETUP = !modelTags.LMODDEFAULT;
    setupMemory.HSVMIX = "x";
    const auto failed = [&] {
        if (ierr > 0) modelTags.LFORCESETUP = true;
        return ierr > 0;
    };
    if (modelTags.LMODDEFAULT) {
        ComponentArray<Text3> hcomp;
        for (int i = 1; i <= ncmax; ++i) hcomp[i] = modelTags.HMXEOS[i];
        SETMOD(nc, "NBS", modelTags.HEOS, hcomp, ierr, herr);
    }
    modelTags.LMODDEFAULT = true;
    saturationSpline.SPLINEREADY = false;
    forgetSaturation();
    adoptedCriticalPoint.known = false;
    mixingParameters.AMMONIAWATER = mixingParameters.IWATERCOMP = mixingParameters.IALCOHOLCOMP = 0;
    modelTags.IANC.fill(0);
    if (failed()) return;
    if (nc != modelTags.NCMOD) {
        ierr = 114;
        message(herr, "[SETUP error 114] number of components does not match value sent to SETMOD", nullCharacter);
        ERRMSG(ierr, herr);
        modelTags.LFORCESETUP = true;
        return;
    }

    referenceState.LREFDONE = false;
    setupMemory.HSVPHK = "NBS";
    setupMemory.HSVMIX = mixtureFile;
    setupMemory.HSVPATH = fluidFiles.HPATH;
    forgetOpenedFiles();
    modelTags.NC = nc;
    fluidConstants.R = defaultGasConstant;
    resolveTopTags(nc, kept);

    clearSlots(nc);
    for (int i = 1; i <= nc; ++i) fluidFiles.HFILE[i] = setupMemory.HSVFLD[i] = hfiles[i];
    modelTags.HETA[0] = modelTags.HTCX[0] = "NUL";
    modelTags.HMXEOS[0] = "FEQ";
    readFluidFiles(nc, kept, ierr, herr);
    if (failed()) {
        modelTags.NC = 0;  // nothing is calculated with half of a fluid
        return;
    }

    if (modelTags.HEOS == "HMX") {
        SETHMX(mixtureFile, ierr, herr);
        if (ierr != 0) {
            kept.ierr = ierr;
            kept.herr = herr;
        }
    }
    if (hrf.startsWith("OT")) {
        message(herr,
                "[SETUP warning -105] must use routine SETREF for (OTH) reference state choice; will use default (DEF) "
                "choice",
                nullCharacter);
        ERRMSG(-105, herr);
        hrf = "DEF";
        kept.keepFirst(-105, herr);
    }
    SETREF(hrf, 1, firstAlone, 0.0, 0.0, 0.0, 0.0, ierr, herr);
    if (ierr == 0 || (ierr < 0 && kept.ierr > 0)) {
        ierr = kept.ierr;
        herr = kept.herr;
    }
    if (ierr == 0) rememberSetup(nc);
    (void)failed();

    AMH2OR();
    for (int i = 1; i <= nc; ++i) SETPRCO(i);
    // a calculation gets the same answers whatever was asked before it
    forgetExpansions();
}

void SETUP0(int nc, const FixedText<10000>& hfld, const Text255& hfm, Text3& hrf, int& ierr, Text255& herr) {
    FileNames hfiles{};
    ierr = 0;
    herr.clear();
    if (nc == 1) {
        const std::string_view name = hfld.slice(1, Text255::size);
        hfiles[1].assign(name.substr(0, name.find('|')));
    } else {
        std::string_view rest = hfld.trimmed();
        for (int i = 1; i <= nc && i <= ncmax; ++i) {
            const auto bar = rest.find('|');
            if (bar == std::string_view::npos && (i < nc || rest.empty())) {
                ierr = 1;
                message(herr, "[SETUP0 error 1] not enough fluid names on input line", nullCharacter);
                ERRMSG(ierr, herr);
                return;
            }
            hfiles[i].assign(rest.substr(0, bar));
            rest = bar == std::string_view::npos ? std::string_view{} : rest.substr(bar + 1);
        }
    }
    SETUP(nc, hfiles, hfm, hrf, ierr, herr);
}

namespace {

// The items of a mixture file in their order; false at the first that cannot be read.
bool readMixture(int unit, const Text255& hfmix, int& nc, FileNames& hfiles, Composition& x, CriticalPoint& critical,
                 int& updated, int& ierr, Text255& herr) {
    Text255 name;
    double molarMass = 0.0;
    if (!readTextLine(unit, "name of the mixture", ierr, herr, name) ||
        !readRecord(unit, "molar mass and critical point", ierr, herr, molarMass, critical.T, critical.p, critical.D) ||
        !readCount(unit, "number of components", ncmax, nc, ierr, herr))
        return false;
    for (int i = 1; i <= nc; ++i) {
        if (!readTextLine(unit, "name of a fluid file", ierr, herr, hfiles[i])) return false;
        RFFILE(hfmix, hfiles[i]);
    }
    for (int i = 1; i <= nc; ++i)
        if (!readRecord(unit, "mole fraction", ierr, herr, x[i])) return false;
    return readRecord(unit, "flag of updated parameters", ierr, herr, updated);
}

}  // namespace

void SETMIX(const Text255& hmxnme, const Text255& hfmix, Text3& hrf, int& nc, FileNames& hfiles, Composition& x,
            int& ierr, Text255& herr) {
    nc = 0;
    hfiles.fill(Text255{});
    x.fill(0.0);
    int unit = 12, updated = 0;
    CriticalPoint critical;
    Text255 name = hmxnme;
    OPENFL(unit, name, 2, ierr, herr);
    if (ierr == 0) {
        readMixture(unit, hfmix, nc, hfiles, x, critical, updated, ierr, herr);
        closeUnit(unit);
    }
    if (ierr != 0) {
        ierr = 101;
        message(herr, "[SETMIX error 101] error in opening mixture file:  ", hmxnme.trimmed(), nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }

    KeptMessage kept;
    double sum = 0.0;
    for (int i = 1; i <= nc; ++i) sum += x[i];
    if (std::abs(sum - 1.0) > static_cast<double>(1e-7f) && sum > 0.0 && nc > 1) {
        for (int i = 1; i <= nc; ++i) x[i] /= sum;
        kept.ierr = -103;
        message(kept.herr,
                "[SETMIX error -103] The composition of the mixture does not sum to one. The compositions have been "
                "normalized.",
                nullCharacter);
    }
    if (updated != 0) {
        kept.ierr = -102;
        message(kept.herr,
                "[SETMIX error -102] The mixture file contains updated binary interaction parameters which have been "
                "ignored.",
                nullCharacter);
    }
    SETUP(nc, hfiles, hfmix, hrf, ierr, herr);
    if (ierr <= 0) noteCriticalPoint(x, critical.T, critical.p, critical.D);
    if (ierr == 0 && kept.ierr != 0) {
        ierr = kept.ierr;
        herr = kept.herr;
        ERRMSG(ierr, herr);
    }
}

void SETNC(int nc) {
    modelTags.NC = nc;
}

void PUREFLD(int icomp) {
    RESETA();
    modelTags.IPUREFLD = icomp >= 0 && icomp <= ncmax ? icomp : 0;
}

void forgetSaturation() {
    resetSaturationMemo();
    resetHottestSaturation();
    resetSplitLiquids();
    resetSpinodalTables();
    resetSaturationExtrema();
    forgetExpansions();
    forgetReducingValues();
    forgetCriticalPressure();
}

void RESETA() {
    forgetSaturation();
    for (FeqSlot& slot : feqTerms) slot.TAUSVF = slot.DELSVF = 0.0;
    for (int i = 1; i <= ncmax; ++i) {
        AncSlot& slot = ancTerms[i];
        slot.PSTMIN = slot.PLTMIN = slot.DLTMIN = slot.DVTMIN = 0.0;
    }
    referenceState.X0SAV.fill(0.0);
    modelTags.IPUREFLD = 0;
}

}  // namespace frigana
