// Pure fluids for the tests of equations of state: read from their files, without the whole set-up.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "EngineLimits.h"
#include "PureFluid.h"

namespace frigana::test {

inline std::string fluidName(const testing::TestParamInfo<const char*>& fluid) {
    return fluid.param;
}

// Reads NAME.FLD into slot icomp, with the normal boiling point as reference temperature and zero offsets. idealGas may
// name the other ideal-gas block of the file (PH0); false if there is none.
bool loadFluid(std::string_view name, std::string_view idealGas = "", int icomp = 1, int components = 1);

inline Composition pure(int icomp = 1) {
    return unitComposition(icomp);
}

// Largest deviation of each quantity, with the place where it was met.
struct Worst {
    double deviation = 0.0;
    std::string where;
    void see(double d, const std::string& place);
};

double relative(double value, double expected);

// Lines of a file of tests/reference, split at commas, the header line first.
std::vector<std::vector<std::string>> referenceTable(std::string_view file);

}  // namespace frigana::test
