#include "Listing.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <ostream>

#include "21_InitSubstance.h"
#include "31_FluidInformation.h"
#include "54_Find_Refigerant.h"
#include "Folders.h"
#include "OPENFL.h"
#include "SETUP.h"
#include "UTILITY.h"

namespace frigana::app {

namespace {

namespace fs = std::filesystem;

// Potential and class, as the results tell them.
void lookUp(SUBSTANCE& substance, ListedFluid& listed) {
    static PureFluidTable pureFluids;
    LOADPUREFLUIDS(pureFluids);
    FNDFLDFLAG = 'N';
    substance.SAFETYCLASS = "NA";
    FLUIDGWP(substance);
    if (substance.FLUIDKIND == 1 && FNDFLDFLAG == 'Y')
        substance.SAFETYCLASS = pureFluids.rows[libraryLookup.POSPUREREFEXT[1]].SAFETYCLASS;
    listed.potential = substance.GWP == static_cast<int>(missingValue) ? "n/a" : std::to_string(substance.GWP);
    listed.safetyClass = plainText(substance.SAFETYCLASS.view());
}

// A message in one piece: the engine leaves the blanks of its fields in it.
std::string reason(const Text255& herr) {
    std::string text;
    for (const char character : plainText(herr.view()))
        if (character != ' ' || text.empty() || text.back() != ' ') text += character;
    return text;
}

ListedFluid fluidOf(const std::string& file) {
    ListedFluid listed{file, {}, {}, {}, {}, {}};
    FileNames names{};
    names[1].assign(file);
    Text3 reference = "DEF";
    Text255 herr;
    int ierr = 0;
    SETUP(1, names, "HMX.BNC", reference, ierr, herr);
    if (ierr > 0) {
        listed.fault = reason(herr);
        return listed;
    }
    Text12 shortName, cas;
    FixedText<80> name;
    NAME(1, shortName, name, cas);
    listed.name = plainText(name.view());
    static SUBSTANCE substance;
    substance = {};
    substance.FLUIDKIND = substance.NREFS = 1;
    substance.FLUIDNAME.assign(file);
    lookUp(substance, listed);
    return listed;
}

ListedFluid blendOf(const std::string& file) {
    ListedFluid listed{file, {}, {}, {}, {}, {}};
    static SUBSTANCE substance;
    substance = {};
    substance.FLUIDKIND = 2;
    substance.FLUIDNAME.assign(file);
    Text3 reference = "DEF";
    Text255 herr;
    int ierr = 0;
    SETMIX(Text255(file), "HMX.BNC", reference, substance.NMIX, substance.REFSNAMEMIX, substance.ZMOL, ierr, herr);
    if (ierr > 0) {
        listed.fault = reason(herr);
        return listed;
    }
    double sum = 0.0, molarMass = 0.0;
    CHECKCOMPOSITION(substance.REFSNAMEMIX, substance.ZMOL, substance.NMIX, sum, ierr, herr);
    if (ierr > 0) {
        listed.fault = reason(herr);
        return listed;
    }
    XMASS(substance.ZMOL, substance.ZKG, molarMass);
    for (int i = 1; i <= substance.NMIX; ++i) {
        const std::string component = plainText(substance.REFSNAMEMIX[i].view());
        listed.parts.push_back({component.substr(0, component.find_last_of('.')), substance.ZKG[i]});
    }
    lookUp(substance, listed);
    return listed;
}

// A mass fraction as the makers of blends give it, at most two decimals of a percent.
std::string percent(double fraction) {
    char field[40];
    std::snprintf(field, sizeof field, "%.2f", 100.0 * fraction);
    std::string text = field;
    text.erase(text.find_last_not_of('0') + 1);
    if (text.back() == '.') text.pop_back();
    return text;
}

std::string composition(const ListedFluid& blend) {
    std::string text;
    for (const ListedFluid::Part& part : blend.parts)
        text += (text.empty() ? "" : ", ") + part.component + ' ' + percent(part.massFraction);
    return text;
}

void printRows(std::ostream& out, const char* heading, const char* last, const std::vector<ListedFluid>& rows,
               std::string (*description)(const ListedFluid&)) {
    std::size_t width = std::string_view(heading).size();
    for (const ListedFluid& row : rows) width = std::max(width, row.file.size());
    const auto line = [&](const std::string& file, const std::string& potential, const std::string& safetyClass,
                          const std::string& text) {
        std::string whole = "  " + file + std::string(width - file.size(), ' ') + "  ";
        whole += std::string(potential.size() < 6 ? 6 - potential.size() : 0, ' ') + potential + "  ";
        whole += safetyClass + std::string(safetyClass.size() < 5 ? 5 - safetyClass.size() : 0, ' ') + "  " + text;
        out << trimRight(whole) << '\n';
    };
    line(heading, "GWP", "class", last);
    for (const ListedFluid& row : rows) {
        if (row.fault.empty())
            line(row.file, row.potential, row.safetyClass, description(row));
        else
            line(row.file, "-", "-", "cannot be used: " + row.fault);
    }
}

}  // namespace

bool listData(const std::string& folder, Listing& listing) {
    listing = Listing{};
    listing.folder = folder;
    std::error_code error;
    if (!fs::is_directory(fs::path(folder) / "fluids", error)) return false;
    SETPATH(folder);
    for (const std::string& file : filesOf(fs::path(folder) / "fluids", ".FLD"))
        listing.fluids.push_back(fluidOf(file));
    for (const std::string& file : filesOf(fs::path(folder) / "mixtures", ".MIX"))
        listing.blends.push_back(blendOf(file));
    return true;
}

void printListing(std::ostream& out, const Listing& listing) {
    out << "Fluids of " << listing.folder << "\n\n";
    printRows(out, "Fluid", "name", listing.fluids, [](const ListedFluid& fluid) { return fluid.name; });
    out << '\n';
    if (listing.blends.empty()) {
        out << "  There are no blends.\n";
        return;
    }
    printRows(out, "Blend", "components, % by mass", listing.blends, composition);
}

}  // namespace frigana::app
