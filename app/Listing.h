// The fluids and blends that requests of an installation may name, for people and as JSON.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "Refrigerants.h"
#include "StoredBlends.h"

namespace frigana::app {

struct ListedFluid {
    std::string file, name;                 // file name for a request, full name of a fluid
    std::string ownPotential, ownClass;     // as result files give them; n/a and NA where the program has none
    const catalogue::Refrigerant* known{};  // null where refrigerants.json does not list it
    std::optional<catalogue::Fluid> own;    // of a person's own blend: its components
    struct Part {
        std::string component;
        double massFraction;
    };
    std::vector<Part> parts;             // of a blend
    std::vector<std::string> estimates;  // properties that rest on an estimate
    std::string fault;                   // why it cannot be used; empty where it can
};

struct Listing {
    std::string folder, blendFolder;
    std::vector<ListedFluid> fluids, blends, ownBlends;
};

// Reads all fluids and blends of a data folder, and a person's own blends in theirs; false if there is no folder of
// fluids.
bool listData(const std::string& folder, const std::string& blendFolder, Listing& listing);

// Reads one fluid or blend by the name of its file.
ListedFluid listOne(const std::string& folder, const std::string& file, bool blend);
// A blend of one's own.
ListedFluid listOwn(const std::string& folder, const catalogue::StoredBlend& blend);

// Potentials are those of a report, by its place in climateReports.
void printListing(std::ostream& out, const Listing& listing, std::size_t report);
void printOne(std::ostream& out, const ListedFluid& fluid, const std::string& folder);

// The same as JSON, with the figures of every report.
void printListingJson(std::ostream& out, const Listing& listing);
void printOneJson(std::ostream& out, const ListedFluid& fluid, const std::string& folder);

}  // namespace frigana::app
