// Substances as the readers of requests leave them, set up in this process.
#pragma once

#include <initializer_list>
#include <string>
#include <utility>

#include "21_InitSubstance.h"
#include "TreeFolders.h"

namespace frigana::test {

inline void useInstalledData() {
    ADDRESS = Text255(std::string(test::dataFolder) + "/frigana");
}

// A pure fluid or a predefined mixture, by its file name.
inline SUBSTANCE& fluid(const char* name) {
    static SUBSTANCE substance;
    substance = {};
    const std::string text(name);
    substance.FLUIDKIND = text.size() > 3 && (text[text.size() - 3] == 'F' || text[text.size() - 3] == 'f') ? 1 : 2;
    substance.NREFS = 1;
    substance.ZTYPE = 1;
    substance.ZCOMP[1] = 1.0;
    substance.REFSNAME[1] = Text255(text);
    substance.MIXNAME = Text255(text);
    substance.IXREF = 2;
    substance.HRF = "DEF";
    useInstalledData();
    INITSUBSTANCE(substance);
    return substance;
}

// A mixture listed by components with mass (or mole) fractions.
inline SUBSTANCE& listed(std::initializer_list<std::pair<const char*, double>> components, bool byMass = true) {
    static SUBSTANCE substance;
    substance = {};
    substance.FLUIDKIND = 3;
    substance.ZTYPE = byMass ? 1 : 2;
    for (const auto& [name, fraction] : components) {
        const int i = ++substance.NREFS;
        substance.REFSNAME[i] = name;
        substance.ZCOMP[i] = fraction;
    }
    substance.MIXNAME = "Blend";
    substance.IXREF = 2;
    substance.HRF = "DEF";
    useInstalledData();
    INITSUBSTANCE(substance);
    return substance;
}

}  // namespace frigana::test
