#include "SETKTV.h"

#include <cmath>

#include "FluidFiles.h"
#include "MIX_HMX.h"
#include "Message.h"
#include "ModelTags.h"
#include "OPENFL.h"
#include "ReaderReport.h"
#include "ReferenceState.h"
#include "SETUP.h"
#include "SaturationSpline.h"
#include "TPRHO.h"
#include "UTILITY.h"

namespace frigana {

namespace {

// The two asymmetry numbers beta of the KW rule: of the reducing temperature and of the reducing volume. They alone
// depend on the order of the components, so a file that holds a pair in the other order has them in FMIX2.
constexpr int betaNumbers[] = {1, 3};

enum class KwOrder { symmetric, forward, reversed };

KwOrder orderOf(const MixingPair& pair) {
    KwOrder order = KwOrder::symmetric;
    for (const int k : betaNumbers)
        if (pair.FMIX[k] != 1.0) order = KwOrder::forward;
    for (const int k : betaNumbers)
        if (pair.FMIX2[k] != 1.0) order = KwOrder::reversed;
    return order;
}

const MixingRule* ruleOf(const Text3& tag) {
    const MixingParameters& parameters = mixingParameters;
    for (int k = 1; k <= parameters.rules; ++k)
        if (parameters.rule[k].HRULE.startsWith(tag.view())) return &parameters.rule[k];
    return nullptr;
}

// Reads the departure function of a tag that the pair did not have before; code -117 where there is none.
void readRule(int i, int j, const Text3& hmodij, Text255& hfmix, int& ierr, Text255& herr) {
    int unit = 12, status = 0;
    Text255 text;
    OPENFL(unit, hfmix, 1, status, text);
    if (status == 0) {
        constexpr int headerLines = 2;
        if (skipLines(unit, headerLines, status, text)) {
            PairMarks received{};
            mixingParameters.HMFILE[pairNumber(i, j, modelTags.NC)] = hfmix;
            RDMIX(unit, i, j, hmodij, received, status, text);
            // the linear rule is the one that has no departure function
            if (status == 0 && !received[i][j] && hmodij != "LIN") {
                status = -117;
                message(text, "[SETKTV warning -117] mixing rule not found", nullCharacter);
                ERRMSG(status, text);
            }
        }
        closeUnit(unit);
        if (status != 0) {
            ierr = status;
            herr = text;
        }
    } else {
        ierr = 111;
        message(herr, "[SETKTV error 111] error in opening mixture file; filename = (", hfmix.slice(1, 80), ").",
                nullCharacter);
        ERRMSG(ierr, herr);
    }
}

}  // namespace

void SETKTV(int icomp, int jcomp, const Text3& hmodij, const MixNumbers& fij, Text255& hfmix, int& ierr,
            Text255& herr) {
    MixingParameters& parameters = mixingParameters;
    const int NC = modelTags.NC;
    ierr = 0;
    herr.clear();
    // the next SETREF works in full: its offsets of a mixture are those of the old parameters
    referenceState.IXREFSAVE = 0;
    referenceState.LREFDONE = false;
    forgetSaturation();
    saturationSpline.SPLINEREADY = false;  // an envelope belongs to its parameters
    adoptedCriticalPoint.known = false;

    if (hmodij == "RST" || hmodij == "rst") {
        hfmix = parameters.HMFILE[0];
        SETHMX(hfmix, ierr, herr);
        for (int k = 1; k <= largestPairs; ++k) parameters.HMFILE[k] = parameters.HMFILE[0];
        return;
    }
    if (icomp > NC || jcomp > NC || icomp < 1 || jcomp < 1) {
        ierr = -113;
        message(herr, "[SETKTV warning -113] i > nc and/or j > nc", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }
    if (NC <= 1 || icomp == jcomp) {
        ierr = -113;
        message(herr, "[SETKTV warning -113] binary parameters for i = j cannot be changed.", nullCharacter);
        ERRMSG(ierr, herr);
        return;
    }

    MixingPair &pair = parameters.pair[icomp][jcomp], &mirror = parameters.pair[jcomp][icomp];
    const int number = pairNumber(icomp, jcomp, NC);
    const MixingPair before = pair, mirrorBefore = mirror;
    const Text255 citationBefore = parameters.HBIN[number], fileBefore = parameters.HMFILE[number];
    const bool kw = hmodij.startsWith("KW");
    const KwOrder order = orderOf(pair);
    pair.FMIX = mirror.FMIX = fij;
    if (kw && order == KwOrder::symmetric) {
        ierr = -114;
        message(herr,
                "[SETKTV warning -114] there is a possibility that the mixture parameters are set incorrectly if the "
                "fluid order is different from that in the HMX.BNC file.",
                nullCharacter);
        ERRMSG(ierr, herr);
    } else if (kw && order == KwOrder::reversed) {
        for (const int k : betaNumbers)
            for (MixingPair* stored : {&pair, &mirror}) {
                stored->FMIX2[k] = fij[k];
                stored->FMIX[k] = 1.0;
            }
    }
    message(parameters.HBIN[number], "The binary parameter(s) for (", fluidFiles.HNAME[icomp].trimmed(), "+",
            fluidFiles.HNAME[jcomp].trimmed(), ") have been modified from their original values.");
    if (hmodij != pair.HMODMX) {
        pair.HMODMX = mirror.HMODMX = hmodij;
        readRule(icomp, jcomp, hmodij, hfmix, ierr, herr);
        if (ierr == -117) {
            pair = before;
            mirror = mirrorBefore;
            parameters.HBIN[number] = citationBefore;
            parameters.HMFILE[number] = fileBefore;
        }
    }
}

void GETKTV(int icomp, int jcomp, Text3& hmodij, MixNumbers& fij, Text255& hfmix, MixNames& hfij, Text255& hbinp,
            Text255& hmxrul) {
    hmodij.clear();
    fij.fill(0.0);
    hfmix.clear();
    hfij.fill(FixedText<8>{});
    hmxrul.clear();
    if (icomp == jcomp || modelTags.NC <= 1) {
        hbinp = "trivial case--identical components";
        return;
    }
    hbinp.clear();
    if (icomp < 1 || jcomp < 1 || icomp > modelTags.NC || jcomp > modelTags.NC) return;

    const MixingPair& pair = mixingParameters.pair[icomp][jcomp];
    const int k = pairNumber(icomp, jcomp, modelTags.NC);
    hmodij = pair.HMODMX;
    hbinp = mixingParameters.HBIN[k];
    hfmix = mixingParameters.HMFILE[k];
    if (const MixingRule* rule = ruleOf(hmodij)) {
        hmxrul.assign(rule->HRULE.slice(4, Text255::size));
        hfij = rule->HBPAR;
    } else {
        Text255 herr;
        message(herr, "[GETKTV error 117] mixing rule not found for components", Integer{3, icomp}, " +",
                Integer{3, jcomp}, ".", nullCharacter);
        ERRMSG(-117, herr);
    }
    fij = pair.FMIX;
    if (!hmodij.startsWith("KW")) return;
    constexpr double one = 1e-20;  // a number that is 1 in the file is 1 to the last digit
    for (int n = 1; n <= fij.count; ++n)
        if (std::abs(pair.FMIX[n] - 1.0) <= one && std::abs(pair.FMIX2[n] - 1.0) > one) fij[n] = pair.FMIX2[n];
}

void GETFIJ(const Text3& hmodij, MixNumbers& fij, MixNames& hfij, Text255& hmxrul) {
    fij.fill(0.0);
    hfij.fill(FixedText<8>{});
    hmxrul.clear();
    if (const MixingRule* rule = ruleOf(hmodij)) {
        hmxrul.assign(rule->HRULE.slice(4, Text255::size));
        hfij = rule->HBPAR;
        fij = rule->BIDEAL;
        return;
    }
    Text255 herr;
    message(herr, "[GETKTV error 117] mixing rule not found", nullCharacter);
    ERRMSG(-117, herr);
}

}  // namespace frigana
