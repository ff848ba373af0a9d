// Damaged files of mixing parameters for three fluids that stay set up. The reader comes back with a code, no unit
// stays open, and a mixture that was accepted can be evaluated.
#include "FluidFiles.h"
#include "MIX_HMX.h"
#include "MemoryFile.h"
#include "OPENFL.h"
#include "PROP_SUB.h"
#include "SETUP.h"
#include "TextFile.h"
#include "TimeLimit.h"

using namespace frigana;

namespace {

void setUpFluids() {
    FileNames names{};
    names[1] = "R32.FLD";
    names[2] = "R125.FLD";
    names[3] = "R134A.FLD";
    Text3 reference = "DEF";
    int ierr = 0;
    Text255 herr;
    SETPATH(FRIGANA_DATA);
    SETUP(3, names, "HMX.BNC", reference, ierr, herr);
    if (ierr > 0) std::abort();
}

void evaluate() {
    Composition x{};
    x[1] = 0.5;
    x[2] = 0.3;
    x[3] = 0.2;
    double Tr, Dr, p, e, h, s, cv, cp, w, jt;
    REDHMX(x, Tr, Dr);
    THERM(0.9 * Tr, 1.5 * Dr, x, p, e, h, s, cv, cp, w, jt);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::MemoryFile file;
    static const fuzz::Installation installation(file, "fluids", "FUZZ.BNC");
    static const bool ready = (setUpFluids(), true);
    (void)ready;
    file.fill(data, size);
    const fuzz::TimeLimit limit;
    SETPATH(installation.folder());
    int ierr = 0;
    Text255 herr;
    SETHMX("FUZZ.BNC", ierr, herr);
    if (firstFreeUnit(12) != 12) std::abort();
    if (ierr <= 0) evaluate();
    return 0;
}
