#include "54_Find_Refigerant.h"

#include <cmath>

#include "14_ErrorControl.h"

namespace frigana {

LibraryLookup libraryLookup;

namespace {

constexpr double fractionTolerance = static_cast<double>(0.02f);

std::string_view withoutExtension(const Text255& name) {
    const std::string_view text = name.trimmed();
    const auto dot = text.rfind('.');
    return dot == std::string_view::npos ? text : text.substr(0, dot);
}

bool sameFluid(const Text255& a, const Text255& b) {
    return withoutExtension(a) == withoutExtension(b);
}

// Whether the row has this component with nearly this mass fraction; only the first place with the name is looked at.
bool rowHolds(const MIXTURE& row, const Text255& name, double massFraction) {
    for (int l = 1; l <= row.NCOMP; ++l) {
        if (sameFluid(name, row.REFSNAME[l]) && std::fabs(massFraction - row.ZKG[l]) / row.ZKG[l] < fractionTolerance)
            return true;
    }
    return false;
}

void checkKnown(const SUBSTANCE& substance) {
    if (substance.FLUIDKIND == 1) {
        FINDPUREFLUID(substance, pureFluidLibrary(), substance.NREFS, libraryLookup.POSPUREREFEXT, FNDFLDFLAG);
        if (FNDFLDFLAG != 'Y') ERRORCONTROL(100123, "Fluid cannot be selected!!!");
    } else if (substance.FLUIDKIND == 2) {
        FINDPREDEFINEDMIXTURE(substance, mixtureLibrary(), libraryLookup.mixtureRow, FNDFLDFLAG);
        if (FNDFLDFLAG != 'Y') ERRORCONTROL(100124, "Mixture cannot be selected!!!");
    }
}

}  // namespace

void FINDPUREFLUID(const SUBSTANCE& substance, const PureFluidTable& table, int NCOMP, Array1<int, 20>& POS,
                   char& flag) {
    if (NCOMP == 1) {
        for (int row = 1; row <= table.count; ++row) {
            if (sameFluid(substance.FLUIDNAME, table.rows[row].NAME)) {
                POS[1] = row;
                flag = 'Y';
                return;
            }
        }
        return;
    }
    int hits = 0;
    for (int row = 1; row <= table.count; ++row) {
        for (int j = 1; j <= NCOMP; ++j) {
            if (sameFluid(table.rows[row].NAME, substance.REFSNAMEMIX[j])) {
                ++hits;
                POS[j] = row;
            }
        }
        if (hits == NCOMP) {
            flag = 'Y';
            return;
        }
    }
}

void FINDPREDEFINEDMIXTURE(const SUBSTANCE& substance, const MixtureTable& table, int& POS, char& flag) {
    for (int row = 1; row <= table.count; ++row) {
        const MIXTURE& mixture = table.rows[row];
        if (!sameFluid(substance.FLUIDNAME, mixture.NAME)) continue;
        if (mixture.NCOMP != substance.NMIX) return;
        for (int j = 1; j <= substance.NMIX; ++j)
            if (!rowHolds(mixture, substance.REFSNAMEMIX[j], substance.ZKG[j])) return;
        POS = row;
        flag = 'Y';
        return;
    }
}

void CHECKREF_PROPERTIES(const SUBSTANCE& substance) {
    FNDFLDFLAG = 'N';  // what the last look-up found is no finding of this one
    if (substance.FLUIDKIND == 1) {
        FINDPUREFLUID(substance, pureFluidLibrary(), substance.NREFS, libraryLookup.POSPUREREFEXT, FNDFLDFLAG);
    } else if (substance.FLUIDKIND == 2) {
        libraryLookup.mixtureRow = 0;
        FINDPREDEFINEDMIXTURE(substance, mixtureLibrary(), libraryLookup.mixtureRow, FNDFLDFLAG);
        FNDFLDFLAG = 'N';
        FINDPUREFLUID(substance, pureFluidLibrary(), substance.NMIX, libraryLookup.POSPUREREFEXT, FNDFLDFLAG);
    } else if (substance.FLUIDKIND == 3) {
        FINDPUREFLUID(substance, pureFluidLibrary(), substance.NMIX, libraryLookup.POSPUREREFEXT, FNDFLDFLAG);
    }
}

void CHECKREF_CYCLES(const SUBSTANCE& first, const SUBSTANCE& second) {
    FNDFLDFLAG = 'N';
    checkKnown(first);
    if (first.FLUIDNAME == second.FLUIDNAME) return;
    FNDFLDFLAG = 'N';
    checkKnown(second);
}

}  // namespace frigana
