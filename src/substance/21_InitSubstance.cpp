#include "21_InitSubstance.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "14_ErrorControl.h"
#include "23_SpecificPoints.h"
#include "Message.h"
#include "OPENFL.h"
#include "Platform.h"
#include "SAT_SUB_NEWTON.h"
#include "SETUP.h"
#include "SaturationSpline.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

namespace {

const Text255 interactionFile{"fluids\\HMX.bnc"};
constexpr int folderWidth = 7;         // of "fluids\", which SETMIX puts in front of the component names
constexpr double sumTolerance = 1e-6;  // that of the engine's own check of mole fractions

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
    // A negative count asks the engine for its version.
    SETUP(std::max(count, 0), names, interactionFile, substance.HRF, ierr, herr);
    check();
}

void setReference(SUBSTANCE& substance) {
    // Only reference codes that need no values of their own are in use.
    SETREF(substance.HRF, substance.IXREF, substance.ZMOL, 0.0, 0.0, 0.0, 0.0, ierr, herr);
    check();
}

// The name by which the engine opens a fluid file, whatever its case, folder and extension.
Text255 fluidOf(const Text255& file) {
    std::string_view name = file.trimmed();
    const auto separator = name.find_last_of("\\/:");
    if (separator != std::string_view::npos) name.remove_prefix(separator + 1);
    name = name.substr(0, name.find_last_of('.'));
    Text255 fluid(name);
    for (int i = 1; i <= fluid.length(); ++i)
        if (fluid[i] >= 'a' && fluid[i] <= 'z') fluid[i] = static_cast<char>(fluid[i] - 'a' + 'A');
    return fluid;
}

// Names of a request are those of files in the folders of the installation, nowhere else: one with a folder, a drive or
// a control character in it is a file that is not there.
void refuseForeignNames(const SUBSTANCE& substance) {
    const int count = std::min(substance.FLUIDKIND == 2 ? 1 : substance.NREFS, mostComponents);
    for (int i = 1; i <= count; ++i) {
        const Text255& name = substance.REFSNAME[i];
        if (isPlainFileName(name.trimmed())) continue;
        Text255 shown = name;
        for (int k = 1; k <= Text255::size; ++k)
            if (static_cast<unsigned char>(shown[k]) < ' ') shown[k] = '?';
        if (substance.FLUIDKIND == 2)
            message(herr, "[SETMIX error 101] error in opening mixture file:  ", shown.trimmed(), nullCharacter);
        else
            message(herr, "[SETUP error 101] error in opening file for component #", Integer{3, i}, "; filename = (",
                    Character{80, shown.view()}, ").", nullCharacter);
        ERRORCONTROL(101, herr);
    }
}

double checkedSum(const FileNames& names, const Composition& fractions, int count) {
    double sum = 0.0;
    CHECKCOMPOSITION(names, fractions, count, sum, ierr, herr);
    check();
    return sum;
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
    checkedSum(substance.REFSNAMEMIX, substance.ZMOL, substance.NMIX);
}

// The set-up of an unchanged mixture reads nothing and forgets nothing: what earlier calculations have left of
// saturation, envelope and critical point must not be where the next ones start, for no result may depend on another.
void forgetCalculations() {
    RESETA();
    saturationSpline.SPLINEREADY = false;
    adoptedCriticalPoint.known = false;
}

