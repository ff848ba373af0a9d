#include "CORE_ANC.h"
#include "CORE_BWR.h"
#include "CORE_CPP.h"
#include "CORE_DE.h"
#include "CORE_ECS.h"
#include "CORE_FEQ.h"
#include "CORE_MLT.h"
#include "CORE_PH0.h"
#include "CORE_PR.h"
#include "CORE_QUI.h"
#include "CORE_STN.h"
#include "FluidConstants.h"
#include "FluidFilePath.h"
#include "FluidFiles.h"
#include "Message.h"
#include "ModelTags.h"
#include "OPENFL.h"
#include "ReaderReport.h"
#include "ReferenceState.h"
#include "SETUP.h"
#include "TRNSP.h"
#include "TRNS_ECS.h"
#include "TRNS_TCX.h"
#include "TRNS_VIS.h"
#include "UTILITY.h"

namespace frigana {

namespace {

using Citation = FixedText<251>;
using SectionReader = void (*)(int, int, const Text12&, int&, Text255&);

bool isDefault(const Text3& tag) {
    return tag == "NBS" || tag == "nbs";
}

void takeIfDefault(Text3& tag, const Text3& htype) {
    if (isDefault(tag)) tag = htype;
}

void cite(Text255& citation, const Text3& htype, const Citation& hcite) {
    message(citation, htype, hcite, nullCharacter);
}

bool isUncited(const Text255& citation) {
    return citation.startsWith("NUL");
}

// A later error replaces an earlier one; a warning leaves an error standing.
void report(int code, const Text255& text, int& ierr, Text255& herr) {
    if (code < 0 && ierr > 0) return;
    ierr = code;
    herr = text;
    ERRMSG(ierr, herr);
}

void reportUnknown(const Text3& htype, int icomp, int& ierr, Text255& herr) {
    Text255 text;
    message(text, "[SETUP warning -103] unknown model (", htype, ") encountered in file for component #",
            Integer{3, icomp}, ".", nullCharacter);
    report(-103, text, ierr, herr);
}

// What a reader of a section answered: an error is wrapped in the message of the set-up, a warning is passed on.
void reportReader(std::string_view word, const Text3& htype, int icomp, int status, const Text255& readerText,
                  int& ierr, Text255& herr) {
    if (status == 0) return;
    if (status < 0) {
        report(status, readerText, ierr, herr);
        return;
    }
    std::string_view text = readerText.slice(1, 182);
    text = trimRight(text.substr(0, text.find('\0')));
    Text255 composed;
    message(composed, "[SETUP error 104] ", word, " in setup of (", htype, ") model for component #", Integer{3, icomp},
            ":  ", text, nullCharacter);
    report(104, composed, ierr, herr);
}

// ---------------------------------------------------------------------------------------------- sections of STFLD2

// The models of one property, by tag.
struct ModelRow {
    std::string_view tag;
    SectionReader reader;
    bool ownStatus;  // the reader words its own messages
};
constexpr ModelRow viscosityModels[] = {{"VS0", SETVS0, false}, {"VS1", SETVS1, false}, {"VS2", SETVS2, false},
                                        {"VS3", SETVS3, false}, {"VS4", SETVS4, false}, {"VS5", SETVS5, false},
                                        {"VS6", SETVS6, false}, {"NUL", nullptr, false}};
constexpr ModelRow conductivityModels[] = {{"TC0", SETTC0, false}, {"TC1", SETTC1, false}, {"TC2", SETTC2, false},
                                           {"TC3", SETTC3, true},  {"TC5", SETTC5, true},  {"TC6", SETTC6, false},
                                           {"NUL", nullptr, false}};
constexpr ModelRow surfaceTensionModels[] = {{"ST1", SETST1, false}};

// Reads a section if its model is the one that the slot's tag asks for; true if it was read.
template <int N>
bool readModel(const ModelRow (&models)[N], const Text3& selected, int unit, int icomp, const Text12& hcasn,
               const Text3& htype, int& ierr, Text255& herr) {
    for (const ModelRow& model : models) {
        if (htype != model.tag) continue;
        if (model.reader == nullptr || selected != htype) return false;
        int status = 0;
        Text255 text;
        model.reader(unit, icomp, hcasn, status, text);
        if (status != 0 && model.ownStatus)
            report(status, text, ierr, herr);
        else
            reportReader("error", htype, icomp, status, text, ierr, herr);
        return true;
    }
    reportUnknown(htype, icomp, ierr, herr);
    return false;
}

// Collision integrals and critical enhancements among the auxiliary models.
void readAuxiliaryTransport(int unit, int icomp, const Text12& hcasn, const Citation& hcite, const Text3& htype,
                            int& ierr, Text255& herr) {
    SectionReader reader = nullptr;
    SlotArray<Text255>* citations = &fluidFiles.HITCXC;
    if (htype == "CI1" || htype == "CI2") {
        if (modelTags.HMDETA[icomp] == htype || modelTags.HMDTCX[icomp] == htype)
            reader = htype == "CI1" ? SETCI1 : SETCI2;
        citations = &fluidFiles.HIETAC;
    } else if (htype == "TK1" || htype == "TK3" || htype == "TK4") {
        if (modelTags.HTCXCR[icomp] == htype) reader = htype == "TK1" ? SETTK1 : htype == "TK3" ? SETTK3 : SETTK4;
    } else if (htype == "TK6") {
        if (modelTags.HTCXCRECS[icomp] == htype) reader = SETTK6;
    }
    if (reader == nullptr) return;
    int status = 0;
    Text255 text;
    reader(unit, icomp, hcasn, status, text);
    reportReader("error", htype, icomp, status, text, ierr, herr);
    cite((*citations)[icomp], htype, hcite);
}

}  // namespace

void STFLD2(int unit, int icomp, const Text12& hcasn, const FixedText<251>& hcite, Text3& heqn, Text3& hetemp,
            SlotArray<Text255>& hfile, const Text3& hflag, Text255& hreff, char hstar, Text3& httemp,
            const Text3& htype, bool& letaread, bool& ltcxread, int& ierr, Text255& herr) {
    ModelTags& tags = modelTags;
    const bool byDefault = hstar == '#';
    const auto offer = [&](Text3& top, SlotArray<Text3>& perSlot, bool slotTakes) {
        if (!byDefault) return;
        if (tags.NC == 1) takeIfDefault(top, htype);
        if (slotTakes) takeIfDefault(perSlot[icomp], htype);
    };

    if (hflag == "AUX") {
        readAuxiliaryTransport(unit, icomp, hcasn, hcite, htype, ierr, herr);

    } else if (hflag == "TRN" || hflag == "trn") {
        offer(tags.HETATOP, tags.HETA, icomp > 0);
        offer(tags.HTCXTOP, tags.HTCX, icomp > 0);
        if (byDefault) {
            letaread = ltcxread = true;
        } else {
            if (!letaread) hetemp = htype;
            if (!ltcxread) httemp = htype;
        }
        if (htype != "ECS") {
            reportUnknown(htype, icomp, ierr, herr);
        } else if (!(tags.HETATOP == "NUL" && tags.HTCXTOP == "NUL")) {
            if (isUncited(fluidFiles.HIETA[icomp])) cite(fluidFiles.HIETA[icomp], htype, hcite);
            if (isUncited(fluidFiles.HITCX[icomp])) cite(fluidFiles.HITCX[icomp], htype, hcite);
            int status = 0;
            Text255 text;
            Text3 hvs, htc;
            SETTRN(unit, icomp, hcasn, hreff, heqn, hvs, htc, status, text);
            reportReader("error", htype, icomp, status, text, ierr, herr);
            // a reader without parameters names no reference fluid
            if (icomp > 0 && !hreff.blank()) {
                RFFILE(hfile[icomp], hreff);
                hfile[0] = hreff;
                tags.HMXEOS[0] = heqn;
                tags.HETA[0] = hvs;
                tags.HTCX[0] = htc;
            }
        }

    } else if (hflag == "ETA" || hflag == "eta" || hflag == "VIS" || hflag == "vis") {
        offer(tags.HETATOP, tags.HETA, icomp != 0);
        if (readModel(viscosityModels, tags.HETA[icomp], unit, icomp, hcasn, htype, ierr, herr)) {
            letaread = true;
            cite(fluidFiles.HIETA[icomp], htype, hcite);
        }

    } else if (hflag == "TCX" || hflag == "tcx") {
        offer(tags.HTCXTOP, tags.HTCX, icomp != 0);
        if (readModel(conductivityModels, tags.HTCX[icomp], unit, icomp, hcasn, htype, ierr, herr)) {
            ltcxread = true;
            cite(fluidFiles.HITCX[icomp], htype, hcite);
        }

    } else if (hflag == "STN" || hflag == "stn") {
        offer(tags.HSTNTOP, tags.HSTENK, icomp > 0);
        if (readModel(surfaceTensionModels, tags.HSTENK[icomp], unit, icomp, hcasn, htype, ierr, herr))
            cite(fluidFiles.HISTN[icomp], htype, hcite);

    } else if (hflag == "DE " || hflag == "de ") {
        offer(tags.HDIELTOP, tags.HDIELK, icomp > 0);
        if (!htype.startsWith("DE")) {
            reportUnknown(htype, icomp, ierr, herr);
        } else if (tags.HDIELK[icomp].startsWith("DE")) {
            int status = 0;
            Text255 text;
            SETDE(unit, icomp, hcasn, status, text);
            reportReader("error", htype, icomp, status, text, ierr, herr);
            cite(fluidFiles.HIDIEL[icomp], htype, hcite);
        }
    }
}

// ---------------------------------------------------------------------------------------------- header and sections

namespace {

// What the reading of one file carries from section to section.
struct FluidFile {
    int unit = 12;
    int icomp = 0;
    Text12 hcasn{};
    char hstar = ' ';
    Text3 hflag{}, htype{};
    Citation hcite{};
    Text3 hetemp{"NUL"}, httemp{"NUL"};
    bool letaread = false, ltcxread = false;
    bool LEOSREAD = false, LPRREAD = false;
    int LCPP = 0;  // heat capacity of the ideal gas: 0 none, 1 the first of the file, 2 the selected one
    Text255 hreff{};
    Text3 heqn{};
};

// A line where a section or its head should stand; false, and told for the message of the set-up that has no room for
// it, where the file ends or cannot be read.
template <int N>
bool readHead(int unit, std::string_view what, FixedText<N>& line) {
    int ierr = 0;
    Text255 herr;
    return readTextLine(unit, what, ierr, herr, line);
}

// The lines between the fixed items and the first blank line: values before an exclamation mark and a key.
bool readFreeLines(int unit, int icomp) {
    for (;;) {
        Text255 HSTR;
        if (!readHead(unit, "blank line behind the header", HSTR)) return false;
        if (HSTR.blank()) return true;
        const int mark = HSTR.find("!");
        if (mark == 0 || mark + 2 > Text255::size) continue;
        const std::string_view key = HSTR.slice(mark, mark + 2), value = HSTR.slice(1, mark - 1);
        if (key == "!UN") fluidFiles.UNNUMB[icomp].assign(value);
        if (key == "!fa") fluidFiles.FAMILY[icomp].assign(value);
        if (key == "!he") {
            double heat = 0.0;
            if (FreeRecord(value).read(heat) == ReadStatus::ok) fluidConstants.HCMBST[icomp] = heat;
        }
    }
}

bool readHeader(int unit, int icomp, Text12& hcasn) {
    FluidFiles& files = fluidFiles;
    FluidConstants& constants = fluidConstants;
    ReferenceState& state = referenceState;

    int ierr = 0;
    Text255 herr;
    const auto number = [&](std::string_view what, double& value) { return readRecord(unit, what, ierr, herr, value); };

    FixedText<60>& shortName = files.HNAM60[icomp];
    if (!readTextLine(unit, "short name", ierr, herr, shortName) ||
        !readTextLine(unit, "CAS number", ierr, herr, hcasn) ||
        !readTextLine(unit, "full name", ierr, herr, files.HNAM80[icomp]) ||
        !readTextLine(unit, "formula", ierr, herr, files.HSYN1[icomp]) ||
        !readTextLine(unit, "synonym", ierr, herr, files.HSYN2[icomp]))
        return false;
    if (const int mark = shortName.find("!"); mark > 0) shortName.assign(FixedText<60>(shortName).slice(1, mark - 1));
    files.HNAME[icomp].assign(shortName.view());
    files.HCAS[icomp] = hcasn;

    if (!number("molar mass", constants.WMAS[icomp]) || !number("triple point temperature", constants.TTPN[icomp]) ||
        !number("normal boiling point", constants.TNBP[icomp]) ||
        !number("critical temperature", constants.TCRIT[icomp]) ||
        !number("critical pressure", constants.PCRIT[icomp]) || !number("critical density", constants.DCRIT[icomp]) ||
        !number("acentric factor", constants.ACCEN[icomp]) || !number("dipole moment", constants.DIPOLE[icomp]) ||
        !readTextLine(unit, "default reference state", ierr, herr, state.HREFDF[icomp]))
        return false;
    if (state.HREFDF[icomp].startsWith("OT") &&
        !readRecord(unit, "default reference point", ierr, herr, state.TDEF[icomp], state.PDEF[icomp],
                    state.HDEF[icomp], state.SDEF[icomp]))
        return false;
    return number("file version", constants.VERFL[icomp]) && readFreeLines(unit, icomp);
}

// An equation of state, if it is the one that the slot's tag asks for.
void readEquationOfState(FluidFile& f, SlotArray<Text255>& hfile, int& ierr, Text255& herr) {
    const int i = f.icomp;
    Text3 &heos = modelTags.HEOS, &tag = modelTags.HMXEOS[i];
    if (f.hstar == '#') {
        if (modelTags.NC == 1 && isDefault(heos)) heos = f.htype;
        if (i > 0 || i < -ncmax) takeIfDefault(tag, f.htype);
    }

    const std::string_view family = f.htype.slice(1, 2);
    int status = 0;
    Text255 text;
    if (family == "PR") {
        f.LPRREAD = true;
        if (tag.startsWith("PR")) {
            tag = "PR";
            if (heos.startsWith("PR")) heos = "PR";
            SETPR(f.unit, i, f.hcasn, status, text);
            f.LEOSREAD = true;
            cite(fluidFiles.HIEOS[i], f.htype, f.hcite);
        } else {
            SETPR(-f.unit, i, f.hcasn, status, text);
        }
        reportReader("Error", f.htype, i, status, text, ierr, herr);
        return;
    }

    struct Row {
        std::string_view family, tag;
        bool slotTakesTag;
    };
    static constexpr Row rows[] = {
        {"BW", "BWR", true}, {"QU", "QUI", false}, {"FE", "FEQ", false}, {"EC", "ECS", true}};
    const Row* row = nullptr;
    for (const Row& candidate : rows)
        if (family == candidate.family) row = &candidate;
    if (row == nullptr) {
        reportUnknown(f.htype, i, ierr, herr);
        return;
    }
    if (f.htype == "FEX") fluidConstants.IGENFL[i] = 1;
    if (f.LEOSREAD || tag != f.htype) return;

    f.LEOSREAD = true;
    if (row->slotTakesTag) tag = row->tag;
    if (heos.startsWith(family)) heos = row->tag;
    if (family == "BW") SETBWR(f.unit, i, f.hcasn, status, text);
    if (family == "QU") SETQUI(f.unit, i, f.hcasn, status, text);
    if (family == "FE") SETFEQ(f.unit, i, f.hcasn, status, text);
    if (family == "EC") {
        SETECS(f.unit, i, f.hcasn, f.hreff, f.heqn, status, text);
        // a reference fluid that itself leans on a reference would need the slot of a component
        if (status <= 0 && i > 0) {
            RFFILE(hfile[i], f.hreff);
            hfile[-i] = f.hreff;
            modelTags.HMXEOS[-i] = f.heqn;
        }
    }
    reportReader("Error", f.htype, i, status, text, ierr, herr);
    cite(fluidFiles.HIEOS[i], f.htype, f.hcite);
}

// The block of the user's own data.
void readUserData(const FluidFile& f, int& ierr, Text255& herr) {
    const int i = f.icomp;
    FluidConstants& constants = fluidConstants;
    Array1<double, 20>& values = constants.PRMUN[i];
    const auto read = [&](int& status, Text255& text) {
        if (!readRecord(f.unit, "lower temperature limit", status, text, constants.TMINUN[i]) ||
            !readRecord(f.unit, "upper temperature limit", status, text, constants.TMAXUN[i]) ||
            !readRecord(f.unit, "upper pressure limit", status, text, constants.PMAXUN[i]) ||
            !readRecord(f.unit, "upper density limit", status, text, constants.RHOMUN[i]) ||
            !readRecord(f.unit, "flag of user data", status, text, constants.IUNFLG[i]) ||
            !readCount(f.unit, "number of user data", values.count, constants.NTRMUN[i], status, text))
            return;
        for (int k = 1; k <= constants.NTRMUN[i]; ++k)
            if (!readRecord(f.unit, "user datum", status, text, values[k])) return;
    };
    int status = 0;
    Text255 text;
    read(status, text);
    if (status != 0) constants.NTRMUN[i] = 0;
    reportReader("Error", f.htype, i, status, text, ierr, herr);
}

void readAuxiliary(FluidFile& f, int& ierr, Text255& herr) {
    const int i = f.icomp;
    const Text3& selected = modelTags.HMODCP[i];
    const auto readIdealGas = [&](SectionReader reader, int state) {
        int status = 0;
        Text255 text;
        reader(f.unit, i, f.hcasn, status, text);
        f.LCPP = state;
        reportReader("Error", f.htype, i, status, text, ierr, herr);
        cite(fluidFiles.HICP0[i], f.htype, f.hcite);
    };
    if (f.htype.startsWith("CP") && selected == f.htype)
        readIdealGas(SETCPP, 2);
    else if (f.htype.startsWith("PH") && selected == f.htype)
        readIdealGas(SETPH0, 2);
    else if (f.htype == "CPP" && f.LCPP == 0 && (selected.startsWith("CP") || selected == "NBS"))
        readIdealGas(SETCPP, 1);
    else if (f.htype.startsWith("UN"))
        readUserData(f, ierr, herr);
}

// Melting, sublimation and the ancillary equations of saturation: only default sections count.
void readAncillary(const FluidFile& f, int& ierr, Text255& herr) {
    struct Row {
        std::string_view upper, lower;
        Text3 ModelTags::*top;
        SlotArray<Text3> ModelTags::*perSlot;
        SlotArray<Text255> FluidFiles::*citations;
        void (*reader)(int, int, int&, Text255&);
    };
    static constexpr Row rows[] = {
        {"MLT", "mlt", &ModelTags::HMELT, &ModelTags::HMELTK, &FluidFiles::HIMELT, SETMLT},
        {"SBL", "sbl", &ModelTags::HSUBL, &ModelTags::HSUBLK, &FluidFiles::HISUBL, SETSBL},
        {"PS ", "ps ", &ModelTags::HPS, &ModelTags::HPSK, &FluidFiles::HIPS, SETPS},
        {"PL ", "pl ", &ModelTags::HPL, &ModelTags::HPLK, &FluidFiles::HIPL, SETPL},
        {"DL ", "dl ", &ModelTags::HDL, &ModelTags::HDLK, &FluidFiles::HIDL, SETDL},
        {"DV ", "dv ", &ModelTags::HDV, &ModelTags::HDVK, &FluidFiles::HIDV, SETDV},
    };
    if (f.hstar != '#') return;
    for (const Row& row : rows) {
        if (f.hflag != row.upper && f.hflag != row.lower) continue;
        modelTags.*row.top = f.htype;
        (modelTags.*row.perSlot)[f.icomp] = f.htype;
        int status = 0;
        Text255 text;
        row.reader(f.unit, f.icomp, status, text);
        reportReader("Error", f.htype, f.icomp, status, text, ierr, herr);
        cite((fluidFiles.*row.citations)[f.icomp], f.htype, f.hcite);
    }
}

void readSection(FluidFile& f, SlotArray<Text255>& hfile, int& ierr, Text255& herr) {
    const int i = f.icomp;
    f.hreff.clear();
    if (f.hflag == "EOS" || f.hflag == "eos")
        readEquationOfState(f, hfile, ierr, herr);
    else if (f.hflag == "AUX")
        readAuxiliary(f, ierr, herr);
    else
        readAncillary(f, ierr, herr);

    STFLD2(f.unit, i, f.hcasn, f.hcite, f.heqn, f.hetemp, hfile, f.hflag, f.hreff, f.hstar, f.httemp, f.htype,
           f.letaread, f.ltcxread, ierr, herr);
    if (!f.hreff.blank() && i > 0 && hfile[-i] == "NUL") {
        hfile[-i] = f.hreff;
        modelTags.HMXEOS[-i] = f.heqn;
    }
}

// The tag line of a section and the lines of its source, with the line that ends them.
bool readSectionHead(FluidFile& f) {
    Text255 line;
    if (!readHead(f.unit, "model tag of a section", line)) return false;
    f.htype.assign(line.slice(1, 3));
    f.hcite.assign(line.slice(4, 254));
    constexpr int mostSourceLines = 1000;
    for (int k = 1; k <= mostSourceLines; ++k) {
        FixedText<1> first;
        if (!readHead(f.unit, "line behind the source of a section", first)) return false;
        if (first[1] != '?') break;
    }
    return true;
}

// All sections up to the key END; false where the file ends before it.
bool readSections(FluidFile& f, SlotArray<Text255>& hfile, int& ierr, Text255& herr) {
    for (;;) {
        FixedText<4> start;
        if (!readHead(f.unit, "a section or END", start)) return false;
        f.hstar = start[1];
        f.hflag.assign(start.slice(2, 4));
        if (f.hstar == '!') continue;
        if ((f.hstar == '#' || f.hstar == '@') && !readSectionHead(f)) return false;
        if (f.hflag == "END") return true;
        readSection(f, hfile, ierr, herr);
    }
}

// Data that are part of the program: none are, so each reader reports that.
void readBuiltIn(FluidFile& f, SlotArray<Text255>& hfile, int& ierr, Text255& herr) {
    f.unit = 0;
    f.hstar = '#';
    f.hcasn.assign(hfile[f.icomp].slice(7, 18));
    f.hflag = "EOS";
    f.htype = modelTags.HEOS;
    readSection(f, hfile, ierr, herr);
    f.hflag = "AUX";
    f.htype = modelTags.HMODCP[f.icomp];
    readSection(f, hfile, ierr, herr);
    f.hflag = "TRN";
    f.htype = "ECS";
    readSection(f, hfile, ierr, herr);
}

void completeName(Text255& name) {
    if (name.find(".") > 0) return;
    const int blank = name.find(" ");
    if (blank > 0 && blank + 3 <= Text255::size && name.slice(blank, blank + 3) == "    ")
        name.assign(blank, blank + 3, ".fld");
}

}  // namespace

void SETFLD(int icomp, SlotArray<Text255>& hfile, int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    const Integer slot{3, icomp};
    Text255& name = hfile[icomp];
    FluidFile f;
    f.icomp = icomp;

    // A file without a block has the functions of none, not those of the fluid before.
    cppTerms[icomp] = CppSlot{};
    ph0Terms[icomp] = Ph0Slot{};
    ancTerms[icomp] = AncSlot{};
    fluidConstants.IGENFL[icomp] = 0;
    fluidFiles.UNNUMB[icomp].clear();
    fluidFiles.FAMILY[icomp] = " ";
    fluidConstants.HCMBST[icomp] = -1.0;
    if (icomp >= 0) {
        fluidConstants.IUNFLG[icomp] = 0;
        fluidConstants.NTRMUN[icomp] = 0;
        prTerms[icomp].PRCOEF.fill(0.0);
        prTerms[icomp].IPRFLAG = 0;
    }

    bool complete = true;
    noteFluidFile(icomp, {});
    if (name.startsWith("BDATA") || name.startsWith("bdata")) {
        readBuiltIn(f, hfile, ierr, herr);
    } else {
        completeName(name);
        OPENFL(f.unit, name, 1, ierr, herr);
        if (ierr != 0) {
            Text255 text;
            message(text, "[SETUP error 101] error in opening file for component #", slot, "; filename = (",
                    Character{80, name.view()}, ").", nullCharacter);
            report(101, text, ierr, herr);
            return;
        }
        noteFluidFile(icomp, unitPath(f.unit));
        complete = readHeader(f.unit, icomp, f.hcasn) && readSections(f, hfile, ierr, herr);
        rewindUnit(f.unit);
        closeUnit(f.unit);
    }
    if (!f.letaread) modelTags.HETA[icomp] = f.hetemp;
    if (!f.ltcxread) modelTags.HTCX[icomp] = f.httemp;
    if (!complete) {
        Text255 text;
        message(text, "[SETUP error 102] error in file or premature end of file for component #", slot, ".",
                nullCharacter);
        report(102, text, ierr, herr);
        return;
    }

    if (!f.LEOSREAD && icomp >= -ncmax) {
        // a file without the equation of the natural-gas model serves with its own
        if (modelTags.HMXEOS[icomp] == "FEK") {
            modelTags.HMXEOS[icomp] = "FEQ";
            SETFLD(icomp, hfile, ierr, herr);
            return;
        }
        Text255 text;
        message(text, "[SETUP error 105] selected equation of state not found for component #", slot, ":  ",
                name.slice(1, 100), nullCharacter);
        report(105, text, ierr, herr);
        return;
    }
    // Only without an equation of state is a missing heat capacity an error: a file with one reads without complaint,
    // and its ideal-gas functions are zero.
    if (!f.LEOSREAD && (f.LCPP == 0 || (f.LCPP == 1 && modelTags.HMODCP[icomp] != "CPP"))) {
        Text255 text;
        message(text, "[SETUP error 106] ideal gas heat capacity equation not found for component #", slot, ".",
                nullCharacter);
        report(106, text, ierr, herr);
    }
    if (!f.LPRREAD) {
        int status = 0;
        Text255 text;
        SETPR(copyConstants, icomp, f.hcasn, status, text);
    }
}

}  // namespace frigana
