// The fluids and blends that requests of an installation may name, for people and as JSON.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "Refrigerants.h"

namespace frigana::app {

struct ListedFluid {
    std::string file, name;                 // file name for a request, full name of a fluid
    std::string ownPotential, ownClass;     // as result files give them; n/a and NA where the program has none
    const catalogue::Refrigerant* known{};  // null where refrigerants.json does not list it
    struct Part {
        std::string component;
        double massFraction;
    };
    std::vector<Part> parts;             // of a blend
    std::vector<std::string> estimates;  // properties that rest on an estimate
    std::string fault;                   // why it cannot be used; empty where it can
};

struct Listing {
    std::string folder;
    std::vector<ListedFluid> fluids, blends;
};

// Reads all fluids and blends of a data folder; false if it has no folder of fluids.
bool listData(const std::string& folder, Listing& listing);

// Reads one fluid or blend by the name of its file.
ListedFluid listOne(const std::string& folder, const std::string& file, bool blend);

// Potentials are those of a report, by its place in climateReports.
void printListing(std::ostream& out, const Listing& listing, std::size_t report);
void printOne(std::ostream& out, const ListedFluid& fluid);

// The same as JSON, with the figures of every report.
void printListingJson(std::ostream& out, const Listing& listing);
void printOneJson(std::ostream& out, const ListedFluid& fluid);

}  // namespace frigana::app