// The tightest limits of the components, from their slots.
void limitsOfComponents(SUBSTANCE& substance) {
    for (int i = 1; i <= substance.NMIX; ++i) {
        double tmin = 0, tmax = 0, dmax = 0, pmax = 0;
        LIMITS("EOS", unitComposition(i), tmin, tmax, dmax, pmax);
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
    // Two names are a mixture: its constants would be those of the first alone.
    if (substance.NREFS > 1) ERRORCONTROL(100123, "Fluid cannot be selected!!!");
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
    forgetCalculations();
    setUpMixtureFile(substance);
    substance.WM = WMOL(substance.ZMOL);
    double meanMolarMass = 0;
    XMASS(substance.ZMOL, substance.ZKG, meanMolarMass);
    setReference(substance);

    double tc = 0, pc = 0, dc = 0;
    adoptCriticalPoint(substance.ZMOL);
    CRTHMX(substance.ZMOL, tc, pc, dc, ierr, herr);
    check();
    storeCriticalPoint(substance, tc, pc, dc);

    limitsOfComponents(substance);
    RESETA();  // the critical point was looked for with states of its own
}

void initListedMixture(SUBSTANCE& substance) {
    substance.FLUIDNAME = substance.MIXNAME;
    const int count = substance.NREFS;
    // A count below one is refused by the set-up.
    const double sum = count > 0 ? checkedSum(substance.REFSNAME, substance.ZCOMP, count) : 1.0;
    const bool addUpToOne = std::fabs(sum - 1.0) <= sumTolerance;
    const bool byMass = substance.ZTYPE == 1;
    // The engine refuses such mole fractions too, but not with every reference state.
    if (!byMass && !addUpToOne && count > 1) {
        Text255 text;
        message(text, "Error: The mole fractions of the mixture add up to ", FixedPoint{0, 6, sum}, ", not to one!");
        ERRORCONTROL(100128, text);
    }
    forgetCalculations();
    setUp(substance, count, substance.REFSNAME);
    substance.ZKG = substance.ZMOL = substance.ZCOMP;
    if (!addUpToOne)  // the mixture is that of the parts, by which XMOLE takes masses
        for (int i = 1; i <= count; ++i) substance.ZKG[i] = substance.ZMOL[i] = substance.ZCOMP[i] / sum;
    if (byMass)
        XMOLE(substance.ZKG, substance.ZMOL, substance.WM);
    else
        XMASS(substance.ZMOL, substance.ZKG, substance.WM);
    setReference(substance);

    double tc = 0, pc = 0, dc = 0;
    adoptCriticalPoint(substance.ZMOL);
    CRITP(substance.ZMOL, tc, pc, dc, ierr, herr);
    check();
    storeCriticalPoint(substance, tc, pc, dc);

    substance.NMIX = substance.NREFS;
    substance.REFSNAMEMIX = substance.REFSNAME;
    limitsOfComponents(substance);
    RESETA();  // the critical point was looked for with states of its own
}

void fillFailedPoint(STATEPT& bad) {
    for (double STATEPT::*field :
         {&STATEPT::T, &STATEPT::P, &STATEPT::D, &STATEPT::V, &STATEPT::U, &STATEPT::H, &STATEPT::S, &STATEPT::CV,
          &STATEPT::CP, &STATEPT::W, &STATEPT::Q, &STATEPT::TCX, &STATEPT::ETA, &STATEPT::PR, &STATEPT::STN})
        bad.*field = missingValue;
}

}  // namespace

void CHECKCOMPOSITION(const FileNames& names, const Composition& fractions, int count, double& sum, int& IERR,
                      Text255& HERR) {
    constexpr double largest = std::numeric_limits<double>::max();
    IERR = 0;
    HERR.clear();
    sum = 0.0;
    for (int i = 1; i <= count; ++i) {
        if (!(fractions[i] >= 0.0 && fractions[i] <= largest)) {
            IERR = 100125;
            message(HERR, "Error: The fraction of ", names[i].trimmed(), " is negative or not a number!");
            return;
        }
        for (int j = 1; j < i; ++j) {
            if (!(fluidOf(names[i]) == fluidOf(names[j]))) continue;
            IERR = 100126;
            message(HERR, "Error: The mixture holds ", names[i].trimmed(), " twice!");
            return;
        }
        sum += fractions[i];
    }
    if (!(sum > 0.0 && sum <= largest)) {
        IERR = 100127;
        HERR = "Error: The fractions of the mixture do not add up to a number above zero!";
    }
}

void INITSUBSTANCE(SUBSTANCE& substance) {
    refuseForeignNames(substance);
    SETPATH(installationFolder(false).view());
    constexpr void (*initOfKind[])(SUBSTANCE&) = {initPureFluid, initPredefinedMixture, initListedMixture};
    const int kind = substance.FLUIDKIND;
    if (kind >= 1 && kind <= static_cast<int>(std::size(initOfKind))) {
        initOfKind[kind - 1](substance);
        static constinit STATEPT coldest{};
        PROPSIMPLETQ(substance, substance.TMIN + 1.0, 0.0, coldest);
        substance.PMIN = coldest.P;
    }
    fillFailedPoint(substance.PTBAD);
}

}  // namespace frigana
