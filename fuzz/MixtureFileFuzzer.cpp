// Damaged mixture files for the set-up of a mixture. It comes back with a code, no unit stays open, and a mixture that
// was accepted can be evaluated.
#include "FluidFiles.h"
#include "MIX_HMX.h"
#include "MemoryFile.h"
#include "OPENFL.h"
#include "PROP_SUB.h"
#include "SETUP.h"
#include "TextFile.h"
#include "TimeLimit.h"

using namespace frigana;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::MemoryFile file;
    static const fuzz::Installation installation(file, "mixtures", "FUZZ.MIX");
    file.fill(data, size);
    const fuzz::TimeLimit limit;
    SETPATH(installation.folder());
    int ierr = 0, nc = 0;
    Text255 herr;
    Text3 reference = "DEF";
    FileNames names{};
    Composition x{};
    SETMIX("FUZZ.MIX", "HMX.BNC", reference, nc, names, x, ierr, herr);
    if (firstFreeUnit(12) != 12) std::abort();
    if (ierr > 0) return 0;
    double Tr, Dr, p, e, h, s, cv, cp, w, jt;
    REDHMX(x, Tr, Dr);
    THERM(0.9 * Tr, 1.5 * Dr, x, p, e, h, s, cv, cp, w, jt);
    return 0;
}
