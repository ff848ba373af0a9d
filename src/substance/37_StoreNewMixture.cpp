#include "37_StoreNewMixture.h"

#include "14_ErrorControl.h"
#include "21_InitSubstance.h"
#include "TextFile.h"

namespace frigana {

namespace {

constexpr int unit = 1;
constexpr int nameWidth = 40;

FixedPoint real(double value) {
    return {20, 12, value};
}

}  // namespace

void STORENEWMIXTURE(SUBSTANCE& substance, PROPREQ&, const Text255& FILEOUT) {
    INITSUBSTANCE(substance);
    if (substance.FLUIDKIND != 2 && substance.FLUIDKIND != 3)
        ERRORCONTROL(107201, "Error: A fluid that is no mixture cannot be stored as one!");
    if (substance.MIXNAME.blank()) ERRORCONTROL(107202, "Error: The mixture has no name!");
    if (openForWriting(unit, "mixtures\\new")) closeUnit(unit);
    if (!openForWriting(unit, FILEOUT.trimmed())) fileError(FILEOUT.trimmed(), "cannot be written");
    writeLine(unit, Character{nameWidth, substance.FLUIDNAME.view()});
    writeLine(unit, " ", real(substance.WM), " ", real(substance.TC), " ", real(substance.PC), " ",
              real(substance.DC / substance.WM));
    writeLine(unit, Integer{2, substance.NMIX});
    for (int i = 1; i <= substance.NMIX; ++i) writeLine(unit, Character{nameWidth, substance.REFSNAMEMIX[i].view()});
    for (int i = 1; i <= substance.NMIX; ++i) writeLine(unit, " ", real(substance.ZMOL[i]));
    writeLine(unit, " ", Integer{1, 0});
    if (!closeUnit(unit)) fileError(FILEOUT.trimmed(), "could not be written to its end");
}

}  // namespace frigana
