// Sets the engine up for one fluid or several, by the names of their files.
#pragma once

#include <cmath>
#include <initializer_list>
#include <string>
#include <string_view>

#include "FluidConstants.h"
#include "OPENFL.h"
#include "SETUP.h"
#include "TPRHO.h"
#include "TreeFolders.h"

namespace frigana::test {

// The folder of the installation: data/fluids and data/mixtures stand below it.
inline void setPath() {
    SETPATH(test::dataFolder);
}

// Returns the code of SETUP.
inline int setUp(std::initializer_list<std::string_view> fluids, const char* reference = "DEF") {
    setPath();
    FileNames files{};
    int count = 0;
    for (const std::string_view fluid : fluids) files[++count].assign(std::string(fluid) + ".FLD");
    Text3 tag{reference};
    int ierr = 0;
    Text255 herr;
    SETUP(count, files, Text255("HMX.BNC"), tag, ierr, herr);
    return ierr;
}
inline int setUp(std::string_view fluid, const char* reference = "DEF") {
    return setUp({fluid}, reference);
}

inline constexpr const char* pureFluids[] = {
    "AMMONIA", "BUTANE",  "C12",      "CF3I",    "CO2",    "ETHYLENE", "IPENTANE", "ISOBUTAN", "NITROGEN",
    "PENTANE", "PROPANE", "PROPYLEN", "R11",     "R113",   "R114",     "R115",     "R116",     "R12",
    "R123",    "R1233ZD", "R1234YF",  "R1234ZE", "R124",   "R125",     "R134A",    "R141B",    "R142B",
    "R143A",   "R152A",   "R218",     "R22",     "R227EA", "R23",      "R236FA",   "R245FA",   "R32"};

// |a - b| in units of the larger size, or of `least` where both are smaller.
inline double deviation(double a, double b, double least = 1e-300) {
    return std::abs(a - b) / std::max({std::abs(a), std::abs(b), least});
}

}  // namespace frigana::test
