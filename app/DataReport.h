// What the check of an installation's data found, for people.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "DataCheck.h"

namespace frigana::app {

struct DataCheckResult {
    std::string folder;
    std::vector<FluidReport> fluids;
    ParametersReport parameters;
    std::vector<MixtureReport> mixtures;
    bool clean() const;
};

// Checks all files of a data folder; false if it has no folder of fluids.
bool checkData(const std::string& folder, DataCheckResult& result);

// Tables of the figures, the models and the mixtures; then whatever is known or wrong, each with its reason.
void printDataCheck(std::ostream& out, const DataCheckResult& result);

}  // namespace frigana::app
