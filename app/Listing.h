// The fluids and blends that requests of an installation may name, for people.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace frigana::app {

struct ListedFluid {
    std::string file, name;   // file name for a request, full name of a fluid
    std::string potential;    // global warming potential, n/a where the library has none
    std::string safetyClass;  // NA where none is assigned
    struct Part {
        std::string component;
        double massFraction;
    };
    std::vector<Part> parts;  // of a blend
    std::string fault;        // why it cannot be used; empty where it can
};

struct Listing {
    std::string folder;
    std::vector<ListedFluid> fluids, blends;
};

// Reads all fluids and blends of a data folder; false if it has no folder of fluids.
bool listData(const std::string& folder, Listing& listing);

void printListing(std::ostream& out, const Listing& listing);

}  // namespace frigana::app
