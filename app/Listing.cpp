#include "Listing.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <ostream>

#include "21_InitSubstance.h"
#include "31_FluidInformation.h"
#include "54_Find_Refigerant.h"
#include "Climate.h"
#include "Folders.h"
#include "OPENFL.h"
#include "Reason.h"
#include "SETUP.h"
#include "StateQuery.h"
#include "TextTable.h"
#include "UTILITY.h"

namespace frigana::app {

namespace {

namespace fs = std::filesystem;

// Potential and class, as the results tell them.
void lookUp(SUBSTANCE& substance, ListedFluid& listed) {
    FNDFLDFLAG = 'N';
    substance.SAFETYCLASS = "NA";
    FLUIDGWP(substance);
    if (substance.FLUIDKIND == 1 && FNDFLDFLAG == 'Y')
        substance.SAFETYCLASS = pureFluidLibrary().rows[libraryLookup.POSPUREREFEXT[1]].SAFETYCLASS;
    listed.ownPotential = substance.GWP == static_cast<int>(missingValue) ? "n/a" : std::to_string(substance.GWP);
    listed.ownClass = plainText(substance.SAFETYCLASS.view());
}

ListedFluid fluidOf(const std::string& file) {
    ListedFluid listed;
    listed.file = file;
    FileNames names{};
    names[1].assign(file);
    Text3 reference = "DEF";
    Text255 herr;
    int ierr = 0;
    SETUP(1, names, "HMX.BNC", reference, ierr, herr);
    if (ierr > 0) {
        listed.fault = reasonOf(herr.view());
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

// Components and fractions of a fluid that the engine holds.
void readParts(SUBSTANCE& substance, ListedFluid& listed) {
    double molarMass = 0.0;
    XMASS(substance.ZMOL, substance.ZKG, molarMass);
    for (int i = 1; i <= substance.NMIX; ++i) {
        const std::string component = plainText(substance.REFSNAMEMIX[i].view());
        listed.parts.push_back({component.substr(0, component.find_last_of('.')), substance.ZKG[i]});
    }
    lookUp(substance, listed);
}

ListedFluid blendOf(const std::string& file) {
    ListedFluid listed;
    listed.file = file;
    static SUBSTANCE substance;
    substance = {};
    substance.FLUIDKIND = 2;
    substance.FLUIDNAME.assign(file);
    Text3 reference = "DEF";
    Text255 herr;
    int ierr = 0;
    SETMIX(Text255(file), "HMX.BNC", reference, substance.NMIX, substance.REFSNAMEMIX, substance.ZMOL, ierr, herr);
    if (ierr > 0) {
        listed.fault = reasonOf(herr.view());
        return listed;
    }
    double sum = 0.0;
    CHECKCOMPOSITION(substance.REFSNAMEMIX, substance.ZMOL, substance.NMIX, sum, ierr, herr);
    if (ierr > 0) {
        listed.fault = reasonOf(herr.view());
        return listed;
    }
    readParts(substance, listed);
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

std::string decimal(double value) {
    char field[40];
    std::snprintf(field, sizeof field, "%.4g", value);
    return field;
}

std::string composition(const ListedFluid& blend) {
    std::string text;
    for (const ListedFluid::Part& part : blend.parts)
        text += (text.empty() ? "" : ", ") + part.component + ' ' + percent(part.massFraction);
    return text;
}

// ---- tables -----------------------------------------------------------------------------------------------------

struct Columns {
    std::size_t file = 0, designation = 0;
};

std::string designationOf(const ListedFluid& fluid) {
    return fluid.known != nullptr ? fluid.known->designation : "";
}

Columns columnsOf(const Listing& listing) {
    Columns columns{5, 11};
    for (const std::vector<ListedFluid>* rows : {&listing.fluids, &listing.blends, &listing.ownBlends})
        for (const ListedFluid& row : *rows) {
            columns.file = std::max(columns.file, row.file.size());
            columns.designation = std::max(columns.designation, designationOf(row).size());
        }
    return columns;
}

void printLine(std::ostream& out, const Columns& columns, const std::string& file, const std::string& designation,
               const std::string& safetyClass, const std::string& potential, const std::string& own,
               const std::string& text) {
    const std::string line = "  " + padRight(file, columns.file) + "  " + padRight(designation, columns.designation) +
                             "  " + padRight(safetyClass, 5) + "  " + padLeft(potential, 6) + "  " + padLeft(own, 6) +
                             "  " + text;
    out << trimRight(line) << '\n';
}

// Potential in a report, as lists show it.
std::string potentialOf(const ListedFluid& row, std::size_t report, const std::string& folder) {
    if (row.own) return catalogue::potentialText(catalogue::climateOf(*row.own, folder, report));
    return row.known != nullptr ? catalogue::shownPotential(*row.known, report) : "-";
}

void printRow(std::ostream& out, const Columns& columns, const ListedFluid& row, std::size_t report,
              const std::string& folder) {
    const std::string own = row.ownPotential == "n/a" ? "" : row.ownPotential;
    if (!row.fault.empty()) {
        printLine(out, columns, row.file, "", "-", "-", "", "cannot be used: " + row.fault);
        return;
    }
    const std::string safetyClass = row.known != nullptr   ? row.known->safetyClass
                                    : row.ownClass != "NA" ? row.ownClass
                                                           : "";
    printLine(out, columns, row.file, designationOf(row), safetyClass.empty() ? "-" : safetyClass,
              potentialOf(row, report, folder), own, row.parts.empty() ? row.name : composition(row));
}

// Digits of a name count as numbers: R22 stands before R114.
bool comesBefore(const std::string& a, const std::string& b) {
    std::size_t i = 0, j = 0;
    const auto digit = [](char c) { return c >= '0' && c <= '9'; };
    while (i < a.size() && j < b.size()) {
        if (digit(a[i]) && digit(b[j])) {
            std::size_t iEnd = i, jEnd = j;
            while (iEnd < a.size() && digit(a[iEnd])) ++iEnd;
            while (jEnd < b.size() && digit(b[jEnd])) ++jEnd;
            if (iEnd - i != jEnd - j) return iEnd - i < jEnd - j;
            if (const int order = a.compare(i, iEnd - i, b, j, jEnd - j); order != 0) return order < 0;
            i = iEnd;
            j = jEnd;
        } else {
            if (a[i] != b[j]) return a[i] < b[j];
            ++i;
            ++j;
        }
    }
    return a.size() - i < b.size() - j;
}

void printFamily(std::ostream& out, const Columns& columns, std::string_view family, const Listing& listing,
                 std::size_t report) {
    bool any = false;
    for (const ListedFluid& fluid : listing.fluids) {
        const std::string_view own = fluid.known != nullptr ? std::string_view(fluid.known->family) : "";
        if (own != family) continue;
        if (!any) out << '\n' << (family.empty() ? "without a family" : family) << '\n';
        any = true;
        printRow(out, columns, fluid, report, listing.folder);
    }
}

// ---- JSON -------------------------------------------------------------------------------------------------------

using Json = nlohmann::ordered_json;

Json numberOrNull(const std::optional<double>& number) {
    return number ? Json(*number) : Json();
}
Json textOrNull(const std::string& text) {
    return text.empty() ? Json() : Json(text);
}

// Of a blend of one's own the figures are sums by mass.
void addPotential(const ListedFluid& fluid, std::size_t k, const std::string& folder, Json& object) {
    const std::string report(catalogue::climateReports[k]);
    const catalogue::Refrigerant none, &known = fluid.known != nullptr ? *fluid.known : none;
    std::optional<double> figure = known.gwp[k];
    std::vector<std::string> leftOut = known.gwpLeftOut[k];
    if (fluid.own && fluid.fault.empty()) {
        const catalogue::Climate climate = catalogue::climateOf(*fluid.own, folder, k);
        figure = climate.gwp;
        leftOut = climate.leftOut;
    }
    object["gwp100"][report] = numberOrNull(figure);
    if (known.gwpBelow[k]) object["gwp100_below"][report] = *known.gwpBelow[k];
    if (!leftOut.empty()) object["gwp100_left_out"][report] = leftOut;
}

Json jsonOf(const ListedFluid& fluid, bool blend, const std::string& folder) {
    Json object;
    object["file"] = fluid.file;
    object["kind"] = blend ? "blend" : "pure";
    object["own"] = fluid.own.has_value();
    object["name"] = textOrNull(fluid.name);
    const catalogue::Refrigerant none, &known = fluid.known != nullptr ? *fluid.known : none;
    object["family"] = textOrNull(known.family);
    object["designation"] = textOrNull(known.designation);
    object["aliases"] = known.aliases;
    object["cas"] = textOrNull(known.cas);
    object["safety_class"] = textOrNull(known.safetyClass);
    object["odp"] = numberOrNull(known.odp);
    for (std::size_t k = 0; k < catalogue::climateReports.size(); ++k) addPotential(fluid, k, folder, object);
    object["note"] = textOrNull(known.note);
    object["in_results"]["gwp"] =
        fluid.ownPotential == "n/a" || fluid.ownPotential.empty() ? Json() : Json(std::stoi(fluid.ownPotential));
    object["in_results"]["safety_class"] = fluid.ownClass == "NA" ? Json() : textOrNull(fluid.ownClass);
    for (const ListedFluid::Part& part : fluid.parts)
        object["components"].push_back({{"fluid", part.component}, {"mass_fraction", part.massFraction}});
    object["estimated"] = fluid.estimates;
    if (!fluid.fault.empty()) object["fault"] = fluid.fault;
    return object;
}

}  // namespace

ListedFluid listOne(const std::string& folder, const std::string& file, bool blend) {
    SETPATH(folder);
    ListedFluid listed = blend ? blendOf(file) : fluidOf(file);
    listed.known = catalogue::Refrigerants::of(folder).find(file);
    std::vector<std::string> components;
    for (const ListedFluid::Part& part : listed.parts) components.push_back(part.component);
    listed.estimates = catalogue::estimatedProperties(folder, file, components);
    return listed;
}

ListedFluid listOwn(const std::string& folder, const catalogue::StoredBlend& blend) {
    ListedFluid listed;
    listed.file = blend.name;
    listed.own = blend.fluid;
    listed.fault = blend.problem;
    if (!listed.fault.empty()) return listed;
    static SUBSTANCE substance;
    listed.fault = catalogue::loadFluid(blend.fluid, folder, substance);
    if (!listed.fault.empty()) return listed;
    // As requests use it: for their time it is a predefined blend.
    substance.FLUIDKIND = 2;
    substance.FLUIDNAME.assign(blend.name);
    readParts(substance, listed);
    std::vector<std::string> components;
    for (const ListedFluid::Part& part : listed.parts) components.push_back(part.component);
    listed.estimates = catalogue::estimatedProperties(folder, "", components);
    return listed;
}

bool listData(const std::string& folder, const std::string& blendFolder, Listing& listing) {
    listing = Listing{};
    listing.folder = folder;
    listing.blendFolder = blendFolder;
    std::error_code error;
    if (!fs::is_directory(fs::path(folder) / "fluids", error)) return false;
    for (const std::string& file : filesOf(fs::path(folder) / "fluids", ".FLD"))
        listing.fluids.push_back(listOne(folder, file, false));
    for (const std::string& file : filesOf(fs::path(folder) / "mixtures", ".MIX"))
        listing.blends.push_back(listOne(folder, file, true));
    for (const catalogue::StoredBlend& blend : catalogue::storedBlends(blendFolder, catalogue::FluidNames::of(folder)))
        listing.ownBlends.push_back(listOwn(folder, blend));
    for (std::vector<ListedFluid>* rows : {&listing.fluids, &listing.blends, &listing.ownBlends})
        std::sort(rows->begin(), rows->end(),
                  [](const ListedFluid& a, const ListedFluid& b) { return comesBefore(a.file, b.file); });
    return true;
}

void printListing(std::ostream& out, const Listing& listing, std::size_t report) {
    const Columns columns = columnsOf(listing);
    out << "Fluids of " << listing.folder << "\n\n";
    const std::string potential = "GWP" + std::string(catalogue::climateReports[report].substr(2));
    printLine(out, columns, "Fluid", "designation", "class", potential, "result", "name");
    for (const std::string_view family : catalogue::fluidFamilies) printFamily(out, columns, family, listing, report);
    printFamily(out, columns, "", listing, report);
    out << '\n';
    const auto printBlends = [&](const char* heading, const std::vector<ListedFluid>& blends) {
        printLine(out, columns, heading, "designation", "class", potential, "result", "components, % by mass");
        for (const ListedFluid& blend : blends) printRow(out, columns, blend, report, listing.folder);
    };
    if (listing.blends.empty())
        out << "  There are no blends.\n";
    else
        printBlends("Blend", listing.blends);
    if (listing.ownBlends.empty()) return;
    out << "\nYour own blends, in " << listing.blendFolder << "\n\n";
    printBlends("Blend", listing.ownBlends);
}

void printOne(std::ostream& out, const ListedFluid& fluid, const std::string& folder) {
    constexpr std::size_t labels = 22;
    const auto line = [&](const std::string& label, const std::string& text) {
        if (!text.empty()) out << "  " << padRight(label, labels) << text << '\n';
    };
    const auto joined = [](const std::vector<std::string>& texts) {
        std::string all;
        for (const std::string& text : texts) all += (all.empty() ? "" : ", ") + text;
        return all;
    };
    out << fluid.file << '\n';
    if (!fluid.fault.empty()) {
        line("cannot be used", fluid.fault);
        return;
    }
    line("name", fluid.name);
    if (const catalogue::Refrigerant* known = fluid.known) {
        line("designation", known->designation.empty() ? "none" : known->designation);
        line("other names", joined(known->aliases));
        line("family", known->family);
        line("CAS number", known->cas);
        line("safety class", known->safetyClass.empty() ? "not classified or not certain" : known->safetyClass);
        line("ozone depletion", known->odp ? decimal(*known->odp) : "not known");
    }
    if (fluid.own) line("kind", "your own blend");
    if (fluid.known != nullptr || fluid.own)
        for (std::size_t k = 0; k < catalogue::climateReports.size(); ++k) {
            std::string text = potentialOf(fluid, k, folder);
            if (text == "-") text = "no figure";
            const std::vector<std::string> leftOut =
                fluid.own ? catalogue::climateOf(*fluid.own, folder, k).leftOut : fluid.known->gwpLeftOut[k];
            if (!leftOut.empty()) text += " (no figure for " + joined(leftOut) + ")";
            line("GWP, 100 a, " + std::string(catalogue::climateReports[k]), text);
        }
    if (fluid.known != nullptr) line("note", fluid.known->note);
    line("GWP in results", fluid.ownPotential == "n/a" ? "none" : fluid.ownPotential);
    line("class in results", fluid.ownClass == "NA" ? "none" : fluid.ownClass);
    if (!fluid.parts.empty()) line("components, % by mass", composition(fluid));
    line("estimated", joined(fluid.estimates));
}

void printListingJson(std::ostream& out, const Listing& listing) {
    Json root;
    root["folder"] = listing.folder;
    root["fluids"] = Json::array();
    for (const ListedFluid& fluid : listing.fluids) root["fluids"].push_back(jsonOf(fluid, false, listing.folder));
    for (const std::vector<ListedFluid>* blends : {&listing.blends, &listing.ownBlends})
        for (const ListedFluid& blend : *blends) root["fluids"].push_back(jsonOf(blend, true, listing.folder));
    out << root.dump(1) << '\n';
}

void printOneJson(std::ostream& out, const ListedFluid& fluid, const std::string& folder) {
    out << jsonOf(fluid, !fluid.parts.empty(), folder).dump(1) << '\n';
}

}  // namespace frigana::app
