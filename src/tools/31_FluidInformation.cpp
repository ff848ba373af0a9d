#include "31_FluidInformation.h"

#include <cmath>

#include "21_InitSubstance.h"
#include "54_Find_Refigerant.h"
#include "FixedRows.h"

namespace frigana {

namespace {

constexpr const char* unknownClass = "NA";

// Global warming potential of a blend from its components by mass.
int potentialOfBlend(const SUBSTANCE& substance, int count) {
    double sum = 0.0;
    for (int i = 1; i <= count; ++i)
        sum += substance.ZKG[i] * pureFluidLibrary().rows[libraryLookup.POSPUREREFEXT[i]].GWP;
    return static_cast<int>(std::lround(sum));
}

// GWP, and the class of a predefined mixture, as the lookup found them.
void fillPotential(SUBSTANCE& substance) {
    if (FNDFLDFLAG != 'Y') return;
    switch (substance.FLUIDKIND) {
        case 1:
            substance.GWP = pureFluidLibrary().rows[libraryLookup.POSPUREREFEXT[1]].GWP;
            break;
        case 2:
            substance.GWP = potentialOfBlend(substance, substance.NMIX);
            if (libraryLookup.mixtureRow > 0)
                substance.SAFETYCLASS = mixtureLibrary().rows[libraryLookup.mixtureRow].SAFETYCLASS;
            break;
        case 3:
            substance.GWP = potentialOfBlend(substance, substance.NREFS);
            break;
        default:
            break;
    }
}

}  // namespace

void FLUIDINFORMATION(SUBSTANCE& substance, PROPREQ& request, const Text255& FILEOUT) {
    INITSUBSTANCE(substance);
    substance.GWP = static_cast<int>(missingValue);
    substance.SAFETYCLASS = unknownClass;

    ResultWriter writer(FILEOUT);
    integerRow(writer, "Request type", 1, request.REQTYPE);
    integerRow(writer, "Operation", 2, request.REQSUB);
    integerRow(writer, "Kind of fluid", 1, substance.FLUIDKIND);
    writer.cell("Fluid", "", Character{20, substance.FLUIDNAME.view()});
    writer.endRow();
    const int components = substance.FLUIDKIND == 2 ? substance.NMIX : substance.NREFS;
    integerRow(writer, "Number of components", 2, components);
    for (int i = 1; i <= components; ++i) {
        const Text255& name = substance.FLUIDKIND == 2 ? substance.REFSNAMEMIX[i] : substance.REFSNAME[i];
        writer.row("Components", i);
        writer.cell("Component", "", Character{20, name.view()});
        writer.endRow();
        realCell(writer, "Mass fraction", "kg/kg", substance.ZKG[i]);
        realCell(writer, "Mole fraction", "mol/mol", substance.ZMOL[i]);
        writer.endRow();
    }
    writer.group({});

    fillPotential(substance);
    if (substance.FLUIDKIND == 1 && FNDFLDFLAG == 'Y')
        substance.SAFETYCLASS = pureFluidLibrary().rows[libraryLookup.POSPUREREFEXT[1]].SAFETYCLASS;

    realCell(writer, "Molar mass", "g/mol", substance.WM);
    realCell(writer, "Triple point temperature", "K", substance.TTRP);
    realCell(writer, "Normal boiling point", "K", substance.TNBP);
    realCell(writer, "Critical temperature", "K", substance.TC);
    realCell(writer, "Critical pressure", "kPa", substance.PC);
    realCell(writer, "Critical density", "kg/m3", substance.DC);
    realCell(writer, "Lowest temperature", "K", substance.TMIN);
    realCell(writer, "Highest temperature", "K", substance.TMAX);
    realCell(writer, "Highest pressure", "kPa", substance.PMAX);
    realCell(writer, "Highest density", "kg/m3", substance.DMAX);
    writer.cell("Global warming potential", "", Integer{7, substance.GWP});
    writer.space(1);
    writer.cell("Safety class", "", Character{3, substance.SAFETYCLASS.view()});
    writer.endRow();
    fillers(writer, 5);
    writer.close();
}

void FLUIDGWP(SUBSTANCE& substance) {
    CHECKREF_PROPERTIES(substance);
    substance.GWP = static_cast<int>(missingValue);
    fillPotential(substance);
}

}  // namespace frigana
