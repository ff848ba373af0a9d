#include "21_InitSubstance.h"

#include <algorithm>

#include "14_ErrorControl.h"
#include "23_SpecificPoints.h"
#include "OPENFL.h"
#include "SETUP.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

namespace {

const Text255 interactionFile{"fluids\\HMX.bnc"};
constexpr int folderWidth = 7;  // of "fluids\", which SETMIX puts in front of the component names

int ierr = 0;
Text255 herr;

void check() {
    ERRORCONTROL(ierr, herr);
}

// The installation folder up to its last separator, which is included on request.
Text255 installationFolder(bool withSeparator) {
    const auto at = ADDRESS.trimmed().find_last_of("\\/");
    if (at == std::string_view::npos) return {};
    return Text255(ADDRESS.view().substr(0, withSeparator ? at + 1 : at));
}

void setUp(SUBSTANCE& substance, int count, const FileNames& names) {
    SETUP(count, names, interactionFile, substance.HRF, ierr, herr);
    check();
}

void setReference(SUBSTANCE& substance) {
    // Only reference codes that need no values of their own are in use.
    SETREF(substance.HRF, substance.IXREF, substance.ZMOL, 0.0, 0.0, 0.0, 0.0, ierr, herr);
    check();
}

// Reads the mixture file: components without their folder, and the composition.
void setUpMixtureFile(SUBSTANCE& substance) {
    Text255 path = installationFolder(true);
    const int length = path.length();
    path.assign(length + 1, Text255::size, "mixtures\\");
    path.assign(path.length() + 1, Text255::size, substance.REFSNAME[1].view());
    SETMIX(path, interactionFile, substance.HRF, substance.NMIX, substance.REFSNAMEMIX, substance.ZMOL, ierr, herr);
    check();
    for (int i = 1; i <= substance.NMIX; ++i)
        substance.REFSNAMEMIX[i] = Text255(substance.REFSNAMEMIX[i].slice(folderWidth + 1, Text255::size));
}

// The tightest limits of the components, each set up alone.
void limitsOfComponents(SUBSTANCE& substance) {
    const Composition pure = unitComposition(1);
    for (int i = 1; i <= substance.NMIX; ++i) {
        FileNames name{};
        name[1] = substance.REFSNAMEMIX[i];
        setUp(substance, 1, name);
        double tmin = 0, tmax = 0, dmax = 0, pmax = 0;
        LIMITS("EOS", pure, tmin, tmax, dmax, pmax);
        substance.TMIN = i == 1 ? tmin : std::max(substance.TMIN, tmin);
        substance.TMAX = i == 1 ? tmax : std::min(substance.TMAX, tmax);
        substance.PMAX = i == 1 ? pmax : std::min(substance.PMAX, pmax);
    }
}

void storeCriticalPoint(SUBSTANCE& substance, double tc, double pc, double dc) {
    substance.TC = tc;
    substance.PC = pc;
    substance.DC = dc * substance.WM;
    substance.TTRP = substance.TNBP = substance.TMIN = substance.TMAX = substance.PMAX = substance.DMAX = missingValue;
}

void initPureFluid(SUBSTANCE& substance) {
    substance.FLUIDNAME = substance.REFSNAME[1];
    setUp(substance, substance.NREFS, substance.REFSNAME);
    substance.ZMOL = substance.ZCOMP;
    substance.ZKG = substance.ZMOL;
    setReference(substance);

    double zc = 0, acentric = 0, dipole = 0, rgas = 0, dc = 0;
    INFO(1, substance.WM, substance.TTRP, substance.TNBP, substance.TC, substance.PC, dc, zc, acentric, dipole, rgas);
    substance.DC = dc * substance.WM;

    double dmax = 0;
    LIMITS("EOS", substance.ZMOL, substance.TMIN, substance.TMAX, dmax, substance.PMAX);
    substance.DMAX = dmax * substance.WM;
}

void initPredefinedMixture(SUBSTANCE& substance) {
    substance.FLUIDNAME = substance.REFSNAME[1];
    setUpMixtureFile(substance);
    substance.WM = WMOL(substance.ZMOL);
    double meanMolarMass = 0;
    XMASS(substance.ZMOL, substance.ZKG, meanMolarMass);
    setReference(substance);

    double tc = 0, pc = 0, dc = 0;
    CRTHMX(substance.ZMOL, tc, pc, dc, ierr, herr);
    check();
    storeCriticalPoint(substance, tc, pc, dc);

    limitsOfComponents(substance);
    setUpMixtureFile(substance);  // the engine holds the last component
    setReference(substance);
}

void initListedMixture(SUBSTANCE& substance) {
    substance.FLUIDNAME = substance.MIXNAME;
    setUp(substance, substance.NREFS, substance.REFSNAME);
    if (substance.ZTYPE == 1) {
        substance.ZKG = substance.ZCOMP;
        XMOLE(substance.ZKG, substance.ZMOL, substance.WM);
    } else {
        substance.ZMOL = substance.ZCOMP;
        XMASS(substance.ZMOL, substance.ZKG, substance.WM);
    }
    setReference(substance);

    double tc = 0, pc = 0, dc = 0;
    CRITP(substance.ZMOL, tc, pc, dc, ierr, herr);
    check();
    storeCriticalPoint(substance, tc, pc, dc);

    substance.NMIX = substance.NREFS;
    substance.REFSNAMEMIX = substance.REFSNAME;
    limitsOfComponents(substance);
    setUp(substance, substance.NREFS, substance.REFSNAME);
    setReference(substance);
}

void fillFailedPoint(STATEPT& bad) {
    for (double STATEPT::*field :
         {&STATEPT::T, &STATEPT::P, &STATEPT::D, &STATEPT::V, &STATEPT::U, &STATEPT::H, &STATEPT::S, &STATEPT::CV,
          &STATEPT::CP, &STATEPT::W, &STATEPT::Q, &STATEPT::TCX, &STATEPT::ETA, &STATEPT::PR, &STATEPT::STN})
        bad.*field = missingValue;
}

}  // namespace

void INITSUBSTANCE(SUBSTANCE& substance) {
    SETPATH(installationFolder(false).view());
    const bool known = substance.FLUIDKIND >= 1 && substance.FLUIDKIND <= 3;
    switch (substance.FLUIDKIND) {
        case 1:
            initPureFluid(substance);
            break;
        case 2:
            initPredefinedMixture(substance);
            break;
        case 3:
            initListedMixture(substance);
            break;
        default:
            break;
    }
    if (known) {
        static STATEPT coldest;
        PROPSIMPLETQ(substance, substance.TMIN + 1.0, 0.0, coldest);
        substance.PMIN = coldest.P;
    }
    fillFailedPoint(substance.PTBAD);
}

}  // namespace frigana
