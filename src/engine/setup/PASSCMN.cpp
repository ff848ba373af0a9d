#include "PASSCMN.h"

#include <algorithm>
#include <cstdlib>

#include "CORE_CPP.h"
#include "CORE_FEQ.h"
#include "CORE_PH0.h"
#include "CORE_PR.h"
#include "FluidConstants.h"
#include "Message.h"
#include "ModelTags.h"
#include "SETUP.h"
#include "SaturationSpline.h"

namespace frigana {

namespace {

using Slots = SlotArray<double> FluidConstants::*;
struct ConstantItem {
    std::string_view name;
    Slots values;
};
constexpr ConstantItem constantItems[] = {
    {"accen", &FluidConstants::ACCEN},   {"dcrit", &FluidConstants::DCRIT}, {"deos", &FluidConstants::DEOS},
    {"dipole", &FluidConstants::DIPOLE}, {"pcrit", &FluidConstants::PCRIT}, {"peos", &FluidConstants::PEOS},
    {"rhoz", &FluidConstants::RHOZ},     {"tcrit", &FluidConstants::TCRIT}, {"tmeos", &FluidConstants::TMEOS},
    {"tnbp", &FluidConstants::TNBP},     {"ttpn", &FluidConstants::TTPN},   {"txeos", &FluidConstants::TXEOS},
    {"tz", &FluidConstants::TZ},         {"wmas", &FluidConstants::WMAS},   {"zcrit", &FluidConstants::ZCRIT},
};

struct FeqItem {
    std::string_view name;
    double FeqSlot::*value;
};
constexpr FeqItem feqItems[] = {
    {"pcfeq", &FeqSlot::PCFEQ}, {"rho0feq", &FeqSlot::RHO0FEQ}, {"rhocfeq", &FeqSlot::RHOCFEQ},
    {"t0feq", &FeqSlot::T0FEQ}, {"tcfeq", &FeqSlot::TCFEQ},
};

struct PrItem {
    std::string_view name;
    double PrSlot::*value;
};
constexpr PrItem prItems[] = {
    {"pcpr", &PrSlot::PCPR},
    {"rhocpr", &PrSlot::RHOCPR},
    {"tcpr", &PrSlot::TCPR},
    {"acnpr", &PrSlot::ACNPR},
};

struct FeqArrayItem {
    std::string_view name;
    FeqTermArray FeqSlot::*values;
};
constexpr FeqArrayItem feqArrayItems[] = {
    {"afeq", &FeqSlot::AFEQ}, {"tifeq", &FeqSlot::TIFEQ}, {"difeq", &FeqSlot::DIFEQ}, {"dlif", &FeqSlot::DLIF}};

struct CppArrayItem {
    std::string_view name;
    CppTermArray CppSlot::*values;
};
constexpr CppArrayItem cppArrayItems[] = {{"cpc0", &CppSlot::CPC0}, {"xkc0", &CppSlot::XKC0}};

// What a name stands for: the place of one of the five kinds, or none.
struct Item {
    Text3* text = nullptr;
    int* count = nullptr;
    int largestCount = 0;
    double* real = nullptr;
    double* array = nullptr;
    int length = 0;
    bool known = false;
    bool ofEquation = false;  // of the Helmholtz equation, whose tables are made from it
};

template <class Table>
const auto* find(const Table& table, std::string_view name) {
    const auto* const at =
        std::find_if(std::begin(table), std::end(table), [name](const auto& row) { return row.name == name; });
    return at == std::end(table) ? nullptr : at;
}

bool isSlot(int icomp) {
    return SlotArray<double>::holds(icomp);
}

// The place of an item. A known name whose slot does not exist has none.
Item locate(std::string_view name, int icomp, int jcomp) {
    Item item;
    item.known = true;
    if (name == "heos") {
        item.text = &modelTags.HEOS;
        return item;
    }
    if (name == "r") {
        item.real = &fluidConstants.R;
        return item;
    }
    if (name == "fprkij") {
        if (!Composition::holds(icomp) || !Composition::holds(jcomp)) return item;
        item.array = FPRKIJ[icomp][jcomp].items;
        item.length = 6;
        return item;
    }
    const bool exists = isSlot(icomp);
    const int slot = exists ? icomp : 0;
    FeqSlot& feq = feqTerms[slot];
    CppSlot& cpp = cppTerms[slot];
    PrSlot& pr = prTerms[slot];
    if (const auto* constant = find(constantItems, name)) {
        item.real = &(fluidConstants.*constant->values)[slot];
    } else if (const auto* ofFeq = find(feqItems, name)) {
        item.real = &(feq.*ofFeq->value);
    } else if (const auto* ofPr = find(prItems, name)) {
        item.real = &(pr.*ofPr->value);
    } else if (name == "ntermf" || name == "ncrt") {
        const bool terms = name == "ntermf";
        item.count = terms ? &feq.NTERMF : &feq.NCRT;
        item.largestCount = terms ? largestFeqTerms - feq.NCRT : std::min(largestFeqRows, largestFeqTerms - feq.NTERMF);
        item.ofEquation = true;
    } else if (name == "ntermc" || name == "nterme") {
        const bool powers = name == "ntermc";
        item.count = powers ? &cpp.NTERMC : &cpp.NTERME;
        item.largestCount = largestCppTerms - cpp.NCOSHC - cpp.NSINHC - (powers ? cpp.NTERME : cpp.NTERMC);
    } else if (const auto* ofTerms = find(feqArrayItems, name)) {
        item.array = (feq.*ofTerms->values).items;
        item.length = feq.NTERMF + feq.NCRT;
        item.ofEquation = true;
    } else if (const auto* ofPowers = find(cppArrayItems, name)) {
        item.array = (cpp.*ofPowers->values).items;
        item.length = cpp.NTERMC + cpp.NTERME;
    } else if (name == "prcoef") {
        item.array = pr.PRCOEF.items;
        item.length = 20;
    } else {
        item.known = false;
    }
    if (!exists) {
        const bool known = item.known;
        item = {};
        item.known = known;
    }
    return item;
}

void outOfBounds(int& ierr, Text255& herr) {
    ierr = 2;
    message(herr, "[PASSCMN error] inputs out of bounds", nullCharacter);
}

void write(const Item& item, const Text255& hstr, int ival, double rval, const double (&arr)[passedArraySize],
           int icomp, int& ierr, Text255& herr) {
    if (item.text != nullptr) *item.text = hstr;
    if (item.count != nullptr) {
        if (ival < 0 || ival > item.largestCount) {
            outOfBounds(ierr, herr);
            return;
        }
        *item.count = ival;
    }
    if (item.real != nullptr) *item.real = rval;
    if (item.array != nullptr) std::copy_n(arr, item.length, item.array);
    if (isSlot(icomp)) {
        cppTerms[icomp].TSVCP0 = 0.0;
        if (item.ofEquation) SETEXP(icomp);
    }
    // a mixture has its own values again with the next set-up
    if (modelTags.NC > 1) modelTags.LFORCESETUP = true;
    // what was remembered was computed with the old values
    for (Ph0Slot& slot : ph0Terms) clearSavedValues(slot);
    saturationSpline.SPLINEREADY = false;
    RESETA();
}

void read(const Item& item, Text255& hstr, int& ival, double& rval, double (&arr)[passedArraySize]) {
    if (item.array != nullptr && item.length > 0)
        std::copy_n(item.array, item.length, arr);
    else if (item.count != nullptr)
        ival = *item.count;
    else if (item.real != nullptr)
        rval = *item.real;
    else if (item.text != nullptr)
        hstr = *item.text;
}

}  // namespace

void PASSCMN(std::string_view hvr, int iwrite, int icomp, int jcomp, Text255& hstr, int& ival, double& rval,
             double (&arr)[passedArraySize], int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    if (std::abs(icomp) > ncmax || std::abs(jcomp) > ncmax) outOfBounds(ierr, herr);
    const bool writing = iwrite == 1;
    if (!writing) {
        hstr.clear();
        ival = 0;
        rval = 0.0;
    }
    const std::string_view name = trimRight(hvr.substr(0, hvr.find('\0')));
    const Item item = locate(name, icomp, jcomp);
    if (!item.known) {
        ierr = 1;
        message(herr, "[PASSCMN error] variable name not recognized", nullCharacter);
        return;
    }
    const bool exists = item.text != nullptr || item.count != nullptr || item.real != nullptr || item.array != nullptr;
    if (!exists) {
        outOfBounds(ierr, herr);
        return;
    }
    if (writing)
        write(item, hstr, ival, rval, arr, icomp, ierr, herr);
    else
        read(item, hstr, ival, rval, arr);
}

}  // namespace frigana
