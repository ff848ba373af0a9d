#include "Fluids.h"

#include <cmath>
#include <fstream>
#include <sstream>

#include "CORE_ANC.h"
#include "CORE_CPP.h"
#include "CORE_FEQ.h"
#include "CORE_PH0.h"
#include "FluidConstants.h"
#include "ModelTags.h"
#include "ReferenceState.h"
#include "TextFile.h"
#include "TreeFolders.h"

namespace frigana::test {

namespace {

// Stands the unit on the first line of a block whose model tag begins with tag; gives the whole tag.
bool findBlock(int unit, std::string_view key, std::string_view tag, Text3& found) {
    rewindUnit(unit);
    Text255 line;
    while (readText(unit, line) == ReadStatus::ok) {
        if (line[1] != '#' && line[1] != '@') continue;
        const bool wanted = line.slice(2, 4) == key;
        if (readText(unit, line) != ReadStatus::ok) return false;
        found = Text3(line.slice(1, 3));
        do {
            if (readText(unit, line) != ReadStatus::ok) return false;
        } while (line[1] == '?');
        if (wanted && found.startsWith(tag)) return true;
    }
    return false;
}

}  // namespace

bool loadFluid(std::string_view name, std::string_view idealGas, int icomp, int components) {
    constexpr int unit = 12;
    const std::string path = std::string(test::dataFolder) + "/fluids/" + std::string(name) + ".FLD";
    if (!openForReading(unit, path)) return false;
    modelTags.NC = components;
    modelTags.IPUREFLD = 0;
    modelTags.HEOS = components == 1 ? "FEQ" : "HMX";
    modelTags.HMXEOS[icomp] = "FEQ";
    fluidConstants.VERFL[icomp] = 10.0;

    int ierr = 0;
    Text255 herr;
    Text3 tag;
    bool good = findBlock(unit, "EOS", "FE", tag);
    if (good) SETFEQ(unit, icomp, "", ierr, herr);
    good = good && ierr == 0;
    if (!idealGas.empty()) modelTags.HMODCP[icomp] = Text3(idealGas);
    if (good && (good = findBlock(unit, "AUX", modelTags.HMODCP[icomp].trimmed(), tag))) {
        if (tag.startsWith("CP"))
            SETCPP(unit, icomp, "", ierr, herr);
        else
            SETPH0(unit, icomp, "", ierr, herr);
        good = ierr == 0;
    }
    const auto ancillary = [&](std::string_view key, SlotArray<Text3>& tags, auto reader) {
        tags[icomp] = "NBS";
        if (!good || !findBlock(unit, key, "", tag)) return;
        reader(unit, icomp, ierr, herr);
        tags[icomp] = tag;
        good = ierr == 0;
    };
    ancillary("PS ", modelTags.HPSK, SETPS);
    ancillary("PL ", modelTags.HPLK, SETPL);
    ancillary("DL ", modelTags.HDLK, SETDL);
    ancillary("DV ", modelTags.HDVK, SETDV);
    closeUnit(unit);

    referenceState.TREF[icomp] = fluidConstants.TNBP[icomp];
    referenceState.RHOREF[icomp] = 1.0;
    referenceState.HREF[icomp] = referenceState.SREF[icomp] = 0.0;
    return good;
}

void Worst::see(double d, const std::string& place) {
    if (!(d <= deviation)) {  // a value that is not a number is the worst of all
        deviation = d;
        where = place;
    }
}

double relative(double value, double expected) {
    return std::fabs(value - expected) / (std::fabs(expected) > 0.0 ? std::fabs(expected) : 1.0);
}

std::vector<std::vector<std::string>> referenceTable(std::string_view file) {
    std::vector<std::vector<std::string>> table;
    std::ifstream stream(std::string(test::testsFolder) + "/reference/" + std::string(file));
    for (std::string line; std::getline(stream, line);) {
        std::vector<std::string> cells;
        std::stringstream cellStream(line);
        for (std::string cell; std::getline(cellStream, cell, ',');) cells.push_back(cell);
        table.push_back(cells);
    }
    return table;
}

}  // namespace frigana::test
