#include "SETAGA.h"

#include "CORE_CPP.h"
#include "FluidConstants.h"
#include "FluidFiles.h"
#include "MIX_AGA8.h"
#include "Message.h"
#include "ModelTags.h"
#include "ReferenceState.h"
#include "SETUP.h"
#include "UTILITY.h"

namespace frigana {

namespace {

struct Replaced {
    Text3 HEOS;
    double R;
    struct {
        Text3 HMODCP;
        double REOS, WMAS, TREF, RHOREF, HREF, SREF;
        CppSlot ideal;
    } component[ncmax + 1];
};
Replaced replaced;

void save(int i) {
    auto& saved = replaced.component[i];
    saved.HMODCP = modelTags.HMODCP[i];
    saved.REOS = fluidConstants.REOS[i];
    saved.WMAS = fluidConstants.WMAS[i];
    saved.TREF = referenceState.TREF[i];
    saved.RHOREF = referenceState.RHOREF[i];
    saved.HREF = referenceState.HREF[i];
    saved.SREF = referenceState.SREF[i];
    saved.ideal = cppTerms[i];
}

void restore(int i) {
    const auto& saved = replaced.component[i];
    modelTags.HMODCP[i] = saved.HMODCP;
    fluidConstants.REOS[i] = saved.REOS;
    fluidConstants.WMAS[i] = saved.WMAS;
    referenceState.TREF[i] = saved.TREF;
    referenceState.RHOREF[i] = saved.RHOREF;
    referenceState.HREF[i] = saved.HREF;
    referenceState.SREF[i] = saved.SREF;
    cppTerms[i] = saved.ideal;
    cppTerms[i].TSVCP0 = 0.0;
}

// The ideal gas of a component in the form of the heat capacity block: c theta^2 / (T cosh(theta/T))^2.
void replace(int i, int index) {
    constexpr double calorie = 4.184;
    const Aga8IdealGas& gas = aga8IdealGas(index);
    const double scale = aga8GasConstant / calorie;
    CppSlot& cpp = cppTerms[i];
    cpp.TSVCP0 = 0.0;
    cpp.TMINCP = 100.0;
    cpp.TMAXCP = 1000.0;
    cpp.TREDCP = 1.0;
    cpp.CREDCP = calorie;
    cpp.NTERMC = 1;
    cpp.NTERME = 0;
    cpp.NCOSHC = 2;
    cpp.NSINHC = 2;
    cpp.NSP1C = cpp.NSP2C = cpp.NSP3C = 0;
    cpp.CPC0[1] = scale * gas.constant;
    cpp.XKC0[1] = 0.0;
    for (int k = 0; k < 4; ++k) {
        const auto& term = k < 2 ? gas.cosh[k] : gas.sinh[k - 2];
        cpp.CPC0[k + 2] = scale * term.coefficient * term.theta * term.theta;
        cpp.XKC0[k + 2] = -2.0;
        cpp.CP0H[k + 2] = term.theta;
        cpp.X0TH[k + 2] = -1.0;
        cpp.XH00[k + 2] = -2.0;
    }
    modelTags.HMODCP[i] = "CPP";
    fluidConstants.REOS[i] = aga8GasConstant;
    fluidConstants.WMAS[i] = aga8MolarMass(index);
    referenceState.TREF[i] = 298.15;
    referenceState.RHOREF[i] = 101.325 / (aga8GasConstant * 298.15);
    referenceState.HREF[i] = referenceState.SREF[i] = 0.0;
}

}  // namespace

void SETAGA(int& ierr, Text255& herr) {
    ierr = 0;
    herr.clear();
    if (modelTags.HEOS == "AGA") return;
    ComponentArray<int> index{};
    for (int i = 1; i <= modelTags.NC; ++i) {
        index[i] = aga8Index(fluidFiles.HCAS[i].trimmed());
        if (index[i] == 0) {
            ierr = 1;
            message(herr, "[SETAGA error 1] Not all requested fluids are available in AGA8, the model is not changed",
                    nullCharacter);
            ERRMSG(ierr, herr);
            return;
        }
    }
    replaced.HEOS = modelTags.HEOS;
    replaced.R = fluidConstants.R;
    for (int i = 1; i <= modelTags.NC; ++i) {
        save(i);
        replace(i, index[i]);
    }
    aga8.IFPA = index;
    fluidConstants.R = aga8GasConstant;
    RESETA();
    modelTags.HEOS = "AGA";
}

void UNSETAGA() {
    RESETA();
    if (modelTags.HEOS != "AGA") return;
    modelTags.HEOS = replaced.HEOS;
    fluidConstants.R = replaced.R;
    for (int i = 1; i <= modelTags.NC; ++i) restore(i);
}

}  // namespace frigana
