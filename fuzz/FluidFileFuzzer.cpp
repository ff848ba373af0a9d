// Damaged fluid files for the set-up of a fluid. It comes back with a code, the message of a section that could not be
// read names file and line, no unit stays open, and a fluid that was accepted can be evaluated.
#include "CORE_STN.h"
#include "FluidConstants.h"
#include "FluidFiles.h"
#include "MELTING.h"
#include "MemoryFile.h"
#include "ModelTags.h"
#include "OPENFL.h"
#include "PROP_SUB.h"
#include "SETUP.h"
#include "TRNSP.h"
#include "TextFile.h"
#include "TimeLimit.h"

namespace {

using namespace frigana;

void evaluate() {
    const Composition x = unitComposition(1);
    const double T = 0.9 * fluidConstants.TCRIT[1], D = 1.5 * fluidConstants.DCRIT[1];
    double p, e, h, s, cv, cp, w, jt, eta, tcx, sigma, rhol = D, rhov = 0.1;
    Composition xl = x, xv = x;
    int ierr = 0;
    Text255 herr;
    THERM(T, D, x, p, e, h, s, cv, cp, w, jt);
    TRNPRP(T, D, x, eta, tcx, ierr, herr);
    SURTEN(T, rhol, rhov, xl, xv, sigma, ierr, herr);
    MELTT(T, x, p, ierr, herr);
    SUBLT(T, x, p, ierr, herr);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::MemoryFile file;
    static const fuzz::Installation installation(file, "fluids", "FUZZ.FLD");
    file.fill(data, size);
    const fuzz::TimeLimit limit;
    SETPATH(installation.folder());
    FileNames names{};
    names[1] = "FUZZ.FLD";
    Text3 reference = "DEF";
    int ierr = 0;
    Text255 herr;
    // The name is always the same: without this the set-up would take the file for the one it has read already.
    modelTags.LFORCESETUP = true;
    SETUP(1, names, "HMX.BNC", reference, ierr, herr);
    if (firstFreeUnit(12) != 12) std::abort();
    // A model that is known but not available is refused as a whole.
    if (ierr == 104 && herr.find(", line ") == 0 && herr.find("not available") == 0) {
        std::printf("%.255s\n", herr.data());
        std::abort();
    }
    if (ierr <= 0) evaluate();
    return 0;
}
