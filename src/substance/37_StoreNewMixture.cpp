#include "37_StoreNewMixture.h"

#include <algorithm>

#include "14_ErrorControl.h"
#include "21_InitSubstance.h"
#include "53_Fluid_Library.h"
#include "FurtherMixtures.h"
#include "Platform.h"
#include "TextFile.h"

namespace frigana {

namespace {

constexpr int unit = 1;
constexpr int nameWidth = 40;

FixedPoint real(double value) {
    return {20, 12, value};
}

char upper(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool sameLetters(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return upper(x) == upper(y); });
}

constexpr const char* notWritten =
    "Error: The mixture cannot be stored: nothing can be written in the folder mixtures of the installation!";

// Whether the library comes with a mixture of that name; the names of its table have an extension.
bool isOfLibrary(std::string_view name) {
    for (int i = 1; i <= mixtureCount; ++i) {
        const std::string_view file = mixtureLibrary().rows[i].NAME.trimmed();
        if (sameLetters(file.substr(0, file.rfind('.')), name)) return true;
    }
    return std::any_of(std::begin(furtherMixtures), std::end(furtherMixtures),
                       [name](std::string_view further) { return sameLetters(further, name); });
}

void refuseName(const SUBSTANCE& substance) {
    if (substance.MIXNAME.blank()) ERRORCONTROL(107202, "Error: The mixture has no name!");
    const std::string_view name = substance.MIXNAME.trimmed();
    if (!isPlainFileName(name)) ERRORCONTROL(107203, "Error: The name of the mixture cannot be that of a file!");
    if (isOfLibrary(name)) ERRORCONTROL(107204, "Error: The name of the mixture is that of a predefined one!");
}

// Where names of files know case, the file that differs from the wanted one in case only. A folder that cannot be read
// might hold one.
Text255 existingPath(const Text255& FILEOUT) {
    Text255 path = FILEOUT;
    const int folder = lastSeparator(FILEOUT.view());
    const int length = FILEOUT.length();
    char found[Text255::size];
    if (!findInAnyCase(FILEOUT.slice(1, folder), FILEOUT.slice(folder + 1, length), found))
        ERRORCONTROL(107205, notWritten);
    path.assign(folder + 1, length, std::string_view(found, static_cast<std::size_t>(length - folder)));
    return path;
}

void writeMixture(const SUBSTANCE& substance) {
    writeLine(unit, Character{nameWidth, substance.FLUIDNAME.view()});
    writeLine(unit, " ", real(substance.WM), " ", real(substance.TC), " ", real(substance.PC), " ",
              real(substance.DC / substance.WM));
    writeLine(unit, Integer{2, substance.NMIX});
    for (int i = 1; i <= substance.NMIX; ++i) writeLine(unit, Character{nameWidth, substance.REFSNAMEMIX[i].view()});
    for (int i = 1; i <= substance.NMIX; ++i) writeLine(unit, " ", real(substance.ZMOL[i]));
    writeLine(unit, " ", Integer{1, 0});
}

}  // namespace

void STORENEWMIXTURE(SUBSTANCE& substance, PROPREQ&, const Text255& FILEOUT) {
    INITSUBSTANCE(substance);
    if (substance.FLUIDKIND != 2 && substance.FLUIDKIND != 3)
        ERRORCONTROL(107201, "Error: A fluid that is no mixture cannot be stored as one!");
    refuseName(substance);
    if (openForWriting(unit, "mixtures\\new", Writing::fresh)) closeUnit(unit);

    const Text255 path = existingPath(FILEOUT);
    runReport.resultPath = path;
    if (!openForWriting(unit, path.trimmed(), Writing::whole)) ERRORCONTROL(107205, notWritten);
    writeMixture(substance);
    if (!closeUnit(unit)) ERRORCONTROL(107205, notWritten);
}

}  // namespace frigana
